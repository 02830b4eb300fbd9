#ifndef SCHOSTTEXT_H
#define SCHOSTTEXT_H

#include <string>
#include <string_view>

namespace NSKZ::Host {

// Between the host, which speaks UTF-8, and the engine, which speaks the code page in force.
class SCHostText
{
public:
    SCHostText() = delete;

    // Engine text in UTF-8; null becomes the empty text. Bytes that are no text are shown as "?".
    static std::string FromEngine(const char* text);
    // Text of an engine exception, which is Shift-JIS whatever the code page.
    static std::string FromException(const char* text);
    // False, with `converted` empty, where the code page lacks a character of `text` or `text` is no UTF-8.
    static bool IntoEngine(std::string_view text, std::string& converted);
    static bool IsUTF8(std::string_view text);
    static bool IsShiftJIS(std::string_view text);
};

} // namespace NSKZ::Host

#endif
