#ifndef CWEEKNUM_H
#define CWEEKNUM_H

#include "CDateNumeric.h"
#include "CEraYear.h"
#include "CFiscalMonth.h"
#include "VCDate.h"

namespace NSKZ::NSKZCore {

// A week of a year, a month, a fiscal year or a fiscal month, as its type says. The stretch that it is a week
// of may lack its parts, down to the bare number of the week.
class KZCCOMMON_API CWeekNum final : public VCDate
{
public:
    enum EWeekNumType : DWORD
    {
        WEEKNUMTYPE_YEAR = 1,          // holds year and week
        WEEKNUMTYPE_MONTH = 2,         // year, month, week
        WEEKNUMTYPE_FISCALYEAR = 256,  // fiscal year, week
        WEEKNUMTYPE_FISCALMONTH = 512, // year and fiscal month as GetFiscalMonth gives them, week
    };

    // A type that is none of these makes an object that takes and gives nothing.
    explicit CWeekNum(EWeekNumType weekNumType) noexcept : type(weekNumType) {}

    // As those of CDate; false too for a part that the type does not hold. The Japanese year of a week of the
    // year or of the month is that of its days: a week in which the era changes is two, one of each era.
    bool SetYearOfTheGrgCalendar(DWORD value) noexcept; // of type 1, 2, 512
    bool SetYearOfTheJpnCalendar(EEra era, DWORD value) noexcept;
    bool SetFiscalYearOfTheGrgCalendar(DWORD value) noexcept; // of type 256
    bool SetFiscalYearOfTheJpnCalendar(EEra era, DWORD value) noexcept;
    bool SetMonth(DWORD value) noexcept;       // of type 2
    bool SetFiscalMonth(DWORD value) noexcept; // of type 512
    bool SetWeekNum(DWORD value) noexcept;     // 1 to MAXWEEK_OF_YEAR, or of a month to MAXWEEK_OF_MONTH
    // Unsets all parts; the type stays.
    void Clear() noexcept;

    EWeekNumType GetWeekNumType() const noexcept { return type; }
    // How the year is counted; ERA_UNSETTING without one.
    EEra GetEra() const noexcept { return year.GetEra(); }

    bool GetYearOfTheGrgCalendar(DWORD& value) const noexcept override; // of type 1, 2
    bool GetYearOfTheJpnCalendar(EEra& era, DWORD& value) const noexcept override;
    bool GetMonth(DWORD& value) const noexcept override; // of type 2
    bool GetFiscalYearOfTheGrgCalendar(DWORD startMonth, DWORD cutOffDate,
                                       DWORD& value) const noexcept override; // of type 256, 512
    bool GetFiscalYearOfTheJpnCalendar(DWORD startMonth, DWORD cutOffDate, EEra& era,
                                       DWORD& value) const noexcept override;
    bool GetFiscalMonth(DWORD cutOffDate, EEra& era, DWORD& yearOfEra,
                        DWORD& value) const noexcept override; // of type 512
    bool GetFiscalMonth(DWORD cutOffDate, DWORD& grgYear, DWORD& value) const noexcept override;
    bool GetFiscalMonth(DWORD cutOffDate, DWORD& value) const noexcept override;
    // Each of its type only.
    bool GetWeekOfTheYear(EDaysOfTheWeek daysOfWeek, DWORD& value) const noexcept override;
    bool GetWeekOfTheMonth(EDaysOfTheWeek daysOfWeek, DWORD& value) const noexcept override;
    bool GetWeekOfTheFiscalYear(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                DWORD& value) const noexcept override;
    bool GetWeekOfTheFiscalMonth(DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                 DWORD& value) const noexcept override;
    bool GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                        unsigned long long& numeric) const noexcept override;
    bool GetDateString(char* buffer, DWORD size) const noexcept override;
    EDateObjType GetType() const noexcept override { return DATEOBJTYPE_WEEKNUM; }
    std::unique_ptr<VCDate> CreateClone() const override;
    bool WriteSpecByXML(CXMLWriter& writer) const override;
    // Takes over the type too.
    CXMLReader::EMthRetOfReadXML ReadSpecByXML(const CXMLReader& reader) override;

private:
    bool HasCalendarYear() const noexcept;
    bool LacksMonth() const noexcept;
    bool StoreMonth(DWORD value) noexcept;
    bool GiveWeek(EWeekNumType asked, EDaysOfTheWeek daysOfWeek, DWORD& value) const noexcept;
    bool GetAsMonth(CDate& asMonth) const noexcept;
    bool GetAsFiscalMonth(CFiscalMonth& asFiscalMonth) const noexcept;
    bool GetStretch(DWORD startMonth, DWORD cutOffDate, long& firstDay, long& lastDay,
                    CDateNumeric::ERank& rank) const noexcept;

    EWeekNumType type;
    CEraYear year;
    BYTE month = 0; // 0 for none
    BYTE week = 0;  // 0 for none
};

} // namespace NSKZ::NSKZCore

#endif
