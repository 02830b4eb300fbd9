#include "SCSpecialCommands.h"

#include "CBtnLister.h"
#include "CCommandArgs.h"
#include "CCommandSet.h"
#include "CTextOutput.h"
#include "SCEnvChange.h"
#include "SCNameWord.h"
#include "SCNumberText.h"
#include "SCShownText.h"
#include "SCSpBtnAnswer.h"
#include "VCBtn.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <new>
#include <set>

namespace NSKZ::Host {

namespace {

using NSKZCore::CBUIDataMngr;
using NSKZCore::SBtnClassIDAndBtnID;
using NSKZCore::SCBUICoreCom;
using NSKZCore::VCBtnClass;
using NSKZCore::VCSpBtn;

constexpr const char* STR_WHERE = "--where";
constexpr const char* STR_OF = "--of";
constexpr const char* STR_NONE = "--none";
constexpr const char* STR_DISPMEMBERS = "--disp-members";
constexpr const char* STR_DISPLAYED = "--displayed";
constexpr const char* STR_CLEAR = "--clear";
constexpr const char* STR_ALL = "--all";
constexpr const char* STR_MAX = "--max";
constexpr std::size_t PLACE_OF_MEMBERS = 2; // the plain words before are ITEM and SPECIAL

constexpr const char* CLEARS_SELECTIONS = "This clears all selections.";

struct SSpBtn
{
    DWORD itemID;
    DWORD btnID;
};

// The special button that the first two words name.
SSpBtn FindSpBtn(const SCommandContext& context, const CCommandArgs& args)
{
    const DWORD itemID = context.workspace.FindItem(args.GetWords()[0]);
    return {itemID, context.workspace.FindSpBtn(itemID, args.GetWords()[1])};
}

std::string NameBtn(const CWorkspace& workspace, DWORD itemID, DWORD btnID);

// The same for a change, which the engine refuses for buttons that it manages itself.
SSpBtn FindUserSpBtn(const SCommandContext& context, const CCommandArgs& args)
{
    const SSpBtn spBtn = FindSpBtn(context, args);
    bool isManagedByUser = true;
    context.workspace.GetEnv().GetBtnMngrInfoOfSpBtn(spBtn.itemID, spBtn.btnID, isManagedByUser);
    if (!isManagedByUser) {
        throw ECCommandError("The engine itself manages the button " +
                             NameBtn(context.workspace, spBtn.itemID, spBtn.btnID) +
                             ": it is a group of the item's form, which \"form\" changes.");
    }
    return spBtn;
}

std::string NameBtn(const CWorkspace& workspace, DWORD itemID, DWORD btnID)
{
    return "\"" + workspace.GetBtnText(itemID, btnID) + "\"";
}

bool PicksByCnd(const CWorkspace& workspace, const SSpBtn& spBtn)
{
    VCSpBtn::EMmbBtnSelMth selMth = VCSpBtn::MMBBTNSELMTH_SELECT;
    workspace.GetEnv().GetMmbBtnSelMthOfSpBtn(spBtn.itemID, spBtn.btnID, selMth);
    return selMth == VCSpBtn::MMBBTNSELMTH_CONDITION;
}

std::vector<DWORD> GetMembers(const CWorkspace& workspace, const SSpBtn& spBtn)
{
    std::vector<DWORD> memberIDs;
    workspace.GetEnv().GetMemberBtnIDListOfSpBtn(spBtn.itemID, spBtn.btnID, memberIDs);
    return memberIDs;
}

// The members that the words from `first` on name, or none with --none.
std::vector<DWORD> ReadMembers(const SCommandContext& context, const CCommandArgs& args, DWORD itemID,
                               std::size_t first)
{
    const std::vector<std::string> words = args.GetWordsFrom(first);
    if (words.empty() != args.Has(STR_NONE))
        args.Refuse("Either members or --none must be there");
    return context.workspace.FindBtns(itemID, words);
}

// Lets `change` change a special button, and answers what the button is then, how many records are in force
// and whether a selection was cleared on the way.
template <class TChange>
CAnswer ChangeSpBtn(SCommandContext& context, DWORD itemID, const TChange& change)
{
    const bool wasSelective = context.workspace.GetEnv().IsBtnSelectiveState();
    const DWORD btnID = SCEnvChange::Run(context, change);
    CAnswer answer = SCSpBtnAnswer::Describe(context.workspace, itemID, btnID);
    answer["records"] = context.workspace.GetTargetRecs().size();
    answer["clearedSelection"] = wasSelective && !context.workspace.GetEnv().IsBtnSelectiveState();
    return answer;
}

void ShowClearedSelection(const CAnswer& answer, CTextOutput& output)
{
    if (answer.value("clearedSelection", false))
        output.WriteLine("All selections were cleared.");
}

void ShowSpBtn(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    SCSpBtnAnswer::Show(context.workspace, {answer}, false, output);
    ShowClearedSelection(answer, output);
}

// ---- create

// Why the engine refused the members of a list, which are buttons of `memberItemID`. `btnID` is the button
// that was to get them, 0 for a new one.
[[noreturn]] void RefuseMembers(const CWorkspace& workspace, DWORD itemID, DWORD btnID, DWORD memberItemID,
                                const std::vector<DWORD>& memberIDs)
{
    for (const DWORD memberID : memberIDs) {
        bool isShown = true;
        workspace.GetEnv().GetDispEmpValBtnInfoOfBtnClass(memberItemID, isShown);
        if (SCBUICoreCom::IsEmpValBtn(memberID) && !isShown) {
            throw ECCommandError("The empty value of the item \"" + workspace.GetItemName(memberItemID) +
                                 "\" is not shown and takes part in nothing; \"empty-value\" shows it.");
        }
        if (PicksByCnd(workspace, {memberItemID, memberID})) {
            throw ECCommandError("The button " + NameBtn(workspace, memberItemID, memberID) +
                                 " picks its members by a condition and cannot be a member itself.");
        }
    }
    std::set<SBtnClassIDAndBtnID> above;
    workspace.GetEnv().GetSpBtnIDListThatTheSpecifiedBtnInfluences(itemID, btnID, above, false);
    const auto loop = std::find_if(memberIDs.begin(), memberIDs.end(), [&](DWORD memberID) {
        return (memberItemID == itemID && memberID == btnID) || above.count({memberItemID, memberID}) != 0;
    });
    const std::string name = NameBtn(workspace, itemID, btnID);
    if (loop == memberIDs.end() || (memberItemID == itemID && *loop == btnID))
        throw ECCommandError("The button " + name + " would come to hold itself.");
    throw ECCommandError("The button " + NameBtn(workspace, memberItemID, *loop) + " holds " + name +
                         ", directly or through others, and cannot be its member.");
}

// What a new special button is: of the kind `type` in `itemID`, over buttons of `memberItemID`.
struct SNewSpBtn
{
    DWORD itemID;
    SCBUICoreCom::EBtnType type;
    std::string name;
    DWORD memberItemID;
};

DWORD Create(CBUIDataMngr& env, const CWorkspace& workspace, const SNewSpBtn& made,
             const std::vector<DWORD>& memberIDs, const CTypedBtnCnd* cnd)
{
    DWORD btnID = SCBUICoreCom::BTN_ID_UNSETTING;
    const auto selMth = cnd != nullptr ? VCSpBtn::MMBBTNSELMTH_CONDITION : VCSpBtn::MMBBTNSELMTH_SELECT;
    const std::vector<DWORD>* const members = cnd != nullptr ? nullptr : &memberIDs;
    const bool isVirInc = made.type == SCBUICoreCom::BTNTYPE_VIRINC;
    // A ratio is that of the present display.
    env.GetSumValueCacheMngrObjRef().ClearTotalValue(made.memberItemID);
    switch (isVirInc
                ? env.CreateSpBtn(btnID, made.itemID, made.type, made.name.c_str(), selMth, members, cnd,
                                  made.memberItemID)
                : env.CreateSpBtn(btnID, made.itemID, made.type, made.name.c_str(), selMth, members, cnd)) {
    case VCBtnClass::CREATESPBTN_OK:
        return btnID;
    case VCBtnClass::CREATESPBTN_NOID:
        throw ECCommandError("The item has used up its identifiers for buttons of this kind.");
    case VCBtnClass::CREATESPBTN_BADMEMBER:
        RefuseMembers(workspace, made.itemID, SCBUICoreCom::BTN_ID_UNSETTING, made.memberItemID, memberIDs);
    case VCBtnClass::CREATESPBTN_NOBTNCLASS: // only a virtual inc button may not be over an item that is
                                             // there
        throw ECCommandError(
            made.memberItemID == made.itemID
                ? "A virtual item groups buttons of other items, not its own."
                : "A common virtual item does not group buttons of one that is a user's own.");
    default:
        throw ECCommandError("The engine did not make the button.");
    }
}

CAnswer RunCreate(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const std::vector<std::string>& words = args.GetWords();
    if (words[1] != "inc" && words[1] != "cll" && words[1] != "virinc")
        args.Refuse("A special button is of the kind inc, cll or virinc, not \"" + words[1] + "\"");
    const bool isInc = words[1] == "inc";
    const bool isVirInc = words[1] == "virinc";
    if (isVirInc != args.Has(STR_OF))
        args.Refuse("--of tells the item whose buttons a virinc button groups, and stands with these alone");
    const bool isByCnd = args.Has(STR_WHERE);
    const bool dispMember = args.Has(STR_DISPMEMBERS);
    if (isInc && isByCnd)
        throw ECCommandError("An inc button takes its members from a list; a condition is for cll buttons.");
    if (!isInc && dispMember) {
        throw ECCommandError(std::string("A ") + (isVirInc ? "virinc button never" : "cll button always") +
                             " hides its members; --disp-members is for inc buttons.");
    }
    if (isByCnd && (words.size() > 3 || args.Has(STR_NONE)))
        args.Refuse("The members come either from a list or from a condition");
    const DWORD itemID = isVirInc ? workspace.FindVirItem(words[0]) : workspace.FindItem(words[0]);
    const DWORD memberItemID = isVirInc ? workspace.FindItem(args.GetValue(STR_OF, "")) : itemID;
    if (words[2].empty())
        throw ECCommandError("A special button needs a text to show.");
    const std::string name = workspace.ReadBtnText(words[2]);
    workspace.RequireNewBtnText(itemID, name, SCBUICoreCom::BTN_ID_UNSETTING);
    const SNewSpBtn made{itemID,
                         isInc      ? SCBUICoreCom::BTNTYPE_INC
                         : isVirInc ? SCBUICoreCom::BTNTYPE_VIRINC
                                    : SCBUICoreCom::BTNTYPE_CLL,
                         name, memberItemID};
    if (isByCnd) {
        const CTypedBtnCnd cnd = workspace.ReadCnd(args.GetValue(STR_WHERE, ""));
        return ChangeSpBtn(context, itemID,
                           [&](CBUIDataMngr& env) { return Create(env, workspace, made, {}, &cnd); });
    }
    const std::vector<DWORD> memberIDs = ReadMembers(context, args, memberItemID, 3);
    return ChangeSpBtn(context, itemID, [&](CBUIDataMngr& env) {
        const DWORD btnID = Create(env, workspace, made, memberIDs, nullptr);
        if (dispMember) {
            try {
                env.SetDispMemberBtnInfoOfIncBtn(itemID, btnID, true);
            } catch (const std::bad_alloc&) {
                env.DestroySpBtn(itemID, btnID);
                throw;
            }
        }
        return btnID;
    });
}

// ---- list

CAnswer RunList(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const std::size_t max = args.GetMax(context);
    const bool isOfAll = args.GetWords().empty();
    const std::vector<DWORD> itemIDs =
        isOfAll ? workspace.GetItemIDs() : std::vector<DWORD>{workspace.FindItem(args.GetWords()[0])};
    CAnswer spBtns = CAnswer::array();
    std::size_t count = 0;
    for (const DWORD itemID : itemIDs) {
        std::vector<DWORD> btnIDs;
        workspace.GetEnv().GetAllSpBtnIDListOfBtnClass(itemID, btnIDs, args.Has(STR_ALL));
        for (const DWORD btnID : btnIDs) {
            if (count++ < max)
                spBtns.push_back(SCSpBtnAnswer::Describe(workspace, itemID, btnID));
        }
    }
    CAnswer answer;
    answer["item"] = isOfAll ? CAnswer() : CAnswer(itemIDs.front());
    answer["special"] = std::move(spBtns);
    answer["count"] = count;
    return answer;
}

void ShowList(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    const std::vector<CAnswer> spBtns = answer.at("special");
    if (spBtns.empty())
        output.WriteLine("There is no special button; --all lists those too that are switched off.");
    else
        SCSpBtnAnswer::Show(context.workspace, spBtns, answer.at("item").is_null(), output);
    output.WriteMore(answer.at("count").get<std::size_t>() - spBtns.size());
}

// ---- members and their changes

CAnswer RunMembers(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const std::size_t max = args.GetMax(context);
    const SSpBtn spBtn = FindSpBtn(context, args);
    std::vector<DWORD> memberIDs = GetMembers(workspace, spBtn);
    if (args.Has(STR_DISPLAYED))
        workspace.GetEnv().GetDisplayedMemberBtnIDListOfSpBtn(spBtn.itemID, spBtn.btnID, memberIDs);
    CAnswer answer;
    answer["item"] = spBtn.itemID;
    answer["id"] = spBtn.btnID;
    const DWORD memberItemID = workspace.GetItemOfMembers(spBtn.itemID, spBtn.btnID);
    answer["memberItem"] = memberItemID;
    CBtnLister(workspace, memberItemID).DescribeInto(answer, memberIDs, max);
    return answer;
}

void ShowMembers(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    if (answer.at("buttons").empty() && answer.at("count") == 0)
        output.WriteLine("There is no member.");
    CBtnLister::Show(answer, output,
                     NSKZCore::VISINFO_SELCLLMEMBER | NSKZCore::VISINFO_CNDCLLMEMBER |
                         NSKZCore::VISINFO_INCMEMBER);
}

CAnswer SetMembers(SCommandContext& context, const SSpBtn& spBtn, const std::vector<DWORD>& memberIDs)
{
    return ChangeSpBtn(context, spBtn.itemID, [&](CBUIDataMngr& env) {
        switch (env.SetMemberBtnIDListOfSpBtn(spBtn.itemID, spBtn.btnID, memberIDs)) {
        case VCBtnClass::OPEMMBBTN_OK:
            return spBtn.btnID;
        case VCBtnClass::OPEMMBBTN_BADMEMBER:
            RefuseMembers(context.workspace, spBtn.itemID, spBtn.btnID,
                          context.workspace.GetItemOfMembers(spBtn.itemID, spBtn.btnID), memberIDs);
        default:
            throw ECCommandError("The engine did not take the members.");
        }
    });
}

// The button whose list of members is to be changed.
SSpBtn FindListSpBtn(const SCommandContext& context, const CCommandArgs& args)
{
    const SSpBtn spBtn = FindUserSpBtn(context, args);
    if (PicksByCnd(context.workspace, spBtn)) {
        throw ECCommandError("The button " + NameBtn(context.workspace, spBtn.itemID, spBtn.btnID) +
                             " picks its members by a condition; \"special where\" changes that.");
    }
    return spBtn;
}

CAnswer RunSetMembers(SCommandContext& context, const CCommandArgs& args)
{
    const SSpBtn spBtn = FindListSpBtn(context, args);
    const DWORD memberItemID = context.workspace.GetItemOfMembers(spBtn.itemID, spBtn.btnID);
    return SetMembers(context, spBtn, ReadMembers(context, args, memberItemID, PLACE_OF_MEMBERS));
}

// The list is worked out here and set as a whole: the engine tests for loops only then.
CAnswer RunAddMembers(SCommandContext& context, const CCommandArgs& args)
{
    const SSpBtn spBtn = FindListSpBtn(context, args);
    std::vector<DWORD> memberIDs = GetMembers(context.workspace, spBtn);
    std::set<DWORD> present(memberIDs.begin(), memberIDs.end());
    const DWORD memberItemID = context.workspace.GetItemOfMembers(spBtn.itemID, spBtn.btnID);
    for (const DWORD btnID : context.workspace.FindBtns(memberItemID, args.GetWordsFrom(PLACE_OF_MEMBERS))) {
        if (!present.insert(btnID).second) {
            throw ECCommandError("The button " + NameBtn(context.workspace, memberItemID, btnID) +
                                 " would be a member twice.");
        }
        memberIDs.push_back(btnID);
    }
    return SetMembers(context, spBtn, memberIDs);
}

CAnswer RunRemoveMembers(SCommandContext& context, const CCommandArgs& args)
{
    const SSpBtn spBtn = FindListSpBtn(context, args);
    std::vector<DWORD> memberIDs = GetMembers(context.workspace, spBtn);
    std::set<DWORD> present(memberIDs.begin(), memberIDs.end());
    const DWORD memberItemID = context.workspace.GetItemOfMembers(spBtn.itemID, spBtn.btnID);
    for (const DWORD btnID : context.workspace.FindBtns(memberItemID, args.GetWordsFrom(PLACE_OF_MEMBERS))) {
        if (present.erase(btnID) == 0) {
            throw ECCommandError("The button " + NameBtn(context.workspace, memberItemID, btnID) +
                                 " is no member of " + NameBtn(context.workspace, spBtn.itemID, spBtn.btnID) +
                                 ".");
        }
    }
    std::erase_if(memberIDs, [&present](DWORD memberID) { return present.count(memberID) == 0; });
    return SetMembers(context, spBtn, memberIDs);
}

// ---- where

CAnswer RunWhere(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const SSpBtn spBtn = FindSpBtn(context, args);
    const bool clears = args.Has(STR_CLEAR);
    const bool sets = args.GetWords().size() > 2;
    if (clears && sets)
        args.Refuse("A condition and --clear do not go together");
    if (!clears && !sets)
        return SCSpBtnAnswer::Describe(workspace, spBtn.itemID, spBtn.btnID);
    if (!PicksByCnd(workspace, spBtn)) {
        throw ECCommandError("The button " + NameBtn(workspace, spBtn.itemID, spBtn.btnID) +
                             " takes its members from a list; \"special set-members\" changes it.");
    }
    if (clears) {
        return ChangeSpBtn(context, spBtn.itemID, [&](CBUIDataMngr& env) {
            env.ClearMemberBtnCndOfSpBtn(spBtn.itemID, spBtn.btnID);
            return spBtn.btnID;
        });
    }
    const CTypedBtnCnd cnd = workspace.ReadCnd(args.GetWords()[2]);
    return ChangeSpBtn(context, spBtn.itemID, [&](CBUIDataMngr& env) {
        env.SetMemberBtnCndOfSpBtn(spBtn.itemID, spBtn.btnID, cnd);
        return spBtn.btnID;
    });
}

// ---- holders

CAnswer RunHolders(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const CBUIDataMngr& env = workspace.GetEnv();
    const DWORD itemID = workspace.FindItem(args.GetWords()[0]);
    const DWORD btnID = workspace.FindBtns(itemID, args.GetWordsFrom(1)).front();
    std::vector<DWORD> directIDs;
    std::vector<DWORD> rootIDs;
    std::set<SBtnClassIDAndBtnID> all;
    env.GetSpBtnIDListIncludingBtn(itemID, btnID, directIDs);
    env.GetRootSpBtnIDListIncludingBtn(itemID, btnID, rootIDs, args.Has(STR_ALL));
    env.GetSpBtnIDListThatTheSpecifiedBtnInfluences(itemID, btnID, all, false);
    // With --all a root may be one that is switched off, which holds nothing at present.
    for (const DWORD rootID : rootIDs)
        all.insert({itemID, rootID});
    CAnswer holders = CAnswer::array();
    for (const SBtnClassIDAndBtnID& holder : all) {
        CAnswer described = SCSpBtnAnswer::Describe(workspace, holder.btnClassID, holder.btnID);
        const auto isAmong = [&](const std::vector<DWORD>& ids) {
            return holder.btnClassID == itemID &&
                   std::find(ids.begin(), ids.end(), holder.btnID) != ids.end();
        };
        described["direct"] = isAmong(directIDs);
        described["root"] = isAmong(rootIDs);
        holders.push_back(std::move(described));
    }
    CAnswer answer;
    answer["item"] = itemID;
    answer["id"] = btnID;
    answer["direct"] = directIDs;
    answer["roots"] = rootIDs;
    answer["holders"] = std::move(holders);
    return answer;
}

void ShowHolders(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    if (answer.at("holders").empty()) {
        output.WriteLine("No special button holds it.");
        return;
    }
    std::vector<CTextOutput::SRow> rows;
    for (const CAnswer& holder : answer.at("holders")) {
        const bool isElsewhere = holder.at("item") != answer.at("item");
        rows.push_back(
            {{SCNameWord::WriteID(holder.at("id"), SCNameWord::MARK_OF_BTN), holder.at("text"),
              holder.at("kind"), isElsewhere ? context.workspace.GetItemName(holder.at("item")) : "",
              holder.at("direct").get<bool>() ? "directly" : "through others",
              holder.at("root").get<bool>() ? "outermost" : "",
              holder.at("effective").get<bool>() ? "" : "switched off"}});
    }
    output.WriteTable({{"id", true}, {"button"}, {"kind"}, {""}, {"holds it"}, {""}, {""}}, rows);
}

// ---- effective, disp-members

CAnswer RunEffective(SCommandContext& context, const CCommandArgs& args)
{
    const SSpBtn spBtn = FindSpBtn(context, args);
    if (args.GetWords().size() <= 2)
        return SCSpBtnAnswer::Describe(context.workspace, spBtn.itemID, spBtn.btnID);
    const bool effective = args.ReadSwitch(2);
    FindUserSpBtn(context, args);
    if (effective)
        context.workspace.GetItemOfMembers(spBtn.itemID,
                                           spBtn.btnID); // it cannot come back without that item
    return ChangeSpBtn(context, spBtn.itemID, [&](CBUIDataMngr& env) {
        env.SetEffectiveInfoOfSpBtn(spBtn.itemID, spBtn.btnID, effective);
        return spBtn.btnID;
    });
}

CAnswer RunDispMembers(SCommandContext& context, const CCommandArgs& args)
{
    const SSpBtn spBtn = FindSpBtn(context, args);
    if (!SCBUICoreCom::IsIncBtn(spBtn.btnID)) {
        throw ECCommandError("The button " + NameBtn(context.workspace, spBtn.itemID, spBtn.btnID) +
                             " is no inc button: it always hides its members.");
    }
    if (args.GetWords().size() <= 2)
        return SCSpBtnAnswer::Describe(context.workspace, spBtn.itemID, spBtn.btnID);
    const bool disp = args.ReadSwitch(2);
    return ChangeSpBtn(context, spBtn.itemID, [&](CBUIDataMngr& env) {
        env.SetDispMemberBtnInfoOfIncBtn(spBtn.itemID, spBtn.btnID, disp);
        return spBtn.btnID;
    });
}

// ---- destroy

CAnswer RunDestroy(SCommandContext& context, const CCommandArgs& args)
{
    const SSpBtn spBtn = FindUserSpBtn(context, args);
    const bool wasSelective = context.workspace.GetEnv().IsBtnSelectiveState();
    CAnswer answer;
    answer["result"] = SCEnvChange::Run(
        context, [&](CBUIDataMngr& env) { return env.DestroySpBtn(spBtn.itemID, spBtn.btnID); });
    answer["item"] = spBtn.itemID;
    answer["id"] = spBtn.btnID;
    answer["records"] = context.workspace.GetTargetRecs().size();
    answer["clearedSelection"] = wasSelective;
    return answer;
}

void ShowDestroy(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine(answer.at("result").get<bool>() ? "The button is gone." : "The engine answered false.");
    ShowClearedSelection(answer, output);
}

// ---- renew

CAnswer RunRenew(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const DWORD fldID = workspace.FindNumFld(args.GetWords()[0]);
    CAnswer answer;
    answer["result"] = SCEnvChange::Run(context, [fldID](CBUIDataMngr& env) {
        env.GetSumValueCacheMngrObjRef().ClearTotalValue(); // a ratio is that of the present display
        return env.ResetMemberBtnBasedOnTheCndOfAll(fldID);
    });
    CAnswer spBtns = CAnswer::array();
    for (const DWORD itemID : workspace.GetItemIDs()) {
        std::vector<DWORD> btnIDs;
        workspace.GetEnv().GetAllSpBtnIDListOfBtnClass(itemID, btnIDs, false);
        for (const DWORD btnID : btnIDs) {
            const NSKZCore::IBtnCnd* cnd = nullptr;
            if (workspace.GetEnv().GetMemberBtnCndOfSpBtn(itemID, btnID, cnd) ==
                    VCBtnClass::GETMMBBTNCND_OK &&
                cnd->HasNumDataItem(fldID))
                spBtns.push_back(SCSpBtnAnswer::Describe(workspace, itemID, btnID));
        }
    }
    answer["field"] = fldID;
    answer["special"] = std::move(spBtns);
    return answer;
}

void ShowRenew(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    if (!answer.at("result").get<bool>())
        output.WriteLine("The engine answered false.");
    const std::vector<CAnswer> spBtns = answer.at("special");
    if (spBtns.empty())
        output.WriteLine("No condition asks for it.");
    else
        SCSpBtnAnswer::Show(context.workspace, spBtns, true, output);
}

// ---- table

// A command of the group with what most of them have in common: SPECIAL is their second word, and they show
// the button as it is then.
SCommand MakeCommand(const std::string& form, const std::string& summary)
{
    SCommand command;
    command.form = "special " + form;
    command.nameWords = 2;
    command.summary = summary;
    command.minWords = command.maxWords = 2;
    command.show = ShowSpBtn;
    return command;
}

} // namespace

void SCSpecialCommands::AddTo(CCommandSet& commands)
{
    SCommand create =
        MakeCommand("create ITEM inc|cll|virinc NAME [BUTTON...|--none] [--of ITEM] [--where CONDITION] "
                    "[--disp-members]",
                    "makes a button that stands for other buttons");
    create.explanation =
        "inc: a button beside its members, which are hidden unless --disp-members keeps them displayed.\n"
        "cll: a button that its members fold into; they are always hidden behind it.\n"
        "virinc: a button of a virtual item that groups buttons of the item --of; they stay displayed "
        "there.\n"
        "The members are the listed buttons, special ones too, or none yet with --none. Those of a cll "
        "or virinc button can be picked by a condition instead; they are picked anew after every press in "
        "another item. A button with a condition is a member of none.\n"
        "A condition is made of parts such as \"amount sum top 3\" or \"amount average >= 100\", joined by "
        "and, or, not and parentheses: a number item; sum, count, average or ratio (of the sum to that of "
        "all displayed buttons); top N, bottom N, not top N, not bottom N, or =, !=, >, >=, <, <= and a "
        "number. A name with blanks stands in quotes.\n" +
        std::string(CLEARS_SELECTIONS);
    create.example = "special create shop cll Best --where \"amount sum top 2 and amount average >= 1\"";
    create.minWords = 3;
    create.maxWords = SCommand::ANY_NUMBER;
    create.options = {{STR_NONE}, {STR_OF, true}, {STR_WHERE, true}, {STR_DISPMEMBERS}};
    create.run = RunCreate;
    commands.Add(std::move(create));

    SCommand list = MakeCommand("list [ITEM] [--all] [--max N]", "the special buttons of an item, or of all");
    list.explanation =
        "With how their members are picked and how many there are. --all: switched off ones too.";
    list.example = "special list region --all";
    list.minWords = 0;
    list.maxWords = 1;
    list.options = {{STR_ALL}, {STR_MAX, true}};
    list.run = RunList;
    list.show = ShowList;
    commands.Add(std::move(list));

    SCommand members =
        MakeCommand("members ITEM SPECIAL [--displayed] [--max N]", "the members of a special button");
    members.explanation = "In the order in which they were given, or by rank for a single rank condition. "
                          "--displayed: those that nothing hides but being members, by identifier.";
    members.example = "special members region Best";
    members.options = {{STR_DISPLAYED}, {STR_MAX, true}};
    members.run = RunMembers;
    members.show = ShowMembers;
    commands.Add(std::move(members));

    SCommand setMembers =
        MakeCommand("set-members ITEM SPECIAL BUTTON...|--none", "gives a special button other members");
    setMembers.explanation =
        "For buttons that take them from a list. A button that would come to hold itself is refused. " +
        std::string(CLEARS_SELECTIONS);
    setMembers.example = "special set-members region Both East North";
    setMembers.maxWords = SCommand::ANY_NUMBER;
    setMembers.options = {{STR_NONE}};
    setMembers.run = RunSetMembers;
    commands.Add(setMembers);

    SCommand addMembers = setMembers;
    addMembers.form = "special add-members ITEM SPECIAL BUTTON...";
    addMembers.summary = "adds members to a special button, at the end";
    addMembers.example = "special add-members region Both East";
    addMembers.minWords = 3;
    addMembers.options.clear();
    addMembers.run = RunAddMembers;
    commands.Add(addMembers);

    SCommand removeMembers = std::move(addMembers);
    removeMembers.form = "special remove-members ITEM SPECIAL MEMBER...";
    removeMembers.summary = "takes members out of a special button";
    removeMembers.explanation = "For buttons that take them from a list. " + std::string(CLEARS_SELECTIONS);
    removeMembers.example = "special remove-members region Both West";
    removeMembers.run = RunRemoveMembers;
    commands.Add(std::move(removeMembers));

    SCommand where = MakeCommand("where ITEM SPECIAL [CONDITION] [--clear]",
                                 "shows, sets or drops the condition of a special button");
    where.explanation = "For cll buttons that were made with a condition; \"help special create\" tells what "
                        "one is. It is shown as it was typed. --clear drops it, and the members with it.\n"
                        "A change clears all selections.";
    where.example = "special where region Best \"amount sum top 1 or amount count > 100\"";
    where.maxWords = 3;
    where.options = {{STR_CLEAR}};
    where.run = RunWhere;
    commands.Add(std::move(where));

    SCommand holders = MakeCommand("holders ITEM BUTTON [--all]", "the special buttons that hold a button");
    holders.explanation = "Directly or through others; the outermost ones are held by none. --all: the "
                          "outermost ones that are switched off too.";
    holders.example = "special holders region West";
    holders.options = {{STR_ALL}};
    holders.run = RunHolders;
    holders.show = ShowHolders;
    commands.Add(std::move(holders));

    SCommand effective =
        MakeCommand("effective ITEM SPECIAL [on|off]", "shows or sets whether a special button takes part");
    effective.explanation =
        "Off, it leaves what holds it and lets its members go; on again, it comes back to both. Setting "
        "clears all selections.";
    effective.example = "special effective region Both off";
    effective.maxWords = 3;
    effective.run = RunEffective;
    commands.Add(effective);

    SCommand dispMembers = std::move(effective);
    dispMembers.form = "special disp-members ITEM SPECIAL [on|off]";
    dispMembers.summary = "shows or sets whether the members of an inc button stay displayed";
    dispMembers.explanation = "Members of another inc button that displays them stay in any case. Setting "
                              "clears all selections.";
    dispMembers.example = "special disp-members region Both on";
    dispMembers.run = RunDispMembers;
    commands.Add(std::move(dispMembers));

    SCommand destroy = MakeCommand("destroy ITEM SPECIAL", "removes a special button");
    destroy.explanation =
        "Its members are free again, and what holds it loses it. " + std::string(CLEARS_SELECTIONS);
    destroy.example = "special destroy region Both";
    destroy.run = RunDestroy;
    destroy.show = ShowDestroy;
    commands.Add(std::move(destroy));

    SCommand renew =
        MakeCommand("renew FIELD", "lets the conditions on a number item pick their members anew");
    renew.explanation = "Also in the items in which buttons are selected: elsewhere conditions follow every "
                        "press by themselves. It answers the buttons whose conditions ask for the item.";
    renew.example = "special renew amount";
    renew.minWords = renew.maxWords = 1;
    renew.run = RunRenew;
    renew.show = ShowRenew;
    commands.Add(std::move(renew));
}

} // namespace NSKZ::Host
