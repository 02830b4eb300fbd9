#include "SCSystemPath.h"

#include "Support/CAllocFault.h"
#include "Support/CTempDir.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

#include <sys/stat.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

std::string WithBackslashes(std::string path)
{
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string ReadAll(std::FILE* file)
{
    char buffer[64];
    return std::string(buffer, std::fread(buffer, 1, sizeof buffer, file));
}

} // namespace

TEST(SCSystemPath, ABackslashSeparatesParts)
{
    std::filesystem::path path;
    ASSERT_TRUE(SCSystemPath::ConvertIntoSystemPath("a\\b/c.dat", path));
    EXPECT_EQ(path, std::filesystem::path("a/b/c.dat"));
}

TEST(SCSystemPath, ATrailByteIsNoSeparator)
{
    std::filesystem::path path;
    // Three kanji and kana whose trail byte is a backslash.
    ASSERT_TRUE(SCSystemPath::ConvertIntoSystemPath(("d\\" + SJIS(u8"表ソ能") + "\\e").c_str(), path));
    EXPECT_EQ(path, std::filesystem::path(u8"d/表ソ能/e"));
}

TEST(SCSystemPath, ThePathFollowsTheCodePage)
{
    const CCodePageScope utf8(CP_UTF8);
    std::filesystem::path path;
    ASSERT_TRUE(SCSystemPath::ConvertIntoSystemPath(UTF8(u8"d\\表é").c_str(), path));
    EXPECT_EQ(path, std::filesystem::path(u8"d/表é"));
}

TEST(SCSystemPath, APathThatIsNoTextOfTheCodePageIsRefused)
{
    std::filesystem::path path = "former";
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(SCSystemPath::ConvertIntoSystemPath("a\x82", path));
    EXPECT_EQ(GetLastError(), ERROR_NO_UNICODE_TRANSLATION);
    EXPECT_EQ(path, std::filesystem::path("former"));
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(SCSystemPath::OpenFile("a\x82", "rb"), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_NO_UNICODE_TRANSLATION);
}

TEST(SCSystemPath, AFileWithAJapaneseNameIsOpened)
{
    const CTempDir dir;
    const std::string path = dir.WriteFile(UTF8(u8"表.txt"), "content");
    const CFilePtr file = SCSystemPath::OpenFile(
        WithBackslashes(dir.GetPath().string() + "/").append(SJIS(u8"表.txt")).c_str(), "rb");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(ReadAll(file.get()), "content");
}

TEST(SCSystemPath, AFileIsMadeWhereTheModeAsksForIt)
{
    const CTempDir dir;
    const std::string path = dir.GetPath().string() + "\\new.txt";
    {
        const CFilePtr file = SCSystemPath::OpenFile(path.c_str(), "wb");
        ASSERT_NE(file, nullptr);
        std::fputs("abc", file.get());
    }
    const CFilePtr file = SCSystemPath::OpenFile(path.c_str(), "rb");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(ReadAll(file.get()), "abc");
    EXPECT_TRUE(std::filesystem::exists(dir.GetPath() / "new.txt"));
}

TEST(SCSystemPath, AMissingFileAndADirectoryAreRefusedWithTheirErrors)
{
    const CTempDir dir;
    EXPECT_EQ(SCSystemPath::OpenFile((dir.GetPath().string() + "\\missing").c_str(), "rb"), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(SCSystemPath::OpenFile(dir.GetPath().string().c_str(), "rb"), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    const std::string file = dir.WriteFile("file", "");
    EXPECT_EQ(SCSystemPath::OpenFile((file + "\\below").c_str(), "rb"), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(SCSystemPath::OpenFile((dir.GetPath().string() + "/" + std::string(5000, 'x')).c_str(), "rb"),
              nullptr);
    EXPECT_EQ(GetLastError(), ERROR_FILENAME_EXCED_RANGE);
    SetLastError(ERROR_SUCCESS);
}

TEST(SCSystemPath, AFileIsOpenedForReadingWithItsSize)
{
    const CTempDir dir;
    dir.WriteFile(UTF8(u8"表.dat"), "content");
    dir.WriteFile("empty.dat", "");
    unsigned long long size = 77;
    const CFilePtr file =
        SCSystemPath::OpenFileForReading((dir.GetPath().string() + "\\" + SJIS(u8"表.dat")).c_str(), size);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(size, 7u);
    EXPECT_EQ(ReadAll(file.get()), "content");
    const CFilePtr empty =
        SCSystemPath::OpenFileForReading((dir.GetPath().string() + "\\empty.dat").c_str(), size);
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(size, 0u);
}

TEST(SCSystemPath, WhatHasNoSizeIsNotOpenedForReadingAndNotWaitedFor)
{
    const CTempDir dir;
    const std::string pipe = (dir.GetPath() / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    unsigned long long size = 77;
    for (const std::string& path : {dir.GetPath().string(), dir.GetPath().string() + "/", pipe,
                                    std::string("/dev/null"), std::string("/dev/zero")}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(SCSystemPath::OpenFileForReading(path.c_str(), size), nullptr) << path;
        EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED) << path;
    }
    EXPECT_EQ(SCSystemPath::OpenFileForReading((dir.GetPath() / "missing").string().c_str(), size), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(SCSystemPath::OpenFileForReading("a\x82", size), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_NO_UNICODE_TRANSLATION);
    EXPECT_EQ(size, 77u);
}

TEST(SCSystemPath, AValueOfErrnoHasItsLastError)
{
    EXPECT_EQ(SCSystemPath::GetLastErrorOfErrno(ENOENT), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(SCSystemPath::GetLastErrorOfErrno(EEXIST), ERROR_FILE_EXISTS);
    EXPECT_EQ(SCSystemPath::GetLastErrorOfErrno(ENOSPC), ERROR_DISK_FULL);
    EXPECT_EQ(SCSystemPath::GetLastErrorOfErrno(EFBIG), ERROR_FILE_TOO_LARGE);
    EXPECT_EQ(SCSystemPath::GetLastErrorOfErrno(EIO), ERROR_GEN_FAILURE);
    EXPECT_EQ(SCSystemPath::GetLastErrorOfErrno(0), ERROR_GEN_FAILURE);
}

TEST(SCSystemPath, ExhaustedMemoryLeavesNoFileOpen)
{
    const CTempDir dir;
    const std::string path =
        dir.WriteFile(UTF8(u8"a long name that does not fit a short string.txt"), "content");
    const int failures = FailEveryAllocation(
        [] { return CFilePtr(); }, [&](CFilePtr& file) { file = SCSystemPath::OpenFile(path.c_str(), "rb"); },
        [](const CFilePtr& file) { EXPECT_EQ(file, nullptr); });
    EXPECT_GE(failures, 1);
}
