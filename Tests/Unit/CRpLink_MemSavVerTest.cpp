#include "CRpLink_MemSavVer.h"

#include "Support/CAllocFault.h"
#include "Support/CRandom.h"
#include "Support/LinkTableVersions.h"
#include "Support/TLinkTableFilesFixture.h"
#include "Support/TRpLinkFilled.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using CRpLink_MemSavVerFilled = TRpLinkFilled<CRpLink_MemSavVer>;

constexpr DWORD NO_RECORD = 4294967295; // ends the records given to DeleteRecList

// Takes records out of a list; how many they are is not told.
bool TakeOut(IRpLink& link, DWORD btnClassID, DWORD btnID, List list)
{
    list.push_back(NO_RECORD);
    return link.DeleteRecList(btnClassID, btnID, list.data(), 0);
}

// What becomes of a list by that, told naively; `found` becomes how many records were met.
List TakeOutNaively(const List& list, List deleted, std::size_t& found)
{
    deleted.push_back(NO_RECORD);
    std::string bytes = MakeBytes(list);
    found = 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (MakeNumbers(bytes)[i] != deleted[found])
            continue;
        const std::size_t behind = list.size() - i - 1;
        for (std::size_t k = 0; k < behind; ++k) // so many bytes where so many records were to move
            bytes[4 * i + k] = bytes[4 * (i + 1) + k];
        ++found;
    }
    List left = MakeNumbers(bytes);
    left.resize(left.size() - found);
    return left;
}

// A class whose lists lie in its area in this order.
void FillInOrder(IRpLink& link, const std::vector<std::pair<DWORD, List>>& inOrder)
{
    ASSERT_TRUE(link.InsertFld(2));
    for (const auto& [btnID, list] : inOrder)
        ASSERT_TRUE(SetRecList(link, 2, btnID, list));
}

} // namespace

TEST(CRpLink_MemSavVer, DeleteRecListTakesTheLastRecordOut)
{
    CRpLink_MemSavVer link;
    ASSERT_TRUE(InsertFld(link, 2, {{NRM, {1, 1000, 70000}}, {NRM + 1, {10, 20}}}));
    EXPECT_TRUE(TakeOut(link, 2, NRM, {70000}));
    EXPECT_EQ(GetLists(link, 2), (Lists{{NRM, {1, 1000}}, {NRM + 1, {10, 20}}}));
    ExpectSlicesFillTheArea(link, 2);
}

TEST(CRpLink_MemSavVer, DeleteRecListMovesWhatIsBehindARecordByBytes)
{
    if (SCKZCoreCom::GetEndiannessOfPresentEnvironment() != SCKZCoreCom::ENDIANNESS_LITTLE)
        GTEST_SKIP() << "what comes of it is told for a machine with the lowest byte first";
    CRpLink_MemSavVer link;
    ASSERT_TRUE(
        InsertFld(link, 2, {{NRM, {1, 2, 3}}, {NRM + 1, {0x10001, 0x20002, 0x30003}}, {NRM + 2, {9}}}));
    EXPECT_TRUE(TakeOut(link, 2, NRM, {1})); // two bytes of the 2, and nothing of the 3
    EXPECT_EQ(GetRecList(link, 2, NRM), (List{2, 2}));
    EXPECT_TRUE(TakeOut(link, 2, NRM + 1, {0x20002})); // one byte of the last one
    EXPECT_EQ(GetRecList(link, 2, NRM + 1), (List{0x10001, 0x20003}));
    EXPECT_EQ(GetRecList(link, 2, NRM + 2), List{9}); // what stands behind stays right
    ExpectSlicesFillTheArea(link, 2);
}

