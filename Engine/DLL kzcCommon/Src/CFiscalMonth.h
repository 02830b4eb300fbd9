#ifndef CFISCALMONTH_H
#define CFISCALMONTH_H

#include "CDate.h"
#include "CEraYear.h"
#include "VCDate.h"

namespace NSKZ::NSKZCore {

// A fiscal month: of a year, or of any year.
class KZCCOMMON_API CFiscalMonth final : public VCDate
{
public:
    CFiscalMonth() = default;

    // As those of CDate. The year is the one that GetFiscalMonth gives with the month: the calendar year that
    // the fiscal month bears.
    bool SetYearOfTheGrgCalendar(DWORD year) noexcept;
    bool SetYearOfTheJpnCalendar(EEra era, DWORD year) noexcept;
    bool SetFiscalMonth(DWORD month) noexcept;
    void Clear() noexcept;
    // How the year is counted; ERA_UNSETTING without one.
    EEra GetEra() const noexcept { return year.GetEra(); }

    // The fiscal year, the half and the quarter follow from the month.
    bool GetFiscalYearOfTheGrgCalendar(DWORD startMonth, DWORD cutOffDate,
                                       DWORD& fiscalYear) const noexcept override;
    bool GetFiscalYearOfTheJpnCalendar(DWORD startMonth, DWORD cutOffDate, EEra& era,
                                       DWORD& fiscalYear) const noexcept override;
    bool GetFiscalMonth(DWORD cutOffDate, EEra& era, DWORD& yearOfEra, DWORD& month) const noexcept override;
    bool GetFiscalMonth(DWORD cutOffDate, DWORD& grgYear, DWORD& month) const noexcept override;
    bool GetFiscalMonth(DWORD cutOffDate, DWORD& month) const noexcept override;
    bool GetHalfTerm(DWORD startMonth, DWORD cutOffDate, DWORD& halfTerm) const noexcept override;
    bool GetQuarterTerm(DWORD startMonth, DWORD cutOffDate, DWORD& quarterTerm) const noexcept override;
    bool GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                        unsigned long long& numeric) const noexcept override;
    bool GetDateString(char* buffer, DWORD size) const noexcept override;
    EDateObjType GetType() const noexcept override { return DATEOBJTYPE_FISCALMONTH; }
    std::unique_ptr<VCDate> CreateClone() const override;
    bool WriteSpecByXML(CXMLWriter& writer) const override;
    CXMLReader::EMthRetOfReadXML ReadSpecByXML(const CXMLReader& reader) override;

private:
    bool GetAsMonth(CDate& month) const noexcept;

    CEraYear year;
    BYTE fiscalMonth = 0; // 0 for none
};

} // namespace NSKZ::NSKZCore

#endif
