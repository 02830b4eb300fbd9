#include "CRpLink_OnMemVer.h"

#include "SCLinkTableFile.h"
#include "SCVector.h"
#include "SRpLinkIndex.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace NSKZ::NSKZCore {

CRpLink_OnMemVer::CRpLink_OnMemVer() = default;
CRpLink_OnMemVer::~CRpLink_OnMemVer() = default;

CRpLink_OnMemVer& CRpLink_OnMemVer::operator=(const CRpLink_OnMemVer& other)
{
    CFldPosOfBtnClass fldPosCopy(other.fldPos);
    std::vector<CRecPosMap> recPosListCopy(other.recPosList);
    std::vector<CDWORDArray> recAreaListCopy;
    recAreaListCopy.reserve(other.recAreaList.size());
    for (const CDWORDArray& recArea : other.recAreaList)
        recAreaListCopy.push_back(recArea.Clone());
    fldPos = std::move(fldPosCopy);
    recPosList = std::move(recPosListCopy);
    recAreaList = std::move(recAreaListCopy);
    return *this;
}

bool CRpLink_OnMemVer::WriteTo(const char* dir) const
{
    return SRpLinkIndex::Write(dir, fldPos, recPosList) && SCLinkTableFile::WriteFlds(dir, recAreaList);
}

bool CRpLink_OnMemVer::ReadFrom(const char* dir, SCKZCoreCom::EEndianness endianness,
                                SCKZCoreCom::EDataModel dataModel)
{
    Clear();
    SRpLinkIndex index;
    if (!SCLinkTableFile::PrepareReading(dir, endianness, dataModel) || !index.Read(dir))
        return false;
    std::vector<CDWORDArray> readAreas(index.recPosList.size());
    for (std::size_t fld = 0; fld < readAreas.size(); ++fld) {
        if (!SCLinkTableFile::ReadFldOfUnknownLength(dir, static_cast<DWORD>(fld), index.areaSizes[fld],
                                                     readAreas[fld]))
            return false;
    }
    fldPos = std::move(index.fldPos);
    recPosList = std::move(index.recPosList);
    recAreaList = std::move(readAreas);
    return true;
}

bool CRpLink_OnMemVer::AppendFld(DWORD btnClassID, CDWORDArray&& recArea, CRecPosMap&& recPositions)
{
    SCVector::ReserveOneMore(recAreaList);
    SCVector::ReserveOneMore(recPosList);
    if (!fldPos.PrepareInsert(btnClassID))
        return false;
    // All memory is there: from here on nothing fails.
    fldPos.Insert(btnClassID, static_cast<DWORD>(recAreaList.size()));
    recAreaList.push_back(std::move(recArea));
    recPosList.push_back(std::move(recPositions));
    return true;
}

bool CRpLink_OnMemVer::InsertFld(DWORD btnClassID)
{
    const CCriticalSection::CGuard guard(lock);
    return AppendFld(btnClassID, CDWORDArray(), CRecPosMap());
}

bool CRpLink_OnMemVer::InsertFld(DWORD btnClassID, const TCBtnIDAssArr<SRecordList>& recLists, DWORD total)
{
    const CCriticalSection::CGuard guard(lock);
    if (!fldPos.PrepareInsert(btnClassID) || SCRecPosMap::GetSumOfRecCounts(recLists) > total)
        return false;
    CDWORDArray recArea(total);
    CRecPosMap recPositions;
    DWORD* behind = recArea.GetData();
    const DWORD used = SCRecPosMap::PlaceLists(recLists, recPositions, [&behind](const SRecordList& list) {
        behind = std::copy_n(list.recList, list.recCount, behind);
    });
    std::fill_n(behind, total - used, SCRecPosMap::UNUSED_CELL);
    return AppendFld(btnClassID, std::move(recArea), std::move(recPositions));
}

bool CRpLink_OnMemVer::DeleteFld(DWORD btnClassID)
{
    const CCriticalSection::CGuard guard(lock);
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    recAreaList.erase(recAreaList.begin() + static_cast<std::ptrdiff_t>(fld));
    recPosList.erase(recPosList.begin() + static_cast<std::ptrdiff_t>(fld));
    fldPos.Delete(btnClassID);
    return true;
}

