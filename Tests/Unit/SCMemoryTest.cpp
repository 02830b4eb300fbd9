#include "SCMemory.h"

#include "Support/CAllocFault.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace NSKZ::NSKZCore;

TEST(SCMemory, ZeroBytesAreNullAndNoExhaustion)
{
    CAllocFault memory;
    memory.Arm(1);
    EXPECT_EQ(SCMemory::Allocate(0), nullptr);
    EXPECT_EQ(SCMemory::Reallocate(nullptr, 0), nullptr);
    SCMemory::Release(nullptr);
    EXPECT_FALSE(memory.Disarm());
}

TEST(SCMemory, ReallocationToZeroBytesReleasesTheBlock)
{
    CAllocFault memory;
    void* const block = SCMemory::Allocate(8);
    EXPECT_EQ(memory.GetLiveBlockCount(), 1);
    EXPECT_EQ(SCMemory::Reallocate(block, 0), nullptr);
    EXPECT_EQ(memory.GetLiveBlockCount(), 0);
}

TEST(SCMemory, ExhaustionIsBadAllocAndKeepsTheBlock)
{
    CAllocFault memory;
    memory.Arm(1);
    EXPECT_THROW(SCMemory::Allocate(8), std::bad_alloc);
    memory.Disarm();
    char* block = static_cast<char*>(SCMemory::Allocate(4));
    std::strcpy(block, "abc");
    memory.Arm(1);
    EXPECT_THROW(SCMemory::Reallocate(block, 8), std::bad_alloc);
    memory.Disarm();
    EXPECT_STREQ(block, "abc");
    block = static_cast<char*>(SCMemory::Reallocate(block, 100));
    EXPECT_STREQ(block, "abc");
    SCMemory::Release(block);
}
