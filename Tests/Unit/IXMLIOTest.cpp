#include "IXMLIO.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;

TEST(IXMLIO, TextsAreTheSameByLengthAndBytes)
{
    EXPECT_TRUE(IXMLIO::IsSameText("abc", 3, "abcd", 3));
    EXPECT_FALSE(IXMLIO::IsSameText("abc", 3, "abcd", 4));
    EXPECT_FALSE(IXMLIO::IsSameText("abc", 3, "abC", 3));
    EXPECT_TRUE(IXMLIO::IsSameText(nullptr, 0, "abc", 0));
    EXPECT_TRUE(IXMLIO::IsSameText("a\0b", 3, "a\0b", 3));
    EXPECT_FALSE(IXMLIO::IsSameText("a\0b", 3, "a\0c", 3));
}

TEST(IXMLIO, AnAttributeBeginsBlank)
{
    const IXMLIO::SAttribute attribute;
    EXPECT_EQ(attribute.name, nullptr);
    EXPECT_EQ(attribute.nameLen, 0u);
    EXPECT_EQ(attribute.value, nullptr);
    EXPECT_EQ(attribute.valueLen, 0u);
}
