#include "IBtnCnd.h"

#include "Support/XMLText.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

TEST(IBtnCnd, TheElementIsKnownByItsExactName)
{
    EXPECT_STREQ(IBtnCnd::STR_ELENAME_BTNCONDITION, "BtnCondition");
    EXPECT_EQ(IBtnCnd::STRLEN_ELENAME_BTNCONDITION, 12u);
    EXPECT_TRUE(IBtnCnd::CompareElementName("BtnConditions", 12));
    EXPECT_FALSE(IBtnCnd::CompareElementName("BtnConditions", 13));
    EXPECT_FALSE(IBtnCnd::CompareElementName("BtnCondition", 11));
    EXPECT_FALSE(IBtnCnd::CompareElementName("btnCondition", 12));
    EXPECT_FALSE(IBtnCnd::CompareElementName(nullptr, 0));
}

TEST(IBtnCnd, TheAttributeThatTellsTheClassIsFound)
{
    DWORD index = 77;
    EXPECT_FALSE(IBtnCnd::SearchBtnCndTypeAttribute({}, index));
    EXPECT_FALSE(IBtnCnd::SearchBtnCndTypeAttribute({MakeAttribute("types", "x")}, index));
    EXPECT_EQ(index, 77u);
    EXPECT_TRUE(IBtnCnd::SearchBtnCndTypeAttribute(
        {MakeAttribute("id", "1"), MakeAttribute("type", "Basic"), MakeAttribute("type", "Other")}, index));
    EXPECT_EQ(index, 1u);
}
