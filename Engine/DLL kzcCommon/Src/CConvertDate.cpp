#include "CConvertDate.h"

#include "CFixedText.h"
#include "SCDateWord.h"
#include "SCDispForm.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace NSKZ::NSKZCore {

namespace {

// A pattern grows by a third at most: {e} has three bytes and may become four digits. {ggg} grows by one
// byte.
constexpr std::size_t MAX_TEXT_SIZE = 2 * SCDeclareConstant::OPTIONALFORM_SIZE;
using CText = CFixedText<MAX_TEXT_SIZE>;

// How a text is written.
struct SStyle
{
    bool isJapanese = false;
    bool isKanji = false; // numbers with kanji behind them, in place of figures
    SCDateWord::EEraStyle era = SCDateWord::ERASTYLE_KANJI;
};

// The six ways of writing of a family of forms, in their order.
constexpr std::array<SStyle, 6> STYLES = {{
    {false, false, SCDateWord::ERASTYLE_KANJI},
    {false, true, SCDateWord::ERASTYLE_KANJI},
    {true, true, SCDateWord::ERASTYLE_KANJI},
    {true, false, SCDateWord::ERASTYLE_KANJI},
    {true, false, SCDateWord::ERASTYLE_LETTER},
    {true, true, SCDateWord::ERASTYLE_LETTER},
}};
constexpr DWORD STYLE_COUNT = STYLES.size();

enum EFamily
{
    FAMILY_NONE,
    FAMILY_DAY,
    FAMILY_MONTH,
    FAMILY_HALFTERM,
    FAMILY_QUARTERTERM,
    FAMILY_WEEKOFYEAR,
    FAMILY_WEEKOFMONTH,
};

struct SFamily
{
    DWORD firstForm;
    EFamily family;
};
constexpr std::array<SFamily, 6> FAMILIES = {{
    {0, FAMILY_DAY},
    {6, FAMILY_MONTH},
    {101, FAMILY_HALFTERM},
    {107, FAMILY_QUARTERTERM},
    {201, FAMILY_WEEKOFYEAR},
    {301, FAMILY_WEEKOFMONTH},
}};
constexpr DWORD FORM_DAY = 12;
constexpr DWORD FORM_WEEKOFANYMONTH = 401;
constexpr DWORD FORM_DAYOFWEEKOFMONTH = 402;
constexpr DWORD FORM_DAYOFWEEK = 403;

EFamily FindFamily(DWORD form, SStyle& style) noexcept
{
    for (const SFamily& each : FAMILIES) {
        if (form >= each.firstForm && form - each.firstForm < STYLE_COUNT) {
            style = STYLES[form - each.firstForm];
            return each.family;
        }
    }
    return FAMILY_NONE;
}

// A year that a date gives, Gregorian or Japanese.
struct SYear
{
    bool isHeld = false;
    VCDate::EEra era = VCDate::ERA_GREGORIAN;
    DWORD year = 0;
};

// Writes the parts of one date.
class CWriter
{
public:
    CWriter(const VCDate& dateToWrite, DWORD startMonthOfYear, DWORD cutOffDateOfMonth, int codePageOfText,
            CText& textToMake) noexcept
        : date(dateToWrite), startMonth(startMonthOfYear), cutOffDate(cutOffDateOfMonth),
          codePage(codePageOfText), text(textToMake)
    {}

