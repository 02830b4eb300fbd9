#include "CCharMap.h"

#if !defined(_WIN32)

#include "SCCodePageText.h"

#include <array>
#include <clocale>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <new>
#include <string>
#include <wctype.h>

using NSKZ::NSKZCore::SCCodePageText;

namespace {

constexpr std::size_t CHAR_COUNT = 0x10000;
constexpr char32_t NO_CHAR = 0;

// A character becomes one or two.
struct SChars
{
    char32_t first;
    char32_t second = NO_CHAR;
};

// The case table of Unicode, whatever the process's locale.
class CCaseTable
{
public:
    CCaseTable() : locale(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr))
    {
        if (locale == nullptr)
            throw std::bad_alloc(); // the system always has this locale
    }
    ~CCaseTable() { freelocale(locale); }
    CCaseTable(const CCaseTable&) = delete;
    CCaseTable& operator=(const CCaseTable&) = delete;

    char32_t GetLower(char32_t character) const noexcept
    {
        constexpr char32_t OHM_SIGN = 0x2126;
        constexpr char32_t ANGSTROM_SIGN = 0x212B; // signs that look like letters are none
        if (character >= OHM_SIGN && character <= ANGSTROM_SIGN)
            return character;
        return static_cast<char32_t>(towlower_l(static_cast<wint_t>(character), locale));
    }

private:
    locale_t locale;
};

char32_t GetKatakana(char32_t character) noexcept
{
    const bool isHiragana = (character >= 0x3041 && character <= 0x3096) || // small a to small ke
                            character == 0x309D || character == 0x309E;     // the repetition marks
    return isHiragana ? character + 0x60 : character;
}

// The half-width katakana of U+30A1 to U+30F4 in order, by their last two digits; 0 for those without one. A
// voiced one has its mark added, 0x9E or 0x9F.
struct SHalfKatakana
{
    std::uint8_t letter;
    std::uint8_t mark;
};
constexpr SHalfKatakana HALF_KATAKANA[] = {
    {0x67, 0},    {0x71, 0},    {0x68, 0},    {0x72, 0},    {0x69, 0},    {0x73, 0},    {0x6A, 0},
    {0x74, 0},    {0x6B, 0},    {0x75, 0},    {0x76, 0},    {0x76, 0x9E}, {0x77, 0},    {0x77, 0x9E},
    {0x78, 0},    {0x78, 0x9E}, {0x79, 0},    {0x79, 0x9E}, {0x7A, 0},    {0x7A, 0x9E}, {0x7B, 0},
    {0x7B, 0x9E}, {0x7C, 0},    {0x7C, 0x9E}, {0x7D, 0},    {0x7D, 0x9E}, {0x7E, 0},    {0x7E, 0x9E},
    {0x7F, 0},    {0x7F, 0x9E}, {0x80, 0},    {0x80, 0x9E}, {0x81, 0},    {0x81, 0x9E}, {0x6F, 0},
    {0x82, 0},    {0x82, 0x9E}, {0x83, 0},    {0x83, 0x9E}, {0x84, 0},    {0x84, 0x9E}, {0x85, 0},
    {0x86, 0},    {0x87, 0},    {0x88, 0},    {0x89, 0},    {0x8A, 0},    {0x8A, 0x9E}, {0x8A, 0x9F},
    {0x8B, 0},    {0x8B, 0x9E}, {0x8B, 0x9F}, {0x8C, 0},    {0x8C, 0x9E}, {0x8C, 0x9F}, {0x8D, 0},
    {0x8D, 0x9E}, {0x8D, 0x9F}, {0x8E, 0},    {0x8E, 0x9E}, {0x8E, 0x9F}, {0x8F, 0},    {0x90, 0},
    {0x91, 0},    {0x92, 0},    {0x93, 0},    {0x6C, 0},    {0x94, 0},    {0x6D, 0},    {0x95, 0},
    {0x6E, 0},    {0x96, 0},    {0x97, 0},    {0x98, 0},    {0x99, 0},    {0x9A, 0},    {0x9B, 0},
    {0, 0},       {0x9C, 0},    {0, 0},       {0, 0},       {0x66, 0},    {0x9D, 0},    {0x73, 0x9E},
};
static_assert(sizeof HALF_KATAKANA / sizeof HALF_KATAKANA[0] == 0x30F4 - 0x30A1 + 1);

