#include "SCDateText.h"

#include "SCCalendar.h"
#include "SCDateWord.h"

#include <array>
#include <cstddef>

namespace NSKZ::NSKZCore {

namespace {

using SC = SCDeclareConstant;

bool IsDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

bool Take(std::string_view& text, std::string_view wanted) noexcept
{
    if (wanted.empty() || !text.starts_with(wanted))
        return false;
    text.remove_prefix(wanted.size());
    return true;
}

// Takes a number of at least and at most so many digits off the front of the text: as many as there are.
bool TakeNumber(std::string_view& text, std::size_t minDigits, std::size_t maxDigits, DWORD& number,
                std::size_t& digits) noexcept
{
    DWORD taken = 0;
    std::size_t count = 0;
    while (count < maxDigits && count < text.size() && IsDigit(text[count]))
        taken = taken * 10 + static_cast<DWORD>(text[count++] - '0');
    if (count < minDigits)
        return false;
    text.remove_prefix(count);
    number = taken;
    digits = count;
    return true;
}

bool TakeNumber(std::string_view& text, std::size_t minDigits, std::size_t maxDigits, DWORD& number) noexcept
{
    std::size_t ignored = 0;
    return TakeNumber(text, minDigits, maxDigits, number, ignored);
}

enum EPart : BYTE
{
    PART_NONE,
    PART_YEAR,
    PART_YEAR_2,
    PART_ERAYEAR,
    PART_MONTH,
    PART_DAY,
};

// The parts of a form in their order.
std::array<EPart, 3> GetParts(SC::EDateDataForm form) noexcept
{
    switch (form) {
    case SC::DATEFORM_YMD:
        return {PART_YEAR, PART_MONTH, PART_DAY};
    case SC::DATEFORM_MDY:
        return {PART_MONTH, PART_DAY, PART_YEAR};
    case SC::DATEFORM_DMY:
        return {PART_DAY, PART_MONTH, PART_YEAR};
    case SC::DATEFORM_YM:
        return {PART_YEAR, PART_MONTH, PART_NONE};
    case SC::DATEFORM_MD:
        return {PART_MONTH, PART_DAY, PART_NONE};
    case SC::DATEFORM_JYMD:
        return {PART_ERAYEAR, PART_MONTH, PART_DAY};
    case SC::DATEFORM_Y:
        return {PART_YEAR, PART_NONE, PART_NONE};
    case SC::DATEFORM_JYM:
        return {PART_ERAYEAR, PART_MONTH, PART_NONE};
    case SC::DATEFORM_JY:
        return {PART_ERAYEAR, PART_NONE, PART_NONE};
    case SC::DATEFORM_YMD_2:
        return {PART_YEAR_2, PART_MONTH, PART_DAY};
    case SC::DATEFORM_MDY_2:
        return {PART_MONTH, PART_DAY, PART_YEAR_2};
    case SC::DATEFORM_DMY_2:
        return {PART_DAY, PART_MONTH, PART_YEAR_2};
    case SC::DATEFORM_YM_2:
        return {PART_YEAR_2, PART_MONTH, PART_NONE};
    }
    return {PART_NONE, PART_NONE, PART_NONE};
}

std::string_view GetDelimiter(SC::EDateDelimiter delimiter) noexcept
{
    switch (delimiter) {
    case SC::DATEDELIM_SLASH:
        return "/";
    case SC::DATEDELIM_HYPHEN:
        return "-";
    case SC::DATEDELIM_PERIOD:
        return ".";
    default:
        return {};
    }
}

SCDateWord::EWord GetWord(EPart part) noexcept
{
    if (part == PART_MONTH)
        return SCDateWord::WORD_MONTH;
    return part == PART_DAY ? SCDateWord::WORD_DAY : SCDateWord::WORD_YEAR;
}

// A year of two digits lies in the hundred years from here on.
constexpr DWORD FIRST_YEAR_OF_TWO_DIGITS = 1950;

DWORD GetYearOfTwoDigits(DWORD digits) noexcept
{
    const DWORD ofCentury = FIRST_YEAR_OF_TWO_DIGITS % 100;
    return FIRST_YEAR_OF_TWO_DIGITS - ofCentury + digits + (digits < ofCentury ? 100 : 0);
}

bool TakeEra(std::string_view& text, int codePage, VCDate::EEra& era) noexcept
{
    constexpr std::array<VCDate::EEra, 5> ERAS = {VCDate::ERA_REIWA, VCDate::ERA_HEISEI, VCDate::ERA_SHOWA,
                                                  VCDate::ERA_TAISHO, VCDate::ERA_MEIJI};
    for (const VCDate::EEra each : ERAS) {
        const std::string_view letter = SCDateWord::GetEra(each, SCDateWord::ERASTYLE_LETTER, codePage);
        const bool isLetter =
            !text.empty() && (text.front() == letter[0] || text.front() == letter[0] - 'A' + 'a');
        if (isLetter)
            text.remove_prefix(1);
        // The two kanji before the first of them alone.
        if (isLetter || Take(text, SCDateWord::GetEra(each, SCDateWord::ERASTYLE_KANJI, codePage)) ||
            Take(text, SCDateWord::GetEra(each, SCDateWord::ERASTYLE_SHORT, codePage)) ||
            Take(text, SCDateWord::GetEra(each, SCDateWord::ERASTYLE_CHARACTER, codePage))) {
            era = each;
            return true;
        }
    }
    return false;
}

// What was read of a date.
struct SReadDate
{
    VCDate::EEra era = VCDate::ERA_UNSETTING;
    DWORD year = VCDate::DATE_UNSETTING;
    DWORD month = VCDate::DATE_UNSETTING;
    DWORD day = VCDate::DATE_UNSETTING;
};

bool TakePart(std::string_view& text, EPart part, bool fullDigits, int codePage, SReadDate& date) noexcept
{
    switch (part) {
    case PART_YEAR: {
        std::size_t digits = 0;
        if (!TakeNumber(text, fullDigits ? 4 : 2, 4, date.year, digits) || digits == 3)
            return false;
        if (digits == 2)
            date.year = GetYearOfTwoDigits(date.year);
        date.era = VCDate::ERA_GREGORIAN;
        return true;
    }
    case PART_YEAR_2:
        if (!TakeNumber(text, 2, 2, date.year))
            return false;
        date.year = GetYearOfTwoDigits(date.year);
        date.era = VCDate::ERA_GREGORIAN;
        return true;
    case PART_ERAYEAR:
        if (!TakeEra(text, codePage, date.era))
            return false;
        if (Take(text, SCDateWord::Get(SCDateWord::WORD_FIRSTYEAR, codePage))) {
            date.year = 1;
            return true;
        }
        return TakeNumber(text, fullDigits ? 2 : 1, 2, date.year);
    case PART_MONTH:
        return TakeNumber(text, fullDigits ? 2 : 1, 2, date.month);
    case PART_DAY:
        return TakeNumber(text, fullDigits ? 2 : 1, 2, date.day);
    case PART_NONE:
        break;
    }
    return false;
}

// Whether year, month and day are in the era; the day of a change that was written under the old era goes to
// the new one.
bool SettleEra(SReadDate& date) noexcept
{
    DWORD grgYear = 0;
    if (!SCCalendar::GetGrgYear(date.era, date.year, grgYear))
        return false;
    const DWORD firstMonth = date.month == VCDate::DATE_UNSETTING ? 1 : date.month;
    const DWORD lastMonth = date.month == VCDate::DATE_UNSETTING ? VCDate::MONTHCNT_OF_YEAR : date.month;
    const bool hasDay = date.day != VCDate::DATE_UNSETTING;
    const long first = SCCalendar::GetDayNum(grgYear, firstMonth, hasDay ? date.day : 1);
    const long last = SCCalendar::GetDayNum(grgYear, lastMonth,
                                            hasDay ? date.day : SCCalendar::GetLastDay(grgYear, lastMonth));
    long firstOfEra = 0;
    long lastOfEra = 0;
    SCCalendar::GetDaysOfEra(date.era, firstOfEra, lastOfEra);
    if (first <= lastOfEra && last >= firstOfEra)
        return true;
    // In Meiji and Taisho the Emperor's last day counted for both.
    const bool sharesLastDay = date.era == VCDate::ERA_MEIJI || date.era == VCDate::ERA_TAISHO;
    return hasDay && sharesLastDay && first == lastOfEra + 1 &&
           SCCalendar::GetJpnYear(first, date.era, date.year);
}

bool IsReal(SReadDate& date) noexcept
{
    constexpr DWORD LEAP_YEAR = 2000; // 29 February without year is a day
    DWORD grgYear = LEAP_YEAR;
    if (date.era == VCDate::ERA_GREGORIAN)
        grgYear = date.year;
    else if (date.era != VCDate::ERA_UNSETTING && !SCCalendar::GetGrgYear(date.era, date.year, grgYear))
        return false;
    const DWORD month = date.month == VCDate::DATE_UNSETTING ? 1 : date.month;
    const DWORD day = date.day == VCDate::DATE_UNSETTING ? 1 : date.day;
    if (!SCCalendar::IsRealDay(grgYear, month, day))
        return false;
    return !SCCalendar::IsEraOfJapan(date.era) || SettleEra(date);
}

void TakeSpaces(std::string_view& text) noexcept
{
    while (text.starts_with(' '))
        text.remove_prefix(1);
}

// Takes the word for morning or afternoon off the front, or off the end.
bool TakeNoon(std::string_view& text, int codePage, VCDate::ETimeBasedOnNoon& noon) noexcept
{
    struct SWord
    {
        std::string_view word;
        VCDate::ETimeBasedOnNoon noon;
    };
    const std::array<SWord, 2> letters = {
        {{"AM", VCDate::TIMEBASEDONNOON_MORNING}, {"PM", VCDate::TIMEBASEDONNOON_AFTERNOON}}};
    const std::array<SWord, 2> kanji = {
        {{SCDateWord::Get(SCDateWord::WORD_MORNING, codePage), VCDate::TIMEBASEDONNOON_MORNING},
         {SCDateWord::Get(SCDateWord::WORD_AFTERNOON, codePage), VCDate::TIMEBASEDONNOON_AFTERNOON}}};
    const auto isLetters = [](std::string_view piece, std::string_view word) {
        const auto isSame = [](char c, char capital) { return c == capital || c == capital - 'A' + 'a'; };
        return piece.size() == word.size() && isSame(piece[0], word[0]) && isSame(piece[1], word[1]);
    };

    for (const SWord& each : kanji) {
        if (Take(text, each.word)) {
            TakeSpaces(text);
            noon = each.noon;
            return true;
        }
        // What is before the word are digits, colons and kanji, so its bytes are no halves of others.
        if (text.ends_with(each.word)) {
            text.remove_suffix(each.word.size());
            while (text.ends_with(' '))
                text.remove_suffix(1);
            noon = each.noon;
            return true;
        }
    }
    for (const SWord& each : letters) {
        if (isLetters(text.substr(0, each.word.size()), each.word)) {
            text.remove_prefix(each.word.size());
            TakeSpaces(text);
            noon = each.noon;
            return true;
        }
        if (text.size() >= each.word.size() &&
            isLetters(text.substr(text.size() - each.word.size()), each.word)) {
            text.remove_suffix(each.word.size());
            while (text.ends_with(' '))
                text.remove_suffix(1);
            noon = each.noon;
            return true;
        }
    }
    return false;
}

} // namespace

bool SCDateText::ReadDate(std::string_view text, SCDeclareConstant::EDateDataForm form,
                          SCDeclareConstant::EDateDelimiter delimiter, CDate& date) noexcept
{
    const std::array<EPart, 3> parts = GetParts(form);
    if (parts[0] == PART_NONE || delimiter > SC::DATEDELIM_LAST)
        return false;

    const int codePage = _getmbcp();
    const std::string_view between = GetDelimiter(delimiter);
    SReadDate read;
    bool isFirst = true;
    for (const EPart part : parts) {
        if (part == PART_NONE)
            break;
        if (!isFirst && !between.empty() && !Take(text, between))
            return false;
        isFirst = false;
        if (!TakePart(text, part, delimiter == SC::DATEDELIM_NONE, codePage, read))
            return false;
        if (delimiter == SC::DATEDELIM_KANJI && !Take(text, SCDateWord::Get(GetWord(part), codePage)))
            return false;
    }
    if (!text.empty() || !IsReal(read))
        return false;

    CDate made;
    if (read.era == VCDate::ERA_GREGORIAN)
        made.SetYearOfTheGrgCalendar(read.year);
    else
        made.SetYearOfTheJpnCalendar(read.era, read.year);
    made.SetMonth(read.month);
    made.SetDay(read.day);
    date = made;
    return true;
}

bool SCDateText::ReadTime(std::string_view text, SCDeclareConstant::ETimeDataForm form, CDate& time) noexcept
{
    if (form > SC::TIMEFORM_LAST)
        return false;
    const int codePage = _getmbcp();
    const bool has12Hours = form == SC::TIMEFORM_HMS_12 || form == SC::TIMEFORM_HM_12;
    const bool hasSecond = form == SC::TIMEFORM_HMS || form == SC::TIMEFORM_HMS_12;
    VCDate::ETimeBasedOnNoon noon = VCDate::TIMEBASEDONNOON_UNSETTING;
    if (has12Hours && !TakeNoon(text, codePage, noon))
        return false;

    DWORD hour = 0;
    DWORD minute = 0;
    DWORD second = 0;
    if (!TakeNumber(text, 1, 2, hour))
        return false;
    if (Take(text, ":")) {
        if (!TakeNumber(text, 2, 2, minute) ||
            (hasSecond && (!Take(text, ":") || !TakeNumber(text, 2, 2, second))))
            return false;
    } else {
        if (!Take(text, SCDateWord::Get(SCDateWord::WORD_HOUR, codePage)) ||
            !TakeNumber(text, 1, 2, minute) ||
            !Take(text, SCDateWord::Get(SCDateWord::WORD_MINUTE, codePage)) ||
            (hasSecond && (!TakeNumber(text, 1, 2, second) ||
                           !Take(text, SCDateWord::Get(SCDateWord::WORD_SECOND, codePage)))))
            return false;
    }
    if (!text.empty() || minute > VCDate::MAX_MINUTE_VALUE || second > VCDate::MAX_SECOND_VALUE)
        return false;
    if (has12Hours) {
        constexpr DWORD NOON = 12;
        if (hour > NOON)
            return false;
        hour = hour % NOON + (noon == VCDate::TIMEBASEDONNOON_AFTERNOON ? NOON : 0);
    }

    CDate made;
    if (!made.SetHour(hour))
        return false;
    made.SetMinute(minute);
    if (hasSecond)
        made.SetSecond(second);
    time = made;
    return true;
}

} // namespace NSKZ::NSKZCore
