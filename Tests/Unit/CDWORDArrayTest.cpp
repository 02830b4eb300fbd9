#include "CDWORDArray.h"

#include "Support/CAllocFault.h"

#include <gtest/gtest.h>

#include <numeric>
#include <utility>
#include <vector>

using namespace NSKZ::NSKZCore;

namespace {

std::vector<DWORD> GetCells(const CDWORDArray& array)
{
    return std::vector<DWORD>(array.GetData(), array.GetData() + array.GetCount());
}

CDWORDArray MakeCounting(DWORD count)
{
    CDWORDArray array(count);
    std::iota(array.GetData(), array.GetData() + count, 0u);
    return array;
}

} // namespace

TEST(CDWORDArray, HoldsNothingAtFirst)
{
    const CDWORDArray array;
    EXPECT_EQ(array.GetCount(), 0u);
    EXPECT_EQ(array.GetData(), nullptr);
}

TEST(CDWORDArray, ResizeKeepsWhatFits)
{
    CDWORDArray array = MakeCounting(3);
    array.Resize(5);
    array.GetData()[3] = 3;
    array.GetData()[4] = 4;
    EXPECT_EQ(GetCells(array), (std::vector<DWORD>{0, 1, 2, 3, 4}));
    array.Resize(2);
    EXPECT_EQ(GetCells(array), (std::vector<DWORD>{0, 1}));
    array.Resize(0);
    EXPECT_EQ(array.GetCount(), 0u);
    EXPECT_EQ(array.GetData(), nullptr);
}

TEST(CDWORDArray, ExhaustionLeavesItAsItWas)
{
    CAllocFault memory;
    CDWORDArray array = MakeCounting(3);
    for (const DWORD newCount : {2u, 4u}) {
        memory.Arm(1);
        EXPECT_THROW(array.Resize(newCount), std::bad_alloc);
        memory.Disarm();
        EXPECT_EQ(GetCells(array), (std::vector<DWORD>{0, 1, 2}));
    }
    EXPECT_THROW(array.Resize(std::uint64_t{4294967295} + 1), std::bad_alloc);
    EXPECT_EQ(GetCells(array), (std::vector<DWORD>{0, 1, 2}));
}

TEST(CDWORDArray, ShrinkGoesThroughWhereTheHeapCannot)
{
    CAllocFault memory;
    CDWORDArray array = MakeCounting(3);
    memory.Arm(1);
    array.Shrink(2);
    EXPECT_TRUE(memory.Disarm());
    EXPECT_EQ(GetCells(array), (std::vector<DWORD>{0, 1}));
    array.Shrink(0);
    EXPECT_EQ(array.GetCount(), 0u);
}

TEST(CDWORDArray, CloneIsAnotherArray)
{
    const CDWORDArray array = MakeCounting(3);
    CDWORDArray copy = array.Clone();
    copy.GetData()[0] = 9;
    EXPECT_EQ(GetCells(array), (std::vector<DWORD>{0, 1, 2}));
    EXPECT_EQ(GetCells(copy), (std::vector<DWORD>{9, 1, 2}));
}

TEST(CDWORDArray, MovesGiveItsCellsAwayAndLeakNothing)
{
    CAllocFault memory;
    {
        CDWORDArray array = MakeCounting(3);
        CDWORDArray taken(std::move(array));
        EXPECT_EQ(GetCells(taken), (std::vector<DWORD>{0, 1, 2}));
        CDWORDArray other = MakeCounting(1);
        other = std::move(taken);
        EXPECT_EQ(GetCells(other), (std::vector<DWORD>{0, 1, 2}));
    }
    EXPECT_EQ(memory.GetLiveBlockCount(), 0);
}
