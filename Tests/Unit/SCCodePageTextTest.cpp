#include "SCCodePageText.h"

#include "Support/CAllocFault.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace NSKZ::NSKZCore;
using NSKZ::Test::FromSJIS;
using NSKZ::Test::SJIS;
using NSKZ::Test::UTF8;

namespace {

constexpr std::size_t UNTOUCHED = 987654;

// The position of the first invalid byte, or UNTOUCHED for valid text.
std::size_t FindInvalid(std::string_view text, int codePage)
{
    std::size_t errorPos = UNTOUCHED;
    const bool valid = SCCodePageText::IsValid(text, codePage, errorPos);
    EXPECT_EQ(valid, errorPos == UNTOUCHED);
    return errorPos;
}

} // namespace

TEST(SCCodePageText, AsciiIsTheSameInBothCodePages)
{
    std::string ascii;
    for (int c = 0; c < 0x80; ++c)
        ascii.push_back(static_cast<char>(c));
    ascii += ascii;
    EXPECT_EQ(SJIS(std::u8string(ascii.begin(), ascii.end())), ascii);
    EXPECT_EQ(FromSJIS(ascii), ascii);
}

TEST(SCCodePageText, BackslashAndTildeStayWhatTheyAre)
{
    EXPECT_EQ(FromSJIS("\x5C\x7E"), "\\~");
    EXPECT_EQ(SJIS(u8"\\~"), "\x5C\x7E");
}

TEST(SCCodePageText, JapaneseTextGoesOverAndBack)
{
    EXPECT_EQ(SJIS(u8"表示、ｱイウ"), "\x95\x5C\x8E\xA6\x81\x41\xB1\x83\x43\x83\x45");
    EXPECT_EQ(FromSJIS("\x95\x5C\x8E\xA6\x81\x41\xB1\x83\x43\x83\x45"), UTF8(u8"表示、ｱイウ"));
}

TEST(SCCodePageText, TheCharactersThatCodePagesDisagreeOnAreThoseOfWindows)
{
    // Fullwidth tilde, parallel to, fullwidth hyphen-minus, cent, pound and not sign, fullwidth backslash.
    EXPECT_EQ(FromSJIS("\x81\x60"), UTF8(u8"\uFF5E"));
    EXPECT_EQ(FromSJIS("\x81\x61"), UTF8(u8"\u2225"));
    EXPECT_EQ(FromSJIS("\x81\x7C"), UTF8(u8"\uFF0D"));
    EXPECT_EQ(FromSJIS("\x81\x91\x81\x92\x81\xCA"), UTF8(u8"\uFFE0\uFFE1\uFFE2"));
    EXPECT_EQ(FromSJIS("\x81\x5F"), UTF8(u8"\uFF3C"));
    EXPECT_EQ(FromSJIS("\x81\x5C"), UTF8(u8"\u2015"));
}

TEST(SCCodePageText, ACharacterThatWouldNotComeBackIsLacked)
{
    // Yen sign, overline, wave dash, minus sign, em dash, cent sign: near ones exist, but they are others.
    for (const std::u8string_view text : {u8"\u00A5", u8"\u203E", u8"\u301C", u8"\u2212", u8"\u2014",
                                          u8"\u00A2", u8"é", u8"\U0001F600", u8"한"}) {
        std::string converted = "former";
        std::size_t errorPos = UNTOUCHED;
        EXPECT_EQ(SCCodePageText::Convert("ab" + UTF8(text) + "c", CP_UTF8, _KANJI_CP, converted, errorPos),
                  SCCodePageText::CONVERT_LACKED_CHAR)
            << UTF8(text);
        EXPECT_EQ(errorPos, 2u);
        EXPECT_EQ(converted, "");
    }
}

TEST(SCCodePageText, NecAndIbmExtensionsArePartOfShiftJIS)
{
    EXPECT_EQ(FromSJIS("\x87\x40\x87\x54\xFA\x40\xFB\xFC"), UTF8(u8"①Ⅰⅰ髙"));
    EXPECT_EQ(SJIS(u8"①Ⅰⅰ髙"), "\x87\x40\x87\x54\xFA\x40\xFB\xFC");
}

