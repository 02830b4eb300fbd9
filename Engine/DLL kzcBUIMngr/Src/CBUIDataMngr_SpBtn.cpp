// Special buttons: what a change of one means for the environment, and the members that conditions pick.

#include "CBUIDataMngr.h"

#include "CFormattedMsg.h"
#include "ECAbnormalData.h"
#include "IBtnCnd.h"
#include "SCBUICoreStrDef.h"
#include "VCSrcBtnClass.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

namespace {

constexpr const char* SRC_FILE = "Src/CBUIDataMngr";

} // namespace

// --- Queries

bool CBUIDataMngr::GetSpBtnIDListIncludingBtn(DWORD btnClassID, DWORD btnID,
                                              std::vector<DWORD>& spBtnIDs) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        return btnClass.GetSpBtnIDListIncludingSpecifiedBtn(btnID, spBtnIDs);
    });
}

bool CBUIDataMngr::GetRootSpBtnIDListIncludingBtn(DWORD btnClassID, DWORD btnID, std::vector<DWORD>& spBtnIDs,
                                                  bool includeIneffective) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        return btnClass.GetRootSpBtnIDListIncludingBtn(btnID, includeIneffective, spBtnIDs);
    });
}

bool CBUIDataMngr::GetSpBtnIDListThatTheSpecifiedBtnInfluences(DWORD btnClassID, DWORD btnID,
                                                               std::set<SBtnClassIDAndBtnID>& spBtns,
                                                               bool directOnly) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        btnClass.GetSpBtnIDListThatTheSpecifiedBtnInfluences(btnID, spBtns, directOnly);
        return true;
    });
}

bool CBUIDataMngr::GetEffectiveInfoOfSpBtn(DWORD btnClassID, DWORD btnID, bool& effective) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        return btnClass.GetEffectiveInfoOfSpBtn(btnID, effective);
    });
}

bool CBUIDataMngr::GetMmbBtnSelMthOfSpBtn(DWORD btnClassID, DWORD btnID, VCSpBtn::EMmbBtnSelMth& selMth) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        return btnClass.GetMmbBtnSelMthOfSpBtn(btnID, selMth);
    });
}

bool CBUIDataMngr::GetMemberBtnCountOfSpBtn(DWORD btnClassID, DWORD btnID, DWORD& count) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        return btnClass.GetMemberBtnCountOfSpBtn(btnID, count);
    });
}

bool CBUIDataMngr::GetMemberBtnIDListOfSpBtn(DWORD btnClassID, DWORD btnID,
                                             std::vector<DWORD>& mmbBtnIDs) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        return btnClass.GetMemberBtnIDListOfSpBtn(btnID, mmbBtnIDs);
    });
}

bool CBUIDataMngr::GetDisplayedMemberBtnIDListOfSpBtn(DWORD btnClassID, DWORD btnID,
                                                      std::vector<DWORD>& mmbBtnIDs) const
{
    const VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    const std::vector<DWORD>* members = nullptr;
    if (btnClass == nullptr || !btnClass->GetMemberBtnIDListOfSpBtn(btnID, members))
        return false;
    constexpr unsigned int BEING_MEMBER = VISINFO_SELCLLMEMBER | VISINFO_CNDCLLMEMBER | VISINFO_INCMEMBER;
    std::vector<DWORD> displayed;
    for (const DWORD mmbBtnID : *members) {
        unsigned int visibleInfo = 0;
        if (!btnClass->GetVisibleInfoOfBtn(mmbBtnID, visibleInfo)) {
            const CFormattedMsg message(SCBUICoreStrDef::MSG_NOTEXIST_MMBBTN, {btnClassID, mmbBtnID});
            throw ECAbnormalData(message.GetText(), SRC_FILE,
                                 "NSKZ::NSKZCore::CBUIDataMngr::GetDisplayedMemberBtnIDListOfSpBtn",
                                 __LINE__);
        }
        if ((visibleInfo & ~BEING_MEMBER) == 0)
            displayed.push_back(mmbBtnID);
    }
    std::sort(displayed.begin(), displayed.end());
    mmbBtnIDs = std::move(displayed);
    return true;
}

