#ifndef CDATE_H
#define CDATE_H

#include "CEraYear.h"
#include "VCDate.h"

namespace NSKZ::NSKZCore {

// A date of the calendar, or a time of the day: any of year, month, day, hour, minute and second. The year is
// a Gregorian one or a Japanese one with its era.
class KZCCOMMON_API CDate final : public VCDate
{
public:
    CDate() = default;

    // Each stores a part; false, with the part unset, for a value outside its limits. DATE_UNSETTING (of a
    // Japanese year, ERA_UNSETTING) unsets the part and gives true. A new year takes the place of the other.
    bool SetYearOfTheGrgCalendar(DWORD year) noexcept;           // MIN_GRGYEAR_VALUE to MAX_GRGYEAR_VALUE
    bool SetYearOfTheJpnCalendar(EEra era, DWORD year) noexcept; // as IsAppropriateYear, of an era of Japan
    bool SetMonth(DWORD month) noexcept;
    bool SetDay(DWORD day) noexcept;
    bool SetHour(DWORD hour) noexcept;
    bool SetMinute(DWORD minute) noexcept;
    bool SetSecond(DWORD second) noexcept;
    // Unsets all parts.
    void Clear() noexcept;

    // How the year is counted; ERA_UNSETTING without one.
    EEra GetEra() const noexcept { return year.GetEra(); }

    bool GetYearOfTheGrgCalendar(DWORD& value) const noexcept override;
    bool GetYearOfTheJpnCalendar(EEra& era, DWORD& value) const noexcept override;
    bool GetMonth(DWORD& value) const noexcept override;
    bool GetDay(DWORD& value) const noexcept override;
    bool GetHour(DWORD& value) const noexcept override;
    bool GetMinute(DWORD& value) const noexcept override;
    bool GetSecond(DWORD& value) const noexcept override;
    bool GetFiscalYearOfTheGrgCalendar(DWORD startMonth, DWORD cutOffDate,
                                       DWORD& value) const noexcept override;
    bool GetFiscalYearOfTheJpnCalendar(DWORD startMonth, DWORD cutOffDate, EEra& era,
                                       DWORD& value) const noexcept override;
    bool GetFiscalMonth(DWORD cutOffDate, EEra& era, DWORD& yearOfEra, DWORD& value) const noexcept override;
    bool GetFiscalMonth(DWORD cutOffDate, DWORD& grgYear, DWORD& value) const noexcept override;
    bool GetFiscalMonth(DWORD cutOffDate, DWORD& value) const noexcept override;
    bool GetHalfTerm(DWORD startMonth, DWORD cutOffDate, DWORD& halfTerm) const noexcept override;
    bool GetQuarterTerm(DWORD startMonth, DWORD cutOffDate, DWORD& quarterTerm) const noexcept override;
    bool GetWeekOfTheYear(EDaysOfTheWeek daysOfWeek, DWORD& week) const noexcept override;
    bool GetWeekOfTheMonth(EDaysOfTheWeek daysOfWeek, DWORD& week) const noexcept override;
    bool GetWeekOfTheFiscalYear(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                DWORD& week) const noexcept override;
    bool GetWeekOfTheFiscalMonth(DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                 DWORD& week) const noexcept override;
    bool GetDaysOfTheWeek(EDaysOfTheWeek& value) const noexcept override;
    bool GetTimeBasedOnNoon(ETimeBasedOnNoon& time) const noexcept override;
    bool GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                        unsigned long long& numeric) const noexcept override;
    bool GetDateString(char* buffer, DWORD size) const noexcept override;
    EDateObjType GetType() const noexcept override { return DATEOBJTYPE_DATE; }
    std::unique_ptr<VCDate> CreateClone() const override;
    bool WriteSpecByXML(CXMLWriter& writer) const override;
    CXMLReader::EMthRetOfReadXML ReadSpecByXML(const CXMLReader& reader) override;

private:
    // Whether year, month and day are held and are a real day.
    bool GetDayNum(long& dayNum) const noexcept;

    static constexpr BYTE NONE = 255;

    CEraYear year;
    BYTE month = NONE;
    BYTE day = NONE;
    BYTE hour = NONE;
    BYTE minute = NONE;
    BYTE second = NONE;
};

} // namespace NSKZ::NSKZCore

#endif
