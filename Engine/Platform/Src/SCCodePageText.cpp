#include "SCCodePageText.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>
#include <vector>

#if !defined(_WIN32)
#include <cerrno>
#include <iconv.h>
#endif

namespace NSKZ::NSKZCore {

namespace {

constexpr char32_t NO_CHAR = 0xFFFFFFFF;

bool IsLeadByte(unsigned char byte) noexcept
{
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

bool IsTrailByte(unsigned char byte) noexcept
{
    return byte >= 0x40 && byte <= 0xFC && byte != 0x7F;
}

#if defined(_WIN32)

// The system's own conversion, a character at a time.
class CSystemConverter
{
public:
    // The character of one or two bytes in 932; NO_CHAR if they are none.
    char32_t Decode(const char* bytes, std::size_t count)
    {
        wchar_t decoded[2];
        const int len =
            MultiByteToWideChar(_KANJI_CP, MB_ERR_INVALID_CHARS, bytes, static_cast<int>(count), decoded, 2);
        return len == 1 ? static_cast<char32_t>(decoded[0]) : NO_CHAR;
    }

    // The code in 932, below 0x100 if it is one byte, of a character that Decode has given.
    unsigned int Encode(char32_t character)
    {
        const wchar_t wide = static_cast<wchar_t>(character);
        char bytes[2];
        const int len = WideCharToMultiByte(_KANJI_CP, 0, &wide, 1, bytes, 2, nullptr, nullptr);
        const unsigned int first = static_cast<unsigned char>(bytes[0]);
        return len == 2 ? first << 8 | static_cast<unsigned char>(bytes[1]) : first;
    }
};

#else

class CSystemConverter
{
public:
    CSystemConverter() : decoder("UTF-16BE", "CP932"), encoder("CP932", "UTF-16BE") {}

    char32_t Decode(const char* bytes, std::size_t count)
    {
        char decoded[8];
        return decoder.Convert(bytes, count, decoded) == 2 ? GetCode(decoded, 2) : NO_CHAR;
    }

    unsigned int Encode(char32_t character)
    {
        const char utf16[2] = {static_cast<char>(character >> 8), static_cast<char>(character & 0xFF)};
        char bytes[8];
        return GetCode(bytes, encoder.Convert(utf16, 2, bytes));
    }

private:
    class CIconv
    {
    public:
        CIconv(const char* to, const char* from) : handle(iconv_open(to, from))
        {
            if (handle == reinterpret_cast<iconv_t>(-1)) {
                if (errno == ENOMEM)
                    throw std::bad_alloc();
                throw std::runtime_error("The system has no converter for code page 932.");
            }
        }
        ~CIconv() { iconv_close(handle); }
        CIconv(const CIconv&) = delete;
        CIconv& operator=(const CIconv&) = delete;

        // The bytes written to `to`, which has room for 8; 0 if `from` is not exactly one or more characters.
        std::size_t Convert(const char* from, std::size_t count, char* to)
        {
            char* input = const_cast<char*>(from); // iconv does not write to it
            char* output = to;
            std::size_t room = 8;
            iconv(handle, nullptr, nullptr, nullptr, nullptr);
            if (iconv(handle, &input, &count, &output, &room) != 0 || count != 0)
                return 0;
            return 8 - room;
        }

    private:
        iconv_t handle;
    };

    static unsigned int GetCode(const char* bytes, std::size_t count) noexcept
    {
        unsigned int code = 0;
        for (std::size_t i = 0; i < count; ++i)
            code = code << 8 | static_cast<unsigned char>(bytes[i]);
        return code;
    }

    CIconv decoder;
    CIconv encoder;
};

#endif

// Code page 932, both ways. All its characters lie below U+10000.
class CShiftJISTable
{
public:
    CShiftJISTable() : charOfCode(CODE_COUNT, NO_ENTRY), codeOfChar(CODE_COUNT, NO_ENTRY)
    {
        CSystemConverter system;
        for (unsigned int byte = 1; byte < 0x100; ++byte) {
            const char bytes[1] = {static_cast<char>(byte)};
            if (!IsLeadByte(static_cast<unsigned char>(byte)))
                Enter(system, byte, system.Decode(bytes, 1));
        }
        for (const SByteAndChar& added : BYTES_OF_WINDOWS_ALONE)
            Enter(system, added.byte, added.character);
        for (unsigned int lead = 0x81; lead <= 0xFC; ++lead) {
            for (unsigned int trail = 0x40; IsLeadByte(static_cast<unsigned char>(lead)) && trail <= 0xFC;
                 ++trail) {
                const char bytes[2] = {static_cast<char>(lead), static_cast<char>(trail)};
                if (IsTrailByte(static_cast<unsigned char>(trail)))
                    Enter(system, lead << 8 | trail, system.Decode(bytes, 2));
            }
        }
    }

    // `code` is below 0x100 for a byte alone. 0 for what is no character: NUL itself is not looked up here.
    unsigned int GetChar(unsigned int code) const noexcept { return charOfCode[code]; }
    unsigned int GetCode(unsigned int character) const noexcept { return codeOfChar[character]; }

private:
    static constexpr std::size_t CODE_COUNT = 0x10000;
    static constexpr std::uint16_t NO_ENTRY = 0;

    struct SByteAndChar
    {
        unsigned int byte;
        char32_t character;
    };
    // What Windows reads and other systems' converters for 932 leave out.
    static constexpr std::array<SByteAndChar, 5> BYTES_OF_WINDOWS_ALONE = {
        {{0x80, 0x80}, {0xA0, 0xF8F0}, {0xFD, 0xF8F1}, {0xFE, 0xF8F2}, {0xFF, 0xF8F3}}};

    void Enter(CSystemConverter& system, unsigned int code, char32_t character)
    {
        if (character >= CODE_COUNT)
            return;
        charOfCode[code] = static_cast<std::uint16_t>(character);
        // Of a character with two codes the one is kept that the system writes.
        std::uint16_t& kept = codeOfChar[character];
        if (kept == NO_ENTRY || system.Encode(character) == code)
            kept = static_cast<std::uint16_t>(code);
    }

    std::vector<std::uint16_t> charOfCode;
    std::vector<std::uint16_t> codeOfChar;
};

const CShiftJISTable& GetShiftJISTable()
{
    static const CShiftJISTable table;
    return table;
}

// The bytes of ASCII at the start of the text.
std::size_t CountASCII(const char* text, std::size_t len) noexcept
{
    constexpr std::uint64_t HIGH_BITS = 0x8080808080808080;
    std::size_t pos = 0;
    for (; len - pos >= 32; pos += 32) {
        std::uint64_t words[4];
        std::memcpy(words, text + pos, sizeof words);
        if (((words[0] | words[1] | words[2] | words[3]) & HIGH_BITS) != 0)
            break;
    }
    while (pos < len && static_cast<unsigned char>(text[pos]) < 0x80)
        ++pos;
    return pos;
}

struct SDecoded
{
    char32_t character; // NO_CHAR if the bytes are none
    std::size_t len;
};

// Reads the character at the start of a text that does not begin with ASCII.
class CUTF8Decoder
{
public:
    SDecoded operator()(const char* text, std::size_t len) const noexcept
    {
        constexpr SDecoded INVALID = {NO_CHAR, 0};
        const auto byteAt = [text](std::size_t pos) {
            return static_cast<unsigned int>(static_cast<unsigned char>(text[pos]));
        };
        const unsigned int first = byteAt(0);
        const std::size_t count = first < 0xC2   ? 0
                                  : first < 0xE0 ? 2
                                  : first < 0xF0 ? 3
                                  : first < 0xF5 ? 4
                                                 : 0;
        if (count == 0 || count > len)
            return INVALID;
        char32_t character = first & (0x7Fu >> count);
        for (std::size_t pos = 1; pos < count; ++pos) {
            if ((byteAt(pos) & 0xC0) != 0x80)
                return INVALID;
            character = character << 6 | (byteAt(pos) & 0x3F);
        }
        const bool tooLong = (count == 3 && character < 0x800) || (count == 4 && character < 0x10000);
        const bool surrogate = character >= 0xD800 && character < 0xE000;
        if (tooLong || surrogate || character > 0x10FFFF)
            return INVALID;
        return {character, count};
    }
};

class CShiftJISDecoder
{
public:
    CShiftJISDecoder() : table(GetShiftJISTable()) {}

    SDecoded operator()(const char* text, std::size_t len) const noexcept
    {
        unsigned int code = static_cast<unsigned char>(text[0]);
        std::size_t count = 1;
        if (IsLeadByte(static_cast<unsigned char>(code))) {
            if (len < 2)
                return {NO_CHAR, 0};
            code = code << 8 | static_cast<unsigned char>(text[1]);
            count = 2;
        }
        const unsigned int character = table.GetChar(code);
        return {character == 0 ? NO_CHAR : static_cast<char32_t>(character), count};
    }

private:
    const CShiftJISTable& table;
};

// Append a character that is not ASCII; false if the code page lacks it.
class CUTF8Encoder
{
public:
    bool operator()(char32_t character, std::string& text) const
    {
        const auto continuation = [character](int shift) {
            return static_cast<char>(0x80 | (character >> shift & 0x3F));
        };
        if (character < 0x800) {
            const char bytes[2] = {static_cast<char>(0xC0 | character >> 6), continuation(0)};
            text.append(bytes, sizeof bytes);
        } else if (character < 0x10000) {
            const char bytes[3] = {static_cast<char>(0xE0 | character >> 12), continuation(6),
                                   continuation(0)};
            text.append(bytes, sizeof bytes);
        } else {
            const char bytes[4] = {static_cast<char>(0xF0 | character >> 18), continuation(12),
                                   continuation(6), continuation(0)};
            text.append(bytes, sizeof bytes);
        }
        return true;
    }
};

class CShiftJISEncoder
{
public:
    CShiftJISEncoder() : table(GetShiftJISTable()) {}

    bool operator()(char32_t character, std::string& text) const
    {
        const unsigned int code =
            character < 0x10000 ? table.GetCode(static_cast<unsigned int>(character)) : 0;
        if (code == 0)
            return false;
        if (code >= 0x100)
            text.push_back(static_cast<char>(code >> 8));
        text.push_back(static_cast<char>(code & 0xFF));
        return true;
    }

private:
    const CShiftJISTable& table;
};

template <typename TDecoder>
bool IsValidBy(const TDecoder& decode, std::string_view text, std::size_t& errorPos)
{
    std::size_t pos = 0;
    while (pos < text.size()) {
        if (static_cast<unsigned char>(text[pos]) < 0x80) {
            pos += CountASCII(text.data() + pos, text.size() - pos);
            continue;
        }
        const SDecoded decoded = decode(text.data() + pos, text.size() - pos);
        if (decoded.character == NO_CHAR) {
            errorPos = pos;
            return false;
        }
        pos += decoded.len;
    }
    return true;
}

template <typename TDecoder, typename TEncoder>
SCCodePageText::EMthRetOfConvert ConvertBy(const TDecoder& decode, const TEncoder& encode,
                                           std::string_view text, std::string& converted,
                                           std::size_t& errorPos)
{
    std::size_t pos = 0;
    while (pos < text.size()) {
        if (static_cast<unsigned char>(text[pos]) < 0x80) {
            const std::size_t count = CountASCII(text.data() + pos, text.size() - pos);
            converted.append(text, pos, count);
            pos += count;
            continue;
        }
        const SDecoded decoded = decode(text.data() + pos, text.size() - pos);
        const bool valid = decoded.character != NO_CHAR;
        if (!valid || !encode(decoded.character, converted)) {
            converted.clear();
            errorPos = pos;
            return valid ? SCCodePageText::CONVERT_LACKED_CHAR : SCCodePageText::CONVERT_INVALID_BYTES;
        }
        pos += decoded.len;
    }
    return SCCodePageText::CONVERT_OK;
}

// True for UTF-8, false for 932.
bool IsUTF8(int codePage)
{
    if (codePage != _KANJI_CP && codePage != CP_UTF8)
        throw std::invalid_argument("SCCodePageText: code page " + std::to_string(codePage) +
                                    " is not 932 or 65001");
    return codePage == CP_UTF8;
}

} // namespace

bool SCCodePageText::IsASCII(std::string_view text) noexcept
{
    return CountASCII(text.data(), text.size()) == text.size();
}

bool SCCodePageText::IsValid(std::string_view text, int codePage, std::size_t& errorPos)
{
    return IsUTF8(codePage) ? IsValidBy(CUTF8Decoder(), text, errorPos)
                            : IsValidBy(CShiftJISDecoder(), text, errorPos);
}

SCCodePageText::EMthRetOfConvert SCCodePageText::Convert(std::string_view text, int from, int to,
                                                         std::string& converted, std::size_t& errorPos)
{
    const bool fromUTF8 = IsUTF8(from);
    const bool toUTF8 = IsUTF8(to);
    converted.clear();
    if (fromUTF8 == toUTF8) {
        if (!IsValid(text, from, errorPos))
            return CONVERT_INVALID_BYTES;
        converted.assign(text);
        return CONVERT_OK;
    }
    return fromUTF8 ? ConvertBy(CUTF8Decoder(), CShiftJISEncoder(), text, converted, errorPos)
                    : ConvertBy(CShiftJISDecoder(), CUTF8Encoder(), text, converted, errorPos);
}

} // namespace NSKZ::NSKZCore
