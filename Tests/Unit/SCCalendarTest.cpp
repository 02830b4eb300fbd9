#include "SCCalendar.h"

#include "Support/DateText.h"

#include <gtest/gtest.h>

#include <string>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

std::string GetEraText(DWORD year, DWORD month, DWORD day)
{
    VCDate::EEra era = VCDate::ERA_UNSETTING;
    DWORD yearOfEra = 0;
    if (!SCCalendar::GetJpnYear(SCCalendar::GetDayNum(year, month, day), era, yearOfEra))
        return "none";
    static const char* const LETTERS[] = {"?", "M", "T", "S", "?", "H", "R"};
    return LETTERS[era] + std::to_string(yearOfEra);
}

std::string GetFiscalMonthText(DWORD year, DWORD month, DWORD day, DWORD cutOffDate)
{
    long fiscalMonthYear = 0;
    DWORD fiscalMonth = 0;
    SCCalendar::GetFiscalMonth(year, month, day, cutOffDate, fiscalMonthYear, fiscalMonth);
    return std::to_string(fiscalMonthYear) + "-" + std::to_string(fiscalMonth);
}

} // namespace

TEST(SCCalendar, DaysAreCountedFromTheFirstOfTheYearOne)
{
    EXPECT_EQ(SCCalendar::GetDayNum(1, 1, 1), 1);
    EXPECT_EQ(SCCalendar::GetDayNum(1970, 1, 1), 719163);
    EXPECT_EQ(SCCalendar::GetDayNum(2024, 3, 0), SCCalendar::GetDayNum(2024, 2, 29));
    long year = 0;
    DWORD month = 0;
    DWORD day = 0;
    SCCalendar::GetDay(SCCalendar::GetDayNum(9999, 12, 31), year, month, day);
    EXPECT_EQ(year, 9999);
    EXPECT_EQ(month, 12u);
    EXPECT_EQ(day, 31u);
}

TEST(SCCalendar, RealDaysKnowLeapYears)
{
    EXPECT_TRUE(SCCalendar::IsRealDay(2024, 2, 29));
    EXPECT_FALSE(SCCalendar::IsRealDay(2023, 2, 29));
    EXPECT_FALSE(SCCalendar::IsRealDay(1900, 2, 29));
    EXPECT_TRUE(SCCalendar::IsRealDay(2000, 2, 29));
    EXPECT_FALSE(SCCalendar::IsRealDay(2024, 4, 31));
    EXPECT_FALSE(SCCalendar::IsRealDay(2024, 0, 1));
    EXPECT_FALSE(SCCalendar::IsRealDay(2024, 13, 1));
    EXPECT_FALSE(SCCalendar::IsRealDay(2024, 1, 0));
    EXPECT_FALSE(SCCalendar::IsRealDay(0, 1, 1));
    EXPECT_FALSE(SCCalendar::IsRealDay(10000, 1, 1));
}

TEST(SCCalendar, ADayOfChangeBelongsToTheNewEra)
{
    EXPECT_EQ(GetEraText(1868, 10, 22), "none");
    EXPECT_EQ(GetEraText(1868, 10, 23), "M1");
    EXPECT_EQ(GetEraText(1912, 7, 29), "M45");
    EXPECT_EQ(GetEraText(1912, 7, 30), "T1");
    EXPECT_EQ(GetEraText(1926, 12, 24), "T15");
    EXPECT_EQ(GetEraText(1926, 12, 25), "S1");
    EXPECT_EQ(GetEraText(1927, 1, 1), "S2");
    EXPECT_EQ(GetEraText(1989, 1, 7), "S64");
    EXPECT_EQ(GetEraText(1989, 1, 8), "H1");
    EXPECT_EQ(GetEraText(2019, 4, 30), "H31");
    EXPECT_EQ(GetEraText(2019, 5, 1), "R1");
}

TEST(SCCalendar, ACutOffDayBehindTheEndOfAShortMonthIsItsLastDay)
{
    EXPECT_EQ(GetFiscalMonthText(2023, 2, 28, 31), "2023-2");
    EXPECT_EQ(GetFiscalMonthText(2023, 3, 1, 31), "2023-3");
    EXPECT_EQ(GetFiscalMonthText(2024, 2, 29, 30), "2024-2");
    EXPECT_EQ(GetFiscalMonthText(2024, 2, 29, 28), "2024-3");
    EXPECT_EQ(GetFiscalMonthText(2024, 1, 30, 29), "2024-2");
    EXPECT_EQ(GetFiscalMonthText(2024, 4, 30, 31), "2024-4");
    EXPECT_EQ(GetFiscalMonthText(2023, 12, 20, 20), "2023-12");
    EXPECT_EQ(GetFiscalMonthText(2023, 12, 21, 20), "2024-1");
    EXPECT_EQ(SCCalendar::GetLastDayOfFiscalMonth(2023, 2, 31), SCCalendar::GetDayNum(2023, 2, 28));
    EXPECT_EQ(SCCalendar::GetFirstDayOfFiscalMonth(2024, 1, 20), SCCalendar::GetDayNum(2023, 12, 21));
    EXPECT_EQ(SCCalendar::GetFirstDayOfFiscalMonth(2023, 3, 29), SCCalendar::GetDayNum(2023, 3, 1));
    EXPECT_EQ(SCCalendar::GetFirstDayOfFiscalMonth(2023, 3, 15), SCCalendar::GetDayNum(2023, 2, 16));
}

