#ifndef ECHOSTERROR_H
#define ECHOSTERROR_H

#include "SCExitStatus.h"

#include <stdexcept>
#include <string>

namespace NSKZ::Host {

// Why the program ends before its first command: a sentence in UTF-8, and the status to end with.
class ECHostError : public std::runtime_error
{
public:
    ECHostError(EExitStatus statusToEndWith, const std::string& sentence)
        : std::runtime_error(sentence), status(statusToEndWith)
    {}
    EExitStatus GetStatus() const noexcept { return status; }

private:
    EExitStatus status;
};

} // namespace NSKZ::Host

#endif
