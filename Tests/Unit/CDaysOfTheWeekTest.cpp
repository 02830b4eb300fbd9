#include "CDaysOfTheWeek.h"

#include "Support/DateText.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

TEST(CDaysOfTheWeek, DaysOrderFromTheFirstDayOfTheWeekOn)
{
    for (DWORD first = 0; first < 7; ++first) {
        const SCriteria criteria{4, 31, static_cast<VCDate::EDaysOfTheWeek>(first)};
        unsigned long long before = 0;
        for (DWORD place = 0; place < 7; ++place) {
            CDaysOfTheWeek day;
            ASSERT_TRUE(day.SetDaysOfTheWeek(static_cast<VCDate::EDaysOfTheWeek>((first + place) % 7)));
            EXPECT_LT(before, GetNumeric(day, criteria));
            before = GetNumeric(day, criteria);
        }
    }
}

TEST(CDaysOfTheWeek, MonthsAndWeeksGoBeforeDaysAndAllNumbersDiffer)
{
    unsigned long long before = 0;
    for (const DWORD month : {4U, 12U, 1U, 3U}) { // in the order of a fiscal year from April
        for (DWORD week = 1; week <= VCDate::MAXWEEK_OF_MONTH; ++week) {
            for (DWORD weekday = 0; weekday < 7; ++weekday) {
                CDaysOfTheWeek day(CDaysOfTheWeek::DAYSOFWEEKTYPE_FISCALMONTH);
                day.SetFiscalMonth(month);
                day.SetWeekNum(week);
                day.SetDaysOfTheWeek(static_cast<VCDate::EDaysOfTheWeek>(weekday));
                ASSERT_LT(before, GetNumeric(day)) << GetParts(&day);
                before = GetNumeric(day);
            }
        }
    }
}

TEST(CDaysOfTheWeek, ItTakesThePartsOfItsTypeOnly)
{
    CDaysOfTheWeek day;
    DWORD value = 0;
    VCDate::EDaysOfTheWeek weekday = VCDate::DAYSOFWEEK_UNSETTING;
    EXPECT_FALSE(day.SetFiscalMonth(7) || day.SetWeekNum(7) || day.SetWeekNum(0) || day.SetMonth(13));
    EXPECT_FALSE(day.SetDaysOfTheWeek(static_cast<VCDate::EDaysOfTheWeek>(7)));
    EXPECT_FALSE(day.GetDaysOfTheWeek(weekday) || day.GetMonth(value));
    EXPECT_EQ(GetNumeric(day), 0u);
    EXPECT_TRUE(day.SetMonth(7) && day.SetWeekNum(3) && day.SetDaysOfTheWeek(VCDate::DAYSOFWEEK_FRIDAY));
    EXPECT_EQ(GetParts(&day), "07 W3 Fri");
    EXPECT_TRUE(day.GetWeekOfTheMonth(VCDate::DAYSOFWEEK_MONDAY, value));
    EXPECT_FALSE(day.GetWeekOfTheFiscalMonth(31, VCDate::DAYSOFWEEK_MONDAY, value));
    EXPECT_FALSE(day.GetFiscalMonth(31, value));
    day.Clear();
    EXPECT_EQ(GetParts(&day), "");
}
