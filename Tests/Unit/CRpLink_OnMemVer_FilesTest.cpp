#include "CRpLink_OnMemVer.h"

#include "Support/CAllocFault.h"
#include "Support/CRandom.h"
#include "Support/TLinkTableFilesFixture.h"

#include <gtest/gtest.h>

#include <memory>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

constexpr DWORD INC = SCBUICoreCom::BTN_ID_INC_BEGIN;
constexpr DWORD VIRINC = SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
constexpr DWORD CLL = SCBUICoreCom::BTN_ID_CLL_BEGIN;
constexpr DWORD COMMON_VIR = SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN;
constexpr DWORD FIXED_VIR = SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
constexpr DWORD LARGEST = 4294967295;

const List POSITIONS = {3, 0, 2, 1, 2, 0, 3, 1, 4, 4};
const List ENTRIES_OF_FIRST_FLD = {6, 1, 0, 1, 2, 1, 2, 4, 3, 2, INC + 1, 5, 3, CLL, 8, 1, VIRINC, 9, 2};
const List ENTRIES_OF_OTHER_FLDS = {0, 1, VIRINC, 0, 2, 1, VIRINC + 2, 0, 1};

List Join(const List& left, const List& right)
{
    List joined = left;
    joined.insert(joined.end(), right.begin(), right.end());
    return joined;
}

class CRpLink_OnMemVer_Files : public TLinkTableFilesFixture<CRpLink_OnMemVer>
{
protected:
    // Writes the files of a table with one class that has these entries and an area of this length.
    void WriteOneFld(const List& entries, DWORD areaSize) const
    {
        dir.Write(0, Join({2, 0, 1, 0, 0, 1}, entries));
        List area(areaSize);
        for (DWORD i = 0; i < areaSize; ++i)
            area[i] = 100 + i;
        dir.Write(1, area);
    }
};

} // namespace

TEST_F(CRpLink_OnMemVer_Files, HoldTheTableNumberByNumber)
{
    EXPECT_EQ(dir.Read(0), Join(Join(POSITIONS, ENTRIES_OF_FIRST_FLD), ENTRIES_OF_OTHER_FLDS));
    EXPECT_EQ(dir.Read(1), (List{4, 0, 2, 1, 3, 0, 1, 2, 3, 1, 4}));
    EXPECT_TRUE(std::filesystem::exists(dir.GetFile(2)));
    EXPECT_EQ(std::filesystem::file_size(dir.GetFile(2)), 0u);
    EXPECT_EQ(dir.Read(3), (List{2, 3}));
    EXPECT_EQ(dir.Read(4), (List{4}));
    EXPECT_FALSE(std::filesystem::exists(dir.GetFile(5)));
    EXPECT_EQ(std::filesystem::file_size(dir.GetFile(0)), 38 * sizeof(DWORD));
}

TEST_F(CRpLink_OnMemVer_Files, GiveATableBackThatGoesOnAsIfItHadNeverBeenAway)
{
    CRpLink_OnMemVer link;
    ASSERT_TRUE(Read(link));
    EXPECT_TRUE(AddRecList(link, 2, 2, {1}));
    EXPECT_EQ(GetRecList(link, 2, 2), (List{0, 1, 2}));
    EXPECT_EQ(GetRecList(link, 2, VIRINC), (List{1, 4}));
    EXPECT_TRUE(link.DeleteFld(2));
    EXPECT_EQ(GetRecList(link, FIXED_VIR, VIRINC + 2), List{4});
}

TEST_F(CRpLink_OnMemVer_Files, GiveAnEmptyTableBack)
{
    CRpLink_OnMemVer empty;
    ASSERT_TRUE(empty.WriteTo(dir.GetPath().c_str()));
    EXPECT_EQ(dir.Read(0), (List{0, 0, 0, 0}));
    CRpLink_OnMemVer link;
    EXPECT_TRUE(Read(link));
    EXPECT_EQ(GetContent(link), RpLinkContent());
}

TEST_F(CRpLink_OnMemVer_Files, OfALargerTableBeforeStayUnread)
{
    CRpLink_OnMemVer small;
    ASSERT_TRUE(InsertFld(small, 2, {{3, {4}}}));
    ASSERT_TRUE(small.WriteTo(dir.GetPath().c_str()));
    EXPECT_EQ(dir.Read(3), (List{2, 3}));
    CRpLink_OnMemVer link;
    EXPECT_TRUE(Read(link));
    EXPECT_EQ(GetContent(link), GetContent(small));
}

