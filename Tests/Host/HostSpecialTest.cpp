// The commands of special buttons, and how the others show them.

#include "HostFixture.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>

namespace NSKZ::Test {

// By region the amounts are East 34 (3 of them), West -5 (1 and an empty cell), North 9.5 (2).
using HostSpecial = HostFixture;

namespace {

const std::string CREATE_BOTH = "special create region inc Both East West";
const std::string CREATE_FOLD = "special create region cll Fold East West";
const std::string CREATE_LEAST = "special create region cll Least --where 'amount sum bottom 1'";

bool Holds(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

TEST_F(HostSpecial, CreateMakesAnIncButtonFromAList)
{
    const std::vector<Json> answers = Answers({CREATE_BOTH, "buttons region", "press region Both", "items"});
    EXPECT_EQ(answers[0],
              Json::parse(R"({"ok":true,"item":1,"id":4000000002,"text":"Both","kind":"inc","refItem":null,
        "by":"list","members":2,"effective":true,"displayed":true,"visible":0,"dispMember":false,
        "managedByUser":true,"condition":null,"records":7,"clearedSelection":false})"));
    EXPECT_EQ(Pluck(answers[1].at("buttons"), "text"), Json({"Both", "North"}));
    EXPECT_EQ(Pluck(answers[1].at("buttons"), "kind"), Json({"inc", "normal"}));
    EXPECT_EQ(Pluck(answers[1].at("buttons"), "records"), Json({5, 2}));
    EXPECT_EQ(answers[2].at("records"), 5);
    EXPECT_EQ(answers[3].at("items")[0].at("buttons"), 5);
    EXPECT_EQ(answers[3].at("items")[0].at("displayed"), 2);
    EXPECT_EQ(answers[3].at("items")[0].at("selected"), 1);
}

TEST_F(HostSpecial, CreateKeepsTheMembersOfAnIncButtonDisplayedIfAsked)
{
    EXPECT_EQ(DisplayedTexts({CREATE_BOTH + " --disp-members"}, "region"),
              Json({"Both", "East", "West", "North"}));
    EXPECT_EQ(LastAnswer({CREATE_BOTH + " --disp-members"}).at("dispMember"), true);
}

TEST_F(HostSpecial, CreateFoldsTheMembersOfACllButtonIntoIt)
{
    const std::vector<Json> answers = Answers({CREATE_FOLD, "buttons region", "button region East"});
    EXPECT_EQ(answers[0].at("id"), 4160000002u);
    EXPECT_TRUE(answers[0].at("dispMember").is_null());
    EXPECT_EQ(Pluck(answers[1].at("buttons"), "text"), Json({"Fold", "North"}));
    EXPECT_EQ(answers[2].at("reasons"), Json({"member of a collection button chosen by list"}));
}

TEST_F(HostSpecial, CreateWithoutMembersMakesAHiddenButton)
{
    const std::vector<Json> answers =
        Answers({"special create region inc None --none", "button region None"});
    EXPECT_EQ(answers[0].at("members"), 0);
    EXPECT_EQ(answers[1].at("reasons"), Json({"no member", "no member with records"}));
}

TEST_F(HostSpecial, CreatePicksMembersByAConditionAndPicksThemAnewAfterAPress)
{
    const std::vector<Json> answers =
        Answers({CREATE_LEAST, "special members region Least", "press shop B", "special members region Least",
                 "clear", "special members region Least"});
    EXPECT_EQ(answers[0].at("by"), "condition");
    EXPECT_EQ(answers[0].at("condition"), "amount sum bottom 1");
    EXPECT_EQ(answers[0].at("members"), 1);
    EXPECT_EQ(Pluck(answers[1].at("buttons"), "text"), Json({"West"}));
    EXPECT_EQ(Pluck(answers[3].at("buttons"), "text"), Json({"North"}));
    EXPECT_EQ(Pluck(answers[5].at("buttons"), "text"), Json({"West"}));
}

TEST_F(HostSpecial, ConditionsPickWhatTheySay)
{
    const std::vector<std::pair<std::string, Json>> cases = {
        {"amount sum top 1", {"East"}},
        {"amount sum top 2", {"East", "North"}},
        {"amount sum not top 2", {"West"}},
        {"amount sum except bottom 1", {"East", "North"}},
        {"amount count = 2", {"North"}},
        {"not amount count = 2", {"East", "West"}},
        {"amount average > 0", {"East", "North"}},
        {"amount average < 0 or amount count bottom 2", {"West", "North"}},
        {"amount ratio >= 0.5", {"East"}},
        {"not (amount sum top 1 or amount sum bottom 1)", {"North"}},
        {"@3 sum > 100", Json::array()},
    };
    for (const auto& [condition, texts] : cases) {
        const std::vector<Json> answers =
            Answers({"special create region cll X --where '" + condition + "'", "special members region X"});
        EXPECT_EQ(answers[0].at("condition"), condition);
        Json picked = Pluck(answers[1].at("buttons"), "text");
        Json expected = texts;
        std::sort(picked.begin(), picked.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(picked, expected) << condition;
    }
}

TEST_F(HostSpecial, CreateClearsTheSelectionAndSaysSo)
{
    const std::vector<Json> answers = Answers({"press shop A", CREATE_BOTH, "selection"});
    EXPECT_EQ(answers[1].at("clearedSelection"), true);
    EXPECT_EQ(answers[1].at("records"), 7);
    EXPECT_TRUE(answers[2].at("selection").empty());
    const CHostProcess shown = CHostProcess::Run({table, "-c", "press shop A", "-c", CREATE_BOTH});
    EXPECT_TRUE(Holds(shown.GetOutput(), "All selections were cleared.")) << shown.GetOutput();
}

TEST_F(HostSpecial, TheTotalIsThatOfTheDisplayedButtons)
{
    const auto totalOf = [](const Json& answer) {
        double total = 0;
        for (const Json& value : answer.at("values"))
            total += value.at("value").get<double>();
        return total;
    };
    // Making a cll button and letting conditions pick change the display after totals were asked for.
    const std::vector<Json> answers =
        Answers({"sum region amount", "special create region cll R --where 'amount ratio >= 0.2'",
                 "sum region amount", "special create region cll Fold East North", "sum region amount",
                 "special create shop cll S --where 'amount ratio top 1'", "press region West --hidden",
                 "sum shop amount"});
    for (const std::size_t i : {0u, 2u, 4u, 7u})
        EXPECT_EQ(answers[i].at("total").get<double>(), totalOf(answers[i])) << answers[i];
}

TEST_F(HostSpecial, ARatioIsThatOfThePresentDisplay)
{
    // An inc button that leaves its members displayed counts with them; folded away it does not.
    const std::vector<std::string> before = {"special create region inc Both East West --disp-members",
                                             "sum region amount"};
    std::vector<std::string> commands = before;
    commands.push_back("special create region cll Z Both West");
    commands.push_back("special create region cll R --where 'amount ratio >= 0.4'");
    commands.push_back("special members region R");
    std::vector<std::string> withoutAsking = commands;
    withoutAsking.erase(withoutAsking.begin() + 1);
    EXPECT_EQ(LastAnswer(commands), LastAnswer(withoutAsking));
}

TEST_F(HostSpecial, ANameOfASwitchedOffButtonIsTaken)
{
    EXPECT_TRUE(Holds(
        Error("special create region inc Both North", {CREATE_BOTH, "special effective region Both off"}),
        "Another button of the item shows \"Both\" already"));
}

TEST_F(HostSpecial, CreateRefusesWhatMakesNoSense)
{
    const std::vector<std::string> before = {"press shop A"};
    EXPECT_EQ(Error("special create region inc X --where 'amount sum top 1'", before),
              "An inc button takes its members from a list; a condition is for cll buttons.");
    EXPECT_EQ(Error("special create region cll X East --disp-members", before),
              "A cll button always hides its members; --disp-members is for inc buttons.");
    EXPECT_TRUE(
        Holds(Error("special create region col X East", before),
              "A special button is of the kind inc, cll or virinc, not \"col\"; expected: special create"));
    EXPECT_TRUE(Holds(Error("special create region cll X East --where 'amount sum top 1'", before),
                      "either from a list or from a condition"));
    EXPECT_TRUE(Holds(Error("special create region cll X --none --where 'amount sum top 1'", before),
                      "either from a list or from a condition"));
    EXPECT_TRUE(Holds(Error("special create region inc X", before), "Either members or --none"));
    EXPECT_TRUE(Holds(Error("special create region inc X East --none", before), "Either members or --none"));
    EXPECT_TRUE(Holds(Error("special create region inc", before), "Something is missing"));
    EXPECT_EQ(Error("special create region inc '' East", before), "A special button needs a text to show.");
    EXPECT_TRUE(Holds(Error("special create region inc West East", before),
                      "Another button of the item shows \"West\" already"));
    EXPECT_EQ(Error("special create region inc X Est", before), "The item \"region\" has no button \"Est\".");
    EXPECT_TRUE(Holds(Error("special create regoin inc X East", before), "There is no item \"regoin\""));
    EXPECT_EQ(Error("special create region inc X Least", {CREATE_LEAST}),
              "The button \"Least\" picks its members by a condition and cannot be a member itself.");
}

TEST_F(HostSpecial, AWrongConditionIsRefusedWithItsPlace)
{
    const Json answer = ErrorAnswer(
        "special create region cll X --where 'amount sum top 1 and amuont sum > 3'", {"press shop A"});
    EXPECT_EQ(answer.size(), 3u);
    EXPECT_EQ(answer.at("position"), 21);
    EXPECT_TRUE(Holds(answer.at("error"), "There is no item \"amuont\"; the items are \"region\""));
    EXPECT_EQ(ErrorAnswer("special create region cll X --where ''").at("position"), 0);
    EXPECT_EQ(ErrorAnswer("special create region cll X --where 'shop sum top 1'").at("error"),
              "The item \"shop\" cannot be summed: an item of type number is expected.");
    EXPECT_EQ(ErrorAnswer("special where region Least 'amount max top 1'", {CREATE_LEAST}).at("position"), 7);

    const CHostProcess shown =
        CHostProcess::Run({table, "-c", "special create region cll X --where 'amount sum\ttop x'"});
    EXPECT_EQ(shown.GetStatus(), 1);
    EXPECT_EQ(shown.GetOutput(), "");
    EXPECT_EQ(shown.GetErrors(), "\"x\" stands where a count of buttons, from 1 on, is expected.\n"
                                 "  amount sum\\ttop x\n"
                                 "                  ^\n");
}

TEST_F(HostSpecial, ThePlaceIsCountedInCharactersAndShownUnderWideOnes)
{
    table = dir.WriteFile("sjis.csv", SJIS(JAPANESE_TEXT));
    EXPECT_EQ(ErrorAnswer("special create @2 cll 上位 --where '金額 上位 3'").at("position"), 3);
    const CHostProcess shown =
        CHostProcess::Run({table, "-c", "special create @2 cll 上位 --where '金額 上位 3'"});
    EXPECT_TRUE(Holds(shown.GetErrors(), "\n  金額 上位 3\n       ^\n")) << shown.GetErrors();
}

TEST_F(HostSpecial, FieldsOfConditionsAreNamedAsElsewhere)
{
    table = dir.WriteFile("names.csv", "item,unit price,sum,@2,it's\nx,1,1,1,1\ny,2,2,2,2\n");
    for (const std::string field : {"\"unit price\"", "sum", "@2", "@@2", "@4", "\"it's\""}) {
        std::string condition = field + " sum top 1";
        std::string word;
        for (const char character : condition)
            word.append(character == '\'' ? "'\\''" : std::string(1, character));
        EXPECT_EQ(LastAnswer({"special create item cll X --where '" + word + "'", "special members item X"})
                      .at("buttons")[0]
                      .at("text"),
                  "y")
            << field;
    }
}

TEST_F(HostSpecial, ListShowsTheSpecialButtonsOfAnItemOrOfAll)
{
    const std::vector<Json> answers =
        Answers({"special list", CREATE_BOTH, CREATE_LEAST, "special create shop cll AB A B",
                 "special effective region Both off", "special list", "special list --all",
                 "special list region --all", "special list region --all --max 1"});
    EXPECT_EQ(answers[0], Json::parse(R"({"ok":true,"item":null,"special":[],"count":0})"));
    EXPECT_EQ(Pluck(answers[5].at("special"), "text"), Json({"Least", "AB"}));
    EXPECT_EQ(Pluck(answers[6].at("special"), "text"), Json({"Both", "Least", "AB"}));
    EXPECT_EQ(Pluck(answers[6].at("special"), "item"), Json({1, 1, 2}));
    EXPECT_EQ(Pluck(answers[6].at("special"), "by"), Json({"list", "condition", "list"}));
    EXPECT_EQ(Pluck(answers[6].at("special"), "effective"), Json({false, true, true}));
    EXPECT_EQ(Pluck(answers[7].at("special"), "text"), Json({"Both", "Least"}));
    EXPECT_EQ(answers[7].at("item"), 1);
    EXPECT_EQ(answers[8].at("special").size(), 1u);
    EXPECT_EQ(answers[8].at("count"), 2);
}

TEST_F(HostSpecial, ListForPeopleTellsWhatPicksTheMembers)
{
    const CHostProcess shown = CHostProcess::Run(
        {table, "-c", "special list", "-c", CREATE_BOTH + " --disp-members", "-c", CREATE_LEAST, "-c",
         "special list", "-c", "special effective region Both off", "-c", "special list --all"});
    EXPECT_EQ(shown.GetStatus(), 0) << shown.GetErrors();
    const std::string& output = shown.GetOutput();
    EXPECT_TRUE(
        output.starts_with("There is no special button; --all lists those too that are switched off.\n"))
        << output;
    EXPECT_TRUE(Holds(output, "region  #4000000002  Both    inc         2  list                 its members "
                              "stay displayed\n"))
        << output;
    EXPECT_TRUE(Holds(output, "region  #4160000002  Least   cll         1  amount sum bottom 1\n")) << output;
    EXPECT_TRUE(Holds(output, "its members stay displayed; hidden: switched off\n")) << output;
}

TEST_F(HostSpecial, MembersListsThemAsButtonsInTheirOrder)
{
    const std::vector<Json> answers =
        Answers({"special create region inc Both West East", "special members region Both", "press shop C",
                 "special members region Both --displayed", "special members region Both --max 1"});
    EXPECT_EQ(answers[1].at("item"), 1);
    EXPECT_EQ(answers[1].at("id"), 4000000002u);
    EXPECT_EQ(Pluck(answers[1].at("buttons"), "text"), Json({"West", "East"}));
    EXPECT_EQ(Pluck(answers[1].at("buttons"), "displayed"), Json({false, false}));
    EXPECT_EQ(Pluck(answers[3].at("buttons"), "text"), Json({"West"})); // East has no record at C
    EXPECT_EQ(answers[4].at("buttons").size(), 1u);
    EXPECT_EQ(answers[4].at("count"), 2);
    EXPECT_EQ(Error("special members region East"),
              "The button \"East\" of \"region\" is no special button; \"special list\" lists these.");
    EXPECT_EQ(Error("special members region Fold"), "The item \"region\" has no button \"Fold\".");
}

TEST_F(HostSpecial, MembersForPeopleTellWhatHidesThemBesideBeingMembers)
{
    const CHostProcess shown = CHostProcess::Run(
        {table, "-c", CREATE_FOLD, "-c", "press shop C", "-c", "special members region Fold", "-c",
         "special create region inc X --none", "-c", "special members region X"});
    EXPECT_TRUE(
        shown.GetOutput().ends_with("id  button  records  in force\n"
                                    "#2  East          3         0  hidden: not related to the selection\n"
                                    "#3  West          2         1\n"
                                    "         id  button  kind  members  picked by\n"
                                    "#4000000002  X       inc         0  list       hidden: no member, "
                                    "no member with records\n"
                                    "All selections were cleared.\n"
                                    "There is no member.\n"))
        << shown.GetOutput();
}

TEST_F(HostSpecial, MembersAreSetAddedAndRemoved)
{
    const std::vector<Json> answers = Answers(
        {CREATE_BOTH, "special set-members region Both North East North", "special members region Both",
         "special add-members region Both West #1", "special members region Both",
         "special remove-members region Both North West", "special members region Both", "press shop A",
         "special set-members region Both --none", "special members region Both"});
    EXPECT_EQ(answers[1].at("members"), 2);
    EXPECT_EQ(Pluck(answers[2].at("buttons"), "text"), Json({"North", "East"}));
    EXPECT_EQ(Pluck(answers[4].at("buttons"), "id"), Json({4, 2, 3, 1}));
    EXPECT_EQ(Pluck(answers[6].at("buttons"), "id"), Json({2, 1}));
    EXPECT_EQ(answers[8].at("clearedSelection"), true);
    EXPECT_EQ(answers[8].at("members"), 0);
    EXPECT_TRUE(answers[9].at("buttons").empty());
}

TEST_F(HostSpecial, WrongChangesOfMembersAreRefused)
{
    const std::vector<std::string> before = {CREATE_BOTH, "special create region inc Outer Both North",
                                             "special create region cll Outmost Outer", CREATE_LEAST,
                                             "press shop A"};
    EXPECT_EQ(Error("special add-members region Both Outmost", before),
              "The button \"Outmost\" holds \"Both\", directly or through others, and cannot be its member.");
    EXPECT_EQ(Error("special set-members region Both East Both", before),
              "The button \"Both\" would come to hold itself.");
    EXPECT_EQ(Error("special add-members region Both Least", before),
              "The button \"Least\" picks its members by a condition and cannot be a member itself.");
    EXPECT_EQ(Error("special add-members region Both North East", before),
              "The button \"East\" would be a member twice.");
    EXPECT_EQ(Error("special remove-members region Both East North", before),
              "The button \"North\" is no member of \"Both\".");
    EXPECT_EQ(Error("special remove-members region Both East East", before),
              "The button \"East\" is no member of \"Both\".");
    for (const std::string command : {"set-members", "add-members", "remove-members"}) {
        EXPECT_EQ(Error("special " + command + " region Least East", before),
                  "The button \"Least\" picks its members by a condition; \"special where\" changes that.");
        EXPECT_NE(Error("special " + command + " region Both", before), "");
    }
    EXPECT_NE(Error("special set-members region Both East --none", before), "");
}

TEST_F(HostSpecial, ALoopThroughASwitchedOffButtonIsRefusedToo)
{
    EXPECT_NE(
        Error("special add-members region Both Outer",
              {CREATE_BOTH, "special create region inc Outer Both", "special effective region Outer off"}),
        "");
}

TEST_F(HostSpecial, WhereShowsSetsAndDropsTheCondition)
{
    const std::vector<Json> answers =
        Answers({CREATE_LEAST, "special where region Least", "press shop A",
                 "special where region Least 'NOT amount  count top 1'", "special members region Least",
                 "special where region Least --clear", "special members region Least",
                 "special where region Least", "special where region Least 'amount sum top 1'"});
    EXPECT_EQ(answers[1].at("condition"), "amount sum bottom 1");
    EXPECT_FALSE(answers[1].contains("clearedSelection"));
    EXPECT_EQ(answers[3].at("condition"), "NOT amount  count top 1");
    EXPECT_EQ(answers[3].at("clearedSelection"), true);
    EXPECT_EQ(Pluck(answers[4].at("buttons"), "text"), Json({"North", "West"}));
    EXPECT_TRUE(answers[5].at("condition").is_null());
    EXPECT_EQ(answers[5].at("by"), "condition");
    EXPECT_TRUE(answers[6].at("buttons").empty());
    EXPECT_EQ(answers[8].at("members"), 1);
}

TEST_F(HostSpecial, WhereRefusesButtonsThatTakeAList)
{
    const std::vector<std::string> before = {CREATE_FOLD, "press shop A"};
    const std::string expected =
        "The button \"Fold\" takes its members from a list; \"special set-members\" changes it.";
    EXPECT_EQ(Error("special where region Fold 'amount sum top 1'", before), expected);
    EXPECT_EQ(Error("special where region Fold --clear", before), expected);
    EXPECT_TRUE(Holds(Error("special where region Least 'amount sum top 1' --clear", {CREATE_LEAST}),
                      "do not go together"));
    EXPECT_TRUE(LastAnswer({CREATE_FOLD, "special where region Fold"}).at("condition").is_null());
}

TEST_F(HostSpecial, HoldersTellsWhatHoldsAButton)
{
    const std::vector<std::string> before = {CREATE_BOTH, "special create region cll Outer Both",
                                             "special create region inc Lone East"};
    const auto holdersOf = [&](const std::string& words) {
        std::vector<std::string> commands = before;
        commands.push_back("special holders region " + words);
        return LastAnswer(commands);
    };
    const Json ofEast = holdersOf("East");
    EXPECT_EQ(ofEast.at("direct"), Json({4000000002u, 4000000003u}));
    EXPECT_EQ(ofEast.at("roots"), Json({4000000003u, 4160000002u}));
    EXPECT_EQ(Pluck(ofEast.at("holders"), "text"), Json({"Both", "Lone", "Outer"}));
    EXPECT_EQ(Pluck(ofEast.at("holders"), "direct"), Json({true, true, false}));
    EXPECT_EQ(Pluck(ofEast.at("holders"), "root"), Json({false, true, true}));
    EXPECT_TRUE(holdersOf("North").at("holders").empty());
    const CHostProcess shown =
        CHostProcess::Run({table, "-c", before[0], "-c", before[1], "-c", "special holders region West"});
    EXPECT_TRUE(Holds(shown.GetOutput(), "Both    inc   directly\n")) << shown.GetOutput();
    EXPECT_TRUE(Holds(shown.GetOutput(), "Outer   cll   through others  outermost\n")) << shown.GetOutput();
}

TEST_F(HostSpecial, HoldersWithAllTellsTheSwitchedOffOnesToo)
{
    const std::vector<std::string> before = {CREATE_BOTH, "special effective region Both off"};
    const std::vector<Json> answers =
        Answers({before[0], before[1], "special holders region East", "special holders region East --all"});
    EXPECT_TRUE(answers[2].at("holders").empty());
    EXPECT_EQ(Pluck(answers[3].at("holders"), "text"), Json({"Both"}));
    EXPECT_EQ(Pluck(answers[3].at("holders"), "effective"), Json({false}));
}

TEST_F(HostSpecial, EffectiveShowsAndSets)
{
    const std::vector<Json> answers = Answers(
        {CREATE_FOLD, "special effective region Fold", "press shop A", "special effective region Fold off",
         "buttons region", "records-of region Fold", "special effective region Fold on", "buttons region"});
    EXPECT_EQ(answers[1].at("effective"), true);
    EXPECT_EQ(answers[3].at("effective"), false);
    EXPECT_EQ(answers[3].at("clearedSelection"), true);
    EXPECT_EQ(Pluck(answers[4].at("buttons"), "text"), Json({"East", "West", "North"}));
    EXPECT_EQ(answers[5].at("count"), 0);
    EXPECT_EQ(answers[6].at("effective"), true);
    EXPECT_EQ(Pluck(answers[7].at("buttons"), "text"), Json({"Fold", "North"}));
    EXPECT_TRUE(Holds(Error("special effective region Fold yes", {CREATE_FOLD}), "neither on nor off"));
}

TEST_F(HostSpecial, DispMembersShowsAndSetsForIncButtonsAlone)
{
    const std::vector<Json> answers =
        Answers({CREATE_BOTH, "special disp-members region Both", "special disp-members region Both on",
                 "buttons region", "special disp-members region Both off", "buttons region"});
    EXPECT_EQ(answers[1].at("dispMember"), false);
    EXPECT_EQ(answers[2].at("dispMember"), true);
    EXPECT_EQ(Pluck(answers[3].at("buttons"), "text"), Json({"Both", "East", "West", "North"}));
    EXPECT_EQ(Pluck(answers[5].at("buttons"), "text"), Json({"Both", "North"}));
    EXPECT_EQ(Error("special disp-members region Fold on", {CREATE_FOLD}),
              "The button \"Fold\" is no inc button: it always hides its members.");
}

TEST_F(HostSpecial, DestroyRemovesAButtonAndFreesItsMembers)
{
    const std::vector<Json> answers =
        Answers({CREATE_FOLD, "press shop A", "special destroy region Fold", "buttons region",
                 "special list --all", "special create region cll Next North"});
    EXPECT_EQ(answers[2], Json::parse(R"({"ok":true,"result":true,"item":1,"id":4160000002,"records":7,
                                          "clearedSelection":true})"));
    EXPECT_EQ(Pluck(answers[3].at("buttons"), "text"), Json({"East", "West", "North"}));
    EXPECT_TRUE(answers[4].at("special").empty());
    EXPECT_EQ(answers[5].at("id"), 4160000002u);
    EXPECT_EQ(Error("special destroy region East", {"press shop A"}),
              "The button \"East\" of \"region\" is no special button; \"special list\" lists these.");
}

TEST_F(HostSpecial, RenewAnswersTheButtonsWhoseConditionsAskForTheItem)
{
    table = dir.WriteFile("two.csv", "item,n,m\nx,1,5\ny,2,4\n");
    const std::vector<Json> answers =
        Answers({"special create item cll N --where 'n sum top 1'",
                 "special create item cll Both --where 'm sum top 1 or n sum > 100'", "press n 1",
                 "special renew m", "special renew n", "selection"});
    EXPECT_EQ(answers[3].at("result"), true);
    EXPECT_EQ(answers[3].at("field"), 3);
    EXPECT_EQ(Pluck(answers[3].at("special"), "text"), Json({"Both"}));
    EXPECT_EQ(Pluck(answers[4].at("special"), "text"), Json({"N", "Both"}));
    EXPECT_EQ(answers[5].at("selection").size(), 1u);
    EXPECT_NE(Error("special renew item"), "");
}

TEST_F(HostSpecial, OtherCommandsTakeAndShowSpecialButtonsLikeAnyOthers)
{
    const std::vector<Json> answers =
        Answers({CREATE_FOLD, CREATE_LEAST, "sum region amount", "records-of region Fold North --list",
                 "press region #4160000002", "press shop B", "selection", "button region Fold",
                 "button region Least", "alias region Fold Folded", "release-all region"});
    EXPECT_EQ(Pluck(answers[2].at("values"), "text"), Json({"Fold", "Least"}));
    EXPECT_EQ(answers[2].at("values")[0].at("value"), 29.0);
    EXPECT_EQ(answers[3].at("count"), 7);
    EXPECT_EQ(answers[4].at("records"), 5);
    EXPECT_EQ(answers[5].at("records"), 1);
    EXPECT_EQ(answers[6].at("selection")[0].at("buttons"), Json({4160000002u}));
    EXPECT_EQ(answers[7].at("selected"), true);
    EXPECT_EQ(answers[7].at("members"), 2);
    EXPECT_EQ(answers[7].at("records"), 5);
    EXPECT_EQ(answers[8].at("condition"), "amount sum bottom 1");
    EXPECT_EQ(answers[9].at("text"), "Folded");
    EXPECT_EQ(answers[10].at("records"), 7);
}

TEST_F(HostSpecial, ButtonsExpandsConditionsAndPutsThemLast)
{
    const std::vector<std::string> before = {CREATE_LEAST, "special create region cll Fold East"};
    EXPECT_EQ(DisplayedTexts(before, "region"), Json({"Least", "Fold", "North"}));
    EXPECT_EQ(DisplayedTexts(before, "region --conditions-last"), Json({"Fold", "North", "Least"}));
    EXPECT_EQ(DisplayedTexts(before, "region --expand --conditions-last"),
              Json({"Fold", "West", "North", "Least"}));
    EXPECT_EQ(DisplayedTexts(before, "region --order name --conditions-last"),
              Json({"Fold", "North", "Least"}));
}

TEST_F(HostSpecial, EmptyValueShowsAndSetsWhetherItIsDisplayed)
{
    const std::vector<Json> answers =
        Answers({"empty-value shop", "press region North", "empty-value shop off", "selection",
                 "buttons shop", "button shop #1", "empty-value shop on", "buttons shop"});
    EXPECT_EQ(answers[0], Json::parse(R"({"ok":true,"item":2,"shown":true})"));
    EXPECT_EQ(answers[2],
              Json::parse(R"({"ok":true,"item":2,"shown":false,"records":7,"clearedSelection":true})"));
    EXPECT_TRUE(answers[3].at("selection").empty());
    EXPECT_EQ(Pluck(answers[4].at("buttons"), "text"), Json({"A", "B", "C"}));
    EXPECT_EQ(answers[5].at("reasons"), Json({"the empty value is not shown"}));
    EXPECT_EQ(answers[6].at("clearedSelection"), false);
    EXPECT_EQ(answers[7].at("count"), 4);
    EXPECT_TRUE(Holds(Error("empty-value shop maybe", {"press region North"}), "neither on nor off"));
    EXPECT_EQ(CHostProcess::Run({table, "-c", "empty-value shop off"}).GetOutput(),
              "The empty value of shop is not shown.\n");
}

TEST_F(HostSpecial, ResetRemovesSpecialButtonsAndShowsTheEmptyValueAgain)
{
    const std::vector<Json> answers =
        Answers({CREATE_FOLD, "empty-value shop off", "reset", "special list --all", "empty-value shop"});
    EXPECT_TRUE(answers[3].at("special").empty());
    EXPECT_EQ(answers[4].at("shown"), true);
}

TEST_F(HostSpecial, SpecialButtonsTakePartInADifference)
{
    const std::vector<Json> answers =
        Answers({CREATE_BOTH, "mode difference", "press region Both North", "difference", "buttons shop"});
    EXPECT_EQ(answers[3].at("standard"), 4000000002u);
    EXPECT_EQ(answers[3].at("target"), 4);
    EXPECT_EQ(Pluck(answers[4].at("buttons"), "text"), Json({"A", "C"}));
}

// ---- The sample table, against what a plain walk over its rows gives.

namespace {

// The greatest sums of amounts by product, among the rows of a region or all, as texts in that order.
std::vector<std::string> GetTopProducts(const std::string& region, std::size_t count)
{
    std::ifstream file(KZC_SAMPLES_DIR "/sales_sjis.csv", std::ios::binary);
    const std::string text =
        FromSJIS(std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>()));
    std::map<std::string, double> sums;
    bool isHeader = true;
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t end = std::min(text.find('\n', pos), text.size());
        std::vector<std::string> cells(1);
        for (const char character : text.substr(pos, end - pos)) {
            if (character == ',')
                cells.emplace_back();
            else if (character != '\r')
                cells.back() += character;
        }
        pos = end + 1;
        if (!isHeader && cells.size() == 11 && (region.empty() || cells[2] == region))
            sums[cells[6]] += cells[8].empty() ? 0 : std::stod(cells[8]);
        isHeader = false;
    }
    std::vector<std::pair<double, std::string>> ranking;
    for (const auto& [product, sum] : sums)
        ranking.emplace_back(-sum, product);
    std::sort(ranking.begin(), ranking.end());
    std::vector<std::string> products;
    for (std::size_t i = 0; i < count; ++i)
        products.push_back(ranking.at(i).second);
    return products;
}

} // namespace

TEST_F(HostSpecial, ConditionsOnTheSampleTableFollowThePresses)
{
    table = KZC_SAMPLES_DIR "/sales_sjis.csv";
    const std::vector<Json> answers =
        Answers({"special create 商品 cll 上位 --where '金額 sum top 3'", "special members 商品 上位",
                 "buttons 商品", "press 地域 関東", "special members 商品 上位", "press 商品 上位", "records",
                 "special list", "press 地域 北海道", "special members 商品 上位"});
    EXPECT_EQ(Pluck(answers[1].at("buttons"), "text"), Json(GetTopProducts("", 3)));
    EXPECT_EQ(answers[2].at("buttons")[0].at("text"), "上位");
    EXPECT_EQ(answers[2].at("count"), 15);
    const Json inKanto = answers[4].at("buttons");
    EXPECT_EQ(Pluck(inKanto, "text"), Json(GetTopProducts("関東", 3)));
    std::size_t recCount = 0;
    for (const Json& button : inKanto)
        recCount += button.at("targetRecords").get<std::size_t>();
    EXPECT_EQ(answers[5].at("records"), recCount);
    EXPECT_EQ(answers[7].at("special")[0].at("condition"), "金額 sum top 3");
    EXPECT_EQ(Pluck(answers[9].at("buttons"), "text"), Json(GetTopProducts("北海道", 3)));
}

} // namespace NSKZ::Test
