#ifndef CDISPPATTERN_H
#define CDISPPATTERN_H

#include "KzcCommonAPI.h"

#include <string>
#include <string_view>
#include <vector>

namespace NSKZ::NSKZCore {

// The pattern of an optional form, taken apart: placeholders in braces and the text between them. `{{` and
// `}}` are a brace in the text. A byte of a double-byte character is no brace. SCDispForm has the list of
// placeholders and what is refused.
class KZCCOMMON_API CDispPattern
{
public:
    // What stands in a pattern.
    enum EElement : BYTE
    {
        ELEMENT_LITERAL,     // text
        ELEMENT_GRGYEAR,     // {yyyy}
        ELEMENT_GRGYEAR_2,   // {yy}
        ELEMENT_ERA,         // {ggg}
        ELEMENT_ERA_SHORT,   // {gg}
        ELEMENT_ERA_LETTER,  // {g}
        ELEMENT_JPNYEAR,     // {e}
        ELEMENT_JPNYEAR_2,   // {ee}
        ELEMENT_JPNYEAR_GAN, // {E}
        ELEMENT_MONTH,       // {m}
        ELEMENT_MONTH_2,     // {mm}
        ELEMENT_DAY,         // {d}
        ELEMENT_DAY_2,       // {dd}
        ELEMENT_HOUR,        // {h}
        ELEMENT_HOUR_2,      // {hh}
        ELEMENT_HOUR12,      // {h12}
        ELEMENT_HOUR12_2,    // {hh12}
        ELEMENT_AMPM,        // {AM/PM}
        ELEMENT_AMPM_KANJI,  // {ap}
        ELEMENT_MINUTE,      // {n}
        ELEMENT_MINUTE_2,    // {nn}
        ELEMENT_SECOND,      // {s}
        ELEMENT_SECOND_2,    // {ss}
        ELEMENT_COUNT,
    };
    struct SElement
    {
        EElement element;
        std::string literal; // of ELEMENT_LITERAL
    };
    enum EKind
    {
        KIND_DATE,
        KIND_TIME,
    };

    // The empty pattern.
    CDispPattern() = default;

    // Takes a pattern apart, in the code page in force. False, with the object unchanged and `reason` a
    // sentence that holds as long as the program runs, if it is refused. Throws std::bad_alloc.
    bool Parse(std::string_view text, EKind kind, const char*& reason);

    const std::vector<SElement>& GetElements() const noexcept { return elements; }
    bool Has(EElement element) const noexcept { return (used >> element & 1) != 0; }

private:
    std::vector<SElement> elements;
    DWORD used = 0; // a bit an element
};

} // namespace NSKZ::NSKZCore

#endif
