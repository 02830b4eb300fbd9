#include "CInterruptScope.h"

#include "SCExitStatus.h"

#include <atomic>
#include <string_view>

#include <unistd.h>

namespace NSKZ::Host {

namespace {

std::atomic<NSKZCore::CProgressStatus*> heldStatus = nullptr;
static_assert(decltype(heldStatus)::is_always_lock_free);

constexpr std::string_view MESSAGE = "\nkzcbui: cancelled while the table was being read.\n";

extern "C" void CancelOnInterrupt(int)
{
    if (NSKZCore::CProgressStatus* const status = heldStatus.load()) {
        status->canceled = true;
        return;
    }
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, MESSAGE.data(), MESSAGE.size());
    _exit(EXITSTATUS_TABLE_UNREADABLE);
}

} // namespace

CInterruptScope::CInterruptScope()
{
    heldStatus = nullptr;
    Begin();
}

CInterruptScope::CInterruptScope(NSKZCore::CProgressStatus& status)
{
    Hold(status);
    Begin();
}

void CInterruptScope::Begin()
{
    struct sigaction action = {};
    action.sa_handler = CancelOnInterrupt;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, &formerAction);
}

CInterruptScope::~CInterruptScope()
{
    sigaction(SIGINT, &formerAction, nullptr);
    heldStatus = nullptr;
}

void CInterruptScope::Hold(NSKZCore::CProgressStatus& status) noexcept
{
    heldStatus = &status;
}

} // namespace NSKZ::Host
