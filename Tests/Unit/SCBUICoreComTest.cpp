#include "SCBUICoreCom.h"

#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "Support/CRandom.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>

using namespace NSKZ::NSKZCore;
using Com = SCBUICoreCom;
using List = std::vector<DWORD>;

namespace {

// The identifiers at and around every bound.
const List BOUNDARIES = {0,          1,          2,          3000000001, 3000000002, 4000000001, 4000000002,
                         4080000001, 4080000002, 4160000001, 4160000002, 4240000001, 4240000002, 4294967295};

List GetAccepted(bool (*test)(DWORD), const List& ids)
{
    List accepted;
    std::copy_if(ids.begin(), ids.end(), std::back_inserter(accepted), test);
    return accepted;
}

List MakeRandomList(CRandom& random, DWORD range)
{
    List list;
    const DWORD density = random.GetBelow(10);
    for (DWORD id = 0; id < range; ++id) {
        if (random.GetBelow(10) < density)
            list.push_back(id * 134217728); // up to beyond what is positive as a signed number
    }
    return list;
}

} // namespace

TEST(SCBUICoreCom, ClassTestsAcceptTheirRangeWithBothBounds)
{
    const List ids = {0,          1,          1000000000, 1000000001, 2000000000,
                      2000000001, 2100000000, 2100000001, 4294967295};
    EXPECT_EQ(GetAccepted(Com::IsSrcBtnClass, ids), (List{1, 1000000000}));
    EXPECT_EQ(GetAccepted(Com::IsCommonVirBtnClass, ids), (List{1000000001, 2000000000}));
    EXPECT_EQ(GetAccepted(Com::IsFixedVirBtnClass, ids), (List{2000000001, 2100000000}));
    EXPECT_EQ(GetAccepted(Com::IsVirBtnClass, ids), (List{1000000001, 2000000000, 2000000001, 2100000000}));
}

TEST(SCBUICoreCom, ButtonTestsAcceptTheirRangeWithBothBounds)
{
    EXPECT_EQ(GetAccepted(Com::IsNormalBtn, BOUNDARIES), (List{2, 3000000001}));
    EXPECT_EQ(GetAccepted(Com::IsEmpValBtn, BOUNDARIES), (List{1}));
    EXPECT_EQ(GetAccepted(Com::IsSrcBtn, BOUNDARIES), (List{1, 2, 3000000001}));
    EXPECT_EQ(GetAccepted(Com::IsIncBtn, BOUNDARIES), (List{4000000002, 4080000001}));
    EXPECT_EQ(GetAccepted(Com::IsVirIncBtn, BOUNDARIES), (List{4080000002, 4160000001}));
    EXPECT_EQ(GetAccepted(Com::IsCllBtn, BOUNDARIES), (List{4160000002, 4240000001}));
    EXPECT_EQ(GetAccepted([](DWORD id) { return Com::IsSpBtn(id); }, BOUNDARIES),
              (List{4000000002, 4080000001, 4080000002, 4160000001, 4160000002, 4240000001}));
}

TEST(SCBUICoreCom, NumbersOfClassesAndButtonsOverlap)
{
    EXPECT_TRUE(Com::IsSrcBtn(1));
    EXPECT_FALSE(Com::IsNormalBtn(1));
    EXPECT_TRUE(Com::IsSrcBtnClass(1));
}

TEST(SCBUICoreCom, RangesHoldTheirMaximumCount)
{
    EXPECT_EQ(Com::BTNCLS_ID_SRC_END - Com::BTNCLS_ID_SRC_BEGIN + 1, Com::BTNCLS_SRC_MAXCNT);
    EXPECT_EQ(Com::BTNCLS_ID_VIR_COMMON_END - Com::BTNCLS_ID_VIR_COMMON_BEGIN + 1,
              Com::BTNCLS_VIR_COMMON_MAXCNT);
    EXPECT_EQ(Com::BTNCLS_ID_VIR_FIXED_END - Com::BTNCLS_ID_VIR_FIXED_BEGIN + 1,
              Com::BTNCLS_VIR_FIXED_MAXCNT);
    EXPECT_EQ(Com::BTN_ID_NRM_END - Com::BTN_ID_NRM_BEGIN + 1, Com::BTN_NRM_MAXCNT);
    EXPECT_EQ(Com::BTN_ID_INC_END - Com::BTN_ID_INC_BEGIN + 1, Com::BTN_INC_MAXCNT);
    EXPECT_EQ(Com::BTN_ID_VIRINC_END - Com::BTN_ID_VIRINC_BEGIN + 1, Com::BTN_VIRINC_MAXCNT);
    EXPECT_EQ(Com::BTN_ID_CLL_END - Com::BTN_ID_CLL_BEGIN + 1, Com::BTN_CLL_MAXCNT);
    EXPECT_EQ(Com::BUIDATAMNGR_ID_END - Com::BUIDATAMNGR_ID_BEGIN + 1, Com::BUIDATAMNGR_MAXCNT);
}

