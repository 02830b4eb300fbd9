#include "CFldValueList.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace NSKZ::NSKZCore {

CFldValueList::CFldValueList(const CFldValueList& other)
    : bytes(std::make_unique_for_overwrite<char[]>(other.byteCount)), byteCount(other.byteCount),
      byteCapacity(other.byteCount), lengths(other.lengths), starts(other.starts)
{
    if (byteCount != 0)
        std::memcpy(bytes.get(), other.bytes.get(), byteCount);
}

CFldValueList::CFldValueList(CFldValueList&& other) noexcept
{
    Swap(other);
}

CFldValueList& CFldValueList::operator=(CFldValueList other) noexcept
{
    Swap(other);
    return *this;
}

void CFldValueList::Swap(CFldValueList& other) noexcept
{
    bytes.swap(other.bytes);
    std::swap(byteCount, other.byteCount);
    std::swap(byteCapacity, other.byteCapacity);
    lengths.swap(other.lengths);
    starts.swap(other.starts);
}

bool CFldValueList::Append(std::string_view value)
{
    if (value.size() > MAX_VALUE_LEN || lengths.size() >= MAX_COUNT ||
        value.find('\0') != std::string_view::npos)
        return false;
    AppendProved(value);
    return true;
}

void CFldValueList::AppendProved(std::string_view value)
{
    MakeRoomForValues(1);
    // Held until the value, which may lie in it, has been copied.
    const std::unique_ptr<char[]> former = MakeRoomForBytes(value.size() + 1);
    if (!value.empty())
        std::memcpy(bytes.get() + byteCount, value.data(), value.size());
    bytes[byteCount + value.size()] = '\0';
    if (lengths.size() % START_DISTANCE == 0)
        starts.push_back(byteCount);
    lengths.push_back(static_cast<unsigned short>(value.size()));
    byteCount += value.size() + 1;
}

void CFldValueList::AppendStretch(const CFldValueList& other, DWORD first, DWORD count)
{
    if (count == 0)
        return;
    const std::size_t start = other.GetStart(first);
    const std::size_t size = other.GetStart(first + count) - start;
    MakeRoomForValues(count);
    const std::unique_ptr<char[]> former = MakeRoomForBytes(size);
    std::memcpy(bytes.get() + byteCount, other.bytes.get() + start, size);
    for (DWORD pos = first; pos < first + count; ++pos) {
        if (lengths.size() % START_DISTANCE == 0)
            starts.push_back(byteCount);
        const unsigned short length = other.lengths[pos];
        lengths.push_back(length);
        byteCount += length + std::size_t{1};
    }
}

void CFldValueList::ShrinkToFit()
{
    if (byteCapacity == byteCount && lengths.capacity() == lengths.size())
        return;
    CFldValueList(*this).Swap(*this);
}

std::string_view CFldValueList::GetValue(DWORD pos) const noexcept
{
    return {bytes.get() + GetStart(pos), lengths[pos]};
}

unsigned long long CFldValueList::GetSize(DWORD first, DWORD count) const noexcept
{
    return count == 0 ? 0 : GetStart(first + count) - GetStart(first);
}

bool CFldValueList::EqualsStretch(DWORD first, const CFldValueList& other, DWORD otherFirst,
                                  DWORD count) const noexcept
{
    if (count == 0)
        return true;
    // No value holds a NUL, and each ends with one: equal bytes are equal values.
    const std::size_t start = GetStart(first);
    const std::size_t otherStart = other.GetStart(otherFirst);
    const std::size_t size = GetStart(first + count) - start;
    return size == other.GetStart(otherFirst + count) - otherStart &&
           std::memcmp(bytes.get() + start, other.bytes.get() + otherStart, size) == 0;
}

void CFldValueList::Read(DWORD first, DWORD count, char* buffer, unsigned short* valueLengths,
                         char** values) const noexcept
{
    if (count == 0)
        return;
    const std::size_t start = GetStart(first);
    std::memcpy(buffer, bytes.get() + start, GetStart(first + count) - start);
    std::memcpy(valueLengths, lengths.data() + first, count * sizeof *valueLengths);
    for (DWORD i = 0; i < count; ++i) {
        values[i] = buffer;
        buffer += valueLengths[i] + std::size_t{1};
    }
}

// Of the value at `pos`, or the end of all where `pos` is the count.
std::size_t CFldValueList::GetStart(DWORD pos) const noexcept
{
    if (pos == lengths.size())
        return byteCount;
    const DWORD block = pos / START_DISTANCE;
    std::size_t start = starts[block];
    for (DWORD before = block * START_DISTANCE; before < pos; ++before)
        start += lengths[before] + std::size_t{1};
    return start;
}

// Gives the memory held before back to the caller if other memory took its place.
std::unique_ptr<char[]> CFldValueList::MakeRoomForBytes(std::size_t added)
{
    if (added <= byteCapacity - byteCount)
        return nullptr;
    const std::size_t wanted = std::max(byteCount + added, byteCapacity * 2);
    std::unique_ptr<char[]> larger = std::make_unique_for_overwrite<char[]>(wanted);
    if (byteCount != 0)
        std::memcpy(larger.get(), bytes.get(), byteCount);
    larger.swap(bytes);
    byteCapacity = wanted;
    return larger;
}

// After it `added` values are appended to `lengths`, and what they need to `starts`, without allocation.
void CFldValueList::MakeRoomForValues(std::size_t added)
{
    const std::size_t wanted = lengths.size() + added;
    if (wanted <= lengths.capacity())
        return;
    const std::size_t capacity = std::max(wanted, lengths.size() * 2);
    starts.reserve(capacity / START_DISTANCE + 1);
    lengths.reserve(capacity);
}

} // namespace NSKZ::NSKZCore
