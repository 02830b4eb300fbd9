#include "SCDateText.h"

#include "CConvertDate.h"
#include "SCDispForm.h"
#include "Support/DateText.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <string>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

using SC = SCDeclareConstant;

namespace {

std::string Read(const std::string& text, SC::EDateDataForm form, SC::EDateDelimiter delimiter)
{
    CDate date;
    return SCDateText::ReadDate(text, form, delimiter, date) ? GetParts(&date) : "!";
}

std::string Read(std::u8string_view text, SC::EDateDataForm form, SC::EDateDelimiter delimiter)
{
    return Read(ConvertOrThrow(UTF8(text), CP_UTF8, _getmbcp()), form, delimiter);
}

std::string ReadTime(std::u8string_view text, SC::ETimeDataForm form)
{
    CDate time;
    return SCDateText::ReadTime(ConvertOrThrow(UTF8(text), CP_UTF8, _getmbcp()), form, time) ? GetParts(&time)
                                                                                             : "!";
}

class SCDateTextOfCodePage : public ::testing::TestWithParam<int>
{
    CCodePageScope scope{GetParam()};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(CodePages, SCDateTextOfCodePage, ::testing::Values(_KANJI_CP, CP_UTF8));

TEST(SCDateText, EveryOrderIsReadWithEveryDelimiter)
{
    EXPECT_EQ(Read("2024-07-15", SC::DATEFORM_YMD, SC::DATEDELIM_HYPHEN), "2024-07-15");
    EXPECT_EQ(Read("2024/7/5", SC::DATEFORM_YMD, SC::DATEDELIM_SLASH), "2024-07-05");
    EXPECT_EQ(Read("7.15.2024", SC::DATEFORM_MDY, SC::DATEDELIM_PERIOD), "2024-07-15");
    EXPECT_EQ(Read("15.7.2024", SC::DATEFORM_DMY, SC::DATEDELIM_PERIOD), "2024-07-15");
    EXPECT_EQ(Read("2024-07", SC::DATEFORM_YM, SC::DATEDELIM_HYPHEN), "2024-07");
    EXPECT_EQ(Read("7/15", SC::DATEFORM_MD, SC::DATEDELIM_SLASH), "07-15");
    EXPECT_EQ(Read("2024", SC::DATEFORM_Y, SC::DATEDELIM_NONE), "2024");
    EXPECT_EQ(Read("20240715", SC::DATEFORM_YMD, SC::DATEDELIM_NONE), "2024-07-15");
    EXPECT_EQ(Read("15072024", SC::DATEFORM_DMY, SC::DATEDELIM_NONE), "2024-07-15");
    EXPECT_EQ(Read("0715", SC::DATEFORM_MD, SC::DATEDELIM_NONE), "07-15");
}

TEST(SCDateText, ATwoDigitYearLiesFrom1950To2049)
{
    EXPECT_EQ(Read("49-1-1", SC::DATEFORM_YMD, SC::DATEDELIM_HYPHEN), "2049-01-01");
    EXPECT_EQ(Read("50-1-1", SC::DATEFORM_YMD, SC::DATEDELIM_HYPHEN), "1950-01-01");
    EXPECT_EQ(Read("000229", SC::DATEFORM_YMD_2, SC::DATEDELIM_NONE), "2000-02-29");
    EXPECT_EQ(Read("7/15/99", SC::DATEFORM_MDY_2, SC::DATEDELIM_SLASH), "1999-07-15");
    EXPECT_EQ(Read("15/7/99", SC::DATEFORM_DMY_2, SC::DATEDELIM_SLASH), "1999-07-15");
    EXPECT_EQ(Read("2407", SC::DATEFORM_YM_2, SC::DATEDELIM_NONE), "2024-07");
    EXPECT_EQ(Read("2024-07-15", SC::DATEFORM_YMD_2, SC::DATEDELIM_HYPHEN), "!");
    EXPECT_EQ(Read("240715", SC::DATEFORM_YMD, SC::DATEDELIM_NONE), "!");
    EXPECT_EQ(Read("024-07-15", SC::DATEFORM_YMD, SC::DATEDELIM_HYPHEN), "!");
    EXPECT_EQ(Read("2-07-15", SC::DATEFORM_YMD, SC::DATEDELIM_HYPHEN), "!");
}

TEST_P(SCDateTextOfCodePage, KanjiStandBehindTheNumbers)
{
    EXPECT_EQ(Read(u8"2024年7月5日", SC::DATEFORM_YMD, SC::DATEDELIM_KANJI), "2024-07-05");
    EXPECT_EQ(Read(u8"7月15日", SC::DATEFORM_MD, SC::DATEDELIM_KANJI), "07-15");
    EXPECT_EQ(Read(u8"2024年07月", SC::DATEFORM_YM, SC::DATEDELIM_KANJI), "2024-07");
    EXPECT_EQ(Read(u8"2024年", SC::DATEFORM_Y, SC::DATEDELIM_KANJI), "2024");
    EXPECT_EQ(Read(u8"2024年7月5", SC::DATEFORM_YMD, SC::DATEDELIM_KANJI), "!");
    EXPECT_EQ(Read(u8"2024月7年5日", SC::DATEFORM_YMD, SC::DATEDELIM_KANJI), "!");
    EXPECT_EQ(Read(u8"令和元年5月1日", SC::DATEFORM_JYMD, SC::DATEDELIM_KANJI), "R1-05-01");
    EXPECT_EQ(Read(u8"平31年4月30日", SC::DATEFORM_JYMD, SC::DATEDELIM_KANJI), "H31-04-30");
    EXPECT_EQ(Read(u8"㍻元年1月8日", SC::DATEFORM_JYMD, SC::DATEDELIM_KANJI), "H1-01-08");
    EXPECT_EQ(Read(u8"㍼64年1月7日", SC::DATEFORM_JYMD, SC::DATEDELIM_KANJI), "S64-01-07");
    EXPECT_EQ(Read(u8"昭和64.1.7", SC::DATEFORM_JYMD, SC::DATEDELIM_PERIOD), "S64-01-07");
    EXPECT_EQ(Read(u8"大正15年", SC::DATEFORM_JY, SC::DATEDELIM_KANJI), "T15");
    EXPECT_EQ(Read(u8"令和元0715", SC::DATEFORM_JYMD, SC::DATEDELIM_NONE), "R1-07-15");
    EXPECT_EQ(Read(u8"明治6年1月", SC::DATEFORM_JYM, SC::DATEDELIM_KANJI), "M6-01");
}

TEST(SCDateText, AnEraMayBeALetter)
{
    EXPECT_EQ(Read("R6-7-15", SC::DATEFORM_JYMD, SC::DATEDELIM_HYPHEN), "R6-07-15");
    EXPECT_EQ(Read("h01/01/08", SC::DATEFORM_JYMD, SC::DATEDELIM_SLASH), "H1-01-08");
    EXPECT_EQ(Read("R060715", SC::DATEFORM_JYMD, SC::DATEDELIM_NONE), "R6-07-15");
    EXPECT_EQ(Read("R60715", SC::DATEFORM_JYMD, SC::DATEDELIM_NONE), "!");
    EXPECT_EQ(Read("X6-7-15", SC::DATEFORM_JYMD, SC::DATEDELIM_HYPHEN), "!");
    EXPECT_EQ(Read("R0-7-15", SC::DATEFORM_JYMD, SC::DATEDELIM_HYPHEN), "!");
}

TEST(SCDateText, ADayLiesInItsEra)
{
    const auto read = [](const char* text) { return Read(text, SC::DATEFORM_JYMD, SC::DATEDELIM_PERIOD); };
    EXPECT_EQ(read("M1.10.22"), "!");
    EXPECT_EQ(read("M1.10.23"), "M1-10-23");
    EXPECT_EQ(read("M45.7.29"), "M45-07-29");
    EXPECT_EQ(read("M45.7.30"), "T1-07-30"); // both eras counted the day; it is kept under the new one
    EXPECT_EQ(read("M45.7.31"), "!");
    EXPECT_EQ(read("T1.7.29"), "!");
    EXPECT_EQ(read("T1.7.30"), "T1-07-30");
    EXPECT_EQ(read("T15.12.25"), "S1-12-25");
    EXPECT_EQ(read("T15.12.26"), "!");
    EXPECT_EQ(read("S64.1.7"), "S64-01-07");
    EXPECT_EQ(read("S64.1.8"), "!");
    EXPECT_EQ(read("H1.1.7"), "!");
    EXPECT_EQ(read("H31.4.30"), "H31-04-30");
    EXPECT_EQ(read("H31.5.1"), "!");
    EXPECT_EQ(read("R1.4.30"), "!");
    EXPECT_EQ(read("R5.2.29"), "!");
    EXPECT_EQ(read("R6.2.29"), "R6-02-29");
    EXPECT_EQ(Read("H31.5", SC::DATEFORM_JYM, SC::DATEDELIM_PERIOD), "!");
    EXPECT_EQ(Read("S64.1", SC::DATEFORM_JYM, SC::DATEDELIM_PERIOD), "S64-01");
    EXPECT_EQ(Read("S65", SC::DATEFORM_JY, SC::DATEDELIM_NONE), "!");
}

TEST(SCDateText, WhatIsNoRealDayOrHasMoreIsRefused)
{
    for (const char* const text :
         {"",           "-",          "2024",       "2024-7",      "2024-7-",     "2024-13-1",
          "2024-0-1",   "2024-2-30",  "2023-2-29",  "2024-4-31",   "0000-1-1",    "2024-7-15 ",
          " 2024-7-15", "2024-7-15x", "2024/7/15",  "2024-007-15", "2024-7-015",  "20240715",
          "12024-7-15", "2024--7-15", "-2024-7-15", "2024-7-+5",   "2024-7-1\x8f"}) {
        EXPECT_EQ(Read(std::string(text), SC::DATEFORM_YMD, SC::DATEDELIM_HYPHEN), "!") << text;
    }
    EXPECT_EQ(Read(std::string("2024-7-15\0", 10), SC::DATEFORM_YMD, SC::DATEDELIM_HYPHEN), "!");
    EXPECT_EQ(Read("2-29", SC::DATEFORM_MD, SC::DATEDELIM_HYPHEN), "02-29");
    EXPECT_EQ(Read("2-30", SC::DATEFORM_MD, SC::DATEDELIM_HYPHEN), "!");
    EXPECT_EQ(Read("2024-7-15", static_cast<SC::EDateDataForm>(13), SC::DATEDELIM_HYPHEN), "!");
    EXPECT_EQ(Read("2024-7-15", SC::DATEFORM_YMD, static_cast<SC::EDateDelimiter>(5)), "!");
}

TEST(SCDateText, NoPieceOfAnyTextIsReadAsMoreThanItIs)
{
    for (const char* const text : {"R6-7-15", "2024-7-15", "\x97\xdf\x98\x61\x8c\xb3"}) {
        const std::string whole(text);
        for (std::size_t len = 0; len < whole.size(); ++len) {
            const std::string piece = whole.substr(0, len); // its own memory: reading behind it shows
            for (DWORD form = 0; form <= SC::DATEFORM_LAST; ++form) {
                const std::string read =
                    Read(piece, static_cast<SC::EDateDataForm>(form), SC::DATEDELIM_HYPHEN);
                EXPECT_TRUE(read == "!" || read.size() <= 10) << piece;
            }
        }
    }
}

// Every day from Meiji on, in every form that has a whole day, comes back from its own text.
TEST_P(SCDateTextOfCodePage, EveryDayComesBackFromItsText)
{
    const long last = SCCalendar::GetDayNum(2100, 12, 31);
    for (const auto form : {SC::DATEFORM_YMD, SC::DATEFORM_MDY, SC::DATEFORM_DMY, SC::DATEFORM_JYMD}) {
        for (DWORD delimiter = 0; delimiter <= SC::DATEDELIM_LAST; ++delimiter) {
            SC::SDateTypeInfo info{form, static_cast<SC::EDateDelimiter>(delimiter)};
            ASSERT_TRUE(SCDispForm::FindDateForm("as-it-is", info.dispForm));
            const CConvertDate convert(info);
            unsigned int minLen = 0;
            unsigned int maxLen = 0;
            ASSERT_TRUE(SC::GetDateStrMinAndMaxLen(form, info.delimiter, minLen, maxLen));
            for (long dayNum = SCCalendar::GetDayNum(1868, 10, 23); dayNum <= last; ++dayNum) {
                const CDate date = MakeDay(dayNum);
                char text[64];
                CDate read;
                ASSERT_TRUE(convert.ConvertDateString(date, text, sizeof text, 4, 31));
                const std::string written(text);
                ASSERT_TRUE(SCDateText::ReadDate(written, form, info.delimiter, read)) << written;
                ASSERT_EQ(GetNumeric(read), GetNumeric(date)) << written;
                ASSERT_GE(written.size(), minLen);
                ASSERT_LE(written.size(), maxLen);
            }
        }
    }
}

TEST_P(SCDateTextOfCodePage, TimesAreReadInEveryForm)
{
    EXPECT_EQ(ReadTime(u8"13:05:09", SC::TIMEFORM_HMS), "13:05:09");
    EXPECT_EQ(ReadTime(u8"1:05", SC::TIMEFORM_HM), "01:05");
    EXPECT_EQ(ReadTime(u8"13時5分9秒", SC::TIMEFORM_HMS), "13:05:09");
    EXPECT_EQ(ReadTime(u8"13時5分", SC::TIMEFORM_HM), "13:05");
    EXPECT_EQ(ReadTime(u8"25:30", SC::TIMEFORM_HM), "25:30");
    for (const std::u8string_view text :
         {u8"1:05:09 PM", u8"pm 1:05:09", u8"PM1:05:09", u8"1:05:09Pm", u8"午後1:05:09", u8"1:05:09午後",
          u8"午後 1時5分9秒", u8"1時5分9秒 午後"})
        EXPECT_EQ(ReadTime(text, SC::TIMEFORM_HMS_12), "13:05:09") << UTF8(text);
    EXPECT_EQ(ReadTime(u8"12:30 AM", SC::TIMEFORM_HM_12), "00:30");
    EXPECT_EQ(ReadTime(u8"12:30 PM", SC::TIMEFORM_HM_12), "12:30");
    EXPECT_EQ(ReadTime(u8"午前0:30", SC::TIMEFORM_HM_12), "00:30");
    EXPECT_EQ(ReadTime(u8"午後0:30", SC::TIMEFORM_HM_12), "12:30");
    for (const std::u8string_view text :
         {u8"", u8"1:05", u8"13:05 PM", u8"AM", u8"AM 1:05 PM", u8"午前1:05午後", u8"1:5 AM", u8"1:60 AM",
          u8"A 1:05", u8"1:05:09 AM", u8" 1:05 AM", u8"1:05 AM "})
        EXPECT_EQ(ReadTime(text, SC::TIMEFORM_HM_12), "!") << UTF8(text);
    for (const std::u8string_view text : {u8"48:00:00", u8"1:2:3", u8"13:05", u8"13:05:60", u8"13:05:09 ",
                                          u8"13時5分", u8"13:5分9秒", u8"PM 1:05:09", u8"113:05:09"})
        EXPECT_EQ(ReadTime(text, SC::TIMEFORM_HMS), "!") << UTF8(text);
    EXPECT_EQ(ReadTime(u8"13:05", static_cast<SC::ETimeDataForm>(4)), "!");
}
