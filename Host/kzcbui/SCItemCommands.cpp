#include "SCItemCommands.h"

#include "CBtnLister.h"
#include "CCommandArgs.h"
#include "CCommandSet.h"
#include "CTextOutput.h"
#include "SCBtnReason.h"
#include "SCEnvChange.h"
#include "SCHostText.h"
#include "SCNameWord.h"
#include "SCNumberText.h"
#include "SCShownText.h"
#include "SCSpBtnAnswer.h"
#include "VCBtnClass.h"

#include <nlohmann/json.hpp>

namespace NSKZ::Host {

namespace {

using NSKZCore::CBUIDataMngr;
using NSKZCore::SCBUICoreCom;
using NSKZCore::VCBtnClass;

const char* GetNameOfType(SCBUICoreCom::EBtnClassType type)
{
    switch (type) {
    case SCBUICoreCom::BTNCLSTYPE_NORMAL:
        return "text";
    case SCBUICoreCom::BTNCLSTYPE_NUM:
        return "number";
    case SCBUICoreCom::BTNCLSTYPE_DATE:
        return "date";
    case SCBUICoreCom::BTNCLSTYPE_TIME:
        return "time";
    case SCBUICoreCom::BTNCLSTYPE_VIR:
        return "virtual";
    }
    return "unknown";
}

// ---- items

CAnswer RunItems(SCommandContext& context, const CCommandArgs&)
{
    const CWorkspace& workspace = context.workspace;
    const CBUIDataMngr& env = workspace.GetEnv();
    CAnswer items = CAnswer::array();
    for (const DWORD itemID : workspace.GetItemIDs()) {
        SCBUICoreCom::EBtnClassType type = SCBUICoreCom::BTNCLSTYPE_NORMAL;
        DWORD btnCount = 0;
        DWORD dispBtnCount = 0;
        DWORD selBtnCount = 0;
        bool isEffective = false;
        env.GetTypeOfBtnClass(itemID, type);
        env.GetBtnCountOfBtnClass(itemID, btnCount);
        env.GetDispBtnCountOfBtnClass(itemID, dispBtnCount);
        env.GetSelBtnCountOfBtnClass(itemID, selBtnCount);
        env.GetEffectiveInfoOfBtnClass(itemID, isEffective);
        CAnswer item;
        item["id"] = itemID;
        item["name"] = workspace.GetItemName(itemID);
        item["type"] = GetNameOfType(type);
        item["buttons"] = btnCount;
        item["displayed"] = dispBtnCount;
        item["selected"] = selBtnCount;
        item["effective"] = isEffective;
        items.push_back(std::move(item));
    }
    CAnswer answer;
    answer["items"] = std::move(items);
    return answer;
}

void ShowItems(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    std::vector<CTextOutput::SRow> rows;
    for (const CAnswer& item : answer.at("items")) {
        const bool isEffective = item.at("effective");
        const std::size_t selBtnCount = item.at("selected");
        rows.push_back(
            {{SCNameWord::WriteID(item.at("id"), SCNameWord::MARK_OF_ITEM), item.at("name"), item.at("type"),
              SCNumberText::OfCount(item.at("buttons")), SCNumberText::OfCount(item.at("displayed")),
              selBtnCount == 0 ? "" : SCNumberText::OfCount(selBtnCount), isEffective ? "" : "switched off"},
             !isEffective       ? CTextOutput::STYLE_HIDDEN
             : selBtnCount != 0 ? CTextOutput::STYLE_SELECTED
                                : CTextOutput::STYLE_PLAIN});
    }
    output.WriteTable(
        {{"id", true}, {"item"}, {"type"}, {"buttons", true}, {"displayed", true}, {"selected", true}, {""}},
        rows);
}

// ---- buttons

CAnswer RunBtns(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const std::string order = args.GetChoice("--order", {"app", "name"});
    const std::size_t max = args.GetMax(context);
    const DWORD itemID = workspace.FindItem(args.GetWords()[0]);
    unsigned int flags = VCBtnClass::ORDLIST_NORMAL;
    if (args.Has("--desc"))
        flags |= VCBtnClass::ORDLIST_DESCEND;
    if (args.Has("--all"))
        flags |= VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS;
    if (args.Has("--empty-last"))
        flags |= VCBtnClass::ORDLIST_TAILEND_EMPVALBTN;
    if (args.Has("--conditions-last"))
        flags |= VCBtnClass::ORDLIST_TAILEND_CNDCLLBTN;
    if (args.Has("--expand"))
        flags |= VCBtnClass::ORDLIST_INCLUDE_CNDCLLMEMBERBTNS;
    std::vector<DWORD> btnIDs;
    if (order == "name")
        workspace.GetEnv().GetBtnNameOrdListOfBtnClass(itemID, flags, btnIDs);
    else
        workspace.GetEnv().GetBtnAppOrdListOfBtnClass(itemID, flags, btnIDs);
    CAnswer answer;
    answer["item"] = itemID;
    CBtnLister(workspace, itemID).DescribeInto(answer, btnIDs, max);
    return answer;
}

void ShowBtns(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    CBtnLister::Show(answer, output);
    const std::size_t count = answer.at("count");
    std::vector<DWORD> allBtnIDs;
    context.workspace.GetEnv().GetBtnAppOrdListOfBtnClass(answer.at("item"),
                                                          VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS, allBtnIDs);
    if (count < allBtnIDs.size()) {
        output.WriteLine(SCNumberText::OfCount(count) + " of " +
                             SCNumberText::OfThings(allBtnIDs.size(), "button") +
                             " (--all lists the hidden ones too)",
                         CTextOutput::STYLE_HIDDEN);
    }
}

// ---- button

CAnswer RunBtn(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const DWORD itemID = workspace.FindItem(args.GetWords()[0]);
    const DWORD btnID = workspace.FindBtns(itemID, args.GetWordsFrom(1)).front();
    const char* name = nullptr;
    bool isEffective = false;
    workspace.GetEnv().GetNameOfBtn(itemID, btnID, name);
    workspace.GetEnv().GetEffectiveInfoOfBtn(itemID, btnID, isEffective);
    CAnswer answer;
    answer["item"] = itemID;
    answer.update(CBtnLister(workspace, itemID).Describe(btnID));
    answer["name"] = name != nullptr ? CAnswer(SCHostText::FromEngine(name)) : CAnswer();
    answer["effective"] = isEffective;
    answer["reasons"] = SCBtnReason::GetReasons(answer.at("visible"));
    if (SCBUICoreCom::IsSpBtn(btnID))
        answer.update(SCSpBtnAnswer::Describe(workspace, itemID, btnID));
    return answer;
}

void ShowBtn(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    const auto inWords = [](bool is) { return is ? "yes" : "no"; };
    std::string reasons;
    for (const std::string reason : answer.at("reasons"))
        reasons += (reasons.empty() ? "" : ", ") + reason;
    std::vector<CTextOutput::SRow> rows = {
        {{"button", SCNameWord::WriteID(answer.at("id"), SCNameWord::MARK_OF_BTN) + " of " +
                        context.workspace.GetItemName(answer.at("item"))}},
        {{"text", answer.at("text")}},
        {{"name", answer.at("name").is_null() ? "-" : answer.at("name").get<std::string>()}},
        {{"kind", answer.at("kind")}},
        {{"displayed", inWords(answer.at("displayed"))}},
        {{"hidden by", reasons.empty() ? "-" : reasons}},
        {{"selected", inWords(answer.at("selected"))}},
        {{"effective", inWords(answer.at("effective"))}},
        {{"records", SCNumberText::OfCount(answer.at("records"))}},
        {{"in force", SCNumberText::OfCount(answer.at("targetRecords"))}}};
    if (answer.contains("members")) {
        rows.push_back({{"members", SCNumberText::OfCount(answer.at("members"))}});
        rows.push_back({{"picked by", SCSpBtnAnswer::DescribePicking(answer)}});
    }
    output.WriteTable({{""}, CTextOutput::SColumn::Uncut("")}, rows);
}

// ---- alias

CAnswer RunAlias(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    CBUIDataMngr& env = workspace.GetEnv();
    const std::vector<std::string>& words = args.GetWords();
    const bool showsName = args.Has("--name");
    if (showsName != (words.size() == 2))
        args.Refuse("Either a text or --name must be there");
    const DWORD itemID = workspace.FindItem(words[0]);
    const DWORD btnID = workspace.FindBtns(itemID, {words[1]}).front();
    std::string text;
    if (!showsName) {
        text = workspace.ReadBtnText(words[2]);
    } else {
        const char* name = nullptr;
        env.GetNameOfBtn(itemID, btnID, name);
        if (name == nullptr && SCBUICoreCom::IsEmpValBtn(btnID))
            name = workspace.GetDefEmpValName();
        if (name == nullptr)
            throw ECCommandError("The button " + words[1] + " has no name of its own; give it a text.");
        text = name;
    }
    workspace.RequireNewBtnText(itemID, text, btnID);
    CAnswer answer;
    answer["result"] = env.SetAliasOfBtn(itemID, btnID, text.c_str());
    answer["item"] = itemID;
    answer["id"] = btnID;
    answer["text"] = workspace.GetBtnText(itemID, btnID);
    return answer;
}

void ShowAlias(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteTable({{""}, CTextOutput::SColumn::Uncut("")},
                      {{{SCNameWord::WriteID(answer.at("id"), SCNameWord::MARK_OF_BTN), answer.at("text")}}});
}

// ---- empty-value

CAnswer RunEmptyValue(SCommandContext& context, const CCommandArgs& args)
{
    const CWorkspace& workspace = context.workspace;
    const DWORD itemID = workspace.FindItem(args.GetWords()[0]);
    bool isShown = false;
    if (!workspace.GetEnv().GetDispEmpValBtnInfoOfBtnClass(itemID, isShown))
        throw ECCommandError("The item \"" + workspace.GetItemName(itemID) + "\" has no empty value.");
    CAnswer answer;
    answer["item"] = itemID;
    if (args.GetWords().size() > 1) {
        const bool wasSelective = workspace.GetEnv().IsBtnSelectiveState();
        isShown = args.ReadSwitch(1);
        SCEnvChange::Run(
            context, [&](CBUIDataMngr& env) { return env.SetDispEmpValBtnInfoOfBtnClass(itemID, isShown); });
        answer["shown"] = isShown;
        answer["records"] = workspace.GetTargetRecs().size();
        answer["clearedSelection"] = wasSelective;
    } else {
        answer["shown"] = isShown;
    }
    return answer;
}

void ShowEmptyValue(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine(
        "The empty value of " + SCShownText::Escape(context.workspace.GetItemName(answer.at("item"))) +
        (answer.at("shown").get<bool>() ? " is shown where cells are empty." : " is not shown."));
    if (answer.value("clearedSelection", false))
        output.WriteLine("All selections were cleared.");
}

} // namespace

void SCItemCommands::AddTo(CCommandSet& commands)
{
    SCommand items;
    items.form = "items";
    items.summary = "all items with their types and how many buttons they have, display and have selected";
    items.explanation =
        "Every column of the table is an item, every distinct value of it a button. A button is "
        "displayed unless the selection, a limitation or something else hides it.";
    items.example = "items";
    items.run = RunItems;
    items.show = ShowItems;
    commands.Add(std::move(items));

    SCommand btns;
    btns.form = "buttons ITEM [--order app|name] [--desc] [--all] [--expand] [--empty-last] "
                "[--conditions-last] [--max N]";
    btns.summary = "the displayed buttons of an item in order";
    btns.explanation =
        "--order app: by first appearance in the table (so without it); --order name: by shown text.\n"
        "By --order app special buttons stand in front, with --desc behind.\n"
        "--desc: descending. --all: the hidden ones too, with what hides them. --expand: of these only the "
        "members that conditions have picked. --empty-last: the empty value at the end. --conditions-last: "
        "the special buttons with a condition behind all.\n"
        "\"records\" are those of the button, \"in force\" those of them that the item stands on. * "
        "marks the selected ones.\n"
        "At most 50 are shown (with --json all) unless --max tells another number (0: all).";
    btns.example = "buttons region --order name --all";
    btns.minWords = btns.maxWords = 1;
    btns.options = {{"--order", true},     {"--desc"},     {"--all"}, {"--expand"}, {"--empty-last"},
                    {"--conditions-last"}, {"--max", true}};
    btns.run = RunBtns;
    btns.show = ShowBtns;
    commands.Add(std::move(btns));

    SCommand btn;
    btn.form = "button ITEM BUTTON";
    btn.summary = "everything about one button";
    btn.explanation =
        "Its identifier, shown text, name (the value in the table), kind, state, what hides it, and "
        "how many records it has.";
    btn.example = "button region East";
    btn.minWords = btn.maxWords = 2;
    btn.run = RunBtn;
    btn.show = ShowBtn;
    commands.Add(std::move(btn));

    SCommand alias;
    alias.form = "alias ITEM BUTTON TEXT|--name";
    alias.summary = "gives a button another text to show, or its name back";
    alias.explanation =
        "The text must not be shown by another button of the item. With --name the button shows its "
        "name again, and the empty value what it was called at first.";
    alias.example = "alias region East \"The East\"";
    alias.minWords = 2;
    alias.maxWords = 3;
    alias.options = {{"--name"}};
    alias.run = RunAlias;
    alias.show = ShowAlias;
    commands.Add(std::move(alias));

    SCommand emptyValue;
    emptyValue.form = "empty-value ITEM [on|off]";
    emptyValue.summary = "shows or sets whether the empty value of an item is displayed";
    emptyValue.explanation =
        "Hidden, it takes part in nothing. Setting it, also to what it is, clears all selections.";
    emptyValue.example = "empty-value shop off";
    emptyValue.minWords = 1;
    emptyValue.maxWords = 2;
    emptyValue.run = RunEmptyValue;
    emptyValue.show = ShowEmptyValue;
    commands.Add(std::move(emptyValue));
}

} // namespace NSKZ::Host
