#include "CBnLink_OnMemVer.h"

#include "CDistinctBtnIDs.h"
#include "SBnLinkIndex.h"
#include "SCLinkTableFile.h"
#include "SCVector.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace NSKZ::NSKZCore {

CBnLink_OnMemVer::CBnLink_OnMemVer() = default;
CBnLink_OnMemVer::~CBnLink_OnMemVer() = default;

CBnLink_OnMemVer& CBnLink_OnMemVer::operator=(const CBnLink_OnMemVer& other)
{
    CFldPosOfBtnClass fldPosCopy(other.fldPos);
    std::vector<CDWORDArray> fldListCopy;
    fldListCopy.reserve(other.fldList.size());
    for (const CDWORDArray& fld : other.fldList)
        fldListCopy.push_back(fld.Clone());
    recCount = other.recCount;
    fldPos = std::move(fldPosCopy);
    fldList = std::move(fldListCopy);
    return *this;
}

bool CBnLink_OnMemVer::WriteTo(const char* dir) const
{
    return SBnLinkIndex::Write(dir, static_cast<DWORD>(fldList.size()), recCount, fldPos) &&
           SCLinkTableFile::WriteFlds(dir, fldList);
}

bool CBnLink_OnMemVer::ReadFrom(const char* dir, SCKZCoreCom::EEndianness endianness,
                                SCKZCoreCom::EDataModel dataModel)
{
    Clear();
    SBnLinkIndex index;
    if (!SCLinkTableFile::PrepareReading(dir, endianness, dataModel) || !index.Read(dir))
        return false;
    std::vector<CDWORDArray> readFlds(index.fldCount);
    for (DWORD fld = 0; fld < index.fldCount; ++fld) {
        if (!SCLinkTableFile::ReadFld(dir, fld, index.recCount, readFlds[fld]))
            return false;
    }
    recCount = index.recCount;
    fldPos = std::move(index.fldPos);
    fldList = std::move(readFlds);
    return true;
}

bool CBnLink_OnMemVer::ContainsRecs(DWORD pos, DWORD count) const noexcept
{
    return pos <= recCount && count <= recCount - pos;
}

bool CBnLink_OnMemVer::InsertFld(DWORD btnClassID, DWORD count, const DWORD* btnIDs)
{
    const CCriticalSection::CGuard guard(lock);
    if (!fldList.empty() && count != recCount)
        return false;
    if (!SCBUICoreCom::IsSrcBtnClass(btnClassID) || ExistFld(btnClassID))
        return false;
    CDWORDArray cells(count);
    if (btnIDs != nullptr)
        std::copy_n(btnIDs, count, cells.GetData());
    SCVector::ReserveOneMore(fldList);
    fldPos.PrepareInsert(btnClassID);
    // All memory is there: from here on nothing fails.
    fldPos.Insert(btnClassID, static_cast<DWORD>(fldList.size()));
    fldList.push_back(std::move(cells));
    recCount = count;
    return true;
}

bool CBnLink_OnMemVer::DeleteFld(DWORD btnClassID)
{
    const CCriticalSection::CGuard guard(lock);
    DWORD deleted = 0;
    if (!fldPos.Find(btnClassID, deleted))
        return false;
    fldList.erase(fldList.begin() + static_cast<std::ptrdiff_t>(deleted));
    fldPos.Delete(btnClassID);
    return true;
}

bool CBnLink_OnMemVer::InsertRec(DWORD pos, DWORD count)
{
    if (count == 0)
        return true;
    const CCriticalSection::CGuard guard(lock);
    if (count > std::numeric_limits<DWORD>::max() - recCount)
        return false;
    pos = std::min(pos, recCount);
    const DWORD newCount = recCount + count;
    std::size_t grown = 0;
    try {
        for (; grown < fldList.size(); ++grown)
            fldList[grown].Resize(newCount);
    } catch (...) {
        while (grown > 0)
            fldList[--grown].Shrink(recCount);
        throw;
    }
    for (CDWORDArray& fld : fldList) {
        DWORD* const cells = fld.GetData();
        std::move_backward(cells + pos, cells + recCount, cells + newCount);
    }
    recCount = newCount;
    return true;
}

bool CBnLink_OnMemVer::DeleteRec(DWORD pos, DWORD count)
{
    const CCriticalSection::CGuard guard(lock);
    if (!ContainsRecs(pos, count))
        return false;
    for (CDWORDArray& fld : fldList) {
        DWORD* const cells = fld.GetData();
        std::move(cells + pos + count, cells + recCount, cells + pos);
        fld.Shrink(recCount - count);
    }
    recCount -= count;
    return true;
}

bool CBnLink_OnMemVer::SetFldData(DWORD btnClassID, DWORD count, const DWORD* btnIDs)
{
    return count == recCount && SetData(btnClassID, 0, count, btnIDs);
}

bool CBnLink_OnMemVer::GetData(DWORD btnClassID, DWORD pos, DWORD count, DWORD* btnIDs) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld) || !ContainsRecs(pos, count))
        return false;
    std::copy_n(fldList[fld].GetData() + pos, count, btnIDs);
    return true;
}

bool CBnLink_OnMemVer::GetBtnIDListOfRecList(DWORD btnClassID, DWORD listCount, const DWORD* recNumList,
                                             std::vector<DWORD>& btnIDs) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    const DWORD* const cells = fldList[fld].GetData();
    CDistinctBtnIDs distinct(btnIDs);
    for (DWORD i = 0; i < listCount; ++i)
        distinct.Meet(cells[recNumList[i]]);
    return true;
}

bool CBnLink_OnMemVer::GetBtnIDList(DWORD btnClassID, std::vector<DWORD>& btnIDs) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    const DWORD* const cells = fldList[fld].GetData();
    CDistinctBtnIDs(btnIDs).Meet(cells, recCount);
    return true;
}

bool CBnLink_OnMemVer::GetBtnID(DWORD btnClassID, DWORD recNum, DWORD& btnID) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld) || recNum >= recCount)
        return false;
    btnID = fldList[fld].GetData()[recNum];
    return true;
}

bool CBnLink_OnMemVer::SetData(DWORD btnClassID, DWORD pos, DWORD count, const DWORD* btnIDs)
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld) || !ContainsRecs(pos, count))
        return false;
    std::copy_n(btnIDs, count, fldList[fld].GetData() + pos);
    return true;
}

void CBnLink_OnMemVer::Clear()
{
    fldList.clear();
    fldPos.Clear();
    recCount = 0;
}

SCBUICoreCom::ELinkTableVerType CBnLink_OnMemVer::GetVersionType() const
{
    return SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
}

bool CBnLink_OnMemVer::GetBtnIDsOfRecs(DWORD btnClassID, DWORD listCount, const DWORD* recNumList,
                                       DWORD* btnIDs) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    const DWORD* const cells = fldList[fld].GetData();
    for (DWORD i = 0; i < listCount; ++i)
        btnIDs[i] = cells[recNumList[i]];
    return true;
}

} // namespace NSKZ::NSKZCore
