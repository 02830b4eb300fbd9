#ifndef SCCALENDAR_H
#define SCCALENDAR_H

#include "CEraYear.h"
#include "VCDate.h"

namespace NSKZ::NSKZCore {

// The calendar: days by number, eras, fiscal terms and weeks under the three calendar criteria. All of it is
// arithmetic in constant time. Months, cut-off days and the like are within their limits; nothing tests it.
//
// Definitions.
//   Day number. Days are counted; 1 January of the year 1 has number 1. The Gregorian calendar is used
//     for all years, those before its introduction too.
//   Era. Meiji begins on 1868-10-23, Taisho on 1912-07-30, Showa on 1926-12-25, Heisei on 1989-01-08 and
//     Reiwa on 2019-05-01, by the Gregorian calendar; each ends on the day before the next one begins. So a
//     day of change belongs to the new era: 1912-07-30 is Taisho 1, although the old Emperor died on it. (In
//     texts 1912-07-30 is understood as Meiji 45 too, and 1926-12-25 as Taisho 15: both were so written.)
//     The first year of an era is the Gregorian year in which it begins, and each 1 January the next begins.
//   Fiscal month. With cut-off day c the fiscal month of a month ends on the c-th of it, or on its last day
//     if that comes first, and begins on the day after the end of the one before. It bears number and
//     calendar year of the month that it ends in: with c = 20 the fiscal month January 2024 is 2023-12-21 to
//     2024-01-20. With c = 31 fiscal months are the months. The Japanese year of a fiscal month is that of
//     its last day.
//   Fiscal year. With start month s it is the fiscal month s and the eleven behind it. It bears the year
//     of that first fiscal month: with s = 4 and c = 31 fiscal year 2024 is 2024-04-01 to 2025-03-31; with
//     s = 1 and c = 20 it is 2023-12-21 to 2024-12-20. Its Japanese year is that of 31 December of the year
//     that it bears, so that a fiscal year has one name only: fiscal year 2019 is that of Reiwa 1 although
//     it begins in Heisei 31.
//   Half, quarter. The first half is the first six fiscal months of the fiscal year, the second the others;
//     a quarter is three.
//   Week. Weeks begin on the first day of the week. Week 1 of a year, a month, a fiscal year or a
//     fiscal month is the one that its first day lies in, whatever it has left of it, and weeks are cut at
//     its ends: a week that runs over the end of a year is the last of the old and the first of the new one.
//     A year has 53 or 54 weeks, a month four to six.
class KZCCOMMON_API SCCalendar
{
public:
    SCCalendar() = delete;

    static constexpr DWORD MONTHS_OF_HALFTERM = VCDate::MONTHCNT_OF_YEAR / VCDate::HALFTERMCNT_OF_YEAR;
    static constexpr DWORD MONTHS_OF_QUARTERTERM = VCDate::MONTHCNT_OF_YEAR / VCDate::QUARTERTERMCNT_OF_YEAR;

    static bool IsMonth(DWORD month) noexcept { return month >= 1 && month <= VCDate::MONTHCNT_OF_YEAR; }
    static bool IsCutOffDate(DWORD day) noexcept { return day >= 1 && day <= VCDate::MAXDAY_OF_MONTH; }
    static bool IsDaysOfTheWeek(DWORD day) noexcept { return day <= VCDate::DAYSOFWEEK_SATURDAY; }
    static bool AreCriteria(DWORD startMonth, DWORD cutOffDate, DWORD daysOfWeek) noexcept
    {
        return IsMonth(startMonth) && IsCutOffDate(cutOffDate) && IsDaysOfTheWeek(daysOfWeek);
    }
    static bool IsEraOfJapan(DWORD era) noexcept;

    // The last day of a month, which is a real one of a year from 0 to 10000.
    static DWORD GetLastDay(long year, DWORD month) noexcept;
    // Whether there is such a day in the years 1 to 9999.
    static bool IsRealDay(DWORD year, DWORD month, DWORD day) noexcept;
    // The number of a day; years from 0 to 10000, the month a real one, the day from 0 (the last of the month
    // before) to 32.
    static long GetDayNum(long year, DWORD month, DWORD day) noexcept;
    // The day of a number.
    static void GetDay(long dayNum, long& year, DWORD& month, DWORD& day) noexcept;
    static VCDate::EDaysOfTheWeek GetDaysOfTheWeek(long dayNum) noexcept;
    // The place of a day in a week that begins with `first`, from 0.
    static DWORD GetPlaceInWeek(VCDate::EDaysOfTheWeek day, VCDate::EDaysOfTheWeek first) noexcept;

    // The era of a day and its year. False before Meiji.
    static bool GetJpnYear(long dayNum, VCDate::EEra& era, DWORD& year) noexcept;
    // The Gregorian year of a year of an era of Japan. False for one that there is not.
    static bool GetGrgYear(VCDate::EEra era, DWORD yearOfEra, DWORD& grgYear) noexcept;
    // First and last day of an era of Japan; Reiwa has no end before the last of the years.
    static void GetDaysOfEra(VCDate::EEra era, long& first, long& last) noexcept;

    // The fiscal month that a real day lies in, and its year, from 1 to 10000.
    static void GetFiscalMonth(long year, DWORD month, DWORD day, DWORD cutOffDate, long& fiscalMonthYear,
                               DWORD& fiscalMonth) noexcept;
    // First and last day of a fiscal month.
    static long GetFirstDayOfFiscalMonth(long year, DWORD fiscalMonth, DWORD cutOffDate) noexcept;
    static long GetLastDayOfFiscalMonth(long year, DWORD fiscalMonth, DWORD cutOffDate) noexcept;
    // The first day of a fiscal month of a year as it is counted; with month 0 of the year. False for a
    // Japanese year that is not the one of the fiscal month's last day.
    static bool GetFirstDayOfNamedFiscalMonth(const CEraYear& year, DWORD fiscalMonth, DWORD cutOffDate,
                                              long& firstDay) noexcept;
    // The fiscal year of a fiscal month, and the place of the month in it, from 0.
    static long GetFiscalYear(long year, DWORD fiscalMonth, DWORD startMonth) noexcept;
    static DWORD GetPlaceInFiscalYear(DWORD fiscalMonth, DWORD startMonth) noexcept;
    // The half and the quarter of the fiscal year that a fiscal month lies in.
    static DWORD GetHalfTerm(DWORD fiscalMonth, DWORD startMonth) noexcept;
    static DWORD GetQuarterTerm(DWORD fiscalMonth, DWORD startMonth) noexcept;
    // The first day of the fiscal month that is `place` months behind the first one of a fiscal year; 12 is
    // the first of the next fiscal year.
    static long GetFirstDayInFiscalYear(long fiscalYear, DWORD place, DWORD startMonth,
                                        DWORD cutOffDate) noexcept;

    // The week of a day in the stretch that begins on `firstDay`, from 1.
    static DWORD GetWeek(long dayNum, long firstDay, VCDate::EDaysOfTheWeek daysOfWeek) noexcept;
    // The first day of a week of that stretch.
    static long GetFirstDayOfWeek(DWORD week, long firstDay, VCDate::EDaysOfTheWeek daysOfWeek) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