TEST_F(CRpLink_OnMemVer_Files, KeepAnAreaThatIsLongerThanItsLists)
{
    CRpLink_OnMemVer link;
    const CBorrowedLists lists({{2, {1, 2}}});
    ASSERT_TRUE(link.InsertFld(1, lists.Get(), 5));
    ASSERT_TRUE(link.WriteTo(dir.GetPath().c_str()));
    CRpLink_OnMemVer read;
    ASSERT_TRUE(Read(read));
    EXPECT_EQ(GetFldSize(read, 1), 5u);
    EXPECT_EQ(GetContent(read), GetContent(link));
}

TEST_F(CRpLink_OnMemVer_Files, TakeEntriesAndSlicesInAnyOrderAndWithGaps)
{
    WriteOneFld({3, VIRINC, 4, 1, 1, 2, 2, 2, 0, 1}, 6);
    CRpLink_OnMemVer link;
    ASSERT_TRUE(Read(link));
    EXPECT_EQ(GetLists(link, 1), (Lists{{1, {102, 103}}, {2, {100}}, {VIRINC, {104}}}));
    EXPECT_EQ(GetFldSize(link, 1), 6u);
}

TEST_F(CRpLink_OnMemVer_Files, WithPositionsThatContradictThemselvesAreRefused)
{
    const List entries = Join(ENTRIES_OF_FIRST_FLD, ENTRIES_OF_OTHER_FLDS);
    const std::vector<List> bad = {
        {3, 0, 2, 1, 2, 0, 3, 1, 4, 3},          // fewer fields than classes
        {3, 0, 2, 1, 2, 0, 3, 1, 4, 5},          // more
        {3, 0, 2, 1, 2, 0, 3, 1, 4, LARGEST},    // far more
        {3, 0, 2, 2, 2, 0, 3, 1, 4, 4},          // a field for two classes
        {3, 0, 2, 1, 2, 0, 1, 1, 4, 4},          // likewise, of different kinds
        {3, 0, 5, 1, 2, 0, 3, 1, 4, 4},          // a field that is not there
        {3, 1, 2, 0, 2, 0, 3, 1, 4, 4},          // 0 is no class
        {LARGEST, 0, 2, 1, 2, 0, 3, 1, 4, 4},    // a vector that is not there
        {3, 0, 2, 1, LARGEST, 0, 3, 1, 4, 4},    // likewise
        {3, 0, 2, 1, 2, 0, 3, 1073741824, 4, 4}, // likewise, with 32 bits of bytes overflowing
    };
    for (const List& positions : bad) {
        dir.Write(0, Join(positions, entries));
        ExpectRefused(ERROR_INVALID_DATA, testing::PrintToString(positions));
    }
}

TEST_F(CRpLink_OnMemVer_Files, WithEntriesThatContradictThemselvesAreRefused)
{
    const DWORD areaSize = 6;
    WriteOneFld({2, 1, 0, 2, 2, 2, 4}, areaSize);
    CRpLink_OnMemVer link;
    ASSERT_TRUE(Read(link)); // what the others differ from
    const std::vector<std::pair<List, const char*>> bad = {
        {{}, "no entries"},
        {{1}, "an entry is missing"},
        {{1, 1, 0}, "a part of one is missing"},
        {{1, 1, 0, 2, 2, 2, 4}, "something behind the last one"},
        {{3, 1, 0, 2, 2, 2, 4}, "fewer than told"},
        {{LARGEST, 1, 0, 2, 2, 2, 4}, "far fewer"},
        {{1431655766, 1, 0, 2, 2, 2, 4}, "so many that 32 bits of numbers overflow"},
        {{2, 1, 0, 2, 2, 2, 5}, "a slice that leaves the area"},
        {{2, 1, 0, 2, 2, 6, 1}, "a slice behind it"},
        {{2, 1, 0, 2, 2, LARGEST, 1}, "a slice far behind"},
        {{2, 1, 0, 2, 2, LARGEST, 2}, "a slice whose end overflows to the front"},
        {{2, 1, 0, 2, 2, 2, LARGEST}, "a slice of every length"},
        {{2, 1, 0, 2, 2, 2, LARGEST - 2}, "a slice that ends with the last number"},
        {{2, 1, 0, 3, 2, 2, 4}, "slices that share a cell"},
        {{2, 1, 0, 2, 2, 0, 2}, "slices that are the same"},
        {{2, 1, 2, 4, 2, 0, 3}, "slices that share a cell, the later one first"},
        {{3, 1, 0, 6, 2, 2, 1, 3, 4, 1}, "a slice around others"},
        {{2, 1, 0, 2, 2, 2, 0}, "an entry without records"},
        {{2, 2, 0, 2, 2, 2, 4}, "a button twice"},
        {{2, 1, 0, 2, 1, 2, 4}, "the empty value twice"},
        {{2, CLL, 2, 2, CLL, 0, 1}, "a special button twice"},
        {{2, 0, 0, 2, 2, 2, 4}, "no button"},
        {{2, 1, 0, 2, 3000000002, 2, 4}, "a button behind the normal ones"},
        {{2, 1, 0, 2, INC - 1, 2, 4}, "a button before the special ones"},
        {{2, 1, 0, 2, 4240000002, 2, 4}, "a button behind them"},
        {{2, 1, 0, 2, LARGEST, 2, 4}, "the last number"},
    };
    for (const auto& [entries, what] : bad) {
        WriteOneFld(entries, areaSize);
        ExpectRefused(ERROR_INVALID_DATA, what);
    }
    for (const std::size_t odd : {1u, 2u, 3u}) {
        WriteOneFld({2, 1, 0, 2, 2, 2, 4}, areaSize);
        dir.WriteFileBytes(0, ReadFileBytes(dir.GetFile(0)) + std::string(odd, '\0'));
        ExpectRefused(ERROR_INVALID_DATA, "odd bytes");
    }
}

