#include "SCFldType.h"

#include "CFldValueList.h"
#include "SCDateText.h"
#include "SCNumeric.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>

namespace NSKZ::NSKZCore {

namespace {

template <typename TEnum>
struct SNamed
{
    std::string_view name;
    TEnum value;
};

constexpr SNamed<SCDeclareConstant::EDateDataForm> ORDERS[] = {
    {"ymd", SCDeclareConstant::DATEFORM_YMD},    {"mdy", SCDeclareConstant::DATEFORM_MDY},
    {"dmy", SCDeclareConstant::DATEFORM_DMY},    {"ym", SCDeclareConstant::DATEFORM_YM},
    {"md", SCDeclareConstant::DATEFORM_MD},      {"jymd", SCDeclareConstant::DATEFORM_JYMD},
    {"y", SCDeclareConstant::DATEFORM_Y},        {"jym", SCDeclareConstant::DATEFORM_JYM},
    {"jy", SCDeclareConstant::DATEFORM_JY},      {"ymd2", SCDeclareConstant::DATEFORM_YMD_2},
    {"mdy2", SCDeclareConstant::DATEFORM_MDY_2}, {"dmy2", SCDeclareConstant::DATEFORM_DMY_2},
    {"ym2", SCDeclareConstant::DATEFORM_YM_2},
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

template <typename TEnum, std::size_t COUNT>
std::string GetName(const SNamed<TEnum> (&all)[COUNT], TEnum value)
{
    for (const SNamed<TEnum>& each : all) {
        if (each.value == value)
            return std::string(each.name);
    }
    throw std::invalid_argument("no type or form of a field");
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

// The forms that a text may have, one bit each; the lower bit is preferred.
using FormBits = unsigned int;

// Tells in which forms a text is a date: those in which it can be told from its look. Years have four digits.
class CDateForms
{
public:
    static constexpr std::size_t COUNT = 16;

    FormBits operator()(std::string_view text) const noexcept
    {
        if (text.empty())
            return 0;
        const std::size_t delimiterPos = text.find_first_of("-/.");
        const char delimiter = delimiterPos == std::string_view::npos ? '\0' : text[delimiterPos];
        const bool beginsWithDigit = IsDigit(text.front());
        FormBits fitting = 0;
        for (std::size_t i = 0; i < COUNT; ++i) {
            const SForm& form = FORMS[i];
            CDate ignored;
            if (form.delimiterChar == delimiter && form.beginsWithDigit == beginsWithDigit &&
                (form.yearPlace != YEAR_FIRST || HasDigitAt(text, 2)) &&
                (form.yearPlace != YEAR_LAST || HasDigitAt(text, text.size() - 3)) &&
                SCDateText::ReadDate(text, form.form, form.delimiter, ignored))
                fitting |= FormBits{1} << i;
        }
        return fitting;
    }

    static SCDeclareConstant::SDateTypeInfo GetForm(std::size_t bit) noexcept
    {
        return {FORMS[bit].form, FORMS[bit].delimiter};
    }

private:
    // Where a year stands whose two digits would be taken for four.
    enum EYearPlace
    {
        YEAR_NONE,
        YEAR_FIRST,
        YEAR_LAST,
    };
    struct SForm
    {
        SCDeclareConstant::EDateDataForm form;
        SCDeclareConstant::EDateDelimiter delimiter;
        char delimiterChar; // none where the kanji delimit
        bool beginsWithDigit;
        EYearPlace yearPlace;
    };
    // In the order in which they are preferred.
    static constexpr std::array<SForm, COUNT> FORMS = {{
        {SCDeclareConstant::DATEFORM_YMD, SCDeclareConstant::DATEDELIM_HYPHEN, '-', true, YEAR_FIRST},
        {SCDeclareConstant::DATEFORM_YMD, SCDeclareConstant::DATEDELIM_SLASH, '/', true, YEAR_FIRST},
        {SCDeclareConstant::DATEFORM_YMD, SCDeclareConstant::DATEDELIM_PERIOD, '.', true, YEAR_FIRST},
        {SCDeclareConstant::DATEFORM_MDY, SCDeclareConstant::DATEDELIM_HYPHEN, '-', true, YEAR_LAST},
        {SCDeclareConstant::DATEFORM_MDY, SCDeclareConstant::DATEDELIM_SLASH, '/', true, YEAR_LAST},
        {SCDeclareConstant::DATEFORM_MDY, SCDeclareConstant::DATEDELIM_PERIOD, '.', true, YEAR_LAST},
        {SCDeclareConstant::DATEFORM_DMY, SCDeclareConstant::DATEDELIM_HYPHEN, '-', true, YEAR_LAST},
        {SCDeclareConstant::DATEFORM_DMY, SCDeclareConstant::DATEDELIM_SLASH, '/', true, YEAR_LAST},
        {SCDeclareConstant::DATEFORM_DMY, SCDeclareConstant::DATEDELIM_PERIOD, '.', true, YEAR_LAST},
        {SCDeclareConstant::DATEFORM_YMD, SCDeclareConstant::DATEDELIM_KANJI, '\0', true, YEAR_FIRST},
        {SCDeclareConstant::DATEFORM_JYMD, SCDeclareConstant::DATEDELIM_HYPHEN, '-', false, YEAR_NONE},
        {SCDeclareConstant::DATEFORM_JYMD, SCDeclareConstant::DATEDELIM_SLASH, '/', false, YEAR_NONE},
        {SCDeclareConstant::DATEFORM_JYMD, SCDeclareConstant::DATEDELIM_PERIOD, '.', false, YEAR_NONE},
        {SCDeclareConstant::DATEFORM_JYMD, SCDeclareConstant::DATEDELIM_KANJI, '\0', false, YEAR_NONE},
        {SCDeclareConstant::DATEFORM_YM, SCDeclareConstant::DATEDELIM_KANJI, '\0', true, YEAR_FIRST},
        {SCDeclareConstant::DATEFORM_JYM, SCDeclareConstant::DATEDELIM_KANJI, '\0', false, YEAR_NONE},
    }};

    static bool HasDigitAt(std::string_view text, std::size_t pos) noexcept
    {
        return pos < text.size() && IsDigit(text[pos]);
    }
};

// Tells in which forms a text is a time of the day.
class CTimeForms
{
public:
    static constexpr std::size_t COUNT = SCDeclareConstant::TIMEFORM_LAST + 1;

    FormBits operator()(std::string_view text) const noexcept
    {
        constexpr DWORD HOURS_OF_DAY = 24;
        FormBits fitting = 0;
        for (std::size_t i = 0; i < COUNT; ++i) {
            CDate time;
            DWORD hour = 0;
            if (SCDateText::ReadTime(text, GetForm(i).form, time) && time.GetHour(hour) &&
                hour < HOURS_OF_DAY)
                fitting |= FormBits{1} << i;
        }
        return fitting;
    }

    static SCDeclareConstant::STimeTypeInfo GetForm(std::size_t bit) noexcept
    {
        return {static_cast<SCDeclareConstant::ETimeDataForm>(bit)};
    }
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

std::string SCFldType::Write(const SFldType& type)
{
    std::string text = GetName(TYPES, type.dataType);
    if (type.hasForm && type.dataType == SCDeclareConstant::DATATYPE_DATE) {
        text += ":" + GetName(ORDERS, type.dateTypeInfo.form) + "-" +
                GetName(DELIMITERS, type.dateTypeInfo.delimiter);
    } else if (type.hasForm && type.dataType == SCDeclareConstant::DATATYPE_TIME) {
        text += ":" + GetName(TIME_FORMS, type.timeTypeInfo.form);
    }
    return text;
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
