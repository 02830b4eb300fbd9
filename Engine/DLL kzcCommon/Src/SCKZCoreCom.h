#ifndef SCKZCORECOM_H
#define SCKZCORECOM_H

#include "KzcCommonAPI.h"

namespace NSKZ::NSKZCore {

// What all libraries share: merges of record lists, characters with a name.
class KZCCOMMON_API SCKZCoreCom
{
public:
    SCKZCoreCom() = delete;

    static constexpr char CHAR_SPACE = ' ';
    static constexpr char CHAR_COMMA = ',';

    // The two parts of a saved specification.
    enum ESpecType
    {
        SPECTYPE_COMMON = 1, // what follows from the source data
        SPECTYPE_FIXED = 2,  // what a user has decided
    };

    // Record lists are ascending and hold no number twice; nothing checks it. A list may be null where its count
    // is 0.

    // Keeps in `list` the numbers that stand in `other` too, in order; sets `count` to their number and returns
    // it. Cost: linear in the longer list, and logarithmic in it for each number of a much shorter one.
    static DWORD MergeRecListByANDCnd(DWORD* list, DWORD& count, const DWORD* other, DWORD otherCount) noexcept;

    // Writes the union of `a` and `b` to `out`, a number in both once, and returns its count. `out` overlaps
    // neither list. It has room for aCount + bCount numbers, or for the union where the caller knows its bound:
    // nothing is written behind the last number of the union. Linear.
    static DWORD MergeRecListByORCnd(const DWORD* a, DWORD aCount, const DWORD* b, DWORD bCount,
                                     DWORD* out) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
