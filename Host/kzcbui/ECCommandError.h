#ifndef ECCOMMANDERROR_H
#define ECCOMMANDERROR_H

#include <stdexcept>

namespace NSKZ::Host {

// Why a command was refused: a sentence in UTF-8 that tells what was expected.
class ECCommandError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace NSKZ::Host

#endif
