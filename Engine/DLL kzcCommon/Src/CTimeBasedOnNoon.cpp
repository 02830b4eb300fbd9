#include "CTimeBasedOnNoon.h"

#include "CDateNumeric.h"
#include "CDateSpec.h"
#include "CFixedText.h"
#include "SCCalendar.h"

namespace NSKZ::NSKZCore {

bool CTimeBasedOnNoon::SetTimeBasedOnNoon(ETimeBasedOnNoon value) noexcept
{
    time = TIMEBASEDONNOON_UNSETTING;
    if (value != TIMEBASEDONNOON_MORNING && value != TIMEBASEDONNOON_AFTERNOON)
        return value == TIMEBASEDONNOON_UNSETTING;
    time = value;
    return true;
}

void CTimeBasedOnNoon::Clear() noexcept
{
    *this = CTimeBasedOnNoon();
}

bool CTimeBasedOnNoon::GetTimeBasedOnNoon(ETimeBasedOnNoon& value) const noexcept
{
    if (time == TIMEBASEDONNOON_UNSETTING)
        return false;
    value = time;
    return true;
}

bool CTimeBasedOnNoon::GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                      unsigned long long& numeric) const noexcept
{
    if (!SCCalendar::AreCriteria(startMonth, cutOffDate, daysOfWeek) || time == TIMEBASEDONNOON_UNSETTING)
        return false;
    // It stands in front of its first hour.
    constexpr DWORD NOON = 12;
    CDateNumeric made;
    made.SetPartFromZero(CDateNumeric::PART_HOUR, time == TIMEBASEDONNOON_MORNING ? 0 : NOON);
    numeric = made.Get();
    return true;
}

bool CTimeBasedOnNoon::GetDateString(char* buffer, DWORD size) const noexcept
{
    CFixedText<MAX_DATESTRING_SIZE> text;
    if (time != TIMEBASEDONNOON_UNSETTING)
        text.Append(time == TIMEBASEDONNOON_MORNING ? "AM" : "PM");
    return text.CopyTo(buffer, size);
}

std::unique_ptr<VCDate> CTimeBasedOnNoon::CreateClone() const
{
    return std::make_unique<CTimeBasedOnNoon>(*this);
}

bool CTimeBasedOnNoon::WriteSpecByXML(CXMLWriter& writer) const
{
    CDateSpec spec;
    spec.SetPart(CDateSpec::PART_NOON, time);
    return spec.Write(GetType(), writer);
}

CXMLReader::EMthRetOfReadXML CTimeBasedOnNoon::ReadSpecByXML(const CXMLReader& reader)
{
    CDateSpec spec;
    const CXMLReader::EMthRetOfReadXML result = spec.Read(GetType(), reader);
    if (result != CXMLReader::READXML_OK)
        return result;
    CTimeBasedOnNoon read;
    if (!spec.HasOnly({CDateSpec::PART_NOON}, false) ||
        !read.SetTimeBasedOnNoon(static_cast<ETimeBasedOnNoon>(spec.GetPart(CDateSpec::PART_NOON))))
        return CXMLReader::READXML_BADFORMAT;
    *this = read;
    return CXMLReader::READXML_OK;
}

} // namespace NSKZ::NSKZCore
