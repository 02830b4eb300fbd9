#include "SCSelectionCommands.h"

#include "CCommandArgs.h"
#include "CCommandSet.h"
#include "CTextOutput.h"
#include "SCEnvChange.h"
#include "SCNameWord.h"
#include "SCNumberText.h"
#include "SCShownText.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace NSKZ::Host {

namespace {

using NSKZCore::CBUIDataMngr;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SSelectBtnIDList;

constexpr const char* STR_HIDDEN = "--hidden";
constexpr std::size_t MAX_TEXTS_IN_LINE = 20;

// In the order of the enumeration, which begins with 1.
const std::vector<std::string> NAMES_OF_MODES = {"none", "or", "and", "difference", "narrowing"};
static_assert(CBUIDataMngr::RELATIONMODE_NONE == 1 && CBUIDataMngr::RELATIONMODE_OR == 2 &&
              CBUIDataMngr::RELATIONMODE_AND == 3 && CBUIDataMngr::RELATIONMODE_DIFFERENCE == 4 &&
              CBUIDataMngr::RELATIONMODE_NARROWING == 5);

// Lets `change` change the selection, and answers what the engine said and how many records it stands on now.
template <class TChange>
CAnswer ChangeSelection(SCommandContext& context, const TChange& change)
{
    CAnswer answer;
    answer["result"] = SCEnvChange::Run(context, change);
    answer["records"] = context.workspace.GetTargetRecs().size();
    return answer;
}

void ShowSelectionChange(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    if (!answer.at("result").get<bool>())
        output.WriteLine("The engine answered false.");
    if (answer.contains("hidden")) {
        output.WriteLine(SCNumberText::OfThings(answer.at("hidden"), "button") +
                         " of these had been hidden and took no part; --hidden lets them.");
    }
    output.WriteLine(SCNumberText::OfCount(answer.at("records")) + " of " +
                     SCNumberText::OfThings(context.workspace.GetRecCount(), "record"));
}

// ---- press, release

CAnswer RunPressOrRelease(SCommandContext& context, const CCommandArgs& args, bool select)
{
    const CWorkspace& workspace = context.workspace;
    const DWORD itemID = workspace.FindItem(args.GetWords()[0]);
    const std::vector<DWORD> btnIDs = workspace.FindBtns(itemID, args.GetWordsFrom(1));
    const bool includesHidden = args.Has(STR_HIDDEN);
    const auto hiddenCount = std::count_if(btnIDs.begin(), btnIDs.end(), [&](DWORD btnID) {
        bool isVisible = false;
        workspace.GetEnv().GetVisibleStateOfBtn(itemID, btnID, isVisible);
        return !isVisible;
    });
    CAnswer answer = ChangeSelection(
        context, [&](CBUIDataMngr& env) { return env.SelectBtns(itemID, btnIDs, select, includesHidden); });
    // In the other modes hidden buttons take part, or are not hidden any more by the time of the press.
    if (select && hiddenCount != 0 && !includesHidden &&
        workspace.GetEnv().GetRelationMode() == CBUIDataMngr::RELATIONMODE_NARROWING)
        answer["hidden"] = hiddenCount;
    return answer;
}

CAnswer RunPressAll(SCommandContext& context, const CCommandArgs& args)
{
    const DWORD itemID = context.workspace.FindItem(args.GetWords()[0]);
    return ChangeSelection(context,
                           [itemID](CBUIDataMngr& env) { return env.SelectAllBtnsOfBtnClass(itemID, true); });
}

CAnswer RunReleaseAll(SCommandContext& context, const CCommandArgs& args)
{
    const DWORD itemID = context.workspace.FindItem(args.GetWords()[0]);
    return ChangeSelection(context, [itemID](CBUIDataMngr& env) {
        std::vector<DWORD> btnIDs;
        env.GetSelBtnIDListOfBtnClass(itemID, btnIDs);
        // A difference is undone from its target.
        DWORD diffItemID = 0;
        DWORD standardBtnID = 0;
        DWORD targetBtnID = 0;
        if (env.GetSelBtnsInfoForDiffCnd(diffItemID, standardBtnID, targetBtnID) && diffItemID == itemID) {
            btnIDs.clear();
            for (const DWORD btnID : {targetBtnID, standardBtnID}) {
                if (btnID != SCBUICoreCom::BTN_ID_UNSETTING)
                    btnIDs.push_back(btnID);
            }
        }
        return btnIDs.empty() || env.SelectBtns(itemID, btnIDs, false, true);
    });
}

CAnswer RunClear(SCommandContext& context, const CCommandArgs&)
{
    return ChangeSelection(context, [](CBUIDataMngr& env) {
        env.ClearAllBtnSelections(true);
        return true;
    });
}

CAnswer RunReset(SCommandContext& context, const CCommandArgs&)
{
    return ChangeSelection(context, [](CBUIDataMngr& env) {
        env.ClearOfFixedSpec();
        return true;
    });
}

// ---- mode, multi

CAnswer GetModeAndMulti(const CWorkspace& workspace)
{
    CAnswer answer;
    answer["mode"] = NAMES_OF_MODES.at(workspace.GetEnv().GetRelationMode() - 1);
    answer["multi"] = workspace.GetEnv().GetMultiSelectionInfo();
    return answer;
}

void ShowModeAndMulti(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine("mode " + answer.at("mode").get<std::string>() + ", multiple selection " +
                     (answer.at("multi").get<bool>() ? "on" : "off"));
}

CAnswer RunMode(SCommandContext& context, const CCommandArgs& args)
{
    if (!args.GetWords().empty()) {
        const std::string& name = args.GetWords()[0];
        const auto found = std::find(NAMES_OF_MODES.begin(), NAMES_OF_MODES.end(), name);
        if (found == NAMES_OF_MODES.end())
            args.Refuse("There is no mode \"" + name + "\"");
        const auto mode = static_cast<CBUIDataMngr::ERelationMode>(found - NAMES_OF_MODES.begin() + 1);
        context.workspace.GetEnv().SetRelationMode(mode);
    }
    return GetModeAndMulti(context.workspace);
}

CAnswer RunMulti(SCommandContext& context, const CCommandArgs& args)
{
    if (!args.GetWords().empty())
        context.workspace.GetEnv().SetMultiSelectionInfo(args.ReadSwitch(0));
    return GetModeAndMulti(context.workspace);
}

// ---- selection, restore

CAnswer RunSelection(SCommandContext& context, const CCommandArgs&)
{
    std::vector<SSelectBtnIDList> selectInfo;
    context.workspace.GetEnv().GetAllBtnSelectionInfo(selectInfo);
    CAnswer selection = CAnswer::array();
    for (const SSelectBtnIDList& ofItem : selectInfo) {
        CAnswer element;
        element["item"] = ofItem.btnClassID;
        element["buttons"] = ofItem.btnIDList;
        element["newButtons"] = ofItem.newBtnMadeSelState;
        selection.push_back(std::move(element));
    }
    CAnswer answer;
    answer["selection"] = std::move(selection);
    return answer;
}

void ShowSelection(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    const CWorkspace& workspace = context.workspace;
    const CAnswer& selection = answer.at("selection");
    if (selection.empty())
        output.WriteLine("Nothing is selected.");
    for (const CAnswer& element : selection) {
        const DWORD itemID = element.at("item");
        const CAnswer& btnIDs = element.at("buttons");
        std::string line = SCShownText::Escape(workspace.GetItemName(itemID)) + ":";
        for (std::size_t i = 0; i < btnIDs.size() && i < MAX_TEXTS_IN_LINE; ++i) {
            line += i == 0 ? " " : ", ";
            line += SCShownText::Escape(workspace.GetBtnText(itemID, btnIDs[i]));
        }
        if (btnIDs.size() > MAX_TEXTS_IN_LINE)
            line += ", ... and " + SCNumberText::OfCount(btnIDs.size() - MAX_TEXTS_IN_LINE) + " more";
        output.WriteLine(line);
    }
}

DWORD ReadIDOfSelection(const nlohmann::json& value)
{
    if (!value.is_number_unsigned() || value.get<unsigned long long>() > SCBUICoreCom::BUIDATAMNGR_ID_END)
        throw ECCommandError("Identifiers of a selection are whole numbers, not " + value.dump() + ".");
    return value.get<DWORD>();
}

// The text as JSON; a discarded value if it is none, or is nested deeper than a selection is.
nlohmann::json ParseSelection(const std::string& text)
{
    constexpr int MAX_DEPTH = 3; // of the list of buttons, in an element of the list of an answer
    bool isTooDeep = false;
    nlohmann::json read = nlohmann::json::parse(
        text,
        [&isTooDeep](int depth, nlohmann::json::parse_event_t event, const nlohmann::json&) {
            const bool isNested = event == nlohmann::json::parse_event_t::object_start ||
                                  event == nlohmann::json::parse_event_t::array_start;
            isTooDeep = isTooDeep || (isNested && depth > MAX_DEPTH);
            return !isTooDeep;
        },
        false);
    return isTooDeep ? nlohmann::json(nlohmann::json::value_t::discarded) : read;
}

std::vector<SSelectBtnIDList> ReadSelection(const CWorkspace& workspace, const std::string& text)
{
    nlohmann::json read = ParseSelection(text);
    if (read.is_object() && read.contains("selection"))
        read = nlohmann::json(read["selection"]);
    const auto isElement = [](const nlohmann::json& element) {
        return element.is_object() && element.contains("item") && element.contains("buttons") &&
               element["buttons"].is_array() &&
               (!element.contains("newButtons") || element["newButtons"].is_boolean());
    };
    if (!read.is_array() || !std::all_of(read.begin(), read.end(), isElement)) {
        throw ECCommandError("A selection as \"selection\" answers it with --json is expected, as "
                             "'[{\"item\":1,\"buttons\":[2,3]}]'.");
    }
    std::vector<SSelectBtnIDList> selectInfo;
    for (const nlohmann::json& element : read) {
        SSelectBtnIDList ofItem;
        ofItem.btnClassID = workspace.FindItem(
            SCNameWord::WriteID(ReadIDOfSelection(element["item"]), SCNameWord::MARK_OF_ITEM));
        std::vector<std::string> words;
        for (const nlohmann::json& btnID : element["buttons"])
            words.push_back(SCNameWord::WriteID(ReadIDOfSelection(btnID), SCNameWord::MARK_OF_BTN));
        ofItem.btnIDList = workspace.FindBtns(ofItem.btnClassID, words);
        ofItem.newBtnMadeSelState = element.value("newButtons", false);
        selectInfo.push_back(std::move(ofItem));
    }
    return selectInfo;
}

CAnswer RunRestore(SCommandContext& context, const CCommandArgs& args)
{
    const std::vector<SSelectBtnIDList> selectInfo = ReadSelection(context.workspace, args.GetWords()[0]);
    return ChangeSelection(
        context, [&](CBUIDataMngr& env) { return env.SelectBtns(selectInfo, args.Has(STR_HIDDEN)); });
}

CAnswer RunNewBtns(SCommandContext& context, const CCommandArgs& args)
{
    CBUIDataMngr& env = context.workspace.GetEnv();
    const DWORD itemID = context.workspace.FindItem(args.GetWords()[0]);
    if (args.GetWords().size() > 1)
        env.SetNewBtnMadeSelStateOfBtnClass(itemID, args.ReadSwitch(1));
    bool state = false;
    env.GetNewBtnMadeSelStateOfBtnClass(itemID, state);
    CAnswer answer;
    answer["item"] = itemID;
    answer["newButtons"] = state;
    return answer;
}

void ShowNewBtns(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine(
        "New buttons of " + SCShownText::Escape(context.workspace.GetItemName(answer.at("item"))) +
        (answer.at("newButtons").get<bool>() ? " come up selected." : " do not come up selected."));
}

// ---- hierarchy, difference

CAnswer RunHierarchy(SCommandContext& context, const CCommandArgs&)
{
    const CBUIDataMngr& env = context.workspace.GetEnv();
    CAnswer levels = CAnswer::array();
    for (DWORD i = 0; i < env.GetHierCount(); ++i) {
        DWORD itemID = 0;
        DWORD recCount = 0;
        env.GetHierInfo(i, itemID, recCount);
        CAnswer level;
        level["item"] = itemID;
        level["records"] = recCount;
        levels.push_back(std::move(level));
    }
    CAnswer answer;
    answer["levels"] = std::move(levels);
    return answer;
}

void ShowHierarchy(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    const CWorkspace& workspace = context.workspace;
    if (answer.at("levels").empty()) {
        output.WriteLine("There is no level.");
        return;
    }
    const bool haveRecs = workspace.GetEnv().GetRelationMode() != CBUIDataMngr::RELATIONMODE_AND;
    std::vector<CTextOutput::SRow> rows;
    for (const CAnswer& level : answer.at("levels")) {
        rows.push_back({{std::to_string(rows.size() + 1), workspace.GetItemName(level.at("item")),
                         haveRecs ? SCNumberText::OfCount(level.at("records")) : "-"}});
    }
    output.WriteTable({{"level", true}, {"item"}, {"records", true}}, rows);
}

CAnswer RunDifference(SCommandContext& context, const CCommandArgs&)
{
    DWORD itemID = 0;
    DWORD standardBtnID = 0;
    DWORD targetBtnID = 0;
    if (!context.workspace.GetEnv().GetSelBtnsInfoForDiffCnd(itemID, standardBtnID, targetBtnID))
        throw ECCommandError("There is a pair in mode difference only; \"mode difference\" sets it.");
    const auto idOrNull = [](DWORD id) { return id != 0 ? CAnswer(id) : CAnswer(); };
    CAnswer answer;
    answer["item"] = idOrNull(itemID);
    answer["standard"] = idOrNull(standardBtnID);
    answer["target"] = idOrNull(targetBtnID);
    return answer;
}

void ShowDifference(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    if (answer.at("item").is_null()) {
        output.WriteLine("No pair is chosen: the first press chooses the standard, the second the target.");
        return;
    }
    const DWORD itemID = answer.at("item");
    const auto textOf = [&](const char* key) {
        return answer.at(key).is_null() ? std::string("-")
                                        : context.workspace.GetBtnText(itemID, answer.at(key));
    };
    output.WriteTable({{""}, CTextOutput::SColumn::Uncut("")},
                      {{{"item", context.workspace.GetItemName(itemID)}},
                       {{"standard", textOf("standard")}},
                       {{"target", textOf("target")}}});
}

// ---- selection of items

CAnswer GetSelectedItems(const CWorkspace& workspace)
{
    std::vector<DWORD> itemIDs;
    workspace.GetEnv().GetAllBtnClassSelectionInfo(itemIDs);
    std::erase_if(itemIDs, [&workspace](DWORD itemID) { return !workspace.IsItem(itemID); });
    CAnswer answer;
    answer["items"] = itemIDs;
    return answer;
}

CAnswer RunSelectItem(SCommandContext& context, const CCommandArgs& args, bool select)
{
    const DWORD itemID = context.workspace.FindItem(args.GetWords()[0]);
    CAnswer answer;
    answer["result"] = context.workspace.GetEnv().SelectTheBtnClass(itemID, select);
    answer.update(GetSelectedItems(context.workspace));
    return answer;
}

CAnswer RunSelectedItems(SCommandContext& context, const CCommandArgs&)
{
    return GetSelectedItems(context.workspace);
}

CAnswer RunClearItems(SCommandContext& context, const CCommandArgs&)
{
    context.workspace.GetEnv().ClearAllBtnClassSelections();
    return GetSelectedItems(context.workspace);
}

void ShowSelectedItems(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    std::string line;
    for (const DWORD itemID : answer.at("items"))
        line += (line.empty() ? "" : ", ") + SCShownText::Escape(context.workspace.GetItemName(itemID));
    output.WriteLine(line.empty() ? "No item is selected." : line);
}

} // namespace

