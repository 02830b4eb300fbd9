#include "CHostOptions.h"

#include "ECHostError.h"
#include "SCHostText.h"
#include "SCLinkTables.h"

#include <CLI/CLI.hpp>

#include <map>

namespace NSKZ::Host {

namespace {

using NSKZCore::SCBUICoreCom;
using NSKZCore::SCFldType;

constexpr const char* DESCRIPTION =
    "Opens a table of comma-separated values and answers commands on it: press buttons of one item, and the "
    "other\n"
    "items show what goes with them. Commands come from a prompt, a script or -c; \"help\" lists them.";
constexpr const char* FOOTER = "Exit status: 0 all commands went well, 1 a command failed, 2 wrong usage,\n"
                               "3 the table could not be read or its building was cancelled.";

// An option and what its value is, and no more.
class CPlainFormatter : public CLI::Formatter
{
public:
    std::string make_option_opts(const CLI::Option* option) const override
    {
        const std::string type = option->get_positional() ? std::string() : option->get_type_name();
        return type.empty() ? type : " " + type;
    }
};

[[noreturn]] void RefuseUsage(const std::string& sentence)
{
    throw ECHostError(EXITSTATUS_WRONG_USAGE, sentence);
}

} // namespace

bool CHostOptions::ReadDelimiter(const std::string& text, char& delimiter) noexcept
{
    if (text == "\\t" || text == "tab") {
        delimiter = '\t';
        return true;
    }
    const unsigned char character = text.size() == 1 ? static_cast<unsigned char>(text.front()) : 0;
    if (character == 0 || character >= 0x80 || character == '"' || character == '\r' || character == '\n')
        return false;
    delimiter = text.front();
    return true;
}

bool CHostOptions::ReadType(const std::string& text, std::pair<std::string, SCFldType::SFldType>& type)
{
    // A field's name may hold the sign, a type does not.
    const std::size_t sign = text.rfind('=');
    if (sign == std::string::npos || sign == 0 || !SCFldType::Parse(text.substr(sign + 1), type.second))
        return false;
    type.first = text.substr(0, sign);
    return true;
}

std::optional<CHostOptions> CHostOptions::Read(int argc, const char* const* argv, std::string& answer)
{
    CHostOptions options;
    std::string delimiter;
    std::string codePage = "auto";
    std::string linkTables = SCLinkTables::GetName(SCBUICoreCom::LINKTBLVERTYPE_ONMEM);
    std::string scriptPath;
    std::vector<std::string> types;
    bool hasNoHeader = false;
    bool showsNoProgress = false;

    CLI::App app(DESCRIPTION, "kzcbui");
    app.footer(FOOTER);
    app.formatter(std::make_shared<CPlainFormatter>());
    app.set_version_flag("--version", std::string("kzcbui ") + KZCBUI_VERSION, "Tell the version and end");
    app.set_help_flag("--help,-h", "Tell this and end");
    app.add_option("TABLE.csv", options.tablePath, "The table")->required();
    CLI::Option* const script =
        app.add_option("--script", scriptPath, "Read commands from this file, - for standard input")
            ->type_name("FILE");
    app.add_option("-c", options.commands, "Run this command; may be given several times")
        ->type_name("COMMAND")
        ->allow_extra_args(false);
    app.add_flag("--json", options.json, "Answer each command with one JSON object on one line");
    app.add_flag("--echo", options.echo, "Write each command before its answer (not with --json)");
    app.add_option("--code-page", codePage,
                   "Encoding of the table and of the engine's text (auto tells the former)")
        ->check(CLI::IsMember({"auto", "932", "65001"}).description(""))
        ->type_name("auto|932|65001");
    app.add_option("--delimiter", delimiter, "What stands between the values (a comma), tab for a tab")
        ->type_name("C");
    app.add_flag("--no-header", hasNoHeader, "The first record is data; the items are F1, F2, ...");
    app.add_option("--type", types,
                   "Type of an item in place of the inferred one; may be given several times")
        ->type_name("FIELD=text|number|date[:FORM]|time[:FORM]")
        ->allow_extra_args(false);
    app.add_option("--link-tables", linkTables, "The kind of the engine's tables of records and buttons")
        ->check(CLI::IsMember(SCLinkTables::GetNames()).description(""))
        ->type_name("on-memory|memory-saving");
    app.add_flag("--no-progress", showsNoProgress, "Show no progress of the building");

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        answer = app.help();
        return std::nullopt;
    } catch (const CLI::CallForVersion& version) {
        answer = version.what() + std::string("\n");
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        RefuseUsage(error.what() + std::string("; kzcbui --help tells the usage"));
    }

    if (script->count() != 0 && !options.commands.empty())
        RefuseUsage("Commands come from --script or from -c, not from both.");
    options.hasHeader = !hasNoHeader;
    options.showsProgress = !showsNoProgress;
    if (script->count() != 0)
        options.scriptPath = scriptPath;
    if (codePage != "auto")
        options.codePage = codePage == "932" ? _KANJI_CP : CP_UTF8;
    if (app.get_option("--delimiter")->count() != 0 && !ReadDelimiter(delimiter, options.delimiter))
        RefuseUsage("--delimiter takes " + std::string(EXPECTED_DELIMITER) + "; not \"" + delimiter + "\".");
    for (const std::string& type : types) {
        if (!ReadType(type, options.types.emplace_back()))
            RefuseUsage("--type takes FIELD=" + std::string(EXPECTED_TYPE) + "; not \"" + type + "\".");
    }
    SCLinkTables::ReadName(linkTables, options.linkTables);
    return options;
}

} // namespace NSKZ::Host
