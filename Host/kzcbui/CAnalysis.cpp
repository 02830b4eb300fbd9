#include "CAnalysis.h"

#include "CBuildProgress.h"
#include "CInterruptScope.h"
#include "ECCommandError.h"
#include "ECSessionLost.h"

#include <algorithm>
#include <map>
#include <new>
#include <span>
#include <utility>

namespace NSKZ::Host {

namespace {

using NSKZCore::CBUIDataMngr;
using NSKZCore::CFldValueList;
using NSKZCore::CProgressStatus;
using NSKZCore::CSourceDataMngr;
using NSKZCore::SBtnClassIDAndBtnID;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SCDataMngrCoreDef;
using NSKZCore::SSelectBtnIDList;

// A value of a field that costs the least to repeat, and that has a button already; empty if the field has
// none.
std::string GetShortestValue(const CFldValueList& values)
{
    std::string shortest;
    bool isFirst = true;
    values.Visit([&](const char* text, std::size_t length) {
        if (isFirst || length < shortest.size())
            shortest.assign(text, length);
        isFirst = false;
        return !shortest.empty();
    });
    return shortest;
}

// The table with records added or taken away at its head, so that it has `recCount` of them: as a table
// stands between two steps in which the engine takes a change of the number of records back.
CSourceDataMngr MakeTableOfCount(const CSourceDataMngr& table, DWORD recCount)
{
    CSourceDataMngr made(table);
    const DWORD present = table.GetRecCount();
    bool isMade = true;
    if (recCount < present) {
        isMade = made.DeleteRecs(0, present - recCount);
    } else if (recCount > present) {
        std::vector<DWORD> fldIDs;
        table.GetSrcFrmDataFldID(fldIDs);
        std::vector<CFldValueList> fillers(fldIDs.size());
        std::vector<const CFldValueList*> borrowed;
        for (std::size_t pos = 0; pos < fldIDs.size(); ++pos) {
            const std::string value = GetShortestValue(*table.GetFldData(fldIDs[pos]));
            for (DWORD rec = present; rec < recCount; ++rec)
                fillers[pos].AppendProved(value);
            borrowed.push_back(&fillers[pos]);
        }
        isMade = made.InsertRecsByFld(0, borrowed);
    }
    if (!isMade)
        throw ECSessionLost("The table cannot be brought to the records that it had.");
    return made;
}

bool IsSameCalendar(const CSourceDataMngr& table, const CSourceDataMngr& other)
{
    return table.GetStartMonth() == other.GetStartMonth() && table.GetCutOffDate() == other.GetCutOffDate() &&
           table.GetDaysOfTheWeek() == other.GetDaysOfTheWeek();
}

bool IsSameSelection(const std::vector<SSelectBtnIDList>& selection,
                     const std::vector<SSelectBtnIDList>& other)
{
    return std::equal(selection.begin(), selection.end(), other.begin(), other.end(),
                      [](const SSelectBtnIDList& left, const SSelectBtnIDList& right) {
                          return left.btnClassID == right.btnClassID && left.btnIDList == right.btnIDList &&
                                 left.newBtnMadeSelState == right.newBtnMadeSelState;
                      });
}

// Special buttons that take part.
std::vector<SBtnClassIDAndBtnID> GetEffectiveSpBtns(const CBUIDataMngr& env)
{
    std::vector<SBtnClassIDAndBtnID> spBtns;
    std::vector<DWORD> itemIDs;
    env.GetAllBtnClassIDList(itemIDs, false);
    for (const DWORD itemID : itemIDs) {
        std::vector<DWORD> btnIDs;
        env.GetAllSpBtnIDListOfBtnClass(itemID, btnIDs, false);
        for (const DWORD btnID : btnIDs)
            spBtns.push_back({itemID, btnID});
    }
    return spBtns;
}

bool IsSwitchedOff(const CBUIDataMngr& env, const SBtnClassIDAndBtnID& spBtn)
{
    bool isEffective = false;
    return env.GetEffectiveInfoOfSpBtn(spBtn.btnClassID, spBtn.btnID, isEffective) && !isEffective;
}

// Whether this is a button that the engine manages itself: that of a group of dates or times.
bool IsGroup(const CBUIDataMngr& env, DWORD itemID, DWORD btnID)
{
    bool isManagedByUser = true;
    return env.GetBtnMngrInfoOfSpBtn(itemID, btnID, isManagedByUser) && !isManagedByUser;
}

std::string GetText(const CBUIDataMngr& env, DWORD itemID, DWORD btnID)
{
    const char* text = nullptr;
    return env.GetAliasOfBtn(itemID, btnID, text) && text != nullptr ? text : "";
}

// Whether the environment stands on this table: its records, its fields and no other ones.
bool StandsOn(const CBUIDataMngr& env, const CSourceDataMngr& table)
{
    std::map<DWORD, DWORD> itemOfFld;
    env.GetBtnClassIDCnvObj(itemOfFld);
    std::vector<DWORD> fldIDs;
    table.GetSrcFrmDataFldID(fldIDs);
    return env.GetRecCountOfSrcData() == table.GetRecCount() && itemOfFld.size() == fldIDs.size() &&
           std::all_of(fldIDs.begin(), fldIDs.end(),
                       [&itemOfFld](DWORD fldID) { return itemOfFld.count(fldID) != 0; });
}

} // namespace

CAnalysis::CAnalysis(CSourceDataMngr tableOfUser, ELinkTableVerType linkTables, CProgressStatus& progress,
                     std::ostream* terminal)
    : progressTerminal(terminal), table(std::move(tableOfUser))
{
    env = std::make_unique<CBUIDataMngr>(SCBUICoreCom::BUIDATAMNGR_ID_BEGIN, linkTables, linkTables, table,
                                         &sums, &progress);
}

CAnalysis::CAnalysis(CSourceDataMngr tableOfUser, DWORD id, ELinkTableVerType bnLinkVerType,
                     ELinkTableVerType rpLinkVerType, std::ostream* terminal)
    : progressTerminal(terminal), table(std::move(tableOfUser))
{
    env = std::make_unique<CBUIDataMngr>(id, bnLinkVerType, rpLinkVerType, table, &sums);
}

std::unique_ptr<CAnalysis> CAnalysis::CreateCopy(DWORD id) const
{
    std::unique_ptr<CAnalysis> copy(new CAnalysis(table, id, env->GetVersionTypeOfBnLink(),
                                                  env->GetVersionTypeOfRpLink(), progressTerminal));
    if (!copy->env->Copy(*env, &copy->table, &copy->sums) || !copy->env->CopyLinkTables(*env))
        throw ECCommandError("The engine could not copy the analysis.");
    copy->history = history;
    copy->held = held;
    copy->heldCommands = heldCommands;
    return copy;
}

std::unique_ptr<CAnalysis> CAnalysis::CreateUnread() const
{
    return std::unique_ptr<CAnalysis>(new CAnalysis(table, env->GetID(), env->GetVersionTypeOfBnLink(),
                                                    env->GetVersionTypeOfRpLink(), progressTerminal));
}

// ---- Records

std::optional<std::vector<DWORD>> CAnalysis::GetLimitedRecs() const
{
    if (!env->IsRecListLimitationExecuted())
        return std::nullopt;
    // The first level stands on the limitation, and so does everything where there is no level.
    DWORD itemID = 0;
    DWORD recCountOfLevel = 0;
    return env->GetHierInfo(0, itemID, recCountOfLevel) ? GetTargetRecsOfItem(itemID) : GetTargetRecs();
}

std::vector<DWORD> CAnalysis::GetTargetRecs() const
{
    std::vector<DWORD> recs(env->GetRecCountOfSrcData());
    DWORD count = 0;
    env->GetTargetRecList(recs.data(), count);
    recs.resize(count);
    return recs;
}

std::vector<DWORD> CAnalysis::GetTargetRecsOfItem(DWORD itemID) const
{
    std::vector<DWORD> recs(env->GetRecCountOfSrcData());
    DWORD count = 0;
    env->GetTargetRecListOfBtnClass(itemID, recs.data(), count);
    recs.resize(count);
    return recs;
}

// ---- Changes

CAnalysis::SChange CAnalysis::DescribePresent(const std::string& command) const
{
    SChange change{command, table, env->GetUndoOpeCountOfTheSrcData(), GetLimitedRecs(), {}, {}, {}, {}};
    env->GetAllBtnSelectionInfo(change.selection);
    for (const SSelectBtnIDList& ofItem : change.selection) {
        for (const DWORD btnID : ofItem.btnIDList) {
            if (IsGroup(*env, ofItem.btnClassID, btnID))
                change.selectedGroups.push_back(
                    {{ofItem.btnClassID, btnID}, GetText(*env, ofItem.btnClassID, btnID)});
        }
    }
    env->GetAllBtnClassSelectionInfo(change.selectedItems);
    return change;
}

void CAnalysis::SetTable(CSourceDataMngr next) noexcept
{
    table = std::move(next);
    sums.Refresh();
}

void CAnalysis::Change(CSourceDataMngr changed, const std::string& command, const CFollow& follow)
{
    SChange change = DescribePresent(command);
    const std::vector<SBtnClassIDAndBtnID> spBtns = GetEffectiveSpBtns(*env);
    history.reserve(history.size() + 1);
    change.switchedOff.reserve(spBtns.size());
    CBuildProgress progress(progressTerminal);
    const CInterruptScope interruptScope(progress);

    SetTable(std::move(changed));
    bool isFollowed = false;
    try {
        isFollowed = follow(*env, progress);
    } catch (const std::bad_alloc&) {
        TakeBackFailed(change);
        throw;
    }
    if (!isFollowed) {
        TakeBackFailed(change);
        throw ECCommandError(progress.canceled
                                 ? "The change was cancelled; everything is as it was."
                                 : "The engine could not follow the change; everything is as it was.");
    }
    for (const SBtnClassIDAndBtnID& spBtn : spBtns) {
        if (IsSwitchedOff(*env, spBtn))
            change.switchedOff.push_back(spBtn);
    }
    history.push_back(std::move(change));
}

bool CAnalysis::Undo()
{
    try {
        const bool result = TakeBack(history.back());
        history.pop_back();
        return result;
    } catch (const std::bad_alloc&) {
        throw ECSessionLost("There was not enough memory to take the change back.");
    }
}

void CAnalysis::TakeBackFailed(const SChange& change)
{
    try {
        TakeBack(change);
        if (env->GetRecCountOfSrcData() != table.GetRecCount()) {
            // The engine has lost its link tables on the way, and reads all records again. Its history, in
            // which that stands as a change, goes.
            env->AdjstAccordingToDeleteRec(0, env->GetRecCountOfSrcData());
            env->AdjstAccordingToInsertRec(0, table.GetRecCount());
            ClearHistory();
            RestoreSelection(change);
        }
    } catch (const std::bad_alloc&) {
        throw ECSessionLost("A change failed for want of memory, and so did taking it back.");
    }
    if (!StandsOn(*env, table))
        throw ECSessionLost("A change failed, and the engine could not take it back.");
}

// The engine is told of a change that is taken back after the table is as it was. Of a change in several
// steps the number of records is always the first, so that until that is taken back the table must have the
// number that it has now.
bool CAnalysis::TakeBack(const SChange& change)
{
    const DWORD recCount = table.GetRecCount();
    SCDataMngrCoreDef::SBtnRenewalInfo info;
    change.tableBefore.GetRenewalInfo(table, info);
    const bool hasOtherCalendar = !IsSameCalendar(table, change.tableBefore);

    if (env->GetUndoOpeCountOfTheSrcData() > change.entriesBefore + 1) {
        SetTable(MakeTableOfCount(change.tableBefore, recCount));
        while (env->GetUndoOpeCountOfTheSrcData() > change.entriesBefore + 1)
            env->AdjstAccordingToUndoOpeOfTheSrcData();
    }
    SetTable(change.tableBefore);
    if (env->GetUndoOpeCountOfTheSrcData() > change.entriesBefore)
        env->AdjstAccordingToUndoOpeOfTheSrcData();
    RegroupDates(info.formChangedFldIDs, hasOtherCalendar);
    for (const SBtnClassIDAndBtnID& spBtn : change.switchedOff) {
        if (IsSwitchedOff(*env, spBtn))
            env->SetEffectiveInfoOfSpBtn(spBtn.btnClassID, spBtn.btnID, true);
    }
    return RestoreSelection(change);
}

// The engine does not group dates anew when it takes back a change of their form or of the calendar. It does
// when it is told of such a change; that leaves an entry in its history, which goes again without an effect.
void CAnalysis::RegroupDates(const std::vector<DWORD>& fldIDs, bool hasOtherCalendar)
{
    const auto regroup = [this](const auto& follow) {
        const DWORD entries = env->GetUndoOpeCountOfTheSrcData();
        follow();
        if (env->GetUndoOpeCountOfTheSrcData() > entries)
            env->AdjstAccordingToUndoOpeOfTheSrcData();
    };
    if (!fldIDs.empty()) {
        regroup([&] {
            env->AdjstAccordingToChangeFldDataForm(fldIDs.data(), static_cast<unsigned int>(fldIDs.size()));
        });
    }
    if (hasOtherCalendar)
        regroup([this] { env->AdjstAccordingToChangeDateCriterionInfo(); });
}

// The selection before a change, with the groups as they are now; false if some of them are gone.
bool CAnalysis::FindSelection(const SChange& change, std::vector<SSelectBtnIDList>& selection) const
{
    selection = change.selection;
    bool areAllFound = true;
    for (const SSelectedGroup& group : change.selectedGroups) {
        const DWORD itemID = group.btn.btnClassID;
        std::vector<DWORD> btnIDs;
        env->GetAllSpBtnIDListOfBtnClass(itemID, btnIDs, false);
        const auto found = std::find_if(btnIDs.begin(), btnIDs.end(), [&](DWORD btnID) {
            return IsGroup(*env, itemID, btnID) && GetText(*env, itemID, btnID) == group.text;
        });
        areAllFound = areAllFound && found != btnIDs.end();
        // Where the selection was, not where another group has been put already.
        for (std::size_t i = 0; i < selection.size(); ++i) {
            const std::vector<DWORD>& former = change.selection[i].btnIDList;
            const auto place = std::find(former.begin(), former.end(), group.btn.btnID);
            if (selection[i].btnClassID == itemID && place != former.end())
                selection[i].btnIDList[static_cast<std::size_t>(place - former.begin())] =
                    found != btnIDs.end() ? *found : SCBUICoreCom::BTN_ID_UNSETTING;
        }
    }
    for (SSelectBtnIDList& ofItem : selection)
        std::erase(ofItem.btnIDList, SCBUICoreCom::BTN_ID_UNSETTING);
    std::erase_if(selection, [](const SSelectBtnIDList& ofItem) { return ofItem.btnIDList.empty(); });
    return areAllFound;
}

bool CAnalysis::RestoreSelection(const SChange& change)
{
    std::vector<SSelectBtnIDList> wanted;
    bool isRestored = FindSelection(change, wanted);
    std::vector<SSelectBtnIDList> selection;
    env->GetAllBtnSelectionInfo(selection);
    const bool isLimited = GetLimitedRecs() == change.limitation;
    if (!isLimited) {
        const std::vector<DWORD> recs = change.limitation.value_or(std::vector<DWORD>());
        env->SetLimitedRecList(recs.data(), static_cast<DWORD>(recs.size()));
    }
    if (!isLimited || !IsSameSelection(selection, wanted))
        isRestored = env->SelectBtns(wanted, false) && isRestored;

    std::vector<DWORD> selectedItems;
    env->GetAllBtnClassSelectionInfo(selectedItems);
    if (selectedItems != change.selectedItems) {
        env->ClearAllBtnClassSelections();
        for (const DWORD itemID : change.selectedItems)
            env->SelectTheBtnClass(itemID, true);
    }
    return isRestored;
}

void CAnalysis::ClearHistory()
{
    env->ClearUndoOfTheSrcData();
    history.clear();
}

// ---- Held changes

void CAnalysis::Hold(CSourceDataMngr changed, const std::string& command)
{
    heldCommands.push_back(command);
    held = std::move(changed);
}

void CAnalysis::FollowHeld(const std::string& command, SCDataMngrCoreDef::SBtnRenewalInfo& info)
{
    CSourceDataMngr changed(*held);
    changed.GetRenewalInfo(table, info);
    Change(std::move(changed), command, [&info](CBUIDataMngr& environment, CProgressStatus& progress) {
        return environment.AdjstAccordingToChangeSrcDataMngr(info, &progress) == CBUIDataMngr::CREATESRC_OK;
    });
    DropHeld();
}

void CAnalysis::DropHeld() noexcept
{
    held.reset();
    heldCommands.clear();
}

} // namespace NSKZ::Host