TEST(CRpLink_MemSavVer, DeleteRecListGoesOnAtTheNextRecordAndDoesNotConsultTheCount)
{
    CRandom random;
    for (int run = 0; run < 300; ++run) {
        Lists lists;
        for (const DWORD btnID : {NRM, NRM + 1, NRM + 2}) {
            DWORD recNum = 0;
            for (DWORD count = 1 + random.GetBelow(9); count > 0; --count)
                lists[btnID].push_back(recNum += 1 + random.GetBelow(random.IsOneOf(2) ? 3 : 100000));
        }
        CRpLink_MemSavVer link;
        ASSERT_TRUE(InsertFld(link, 2, lists));
        List deleted;
        for (const DWORD recNum : lists[NRM + 1]) {
            if (random.IsOneOf(3))
                deleted.push_back(recNum);
        }
        std::size_t found = 0;
        const List left = TakeOutNaively(lists[NRM + 1], deleted, found);
        EXPECT_EQ(TakeOut(link, 2, NRM + 1, deleted), found != 0);
        lists[NRM + 1] = left;
        if (left.empty())
            lists.erase(NRM + 1);
        ASSERT_EQ(GetLists(link, 2), lists);
        ExpectSlicesFillTheArea(link, 2);
    }
}

TEST(CRpLink_MemSavVer, DeleteRecListRemovesAnEntryThatItEmpties)
{
    CRpLink_MemSavVer link;
    ASSERT_TRUE(InsertFld(link, 2, {{NRM, {5}}, {NRM + 1, {10, 20}}}));
    EXPECT_TRUE(TakeOut(link, 2, NRM, {5}));
    EXPECT_EQ(GetLists(link, 2), (Lists{{NRM + 1, {10, 20}}}));
    EXPECT_FALSE(link.DeleteBtn(2, NRM));
    ExpectSlicesFillTheArea(link, 2);
}

TEST_F(CRpLink_MemSavVerFilled, DeleteRecListThatFindsNothingIsFalse)
{
    EXPECT_FALSE(TakeOut(link, 2, NRM, {}));
    EXPECT_FALSE(TakeOut(link, 2, NRM, {0, 1, 2})); // the first one is not there, and the others wait for it
    ExpectUnchanged();
}

TEST(CRpLink_MemSavVer, DeleteRecListThatRunsOutOfMemoryLeavesTheTableAsItWas)
{
    const List list = {3, NO_RECORD};
    EXPECT_GE(ExpectUnchangedWhenMemoryRunsOut<CRpLink_MemSavVer>(
                  [&](IRpLink& link) { link.DeleteRecList(2, NRM, list.data(), 1); }),
              2u);
}

TEST(CRpLink_MemSavVer, ClearOfFixedSpecDropsButtonsThatLieTogether)
{
    CRpLink_MemSavVer link;
    FillInOrder(link, {{NRM, {3}}, {INC, {4}}, {CLL, {5, 6}}, {INC + 1, {1}}, {VIRINC, {7, 8}}, {1, {9}}});
    EXPECT_TRUE(link.ClearOfFixedSpec(2));
    EXPECT_EQ(GetLists(link, 2), (Lists{{NRM, {3}}, {VIRINC, {7, 8}}, {1, {9}}}));
    ExpectSlicesFillTheArea(link, 2);
}

TEST(CRpLink_MemSavVer, ClearOfFixedSpecTakesOutWhatLiesAtThePositionsOfBefore)
{
    CRpLink_MemSavVer link;
    FillInOrder(link, {{NRM, {3}}, {INC, {4}}, {VIRINC, {7, 8}}, {CLL, {10}}, {1, {9}}});
    EXPECT_TRUE(link.ClearOfFixedSpec(2));
    // At position 4, where the 10 had been, the 9 stood when its turn came.
    EXPECT_EQ(GetLists(link, 2), (Lists{{NRM, {3}}, {VIRINC, {7, 8}}, {1, {10}}}));
    EXPECT_EQ(GetFld(link, 2).area, (List{3, 7, 8, 10}));
}

