#include "CFormattedMsg.h"

#include <gtest/gtest.h>

#include <string>

using namespace NSKZ::NSKZCore;

TEST(CFormattedMsg, FillsPlaceholdersInOrderWithSignedNumbers)
{
    EXPECT_STREQ(CFormattedMsg("(BtnClsID:%d BtnID:%d)", {7, 4160000002}).GetText(),
                 "(BtnClsID:7 BtnID:-134967294)");
    EXPECT_STREQ(CFormattedMsg("%d%d", {2147483647, 4294967295}).GetText(), "2147483647-1");
}

TEST(CFormattedMsg, KeepsPlaceholdersWithoutANumberAndAllOtherCharacters)
{
    EXPECT_STREQ(CFormattedMsg("%d %d %x 100%", {1}).GetText(), "1 %d %x 100%");
    EXPECT_STREQ(CFormattedMsg("plain", {1, 2}).GetText(), "plain");
    EXPECT_STREQ(CFormattedMsg("", {}).GetText(), "");
}

TEST(CFormattedMsg, CutsATextThatOutgrowsTheBuffer)
{
    const std::string text(600, 'x');
    EXPECT_EQ(CFormattedMsg(text.c_str(), {}).GetText(), text.substr(0, 511));
    const std::string atTheEnd = std::string(505, 'x') + "%d";
    EXPECT_EQ(CFormattedMsg(atTheEnd.c_str(), {4294967295}).GetText(), std::string(505, 'x') + "-1");
    EXPECT_EQ(CFormattedMsg(atTheEnd.c_str(), {2000000000}).GetText(), std::string(505, 'x'));
}
