#include "CSumValueCacheMngr.h"
#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "Support/MakeTable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

// Sums that are counted, and that a test may bend.
class CCountingSumMngr final : public CCoreSumMngr
{
public:
    using CCoreSumMngr::CCoreSumMngr;
    double GetSumValue(DWORD fldID, SCSMCoreCom::ENumKindOfSum kind, const DWORD* recList,
                       DWORD recCount) const override
    {
        ++askedCount;
        return answerNaN ? std::numeric_limits<double>::quiet_NaN()
                         : CCoreSumMngr::GetSumValue(fldID, kind, recList, recCount);
    }
    mutable int askedCount = 0;
    bool answerNaN = false;
};

// shop: a b a c (empty) a; amount: 1 -10 2 (empty) 5 4; kind: x x y y x y
class CSumValueCacheMngrTest : public ::testing::Test
{
protected:
    static constexpr DWORD SHOP = 1;
    static constexpr DWORD KIND = 3;
    static constexpr DWORD AMOUNT = 2; // the field

    CSumValueCacheMngrTest()
        : table(MakeTable({{"shop", TEXT, {"a", "b", "a", "c", "", "a"}},
                           {"amount", NUM, {"1", "-10", "2", "", "5", "4"}},
                           {"kind", TEXT, {"x", "x", "y", "y", "x", "y"}}})),
          sums(table), env(1, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, table,
                           &sums, nullptr),
          cache(env.GetSumValueCacheMngrObjRef())
    {}
    double GetSum(DWORD btnClassID, DWORD btnID) const
    {
        double value = 4711.0;
        EXPECT_TRUE(cache.GetSumValue(btnClassID, btnID, AMOUNT, value));
        return value;
    }
    double GetTotal(DWORD btnClassID) const
    {
        double value = 4711.0;
        EXPECT_TRUE(cache.GetTotalValue(btnClassID, AMOUNT, value));
        return value;
    }

    CSourceDataMngr table;
    CCountingSumMngr sums;
    CBUIDataMngr env;
    CSumValueCacheMngr& cache;
};

TEST_F(CSumValueCacheMngrTest, ASumIsAskedOnce)
{
    EXPECT_EQ(GetSum(SHOP, 2), 7.0);
    EXPECT_EQ(GetSum(SHOP, 2), 7.0);
    EXPECT_EQ(sums.askedCount, 1);
    EXPECT_EQ(GetSum(SHOP, 1), 5.0);
    DWORD count = 0;
    EXPECT_TRUE(cache.GetCountValue(SHOP, 2, AMOUNT, count));
    EXPECT_TRUE(cache.GetCountValue(SHOP, 2, AMOUNT, count));
    EXPECT_EQ(count, 3u);
    EXPECT_EQ(sums.askedCount, 3);
    double average = 0.0;
    EXPECT_TRUE(cache.GetAverageValue(SHOP, 2, AMOUNT, average)); // both halves are known
    EXPECT_DOUBLE_EQ(average, 7.0 / 3);
    EXPECT_EQ(sums.askedCount, 3);
}

TEST_F(CSumValueCacheMngrTest, AnAverageAsksForBothHalvesUnlessBothAreKnown)
{
    GetSum(SHOP, 2);
    double average = 0.0;
    EXPECT_TRUE(cache.GetAverageValue(SHOP, 2, AMOUNT, average));
    EXPECT_EQ(sums.askedCount, 3);
    GetSum(SHOP, 2);
    EXPECT_EQ(sums.askedCount, 3);
}

TEST_F(CSumValueCacheMngrTest, AKnownCountDoesNotAnswerForTheSum)
{
    DWORD count = 0;
    cache.GetCountValue(SHOP, 2, AMOUNT, count);
    EXPECT_EQ(GetSum(SHOP, 2), 7.0);
    EXPECT_EQ(sums.askedCount, 2);
}

TEST_F(CSumValueCacheMngrTest, AnAverageOverNoNumberIsNaNAndStillAnAnswer)
{
    double average = 0.0;
    EXPECT_TRUE(cache.GetAverageValue(SHOP, 4, AMOUNT, average)); // c has no number
    EXPECT_TRUE(std::isnan(average));
    EXPECT_TRUE(cache.GetAverageValue(SHOP, 777, AMOUNT, average)); // no such button: no record
    EXPECT_TRUE(std::isnan(average));
}

