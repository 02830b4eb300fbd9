// Relation: which records are in force after a press, and which buttons of every class stay displayed.

#include "CBUIDataMngr.h"

#include "CFormattedMsg.h"
#include "ECAbnormalData.h"
#include "IBnLink.h"
#include "SCBUICoreStrDef.h"
#include "SCKZCoreCom.h"
#include "SCRecArr.h"
#include "VCBtnClass.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

namespace {

constexpr const char* SRC_FILE = "Src/CBUIDataMngr";

[[noreturn]] void ThrowAbnormalData(const char* format, std::initializer_list<DWORD> ids,
                                    const char* function, long line)
{
    throw ECAbnormalData(CFormattedMsg(format, ids).GetText(), SRC_FILE, function, line);
}

} // namespace

void CBUIDataMngr::SetRelationMode(ERelationMode mode)
{
    if (relationMode == mode)
        return;
    relationMode = mode;
    sumValueCacheMngr->ClearSumValueCache();
    ClearAllBtnSelections(false);
}

bool CBUIDataMngr::GetHierDepthOfBtnClass(DWORD btnClassID, unsigned int& depth) const
{
    if (relationMode != RELATIONMODE_NARROWING)
        return false;
    for (const SHierarchyInfo& level : hierarchies) {
        if (level.btnClassID == btnClassID) {
            depth = level.depth;
            return true;
        }
    }
    return false;
}

bool CBUIDataMngr::GetHierInfo(DWORD position, DWORD& btnClassID, DWORD& recCountOfLevel) const
{
    if (position >= hierarchies.size())
        return false;
    btnClassID = hierarchies[position].btnClassID;
    recCountOfLevel = hierarchies[position].recCount;
    return true;
}

bool CBUIDataMngr::GetSelBtnsInfoForDiffCnd(DWORD& btnClassID, DWORD& standardBtnID, DWORD& targetBtnID) const
{
    if (relationMode != RELATIONMODE_DIFFERENCE)
        return false;
    btnClassID = diffBtnClassID;
    standardBtnID = diffStandardBtnID;
    targetBtnID = diffTargetBtnID;
    return true;
}

void CBUIDataMngr::ClearHierInfo() noexcept
{
    hierarchies.clear();
}

void CBUIDataMngr::ClearDiffInfo() noexcept
{
    diffBtnClassID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
    diffStandardBtnID = SCBUICoreCom::BTN_ID_UNSETTING;
    diffTargetBtnID = SCBUICoreCom::BTN_ID_UNSETTING;
}

void CBUIDataMngr::IntersectWithLimitation(DWORD* recList, DWORD& recListCount) const
{
    if (recListLimited)
        SCKZCoreCom::MergeRecListByANDCnd(recList, recListCount, limitedRecList.get(), limitedRecCount);
    if (numCndRecListLimited)
        SCKZCoreCom::MergeRecListByANDCnd(recList, recListCount, numCndRecList.get(), numCndRecCount);
}

void CBUIDataMngr::IntersectWithLevelBefore(std::size_t position, DWORD* recList, DWORD& recListCount) const
{
    if (position == 0) {
        IntersectWithLimitation(recList, recListCount);
    } else {
        const SHierarchyInfo& before = hierarchies[position - 1];
        SCKZCoreCom::MergeRecListByANDCnd(recList, recListCount, before.recList.get(), before.recCount);
    }
}

// Or and narrowing are the same relation: what tells them apart is that Or has let the other classes go
// before.
bool CBUIDataMngr::ExecRelationByORCnd(SHierarchyInfo* level, DWORD btnClassID,
                                       const std::vector<DWORD>& btnIDs, bool select)
{
    return ExecNarrowing(level, btnClassID, btnIDs, select);
}

