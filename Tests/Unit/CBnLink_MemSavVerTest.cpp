#include "CBnLink_MemSavVer.h"

#include "Support/CAllocFault.h"
#include "Support/CRandom.h"
#include "Support/LinkTableVersions.h"
#include "Support/TBnLinkFilled.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using CBnLink_MemSavVerFilled = TBnLinkFilled<CBnLink_MemSavVer>;

} // namespace

TEST_F(CBnLink_MemSavVerFilled, InsertRecPastTheEndIsRefused)
{
    EXPECT_FALSE(link.InsertRec(4, 1));
    EXPECT_FALSE(link.InsertRec(4294967295, 1));
    EXPECT_FALSE(link.InsertRec(4, 0));
    ExpectUnchanged();
    EXPECT_TRUE(link.InsertRec(3, 0));
    ExpectUnchanged();
}

TEST_F(CBnLink_MemSavVerFilled, RowsThatAreOpenedHold0)
{
    EXPECT_TRUE(link.InsertRec(1, 2));
    EXPECT_TRUE(link.InsertRec(5, 1));
    EXPECT_EQ(GetColumn(link, 3), (List{2, 0, 0, 3, 2, 0}));
    EXPECT_EQ(GetColumn(link, 7), (List{9, 0, 0, 8, 7, 0}));
    EXPECT_TRUE(link.InsertFld(2, 6, nullptr));
    EXPECT_EQ(GetColumn(link, 2), List(6));
}

TEST_F(CBnLink_MemSavVerFilled, SetFldDataWithFewerCellsOverwritesTheFirstOnes)
{
    const List cells = {30, 31, 32, 33};
    EXPECT_TRUE(link.SetFldData(1, 2, cells.data()));
    before.columns[1] = {30, 31, 6};
    ExpectUnchanged();
    EXPECT_TRUE(link.SetFldData(1, 0, nullptr));
    EXPECT_FALSE(link.SetFldData(1, 4, cells.data()));
    ExpectUnchanged();
}

TEST(CBnLink_MemSavVer, WithoutAColumnRowsAreCountedAtAnyPosition)
{
    CBnLink_MemSavVer link;
    EXPECT_TRUE(link.InsertRec(100, 5));
    EXPECT_EQ(link.GetRecCount(), 5u);
    EXPECT_FALSE(link.InsertRec(0, 4294967291)); // which could not be counted
    EXPECT_FALSE(link.DeleteRec(3, 3));
    EXPECT_FALSE(link.DeleteRec(6, 0));
    EXPECT_EQ(link.GetRecCount(), 5u);
    EXPECT_TRUE(link.DeleteRec(1, 4));
    EXPECT_EQ(link.GetRecCount(), 1u);
}

TEST_F(CBnLink_MemSavVerFilled, AListWithARecordThatIsNoRowIsRefused)
{
    for (const List& recNums : {List{0, 3}, List{4294967295}, List{1, 2, 3, 4}}) {
        const auto count = static_cast<DWORD>(recNums.size());
        List btnIDs = {77};
        EXPECT_FALSE(link.GetBtnIDListOfRecList(1, count, recNums.data(), btnIDs));
        EXPECT_EQ(btnIDs, List{77});
        List cells(recNums.size());
        EXPECT_FALSE(link.GetBtnIDsOfRecs(1, count, recNums.data(), cells.data()));
    }
}

TEST(CBnLink_MemSavVer, GivesTheButtonsOfRunsAndOfSingleRecordsAsTheTableOnMemoryDoes)
{
    CRandom random;
    List cells(20000);
    for (DWORD& cell : cells)
        cell = 1 + random.GetBelow(300);
    CBnLink_OnMemVer onMemory;
    CBnLink_MemSavVer memorySaving;
    ASSERT_TRUE(InsertFld(onMemory, 4, cells));
    ASSERT_TRUE(InsertFld(memorySaving, 4, cells));
    const auto expectSame = [&](const List& recNums) {
        const auto count = static_cast<DWORD>(recNums.size());
        List expected;
        List given = {77};
        ASSERT_TRUE(onMemory.GetBtnIDListOfRecList(4, count, recNums.data(), expected));
        ASSERT_TRUE(memorySaving.GetBtnIDListOfRecList(4, count, recNums.data(), given));
        EXPECT_EQ(given, expected);
        List expectedCells(count);
        List givenCells(count);
        ASSERT_TRUE(onMemory.GetBtnIDsOfRecs(4, count, recNums.data(), expectedCells.data()));
        ASSERT_TRUE(memorySaving.GetBtnIDsOfRecs(4, count, recNums.data(), givenCells.data()));
        EXPECT_EQ(givenCells, expectedCells);
    };
    expectSame({5, 6, 7, 20});
    expectSame({});
    expectSame({19999});
    for (const DWORD oneOf : {1u, 2u, 10u, 100u, 3000u}) {
        List recNums;
        for (DWORD recNum = 0; recNum < cells.size(); ++recNum) {
            if (random.IsOneOf(oneOf))
                recNums.push_back(recNum);
        }
        expectSame(recNums);
        std::reverse(recNums.begin(), recNums.end());
        expectSame(recNums);
    }
}

