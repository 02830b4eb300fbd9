// Copies of the analysis, side by side.

#include "HostState.h"

namespace NSKZ::Test {

class HostCopy : public HostFixture
{
protected:
    HostCopy() : codePage(_getmbcp()) {}

    // A session with something of everything.
    void MakeRich(CHostSession& session) const
    {
        for (const char* command :
             {"special create region inc Both East West --disp-members", "special create shop cll AB A B",
              "special create shop cll Best --where 'amount sum top 1'", "virtual create Areas",
              "special create Areas virinc Main --of region East", "form day year-month",
              "alias region North Nord", "select-item amount", "limit 0-5", "press region East Nord",
              "press at 09:30"})
            session.RunWell(command);
    }
    static std::map<std::string, Json> Ask(CHostSession& session) { return CHostState::Ask(session); }

    CCodePageScope codePage;
};

TEST_F(HostCopy, ACopyAnswersEverythingAsTheFirstDoes)
{
    CHostSession session(table);
    MakeRich(session);
    session.RunWell("rows delete 6 1");
    session.RunWell("limit 0-4");
    session.RunWell("press region East Nord");
    const std::map<std::string, Json> before = Ask(session);
    EXPECT_EQ(session.RunWell("copy second"),
              Json::parse(R"({"ok":true,"result":true,"present":"main","records":3,"name":"second"})"));
    EXPECT_EQ(Ask(session), before);
    EXPECT_EQ(session.RunWell("use second"),
              Json::parse(R"({"ok":true,"result":true,"present":"second","records":3})"));
    EXPECT_EQ(Ask(session), before);
    // And after every kind of further step.
    for (const char* command :
         {"press shop A", "clear", "mode and", "press region East", "press shop A", "mode difference",
          "press shop A B", "mode narrowing", "limit --clear", "special add-members region Both Nord",
          "calendar --start-month 1", "form day fiscal-half", "undo", "undo"}) {
        session.RunWell("use main");
        session.RunWell(command);
        const std::map<std::string, Json> ofMain = Ask(session);
        session.RunWell("use second");
        session.RunWell(command);
        EXPECT_EQ(Ask(session), ofMain) << command;
    }
}

TEST_F(HostCopy, WhatChangesInOneDoesNotReachTheOther)
{
    CHostSession session(table);
    MakeRich(session);
    session.RunWell("copy second");
    const std::map<std::string, Json> before = Ask(session);
    const std::string rows = dir.WriteFile("rows.csv", TABLE_TEXT);
    for (const std::string& command : std::vector<std::string>{
             "rows insert 2 " + rows, "rows delete 0 3", "field delete shop", "field type amount text",
             "special destroy region Both", "virtual destroy Areas", "calendar --start-month 2", "reset"}) {
        session.RunWell(command);
        session.RunWell("use second");
        EXPECT_EQ(Ask(session), before) << command;
        EXPECT_EQ(session.RunWell("history").at("changes"), Json::array());
        session.RunWell("use main");
    }
    // The other way round.
    const std::map<std::string, Json> ofMain = Ask(session);
    session.RunWell("use second");
    session.RunWell("field delete region");
    session.RunWell("rows delete 0 7");
    session.RunWell("use main");
    EXPECT_EQ(Ask(session), ofMain);
}

TEST_F(HostCopy, ACopyHasWhatIsHeldAndWhatCanBeTakenBack)
{
    CHostSession session(table);
    MakeRich(session);
    const std::map<std::string, Json> before = Ask(session);
    session.RunWell("field delete shop");
    session.RunWell("rows delete 0 2");
    session.RunWell("rows delete 0 1 --hold");
    session.RunWell("copy second");
    session.RunWell("pending drop");
    session.RunWell("use second");
    EXPECT_EQ(session.RunWell("history").at("changes"), Json({"field delete shop", "rows delete 0 2"}));
    EXPECT_EQ(session.RunWell("refresh").at("tableRecords"), 4);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(session.RunWell("undo").at("result"), true);
    EXPECT_EQ(Ask(session), before);
    session.RunWell("use main");
    EXPECT_EQ(session.RunWell("items").at("items").size(), 5u);
    session.RunWell("undo");
    session.RunWell("undo");
    EXPECT_EQ(Ask(session), before);
}

TEST_F(HostCopy, CopiesAreListedUsedAndDropped)
{
    CHostSession session(table);
    session.RunWell("copy b");
    session.RunWell("press region East");
    session.RunWell("copy c");
    session.RunWell("use c");
    session.RunWell("rows delete 0 1");
    session.RunWell("rows delete 0 1 --hold");
    EXPECT_EQ(session.RunWell("copies").at("copies"),
              Json::parse(R"([{"name":"main","present":false,"tableRecords":7,"fields":5,"records":3,
                               "changes":0,"held":0,"bnLink":"on-memory","rpLink":"on-memory"},
                              {"name":"b","present":false,"tableRecords":7,"fields":5,"records":7,
                               "changes":0,"held":0,"bnLink":"on-memory","rpLink":"on-memory"},
                              {"name":"c","present":true,"tableRecords":6,"fields":5,"records":6,
                               "changes":1,"held":1,"bnLink":"on-memory","rpLink":"on-memory"}])"));
    EXPECT_EQ(session.RunWell("drop main").at("present"), "c");
    EXPECT_EQ(session.RunWell("records").at("count"), 6);
    EXPECT_EQ(Pluck(session.RunWell("copies").at("copies"), "name"), Json({"b", "c"}));
    session.RunWell("copy main"); // the name is free, and so is the engine's number
    session.RunWell("use main");
    EXPECT_EQ(session.RunWell("records").at("count"), 6);
}

