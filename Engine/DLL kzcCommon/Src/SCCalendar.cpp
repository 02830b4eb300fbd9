#include "SCCalendar.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace NSKZ::NSKZCore {

namespace {

// 1 January of the year 1 in the count of std::chrono.
constexpr long FIRST_DAY =
    std::chrono::sys_days(std::chrono::year(1) / std::chrono::January / 1).time_since_epoch().count();
constexpr DWORD DAYS_OF_WEEK = 7;
constexpr DWORD MONTHS_OF_YEAR = VCDate::MONTHCNT_OF_YEAR;

constexpr long ToDayNum(std::chrono::sys_days day) noexcept
{
    return static_cast<long>(day.time_since_epoch().count() - FIRST_DAY + 1);
}

constexpr std::chrono::sys_days ToSysDays(long dayNum) noexcept
{
    return std::chrono::sys_days(std::chrono::days(static_cast<int>(dayNum - 1 + FIRST_DAY)));
}

constexpr long ToDayNum(int year, unsigned int month, unsigned int day) noexcept
{
    return ToDayNum(
        std::chrono::sys_days(std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day)));
}

struct SEraOfJapan
{
    VCDate::EEra era;
    DWORD firstYear;
    long firstDay;
};
// In ascending order.
constexpr std::array<SEraOfJapan, 5> ERAS = {{
    {VCDate::ERA_MEIJI, VCDate::GRGYEAR_OF_MEIJI_FIRSTYEAR, ToDayNum(1868, 10, 23)},
    {VCDate::ERA_TAISHO, 1912, ToDayNum(1912, 7, 30)},
    {VCDate::ERA_SHOWA, 1926, ToDayNum(1926, 12, 25)},
    {VCDate::ERA_HEISEI, 1989, ToDayNum(1989, 1, 8)},
    {VCDate::ERA_REIWA, 2019, ToDayNum(2019, 5, 1)},
}};
constexpr long LAST_DAY = ToDayNum(static_cast<int>(VCDate::MAX_GRGYEAR_VALUE), 12, 31);

const SEraOfJapan* FindEra(VCDate::EEra era) noexcept
{
    const auto found =
        std::find_if(ERAS.begin(), ERAS.end(), [era](const SEraOfJapan& each) { return each.era == era; });
    return found == ERAS.end() ? nullptr : &*found;
}

// How many days of the week that holds the first day lie before it.
long GetDaysBefore(long firstDay, VCDate::EDaysOfTheWeek daysOfWeek) noexcept
{
    return static_cast<long>(SCCalendar::GetPlaceInWeek(SCCalendar::GetDaysOfTheWeek(firstDay), daysOfWeek));
}

} // namespace

bool SCCalendar::IsEraOfJapan(DWORD era) noexcept
{
    return era >= VCDate::ERA_MEIJI && era <= VCDate::ERA_REIWA && era != VCDate::ERA_GREGORIAN;
}

DWORD SCCalendar::GetLastDay(long year, DWORD month) noexcept
{
    constexpr std::array<DWORD, MONTHS_OF_YEAR> LAST_DAYS = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month == 2 && std::chrono::year(static_cast<int>(year)).is_leap())
        return 29;
    return LAST_DAYS[month - 1];
}

bool SCCalendar::IsRealDay(DWORD year, DWORD month, DWORD day) noexcept
{
    return year >= VCDate::MIN_GRGYEAR_VALUE && year <= VCDate::MAX_GRGYEAR_VALUE && IsMonth(month) &&
           day >= 1 && day <= GetLastDay(static_cast<long>(year), month);
}

long SCCalendar::GetDayNum(long year, DWORD month, DWORD day) noexcept
{
    return ToDayNum(static_cast<int>(year), month, 1) + static_cast<long>(day) - 1;
}

void SCCalendar::GetDay(long dayNum, long& year, DWORD& month, DWORD& day) noexcept
{
    const std::chrono::year_month_day date(ToSysDays(dayNum));
    year = static_cast<int>(date.year());
    month = static_cast<unsigned int>(date.month());
    day = static_cast<unsigned int>(date.day());
}

VCDate::EDaysOfTheWeek SCCalendar::GetDaysOfTheWeek(long dayNum) noexcept
{
    return static_cast<VCDate::EDaysOfTheWeek>(std::chrono::weekday(ToSysDays(dayNum)).c_encoding());
}

DWORD SCCalendar::GetPlaceInWeek(VCDate::EDaysOfTheWeek day, VCDate::EDaysOfTheWeek first) noexcept
{
    return (static_cast<DWORD>(day) + DAYS_OF_WEEK - static_cast<DWORD>(first)) % DAYS_OF_WEEK;
}

bool SCCalendar::GetJpnYear(long dayNum, VCDate::EEra& era, DWORD& year) noexcept
{
    const auto found = std::find_if(ERAS.rbegin(), ERAS.rend(),
                                    [dayNum](const SEraOfJapan& each) { return each.firstDay <= dayNum; });
    if (found == ERAS.rend())
        return false;
    long grgYear = 0;
    DWORD month = 0;
    DWORD day = 0;
    GetDay(dayNum, grgYear, month, day);
    era = found->era;
    year = static_cast<DWORD>(grgYear) - found->firstYear + 1;
    return true;
}

