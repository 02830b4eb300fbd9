#include "CConvertDate.h"

#include "CDaysOfTheWeek.h"
#include "CHalfTerm.h"
#include "CWeekNum.h"
#include "SCDispForm.h"
#include "Support/DateText.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

using SC = SCDeclareConstant;

namespace {

SC::SDateTypeInfo MakeInfo(const char* name, SC::EDateDataForm form = SC::DATEFORM_YMD,
                           SC::EDateDelimiter delimiter = SC::DATEDELIM_HYPHEN)
{
    SC::SDateTypeInfo info{form, delimiter};
    EXPECT_TRUE(SCDispForm::FindDateForm(name, info.dispForm)) << name;
    return info;
}

// In UTF-8; "!" if it cannot be written.
std::string Write(const SC::SDateTypeInfo& info, const VCDate& date, DWORD startMonth = 4,
                  DWORD cutOffDate = 31)
{
    const CConvertDate convert(info);
    std::vector<char> text(convert.GetMaxLenOfDateString() + 1, 'x');
    if (!convert.ConvertDateString(date, text.data(), static_cast<DWORD>(text.size()), startMonth,
                                   cutOffDate)) {
        EXPECT_EQ(text[0], 'x');
        return "!";
    }
    return ConvertOrThrow(text.data(), _getmbcp(), CP_UTF8);
}

} // namespace

TEST(CConvertDate, AsItIsWritesTheFormOfTheField)
{
    const CDate date = MakeDay(2024, 7, 5);
    EXPECT_EQ(Write(MakeInfo("as-it-is"), date), "2024-07-05");
    EXPECT_EQ(Write(MakeInfo("as-it-is", SC::DATEFORM_MDY, SC::DATEDELIM_SLASH), date), "07/05/2024");
    EXPECT_EQ(Write(MakeInfo("as-it-is", SC::DATEFORM_DMY_2, SC::DATEDELIM_PERIOD), date), "05.07.24");
    EXPECT_EQ(Write(MakeInfo("as-it-is", SC::DATEFORM_YM, SC::DATEDELIM_NONE), date), "202407");
    EXPECT_EQ(Write(MakeInfo("as-it-is", SC::DATEFORM_JYMD, SC::DATEDELIM_NONE), date), "R060705");
    EXPECT_EQ(Write(MakeInfo("as-it-is", SC::DATEFORM_JY, SC::DATEDELIM_KANJI), date), UTF8(u8"令和06年"));
}

TEST(CConvertDate, TheFirstYearOfAnEraHasItsKanji)
{
    const CDate date = MakeDay(2019, 5, 1);
    EXPECT_EQ(Write(MakeInfo("japanese-year-month-day"), date), UTF8(u8"令和元年5月1日"));
    EXPECT_EQ(Write(MakeInfo("japanese-year-month-day-figures"), date), UTF8(u8"令和01/05/01"));
    EXPECT_EQ(Write(MakeInfo("letter-year-month-day-kanji"), date), UTF8(u8"R1年5月1日"));
    EXPECT_EQ(Write(MakeInfo("japanese-year"), date), UTF8(u8"令和元"));
}

TEST(CConvertDate, FiscalTermsOfADayGoByTheCriteria)
{
    const CDate date = MakeDay(2024, 3, 21);
    EXPECT_EQ(Write(MakeInfo("fiscal-quarter"), date, 4, 31), "FY2023 Q4");
    EXPECT_EQ(Write(MakeInfo("fiscal-quarter"), date, 4, 20), "FY2024 Q1");
    EXPECT_EQ(Write(MakeInfo("fiscal-half-kanji"), date, 1, 31), UTF8(u8"2024年度上期"));
    EXPECT_EQ(Write(MakeInfo("fiscal-month"), date, 4, 20), "2024/04");
    EXPECT_EQ(Write(MakeInfo("fiscal-quarter"), date, 13, 31), "!");
}

TEST(CConvertDate, WeeksAreThoseOfTheObject)
{
    EXPECT_EQ(Write(MakeInfo("week-of-year"), MakeDay(2024, 7, 15)), "2024"); // no week without its first day
    CWeekNum week(CWeekNum::WEEKNUMTYPE_FISCALMONTH);
    week.SetYearOfTheGrgCalendar(2024);
    week.SetFiscalMonth(7);
    week.SetWeekNum(3);
    EXPECT_EQ(Write(MakeInfo("week-of-fiscal-month-kanji"), week), UTF8(u8"2024年7月度第3週"));
    CDaysOfTheWeek day;
    day.SetDaysOfTheWeek(VCDate::DAYSOFWEEK_SATURDAY);
    EXPECT_EQ(Write(MakeInfo("month-week-weekday"), day), UTF8(u8"土曜日"));
    EXPECT_EQ(Write(MakeInfo("year-month-day"), day), "!");
}

