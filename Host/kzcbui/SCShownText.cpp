#include "SCShownText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <iterator>

namespace NSKZ::Host {

namespace {

struct SBlock
{
    char32_t first;
    char32_t last;
};

// Ascending, both of them. Single wide pictographs among the narrow symbols stand one by one.
constexpr SBlock WIDE[] = {
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x23E9, 0x23EC},   {0x2614, 0x2615},   {0x2648, 0x2653},
    {0x26A1, 0x26A1},   {0x26BD, 0x26BE},   {0x26D4, 0x26D4},   {0x2705, 0x2705},   {0x270A, 0x270B},
    {0x274C, 0x274C},   {0x2753, 0x2755},   {0x2757, 0x2757},   {0x2795, 0x2797},   {0x2B1B, 0x2B1C},
    {0x2B50, 0x2B50},   {0x2B55, 0x2B55},   {0x2E80, 0x303E},   {0x3041, 0x33FF},   {0x3400, 0x4DBF},
    {0x4E00, 0xA4CF},   {0xA960, 0xA97C},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE10, 0xFE19},
    {0xFE30, 0xFE6F},   {0xFF01, 0xFF60},   {0xFFE0, 0xFFE6},   {0x16FE0, 0x18CFF}, {0x1AFF0, 0x1B2FF},
    {0x1F004, 0x1F004}, {0x1F0CF, 0x1F0CF}, {0x1F18E, 0x1F18E}, {0x1F191, 0x1F19A}, {0x1F200, 0x1F265},
    {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F7E0, 0x1F7EB}, {0x1F900, 0x1F9FF}, {0x1FA70, 0x1FAFF},
    {0x20000, 0x3FFFD},
};
constexpr SBlock COMBINING[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A}, {0x064B, 0x065F},
    {0x0E31, 0x0E31}, {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF},
    {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x2064}, {0x20D0, 0x20FF}, {0x302A, 0x302F},
    {0x3099, 0x309A}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF}, {0xE0100, 0xE01EF},
};

template <std::size_t SIZE>
bool IsAmong(const SBlock (&blocks)[SIZE], char32_t character)
{
    const SBlock* const found =
        std::lower_bound(std::begin(blocks), std::end(blocks), character,
                         [](const SBlock& block, char32_t value) { return block.last < value; });
    return found != std::end(blocks) && found->first <= character;
}

struct SCharacter
{
    char32_t code;
    std::size_t byteCount;
};

// The character that begins at `pos`; a byte that begins none counts as one of its own.
SCharacter ReadCharacter(std::string_view text, std::size_t pos)
{
    const auto lead = static_cast<unsigned char>(text[pos]);
    const std::size_t byteCount = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (byteCount == 1 || pos + byteCount > text.size())
        return {lead < 0x80 ? lead : U'\uFFFD', 1};
    char32_t code = lead & (0x7Fu >> byteCount);
    for (std::size_t i = 1; i < byteCount; ++i)
        code = (code << 6) | (static_cast<unsigned char>(text[pos + i]) & 0x3Fu);
    return {code, byteCount};
}

std::size_t GetWidthOfCharacter(char32_t code)
{
    if (code < 0x300)
        return 1;
    if (IsAmong(COMBINING, code))
        return 0;
    return IsAmong(WIDE, code) ? 2 : 1;
}

} // namespace

std::size_t SCShownText::GetWidth(std::string_view text)
{
    std::size_t width = 0;
    for (std::size_t pos = 0; pos < text.size();) {
        const SCharacter character = ReadCharacter(text, pos);
        width += GetWidthOfCharacter(character.code);
        pos += character.byteCount;
    }
    return width;
}

std::string SCShownText::Escape(std::string_view text)
{
    std::string escaped;
    for (std::size_t pos = 0; pos < text.size();) {
        const SCharacter character = ReadCharacter(text, pos);
        if (character.code == U'\n') {
            escaped += "\\n";
        } else if (character.code == U'\r') {
            escaped += "\\r";
        } else if (character.code == U'\t') {
            escaped += "\\t";
        } else if (character.code < 0x20 || (character.code >= 0x7F && character.code < 0xA0)) {
            std::array<char, 8> code;
            std::snprintf(code.data(), code.size(), "\\x%02X", static_cast<unsigned int>(character.code));
            escaped += code.data();
        } else {
            escaped += text.substr(pos, character.byteCount);
        }
        pos += character.byteCount;
    }
    return escaped;
}

std::string SCShownText::Cut(std::string_view text, std::size_t width)
{
    if (GetWidth(text) <= width)
        return std::string(text);
    if (width == 0)
        return {};
    std::size_t taken = 1; // the ellipsis
    std::size_t pos = 0;
    for (;;) {
        const SCharacter character = ReadCharacter(text, pos);
        taken += GetWidthOfCharacter(character.code);
        if (taken > width)
            return std::string(text.substr(0, pos)) + "…";
        pos += character.byteCount;
    }
}

} // namespace NSKZ::Host
