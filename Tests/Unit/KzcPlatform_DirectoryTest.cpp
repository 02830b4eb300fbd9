#include "KzcPlatform.h"

#include "Support/CAllocFault.h"
#include "Support/CTempDir.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

DWORD MakeDirectory(const std::string& path)
{
    return static_cast<DWORD>(SHCreateDirectoryExA(nullptr, path.c_str(), nullptr));
}

class KzcPlatform_Directory : public testing::Test
{
protected:
    std::string Below(const std::string& name) const { return dir.GetPath().string() + "\\" + name; }
    bool IsDirectory(const std::filesystem::path& name) const
    {
        return std::filesystem::is_directory(dir.GetPath() / name);
    }

    const CTempDir dir;
};

} // namespace

TEST_F(KzcPlatform_Directory, IsMadeWithThoseAboveIt)
{
    EXPECT_EQ(MakeDirectory(Below("BUI\\ID_1\\BnLink\\")), ERROR_SUCCESS);
    EXPECT_TRUE(IsDirectory("BUI/ID_1/BnLink"));
    EXPECT_EQ(MakeDirectory(Below("BUI\\ID_1\\RpLink")), ERROR_SUCCESS);
    EXPECT_TRUE(IsDirectory("BUI/ID_1/RpLink"));
    EXPECT_EQ(MakeDirectory(Below("two\\\\of\\\\")), ERROR_SUCCESS);
    EXPECT_TRUE(IsDirectory("two/of"));
}

TEST_F(KzcPlatform_Directory, IsToldToExist)
{
    EXPECT_EQ(MakeDirectory(dir.GetPath().string()), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(MakeDirectory(dir.GetPath().string() + "\\"), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(MakeDirectory("\\"), ERROR_ALREADY_EXISTS);
    std::filesystem::create_directory_symlink(dir.GetPath(), dir.GetPath() / "link");
    EXPECT_EQ(MakeDirectory(Below("link\\")), ERROR_ALREADY_EXISTS);
}

TEST_F(KzcPlatform_Directory, IsNotMadeWhereSomethingElseHasItsName)
{
    dir.WriteFile("file", "content");
    std::filesystem::create_symlink(dir.GetPath() / "nowhere", dir.GetPath() / "link");
    for (const char* const name : {"file", "file\\", "link", "link\\"})
        EXPECT_EQ(MakeDirectory(Below(name)), ERROR_FILE_EXISTS) << name;
    EXPECT_EQ(std::filesystem::file_size(dir.GetPath() / "file"), 7u);
    EXPECT_FALSE(std::filesystem::exists(dir.GetPath() / "nowhere"));
}

TEST_F(KzcPlatform_Directory, IsNotMadeBelowWhatIsNoDirectory)
{
    dir.WriteFile("file", "content");
    EXPECT_EQ(MakeDirectory(Below("file\\below")), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(MakeDirectory(Below("file\\far\\below\\")), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(MakeDirectory("/dev/null/below"), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(MakeDirectory("/proc/no process/below"), ERROR_PATH_NOT_FOUND);
}

TEST_F(KzcPlatform_Directory, IsNotMadeOfAPathThatIsNoneOrRelative)
{
    EXPECT_EQ(static_cast<DWORD>(SHCreateDirectoryExA(nullptr, nullptr, nullptr)), ERROR_BAD_PATHNAME);
    for (const char* const path : {"", ".", "relative", ".\\relative\\", "..\\relative"})
        EXPECT_EQ(MakeDirectory(path), ERROR_BAD_PATHNAME) << path;
    EXPECT_EQ(MakeDirectory(Below("a\x82")), ERROR_NO_UNICODE_TRANSLATION);
    EXPECT_EQ(MakeDirectory(Below(std::string(5000, 'x'))), ERROR_FILENAME_EXCED_RANGE);
    EXPECT_TRUE(std::filesystem::is_empty(dir.GetPath()));
}

TEST_F(KzcPlatform_Directory, IsNamedInTheCodePageOfTheHost)
{
    EXPECT_EQ(MakeDirectory(Below(SJIS(u8"表ソ\\能"))), ERROR_SUCCESS); // their last byte is a separator's
    EXPECT_TRUE(IsDirectory(u8"表ソ/能"));
    const CCodePageScope utf8(CP_UTF8);
    EXPECT_EQ(MakeDirectory(Below(UTF8(u8"表ソ\\é\\"))), ERROR_SUCCESS);
    EXPECT_TRUE(IsDirectory(u8"表ソ/é"));
}

TEST_F(KzcPlatform_Directory, IsNotMadeWhenMemoryIsExhaustedAndNothingIsThrown)
{
    const std::string path = Below("a name that does not fit a short string\\another of that kind");
    CAllocFault fault;
    const std::size_t failures = fault.FailEachInTurn([&](auto&& attempt) {
        std::filesystem::remove_all(dir.GetPath() / "a name that does not fit a short string");
        DWORD result = ERROR_GEN_FAILURE;
        EXPECT_TRUE(attempt([&] { result = MakeDirectory(path); }));
        EXPECT_TRUE(result == ERROR_NOT_ENOUGH_MEMORY || result == ERROR_SUCCESS) << result;
    });
    EXPECT_GE(failures, 2u);
    EXPECT_EQ(MakeDirectory(path), ERROR_ALREADY_EXISTS);
}
