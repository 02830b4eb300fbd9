#include "CUnitCndOfBscBtnCnd.h"

#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "Support/CTempDir.h"
#include "Support/CTestSumMngr.h"
#include "Support/XMLText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <random>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using Cnd = CUnitCndOfBscBtnCnd;
using Sel = Cnd::ESelCondition;
using Method = SCBUICoreCom::ESumMethodForCnd;
using IDs = std::vector<DWORD>;

constexpr DWORD CLASS_ID = 5;
constexpr DWORD ITEM = 8;
constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
constexpr double EPSILON = std::numeric_limits<double>::epsilon();
constexpr Sel ALL_CONDITIONS[] = {Sel::Rank_High,       Sel::Rank_HighExcept,     Sel::Rank_Low,
                                  Sel::Rank_LowExcept,  Sel::NumCmp_Equal,        Sel::NumCmp_NotEqual,
                                  Sel::NumCmp_Greater,  Sel::NumCmp_GreaterEqual, Sel::NumCmp_Less,
                                  Sel::NumCmp_LessEqual};

Cnd MakeRank(Sel condition, DWORD rankNum, Method method = Method::Sum)
{
    Cnd cnd;
    cnd.SetNumID(ITEM);
    cnd.SetSelCondition(condition);
    EXPECT_TRUE(cnd.SetRankNum(rankNum));
    EXPECT_TRUE(cnd.SetSumMethod(method));
    return cnd;
}

Cnd MakeCmp(Sel condition, double cmpNum, Method method = Method::Sum)
{
    Cnd cnd = MakeRank(condition, 1, method);
    cnd.SetCmpNum(cmpNum);
    return cnd;
}

// Buttons 1, 2, ... with these values.
CTestSumMngr MakeSums(const std::vector<double>& values)
{
    CTestSumMngr sums;
    for (std::size_t i = 0; i < values.size(); ++i)
        sums.values[static_cast<DWORD>(i + 1)] = values[i];
    return sums;
}

IDs GetBtns(std::size_t count)
{
    IDs btnIDs;
    for (std::size_t i = 1; i <= count; ++i)
        btnIDs.push_back(static_cast<DWORD>(i));
    return btnIDs;
}

IDs Evaluate(const Cnd& cnd, const IDs& btnIDs, const CTestSumMngr& sums)
{
    IDs result = {4711};
    EXPECT_TRUE(cnd.GetBtnIDListThatAppliesToTheCnd(CLASS_ID, btnIDs, sums, result));
    return result;
}

// Of buttons 1, 2, ... with these values.
IDs Evaluate(const Cnd& cnd, const std::vector<double>& values)
{
    return Evaluate(cnd, GetBtns(values.size()), MakeSums(values));
}

// What comes out of a failing evaluation.
IDs EvaluateToFalse(const Cnd& cnd, const IDs& btnIDs, const CTestSumMngr& sums)
{
    IDs result = {4711};
    EXPECT_FALSE(cnd.GetBtnIDListThatAppliesToTheCnd(CLASS_ID, btnIDs, sums, result));
    return result;
}

template <class TCall>
void ExpectAbnormal(const TCall& call, const char* message, const char* function, long line)
{
    try {
        call();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const ECAbnormalData& thrown) {
        EXPECT_STREQ(thrown.GetMessageText(), message);
        EXPECT_STREQ(thrown.GetFile(), "Src/CUnitCndOfBscBtnCnd");
        EXPECT_STREQ(thrown.GetFunction(), function);
        EXPECT_EQ(thrown.GetLine(), line);
    }
}

constexpr const char* FUNC_RANK = "NSKZ::NSKZCore::CUnitCndOfBscBtnCnd::GetBtnIDListThatAppliesToTheRankCnd";
constexpr const char* FUNC_NUMCMP =
    "NSKZ::NSKZCore::CUnitCndOfBscBtnCnd::GetBtnIDListThatAppliesToTheNumCmpCnd";

// The ranking as it is told: a sorted multi-map, walked from one end.
IDs RankNaively(Sel condition, DWORD rankNum, const IDs& btnIDs, const std::vector<double>& values)
{
    std::multimap<double, DWORD> sorted;
    for (std::size_t i = 0; i < btnIDs.size(); ++i)
        sorted.emplace(values[i], btnIDs[i]);
    std::vector<std::pair<double, DWORD>> walk(sorted.begin(), sorted.end());
    if (condition == Sel::Rank_High || condition == Sel::Rank_HighExcept)
        std::reverse(walk.begin(), walk.end());
    std::size_t ranked = rankNum;
    while (ranked < walk.size() && Cnd::IsEqualForRank(walk[rankNum - 1].first, walk[ranked].first))
        ++ranked;
    const bool except = condition == Sel::Rank_HighExcept || condition == Sel::Rank_LowExcept;
    IDs result;
    for (std::size_t i = except ? ranked : 0; i < (except ? walk.size() : ranked); ++i)
        result.push_back(walk[i].second);
    return result;
}

} // namespace

