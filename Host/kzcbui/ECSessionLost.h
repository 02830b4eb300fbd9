#ifndef ECSESSIONLOST_H
#define ECSESSIONLOST_H

#include <stdexcept>

namespace NSKZ::Host {

// Why a session cannot go on: a change failed halfway and could not be taken back. A sentence in UTF-8.
class ECSessionLost : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace NSKZ::Host

#endif
