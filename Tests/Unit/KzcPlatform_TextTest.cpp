#include "KzcPlatform.h"

#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

using namespace NSKZ::Test;

namespace {

const unsigned char* Bytes(const char* text)
{
    return reinterpret_cast<const unsigned char*>(text);
}

// The flags of LCMapStringA for those of the recorded table: 1 half width, 2 katakana, 4 lower case.
DWORD GetMapFlags(unsigned int flags)
{
    return ((flags & 1) != 0 ? LCMAP_HALFWIDTH : 0) | ((flags & 2) != 0 ? LCMAP_KATAKANA : 0) |
           ((flags & 4) != 0 ? LCMAP_LOWERCASE : 0);
}

std::string Map(const std::string& text, unsigned int flags)
{
    std::string mapped(text.size() * 3 + 1, '#');
    const int count =
        LCMapStringA(GetUserDefaultLCID(), GetMapFlags(flags), text.data(), static_cast<int>(text.size()),
                     mapped.data(), static_cast<int>(mapped.size()));
    mapped.resize(static_cast<std::size_t>(count));
    return mapped;
}

std::string FromHex(const std::string& hex)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return bytes;
}

// What a Japanese Windows makes of each character that it changes, by flags.
std::map<std::pair<std::string, unsigned int>, std::string> ReadRecordedTable()
{
    std::map<std::pair<std::string, unsigned int>, std::string> table;
    std::ifstream file(KZC_TEST_DATA_DIR "/lcmap_cp932.tsv");
    std::string from;
    std::string to;
    unsigned int flags = 0;
    while (file >> from >> flags >> to)
        table[{FromHex(from), flags}] = FromHex(to);
    return table;
}

