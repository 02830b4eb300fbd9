#include "CBnLink_OnMemVer.h"

#include "Support/CAllocFault.h"
#include "Support/TBnLinkFilled.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using CBnLink_OnMemVerFilled = TBnLinkFilled<CBnLink_OnMemVer>;

} // namespace

TEST_F(CBnLink_OnMemVerFilled, InsertRecPastTheEndAppends)
{
    EXPECT_TRUE(link.InsertRec(100, 1));
    EXPECT_TRUE(link.InsertRec(4294967295, 1));
    const List appended = {20, 21};
    for (auto& [btnClassID, cells] : before.columns) {
        EXPECT_TRUE(link.SetData(btnClassID, 3, 2, appended.data()));
        cells.insert(cells.end(), appended.begin(), appended.end());
    }
    before.recCount = 5;
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
