#include "Support/CAllocFault.h"

#include "SCMemory.h"

#include <algorithm>
#include <cstdlib>

namespace {

using NSKZ::NSKZCore::SCMemory;

thread_local std::size_t allocCount = 0;
thread_local std::size_t failingAlloc = 0; // 0: none
thread_local bool failsOn = false;         // all behind it fail too
thread_local bool hasFailed = false;
thread_local std::size_t largestSize = 0;
thread_local std::ptrdiff_t liveBlockCount = 0;

bool IsToFail(std::size_t size) noexcept
{
    ++allocCount;
    largestSize = std::max(largestSize, size);
    const bool isBehind = failsOn && failingAlloc != 0 && allocCount > failingAlloc;
    if (allocCount != failingAlloc && !isBehind)
        return false;
    hasFailed = true;
    return true;
}

void* AllocateBlock(std::size_t size) noexcept
{
    if (IsToFail(size))
        return nullptr;
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block != nullptr)
        ++liveBlockCount;
    return block;
}

void* AllocateAlignedBlock(std::size_t size, std::size_t alignment) noexcept
{
    if (IsToFail(size))
        return nullptr;
    void* const block = std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
    if (block != nullptr)
        ++liveBlockCount;
    return block;
}

void* ReallocateBlock(void* block, std::size_t size) noexcept
{
    return IsToFail(size) ? nullptr : std::realloc(block, size);
}

void ReleaseBlock(void* block) noexcept
{
    if (block != nullptr)
        --liveBlockCount;
    std::free(block);
}

void* OrThrow(void* block)
{
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

SCMemory::SHooks hooksBefore;

} // namespace

void* operator new(std::size_t size)
{
    return OrThrow(AllocateBlock(size));
}
void* operator new[](std::size_t size)
{
    return OrThrow(AllocateBlock(size));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return AllocateBlock(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return AllocateBlock(size);
}
void* operator new(std::size_t size, std::align_val_t alignment)
{
    return OrThrow(AllocateAlignedBlock(size, static_cast<std::size_t>(alignment)));
}
void* operator new[](std::size_t size, std::align_val_t alignment)
{
    return OrThrow(AllocateAlignedBlock(size, static_cast<std::size_t>(alignment)));
}
void operator delete(void* block) noexcept
{
    ReleaseBlock(block);
}
void operator delete[](void* block) noexcept
{
    ReleaseBlock(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    ReleaseBlock(block);
}
void operator delete[](void* block, std::size_t) noexcept
{
    ReleaseBlock(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept
{
    ReleaseBlock(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept
{
    ReleaseBlock(block);
}
void operator delete(void* block, std::align_val_t) noexcept
{
    ReleaseBlock(block);
}
void operator delete[](void* block, std::align_val_t) noexcept
{
    ReleaseBlock(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept
{
    ReleaseBlock(block);
}
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept
{
    ReleaseBlock(block);
}

namespace NSKZ::NSKZCore {

CAllocFault::CAllocFault() noexcept
{
    hooksBefore = SCMemory::SetHooks({AllocateBlock, ReallocateBlock, ReleaseBlock});
    allocCount = 0;
    largestSize = 0;
    liveBlockCount = 0;
}

CAllocFault::~CAllocFault()
{
    Disarm();
    SCMemory::SetHooks(hooksBefore);
}

void CAllocFault::Arm(std::size_t nth) noexcept
{
    failsOn = false;
    allocCount = 0;
    largestSize = 0;
    hasFailed = false;
    failingAlloc = nth;
}

void CAllocFault::ArmFrom(std::size_t nth) noexcept
{
    Arm(nth);
    failsOn = true;
}

bool CAllocFault::Disarm() noexcept
{
    failingAlloc = 0;
    return hasFailed;
}

std::size_t CAllocFault::GetAllocCount() const noexcept
{
    return allocCount;
}

std::size_t CAllocFault::GetLargestSize() const noexcept
{
    return largestSize;
}

std::ptrdiff_t CAllocFault::GetLiveBlockCount() const noexcept
{
    return liveBlockCount;
}

} // namespace NSKZ::NSKZCore
