#include "VCDate.h"

#include "CDaysOfTheWeek.h"
#include "CFiscalMonth.h"
#include "CFiscalYear.h"
#include "CHalfTerm.h"
#include "CQuarterTerm.h"
#include "CTimeBasedOnNoon.h"
#include "CWeekNum.h"

#include "Support/CTempDir.h"
#include "Support/DateText.h"
#include "Support/XMLText.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using DatePtr = std::unique_ptr<VCDate>;

// One object of every class and type, with all parts and with some.
std::vector<DatePtr> MakeAll()
{
    std::vector<DatePtr> all;
    const auto add = [&all](const VCDate& date) { all.push_back(date.CreateClone()); };
    CDate date = MakeDay(2024, 2, 29);
    add(CDate());
    add(date);
    date.SetHour(47);
    date.SetMinute(0);
    date.SetSecond(59);
    add(date);
    date.SetYearOfTheJpnCalendar(VCDate::ERA_MEIJI, 45);
    add(date);
    CFiscalYear fiscalYear;
    fiscalYear.SetFiscalYearOfTheJpnCalendar(VCDate::ERA_REIWA, 6);
    add(fiscalYear);
    CFiscalMonth fiscalMonth;
    fiscalMonth.SetYearOfTheGrgCalendar(2024);
    fiscalMonth.SetFiscalMonth(12);
    add(fiscalMonth);
    CHalfTerm half;
    half.SetFiscalYearOfTheGrgCalendar(2024);
    half.SetHalfTerm(2);
    add(half);
    CQuarterTerm quarter;
    quarter.SetQuarterTerm(4);
    add(quarter);
    for (const auto type : {CWeekNum::WEEKNUMTYPE_YEAR, CWeekNum::WEEKNUMTYPE_MONTH,
                            CWeekNum::WEEKNUMTYPE_FISCALYEAR, CWeekNum::WEEKNUMTYPE_FISCALMONTH}) {
        CWeekNum week(type);
        week.SetYearOfTheGrgCalendar(2024);
        week.SetFiscalYearOfTheGrgCalendar(2024);
        week.SetMonth(7);
        week.SetFiscalMonth(7);
        EXPECT_TRUE(week.SetWeekNum(3));
        add(week);
    }
    for (const auto type :
         {CDaysOfTheWeek::DAYSOFWEEKTYPE_MONTH, CDaysOfTheWeek::DAYSOFWEEKTYPE_FISCALMONTH}) {
        CDaysOfTheWeek day(type);
        day.SetMonth(7);
        day.SetFiscalMonth(7);
        day.SetWeekNum(3);
        day.SetDaysOfTheWeek(VCDate::DAYSOFWEEK_SUNDAY);
        add(day);
    }
    CTimeBasedOnNoon noon;
    noon.SetTimeBasedOnNoon(VCDate::TIMEBASEDONNOON_AFTERNOON);
    add(noon);
    return all;
}

class VCDateXMLTest : public ::testing::Test
{
protected:
    std::string GetPath() const { return (dir.GetPath() / "date.xml").string(); }

    std::string Write(const VCDate& date) const
    {
        {
            CXMLWriter writer(GetPath().c_str());
            EXPECT_TRUE(PutStart(writer, "Root"));
            EXPECT_TRUE(date.WriteSpecByXML(writer));
            EXPECT_TRUE(PutEnd(writer, "Root"));
            EXPECT_TRUE(writer.Close());
        }
        CXMLReader reader(GetPath().c_str());
        EXPECT_EQ(reader.SeekToStartTagOfFirstChildElement(), CXMLReader::READXML_OK);
        return Current(reader);
    }

    DatePtr Read() const
    {
        CXMLReader reader(GetPath().c_str());
        EXPECT_EQ(reader.SeekToStartTagOfFirstChildElement(), CXMLReader::READXML_OK);
        DatePtr date = VCDate::CreateDateObject(reader);
        EXPECT_NE(Current(reader), ""); // the reader stays on the element
        return date;
    }

    DatePtr ReadElement(const std::string& element) const
    {
        std::ofstream(GetPath(), std::ios::binary) << "<Root>" << element << "</Root>";
        return Read();
    }

