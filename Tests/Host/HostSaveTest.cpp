// Saving a session and loading it into a fresh program.

#include "HostState.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace NSKZ::Test {

namespace fs = std::filesystem;
using State = std::map<std::string, Json>;

class HostSave : public HostFixture
{
protected:
    // That a session comes back as the commands made it: whatever can be asked of it, and saved again.
    void ExpectRoundTrip(const std::vector<std::string>& commands)
    {
        std::string trace;
        for (const std::string& command : commands)
            trace += command + "; ";
        SCOPED_TRACE(trace);
        const State made = CHostState::Ask(table, commands);
        Json saved = LastAnswer(With(commands, {"save " + work}));
        EXPECT_EQ(saved.at("result"), true);
        EXPECT_EQ(saved.at("leftOut"), Json::parse(R"({"items":0,"buttons":0})"));
        EXPECT_GT(saved.at("bytes"), 0);
        const Json loaded = LastAnswer({"load " + work});
        EXPECT_EQ(loaded.at("result"), true);
        EXPECT_EQ(loaded.at("asSaved"), true);
        EXPECT_EQ(loaded.at("generation"), saved.at("generation"));
        EXPECT_EQ(loaded.at("records"), made.at("records --list").at("count"));
        ExpectSame(made, CHostState::Ask(table, {"load " + work}), "loaded");
        // In a session that has gone elsewhere meanwhile.
        ExpectSame(made,
                   CHostState::Ask(
                       table, With(commands, {"mode and", "limit 0-2", "press @1 #2",
                                              "special create @1 cll Other #3 #4", "virtual create Elsewhere",
                                              "calendar --start-month 2", "load " + work})),
                   "loaded over another one");
        // Saved again the XML files are the same to the byte, but for when a condition was set last, which a
        // load does. The link tables may come in another order of items: a load puts them in order, and from
        // then on they stay the same too.
        const std::map<std::string, std::string> first = ReadSaveWithoutTimes();
        LastAnswer({"load " + work, "save " + work});
        const std::map<std::string, std::string> second = ReadSaveWithoutTimes();
        for (const char* name : {"common.xml", "fixed.xml", "host.json"})
            EXPECT_EQ(second.at(name), first.at(name)) << name;
        LastAnswer({"load " + work, "save " + work});
        EXPECT_EQ(ReadSaveWithoutTimes(), second);
    }
    static void ExpectSame(const State& expected, const State& actual, const char* what)
    {
        for (const auto& [question, answer] : expected) {
            const auto found = actual.find(question);
            ASSERT_NE(found, actual.end()) << what << ": " << question;
            EXPECT_EQ(answer, found->second) << what << ": " << question;
        }
        EXPECT_EQ(expected.size(), actual.size());
    }
    static std::vector<std::string> With(std::vector<std::string> commands,
                                         const std::vector<std::string>& further)
    {
        commands.insert(commands.end(), further.begin(), further.end());
        return commands;
    }

    fs::path GetGeneration() const
    {
        std::ifstream pointer(fs::path(work) / "current");
        std::string name;
        std::getline(pointer, name);
        return fs::path(work) / name;
    }
    std::map<std::string, std::string> ReadSave() const
    {
        std::map<std::string, std::string> files;
        const fs::path generation = GetGeneration();
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(generation)) {
            if (entry.is_regular_file())
                files[entry.path().lexically_relative(generation).string()] = ReadFile(entry.path());
        }
        return files;
    }
    // The same without the times of changes, and without the digests of the files, on which these tell.
    std::map<std::string, std::string> ReadSaveWithoutTimes() const
    {
        std::map<std::string, std::string> files = ReadSave();
        std::string& fixed = files.at("fixed.xml");
        const std::string begin = " updateTime=\"";
        for (std::size_t pos = 0; (pos = fixed.find(begin, pos)) != std::string::npos;)
            fixed.erase(pos, fixed.find('"', pos + begin.size()) + 1 - pos);
        Json session = Json::parse(files.at("host.json"));
        session.erase("files");
        files.at("host.json") = session.dump();
        return files;
    }
    static std::string ReadFile(const fs::path& file)
    {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    static void WriteFile(const fs::path& file, const std::string& content)
    {
        std::ofstream(file, std::ios::binary | std::ios::trunc) << content;
    }

    std::string work = (dir.GetPath() / "work").string();
};

