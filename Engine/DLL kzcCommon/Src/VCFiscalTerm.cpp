#include "VCFiscalTerm.h"

#include "CFixedText.h"
#include "SCCalendar.h"

namespace NSKZ::NSKZCore {

bool VCFiscalTerm::SetFiscalYearOfTheGrgCalendar(DWORD year) noexcept
{
    return fiscalYear.SetGrg(year);
}

bool VCFiscalTerm::SetFiscalYearOfTheJpnCalendar(EEra era, DWORD year) noexcept
{
    return fiscalYear.SetJpn(era, year);
}

bool VCFiscalTerm::SetTerm(DWORD value) noexcept
{
    term = 0;
    if (value == DATE_UNSETTING)
        return true;
    if (value < 1 || value > GetTermKind().count)
        return false;
    term = static_cast<BYTE>(value);
    return true;
}

void VCFiscalTerm::Clear() noexcept
{
    fiscalYear = CEraYear();
    term = 0;
}

bool VCFiscalTerm::GetFiscalYearOfTheGrgCalendar(DWORD startMonth, DWORD cutOffDate,
                                                 DWORD& year) const noexcept
{
    return SCCalendar::IsMonth(startMonth) && SCCalendar::IsCutOffDate(cutOffDate) && fiscalYear.GetGrg(year);
}

bool VCFiscalTerm::GetFiscalYearOfTheJpnCalendar(DWORD startMonth, DWORD cutOffDate, EEra& era,
                                                 DWORD& year) const noexcept
{
    return SCCalendar::IsMonth(startMonth) && SCCalendar::IsCutOffDate(cutOffDate) &&
           fiscalYear.GetJpn(era, year);
}

bool VCFiscalTerm::GetTerm(DWORD startMonth, DWORD cutOffDate, DWORD& value) const noexcept
{
    if (!SCCalendar::IsMonth(startMonth) || !SCCalendar::IsCutOffDate(cutOffDate) || term == 0)
        return false;
    value = term;
    return true;
}

bool VCFiscalTerm::GetDateNumeric(DWORD startMonth, DWORD cutOffDate, EDaysOfTheWeek daysOfWeek,
                                  unsigned long long& numeric) const noexcept
{
    if (!SCCalendar::AreCriteria(startMonth, cutOffDate, daysOfWeek))
        return false;
    CDateNumeric made;
    if (fiscalYear.IsSet()) {
        DWORD grgYear = 0;
        if (!fiscalYear.GetGrgOfNamingYear(grgYear))
            return false;
        const DWORD place = term == 0 ? 0 : (term - 1) * GetTermKind().months;
        made.SetFirstDay(SCCalendar::GetFirstDayInFiscalYear(grgYear, place, startMonth, cutOffDate),
                         term == 0 ? CDateNumeric::RANK_FISCALYEAR : GetTermKind().rank);
    } else if (term != 0) {
        made.SetTerm(term);
    } else {
        return false;
    }
    numeric = made.Get();
    return true;
}

bool VCFiscalTerm::GetDateString(char* buffer, DWORD size) const noexcept
{
    CFixedText<MAX_DATESTRING_SIZE> text;
    if (fiscalYear.IsSet())
        text.Append("FY");
    fiscalYear.AppendTo(text);
    if (term != 0) {
        const char letter[] = {' ', GetTermKind().letter, '\0'};
        text.Append(text.IsEmpty() ? letter + 1 : letter);
        text.AppendNumber(term);
    }
    return text.CopyTo(buffer, size);
}

bool VCFiscalTerm::WriteSpecByXML(CXMLWriter& writer) const
{
    CDateSpec spec;
    spec.year = fiscalYear;
    if (term != 0)
        spec.SetPart(GetTermKind().part, term);
    return spec.Write(GetType(), writer);
}

CXMLReader::EMthRetOfReadXML VCFiscalTerm::ReadSpecByXML(const CXMLReader& reader)
{
    CDateSpec spec;
    const CXMLReader::EMthRetOfReadXML result = spec.Read(GetType(), reader);
    if (result != CXMLReader::READXML_OK)
        return result;
    const DWORD read = spec.GetPart(GetTermKind().part);
    const bool isTerm = read == DATE_UNSETTING || (read >= 1 && read <= GetTermKind().count);
    if (!spec.HasOnly({GetTermKind().part}, true) || !isTerm)
        return CXMLReader::READXML_BADFORMAT;
    fiscalYear = spec.year;
    SetTerm(read);
    return CXMLReader::READXML_OK;
}

} // namespace NSKZ::NSKZCore
