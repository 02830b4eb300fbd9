// Virtual items and their buttons.

#include "HostFixture.h"

namespace NSKZ::Test {

using HostVirtual = HostFixture;

namespace {

constexpr DWORD OWN = 2000000001;
constexpr DWORD COMMON = 1000000001;
const std::string CREATE = "virtual create Areas";
const std::string CREATE_SIDES = "special create Areas virinc Sides --of region East West";
const std::string CREATE_SHOPS = "special create Areas virinc \"A or B\" --of shop A B";

bool Holds(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

TEST_F(HostVirtual, CreateMakesAnItemThatStandsOnNoColumn)
{
    const std::vector<Json> answers =
        Answers({CREATE, "virtual create Shared --common", "items", "virtual list"});
    EXPECT_EQ(answers[0], Json::parse(R"({"ok":true,"item":2000000001,"name":"Areas","common":false,
        "effective":true,"buttons":0,"refItems":[]})"));
    EXPECT_EQ(answers[1].at("item"), COMMON);
    EXPECT_EQ(answers[1].at("common"), true);
    EXPECT_EQ(answers[2].at("items")[6], Json::parse(R"({"id":2000000001,"name":"Areas","type":"virtual",
        "buttons":0,"displayed":0,"selected":0,"effective":true})"));
    EXPECT_EQ(Pluck(answers[3].at("virtual"), "name"), Json({"Shared", "Areas"}));
}

TEST_F(HostVirtual, ItsButtonsGroupThoseOfOtherItems)
{
    const std::vector<Json> answers =
        Answers({CREATE, CREATE_SIDES, CREATE_SHOPS, "buttons Areas", "press Areas Sides", "buttons shop",
                 "sum Areas amount", "buttons region", "virtual list", "special members Areas Sides"});
    EXPECT_EQ(answers[1], Json::parse(R"({"ok":true,"item":2000000001,"id":4080000002,"text":"Sides",
        "kind":"virinc","refItem":1,"by":"list","members":2,"effective":true,"displayed":true,"visible":0,
        "dispMember":null,"managedByUser":true,"condition":null,"records":7,"clearedSelection":false})"));
    EXPECT_EQ(Pluck(answers[3].at("buttons"), "text"), Json({"Sides", "A or B"}));
    EXPECT_EQ(Pluck(answers[3].at("buttons"), "records"), Json({5, 5}));
    EXPECT_EQ(Pluck(answers[3].at("buttons"), "kind"), Json({"virinc", "virinc"}));
    EXPECT_EQ(answers[4].at("records"), 5);
    EXPECT_EQ(Pluck(answers[5].at("buttons"), "text"), Json({"A", "B", "C"}));
    EXPECT_EQ(Pluck(answers[6].at("values"), "value"), Json({29.0, 36.0}));
    EXPECT_EQ(Pluck(answers[7].at("buttons"), "text"), Json({"East", "West"}));
    EXPECT_EQ(answers[8].at("virtual")[0].at("refItems"), Json({1, 2}));
    EXPECT_EQ(answers[9].at("memberItem"), 1);
    EXPECT_EQ(Pluck(answers[9].at("buttons"), "text"), Json({"East", "West"}));
}

TEST_F(HostVirtual, MembersAreNamedByTheTextsOfTheOtherItem)
{
    const std::vector<Json> answers =
        Answers({CREATE, CREATE_SIDES, "special add-members Areas Sides North",
                 "special remove-members Areas Sides East", "special set-members Areas Sides North",
                 "records-of Areas Sides"});
    EXPECT_EQ(answers[2].at("members"), 3);
    EXPECT_EQ(answers[3].at("members"), 2);
    EXPECT_EQ(answers[4].at("members"), 1);
    EXPECT_EQ(answers[5].at("count"), 2);
}

TEST_F(HostVirtual, AConditionPicksAmongTheButtonsOfTheOtherItem)
{
    const std::vector<Json> answers =
        Answers({CREATE, "special create Areas virinc Best --of region --where 'amount sum top 1'",
                 "special members Areas Best", "press shop B", "special members Areas Best"});
    EXPECT_EQ(answers[1].at("condition"), "amount sum top 1");
    EXPECT_EQ(Pluck(answers[2].at("buttons"), "text"), Json({"East"}));
    EXPECT_EQ(Pluck(answers[4].at("buttons"), "text"), Json({"East"}));
}

TEST_F(HostVirtual, HoldersOfOtherItemsAreShown)
{
    const Json answer = LastAnswer({CREATE, CREATE_SIDES, "special holders region East"});
    EXPECT_EQ(Pluck(answer.at("holders"), "item"), Json::array({OWN}));
    EXPECT_EQ(Pluck(answer.at("holders"), "text"), Json({"Sides"}));
}

TEST_F(HostVirtual, ItIsRenamedSwitchedAndDestroyed)
{
    const std::vector<Json> answers =
        Answers({CREATE, CREATE_SIDES, "virtual rename Areas \"Sales areas\"", "press \"Sales areas\" Sides",
                 "virtual effective \"Sales areas\" off", "virtual effective \"Sales areas\"",
                 "virtual effective \"Sales areas\" on", "press \"Sales areas\" Sides",
                 "virtual destroy \"Sales areas\"", "virtual list"});
    EXPECT_EQ(answers[2].at("name"), "Sales areas");
    EXPECT_EQ(answers[4].at("effective"), false);
    EXPECT_EQ(answers[4].at("clearedSelection"), true);
    EXPECT_EQ(answers[4].at("records"), 7);
    EXPECT_FALSE(answers[5].contains("records"));
    EXPECT_EQ(answers[7].at("records"), 5);
    EXPECT_EQ(answers[8], Json::parse(R"({"ok":true,"result":true,"item":2000000001,"records":7,
        "clearedSelection":true})"));
    EXPECT_EQ(answers[9].at("virtual"), Json::array());
}

TEST_F(HostVirtual, ResetLeavesCommonItems)
{
    const std::vector<Json> answers =
        Answers({CREATE, "virtual create Shared --common", "special create region inc Both East West",
                 "special create Shared virinc Group --of region Both North", "reset", "virtual list",
                 "special members Shared Group", "records-of Shared Group"});
    EXPECT_EQ(Pluck(answers[5].at("virtual"), "name"), Json({"Shared"}));
    EXPECT_EQ(Pluck(answers[6].at("buttons"), "kind"), Json({"absent", "normal"}));
    EXPECT_EQ(answers[7].at("count"), 2);
}

TEST_F(HostVirtual, WhatGroupedADestroyedItemStaysSwitchedOff)
{
    const std::vector<std::string> before = {CREATE, CREATE_SIDES, "virtual create Higher",
                                             "special create Higher virinc Top --of Areas Sides",
                                             "virtual destroy Areas"};
    std::vector<std::string> commands = before;
    commands.push_back("special list --all");
    const Json listed = LastAnswer(commands).at("special");
    EXPECT_EQ(Pluck(listed, "text"), Json({"Top"}));
    EXPECT_EQ(Pluck(listed, "effective"), Json::array({false}));
    EXPECT_EQ(Pluck(listed, "refItem"), Json::array({nullptr}));
    EXPECT_TRUE(Holds(Error("special effective Higher Top on", before), "is gone"));
    EXPECT_TRUE(Holds(Error("special set-members Higher Top --none", before), "is gone"));
}

TEST_F(HostVirtual, RefusalsTellWhatIsWrong)
{
    const std::vector<std::string> before = {CREATE, CREATE_SIDES, "virtual create Shared --common"};
    EXPECT_TRUE(Holds(Error("virtual create region"), "Another item"));
    EXPECT_TRUE(Holds(Error("virtual create ''"), "name"));
    EXPECT_TRUE(Holds(Error("virtual rename Areas shop", before), "Another item"));
    EXPECT_TRUE(Holds(Error("virtual rename region x"), "no virtual item"));
    EXPECT_TRUE(Holds(Error("virtual destroy region"), "no virtual item"));
    EXPECT_TRUE(Holds(Error("special create region virinc x --of shop A"), "no virtual item"));
    EXPECT_TRUE(Holds(Error("special create Areas virinc x A", before), "--of"));
    EXPECT_TRUE(Holds(Error("special create Areas inc x Sides --of region", before), "--of"));
    EXPECT_TRUE(Holds(Error("special create Areas virinc x --of Areas Sides", before), "not its own"));
    EXPECT_TRUE(Holds(Error("special create Shared virinc x --of Areas Sides", before), "a user's own"));
    EXPECT_TRUE(Holds(Error("special create Areas virinc x --of region A", before), "no button"));
    EXPECT_TRUE(
        Holds(Error("special create Areas virinc x --of region East --disp-members", before), "never"));
}

TEST_F(HostVirtual, LoopsAcrossItemsAreRefusedWithTheButtonInTheWay)
{
    const std::string error =
        Error("special set-members Areas Ring Other",
              {CREATE, "virtual create Higher", "special create Areas virinc Ring --none --of Higher",
               "special create Higher virinc Other --of Areas Ring"});
    EXPECT_TRUE(Holds(error, "\"Other\" holds \"Ring\"")) << error;
}

} // namespace NSKZ::Test