void CRpLink_OnMemVer::DeleteFlds(const std::vector<DWORD>& btnClassIDs)
{
    const CCriticalSection::CGuard guard(lock);
    const std::vector<bool> isDeleted = fldPos.MarkFlds(btnClassIDs, static_cast<DWORD>(recAreaList.size()));
    fldPos.Delete(isDeleted); // from here on nothing fails
    SCVector::EraseMarked(recAreaList, isDeleted);
    SCVector::EraseMarked(recPosList, isDeleted);
}

bool CRpLink_OnMemVer::ReplaceRecList(DWORD fld, DWORD btnID, const DWORD* newList, DWORD newCount)
{
    CDWORDArray& recArea = recAreaList[fld];
    CRecPosMap& recPositions = recPosList[fld];
    const DWORD oldSize = recArea.GetCount();
    SRecordPos old;
    if (!recPositions.Get(btnID, old)) {
        if (newCount == 0)
            return true;
        if (!recPositions.MakeRoom(btnID))
            return false;
        recArea.Resize(std::uint64_t{oldSize} + newCount);
        recPositions.Set(btnID, SRecordPos{oldSize, newCount});
        std::copy_n(newList, newCount, recArea.GetData() + oldSize);
        return true;
    }

    const DWORD behindOld = old.recPos + old.recCount;
    const DWORD behindNew = old.recPos + newCount;
    if (newCount > old.recCount) {
        recArea.Resize(std::uint64_t{oldSize} - old.recCount + newCount);
        DWORD* const recs = recArea.GetData();
        std::move_backward(recs + behindOld, recs + oldSize, recs + recArea.GetCount());
    } else if (newCount < old.recCount) {
        // Rotated, not overwritten: if the heap cannot shrink the block, the records go back.
        DWORD* const recs = recArea.GetData();
        DWORD* const newEnd = std::rotate(recs + behindNew, recs + behindOld, recs + oldSize);
        try {
            recArea.Resize(static_cast<std::uint64_t>(newEnd - recs));
        } catch (...) {
            std::rotate(recs + behindNew, newEnd, recs + oldSize);
            throw;
        }
    }
    SCRecPosMap::Resize(recPositions, btnID, old, newCount, recArea.GetCount());
    std::copy_n(newList, newCount, recArea.GetData() + old.recPos);
    return true;
}

bool CRpLink_OnMemVer::AddRecList(DWORD btnClassID, DWORD btnID, const DWORD* recNumList, DWORD recCount)
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    SRecordPos old;
    if (!recPosList[fld].Get(btnID, old))
        return ReplaceRecList(fld, btnID, recNumList, recCount);
    CDWORDArray merged(std::uint64_t{old.recCount} + recCount);
    const DWORD mergedCount = SCKZCoreCom::MergeRecListByORCnd(
        recAreaList[fld].GetData() + old.recPos, old.recCount, recNumList, recCount, merged.GetData());
    return ReplaceRecList(fld, btnID, merged.GetData(), mergedCount);
}

bool CRpLink_OnMemVer::DeleteRecList(DWORD btnClassID, DWORD btnID, const DWORD* recNumList, DWORD recCount)
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    CDWORDArray& recArea = recAreaList[fld];
    SRecordPos* const entry = recPosList[fld].Find(btnID);
    if (entry == nullptr)
        return false;
    const SRecordPos old = *entry;
    DWORD* const slice = recArea.GetData() + old.recPos;
    DWORD read = 0;
    DWORD found = 0;
    for (; read < old.recCount && found < recCount; ++read) {
        if (slice[read] == recNumList[found])
            ++found;
        else if (found != 0)
            slice[read - found] = slice[read];
    }
    if (found == 0)
        return true;
    std::move(slice + read, recArea.GetData() + recArea.GetCount(), slice + (read - found));
    recArea.Shrink(recArea.GetCount() - found);
    entry->recCount -= found;
    // Not by what was found, and wanted so: see the class comment.
    SCRecPosMap::MoveBehind(recPosList[fld], old.recPos, recCount - old.recCount, recArea.GetCount());
    return true;
}

bool CRpLink_OnMemVer::GetRecList(DWORD btnClassID, DWORD btnID, DWORD* recNumList, DWORD& recCount) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    SRecordPos slice;
    recPosList[fld].Get(btnID, slice); // stays empty for a button without an entry
    std::copy_n(recAreaList[fld].GetData() + slice.recPos, slice.recCount, recNumList);
    recCount = slice.recCount;
    return true;
}