    CTempDir dir;
};

} // namespace

TEST_F(VCDateXMLTest, EveryObjectComesBackAsItWas)
{
    for (const DatePtr& date : MakeAll()) {
        const std::string written = Write(*date);
        const DatePtr read = Read();
        ASSERT_NE(read, nullptr) << written;
        EXPECT_EQ(read->GetType(), date->GetType()) << written;
        EXPECT_EQ(GetParts(read.get()), GetParts(date.get())) << written;
        EXPECT_EQ(GetNumeric(*read), GetNumeric(*date)) << written;
        EXPECT_EQ(Write(*read), written);
    }
}

TEST_F(VCDateXMLTest, TheElementHasAnAttributeForEachPart)
{
    CDate date = MakeDay(2024, 7, 15);
    EXPECT_EQ(Write(date), "Date type=Date era=Gregorian year=2024 month=7 day=15");
    CWeekNum week(CWeekNum::WEEKNUMTYPE_FISCALMONTH);
    week.SetYearOfTheJpnCalendar(VCDate::ERA_REIWA, 6);
    week.SetFiscalMonth(7);
    week.SetWeekNum(3);
    EXPECT_EQ(Write(week), "Date type=WeekNum era=Reiwa year=6 kind=512 month=7 week=3");
}

TEST_F(VCDateXMLTest, WhatIsNoDateIsRefused)
{
    for (const char* const element : {
             "<Date/>",
             "<Other type='Date'/>",
             "<Date type='date'/>",
             "<Date type='Month'/>",
             "<Date type='Date' month='13'/>",
             "<Date type='Date' month='0'/>",
             "<Date type='Date' month='-1'/>",
             "<Date type='Date' month=''/>",
             "<Date type='Date' month='4294967295'/>",
             "<Date type='Date' month='99999999999999999999'/>",
             "<Date type='Date' month='7' Month='7'/>",
             "<Date type='Date' year='2024'/>",
             "<Date type='Date' era='Reiwa'/>",
             "<Date type='Date' era='Reiwa' year='0'/>",
             "<Date type='Date' era='Heisei' year='32'/>",
             "<Date type='Date' era='Edo' year='1'/>",
             "<Date type='Date' era='Gregorian' year='10000'/>",
             "<Date type='Date' hour='48'/>",
             "<Date type='Date' week='1'/>",
             "<Date type='FiscalYear' month='1'/>",
             "<Date type='HalfTerm' halfTerm='3'/>",
             "<Date type='QuarterTerm' quarterTerm='0'/>",
             "<Date type='WeekNum' week='1'/>",
             "<Date type='WeekNum' kind='3' week='1'/>",
             "<Date type='WeekNum' kind='1' month='7' week='1'/>",
             "<Date type='WeekNum' kind='2' week='7'/>",
             "<Date type='WeekNum' kind='1' week='55'/>",
             "<Date type='DaysOfTheWeek' dayOfWeek='1'/>",
             "<Date type='DaysOfTheWeek' kind='1' dayOfWeek='1'/>",
             "<Date type='DaysOfTheWeek' kind='2' dayOfWeek='7'/>",
             "<Date type='DaysOfTheWeek' kind='2' era='Reiwa' year='6' dayOfWeek='1'/>",
             "<Date type='TimeBasedOnNoon' noon='3'/>",
             "<Date type='TimeBasedOnNoon' noon='1' hour='1'/>",
         })
        EXPECT_EQ(ReadElement(element), nullptr) << element;
}

TEST_F(VCDateXMLTest, ARefusedElementLeavesTheObjectAlone)
{
    std::ofstream(GetPath(), std::ios::binary) << "<Date type='Date' month='3' day='77'/>";
    CXMLReader reader(GetPath().c_str());
    CDate date = MakeDay(2024, 7, 15);
    EXPECT_EQ(date.ReadSpecByXML(reader), CXMLReader::READXML_BADFORMAT);
    CFiscalYear fiscalYear;
    EXPECT_EQ(fiscalYear.ReadSpecByXML(reader), CXMLReader::READXML_BADFORMAT);
    EXPECT_EQ(GetParts(&date), "2024-07-15");
    CXMLReader none((dir.GetPath() / "none.xml").string().c_str());
    EXPECT_EQ(date.ReadSpecByXML(none), CXMLReader::READXML_NOELEMENT);
    EXPECT_EQ(VCDate::CreateDateObject(none), nullptr);
}

