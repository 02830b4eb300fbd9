#include "CRpLink_OnMemVer.h"

#include "ECAbnormalData.h"
#include "SCKZCoreStrDef.h"
#include "Support/CAllocFault.h"
#include "Support/CRandom.h"
#include "Support/LinkTableContent.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <thread>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

constexpr DWORD NRM = SCBUICoreCom::BTN_ID_NRM_BEGIN;
constexpr DWORD INC = SCBUICoreCom::BTN_ID_INC_BEGIN;
constexpr DWORD VIRINC = SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
constexpr DWORD CLL = SCBUICoreCom::BTN_ID_CLL_BEGIN;
constexpr DWORD COMMON_VIR = SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN;
constexpr DWORD FIXED_VIR = SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
constexpr DWORD LAST_CLASS = SCBUICoreCom::BTNCLS_ID_VIR_FIXED_END;
const List NO_BTNS = {0, 3000000002, 4000000001, 4240000002, 4294967295};
const List NO_CLASSES = {0, LAST_CLASS + 1, 2147483648, 4294967295};

// Whether the slices of a class lie in its area without overlap and without a gap.
void ExpectSlicesFillTheArea(const IRpLink& link, DWORD btnClassID)
{
    List area(GetFldSize(link, btnClassID));
    TCBtnIDAssArr<SRecordList> recLists;
    ASSERT_TRUE(link.GetAllRecList(btnClassID, recLists, area.data()));
    std::vector<std::pair<DWORD, DWORD>> slices;
    for (auto it = recLists.begin(); it != recLists.end(); ++it)
        slices.emplace_back(static_cast<DWORD>(it->recList - area.data()), it->recCount);
    std::sort(slices.begin(), slices.end());
    DWORD end = 0;
    for (const auto& [pos, count] : slices) {
        ASSERT_EQ(pos, end);
        ASSERT_GT(count, 0u);
        end += count;
    }
    ASSERT_EQ(end, area.size());
}

const Lists THREE_LISTS = {{1, {0, 4}}, {NRM, {1, 2, 3}}, {INC + 4, {0, 1}}};

class CRpLink_OnMemVerFilled : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(InsertFld(link, 2, THREE_LISTS));
        ASSERT_TRUE(InsertFld(link, COMMON_VIR, {{VIRINC, {7}}}));
        ASSERT_TRUE(InsertFld(link, FIXED_VIR + 1, {{VIRINC + 1, {1, 8}}}));
        before = GetContent(link);
    }
    void ExpectUnchanged() { EXPECT_TRUE(GetContent(link) == before); }

    CRpLink_OnMemVer link;
    RpLinkContent before;
};

} // namespace

TEST(CRpLink_OnMemVer, IsEmptyAtFirst)
{
    const CRpLink_OnMemVer link;
    EXPECT_TRUE(GetContent(link).empty());
    EXPECT_EQ(link.GetVersionType(), SCBUICoreCom::LINKTBLVERTYPE_ONMEM);
}

TEST(CRpLink_OnMemVer, InsertFldAddsAnEmptyFieldForAClassOfAnyKind)
{
    CRpLink_OnMemVer link;
    for (const DWORD btnClassID : {1u, 30u, COMMON_VIR, COMMON_VIR + 9, FIXED_VIR, FIXED_VIR + 3}) {
        EXPECT_FALSE(link.ExistFld(btnClassID)) << btnClassID;
        EXPECT_TRUE(link.InsertFld(btnClassID)) << btnClassID;
        EXPECT_TRUE(link.ExistFld(btnClassID)) << btnClassID;
        EXPECT_TRUE(GetFld(link, btnClassID) == SFld()) << btnClassID;
    }
}

TEST_F(CRpLink_OnMemVerFilled, InsertFldRefusesWhatIsNoClassOrHasAField)
{
    for (const DWORD btnClassID : NO_CLASSES) {
        EXPECT_FALSE(link.InsertFld(btnClassID)) << btnClassID;
        EXPECT_FALSE(InsertFld(link, btnClassID, THREE_LISTS)) << btnClassID;
        EXPECT_FALSE(link.ExistFld(btnClassID)) << btnClassID;
    }
    for (const DWORD btnClassID : {2u, COMMON_VIR, FIXED_VIR + 1}) {
        EXPECT_FALSE(link.InsertFld(btnClassID)) << btnClassID;
        EXPECT_FALSE(InsertFld(link, btnClassID, THREE_LISTS)) << btnClassID;
    }
    ExpectUnchanged();
}

TEST(CRpLink_OnMemVer, InsertFldPlacesTheListsInIterationOrder)
{
    CRpLink_OnMemVer link;
    const Lists lists = {{1, {0}}, {NRM, {1, 2}}, {INC, {3}}, {VIRINC, {4}}, {CLL, {5, 6}}};
    EXPECT_TRUE(InsertFld(link, 3, lists));
    EXPECT_EQ(GetFld(link, 3).area, (List{0, 1, 2, 3, 5, 6, 4}));
    EXPECT_EQ(GetLists(link, 3), lists);
}

