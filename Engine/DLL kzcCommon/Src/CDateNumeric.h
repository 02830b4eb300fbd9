#ifndef CDATENUMERIC_H
#define CDATENUMERIC_H

#include "CEraYear.h"
#include "VCDate.h"

namespace NSKZ::NSKZCore {

// Builds the number of VCDate::GetDateNumeric. From the highest bit down:
//
//   1 bit    0
//   1 bit    whether there is a year
//   22 bits  with a year: the first day in time; without: the number of the half or the quarter
//   4 bits   with a year: the rank, longer stretches lower
//   36 bits  what these do not tell: month (4), week (6), day of the week (3), day (5), hour (6), minute (6),
//            second (6); each 0 where it is not held; what has values from 0 on is one more
class CDateNumeric
{
public:
    enum ERank
    {
        RANK_FISCALYEAR = 1,
        RANK_YEAR,
        RANK_HALFTERM,
        RANK_QUARTERTERM,
        RANK_FISCALMONTH,
        RANK_MONTH,
        RANK_WEEK,
        RANK_DAY,
    };
    // The lowest bit of a part.
    enum EPart
    {
        PART_SECOND = 0,
        PART_MINUTE = 6,
        PART_HOUR = 12,
        PART_DAY = 18,
        PART_DAYOFWEEK = 23,
        PART_WEEK = 26,
        PART_MONTH = 32,
    };

    // Makes it the number of a stretch that begins on a day of the years 0 to 10000.
    void SetFirstDay(long dayNum, ERank rank) noexcept
    {
        numeric |= 1ULL << 62 | static_cast<unsigned long long>(dayNum + DAYS_BEFORE) << 40 |
                   static_cast<unsigned long long>(rank) << 36;
    }
    // Makes it that of a half or a quarter without year.
    void SetTerm(DWORD term) noexcept { numeric |= static_cast<unsigned long long>(term) << 40; }
    // A part whose values begin with 1, or with 0.
    void SetPart(EPart part, DWORD value) noexcept
    {
        numeric |= static_cast<unsigned long long>(value) << part;
    }
    void SetPartFromZero(EPart part, DWORD value) noexcept { SetPart(part, value + 1); }
    unsigned long long Get() const noexcept { return numeric; }

    // Cuts a stretch of days to the days of an era: of one of Japan; others change nothing. False if none is
    // left.
    static bool CutToEra(const CEraYear& year, long& firstDay, long& lastDay) noexcept;

private:
    // Days of the year 0 are counted too.
    static constexpr long DAYS_BEFORE = 400;

    unsigned long long numeric = 0;
};

} // namespace NSKZ::NSKZCore

#endif
