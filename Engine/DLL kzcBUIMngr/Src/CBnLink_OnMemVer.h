#ifndef CBNLINK_ONMEMVER_H
#define CBNLINK_ONMEMVER_H

#include "CCriticalSection.h"
#include "CDWORDArray.h"
#include "VCBnLink.h"

namespace NSKZ::NSKZCore {

// IBnLink with every column as one plain array: a cell is two array look-ups away, GetData is one block copy.
//
// Where the interface leaves it to the table: InsertRec with a position behind the last row appends, and with
// a count of 0 does nothing and takes no lock; DeleteRec refuses a stretch that ends behind the last row.
class CBnLink_OnMemVer : public VCBnLink
{
public:
    // An empty table.
    CBnLink_OnMemVer();
    CBnLink_OnMemVer(const CBnLink_OnMemVer&) = delete;
    ~CBnLink_OnMemVer() override;

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

    // Makes this table a copy of another one. On std::bad_alloc it is as it was.
    virtual CBnLink_OnMemVer& operator=(const CBnLink_OnMemVer& other);

private:
    // Whether the rows pos to pos + count - 1 are all in the table.
    bool ContainsRecs(DWORD pos, DWORD count) const noexcept;

    std::vector<CDWORDArray> fldList; // the columns in the order of their insertion
    CCriticalSection lock;            // held by the operations that change the structure
};

} // namespace NSKZ::NSKZCore

#endif
