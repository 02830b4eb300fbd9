#include "CBinaryReader.h"

#include "Support/CAllocFault.h"
#include "Support/LinkTableFiles.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <numeric>

#include <sys/stat.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

// Each test with the reader buffered and not.
class CBinaryReaderTest : public testing::TestWithParam<bool>
{
protected:
    std::string WriteNumbers(const std::vector<DWORD>& numbers) const
    {
        return dir.WriteFile("numbers.dat", MakeBytes(numbers));
    }
    void ExpectFailsToOpen(const std::string& path, DWORD error) const
    {
        CBinaryReader reader(path.c_str(), GetParam());
        EXPECT_EQ(GetLastError(), error) << path;
        for (int i = 0; i < 2; ++i) {
            SetLastError(ERROR_SUCCESS);
            unsigned long long size = 77;
            EXPECT_FALSE(reader.GetFileSize(size)) << path;
            EXPECT_EQ(size, 77u);
            EXPECT_EQ(GetLastError(), error) << path;
            SetLastError(ERROR_SUCCESS);
            DWORD value = 0;
            EXPECT_EQ(reader.ReadData(value), CBinaryReader::READDATA_FAILURE) << path;
            EXPECT_EQ(GetLastError(), error) << path;
            EXPECT_EQ(reader.ReadData(&value, 1), CBinaryReader::READDATA_FAILURE) << path;
        }
    }

    const CTempDir dir;
};
INSTANTIATE_TEST_SUITE_P(BufferedOrNot, CBinaryReaderTest, testing::Bool(),
                         [](const auto& run) { return run.param ? "Buffered" : "Direct"; });

} // namespace

TEST_P(CBinaryReaderTest, NumbersComeInTheOrderOfTheFileOneByOneOrManyAtOnce)
{
    CBinaryReader reader(WriteNumbers({1, 4294967295, 3, 4, 5, 0x01020304}).c_str(), GetParam());
    unsigned long long size = 0;
    EXPECT_TRUE(reader.GetFileSize(size));
    EXPECT_EQ(size, 24u);
    unsigned int first = 0;
    DWORD second = 0;
    EXPECT_EQ(reader.ReadData(first), CBinaryReader::READDATA_OK);
    EXPECT_EQ(reader.ReadData(second), CBinaryReader::READDATA_OK);
    EXPECT_EQ(first, 1u);
    EXPECT_EQ(second, 4294967295u);
    std::vector<DWORD> some(3);
    EXPECT_EQ(reader.ReadData(some.data(), 3), CBinaryReader::READDATA_OK);
    EXPECT_EQ(some, (std::vector<DWORD>{3, 4, 5}));
    EXPECT_EQ(reader.ReadData(second), CBinaryReader::READDATA_OK);
    EXPECT_EQ(second, 0x01020304u);
    EXPECT_EQ(reader.ReadData(nullptr, 0), CBinaryReader::READDATA_OK);
    EXPECT_TRUE(reader.GetFileSize(size));
    EXPECT_EQ(size, 24u);
}

TEST_P(CBinaryReaderTest, StretchesOfEveryLengthGoOnWhereTheLastOneEnded)
{
    std::vector<DWORD> numbers(200000); // many times what is read ahead
    std::iota(numbers.begin(), numbers.end(), 7U);
    for (const DWORD step : {1u, 3u, 1000u, 16383u, 16384u, 16385u, 50000u, 199999u}) {
        CBinaryReader reader(WriteNumbers(numbers).c_str(), GetParam());
        std::vector<DWORD> read(numbers.size());
        std::size_t pos = 0;
        while (pos < read.size()) {
            const auto count = static_cast<DWORD>(std::min<std::size_t>(step, read.size() - pos));
            ASSERT_EQ(reader.ReadData(read.data() + pos, count), CBinaryReader::READDATA_OK);
            pos += count;
            if (pos < read.size()) {
                ASSERT_EQ(reader.ReadData(read[pos++]), CBinaryReader::READDATA_OK);
            }
        }
        EXPECT_EQ(read, numbers) << step;
    }
}