VCBtnClass::EMthRetOfGetMmbBtnCnd CBUIDataMngr::GetMemberBtnCndOfSpBtn(DWORD btnClassID, DWORD btnID,
                                                                       const IBtnCnd*& cnd) const
{
    const VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    return btnClass == nullptr ? VCBtnClass::GETMMBBTNCND_NOSPBTN
                               : btnClass->GetMemberBtnCndOfSpBtn(btnID, cnd);
}

bool CBUIDataMngr::GetBtnMngrInfoOfSpBtn(DWORD btnClassID, DWORD btnID, bool& managedByUser) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        return btnClass.GetBtnMngrInfoOfSpBtn(btnID, managedByUser);
    });
}

bool CBUIDataMngr::GetDispMemberBtnInfoOfIncBtn(DWORD btnClassID, DWORD btnID, bool& disp) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        return btnClass.GetDispMemberBtnInfoOfIncBtn(btnID, disp);
    });
}

// --- Changes

VCBtnClass::EMthRetOfCreateSpBtn CBUIDataMngr::CreateSpBtn(DWORD& btnID, DWORD btnClassID,
                                                           SCBUICoreCom::EBtnType type, const char* name,
                                                           VCSpBtn::EMmbBtnSelMth method,
                                                           const std::vector<DWORD>* members,
                                                           const IBtnCnd* cnd)
{
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr)
        return VCBtnClass::CREATESPBTN_NOBTNCLASS;
    const bool isInc = type == SCBUICoreCom::BTNTYPE_INC;
    if (!isInc && type != SCBUICoreCom::BTNTYPE_CLL)
        return VCBtnClass::CREATESPBTN_BADTYPE;
    if (isInc && method == VCSpBtn::MMBBTNSELMTH_CONDITION)
        return VCBtnClass::CREATESPBTN_UNKNOWNSELMTH;
    const bool wasSelected = HasSelection();
    const VCBtnClass::EMthRetOfCreateSpBtn result =
        isInc ? btnClass->CreateIncBtn(name, method, members, cnd, btnID)
              : btnClass->CreateCllBtn(name, method, members, cnd, btnID);
    if (result != VCBtnClass::CREATESPBTN_OK)
        return result;
    if (wasSelected)
        ClearAllBtnSelections(true);
    else
        ResetMemberBtnBasedOnTheCnd(btnClass);
    if (isInc)
        sumValueCacheMngr->ClearTotalValue(btnClassID);
    return result;
}

bool CBUIDataMngr::HasSelection() const
{
    return IsBtnSelectiveState() || diffBtnClassID != SCBUICoreCom::BTNCLS_ID_UNSETTING;
}

void CBUIDataMngr::CloseChangeOfSpBtn(DWORD btnClassID, bool wasSelected)
{
    sumValueCacheMngr->ClearSumValueCache();
    if (wasSelected || HasSelection()) {
        ClearAllBtnSelections(true);
    } else {
        ResetMemberBtnBasedOnTheCnd(btnClassID);
    }
}

bool CBUIDataMngr::DestroySpBtn(DWORD btnClassID, DWORD btnID)
{
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr)
        return false;
    const bool wasSelected = HasSelection();
    const bool isDestroyed = SCBUICoreCom::IsIncBtn(btnID)   ? btnClass->DestroyIncBtn(btnID)
                             : SCBUICoreCom::IsCllBtn(btnID) ? btnClass->DestroyCllBtn(btnID)
                                                             : false;
    CloseChangeOfSpBtn(btnClassID, wasSelected);
    return isDestroyed;
}

bool CBUIDataMngr::SetEffectiveInfoOfSpBtn(DWORD btnClassID, DWORD btnID, bool effective)
{
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    const bool wasSelected = HasSelection();
    if (btnClass == nullptr || !btnClass->SetEffectiveInfoOfSpBtn(btnID, effective))
        return false;
    CloseChangeOfSpBtn(btnClassID, wasSelected);
    return true;
}

