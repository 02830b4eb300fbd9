#include "CDate.h"

#include "CDateNumeric.h"
#include "CDateSpec.h"
#include "CFixedText.h"
#include "SCCalendar.h"

#include <initializer_list>

namespace NSKZ::NSKZCore {

namespace {

// Stores a value within its limits in a part, of which `none` is that it is not held.
bool StorePart(DWORD value, DWORD min, DWORD max, BYTE none, BYTE& part) noexcept
{
    part = none;
    if (value == VCDate::DATE_UNSETTING)
        return true;
    if (value < min || value > max)
        return false;
    part = static_cast<BYTE>(value);
    return true;
}

bool GivePart(BYTE part, BYTE none, DWORD& value) noexcept
{
    if (part == none)
        return false;
    value = part;
    return true;
}

bool IsYear(long year) noexcept
{
    return year >= static_cast<long>(VCDate::MIN_GRGYEAR_VALUE) &&
           year <= static_cast<long>(VCDate::MAX_GRGYEAR_VALUE);
}

} // namespace

bool CDate::SetYearOfTheGrgCalendar(DWORD value) noexcept
{
    return year.SetGrg(value);
}

bool CDate::SetYearOfTheJpnCalendar(EEra era, DWORD value) noexcept
{
    return year.SetJpn(era, value);
}

bool CDate::SetMonth(DWORD value) noexcept
{
    return StorePart(value, 1, MONTHCNT_OF_YEAR, NONE, month);
}

bool CDate::SetDay(DWORD value) noexcept
{
    return StorePart(value, 1, MAXDAY_OF_MONTH, NONE, day);
}

bool CDate::SetHour(DWORD value) noexcept
{
    return StorePart(value, 0, MAX_HOUR_VALUE, NONE, hour);
}

bool CDate::SetMinute(DWORD value) noexcept
{
    return StorePart(value, 0, MAX_MINUTE_VALUE, NONE, minute);
}

bool CDate::SetSecond(DWORD value) noexcept
{
    return StorePart(value, 0, MAX_SECOND_VALUE, NONE, second);
}

void CDate::Clear() noexcept
{
    *this = CDate();
}

bool CDate::GetYearOfTheGrgCalendar(DWORD& value) const noexcept
{
    return year.GetGrg(value);
}

bool CDate::GetYearOfTheJpnCalendar(EEra& era, DWORD& value) const noexcept
{
    if (year.GetEra() != ERA_GREGORIAN || month == NONE)
        return year.GetJpn(era, value);
    const DWORD lastDay = SCCalendar::GetLastDay(year.GetYear(), month);
    const DWORD dayToAsk = day == NONE ? lastDay : day;
    return dayToAsk <= lastDay &&
           SCCalendar::GetJpnYear(SCCalendar::GetDayNum(year.GetYear(), month, dayToAsk), era, value);
}

bool CDate::GetMonth(DWORD& value) const noexcept
{
    return GivePart(month, NONE, value);
}

bool CDate::GetDay(DWORD& value) const noexcept
{
    return GivePart(day, NONE, value);
}

bool CDate::GetHour(DWORD& value) const noexcept
{
    return GivePart(hour, NONE, value);
}

bool CDate::GetMinute(DWORD& value) const noexcept
{
    return GivePart(minute, NONE, value);
}

bool CDate::GetSecond(DWORD& value) const noexcept
{
    return GivePart(second, NONE, value);
}

bool CDate::GetFiscalYearOfTheGrgCalendar(DWORD startMonth, DWORD cutOffDate, DWORD& value) const noexcept
{
    DWORD fiscalMonthYear = 0;
    DWORD fiscalMonth = 0;
    if (!SCCalendar::IsMonth(startMonth) || !GetFiscalMonth(cutOffDate, fiscalMonthYear, fiscalMonth))
        return false;
    const long fiscalYear = SCCalendar::GetFiscalYear(fiscalMonthYear, fiscalMonth, startMonth);
    if (!IsYear(fiscalYear))
        return false;
    value = static_cast<DWORD>(fiscalYear);
    return true;
}

bool CDate::GetFiscalYearOfTheJpnCalendar(DWORD startMonth, DWORD cutOffDate, EEra& era,
                                          DWORD& value) const noexcept
{
    DWORD grgYear = 0;
    CEraYear fiscalYear;
    return GetFiscalYearOfTheGrgCalendar(startMonth, cutOffDate, grgYear) && fiscalYear.SetGrg(grgYear) &&
           fiscalYear.GetJpn(era, value);
}

bool CDate::GetFiscalMonth(DWORD cutOffDate, EEra& era, DWORD& yearOfEra, DWORD& value) const noexcept
{
    DWORD grgYear = 0;
    DWORD fiscalMonth = 0;
    if (!GetFiscalMonth(cutOffDate, grgYear, fiscalMonth) ||
        !SCCalendar::GetJpnYear(SCCalendar::GetLastDayOfFiscalMonth(grgYear, fiscalMonth, cutOffDate), era,
                                yearOfEra))
        return false;
    value = fiscalMonth;
    return true;
}

bool CDate::GetFiscalMonth(DWORD cutOffDate, DWORD& grgYear, DWORD& value) const noexcept
{
    DWORD ownYear = 0;
    if (!SCCalendar::IsCutOffDate(cutOffDate) || month == NONE || !year.GetGrg(ownYear))
        return false;
    long fiscalMonthYear = ownYear;
    DWORD fiscalMonth = month;
    if (day != NONE)
        SCCalendar::GetFiscalMonth(ownYear, month, day, cutOffDate, fiscalMonthYear, fiscalMonth);
    if (!IsYear(fiscalMonthYear))
        return false;
    grgYear = static_cast<DWORD>(fiscalMonthYear);
    value = fiscalMonth;
    return true;
}

bool CDate::GetFiscalMonth(DWORD cutOffDate, DWORD& value) const noexcept
{
    if (!SCCalendar::IsCutOffDate(cutOffDate) || month == NONE)
        return false;
    long ignoredYear = 0;
    if (day != NONE)
        SCCalendar::GetFiscalMonth(0, month, day, cutOffDate, ignoredYear, value);
    else
        value = month;
    return true;
}

bool CDate::GetHalfTerm(DWORD startMonth, DWORD cutOffDate, DWORD& halfTerm) const noexcept
{
    DWORD fiscalMonth = 0;
    if (!SCCalendar::IsMonth(startMonth) || !GetFiscalMonth(cutOffDate, fiscalMonth))
        return false;
    halfTerm = SCCalendar::GetHalfTerm(fiscalMonth, startMonth);
    return true;
}

bool CDate::GetQuarterTerm(DWORD startMonth, DWORD cutOffDate, DWORD& quarterTerm) const noexcept
{
    DWORD fiscalMonth = 0;
    if (!SCCalendar::IsMonth(startMonth) || !GetFiscalMonth(cutOffDate, fiscalMonth))
        return false;
    quarterTerm = SCCalendar::GetQuarterTerm(fiscalMonth, startMonth);
    return true;
}

bool CDate::GetWeekOfTheYear(EDaysOfTheWeek daysOfWeek, DWORD& week) const noexcept
{
    long dayNum = 0;
    DWORD grgYear = 0;
    if (!SCCalendar::IsDaysOfTheWeek(daysOfWeek) || !GetDayNum(dayNum) || !year.GetGrg(grgYear))
        return false;
    week = SCCalendar::GetWeek(dayNum, SCCalendar::GetDayNum(grgYear, 1, 1), daysOfWeek);
    return true;
}

bool CDate::GetWeekOfTheMonth(EDaysOfTheWeek daysOfWeek, DWORD& week) const noexcept
{
    long dayNum = 0;
    if (!SCCalendar::IsDaysOfTheWeek(daysOfWeek) || !GetDayNum(dayNum))
        return false;
    week = SCCalendar::GetWeek(dayNum, dayNum - day + 1, daysOfWeek);
    return true;
}

bool CDate::GetWeekOfTheFiscalYear(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                   DWORD& week) const noexcept
{
    long dayNum = 0;
    DWORD fiscalYear = 0;
    if (!SCCalendar::IsDaysOfTheWeek(daysOfWeek) || !GetDayNum(dayNum) ||
        !GetFiscalYearOfTheGrgCalendar(startMonth, cutOffDate, fiscalYear))
        return false;
    const long firstDay = SCCalendar::GetFirstDayInFiscalYear(fiscalYear, 0, startMonth, cutOffDate);
    week = SCCalendar::GetWeek(dayNum, firstDay, daysOfWeek);
    return true;
}

bool CDate::GetWeekOfTheFiscalMonth(DWORD cutOffDate, EDaysOfTheWeek daysOfWeek, DWORD& week) const noexcept
{
    long dayNum = 0;
    DWORD fiscalMonthYear = 0;
    DWORD fiscalMonth = 0;
    if (!SCCalendar::IsDaysOfTheWeek(daysOfWeek) || !GetDayNum(dayNum) ||
        !GetFiscalMonth(cutOffDate, fiscalMonthYear, fiscalMonth))
        return false;
    const long firstDay = SCCalendar::GetFirstDayOfFiscalMonth(fiscalMonthYear, fiscalMonth, cutOffDate);
    week = SCCalendar::GetWeek(dayNum, firstDay, daysOfWeek);
    return true;
}

bool CDate::GetDaysOfTheWeek(EDaysOfTheWeek& value) const noexcept
{
    long dayNum = 0;
    if (!GetDayNum(dayNum))
        return false;
    value = SCCalendar::GetDaysOfTheWeek(dayNum);
    return true;
}

bool CDate::GetTimeBasedOnNoon(ETimeBasedOnNoon& time) const noexcept
{
    if (hour == NONE)
        return false;
    time = hour % 24 < 12 ? TIMEBASEDONNOON_MORNING : TIMEBASEDONNOON_AFTERNOON;
    return true;
}

bool CDate::GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                           unsigned long long& numeric) const noexcept
{
    if (!SCCalendar::AreCriteria(startMonth, cutOffDate, daysOfWeek))
        return false;

    CDateNumeric made;
    DWORD grgYear = 0;
    const bool hasYear = year.GetGrg(grgYear);
    if (hasYear) {
        long firstDay = 0;
        long lastDay = 0;
        CDateNumeric::ERank rank = CDateNumeric::RANK_YEAR;
        if (month == NONE) {
            firstDay = SCCalendar::GetDayNum(grgYear, 1, 1);
            lastDay = SCCalendar::GetDayNum(grgYear, MONTHCNT_OF_YEAR, 31);
        } else if (day == NONE) {
            rank = CDateNumeric::RANK_MONTH;
            firstDay = SCCalendar::GetDayNum(grgYear, month, 1);
            lastDay = SCCalendar::GetDayNum(grgYear, month, SCCalendar::GetLastDay(grgYear, month));
        } else {
            rank = CDateNumeric::RANK_DAY;
            if (day > SCCalendar::GetLastDay(grgYear, month))
                return false;
            firstDay = lastDay = SCCalendar::GetDayNum(grgYear, month, day);
        }
        if (!CDateNumeric::CutToEra(year, firstDay, lastDay))
            return false;
        made.SetFirstDay(firstDay, rank);
    } else if (month != NONE) {
        constexpr long LEAP_YEAR = 2000; // 29 February is a day without year
        if (day != NONE && day > SCCalendar::GetLastDay(LEAP_YEAR, month))
            return false;
        made.SetPart(CDateNumeric::PART_MONTH, month);
    }
    if (day != NONE && (!hasYear || month == NONE))
        made.SetPart(CDateNumeric::PART_DAY, day);
    if (hour != NONE)
        made.SetPartFromZero(CDateNumeric::PART_HOUR, hour);
    if (minute != NONE)
        made.SetPartFromZero(CDateNumeric::PART_MINUTE, minute);
    if (second != NONE)
        made.SetPartFromZero(CDateNumeric::PART_SECOND, second);
    if (made.Get() == 0)
        return false;
    numeric = made.Get();
    return true;
}

