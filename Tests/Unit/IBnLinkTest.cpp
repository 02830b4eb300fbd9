#include "Support/CAllocFault.h"
#include "Support/CRandom.h"
#include "Support/LinkTableContent.h"
#include "Support/LinkTableVersions.h"
#include "Support/TBnLinkFilled.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <thread>

// What holds for a record-to-button table of any version. What only one of them does has tests of its own.

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

constexpr DWORD PAST_32_BITS = 4294967295; // with any count above 0 it leaves 32 bits

template <class TTable>
class BnLink : public testing::Test
{};
TYPED_TEST_SUITE(BnLink, BnLinkVersions, CNameOfTable);

template <class TTable>
class BnLinkFilled : public TBnLinkFilled<TTable>
{};
TYPED_TEST_SUITE(BnLinkFilled, BnLinkVersions, CNameOfTable);

// What GetBtnIDList and GetBtnIDListOfRecList are to give, told naively.
List GetDistinct(const List& cells)
{
    List distinct;
    for (const DWORD cell : cells) {
        const bool tracked = cell >= 1 && cell <= 3000000001;
        if (!tracked || std::find(distinct.begin(), distinct.end(), cell) == distinct.end())
            distinct.push_back(cell);
    }
    return distinct;
}

} // namespace

TYPED_TEST(BnLink, IsEmptyAtFirst)
{
    const TypeParam link;
    EXPECT_EQ(link.GetRecCount(), 0u);
    EXPECT_FALSE(link.ExistFld(1));
    EXPECT_EQ(link.GetVersionType(), VERSION_OF<TypeParam>);
}

TYPED_TEST(BnLink, InsertFldKeepsTheCellsAndSetsTheRecordCount)
{
    TypeParam link;
    EXPECT_TRUE(InsertFld(link, 4, {2, 1, 3000000001}));
    EXPECT_EQ(link.GetRecCount(), 3u);
    EXPECT_EQ(GetColumn(link, 4), (List{2, 1, 3000000001}));
    EXPECT_TRUE(link.ExistFld(4));
    EXPECT_FALSE(link.ExistFld(3));
    EXPECT_FALSE(link.ExistFld(5));
}

TYPED_TEST(BnLink, InsertFldRefusesWhatIsNoSourceClass)
{
    TypeParam link;
    for (const DWORD btnClassID : {0u, 1000000001u, 2000000001u, 2147483648u, 4294967295u}) {
        EXPECT_FALSE(InsertFld(link, btnClassID, {2})) << btnClassID;
        EXPECT_FALSE(link.ExistFld(btnClassID)) << btnClassID;
    }
    EXPECT_EQ(link.GetRecCount(), 0u);
}

#ifndef KZC_SANITIZED // it takes 4 GB
TYPED_TEST(BnLink, InsertFldTakesTheLastSourceClass)
{
    TypeParam link;
    EXPECT_TRUE(InsertFld(link, 1000000000, {5, 6}));
    EXPECT_TRUE(link.ExistFld(1000000000));
    EXPECT_FALSE(link.ExistFld(999999999));
    EXPECT_EQ(GetColumn(link, 1000000000), (List{5, 6}));
}
#endif

TYPED_TEST(BnLinkFilled, InsertFldRefusesASecondColumnOfTheClass)
{
    EXPECT_FALSE(InsertFld(this->link, 3, {4, 4, 4}));
    this->ExpectUnchanged();
}

TYPED_TEST(BnLinkFilled, InsertFldRefusesAnotherRecordCount)
{
    EXPECT_FALSE(InsertFld(this->link, 2, {4, 4}));
    EXPECT_FALSE(InsertFld(this->link, 2, {4, 4, 4, 4}));
    EXPECT_FALSE(InsertFld(this->link, 2, {}));
    this->ExpectUnchanged();
}

TYPED_TEST(BnLinkFilled, InsertFldTakesAnyRecordCountOnceAllColumnsAreGone)
{
    for (const DWORD btnClassID : {3u, 1u, 7u})
        EXPECT_TRUE(this->link.DeleteFld(btnClassID));
    EXPECT_EQ(this->link.GetRecCount(), 3u);
    EXPECT_TRUE(InsertFld(this->link, 7, {4}));
    EXPECT_EQ(this->link.GetRecCount(), 1u);
    EXPECT_EQ(GetColumn(this->link, 7), (List{4}));
}

