#include "SCDeclareConstant.h"

#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

using SC = SCDeclareConstant;
using Lens = std::pair<unsigned int, unsigned int>;

namespace {

Lens GetLens(SC::EDateDataForm form, SC::EDateDelimiter delimiter)
{
    unsigned int minLen = 777;
    unsigned int maxLen = 777;
    EXPECT_TRUE(SC::GetDateStrMinAndMaxLen(form, delimiter, minLen, maxLen));
    return {minLen, maxLen};
}

unsigned int Len(std::u8string_view text)
{
    return static_cast<unsigned int>(ConvertOrThrow(UTF8(text), CP_UTF8, _getmbcp()).size());
}

} // namespace

TEST(SCDeclareConstant, FormsWithADelimiterRangeFromTwoDigitYearsAndBareDaysToFullDigits)
{
    for (const auto delimiter : {SC::DATEDELIM_SLASH, SC::DATEDELIM_HYPHEN, SC::DATEDELIM_PERIOD}) {
        EXPECT_EQ(GetLens(SC::DATEFORM_YMD, delimiter), Lens(Len(u8"24-7-5"), Len(u8"2024-07-15")));
        EXPECT_EQ(GetLens(SC::DATEFORM_MDY, delimiter), Lens(Len(u8"7-5-24"), Len(u8"07-15-2024")));
        EXPECT_EQ(GetLens(SC::DATEFORM_DMY, delimiter), Lens(Len(u8"5-7-24"), Len(u8"15-07-2024")));
        EXPECT_EQ(GetLens(SC::DATEFORM_YM, delimiter), Lens(Len(u8"24-7"), Len(u8"2024-07")));
        EXPECT_EQ(GetLens(SC::DATEFORM_MD, delimiter), Lens(Len(u8"7-5"), Len(u8"07-15")));
        EXPECT_EQ(GetLens(SC::DATEFORM_JYMD, delimiter), Lens(Len(u8"R6-7-5"), Len(u8"令和06-07-15")));
        EXPECT_EQ(GetLens(SC::DATEFORM_Y, delimiter), Lens(Len(u8"24"), Len(u8"2024")));
    }
}

TEST(SCDeclareConstant, FormsWithoutDelimiterHaveFullDigits)
{
    EXPECT_EQ(GetLens(SC::DATEFORM_YMD, SC::DATEDELIM_NONE), Lens(8, 8));
    EXPECT_EQ(GetLens(SC::DATEFORM_MDY, SC::DATEDELIM_NONE), Lens(8, 8));
    EXPECT_EQ(GetLens(SC::DATEFORM_DMY, SC::DATEDELIM_NONE), Lens(8, 8));
    EXPECT_EQ(GetLens(SC::DATEFORM_YM, SC::DATEDELIM_NONE), Lens(6, 6));
    EXPECT_EQ(GetLens(SC::DATEFORM_MD, SC::DATEDELIM_NONE), Lens(4, 4));
    EXPECT_EQ(GetLens(SC::DATEFORM_JYMD, SC::DATEDELIM_NONE), Lens(Len(u8"R060715"), Len(u8"令和元0715")));
    EXPECT_EQ(GetLens(SC::DATEFORM_Y, SC::DATEDELIM_NONE), Lens(4, 4));
}

TEST(SCDeclareConstant, KanjiStandBehindEveryNumber)
{
    EXPECT_EQ(GetLens(SC::DATEFORM_YMD, SC::DATEDELIM_KANJI),
              Lens(Len(u8"24年7月5日"), Len(u8"2024年07月15日")));
    EXPECT_EQ(GetLens(SC::DATEFORM_YM, SC::DATEDELIM_KANJI), Lens(Len(u8"24年7月"), Len(u8"2024年07月")));
    EXPECT_EQ(GetLens(SC::DATEFORM_MD, SC::DATEDELIM_KANJI), Lens(Len(u8"7月5日"), Len(u8"07月15日")));
    EXPECT_EQ(GetLens(SC::DATEFORM_Y, SC::DATEDELIM_KANJI), Lens(Len(u8"24年"), Len(u8"2024年")));
    EXPECT_EQ(GetLens(SC::DATEFORM_YMD, SC::DATEDELIM_KANJI), Lens(10, 14));
}

TEST(SCDeclareConstant, TheFirstYearOfAnEraMayBeWrittenAsItsKanji)
{
    const Lens lens = GetLens(SC::DATEFORM_JYMD, SC::DATEDELIM_KANJI);
    EXPECT_EQ(lens, Lens(Len(u8"R6年7月5日"), Len(u8"平成31年04月30日")));
    EXPECT_GE(lens.second, Len(u8"令和元年12月31日"));
}