bool CDate::GetDateString(char* buffer, DWORD size) const noexcept
{
    CFixedText<MAX_DATESTRING_SIZE> text;
    year.AppendTo(text);
    for (const BYTE part : {month, day}) {
        if (part == NONE)
            continue;
        if (!text.IsEmpty())
            text.Append("-");
        text.AppendNumber(part, 2);
    }
    const char* before = text.IsEmpty() ? "" : " ";
    for (const BYTE part : {hour, minute, second}) {
        if (part == NONE)
            continue;
        text.Append(before);
        text.AppendNumber(part, 2);
        before = ":";
    }
    return text.CopyTo(buffer, size);
}

std::unique_ptr<VCDate> CDate::CreateClone() const
{
    return std::make_unique<CDate>(*this);
}

bool CDate::WriteSpecByXML(CXMLWriter& writer) const
{
    CDateSpec spec;
    spec.year = year;
    const auto set = [&spec](CDateSpec::EPart part, BYTE value) {
        if (value != NONE)
            spec.SetPart(part, value);
    };
    set(CDateSpec::PART_MONTH, month);
    set(CDateSpec::PART_DAY, day);
    set(CDateSpec::PART_HOUR, hour);
    set(CDateSpec::PART_MINUTE, minute);
    set(CDateSpec::PART_SECOND, second);
    return spec.Write(GetType(), writer);
}