TEST_F(CRpLink_OnMemVer_Files, WithAnAreaThatIsTooShortOrNoArrayOfCellsAreRefused)
{
    for (const std::size_t bytes : {0u, 4u, 20u, 21u, 22u, 23u, 25u, 27u, 29u}) {
        WriteOneFld({2, 1, 0, 2, 2, 2, 4}, 6);
        std::string area = ReadFileBytes(dir.GetFile(1));
        area.resize(bytes, '\0');
        dir.WriteFileBytes(1, area);
        ExpectRefused(ERROR_INVALID_DATA, std::to_string(bytes) + " bytes");
    }
}

TEST_F(CRpLink_OnMemVer_Files, ThatDeleteRecListHasMadeOverlapAreRefused)
{
    CRpLink_OnMemVer link;
    ASSERT_TRUE(InsertFld(link, 1, {{1, {0, 1, 2}}, {2, {3, 4}}, {3, {5}}}));
    ASSERT_TRUE(DeleteRecList(link, 1, 1, {0}));
    ASSERT_TRUE(link.WriteTo(dir.GetPath().c_str()));
    ExpectRefused(ERROR_INVALID_DATA, "slices that overlap");
}

TEST_F(CRpLink_OnMemVer_Files, AreProvedBeforeMemoryIsTakenForThem)
{
    CAllocFault memory;
    const auto readOneFld = [&](const List& entries) {
        WriteOneFld(entries, 6);
        CRpLink_OnMemVer link;
        memory.Arm(0);
        EXPECT_FALSE(ReadFromDir(link, dir)) << testing::PrintToString(entries);
        return memory.GetLargestSize();
    };
    constexpr std::size_t READING_AHEAD = 65536;
    EXPECT_LE(readOneFld({LARGEST, 1, 0, 2, 2, 2, 4}), READING_AHEAD);
    EXPECT_LE(readOneFld({1431655766, 1, 0, 2, 2, 2, 4}), READING_AHEAD);
    EXPECT_LE(readOneFld({2, 1, 0, 2, 2, 2, LARGEST - 2}), READING_AHEAD);
    dir.Write(0, {0, 0, 0, LARGEST});
    CRpLink_OnMemVer link;
    memory.Arm(0);
    EXPECT_FALSE(ReadFromDir(link, dir));
    EXPECT_LE(memory.GetLargestSize(), READING_AHEAD);
}

TEST_F(CRpLink_OnMemVer_Files, TakeNoMemoryForOneLargeButtonIdentifier)
{
    CAllocFault memory;
    const auto readOneBtn = [&](DWORD btnID, bool isTaken) {
        WriteOneFld({1, btnID, 0, 1}, 1);
        CRpLink_OnMemVer link;
        memory.Arm(0);
        EXPECT_EQ(ReadFromDir(link, dir), isTaken) << btnID;
        EXPECT_LE(memory.GetLargestSize(), 16u << 20) << btnID;
    };
    readOneBtn(3000000001, false);
    readOneBtn(4080000001, false);
    readOneBtn(4160000001, false);
    readOneBtn(4240000001, false);
    readOneBtn(2000000, false);
    readOneBtn(1000000, true); // of a million buttons one was left
}

