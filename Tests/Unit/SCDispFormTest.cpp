#include "SCDispForm.h"

#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <tuple>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

using SC = SCDeclareConstant;

namespace {

std::string GetDateExample(const char* name)
{
    SC::SDateTypeInfo info;
    EXPECT_TRUE(SCDispForm::FindDateForm(name, info.dispForm)) << name;
    return ConvertOrThrow(SCDispForm::MakeExample(info), _getmbcp(), CP_UTF8);
}

std::string GetTimeExample(const char* name)
{
    SC::STimeTypeInfo info;
    EXPECT_TRUE(SCDispForm::FindTimeForm(name, info.dispForm)) << name;
    return ConvertOrThrow(SCDispForm::MakeExample(info), _getmbcp(), CP_UTF8);
}

} // namespace

TEST(SCDispForm, EveryNameLeadsToItsCodeAndBack)
{
    std::set<std::string> names;
    for (const SCDispForm::SNamedForm& each : SCDispForm::GetDateForms()) {
        SC::SDateDispForm form;
        const char* name = nullptr;
        ASSERT_TRUE(SCDispForm::FindDateForm(each.name, form));
        EXPECT_EQ(form.kind, each.kind);
        EXPECT_EQ(form.form, each.form);
        EXPECT_EQ(form.option, each.option);
        EXPECT_STREQ(form.optionalForm, each.optionalForm);
        ASSERT_TRUE(SCDispForm::FindNameOfDateForm(form, name)) << each.name;
        EXPECT_STREQ(name, each.name);
        EXPECT_TRUE(names.insert(each.name).second) << each.name;
        EXPECT_EQ(std::string(each.name).find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-"),
                  std::string::npos);
    }
    names.clear();
    for (const SCDispForm::SNamedForm& each : SCDispForm::GetTimeForms()) {
        SC::STimeDispForm form;
        const char* name = nullptr;
        ASSERT_TRUE(SCDispForm::FindTimeForm(each.name, form));
        ASSERT_TRUE(SCDispForm::FindNameOfTimeForm(form, name)) << each.name;
        EXPECT_STREQ(name, each.name);
        EXPECT_TRUE(names.insert(each.name).second) << each.name;
    }
}

TEST(SCDispForm, EveryCodeThatGroupsHasANameAndYearsAreCountedAsItsGroupsDo)
{
    std::set<std::tuple<DWORD, DWORD>> codes; // form, option
    for (const SCDispForm::SNamedForm& each : SCDispForm::GetDateForms()) {
        if (each.kind == SCDispForm::DATEKIND_ASITIS || each.kind == SCDispForm::DATEKIND_OPTIONAL)
            continue;
        codes.insert({each.form, each.option});
        const bool isGregorian =
            std::set<DWORD>{0, 1, 6, 7, 101, 102, 107, 108, 201, 202, 301, 302}.count(each.form) != 0;
        const bool isNone = std::set<DWORD>{12, 401, 402, 403}.count(each.form) != 0;
        const SCDispForm::EYearKind expected =
            isGregorian ? SCDispForm::YEARKIND_GREGORIAN
                        : (isNone ? SCDispForm::YEARKIND_NONE : SCDispForm::YEARKIND_JAPANESE);
        EXPECT_EQ(each.yearKind, expected) << each.name;
    }
    const auto expectRange = [&codes](DWORD first, DWORD last, bool hasFiscal) {
        for (DWORD form = first; form <= last; ++form) {
            EXPECT_EQ(codes.count({form, 0}), 1u) << form;
            EXPECT_EQ(codes.count({form, 1}), hasFiscal ? 1u : 0u) << form;
        }
    };
    expectRange(0, 5, false);
    expectRange(6, 11, true);
    expectRange(12, 12, false);
    expectRange(101, 112, false);
    expectRange(201, 206, true);
    expectRange(301, 306, true);
    expectRange(401, 403, true);
    EXPECT_EQ(codes.size(), 6u + 12 + 1 + 12 + 12 + 12 + 6);

    std::set<DWORD> timeForms;
    for (const SCDispForm::SNamedForm& each : SCDispForm::GetTimeForms()) {
        if (each.kind == SCDispForm::TIMEKIND_EXACT || each.kind == SCDispForm::TIMEKIND_STEP) {
            EXPECT_TRUE(timeForms.insert(each.form).second);
        }
    }
    EXPECT_EQ(timeForms.size(), 15u);
    EXPECT_EQ(*timeForms.rbegin(), 14u);
}

