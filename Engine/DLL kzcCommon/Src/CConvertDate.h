#ifndef CCONVERTDATE_H
#define CCONVERTDATE_H

#include "CDispPattern.h"
#include "SCDeclareConstant.h"
#include "VCDate.h"

namespace NSKZ::NSKZCore {

// Writes dates as texts in a display form. The form's codes and what each makes are in SCDispForm. All texts
// are in the code page in force when the object was constructed.
class KZCCOMMON_API CConvertDate
{
public:
    // Throws std::bad_alloc.
    explicit CConvertDate(const SCDeclareConstant::SDateTypeInfo& typeInfo);

    // Writes the text of `date` under the display form, with a NUL behind it, to `buffer`, which has `size`
    // bytes:
    //   - kind 0: in the form of the field's own texts, years of four digits, months and days of two (in the
    //     forms with years of two digits they are two); of a Japanese form the era is in kanji where the
    //     delimiter is, and a letter otherwise;
    //   - kind 5: by the pattern;
    //   - else: by `form` and `option`.
    // A part that the date does not give is left out, with what belongs to it; in a pattern nothing is
    // written for its placeholder. The criteria settle fiscal terms that the date does not hold itself; weeks
    // are written of objects that hold them (CWeekNum, CDaysOfTheWeek) alone. False, with `buffer` untouched,
    // if the date gives no part of the form (as with a form that is unset or unknown, or a pattern that
    // SCDispForm refuses), or if the text does not fit.
    bool ConvertDateString(const VCDate& date, char* buffer, DWORD size, DWORD startMonth,
                           DWORD cutOffDate) const noexcept;
    // The most bytes that a text of this display form can have, without the NUL.
    DWORD GetMaxLenOfDateString() const noexcept;

    // Whether the pattern has a placeholder for it. All false if the kind is not 5, or SCDispForm refuses the
    // pattern.
    bool IsUsedGrgCalendarForOptionalForm() const noexcept;
    bool IsUsedJpnCalendarForOptionalForm() const noexcept;
    bool IsUsedMonthForOptionalForm() const noexcept;
    bool IsUsedDayForOptionalForm() const noexcept;

private:
    SCDeclareConstant::EDateDataForm dataForm;
    SCDeclareConstant::EDateDelimiter delimiter;
    DWORD kind;
    DWORD form;
    DWORD option;
    int codePage;
    CDispPattern pattern;
};

} // namespace NSKZ::NSKZCore

#endif