TEST_F(HostSave, ASessionWithoutAnythingComesBack)
{
    ExpectRoundTrip({});
}

TEST_F(HostSave, TheSelectionComesBackInEveryMode)
{
    ExpectRoundTrip({"press region East", "press shop A"});
    ExpectRoundTrip({"press shop A", "press region West", "press day 2024-01-05"});
    ExpectRoundTrip({"mode or", "multi on", "press region East", "press region North"});
    ExpectRoundTrip({"mode and", "multi on", "press region East", "press region West"});
    ExpectRoundTrip({"mode difference", "press region East West"});
    ExpectRoundTrip({"mode difference", "press region West"});
    ExpectRoundTrip({"mode none", "press region East", "press shop A", "press day 2024-01-05"});
    ExpectRoundTrip({"multi on", "press region East North", "press shop B", "release region North"});
}

TEST_F(HostSave, WholeItemsHiddenButtonsAndItemsAsSuchComeBack)
{
    ExpectRoundTrip({"press-all region"});
    ExpectRoundTrip({"press region West", "press-all shop"});
    ExpectRoundTrip({"mode and", "special create shop cll AB A B", "multi on", "press-all shop"});
    ExpectRoundTrip({"mode and", "multi on", "press shop A", "limit 0-2", "press-all region"});
    ExpectRoundTrip({"press region West", "press shop B --hidden"});
    ExpectRoundTrip({"press region West", "press shop B"});
    ExpectRoundTrip({"multi on", "press region West", "press shop A B --hidden", "press day 2024-01-05"});
    ExpectRoundTrip({"select-item shop", "select-item region", "press region East"});
    ExpectRoundTrip({"new-buttons shop on", "mode difference", "press shop A B", "new-buttons region on"});
}

TEST_F(HostSave, TheLimitationComesBackUnderASelection)
{
    ExpectRoundTrip({"limit 0 2-5"});
    ExpectRoundTrip({"limit 0 2-5", "press region West", "press shop A"});
    ExpectRoundTrip({"limit 1-6", "mode or", "press region North"});
    ExpectRoundTrip({"limit 1-6", "mode and", "press region North"});
    ExpectRoundTrip({"limit 1-6", "mode difference", "press region North East"});
    ExpectRoundTrip({"limit 1-6", "mode none", "press region North"});
    ExpectRoundTrip({"limit 1-6", "reset"});
}

TEST_F(HostSave, TextsAndHiddenEmptyValuesComeBack)
{
    ExpectRoundTrip(
        {"alias region East \"The <East> & 'co'\"", "alias shop '(空白)' none", "alias shop B Z"});
    ExpectRoundTrip({"empty-value shop off", "empty-value day off", "press region North"});
}

TEST_F(HostSave, SpecialButtonsOfListsComeBack)
{
    ExpectRoundTrip({"special create region inc Both East West",
                     "special create region inc Kept North --disp-members",
                     "special create region inc All Both North", "special create shop cll AB B A",
                     "special create shop cll None --none", "press region All"});
    ExpectRoundTrip({"special create region inc One East", "special create region inc Two West",
                     "special destroy region One", "press region Two"});
    ExpectRoundTrip({"special create region inc One East", "special create region inc Two West",
                     "special destroy region One", "special create region inc Three North"});
    ExpectRoundTrip({"special create shop cll AB A B", "alias shop AB both", "special members shop both",
                     "press shop both", "press region East"});
}

TEST_F(HostSave, ConditionsComeBackAsTheyWereTyped)
{
    ExpectRoundTrip({"special create shop cll Best --where \"amount  SUM Top 1\""});
    ExpectRoundTrip({"special create shop cll Best --where \"'amount' sum top 1 or (@3 count > 1 and not "
                     "amount ratio < 0.5)\"",
                     "special create region cll Few --where \"amount count bottom 1\"",
                     "press day 2024-01-05"});
    ExpectRoundTrip({"special create shop cll Best --where \"amount sum top 1\"", "press shop Best",
                     "press region East"});
    ExpectRoundTrip({"special create shop cll Best --where \"amount sum top 1\"", "press region West",
                     "press shop Best"});
    ExpectRoundTrip(
        {"special create shop cll Best --where \"amount sum top 2\"", "special where shop Best --clear"});
    ExpectRoundTrip({"special create shop cll Best --where \"amount sum top 2\"",
                     "special where shop Best \"amount average >= 10\"", "limit 0-5"});
}

