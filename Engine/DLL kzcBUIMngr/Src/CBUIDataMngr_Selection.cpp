// Selection: what a press discards, how the buttons change, and what the relation gets to see of it.

#include "CBUIDataMngr.h"

#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "SCIDList.h"
#include "VCBtnClass.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

namespace {

constexpr const char* SRC_FILE = "Src/CBUIDataMngr";

} // namespace

bool CBUIDataMngr::SelectTheBtn(DWORD btnClassID, DWORD btnID, bool select)
{
    return SelectBtns(btnClassID, std::vector<DWORD>{btnID}, select, false);
}

bool CBUIDataMngr::SelectBtns(DWORD btnClassID, const std::vector<DWORD>& btnIDsOfHost, bool select,
                              bool includeNonDispBtns)
{
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr || !btnClass->IsEffective())
        return false;
    const bool isDifference = relationMode == RELATIONMODE_DIFFERENCE;
    if (isDifference && btnIDsOfHost.empty())
        return false;
    std::vector<DWORD> btnIDs = SCIDList::TakeEachOnce(btnIDsOfHost);

    // The levels behind the class's own go.
    const auto found = std::find_if(hierarchies.begin(), hierarchies.end(), [=](const SHierarchyInfo& level) {
        return level.btnClassID == btnClassID;
    });
    SHierarchyInfo* level = nullptr;
    if (found != hierarchies.end()) {
        for (auto deeper = found + 1; deeper != hierarchies.end(); ++deeper) {
            if (VCBtnClass* const deeperClass = FindBtnClass(deeper->btnClassID))
                deeperClass->SetSelectionInfoOfAllBtns(false);
        }
        hierarchies.erase(found + 1, hierarchies.end());
        level = &hierarchies.back();
    }
    // Or and And hold one class at a time.
    if (level == nullptr && (relationMode == RELATIONMODE_OR || relationMode == RELATIONMODE_AND))
        ClearAllBtnSelections(false);
    // Without multiple selection a press replaces the class's selection.
    if (!multiSelection && !isDifference && select && btnClass->IsBtnSelectiveState()) {
        if (level != nullptr)
            hierarchies.pop_back();
        level = nullptr;
        btnClass->SetSelectionInfoOfAllBtns(false);
    }

    if (isDifference) {
        if (!SelectBtnsForDiffCnd(*btnClass, btnIDs, select))
            return false;
    } else {
        std::vector<DWORD> relatedBtnIDs;
        for (const DWORD btnID : btnIDs) {
            unsigned int visibleInfo = 0;
            if (!btnClass->SetSelectionInfoOfBtn(btnID, select, visibleInfo)) {
                ResetVisibleInfoBasedOnRelationOfAllBtns();
                sumValueCacheMngr->ClearSumValueCache(); // levels may have gone
                return false;
            }
            if (includeNonDispBtns || visibleInfo == 0)
                relatedBtnIDs.push_back(btnID);
        }
        if (btnClass->GetSelBtnCount() == 0)
            btnClass->SetBtnSelectiveState(select);
        btnIDs = std::move(relatedBtnIDs);
    }

    if (!ExecRelation(level, btnClassID, btnIDs, select)) {
        sumValueCacheMngr->ClearSumValueCache(); // levels may have gone
        return false;
    }
    AdjstSumValueCacheToSelectBtn(btnClassID);
    return relationMode == RELATIONMODE_NONE || ResetMemberBtnBasedOnTheCnd();
}

bool CBUIDataMngr::SelectBtnsForDiffCnd(VCBtnClass& btnClass, const std::vector<DWORD>& btnIDs, bool select)
{
    const DWORD btnClassID = btnClass.GetID();
    // A special button that is switched off takes no part, and so makes no pair.
    if (select && !std::all_of(btnIDs.begin(), btnIDs.end(),
                               [&btnClass](DWORD btnID) { return btnClass.ExistTheBtn(btnID); }))
        return false;
    if (VCBtnClass* const diffBtnClass = FindBtnClass(diffBtnClassID)) {
        diffBtnClass->SetSelectionInfoOfBtn(diffStandardBtnID, false);
        diffBtnClass->SetSelectionInfoOfBtn(diffTargetBtnID, false);
    }
    SetVisibleInfoBasedOnRelationOfAllBtns(true);

    if (!select) {
        if (btnClassID != diffBtnClassID)
            return false;
        for (const DWORD btnID : btnIDs) {
            if (btnID == diffTargetBtnID) {
                diffTargetBtnID = SCBUICoreCom::BTN_ID_UNSETTING;
            } else if (btnID == diffStandardBtnID) {
                ClearDiffInfo();
                break;
            } else {
                return false;
            }
        }
    } else if (btnClassID == diffBtnClassID) {
        diffTargetBtnID = btnIDs.front();
    } else {
        diffBtnClassID = btnClassID;
        diffStandardBtnID = btnIDs.front();
        diffTargetBtnID = btnIDs.size() > 1 ? btnIDs[1] : SCBUICoreCom::BTN_ID_UNSETTING;
        AdjstSumValueCacheToClearAllBtnSelections();
        ResetMembersOfEffectiveSpBtns(btnClass);
    }

    if (diffStandardBtnID != SCBUICoreCom::BTN_ID_UNSETTING) {
        btnClass.SetSelectionInfoOfBtn(diffStandardBtnID, true);
        if (diffTargetBtnID != SCBUICoreCom::BTN_ID_UNSETTING)
            btnClass.SetSelectionInfoOfBtn(diffTargetBtnID, true);
    }
    return true;
}

