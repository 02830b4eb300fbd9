#ifndef DATETEXT_H
#define DATETEXT_H

#include "CDate.h"
#include "SCCalendar.h"

#include <memory>
#include <string>
#include <string_view>

namespace NSKZ::Test {

// The parts of a date object as text: "!" if it is null.
inline std::string GetParts(const NSKZCore::VCDate* date)
{
    if (date == nullptr)
        return "!";
    char text[NSKZCore::VCDate::MAX_DATESTRING_SIZE];
    return date->GetDateString(text, sizeof text) ? text : "does not fit";
}

inline NSKZCore::CDate MakeDay(DWORD year, DWORD month, DWORD day)
{
    NSKZCore::CDate date;
    date.SetYearOfTheGrgCalendar(year);
    date.SetMonth(month);
    date.SetDay(day);
    return date;
}

inline NSKZCore::CDate MakeDay(long dayNum)
{
    long year = 0;
    DWORD month = 0;
    DWORD day = 0;
    NSKZCore::SCCalendar::GetDay(dayNum, year, month, day);
    return MakeDay(static_cast<DWORD>(year), month, day);
}

// The three calendar criteria.
struct SCriteria
{
    DWORD startMonth = 4;
    DWORD cutOffDate = 31;
    NSKZCore::VCDate::EDaysOfTheWeek daysOfWeek = NSKZCore::VCDate::DAYSOFWEEK_SUNDAY;
};

// The number of a date; 0, which none has, if it has none.
inline unsigned long long GetNumeric(const NSKZCore::VCDate& date, const SCriteria& criteria = {})
{
    unsigned long long numeric = 0;
    return date.GetDateNumeric(criteria.startMonth, criteria.cutOffDate, criteria.daysOfWeek, numeric)
               ? numeric
               : 0;
}

} // namespace NSKZ::Test

#endif