TEST_F(CRpLink_OnMemVer_Files, TakeNoMoreMemoryForLargeIdentifiersInManyFieldsThanInOne)
{
    // Each field alone would be taken.
    const DWORD fldCount = 20;
    List index = {fldCount + 1, 0};
    for (DWORD fld = 1; fld <= fldCount; ++fld) {
        index.push_back(fld);
        dir.Write(fld, {1});
    }
    index.insert(index.end(), {0, 0, fldCount});
    for (DWORD fld = 1; fld <= fldCount; ++fld)
        index.insert(index.end(), {1, 1000000, 0, 1});
    dir.Write(0, index);
    ExpectRefused(ERROR_INVALID_DATA, "many fields");
}

TEST_F(CRpLink_OnMemVer_Files, OfTwoTablesMixedAreRefusedOrGiveATable)
{
    CRpLink_OnMemVer other;
    ASSERT_TRUE(InsertFld(other, 2, {{1, {4}}, {9, {0, 2}}}));
    ASSERT_TRUE(InsertFld(other, 1, {{2, {1}}}));
    const CLinkTableDir otherDir;
    ASSERT_TRUE(other.WriteTo(otherDir.GetPath().c_str()));
    const auto take = [&](DWORD file) {
        std::filesystem::copy_file(otherDir.GetFile(file), dir.GetFile(file),
                                   std::filesystem::copy_options::overwrite_existing);
    };
    take(1);
    ExpectRefused(ERROR_INVALID_DATA, "a shorter area");
    take(0);
    ExpectRefused(ERROR_INVALID_DATA, "an index of another table");
    take(2);
    CRpLink_OnMemVer link;
    EXPECT_TRUE(Read(link));
    EXPECT_EQ(GetContent(link), GetContent(other));
}

TEST_F(CRpLink_OnMemVer_Files, OfRandomTablesGiveThemBack)
{
    CRandom random;
    const List classes = {1, 2, 30, COMMON_VIR, COMMON_VIR + 7, FIXED_VIR + 2};
    const List btns = {1, 2, 3, 900, INC, INC + 5, CLL + 1, VIRINC, VIRINC + 40};
    const auto makeRecs = [&random] {
        List recs;
        for (DWORD rec = random.GetBelow(5); rec < 100; rec += 1 + random.GetBelow(30))
            recs.push_back(rec);
        return recs;
    };
    for (int run = 0; run < 30; ++run) {
        CRpLink_OnMemVer link;
        for (int step = 0; step < 60; ++step) {
            const DWORD btnClassID = classes[random.GetBelow(static_cast<DWORD>(classes.size()))];
            const DWORD btnID = btns[random.GetBelow(static_cast<DWORD>(btns.size()))];
            switch (random.GetBelow(7)) {
            case 0:
                link.InsertFld(btnClassID);
                break;
            case 1:
                link.DeleteBtn(btnClassID, btnID);
                break;
            case 2:
                InsertRec(link, btnClassID, 10, 2, {{btnID, {10, 11}}});
                break;
            case 3:
                link.DeleteRec(random.GetBelow(100), random.GetBelow(3));
                break;
            default:
                AddRecList(link, btnClassID, btnID, makeRecs());
            }
        }
        ASSERT_TRUE(link.WriteTo(dir.GetPath().c_str()));
        CRpLink_OnMemVer read;
        ASSERT_TRUE(Read(read));
        EXPECT_EQ(GetContent(read), GetContent(link));
    }
}

TEST_F(CRpLink_OnMemVer_Files, OfUnorderedEntriesReadWhileMemoryRunsOutLeaveTheTableEmpty)
{
    // Slices that are not in the order of their buttons take memory to be proved.
    dir.Write(0, Join(Join(POSITIONS, {2, 1, 3, 8, 2, 0, 3}), ENTRIES_OF_OTHER_FLDS));
    const std::string path = dir.GetPath();
    const int failures = FailEveryAllocation(
        [] { return std::make_unique<CRpLink_OnMemVer>(); },
        [&](std::unique_ptr<CRpLink_OnMemVer>& link) { EXPECT_TRUE(ReadFromDir(*link, path)); },
        [](std::unique_ptr<CRpLink_OnMemVer>& link) { EXPECT_EQ(GetContent(*link), RpLinkContent()); });
    EXPECT_GE(failures, 12);
}