bool SCCalendar::GetGrgYear(VCDate::EEra era, DWORD yearOfEra, DWORD& grgYear) noexcept
{
    if (era == VCDate::ERA_GREGORIAN || !VCDate::IsAppropriateYear(era, yearOfEra))
        return false;
    grgYear = FindEra(era)->firstYear - 1 + yearOfEra;
    return true;
}

void SCCalendar::GetDaysOfEra(VCDate::EEra era, long& first, long& last) noexcept
{
    const SEraOfJapan* const found = FindEra(era);
    first = found->firstDay;
    last = found == &ERAS.back() ? LAST_DAY : (found + 1)->firstDay - 1;
}

void SCCalendar::GetFiscalMonth(long year, DWORD month, DWORD day, DWORD cutOffDate, long& fiscalMonthYear,
                                DWORD& fiscalMonth) noexcept
{
    fiscalMonthYear = year;
    fiscalMonth = month;
    // A month that is too short for the cut-off day has none behind it.
    if (day <= cutOffDate)
        return;
    if (++fiscalMonth > MONTHS_OF_YEAR) {
        fiscalMonth = 1;
        ++fiscalMonthYear;
    }
}

long SCCalendar::GetFirstDayOfFiscalMonth(long year, DWORD fiscalMonth, DWORD cutOffDate) noexcept
{
    return fiscalMonth == 1 ? GetLastDayOfFiscalMonth(year - 1, MONTHS_OF_YEAR, cutOffDate) + 1
                            : GetLastDayOfFiscalMonth(year, fiscalMonth - 1, cutOffDate) + 1;
}

long SCCalendar::GetLastDayOfFiscalMonth(long year, DWORD fiscalMonth, DWORD cutOffDate) noexcept
{
    return GetDayNum(year, fiscalMonth, std::min(cutOffDate, GetLastDay(year, fiscalMonth)));
}

bool SCCalendar::GetFirstDayOfNamedFiscalMonth(const CEraYear& year, DWORD fiscalMonth, DWORD cutOffDate,
                                               long& firstDay) noexcept
{
    DWORD grgYear = 0;
    if (!year.GetGrg(grgYear))
        return false;
    if (fiscalMonth == 0) {
        firstDay = GetDayNum(grgYear, 1, 1);
        return true;
    }
    VCDate::EEra era = VCDate::ERA_UNSETTING;
    DWORD yearOfEra = 0;
    if (year.GetEra() != VCDate::ERA_GREGORIAN &&
        (!GetJpnYear(GetLastDayOfFiscalMonth(grgYear, fiscalMonth, cutOffDate), era, yearOfEra) ||
         era != year.GetEra()))
        return false;
    firstDay = GetFirstDayOfFiscalMonth(grgYear, fiscalMonth, cutOffDate);
    return true;
}

long SCCalendar::GetFiscalYear(long year, DWORD fiscalMonth, DWORD startMonth) noexcept
{
    return fiscalMonth >= startMonth ? year : year - 1;
}

DWORD SCCalendar::GetPlaceInFiscalYear(DWORD fiscalMonth, DWORD startMonth) noexcept
{
    return (fiscalMonth + MONTHS_OF_YEAR - startMonth) % MONTHS_OF_YEAR;
}

DWORD SCCalendar::GetHalfTerm(DWORD fiscalMonth, DWORD startMonth) noexcept
{
    return GetPlaceInFiscalYear(fiscalMonth, startMonth) / MONTHS_OF_HALFTERM + 1;
}

DWORD SCCalendar::GetQuarterTerm(DWORD fiscalMonth, DWORD startMonth) noexcept
{
    return GetPlaceInFiscalYear(fiscalMonth, startMonth) / MONTHS_OF_QUARTERTERM + 1;
}

long SCCalendar::GetFirstDayInFiscalYear(long fiscalYear, DWORD place, DWORD startMonth,
                                         DWORD cutOffDate) noexcept
{
    const DWORD monthsBehind = startMonth - 1 + place;
    return GetFirstDayOfFiscalMonth(fiscalYear + static_cast<long>(monthsBehind / MONTHS_OF_YEAR),
                                    monthsBehind % MONTHS_OF_YEAR + 1, cutOffDate);
}

DWORD SCCalendar::GetWeek(long dayNum, long firstDay, VCDate::EDaysOfTheWeek daysOfWeek) noexcept
{
    return static_cast<DWORD>((dayNum - firstDay + GetDaysBefore(firstDay, daysOfWeek)) /
                              long{DAYS_OF_WEEK}) +
           1;
}

long SCCalendar::GetFirstDayOfWeek(DWORD week, long firstDay, VCDate::EDaysOfTheWeek daysOfWeek) noexcept
{
    if (week == 1)
        return firstDay;
    return firstDay - GetDaysBefore(firstDay, daysOfWeek) + static_cast<long>((week - 1) * DAYS_OF_WEEK);
}

} // namespace NSKZ::NSKZCore