TYPED_TEST(BnLink, InsertFldWithoutCellsMakesAColumnToBeWritten)
{
    TypeParam link;
    EXPECT_TRUE(link.InsertFld(2, 3, nullptr));
    EXPECT_EQ(link.GetRecCount(), 3u);
    const List cells = {7, 8, 9};
    EXPECT_TRUE(link.SetFldData(2, 3, cells.data()));
    EXPECT_EQ(GetColumn(link, 2), cells);
}

TYPED_TEST(BnLink, InsertFldOfNoRecordsIsAColumn)
{
    TypeParam link;
    EXPECT_TRUE(link.InsertFld(2, 0, nullptr));
    EXPECT_TRUE(link.ExistFld(2));
    EXPECT_FALSE(InsertFld(link, 3, {1}));
    List btnIDs = {4};
    EXPECT_TRUE(link.GetBtnIDList(2, btnIDs));
    EXPECT_TRUE(btnIDs.empty());
    EXPECT_TRUE(link.GetData(2, 0, 0, nullptr));
}

TYPED_TEST(BnLinkFilled, DeleteFldClosesTheGap)
{
    EXPECT_TRUE(this->link.DeleteFld(1));
    this->before.columns.erase(1);
    this->ExpectUnchanged();
    EXPECT_TRUE(this->link.DeleteFld(3));
    this->before.columns.erase(3);
    this->ExpectUnchanged();
    EXPECT_TRUE(InsertFld(this->link, 1, {4, 4, 5}));
    this->before.columns[1] = {4, 4, 5};
    this->ExpectUnchanged();
}

TYPED_TEST(BnLinkFilled, DeleteFldRefusesAClassWithoutAColumn)
{
    for (const DWORD btnClassID : {0u, 2u, 8u, 4294967295u})
        EXPECT_FALSE(this->link.DeleteFld(btnClassID)) << btnClassID;
    this->ExpectUnchanged();
}

TYPED_TEST(BnLinkFilled, InsertRecOpensRowsInEveryColumn)
{
    EXPECT_TRUE(this->link.InsertRec(1, 2));
    EXPECT_EQ(this->link.GetRecCount(), 5u);
    const List opened = {20, 21};
    for (auto& [btnClassID, cells] : this->before.columns) {
        EXPECT_TRUE(this->link.SetData(btnClassID, 1, 2, opened.data()));
        cells.insert(cells.begin() + 1, opened.begin(), opened.end());
    }
    this->before.recCount = 5;
    this->ExpectUnchanged();
}

TYPED_TEST(BnLinkFilled, InsertRecOfNothingChangesNothing)
{
    EXPECT_TRUE(this->link.InsertRec(1, 0));
    this->ExpectUnchanged();
}

TYPED_TEST(BnLink, InsertRecWithoutAColumnRaisesTheRecordCount)
{
    TypeParam link;
    EXPECT_TRUE(link.InsertRec(0, 4));
    EXPECT_TRUE(link.InsertRec(9, 1));
    EXPECT_EQ(link.GetRecCount(), 5u);
    EXPECT_TRUE(InsertFld(link, 1, {2, 2})); // the first column sets the count all the same
    EXPECT_EQ(link.GetRecCount(), 2u);
}

TYPED_TEST(BnLinkFilled, InsertRecRefusesMoreRowsThanCanBeNumbered)
{
    EXPECT_FALSE(this->link.InsertRec(0, 4294967295));
    EXPECT_FALSE(this->link.InsertRec(0, 4294967293));
    this->ExpectUnchanged();
}

TYPED_TEST(BnLinkFilled, DeleteRecRemovesRowsFromEveryColumn)
{
    EXPECT_TRUE(this->link.DeleteRec(0, 1));
    this->before = {2, {{3, {3, 2}}, {1, {5, 6}}, {7, {8, 7}}}};
    this->ExpectUnchanged();
    EXPECT_TRUE(this->link.DeleteRec(1, 1));
    this->before = {1, {{3, {3}}, {1, {5}}, {7, {8}}}};
    this->ExpectUnchanged();
    EXPECT_TRUE(this->link.DeleteRec(0, 0));
    EXPECT_TRUE(this->link.DeleteRec(1, 0));
    this->ExpectUnchanged();
    EXPECT_TRUE(this->link.DeleteRec(0, 1));
    EXPECT_EQ(this->link.GetRecCount(), 0u);
    EXPECT_TRUE(this->link.ExistFld(3));
}

