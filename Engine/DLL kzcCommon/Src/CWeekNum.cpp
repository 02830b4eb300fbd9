#include "CWeekNum.h"

#include "CDateNumeric.h"
#include "CDateSpec.h"
#include "CFixedText.h"
#include "SCCalendar.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

bool CWeekNum::SetYearOfTheGrgCalendar(DWORD value) noexcept
{
    return HasCalendarYear() && year.SetGrg(value);
}

bool CWeekNum::SetYearOfTheJpnCalendar(EEra era, DWORD value) noexcept
{
    return HasCalendarYear() && year.SetJpn(era, value);
}

bool CWeekNum::SetFiscalYearOfTheGrgCalendar(DWORD value) noexcept
{
    return type == WEEKNUMTYPE_FISCALYEAR && year.SetGrg(value);
}

bool CWeekNum::SetFiscalYearOfTheJpnCalendar(EEra era, DWORD value) noexcept
{
    return type == WEEKNUMTYPE_FISCALYEAR && year.SetJpn(era, value);
}

bool CWeekNum::SetMonth(DWORD value) noexcept
{
    return type == WEEKNUMTYPE_MONTH && StoreMonth(value);
}

bool CWeekNum::SetFiscalMonth(DWORD value) noexcept
{
    return type == WEEKNUMTYPE_FISCALMONTH && StoreMonth(value);
}

bool CWeekNum::SetWeekNum(DWORD value) noexcept
{
    week = 0;
    if (value == DATE_UNSETTING)
        return true;
    const bool ofYear = type == WEEKNUMTYPE_YEAR || type == WEEKNUMTYPE_FISCALYEAR;
    const bool ofMonth = type == WEEKNUMTYPE_MONTH || type == WEEKNUMTYPE_FISCALMONTH;
    if (value < 1 || !((ofYear && value <= MAXWEEK_OF_YEAR) || (ofMonth && value <= MAXWEEK_OF_MONTH)))
        return false;
    week = static_cast<BYTE>(value);
    return true;
}

void CWeekNum::Clear() noexcept
{
    *this = CWeekNum(type);
}

bool CWeekNum::GetYearOfTheGrgCalendar(DWORD& value) const noexcept
{
    return (type == WEEKNUMTYPE_YEAR || type == WEEKNUMTYPE_MONTH) && year.GetGrg(value);
}

bool CWeekNum::GetYearOfTheJpnCalendar(EEra& era, DWORD& value) const noexcept
{
    if (type == WEEKNUMTYPE_MONTH && month != 0) {
        CDate asMonth;
        return GetAsMonth(asMonth) && asMonth.GetYearOfTheJpnCalendar(era, value);
    }
    return (type == WEEKNUMTYPE_YEAR || type == WEEKNUMTYPE_MONTH) && year.GetJpn(era, value);
}

bool CWeekNum::GetMonth(DWORD& value) const noexcept
{
    if (type != WEEKNUMTYPE_MONTH || month == 0)
        return false;
    value = month;
    return true;
}

bool CWeekNum::GetFiscalYearOfTheGrgCalendar(DWORD startMonth, DWORD cutOffDate, DWORD& value) const noexcept
{
    CFiscalMonth asFiscalMonth;
    if (GetAsFiscalMonth(asFiscalMonth))
        return asFiscalMonth.GetFiscalYearOfTheGrgCalendar(startMonth, cutOffDate, value);
    return type == WEEKNUMTYPE_FISCALYEAR && SCCalendar::IsMonth(startMonth) &&
           SCCalendar::IsCutOffDate(cutOffDate) && year.GetGrg(value);
}

bool CWeekNum::GetFiscalYearOfTheJpnCalendar(DWORD startMonth, DWORD cutOffDate, EEra& era,
                                             DWORD& value) const noexcept
{
    CFiscalMonth asFiscalMonth;
    if (GetAsFiscalMonth(asFiscalMonth))
        return asFiscalMonth.GetFiscalYearOfTheJpnCalendar(startMonth, cutOffDate, era, value);
    return type == WEEKNUMTYPE_FISCALYEAR && SCCalendar::IsMonth(startMonth) &&
           SCCalendar::IsCutOffDate(cutOffDate) && year.GetJpn(era, value);
}

bool CWeekNum::GetFiscalMonth(DWORD cutOffDate, EEra& era, DWORD& yearOfEra, DWORD& value) const noexcept
{
    CFiscalMonth asFiscalMonth;
    return GetAsFiscalMonth(asFiscalMonth) && asFiscalMonth.GetFiscalMonth(cutOffDate, era, yearOfEra, value);
}

bool CWeekNum::GetFiscalMonth(DWORD cutOffDate, DWORD& grgYear, DWORD& value) const noexcept
{
    CFiscalMonth asFiscalMonth;
    return GetAsFiscalMonth(asFiscalMonth) && asFiscalMonth.GetFiscalMonth(cutOffDate, grgYear, value);
}