void SCSelectionCommands::AddTo(CCommandSet& commands)
{
    SCommand press;
    press.form = "press ITEM BUTTON... [--hidden]";
    press.summary = "selects buttons of an item in one step";
    press.explanation =
        "The buttons of the other items follow, as the mode tells. Without multiple selection a press "
        "replaces what is selected in the item.\n"
        "Hidden buttons become selected but take part only with --hidden.";
    press.example = "press region East West";
    press.minWords = 2;
    press.maxWords = SCommand::ANY_NUMBER;
    press.options = {{STR_HIDDEN}};
    press.run = [](SCommandContext& context, const CCommandArgs& args) {
        return RunPressOrRelease(context, args, true);
    };
    press.show = ShowSelectionChange;

    SCommand release = press;
    release.form = "release ITEM BUTTON... [--hidden]";
    release.summary = "deselects buttons of an item in one step";
    release.explanation =
        "The levels behind the item's own go. In mode difference the target may be released alone; the "
        "standard takes the target with it.";
    release.example = "release region West";
    release.run = [](SCommandContext& context, const CCommandArgs& args) {
        return RunPressOrRelease(context, args, false);
    };
    commands.Add(std::move(press));
    commands.Add(std::move(release));

    SCommand pressAll;
    pressAll.form = "press-all ITEM";
    pressAll.summary = "selects the whole item";
    pressAll.explanation =
        "Its displayed buttons take part, and the hidden ones become selected with them. The engine "
        "answers false in mode difference.";
    pressAll.example = "press-all region";
    pressAll.minWords = pressAll.maxWords = 1;
    pressAll.run = RunPressAll;
    pressAll.show = ShowSelectionChange;
    commands.Add(std::move(pressAll));

    SCommand releaseAll;
    releaseAll.form = "release-all ITEM";
    releaseAll.summary = "deselects every selected button of an item, hidden ones too";
    releaseAll.explanation =
        "In mode difference the target goes first. Nothing happens where nothing is selected.";
    releaseAll.example = "release-all region";
    releaseAll.minWords = releaseAll.maxWords = 1;
    releaseAll.run = RunReleaseAll;
    releaseAll.show = ShowSelectionChange;
    commands.Add(std::move(releaseAll));

    SCommand clear;
    clear.form = "clear";
    clear.summary = "clears all selections of buttons";
    clear.explanation = "The limitation, the mode and the selection of items stay.";
    clear.example = "clear";
    clear.run = RunClear;
    clear.show = ShowSelectionChange;
    commands.Add(std::move(clear));

    SCommand reset;
    reset.form = "reset";
    reset.summary = "drops the selections, the limitation and the special buttons";
    reset.explanation = "A hidden empty value is displayed again. What follows from the table stays, and so "
                        "do aliases, the mode and multiple selection.";
    reset.example = "reset";
    reset.run = RunReset;
    reset.show = ShowSelectionChange;
    commands.Add(std::move(reset));

    SCommand mode;
    mode.form = "mode [none|or|and|difference|narrowing]";
    mode.summary = "shows or sets how the selected buttons decide on the others";
    mode.explanation = "none: not at all.\n"
                       "or: the buttons of the records of any selected button, one item at a time.\n"
                       "and: the buttons that share a record with every selected one.\n"
                       "difference: the buttons that go with a first button, the standard, but not with a "
                       "second, the target.\n"
                       "narrowing: items narrow each other in the order in which they were pressed.\n"
                       "A change of the mode clears all selections.";
    mode.example = "mode and";
    mode.maxWords = 1;
    mode.run = RunMode;
    mode.show = ShowModeAndMulti;
    commands.Add(std::move(mode));

    SCommand multi;
    multi.form = "multi [on|off]";
    multi.summary = "shows or sets whether a press adds to what is selected in the item";
    multi.explanation =
        "Off, as at first, a press replaces it. Nothing that is selected changes by this command.";
    multi.example = "multi on";
    multi.maxWords = 1;
    multi.run = RunMulti;
    multi.show = ShowModeAndMulti;
    commands.Add(std::move(multi));

    SCommand selection;
    selection.form = "selection";
    selection.summary = "the whole selection in order";
    selection.explanation =
        "In mode narrowing by level, in mode difference the standard before the target, else by "
        "item.";
    selection.example = "selection";
    selection.run = RunSelection;
    selection.show = ShowSelection;
    commands.Add(std::move(selection));

    SCommand restore;
    restore.form = "restore SELECTION [--hidden]";
    restore.summary = "restores a whole selection, as \"selection\" answers it with --json";
    restore.explanation =
        "The present selection goes. If the engine answers false nothing is selected. Hidden buttons "
        "take part only with --hidden.";
    restore.example = "restore '[{\"item\":1,\"buttons\":[2,3]}]'";
    restore.minWords = restore.maxWords = 1;
    restore.options = {{STR_HIDDEN}};
    restore.run = RunRestore;
    restore.show = ShowSelectionChange;
    commands.Add(std::move(restore));

    SCommand newBtns;
    newBtns.form = "new-buttons ITEM [on|off]";
    newBtns.summary = "shows or sets whether buttons that come into being later are selected";
    newBtns.explanation = "Selecting a whole item sets it, clearing its selection clears it.";
    newBtns.example = "new-buttons region on";
    newBtns.minWords = 1;
    newBtns.maxWords = 2;
    newBtns.run = RunNewBtns;
    newBtns.show = ShowNewBtns;
    commands.Add(std::move(newBtns));

    SCommand hierarchy;
    hierarchy.form = "hierarchy";
    hierarchy.summary = "the levels that the presses have made";
    hierarchy.explanation =
        "Each level is an item and the records that remain after its buttons were pressed on top "
        "of the levels before. In mode and a level holds no records of its own.";
    hierarchy.example = "hierarchy";
    hierarchy.run = RunHierarchy;
    hierarchy.show = ShowHierarchy;
    commands.Add(std::move(hierarchy));

    SCommand difference;
    difference.form = "difference";
    difference.summary = "the standard and the target of mode difference";
    difference.explanation = "What is not chosen yet is null with --json.";
    difference.example = "difference";
    difference.run = RunDifference;
    difference.show = ShowDifference;
    commands.Add(std::move(difference));

    SCommand selectItem;
    selectItem.form = "select-item ITEM";
    selectItem.summary = "selects an item as such, independently of its buttons";
    selectItem.explanation = "The selected items are listed in the order in which they were selected.";
    selectItem.example = "select-item region";
    selectItem.minWords = selectItem.maxWords = 1;
    selectItem.run = [](SCommandContext& context, const CCommandArgs& args) {
        return RunSelectItem(context, args, true);
    };
    selectItem.show = ShowSelectedItems;

    SCommand unselectItem = selectItem;
    unselectItem.form = "unselect-item ITEM";
    unselectItem.summary = "takes an item out of the selected ones";
    unselectItem.explanation = "Nothing changes if it is not among them.";
    unselectItem.example = "unselect-item region";
    unselectItem.run = [](SCommandContext& context, const CCommandArgs& args) {
        return RunSelectItem(context, args, false);
    };
    commands.Add(std::move(selectItem));
    commands.Add(std::move(unselectItem));

    SCommand selectedItems;
    selectedItems.form = "selected-items";
    selectedItems.summary = "the selected items in the order in which they were selected";
    selectedItems.explanation = "See select-item.";
    selectedItems.example = "selected-items";
    selectedItems.run = RunSelectedItems;
    selectedItems.show = ShowSelectedItems;
    commands.Add(std::move(selectedItems));

    SCommand clearItems;
    clearItems.form = "clear-items";
    clearItems.summary = "takes all items out of the selected ones";
    clearItems.explanation = "Selected buttons stay selected; \"clear\" is for those.";
    clearItems.example = "clear-items";
    clearItems.run = RunClearItems;
    clearItems.show = ShowSelectedItems;
    commands.Add(std::move(clearItems));
}

} // namespace NSKZ::Host
