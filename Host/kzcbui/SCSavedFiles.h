#ifndef SCSAVEDFILES_H
#define SCSAVEDFILES_H

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace NSKZ::Host {

// A file of a save: where it is within it, with / between directories, its bytes and the digest of these.
struct SSavedFile
{
    std::string name; // UTF-8
    std::uint64_t size = 0;
    std::string digest;

    bool operator==(const SSavedFile&) const = default;
};

// The files of a save as a whole.
class SCSavedFiles
{
public:
    SCSavedFiles() = delete;

    // All files below a directory in the order of their names. Throws ECCommandError where something cannot
    // be read, and for what is neither a file nor a directory. Cost: every file is read once.
    static std::vector<SSavedFile> List(const std::filesystem::path& directory);

    // Throws ECCommandError, which names the file, unless `present` holds every file of `saved` as it was
    // then. Both are in the order of names; files that were not saved are passed over.
    static void RequireWhole(const std::vector<SSavedFile>& saved, const std::vector<SSavedFile>& present);
    // The same as an answer.
    static bool IsWhole(const std::vector<SSavedFile>& saved, const std::vector<SSavedFile>& present);
};

} // namespace NSKZ::Host

#endif