bool CWeekNum::GetFiscalMonth(DWORD cutOffDate, DWORD& value) const noexcept
{
    CFiscalMonth asFiscalMonth;
    return GetAsFiscalMonth(asFiscalMonth) && asFiscalMonth.GetFiscalMonth(cutOffDate, value);
}

bool CWeekNum::GetWeekOfTheYear(EDaysOfTheWeek daysOfWeek, DWORD& value) const noexcept
{
    return GiveWeek(WEEKNUMTYPE_YEAR, daysOfWeek, value);
}

bool CWeekNum::GetWeekOfTheMonth(EDaysOfTheWeek daysOfWeek, DWORD& value) const noexcept
{
    return GiveWeek(WEEKNUMTYPE_MONTH, daysOfWeek, value);
}

bool CWeekNum::GetWeekOfTheFiscalYear(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                      DWORD& value) const noexcept
{
    return SCCalendar::IsMonth(startMonth) && SCCalendar::IsCutOffDate(cutOffDate) &&
           GiveWeek(WEEKNUMTYPE_FISCALYEAR, daysOfWeek, value);
}

bool CWeekNum::GetWeekOfTheFiscalMonth(DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                       DWORD& value) const noexcept
{
    return SCCalendar::IsCutOffDate(cutOffDate) && GiveWeek(WEEKNUMTYPE_FISCALMONTH, daysOfWeek, value);
}

bool CWeekNum::GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                              unsigned long long& numeric) const noexcept
{
    if (!SCCalendar::AreCriteria(startMonth, cutOffDate, daysOfWeek))
        return false;

    CDateNumeric made;
    if (year.IsSet()) {
        long firstDay = 0;
        long lastDay = 0;
        CDateNumeric::ERank rank = CDateNumeric::RANK_YEAR;
        if (!GetStretch(startMonth, cutOffDate, firstDay, lastDay, rank))
            return false;
        if (week != 0 && !LacksMonth()) {
            const long firstOfWeek = SCCalendar::GetFirstDayOfWeek(week, firstDay, daysOfWeek);
            lastDay = std::min(lastDay, SCCalendar::GetFirstDayOfWeek(week + 1U, firstDay, daysOfWeek) - 1);
            firstDay = firstOfWeek;
            rank = CDateNumeric::RANK_WEEK;
        }
        // Of fiscal terms the Japanese year is a name and cuts nothing.
        const bool isCut = type == WEEKNUMTYPE_YEAR || type == WEEKNUMTYPE_MONTH;
        if (isCut ? !CDateNumeric::CutToEra(year, firstDay, lastDay) : firstDay > lastDay)
            return false;
        made.SetFirstDay(firstDay, rank);
        if (week != 0 && LacksMonth())
            made.SetPart(CDateNumeric::PART_WEEK, week);
    } else {
        if (month != 0)
            made.SetPart(CDateNumeric::PART_MONTH,
                         type == WEEKNUMTYPE_FISCALMONTH
                             ? SCCalendar::GetPlaceInFiscalYear(month, startMonth) + 1
                             : month);
        if (week != 0)
            made.SetPart(CDateNumeric::PART_WEEK, week);
        if (made.Get() == 0)
            return false;
    }
    numeric = made.Get();
    return true;
}

bool CWeekNum::GetDateString(char* buffer, DWORD size) const noexcept
{
    CFixedText<MAX_DATESTRING_SIZE> text;
    if (type == WEEKNUMTYPE_FISCALYEAR && year.IsSet())
        text.Append("FY");
    year.AppendTo(text);
    if (month != 0) {
        if (!text.IsEmpty())
            text.Append("-");
        text.AppendNumber(month, 2);
    }
    if (week != 0) {
        text.Append(text.IsEmpty() ? "W" : " W");
        text.AppendNumber(week);
    }
    return text.CopyTo(buffer, size);
}

std::unique_ptr<VCDate> CWeekNum::CreateClone() const
{
    return std::make_unique<CWeekNum>(*this);
}

bool CWeekNum::WriteSpecByXML(CXMLWriter& writer) const
{
    CDateSpec spec;
    spec.SetPart(CDateSpec::PART_KIND, type);
    spec.year = year;
    if (month != 0)
        spec.SetPart(CDateSpec::PART_MONTH, month);
    if (week != 0)
        spec.SetPart(CDateSpec::PART_WEEK, week);
    return spec.Write(GetType(), writer);
}

