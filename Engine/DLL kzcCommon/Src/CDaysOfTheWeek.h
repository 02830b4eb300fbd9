#ifndef CDAYSOFTHEWEEK_H
#define CDAYSOFTHEWEEK_H

#include "VCDate.h"

namespace NSKZ::NSKZCore {

// A day of the week: alone, of a week of any month, or of a week of one month of any year, as in "Monday of
// the third week of July". The months are those of the calendar or fiscal months, as the type says.
class KZCCOMMON_API CDaysOfTheWeek final : public VCDate
{
public:
    enum EDaysOfTheWeekType : DWORD
    {
        DAYSOFWEEKTYPE_MONTH = 2,         // month, week of the month, day of the week
        DAYSOFWEEKTYPE_FISCALMONTH = 512, // the same with the fiscal month
    };

    explicit CDaysOfTheWeek(EDaysOfTheWeekType daysOfWeekType = DAYSOFWEEKTYPE_MONTH) noexcept
        : type(daysOfWeekType)
    {}

    // As those of CDate; false too for a part that the type does not hold.
    bool SetMonth(DWORD value) noexcept;       // of type 2
    bool SetFiscalMonth(DWORD value) noexcept; // of type 512
    bool SetWeekNum(DWORD value) noexcept;     // 1 to MAXWEEK_OF_MONTH
    bool SetDaysOfTheWeek(EDaysOfTheWeek value) noexcept;
    // Unsets all parts; the type stays.
    void Clear() noexcept;

    EDaysOfTheWeekType GetDaysOfTheWeekType() const noexcept { return type; }

    bool HasDaysOfTheWeek() const noexcept { return day != NO_DAY; }

    bool GetMonth(DWORD& value) const noexcept override;
    using VCDate::GetFiscalMonth;
    bool GetFiscalMonth(DWORD cutOffDate, DWORD& value) const noexcept override;
    bool GetWeekOfTheMonth(EDaysOfTheWeek daysOfWeek, DWORD& value) const noexcept override;
    bool GetWeekOfTheFiscalMonth(DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                 DWORD& value) const noexcept override;
    bool GetDaysOfTheWeek(EDaysOfTheWeek& value) const noexcept override;
    bool GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                        unsigned long long& numeric) const noexcept override;
    bool GetDateString(char* buffer, DWORD size) const noexcept override;
    EDateObjType GetType() const noexcept override { return DATEOBJTYPE_DAYSOFWEEK; }
    std::unique_ptr<VCDate> CreateClone() const override;
    bool WriteSpecByXML(CXMLWriter& writer) const override;
    // Takes over the type too.
    CXMLReader::EMthRetOfReadXML ReadSpecByXML(const CXMLReader& reader) override;

private:
    bool StoreMonth(DWORD value) noexcept;

    static constexpr BYTE NO_DAY = 255;

    EDaysOfTheWeekType type;
    BYTE month = 0; // 0 for none
    BYTE week = 0;  // 0 for none
    BYTE day = NO_DAY;
};

} // namespace NSKZ::NSKZCore

#endif
