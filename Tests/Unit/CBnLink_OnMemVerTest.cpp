#include "CBnLink_OnMemVer.h"

#include "Support/CAllocFault.h"
#include "Support/CRandom.h"
#include "Support/LinkTableContent.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <thread>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

constexpr DWORD PAST_32_BITS = 4294967295; // with any count above 0 it leaves 32 bits

// Three records in the classes 3, 1 and 7, inserted in this order.
void FillWithThreeClasses(IBnLink& link)
{
    ASSERT_TRUE(InsertFld(link, 3, {2, 3, 2}));
    ASSERT_TRUE(InsertFld(link, 1, {1, 5, 6}));
    ASSERT_TRUE(InsertFld(link, 7, {9, 8, 7}));
}

class CBnLink_OnMemVerFilled : public testing::Test
{
protected:
    void SetUp() override
    {
        FillWithThreeClasses(link);
        before = GetContent(link);
    }
    void ExpectUnchanged() { EXPECT_TRUE(GetContent(link) == before); }

    CBnLink_OnMemVer link;
    SBnLinkContent before;
};

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

TEST(CBnLink_OnMemVer, IsEmptyAtFirst)
{
    const CBnLink_OnMemVer link;
    EXPECT_EQ(link.GetRecCount(), 0u);
    EXPECT_FALSE(link.ExistFld(1));
    EXPECT_EQ(link.GetVersionType(), SCBUICoreCom::LINKTBLVERTYPE_ONMEM);
}

TEST(CBnLink_OnMemVer, InsertFldKeepsTheCellsAndSetsTheRecordCount)
{
    CBnLink_OnMemVer link;
    EXPECT_TRUE(InsertFld(link, 4, {2, 1, 3000000001}));
    EXPECT_EQ(link.GetRecCount(), 3u);
    EXPECT_EQ(GetColumn(link, 4), (List{2, 1, 3000000001}));
    EXPECT_TRUE(link.ExistFld(4));
    EXPECT_FALSE(link.ExistFld(3));
    EXPECT_FALSE(link.ExistFld(5));
}

TEST(CBnLink_OnMemVer, InsertFldRefusesWhatIsNoSourceClass)
{
    CBnLink_OnMemVer link;
    for (const DWORD btnClassID : {0u, 1000000001u, 2000000001u, 2147483648u, 4294967295u}) {
        EXPECT_FALSE(InsertFld(link, btnClassID, {2})) << btnClassID;
        EXPECT_FALSE(link.ExistFld(btnClassID)) << btnClassID;
    }
    EXPECT_EQ(link.GetRecCount(), 0u);
}

#ifndef KZC_SANITIZED // it takes 4 GB
TEST(CBnLink_OnMemVer, InsertFldTakesTheLastSourceClass)
{
    CBnLink_OnMemVer link;
    EXPECT_TRUE(InsertFld(link, 1000000000, {5, 6}));
    EXPECT_TRUE(link.ExistFld(1000000000));
    EXPECT_FALSE(link.ExistFld(999999999));
    EXPECT_EQ(GetColumn(link, 1000000000), (List{5, 6}));
}
#endif

TEST_F(CBnLink_OnMemVerFilled, InsertFldRefusesASecondColumnOfTheClass)
{
    EXPECT_FALSE(InsertFld(link, 3, {4, 4, 4}));
    ExpectUnchanged();
}

TEST_F(CBnLink_OnMemVerFilled, InsertFldRefusesAnotherRecordCount)
{
    EXPECT_FALSE(InsertFld(link, 2, {4, 4}));
    EXPECT_FALSE(InsertFld(link, 2, {4, 4, 4, 4}));
    EXPECT_FALSE(InsertFld(link, 2, {}));
    ExpectUnchanged();
}

TEST_F(CBnLink_OnMemVerFilled, InsertFldTakesAnyRecordCountOnceAllColumnsAreGone)
{
    for (const DWORD btnClassID : {3u, 1u, 7u})
        EXPECT_TRUE(link.DeleteFld(btnClassID));
    EXPECT_EQ(link.GetRecCount(), 3u);
    EXPECT_TRUE(InsertFld(link, 7, {4}));
    EXPECT_EQ(link.GetRecCount(), 1u);
    EXPECT_EQ(GetColumn(link, 7), (List{4}));
}

