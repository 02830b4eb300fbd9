#include "CDWORDArray.h"

#include "SCMemory.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace NSKZ::NSKZCore {

CDWORDArray::CDWORDArray(CDWORDArray&& other) noexcept
    : data(std::exchange(other.data, nullptr)), count(std::exchange(other.count, 0))
{}

CDWORDArray& CDWORDArray::operator=(CDWORDArray&& other) noexcept
{
    std::swap(data, other.data);
    std::swap(count, other.count);
    return *this;
}

CDWORDArray::~CDWORDArray()
{
    SCMemory::Release(data);
}

CDWORDArray CDWORDArray::Clone() const
{
    CDWORDArray copy(count);
    std::copy_n(data, count, copy.data);
    return copy;
}

void CDWORDArray::Resize(std::uint64_t newCount)
{
    constexpr std::uint64_t maxCount = std::min<std::uint64_t>(
        std::numeric_limits<DWORD>::max(), std::numeric_limits<std::size_t>::max() / sizeof(DWORD));
    if (newCount > maxCount)
        throw std::bad_alloc();
    data =
        static_cast<DWORD*>(SCMemory::Reallocate(data, static_cast<std::size_t>(newCount) * sizeof(DWORD)));
    count = static_cast<DWORD>(newCount);
}

void CDWORDArray::Shrink(DWORD newCount) noexcept
{
    try {
        Resize(newCount);
    } catch (const std::bad_alloc&) {
        count = newCount; // the block is longer than needed, which does no harm
    }
}

} // namespace NSKZ::NSKZCore
