#include "CConvertTime.h"

#include "CFixedText.h"
#include "SCDateWord.h"
#include "SCDispForm.h"

#include <algorithm>
#include <cstring>

namespace NSKZ::NSKZCore {

namespace {

// A pattern grows by half at most: {ap} by two bytes of four.
constexpr std::size_t MAX_TEXT_SIZE = 2 * SCDeclareConstant::OPTIONALFORM_SIZE;
using CText = CFixedText<MAX_TEXT_SIZE>;

constexpr DWORD HOURS_OF_DAY = 24;
constexpr DWORD NOON = 12;

// What the text of a form has.
struct SLook
{
    bool hasHour = true;
    bool hasSecond = false;
    bool has12Hours = false;
};

// The parts that a time gives.
class CTimeParts
{
public:
    explicit CTimeParts(const VCDate& time) noexcept
    {
        hasHour = time.GetHour(hour);
        hasMinute = time.GetMinute(minute);
        hasSecond = time.GetSecond(second);
        hasNoon = time.GetTimeBasedOnNoon(noon);
    }

    DWORD GetHour12() const noexcept { return hour % HOURS_OF_DAY % NOON; }
    SCDateWord::EWord GetNoonWord() const noexcept
    {
        return noon == VCDate::TIMEBASEDONNOON_MORNING ? SCDateWord::WORD_MORNING
                                                       : SCDateWord::WORD_AFTERNOON;
    }

