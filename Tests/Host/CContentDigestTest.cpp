#include "CContentDigest.h"

#include <gtest/gtest.h>

#include <set>

namespace NSKZ::Test {

using Host::CContentDigest;

namespace {

template <class... TParts>
std::string DigestOf(const TParts&... parts)
{
    CContentDigest digest;
    (digest.Add(parts), ...);
    return digest.GetText();
}

} // namespace

TEST(CContentDigest, EqualContentsHaveEqualDigests)
{
    const std::string text = "a text of more than eight bytes";
    EXPECT_EQ(DigestOf(std::string_view(text)), DigestOf(std::string_view(std::string(text))));
    EXPECT_TRUE(CContentDigest::IsText(DigestOf(std::string_view(text))));
}

// Saves outlive the program that wrote them.
TEST(CContentDigest, ADigestStaysTheSameFromProgramToProgram)
{
    EXPECT_EQ(DigestOf(std::string_view("kzcbui save")), "f688a66df569d983");
    EXPECT_EQ(DigestOf(std::uint64_t{7}), "db10b9a5a24b51db");
}

TEST(CContentDigest, EveryByteCountsAndWhereTextsEnd)
{
    std::set<std::string> digests;
    std::size_t count = 0;
    const auto take = [&](const std::string& digest) {
        digests.insert(digest);
        ++count;
    };
    const std::string text(20, 'x');
    for (std::size_t i = 0; i < text.size(); ++i) {
        for (const char other : {'y', '\0', '\xFF'}) {
            std::string changed = text;
            changed[i] = other;
            take(DigestOf(std::string_view(changed)));
        }
        take(DigestOf(std::string_view(text).substr(0, i), std::string_view(text).substr(i)));
        take(DigestOf(std::string_view(text).substr(0, i)));
    }
    EXPECT_EQ(digests.size(), count);
}

TEST(CContentDigest, OnlySixteenHexadecimalDigitsAreTheTextOfOne)
{
    EXPECT_TRUE(CContentDigest::IsText("0123456789abcdef"));
    for (const char* text :
         {"", "0123456789abcde", "0123456789abcdef0", "0123456789ABCDEF", "0123456789abcdeg"})
        EXPECT_FALSE(CContentDigest::IsText(text)) << text;
}

} // namespace NSKZ::Test
