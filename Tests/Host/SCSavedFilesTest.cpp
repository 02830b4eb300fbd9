#include "SCSavedFiles.h"

#include "ECCommandError.h"
#include "Support/CTempDir.h"

#include <gtest/gtest.h>

namespace NSKZ::Test {

using Host::SCSavedFiles;
using Host::SSavedFile;

class SCSavedFilesTest : public testing::Test
{
protected:
    SCSavedFilesTest()
    {
        std::filesystem::create_directories(dir.GetPath() / "b" / "empty");
        dir.WriteFile("z", "last");
        dir.WriteFile("a", "");
        dir.WriteFile("b/一", std::string(3u << 20, 'x'));
    }
    std::vector<SSavedFile> List() const { return SCSavedFiles::List(dir.GetPath()); }
    std::string WhyNotWhole(const std::vector<SSavedFile>& saved) const
    {
        try {
            SCSavedFiles::RequireWhole(saved, List());
        } catch (const Host::ECCommandError& error) {
            return error.what();
        }
        return "";
    }

    CTempDir dir;
};

TEST_F(SCSavedFilesTest, AllFilesBelowADirectoryAreListedByName)
{
    const std::vector<SSavedFile> files = List();
    ASSERT_EQ(files.size(), 3u);
    EXPECT_EQ(files[0].name, "a");
    EXPECT_EQ(files[0].size, 0u);
    EXPECT_EQ(files[1].name, "b/一");
    EXPECT_EQ(files[1].size, 3u << 20);
    EXPECT_EQ(files[2].name, "z");
    EXPECT_NE(files[0].digest, files[2].digest);
}

TEST_F(SCSavedFilesTest, WhatIsThereAsItWasIsWholeWhateverElseIsThere)
{
    const std::vector<SSavedFile> saved = List();
    EXPECT_EQ(WhyNotWhole(saved), "");
    dir.WriteFile("another", "file");
    EXPECT_EQ(WhyNotWhole(saved), "");
    EXPECT_EQ(WhyNotWhole({}), "");
}

TEST_F(SCSavedFilesTest, AChangedByteALostEndAndALostFileAreToldByName)
{
    const std::vector<SSavedFile> saved = List();
    std::string content(3u << 20, 'x');
    content[(2u << 20) + 5] = 'y';
    dir.WriteFile("b/一", content);
    EXPECT_EQ(WhyNotWhole(saved), "The save is damaged: its file \"b/一\" is not as it was written.");
    dir.WriteFile("b/一", std::string((3u << 20) - 1, 'x'));
    EXPECT_EQ(WhyNotWhole(saved), "The save is damaged: its file \"b/一\" is not as it was written.");
    dir.WriteFile("b/一", std::string(3u << 20, 'x'));
    EXPECT_EQ(WhyNotWhole(saved), "");
    std::filesystem::remove(dir.GetPath() / "z");
    EXPECT_EQ(WhyNotWhole(saved), "The save is damaged: its file \"z\" is gone.");
}

TEST_F(SCSavedFilesTest, ALinkIsNoFileOfASave)
{
    std::filesystem::create_symlink(dir.GetPath() / "z", dir.GetPath() / "link");
    EXPECT_THROW(List(), Host::ECCommandError);
}

TEST_F(SCSavedFilesTest, ADirectoryThatIsNotThereIsRefused)
{
    EXPECT_THROW(SCSavedFiles::List(dir.GetPath() / "none"), Host::ECCommandError);
}

} // namespace NSKZ::Test