TEST(CRpLink_MemSavVer, ClearOfFixedSpecLeavesWhatHasMovedAwayFromThePositionsOfBefore)
{
    CRpLink_MemSavVer link;
    FillInOrder(link, {{NRM, {3}}, {INC, {4, 5}}, {VIRINC, {7}}, {CLL, {8, 9}}});
    EXPECT_TRUE(link.ClearOfFixedSpec(2));
    EXPECT_EQ(GetLists(link, 2), (Lists{{NRM, {3}}, {VIRINC, {7}}}));
    EXPECT_EQ(GetFld(link, 2).area, (List{3, 7, 8, 9})); // positions 4 and 5 are no more
    EXPECT_TRUE(SetRecList(link, 2, VIRINC, {1, 2}));
    EXPECT_EQ(GetLists(link, 2), (Lists{{NRM, {3}}, {VIRINC, {1, 2}}}));
}

TEST(CRpLink_MemSavVer, EveryOperationStaysInTheAreaAfterClearOfFixedSpecHasMixedLists)
{
    CRandom random;
    const List btnIDs = {1, NRM, NRM + 1, NRM + 2, INC, INC + 1, CLL, VIRINC};
    const auto makeList = [&] {
        List list;
        for (DWORD recNum = 0; recNum < 12; ++recNum) {
            if (random.IsOneOf(3))
                list.push_back(recNum);
        }
        return list;
    };
    for (int run = 0; run < 200; ++run) {
        CRpLink_MemSavVer link;
        ASSERT_TRUE(link.InsertFld(2));
        for (int step = 0; step < 40; ++step) {
            const DWORD btnID = btnIDs[random.GetBelow(8)];
            switch (random.GetBelow(8)) {
            case 0:
                link.ClearOfFixedSpec(2);
                break;
            case 1:
                link.DeleteRec(random.GetBelow(12), random.GetBelow(3));
                break;
            case 2:
                InsertRec(link, 2, random.GetBelow(12), 2, {{btnID, makeList()}});
                break;
            case 3:
                link.DeleteBtn(2, btnID);
                break;
            case 4:
                TakeOut(link, 2, btnID, makeList());
                break;
            case 5:
                AddRecList(link, 2, btnID, makeList());
                break;
            default:
                SetRecList(link, 2, btnID, makeList());
            }
            GetFld(link, 2); // proves that every list lies in the area
            ASSERT_FALSE(HasFailure()) << "run " << run;
        }
    }
}

#ifndef KZC_SANITIZED // some hundred megabytes, which take long to be watched
TEST(CRpLink_MemSavVer, AListThatFindsNoRoomLeavesItsEntryWithoutRecords)
{
    CRpLink_MemSavVer link;
    const CBorrowedLists lists(Lists{{NRM, {5}}});
    ASSERT_TRUE(link.InsertFld(2, lists.Get(), 4294967295));
    EXPECT_FALSE(SetRecList(link, 2, NRM + 1, {7}));
    EXPECT_EQ(GetFldSize(link, 2), 4294967295);
    DWORD count = 0;
    EXPECT_TRUE(link.GetRecCount(2, NRM + 1, count));
    EXPECT_EQ(count, 1u);
    DWORD recNum = 77;
    count = 0;
    EXPECT_FALSE(link.GetRecList(2, NRM + 1, &recNum, count));
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(recNum, 77u);
    EXPECT_FALSE(AddRecList(link, 2, NRM + 1, {8}));
    EXPECT_EQ(GetRecList(link, 2, NRM), List{5});
    EXPECT_TRUE(link.DeleteBtn(2, NRM + 1));
    EXPECT_TRUE(link.GetRecCount(2, NRM + 1, count));
    EXPECT_EQ(count, 0u);
    EXPECT_FALSE(SetRecList(link, 2, NRM, {5, 6})); // nor can a list grow
    EXPECT_EQ(GetRecList(link, 2, NRM), List{5});
}
#endif

