#include "IXMLIO.h"

#include <cstring>

namespace NSKZ::NSKZCore {

bool IXMLIO::IsSameText(const char* text, DWORD len, const char* other, DWORD otherLen) noexcept
{
    return len == otherLen && (len == 0 || std::memcmp(text, other, len) == 0);
}

} // namespace NSKZ::NSKZCore
