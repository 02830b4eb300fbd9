#ifndef SCCODEPAGETEXT_H
#define SCCODEPAGETEXT_H

#include "KzcPlatform.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace NSKZ::NSKZCore {

// Text of the code pages 932 (_KANJI_CP) and 65001 (CP_UTF8): whether bytes are such text, and its
// conversion.
//
// 932 is what Windows has under this number: 0x5C is the backslash and 0x7E the tilde, the NEC and IBM
// extensions and the user-defined area (U+E000 to U+E757) are part of it, and so are the bytes 0x80, 0xA0,
// 0xFD, 0xFE and 0xFF (U+0080 and U+F8F0 to U+F8F3). Of characters with two codes Windows' choice is the one
// written. UTF-8 is strict: shortest forms only, no surrogates, nothing above U+10FFFF.
//
// A conversion neither replaces nor drops a character: a text goes over whole or not at all. A NUL is a
// character like any other.
//
// All operations may be called on several threads at once. The first one that needs the table of 932 builds
// it (a few milliseconds, a quarter of a megabyte). Every operation throws std::invalid_argument for another
// code page, std::bad_alloc, and std::runtime_error where the system knows nothing of code page 932.
class KZCPLATFORM_API SCCodePageText
{
public:
    SCCodePageText() = delete;

    enum EMthRetOfConvert
    {
        CONVERT_OK = 0,
        CONVERT_INVALID_BYTES = 1, // the bytes are no text of the code page that they come from
        CONVERT_LACKED_CHAR = 2,   // the code page that they go to lacks a character
    };

    // Whether all of `text` is ASCII, and so the same in both code pages.
    static bool IsASCII(std::string_view text) noexcept;

    // Whether `text` is text of the code page. If not, `errorPos` becomes the position of the first byte of
    // what is no character; a character that breaks off at the end of the text is none. Else it is left
    // untouched. Cost: linear; a run of ASCII takes a fraction of a nanosecond a byte.
    static bool IsValid(std::string_view text, int codePage, std::size_t& errorPos);

    // Writes `text`, which is in code page `from`, to `converted` in code page `to`; what `converted` held is
    // overwritten and its memory used again. If it fails, `errorPos` becomes the position in `text` of the
    // first character that does not go over, and `converted` is empty; else `errorPos` is left untouched.
    // `converted` is not the text's own memory.
    static EMthRetOfConvert Convert(std::string_view text, int from, int to, std::string& converted,
                                    std::size_t& errorPos);
};

} // namespace NSKZ::NSKZCore

#endif
