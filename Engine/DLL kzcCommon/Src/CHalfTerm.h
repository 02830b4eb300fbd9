#ifndef CHALFTERM_H
#define CHALFTERM_H

#include "VCFiscalTerm.h"

namespace NSKZ::NSKZCore {

// A half of a fiscal year, or of any.
class KZCCOMMON_API CHalfTerm final : public VCFiscalTerm
{
public:
    CHalfTerm() = default;

    bool SetHalfTerm(DWORD value) noexcept; // 1 or 2; as the setters of CDate

    bool GetHalfTerm(DWORD startMonth, DWORD cutOffDate, DWORD& value) const noexcept override;
    EDateObjType GetType() const noexcept override { return DATEOBJTYPE_HALFTERM; }
    std::unique_ptr<VCDate> CreateClone() const override;

private:
    const STermKind& GetTermKind() const noexcept override;
};

} // namespace NSKZ::NSKZCore

#endif
