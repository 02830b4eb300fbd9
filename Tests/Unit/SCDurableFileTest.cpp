#include "SCDurableFile.h"

#include "Support/CTempDir.h"

#include <gtest/gtest.h>

namespace NSKZ::Test {

using NSKZCore::SCDurableFile;

TEST(SCDurableFile, FilesAndDirectoriesThatAreThereAreFlushed)
{
    const CTempDir dir;
    const std::string file = dir.WriteFile("file", "content");
    EXPECT_EQ(SCDurableFile::SyncFile(file), std::error_code());
    EXPECT_EQ(SCDurableFile::SyncDirectory(dir.GetPath()), std::error_code());
}

TEST(SCDurableFile, WhatIsNotThereGivesTheSystemsError)
{
    const CTempDir dir;
    const std::string file = dir.WriteFile("file", "content");
    EXPECT_EQ(SCDurableFile::SyncFile(dir.GetPath() / "none"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(SCDurableFile::SyncDirectory(dir.GetPath() / "none"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(SCDurableFile::SyncDirectory(file), std::errc::not_a_directory);
}

} // namespace NSKZ::Test
