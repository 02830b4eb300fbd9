#include "ECAbnormalData.h"
#include "SCKZCoreStrDef.h"
#include "Support/CAllocFault.h"
#include "Support/CRandom.h"
#include "Support/LinkTableContent.h"
#include "Support/LinkTableVersions.h"
#include "Support/TRpLinkFilled.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <thread>

// What holds for a button-to-record table of any version. What only one of them does has tests of its own.

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

template <class TTable>
class RpLink : public testing::Test
{};
TYPED_TEST_SUITE(RpLink, RpLinkVersions, CNameOfTable);

template <class TTable>
class RpLinkFilled : public TRpLinkFilled<TTable>
{};
TYPED_TEST_SUITE(RpLinkFilled, RpLinkVersions, CNameOfTable);

} // namespace

TYPED_TEST(RpLink, IsEmptyAtFirst)
{
    const TypeParam link;
    EXPECT_TRUE(GetContent(link).empty());
    EXPECT_EQ(link.GetVersionType(), VERSION_OF<TypeParam>);
}

TYPED_TEST(RpLink, InsertFldAddsAnEmptyFieldForAClassOfAnyKind)
{
    TypeParam link;
    for (const DWORD btnClassID : {1u, 30u, COMMON_VIR, COMMON_VIR + 9, FIXED_VIR, FIXED_VIR + 3}) {
        EXPECT_FALSE(link.ExistFld(btnClassID)) << btnClassID;
        EXPECT_TRUE(link.InsertFld(btnClassID)) << btnClassID;
        EXPECT_TRUE(link.ExistFld(btnClassID)) << btnClassID;
        EXPECT_TRUE(GetFld(link, btnClassID) == SFld()) << btnClassID;
    }
}

TYPED_TEST(RpLinkFilled, InsertFldRefusesWhatIsNoClassOrHasAField)
{
    for (const DWORD btnClassID : NO_CLASSES) {
        EXPECT_FALSE(this->link.InsertFld(btnClassID)) << btnClassID;
        EXPECT_FALSE(InsertFld(this->link, btnClassID, THREE_LISTS)) << btnClassID;
        EXPECT_FALSE(this->link.ExistFld(btnClassID)) << btnClassID;
    }
    for (const DWORD btnClassID : {2u, COMMON_VIR, FIXED_VIR + 1}) {
        EXPECT_FALSE(this->link.InsertFld(btnClassID)) << btnClassID;
        EXPECT_FALSE(InsertFld(this->link, btnClassID, THREE_LISTS)) << btnClassID;
    }
    this->ExpectUnchanged();
}

TYPED_TEST(RpLink, InsertFldPlacesTheListsInIterationOrder)
{
    TypeParam link;
    const Lists lists = {{1, {0}}, {NRM, {1, 2}}, {INC, {3}}, {VIRINC, {4}}, {CLL, {5, 6}}};
    EXPECT_TRUE(InsertFld(link, 3, lists));
    EXPECT_EQ(GetFld(link, 3).area, (List{0, 1, 2, 3, 5, 6, 4}));
    EXPECT_EQ(GetLists(link, 3), lists);
}

TYPED_TEST(RpLink, InsertFldMakesNoEntryOfAnEmptyList)
{
    TypeParam link;
    EXPECT_TRUE(InsertFld(link, 3, {{1, {}}, {NRM, {4}}, {NRM + 1, {}}}));
    EXPECT_EQ(GetLists(link, 3), (Lists{{NRM, {4}}}));
    EXPECT_TRUE(InsertFld(link, 4, {}));
    EXPECT_TRUE(GetFld(link, 4) == SFld());
}

TYPED_TEST(RpLinkFilled, InsertFldRefusesListsThatHoldMoreThanTheTotal)
{
    const CBorrowedLists lists(THREE_LISTS);
    EXPECT_FALSE(this->link.InsertFld(9, lists.Get(), lists.GetTotal() - 1));
    EXPECT_FALSE(this->link.InsertFld(9, lists.Get(), 0));
    EXPECT_FALSE(this->link.ExistFld(9));
    this->ExpectUnchanged();
    EXPECT_TRUE(this->link.InsertFld(9, lists.Get(), lists.GetTotal()));
}

TYPED_TEST(RpLink, InsertFldRefusesListsWhoseSumLeaves32Bits)
{
    TypeParam link;
    DWORD recNum = 0;
    TCBtnIDAssArr<SRecordList> lists;
    lists.Set(1, SRecordList{&recNum, 4294967295});
    lists.Set(2, SRecordList{&recNum, 2});
    EXPECT_FALSE(link.InsertFld(9, lists, 1));
    EXPECT_FALSE(link.ExistFld(9));
}

TYPED_TEST(RpLink, InsertFldNeedsNoRoomForTheRecordsOfAClassThatItRefuses)
{
    CAllocFault memory;
    TypeParam link;
    const TCBtnIDAssArr<SRecordList> noLists;
    for (const DWORD btnClassID : NO_CLASSES) {
        memory.Arm(1);
        EXPECT_FALSE(link.InsertFld(btnClassID, noLists, 1000)) << btnClassID;
        EXPECT_FALSE(memory.Disarm()) << btnClassID;
    }
}

