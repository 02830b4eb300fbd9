#ifndef SCSYSTEMPATH_H
#define SCSYSTEMPATH_H

#include "KzcPlatform.h"

#include <cstdio>
#include <filesystem>
#include <memory>

namespace NSKZ::NSKZCore {

// Closes the file of a CFilePtr.
struct SFileCloser
{
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using CFilePtr = std::unique_ptr<std::FILE, SFileCloser>;

// From paths as the libraries hold them to the system's own.
//
// A path is NUL-terminated text in the host's code page (_getmbcp). `\` separates its parts, and so does `/`;
// a byte 0x5C that is the second one of a double-byte character is no separator.
class KZCPLATFORM_API SCSystemPath
{
public:
    SCSystemPath() = delete;

    // Stores the system's form of `path`. False, with `systemPath` untouched and the last error
    // ERROR_NO_UNICODE_TRANSLATION, if `path` is no text of the host's code page. Throws std::bad_alloc.
    static bool ConvertIntoSystemPath(const char* path, std::filesystem::path& systemPath);

    // Opens a file; `mode` is that of std::fopen. Null, with the last error telling why, if that fails; a
    // directory is refused with ERROR_ACCESS_DENIED. Throws std::bad_alloc.
    static CFilePtr OpenFile(const char* path, const char* mode);

    // Opens a file for reading and stores its size in bytes. Null, with `size` untouched and the last error
    // telling why, if that fails. Only what has a size is opened: a directory, a pipe or a device is refused
    // with ERROR_ACCESS_DENIED, and none is waited for. Throws std::bad_alloc.
    static CFilePtr OpenFileForReading(const char* path, unsigned long long& size);

    // The last error that says what a value of errno says; ERROR_GEN_FAILURE for what has none of its own.
    static DWORD GetLastErrorOfErrno(int error) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