TEST(SCDispForm, AnOptionThatMakesNoDifferenceFindsTheName)
{
    SC::SDateDispForm form;
    const char* name = nullptr;
    ASSERT_TRUE(SCDispForm::FindDateForm("fiscal-quarter", form));
    for (const DWORD option : {0U, 1U, 2U}) {
        form.option = option;
        ASSERT_TRUE(SCDispForm::FindNameOfDateForm(form, name));
        EXPECT_STREQ(name, "fiscal-quarter");
    }
    ASSERT_TRUE(SCDispForm::FindDateForm("year-month", form));
    form.option = 2;
    ASSERT_TRUE(SCDispForm::FindNameOfDateForm(form, name));
    EXPECT_STREQ(name, "year-month");
    form.option = 1;
    ASSERT_TRUE(SCDispForm::FindNameOfDateForm(form, name));
    EXPECT_STREQ(name, "fiscal-month");
}

TEST(SCDispForm, WhatIsNoNameOrNoCodeIsNotFound)
{
    SC::SDateDispForm form;
    SC::STimeDispForm timeForm;
    const char* name = "before";
    EXPECT_FALSE(SCDispForm::FindDateForm("", form) || SCDispForm::FindDateForm("Year", form) ||
                 SCDispForm::FindDateForm("hour-minute", form) || SCDispForm::FindTimeForm("year", timeForm));
    EXPECT_EQ(form, SC::SDateDispForm());
    EXPECT_FALSE(SCDispForm::FindNameOfDateForm(form, name));
    EXPECT_FALSE(SCDispForm::FindNameOfTimeForm(timeForm, name));
    form.kind = 1;
    form.form = 13;
    form.option = 0;
    EXPECT_FALSE(SCDispForm::FindNameOfDateForm(form, name));
    form.form = 101; // goes with kind 2
    EXPECT_FALSE(SCDispForm::FindNameOfDateForm(form, name));
    const char* reason = nullptr;
    ASSERT_TRUE(SCDispForm::MakeOptionalDateForm("on {d}", form, reason));
    EXPECT_FALSE(SCDispForm::FindNameOfDateForm(form, name));
    EXPECT_STREQ(name, "before");
}