TYPED_TEST(RpLink, InsertFldWithATotalAboveTheSumKeepsTheTotal)
{
    TypeParam link;
    const CBorrowedLists lists(THREE_LISTS);
    EXPECT_TRUE(link.InsertFld(9, lists.Get(), lists.GetTotal() + 5));
    EXPECT_EQ(GetFldSize(link, 9), lists.GetTotal() + 5);
    EXPECT_EQ(GetLists(link, 9), THREE_LISTS);
    EXPECT_TRUE(SetRecList(link, 9, NRM + 5, {8, 9}));
    Lists expected = THREE_LISTS;
    expected[NRM + 5] = {8, 9};
    EXPECT_EQ(GetLists(link, 9), expected);
    EXPECT_EQ(GetFldSize(link, 9), lists.GetTotal() + 7);
}

TYPED_TEST(RpLinkFilled, DeleteFldClosesTheGap)
{
    EXPECT_TRUE(this->link.DeleteFld(2));
    this->before.erase(2);
    this->ExpectUnchanged();
    EXPECT_FALSE(this->link.ExistFld(2));
    EXPECT_TRUE(this->link.DeleteFld(FIXED_VIR + 1));
    this->before.erase(FIXED_VIR + 1);
    this->ExpectUnchanged();
    EXPECT_TRUE(this->link.InsertFld(2));
    this->before[2] = SFld();
    this->ExpectUnchanged();
}

TYPED_TEST(RpLinkFilled, OperationsOnAClassWithoutAFieldChangeNothing)
{
    List unknown = NO_CLASSES;
    unknown.insert(unknown.end(), {1, 3, COMMON_VIR + 1, FIXED_VIR, FIXED_VIR + 2});
    for (const DWORD btnClassID : unknown) {
        EXPECT_FALSE(this->link.ExistFld(btnClassID)) << btnClassID;
        EXPECT_FALSE(this->link.DeleteFld(btnClassID)) << btnClassID;
        EXPECT_FALSE(SetRecList(this->link, btnClassID, NRM, {1})) << btnClassID;
        EXPECT_FALSE(SetRecList(this->link, btnClassID, NRM, {})) << btnClassID;
        EXPECT_FALSE(AddRecList(this->link, btnClassID, NRM, {1})) << btnClassID;
        EXPECT_FALSE(DeleteRecList(this->link, btnClassID, NRM, {1})) << btnClassID;
        EXPECT_FALSE(this->link.DeleteBtn(btnClassID, NRM)) << btnClassID;
        EXPECT_FALSE(this->link.ClearOfFixedSpec(btnClassID)) << btnClassID;
        InsertRec(this->link, btnClassID, 0, 1, {{NRM, {0}}});
        DWORD count = 77;
        DWORD cell = 78;
        EXPECT_FALSE(this->link.GetRecList(btnClassID, NRM, &cell, count)) << btnClassID;
        EXPECT_FALSE(this->link.GetRecCount(btnClassID, NRM, count)) << btnClassID;
        EXPECT_FALSE(this->link.GetRecCountOfFld(btnClassID, count)) << btnClassID;
        EXPECT_EQ(count, 77u);
        TCBtnIDAssArr<SRecordList> recLists;
        recLists.Set(5, SRecordList());
        EXPECT_FALSE(this->link.GetAllRecList(btnClassID, recLists, &cell)) << btnClassID;
        EXPECT_EQ(recLists.GetSize(), 1u);
        EXPECT_EQ(cell, 78u);
    }
    this->ExpectUnchanged();
}

TYPED_TEST(RpLinkFilled, SetRecListMakesAnEntryBehindAllOthers)
{
    EXPECT_TRUE(SetRecList(this->link, 2, CLL, {3, 9}));
    this->before[2].lists[CLL] = {3, 9};
    this->before[2].area.insert(this->before[2].area.end(), {3, 9});
    this->ExpectUnchanged();
}

TYPED_TEST(RpLinkFilled, SetRecListReplacesAListByALongerOneAShorterOneAndOneAsLong)
{
    for (const List& list : {List{0, 1, 2, 3, 9}, List{5}, List{6}, List{1, 2}}) {
        EXPECT_TRUE(SetRecList(this->link, 2, NRM, list));
        Lists expected = THREE_LISTS;
        expected[NRM] = list;
        EXPECT_EQ(GetLists(this->link, 2), expected);
        ExpectSlicesFillTheArea(this->link, 2);
    }
}

TYPED_TEST(RpLinkFilled, SetRecListOfNoRecordRemovesTheEntry)
{
    EXPECT_TRUE(SetRecList(this->link, 2, NRM, {}));
    EXPECT_EQ(GetLists(this->link, 2), (Lists{{1, {0, 4}}, {INC + 4, {0, 1}}}));
    ExpectSlicesFillTheArea(this->link, 2);
    EXPECT_TRUE(SetRecList(this->link, 2, 1, {}));
    EXPECT_TRUE(SetRecList(this->link, 2, INC + 4, {}));
    EXPECT_TRUE(GetFld(this->link, 2) == SFld());
}

