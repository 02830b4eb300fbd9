#include "CRpLink_MemSavVer.h"

#include "CCellTable.h"
#include "CDWORDArray.h"
#include "SCLinkTableFile.h"
#include "SCVector.h"
#include "SRpLinkIndex.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

namespace NSKZ::NSKZCore {

namespace {

// Puts lists of any length behind the cells of a field, some ten thousand cells at a time.
class CListAppender
{
public:
    explicit CListAppender(CCellTable& cellTable) : cells(cellTable), buffer(CELLS_AT_ONCE) {}

    void Append(const DWORD* list, DWORD count)
    {
        while (count != 0) {
            const DWORD taken = std::min(count, CELLS_AT_ONCE - held);
            std::copy_n(list, taken, buffer.GetData() + held);
            list += taken;
            count -= taken;
            held += taken;
            if (held == CELLS_AT_ONCE)
                Flush();
        }
    }

    void Flush()
    {
        cells.InsertRec(0, cells.GetRecCount(0), held, CCellTable::GetBytes(buffer.GetData()));
        held = 0;
    }

private:
    static constexpr DWORD CELLS_AT_ONCE = 61440; // whole blocks

    CCellTable& cells; // of one field
    CDWORDArray buffer;
    DWORD held = 0;
};

// Removes what of the slices of a class is not in its area; see the class comment.
void CutToArea(CRecPosMap& recPositions, DWORD areaSize) noexcept
{
    recPositions.ForEach([&](DWORD btnID, SRecordPos& slice) {
        slice.recCount = std::min(slice.recCount, areaSize - slice.recPos);
        if (slice.recCount == 0)
            recPositions.Remove(btnID);
    });
}

} // namespace

CRpLink_MemSavVer::CRpLink_MemSavVer()
    : VCFixedLenTbl_MemSavVer(0, 0, nullptr, CCellTable::REC_SIZE, CCellTable::BLOCK_SIZE,
                              CCellTable::RECS_OF_GROUP)
{}

CRpLink_MemSavVer::~CRpLink_MemSavVer() = default;

bool CRpLink_MemSavVer::WriteTo(const char* dir) const
{
    return SRpLinkIndex::Write(dir, fldPos, recPosList) && SCLinkTableFile::WriteFlds(dir, *this, fldCount);
}

bool CRpLink_MemSavVer::ReadFrom(const char* dir, SCKZCoreCom::EEndianness endianness,
                                 SCKZCoreCom::EDataModel dataModel)
{
    Clear();
    SRpLinkIndex index;
    if (!SCLinkTableFile::PrepareReading(dir, endianness, dataModel) || !index.Read(dir))
        return false;
    CCellTable recAreas(CCellTable::RECS_OF_GROUP);
    for (const DWORD areaSize : index.areaSizes) {
        if (!SCLinkTableFile::AppendFld(dir, areaSize, std::numeric_limits<DWORD>::max(), recAreas))
            return false;
    }
    SwapFlds(recAreas);
    fldPos = std::move(index.fldPos);
    recPosList = std::move(index.recPosList);
    return true;
}

bool CRpLink_MemSavVer::AppendFld(DWORD btnClassID, VCFixedLenTbl_MemSavVer& recArea,
                                  CRecPosMap&& recPositions)
{
    SCVector::ReserveOneMore(recPosList);
    if (!fldPos.PrepareInsert(btnClassID) || !Cells::InsertFld(fldCount, 0, nullptr))
        return false;
    // All memory is there: from here on nothing fails.
    SwapFld(fldCount - 1, recArea, 0);
    fldPos.Insert(btnClassID, fldCount - 1);
    recPosList.push_back(std::move(recPositions));
    return true;
}

bool CRpLink_MemSavVer::InsertFld(DWORD btnClassID)
{
    const CCriticalSection::CGuard guard(lock);
    CCellTable recArea(CCellTable::RECS_OF_GROUP);
    recArea.InsertFld(0, 0, nullptr);
    return AppendFld(btnClassID, recArea, CRecPosMap());
}

bool CRpLink_MemSavVer::InsertFld(DWORD btnClassID, const TCBtnIDAssArr<SRecordList>& recLists, DWORD total)
{
    const CCriticalSection::CGuard guard(lock);
    if (!fldPos.PrepareInsert(btnClassID) || SCRecPosMap::GetSumOfRecCounts(recLists) > total)
        return false;
    CCellTable recArea(CCellTable::RECS_OF_GROUP);
    recArea.InsertFld(0, 0, nullptr);
    CRecPosMap recPositions;
    CListAppender appender(recArea);
    SCRecPosMap::PlaceLists(recLists, recPositions, [&appender](const SRecordList& list) {
        appender.Append(list.recList, list.recCount);
    });
    appender.Flush();
    recArea.ReallocateRecArea(0, total);
    return AppendFld(btnClassID, recArea, std::move(recPositions));
}

bool CRpLink_MemSavVer::DeleteFld(DWORD btnClassID)
{
    const CCriticalSection::CGuard guard(lock);
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld) || !Cells::DeleteFld(fld))
        return false;
    recPosList.erase(recPosList.begin() + static_cast<std::ptrdiff_t>(fld));
    fldPos.Delete(btnClassID);
    return true;
}