// Neighbours whose half-width forms are neighbours too.
struct SHalfRange
{
    char32_t first;
    char32_t last;
    char32_t half;
};
constexpr SHalfRange HALF_RANGES[] = {
    {0x2190, 0x2193, 0xFFE9}, // arrows
    {0x2502, 0x2502, 0xFFE8}, // vertical line
    {0x25A0, 0x25A0, 0xFFED}, // square
    {0x25CB, 0x25CB, 0xFFEE}, // circle
    {0x3000, 0x3000, 0x0020}, // space
    {0x3001, 0x3001, 0xFF64}, // comma
    {0x3002, 0x3002, 0xFF61}, // full stop
    {0x300C, 0x300D, 0xFF62}, // corner brackets
    {0x3099, 0x309A, 0xFF9E}, // voiced sound marks, combining
    {0x309B, 0x309C, 0xFF9E}, // and by themselves
    {0x30FB, 0x30FB, 0xFF65}, // middle dot
    {0x30FC, 0x30FC, 0xFF70}, // long vowel
    {0x3131, 0x314E, 0xFFA1}, // Hangul
    {0x314F, 0x3154, 0xFFC2}, {0x3155, 0x315A, 0xFFCA}, {0x315B, 0x3160, 0xFFD2},
    {0x3161, 0x3163, 0xFFDA}, {0x3164, 0x3164, 0xFFA0}, {0xFF01, 0xFF3B, 0x0021}, // ASCII up to [
    {0xFF3D, 0xFF5E, 0x005D}, // and from ]: the full-width backslash stays
    {0xFF5F, 0xFF60, 0x2985}, // white parentheses
    {0xFFE0, 0xFFE1, 0x00A2}, // cent, pound
    {0xFFE2, 0xFFE2, 0x00AC}, // not
    {0xFFE3, 0xFFE3, 0x00AF}, // overline
    {0xFFE4, 0xFFE4, 0x00A6}, // broken bar
    {0xFFE5, 0xFFE5, 0x00A5}, // yen
    {0xFFE6, 0xFFE6, 0x20A9}, // won
};

SChars GetHalfWidth(char32_t character) noexcept
{
    constexpr char32_t VOICED_MARK = 0xFF9E;
    if (character >= 0x30A1 && character <= 0x30F4) {
        const SHalfKatakana half = HALF_KATAKANA[character - 0x30A1];
        if (half.letter == 0)
            return {character};
        return {char32_t{0xFF00} + half.letter, half.mark == 0 ? NO_CHAR : char32_t{0xFF00} + half.mark};
    }
    switch (character) {
    case 0x2018: // quotation marks
    case 0x2019:
        return {'\''};
    case 0x201C:
    case 0x201D:
        return {'"'};
    case 0x30F7: // va
        return {0xFF9C, VOICED_MARK};
    case 0x30FA: // vo
        return {0xFF66, VOICED_MARK};
    case 0x30FE: // the voiced repetition mark: there is no half-width one
        return {0x30FD, VOICED_MARK};
    default:
        break;
    }
    for (const SHalfRange& range : HALF_RANGES) {
        if (character >= range.first && character <= range.last)
            return {range.half + (character - range.first)};
    }
    return {character};
}

SChars MapChar(const CCaseTable& cases, char32_t character, DWORD mapFlags)
{
    if ((mapFlags & LCMAP_LOWERCASE) != 0)
        character = cases.GetLower(character);
    if ((mapFlags & LCMAP_KATAKANA) != 0)
        character = GetKatakana(character);
    return (mapFlags & LCMAP_HALFWIDTH) != 0 ? GetHalfWidth(character) : SChars{character};
}

void AppendUTF8(char32_t character, std::string& text)
{
    const auto append = [&text](char32_t byte) {
        text += static_cast<char>(static_cast<unsigned char>(byte));
    };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0 | character >> 6);
        append(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        append(0xE0 | character >> 12);
        append(0x80 | (character >> 6 & 0x3F));
        append(0x80 | (character & 0x3F));
    } else {
        append(0xF0 | character >> 18);
        append(0x80 | (character >> 12 & 0x3F));
        append(0x80 | (character >> 6 & 0x3F));
        append(0x80 | (character & 0x3F));
    }
}

