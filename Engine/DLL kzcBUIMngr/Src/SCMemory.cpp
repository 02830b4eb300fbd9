#include "SCMemory.h"

#include <cstdlib>
#include <new>
#include <utility>

namespace NSKZ::NSKZCore {

namespace {

SCMemory::SHooks hooksInForce = {std::malloc, std::realloc, std::free};

} // namespace

SCMemory::SHooks SCMemory::SetHooks(const SHooks& hooks) noexcept
{
    return std::exchange(hooksInForce, hooks);
}

void* SCMemory::Allocate(std::size_t size)
{
    return Reallocate(nullptr, size);
}

void* SCMemory::Reallocate(void* block, std::size_t size)
{
    if (size == 0) {
        Release(block);
        return nullptr;
    }
    void* const moved = block == nullptr ? hooksInForce.allocate(size) : hooksInForce.reallocate(block, size);
    if (moved == nullptr)
        throw std::bad_alloc();
    return moved;
}

void SCMemory::Release(void* block) noexcept
{
    if (block != nullptr)
        hooksInForce.release(block);
}

} // namespace NSKZ::NSKZCore
