#include "CAllocFault.h"

#include <atomic>
#include <cstdlib>

namespace NSKZ::Test {

namespace {

thread_local std::size_t countdown = 0; // 0: none is to fail
thread_local bool hasFailed = false;
std::atomic<std::size_t> liveCount{0};

} // namespace

CAllocFault::CAllocFault(std::size_t n) noexcept
{
    countdown = n;
    hasFailed = false;
}

CAllocFault::~CAllocFault()
{
    countdown = 0;
}

bool CAllocFault::HasFailed() const noexcept
{
    return hasFailed;
}

bool CAllocFault::Pass() noexcept
{
    if (countdown == 0 || --countdown != 0)
        return true;
    hasFailed = true;
    return false;
}

std::size_t CAllocFault::GetLiveCount() noexcept
{
    return liveCount;
}

namespace {

void* Allocate(std::size_t size, std::size_t alignment) noexcept
{
    if (!CAllocFault::Pass())
        return nullptr;
    void* const memory = alignment <= alignof(std::max_align_t)
                             ? std::malloc(size == 0 ? 1 : size)
                             : std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
    if (memory != nullptr)
        ++liveCount;
    return memory;
}

void* AllocateOrThrow(std::size_t size, std::size_t alignment)
{
    void* const memory = Allocate(size, alignment);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void Release(void* memory) noexcept
{
    if (memory == nullptr)
        return;
    --liveCount;
    std::free(memory);
}

} // namespace

} // namespace NSKZ::Test

void* operator new(std::size_t size)
{
    return NSKZ::Test::AllocateOrThrow(size, 1);
}
void* operator new[](std::size_t size)
{
    return NSKZ::Test::AllocateOrThrow(size, 1);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return NSKZ::Test::Allocate(size, 1);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return NSKZ::Test::Allocate(size, 1);
}
void* operator new(std::size_t size, std::align_val_t alignment)
{
    return NSKZ::Test::AllocateOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment)
{
    return NSKZ::Test::AllocateOrThrow(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept
{
    NSKZ::Test::Release(memory);
}
void operator delete[](void* memory) noexcept
{
    NSKZ::Test::Release(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    NSKZ::Test::Release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    NSKZ::Test::Release(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    NSKZ::Test::Release(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    NSKZ::Test::Release(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept
{
    NSKZ::Test::Release(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept
{
    NSKZ::Test::Release(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept
{
    NSKZ::Test::Release(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept
{
    NSKZ::Test::Release(memory);
}
