// The program as a whole: its options, its sources of commands, its streams and its exit status.

#include "HostFixture.h"

#include <nlohmann/json.hpp>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include <fcntl.h>
#include <sys/stat.h>

namespace NSKZ::Test {

using HostSession = HostFixture;

namespace {

std::vector<std::string> NamesOf(const Json& items)
{
    std::vector<std::string> names;
    for (const Json& item : items)
        names.push_back(item.at("name"));
    return names;
}

} // namespace

TEST_F(HostSession, VersionAndHelpEndWell)
{
    EXPECT_EQ(CHostProcess::Run({"--version"}).GetOutput(), "kzcbui 0.1.0\n");
    const CHostProcess help = CHostProcess::Run({"--help"});
    EXPECT_EQ(help.GetStatus(), 0);
    for (const char* option :
         {"--json", "--script FILE", "-c COMMAND", "--code-page auto|932|65001", "--delimiter C",
          "--no-header", "--type FIELD=", "--link-tables on-memory|memory-saving", "--no-progress",
          "--version", "--help"})
        EXPECT_NE(help.GetOutput().find(option), std::string::npos) << option;
}

TEST_F(HostSession, WrongUsageEndsWithStatusTwoAndASentence)
{
    const std::vector<std::vector<std::string>> usages = {{},
                                                          {"--nonsense", table},
                                                          {table, "another.csv"},
                                                          {table, "--code-page", "1252"},
                                                          {table, "--delimiter", "ab"},
                                                          {table, "--delimiter", "\""},
                                                          {table, "--delimiter", ""},
                                                          {table, "--delimiter", "、"},
                                                          {table, "--type", "amount=money"},
                                                          {table, "--type", "amount"},
                                                          {table, "--type", "=text"},
                                                          {table, "--link-tables", "huge"},
                                                          {table, "--script", "no such script"},
                                                          {table, "--script", dir.GetPath().string()},
                                                          {table, "--script", "-", "-c", "items"}};
    for (const std::vector<std::string>& usage : usages) {
        const CHostProcess process = CHostProcess::Run(usage);
        const std::string shown = usage.empty() ? "" : usage.back();
        EXPECT_EQ(process.GetStatus(), 2) << shown;
        EXPECT_EQ(process.GetOutput(), "") << shown;
        EXPECT_TRUE(process.GetErrors().starts_with("kzcbui: ")) << process.GetErrors();
    }
}

TEST_F(HostSession, LinkTablesOfEitherVersionGiveTheSameAnswers)
{
    const auto answersOn = [this](const char* version) {
        const CHostProcess process =
            CHostProcess::Run({table, "--link-tables", version, "--json", "-c", "press region East", "-c",
                               "items", "-c", "records --list"});
        EXPECT_EQ(process.GetStatus(), 0) << process.GetErrors();
        return process.GetOutput();
    };
    const std::string onMemory = answersOn("on-memory");
    EXPECT_NE(onMemory, "");
    EXPECT_EQ(answersOn("memory-saving"), onMemory);
}

TEST_F(HostSession, ATableThatCannotBeReadEndsWithStatusThreeAndTheReason)
{
    const auto errorsOf = [](const std::string& path, const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = options;
        arguments.insert(arguments.end(), {"--json", "-c", "items", path});
        const CHostProcess process = CHostProcess::Run(arguments);
        EXPECT_EQ(process.GetStatus(), 3) << path;
        EXPECT_EQ(process.GetOutput(), "");
        EXPECT_TRUE(process.GetErrors().starts_with("kzcbui: " + path + ": ")) << process.GetErrors();
        return process.GetErrors();
    };
    EXPECT_NE(errorsOf(dir.GetPath() / "none.csv").find("No such file"), std::string::npos);
    errorsOf(dir.GetPath());
    errorsOf(dir.WriteFile("empty.csv", ""));
    EXPECT_NE(errorsOf(dir.WriteFile("ragged.csv", "a,b\n1,2\n3\n")).find(": line 3: "), std::string::npos);
    errorsOf(dir.WriteFile("neither.csv", "a,b\n\xFF\xFE\xFF,\x81\n"));
    EXPECT_NE(errorsOf(table, {"--type", "amuont=text"}).find("amuont"), std::string::npos);
    const std::string shiftJIS = dir.WriteFile("sjis.csv", SJIS(JAPANESE_TEXT));
    errorsOf(shiftJIS, {"--code-page", "65001"});
    EXPECT_NE(errorsOf(shiftJIS, {"--type", "café=text"}).find("café"), std::string::npos);
}

TEST_F(HostSession, ACommandThatFailsEndsWithStatusOneAndTheOthersStillRun)
{
    const CHostProcess process =
        CHostProcess::RunCommands(table, {"press region East", "nonsense", "records"});
    EXPECT_EQ(process.GetStatus(), 1);
    const std::vector<Json> answers = process.GetAnswers();
    ASSERT_EQ(answers.size(), 3u);
    EXPECT_EQ(
        answers[1],
        Json::parse(R"({"ok":false,"error":"There is no command \"nonsense\"; \"help\" lists them."})"));
    EXPECT_EQ(answers[2].at("count"), 3);
}

TEST_F(HostSession, CommandsComeFromAScript)
{
    const std::string script =
        dir.WriteFile("commands", "\xEF\xBB\xBF# comment\r\n\r\n  \npress region East\r\nrecords");
    const CHostProcess process = CHostProcess::Run({"--json", "--script", script, table});
    EXPECT_EQ(process.GetStatus(), 0);
    ASSERT_EQ(process.GetAnswers().size(), 2u);
    EXPECT_EQ(process.GetAnswers()[1].at("count"), 3);
}

TEST_F(HostSession, CommandsComeFromStandardInput)
{
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--json", table},
          std::vector<std::string>{"--json", "--script", "-", table}}) {
        const CHostProcess process = CHostProcess::Run(arguments, "press region East\nrecords\n");
        EXPECT_EQ(process.GetStatus(), 0);
        ASSERT_EQ(process.GetAnswers().size(), 2u);
        EXPECT_EQ(process.GetAnswers()[1].at("count"), 3);
    }
}

