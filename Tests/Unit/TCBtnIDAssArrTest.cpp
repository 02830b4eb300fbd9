#include "TCBtnIDAssArr.h"

#include "SRecordList.h"
#include "SRecordPos.h"
#include "Support/CAllocFault.h"
#include "Support/CRandom.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>

using namespace NSKZ::NSKZCore;
using Com = SCBUICoreCom;
using Arr = TCBtnIDAssArr<DWORD>;
using Entries = std::vector<std::pair<DWORD, DWORD>>;

template class NSKZ::NSKZCore::TCBtnIDAssArr<DWORD>;
template class NSKZ::NSKZCore::TCBtnIDAssArr<unsigned char>;
template class NSKZ::NSKZCore::TCBtnIDAssArr<SRecordList>;
template class NSKZ::NSKZCore::TCBtnIDAssArr<SRecordPos>;

namespace {

Entries GetEntries(const Arr& arr)
{
    Entries entries;
    for (auto it = arr.begin(); it != arr.end(); ++it)
        entries.emplace_back(it.GetKey(), *it);
    return entries;
}

Entries GetVisited(Arr& arr)
{
    Entries entries;
    arr.ForEach([&](DWORD btnID, DWORD value) { entries.emplace_back(btnID, value); });
    return entries;
}

// In which place the iterator meets a key's kind.
int GetRank(DWORD btnID)
{
    if (Com::IsEmpValBtn(btnID))
        return 0;
    if (Com::IsNormalBtn(btnID))
        return 1;
    if (Com::IsIncBtn(btnID))
        return 2;
    return Com::IsCllBtn(btnID) ? 3 : 4;
}

struct SIterationOrder
{
    bool operator()(DWORD left, DWORD right) const
    {
        return GetRank(left) != GetRank(right) ? GetRank(left) < GetRank(right) : left < right;
    }
};

void ExpectUnknownBtnType(const std::function<void()>& operation, const char* function)
{
    try {
        operation();
        FAIL() << "nothing was thrown";
    } catch (const ECAbnormalData& exception) {
        EXPECT_STREQ(exception.GetMessageText(), SCBUICoreStrDef::MSG_UNKNOWN_BTNTYPE);
        EXPECT_STREQ(exception.GetFile(), "Src/TCBtnIDAssArr");
        EXPECT_STREQ(exception.GetFunction(), function);
    }
}

} // namespace

TEST(TCBtnIDAssArr, IsEmptyAtFirst)
{
    const Arr arr;
    EXPECT_EQ(arr.GetSize(), 0u);
    EXPECT_TRUE(arr.begin() == arr.end());
    DWORD value = 5;
    EXPECT_FALSE(arr.Get(2, value));
    EXPECT_EQ(value, 5u);
}

TEST(TCBtnIDAssArr, SetTakesButtonsOfEveryKindAndRefusesWhatIsNone)
{
    Arr arr;
    const std::vector<DWORD> btnIDs = {1, 2, 5, 4000000002, 4080000002, 4160000002, 4160000005};
    for (const DWORD btnID : btnIDs)
        EXPECT_TRUE(arr.Set(btnID, btnID / 2)) << btnID;
    for (const DWORD btnID : {0u, 3000000002u, 4000000001u, 4240000002u, 4294967295u}) {
        EXPECT_FALSE(arr.Set(btnID, 1)) << btnID;
        EXPECT_FALSE(arr.Exist(btnID)) << btnID;
        EXPECT_FALSE(arr.MakeRoom(btnID)) << btnID;
        EXPECT_FALSE(arr.Remove(btnID)) << btnID;
    }
    EXPECT_EQ(arr.GetSize(), btnIDs.size());
    for (const DWORD btnID : btnIDs) {
        DWORD value = 0;
        EXPECT_TRUE(arr.Get(btnID, value)) << btnID;
        EXPECT_EQ(value, btnID / 2);
    }
    EXPECT_FALSE(arr.Exist(3));
    EXPECT_FALSE(arr.Exist(6));
    EXPECT_FALSE(arr.Exist(4160000003));
}

TEST(TCBtnIDAssArr, SetOfSrcBtnTakesNormalAndEmptyValueKeysOnly)
{
    Arr arr;
    EXPECT_TRUE(arr.SetOfSrcBtn(1, 10));
    EXPECT_TRUE(arr.SetOfSrcBtn(2, 20));
    for (const DWORD btnID : {0u, 4000000002u, 4080000002u, 4160000002u, 3000000002u})
        EXPECT_FALSE(arr.SetOfSrcBtn(btnID, 1)) << btnID;
    EXPECT_EQ(GetEntries(arr), (Entries{{1, 10}, {2, 20}}));
}

