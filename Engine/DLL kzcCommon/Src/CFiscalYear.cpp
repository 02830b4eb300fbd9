#include "CFiscalYear.h"

#include "CDateNumeric.h"
#include "CDateSpec.h"
#include "CFixedText.h"
#include "SCCalendar.h"

namespace NSKZ::NSKZCore {

bool CFiscalYear::SetFiscalYearOfTheGrgCalendar(DWORD year) noexcept
{
    return fiscalYear.SetGrg(year);
}

bool CFiscalYear::SetFiscalYearOfTheJpnCalendar(EEra era, DWORD year) noexcept
{
    return fiscalYear.SetJpn(era, year);
}

void CFiscalYear::Clear() noexcept
{
    *this = CFiscalYear();
}

bool CFiscalYear::GetFiscalYearOfTheGrgCalendar(DWORD startMonth, DWORD cutOffDate,
                                                DWORD& year) const noexcept
{
    return SCCalendar::IsMonth(startMonth) && SCCalendar::IsCutOffDate(cutOffDate) && fiscalYear.GetGrg(year);
}

bool CFiscalYear::GetFiscalYearOfTheJpnCalendar(DWORD startMonth, DWORD cutOffDate, EEra& era,
                                                DWORD& year) const noexcept
{
    return SCCalendar::IsMonth(startMonth) && SCCalendar::IsCutOffDate(cutOffDate) &&
           fiscalYear.GetJpn(era, year);
}

bool CFiscalYear::GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                 unsigned long long& numeric) const noexcept
{
    DWORD grgYear = 0;
    if (!SCCalendar::AreCriteria(startMonth, cutOffDate, daysOfWeek) ||
        !fiscalYear.GetGrgOfNamingYear(grgYear))
        return false;
    CDateNumeric made;
    made.SetFirstDay(SCCalendar::GetFirstDayInFiscalYear(grgYear, 0, startMonth, cutOffDate),
                     CDateNumeric::RANK_FISCALYEAR);
    numeric = made.Get();
    return true;
}

bool CFiscalYear::GetDateString(char* buffer, DWORD size) const noexcept
{
    CFixedText<MAX_DATESTRING_SIZE> text;
    if (fiscalYear.IsSet())
        text.Append("FY");
    fiscalYear.AppendTo(text);
    return text.CopyTo(buffer, size);
}

std::unique_ptr<VCDate> CFiscalYear::CreateClone() const
{
    return std::make_unique<CFiscalYear>(*this);
}

bool CFiscalYear::WriteSpecByXML(CXMLWriter& writer) const
{
    CDateSpec spec;
    spec.year = fiscalYear;
    return spec.Write(GetType(), writer);
}

CXMLReader::EMthRetOfReadXML CFiscalYear::ReadSpecByXML(const CXMLReader& reader)
{
    CDateSpec spec;
    const CXMLReader::EMthRetOfReadXML result = spec.Read(GetType(), reader);
    if (result != CXMLReader::READXML_OK)
        return result;
    if (!spec.HasOnly({}, true))
        return CXMLReader::READXML_BADFORMAT;
    fiscalYear = spec.year;
    return CXMLReader::READXML_OK;
}

} // namespace NSKZ::NSKZCore
