#include "SCKZCoreCom.h"

#include <algorithm>
#include <cstring>

namespace NSKZ::NSKZCore {

namespace {

// From this ratio of the lengths on, each number of the short list is searched in the long one instead of
// walking both.
constexpr DWORD SEARCH_RATIO = 32;

DWORD CopyRecs(DWORD* out, const DWORD* recs, DWORD count) noexcept
{
    if (count != 0)
        std::memcpy(out, recs, count * sizeof(DWORD));
    return count;
}

} // namespace

DWORD SCKZCoreCom::MergeRecListByANDCnd(DWORD* list, DWORD& count, const DWORD* other, DWORD otherCount) noexcept
{
    DWORD kept = 0;
    if (otherCount / SEARCH_RATIO >= count) {
        const DWORD* const otherEnd = other + otherCount;
        for (DWORD i = 0; i < count; ++i) {
            other = std::lower_bound(other, otherEnd, list[i]);
            if (other == otherEnd)
                break;
            if (*other == list[i])
                list[kept++] = list[i];
        }
    } else if (count / SEARCH_RATIO >= otherCount) {
        const DWORD* rest = list;
        const DWORD* const listEnd = list + count;
        for (DWORD i = 0; i < otherCount; ++i) {
            rest = std::lower_bound(rest, listEnd, other[i]);
            if (rest == listEnd)
                break;
            if (*rest == other[i]) {
                ++rest; // read before list[kept], which is never behind it, is written
                list[kept++] = other[i];
            }
        }
    } else {
        DWORD i = 0;
        DWORD j = 0;
        while (i < count && j < otherCount) {
            const DWORD mine = list[i];
            const DWORD theirs = other[j];
            list[kept] = mine;
            kept += mine == theirs ? 1 : 0;
            i += mine <= theirs ? 1 : 0;
            j += theirs <= mine ? 1 : 0;
        }
    }
    count = kept;
    return kept;
}

DWORD SCKZCoreCom::MergeRecListByORCnd(const DWORD* a, DWORD aCount, const DWORD* b, DWORD bCount,
                                       DWORD* out) noexcept
{
    DWORD i = 0;
    DWORD j = 0;
    DWORD written = 0;
    while (i < aCount && j < bCount) {
        const DWORD left = a[i];
        const DWORD right = b[j];
        out[written++] = left < right ? left : right;
        i += left <= right ? 1 : 0;
        j += right <= left ? 1 : 0;
    }
    written += CopyRecs(out + written, a + i, aCount - i);
    written += CopyRecs(out + written, b + j, bCount - j);
    return written;
}

} // namespace NSKZ::NSKZCore
