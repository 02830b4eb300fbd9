// Changes of the table and taking them back.

#include "TableState.h"

#include <csignal>
#include <fstream>
#include <functional>
#include <streambuf>

#include <sys/stat.h>

namespace NSKZ::Test {

namespace {

namespace fs = std::filesystem;

const std::string MORE_ROWS = "at,region,amount,shop,day\n" // in another order
                              "08:00,South,99,D,2024-02-01\n"
                              "09:30,East,1,A,2024-01-05\n";

} // namespace

class HostTable : public HostFixture
{
protected:
    HostTable()
        : codePage(_getmbcp()), more(dir.WriteFile("more.csv", MORE_ROWS)),
          grades(dir.WriteFile("grades.csv", "grade,note\n1,a\n2,\n3,c\n1,a\n2,b\n3,c\n1,a\n"))
    {}

    std::string In(const std::string& name) const { return (dir.GetPath() / name).string(); }

    // The buttons of an item with records, by their texts, and how many records they have.
    static std::map<std::string, DWORD> Btns(CHostSession& session, const std::string& item)
    {
        std::map<std::string, DWORD> records;
        const Json answer = session.RunWell("buttons --all " + item);
        for (const Json& btn : answer.at("buttons")) {
            if (btn.at("records") != 0)
                records[btn.at("text")] = btn.at("records");
        }
        return records;
    }
    using CBtns = std::map<std::string, DWORD>;

    // A session with something of everything: special buttons by list and by condition, a virtual item,
    // groups of dates, a selection of two levels, a limitation.
    std::unique_ptr<CHostSession> MakeRichSession(const std::string& path) const
    {
        auto session = std::make_unique<CHostSession>(path);
        for (const char* command :
             {"special create region inc Both East West --disp-members", "special create shop cll AB A B",
              "special create shop cll Best --where 'amount sum top 1'", "virtual create Areas",
              "special create Areas virinc Main --of region East", "form day year-month",
              "alias region North Nord", "select-item amount", "empty-value shop off", "limit 0-5",
              "press region East Nord", "press at 09:30"})
            session->RunWell(command);
        return session;
    }

