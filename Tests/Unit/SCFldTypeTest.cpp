#include "SCFldType.h"

#include "CFldValueList.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

using SC = SCDeclareConstant;
using Texts = std::vector<std::string>;

namespace {

CFldValueList MakeValues(const Texts& texts)
{
    CFldValueList values;
    for (const std::string& text : texts)
        EXPECT_TRUE(values.Append(text));
    return values;
}

std::string GetFormName(const SCFldType::SFldType& type)
{
    static const char* const ORDERS[] = {"ymd", "mdy", "dmy",  "ym",   "md",   "jymd", "y",
                                         "jym", "jy",  "ymd2", "mdy2", "dmy2", "ym2"};
    static const char* const DELIMITERS[] = {"none", "slash", "hyphen", "period", "kanji"};
    static const char* const TIMES[] = {"hms", "hm", "hms-12", "hm-12"};
    if (type.dataType == SC::DATATYPE_DATE)
        return std::string(ORDERS[type.dateTypeInfo.form]) + "-" + DELIMITERS[type.dateTypeInfo.delimiter];
    return TIMES[type.timeTypeInfo.form];
}

// "text", "number", "date:ymd-hyphen" ...
std::string GetName(const SCFldType::SFldType& type)
{
    static const char* const TYPES[] = {"text", "number", "date", "time"};
    std::string name = TYPES[type.dataType];
    if (type.hasForm)
        name.append(":").append(GetFormName(type));
    return name;
}

std::string Infer(const Texts& texts)
{
    return GetName(SCFldType::Infer(MakeValues(texts)));
}

std::string Settle(const char* given, const Texts& texts)
{
    SCFldType::SFldType type;
    EXPECT_TRUE(SCFldType::Parse(given, type));
    SCFldType::SettleForm(MakeValues(texts), type);
    return GetName(type);
}

} // namespace

TEST(SCFldType, ParseReadsEveryTypeAndForm)
{
    Texts names = {"text", "number", "date", "time", "time:hms", "time:hm", "time:hms-12", "time:hm-12"};
    for (const char* const order :
         {"ymd", "mdy", "dmy", "ym", "md", "jymd", "y", "jym", "jy", "ymd2", "mdy2", "dmy2", "ym2"}) {
        for (const char* const delimiter : {"none", "slash", "hyphen", "period", "kanji"})
            names.push_back(std::string("date:") + order + "-" + delimiter);
    }
    for (const std::string& name : names) {
        SCFldType::SFldType type;
        ASSERT_TRUE(SCFldType::Parse(name, type)) << name;
        EXPECT_EQ(GetName(type), name);
    }
}

TEST(SCFldType, ParseRefusesEverythingElseAndLeavesTheTypeAlone)
{
    SCFldType::SFldType type;
    type.dataType = SC::DATATYPE_TIME;
    for (const char* const name : {"", "Text", "num", "text:", "text:x", "number:hm", "date:", "date:ymd",
                                   "date:ymd-", "date:-slash", "date:ydm-slash", "date:ymd-comma", "date:hms",
                                   "time:", "time:ymd-slash", "time:hms-24", " date", "date "}) {
        EXPECT_FALSE(SCFldType::Parse(name, type)) << name;
        EXPECT_EQ(type.dataType, SC::DATATYPE_TIME);
        EXPECT_FALSE(type.hasForm);
    }
}

TEST(SCFldType, NumbersAloneMakeANumberField)
{
    EXPECT_EQ(Infer({"1", "-2.5", "+3", "1e2", "1,000", " 4 ", "0", "0.5", "-0.25"}), "number");
    EXPECT_EQ(Infer({"", "1", ""}), "number");
    EXPECT_EQ(Infer({"1", "x"}), "text");
    EXPECT_EQ(Infer({"1", "nan"}), "text");
    EXPECT_EQ(Infer({"1", "1e999"}), "text");
    EXPECT_EQ(Infer({"1", " "}), "text");
}