bool CBUIDataMngr::ExecNarrowing(SHierarchyInfo* level, DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                 bool select)
{
    const VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr)
        return false;
    if (!select && level == nullptr)
        return true;
    const std::size_t position = level != nullptr ? level->depth : hierarchies.size();
    DWORD* recs = GetWorkArea(0);
    DWORD* buffers[] = {GetWorkArea(1), GetWorkArea(2)};
    DWORD count = 0;
    DWORD failedID = SCBUICoreCom::BTN_ID_UNSETTING;

    if (select) {
        if (!VCBtnClass::GetRecListThatRelatesToBtns(btnClass, btnIDs, recs, count, buffers, failedID))
            return false;
        IntersectWithLevelBefore(position, recs, count);
        if (level != nullptr) {
            count = SCKZCoreCom::MergeRecListByORCnd(recs, count, level->recList.get(), level->recCount,
                                                     buffers[0]);
            level->recList = SCRecArr::CopyOf(buffers[0], count);
            level->recCount = count;
        } else {
            SHierarchyInfo added;
            added.depth = static_cast<DWORD>(position);
            added.btnClassID = btnClassID;
            added.recList = SCRecArr::CopyOf(recs, count);
            added.recCount = count;
            hierarchies.push_back(std::move(added));
        }
    } else if (!btnClass->IsBtnSelectiveState()) {
        hierarchies.erase(hierarchies.begin() + (level - hierarchies.data()));
    } else {
        // A record of a released button may still be covered by another: the level is worked out anew.
        std::vector<DWORD> selBtnIDs;
        btnClass->GetDispSelectedBtnIDList(selBtnIDs);
        if (!VCBtnClass::GetRecListThatRelatesToBtns(btnClass, selBtnIDs, recs, count, buffers, failedID)) {
            ThrowAbnormalData(SCBUICoreStrDef::MSG_NOTEXIST_SELBTN, {btnClassID, 0},
                              "NSKZ::NSKZCore::CBUIDataMngr::ExecNarrowing", __LINE__);
        }
        IntersectWithLevelBefore(position, recs, count);
        level->recList = SCRecArr::CopyOf(recs, count);
        level->recCount = count;
    }
    ResetVisibleInfoBasedOnRelationOfAllBtns();
    return true;
}

// `btnIDs` and `select` play no part: the relation is always that of the class's whole selection.
bool CBUIDataMngr::ExecRelationByANDCnd(SHierarchyInfo* level, DWORD btnClassID, const std::vector<DWORD>&,
                                        bool)
{
    constexpr const char* FUNCTION = "NSKZ::NSKZCore::CBUIDataMngr::ExecRelationByANDCnd";
    const VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr)
        return false;
    if (!btnClass->IsBtnSelectiveState()) {
        ClearHierInfo();
        SetVisibleInfoBasedOnRelationOfAllBtns(true);
        return true;
    }
    std::vector<DWORD> selBtnIDs;
    btnClass->GetSelectedBtnIDList(selBtnIDs);
    BtnIDsOfClasses relatedToAll; // what shares a record with each selected button
    for (const DWORD selBtnID : selBtnIDs) {
        DWORD* recs = GetWorkArea(0);
        DWORD* buffers[] = {GetWorkArea(1), GetWorkArea(2)};
        DWORD count = 0;
        if (!btnClass->GetRecListThatRelatesToBtn(selBtnID, recs, count, buffers)) {
            ThrowAbnormalData(SCBUICoreStrDef::MSG_NOTEXIST_SELBTN, {btnClassID, selBtnID}, FUNCTION,
                              __LINE__);
        }
        IntersectWithLimitation(recs, count);
        BtnIDsOfClasses related = GetBtnsOfRecs(recs, count, FUNCTION);
        if (selBtnID == selBtnIDs.front()) {
            relatedToAll = std::move(related);
            continue;
        }
        for (auto& [otherID, list] : relatedToAll)
            SCBUICoreCom::MergeBtnIDListByANDCnd(list, related[otherID]);
    }

    SetVisibleInfoBasedOnRelationOfAllBtns(false);
    for (const auto& [otherID, list] : relatedToAll)
        FindBtnClass(otherID)->PutVisibleInfoBasedOnRelationOfBtns(list);
    if (level == nullptr) {
        SHierarchyInfo added;
        added.depth = static_cast<DWORD>(hierarchies.size());
        added.btnClassID = btnClassID;
        hierarchies.push_back(std::move(added));
    }
    return true;
}