TEST(VCDate, AClonesPartsAreThoseOfItsOriginal)
{
    for (const DatePtr& date : MakeAll()) {
        const DatePtr clone = date->CreateClone();
        EXPECT_EQ(clone->GetType(), date->GetType());
        EXPECT_EQ(GetParts(clone.get()), GetParts(date.get()));
    }
}

TEST(VCDate, ObjectsAreMadeOfTexts)
{
    const std::string text = "2024/07/15 and more";
    const SCDeclareConstant::SDateTypeInfo info{SCDeclareConstant::DATEFORM_YMD,
                                                SCDeclareConstant::DATEDELIM_SLASH};
    EXPECT_EQ(GetParts(VCDate::CreateDateObject(text.c_str(), 10, info).get()), "2024-07-15");
    EXPECT_EQ(VCDate::CreateDateObject(text.c_str(), 11, info), nullptr);
    EXPECT_EQ(VCDate::CreateDateObject(text.c_str(), 0, info), nullptr);
    EXPECT_EQ(VCDate::CreateDateObject(nullptr, 0, info), nullptr);
    EXPECT_EQ(GetParts(VCDate::CreateTimeObject("13:05", 5, {SCDeclareConstant::TIMEFORM_HM}).get()),
              "13:05");
    EXPECT_EQ(VCDate::CreateTimeObject("13:05", 5, {SCDeclareConstant::TIMEFORM_HMS}), nullptr);
    EXPECT_EQ(VCDate::CreateTimeObject(nullptr, 0, {}), nullptr);
}

TEST(VCDate, YearsAreAppropriateAsLongAsTheirEraLasts)
{
    EXPECT_TRUE(VCDate::IsAppropriateYear(VCDate::ERA_MEIJI, 45));
    EXPECT_FALSE(VCDate::IsAppropriateYear(VCDate::ERA_MEIJI, 46));
    EXPECT_FALSE(VCDate::IsAppropriateYear(VCDate::ERA_TAISHO, 16));
    EXPECT_FALSE(VCDate::IsAppropriateYear(VCDate::ERA_SHOWA, 65));
    EXPECT_FALSE(VCDate::IsAppropriateYear(VCDate::ERA_HEISEI, 32));
    EXPECT_TRUE(VCDate::IsAppropriateYear(VCDate::ERA_REIWA, 7981)); // 9999
    EXPECT_FALSE(VCDate::IsAppropriateYear(VCDate::ERA_REIWA, 7982));
    EXPECT_TRUE(VCDate::IsAppropriateYear(VCDate::ERA_GREGORIAN, 1873));
    EXPECT_FALSE(VCDate::IsAppropriateYear(VCDate::ERA_GREGORIAN, 1872));
    EXPECT_FALSE(VCDate::IsAppropriateYear(VCDate::ERA_GREGORIAN, 10000));
    EXPECT_FALSE(VCDate::IsAppropriateYear(VCDate::ERA_REIWA, 0));
    EXPECT_FALSE(VCDate::IsAppropriateYear(VCDate::ERA_UNSETTING, 1));
    EXPECT_FALSE(VCDate::IsAppropriateYear(static_cast<VCDate::EEra>(7), 1));
}

