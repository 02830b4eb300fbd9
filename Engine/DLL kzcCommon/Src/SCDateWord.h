#ifndef SCDATEWORD_H
#define SCDATEWORD_H

#include "VCDate.h"

#include <string_view>

namespace NSKZ::NSKZCore {

// The Japanese words in texts of dates and times, in a code page: 932 or 65001.
class KZCCOMMON_API SCDateWord
{
public:
    SCDateWord() = delete;

    enum EWord : BYTE
    {
        WORD_YEAR,       // 年
        WORD_MONTH,      // 月
        WORD_DAY,        // 日
        WORD_HOUR,       // 時
        WORD_MINUTE,     // 分
        WORD_SECOND,     // 秒
        WORD_FIRSTYEAR,  // 元
        WORD_MORNING,    // 午前
        WORD_AFTERNOON,  // 午後
        WORD_FISCAL,     // 度
        WORD_FIRSTHALF,  // 上期
        WORD_SECONDHALF, // 下期
        WORD_NUMBER,     // 第
        WORD_QUARTER,    // 四半期
        WORD_WEEK,       // 週
        WORD_DAYOFWEEK,  // 曜日
        WORD_SUNDAY,     // 日
        WORD_MONDAY,     // 月
        WORD_TUESDAY,    // 火
        WORD_WEDNESDAY,  // 水
        WORD_THURSDAY,   // 木
        WORD_FRIDAY,     // 金
        WORD_SATURDAY,   // 土
        WORD_COUNT,
    };
    // A word; borrowed, for good.
    static std::string_view Get(EWord word, int codePage) noexcept;

    // How an era of Japan is written.
    enum EEraStyle : BYTE
    {
        ERASTYLE_KANJI,     // 令和
        ERASTYLE_SHORT,     // 令
        ERASTYLE_LETTER,    // R
        ERASTYLE_CHARACTER, // ㋿; empty where the code page lacks it
    };
    // Empty for an era that is not one of Japan.
    static std::string_view GetEra(VCDate::EEra era, EEraStyle style, int codePage) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