    CCodePageScope codePage;
    std::string more;
    std::string grades;
};

// ---- Records

TEST_F(HostTable, RowsAreInsertedByTheNamesOfTheirColumns)
{
    CHostSession session(table);
    session.RunWell("press region East");
    const Json answer = session.RunWell("rows insert 3 " + more);
    EXPECT_EQ(answer, Json::parse(R"({"ok":true,"result":true,"tableRecords":9,"records":9,
        "clearedSelection":true,"held":0,"position":3,"rows":2})"));
    EXPECT_EQ(Btns(session, "region"), (CBtns{{"East", 4}, {"West", 2}, {"South", 1}, {"North", 2}}));
    EXPECT_EQ(Btns(session, "shop"), (CBtns{{"A", 4}, {"B", 2}, {"C", 1}, {"D", 1}, {"(空白)", 1}}));
    EXPECT_EQ(session.RunWell("records-of region South --list").at("list"), Json({3}));
    EXPECT_EQ(session.RunWell("records-of shop C --list").at("list"), Json({5}));
    EXPECT_EQ(session.RunWell("sum region amount").at("total"), 138.5);
    EXPECT_EQ(session.RunWell("groups day month").at("groups").size(), 2u);
}

TEST_F(HostTable, RowsAreInsertedByPlaceWithoutAHeader)
{
    CHostSession session(table);
    const std::string plain = dir.WriteFile("plain.csv", "South;D;1;;\nSouth;D;2;;08:00\n");
    session.RunWell("rows insert end " + plain + " --no-header --delimiter ';'");
    EXPECT_EQ(session.RunWell("records-of region South --list").at("list"), Json({7, 8}));
    session.RunWell("rows insert 0 " + plain + " --no-header --delimiter=';'");
    EXPECT_EQ(session.RunWell("records-of region South --list").at("list"), Json({0, 1, 9, 10}));
    EXPECT_EQ(session.RunWell("undo").at("tableRecords"), 9);
    EXPECT_EQ(session.RunWell("records-of region South --list").at("list"), Json({7, 8}));
}

TEST_F(HostTable, RowsOfAnotherEncodingAreInserted)
{
    CHostSession session(dir.WriteFile("japanese.csv", UTF8(JAPANESE_TEXT)));
    const std::string rows = dir.WriteFile("sjis.csv", SJIS(u8"商品,地域,金額\n表,関東,7\n"));
    session.RunWell("rows insert 1 " + rows);
    EXPECT_EQ(Btns(session, "地域"), (CBtns{{"関東", 3}, {"関西", 1}, {"九州", 1}}));
    EXPECT_EQ(Btns(session, "商品").at("表"), 1u);
    EXPECT_NE(session.Run("rows insert 1 " + rows + " --code-page 65001")
                  .value("error", "")
                  .find("line 1: The text is not valid UTF-8"),
              std::string::npos);
}

TEST_F(HostTable, RowsAreDeleted)
{
    CHostSession session(table);
    const Json answer = session.RunWell("rows delete 2 2");
    EXPECT_EQ(answer, Json::parse(R"({"ok":true,"result":true,"tableRecords":5,"records":5,
        "clearedSelection":false,"held":0,"position":2,"rows":2})"));
    EXPECT_EQ(Btns(session, "region"), (CBtns{{"East", 3}, {"North", 2}}));
    EXPECT_EQ(session.RunWell("sum shop amount").at("total"), 43.5);
    EXPECT_EQ(session.Run("press region West").at("ok"), true); // its button is there, hidden
    session.RunWell("clear");
    session.RunWell("rows delete 0 5");
    EXPECT_EQ(session.RunWell("records").at("count"), 0);
    EXPECT_EQ(Btns(session, "region"), CBtns{});
    session.RunWell("rows insert 0 " + more);
    EXPECT_EQ(Btns(session, "region"), (CBtns{{"South", 1}, {"East", 1}}));
    session.RunWell("undo");
    session.RunWell("undo");
    session.RunWell("undo");
    EXPECT_EQ(Btns(session, "region"), (CBtns{{"East", 3}, {"West", 2}, {"North", 2}}));
}

TEST_F(HostTable, TheLimitationFollowsTheRecordsAndComesBack)
{
    CHostSession session(table);
    session.RunWell("limit 1 3 5");
    session.RunWell("rows delete 0 2");
    EXPECT_EQ(session.RunWell("records --list").at("list"), Json({1, 3}));
    session.RunWell("rows insert 2 " + more);
    EXPECT_EQ(session.RunWell("records --list").at("list"), Json({1, 5}));
    session.RunWell("undo");
    session.RunWell("undo");
    EXPECT_EQ(session.RunWell("records --list").at("list"), Json({1, 3, 5}));
}

// ---- Fields

TEST_F(HostTable, ColumnsBecomeItems)
{
    CHostSession session(table);
    session.RunWell("press region East");
    const Json answer = session.RunWell("field insert " + grades + " --type grade=text --position 1");
    EXPECT_EQ(answer.at("fields"), Json::parse(R"([{"item":6,"name":"grade","type":"text"},
                                                    {"item":7,"name":"note","type":"text"}])"));
    EXPECT_EQ(answer.at("clearedSelection"), true);
    EXPECT_EQ(Btns(session, "grade"), (CBtns{{"1", 3}, {"2", 2}, {"3", 2}}));
    EXPECT_EQ(Btns(session, "note"), (CBtns{{"a", 3}, {"b", 1}, {"c", 2}, {"(空白)", 1}}));
    session.RunWell("press grade 1");
    EXPECT_EQ(session.RunWell("records --list").at("list"), Json({0, 3, 6}));
    const std::string saved = In("saved.csv");
    session.RunWell("table save " + saved);
    std::ifstream file(saved);
    std::string header;
    std::getline(file, header);
    EXPECT_EQ(header, "region,grade,note,shop,amount,day,at");
}

TEST_F(HostTable, ColumnsWithoutAHeaderAreNumberedOn)
{
    CHostSession session(table);
    const std::string plain = dir.WriteFile("plain.csv", "1\n2\n3\n1\n2\n3\n1\n");
    EXPECT_EQ(session.RunWell("field insert --no-header " + plain).at("fields"),
              Json::parse(R"([{"item":6,"name":"F6","type":"number"}])"));
    session.RunWell("field delete region");
    EXPECT_EQ(session.RunWell("field insert --no-header " + plain).at("fields").at(0).at("name"), "F7");
    EXPECT_EQ(session.RunWell("sum F6 F7").at("total"), 13);
}

TEST_F(HostTable, ADeletedFieldTakesItsItemAlongAndBringsItBack)
{
    CHostSession session(table);
    session.RunWell("special create region inc Both East West");
    session.RunWell("virtual create Areas");
    session.RunWell("special create Areas virinc Main --of region East");
    session.RunWell("select-item region");
    session.RunWell("press region Both");
    const std::map<std::string, Json> before = CHostState::Ask(session);
    const Json answer = session.RunWell("field delete region");
    EXPECT_EQ(answer.at("item"), 1);
    EXPECT_EQ(answer.at("name"), "region");
    EXPECT_EQ(answer.at("clearedSelection"), true);
    EXPECT_EQ(Pluck(session.RunWell("items").at("items"), "name"),
              Json({"shop", "amount", "day", "at", "Areas"}));
    for (const char* command : {"press region East", "press @1 East", "buttons @1", "field delete @1",
                                "special list @1", "records @1"})
        EXPECT_EQ(session.Run(command).at("ok"), false) << command;
    EXPECT_EQ(session.RunWell("selected-items").at("items"), Json::array());
    EXPECT_EQ(session.RunWell("special list --all").at("special").at(0).at("refItem"), Json());
    EXPECT_EQ(session.RunWell("undo").at("result"), true);
    ExpectSameState(CHostState::Ask(session), before);
}

TEST_F(HostTable, AnItemGetsOtherValues)
{
    CHostSession session(table);
    const std::string data = dir.WriteFile("data.csv", "x,region\n1,Sea\n2,Sea\n3,East\n4,\n5,x\n6,y\n7,z\n");
    const Json answer = session.RunWell("field data region " + data + " --column region");
    EXPECT_EQ(answer.at("item"), 1);
    EXPECT_EQ(answer.at("type"), "text");
    EXPECT_EQ(Btns(session, "region"),
              (CBtns{{"Sea", 2}, {"East", 1}, {"(空白)", 1}, {"x", 1}, {"y", 1}, {"z", 1}}));
    EXPECT_EQ(Btns(session, "shop").at("A"), 3u);
    session.RunWell("field data amount " + data);
    EXPECT_EQ(session.RunWell("sum region amount").at("total"), 28);
    session.RunWell("undo");
    EXPECT_EQ(session.RunWell("sum region amount").at("total"), 38.5);
    session.RunWell("undo");
    EXPECT_EQ(Btns(session, "region"), (CBtns{{"East", 3}, {"West", 2}, {"North", 2}}));
}

TEST_F(HostTable, AnItemOfAnotherTypeIsANewOne)
{
    CHostSession session(table);
    session.RunWell("special create amount cll Few 10 20");
    session.RunWell("press amount Few");
    const std::map<std::string, Json> before = CHostState::Ask(session);
    const Json answer = session.RunWell("field type amount text");
    EXPECT_EQ(answer.at("item"), 6);
    EXPECT_EQ(answer.at("type"), "text");
    EXPECT_EQ(session.RunWell("special list").at("special"), Json::array());
    EXPECT_EQ(session.Run("sum region amount").at("ok"), false);
    EXPECT_EQ(session.RunWell("field type amount date").at("type"), "date:ymd-hyphen");
    EXPECT_EQ(session.RunWell("field type shop time:hm").at("type"), "time:hm");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(session.RunWell("undo").at("result"), true);
    ExpectSameState(CHostState::Ask(session), before);
}

TEST_F(HostTable, DatesAndTimesAreReadInAnotherForm)
{
    CHostSession session(dir.WriteFile("days.csv", "day,at\n01/02/2024,9:00\n03/04/2024,10:00\n,\n"));
    session.RunWell("form day year-month");
    const auto months = [&] { return Pluck(session.RunWell("groups day month").at("groups"), "number"); };
    const std::map<std::string, Json> before = CHostState::Ask(session);
    const Json monthsBefore = months();
    const Json answer = session.RunWell("field form day dmy-slash");
    EXPECT_EQ(answer.at("item"), 1);
    EXPECT_EQ(answer.at("type"), "date:dmy-slash");
    EXPECT_NE(months(), monthsBefore);
    session.RunWell("field type day date:mdy-slash"); // the same kind: the item stays
    EXPECT_EQ(months(), monthsBefore);
    EXPECT_EQ(session.RunWell("items").at("items").at(0).at("id"), 1);
    EXPECT_EQ(session.RunWell("field form at hms").at("type"), "time:hms");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(session.RunWell("undo").at("result"), true);
    EXPECT_EQ(months(), monthsBefore);
    ExpectSameState(CHostState::Ask(session), before);
}

TEST_F(HostTable, CllButtonsThatAFormSwitchesOffComeBackWithIt)
{
    CHostSession session(dir.WriteFile("days.csv", "day,x\n01/02/2024,a\n03/04/2024,b\n05/06/2024,b\n"));
    session.RunWell("special create day cll Two 01/02/2024 03/04/2024");
    session.RunWell("press x b");
    const std::map<std::string, Json> before = CHostState::Ask(session);
    session.RunWell("field form day dmy-slash");
    EXPECT_EQ(session.RunWell("special list --all").at("special").at(0).at("effective"), false);
    EXPECT_EQ(session.RunWell("undo").at("result"), true);
    ExpectSameState(CHostState::Ask(session), before);
}

TEST_F(HostTable, TheCalendarIsTakenBackToo)
{
    CHostSession session(table);
    session.RunWell("form day fiscal-half");
    session.RunWell("press day #" +
                    std::to_string(session.RunWell("buttons day").at("buttons").at(0).at("id").get<DWORD>()));
    const std::map<std::string, Json> before = AskWithoutLeftOver(session);
    session.RunWell("calendar --start-month 1 --cut-off-day 10 --week-begins monday");
    EXPECT_NE(AskWithoutLeftOver(session), before);
    EXPECT_EQ(session.RunWell("history").at("changes"),
              Json({"calendar --start-month 1 --cut-off-day 10 --week-begins monday"}));
    EXPECT_EQ(session.RunWell("undo").at("result"), true);
    ExpectSameState(AskWithoutLeftOver(session), before);
}

TEST_F(HostTable, ASelectedGroupIsSelectedAgainWhereItHasAnotherIdentifier)
{
    CHostSession session(dir.WriteFile("days.csv", "day,x\n01-02-2024,a\n02-02-2024,b\n03-05-2024,b\n"));
    session.RunWell("field form day dmy-hyphen");
    session.RunWell("form day year-month");
    session.RunWell("rows insert 0 " + dir.WriteFile("rows.csv", "day,x\n01-01-2020,c\n"));
    session.RunWell("rows insert end " + dir.WriteFile("rows.csv", "day,x\n01-01-2019,c\n"));
    session.RunWell("press day 2020/01 2024/05");
    const std::map<std::string, Json> before = AskByGroups(session);
    const Json selected = session.RunWell("selection").at("selection");
    session.RunWell("field form day mdy-hyphen");
    EXPECT_EQ(session.RunWell("undo").at("result"), true);
    EXPECT_NE(session.RunWell("selection").at("selection"), selected); // the identifiers
    ExpectSameState(AskByGroups(session), before);
}

// ---- Undo

TEST_F(HostTable, EveryChangeTakenBackLeavesEverythingAsItWas)
{
    const std::string days =
        dir.WriteFile("data.csv", "day\n2024-01-05\n2024-02-01\n\n2024-03-01\n2024-01-05\nx\n2023-01-01\n");
    const std::string rows = dir.WriteFile("days.csv", "day\n2024-01-05\n2024-02-01\n\"\"\n2024-03-01\n"
                                                       "2024-01-05\nx\n2023-01-01\n");
    for (const std::vector<std::string>& commands : std::vector<std::vector<std::string>>{
             {"rows insert 0 " + more},
             {"rows insert 3 " + more},
             {"rows insert end " + more},
             {"rows delete 0 1"},
             {"rows delete 2 4"},
             {"rows delete 6 1"},
             {"rows delete 0 7"},
             {"field insert " + grades},
             {"field insert " + grades + " --position 0 --type grade=text"},
             {"field delete region"},
             {"field delete shop"},
             {"field delete amount"},
             {"field delete day"},
             {"field data day " + rows},
             {"field data shop " + grades},
             {"field data amount " + grades},
             {"field type amount text"},
             {"field type day text"},
             {"field type region number"},
             {"field form day dmy-hyphen"},
             {"field form at hms"},
             {"calendar --start-month 1 --cut-off-day 5"},
             {"rows insert 0 " + more + " --hold", "refresh"},
             {"rows insert 2 " + more + " --hold", "refresh"},
             {"rows delete 0 2 --hold", "refresh"},
             {"rows delete 3 4 --hold", "refresh"},
             {"rows delete 0 7 --hold", "refresh"},
             {"field insert " + grades + " --hold", "field delete grade --hold", "refresh"},
             {"rows insert 2 " + more + " --hold", "field delete region --hold", "refresh"},
             {"rows delete 2 2 --hold", "field delete amount --hold", "field type shop number --hold",
              "field form day dmy-hyphen --hold", "refresh"},
             {"field insert " + grades + " --hold", "rows delete 1 3 --hold", "field type day text --hold",
              "refresh"},
             {"field insert " + grades + " --hold", "field data region " + rows + " --hold",
              "field form at hms --hold", "field delete shop --hold", "refresh"},
             {"field data region " + rows + " --hold", "rows insert end " + more + " --hold", "refresh"},
         }) {
        const std::unique_ptr<CHostSession> session = MakeRichSession(table);
        const std::map<std::string, Json> before = AskWithoutLeftOver(*session);
        for (const std::string& command : commands) {
            SCOPED_TRACE(command);
            EXPECT_NE(session->RunWell(command).value("result", Json(true)), false);
        }
        EXPECT_EQ(session->RunWell("history").at("changes").size(), 1u);
        const Json undone = session->RunWell("undo");
        EXPECT_EQ(undone.at("result"), true) << commands.front();
        EXPECT_EQ(undone.at("command"), commands.back());
        EXPECT_EQ(undone.at("left"), 0);
        SCOPED_TRACE(commands.front());
        ExpectSameState(AskWithoutLeftOver(*session), before);
    }
}

TEST_F(HostTable, ChangesAreTakenBackFromTheNewestOn)
{
    CHostSession session(table);
    const std::vector<std::string> commands = {"rows delete 0 2", "field delete shop",
                                               "field type amount text"};
    for (const std::string& command : commands)
        session.RunWell(command);
    EXPECT_EQ(session.RunWell("history").at("changes"), Json(commands));
    EXPECT_EQ(session.RunWell("undo").at("command"), commands[2]);
    EXPECT_EQ(session.RunWell("undo").at("left"), 1);
    EXPECT_EQ(session.RunWell("history").at("changes"), Json({commands[0]}));
    session.RunWell("undo");
    EXPECT_EQ(session.Run("undo").value("error", ""), "There is no change of the table to take back.");
}

TEST_F(HostTable, ClearedHistoryCannotBeTakenBack)
{
    CHostSession session(table);
    session.RunWell("field delete shop");
    session.RunWell("rows delete 0 1");
    EXPECT_EQ(session.RunWell("history clear"), Json::parse(R"({"ok":true,"changes":[],"cleared":2})"));
    EXPECT_EQ(session.Run("undo").value("error", ""), "There is no change of the table to take back.");
    EXPECT_EQ(session.RunWell("items").at("items").size(), 4u);
    EXPECT_EQ(session.Run("history away").at("ok"), false);
    session.RunWell("rows delete 0 1");
    session.RunWell("undo");
    EXPECT_EQ(session.RunWell("records").at("count"), 6);
}

TEST_F(HostTable, WhatWasMadeSinceAChangeStaysWhereItCan)
{
    CHostSession session(table);
    session.RunWell("rows delete 6 1");
    session.RunWell("special create region inc Both East West");
    session.RunWell("undo");
    EXPECT_EQ(session.RunWell("special list").at("special").at(0).at("text"), "Both");
    EXPECT_EQ(session.RunWell("records-of region Both").at("count"), 5);
}

// ---- Held changes

TEST_F(HostTable, HeldChangesReachTheItemsAllAtOnce)
{
    CHostSession session(table);
    session.RunWell("press region East");
    const std::map<std::string, Json> before = CHostState::Ask(session);
    Json answer = session.RunWell("rows insert 2 " + more + " --hold");
    EXPECT_EQ(answer.at("held"), 1);
    EXPECT_EQ(answer.at("tableRecords"), 9);
    EXPECT_EQ(answer.at("records"), 3);
    EXPECT_EQ(answer.at("clearedSelection"), false);
    // A field that was inserted has no item yet but is there for further changes.
    const std::string nine = dir.WriteFile("nine.csv", "grade\n1\n2\n3\n4\n5\n6\n7\n8\n9\n");
    EXPECT_EQ(session.RunWell("field insert --hold " + nine).at("fields").at(0).at("item"), Json());
    session.RunWell("field type grade text --hold");
    session.RunWell("field delete shop --hold");
    session.RunWell("field type amount text --hold");
    session.RunWell("rows delete 8 1 --hold");
    EXPECT_EQ(session.Run("field data shop " + nine + " --hold").value("error", ""),
              "The field of the item \"shop\" is gone with a held change.");
    ExpectSameState(CHostState::Ask(session), before);
    const Json pending = session.RunWell("pending");
    EXPECT_EQ(pending.at("changes").size(), 6u);
    EXPECT_EQ(pending.at("changes").at(3), "field delete shop --hold");
    EXPECT_EQ(pending.at("tableRecords"), 8);

    answer = session.RunWell("refresh");
    EXPECT_EQ(answer, Json::parse(R"({"ok":true,"result":true,"changes":6,"summary":{"newRecords":8,
        "oldRecords":7,"deleted":["shop"],"inserted":["grade"],"otherType":["amount"],
        "otherData":["region","day","at"],"otherForm":[]},"tableRecords":8,"records":8,
        "clearedSelection":true,"held":0})"));
    EXPECT_EQ(session.RunWell("pending").at("changes"), Json::array());
    EXPECT_EQ(Pluck(session.RunWell("items").at("items"), "name"),
              Json({"region", "day", "at", "amount", "grade"}));
    EXPECT_EQ(Btns(session, "region"), (CBtns{{"East", 3}, {"West", 2}, {"South", 1}, {"North", 2}}));
    EXPECT_EQ(Btns(session, "grade").size(), 8u);
    EXPECT_EQ(session.RunWell("history").at("changes"), Json({"refresh"}));
}

