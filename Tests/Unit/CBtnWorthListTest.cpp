#include "CBtnWorthList.h"

#include <gtest/gtest.h>

#include <limits>

using namespace NSKZ::NSKZCore;

namespace {

using List = std::vector<DWORD>;

TEST(CBtnWorthList, RanksFromTheLowestAndEqualsAsTheyWereGiven)
{
    constexpr double INF = std::numeric_limits<double>::infinity();
    CBtnWorthList worths({10, 11, 12, 13, 14, 15, 16});
    for (const double worth : {3.0, -0.0, INF, 3.0, 0.0, -INF, std::numeric_limits<double>::quiet_NaN()})
        worths.Add(worth);
    EXPECT_EQ(worths.GetRanking(), List({5, 1, 4, 6, 0, 3, 2}));
    EXPECT_EQ(worths.GetWorths()[6], 0.0); // NaN is worth nothing
    EXPECT_EQ(&worths.GetRanking(), &worths.GetRanking());
}

TEST(CBtnWorthList, KnowsItsButtonsInAnyOrder)
{
    for (const List& btnIDs : {List{2, 5, 9}, List{9, 2, 5}}) {
        const CBtnWorthList worths(btnIDs);
        EXPECT_TRUE(worths.Holds(2) && worths.Holds(5) && worths.Holds(9));
        EXPECT_FALSE(worths.Holds(1) || worths.Holds(3) || worths.Holds(10));
    }
    EXPECT_FALSE(CBtnWorthList({}).Holds(0));
    EXPECT_TRUE(CBtnWorthList({}).GetRanking().empty());
}

} // namespace
