#include "VCSrcBtnClass.h"

#include "CBtn.h"
#include "CEmpValBtn.h"
#include "IRpLink.h"
#include "SCKZCoreStrDef.h"

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

void VCSrcBtnClass::SetDispEmpValBtnInfo(bool disp) noexcept
{
    empValBtnDisp = disp;
    VCBtn& btn = *FindBtn(SCBUICoreCom::BTN_ID_EMPVAL);
    SetOwnVisibleInfo(btn, VISINFO_EMPVALNODISP, !disp);
    if (disp)
        return;
    SetOwnVisibleInfo(btn, VISINFO_SELCLLMEMBER | VISINFO_CNDCLLMEMBER | VISINFO_INCMEMBER, false);
    btn.backReferences.reset();
    AdjstToBackReferences(btn);
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

    for (DWORD btnID = 0; btnID < countOfBtn.size(); ++btnID) {
        if (countOfBtn[btnID] == 0)
            continue;
        counts.Set(btnID, countOfBtn[btnID]);
        if (btnID < firstNewID)
            BringBtnBack(*FindBtn(btnID));
    }
    recCount += count;
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

void VCSrcBtnClass::BringBtnBack(VCBtn& btn)
{
    if ((btn.visibleInfo & VISINFO_NOREC) == 0)
        return;
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
}

bool VCSrcBtnClass::DeleteRecs(DWORD, DWORD count)
{
    for (VCBtn* const btn : srcBtnOfID) {
        if (btn == nullptr)
            continue;
        DWORD left = 0;
        if ((*rpLink)->GetRecCount(id, btn->id, left) && left != 0)
            continue;
        SetOwnVisibleInfo(*btn, VISINFO_NOREC, true);
        DeleteBtnInfoFromNameOrdList(btn);
        AdjstAccordingToBtnDisappearance(*btn);
    }
    recCount -= count;
    return true;
}

void VCSrcBtnClass::AdjstAccordingToBtnAppearance(const VCBtn&) {}

void VCSrcBtnClass::AdjstAccordingToBtnDisappearance(const VCBtn&) noexcept {}

} // namespace NSKZ::NSKZCore