TEST_F(HostTable, HeldChangesAreDropped)
{
    CHostSession session(table);
    session.RunWell("rows delete 0 2 --hold");
    session.RunWell("field delete shop --hold");
    EXPECT_EQ(session.RunWell("pending drop"),
              Json::parse(R"({"ok":true,"changes":[],"dropped":2,"tableRecords":7})"));
    EXPECT_EQ(session.Run("refresh").value("error", ""), "No change is held that the items could follow.");
    EXPECT_EQ(session.Run("pending away").at("ok"), false);
    EXPECT_EQ(session.RunWell("rows delete 0 1").at("tableRecords"), 6);
}

TEST_F(HostTable, NothingElseChangesTheTableWhileAChangeIsHeld)
{
    const std::vector<std::string> before = {"rows delete 6 1", "rows delete 0 2 --hold",
                                             "save " + In("work")};
    for (const std::string command :
         {"rows delete 0 1", "field delete shop", "calendar --start-month 1", "undo", "load WORK"}) {
        const std::string error = Error(command == "load WORK" ? "load " + In("work") : command, before);
        EXPECT_NE(error.find("\"refresh\" takes held changes in, \"pending drop\" drops them."),
                  std::string::npos)
            << error;
    }
}

TEST_F(HostTable, HeldChangesThatComeToNothingAreNoChange)
{
    CHostSession session(table);
    session.RunWell("press region East");
    session.RunWell("rows insert 2 " + more + " --hold");
    session.RunWell("rows delete 2 2 --hold");
    const Json answer = session.RunWell("refresh");
    EXPECT_EQ(answer.at("clearedSelection"), false);
    EXPECT_EQ(answer.at("summary").at("otherData"), Json::array());
    EXPECT_EQ(session.RunWell("undo").at("records"), 3);
}