// --- Fields

TEST(CUnitCndOfBscBtnCnd, BeginsWithTheHighestOneByTheSumOfItem0)
{
    const Cnd cnd;
    EXPECT_EQ(cnd.GetNumID(), 0u);
    EXPECT_EQ(cnd.GetSumMethod(), Method::Sum);
    EXPECT_EQ(cnd.GetSelCondition(), Sel::Rank_High);
    EXPECT_EQ(cnd.GetRankNum(), 1u);
    EXPECT_EQ(cnd.GetCmpNum(), 0.0);
}

TEST(CUnitCndOfBscBtnCnd, MethodsThatAreNoNumberOfAButtonAreRefused)
{
    for (DWORD value = 0; value <= 20; ++value) {
        Cnd cnd;
        EXPECT_TRUE(cnd.SetSumMethod(Method::Min));
        const bool refused = value == 5 || value == 6 || value == 7 || value == 13;
        EXPECT_EQ(cnd.SetSumMethod(static_cast<Method>(value)), !refused) << value;
        EXPECT_EQ(static_cast<DWORD>(cnd.GetSumMethod()), refused ? 10 : value);
    }
}

TEST(CUnitCndOfBscBtnCnd, ARankOf0IsRefused)
{
    Cnd cnd;
    EXPECT_TRUE(cnd.SetRankNum(4294967295));
    EXPECT_FALSE(cnd.SetRankNum(0));
    EXPECT_EQ(cnd.GetRankNum(), 4294967295u);
}

TEST(CUnitCndOfBscBtnCnd, TheFamilyIsToldByTheHighBits)
{
    Cnd cnd;
    for (const Sel condition : ALL_CONDITIONS) {
        cnd.SetSelCondition(condition);
        const bool byRank = static_cast<DWORD>(condition) < 0x10000000;
        EXPECT_EQ(cnd.IsSelConditionByRank(), byRank);
        EXPECT_EQ(cnd.IsSelConditionByNumCmp(), !byRank);
        EXPECT_EQ(Cnd::IsSelConditionByRank(condition), byRank);
        EXPECT_EQ(Cnd::IsSelConditionByNumCmp(condition), !byRank);
    }
    const auto ofNone = static_cast<Sel>(0x20000001);
    cnd.SetSelCondition(ofNone);
    EXPECT_EQ(cnd.GetSelCondition(), ofNone); // nothing is checked
    EXPECT_FALSE(cnd.IsSelConditionByRank());
    EXPECT_FALSE(cnd.IsSelConditionByNumCmp());
    EXPECT_FALSE(Cnd::IsSelConditionByRank(ofNone));
    EXPECT_FALSE(Cnd::IsSelConditionByNumCmp(ofNone));
}

TEST(CUnitCndOfBscBtnCnd, TheItemThatIsAskedForIsTheOnlyOne)
{
    Cnd cnd;
    cnd.SetNumID(ITEM);
    EXPECT_TRUE(cnd.HasNumDataItem(ITEM));
    EXPECT_FALSE(cnd.HasNumDataItem(ITEM + 1));
    EXPECT_FALSE(cnd.HasNumDataItem(0));
}

TEST(CUnitCndOfBscBtnCnd, ACloneHasTheSameFieldsAndIsTheCallers)
{
    Cnd cnd = MakeRank(Sel::Rank_LowExcept, 7, Method::Latest);
    cnd.SetCmpNum(-2.5);
    const std::unique_ptr<IComponentOfBscBtnCnd> clone(cnd.CreateClone());
    const auto* const unit = dynamic_cast<const Cnd*>(clone.get());
    ASSERT_NE(unit, nullptr);
    cnd.SetNumID(1);
    EXPECT_EQ(unit->GetNumID(), ITEM);
    EXPECT_EQ(unit->GetSumMethod(), Method::Latest);
    EXPECT_EQ(unit->GetSelCondition(), Sel::Rank_LowExcept);
    EXPECT_EQ(unit->GetRankNum(), 7u);
    EXPECT_EQ(unit->GetCmpNum(), -2.5);
}

