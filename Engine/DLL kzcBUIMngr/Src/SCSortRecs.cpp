#include "SCSortRecs.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>

namespace NSKZ::NSKZCore {

namespace {

// Below this share of numbers among those up to the greatest, comparing is faster than walking all bits.
constexpr DWORD SPARSE_FROM = 256;

} // namespace

void SCSortRecs::Sort(DWORD* recs, DWORD count)
{
    if (std::is_sorted(recs, recs + count))
        return;
    const DWORD greatest = *std::max_element(recs, recs + count);
    if (greatest / SPARSE_FROM >= count) {
        std::sort(recs, recs + count);
        return;
    }
    std::vector<std::uint64_t> words(greatest / 64 + 1);
    for (DWORD i = 0; i < count; ++i)
        words[recs[i] / 64] |= std::uint64_t{1} << recs[i] % 64;
    for (std::size_t i = 0; i < words.size(); ++i) {
        for (std::uint64_t rest = words[i]; rest != 0; rest &= rest - 1)
            *recs++ = static_cast<DWORD>(i * 64) + static_cast<DWORD>(std::countr_zero(rest));
    }
}

} // namespace NSKZ::NSKZCore