TEST(CBnLink_OnMemVer, InsertFldWithoutCellsMakesAColumnToBeWritten)
{
    CBnLink_OnMemVer link;
    EXPECT_TRUE(link.InsertFld(2, 3, nullptr));
    EXPECT_EQ(link.GetRecCount(), 3u);
    const List cells = {7, 8, 9};
    EXPECT_TRUE(link.SetFldData(2, 3, cells.data()));
    EXPECT_EQ(GetColumn(link, 2), cells);
}

TEST(CBnLink_OnMemVer, InsertFldOfNoRecordsIsAColumn)
{
    CBnLink_OnMemVer link;
    EXPECT_TRUE(link.InsertFld(2, 0, nullptr));
    EXPECT_TRUE(link.ExistFld(2));
    EXPECT_FALSE(InsertFld(link, 3, {1}));
    List btnIDs = {4};
    EXPECT_TRUE(link.GetBtnIDList(2, btnIDs));
    EXPECT_TRUE(btnIDs.empty());
    EXPECT_TRUE(link.GetData(2, 0, 0, nullptr));
}

TEST_F(CBnLink_OnMemVerFilled, DeleteFldClosesTheGap)
{
    EXPECT_TRUE(link.DeleteFld(1));
    before.columns.erase(1);
    ExpectUnchanged();
    EXPECT_TRUE(link.DeleteFld(3));
    before.columns.erase(3);
    ExpectUnchanged();
    EXPECT_TRUE(InsertFld(link, 1, {4, 4, 5}));
    before.columns[1] = {4, 4, 5};
    ExpectUnchanged();
}

TEST_F(CBnLink_OnMemVerFilled, DeleteFldRefusesAClassWithoutAColumn)
{
    for (const DWORD btnClassID : {0u, 2u, 8u, 4294967295u})
        EXPECT_FALSE(link.DeleteFld(btnClassID)) << btnClassID;
    ExpectUnchanged();
}

TEST_F(CBnLink_OnMemVerFilled, InsertRecOpensRowsInEveryColumn)
{
    EXPECT_TRUE(link.InsertRec(1, 2));
    EXPECT_EQ(link.GetRecCount(), 5u);
    const List opened = {20, 21};
    for (auto& [btnClassID, cells] : before.columns) {
        EXPECT_TRUE(link.SetData(btnClassID, 1, 2, opened.data()));
        cells.insert(cells.begin() + 1, opened.begin(), opened.end());
    }
    before.recCount = 5;
    ExpectUnchanged();
}

TEST_F(CBnLink_OnMemVerFilled, InsertRecPastTheEndAppends)
{
    EXPECT_TRUE(link.InsertRec(100, 1));
    EXPECT_TRUE(link.InsertRec(PAST_32_BITS, 1));
    const List appended = {20, 21};
    for (auto& [btnClassID, cells] : before.columns) {
        EXPECT_TRUE(link.SetData(btnClassID, 3, 2, appended.data()));
        cells.insert(cells.end(), appended.begin(), appended.end());
    }
    before.recCount = 5;
    ExpectUnchanged();
}

TEST_F(CBnLink_OnMemVerFilled, InsertRecOfNothingChangesNothing)
{
    EXPECT_TRUE(link.InsertRec(1, 0));
    ExpectUnchanged();
}

TEST(CBnLink_OnMemVer, InsertRecWithoutAColumnRaisesTheRecordCount)
{
    CBnLink_OnMemVer link;
    EXPECT_TRUE(link.InsertRec(0, 4));
    EXPECT_TRUE(link.InsertRec(9, 1));
    EXPECT_EQ(link.GetRecCount(), 5u);
    EXPECT_TRUE(InsertFld(link, 1, {2, 2})); // the first column sets the count all the same
    EXPECT_EQ(link.GetRecCount(), 2u);
}