TYPED_TEST(RpLinkFilled, SetRecListOfNoRecordOnAButtonWithoutAnEntryChangesNothing)
{
    EXPECT_TRUE(SetRecList(this->link, 2, NRM + 1, {}));
    for (const DWORD btnID : NO_BTNS)
        EXPECT_TRUE(SetRecList(this->link, 2, btnID, {})) << btnID;
    this->ExpectUnchanged();
}

TYPED_TEST(RpLinkFilled, WhatIsNoButtonGetsNoList)
{
    for (const DWORD btnID : NO_BTNS) {
        EXPECT_FALSE(SetRecList(this->link, 2, btnID, {1})) << btnID;
        EXPECT_FALSE(AddRecList(this->link, 2, btnID, {1})) << btnID;
        EXPECT_FALSE(DeleteRecList(this->link, 2, btnID, {1})) << btnID;
        EXPECT_FALSE(this->link.DeleteBtn(2, btnID)) << btnID;
        EXPECT_TRUE(GetRecList(this->link, 2, btnID).empty()) << btnID;
    }
    this->ExpectUnchanged();
}

TYPED_TEST(RpLinkFilled, AddRecListUnitesWithWhatIsThere)
{
    EXPECT_TRUE(AddRecList(this->link, 2, NRM, {0, 2, 9}));
    EXPECT_TRUE(AddRecList(this->link, 2, VIRINC, {7}));
    EXPECT_TRUE(AddRecList(this->link, 2, 1, {}));
    Lists expected = THREE_LISTS;
    expected[NRM] = {0, 1, 2, 3, 9};
    expected[VIRINC] = {7};
    EXPECT_EQ(GetLists(this->link, 2), expected);
    ExpectSlicesFillTheArea(this->link, 2);
}

TYPED_TEST(RpLinkFilled, AddRecListOfWhatIsThereChangesNothing)
{
    EXPECT_TRUE(AddRecList(this->link, 2, NRM, {1, 3}));
    EXPECT_TRUE(AddRecList(this->link, 2, NRM + 1, {}));
    this->ExpectUnchanged();
}

TYPED_TEST(RpLinkFilled, DeleteBtnRemovesTheEntryAndItsRecords)
{
    EXPECT_TRUE(this->link.DeleteBtn(2, 1));
    EXPECT_EQ(GetLists(this->link, 2), (Lists{{NRM, {1, 2, 3}}, {INC + 4, {0, 1}}}));
    ExpectSlicesFillTheArea(this->link, 2);
    EXPECT_TRUE(GetRecList(this->link, 2, 1).empty());
}

TYPED_TEST(RpLinkFilled, DeleteBtnOfAButtonWithoutAnEntryIsRefusedWhileReadingItGivesNoRecord)
{
    EXPECT_FALSE(this->link.DeleteBtn(2, NRM + 1));
    EXPECT_TRUE(GetRecList(this->link, 2, NRM + 1).empty());
    this->ExpectUnchanged();
}

TYPED_TEST(RpLinkFilled, DeleteRecListOfAButtonWithoutAnEntryIsRefused)
{
    EXPECT_FALSE(DeleteRecList(this->link, 2, NRM + 1, {1}));
    this->ExpectUnchanged();
}

TYPED_TEST(RpLinkFilled, GetRecListAndGetRecCountGiveOneButtonsRecords)
{
    List cells(4, 77);
    DWORD count = 0;
    EXPECT_TRUE(this->link.GetRecList(2, NRM, cells.data(), count));
    EXPECT_EQ(count, 3u);
    EXPECT_EQ(cells, (List{1, 2, 3, 77}));
    EXPECT_TRUE(this->link.GetRecCount(2, INC + 4, count));
    EXPECT_EQ(count, 2u);
    EXPECT_TRUE(this->link.GetRecCount(2, INC + 3, count));
    EXPECT_EQ(count, 0u);
    count = 77;
    EXPECT_TRUE(this->link.GetRecList(2, INC + 5, nullptr, count));
    EXPECT_EQ(count, 0u);
}

TYPED_TEST(RpLink, GetBtnClassIDListGivesEachKindAscending)
{
    TypeParam link;
    for (const DWORD btnClassID : {FIXED_VIR + 2, 9u, COMMON_VIR + 4, FIXED_VIR, 2u, COMMON_VIR})
        link.InsertFld(btnClassID);
    List btnClassIDs = {5};
    link.GetBtnClassIDList(btnClassIDs);
    EXPECT_EQ(btnClassIDs, (List{2, 9, COMMON_VIR, COMMON_VIR + 4, FIXED_VIR, FIXED_VIR + 2}));
}

TYPED_TEST(RpLink, GetBtnIDListGivesTheButtonsWithRecords)
{
    TypeParam link;
    link.InsertFld(3);
    List btnIDs = {5};
    ASSERT_TRUE(link.GetBtnIDList(3, btnIDs));
    EXPECT_EQ(btnIDs, List());
    for (const DWORD btnID : {VIRINC, 7u, INC + 1, SCBUICoreCom::BTN_ID_EMPVAL, 2u})
        SetRecList(link, 3, btnID, {btnID % 5});
    SetRecList(link, 3, 7, {});
    ASSERT_TRUE(link.GetBtnIDList(3, btnIDs));
    EXPECT_EQ(btnIDs, (List{SCBUICoreCom::BTN_ID_EMPVAL, 2, INC + 1, VIRINC}));
    EXPECT_FALSE(link.GetBtnIDList(4, btnIDs));
    EXPECT_EQ(btnIDs.size(), 4u);
}

