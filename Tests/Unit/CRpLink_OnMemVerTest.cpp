#include "CRpLink_OnMemVer.h"

#include "Support/CAllocFault.h"
#include "Support/CRandom.h"
#include "Support/TRpLinkFilled.h"

#include <gtest/gtest.h>

#include <iterator>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using CRpLink_OnMemVerFilled = TRpLinkFilled<CRpLink_OnMemVer>;

} // namespace

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

TEST(CRpLink_OnMemVer, DeleteRecListNeedsNoMemory)
{
    const List list = {1, 2};
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut<CRpLink_OnMemVer>(
                  [&](IRpLink& link) { link.DeleteRecList(2, NRM, list.data(), 2); }),
              1u);
}

TEST(CRpLink_OnMemVer, AssignmentThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    CRpLink_OnMemVer source;
    ASSERT_TRUE(InsertFld(source, 30, THREE_LISTS));
    ASSERT_TRUE(source.InsertFld(31));
    const auto operation = [&](CRpLink_OnMemVer& link) { link = source; };
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut<CRpLink_OnMemVer>(operation), 4u);
}