TEST(CRpLink_OnMemVer, InsertFldMakesNoEntryOfAnEmptyList)
{
    CRpLink_OnMemVer link;
    EXPECT_TRUE(InsertFld(link, 3, {{1, {}}, {NRM, {4}}, {NRM + 1, {}}}));
    EXPECT_EQ(GetLists(link, 3), (Lists{{NRM, {4}}}));
    EXPECT_TRUE(InsertFld(link, 4, {}));
    EXPECT_TRUE(GetFld(link, 4) == SFld());
}

TEST_F(CRpLink_OnMemVerFilled, InsertFldRefusesListsThatHoldMoreThanTheTotal)
{
    const CBorrowedLists lists(THREE_LISTS);
    EXPECT_FALSE(link.InsertFld(9, lists.Get(), lists.GetTotal() - 1));
    EXPECT_FALSE(link.InsertFld(9, lists.Get(), 0));
    EXPECT_FALSE(link.ExistFld(9));
    ExpectUnchanged();
    EXPECT_TRUE(link.InsertFld(9, lists.Get(), lists.GetTotal()));
}

TEST(CRpLink_OnMemVer, InsertFldRefusesListsWhoseSumLeaves32Bits)
{
    CRpLink_OnMemVer link;
    DWORD recNum = 0;
    TCBtnIDAssArr<SRecordList> lists;
    lists.Set(1, SRecordList{&recNum, 4294967295});
    lists.Set(2, SRecordList{&recNum, 2});
    EXPECT_FALSE(link.InsertFld(9, lists, 1));
    EXPECT_FALSE(link.ExistFld(9));
}

TEST(CRpLink_OnMemVer, InsertFldNeedsNoRoomForTheRecordsOfAClassThatItRefuses)
{
    CAllocFault memory;
    CRpLink_OnMemVer link;
    const TCBtnIDAssArr<SRecordList> noLists;
    for (const DWORD btnClassID : NO_CLASSES) {
        memory.Arm(1);
        EXPECT_FALSE(link.InsertFld(btnClassID, noLists, 1000)) << btnClassID;
        EXPECT_FALSE(memory.Disarm()) << btnClassID;
    }
}