TEST(SCFldType, AZeroBeforeAnotherDigitMakesATextField)
{
    EXPECT_EQ(Infer({"1", "007"}), "text");
    EXPECT_EQ(Infer({"1", "-01"}), "text");
    EXPECT_EQ(Infer({"1", " +00.5"}), "text");
    EXPECT_EQ(Infer({"0", "0.07", "0e1"}), "number");
}

TEST(SCFldType, AFieldWithoutAnyValueIsText)
{
    EXPECT_EQ(Infer({}), "text");
    EXPECT_EQ(Infer({"", "", ""}), "text");
}

TEST(SCFldType, DatesInOneFormMakeADateField)
{
    EXPECT_EQ(Infer({"2024-07-15", "1999-12-31", ""}), "date:ymd-hyphen");
    EXPECT_EQ(Infer({"2024/7/5", "1999/12/31"}), "date:ymd-slash");
    EXPECT_EQ(Infer({"2024.07.15"}), "date:ymd-period");
    EXPECT_EQ(Infer({"7/15/2024", "01/02/1999"}), "date:mdy-slash");
    EXPECT_EQ(Infer({"15.7.2024", "31.12.1999"}), "date:dmy-period");
    EXPECT_EQ(Infer({SJIS(u8"2024年7月15日"), SJIS(u8"1999年12月31日")}), "date:ymd-kanji");
}

TEST(SCFldType, MonthFirstGoesBeforeDayFirstWhereBothFit)
{
    EXPECT_EQ(Infer({"01/02/2024", "03/04/2024"}), "date:mdy-slash");
    EXPECT_EQ(Infer({"01/02/2024", "13/04/2024"}), "date:dmy-slash");
    EXPECT_EQ(Infer({"13/04/2024", "04/13/2024"}), "text");
}

TEST(SCFldType, KanjiAreThoseOfTheCodePage)
{
    const CCodePageScope utf8(CP_UTF8);
    EXPECT_EQ(Infer({UTF8(u8"2024年7月15日")}), "date:ymd-kanji");
}

TEST(SCFldType, WhatIsNoRealDayIsText)
{
    for (const char* const text :
         {"2024-13-01", "2024-00-10", "2024-02-30", "2023-02-29", "2024-04-31", "2024-01-00", "0000-01-01",
          "24-07-15", "2024-07", "2024-07-15 ", " 2024-07-15", "2024-07-15T00:00", "2024-07/15", "2024--15",
          "2024-007-15", "20240-7-15", "2024-07-15-", "12024-07-15", "-2024-07-15"})
        EXPECT_EQ(Infer({text}), "text") << text;
    EXPECT_EQ(Infer({"2024-02-29"}), "date:ymd-hyphen");
    EXPECT_EQ(Infer({SJIS(u8"2024年7月15")}), "text");
    EXPECT_EQ(Infer({SJIS(u8"2024年7月15日頃")}), "text");
    EXPECT_EQ(Infer({SJIS(u8"2024年15日7月")}), "text");
    EXPECT_EQ(Infer({SJIS(u8"2023年2月29日")}), "text");
}

TEST(SCFldType, DatesOfSeveralFormsAreText)
{
    EXPECT_EQ(Infer({"2024-07-15", "2024/07/15"}), "text");
    EXPECT_EQ(Infer({"2024-07-15", "15-07-2024"}), "text");
    EXPECT_EQ(Infer({"2024-07-15", "x"}), "text");
}

TEST(SCFldType, TimesOfTheDayMakeATimeField)
{
    EXPECT_EQ(Infer({"13:05:09", "0:00:00", "23:59:59"}), "time:hms");
    EXPECT_EQ(Infer({"13:05", "", "9:00"}), "time:hm");
    for (const char* const text : {"24:00", "12:60", "12:00:60", "1:5", "1:05:9", "12", "12:00:00:00",
                                   "123:00", "12:00 ", ":00", "12:", "12:000"})
        EXPECT_NE(Infer({text}).substr(0, 4), "time") << text;
    EXPECT_EQ(Infer({"13:05", "13:05:09"}), "text");
}

