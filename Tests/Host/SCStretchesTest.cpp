#include "SCStretches.h"

#include <gtest/gtest.h>

namespace NSKZ::Test {

using Host::SCStretches;
using Host::SStretch;

TEST(SCStretches, NumbersBecomeStretchesAndComeBackInTheirOrder)
{
    const std::vector<std::pair<std::vector<DWORD>, std::size_t>> lists = {
        {{}, 0},
        {{5}, 1},
        {{0, 1, 2}, 1},
        {{3, 2, 1}, 3},
        {{1, 3, 4, 5, 9}, 3},
        {{7, 7}, 2},
        {{4294967294, 4294967295, 0, 1}, 2}};
    for (const auto& [numbers, count] : lists) {
        const std::vector<SStretch> stretches = SCStretches::Make(numbers);
        EXPECT_EQ(stretches.size(), count);
        EXPECT_EQ(SCStretches::Count(stretches), numbers.size());
        EXPECT_EQ(SCStretches::Expand(stretches), numbers);
    }
}

TEST(SCStretches, MoreNumbersThanAnArrayTakesAreCounted)
{
    EXPECT_EQ(SCStretches::Count({{0, 4294967295}, {0, 4294967295}}), 8589934592u);
}

} // namespace NSKZ::Test
