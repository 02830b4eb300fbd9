#include "CEmpValBtn.h"

namespace NSKZ::NSKZCore {

CEmpValBtn::CEmpValBtn(DWORD btnID) : VCBtn(btnID, nullptr) {}

SCBUICoreCom::EBtnType CEmpValBtn::GetType() const
{
    return SCBUICoreCom::BTNTYPE_EMPVAL;
}

std::unique_ptr<VCBtn> CEmpValBtn::Clone() const
{
    auto clone = std::make_unique<CEmpValBtn>(id);
    clone->Copy(*this);
    return clone;
}

} // namespace NSKZ::NSKZCore