TEST(SCDeclareConstant, KanjiAreThreeBytesWhereTheCodePageIsUTF8)
{
    const CCodePageScope utf8(CP_UTF8);
    EXPECT_EQ(GetLens(SC::DATEFORM_YMD, SC::DATEDELIM_KANJI),
              Lens(Len(u8"24年7月5日"), Len(u8"2024年07月15日")));
    EXPECT_EQ(GetLens(SC::DATEFORM_JYMD, SC::DATEDELIM_KANJI),
              Lens(Len(u8"R6年7月5日"), std::max(Len(u8"令和31年12月31日"), Len(u8"令和元年12月31日"))));
    EXPECT_EQ(GetLens(SC::DATEFORM_JYMD, SC::DATEDELIM_NONE), Lens(Len(u8"R060715"), Len(u8"令和元0715")));
    EXPECT_EQ(GetLens(SC::DATEFORM_YMD, SC::DATEDELIM_SLASH), Lens(6, 10));
}

TEST(SCDeclareConstant, AnUnknownFormOrDelimiterIsRefusedAndNothingWritten)
{
    unsigned int minLen = 777;
    unsigned int maxLen = 778;
    EXPECT_FALSE(SC::GetDateStrMinAndMaxLen(static_cast<SC::EDateDataForm>(SC::DATEFORM_LAST + 1),
                                            SC::DATEDELIM_SLASH, minLen, maxLen));
    EXPECT_FALSE(SC::GetDateStrMinAndMaxLen(
        SC::DATEFORM_YMD, static_cast<SC::EDateDelimiter>(SC::DATEDELIM_LAST + 1), minLen, maxLen));
    EXPECT_FALSE(SC::GetDateStrMinAndMaxLen(static_cast<SC::EDateDataForm>(SC::UNSETTING),
                                            static_cast<SC::EDateDelimiter>(SC::UNSETTING), minLen, maxLen));
    EXPECT_EQ(minLen, 777u);
    EXPECT_EQ(maxLen, 778u);
}

TEST(SCDeclareConstant, JapaneseAndTwoDigitFormsHaveTheirOwnLengths)
{
    EXPECT_EQ(GetLens(SC::DATEFORM_JYM, SC::DATEDELIM_SLASH), Lens(Len(u8"R6/7"), Len(u8"令和06/07")));
    EXPECT_EQ(GetLens(SC::DATEFORM_JY, SC::DATEDELIM_KANJI), Lens(Len(u8"R6年"), Len(u8"令和06年")));
    EXPECT_EQ(GetLens(SC::DATEFORM_YMD_2, SC::DATEDELIM_NONE), Lens(6, 6));
    EXPECT_EQ(GetLens(SC::DATEFORM_MDY_2, SC::DATEDELIM_SLASH), Lens(Len(u8"7/5/24"), Len(u8"07/05/24")));
    EXPECT_EQ(GetLens(SC::DATEFORM_DMY_2, SC::DATEDELIM_SLASH), Lens(6, 8));
    EXPECT_EQ(GetLens(SC::DATEFORM_YM_2, SC::DATEDELIM_HYPHEN), Lens(4, 5));
}

TEST(SCDeclareConstant, DisplayFormsAreEqualIfAllFieldsAre)
{
    SC::SDateDispForm form;
    SC::SDateDispForm other;
    EXPECT_EQ(form, other);
    EXPECT_EQ(form.kind, SC::UNSETTING);
    EXPECT_TRUE(form.SetOptionalForm("{d}"));
    EXPECT_FALSE(form == other);
    EXPECT_TRUE(other.SetOptionalForm("{d}"));
    other.optionalForm[10] = 'x'; // behind the end
    EXPECT_EQ(form, other);
    for (DWORD SC::SDateDispForm::*const field :
         {&SC::SDateDispForm::kind, &SC::SDateDispForm::form, &SC::SDateDispForm::option}) {
        other = form;
        other.*field = 1;
        EXPECT_FALSE(form == other);
    }
    SC::STimeDispForm time;
    SC::STimeDispForm otherTime;
    EXPECT_EQ(time, otherTime);
    otherTime.form = 1;
    EXPECT_FALSE(time == otherTime);
}

TEST(SCDeclareConstant, APatternThatIsTooLongOrHoldsANULIsRefused)
{
    SC::SDateDispForm form;
    EXPECT_TRUE(form.SetOptionalForm(std::string(260, 'x')));
    EXPECT_FALSE(form.SetOptionalForm(std::string(261, 'y')));
    EXPECT_FALSE(form.SetOptionalForm(std::string_view("a\0b", 3)));
    EXPECT_EQ(std::string(form.optionalForm), std::string(260, 'x'));
    EXPECT_TRUE(form.SetOptionalForm(form.optionalForm));
    EXPECT_EQ(std::string(form.optionalForm), std::string(260, 'x'));
}
