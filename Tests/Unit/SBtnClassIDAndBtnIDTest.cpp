#include "SBtnClassIDAndBtnID.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;

TEST(SBtnClassIDAndBtnID, OrdersByClassFirstAndThenByButtonUnsigned)
{
    EXPECT_LT((SBtnClassIDAndBtnID{1, 4240000001}), (SBtnClassIDAndBtnID{2, 1}));
    EXPECT_LT((SBtnClassIDAndBtnID{2, 1}), (SBtnClassIDAndBtnID{2, 4240000001}));
    EXPECT_LT((SBtnClassIDAndBtnID{2, 1}), (SBtnClassIDAndBtnID{4294967295, 0}));
    EXPECT_EQ((SBtnClassIDAndBtnID{2, 1}), (SBtnClassIDAndBtnID{2, 1}));
}
