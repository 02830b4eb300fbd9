#include "VCDate.h"

#include "SCCalendar.h"

namespace NSKZ::NSKZCore {

VCDate::~VCDate() = default;

bool VCDate::GetYearOfTheGrgCalendar(DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetYearOfTheJpnCalendar(EEra&, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetMonth(DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetDay(DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetHour(DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetMinute(DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetSecond(DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetFiscalYearOfTheGrgCalendar(DWORD, DWORD, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetFiscalYearOfTheJpnCalendar(DWORD, DWORD, EEra&, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetFiscalMonth(DWORD, EEra&, DWORD&, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetFiscalMonth(DWORD, DWORD&, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetFiscalMonth(DWORD, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetHalfTerm(DWORD, DWORD, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetQuarterTerm(DWORD, DWORD, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetWeekOfTheYear(EDaysOfTheWeek, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetWeekOfTheMonth(EDaysOfTheWeek, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetWeekOfTheFiscalYear(DWORD, DWORD, EDaysOfTheWeek, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetWeekOfTheFiscalMonth(DWORD, EDaysOfTheWeek, DWORD&) const noexcept
{
    return false;
}

bool VCDate::GetDaysOfTheWeek(EDaysOfTheWeek&) const noexcept
{
    return false;
}

bool VCDate::GetTimeBasedOnNoon(ETimeBasedOnNoon&) const noexcept
{
    return false;
}

bool VCDate::IsAppropriateYear(EEra era, DWORD year) noexcept
{
    // The last year of each era.
    switch (era) {
    case ERA_GREGORIAN:
        return year >= GRGYEAR_OF_MEIJI_FIRSTYEAR - 1 + MEIJIYEAR_OF_GRGCALENDAR_INTRO &&
               year <= MAX_GRGYEAR_VALUE;
    case ERA_MEIJI:
        return year >= 1 && year <= 45;
    case ERA_TAISHO:
        return year >= 1 && year <= 15;
    case ERA_SHOWA:
        return year >= 1 && year <= 64;
    case ERA_HEISEI:
        return year >= 1 && year <= 31;
    case ERA_REIWA:
        return year >= 1 && year <= MAX_GRGYEAR_VALUE - 2018; // Reiwa 1 was 2019
    case ERA_UNSETTING:
        break;
    }
    return false;
}

} // namespace NSKZ::NSKZCore