// --- Equality

TEST(CUnitCndOfBscBtnCnd, NumbersShareARankUpToTheEpsilon)
{
    const auto expectEqual = [](double a, double b, bool equal) {
        EXPECT_EQ(Cnd::IsEqualForRank(a, b), equal) << a << " and " << b;
        EXPECT_EQ(Cnd::IsEqualForRank(b, a), equal) << b << " and " << a;
        EXPECT_EQ(Cnd::IsNotEqualForRank(a, b), !equal);
    };
    expectEqual(1.0, 1.0 + EPSILON, true); // just below the limit
    expectEqual(1.0, 1.0 + 2 * EPSILON, false);
    expectEqual(1.0, 1.0 - EPSILON / 2, true);
    expectEqual(1.0, 1.0 - EPSILON, false); // the limit itself
    expectEqual(0.0, -0.0, true);
    expectEqual(0.0, 0.0, true);
    expectEqual(0.0, std::numeric_limits<double>::denorm_min(), false);
    expectEqual(-3.0, 3.0, false);
    expectEqual(1e308, -1e308, false); // their difference is no finite number
    expectEqual(NAN_VALUE, NAN_VALUE, true);
    expectEqual(INFINITE, INFINITE, true);
    expectEqual(-INFINITE, -INFINITE, true);
    expectEqual(INFINITE, -INFINITE, false);
    expectEqual(NAN_VALUE, INFINITE, false);
    expectEqual(NAN_VALUE, -INFINITE, false);
    expectEqual(NAN_VALUE, 1.0, false);
    expectEqual(INFINITE, std::numeric_limits<double>::max(), false);
}

// --- Ranks

TEST(CUnitCndOfBscBtnCnd, NoMoreButtonsThanRanksAreNotRanked)
{
    const IDs given = {3, 1, 2};
    for (const DWORD rankNum : {3u, 4u, 4294967295u}) {
        CTestSumMngr sums; // would refuse every number
        EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, rankNum), given, sums), given);
        EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_Low, rankNum), given, sums), given);
        EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_HighExcept, rankNum), given, sums), IDs());
        EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_LowExcept, rankNum, Method::Ratio), given, sums), IDs());
        EXPECT_EQ(sums.askedCount, 0);
        EXPECT_EQ(sums.totalAskedCount, 0);
    }
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, 1), {}, CTestSumMngr()), IDs());
}

TEST(CUnitCndOfBscBtnCnd, WithoutTheItemRanksGiveAllOrNone)
{
    CTestSumMngr sums;
    sums.missingItems = {ITEM};
    const IDs given = {3, 1, 2};
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, 1), given, sums), given);
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_Low, 1), given, sums), given);
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_HighExcept, 1), given, sums), IDs());
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_LowExcept, 1), given, sums), IDs());
    EXPECT_EQ(sums.askedCount, 0);
}

TEST(CUnitCndOfBscBtnCnd, TheResultIsInOrderOfRank)
{
    const std::vector<double> values = {30, 10, 50, 20, 40};
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, 3), values), (IDs{3, 5, 1}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_HighExcept, 3), values), (IDs{4, 2}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_Low, 3), values), (IDs{2, 4, 1}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_LowExcept, 3), values), (IDs{5, 3}));
}

TEST(CUnitCndOfBscBtnCnd, TiesAreNeverCut)
{
    const std::vector<double> values = {9, 7, 7, 7, 1};
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, 2), values), (IDs{1, 4, 3, 2}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_HighExcept, 2), values), (IDs{5}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_Low, 2), values), (IDs{5, 2, 3, 4}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_LowExcept, 2), values), (IDs{1}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, 1), {5, 5, 5}), (IDs{3, 2, 1}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_HighExcept, 1), {5, 5, 5}), IDs());
}

TEST(CUnitCndOfBscBtnCnd, EqualsComeAsGivenFromTheLowestAndTurnedFromTheHighest)
{
    const CTestSumMngr sums({{9, 1.0}, {4, 1.0}, {7, 1.0}, {1, 2.0}});
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_Low, 3), {9, 4, 7, 1}, sums), (IDs{9, 4, 7}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, 2), {9, 4, 7, 1}, sums), (IDs{1, 7, 4, 9}));
}

TEST(CUnitCndOfBscBtnCnd, TiesAreComparedWithTheBoundaryAndNotWithTheirNeighbours)
{
    // Each shares a rank with the next, but the third with the first no more.
    const std::vector<double> values = {1.0 + 2 * EPSILON, 1.0 + EPSILON, 1.0, 0.5};
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, 1), values), (IDs{1, 2}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, 2), values), (IDs{1, 2, 3}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_HighExcept, 1), values), (IDs{3, 4}));
}