TEST(LCMapStringA, AgreesWithTheRecordedTableAndLeavesEverythingElseAlone)
{
    const auto table = ReadRecordedTable();
    ASSERT_EQ(table.size(), 4338u);
    std::vector<std::string> characters;
    for (unsigned int byte = 1; byte < 0x100; ++byte) {
        const bool isLead = (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
        if (!isLead) {
            characters.emplace_back(1, static_cast<char>(byte));
            continue;
        }
        for (unsigned int trail = 0x40; trail <= 0xFC; ++trail) {
            if (trail != 0x7F)
                characters.push_back({static_cast<char>(byte), static_cast<char>(trail)});
        }
    }
    std::size_t rows = 0;
    for (unsigned int flags = 1; flags <= 7; ++flags) {
        for (const std::string& character : characters) {
            const auto row = table.find({character, flags});
            const std::string& expected = row == table.end() ? character : row->second;
            rows += row == table.end() ? 0 : 1;
            ASSERT_EQ(Map(character, flags), expected) << flags;
        }
    }
    EXPECT_EQ(rows, table.size());
}

TEST(LCMapStringA, MapsWholeTexts)
{
    EXPECT_EQ(Map(SJIS(u8"ガラスＡＢＣ漢字ー"), 1), SJIS(u8"ｶﾞﾗｽABC漢字ｰ"));
    EXPECT_EQ(Map(SJIS(u8"がらすＡＢＣ"), 7), SJIS(u8"ｶﾞﾗｽabc"));
    EXPECT_EQ(Map(std::string("a\0B", 3), 4), std::string("a\0b", 3)); // NUL is a character like others
    EXPECT_EQ(Map("\x82", 7), "\x82");                                 // a lead byte alone stays
    EXPECT_EQ(Map(std::string("\x82\0A", 3), 4), std::string("\x82\0a", 3));
}

TEST(LCMapStringA, MapsUTF8ByTheSameRules)
{
    const CCodePageScope utf8(CP_UTF8);
    EXPECT_EQ(Map(UTF8(u8"がラス　ＡＢＣ－￥ヴパ漢字"), 7), UTF8(u8"ｶﾞﾗｽ abc-¥ｳﾞﾊﾟ漢字"));
    EXPECT_EQ(Map(UTF8(u8"ÀÉΩЯ"), 4), UTF8(u8"àéωя"));
    EXPECT_EQ(Map(UTF8(u8"\u212BＢ"), 4), UTF8(u8"\u212Bｂ")); // the sign of a unit is no letter
    EXPECT_EQ(Map(UTF8(u8"ゔゞ"), 2), UTF8(u8"ヴヾ"));
    EXPECT_EQ(Map(UTF8(u8"○→ㄱ"), 1), UTF8(u8"￮￫ﾡ"));
    EXPECT_EQ(Map(UTF8(u8"\U0001F600Ａ"), 1), UTF8(u8"\U0001F600A"));
    const std::string broken("\xE3\x81"
                             "A\xFF\xC0\x80\xED\xA0\x80");
    EXPECT_EQ(Map(broken, 1), broken);
}

TEST(LCMapStringA, EveryCharacterOfShiftJISMapsAlikeInBothCodePages)
{
    // But for half-width forms that Shift-JIS lacks, and for those that it has twice.
    for (const char8_t* const text :
         {u8"ガギグパピプヾ", u8"がぎぐゝゞ", u8"ＡｚΑЯⅣ", u8"、。「」・゛゜ー", u8"‘’“”！～"}) {
        for (unsigned int flags = 1; flags <= 7; ++flags) {
            const std::string inShiftJIS = Map(SJIS(text), flags);
            const CCodePageScope utf8(CP_UTF8);
            EXPECT_EQ(Map(UTF8(text), flags), FromSJIS(inShiftJIS)) << flags;
        }
    }
}

TEST(LCMapStringA, TellsTheSizeThatIsNeeded)
{
    const std::string text = SJIS(u8"ガ");
    EXPECT_EQ(LCMapStringA(0, LCMAP_HALFWIDTH, text.c_str(), -1, nullptr, 0), 3);
    EXPECT_EQ(LCMapStringA(0, LCMAP_HALFWIDTH, text.c_str(), 2, nullptr, 0), 2);
    char mapped[4] = "###";
    EXPECT_EQ(LCMapStringA(0, LCMAP_HALFWIDTH, text.c_str(), -1, mapped, 3), 3);
    EXPECT_STREQ(mapped, "\xB6\xDE");
}

TEST(LCMapStringA, WritesNothingBehindItsBuffer)
{
    const std::string text = SJIS(u8"ガガガガガガ");
    for (int size = 1; size < 14; ++size) {
        std::string mapped(20, '#');
        SetLastError(ERROR_SUCCESS);
        const int count = LCMapStringA(0, LCMAP_HALFWIDTH, text.c_str(), -1, mapped.data(), size);
        if (size < 13) {
            EXPECT_EQ(count, 0) << size;
            EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
        } else {
            EXPECT_EQ(count, 13);
        }
        EXPECT_EQ(mapped.substr(static_cast<std::size_t>(size)),
                  std::string(20 - static_cast<std::size_t>(size), '#'));
    }
}

TEST(LCMapStringA, RefusesWhatItCannotDo)
{
    char text[] = "abc";
    char mapped[8];
    const auto refused = [&](DWORD flags, const char* src, int srcCount, char* dst, int dstCount) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(LCMapStringA(0, flags, src, srcCount, dst, dstCount), 0);
        return GetLastError();
    };
    EXPECT_EQ(refused(LCMAP_LOWERCASE, nullptr, 3, mapped, 8), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(refused(LCMAP_LOWERCASE, text, 0, mapped, 8), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(refused(LCMAP_LOWERCASE, text, -2, mapped, 8), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(refused(LCMAP_LOWERCASE, text, 3, mapped, -1), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(refused(LCMAP_LOWERCASE, text, 3, nullptr, 8), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(refused(LCMAP_LOWERCASE, text, 3, text, 3), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(refused(0, text, 3, mapped, 8), ERROR_INVALID_FLAGS);
    EXPECT_EQ(refused(LCMAP_LOWERCASE | 1, text, 3, mapped, 8), ERROR_INVALID_FLAGS);
    EXPECT_EQ(GetUserDefaultLCID(), 0x0411u);
}

// Where a position is in a text; -1 for null.
std::ptrdiff_t Find(const std::string& text, const std::string& searched)
{
    const unsigned char* const found = _mbsstr(Bytes(text.c_str()), Bytes(searched.c_str()));
    return found == nullptr ? -1 : found - Bytes(text.c_str());
}

TEST(Mbsstr, FindsTextsWhereCharactersBegin)
{
    EXPECT_EQ(Find(SJIS(u8"表あ計"), SJIS(u8"あ")), 2);
    EXPECT_EQ(Find("\x95\x5C\\", "\\"), 2); // the trail byte of the first character is the same byte
    EXPECT_EQ(Find("\x83\x83\x83\x8A", "\x83\x83"), 0);
    EXPECT_EQ(Find("\x82\x83\x83\x8A", "\x83\x83"), -1); // across the border of two characters
    EXPECT_EQ(Find("abcabd", "abd"), 3);
    EXPECT_EQ(Find("abc", ""), 0);
    EXPECT_EQ(Find("", ""), 0);
    EXPECT_EQ(Find("", "a"), -1);
    EXPECT_EQ(Find("ab", "abc"), -1);
    unsigned char text[] = "xyz";
    *_mbsstr(text, Bytes("y")) = '-';
    EXPECT_STREQ(reinterpret_cast<char*>(text), "x-z");
}

TEST(Mbsstr, RespectsCodePointsInUTF8)
{
    const CCodePageScope utf8(CP_UTF8);
    EXPECT_EQ(Find(UTF8(u8"表あ計"), UTF8(u8"あ")), 3);
    EXPECT_EQ(Find(UTF8(u8"あ"), "\x81"), -1); // a byte inside a character
    EXPECT_EQ(Find("\x81", "\x81"), 0);        // one that is none stands by itself
}

TEST(Mbschr, FindsCharactersByTheirCode)
{
    const std::string text = SJIS(u8"表あ表\\");
    const auto position = [&text](const unsigned char* found) {
        return found == nullptr ? -1 : found - Bytes(text.c_str());
    };
    EXPECT_EQ(position(_mbschr(Bytes(text.c_str()), 0x955C)), 0);
    EXPECT_EQ(position(_mbsrchr(Bytes(text.c_str()), 0x955C)), 4);
    EXPECT_EQ(position(_mbschr(Bytes(text.c_str()), '\\')), 6);
    EXPECT_EQ(position(_mbsrchr(Bytes(text.c_str()), '\\')), 6);
    EXPECT_EQ(position(_mbschr(Bytes(text.c_str()), 'x')), -1);
    EXPECT_EQ(position(_mbsrchr(Bytes(text.c_str()), 'x')), -1);
    EXPECT_EQ(position(_mbschr(Bytes(text.c_str()), 0)), 7);
    EXPECT_EQ(position(_mbsrchr(Bytes(text.c_str()), 0)), 7);
    unsigned char changed[] = "a.b.c";
    *_mbsrchr(changed, '.') = '-';
    *_mbschr(changed, '.') = '+';
    EXPECT_STREQ(reinterpret_cast<char*>(changed), "a+b-c");
}

TEST(Mbschr, FindsCharactersOfUTF8ByTheirBytes)
{
    const CCodePageScope utf8(CP_UTF8);
    const std::string text = UTF8(u8"aあbあ");
    EXPECT_EQ(_mbschr(Bytes(text.c_str()), 0xE38182) - Bytes(text.c_str()), 1);
    EXPECT_EQ(_mbsrchr(Bytes(text.c_str()), 0xE38182) - Bytes(text.c_str()), 5);
    EXPECT_EQ(_mbschr(Bytes(text.c_str()), 0x81), nullptr);
}

} // namespace
