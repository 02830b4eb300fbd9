// The search for buttons by their texts.

#include "HostFixture.h"

namespace NSKZ::Test {

using HostSearch = HostFixture;

TEST_F(HostSearch, FindsTheButtonsWhoseTextsHoldAllWords)
{
    const Json answer = LastAnswer({"search region st"});
    EXPECT_EQ(answer.at("item"), 1);
    EXPECT_EQ(answer.at("match"), "all-words");
    EXPECT_EQ(answer.at("vague"), Json::array());
    EXPECT_EQ(answer.at("count"), 2);
    EXPECT_EQ(Pluck(answer.at("buttons"), "text"), Json({"East", "West"}));
    EXPECT_EQ(Pluck(LastAnswer({"search region st E"}).at("buttons"), "text"), Json({"East"}));
    EXPECT_EQ(LastAnswer({"search region xyz"}).at("buttons"), Json::array());
}

TEST_F(HostSearch, MatchesAsTheOptionTells)
{
    EXPECT_EQ(Pluck(LastAnswer({"search region East --match"}).at("buttons"), "text"), Json({"East"}));
    EXPECT_EQ(Pluck(LastAnswer({"search region ast --match"}).at("buttons"), "text"), Json::array());
    EXPECT_EQ(Pluck(LastAnswer({"search region No --front"}).at("buttons"), "text"), Json({"North"}));
    EXPECT_EQ(Pluck(LastAnswer({"search region st --rear"}).at("buttons"), "text"), Json({"East", "West"}));
    EXPECT_EQ(Pluck(LastAnswer({"search region st --rear --first"}).at("buttons"), "text"), Json({"East"}));
    EXPECT_EQ(LastAnswer({"search region st --rear --max 1"}).at("count"), 2);
}

TEST_F(HostSearch, IsVagueOnDemand)
{
    EXPECT_EQ(LastAnswer({"search region EAST"}).at("count"), 0);
    const Json answer = LastAnswer({"search region ＥＡＳＴ --vague width,case"});
    EXPECT_EQ(answer.at("count"), 1);
    EXPECT_EQ(answer.at("vague"), Json({"width", "case"}));
    EXPECT_EQ(LastAnswer({"search region east --vague all"}).at("vague"),
              Json({"width", "kana", "case", "macron"}));
}

TEST_F(HostSearch, FindsHiddenButtonsToo)
{
    const Json answer = LastAnswer({"press shop C", "search region East"});
    EXPECT_EQ(answer.at("count"), 1);
    EXPECT_EQ(answer.at("buttons")[0].at("displayed"), false);
}

TEST_F(HostSearch, RefusesWhatItDoesNotKnow)
{
    EXPECT_NE(Error("search region"), "");
    EXPECT_NE(Error("search nothing a"), "");
    EXPECT_NE(Error("search region a --match --front").find("do not go together"), std::string::npos);
    EXPECT_NE(Error("search region a b --match").find("One word"), std::string::npos);
    EXPECT_NE(Error("search region a --vague colour").find("colour"), std::string::npos);
    EXPECT_NE(Error("search region a --vague width,").find("vague in"), std::string::npos);
}

TEST_F(HostSearch, JapaneseIsFoundInShiftJIS)
{
    table = dir.WriteFile("sjis.csv", SJIS(JAPANESE_TEXT));
    EXPECT_EQ(Pluck(LastAnswer({UTF8(u8"search 商品 そ－す --vague all")}).at("buttons"), "text"),
              Json({UTF8(u8"ソース 大")}));
    EXPECT_NE(Error(UTF8(u8"search 商品 \U0001F600")).find("lacks"), std::string::npos);
}

} // namespace NSKZ::Test