TEST(CUnitCndOfBscBtnCnd, ZerosOfBothSignsAreEquals)
{
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_Low, 1), {0.0, -0.0, 1.0}), (IDs{1, 2}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, 1), {-0.0, 0.0, -1.0}), (IDs{2, 1}));
}

TEST(CUnitCndOfBscBtnCnd, NanRanksAs0AndInfinitiesAreKept)
{
    const std::vector<double> values = {NAN_VALUE, 1.0, -1.0, 0.0, INFINITE, -INFINITE, INFINITE};
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, 1), values), (IDs{7, 5}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, 4), values), (IDs{7, 5, 2, 4, 1}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_Low, 3), values), (IDs{6, 3, 1, 4}));
}

TEST(CUnitCndOfBscBtnCnd, RankingAgreesWithTheSortedWalkOnRandomNumbers)
{
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        const std::size_t count = 2 + random() % 60;
        std::vector<double> values;
        for (std::size_t i = 0; i < count; ++i) {
            switch (random() % 12) {
            case 0:
                values.push_back(random() % 2 == 0 ? INFINITE : -INFINITE);
                break;
            case 1:
                values.push_back(random() % 2 == 0 ? 0.0 : -0.0);
                break;
            default:
                values.push_back((static_cast<double>(random() % 7) - 3.0) *
                                 (1.0 + static_cast<double>(random() % 3) * EPSILON));
            }
        }
        IDs given = GetBtns(count);
        const CTestSumMngr sums = MakeSums(values);
        std::shuffle(given.begin(), given.end(), random);
        std::vector<double> valuesOfGiven;
        for (const DWORD btnID : given)
            valuesOfGiven.push_back(sums.values.at(btnID));
        const DWORD rankNum = 1 + static_cast<DWORD>(random() % (count - 1));
        for (const Sel condition : {Sel::Rank_High, Sel::Rank_HighExcept, Sel::Rank_Low, Sel::Rank_LowExcept})
            ASSERT_EQ(Evaluate(MakeRank(condition, rankNum), given, sums),
                      RankNaively(condition, rankNum, given, valuesOfGiven))
                << round;
    }
}

TEST(CUnitCndOfBscBtnCnd, ARefusedNumberEndsARankingWithNothing)
{
    const CTestSumMngr sums({{1, 10.0}, {3, 30.0}});
    EXPECT_EQ(EvaluateToFalse(MakeRank(Sel::Rank_High, 1), {1, 2, 3}, sums), IDs());
    EXPECT_EQ(sums.askedCount, 2); // at once
}

// --- Comparisons

TEST(CUnitCndOfBscBtnCnd, ComparisonsKeepTheGivenOrder)
{
    const CTestSumMngr sums({{1, 10.0}, {2, 20.0}, {3, 30.0}, {4, 20.0}});
    const IDs given = {4, 3, 2, 1};
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_Equal, 20), given, sums), (IDs{4, 2}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_NotEqual, 20), given, sums), (IDs{3, 1}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_Greater, 20), given, sums), (IDs{3}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_GreaterEqual, 20), given, sums), (IDs{4, 3, 2}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_Less, 20), given, sums), (IDs{1}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_LessEqual, 20), given, sums), (IDs{4, 2, 1}));
}

TEST(CUnitCndOfBscBtnCnd, EqualityHasTheToleranceAndGreaterAndLessHaveNone)
{
    const std::vector<double> values = {1.0, 1.0 + EPSILON, 1.0 + 2 * EPSILON};
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_Equal, 1.0), values), (IDs{1, 2}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_NotEqual, 1.0), values), (IDs{3}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_Greater, 1.0), values), (IDs{2, 3}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_LessEqual, 1.0), values), (IDs{1, 2}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_Less, 1.0 + EPSILON), values), (IDs{1}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_GreaterEqual, 1.0 + EPSILON), values), (IDs{1, 2, 3}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_Equal, -0.0), {0.0, -0.0, NAN_VALUE, 1e-300}), (IDs{1, 2, 3}));
}

TEST(CUnitCndOfBscBtnCnd, AnInfinityEqualsNothingInAComparison)
{
    const std::vector<double> values = {INFINITE, -INFINITE, 1.0};
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_Equal, INFINITE), values), IDs());
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_NotEqual, INFINITE), values), (IDs{1, 2, 3}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_GreaterEqual, INFINITE), values), IDs());
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_LessEqual, INFINITE), values), (IDs{2, 3}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_Greater, 1e308), values), (IDs{1}));
}

