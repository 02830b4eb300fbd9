#include "CBnLink_OnMemVer.h"

#include "Support/CAllocFault.h"
#include "Support/CRandom.h"
#include "Support/LinkTableContent.h"
#include "Support/LinkTableFiles.h"
#include "Support/LinkTableUse.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <memory>

#include <sys/stat.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

// Three records in the classes 3, 1 and 4, inserted in this order; the class 5 had a column.
void Fill(IBnLink& link)
{
    ASSERT_TRUE(InsertFld(link, 3, {2, 3, 2}));
    ASSERT_TRUE(InsertFld(link, 5, {9, 9, 9}));
    ASSERT_TRUE(InsertFld(link, 1, {1, 5, 6}));
    ASSERT_TRUE(InsertFld(link, 4, {9, 8, 7}));
    ASSERT_TRUE(link.DeleteFld(5));
}

class CBnLink_OnMemVer_Files : public testing::Test
{
protected:
    // Writes the table of Fill.
    void SetUp() override
    {
        CBnLink_OnMemVer link;
        Fill(link);
        expected = GetContent(link);
        ASSERT_TRUE(link.WriteTo(dir.GetPath().c_str()));
    }

    // Reads into a table that holds something, which must be gone whatever comes.
    bool Read(CBnLink_OnMemVer& link) const
    {
        link.Clear();
        EXPECT_TRUE(InsertFld(link, 7, {1, 2}));
        SetLastError(ERROR_SUCCESS);
        return ReadFromDir(link, dir);
    }
    void ExpectRefused(DWORD error, const std::string& what) const
    {
        CBnLink_OnMemVer link;
        EXPECT_FALSE(Read(link)) << what;
        EXPECT_EQ(GetLastError(), error) << what;
        EXPECT_EQ(GetContent(link), SBnLinkContent()) << what;
    }

    const CLinkTableDir dir;
    SBnLinkContent expected;
};

} // namespace

TEST_F(CBnLink_OnMemVer_Files, HoldTheTableNumberByNumber)
{
    EXPECT_EQ(dir.Read(0), (List{3, 3, 6, 0, 2, 0, 1, 3, 0}));
    EXPECT_EQ(dir.Read(1), (List{2, 3, 2}));
    EXPECT_EQ(dir.Read(2), (List{1, 5, 6}));
    EXPECT_EQ(dir.Read(3), (List{9, 8, 7}));
    EXPECT_FALSE(std::filesystem::exists(dir.GetFile(4)));
    EXPECT_EQ(std::filesystem::file_size(dir.GetFile(0)), 36u);
    EXPECT_EQ(std::filesystem::file_size(dir.GetFile(1)), 12u);
}

TEST_F(CBnLink_OnMemVer_Files, GiveTheTableBack)
{
    CBnLink_OnMemVer link;
    ASSERT_TRUE(Read(link));
    EXPECT_EQ(GetContent(link), expected);
    // It goes on as if it had never been away: written again it gives the same files.
    const CLinkTableDir second;
    ASSERT_TRUE(link.WriteTo(second.GetPath().c_str()));
    for (DWORD file = 0; file <= 3; ++file)
        EXPECT_EQ(second.Read(file), dir.Read(file));
    EXPECT_TRUE(link.DeleteFld(3));
    EXPECT_EQ(GetColumn(link, 4), (List{9, 8, 7}));
}

TEST_F(CBnLink_OnMemVer_Files, GiveEmptyTablesBack)
{
    CBnLink_OnMemVer empty;
    ASSERT_TRUE(empty.WriteTo(dir.GetPath().c_str()));
    EXPECT_EQ(dir.Read(0), (List{0, 0, 0}));
    CBnLink_OnMemVer link;
    EXPECT_TRUE(Read(link));
    EXPECT_EQ(GetContent(link), SBnLinkContent());

    EXPECT_TRUE(empty.InsertRec(0, 5)); // records without a column
    ASSERT_TRUE(empty.WriteTo(dir.GetPath().c_str()));
    EXPECT_TRUE(Read(link));
    EXPECT_EQ(link.GetRecCount(), 5u);
    EXPECT_FALSE(link.ExistFld(1));

    CBnLink_OnMemVer noRecords;
    ASSERT_TRUE(InsertFld(noRecords, 2, {}));
    ASSERT_TRUE(noRecords.WriteTo(dir.GetPath().c_str()));
    EXPECT_EQ(std::filesystem::file_size(dir.GetFile(1)), 0u);
    EXPECT_TRUE(Read(link));
    EXPECT_TRUE(link.ExistFld(2));
    EXPECT_EQ(link.GetRecCount(), 0u);
}

