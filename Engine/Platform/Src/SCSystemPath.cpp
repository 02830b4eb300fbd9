#include "SCSystemPath.h"

#include "SCCodePageText.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

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
    case ENOSPC:
        return ERROR_DISK_FULL;
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

} // namespace NSKZ::NSKZCore