// ---- Refusals

TEST_F(HostTable, RowsThatDoNotFitAreRefused)
{
    const auto insert = [&](const std::string& content, const std::string& options = "") {
        const std::string path = dir.WriteFile("wrong.csv", content);
        std::string error = Error("rows insert 0 " + path + options);
        EXPECT_TRUE(error.starts_with(path + ": ")) << error;
        return error.substr(std::min(error.size(), path.size() + 2));
    };
    EXPECT_EQ(insert("region,shop,amount,day,at,more\n1,2,3,4,5,6\n"),
              "The file has a column \"more\", and the table no field of that name (--no-header tells the "
              "columns by their places).");
    EXPECT_EQ(insert("region,shop,amount,day\n1,2,3,4\n"), "The file has no column for the field \"at\".");
    EXPECT_EQ(insert("1,2,3,4\n", " --no-header"), "The file has 4 columns where the table has 5 fields.");
    EXPECT_EQ(insert("region,shop,amount,day,at\n"), "The file has no records to insert.");
    EXPECT_EQ(insert("region,shop,amount,day,at\n1,2,3,4,5\n1,2,3\n"),
              "line 3: The record has 3 values where 5 are expected.");
    EXPECT_EQ(insert(""), "The file is empty.");
    EXPECT_EQ(insert("region,region\n"), "line 1: The name \"region\" stands twice in the header.");
    EXPECT_EQ(Error("rows insert 0 " + In("none.csv")),
              "\"" + In("none.csv") + "\" cannot be read: No such file or directory.");
    EXPECT_NE(Error("rows insert 0 " + dir.GetPath().string()).find("cannot be read"), std::string::npos);
    EXPECT_EQ(Error("rows insert 8 " + more), "The position 8 is past the end: the table has 7 records.");
    EXPECT_NE(Error("rows insert -1 " + more).find("is no position"), std::string::npos);
    EXPECT_NE(Error("rows insert 4294967296 " + more).find("is no position"), std::string::npos);
    EXPECT_NE(Error("rows insert 0 " + more + " --delimiter ab").find("--delimiter takes one ASCII"),
              std::string::npos);
    EXPECT_NE(Error("rows insert 0 " + more + " --code-page 1252").find("--code-page takes auto"),
              std::string::npos);
}

