#ifndef CSAVEDIRECTORY_H
#define CSAVEDIRECTORY_H

#include "CFileLock.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace NSKZ::Host {

// A directory that holds a save, all or nothing: whatever ends a save early, the one before it is whole.
//
// Each save is a directory of its own within it, a generation: kzcbui-save-1, kzcbui-save-2, ... The file
// "current" names the one that is in force. A new save makes the next generation, flushes it to the disk and
// puts a new "current" in the place of the old one, in one step of the system; then the older generations
// are removed. So "current" names a whole generation at every moment. What an interrupted save has left
// behind is removed by the next one. The lock file, kzcbui-save.lock, keeps savers and loaders apart.
//
// Nothing else in the directory is touched; a "current" of another origin is respected: nothing is saved
// there. All operations but the destructor throw ECCommandError, a sentence that tells the file and the
// reason, where the system refuses something.
class CSaveDirectory
{
public:
    static constexpr const char* NAME_OF_POINTER = "current";
    static constexpr const char* NAME_OF_NEW_POINTER = "kzcbui-save.new";
    static constexpr const char* NAME_OF_LOCK = "kzcbui-save.lock";
    static constexpr std::string_view PREFIX_OF_GENERATIONS = "kzcbui-save-";

    enum EUse
    {
        USE_TO_SAVE,
        USE_TO_LOAD,
    };

    // Opens a directory, named in UTF-8, and takes its lock. To save, it is made where it is missing, with
    // those above it, and what interrupted saves left is removed; to load, there must be a save in it.
    CSaveDirectory(const std::string& path, EUse use);
    // Removes a generation that was begun and not published.
    ~CSaveDirectory();
    CSaveDirectory(const CSaveDirectory&) = delete;
    CSaveDirectory& operator=(const CSaveDirectory&) = delete;

    // The generation in force, empty where nothing was saved yet.
    const std::string& GetName() const noexcept { return nameInForce; }
    // The same as a path.
    std::filesystem::path GetPath() const { return directory / nameInForce; }

    // Makes a new generation, an empty directory, for the caller to fill.
    std::filesystem::path Begin();
    // Flushes what was begun and puts it in force. If the last step of this fails, the flush of the
    // directory, it is in force although it throws; the generation before it is then still there, and in
    // force again if power is lost.
    void Publish();

    // Whether this is a name that a generation has: the prefix and a number from 1 on of at most nine digits.
    static bool IsName(std::string_view name) noexcept;

private:
    void MakeDirectory();
    void TakeLock(EUse use);
    void ReadPointer(EUse use);
    void RemoveAllBut(const std::string& kept) noexcept;
    [[noreturn]] static void Fail(const std::filesystem::path& path, const std::string& what,
                                  const std::error_code& error);
    static void Require(const std::error_code& error, const std::filesystem::path& path,
                        const std::string& what);

    std::filesystem::path directory;
    NSKZCore::CFileLock lock;
    std::string nameInForce;
    std::string nameBegun;
};

} // namespace NSKZ::Host

#endif
