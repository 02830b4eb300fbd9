#ifndef SCDISPFORM_H
#define SCDISPFORM_H

#include "SCDeclareConstant.h"

#include <span>
#include <string>
#include <string_view>

namespace NSKZ::NSKZCore {

// The display forms of dates and times: their codes, their names, and what each shows.
//
// Dates. `kind` tells the family, `form` the text, `option` 1 the fiscal counterpart where there is one:
//
//   kind                        form           shows
//   0 as it is                  0              the date as the field has it: a group for each date
//   1 dates                     0 to 5         year, month, day
//                               6 to 11        year, month; option 1: fiscal month
//                               12             the day of the month alone
//   2 terms                     101 to 106     half of the fiscal year
//                               107 to 112     quarter of the fiscal year
//   3 weeks                     201 to 206     week of the year; option 1: of the fiscal year
//                               301 to 306     week of the month; option 1: of the fiscal month
//                               401            the same without year
//   4 days of the week          402            month, week of the month, day of the week; option 1: fiscal
//                               403            the same without month
//   5 a pattern                 0              what the pattern says
//
// The six forms of a family that has a year differ in how they write it:
//
//   1st  figures                2024/07/15     2024/07    FY2024 Q2    2024 W29            2024/07 W3
//   2nd  kanji                  2024年7月15日  2024年7月  2024年度第2四半期  2024年第29週    2024年7月第3週
//   3rd  Japanese               令和6年7月15日, the first year of an era as 令和元年
//   4th  Japanese, figures      令和06/07/15
//   5th  Japanese, letter       R06/07/15
//   6th  letter and kanji       R6年7月15日
//
// `option` is 0 where it makes no difference. SCDispForm alone says which `kind` goes with a `form`; whoever
// groups or writes dates goes by `form`, and by kind only as far as 0 and 5 are concerned.
//
// Times. kind 0: as it is; kind 1: forms 0 to 3 and 14; kind 2: forms 4 to 13, with steps; kind 3: a pattern,
// with form 0. Of forms 0 to 13 the even ones have 24 hours (and more, where a time goes past midnight), the
// odd ones 12 with the kanji for morning or afternoon in front:
//
//   0, 1     hour, minute, second       13:05:09     午後1:05:09
//   2, 3     hour, minute               13:05        午後1:05
//   4, 5     the same in steps of 5 minutes; 6, 7 of 10; 8, 9 of 15; 10, 11 of 20; 12, 13 of 30
//   14       minute, second             05:09
//
// Patterns. Text with placeholders in braces; `{{` and `}}` are a brace. Of dates:
//
//   {yyyy} 2024   {yy} 24                           Gregorian year
//   {ggg} 令和   {gg} 令   {g} R                    era
//   {e} 6   {ee} 06   {E} 6, and 元 for the first   year of the era; it needs an era beside it
//   {m} 7   {mm} 07   {d} 15   {dd} 15              month, day
//
// Of times:
//
//   {h} 13   {hh} 13                                hour
//   {h12} 1   {hh12} 01                             hour from 0 to 11; it needs one of the next two beside it
//   {AM/PM} PM   {ap} 午後                          morning or afternoon
//   {n} 5   {nn} 05   {s} 9   {ss} 09               minute, second
//
// A pattern with a Japanese year groups by it, one with a Gregorian year alone by that. Refused are a pattern
// without placeholder or longer than OPTIONALFORM_SIZE - 1 bytes, an unknown placeholder, a brace alone, a
// control character, bytes that are no text of the code page in force, and what needs another beside it
// without that.
class KZCCOMMON_API SCDispForm
{
public:
    SCDispForm() = delete;

    static constexpr DWORD DATEKIND_ASITIS = 0;
    static constexpr DWORD DATEKIND_DATE = 1;
    static constexpr DWORD DATEKIND_TERM = 2;
    static constexpr DWORD DATEKIND_WEEK = 3;
    static constexpr DWORD DATEKIND_DAYSOFWEEK = 4;
    static constexpr DWORD DATEKIND_OPTIONAL = 5;
    static constexpr DWORD TIMEKIND_ASITIS = 0;
    static constexpr DWORD TIMEKIND_EXACT = 1;
    static constexpr DWORD TIMEKIND_STEP = 2;
    static constexpr DWORD TIMEKIND_OPTIONAL = 3;
    static constexpr DWORD OPTION_CALENDAR = 0;
    static constexpr DWORD OPTION_FISCAL = 1;

    // How a form counts years.
    enum EYearKind
    {
        YEARKIND_NONE = 0,
        YEARKIND_GREGORIAN = 1,
        YEARKIND_JAPANESE = 2,
    };

    // A named form. The names are words of ASCII small letters and digits, joined by hyphens.
    struct SNamedForm
    {
        const char* name;
        DWORD kind;
        DWORD form;
        DWORD option;
        const char* optionalForm; // the pattern of the kind with one; else empty
        EYearKind yearKind;
    };

    // All named forms, in the order in which they are best listed. No name and no code stands there twice.
    static std::span<const SNamedForm> GetDateForms() noexcept;
    static std::span<const SNamedForm> GetTimeForms() noexcept;

    // The form of a name. False, with `dispForm` untouched, for an unknown name.
    static bool FindDateForm(std::string_view name, SCDeclareConstant::SDateDispForm& dispForm) noexcept;
    static bool FindTimeForm(std::string_view name, SCDeclareConstant::STimeDispForm& dispForm) noexcept;

    // The name of a form; a constant. Where `option` makes no difference every value of it finds the name.
    // False, with `name` untouched, for a form that has none: one that is unset, of an unknown code, or with
    // another pattern.
    static bool FindNameOfDateForm(const SCDeclareConstant::SDateDispForm& dispForm,
                                   const char*& name) noexcept;
    static bool FindNameOfTimeForm(const SCDeclareConstant::STimeDispForm& dispForm,
                                   const char*& name) noexcept;

    // Makes the form of a pattern. False, with `dispForm` untouched and `reason` a sentence that holds as
    // long as the program runs, for one that is refused. Throw std::bad_alloc.
    static bool MakeOptionalDateForm(std::string_view pattern, SCDeclareConstant::SDateDispForm& dispForm,
                                     const char*& reason);
    static bool MakeOptionalTimeForm(std::string_view pattern, SCDeclareConstant::STimeDispForm& dispForm,
                                     const char*& reason);

    // What the form makes of Monday, 15 July 2024 (fiscal years from April, months to their last day, weeks
    // from Sunday), in a field of that form; what it makes of 13:05:09. In the code page in force. Empty for
    // a form that shows nothing. Throw std::bad_alloc.
    static std::string MakeExample(const SCDeclareConstant::SDateTypeInfo& typeInfo);
    static std::string MakeExample(const SCDeclareConstant::STimeTypeInfo& typeInfo);
};

} // namespace NSKZ::NSKZCore

#endif
