#include "CBnLink_MemSavVer.h"

#include "CCellTable.h"
#include "CDistinctBtnIDs.h"
#include "CDWORDArray.h"
#include "SBnLinkIndex.h"
#include "SCLinkTableFile.h"

#include <limits>
#include <utility>

namespace NSKZ::NSKZCore {

CBnLink_MemSavVer::CBnLink_MemSavVer()
    : VCFixedLenTbl_MemSavVer(0, 0, nullptr, CCellTable::REC_SIZE, CCellTable::BLOCK_SIZE,
                              CCellTable::BTNS_OF_GROUP)
{}

CBnLink_MemSavVer::~CBnLink_MemSavVer() = default;

bool CBnLink_MemSavVer::WriteTo(const char* dir) const
{
    return SBnLinkIndex::Write(dir, fldCount, recCount, fldPos) &&
           SCLinkTableFile::WriteFlds(dir, *this, fldCount);
}

bool CBnLink_MemSavVer::ReadFrom(const char* dir, SCKZCoreCom::EEndianness endianness,
                                 SCKZCoreCom::EDataModel dataModel)
{
    Clear();
    SBnLinkIndex index;
    if (!SCLinkTableFile::PrepareReading(dir, endianness, dataModel) || !index.Read(dir))
        return false;
    CCellTable cells(CCellTable::BTNS_OF_GROUP);
    for (DWORD fld = 0; fld < index.fldCount; ++fld) {
        if (!SCLinkTableFile::AppendFld(dir, index.recCount, index.recCount, cells))
            return false;
    }
    SwapFlds(cells);
    recCount = index.recCount;
    fldPos = std::move(index.fldPos);
    return true;
}

bool CBnLink_MemSavVer::InsertFld(DWORD btnClassID, DWORD count, const DWORD* btnIDs)
{
    const CCriticalSection::CGuard guard(lock);
    if (fldCount != 0 && count != recCount)
        return false;
    if (!SCBUICoreCom::IsSrcBtnClass(btnClassID) || !fldPos.PrepareInsert(btnClassID) ||
        !Cells::InsertFld(fldCount, count, CCellTable::GetBytes(btnIDs)))
        return false;
    fldPos.Insert(btnClassID, fldCount - 1);
    recCount = count;
    return true;
}

bool CBnLink_MemSavVer::DeleteFld(DWORD btnClassID)
{
    const CCriticalSection::CGuard guard(lock);
    DWORD deleted = 0;
    if (!fldPos.Find(btnClassID, deleted) || !Cells::DeleteFld(deleted))
        return false;
    fldPos.Delete(btnClassID);
    return true;
}

bool CBnLink_MemSavVer::InsertRec(DWORD pos, DWORD count)
{
    const CCriticalSection::CGuard guard(lock);
    if (count > std::numeric_limits<DWORD>::max() - recCount || !Cells::InsertRec(pos, count, nullptr))
        return false;
    recCount += count;
    return true;
}

bool CBnLink_MemSavVer::DeleteRec(DWORD pos, DWORD count)
{
    const CCriticalSection::CGuard guard(lock);
    // Without a column the base knows of no rows.
    if (pos > recCount || count > recCount - pos || !Cells::DeleteRec(pos, count))
        return false;
    recCount -= count;
    return true;
}

bool CBnLink_MemSavVer::SetFldData(DWORD btnClassID, DWORD count, const DWORD* btnIDs)
{
    DWORD fld = 0;
    return fldPos.Find(btnClassID, fld) && Cells::SetFldData(fld, count, CCellTable::GetBytes(btnIDs));
}

bool CBnLink_MemSavVer::GetData(DWORD btnClassID, DWORD pos, DWORD count, DWORD* btnIDs) const
{
    DWORD fld = 0;
    return fldPos.Find(btnClassID, fld) && Cells::GetData(fld, pos, count, CCellTable::GetBytes(btnIDs));
}

bool CBnLink_MemSavVer::GetBtnIDListOfRecList(DWORD btnClassID, DWORD listCount, const DWORD* recNumList,
                                              std::vector<DWORD>& btnIDs) const
{
    if (!ExistFld(btnClassID))
        return false;
    CDWORDArray cells(listCount);
    if (!GetBtnIDsOfRecs(btnClassID, listCount, recNumList, cells.GetData()))
        return false;
    CDistinctBtnIDs(btnIDs).Meet(cells.GetData(), listCount);
    return true;
}

bool CBnLink_MemSavVer::GetBtnIDList(DWORD btnClassID, std::vector<DWORD>& btnIDs) const
{
    if (!ExistFld(btnClassID))
        return false;
    CDWORDArray cells(recCount);
    if (!GetData(btnClassID, 0, recCount, cells.GetData()))
        return false;
    CDistinctBtnIDs(btnIDs).Meet(cells.GetData(), recCount);
    return true;
}

bool CBnLink_MemSavVer::GetBtnID(DWORD btnClassID, DWORD recNum, DWORD& btnID) const
{
    return GetData(btnClassID, recNum, 1, &btnID);
}

bool CBnLink_MemSavVer::SetData(DWORD btnClassID, DWORD pos, DWORD count, const DWORD* btnIDs)
{
    DWORD fld = 0;
    return fldPos.Find(btnClassID, fld) && Cells::SetData(fld, pos, count, CCellTable::GetBytes(btnIDs));
}

void CBnLink_MemSavVer::Clear()
{
    Cells::Clear();
    fldPos.Clear();
    recCount = 0;
}

SCBUICoreCom::ELinkTableVerType CBnLink_MemSavVer::GetVersionType() const
{
    return SCBUICoreCom::LINKTBLVERTYPE_MEMSAV;
}

bool CBnLink_MemSavVer::GetBtnIDsOfRecs(DWORD btnClassID, DWORD listCount, const DWORD* recNumList,
                                        DWORD* btnIDs) const
{
    DWORD fld = 0;
    return fldPos.Find(btnClassID, fld) && GetListedData(fld, recNumList, listCount, btnIDs);
}

} // namespace NSKZ::NSKZCore
