#ifndef CBTNWORTHLIST_H
#define CBTNWORTHLIST_H

#include "KzcBUIMngrAPI.h"

#include <vector>

namespace NSKZ::NSKZCore {

// What each of a list of buttons is worth, and how they rank by it.
//
// NaN is worth 0: an average over nothing, a ratio of nothing to nothing.
class KZCBUIMNGR_API CBtnWorthList
{
public:
    explicit CBtnWorthList(const std::vector<DWORD>& btnIDsInGivenOrder);

    // The worth of the next button, in the given order.
    void Add(double worth);

    const std::vector<DWORD>& GetBtnIDs() const noexcept { return btnIDs; }
    // Whether the button is one of them. Logarithmic if they were given ascending.
    bool Holds(DWORD btnID) const noexcept;
    // In the given order.
    const std::vector<double>& GetWorths() const noexcept { return worths; }
    // The buttons as positions in the given order, from the lowest worth to the highest, equal ones in the
    // given order. Sorted when first asked for.
    const std::vector<DWORD>& GetRanking() const;

private:
    std::vector<DWORD> btnIDs;
    bool isAscending;
    std::vector<double> worths;
    mutable std::vector<DWORD> ranking; // empty until it is asked for
};

} // namespace NSKZ::NSKZCore

#endif
