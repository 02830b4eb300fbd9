#ifndef CBNLINK_MEMSAVVER_H
#define CBNLINK_MEMSAVVER_H

#include "VCBnLink.h"
#include "VCFixedLenTbl_MemSavVer.h"

namespace NSKZ::NSKZCore {

// IBnLink with packed columns: a cell takes about as many bits as there are buttons to tell apart. Every read
// goes through the packed cells, so that ascending lists of records and whole stretches are what to ask for.
//
// Where the interface leaves it to the table: cells that were opened and not written are 0. InsertRec refuses
// a position behind the last row where there is a column, and takes any where there is none; with a count of
// 0 it does nothing. SetFldData with a count below that of the records overwrites the first ones. A list of
// records with one that is no row is refused. GetBtnIDsOfRecs allocates nothing; the lists of buttons take a
// buffer of as many cells as they look at.
class CBnLink_MemSavVer : public VCBnLink, private VCFixedLenTbl_MemSavVer
{
public:
    // An empty table.
    CBnLink_MemSavVer();
    CBnLink_MemSavVer(const CBnLink_MemSavVer&) = delete;
    CBnLink_MemSavVer& operator=(const CBnLink_MemSavVer&) = delete;
    ~CBnLink_MemSavVer() override;

    bool WriteTo(const char* dir) const override;
    bool ReadFrom(const char* dir, SCKZCoreCom::EEndianness endianness,
                  SCKZCoreCom::EDataModel dataModel) override;
    bool InsertFld(DWORD btnClassID, DWORD count, const DWORD* btnIDs) override;
    bool DeleteFld(DWORD btnClassID) override;
    bool InsertRec(DWORD pos, DWORD count) override;
    bool DeleteRec(DWORD pos, DWORD count) override;
    bool SetFldData(DWORD btnClassID, DWORD count, const DWORD* btnIDs) override;
    bool GetData(DWORD btnClassID, DWORD pos, DWORD count, DWORD* btnIDs) const override;
    bool GetBtnIDListOfRecList(DWORD btnClassID, DWORD listCount, const DWORD* recNumList,
                               std::vector<DWORD>& btnIDs) const override;
    bool GetBtnIDList(DWORD btnClassID, std::vector<DWORD>& btnIDs) const override;
    bool GetBtnID(DWORD btnClassID, DWORD recNum, DWORD& btnID) const override;
    bool SetData(DWORD btnClassID, DWORD pos, DWORD count, const DWORD* btnIDs) override;
    void Clear() override;
    SCBUICoreCom::ELinkTableVerType GetVersionType() const override;
    bool GetBtnIDsOfRecs(DWORD btnClassID, DWORD listCount, const DWORD* recNumList,
                         DWORD* btnIDs) const override;

private:
    using Cells = VCFixedLenTbl_MemSavVer;
};

} // namespace NSKZ::NSKZCore

#endif
