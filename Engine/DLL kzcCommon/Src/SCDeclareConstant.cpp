#include "SCDeclareConstant.h"

#include <algorithm>
#include <cstring>

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
    enum EYear
    {
        YEAR_NONE,
        YEAR_GREGORIAN,
        YEAR_OF_TWO_DIGITS,
        YEAR_OF_ERA,
    };

    EYear year;
    unsigned int monthsAndDays;
};

bool GetElements(SCDeclareConstant::EDateDataForm form, SElements& elements) noexcept
{
    switch (form) {
    case SCDeclareConstant::DATEFORM_YMD:
    case SCDeclareConstant::DATEFORM_MDY:
    case SCDeclareConstant::DATEFORM_DMY:
        elements = {SElements::YEAR_GREGORIAN, 2};
        return true;
    case SCDeclareConstant::DATEFORM_YM:
        elements = {SElements::YEAR_GREGORIAN, 1};
        return true;
    case SCDeclareConstant::DATEFORM_MD:
        elements = {SElements::YEAR_NONE, 2};
        return true;
    case SCDeclareConstant::DATEFORM_Y:
        elements = {SElements::YEAR_GREGORIAN, 0};
        return true;
    case SCDeclareConstant::DATEFORM_JYMD:
        elements = {SElements::YEAR_OF_ERA, 2};
        return true;
    case SCDeclareConstant::DATEFORM_JYM:
        elements = {SElements::YEAR_OF_ERA, 1};
        return true;
    case SCDeclareConstant::DATEFORM_JY:
        elements = {SElements::YEAR_OF_ERA, 0};
        return true;
    case SCDeclareConstant::DATEFORM_YMD_2:
    case SCDeclareConstant::DATEFORM_MDY_2:
    case SCDeclareConstant::DATEFORM_DMY_2:
        elements = {SElements::YEAR_OF_TWO_DIGITS, 2};
        return true;
    case SCDeclareConstant::DATEFORM_YM_2:
        elements = {SElements::YEAR_OF_TWO_DIGITS, 1};
        return true;
    }
    return false;
}

// Kanji are two bytes in Shift-JIS, and those of dates three in UTF-8.
unsigned int GetKanjiLen() noexcept
{
    return _getmbcp() == CP_UTF8 ? 3 : 2;
}

// A field of a display form that a host has filled itself may lack its NUL.
bool IsTerminated(const char* text) noexcept
{
    return std::memchr(text, '\0', SCDeclareConstant::OPTIONALFORM_SIZE) != nullptr;
}

bool IsSamePattern(const char* left, const char* right) noexcept
{
    if (!IsTerminated(left) || !IsTerminated(right))
        return std::memcmp(left, right, SCDeclareConstant::OPTIONALFORM_SIZE) == 0;
    return _mbscmp(reinterpret_cast<const unsigned char*>(left),
                   reinterpret_cast<const unsigned char*>(right)) == 0;
}

bool StorePattern(std::string_view text, char* optionalForm) noexcept
{
    if (text.size() >= SCDeclareConstant::OPTIONALFORM_SIZE || text.find('\0') != std::string_view::npos)
        return false;
    if (!text.empty()) // it may be what is stored already
        std::memmove(optionalForm, text.data(), text.size());
    std::memset(optionalForm + text.size(), 0, SCDeclareConstant::OPTIONALFORM_SIZE - text.size());
    return true;
}

} // namespace

bool SCDeclareConstant::SDateDispForm::SetOptionalForm(std::string_view text) noexcept
{
    return StorePattern(text, optionalForm);
}

bool SCDeclareConstant::SDateDispForm::operator==(const SDateDispForm& other) const noexcept
{
    return kind == other.kind && form == other.form && option == other.option &&
           IsSamePattern(optionalForm, other.optionalForm);
}

bool SCDeclareConstant::STimeDispForm::SetOptionalForm(std::string_view text) noexcept
{
    return StorePattern(text, optionalForm);
}

bool SCDeclareConstant::STimeDispForm::operator==(const STimeDispForm& other) const noexcept
{
    return kind == other.kind && form == other.form && IsSamePattern(optionalForm, other.optionalForm);
}

bool SCDeclareConstant::GetDateStrMinAndMaxLen(EDateDataForm form, EDateDelimiter delimiter,
                                               unsigned int& minLen, unsigned int& maxLen) noexcept
{
    SElements elements;
    if (!GetElements(form, elements) || delimiter > DATEDELIM_LAST)
        return false;

    const unsigned int kanjiLen = GetKanjiLen();
    const bool fullDigits = delimiter == DATEDELIM_NONE;
    SLenRange len;
    switch (elements.year) {
    case SElements::YEAR_NONE:
        break;
    case SElements::YEAR_GREGORIAN:
        len.Add(fullDigits ? 4 : 2, 4);
        break;
    case SElements::YEAR_OF_TWO_DIGITS:
        len.Add(2, 2);
        break;
    case SElements::YEAR_OF_ERA:
        len.Add(1, 2 * kanjiLen);
        // The kanji for the first year of an era may stand for its number.
        constexpr unsigned int DIGITS = 2;
        len.Add(fullDigits ? std::min(DIGITS, kanjiLen) : 1, std::max(DIGITS, kanjiLen));
        break;
    }
    len.Add(elements.monthsAndDays * (fullDigits ? 2 : 1), elements.monthsAndDays * 2);

    const unsigned int numberCount = (elements.year == SElements::YEAR_NONE ? 0 : 1) + elements.monthsAndDays;
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
