#include "SCDeclareConstant.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

namespace {

struct SLenRange
{
    unsigned int min = 0;
    unsigned int max = 0;

    void Add(unsigned int atLeast, unsigned int atMost) noexcept
    {
        min += atLeast;
        max += atMost;
    }
};

// What stands in the text of a form.
struct SElements
{
    bool hasEra;
    unsigned int years;
    unsigned int monthsAndDays;
};

bool GetElements(SCDeclareConstant::EDateDataForm form, SElements& elements) noexcept
{
    switch (form) {
    case SCDeclareConstant::DATEFORM_YMD:
    case SCDeclareConstant::DATEFORM_MDY:
    case SCDeclareConstant::DATEFORM_DMY:
        elements = {false, 1, 2};
        return true;
    case SCDeclareConstant::DATEFORM_YM:
        elements = {false, 1, 1};
        return true;
    case SCDeclareConstant::DATEFORM_MD:
        elements = {false, 0, 2};
        return true;
    case SCDeclareConstant::DATEFORM_JYMD:
        elements = {true, 1, 2};
        return true;
    case SCDeclareConstant::DATEFORM_Y:
        elements = {false, 1, 0};
        return true;
    }
    return false;
}

// Kanji are two bytes in Shift-JIS, and those of dates three in UTF-8.
unsigned int GetKanjiLen() noexcept
{
    return _getmbcp() == CP_UTF8 ? 3 : 2;
}

} // namespace

bool SCDeclareConstant::GetDateStrMinAndMaxLen(EDateDataForm form, EDateDelimiter delimiter,
                                               unsigned int& minLen, unsigned int& maxLen) noexcept
{
    SElements elements;
    if (!GetElements(form, elements) || delimiter > DATEDELIM_KANJI)
        return false;

    const unsigned int kanjiLen = GetKanjiLen();
    const bool fullDigits = delimiter == DATEDELIM_NONE;
    SLenRange len;
    if (elements.hasEra) {
        const unsigned int eraYearDigits = 2;
        len.Add(1, 2 * kanjiLen);
        // The kanji for the first year of an era may stand for its number.
        len.Add(fullDigits ? std::min(eraYearDigits, kanjiLen) : 1, std::max(eraYearDigits, kanjiLen));
    } else {
        len.Add(elements.years * (fullDigits ? 4 : 2), elements.years * 4);
    }
    len.Add(elements.monthsAndDays * (fullDigits ? 2 : 1), elements.monthsAndDays * 2);

    const unsigned int numberCount = elements.years + elements.monthsAndDays;
    unsigned int delimiterLen = 0;
    if (delimiter == DATEDELIM_KANJI)
        delimiterLen = numberCount * kanjiLen;
    else if (delimiter != DATEDELIM_NONE)
        delimiterLen = numberCount - 1;
    len.Add(delimiterLen, delimiterLen);

    minLen = len.min;
    maxLen = len.max;
    return true;
}

} // namespace NSKZ::NSKZCore