TYPED_TEST(BnLinkFilled, DeleteRecRefusesARangePastTheEnd)
{
    EXPECT_FALSE(this->link.DeleteRec(2, 2));
    EXPECT_FALSE(this->link.DeleteRec(3, 1));
    EXPECT_FALSE(this->link.DeleteRec(4, 0));
    EXPECT_FALSE(this->link.DeleteRec(PAST_32_BITS, 1));
    EXPECT_FALSE(this->link.DeleteRec(1, PAST_32_BITS));
    this->ExpectUnchanged();
}

TYPED_TEST(BnLinkFilled, SetFldDataOverwritesAWholeColumnAndNoOther)
{
    const List cells = {30, 31, 32};
    EXPECT_FALSE(this->link.SetFldData(1, 4, cells.data()));
    EXPECT_FALSE(this->link.SetFldData(2, 3, cells.data()));
    this->ExpectUnchanged();
    EXPECT_TRUE(this->link.SetFldData(1, 3, cells.data()));
    this->before.columns[1] = cells;
    this->ExpectUnchanged();
}

TYPED_TEST(BnLinkFilled, SetDataOverwritesAStretchAndRefusesWhatLeavesTheTable)
{
    const List cells = {30, 31, 32};
    EXPECT_FALSE(this->link.SetData(1, 2, 2, cells.data()));
    EXPECT_FALSE(this->link.SetData(1, 4, 0, cells.data()));
    EXPECT_FALSE(this->link.SetData(1, PAST_32_BITS, 2, cells.data()));
    EXPECT_FALSE(this->link.SetData(2, 0, 1, cells.data()));
    this->ExpectUnchanged();
    EXPECT_TRUE(this->link.SetData(1, 1, 2, cells.data()));
    EXPECT_TRUE(this->link.SetData(1, 3, 0, nullptr));
    this->before.columns[1] = {1, 30, 31};
    this->ExpectUnchanged();
}

TYPED_TEST(BnLinkFilled, GetDataCopiesAStretchAndRefusesWhatLeavesTheTable)
{
    List cells = {90, 91, 92};
    EXPECT_FALSE(this->link.GetData(1, 2, 2, cells.data()));
    EXPECT_FALSE(this->link.GetData(1, PAST_32_BITS, 2, cells.data()));
    EXPECT_FALSE(this->link.GetData(2, 0, 1, cells.data()));
    EXPECT_FALSE(this->link.GetData(0, 0, 1, cells.data()));
    EXPECT_EQ(cells, (List{90, 91, 92}));
    EXPECT_TRUE(this->link.GetData(1, 1, 2, cells.data()));
    EXPECT_EQ(cells, (List{5, 6, 92}));
}

TYPED_TEST(BnLinkFilled, GetBtnIDGivesOneCell)
{
    DWORD btnID = 90;
    EXPECT_FALSE(this->link.GetBtnID(1, 3, btnID));
    EXPECT_FALSE(this->link.GetBtnID(1, PAST_32_BITS, btnID));
    EXPECT_FALSE(this->link.GetBtnID(2, 0, btnID));
    EXPECT_FALSE(this->link.GetBtnID(8, 0, btnID));
    EXPECT_EQ(btnID, 90u);
    EXPECT_TRUE(this->link.GetBtnID(1, 2, btnID));
    EXPECT_EQ(btnID, 6u);
}

TYPED_TEST(BnLink, GetBtnIDListGivesDistinctButtonsByFirstAppearance)
{
    TypeParam link;
    ASSERT_TRUE(InsertFld(link, 1, {9, 1, 3, 9, 1, 3, 2}));
    List btnIDs = {77, 77};
    EXPECT_TRUE(link.GetBtnIDList(1, btnIDs));
    EXPECT_EQ(btnIDs, (List{9, 1, 3, 2}));
}

TYPED_TEST(BnLink, ListsRepeatCellsThatAreNoSourceButton)
{
    TypeParam link;
    const List cells = {0, 5, 0, 3000000002, 5, 3000000002, 4000000002, 4000000002, 1, 1};
    ASSERT_TRUE(InsertFld(link, 1, cells));
    const List expected = {0, 5, 0, 3000000002, 3000000002, 4000000002, 4000000002, 1};
    List btnIDs;
    EXPECT_TRUE(link.GetBtnIDList(1, btnIDs));
    EXPECT_EQ(btnIDs, expected);
    const List all = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    EXPECT_TRUE(link.GetBtnIDListOfRecList(1, 10, all.data(), btnIDs));
    EXPECT_EQ(btnIDs, expected);
}