TEST_F(HostSave, VirtualItemsComeBack)
{
    ExpectRoundTrip({"virtual create Areas", "virtual create Shared --common",
                     "special create Areas virinc Edge --of region East West",
                     "special create Shared virinc Shops --of shop A B",
                     "special create Areas virinc Good --of shop --where \"amount sum top 1\"",
                     "press Areas Edge", "press shop A"});
    ExpectRoundTrip({"virtual create One", "virtual create Two", "virtual destroy One",
                     "virtual rename Two 'The other'",
                     "special create 'The other' virinc V --of region North"});
    ExpectRoundTrip({"special create region inc Both East West", "virtual create Shared --common",
                     "special create Shared virinc V --of region Both", "press Shared V"});
}

TEST_F(HostSave, FormsGroupsAndTheCalendarComeBack)
{
    ExpectRoundTrip({"calendar --start-month 10 --cut-off-day 5 --week-begins monday"});
    ExpectRoundTrip({"calendar --start-month 1 --cut-off-day 5", "form day fiscal-quarter"});
    ExpectRoundTrip({"form day --pattern '{yyyy}/{m}'", "form at hour-minute", "press at #4160000002",
                     "press day 2024/1"});
    ExpectRoundTrip({"form day week-weekday", "special create region cll Best --where \"amount sum top 1\"",
                     "multi on", "new-buttons day on", "press-all day"});
}

TEST_F(HostSave, JapaneseTextsComeBackInBothCodePages)
{
    for (const std::string& content : {SJIS(JAPANESE_TEXT), UTF8(JAPANESE_TEXT)}) {
        table = dir.WriteFile("japanese.csv", content);
        work = (dir.GetPath() / std::u8string(u8"保存 表")).string();
        const std::vector<std::string> commands = {
            "alias 地域 関東 東の方", "special create 商品 cll 上位 --where \"金額 sum top 1\"",
            "virtual create 商圏", "special create 商圏 virinc 東 --of 地域 東の方", "press 商圏 東"};
        const State made = CHostState::Ask(table, commands);
        LastAnswer(With(commands, {"save '" + work + "'"}));
        ExpectSame(made, CHostState::Ask(table, {"load '" + work + "'"}), "loaded");
    }
}

TEST_F(HostSave, TheSampleTableComesBack)
{
    table = KZC_SAMPLES_DIR "/sales_sjis.csv";
    const std::vector<std::string> commands = {
        "special create 商品 cll 上位 --where \"金額 sum top 3 and 数量 count > 2\"",
        "form 売上日 fiscal-quarter",
        "special create 店舗 inc 首都圏 渋谷店 横浜店",
        "limit 0-1500",
        "press 地域 関東",
        "press 分類 食品"};
    const State made = CHostState::Ask(table, commands);
    LastAnswer(With(commands, {"save " + work}));
    EXPECT_EQ(LastAnswer({"load " + work}).at("asSaved"), true);
    ExpectSame(made, CHostState::Ask(table, {"load " + work}), "loaded");
}

TEST_F(HostSave, WhatIsSwitchedOffIsLeftOutAndTold)
{
    const std::vector<std::string> commands = {"special create region inc Both East West",
                                               "special create region inc Only North",
                                               "special effective region Both off",
                                               "virtual create Areas",
                                               "special create Areas virinc Edge --of region East",
                                               "virtual effective Areas off"};
    const Json saved = LastAnswer(With(commands, {"save " + work}));
    EXPECT_EQ(saved.at("leftOut"), Json::parse(R"({"items":1,"buttons":1})"));
    const std::vector<Json> answers = Answers({"load " + work, "special list --all", "virtual list"});
    EXPECT_EQ(answers[0].at("asSaved"), true);
    EXPECT_EQ(Pluck(answers[1].at("special"), "text"), Json({"Only"}));
    EXPECT_TRUE(answers[2].at("virtual").empty());
    const std::string shown = CHostProcess::Run({table, "-c", "load " + work, "-c",
                                                 "special effective region Only off", "-c", "save " + work})
                                  .GetOutput();
    EXPECT_NE(shown.find("; switched off and left out: 1 button."), std::string::npos) << shown;
}

