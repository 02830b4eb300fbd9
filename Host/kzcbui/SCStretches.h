#ifndef SCSTRETCHES_H
#define SCSTRETCHES_H

#include "KzcPlatform.h"

#include <cstdint>
#include <vector>

namespace NSKZ::Host {

// Numbers from `first` to `last`, both taking part.
struct SStretch
{
    DWORD first = 0;
    DWORD last = 0;

    bool operator==(const SStretch&) const = default;
};

// Lists of numbers as stretches: a long list that ascends without gaps is short.
class SCStretches
{
public:
    SCStretches() = delete;

    // Keeps the order of the numbers.
    static std::vector<SStretch> Make(const std::vector<DWORD>& numbers);
    // How many numbers there are. Each stretch must have its last number not before its first.
    static std::uint64_t Count(const std::vector<SStretch>& stretches) noexcept;
    // The numbers of which there are Count.
    static std::vector<DWORD> Expand(const std::vector<SStretch>& stretches);
};

} // namespace NSKZ::Host

#endif
