#include "CQuarterTerm.h"

#include "CDateNumeric.h"
#include "CDateSpec.h"
#include "CFixedText.h"
#include "SCCalendar.h"

namespace NSKZ::NSKZCore {

bool CQuarterTerm::SetFiscalYearOfTheGrgCalendar(DWORD year) noexcept
{
    return fiscalYear.SetGrg(year);
}

bool CQuarterTerm::SetFiscalYearOfTheJpnCalendar(EEra era, DWORD year) noexcept
{
    return fiscalYear.SetJpn(era, year);
}

bool CQuarterTerm::SetQuarterTerm(DWORD value) noexcept
{
    quarterTerm = 0;
    if (value == DATE_UNSETTING)
        return true;
    if (value < 1 || value > QUARTERTERMCNT_OF_YEAR)
        return false;
    quarterTerm = static_cast<BYTE>(value);
    return true;
}

void CQuarterTerm::Clear() noexcept
{
    *this = CQuarterTerm();
}

bool CQuarterTerm::GetFiscalYearOfTheGrgCalendar(DWORD startMonth, DWORD cutOffDate,
                                                 DWORD& year) const noexcept
{
    return SCCalendar::IsMonth(startMonth) && SCCalendar::IsCutOffDate(cutOffDate) && fiscalYear.GetGrg(year);
}

bool CQuarterTerm::GetFiscalYearOfTheJpnCalendar(DWORD startMonth, DWORD cutOffDate, EEra& era,
                                                 DWORD& year) const noexcept
{
    return SCCalendar::IsMonth(startMonth) && SCCalendar::IsCutOffDate(cutOffDate) &&
           fiscalYear.GetJpn(era, year);
}

bool CQuarterTerm::GetHalfTerm(DWORD startMonth, DWORD cutOffDate, DWORD& halfTerm) const noexcept
{
    if (!SCCalendar::IsMonth(startMonth) || !SCCalendar::IsCutOffDate(cutOffDate) || quarterTerm == 0)
        return false;
    constexpr DWORD QUARTERS_OF_HALF = QUARTERTERMCNT_OF_YEAR / HALFTERMCNT_OF_YEAR;
    halfTerm = (quarterTerm - 1) / QUARTERS_OF_HALF + 1;
    return true;
}

bool CQuarterTerm::GetQuarterTerm(DWORD startMonth, DWORD cutOffDate, DWORD& value) const noexcept
{
    if (!SCCalendar::IsMonth(startMonth) || !SCCalendar::IsCutOffDate(cutOffDate) || quarterTerm == 0)
        return false;
    value = quarterTerm;
    return true;
}

bool CQuarterTerm::GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                  unsigned long long& numeric) const noexcept
{
    if (!SCCalendar::AreCriteria(startMonth, cutOffDate, daysOfWeek))
        return false;
    CDateNumeric made;
    if (fiscalYear.IsSet()) {
        DWORD grgYear = 0;
        if (!fiscalYear.GetGrgOfNamingYear(grgYear))
            return false;
        const DWORD place = quarterTerm == 0 ? 0 : (quarterTerm - 1) * SCCalendar::MONTHS_OF_QUARTERTERM;
        made.SetFirstDay(SCCalendar::GetFirstDayInFiscalYear(grgYear, place, startMonth, cutOffDate),
                         quarterTerm == 0 ? CDateNumeric::RANK_FISCALYEAR : CDateNumeric::RANK_QUARTERTERM);
    } else if (quarterTerm != 0) {
        made.SetTerm(quarterTerm);
    } else {
        return false;
    }
    numeric = made.Get();
    return true;
}

bool CQuarterTerm::GetDateString(char* buffer, DWORD size) const noexcept
{
    CFixedText<MAX_DATESTRING_SIZE> text;
    if (fiscalYear.IsSet())
        text.Append("FY");
    fiscalYear.AppendTo(text);
    if (quarterTerm != 0) {
        text.Append(text.IsEmpty() ? "Q" : " Q");
        text.AppendNumber(quarterTerm);
    }
    return text.CopyTo(buffer, size);
}

std::unique_ptr<VCDate> CQuarterTerm::CreateClone() const
{
    return std::make_unique<CQuarterTerm>(*this);
}

bool CQuarterTerm::WriteSpecByXML(CXMLWriter& writer) const
{
    CDateSpec spec;
    spec.year = fiscalYear;
    if (quarterTerm != 0)
        spec.SetPart(CDateSpec::PART_QUARTERTERM, quarterTerm);
    return spec.Write(GetType(), writer);
}

CXMLReader::EMthRetOfReadXML CQuarterTerm::ReadSpecByXML(const CXMLReader& reader)
{
    CDateSpec spec;
    const CXMLReader::EMthRetOfReadXML result = spec.Read(GetType(), reader);
    if (result != CXMLReader::READXML_OK)
        return result;
    CQuarterTerm read;
    read.fiscalYear = spec.year;
    if (!spec.HasOnly({CDateSpec::PART_QUARTERTERM}, true) ||
        !read.SetQuarterTerm(spec.GetPart(CDateSpec::PART_QUARTERTERM)))
        return CXMLReader::READXML_BADFORMAT;
    *this = read;
    return CXMLReader::READXML_OK;
}

} // namespace NSKZ::NSKZCore
