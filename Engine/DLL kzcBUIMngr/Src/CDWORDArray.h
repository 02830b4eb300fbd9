#ifndef CDWORDARRAY_H
#define CDWORDARRAY_H

#include "KzcPlatform.h"

#include <cstdint>

namespace NSKZ::NSKZCore {

// Owns an array of DWORD exactly as long as asked for, which grows and shrinks by reallocation: no room is
// held in reserve, and cells that are not written are not touched. Two words an array.
class CDWORDArray
{
public:
    CDWORDArray() noexcept = default;
    // `newCount` cells that hold anything. Throws std::bad_alloc on exhaustion or above 4294967295 cells.
    explicit CDWORDArray(std::uint64_t newCount) { Resize(newCount); }
    CDWORDArray(CDWORDArray&& other) noexcept;
    CDWORDArray& operator=(CDWORDArray&& other) noexcept; // swaps the two
    ~CDWORDArray();

    // A copy of the cells; throws as above.
    CDWORDArray Clone() const;

    DWORD GetCount() const noexcept { return count; }

    // The cells; null for none. A change of the length moves them.
    DWORD* GetData() noexcept { return data; }
    const DWORD* GetData() const noexcept { return data; }

    // Makes the array `newCount` cells long; new cells hold anything. Throws std::bad_alloc on exhaustion,
    // which growing and shrinking alike can meet, or above 4294967295 cells; the array is then as it was.
    void Resize(std::uint64_t newCount);

    // Drops the cells from `newCount`, which is not above the count, on. Where the heap cannot shrink the
    // block, its tail stays allocated unused.
    void Shrink(DWORD newCount) noexcept;

private:
    DWORD* data = nullptr;
    DWORD count = 0;
};

} // namespace NSKZ::NSKZCore

#endif