void CRpLink_MemSavVer::DeleteFlds(const std::vector<DWORD>& btnClassIDs)
{
    const CCriticalSection::CGuard guard(lock);
    const std::vector<bool> isDeleted = fldPos.MarkFlds(btnClassIDs, fldCount);
    fldPos.Delete(isDeleted); // from here on nothing fails
    Cells::DeleteFlds(isDeleted);
    SCVector::EraseMarked(recPosList, isDeleted);
}

bool CRpLink_MemSavVer::ReplaceRecList(DWORD fld, DWORD btnID, const DWORD* newList, DWORD newCount)
{
    CRecPosMap& recPositions = recPosList[fld];
    const DWORD oldSize = recCountList[fld];
    SRecordPos old;
    if (!recPositions.Get(btnID, old)) {
        if (newCount == 0)
            return true;
        if (!recPositions.MakeRoom(btnID))
            return false;
        // The entry comes first, and stays where there is no room: see the class comment.
        const bool isInserted = Cells::InsertRec(fld, oldSize, newCount, CCellTable::GetBytes(newList));
        recPositions.Set(btnID, SRecordPos{oldSize, newCount});
        return isInserted;
    }
    const DWORD heldCount = std::min(old.recCount, oldSize - std::min(old.recPos, oldSize));
    if (!ReplaceRec(fld, old.recPos, heldCount, newCount, CCellTable::GetBytes(newList)))
        return false;
    SCRecPosMap::Resize(recPositions, btnID, SRecordPos{old.recPos, heldCount}, newCount, recCountList[fld]);
    return true;
}

bool CRpLink_MemSavVer::AddRecList(DWORD btnClassID, DWORD btnID, const DWORD* recNumList, DWORD recCount)
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    SRecordPos old;
    if (!recPosList[fld].Get(btnID, old))
        return ReplaceRecList(fld, btnID, recNumList, recCount);
    CDWORDArray oldList(old.recCount);
    CDWORDArray merged(std::uint64_t{old.recCount} + recCount);
    if (!GetData(fld, old.recPos, old.recCount, CCellTable::GetBytes(oldList.GetData())))
        return false;
    const DWORD mergedCount = SCKZCoreCom::MergeRecListByORCnd(oldList.GetData(), old.recCount, recNumList,
                                                               recCount, merged.GetData());
    return ReplaceRecList(fld, btnID, merged.GetData(), mergedCount);
}

bool CRpLink_MemSavVer::DeleteRecList(DWORD btnClassID, DWORD btnID, const DWORD* recNumList, DWORD)
{
    DWORD fld = 0;
    SRecordPos old;
    if (!fldPos.Find(btnClassID, fld) || !recPosList[fld].Get(btnID, old))
        return false;
    CDWORDArray list(old.recCount);
    DWORD* const recs = list.GetData();
    if (!GetData(fld, old.recPos, old.recCount, CCellTable::GetBytes(recs)))
        return false;
    DWORD found = 0;
    for (DWORD i = 0; i < old.recCount; ++i) {
        if (recs[i] != recNumList[found])
            continue;
        // By bytes, and wanted so: see the class comment.
        std::memmove(recs + i, recs + i + 1, old.recCount - i - 1);
        ++found;
    }
    return found != 0 && ReplaceRecList(fld, btnID, recs, old.recCount - found);
}

bool CRpLink_MemSavVer::GetRecList(DWORD btnClassID, DWORD btnID, DWORD* recNumList, DWORD& recCount) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    SRecordPos slice;
    const bool hasEntry = recPosList[fld].Get(btnID, slice);
    recCount = slice.recCount; // 0 for a button without an entry
    return !hasEntry || GetData(fld, slice.recPos, slice.recCount, CCellTable::GetBytes(recNumList));
}

bool CRpLink_MemSavVer::GetAllRecList(DWORD btnClassID, TCBtnIDAssArr<SRecordList>& recLists,
                                      DWORD* recArea) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    ReadArea(fld, recArea);
    const DWORD areaSize = recCountList[fld];
    recLists.Clear();
    recPosList[fld].ForEach([&](DWORD btnID, const SRecordPos& slice) {
        const DWORD heldCount = std::min(slice.recCount, areaSize - slice.recPos);
        recLists.Set(btnID, SRecordList{recArea + slice.recPos, heldCount});
    });
    return true;
}

void CRpLink_MemSavVer::ReadArea(DWORD fld, DWORD* recs) const noexcept
{
    GetData(fld, 0, recCountList[fld], CCellTable::GetBytes(recs));
}

