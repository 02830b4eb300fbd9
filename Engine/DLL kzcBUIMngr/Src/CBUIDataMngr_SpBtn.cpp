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
    return ChangeSpBtn([&] {
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
    });
}

bool CBUIDataMngr::HasSelection() const
{
    return IsBtnSelectiveState() || !hierarchies.empty() ||
           diffBtnClassID != SCBUICoreCom::BTNCLS_ID_UNSETTING;
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

// Runs a change of a class and what every change of a special button ends in; false for an unknown class and
// where the change is refused.
template <class TChange>
bool CBUIDataMngr::ChangeBtnClass(DWORD btnClassID, const TChange& change)
{
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr)
        return false;
    const bool wasSelected = HasSelection();
    return ChangeSpBtn([&] {
        const bool isChanged = change(*btnClass);
        if (isChanged)
            CloseChangeOfSpBtn(btnClassID, wasSelected);
        return isChanged;
    });
}

bool CBUIDataMngr::DestroySpBtn(DWORD btnClassID, DWORD btnID)
{
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr)
        return false;
    const bool wasSelected = HasSelection();
    return ChangeSpBtn([&] {
        const bool isDestroyed = SCBUICoreCom::IsIncBtn(btnID)   ? btnClass->DestroyIncBtn(btnID)
                                 : SCBUICoreCom::IsCllBtn(btnID) ? btnClass->DestroyCllBtn(btnID)
                                                                 : false;
        CloseChangeOfSpBtn(btnClassID, wasSelected);
        return isDestroyed;
    });
}

bool CBUIDataMngr::SetEffectiveInfoOfSpBtn(DWORD btnClassID, DWORD btnID, bool effective)
{
    return ChangeBtnClass(
        btnClassID, [&](VCBtnClass& btnClass) { return btnClass.SetEffectiveInfoOfSpBtn(btnID, effective); });
}

VCBtnClass::EMthRetOfOpeToMmbBtnIDList
CBUIDataMngr::SetMemberBtnIDListOfSpBtn(DWORD btnClassID, DWORD btnID, const std::vector<DWORD>& mmbBtnIDs)
{
    VCBtnClass::EMthRetOfOpeToMmbBtnIDList result = VCBtnClass::OPEMMBBTN_NOSPBTN;
    ChangeBtnClass(btnClassID, [&](VCBtnClass& btnClass) {
        VCSpBtn::EMmbBtnSelMth selMth = VCSpBtn::MMBBTNSELMTH_SELECT;
        if (!btnClass.GetMmbBtnSelMthOfSpBtn(btnID, selMth))
            return false;
        result = selMth == VCSpBtn::MMBBTNSELMTH_SELECT ? btnClass.SetMemberBtnIDListOfSpBtn(btnID, mmbBtnIDs)
                                                        : VCBtnClass::OPEMMBBTN_NOTSELECT;
        return result == VCBtnClass::OPEMMBBTN_OK;
    });
    return result;
}

VCBtnClass::EMthRetOfSetMmbBtnCnd CBUIDataMngr::SetMemberBtnCndOfSpBtn(DWORD btnClassID, DWORD btnID,
                                                                       const IBtnCnd& cnd)
{
    VCBtnClass::EMthRetOfSetMmbBtnCnd result = VCBtnClass::SETMMBBTNCND_NOSPBTN;
    ChangeBtnClass(btnClassID, [&](VCBtnClass& btnClass) {
        result = btnClass.SetMemberBtnCndOfSpBtn(btnID, cnd);
        return result == VCBtnClass::SETMMBBTNCND_OK;
    });
    return result;
}

bool CBUIDataMngr::ClearMemberBtnCndOfSpBtn(DWORD btnClassID, DWORD btnID)
{
    return ChangeBtnClass(btnClassID, [btnID](VCBtnClass& btnClass) {
        // The members go first: letting the condition go does not fail.
        VCSpBtn::EMmbBtnSelMth selMth = VCSpBtn::MMBBTNSELMTH_SELECT;
        if (btnClass.GetMmbBtnSelMthOfSpBtn(btnID, selMth) && selMth == VCSpBtn::MMBBTNSELMTH_CONDITION)
            btnClass.SetMemberBtnIDListOfSpBtn(btnID, {});
        return btnClass.ClearMemberBtnCndOfSpBtn(btnID);
    });
}

bool CBUIDataMngr::SetDispMemberBtnInfoOfIncBtn(DWORD btnClassID, DWORD btnID, bool disp)
{
    return ChangeBtnClass(
        btnClassID, [&](VCBtnClass& btnClass) { return btnClass.SetDispMemberBtnInfoOfIncBtn(btnID, disp); });
}

bool CBUIDataMngr::SetDispEmpValBtnInfoOfBtnClass(DWORD btnClassID, bool disp)
{
    return ChangeBtnClass(btnClassID, [disp](VCBtnClass& btnClass) {
        auto* const srcBtnClass = dynamic_cast<VCSrcBtnClass*>(&btnClass);
        if (srcBtnClass == nullptr)
            return false;
        srcBtnClass->SetDispEmpValBtnInfo(disp);
        return true;
    });
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
        const VCBtnClass::EMthRetOfOpeToMmbBtnIDList result =
            applies ? btnClass->AddMemberBtnIDListOfSpBtn(spBtnID, btnID)
                    : btnClass->DeleteMemberBtnIDListOfSpBtn(spBtnID, btnID);
        if (result == VCBtnClass::OPEMMBBTN_OK)
            sumValueCacheMngr->ClearSumValue(btnClass->GetID(), spBtnID); // what it covers has changed
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
