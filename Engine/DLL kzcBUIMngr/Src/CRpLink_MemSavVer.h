#ifndef CRPLINK_MEMSAVVER_H
#define CRPLINK_MEMSAVVER_H

#include "VCFixedLenTbl_MemSavVer.h"
#include "VCRpLink.h"

namespace NSKZ::NSKZCore {

// IRpLink with packed record areas: a record of an ascending list takes some 2.5 bits and the logarithm of
// the mean distance to the next one. The maps from button to slice are plain memory, as those of the table on
// memory are. Reading a list passes over up to 255 records before it; a change packs what it touches anew.
//
// Slices lie as CRpLink_OnMemVer tells, and surplus cells come about in the same two cases. Whatever is
// called, no slice is read beyond its area. These things are different here:
//
// - DeleteRecList does not consult `recCount`: the records must end in a number that is no record of the
//   list, and none behind it is looked at. Where a record is found, what stands behind it in the list is
//   moved down by as many bytes as there are records, not by as many records, and the record that comes into
//   its place is not looked at. Only the last record of a list is sure to come out cleanly by it. False if
//   no record was found. A list that is emptied loses its entry, and the buttons behind move by what was
//   found.
// - ClearOfFixedSpec takes the slices to drop out one after the other at the positions they had before:
//   where there are several of them, with slices of other kinds of buttons between or behind them, those
//   behind the first stretch are others than meant, or, behind the end of what is left, none; the buttons
//   that stay may have the records of others then. Buttons of the inc and cll kinds that stand behind all
//   others, in one stretch, are dropped as they should be.
// - SetRecList and AddRecList that find no room for a new list, in an area of nearly 4294967295 cells, give
//   false and leave an entry without records behind: GetRecCount tells the count that was wanted, GetRecList
//   gives false, and ReadFrom refuses what WriteTo writes of it. The next change of the records of all
//   classes removes it.
//
// InsertFld, InsertRec, DeleteRec and ClearOfFixedSpec take plain copies of one area at a time, DeleteRec
// besides the packed areas of all classes a second time, until all are ready.
class CRpLink_MemSavVer : public VCRpLink, private VCFixedLenTbl_MemSavVer
{
public:
    // An empty table.
    CRpLink_MemSavVer();
    CRpLink_MemSavVer(const CRpLink_MemSavVer&) = delete;
    CRpLink_MemSavVer& operator=(const CRpLink_MemSavVer&) = delete;
    ~CRpLink_MemSavVer() override;

    bool WriteTo(const char* dir) const override;
    bool ReadFrom(const char* dir, SCKZCoreCom::EEndianness endianness,
                  SCKZCoreCom::EDataModel dataModel) override;
    bool InsertFld(DWORD btnClassID) override;
    bool InsertFld(DWORD btnClassID, const TCBtnIDAssArr<SRecordList>& recLists, DWORD total) override;
    bool DeleteFld(DWORD btnClassID) override;
    bool AddRecList(DWORD btnClassID, DWORD btnID, const DWORD* recNumList, DWORD recCount) override;
    bool DeleteRecList(DWORD btnClassID, DWORD btnID, const DWORD* recNumList, DWORD recCount) override;
    bool GetRecList(DWORD btnClassID, DWORD btnID, DWORD* recNumList, DWORD& recCount) const override;
    bool GetAllRecList(DWORD btnClassID, TCBtnIDAssArr<SRecordList>& recLists, DWORD* recArea) const override;
    using VCRpLink::ClearOfFixedSpec;
    bool ClearOfFixedSpec(DWORD btnClassID) override;
    bool GetRecCountOfFld(DWORD btnClassID, DWORD& recCount) const override;
    void Clear() override;
    void InsertRec(DWORD btnClassID, DWORD pos, DWORD count, const TCBtnIDAssArr<SRecordList>& newRecLists,
                   DWORD newTotal) override;
    void DeleteRec(DWORD pos, DWORD count) override;
    SCBUICoreCom::ELinkTableVerType GetVersionType() const override;
    void DeleteFlds(const std::vector<DWORD>& btnClassIDs) override;
    bool ClearFld(DWORD btnClassID) override;

private:
    using Cells = VCFixedLenTbl_MemSavVer;

    // Adds a field of these cells; false, with nothing changed, if `btnClassID` is no class or has one
    // already.
    bool AppendFld(DWORD btnClassID, VCFixedLenTbl_MemSavVer& recArea, CRecPosMap&& recPositions);
    bool ReplaceRecList(DWORD fld, DWORD btnID, const DWORD* newList, DWORD newCount) override;
    // The whole area of a field.
    void ReadArea(DWORD fld, DWORD* recs) const noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
