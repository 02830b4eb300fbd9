#include "SCDurableFile.h"

#if !defined(_WIN32)
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>
#endif

namespace NSKZ::NSKZCore {

#if defined(_WIN32)

std::error_code SCDurableFile::SyncFile(const std::filesystem::path& file) noexcept
{
    const HANDLE handle = CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return {static_cast<int>(GetLastError()), std::system_category()};
    std::error_code error;
    if (!FlushFileBuffers(handle))
        error.assign(static_cast<int>(GetLastError()), std::system_category());
    CloseHandle(handle);
    return error;
}

std::error_code SCDurableFile::SyncDirectory(const std::filesystem::path&) noexcept
{
    return {};
}

#else

namespace {

std::error_code Sync(const std::filesystem::path& path, int flags) noexcept
{
    const int file = open(path.c_str(), flags | O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return {errno, std::generic_category()};
    std::error_code error;
    if (fsync(file) != 0)
        error.assign(errno, std::generic_category());
    if (close(file) != 0 && !error)
        error.assign(errno, std::generic_category());
    return error;
}

} // namespace

std::error_code SCDurableFile::SyncFile(const std::filesystem::path& file) noexcept
{
    return Sync(file, 0);
}

std::error_code SCDurableFile::SyncDirectory(const std::filesystem::path& directory) noexcept
{
    const std::error_code error = Sync(directory, O_DIRECTORY);
    // Some file systems cannot flush a directory and say so.
    return error == std::errc::invalid_argument ? std::error_code() : error;
}

#endif

} // namespace NSKZ::NSKZCore
