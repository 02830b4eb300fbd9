#include "SCHostText.h"

#include "Support/TestText.h"

#include <gtest/gtest.h>

namespace NSKZ::Host {

using Test::CCodePageScope;
using Test::SJIS;

TEST(SCHostText, FromEngineConvertsFromTheCodePageInForce)
{
    const CCodePageScope scope(_KANJI_CP);
    EXPECT_EQ(SCHostText::FromEngine(SJIS(u8"関東ソ").c_str()), "関東ソ");
    EXPECT_EQ(SCHostText::FromEngine(nullptr), "");
    const CCodePageScope inner(CP_UTF8);
    EXPECT_EQ(SCHostText::FromEngine("関東"), "関東");
}

TEST(SCHostText, FromEngineShowsBytesThatAreNoTextAsQuestionMarks)
{
    const CCodePageScope scope(CP_UTF8);
    EXPECT_EQ(SCHostText::FromEngine("a\xFF"
                                     "b\xE3"),
              "a?b?");
}

TEST(SCHostText, FromExceptionConvertsFromShiftJISWhateverTheCodePage)
{
    const CCodePageScope scope(CP_UTF8);
    EXPECT_EQ(SCHostText::FromException(SJIS(u8"関東").c_str()), "関東");
}

TEST(SCHostText, IntoEngineRefusesWhatTheCodePageLacks)
{
    const CCodePageScope scope(_KANJI_CP);
    std::string converted;
    ASSERT_TRUE(SCHostText::IntoEngine("関東", converted));
    EXPECT_EQ(converted, SJIS(u8"関東"));
    EXPECT_FALSE(SCHostText::IntoEngine("café", converted));
    EXPECT_FALSE(SCHostText::IntoEngine("\xFF", converted));
}

TEST(SCHostText, ToldEncodingsAreStrict)
{
    EXPECT_TRUE(SCHostText::IsUTF8("関東"));
    EXPECT_FALSE(SCHostText::IsUTF8(SJIS(u8"関東")));
    EXPECT_TRUE(SCHostText::IsShiftJIS(SJIS(u8"関東")));
    EXPECT_FALSE(SCHostText::IsShiftJIS("\x81"));
}

} // namespace NSKZ::Host
