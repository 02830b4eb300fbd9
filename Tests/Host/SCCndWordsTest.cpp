#include "SCCndWords.h"

#include <gtest/gtest.h>

#include <vector>

namespace NSKZ::Host {

namespace {

using ESelCondition = SCCndWords::ESelCondition;
using ESumMethod = SCCndWords::ESumMethod;

const std::vector<ESelCondition> ALL_CONDITIONS = {
    ESelCondition::Rank_High,       ESelCondition::Rank_HighExcept,     ESelCondition::Rank_Low,
    ESelCondition::Rank_LowExcept,  ESelCondition::NumCmp_Equal,        ESelCondition::NumCmp_NotEqual,
    ESelCondition::NumCmp_Greater,  ESelCondition::NumCmp_GreaterEqual, ESelCondition::NumCmp_Less,
    ESelCondition::NumCmp_LessEqual};

} // namespace

TEST(SCCndWords, ReadMethodKnowsTheMethodsThatHaveNumbers)
{
    const std::vector<std::pair<const char*, ESumMethod>> methods = {{"sum", ESumMethod::Sum},
                                                                     {"Count", ESumMethod::Count},
                                                                     {"AVERAGE", ESumMethod::Average},
                                                                     {"ratio", ESumMethod::Ratio}};
    for (const auto& [word, expected] : methods) {
        ESumMethod method = ESumMethod::Latest;
        EXPECT_TRUE(SCCndWords::ReadMethod(word, method)) << word;
        EXPECT_EQ(method, expected);
        EXPECT_TRUE(SCCndWords::IsWord(word, SCCndWords::GetWord(expected)));
        EXPECT_FALSE(SCCndWords::IsMethodWithoutNumbers(word));
    }
    ESumMethod method = ESumMethod::Latest;
    for (const char* word : {"", "su", "sums", "max", "top", "Each"})
        EXPECT_FALSE(SCCndWords::ReadMethod(word, method)) << word;
    EXPECT_EQ(method, ESumMethod::Latest);
    EXPECT_EQ(SCCndWords::GetWord(ESumMethod::Max), nullptr);
}

TEST(SCCndWords, MethodsWithoutNumbersAreKnownAsSuch)
{
    for (const char* word : {"weighted-average", "max", "Min", "latest", "absolute", "count-cell"})
        EXPECT_TRUE(SCCndWords::IsMethodWithoutNumbers(word)) << word;
    EXPECT_FALSE(SCCndWords::IsMethodWithoutNumbers("median"));
}

TEST(SCCndWords, ReadRankAndReadComparisonKnowTheirOwnWords)
{
    ESelCondition condition = ESelCondition::NumCmp_Equal;
    EXPECT_TRUE(SCCndWords::ReadRank("top", condition));
    EXPECT_EQ(condition, ESelCondition::Rank_High);
    EXPECT_TRUE(SCCndWords::ReadRank("Bottom", condition));
    EXPECT_EQ(condition, ESelCondition::Rank_Low);
    for (const char* word : {"", "=", "not top", "tops", "high"})
        EXPECT_FALSE(SCCndWords::ReadRank(word, condition)) << word;
    const std::vector<std::pair<const char*, ESelCondition>> signs = {
        {"=", ESelCondition::NumCmp_Equal},     {"==", ESelCondition::NumCmp_Equal},
        {"!=", ESelCondition::NumCmp_NotEqual}, {"<>", ESelCondition::NumCmp_NotEqual},
        {">", ESelCondition::NumCmp_Greater},   {">=", ESelCondition::NumCmp_GreaterEqual},
        {"<", ESelCondition::NumCmp_Less},      {"<=", ESelCondition::NumCmp_LessEqual}};
    for (const auto& [sign, expected] : signs) {
        EXPECT_TRUE(SCCndWords::ReadComparison(sign, condition)) << sign;
        EXPECT_EQ(condition, expected) << sign;
    }
    for (const char* sign : {"", "!", "=>", "=<", "===", "><", "top"})
        EXPECT_FALSE(SCCndWords::ReadComparison(sign, condition)) << sign;
}

TEST(SCCndWords, TheOppositeOfAnOppositeIsTheSame)
{
    for (const ESelCondition condition : ALL_CONDITIONS) {
        EXPECT_NE(SCCndWords::GetOpposite(condition), condition);
        EXPECT_EQ(SCCndWords::GetOpposite(SCCndWords::GetOpposite(condition)), condition);
    }
    EXPECT_EQ(SCCndWords::GetOpposite(ESelCondition::Rank_High), ESelCondition::Rank_HighExcept);
    EXPECT_EQ(SCCndWords::GetOpposite(ESelCondition::Rank_Low), ESelCondition::Rank_LowExcept);
    EXPECT_EQ(SCCndWords::GetOpposite(ESelCondition::NumCmp_Equal), ESelCondition::NumCmp_NotEqual);
    EXPECT_EQ(SCCndWords::GetOpposite(ESelCondition::NumCmp_Greater), ESelCondition::NumCmp_LessEqual);
    EXPECT_EQ(SCCndWords::GetOpposite(ESelCondition::NumCmp_GreaterEqual), ESelCondition::NumCmp_Less);
}

TEST(SCCndWords, KeywordsAreThoseOfConditionsInAnyLetters)
{
    for (const char* word :
         {"and", "OR", "Not", "except", "sum", "count", "average", "ratio", "max", "top", "bottom"})
        EXPECT_TRUE(SCCndWords::IsKeyword(word)) << word;
    for (const char* word : {"", "amount", "an", "ands", "=", "3", "合計"})
        EXPECT_FALSE(SCCndWords::IsKeyword(word)) << word;
}

} // namespace NSKZ::Host
