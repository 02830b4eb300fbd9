#ifndef SRECORDPOS_H
#define SRECORDPOS_H

#include "KzcPlatform.h"

namespace NSKZ::NSKZCore {

// The slice of a class's record area that holds the records of one button.
struct SRecordPos
{
    DWORD recPos = 0;   // index in the area of the button's first record
    DWORD recCount = 0; // how many records the button has
};

} // namespace NSKZ::NSKZCore

#endif