    bool WriteForm(DWORD form, bool isFiscal) noexcept
    {
        switch (form) {
        case FORM_DAY:
            return WriteNumber(GetDay(), SCDateWord::WORD_DAY);
        case FORM_WEEKOFANYMONTH:
            return WriteMonthAndWeek(isFiscal, true);
        case FORM_DAYOFWEEKOFMONTH: {
            const bool any = WriteMonthAndWeek(isFiscal, true);
            return WriteDayOfWeek() || any;
        }
        case FORM_DAYOFWEEK: {
            const bool any = WriteMonthAndWeek(isFiscal, false);
            return WriteDayOfWeek() || any;
        }
        default:
            break;
        }

        SStyle style;
        switch (FindFamily(form, style)) {
        case FAMILY_DAY:
            return WriteDate(style, GetYear(style.isJapanese), GetMonth(), GetDay(), false);
        case FAMILY_MONTH:
            return isFiscal ? WriteFiscalMonth(style)
                            : WriteDate(style, GetYear(style.isJapanese), GetMonth(), UNSET, false);
        case FAMILY_HALFTERM:
            return WriteTerm(style, true);
        case FAMILY_QUARTERTERM:
            return WriteTerm(style, false);
        case FAMILY_WEEKOFYEAR:
            return WriteWeekOfYear(style, isFiscal);
        case FAMILY_WEEKOFMONTH:
            return WriteWeekOfMonth(style, isFiscal);
        case FAMILY_NONE:
            break;
        }
        return false;
    }

    // In the form of a field. Without delimiter, or with one of a character, in figures.
    bool WriteDataForm(SCDeclareConstant::EDateDataForm form,
                       SCDeclareConstant::EDateDelimiter delimiter) noexcept
    {
        enum EPart
        {
            NONE,
            YEAR,
            YEAR_2,
            JPNYEAR,
            MONTH,
            DAY,
        };
        std::array<EPart, 3> parts = {NONE, NONE, NONE};
        switch (form) {
        case SCDeclareConstant::DATEFORM_YMD:
            parts = {YEAR, MONTH, DAY};
            break;
        case SCDeclareConstant::DATEFORM_MDY:
            parts = {MONTH, DAY, YEAR};
            break;
        case SCDeclareConstant::DATEFORM_DMY:
            parts = {DAY, MONTH, YEAR};
            break;
        case SCDeclareConstant::DATEFORM_YM:
            parts = {YEAR, MONTH, NONE};
            break;
        case SCDeclareConstant::DATEFORM_MD:
            parts = {MONTH, DAY, NONE};
            break;
        case SCDeclareConstant::DATEFORM_JYMD:
            parts = {JPNYEAR, MONTH, DAY};
            break;
        case SCDeclareConstant::DATEFORM_Y:
            parts = {YEAR, NONE, NONE};
            break;
        case SCDeclareConstant::DATEFORM_JYM:
            parts = {JPNYEAR, MONTH, NONE};
            break;
        case SCDeclareConstant::DATEFORM_JY:
            parts = {JPNYEAR, NONE, NONE};
            break;
        case SCDeclareConstant::DATEFORM_YMD_2:
            parts = {YEAR_2, MONTH, DAY};
            break;
        case SCDeclareConstant::DATEFORM_MDY_2:
            parts = {MONTH, DAY, YEAR_2};
            break;
        case SCDeclareConstant::DATEFORM_DMY_2:
            parts = {DAY, MONTH, YEAR_2};
            break;
        case SCDeclareConstant::DATEFORM_YM_2:
            parts = {YEAR_2, MONTH, NONE};
            break;
        }

        const bool isKanji = delimiter == SCDeclareConstant::DATEDELIM_KANJI;
        const std::string_view between = GetDelimiter(delimiter);
        bool any = false;
        for (const EPart part : parts) {
            SCDateWord::EWord unit = SCDateWord::WORD_YEAR;
            DWORD number = UNSET;
            VCDate::EEra era = VCDate::ERA_GREGORIAN;
            std::size_t digits = 2;
            if (part == MONTH) {
                number = GetMonth();
                unit = SCDateWord::WORD_MONTH;
            } else if (part == DAY) {
                number = GetDay();
                unit = SCDateWord::WORD_DAY;
            } else if (part != NONE) {
                const SYear year = GetYear(part == JPNYEAR);
                if (year.isHeld) {
                    number = part == YEAR_2 ? year.year % 100 : year.year;
                    era = year.era;
                }
                digits = part == YEAR ? 4 : 2;
            }
            if (number == UNSET)
                continue;
            if (any)
                text.Append(between);
            if (era != VCDate::ERA_GREGORIAN)
                text.Append(SCDateWord::GetEra(
                    era, isKanji ? SCDateWord::ERASTYLE_KANJI : SCDateWord::ERASTYLE_LETTER, codePage));
            text.AppendNumber(number, digits);
            if (isKanji)
                AppendWord(unit);
            any = true;
        }
        return any;
    }