TEST(TCBtnIDAssArr, SettingAKeyTwiceCountsItOnceAndKeepsTheLastValue)
{
    Arr arr;
    for (const DWORD btnID : {1u, 7u, 4000000003u}) {
        arr.Set(btnID, 1);
        arr.Set(btnID, 2);
    }
    EXPECT_EQ(arr.GetSize(), 3u);
    EXPECT_EQ(GetEntries(arr), (Entries{{1, 2}, {7, 2}, {4000000003, 2}}));
}

TEST(TCBtnIDAssArr, SetTakesAValueThatStandsInTheArrayItself)
{
    Arr arr;
    arr.Set(2, 42);
    EXPECT_TRUE(arr.Set(100000, *arr.Find(2)));
    EXPECT_EQ(*arr.Find(100000), 42u);
}

TEST(TCBtnIDAssArr, IteratesEmptyValueNormalIncCllVirInc)
{
    Arr arr;
    for (const DWORD btnID :
         {4080000002u, 4240000001u - 79999990u, 4160000002u, 4000000004u, 4000000002u, 9u, 3u, 1u})
        arr.Set(btnID, btnID);
    std::vector<DWORD> keys;
    for (auto it = arr.begin(); it != arr.end(); ++it)
        keys.push_back(it.GetKey());
    EXPECT_EQ(keys,
              (std::vector<DWORD>{1, 3, 9, 4000000002, 4000000004, 4160000002, 4160000011, 4080000002}));
}

TEST(TCBtnIDAssArr, IteratesACllKeyBehindTheSourceKeys)
{
    Arr arr;
    for (const DWORD btnID : {4160000002u, 1u, 2u})
        arr.Set(btnID, 0);
    EXPECT_EQ(GetEntries(arr), (Entries{{1, 0}, {2, 0}, {4160000002, 0}}));
}

TEST(TCBtnIDAssArr, IteratorStaysAtTheEnd)
{
    Arr arr;
    arr.Set(2, 1);
    auto it = arr.begin();
    ++it;
    EXPECT_TRUE(it == arr.end());
    ++it;
    EXPECT_TRUE(it == arr.end());
}

TEST(TCBtnIDAssArr, IteratorGivesMembersOfTheValue)
{
    TCBtnIDAssArr<SRecordPos> arr;
    arr.Set(4080000005, SRecordPos{3, 4});
    EXPECT_EQ(arr.begin().GetKey(), 4080000005u);
    EXPECT_EQ(arr.begin()->recPos, 3u);
    EXPECT_EQ((*arr.begin()).recCount, 4u);
}

TEST(TCBtnIDAssArr, IteratorInATypeThatIsNoneThrows)
{
    Arr arr;
    arr.Set(2, 1);
    for (const DWORD type : {0u, 6u, 4294967295u}) {
        Arr::CConstIterator it(arr, static_cast<Com::EBtnType>(type), 0);
        ExpectUnknownBtnType([&] { ++it; }, "NSKZ::NSKZCore::TCBtnIDAssArr::CConstIterator::operator ++");
        ExpectUnknownBtnType([&] { it.GetKey(); }, "NSKZ::NSKZCore::TCBtnIDAssArr::CConstIterator::GetKey");
        ExpectUnknownBtnType([&] { *it; }, "NSKZ::NSKZCore::TCBtnIDAssArr::CConstIterator::operator *");
    }
}

TEST(TCBtnIDAssArr, GetKeyRestoresTheIdentifierFromTypeAndIndex)
{
    const Arr arr;
    const auto getKey = [&](Com::EBtnType type, DWORD index) {
        return Arr::CConstIterator(arr, type, index).GetKey();
    };
    EXPECT_EQ(getKey(Com::BTNTYPE_NORMAL, 5), 7u);
    EXPECT_EQ(getKey(Com::BTNTYPE_EMPVAL, 0), 1u);
    EXPECT_EQ(getKey(Com::BTNTYPE_INC, 5), 4000000007u);
    EXPECT_EQ(getKey(Com::BTNTYPE_VIRINC, 5), 4080000007u);
    EXPECT_EQ(getKey(Com::BTNTYPE_CLL, 5), 4160000007u);
}

TEST(TCBtnIDAssArr, RemoveLowersTheCountOnce)
{
    Arr arr;
    arr.Set(1, 1);
    arr.Set(5, 2);
    EXPECT_TRUE(arr.Remove(5));
    EXPECT_FALSE(arr.Remove(5));
    EXPECT_FALSE(arr.Remove(4));
    EXPECT_FALSE(arr.Remove(6));
    EXPECT_EQ(arr.GetSize(), 1u);
    EXPECT_EQ(GetEntries(arr), (Entries{{1, 1}}));
    EXPECT_TRUE(arr.Remove(1));
    EXPECT_EQ(arr.GetSize(), 0u);
    EXPECT_TRUE(arr.begin() == arr.end());
}

