#include "TCBtnOrdList.h"
#include "Support/CAllocFault.h"
#include "Support/CRandom.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

using namespace NSKZ::NSKZCore;

namespace {

template <class TList>
std::vector<DWORD> Walk(const TList& list)
{
    std::vector<DWORD> btnIDs;
    for (const DWORD btnID : list.GetBtnIDs())
        btnIDs.push_back(btnID);
    return btnIDs;
}

TEST(TCBtnOrdList, TextsOrderByUnsignedBytesAndNullComesFirst)
{
    CTextOrdList list;
    list.Insert("b", 2);
    list.Insert("\x83\x41", 3); // a double-byte character
    list.Insert("a", 4);
    list.Insert("ab", 5);
    list.Insert(nullptr, 6);
    list.Insert("", 7);
    EXPECT_EQ(Walk(list), std::vector<DWORD>({6, 7, 4, 5, 2, 3}));
}

TEST(TCBtnOrdList, EqualKeysKeepTheOrderOfInsertion)
{
    CTextOrdList list;
    list.Insert("x", 9);
    list.Insert("x", 2);
    list.Insert("a", 5);
    EXPECT_EQ(Walk(list), std::vector<DWORD>({5, 9, 2}));
    list.Insert("x", 1);
    EXPECT_EQ(Walk(list), std::vector<DWORD>({5, 9, 2, 1}));
    list.Move("x", 9);
    EXPECT_EQ(Walk(list), std::vector<DWORD>({5, 2, 1, 9}));
}

TEST(TCBtnOrdList, AButtonStandsInItOnce)
{
    CTextOrdList list;
    list.Insert("x", 9);
    list.Insert("x", 2);
    list.Insert("x", 9);
    EXPECT_EQ(Walk(list), std::vector<DWORD>({9, 2}));
    EXPECT_EQ(list.GetSize(), 2u);
    list.Insert("a", 2); // under another key it goes there
    EXPECT_EQ(Walk(list), std::vector<DWORD>({2, 9}));
    EXPECT_EQ(list.GetSize(), 2u);
}

TEST(TCBtnOrdList, ChangesWithoutAWalkDoNotPileUp)
{
    const CAllocFault fault; // counts blocks
    CTextOrdList list;
    const std::string longText(500, 'x');
    for (DWORD btnID = 1; btnID <= 10; ++btnID)
        list.Insert(longText.c_str(), btnID);
    for (int i = 0; i < 20000; ++i)
        list.Move((longText + std::to_string(i)).c_str(), 3);
    EXPECT_LT(fault.GetLiveBlockCount(), 20);
    EXPECT_EQ(Walk(list), std::vector<DWORD>({1, 2, 4, 5, 6, 7, 8, 9, 10, 3}));
}

TEST(TCBtnOrdList, EraseWantsTheKeyUnderWhichTheButtonStands)
{
    CTextOrdList list;
    list.Insert("x", 9);
    EXPECT_FALSE(list.Erase("y", 9));
    EXPECT_FALSE(list.Erase("x", 8));
    EXPECT_TRUE(list.Erase("x", 9));
    EXPECT_FALSE(list.Erase("x", 9));
    EXPECT_TRUE(Walk(list).empty());
    list.Insert("z", 9);
    EXPECT_TRUE(list.Remove(9));
    EXPECT_FALSE(list.Remove(9));
}

TEST(TCBtnOrdList, KeysAreItsOwn)
{
    CTextOrdList list;
    std::string text = "b";
    list.Insert(text.c_str(), 1);
    text = "z";
    list.Insert("c", 2);
    EXPECT_EQ(Walk(list), std::vector<DWORD>({1, 2}));
}

TEST(TCBtnOrdList, NumbersOrderByValue)
{
    CNumOrdList list;
    list.Insert(3, 2);
    list.Insert(-5, 3);
    list.Insert(3.0, 4);
    list.Insert(0.5, 5);
    EXPECT_EQ(Walk(list), std::vector<DWORD>({3, 5, 2, 4}));
}

TEST(TCBtnOrdList, IdentifiersOfNoButtonArePassedOver)
{
    CTextOrdList list;
    list.Insert("x", 0);
    list.Insert("x", 3000000002);
    EXPECT_EQ(list.GetSize(), 0u);
    EXPECT_TRUE(Walk(list).empty());
}

TEST(TCBtnOrdList, AgreesWithAMultimapWhateverComesAndGoes)
{
    CRandom random;
    CTextOrdList list;
    std::multimap<std::string, DWORD> model;
    const auto findInModel = [&model](DWORD btnID) {
        auto entry = model.begin();
        while (entry != model.end() && entry->second != btnID)
            ++entry;
        return entry;
    };
    for (int step = 0; step < 6000; ++step) {
        const DWORD btnID = random.GetBelow(60) + 1;
        const std::string text(random.GetBelow(3), static_cast<char>('a' + random.GetBelow(3)));
        const auto standing = findInModel(btnID);
        switch (random.GetBelow(4)) {
        case 0:
        case 1:
            list.Insert(text.c_str(), btnID);
            if (standing != model.end() && standing->first == text)
                break;
            if (standing != model.end())
                model.erase(standing);
            model.emplace(text, btnID);
            break;
        case 2:
            ASSERT_EQ(list.Erase(text.c_str(), btnID), standing != model.end() && standing->first == text);
            if (standing != model.end() && standing->first == text)
                model.erase(standing);
            break;
        default:
            list.Move(text.c_str(), btnID);
            if (standing != model.end())
                model.erase(standing);
            model.emplace(text, btnID);
        }
        if (random.IsOneOf(7)) {
            std::vector<DWORD> expected;
            for (const auto& [key, id] : model)
                expected.push_back(id);
            ASSERT_EQ(Walk(list), expected);
            CTextOrdList copy;
            copy.CopyFrom(list);
            ASSERT_EQ(Walk(copy), expected);
        }
    }
}

TEST(TCBtnOrdList, ExhaustedMemoryInInsertAndMoveLeavesItAsItWas)
{
    const auto prepare = [] {
        auto list = std::make_unique<CTextOrdList>();
        for (DWORD btnID = 1; btnID <= 8; ++btnID)
            list->Insert("key", btnID);
        return list;
    };
    const auto prove = [](const std::unique_ptr<CTextOrdList>& list) {
        EXPECT_EQ(Walk(*list), std::vector<DWORD>({1, 2, 3, 4, 5, 6, 7, 8}));
    };
    const std::string longText(5000, 'x');
    EXPECT_GE(NSKZ::Test::FailEveryAllocation(
                  prepare,
                  [&](const std::unique_ptr<CTextOrdList>& list) { list->Insert(longText.c_str(), 9); },
                  prove),
              4);
    EXPECT_GE(NSKZ::Test::FailEveryAllocation(
                  prepare,
                  [&](const std::unique_ptr<CTextOrdList>& list) { list->Move(longText.c_str(), 3); }, prove),
              3);
}

TEST(TCBtnOrdList, ExhaustedMemoryInAWalkLosesNothing)
{
    // Most of the list has gone, so that the walk compacts it.
    const int failures = NSKZ::Test::FailEveryAllocation(
        [] {
            auto list = std::make_unique<CTextOrdList>();
            for (DWORD btnID = 1; btnID <= 100; ++btnID)
                list->Insert(btnID % 2 == 0 ? "even" : "odd", btnID);
            for (DWORD btnID = 4; btnID <= 100; ++btnID)
                list->Remove(btnID);
            return list;
        },
        [](const std::unique_ptr<CTextOrdList>& list) { list->GetBtnIDs(); },
        [](const std::unique_ptr<CTextOrdList>& list) {
            EXPECT_EQ(Walk(*list), std::vector<DWORD>({2, 1, 3}));
        });
    EXPECT_GE(failures, 3);
}

TEST(TCBtnOrdList, NumbersOfDatesOrderOverTheirWholeRange)
{
    CDateNumOrdList list;
    list.Insert(18446744073709551615ull, 2);
    list.Insert(0, 3);
    list.Insert(9223372036854775808ull, 4);
    list.Insert(9223372036854775807ull, 5);
    list.Insert(0, 4160000002);
    const auto btnIDs = list.GetBtnIDs();
    ASSERT_EQ(btnIDs.GetSize(), 5u);
    const DWORD expected[] = {3, 4160000002, 5, 4, 2};
    for (std::size_t i = 0; i < btnIDs.GetSize(); ++i)
        EXPECT_EQ(btnIDs[i], expected[i]);
    EXPECT_EQ(list.GetKeyOf(4), 9223372036854775808ull);
}

TEST(TCBtnOrdList, EqualNumbersOfDatesGoByIdentifierWheneverTheyCame)
{
    CDateNumOrdList list;
    for (const DWORD btnID : {DWORD{7}, DWORD{4160000002}, DWORD{3}})
        list.Insert(5, btnID);
    list.Insert(4, 9);
    EXPECT_EQ(Walk(list), std::vector<DWORD>({9, 3, 7, 4160000002}));
    list.Remove(3);
    list.Insert(5, 6); // behind a walk
    list.Insert(5, 3);
    EXPECT_EQ(Walk(list), std::vector<DWORD>({9, 3, 6, 7, 4160000002}));
}

TEST(TCBtnOrdList, ListsThatAreSwappedKeepWhatTheyHeld)
{
    CTextOrdList first;
    first.Insert("b", 2);
    first.Insert("a", 3);
    first.GetBtnIDs(); // settled
    CTextOrdList second;
    second.Insert("c", 4);
    first.Swap(second);
    EXPECT_EQ(Walk(first), std::vector<DWORD>({4}));
    EXPECT_EQ(Walk(second), std::vector<DWORD>({3, 2}));
    first.Insert("0", 5);
    second.Insert("aa", 6);
    EXPECT_TRUE(second.Erase("b", 2));
    EXPECT_EQ(Walk(first), std::vector<DWORD>({5, 4}));
    EXPECT_EQ(Walk(second), std::vector<DWORD>({3, 6}));
}

TEST(CTextArena, CopiesStayInPlaceHoweverManyCome)
{
    CTextArena arena;
    EXPECT_EQ(arena.Add(nullptr), nullptr);
    std::vector<const char*> copies;
    for (int i = 0; i < 5000; ++i)
        copies.push_back(arena.Add(std::to_string(i).c_str()));
    const std::string large(3000000, 'y');
    const char* const largeCopy = arena.Add(large.c_str());
    for (int i = 0; i < 5000; ++i)
        ASSERT_EQ(copies[static_cast<std::size_t>(i)], std::to_string(i));
    EXPECT_EQ(largeCopy, large);
    CTextArena taker(std::move(arena));
    EXPECT_STREQ(copies[17], "17");
    EXPECT_STREQ(arena.Add("again"), "again");
    taker = std::move(arena);
    taker.Clear();
    EXPECT_STREQ(taker.Add("x"), "x");
}

} // namespace
