#ifndef CFILELOCK_H
#define CFILELOCK_H

#include "KzcPlatform.h"

#include <cstdint>
#include <filesystem>
#include <system_error>

namespace NSKZ::NSKZCore {

// A lock between processes, held on a file that is there for nothing else. It ends with the object, and with
// the process however that ends. Processes that do not ask for it are not kept out.
class KZCPLATFORM_API CFileLock
{
public:
    enum EKind
    {
        LOCK_TO_READ,  // any number of holders
        LOCK_TO_WRITE, // one alone
    };

    CFileLock() noexcept = default;
    ~CFileLock();
    CFileLock(const CFileLock&) = delete;
    CFileLock& operator=(const CFileLock&) = delete;

    // Takes the lock without waiting, in place of the one held. To write, the file is created where it is
    // missing; to read, it must be there. std::errc::resource_unavailable_try_again if another one holds a
    // lock that does not go with it, in this process too; else the system's error; none on success.
    std::error_code Take(const std::filesystem::path& file, EKind kind) noexcept;
    void Release() noexcept;
    bool IsHeld() const noexcept { return handle != NO_HANDLE; }

private:
    static constexpr std::intptr_t NO_HANDLE = -1;

    std::intptr_t handle = NO_HANDLE; // the system's, of the open file
};

} // namespace NSKZ::NSKZCore

#endif