TEST(VCDate, AnElementDecidesUnlessItIsEqual)
{
    using Com = SCKZCoreCom;
    const auto compare = [](DWORD left, DWORD right, Com::ECmpOperator cmpOperator) {
        return VCDate::CompareDate(left, right, cmpOperator);
    };
    for (DWORD cmpOperator = Com::CMPOPERATOR_EQUAL; cmpOperator <= Com::CMPOPERATOR_GREATEREQUAL;
         ++cmpOperator)
        EXPECT_EQ(compare(5, 5, static_cast<Com::ECmpOperator>(cmpOperator)), VCDate::CMPRESULT_UNDECIDED);
    EXPECT_EQ(compare(4, 5, Com::CMPOPERATOR_EQUAL), VCDate::CMPRESULT_FALSE);
    EXPECT_EQ(compare(4, 5, Com::CMPOPERATOR_NOTEQUAL), VCDate::CMPRESULT_TRUE);
    EXPECT_EQ(compare(4, 5, Com::CMPOPERATOR_LESS), VCDate::CMPRESULT_TRUE);
    EXPECT_EQ(compare(4, 5, Com::CMPOPERATOR_LESSEQUAL), VCDate::CMPRESULT_TRUE);
    EXPECT_EQ(compare(4, 5, Com::CMPOPERATOR_GREATER), VCDate::CMPRESULT_FALSE);
    EXPECT_EQ(compare(6, 5, Com::CMPOPERATOR_GREATEREQUAL), VCDate::CMPRESULT_TRUE);
    EXPECT_EQ(compare(5, 5, static_cast<Com::ECmpOperator>(7)), VCDate::CMPRESULT_FALSE);
    EXPECT_EQ(VCDate::CompareDate(VCDate::ERA_SHOWA, 64, VCDate::ERA_HEISEI, 1, Com::CMPOPERATOR_LESS),
              VCDate::CMPRESULT_TRUE);
    EXPECT_EQ(VCDate::CompareDate(VCDate::DAYSOFWEEK_SUNDAY, VCDate::DAYSOFWEEK_MONDAY,
                                  VCDate::DAYSOFWEEK_MONDAY, Com::CMPOPERATOR_GREATER),
              VCDate::CMPRESULT_TRUE);
}

TEST(VCDate, ADayComparesWithAStretchByTheStretchsElements)
{
    using Com = SCKZCoreCom;
    const auto is = [](const VCDate& left, Com::ECmpOperator cmpOperator, const VCDate& right,
                       const SCriteria& criteria = {}) {
        return VCDate::CompareDate(left, right, cmpOperator, criteria.startMonth, criteria.cutOffDate,
                                   criteria.daysOfWeek);
    };
    const CDate day = MakeDay(2024, 7, 15);
    CDate july = day;
    july.SetDay(VCDate::DATE_UNSETTING);
    EXPECT_TRUE(is(day, Com::CMPOPERATOR_EQUAL, july));
    EXPECT_TRUE(is(day, Com::CMPOPERATOR_LESSEQUAL, july));
    EXPECT_FALSE(is(day, Com::CMPOPERATOR_LESS, july));
    EXPECT_FALSE(is(day, Com::CMPOPERATOR_NOTEQUAL, july));
    EXPECT_TRUE(is(MakeDay(2024, 8, 1), Com::CMPOPERATOR_GREATER, july));
    EXPECT_TRUE(is(MakeDay(2023, 12, 1), Com::CMPOPERATOR_LESS, july));

    CQuarterTerm quarter;
    quarter.SetFiscalYearOfTheGrgCalendar(2024);
    quarter.SetQuarterTerm(2);
    EXPECT_TRUE(is(day, Com::CMPOPERATOR_EQUAL, quarter));
    EXPECT_TRUE(is(day, Com::CMPOPERATOR_GREATER, quarter, {1, 31, VCDate::DAYSOFWEEK_SUNDAY}));

    CFiscalMonth january; // of 2025: behind July, though 1 is less than 7
    january.SetYearOfTheGrgCalendar(2025);
    january.SetFiscalMonth(1);
    EXPECT_TRUE(is(day, Com::CMPOPERATOR_LESS, january));
    january.SetYearOfTheGrgCalendar(VCDate::DATE_UNSETTING); // of any fiscal year from April on
    EXPECT_TRUE(is(day, Com::CMPOPERATOR_LESS, january));

    CDate reiwa;
    reiwa.SetYearOfTheJpnCalendar(VCDate::ERA_REIWA, 1);
    EXPECT_TRUE(is(MakeDay(2019, 4, 30), Com::CMPOPERATOR_LESS, reiwa));
    EXPECT_TRUE(is(MakeDay(2019, 5, 1), Com::CMPOPERATOR_EQUAL, reiwa));

    CDaysOfTheWeek sunday;
    sunday.SetDaysOfTheWeek(VCDate::DAYSOFWEEK_SUNDAY);
    EXPECT_TRUE(is(day, Com::CMPOPERATOR_GREATER, sunday));
    EXPECT_TRUE(is(day, Com::CMPOPERATOR_LESS, sunday, {4, 31, VCDate::DAYSOFWEEK_MONDAY}));
}