TEST(SCBUICoreCom, EnumeratorsHaveTheValuesTheyAreStoredBy)
{
    EXPECT_EQ(Com::BTNTYPE_NORMAL, 1u);
    EXPECT_EQ(Com::BTNTYPE_EMPVAL, 2u);
    EXPECT_EQ(Com::BTNTYPE_INC, 3u);
    EXPECT_EQ(Com::BTNTYPE_VIRINC, 4u);
    EXPECT_EQ(Com::BTNTYPE_CLL, 5u);
    EXPECT_EQ(Com::BTNCLSTYPE_NORMAL, 1u);
    EXPECT_EQ(Com::BTNCLSTYPE_NUM, 2u);
    EXPECT_EQ(Com::BTNCLSTYPE_DATE, 3u);
    EXPECT_EQ(Com::BTNCLSTYPE_TIME, 4u);
    EXPECT_EQ(Com::BTNCLSTYPE_VIR, 268435456u);
    EXPECT_EQ(Com::LINKTBLVERTYPE_ONMEM, 1u);
    EXPECT_EQ(Com::LINKTBLVERTYPE_MEMSAV, 2u);
}

TEST(SCBUICoreCom, IsSpBtnOfATypeTakesEveryValueButNormalAndEmptyValue)
{
    const auto isSpBtn = [](DWORD type) { return Com::IsSpBtn(static_cast<Com::EBtnType>(type)); };
    EXPECT_FALSE(isSpBtn(1));
    EXPECT_FALSE(isSpBtn(2));
    for (const DWORD type : {0u, 3u, 4u, 5u, 6u, 4294967295u})
        EXPECT_TRUE(isSpBtn(type)) << type;
    EXPECT_FALSE(Com::IsSpBtn(DWORD{0}));
}

TEST(SCBUICoreCom, GetBtnTypeTellsTheKindOfEveryRange)
{
    const std::vector<std::pair<DWORD, Com::EBtnType>> cases = {
        {1, Com::BTNTYPE_EMPVAL},          {2, Com::BTNTYPE_NORMAL},       {3000000001, Com::BTNTYPE_NORMAL},
        {4000000002, Com::BTNTYPE_INC},    {4080000001, Com::BTNTYPE_INC}, {4080000002, Com::BTNTYPE_VIRINC},
        {4160000001, Com::BTNTYPE_VIRINC}, {4160000002, Com::BTNTYPE_CLL}, {4240000001, Com::BTNTYPE_CLL},
    };
    for (const auto& [btnID, expected] : cases) {
        auto type = static_cast<Com::EBtnType>(77);
        EXPECT_TRUE(Com::GetBtnType(btnID, type)) << btnID;
        EXPECT_EQ(type, expected) << btnID;
    }
}

TEST(SCBUICoreCom, GetBtnTypeRefusesWhatIsNoButtonAndLeavesTheOutput)
{
    for (const DWORD btnID : {0u, 3000000002u, 4000000001u, 4240000002u, 4294967295u}) {
        auto type = static_cast<Com::EBtnType>(77);
        EXPECT_FALSE(Com::GetBtnType(btnID, type)) << btnID;
        EXPECT_EQ(type, 77u) << btnID;
    }
}

TEST(SCBUICoreCom, AndKeepsWhatStandsInBothInPlace)
{
    List list = {1, 3, 5, 4294967295};
    EXPECT_EQ(Com::MergeBtnIDListByANDCnd(list, {3, 4, 4294967295}), 2u);
    EXPECT_EQ(list, (List{3, 4294967295}));
}

TEST(SCBUICoreCom, AndWithAnEmptyListEmptiesTheFirst)
{
    List list = {1, 2};
    EXPECT_EQ(Com::MergeBtnIDListByANDCnd(list, {}), 0u);
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(Com::MergeBtnIDListByANDCnd(list, {1}), 0u);
    EXPECT_TRUE(list.empty());
}

TEST(SCBUICoreCom, OrHoldsAnIdentifierOfBothOnce)
{
    List merged = {9, 9, 9, 9, 9, 9, 9};
    EXPECT_EQ(Com::MergeBtnIDListByORCnd({1, 3, 3000000001}, {2, 3}, merged), 4u);
    EXPECT_EQ(merged, (List{1, 2, 3, 3000000001}));
}

TEST(SCBUICoreCom, OrOfTwoEmptyListsIsEmpty)
{
    List merged = {7};
    EXPECT_EQ(Com::MergeBtnIDListByORCnd({}, {}, merged), 0u);
    EXPECT_TRUE(merged.empty());
}

TEST(SCBUICoreCom, XorGivesBothOneSidedDifferences)
{
    List onlyInA = {7};
    List onlyInB = {7};
    EXPECT_EQ(Com::MergeBtnIDListByXORCnd({1, 2, 5, 8}, {2, 3, 8, 9}, onlyInA, onlyInB), 4u);
    EXPECT_EQ(onlyInA, (List{1, 5}));
    EXPECT_EQ(onlyInB, (List{3, 9}));
}

TEST(SCBUICoreCom, XorOfEqualListsEmptiesBothOutputs)
{
    List onlyInA = {7};
    List onlyInB = {7};
    EXPECT_EQ(Com::MergeBtnIDListByXORCnd({1, 2}, {1, 2}, onlyInA, onlyInB), 0u);
    EXPECT_TRUE(onlyInA.empty());
    EXPECT_TRUE(onlyInB.empty());
}

