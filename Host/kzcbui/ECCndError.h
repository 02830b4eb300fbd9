#ifndef ECCNDERROR_H
#define ECCNDERROR_H

#include "ECCommandError.h"

#include <cstddef>
#include <string>

namespace NSKZ::Host {

// Why a typed condition was refused, and where it stopped making sense.
class ECCndError : public ECCommandError
{
public:
    // `offset` is a position in bytes, at the beginning of a character or at the end of `condition`.
    ECCndError(const std::string& sentence, std::string condition, std::size_t offset);

    const std::string& GetCondition() const noexcept { return condition; }
    // In bytes.
    std::size_t GetOffset() const noexcept { return offset; }
    // In characters, from 0.
    std::size_t GetPosition() const noexcept;

private:
    std::string condition;
    std::size_t offset;
};

} // namespace NSKZ::Host

#endif