VCBtnClass::EMthRetOfOpeToMmbBtnIDList
CBUIDataMngr::SetMemberBtnIDListOfSpBtn(DWORD btnClassID, DWORD btnID, const std::vector<DWORD>& mmbBtnIDs)
{
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    VCSpBtn::EMmbBtnSelMth selMth = VCSpBtn::MMBBTNSELMTH_SELECT;
    if (btnClass == nullptr || !btnClass->GetMmbBtnSelMthOfSpBtn(btnID, selMth))
        return VCBtnClass::OPEMMBBTN_NOSPBTN;
    if (selMth != VCSpBtn::MMBBTNSELMTH_SELECT)
        return VCBtnClass::OPEMMBBTN_NOTSELECT;
    const bool wasSelected = HasSelection();
    const VCBtnClass::EMthRetOfOpeToMmbBtnIDList result =
        btnClass->SetMemberBtnIDListOfSpBtn(btnID, mmbBtnIDs);
    if (result == VCBtnClass::OPEMMBBTN_OK)
        CloseChangeOfSpBtn(btnClassID, wasSelected);
    return result;
}

VCBtnClass::EMthRetOfSetMmbBtnCnd CBUIDataMngr::SetMemberBtnCndOfSpBtn(DWORD btnClassID, DWORD btnID,
                                                                       const IBtnCnd& cnd)
{
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr)
        return VCBtnClass::SETMMBBTNCND_NOSPBTN;
    const bool wasSelected = HasSelection();
    const VCBtnClass::EMthRetOfSetMmbBtnCnd result = btnClass->SetMemberBtnCndOfSpBtn(btnID, cnd);
    if (result == VCBtnClass::SETMMBBTNCND_OK)
        CloseChangeOfSpBtn(btnClassID, wasSelected);
    return result;
}

bool CBUIDataMngr::ClearMemberBtnCndOfSpBtn(DWORD btnClassID, DWORD btnID)
{
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    const bool wasSelected = HasSelection();
    if (btnClass == nullptr || !btnClass->ClearMemberBtnCndOfSpBtn(btnID))
        return false;
    VCSpBtn::EMmbBtnSelMth selMth = VCSpBtn::MMBBTNSELMTH_SELECT;
    if (btnClass->GetMmbBtnSelMthOfSpBtn(btnID, selMth) && selMth == VCSpBtn::MMBBTNSELMTH_CONDITION)
        btnClass->SetMemberBtnIDListOfSpBtn(btnID, {});
    CloseChangeOfSpBtn(btnClassID, wasSelected);
    return true;
}

bool CBUIDataMngr::SetDispMemberBtnInfoOfIncBtn(DWORD btnClassID, DWORD btnID, bool disp)
{
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    const bool wasSelected = HasSelection();
    if (btnClass == nullptr || !btnClass->SetDispMemberBtnInfoOfIncBtn(btnID, disp))
        return false;
    CloseChangeOfSpBtn(btnClassID, wasSelected);
    return true;
}

bool CBUIDataMngr::SetDispEmpValBtnInfoOfBtnClass(DWORD btnClassID, bool disp)
{
    auto* const btnClass = dynamic_cast<VCSrcBtnClass*>(FindBtnClass(btnClassID));
    if (btnClass == nullptr)
        return false;
    const bool wasSelected = HasSelection();
    btnClass->SetDispEmpValBtnInfo(disp);
    CloseChangeOfSpBtn(btnClassID, wasSelected);
    return true;
}

// --- Members that conditions pick

bool CBUIDataMngr::ResetMemberBtnBasedOnTheCnd()
{
    if (coreSumMngr == nullptr)
        return false;
    for (const auto& [btnClassID, btnClass] : btnClasses)
        ResetMemberBtnBasedOnTheCnd(btnClass.get());
    return true;
}

bool CBUIDataMngr::ResetMemberBtnBasedOnTheCnd(VCBtnClass* btnClass)
{
    if (coreSumMngr == nullptr || btnClass == nullptr)
        return false;
    if (!btnClass->IsBtnSelectiveState())
        ResetMembersOfEffectiveSpBtns(*btnClass);
    return true;
}

void CBUIDataMngr::ResetMembersOfEffectiveSpBtns(VCBtnClass& btnClass)
{
    std::vector<DWORD> spBtnIDs;
    btnClass.GetAllSpBtnIDList(spBtnIDs, false);
    for (const DWORD spBtnID : spBtnIDs)
        ResetMemberBtnBasedOnTheCnd(&btnClass, spBtnID);
}

