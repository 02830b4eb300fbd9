#include "CCndParser.h"

#include "CContainerOfBscBtnCnd.h"
#include "ECCndError.h"
#include "SCCndText.h"

#include <gtest/gtest.h>

#include <map>

namespace NSKZ::Host {

namespace {

using NSKZCore::CContainerOfBscBtnCnd;
using NSKZCore::CUnitCndOfBscBtnCnd;
using NSKZCore::IComponentOfBscBtnCnd;
using NSKZCore::SCKZCoreCom;
using ESelCondition = SCCndWords::ESelCondition;
using ESumMethod = SCCndWords::ESumMethod;

const std::map<std::string, DWORD> FIELDS = {{"amount", 3}, {"qty", 4},   {"unit price", 5}, {"sum", 6},
                                             {"top", 7},    {"it's", 8},  {"@2", 2},         {"not", 9},
                                             {"金額", 10},  {"a\"'b", 11}};

DWORD FindField(const std::string& word)
{
    const auto found = FIELDS.find(word);
    if (found == FIELDS.end())
        throw ECCommandError("There is no item \"" + word + "\".");
    return found->second;
}

std::string NameField(DWORD fldID)
{
    for (const auto& [name, id] : FIELDS) {
        if (id == fldID)
            return name;
    }
    return {};
}

// The tree in words with all parentheses.
std::string Tree(const std::string& text)
{
    return SCCndText::Write(CCndParser::Parse(text, FindField), NameField).value_or("no words");
}

CUnitCndOfBscBtnCnd Unit(const std::string& text)
{
    const NSKZCore::CBasicBtnCnd cnd = CCndParser::Parse(text, FindField);
    const IComponentOfBscBtnCnd* component = nullptr;
    cnd.GetCndComponent(component);
    const auto* const unit = dynamic_cast<const CUnitCndOfBscBtnCnd*>(component);
    EXPECT_NE(unit, nullptr) << text;
    return unit != nullptr ? *unit : CUnitCndOfBscBtnCnd();
}

struct SRefusal
{
    std::string sentence;
    std::size_t position = 0;
};

SRefusal Refusal(const std::string& text)
{
    try {
        CCndParser::Parse(text, FindField);
    } catch (const ECCndError& error) {
        EXPECT_EQ(error.GetCondition(), text);
        return {error.what(), error.GetPosition()};
    }
    ADD_FAILURE() << text << " is taken for a condition";
    return {};
}

void ExpectRefusal(const std::string& text, std::size_t position, const std::string& partOfSentence)
{
    const SRefusal refusal = Refusal(text);
    EXPECT_EQ(refusal.position, position) << text << ": " << refusal.sentence;
    EXPECT_NE(refusal.sentence.find(partOfSentence), std::string::npos) << text << ": " << refusal.sentence;
}

} // namespace

TEST(CCndParser, ReadsARank)
{
    const CUnitCndOfBscBtnCnd unit = Unit("amount sum top 3");
    EXPECT_EQ(unit.GetNumID(), 3u);
    EXPECT_EQ(unit.GetSumMethod(), ESumMethod::Sum);
    EXPECT_EQ(unit.GetSelCondition(), ESelCondition::Rank_High);
    EXPECT_EQ(unit.GetRankNum(), 3u);
    EXPECT_EQ(Unit("qty count bottom 4294967295").GetSelCondition(), ESelCondition::Rank_Low);
    EXPECT_EQ(Unit("qty count bottom 4294967295").GetRankNum(), 4294967295u);
}

TEST(CCndParser, ReadsAComparison)
{
    const CUnitCndOfBscBtnCnd unit = Unit("qty average >= -12.5");
    EXPECT_EQ(unit.GetNumID(), 4u);
    EXPECT_EQ(unit.GetSumMethod(), ESumMethod::Average);
    EXPECT_EQ(unit.GetSelCondition(), ESelCondition::NumCmp_GreaterEqual);
    EXPECT_EQ(unit.GetCmpNum(), -12.5);
    EXPECT_EQ(Unit("qty count = 1").GetSelCondition(), ESelCondition::NumCmp_Equal);
    EXPECT_EQ(Unit("qty count == 1").GetSelCondition(), ESelCondition::NumCmp_Equal);
    EXPECT_EQ(Unit("qty count != 1").GetSelCondition(), ESelCondition::NumCmp_NotEqual);
    EXPECT_EQ(Unit("qty count <> 1").GetSelCondition(), ESelCondition::NumCmp_NotEqual);
    EXPECT_EQ(Unit("qty count > 1").GetSelCondition(), ESelCondition::NumCmp_Greater);
    EXPECT_EQ(Unit("qty count < 1").GetSelCondition(), ESelCondition::NumCmp_Less);
    EXPECT_EQ(Unit("qty count <= 1").GetSelCondition(), ESelCondition::NumCmp_LessEqual);
}

TEST(CCndParser, ReadsNumbersInTheirUsualForms)
{
    EXPECT_EQ(Unit("qty sum > 0").GetCmpNum(), 0.0);
    EXPECT_EQ(Unit("qty sum > +7").GetCmpNum(), 7.0);
    EXPECT_EQ(Unit("qty sum > .5").GetCmpNum(), 0.5);
    EXPECT_EQ(Unit("qty sum > 1e3").GetCmpNum(), 1000.0);
    EXPECT_EQ(Unit("qty sum > 2.5E-1").GetCmpNum(), 0.25);
}

TEST(CCndParser, BlanksMatterBetweenWordsOnlyAndLettersMayBeCapital)
{
    EXPECT_EQ(Tree("\t amount  SUM\tTop 3 "), "amount sum top 3");
    EXPECT_EQ(Tree("amount sum>=-5 AND(qty Ratio<.5)"), "amount sum >= -5 and qty ratio < 0.5");
    EXPECT_EQ(Tree("amount\r\nsum\ntop 3"), "amount sum top 3");
    EXPECT_EQ(Tree("\xE3\x80\x80"
                   "amount\xE3\x80\x80sum\xE3\x80\x80>\xE3\x80\x80"
                   "3"),
              "amount sum > 3"); // the blanks of Japanese input
}

TEST(CCndParser, NotPicksTheOppositeTest)
{
    EXPECT_EQ(Tree("amount sum not top 3"), "amount sum not top 3");
    EXPECT_EQ(Tree("amount sum except top 3"), "amount sum not top 3");
    EXPECT_EQ(Tree("not amount sum top 3"), "amount sum not top 3");
    EXPECT_EQ(Tree("amount sum except bottom 3"), "amount sum not bottom 3");
    EXPECT_EQ(Tree("not amount sum not bottom 3"), "amount sum bottom 3");
    EXPECT_EQ(Tree("not not amount sum top 3"), "amount sum top 3");
    EXPECT_EQ(Tree("not amount sum = 3"), "amount sum != 3");
    EXPECT_EQ(Tree("amount sum not != 3"), "amount sum = 3");
    EXPECT_EQ(Tree("amount sum not > 3"), "amount sum <= 3");
    EXPECT_EQ(Tree("amount sum not >= 3"), "amount sum < 3");
    EXPECT_EQ(Tree("amount sum not < 3"), "amount sum >= 3");
    EXPECT_EQ(Tree("amount sum not <= 3"), "amount sum > 3");
}

TEST(CCndParser, NotBeforeParenthesesGoesDownToTheTestsAndTurnsAndAndOr)
{
    EXPECT_EQ(Tree("not (amount sum top 3)"), "amount sum not top 3");
    EXPECT_EQ(Tree("not (amount sum top 3 and qty sum > 1)"), "amount sum not top 3 or qty sum <= 1");
    EXPECT_EQ(Tree("not (amount sum top 3 or not qty sum > 1)"), "amount sum not top 3 and qty sum > 1");
    EXPECT_EQ(Tree("not (amount sum top 3 and not (qty sum = 1 or qty sum = 2))"),
              "amount sum not top 3 or (qty sum = 1 or qty sum = 2)");
    // It reaches as far as the parentheses.
    EXPECT_EQ(Tree("not (amount sum top 3) and qty sum > 1"), "amount sum not top 3 and qty sum > 1");
}

TEST(CCndParser, AndBindsTighterThanOr)
{
    EXPECT_EQ(Tree("amount sum top 1 or amount sum top 2 and amount sum top 3 or amount sum top 4"),
              "amount sum top 1 or (amount sum top 2 and amount sum top 3) or amount sum top 4");
    EXPECT_EQ(Tree("(amount sum top 1 or amount sum top 2) and amount sum top 3"),
              "(amount sum top 1 or amount sum top 2) and amount sum top 3");
}

TEST(CCndParser, AChainOfOneOperatorMakesOneContainer)
{
    const NSKZCore::CBasicBtnCnd cnd =
        CCndParser::Parse("amount sum top 1 and qty sum top 2 and amount sum > 3", FindField);
    const IComponentOfBscBtnCnd* component = nullptr;
    ASSERT_TRUE(cnd.GetCndComponent(component));
    const auto* const container = dynamic_cast<const CContainerOfBscBtnCnd*>(component);
    ASSERT_NE(container, nullptr);
    EXPECT_EQ(container->GetBoolOperator(), SCKZCoreCom::BOOLOPERATOR_AND);
    IComponentOfBscBtnCnd* child = nullptr;
    for (DWORD i = 0; i < 3; ++i) {
        ASSERT_TRUE(container->GetCndComponentPtr(i, child));
        EXPECT_NE(dynamic_cast<CUnitCndOfBscBtnCnd*>(child), nullptr);
    }
    EXPECT_FALSE(container->GetCndComponentPtr(3, child));
}

TEST(CCndParser, ParenthesesAroundAChainMakeAContainerOfTheirOwn)
{
    EXPECT_EQ(Tree("amount sum top 1 and (qty sum top 2 and amount sum > 3)"),
              "amount sum top 1 and (qty sum top 2 and amount sum > 3)");
    EXPECT_EQ(Tree("((amount sum top 1))"), "amount sum top 1");
}

TEST(CCndParser, FieldsStandInQuotesWhereTheyNeedThem)
{
    EXPECT_EQ(Unit("'unit price' sum top 3").GetNumID(), 5u);
    EXPECT_EQ(Unit("\"unit price\" sum top 3").GetNumID(), 5u);
    EXPECT_EQ(Unit("'it''s' sum top 3").GetNumID(), 8u);
    EXPECT_EQ(Unit("\"it's\" sum top 3").GetNumID(), 8u);
    EXPECT_EQ(Unit("'a\"''b' sum top 3").GetNumID(), 11u);
    EXPECT_EQ(Unit("'not' sum top 3").GetNumID(), 9u);
    EXPECT_EQ(Unit("@2 sum top 3").GetNumID(), 2u);
    EXPECT_EQ(Unit("金額 sum top 3").GetNumID(), 10u);
}

TEST(CCndParser, AKeywordBeforeAMethodIsAName)
{
    EXPECT_EQ(Unit("sum sum top 3").GetNumID(), 6u);
    EXPECT_EQ(Unit("not top count not top 3").GetNumID(), 7u);
    ExpectRefusal("sum top 3", 0,
                  "\"sum\" stands where a number item is expected, as \"amount\" in \"amount sum top 3\"");
    ExpectRefusal("and sum top 3", 0, "\"and\" stands where a number item");
}

TEST(CCndParser, WriteFieldWritesWhatReadsAsTheName)
{
    for (const auto& [name, fldID] : FIELDS)
        EXPECT_EQ(Unit(CCndParser::WriteField(name) + " sum top 3").GetNumID(), fldID) << name;
    EXPECT_EQ(CCndParser::WriteField("amount"), "amount");
    EXPECT_EQ(CCndParser::WriteField("unit price"), "'unit price'");
    EXPECT_EQ(CCndParser::WriteField("it's"), "\"it's\"");
    EXPECT_EQ(CCndParser::WriteField("Sum"), "'Sum'");
    EXPECT_EQ(CCndParser::WriteField(""), "''");
    EXPECT_EQ(CCndParser::WriteField("a(b"), "'a(b'");
}

TEST(CCndParser, RefusesAnEmptyCondition)
{
    ExpectRefusal("", 0, "The condition is empty");
    ExpectRefusal("  ", 2, "The condition is empty");
}

TEST(CCndParser, RefusesWhatIsNoField)
{
    ExpectRefusal("amuont sum top 3", 0, "There is no item \"amuont\".");
    ExpectRefusal("amount sum top 3 and 'x' sum top 3", 21, "There is no item \"x\".");
    ExpectRefusal("unit price sum top 3", 0,
                  "There is no item \"unit\". A name with blanks stands in quotes.");
    ExpectRefusal("> 3", 0, "\">\" stands where a number item is expected");
    ExpectRefusal("amount sum top 3 and", 20, "The condition ends where a number item is expected");
    ExpectRefusal("not", 3, "The condition ends where a number item is expected");
    ExpectRefusal("()", 1, "\")\" stands where a number item is expected");
    ExpectRefusal("'' sum top 3", 0, "There is no item");
}

TEST(CCndParser, RefusesWhatIsNoMethod)
{
    ExpectRefusal("amount top 3", 7,
                  "\"top\" stands where a method (sum, count, average or ratio) is expected");
    ExpectRefusal("amount 'sum' top 3", 7, "a method");
    ExpectRefusal("amount", 6, "The condition ends where a method");
    ExpectRefusal("amount > 3", 7, "a method");
    for (const std::string method :
         {"weighted-average", "max", "min", "latest", "absolute", "count-cell", "MAX"})
        ExpectRefusal("amount " + method + " top 3", 7, "have no number for the method " + method);
}

TEST(CCndParser, RefusesWhatIsNoTest)
{
    ExpectRefusal("amount sum", 10, "The condition ends where top, bottom or a comparison");
    ExpectRefusal("amount sum high 3", 11, "\"high\" stands where top, bottom or a comparison");
    ExpectRefusal("amount sum 3", 11, "top, bottom or a comparison");
    ExpectRefusal("amount sum => 3", 11, "\"=>\" stands where top, bottom or a comparison");
    ExpectRefusal("amount sum ! 3", 11, "top, bottom or a comparison");
    ExpectRefusal("amount sum except > 3", 18, "\">\" stands where top or bottom is expected");
    ExpectRefusal("amount sum not", 14, "top, bottom or a comparison");
}

TEST(CCndParser, RefusesWhatIsNoCountOfButtons)
{
    for (const std::string count : {"0", "-1", "1.5", "x", "4294967296", "+3", "'3'", "(3)"})
        ExpectRefusal("amount sum top " + count, 15, "a count of buttons, from 1 on, is expected");
    ExpectRefusal("amount sum top", 14, "a count of buttons");
    ExpectRefusal("amount sum top 3 4", 17, "\"4\" stands where and, or or the end of the condition");
}

TEST(CCndParser, RefusesWhatIsNoNumber)
{
    for (const std::string number :
         {"x", "1,000", "1e999", "inf", "nan", "-", "+", "+-1", "--1", "0x10", "5%", "'3'"})
        ExpectRefusal("amount sum > " + number, 13, "a number without commas");
    ExpectRefusal("amount sum >", 12, "a number without commas");
}

TEST(CCndParser, RefusesParenthesesThatDoNotMatch)
{
    ExpectRefusal("(amount sum top 3", 0, "opened and never closed");
    ExpectRefusal("amount sum top 3)", 16, "closes none that is open");
    ExpectRefusal("(amount sum top 3 qty", 18, "\"qty\" stands where and, or or ) is expected");
}

TEST(CCndParser, RefusesAQuoteThatIsNeverClosed)
{
    ExpectRefusal("amount sum top 3 and 'unit price sum top 3", 21, "The quote ' is opened and never closed");
    ExpectRefusal("\"unit price'", 0, "The quote \" is opened");
    ExpectRefusal("'it''", 0, "The quote ' is opened");
}

TEST(CCndParser, RefusesWhatStandsBehindTheEnd)
{
    ExpectRefusal("amount sum top 3 qty sum top 3", 17, "\"qty\" stands where and, or or the end");
    ExpectRefusal("amount sum top 3 not qty sum top 3", 17, "\"not\" stands where and, or or the end");
}

TEST(CCndParser, ThePositionCountsCharacters)
{
    ExpectRefusal("金額 sum 上位 3", 7, "\"上位\" stands where top, bottom or a comparison");
}

TEST(CCndParser, BoundsTheDepthOfParenthesesAndNothingElse)
{
    const auto nested = [](std::size_t depth) {
        return std::string(depth, '(') + "amount sum top 3" + std::string(depth, ')');
    };
    EXPECT_EQ(Tree(nested(CCndParser::MAX_DEPTH)), "amount sum top 3");
    ExpectRefusal(nested(CCndParser::MAX_DEPTH + 1), CCndParser::MAX_DEPTH, "More than 100 parentheses");
    ExpectRefusal(std::string(1000000, '('), CCndParser::MAX_DEPTH, "More than 100 parentheses");
    std::string side = "amount sum top 3";
    std::string manyNots;
    for (int i = 0; i < 20000; ++i) {
        side += " or (amount sum top 3)";
        manyNots += "not ";
    }
    EXPECT_EQ(Tree(manyNots + "amount sum top 3"), "amount sum top 3");
    EXPECT_TRUE(Tree(side).ends_with("or amount sum top 3"));
}

} // namespace NSKZ::Host
