#ifndef SCMEMORY_H
#define SCMEMORY_H

#include <cstddef>

namespace NSKZ::NSKZCore {

// Memory of the engine's resizable arrays. It comes from the C heap, whose blocks can grow in place; whatever
// wants to watch these blocks, or to let the heap run dry, puts functions of its own in between.
class SCMemory
{
public:
    SCMemory() = delete;

    // Functions in the manner of std::malloc, std::realloc and std::free. They are never asked for 0 bytes.
    struct SHooks
    {
        void* (*allocate)(std::size_t size);
        void* (*reallocate)(void* block, std::size_t size);
        void (*release)(void* block);
    };

    // Puts `hooks` in force for all threads and returns those that were. Blocks made before must be
    // understood by the new ones too. No other operation may run meanwhile.
    static SHooks SetHooks(const SHooks& hooks) noexcept;

    // A block of `size` bytes; null for 0. Throws std::bad_alloc on exhaustion.
    static void* Allocate(std::size_t size);

    // Makes a block `size` bytes long, keeping what fits of its content, and returns where it now is. A size
    // of 0 releases it and gives null; a null block is allocated. Throws std::bad_alloc on exhaustion, with
    // the block as it was.
    static void* Reallocate(void* block, std::size_t size);

    // Releases a block; null is allowed.
    static void Release(void* block) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
