#ifndef SRECORDPOS_H
#define SRECORDPOS_H

#include "KzcPlatform.h"

namespace NSKZ::NSKZCore {

// The slice of a class's record area that holds the records of one button.
struct SRecordPos
{
    DWORD recPos = 0;   // index in the area of the button's first record
    DWORD recCount = 0; // how many records the button has

    // What stands for no slice: one that would end behind all that a DWORD numbers.
    static constexpr SRecordPos MakeAbsent() noexcept { return {4294967295, 4294967295}; }
    constexpr bool IsAbsent() const noexcept { return recPos == 4294967295 && recCount == 4294967295; }
};

} // namespace NSKZ::NSKZCore

#endif