TEST_F(CSumValueCacheMngrTest, EachValueFollowsTheRecordsAndIsNeverKept)
{
    std::vector<double> values{9.0};
    EXPECT_TRUE(cache.GetEachValue(SHOP, 2, AMOUNT, values));
    EXPECT_EQ(values, std::vector<double>({1.0, 2.0, 4.0}));
    EXPECT_FALSE(cache.GetEachValue(77, 2, AMOUNT, values));
    EXPECT_TRUE(values.empty()); // emptied all the same
}

TEST_F(CSumValueCacheMngrTest, TotalsAddUpTheDisplayedButtonsAndKeepTheirSums)
{
    EXPECT_EQ(GetTotal(SHOP), 2.0); // 7 - 10 + 0 + 5
    EXPECT_EQ(sums.askedCount, 4);
    double absolute = 0.0;
    EXPECT_TRUE(cache.GetTotalAbsoluteValue(SHOP, AMOUNT, absolute));
    EXPECT_EQ(absolute, 22.0);
    EXPECT_EQ(GetSum(SHOP, 3), -10.0);
    EXPECT_EQ(sums.askedCount, 4);

    cache.ClearTotalValue(SHOP);
    EXPECT_EQ(GetTotal(SHOP), 2.0); // from the sums that stayed
    EXPECT_EQ(sums.askedCount, 4);
    cache.ClearTotalValue();
    EXPECT_EQ(GetTotal(SHOP), 2.0);
    EXPECT_EQ(sums.askedCount, 4);
}

TEST_F(CSumValueCacheMngrTest, TotalsLeaveHiddenButtonsOut)
{
    env.SelectTheBtn(KIND, 3, true); // y: records 2, 3, 5
    EXPECT_EQ(GetTotal(SHOP), 6.0);
    EXPECT_EQ(GetSum(SHOP, 2), 6.0);
    EXPECT_EQ(GetSum(SHOP, 3), 0.0); // no record of b among them
}

TEST_F(CSumValueCacheMngrTest, ANaNSumStaysKnownButOutOfTheTotals)
{
    EXPECT_EQ(GetSum(SHOP, 3), -10.0);
    sums.answerNaN = true;
    EXPECT_EQ(GetTotal(SHOP), -10.0);
    EXPECT_TRUE(std::isnan(GetSum(SHOP, 2)));
}

TEST_F(CSumValueCacheMngrTest, AClassIsNotNarrowedByItsOwnLevel)
{
    env.SelectTheBtn(SHOP, 2, true);
    EXPECT_EQ(GetSum(SHOP, 3), -10.0);
    EXPECT_EQ(GetSum(KIND, 2), 1.0);
    env.SelectTheBtn(KIND, 3, true);
    EXPECT_EQ(GetSum(KIND, 2), 1.0); // judged by the level before its own
    EXPECT_EQ(GetSum(SHOP, 2), 7.0);
}

TEST_F(CSumValueCacheMngrTest, ClassZeroHasNoSumsWhateverIsAsked)
{
    double value = 4711.0;
    DWORD count = 4711;
    std::vector<double> values;
    EXPECT_FALSE(cache.GetSumValue(0, 2, AMOUNT, value));
    EXPECT_FALSE(cache.GetCountValue(0, 2, AMOUNT, count));
    EXPECT_FALSE(cache.GetAverageValue(0, 2, AMOUNT, value));
    EXPECT_FALSE(cache.GetEachValue(0, 2, AMOUNT, values));
    EXPECT_FALSE(cache.GetTotalValue(0, AMOUNT, value));
    EXPECT_FALSE(cache.GetTotalAbsoluteValue(0, AMOUNT, value));
    EXPECT_EQ(value, 4711.0);
    EXPECT_EQ(count, 4711u);
    EXPECT_FALSE(cache.GetSumValue(99, 2, AMOUNT, value)); // an unknown class
}