TEST(SCCodePageText, OfTwoCodesForACharacterWindowsChoiceIsWritten)
{
    // NEC row 13 gives way to JIS, NEC's own selection of IBM characters to IBM's, IBM's numerals to NEC's.
    EXPECT_EQ(SJIS(u8"≒"), "\x81\xE0");
    EXPECT_EQ(FromSJIS("\x87\x90"), UTF8(u8"≒"));
    EXPECT_EQ(FromSJIS("\xED\x40"), FromSJIS("\xFA\x5C"));
    EXPECT_EQ(SJIS(u8"纊"), "\xFA\x5C");
    EXPECT_EQ(FromSJIS("\xFA\x4A"), UTF8(u8"Ⅰ"));
    EXPECT_EQ(SJIS(u8"Ⅰ"), "\x87\x54");
    EXPECT_EQ(SJIS(u8"\uFFE2"), "\x81\xCA");
    EXPECT_EQ(SJIS(u8"∵"), "\x81\xE6");
}

TEST(SCCodePageText, TheUserDefinedAreaGoesOverAndBack)
{
    EXPECT_EQ(FromSJIS("\xF0\x40\xF9\xFC"), UTF8(u8"\uE000\uE757"));
    EXPECT_EQ(SJIS(u8"\uE000\uE757"), "\xF0\x40\xF9\xFC");
}

TEST(SCCodePageText, TheSingleBytesThatOnlyWindowsReadsGoOverAndBack)
{
    EXPECT_EQ(FromSJIS("\x80\xA0\xFD\xFE\xFF"), UTF8(u8"\u0080\uF8F0\uF8F1\uF8F2\uF8F3"));
    EXPECT_EQ(SJIS(u8"\u0080\uF8F0\uF8F1\uF8F2\uF8F3"), "\x80\xA0\xFD\xFE\xFF");
}

TEST(SCCodePageText, EveryCharacterOfShiftJISComesBackAsItselfOrItsOtherCode)
{
    std::size_t chars = 0;
    std::size_t others = 0;
    for (unsigned int lead = 0x81; lead <= 0xFC; ++lead) {
        if (lead > 0x9F && lead < 0xE0)
            continue;
        for (unsigned int trail = 0; trail <= 0xFF; ++trail) {
            const char bytes[2] = {static_cast<char>(lead), static_cast<char>(trail)};
            const std::string_view text(bytes, 2);
            std::size_t errorPos = 0;
            if (!SCCodePageText::IsValid(text, _KANJI_CP, errorPos)) {
                EXPECT_EQ(errorPos, 0u);
                continue;
            }
            ++chars;
            const std::string utf8 = FromSJIS(text);
            const std::string back = SCCodePageText::IsValid(utf8, CP_UTF8, errorPos)
                                         ? NSKZ::Test::ConvertOrThrow(utf8, CP_UTF8, _KANJI_CP)
                                         : std::string();
            others += back != text ? 1 : 0;
            EXPECT_EQ(FromSJIS(back), utf8);
        }
    }
    // JIS X 0208 6879, NEC row 13 83, NEC's selection 374, user-defined 1880, IBM 388; 398 stand twice.
    EXPECT_EQ(chars, 9604u);
    EXPECT_EQ(others, 398u);
}

TEST(SCCodePageText, InvalidShiftJISIsToldByItsPosition)
{
    EXPECT_EQ(FindInvalid("ab\x82", _KANJI_CP), 2u);           // breaks off
    EXPECT_EQ(FindInvalid("ab\x82\x39", _KANJI_CP), 2u);       // no trail byte
    EXPECT_EQ(FindInvalid("\x82\xA0\x82\x7F", _KANJI_CP), 2u); // 0x7F is none either
    EXPECT_EQ(FindInvalid("\x85\x40", _KANJI_CP), 0u);         // no character of that code
    EXPECT_EQ(FindInvalid("\xEF\xBB\xBF", _KANJI_CP), 0u);     // the byte-order mark of UTF-8
    EXPECT_EQ(FindInvalid("\x82\xA0\xB1", _KANJI_CP), UNTOUCHED);
    EXPECT_EQ(FindInvalid("", _KANJI_CP), UNTOUCHED);
}

