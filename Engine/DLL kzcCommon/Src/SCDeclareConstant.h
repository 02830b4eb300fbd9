#ifndef SCDECLARECONSTANT_H
#define SCDECLARECONSTANT_H

#include "KzcCommonAPI.h"

#include <string_view>

namespace NSKZ::NSKZCore {

// What a field of a source table holds, and the forms of date and time texts.
class KZCCOMMON_API SCDeclareConstant
{
public:
    SCDeclareConstant() = delete;

    static constexpr DWORD UNSETTING = 4294967295;

    enum EDataType : DWORD
    {
        DATATYPE_TEXT = 0,
        DATATYPE_NUM = 1,
        DATATYPE_DATE = 2,
        DATATYPE_TIME = 3,
        DATATYPE_UNSETTING = UNSETTING,
    };

    // Kind of a field: only fields of kind 0 are items of an analysis.
    static constexpr DWORD DATAKIND_ITEM = 0;
    // A field that the table keeps but that is no item.
    static constexpr DWORD DATAKIND_HIDDEN = 1;

    struct SDataSpec
    {
        DWORD dataKind = UNSETTING;
        EDataType dataType = DATATYPE_UNSETTING;
    };

    // The order in which the elements of a date stand in its text.
    enum EDateDataForm : DWORD
    {
        DATEFORM_YMD = 0,  // 2024-07-15, or with a year of two digits 24-07-15
        DATEFORM_MDY = 1,  // 07-15-2024
        DATEFORM_DMY = 2,  // 15-07-2024
        DATEFORM_YM = 3,   // 2024-07
        DATEFORM_MD = 4,   // 07-15
        DATEFORM_JYMD = 5, // a Japanese era, its year, month, day: R6-07-15, or with the era in kanji
        DATEFORM_Y = 6,    // 2024
        DATEFORM_JYM = 7,  // R6-07
        DATEFORM_JY = 8,   // R6
        // Years of two digits alone.
        DATEFORM_YMD_2 = 9,  // 24-07-15
        DATEFORM_MDY_2 = 10, // 07-15-24
        DATEFORM_DMY_2 = 11, // 15-07-24
        DATEFORM_YM_2 = 12,  // 24-07
        DATEFORM_LAST = DATEFORM_YM_2,
    };

    // What stands between the elements.
    enum EDateDelimiter : DWORD
    {
        DATEDELIM_NONE = 0,   // 20240715: two digits each, the year four
        DATEDELIM_SLASH = 1,  // 2024/7/15
        DATEDELIM_HYPHEN = 2, // 2024-7-15
        DATEDELIM_PERIOD = 3, // 2024.7.15
        DATEDELIM_KANJI = 4,  // 2024, then the characters for year, month and day behind their numbers
        DATEDELIM_LAST = DATEDELIM_KANJI,
    };

    // The bytes of an optional form, its NUL among them.
    static constexpr DWORD OPTIONALFORM_SIZE = 261;

    // How the dates of an item are grouped and shown. SCDispForm has the values and their meanings.
    struct KZCCOMMON_API SDateDispForm
    {
        DWORD kind = UNSETTING;
        char optionalForm[OPTIONALFORM_SIZE] = {}; // a pattern, in the host's code page
        DWORD form = UNSETTING;
        DWORD option = UNSETTING;

        // Stores the pattern; false, with nothing changed, if it is too long or holds a NUL.
        bool SetOptionalForm(std::string_view text) noexcept;
        // Equal if all fields are, the patterns by _mbscmp.
        bool operator==(const SDateDispForm& other) const noexcept;
    };

    // The same for the times of an item.
    struct KZCCOMMON_API STimeDispForm
    {
        DWORD kind = UNSETTING;
        char optionalForm[OPTIONALFORM_SIZE] = {};
        DWORD form = UNSETTING;

        bool SetOptionalForm(std::string_view text) noexcept;
        bool operator==(const STimeDispForm& other) const noexcept;
    };

    struct SDateTypeInfo
    {
        EDateDataForm form = DATEFORM_YMD;
        EDateDelimiter delimiter = DATEDELIM_HYPHEN;
        // The display form of the item; it plays no part in reading the field's texts.
        SDateDispForm dispForm{};
    };

    // The order in which the elements of a time stand in its text.
    enum ETimeDataForm : DWORD
    {
        TIMEFORM_HMS = 0,    // 13:05:09
        TIMEFORM_HM = 1,     // 13:05
        TIMEFORM_HMS_12 = 2, // 1:05:09 with morning or afternoon
        TIMEFORM_HM_12 = 3,  // 1:05 with morning or afternoon
        TIMEFORM_LAST = TIMEFORM_HM_12,
    };

    struct STimeTypeInfo
    {
        ETimeDataForm form = TIMEFORM_HMS;
        // As that of SDateTypeInfo.
        STimeDispForm dispForm{};
    };

    // The lengths, in bytes of the code page in force (_getmbcp) without the NUL, of the shortest and the
    // longest text of a date form. Where a delimiter stands between the elements, or a kanji behind each, a
    // year has two to four digits, a month or day one or two; an era is one letter or two kanji, its year one
    // or two digits or the one kanji for its first year. Without delimiter every number has its full digits:
    // the year four, that of an era two (or the kanji). In the forms with years of two digits they are two.
    // False, with both untouched, for a form or a delimiter that is none of the above.
    // The texts of a display form can be longer: CConvertDate tells.
    static bool GetDateStrMinAndMaxLen(EDateDataForm form, EDateDelimiter delimiter, unsigned int& minLen,
                                       unsigned int& maxLen) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
