#include "VCSrcBtnClass.h"

#include "CBtn.h"
#include "CEmpValBtn.h"
#include "CSpBtnWalk.h"
#include "IRpLink.h"
#include "SCKZCoreStrDef.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

VCSrcBtnClass::VCSrcBtnClass(DWORD btnClassID, DWORD srcFldID, const char* empValAlias,
                             const CSourceDataMngr* srcDataMngrOfEnv,
                             const std::unique_ptr<IRpLink>& rpLinkOfEnv)
    : VCBtnClass(btnClassID, rpLinkOfEnv), fldID(srcFldID), srcDataMngr(srcDataMngrOfEnv),
      empValBtnDisp(true), dataBtnNextID(SCBUICoreCom::BTN_ID_NRM_BEGIN)
{
    CreateEmpValBtn(empValAlias);
}

VCSrcBtnClass::~VCSrcBtnClass() = default;

void VCSrcBtnClass::SetDispEmpValBtnInfo(bool disp)
{
    VCBtn& btn = *FindBtn(SCBUICoreCom::BTN_ID_EMPVAL);
    SpBtnsOfClasses above; // what needs memory comes first
    if (!disp && btn.HasBackReferences())
        above = ListWithAllAbove(ListEffectiveHolders(btn));
    empValBtnDisp = disp;
    SetOwnVisibleInfo(btn, VISINFO_EMPVALNODISP, !disp);
    if (disp)
        return;
    AdjstRelatedInfoBtnIncludingOneself(&btn, false);
    LetIneffectiveSpBtnsForget(btn);
    SetOwnVisibleInfo(btn, VISINFO_SELCLLMEMBER | VISINFO_CNDCLLMEMBER | VISINFO_INCMEMBER, false);
    btn.backReferences.reset();
    AdjstToBackReferences(btn);
    ResetInsideInfoForSpBtns(above, true, true);
}

bool VCSrcBtnClass::IsBarredAsMember(DWORD btnID) const noexcept
{
    return !empValBtnDisp && SCBUICoreCom::IsEmpValBtn(btnID);
}

std::unique_ptr<VCBtn> VCSrcBtnClass::CreateBtnBasedOnBtnID(DWORD btnID) const
{
    if (SCBUICoreCom::IsNormalBtn(btnID))
        return std::make_unique<CBtn>(btnID, nullptr);
    if (SCBUICoreCom::IsEmpValBtn(btnID))
        return std::make_unique<CEmpValBtn>(btnID);
    return VCBtnClass::CreateBtnBasedOnBtnID(btnID);
}

std::unique_ptr<VCBtn> VCSrcBtnClass::CreateBtnBasedOnBtnType(SCBUICoreCom::EBtnType type) const
{
    if (type == SCBUICoreCom::BTNTYPE_NORMAL)
        return std::make_unique<CBtn>(SCBUICoreCom::BTN_ID_UNSETTING, nullptr);
    if (type == SCBUICoreCom::BTNTYPE_EMPVAL)
        return std::make_unique<CEmpValBtn>(SCBUICoreCom::BTN_ID_EMPVAL);
    return VCBtnClass::CreateBtnBasedOnBtnType(type);
}

bool VCSrcBtnClass::GetBtnTypeBasedOnBtnTypeAttrValue(const char* text, DWORD len,
                                                      SCBUICoreCom::EBtnType& type) const
{
    if (IXMLIO::IsSameText(text, len, "Data", 4))
        type = SCBUICoreCom::BTNTYPE_NORMAL;
    else if (IXMLIO::IsSameText(text, len, "EmpVal", 6))
        type = SCBUICoreCom::BTNTYPE_EMPVAL;
    else
        return VCBtnClass::GetBtnTypeBasedOnBtnTypeAttrValue(text, len, type);
    return true;
}

void VCSrcBtnClass::ResetInsideInfoAboveBtns(const std::vector<const VCBtn*>& srcBtns, bool buildRpLink,
                                             bool force)
{
    CSpBtnWalk walk;
    for (const VCBtn* const btn : srcBtns)
        walk.AddAbove(*this, *btn);
    SpBtnsOfClasses holders;
    for (std::size_t i = 0; i < walk.GetSize(); ++i)
        holders.push_back(walk.Get(i));
    walk.Clear();
    ResetInsideInfoForSpBtns(ListWithAllAbove(holders), buildRpLink, force);
}

