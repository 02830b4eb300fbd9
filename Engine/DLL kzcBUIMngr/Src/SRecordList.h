#ifndef SRECORDLIST_H
#define SRECORDLIST_H

#include "KzcPlatform.h"

namespace NSKZ::NSKZCore {

// A list of record numbers, ascending and without duplicates. The array is borrowed: whoever made it outlives
// the record, which is copied by value.
struct SRecordList
{
    DWORD* recList = nullptr;
    DWORD recCount = 0;
};

} // namespace NSKZ::NSKZCore

#endif
