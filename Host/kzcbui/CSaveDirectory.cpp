#include "CSaveDirectory.h"

#include "ECCommandError.h"
#include "SCDurableFile.h"
#include "SCNameWord.h"
#include "SCSystemFile.h"

#include <new>
#include <vector>

namespace NSKZ::Host {

namespace {

namespace fs = std::filesystem;
using NSKZCore::CFileLock;
using NSKZCore::SCDurableFile;

constexpr std::size_t MAX_DIGITS = 9;
constexpr std::size_t MAX_POINTER_LEN = CSaveDirectory::PREFIX_OF_GENERATIONS.size() + MAX_DIGITS + 1;

std::string InQuotes(const fs::path& path)
{
    return "\"" + SCSystemFile::IntoUTF8(path) + "\"";
}

std::string MakeName(DWORD number)
{
    return std::string(CSaveDirectory::PREFIX_OF_GENERATIONS) + std::to_string(number);
}

} // namespace

CSaveDirectory::CSaveDirectory(const std::string& path, EUse use) : directory(SCSystemFile::FromUTF8(path))
{
    if (path.empty())
        throw ECCommandError("The name of a directory is expected, not an empty word.");
    std::error_code error;
    const fs::file_status status = fs::status(directory, error);
    if (status.type() == fs::file_type::none)
        Fail(directory, "cannot be looked at", error);
    if (fs::exists(status) && !fs::is_directory(status))
        throw ECCommandError(InQuotes(directory) + " is no directory.");
    if (use == USE_TO_SAVE)
        MakeDirectory();
    else if (!fs::exists(status))
        throw ECCommandError("There is no directory " + InQuotes(directory) + ".");
    TakeLock(use);
    ReadPointer(use);
    if (use == USE_TO_SAVE)
        RemoveAllBut(nameInForce);
}

CSaveDirectory::~CSaveDirectory()
{
    if (nameBegun.empty())
        return;
    try {
        std::error_code ignored;
        fs::remove_all(directory / nameBegun, ignored);
    } catch (const std::bad_alloc&) {
        // The next save removes it.
    }
}

void CSaveDirectory::MakeDirectory()
{
    // Those that are missing, the lowest first.
    std::vector<fs::path> missing;
    std::error_code error;
    for (fs::path path = directory; !path.empty() && !fs::exists(path, error); path = path.parent_path())
        missing.push_back(path);
    for (; !missing.empty(); missing.pop_back()) {
        const fs::path& path = missing.back();
        fs::create_directory(path, error);
        Require(error, path, "cannot be made");
        const fs::path parent = path.has_parent_path() ? path.parent_path() : fs::path(".");
        Require(SCDurableFile::SyncDirectory(parent), parent, "cannot be flushed to the disk");
    }
}

void CSaveDirectory::TakeLock(EUse use)
{
    const std::error_code error = lock.Take(
        directory / NAME_OF_LOCK, use == USE_TO_SAVE ? CFileLock::LOCK_TO_WRITE : CFileLock::LOCK_TO_READ);
    if (error == std::errc::resource_unavailable_try_again) {
        throw ECCommandError("Another program is using the save in " + InQuotes(directory) +
                             " at present; try again when it has done so.");
    }
    // A copy of a save may lack the file: nobody saves there then.
    if (use == USE_TO_SAVE)
        Require(error, directory, "cannot be written into");
}

void CSaveDirectory::ReadPointer(EUse use)
{
    const fs::path pointer = directory / NAME_OF_POINTER;
    std::error_code error;
    const fs::file_status status = fs::status(pointer, error);
    if (!fs::exists(status)) {
        if (use == USE_TO_SAVE && status.type() == fs::file_type::not_found)
            return;
        throw ECCommandError("There is no save in " + InQuotes(directory) + ".");
    }
    std::string content;
    if (fs::is_regular_file(status) && fs::file_size(pointer, error) <= MAX_POINTER_LEN) {
        Require(SCSystemFile::ReadInPieces(pointer, [&](std::string_view piece) { content += piece; }),
                pointer, "cannot be read");
    }
    if (!content.ends_with('\n') || !IsName(std::string_view(content).substr(0, content.size() - 1)))
        throw ECCommandError(InQuotes(pointer) + " is not the file that tells which save is in force.");
    content.pop_back();
    // Also where a link stands in its place, which no save makes.
    if (use == USE_TO_LOAD && !fs::is_directory(fs::symlink_status(directory / content, error)))
        throw ECCommandError("The save " + InQuotes(directory / content) + " is gone.");
    nameInForce = std::move(content);
}

void CSaveDirectory::RemoveAllBut(const std::string& kept) noexcept
{
    // What cannot be removed stays, and the next save tries again.
    try {
        std::error_code ignored;
        std::vector<fs::path> others;
        for (fs::directory_iterator entry(directory, ignored), end; entry != end; entry.increment(ignored)) {
            const std::string name = SCSystemFile::IntoUTF8(entry->path().filename());
            const bool isDirectory = fs::is_directory(entry->symlink_status(ignored));
            if (isDirectory ? IsName(name) && name != kept : name == NAME_OF_NEW_POINTER)
                others.push_back(entry->path());
        }
        for (const fs::path& other : others)
            fs::remove_all(other, ignored);
    } catch (const std::bad_alloc&) {
        return;
    }
}

fs::path CSaveDirectory::Begin()
{
    DWORD number = 0;
    if (!nameInForce.empty())
        SCNameWord::ReadNumber(std::string_view(nameInForce).substr(PREFIX_OF_GENERATIONS.size()), number);
    std::error_code error;
    std::string name;
    do {
        name = MakeName(++number);
        if (!IsName(name))
            name = MakeName(number = 1);
        // Something else may have such a name.
    } while (fs::exists(fs::symlink_status(directory / name, error)));
    const fs::path path = directory / name;
    fs::create_directory(path, error);
    Require(error, path, "cannot be made");
    nameBegun = std::move(name);
    return path;
}

void CSaveDirectory::Publish()
{
    constexpr const char* NOT_FLUSHED = "cannot be flushed to the disk";
    const fs::path begun = directory / nameBegun;
    std::error_code error;
    fs::recursive_directory_iterator entry(begun, error);
    Require(error, begun, "cannot be read");
    for (const fs::recursive_directory_iterator end; entry != end; entry.increment(error)) {
        Require(entry->is_directory() ? SCDurableFile::SyncDirectory(entry->path())
                                      : SCDurableFile::SyncFile(entry->path()),
                entry->path(), NOT_FLUSHED);
    }
    Require(error, begun, "cannot be read");
    Require(SCDurableFile::SyncDirectory(begun), begun, NOT_FLUSHED);

    const fs::path newPointer = directory / NAME_OF_NEW_POINTER;
    const fs::path pointer = directory / NAME_OF_POINTER;
    Require(SCSystemFile::WriteNew(newPointer, nameBegun + "\n"), newPointer, "cannot be written");
    Require(SCDurableFile::SyncFile(newPointer), newPointer, NOT_FLUSHED);
    Require(SCDurableFile::SyncDirectory(directory), directory, NOT_FLUSHED);
    fs::rename(newPointer, pointer, error);
    Require(error, pointer, "cannot be replaced");
    nameInForce = std::move(nameBegun);
    nameBegun.clear();
    Require(SCDurableFile::SyncDirectory(directory), directory,
            "holds the new save, which is in force, but " + std::string(NOT_FLUSHED));
    RemoveAllBut(nameInForce);
}

bool CSaveDirectory::IsName(std::string_view name) noexcept
{
    if (!name.starts_with(PREFIX_OF_GENERATIONS))
        return false;
    name.remove_prefix(PREFIX_OF_GENERATIONS.size());
    return !name.empty() && name.size() <= MAX_DIGITS && name.front() != '0' &&
           name.find_first_not_of("0123456789") == std::string_view::npos;
}

void CSaveDirectory::Fail(const fs::path& path, const std::string& what, const std::error_code& error)
{
    throw ECCommandError(InQuotes(path) + " " + what + ": " + error.message() + ".");
}

void CSaveDirectory::Require(const std::error_code& error, const fs::path& path, const std::string& what)
{
    if (error)
        Fail(path, what, error);
}

} // namespace NSKZ::Host
