#include "SCVector.h"

#include "Support/CAllocFault.h"

#include <gtest/gtest.h>

#include <memory>

using namespace NSKZ::NSKZCore;

TEST(SCVector, ReserveOneMoreLetsTheNextElementGoThrough)
{
    CAllocFault memory;
    std::vector<int> list;
    for (int i = 0; i < 100; ++i) {
        SCVector::ReserveOneMore(list);
        memory.Arm(1);
        list.push_back(i);
        EXPECT_FALSE(memory.Disarm());
    }
}

TEST(SCVector, EraseMarkedKeepsTheOthersInTheirOrder)
{
    std::vector<std::unique_ptr<int>> list;
    for (int i = 0; i < 6; ++i)
        list.push_back(std::make_unique<int>(i));
    SCVector::EraseMarked(list, {true, false, false, true});
    ASSERT_EQ(list.size(), 4u);
    EXPECT_EQ(*list[0], 1);
    EXPECT_EQ(*list[1], 2);
    EXPECT_EQ(*list[2], 4);
    EXPECT_EQ(*list[3], 5);
    SCVector::EraseMarked(list, {});
    EXPECT_EQ(list.size(), 4u);
    SCVector::EraseMarked(list, {true, true, true, true, true, true});
    EXPECT_TRUE(list.empty());
}