TEST(SCFldType, ADateWithoutFormGetsTheOneInWhichMostValuesRead)
{
    EXPECT_EQ(Settle("date", {"2024/07/15", "unknown", "2024/07/16", "2024-07-15"}), "date:ymd-slash");
    EXPECT_EQ(Settle("date", {"01/02/2024", "", "13/02/2024"}), "date:dmy-slash");
    EXPECT_EQ(Settle("date", {"01/02/2024"}), "date:mdy-slash");
    EXPECT_EQ(Settle("date", {"unknown", ""}), "date:ymd-hyphen");
    EXPECT_EQ(Settle("time", {"13:05", "13:06", "13:05:09"}), "time:hm");
    EXPECT_EQ(Settle("time", {"later"}), "time:hms");
}

TEST(SCFldType, AGivenFormAndOtherTypesStay)
{
    EXPECT_EQ(Settle("date:dmy-period", {"2024/07/15"}), "date:dmy-period");
    EXPECT_EQ(Settle("time:hms", {"13:05"}), "time:hms");
    EXPECT_EQ(Settle("number", {"2024/07/15"}), "number");
    EXPECT_EQ(Settle("text", {"2024/07/15"}), "text");
}

TEST(SCFldType, JapaneseDatesAndMonthsInKanjiMakeADateField)
{
    EXPECT_EQ(Infer({"R6-7-15", "h31-4-30", "S64-01-07"}), "date:jymd-hyphen");
    EXPECT_EQ(Infer({"R6/7/15"}), "date:jymd-slash");
    EXPECT_EQ(Infer({"R6.7.15"}), "date:jymd-period");
    EXPECT_EQ(Infer({SJIS(u8"令和元年5月1日"), SJIS(u8"㍻31年4月30日")}), "date:jymd-kanji");
    EXPECT_EQ(Infer({SJIS(u8"2024年7月"), SJIS(u8"2023年12月")}), "date:ym-kanji");
    EXPECT_EQ(Infer({SJIS(u8"令和6年7月")}), "date:jym-kanji");
    EXPECT_EQ(Infer({"R6-7-15", "2024-7-15"}), "text");
    EXPECT_EQ(Infer({"H31-5-1"}), "text"); // it was Reiwa
}

TEST(SCFldType, TwoDigitYearsAndMonthDaysAreNeverInferred)
{
    for (const char* const text :
         {"24-07-15", "07-15-24", "15.07.24", "24-07", "07-15", "7/15", "R6", "R6-7"})
        EXPECT_EQ(Infer({text}), "text") << text;
    EXPECT_EQ(Infer({SJIS(u8"7月15日")}), "text");
    EXPECT_EQ(Infer({SJIS(u8"24年7月15日")}), "text");
    EXPECT_EQ(Infer({SJIS(u8"24年7月")}), "text");
    EXPECT_EQ(Infer({SJIS(u8"令和6年")}), "text");
}

TEST(SCFldType, TimesWithMorningOrAfternoonMakeATimeField)
{
    EXPECT_EQ(Infer({"1:05 PM", "12:00am"}), "time:hm-12");
    EXPECT_EQ(Infer({"AM 1:05:09", "1:05:09pm"}), "time:hms-12");
    EXPECT_EQ(Infer({SJIS(u8"午後1:05"), SJIS(u8"午前0時5分")}), "time:hm-12");
    EXPECT_EQ(Infer({SJIS(u8"13時5分")}), "time:hm");
    EXPECT_EQ(Infer({"1:05 PM", "13:05"}), "text");
    EXPECT_EQ(Infer({"25:05"}), "text"); // past midnight only where the type is given
}

TEST(SCFldType, WriteGivesTheTextThatParseReads)
{
    for (const char* text : {"text", "number", "date", "date:ymd-hyphen", "date:jym-kanji", "date:ym2-none",
                             "time", "time:hms", "time:hm-12"}) {
        SCFldType::SFldType type;
        ASSERT_TRUE(SCFldType::Parse(text, type)) << text;
        EXPECT_EQ(SCFldType::Write(type), text);
    }
    SCFldType::SFldType none;
    none.dataType = static_cast<SCDeclareConstant::EDataType>(77);
    EXPECT_THROW(SCFldType::Write(none), std::invalid_argument);
}
