#include "TCFlatSet.h"
#include "Support/CAllocFault.h"
#include "Support/CRandom.h"

#include <gtest/gtest.h>

#include <set>

using namespace NSKZ::NSKZCore;

namespace {

TEST(TCFlatSet, BehavesAsAnOrderedSet)
{
    CRandom random;
    TCFlatSet<unsigned> set;
    std::set<unsigned> model;
    for (int i = 0; i < 3000; ++i) {
        const unsigned entry = random.GetBelow(50);
        if (random.IsOneOf(2)) {
            ASSERT_EQ(set.insert(entry), model.insert(entry).second);
        } else {
            ASSERT_EQ(set.erase(entry), model.erase(entry) != 0);
        }
        ASSERT_TRUE(std::equal(set.begin(), set.end(), model.begin(), model.end()));
        ASSERT_EQ(set.contains(entry), model.count(entry) != 0);
        ASSERT_EQ(set.empty(), model.empty());
        if (!model.empty()) {
            ASSERT_EQ(set.back(), *model.rbegin());
        }
    }
    set.EraseIf([](unsigned entry) { return entry % 2 == 0; });
    std::erase_if(model, [](unsigned entry) { return entry % 2 == 0; });
    EXPECT_TRUE(std::equal(set.begin(), set.end(), model.begin(), model.end()));
    set.clear();
    EXPECT_EQ(set.size(), 0u);
}

TEST(TCFlatSet, AReservedInsertionDoesNotFail)
{
    TCFlatSet<unsigned> set{5, 3, 5, 9};
    EXPECT_EQ(set.size(), 3u);
    for (unsigned entry = 0; entry < 100; entry += 7) {
        set.ReserveForInsert();
        CAllocFault fault;
        fault.Arm(1);
        set.insert(entry);
        EXPECT_FALSE(fault.Disarm());
    }
}

} // namespace
