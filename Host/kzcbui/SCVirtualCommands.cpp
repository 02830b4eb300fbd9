#include "SCVirtualCommands.h"

#include "CCommandArgs.h"
#include "CCommandSet.h"
#include "CTextOutput.h"
#include "SCEnvChange.h"
#include "SCNameWord.h"
#include "SCNumberText.h"
#include "SCShownText.h"

#include <nlohmann/json.hpp>

#include <set>

namespace NSKZ::Host {

namespace {

using NSKZCore::CBUIDataMngr;
using NSKZCore::SCBUICoreCom;

constexpr const char* STR_COMMON = "--common";

// A name for a virtual item, in the engine's code page, that no item but the ignored one has.
std::string ReadNewName(const CWorkspace& workspace, const std::string& word, DWORD ignoredItemID)
{
    if (word.empty())
        throw ECCommandError("A virtual item needs a name.");
    const std::string name = workspace.ReadBtnText(word);
    if (workspace.GetEnv().ExistBtnClass(name.c_str(), static_cast<DWORD>(name.size()), ignoredItemID))
        throw ECCommandError("Another item has the name \"" + word + "\".");
    return name;
}

// The other items whose buttons its buttons group.
std::vector<DWORD> GetRefItems(const CWorkspace& workspace, DWORD itemID)
{
    std::vector<DWORD> btnIDs;
    workspace.GetEnv().GetAllSpBtnIDListOfBtnClass(itemID, btnIDs, true);
    std::set<DWORD> refItemIDs;
    for (const DWORD btnID : btnIDs) {
        DWORD refItemID = 0;
        if (workspace.GetEnv().GetRefBtnClassIDOfVirIncBtn(itemID, btnID, refItemID) &&
            workspace.IsItem(refItemID))
            refItemIDs.insert(refItemID);
    }
    return {refItemIDs.begin(), refItemIDs.end()};
}

CAnswer Describe(const CWorkspace& workspace, DWORD itemID)
{
    bool isEffective = false;
    DWORD btnCount = 0;
    workspace.GetEnv().GetEffectiveInfoOfVirBtnClass(itemID, isEffective);
    workspace.GetEnv().GetBtnCountOfBtnClass(itemID, btnCount);
    CAnswer item;
    item["item"] = itemID;
    item["name"] = workspace.GetItemName(itemID);
    item["common"] = SCBUICoreCom::IsCommonVirBtnClass(itemID);
    item["effective"] = isEffective;
    item["buttons"] = btnCount;
    item["refItems"] = GetRefItems(workspace, itemID);
    return item;
}

void ShowItems(const CWorkspace& workspace, const std::vector<CAnswer>& items, CTextOutput& output)
{
    std::vector<CTextOutput::SRow> rows;
    for (const CAnswer& item : items) {
        std::string refNames;
        for (const DWORD refItemID : item.at("refItems").get<std::vector<DWORD>>())
            refNames += (refNames.empty() ? "" : ", ") + workspace.GetItemName(refItemID);
        const bool isEffective = item.at("effective");
        rows.push_back(
            {{SCNameWord::WriteID(item.at("item"), SCNameWord::MARK_OF_ITEM), item.at("name"),
              item.at("common").get<bool>() ? "common" : "own", SCNumberText::OfCount(item.at("buttons")),
              refNames, isEffective ? "" : "switched off"},
             isEffective ? CTextOutput::STYLE_PLAIN : CTextOutput::STYLE_HIDDEN});
    }
    output.WriteTable({{"id", true}, {"item"}, {""}, {"buttons", true}, {"groups buttons of"}, {""}}, rows);
}

void ShowItem(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    ShowItems(context.workspace, {answer}, output);
    if (answer.value("clearedSelection", false))
        output.WriteLine("All selections were cleared.");
}

CAnswer RunCreate(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const std::string name = ReadNewName(workspace, args.GetWords()[0], SCBUICoreCom::BTNCLS_ID_UNSETTING);
    DWORD itemID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
    const auto result = SCEnvChange::Run(context, [&](CBUIDataMngr& env) {
        return env.CreateVirBtnClass(name.c_str(), args.Has(STR_COMMON), itemID);
    });
    if (result != CBUIDataMngr::CREATEVIR_OK)
        throw ECCommandError("The identifiers for virtual items of this kind are used up.");
    return Describe(workspace, itemID);
}

CAnswer RunList(SCommandContext& context, const CCommandArgs&)
{
    CAnswer items = CAnswer::array();
    for (const DWORD itemID : context.workspace.GetItemIDs()) {
        if (SCBUICoreCom::IsVirBtnClass(itemID))
            items.push_back(Describe(context.workspace, itemID));
    }
    CAnswer answer;
    answer["virtual"] = std::move(items);
    return answer;
}

void ShowList(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    const std::vector<CAnswer> items = answer.at("virtual");
    if (items.empty())
        output.WriteLine("There is no virtual item; \"virtual create\" makes one.");
    else
        ShowItems(context.workspace, items, output);
}

CAnswer RunRename(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const DWORD itemID = workspace.FindVirItem(args.GetWords()[0]);
    const std::string name = ReadNewName(workspace, args.GetWords()[1], itemID);
    SCEnvChange::Run(context,
                     [&](CBUIDataMngr& env) { return env.SetNameOfVirBtnClass(itemID, name.c_str()); });
    return Describe(workspace, itemID);
}

CAnswer RunEffective(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const DWORD itemID = workspace.FindVirItem(args.GetWords()[0]);
    if (args.GetWords().size() == 1)
        return Describe(workspace, itemID);
    const bool effective = args.ReadSwitch(1);
    const bool wasSelective = workspace.GetEnv().IsBtnSelectiveState();
    SCEnvChange::Run(context,
                     [&](CBUIDataMngr& env) { return env.SetEffectiveInfoOfVirBtnClass(itemID, effective); });
    CAnswer answer = Describe(workspace, itemID);
    answer["records"] = workspace.GetTargetRecs().size();
    answer["clearedSelection"] = wasSelective;
    return answer;
}

CAnswer RunDestroy(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const DWORD itemID = workspace.FindVirItem(args.GetWords()[0]);
    const bool wasSelective = workspace.GetEnv().IsBtnSelectiveState();
    CAnswer answer;
    answer["result"] =
        SCEnvChange::Run(context, [itemID](CBUIDataMngr& env) { return env.DestroyVirBtnClass(itemID); });
    answer["item"] = itemID;
    answer["records"] = workspace.GetTargetRecs().size();
    answer["clearedSelection"] = wasSelective;
    return answer;
}

void ShowDestroy(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine(answer.at("result").get<bool>() ? "The item is gone." : "The engine answered false.");
    if (answer.at("clearedSelection").get<bool>())
        output.WriteLine("All selections were cleared.");
}

// A command of the group with what most of them have in common.
SCommand MakeCommand(const std::string& form, const std::string& summary)
{
    SCommand command;
    command.form = "virtual " + form;
    command.nameWords = 2;
    command.summary = summary;
    command.minWords = command.maxWords = 1;
    command.show = ShowItem;
    return command;
}

} // namespace

void SCVirtualCommands::AddTo(CCommandSet& commands)
{
    SCommand create = MakeCommand("create NAME [--common]", "makes an item that stands on no column");
    create.explanation =
        "Its buttons group buttons of other items: \"special create ITEM virinc NAME --of ITEM BUTTON...\" "
        "makes one. It is pressed, listed and summed like any other item.\n"
        "--common: it is not a user's own, and \"reset\" leaves it. Its buttons may not group those of "
        "items that are a user's own.";
    create.example = "virtual create \"Sales areas\"";
    create.options = {{STR_COMMON}};
    create.run = RunCreate;
    commands.Add(std::move(create));

    SCommand list = MakeCommand("list", "the virtual items, with the items whose buttons they group");
    list.explanation = "Those too that are switched off. \"special list ITEM\" lists the buttons of one.";
    list.example = "virtual list";
    list.minWords = list.maxWords = 0;
    list.run = RunList;
    list.show = ShowList;
    commands.Add(std::move(list));

    SCommand rename = MakeCommand("rename ITEM NAME", "gives a virtual item another name");
    rename.explanation = "No other item may have it.";
    rename.example = "virtual rename \"Sales areas\" Areas";
    rename.minWords = rename.maxWords = 2;
    rename.run = RunRename;
    commands.Add(std::move(rename));

    SCommand effective =
        MakeCommand("effective ITEM [on|off]", "shows or sets whether a virtual item takes part");
    effective.explanation =
        "Off, nothing of it can be pressed, and buttons of other virtual items that group "
        "its buttons are off with it. Setting clears all selections.";
    effective.example = "virtual effective Areas off";
    effective.maxWords = 2;
    effective.run = RunEffective;
    commands.Add(std::move(effective));

    SCommand destroy = MakeCommand("destroy ITEM", "removes a virtual item with its buttons");
    destroy.explanation =
        "Buttons of other virtual items that group its buttons lose their members and stay switched off. "
        "This clears all selections.";
    destroy.example = "virtual destroy Areas";
    destroy.run = RunDestroy;
    destroy.show = ShowDestroy;
    commands.Add(std::move(destroy));
}

} // namespace NSKZ::Host
