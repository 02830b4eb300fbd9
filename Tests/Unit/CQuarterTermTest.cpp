#include "CQuarterTerm.h"

#include "CFiscalMonth.h"
#include "CFiscalYear.h"
#include "CHalfTerm.h"
#include "Support/DateText.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using DatePtr = std::unique_ptr<VCDate>;

DatePtr MakeQuarter(const CDate& date, bool isJapanese, const SCriteria& criteria)
{
    CQuarterTerm made;
    VCDate::EEra era = VCDate::ERA_UNSETTING;
    DWORD year = 0;
    DWORD quarter = 0;
    const bool good =
        (isJapanese
             ? date.GetFiscalYearOfTheJpnCalendar(criteria.startMonth, criteria.cutOffDate, era, year) &&
                   made.SetFiscalYearOfTheJpnCalendar(era, year)
             : date.GetFiscalYearOfTheGrgCalendar(criteria.startMonth, criteria.cutOffDate, year) &&
                   made.SetFiscalYearOfTheGrgCalendar(year)) &&
        date.GetQuarterTerm(criteria.startMonth, criteria.cutOffDate, quarter) &&
        made.SetQuarterTerm(quarter);
    return good ? made.CreateClone() : nullptr;
}

DatePtr MakeHalf(const CDate& date, bool isJapanese, const SCriteria& criteria)
{
    CHalfTerm made;
    VCDate::EEra era = VCDate::ERA_UNSETTING;
    DWORD year = 0;
    DWORD half = 0;
    const bool good =
        (isJapanese
             ? date.GetFiscalYearOfTheJpnCalendar(criteria.startMonth, criteria.cutOffDate, era, year) &&
                   made.SetFiscalYearOfTheJpnCalendar(era, year)
             : date.GetFiscalYearOfTheGrgCalendar(criteria.startMonth, criteria.cutOffDate, year) &&
                   made.SetFiscalYearOfTheGrgCalendar(year)) &&
        date.GetHalfTerm(criteria.startMonth, criteria.cutOffDate, half) && made.SetHalfTerm(half);
    return good ? made.CreateClone() : nullptr;
}

DatePtr MakeFiscalYear(const CDate& date, bool isJapanese, const SCriteria& criteria)
{
    CFiscalYear made;
    VCDate::EEra era = VCDate::ERA_UNSETTING;
    DWORD year = 0;
    const bool good =
        isJapanese
            ? date.GetFiscalYearOfTheJpnCalendar(criteria.startMonth, criteria.cutOffDate, era, year) &&
                  made.SetFiscalYearOfTheJpnCalendar(era, year)
            : date.GetFiscalYearOfTheGrgCalendar(criteria.startMonth, criteria.cutOffDate, year) &&
                  made.SetFiscalYearOfTheGrgCalendar(year);
    return good ? made.CreateClone() : nullptr;
}

DatePtr MakeFiscalMonth(const CDate& date, bool isJapanese, const SCriteria& criteria)
{
    CFiscalMonth made;
    VCDate::EEra era = VCDate::ERA_UNSETTING;
    DWORD year = 0;
    DWORD month = 0;
    const bool good = (isJapanese ? date.GetFiscalMonth(criteria.cutOffDate, era, year, month) &&
                                        made.SetYearOfTheJpnCalendar(era, year)
                                  : date.GetFiscalMonth(criteria.cutOffDate, year, month) &&
                                        made.SetYearOfTheGrgCalendar(year)) &&
                      made.SetFiscalMonth(month);
    return good ? made.CreateClone() : nullptr;
}

using Maker = std::function<DatePtr(const CDate&, bool, const SCriteria&)>;

