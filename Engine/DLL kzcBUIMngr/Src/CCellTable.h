#ifndef CCELLTABLE_H
#define CCELLTABLE_H

#include "VCFixedLenTbl_MemSavVer.h"

namespace NSKZ::NSKZCore {

// Packed cells as the memory-saving link tables keep them: what such a table makes ready beside itself, to
// take it over when all has gone well.
class CCellTable : public VCFixedLenTbl_MemSavVer
{
public:
    static constexpr unsigned int REC_SIZE = sizeof(DWORD);
    static constexpr unsigned int BLOCK_SIZE = 16000;
    // The cells of a group: of buttons, each read by itself, and of records, read as ascending lists.
    static constexpr unsigned int BTNS_OF_GROUP = 128;
    static constexpr unsigned int RECS_OF_GROUP = 0;

    // No fields.
    explicit CCellTable(unsigned int cellsOfGroup)
        : VCFixedLenTbl_MemSavVer(0, 0, nullptr, REC_SIZE, BLOCK_SIZE, cellsOfGroup)
    {}

    unsigned int GetFldCount() const noexcept { return fldCount; }
    DWORD GetRecCount(unsigned int fld) const noexcept { return recCountList[fld]; }

    // Cells as the bytes that the base takes and gives.
    static const unsigned char* GetBytes(const DWORD* cells)
    {
        return reinterpret_cast<const unsigned char*>(cells);
    }
    static unsigned char* GetBytes(DWORD* cells) { return reinterpret_cast<unsigned char*>(cells); }
};

} // namespace NSKZ::NSKZCore

#endif
