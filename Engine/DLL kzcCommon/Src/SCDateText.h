#ifndef SCDATETEXT_H
#define SCDATETEXT_H

#include "CDate.h"
#include "SCDeclareConstant.h"

#include <string_view>

namespace NSKZ::NSKZCore {

// Reads the texts of date and time fields. A text is one of its form through and through: no blanks around
// it, nothing behind it, and a real day of the years 1 to 9999. Digits are those of ASCII.
//
// Dates. With a delimiter a year has four digits or two, a month and a day one or two; without one a year has
// four digits (of the forms with years of two digits two), a month and a day two. DATEDELIM_KANJI has 年, 月
// and 日 behind their numbers. A year of two digits lies from 1950 to 2049.
//
// Years of an era: the era is a letter of M, T, S, H, R, small or capital, its two kanji, the first of them
// alone, or the character that has both (㍾, ㍽, ㍼, ㍻; ㋿ where the code page has it). Its year is one
// or two digits, without delimiter two, or 元 for the first. The day lies in that era; 1912-07-30 may also be
// written as Meiji 45 and 1926-12-25 as Taisho 15, and is kept as the first day of the new era. Without day,
// or without month too, at least one day of the month, or the year, lies in the era.
//
// Without year 29 February is a real day.
//
// Times. Colons between hours, minutes and seconds, or 時, 分 and 秒 behind them; hours and minutes of one or
// two digits in kanji, minutes and seconds of two behind a colon. Hours go to VCDate::MAX_HOUR_VALUE. In the
// 12-hour forms AM or PM in any letters, or 午前 or 午後, stands in front or behind, spaces between them or
// not; hours go from 0 to 12, where 12 is as much as 0: 12:30 AM is half an hour past midnight, 12:30 PM half
// an hour past noon, in kanji too.
class KZCCOMMON_API SCDateText
{
public:
    SCDateText() = delete;

    // Read a text in the code page in force. False, with the output untouched, if it is none of the form, and
    // for an unknown form. `date` and `time` get their parts and no others.
    static bool ReadDate(std::string_view text, SCDeclareConstant::EDateDataForm form,
                         SCDeclareConstant::EDateDelimiter delimiter, CDate& date) noexcept;
    static bool ReadTime(std::string_view text, SCDeclareConstant::ETimeDataForm form, CDate& time) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
