#include "CHalfTerm.h"

#include "SCCalendar.h"

namespace NSKZ::NSKZCore {

const VCFiscalTerm::STermKind& CHalfTerm::GetTermKind() const noexcept
{
    static constexpr STermKind KIND{HALFTERMCNT_OF_YEAR, SCCalendar::MONTHS_OF_HALFTERM,
                                    CDateNumeric::RANK_HALFTERM, CDateSpec::PART_HALFTERM, 'H'};
    return KIND;
}

bool CHalfTerm::SetHalfTerm(DWORD value) noexcept
{
    return SetTerm(value);
}

bool CHalfTerm::GetHalfTerm(DWORD startMonth, DWORD cutOffDate, DWORD& value) const noexcept
{
    return GetTerm(startMonth, cutOffDate, value);
}

std::unique_ptr<VCDate> CHalfTerm::CreateClone() const
{
    return std::make_unique<CHalfTerm>(*this);
}

} // namespace NSKZ::NSKZCore