void VCSrcBtnClass::ResetInsideInfoForSpBtnsOfBtns(const std::vector<DWORD>& btnIDs, bool buildRpLink)
{
    std::vector<const VCBtn*> srcBtns;
    for (const DWORD btnID : btnIDs) {
        if (display.IsBackReferred(btnID))
            srcBtns.push_back(FindBtn(btnID));
    }
    ResetInsideInfoAboveBtns(srcBtns, buildRpLink, true);
}

void VCSrcBtnClass::ResetInsideInfoForSpBtnsOfSrcBtns(bool buildRpLink, bool force)
{
    if (!display.HasBackReferred())
        return;
    std::vector<const VCBtn*> srcBtns;
    for (const VCBtn* const btn : srcBtnOfID) {
        if (btn != nullptr && btn->HasBackReferences())
            srcBtns.push_back(btn);
    }
    ResetInsideInfoAboveBtns(srcBtns, buildRpLink, force);
}

void VCSrcBtnClass::ResetInsideInfoForEffectiveSpBtns(bool buildRpLink)
{
    SpBtnsOfClasses effectiveSpBtns;
    for (const auto& [btnID, spBtn] : spBtnOfID) {
        if (spBtn->effective)
            effectiveSpBtns.emplace_back(this, spBtn);
    }
    ResetInsideInfoForSpBtns(ListWithAllAbove(effectiveSpBtns), buildRpLink, true);
}

void VCSrcBtnClass::ClearOwnFields() noexcept
{
    empValBtnDisp = true;
    fldID = 0;
    srcDataMngr = nullptr;
    dataBtnNextID = SCBUICoreCom::BTN_ID_NRM_BEGIN;
    valueToBtnID.Clear();
}

void VCSrcBtnClass::DropAll() noexcept
{
    VCBtnClass::Clear();
    ClearOwnFields();
}

void VCSrcBtnClass::Clear()
{
    DropAll();
    CreateEmpValBtn(SCKZCoreStrDef::STR_EMPTY);
}

void VCSrcBtnClass::ClearOfFixedSpec()
{
    VCBtnClass::ClearOfFixedSpec();
    isEmpValToBeHidden = false;
    if (!empValBtnDisp)
        SetDispEmpValBtnInfo(true);
}

void VCSrcBtnClass::Copy(const VCBtnClass& other, const std::unique_ptr<IRpLink>& rpLinkOfEnv)
{
    if (&other == this)
        return;
    const auto& otherSrc = dynamic_cast<const VCSrcBtnClass&>(other);
    try {
        VCBtnClass::Copy(other, rpLinkOfEnv);
        ClearOwnFields();
        // The keys are texts of the copied buttons, not of the others.
        for (const auto& entry : otherSrc.valueToBtnID.GetEntries()) {
            if (const VCBtn* const btn = FindBtn(entry.value))
                valueToBtnID.Insert(btn->name.get(), entry.value);
        }
    } catch (...) {
        DropAll();
        throw;
    }
    fldID = otherSrc.fldID;
    srcDataMngr = otherSrc.srcDataMngr;
    empValBtnDisp = otherSrc.empValBtnDisp;
    dataBtnNextID = otherSrc.dataBtnNextID;
}

bool VCSrcBtnClass::CreateEmpValBtn(const char* alias)
{
    auto btn = std::make_unique<CEmpValBtn>(SCBUICoreCom::BTN_ID_EMPVAL);
    btn->SetAlias(alias);
    btn->visibleInfo = VISINFO_NOREC | (empValBtnDisp ? 0 : VISINFO_EMPVALNODISP);
    valueToBtnID.ReserveForInsert();
    if (!RegBtn(std::move(btn)))
        return false;
    valueToBtnID.Insert(nullptr, SCBUICoreCom::BTN_ID_EMPVAL);
    return true;
}