bool IsSurrogate(char32_t character) noexcept
{
    return character >= 0xD800 && character <= 0xDFFF;
}

// What stands in code page 932 for half-width forms that it lacks.
struct SSubstitute
{
    char32_t half;
    const char* bytes;
};
constexpr SSubstitute SUBSTITUTES[] = {
    {0xA2, "\x81\x91"}, {0xA3, "\x81\x92"}, {0xA5, "\\"}, {0xA6, "|"}, {0xAC, "\x81\xCA"}, {0xAF, "\x81\x50"},
};

// A character in code page 932; false if it has none.
bool AppendShiftJIS(char32_t character, std::string& text)
{
    std::string utf8;
    std::string bytes;
    std::size_t errorPos = 0;
    AppendUTF8(character, utf8);
    if (SCCodePageText::Convert(utf8, CP_UTF8, _KANJI_CP, bytes, errorPos) != SCCodePageText::CONVERT_OK)
        return false;
    text += bytes;
    return true;
}

// The character of a code of code page 932; NO_CHAR if it is none.
char32_t GetCharOfShiftJIS(unsigned int code)
{
    const std::string bytes = code < 0x100
                                  ? std::string(1, static_cast<char>(code))
                                  : std::string{static_cast<char>(code >> 8), static_cast<char>(code)};
    std::string utf8;
    std::size_t errorPos = 0;
    if (SCCodePageText::Convert(bytes, _KANJI_CP, CP_UTF8, utf8, errorPos) != SCCodePageText::CONVERT_OK)
        return NO_CHAR;
    const auto byte = [&utf8](std::size_t i) {
        return static_cast<char32_t>(static_cast<unsigned char>(utf8[i]));
    };
    switch (utf8.size()) {
    case 1:
        return byte(0);
    case 2:
        return (byte(0) & 0x1F) << 6 | (byte(1) & 0x3F);
    default: // code page 932 has no more
        return (byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
    }
}

bool IsShiftJISLeadByte(unsigned char byte) noexcept
{
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

std::size_t GetLenOfUTF8(const unsigned char* text, std::size_t count, char32_t& character) noexcept
{
    const unsigned char lead = text[0];
    if (lead < 0x80) {
        character = lead;
        return 1;
    }
    const std::size_t len = lead >= 0xC2 && lead <= 0xDF ? 2 : lead >= 0xE0 && lead <= 0xEF ? 3 : 0;
    character = NO_CHAR;
    if (len == 0 || len > count)
        return 1; // longer ones and bytes that are none stay as they are, byte by byte
    char32_t code = len == 2 ? lead & 0x1Fu : lead & 0x0Fu;
    for (std::size_t i = 1; i < len; ++i) {
        if ((text[i] & 0xC0) != 0x80)
            return 1;
        code = code << 6 | (text[i] & 0x3Fu);
    }
    if ((len == 3 && code < 0x800) || IsSurrogate(code))
        return 1;
    character = code;
    return len;
}

} // namespace

// What a character becomes: up to seven bytes; none for what is no character, NUL among it, which stays.
struct CCharMap::SMapped
{
    std::array<char, 7> bytes;
    std::uint8_t count;

    void Set(const std::string& text)
    {
        count = static_cast<std::uint8_t>(text.size());
        std::memcpy(bytes.data(), text.data(), text.size());
    }
};

CCharMap::CCharMap(int codePage, DWORD mapFlags)
    : isUTF8(codePage == CP_UTF8), entries(std::make_unique<SMapped[]>(CHAR_COUNT))
{
    if (isUTF8)
        MakeUTF8(mapFlags);
    else
        MakeShiftJIS(mapFlags);
}

void CCharMap::MakeShiftJIS(DWORD mapFlags)
{
    const CCaseTable cases;
    for (unsigned int code = 1; code < CHAR_COUNT; ++code) {
        const char32_t character = GetCharOfShiftJIS(code);
        if (character == NO_CHAR)
            continue;
        const SChars mapped = MapChar(cases, character, mapFlags);
        std::string bytes;
        if (!AppendShiftJIS(mapped.first, bytes)) {
            if ((mapFlags & LCMAP_HALFWIDTH) == 0)
                continue; // there is no small letter for it
            bytes = "?";
            for (const SSubstitute& substitute : SUBSTITUTES) {
                if (substitute.half == mapped.first)
                    bytes = substitute.bytes;
            }
        }
        if (mapped.second != NO_CHAR)
            AppendShiftJIS(mapped.second, bytes);
        entries[code].Set(bytes);
    }
}

void CCharMap::MakeUTF8(DWORD mapFlags)
{
    const CCaseTable cases;
    for (char32_t character = 1; character < CHAR_COUNT; ++character) {
        if (IsSurrogate(character))
            continue;
        const SChars mapped = MapChar(cases, character, mapFlags);
        std::string bytes;
        AppendUTF8(mapped.first, bytes);
        if (mapped.second != NO_CHAR)
            AppendUTF8(mapped.second, bytes);
        entries[character].Set(bytes);
    }
}

const CCharMap& CCharMap::Get(int codePage, DWORD mapFlags)
{
    static std::array<std::once_flag, 16> isMade;
    static std::array<std::unique_ptr<const CCharMap>, 16> maps;
    const std::size_t index = (codePage == CP_UTF8 ? std::size_t{8} : std::size_t{0}) |
                              ((mapFlags & LCMAP_HALFWIDTH) != 0 ? std::size_t{1} : std::size_t{0}) |
                              ((mapFlags & LCMAP_KATAKANA) != 0 ? std::size_t{2} : std::size_t{0}) |
                              ((mapFlags & LCMAP_LOWERCASE) != 0 ? std::size_t{4} : std::size_t{0});
    std::call_once(isMade[index], [=] { maps[index].reset(new CCharMap(codePage, mapFlags)); });
    return *maps[index];
}

std::size_t CCharMap::Map(const char* text, std::size_t count, char* mapped, std::size_t room) const noexcept
{
    return isUTF8 ? MapText<true>(text, count, mapped, room) : MapText<false>(text, count, mapped, room);
}

template <bool IS_UTF8>
std::size_t CCharMap::MapText(const char* text, std::size_t count, char* mapped,
                              std::size_t room) const noexcept
{
    std::size_t done = 0;
    std::size_t written = 0;
    std::size_t len = 1;
    while (done < count && written + sizeof(SMapped) <= room) { // a whole entry fits: one copy of fixed size
        const SMapped& entry = Find<IS_UTF8>(text + done, count - done, len);
        if (entry.count != 0) {
            std::memcpy(mapped + written, &entry, sizeof entry);
            written += entry.count;
        } else {
            std::memcpy(mapped + written, text + done, len);
            written += len;
        }
        done += len;
    }
    bool hasRoom = true;
    while (done < count) {
        const SMapped& entry = Find<IS_UTF8>(text + done, count - done, len);
        const char* const bytes = entry.count != 0 ? entry.bytes.data() : text + done;
        const std::size_t byteCount = entry.count != 0 ? entry.count : len;
        hasRoom = hasRoom && written + byteCount <= room;
        if (hasRoom)
            std::memcpy(mapped + written, bytes, byteCount);
        written += byteCount;
        done += len;
    }
    return written;
}

// The entry of the character at `text`, which has `count` bytes left, and its length; what stays as it is has
// one without bytes.
template <bool IS_UTF8>
const CCharMap::SMapped& CCharMap::Find(const char* text, std::size_t count, std::size_t& len) const noexcept
{
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text);
    if constexpr (IS_UTF8) {
        char32_t character = NO_CHAR;
        len = GetLenOfUTF8(bytes, count, character);
        return entries[character];
    } else {
        const bool isDouble = IsShiftJISLeadByte(bytes[0]) && count > 1 && bytes[1] != 0;
        len = isDouble ? 2 : 1;
        return entries[isDouble ? static_cast<std::size_t>(bytes[0]) << 8 | bytes[1] : bytes[0]];
    }
}

#endif