TEST_F(HostSession, NoCommandAtAllGoesWell)
{
    const CHostProcess process = CHostProcess::Run({"--json", table});
    EXPECT_EQ(process.GetStatus(), 0);
    EXPECT_EQ(process.GetOutput() + process.GetErrors(), "");
}

TEST_F(HostSession, TheErrorOfAScriptTellsItsPlace)
{
    const std::string script = dir.WriteFile("commands", "items\n\nprss\n");
    const CHostProcess process = CHostProcess::Run({"--script", script, table});
    EXPECT_EQ(process.GetStatus(), 1);
    EXPECT_EQ(process.GetErrors(), script + ":3: There is no command \"prss\"; \"help\" lists them.\n");
    EXPECT_EQ(CHostProcess::Run({table}, "prss").GetErrors(),
              "standard input:1: There is no command \"prss\"; \"help\" lists them.\n");
    EXPECT_EQ(CHostProcess::Run({table, "-c", "prss"}).GetErrors(),
              "There is no command \"prss\"; \"help\" lists them.\n");
}

TEST_F(HostSession, QuitAndExitEndTheSession)
{
    for (const std::string word : {"quit", "exit"}) {
        const CHostProcess process = CHostProcess::RunCommands(table, {"records", word, "items"});
        EXPECT_EQ(process.GetStatus(), 0);
        ASSERT_EQ(process.GetAnswers().size(), 2u);
        EXPECT_EQ(process.GetAnswers()[1], Json::parse(R"({"ok":true})"));
    }
}

TEST_F(HostSession, EchoWritesEachCommandBeforeItsAnswer)
{
    const CHostProcess process =
        CHostProcess::Run({"--echo", "-c", "records", "-c", "", "-c", "press region East", table});
    EXPECT_EQ(process.GetOutput(), "> records\n7 of 7 records\n\n> press region East\n3 of 7 records\n\n");
    EXPECT_EQ(CHostProcess::Run({"--echo", "--json", "-c", "records", table}).GetAnswers().size(), 1u);
}