    bool hasHour = false;
    bool hasMinute = false;
    bool hasSecond = false;
    bool hasNoon = false;
    DWORD hour = 0;
    DWORD minute = 0;
    DWORD second = 0;
    VCDate::ETimeBasedOnNoon noon = VCDate::TIMEBASEDONNOON_UNSETTING;
};

bool GetLookOfDataForm(SCDeclareConstant::ETimeDataForm form, SLook& look) noexcept
{
    if (form > SCDeclareConstant::TIMEFORM_LAST)
        return false;
    look.hasSecond = form == SCDeclareConstant::TIMEFORM_HMS || form == SCDeclareConstant::TIMEFORM_HMS_12;
    look.has12Hours = form == SCDeclareConstant::TIMEFORM_HMS_12 || form == SCDeclareConstant::TIMEFORM_HM_12;
    return true;
}

bool GetLookOfForm(DWORD form, SLook& look) noexcept
{
    constexpr DWORD LAST_FORM_WITH_SECOND = 1;
    constexpr DWORD FORM_MINUTE_SECOND = 14;
    if (form > FORM_MINUTE_SECOND)
        return false;
    look.hasHour = form != FORM_MINUTE_SECOND;
    look.hasSecond = form <= LAST_FORM_WITH_SECOND || form == FORM_MINUTE_SECOND;
    look.has12Hours = look.hasHour && form % 2 == 1;
    return true;
}

// False if nothing of the look is there.
bool WriteLook(const SLook& look, const CTimeParts& parts, int codePage, CText& text) noexcept
{
    const char* before = "";
    if (look.hasHour && look.has12Hours && parts.hasNoon)
        text.Append(SCDateWord::Get(parts.GetNoonWord(), codePage));
    if (look.hasHour && parts.hasHour) {
        if (look.has12Hours)
            text.AppendNumber(parts.GetHour12());
        else
            text.AppendNumber(parts.hour, 2);
        before = ":";
    }
    if (parts.hasMinute) {
        text.Append(before);
        text.AppendNumber(parts.minute, 2);
        before = ":";
    }
    if (look.hasSecond && parts.hasSecond) {
        text.Append(before);
        text.AppendNumber(parts.second, 2);
    }
    return !text.IsEmpty();
}

bool WriteElement(CDispPattern::EElement element, const CTimeParts& parts, int codePage, CText& text) noexcept
{
    switch (element) {
    case CDispPattern::ELEMENT_HOUR:
    case CDispPattern::ELEMENT_HOUR_2:
        if (parts.hasHour)
            text.AppendNumber(parts.hour, element == CDispPattern::ELEMENT_HOUR ? 1 : 2);
        return parts.hasHour;
    case CDispPattern::ELEMENT_HOUR12:
    case CDispPattern::ELEMENT_HOUR12_2:
        if (parts.hasHour)
            text.AppendNumber(parts.GetHour12(), element == CDispPattern::ELEMENT_HOUR12 ? 1 : 2);
        return parts.hasHour;
    case CDispPattern::ELEMENT_AMPM:
        if (parts.hasNoon)
            text.Append(parts.noon == VCDate::TIMEBASEDONNOON_MORNING ? "AM" : "PM");
        return parts.hasNoon;
    case CDispPattern::ELEMENT_AMPM_KANJI:
        if (parts.hasNoon)
            text.Append(SCDateWord::Get(parts.GetNoonWord(), codePage));
        return parts.hasNoon;
    case CDispPattern::ELEMENT_MINUTE:
    case CDispPattern::ELEMENT_MINUTE_2:
        if (parts.hasMinute)
            text.AppendNumber(parts.minute, element == CDispPattern::ELEMENT_MINUTE ? 1 : 2);
        return parts.hasMinute;
    case CDispPattern::ELEMENT_SECOND:
    case CDispPattern::ELEMENT_SECOND_2:
        if (parts.hasSecond)
            text.AppendNumber(parts.second, element == CDispPattern::ELEMENT_SECOND ? 1 : 2);
        return parts.hasSecond;
    default:
        return false;
    }
}

} // namespace

CConvertTime::CConvertTime(const SCDeclareConstant::STimeTypeInfo& typeInfo)
    : dataForm(typeInfo.form), kind(typeInfo.dispForm.kind), form(typeInfo.dispForm.form),
      codePage(_getmbcp())
{
    const char* ignored = nullptr;
    const char* const text = typeInfo.dispForm.optionalForm;
    if (kind == SCDispForm::TIMEKIND_OPTIONAL)
        pattern.Parse(std::string_view(text, strnlen(text, SCDeclareConstant::OPTIONALFORM_SIZE)),
                      CDispPattern::KIND_TIME, ignored);
}

bool CConvertTime::ConvertTimeString(const VCDate& time, char* buffer, DWORD size) const noexcept
{
    const CTimeParts parts(time);
    CText text;
    bool any = false;
    if (kind == SCDispForm::TIMEKIND_OPTIONAL) {
        for (const CDispPattern::SElement& each : pattern.GetElements()) {
            if (each.element == CDispPattern::ELEMENT_LITERAL)
                text.Append(each.literal);
            else if (WriteElement(each.element, parts, codePage, text))
                any = true;
        }
    } else if (kind != SCDeclareConstant::UNSETTING) {
        SLook look;
        any = (kind == SCDispForm::TIMEKIND_ASITIS ? GetLookOfDataForm(dataForm, look)
                                                   : GetLookOfForm(form, look)) &&
              WriteLook(look, parts, codePage, text);
    }
    return any && text.CopyTo(buffer, size);
}

DWORD CConvertTime::GetMaxLenOfTimeString() const noexcept
{
    if (kind != SCDispForm::TIMEKIND_OPTIONAL) {
        constexpr DWORD LEN_OF_FIGURES = 8; // 13:05:09
        const auto lenOfWord = static_cast<DWORD>(SCDateWord::Get(SCDateWord::WORD_MORNING, codePage).size());
        return lenOfWord + LEN_OF_FIGURES;
    }
    std::size_t len = 0;
    for (const CDispPattern::SElement& each : pattern.GetElements()) {
        if (each.element == CDispPattern::ELEMENT_LITERAL)
            len += each.literal.size();
        else if (each.element == CDispPattern::ELEMENT_AMPM_KANJI)
            len += SCDateWord::Get(SCDateWord::WORD_MORNING, codePage).size();
        else
            len += 2;
    }
    return static_cast<DWORD>(len);
}

bool CConvertTime::IsUsedHourForOptionalForm() const noexcept
{
    return pattern.Has(CDispPattern::ELEMENT_HOUR) || pattern.Has(CDispPattern::ELEMENT_HOUR_2) ||
           IsUsed12HourForOptionalForm();
}

bool CConvertTime::IsUsed12HourForOptionalForm() const noexcept
{
    return pattern.Has(CDispPattern::ELEMENT_HOUR12) || pattern.Has(CDispPattern::ELEMENT_HOUR12_2);
}

bool CConvertTime::IsUsedAMPMForOptionalForm() const noexcept
{
    return pattern.Has(CDispPattern::ELEMENT_AMPM) || pattern.Has(CDispPattern::ELEMENT_AMPM_KANJI);
}

bool CConvertTime::IsUsedMinuteForOptionalForm() const noexcept
{
    return pattern.Has(CDispPattern::ELEMENT_MINUTE) || pattern.Has(CDispPattern::ELEMENT_MINUTE_2);
}

bool CConvertTime::IsUsedSecondForOptionalForm() const noexcept
{
    return pattern.Has(CDispPattern::ELEMENT_SECOND) || pattern.Has(CDispPattern::ELEMENT_SECOND_2);
}

} // namespace NSKZ::NSKZCore
