#ifndef CINTERRUPTSCOPE_H
#define CINTERRUPTSCOPE_H

#include "CProgressStatus.h"

#include <csignal>

namespace NSKZ::Host {

// While it lives, Ctrl-C (SIGINT) cancels the reading of a table: it ends the program at once, with a
// sentence and EXITSTATUS_TABLE_UNREADABLE, or, after Hold, asks the status to stop. One object at a time.
class CInterruptScope
{
public:
    CInterruptScope();
    ~CInterruptScope(); // the former action returns
    CInterruptScope(const CInterruptScope&) = delete;
    CInterruptScope& operator=(const CInterruptScope&) = delete;

    // `status` is borrowed until the end.
    void Hold(NSKZCore::CProgressStatus& status) noexcept;

private:
    struct sigaction formerAction;
};

} // namespace NSKZ::Host

#endif