TEST(TCBtnIDAssArr, ClearRemovesEverythingAndKeepsTheMemory)
{
    CAllocFault memory;
    Arr arr;
    const auto fill = [&arr] {
        for (const DWORD btnID : {1u, 2u, 500u, 4000000009u, 4080000009u, 4160000009u})
            arr.Set(btnID, 3);
    };
    fill();
    arr.Clear();
    EXPECT_EQ(arr.GetSize(), 0u);
    EXPECT_TRUE(arr.begin() == arr.end());
    for (const DWORD btnID : {1u, 2u, 500u, 4000000009u, 4080000009u, 4160000009u})
        EXPECT_FALSE(arr.Exist(btnID)) << btnID;

    const std::size_t before = memory.GetAllocCount();
    fill();
    EXPECT_EQ(memory.GetAllocCount(), before);
    EXPECT_EQ(arr.GetSize(), 6u);
    arr.Clear();
    arr.Set(500, 1);
    EXPECT_FALSE(arr.Exist(2)); // what was in front of it before Clear has not come back
}

TEST(TCBtnIDAssArr, FindGivesTheValueInItsPlace)
{
    Arr arr;
    arr.Set(8, 1);
    ++*arr.Find(8);
    EXPECT_EQ(*arr.Find(8), 2u);
    EXPECT_EQ(arr.Find(7), nullptr);
    EXPECT_EQ(arr.Find(9), nullptr);
}

TEST(TCBtnIDAssArr, MakeRoomChangesNothingThatCanBeSeenAndLetsSetGoThrough)
{
    CAllocFault memory;
    Arr arr;
    EXPECT_TRUE(arr.MakeRoom(1));
    EXPECT_TRUE(arr.MakeRoom(50));
    EXPECT_EQ(arr.GetSize(), 0u);
    EXPECT_TRUE(arr.begin() == arr.end());
    memory.Arm(1);
    arr.Set(50, 1);
    arr.Set(1, 1);
    EXPECT_FALSE(memory.Disarm());
    EXPECT_EQ(arr.GetSize(), 2u);
}

TEST(TCBtnIDAssArr, ForEachMayRemoveTheEntryItVisits)
{
    Arr arr;
    for (DWORD btnID = 1; btnID < 20; ++btnID)
        arr.Set(btnID, btnID);
    arr.ForEach([&](DWORD btnID, DWORD& value) {
        if (btnID % 5 == 0)
            value += 100;
        else
            arr.Remove(btnID);
    });
    EXPECT_EQ(GetEntries(arr), (Entries{{5, 105}, {10, 110}, {15, 115}}));
}

TEST(TCBtnIDAssArr, ExistOfTypeLooksAtOneKind)
{
    const std::vector<std::pair<Com::EBtnType, DWORD>> kinds = {{Com::BTNTYPE_NORMAL, 30},
                                                                {Com::BTNTYPE_EMPVAL, 1},
                                                                {Com::BTNTYPE_INC, 4000000030},
                                                                {Com::BTNTYPE_VIRINC, 4080000030},
                                                                {Com::BTNTYPE_CLL, 4160000030}};
    for (const auto& [type, btnID] : kinds) {
        Arr arr;
        arr.Set(btnID, 1);
        for (const auto& [other, otherID] : kinds)
            EXPECT_EQ(arr.ExistOfType(other), other == type) << other << " " << type;
        EXPECT_FALSE(arr.ExistOfType(static_cast<Com::EBtnType>(6)));
        arr.Remove(btnID);
        EXPECT_FALSE(arr.ExistOfType(type));
    }
}

TEST(TCBtnIDAssArr, ExhaustedMemoryLeavesItAsItWas)
{
    CAllocFault memory;
    for (const DWORD btnID : {2000u, 4000002000u, 4080002000u, 4160002000u}) {
        const std::size_t failures = memory.FailEachInTurn([btnID](auto attempt) {
            Arr arr;
            arr.Set(2, 1);
            const Entries before = GetEntries(arr);
            if (attempt([&] { arr.Set(btnID, 7); })) {
                EXPECT_EQ(arr.GetSize(), 2u);
            } else {
                EXPECT_EQ(GetEntries(arr), before);
                EXPECT_EQ(arr.GetSize(), 1u);
            }
        });
        EXPECT_EQ(failures, 1u) << btnID;
        EXPECT_EQ(memory.GetLiveBlockCount(), 0) << btnID;
    }
}

