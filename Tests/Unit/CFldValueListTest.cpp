#include "CFldValueList.h"

#include "Support/CAllocFault.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

using namespace NSKZ::NSKZCore;
using NSKZ::Test::FailEveryAllocation;

namespace {

CFldValueList MakeList(const std::vector<std::string>& values)
{
    CFldValueList list;
    for (const std::string& value : values)
        EXPECT_TRUE(list.Append(value));
    return list;
}

// All values, each got singly, by the visit and by one read; the three must agree.
std::vector<std::string> GetAll(const CFldValueList& list)
{
    std::vector<std::string> singly;
    for (DWORD pos = 0; pos < list.GetCount(); ++pos) {
        const std::string_view value = list.GetValue(pos);
        EXPECT_EQ(value.data()[value.size()], '\0');
        singly.emplace_back(value);
    }
    std::vector<std::string> visited;
    list.Visit([&](const char* text, std::size_t len) {
        EXPECT_EQ(std::strlen(text), len);
        visited.emplace_back(text, len);
        return true;
    });
    EXPECT_EQ(singly, visited);

    std::vector<char> buffer(list.GetSize(0, list.GetCount()));
    std::vector<unsigned short> lengths(list.GetCount());
    std::vector<char*> texts(list.GetCount());
    list.Read(0, list.GetCount(), buffer.data(), lengths.data(), texts.data());
    std::vector<std::string> read;
    for (DWORD pos = 0; pos < list.GetCount(); ++pos)
        read.emplace_back(texts[pos], lengths[pos]);
    EXPECT_EQ(singly, read);
    return singly;
}

std::vector<std::string> MakeRandomValues(unsigned int seed, std::size_t count)
{
    std::mt19937 random(seed);
    std::vector<std::string> values(count);
    for (std::string& value : values)
        value.assign(random() % 12, static_cast<char>('a' + random() % 26));
    return values;
}

} // namespace

TEST(CFldValueList, AnEmptyListHasNoBytes)
{
    const CFldValueList list;
    EXPECT_EQ(list.GetCount(), 0u);
    EXPECT_EQ(list.GetSize(0, 0), 0u);
    list.Read(0, 0, nullptr, nullptr, nullptr);
    EXPECT_EQ(GetAll(list), std::vector<std::string>());
}

TEST(CFldValueList, HoldsItsValuesInOrderEmptyOnesToo)
{
    const std::vector<std::string> values = {"", "b", "", "dd", ""};
    const CFldValueList list = MakeList(values);
    EXPECT_EQ(GetAll(list), values);
    EXPECT_EQ(list.GetSize(0, 5), 8u);
    EXPECT_EQ(list.GetSize(1, 1), 2u);
    EXPECT_EQ(list.GetSize(5, 0), 0u);
}

TEST(CFldValueList, ReadsAnyStretchOfManyValues)
{
    const std::vector<std::string> values = MakeRandomValues(7, 1000);
    const CFldValueList list = MakeList(values);
    EXPECT_EQ(GetAll(list), values);
    for (const auto& [first, count] :
         {std::pair<DWORD, DWORD>{0, 1}, {127, 2}, {128, 128}, {255, 400}, {999, 1}}) {
        std::vector<char> buffer(list.GetSize(first, count));
        std::vector<unsigned short> lengths(count);
        std::vector<char*> texts(count);
        list.Read(first, count, buffer.data(), lengths.data(), texts.data());
        for (DWORD i = 0; i < count; ++i)
            EXPECT_EQ(std::string(texts[i], lengths[i]), values[first + i]);
        EXPECT_EQ(texts[count - 1] + lengths[count - 1] + 1, buffer.data() + buffer.size());
    }
}

TEST(CFldValueList, TakesAValueOfTheGreatestLengthAndNoLongerOne)
{
    CFldValueList list;
    EXPECT_TRUE(list.Append(std::string(65535, 'x')));
    EXPECT_FALSE(list.Append(std::string(65536, 'x')));
    EXPECT_EQ(list.GetCount(), 1u);
    EXPECT_EQ(list.GetValue(0).size(), 65535u);
}

TEST(CFldValueList, RefusesANul)
{
    CFldValueList list;
    EXPECT_FALSE(list.Append(std::string_view("a\0b", 3)));
    EXPECT_EQ(list.GetCount(), 0u);
}