TEST(SCCalendar, EveryDayLiesInTheFiscalMonthThatItIsSaidToLieIn)
{
    const long last = SCCalendar::GetDayNum(2028, 12, 31);
    for (DWORD cutOffDate = 1; cutOffDate <= 31; ++cutOffDate) {
        for (long dayNum = SCCalendar::GetDayNum(2023, 1, 1); dayNum <= last; ++dayNum) {
            long year = 0;
            DWORD month = 0;
            DWORD day = 0;
            SCCalendar::GetDay(dayNum, year, month, day);
            SCCalendar::GetFiscalMonth(year, month, day, cutOffDate, year, month);
            ASSERT_LE(SCCalendar::GetFirstDayOfFiscalMonth(year, month, cutOffDate), dayNum) << cutOffDate;
            ASSERT_GE(SCCalendar::GetLastDayOfFiscalMonth(year, month, cutOffDate), dayNum) << cutOffDate;
        }
    }
}

TEST(SCCalendar, AFiscalYearBearsTheYearOfItsFirstFiscalMonth)
{
    for (DWORD startMonth = 1; startMonth <= 12; ++startMonth) {
        EXPECT_EQ(SCCalendar::GetFiscalYear(2024, startMonth, startMonth), 2024);
        const DWORD before = startMonth == 1 ? 12 : startMonth - 1;
        EXPECT_EQ(SCCalendar::GetFiscalYear(startMonth == 1 ? 2024 : 2025, before, startMonth), 2024);
        EXPECT_EQ(SCCalendar::GetPlaceInFiscalYear(startMonth, startMonth), 0u);
        EXPECT_EQ(SCCalendar::GetPlaceInFiscalYear(before, startMonth), 11u);
        EXPECT_EQ(SCCalendar::GetFirstDayInFiscalYear(2024, 0, startMonth, 31),
                  SCCalendar::GetDayNum(2024, startMonth, 1));
        EXPECT_EQ(SCCalendar::GetFirstDayInFiscalYear(2024, 12, startMonth, 31),
                  SCCalendar::GetDayNum(2025, startMonth, 1));
    }
    EXPECT_EQ(SCCalendar::GetFirstDayInFiscalYear(2024, 0, 1, 20), SCCalendar::GetDayNum(2023, 12, 21));
}

TEST(SCCalendar, HalvesAndQuartersAreSixAndThreeFiscalMonths)
{
    EXPECT_EQ(SCCalendar::GetHalfTerm(4, 4), 1u);
    EXPECT_EQ(SCCalendar::GetHalfTerm(9, 4), 1u);
    EXPECT_EQ(SCCalendar::GetHalfTerm(10, 4), 2u);
    EXPECT_EQ(SCCalendar::GetHalfTerm(3, 4), 2u);
    EXPECT_EQ(SCCalendar::GetQuarterTerm(6, 4), 1u);
    EXPECT_EQ(SCCalendar::GetQuarterTerm(7, 4), 2u);
    EXPECT_EQ(SCCalendar::GetQuarterTerm(3, 4), 4u);
    EXPECT_EQ(SCCalendar::GetQuarterTerm(11, 12), 4u);
    EXPECT_EQ(SCCalendar::GetQuarterTerm(12, 12), 1u);
}

TEST(SCCalendar, WeekOneHoldsTheFirstDayWhateverDayBeginsTheWeek)
{
    const long monday = SCCalendar::GetDayNum(2024, 1, 1);
    ASSERT_EQ(SCCalendar::GetDaysOfTheWeek(monday), VCDate::DAYSOFWEEK_MONDAY);
    for (DWORD first = 0; first < 7; ++first) {
        const auto daysOfWeek = static_cast<VCDate::EDaysOfTheWeek>(first);
        DWORD week = 1;
        for (long dayNum = monday; dayNum < monday + 366; ++dayNum) {
            if (dayNum != monday && SCCalendar::GetDaysOfTheWeek(dayNum) == daysOfWeek)
                ++week;
            ASSERT_EQ(SCCalendar::GetWeek(dayNum, monday, daysOfWeek), week);
            ASSERT_LE(SCCalendar::GetFirstDayOfWeek(week, monday, daysOfWeek), dayNum);
            ASSERT_GT(SCCalendar::GetFirstDayOfWeek(week + 1, monday, daysOfWeek), dayNum);
        }
    }
}

TEST(SCCalendar, AYearCanHave54Weeks)
{
    const long saturday = SCCalendar::GetDayNum(2000, 1, 1);
    EXPECT_EQ(SCCalendar::GetWeek(SCCalendar::GetDayNum(2000, 12, 31), saturday, VCDate::DAYSOFWEEK_SUNDAY),
              54u);
}
