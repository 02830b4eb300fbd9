#include "CRpLink_OnMemVer.h"

#include "CBinaryWriter.h"
#include "CLinkTableIndexReader.h"
#include "SCKZCoreStrDef.h"
#include "SCLinkTableFile.h"
#include "SCMemory.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <utility>

namespace NSKZ::NSKZCore {

namespace {

// What cells of an area hold that belong to no slice, so that a copy of the area holds nothing by chance.
constexpr DWORD UNUSED_CELL = 4294967295;

std::uint64_t GetSumOfRecCounts(const TCBtnIDAssArr<SRecordList>& recLists)
{
    std::uint64_t sum = 0;
    recLists.ForEach([&sum](DWORD, const SRecordList& list) { sum += list.recCount; });
    return sum;
}

// Draws a slice back into an area of `areaSize` cells. Slices that overlap, as DeleteRecList can leave them,
// would otherwise end up outside when the area below them shrinks.
void ConfineToArea(SRecordPos& slice, DWORD areaSize) noexcept
{
    slice.recCount = std::min(slice.recCount, areaSize);
    slice.recPos = std::min(slice.recPos, areaSize - slice.recCount);
}

using CRecPosMap = TCBtnIDAssArr<SRecordPos>;

// The entries of a field as its file has them: button, position and count, one behind the other.
class CEntryList
{
public:
    // How many numbers an entry is.
    static constexpr DWORD SIZE = 3;

    // Reads the entries of a field. False with the last error.
    bool Read(CLinkTableIndexReader& reader)
    {
        DWORD readCount = 0;
        if (!reader.Read(readCount) || !reader.ReadList(std::uint64_t{readCount} * SIZE, numbers))
            return false;
        count = readCount;
        return true;
    }

    // Calls visit(btnID, slice) for each, in the order of the file, until it gives false; returns whether it
    // never did.
    template <class TVisit>
    bool VisitAll(TVisit&& visit) const
    {
        const DWORD* entry = numbers.GetData();
        for (DWORD i = 0; i < count; ++i, entry += SIZE) {
            if (!visit(entry[0], SRecordPos{entry[1], entry[2]}))
                return false;
        }
        return true;
    }

    DWORD GetCount() const noexcept { return count; }

private:
    CDWORDArray numbers;
    DWORD count = 0;
};

// Whether the slices of a field lie each behind the one before, or can be brought in such an order: none is
// empty, no two share a cell, and no cell is beyond what a DWORD numbers. `areaSize` becomes the cells they
// need. Linear for slices in order.
bool AreSlicesApart(const CEntryList& entries, DWORD& areaSize)
{
    DWORD end = 0;
    const auto goesOn = [&end](const SRecordPos& slice) {
        if (slice.recPos < end || slice.recCount == 0 ||
            slice.recCount > std::numeric_limits<DWORD>::max() - slice.recPos)
            return false;
        end = slice.recPos + slice.recCount;
        return true;
    };
    if (!entries.VisitAll([&](DWORD, const SRecordPos& slice) { return goesOn(slice); })) {
        std::vector<SRecordPos> slices;
        slices.reserve(entries.GetCount());
        entries.VisitAll([&](DWORD, const SRecordPos& slice) {
            slices.push_back(slice);
            return true;
        });
        std::sort(slices.begin(), slices.end(),
                  [](const SRecordPos& left, const SRecordPos& right) { return left.recPos < right.recPos; });
        end = 0;
        if (!std::all_of(slices.begin(), slices.end(), goesOn))
            return false;
    }
    areaSize = end;
    return true;
}

// The slots that the maps of a table may still take. They are indexed by button, so that one entry of a large
// identifier would take the memory of all below it; in a table that was in use they are a few for an entry.
class CSlotAllowance
{
public:
    explicit CSlotAllowance(std::uint64_t entryCountOfTable)
        : rest(FREE_SLOTS + SLOTS_PER_ENTRY * entryCountOfTable)
    {}

    // Takes `count` slots; false if there are not so many left.
    bool Take(std::uint64_t count) noexcept
    {
        if (count > rest)
            return false;
        rest -= count;
        return true;
    }

private:
    static constexpr std::uint64_t FREE_SLOTS = 1048576;
    static constexpr std::uint64_t SLOTS_PER_ENTRY = 16;

