#include "SCSavedFiles.h"

#include "CContentDigest.h"
#include "ECCommandError.h"
#include "SCSystemFile.h"

#include <algorithm>

namespace NSKZ::Host {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void RefuseReading(const fs::path& path, const std::error_code& error)
{
    throw ECCommandError("\"" + SCSystemFile::IntoUTF8(path) + "\" cannot be read: " + error.message() + ".");
}

} // namespace

std::vector<SSavedFile> SCSavedFiles::List(const fs::path& directory)
{
    std::vector<SSavedFile> files;
    std::error_code error;
    fs::recursive_directory_iterator entry(directory, error);
    for (const fs::recursive_directory_iterator end; !error && entry != end; entry.increment(error)) {
        const fs::path& path = entry->path();
        const fs::file_status status = entry->symlink_status(error);
        if (error)
            RefuseReading(path, error);
        if (fs::is_directory(status))
            continue;
        // Reading from a pipe may never end.
        if (!fs::is_regular_file(status))
            throw ECCommandError("\"" + SCSystemFile::IntoUTF8(path) + "\" is no file that a save makes.");
        SSavedFile file;
        const std::u8string name = path.lexically_relative(directory).generic_u8string();
        file.name.assign(name.begin(), name.end());
        CContentDigest digest;
        error = SCSystemFile::ReadInPieces(path, [&](std::string_view piece) {
            digest.Add(piece);
            file.size += piece.size();
        });
        if (error)
            RefuseReading(path, error);
        file.digest = digest.GetText();
        files.push_back(std::move(file));
    }
    if (error)
        RefuseReading(directory, error);
    std::sort(files.begin(), files.end(),
              [](const SSavedFile& left, const SSavedFile& right) { return left.name < right.name; });
    return files;
}

bool SCSavedFiles::IsWhole(const std::vector<SSavedFile>& saved, const std::vector<SSavedFile>& present)
{
    try {
        RequireWhole(saved, present);
        return true;
    } catch (const ECCommandError&) {
        return false;
    }
}

void SCSavedFiles::RequireWhole(const std::vector<SSavedFile>& saved, const std::vector<SSavedFile>& present)
{
    auto file = present.begin();
    for (const SSavedFile& wanted : saved) {
        while (file != present.end() && file->name < wanted.name)
            ++file;
        if (file == present.end() || file->name != wanted.name)
            throw ECCommandError("The save is damaged: its file \"" + wanted.name + "\" is gone.");
        if (*file != wanted)
            throw ECCommandError("The save is damaged: its file \"" + wanted.name +
                                 "\" is not as it was written.");
    }
}

} // namespace NSKZ::Host