TEST_F(CBnLink_OnMemVer_Files, OfALargerTableBeforeStayUnread)
{
    CBnLink_OnMemVer small;
    ASSERT_TRUE(InsertFld(small, 2, {4}));
    ASSERT_TRUE(small.WriteTo(dir.GetPath().c_str()));
    EXPECT_EQ(dir.Read(1), List{4});
    EXPECT_EQ(dir.Read(3), (List{9, 8, 7}));
    dir.Write(2, {1});
    CBnLink_OnMemVer link;
    EXPECT_TRUE(Read(link));
    EXPECT_EQ(GetContent(link), GetContent(small));
}

TEST_F(CBnLink_OnMemVer_Files, AreWrittenToADirectoryThatIsMadeForThem)
{
    CBnLink_OnMemVer link;
    Fill(link);
    const std::string path = dir.GetPath() + SJIS(u8"表") + "\\BUI\\ID_1\\BnLink\\";
    ASSERT_TRUE(link.WriteTo(path.c_str()));
    CBnLink_OnMemVer read;
    EXPECT_TRUE(ReadFromDir(read, path));
    EXPECT_EQ(GetContent(read), expected);
}

TEST_F(CBnLink_OnMemVer_Files, NeedTheirDirectoryToBeOne)
{
    CBnLink_OnMemVer link;
    Fill(link);
    const std::string withoutSeparator = dir.GetPath() + "new";
    const std::string trailByte = dir.GetPath() + SJIS(u8"表"); // ends in the byte of a separator
    const std::string belowFile = dir.GetPath() + "0.dat\\BnLink\\";
    for (const std::string& path : {withoutSeparator, trailByte, belowFile, std::string("relative\\"),
                                    std::string(), std::string("a\x82\\")}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(link.WriteTo(path.c_str())) << path;
        EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA) << path;
    }
    for (const std::string& path : {withoutSeparator, trailByte, std::string()}) {
        CBnLink_OnMemVer read;
        ASSERT_TRUE(InsertFld(read, 7, {1, 2}));
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(ReadFromDir(read, path));
        EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA) << path;
        EXPECT_EQ(GetContent(read), SBnLinkContent());
    }
    EXPECT_TRUE(std::filesystem::is_empty(dir.GetFile(0).parent_path() /
                                          "new")); // it is made before its path is looked at
}

