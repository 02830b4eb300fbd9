#ifndef CRPLINK_ONMEMVER_H
#define CRPLINK_ONMEMVER_H

#include "CCriticalSection.h"
#include "CDWORDArray.h"
#include "VCRpLink.h"

namespace NSKZ::NSKZCore {

// IRpLink with the record area of every class as one plain array: the count of heap blocks goes with the
// classes, not with the buttons, and a look-up is array indexing all the way.
//
// The slices of a class lie in its area in no particular order, without overlap and without a gap, with two
// exceptions in which the area is longer than its lists: InsertFld with lists that hold fewer records than
// the total it was given, and InsertRec with a new list that shares a record with the old one. What the
// surplus cells hold means nothing. Whatever is called, a slice never leaves its area.
//
// DeleteRecList expects ascending records that are all in the button's list; from the first one that is not,
// no more are found. It never removes the entry, not even one it has emptied. The positions of the buttons
// behind are moved by `recCount` less the former length of the list, not by what was found: they are right
// only where recCount and the number found add up to that length, and otherwise point at a neighbour's
// records. Where they then overlap, or where an entry has been emptied, ReadFrom refuses what WriteTo has
// written.
//
// ReadFrom also refuses buttons whose identifiers lie so far apart that the arrays indexed by them would take
// more than eleven times the index file and some 8 MB.
class CRpLink_OnMemVer : public VCRpLink
{
public:
    // An empty table.
    CRpLink_OnMemVer();
    CRpLink_OnMemVer(const CRpLink_OnMemVer&) = delete;
    ~CRpLink_OnMemVer() override;

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

    // Makes this table a copy of another one. On std::bad_alloc it is as it was.
    virtual CRpLink_OnMemVer& operator=(const CRpLink_OnMemVer& other);

private:
    // Adds a field made ready; false, with nothing changed, if `btnClassID` is no class or has one already.
    bool AppendFld(DWORD btnClassID, CDWORDArray&& recArea, CRecPosMap&& recPositions);
    bool ReplaceRecList(DWORD fld, DWORD btnID, const DWORD* newList, DWORD newCount) override;

    std::vector<CDWORDArray> recAreaList; // the record area of each field
    CCriticalSection lock;                // held by the operations that add and remove fields
};

} // namespace NSKZ::NSKZCore

#endif
