#include "CNumBtnClass.h"

#include "COrdListBuilder.h"
#include "SCNumeric.h"

namespace NSKZ::NSKZCore {

namespace {

bool ReadsAsNumber(const char* text, double& value) noexcept
{
    return text != nullptr && SCNumeric::AtoF(text, value) && _isnan(value) == 0;
}

} // namespace

void CNumBtnClass::Clear()
{
    numNameOrd.Clear();
    strNameOrd.Clear();
    VCSrcBtnClass::Clear();
}

void CNumBtnClass::Copy(const VCBtnClass& other, const std::unique_ptr<IRpLink>& rpLinkOfEnv)
{
    if (&other == this)
        return;
    const auto& otherNum = dynamic_cast<const CNumBtnClass&>(other);
    numNameOrd.Clear();
    strNameOrd.Clear();
    VCSrcBtnClass::Copy(other, rpLinkOfEnv);
    try {
        numNameOrd.CopyFrom(otherNum.numNameOrd);
        strNameOrd.CopyFrom(otherNum.strNameOrd);
    } catch (...) {
        numNameOrd.Clear();
        DropAll();
        throw;
    }
}

void CNumBtnClass::GetBtnNameOrdList(unsigned int flags, std::vector<DWORD>& btnIDs) const
{
    constexpr const char* FUNCTION = "NSKZ::NSKZCore::CNumBtnClass::GetBtnNameOrdList";
    const VCBtn* const empValBtn = FindBtn(SCBUICoreCom::BTN_ID_EMPVAL);
    const bool empValListed =
        empValBtn != nullptr && (empValBtn->visibleInfo & VISINFO_NOREC) == 0 && IsListed(*empValBtn, flags);

    COrdListBuilder list(*this, flags);
    list.AddSpBtnsByText();
    for (const DWORD btnID : numNameOrd.GetBtnIDs()) {
        if (IsInsideBtnListed(btnID, flags, FUNCTION, __LINE__))
            list.Add(btnID);
    }
    if (empValListed)
        list.Add(SCBUICoreCom::BTN_ID_EMPVAL);
    list.EndReversedPart();
    for (const DWORD btnID : strNameOrd.GetBtnIDs()) {
        if (IsInsideBtnListed(btnID, flags, FUNCTION, __LINE__))
            list.Add(btnID);
    }
    list.Finish(btnIDs);
}

SCBUICoreCom::EBtnClassType CNumBtnClass::GetBtnClassType() const
{
    return SCBUICoreCom::BTNCLSTYPE_NUM;
}

void CNumBtnClass::AdjstAccordingToBtnAppearance(const VCBtn& btn)
{
    if (!SCBUICoreCom::IsNormalBtn(btn.id))
        return;
    // An alias given since the last appearance may have changed the list it belongs to.
    double value = 0.0;
    if (ReadsAsNumber(btn.GetShownText(), value)) {
        numNameOrd.Insert(value, btn.id);
        strNameOrd.Remove(btn.id);
    } else {
        strNameOrd.Insert(btn.GetShownText(), btn.id);
        numNameOrd.Remove(btn.id);
    }
}

void CNumBtnClass::AdjstAccordingToBtnDisappearance(const VCBtn& btn) noexcept
{
    // By the identifier alone: an alias may have come since the button was listed.
    numNameOrd.Remove(btn.id);
    strNameOrd.Remove(btn.id);
}

} // namespace NSKZ::NSKZCore