    std::uint64_t rest;
};

// Makes the map of a field of its entries. False if a button is none or occurs twice, or if the slots are too
// many.
bool MakeRecPosMap(const CEntryList& entries, CSlotAllowance& allowance, CRecPosMap& recPositions)
{
    // Of each type of button the largest identifier: the map takes its room at once.
    std::array<DWORD, SCBUICoreCom::BTNTYPE_CLL + 1> largestIDs = {};
    const auto keepLargest = [&largestIDs](DWORD btnID, const SRecordPos&) {
        SCBUICoreCom::EBtnType type = SCBUICoreCom::BTNTYPE_NORMAL;
        if (!SCBUICoreCom::GetBtnType(btnID, type))
            return false;
        largestIDs[type] = std::max(largestIDs[type], btnID);
        return true;
    };
    if (!entries.VisitAll(keepLargest))
        return false;
    constexpr std::pair<SCBUICoreCom::EBtnType, DWORD> FIRST_IDS[] = {
        {SCBUICoreCom::BTNTYPE_NORMAL, SCBUICoreCom::BTN_ID_NRM_BEGIN},
        {SCBUICoreCom::BTNTYPE_INC, SCBUICoreCom::BTN_ID_INC_BEGIN},
        {SCBUICoreCom::BTNTYPE_CLL, SCBUICoreCom::BTN_ID_CLL_BEGIN},
        {SCBUICoreCom::BTNTYPE_VIRINC, SCBUICoreCom::BTN_ID_VIRINC_BEGIN},
    };
    for (const auto& [type, firstID] : FIRST_IDS) {
        if (largestIDs[type] == 0)
            continue;
        if (!allowance.Take(std::uint64_t{largestIDs[type]} - firstID + 1))
            return false;
        recPositions.MakeRoom(largestIDs[type]);
    }
    return entries.VisitAll([&recPositions](DWORD btnID, const SRecordPos& slice) {
        return !recPositions.Exist(btnID) && recPositions.Set(btnID, slice);
    });
}

// What the index file holds, and how many cells each record area needs at least.
struct SIndex
{
    CFldPosOfBtnClass fldPos;
    std::vector<CRecPosMap> recPosList;
    std::vector<DWORD> areaSizes;
};

bool ReadIndex(const char* dir, SIndex& index)
{
    CLinkTableIndexReader reader(dir);
    DWORD fldCount = 0;
    if (!index.fldPos.ReadFrom(reader, fldCount))
        return false;
    CSlotAllowance allowance(reader.GetRestCount() / CEntryList::SIZE);
    for (DWORD fld = 0; fld < fldCount; ++fld) {
        CEntryList entries;
        if (!entries.Read(reader))
            return false;
        if (!AreSlicesApart(entries, index.areaSizes.emplace_back()) ||
            !MakeRecPosMap(entries, allowance, index.recPosList.emplace_back())) {
            SetLastError(ERROR_INVALID_DATA);
            return false;
        }
    }
    return reader.ProveEnd();
}

} // namespace

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
    return SCLinkTableFile::PrepareWriting(dir) && WriteIndex(dir) &&
           SCLinkTableFile::WriteFlds(dir, recAreaList);
}

bool CRpLink_OnMemVer::WriteIndex(const char* dir) const
{
    CBinaryWriter writer(SCLinkTableFile::MakeIndexPath(dir).c_str(), true);
    fldPos.WriteTo(writer);
    writer.WriteData(static_cast<DWORD>(recAreaList.size()));
    for (const CRecPosMap& recPositions : recPosList) {
        writer.WriteData(recPositions.GetSize());
        recPositions.ForEach([&writer](DWORD btnID, const SRecordPos& slice) {
            writer.WriteData(btnID);
            writer.WriteData(slice.recPos);
            writer.WriteData(slice.recCount);
        });
    }
    return writer.Close();
}