TEST(CRpLink_OnMemVer, InsertFldWithATotalAboveTheSumKeepsTheTotal)
{
    CRpLink_OnMemVer link;
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

TEST_F(CRpLink_OnMemVerFilled, DeleteFldClosesTheGap)
{
    EXPECT_TRUE(link.DeleteFld(2));
    before.erase(2);
    ExpectUnchanged();
    EXPECT_FALSE(link.ExistFld(2));
    EXPECT_TRUE(link.DeleteFld(FIXED_VIR + 1));
    before.erase(FIXED_VIR + 1);
    ExpectUnchanged();
    EXPECT_TRUE(link.InsertFld(2));
    before[2] = SFld();
    ExpectUnchanged();
}

TEST_F(CRpLink_OnMemVerFilled, OperationsOnAClassWithoutAFieldChangeNothing)
{
    List unknown = NO_CLASSES;
    unknown.insert(unknown.end(), {1, 3, COMMON_VIR + 1, FIXED_VIR, FIXED_VIR + 2});
    for (const DWORD btnClassID : unknown) {
        EXPECT_FALSE(link.ExistFld(btnClassID)) << btnClassID;
        EXPECT_FALSE(link.DeleteFld(btnClassID)) << btnClassID;
        EXPECT_FALSE(SetRecList(link, btnClassID, NRM, {1})) << btnClassID;
        EXPECT_FALSE(SetRecList(link, btnClassID, NRM, {})) << btnClassID;
        EXPECT_FALSE(AddRecList(link, btnClassID, NRM, {1})) << btnClassID;
        EXPECT_FALSE(DeleteRecList(link, btnClassID, NRM, {1})) << btnClassID;
        EXPECT_FALSE(link.DeleteBtn(btnClassID, NRM)) << btnClassID;
        EXPECT_FALSE(link.ClearOfFixedSpec(btnClassID)) << btnClassID;
        InsertRec(link, btnClassID, 0, 1, {{NRM, {0}}});
        DWORD count = 77;
        DWORD cell = 78;
        EXPECT_FALSE(link.GetRecList(btnClassID, NRM, &cell, count)) << btnClassID;
        EXPECT_FALSE(link.GetRecCount(btnClassID, NRM, count)) << btnClassID;
        EXPECT_FALSE(link.GetRecCountOfFld(btnClassID, count)) << btnClassID;
        EXPECT_EQ(count, 77u);
        TCBtnIDAssArr<SRecordList> recLists;
        recLists.Set(5, SRecordList());
        EXPECT_FALSE(link.GetAllRecList(btnClassID, recLists, &cell)) << btnClassID;
        EXPECT_EQ(recLists.GetSize(), 1u);
        EXPECT_EQ(cell, 78u);
    }
    ExpectUnchanged();
}

TEST_F(CRpLink_OnMemVerFilled, SetRecListMakesAnEntryBehindAllOthers)
{
    EXPECT_TRUE(SetRecList(link, 2, CLL, {3, 9}));
    before[2].lists[CLL] = {3, 9};
    before[2].area.insert(before[2].area.end(), {3, 9});
    ExpectUnchanged();
}

TEST_F(CRpLink_OnMemVerFilled, SetRecListReplacesAListByALongerOneAShorterOneAndOneAsLong)
{
    for (const List& list : {List{0, 1, 2, 3, 9}, List{5}, List{6}, List{1, 2}}) {
        EXPECT_TRUE(SetRecList(link, 2, NRM, list));
        Lists expected = THREE_LISTS;
        expected[NRM] = list;
        EXPECT_EQ(GetLists(link, 2), expected);
        ExpectSlicesFillTheArea(link, 2);
    }
}

TEST_F(CRpLink_OnMemVerFilled, SetRecListOfNoRecordRemovesTheEntry)
{
    EXPECT_TRUE(SetRecList(link, 2, NRM, {}));
    EXPECT_EQ(GetLists(link, 2), (Lists{{1, {0, 4}}, {INC + 4, {0, 1}}}));
    ExpectSlicesFillTheArea(link, 2);
    EXPECT_TRUE(SetRecList(link, 2, 1, {}));
    EXPECT_TRUE(SetRecList(link, 2, INC + 4, {}));
    EXPECT_TRUE(GetFld(link, 2) == SFld());
}

TEST_F(CRpLink_OnMemVerFilled, SetRecListOfNoRecordOnAButtonWithoutAnEntryChangesNothing)
{
    EXPECT_TRUE(SetRecList(link, 2, NRM + 1, {}));
    for (const DWORD btnID : NO_BTNS)
        EXPECT_TRUE(SetRecList(link, 2, btnID, {})) << btnID;
    ExpectUnchanged();
}

TEST_F(CRpLink_OnMemVerFilled, WhatIsNoButtonGetsNoList)
{
    for (const DWORD btnID : NO_BTNS) {
        EXPECT_FALSE(SetRecList(link, 2, btnID, {1})) << btnID;
        EXPECT_FALSE(AddRecList(link, 2, btnID, {1})) << btnID;
        EXPECT_FALSE(DeleteRecList(link, 2, btnID, {1})) << btnID;
        EXPECT_FALSE(link.DeleteBtn(2, btnID)) << btnID;
        EXPECT_TRUE(GetRecList(link, 2, btnID).empty()) << btnID;
    }
    ExpectUnchanged();
}

TEST_F(CRpLink_OnMemVerFilled, AddRecListUnitesWithWhatIsThere)
{
    EXPECT_TRUE(AddRecList(link, 2, NRM, {0, 2, 9}));
    EXPECT_TRUE(AddRecList(link, 2, VIRINC, {7}));
    EXPECT_TRUE(AddRecList(link, 2, 1, {}));
    Lists expected = THREE_LISTS;
    expected[NRM] = {0, 1, 2, 3, 9};
    expected[VIRINC] = {7};
    EXPECT_EQ(GetLists(link, 2), expected);
    ExpectSlicesFillTheArea(link, 2);
}

TEST_F(CRpLink_OnMemVerFilled, AddRecListOfWhatIsThereChangesNothing)
{
    EXPECT_TRUE(AddRecList(link, 2, NRM, {1, 3}));
    EXPECT_TRUE(AddRecList(link, 2, NRM + 1, {}));
    ExpectUnchanged();
}

TEST_F(CRpLink_OnMemVerFilled, DeleteBtnRemovesTheEntryAndItsRecords)
{
    EXPECT_TRUE(link.DeleteBtn(2, 1));
    EXPECT_EQ(GetLists(link, 2), (Lists{{NRM, {1, 2, 3}}, {INC + 4, {0, 1}}}));
    ExpectSlicesFillTheArea(link, 2);
    EXPECT_TRUE(GetRecList(link, 2, 1).empty());
}

TEST_F(CRpLink_OnMemVerFilled, DeleteBtnOfAButtonWithoutAnEntryIsRefusedWhileReadingItGivesNoRecord)
{
    EXPECT_FALSE(link.DeleteBtn(2, NRM + 1));
    EXPECT_TRUE(GetRecList(link, 2, NRM + 1).empty());
    ExpectUnchanged();
}

TEST_F(CRpLink_OnMemVerFilled, DeleteRecListTakesRecordsOutOfTheLastSlice)
{
    EXPECT_TRUE(DeleteRecList(link, 2, INC + 4, {1}));
    EXPECT_EQ(GetRecList(link, 2, INC + 4), (List{0}));
    EXPECT_EQ(GetRecList(link, 2, NRM), (List{1, 2, 3}));
    EXPECT_EQ(GetFldSize(link, 2), 6u);
}

TEST(CRpLink_OnMemVer, DeleteRecListOfHalfAListKeepsTheListsBehindIt)
{
    CRpLink_OnMemVer link;
    ASSERT_TRUE(InsertFld(link, 2, {{1, {9}}, {NRM, {1, 2, 3, 4}}, {NRM + 1, {5, 6}}, {NRM + 2, {7}}}));
    EXPECT_TRUE(DeleteRecList(link, 2, NRM, {2, 3})); // 2 given and 2 found add up to the former 4
    EXPECT_EQ(GetLists(link, 2), (Lists{{1, {9}}, {NRM, {1, 4}}, {NRM + 1, {5, 6}}, {NRM + 2, {7}}}));
    ExpectSlicesFillTheArea(link, 2);
}

TEST(CRpLink_OnMemVer, DeleteRecListMovesTheListsBehindByTheDifferenceOfTheCounts)
{
    CRpLink_OnMemVer link;
    ASSERT_TRUE(InsertFld(link, 2, {{NRM, {1, 2, 3}}, {NRM + 1, {10, 20}}}));
    EXPECT_TRUE(DeleteRecList(link, 2, NRM, {2}));
    EXPECT_EQ(GetRecList(link, 2, NRM), (List{1, 3}));
    EXPECT_EQ(GetRecList(link, 2, NRM + 1), (List{3, 10})); // moved down by 3 - 1 where 1 record went
    EXPECT_EQ(GetFldSize(link, 2), 4u);
}

TEST(CRpLink_OnMemVer, DeleteRecListNeverLetsAListLeaveTheArea)
{
    CRpLink_OnMemVer link;
    ASSERT_TRUE(InsertFld(link, 2, {{NRM, {1, 2, 3}}, {NRM + 1, {10, 20}}}));
    EXPECT_TRUE(DeleteRecList(link, 2, NRM, {1, 2, 3})); // would leave the next list where it was
    EXPECT_EQ(GetFld(link, 2).area, (List{10, 20}));
    EXPECT_EQ(GetRecList(link, 2, NRM + 1), (List{10, 20}));
}

TEST_F(CRpLink_OnMemVerFilled, DeleteRecListKeepsTheEntryItEmpties)
{
    EXPECT_TRUE(DeleteRecList(link, 2, INC + 4, {0, 1}));
    EXPECT_TRUE(GetRecList(link, 2, INC + 4).empty());
    EXPECT_EQ(GetLists(link, 2).count(INC + 4), 1u);
    EXPECT_EQ(GetFldSize(link, 2), 5u);
    EXPECT_TRUE(link.DeleteBtn(2, INC + 4)); // there is an entry to delete
    EXPECT_EQ(GetLists(link, 2), (Lists{{1, {0, 4}}, {NRM, {1, 2, 3}}}));
}

TEST_F(CRpLink_OnMemVerFilled, DeleteRecListFindsNothingBehindARecordThatIsNotThere)
{
    EXPECT_TRUE(DeleteRecList(link, 2, NRM, {0, 1, 2}));
    EXPECT_TRUE(DeleteRecList(link, 2, NRM, {}));
    ExpectUnchanged();
    EXPECT_TRUE(DeleteRecList(link, 2, INC + 4, {0, 5}));
    EXPECT_EQ(GetRecList(link, 2, INC + 4), (List{1}));
}

TEST_F(CRpLink_OnMemVerFilled, DeleteRecListOfAButtonWithoutAnEntryIsRefused)
{
    EXPECT_FALSE(DeleteRecList(link, 2, NRM + 1, {1}));
    ExpectUnchanged();
}

TEST(CRpLink_OnMemVer, EveryOperationStaysInTheAreaAfterDeleteRecListHasMisplacedLists)
{
    CRandom random;
    for (int run = 0; run < 300; ++run) {
        CRpLink_OnMemVer link;
        Lists lists;
        for (const DWORD btnID : {DWORD{1}, NRM, NRM + 1, NRM + 2, INC, CLL, CLL + 1, VIRINC}) {
            lists[btnID];
            for (DWORD recNum = 0; recNum < 8; ++recNum) {
                if (random.IsOneOf(2))
                    lists[btnID].push_back(recNum);
            }
        }
        ASSERT_TRUE(InsertFld(link, 2, lists));
        const auto pickBtn = [&] { return std::next(lists.begin(), random.GetBelow(8))->first; };
        for (const auto& [btnID, list] : lists) {
            // Any stretch of the list, at times with a record too many: the bounds of what it misplaces.
            List deleted(list.begin(), list.begin() + random.GetBelow(static_cast<DWORD>(list.size()) + 1));
            if (random.IsOneOf(4))
                deleted.push_back(9);
            DeleteRecList(link, 2, btnID, deleted);
        }
        for (int step = 0; step < 12; ++step) {
            switch (random.GetBelow(6)) {
            case 0:
                SetRecList(link, 2, pickBtn(), List(random.GetBelow(6), 3));
                break;
            case 1:
                AddRecList(link, 2, pickBtn(), {2, 5, 11});
                break;
            case 2:
                link.DeleteBtn(2, pickBtn());
                break;
            case 3:
                link.DeleteRec(random.GetBelow(6), random.GetBelow(3));
                break;
            case 4:
                InsertRec(link, 2, random.GetBelow(6), 2, {{pickBtn(), {3, 4}}, {NRM + 7, {3}}});
                break;
            default:
                if (random.IsOneOf(3))
                    link.ClearOfFixedSpec(2);
            }
            GetFld(link, 2); // proves that every list lies in the area
            ASSERT_FALSE(HasFailure()) << "run " << run;
        }
    }
}

TEST_F(CRpLink_OnMemVerFilled, GetRecListAndGetRecCountGiveOneButtonsRecords)
{
    List cells(4, 77);
    DWORD count = 0;
    EXPECT_TRUE(link.GetRecList(2, NRM, cells.data(), count));
    EXPECT_EQ(count, 3u);
    EXPECT_EQ(cells, (List{1, 2, 3, 77}));
    EXPECT_TRUE(link.GetRecCount(2, INC + 4, count));
    EXPECT_EQ(count, 2u);
    EXPECT_TRUE(link.GetRecCount(2, INC + 3, count));
    EXPECT_EQ(count, 0u);
    count = 77;
    EXPECT_TRUE(link.GetRecList(2, INC + 5, nullptr, count));
    EXPECT_EQ(count, 0u);
}

TEST(CRpLink_OnMemVer, GetBtnClassIDListGivesEachKindAscending)
{
    CRpLink_OnMemVer link;
    for (const DWORD btnClassID : {FIXED_VIR + 2, 9u, COMMON_VIR + 4, FIXED_VIR, 2u, COMMON_VIR})
        link.InsertFld(btnClassID);
    List btnClassIDs = {5};
    link.GetBtnClassIDList(btnClassIDs);
    EXPECT_EQ(btnClassIDs, (List{2, 9, COMMON_VIR, COMMON_VIR + 4, FIXED_VIR, FIXED_VIR + 2}));
}

TEST_F(CRpLink_OnMemVerFilled, ClearOfFixedSpecEmptiesAFixedVirtualClass)
{
    EXPECT_TRUE(link.ClearOfFixedSpec(FIXED_VIR + 1));
    before[FIXED_VIR + 1] = SFld();
    ExpectUnchanged();
    EXPECT_TRUE(SetRecList(link, FIXED_VIR + 1, VIRINC, {3}));
    EXPECT_EQ(GetLists(link, FIXED_VIR + 1), (Lists{{VIRINC, {3}}}));
}

TEST(CRpLink_OnMemVer, ClearOfFixedSpecDropsIncAndCllButtonsWhereverTheyStand)
{
    for (const DWORD btnClassID : {7u, COMMON_VIR}) {
        CRpLink_OnMemVer link;
        ASSERT_TRUE(link.InsertFld(btnClassID));
        const std::vector<std::pair<DWORD, List>> inOrder = {{CLL, {1, 2}},     {NRM, {3}},       {INC, {4}},
                                                             {INC + 1, {5, 6}}, {VIRINC, {7, 8}}, {1, {9}},
                                                             {CLL + 3, {10}}};
        for (const auto& [btnID, list] : inOrder)
            ASSERT_TRUE(SetRecList(link, btnClassID, btnID, list));
        EXPECT_TRUE(link.ClearOfFixedSpec(btnClassID));
        EXPECT_EQ(GetLists(link, btnClassID), (Lists{{NRM, {3}}, {VIRINC, {7, 8}}, {1, {9}}}));
        EXPECT_EQ(GetFld(link, btnClassID).area, (List{3, 7, 8, 9}));
        ExpectSlicesFillTheArea(link, btnClassID);
    }
}

TEST(CRpLink_OnMemVer, ClearOfFixedSpecLeavesAClassWithoutIncAndCllButtonsAsItIs)
{
    CRpLink_OnMemVer link;
    ASSERT_TRUE(InsertFld(link, 7, {{1, {4}}, {NRM, {1, 2}}, {VIRINC, {0, 4}}}));
    const RpLinkContent before = GetContent(link);
    EXPECT_TRUE(link.ClearOfFixedSpec(7));
    EXPECT_TRUE(GetContent(link) == before);
    ASSERT_TRUE(SetRecList(link, 7, INC, {1}));
    ASSERT_TRUE(link.DeleteBtn(7, INC));
    EXPECT_TRUE(link.ClearOfFixedSpec(7));
    EXPECT_TRUE(GetContent(link) == before);
}

TEST(CRpLink_OnMemVer, ClearOfFixedSpecDropsAListThatSharesItsPlaceWithAnEmptiedOne)
{
    CRpLink_OnMemVer link;
    ASSERT_TRUE(InsertFld(link, 7, {{NRM, {1}}, {CLL, {2}}}));
    ASSERT_TRUE(DeleteRecList(link, 7, CLL, {2}));
    ASSERT_TRUE(SetRecList(link, 7, INC, {3, 4}));
    EXPECT_TRUE(link.ClearOfFixedSpec(7));
    EXPECT_EQ(GetLists(link, 7), (Lists{{NRM, {1}}}));
    EXPECT_EQ(GetFld(link, 7).area, (List{1}));
}

TEST(CRpLink_OnMemVer, ClearOfFixedSpecOfAClassOfOnlyIncButtonsEmptiesIt)
{
    CRpLink_OnMemVer link;
    ASSERT_TRUE(InsertFld(link, 7, {{INC, {1, 2}}, {INC + 1, {0, 4}}}));
    EXPECT_TRUE(link.ClearOfFixedSpec(7));
    EXPECT_TRUE(GetFld(link, 7) == SFld());
}

TEST_F(CRpLink_OnMemVerFilled, ClearOfFixedSpecWithoutAClassClearsAll)
{
    link.ClearOfFixedSpec();
    EXPECT_EQ(GetLists(link, 2), (Lists{{1, {0, 4}}, {NRM, {1, 2, 3}}}));
    EXPECT_EQ(GetLists(link, COMMON_VIR), (Lists{{VIRINC, {7}}}));
    EXPECT_TRUE(GetFld(link, FIXED_VIR + 1) == SFld());
}

TEST_F(CRpLink_OnMemVerFilled, InsertRecShiftsOldRecordsAndUnitesTheNewOnes)
{
    InsertRec(link, 2, 2, 3, {{1, {2}}, {NRM, {3}}, {NRM + 9, {4}}, {CLL, {2, 3, 4}}, {NRM + 3, {}}});
    EXPECT_EQ(
        GetLists(link, 2),
        (Lists{{1, {0, 2, 7}}, {NRM, {1, 3, 5, 6}}, {NRM + 9, {4}}, {INC + 4, {0, 1}}, {CLL, {2, 3, 4}}}));
    ExpectSlicesFillTheArea(link, 2);
    EXPECT_EQ(GetLists(link, COMMON_VIR), (Lists{{VIRINC, {7}}})); // a class at a time
}

TEST_F(CRpLink_OnMemVerFilled, InsertRecWithoutListsShiftsOnly)
{
    InsertRec(link, 2, 1, 10, {});
    EXPECT_EQ(GetLists(link, 2), (Lists{{1, {0, 14}}, {NRM, {11, 12, 13}}, {INC + 4, {0, 11}}}));
    ExpectSlicesFillTheArea(link, 2);
}

TEST(CRpLink_OnMemVer, InsertRecIntoAnEmptyAreaCopiesAllLists)
{
    CRpLink_OnMemVer link;
    ASSERT_TRUE(link.InsertFld(2));
    const Lists lists = {{1, {0}}, {NRM, {1, 2}}, {VIRINC, {0, 2}}};
    InsertRec(link, 2, 0, 3, lists);
    EXPECT_EQ(GetLists(link, 2), lists);
    ExpectSlicesFillTheArea(link, 2);
}

TEST_F(CRpLink_OnMemVerFilled, InsertRecLeavesUnusedRoomWhereANewRecordStandsInTheOldList)
{
    InsertRec(link, 2, 5, 1, {{NRM, {3, 5}}});
    EXPECT_EQ(GetFldSize(link, 2), 9u);
    Lists expected = THREE_LISTS;
    expected[NRM] = {1, 2, 3, 5};
    EXPECT_EQ(GetLists(link, 2), expected);
    EXPECT_TRUE(SetRecList(link, 2, NRM, {1})); // what stands behind keeps its place
    expected[NRM] = {1};
    EXPECT_EQ(GetLists(link, 2), expected);
    link.DeleteRec(0, 1);
    EXPECT_EQ(GetLists(link, 2), (Lists{{1, {3}}, {NRM, {0}}, {INC + 4, {0}}}));
}

TEST_F(CRpLink_OnMemVerFilled, InsertRecRefusesListsThatHoldMoreThanTheirTotal)
{
    const CBorrowedLists lists(Lists{{NRM, {2, 3}}, {NRM + 1, {4}}});
    try {
        link.InsertRec(2, 2, 3, lists.Get(), 2);
        FAIL() << "nothing was thrown";
    } catch (const ECAbnormalData& exception) {
        EXPECT_STREQ(exception.GetMessageText(), SCKZCoreStrDef::MSG_ABNORMAL_DATASIZE);
        EXPECT_STREQ(exception.GetFunction(), "NSKZ::NSKZCore::CRpLink_OnMemVer::InsertRec");
    }
    ExpectUnchanged();
}

TEST_F(CRpLink_OnMemVerFilled, DeleteRecTakesRecordsOutOfAllClassesAndRenumbersTheRest)
{
    link.DeleteRec(1, 2);
    EXPECT_EQ(GetLists(link, 2), (Lists{{1, {0, 2}}, {NRM, {1}}, {INC + 4, {0}}}));
    EXPECT_EQ(GetLists(link, COMMON_VIR), (Lists{{VIRINC, {5}}}));
    EXPECT_EQ(GetLists(link, FIXED_VIR + 1), (Lists{{VIRINC + 1, {6}}}));
    for (const DWORD btnClassID : {2u, COMMON_VIR, FIXED_VIR + 1})
        ExpectSlicesFillTheArea(link, btnClassID);
}

TEST_F(CRpLink_OnMemVerFilled, DeleteRecRemovesAnEntryThatItEmpties)
{
    link.DeleteRec(1, 3);
    EXPECT_EQ(GetLists(link, 2), (Lists{{1, {0, 1}}, {INC + 4, {0}}}));
    EXPECT_FALSE(link.DeleteBtn(2, NRM));
    ExpectSlicesFillTheArea(link, 2);
}

TEST_F(CRpLink_OnMemVerFilled, DeleteRecThatTouchesNoRecordOfAClassRenumbersThoseAbove)
{
    link.DeleteRec(5, 2);
    before[COMMON_VIR] = {{5}, {{VIRINC, {5}}}};
    before[FIXED_VIR + 1] = {{1, 6}, {{VIRINC + 1, {1, 6}}}};
    ExpectUnchanged();
}

TEST_F(CRpLink_OnMemVerFilled, DeleteRecOfARangeThatLeaves32BitsEndsAtTheLastRecord)
{
    link.DeleteRec(2, 4294967295);
    EXPECT_EQ(GetLists(link, 2), (Lists{{1, {0}}, {NRM, {1}}, {INC + 4, {0, 1}}}));
    EXPECT_TRUE(GetFld(link, COMMON_VIR) == SFld());
}

TEST_F(CRpLink_OnMemVerFilled, DeleteRecOfNothingChangesNothing)
{
    link.DeleteRec(1, 0);
    link.DeleteRec(100, 5);
    ExpectUnchanged();
}

TEST(CRpLink_OnMemVer, DeleteRecOfAnEmptyTableIsNothing)
{
    CRpLink_OnMemVer link;
    link.DeleteRec(0, 5);
    EXPECT_TRUE(GetContent(link).empty());
    link.InsertFld(3);
    link.DeleteRec(0, 5);
    EXPECT_TRUE(GetFld(link, 3) == SFld());
}

TEST_F(CRpLink_OnMemVerFilled, ClearEmptiesTheTable)
{
    link.Clear();
    EXPECT_TRUE(GetContent(link).empty());
    EXPECT_FALSE(link.ExistFld(2));
    EXPECT_TRUE(link.InsertFld(2));
    EXPECT_TRUE(GetFld(link, 2) == SFld());
}

TEST_F(CRpLink_OnMemVerFilled, AssignmentMakesACopyOfItsOwn)
{
    CRpLink_OnMemVer copy;
    ASSERT_TRUE(InsertFld(copy, 5, THREE_LISTS));
    copy = link;
    link.DeleteRec(0, 3);
    EXPECT_TRUE(GetContent(copy) == before);
    const CRpLink_OnMemVer& same = copy;
    copy = same;
    EXPECT_TRUE(GetContent(copy) == before);
}

TEST(CRpLink_OnMemVer, FieldsMayBeAddedAndRemovedFromSeveralThreads)
{
    CRpLink_OnMemVer link;
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

TEST(CRpLink_OnMemVer, TheLockIsFreeAfterEveryWayOutOfAnOperation)
{
    CAllocFault memory;
    CRpLink_OnMemVer link;
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

namespace {

// Lets every allocation of `operation` fail in turn on a filled table: std::bad_alloc must leave the table as
// it was, nothing may leak, and afterwards the operation must still go through. Returns how many allocations
// failed.
template <class TOperation>
std::size_t ExpectUnchangedWhenMemoryRunsOut(const TOperation& operation)
{
    CAllocFault memory;
    const std::size_t failures = memory.FailEachInTurn([&](auto attempt) {
        CRpLink_OnMemVer link;
        ASSERT_TRUE(InsertFld(link, 2, THREE_LISTS));
        ASSERT_TRUE(InsertFld(link, COMMON_VIR, {{VIRINC, {7}}}));
        ASSERT_TRUE(InsertFld(link, FIXED_VIR + 1, {{VIRINC + 1, {1, 8}}}));
        CRpLink_OnMemVer expected;
        expected = link;
        operation(expected);
        const RpLinkContent before = GetContent(link);
        if (!attempt([&] { operation(link); })) {
            EXPECT_TRUE(GetContent(link) == before);
            operation(link);
        }
        EXPECT_TRUE(GetContent(link) == GetContent(expected));
    });
    EXPECT_EQ(memory.GetLiveBlockCount(), 0);
    return failures;
}

TEST(CRpLink_OnMemVer, ManyFieldsAreDeletedInOnePass)
{
    CRpLink_OnMemVer link;
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

TEST(CRpLink_OnMemVer, AFieldThatIsClearedStaysAndHasNoRecords)
{
    CRpLink_OnMemVer link;
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

} // namespace

TEST(CRpLink_OnMemVer, InsertFldThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    for (const DWORD btnClassID : {300u, COMMON_VIR + 300, FIXED_VIR + 300}) {
        const auto operation = [=](IRpLink& link) { EXPECT_TRUE(link.InsertFld(btnClassID)); };
        EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut(operation), 1u);
    }
}

TEST(CRpLink_OnMemVer, InsertFldWithListsThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    const CBorrowedLists lists(
        Lists{{1, {3}}, {NRM + 50, {1, 2}}, {INC, {3}}, {CLL + 7, {1}}, {VIRINC, {2}}});
    for (const DWORD btnClassID : {300u, COMMON_VIR + 300, FIXED_VIR + 300}) {
        const auto operation = [&](IRpLink& link) {
            EXPECT_TRUE(link.InsertFld(btnClassID, lists.Get(), lists.GetTotal()));
        };
        EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut(operation), 6u);
    }
}

TEST(CRpLink_OnMemVer, InsertFldThatRunsOutOfMemoryLeavesATableOfAnyLengthAsItWas)
{
    CAllocFault memory;
    for (DWORD fldCount = 0; fldCount < 6; ++fldCount) { // some have no room for one field more
        memory.FailEachInTurn([fldCount](auto attempt) {
            CRpLink_OnMemVer link;
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

TEST(CRpLink_OnMemVer, SetRecListThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    const List list = {0, 1, 2, 3, 4, 5, 6};
    for (const DWORD btnID : {DWORD{1}, NRM, INC + 4, NRM + 90, INC + 90, CLL + 90, VIRINC + 90}) {
        for (const DWORD count : {0u, 1u, 2u, 3u, 7u}) {
            const auto operation = [&](IRpLink& link) {
                EXPECT_TRUE(link.SetRecList(2, btnID, list.data(), count));
            };
            ExpectUnchangedWhenMemoryRunsOut(operation);
        }
    }
    EXPECT_GE(
        ExpectUnchangedWhenMemoryRunsOut([&](IRpLink& link) { link.SetRecList(2, NRM, list.data(), 7); }),
        1u);
    EXPECT_GE(
        ExpectUnchangedWhenMemoryRunsOut([&](IRpLink& link) { link.SetRecList(2, NRM, list.data(), 1); }),
        1u);
    EXPECT_GE(
        ExpectUnchangedWhenMemoryRunsOut([&](IRpLink& link) { link.SetRecList(2, CLL, list.data(), 1); }),
        2u);
}

TEST(CRpLink_OnMemVer, AddRecListAndDeleteBtnThatRunOutOfMemoryLeaveTheTableAsItWas)
{
    const List list = {0, 2, 9};
    for (const DWORD btnID : {DWORD{1}, NRM, INC + 4, NRM + 90}) {
        EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut(
                      [&](IRpLink& link) { EXPECT_TRUE(link.AddRecList(2, btnID, list.data(), 3)); }),
                  2u);
    }
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut([&](IRpLink& link) { EXPECT_TRUE(link.DeleteBtn(2, NRM)); }),
              1u);
    EXPECT_EQ(ExpectUnchangedWhenMemoryRunsOut(
                  [&](IRpLink& link) { EXPECT_TRUE(link.DeleteBtn(COMMON_VIR, VIRINC)); }),
              0u); // a zero-sized area is no exhaustion
}

TEST(CRpLink_OnMemVer, DeleteRecListNeedsNoMemory)
{
    const List list = {1, 2};
    EXPECT_GE(
        ExpectUnchangedWhenMemoryRunsOut([&](IRpLink& link) { link.DeleteRecList(2, NRM, list.data(), 2); }),
        1u);
}

TEST(CRpLink_OnMemVer, InsertRecThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    const CBorrowedLists lists(Lists{{1, {2}}, {NRM + 90, {3}}, {CLL + 5, {2, 3}}, {VIRINC, {2}}});
    const auto operation = [&](IRpLink& link) { link.InsertRec(2, 2, 2, lists.Get(), lists.GetTotal()); };
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut(operation), 5u);
}

TEST(CRpLink_OnMemVer, DeleteRecThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut([](IRpLink& link) { link.DeleteRec(1, 2); }), 1u);
}

TEST(CRpLink_OnMemVer, ClearOfFixedSpecThatRunsOutOfMemoryLeavesTheClassAsItWas)
{
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut([](IRpLink& link) { EXPECT_TRUE(link.ClearOfFixedSpec(2)); }),
              1u);
}

TEST(CRpLink_OnMemVer, AssignmentThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    CRpLink_OnMemVer source;
    ASSERT_TRUE(InsertFld(source, 30, THREE_LISTS));
    ASSERT_TRUE(source.InsertFld(31));
    const auto operation = [&](CRpLink_OnMemVer& link) { link = source; };
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut(operation), 4u);
}

TEST(CRpLink_OnMemVer, AgreesWithANaiveTableOnRandomOperations)
{
    CRandom random;
    CRpLink_OnMemVer link;
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
            if (!hasEntry || model[btnClassID][btnID].size() % 2 != 0)
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