TEST(SCBUICoreCom, DeleteTakesOutWhatIsListedAndPassesOverWhatIsAbsent)
{
    List list = {1, 2, 3, 6, 7, 8};
    EXPECT_EQ(Com::DeleteBtnIDList(list, {0, 2, 4, 6}), 4u);
    EXPECT_EQ(list, (List{1, 3, 7, 8}));
}

TEST(SCBUICoreCom, DeleteOfAnEmptyListLeavesTheList)
{
    List list = {4, 5};
    EXPECT_EQ(Com::DeleteBtnIDList(list, {}), 2u);
    EXPECT_EQ(list, (List{4, 5}));
}

TEST(SCBUICoreCom, DeleteOfClassesDoesTheSame)
{
    List list = {4, 5, 6};
    EXPECT_EQ(Com::DeleteBtnClassIDList(list, {5}), 2u);
    EXPECT_EQ(list, (List{4, 6}));
}

TEST(SCBUICoreCom, ListOperationsAgreeWithSetOperationsOnRandomLists)
{
    CRandom random;
    for (int round = 0; round < 2000; ++round) {
        const List a = MakeRandomList(random, 32);
        const List b = MakeRandomList(random, 32);
        List both, either, inA, inB;
        std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(both));
        std::set_union(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(either));
        std::set_difference(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(inA));
        std::set_difference(b.begin(), b.end(), a.begin(), a.end(), std::back_inserter(inB));

        List list = a;
        ASSERT_EQ(Com::MergeBtnIDListByANDCnd(list, b), both.size());
        ASSERT_EQ(list, both);
        List merged;
        ASSERT_EQ(Com::MergeBtnIDListByORCnd(a, b, merged), either.size());
        ASSERT_EQ(merged, either);
        List onlyInA, onlyInB;
        ASSERT_EQ(Com::MergeBtnIDListByXORCnd(a, b, onlyInA, onlyInB), inA.size() + inB.size());
        ASSERT_EQ(onlyInA, inA);
        ASSERT_EQ(onlyInB, inB);
        list = a;
        ASSERT_EQ(Com::DeleteBtnIDList(list, b), inA.size());
        ASSERT_EQ(list, inA);
    }
}

TEST(SCBUICoreCom, EverySumMethodHasItsWord)
{
    const char* const words[] = {"Sum",      "Count",      "Average",           "Ratio",    "Each",
                                 "SumTotal", "RatioTotal", "WeightedAvg",       "Max",      "Min",
                                 "Latest",   "Absolute",   "SumMultiplication", "CountCell"};
    for (DWORD value = 1; value <= std::size(words); ++value) {
        const auto method = static_cast<Com::ESumMethodForCnd>(value);
        IXMLIO::SAttribute attribute;
        Com::GetSumMethodAttribute(method, attribute);
        EXPECT_EQ(std::string(attribute.name, attribute.nameLen), "sumMethod");
        EXPECT_EQ(std::string(attribute.value, attribute.valueLen), words[value - 1]);
        auto read = static_cast<Com::ESumMethodForCnd>(99);
        EXPECT_TRUE(Com::GetSumMethodEnum(attribute, read));
        EXPECT_EQ(read, method);
    }
}

TEST(SCBUICoreCom, WhatIsNoSumMethodIsRefused)
{
    IXMLIO::SAttribute attribute;
    for (const DWORD value : {0u, 15u, 4294967295u}) {
        try {
            Com::GetSumMethodAttribute(static_cast<Com::ESumMethodForCnd>(value), attribute);
            ADD_FAILURE() << value;
        } catch (const ECAbnormalData& thrown) {
            EXPECT_STREQ(thrown.GetMessageText(), SCBUICoreStrDef::MSG_UNKNOWN_SUMMETHOD_FORCND);
            EXPECT_STREQ(thrown.GetFile(), "Src/SCBUICoreCom");
            EXPECT_STREQ(thrown.GetFunction(), "NSKZ::NSKZCore::SCBUICoreCom::GetSumMethodAttribute");
        }
    }
    EXPECT_EQ(attribute.name, nullptr);
    auto read = Com::ESumMethodForCnd::Min;
    for (const IXMLIO::SAttribute& each :
         {IXMLIO::SAttribute{"sumMethod", 9, "Sums", 4}, IXMLIO::SAttribute{"sumMethod", 9, "sum", 3},
          IXMLIO::SAttribute{"sumMethod", 9, nullptr, 0}, IXMLIO::SAttribute{"sumMethods", 10, "Sum", 3},
          IXMLIO::SAttribute{}})
        EXPECT_FALSE(Com::GetSumMethodEnum(each, read));
    EXPECT_EQ(read, Com::ESumMethodForCnd::Min);
    EXPECT_TRUE(Com::GetSumMethodEnum({"sumMethods", 9, "Sums", 3}, read)); // by the lengths
    EXPECT_EQ(read, Com::ESumMethodForCnd::Sum);
}
