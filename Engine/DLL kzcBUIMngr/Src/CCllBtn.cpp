#include "CCllBtn.h"

namespace NSKZ::NSKZCore {

CCllBtn::CCllBtn(DWORD btnID, EMmbBtnSelMth selMth) : VCSpBtn(btnID, selMth) {}

SCBUICoreCom::EBtnType CCllBtn::GetType() const
{
    return SCBUICoreCom::BTNTYPE_CLL;
}

std::unique_ptr<VCBtn> CCllBtn::Clone() const
{
    auto clone = std::make_unique<CCllBtn>(id, mmbBtnSelMth);
    clone->CopySpBtn(*this);
    return clone;
}

} // namespace NSKZ::NSKZCore
