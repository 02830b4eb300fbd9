#ifndef SCNUMERIC_H
#define SCNUMERIC_H

#include "KzcCommonAPI.h"

#include <cstddef>

namespace NSKZ::NSKZCore {

// Numbers as text.
class KZCCOMMON_API SCNumeric
{
public:
    SCNumeric() = delete;

    // Reads `text`, NUL-terminated, as a number: blanks (space, tab) before and behind it, a sign, decimal
    // digits with at most one point, and an exponent are understood ("-1.5", "+.5", "1e2"). Digits in groups
    // of three set apart by commas are read as one number ("1,234,567.8"; of up to 1000 characters). The
    // decimal separator is always the point, whatever the locale.
    //
    // Returns true and stores the value if the whole text reads so; false, with `value` untouched, for
    // everything else: null, no digit, text behind the number, hexadecimal, "inf" and "nan" in any spelling,
    // a value too large for a double. One too small for a double reads as 0. Does not throw.
    static bool AtoF(const char* text, double& value) noexcept;

    // The same for `len` bytes that are the bare number: no blanks, no commas, no plus sign. `text` may be
    // null where `len` is 0, which is no number.
    static bool ReadDecimal(const char* text, std::size_t len, double& value) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
