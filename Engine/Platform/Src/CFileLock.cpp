#include "CFileLock.h"

#if !defined(_WIN32)
#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace NSKZ::NSKZCore {

CFileLock::~CFileLock()
{
    Release();
}

#if defined(_WIN32)

std::error_code CFileLock::Take(const std::filesystem::path& file, EKind kind) noexcept
{
    Release();
    const bool writes = kind == LOCK_TO_WRITE;
    const HANDLE opened = CreateFileW(file.c_str(), writes ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      writes ? OPEN_ALWAYS : OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        return {static_cast<int>(GetLastError()), std::system_category()};
    OVERLAPPED place = {};
    if (!LockFileEx(opened, LOCKFILE_FAIL_IMMEDIATELY | (writes ? LOCKFILE_EXCLUSIVE_LOCK : 0), 0, 1, 0,
                    &place)) {
        const DWORD error = GetLastError();
        CloseHandle(opened);
        return error == ERROR_LOCK_VIOLATION || error == ERROR_IO_PENDING
                   ? std::make_error_code(std::errc::resource_unavailable_try_again)
                   : std::error_code(static_cast<int>(error), std::system_category());
    }
    handle = reinterpret_cast<std::intptr_t>(opened);
    return {};
}

void CFileLock::Release() noexcept
{
    if (IsHeld())
        CloseHandle(reinterpret_cast<HANDLE>(handle));
    handle = NO_HANDLE;
}

#else

std::error_code CFileLock::Take(const std::filesystem::path& file, EKind kind) noexcept
{
    Release();
    const bool writes = kind == LOCK_TO_WRITE;
    const int opened = writes ? open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666)
                              : open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (opened < 0)
        return {errno, std::generic_category()};
    if (flock(opened, (writes ? LOCK_EX : LOCK_SH) | LOCK_NB) != 0) {
        const int error = errno;
        close(opened);
        return error == EWOULDBLOCK ? std::make_error_code(std::errc::resource_unavailable_try_again)
                                    : std::error_code(error, std::generic_category());
    }
    handle = opened;
    return {};
}

void CFileLock::Release() noexcept
{
    if (IsHeld())
        close(static_cast<int>(handle));
    handle = NO_HANDLE;
}

#endif

} // namespace NSKZ::NSKZCore
