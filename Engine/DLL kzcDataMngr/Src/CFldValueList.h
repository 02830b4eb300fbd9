#ifndef CFLDVALUELIST_H
#define CFLDVALUELIST_H

#include "KzcDataMngrAPI.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace NSKZ::NSKZCore {

// The values of one field: a list of texts, one a record, in the order of the records.
//
// All texts lie one behind the other in one block of memory, each with a NUL behind it, so that a stretch of
// them is read by one copy. A value costs its bytes and three more. Positions count from 0; they and the
// counts behind them are the caller's to prove: first + count is at most GetCount().
class KZCDATAMNGR_API CFldValueList
{
public:
    // The most bytes that a value has, so that its length fits the table's lengths.
    static constexpr std::size_t MAX_VALUE_LEN = 65535;
    // The most values that a list has, so that its count fits the table's counts.
    static constexpr DWORD MAX_COUNT = 4294967295;

    CFldValueList() noexcept = default;
    CFldValueList(const CFldValueList& other);
    CFldValueList(CFldValueList&& other) noexcept;
    CFldValueList& operator=(CFldValueList other) noexcept;
    ~CFldValueList() = default;
    void Swap(CFldValueList& other) noexcept;

    // Appends a value. False, and nothing changes, if it is longer than MAX_VALUE_LEN, holds a NUL, or the
    // list is full. Throws std::bad_alloc with the list unchanged. The value may lie in the list itself.
    bool Append(std::string_view value);
    // The same without the tests, for a caller that has made them.
    void AppendProved(std::string_view value);
    // Appends a stretch of another list, for which there is room in this one's count. Throws std::bad_alloc
    // with the list unchanged.
    void AppendStretch(const CFldValueList& other, DWORD first, DWORD count);
    // Gives back memory that only waits for further values. Throws std::bad_alloc with the list unchanged.
    void ShrinkToFit();

    DWORD GetCount() const noexcept { return static_cast<DWORD>(lengths.size()); }
    // A value; it is borrowed until the list changes, and a NUL stands behind it. Cost: a walk over at most
    // START_DISTANCE - 1 lengths.
    std::string_view GetValue(DWORD pos) const noexcept;
    // The bytes of a stretch, each value with its NUL.
    unsigned long long GetSize(DWORD first, DWORD count) const noexcept;
    // Whether a stretch holds the same values as one of another list, which has as many from `otherFirst` on.
    // Cost: a comparison of two blocks of memory.
    bool EqualsStretch(DWORD first, const CFldValueList& other, DWORD otherFirst, DWORD count) const noexcept;
    // Copies a stretch: its bytes, each value with its NUL, to `buffer`, which has room for GetSize(first,
    // count); to the two arrays, which have room for `count`, the values' lengths without the NUL and where
    // in `buffer` they start. Neither array may be null unless count is 0.
    void Read(DWORD first, DWORD count, char* buffer, unsigned short* valueLengths,
              char** values) const noexcept;

    // Calls visit(const char* text, std::size_t length) for each value in order, until it answers false.
    template <typename TVisit>
    void Visit(TVisit visit) const
    {
        const char* text = bytes.get();
        for (const unsigned short length : lengths) {
            if (!visit(text, static_cast<std::size_t>(length)))
                return;
            text += length + 1;
        }
    }

private:
    // The start of every so many values is kept; that of another one is found by adding up lengths from
    // there.
    static constexpr DWORD START_DISTANCE = 128;

    std::size_t GetStart(DWORD pos) const noexcept;
    std::unique_ptr<char[]> MakeRoomForBytes(std::size_t added);
    void MakeRoomForValues(std::size_t added);

    std::unique_ptr<char[]> bytes;
    std::size_t byteCount = 0;
    std::size_t byteCapacity = 0;
    std::vector<unsigned short> lengths;
    std::vector<std::size_t> starts; // of the values 0, START_DISTANCE, 2 * START_DISTANCE, ...
};

} // namespace NSKZ::NSKZCore

#endif
