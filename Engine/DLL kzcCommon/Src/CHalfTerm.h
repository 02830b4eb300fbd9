#ifndef CHALFTERM_H
#define CHALFTERM_H

#include "CEraYear.h"
#include "VCDate.h"

namespace NSKZ::NSKZCore {

// A half of a fiscal year, or of any.
class KZCCOMMON_API CHalfTerm final : public VCDate
{
public:
    CHalfTerm() = default;

    // As those of CDate. The Japanese year is as GetFiscalYearOfTheJpnCalendar gives it.
    bool SetFiscalYearOfTheGrgCalendar(DWORD year) noexcept;
    bool SetFiscalYearOfTheJpnCalendar(EEra era, DWORD year) noexcept;
    bool SetHalfTerm(DWORD value) noexcept; // 1 or 2
    void Clear() noexcept;
    // How the year is counted; ERA_UNSETTING without one.
    EEra GetEra() const noexcept { return fiscalYear.GetEra(); }

    bool GetFiscalYearOfTheGrgCalendar(DWORD startMonth, DWORD cutOffDate,
                                       DWORD& year) const noexcept override;
    bool GetFiscalYearOfTheJpnCalendar(DWORD startMonth, DWORD cutOffDate, EEra& era,
                                       DWORD& year) const noexcept override;
    bool GetHalfTerm(DWORD startMonth, DWORD cutOffDate, DWORD& value) const noexcept override;
    bool GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                        unsigned long long& numeric) const noexcept override;
    bool GetDateString(char* buffer, DWORD size) const noexcept override;
    EDateObjType GetType() const noexcept override { return DATEOBJTYPE_HALFTERM; }
    std::unique_ptr<VCDate> CreateClone() const override;
    bool WriteSpecByXML(CXMLWriter& writer) const override;
    CXMLReader::EMthRetOfReadXML ReadSpecByXML(const CXMLReader& reader) override;

private:
    CEraYear fiscalYear;
    BYTE halfTerm = 0; // 0 for none
};

} // namespace NSKZ::NSKZCore

#endif