TEST_P(CBinaryReaderTest, WhatTheFileDoesNotHaveIsItsEndAndStaysSo)
{
    for (const std::size_t size : {0u, 1u, 3u, 4u, 5u, 11u}) {
        CBinaryReader reader(dir.WriteFile("numbers.dat", std::string(size, '\x01')).c_str(), GetParam());
        DWORD value = 0;
        for (std::size_t i = 0; i < size / sizeof(DWORD); ++i)
            ASSERT_EQ(reader.ReadData(value), CBinaryReader::READDATA_OK);
        for (int i = 0; i < 3; ++i) {
            SetLastError(ERROR_SUCCESS);
            EXPECT_EQ(reader.ReadData(value), CBinaryReader::READDATA_ENDOFFILE) << size;
            EXPECT_EQ(GetLastError(), ERROR_HANDLE_EOF);
        }
        EXPECT_EQ(reader.ReadData(nullptr, 0), CBinaryReader::READDATA_ENDOFFILE);
    }
    CBinaryReader reader(WriteNumbers({1, 2, 3}).c_str(), GetParam());
    std::vector<DWORD> four(4);
    EXPECT_EQ(reader.ReadData(four.data(), 4), CBinaryReader::READDATA_ENDOFFILE);
    DWORD value = 0;
    EXPECT_EQ(reader.ReadData(value), CBinaryReader::READDATA_ENDOFFILE); // behind a failure all fail
}

TEST_P(CBinaryReaderTest, WhatCannotBeOpenedFailsEveryCall)
{
    ExpectFailsToOpen((dir.GetPath() / "missing").string(), ERROR_FILE_NOT_FOUND);
    ExpectFailsToOpen(dir.GetPath().string(), ERROR_ACCESS_DENIED);
    ExpectFailsToOpen("", ERROR_FILE_NOT_FOUND);
    ExpectFailsToOpen("a\x82", ERROR_NO_UNICODE_TRANSLATION);
}

TEST_P(CBinaryReaderTest, OnlyRegularFilesAreRead)
{
    const std::string pipe = (dir.GetPath() / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    ExpectFailsToOpen(pipe, ERROR_ACCESS_DENIED); // and nobody is waited for
    ExpectFailsToOpen("/dev/zero", ERROR_ACCESS_DENIED);
}

TEST_P(CBinaryReaderTest, ThePathIsInTheCodePageOfTheHost)
{
    dir.WriteFile(UTF8(u8"表.dat"), MakeBytes({5}));
    CBinaryReader reader((dir.GetPath().string() + "\\" + SJIS(u8"表.dat")).c_str(), GetParam());
    DWORD value = 0;
    EXPECT_EQ(reader.ReadData(value), CBinaryReader::READDATA_OK);
    EXPECT_EQ(value, 5u);
}

TEST_P(CBinaryReaderTest, AFileThatBecomesShorterWhileItIsReadEndsEarly)
{
    const std::string path = WriteNumbers(std::vector<DWORD>(100000, 1));
    CBinaryReader reader(path.c_str(), GetParam());
    DWORD value = 0;
    EXPECT_EQ(reader.ReadData(value), CBinaryReader::READDATA_OK);
    std::filesystem::resize_file(path, 70000 * sizeof(DWORD));
    std::vector<DWORD> rest(99999);
    EXPECT_EQ(reader.ReadData(rest.data(), 99999), CBinaryReader::READDATA_ENDOFFILE);
    unsigned long long size = 0;
    EXPECT_TRUE(reader.GetFileSize(size));
    EXPECT_EQ(size, 400000u);
}

TEST_P(CBinaryReaderTest, ExhaustedMemoryLeavesNothingBehind)
{
    const std::string path = WriteNumbers({1, 2});
    const int failures =
        FailEveryAllocation([] { return 0; },
                            [&](int) {
                                CBinaryReader reader(path.c_str(), GetParam());
                                DWORD value = 0;
                                EXPECT_EQ(reader.ReadData(value), CBinaryReader::READDATA_OK);
                            },
                            [](int) {});
    EXPECT_GE(failures, 1);
}