bool CRpLink_OnMemVer::GetAllRecList(DWORD btnClassID, TCBtnIDAssArr<SRecordList>& recLists,
                                     DWORD* recArea) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    std::copy_n(recAreaList[fld].GetData(), recAreaList[fld].GetCount(), recArea);
    recLists.Clear();
    recPosList[fld].ForEach([&](DWORD btnID, const SRecordPos& slice) {
        recLists.Set(btnID, SRecordList{recArea + slice.recPos, slice.recCount});
    });
    return true;
}

bool CRpLink_OnMemVer::ClearFld(DWORD btnClassID)
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    recAreaList[fld].Shrink(0);
    recPosList[fld].Clear();
    return true;
}

bool CRpLink_OnMemVer::ClearOfFixedSpec(DWORD btnClassID)
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    CDWORDArray& recArea = recAreaList[fld];
    CRecPosMap& recPositions = recPosList[fld];
    if (SCBUICoreCom::IsFixedVirBtnClass(btnClassID))
        return ClearFld(btnClassID);
    if (!SCRecPosMap::HasFixedSpec(recPositions))
        return true;

    // At first the length of the slice to drop at its first cell; then, at each cell, how many cells up to
    // and with it were dropped. One more cell than the area: an empty slice may stand behind its last record.
    const DWORD oldSize = recArea.GetCount();
    std::vector<DWORD> dropped(std::size_t{oldSize} + 1, 0);
    SCRecPosMap::MarkFixedSpec(recPositions, dropped);
    DWORD* const recs = recArea.GetData();
    DWORD dropEnd = 0;
    DWORD droppedCount = 0;
    for (DWORD i = 0; i < oldSize; ++i) {
        dropEnd = std::max(dropEnd, i + dropped[i]);
        if (i < dropEnd)
            ++droppedCount;
        else
            recs[i - droppedCount] = recs[i];
        dropped[i] = droppedCount;
    }
    dropped[oldSize] = droppedCount;
    recArea.Shrink(oldSize - droppedCount);
    SCRecPosMap::DropFixedSpec(recPositions, dropped, oldSize - droppedCount);
    return true;
}

bool CRpLink_OnMemVer::GetRecCountOfFld(DWORD btnClassID, DWORD& recCount) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    recCount = recAreaList[fld].GetCount();
    return true;
}

void CRpLink_OnMemVer::Clear()
{
    recAreaList.clear();
    recPosList.clear();
    fldPos.Clear();
}

void CRpLink_OnMemVer::InsertRec(DWORD btnClassID, DWORD pos, DWORD count,
                                 const TCBtnIDAssArr<SRecordList>& newRecLists, DWORD newTotal)
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return;
    ProveTotal(newRecLists, newTotal, "Src/CRpLink_OnMemVer", "NSKZ::NSKZCore::CRpLink_OnMemVer::InsertRec",
               __LINE__);
    CDWORDArray& recArea = recAreaList[fld];
    CRecPosMap& recPositions = recPosList[fld];
    const DWORD oldSize = recArea.GetCount();
    std::vector<DWORD> shift(std::size_t{oldSize} + 1, 0);
    CDWORDArray newArea(std::uint64_t{oldSize} + newTotal);
    SCRecPosMap::PrepareInsertRecs(recPositions, newRecLists);
    // All memory is there: from here on nothing fails.
    SCRecPosMap::InsertRecs(recPositions, recArea.GetData(), oldSize, pos, count, newRecLists, shift,
                            newArea.GetData(), newArea.GetCount());
    recArea = std::move(newArea);
}

void CRpLink_OnMemVer::DeleteRec(DWORD pos, DWORD count)
{
    DWORD largest = 0;
    for (const CDWORDArray& recArea : recAreaList)
        largest = std::max(largest, recArea.GetCount());
    CDWORDArray cutCounts(largest);
    for (std::size_t fld = 0; fld < recAreaList.size(); ++fld) {
        CDWORDArray& recArea = recAreaList[fld];
        recArea.Shrink(
            SCRecPosMap::CutRecs(recArea.GetData(), recArea.GetCount(), pos, count, cutCounts.GetData()));
        SCRecPosMap::AdjstToCuts(recPosList[fld], cutCounts.GetData());
    }
}

SCBUICoreCom::ELinkTableVerType CRpLink_OnMemVer::GetVersionType() const
{
    return SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
}

} // namespace NSKZ::NSKZCore