TEST(VCDate, ADateBeyondTheYearsOfAStretchLiesBeforeOrBehindIt)
{
    using Com = SCKZCoreCom;
    const auto expect = [](const VCDate& left, const VCDate& right, bool isBefore) {
        const auto is = [&](Com::ECmpOperator cmpOperator) {
            return VCDate::CompareDate(left, right, cmpOperator, 4, 20, VCDate::DAYSOFWEEK_SUNDAY);
        };
        EXPECT_FALSE(is(Com::CMPOPERATOR_EQUAL)) << GetParts(&left) << " " << GetParts(&right);
        EXPECT_TRUE(is(Com::CMPOPERATOR_NOTEQUAL)) << GetParts(&left) << " " << GetParts(&right);
        EXPECT_EQ(is(Com::CMPOPERATOR_LESS), isBefore) << GetParts(&left) << " " << GetParts(&right);
        EXPECT_EQ(is(Com::CMPOPERATOR_LESSEQUAL), isBefore) << GetParts(&left) << " " << GetParts(&right);
        EXPECT_EQ(is(Com::CMPOPERATOR_GREATER), !isBefore) << GetParts(&left) << " " << GetParts(&right);
        EXPECT_EQ(is(Com::CMPOPERATOR_GREATEREQUAL), !isBefore) << GetParts(&left) << " " << GetParts(&right);
        EXPECT_FALSE(is(static_cast<Com::ECmpOperator>(9)));
    };

    // No era is as old, and the first and last days are of no fiscal year that there is.
    const CDate beforeMeiji = MakeDay(1850, 7, 15);
    CDate reiwa;
    reiwa.SetYearOfTheJpnCalendar(VCDate::ERA_REIWA, 6);
    expect(beforeMeiji, reiwa, true);
    reiwa.SetMonth(7);
    expect(beforeMeiji, reiwa, true);
    reiwa.SetDay(15);
    expect(beforeMeiji, reiwa, true);

    CFiscalYear fiscalYear;
    fiscalYear.SetFiscalYearOfTheGrgCalendar(2024);
    CQuarterTerm lastQuarter;
    lastQuarter.SetFiscalYearOfTheGrgCalendar(2024);
    lastQuarter.SetQuarterTerm(4);
    CFiscalMonth january;
    january.SetYearOfTheGrgCalendar(2025);
    january.SetFiscalMonth(1);
    CWeekNum week(CWeekNum::WEEKNUMTYPE_FISCALYEAR);
    week.SetFiscalYearOfTheGrgCalendar(2024);
    week.SetWeekNum(41);
    for (const VCDate* const stretch :
         {static_cast<const VCDate*>(&fiscalYear), static_cast<const VCDate*>(&lastQuarter),
          static_cast<const VCDate*>(&january), static_cast<const VCDate*>(&week)}) {
        expect(MakeDay(1, 1, 1), *stretch, true);
        expect(MakeDay(9999, 12, 31), *stretch, false);
    }
}

