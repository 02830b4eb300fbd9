#include "SCDateWord.h"

#include <array>

namespace NSKZ::NSKZCore {

namespace {

struct SText
{
    std::string_view sjis;
    std::string_view utf8;

    std::string_view Get(int codePage) const noexcept { return codePage == CP_UTF8 ? utf8 : sjis; }
};

constexpr std::array<SText, SCDateWord::WORD_COUNT> WORDS = {{
    {"\224N", "\345\271\264"},                                         // 年
    {"\214\216", "\346\234\210"},                                      // 月
    {"\223\372", "\346\227\245"},                                      // 日
    {"\216\236", "\346\231\202"},                                      // 時
    {"\225\252", "\345\210\206"},                                      // 分
    {"\225b", "\347\247\222"},                                         // 秒
    {"\214\263", "\345\205\203"},                                      // 元
    {"\214\337\221O", "\345\215\210\345\211\215"},                     // 午前
    {"\214\337\214\343", "\345\215\210\345\276\214"},                  // 午後
    {"\223x", "\345\272\246"},                                         // 度
    {"\217\343\212\372", "\344\270\212\346\234\237"},                  // 上期
    {"\211\272\212\372", "\344\270\213\346\234\237"},                  // 下期
    {"\221\346", "\347\254\254"},                                      // 第
    {"\216l\224\274\212\372", "\345\233\233\345\215\212\346\234\237"}, // 四半期
    {"\217T", "\351\200\261"},                                         // 週
    {"\227j\223\372", "\346\233\234\346\227\245"},                     // 曜日
    {"\223\372", "\346\227\245"},                                      // 日
    {"\214\216", "\346\234\210"},                                      // 月
    {"\211\316", "\347\201\253"},                                      // 火
    {"\220\205", "\346\260\264"},                                      // 水
    {"\226\330", "\346\234\250"},                                      // 木
    {"\213\340", "\351\207\221"},                                      // 金
    {"\223y", "\345\234\237"},                                         // 土
}};

// By era, then by style.
constexpr std::array<std::array<SText, 4>, 5> ERAS = {{
    {{
        {"\226\276\216\241", "\346\230\216\346\262\273"}, // 明治
        {"\226\276", "\346\230\216"},                     // 明
        {"M", "M"},                                       // M
        {"\207\215", "\343\215\276"},                     // ㍾
    }},
    {{
        {"\221\345\220\263", "\345\244\247\346\255\243"}, // 大正
        {"\221\345", "\345\244\247"},                     // 大
        {"T", "T"},                                       // T
        {"\207\216", "\343\215\275"},                     // ㍽
    }},
    {{
        {"\217\272\230a", "\346\230\255\345\222\214"}, // 昭和
        {"\217\272", "\346\230\255"},                  // 昭
        {"S", "S"},                                    // S
        {"\207\217", "\343\215\274"},                  // ㍼
    }},
    {{
        {"\225\275\220\254", "\345\271\263\346\210\220"}, // 平成
        {"\225\275", "\345\271\263"},                     // 平
        {"H", "H"},                                       // H
        {"\207~", "\343\215\273"},                        // ㍻
    }},
    {{
        {"\227\337\230a", "\344\273\244\345\222\214"}, // 令和
        {"\227\337", "\344\273\244"},                  // 令
        {"R", "R"},                                    // R
        {"", "\343\213\277"},                          // ㋿
    }},
}};

} // namespace

std::string_view SCDateWord::Get(EWord word, int codePage) noexcept
{
    return WORDS[word].Get(codePage);
}

std::string_view SCDateWord::GetEra(VCDate::EEra era, EEraStyle style, int codePage) noexcept
{
    switch (era) {
    case VCDate::ERA_MEIJI:
        return ERAS[0][style].Get(codePage);
    case VCDate::ERA_TAISHO:
        return ERAS[1][style].Get(codePage);
    case VCDate::ERA_SHOWA:
        return ERAS[2][style].Get(codePage);
    case VCDate::ERA_HEISEI:
        return ERAS[3][style].Get(codePage);
    case VCDate::ERA_REIWA:
        return ERAS[4][style].Get(codePage);
    default:
        return {};
    }
}

} // namespace NSKZ::NSKZCore
