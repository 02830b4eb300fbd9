#ifndef TBNLINKFILLED_H
#define TBNLINKFILLED_H

#include "Support/LinkTableContent.h"

#include <gtest/gtest.h>

namespace NSKZ::Test {

// Three records in the classes 3, 1 and 7, inserted in this order.
inline void FillWithThreeClasses(NSKZCore::IBnLink& link)
{
    ASSERT_TRUE(InsertFld(link, 3, {2, 3, 2}));
    ASSERT_TRUE(InsertFld(link, 1, {1, 5, 6}));
    ASSERT_TRUE(InsertFld(link, 7, {9, 8, 7}));
}

// A table so filled.
template <class TTable>
class TBnLinkFilled : public testing::Test
{
protected:
    void SetUp() override
    {
        FillWithThreeClasses(link);
        before = GetContent(link);
    }
    void ExpectUnchanged() { EXPECT_TRUE(GetContent(link) == before); }

    TTable link;
    SBnLinkContent before;
};

} // namespace NSKZ::Test

#endif