TEST_F(HostSave, SavingChangesNothingInTheSession)
{
    const std::vector<std::string> commands = {"special create shop cll Best --where \"amount sum top 1\"",
                                               "limit 0-5", "multi on", "press region East",
                                               "press shop Best"};
    ExpectSame(CHostState::Ask(table, commands), CHostState::Ask(table, With(commands, {"save " + work})),
               "saved");
}

TEST_F(HostSave, TheSessionGoesOnBehindALoad)
{
    LastAnswer(
        {"special create shop cll Best --where \"amount sum top 1\"", "press region East", "save " + work});
    const std::vector<std::string> further = {"press shop Best",
                                              "special create region inc Both East West",
                                              "virtual create Areas",
                                              "special where shop Best \"amount sum bottom 1\"",
                                              "press day 2024-01-05",
                                              "clear",
                                              "reset",
                                              "press shop B"};
    const std::vector<std::string> made = {"special create shop cll Best --where \"amount sum top 1\"",
                                           "press region East"};
    for (std::size_t count = 0; count <= further.size(); ++count) {
        const std::vector<std::string> some(further.begin(),
                                            further.begin() + static_cast<std::ptrdiff_t>(count));
        ExpectSame(CHostState::Ask(table, With(made, some)),
                   CHostState::Ask(table, With({"load " + work}, some)),
                   count == 0 ? "loaded" : further[count - 1].c_str());
    }
}

TEST_F(HostSave, EachSaveReplacesTheOneBeforeAndLeavesOtherFilesAlone)
{
    fs::create_directory(work);
    WriteFile(fs::path(work) / "notes.txt", "mine");
    LastAnswer({"press region East", "save " + work});
    LastAnswer({"press region West", "save " + work, "press region North", "save " + work});
    EXPECT_EQ(LastAnswer({"load " + work, "records"}).at("count"), 2);
    EXPECT_EQ(ReadFile(fs::path(work) / "notes.txt"), "mine");
    EXPECT_EQ(std::distance(fs::directory_iterator(work), fs::directory_iterator()), 4);
}

TEST_F(HostSave, ADirectoryMayBeRelativeAndMissing)
{
    const std::string command =
        "cd '" + dir.GetPath().string() + "' && exec '" + KZCBUI_PATH +
        "' --json -c 'press region East' -c 'save new/one' -c clear -c 'load new/one' -c records "
        "sales.csv > answers";
    EXPECT_EQ(std::system(command.c_str()), 0);
    const std::string answers = ReadFile(dir.GetPath() / "answers");
    EXPECT_NE(answers.find("{\"ok\":true,\"count\":3}"), std::string::npos) << answers;
}

TEST_F(HostSave, ADirectoryThatCannotHoldASaveIsRefused)
{
    const std::string file = dir.WriteFile("file", "a file");
    EXPECT_EQ(Error("save " + file), "\"" + file + "\" is no directory.");
    EXPECT_EQ(Error("load " + file), "\"" + file + "\" is no directory.");
    EXPECT_EQ(Error("load " + work), "There is no directory \"" + work + "\".");
    EXPECT_NE(Error("save " + file + "/below").find("cannot be"), std::string::npos);
    EXPECT_EQ(Error("load " + dir.GetPath().string()),
              "There is no save in \"" + dir.GetPath().string() + "\".");
    EXPECT_NE(Error("save ''").find("The name of a directory is empty; expected: save DIRECTORY"),
              std::string::npos);
    EXPECT_NE(Error("save").find("expected: save DIRECTORY"), std::string::npos);
    EXPECT_NE(Error("save '" + work + "\\x'").find("The engine cannot name the directory"),
              std::string::npos);
    table = dir.WriteFile("sjis.csv", SJIS(JAPANESE_TEXT));
    EXPECT_NE(CHostProcess::RunCommands(table, {"save " + work + "é"})
                  .GetAnswers()
                  .at(0)
                  .at("error")
                  .get<std::string>()
                  .find("in code page 932; name another one."),
              std::string::npos);
}

