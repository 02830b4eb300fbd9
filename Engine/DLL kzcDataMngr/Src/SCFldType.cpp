#include "SCFldType.h"

#include "CFldValueList.h"
#include "SCCodePageText.h"
#include "SCNumeric.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <string>

namespace NSKZ::NSKZCore {

namespace {

template <typename TEnum>
struct SNamed
{
    std::string_view name;
    TEnum value;
};

constexpr SNamed<SCDeclareConstant::EDateDataForm> ORDERS[] = {
    {"ymd", SCDeclareConstant::DATEFORM_YMD}, {"mdy", SCDeclareConstant::DATEFORM_MDY},
    {"dmy", SCDeclareConstant::DATEFORM_DMY}, {"ym", SCDeclareConstant::DATEFORM_YM},
    {"md", SCDeclareConstant::DATEFORM_MD},   {"jymd", SCDeclareConstant::DATEFORM_JYMD},
    {"y", SCDeclareConstant::DATEFORM_Y},
};
constexpr SNamed<SCDeclareConstant::EDateDelimiter> DELIMITERS[] = {
    {"none", SCDeclareConstant::DATEDELIM_NONE},     {"slash", SCDeclareConstant::DATEDELIM_SLASH},
    {"hyphen", SCDeclareConstant::DATEDELIM_HYPHEN}, {"period", SCDeclareConstant::DATEDELIM_PERIOD},
    {"kanji", SCDeclareConstant::DATEDELIM_KANJI},
};
constexpr SNamed<SCDeclareConstant::ETimeDataForm> TIME_FORMS[] = {
    {"hms", SCDeclareConstant::TIMEFORM_HMS},
    {"hm", SCDeclareConstant::TIMEFORM_HM},
    {"hms-12", SCDeclareConstant::TIMEFORM_HMS_12},
    {"hm-12", SCDeclareConstant::TIMEFORM_HM_12},
};
constexpr SNamed<SCDeclareConstant::EDataType> TYPES[] = {
    {"text", SCDeclareConstant::DATATYPE_TEXT},
    {"number", SCDeclareConstant::DATATYPE_NUM},
    {"date", SCDeclareConstant::DATATYPE_DATE},
    {"time", SCDeclareConstant::DATATYPE_TIME},
};

template <typename TEnum, std::size_t COUNT>
bool FindNamed(const SNamed<TEnum> (&all)[COUNT], std::string_view name, TEnum& value) noexcept
{
    for (const SNamed<TEnum>& each : all) {
        if (each.name == name) {
            value = each.value;
            return true;
        }
    }
    return false;
}

bool ParseForm(std::string_view form, SCFldType::SFldType& type) noexcept
{
    type.hasForm = true;
    if (type.dataType == SCDeclareConstant::DATATYPE_TIME)
        return FindNamed(TIME_FORMS, form, type.timeTypeInfo.form);
    const std::size_t hyphen = form.find('-');
    return type.dataType == SCDeclareConstant::DATATYPE_DATE && hyphen != std::string_view::npos &&
           FindNamed(ORDERS, form.substr(0, hyphen), type.dateTypeInfo.form) &&
           FindNamed(DELIMITERS, form.substr(hyphen + 1), type.dateTypeInfo.delimiter);
}

bool IsDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

// A code and no number: a zero with another digit behind it.
bool HasLeadingZero(const char* text) noexcept
{
    while (*text == ' ' || *text == '\t')
        ++text;
    if (*text == '-' || *text == '+')
        ++text;
    return *text == '0' && IsDigit(text[1]);
}

// A run of digits in a date or time.
struct SDigits
{
    unsigned int number = 0;
    unsigned int count = 0;
};

// Takes up to four digits off the front of the text.
SDigits TakeDigits(std::string_view& text) noexcept
{
    SDigits digits;
    while (digits.count < 4 && digits.count < text.size() && IsDigit(text[digits.count])) {
        digits.number = digits.number * 10 + static_cast<unsigned int>(text[digits.count] - '0');
        ++digits.count;
    }
    text.remove_prefix(digits.count);
    return digits;
}

bool Take(std::string_view& text, std::string_view wanted) noexcept
{
    if (!text.starts_with(wanted))
        return false;
    text.remove_prefix(wanted.size());
    return true;
}

// The forms that a text may have, one bit each; the lower bit is preferred.
using FormBits = unsigned int;

bool IsRealDay(SDigits year, SDigits month, SDigits day) noexcept
{
    using namespace std::chrono;
    return year.count == 4 && year.number > 0 && month.count >= 1 && month.count <= 2 && day.count >= 1 &&
           day.count <= 2 &&
           year_month_day(std::chrono::year(static_cast<int>(year.number)), std::chrono::month(month.number),
                          std::chrono::day(day.number))
               .ok();
}

// Tells in which forms a text is a date.
class CDateForms
{
public:
    static constexpr std::size_t COUNT = 10;

