#include "CSumValueCache.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;

namespace {

TEST(CSumValueCache, KnowsNothingAtFirst)
{
    const CSumValueCache cache;
    const CSumValue* value = nullptr;
    double total = 7.0;
    EXPECT_FALSE(cache.GetSumValue(2, 1, value));
    EXPECT_FALSE(cache.GetTotalValue(1, total));
    EXPECT_FALSE(cache.GetTotalAbsoluteValue(1, total));
    EXPECT_EQ(value, nullptr);
    EXPECT_EQ(total, 7.0);
}

TEST(CSumValueCache, SumAndCountAreSetApart)
{
    CSumValueCache cache;
    const CSumValue* value = nullptr;
    cache.SetSumValue(2, 1, 1.5);
    ASSERT_TRUE(cache.GetSumValue(2, 1, value));
    EXPECT_TRUE(value->hasSum);
    EXPECT_FALSE(value->hasCount);
    EXPECT_EQ(value->count, 0u);
    cache.SetCountValue(2, 1, 3);
    ASSERT_TRUE(cache.GetSumValue(2, 1, value));
    EXPECT_TRUE(value->hasSum && value->hasCount);
    EXPECT_EQ(value->sum, 1.5);
    EXPECT_EQ(value->count, 3u);
    cache.SetSumValue(2, 1, 2.5);
    ASSERT_TRUE(cache.GetSumValue(2, 1, value));
    EXPECT_EQ(value->count, 3u);
    CSumValue whole;
    whole.hasCount = true;
    whole.count = 9;
    cache.SetSumValue(2, 1, whole);
    ASSERT_TRUE(cache.GetSumValue(2, 1, value));
    EXPECT_FALSE(value->hasSum);
    EXPECT_EQ(value->count, 9u);
    EXPECT_FALSE(cache.GetSumValue(1, 2, value)); // the pair has an order
}

TEST(CSumValueCache, AnIdentifierHoweverHighTakesTheRoomOfOneEntry)
{
    CSumValueCache cache;
    const DWORD ids[] = {3000000001, 4240000001, 1023, 1024, 5000, 0, 4294967295};
    for (const DWORD btnID : ids)
        cache.SetSumValue(btnID, 1, btnID * 0.5);
    for (DWORD btnID = 2; btnID < 6000; ++btnID)
        cache.SetCountValue(btnID, 1, btnID);
    const CSumValue* value = nullptr;
    for (const DWORD btnID : ids) {
        ASSERT_TRUE(cache.GetSumValue(btnID, 1, value));
        EXPECT_EQ(value->sum, btnID * 0.5);
    }
    ASSERT_TRUE(cache.GetSumValue(5000, 1, value));
    EXPECT_EQ(value->count, 5000u); // the entry is the one that was there before
    ASSERT_TRUE(cache.GetSumValue(5999, 1, value));
    EXPECT_FALSE(cache.GetSumValue(6000, 1, value));
    cache.ClearSumValue(4240000001);
    ASSERT_TRUE(cache.GetSumValue(4240000001, 1, value));
    EXPECT_FALSE(value->hasSum);
    cache.ClearSumValueAndTotalValue(1);
    ASSERT_TRUE(cache.GetSumValue(5000, 1, value));
    EXPECT_FALSE(value->hasCount);
    cache.Clear();
    EXPECT_FALSE(cache.GetSumValue(5000, 1, value));
    EXPECT_FALSE(cache.GetSumValue(4240000001, 1, value));
}

TEST(CSumValueCache, ForgettingAButtonKeepsEntriesAndTotals)
{
    CSumValueCache cache;
    for (const DWORD btnID : {2u, 3u}) {
        for (const DWORD numID : {1u, 5u}) {
            cache.SetSumValue(btnID, numID, 1.0);
            cache.SetCountValue(btnID, numID, 1);
        }
    }
    cache.SetTotalValue(1, 10.0);
    cache.SetTotalAbsoluteValue(1, 11.0);
    cache.ClearSumValue(2);
    const CSumValue* value = nullptr;
    for (const DWORD numID : {1u, 5u}) {
        ASSERT_TRUE(cache.GetSumValue(2, numID, value));
        EXPECT_FALSE(value->hasSum || value->hasCount);
        EXPECT_EQ(value->sum, 0.0);
        EXPECT_EQ(value->count, 0u);
        ASSERT_TRUE(cache.GetSumValue(3, numID, value));
        EXPECT_TRUE(value->hasSum && value->hasCount);
    }
    double total = 0.0;
    EXPECT_TRUE(cache.GetTotalValue(1, total));
    EXPECT_EQ(total, 10.0);
}

TEST(CSumValueCache, ForgettingAnItemTakesItsTotalsAlong)
{
    CSumValueCache cache;
    cache.SetSumValue(2, 1, 1.0);
    cache.SetSumValue(2, 5, 1.0);
    for (const DWORD numID : {1u, 5u}) {
        cache.SetTotalValue(numID, 10.0);
        cache.SetTotalAbsoluteValue(numID, 11.0);
    }
    cache.ClearSumValueAndTotalValue(5);
    const CSumValue* value = nullptr;
    double total = 0.0;
    ASSERT_TRUE(cache.GetSumValue(2, 5, value));
    EXPECT_FALSE(value->hasSum);
    ASSERT_TRUE(cache.GetSumValue(2, 1, value));
    EXPECT_TRUE(value->hasSum);
    EXPECT_FALSE(cache.GetTotalValue(5, total));
    EXPECT_FALSE(cache.GetTotalAbsoluteValue(5, total));
    EXPECT_TRUE(cache.GetTotalValue(1, total));
    EXPECT_TRUE(cache.GetTotalAbsoluteValue(1, total));
    EXPECT_EQ(total, 11.0);
    cache.ClearTotalValue();
    EXPECT_FALSE(cache.GetTotalValue(1, total));
    EXPECT_FALSE(cache.GetTotalAbsoluteValue(1, total));
    ASSERT_TRUE(cache.GetSumValue(2, 1, value));
    EXPECT_TRUE(value->hasSum);
}

TEST(CSumValueCache, IsAPlainValue)
{
    CSumValueCache cache;
    cache.SetSumValue(2, 1, 1.0);
    CSumValueCache copy(cache);
    copy.SetSumValue(2, 1, 2.0);
    const CSumValue* value = nullptr;
    ASSERT_TRUE(cache.GetSumValue(2, 1, value));
    EXPECT_EQ(value->sum, 1.0);
    cache = std::move(copy);
    ASSERT_TRUE(cache.GetSumValue(2, 1, value));
    EXPECT_EQ(value->sum, 2.0);
}

} // namespace
