// The commands that show items and buttons and name them.

#include "HostFixture.h"

namespace NSKZ::Test {

using HostItems = HostFixture;

TEST_F(HostItems, ItemsListsEachItemWithTypeAndCounts)
{
    const Json items = LastAnswer({"press region East", "items"}).at("items");
    ASSERT_EQ(items.size(), 5u);
    EXPECT_EQ(Pluck(items, "id"), Json({1, 2, 3, 4, 5}));
    EXPECT_EQ(Pluck(items, "name"), Json({"region", "shop", "amount", "day", "at"}));
    EXPECT_EQ(Pluck(items, "type"), Json({"text", "text", "number", "date", "time"}));
    EXPECT_EQ(Pluck(items, "buttons"), Json({4, 4, 7, 5, 5}));
    EXPECT_EQ(Pluck(items, "displayed"), Json({3, 2, 3, 2, 2}));
    EXPECT_EQ(Pluck(items, "selected"), Json({1, 0, 0, 0, 0}));
    EXPECT_EQ(Pluck(items, "effective"), Json({true, true, true, true, true}));
}

TEST_F(HostItems, ButtonsListsDisplayedButtonsByFirstAppearance)
{
    const Json answer = LastAnswer({"press region East", "buttons shop"});
    const Json buttons = answer.at("buttons");
    EXPECT_EQ(Pluck(buttons, "id"), Json({2, 3}));
    EXPECT_EQ(Pluck(buttons, "text"), Json({"A", "B"}));
    EXPECT_EQ(Pluck(buttons, "kind"), Json({"normal", "normal"}));
    EXPECT_EQ(Pluck(buttons, "displayed"), Json({true, true}));
    EXPECT_EQ(Pluck(buttons, "selected"), Json({false, false}));
    EXPECT_EQ(Pluck(buttons, "visible"), Json({0, 0}));
    EXPECT_EQ(Pluck(buttons, "records"), Json({3, 2}));
    EXPECT_EQ(Pluck(buttons, "targetRecords"), Json({2, 1}));
    EXPECT_EQ(answer.at("item"), 2);
    EXPECT_EQ(answer.at("count"), 2);
}

TEST_F(HostItems, ButtonsWithAllListsTheHiddenOnesToo)
{
    const Json buttons = LastAnswer({"press region East", "buttons shop --all"}).at("buttons");
    EXPECT_EQ(Pluck(buttons, "text"), Json({"A", "B", "C", "(空白)"}));
    EXPECT_EQ(Pluck(buttons, "kind"), Json({"normal", "normal", "normal", "empty"}));
    EXPECT_EQ(Pluck(buttons, "displayed"), Json({true, true, false, false}));
    EXPECT_EQ(Pluck(buttons, "visible"), Json({0, 0, 32, 32}));
    EXPECT_EQ(Pluck(buttons, "records"), Json({3, 2, 1, 1}));
    EXPECT_EQ(Pluck(buttons, "targetRecords"), Json({2, 1, 0, 0}));
}

TEST_F(HostItems, ButtonsMarksTheSelectedOnes)
{
    EXPECT_EQ(Pluck(LastAnswer({"press region West", "buttons region"}).at("buttons"), "selected"),
              Json({false, true, false}));
}

TEST_F(HostItems, ButtonsFollowsTheOrderAskedFor)
{
    EXPECT_EQ(DisplayedTexts({}, "region"), Json({"East", "West", "North"}));
    EXPECT_EQ(DisplayedTexts({}, "region --order app --desc"), Json({"North", "West", "East"}));
    EXPECT_EQ(DisplayedTexts({}, "region --order name"), Json({"East", "North", "West"}));
    EXPECT_EQ(DisplayedTexts({}, "--desc --order=name region"), Json({"West", "North", "East"}));
    EXPECT_EQ(DisplayedTexts({}, "at --empty-last"), Json({"09:30", "10:15", "11:00", "12:45", "(空白)"}));
    EXPECT_EQ(DisplayedTexts({}, "at"), Json({"09:30", "10:15", "(空白)", "11:00", "12:45"}));
}

TEST_F(HostItems, ButtonsOfANumberItemFollowTheNumbersInOrderOfNames)
{
    EXPECT_EQ(DisplayedTexts({"press region East"}, "amount --order name"), Json({"4", "10", "20"}));
}

TEST_F(HostItems, ButtonTellsEverythingAboutOne)
{
    const Json hidden = LastAnswer({"press region East", "button shop C"});
    EXPECT_EQ(hidden.at("item"), 2);
    EXPECT_EQ(hidden.at("id"), 4);
    EXPECT_EQ(hidden.at("text"), "C");
    EXPECT_EQ(hidden.at("name"), "C");
    EXPECT_EQ(hidden.at("kind"), "normal");
    EXPECT_EQ(hidden.at("displayed"), false);
    EXPECT_EQ(hidden.at("selected"), false);
    EXPECT_EQ(hidden.at("effective"), true);
    EXPECT_EQ(hidden.at("visible"), 32);
    EXPECT_EQ(hidden.at("reasons"), Json({"not related to the selection"}));
    EXPECT_EQ(hidden.at("records"), 1);
    EXPECT_EQ(hidden.at("targetRecords"), 0);
}

TEST_F(HostItems, ButtonOfTheEmptyValueHasNoName)
{
    const Json empty = LastAnswer({"button region #1"});
    EXPECT_TRUE(empty.at("name").is_null());
    EXPECT_EQ(empty.at("text"), "(空白)");
    EXPECT_EQ(empty.at("kind"), "empty");
    EXPECT_EQ(empty.at("reasons"), Json({"no record in the table"}));
}

TEST_F(HostItems, AnItemIsNamedByItsNameOrItsIdentifier)
{
    EXPECT_EQ(LastAnswer({"buttons @2"}), LastAnswer({"buttons shop"}));
    EXPECT_EQ(LastAnswer({"buttons 'shop'"}), LastAnswer({"buttons shop"}));
}

TEST_F(HostItems, AnUnknownItemIsRefusedWithTheKnownOnes)
{
    EXPECT_EQ(Error("buttons shp"),
              "There is no item \"shp\"; the items are \"region\", \"shop\", \"amount\", \"day\", \"at\".");
    EXPECT_EQ(Error("buttons @9"), "There is no item @9; \"items\" lists them.");
    EXPECT_EQ(Error("buttons @0"), "There is no item @0; \"items\" lists them.");
    EXPECT_EQ(Error("buttons @99999999999"), "There is no item @99999999999; \"items\" lists them.");
    EXPECT_NE(Error("buttons ''"), "");
    EXPECT_NE(Error("buttons 5"), "");
}

TEST_F(HostItems, AnUnknownButtonIsRefused)
{
    EXPECT_EQ(Error("button shop D"), "The item \"shop\" has no button \"D\".");
    EXPECT_EQ(Error("button shop #5"), "The item \"shop\" has no button #5.");
    EXPECT_EQ(Error("button shop a"), "The item \"shop\" has no button \"a\".");
}

TEST_F(HostItems, TextsThatLookLikeIdentifiersAreWrittenWithTheMarkDoubled)
{
    table = dir.WriteFile("marks.csv", "@1,x\n#2,a\n##3,b\n#c,c\n");
    EXPECT_EQ(LastAnswer({"button @@1 ##2"}).at("text"), "#2");
    EXPECT_EQ(LastAnswer({"button @1 #2"}).at("text"), "#2");
    EXPECT_EQ(LastAnswer({"button @1 #3"}).at("text"), "##3");
    EXPECT_EQ(LastAnswer({"button @1 ###3"}).at("text"), "##3");
    EXPECT_EQ(LastAnswer({"button @1 #c"}).at("text"), "#c");
}

TEST_F(HostItems, ATextThatTwoButtonsShowIsRefusedWithTheirIdentifiers)
{
    table = dir.WriteFile("twice.csv", "item,shop\n(空白),a\n,b\n");
    EXPECT_EQ(Error("button item (空白)"),
              "2 buttons of \"item\" show \"(空白)\"; name the one you mean by its "
              "identifier: #1, #2.");
    EXPECT_EQ(LastAnswer({"button item #1"}).at("kind"), "empty");
}

TEST_F(HostItems, AliasGivesAButtonAnotherTextAndItsNameBack)
{
    const std::vector<Json> answers =
        Answers({"alias region East 'The East'", "buttons region", "button region 'The East'",
                 "alias region 'The East' --name", "buttons region"});
    EXPECT_EQ(answers[0].at("result"), true);
    EXPECT_EQ(answers[0].at("id"), 2);
    EXPECT_EQ(answers[0].at("text"), "The East");
    EXPECT_EQ(Pluck(answers[1].at("buttons"), "text"), Json({"The East", "West", "North"}));
    EXPECT_EQ(answers[2].at("name"), "East");
    EXPECT_EQ(answers[3].at("text"), "East");
    EXPECT_EQ(Pluck(answers[4].at("buttons"), "text"), Json({"East", "West", "North"}));
}

TEST_F(HostItems, AliasMovesAButtonInTheOrderOfNames)
{
    EXPECT_EQ(DisplayedTexts({"alias region East Z"}, "region --order name"), Json({"North", "West", "Z"}));
}

TEST_F(HostItems, AliasGivesTheEmptyValueItsFirstTextBack)
{
    EXPECT_EQ(LastAnswer({"alias shop #1 none", "alias shop none --name"}).at("text"), "(空白)");
}

TEST_F(HostItems, AliasRefusesATextThatAnotherButtonShows)
{
    EXPECT_NE(Error("alias region East West").find("Another button of the item shows \"West\" already"),
              std::string::npos);
    EXPECT_EQ(LastAnswer({"alias region East East"}).at("text"), "East");
}

TEST_F(HostItems, AliasWantsEitherATextOrTheName)
{
    EXPECT_NE(Error("alias region East").find("expected: alias ITEM BUTTON TEXT|--name"), std::string::npos);
    EXPECT_NE(Error("alias region East x --name").find("expected: alias ITEM BUTTON TEXT|--name"),
              std::string::npos);
}

TEST_F(HostItems, ListsForPeopleAreCutAndThoseForProgramsAreWholeUnlessMaxTellsANumber)
{
    std::string text = "n\n";
    for (int i = 0; i < 60; ++i)
        text.append("v").append(std::to_string(i)).append("\n");
    const std::string many = dir.WriteFile("many.csv", text);
    const auto linesOf = [&many](const std::string& command) {
        const CHostProcess process = CHostProcess::Run({many, "-c", command});
        EXPECT_EQ(process.GetStatus(), 0);
        return process.GetOutput();
    };
    const std::string cut = linesOf("buttons n");
    EXPECT_NE(cut.find("v49"), std::string::npos);
    EXPECT_EQ(cut.find("v50"), std::string::npos);
    EXPECT_NE(cut.find("... and 10 more"), std::string::npos);
    EXPECT_NE(linesOf("buttons n --max 3").find("... and 57 more"), std::string::npos);
    const std::string all = linesOf("buttons n --max 0");
    EXPECT_NE(all.find("v59"), std::string::npos);
    EXPECT_EQ(all.find("more"), std::string::npos);
    table = many;
    EXPECT_EQ(LastAnswer({"buttons n"}).at("buttons").size(), 60u);
    EXPECT_EQ(LastAnswer({"buttons n --max 0"}).at("buttons").size(), 60u);
    const Json few = LastAnswer({"buttons n --max 3"});
    EXPECT_EQ(few.at("buttons").size(), 3u);
    EXPECT_EQ(few.at("count"), 60);
    EXPECT_NE(Error("buttons @1 --max x").find("--max takes a number"), std::string::npos);
}

} // namespace NSKZ::Test