bool CBUIDataMngr::ResetMemberBtnBasedOnTheCnd(VCBtnClass* btnClass, DWORD btnID)
{
    if (coreSumMngr == nullptr || btnClass == nullptr)
        return false;
    VCSpBtn::EMmbBtnSelMth selMth = VCSpBtn::MMBBTNSELMTH_SELECT;
    const IBtnCnd* cnd = nullptr;
    if (!btnClass->GetMmbBtnSelMthOfSpBtn(btnID, selMth) || selMth != VCSpBtn::MMBBTNSELMTH_CONDITION ||
        btnClass->GetMemberBtnCndOfSpBtn(btnID, cnd) != VCBtnClass::GETMMBBTNCND_OK)
        return false;
    std::vector<DWORD> mmbBtnIDs;
    if (!cnd->GetBtnIDListThatAppliesToTheCnd(btnClass, *sumValueCacheMngr, mmbBtnIDs) ||
        btnClass->SetMemberBtnIDListOfSpBtn(btnID, mmbBtnIDs) != VCBtnClass::OPEMMBBTN_OK)
        return false;
    sumValueCacheMngr->ClearSumValue(btnClass->GetID(), btnID); // what it covers has changed
    return btnClass->PutVisibleInfoBasedOnRelationOfCndSpBtn(btnID);
}

bool CBUIDataMngr::ResetMemberBtnBasedOnTheCnd(DWORD btnClassID)
{
    std::set<DWORD> visited;
    return ResetMemberBtnBasedOnTheCnd(btnClassID, visited);
}

bool CBUIDataMngr::ResetMemberBtnBasedOnTheCnd(DWORD btnClassID, std::set<DWORD>& visited)
{
    if (coreSumMngr == nullptr)
        return false;
    if (!visited.insert(btnClassID).second)
        return true;
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr)
        return false;
    ResetMemberBtnBasedOnTheCnd(btnClass);
    std::vector<DWORD> referringClassIDs;
    btnClass->GetBtnClassIDListOfRefOrg(referringClassIDs);
    for (const DWORD referringClassID : referringClassIDs)
        ResetMemberBtnBasedOnTheCnd(referringClassID, visited);
    return true;
}

bool CBUIDataMngr::ResetMemberBtnBasedOnTheCndOfCllBtns(VCBtnClass* btnClass, DWORD btnID)
{
    if (coreSumMngr == nullptr || btnClass == nullptr)
        return false;
    if (SCBUICoreCom::IsCllBtn(btnID))
        return true;
    std::vector<DWORD> spBtnIDs;
    btnClass->GetAllSpBtnIDList(spBtnIDs, false);
    for (const DWORD spBtnID : spBtnIDs) {
        VCSpBtn::EMmbBtnSelMth selMth = VCSpBtn::MMBBTNSELMTH_SELECT;
        const IBtnCnd* cnd = nullptr;
        bool applies = false;
        if (!SCBUICoreCom::IsCllBtn(spBtnID) || !btnClass->GetMmbBtnSelMthOfSpBtn(spBtnID, selMth) ||
            selMth != VCSpBtn::MMBBTNSELMTH_CONDITION ||
            btnClass->GetMemberBtnCndOfSpBtn(spBtnID, cnd) != VCBtnClass::GETMMBBTNCND_OK ||
            !cnd->CheckWhetherBtnIDAppliesToTheCnd(btnClass, btnID, *sumValueCacheMngr, applies))
            continue;
        if (applies)
            btnClass->AddMemberBtnIDListOfSpBtn(spBtnID, btnID);
        else
            btnClass->DeleteMemberBtnIDListOfSpBtn(spBtnID, btnID);
    }
    return true;
}

bool CBUIDataMngr::ResetMemberBtnBasedOnTheCndOfAll(DWORD numID)
{
    if (coreSumMngr == nullptr)
        return false;
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        std::vector<DWORD> spBtnIDs;
        btnClass->GetAllSpBtnIDList(spBtnIDs, false);
        for (const DWORD spBtnID : spBtnIDs) {
            const IBtnCnd* cnd = nullptr;
            if (btnClass->GetMemberBtnCndOfSpBtn(spBtnID, cnd) == VCBtnClass::GETMMBBTNCND_OK &&
                cnd->HasNumDataItem(numID))
                ResetMemberBtnBasedOnTheCnd(btnClass.get(), spBtnID);
        }
    }
    return true;
}

} // namespace NSKZ::NSKZCore
