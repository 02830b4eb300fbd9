#ifndef CQUARTERTERM_H
#define CQUARTERTERM_H

#include "VCFiscalTerm.h"

namespace NSKZ::NSKZCore {

// A quarter of a fiscal year, or of any.
class KZCCOMMON_API CQuarterTerm final : public VCFiscalTerm
{
public:
    CQuarterTerm() = default;

    bool SetQuarterTerm(DWORD value) noexcept; // 1 to 4; as the setters of CDate

    // The half that the quarter lies in.
    bool GetHalfTerm(DWORD startMonth, DWORD cutOffDate, DWORD& halfTerm) const noexcept override;
    bool GetQuarterTerm(DWORD startMonth, DWORD cutOffDate, DWORD& value) const noexcept override;
    EDateObjType GetType() const noexcept override { return DATEOBJTYPE_QUARTERTERM; }
    std::unique_ptr<VCDate> CreateClone() const override;

private:
    const STermKind& GetTermKind() const noexcept override;
};

} // namespace NSKZ::NSKZCore

#endif
