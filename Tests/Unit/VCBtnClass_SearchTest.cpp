#include "CBUIDataMngr.h"
#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "Support/MakeTable.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using List = std::vector<DWORD>;
using Class = VCBtnClass;
constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
constexpr DWORD ITEM = 1;
constexpr auto MATCH = Class::SRCHBTNNAME_MATCH;
constexpr auto FRONT = Class::SRCHBTNNAME_FRONT;
constexpr auto REAR = Class::SRCHBTNNAME_REAR;
constexpr auto ALL_WORDS = Class::SRCHBTNNAME_INCLUDE_ALL;

// An item whose buttons 2, 3, ... show these texts.
struct SItem
{
    explicit SItem(std::vector<std::string> texts)
        : table(MakeTable({{"item", TEXT, std::move(texts)}})),
          env(1, ON_MEM, ON_MEM, table, nullptr, nullptr)
    {}
    List Search(const std::vector<std::string>& words, Class::EOptionOfSearchBtnName option,
                unsigned int flags = Class::SRCH_NORMAL) const
    {
        std::vector<const char*> borrowed;
        for (const std::string& word : words)
            borrowed.push_back(word.c_str());
        List found{4711};
        EXPECT_TRUE(env.SearchBtnsByAliasFromBtnClass(ITEM, borrowed, option, flags, found));
        return found;
    }

    CSourceDataMngr table;
    CBUIDataMngr env;
};

// ConvertStringForVagueSearch into as many bytes, with its length; "(refused)" if it fails.
std::string Convert(const std::string& text, unsigned int flags, DWORD size = 64)
{
    std::string area(80, '#');
    DWORD len = 4711;
    const bool isConverted = Class::ConvertStringForVagueSearch(text.c_str(), static_cast<DWORD>(text.size()),
                                                                flags, size, area.data(), len);
    EXPECT_EQ(area.substr(size), std::string(80 - size, '#')); // never behind its end
    if (!isConverted)
        return "(refused)";
    EXPECT_EQ(len, flags == 8 ? 4711 : std::strlen(area.c_str()));
    return area.c_str();
}

TEST(ConvertStringForVagueSearch, MakesTextsAlikeAsTheFlagsTell)
{
    const std::string text = SJIS(u8"ＡｂアあガがＣ－-ー");
    EXPECT_EQ(Convert(text, Class::SRCH_VAGUE_WIDTH), SJIS(u8"Abｱあｶﾞが") + SJIS(u8"C--ｰ"));
    EXPECT_EQ(Convert(text, Class::SRCH_VAGUE_KANA), SJIS(u8"ＡｂアアガガＣ－-ー"));
    EXPECT_EQ(Convert(text, Class::SRCH_VAGUE_CASE), SJIS(u8"ａｂアあガがｃ－-ー"));
    EXPECT_EQ(Convert(text, Class::SRCH_VAGUE_MACRON), SJIS(u8"ＡｂアあガがＣーｰー"));
    EXPECT_EQ(Convert(text, Class::SRCH_VAGUE_ALL), SJIS(u8"abｱｱｶﾞｶﾞcｰｰｰ"));
}

TEST(ConvertStringForVagueSearch, MinusIsReplacedWhereItIsACharacterOnly)
{
    // The middle bytes are a trail byte and a lead byte that look like the full-width minus sign.
    const std::string text("\x88\x81\x7C\x81\x7C");
    ASSERT_EQ(text.size(), 5u);
    EXPECT_EQ(Convert(text, Class::SRCH_VAGUE_MACRON), "\x88\x81\x7C\x81\x5B");
}

TEST(ConvertStringForVagueSearch, WithHalfWidthTheFullWidthMinusHasGoneAlready)
{
    EXPECT_EQ(Convert(SJIS(u8"－"), 9), SJIS(u8"ｰ")); // by way of the half-width one
    EXPECT_EQ(Convert(SJIS(u8"－ー"), 8), SJIS(u8"ーー"));
}

