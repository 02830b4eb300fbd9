#include "TCHashMap.h"
#include "SCFnv1a.h"
#include "Support/CAllocFault.h"
#include "Support/CRandom.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>

using namespace NSKZ::NSKZCore;

namespace {

struct SIDHash
{
    static std::uint64_t Hash(DWORD id) noexcept { return SCFnv1a::OfID(id); }
    static bool Equal(DWORD left, DWORD right) noexcept { return left == right; }
};

// Every key in one bucket.
struct SOneBucketHash
{
    static std::uint64_t Hash(DWORD) noexcept { return 0; }
    static bool Equal(DWORD left, DWORD right) noexcept { return left == right; }
};

template <class THash>
void CompareWithStdMap()
{
    CRandom random;
    TCHashMap<DWORD, DWORD, THash> map;
    std::map<DWORD, DWORD> model;
    for (int step = 0; step < 4000; ++step) {
        const DWORD key = random.GetBelow(200);
        const DWORD value = random.GetBelow(1000);
        if (random.IsOneOf(3)) {
            ASSERT_EQ(map.Erase(key), model.erase(key) == 1);
        } else {
            ASSERT_EQ(map.Insert(key, value), model.emplace(key, value).second);
        }
        if (random.IsOneOf(500)) {
            map.Clear();
            model.clear();
        }
        ASSERT_EQ(map.GetSize(), model.size());
        const DWORD asked = random.GetBelow(200);
        const DWORD* const found = map.Find(asked);
        ASSERT_EQ(found != nullptr, model.count(asked) == 1);
        if (found != nullptr) {
            ASSERT_EQ(*found, model[asked]);
        }
    }
    std::map<DWORD, DWORD> walked;
    for (const auto& entry : map.GetEntries())
        walked.emplace(entry.key, entry.value);
    EXPECT_EQ(walked, model);
}

TEST(TCHashMap, AgreesWithAnOrderedMap)
{
    CompareWithStdMap<SIDHash>();
}

TEST(TCHashMap, KeysThatShareABucketAreToldApart)
{
    CompareWithStdMap<SOneBucketHash>();
}

TEST(TCHashMap, OwnsItsValues)
{
    const CAllocFault memory;
    {
        TCHashMap<DWORD, std::unique_ptr<int>, SIDHash> map;
        for (DWORD key = 0; key < 100; ++key)
            map.Insert(key, std::make_unique<int>(static_cast<int>(key)));
        map.Erase(7);
        EXPECT_EQ(**map.Find(99), 99);
    }
    EXPECT_EQ(memory.GetLiveBlockCount(), 0);
}

TEST(TCHashMap, ExhaustedMemoryLeavesItAsItWas)
{
    using Map = TCHashMap<DWORD, DWORD, SIDHash>;
    const int failures = NSKZ::Test::FailEveryAllocation(
        [] {
            auto map = std::make_unique<Map>();
            for (DWORD key = 0; key < 8; ++key)
                map->Insert(key, key);
            return map;
        },
        [](const std::unique_ptr<Map>& map) { map->Insert(8, 8); },
        [](const std::unique_ptr<Map>& map) {
            EXPECT_EQ(map->GetSize(), 8u);
            for (DWORD key = 0; key < 8; ++key)
                EXPECT_EQ(*map->Find(key), key);
            EXPECT_EQ(map->Find(8), nullptr);
        });
    EXPECT_EQ(failures, 2); // the entries and the buckets
}

TEST(SCFnv1a, HashesAsPublished)
{
    EXPECT_EQ(SCFnv1a::OfText(""), 0xcbf29ce484222325ULL);
    EXPECT_EQ(SCFnv1a::OfText("a"), 0xaf63dc4c8601ec8cULL);
    EXPECT_EQ(SCFnv1a::OfText("foobar"), 0x85944171f73967e8ULL);
    EXPECT_EQ(SCFnv1a::OfText(nullptr), 0u);
    // An identifier is hashed as its four bytes, the lowest first: here those of "abcd".
    EXPECT_EQ(SCFnv1a::OfID(0x64636261), SCFnv1a::OfText("abcd"));
}

TEST(TCHashMap, RoomThatWasMadeIsNotMadeAgain)
{
    CAllocFault meter;
    TCHashMap<DWORD, DWORD, SIDHash> map;
    map.Insert(7, 70);
    map.Reserve(1000);
    EXPECT_EQ(*map.Find(7), 70u) << "what is there stays";
    meter.Arm(1);
    for (DWORD key = 1000; key < 1999; ++key)
        map.Insert(key, key);
    EXPECT_FALSE(meter.Disarm());
    EXPECT_EQ(map.GetSize(), 1000u);
    map.Reserve(3); // less than there is
    EXPECT_EQ(*map.Find(1998), 1998u);
}

TEST(TCHashMap, PrefetchingChangesNothing)
{
    TCHashMap<DWORD, DWORD, SIDHash> map;
    map.PrefetchBucket(1);
    map.PrefetchEntry(1);
    map.Insert(1, 10);
    map.PrefetchBucket(1);
    map.PrefetchEntry(1);
    map.PrefetchEntry(2);
    EXPECT_EQ(map.GetSize(), 1u);
    EXPECT_EQ(*map.Find(1), 10u);
}

} // namespace
