#include "CDate.h"

#include "Support/DateText.h"

#include <gtest/gtest.h>

#include <memory>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

constexpr DWORD UNSET = VCDate::DATE_UNSETTING;

CDate MakeMonth(DWORD year, DWORD month)
{
    CDate date;
    date.SetYearOfTheGrgCalendar(year);
    date.SetMonth(month);
    return date;
}

CDate MakeJpn(VCDate::EEra era, DWORD year, DWORD month = UNSET, DWORD day = UNSET)
{
    CDate date;
    EXPECT_TRUE(date.SetYearOfTheJpnCalendar(era, year));
    date.SetMonth(month);
    date.SetDay(day);
    return date;
}

CDate MakeTime(DWORD hour, DWORD minute, DWORD second)
{
    CDate time;
    time.SetHour(hour);
    time.SetMinute(minute);
    time.SetSecond(second);
    return time;
}

} // namespace

TEST(CDate, AnEmptyDateGivesNothing)
{
    const CDate date;
    DWORD value = 77;
    VCDate::EEra era = VCDate::ERA_UNSETTING;
    VCDate::EDaysOfTheWeek day = VCDate::DAYSOFWEEK_UNSETTING;
    VCDate::ETimeBasedOnNoon noon = VCDate::TIMEBASEDONNOON_UNSETTING;
    EXPECT_FALSE(date.GetYearOfTheGrgCalendar(value));
    EXPECT_FALSE(date.GetYearOfTheJpnCalendar(era, value));
    EXPECT_FALSE(date.GetMonth(value) || date.GetDay(value));
    EXPECT_FALSE(date.GetHour(value) || date.GetMinute(value) || date.GetSecond(value));
    EXPECT_FALSE(date.GetFiscalYearOfTheGrgCalendar(4, 31, value));
    EXPECT_FALSE(date.GetFiscalMonth(31, value));
    EXPECT_FALSE(date.GetHalfTerm(4, 31, value) || date.GetQuarterTerm(4, 31, value));
    EXPECT_FALSE(date.GetWeekOfTheYear(VCDate::DAYSOFWEEK_SUNDAY, value));
    EXPECT_FALSE(date.GetDaysOfTheWeek(day) || date.GetTimeBasedOnNoon(noon));
    EXPECT_EQ(GetNumeric(date), 0u);
    EXPECT_EQ(GetParts(&date), "");
    EXPECT_EQ(value, 77u);
    EXPECT_EQ(date.GetEra(), VCDate::ERA_UNSETTING);
}

TEST(CDate, AValueOutsideItsLimitsLeavesThePartUnset)
{
    CDate date = MakeDay(2024, 7, 15);
    DWORD value = 0;
    EXPECT_FALSE(date.SetMonth(13));
    EXPECT_FALSE(date.GetMonth(value));
    EXPECT_FALSE(date.SetDay(32));
    EXPECT_FALSE(date.GetDay(value));
    EXPECT_FALSE(date.SetMonth(0) || date.SetDay(0));
    EXPECT_FALSE(date.SetYearOfTheGrgCalendar(0));
    EXPECT_FALSE(date.GetYearOfTheGrgCalendar(value));
    EXPECT_FALSE(date.SetYearOfTheGrgCalendar(10000));
    EXPECT_FALSE(date.SetYearOfTheJpnCalendar(VCDate::ERA_HEISEI, 32));
    EXPECT_FALSE(date.SetYearOfTheJpnCalendar(VCDate::ERA_GREGORIAN, 2024));
    EXPECT_FALSE(date.SetHour(48) || date.SetMinute(60) || date.SetSecond(60));
    EXPECT_EQ(GetParts(&date), "");
    EXPECT_TRUE(date.SetHour(47) && date.SetMinute(59) && date.SetSecond(59) && date.SetMonth(UNSET));
    EXPECT_EQ(GetParts(&date), "47:59:59");
    date.Clear();
    EXPECT_EQ(GetParts(&date), "");
}