TEST(ConvertStringForVagueSearch, RefusesFlagsWithoutALowBitAndTextsThatDoNotFit)
{
    EXPECT_EQ(Convert("abc", 0), "(refused)");
    EXPECT_EQ(Convert("abc", 256), "(refused)");
    for (const unsigned int flags : {1u, 2u, 4u, 8u, 255u}) {
        EXPECT_EQ(Convert("abc", flags, 3), "(refused)");
        EXPECT_EQ(Convert("abc", flags, 0), "(refused)");
        EXPECT_EQ(Convert("abc", flags, 4), "abc");
    }
    EXPECT_EQ(Convert(SJIS(u8"ヾ"), 1, 3), "(refused)"); // two bytes become three
    EXPECT_EQ(Convert(SJIS(u8"ヾ"), 1, 4), SJIS(u8"ヽﾞ"));
}

TEST(ConvertStringForVagueSearch, InUTF8TheTextGrowsWithinItsBuffer)
{
    const CCodePageScope utf8(CP_UTF8);
    EXPECT_EQ(Convert("a-b-", 8, 9), UTF8(u8"aｰbｰ"));
    EXPECT_EQ(Convert("a-b-", 8, 8), "(refused)");
    EXPECT_EQ(Convert(UTF8(u8"Ａ－Ｂ"), 255), UTF8(u8"aｰb"));
    EXPECT_EQ(Convert(UTF8(u8"－"), 8), UTF8(u8"ー"));
    EXPECT_EQ(Convert("---", 255, 10), UTF8(u8"ｰｰｰ"));
}

TEST(ConvertStringForVagueSearch, ALongTextOfMinusSignsGrowsWithinItsBuffer)
{
    const CCodePageScope utf8(CP_UTF8);
    std::string text;
    std::string wanted;
    for (int i = 0; i < 5000; ++i) {
        text += i % 3 == 0 ? "-" : "-a";
        wanted += UTF8(i % 3 == 0 ? u8"ｰ" : u8"ｰa");
    }
    const auto textLen = static_cast<DWORD>(text.size());
    const auto wantedLen = static_cast<DWORD>(wanted.size());
    std::vector<char> area(wantedLen + 1);
    DWORD len = 0;
    ASSERT_TRUE(Class::ConvertStringForVagueSearch(text.c_str(), textLen, Class::SRCH_VAGUE_ALL,
                                                   wantedLen + 1, area.data(), len));
    EXPECT_EQ(len, wantedLen);
    EXPECT_STREQ(area.data(), wanted.c_str());
    EXPECT_FALSE(Class::ConvertStringForVagueSearch(text.c_str(), textLen, Class::SRCH_VAGUE_ALL, wantedLen,
                                                    area.data(), len));
}

TEST(SearchTheBtnByAlias, EachOptionMatchesItsWay)
{
    const SItem item({"apple", "pineapple", "app", "apple pie", "grape"});
    EXPECT_EQ(item.Search({"apple"}, MATCH), List({2}));
    EXPECT_EQ(item.Search({"app"}, FRONT), List({2, 4, 5}));
    EXPECT_EQ(item.Search({"apple"}, REAR), List({2, 3}));
    EXPECT_EQ(item.Search({"p", "ie"}, ALL_WORDS), List({5}));
    EXPECT_EQ(item.Search({"ap", "pe"}, ALL_WORDS), List({6}));
    EXPECT_EQ(item.Search({"zz"}, ALL_WORDS), List());
}

TEST(SearchTheBtnByAlias, OnlyTheSearchForAllWordsLooksAtMoreThanTheFirst)
{
    const SItem item({"apple", "app"});
    EXPECT_EQ(item.Search({"app", "zzz"}, MATCH), List({3}));
    EXPECT_EQ(item.Search({"app", "zzz"}, ALL_WORDS), List());
}