TEST(CUnitCndOfBscBtnCnd, ANanToCompareWithIsUnequalToAllAndNothingElse)
{
    const std::vector<double> values = {1.0, NAN_VALUE, INFINITE};
    for (const Sel condition : ALL_CONDITIONS) {
        if (Cnd::IsSelConditionByNumCmp(condition)) {
            EXPECT_EQ(Evaluate(MakeCmp(condition, NAN_VALUE), values),
                      condition == Sel::NumCmp_NotEqual ? (IDs{1, 2, 3}) : IDs());
        }
    }
}

TEST(CUnitCndOfBscBtnCnd, WithoutTheItemNothingCompares)
{
    CTestSumMngr sums = MakeSums({1, 2});
    sums.missingItems = {ITEM};
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_Greater, 0), {1, 2}, sums), IDs());
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_NotEqual, 0, Method::Ratio), {1, 2}, sums), IDs());
    EXPECT_EQ(sums.askedCount + sums.totalAskedCount, 0);
}

TEST(CUnitCndOfBscBtnCnd, ARefusedNumberEndsAComparisonWithWhatWasFound)
{
    const CTestSumMngr sums({{1, 10.0}, {3, 30.0}});
    EXPECT_EQ(EvaluateToFalse(MakeCmp(Sel::NumCmp_Greater, 0), {1, 2, 3}, sums), (IDs{1}));
    EXPECT_EQ(sums.askedCount, 2);
}

// --- Sum methods

TEST(CUnitCndOfBscBtnCnd, EachMethodAsksForItsOwnNumber)
{
    const std::map<Method, double> offsets = {
        {Method::Sum, 0},    {Method::Count, 1000}, {Method::Average, 2000}, {Method::WeightedAvg, 3000},
        {Method::Max, 4000}, {Method::Min, 5000},   {Method::Latest, 6000},  {Method::Absolute, 7000}};
    const CTestSumMngr sums = MakeSums({7, 8});
    for (const auto& [method, offset] : offsets) {
        EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_Equal, offset + 8, method), {1, 2}, sums), (IDs{2}));
        EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_Low, 1, method), {1, 2}, sums), (IDs{1}));
    }
    EXPECT_EQ(sums.totalAskedCount, 0);
}

TEST(CUnitCndOfBscBtnCnd, ARatioIsToTheTotalOfTheClass)
{
    CTestSumMngr sums = MakeSums({25, 50, 75});
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_GreaterEqual, 0.5, Method::Ratio), {1, 2, 3}, sums), (IDs{2, 3}));
    EXPECT_EQ(sums.totalAskedCount, 1);
    EXPECT_EQ(sums.askedClassID, CLASS_ID);
    EXPECT_EQ(sums.askedNumID, ITEM);
    sums.total = -100; // turns the order
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, 2, Method::Ratio), {1, 2, 3}, sums), (IDs{1, 2}));
    EXPECT_EQ(sums.totalAskedCount, 2);
}

TEST(CUnitCndOfBscBtnCnd, ARatioToNothingIsAnInfinityOr0)
{
    CTestSumMngr sums = MakeSums({5, 0, -5});
    sums.total = 0;
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_Equal, 0, Method::Ratio), {1, 2, 3}, sums), (IDs{2}));
    EXPECT_EQ(Evaluate(MakeCmp(Sel::NumCmp_Greater, 1e308, Method::Ratio), {1, 2, 3}, sums), (IDs{1}));
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_Low, 2, Method::Ratio), {1, 2, 3}, sums), (IDs{3, 2}));
}

TEST(CUnitCndOfBscBtnCnd, ARefusedTotalFailsARatio)
{
    CTestSumMngr sums = MakeSums({5, 0, -5});
    sums.refusesTotal = true;
    EXPECT_EQ(EvaluateToFalse(MakeRank(Sel::Rank_High, 1, Method::Ratio), {1, 2, 3}, sums), IDs());
    EXPECT_EQ(EvaluateToFalse(MakeCmp(Sel::NumCmp_Less, 1, Method::Ratio), {1, 2, 3}, sums), IDs());
    EXPECT_EQ(sums.askedCount, 0);
    EXPECT_EQ(Evaluate(MakeRank(Sel::Rank_High, 1), {1, 2, 3}, sums), (IDs{1})); // a sum needs no total
}

