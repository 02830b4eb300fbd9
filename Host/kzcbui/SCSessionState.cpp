#include "SCSessionState.h"

#include "CContentDigest.h"
#include "ECCndError.h"
#include "SCCndText.h"
#include "SCFldTypeText.h"
#include "SCHostText.h"
#include "SCNameWord.h"
#include "VCSpBtn.h"

#include <algorithm>
#include <set>
#include <utility>

namespace NSKZ::Host {

namespace {

using NSKZCore::CBUIDataMngr;
using NSKZCore::CSourceDataMngr;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SCDeclareConstant;
using NSKZCore::SSelectBtnIDList;
using NSKZCore::VCBtnClass;
using NSKZCore::VCSpBtn;

std::string InQuotes(const std::string& text)
{
    return "\"" + text + "\"";
}

// ---- The table

std::vector<DWORD> GetFldIDs(const CSourceDataMngr& table)
{
    std::vector<DWORD> fldIDs;
    table.GetSrcFrmDataFldID(fldIDs);
    return fldIDs;
}

// All but the digest.
SSavedSession::SField DescribeField(const CSourceDataMngr& table, DWORD fldID)
{
    CSourceDataMngr::SFldInfo info;
    table.GetFldInfo(fldID, info);
    return {SCHostText::FromEngine(info.name.c_str()), SCFldTypeText::Write(info), {}, fldID};
}

std::string DigestField(const CSourceDataMngr& table, DWORD fldID)
{
    CContentDigest digest;
    table.GetFldData(fldID)->Visit([&digest](const char* text, std::size_t length) {
        digest.Add(std::string_view(text, length));
        return true;
    });
    return digest.GetText();
}

[[noreturn]] void RefuseTable(const std::string& difference)
{
    throw ECCommandError("The save is of another table: " + difference);
}

// ---- What there is

std::vector<DWORD> GetEffectiveItemIDs(const CWorkspace& workspace)
{
    std::vector<DWORD> itemIDs;
    workspace.GetEnv().GetAllBtnClassIDList(itemIDs, false);
    return itemIDs;
}

std::vector<DWORD> GetSpBtnIDs(const CWorkspace& workspace, DWORD itemID, bool includeIneffective)
{
    std::vector<DWORD> btnIDs;
    workspace.GetEnv().GetAllSpBtnIDListOfBtnClass(itemID, btnIDs, includeIneffective);
    return btnIDs;
}

// A number for a set: the order does not count.
std::uint64_t DigestSet(const std::vector<DWORD>& numbers)
{
    std::uint64_t sum = numbers.size();
    for (const DWORD number : numbers) {
        CContentDigest digest;
        digest.Add(std::uint64_t{number});
        sum += digest.Get();
    }
    return sum;
}

// Members that take part, which alone are saved.
std::vector<DWORD> GetLiveMembers(const CWorkspace& workspace, DWORD itemID, DWORD btnID)
{
    const CBUIDataMngr& env = workspace.GetEnv();
    DWORD memberItemID = itemID;
    env.GetRefBtnClassIDOfVirIncBtn(itemID, btnID, memberItemID);
    std::vector<DWORD> memberIDs;
    env.GetMemberBtnIDListOfSpBtn(itemID, btnID, memberIDs);
    std::erase_if(memberIDs, [&](DWORD memberID) {
        bool isEffective = false;
        return !env.GetEffectiveInfoOfBtn(memberItemID, memberID, isEffective) || !isEffective;
    });
    return memberIDs;
}

// What a selection, a limitation and conditions come to: the records in force, the displayed and the selected
// buttons of every item, the members of every special button.
std::string DigestState(const CWorkspace& workspace)
{
    const CBUIDataMngr& env = workspace.GetEnv();
    CContentDigest digest;
    digest.Add(std::uint64_t{env.GetRelationMode()});
    digest.Add(DigestSet(workspace.GetTargetRecs()));
    for (const DWORD itemID : GetEffectiveItemIDs(workspace)) {
        digest.Add(std::uint64_t{itemID});
        std::vector<DWORD> btnIDs;
        env.GetDispBtnIDListOfBtnClass(itemID, btnIDs);
        digest.Add(DigestSet(btnIDs));
        env.GetSelBtnIDListOfBtnClass(itemID, btnIDs);
        digest.Add(DigestSet(btnIDs));
        std::vector<DWORD> spBtnIDs = GetSpBtnIDs(workspace, itemID, false);
        std::sort(spBtnIDs.begin(), spBtnIDs.end());
        for (const DWORD spBtnID : spBtnIDs) {
            digest.Add(std::uint64_t{spBtnID});
            digest.Add(DigestSet(GetLiveMembers(workspace, itemID, spBtnID)));
        }
    }
    return digest.GetText();
}

// ---- Restoring

void RestoreCnd(const SSavedSession::SCnd& cnd, CWorkspace& workspace)
{
    CBUIDataMngr& env = workspace.GetEnv();
    const std::string place = "The condition " + InQuotes(cnd.text) + " of the button " +
                              SCNameWord::WriteID(cnd.btnID, SCNameWord::MARK_OF_BTN) + " of the item " +
                              SCNameWord::WriteID(cnd.itemID, SCNameWord::MARK_OF_ITEM) + " ";
    try {
        const CTypedBtnCnd typed = workspace.ReadCnd(cnd.text);
        if (env.SetMemberBtnCndOfSpBtn(cnd.itemID, cnd.btnID, typed) != VCBtnClass::SETMMBBTNCND_OK)
            throw ECCommandError(place + "belongs to no button that picks its members by one.");
    } catch (const ECCndError& error) {
        throw ECCommandError(place + "cannot be read any more: " + error.what());
    }
}

// Brings the buttons that pick by a condition and have none at present to what they are without: the engine
// does not save whether a condition is missing or was never there.
void ClearMissingCnds(const SSavedSession& session, CWorkspace& workspace)
{
    CBUIDataMngr& env = workspace.GetEnv();
    std::set<std::pair<DWORD, DWORD>> withCnd;
    for (const SSavedSession::SCnd& cnd : session.cnds)
        withCnd.emplace(cnd.itemID, cnd.btnID);
    for (const DWORD itemID : GetEffectiveItemIDs(workspace)) {
        for (const DWORD btnID : GetSpBtnIDs(workspace, itemID, false)) {
            VCSpBtn::EMmbBtnSelMth selMth = VCSpBtn::MMBBTNSELMTH_SELECT;
            env.GetMmbBtnSelMthOfSpBtn(itemID, btnID, selMth);
            if (selMth == VCSpBtn::MMBBTNSELMTH_CONDITION && withCnd.count({itemID, btnID}) == 0)
                env.ClearMemberBtnCndOfSpBtn(itemID, btnID);
        }
    }
}

// Presses the saved selection anew. `withHidden` tells for each press whether hidden buttons take part.
void Press(const SSavedSession& session, CBUIDataMngr& env, const std::vector<bool>& withHidden)
{
    env.ClearAllBtnSelections(true);
    for (std::size_t i = 0; i < session.selection.size(); ++i) {
        const SSavedSession::SPress& press = session.selection[i];
        DWORD btnCount = 0;
        const bool isWhole =
            env.GetBtnCountOfBtnClass(press.itemID, btnCount) &&
            SCStretches::Count(press.btnIDs) <= btnCount &&
            env.SelectBtns(press.itemID, SCStretches::Expand(press.btnIDs), true, withHidden[i]);
        if (!isWhole) {
            throw ECCommandError("The selection names buttons that the item " +
                                 SCNameWord::WriteID(press.itemID, SCNameWord::MARK_OF_ITEM) +
                                 " does not have.");
        }
    }
}

// The number of the first press whose level has not the records that it had; that of presses if there is
// none.
std::size_t FindOtherLevel(const SSavedSession& session, const CBUIDataMngr& env)
{
    for (std::size_t i = 0; i < session.selection.size(); ++i) {
        DWORD itemID = 0;
        DWORD recCount = 0;
        if (session.selection[i].recs && env.GetHierInfo(static_cast<DWORD>(i), itemID, recCount) &&
            recCount != *session.selection[i].recs)
            return i;
    }
    return session.selection.size();
}

void RestoreSelection(const SSavedSession& session, CWorkspace& workspace)
{
    // The selection does not tell whether its hidden buttons took part; the records of its levels do.
    CBUIDataMngr& env = workspace.GetEnv();
    std::vector<bool> withHidden(session.selection.size(), false);
    for (;;) {
        Press(session, env, withHidden);
        const std::size_t other = FindOtherLevel(session, env);
        if (other == session.selection.size() || withHidden[other])
            break;
        withHidden[other] = true;
    }
    // In And a press counts all selected buttons, but one of a whole item only the displayed ones.
    if (env.GetRelationMode() == CBUIDataMngr::RELATIONMODE_AND && session.selection.size() == 1 &&
        DigestState(workspace) != session.digestOfState) {
        env.ClearAllBtnSelections(true);
        env.SelectAllBtnsOfBtnClass(session.selection.front().itemID, true);
        if (DigestState(workspace) != session.digestOfState)
            Press(session, env, withHidden);
    }
}

} // namespace

SSavedSession SCSessionState::Collect(const CWorkspace& workspace)
{
    const CBUIDataMngr& env = workspace.GetEnv();
    const CSourceDataMngr& table = workspace.GetTable();
    SSavedSession session;
    session.codePage = _getmbcp();
    session.recCount = workspace.GetRecCount();
    for (const DWORD fldID : GetFldIDs(table)) {
        session.fields.push_back(DescribeField(table, fldID));
        session.fields.back().digest = DigestField(table, fldID);
    }
    session.calendar = workspace.GetCalendar();

    if (const std::optional<std::vector<DWORD>> recs = workspace.GetLimitedRecs())
        session.limitation = SCStretches::Make(*recs);
    for (const DWORD itemID : GetEffectiveItemIDs(workspace)) {
        for (const DWORD btnID : GetSpBtnIDs(workspace, itemID, false)) {
            const NSKZCore::IBtnCnd* cnd = nullptr;
            if (env.GetMemberBtnCndOfSpBtn(itemID, btnID, cnd) != VCBtnClass::GETMMBBTNCND_OK)
                continue;
            const std::optional<std::string> text = SCCndText::Write(
                *cnd, [&workspace](DWORD fldID) { return workspace.GetWordOfNumFld(fldID); });
            if (!text) {
                throw ECCommandError("The condition of the button " +
                                     InQuotes(workspace.GetBtnText(itemID, btnID)) + " of " +
                                     InQuotes(workspace.GetItemName(itemID)) + " cannot be put into words.");
            }
            session.cnds.push_back({itemID, btnID, *text});
        }
        bool isNewSelected = false;
        if (env.GetNewBtnMadeSelStateOfBtnClass(itemID, isNewSelected) && isNewSelected)
            session.itemsWithNewBtns.push_back(itemID);
    }
    std::vector<SSelectBtnIDList> selection;
    env.GetAllBtnSelectionInfo(selection);
    for (const SSelectBtnIDList& ofItem : selection) {
        SSavedSession::SPress press{ofItem.btnClassID, SCStretches::Make(ofItem.btnIDList), std::nullopt};
        DWORD itemID = 0;
        DWORD recCount = 0;
        if (env.GetHierInfo(static_cast<DWORD>(session.selection.size()), itemID, recCount) &&
            itemID == press.itemID)
            press.recs = recCount;
        session.selection.push_back(std::move(press));
    }
    env.GetAllBtnClassSelectionInfo(session.selectedItems);
    std::erase_if(session.selectedItems, [&env](DWORD itemID) {
        bool isEffective = false;
        return !env.GetEffectiveInfoOfBtnClass(itemID, isEffective) || !isEffective;
    });
    session.digestOfState = DigestState(workspace);
    return session;
}

SCSessionState::SLeftOut SCSessionState::CountLeftOut(const CWorkspace& workspace)
{
    const std::vector<DWORD> itemIDs = GetEffectiveItemIDs(workspace);
    SLeftOut leftOut;
    leftOut.items = workspace.GetItemIDs().size() - itemIDs.size();
    for (const DWORD itemID : itemIDs) {
        leftOut.btns +=
            GetSpBtnIDs(workspace, itemID, true).size() - GetSpBtnIDs(workspace, itemID, false).size();
    }
    return leftOut;
}

void SCSessionState::RequireSameTable(const SSavedSession& session, const CWorkspace& workspace)
{
    const CSourceDataMngr& table = workspace.GetTable();
    const std::vector<DWORD> fldIDs = GetFldIDs(table);
    if (session.codePage != _getmbcp()) {
        RefuseTable("it was read in code page " + std::to_string(session.codePage) +
                    ", this one in code page " + std::to_string(_getmbcp()) + ".");
    }
    if (session.fields.size() != fldIDs.size()) {
        RefuseTable("it had " + std::to_string(session.fields.size()) + " fields, this one has " +
                    std::to_string(fldIDs.size()) + ".");
    }
    for (std::size_t i = 0; i < fldIDs.size(); ++i) {
        const SSavedSession::SField field = DescribeField(table, fldIDs[i]);
        const SSavedSession::SField& saved = session.fields[i];
        if (field.name != saved.name) {
            RefuseTable("its field " + std::to_string(i + 1) + " was called " + InQuotes(saved.name) +
                        ", here it is called " + InQuotes(field.name) + ".");
        }
        if (field.type != saved.type) {
            RefuseTable("its field " + InQuotes(field.name) + " was of type " + saved.type +
                        ", here it is of type " + field.type + ".");
        }
    }
    if (session.recCount != table.GetRecCount()) {
        RefuseTable("it had " + std::to_string(session.recCount) + " records, this one has " +
                    std::to_string(table.GetRecCount()) + ".");
    }
    for (std::size_t i = 0; i < fldIDs.size(); ++i) {
        if (DigestField(table, fldIDs[i]) != session.fields[i].digest)
            RefuseTable("its field " + InQuotes(session.fields[i].name) + " had other values.");
    }
}

std::vector<DWORD> SCSessionState::ReadLimitation(const SSavedSession& session)
{
    if (!session.limitation)
        return {};
    if (session.limitation->back().last >= session.recCount)
        throw ECCommandError("The limitation names records that the table does not have.");
    return SCStretches::Expand(*session.limitation);
}

bool SCSessionState::Restore(const SSavedSession& session, CWorkspace& workspace)
{
    CBUIDataMngr& env = workspace.GetEnv();
    ClearMissingCnds(session, workspace);
    for (const SSavedSession::SCnd& cnd : session.cnds)
        RestoreCnd(cnd, workspace);
    RestoreSelection(session, workspace);
    for (const DWORD itemID : session.itemsWithNewBtns) {
        if (!env.SetNewBtnMadeSelStateOfBtnClass(itemID, true))
            throw ECCommandError("The items whose new buttons come up selected are not all there.");
    }
    env.ClearAllBtnClassSelections();
    for (const DWORD itemID : session.selectedItems) {
        if (!env.SelectTheBtnClass(itemID, true))
            throw ECCommandError("The selected items are not all there.");
    }
    return DigestState(workspace) == session.digestOfState;
}

} // namespace NSKZ::Host
