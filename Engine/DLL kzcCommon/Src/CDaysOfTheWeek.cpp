#include "CDaysOfTheWeek.h"

#include "CDateNumeric.h"
#include "CDateSpec.h"
#include "CFixedText.h"
#include "SCCalendar.h"

#include <array>

namespace NSKZ::NSKZCore {

bool CDaysOfTheWeek::SetMonth(DWORD value) noexcept
{
    return type == DAYSOFWEEKTYPE_MONTH && StoreMonth(value);
}

bool CDaysOfTheWeek::SetFiscalMonth(DWORD value) noexcept
{
    return type == DAYSOFWEEKTYPE_FISCALMONTH && StoreMonth(value);
}

bool CDaysOfTheWeek::SetWeekNum(DWORD value) noexcept
{
    week = 0;
    if (value == DATE_UNSETTING)
        return true;
    if (value < 1 || value > MAXWEEK_OF_MONTH)
        return false;
    week = static_cast<BYTE>(value);
    return true;
}

bool CDaysOfTheWeek::SetDaysOfTheWeek(EDaysOfTheWeek value) noexcept
{
    day = NO_DAY;
    if (value == DAYSOFWEEK_UNSETTING)
        return true;
    if (!SCCalendar::IsDaysOfTheWeek(value))
        return false;
    day = static_cast<BYTE>(value);
    return true;
}

void CDaysOfTheWeek::Clear() noexcept
{
    *this = CDaysOfTheWeek(type);
}

bool CDaysOfTheWeek::GetMonth(DWORD& value) const noexcept
{
    if (type != DAYSOFWEEKTYPE_MONTH || month == 0)
        return false;
    value = month;
    return true;
}

bool CDaysOfTheWeek::GetFiscalMonth(DWORD cutOffDate, DWORD& value) const noexcept
{
    if (type != DAYSOFWEEKTYPE_FISCALMONTH || !SCCalendar::IsCutOffDate(cutOffDate) || month == 0)
        return false;
    value = month;
    return true;
}

bool CDaysOfTheWeek::GetWeekOfTheMonth(EDaysOfTheWeek daysOfWeek, DWORD& value) const noexcept
{
    if (type != DAYSOFWEEKTYPE_MONTH || !SCCalendar::IsDaysOfTheWeek(daysOfWeek) || week == 0)
        return false;
    value = week;
    return true;
}

bool CDaysOfTheWeek::GetWeekOfTheFiscalMonth(DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                             DWORD& value) const noexcept
{
    if (type != DAYSOFWEEKTYPE_FISCALMONTH || !SCCalendar::IsCutOffDate(cutOffDate) ||
        !SCCalendar::IsDaysOfTheWeek(daysOfWeek) || week == 0)
        return false;
    value = week;
    return true;
}

bool CDaysOfTheWeek::GetDaysOfTheWeek(EDaysOfTheWeek& value) const noexcept
{
    if (day == NO_DAY)
        return false;
    value = static_cast<EDaysOfTheWeek>(day);
    return true;
}

bool CDaysOfTheWeek::GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                    unsigned long long& numeric) const noexcept
{
    if (!SCCalendar::AreCriteria(startMonth, cutOffDate, daysOfWeek))
        return false;
    CDateNumeric made;
    if (month != 0)
        made.SetPart(CDateNumeric::PART_MONTH, type == DAYSOFWEEKTYPE_FISCALMONTH
                                                   ? SCCalendar::GetPlaceInFiscalYear(month, startMonth) + 1
                                                   : month);
    if (week != 0)
        made.SetPart(CDateNumeric::PART_WEEK, week);
    if (day != NO_DAY)
        made.SetPartFromZero(CDateNumeric::PART_DAYOFWEEK,
                             SCCalendar::GetPlaceInWeek(static_cast<EDaysOfTheWeek>(day), daysOfWeek));
    if (made.Get() == 0)
        return false;
    numeric = made.Get();
    return true;
}

bool CDaysOfTheWeek::GetDateString(char* buffer, DWORD size) const noexcept
{
    constexpr std::array<const char*, 7> NAMES = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    CFixedText<MAX_DATESTRING_SIZE> text;
    if (month != 0)
        text.AppendNumber(month, 2);
    if (week != 0) {
        text.Append(text.IsEmpty() ? "W" : " W");
        text.AppendNumber(week);
    }
    if (day != NO_DAY) {
        if (!text.IsEmpty())
            text.Append(" ");
        text.Append(NAMES[day]);
    }
    return text.CopyTo(buffer, size);
}

std::unique_ptr<VCDate> CDaysOfTheWeek::CreateClone() const
{
    return std::make_unique<CDaysOfTheWeek>(*this);
}

bool CDaysOfTheWeek::WriteSpecByXML(CXMLWriter& writer) const
{
    CDateSpec spec;
    spec.SetPart(CDateSpec::PART_KIND, type);
    if (month != 0)
        spec.SetPart(CDateSpec::PART_MONTH, month);
    if (week != 0)
        spec.SetPart(CDateSpec::PART_WEEK, week);
    if (day != NO_DAY)
        spec.SetPart(CDateSpec::PART_DAYOFWEEK, day);
    return spec.Write(GetType(), writer);
}

CXMLReader::EMthRetOfReadXML CDaysOfTheWeek::ReadSpecByXML(const CXMLReader& reader)
{
    CDateSpec spec;
    const CXMLReader::EMthRetOfReadXML result = spec.Read(GetType(), reader);
    if (result != CXMLReader::READXML_OK)
        return result;
    const DWORD typeRead = spec.GetPart(CDateSpec::PART_KIND);
    if (typeRead != DAYSOFWEEKTYPE_MONTH && typeRead != DAYSOFWEEKTYPE_FISCALMONTH)
        return CXMLReader::READXML_BADFORMAT;
    CDaysOfTheWeek read(static_cast<EDaysOfTheWeekType>(typeRead));
    if (!spec.HasOnly(
            {CDateSpec::PART_KIND, CDateSpec::PART_MONTH, CDateSpec::PART_WEEK, CDateSpec::PART_DAYOFWEEK},
            false) ||
        !read.StoreMonth(spec.GetPart(CDateSpec::PART_MONTH)) ||
        !read.SetWeekNum(spec.GetPart(CDateSpec::PART_WEEK)) ||
        !read.SetDaysOfTheWeek(static_cast<EDaysOfTheWeek>(spec.GetPart(CDateSpec::PART_DAYOFWEEK))))
        return CXMLReader::READXML_BADFORMAT;
    *this = read;
    return CXMLReader::READXML_OK;
}

bool CDaysOfTheWeek::StoreMonth(DWORD value) noexcept
{
    month = 0;
    if (value == DATE_UNSETTING)
        return true;
    if (!SCCalendar::IsMonth(value))
        return false;
    month = static_cast<BYTE>(value);
    return true;
}

} // namespace NSKZ::NSKZCore