TEST(SCCodePageText, InvalidUTF8IsToldByItsPosition)
{
    EXPECT_EQ(FindInvalid("a\x80", CP_UTF8), 1u);            // a further byte without a first
    EXPECT_EQ(FindInvalid("a\xC0\x80", CP_UTF8), 1u);        // longer than need be, in two
    EXPECT_EQ(FindInvalid("\xE0\x9F\xBF", CP_UTF8), 0u);     // in three
    EXPECT_EQ(FindInvalid("\xF0\x8F\xBF\xBF", CP_UTF8), 0u); // and in four bytes
    EXPECT_EQ(FindInvalid("\xED\xA0\x80", CP_UTF8), 0u);     // a surrogate
    EXPECT_EQ(FindInvalid("\xF4\x90\x80\x80", CP_UTF8), 0u); // above the last character
    EXPECT_EQ(FindInvalid("\xF5\x80\x80\x80", CP_UTF8), 0u);
    EXPECT_EQ(FindInvalid("\xE3\x81\x82\xE3\x81", CP_UTF8), 3u); // breaks off
    EXPECT_EQ(FindInvalid("\xE3\x81\x41", CP_UTF8), 0u);
    EXPECT_EQ(FindInvalid("\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", CP_UTF8),
              UNTOUCHED);
    EXPECT_EQ(FindInvalid("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", CP_UTF8), UNTOUCHED);
}

TEST(SCCodePageText, AnInvalidByteIsFoundAtEveryDistanceFromTheStart)
{
    for (std::size_t len = 0; len < 100; ++len) {
        std::string text(len, 'x');
        EXPECT_EQ(FindInvalid(text, CP_UTF8), UNTOUCHED);
        EXPECT_EQ(FindInvalid(text + "\xFF" + text, CP_UTF8), len);
        EXPECT_EQ(FindInvalid(text + "\x82", _KANJI_CP), len);
    }
}

TEST(SCCodePageText, AConversionOfInvalidBytesLeavesNothingAndTellsTheirPosition)
{
    std::string converted = "former";
    std::size_t errorPos = UNTOUCHED;
    EXPECT_EQ(SCCodePageText::Convert("\x82\xA0\x82", _KANJI_CP, CP_UTF8, converted, errorPos),
              SCCodePageText::CONVERT_INVALID_BYTES);
    EXPECT_EQ(errorPos, 2u);
    EXPECT_EQ(converted, "");
    converted = "former";
    EXPECT_EQ(SCCodePageText::Convert("abc\xFF", CP_UTF8, CP_UTF8, converted, errorPos),
              SCCodePageText::CONVERT_INVALID_BYTES);
    EXPECT_EQ(errorPos, 3u);
    EXPECT_EQ(converted, "");
}

TEST(SCCodePageText, WithinOneCodePageTheTextIsCopied)
{
    std::string converted;
    std::size_t errorPos = UNTOUCHED;
    // Both codes of a character stay what they are.
    EXPECT_EQ(SCCodePageText::Convert("\x87\x90\x81\xE0", _KANJI_CP, _KANJI_CP, converted, errorPos),
              SCCodePageText::CONVERT_OK);
    EXPECT_EQ(converted, "\x87\x90\x81\xE0");
    EXPECT_EQ(errorPos, UNTOUCHED);
}

TEST(SCCodePageText, AsciiIsToldFromAllElseAtEveryPosition)
{
    for (std::size_t len = 0; len < 100; ++len) {
        const std::string text(len, '\x7F');
        EXPECT_TRUE(SCCodePageText::IsASCII(text));
        EXPECT_FALSE(SCCodePageText::IsASCII(text + '\x80' + text));
    }
    EXPECT_TRUE(SCCodePageText::IsASCII(std::string_view("\0", 1)));
}

TEST(SCCodePageText, AnotherCodePageIsRefused)
{
    std::string converted;
    std::size_t errorPos = 0;
    EXPECT_THROW(SCCodePageText::IsValid("a", 1252, errorPos), std::invalid_argument);
    EXPECT_THROW(SCCodePageText::Convert("a", 0, CP_UTF8, converted, errorPos), std::invalid_argument);
    EXPECT_THROW(SCCodePageText::Convert("a", CP_UTF8, 437, converted, errorPos), std::invalid_argument);
}

TEST(SCCodePageText, ExhaustedMemoryInAConversionLosesNothing)
{
    const std::string text = UTF8(u8"表示の長い文字列は短い文字列の置き場に収まらない");
    const int failures = NSKZ::Test::FailEveryAllocation([] { return std::string(); },
                                                         [&](std::string& converted) {
                                                             std::size_t errorPos = 0;
                                                             SCCodePageText::Convert(text, CP_UTF8, _KANJI_CP,
                                                                                     converted, errorPos);
                                                         },
                                                         [](const std::string&) {});
    EXPECT_GE(failures, 1);
}