TYPED_TEST(RpLinkFilled, ClearOfFixedSpecEmptiesAFixedVirtualClass)
{
    EXPECT_TRUE(this->link.ClearOfFixedSpec(FIXED_VIR + 1));
    this->before[FIXED_VIR + 1] = SFld();
    this->ExpectUnchanged();
    EXPECT_TRUE(SetRecList(this->link, FIXED_VIR + 1, VIRINC, {3}));
    EXPECT_EQ(GetLists(this->link, FIXED_VIR + 1), (Lists{{VIRINC, {3}}}));
}

TYPED_TEST(RpLink, ClearOfFixedSpecLeavesAClassWithoutIncAndCllButtonsAsItIs)
{
    TypeParam link;
    ASSERT_TRUE(InsertFld(link, 7, {{1, {4}}, {NRM, {1, 2}}, {VIRINC, {0, 4}}}));
    const RpLinkContent before = GetContent(link);
    EXPECT_TRUE(link.ClearOfFixedSpec(7));
    EXPECT_TRUE(GetContent(link) == before);
    ASSERT_TRUE(SetRecList(link, 7, INC, {1}));
    ASSERT_TRUE(link.DeleteBtn(7, INC));
    EXPECT_TRUE(link.ClearOfFixedSpec(7));
    EXPECT_TRUE(GetContent(link) == before);
}

TYPED_TEST(RpLink, ClearOfFixedSpecOfAClassOfOnlyIncButtonsEmptiesIt)
{
    TypeParam link;
    ASSERT_TRUE(InsertFld(link, 7, {{INC, {1, 2}}, {INC + 1, {0, 4}}}));
    EXPECT_TRUE(link.ClearOfFixedSpec(7));
    EXPECT_TRUE(GetFld(link, 7) == SFld());
}

TYPED_TEST(RpLinkFilled, ClearOfFixedSpecWithoutAClassClearsAll)
{
    this->link.ClearOfFixedSpec();
    EXPECT_EQ(GetLists(this->link, 2), (Lists{{1, {0, 4}}, {NRM, {1, 2, 3}}}));
    EXPECT_EQ(GetLists(this->link, COMMON_VIR), (Lists{{VIRINC, {7}}}));
    EXPECT_TRUE(GetFld(this->link, FIXED_VIR + 1) == SFld());
}

TYPED_TEST(RpLinkFilled, InsertRecShiftsOldRecordsAndUnitesTheNewOnes)
{
    InsertRec(this->link, 2, 2, 3, {{1, {2}}, {NRM, {3}}, {NRM + 9, {4}}, {CLL, {2, 3, 4}}, {NRM + 3, {}}});
    EXPECT_EQ(
        GetLists(this->link, 2),
        (Lists{{1, {0, 2, 7}}, {NRM, {1, 3, 5, 6}}, {NRM + 9, {4}}, {INC + 4, {0, 1}}, {CLL, {2, 3, 4}}}));
    ExpectSlicesFillTheArea(this->link, 2);
    EXPECT_EQ(GetLists(this->link, COMMON_VIR), (Lists{{VIRINC, {7}}})); // a class at a time
}

TYPED_TEST(RpLinkFilled, InsertRecWithoutListsShiftsOnly)
{
    InsertRec(this->link, 2, 1, 10, {});
    EXPECT_EQ(GetLists(this->link, 2), (Lists{{1, {0, 14}}, {NRM, {11, 12, 13}}, {INC + 4, {0, 11}}}));
    ExpectSlicesFillTheArea(this->link, 2);
}

TYPED_TEST(RpLink, InsertRecIntoAnEmptyAreaCopiesAllLists)
{
    TypeParam link;
    ASSERT_TRUE(link.InsertFld(2));
    const Lists lists = {{1, {0}}, {NRM, {1, 2}}, {VIRINC, {0, 2}}};
    InsertRec(link, 2, 0, 3, lists);
    EXPECT_EQ(GetLists(link, 2), lists);
    ExpectSlicesFillTheArea(link, 2);
}

TYPED_TEST(RpLinkFilled, InsertRecLeavesUnusedRoomWhereANewRecordStandsInTheOldList)
{
    InsertRec(this->link, 2, 5, 1, {{NRM, {3, 5}}});
    EXPECT_EQ(GetFldSize(this->link, 2), 9u);
    Lists expected = THREE_LISTS;
    expected[NRM] = {1, 2, 3, 5};
    EXPECT_EQ(GetLists(this->link, 2), expected);
    EXPECT_TRUE(SetRecList(this->link, 2, NRM, {1})); // what stands behind keeps its place
    expected[NRM] = {1};
    EXPECT_EQ(GetLists(this->link, 2), expected);
    this->link.DeleteRec(0, 1);
    EXPECT_EQ(GetLists(this->link, 2), (Lists{{1, {3}}, {NRM, {0}}, {INC + 4, {0}}}));
}

