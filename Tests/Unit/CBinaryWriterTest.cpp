#include "CBinaryWriter.h"

#include "Support/CAllocFault.h"
#include "Support/LinkTableFiles.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <memory>
#include <numeric>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

// Each test with the writer buffered and not.
class CBinaryWriterTest : public testing::TestWithParam<bool>
{
protected:
    std::string GetPath() const { return (dir.GetPath() / "numbers.dat").string(); }
    std::vector<DWORD> ReadNumbers() const { return MakeNumbers(ReadFileBytes(GetPath())); }
    bool IsBuffered() const { return GetParam(); }

    const CTempDir dir;
};
INSTANTIATE_TEST_SUITE_P(BufferedOrNot, CBinaryWriterTest, testing::Bool(),
                         [](const auto& run) { return run.param ? "Buffered" : "Direct"; });

} // namespace

TEST_P(CBinaryWriterTest, NumbersAreWrittenInOrderOneByOneOrManyAtOnce)
{
    const std::vector<DWORD> some = {3, 4, 5};
    CBinaryWriter writer(GetPath().c_str(), IsBuffered());
    const unsigned int first = 1;
    const DWORD second = 4294967295;
    EXPECT_TRUE(writer.WriteData(first));
    EXPECT_TRUE(writer.WriteData(second));
    EXPECT_TRUE(writer.WriteData(some.data(), 3));
    EXPECT_TRUE(writer.WriteData(nullptr, 0));
    EXPECT_TRUE(writer.WriteData(0x01020304u));
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(ReadNumbers(), (std::vector<DWORD>{1, 4294967295, 3, 4, 5, 0x01020304}));
    EXPECT_EQ(std::filesystem::file_size(GetPath()), 24u);
}

TEST_P(CBinaryWriterTest, StretchesOfEveryLengthStandOneBehindTheOther)
{
    std::vector<DWORD> numbers(200000); // many times what is held back
    std::iota(numbers.begin(), numbers.end(), 7U);
    for (const DWORD step : {1u, 3u, 1000u, 16383u, 16384u, 16385u, 50000u, 199999u}) {
        CBinaryWriter writer(GetPath().c_str(), IsBuffered());
        std::size_t pos = 0;
        while (pos < numbers.size()) {
            const auto count = static_cast<DWORD>(std::min<std::size_t>(step, numbers.size() - pos));
            EXPECT_TRUE(writer.WriteData(numbers.data() + pos, count));
            pos += count;
            if (pos < numbers.size()) {
                EXPECT_TRUE(writer.WriteData(numbers[pos++]));
            }
        }
        EXPECT_TRUE(writer.Close());
        EXPECT_EQ(ReadNumbers(), numbers) << step;
    }
}

TEST_P(CBinaryWriterTest, AFormerFileIsReplacedAndNothingWrittenIsAnEmptyFile)
{
    dir.WriteFile("numbers.dat", std::string(100000, 'x'));
    CBinaryWriter writer(GetPath().c_str(), IsBuffered());
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(std::filesystem::file_size(GetPath()), 0u);
}

TEST_P(CBinaryWriterTest, BehindCloseOnlyCloseGoesWell)
{
    CBinaryWriter writer(GetPath().c_str(), IsBuffered());
    EXPECT_TRUE(writer.WriteData(1u));
    EXPECT_TRUE(writer.Close());
    EXPECT_TRUE(writer.Close());
    SetLastError(ERROR_SUCCESS);
    const DWORD value = 2;
    EXPECT_FALSE(writer.WriteData(value));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
    EXPECT_FALSE(writer.WriteData(&value, 1));
    EXPECT_FALSE(writer.WriteData(nullptr, 0));
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(ReadNumbers(), std::vector<DWORD>{1});
}

TEST_P(CBinaryWriterTest, WhatIsNotClosedIsWrittenAsFarAsItGoes)
{
    {
        CBinaryWriter writer(GetPath().c_str(), IsBuffered());
        EXPECT_TRUE(writer.WriteData(1u));
    }
    EXPECT_EQ(ReadNumbers(), std::vector<DWORD>{1});
    CBinaryWriter writer("/dev/full", IsBuffered());
    writer.WriteData(1u);
}

TEST_P(CBinaryWriterTest, AFileThatCannotBeCreatedFailsEveryCall)
{
    const std::string missing = (dir.GetPath() / "missing" / "numbers.dat").string();
    const std::vector<std::pair<std::string, DWORD>> cases = {{missing, ERROR_FILE_NOT_FOUND},
                                                              {dir.GetPath().string(), ERROR_ACCESS_DENIED},
                                                              {"a\x82", ERROR_NO_UNICODE_TRANSLATION}};
    for (const auto& [path, error] : cases) {
        CBinaryWriter writer(path.c_str(), IsBuffered());
        EXPECT_EQ(GetLastError(), error) << path;
        for (int i = 0; i < 2; ++i) {
            const DWORD value = 1;
            SetLastError(ERROR_SUCCESS);
            EXPECT_FALSE(writer.WriteData(value));
            EXPECT_EQ(GetLastError(), error) << path;
            EXPECT_FALSE(writer.WriteData(&value, 1));
            SetLastError(ERROR_SUCCESS);
            EXPECT_FALSE(writer.Close());
            EXPECT_EQ(GetLastError(), error) << path;
        }
    }
}

TEST_P(CBinaryWriterTest, AFullDiskIsToldAtTheLatestByClose)
{
    CBinaryWriter writer("/dev/full", IsBuffered());
    EXPECT_EQ(writer.WriteData(1u), IsBuffered()); // which holds it back
    for (int i = 0; i < 2; ++i) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(writer.Close());
        EXPECT_EQ(GetLastError(), ERROR_DISK_FULL);
    }
    EXPECT_FALSE(writer.WriteData(1u));

    CBinaryWriter larger("/dev/full", IsBuffered());
    DWORD count = 0;
    while (count < 100000 && larger.WriteData(count))
        ++count;
    EXPECT_LT(count, 20000u); // before everything has been handed over
    EXPECT_EQ(GetLastError(), ERROR_DISK_FULL);
    const std::vector<DWORD> many(100000);
    CBinaryWriter atOnce("/dev/full", IsBuffered());
    EXPECT_FALSE(atOnce.WriteData(many.data(), 100000));
    EXPECT_FALSE(atOnce.Close());
    EXPECT_EQ(GetLastError(), ERROR_DISK_FULL);
}

TEST_P(CBinaryWriterTest, ExhaustedMemoryLeavesNothingBehind)
{
    const int failures = FailEveryAllocation([] { return 0; },
                                             [&](int) {
                                                 CBinaryWriter writer(GetPath().c_str(), IsBuffered());
                                                 EXPECT_TRUE(writer.WriteData(1u));
                                                 EXPECT_TRUE(writer.Close());
                                             },
                                             [](int) {});
    EXPECT_GE(failures, 1);
    EXPECT_EQ(ReadNumbers(), std::vector<DWORD>{1});
}
