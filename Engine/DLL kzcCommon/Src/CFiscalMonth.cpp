#include "CFiscalMonth.h"

#include "CDateNumeric.h"
#include "CDateSpec.h"
#include "CFixedText.h"
#include "SCCalendar.h"

namespace NSKZ::NSKZCore {

bool CFiscalMonth::SetYearOfTheGrgCalendar(DWORD value) noexcept
{
    return year.SetGrg(value);
}

bool CFiscalMonth::SetYearOfTheJpnCalendar(EEra era, DWORD value) noexcept
{
    return year.SetJpn(era, value);
}

bool CFiscalMonth::SetFiscalMonth(DWORD month) noexcept
{
    fiscalMonth = 0;
    if (month == DATE_UNSETTING)
        return true;
    if (!SCCalendar::IsMonth(month))
        return false;
    fiscalMonth = static_cast<BYTE>(month);
    return true;
}

void CFiscalMonth::Clear() noexcept
{
    *this = CFiscalMonth();
}

bool CFiscalMonth::GetFiscalYearOfTheGrgCalendar(DWORD startMonth, DWORD cutOffDate,
                                                 DWORD& fiscalYear) const noexcept
{
    CDate month;
    return GetAsMonth(month) && month.GetFiscalYearOfTheGrgCalendar(startMonth, cutOffDate, fiscalYear);
}

bool CFiscalMonth::GetFiscalYearOfTheJpnCalendar(DWORD startMonth, DWORD cutOffDate, EEra& era,
                                                 DWORD& fiscalYear) const noexcept
{
    CDate month;
    return GetAsMonth(month) && month.GetFiscalYearOfTheJpnCalendar(startMonth, cutOffDate, era, fiscalYear);
}

bool CFiscalMonth::GetFiscalMonth(DWORD cutOffDate, EEra& era, DWORD& yearOfEra, DWORD& month) const noexcept
{
    if (SCCalendar::IsEraOfJapan(year.GetEra()) && SCCalendar::IsCutOffDate(cutOffDate) && fiscalMonth != 0) {
        era = year.GetEra();
        yearOfEra = year.GetYear();
        month = fiscalMonth;
        return true;
    }
    CDate asMonth;
    return GetAsMonth(asMonth) && asMonth.GetFiscalMonth(cutOffDate, era, yearOfEra, month);
}

bool CFiscalMonth::GetFiscalMonth(DWORD cutOffDate, DWORD& grgYear, DWORD& month) const noexcept
{
    CDate asMonth;
    return GetAsMonth(asMonth) && asMonth.GetFiscalMonth(cutOffDate, grgYear, month);
}

bool CFiscalMonth::GetFiscalMonth(DWORD cutOffDate, DWORD& month) const noexcept
{
    CDate asMonth;
    return GetAsMonth(asMonth) && asMonth.GetFiscalMonth(cutOffDate, month);
}

bool CFiscalMonth::GetHalfTerm(DWORD startMonth, DWORD cutOffDate, DWORD& halfTerm) const noexcept
{
    CDate month;
    return GetAsMonth(month) && month.GetHalfTerm(startMonth, cutOffDate, halfTerm);
}

bool CFiscalMonth::GetQuarterTerm(DWORD startMonth, DWORD cutOffDate, DWORD& quarterTerm) const noexcept
{
    CDate month;
    return GetAsMonth(month) && month.GetQuarterTerm(startMonth, cutOffDate, quarterTerm);
}

bool CFiscalMonth::GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                  unsigned long long& numeric) const noexcept
{
    if (!SCCalendar::AreCriteria(startMonth, cutOffDate, daysOfWeek))
        return false;
    CDateNumeric made;
    if (year.IsSet()) {
        long firstDay = 0;
        if (!SCCalendar::GetFirstDayOfNamedFiscalMonth(year, fiscalMonth, cutOffDate, firstDay))
            return false;
        made.SetFirstDay(firstDay,
                         fiscalMonth == 0 ? CDateNumeric::RANK_YEAR : CDateNumeric::RANK_FISCALMONTH);
    } else if (fiscalMonth != 0) {
        made.SetPartFromZero(CDateNumeric::PART_MONTH,
                             SCCalendar::GetPlaceInFiscalYear(fiscalMonth, startMonth));
    } else {
        return false;
    }
    numeric = made.Get();
    return true;
}

bool CFiscalMonth::GetDateString(char* buffer, DWORD size) const noexcept
{
    CFixedText<MAX_DATESTRING_SIZE> text;
    year.AppendTo(text);
    if (fiscalMonth != 0) {
        if (!text.IsEmpty())
            text.Append("-");
        text.AppendNumber(fiscalMonth, 2);
    }
    return text.CopyTo(buffer, size);
}

std::unique_ptr<VCDate> CFiscalMonth::CreateClone() const
{
    return std::make_unique<CFiscalMonth>(*this);
}

bool CFiscalMonth::WriteSpecByXML(CXMLWriter& writer) const
{
    CDateSpec spec;
    spec.year = year;
    if (fiscalMonth != 0)
        spec.SetPart(CDateSpec::PART_MONTH, fiscalMonth);
    return spec.Write(GetType(), writer);
}

CXMLReader::EMthRetOfReadXML CFiscalMonth::ReadSpecByXML(const CXMLReader& reader)
{
    CDateSpec spec;
    const CXMLReader::EMthRetOfReadXML result = spec.Read(GetType(), reader);
    if (result != CXMLReader::READXML_OK)
        return result;
    CFiscalMonth read;
    read.year = spec.year;
    if (!spec.HasOnly({CDateSpec::PART_MONTH}, true) ||
        !read.SetFiscalMonth(spec.GetPart(CDateSpec::PART_MONTH)))
        return CXMLReader::READXML_BADFORMAT;
    *this = read;
    return CXMLReader::READXML_OK;
}

// A month without day is taken for the fiscal month of its name.
bool CFiscalMonth::GetAsMonth(CDate& month) const noexcept
{
    DWORD grgYear = 0;
    if (fiscalMonth == 0)
        return false;
    if (year.GetGrg(grgYear))
        month.SetYearOfTheGrgCalendar(grgYear);
    return month.SetMonth(fiscalMonth);
}

} // namespace NSKZ::NSKZCore
