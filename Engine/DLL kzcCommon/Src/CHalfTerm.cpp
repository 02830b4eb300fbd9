#include "CHalfTerm.h"

#include "CDateNumeric.h"
#include "CDateSpec.h"
#include "CFixedText.h"
#include "SCCalendar.h"

namespace NSKZ::NSKZCore {

bool CHalfTerm::SetFiscalYearOfTheGrgCalendar(DWORD year) noexcept
{
    return fiscalYear.SetGrg(year);
}

bool CHalfTerm::SetFiscalYearOfTheJpnCalendar(EEra era, DWORD year) noexcept
{
    return fiscalYear.SetJpn(era, year);
}

bool CHalfTerm::SetHalfTerm(DWORD value) noexcept
{
    halfTerm = 0;
    if (value == DATE_UNSETTING)
        return true;
    if (value < 1 || value > HALFTERMCNT_OF_YEAR)
        return false;
    halfTerm = static_cast<BYTE>(value);
    return true;
}

void CHalfTerm::Clear() noexcept
{
    *this = CHalfTerm();
}

bool CHalfTerm::GetFiscalYearOfTheGrgCalendar(DWORD startMonth, DWORD cutOffDate, DWORD& year) const noexcept
{
    return SCCalendar::IsMonth(startMonth) && SCCalendar::IsCutOffDate(cutOffDate) && fiscalYear.GetGrg(year);
}

bool CHalfTerm::GetFiscalYearOfTheJpnCalendar(DWORD startMonth, DWORD cutOffDate, EEra& era,
                                              DWORD& year) const noexcept
{
    return SCCalendar::IsMonth(startMonth) && SCCalendar::IsCutOffDate(cutOffDate) &&
           fiscalYear.GetJpn(era, year);
}

bool CHalfTerm::GetHalfTerm(DWORD startMonth, DWORD cutOffDate, DWORD& value) const noexcept
{
    if (!SCCalendar::IsMonth(startMonth) || !SCCalendar::IsCutOffDate(cutOffDate) || halfTerm == 0)
        return false;
    value = halfTerm;
    return true;
}

bool CHalfTerm::GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                               unsigned long long& numeric) const noexcept
{
    if (!SCCalendar::AreCriteria(startMonth, cutOffDate, daysOfWeek))
        return false;
    CDateNumeric made;
    if (fiscalYear.IsSet()) {
        DWORD grgYear = 0;
        if (!fiscalYear.GetGrgOfNamingYear(grgYear))
            return false;
        const DWORD place = halfTerm == 0 ? 0 : (halfTerm - 1) * SCCalendar::MONTHS_OF_HALFTERM;
        made.SetFirstDay(SCCalendar::GetFirstDayInFiscalYear(grgYear, place, startMonth, cutOffDate),
                         halfTerm == 0 ? CDateNumeric::RANK_FISCALYEAR : CDateNumeric::RANK_HALFTERM);
    } else if (halfTerm != 0) {
        made.SetTerm(halfTerm);
    } else {
        return false;
    }
    numeric = made.Get();
    return true;
}

bool CHalfTerm::GetDateString(char* buffer, DWORD size) const noexcept
{
    CFixedText<MAX_DATESTRING_SIZE> text;
    if (fiscalYear.IsSet())
        text.Append("FY");
    fiscalYear.AppendTo(text);
    if (halfTerm != 0) {
        text.Append(text.IsEmpty() ? "H" : " H");
        text.AppendNumber(halfTerm);
    }
    return text.CopyTo(buffer, size);
}

std::unique_ptr<VCDate> CHalfTerm::CreateClone() const
{
    return std::make_unique<CHalfTerm>(*this);
}

bool CHalfTerm::WriteSpecByXML(CXMLWriter& writer) const
{
    CDateSpec spec;
    spec.year = fiscalYear;
    if (halfTerm != 0)
        spec.SetPart(CDateSpec::PART_HALFTERM, halfTerm);
    return spec.Write(GetType(), writer);
}

CXMLReader::EMthRetOfReadXML CHalfTerm::ReadSpecByXML(const CXMLReader& reader)
{
    CDateSpec spec;
    const CXMLReader::EMthRetOfReadXML result = spec.Read(GetType(), reader);
    if (result != CXMLReader::READXML_OK)
        return result;
    CHalfTerm read;
    read.fiscalYear = spec.year;
    if (!spec.HasOnly({CDateSpec::PART_HALFTERM}, true) ||
        !read.SetHalfTerm(spec.GetPart(CDateSpec::PART_HALFTERM)))
        return CXMLReader::READXML_BADFORMAT;
    *this = read;
    return CXMLReader::READXML_OK;
}

} // namespace NSKZ::NSKZCore
