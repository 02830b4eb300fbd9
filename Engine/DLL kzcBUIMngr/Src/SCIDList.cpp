#include "SCIDList.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

std::vector<DWORD> SCIDList::TakeEachOnce(const std::vector<DWORD>& ids)
{
    std::vector<DWORD> sorted(ids);
    SortAndTakeEachOnce(sorted);
    if (sorted.size() == ids.size())
        return ids;
    std::vector<DWORD> distinct;
    distinct.reserve(sorted.size());
    std::vector<bool> isTaken(sorted.size());
    for (const DWORD id : ids) {
        const auto place = std::lower_bound(sorted.begin(), sorted.end(), id) - sorted.begin();
        const auto position = static_cast<std::size_t>(place);
        if (isTaken[position])
            continue;
        isTaken[position] = true;
        distinct.push_back(id);
    }
    return distinct;
}

void SCIDList::SortAndTakeEachOnce(std::vector<DWORD>& ids) noexcept
{
    if (!std::is_sorted(ids.begin(), ids.end()))
        std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
}

} // namespace NSKZ::NSKZCore
