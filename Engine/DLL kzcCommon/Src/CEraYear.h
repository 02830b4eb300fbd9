#ifndef CERAYEAR_H
#define CERAYEAR_H

#include "CFixedText.h"
#include "VCDate.h"

namespace NSKZ::NSKZCore {

// A year as it is counted: Gregorian, or of an era of Japan; or none. Four bytes.
class KZCCOMMON_API CEraYear
{
public:
    CEraYear() = default;

    // Store a year; false, with none held, for one that there is not. DATE_UNSETTING, or ERA_UNSETTING, is no
    // year and gives true.
    bool SetGrg(DWORD grgYear) noexcept;                             // MIN_GRGYEAR_VALUE to MAX_GRGYEAR_VALUE
    bool SetJpn(VCDate::EEra japaneseEra, DWORD yearOfEra) noexcept; // IsAppropriateYear; not ERA_GREGORIAN
    void Clear() noexcept;

    bool IsSet() const noexcept { return era != VCDate::ERA_UNSETTING; }
    // ERA_UNSETTING for none.
    VCDate::EEra GetEra() const noexcept { return era; }
    // The year as it is counted; 0 for none.
    DWORD GetYear() const noexcept { return year; }

    // The Gregorian year. False for none.
    bool GetGrg(DWORD& grgYear) const noexcept;
    // The year of the era of Japan in which the year ends. False for none, and before Meiji.
    bool GetJpn(VCDate::EEra& japaneseEra, DWORD& yearOfEra) const noexcept;

    // The Gregorian year of a year that bears one name from end to end, as fiscal years do. False too for a
    // year of an era of Japan in which another era is in force at its end.
    bool GetGrgOfNamingYear(DWORD& grgYear) const noexcept;
    // Appends the year as plain text: "2024", "R6"; nothing for none.
    void AppendTo(CFixedText<VCDate::MAX_DATESTRING_SIZE>& text) const noexcept;

private:
    WORD year = 0;
    VCDate::EEra era = VCDate::ERA_UNSETTING;
};

} // namespace NSKZ::NSKZCore

#endif