// As for weeks: along the calendar the number is new exactly when the stretch is another one.
void CheckAlongTheCalendar(const Maker& make, const SCriteria& criteria)
{
    const long last = SCCalendar::GetDayNum(2100, 12, 31);
    for (const bool isJapanese : {false, true}) {
        unsigned long long before = 0;
        std::string textBefore;
        for (long dayNum = SCCalendar::GetDayNum(1870, 1, 1); dayNum <= last; ++dayNum) {
            const CDate date = MakeDay(dayNum);
            const DatePtr stretch = make(date, isJapanese, criteria);
            ASSERT_NE(stretch, nullptr) << GetParts(&date);
            const unsigned long long numeric = GetNumeric(*stretch, criteria);
            const std::string text = GetParts(stretch.get());
            ASSERT_NE(numeric, 0u) << text;
            ASSERT_LE(before, numeric) << text;
            ASSERT_LT(numeric, GetNumeric(date, criteria)) << text;
            ASSERT_EQ(before == numeric, textBefore == text) << text;
            before = numeric;
            textBefore = text;
        }
    }
}

} // namespace

TEST(CQuarterTerm, FiscalTermsFollowTheCalendarFromEveryStartMonth)
{
    for (DWORD startMonth = 1; startMonth <= 12; ++startMonth) {
        const SCriteria criteria{startMonth, startMonth % 2 == 0 ? 31U : 15U, VCDate::DAYSOFWEEK_SUNDAY};
        CheckAlongTheCalendar(MakeFiscalYear, criteria);
        CheckAlongTheCalendar(MakeHalf, criteria);
        CheckAlongTheCalendar(MakeQuarter, criteria);
    }
}

TEST(CQuarterTerm, FiscalMonthsFollowTheCalendarWithEveryCutOffDay)
{
    for (const DWORD cutOffDate : {1U, 10U, 28U, 29U, 30U, 31U})
        CheckAlongTheCalendar(MakeFiscalMonth, {4, cutOffDate, VCDate::DAYSOFWEEK_SUNDAY});
}

TEST(CQuarterTerm, LongerStretchesStandInFrontOfShorterOnesWithTheSameFirstDay)
{
    const CDate day = MakeDay(2024, 4, 1);
    const SCriteria criteria;
    unsigned long long before = 0;
    for (const Maker& make :
         {Maker(MakeFiscalYear), Maker(MakeHalf), Maker(MakeQuarter), Maker(MakeFiscalMonth)}) {
        const DatePtr stretch = make(day, false, criteria);
        EXPECT_LT(before, GetNumeric(*stretch)) << GetParts(stretch.get());
        before = GetNumeric(*stretch);
    }
    EXPECT_LT(before, GetNumeric(day));
}

TEST(CQuarterTerm, AChangedStartMonthMovesADayIntoAnotherQuarter)
{
    const CDate day = MakeDay(2024, 3, 31);
    const DatePtr fromApril = MakeQuarter(day, false, {4, 31, VCDate::DAYSOFWEEK_SUNDAY});
    const DatePtr fromJanuary = MakeQuarter(day, false, {1, 31, VCDate::DAYSOFWEEK_SUNDAY});
    EXPECT_EQ(GetParts(fromApril.get()), "FY2023 Q4");
    EXPECT_EQ(GetParts(fromJanuary.get()), "FY2024 Q1");
}

TEST(CQuarterTerm, QuartersHaveLimitsAndAHalf)
{
    CQuarterTerm quarter;
    DWORD value = 0;
    EXPECT_FALSE(quarter.SetQuarterTerm(0) || quarter.SetQuarterTerm(5));
    EXPECT_FALSE(quarter.GetQuarterTerm(4, 31, value));
    EXPECT_EQ(GetNumeric(quarter), 0u);
    EXPECT_TRUE(quarter.SetQuarterTerm(3));
    EXPECT_TRUE(quarter.GetHalfTerm(4, 31, value));
    EXPECT_EQ(value, 2u);
    EXPECT_FALSE(quarter.GetQuarterTerm(0, 31, value));
    EXPECT_FALSE(quarter.SetFiscalYearOfTheGrgCalendar(0));
    const unsigned long long third = GetNumeric(quarter);
    quarter.SetQuarterTerm(4);
    EXPECT_LT(third, GetNumeric(quarter));
    quarter.Clear();
    EXPECT_EQ(GetParts(&quarter), "");
    CHalfTerm half;
    EXPECT_FALSE(half.SetHalfTerm(3));
    EXPECT_TRUE(half.SetHalfTerm(2));
    EXPECT_NE(GetNumeric(half), 0u);
}