bool CBUIDataMngr::ExecRelation(SHierarchyInfo* level, DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                bool select)
{
    switch (relationMode) {
    case RELATIONMODE_NONE:
        return true;
    case RELATIONMODE_OR:
        return ExecRelationByORCnd(level, btnClassID, btnIDs, select);
    case RELATIONMODE_AND:
        return ExecRelationByANDCnd(level, btnClassID, btnIDs, select);
    case RELATIONMODE_DIFFERENCE:
        return ExecRelationByDiffCnd(btnClassID, diffStandardBtnID, diffTargetBtnID);
    case RELATIONMODE_NARROWING:
        return ExecNarrowing(level, btnClassID, btnIDs, select);
    }
    throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_RELATIONMODE, SRC_FILE,
                         "NSKZ::NSKZCore::CBUIDataMngr::SelectBtns", __LINE__);
}

bool CBUIDataMngr::SelectBtns(const std::vector<SSelectBtnIDList>& selectInfo, bool includeNonDispBtns)
{
    ClearAllBtnSelections(false);
    for (const SSelectBtnIDList& ofClass : selectInfo) {
        if (!SelectBtns(ofClass.btnClassID, ofClass.btnIDList, true, includeNonDispBtns)) {
            ClearAllBtnSelections(true);
            return false;
        }
        SetNewBtnMadeSelStateOfBtnClass(ofClass.btnClassID, ofClass.newBtnMadeSelState);
    }
    return true;
}

bool CBUIDataMngr::SelectAllBtnsOfBtnClass(DWORD btnClassID, bool select)
{
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr || relationMode == RELATIONMODE_DIFFERENCE)
        return false;
    std::vector<DWORD> btnIDs;
    btnClass->GetBtnAppOrdList(VCBtnClass::ORDLIST_NORMAL, btnIDs);
    if (!SelectBtns(btnClassID, btnIDs, select, false))
        return false;
    btnClass->SetSelectionInfoOfAllBtns(select);
    return true;
}

void CBUIDataMngr::ClearAllBtnSelections(bool force)
{
    if (!force && !IsBtnSelectiveState())
        return;
    ClearHierInfo();
    ClearDiffInfo();
    for (const auto& [btnClassID, btnClass] : btnClasses)
        btnClass->SetSelectionInfoOfAllBtns(false);
    ResetVisibleInfoBasedOnRelationOfAllBtns();
    AdjstSumValueCacheToClearAllBtnSelections();
    ResetMemberBtnBasedOnTheCnd();
}

void CBUIDataMngr::GetAllBtnSelectionInfo(std::vector<SSelectBtnIDList>& selectInfo) const
{
    std::vector<SSelectBtnIDList> collected;
    const auto collect = [&collected](const VCBtnClass& btnClass) {
        SSelectBtnIDList ofClass;
        ofClass.btnClassID = btnClass.GetID();
        btnClass.GetSelectedBtnIDList(ofClass.btnIDList);
        ofClass.newBtnMadeSelState = btnClass.IsNewBtnMadeSelState();
        collected.push_back(std::move(ofClass));
    };
    switch (relationMode) {
    case RELATIONMODE_NARROWING:
        for (const SHierarchyInfo& level : hierarchies) {
            if (const VCBtnClass* const btnClass = FindBtnClass(level.btnClassID))
                collect(*btnClass);
        }
        break;
    case RELATIONMODE_DIFFERENCE:
        if (diffBtnClassID != SCBUICoreCom::BTNCLS_ID_UNSETTING) {
            SSelectBtnIDList pair;
            pair.btnClassID = diffBtnClassID;
            pair.btnIDList.push_back(diffStandardBtnID);
            if (diffTargetBtnID != SCBUICoreCom::BTN_ID_UNSETTING)
                pair.btnIDList.push_back(diffTargetBtnID);
            collected.push_back(std::move(pair));
        }
        break;
    case RELATIONMODE_NONE:
    case RELATIONMODE_OR:
    case RELATIONMODE_AND:
        for (const auto& [btnClassID, btnClass] : btnClasses) {
            if (btnClass->IsBtnSelectiveState())
                collect(*btnClass);
        }
        break;
    default:
        throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_RELATIONMODE, SRC_FILE,
                             "NSKZ::NSKZCore::CBUIDataMngr::GetAllBtnSelectionInfo", __LINE__);
    }
    selectInfo = std::move(collected);
}

