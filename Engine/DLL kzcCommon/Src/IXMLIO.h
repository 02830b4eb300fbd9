#ifndef IXMLIO_H
#define IXMLIO_H

#include "KzcCommonAPI.h"

namespace NSKZ::NSKZCore {

// What reading and writing XML have in common.
class IXMLIO
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
};

} // namespace NSKZ::NSKZCore

#endif