TEST(CConvertDate, WhatIsNotHeldIsLeftOut)
{
    CDate date;
    date.SetMonth(7);
    EXPECT_EQ(Write(MakeInfo("year-month-day"), date), "07");
    EXPECT_EQ(Write(MakeInfo("year-month-day-kanji"), date), UTF8(u8"7月"));
    date.SetDay(15);
    EXPECT_EQ(Write(MakeInfo("year-month-day"), date), "07/15");
    EXPECT_EQ(Write(MakeInfo("as-it-is"), date), "07-15");
    EXPECT_EQ(Write(MakeInfo("year"), date), "!");
    CHalfTerm half;
    half.SetHalfTerm(2);
    EXPECT_EQ(Write(MakeInfo("fiscal-half"), half), "H2");
    EXPECT_EQ(Write(MakeInfo("fiscal-half-kanji"), half), UTF8(u8"下期"));
    EXPECT_EQ(Write(MakeInfo("year-month-day"), CDate()), "!");
}

TEST(CConvertDate, AnUnsetOrUnknownFormShowsNothing)
{
    SC::SDateTypeInfo info;
    EXPECT_EQ(Write(info, MakeDay(2024, 7, 15)), "!");
    info.dispForm.kind = 1;
    EXPECT_EQ(Write(info, MakeDay(2024, 7, 15)), "!");
    info.dispForm.form = 77;
    info.dispForm.option = 0;
    EXPECT_EQ(Write(info, MakeDay(2024, 7, 15)), "!");
    info.dispForm.kind = 5;
    std::memset(info.dispForm.optionalForm, 'x', sizeof info.dispForm.optionalForm); // no NUL
    EXPECT_EQ(Write(info, MakeDay(2024, 7, 15)), "!");
}

TEST(CConvertDate, APatternTellsWhatItUses)
{
    SC::SDateTypeInfo info;
    const char* reason = nullptr;
    ASSERT_TRUE(SCDispForm::MakeOptionalDateForm("{g}{e}.{mm}", info.dispForm, reason));
    const CConvertDate convert(info);
    EXPECT_TRUE(convert.IsUsedJpnCalendarForOptionalForm());
    EXPECT_FALSE(convert.IsUsedGrgCalendarForOptionalForm());
    EXPECT_TRUE(convert.IsUsedMonthForOptionalForm());
    EXPECT_FALSE(convert.IsUsedDayForOptionalForm());
    info.dispForm.kind = 1;
    EXPECT_FALSE(CConvertDate(info).IsUsedMonthForOptionalForm());
}

TEST(CConvertDate, NoTextIsLongerThanTold)
{
    std::vector<const VCDate*> dates;
    CDate day = MakeDay(9999, 12, 31);
    CWeekNum ofMonth(CWeekNum::WEEKNUMTYPE_FISCALMONTH);
    ofMonth.SetYearOfTheGrgCalendar(9999);
    ofMonth.SetFiscalMonth(12);
    ofMonth.SetWeekNum(6);
    CWeekNum ofYear(CWeekNum::WEEKNUMTYPE_FISCALYEAR);
    ofYear.SetFiscalYearOfTheGrgCalendar(9999);
    ofYear.SetWeekNum(54);
    dates = {&day, &ofMonth, &ofYear};
    for (const int codePage : {_KANJI_CP, CP_UTF8}) {
        const CCodePageScope scope(codePage);
        for (const SCDispForm::SNamedForm& each : SCDispForm::GetDateForms()) {
            for (DWORD form = 0; form <= SC::DATEFORM_LAST; ++form) {
                const SC::SDateTypeInfo info =
                    MakeInfo(each.name, static_cast<SC::EDateDataForm>(form), SC::DATEDELIM_KANJI);
                const CConvertDate convert(info);
                for (const VCDate* const date : dates) {
                    char text[512] = "";
                    convert.ConvertDateString(*date, text, sizeof text, 4, 31);
                    EXPECT_LE(std::strlen(text), convert.GetMaxLenOfDateString()) << each.name;
                }
            }
        }
    }
}

TEST(CConvertDate, ATextThatDoesNotFitLeavesTheBufferAlone)
{
    const CConvertDate convert(MakeInfo("year-month-day"));
    char text[16] = "before";
    EXPECT_FALSE(convert.ConvertDateString(MakeDay(2024, 7, 15), text, 10, 4, 31));
    EXPECT_STREQ(text, "before");
    EXPECT_TRUE(convert.ConvertDateString(MakeDay(2024, 7, 15), text, 11, 4, 31));
    EXPECT_STREQ(text, "2024/07/15");
}