TEST(CBnLink_MemSavVer, TheCellsOfListedRecordsAreGivenWithoutMemory)
{
    CBnLink_MemSavVer link;
    ASSERT_TRUE(InsertFld(link, 4, {5, 6, 7}));
    const List recNums = {0, 2};
    List cells(2);
    CAllocFault memory;
    memory.Arm(1);
    EXPECT_TRUE(link.GetBtnIDsOfRecs(4, 2, recNums.data(), cells.data()));
    EXPECT_FALSE(memory.Disarm());
    EXPECT_EQ(cells, (List{5, 7}));
}

TEST(CBnLink_MemSavVer, ChangesThatRunOutOfMemoryLeaveTheTableAsItWas)
{
    const List cells = {40, 50, 60};
    const std::vector<std::function<bool(IBnLink&)>> changes = {
        [](IBnLink& link) { return link.DeleteRec(1, 1); },
        [&](IBnLink& link) { return link.SetData(1, 1, 2, cells.data()); },
        [&](IBnLink& link) { return link.SetFldData(7, 3, cells.data()); },
    };
    for (const auto& change : changes) {
        CAllocFault memory;
        const std::size_t failures = memory.FailEachInTurn([&](auto attempt) {
            CBnLink_MemSavVer link;
            FillWithThreeClasses(link);
            const SBnLinkContent before = GetContent(link);
            const bool completed = attempt([&] { EXPECT_TRUE(change(link)); });
            EXPECT_EQ(GetContent(link) == before, !completed);
        });
        EXPECT_GE(failures, 2u);
        EXPECT_EQ(memory.GetLiveBlockCount(), 0);
    }
}

TEST(CBnLink_MemSavVer, AnswersAsTheTableOnMemoryDoesOnRandomOperations)
{
    CRandom random;
    CBnLink_OnMemVer onMemory;
    CBnLink_MemSavVer memorySaving;
    const std::vector<IBnLink*> links = {&onMemory, &memorySaving};
    // What an operation answers on both, which must be the same.
    const auto answer = [&](const auto& operation) {
        const bool expected = operation(onMemory);
        EXPECT_EQ(operation(memorySaving), expected);
        return expected;
    };
    for (int round = 0; round < 2000; ++round) {
        const DWORD btnClassID = random.GetBelow(6);
        const DWORD recCount = onMemory.GetRecCount();
        const DWORD pos = random.GetBelow(recCount + 2);
        const DWORD count = random.GetBelow(random.IsOneOf(5) ? 9000 : 10);
        List cells(std::max(count, recCount));
        const DWORD bound = DWORD{1} << random.GetBelow(16);
        for (DWORD& cell : cells)
            cell = random.GetBelow(bound);
        switch (random.GetBelow(7)) {
        case 0: {
            const DWORD newCount = random.IsOneOf(3) ? count : recCount;
            answer([&](IBnLink& link) { return link.InsertFld(btnClassID, newCount, cells.data()); });
            break;
        }
        case 1:
            if (random.IsOneOf(8))
                answer([&](IBnLink& link) { return link.DeleteFld(btnClassID); });
            break;
        case 2:
            if (recCount < 30000 && pos <= recCount &&
                answer([&](IBnLink& link) { return link.InsertRec(pos, count); })) {
                for (DWORD id = 0; id < 6; ++id)
                    answer([&](IBnLink& link) { return link.SetData(id, pos, count, cells.data()); });
            }
            break;
        case 3:
            answer([&](IBnLink& link) { return link.DeleteRec(pos, count); });
            break;
        case 4:
            answer([&](IBnLink& link) { return link.SetData(btnClassID, pos, count, cells.data()); });
            break;
        case 5:
            answer([&](IBnLink& link) { return link.SetFldData(btnClassID, recCount, cells.data()); });
            break;
        default:
            if (random.IsOneOf(150)) {
                for (IBnLink* const link : links)
                    link->Clear();
            }
        }
        ASSERT_EQ(GetContent(memorySaving), GetContent(onMemory)) << "round " << round;
        List expected;
        List given;
        answer([&](IBnLink& link) {
            return link.GetBtnIDList(btnClassID, &link == &onMemory ? expected : given);
        });
        ASSERT_EQ(given, expected) << "round " << round;
        DWORD expectedID = 77;
        DWORD givenID = 77;
        answer([&](IBnLink& link) {
            return link.GetBtnID(btnClassID, pos, &link == &onMemory ? expectedID : givenID);
        });
        ASSERT_EQ(givenID, expectedID);
        ASSERT_FALSE(testing::Test::HasFailure()) << "round " << round;
    }
}
