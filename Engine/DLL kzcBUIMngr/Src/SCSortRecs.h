#ifndef SCSORTRECS_H
#define SCSORTRECS_H

#include "KzcPlatform.h"

namespace NSKZ::NSKZCore {

// Sorting of record numbers.
class SCSortRecs
{
public:
    SCSortRecs() = delete;

    // Sorts `recs` ascending. A long list of close numbers, as several pressed buttons give it, is sorted in
    // linear time through one bit for each number up to the greatest; no number may stand twice. Throws
    // std::bad_alloc with the list as it was.
    static void Sort(DWORD* recs, DWORD count);
};

} // namespace NSKZ::NSKZCore

#endif