    CDateForms()
    {
        for (std::size_t i = 0; i < kanji.size(); ++i) {
            std::size_t errorPos = 0;
            SCCodePageText::Convert(KANJI_IN_UTF8[i], CP_UTF8, _getmbcp(), kanji[i], errorPos);
        }
    }

    FormBits operator()(std::string_view text) const noexcept
    {
        const SDigits first = TakeDigits(text);
        if (first.count == 0 || text.empty())
            return 0;
        const auto delimiter =
            std::find(std::begin(DELIMITER_CHARS), std::end(DELIMITER_CHARS), text.front()) - DELIMITER_CHARS;
        if (delimiter == DELIMITER_COUNT)
            return IsKanjiDate(first, text) ? BIT_OF_KANJI : 0;

        const std::string_view between = text.substr(0, 1);
        text.remove_prefix(1);
        const SDigits second = TakeDigits(text);
        if (!Take(text, between))
            return 0;
        const SDigits third = TakeDigits(text);
        if (!text.empty())
            return 0;
        return (IsRealDay(first, second, third) ? GetBit(YMD, delimiter) : 0) |
               (IsRealDay(third, first, second) ? GetBit(MDY, delimiter) : 0) |
               (IsRealDay(third, second, first) ? GetBit(DMY, delimiter) : 0);
    }

    static SCDeclareConstant::SDateTypeInfo GetForm(std::size_t bit) noexcept
    {
        if (FormBits{1} << bit == BIT_OF_KANJI)
            return {SCDeclareConstant::DATEFORM_YMD, SCDeclareConstant::DATEDELIM_KANJI};
        constexpr SCDeclareConstant::EDateDataForm FORMS[] = {SCDeclareConstant::DATEFORM_YMD,
                                                              SCDeclareConstant::DATEFORM_MDY,
                                                              SCDeclareConstant::DATEFORM_DMY};
        constexpr SCDeclareConstant::EDateDelimiter DELIMITERS_OF_CHARS[] = {
            SCDeclareConstant::DATEDELIM_HYPHEN, SCDeclareConstant::DATEDELIM_SLASH,
            SCDeclareConstant::DATEDELIM_PERIOD};
        return {FORMS[bit / DELIMITER_COUNT], DELIMITERS_OF_CHARS[bit % DELIMITER_COUNT]};
    }

private:
    enum EOrder
    {
        YMD,
        MDY,
        DMY,
    };
    static constexpr char DELIMITER_CHARS[] = {'-', '/', '.'};
    static constexpr std::ptrdiff_t DELIMITER_COUNT = 3;
    static constexpr FormBits BIT_OF_KANJI = FormBits{1} << (COUNT - 1);
    // 年, 月, 日
    static constexpr std::array<std::string_view, 3> KANJI_IN_UTF8 = {"\xE5\xB9\xB4", "\xE6\x9C\x88",
                                                                      "\xE6\x97\xA5"};

    static FormBits GetBit(EOrder order, std::ptrdiff_t delimiter) noexcept
    {
        return FormBits{1} << (order * DELIMITER_COUNT + delimiter);
    }

    bool IsKanjiDate(SDigits year, std::string_view text) const noexcept
    {
        if (!Take(text, kanji[0]))
            return false;
        const SDigits month = TakeDigits(text);
        if (!Take(text, kanji[1]))
            return false;
        const SDigits day = TakeDigits(text);
        return Take(text, kanji[2]) && text.empty() && IsRealDay(year, month, day);
    }

    std::array<std::string, 3> kanji; // in the code page in force
};

// Tells in which forms a text is a time of the day.
class CTimeForms
{
public:
    static constexpr std::size_t COUNT = 2;

