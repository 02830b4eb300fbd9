// Dates and times: forms, calendar, groups, comparisons and the latest.

#include "HostFixture.h"

namespace NSKZ::Test {

// The days are 5 to 8 January 2024, a Friday to a Monday; button 2 has records 0 and 2, 3 has 1 and 6, 4 has
// 3, 5 has 5.
using HostDate = HostFixture;

namespace {

bool Holds(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

TEST_F(HostDate, AnItemHasNoFormAtFirst)
{
    EXPECT_EQ(LastAnswer({"form day"}), Json::parse(R"({"ok":true,"item":4,"type":"date","form":null,
        "kind":null,"code":null,"option":null,"pattern":"","example":null,"groups":0})"));
    EXPECT_EQ(LastAnswer({"form at"}).at("type"), "time");
}

TEST_F(HostDate, AFormGroupsTheButtons)
{
    const std::vector<Json> answers =
        Answers({"press day 2024-01-05", "form day week-of-year", "form day", "buttons day",
                 "buttons day --all", "press day '2024 W2'", "buttons region", "sum day amount"});
    EXPECT_EQ(answers[1], Json::parse(R"({"ok":true,"item":4,"type":"date","form":"week-of-year","kind":3,
        "code":201,"option":0,"pattern":"","example":"2024 W29","groups":2,"records":7,
        "clearedSelection":true})"));
    EXPECT_EQ(answers[2].at("form"), "week-of-year");
    EXPECT_EQ(Pluck(answers[3].at("buttons"), "text"), Json({"2024 W1", "2024 W2", UTF8(u8"(空白)")}));
    EXPECT_EQ(Pluck(answers[3].at("buttons"), "records"), Json({4, 2, 1}));
    EXPECT_EQ(answers[4].at("count"), 7);
    EXPECT_EQ(answers[5].at("records"), 2);
    EXPECT_EQ(Pluck(answers[6].at("buttons"), "text"), Json({"West", "North"}));
    EXPECT_EQ(answers[7].at("total"), 41.0 - 2.5);
}

TEST_F(HostDate, TimesAreGroupedToo)
{
    EXPECT_EQ(DisplayedTexts({"form at 30-minutes"}, "at --order name"),
              Json({"09:30", "10:00", "11:00", "12:30", UTF8(u8"(空白)")}));
    EXPECT_EQ(DisplayedTexts({"form at hour"}, "at --order name"),
              Json({"9", "10", "11", "12", UTF8(u8"(空白)")}));
}

TEST_F(HostDate, APatternIsAFormOfItsOwn)
{
    const std::vector<Json> answers = Answers({"form day --pattern '{d}.{m}.'", "buttons day --order name"});
    EXPECT_TRUE(answers[0].at("form").is_null());
    EXPECT_EQ(answers[0].at("pattern"), "{d}.{m}.");
    EXPECT_EQ(answers[0].at("example"), "15.7.");
    EXPECT_EQ(Pluck(answers[1].at("buttons"), "text"),
              Json({"5.1.", "6.1.", "7.1.", "8.1.", UTF8(u8"(空白)")}));
}

TEST_F(HostDate, GroupsAreManagedByTheEngine)
{
    const std::vector<std::string> before = {"form day week-of-year"};
    EXPECT_EQ(LastAnswer({before[0], "special list day"}).at("special")[0].at("managedByUser"), false);
    for (const char* const command :
         {"special destroy day '2024 W1'", "special effective day '2024 W1' off",
          "special set-members day '2024 W1' 2024-01-05", "special add-members day '2024 W1' 2024-01-08",
          "special remove-members day '2024 W1' 2024-01-05"}) {
        EXPECT_TRUE(Holds(Error(command, before), "manages")) << command;
    }
    EXPECT_EQ(LastAnswer({before[0], "special effective day '2024 W1'"}).at("effective"), true);
}

TEST_F(HostDate, EveryFormOfTheListCanBeSet)
{
    const std::vector<Json> answers = Answers({"forms", "forms date", "forms time"});
    EXPECT_EQ(answers[0].at("forms").size(), answers[1].at("forms").size() + answers[2].at("forms").size());
    std::vector<std::string> commands;
    for (const Json& form : answers[0].at("forms")) {
        commands.push_back((form.at("type") == "date" ? "form day " : "form at ") +
                           form.at("form").get<std::string>());
    }
    const std::vector<Json> set = Answers(commands);
    for (std::size_t i = 0; i < set.size(); ++i) {
        EXPECT_EQ(set[i].at("form"), answers[0].at("forms")[i].at("form"));
        EXPECT_EQ(set[i].at("example"), answers[0].at("forms")[i].at("example"));
        // The times have no second: what shows one groups nothing.
        const bool needsSecond = set[i].at("type") == "time" && set[i].at("kind") == 1 &&
                                 set[i].at("code") != 2 && set[i].at("code") != 3;
        EXPECT_EQ(set[i].at("groups") == 0, needsSecond) << set[i].dump();
    }
}

TEST_F(HostDate, HelpShowsWhatEachFormMakes)
{
    const std::string explanation = LastAnswer({"help forms"}).at("explanation");
    EXPECT_TRUE(Holds(explanation, "fiscal-quarter: FY2024 Q2"));
    EXPECT_TRUE(Holds(explanation, UTF8(u8"japanese-year: 令和6")));
    EXPECT_TRUE(Holds(explanation, "minute-second: 05:09"));
}

TEST_F(HostDate, TheCalendarDecidesOnTermsAndWeeks)
{
    const std::vector<Json> answers =
        Answers({"calendar", "form day fiscal-quarter", "buttons day", "press day 'FY2023 Q4'",
                 "calendar --start-month 1 --cut-off-day 5 --week-begins monday", "buttons day",
                 "form day week-of-year", "buttons day", "calendar"});
    EXPECT_EQ(answers[0], Json::parse(R"({"ok":true,"startMonth":4,"cutOffDay":31,"weekBegins":"sunday"})"));
    EXPECT_EQ(Pluck(answers[2].at("buttons"), "text"), Json({"FY2023 Q4", UTF8(u8"(空白)")}));
    EXPECT_EQ(answers[4], Json::parse(R"({"ok":true,"startMonth":1,"cutOffDay":5,"weekBegins":"monday",
        "records":7,"clearedSelection":true})"));
    EXPECT_EQ(Pluck(answers[5].at("buttons"), "text"), Json({"FY2024 Q1", UTF8(u8"(空白)")}));
    EXPECT_EQ(Pluck(answers[7].at("buttons"), "text"), Json({"2024 W1", "2024 W2", UTF8(u8"(空白)")}));
    EXPECT_EQ(Pluck(answers[7].at("buttons"), "records"), Json({5, 1, 1}));
    EXPECT_FALSE(answers[8].contains("records"));
}

TEST_F(HostDate, ButtonsAreGroupedByAPartOfTheirDates)
{
    const Json answer = LastAnswer({"groups day weekday"});
    EXPECT_EQ(answer.at("by"), "weekday");
    EXPECT_EQ(answer.at("count"), 4);
    EXPECT_EQ(Pluck(answer.at("groups"), "date"), Json({"Sun", "Mon", "Fri", "Sat"}));
    EXPECT_EQ(Pluck(answer.at("groups"), "records"), Json({1, 1, 2, 2}));
    EXPECT_EQ(answer.at("groups")[2].at("buttons"), Json::array({2}));
    EXPECT_EQ(Pluck(LastAnswer({"groups at hour"}).at("groups"), "records"), Json({3, 1, 1, 1}));
    EXPECT_EQ(LastAnswer({"groups day weekday --max 1"}).at("groups").size(), 1u);
    for (const char* const part :
         {"year", "japanese-year", "month", "day", "fiscal-year", "japanese-fiscal-year", "fiscal-month",
          "fiscal-half", "fiscal-quarter", "week-of-year", "week-of-month", "week-of-fiscal-year",
          "week-of-fiscal-month"})
        EXPECT_GT(LastAnswer({std::string("groups day ") + part}).at("count"), 0) << part;
}

TEST_F(HostDate, DatesAreCompared)
{
    const Json answer = LastAnswer({"dates day '>=' 2024-01-06 --list"});
    EXPECT_EQ(answer, Json::parse(R"({"ok":true,"item":4,"operator":">=","date":"2024-01-06",
        "buttons":[3,4,5],"count":4,"list":[1,3,5,6]})"));
    EXPECT_EQ(LastAnswer({"dates day '<' 2024-01-06"}).at("buttons"), Json::array({2}));
    EXPECT_EQ(LastAnswer({"dates day = 2024-01"}).at("count"), 6);
    EXPECT_EQ(LastAnswer({"dates day = 2024"}).at("count"), 6);
    EXPECT_EQ(LastAnswer({"dates day != 2024-01-07"}).at("buttons"), Json({2, 3, 5}));
    EXPECT_EQ(LastAnswer({"dates day = FY2023"}).at("count"), 6);
    EXPECT_EQ(LastAnswer({"dates day = FY2023-Q4"}).at("count"), 6);
    EXPECT_EQ(LastAnswer({"dates day = FY2023-H1"}).at("count"), 0);
    EXPECT_EQ(LastAnswer({"dates day = 2024-W2"}).at("buttons"), Json({4, 5}));
    EXPECT_EQ(LastAnswer({"dates day = R6-01"}).at("count"), 6);
    EXPECT_EQ(LastAnswer({"dates day '>' H31-04-30"}).at("count"), 6);
}

TEST_F(HostDate, TheLatestDateAndItsLastRecord)
{
    const Json answer = LastAnswer({"latest day"});
    EXPECT_EQ(answer.at("date"), "2024-01-08");
    EXPECT_EQ(answer.at("record"), 5);
    EXPECT_EQ(LastAnswer({"latest day 0-2 6"}).at("record"), 6);
    EXPECT_TRUE(LastAnswer({"latest day 4"}).at("record").is_null());
    EXPECT_EQ(LastAnswer({"press region East", "latest day"}).at("record"), 6);
    EXPECT_EQ(LastAnswer({"symbols"}).at("symbols"), Json::parse(R"([{"item":4,"symbol":"D4"}])"));
}

TEST_F(HostDate, RefusalsTellWhatIsExpected)
{
    EXPECT_TRUE(Holds(Error("form region year"), "neither of dates nor of times"));
    EXPECT_TRUE(Holds(Error("form day hour"), "\"forms\" lists"));
    EXPECT_TRUE(Holds(Error("form day year --pattern '{d}'"), "do not go together"));
    EXPECT_TRUE(Holds(Error("form day --pattern 'x'"), "refused"));
    EXPECT_TRUE(Holds(Error("form day --pattern '{h}'"), "refused"));
    EXPECT_TRUE(Holds(Error("forms text"), "text"));
    EXPECT_TRUE(Holds(Error("calendar --start-month 13"), "from 1 to 12"));
    EXPECT_TRUE(Holds(Error("calendar --cut-off-day 0"), "from 1 to 31"));
    EXPECT_NE(Error("calendar --week-begins day"), "");
    EXPECT_TRUE(Holds(Error("groups day hour"), "not by"));
    EXPECT_TRUE(Holds(Error("groups at year"), "not by"));
    EXPECT_TRUE(Holds(Error("groups region year"), "not of dates"));
    EXPECT_TRUE(Holds(Error("dates at = 2024"), "not of dates"));
    EXPECT_TRUE(Holds(Error("dates day about 2024"), "compared by"));
    for (const char* const date : {"2024-13", "2024-02-30", "yesterday", "FY", "FY2024-Q5", "FY2024-X1",
                                   "2024-W99", "FY99999", "X6", ""})
        EXPECT_TRUE(Holds(Error(std::string("dates day = '") + date + "'"), "is no date")) << date;
    EXPECT_TRUE(Holds(Error("latest region"), "not of dates"));
    EXPECT_NE(Error("latest day 7"), "");
}

} // namespace NSKZ::Test