TEST(SearchTheBtnByAlias, TheEmptyWordBeginsEndsAndStandsInEveryText)
{
    const SItem item({"apple", "b"});
    // The empty-value button shows its own text, without a record too.
    EXPECT_EQ(item.Search({""}, FRONT), List({1, 2, 3}));
    EXPECT_EQ(item.Search({""}, REAR), List({1, 2, 3}));
    EXPECT_EQ(item.Search({""}, ALL_WORDS), List({1, 2, 3}));
    EXPECT_EQ(item.Search({""}, MATCH), List());
}

TEST(SearchTheBtnByAlias, NoWordIsNoSearch)
{
    const SItem item({"apple"});
    List found{4711};
    EXPECT_TRUE(item.env.SearchBtnsByAliasFromBtnClass(ITEM, {nullptr}, FRONT, 0, found));
    EXPECT_EQ(found, List({1, 2})); // a null word is the empty one
    found = {4711};
    EXPECT_FALSE(item.env.SearchBtnsByAliasFromBtnClass(ITEM, {}, MATCH, 0, found));
    EXPECT_EQ(found, List({4711}));
    EXPECT_FALSE(item.env.SearchBtnsByAliasFromBtnClass(99, {"a"}, MATCH, 0, found));
    EXPECT_FALSE(item.env.SearchBtnsByAliasFromBtnClass(99, {2}, {"a"}, MATCH, 0, true, found));
    EXPECT_EQ(found, List({4711}));
}

TEST(SearchTheBtnByAlias, VaguenessIsWhatTheFlagsTell)
{
    const SItem item(
        {SJIS(u8"りんごジュース"), SJIS(u8"リンゴｼﾞｭｰｽ"), "Juice", SJIS(u8"ｊｕｉｃｅ"), SJIS(u8"ジュ－ス")});
    const auto search = [&item](std::u8string_view word, unsigned int flags) {
        return item.Search({SJIS(word)}, ALL_WORDS, flags);
    };
    EXPECT_EQ(search(u8"ジュース", Class::SRCH_NORMAL), List({2}));
    EXPECT_EQ(search(u8"ジュース", Class::SRCH_VAGUE_WIDTH), List({2, 3}));
    EXPECT_EQ(search(u8"リンゴ", Class::SRCH_VAGUE_KANA), List({2, 3}));
    EXPECT_EQ(search(u8"JUICE", Class::SRCH_VAGUE_CASE), List({4}));
    EXPECT_EQ(search(u8"JUICE", Class::SRCH_VAGUE_CASE | Class::SRCH_VAGUE_WIDTH), List({4, 5}));
    EXPECT_EQ(search(u8"ジュース", Class::SRCH_VAGUE_MACRON | Class::SRCH_VAGUE_KANA), List({2, 6}));
    EXPECT_EQ(search(u8"じゅーす", Class::SRCH_VAGUE_ALL), List({2, 3, 6}));
    EXPECT_EQ(search(u8"ジュ－ス", 9), List({2, 3, 6}));
}

TEST(SearchTheBtnByAlias, TheMacronFlagAloneCountsAllLengthsAsNone)
{
    const SItem item({"apple", "b-c"});
    EXPECT_EQ(item.Search({"zzz"}, MATCH, 8), List({1, 2, 3}));
    EXPECT_EQ(item.Search({"zzz"}, FRONT, 8), List({1, 2, 3}));
    EXPECT_EQ(item.Search({"zzz"}, REAR, 8), List({1, 2, 3}));
    EXPECT_EQ(item.Search({"zzz"}, ALL_WORDS, 8), List());
    EXPECT_EQ(item.Search({"b" + SJIS(u8"ｰ")}, ALL_WORDS, 8), List({3}));
}

TEST(SearchTheBtnByAlias, OnlyTheLowEightFlagsCount)
{
    const SItem item({"Apple", "apple"});
    EXPECT_EQ(item.Search({"apple"}, MATCH, 256), List({3}));
    EXPECT_EQ(item.Search({"apple"}, MATCH, 256 + 4), List({2, 3}));
}