TEST(TCBtnIDAssArr, AgreesWithAMapOnRandomOperations)
{
    CRandom random;
    const DWORD begins[] = {0, Com::BTN_ID_NRM_BEGIN, Com::BTN_ID_INC_BEGIN, Com::BTN_ID_VIRINC_BEGIN,
                            Com::BTN_ID_CLL_BEGIN};
    Arr arr;
    std::map<DWORD, DWORD, SIterationOrder> model;
    for (int round = 0; round < 20000; ++round) {
        const DWORD begin = begins[random.GetBelow(5)];
        const DWORD btnID = begin == 0 ? random.GetBelow(2) : begin + random.GetBelow(8);
        const DWORD value = random.GetBelow(1000000);
        switch (random.GetBelow(8)) {
        case 0:
        case 1:
        case 2:
            ASSERT_EQ(arr.Set(btnID, value), btnID != 0);
            if (btnID != 0)
                model[btnID] = value;
            break;
        case 3:
            ASSERT_EQ(arr.SetOfSrcBtn(btnID, value), Com::IsSrcBtn(btnID));
            if (Com::IsSrcBtn(btnID))
                model[btnID] = value;
            break;
        case 7:
            if (random.IsOneOf(50)) {
                arr.Clear();
                model.clear();
            }
            break;
        default:
            ASSERT_EQ(arr.Remove(btnID), model.erase(btnID) == 1);
        }
        const Entries expected(model.begin(), model.end());
        ASSERT_EQ(arr.GetSize(), expected.size());
        ASSERT_EQ(GetEntries(arr), expected);
        ASSERT_EQ(GetVisited(arr), expected);
        ASSERT_EQ(arr.Exist(btnID), model.count(btnID) == 1);
    }
}

TEST(TCBtnIDAssArr, AValueThatTellsAbsenceTakesNoFlag)
{
    static_assert(sizeof(TCBtnIDSlot<SRecordPos>) == sizeof(SRecordPos));
    CRandom random;
    TCBtnIDAssArr<SRecordPos> arr;
    std::map<DWORD, DWORD> model; // button to position
    for (int round = 0; round < 5000; ++round) {
        const DWORD btnID =
            random.IsOneOf(9) ? Com::BTN_ID_EMPVAL : Com::BTN_ID_CLL_BEGIN + random.GetBelow(30);
        const DWORD recPos = random.IsOneOf(2) ? random.GetBelow(3) : 4294967295;
        switch (random.GetBelow(4)) {
        case 0:
            EXPECT_EQ(arr.Remove(btnID), model.erase(btnID) == 1);
            break;
        case 1:
            EXPECT_TRUE(arr.MakeRoom(btnID));
            break;
        default:
            EXPECT_TRUE(arr.Set(btnID, SRecordPos{recPos, 0}));
            model[btnID] = recPos;
        }
        if (random.IsOneOf(300)) {
            arr.Clear();
            model.clear();
        }
        ASSERT_EQ(arr.GetSize(), model.size());
        ASSERT_EQ(arr.Exist(btnID), model.count(btnID) == 1);
        std::map<DWORD, DWORD> entries;
        for (auto it = arr.begin(); it != arr.end(); ++it)
            entries[it.GetKey()] = it->recPos;
        ASSERT_EQ(entries, model);
    }
    EXPECT_TRUE(SRecordPos::MakeAbsent().IsAbsent());
    EXPECT_FALSE((SRecordPos{4294967295, 0}).IsAbsent());
    EXPECT_FALSE((SRecordPos{0, 4294967295}).IsAbsent());
}

TEST(TCBtnIDAssArr, MakeRoomForTakesNoMoreThanAnotherArrayHas)
{
    CAllocFault memory;
    TCBtnIDAssArr<DWORD> other;
    for (DWORD btnID = Com::BTN_ID_NRM_BEGIN; btnID < Com::BTN_ID_NRM_BEGIN + 1000; ++btnID)
        EXPECT_TRUE(other.Set(btnID, 5));
    EXPECT_TRUE(other.Set(Com::BTN_ID_INC_BEGIN + 3, 5));
    TCBtnIDAssArr<SRecordPos> arr;
    memory.Arm(0);
    arr.MakeRoomFor(other);
    EXPECT_EQ(memory.GetLargestSize(), 1000 * sizeof(SRecordPos));
    EXPECT_EQ(arr.GetSize(), 0u);
    memory.Arm(1);
    EXPECT_TRUE(arr.Set(Com::BTN_ID_NRM_BEGIN + 999, SRecordPos{1, 2}));
    EXPECT_TRUE(arr.Set(Com::BTN_ID_INC_BEGIN + 3, SRecordPos{3, 4}));
    EXPECT_FALSE(memory.Disarm());
}
