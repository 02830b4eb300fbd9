#ifndef SRPLINKINDEX_H
#define SRPLINKINDEX_H

#include "CFldPosOfBtnClass.h"
#include "SCRecPosMap.h"

#include <vector>

namespace NSKZ::NSKZCore {

// What the index file of an IRpLink tells, whatever its version: which class has which field, and the slices
// of its buttons. Operations that give false set the last error; all throw std::bad_alloc.
struct SRpLinkIndex
{
    CFldPosOfBtnClass fldPos;
    std::vector<CRecPosMap> recPosList; // for each field
    std::vector<DWORD> areaSizes;       // how many cells its record area has at least

    // Prepares the directory and writes the index.
    static bool Write(const char* dir, const CFldPosOfBtnClass& fldPos,
                      const std::vector<CRecPosMap>& recPosList);

    // Reads it, into an object that is new, from a directory that is ready for reading. False too for an
    // index that contradicts itself, slices that are empty or share a cell among them, and for buttons whose
    // identifiers lie so far apart that the arrays indexed by them would take more than eleven times the
    // index file and some 8 MB.
    bool Read(const char* dir);
};

} // namespace NSKZ::NSKZCore

#endif