TEST(SCDispForm, ExamplesShowWhatAFormMakes)
{
    for (const int codePage : {_KANJI_CP, CP_UTF8}) {
        const CCodePageScope scope(codePage);
        EXPECT_EQ(GetDateExample("as-it-is"), "2024-07-15");
        EXPECT_EQ(GetDateExample("year"), "2024");
        EXPECT_EQ(GetDateExample("japanese-year"), UTF8(u8"令和6"));
        EXPECT_EQ(GetDateExample("letter-year"), "R6");
        EXPECT_EQ(GetDateExample("year-month-day"), "2024/07/15");
        EXPECT_EQ(GetDateExample("year-month-day-kanji"), UTF8(u8"2024年7月15日"));
        EXPECT_EQ(GetDateExample("japanese-year-month-day"), UTF8(u8"令和6年7月15日"));
        EXPECT_EQ(GetDateExample("japanese-year-month-day-figures"), UTF8(u8"令和06/07/15"));
        EXPECT_EQ(GetDateExample("letter-year-month-day"), "R06/07/15");
        EXPECT_EQ(GetDateExample("letter-year-month-day-kanji"), UTF8(u8"R6年7月15日"));
        EXPECT_EQ(GetDateExample("year-month"), "2024/07");
        EXPECT_EQ(GetDateExample("fiscal-month-kanji"), UTF8(u8"2024年7月度"));
        EXPECT_EQ(GetDateExample("day-of-month"), UTF8(u8"15日"));
        EXPECT_EQ(GetDateExample("fiscal-half"), "FY2024 H1");
        EXPECT_EQ(GetDateExample("japanese-fiscal-half"), UTF8(u8"令和6年度上期"));
        EXPECT_EQ(GetDateExample("fiscal-quarter"), "FY2024 Q2");
        EXPECT_EQ(GetDateExample("japanese-fiscal-quarter"), UTF8(u8"令和6年度第2四半期"));
        EXPECT_EQ(GetDateExample("letter-fiscal-quarter"), "FYR06 Q2");
        EXPECT_EQ(GetDateExample("week-of-year"), "2024 W29");
        EXPECT_EQ(GetDateExample("week-of-year-kanji"), UTF8(u8"2024年第29週"));
        EXPECT_EQ(GetDateExample("week-of-fiscal-year"), "FY2024 W16");
        EXPECT_EQ(GetDateExample("week-of-month"), "2024/07 W3");
        EXPECT_EQ(GetDateExample("japanese-week-of-fiscal-month"), UTF8(u8"令和6年7月度第3週"));
        EXPECT_EQ(GetDateExample("month-week"), UTF8(u8"7月第3週"));
        EXPECT_EQ(GetDateExample("month-week-weekday"), UTF8(u8"7月第3週月曜日"));
        EXPECT_EQ(GetDateExample("fiscal-month-week-weekday"), UTF8(u8"7月度第3週月曜日"));
        EXPECT_EQ(GetDateExample("week-weekday"), UTF8(u8"第3週月曜日"));
        EXPECT_EQ(GetDateExample("month-day"), "07/15");
        EXPECT_EQ(GetTimeExample("as-it-is"), "13:05:09");
        EXPECT_EQ(GetTimeExample("hour-minute-second-12"), UTF8(u8"午後1:05:09"));
        EXPECT_EQ(GetTimeExample("hour-minute"), "13:05");
        EXPECT_EQ(GetTimeExample("10-minutes"), "13:00");
        EXPECT_EQ(GetTimeExample("5-minutes-12"), UTF8(u8"午後1:05"));
        EXPECT_EQ(GetTimeExample("minute-second"), "05:09");
        EXPECT_EQ(GetTimeExample("morning-afternoon"), UTF8(u8"午後"));
        for (const SCDispForm::SNamedForm& each : SCDispForm::GetDateForms())
            EXPECT_NE(GetDateExample(each.name), "") << each.name;
        for (const SCDispForm::SNamedForm& each : SCDispForm::GetTimeForms())
            EXPECT_NE(GetTimeExample(each.name), "") << each.name;
    }
    EXPECT_EQ(SCDispForm::MakeExample(SC::SDateTypeInfo()), "");
    EXPECT_EQ(SCDispForm::MakeExample(SC::STimeTypeInfo()), "");
}

TEST(SCDispForm, APatternShowsItsPlaceholders)
{
    const auto show = [](std::u8string_view pattern) {
        SC::SDateTypeInfo info;
        const char* reason = "";
        EXPECT_TRUE(SCDispForm::MakeOptionalDateForm(SJIS(pattern), info.dispForm, reason)) << reason;
        return FromSJIS(SCDispForm::MakeExample(info));
    };
    EXPECT_EQ(show(u8"{yyyy}/{yy} {ggg}{gg}{g}{e}{ee}{E} {m}{mm} {d}{dd}"),
              UTF8(u8"2024/24 令和令R6066 707 1515"));
    EXPECT_EQ(show(u8"{{{d}}}"), "{15}");
    // The second byte of this kanji is that of an opening brace.
    EXPECT_EQ(show(u8"祗園{d}ボ"), UTF8(u8"祗園15ボ"));
}

TEST(SCDispForm, ABadPatternIsRefusedWithAReason)
{
    SC::SDateDispForm form;
    SC::STimeDispForm timeForm;
    const std::string tooLong(261, 'x');
    for (const std::string& pattern : std::initializer_list<std::string>{
             "", "x", "{", "}", "{d", "d}", "{}", "{x}", "{D}", "{d}}", "{{d}", "{e}", "{ggg}", "{h}",
             "{d}\n", "{d}\x81", "{\x8b\x7d", tooLong + "{d}"}) {
        const char* reason = nullptr;
        EXPECT_FALSE(SCDispForm::MakeOptionalDateForm(pattern, form, reason)) << pattern;
        ASSERT_NE(reason, nullptr);
        EXPECT_GT(std::string(reason).size(), 10u);
    }
    const char* reason = nullptr;
    EXPECT_FALSE(SCDispForm::MakeOptionalTimeForm("{h12}", timeForm, reason));
    EXPECT_FALSE(SCDispForm::MakeOptionalTimeForm("{d}", timeForm, reason));
    EXPECT_TRUE(SCDispForm::MakeOptionalTimeForm("{h12}{AM/PM}", timeForm, reason));
    EXPECT_EQ(form, SC::SDateDispForm());
}