TEST_F(CSumValueCacheMngrTest, WithoutASumManagerOnlyWhatIsKnownIsAnswered)
{
    GetSum(SHOP, 2);
    GetTotal(KIND);
    env.SetCoreSumMngrPtr(nullptr);
    EXPECT_EQ(GetSum(SHOP, 2), 7.0);
    EXPECT_EQ(GetTotal(KIND), 2.0);
    double value = 4711.0;
    EXPECT_FALSE(cache.GetSumValue(SHOP, 3, AMOUNT, value));
    EXPECT_FALSE(cache.GetTotalValue(SHOP, AMOUNT, value));
    EXPECT_EQ(value, 4711.0);
    EXPECT_FALSE(cache.ExistNumDataItem(AMOUNT));
    env.SetCoreSumMngrPtr(&sums);
    EXPECT_TRUE(cache.ExistNumDataItem(AMOUNT));
    EXPECT_FALSE(cache.ExistNumDataItem(1));
}

TEST_F(CSumValueCacheMngrTest, FiveKindsOfValueAreLeftToHosts)
{
    double value = 4711.0;
    EXPECT_FALSE(cache.GetWeightedAvgValue(SHOP, 2, AMOUNT, value));
    EXPECT_FALSE(cache.GetMaxValue(SHOP, 2, AMOUNT, value));
    EXPECT_FALSE(cache.GetMinValue(SHOP, 2, AMOUNT, value));
    EXPECT_FALSE(cache.GetLatestValue(SHOP, 2, AMOUNT, value));
    EXPECT_FALSE(cache.GetAbsoluteValue(SHOP, 2, AMOUNT, value));
    EXPECT_EQ(value, 4711.0);
}

TEST_F(CSumValueCacheMngrTest, WhatTheHostForgetsIsAskedAnew)
{
    GetSum(SHOP, 2);
    GetSum(SHOP, 3);
    cache.ClearSumValue(SHOP, 2);
    GetSum(SHOP, 2);
    EXPECT_EQ(sums.askedCount, 3);
    cache.ClearSumValueAndTotalValue(AMOUNT);
    GetSum(SHOP, 3);
    EXPECT_EQ(sums.askedCount, 4);
    cache.ClearSumValueCache(SHOP);
    GetSum(SHOP, 3);
    EXPECT_EQ(sums.askedCount, 5);
    cache.ClearSumValueCache();
    GetSum(SHOP, 3);
    EXPECT_EQ(sums.askedCount, 6);
}

TEST_F(CSumValueCacheMngrTest, ACopyKnowsWhatWasKnownAndGoesItsOwnWay)
{
    GetSum(SHOP, 2);
    const CSumValueCacheMngr copy(cache);
    cache.ClearSumValueCache();
    double value = 0.0;
    EXPECT_TRUE(copy.GetSumValue(SHOP, 2, AMOUNT, value));
    EXPECT_EQ(value, 7.0);
    EXPECT_EQ(sums.askedCount, 1);
    EXPECT_TRUE(copy.GetSumValue(SHOP, 3, AMOUNT, value)); // work areas are made anew
    EXPECT_EQ(value, -10.0);
    cache = copy;
    EXPECT_EQ(GetSum(SHOP, 3), -10.0);
    EXPECT_EQ(sums.askedCount, 2);
    CSumValueCacheMngr& same = cache;
    cache = same;
    EXPECT_EQ(GetSum(SHOP, 2), 7.0);
    ISumValueMngr& base = cache;
    base = static_cast<const ISumValueMngr&>(copy); // copies nothing
    EXPECT_EQ(GetSum(SHOP, 2), 7.0);
}

TEST(CSumValueCacheMngr, AnEnvironmentWithoutRecordsHasSumsOfNothing)
{
    const CSourceDataMngr table = MakeTable({{"shop", TEXT, {}}, {"amount", NUM, {}}});
    const CCoreSumMngr sums(table);
    CBUIDataMngr env(1, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, table, &sums,
                     nullptr);
    double value = 4711.0;
    EXPECT_TRUE(env.GetSumValueCacheMngrObjRef().GetTotalValue(1, 2, value));
    EXPECT_EQ(value, 0.0);
    EXPECT_TRUE(env.GetSumValueCacheMngrObjRef().GetSumValue(1, 1, 2, value));
    EXPECT_EQ(value, 0.0);
}

// --- Lists of worths

using List = std::vector<DWORD>;
using ESumMethodForCnd = SCBUICoreCom::ESumMethodForCnd;

