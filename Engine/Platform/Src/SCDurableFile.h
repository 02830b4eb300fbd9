#ifndef SCDURABLEFILE_H
#define SCDURABLEFILE_H

#include "KzcPlatform.h"

#include <filesystem>
#include <system_error>

namespace NSKZ::NSKZCore {

// Makes sure that what was written outlives a loss of power. A system keeps what it is given in its memory
// for a while; the content of a file and its place in its directory are flushed one by one.
//
// Both give the system's error, none on success, and throw nothing. Cost: a wait for the disk.
class KZCPLATFORM_API SCDurableFile
{
public:
    SCDurableFile() = delete;

    // Flushes the content of an existing file. An error that the system has met since the file was last
    // opened, while it wrote the content out by itself, is told here too.
    static std::error_code SyncFile(const std::filesystem::path& file) noexcept;

    // Flushes which files and directories there are in a directory, and so creations, renames and removals.
    // Where the system keeps these safe by itself and offers no way to ask for it (Windows) nothing is done.
    static std::error_code SyncDirectory(const std::filesystem::path& directory) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
