#ifndef CTEXTARENA_H
#define CTEXTARENA_H

#include <cstddef>
#include <memory>
#include <vector>

namespace NSKZ::NSKZCore {

// Keeps copies of texts in a few large blocks. A copy stays where it is until Clear or the end of the arena.
class CTextArena
{
public:
    CTextArena() noexcept = default;
    CTextArena(CTextArena&& other) noexcept;
    CTextArena& operator=(CTextArena&& other) noexcept;

    // The copy of `text`; null for null. If memory is exhausted nothing changes.
    const char* Add(const char* text);
    void Clear() noexcept;

private:
    std::vector<std::unique_ptr<char[]>> blocks;
    char* next = nullptr;
    std::size_t room = 0;
};

} // namespace NSKZ::NSKZCore

#endif
