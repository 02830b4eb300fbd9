// The commands about records: which are in force, which belong to which button, and their sums.

#include "HostFixture.h"

namespace NSKZ::Test {

using HostRecords = HostFixture;

TEST_F(HostRecords, RecordsCountsAndListsThoseInForce)
{
    EXPECT_EQ(LastAnswer({"records"}), Json::parse(R"({"ok":true,"count":7})"));
    EXPECT_EQ(LastAnswer({"press region East", "records --list"}),
              Json::parse(R"({"ok":true,"count":3,"list":[0,1,6]})"));
}

TEST_F(HostRecords, RecordsOfAnItemAreThoseOfTheLevelBeforeItsOwn)
{
    const std::vector<Json> answers = Answers({"press region East", "press shop A", "records region --list",
                                               "records shop --list", "records day --list"});
    EXPECT_EQ(answers[2].at("list"), Json({0, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(answers[3].at("list"), Json({0, 1, 6}));
    EXPECT_EQ(answers[4].at("list"), Json({0, 6}));
    EXPECT_NE(Error("records shp"), "");
}

TEST_F(HostRecords, RecordsOfButtonsAreThoseOfAllOfThem)
{
    EXPECT_EQ(LastAnswer({"press region North", "records-of shop A C --list"}),
              Json::parse(R"({"ok":true,"count":4,"list":[0,2,3,6]})"));
    EXPECT_EQ(LastAnswer({"records-of region #1"}).at("count"), 0);
    EXPECT_NE(Error("records-of shop X"), "");
}

TEST_F(HostRecords, RelatedListsTheButtonsOfRecordsInTheirOrder)
{
    const Json answer = LastAnswer({"related shop 5 3 0-2"});
    EXPECT_EQ(answer.at("item"), 2);
    EXPECT_EQ(Pluck(answer.at("buttons"), "text"), Json({"(空白)", "C", "A", "B"}));
    EXPECT_NE(Error("related shop 7").find("There is no record 7"), std::string::npos);
    EXPECT_NE(Error("related shop").find("expected: related ITEM RECORD..."), std::string::npos);
}

TEST_F(HostRecords, LimitLimitsRecordsAndButtons)
{
    const std::vector<Json> answers = Answers({"press region East", "limit 3 5 3 4", "selection",
                                               "buttons shop", "records --list", "limit --clear", "records"});
    EXPECT_EQ(answers[1], Json::parse(R"({"ok":true,"records":3,"limited":true})"));
    EXPECT_TRUE(answers[2].at("selection").empty());
    EXPECT_EQ(Pluck(answers[3].at("buttons"), "text"), Json({"B", "C", "(空白)"}));
    EXPECT_EQ(answers[4].at("list"), Json({3, 4, 5}));
    EXPECT_EQ(answers[5], Json::parse(R"({"ok":true,"records":7,"limited":false})"));
    EXPECT_EQ(LastAnswer({"limit 0-2 6", "press shop A", "records --list"}).at("list"), Json({0, 2, 6}));
}

TEST_F(HostRecords, LimitRefusesANumberThatIsNoRecord)
{
    EXPECT_EQ(Error("limit 0 7", {"limit 1-3"}),
              "There is no record 7: the table has 7 records, numbered from 0 to 6.");
    EXPECT_EQ(Error("limit -1"),
              "\"-1\" is no record: a number from 0 on is expected, or a stretch as 10-19.");
    EXPECT_NE(Error("limit").find("expected: limit RECORD...|--clear"), std::string::npos);
    EXPECT_NE(Error("limit 1 --clear", {"limit 1-3"}).find("expected: limit RECORD...|--clear"),
              std::string::npos);
}

TEST_F(HostRecords, SumGivesAValueForEachDisplayedButton)
{
    const Json answer = LastAnswer({"sum region amount"});
    EXPECT_EQ(Pluck(answer.at("values"), "id"), Json({2, 3, 4}));
    EXPECT_EQ(Pluck(answer.at("values"), "text"), Json({"East", "West", "North"}));
    EXPECT_EQ(Pluck(answer.at("values"), "value"), Json({34, -5, 9.5}));
    EXPECT_EQ(answer.at("total"), 38.5);
    EXPECT_EQ(answer.at("totalAbsolute"), 48.5);
    EXPECT_EQ(LastAnswer({"sum region amount --method sum"}), answer);
    EXPECT_EQ(LastAnswer({"sum @1 @3"}), answer);
}

TEST_F(HostRecords, SumFollowsTheSelection)
{
    const Json answer = LastAnswer({"press region East", "sum shop amount"});
    EXPECT_EQ(Pluck(answer.at("values"), "text"), Json({"A", "B"}));
    EXPECT_EQ(Pluck(answer.at("values"), "value"), Json({14, 20}));
    EXPECT_EQ(answer.at("total"), 34);
}

TEST_F(HostRecords, SumCountsNumbersAndAverages)
{
    EXPECT_EQ(Pluck(LastAnswer({"sum region amount --method count"}).at("values"), "value"), Json({3, 1, 2}));
    const Json averages = LastAnswer({"sum shop amount --method average"}).at("values");
    EXPECT_EQ(Pluck(averages, "text"), Json({"A", "B", "C", "(空白)"}));
    EXPECT_EQ(averages[0].at("value"), 3);
    EXPECT_EQ(averages[1].at("value"), 13.5);
    EXPECT_TRUE(averages[2].at("value").is_null()); // no number to divide by
    EXPECT_EQ(averages[3].at("value"), 2.5);
    EXPECT_EQ(Pluck(LastAnswer({"sum shop amount"}).at("values"), "value"), Json({9, 27, 0, 2.5}));
}

TEST_F(HostRecords, SumRefusesAFieldThatIsNoNumber)
{
    EXPECT_EQ(Error("sum region shop"),
              "The item \"shop\" cannot be summed: an item of type number is expected.");
    EXPECT_EQ(Error("sum region day"),
              "The item \"day\" cannot be summed: an item of type number is expected.");
    EXPECT_NE(Error("sum region @9"), "");
    EXPECT_NE(Error("sum region"), "");
    EXPECT_NE(Error("sum region amount --method median").find("--method takes sum, count or average"),
              std::string::npos);
}

TEST_F(HostRecords, SumShowsBarsToPeople)
{
    const CHostProcess process = CHostProcess::Run({table, "-c", "press region East", "-c", "sum shop amount",
                                                    "-c", "sum region amount --method count"});
    EXPECT_EQ(process.GetStatus(), 0);
    EXPECT_EQ(process.GetOutput(), "3 of 7 records\n"
                                   "A  14  ████████████████████████████\n"
                                   "B  20  ████████████████████████████████████████\n"
                                   "total 34\n"
                                   "East   3  ████████████████████████████████████████\n"
                                   "West   1  █████████████▍\n"
                                   "North  2  ██████████████████████████▋\n"
                                   "total of the sums 38.5000, of the absolute values 48.5000\n");
}

TEST_F(HostRecords, ATableWithoutRecordsHasNoneToNameOrToList)
{
    table = dir.WriteFile("empty.csv", "region,shop,amount\n");
    EXPECT_EQ(LastAnswer({"records --list"}), Json::parse(R"({"ok":true,"count":0,"list":[]})"));
    EXPECT_TRUE(LastAnswer({"buttons region --all"}).at("buttons").empty());
    EXPECT_EQ(Error("limit 0"), "There is no record 0: the table has 0 records.");
}

} // namespace NSKZ::Test
