#include "SCSystemPath.h"

#include "SCCodePageText.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include <sys/stat.h>
#include <sys/types.h>

#if defined(_WIN32)
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace NSKZ::NSKZCore {

DWORD SCSystemPath::GetLastErrorOfErrno(int error) noexcept
{
    switch (error) {
    case ENOENT:
        return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
        return ERROR_PATH_NOT_FOUND;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return ERROR_ACCESS_DENIED;
    case EMFILE:
    case ENFILE:
        return ERROR_TOO_MANY_OPEN_FILES;
    case EEXIST:
        return ERROR_FILE_EXISTS;
    case ENOSPC:
        return ERROR_DISK_FULL;
    case EFBIG:
        return ERROR_FILE_TOO_LARGE;
    case ENAMETOOLONG:
        return ERROR_FILENAME_EXCED_RANGE;
    default:
        return ERROR_GEN_FAILURE;
    }
}

bool SCSystemPath::ConvertIntoSystemPath(const char* path, std::filesystem::path& systemPath)
{
    std::string utf8;
    std::size_t errorPos = 0;
    if (SCCodePageText::Convert(path, _getmbcp(), CP_UTF8, utf8, errorPos) != SCCodePageText::CONVERT_OK) {
        SetLastError(ERROR_NO_UNICODE_TRANSLATION);
        return false;
    }
    // In UTF-8 no byte of a longer character is a backslash, so every one is a separator.
    std::replace(utf8.begin(), utf8.end(), '\\', '/');
    systemPath = std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
    return true;
}

CFilePtr SCSystemPath::OpenFile(const char* path, const char* mode)
{
    std::filesystem::path systemPath;
    if (!ConvertIntoSystemPath(path, systemPath))
        return nullptr;

    // Some systems open a directory for reading and fail only at the first read.
    std::error_code ignored;
    if (std::filesystem::is_directory(systemPath, ignored)) {
        SetLastError(ERROR_ACCESS_DENIED);
        return nullptr;
    }
#if defined(_WIN32)
    const std::wstring wideMode(mode, mode + std::string_view(mode).size());
    CFilePtr file(_wfopen(systemPath.c_str(), wideMode.c_str()));
#else
    CFilePtr file(std::fopen(systemPath.c_str(), mode));
#endif
    if (file == nullptr)
        SetLastError(GetLastErrorOfErrno(errno));
    return file;
}

CFilePtr SCSystemPath::OpenFileForReading(const char* path, unsigned long long& size)
{
    std::filesystem::path systemPath;
    if (!ConvertIntoSystemPath(path, systemPath))
        return nullptr;
    const auto fail = [](int error) {
        SetLastError(GetLastErrorOfErrno(error));
        return nullptr;
    };

#if defined(_WIN32)
    CFilePtr file(_wfopen(systemPath.c_str(), L"rb"));
    struct _stat64 status = {};
    if (file == nullptr || _fstat64(_fileno(file.get()), &status) != 0)
        return fail(errno);
    if ((status.st_mode & _S_IFMT) != _S_IFREG)
        return fail(EACCES);
#else
    // O_NONBLOCK: the opening of a pipe does not wait for its other end.
    const int descriptor = ::open(systemPath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return fail(errno);
    CFilePtr file(::fdopen(descriptor, "rb"));
    if (file == nullptr) {
        const int error = errno;
        ::close(descriptor);
        return fail(error);
    }
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0)
        return fail(errno);
    if (!S_ISREG(status.st_mode))
        return fail(EACCES);
#endif
    size = static_cast<unsigned long long>(status.st_size);
    return file;
}

} // namespace NSKZ::NSKZCore
