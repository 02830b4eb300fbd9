#include "CEraYear.h"

#include "SCCalendar.h"
#include "SCDateWord.h"

namespace NSKZ::NSKZCore {

bool CEraYear::SetGrg(DWORD grgYear) noexcept
{
    Clear();
    if (grgYear == VCDate::DATE_UNSETTING)
        return true;
    if (grgYear < VCDate::MIN_GRGYEAR_VALUE || grgYear > VCDate::MAX_GRGYEAR_VALUE)
        return false;
    era = VCDate::ERA_GREGORIAN;
    year = static_cast<WORD>(grgYear);
    return true;
}

bool CEraYear::SetJpn(VCDate::EEra japaneseEra, DWORD yearOfEra) noexcept
{
    Clear();
    if (japaneseEra == VCDate::ERA_UNSETTING || yearOfEra == VCDate::DATE_UNSETTING)
        return true;
    if (japaneseEra == VCDate::ERA_GREGORIAN || !VCDate::IsAppropriateYear(japaneseEra, yearOfEra))
        return false;
    era = japaneseEra;
    year = static_cast<WORD>(yearOfEra);
    return true;
}

void CEraYear::Clear() noexcept
{
    era = VCDate::ERA_UNSETTING;
    year = 0;
}

bool CEraYear::GetGrg(DWORD& grgYear) const noexcept
{
    if (era == VCDate::ERA_GREGORIAN) {
        grgYear = year;
        return true;
    }
    return SCCalendar::GetGrgYear(era, year, grgYear);
}

bool CEraYear::GetJpn(VCDate::EEra& japaneseEra, DWORD& yearOfEra) const noexcept
{
    if (era == VCDate::ERA_UNSETTING)
        return false;
    if (era != VCDate::ERA_GREGORIAN) {
        japaneseEra = era;
        yearOfEra = year;
        return true;
    }
    return SCCalendar::GetJpnYear(SCCalendar::GetDayNum(year, VCDate::MONTHCNT_OF_YEAR, 31), japaneseEra,
                                  yearOfEra);
}

bool CEraYear::GetGrgOfNamingYear(DWORD& grgYear) const noexcept
{
    DWORD ofEra = 0;
    CEraYear asGrg;
    VCDate::EEra eraAtEnd = VCDate::ERA_UNSETTING;
    DWORD yearAtEnd = 0;
    if (!GetGrg(ofEra))
        return false;
    if (era != VCDate::ERA_GREGORIAN &&
        (!asGrg.SetGrg(ofEra) || !asGrg.GetJpn(eraAtEnd, yearAtEnd) || eraAtEnd != era))
        return false;
    grgYear = ofEra;
    return true;
}

void CEraYear::AppendTo(CFixedText<VCDate::MAX_DATESTRING_SIZE>& text) const noexcept
{
    if (era == VCDate::ERA_GREGORIAN) {
        text.AppendNumber(year, 4);
    } else if (era != VCDate::ERA_UNSETTING) {
        text.Append(SCDateWord::GetEra(era, SCDateWord::ERASTYLE_LETTER, _getmbcp()));
        text.AppendNumber(year);
    }
}

} // namespace NSKZ::NSKZCore