TEST_F(HostTable, RowsThatAreNotThereAreNotDeleted)
{
    EXPECT_EQ(Error("rows delete 5 3"), "From position 5 on there are only 2 records.");
    EXPECT_EQ(Error("rows delete 8 1"), "The position 8 is past the end: the table has 7 records.");
    EXPECT_EQ(Error("rows delete end 1"), "From position 7 on there are only 0 records.");
    EXPECT_NE(Error("rows delete 0 0").find("\"0\" is no count"), std::string::npos);
    EXPECT_NE(Error("rows delete 0 x").find("\"x\" is no count"), std::string::npos);
    EXPECT_EQ(Error("rows delete 1 4294967295"), "From position 1 on there are only 6 records.");
}

TEST_F(HostTable, ColumnsThatDoNotFitAreRefused)
{
    const auto errorOf = [&](const std::string& content, const std::string& options = "") {
        const std::string path = dir.WriteFile("wrong.csv", content);
        const std::string error = Error("field insert " + path + options, {"virtual create Areas"});
        return error.starts_with(path + ": ") ? error.substr(path.size() + 2) : error;
    };
    const std::string seven = "1\n2\n3\n4\n5\n6\n7\n";
    EXPECT_EQ(errorOf("x\n1\n2\n"), "The file has 2 records where the table has 7 records.");
    EXPECT_EQ(errorOf("shop\n" + seven), "There is an item \"shop\" already; names must tell items apart.");
    EXPECT_EQ(errorOf("Areas\n" + seven), "There is an item \"Areas\" already; names must tell items apart.");
    EXPECT_EQ(errorOf("x\n" + seven, " --type y=text"),
              "line 1: A type is given for the field \"y\", but there is no field of this name.");
    EXPECT_NE(errorOf("x\n" + seven, " --type x=colour").find("--type takes COLUMN=text"), std::string::npos);
    EXPECT_EQ(errorOf("x\n" + seven, " --position 6"),
              "The position 6 is past the end: the table has 5 fields.");
}

