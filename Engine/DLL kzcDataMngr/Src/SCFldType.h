#ifndef SCFLDTYPE_H
#define SCFLDTYPE_H

#include "KzcDataMngrAPI.h"
#include "SCDeclareConstant.h"

#include <string>
#include <string_view>

namespace NSKZ::NSKZCore {

class CFldValueList;

// The type of a field: as a text that a user writes, and as its values suggest it.
class KZCDATAMNGR_API SCFldType
{
public:
    SCFldType() = delete;

    struct SFldType
    {
        SCDeclareConstant::EDataType dataType = SCDeclareConstant::DATATYPE_TEXT;
        bool hasForm = false; // whether the form of a date or time is settled
        SCDeclareConstant::SDateTypeInfo dateTypeInfo;
        SCDeclareConstant::STimeTypeInfo timeTypeInfo;
    };

    // Reads the text of a type:
    // - "text", "number"
    // - "date", "date:ORDER-DELIMITER": ORDER one of ymd, mdy, dmy, ym, md, y; jymd, jym, jy (with a Japanese
    //   era); ymd2, mdy2, dmy2, ym2 (with years of two digits alone); DELIMITER one of none, slash, hyphen,
    //   period, kanji: "date:ymd-hyphen", "date:y-none"
    // - "time", "time:FORM": FORM one of hms, hm, hms-12, hm-12 (the latter two with morning or afternoon)
    // False, with `type` untouched, for any other text. Does not throw.
    static bool Parse(std::string_view text, SFldType& type) noexcept;

    // The text that Parse reads back, with its form if that is settled. Throws std::bad_alloc, and
    // std::invalid_argument for a type or a form that is none.
    static std::string Write(const SFldType& type);

    // The type that the values suggest; empty ones count for nothing:
    // - number, if all read as numbers (SCNumeric::AtoF) and none has a zero before another digit, as codes
    //   have;
    // - date, if all are real days in one order with one delimiter out of slash, hyphen, period or (year
    //   first) the kanji for year, month and day of the code page in force; the year has four digits, or an
    //   era of Japan in front. Where several orders fit, year-month-day goes before month-day-year before
    //   day-month-year. Months of a year are dates in kanji alone. Years of two digits, and months and days
    //   without year, never are;
    // - time, if all are an hour of the day and minutes, or all have seconds behind them, or all morning or
    //   afternoon beside them; SCDateText has the exact forms;
    // - text, if none of these or all are empty.
    // Cost: at most three passes over the values, each of which ends where it fails.
    static SFldType Infer(const CFldValueList& values);

    // Settles the form of a date or time that has none: the one in which most values read, among those that
    // Infer knows and preferred as there; ymd-hyphen, or hms, where no value reads. Other types stay as they
    // are.
    static void SettleForm(const CFldValueList& values, SFldType& type);
};

} // namespace NSKZ::NSKZCore

#endif
