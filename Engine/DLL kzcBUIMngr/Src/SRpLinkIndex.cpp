#include "SRpLinkIndex.h"

#include "CDWORDArray.h"
#include "SCLinkTableFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <utility>

namespace NSKZ::NSKZCore {

namespace {

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

} // namespace

bool SRpLinkIndex::Write(const char* dir, const CFldPosOfBtnClass& fldPos,
                         const std::vector<CRecPosMap>& recPosList)
{
    if (!SCLinkTableFile::PrepareWriting(dir))
        return false;
    CBinaryWriter writer(SCLinkTableFile::MakeIndexPath(dir).c_str(), true);
    fldPos.WriteTo(writer);
    writer.WriteData(static_cast<DWORD>(recPosList.size()));
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

bool SRpLinkIndex::Read(const char* dir)
{
    CLinkTableIndexReader reader(dir);
    DWORD fldCount = 0;
    if (!fldPos.ReadFrom(reader, fldCount))
        return false;
    CSlotAllowance allowance(reader.GetRestCount() / CEntryList::SIZE);
    for (DWORD fld = 0; fld < fldCount; ++fld) {
        CEntryList entries;
        if (!entries.Read(reader))
            return false;
        if (!AreSlicesApart(entries, areaSizes.emplace_back()) ||
            !MakeRecPosMap(entries, allowance, recPosList.emplace_back())) {
            SetLastError(ERROR_INVALID_DATA);
            return false;
        }
    }
    return reader.ProveEnd();
}

} // namespace NSKZ::NSKZCore
