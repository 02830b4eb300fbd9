#ifndef TESTTEXT_H
#define TESTTEXT_H

#include "SCCodePageText.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace NSKZ::Test {

// The bytes of a readable text.
inline std::string UTF8(std::u8string_view text)
{
    return std::string(text.begin(), text.end());
}

inline std::string ConvertOrThrow(std::string_view text, int from, int to)
{
    std::string converted;
    std::size_t errorPos = 0;
    if (NSKZCore::SCCodePageText::Convert(text, from, to, converted, errorPos) !=
        NSKZCore::SCCodePageText::CONVERT_OK)
        throw std::invalid_argument("not convertible");
    return converted;
}

// The Shift-JIS bytes of a readable text.
inline std::string SJIS(std::u8string_view text)
{
    return ConvertOrThrow(UTF8(text), CP_UTF8, _KANJI_CP);
}

// What Shift-JIS bytes read as, in UTF-8.
inline std::string FromSJIS(std::string_view bytes)
{
    return ConvertOrThrow(bytes, _KANJI_CP, CP_UTF8);
}

// Sets a code page until the end of its scope.
class CCodePageScope
{
public:
    explicit CCodePageScope(int codePage) : former(_getmbcp()) { _setmbcp(codePage); }
    ~CCodePageScope() { _setmbcp(former); }
    CCodePageScope(const CCodePageScope&) = delete;
    CCodePageScope& operator=(const CCodePageScope&) = delete;

private:
    int former;
};

} // namespace NSKZ::Test

#endif