TEST_F(HostCopy, NamesThatDoNotFitAreRefused)
{
    EXPECT_EQ(Error("copy main"), "There is a copy \"main\" already; \"copies\" lists them.");
    EXPECT_EQ(Error("copy ''"), "The name of a copy is expected, not an empty word.");
    EXPECT_EQ(Error("use b"), "There is no copy \"b\"; \"copies\" lists them.");
    EXPECT_EQ(Error("drop b"), "There is no copy \"b\"; \"copies\" lists them.");
    EXPECT_EQ(Error("drop main", {"copy b"}), "The copy \"main\" is the present one; use another one first.");
}

TEST_F(HostCopy, ACopyIsSavedAndLoadedLikeAnyOther)
{
    const std::string work = (dir.GetPath() / "work").string();
    CHostSession session(table);
    MakeRich(session);
    session.RunWell("copy second");
    session.RunWell("clear");
    session.RunWell("use second");
    const std::map<std::string, Json> second = Ask(session);
    session.RunWell("save " + work);
    session.RunWell("use main");
    EXPECT_EQ(session.RunWell("load " + work).at("asSaved"), true);
    EXPECT_EQ(session.RunWell("load " + work).at("rebuilt"), false);
    EXPECT_EQ(Ask(session), second);
    EXPECT_EQ(session.RunWell("copies").at("copies").size(), 2u);
    CHostSession fresh(table);
    EXPECT_EQ(fresh.RunWell("load " + work).at("asSaved"), true);
    EXPECT_EQ(Ask(fresh), second);
    fresh.RunWell("save " + work);
    EXPECT_EQ(fresh.RunWell("load " + work).at("rebuilt"), false);
}

TEST_F(HostCopy, CopiesAreShownInSentences)
{
    const CHostProcess process =
        CHostProcess::Run({table, "-c", "copy b", "-c", "use b", "-c", "copies", "-c", "drop main"});
    EXPECT_EQ(process.GetStatus(), 0);
    for (const char* line :
         {"There is a copy b now.\n", "The present one is main: 7 of 7 records in force.\n",
          "The present one is b: 7 of 7 records in force.\n", "*  b ", "The copy main is removed.\n"})
        EXPECT_NE(process.GetOutput().find(line), std::string::npos) << line << process.GetOutput();
}

} // namespace NSKZ::Test
