#include "CDateNumeric.h"

#include "SCCalendar.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

bool CDateNumeric::CutToEra(const CEraYear& year, long& firstDay, long& lastDay) noexcept
{
    if (SCCalendar::IsEraOfJapan(year.GetEra())) {
        long firstOfEra = 0;
        long lastOfEra = 0;
        SCCalendar::GetDaysOfEra(year.GetEra(), firstOfEra, lastOfEra);
        firstDay = std::max(firstDay, firstOfEra);
        lastDay = std::min(lastDay, lastOfEra);
    }
    return firstDay <= lastDay;
}

} // namespace NSKZ::NSKZCore