TYPED_TEST(RpLinkFilled, InsertRecRefusesListsThatHoldMoreThanTheirTotal)
{
    const CBorrowedLists lists(Lists{{NRM, {2, 3}}, {NRM + 1, {4}}});
    try {
        this->link.InsertRec(2, 2, 3, lists.Get(), 2);
        FAIL() << "nothing was thrown";
    } catch (const ECAbnormalData& exception) {
        EXPECT_STREQ(exception.GetMessageText(), SCKZCoreStrDef::MSG_ABNORMAL_DATASIZE);
        EXPECT_NE(std::string(exception.GetFunction()).find("Ver::InsertRec"), std::string::npos);
    }
    this->ExpectUnchanged();
}

TYPED_TEST(RpLinkFilled, DeleteRecTakesRecordsOutOfAllClassesAndRenumbersTheRest)
{
    this->link.DeleteRec(1, 2);
    EXPECT_EQ(GetLists(this->link, 2), (Lists{{1, {0, 2}}, {NRM, {1}}, {INC + 4, {0}}}));
    EXPECT_EQ(GetLists(this->link, COMMON_VIR), (Lists{{VIRINC, {5}}}));
    EXPECT_EQ(GetLists(this->link, FIXED_VIR + 1), (Lists{{VIRINC + 1, {6}}}));
    for (const DWORD btnClassID : {2u, COMMON_VIR, FIXED_VIR + 1})
        ExpectSlicesFillTheArea(this->link, btnClassID);
}

TYPED_TEST(RpLinkFilled, DeleteRecRemovesAnEntryThatItEmpties)
{
    this->link.DeleteRec(1, 3);
    EXPECT_EQ(GetLists(this->link, 2), (Lists{{1, {0, 1}}, {INC + 4, {0}}}));
    EXPECT_FALSE(this->link.DeleteBtn(2, NRM));
    ExpectSlicesFillTheArea(this->link, 2);
}

TYPED_TEST(RpLinkFilled, DeleteRecThatTouchesNoRecordOfAClassRenumbersThoseAbove)
{
    this->link.DeleteRec(5, 2);
    this->before[COMMON_VIR] = {{5}, {{VIRINC, {5}}}};
    this->before[FIXED_VIR + 1] = {{1, 6}, {{VIRINC + 1, {1, 6}}}};
    this->ExpectUnchanged();
}

TYPED_TEST(RpLinkFilled, DeleteRecOfARangeThatLeaves32BitsEndsAtTheLastRecord)
{
    this->link.DeleteRec(2, 4294967295);
    EXPECT_EQ(GetLists(this->link, 2), (Lists{{1, {0}}, {NRM, {1}}, {INC + 4, {0, 1}}}));
    EXPECT_TRUE(GetFld(this->link, COMMON_VIR) == SFld());
}

TYPED_TEST(RpLinkFilled, DeleteRecOfNothingChangesNothing)
{
    this->link.DeleteRec(1, 0);
    this->link.DeleteRec(100, 5);
    this->ExpectUnchanged();
}

TYPED_TEST(RpLink, DeleteRecOfAnEmptyTableIsNothing)
{
    TypeParam link;
    link.DeleteRec(0, 5);
    EXPECT_TRUE(GetContent(link).empty());
    link.InsertFld(3);
    link.DeleteRec(0, 5);
    EXPECT_TRUE(GetFld(link, 3) == SFld());
}

TYPED_TEST(RpLinkFilled, ClearEmptiesTheTable)
{
    this->link.Clear();
    EXPECT_TRUE(GetContent(this->link).empty());
    EXPECT_FALSE(this->link.ExistFld(2));
    EXPECT_TRUE(this->link.InsertFld(2));
    EXPECT_TRUE(GetFld(this->link, 2) == SFld());
}