TEST_F(CBnLink_OnMemVer_Files, ThatCannotBeWrittenAreToldAndTheTableStays)
{
    CBnLink_OnMemVer link;
    Fill(link);
    const auto expectNotWritten = [&](const std::string& path, DWORD error) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(link.WriteTo(path.c_str())) << path;
        EXPECT_EQ(GetLastError(), error) << path;
        EXPECT_EQ(GetContent(link), expected);
    };
    expectNotWritten(dir.GetPath() + "1.dat\\", ERROR_PATH_NOT_FOUND); // a file of the directory's name

    std::filesystem::remove(dir.GetFile(2));
    std::filesystem::create_directory(dir.GetFile(2));
    expectNotWritten(dir.GetPath(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(dir.Read(1), (List{2, 3, 2})); // what was written before stays

    for (const DWORD file : {0u, 3u}) {
        const CLinkTableDir full;
        std::filesystem::create_symlink("/dev/full", full.GetFile(file));
        expectNotWritten(full.GetPath(), ERROR_DISK_FULL);
    }
}

TEST_F(CBnLink_OnMemVer_Files, OfAnotherKindOfMachineAreRefused)
{
    const auto endianness = SCKZCoreCom::GetEndiannessOfPresentEnvironment();
    const auto dataModel = SCKZCoreCom::GetDataModelOfPresentEnvironment();
    for (const DWORD value : {0u, 1u, 2u, 3u, 4u}) {
        const auto otherEndianness = static_cast<SCKZCoreCom::EEndianness>(value);
        const auto otherDataModel = static_cast<SCKZCoreCom::EDataModel>(value);
        CBnLink_OnMemVer link;
        Fill(link);
        EXPECT_EQ(link.ReadFrom(dir.GetPath().c_str(), otherEndianness, dataModel),
                  otherEndianness == endianness);
        EXPECT_EQ(GetContent(link), otherEndianness == endianness ? expected : SBnLinkContent());
        link.Clear();
        Fill(link);
        EXPECT_EQ(link.ReadFrom(dir.GetPath().c_str(), endianness, otherDataModel),
                  otherDataModel == dataModel);
        EXPECT_EQ(GetContent(link), otherDataModel == dataModel ? expected : SBnLinkContent());
    }
}

TEST_F(CBnLink_OnMemVer_Files, ThatAreMissingOrNoFilesAreRefused)
{
    for (const DWORD file : {0u, 1u, 3u}) {
        const List numbers = dir.Read(file);
        std::filesystem::remove(dir.GetFile(file));
        ExpectRefused(ERROR_FILE_NOT_FOUND, "missing");
        std::filesystem::create_directory(dir.GetFile(file));
        ExpectRefused(ERROR_ACCESS_DENIED, "directory");
        std::filesystem::remove(dir.GetFile(file));
        ASSERT_EQ(::mkfifo(dir.GetFile(file).c_str(), 0600), 0);
        ExpectRefused(ERROR_ACCESS_DENIED, "pipe");
        std::filesystem::remove(dir.GetFile(file));
        dir.Write(file, numbers);
    }
    std::filesystem::remove_all(dir.GetPath().substr(0, dir.GetPath().size() - 1));
    ExpectRefused(ERROR_FILE_NOT_FOUND, "no directory");
}

TEST_F(CBnLink_OnMemVer_Files, WithAnIndexThatContradictsItselfAreRefused)
{
    const std::vector<List> bad = {
        {},
        {3},
        {3, 3},
        {3, 3, 6},                            // entries are missing
        {3, 3, 6, 0, 2, 0, 1, 3},             // one is missing
        {3, 3, 6, 0, 2, 0, 1, 3, 0, 0},       // something behind the last one
        {3, 3, 5, 0, 2, 0, 1, 3, 0},          // fewer than there are
        {3, 3, 4294967295, 0, 2, 0, 1, 3, 0}, // more than could be
        {2, 3, 6, 0, 2, 0, 1, 3, 0},          // fewer columns than classes
        {4, 3, 6, 0, 2, 0, 1, 3, 0},          // more
        {4294967295, 3, 6, 0, 2, 0, 1, 3, 0}, // far more
        {3, 3, 6, 2, 0, 0, 1, 3, 0},          // 0 is no class
        {3, 3, 6, 0, 2, 0, 2, 3, 0},          // a column for two classes
        {3, 3, 6, 0, 2, 0, 4, 3, 0},          // a column that is not there
        {3, 3, 6, 0, 2, 0, 4294967295, 3, 0}, // far from it
        {3, 2, 6, 0, 2, 0, 1, 3, 0},          // fewer records than the columns have
        {3, 4, 6, 0, 2, 0, 1, 3, 0},          // more
        {3, 4294967295, 6, 0, 2, 0, 1, 3, 0}, // far more
        {0, 3, 6, 0, 0, 0, 0, 0},             // one entry is missing behind no column
    };
    for (const List& numbers : bad) {
        dir.Write(0, numbers);
        ExpectRefused(ERROR_INVALID_DATA, testing::PrintToString(numbers));
    }
    for (const std::size_t odd : {1u, 2u, 3u}) {
        dir.WriteFileBytes(0, MakeBytes({3, 3, 6, 0, 2, 0, 1, 3, 0}) + std::string(odd, '\0'));
        ExpectRefused(ERROR_INVALID_DATA, "odd bytes");
    }
}

TEST_F(CBnLink_OnMemVer_Files, WithAColumnThatIsNotAsLongAsTheOthersAreRefused)
{
    const std::string column = MakeBytes({1, 5, 6});
    for (const DWORD file : {1u, 2u, 3u}) {
        const std::string former = ReadFileBytes(dir.GetFile(file));
        for (const std::size_t size : {0u, 1u, 4u, 8u, 11u, 13u, 16u, 4096u}) {
            std::string damaged = column;
            damaged.resize(size, '\0');
            dir.WriteFileBytes(file, damaged);
            ExpectRefused(ERROR_INVALID_DATA, std::to_string(size) + " bytes");
        }
        dir.WriteFileBytes(file, former);
    }
}

TEST_F(CBnLink_OnMemVer_Files, AreProvedBeforeMemoryIsTakenForThem)
{
    CAllocFault memory;
    const auto readNumbers = [&](const List& numbers) {
        dir.Write(0, numbers);
        CBnLink_OnMemVer link;
        memory.Arm(0);
        EXPECT_FALSE(ReadFromDir(link, dir));
        return memory.GetLargestSize();
    };
    constexpr std::size_t READING_AHEAD = 65536;
    EXPECT_LE(readNumbers({3, 4294967295, 6, 0, 2, 0, 1, 3, 0}), READING_AHEAD);
    EXPECT_LE(readNumbers({3, 3, 4294967295, 0, 2, 0, 1, 3, 0}), READING_AHEAD);
    EXPECT_LE(readNumbers({4294967295, 3, 6, 0, 2, 0, 1, 3, 0}), READING_AHEAD);
    EXPECT_LE(readNumbers({3, 1073741824, 6, 0, 2, 0, 1, 3, 0}), READING_AHEAD); // 32 bits of bytes overflow
}

TEST_F(CBnLink_OnMemVer_Files, CutOffOrFlippedAnywhereGiveATableOrNone)
{
    int read = 0;
    int refused = 0;
    const auto tryReading = [&] {
        CBnLink_OnMemVer link;
        if (Read(link)) {
            ++read;
            UseTable(link, 50);
        } else {
            ++refused;
            EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
            EXPECT_EQ(GetContent(link), SBnLinkContent());
        }
    };
    for (DWORD file = 0; file <= 3; ++file) {
        const std::string whole = ReadFileBytes(dir.GetFile(file));
        for (std::size_t size = 0; size < whole.size(); ++size) {
            dir.WriteFileBytes(file, whole.substr(0, size));
            tryReading();
        }
        EXPECT_EQ(read, 0);
        for (std::size_t bit = 0; file == 0 && bit < whole.size() * 8; ++bit) {
            std::string flipped = whole;
            flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << bit % 8));
            dir.WriteFileBytes(file, flipped);
            tryReading();
        }
        EXPECT_EQ(read, 0); // in so small an index every number counts
        dir.WriteFileBytes(file, whole);
    }
    EXPECT_EQ(refused, 36 + 3 * 12 + 36 * 8);
    // A swap of whole columns is no contradiction.
    const List first = dir.Read(1);
    dir.Write(1, dir.Read(3));
    dir.Write(3, first);
    tryReading();
    EXPECT_EQ(read, 1);
}

