#include "SCSessionCommands.h"

#include "CCommandArgs.h"
#include "CCommandSet.h"
#include "CTextOutput.h"
#include "CWorkspace.h"
#include "ECCommandError.h"
#include "SCLinkTables.h"
#include "SCommandContext.h"

#include <nlohmann/json.hpp>

#include <new>

namespace NSKZ::Host {

namespace {

using NSKZCore::SCBUICoreCom;

constexpr const char* NAMING =
    "An item is named by its name or by @ and its identifier (@3), a button by its shown text or by # and "
    "its "
    "identifier (#7). Words are split as a shell splits them: quotes hold a name with blanks together.\n"
    "A text that looks like an identifier is written with its mark doubled: ##7 is the button that shows "
    "\"#7\", "
    "@@7 the item \"@7\". A text that several buttons show is refused: name the one you mean by its "
    "identifier.\n"
    "Options begin with two hyphens and stand anywhere; -- stands before words that begin so themselves. In "
    "a script, "
    "lines that begin with # are comments.";

// ---- help

CAnswer DescribeCommand(const SCommand& command)
{
    CAnswer answer;
    answer["command"] = command.GetName();
    answer["form"] = command.form;
    answer["summary"] = command.summary;
    answer["explanation"] = command.explanation;
    answer["example"] = command.example;
    return answer;
}

CAnswer RunHelp(SCommandContext& context, const CCommandArgs& args)
{
    const std::vector<std::string>& words = args.GetWords();
    CAnswer list = CAnswer::array();
    CAnswer answer;
    if (words.empty()) {
        for (const SCommand& command : context.commands.GetAll())
            list.push_back(DescribeCommand(command));
        answer["commands"] = std::move(list);
        answer["naming"] = NAMING;
        return answer;
    }
    if (words.size() == 1) {
        for (const SCommand* const command : context.commands.GetGroup(words.front()))
            list.push_back(DescribeCommand(*command));
        if (!list.empty()) {
            answer["commands"] = std::move(list);
            return answer;
        }
    }
    return DescribeCommand(context.commands.FindByWords(words));
}

void ShowHelp(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    if (answer.contains("commands")) {
        std::vector<CTextOutput::SRow> rows;
        for (const CAnswer& command : answer.at("commands"))
            rows.push_back({{command.at("command"), command.at("summary")}});
        output.WriteTable({{"", false, CTextOutput::STYLE_HEAD}, CTextOutput::SColumn::Uncut("")}, rows);
        output.WriteLine("");
        if (answer.contains("naming"))
            output.WriteText(answer.at("naming").get<std::string>());
        output.WriteLine("\"help COMMAND\" tells more.");
        return;
    }
    output.WriteLine(answer.at("form").get<std::string>(), CTextOutput::STYLE_HEAD);
    output.WriteText(answer.at("summary").get<std::string>());
    output.WriteLine("");
    output.WriteText(answer.at("explanation").get<std::string>());
    output.WriteLine("");
    output.WriteLine("Example: " + answer.at("example").get<std::string>());
}

// ---- link-tables

constexpr const char* STR_ONLY = "--only";
constexpr const char* NAME_OF_BNLINK = "record-to-button";
constexpr const char* NAME_OF_RPLINK = "button-to-record";

CAnswer RunLinkTables(SCommandContext& context, const CCommandArgs& args)
{
    NSKZCore::CBUIDataMngr& env = context.workspace.GetEnv();
    const std::string only = args.GetChoice(STR_ONLY, {"both", NAME_OF_BNLINK, NAME_OF_RPLINK});
    if (args.GetWords().empty() && args.Has(STR_ONLY))
        args.Refuse(std::string(STR_ONLY) + " tells which table changes, and no version is told");
    if (!args.GetWords().empty()) {
        SCBUICoreCom::ELinkTableVerType version = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
        if (!SCLinkTables::ReadName(args.GetWords()[0], version))
            args.Refuse("There are no link tables \"" + args.GetWords()[0] + "\"");
        const SCBUICoreCom::ELinkTableVerType former = env.GetVersionTypeOfBnLink();
        try {
            if (only != NAME_OF_RPLINK)
                env.ChangeVersionTypeOfBnLink(version);
            if (only != NAME_OF_BNLINK)
                env.ChangeVersionTypeOfRpLink(version);
        } catch (const std::bad_alloc&) {
            // The first one may have changed already. Either version answers the same.
            if (env.GetVersionTypeOfBnLink() != former) {
                throw ECCommandError("There is not enough memory for the table from buttons to records; that "
                                     "from records to buttons has changed.");
            }
            throw;
        }
    }
    CAnswer answer;
    answer["bnLink"] = SCLinkTables::GetName(env.GetVersionTypeOfBnLink());
    answer["rpLink"] = SCLinkTables::GetName(env.GetVersionTypeOfRpLink());
    return answer;
}

void ShowLinkTables(SCommandContext&, const CAnswer& answer, CTextOutput& output)
{
    output.WriteTable({{""}, {""}}, {{{"record to button", answer.at("bnLink")}},
                                     {{"button to record", answer.at("rpLink")}}});
}

// ---- quit, exit

CAnswer RunQuit(SCommandContext& context, const CCommandArgs&)
{
    context.quits = true;
    return CAnswer::object();
}

void ShowQuit(SCommandContext&, const CAnswer&, CTextOutput&) {}

} // namespace

void SCSessionCommands::AddTo(CCommandSet& commands)
{
    SCommand linkTables;
    linkTables.form = "link-tables [on-memory|memory-saving] [--only record-to-button|button-to-record]";
    linkTables.summary = "shows or changes the kind of the tables that tie records and buttons together";
    linkTables.explanation = "on-memory is fast, memory-saving is small; both answer the same. --only "
                             "changes one of the two tables.";
    linkTables.example = "link-tables on-memory --only button-to-record";
    linkTables.options = {{STR_ONLY, true}};
    linkTables.maxWords = 1;
    linkTables.run = RunLinkTables;
    linkTables.show = ShowLinkTables;
    commands.Add(std::move(linkTables));

    SCommand help;
    help.form = "help [COMMAND]";
    help.summary = "lists the commands, or tells one's form with an example";
    help.explanation = NAMING;
    help.example = "help press";
    help.maxWords = 2;
    help.run = RunHelp;
    help.show = ShowHelp;
    commands.Add(std::move(help));

    SCommand quit;
    quit.form = "quit";
    quit.summary = "ends the session";
    quit.explanation = "The end of the input (Ctrl-D at the prompt) does the same.";
    quit.example = "quit";
    quit.run = RunQuit;
    quit.show = ShowQuit;

    SCommand exit = quit;
    exit.form = "exit";
    exit.example = "exit";
    commands.Add(std::move(quit));
    commands.Add(std::move(exit));
}

} // namespace NSKZ::Host
