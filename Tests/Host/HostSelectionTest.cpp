// The commands that select buttons and items, and those that show what is selected.

#include "HostFixture.h"

namespace NSKZ::Test {

using HostSelection = HostFixture;

namespace {

Json Result(bool result, int records)
{
    return {{"ok", true}, {"result", result}, {"records", records}};
}

} // namespace

TEST_F(HostSelection, PressNarrowsTheRecordsAndTheOtherItems)
{
    EXPECT_EQ(LastAnswer({"press region East"}), Result(true, 3));
    EXPECT_EQ(DisplayedTexts({"press region East"}, "shop"), Json({"A", "B"}));
    EXPECT_EQ(LastAnswer({"press region East", "press shop A"}), Result(true, 2));
    EXPECT_EQ(DisplayedTexts({"press region East", "press shop A"}, "day"),
              Json({"2024-01-05", "2024-01-06"}));
}

TEST_F(HostSelection, PressTakesSeveralButtonsInOneStep)
{
    EXPECT_EQ(LastAnswer({"press region West #4"}), Result(true, 4));
    EXPECT_EQ(LastAnswer({"press region West #4", "selection"}).at("selection"),
              Json::parse(R"([{"item":1,"buttons":[3,4],"newButtons":false}])"));
}

TEST_F(HostSelection, PressReplacesWithoutMultipleSelectionAndAddsWithIt)
{
    EXPECT_EQ(LastAnswer({"press region East", "press region West"}), Result(true, 2));
    EXPECT_EQ(LastAnswer({"multi on", "press region East", "press region West"}), Result(true, 5));
}

TEST_F(HostSelection, PressOfAHiddenButtonTakesPartOnlyWithHidden)
{
    Json expected = Result(true, 0);
    expected["hidden"] = 1;
    EXPECT_EQ(LastAnswer({"press region East", "press shop C"}), expected);
    // Within the level of East it has no record either, but B adds one.
    EXPECT_EQ(LastAnswer({"press region East", "press shop C B --hidden"}), Result(true, 1));
}

TEST_F(HostSelection, PressOfAWrongNameChangesNothing)
{
    EXPECT_EQ(Error("press region East Wset", {"press shop A"}),
              "The item \"region\" has no button \"Wset\".");
    EXPECT_EQ(
        Error("press regoin East", {"press shop A"}),
        "There is no item \"regoin\"; the items are \"region\", \"shop\", \"amount\", \"day\", \"at\".");
    EXPECT_EQ(Error("release shop A #77", {"press shop A"}), "The item \"shop\" has no button #77.");
    EXPECT_NE(Error("press region", {"press shop A"}).find("expected: press ITEM BUTTON... [--hidden]"),
              std::string::npos);
    EXPECT_NE(Error("press region East --hiden", {"press shop A"}).find("--hiden"), std::string::npos);
}

TEST_F(HostSelection, ReleaseTakesButtonsOutInOneStep)
{
    EXPECT_EQ(LastAnswer({"press region East West North", "release region East North"}), Result(true, 2));
    EXPECT_EQ(LastAnswer({"press region East", "press shop A", "release region East"}), Result(true, 7));
    EXPECT_EQ(LastAnswer({"release region East"}), Result(true, 7));
}

TEST_F(HostSelection, PressAllSelectsTheWholeItem)
{
    const std::vector<Json> answers = Answers({"press region East", "press-all shop", "items", "selection"});
    EXPECT_EQ(answers[1], Result(true, 3));
    EXPECT_EQ(answers[2].at("items")[1].at("selected"), 4);
    EXPECT_EQ(answers[3].at("selection")[1],
              Json::parse(R"({"item":2,"buttons":[1,2,3,4],"newButtons":true})"));
}

TEST_F(HostSelection, PressAllAnswersTheEnginesFalseInDifferenceAsAResult)
{
    EXPECT_EQ(LastAnswer({"mode difference", "press-all shop"}), Result(false, 7));
}

TEST_F(HostSelection, ReleaseAllReleasesHiddenButtonsToo)
{
    const std::vector<Json> answers =
        Answers({"press region East", "press-all shop", "release-all shop", "items", "hierarchy"});
    EXPECT_EQ(answers[2], Result(true, 3));
    EXPECT_EQ(answers[3].at("items")[1].at("selected"), 0);
    EXPECT_EQ(answers[4].at("levels"), Json::parse(R"([{"item":1,"records":3}])"));
}

TEST_F(HostSelection, ReleaseAllOfAnItemWithoutSelectionDoesNothing)
{
    const std::vector<Json> answers =
        Answers({"press region East", "press shop A", "release-all day", "hierarchy"});
    EXPECT_EQ(answers[2], Result(true, 2));
    EXPECT_EQ(answers[3].at("levels").size(), 2u);
    EXPECT_EQ(LastAnswer({"mode difference", "release-all shop"}), Result(true, 7));
}

TEST_F(HostSelection, ReleaseAllUndoesADifferenceTargetFirst)
{
    const std::vector<Json> answers =
        Answers({"mode difference", "press region East West", "release-all region", "difference", "items"});
    EXPECT_EQ(answers[2], Result(true, 7));
    EXPECT_TRUE(answers[3].at("item").is_null());
    EXPECT_EQ(answers[4].at("items")[0].at("selected"), 0);
    EXPECT_EQ(LastAnswer({"mode difference", "press region East", "release-all region", "difference"})
                  .at("standard"),
              Json());
    // The pair is another item's: nothing of this one is selected.
    EXPECT_EQ(
        LastAnswer({"mode difference", "press region East", "release-all shop", "difference"}).at("standard"),
        2);
}

TEST_F(HostSelection, ClearClearsAllSelections)
{
    const std::vector<Json> answers =
        Answers({"press region East", "press shop A", "clear", "selection", "hierarchy"});
    EXPECT_EQ(answers[2], Result(true, 7));
    EXPECT_TRUE(answers[3].at("selection").empty());
    EXPECT_TRUE(answers[4].at("levels").empty());
    EXPECT_EQ(LastAnswer({"clear"}), Result(true, 7));
}

TEST_F(HostSelection, ClearKeepsTheLimitationAndResetDropsIt)
{
    EXPECT_EQ(LastAnswer({"limit 0-2", "press region East", "clear"}), Result(true, 3));
    const std::vector<Json> answers = Answers(
        {"limit 0-2", "press region East", "select-item shop", "reset", "selection", "selected-items"});
    EXPECT_EQ(answers[3], Result(true, 7));
    EXPECT_TRUE(answers[4].at("selection").empty());
    EXPECT_TRUE(answers[5].at("items").empty());
}

TEST_F(HostSelection, ModeShowsAndSets)
{
    EXPECT_EQ(LastAnswer({"mode"}), Json::parse(R"({"ok":true,"mode":"narrowing","multi":false})"));
    for (const std::string mode : {"none", "or", "and", "difference", "narrowing"}) {
        EXPECT_EQ(LastAnswer({"mode " + mode}).at("mode"), mode);
        EXPECT_EQ(LastAnswer({"mode " + mode, "mode"}).at("mode"), mode);
    }
    EXPECT_EQ(Error("mode xor"),
              "There is no mode \"xor\"; expected: mode [none|or|and|difference|narrowing]");
}

TEST_F(HostSelection, ModesRelateItemsInTheirOwnWays)
{
    EXPECT_EQ(DisplayedTexts({"mode none", "press region East"}, "shop"), Json({"A", "B", "C", "(空白)"}));
    EXPECT_EQ(LastAnswer({"mode or", "press region East", "press shop A"}), Result(true, 3));
    EXPECT_EQ(DisplayedTexts({"mode and", "press region East West"}, "shop"), Json({"A"}));
    EXPECT_EQ(DisplayedTexts({"mode difference", "press region East West"}, "shop"), Json({"B"}));
}

TEST_F(HostSelection, AChangeOfTheModeClearsTheSelection)
{
    EXPECT_TRUE(LastAnswer({"press region East", "mode or", "selection"}).at("selection").empty());
    EXPECT_FALSE(LastAnswer({"press region East", "mode narrowing", "selection"}).at("selection").empty());
}

TEST_F(HostSelection, MultiShowsAndSets)
{
    EXPECT_EQ(LastAnswer({"multi"}).at("multi"), false);
    EXPECT_EQ(LastAnswer({"multi on"}), Json::parse(R"({"ok":true,"mode":"narrowing","multi":true})"));
    EXPECT_EQ(LastAnswer({"multi on", "multi off", "multi"}).at("multi"), false);
    EXPECT_EQ(Error("multi yes"), "\"yes\" is neither on nor off; expected: multi [on|off]");
}

TEST_F(HostSelection, SelectionFollowsTheLevels)
{
    EXPECT_EQ(LastAnswer({"press shop A", "press region East", "selection"}).at("selection"),
              Json::parse(R"([{"item":2,"buttons":[2],"newButtons":false},
                              {"item":1,"buttons":[2],"newButtons":false}])"));
}

TEST_F(HostSelection, RestoreTakesWhatSelectionAnswers)
{
    const std::string selection = LastAnswer({"press shop A B", "press region East", "selection"}).dump();
    const std::vector<Json> answers =
        Answers({"press day 2024-01-07", "restore '" + selection + "'", "selection"});
    EXPECT_EQ(answers[1], Result(true, 3));
    EXPECT_EQ(answers[2], Json::parse(selection));
    EXPECT_EQ(LastAnswer({"press shop A", R"(restore '[{"item":1,"buttons":[3]}]')"}), Result(true, 2));
    EXPECT_EQ(LastAnswer({"press shop A", "restore []"}), Result(true, 7));
}

TEST_F(HostSelection, RestoreRefusesWhatIsNoSelection)
{
    const std::vector<std::string> before = {"press shop A"};
    for (const std::string text : {"x", "{}", "3", R"([{"item":1}])", R"([{"item":1,"buttons":2}])",
                                   R"([{"item":1,"buttons":[],"newButtons":1}])"}) {
        EXPECT_TRUE(Error("restore '" + text + "'", before).starts_with("A selection as")) << text;
    }
    EXPECT_EQ(Error(R"(restore '[{"item":9,"buttons":[]}]')", before),
              "There is no item @9; \"items\" lists them.");
    EXPECT_EQ(Error(R"(restore '[{"item":1,"buttons":[2,9]}]')", before),
              "The item \"region\" has no button #9.");
    for (const std::string id : {"-1", "1.5", "\"1\"", "4294967296", "null"})
        EXPECT_TRUE(
            Error("restore '[{\"item\":1,\"buttons\":[" + id + "]}]'", before).starts_with("Identifiers"))
            << id;
}

TEST_F(HostSelection, NewButtonsShowsAndSets)
{
    EXPECT_EQ(LastAnswer({"new-buttons region"}), Json::parse(R"({"ok":true,"item":1,"newButtons":false})"));
    EXPECT_EQ(LastAnswer({"new-buttons region on", "new-buttons region"}).at("newButtons"), true);
    EXPECT_EQ(LastAnswer({"new-buttons region on", "new-buttons region off"}).at("newButtons"), false);
    EXPECT_NE(Error("new-buttons region maybe"), "");
}

TEST_F(HostSelection, HierarchyListsTheLevels)
{
    EXPECT_TRUE(LastAnswer({"hierarchy"}).at("levels").empty());
    EXPECT_EQ(LastAnswer({"press region East", "press shop A", "hierarchy"}).at("levels"),
              Json::parse(R"([{"item":1,"records":3},{"item":2,"records":2}])"));
}

TEST_F(HostSelection, DifferenceTellsThePair)
{
    EXPECT_EQ(LastAnswer({"mode difference", "difference"}),
              Json::parse(R"({"ok":true,"item":null,"standard":null,"target":null})"));
    EXPECT_EQ(LastAnswer({"mode difference", "press region East", "difference"}),
              Json::parse(R"({"ok":true,"item":1,"standard":2,"target":null})"));
    EXPECT_EQ(LastAnswer({"mode difference", "press region East", "press region West", "difference"}),
              Json::parse(R"({"ok":true,"item":1,"standard":2,"target":3})"));
    EXPECT_NE(Error("difference").find("mode difference"), std::string::npos);
}

TEST_F(HostSelection, ASelectionNestedWithoutEndIsRefused)
{
    const std::string deep = std::string(200000, '[') + std::string(200000, ']');
    const CHostProcess process =
        CHostProcess::Run({"--json", table}, "restore '" + deep + "'\nrestore '[{\"item\":" + deep +
                                                 ",\"buttons\":[]}]'\nrecords\n");
    EXPECT_EQ(process.GetStatus(), 1);
    const std::vector<Json> answers = process.GetAnswers();
    ASSERT_EQ(answers.size(), 3u);
    for (const std::size_t i : {std::size_t{0}, std::size_t{1}})
        EXPECT_TRUE(answers[i].value("error", "").starts_with("A selection as ")) << i;
    EXPECT_EQ(answers[2].at("count"), 7);
}

TEST_F(HostSelection, ReleasingTheStandardOfADifferenceTakesTheTargetWithIt)
{
    const std::vector<Json> answers =
        Answers({"mode difference", "press region East West", "release region West", "difference",
                 "press region West", "release region East", "difference", "selection"});
    EXPECT_EQ(answers[2].at("result"), true);
    EXPECT_EQ(answers[3].at("standard"), 2);
    EXPECT_TRUE(answers[3].at("target").is_null());
    EXPECT_EQ(answers[5].at("result"), true);
    EXPECT_TRUE(answers[6].at("standard").is_null());
    EXPECT_TRUE(answers[6].at("target").is_null());
    EXPECT_TRUE(answers[7].at("selection").empty());
}

TEST_F(HostSelection, ItemsAreSelectedInOrderIndependentlyOfButtons)
{
    EXPECT_EQ(LastAnswer({"select-item shop"}), Json::parse(R"({"ok":true,"result":true,"items":[2]})"));
    EXPECT_EQ(LastAnswer({"select-item shop", "select-item region", "selected-items"}).at("items"),
              Json({2, 1}));
    EXPECT_EQ(LastAnswer({"select-item shop", "select-item region", "unselect-item shop"}).at("items"),
              Json({1}));
    EXPECT_EQ(LastAnswer({"unselect-item shop"}).at("result"), true);
    EXPECT_EQ(LastAnswer({"select-item shop", "press region East", "clear-items"}).at("items"),
              Json::array());
    EXPECT_EQ(LastAnswer({"select-item shop", "press region East", "clear-items", "selection"})
                  .at("selection")
                  .size(),
              1u);
}

TEST_F(HostSelection, AnswersForPeopleTellTheRecordsInForce)
{
    const CHostProcess process =
        CHostProcess::Run({table, "-c", "press region East", "-c", "press shop C", "-c", "mode and", "-c",
                           "hierarchy", "-c", "selection", "-c", "mode difference", "-c", "difference", "-c",
                           "press-all region", "-c", "select-item shop"});
    EXPECT_EQ(process.GetStatus(), 0);
    EXPECT_EQ(process.GetOutput(),
              "3 of 7 records\n"
              "1 button of these had been hidden and took no part; --hidden lets them.\n"
              "0 of 7 records\n"
              "mode and, multiple selection off\n"
              "There is no level.\n"
              "Nothing is selected.\n"
              "mode difference, multiple selection off\n"
              "No pair is chosen: the first press chooses the standard, the second the target.\n"
              "The engine answered false.\n"
              "7 of 7 records\n"
              "shop\n");
}

} // namespace NSKZ::Test