TEST_F(HostTable, FieldsThatCannotChangeAreRefused)
{
    EXPECT_NE(Error("field delete nothing").find("There is no item \"nothing\""), std::string::npos);
    EXPECT_EQ(Error("field delete Areas", {"virtual create Areas"}),
              "The item \"Areas\" is virtual: it stands on no field of the table.");
    EXPECT_EQ(Error("field delete at",
                    {"field delete region", "field delete shop", "field delete amount", "field delete day"}),
              "This is the last field, and a table has at least one.");
    EXPECT_EQ(Error("field data shop " + more),
              more + ": The file has 2 records where the table has 7 records.");
    EXPECT_EQ(Error("field data shop " + grades + " --column none"),
              grades + ": The file has no column \"none\".");
    EXPECT_EQ(Error("field type shop text"), "The field \"shop\" is of type text already.");
    EXPECT_EQ(Error("field type day date"), "The field \"day\" is of type date:ymd-hyphen already.");
    EXPECT_NE(Error("field type shop colour").find("A type is text, number, date"), std::string::npos);
    EXPECT_EQ(Error("field form shop ymd-slash"),
              "The field \"shop\" is of type text; dates and times alone have forms.");
    EXPECT_NE(Error("field form day hm").find("\"hm\" is no form of dates"), std::string::npos);
    EXPECT_NE(Error("field form at ymd-slash").find("\"ymd-slash\" is no form of times"), std::string::npos);
    EXPECT_EQ(Error("field form at hm"), "The field \"at\" is of type time:hm already.");
}

