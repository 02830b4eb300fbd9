#include "CFormattedMsg.h"

#include <charconv>
#include <cstdint>
#include <system_error>

namespace NSKZ::NSKZCore {

CFormattedMsg::CFormattedMsg(const char* format, std::initializer_list<DWORD> ids) noexcept
{
    char* out = text.data();
    char* const last = out + text.size() - 1; // kept for the NUL
    const DWORD* nextID = ids.begin();
    // '%' is no byte of a double-byte character of Shift-JIS, so the text is read byte by byte.
    while (*format != '\0' && out != last) {
        if (format[0] == '%' && format[1] == 'd' && nextID != ids.end()) {
            const auto result = std::to_chars(out, last, static_cast<std::int32_t>(*nextID));
            if (result.ec != std::errc())
                break;
            out = result.ptr;
            ++nextID;
            format += 2;
        } else {
            *out++ = *format++;
        }
    }
    *out = '\0';
}

} // namespace NSKZ::NSKZCore
