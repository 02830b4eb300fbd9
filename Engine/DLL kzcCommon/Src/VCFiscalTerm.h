#ifndef VCFISCALTERM_H
#define VCFISCALTERM_H

#include "CDateNumeric.h"
#include "CDateSpec.h"
#include "CEraYear.h"
#include "VCDate.h"

namespace NSKZ::NSKZCore {

// A numbered stretch of a fiscal year, a half or a quarter: the fiscal year, the number, or one of them
// alone.
class KZCCOMMON_API VCFiscalTerm : public VCDate
{
public:
    // As those of CDate. The Japanese year is as GetFiscalYearOfTheJpnCalendar gives it.
    bool SetFiscalYearOfTheGrgCalendar(DWORD year) noexcept;
    bool SetFiscalYearOfTheJpnCalendar(EEra era, DWORD year) noexcept;
    // Unsets all parts.
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
    bool WriteSpecByXML(CXMLWriter& writer) const override;
    CXMLReader::EMthRetOfReadXML ReadSpecByXML(const CXMLReader& reader) override;

protected:
    // What tells halves and quarters apart.
    struct STermKind
    {
        DWORD count;  // in a year
        DWORD months; // in one of them
        CDateNumeric::ERank rank;
        CDateSpec::EPart part;
        char letter; // before the number in a text
    };

    VCFiscalTerm() = default;
    VCFiscalTerm(const VCFiscalTerm&) = default;
    VCFiscalTerm& operator=(const VCFiscalTerm&) = default;

    virtual const STermKind& GetTermKind() const noexcept = 0;
    // From 1 on; as the setters of CDate.
    bool SetTerm(DWORD value) noexcept;
    // False also for criteria out of their limits.
    bool GetTerm(DWORD startMonth, DWORD cutOffDate, DWORD& value) const noexcept;

private:
    CEraYear fiscalYear;
    BYTE term = 0; // 0 for none
};

} // namespace NSKZ::NSKZCore

#endif
