#ifndef CTESTCELLTABLE_H
#define CTESTCELLTABLE_H

#include "VCFixedLenTbl_MemSavVer.h"

#include <gtest/gtest.h>

#include <vector>

namespace NSKZ::Test {

// A table of packed cells that nothing stands on, with vectors instead of bytes.
class CTestCellTable : public NSKZCore::VCFixedLenTbl_MemSavVer
{
public:
    using Cells = std::vector<DWORD>;

    // Groups of so many cells, or such that are read from their beginning.
    explicit CTestCellTable(unsigned int cellsOfGroup, unsigned int blockSize = 16000)
        : VCFixedLenTbl_MemSavVer(0, 0, nullptr, sizeof(DWORD), blockSize, cellsOfGroup)
    {}
    CTestCellTable(unsigned int fieldCount, DWORD recCount, const unsigned char** data, unsigned int recSize,
                   unsigned int blockSize, unsigned int cellsOfGroup)
        : VCFixedLenTbl_MemSavVer(fieldCount, recCount, data, recSize, blockSize, cellsOfGroup)
    {}
    CTestCellTable& operator=(const CTestCellTable& other)
    {
        VCFixedLenTbl_MemSavVer::operator=(other);
        return *this;
    }

    static const unsigned char* GetBytes(const Cells& cells)
    {
        return reinterpret_cast<const unsigned char*>(cells.data());
    }
    bool InsertCells(unsigned int fld, const Cells& cells)
    {
        return InsertFld(fld, static_cast<DWORD>(cells.size()), GetBytes(cells));
    }
    bool ReplaceCells(unsigned int fld, DWORD pos, DWORD oldCount, const Cells& cells)
    {
        return ReplaceRec(fld, pos, oldCount, static_cast<DWORD>(cells.size()), GetBytes(cells));
    }
    Cells GetCells(unsigned int fld) const
    {
        Cells cells(recCountList.at(fld));
        EXPECT_TRUE(GetData(fld, 0, recCountList[fld], reinterpret_cast<unsigned char*>(cells.data())));
        return cells;
    }
    // All fields, and whether the counts go with them.
    std::vector<Cells> GetContent() const
    {
        EXPECT_EQ(recCountList.size(), fldCount);
        std::vector<Cells> content;
        for (unsigned int fld = 0; fld < fldCount; ++fld)
            content.push_back(GetCells(fld));
        return content;
    }

    using VCFixedLenTbl_MemSavVer::fldCount;
    using VCFixedLenTbl_MemSavVer::recCountList;
    using VCFixedLenTbl_MemSavVer::SwapFld;
    using VCFixedLenTbl_MemSavVer::SwapFlds;
};

} // namespace NSKZ::Test

#endif
