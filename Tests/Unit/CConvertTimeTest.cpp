#include "CConvertTime.h"

#include "CDate.h"
#include "SCDateText.h"
#include "SCDispForm.h"
#include "Support/DateText.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

using SC = SCDeclareConstant;

namespace {

CDate MakeTime(DWORD hour, DWORD minute, DWORD second)
{
    CDate time;
    time.SetHour(hour);
    time.SetMinute(minute);
    time.SetSecond(second);
    return time;
}

std::string Write(const SC::STimeTypeInfo& info, const VCDate& time)
{
    const CConvertTime convert(info);
    char text[64] = "!";
    const bool written = convert.ConvertTimeString(time, text, convert.GetMaxLenOfTimeString() + 1);
    EXPECT_EQ(written, std::strcmp(text, "!") != 0);
    return written ? ConvertOrThrow(text, _getmbcp(), CP_UTF8) : "!";
}

std::string Write(const char* name, const VCDate& time)
{
    SC::STimeTypeInfo info;
    EXPECT_TRUE(SCDispForm::FindTimeForm(name, info.dispForm)) << name;
    return Write(info, time);
}

} // namespace

TEST(CConvertTime, HoursAreThoseOfTheDayOrOfItsHalf)
{
    EXPECT_EQ(Write("hour-minute-second", MakeTime(25, 5, 9)), "25:05:09");
    EXPECT_EQ(Write("hour-minute-second-12", MakeTime(25, 5, 9)), UTF8(u8"午前1:05:09"));
    EXPECT_EQ(Write("hour-minute-12", MakeTime(0, 0, 0)), UTF8(u8"午前0:00"));
    EXPECT_EQ(Write("hour-minute-12", MakeTime(12, 0, 0)), UTF8(u8"午後0:00"));
    EXPECT_EQ(Write("minute-second", MakeTime(12, 3, 4)), "03:04");
}

TEST(CConvertTime, WhatIsNotHeldIsLeftOut)
{
    EXPECT_EQ(Write("hour-minute-second", MakeTime(1, 2, VCDate::DATE_UNSETTING)), "01:02");
    EXPECT_EQ(Write("hour-minute", MakeTime(VCDate::DATE_UNSETTING, 2, 3)), "02");
    EXPECT_EQ(Write("hour-minute", CDate()), "!");
    EXPECT_EQ(Write("hour", MakeTime(VCDate::DATE_UNSETTING, 2, 3)), "!");
    EXPECT_EQ(Write(SC::STimeTypeInfo(), MakeTime(1, 2, 3)), "!");
}

TEST(CConvertTime, EveryMinuteComesBackFromTheTextOfEveryForm)
{
    for (const int codePage : {_KANJI_CP, CP_UTF8}) {
        const CCodePageScope scope(codePage);
        for (DWORD form = 0; form <= SC::TIMEFORM_LAST; ++form) {
            SC::STimeTypeInfo info{static_cast<SC::ETimeDataForm>(form)};
            ASSERT_TRUE(SCDispForm::FindTimeForm("as-it-is", info.dispForm));
            const bool hasSecond = form == SC::TIMEFORM_HMS || form == SC::TIMEFORM_HMS_12;
            for (DWORD minute = 0; minute < 24 * 60; ++minute) {
                const CDate time =
                    MakeTime(minute / 60, minute % 60, hasSecond ? minute % 60 : VCDate::DATE_UNSETTING);
                const std::string text = ConvertOrThrow(Write(info, time), CP_UTF8, codePage);
                CDate read;
                ASSERT_TRUE(SCDateText::ReadTime(text, info.form, read)) << text;
                ASSERT_EQ(GetParts(&read), GetParts(&time)) << text;
            }
        }
    }
}

TEST(CConvertTime, APatternTellsWhatItUsesAndWritesIt)
{
    SC::STimeTypeInfo info;
    const char* reason = nullptr;
    ASSERT_TRUE(SCDispForm::MakeOptionalTimeForm("{ap}{AM/PM} {h12}{hh12} {n}{nn}", info.dispForm, reason));
    const CConvertTime convert(info);
    EXPECT_TRUE(convert.IsUsedHourForOptionalForm() && convert.IsUsed12HourForOptionalForm());
    EXPECT_TRUE(convert.IsUsedAMPMForOptionalForm() && convert.IsUsedMinuteForOptionalForm());
    EXPECT_FALSE(convert.IsUsedSecondForOptionalForm());
    EXPECT_EQ(Write(info, MakeTime(13, 5, 9)), UTF8(u8"午後PM 101 505"));
    ASSERT_TRUE(SCDispForm::MakeOptionalTimeForm("{h}{hh}.{s}{ss}", info.dispForm, reason));
    EXPECT_FALSE(CConvertTime(info).IsUsed12HourForOptionalForm());
    EXPECT_TRUE(CConvertTime(info).IsUsedHourForOptionalForm());
    EXPECT_EQ(Write(info, MakeTime(3, 5, 9)), "303.909");
}