// ---- The table as a file

TEST_F(HostTable, TheChangedTableIsSavedAndOpenedWithItsSession)
{
    const std::string wild = dir.WriteFile("wild.csv", "a,\"b \"\"c\"\"\",d\n"
                                                       "\"x,y\",\" z \",2024-01-05\n"
                                                       "\"two\nlines\",\"q\"\"q\",2024-01-06\n"
                                                       ",#1,\n");
    CHostSession session(wild);
    session.RunWell("field insert --no-header --position 0 " +
                    dir.WriteFile("new.csv", "001\n\"\"\n\"\r\n\"\n"));
    session.RunWell("rows delete 0 1");
    session.RunWell("field type d text");
    session.RunWell("press d 2024-01-06");
    const std::string path = In("o'ut.csv");
    const Json answer = session.RunWell("table save \"" + path + "\"");
    EXPECT_EQ(answer.at("options"), Json({"--code-page", "65001", "--type", "F4=text", "--type", "a=text",
                                          "--type", "b \"c\"=text", "--type", "d=text"}));
    EXPECT_EQ(answer.at("tableRecords"), 2);
    EXPECT_EQ(answer.at("bytes"), fs::file_size(path));
    std::ifstream file(path, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}),
              "F4,a,\"b \"\"c\"\"\",d\n,\"two\nlines\",\"q\"\"q\",2024-01-06\n\"\r\n\",,#1,\n");
    const std::map<std::string, Json> before = CHostState::Ask(session);
    session.RunWell("save " + In("work"));

    std::vector<std::string> arguments = answer.at("options");
    arguments.push_back(path);
    CHostSession opened(CHostSession::MakeOptions(arguments));
    EXPECT_EQ(opened.RunWell("load " + In("work")).at("asSaved"), true);
    ExpectSameState(CHostState::Ask(opened), before);
    // Its fields are known by the identifiers that they had, so that it can be changed and saved again.
    opened.RunWell("field delete a");
    opened.RunWell("undo");
    opened.RunWell("save " + In("again"));
    EXPECT_EQ(opened.RunWell("load " + In("again")).at("asSaved"), true);
    ExpectSameState(CHostState::Ask(opened), before);
    // The table of before is told to be another one.
    CHostSession former(wild);
    EXPECT_EQ(former.Run("load " + In("work")).value("error", ""),
              "The save is of another table: it had 4 fields, this one has 3.");
}

TEST_F(HostTable, AShiftJISTableIsSavedInShiftJIS)
{
    const std::string path = In("out.csv");
    {
        CHostSession session(dir.WriteFile("sjis.csv", SJIS(u8"地域,表示\n関東,ソ\n関西,海\n")));
        session.RunWell("rows delete 1 1");
        EXPECT_EQ(session.RunWell("table save " + path).at("options").at(1), "932");
    }
    std::ifstream file(path, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), SJIS(u8"地域,表示\n関東,ソ\n"));
}

TEST_F(HostTable, ATableOfOneFieldKeepsItsEmptyValuesInAFile)
{
    CHostSession session(dir.WriteFile("one.csv", "a\nx\n\"\"\ny\n"));
    session.RunWell("table save " + In("out.csv"));
    CHostSession opened(In("out.csv"));
    EXPECT_EQ(Btns(opened, "a"), Btns(session, "a"));
    EXPECT_EQ(Btns(opened, "a").size(), 3u);
}