TYPED_TEST(RpLink, FieldsMayBeAddedAndRemovedFromSeveralThreads)
{
    TypeParam link;
    ASSERT_TRUE(InsertFld(link, 2, THREE_LISTS));
    std::vector<std::thread> threads;
    for (const DWORD first : {11u, COMMON_VIR, FIXED_VIR}) {
        threads.emplace_back([&link, first] {
            const CBorrowedLists lists(Lists{{VIRINC, {first}}});
            for (int round = 0; round < 50; ++round) {
                for (DWORD btnClassID = first; btnClassID < first + 6; btnClassID += 2) {
                    link.InsertFld(btnClassID);
                    link.InsertFld(btnClassID + 1, lists.Get(), lists.GetTotal());
                }
                for (DWORD btnClassID = first; btnClassID < first + 5; ++btnClassID)
                    link.DeleteFld(btnClassID);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    List btnClassIDs;
    link.GetBtnClassIDList(btnClassIDs);
    EXPECT_EQ(btnClassIDs, (List{2, 16, COMMON_VIR + 5, FIXED_VIR + 5}));
    EXPECT_EQ(GetLists(link, 2), THREE_LISTS);
    EXPECT_EQ(GetLists(link, COMMON_VIR + 5), (Lists{{VIRINC, {COMMON_VIR}}}));
}

TYPED_TEST(RpLink, TheLockIsFreeAfterEveryWayOutOfAnOperation)
{
    CAllocFault memory;
    TypeParam link;
    ASSERT_TRUE(InsertFld(link, 2, THREE_LISTS));
    const CBorrowedLists lists(THREE_LISTS);
    // Another thread comes through only where this one, which could enter again, has left.
    const auto passFromAnotherThread = [&link] { std::thread([&link] { link.DeleteFld(0); }).join(); };

    EXPECT_TRUE(link.InsertFld(300));
    passFromAnotherThread();
    EXPECT_FALSE(link.InsertFld(300));
    passFromAnotherThread();
    EXPECT_FALSE(link.InsertFld(0));
    passFromAnotherThread();
    EXPECT_FALSE(link.InsertFld(300, lists.Get(), lists.GetTotal()));
    passFromAnotherThread();
    EXPECT_FALSE(link.InsertFld(301, lists.Get(), lists.GetTotal() - 1));
    passFromAnotherThread();
    memory.Arm(1);
    EXPECT_THROW(link.InsertFld(4000), std::bad_alloc);
    memory.Disarm();
    passFromAnotherThread();
    memory.Arm(2);
    EXPECT_THROW(link.InsertFld(4000, lists.Get(), lists.GetTotal()), std::bad_alloc);
    memory.Disarm();
    passFromAnotherThread();
    EXPECT_TRUE(link.InsertFld(4000, lists.Get(), lists.GetTotal()));
    passFromAnotherThread();
    EXPECT_TRUE(link.DeleteFld(300));
    passFromAnotherThread();
    EXPECT_FALSE(link.DeleteFld(300));
    passFromAnotherThread();
    EXPECT_EQ(GetLists(link, 4000), THREE_LISTS);
}

TYPED_TEST(RpLink, ManyFieldsAreDeletedInOnePass)
{
    TypeParam link;
    constexpr DWORD VIRTUAL = SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
    const std::vector<DWORD> btnClassIDs{3, VIRTUAL, 1, VIRTUAL + 1, 2};
    for (const DWORD btnClassID : btnClassIDs) {
        const DWORD rec = btnClassID % 10;
        ASSERT_TRUE(link.InsertFld(btnClassID));
        ASSERT_TRUE(link.AddRecList(btnClassID, 2, &rec, 1));
    }
    link.DeleteFlds({VIRTUAL, 99, 1, VIRTUAL, SCBUICoreCom::BTNCLS_ID_UNSETTING});
    std::vector<DWORD> left;
    link.GetBtnClassIDList(left);
    EXPECT_EQ(left, (std::vector<DWORD>{2, 3, VIRTUAL + 1}));
    for (const DWORD btnClassID : left) {
        DWORD rec = 99;
        DWORD count = 0;
        EXPECT_TRUE(link.GetRecList(btnClassID, 2, &rec, count));
        EXPECT_EQ(count, 1u);
        EXPECT_EQ(rec, btnClassID % 10);
    }
    link.DeleteFlds({});
    EXPECT_TRUE(link.ExistFld(2));
    EXPECT_TRUE(link.InsertFld(1));
}

TYPED_TEST(RpLink, AFieldThatIsClearedStaysAndHasNoRecords)
{
    TypeParam link;
    const DWORD recs[] = {1, 2};
    ASSERT_TRUE(link.InsertFld(1));
    ASSERT_TRUE(link.InsertFld(2));
    for (const DWORD btnClassID : {1u, 2u}) {
        ASSERT_TRUE(link.AddRecList(btnClassID, 2, recs, 2));
        ASSERT_TRUE(link.AddRecList(btnClassID, SCBUICoreCom::BTN_ID_VIRINC_BEGIN, recs, 1));
    }
    EXPECT_TRUE(link.ClearFld(1));
    EXPECT_FALSE(link.ClearFld(3));
    DWORD count = 9;
    EXPECT_TRUE(link.GetRecCountOfFld(1, count));
    EXPECT_EQ(count, 0u);
    EXPECT_TRUE(link.GetRecCount(1, 2, count));
    EXPECT_EQ(count, 0u);
    EXPECT_TRUE(link.GetRecCountOfFld(2, count));
    EXPECT_EQ(count, 3u);
    EXPECT_TRUE(link.AddRecList(1, 2, recs, 2));
}

TYPED_TEST(RpLink, InsertFldThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    for (const DWORD btnClassID : {300u, COMMON_VIR + 300, FIXED_VIR + 300}) {
        const auto operation = [=](IRpLink& link) { EXPECT_TRUE(link.InsertFld(btnClassID)); };
        EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut<TypeParam>(operation), 1u);
    }
}

TYPED_TEST(RpLink, InsertFldWithListsThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    const CBorrowedLists lists(
        Lists{{1, {3}}, {NRM + 50, {1, 2}}, {INC, {3}}, {CLL + 7, {1}}, {VIRINC, {2}}});
    for (const DWORD btnClassID : {300u, COMMON_VIR + 300, FIXED_VIR + 300}) {
        const auto operation = [&](IRpLink& link) {
            EXPECT_TRUE(link.InsertFld(btnClassID, lists.Get(), lists.GetTotal()));
        };
        EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut<TypeParam>(operation), 6u);
    }
}

TYPED_TEST(RpLink, InsertFldThatRunsOutOfMemoryLeavesATableOfAnyLengthAsItWas)
{
    CAllocFault memory;
    for (DWORD fldCount = 0; fldCount < 6; ++fldCount) { // some have no room for one field more
        memory.FailEachInTurn([fldCount](auto attempt) {
            TypeParam link;
            for (DWORD btnClassID = 1; btnClassID <= fldCount; ++btnClassID)
                ASSERT_TRUE(InsertFld(link, btnClassID, {{NRM, {btnClassID}}}));
            RpLinkContent expected = GetContent(link);
            if (!attempt([&] { EXPECT_TRUE(link.InsertFld(20)); })) {
                EXPECT_TRUE(GetContent(link) == expected);
                EXPECT_TRUE(link.InsertFld(20));
            }
            expected[20] = SFld();
            EXPECT_TRUE(GetContent(link) == expected);
        });
        EXPECT_EQ(memory.GetLiveBlockCount(), 0);
    }
}

TYPED_TEST(RpLink, SetRecListThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    const List list = {0, 1, 2, 3, 4, 5, 6};
    for (const DWORD btnID : {DWORD{1}, NRM, INC + 4, NRM + 90, INC + 90, CLL + 90, VIRINC + 90}) {
        for (const DWORD count : {0u, 1u, 2u, 3u, 7u}) {
            const auto operation = [&](IRpLink& link) {
                EXPECT_TRUE(link.SetRecList(2, btnID, list.data(), count));
            };
            ExpectUnchangedWhenMemoryRunsOut<TypeParam>(operation);
        }
    }
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut<TypeParam>(
                  [&](IRpLink& link) { link.SetRecList(2, NRM, list.data(), 7); }),
              1u);
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut<TypeParam>(
                  [&](IRpLink& link) { link.SetRecList(2, NRM, list.data(), 1); }),
              1u);
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut<TypeParam>(
                  [&](IRpLink& link) { link.SetRecList(2, CLL, list.data(), 1); }),
              2u);
}

