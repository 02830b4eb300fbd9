#ifndef IXMLIO_H
#define IXMLIO_H

#include "KzcCommonAPI.h"

namespace NSKZ::NSKZCore {

// What reading and writing XML have in common.
class KZCCOMMON_API IXMLIO
{
public:
    // An attribute of an element. The texts are borrowed, in the host's code page, and need no NUL.
    struct SAttribute
    {
        const char* name = nullptr;
        DWORD nameLen = 0;
        const char* value = nullptr;
        DWORD valueLen = 0;
    };

    // The deepest element that is read or written, the root being at depth 1: no document can make whoever
    // walks it need more than that.
    static constexpr DWORD MAX_DEPTH = 256;
    // The longest tag that is read or written, in bytes of the file.
    static constexpr DWORD MAX_TAG_SIZE = 32 * 1024 * 1024;

    // Whether two texts have the same bytes. A text may be null where its length is 0.
    static bool IsSameText(const char* text, DWORD len, const char* other, DWORD otherLen) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
