#include "CBtn.h"

namespace NSKZ::NSKZCore {

SCBUICoreCom::EBtnType CBtn::GetType() const
{
    return SCBUICoreCom::BTNTYPE_NORMAL;
}

std::unique_ptr<VCBtn> CBtn::Clone() const
{
    auto clone = std::make_unique<CBtn>(id, nullptr);
    clone->Copy(*this);
    return clone;
}

} // namespace NSKZ::NSKZCore