TEST(CFldValueList, AppendsAValueOfItsOwn)
{
    CFldValueList list = MakeList({"some value"});
    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(list.Append(list.GetValue(0)));
    EXPECT_EQ(GetAll(list), std::vector<std::string>(21, "some value"));
}

TEST(CFldValueList, AppendsAStretchOfAnother)
{
    const std::vector<std::string> values = MakeRandomValues(8, 700);
    const CFldValueList source = MakeList(values);
    CFldValueList list = MakeList({"first"});
    list.AppendStretch(source, 100, 500);
    list.AppendStretch(source, 700, 0);
    std::vector<std::string> expected = {"first"};
    expected.insert(expected.end(), values.begin() + 100, values.begin() + 600);
    EXPECT_EQ(GetAll(list), expected);
}

TEST(CFldValueList, AVisitEndsWhereItIsToldTo)
{
    const CFldValueList list = MakeList({"a", "b", "c"});
    int visits = 0;
    list.Visit([&](const char* text, std::size_t) { return ++visits, *text != 'b'; });
    EXPECT_EQ(visits, 2);
}

TEST(CFldValueList, CopiesMovesAndShrinksWithAllValues)
{
    const std::vector<std::string> values = MakeRandomValues(9, 300);
    CFldValueList list = MakeList(values);
    CFldValueList copy(list);
    copy.ShrinkToFit();
    EXPECT_EQ(GetAll(copy), values);
    const CFldValueList moved(std::move(list));
    EXPECT_EQ(GetAll(moved), values);
    copy.Append("more");
    EXPECT_EQ(moved.GetCount(), 300u);
    copy = moved;
    EXPECT_EQ(GetAll(copy), values);
}

TEST(CFldValueList, StretchesAreEqualIfTheirValuesAre)
{
    const CFldValueList list = MakeList({"a", "", "bc", "d", "a", "", "bc"});
    EXPECT_TRUE(list.EqualsStretch(0, list, 4, 3));
    EXPECT_TRUE(list.EqualsStretch(7, list, 0, 0));
    EXPECT_TRUE(CFldValueList().EqualsStretch(0, list, 3, 0));
    EXPECT_FALSE(list.EqualsStretch(0, list, 3, 3));
    EXPECT_FALSE(list.EqualsStretch(1, list, 0, 2));
    // The same characters in other values are other values.
    const CFldValueList shifted = MakeList({"", "ab", "c", "d"});
    EXPECT_FALSE(shifted.EqualsStretch(0, list, 0, 4));
    EXPECT_TRUE(shifted.EqualsStretch(3, list, 3, 1));

    // Across the places that the lists keep.
    const std::vector<std::string> values = MakeRandomValues(3, 400);
    const CFldValueList longList = MakeList(values);
    const CFldValueList tail = MakeList(std::vector<std::string>(values.begin() + 131, values.end()));
    EXPECT_TRUE(longList.EqualsStretch(131, tail, 0, 269));
    EXPECT_TRUE(tail.EqualsStretch(200, longList, 331, 69));
    std::vector<std::string> changed = values;
    changed[399] += 'x';
    EXPECT_FALSE(MakeList(changed).EqualsStretch(131, tail, 0, 269));
    EXPECT_TRUE(MakeList(changed).EqualsStretch(131, tail, 0, 268));
}

TEST(CFldValueList, ExhaustedMemoryLeavesTheListAsItWas)
{
    const std::vector<std::string> values = MakeRandomValues(10, 128);
    CFldValueList full = MakeList(values);
    full.ShrinkToFit(); // so that one more value needs room everywhere
    const auto prepare = [&] { return CFldValueList(full); };
    const auto prove = [&](const CFldValueList& list) {
        EXPECT_EQ(GetAll(list), values);
        CFldValueList further(list);
        EXPECT_TRUE(further.Append("further"));
        EXPECT_EQ(further.GetValue(128), "further");
    };
    EXPECT_GE(FailEveryAllocation(
                  prepare, [](CFldValueList& list) { list.Append("one more"); }, prove),
              3);
    EXPECT_GE(FailEveryAllocation(
                  prepare, [&](CFldValueList& list) { list.AppendStretch(full, 0, 128); }, prove),
              3);
    const auto prepareLoose = [&] { return MakeList(values); };
    EXPECT_GE(FailEveryAllocation(
                  prepareLoose, [](CFldValueList& list) { list.ShrinkToFit(); }, prove),
              3);
}
