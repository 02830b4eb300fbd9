#ifndef CFISCALYEAR_H
#define CFISCALYEAR_H

#include "CEraYear.h"
#include "VCDate.h"

namespace NSKZ::NSKZCore {

// A fiscal year.
class KZCCOMMON_API CFiscalYear final : public VCDate
{
public:
    CFiscalYear() = default;

    // As those of CDate. The Japanese year is as GetFiscalYearOfTheJpnCalendar gives it.
    bool SetFiscalYearOfTheGrgCalendar(DWORD year) noexcept;
    bool SetFiscalYearOfTheJpnCalendar(EEra era, DWORD year) noexcept;
    void Clear() noexcept;
    // How the year is counted; ERA_UNSETTING without one.
    EEra GetEra() const noexcept { return fiscalYear.GetEra(); }

    bool GetFiscalYearOfTheGrgCalendar(DWORD startMonth, DWORD cutOffDate,
                                       DWORD& year) const noexcept override;
    bool GetFiscalYearOfTheJpnCalendar(DWORD startMonth, DWORD cutOffDate, EEra& era,
                                       DWORD& year) const noexcept override;
    bool GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                        unsigned long long& numeric) const noexcept override;
    bool GetDateString(char* buffer, DWORD size) const noexcept override;
    EDateObjType GetType() const noexcept override { return DATEOBJTYPE_FISCALYEAR; }
    std::unique_ptr<VCDate> CreateClone() const override;
    bool WriteSpecByXML(CXMLWriter& writer) const override;
    CXMLReader::EMthRetOfReadXML ReadSpecByXML(const CXMLReader& reader) override;

private:
    CEraYear fiscalYear;
};

} // namespace NSKZ::NSKZCore

#endif
