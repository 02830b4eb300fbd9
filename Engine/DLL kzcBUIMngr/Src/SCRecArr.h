#ifndef SCRECARR_H
#define SCRECARR_H

#include "KzcPlatform.h"

#include <algorithm>
#include <memory>

namespace NSKZ::NSKZCore {

// Record lists that own their memory.
class SCRecArr
{
public:
    SCRecArr() = delete;

    // A list of its own of exactly the `count` records, which may be kept for long; null for no list.
    static std::unique_ptr<DWORD[]> CopyOf(const DWORD* recs, DWORD count)
    {
        if (recs == nullptr)
            return nullptr;
        std::unique_ptr<DWORD[]> copy(new DWORD[count]);
        std::copy_n(recs, count, copy.get());
        return copy;
    }
};

} // namespace NSKZ::NSKZCore

#endif