TEST_F(HostSave, ATextThatXMLCannotHoldRefusesTheSaveAndTheEarlierOneStays)
{
    LastAnswer({"press region East", "save " + work});
    const std::string answer = Error("save " + work, {"alias shop A \"bell\x07\""});
    EXPECT_TRUE(answer.starts_with("\"common.xml\" cannot be written: ")) << answer;
    EXPECT_EQ(LastAnswer({"load " + work, "records"}).at("count"), 3);
    EXPECT_EQ(std::distance(fs::directory_iterator(work), fs::directory_iterator()), 3);
}

TEST_F(HostSave, AnotherTableIsToldByItsDifference)
{
    LastAnswer({"press region East", "save " + work});
    const std::string before = "The save is of another table: ";
    const auto errorOf = [&](const std::string& content) {
        table = dir.WriteFile("other.csv", content);
        return CHostProcess::RunCommands(table, {"load " + work}).GetAnswers().at(0).value("error", "");
    };
    const auto replaced = [](std::string from, const std::string& to) {
        std::string text = TABLE_TEXT;
        return text.replace(text.find(from), from.size(), to);
    };
    EXPECT_EQ(errorOf(replaced("East,B,20", "East,B,21")), before + "its field \"amount\" had other values.");
    EXPECT_EQ(errorOf(TABLE_TEXT + "East,A,4,2024-01-06,09:30\n"),
              before + "it had 7 records, this one has 8.");
    EXPECT_EQ(errorOf(replaced("region", "area")),
              before + "its field 1 was called \"region\", here it is called \"area\".");
    EXPECT_EQ(errorOf(replaced("East,B,20", "East,B,x")),
              before + "its field \"amount\" was of type number, here it is of type text.");
    EXPECT_EQ(errorOf("region\nEast\n"), before + "it had 5 fields, this one has 1.");
    EXPECT_EQ(CHostProcess::Run({"--json", "--code-page", "932", dir.WriteFile("sales.csv", TABLE_TEXT), "-c",
                                 "load " + work})
                  .GetAnswers()
                  .at(0)
                  .value("error", ""),
              before + "it was read in code page 65001, this one in code page 932.");
}

TEST_F(HostSave, ADamagedFileIsToldAndTheSessionStays)
{
    LastAnswer(
        {"special create shop cll Best --where \"amount sum top 1\"", "press region East", "save " + work});
    const std::vector<std::string> before = {"press region West", "special create region inc Both East West"};
    const fs::path generation = GetGeneration();
    for (const auto& [name, content] : ReadSave()) {
        std::string flipped = content;
        flipped[flipped.size() / 2] = static_cast<char>(flipped[flipped.size() / 2] ^ 0x10);
        for (const std::string& damaged :
             {flipped, content.substr(0, content.size() / 2), std::string(), content + "x"}) {
            WriteFile(generation / name, damaged);
            if (name.starts_with("BUI"))
                continue; // built anew, as another test tells
            const std::string error = Error("load " + work, before);
            if (name == "host.json") { // what it holds is told apart
                EXPECT_NE(error, "");
            } else {
                EXPECT_EQ(error, "The save is damaged: its file \"" + name + "\" is not as it was written.");
            }
        }
        fs::remove(generation / name);
        if (!name.starts_with("BUI")) {
            EXPECT_NE(Error("load " + work, before).find(name), std::string::npos);
        }
        WriteFile(generation / name, content);
    }
    EXPECT_EQ(LastAnswer({"load " + work}).at("asSaved"), true);
}