TEST(CDate, TheJapaneseYearFollowsFromTheDayOrFromTheLastDayOfWhatIsHeld)
{
    const auto get = [](const CDate& date) {
        VCDate::EEra era = VCDate::ERA_UNSETTING;
        DWORD year = 0;
        return date.GetYearOfTheJpnCalendar(era, year)
                   ? GetParts(std::make_unique<CDate>(MakeJpn(era, year)).get())
                   : "none";
    };
    EXPECT_EQ(get(MakeDay(2019, 4, 30)), "H31");
    EXPECT_EQ(get(MakeDay(2019, 5, 1)), "R1");
    EXPECT_EQ(get(MakeMonth(2019, 4)), "H31");
    EXPECT_EQ(get(MakeMonth(1989, 1)), "H1");
    EXPECT_EQ(get(MakeMonth(2019, UNSET)), "R1");
    EXPECT_EQ(get(MakeDay(1868, 10, 22)), "none");
    EXPECT_EQ(get(MakeDay(2023, 2, 29)), "none");
    EXPECT_EQ(get(MakeJpn(VCDate::ERA_HEISEI, 31, 4)), "H31");
    DWORD year = 0;
    EXPECT_TRUE(MakeJpn(VCDate::ERA_SHOWA, 64).GetYearOfTheGrgCalendar(year));
    EXPECT_EQ(year, 1989u);
}

TEST(CDate, AFiscalYearGoesByStartMonthAndCutOffDay)
{
    const auto get = [](const CDate& date, DWORD startMonth, DWORD cutOffDate) {
        DWORD year = 0;
        return date.GetFiscalYearOfTheGrgCalendar(startMonth, cutOffDate, year) ? year : 0;
    };
    EXPECT_EQ(get(MakeDay(2024, 3, 31), 4, 31), 2023u);
    EXPECT_EQ(get(MakeDay(2024, 4, 1), 4, 31), 2024u);
    EXPECT_EQ(get(MakeDay(2024, 3, 20), 4, 20), 2023u);
    EXPECT_EQ(get(MakeDay(2024, 3, 21), 4, 20), 2024u);
    EXPECT_EQ(get(MakeDay(2023, 12, 21), 1, 20), 2024u);
    EXPECT_EQ(get(MakeDay(2024, 2, 29), 3, 31), 2023u);
    EXPECT_EQ(get(MakeDay(2024, 2, 29), 3, 28), 2024u);
    EXPECT_EQ(get(MakeMonth(2024, 3), 4, 20), 2023u); // a month alone is the fiscal month of its name
    EXPECT_EQ(get(MakeMonth(2024, UNSET), 4, 31), 0u);
    EXPECT_EQ(get(MakeDay(1, 1, 1), 4, 31), 0u);      // the year before the first
    EXPECT_EQ(get(MakeDay(9999, 12, 31), 1, 20), 0u); // the year behind the last
    EXPECT_EQ(get(MakeDay(2024, 4, 1), 0, 31), 0u);
    EXPECT_EQ(get(MakeDay(2024, 4, 1), 13, 31), 0u);
    EXPECT_EQ(get(MakeDay(2024, 4, 1), 4, 0), 0u);
    EXPECT_EQ(get(MakeDay(2024, 4, 1), 4, 32), 0u);
}

TEST(CDate, AFiscalYearBearsTheJapaneseYearInWhichItsNamingYearEnds)
{
    const auto get = [](const CDate& date) {
        VCDate::EEra era = VCDate::ERA_UNSETTING;
        DWORD year = 0;
        EXPECT_TRUE(date.GetFiscalYearOfTheJpnCalendar(4, 31, era, year));
        const CDate made = MakeJpn(era, year);
        return GetParts(&made);
    };
    EXPECT_EQ(get(MakeDay(2019, 4, 1)), "R1");
    EXPECT_EQ(get(MakeDay(2020, 3, 31)), "R1");
    EXPECT_EQ(get(MakeDay(2019, 3, 31)), "H30");
    EXPECT_EQ(get(MakeDay(1989, 3, 31)), "S63");
    EXPECT_EQ(get(MakeDay(1989, 4, 1)), "H1");
}

TEST(CDate, AFiscalMonthBearsTheMonthThatItEndsIn)
{
    DWORD year = 0;
    DWORD month = 0;
    VCDate::EEra era = VCDate::ERA_UNSETTING;
    EXPECT_TRUE(MakeDay(2023, 12, 31).GetFiscalMonth(20, year, month));
    EXPECT_EQ(year, 2024u);
    EXPECT_EQ(month, 1u);
    EXPECT_TRUE(MakeDay(2019, 4, 21).GetFiscalMonth(20, era, year, month)); // ends on 20 May
    EXPECT_EQ(era, VCDate::ERA_REIWA);
    EXPECT_EQ(year, 1u);
    EXPECT_EQ(month, 5u);
    EXPECT_TRUE(MakeDay(1989, 1, 7).GetFiscalMonth(31, era, year, month));
    EXPECT_EQ(era, VCDate::ERA_HEISEI);
    CDate monthAndDay;
    monthAndDay.SetMonth(12);
    monthAndDay.SetDay(21);
    EXPECT_TRUE(monthAndDay.GetFiscalMonth(20, month));
    EXPECT_EQ(month, 1u);
    EXPECT_FALSE(monthAndDay.GetFiscalMonth(20, year, month));
}