    bool WriteElement(CDispPattern::EElement element) noexcept
    {
        switch (element) {
        case CDispPattern::ELEMENT_GRGYEAR:
        case CDispPattern::ELEMENT_GRGYEAR_2: {
            const SYear year = GetYear(false);
            if (year.isHeld && element == CDispPattern::ELEMENT_GRGYEAR)
                text.AppendNumber(year.year, 4);
            else if (year.isHeld)
                text.AppendNumber(year.year % 100, 2);
            return year.isHeld;
        }
        case CDispPattern::ELEMENT_ERA:
            return WriteEra(SCDateWord::ERASTYLE_KANJI);
        case CDispPattern::ELEMENT_ERA_SHORT:
            return WriteEra(SCDateWord::ERASTYLE_SHORT);
        case CDispPattern::ELEMENT_ERA_LETTER:
            return WriteEra(SCDateWord::ERASTYLE_LETTER);
        case CDispPattern::ELEMENT_JPNYEAR:
        case CDispPattern::ELEMENT_JPNYEAR_2:
        case CDispPattern::ELEMENT_JPNYEAR_GAN: {
            const SYear year = GetYear(true);
            if (!year.isHeld)
                return false;
            if (element == CDispPattern::ELEMENT_JPNYEAR_GAN)
                AppendYearOfEra(year.year);
            else
                text.AppendNumber(year.year, element == CDispPattern::ELEMENT_JPNYEAR ? 1 : 2);
            return true;
        }
        case CDispPattern::ELEMENT_MONTH:
            return WriteFigures(GetMonth(), 1);
        case CDispPattern::ELEMENT_MONTH_2:
            return WriteFigures(GetMonth(), 2);
        case CDispPattern::ELEMENT_DAY:
            return WriteFigures(GetDay(), 1);
        case CDispPattern::ELEMENT_DAY_2:
            return WriteFigures(GetDay(), 2);
        default:
            return false;
        }
    }

private:
    static constexpr DWORD UNSET = VCDate::DATE_UNSETTING;

    static std::string_view GetDelimiter(SCDeclareConstant::EDateDelimiter delimiter) noexcept
    {
        switch (delimiter) {
        case SCDeclareConstant::DATEDELIM_SLASH:
            return "/";
        case SCDeclareConstant::DATEDELIM_HYPHEN:
            return "-";
        case SCDeclareConstant::DATEDELIM_PERIOD:
            return ".";
        default:
            return {};
        }
    }

    SYear GetYear(bool isJapanese) const noexcept
    {
        SYear year;
        year.isHeld = isJapanese ? date.GetYearOfTheJpnCalendar(year.era, year.year)
                                 : date.GetYearOfTheGrgCalendar(year.year);
        return year;
    }

    SYear GetFiscalYear(bool isJapanese) const noexcept
    {
        SYear year;
        year.isHeld = isJapanese
                          ? date.GetFiscalYearOfTheJpnCalendar(startMonth, cutOffDate, year.era, year.year)
                          : date.GetFiscalYearOfTheGrgCalendar(startMonth, cutOffDate, year.year);
        return year;
    }

    SYear GetYearOfFiscalMonth(bool isJapanese) const noexcept
    {
        SYear year;
        DWORD month = 0;
        year.isHeld = isJapanese ? date.GetFiscalMonth(cutOffDate, year.era, year.year, month)
                                 : date.GetFiscalMonth(cutOffDate, year.year, month);
        return year;
    }