TYPED_TEST(BnLinkFilled, ListsOfAnUnknownClassLeaveTheOutput)
{
    List btnIDs = {77};
    const DWORD recNum = 0;
    EXPECT_FALSE(this->link.GetBtnIDList(2, btnIDs));
    EXPECT_FALSE(this->link.GetBtnIDListOfRecList(2, 1, &recNum, btnIDs));
    EXPECT_EQ(btnIDs, (List{77}));
}

TYPED_TEST(BnLinkFilled, GetBtnIDListOfRecListFollowsTheOrderOfTheList)
{
    List btnIDs = {77, 77, 77, 77, 77, 77};
    const List recNums = {2, 1, 2, 0};
    EXPECT_TRUE(this->link.GetBtnIDListOfRecList(1, 4, recNums.data(), btnIDs));
    EXPECT_EQ(btnIDs, (List{6, 5, 1}));
}

TYPED_TEST(BnLinkFilled, GetBtnIDListOfRecListOfNoRecordIsEmpty)
{
    List btnIDs = {77};
    EXPECT_TRUE(this->link.GetBtnIDListOfRecList(1, 0, nullptr, btnIDs));
    EXPECT_TRUE(btnIDs.empty());
}

TYPED_TEST(BnLinkFilled, GetBtnIDsOfRecsGivesTheCellOfEveryListedRecord)
{
    const List recNums = {2, 0, 2, 1};
    List btnIDs(5, 77);
    EXPECT_FALSE(this->link.GetBtnIDsOfRecs(2, 4, recNums.data(), btnIDs.data()));
    EXPECT_EQ(btnIDs, List(5, 77));
    EXPECT_TRUE(this->link.GetBtnIDsOfRecs(1, 4, recNums.data(), btnIDs.data()));
    EXPECT_EQ(btnIDs, (List{6, 1, 6, 5, 77}));
    EXPECT_TRUE(this->link.GetBtnIDsOfRecs(1, 0, nullptr, nullptr));
}

TYPED_TEST(BnLinkFilled, ClearEmptiesTheTable)
{
    this->link.Clear();
    EXPECT_TRUE(GetContent(this->link) == SBnLinkContent());
    EXPECT_EQ(this->link.GetVersionType(), VERSION_OF<TypeParam>);
    EXPECT_TRUE(InsertFld(this->link, 3, {4}));
    EXPECT_EQ(GetColumn(this->link, 3), (List{4}));
}

