#include "KzcPlatform.h"

#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <ctime>
#include <limits>
#include <thread>

using NSKZ::Test::CCodePageScope;

namespace {

const unsigned char* Bytes(const char* text)
{
    return reinterpret_cast<const unsigned char*>(text);
}

} // namespace

TEST(KzcPlatform, TheCodePageIsShiftJISUntilAnotherIsSet)
{
    EXPECT_EQ(_getmbcp(), 932);
}

TEST(KzcPlatform, SetmbcpTakesShiftJISAndUTF8)
{
    const CCodePageScope former(_KANJI_CP);
    EXPECT_EQ(_setmbcp(65001), 0);
    EXPECT_EQ(_getmbcp(), 65001);
    EXPECT_EQ(_setmbcp(932), 0);
    EXPECT_EQ(_getmbcp(), 932);
}

TEST(KzcPlatform, SetmbcpRefusesEveryOtherCodePageAndChangesNothing)
{
    const CCodePageScope utf8(CP_UTF8);
    for (const int codePage : {0, -1, 1252, 936, 65000}) {
        EXPECT_EQ(_setmbcp(codePage), -1) << codePage;
        EXPECT_EQ(_getmbcp(), CP_UTF8);
    }
}

TEST(KzcPlatform, TheLastErrorBelongsToItsThread)
{
    SetLastError(ERROR_INVALID_DATA);
    DWORD first = 77;
    DWORD second = 77;
    std::thread([&] {
        first = GetLastError();
        SetLastError(ERROR_ACCESS_DENIED);
        second = GetLastError();
    }).join();
    EXPECT_EQ(first, ERROR_SUCCESS);
    EXPECT_EQ(second, ERROR_ACCESS_DENIED);
    EXPECT_EQ(GetLastError(), 13u);
    SetLastError(ERROR_SUCCESS);
}

TEST(KzcPlatform, ACriticalSectionKeepsOtherThreadsOutAndLetsItsOwnIn)
{
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    int shared = 0;
    const auto count = [&] {
        for (int i = 0; i < 20000; ++i) {
            EnterCriticalSection(&section);
            EnterCriticalSection(&section);
            ++shared;
            LeaveCriticalSection(&section);
            LeaveCriticalSection(&section);
        }
    };
    std::thread other(count);
    count();
    other.join();
    DeleteCriticalSection(&section);
    EXPECT_EQ(shared, 40000);
}

TEST(KzcPlatform, MbscmpOrdersByCharacterCode)
{
    EXPECT_EQ(_mbscmp(Bytes(""), Bytes("")), 0);
    EXPECT_EQ(_mbscmp(Bytes("abc"), Bytes("abc")), 0);
    EXPECT_LT(_mbscmp(Bytes("ab"), Bytes("abc")), 0);
    EXPECT_GT(_mbscmp(Bytes("b"), Bytes("abc")), 0);
    // A half-width katakana, one byte, goes before any double-byte character, whatever the lead byte.
    EXPECT_LT(_mbscmp(Bytes("\xB1"), Bytes("\x82\xA0")), 0);
    // Trail bytes compare behind equal lead bytes.
    EXPECT_LT(_mbscmp(Bytes("\x83\x40"), Bytes("\x83\x41")), 0);
    EXPECT_LT(_mbscmp(Bytes("\x83\x5C"), Bytes("\x83\x80")), 0);
}

TEST(KzcPlatform, MbscmpFollowsTheCodePage)
{
    const char* const kana = "\xEF\xBD\xB1"; // half-width katakana in UTF-8
    const char* const emoji = "\xF0\x9F\x98\x80";
    const CCodePageScope utf8(CP_UTF8);
    EXPECT_LT(_mbscmp(Bytes(kana), Bytes(emoji)), 0);
    EXPECT_LT(_mbscmp(Bytes("z"), Bytes("\xC3\xA9")), 0);
    EXPECT_EQ(_mbscmp(Bytes(emoji), Bytes(emoji)), 0);
}

TEST(KzcPlatform, IsmbstrailKnowsTheSecondByteOfADoubleByteCharacter)
{
    const unsigned char* const text =
        Bytes("a\x95\x5C\\"); // a, a kanji whose trail byte is 0x5C, a backslash
    EXPECT_EQ(_ismbstrail(text, text), 0);
    EXPECT_EQ(_ismbstrail(text, text + 1), 0);
    EXPECT_EQ(_ismbstrail(text, text + 2), -1);
    EXPECT_EQ(_ismbstrail(text, text + 3), 0);
}

TEST(KzcPlatform, IsmbstrailKnowsEveryFurtherByteOfAUTF8Character)
{
    const CCodePageScope utf8(CP_UTF8);
    const unsigned char* const text = Bytes("a\xE8\xA1\xA8z");
    EXPECT_EQ(_ismbstrail(text, text + 1), 0);
    EXPECT_EQ(_ismbstrail(text, text + 2), -1);
    EXPECT_EQ(_ismbstrail(text, text + 3), -1);
    EXPECT_EQ(_ismbstrail(text, text + 4), 0);
}

TEST(KzcPlatform, IsmbstrailStopsAtTheEndOfTheText)
{
    const unsigned char* const text = Bytes("\x95\0\x5C");
    EXPECT_EQ(_ismbstrail(text, text + 2), 0);
}

TEST(KzcPlatform, IsnanAndFiniteTellNumbersApart)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NE(_isnan(nan), 0);
    EXPECT_EQ(_isnan(infinity), 0);
    EXPECT_EQ(_isnan(1.5), 0);
    EXPECT_NE(_finite(1.5), 0);
    EXPECT_EQ(_finite(infinity), 0);
    EXPECT_EQ(_finite(nan), 0);
}

TEST(KzcPlatform, Time64CountsSecondsSince1970)
{
    const long long before = std::time(nullptr);
    long long stored = 0;
    const long long now = _time64(&stored);
    EXPECT_EQ(now, stored);
    EXPECT_GE(now, before);
    EXPECT_LE(now, static_cast<long long>(std::time(nullptr)));
    EXPECT_GE(_time64(nullptr), now);
}