CXMLReader::EMthRetOfReadXML CWeekNum::ReadSpecByXML(const CXMLReader& reader)
{
    CDateSpec spec;
    const CXMLReader::EMthRetOfReadXML result = spec.Read(GetType(), reader);
    if (result != CXMLReader::READXML_OK)
        return result;
    CWeekNum read(static_cast<EWeekNumType>(spec.GetPart(CDateSpec::PART_KIND)));
    switch (read.type) {
    case WEEKNUMTYPE_YEAR:
    case WEEKNUMTYPE_MONTH:
    case WEEKNUMTYPE_FISCALYEAR:
    case WEEKNUMTYPE_FISCALMONTH:
        break;
    default:
        return CXMLReader::READXML_BADFORMAT;
    }
    read.year = spec.year;
    const bool ofMonth = read.type == WEEKNUMTYPE_MONTH || read.type == WEEKNUMTYPE_FISCALMONTH;
    const DWORD monthRead = spec.GetPart(CDateSpec::PART_MONTH);
    if (!spec.HasOnly({CDateSpec::PART_KIND, CDateSpec::PART_MONTH, CDateSpec::PART_WEEK}, true) ||
        (monthRead != DATE_UNSETTING && !ofMonth) || !read.StoreMonth(monthRead) ||
        !read.SetWeekNum(spec.GetPart(CDateSpec::PART_WEEK)))
        return CXMLReader::READXML_BADFORMAT;
    *this = read;
    return CXMLReader::READXML_OK;
}

bool CWeekNum::HasCalendarYear() const noexcept
{
    return type == WEEKNUMTYPE_YEAR || type == WEEKNUMTYPE_MONTH || type == WEEKNUMTYPE_FISCALMONTH;
}

// Whether it is a week of a month that is not told.
bool CWeekNum::LacksMonth() const noexcept
{
    return (type == WEEKNUMTYPE_MONTH || type == WEEKNUMTYPE_FISCALMONTH) && month == 0;
}

bool CWeekNum::StoreMonth(DWORD value) noexcept
{
    month = 0;
    if (value == DATE_UNSETTING)
        return true;
    if (!SCCalendar::IsMonth(value))
        return false;
    month = static_cast<BYTE>(value);
    return true;
}

bool CWeekNum::GiveWeek(EWeekNumType asked, EDaysOfTheWeek daysOfWeek, DWORD& value) const noexcept
{
    if (type != asked || !SCCalendar::IsDaysOfTheWeek(daysOfWeek) || week == 0)
        return false;
    value = week;
    return true;
}

bool CWeekNum::GetAsMonth(CDate& asMonth) const noexcept
{
    return (year.GetEra() == ERA_GREGORIAN
                ? asMonth.SetYearOfTheGrgCalendar(year.GetYear())
                : asMonth.SetYearOfTheJpnCalendar(year.GetEra(), year.GetYear())) &&
           asMonth.SetMonth(month);
}

bool CWeekNum::GetAsFiscalMonth(CFiscalMonth& asFiscalMonth) const noexcept
{
    return type == WEEKNUMTYPE_FISCALMONTH && month != 0 &&
           (year.GetEra() == ERA_GREGORIAN
                ? asFiscalMonth.SetYearOfTheGrgCalendar(year.GetYear())
                : asFiscalMonth.SetYearOfTheJpnCalendar(year.GetEra(), year.GetYear())) &&
           asFiscalMonth.SetFiscalMonth(month);
}

// The stretch that it is a week of; there is a year. False for a year or month that there is not.
bool CWeekNum::GetStretch(DWORD startMonth, DWORD cutOffDate, long& firstDay, long& lastDay,
                          CDateNumeric::ERank& rank) const noexcept
{
    DWORD grgYear = 0;
    if (!year.GetGrg(grgYear))
        return false;
    if (type == WEEKNUMTYPE_FISCALYEAR) {
        rank = CDateNumeric::RANK_FISCALYEAR;
        if (!year.GetGrgOfNamingYear(grgYear))
            return false;
        firstDay = SCCalendar::GetFirstDayInFiscalYear(grgYear, 0, startMonth, cutOffDate);
        lastDay = SCCalendar::GetFirstDayInFiscalYear(grgYear, MONTHCNT_OF_YEAR, startMonth, cutOffDate) - 1;
        return true;
    }
    if (month == 0) {
        firstDay = SCCalendar::GetDayNum(grgYear, 1, 1);
        lastDay = SCCalendar::GetDayNum(grgYear, MONTHCNT_OF_YEAR, MAXDAY_OF_MONTH);
        return true;
    }
    if (type == WEEKNUMTYPE_MONTH) {
        rank = CDateNumeric::RANK_MONTH;
        firstDay = SCCalendar::GetDayNum(grgYear, month, 1);
        lastDay = SCCalendar::GetDayNum(grgYear, month, SCCalendar::GetLastDay(grgYear, month));
        return true;
    }
    rank = CDateNumeric::RANK_FISCALMONTH;
    lastDay = SCCalendar::GetLastDayOfFiscalMonth(grgYear, month, cutOffDate);
    return SCCalendar::GetFirstDayOfNamedFiscalMonth(year, month, cutOffDate, firstDay);
}

} // namespace NSKZ::NSKZCore
