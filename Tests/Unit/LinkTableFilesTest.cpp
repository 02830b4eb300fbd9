#include "Support/CAllocFault.h"
#include "Support/LinkTableUse.h"
#include "Support/LinkTableVersions.h"
#include "Support/TestText.h"
#include "Support/TLinkTableFilesFixture.h"

#include <gtest/gtest.h>

#include <memory>

#include <sys/stat.h>

// What holds for the files of every link table. What is in them has tests of its own.

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

void Use(IBnLink& link)
{
    UseTable(link, 50);
}
void Use(IRpLink& link)
{
    UseTable(link);
}

template <class TTable>
class LinkTableFiles : public TLinkTableFilesFixture<TTable>
{};
TYPED_TEST_SUITE(LinkTableFiles, LinkTables, CNameOfTable);

} // namespace

TYPED_TEST(LinkTableFiles, GiveTheTableBackWhichWritesTheSameFilesAgain)
{
    TypeParam link;
    ASSERT_TRUE(this->Read(link));
    EXPECT_EQ(GetContent(link), this->expected);
    const CLinkTableDir second;
    ASSERT_TRUE(link.WriteTo(second.GetPath().c_str()));
    EXPECT_EQ(link.GetVersionType(), VERSION_OF<TypeParam>);
    const DWORD fileCount = this->GetFileCount();
    EXPECT_GE(fileCount, 4u);
    for (DWORD file = 0; file < fileCount; ++file)
        EXPECT_EQ(ReadFileBytes(second.GetFile(file)), ReadFileBytes(this->dir.GetFile(file)));
    EXPECT_FALSE(std::filesystem::exists(second.GetFile(fileCount)));
    Use(link);
}

TYPED_TEST(LinkTableFiles, AreWrittenToADirectoryThatIsMadeForThem)
{
    TypeParam link;
    Fill(link);
    const std::string path = this->dir.GetPath() + SJIS(u8"表") + "\\BUI\\ID_1\\Link\\";
    ASSERT_TRUE(link.WriteTo(path.c_str()));
    ASSERT_TRUE(link.WriteTo(path.c_str())); // and to one that is there
    EXPECT_TRUE(std::filesystem::exists(this->dir.GetFile(0).parent_path() / u8"表/BUI/ID_1/Link/0.dat"));
    TypeParam read;
    EXPECT_TRUE(this->Read(read, path));
    EXPECT_EQ(GetContent(read), this->expected);
}

TYPED_TEST(LinkTableFiles, NeedTheirDirectoryToBeOne)
{
    TypeParam link;
    Fill(link);
    const std::string withoutSeparator = this->dir.GetPath() + "new";
    const std::string trailByte = this->dir.GetPath() + SJIS(u8"表"); // ends in the byte of a separator
    const std::string belowFile = this->dir.GetPath() + "0.dat\\Link\\";
    for (const std::string& path : {withoutSeparator, trailByte, belowFile, std::string("relative\\"),
                                    std::string(), std::string("a\x82\\")}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(link.WriteTo(path.c_str())) << path;
        EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA) << path;
    }
    EXPECT_EQ(GetContent(link), this->expected);
    for (const std::string& path : {withoutSeparator, trailByte, std::string()})
        this->ExpectRefused(ERROR_INVALID_DATA, path, path);
    // It is made before its path is looked at.
    EXPECT_TRUE(std::filesystem::is_empty(this->dir.GetFile(0).parent_path() / "new"));
}

TYPED_TEST(LinkTableFiles, ThatCannotBeWrittenAreToldAndTheTableStays)
{
    TypeParam link;
    Fill(link);
    const auto expectNotWritten = [&](const std::string& path, DWORD error) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(link.WriteTo(path.c_str())) << path;
        EXPECT_EQ(GetLastError(), error) << path;
        EXPECT_EQ(GetContent(link), this->expected);
    };
    expectNotWritten(this->dir.GetPath() + "1.dat\\", ERROR_PATH_NOT_FOUND); // a file of the directory's name

    const std::string first = ReadFileBytes(this->dir.GetFile(1));
    std::filesystem::remove(this->dir.GetFile(1));
    std::filesystem::remove(this->dir.GetFile(3));
    std::filesystem::create_directory(this->dir.GetFile(3));
    expectNotWritten(this->dir.GetPath(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ReadFileBytes(this->dir.GetFile(1)), first); // what was written before stays

    for (const DWORD file : {0u, 1u, 3u}) {
        const CLinkTableDir full;
        std::filesystem::create_symlink("/dev/full", full.GetFile(file));
        expectNotWritten(full.GetPath(), ERROR_DISK_FULL);
    }
}