TEST(SearchTheBtnByAlias, AWordIsNotFoundAcrossTheBordersOfCharacters)
{
    const SItem item({"\x82\x83\x83\x8A", "\x83\x83"});
    EXPECT_EQ(item.Search({"\x83\x83"}, ALL_WORDS), List({3}));
    EXPECT_EQ(item.Search({"\x83\x8A"}, REAR), List({2}));
    EXPECT_EQ(item.Search({"\x8A"}, REAR), List({2})); // byte by byte
}

TEST(SearchTheBtnByAlias, ListedButtonsAreTheirPositions)
{
    const SItem item({"apple", "grape", "apricot"});
    List found;
    const std::vector<const char*> words{"ap"};
    EXPECT_TRUE(
        item.env.SearchBtnsByAliasFromBtnClass(ITEM, {4, 99, 3, 2}, words, ALL_WORDS, 0, false, found));
    EXPECT_EQ(found, List({0, 2, 3}));
    EXPECT_TRUE(item.env.SearchBtnsByAliasFromBtnClass(ITEM, {99, 4, 2}, words, FRONT, 0, true, found));
    EXPECT_EQ(found, List({1}));
    EXPECT_TRUE(item.env.SearchBtnsByAliasFromBtnClass(ITEM, {3, 4}, words, ALL_WORDS, 255, true, found));
    EXPECT_EQ(found, List({0}));
    EXPECT_TRUE(item.env.SearchBtnsByAliasFromBtnClass(ITEM, {99}, words, FRONT, 0, true, found));
    EXPECT_EQ(found, List());
}

TEST(SearchTheBtnByAlias, IneffectiveButtonsAndThoseWithoutRecordsAreFoundToo)
{
    SItem item({"apple", ""});
    DWORD inc = 0;
    const List members{2};
    ASSERT_EQ(item.env.CreateSpBtn(inc, ITEM, SCBUICoreCom::BTNTYPE_INC, "apples",
                                   VCSpBtn::MMBBTNSELMTH_SELECT, &members, nullptr),
              Class::CREATESPBTN_OK);
    item.env.SetEffectiveInfoOfSpBtn(ITEM, inc, false);
    item.env.SetAliasOfBtn(ITEM, 1, "app or nothing");
    EXPECT_EQ(item.Search({"app"}, FRONT), List({1, 2, inc}));
}

TEST(SearchTheBtnByAlias, AnUnknownOptionIsAbnormalOnceATextIsLongEnough)
{
    const SItem item({"ab"});
    List found;
    const auto unknown = static_cast<Class::EOptionOfSearchBtnName>(5);
    const std::string longWord(100, 'a');
    EXPECT_TRUE(item.env.SearchBtnsByAliasFromBtnClass(ITEM, {longWord.c_str()}, unknown, 0, found));
    EXPECT_EQ(found, List());
    try {
        item.env.SearchBtnsByAliasFromBtnClass(ITEM, {"a"}, unknown, 0, found);
        FAIL();
    } catch (const ECAbnormalData& e) {
        EXPECT_STREQ(e.GetMessageText(), SCBUICoreStrDef::MSG_UNKNOWN_BTNNAME_SRCHOPTION);
        EXPECT_EQ(e.GetLine(), 599);
    }
}

TEST(SearchTheBtnByAlias, UTF8TextsAreFoundVaguely)
{
    const CCodePageScope utf8(CP_UTF8);
    const SItem item({UTF8(u8"コーヒー・ガラス"), "a-b-c-d-e-f", UTF8(u8"ÉTUDE")});
    EXPECT_EQ(item.Search({UTF8(u8"こ－ひ－")}, FRONT, Class::SRCH_VAGUE_ALL), List({2}));
    EXPECT_EQ(item.Search({UTF8(u8"がらす")}, REAR, Class::SRCH_VAGUE_ALL), List({2}));
    EXPECT_EQ(item.Search({UTF8(u8"A－B－C－D－E－F")}, MATCH, Class::SRCH_VAGUE_ALL), List({3}));
    EXPECT_EQ(item.Search({UTF8(u8"étude")}, MATCH, Class::SRCH_VAGUE_CASE), List({4}));
}

} // namespace
