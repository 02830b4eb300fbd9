#ifndef VCFIXEDLENTBL_MEMSAVVER_H
#define VCFIXEDLENTBL_MEMSAVVER_H

#include "CCriticalSection.h"
#include "CPackedFld.h"
#include "KzcCommonAPI.h"

#include <memory>
#include <vector>

namespace NSKZ::NSKZCore {

// A table of cells by field and record that saves memory: the base of the link tables that do. Fields are
// numbered from 0, records of a field likewise; fields may be of different lengths. A cell is 4 bytes, given
// and taken as bytes in the byte order of the machine.
//
// The cells of a field lie in blocks of some thousands, and a block holds them packed, in groups: what a
// group takes goes with how far its cells lie apart, not with how large they are (see CCellBlock). A change
// packs the blocks anew that it touches, one or two for a change in one place, and moves the index of the
// blocks behind; it costs nothing for the cells in other blocks. Reading a stretch costs each cell of it, and
// in a table of ascending cells those of its first group before it.
//
// Results: false, with nothing changed and outputs untouched, for a field that is not there and for positions
// outside it; a position equal to the length with a count of 0 is inside. Positions are added in 64 bits, and
// no field becomes longer than a DWORD tells. Cells opened with null data are 0. Memory exhaustion arrives as
// std::bad_alloc with the table as it was.
//
// The lock is taken by none of these operations: it is there for the table that stands on this one.
class KZCCOMMON_API VCFixedLenTbl_MemSavVer
{
public:
    VCFixedLenTbl_MemSavVer(const VCFixedLenTbl_MemSavVer&) = delete;
    virtual ~VCFixedLenTbl_MemSavVer() = 0;

    // Makes this table a copy of another one with the same block parameters; of one with others,
    // std::invalid_argument is thrown. Costs a copy of the packed cells.
    virtual VCFixedLenTbl_MemSavVer& operator=(const VCFixedLenTbl_MemSavVer& other);

    // Removes all fields.
    void Clear() noexcept;

    // Adds a field before the field `fld`, or behind the last one: its `recCount` cells, or null.
    bool InsertFld(unsigned int fld, DWORD recCount, const unsigned char* data);

    // Removes a field; those behind it move down.
    bool DeleteFld(unsigned int fld) noexcept;
    // Removes all fields that are marked, in one pass. What is marked behind the last field, or not told, is
    // nothing.
    void DeleteFlds(const std::vector<bool>& isDeleted) noexcept;

    // Opens `count` records before record `pos` in all fields, whose cells are those of data[field], or null.
    // Without a field there is nothing to do, which is true. False if it would be false for one of them.
    bool InsertRec(DWORD pos, DWORD count, const unsigned char** data);
    // The same in one field.
    bool InsertRec(unsigned int fld, DWORD pos, DWORD count, const unsigned char* data);

    // Removes the `count` records from `pos` on from all fields. False if a field does not have them; without
    // a field true.
    bool DeleteRec(DWORD pos, DWORD count);
    // The same in one field.
    bool DeleteRec(unsigned int fld, DWORD pos, DWORD count);

    // Puts `newCount` cells, or null, in the place of the `oldCount` from `pos` on, in one step.
    bool ReplaceRec(unsigned int fld, DWORD pos, DWORD oldCount, DWORD newCount, const unsigned char* data);

    // Copies the `count` cells from `pos` on.
    bool GetData(unsigned int fld, DWORD pos, DWORD count, unsigned char* data) const noexcept;

    // Copies the cells of `count` records, listed in any order; ascending ones are cheapest. False, with the
    // output holding anything, if one of them is not there.
    bool GetListedData(unsigned int fld, const DWORD* recNumList, DWORD count, DWORD* data) const noexcept;

    // Overwrites the `count` cells from `pos` on, or the first `count`.
    bool SetData(unsigned int fld, DWORD pos, DWORD count, const unsigned char* data);
    bool SetFldData(unsigned int fld, DWORD count, const unsigned char* data);

    // Gives a field `newCount` cells: the last ones go, or null ones come.
    bool ReallocateRecArea(unsigned int fld, DWORD newCount);

    // Writes the cells of a field to a file, packed as they are, and reads them back into a field of a table
    // with the same block parameters. `isAnyLength`: the field takes the length of what is read; otherwise
    // only cells as many as it has are taken. False with the last error (ERROR_INVALID_DATA for a file that
    // is not what a field writes) and, reading, with the field as it was. Everything is proved before it is
    // used but what the cells are; no memory is taken that is out of proportion to the file. Throw
    // std::bad_alloc, reading with the field as it was.
    //
    // The file is 32-bit numbers in the byte order of the machine: how many cells there are; how many blocks;
    // for each block how many cells and how many words it has; and the words of all blocks, which CCellBlock
    // tells.
    bool WriteFldData(unsigned int fld, const char* path) const;
    bool ReadFldData(unsigned int fld, const char* path, bool isAnyLength);

protected:
    // A table of `fieldCount` fields of `recCount` records; their cells are those of data[field], or null. A
    // record is of `recSize` bytes, which is 4. A block holds at most `blockSize` bytes of plain cells, in
    // whole groups: at least one group, and no more than 65536 bytes. `cellsOfGroup`, a power of 2, is how
    // many cells a group has whose cells are each read by itself; 0 makes groups of 256 that may also be
    // packed as ascending cells and are then read from their beginning: for cells that mostly ascend and are
    // read in stretches. Throws std::invalid_argument for others, and std::bad_alloc.
    VCFixedLenTbl_MemSavVer(unsigned int fieldCount, DWORD recCount, const unsigned char** data,
                            unsigned int recSize, unsigned int blockSize, unsigned int cellsOfGroup);

    // Exchanges the cells of a field with those of a field of a table with the same block parameters; both
    // are there.
    void SwapFld(unsigned int fld, VCFixedLenTbl_MemSavVer& other, unsigned int fldOfOther) noexcept;
    // Exchanges all fields.
    void SwapFlds(VCFixedLenTbl_MemSavVer& other) noexcept;

    unsigned int fldCount = 0;
    std::vector<DWORD> recCountList; // the length of each field
    CCriticalSection lock;           // for those who change the structure

private:
    bool HasRecs(unsigned int fld, DWORD pos, DWORD count) const noexcept;
    bool HasRoom(unsigned int fld, DWORD oldCount, DWORD newCount) const noexcept;
    // Changes a stretch of all fields, or of none.
    void ReplaceRecOfAll(DWORD pos, DWORD oldCount, DWORD newCount, const unsigned char** data);

    SCellForm form;
    std::vector<CPackedFld> flds;
};

} // namespace NSKZ::NSKZCore

#endif
