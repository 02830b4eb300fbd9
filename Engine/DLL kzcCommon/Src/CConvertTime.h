#ifndef CCONVERTTIME_H
#define CCONVERTTIME_H

#include "CDispPattern.h"
#include "SCDeclareConstant.h"
#include "VCDate.h"

namespace NSKZ::NSKZCore {

// Writes times of the day as texts in a display form: the counterpart of CConvertDate.
class KZCCOMMON_API CConvertTime
{
public:
    // Throws std::bad_alloc.
    explicit CConvertTime(const SCDeclareConstant::STimeTypeInfo& typeInfo);

    // Writes the text of `time` under the display form, with a NUL behind it, to `buffer`, which has `size`
    // bytes:
    //   - kind 0: in the form of the field's own texts, with colons and numbers of two digits (of the 12-hour
    //     forms the kanji for morning or afternoon in front, hours from 0 to 11 as they come);
    //   - kind 3: by the pattern;
    //   - else: by `form`. Minutes are written as they are: a time of a form with steps is cut down before.
    // A part that the time does not hold is left out. False, with `buffer` untouched, if the time gives no
    // part of the form (as with a form that is unset or unknown, or a pattern that SCDispForm refuses), or if
    // the text does not fit.
    bool ConvertTimeString(const VCDate& time, char* buffer, DWORD size) const noexcept;
    // The most bytes that a text of this display form can have, without the NUL.
    DWORD GetMaxLenOfTimeString() const noexcept;

    // Whether the pattern has a placeholder for it. All false if the kind is not 3, or SCDispForm refuses the
    // pattern. The hour counts as used with 12 hours too.
    bool IsUsedHourForOptionalForm() const noexcept;
    bool IsUsed12HourForOptionalForm() const noexcept;
    bool IsUsedAMPMForOptionalForm() const noexcept;
    bool IsUsedMinuteForOptionalForm() const noexcept;
    bool IsUsedSecondForOptionalForm() const noexcept;

private:
    SCDeclareConstant::ETimeDataForm dataForm;
    DWORD kind;
    DWORD form;
    int codePage;
    CDispPattern pattern;
};

} // namespace NSKZ::NSKZCore

#endif