TEST(CUnitCndOfBscBtnCnd, CountedCellsAreTakenAndNeverAnswered)
{
    const CTestSumMngr sums = MakeSums({1, 2});
    EXPECT_EQ(EvaluateToFalse(MakeRank(Sel::Rank_High, 1, Method::CountCell), {1, 2}, sums), IDs());
    EXPECT_EQ(EvaluateToFalse(MakeCmp(Sel::NumCmp_Greater, 0, Method::CountCell), {1, 2}, sums), IDs());
    EXPECT_EQ(sums.askedCount, 0);
}

// --- What is none of the enumerations

TEST(CUnitCndOfBscBtnCnd, AnUnknownSumMethodIsThrownWhenANumberIsWanted)
{
    const CTestSumMngr sums = MakeSums({1, 2});
    IDs result;
    for (const DWORD value : {0u, 15u, 4294967295u}) {
        for (const Sel condition : {Sel::Rank_High, Sel::NumCmp_Less}) {
            const Cnd cnd = MakeRank(condition, 1, static_cast<Method>(value));
            ExpectAbnormal(
                [&] {
                    cnd.GetBtnIDListThatAppliesToTheCnd(CLASS_ID, {1, 2}, sums, result);
                },
                SCBUICoreStrDef::MSG_UNKNOWN_SUMMETHOD_FORCND,
                "NSKZ::NSKZCore::CUnitCndOfBscBtnCnd::GetSumValue", 535);
            EXPECT_TRUE(cnd.GetBtnIDListThatAppliesToTheCnd(CLASS_ID, {}, sums, result));
        }
    }
}

TEST(CUnitCndOfBscBtnCnd, AnUnknownRankConditionIsThrownWhetherOrNotItIsRanked)
{
    const CTestSumMngr sums = MakeSums({1, 2});
    IDs result;
    for (const DWORD value : {0u, 5u, 0x0FFFFFFFu}) {
        const Cnd cnd = MakeRank(static_cast<Sel>(value), 1);
        ExpectAbnormal([&] { cnd.GetBtnIDListThatAppliesToTheCnd(CLASS_ID, {1}, sums, result); },
                       SCBUICoreStrDef::MSG_UNKNOWN_MMBBTNSELCND, FUNC_RANK, 289);
        ExpectAbnormal(
            [&] {
                cnd.GetBtnIDListThatAppliesToTheCnd(CLASS_ID, {1, 2}, sums, result);
            },
            SCBUICoreStrDef::MSG_UNKNOWN_MMBBTNSELCND, FUNC_RANK, 255);
        // A refused number comes first.
        EXPECT_FALSE(cnd.GetBtnIDListThatAppliesToTheCnd(CLASS_ID, {1, 2, 3}, sums, result));
    }
}

TEST(CUnitCndOfBscBtnCnd, AnUnknownComparisonIsThrownAtTheFirstButton)
{
    CTestSumMngr sums = MakeSums({1, 2});
    IDs result;
    for (const DWORD value : {0x10000000u, 0x10000007u, 0x20000001u, 0xF0000001u}) {
        const Cnd cnd = MakeCmp(static_cast<Sel>(value), 1);
        sums.askedCount = 0;
        ExpectAbnormal(
            [&] {
                cnd.GetBtnIDListThatAppliesToTheCnd(CLASS_ID, {1, 2}, sums, result);
            },
            SCBUICoreStrDef::MSG_UNKNOWN_MMBBTNSELCND, FUNC_NUMCMP, 410);
        EXPECT_EQ(sums.askedCount, 1);
        EXPECT_TRUE(cnd.GetBtnIDListThatAppliesToTheCnd(CLASS_ID, {}, sums, result));
        EXPECT_FALSE(cnd.GetBtnIDListThatAppliesToTheCnd(CLASS_ID, {3}, sums, result)); // refused before
    }
}

// --- XML

namespace {

class CUnitCndXMLTest : public ::testing::Test
{
protected:
    std::string GetPath() const { return (dir.GetPath() / "a.xml").string(); }

    // The element of a condition; empty if writing gives false.
    std::string Write(const Cnd& cnd) const
    {
        CXMLWriter writer(GetPath().c_str());
        if (!cnd.WriteSpecByXML("", writer, false))
            return "";
        EXPECT_TRUE(writer.Close());
        CXMLReader reader(GetPath().c_str());
        return Current(reader);
    }