TEST_F(CBnLink_OnMemVerFilled, InsertRecRefusesMoreRowsThanCanBeNumbered)
{
    EXPECT_FALSE(link.InsertRec(0, 4294967295));
    EXPECT_FALSE(link.InsertRec(0, 4294967293));
    ExpectUnchanged();
}

TEST_F(CBnLink_OnMemVerFilled, DeleteRecRemovesRowsFromEveryColumn)
{
    EXPECT_TRUE(link.DeleteRec(0, 1));
    before = {2, {{3, {3, 2}}, {1, {5, 6}}, {7, {8, 7}}}};
    ExpectUnchanged();
    EXPECT_TRUE(link.DeleteRec(1, 1));
    before = {1, {{3, {3}}, {1, {5}}, {7, {8}}}};
    ExpectUnchanged();
    EXPECT_TRUE(link.DeleteRec(0, 0));
    EXPECT_TRUE(link.DeleteRec(1, 0));
    ExpectUnchanged();
    EXPECT_TRUE(link.DeleteRec(0, 1));
    EXPECT_EQ(link.GetRecCount(), 0u);
    EXPECT_TRUE(link.ExistFld(3));
}

TEST_F(CBnLink_OnMemVerFilled, DeleteRecRefusesARangePastTheEnd)
{
    EXPECT_FALSE(link.DeleteRec(2, 2));
    EXPECT_FALSE(link.DeleteRec(3, 1));
    EXPECT_FALSE(link.DeleteRec(4, 0));
    EXPECT_FALSE(link.DeleteRec(PAST_32_BITS, 1));
    EXPECT_FALSE(link.DeleteRec(1, PAST_32_BITS));
    ExpectUnchanged();
}

TEST_F(CBnLink_OnMemVerFilled, DeleteRecGoesThroughWhereTheHeapCannotShrink)
{
    CAllocFault memory;
    CBnLink_OnMemVer table;
    FillWithThreeClasses(table);
    memory.Arm(1);
    EXPECT_TRUE(table.DeleteRec(0, 1));
    EXPECT_TRUE(memory.Disarm());
    EXPECT_EQ(GetColumn(table, 3), (List{3, 2}));
    EXPECT_EQ(GetColumn(table, 7), (List{8, 7}));
}

TEST_F(CBnLink_OnMemVerFilled, SetFldDataOverwritesAWholeColumnAndNoOther)
{
    const List cells = {30, 31, 32};
    EXPECT_FALSE(link.SetFldData(1, 2, cells.data()));
    EXPECT_FALSE(link.SetFldData(1, 4, cells.data()));
    EXPECT_FALSE(link.SetFldData(2, 3, cells.data()));
    ExpectUnchanged();
    EXPECT_TRUE(link.SetFldData(1, 3, cells.data()));
    before.columns[1] = cells;
    ExpectUnchanged();
}

TEST_F(CBnLink_OnMemVerFilled, SetDataOverwritesAStretchAndRefusesWhatLeavesTheTable)
{
    const List cells = {30, 31, 32};
    EXPECT_FALSE(link.SetData(1, 2, 2, cells.data()));
    EXPECT_FALSE(link.SetData(1, 4, 0, cells.data()));
    EXPECT_FALSE(link.SetData(1, PAST_32_BITS, 2, cells.data()));
    EXPECT_FALSE(link.SetData(2, 0, 1, cells.data()));
    ExpectUnchanged();
    EXPECT_TRUE(link.SetData(1, 1, 2, cells.data()));
    EXPECT_TRUE(link.SetData(1, 3, 0, nullptr));
    before.columns[1] = {1, 30, 31};
    ExpectUnchanged();
}

TEST_F(CBnLink_OnMemVerFilled, GetDataCopiesAStretchAndRefusesWhatLeavesTheTable)
{
    List cells = {90, 91, 92};
    EXPECT_FALSE(link.GetData(1, 2, 2, cells.data()));
    EXPECT_FALSE(link.GetData(1, PAST_32_BITS, 2, cells.data()));
    EXPECT_FALSE(link.GetData(2, 0, 1, cells.data()));
    EXPECT_FALSE(link.GetData(0, 0, 1, cells.data()));
    EXPECT_EQ(cells, (List{90, 91, 92}));
    EXPECT_TRUE(link.GetData(1, 1, 2, cells.data()));
    EXPECT_EQ(cells, (List{5, 6, 92}));
}