CXMLReader::EMthRetOfReadXML CDate::ReadSpecByXML(const CXMLReader& reader)
{
    CDateSpec spec;
    const CXMLReader::EMthRetOfReadXML result = spec.Read(GetType(), reader);
    if (result != CXMLReader::READXML_OK)
        return result;
    CDate read;
    read.year = spec.year;
    if (!spec.HasOnly({CDateSpec::PART_MONTH, CDateSpec::PART_DAY, CDateSpec::PART_HOUR,
                       CDateSpec::PART_MINUTE, CDateSpec::PART_SECOND},
                      true) ||
        !read.SetMonth(spec.GetPart(CDateSpec::PART_MONTH)) ||
        !read.SetDay(spec.GetPart(CDateSpec::PART_DAY)) ||
        !read.SetHour(spec.GetPart(CDateSpec::PART_HOUR)) ||
        !read.SetMinute(spec.GetPart(CDateSpec::PART_MINUTE)) ||
        !read.SetSecond(spec.GetPart(CDateSpec::PART_SECOND)))
        return CXMLReader::READXML_BADFORMAT;
    *this = read;
    return CXMLReader::READXML_OK;
}

bool CDate::GetDayNum(long& dayNum) const noexcept
{
    DWORD grgYear = 0;
    if (month == NONE || day == NONE || !year.GetGrg(grgYear) || day > SCCalendar::GetLastDay(grgYear, month))
        return false;
    dayNum = SCCalendar::GetDayNum(grgYear, month, day);
    return true;
}

} // namespace NSKZ::NSKZCore
