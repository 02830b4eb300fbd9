#ifndef SCIDLIST_H
#define SCIDLIST_H

#include "SCBUICoreCom.h"

#include <vector>

namespace NSKZ::NSKZCore {

// Lists of identifiers as hosts give them: in any order, with repetitions.
class SCIDList
{
public:
    // Each identifier once, in first place.
    static std::vector<DWORD> TakeEachOnce(const std::vector<DWORD>& ids);
    // Each identifier once, ascending.
    static void SortAndTakeEachOnce(std::vector<DWORD>& ids) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
