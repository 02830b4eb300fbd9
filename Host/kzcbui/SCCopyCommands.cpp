#include "SCCopyCommands.h"

#include "CCommandArgs.h"
#include "CCommandSet.h"
#include "CTextOutput.h"
#include "CWorkspace.h"
#include "SCLinkTables.h"
#include "SCNumberText.h"
#include "SCommandContext.h"
#include "SCShownText.h"

#include <nlohmann/json.hpp>

namespace NSKZ::Host {

namespace {

CAnswer DescribePresent(const CWorkspace& workspace)
{
    CAnswer answer;
    answer["result"] = true;
    answer["present"] = workspace.GetPresentCopy().name;
    answer["records"] = workspace.GetTargetRecs().size();
    return answer;
}

void ShowPresent(SCommandContext& context, const CAnswer& answer, CTextOutput& output)
{
    output.WriteLine("The present one is " + SCShownText::Escape(answer.at("present").get<std::string>()) +
                     ": " + SCNumberText::OfCount(answer.at("records")) + " of " +
                     SCNumberText::OfThings(context.workspace.GetRecCount(), "record") + " in force.");
}

// ---- copies

CAnswer RunCopies(SCommandContext& context, const CCommandArgs&)
{
    const CWorkspace& workspace = context.workspace;
    CAnswer copies = CAnswer::array();
    for (const CWorkspace::SCopy& copy : workspace.GetCopies()) {
        const NSKZCore::CBUIDataMngr& env = copy.analysis->GetEnv();
        CAnswer entry;
        entry["name"] = copy.name;
        entry["present"] = &copy == &workspace.GetPresentCopy();
        entry["tableRecords"] = copy.analysis->GetTable().GetRecCount();
        entry["fields"] = copy.analysis->GetTable().GetFldCount();
        entry["records"] = copy.analysis->GetTargetRecs().size();
        entry["changes"] = copy.analysis->GetHistory().size();
        entry["held"] = copy.analysis->GetHeldCommands().size();
        entry["bnLink"] = SCLinkTables::GetName(env.GetVersionTypeOfBnLink());
        entry["rpLink"] = SCLinkTables::GetName(env.GetVersionTypeOfRpLink());
        copies.push_back(std::move(entry));
    }
    CAnswer answer;
    answer["copies"] = std::move(copies);
    return answer;
}

void ShowCopies(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    std::vector<CTextOutput::SRow> rows;
    for (const CAnswer& copy : answer.at("copies")) {
        const bool isPresent = copy.at("present");
        rows.push_back(
            {{isPresent ? "*" : "", copy.at("name"), SCNumberText::OfCount(copy.at("tableRecords")),
              SCNumberText::OfCount(copy.at("fields")), SCNumberText::OfCount(copy.at("records")),
              SCNumberText::OfCount(copy.at("changes")), SCNumberText::OfCount(copy.at("held"))},
             isPresent ? CTextOutput::STYLE_SELECTED : CTextOutput::STYLE_PLAIN});
    }
    output.WriteTable({{""},
                       {"copy"},
                       {"records", true},
                       {"fields", true},
                       {"in force", true},
                       {"changes", true},
                       {"held", true}},
                      rows);
}

} // namespace

void SCCopyCommands::AddTo(CCommandSet& commands)
{
    SCommand copy;
    copy.form = "copy NAME";
    copy.summary = "makes a copy of the analysis, to go on with beside it";
    copy.explanation =
        "Of everything: table, selection, special buttons, held changes, what \"undo\" takes "
        "back. From then on each changes for itself. The present one stays in use; the first one "
        "is called main.";
    copy.example = "copy before-cuts";
    copy.minWords = copy.maxWords = 1;
    copy.run = [](SCommandContext& context, const CCommandArgs& args) {
        context.workspace.MakeCopy(args.GetWords()[0]);
        context.hasDone = true;
        CAnswer answer = DescribePresent(context.workspace);
        answer["name"] = args.GetWords()[0];
        return answer;
    };
    copy.show = [](SCommandContext& context, const CAnswer& answer, CTextOutput& output) {
        output.WriteLine("There is a copy " + SCShownText::Escape(answer.at("name").get<std::string>()) +
                         " now.");
        ShowPresent(context, answer, output);
    };
    commands.Add(std::move(copy));

    SCommand copies;
    copies.form = "copies";
    copies.summary = "lists the copies of the analysis";
    copies.explanation = "* marks the present one. \"in force\" are the records that its selection leaves, "
                         "\"changes\" those of the table that can be taken back.";
    copies.example = "copies";
    copies.run = RunCopies;
    copies.show = ShowCopies;
    commands.Add(std::move(copies));

    SCommand use;
    use.form = "use COPY";
    use.summary = "goes on with another copy";
    use.explanation = "Everything from then on asks and changes that one.";
    use.example = "use main";
    use.minWords = use.maxWords = 1;
    use.run = [](SCommandContext& context, const CCommandArgs& args) {
        context.workspace.UseCopy(args.GetWords()[0]);
        context.hasDone = true;
        return DescribePresent(context.workspace);
    };
    use.show = ShowPresent;
    commands.Add(std::move(use));

    SCommand drop;
    drop.form = "drop COPY";
    drop.summary = "removes a copy other than the present one";
    drop.explanation = "With all that was done in it.";
    drop.example = "drop before-cuts";
    drop.minWords = drop.maxWords = 1;
    drop.run = [](SCommandContext& context, const CCommandArgs& args) {
        context.workspace.DropCopy(args.GetWords()[0]);
        context.hasDone = true;
        CAnswer answer = DescribePresent(context.workspace);
        answer["name"] = args.GetWords()[0];
        return answer;
    };
    drop.show = [](SCommandContext& context, const CAnswer& answer, CTextOutput& output) {
        output.WriteLine("The copy " + SCShownText::Escape(answer.at("name").get<std::string>()) +
                         " is removed.");
        ShowPresent(context, answer, output);
    };
    commands.Add(std::move(drop));
}

} // namespace NSKZ::Host