TEST(VCDate, ADateIncludesWhatFollowsFromIt)
{
    const CDate day = MakeDay(2024, 7, 15);
    CDate month = day;
    month.SetDay(VCDate::DATE_UNSETTING);
    CTimeBasedOnNoon noon;
    noon.SetTimeBasedOnNoon(VCDate::TIMEBASEDONNOON_MORNING);
    for (const DatePtr& each : MakeAll()) {
        DWORD hour = 0;
        const bool isOfDay = each->GetType() != VCDate::DATEOBJTYPE_TIMEBASEDONNOON && !each->GetHour(hour) &&
                             GetParts(each.get()) != "";
        EXPECT_EQ(VCDate::CheckDateInclusiveRelation(day, *each), isOfDay) << GetParts(each.get());
    }
    EXPECT_TRUE(VCDate::CheckDateInclusiveRelation(day, month));
    EXPECT_FALSE(VCDate::CheckDateInclusiveRelation(month, day));
    CQuarterTerm quarter;
    quarter.SetQuarterTerm(1);
    EXPECT_TRUE(VCDate::CheckDateInclusiveRelation(month, quarter));
    EXPECT_FALSE(VCDate::CheckDateInclusiveRelation(quarter, month));
    EXPECT_FALSE(VCDate::CheckDateInclusiveRelation(day, noon));
}

TEST(VCDate, AMomentComesBackFromItsText)
{
    char text[256] = "before";
    for (const long long time : {0LL, 1LL, -1LL, 951782399LL, 951782400LL, 253402300799LL, -62135596800LL}) {
        ASSERT_TRUE(VCDate::ConvertDateIntoStringOfGMT(time, VCDate::STR_FORMAT_DATE, text, sizeof text));
        long long read = 77;
        EXPECT_TRUE(VCDate::ConvertStringOfGMTIntoDate(text, static_cast<DWORD>(std::string(text).size()),
                                                       VCDate::STR_FORMAT_DATE, read));
        EXPECT_EQ(read, time) << text;
    }
    ASSERT_TRUE(VCDate::ConvertDateIntoStringOfGMT(951782400, VCDate::STR_FORMAT_DATE, text, sizeof text));
    EXPECT_STREQ(text, "2000/02/29 00:00:00");
    ASSERT_TRUE(VCDate::ConvertDateIntoStringOfGMT(0, "%%%H", text, sizeof text));
    EXPECT_STREQ(text, "%00");
}

TEST(VCDate, AMomentOutsideTheYearsOrItsBufferIsRefused)
{
    char text[256] = "before";
    EXPECT_FALSE(
        VCDate::ConvertDateIntoStringOfGMT(253402300800, VCDate::STR_FORMAT_DATE, text, sizeof text));
    EXPECT_FALSE(
        VCDate::ConvertDateIntoStringOfGMT(-62135596801, VCDate::STR_FORMAT_DATE, text, sizeof text));
    EXPECT_FALSE(VCDate::ConvertDateIntoStringOfGMT(0, VCDate::STR_FORMAT_DATE, text, 19));
    EXPECT_FALSE(VCDate::ConvertDateIntoStringOfGMT(0, "%x", text, sizeof text));
    EXPECT_FALSE(VCDate::ConvertDateIntoStringOfGMT(0, "%", text, sizeof text));
    EXPECT_FALSE(VCDate::ConvertDateIntoStringOfGMT(0, "", text, 0));
    EXPECT_STREQ(text, "before");
}

TEST(VCDate, ATextThatIsNoMomentIsRefused)
{
    long long time = 77;
    for (const std::string text :
         {"", "2024/07/15", "2024/07/15 13:05:0", "2024/07/15 13:05:09 ", "2024/07/15 24:00:00",
          "2024/07/15 13:60:00", "2024/07/15 13:05:60", "2023/02/29 13:05:09", "2024/7/15 13:05:09",
          "2024-07-15 13:05:09", "+024/07/15 13:05:09", "0000/01/01 00:00:00"})
        EXPECT_FALSE(VCDate::ConvertStringOfGMTIntoDate(text.data(), static_cast<DWORD>(text.size()),
                                                        VCDate::STR_FORMAT_DATE, time))
            << text;
    EXPECT_FALSE(VCDate::ConvertStringOfGMTIntoDate("2024", 4, "%Y", time)); // no day
    EXPECT_FALSE(VCDate::ConvertStringOfGMTIntoDate("20242024", 8, "%Y%Y", time));
    EXPECT_FALSE(VCDate::ConvertStringOfGMTIntoDate("2024", 4, "%", time));
    EXPECT_FALSE(VCDate::ConvertStringOfGMTIntoDate(nullptr, 0, "", time));
    EXPECT_EQ(time, 77);
}