TEST(CDate, WeeksNeedARealDay)
{
    DWORD week = 0;
    const CDate date = MakeDay(2024, 7, 15);
    EXPECT_TRUE(date.GetWeekOfTheYear(VCDate::DAYSOFWEEK_SUNDAY, week));
    EXPECT_EQ(week, 29u);
    EXPECT_TRUE(date.GetWeekOfTheMonth(VCDate::DAYSOFWEEK_SUNDAY, week));
    EXPECT_EQ(week, 3u);
    EXPECT_TRUE(date.GetWeekOfTheFiscalYear(4, 31, VCDate::DAYSOFWEEK_SUNDAY, week));
    EXPECT_EQ(week, 16u);
    EXPECT_TRUE(date.GetWeekOfTheFiscalMonth(20, VCDate::DAYSOFWEEK_SUNDAY, week)); // from 21 June, a Friday
    EXPECT_EQ(week, 5u);
    VCDate::EDaysOfTheWeek day = VCDate::DAYSOFWEEK_UNSETTING;
    EXPECT_TRUE(date.GetDaysOfTheWeek(day));
    EXPECT_EQ(day, VCDate::DAYSOFWEEK_MONDAY);
    EXPECT_FALSE(MakeMonth(2024, 7).GetWeekOfTheYear(VCDate::DAYSOFWEEK_SUNDAY, week));
    EXPECT_FALSE(MakeDay(2023, 2, 29).GetWeekOfTheMonth(VCDate::DAYSOFWEEK_SUNDAY, week));
    EXPECT_FALSE(date.GetWeekOfTheYear(VCDate::DAYSOFWEEK_UNSETTING, week));
}

TEST(CDate, HoursPastMidnightBelongToTheNextMorning)
{
    VCDate::ETimeBasedOnNoon noon = VCDate::TIMEBASEDONNOON_UNSETTING;
    EXPECT_TRUE(MakeTime(11, 59, 59).GetTimeBasedOnNoon(noon));
    EXPECT_EQ(noon, VCDate::TIMEBASEDONNOON_MORNING);
    EXPECT_TRUE(MakeTime(12, 0, 0).GetTimeBasedOnNoon(noon));
    EXPECT_EQ(noon, VCDate::TIMEBASEDONNOON_AFTERNOON);
    EXPECT_TRUE(MakeTime(25, 30, 0).GetTimeBasedOnNoon(noon));
    EXPECT_EQ(noon, VCDate::TIMEBASEDONNOON_MORNING);
}

TEST(CDate, NumbersOfGregorianAndJapaneseYearsOrderByTime)
{
    const CDate dates[] = {MakeMonth(2018, UNSET),
                           MakeDay(2018, 12, 31),
                           MakeMonth(2019, UNSET),
                           MakeMonth(2019, 1),
                           MakeJpn(VCDate::ERA_HEISEI, 31, 1, 1),
                           MakeJpn(VCDate::ERA_HEISEI, 31, 4, 30),
                           MakeJpn(VCDate::ERA_REIWA, 1),
                           MakeMonth(2019, 5),
                           MakeDay(2019, 5, 1),
                           MakeJpn(VCDate::ERA_REIWA, 1, 5, 2),
                           MakeDay(2019, 12, 31),
                           MakeJpn(VCDate::ERA_REIWA, 2)};
    unsigned long long before = 0;
    for (const CDate& date : dates) {
        EXPECT_LT(before, GetNumeric(date)) << GetParts(&date);
        before = GetNumeric(date);
    }
    EXPECT_EQ(GetNumeric(MakeDay(2019, 5, 1)), GetNumeric(MakeJpn(VCDate::ERA_REIWA, 1, 5, 1)));
    EXPECT_LT(GetNumeric(MakeJpn(VCDate::ERA_SHOWA, 64, 1)), GetNumeric(MakeJpn(VCDate::ERA_HEISEI, 1, 1)));
}