    CXMLReader::EMthRetOfReadXML Read(std::string_view element, Cnd& cnd) const
    {
        dir.WriteFile("a.xml", element);
        CXMLReader reader(GetPath().c_str());
        const CXMLReader::EMthRetOfReadXML result = cnd.ReadSpecByXML("", reader);
        EXPECT_NE(Current(reader), ""); // not moved
        return result;
    }

    CTempDir dir;
};

std::string Describe(const Cnd& cnd)
{
    return std::to_string(cnd.GetNumID()) + " " + std::to_string(static_cast<DWORD>(cnd.GetSumMethod())) +
           " " + std::to_string(static_cast<DWORD>(cnd.GetSelCondition())) + " " +
           std::to_string(cnd.GetRankNum()) + " " + std::to_string(cnd.GetCmpNum());
}

} // namespace

TEST_F(CUnitCndXMLTest, ARankIsWrittenWithoutTheNumberToCompareWith)
{
    EXPECT_EQ(Write(MakeRank(Sel::Rank_LowExcept, 4294967295, Method::WeightedAvg)),
              "BasicUnitCondition numID=8 sumMethod=WeightedAvg selCondition=Rank_LowExcept "
              "rankNum=4294967295");
    EXPECT_EQ(Write(Cnd()), "BasicUnitCondition numID=0 sumMethod=Sum selCondition=Rank_High rankNum=1");
}

TEST_F(CUnitCndXMLTest, AComparisonIsWrittenWithoutTheRank)
{
    EXPECT_EQ(Write(MakeCmp(Sel::NumCmp_GreaterEqual, -0.1, Method::CountCell)),
              "BasicUnitCondition numID=8 sumMethod=CountCell selCondition=NumCmp_GreaterEqual cmpNum=-0.1");
}

TEST_F(CUnitCndXMLTest, EveryConditionAndMethodComesBack)
{
    for (const Sel condition : ALL_CONDITIONS) {
        for (DWORD method = 1; method <= 14; ++method) {
            Cnd cnd = MakeRank(condition, 3);
            if (!cnd.SetSumMethod(static_cast<Method>(method)))
                continue;
            if (cnd.IsSelConditionByNumCmp()) {
                EXPECT_TRUE(cnd.SetRankNum(1)); // is not saved
                cnd.SetCmpNum(1.0 / 3);
            }
            ASSERT_NE(Write(cnd), "");
            CXMLReader reader(GetPath().c_str());
            Cnd read = MakeCmp(Sel::NumCmp_Less, 77);
            EXPECT_EQ(read.ReadSpecByXML("", reader), CXMLReader::READXML_OK);
            EXPECT_EQ(Describe(read), Describe(cnd));
            EXPECT_EQ(read.GetCmpNum(), cnd.GetCmpNum());
        }
    }
}

TEST_F(CUnitCndXMLTest, EveryNumberToCompareWithComesBack)
{
    for (const double num : {0.0, -0.0, 1.0 + EPSILON, -1e308, 5e-324, INFINITE, -INFINITE, NAN_VALUE}) {
        ASSERT_NE(Write(MakeCmp(Sel::NumCmp_Equal, num)), "");
        CXMLReader reader(GetPath().c_str());
        Cnd read;
        EXPECT_EQ(read.ReadSpecByXML("", reader), CXMLReader::READXML_OK);
        EXPECT_EQ(std::isnan(read.GetCmpNum()), std::isnan(num));
        EXPECT_EQ(std::signbit(read.GetCmpNum()), std::signbit(num));
        if (!std::isnan(num)) {
            EXPECT_EQ(read.GetCmpNum(), num);
        }
    }
}

TEST_F(CUnitCndXMLTest, AnUnknownFieldIsThrownBeforeAnythingIsWritten)
{
    CXMLWriter writer(GetPath().c_str());
    ExpectAbnormal([&] { MakeRank(static_cast<Sel>(5), 1).WriteSpecByXML("", writer, false); },
                   SCBUICoreStrDef::MSG_UNKNOWN_SELCONDITION,
                   "NSKZ::NSKZCore::CUnitCndOfBscBtnCnd::WriteSpecByXML", 585);
    ExpectAbnormal([&] { MakeRank(static_cast<Sel>(0x10000009), 1).WriteSpecByXML("", writer, false); },
                   SCBUICoreStrDef::MSG_UNKNOWN_SELCONDITION,
                   "NSKZ::NSKZCore::CUnitCndOfBscBtnCnd::WriteSpecByXML", 585);
    const Cnd unknownMethod = MakeRank(Sel::Rank_High, 1, static_cast<Method>(99));
    EXPECT_THROW(unknownMethod.WriteSpecByXML("", writer, false), ECAbnormalData);
    EXPECT_TRUE(PutEmpty(writer, "a")); // still the root
}