    DWORD GetMonth() const noexcept
    {
        DWORD month = 0;
        return date.GetMonth(month) ? month : UNSET;
    }

    DWORD GetDay() const noexcept
    {
        DWORD day = 0;
        return date.GetDay(day) ? day : UNSET;
    }

    DWORD GetFiscalMonth() const noexcept
    {
        DWORD month = 0;
        return date.GetFiscalMonth(cutOffDate, month) ? month : UNSET;
    }

    // Weeks depend on the first day of the week, which is not known here: they are those of objects that
    // hold them, and these pass over the criteria.
    template <typename TGive>
    DWORD GetWeek(TGive give) const noexcept
    {
        DWORD week = 0;
        const bool holdsWeeks =
            date.GetType() == VCDate::DATEOBJTYPE_WEEKNUM || date.GetType() == VCDate::DATEOBJTYPE_DAYSOFWEEK;
        return holdsWeeks && give(week) ? week : UNSET;
    }

    DWORD GetWeekOfYear(bool isFiscal) const noexcept
    {
        constexpr VCDate::EDaysOfTheWeek ANY = VCDate::DAYSOFWEEK_SUNDAY;
        return GetWeek([&](DWORD& week) {
            return isFiscal ? date.GetWeekOfTheFiscalYear(startMonth, cutOffDate, ANY, week)
                            : date.GetWeekOfTheYear(ANY, week);
        });
    }

    DWORD GetWeekOfMonth(bool isFiscal) const noexcept
    {
        constexpr VCDate::EDaysOfTheWeek ANY = VCDate::DAYSOFWEEK_SUNDAY;
        return GetWeek([&](DWORD& week) {
            return isFiscal ? date.GetWeekOfTheFiscalMonth(cutOffDate, ANY, week)
                            : date.GetWeekOfTheMonth(ANY, week);
        });
    }

    void AppendWord(SCDateWord::EWord word) noexcept { text.Append(SCDateWord::Get(word, codePage)); }

    void AppendYearOfEra(DWORD year) noexcept
    {
        if (year == 1)
            AppendWord(SCDateWord::WORD_FIRSTYEAR);
        else
            text.AppendNumber(year);
    }

    bool WriteFigures(DWORD number, std::size_t digits) noexcept
    {
        if (number == UNSET)
            return false;
        text.AppendNumber(number, digits);
        return true;
    }

    bool WriteNumber(DWORD number, SCDateWord::EWord unit) noexcept
    {
        if (number == UNSET)
            return false;
        text.AppendNumber(number);
        AppendWord(unit);
        return true;
    }

    bool WriteEra(SCDateWord::EEraStyle style) noexcept
    {
        const SYear year = GetYear(true);
        if (year.isHeld)
            text.Append(SCDateWord::GetEra(year.era, style, codePage));
        return year.isHeld;
    }

    bool WriteYear(const SStyle& style, const SYear& year, bool isFiscal) noexcept
    {
        if (!year.isHeld)
            return false;
        if (isFiscal && !style.isKanji)
            text.Append("FY");
        if (style.isJapanese) {
            text.Append(SCDateWord::GetEra(year.era, style.era, codePage));
            if (style.isKanji && style.era == SCDateWord::ERASTYLE_KANJI)
                AppendYearOfEra(year.year);
            else
                text.AppendNumber(year.year, style.isKanji ? 1 : 2);
        } else {
            text.AppendNumber(year.year, 4);
        }
        if (style.isKanji) {
            AppendWord(SCDateWord::WORD_YEAR);
            if (isFiscal)
                AppendWord(SCDateWord::WORD_FISCAL);
        }
        return true;
    }