bool CRpLink_MemSavVer::ClearFld(DWORD btnClassID)
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld) || !ReallocateRecArea(fld, 0))
        return false;
    recPosList[fld].Clear();
    return true;
}

bool CRpLink_MemSavVer::ClearOfFixedSpec(DWORD btnClassID)
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    CRecPosMap& recPositions = recPosList[fld];
    if (SCBUICoreCom::IsFixedVirBtnClass(btnClassID))
        return ClearFld(btnClassID);
    if (!SCRecPosMap::HasFixedSpec(recPositions))
        return true;

    // At first the length of the slice to drop at its first cell; then, at each cell, how many cells have
    // been taken out before it.
    const DWORD oldSize = recCountList[fld];
    std::vector<DWORD> dropped(std::size_t{oldSize} + 1, 0);
    SCRecPosMap::MarkFixedSpec(recPositions, dropped);
    CDWORDArray recs(oldSize);
    ReadArea(fld, recs.GetData());
    CCellTable recArea(CCellTable::RECS_OF_GROUP);
    recArea.InsertFld(0, oldSize, CCellTable::GetBytes(recs.GetData()));
    DWORD droppedCount = 0;
    for (DWORD i = 0; i < oldSize;) {
        const DWORD begin = i;
        while (i < oldSize && dropped[i] != 0)
            i += std::min(dropped[i], oldSize - i);
        // At the position of before, and wanted so: see the class comment.
        if (i != begin && recArea.DeleteRec(0, begin, i - begin))
            droppedCount += i - begin;
        std::fill(dropped.begin() + begin, dropped.begin() + i, droppedCount);
        if (i < oldSize)
            dropped[i++] = droppedCount;
    }
    dropped[oldSize] = droppedCount;
    SwapFld(fld, recArea, 0);
    SCRecPosMap::DropFixedSpec(recPositions, dropped, recCountList[fld]);
    return true;
}

bool CRpLink_MemSavVer::GetRecCountOfFld(DWORD btnClassID, DWORD& recCount) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    recCount = recCountList[fld];
    return true;
}

void CRpLink_MemSavVer::Clear()
{
    Cells::Clear();
    recPosList.clear();
    fldPos.Clear();
}

void CRpLink_MemSavVer::InsertRec(DWORD btnClassID, DWORD pos, DWORD count,
                                  const TCBtnIDAssArr<SRecordList>& newRecLists, DWORD newTotal)
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return;
    ProveTotal(newRecLists, newTotal, "Src/CRpLink_MemSavVer", "NSKZ::NSKZCore::CRpLink_MemSavVer::InsertRec",
               __LINE__);
    const DWORD oldSize = recCountList[fld];
    CDWORDArray oldRecs(oldSize);
    ReadArea(fld, oldRecs.GetData());
    CDWORDArray newRecs(std::uint64_t{oldSize} + newTotal);
    CRecPosMap newPositions(recPosList[fld]);
    CutToArea(newPositions, oldSize);
    SCRecPosMap::PrepareInsertRecs(newPositions, newRecLists);
    {
        std::vector<DWORD> shift(std::size_t{oldSize} + 1, 0);
        SCRecPosMap::InsertRecs(newPositions, oldRecs.GetData(), oldSize, pos, count, newRecLists, shift,
                                newRecs.GetData(), newRecs.GetCount());
    }
    ReplaceRec(fld, 0, oldSize, newRecs.GetCount(), CCellTable::GetBytes(newRecs.GetData()));
    recPosList[fld] = std::move(newPositions);
}

void CRpLink_MemSavVer::DeleteRec(DWORD pos, DWORD count)
{
    DWORD largest = 0;
    for (unsigned int fld = 0; fld < fldCount; ++fld)
        largest = std::max(largest, recCountList[fld]);
    CDWORDArray recs(largest);
    CDWORDArray cutCounts(largest);
    CCellTable newAreas(CCellTable::RECS_OF_GROUP);
    const auto cut = [&](DWORD fld) {
        ReadArea(fld, recs.GetData());
        return SCRecPosMap::CutRecs(recs.GetData(), recCountList[fld], pos, count, cutCounts.GetData());
    };
    for (DWORD fld = 0; fld < fldCount; ++fld) {
        const DWORD kept = cut(fld);
        newAreas.InsertFld(fld, kept, CCellTable::GetBytes(recs.GetData()));
    }
    // All memory is there: from here on nothing fails. The cuts are told once more rather than kept for all.
    for (DWORD fld = 0; fld < fldCount; ++fld) {
        cut(fld);
        CutToArea(recPosList[fld], recCountList[fld]);
        SCRecPosMap::AdjstToCuts(recPosList[fld], cutCounts.GetData());
    }
    SwapFlds(newAreas);
}

SCBUICoreCom::ELinkTableVerType CRpLink_MemSavVer::GetVersionType() const
{
    return SCBUICoreCom::LINKTBLVERTYPE_MEMSAV;
}

} // namespace NSKZ::NSKZCore