TYPED_TEST(BnLink, StructureMayBeChangedFromSeveralThreads)
{
    TypeParam link;
    ASSERT_TRUE(InsertFld(link, 40, {1, 1, 1, 1}));
    std::vector<std::thread> threads;
    for (DWORD first : {1u, 11u, 21u}) {
        threads.emplace_back([&link, first] {
            const List cells(4, first);
            for (int round = 0; round < 50; ++round) {
                for (DWORD btnClassID = first; btnClassID < first + 10; ++btnClassID)
                    link.InsertFld(btnClassID, 4, cells.data());
                for (DWORD btnClassID = first; btnClassID < first + 9; ++btnClassID)
                    link.DeleteFld(btnClassID);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    const SBnLinkContent expected = {
        4, {{10, List(4, 1)}, {20, List(4, 11)}, {30, List(4, 21)}, {40, List(4, 1)}}};
    EXPECT_TRUE(GetContent(link) == expected);
}

TYPED_TEST(BnLink, TheLockIsFreeAfterEveryWayOutOfAnOperation)
{
    CAllocFault memory;
    TypeParam link;
    FillWithThreeClasses(link);
    // Another thread comes through only where this one, which could enter again, has left.
    const auto passFromAnotherThread = [&link] { std::thread([&link] { link.DeleteFld(0); }).join(); };

    EXPECT_TRUE(link.InsertFld(9, 3, nullptr));
    passFromAnotherThread();
    EXPECT_FALSE(link.InsertFld(9, 3, nullptr));
    passFromAnotherThread();
    memory.Arm(1);
    EXPECT_THROW(link.InsertFld(10, 3, nullptr), std::bad_alloc);
    memory.Disarm();
    passFromAnotherThread();
    EXPECT_TRUE(link.DeleteFld(9));
    passFromAnotherThread();
    EXPECT_FALSE(link.DeleteFld(9));
    passFromAnotherThread();
    memory.Arm(2);
    EXPECT_THROW(link.InsertRec(1, 1000), std::bad_alloc);
    memory.Disarm();
    passFromAnotherThread();
    EXPECT_FALSE(link.InsertRec(0, 4294967295));
    passFromAnotherThread();
    EXPECT_TRUE(link.InsertRec(1, 2));
    passFromAnotherThread();
    EXPECT_FALSE(link.DeleteRec(6, 1));
    passFromAnotherThread();
    EXPECT_TRUE(link.DeleteRec(1, 2));
    passFromAnotherThread();
    EXPECT_EQ(GetColumn(link, 7), (List{9, 8, 7}));
}

TYPED_TEST(BnLink, InsertFldThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    CAllocFault memory;
    for (const bool filled : {false, true}) {
        for (const bool withCells : {false, true}) {
            const List cells = {4, 5, 6};
            const std::ptrdiff_t liveBefore = memory.GetLiveBlockCount();
            const std::size_t failures = memory.FailEachInTurn([&](auto attempt) {
                TypeParam link;
                if (filled)
                    FillWithThreeClasses(link);
                const SBnLinkContent before = GetContent(link);
                const bool completed =
                    attempt([&] { EXPECT_TRUE(link.InsertFld(20, 3, withCells ? cells.data() : nullptr)); });
                EXPECT_EQ(link.ExistFld(20), completed);
                if (!completed) {
                    EXPECT_TRUE(GetContent(link) == before);
                    EXPECT_TRUE(InsertFld(link, 20, cells)); // nothing is in the way
                }
            });
            EXPECT_GE(failures, 2u); // the cells and the positions at least
            EXPECT_EQ(memory.GetLiveBlockCount(), liveBefore);
        }
    }
}

TYPED_TEST(BnLink, InsertFldThatRunsOutOfMemoryLeavesATableOfAnyWidthAsItWas)
{
    CAllocFault memory;
    for (DWORD fldCount = 0; fldCount < 6; ++fldCount) { // some have no room for one column more
        memory.FailEachInTurn([fldCount](auto attempt) {
            TypeParam link;
            for (DWORD btnClassID = 1; btnClassID <= fldCount; ++btnClassID)
                ASSERT_TRUE(InsertFld(link, btnClassID, {btnClassID}));
            SBnLinkContent expected = GetContent(link);
            if (!attempt([&] { EXPECT_TRUE(InsertFld(link, 20, {7})); })) {
                EXPECT_TRUE(GetContent(link) == expected);
                EXPECT_TRUE(InsertFld(link, 20, {7}));
            }
            expected.recCount = 1;
            expected.columns[20] = {7};
            EXPECT_TRUE(GetContent(link) == expected);
        });
        EXPECT_EQ(memory.GetLiveBlockCount(), 0);
    }
}

TYPED_TEST(BnLink, InsertRecThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    CAllocFault memory;
    const std::size_t failures = memory.FailEachInTurn([](auto attempt) {
        TypeParam link;
        FillWithThreeClasses(link);
        const SBnLinkContent before = GetContent(link);
        if (!attempt([&] { EXPECT_TRUE(link.InsertRec(1, 1000)); })) {
            EXPECT_TRUE(GetContent(link) == before);
            EXPECT_TRUE(link.InsertRec(1, 1));
        }
    });
    EXPECT_GE(failures, 3u); // one a column
    EXPECT_EQ(memory.GetLiveBlockCount(), 0);
}

TYPED_TEST(BnLink, ReadersThatRunOutOfMemoryLeakNothing)
{
    CAllocFault memory;
    const List recNums = {0, 1, 2};
    const std::ptrdiff_t liveBefore = memory.GetLiveBlockCount();
    memory.FailEachInTurn([&](auto attempt) {
        TypeParam link;
        FillWithThreeClasses(link);
        List btnIDs;
        attempt([&] {
            link.GetBtnIDList(3, btnIDs);
            link.GetBtnIDListOfRecList(1, 3, recNums.data(), btnIDs);
        });
        EXPECT_EQ(GetColumn(link, 3), (List{2, 3, 2}));
    });
    EXPECT_EQ(memory.GetLiveBlockCount(), liveBefore);
}

TYPED_TEST(BnLink, AgreesWithANaiveTableOnRandomOperations)
{
    CRandom random;
    TypeParam link;
    SBnLinkContent model;
    // Buttons of one run lie close together so that they meet; some cells are no source button.
    const auto makeCells = [&random](DWORD count) {
        List cells(count);
        for (DWORD& cell : cells)
            cell = random.IsOneOf(10) ? 4160000000 + random.GetBelow(4) : random.GetBelow(12);
        return cells;
    };
    for (int round = 0; round < 6000; ++round) {
        const DWORD btnClassID = random.GetBelow(12);
        const bool known = model.columns.count(btnClassID) == 1;
        const DWORD pos = random.GetBelow(model.recCount + 2);
        const DWORD count = random.GetBelow(6);
        const bool inside = pos + count <= model.recCount;
        switch (random.GetBelow(8)) {
        case 0:
        case 1: {
            const DWORD recCount = random.IsOneOf(4) ? random.GetBelow(20) : model.recCount;
            const bool fits =
                btnClassID != 0 && !known && (model.columns.empty() || recCount == model.recCount);
            const List cells = makeCells(recCount);
            ASSERT_EQ(InsertFld(link, btnClassID, cells), fits);
            if (fits) {
                model.recCount = recCount;
                model.columns[btnClassID] = cells;
            }
            break;
        }
        case 2:
            ASSERT_EQ(link.DeleteFld(btnClassID), known);
            model.columns.erase(btnClassID);
            break;
        case 3: {
            if (model.recCount > 200)
                break;
            const DWORD opened = std::min(pos, model.recCount);
            ASSERT_TRUE(link.InsertRec(opened, count));
            for (auto& [id, column] : model.columns) {
                const List cells = makeCells(count);
                ASSERT_TRUE(link.SetData(id, opened, count, cells.data()));
                column.insert(column.begin() + opened, cells.begin(), cells.end());
            }
            model.recCount += count;
            break;
        }
        case 4:
            ASSERT_EQ(link.DeleteRec(pos, count), inside);
            if (inside) {
                for (auto& [id, column] : model.columns)
                    column.erase(column.begin() + pos, column.begin() + pos + count);
                model.recCount -= count;
            }
            break;
        case 5: {
            const List cells = makeCells(count);
            ASSERT_EQ(link.SetData(btnClassID, pos, count, cells.data()), known && inside);
            if (known && inside)
                std::copy(cells.begin(), cells.end(), model.columns[btnClassID].begin() + pos);
            break;
        }
        case 6: {
            const List cells = makeCells(model.recCount);
            ASSERT_EQ(link.SetFldData(btnClassID, model.recCount, cells.data()), known);
            if (known)
                model.columns[btnClassID] = cells;
            break;
        }
        default:
            if (random.IsOneOf(100)) {
                link.Clear();
                model = SBnLinkContent();
            }
        }
        ASSERT_TRUE(GetContent(link) == model) << "round " << round;
        for (const auto& [id, column] : model.columns) {
            List btnIDs;
            ASSERT_TRUE(link.GetBtnIDList(id, btnIDs));
            ASSERT_EQ(btnIDs, GetDistinct(column));
            List recNums, cells;
            for (DWORD i = 0; i < column.size(); ++i) {
                recNums.push_back(random.GetBelow(model.recCount));
                cells.push_back(column[recNums.back()]);
            }
            const DWORD listCount = static_cast<DWORD>(recNums.size());
            ASSERT_TRUE(link.GetBtnIDListOfRecList(id, listCount, recNums.data(), btnIDs));
            ASSERT_EQ(btnIDs, GetDistinct(cells));
            List gathered(listCount);
            ASSERT_TRUE(link.GetBtnIDsOfRecs(id, listCount, recNums.data(), gathered.data()));
            ASSERT_EQ(gathered, cells);
        }
    }
}

TYPED_TEST(BnLink, ListsTheClassesThatHaveAColumn)
{
    TypeParam link;
    List btnClassIDs{4711};
    link.GetBtnClassIDList(btnClassIDs);
    EXPECT_EQ(btnClassIDs, List());
    for (const DWORD btnClassID : {7u, 2u, 5u})
        EXPECT_TRUE(link.InsertFld(btnClassID, 0, nullptr));
    EXPECT_TRUE(link.DeleteFld(5));
    link.GetBtnClassIDList(btnClassIDs);
    EXPECT_EQ(btnClassIDs, (List{2, 7}));
}
