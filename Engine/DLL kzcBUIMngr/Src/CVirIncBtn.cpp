#include "CVirIncBtn.h"

namespace NSKZ::NSKZCore {

CVirIncBtn::CVirIncBtn(DWORD btnID, EMmbBtnSelMth selMth, DWORD refID, bool isCommon)
    : VCSpBtn(btnID, selMth), refBtnClassID(refID), commonBtn(isCommon)
{}

void CVirIncBtn::Clear()
{
    VCSpBtn::Clear();
    refBtnClassID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
    commonBtn = false;
}

void CVirIncBtn::ClearOfFixedSpec()
{
    if (commonBtn)
        VCBtn::ClearOfFixedSpec();
    else
        Clear();
}

SCBUICoreCom::EBtnType CVirIncBtn::GetType() const
{
    return SCBUICoreCom::BTNTYPE_VIRINC;
}

std::unique_ptr<VCBtn> CVirIncBtn::Clone() const
{
    auto clone = std::make_unique<CVirIncBtn>(id, mmbBtnSelMth, refBtnClassID, commonBtn);
    clone->CopySpBtn(*this);
    return clone;
}

} // namespace NSKZ::NSKZCore