TYPED_TEST(LinkTableFiles, OfAnotherKindOfMachineAreRefused)
{
    const auto endianness = SCKZCoreCom::GetEndiannessOfPresentEnvironment();
    const auto dataModel = SCKZCoreCom::GetDataModelOfPresentEnvironment();
    const std::string path = this->dir.GetPath();
    TypeParam link;
    for (const DWORD value : {0u, 1u, 2u, 3u, 4u}) {
        const auto otherEndianness = static_cast<SCKZCoreCom::EEndianness>(value);
        const auto otherDataModel = static_cast<SCKZCoreCom::EDataModel>(value);
        const auto expectIfSame = [&](bool isRead, bool isSame) {
            EXPECT_EQ(isRead, isSame);
            EXPECT_EQ(GetContent(link), isSame ? this->expected : decltype(this->expected)());
        };
        link.Clear();
        Fill(link);
        expectIfSame(link.ReadFrom(path.c_str(), otherEndianness, dataModel), otherEndianness == endianness);
        link.Clear();
        Fill(link);
        expectIfSame(link.ReadFrom(path.c_str(), endianness, otherDataModel), otherDataModel == dataModel);
    }
}

TYPED_TEST(LinkTableFiles, ThatAreMissingOrNoFilesAreRefused)
{
    for (DWORD number = 0; number < this->GetFileCount(); ++number) {
        const std::filesystem::path file = this->dir.GetFile(number);
        const std::string bytes = ReadFileBytes(file);
        std::filesystem::remove(file);
        this->ExpectRefused(ERROR_FILE_NOT_FOUND, "missing");
        std::filesystem::create_directory(file);
        this->ExpectRefused(ERROR_ACCESS_DENIED, "directory");
        std::filesystem::remove(file);
        ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
        this->ExpectRefused(ERROR_ACCESS_DENIED, "pipe");
        std::filesystem::remove(file);
        this->dir.WriteFileBytes(number, bytes);
    }
    this->ExpectRefused(ERROR_FILE_NOT_FOUND, "no directory", this->dir.GetPath() + "missing\\");
}

TYPED_TEST(LinkTableFiles, CutOffAnywhereAreRefused)
{
    for (DWORD file = 0; file < this->GetFileCount(); ++file) {
        const std::string whole = ReadFileBytes(this->dir.GetFile(file));
        for (std::size_t size = 0; size < whole.size(); ++size) {
            this->dir.WriteFileBytes(file, whole.substr(0, size));
            this->ExpectRefused(ERROR_INVALID_DATA, std::to_string(size));
        }
        this->dir.WriteFileBytes(file, whole);
    }
    TypeParam link;
    EXPECT_TRUE(this->Read(link));
}

TYPED_TEST(LinkTableFiles, FlippedAnywhereGiveATableOrNone)
{
    const DWORD fileCount = this->GetFileCount();
    int read = 0;
    int refused = 0;
    for (DWORD file = 0; file < fileCount; ++file) {
        const std::string whole = ReadFileBytes(this->dir.GetFile(file));
        for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
            std::string flipped = whole;
            flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << bit % 8));
            this->dir.WriteFileBytes(file, flipped);
            TypeParam link;
            if (this->Read(link)) {
                ++read;
                Use(link);
            } else {
                ++refused;
                EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
                EXPECT_EQ(GetContent(link), decltype(this->expected)());
            }
        }
        this->dir.WriteFileBytes(file, whole);
    }
    EXPECT_GT(read, 0); // cells may hold anything
    EXPECT_GE(refused, 36 * 8);
}

TYPED_TEST(LinkTableFiles, ReadWhileMemoryRunsOutLeaveTheTableEmpty)
{
    const std::string path = this->dir.GetPath();
    const int failures = FailEveryAllocation(
        [] {
            auto link = std::make_unique<TypeParam>();
            Fill(*link);
            return link;
        },
        [&](std::unique_ptr<TypeParam>& link) { EXPECT_TRUE(ReadFromDir(*link, path)); },
        [&](std::unique_ptr<TypeParam>& link) { EXPECT_EQ(GetContent(*link), decltype(this->expected)()); });
    EXPECT_GE(failures, 6);
}

TYPED_TEST(LinkTableFiles, WrittenWhileMemoryRunsOutLeaveTheTableAsItWas)
{
    TypeParam link;
    Fill(link);
    const std::string path = this->dir.GetPath();
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
    EXPECT_EQ(GetContent(link), this->expected);
    TypeParam read;
    EXPECT_TRUE(this->Read(read));
    EXPECT_EQ(GetContent(read), this->expected);
}