bool CBUIDataMngr::IsBtnSelectiveState() const
{
    return std::any_of(btnClasses.begin(), btnClasses.end(),
                       [](const auto& idAndClass) { return idAndClass.second->IsBtnSelectiveState(); });
}

bool CBUIDataMngr::SelectTheBtnClass(DWORD btnClassID, bool select)
{
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr)
        return false;
    if (btnClass->IsBtnClassSelected() == select)
        return true;
    if (select)
        selBtnClassIDList.push_back(btnClassID);
    else
        selBtnClassIDList.erase(std::find(selBtnClassIDList.begin(), selBtnClassIDList.end(), btnClassID));
    btnClass->SetSelectionInfo(select);
    return true;
}

void CBUIDataMngr::GetAllBtnClassSelectionInfo(std::vector<DWORD>& btnClassIDs) const
{
    btnClassIDs = selBtnClassIDList;
}

void CBUIDataMngr::ClearAllBtnClassSelections()
{
    for (const auto& [btnClassID, btnClass] : btnClasses)
        btnClass->SetSelectionInfo(false);
    selBtnClassIDList.clear();
}

void CBUIDataMngr::SetIneffectiveInfoOfAllSelCllBtns(DWORD btnClassID, std::vector<DWORD>& changedBtnIDs)
{
    changedBtnIDs.clear();
    const VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr)
        return;
    std::vector<DWORD> spBtnIDs;
    btnClass->GetAllSpBtnIDList(spBtnIDs, true);
    for (const DWORD spBtnID : spBtnIDs) {
        VCSpBtn::EMmbBtnSelMth selMth = VCSpBtn::MMBBTNSELMTH_CONDITION;
        if (SCBUICoreCom::IsCllBtn(spBtnID) && btnClass->GetMmbBtnSelMthOfSpBtn(spBtnID, selMth) &&
            selMth == VCSpBtn::MMBBTNSELMTH_SELECT && SetEffectiveInfoOfSpBtn(btnClassID, spBtnID, false))
            changedBtnIDs.push_back(spBtnID);
    }
}

void CBUIDataMngr::AdjstSumValueCacheToSelectBtn(DWORD btnClassID) const
{
    for (const auto& [otherID, otherClass] : btnClasses) {
        switch (relationMode) {
        case RELATIONMODE_NONE:
            break;
        case RELATIONMODE_OR:
        case RELATIONMODE_NARROWING:
            if (otherID != btnClassID && !otherClass->IsBtnSelectiveState())
                sumValueCacheMngr->ClearSumValueCache(otherID);
            break;
        case RELATIONMODE_AND:
        case RELATIONMODE_DIFFERENCE:
            if (otherID != btnClassID)
                sumValueCacheMngr->ClearTotalValue(otherID);
            break;
        default:
            throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_RELATIONMODE, SRC_FILE,
                                 "NSKZ::NSKZCore::CBUIDataMngr::AdjstSumValueCacheToSelectBtn", __LINE__);
        }
    }
}

void CBUIDataMngr::AdjstSumValueCacheToClearAllBtnSelections() const
{
    switch (relationMode) {
    case RELATIONMODE_NONE:
        return;
    case RELATIONMODE_OR:
    case RELATIONMODE_NARROWING:
        sumValueCacheMngr->ClearSumValueCache();
        return;
    case RELATIONMODE_AND:
    case RELATIONMODE_DIFFERENCE:
        sumValueCacheMngr->ClearTotalValue();
        return;
    }
    throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_RELATIONMODE, SRC_FILE,
                         "NSKZ::NSKZCore::CBUIDataMngr::AdjstSumValueCacheToClearAllBtnSelections", __LINE__);
}

} // namespace NSKZ::NSKZCore