    bool WriteDate(const SStyle& style, const SYear& year, DWORD month, DWORD day, bool isFiscal) noexcept
    {
        bool any = WriteYear(style, year, false);
        struct SPart
        {
            DWORD number;
            SCDateWord::EWord unit;
        };
        for (const SPart& part : {SPart{month, SCDateWord::WORD_MONTH}, SPart{day, SCDateWord::WORD_DAY}}) {
            if (part.number == UNSET)
                continue;
            if (any && !style.isKanji)
                text.Append("/");
            text.AppendNumber(part.number, style.isKanji ? 1 : 2);
            if (style.isKanji) {
                AppendWord(part.unit);
                if (isFiscal)
                    AppendWord(SCDateWord::WORD_FISCAL);
            }
            any = true;
        }
        return any;
    }

    bool WriteFiscalMonth(const SStyle& style) noexcept
    {
        return WriteDate(style, GetYearOfFiscalMonth(style.isJapanese), GetFiscalMonth(), UNSET, true);
    }

    bool WriteTerm(const SStyle& style, bool isHalf) noexcept
    {
        DWORD term = 0;
        const bool hasTerm = isHalf ? date.GetHalfTerm(startMonth, cutOffDate, term)
                                    : date.GetQuarterTerm(startMonth, cutOffDate, term);
        const bool any = WriteYear(style, GetFiscalYear(style.isJapanese), true);
        if (!hasTerm)
            return any;
        if (!style.isKanji) {
            text.Append(any ? " " : "");
            text.Append(isHalf ? "H" : "Q");
            text.AppendNumber(term);
        } else if (isHalf) {
            AppendWord(term == 1 ? SCDateWord::WORD_FIRSTHALF : SCDateWord::WORD_SECONDHALF);
        } else {
            AppendWord(SCDateWord::WORD_NUMBER);
            text.AppendNumber(term);
            AppendWord(SCDateWord::WORD_QUARTER);
        }
        return true;
    }

    bool WriteWeek(bool isKanji, DWORD week, bool any) noexcept
    {
        if (week == UNSET)
            return any;
        if (!isKanji) {
            text.Append(any ? " W" : "W");
            text.AppendNumber(week);
        } else {
            AppendWord(SCDateWord::WORD_NUMBER);
            text.AppendNumber(week);
            AppendWord(SCDateWord::WORD_WEEK);
        }
        return true;
    }

    bool WriteWeekOfYear(const SStyle& style, bool isFiscal) noexcept
    {
        const bool any = isFiscal ? WriteYear(style, GetFiscalYear(style.isJapanese), true)
                                  : WriteYear(style, GetYear(style.isJapanese), false);
        return WriteWeek(style.isKanji, GetWeekOfYear(isFiscal), any);
    }

    bool WriteWeekOfMonth(const SStyle& style, bool isFiscal) noexcept
    {
        const bool any = isFiscal ? WriteFiscalMonth(style)
                                  : WriteDate(style, GetYear(style.isJapanese), GetMonth(), UNSET, false);
        return WriteWeek(style.isKanji, GetWeekOfMonth(isFiscal), any);
    }

    // In kanji, without year.
    bool WriteMonthAndWeek(bool isFiscal, bool withMonth) noexcept
    {
        bool any = false;
        if (withMonth && WriteNumber(isFiscal ? GetFiscalMonth() : GetMonth(), SCDateWord::WORD_MONTH)) {
            if (isFiscal)
                AppendWord(SCDateWord::WORD_FISCAL);
            any = true;
        }
        return WriteWeek(true, GetWeekOfMonth(isFiscal), any);
    }

    bool WriteDayOfWeek() noexcept
    {
        VCDate::EDaysOfTheWeek day = VCDate::DAYSOFWEEK_UNSETTING;
        if (!date.GetDaysOfTheWeek(day))
            return false;
        AppendWord(static_cast<SCDateWord::EWord>(static_cast<DWORD>(SCDateWord::WORD_SUNDAY) + day));
        AppendWord(SCDateWord::WORD_DAYOFWEEK);
        return true;
    }

    const VCDate& date;
    DWORD startMonth;
    DWORD cutOffDate;
    int codePage;
    CText& text;
};

} // namespace

