#include "CModelDate.h"

#include "CConvertDate.h"
#include "CConvertTime.h"
#include "CDate.h"
#include "CDaysOfTheWeek.h"
#include "CFiscalMonth.h"
#include "CFiscalYear.h"
#include "CHalfTerm.h"
#include "CQuarterTerm.h"
#include "CTimeBasedOnNoon.h"
#include "CWeekNum.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <chrono>

namespace NSKZ::Test {

using NSKZCore::SCDeclareConstant;
using NSKZCore::SCKZCoreCom;
using NSKZCore::VCDate;

namespace {

using std::chrono::sys_days;
using Part = SModelDate::Part;

sys_days ToDay(int year, int month, int day)
{
    return std::chrono::year{year} / month / day;
}

int GetLastDay(int year, int month)
{
    const auto last = std::chrono::year{year} / month / std::chrono::last;
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

long ToNumber(sys_days day)
{
    return day.time_since_epoch().count();
}

struct SEra
{
    int era;
    char letter;
    const char* kanji; // in Shift-JIS
    sys_days first;
};

const std::array<SEra, 5>& GetEras()
{
    static const std::array<SEra, 5> ERAS = {{
        {VCDate::ERA_MEIJI, 'M', "\x96\xbe\x8e\xa1", ToDay(1868, 10, 23)},
        {VCDate::ERA_TAISHO, 'T', "\x91\xe5\x90\xb3", ToDay(1912, 7, 30)},
        {VCDate::ERA_SHOWA, 'S', "\x8f\xba\x98\x61", ToDay(1926, 12, 25)},
        {VCDate::ERA_HEISEI, 'H', "\x95\xbd\x90\xac", ToDay(1989, 1, 8)},
        {VCDate::ERA_REIWA, 'R', "\x97\xdf\x98\x61", ToDay(2019, 5, 1)},
    }};
    return ERAS;
}

sys_days GetFirstDayOfEra(int era)
{
    for (const SEra& one : GetEras()) {
        if (one.era == era)
            return one.first;
    }
    return sys_days::min();
}

int GetYearOf(sys_days day)
{
    return static_cast<int>(std::chrono::year_month_day(day).year());
}

std::optional<SModelEraYear> GetEraYearOf(sys_days day)
{
    std::optional<SModelEraYear> found;
    for (const SEra& era : GetEras()) {
        if (era.first <= day)
            found = SModelEraYear{era.era, GetYearOf(day) - GetYearOf(era.first) + 1};
    }
    return found;
}

// A fiscal month ends on the cut-off day, or on the last day of its month.
sys_days GetLastDayOfFiscalMonth(int year, int month, const SModelCriteria& criteria)
{
    return ToDay(year, month, std::min(criteria.cutOffDate, GetLastDay(year, month)));
}

sys_days GetFirstDayOfFiscalMonth(int year, int month, const SModelCriteria& criteria)
{
    const int yearBefore = month == 1 ? year - 1 : year;
    const int monthBefore = month == 1 ? 12 : month - 1;
    return GetLastDayOfFiscalMonth(yearBefore, monthBefore, criteria) + std::chrono::days{1};
}

int GetPlaceInFiscalYear(int month, const SModelCriteria& criteria)
{
    return (month - criteria.startMonth + 12) % 12;
}

// The first day of the fiscal month that stands at a place of the fiscal year.
sys_days GetFirstDayInFiscalYear(int fiscalYear, int place, const SModelCriteria& criteria)
{
    const int month = criteria.startMonth + place;
    return GetFirstDayOfFiscalMonth(fiscalYear + (month - 1) / 12, (month - 1) % 12 + 1, criteria);
}

int GetPlaceInWeek(int dayOfWeek, const SModelCriteria& criteria)
{
    return (dayOfWeek - criteria.firstDayOfWeek + 7) % 7;
}

int GetDayOfWeekOf(sys_days day)
{
    return static_cast<int>(std::chrono::weekday(day).c_encoding());
}

// Week 1 is the one that the first day of the stretch lies in.
int GetWeekOf(sys_days day, sys_days firstOfStretch, const SModelCriteria& criteria)
{
    const int before = GetPlaceInWeek(GetDayOfWeekOf(firstOfStretch), criteria);
    return static_cast<int>((day - firstOfStretch).count() + before) / 7 + 1;
}

sys_days GetFirstDayOfWeek(int week, sys_days firstOfStretch, const SModelCriteria& criteria)
{
    const int before = GetPlaceInWeek(GetDayOfWeekOf(firstOfStretch), criteria);
    return firstOfStretch + std::chrono::days{std::max(0, (week - 1) * 7 - before)};
}

// There are no others.
Part ToYear(int year)
{
    return year >= 1 && year <= 9999 ? Part(year) : Part();
}

// What of stretches that begin on one day comes first.
enum ERank
{
    RANK_FISCALYEAR,
    RANK_YEAR,
    RANK_HALFTERM,
    RANK_QUARTERTERM,
    RANK_FISCALMONTH,
    RANK_MONTH,
    RANK_WEEK,
    RANK_DAY,
};

// ---- Texts

class CTextReader
{
public:
    explicit CTextReader(const std::string& textToRead) : text(textToRead) {}

    bool IsAtEnd() const { return pos == text.size(); }
    bool Take(const std::string& word)
    {
        if (text.compare(pos, word.size(), word) != 0)
            return false;
        pos += word.size();
        return true;
    }
    void TakeSpaces()
    {
        while (Take(" "))
            ;
    }
    Part TakeNumber(std::size_t minDigits, std::size_t maxDigits)
    {
        std::size_t end = pos;
        while (end < text.size() && text[end] >= '0' && text[end] <= '9')
            ++end;
        const std::size_t digits = end - pos;
        if (digits < minDigits || digits > maxDigits)
            return {};
        const int number = std::stoi(text.substr(pos, digits));
        pos = end;
        return number;
    }
    // Of the digits that follow just so many.
    Part TakeDigits(std::size_t digits)
    {
        if (pos + digits > text.size())
            return {};
        for (std::size_t at = pos; at < pos + digits; ++at) {
            if (text[at] < '0' || text[at] > '9')
                return {};
        }
        const int number = std::stoi(text.substr(pos, digits));
        pos += digits;
        return number;
    }
    bool TakeAnyCase(const std::string& word)
    {
        if (pos + word.size() > text.size())
            return false;
        for (std::size_t at = 0; at < word.size(); ++at) {
            if (std::toupper(static_cast<unsigned char>(text[pos + at])) != word[at])
                return false;
        }
        pos += word.size();
        return true;
    }

private:
    const std::string& text;
    std::size_t pos = 0;
};

const std::string YEAR_SIGN = "\x94\x4e";
const std::string MONTH_SIGN = "\x8c\x8e";
const std::string DAY_SIGN = "\x93\xfa";
const std::string FIRST_YEAR_SIGN = "\x8c\xb3";

// The order of the elements: y a year, z one of two digits, j one of an era, m, d.
std::string GetElements(SCDeclareConstant::EDateDataForm form)
{
    switch (form) {
    case SCDeclareConstant::DATEFORM_YMD:
        return "ymd";
    case SCDeclareConstant::DATEFORM_MDY:
        return "mdy";
    case SCDeclareConstant::DATEFORM_DMY:
        return "dmy";
    case SCDeclareConstant::DATEFORM_YM:
        return "ym";
    case SCDeclareConstant::DATEFORM_MD:
        return "md";
    case SCDeclareConstant::DATEFORM_JYMD:
        return "jmd";
    case SCDeclareConstant::DATEFORM_Y:
        return "y";
    case SCDeclareConstant::DATEFORM_JYM:
        return "jm";
    case SCDeclareConstant::DATEFORM_JY:
        return "j";
    case SCDeclareConstant::DATEFORM_YMD_2:
        return "zmd";
    case SCDeclareConstant::DATEFORM_MDY_2:
        return "mdz";
    case SCDeclareConstant::DATEFORM_DMY_2:
        return "dmz";
    default:
        return "zm";
    }
}

bool TakeEraYear(CTextReader& reader, bool withoutDelimiter, SModelDate& date)
{
    const SEra* found = nullptr;
    for (const SEra& era : GetEras()) {
        const std::string kanji = era.kanji;
        if (reader.TakeAnyCase(std::string(1, era.letter)) || reader.Take(kanji) ||
            reader.Take(kanji.substr(0, 2))) {
            found = &era;
            break;
        }
    }
    if (found == nullptr)
        return false;
    Part year = 1;
    if (!reader.Take(FIRST_YEAR_SIGN))
        year = withoutDelimiter ? reader.TakeDigits(2) : reader.TakeNumber(1, 2);
    if (!year || *year < 1)
        return false;
    date.eraYear = {found->era, *year};
    date.year = GetYearOf(found->first) + *year - 1;
    return true;
}

Part ReadYear(CTextReader& reader, bool ofTwoDigits, bool withoutDelimiter)
{
    Part year;
    if (!ofTwoDigits)
        year = withoutDelimiter ? reader.TakeDigits(4) : reader.TakeNumber(4, 4);
    if (year || (withoutDelimiter && !ofTwoDigits))
        return year;
    year = withoutDelimiter ? reader.TakeDigits(2) : reader.TakeNumber(2, 2);
    if (year)
        *year += *year >= 50 ? 1900 : 2000;
    return year;
}

// Whether the parts are a real day, or as much of one as they are; and of the era, if there is one.
bool IsReal(SModelDate& date)
{
    if ((date.year && (*date.year < 1 || *date.year > 9999)) ||
        (date.month && (*date.month < 1 || *date.month > 12)))
        return false;
    if (date.day && (*date.day < 1 || *date.day > GetLastDay(date.year.value_or(2000), *date.month)))
        return false;
    if (date.eraYear.era == 0)
        return true;
    const int firstMonth = date.month.value_or(1);
    const int lastMonth = date.month.value_or(12);
    const sys_days first = ToDay(*date.year, firstMonth, date.day.value_or(1));
    const sys_days last = ToDay(*date.year, lastMonth, date.day.value_or(GetLastDay(*date.year, lastMonth)));
    // The days on which Meiji and Taisho ended were so written, though they are the first of the next era.
    if (date.day) {
        for (std::size_t next = 1; next < 3; ++next) {
            if (GetEras()[next].first == first && GetEras()[next - 1].era == date.eraYear.era)
                date.eraYear = {GetEras()[next].era, 1};
        }
    }
    for (sys_days day = first; day <= last; day += std::chrono::days{1}) {
        const std::optional<SModelEraYear> ofDay = GetEraYearOf(day);
        if (ofDay && ofDay->era == date.eraYear.era)
            return true;
    }
    return false;
}

} // namespace

std::optional<SModelDate> SModelDate::ReadDate(const std::string& text,
                                               const SCDeclareConstant::SDateTypeInfo& info)
{
    const bool isKanji = info.delimiter == SCDeclareConstant::DATEDELIM_KANJI;
    const bool isBare = info.delimiter == SCDeclareConstant::DATEDELIM_NONE;
    const char* const DELIMITERS[] = {"", "/", "-", ".", ""};
    const std::string delimiter = DELIMITERS[info.delimiter];
    CTextReader reader(text);
    SModelDate date;
    bool isFirst = true;
    for (const char element : GetElements(info.form)) {
        if (!isFirst && !reader.Take(delimiter))
            return {};
        isFirst = false;
        if (element == 'j') {
            if (!TakeEraYear(reader, isBare, date))
                return {};
        } else if (element == 'y' || element == 'z') {
            date.year = ReadYear(reader, element == 'z', isBare);
            if (!date.year)
                return {};
        } else {
            Part& part = element == 'm' ? date.month : date.day;
            part = isBare ? reader.TakeDigits(2) : reader.TakeNumber(1, 2);
            if (!part)
                return {};
        }
        const std::string& sign = element == 'm' ? MONTH_SIGN : element == 'd' ? DAY_SIGN : YEAR_SIGN;
        if (isKanji && !reader.Take(sign))
            return {};
    }
    if (!reader.IsAtEnd() || !IsReal(date))
        return {};
    return date;
}

std::optional<SModelDate> SModelDate::ReadTime(const std::string& text,
                                               const SCDeclareConstant::STimeTypeInfo& info)
{
    const bool has12Hours =
        info.form == SCDeclareConstant::TIMEFORM_HMS_12 || info.form == SCDeclareConstant::TIMEFORM_HM_12;
    const bool hasSecond =
        info.form == SCDeclareConstant::TIMEFORM_HMS || info.form == SCDeclareConstant::TIMEFORM_HMS_12;
    CTextReader reader(text);
    Part half;
    const auto takeHalf = [&] {
        for (const auto& [word, number] : {std::pair("AM", 0), std::pair("\x8c\xdf\x91\x4f", 0),
                                           std::pair("PM", 1), std::pair("\x8c\xdf\x8c\xe3", 1)}) {
            if (!half && (reader.TakeAnyCase(word) || reader.Take(word)))
                half = number;
        }
    };
    if (has12Hours) {
        takeHalf();
        if (half)
            reader.TakeSpaces();
    }
    SModelDate time;
    time.hour = reader.TakeNumber(1, 2);
    const bool isKanji = time.hour && reader.Take("\x8e\x9e");
    if (!time.hour || (!isKanji && !reader.Take(":")))
        return {};
    time.minute = reader.TakeNumber(isKanji ? 1 : 2, 2);
    if (!time.minute || (isKanji && !reader.Take("\x95\xaa")))
        return {};
    if (hasSecond) {
        if (!isKanji && !reader.Take(":"))
            return {};
        time.second = reader.TakeNumber(isKanji ? 1 : 2, 2);
        if (!time.second || (isKanji && !reader.Take("\x95\x62")))
            return {};
    }
    if (has12Hours && !half) {
        reader.TakeSpaces();
        takeHalf();
    }
    if (!reader.IsAtEnd() || *time.hour > (has12Hours ? 12 : 47) || *time.minute > 59 ||
        time.second.value_or(0) > 59 || (has12Hours && !half))
        return {};
    if (has12Hours)
        time.hour = *time.hour % 12 + 12 * *half;
    return time;
}

// ---- The order

// What has a year stands by its first day, of those of one day the longer first; what has none stands in
// front, by its parts from the greatest to the smallest, each absent one before all there are.
std::optional<std::vector<long>> SModelDate::GetOrder(const SModelCriteria& criteria) const
{
    if (!year) {
        const bool isFiscal = kind == KIND_FISCALMONTH || weekOf == WEEKOF_FISCALMONTH;
        Part monthPlace = month;
        if (month && isFiscal)
            monthPlace = GetPlaceInFiscalYear(*month, criteria);
        Part dayPlace = dayOfWeek;
        if (dayOfWeek)
            dayPlace = GetPlaceInWeek(*dayOfWeek, criteria);
        std::vector<long> order = {0};
        bool holdsAny = false;
        for (const Part& part : {term, monthPlace, week, dayPlace, day, noon, hour, minute, second}) {
            order.push_back(part ? *part : -1);
            holdsAny = holdsAny || part;
        }
        if (!holdsAny)
            return {};
        return order;
    }

    sys_days first;
    sys_days last = sys_days::max(); // of a week
    ERank rank = RANK_YEAR;
    switch (kind) {
    case KIND_FISCALYEAR:
        first = GetFirstDayInFiscalYear(*year, 0, criteria);
        rank = RANK_FISCALYEAR;
        break;
    case KIND_FISCALMONTH:
        first = GetFirstDayOfFiscalMonth(*year, *month, criteria);
        rank = RANK_FISCALMONTH;
        break;
    case KIND_HALFTERM:
        first = GetFirstDayInFiscalYear(*year, (*term - 1) * 6, criteria);
        rank = RANK_HALFTERM;
        break;
    case KIND_QUARTERTERM:
        first = GetFirstDayInFiscalYear(*year, (*term - 1) * 3, criteria);
        rank = RANK_QUARTERTERM;
        break;
    case KIND_WEEK: {
        if (weekOf == WEEKOF_YEAR) {
            first = ToDay(*year, 1, 1);
            last = ToDay(*year, 12, 31);
        } else if (weekOf == WEEKOF_MONTH) {
            first = ToDay(*year, *month, 1);
            last = ToDay(*year, *month, GetLastDay(*year, *month));
        } else if (weekOf == WEEKOF_FISCALYEAR) {
            first = GetFirstDayInFiscalYear(*year, 0, criteria);
            last = GetFirstDayInFiscalYear(*year + 1, 0, criteria) - std::chrono::days{1};
        } else {
            first = GetFirstDayOfFiscalMonth(*year, *month, criteria);
            last = GetLastDayOfFiscalMonth(*year, *month, criteria);
        }
        const sys_days firstOfStretch = first;
        first = GetFirstDayOfWeek(*week, firstOfStretch, criteria);
        if (first > last)
            return {}; // there is no such week
        last = std::min(last, GetFirstDayOfWeek(*week + 1, firstOfStretch, criteria) - std::chrono::days{1});
        rank = RANK_WEEK;
        break;
    }
    default:
        first = ToDay(*year, month.value_or(1), month ? day.value_or(1) : 1);
        rank = !month ? RANK_YEAR : !day ? RANK_MONTH : RANK_DAY;
    }
    // A stretch of the calendar in which an era begins has a part in each. Fiscal ones have one name.
    const bool isOfCalendar =
        kind == KIND_DATE || (kind == KIND_WEEK && (weekOf == WEEKOF_YEAR || weekOf == WEEKOF_MONTH));
    if (isOfCalendar && eraYear.era != 0) {
        first = std::max(first, GetFirstDayOfEra(eraYear.era));
        if (first > last || GetEraYearOf(first) != eraYear)
            return {};
    }
    const bool isOfFiscalMonth =
        kind == KIND_FISCALMONTH || (kind == KIND_WEEK && weekOf == WEEKOF_FISCALMONTH);
    if (isOfFiscalMonth && eraYear.era != 0 &&
        GetEraYearOf(GetLastDayOfFiscalMonth(*year, *month, criteria)) != eraYear)
        return {};
    return std::vector<long>{1, ToNumber(first), rank, month ? 0 : day.value_or(0)};
}

// ---- Parts

std::optional<SModelEraYear> SModelDate::GetEraYear() const
{
    if (!year)
        return {};
    if (eraYear.era != 0)
        return eraYear;
    const int lastMonth = month.value_or(12);
    return GetEraYearOf(ToDay(*year, lastMonth, month && day ? *day : GetLastDay(*year, lastMonth)));
}

Part SModelDate::GetFiscalMonth(const SModelCriteria& criteria) const
{
    if (!month)
        return {};
    return day && *day > criteria.cutOffDate ? *month % 12 + 1 : *month;
}

Part SModelDate::GetYearOfFiscalMonth(const SModelCriteria& criteria) const
{
    const Part fiscalMonth = GetFiscalMonth(criteria);
    if (!year || !fiscalMonth)
        return {};
    return ToYear(*fiscalMonth < *month ? *year + 1 : *year);
}

std::optional<SModelEraYear> SModelDate::GetEraYearOfFiscalMonth(const SModelCriteria& criteria) const
{
    const Part yearOfMonth = GetYearOfFiscalMonth(criteria);
    if (!yearOfMonth)
        return {};
    return GetEraYearOf(GetLastDayOfFiscalMonth(*yearOfMonth, *GetFiscalMonth(criteria), criteria));
}

Part SModelDate::GetFiscalYear(const SModelCriteria& criteria) const
{
    const Part yearOfMonth = GetYearOfFiscalMonth(criteria);
    if (!yearOfMonth)
        return {};
    return ToYear(*GetFiscalMonth(criteria) < criteria.startMonth ? *yearOfMonth - 1 : *yearOfMonth);
}

std::optional<SModelEraYear> SModelDate::GetFiscalEraYear(const SModelCriteria& criteria) const
{
    const Part fiscalYear = GetFiscalYear(criteria);
    if (!fiscalYear)
        return {};
    return GetEraYearOf(ToDay(*fiscalYear, 12, 31));
}

Part SModelDate::GetHalfTerm(const SModelCriteria& criteria) const
{
    const Part fiscalMonth = GetFiscalMonth(criteria);
    if (!fiscalMonth)
        return {};
    return GetPlaceInFiscalYear(*fiscalMonth, criteria) / 6 + 1;
}

Part SModelDate::GetQuarterTerm(const SModelCriteria& criteria) const
{
    const Part fiscalMonth = GetFiscalMonth(criteria);
    if (!fiscalMonth)
        return {};
    return GetPlaceInFiscalYear(*fiscalMonth, criteria) / 3 + 1;
}

Part SModelDate::GetWeek(EWeekOf stretch, const SModelCriteria& criteria) const
{
    if (!IsDay())
        return {};
    const Part fiscalYear = GetFiscalYear(criteria);
    const Part yearOfMonth = GetYearOfFiscalMonth(criteria);
    sys_days first;
    switch (stretch) {
    case WEEKOF_YEAR:
        first = ToDay(*year, 1, 1);
        break;
    case WEEKOF_MONTH:
        first = ToDay(*year, *month, 1);
        break;
    case WEEKOF_FISCALYEAR:
        if (!fiscalYear)
            return {};
        first = GetFirstDayInFiscalYear(*fiscalYear, 0, criteria);
        break;
    default:
        if (!yearOfMonth)
            return {};
        first = GetFirstDayOfFiscalMonth(*yearOfMonth, *GetFiscalMonth(criteria), criteria);
    }
    return GetWeekOf(ToDay(*year, *month, *day), first, criteria);
}

Part SModelDate::GetDayOfWeek() const
{
    if (!IsDay())
        return {};
    return GetDayOfWeekOf(ToDay(*year, *month, *day));
}

Part SModelDate::GetNoon() const
{
    if (!hour)
        return {};
    return *hour % 24 < 12 ? 1 : 2;
}

// ---- Groups

// A Gregorian year counts only from 1873 to 9999.
void SModelDate::TakeYear(Part grgYear)
{
    if (grgYear && *grgYear >= 1873 && *grgYear <= 9999)
        year = grgYear;
}

void SModelDate::TakeYear(const SModelEraYear& yearOfEra)
{
    for (const SEra& era : GetEras()) {
        if (era.era == yearOfEra.era)
            year = GetYearOf(era.first) + yearOfEra.year - 1;
    }
    eraYear = yearOfEra;
}

bool SModelDate::TakeCalendarYear(const SModelDate& date, bool byEra)
{
    if (byEra) {
        const std::optional<SModelEraYear> ofDate = date.GetEraYear();
        if (ofDate)
            TakeYear(*ofDate);
        return ofDate.has_value();
    }
    TakeYear(date.year);
    return date.year.has_value();
}

bool SModelDate::TakeFiscalYear(const SModelDate& date, bool byEra, const SModelCriteria& criteria)
{
    if (byEra) {
        const std::optional<SModelEraYear> ofDate = date.GetFiscalEraYear(criteria);
        if (ofDate)
            TakeYear(*ofDate);
        return ofDate.has_value();
    }
    const Part ofDate = date.GetFiscalYear(criteria);
    TakeYear(ofDate);
    return ofDate.has_value();
}

bool SModelDate::TakeFiscalMonth(const SModelDate& date, bool withYear, bool byEra,
                                 const SModelCriteria& criteria)
{
    month = date.GetFiscalMonth(criteria);
    if (!withYear || !month)
        return month.has_value();
    if (byEra) {
        const std::optional<SModelEraYear> ofMonth = date.GetEraYearOfFiscalMonth(criteria);
        if (ofMonth)
            TakeYear(*ofMonth);
        return ofMonth.has_value();
    }
    const Part ofMonth = date.GetYearOfFiscalMonth(criteria);
    TakeYear(ofMonth);
    return ofMonth.has_value();
}

std::optional<SModelDate> SModelDate::GetGroup(const SCDeclareConstant::SDateDispForm& form,
                                               const SModelCriteria& criteria) const
{
    if (form.kind == SCDeclareConstant::UNSETTING)
        return {};
    if (form.kind == 0)
        return *this;
    SModelDate group;
    bool isWhole = true;
    if (form.kind == 5) {
        SCDeclareConstant::SDateTypeInfo info;
        info.dispForm = form;
        const NSKZCore::CConvertDate pattern(info);
        if (pattern.IsUsedJpnCalendarForOptionalForm())
            isWhole = group.TakeCalendarYear(*this, true);
        else if (pattern.IsUsedGrgCalendarForOptionalForm())
            isWhole = group.TakeCalendarYear(*this, false);
        if (pattern.IsUsedMonthForOptionalForm()) {
            group.month = month;
            isWhole = isWhole && month;
        }
        if (pattern.IsUsedDayForOptionalForm()) {
            group.day = day;
            isWhole = isWhole && day;
        }
        return isWhole ? std::optional(group) : std::nullopt;
    }

    const bool isFiscal = form.option == 1;
    const DWORD code = form.form;
    const auto isIn = [code](DWORD first, DWORD last) { return code >= first && code <= last; };
    if (isIn(0, 5)) {
        isWhole = group.TakeCalendarYear(*this, code >= 2) && month && day;
        group.month = month;
        group.day = day;
    } else if (isIn(6, 11)) {
        const bool byEra = code >= 8;
        if (isFiscal) {
            group.kind = KIND_FISCALMONTH;
            isWhole = group.TakeFiscalMonth(*this, true, byEra, criteria);
        } else {
            isWhole = group.TakeCalendarYear(*this, byEra) && month;
            group.month = month;
        }
    } else if (code == 12) {
        isWhole = day.has_value();
        group.day = day;
    } else if (isIn(101, 112)) {
        group.kind = code <= 106 ? KIND_HALFTERM : KIND_QUARTERTERM;
        group.term = code <= 106 ? GetHalfTerm(criteria) : GetQuarterTerm(criteria);
        isWhole = group.TakeFiscalYear(*this, (code - 101) % 6 >= 2, criteria) && group.term;
    } else if (isIn(201, 206)) {
        group.kind = KIND_WEEK;
        group.weekOf = isFiscal ? WEEKOF_FISCALYEAR : WEEKOF_YEAR;
        group.week = GetWeek(group.weekOf, criteria);
        isWhole = (isFiscal ? group.TakeFiscalYear(*this, code >= 203, criteria)
                            : group.TakeCalendarYear(*this, code >= 203)) &&
                  group.week;
    } else if (isIn(301, 306) || isIn(401, 403)) {
        group.kind = code <= 401 ? KIND_WEEK : KIND_DAYOFWEEK;
        group.weekOf = isFiscal ? WEEKOF_FISCALMONTH : WEEKOF_MONTH;
        group.week = GetWeek(group.weekOf, criteria);
        isWhole = group.week.has_value();
        const bool withYear = code <= 306;
        const bool withMonth = code <= 402;
        if (withMonth && isFiscal) {
            isWhole = group.TakeFiscalMonth(*this, withYear, code >= 303, criteria) && isWhole;
        } else if (withMonth) {
            group.month = month;
            isWhole = isWhole && month;
            if (withYear)
                isWhole = group.TakeCalendarYear(*this, code >= 303) && isWhole;
        }
        if (code >= 402) {
            group.dayOfWeek = GetDayOfWeek();
            isWhole = isWhole && group.dayOfWeek;
        }
    } else {
        isWhole = false;
    }
    return isWhole ? std::optional(group) : std::nullopt;
}

std::optional<SModelDate> SModelDate::GetGroup(const SCDeclareConstant::STimeDispForm& form) const
{
    if (form.kind == SCDeclareConstant::UNSETTING)
        return {};
    if (form.kind == 0)
        return *this;
    SModelDate group;
    bool isWhole = true;
    if (form.kind == 3) {
        SCDeclareConstant::STimeTypeInfo info;
        info.dispForm = form;
        const NSKZCore::CConvertTime pattern(info);
        if (pattern.IsUsedHourForOptionalForm()) {
            group.hour = hour;
            if (hour && pattern.IsUsed12HourForOptionalForm())
                group.hour = *hour % 24;
            isWhole = hour.has_value();
        } else if (pattern.IsUsedAMPMForOptionalForm()) {
            if (hour)
                group.hour = *GetNoon() == 1 ? 0 : 12;
            isWhole = hour.has_value();
        }
        if (pattern.IsUsedMinuteForOptionalForm()) {
            group.minute = minute;
            isWhole = isWhole && minute;
        }
        if (pattern.IsUsedSecondForOptionalForm()) {
            group.second = second;
            isWhole = isWhole && second;
        }
        return isWhole ? std::optional(group) : std::nullopt;
    }
    if (form.form > 14 || !minute)
        return {};
    constexpr int STEPS[] = {1, 1, 5, 10, 15, 20, 30, 1}; // of each two forms
    group.minute = *minute - *minute % STEPS[form.form / 2];
    if (form.form != 14) {
        group.hour = hour;
        if (hour && form.form % 2 == 1)
            group.hour = *hour % 24;
        isWhole = hour.has_value();
    }
    if (form.form <= 1 || form.form == 14) {
        group.second = second;
        isWhole = isWhole && second;
    }
    return isWhole ? std::optional(group) : std::nullopt;
}

std::optional<SModelDate> SModelDate::GetGroup(VCDate::EDateType type, const SModelCriteria& criteria) const
{
    SModelDate group;
    bool isWhole = false;
    const auto take = [&](EKind kindOfGroup, Part& to, const Part& from) {
        group.kind = kindOfGroup;
        to = from;
        isWhole = from.has_value();
    };
    const auto takeWeek = [&](EWeekOf stretch) {
        group.weekOf = stretch;
        take(KIND_WEEK, group.week, GetWeek(stretch, criteria));
    };
    switch (type) {
    case VCDate::DATETYPE_GRGYEAR:
        group.TakeYear(year);
        isWhole = group.year.has_value();
        break;
    case VCDate::DATETYPE_JPNYEAR:
        isWhole = group.TakeCalendarYear(*this, true);
        break;
    case VCDate::DATETYPE_MONTH:
        take(KIND_DATE, group.month, month);
        break;
    case VCDate::DATETYPE_DAY:
        take(KIND_DATE, group.day, day);
        break;
    case VCDate::DATETYPE_HOUR:
        take(KIND_DATE, group.hour, hour);
        break;
    case VCDate::DATETYPE_MINUTE:
        take(KIND_DATE, group.minute, minute);
        break;
    case VCDate::DATETYPE_SECOND:
        take(KIND_DATE, group.second, second);
        break;
    case VCDate::DATETYPE_FISCALGRGYEAR:
        group.kind = KIND_FISCALYEAR;
        group.TakeYear(GetFiscalYear(criteria));
        isWhole = group.year.has_value();
        break;
    case VCDate::DATETYPE_FISCALJPNYEAR:
        group.kind = KIND_FISCALYEAR;
        isWhole = group.TakeFiscalYear(*this, true, criteria);
        break;
    case VCDate::DATETYPE_FISCALMONTH:
        take(KIND_FISCALMONTH, group.month, GetFiscalMonth(criteria));
        break;
    case VCDate::DATETYPE_HALFTERM:
        take(KIND_HALFTERM, group.term, GetHalfTerm(criteria));
        break;
    case VCDate::DATETYPE_QUARTERTERM:
        take(KIND_QUARTERTERM, group.term, GetQuarterTerm(criteria));
        break;
    case VCDate::DATETYPE_WEEKOFYEAR:
        takeWeek(WEEKOF_YEAR);
        break;
    case VCDate::DATETYPE_WEEKOFMONTH:
        takeWeek(WEEKOF_MONTH);
        break;
    case VCDate::DATETYPE_WEEKOFFISCALYEAR:
        takeWeek(WEEKOF_FISCALYEAR);
        break;
    case VCDate::DATETYPE_WEEKOFFISCALMONTH:
        takeWeek(WEEKOF_FISCALMONTH);
        break;
    case VCDate::DATETYPE_DAYSOFWEEK:
        take(KIND_DAYOFWEEK, group.dayOfWeek, GetDayOfWeek());
        break;
    case VCDate::DATETYPE_TIMEBASEDONNOON:
        take(KIND_NOON, group.noon, GetNoon());
        break;
    }
    return isWhole ? std::optional(group) : std::nullopt;
}

// ---- Comparing

std::vector<SModelDate::SElement> SModelDate::ListElements(const SModelDate& part,
                                                           const SModelCriteria& criteria) const
{
    std::vector<SElement> elements;
    const auto add = [&](const Part& ofPart, const Part& mine) {
        if (ofPart)
            elements.push_back({mine ? std::optional(std::vector{*mine}) : std::nullopt, {*ofPart}});
    };
    const auto addYear = [&](const Part& mine, const std::optional<SModelEraYear>& myEraYear) {
        if (part.eraYear.era == 0) {
            add(part.year, mine);
            return;
        }
        std::optional<std::vector<int>> value;
        if (myEraYear)
            value = std::vector{myEraYear->era, myEraYear->year};
        elements.push_back({value, {part.eraYear.era, part.eraYear.year}});
    };
    const auto addPlace = [&](const Part& ofPart, const Part& mine, auto&& getPlace) {
        if (ofPart)
            add(getPlace(*ofPart, criteria), mine ? Part(getPlace(*mine, criteria)) : Part());
    };
    const bool isOfFiscalMonth =
        part.kind == KIND_FISCALMONTH ||
        ((part.kind == KIND_WEEK || part.kind == KIND_DAYOFWEEK) && part.weekOf == WEEKOF_FISCALMONTH);
    const bool isOfFiscalYear = part.kind == KIND_FISCALYEAR || part.kind == KIND_HALFTERM ||
                                part.kind == KIND_QUARTERTERM ||
                                (part.kind == KIND_WEEK && part.weekOf == WEEKOF_FISCALYEAR);
    if (isOfFiscalYear)
        addYear(GetFiscalYear(criteria), GetFiscalEraYear(criteria));
    else if (isOfFiscalMonth)
        addYear(GetYearOfFiscalMonth(criteria), GetEraYearOfFiscalMonth(criteria));
    else
        addYear(year, GetEraYear());
    if (!isOfFiscalMonth)
        add(part.month, month);
    else if (part.year)
        add(part.month, GetFiscalMonth(criteria));
    else
        addPlace(part.month, GetFiscalMonth(criteria), &GetPlaceInFiscalYear);
    add(part.day, day);
    if (part.kind == KIND_HALFTERM)
        add(part.term, GetHalfTerm(criteria));
    if (part.kind == KIND_QUARTERTERM)
        add(part.term, GetQuarterTerm(criteria));
    add(part.week, GetWeek(part.weekOf, criteria));
    addPlace(part.dayOfWeek, GetDayOfWeek(), &GetPlaceInWeek);
    add(part.hour, hour);
    add(part.minute, minute);
    add(part.second, second);
    return elements;
}

bool SModelDate::Includes(const SModelDate& part) const
{
    // Whatever the criteria: so under those by which fiscal terms are those of the calendar.
    const std::vector<SElement> elements = ListElements(part, {1, 31, 0});
    return !elements.empty() && std::all_of(elements.begin(), elements.end(),
                                            [](const SElement& element) { return element.mine.has_value(); });
}

bool SModelDate::Compares(SCKZCoreCom::ECmpOperator cmpOperator, const SModelDate& part,
                          const SModelCriteria& criteria) const
{
    int sign = 0;
    for (const SElement& element : ListElements(part, criteria)) {
        if (sign != 0)
            break;
        if (element.mine) {
            if (*element.mine != element.ofPart)
                sign = *element.mine < element.ofPart ? -1 : 1;
            continue;
        }
        // Before or behind all that is counted so.
        const auto mine = GetOrder(criteria);
        const auto ofPart = part.GetOrder(criteria);
        if (!mine || !ofPart)
            return cmpOperator == SCKZCoreCom::CMPOPERATOR_NOTEQUAL;
        if (*mine != *ofPart)
            sign = *mine < *ofPart ? -1 : 1;
        break;
    }
    switch (cmpOperator) {
    case SCKZCoreCom::CMPOPERATOR_EQUAL:
        return sign == 0;
    case SCKZCoreCom::CMPOPERATOR_NOTEQUAL:
        return sign != 0;
    case SCKZCoreCom::CMPOPERATOR_LESS:
        return sign < 0;
    case SCKZCoreCom::CMPOPERATOR_LESSEQUAL:
        return sign <= 0;
    case SCKZCoreCom::CMPOPERATOR_GREATER:
        return sign > 0;
    case SCKZCoreCom::CMPOPERATOR_GREATEREQUAL:
        return sign >= 0;
    }
    return false;
}

// ---- Objects

std::unique_ptr<VCDate> SModelDate::Make() const
{
    const auto toNumber = [](const Part& part) {
        return part ? static_cast<DWORD>(*part) : VCDate::DATE_UNSETTING;
    };
    const auto era = static_cast<VCDate::EEra>(eraYear.era);
    const auto yearOfEra = static_cast<DWORD>(eraYear.year);
    const bool byEra = eraYear.era != 0;
    const auto setYear = [&](auto& date) {
        if (byEra)
            date.SetYearOfTheJpnCalendar(era, yearOfEra);
        else
            date.SetYearOfTheGrgCalendar(toNumber(year));
    };
    const auto setFiscalYear = [&](auto& date) {
        if (byEra)
            date.SetFiscalYearOfTheJpnCalendar(era, yearOfEra);
        else
            date.SetFiscalYearOfTheGrgCalendar(toNumber(year));
    };
    switch (kind) {
    case KIND_DATE: {
        auto date = std::make_unique<NSKZCore::CDate>();
        setYear(*date);
        date->SetMonth(toNumber(month));
        date->SetDay(toNumber(day));
        date->SetHour(toNumber(hour));
        date->SetMinute(toNumber(minute));
        date->SetSecond(toNumber(second));
        return date;
    }
    case KIND_FISCALYEAR: {
        auto date = std::make_unique<NSKZCore::CFiscalYear>();
        setFiscalYear(*date);
        return date;
    }
    case KIND_FISCALMONTH: {
        auto date = std::make_unique<NSKZCore::CFiscalMonth>();
        setYear(*date);
        date->SetFiscalMonth(toNumber(month));
        return date;
    }
    case KIND_HALFTERM: {
        auto date = std::make_unique<NSKZCore::CHalfTerm>();
        setFiscalYear(*date);
        date->SetHalfTerm(toNumber(term));
        return date;
    }
    case KIND_QUARTERTERM: {
        auto date = std::make_unique<NSKZCore::CQuarterTerm>();
        setFiscalYear(*date);
        date->SetQuarterTerm(toNumber(term));
        return date;
    }
    case KIND_WEEK: {
        auto date =
            std::make_unique<NSKZCore::CWeekNum>(static_cast<NSKZCore::CWeekNum::EWeekNumType>(weekOf));
        if (weekOf == WEEKOF_FISCALYEAR)
            setFiscalYear(*date);
        else
            setYear(*date);
        if (weekOf == WEEKOF_MONTH)
            date->SetMonth(toNumber(month));
        else if (weekOf == WEEKOF_FISCALMONTH)
            date->SetFiscalMonth(toNumber(month));
        date->SetWeekNum(toNumber(week));
        return date;
    }
    case KIND_DAYOFWEEK: {
        auto date = std::make_unique<NSKZCore::CDaysOfTheWeek>(
            static_cast<NSKZCore::CDaysOfTheWeek::EDaysOfTheWeekType>(weekOf));
        if (weekOf == WEEKOF_MONTH)
            date->SetMonth(toNumber(month));
        else
            date->SetFiscalMonth(toNumber(month));
        date->SetWeekNum(toNumber(week));
        date->SetDaysOfTheWeek(static_cast<VCDate::EDaysOfTheWeek>(toNumber(dayOfWeek)));
        return date;
    }
    case KIND_NOON:
        break;
    }
    auto date = std::make_unique<NSKZCore::CTimeBasedOnNoon>();
    date->SetTimeBasedOnNoon(static_cast<VCDate::ETimeBasedOnNoon>(toNumber(noon)));
    return date;
}

} // namespace NSKZ::Test
