#include "SCHostText.h"

#include "SCCodePageText.h"

namespace NSKZ::Host {

namespace {

using NSKZCore::SCCodePageText;

std::string IntoUTF8(const char* text, int codePage)
{
    if (text == nullptr)
        return {};
    std::string_view rest = text;
    std::string part;
    std::string whole;
    for (std::size_t errorPos = 0;;) {
        if (SCCodePageText::Convert(rest, codePage, CP_UTF8, part, errorPos) == SCCodePageText::CONVERT_OK)
            return whole + part;
        SCCodePageText::Convert(rest.substr(0, errorPos), codePage, CP_UTF8, part, errorPos);
        whole += part + "?";
        rest.remove_prefix(errorPos + 1);
    }
}

} // namespace

std::string SCHostText::FromEngine(const char* text)
{
    return IntoUTF8(text, _getmbcp());
}

std::string SCHostText::FromException(const char* text)
{
    return IntoUTF8(text, _KANJI_CP);
}

bool SCHostText::IntoEngine(std::string_view text, std::string& converted)
{
    std::size_t errorPos = 0;
    return SCCodePageText::Convert(text, CP_UTF8, _getmbcp(), converted, errorPos) ==
           SCCodePageText::CONVERT_OK;
}

bool SCHostText::IsUTF8(std::string_view text)
{
    std::size_t errorPos = 0;
    return SCCodePageText::IsValid(text, CP_UTF8, errorPos);
}

bool SCHostText::IsShiftJIS(std::string_view text)
{
    std::size_t errorPos = 0;
    return SCCodePageText::IsValid(text, _KANJI_CP, errorPos);
}

} // namespace NSKZ::Host