TEST_F(CBnLink_OnMemVer_Files, OfRandomTablesGiveThemBack)
{
    CRandom random;
    for (int run = 0; run < 30; ++run) {
        CBnLink_OnMemVer link;
        const DWORD recCount = random.GetBelow(200);
        for (int i = 0; i < 12; ++i) {
            List cells(recCount);
            for (DWORD& cell : cells)
                cell = random.GetBelow(4294967295);
            InsertFld(link, 1 + random.GetBelow(40), cells);
            if (random.IsOneOf(4))
                link.DeleteFld(1 + random.GetBelow(40));
        }
        ASSERT_TRUE(link.WriteTo(dir.GetPath().c_str()));
        CBnLink_OnMemVer read;
        ASSERT_TRUE(Read(read));
        EXPECT_EQ(GetContent(read), GetContent(link));
    }
}

TEST_F(CBnLink_OnMemVer_Files, ReadWhileMemoryRunsOutLeaveTheTableEmpty)
{
    const std::string path = dir.GetPath();
    const int failures = FailEveryAllocation(
        [] {
            auto link = std::make_unique<CBnLink_OnMemVer>();
            Fill(*link);
            return link;
        },
        [&](std::unique_ptr<CBnLink_OnMemVer>& link) { EXPECT_TRUE(ReadFromDir(*link, path)); },
        [](std::unique_ptr<CBnLink_OnMemVer>& link) { EXPECT_EQ(GetContent(*link), SBnLinkContent()); });
    EXPECT_GE(failures, 6);
}

TEST_F(CBnLink_OnMemVer_Files, WrittenWhileMemoryRunsOutLeaveTheTableAsItWas)
{
    CBnLink_OnMemVer link;
    Fill(link);
    const std::string path = dir.GetPath();
    CAllocFault fault;
    std::size_t thrown = 0;
    const std::size_t failures = fault.FailEachInTurn([&](auto&& attempt) {
        bool written = true;
        if (!attempt([&] { written = link.WriteTo(path.c_str()); }))
            ++thrown;
        // Where the directory was not had for want of memory, nothing is thrown.
        EXPECT_TRUE(written || GetLastError() == ERROR_INVALID_DATA);
    });
    EXPECT_GE(failures, 4u);
    EXPECT_GE(thrown, 1u);
    EXPECT_EQ(GetContent(link), expected);
    CBnLink_OnMemVer read;
    EXPECT_TRUE(Read(read));
    EXPECT_EQ(GetContent(read), expected);
}
