#ifndef SBNLINKINDEX_H
#define SBNLINKINDEX_H

#include "CFldPosOfBtnClass.h"

namespace NSKZ::NSKZCore {

// What the index file of an IBnLink tells, whatever its version: how many columns and records there are, and
// which class has which column. Operations that give false set the last error; all throw std::bad_alloc.
struct SBnLinkIndex
{
    DWORD fldCount = 0;
    DWORD recCount = 0;
    CFldPosOfBtnClass fldPos;

    // Prepares the directory and writes the index.
    static bool Write(const char* dir, DWORD fldCount, DWORD recCount, const CFldPosOfBtnClass& fldPos);

    // Reads it from a directory that is ready for reading. False too for an index that contradicts itself.
    bool Read(const char* dir);
};

} // namespace NSKZ::NSKZCore

#endif