CConvertDate::CConvertDate(const SCDeclareConstant::SDateTypeInfo& typeInfo)
    : dataForm(typeInfo.form), delimiter(typeInfo.delimiter), kind(typeInfo.dispForm.kind),
      form(typeInfo.dispForm.form), option(typeInfo.dispForm.option), codePage(_getmbcp())
{
    const char* ignored = nullptr;
    const char* const text = typeInfo.dispForm.optionalForm;
    if (kind == SCDispForm::DATEKIND_OPTIONAL)
        pattern.Parse(std::string_view(text, strnlen(text, SCDeclareConstant::OPTIONALFORM_SIZE)),
                      CDispPattern::KIND_DATE, ignored);
}

bool CConvertDate::ConvertDateString(const VCDate& date, char* buffer, DWORD size, DWORD startMonth,
                                     DWORD cutOffDate) const noexcept
{
    CText text;
    CWriter writer(date, startMonth, cutOffDate, codePage, text);
    bool any = false;
    if (kind == SCDispForm::DATEKIND_OPTIONAL) {
        for (const CDispPattern::SElement& each : pattern.GetElements()) {
            if (each.element == CDispPattern::ELEMENT_LITERAL)
                text.Append(each.literal);
            else if (writer.WriteElement(each.element))
                any = true;
        }
    } else if (kind == SCDispForm::DATEKIND_ASITIS) {
        any = writer.WriteDataForm(dataForm, delimiter);
    } else if (kind != SCDeclareConstant::UNSETTING) {
        any = writer.WriteForm(form, option == SCDispForm::OPTION_FISCAL);
    }
    return any && text.CopyTo(buffer, size);
}

DWORD CConvertDate::GetMaxLenOfDateString() const noexcept
{
    const auto lenOfKanji = static_cast<DWORD>(SCDateWord::Get(SCDateWord::WORD_YEAR, codePage).size());
    if (kind != SCDispForm::DATEKIND_OPTIONAL) {
        // The most kanji are those of a quarter: an era and six more, its year and one digit; the kanji for
        // the first year takes the place of up to four digits. The most digits are those of a whole day.
        constexpr DWORD KANJI = 8;
        constexpr DWORD DIGITS = 8;
        return KANJI * lenOfKanji + DIGITS;
    }
    DWORD len = 0;
    for (const CDispPattern::SElement& each : pattern.GetElements()) {
        switch (each.element) {
        case CDispPattern::ELEMENT_LITERAL:
            len += static_cast<DWORD>(each.literal.size());
            break;
        case CDispPattern::ELEMENT_ERA:
            len += 2 * lenOfKanji;
            break;
        case CDispPattern::ELEMENT_ERA_SHORT:
            len += lenOfKanji;
            break;
        default: // numbers: of years, those of Reiwa among them, four digits
            len += 4;
            break;
        }
    }
    return len;
}

bool CConvertDate::IsUsedGrgCalendarForOptionalForm() const noexcept
{
    return pattern.Has(CDispPattern::ELEMENT_GRGYEAR) || pattern.Has(CDispPattern::ELEMENT_GRGYEAR_2);
}

bool CConvertDate::IsUsedJpnCalendarForOptionalForm() const noexcept
{
    return pattern.Has(CDispPattern::ELEMENT_JPNYEAR) || pattern.Has(CDispPattern::ELEMENT_JPNYEAR_2) ||
           pattern.Has(CDispPattern::ELEMENT_JPNYEAR_GAN);
}

bool CConvertDate::IsUsedMonthForOptionalForm() const noexcept
{
    return pattern.Has(CDispPattern::ELEMENT_MONTH) || pattern.Has(CDispPattern::ELEMENT_MONTH_2);
}

bool CConvertDate::IsUsedDayForOptionalForm() const noexcept
{
    return pattern.Has(CDispPattern::ELEMENT_DAY) || pattern.Has(CDispPattern::ELEMENT_DAY_2);
}

} // namespace NSKZ::NSKZCore
