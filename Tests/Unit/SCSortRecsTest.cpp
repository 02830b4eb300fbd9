#include "SCSortRecs.h"

#include "Support/CAllocFault.h"
#include "Support/CRandom.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

using namespace NSKZ::NSKZCore;

namespace {

TEST(SCSortRecs, SortsNothingAndOne)
{
    DWORD one[] = {5};
    SCSortRecs::Sort(one, 0);
    SCSortRecs::Sort(one, 1);
    EXPECT_EQ(one[0], 5u);
}

TEST(SCSortRecs, SortsDenseAndSparseNumbersAlike)
{
    CRandom random;
    for (const DWORD range : {70u, 1000u, 100000u, 4294967295u}) {
        for (DWORD count = 1; count < 60; ++count) {
            std::vector<DWORD> recs;
            while (recs.size() < count) {
                const DWORD rec = random.GetBelow(range);
                if (std::find(recs.begin(), recs.end(), rec) == recs.end())
                    recs.push_back(rec);
            }
            std::vector<DWORD> expected(recs);
            std::sort(expected.begin(), expected.end());
            SCSortRecs::Sort(recs.data(), count);
            ASSERT_EQ(recs, expected);
        }
    }
}

TEST(SCSortRecs, SortsALongListOfAllNumbers)
{
    std::vector<DWORD> recs(100001);
    std::iota(recs.rbegin(), recs.rend(), 0u);
    SCSortRecs::Sort(recs.data(), 100001);
    for (DWORD i = 0; i < recs.size(); ++i)
        ASSERT_EQ(recs[i], i);
}

TEST(SCSortRecs, ExhaustedMemoryLeavesTheListAsItWas)
{
    CAllocFault memory;
    std::vector<DWORD> recs(1000);
    std::iota(recs.rbegin(), recs.rend(), 0u);
    const std::vector<DWORD> before(recs);
    memory.Arm(1);
    EXPECT_THROW(SCSortRecs::Sort(recs.data(), 1000), std::bad_alloc);
    memory.Disarm();
    EXPECT_EQ(recs, before);
}

} // namespace