TEST_F(HostTable, ATableIsSavedWithTheDelimiterThatItHad)
{
    CHostSession session(
        CHostSession::MakeOptions({"--delimiter", "|", dir.WriteFile("bars.csv", "a|b\n1,5|x\n")}));
    const Json answer = session.RunWell("table save " + In("out.csv"));
    EXPECT_EQ(answer.at("options").at(3), "|");
    std::ifstream file(In("out.csv"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "a|b\n1,5|x\n");
}

TEST_F(HostTable, AFileThatIsThereIsReplacedOnRequestAlone)
{
    CHostSession session(table);
    const std::string path = dir.WriteFile("there.csv", "mine");
    EXPECT_EQ(session.Run("table save " + path).value("error", ""),
              "\"" + path + "\" cannot be written: it is there already, and only --replace replaces it.");
    EXPECT_EQ(fs::file_size(path), 4u);
    session.RunWell("table save --replace " + path);
    EXPECT_EQ(fs::file_size(path), session.RunWell("table save --replace " + path).at("bytes"));
    EXPECT_NE(
        session.Run("table save " + dir.GetPath().string()).value("error", "").find("it is a directory"),
        std::string::npos);
    EXPECT_NE(session.Run("table save " + In("none/x.csv")).value("error", "").find("No such file"),
              std::string::npos);
    EXPECT_EQ(session.Run("table save ''").at("ok"), false);
    // What an interrupted one left is not taken for its own.
    dir.WriteFile("there.csv.kzcbui-new", "theirs");
    EXPECT_NE(session.Run("table save --replace " + path).value("error", "").find("it is there already"),
              std::string::npos);
    EXPECT_EQ(fs::file_size(path + ".kzcbui-new"), 6u);
}

// ---- For people

TEST_F(HostTable, ChangesAreShownInSentences)
{
    const CHostProcess process =
        CHostProcess::Run({table,
                           "-c",
                           "press region East",
                           "-c",
                           "rows insert 1 " + more,
                           "-c",
                           "history",
                           "-c",
                           "rows delete 0 2 --hold",
                           "-c",
                           "field type shop number --hold",
                           "-c",
                           "pending",
                           "-c",
                           "refresh",
                           "-c",
                           "undo",
                           "-c",
                           "field insert " + dir.WriteFile("nine.csv", "g\n1\n2\n3\n4\n5\n6\n7\n8\n9\n"),
                           "-c",
                           "history clear",
                           "-c",
                           "history",
                           "-c",
                           "pending",
                           "-c",
                           "table save " + In("out.csv")});
    EXPECT_EQ(process.GetStatus(), 0) << process.GetErrors();
    const std::string& output = process.GetOutput();
    for (const char* line :
         {"2 records inserted before 1.\n", "The table has 9 records.\n", "All selections were cleared.\n",
          "2 records deleted from 0 on.\n",
          "The table has 7 records with 1 held change; \"refresh\" lets the items follow.\n",
          "The field shop is of type number.\n", "rows delete 0 2 --hold\n",
          "The items follow 2 held changes:\n", "Taken back: refresh\n",
          "The table has 9 records; 1 change more can be taken back.\n", "2 changes forgotten.\n",
          "No change of the table can be taken back.\n", "No change is held.\n", "9 records, "})
        EXPECT_NE(output.find(line), std::string::npos) << line << output;
}

// ---- Ctrl-C

namespace {

// A terminal at which somebody presses Ctrl-C as soon as anything is drawn.
class CInterruptingBuffer : public std::streambuf
{
public:
    bool interrupts = false;

protected:
    int_type overflow(int_type character) override
    {
        if (interrupts)
            std::raise(SIGINT);
        interrupts = false;
        return traits_type::not_eof(character);
    }
};

} // namespace

TEST_F(HostTable, ControlCTakesAChangeBack)
{
    CInterruptingBuffer buffer;
    std::ostream terminal(&buffer);
    Host::CHostOptions options;
    options.tablePath = table;
    CHostSession session(options, &terminal);
    session.RunWell("limit 0-4");
    session.RunWell("press region East");
    const std::map<std::string, Json> before = AskWithoutLeftOver(session);
    for (const std::string& command : {"field insert " + grades, std::string("field type amount text")}) {
        buffer.interrupts = true;
        EXPECT_EQ(session.Run(command).value("error", ""),
                  "The change was cancelled; everything is as it was.")
            << command;
        EXPECT_FALSE(buffer.interrupts);
        ExpectSameState(AskWithoutLeftOver(session), before);
    }
    session.RunWell("field insert --hold " + grades);
    session.RunWell("rows delete 0 1 --hold");
    buffer.interrupts = true;
    EXPECT_EQ(session.Run("refresh").value("error", ""),
              "The change was cancelled; everything is as it was.");
    EXPECT_EQ(session.RunWell("pending").at("changes").size(), 2u);
    ExpectSameState(AskWithoutLeftOver(session), before);
    EXPECT_EQ(session.RunWell("history").at("changes"), Json::array());
    EXPECT_EQ(session.RunWell("refresh").at("tableRecords"), 6);
}

} // namespace NSKZ::Test
