#include "CFiscalMonth.h"

#include "CFiscalYear.h"
#include "Support/DateText.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

TEST(CFiscalMonth, TheFiscalTermsFollowFromTheMonth)
{
    CFiscalMonth month;
    DWORD value = 0;
    EXPECT_TRUE(month.SetFiscalMonth(1));
    EXPECT_TRUE(month.GetQuarterTerm(4, 20, value));
    EXPECT_EQ(value, 4u);
    EXPECT_TRUE(month.GetHalfTerm(4, 20, value));
    EXPECT_EQ(value, 2u);
    EXPECT_FALSE(month.GetFiscalYearOfTheGrgCalendar(4, 20, value));
    EXPECT_TRUE(month.SetYearOfTheGrgCalendar(2025));
    EXPECT_TRUE(month.GetFiscalYearOfTheGrgCalendar(4, 20, value));
    EXPECT_EQ(value, 2024u);
    VCDate::EEra era = VCDate::ERA_UNSETTING;
    EXPECT_TRUE(month.GetFiscalMonth(20, era, value, value));
    EXPECT_EQ(era, VCDate::ERA_REIWA);
    EXPECT_FALSE(month.GetFiscalMonth(0, value));
}

TEST(CFiscalMonth, MonthsWithoutYearOrderFromTheStartMonthOn)
{
    for (DWORD startMonth = 1; startMonth <= 12; ++startMonth) {
        unsigned long long before = 0;
        for (DWORD place = 0; place < 12; ++place) {
            CFiscalMonth month;
            month.SetFiscalMonth((startMonth - 1 + place) % 12 + 1);
            const unsigned long long numeric = GetNumeric(month, {startMonth, 31, VCDate::DAYSOFWEEK_SUNDAY});
            EXPECT_LT(before, numeric);
            before = numeric;
        }
    }
}

TEST(CFiscalMonth, AJapaneseYearThatItDoesNotEndInHasNoNumber)
{
    CFiscalMonth month;
    EXPECT_TRUE(month.SetYearOfTheJpnCalendar(VCDate::ERA_HEISEI, 31) && month.SetFiscalMonth(5));
    EXPECT_EQ(GetNumeric(month), 0u);
    EXPECT_TRUE(month.SetYearOfTheJpnCalendar(VCDate::ERA_REIWA, 1));
    EXPECT_NE(GetNumeric(month), 0u);
    EXPECT_FALSE(month.SetFiscalMonth(13) || month.SetFiscalMonth(0));
    EXPECT_FALSE(month.SetYearOfTheGrgCalendar(0));
    EXPECT_EQ(GetNumeric(month), 0u);
    CFiscalYear year;
    EXPECT_EQ(GetNumeric(year), 0u);
    EXPECT_TRUE(year.SetFiscalYearOfTheJpnCalendar(VCDate::ERA_HEISEI, 31));
    EXPECT_EQ(GetNumeric(year), 0u); // fiscal year 2019 is that of Reiwa 1
}