TEST_F(HostSave, AHostileSessionFileIsRefusedAndTheSessionStays)
{
    LastAnswer({"special create shop cll Best --where \"amount sum top 1\"",
                "special create region inc Both East West", "limit 0-5", "press region East",
                "save " + work});
    const fs::path file = GetGeneration() / "host.json";
    const Json whole = Json::parse(ReadFile(file));
    const auto errorWith = [&](const char* pointer, const Json& value) {
        Json changed = whole;
        changed[Json::json_pointer(pointer)] = value;
        WriteFile(file, changed.dump());
        return Error("load " + work, {"press region West"});
    };
    EXPECT_EQ(errorWith("/format", 3),
              "\"host.json\" is damaged: It is of format 3; this program knows those up to 2.");
    for (const DWORD fldID : {2u, 4294967295u}) {
        EXPECT_EQ(errorWith("/table/fields/0/id", fldID),
                  "\"host.json\" is damaged: its fields do not have identifiers of their own.");
    }
    EXPECT_EQ(errorWith("/table/fields/0/id", 9), "\"common.xml\" lacks the item of the field 9.");
    EXPECT_EQ(errorWith("/limitation/0", Json({0, 4294967295u})),
              "The limitation names records that the table does not have.");
    EXPECT_EQ(errorWith("/selection/0/item", 77),
              "The selection names buttons that the item @77 does not have.");
    EXPECT_EQ(errorWith("/selection/0/buttons/0", Json({1, 4294967295u})),
              "The selection names buttons that the item @1 does not have.");
    EXPECT_EQ(errorWith("/selection/0/buttons/0", Json({5000, 5000})),
              "The selection names buttons that the item @1 does not have.");
    EXPECT_NE(errorWith("/conditions/0/text", "amount sum best 1").find("@2 cannot be read any more: "),
              std::string::npos);
    EXPECT_NE(errorWith("/conditions/0/text", "amounts sum top 1").find("There is no item \"amounts\""),
              std::string::npos);
    for (const DWORD btnID : {2u, 7u, 4294967295u}) {
        EXPECT_NE(errorWith("/conditions/0/button", btnID)
                      .find(" belongs to no button that picks its members by one."),
                  std::string::npos);
    }
    EXPECT_NE(errorWith("/conditions/0/item", 9).find(" belongs to no button"), std::string::npos);
    EXPECT_EQ(errorWith("/newButtons", Json({9})),
              "The items whose new buttons come up selected are not all there.");
    EXPECT_EQ(errorWith("/selectedItems", Json({9})), "The selected items are not all there.");
    EXPECT_EQ(errorWith("/files/0/name", "none"), "The save is damaged: its file \"none\" is gone.");
}

TEST_F(HostSave, WhatDoesNotShowAsItDidIsTold)
{
    LastAnswer({"press region East", "save " + work});
    const fs::path file = GetGeneration() / "host.json";
    Json changed = Json::parse(ReadFile(file));
    changed["state"] = "0000000000000000";
    WriteFile(file, changed.dump());
    EXPECT_EQ(LastAnswer({"load " + work}).at("asSaved"), false);
    EXPECT_NE(CHostProcess::Run({table, "-c", "load " + work}).GetOutput().find("differs from the save."),
              std::string::npos);
}

// The engine's files as another hand may have made them, with digests that go with them.
TEST_F(HostSave, FilesThatTheEngineRefusesAreToldAndTheSessionStays)
{
    LastAnswer({"special create region inc Both East West", "press region East", "save " + work});
    const fs::path generation = GetGeneration();
    const Json whole = Json::parse(ReadFile(generation / "host.json"));
    const auto errorWithout = [&](const std::vector<std::pair<std::string, std::string>>& contents) {
        Json changed = whole;
        changed["files"] = Json::array();
        WriteFile(generation / "host.json", changed.dump());
        std::map<std::string, std::string> former;
        for (const auto& [name, content] : contents) {
            former[name] = ReadFile(generation / name);
            WriteFile(generation / name, content);
        }
        const std::string error = Error("load " + work, {"press region West"});
        for (const auto& [name, content] : former)
            WriteFile(generation / name, content);
        return error;
    };
    EXPECT_NE(errorWithout({{"common.xml", "<a"}}).find("\"common.xml\" cannot be read: line 1: "),
              std::string::npos);
    EXPECT_NE(errorWithout({{"common.xml", "<a/>"}}).find("\"common.xml\" is not what the engine writes"),
              std::string::npos);
    EXPECT_NE(errorWithout({{"fixed.xml", "<a/>"}}).find("\"fixed.xml\" is not what the engine writes"),
              std::string::npos);
    EXPECT_EQ(LastAnswer({"load " + work}).at("asSaved"), true);
}

