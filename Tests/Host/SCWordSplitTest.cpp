#include "SCWordSplit.h"

#include "ECCommandError.h"

#include <gtest/gtest.h>

namespace NSKZ::Host {

namespace {

using Words = std::vector<std::string>;

} // namespace

TEST(SCWordSplit, SplitTakesSpacesAndTabsAsOneGap)
{
    EXPECT_EQ(SCWordSplit::Split(" press \t region  East\t"), (Words{"press", "region", "East"}));
    EXPECT_EQ(SCWordSplit::Split(""), Words{});
    EXPECT_EQ(SCWordSplit::Split(" \t "), Words{});
}

TEST(SCWordSplit, SplitKeepsBlanksWithinQuotes)
{
    EXPECT_EQ(SCWordSplit::Split("press 'the region' \"New York\""),
              (Words{"press", "the region", "New York"}));
}

TEST(SCWordSplit, SplitJoinsQuotedAndPlainPartsOfAWord)
{
    EXPECT_EQ(SCWordSplit::Split("New' 'York\"!\"x"), (Words{"New York!x"}));
}

TEST(SCWordSplit, SplitMakesAnEmptyWordOfAnEmptyPairOfQuotes)
{
    EXPECT_EQ(SCWordSplit::Split("a '' \"\" b"), (Words{"a", "", "", "b"}));
}

TEST(SCWordSplit, SplitTakesABackslashOutsideQuotesAsQuotingAnyCharacter)
{
    EXPECT_EQ(SCWordSplit::Split("New\\ York a\\\\b \\'x\\\""), (Words{"New York", "a\\b", "'x\""}));
}

TEST(SCWordSplit, SplitKeepsABackslashWithinSingleQuotes)
{
    EXPECT_EQ(SCWordSplit::Split("'a\\b\\'"), (Words{"a\\b\\"}));
}

TEST(SCWordSplit, SplitTakesABackslashWithinDoubleQuotesAsQuotingOnlyWhatHasMeaningThere)
{
    EXPECT_EQ(SCWordSplit::Split("\"\\\" \\\\ \\$ \\` \\n '\""), (Words{"\" \\ $ ` \\n '"}));
}

TEST(SCWordSplit, SplitExpandsNothing)
{
    EXPECT_EQ(SCWordSplit::Split("$HOME * ~ `x` ; #1 | &"),
              (Words{"$HOME", "*", "~", "`x`", ";", "#1", "|", "&"}));
}

TEST(SCWordSplit, SplitLeavesTheIdeographicSpaceInAWord)
{
    EXPECT_EQ(SCWordSplit::Split("a　b 関東"), (Words{"a　b", "関東"}));
}

TEST(SCWordSplit, SplitRefusesAQuoteThatIsNeverClosed)
{
    EXPECT_THROW(SCWordSplit::Split("press 'a"), ECCommandError);
    EXPECT_THROW(SCWordSplit::Split("press \"a'"), ECCommandError);
    EXPECT_THROW(SCWordSplit::Split("press \"a\\\""), ECCommandError);
}

TEST(SCWordSplit, SplitRefusesABackslashAtTheEnd)
{
    EXPECT_THROW(SCWordSplit::Split("press a\\"), ECCommandError);
}

TEST(SCWordSplit, QuoteWritesAnyTextAsOneWord)
{
    for (const std::string& text :
         Words{"", "plain", "two words", "it's", "''", "say \"x\"", "a\\b", "\\", "\t", "$x", "`", "関東"}) {
        for (const char quote : {'\0', '\'', '"'})
            EXPECT_EQ(SCWordSplit::Split(SCWordSplit::Quote(text, quote)), Words{text}) << text << quote;
    }
    EXPECT_EQ(SCWordSplit::Quote("plain", '\0'), "plain");
    EXPECT_EQ(SCWordSplit::Quote("two words", '\0'), "two\\ words");
    EXPECT_EQ(SCWordSplit::Quote("two words", '"'), "\"two words\"");
    EXPECT_EQ(SCWordSplit::Quote("plain", '\''), "'plain'");
}

} // namespace NSKZ::Host