TEST_F(CUnitCndXMLTest, AWriterThatFailsGivesFalse)
{
    CXMLWriter writer((dir.GetPath() / "missing" / "a.xml").string().c_str());
    EXPECT_FALSE(Cnd().WriteSpecByXML("", writer, false));
}

TEST_F(CUnitCndXMLTest, AnotherElementChangesNothing)
{
    Cnd cnd = MakeCmp(Sel::NumCmp_Less, 3);
    const std::string before = Describe(cnd);
    EXPECT_EQ(Read("<basicUnitCondition numID='1'/>", cnd), CXMLReader::READXML_NOELEMENT);
    CXMLReader nowhere("/no/such/file");
    EXPECT_EQ(cnd.ReadSpecByXML("", nowhere), CXMLReader::READXML_NOELEMENT);
    EXPECT_EQ(Describe(cnd), before);
}

TEST_F(CUnitCndXMLTest, AnAttributeThatIsNotAsItShouldBeEndsTheReadingThere)
{
    struct SCase
    {
        const char* attributes;
        const char* fields; // as they are then
    };
    const SCase cases[] = {
        {"", "0 1 1 1 0.000000"},
        {"numID='x' sumMethod='Max'", "0 1 1 1 0.000000"},
        {"numID='-1'", "0 1 1 1 0.000000"},
        {"numID='4294967296'", "0 1 1 1 0.000000"},
        {"numID='6'", "6 1 1 1 0.000000"},
        {"numID='6' sumMethod='max'", "6 1 1 1 0.000000"},
        {"numID='6' sumMethod='Each'", "6 1 1 1 0.000000"},
        {"numID='6' sumMethod='SumTotal'", "6 1 1 1 0.000000"},
        {"numID='6' sumMethod='RatioTotal'", "6 1 1 1 0.000000"},
        {"numID='6' sumMethod='SumMultiplication'", "6 1 1 1 0.000000"},
        {"numID='6' sumMethod='Max'", "6 9 1 1 0.000000"},
        {"numID='6' sumMethod='Max' selCondition='Rank_Middle' rankNum='2'", "6 9 1 1 0.000000"},
        {"numID='6' sumMethod='Max' selCondition='Rank_Low'", "6 9 3 1 0.000000"},
        {"numID='6' sumMethod='Max' selCondition='Rank_Low' rankNum='0'", "6 9 3 1 0.000000"},
        {"numID='6' sumMethod='Max' selCondition='Rank_Low' rankNum='1.5'", "6 9 3 1 0.000000"},
        {"numID='6' sumMethod='Max' selCondition='Rank_Low' cmpNum='1'", "6 9 3 1 0.000000"},
        {"numID='6' sumMethod='Max' selCondition='NumCmp_Less' rankNum='2'", "6 9 268435461 1 0.000000"},
        {"numID='6' sumMethod='Max' selCondition='NumCmp_Less' cmpNum='1,5'", "6 9 268435461 1 0.000000"},
    };
    for (const SCase& each : cases) {
        Cnd cnd = MakeCmp(Sel::NumCmp_Greater, 3);
        EXPECT_EQ(Read(std::string("<BasicUnitCondition ") + each.attributes + "/>", cnd),
                  CXMLReader::READXML_BADFORMAT)
            << each.attributes;
        EXPECT_EQ(Describe(cnd), each.fields) << each.attributes;
    }
}

TEST_F(CUnitCndXMLTest, WhatIsNotAskedForIsPassedOver)
{
    Cnd cnd;
    EXPECT_EQ(Read("<BasicUnitCondition cmpNum='x' other='1' rankNum='2' selCondition='Rank_Low' "
                   "sumMethod='Sum' numID='6'/>",
                   cnd),
              CXMLReader::READXML_OK);
    EXPECT_EQ(Describe(cnd), "6 1 3 2 0.000000");
}

TEST(CUnitCndOfBscBtnCnd, TheElementIsKnownByItsExactName)
{
    EXPECT_TRUE(Cnd::CompareElementName("BasicUnitConditionX", 18));
    EXPECT_FALSE(Cnd::CompareElementName("BasicUnitCondition", 17));
    EXPECT_FALSE(Cnd::CompareElementName("BasicUnitConditioN", 18));
    EXPECT_FALSE(Cnd::CompareElementName(nullptr, 0));
}