bool VCSrcBtnClass::AddRecs(DWORD, DWORD count, const char* const* values, DWORD* outBtnIDs,
                            TCBtnIDAssArr<DWORD>& counts)
{
    counts.Clear();
    const DWORD firstNewID = dataBtnNextID;
    std::vector<DWORD> countOfBtn(srcBtnOfID.size(), 0); // by source identifier
    for (DWORD i = 0; i < count; ++i) {
        const char* const value = values[i] == nullptr || *values[i] == '\0' ? nullptr : values[i];
        DWORD btnID = SCBUICoreCom::BTN_ID_EMPVAL;
        if (value != nullptr) {
            const DWORD* const found = valueToBtnID.Find(value);
            if (found != nullptr) {
                btnID = *found;
            } else {
                if (dataBtnNextID > SCBUICoreCom::BTN_ID_NRM_END)
                    return false;
                btnID = dataBtnNextID;
                countOfBtn.resize(std::size_t{btnID} + 1, 0);
                CreateDataBtn(value);
            }
        }
        ++countOfBtn[btnID];
        outBtnIDs[i] = btnID;
    }

    recCount += count; // whatever fails from here on, room is made for all of them
    std::vector<DWORD> cameBack;
    for (DWORD btnID = 0; btnID < countOfBtn.size(); ++btnID) {
        if (countOfBtn[btnID] == 0)
            continue;
        counts.Set(btnID, countOfBtn[btnID]);
        if (btnID < firstNewID && BringBtnBack(*FindBtn(btnID)) && display.IsBackReferred(btnID))
            cameBack.push_back(btnID);
    }
    ResetInsideInfoForSpBtnsOfBtns(cameBack, false);
    return true;
}

void VCSrcBtnClass::CreateDataBtn(const char* value)
{
    auto btn = std::make_unique<CBtn>(dataBtnNextID, value);
    const VCBtn& borrowed = *btn;
    MakeRoomForSrcBtn(borrowed.id);
    valueToBtnID.ReserveForInsert();
    InsertBtnInfoToNameOrdList(&borrowed);
    try {
        AdjstAccordingToBtnAppearance(borrowed);
    } catch (...) {
        DeleteBtnInfoFromNameOrdList(&borrowed);
        throw;
    }
    RegBtn(std::move(btn)); // from here on nothing fails
    valueToBtnID.InsertNew(borrowed.name.get(), borrowed.id);
    ++dataBtnNextID;
}

// False if the button was there already.
bool VCSrcBtnClass::BringBtnBack(VCBtn& btn)
{
    if ((btn.visibleInfo & VISINFO_NOREC) == 0)
        return false;
    const bool wasListed = nameOrdList.Exist(btn.id); // an alias lists a button without records too
    InsertBtnInfoToNameOrdList(&btn);
    try {
        AdjstAccordingToBtnAppearance(btn);
    } catch (...) {
        if (!wasListed)
            DeleteBtnInfoFromNameOrdList(&btn);
        throw;
    }
    SetOwnVisibleInfo(btn, VISINFO_NOREC, false);
    return true;
}

bool VCSrcBtnClass::DeleteRecs(DWORD, DWORD count)
{
    std::vector<DWORD> lost;
    for (VCBtn* const btn : srcBtnOfID) {
        if (btn == nullptr)
            continue;
        DWORD left = 0;
        if ((*rpLink)->GetRecCount(id, btn->id, left) && left != 0)
            continue;
        SetOwnVisibleInfo(*btn, VISINFO_NOREC, true);
        DeleteBtnInfoFromNameOrdList(btn);
        AdjstAccordingToBtnDisappearance(*btn);
        if (btn->HasBackReferences())
            lost.push_back(btn->id);
    }
    recCount -= count;
    ResetInsideInfoForSpBtnsOfBtns(lost, false);
    return true;
}

unsigned long long VCSrcBtnClass::GetRecCountOfAllSrcBtns() const
{
    unsigned long long total = 0;
    for (const VCBtn* const btn : srcBtnOfID) {
        DWORD recCountOfBtn = 0;
        if (btn != nullptr && (*rpLink)->GetRecCount(id, btn->id, recCountOfBtn))
            total += recCountOfBtn;
    }
    return total;
}

void VCSrcBtnClass::AdjstAccordingToBtnAppearance(const VCBtn&) {}

void VCSrcBtnClass::AdjstAccordingToBtnDisappearance(const VCBtn&) noexcept {}

} // namespace NSKZ::NSKZCore
