#include "ECCndError.h"

#include <algorithm>

namespace NSKZ::Host {

ECCndError::ECCndError(const std::string& sentence, std::string conditionOfUser, std::size_t offsetOfUser)
    : ECCommandError(sentence), condition(std::move(conditionOfUser)), offset(offsetOfUser)
{}

std::size_t ECCndError::GetPosition() const noexcept
{
    // All bytes of a character but its first are 10xxxxxx.
    return static_cast<std::size_t>(
        std::count_if(condition.begin(), condition.begin() + static_cast<std::ptrdiff_t>(offset),
                      [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0u) != 0x80u; }));
}

} // namespace NSKZ::Host