TEST_F(HostSession, HelpListsEveryCommandAndTellsOne)
{
    const Json list = LastAnswer({"help"}).at("commands");
    const Json names = Pluck(list, "command");
    for (const char* name : {"items",
                             "buttons",
                             "button",
                             "press",
                             "release",
                             "press-all",
                             "release-all",
                             "clear",
                             "reset",
                             "mode",
                             "multi",
                             "selection",
                             "restore",
                             "hierarchy",
                             "records",
                             "records-of",
                             "related",
                             "limit",
                             "sum",
                             "alias",
                             "select-item",
                             "unselect-item",
                             "selected-items",
                             "clear-items",
                             "new-buttons",
                             "difference",
                             "link-tables",
                             "help",
                             "quit",
                             "exit",
                             "empty-value",
                             "special create",
                             "special list",
                             "special members",
                             "special set-members",
                             "special add-members",
                             "special remove-members",
                             "special where",
                             "special holders",
                             "special effective",
                             "special disp-members",
                             "special destroy",
                             "special renew",
                             "save",
                             "load"})
        EXPECT_NE(std::find(names.begin(), names.end(), name), names.end()) << name;
    const Json press = LastAnswer({"help press"});
    EXPECT_EQ(press.at("command"), "press");
    EXPECT_EQ(press.at("form"), "press ITEM BUTTON... [--hidden]");
    EXPECT_EQ(press.at("example"), "press region East West");
    EXPECT_EQ(Error("help nonsense"), "There is no command \"nonsense\"; \"help\" lists them.");
    const CHostProcess shown = CHostProcess::Run({table, "-c", "help", "-c", "help sum"});
    for (const Json& command : list)
        EXPECT_NE(shown.GetOutput().find(command.at("summary").get<std::string>()), std::string::npos);
    EXPECT_NE(shown.GetOutput().find("Example: sum region amount --method average"), std::string::npos);
}

TEST_F(HostSession, HelpTellsOneCommandOfAGroupOrLists)
{
    const Json group = LastAnswer({"help special"}).at("commands");
    EXPECT_EQ(group.size(), 12u);
    for (const Json& command : group)
        EXPECT_TRUE(command.at("command").get<std::string>().starts_with("special ")) << command.dump();
    EXPECT_EQ(LastAnswer({"help special where"}).at("command"), "special where");
    EXPECT_EQ(Error("help special nonsense"),
              "There is no command \"special nonsense\"; \"help special\" lists those that begin so.");
    EXPECT_EQ(Error("special"), "Several commands begin with \"special\"; \"help special\" lists them.");
    const CHostProcess shown = CHostProcess::Run({table, "-c", "help special"});
    EXPECT_NE(shown.GetOutput().find("special renew"), std::string::npos);
    EXPECT_EQ(shown.GetOutput().find("press"), shown.GetOutput().rfind("press")) << shown.GetOutput();
}

TEST_F(HostSession, EveryExampleOfHelpIsUnderstood)
{
    std::vector<std::string> examples;
    const Json help = LastAnswer({"help"});
    for (const Json& command : help.at("commands"))
        examples.push_back(command.at("example"));
    const std::string bigger = [this] {
        std::string text = TABLE_TEXT;
        for (int i = 0; i < 2000; ++i)
            text += "East,A,1,2024-01-05,09:30\n";
        return dir.WriteFile("bigger.csv", text);
    }();
    const std::map<std::string, std::string> contentOf = [] {
        std::string numbers;
        for (int i = 0; i < 2007; ++i)
            numbers += std::to_string(i % 9) + "\n";
        return std::map<std::string, std::string>{{"more.csv", TABLE_TEXT},
                                                  {"margins.csv", "margin\n" + numbers},
                                                  {"amounts.csv", "amount\n" + numbers}};
    }();
    for (std::string& example : examples) {
        std::vector<std::string> commands;
        const std::string work = (dir.GetPath() / "work").string();
        if (example == "save work" || example == "load work")
            example.replace(5, 4, work);
        if (example.starts_with("load "))
            commands.push_back("save " + work);
        if (example == "table save changed.csv")
            example = "table save " + (dir.GetPath() / "changed.csv").string();
        if (example == "drop before-cuts")
            commands.push_back("copy before-cuts");
        if (example == "undo")
            commands.push_back("rows delete 0 1");
        if (example == "refresh")
            commands.push_back("rows delete 0 1 --hold");
        for (const char* file : {"more.csv", "margins.csv", "amounts.csv"}) {
            const std::size_t name = example.find(file);
            if (name != std::string::npos)
                example.replace(name, std::string(file).size(), dir.WriteFile(file, contentOf.at(file)));
        }
        if (example == "difference")
            commands.push_back("mode difference");
        if (example.starts_with("special ")) {
            commands.push_back("special create region inc Both West");
            commands.push_back("special create region cll Best --where 'amount sum top 1'");
        }
        if (example.find("Areas") != std::string::npos)
            commands.push_back("virtual create Areas");
        if (example.starts_with("virtual rename"))
            commands = {"virtual create \"Sales areas\""};
        if (example == "virtual create \"Sales areas\"")
            commands.clear();
        commands.push_back(example);
        const CHostProcess process = CHostProcess::RunCommands(bigger, commands);
        EXPECT_EQ(process.GetStatus(), 0) << example << process.GetOutput();
    }
}

