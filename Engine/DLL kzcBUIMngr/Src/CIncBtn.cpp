#include "CIncBtn.h"

namespace NSKZ::NSKZCore {

CIncBtn::CIncBtn(DWORD btnID, EMmbBtnSelMth selMth) : VCSpBtn(btnID, selMth) {}

void CIncBtn::Clear()
{
    VCSpBtn::Clear();
    dispMember = false;
}

SCBUICoreCom::EBtnType CIncBtn::GetType() const
{
    return SCBUICoreCom::BTNTYPE_INC;
}

std::unique_ptr<VCBtn> CIncBtn::Clone() const
{
    auto clone = std::make_unique<CIncBtn>(id, mmbBtnSelMth);
    clone->CopySpBtn(*this);
    clone->dispMember = dispMember;
    return clone;
}

} // namespace NSKZ::NSKZCore
