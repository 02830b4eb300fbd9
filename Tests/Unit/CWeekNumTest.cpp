#include "CWeekNum.h"

#include "CDaysOfTheWeek.h"
#include "CFiscalYear.h"
#include "CHalfTerm.h"
#include "CQuarterTerm.h"
#include "Support/DateText.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

// The week of a day, with its year Gregorian or Japanese.
CWeekNum MakeWeek(const CDate& date, CWeekNum::EWeekNumType type, bool isJapanese, const SCriteria& criteria)
{
    CWeekNum made(type);
    VCDate::EEra era = VCDate::ERA_UNSETTING;
    DWORD year = 0;
    DWORD month = 0;
    DWORD week = 0;
    bool good = false;
    switch (type) {
    case CWeekNum::WEEKNUMTYPE_MONTH:
        good = date.GetMonth(month) && made.SetMonth(month);
        [[fallthrough]];
    case CWeekNum::WEEKNUMTYPE_YEAR:
        good = isJapanese ? date.GetYearOfTheJpnCalendar(era, year) && made.SetYearOfTheJpnCalendar(era, year)
                          : date.GetYearOfTheGrgCalendar(year) && made.SetYearOfTheGrgCalendar(year);
        good =
            good && (type == CWeekNum::WEEKNUMTYPE_YEAR ? date.GetWeekOfTheYear(criteria.daysOfWeek, week)
                                                        : date.GetWeekOfTheMonth(criteria.daysOfWeek, week));
        break;
    case CWeekNum::WEEKNUMTYPE_FISCALYEAR:
        good =
            isJapanese
                ? date.GetFiscalYearOfTheJpnCalendar(criteria.startMonth, criteria.cutOffDate, era, year) &&
                      made.SetFiscalYearOfTheJpnCalendar(era, year)
                : date.GetFiscalYearOfTheGrgCalendar(criteria.startMonth, criteria.cutOffDate, year) &&
                      made.SetFiscalYearOfTheGrgCalendar(year);
        good = good && date.GetWeekOfTheFiscalYear(criteria.startMonth, criteria.cutOffDate,
                                                   criteria.daysOfWeek, week);
        break;
    case CWeekNum::WEEKNUMTYPE_FISCALMONTH:
        good = isJapanese ? date.GetFiscalMonth(criteria.cutOffDate, era, year, month) &&
                                made.SetYearOfTheJpnCalendar(era, year)
                          : date.GetFiscalMonth(criteria.cutOffDate, year, month) &&
                                made.SetYearOfTheGrgCalendar(year);
        good = good && made.SetFiscalMonth(month) &&
               date.GetWeekOfTheFiscalMonth(criteria.cutOffDate, criteria.daysOfWeek, week);
        break;
    }
    EXPECT_TRUE(good && made.SetWeekNum(week)) << GetParts(&date);
    return made;
}

} // namespace

// Along the calendar the numbers of the weeks never decrease, never come after the day's own, and are new
// exactly when the week is another one.
TEST(CWeekNum, NumbersFollowTheCalendarUnderAllKindsOfCriteria)
{
    const long first = SCCalendar::GetDayNum(1873, 1, 1);
    const long last = SCCalendar::GetDayNum(2100, 12, 31);
    const SCriteria allCriteria[] = {{4, 31, VCDate::DAYSOFWEEK_SUNDAY},
                                     {1, 20, VCDate::DAYSOFWEEK_MONDAY},
                                     {12, 29, VCDate::DAYSOFWEEK_SATURDAY}};
    for (const SCriteria& criteria : allCriteria) {
        for (const auto type : {CWeekNum::WEEKNUMTYPE_YEAR, CWeekNum::WEEKNUMTYPE_MONTH,
                                CWeekNum::WEEKNUMTYPE_FISCALYEAR, CWeekNum::WEEKNUMTYPE_FISCALMONTH}) {
            for (const bool isJapanese : {false, true}) {
                unsigned long long before = 0;
                std::string textBefore;
                for (long dayNum = first; dayNum <= last; ++dayNum) {
                    const CDate date = MakeDay(dayNum);
                    const CWeekNum week = MakeWeek(date, type, isJapanese, criteria);
                    const unsigned long long numeric = GetNumeric(week, criteria);
                    const std::string text = GetParts(&week);
                    ASSERT_NE(numeric, 0u) << text;
                    ASSERT_LE(before, numeric) << text;
                    ASSERT_LT(numeric, GetNumeric(date, criteria)) << text;
                    ASSERT_EQ(before == numeric, textBefore == text) << text;
                    before = numeric;
                    textBefore = text;
                }
            }
        }
    }
}

