#include "CBnLink_OnMemVer.h"

#include "Support/CAllocFault.h"
#include "Support/CRandom.h"
#include "Support/TLinkTableFilesFixture.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

using CBnLink_OnMemVer_Files = TLinkTableFilesFixture<CBnLink_OnMemVer>;

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

TEST_F(CBnLink_OnMemVer_Files, GiveATableBackThatGoesOnAsIfItHadNeverBeenAway)
{
    CBnLink_OnMemVer link;
    ASSERT_TRUE(Read(link));
    EXPECT_TRUE(link.DeleteFld(3));
    EXPECT_EQ(GetColumn(link, 4), (List{9, 8, 7}));
    EXPECT_TRUE(InsertFld(link, 3, {4, 5, 6}));
    EXPECT_EQ(GetColumn(link, 1), (List{1, 5, 6}));
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

TEST_F(CBnLink_OnMemVer_Files, WithOneBitOfTheIndexFlippedAreRefused)
{
    // In so small an index every number counts.
    const std::string whole = ReadFileBytes(dir.GetFile(0));
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
        std::string flipped = whole;
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << bit % 8));
        dir.WriteFileBytes(0, flipped);
        ExpectRefused(ERROR_INVALID_DATA, std::to_string(bit));
    }
}
