#ifndef SCFNV1A_H
#define SCFNV1A_H

#include "KzcPlatform.h"

#include <cstdint>

namespace NSKZ::NSKZCore {

// The hash of the registries: FNV-1a in its 64-bit form.
class SCFnv1a
{
public:
    SCFnv1a() = delete;

    // Of the bytes of `text` before its NUL; null hashes to 0.
    static std::uint64_t OfText(const char* text) noexcept
    {
        if (text == nullptr)
            return 0;
        std::uint64_t hash = OFFSET_BASIS;
        for (; *text != '\0'; ++text)
            hash = (hash ^ static_cast<unsigned char>(*text)) * PRIME;
        return hash;
    }

    // Of the four bytes of `id`, the lowest first.
    static std::uint64_t OfID(DWORD id) noexcept
    {
        std::uint64_t hash = OFFSET_BASIS;
        for (int shift = 0; shift < 32; shift += 8)
            hash = (hash ^ (id >> shift & 0xFF)) * PRIME;
        return hash;
    }

private:
    static constexpr std::uint64_t OFFSET_BASIS = 14695981039346656037ULL;
    static constexpr std::uint64_t PRIME = 1099511628211ULL;
};

} // namespace NSKZ::NSKZCore

#endif