TYPED_TEST(RpLink, AddRecListAndDeleteBtnThatRunOutOfMemoryLeaveTheTableAsItWas)
{
    const List list = {0, 2, 9};
    for (const DWORD btnID : {DWORD{1}, NRM, INC + 4, NRM + 90}) {
        EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut<TypeParam>(
                      [&](IRpLink& link) { EXPECT_TRUE(link.AddRecList(2, btnID, list.data(), 3)); }),
                  2u);
    }
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut<TypeParam>(
                  [&](IRpLink& link) { EXPECT_TRUE(link.DeleteBtn(2, NRM)); }),
              1u);
    const std::size_t failures = ExpectUnchangedWhenMemoryRunsOut<TypeParam>(
        [&](IRpLink& link) { EXPECT_TRUE(link.DeleteBtn(COMMON_VIR, VIRINC)); });
    if (IS_ON_MEMORY<TypeParam>) {
        EXPECT_EQ(failures, 0u); // a zero-sized area is no exhaustion
    }
}

TYPED_TEST(RpLink, InsertRecThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    const CBorrowedLists lists(Lists{{1, {2}}, {NRM + 90, {3}}, {CLL + 5, {2, 3}}, {VIRINC, {2}}});
    const auto operation = [&](IRpLink& link) { link.InsertRec(2, 2, 2, lists.Get(), lists.GetTotal()); };
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut<TypeParam>(operation), 5u);
}

TYPED_TEST(RpLink, DeleteRecThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut<TypeParam>([](IRpLink& link) { link.DeleteRec(1, 2); }), 1u);
}

TYPED_TEST(RpLink, ClearOfFixedSpecThatRunsOutOfMemoryLeavesTheClassAsItWas)
{
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut<TypeParam>(
                  [](IRpLink& link) { EXPECT_TRUE(link.ClearOfFixedSpec(2)); }),
              1u);
}

