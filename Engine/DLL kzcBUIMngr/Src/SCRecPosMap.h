#ifndef SCRECPOSMAP_H
#define SCRECPOSMAP_H

#include "SRecordList.h"
#include "SRecordPos.h"
#include "TCBtnIDAssArr.h"

#include <cstdint>
#include <vector>

namespace NSKZ::NSKZCore {

// Of one class of an IRpLink: button to slice of the record area.
using CRecPosMap = TCBtnIDAssArr<SRecordPos>;

// What befalls the slices of a class when its record area changes, whatever the area is kept in. Areas are
// given as plain arrays. A slice never leaves its area by it.
class SCRecPosMap
{
public:
    SCRecPosMap() = delete;

    // What cells of an area hold that belong to no slice, so that a copy of the area holds nothing by chance.
    static constexpr DWORD UNUSED_CELL = 4294967295;

    static std::uint64_t GetSumOfRecCounts(const TCBtnIDAssArr<SRecordList>& recLists);

    // Gives each list with records the next slice of an area, from its beginning, and tells put(list) of it,
    // in the order of the iterator; returns how many cells they take. `recPositions` is empty before, and as
    // large as needed behind. Throws std::bad_alloc.
    template <class TPut>
    static DWORD PlaceLists(const TCBtnIDAssArr<SRecordList>& recLists, CRecPosMap& recPositions,
                            const TPut& put)
    {
        recPositions.MakeRoomFor(recLists);
        DWORD used = 0;
        recLists.ForEach([&](DWORD btnID, const SRecordList& list) {
            if (list.recCount == 0)
                return;
            recPositions.Set(btnID, SRecordPos{used, list.recCount});
            put(list);
            used += list.recCount;
        });
        return used;
    }

    // The slice `old` of a button has become `newCount` cells long, and those behind it have moved; 0 removes
    // the entry. The area has `areaSize` cells now.
    static void Resize(CRecPosMap& recPositions, DWORD btnID, const SRecordPos& old, DWORD newCount,
                       DWORD areaSize) noexcept;

    // Adds `delta`, which wraps around for less, to the position of every slice that begins behind `recPos`.
    static void MoveBehind(CRecPosMap& recPositions, DWORD recPos, DWORD delta, DWORD areaSize) noexcept;

    // Whether there is an entry that ClearOfFixedSpec drops; and, at the first cell of each slice of such an
    // entry, its length, in `lengths`, which has a cell more than the area and holds 0 before.
    static bool HasFixedSpec(const CRecPosMap& recPositions) noexcept;
    static void MarkFixedSpec(const CRecPosMap& recPositions, std::vector<DWORD>& lengths) noexcept;
    // Removes these entries and lowers each slice that stays by what `dropped` has at its first cell.
    static void DropFixedSpec(CRecPosMap& recPositions, const std::vector<DWORD>& dropped,
                              DWORD areaSize) noexcept;

    // Follows the insertion of `count` records before `pos`, with new lists, as IRpLink::InsertRec tells it.
    // `oldRecs` is the area, of `oldSize` cells, which are renumbered in their place; `newRecs` receives it
    // anew and has room for the new lists too: `newSize` cells. `shift` is a scratch of `oldSize` and 1 cells
    // of 0. First PrepareInsertRecs, which alone throws std::bad_alloc, with what it knows unchanged.
    static void PrepareInsertRecs(CRecPosMap& recPositions, const TCBtnIDAssArr<SRecordList>& newRecLists);
    static void InsertRecs(CRecPosMap& recPositions, DWORD* oldRecs, DWORD oldSize, DWORD pos, DWORD count,
                           const TCBtnIDAssArr<SRecordList>& newRecLists, std::vector<DWORD>& shift,
                           DWORD* newRecs, DWORD newSize) noexcept;

    // Follows the deletion of the `count` records from `pos` on: takes them out of an area, whose remaining
    // records move together and are renumbered, and returns how many remain. `cutCounts` receives for each
    // cell how many up to and with it were cut; AdjstToCuts takes it from there.
    static DWORD CutRecs(DWORD* recs, DWORD size, DWORD pos, DWORD count, DWORD* cutCounts) noexcept;
    static void AdjstToCuts(CRecPosMap& recPositions, const DWORD* cutCounts) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
