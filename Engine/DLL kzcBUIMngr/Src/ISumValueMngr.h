#ifndef ISUMVALUEMNGR_H
#define ISUMVALUEMNGR_H

#include "KzcBUIMngrAPI.h"
#include "SCBUICoreCom.h"

#include <vector>

namespace NSKZ::NSKZCore {

class CBtnWorthList;

// Where conditions take the numbers of buttons from: what a numeric item holds over the records of a button,
// as far as these are target records of the button's class.
//
// `btnClassID` and `btnID` name the button, `numID` the numeric item (a field of the source table). Each
// operation returns true when it produced the result, and leaves the output untouched otherwise (GetEachValue
// empties it). The order of the operations is fixed: a host may implement the interface itself.
class KZCBUIMNGR_API ISumValueMngr
{
public:
    ISumValueMngr() = default;
    ISumValueMngr(const ISumValueMngr&) = default;
    virtual ~ISumValueMngr();
    // Copies nothing: what an implementation holds is its own.
    virtual ISumValueMngr& operator=(const ISumValueMngr& other);

    virtual bool GetSumValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const = 0;
    // How many numbers the records hold.
    virtual bool GetCountValue(DWORD btnClassID, DWORD btnID, DWORD numID, DWORD& count) const = 0;
    // The sum divided by the count; NaN or an infinity over no number.
    virtual bool GetAverageValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const = 0;
    // The number of each record, ascending by record.
    virtual bool GetEachValue(DWORD btnClassID, DWORD btnID, DWORD numID,
                              std::vector<double>& values) const = 0;
    // The sum of the sums of all displayed buttons of a class, and of their absolute values.
    virtual bool GetTotalValue(DWORD btnClassID, DWORD numID, double& value) const = 0;
    virtual bool GetTotalAbsoluteValue(DWORD btnClassID, DWORD numID, double& value) const = 0;
    virtual bool GetWeightedAvgValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const = 0;
    virtual bool GetMaxValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const = 0;
    virtual bool GetMinValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const = 0;
    virtual bool GetLatestValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const = 0;
    virtual bool GetAbsoluteValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const = 0;
    // Whether the item can be summed.
    virtual bool ExistNumDataItem(DWORD numID) const = 0;

    // What each of `btnIDs` is worth by that method, as the operations above tell it one by one, from an
    // implementation that keeps such lists: many conditions ask the same. Good until the next call of any
    // operation. Null, as here, where there is nothing of the kind: the operations above are asked then.
    virtual const CBtnWorthList* GetBtnWorths(SCBUICoreCom::ESumMethodForCnd method, DWORD btnClassID,
                                              const std::vector<DWORD>& btnIDs, DWORD numID) const;
};

} // namespace NSKZ::NSKZCore

#endif
