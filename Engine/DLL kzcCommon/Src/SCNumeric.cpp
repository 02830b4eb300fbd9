#include "SCNumeric.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <system_error>

namespace NSKZ::NSKZCore {

namespace {

constexpr std::size_t MAX_LEN_OF_GROUPED_NUMBER = 1000;

bool IsDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

const char* SkipBlanks(const char* text) noexcept
{
    while (*text == ' ' || *text == '\t')
        ++text;
    return text;
}

const char* SkipDigits(const char* text) noexcept
{
    while (IsDigit(*text))
        ++text;
    return text;
}

// The digits in groups of three behind a first one of one to three, which ends at `text`: where they end.
// Null where a comma has something else than three digits behind it.
const char* SkipGroups(const char* text) noexcept
{
    while (*text == ',') {
        const char* const groupEnd = SkipDigits(text + 1);
        if (groupEnd - text != 4)
            return nullptr;
        text = groupEnd;
    }
    return text;
}

// Whether a number that a double cannot hold is too small for it, and not too large. [begin, end) is its text
// without a sign.
bool IsTooSmall(const char* begin, const char* end) noexcept
{
    // Where the first digit that counts stands: 1 for units, 2 for tens, 0 for tenths.
    long long place = 0;
    bool found = false;
    bool behindPoint = false;
    const char* text = begin;
    for (; text < end && *text != 'e' && *text != 'E'; ++text) {
        if (*text == '.') {
            behindPoint = true;
        } else if (!found && *text == '0') {
            place -= behindPoint ? 1 : 0;
        } else {
            found = true;
            if (behindPoint)
                break;
            ++place;
        }
    }
    while (text < end && *text != 'e' && *text != 'E')
        ++text;
    if (text == end)
        return place <= 0;

    ++text;
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+')
        ++text;
    long long exponent = 0;
    const std::from_chars_result result = std::from_chars(text, end, exponent);
    if (result.ec == std::errc::result_out_of_range)
        return negative;
    // No sum is made of the two: an exponent may be as large as its type can hold.
    return place <= (negative ? exponent : -exponent);
}

// Reads an unsigned number at the start of [begin, end); where it ends, or null if there is none or it is too
// large.
const char* ReadUnsigned(const char* begin, const char* end, double& value) noexcept
{
    if (begin == end || (!IsDigit(*begin) && *begin != '.'))
        return nullptr; // a sign, or one of the words that are read as numbers elsewhere
    double read = 0;
    const std::from_chars_result result = std::from_chars(begin, end, read);
    if (result.ec == std::errc::invalid_argument)
        return nullptr;
    if (result.ec == std::errc::result_out_of_range || std::isinf(read)) {
        if (!IsTooSmall(begin, result.ptr))
            return nullptr;
        read = 0;
    }
    value = read;
    return result.ptr;
}

// The same for a number with digits in groups, of which the first ends at `firstGroupEnd`.
const char* ReadGrouped(const char* begin, const char* firstGroupEnd, const char* end, double& value) noexcept
{
    if (firstGroupEnd == begin || firstGroupEnd - begin > 3)
        return nullptr;
    const char* const integerEnd = SkipGroups(firstGroupEnd);
    if (integerEnd == nullptr || static_cast<std::size_t>(end - begin) > MAX_LEN_OF_GROUPED_NUMBER)
        return nullptr;

    char plain[MAX_LEN_OF_GROUPED_NUMBER + 1];
    std::size_t len = 0;
    for (const char* text = begin; text < integerEnd; ++text) {
        if (*text != ',')
            plain[len++] = *text;
    }
    const std::size_t commaCount = static_cast<std::size_t>(integerEnd - begin) - len;
    std::memcpy(plain + len, integerEnd, static_cast<std::size_t>(end - integerEnd));
    len += static_cast<std::size_t>(end - integerEnd);
    plain[len] = '\0';
    const char* const readEnd = ReadUnsigned(plain, plain + len, value);
    return readEnd == nullptr ? nullptr : begin + commaCount + (readEnd - plain);
}

} // namespace

bool SCNumeric::AtoF(const char* text, double& value) noexcept
{
    if (text == nullptr)
        return false;
    text = SkipBlanks(text);
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+')
        ++text;

    // Most texts that are no number are told by their first character, before their length is looked for.
    if (!IsDigit(*text) && *text != '.')
        return false;
    const char* const integerEnd = SkipDigits(text);
    const char* const end = integerEnd + std::strlen(integerEnd);
    double magnitude = 0;
    const char* const numberEnd = *integerEnd == ',' ? ReadGrouped(text, integerEnd, end, magnitude)
                                                     : ReadUnsigned(text, end, magnitude);
    if (numberEnd == nullptr || *SkipBlanks(numberEnd) != '\0')
        return false;
    value = negative ? -magnitude : magnitude;
    return true;
}

bool SCNumeric::ReadDecimal(const char* text, std::size_t len, double& value) noexcept
{
    if (len == 0)
        return false;
    const char* const end = text + len;
    const bool negative = *text == '-';
    double magnitude = 0;
    if (ReadUnsigned(text + (negative ? 1 : 0), end, magnitude) != end)
        return false;
    value = negative ? -magnitude : magnitude;
    return true;
}

} // namespace NSKZ::NSKZCore