bool CBUIDataMngr::ExecRelationByDiffCnd(DWORD btnClassID, DWORD standardBtnID, DWORD targetBtnID)
{
    constexpr const char* FUNCTION = "NSKZ::NSKZCore::CBUIDataMngr::ExecRelationByDiffCnd";
    const VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr)
        return false;
    if (standardBtnID == SCBUICoreCom::BTN_ID_UNSETTING) {
        ClearDiffInfo();
        SetVisibleInfoBasedOnRelationOfAllBtns(true);
        return true;
    }
    DWORD* standardRecs = GetWorkArea(0);
    DWORD* targetRecs = GetWorkArea(1);
    DWORD* buffers[] = {GetWorkArea(2), GetWorkArea(3)};
    DWORD standardCount = 0;
    DWORD targetCount = 0;
    if (!btnClass->GetRecListThatRelatesToBtn(standardBtnID, standardRecs, standardCount, buffers) ||
        (targetBtnID != SCBUICoreCom::BTN_ID_UNSETTING &&
         !btnClass->GetRecListThatRelatesToBtn(targetBtnID, targetRecs, targetCount, buffers)))
        return false;
    IntersectWithLimitation(standardRecs, standardCount);
    IntersectWithLimitation(targetRecs, targetCount);

    BtnIDsOfClasses remaining = GetBtnsOfRecs(standardRecs, standardCount, FUNCTION);
    BtnIDsOfClasses ofTarget = GetBtnsOfRecs(targetRecs, targetCount, FUNCTION);
    for (auto& [otherID, list] : remaining)
        SCBUICoreCom::DeleteBtnIDList(list, ofTarget[otherID]);

    SetVisibleInfoBasedOnRelationOfAllBtns(false);
    for (const auto& [otherID, list] : remaining)
        FindBtnClass(otherID)->PutVisibleInfoBasedOnRelationOfBtns(list);
    return true;
}

// --- Reasons to hide, over all classes

void CBUIDataMngr::SetVisibleInfoBasedOnRelationOfAllBtns(bool show) noexcept
{
    for (const auto& [btnClassID, btnClass] : btnClasses)
        btnClass->SetVisibleInfoBasedOnRelationOfAllBtns(show);
}

void CBUIDataMngr::SetVisibleInfoBasedOnLimitedRecListOfAllBtns(bool show) noexcept
{
    for (const auto& [btnClassID, btnClass] : btnClasses)
        btnClass->SetVisibleInfoBasedOnLimitedRecListOfAllBtns(show);
}

// Only the last level counts: its records are among those of all levels before it.
void CBUIDataMngr::ResetVisibleInfoBasedOnRelationOfAllBtns()
{
    SetVisibleInfoBasedOnRelationOfAllBtns(hierarchies.empty());
    if (hierarchies.empty())
        return;
    const SHierarchyInfo& last = hierarchies.back();
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        if (!SCBUICoreCom::IsSrcBtnClass(btnClassID) || !btnClass->IsEffective() ||
            btnClass->PutVisibleInfoBasedOnRelationOfRecs(*bnLink, last.recList.get(), last.recCount))
            continue;
        ThrowAbnormalData(SCBUICoreStrDef::MSG_NOTEXIST_SRCBTNCLS_IN_BNLINK, {btnClassID},
                          "NSKZ::NSKZCore::CBUIDataMngr::ResetVisibleInfoBasedOnRelationOfAllBtns", __LINE__);
    }
}

CBUIDataMngr::BtnIDsOfClasses CBUIDataMngr::GetBtnsOfRecs(const DWORD* recList, DWORD recListCount,
                                                          const char* function) const
{
    BtnIDsOfClasses btnIDs;
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        if (SCBUICoreCom::IsSrcBtnClass(btnClassID) && btnClass->IsEffective() &&
            !btnClass->GetBtnIDListOfRecs(*bnLink, recList, recListCount, btnIDs[btnClassID])) {
            ThrowAbnormalData(SCBUICoreStrDef::MSG_NOTEXIST_SRCBTNCLS_IN_BNLINK, {btnClassID}, function,
                              __LINE__);
        }
    }
    return btnIDs;
}

void CBUIDataMngr::ResetVisibleInfoBasedOnLimitedRecListOfAllBtns(const BtnIDsOfClasses& reached)
{
    SetVisibleInfoBasedOnLimitedRecListOfAllBtns(!recListLimited);
    if (!recListLimited)
        return;
    for (const auto& [btnClassID, btnIDs] : reached)
        FindBtnClass(btnClassID)->PutVisibleInfoBasedOnLimitedRecListOfBtns(btnIDs);
}

} // namespace NSKZ::NSKZCore
