#include "SCNumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace NSKZ::Host {

TEST(SCNumberText, OfCountGroupsDigitsByThree)
{
    EXPECT_EQ(SCNumberText::OfCount(0), "0");
    EXPECT_EQ(SCNumberText::OfCount(999), "999");
    EXPECT_EQ(SCNumberText::OfCount(1000), "1,000");
    EXPECT_EQ(SCNumberText::OfCount(4294967295), "4,294,967,295");
}

TEST(SCNumberText, OfThingsTellsOneFromMany)
{
    EXPECT_EQ(SCNumberText::OfThings(0, "record"), "0 records");
    EXPECT_EQ(SCNumberText::OfThings(1, "record"), "1 record");
    EXPECT_EQ(SCNumberText::OfThings(2000, "record"), "2,000 records");
}

TEST(SCNumberText, GetDecimalsFollowsTheNumbers)
{
    EXPECT_EQ(SCNumberText::GetDecimals({1, -2, 3e9}), 0);
    EXPECT_EQ(SCNumberText::GetDecimals({1.5, 200}), 2);
    EXPECT_EQ(SCNumberText::GetDecimals({1.5, 2}), 4);
    EXPECT_EQ(SCNumberText::GetDecimals({}), 0);
    EXPECT_EQ(SCNumberText::GetDecimals({std::nan(""), std::numeric_limits<double>::infinity(), 3}), 0);
}

TEST(SCNumberText, OfNumberGroupsAndRounds)
{
    EXPECT_EQ(SCNumberText::OfNumber(1234567, 0), "1,234,567");
    EXPECT_EQ(SCNumberText::OfNumber(-1234.567, 2), "-1,234.57");
    EXPECT_EQ(SCNumberText::OfNumber(-123, 0), "-123");
    EXPECT_EQ(SCNumberText::OfNumber(0.5, 4), "0.5000");
    EXPECT_EQ(SCNumberText::OfNumber(1e300, 2), "1.000000e+300");
}

TEST(SCNumberText, OfNumberShowsNoSignWhereNothingIsLeftOfTheNumber)
{
    EXPECT_EQ(SCNumberText::OfNumber(-0.0001, 2), "0.00");
    EXPECT_EQ(SCNumberText::OfNumber(-0.0, 0), "0");
}

TEST(SCNumberText, OfNumberShowsWhatIsNoNumberAsAHyphen)
{
    EXPECT_EQ(SCNumberText::OfNumber(std::nan(""), 2), "-");
    EXPECT_EQ(SCNumberText::OfNumber(-std::numeric_limits<double>::infinity(), 2), "-");
}

TEST(SCNumberText, BarOfDrawsEighthsOfColumns)
{
    EXPECT_EQ(SCNumberText::BarOf(1, 4), "████");
    EXPECT_EQ(SCNumberText::BarOf(0.5, 4), "██");
    EXPECT_EQ(SCNumberText::BarOf(0.3125, 4), "█▎");
    EXPECT_EQ(SCNumberText::BarOf(0, 4), "");
    EXPECT_EQ(SCNumberText::BarOf(7, 4), "████");
    EXPECT_EQ(SCNumberText::BarOf(-1, 4), "");
    EXPECT_EQ(SCNumberText::BarOf(std::nan(""), 4), "");
}

} // namespace NSKZ::Host