TEST_F(CSumValueCacheMngrTest, AListOfWorthsIsKeptForAsLongAsItsNumbersHold)
{
    const List btnIDs{4, 2, 3, 1}; // c a b (empty)
    const CBtnWorthList* const worths = cache.GetBtnWorths(ESumMethodForCnd::Sum, SHOP, btnIDs, AMOUNT);
    ASSERT_NE(worths, nullptr);
    EXPECT_EQ(worths->GetWorths(), std::vector<double>({0.0, 7.0, -10.0, 5.0}));
    EXPECT_EQ(worths->GetRanking(), List({2, 0, 3, 1}));
    const int asked = sums.askedCount;
    EXPECT_EQ(cache.GetBtnWorths(ESumMethodForCnd::Sum, SHOP, btnIDs, AMOUNT), worths);
    EXPECT_NE(cache.GetBtnWorths(ESumMethodForCnd::Sum, SHOP, {2, 3}, AMOUNT), worths);
    EXPECT_EQ(sums.askedCount, asked);
    const auto isKept = [&] {
        const int before = sums.askedCount;
        EXPECT_NE(cache.GetBtnWorths(ESumMethodForCnd::Sum, SHOP, btnIDs, AMOUNT), nullptr);
        return sums.askedCount == before;
    };
    EXPECT_TRUE(isKept());
    cache.ClearSumValue(SHOP, 3);
    EXPECT_FALSE(isKept());
    cache.ClearSumValue(SHOP, 99);
    cache.ClearSumValue(KIND, 3);
    cache.ClearSumValueCache(KIND);
    cache.ClearTotalValue();
    cache.ClearSumValueAndTotalValue(77);
    EXPECT_TRUE(isKept());
    cache.ClearSumValueAndTotalValue(AMOUNT);
    EXPECT_FALSE(isKept());
    cache.ClearSumValueCache(SHOP);
    EXPECT_FALSE(isKept());
    cache.ClearSumValueCache();
    EXPECT_FALSE(isKept());
    EXPECT_TRUE(isKept());
    EXPECT_TRUE(env.SelectTheBtn(KIND, 2, true)); // other target records, other sums
    EXPECT_EQ(cache.GetBtnWorths(ESumMethodForCnd::Sum, SHOP, btnIDs, AMOUNT)->GetWorths(),
              std::vector<double>({0.0, 1.0, -10.0, 5.0}));
}

TEST_F(CSumValueCacheMngrTest, AnAverageThatFindsAnotherSumMakesListsOfSumsAnew)
{
    const List btnIDs{2, 3};
    ASSERT_NE(cache.GetBtnWorths(ESumMethodForCnd::Sum, SHOP, btnIDs, AMOUNT), nullptr);
    sums.answerNaN = true; // the host's sums are others by now
    double average = 0.0;
    EXPECT_TRUE(cache.GetAverageValue(SHOP, 2, AMOUNT, average));
    EXPECT_EQ(cache.GetBtnWorths(ESumMethodForCnd::Sum, SHOP, btnIDs, AMOUNT)->GetWorths(),
              std::vector<double>({0.0, -10.0}));
}

TEST_F(CSumValueCacheMngrTest, WorthsAreWhatTheOperationsTellOneByOne)
{
    const List btnIDs{1, 2, 3, 4};
    EXPECT_EQ(cache.GetBtnWorths(ESumMethodForCnd::Count, SHOP, btnIDs, AMOUNT)->GetWorths(),
              std::vector<double>({1.0, 3.0, 1.0, 0.0}));
    EXPECT_EQ(cache.GetBtnWorths(ESumMethodForCnd::Average, SHOP, btnIDs, AMOUNT)->GetWorths(),
              std::vector<double>({5.0, 7.0 / 3, -10.0, 0.0})); // over no number: worth 0
    EXPECT_EQ(cache.GetBtnWorths(ESumMethodForCnd::Ratio, SHOP, btnIDs, AMOUNT)->GetWorths(),
              std::vector<double>({2.5, 3.5, -5.0, 0.0}));
    for (const ESumMethodForCnd method :
         {ESumMethodForCnd::Each, ESumMethodForCnd::Max, ESumMethodForCnd::CountCell,
          static_cast<ESumMethodForCnd>(0), static_cast<ESumMethodForCnd>(15)})
        EXPECT_EQ(cache.GetBtnWorths(method, SHOP, btnIDs, AMOUNT), nullptr);
    EXPECT_EQ(cache.GetBtnWorths(ESumMethodForCnd::Sum, 0, btnIDs, AMOUNT), nullptr);
    EXPECT_EQ(cache.GetBtnWorths(ESumMethodForCnd::Sum, 99, btnIDs, AMOUNT), nullptr);
    EXPECT_EQ(cache.GetBtnWorths(ESumMethodForCnd::Ratio, 99, btnIDs, AMOUNT), nullptr);
    EXPECT_EQ(cache.GetBtnWorths(ESumMethodForCnd::Sum, SHOP, {2, SCBUICoreCom::BTN_ID_INC_BEGIN}, AMOUNT),
              nullptr);
    EXPECT_NE(cache.GetBtnWorths(ESumMethodForCnd::Sum, SHOP, {}, AMOUNT), nullptr);
    env.SetCoreSumMngrPtr(nullptr); // what is known is still told
    EXPECT_NE(cache.GetBtnWorths(ESumMethodForCnd::Sum, SHOP, btnIDs, AMOUNT), nullptr);
    cache.ClearSumValueCache();
    EXPECT_EQ(cache.GetBtnWorths(ESumMethodForCnd::Sum, SHOP, btnIDs, AMOUNT), nullptr);
}

