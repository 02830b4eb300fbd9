#ifndef CFIXEDTEXT_H
#define CFIXEDTEXT_H

#include "KzcCommonAPI.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace NSKZ::NSKZCore {

// A text under construction, in a buffer of a fixed size: nothing is allocated. What no longer fits makes the
// whole text unusable.
template <std::size_t CAPACITY>
class CFixedText
{
public:
    void Append(std::string_view text) noexcept
    {
        if (text.size() > CAPACITY - length) {
            overflown = true;
            return;
        }
        std::copy(text.begin(), text.end(), bytes.data() + length); // an empty text may be null
        length += text.size();
    }

    // A number in decimal, with zeros in front up to so many digits.
    void AppendNumber(DWORD number, std::size_t minDigits = 1) noexcept
    {
        std::array<char, 16> digits{};
        const std::to_chars_result result =
            std::to_chars(digits.data(), digits.data() + digits.size(), number);
        const std::size_t count = static_cast<std::size_t>(result.ptr - digits.data());
        for (std::size_t i = count; i < minDigits; ++i)
            Append("0");
        Append(std::string_view(digits.data(), count));
    }

    bool IsEmpty() const noexcept { return length == 0; }

    // Copies the text with a NUL behind it; false, with `buffer` untouched, if it does not fit its `size`
    // bytes or has not fitted here.
    bool CopyTo(char* buffer, DWORD size) const noexcept
    {
        if (overflown || length >= size)
            return false;
        std::memcpy(buffer, bytes.data(), length);
        buffer[length] = '\0';
        return true;
    }

private:
    std::array<char, CAPACITY> bytes;
    std::size_t length = 0;
    bool overflown = false;
};

} // namespace NSKZ::NSKZCore

#endif
