#include "SCShownText.h"

#include <gtest/gtest.h>

namespace NSKZ::Host {

TEST(SCShownText, GetWidthCountsWideCharactersTwice)
{
    EXPECT_EQ(SCShownText::GetWidth(""), 0u);
    EXPECT_EQ(SCShownText::GetWidth("abc"), 3u);
    EXPECT_EQ(SCShownText::GetWidth("関東"), 4u);
    EXPECT_EQ(SCShownText::GetWidth("あアＡ、"), 8u);
    EXPECT_EQ(SCShownText::GetWidth("한국"), 4u);
    EXPECT_EQ(SCShownText::GetWidth("𠮷"), 2u);
    EXPECT_EQ(SCShownText::GetWidth("🍵"), 2u);
}

TEST(SCShownText, GetWidthCountsHalfWidthKatakanaAndLatinLettersOnce)
{
    EXPECT_EQ(SCShownText::GetWidth("ｱｲｳ"), 3u);
    EXPECT_EQ(SCShownText::GetWidth("é"), 1u);
    EXPECT_EQ(SCShownText::GetWidth("█▏"), 2u);
}

TEST(SCShownText, GetWidthCountsCombiningCharactersNotAtAll)
{
    EXPECT_EQ(SCShownText::GetWidth("e\u0301"), 1u);
    EXPECT_EQ(SCShownText::GetWidth("か\u3099"), 2u);
    EXPECT_EQ(SCShownText::GetWidth("a\u200Bb"), 2u);
}

TEST(SCShownText, GetWidthCountsAByteThatIsNoCharacterOnce)
{
    EXPECT_EQ(SCShownText::GetWidth("\x83"), 1u);
    EXPECT_EQ(SCShownText::GetWidth("a\xE3\x81"), 3u);
}

TEST(SCShownText, EscapeMakesControlCharactersVisible)
{
    EXPECT_EQ(SCShownText::Escape("a\nb\tc\rd"), "a\\nb\\tc\\rd");
    EXPECT_EQ(SCShownText::Escape("\x1B[31m"), "\\x1B[31m");
    EXPECT_EQ(SCShownText::Escape("\x7F"), "\\x7F");
    EXPECT_EQ(SCShownText::Escape("\u009B"), "\\x9B");
    EXPECT_EQ(SCShownText::Escape("関東 é"), "関東 é");
}

TEST(SCShownText, CutPutsAnEllipsisWhereTheTextWasLonger)
{
    EXPECT_EQ(SCShownText::Cut("abcdef", 6), "abcdef");
    EXPECT_EQ(SCShownText::Cut("abcdef", 5), "abcd…");
    EXPECT_EQ(SCShownText::Cut("abcdef", 1), "…");
    EXPECT_EQ(SCShownText::Cut("abcdef", 0), "");
}

TEST(SCShownText, CutLeavesNoHalfOfAWideCharacter)
{
    EXPECT_EQ(SCShownText::Cut("関東地方", 8), "関東地方");
    EXPECT_EQ(SCShownText::Cut("関東地方", 7), "関東地…");
    EXPECT_EQ(SCShownText::Cut("関東地方", 6), "関東…");
}

} // namespace NSKZ::Host