TYPED_TEST(RpLink, AgreesWithANaiveTableOnRandomOperations)
{
    CRandom random;
    TypeParam link;
    std::map<DWORD, std::map<DWORD, std::set<DWORD>>> model; // class, button, records
    DWORD recCount = 30;
    const List btnClassIDs = {1, 2, 9, COMMON_VIR, COMMON_VIR + 2, FIXED_VIR, FIXED_VIR + 1};
    const List btnBegins = {NRM, NRM, INC, CLL, VIRINC};
    const auto pickBtn = [&] {
        return random.IsOneOf(8) ? 1 : btnBegins[random.GetBelow(5)] + random.GetBelow(5);
    };
    const auto makeList = [&](DWORD begin, DWORD end) {
        List list;
        const DWORD times = 1 + random.GetBelow(6);
        for (DWORD recNum = begin; recNum < end; ++recNum) {
            if (random.IsOneOf(times))
                list.push_back(recNum);
        }
        return list;
    };
    const auto makeLists = [&](DWORD begin, DWORD end) {
        Lists lists;
        for (DWORD i = random.GetBelow(6); i > 0; --i)
            lists[pickBtn()] = makeList(begin, end);
        return lists;
    };
    for (int round = 0; round < 5000; ++round) {
        const DWORD btnClassID = btnClassIDs[random.GetBelow(static_cast<DWORD>(btnClassIDs.size()))];
        const bool known = model.count(btnClassID) == 1;
        const DWORD btnID = pickBtn();
        const bool hasEntry = known && model[btnClassID].count(btnID) == 1;
        switch (random.GetBelow(13)) {
        case 0:
            ASSERT_EQ(link.InsertFld(btnClassID), !known);
            model[btnClassID];
            break;
        case 1: {
            const Lists lists = makeLists(0, recCount);
            ASSERT_EQ(InsertFld(link, btnClassID, lists), !known);
            if (!known) {
                model[btnClassID];
                for (const auto& [id, list] : lists) {
                    if (!list.empty())
                        model[btnClassID][id] = std::set<DWORD>(list.begin(), list.end());
                }
            }
            break;
        }
        case 2:
            if (random.IsOneOf(4)) {
                ASSERT_EQ(link.DeleteFld(btnClassID), known);
                model.erase(btnClassID);
            }
            break;
        case 3:
        case 4:
        case 5: {
            const List list = makeList(0, recCount);
            ASSERT_EQ(SetRecList(link, btnClassID, btnID, list), known);
            if (known && list.empty())
                model[btnClassID].erase(btnID);
            else if (known)
                model[btnClassID][btnID] = std::set<DWORD>(list.begin(), list.end());
            break;
        }
        case 6: {
            const List list = makeList(0, recCount);
            ASSERT_EQ(AddRecList(link, btnClassID, btnID, list), known);
            if (known && !list.empty())
                model[btnClassID][btnID].insert(list.begin(), list.end());
            break;
        }
        case 7:
            ASSERT_EQ(link.DeleteBtn(btnClassID, btnID), hasEntry);
            if (known)
                model[btnClassID].erase(btnID);
            break;
        case 8: {
            // Only half of a list can be taken out without misplacing what stands behind.
            if (!IS_ON_MEMORY<TypeParam> || !hasEntry || model[btnClassID][btnID].size() % 2 != 0)
                break;
            std::set<DWORD>& recs = model[btnClassID][btnID];
            const auto begin =
                std::next(recs.begin(), random.GetBelow(static_cast<DWORD>(recs.size() / 2) + 1));
            const List half(begin, std::next(begin, static_cast<std::ptrdiff_t>(recs.size() / 2)));
            ASSERT_TRUE(DeleteRecList(link, btnClassID, btnID, half));
            for (const DWORD recNum : half)
                recs.erase(recNum);
            break;
        }
        case 9:
            // Of some classes the version that saves memory drops others than meant.
            if (!IS_ON_MEMORY<TypeParam> && known && !SCBUICoreCom::IsFixedVirBtnClass(btnClassID))
                break;
            ASSERT_EQ(link.ClearOfFixedSpec(btnClassID), known);
            if (known && SCBUICoreCom::IsFixedVirBtnClass(btnClassID))
                model[btnClassID].clear();
            else if (known)
                std::erase_if(model[btnClassID], [](const auto& entry) {
                    return SCBUICoreCom::IsIncBtn(entry.first) || SCBUICoreCom::IsCllBtn(entry.first);
                });
            break;
        case 10: {
            if (recCount > 60)
                break;
            const DWORD pos = random.GetBelow(recCount + 1);
            const DWORD count = random.GetBelow(8);
            for (auto& [id, btns] : model) {
                const Lists lists = makeLists(pos, pos + count);
                InsertRec(link, id, pos, count, lists);
                for (auto& [btn, recs] : btns) {
                    std::set<DWORD> shifted;
                    for (const DWORD recNum : recs)
                        shifted.insert(recNum < pos ? recNum : recNum + count);
                    recs = shifted;
                }
                for (const auto& [btn, list] : lists) {
                    if (!list.empty())
                        btns[btn].insert(list.begin(), list.end());
                }
            }
            recCount += count;
            break;
        }
        case 11: {
            const DWORD pos = random.GetBelow(recCount + 1);
            const DWORD count = random.GetBelow(std::min<DWORD>(recCount - pos, 6) + 1);
            link.DeleteRec(pos, count);
            for (auto& [id, btns] : model) {
                for (auto& [btn, recs] : btns) {
                    std::set<DWORD> kept;
                    for (const DWORD recNum : recs) {
                        if (recNum < pos)
                            kept.insert(recNum);
                        else if (recNum >= pos + count)
                            kept.insert(recNum - count);
                    }
                    recs = kept;
                }
                std::erase_if(btns, [](const auto& entry) { return entry.second.empty(); });
            }
            recCount -= count;
            break;
        }
        default:
            if (random.IsOneOf(200)) {
                link.Clear();
                model.clear();
            }
        }

        List held;
        link.GetBtnClassIDList(held);
        ASSERT_EQ(held.size(), model.size()) << "round " << round;
        for (const auto& [id, btns] : model) {
            Lists expected;
            for (const auto& [btn, recs] : btns)
                expected[btn] = List(recs.begin(), recs.end());
            ASSERT_EQ(GetLists(link, id), expected) << "round " << round;
            ExpectSlicesFillTheArea(link, id);
            ASSERT_FALSE(testing::Test::HasFatalFailure()) << "round " << round;
            const DWORD probe = pickBtn();
            ASSERT_EQ(GetRecList(link, id, probe), expected.count(probe) ? expected[probe] : List());
        }
    }
}
