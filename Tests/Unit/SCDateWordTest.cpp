#include "SCDateWord.h"

#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <string>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

TEST(SCDateWord, EveryWordIsTheSameInBothCodePages)
{
    const std::u8string_view words[] = {u8"年", u8"月",     u8"日",   u8"時",   u8"分",   u8"秒",
                                        u8"元", u8"午前",   u8"午後", u8"度",   u8"上期", u8"下期",
                                        u8"第", u8"四半期", u8"週",   u8"曜日", u8"日",   u8"月",
                                        u8"火", u8"水",     u8"木",   u8"金",   u8"土"};
    ASSERT_EQ(std::size(words), std::size_t{SCDateWord::WORD_COUNT});
    for (std::size_t i = 0; i < std::size(words); ++i) {
        const auto word = static_cast<SCDateWord::EWord>(i);
        EXPECT_EQ(SCDateWord::Get(word, CP_UTF8), UTF8(words[i]));
        EXPECT_EQ(FromSJIS(SCDateWord::Get(word, _KANJI_CP)), UTF8(words[i]));
    }
}

TEST(SCDateWord, EveryEraIsWrittenInFourWays)
{
    struct SEra
    {
        VCDate::EEra era;
        std::u8string_view texts[4];
    };
    const SEra eras[] = {{VCDate::ERA_MEIJI, {u8"明治", u8"明", u8"M", u8"㍾"}},
                         {VCDate::ERA_TAISHO, {u8"大正", u8"大", u8"T", u8"㍽"}},
                         {VCDate::ERA_SHOWA, {u8"昭和", u8"昭", u8"S", u8"㍼"}},
                         {VCDate::ERA_HEISEI, {u8"平成", u8"平", u8"H", u8"㍻"}},
                         {VCDate::ERA_REIWA, {u8"令和", u8"令", u8"R", u8"㋿"}}};
    for (const SEra& each : eras) {
        for (DWORD i = 0; i < 4; ++i) {
            const auto style = static_cast<SCDateWord::EEraStyle>(i);
            EXPECT_EQ(SCDateWord::GetEra(each.era, style, CP_UTF8), UTF8(each.texts[i]));
            const bool isLacked = each.era == VCDate::ERA_REIWA && style == SCDateWord::ERASTYLE_CHARACTER;
            EXPECT_EQ(FromSJIS(SCDateWord::GetEra(each.era, style, _KANJI_CP)),
                      isLacked ? "" : UTF8(each.texts[i]));
        }
    }
    EXPECT_EQ(SCDateWord::GetEra(VCDate::ERA_GREGORIAN, SCDateWord::ERASTYLE_KANJI, CP_UTF8), "");
    EXPECT_EQ(SCDateWord::GetEra(VCDate::ERA_UNSETTING, SCDateWord::ERASTYLE_KANJI, CP_UTF8), "");
}