bool CRpLink_OnMemVer::ReadFrom(const char* dir, SCKZCoreCom::EEndianness endianness,
                                SCKZCoreCom::EDataModel dataModel)
{
    Clear();
    SIndex index;
    if (!SCLinkTableFile::PrepareReading(dir, endianness, dataModel) || !ReadIndex(dir, index))
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
    SCMemory::ReserveOneMore(recAreaList);
    SCMemory::ReserveOneMore(recPosList);
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
    if (!fldPos.PrepareInsert(btnClassID) || GetSumOfRecCounts(recLists) > total)
        return false;
    CDWORDArray recArea(total);
    CRecPosMap recPositions;
    DWORD used = 0;
    recLists.ForEach([&](DWORD btnID, const SRecordList& list) {
        if (list.recCount == 0)
            return;
        recPositions.Set(btnID, SRecordPos{used, list.recCount});
        std::copy_n(list.recList, list.recCount, recArea.GetData() + used);
        used += list.recCount;
    });
    std::fill_n(recArea.GetData() + used, total - used, UNUSED_CELL);
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
    std::vector<bool> isDeleted(recAreaList.size(), false);
    DWORD fld = 0;
    for (const DWORD btnClassID : btnClassIDs) {
        if (fldPos.Find(btnClassID, fld))
            isDeleted[fld] = true;
    }
    fldPos.Delete(isDeleted); // from here on nothing fails
    std::size_t kept = 0;
    for (std::size_t i = 0; i < isDeleted.size(); ++i) {
        if (isDeleted[i])
            continue;
        if (kept != i) {
            recAreaList[kept] = std::move(recAreaList[i]);
            recPosList[kept] = std::move(recPosList[i]);
        }
        ++kept;
    }
    recAreaList.erase(recAreaList.begin() + static_cast<std::ptrdiff_t>(kept), recAreaList.end());
    recPosList.erase(recPosList.begin() + static_cast<std::ptrdiff_t>(kept), recPosList.end());
}

bool CRpLink_OnMemVer::ExistFld(DWORD btnClassID) const
{
    DWORD fld = 0;
    return fldPos.Find(btnClassID, fld);
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
    if (newCount == 0)
        recPositions.Remove(btnID);
    else
        recPositions.Set(btnID, SRecordPos{old.recPos, newCount});
    if (newCount != old.recCount) {
        const DWORD newSize = recArea.GetCount();
        recPositions.ForEach([&](DWORD, SRecordPos& slice) {
            if (slice.recPos > old.recPos)
                slice.recPos += newCount - old.recCount; // wraps around where the list has become shorter
            ConfineToArea(slice, newSize);
        });
    }
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
    const DWORD newSize = recArea.GetCount();
    recPosList[fld].ForEach([&](DWORD, SRecordPos& other) {
        if (other.recPos > old.recPos)
            other.recPos += recCount - old.recCount; // wanted so: see the class comment
        ConfineToArea(other, newSize);
    });
    return true;
}

bool CRpLink_OnMemVer::DeleteBtn(DWORD btnClassID, DWORD btnID)
{
    DWORD fld = 0;
    return fldPos.Find(btnClassID, fld) && recPosList[fld].Exist(btnID) &&
           ReplaceRecList(fld, btnID, nullptr, 0);
}

