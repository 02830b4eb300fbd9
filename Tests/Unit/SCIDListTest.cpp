#include "SCIDList.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;

namespace {

using List = std::vector<DWORD>;

TEST(SCIDList, EachIdentifierIsTakenOnceInFirstPlace)
{
    EXPECT_EQ(SCIDList::TakeEachOnce({5, 3, 5, 4294967295, 3, 0}), List({5, 3, 4294967295, 0}));
    EXPECT_EQ(SCIDList::TakeEachOnce({3, 1, 2}), List({3, 1, 2}));
    EXPECT_EQ(SCIDList::TakeEachOnce({}), List());
}

TEST(SCIDList, SortedEachIdentifierStandsOnce)
{
    List ids{5, 3, 5, 0, 3};
    SCIDList::SortAndTakeEachOnce(ids);
    EXPECT_EQ(ids, List({0, 3, 5}));
    ids.clear();
    SCIDList::SortAndTakeEachOnce(ids);
    EXPECT_TRUE(ids.empty());
}

} // namespace