TEST_F(HostSave, LostLinkTablesAreBuiltAnew)
{
    const std::vector<std::string> commands = {"field delete at",
                                               "rows delete 1 1",
                                               "special create region inc Both East West",
                                               "special create shop cll Best --where \"amount sum top 1\"",
                                               "virtual create Areas",
                                               "special create Areas virinc Main --of region East",
                                               "form day year-month",
                                               "alias region North Nord",
                                               "limit 0-4",
                                               "press region Both"};
    const std::string changed = (dir.GetPath() / "changed.csv").string();
    std::vector<std::string> saving = commands;
    saving.insert(saving.end(), {"table save " + changed, "save " + work});
    LastAnswer(saving);
    table = changed;
    const std::map<std::string, Json> saved = CHostState::Ask(table, {"load " + work});
    EXPECT_EQ(LastAnswer({"load " + work}).at("rebuilt"), false);
    const fs::path generation = GetGeneration();
    const auto expectRebuilt = [&](const std::string& what) {
        const Json answer = LastAnswer({"load " + work});
        EXPECT_EQ(answer.at("rebuilt"), true) << what;
        EXPECT_EQ(answer.at("asSaved"), true) << what;
        // Nothing of the building is left to be taken back.
        EXPECT_EQ(LastAnswer({"load " + work, "history"}).at("changes"), Json::array());
    };
    std::size_t tested = 0;
    for (const auto& [name, content] : ReadSave()) {
        if (!name.starts_with("BUI") || content.empty())
            continue;
        std::string flipped = content;
        flipped[flipped.size() / 2] = static_cast<char>(flipped[flipped.size() / 2] ^ 0x10);
        for (const std::string& damaged : {flipped, content.substr(0, content.size() / 2), std::string()}) {
            WriteFile(generation / name, damaged);
            expectRebuilt(name);
        }
        fs::remove(generation / name);
        expectRebuilt(name);
        EXPECT_EQ(CHostState::Ask(table, {"load " + work}), saved) << name;
        WriteFile(generation / name, content);
        ++tested;
    }
    EXPECT_GT(tested, 4u);
    fs::remove_all(generation / "BUI");
    EXPECT_EQ(CHostState::Ask(table, {"load " + work}), saved);
    EXPECT_NE(CHostProcess::Run({table, "-c", "load " + work}).GetOutput().find("were built anew from"),
              std::string::npos);
    // What was built anew is saved like any other.
    LastAnswer({"load " + work, "save " + work});
    EXPECT_EQ(LastAnswer({"load " + work}).at("rebuilt"), false);
    EXPECT_EQ(CHostState::Ask(table, {"load " + work}), saved);
}

TEST_F(HostSave, LinkTablesThatTheEngineCannotUseAreBuiltAnew)
{
    LastAnswer({"press region East", "save " + work});
    const fs::path generation = GetGeneration();
    Json session = Json::parse(ReadFile(generation / "host.json"));
    session["files"] = Json::array(); // so that no digest tells it
    WriteFile(generation / "host.json", session.dump());
    EXPECT_EQ(LastAnswer({"load " + work}).at("rebuilt"), false);
    for (const auto& [name, content] : ReadSave()) {
        if (!name.starts_with("BUI") || !name.ends_with("/0.dat"))
            continue;
        WriteFile(generation / name, content.substr(4));
        EXPECT_EQ(LastAnswer({"load " + work}).at("rebuilt"), true) << name;
        EXPECT_EQ(LastAnswer({"load " + work}).at("asSaved"), true) << name;
        WriteFile(generation / name, content);
    }
}

TEST_F(HostSave, TheDocumentShowsTheSessionFileAsItIs)
{
    table = KZC_SAMPLES_DIR "/sales_sjis.csv";
    LastAnswer({"special create 商品 cll 上位 --where '金額 sum top 3'", "limit 0-999 1500",
                "press 地域 関東 関西", "save " + work});
    nlohmann::ordered_json whole = nlohmann::ordered_json::parse(ReadFile(GetGeneration() / "host.json"));
    for (const char* list : {"/table/fields", "/files"}) {
        nlohmann::ordered_json& cut = whole.at(nlohmann::ordered_json::json_pointer(list));
        cut = {cut.at(0), "..."};
    }
    std::string shown;
    for (const auto& [key, value] : whole.items())
        shown += (shown.empty() ? "{\"" : ",\n\"") + key + "\":" + value.dump();
    shown += "}\n";
    const std::string cutOff = "\"...\"";
    for (std::size_t pos = 0; (pos = shown.find(cutOff)) != std::string::npos;)
        shown.replace(pos, cutOff.size(), "...");
    EXPECT_NE(ReadFile(KZC_DOC_DIR "/save-directory.md").find("```\n" + shown + "```\n"), std::string::npos)
        << shown;
}

} // namespace NSKZ::Test