    FormBits operator()(std::string_view text) const noexcept
    {
        const SDigits hour = TakeDigits(text);
        if (hour.count == 0 || hour.count > 2 || hour.number > 23 || !Take(text, ":"))
            return 0;
        if (!IsSixtieth(TakeDigits(text)))
            return 0;
        if (text.empty())
            return 2;
        return Take(text, ":") && IsSixtieth(TakeDigits(text)) && text.empty() ? 1 : 0;
    }

    static SCDeclareConstant::STimeTypeInfo GetForm(std::size_t bit) noexcept
    {
        return {bit == 0 ? SCDeclareConstant::TIMEFORM_HMS : SCDeclareConstant::TIMEFORM_HM};
    }

private:
    static bool IsSixtieth(SDigits digits) noexcept { return digits.count == 2 && digits.number < 60; }
};

// Calls visit(text, length) for the values that are not empty, until it answers false; whether it always was
// true and there was one at all.
template <typename TVisit>
bool HoldsForAll(const CFldValueList& values, TVisit visit)
{
    bool any = false;
    bool all = true;
    values.Visit([&](const char* text, std::size_t len) {
        if (len == 0)
            return true;
        any = true;
        all = visit(text, len);
        return all;
    });
    return any && all;
}

// The first form in which every value reads; false if there is none.
template <typename TForms>
bool FindFormOfAll(const TForms& forms, const CFldValueList& values, std::size_t& bit)
{
    FormBits common = ~FormBits{0};
    const bool found = HoldsForAll(values, [&](const char* text, std::size_t len) {
        common &= forms(std::string_view(text, len));
        return common != 0;
    });
    if (!found)
        return false;
    for (bit = 0; (common >> bit & 1) == 0;)
        ++bit;
    return true;
}

// The form in which most values read; false if none reads in any.
template <typename TForms>
bool FindFormOfMost(const TForms& forms, const CFldValueList& values, std::size_t& bit)
{
    std::array<DWORD, TForms::COUNT> counts{};
    values.Visit([&](const char* text, std::size_t len) {
        const FormBits fitting = forms(std::string_view(text, len));
        for (std::size_t i = 0; i < counts.size(); ++i)
            counts[i] += fitting >> i & 1;
        return true;
    });
    const auto most = std::max_element(counts.begin(), counts.end());
    bit = static_cast<std::size_t>(most - counts.begin());
    return *most != 0;
}

} // namespace

bool SCFldType::Parse(std::string_view text, SFldType& type) noexcept
{
    const std::size_t colon = text.find(':');
    SFldType parsed;
    if (!FindNamed(TYPES, text.substr(0, colon), parsed.dataType))
        return false;
    if (colon != std::string_view::npos && !ParseForm(text.substr(colon + 1), parsed))
        return false;
    type = parsed;
    return true;
}

SCFldType::SFldType SCFldType::Infer(const CFldValueList& values)
{
    SFldType type;
    const bool numbers = HoldsForAll(values, [](const char* text, std::size_t) {
        double ignored = 0;
        return SCNumeric::AtoF(text, ignored) && !HasLeadingZero(text);
    });
    std::size_t bit = 0;
    if (numbers) {
        type.dataType = SCDeclareConstant::DATATYPE_NUM;
    } else if (FindFormOfAll(CDateForms(), values, bit)) {
        type.dataType = SCDeclareConstant::DATATYPE_DATE;
        type.hasForm = true;
        type.dateTypeInfo = CDateForms::GetForm(bit);
    } else if (FindFormOfAll(CTimeForms(), values, bit)) {
        type.dataType = SCDeclareConstant::DATATYPE_TIME;
        type.hasForm = true;
        type.timeTypeInfo = CTimeForms::GetForm(bit);
    }
    return type;
}

void SCFldType::SettleForm(const CFldValueList& values, SFldType& type)
{
    if (type.hasForm)
        return;
    std::size_t bit = 0;
    if (type.dataType == SCDeclareConstant::DATATYPE_DATE) {
        if (FindFormOfMost(CDateForms(), values, bit))
            type.dateTypeInfo = CDateForms::GetForm(bit);
        type.hasForm = true;
    } else if (type.dataType == SCDeclareConstant::DATATYPE_TIME) {
        if (FindFormOfMost(CTimeForms(), values, bit))
            type.timeTypeInfo = CTimeForms::GetForm(bit);
        type.hasForm = true;
    }
}

} // namespace NSKZ::NSKZCore