bool CRpLink_OnMemVer::SetRecList(DWORD btnClassID, DWORD btnID, const DWORD* recNumList, DWORD recCount)
{
    DWORD fld = 0;
    return fldPos.Find(btnClassID, fld) && ReplaceRecList(fld, btnID, recNumList, recCount);
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

void CRpLink_OnMemVer::ClearOfFixedSpec()
{
    std::vector<DWORD> btnClassIDs;
    GetBtnClassIDList(btnClassIDs);
    for (const DWORD btnClassID : btnClassIDs)
        ClearOfFixedSpec(btnClassID);
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
    if (!recPositions.ExistOfType(SCBUICoreCom::BTNTYPE_INC) &&
        !recPositions.ExistOfType(SCBUICoreCom::BTNTYPE_CLL))
        return true;

    // At first the length of the slice to drop at its first cell; then, at each cell, how many cells up to
    // and with it were dropped. One more cell than the area: an empty slice may stand behind its last record.
    const DWORD oldSize = recArea.GetCount();
    std::vector<DWORD> dropped(std::size_t{oldSize} + 1, 0);
    recPositions.ForEach([&](DWORD btnID, const SRecordPos& slice) {
        if (SCBUICoreCom::IsIncBtn(btnID) || SCBUICoreCom::IsCllBtn(btnID)) {
            dropped[slice.recPos] = std::max(dropped[slice.recPos], slice.recCount);
            recPositions.Remove(btnID);
        }
    });
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
    recPositions.ForEach([&](DWORD, SRecordPos& slice) {
        slice.recPos -= dropped[slice.recPos];
        ConfineToArea(slice, oldSize - droppedCount);
    });
    return true;
}

bool CRpLink_OnMemVer::GetRecCount(DWORD btnClassID, DWORD btnID, DWORD& recCount) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    const SRecordPos* const slice = recPosList[fld].Find(btnID);
    recCount = slice != nullptr ? slice->recCount : 0;
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

void CRpLink_OnMemVer::GetBtnClassIDList(std::vector<DWORD>& btnClassIDs) const
{
    fldPos.GetBtnClassIDList(btnClassIDs);
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
    if (GetSumOfRecCounts(newRecLists) > newTotal)
        throw ECAbnormalData(SCKZCoreStrDef::MSG_ABNORMAL_DATASIZE, "Src/CRpLink_OnMemVer",
                             "NSKZ::NSKZCore::CRpLink_OnMemVer::InsertRec", __LINE__);
    CDWORDArray& recArea = recAreaList[fld];
    CRecPosMap& recPositions = recPosList[fld];
    const DWORD oldSize = recArea.GetCount();
    // At first the room a slice needs more, at its first cell; then, at each cell, the sum of it so far. One
    // more cell than the area: an empty slice may stand behind its last record.
    std::vector<DWORD> shift(std::size_t{oldSize} + 1, 0);
    CDWORDArray newArea(std::uint64_t{oldSize} + newTotal);
    newRecLists.ForEach([&](DWORD btnID, const SRecordList& list) {
        if (list.recCount != 0)
            recPositions.MakeRoom(btnID);
    });

    // All memory is there: from here on nothing fails.
    DWORD* const oldRecs = recArea.GetData();
    DWORD* const newRecs = newArea.GetData();
    std::fill_n(newRecs, newArea.GetCount(), UNUSED_CELL);
    for (DWORD i = 0; i < oldSize; ++i) {
        if (oldRecs[i] >= pos)
            oldRecs[i] += count;
    }
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
    recArea = std::move(newArea);
}

void CRpLink_OnMemVer::DeleteRec(DWORD pos, DWORD count)
{
    DWORD largest = 0;
    for (const CDWORDArray& recArea : recAreaList)
        largest = std::max(largest, recArea.GetCount());
    CDWORDArray cutCounts(largest);
    for (DWORD fld = 0; fld < recAreaList.size(); ++fld)
        DeleteRecOfFld(fld, pos, count, cutCounts.GetData());
}

// `cutCounts` has a cell for each cell of the area; it receives how many cells up to and with it were cut.
void CRpLink_OnMemVer::DeleteRecOfFld(DWORD fld, DWORD pos, DWORD count, DWORD* cutCounts) noexcept
{
    CDWORDArray& recArea = recAreaList[fld];
    DWORD* const recs = recArea.GetData();
    const DWORD oldSize = recArea.GetCount();
    DWORD cut = 0;
    for (DWORD i = 0; i < oldSize; ++i) {
        const DWORD recNum = recs[i];
        if (recNum >= pos && recNum - pos < count)
            ++cut;
        else
            recs[i - cut] = recNum < pos ? recNum : recNum - count;
        cutCounts[i] = cut;
    }
    recArea.Shrink(oldSize - cut);
    CRecPosMap& recPositions = recPosList[fld];
    recPositions.ForEach([&](DWORD btnID, SRecordPos& slice) {
        const DWORD cutBefore = slice.recPos == 0 ? 0 : cutCounts[slice.recPos - 1];
        if (slice.recCount != 0)
            slice.recCount -= cutCounts[slice.recPos + slice.recCount - 1] - cutBefore;
        slice.recPos -= cutBefore;
        if (slice.recCount == 0)
            recPositions.Remove(btnID);
    });
}

SCBUICoreCom::ELinkTableVerType CRpLink_OnMemVer::GetVersionType() const
{
    return SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
}

} // namespace NSKZ::NSKZCore
