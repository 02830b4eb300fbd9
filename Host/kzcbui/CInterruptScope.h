#ifndef CINTERRUPTSCOPE_H
#define CINTERRUPTSCOPE_H

#include "CProgressStatus.h"

#include <csignal>

namespace NSKZ::Host {

// While it lives, Ctrl-C (SIGINT) asks a status to stop. One object at a time.
class CInterruptScope
{
public:
    // While a table is read: until Hold there is no status, and Ctrl-C ends the program at once, with a
    // sentence and EXITSTATUS_TABLE_UNREADABLE.
    CInterruptScope();
    // `status` is borrowed until the end.
    explicit CInterruptScope(NSKZCore::CProgressStatus& status);
    ~CInterruptScope(); // the former action returns
    CInterruptScope(const CInterruptScope&) = delete;
    CInterruptScope& operator=(const CInterruptScope&) = delete;

    // `status` is borrowed until the end.
    void Hold(NSKZCore::CProgressStatus& status) noexcept;

private:
    void Begin();

    struct sigaction formerAction;
};

} // namespace NSKZ::Host

#endif