TEST(CDate, WhatThereIsNotHasNoNumber)
{
    EXPECT_EQ(GetNumeric(MakeDay(2023, 2, 29)), 0u);
    EXPECT_EQ(GetNumeric(MakeJpn(VCDate::ERA_REIWA, 1, 1)), 0u);
    EXPECT_EQ(GetNumeric(MakeJpn(VCDate::ERA_REIWA, 1, 4, 30)), 0u);
    EXPECT_EQ(GetNumeric(MakeJpn(VCDate::ERA_HEISEI, 31, 5, 1)), 0u);
    EXPECT_EQ(GetNumeric(MakeDay(2024, 7, 15), {0, 31, VCDate::DAYSOFWEEK_SUNDAY}), 0u);
    EXPECT_EQ(GetNumeric(MakeDay(2024, 7, 15), {4, 32, VCDate::DAYSOFWEEK_SUNDAY}), 0u);
    EXPECT_EQ(GetNumeric(MakeDay(2024, 7, 15), {4, 31, VCDate::DAYSOFWEEK_UNSETTING}), 0u);
}

TEST(CDate, DatesWithoutYearOrderByMonthAndDayInFrontOfTheOthers)
{
    unsigned long long before = 0;
    for (DWORD month = 1; month <= 12; ++month) {
        CDate date;
        date.SetMonth(month);
        EXPECT_LT(before, GetNumeric(date));
        before = GetNumeric(date);
        for (DWORD day = 1; day <= SCCalendar::GetLastDay(2024, month); ++day) {
            date.SetDay(day);
            ASSERT_LT(before, GetNumeric(date)) << month << "-" << day;
            before = GetNumeric(date);
        }
    }
    EXPECT_LT(before, GetNumeric(MakeMonth(1, UNSET)));
    CDate day;
    day.SetMonth(2);
    day.SetDay(30);
    EXPECT_EQ(GetNumeric(day), 0u);
    day.SetMonth(UNSET);
    day.SetDay(31);
    EXPECT_NE(GetNumeric(day), 0u);
}

TEST(CDate, TimesOrderByHourMinuteSecondAndWhatLacksPartsComesFirst)
{
    EXPECT_LT(GetNumeric(MakeTime(0, UNSET, UNSET)), GetNumeric(MakeTime(0, 0, UNSET)));
    EXPECT_LT(GetNumeric(MakeTime(0, 0, UNSET)), GetNumeric(MakeTime(0, 0, 0)));
    EXPECT_LT(GetNumeric(MakeTime(0, 0, 59)), GetNumeric(MakeTime(0, 1, 0)));
    EXPECT_LT(GetNumeric(MakeTime(23, 59, 59)), GetNumeric(MakeTime(24, 0, 0)));
    EXPECT_LT(GetNumeric(MakeTime(UNSET, 59, 59)), GetNumeric(MakeTime(0, 0, 0)));
}

TEST(CDate, EveryDayFromMeijiOnHasAGreaterNumberThanTheOneBefore)
{
    unsigned long long before = 0;
    const long last = SCCalendar::GetDayNum(2100, 12, 31);
    for (long dayNum = SCCalendar::GetDayNum(1868, 10, 23); dayNum <= last; ++dayNum) {
        const CDate date = MakeDay(dayNum);
        VCDate::EEra era = VCDate::ERA_UNSETTING;
        DWORD year = 0;
        DWORD month = 0;
        DWORD day = 0;
        ASSERT_TRUE(date.GetYearOfTheJpnCalendar(era, year) && date.GetMonth(month) && date.GetDay(day));
        const unsigned long long numeric = GetNumeric(date);
        ASSERT_LT(before, numeric) << GetParts(&date);
        ASSERT_EQ(numeric, GetNumeric(MakeJpn(era, year, month, day))) << GetParts(&date);
        before = numeric;
    }
}

TEST(CDate, APlainTextFitsItsBufferOrLeavesItAlone)
{
    char text[VCDate::MAX_DATESTRING_SIZE] = "before";
    EXPECT_FALSE(MakeDay(2024, 7, 15).GetDateString(text, 10));
    EXPECT_STREQ(text, "before");
    EXPECT_TRUE(MakeDay(2024, 7, 15).GetDateString(text, 11));
    EXPECT_STREQ(text, "2024-07-15");
    const CDate japanese = MakeJpn(VCDate::ERA_REIWA, 6, 7);
    EXPECT_EQ(GetParts(&japanese), "R6-07");
    const std::unique_ptr<VCDate> clone = japanese.CreateClone();
    EXPECT_EQ(GetParts(clone.get()), "R6-07");
    EXPECT_EQ(clone->GetType(), VCDate::DATEOBJTYPE_DATE);
}
