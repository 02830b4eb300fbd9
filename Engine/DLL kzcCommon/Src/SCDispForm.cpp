#include "SCDispForm.h"

#include "CConvertDate.h"
#include "CConvertTime.h"
#include "CDate.h"
#include "CDaysOfTheWeek.h"
#include "CDispPattern.h"
#include "CWeekNum.h"

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

namespace NSKZ::NSKZCore {

namespace {

// clang-format off
constexpr std::array<SCDispForm::SNamedForm, 67> DATE_FORMS = {{
    {"as-it-is", SCDispForm::DATEKIND_ASITIS, 0, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"year", SCDispForm::DATEKIND_OPTIONAL, 0, SCDispForm::OPTION_CALENDAR, "{yyyy}", SCDispForm::YEARKIND_GREGORIAN},
    {"japanese-year", SCDispForm::DATEKIND_OPTIONAL, 0, SCDispForm::OPTION_CALENDAR, "{ggg}{E}", SCDispForm::YEARKIND_JAPANESE},
    {"letter-year", SCDispForm::DATEKIND_OPTIONAL, 0, SCDispForm::OPTION_CALENDAR, "{g}{e}", SCDispForm::YEARKIND_JAPANESE},
    {"year-month-day", SCDispForm::DATEKIND_DATE, 0, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_GREGORIAN},
    {"year-month-day-kanji", SCDispForm::DATEKIND_DATE, 1, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_GREGORIAN},
    {"japanese-year-month-day", SCDispForm::DATEKIND_DATE, 2, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"japanese-year-month-day-figures", SCDispForm::DATEKIND_DATE, 3, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-year-month-day", SCDispForm::DATEKIND_DATE, 4, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-year-month-day-kanji", SCDispForm::DATEKIND_DATE, 5, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"year-month", SCDispForm::DATEKIND_DATE, 6, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_GREGORIAN},
    {"year-month-kanji", SCDispForm::DATEKIND_DATE, 7, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_GREGORIAN},
    {"japanese-year-month", SCDispForm::DATEKIND_DATE, 8, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"japanese-year-month-figures", SCDispForm::DATEKIND_DATE, 9, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-year-month", SCDispForm::DATEKIND_DATE, 10, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-year-month-kanji", SCDispForm::DATEKIND_DATE, 11, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"fiscal-month", SCDispForm::DATEKIND_DATE, 6, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_GREGORIAN},
    {"fiscal-month-kanji", SCDispForm::DATEKIND_DATE, 7, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_GREGORIAN},
    {"japanese-fiscal-month", SCDispForm::DATEKIND_DATE, 8, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_JAPANESE},
    {"japanese-fiscal-month-figures", SCDispForm::DATEKIND_DATE, 9, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-fiscal-month", SCDispForm::DATEKIND_DATE, 10, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-fiscal-month-kanji", SCDispForm::DATEKIND_DATE, 11, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_JAPANESE},
    {"fiscal-half", SCDispForm::DATEKIND_TERM, 101, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_GREGORIAN},
    {"fiscal-half-kanji", SCDispForm::DATEKIND_TERM, 102, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_GREGORIAN},
    {"japanese-fiscal-half", SCDispForm::DATEKIND_TERM, 103, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"japanese-fiscal-half-figures", SCDispForm::DATEKIND_TERM, 104, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-fiscal-half", SCDispForm::DATEKIND_TERM, 105, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-fiscal-half-kanji", SCDispForm::DATEKIND_TERM, 106, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"fiscal-quarter", SCDispForm::DATEKIND_TERM, 107, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_GREGORIAN},
    {"fiscal-quarter-kanji", SCDispForm::DATEKIND_TERM, 108, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_GREGORIAN},
    {"japanese-fiscal-quarter", SCDispForm::DATEKIND_TERM, 109, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"japanese-fiscal-quarter-figures", SCDispForm::DATEKIND_TERM, 110, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-fiscal-quarter", SCDispForm::DATEKIND_TERM, 111, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-fiscal-quarter-kanji", SCDispForm::DATEKIND_TERM, 112, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"week-of-year", SCDispForm::DATEKIND_WEEK, 201, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_GREGORIAN},
    {"week-of-year-kanji", SCDispForm::DATEKIND_WEEK, 202, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_GREGORIAN},
    {"japanese-week-of-year", SCDispForm::DATEKIND_WEEK, 203, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"japanese-week-of-year-figures", SCDispForm::DATEKIND_WEEK, 204, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-week-of-year", SCDispForm::DATEKIND_WEEK, 205, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-week-of-year-kanji", SCDispForm::DATEKIND_WEEK, 206, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"week-of-fiscal-year", SCDispForm::DATEKIND_WEEK, 201, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_GREGORIAN},
    {"week-of-fiscal-year-kanji", SCDispForm::DATEKIND_WEEK, 202, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_GREGORIAN},
    {"japanese-week-of-fiscal-year", SCDispForm::DATEKIND_WEEK, 203, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_JAPANESE},
    {"japanese-week-of-fiscal-year-figures", SCDispForm::DATEKIND_WEEK, 204, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-week-of-fiscal-year", SCDispForm::DATEKIND_WEEK, 205, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-week-of-fiscal-year-kanji", SCDispForm::DATEKIND_WEEK, 206, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_JAPANESE},
    {"week-of-month", SCDispForm::DATEKIND_WEEK, 301, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_GREGORIAN},
    {"week-of-month-kanji", SCDispForm::DATEKIND_WEEK, 302, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_GREGORIAN},
    {"japanese-week-of-month", SCDispForm::DATEKIND_WEEK, 303, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"japanese-week-of-month-figures", SCDispForm::DATEKIND_WEEK, 304, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-week-of-month", SCDispForm::DATEKIND_WEEK, 305, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-week-of-month-kanji", SCDispForm::DATEKIND_WEEK, 306, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_JAPANESE},
    {"week-of-fiscal-month", SCDispForm::DATEKIND_WEEK, 301, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_GREGORIAN},
    {"week-of-fiscal-month-kanji", SCDispForm::DATEKIND_WEEK, 302, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_GREGORIAN},
    {"japanese-week-of-fiscal-month", SCDispForm::DATEKIND_WEEK, 303, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_JAPANESE},
    {"japanese-week-of-fiscal-month-figures", SCDispForm::DATEKIND_WEEK, 304, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-week-of-fiscal-month", SCDispForm::DATEKIND_WEEK, 305, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_JAPANESE},
    {"letter-week-of-fiscal-month-kanji", SCDispForm::DATEKIND_WEEK, 306, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_JAPANESE},
    {"month-week", SCDispForm::DATEKIND_WEEK, 401, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"fiscal-month-week", SCDispForm::DATEKIND_WEEK, 401, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_NONE},
    {"month-week-weekday", SCDispForm::DATEKIND_DAYSOFWEEK, 402, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"fiscal-month-week-weekday", SCDispForm::DATEKIND_DAYSOFWEEK, 402, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_NONE},
    {"week-weekday", SCDispForm::DATEKIND_DAYSOFWEEK, 403, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"fiscal-week-weekday", SCDispForm::DATEKIND_DAYSOFWEEK, 403, SCDispForm::OPTION_FISCAL, "", SCDispForm::YEARKIND_NONE},
    {"month", SCDispForm::DATEKIND_OPTIONAL, 0, SCDispForm::OPTION_CALENDAR, "{m}", SCDispForm::YEARKIND_NONE},
    {"month-day", SCDispForm::DATEKIND_OPTIONAL, 0, SCDispForm::OPTION_CALENDAR, "{mm}/{dd}", SCDispForm::YEARKIND_NONE},
    {"day-of-month", SCDispForm::DATEKIND_DATE, 12, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
}};

constexpr std::array<SCDispForm::SNamedForm, 19> TIME_FORMS = {{
    {"as-it-is", SCDispForm::TIMEKIND_ASITIS, 0, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"hour-minute-second", SCDispForm::TIMEKIND_EXACT, 0, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"hour-minute-second-12", SCDispForm::TIMEKIND_EXACT, 1, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"hour-minute", SCDispForm::TIMEKIND_EXACT, 2, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"hour-minute-12", SCDispForm::TIMEKIND_EXACT, 3, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"5-minutes", SCDispForm::TIMEKIND_STEP, 4, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"5-minutes-12", SCDispForm::TIMEKIND_STEP, 5, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"10-minutes", SCDispForm::TIMEKIND_STEP, 6, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"10-minutes-12", SCDispForm::TIMEKIND_STEP, 7, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"15-minutes", SCDispForm::TIMEKIND_STEP, 8, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"15-minutes-12", SCDispForm::TIMEKIND_STEP, 9, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"20-minutes", SCDispForm::TIMEKIND_STEP, 10, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"20-minutes-12", SCDispForm::TIMEKIND_STEP, 11, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"30-minutes", SCDispForm::TIMEKIND_STEP, 12, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"30-minutes-12", SCDispForm::TIMEKIND_STEP, 13, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"minute-second", SCDispForm::TIMEKIND_EXACT, 14, SCDispForm::OPTION_CALENDAR, "", SCDispForm::YEARKIND_NONE},
    {"hour", SCDispForm::TIMEKIND_OPTIONAL, 0, SCDispForm::OPTION_CALENDAR, "{h}", SCDispForm::YEARKIND_NONE},
    {"morning-afternoon", SCDispForm::TIMEKIND_OPTIONAL, 0, SCDispForm::OPTION_CALENDAR, "{ap}", SCDispForm::YEARKIND_NONE},
    {"minute", SCDispForm::TIMEKIND_OPTIONAL, 0, SCDispForm::OPTION_CALENDAR, "{n}", SCDispForm::YEARKIND_NONE},
}};
// clang-format on

// Whether a form has a fiscal counterpart, which `option` chooses.
bool HasFiscalCounterpart(DWORD kind, DWORD form) noexcept
{
    return std::any_of(
        DATE_FORMS.begin(), DATE_FORMS.end(), [kind, form](const SCDispForm::SNamedForm& each) {
            return each.kind == kind && each.form == form && each.option == SCDispForm::OPTION_FISCAL;
        });
}

template <std::size_t COUNT>
const SCDispForm::SNamedForm* FindName(const std::array<SCDispForm::SNamedForm, COUNT>& forms,
                                       std::string_view name) noexcept
{
    const auto found = std::find_if(forms.begin(), forms.end(),
                                    [name](const SCDispForm::SNamedForm& each) { return each.name == name; });
    return found == forms.end() ? nullptr : &*found;
}

// Finds the name of a form. The pattern counts where the kind has one.
template <std::size_t COUNT, typename TDispForm>
bool FindForm(const std::array<SCDispForm::SNamedForm, COUNT>& forms, const TDispForm& dispForm,
              DWORD kindWithPattern, DWORD option, const char*& name) noexcept
{
    for (const SCDispForm::SNamedForm& each : forms) {
        if (each.kind != dispForm.kind || each.option != option)
            continue;
        TDispForm named = dispForm;
        if (each.kind == kindWithPattern) {
            named.SetOptionalForm(each.optionalForm);
            if (!(named == dispForm))
                continue;
        } else if (each.kind != 0 && each.form != dispForm.form) { // 0 has no forms
            continue;
        }
        name = each.name;
        return true;
    }
    return false;
}

// The forms of weeks and of days of the week.
constexpr DWORD FORM_WEEKOFYEAR_FIRST = 201;
constexpr DWORD FORM_WEEKOFYEAR_LAST = 206;
constexpr DWORD FORM_WEEKOFMONTH_FIRST = 301;
constexpr DWORD FORM_WEEKOFMONTH_LAST = 401;
constexpr DWORD FORM_DAYSOFWEEK_FIRST = 402;
constexpr DWORD FORM_DAYSOFWEEK_LAST = 403;

constexpr DWORD EXAMPLE_STARTMONTH = 4;
constexpr DWORD EXAMPLE_CUTOFFDATE = VCDate::MAXDAY_OF_MONTH;
constexpr VCDate::EDaysOfTheWeek EXAMPLE_DAYSOFWEEK = VCDate::DAYSOFWEEK_SUNDAY;

CDate MakeExampleDate() noexcept
{
    CDate date;
    date.SetYearOfTheGrgCalendar(2024);
    date.SetMonth(7);
    date.SetDay(15);
    return date;
}

// The week of the example that a form shows; null for a form that shows none.
std::unique_ptr<VCDate> MakeExampleWeek(const SCDeclareConstant::SDateDispForm& dispForm)
{
    const CDate date = MakeExampleDate();
    const bool isFiscal = dispForm.option == SCDispForm::OPTION_FISCAL;
    DWORD year = 0;
    DWORD month = 0;
    DWORD week = 0;
    date.GetYearOfTheGrgCalendar(year);
    date.GetMonth(month);
    if (dispForm.form >= FORM_WEEKOFYEAR_FIRST && dispForm.form <= FORM_WEEKOFYEAR_LAST) {
        auto made = std::make_unique<CWeekNum>(isFiscal ? CWeekNum::WEEKNUMTYPE_FISCALYEAR
                                                        : CWeekNum::WEEKNUMTYPE_YEAR);
        if (isFiscal) {
            date.GetFiscalYearOfTheGrgCalendar(EXAMPLE_STARTMONTH, EXAMPLE_CUTOFFDATE, year);
            date.GetWeekOfTheFiscalYear(EXAMPLE_STARTMONTH, EXAMPLE_CUTOFFDATE, EXAMPLE_DAYSOFWEEK, week);
            made->SetFiscalYearOfTheGrgCalendar(year);
        } else {
            date.GetWeekOfTheYear(EXAMPLE_DAYSOFWEEK, week);
            made->SetYearOfTheGrgCalendar(year);
        }
        made->SetWeekNum(week);
        return made;
    }

    if (isFiscal)
        date.GetFiscalMonth(EXAMPLE_CUTOFFDATE, year, month);
    if (isFiscal)
        date.GetWeekOfTheFiscalMonth(EXAMPLE_CUTOFFDATE, EXAMPLE_DAYSOFWEEK, week);
    else
        date.GetWeekOfTheMonth(EXAMPLE_DAYSOFWEEK, week);
    if (dispForm.form >= FORM_WEEKOFMONTH_FIRST && dispForm.form <= FORM_WEEKOFMONTH_LAST) {
        auto made = std::make_unique<CWeekNum>(isFiscal ? CWeekNum::WEEKNUMTYPE_FISCALMONTH
                                                        : CWeekNum::WEEKNUMTYPE_MONTH);
        made->SetYearOfTheGrgCalendar(year);
        if (isFiscal)
            made->SetFiscalMonth(month);
        else
            made->SetMonth(month);
        made->SetWeekNum(week);
        return made;
    }
    if (dispForm.form >= FORM_DAYSOFWEEK_FIRST && dispForm.form <= FORM_DAYSOFWEEK_LAST) {
        VCDate::EDaysOfTheWeek day = VCDate::DAYSOFWEEK_UNSETTING;
        date.GetDaysOfTheWeek(day);
        auto made = std::make_unique<CDaysOfTheWeek>(isFiscal ? CDaysOfTheWeek::DAYSOFWEEKTYPE_FISCALMONTH
                                                              : CDaysOfTheWeek::DAYSOFWEEKTYPE_MONTH);
        if (isFiscal)
            made->SetFiscalMonth(month);
        else
            made->SetMonth(month);
        made->SetWeekNum(week);
        made->SetDaysOfTheWeek(day);
        return made;
    }
    return nullptr;
}

} // namespace

std::span<const SCDispForm::SNamedForm> SCDispForm::GetDateForms() noexcept
{
    return DATE_FORMS;
}

std::span<const SCDispForm::SNamedForm> SCDispForm::GetTimeForms() noexcept
{
    return TIME_FORMS;
}

bool SCDispForm::FindDateForm(std::string_view name, SCDeclareConstant::SDateDispForm& dispForm) noexcept
{
    const SNamedForm* const found = FindName(DATE_FORMS, name);
    if (found == nullptr)
        return false;
    dispForm.kind = found->kind;
    dispForm.form = found->form;
    dispForm.option = found->option;
    return dispForm.SetOptionalForm(found->optionalForm);
}

bool SCDispForm::FindTimeForm(std::string_view name, SCDeclareConstant::STimeDispForm& dispForm) noexcept
{
    const SNamedForm* const found = FindName(TIME_FORMS, name);
    if (found == nullptr)
        return false;
    dispForm.kind = found->kind;
    dispForm.form = found->form;
    return dispForm.SetOptionalForm(found->optionalForm);
}

bool SCDispForm::FindNameOfDateForm(const SCDeclareConstant::SDateDispForm& dispForm,
                                    const char*& name) noexcept
{
    const bool isFiscal =
        dispForm.option == OPTION_FISCAL && HasFiscalCounterpart(dispForm.kind, dispForm.form);
    return dispForm.option != SCDeclareConstant::UNSETTING && dispForm.form != SCDeclareConstant::UNSETTING &&
           FindForm(DATE_FORMS, dispForm, DATEKIND_OPTIONAL, isFiscal ? OPTION_FISCAL : OPTION_CALENDAR,
                    name);
}

bool SCDispForm::FindNameOfTimeForm(const SCDeclareConstant::STimeDispForm& dispForm,
                                    const char*& name) noexcept
{
    return dispForm.form != SCDeclareConstant::UNSETTING &&
           FindForm(TIME_FORMS, dispForm, TIMEKIND_OPTIONAL, OPTION_CALENDAR, name);
}

bool SCDispForm::MakeOptionalDateForm(std::string_view pattern, SCDeclareConstant::SDateDispForm& dispForm,
                                      const char*& reason)
{
    CDispPattern parsed;
    SCDeclareConstant::SDateDispForm made;
    made.kind = DATEKIND_OPTIONAL;
    made.form = 0;
    made.option = OPTION_CALENDAR;
    if (!parsed.Parse(pattern, CDispPattern::KIND_DATE, reason) || !made.SetOptionalForm(pattern))
        return false;
    dispForm = made;
    return true;
}

bool SCDispForm::MakeOptionalTimeForm(std::string_view pattern, SCDeclareConstant::STimeDispForm& dispForm,
                                      const char*& reason)
{
    CDispPattern parsed;
    SCDeclareConstant::STimeDispForm made;
    made.kind = TIMEKIND_OPTIONAL;
    made.form = 0;
    if (!parsed.Parse(pattern, CDispPattern::KIND_TIME, reason) || !made.SetOptionalForm(pattern))
        return false;
    dispForm = made;
    return true;
}

std::string SCDispForm::MakeExample(const SCDeclareConstant::SDateTypeInfo& typeInfo)
{
    const CConvertDate convert(typeInfo);
    std::vector<char> text(convert.GetMaxLenOfDateString() + 1);
    const CDate date = MakeExampleDate();
    const std::unique_ptr<VCDate> week =
        typeInfo.dispForm.kind != DATEKIND_ASITIS && typeInfo.dispForm.kind != DATEKIND_OPTIONAL
            ? MakeExampleWeek(typeInfo.dispForm)
            : nullptr;
    const VCDate& shown = week == nullptr ? static_cast<const VCDate&>(date) : *week;
    return convert.ConvertDateString(shown, text.data(), static_cast<DWORD>(text.size()), EXAMPLE_STARTMONTH,
                                     EXAMPLE_CUTOFFDATE)
               ? std::string(text.data())
               : std::string();
}

std::string SCDispForm::MakeExample(const SCDeclareConstant::STimeTypeInfo& typeInfo)
{
    const CConvertTime convert(typeInfo);
    std::vector<char> text(convert.GetMaxLenOfTimeString() + 1);
    const DWORD form = typeInfo.dispForm.form;
    DWORD step = 1;
    constexpr std::array<DWORD, 5> STEPS = {5, 10, 15, 20, 30};
    if (typeInfo.dispForm.kind == TIMEKIND_STEP && form >= 4 && form <= 13)
        step = STEPS[(form - 4) / 2];
    CDate time;
    time.SetHour(13);
    time.SetMinute(5 / step * step);
    time.SetSecond(9);
    return convert.ConvertTimeString(time, text.data(), static_cast<DWORD>(text.size()))
               ? std::string(text.data())
               : std::string();
}

} // namespace NSKZ::NSKZCore