TEST(CWeekNum, AWeekInWhichTheEraChangesIsTwo)
{
    const SCriteria criteria;
    const CWeekNum heisei = MakeWeek(MakeDay(2019, 4, 30), CWeekNum::WEEKNUMTYPE_YEAR, true, criteria);
    const CWeekNum reiwa = MakeWeek(MakeDay(2019, 5, 1), CWeekNum::WEEKNUMTYPE_YEAR, true, criteria);
    EXPECT_EQ(GetParts(&heisei), "H31 W18");
    EXPECT_EQ(GetParts(&reiwa), "R1 W18");
    EXPECT_LT(GetNumeric(heisei), GetNumeric(reiwa));
}

TEST(CWeekNum, AWeekThatThereIsNotHasNoNumber)
{
    CWeekNum week(CWeekNum::WEEKNUMTYPE_YEAR);
    week.SetYearOfTheGrgCalendar(2024);
    week.SetWeekNum(53);
    EXPECT_NE(GetNumeric(week), 0u);
    week.SetWeekNum(54);
    EXPECT_EQ(GetNumeric(week), 0u);
    week.SetYearOfTheJpnCalendar(VCDate::ERA_REIWA, 1);
    week.SetWeekNum(17);
    EXPECT_EQ(GetNumeric(week), 0u); // it was Heisei
    CWeekNum fiscal(CWeekNum::WEEKNUMTYPE_FISCALYEAR);
    fiscal.SetFiscalYearOfTheJpnCalendar(VCDate::ERA_HEISEI, 31);
    fiscal.SetWeekNum(1);
    EXPECT_EQ(GetNumeric(fiscal), 0u); // the fiscal year is that of Reiwa 1
    CWeekNum ofMonth(CWeekNum::WEEKNUMTYPE_MONTH);
    ofMonth.SetYearOfTheGrgCalendar(2015); // February 2015: four weeks from Sunday to Saturday
    ofMonth.SetMonth(2);
    ofMonth.SetWeekNum(5);
    EXPECT_EQ(GetNumeric(ofMonth), 0u);
    ofMonth.SetWeekNum(4);
    EXPECT_NE(GetNumeric(ofMonth), 0u);
    EXPECT_EQ(GetNumeric(CWeekNum(CWeekNum::WEEKNUMTYPE_MONTH)), 0u);
}

TEST(CWeekNum, ItTakesThePartsOfItsTypeOnly)
{
    CWeekNum week(CWeekNum::WEEKNUMTYPE_YEAR);
    EXPECT_FALSE(week.SetMonth(7) || week.SetFiscalMonth(7) || week.SetFiscalYearOfTheGrgCalendar(2024));
    EXPECT_FALSE(week.SetWeekNum(55) || week.SetWeekNum(0));
    EXPECT_TRUE(week.SetWeekNum(54));
    DWORD value = 0;
    EXPECT_TRUE(week.GetWeekOfTheYear(VCDate::DAYSOFWEEK_MONDAY, value));
    EXPECT_FALSE(week.GetWeekOfTheMonth(VCDate::DAYSOFWEEK_MONDAY, value));
    EXPECT_FALSE(week.GetWeekOfTheFiscalYear(4, 31, VCDate::DAYSOFWEEK_MONDAY, value));
    CWeekNum fiscal(CWeekNum::WEEKNUMTYPE_FISCALYEAR);
    EXPECT_FALSE(fiscal.SetYearOfTheGrgCalendar(2024));
    CWeekNum ofMonth(CWeekNum::WEEKNUMTYPE_FISCALMONTH);
    EXPECT_FALSE(ofMonth.SetWeekNum(7) || ofMonth.SetMonth(7));
    EXPECT_TRUE(ofMonth.SetYearOfTheGrgCalendar(2025) && ofMonth.SetFiscalMonth(1));
    EXPECT_TRUE(ofMonth.GetFiscalYearOfTheGrgCalendar(4, 31, value));
    EXPECT_EQ(value, 2024u);
    CWeekNum none(static_cast<CWeekNum::EWeekNumType>(3));
    EXPECT_FALSE(none.SetWeekNum(1) || none.SetYearOfTheGrgCalendar(2024));
    EXPECT_EQ(GetNumeric(none), 0u);
}

TEST(CWeekNum, WeeksWithoutYearOrderByMonthAndNumber)
{
    CWeekNum week(CWeekNum::WEEKNUMTYPE_MONTH);
    week.SetMonth(1);
    week.SetWeekNum(6);
    const unsigned long long january = GetNumeric(week);
    week.SetMonth(2);
    week.SetWeekNum(1);
    EXPECT_LT(january, GetNumeric(week));
    CWeekNum fiscal(CWeekNum::WEEKNUMTYPE_FISCALMONTH);
    fiscal.SetWeekNum(1);
    fiscal.SetFiscalMonth(4);
    const unsigned long long april = GetNumeric(fiscal);
    fiscal.SetFiscalMonth(3);
    EXPECT_LT(april, GetNumeric(fiscal)); // the last of the fiscal year
}
