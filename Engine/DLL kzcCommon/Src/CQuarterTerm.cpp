#include "CQuarterTerm.h"

#include "SCCalendar.h"

namespace NSKZ::NSKZCore {

const VCFiscalTerm::STermKind& CQuarterTerm::GetTermKind() const noexcept
{
    static constexpr STermKind KIND{QUARTERTERMCNT_OF_YEAR, SCCalendar::MONTHS_OF_QUARTERTERM,
                                    CDateNumeric::RANK_QUARTERTERM, CDateSpec::PART_QUARTERTERM, 'Q'};
    return KIND;
}

bool CQuarterTerm::SetQuarterTerm(DWORD value) noexcept
{
    return SetTerm(value);
}

bool CQuarterTerm::GetHalfTerm(DWORD startMonth, DWORD cutOffDate, DWORD& halfTerm) const noexcept
{
    DWORD quarterTerm = 0;
    if (!GetTerm(startMonth, cutOffDate, quarterTerm))
        return false;
    constexpr DWORD QUARTERS_OF_HALF = QUARTERTERMCNT_OF_YEAR / HALFTERMCNT_OF_YEAR;
    halfTerm = (quarterTerm - 1) / QUARTERS_OF_HALF + 1;
    return true;
}

bool CQuarterTerm::GetQuarterTerm(DWORD startMonth, DWORD cutOffDate, DWORD& value) const noexcept
{
    return GetTerm(startMonth, cutOffDate, value);
}

std::unique_ptr<VCDate> CQuarterTerm::CreateClone() const
{
    return std::make_unique<CQuarterTerm>(*this);
}

} // namespace NSKZ::NSKZCore
