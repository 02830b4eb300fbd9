#include "SCRecPosMap.h"

#include "SCKZCoreCom.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

namespace {

// Draws a slice back into an area of `areaSize` cells. Slices that overlap, as DeleteRecList can leave them,
// would otherwise end up outside when the area below them shrinks.
void ConfineToArea(SRecordPos& slice, DWORD areaSize) noexcept
{
    slice.recCount = std::min(slice.recCount, areaSize);
    slice.recPos = std::min(slice.recPos, areaSize - slice.recCount);
}

bool IsOfFixedSpec(DWORD btnID) noexcept
{
    return SCBUICoreCom::IsIncBtn(btnID) || SCBUICoreCom::IsCllBtn(btnID);
}

} // namespace

std::uint64_t SCRecPosMap::GetSumOfRecCounts(const TCBtnIDAssArr<SRecordList>& recLists)
{
    std::uint64_t sum = 0;
    recLists.ForEach([&sum](DWORD, const SRecordList& list) { sum += list.recCount; });
    return sum;
}

void SCRecPosMap::Resize(CRecPosMap& recPositions, DWORD btnID, const SRecordPos& old, DWORD newCount,
                         DWORD areaSize) noexcept
{
    if (newCount == 0)
        recPositions.Remove(btnID);
    else
        recPositions.Set(btnID, SRecordPos{old.recPos, newCount});
    if (newCount != old.recCount)
        MoveBehind(recPositions, old.recPos, newCount - old.recCount, areaSize);
}

void SCRecPosMap::MoveBehind(CRecPosMap& recPositions, DWORD recPos, DWORD delta, DWORD areaSize) noexcept
{
    recPositions.ForEach([&](DWORD, SRecordPos& slice) {
        if (slice.recPos > recPos)
            slice.recPos += delta;
        ConfineToArea(slice, areaSize);
    });
}

bool SCRecPosMap::HasFixedSpec(const CRecPosMap& recPositions) noexcept
{
    return recPositions.ExistOfType(SCBUICoreCom::BTNTYPE_INC) ||
           recPositions.ExistOfType(SCBUICoreCom::BTNTYPE_CLL);
}

void SCRecPosMap::MarkFixedSpec(const CRecPosMap& recPositions, std::vector<DWORD>& lengths) noexcept
{
    recPositions.ForEach([&lengths](DWORD btnID, const SRecordPos& slice) {
        if (IsOfFixedSpec(btnID))
            lengths[slice.recPos] = std::max(lengths[slice.recPos], slice.recCount);
    });
}

void SCRecPosMap::DropFixedSpec(CRecPosMap& recPositions, const std::vector<DWORD>& dropped,
                                DWORD areaSize) noexcept
{
    recPositions.ForEach([&](DWORD btnID, SRecordPos& slice) {
        if (IsOfFixedSpec(btnID)) {
            recPositions.Remove(btnID);
            return;
        }
        slice.recPos -= dropped[slice.recPos];
        ConfineToArea(slice, areaSize);
    });
}

void SCRecPosMap::PrepareInsertRecs(CRecPosMap& recPositions, const TCBtnIDAssArr<SRecordList>& newRecLists)
{
    newRecLists.ForEach([&recPositions](DWORD btnID, const SRecordList& list) {
        if (list.recCount != 0)
            recPositions.MakeRoom(btnID);
    });
}

void SCRecPosMap::InsertRecs(CRecPosMap& recPositions, DWORD* oldRecs, DWORD oldSize, DWORD pos, DWORD count,
                             const TCBtnIDAssArr<SRecordList>& newRecLists, std::vector<DWORD>& shift,
                             DWORD* newRecs, DWORD newSize) noexcept
{
    std::fill_n(newRecs, newSize, UNUSED_CELL);
    for (DWORD i = 0; i < oldSize; ++i) {
        if (oldRecs[i] >= pos)
            oldRecs[i] += count;
    }
    // At first the room a slice needs more, at its first cell; then, at each cell, the sum of it so far. One
    // more cell than the area: an empty slice may stand behind its last record.
    newRecLists.ForEach([&](DWORD btnID, const SRecordList& list) {
        if (const SRecordPos* const slice = recPositions.Find(btnID))
            shift[slice->recPos] += list.recCount;
    });
    for (DWORD i = 0; i < oldSize; ++i)
        shift[i + 1] += shift[i];
    recPositions.ForEach([&](DWORD btnID, SRecordPos& slice) {
        const DWORD* const oldList = oldRecs + slice.recPos;
        slice.recPos += slice.recPos == 0 ? 0 : shift[slice.recPos - 1];
        if (const SRecordList* const newList = newRecLists.Find(btnID))
            slice.recCount = SCKZCoreCom::MergeRecListByORCnd(oldList, slice.recCount, newList->recList,
                                                              newList->recCount, newRecs + slice.recPos);
        else
            std::copy_n(oldList, slice.recCount, newRecs + slice.recPos);
    });
    DWORD free = oldSize + shift[oldSize];
    newRecLists.ForEach([&](DWORD btnID, const SRecordList& list) {
        if (list.recCount == 0 || recPositions.Exist(btnID))
            return;
        std::copy_n(list.recList, list.recCount, newRecs + free);
        recPositions.Set(btnID, SRecordPos{free, list.recCount});
        free += list.recCount;
    });
}

DWORD SCRecPosMap::CutRecs(DWORD* recs, DWORD size, DWORD pos, DWORD count, DWORD* cutCounts) noexcept
{
    DWORD cut = 0;
    for (DWORD i = 0; i < size; ++i) {
        const DWORD recNum = recs[i];
        if (recNum >= pos && recNum - pos < count)
            ++cut;
        else
            recs[i - cut] = recNum < pos ? recNum : recNum - count;
        cutCounts[i] = cut;
    }
    return size - cut;
}

void SCRecPosMap::AdjstToCuts(CRecPosMap& recPositions, const DWORD* cutCounts) noexcept
{
    recPositions.ForEach([&](DWORD btnID, SRecordPos& slice) {
        const DWORD cutBefore = slice.recPos == 0 ? 0 : cutCounts[slice.recPos - 1];
        if (slice.recCount != 0)
            slice.recCount -= cutCounts[slice.recPos + slice.recCount - 1] - cutBefore;
        slice.recPos -= cutBefore;
        if (slice.recCount == 0)
            recPositions.Remove(btnID);
    });
}

} // namespace NSKZ::NSKZCore