TEST_F(HostSession, TheDocumentTellsEveryCommandAndAnswersAsTheProgramDoes)
{
    std::ifstream file(KZC_DOC_DIR "/host.md", std::ios::binary);
    const std::string document((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const Json help = LastAnswer({"help"});
    for (const Json& form : Pluck(help.at("commands"), "form"))
        EXPECT_NE(document.find("`" + form.get<std::string>() + "`"), std::string::npos) << form;
    const CHostProcess process = CHostProcess::RunCommands(
        KZC_SAMPLES_DIR "/sales_sjis.csv",
        {"press 地域 関東", "press 分類 食品", "hierarchy", "sum 店舗 金額", "press 地域 北極"});
    EXPECT_NE(document.find("```json\n" + process.GetOutput() + "```"), std::string::npos)
        << process.GetOutput();
}

TEST_F(HostSession, LinkTablesShowsAndChangesTheVersions)
{
    const Json onMemory = Json::parse(R"({"ok":true,"bnLink":"on-memory","rpLink":"on-memory"})");
    EXPECT_EQ(LastAnswer({"link-tables"}), onMemory);
    EXPECT_EQ(LastAnswer({"press region East", "link-tables on-memory"}), onMemory);
    const Json memorySaving = Json::parse(R"({"ok":true,"bnLink":"memory-saving","rpLink":"memory-saving"})");
    EXPECT_EQ(LastAnswer({"press region East", "link-tables memory-saving"}), memorySaving);
    EXPECT_NE(Error("link-tables huge").find("expected: link-tables [on-memory|memory-saving]"),
              std::string::npos);
}

TEST_F(HostSession, BrokenCommandLinesAreRefused)
{
    EXPECT_EQ(Error("press 'region East"), "A quote ' is opened and never closed.");
    EXPECT_NE(Error("press region East\\").find("backslash"), std::string::npos);
    EXPECT_NE(Error("items all").find("expected: items"), std::string::npos);
    EXPECT_EQ(Error("press region \x83\x41"), "The command is no text in UTF-8.");
    EXPECT_EQ(Error("''"), "There is no command \"\"; \"help\" lists them.");
}

TEST_F(HostSession, AShiftJISTableIsAnsweredInUTF8)
{
    const std::string shiftJIS = dir.WriteFile("sjis.csv", SJIS(JAPANESE_TEXT));
    for (const char* codePage : {"auto", "932"}) {
        const CHostProcess process = CHostProcess::Run(
            {"--json", "--code-page", codePage, shiftJIS, "-c", "items", "-c", "press 地域 関東", "-c",
             "buttons 商品", "-c", "press 商品 'ソース 大'", "-c", "sum 地域 金額"});
        EXPECT_EQ(process.GetStatus(), 0) << process.GetOutput() << process.GetErrors();
        const std::vector<Json> answers = process.GetAnswers();
        ASSERT_EQ(answers.size(), 5u);
        EXPECT_EQ(NamesOf(answers[0].at("items")), (std::vector<std::string>{"地域", "商品", "金額"}));
        EXPECT_EQ(answers[1].at("records"), 2);
        EXPECT_EQ(Pluck(answers[2].at("buttons"), "text"), Json({"緑茶", "ソース 大"}));
        EXPECT_EQ(answers[3].at("records"), 1);
        EXPECT_EQ(answers[4].at("values")[0].at("text"), "関東");
    }
}

TEST_F(HostSession, AUTF8TableIsAnsweredInUTF8)
{
    for (const std::string mark : {"", "\xEF\xBB\xBF"}) {
        table = dir.WriteFile("utf8.csv", mark + UTF8(u8"ville,montant\ncafé 🍵,1\n한국,2\n,3\n"));
        EXPECT_EQ(DisplayedTexts({}, "ville"), Json({"café 🍵", "한국", "(空白)"}));
        EXPECT_EQ(LastAnswer({"press ville 'café 🍵'"}).at("records"), 1);
    }
    table = dir.WriteFile("japanese.csv", UTF8(JAPANESE_TEXT));
    EXPECT_EQ(LastAnswer({"press 地域 関東"}).at("records"), 2);
}

TEST_F(HostSession, ATextThatTheCodePageLacksNamesNothing)
{
    table = dir.WriteFile("sjis.csv", SJIS(JAPANESE_TEXT));
    EXPECT_EQ(Error("press 地域 café"), "The item \"地域\" has no button \"café\".");
    EXPECT_NE(Error("press café 関東").find("There is no item \"café\""), std::string::npos);
    EXPECT_EQ(Error("alias 地域 関東 café"), "The text \"café\" holds a character that code page 932 lacks.");
}

TEST_F(HostSession, AFileOfTheOtherEncodingIsNotTakenForTheOneThatIsForced)
{
    // Hiragana in UTF-8 are no Shift-JIS.
    const std::string utf8 = dir.WriteFile("utf8.csv", UTF8(u8"a\nあ\n"));
    EXPECT_EQ(CHostProcess::Run({"--code-page", "932", utf8, "-c", "items"}).GetStatus(), 3);
}

TEST_F(HostSession, DelimiterHeaderAndTypesFollowTheOptions)
{
    const std::string tabs = dir.WriteFile("tabs.tsv", "x\t1\ny\t2\n");
    for (const char* delimiter : {"\t", "\\t", "tab"}) {
        const CHostProcess process = CHostProcess::Run(
            {"--json", "--no-header", "--delimiter", delimiter, "--type", "F2=text", tabs, "-c", "items"});
        ASSERT_EQ(process.GetStatus(), 0) << process.GetErrors();
        const Json items = process.GetAnswers()[0].at("items");
        EXPECT_EQ(NamesOf(items), (std::vector<std::string>{"F1", "F2"}));
        EXPECT_EQ(Pluck(items, "type"), Json({"text", "text"}));
    }
    const CHostProcess typed =
        CHostProcess::Run({"--json", "--type", "day=date:ymd-hyphen", "--type", "at=time:hm", "--type",
                           "amount=number", "--type=shop=text", table, "-c", "items"});
    ASSERT_EQ(typed.GetStatus(), 0) << typed.GetErrors();
    EXPECT_EQ(Pluck(typed.GetAnswers()[0].at("items"), "type"),
              Json({"text", "text", "number", "date", "time"}));
}

TEST_F(HostSession, TheTypeOfAFieldWhoseNameHoldsAnEqualsSignCanBeGiven)
{
    const std::string signs = dir.WriteFile("signs.csv", "a=b\n1\n");
    const CHostProcess process = CHostProcess::Run({"--json", "--type", "a=b=text", signs, "-c", "items"});
    ASSERT_EQ(process.GetStatus(), 0) << process.GetErrors();
    EXPECT_EQ(process.GetAnswers()[0].at("items")[0].at("type"), "text");
}

TEST_F(HostSession, AFileMayHaveAnyNameThatTheSystemTakes)
{
    for (const std::string name : {"売上.csv", "café.csv", "a\\b.csv", "with blank.csv"}) {
        const std::filesystem::path path = dir.GetPath() / name;
        std::ofstream(path, std::ios::binary) << SJIS(JAPANESE_TEXT);
        EXPECT_EQ(CHostProcess::Run({path.string(), "-c", "items"}).GetStatus(), 0) << name;
    }
}

TEST_F(HostSession, TextsOfTheTableCannotSteerTheTerminal)
{
    const std::string wild = dir.WriteFile("wild.csv", "a\n\"x\x1B[31m\ny\"\n");
    const std::string output = CHostProcess::Run({wild, "-c", "buttons a"}).GetOutput();
    EXPECT_EQ(output.find('\x1B'), std::string::npos);
    EXPECT_NE(output.find("x\\x1B[31m\\ny"), std::string::npos);
}

TEST_F(HostSession, AnswersThatCannotBeWrittenFail)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "the system has no full device";
    const std::string command =
        std::string("exec '") + KZCBUI_PATH + "' '" + table + "' -c items > /dev/full 2>/dev/null";
    const int state = std::system(command.c_str());
    ASSERT_TRUE(WIFEXITED(state));
    EXPECT_EQ(WEXITSTATUS(state), 1);
}

TEST_F(HostSession, TheSampleTableIsReadAsItIsMeant)
{
    table = KZC_SAMPLES_DIR "/sales_sjis.csv";
    const std::vector<Json> answers =
        Answers({"items", "records", "press 地域 関東", "press 分類 食品", "sum 店舗 金額"});
    const Json items = answers[0].at("items");
    EXPECT_EQ(Pluck(items, "type"), Json({"date", "time", "text", "text", "text", "text", "text", "number",
                                          "number", "text", "text"}));
    EXPECT_EQ(answers[1].at("count"), 2000);
    EXPECT_GT(answers[2].at("records"), answers[3].at("records"));
    double sum = 0;
    for (const Json& value : answers[4].at("values"))
        sum += value.at("value").get<double>();
    EXPECT_DOUBLE_EQ(sum, answers[4].at("total").get<double>());
    EXPECT_EQ(answers[4].at("values").size(), 4u);
}

} // namespace NSKZ::Test