TEST(CSumValueCacheMngr, ManySumsOfFewRecordsComeFromOnePassAndAreTheSame)
{
    // Sums whose last bit tells the order in which they were added.
    std::vector<std::string> shops;
    std::vector<std::string> kinds;
    std::vector<std::string> amounts;
    for (int i = 0; i < 3000; ++i) {
        shops.push_back(i % 11 == 0 ? "" : "s" + std::to_string(i * 7 % 40));
        kinds.push_back("k" + std::to_string(i % 3));
        amounts.push_back(i % 13 == 0 ? "" : std::to_string(1.0 / (1 + i)));
    }
    const CSourceDataMngr table =
        MakeTable({{"shop", TEXT, shops}, {"kind", TEXT, kinds}, {"amount", NUM, amounts}});
    const CCoreSumMngr sums(table);
    const auto makeEnv = [&] {
        auto env = std::make_unique<CBUIDataMngr>(1, SCBUICoreCom::LINKTBLVERTYPE_ONMEM,
                                                  SCBUICoreCom::LINKTBLVERTYPE_ONMEM, table, &sums, nullptr);
        EXPECT_TRUE(env->SelectTheBtn(2, 3, true));
        return env;
    };
    const auto atOnce = makeEnv();
    const auto oneByOne = makeEnv();
    List btnIDs;
    atOnce->GetAllBtnIDListOfBtnClass(1, btnIDs, true);
    btnIDs.push_back(5000);                         // no button of the class: no records
    btnIDs.push_back(SCBUICoreCom::BTN_ID_NRM_END); // however high its identifier
    const CSumValueCacheMngr& known = atOnce->GetSumValueCacheMngrObjRef();
    const CSumValueCacheMngr& asked = oneByOne->GetSumValueCacheMngrObjRef();
    for (const ESumMethodForCnd method :
         {ESumMethodForCnd::Sum, ESumMethodForCnd::Count, ESumMethodForCnd::Average}) {
        const CBtnWorthList* const worths = known.GetBtnWorths(method, 1, btnIDs, 3);
        ASSERT_NE(worths, nullptr);
        for (std::size_t i = 0; i < btnIDs.size(); ++i) {
            double value = 0.0;
            DWORD count = 0;
            if (method == ESumMethodForCnd::Sum) {
                EXPECT_TRUE(asked.GetSumValue(1, btnIDs[i], 3, value));
            } else if (method == ESumMethodForCnd::Count) {
                EXPECT_TRUE(asked.GetCountValue(1, btnIDs[i], 3, count));
                value = count;
            } else {
                EXPECT_TRUE(asked.GetAverageValue(1, btnIDs[i], 3, value));
                value = std::isnan(value) ? 0.0 : value;
            }
            EXPECT_EQ(worths->GetWorths()[i], value) << btnIDs[i];
        }
    }
    double total = 0.0;
    double totalOneByOne = 0.0;
    EXPECT_TRUE(known.GetTotalValue(1, 3, total));
    EXPECT_TRUE(asked.GetTotalValue(1, 3, totalOneByOne));
    EXPECT_EQ(total, totalOneByOne);
}

} // namespace