TEST(CRpLink_MemSavVer, TakesManyListsWithoutRoomForThemAllAtOnce)
{
    constexpr DWORD COUNT = 200000;
    List recs(COUNT);
    TCBtnIDAssArr<SRecordList> lists;
    for (DWORD i = 0; i < COUNT; ++i) {
        recs[i] = COUNT - i;
        lists.Set(NRM + i, SRecordList{recs.data() + i, 1});
    }
    CAllocFault memory;
    CRpLink_MemSavVer link;
    memory.Arm(0);
    ASSERT_TRUE(link.InsertFld(2, lists, COUNT + 10));
    EXPECT_LE(memory.GetLargestSize(), COUNT * sizeof(DWORD) * 3); // the map
    EXPECT_EQ(GetFldSize(link, 2), COUNT + 10);
    for (const DWORD i : {0u, 1u, 61439u, 61440u, 61441u, COUNT - 1})
        EXPECT_EQ(GetRecList(link, 2, NRM + i), List{recs[i]});
}

TEST(CRpLink_MemSavVer, AnswersAsTheTableOnMemoryDoesOnRandomOperations)
{
    CRandom random;
    CRpLink_OnMemVer onMemory;
    CRpLink_MemSavVer memorySaving;
    const auto answer = [&](const auto& operation) {
        const bool expected = operation(static_cast<IRpLink&>(onMemory));
        EXPECT_EQ(operation(static_cast<IRpLink&>(memorySaving)), expected);
        return expected;
    };
    const List btnClassIDs = {1, 2, COMMON_VIR + 1, FIXED_VIR};
    const List btnIDs = {1, NRM, NRM + 1, NRM + 7, INC, INC + 3, CLL, VIRINC + 1, 0};
    const auto makeList = [&](DWORD begin, DWORD end) {
        List list;
        const DWORD step = 1 + random.GetBelow(random.IsOneOf(4) ? 3 : 2000);
        for (DWORD recNum = begin; recNum < end; recNum += 1 + random.GetBelow(step))
            list.push_back(recNum);
        return list;
    };
    for (int round = 0; round < 1500; ++round) {
        const DWORD btnClassID = btnClassIDs[random.GetBelow(4)];
        const DWORD btnID = btnIDs[random.GetBelow(9)];
        const DWORD pos = random.GetBelow(15000);
        const DWORD count = random.GetBelow(2000);
        const List list = makeList(random.GetBelow(10000), 15000);
        Lists lists;
        for (DWORD i = random.GetBelow(4); i > 0; --i) {
            const DWORD newBtnID = btnIDs[random.GetBelow(8)];
            lists[newBtnID] = makeList(pos, pos + count);
        }
        switch (random.GetBelow(11)) {
        case 0:
            answer([&](IRpLink& link) { return link.InsertFld(btnClassID); });
            break;
        case 1:
            answer([&](IRpLink& link) { return InsertFld(link, btnClassID, lists); });
            break;
        case 2:
            if (random.IsOneOf(8))
                answer([&](IRpLink& link) { return link.DeleteFld(btnClassID); });
            break;
        case 3:
            answer([&](IRpLink& link) { return link.DeleteBtn(btnClassID, btnID); });
            break;
        case 4:
            for (IRpLink* const link :
                 {static_cast<IRpLink*>(&onMemory), static_cast<IRpLink*>(&memorySaving)})
                InsertRec(*link, btnClassID, pos, count, lists);
            break;
        case 5:
            onMemory.DeleteRec(pos, count);
            memorySaving.DeleteRec(pos, count);
            break;
        case 6:
            if (SCBUICoreCom::IsFixedVirBtnClass(btnClassID))
                answer([&](IRpLink& link) { return link.ClearOfFixedSpec(btnClassID); });
            else if (random.IsOneOf(10))
                answer([&](IRpLink& link) { return link.ClearFld(btnClassID); });
            break;
        case 7:
            answer([&](IRpLink& link) { return AddRecList(link, btnClassID, btnID, list); });
            break;
        default:
            answer([&](IRpLink& link) { return SetRecList(link, btnClassID, btnID, list); });
        }
        ASSERT_TRUE(GetContent(memorySaving) == GetContent(onMemory)) << "round " << round;
        ASSERT_FALSE(testing::Test::HasFailure()) << "round " << round;
    }
}
