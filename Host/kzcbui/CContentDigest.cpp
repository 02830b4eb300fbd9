#include "CContentDigest.h"

#include <algorithm>

namespace NSKZ::Host {

namespace {

constexpr std::size_t WORD = sizeof(std::uint64_t);
constexpr std::size_t TEXT_LEN = 16;
constexpr std::string_view DIGITS = "0123456789abcdef";

// The bytes at `bytes`, the lowest first.
std::uint64_t ReadWord(const char* bytes, std::size_t count) noexcept
{
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < count; ++i)
        word |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    return word;
}

} // namespace

void CContentDigest::Add(std::uint64_t number) noexcept
{
    digest = (digest ^ number) * 0x9E3779B97F4A7C15ULL; // odd, with its bits well spread
    digest ^= digest >> 32;
}

void CContentDigest::Add(std::string_view text) noexcept
{
    Add(static_cast<std::uint64_t>(text.size()));
    for (; text.size() >= WORD; text.remove_prefix(WORD))
        Add(ReadWord(text.data(), WORD));
    if (!text.empty())
        Add(ReadWord(text.data(), text.size()));
}

std::string CContentDigest::GetText() const
{
    std::string text(TEXT_LEN, '0');
    std::uint64_t rest = digest;
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, rest >>= 4)
        *digit = DIGITS[rest & 0xF];
    return text;
}

bool CContentDigest::IsText(std::string_view text) noexcept
{
    return text.size() == TEXT_LEN && text.find_first_not_of(DIGITS) == std::string_view::npos;
}

} // namespace NSKZ::Host
