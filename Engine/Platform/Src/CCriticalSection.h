#ifndef CCRITICALSECTION_H
#define CCRITICALSECTION_H

#include "KzcPlatform.h"

namespace NSKZ::NSKZCore {

// Owns a critical section. The thread that holds it may enter it again.
class CCriticalSection
{
public:
    CCriticalSection() { InitializeCriticalSection(&section); }
    ~CCriticalSection() { DeleteCriticalSection(&section); }
    CCriticalSection(const CCriticalSection&) = delete;
    CCriticalSection& operator=(const CCriticalSection&) = delete;

    // Holds the section as long as it lives.
    class CGuard
    {
    public:
        explicit CGuard(CCriticalSection& entered) noexcept : owner(entered)
        {
            EnterCriticalSection(&owner.section);
        }
        ~CGuard() { LeaveCriticalSection(&owner.section); }
        CGuard(const CGuard&) = delete;
        CGuard& operator=(const CGuard&) = delete;

    private:
        CCriticalSection& owner;
    };

private:
    CRITICAL_SECTION section;
};

} // namespace NSKZ::NSKZCore

#endif
