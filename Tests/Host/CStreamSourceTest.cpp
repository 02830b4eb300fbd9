#include "CStreamSource.h"
#include "CListSource.h"

#include <gtest/gtest.h>

#include <sstream>

namespace NSKZ::Host {

TEST(CStreamSource, ReadsLinesWhateverTheirEnds)
{
    std::istringstream stream("\xEF\xBB\xBF"
                              "one\r\n\ntwo");
    CStreamSource source(stream, "script");
    std::string line;
    ASSERT_TRUE(source.ReadLine(line));
    EXPECT_EQ(line, "one");
    EXPECT_EQ(source.GetPlace(), "script:1");
    ASSERT_TRUE(source.ReadLine(line));
    EXPECT_EQ(line, "");
    ASSERT_TRUE(source.ReadLine(line));
    EXPECT_EQ(line, "two");
    EXPECT_EQ(source.GetPlace(), "script:3");
    EXPECT_FALSE(source.ReadLine(line));
}

TEST(CListSource, GivesItsLinesInOrderAndTellsNoPlace)
{
    CListSource source({"a", "b"});
    std::string line;
    ASSERT_TRUE(source.ReadLine(line));
    EXPECT_EQ(line, "a");
    EXPECT_EQ(source.GetPlace(), "");
    ASSERT_TRUE(source.ReadLine(line));
    EXPECT_EQ(line, "b");
    EXPECT_FALSE(source.ReadLine(line));
}

} // namespace NSKZ::Host
