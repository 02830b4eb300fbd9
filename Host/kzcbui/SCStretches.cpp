#include "SCStretches.h"

namespace NSKZ::Host {

std::vector<SStretch> SCStretches::Make(const std::vector<DWORD>& numbers)
{
    std::vector<SStretch> stretches;
    for (const DWORD number : numbers) {
        if (!stretches.empty() && number != 0 && stretches.back().last == number - 1)
            stretches.back().last = number;
        else
            stretches.push_back({number, number});
    }
    return stretches;
}

std::uint64_t SCStretches::Count(const std::vector<SStretch>& stretches) noexcept
{
    std::uint64_t count = 0;
    for (const SStretch& stretch : stretches)
        count += std::uint64_t{stretch.last} - stretch.first + 1;
    return count;
}

std::vector<DWORD> SCStretches::Expand(const std::vector<SStretch>& stretches)
{
    std::vector<DWORD> numbers;
    numbers.reserve(Count(stretches));
    for (const SStretch& stretch : stretches) {
        for (std::uint64_t number = stretch.first; number <= stretch.last; ++number)
            numbers.push_back(static_cast<DWORD>(number));
    }
    return numbers;
}

} // namespace NSKZ::Host
