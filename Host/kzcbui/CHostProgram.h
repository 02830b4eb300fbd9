#ifndef CHOSTPROGRAM_H
#define CHOSTPROGRAM_H

#include "SCExitStatus.h"

namespace NSKZ::Host {

class CHostOptions;

// The program as a whole: from its arguments to its exit status.
class CHostProgram
{
public:
    // Never throws; what goes wrong is told on standard error.
    static EExitStatus Run(int argc, const char* const* argv) noexcept;

private:
    static EExitStatus RunWithOptions(const CHostOptions& options);
};

} // namespace NSKZ::Host

#endif