TEST_F(CBnLink_OnMemVerFilled, GetBtnIDGivesOneCell)
{
    DWORD btnID = 90;
    EXPECT_FALSE(link.GetBtnID(1, 3, btnID));
    EXPECT_FALSE(link.GetBtnID(1, PAST_32_BITS, btnID));
    EXPECT_FALSE(link.GetBtnID(2, 0, btnID));
    EXPECT_FALSE(link.GetBtnID(8, 0, btnID));
    EXPECT_EQ(btnID, 90u);
    EXPECT_TRUE(link.GetBtnID(1, 2, btnID));
    EXPECT_EQ(btnID, 6u);
}

TEST(CBnLink_OnMemVer, GetBtnIDListGivesDistinctButtonsByFirstAppearance)
{
    CBnLink_OnMemVer link;
    ASSERT_TRUE(InsertFld(link, 1, {9, 1, 3, 9, 1, 3, 2}));
    List btnIDs = {77, 77};
    EXPECT_TRUE(link.GetBtnIDList(1, btnIDs));
    EXPECT_EQ(btnIDs, (List{9, 1, 3, 2}));
}

TEST(CBnLink_OnMemVer, ListsRepeatCellsThatAreNoSourceButton)
{
    CBnLink_OnMemVer link;
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

TEST_F(CBnLink_OnMemVerFilled, ListsOfAnUnknownClassLeaveTheOutput)
{
    List btnIDs = {77};
    const DWORD recNum = 0;
    EXPECT_FALSE(link.GetBtnIDList(2, btnIDs));
    EXPECT_FALSE(link.GetBtnIDListOfRecList(2, 1, &recNum, btnIDs));
    EXPECT_EQ(btnIDs, (List{77}));
}

TEST_F(CBnLink_OnMemVerFilled, GetBtnIDListOfRecListFollowsTheOrderOfTheList)
{
    List btnIDs = {77, 77, 77, 77, 77, 77};
    const List recNums = {2, 1, 2, 0};
    EXPECT_TRUE(link.GetBtnIDListOfRecList(1, 4, recNums.data(), btnIDs));
    EXPECT_EQ(btnIDs, (List{6, 5, 1}));
}

TEST_F(CBnLink_OnMemVerFilled, GetBtnIDListOfRecListOfNoRecordIsEmpty)
{
    List btnIDs = {77};
    EXPECT_TRUE(link.GetBtnIDListOfRecList(1, 0, nullptr, btnIDs));
    EXPECT_TRUE(btnIDs.empty());
}

TEST_F(CBnLink_OnMemVerFilled, GetBtnIDsOfRecsGivesTheCellOfEveryListedRecord)
{
    const List recNums = {2, 0, 2, 1};
    List btnIDs(5, 77);
    EXPECT_FALSE(link.GetBtnIDsOfRecs(2, 4, recNums.data(), btnIDs.data()));
    EXPECT_EQ(btnIDs, List(5, 77));
    EXPECT_TRUE(link.GetBtnIDsOfRecs(1, 4, recNums.data(), btnIDs.data()));
    EXPECT_EQ(btnIDs, (List{6, 1, 6, 5, 77}));
    EXPECT_TRUE(link.GetBtnIDsOfRecs(1, 0, nullptr, nullptr));
}

TEST_F(CBnLink_OnMemVerFilled, ClearEmptiesTheTable)
{
    link.Clear();
    EXPECT_TRUE(GetContent(link) == SBnLinkContent());
    EXPECT_EQ(link.GetVersionType(), SCBUICoreCom::LINKTBLVERTYPE_ONMEM);
    EXPECT_TRUE(InsertFld(link, 3, {4}));
    EXPECT_EQ(GetColumn(link, 3), (List{4}));
}

TEST_F(CBnLink_OnMemVerFilled, AssignmentMakesACopyOfItsOwn)
{
    CBnLink_OnMemVer copy;
    ASSERT_TRUE(InsertFld(copy, 30, {1}));
    copy = link;
    const DWORD btnID = 50;
    link.SetData(3, 0, 1, &btnID);
    EXPECT_TRUE(GetContent(copy) == before);
    const CBnLink_OnMemVer& same = copy;
    copy = same;
    EXPECT_TRUE(GetContent(copy) == before);
}

TEST(CBnLink_OnMemVer, StructureMayBeChangedFromSeveralThreads)
{
    CBnLink_OnMemVer link;
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

TEST(CBnLink_OnMemVer, TheLockIsFreeAfterEveryWayOutOfAnOperation)
{
    CAllocFault memory;
    CBnLink_OnMemVer link;
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

TEST(CBnLink_OnMemVer, InsertFldThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    CAllocFault memory;
    for (const bool filled : {false, true}) {
        for (const bool withCells : {false, true}) {
            const List cells = {4, 5, 6};
            const std::ptrdiff_t liveBefore = memory.GetLiveBlockCount();
            const std::size_t failures = memory.FailEachInTurn([&](auto attempt) {
                CBnLink_OnMemVer link;
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

TEST(CBnLink_OnMemVer, InsertFldThatRunsOutOfMemoryLeavesATableOfAnyWidthAsItWas)
{
    CAllocFault memory;
    for (DWORD fldCount = 0; fldCount < 6; ++fldCount) { // some have no room for one column more
        memory.FailEachInTurn([fldCount](auto attempt) {
            CBnLink_OnMemVer link;
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

TEST(CBnLink_OnMemVer, InsertRecThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    CAllocFault memory;
    const std::size_t failures = memory.FailEachInTurn([](auto attempt) {
        CBnLink_OnMemVer link;
        FillWithThreeClasses(link);
        const SBnLinkContent before = GetContent(link);
        if (!attempt([&] { EXPECT_TRUE(link.InsertRec(1, 1000)); })) {
            EXPECT_TRUE(GetContent(link) == before);
            EXPECT_TRUE(link.InsertRec(1, 1));
        }
    });
    EXPECT_EQ(failures, 3u); // one a column
    EXPECT_EQ(memory.GetLiveBlockCount(), 0);
}

TEST(CBnLink_OnMemVer, AssignmentThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    CAllocFault memory;
    const std::size_t failures = memory.FailEachInTurn([](auto attempt) {
        CBnLink_OnMemVer source;
        FillWithThreeClasses(source);
        CBnLink_OnMemVer link;
        ASSERT_TRUE(InsertFld(link, 30, {1}));
        const SBnLinkContent before = GetContent(link);
        const bool completed = attempt([&] { link = source; });
        EXPECT_TRUE(GetContent(link) == (completed ? GetContent(source) : before));
    });
    EXPECT_GE(failures, 5u);
    EXPECT_EQ(memory.GetLiveBlockCount(), 0);
}

TEST(CBnLink_OnMemVer, ReadersThatRunOutOfMemoryLeakNothing)
{
    CAllocFault memory;
    const List recNums = {0, 1, 2};
    const std::ptrdiff_t liveBefore = memory.GetLiveBlockCount();
    memory.FailEachInTurn([&](auto attempt) {
        CBnLink_OnMemVer link;
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

TEST(CBnLink_OnMemVer, AgreesWithANaiveTableOnRandomOperations)
{
    CRandom random;
    CBnLink_OnMemVer link;
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
            ASSERT_TRUE(link.InsertRec(pos, count));
            const DWORD opened = std::min(pos, model.recCount);
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

TEST(CBnLink_OnMemVer, ListsTheClassesThatHaveAColumn)
{
    CBnLink_OnMemVer link;
    List btnClassIDs{4711};
    link.GetBtnClassIDList(btnClassIDs);
    EXPECT_EQ(btnClassIDs, List());
    for (const DWORD btnClassID : {7u, 2u, 5u})
        EXPECT_TRUE(link.InsertFld(btnClassID, 0, nullptr));
    EXPECT_TRUE(link.DeleteFld(5));
    link.GetBtnClassIDList(btnClassIDs);
    EXPECT_EQ(btnClassIDs, (List{2, 7}));
}
