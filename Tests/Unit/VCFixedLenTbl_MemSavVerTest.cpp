#include "VCFixedLenTbl_MemSavVer.h"

#include "Support/CAllocFault.h"
#include "Support/CRandom.h"
#include "Support/CTestCellTable.h"
#include "Support/LinkTableFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <numeric>
#include <stdexcept>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using Cells = CTestCellTable::Cells;
using Content = std::vector<Cells>;

constexpr DWORD LARGEST = 4294967295;

// Cells of one character each, of which a table is made up.
enum EKind
{
    KIND_SAME,
    KIND_FEW_VALUES,
    KIND_SEQUENCE,
    KIND_ASCENDING,
    KIND_ROUNDS,
    KIND_FALLING,
    KIND_ANY,
    KIND_EXTREMES,
    KIND_COUNT,
};

Cells MakeCells(CRandom& random, EKind kind, DWORD count)
{
    Cells cells(count);
    const DWORD start = random.IsOneOf(2) ? random.GetBelow(1000) : LARGEST - random.GetBelow(1000);
    const DWORD step = 1 + random.GetBelow(random.IsOneOf(2) ? 5 : 100000);
    DWORD value = start;
    for (DWORD i = 0; i < count; ++i) {
        switch (kind) {
        case KIND_SAME:
            cells[i] = start;
            break;
        case KIND_FEW_VALUES:
            cells[i] = start - random.GetBelow(7);
            break;
        case KIND_SEQUENCE:
            cells[i] = start + i; // may come round at the end of 32 bits
            break;
        case KIND_ASCENDING:
            value += 1 + random.GetBelow(step);
            cells[i] = value;
            break;
        case KIND_ROUNDS:
            value = random.IsOneOf(20) ? random.GetBelow(step) : value + 1 + random.GetBelow(step);
            cells[i] = value;
            break;
        case KIND_FALLING:
            cells[i] = start - i * step;
            break;
        case KIND_ANY:
            cells[i] = random.GetBelow(LARGEST);
            break;
        default:
            cells[i] = random.IsOneOf(2) ? 0 : LARGEST;
        }
    }
    return cells;
}

Cells MakeCells(CRandom& random, DWORD count)
{
    Cells cells;
    while (cells.size() < count) {
        const Cells more = MakeCells(random, static_cast<EKind>(random.GetBelow(KIND_COUNT)),
                                     1 + random.GetBelow(count - static_cast<DWORD>(cells.size())));
        cells.insert(cells.end(), more.begin(), more.end());
    }
    return cells;
}

Cells MakeSequence(DWORD first, DWORD count)
{
    Cells cells(count);
    std::iota(cells.begin(), cells.end(), first);
    return cells;
}

// The two manners of grouping that the link tables use, and small blocks, in which much happens at their
// ends.
struct SParams
{
    unsigned int cellsOfGroup;
    unsigned int blockSize;
};
class VCFixedLenTbl_MemSavVerOfBothManners : public testing::TestWithParam<SParams>
{
protected:
    CTestCellTable MakeTable() const { return CTestCellTable(GetParam().cellsOfGroup, GetParam().blockSize); }

    const CTempDir dir;
    const std::string path = (dir.GetPath() / "field.dat").string();
};
INSTANTIATE_TEST_SUITE_P(Manners, VCFixedLenTbl_MemSavVerOfBothManners,
                         testing::Values(SParams{128, 16000}, SParams{0, 16000}, SParams{8, 64},
                                         SParams{0, 1024}),
                         [](const auto& param) {
                             return "GroupsOf" + std::to_string(param.param.cellsOfGroup) + "InBlocksOf" +
                                    std::to_string(param.param.blockSize);
                         });

} // namespace

TEST(VCFixedLenTbl_MemSavVer, IsMadeOfTheCellsItIsGiven)
{
    const Cells first = {1, 2, 3};
    const Cells second = {9, 0, LARGEST};
    const unsigned char* data[] = {CTestCellTable::GetBytes(first), nullptr,
                                   CTestCellTable::GetBytes(second)};
    const CTestCellTable filled(3, 3, data, 4, 16000, 128);
    EXPECT_EQ(filled.GetContent(), (Content{first, {0, 0, 0}, second}));
    const CTestCellTable opened(2, 2, nullptr, 4, 16000, 0);
    EXPECT_EQ(opened.GetContent(), (Content{{0, 0}, {0, 0}}));
    EXPECT_EQ(CTestCellTable(0).GetContent(), Content());
}

TEST(VCFixedLenTbl_MemSavVer, RefusesParametersThatItCannotWorkWith)
{
    const auto make = [](unsigned int recSize, unsigned int blockSize, unsigned int cellsOfGroup) {
        return CTestCellTable(0, 0, nullptr, recSize, blockSize, cellsOfGroup).fldCount;
    };
    EXPECT_THROW(make(8, 16000, 128), std::invalid_argument);
    EXPECT_THROW(make(0, 16000, 128), std::invalid_argument);
    EXPECT_THROW(make(4, 16000, 100), std::invalid_argument);
    EXPECT_THROW(make(4, 511, 128), std::invalid_argument);
    EXPECT_THROW(make(4, 1023, 0), std::invalid_argument);
    EXPECT_THROW(make(4, 0, 1), std::invalid_argument);
    EXPECT_THROW(make(4, 65537, 128), std::invalid_argument);
    EXPECT_THROW(make(4, 16000, 1u << 31), std::invalid_argument);
    EXPECT_EQ(make(4, 512, 128), 0u);
    EXPECT_EQ(make(4, 65536, 0), 0u);
    EXPECT_EQ(make(4, 65536, 1), 0u);
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, HoldsCellsOfEveryKindAndGivesAnyStretchOfThem)
{
    CRandom random;
    for (int kind = 0; kind < KIND_COUNT; ++kind) {
        for (const DWORD count : {1u, 2u, 127u, 128u, 129u, 255u, 257u, 3968u, 4001u, 20000u}) {
            const Cells cells = MakeCells(random, static_cast<EKind>(kind), count);
            CTestCellTable table = MakeTable();
            ASSERT_TRUE(table.InsertCells(0, cells));
            ASSERT_EQ(table.GetCells(0), cells) << kind << " " << count;
            for (int i = 0; i < 20; ++i) {
                const DWORD pos = random.GetBelow(count + 1);
                const DWORD length = random.GetBelow(count - pos + 1);
                // Odd addresses too: what is given is bytes.
                std::vector<unsigned char> bytes(length * sizeof(DWORD) + 1);
                ASSERT_TRUE(table.GetData(0, pos, length, bytes.data() + i % 2));
                const Cells stretch(cells.begin() + pos, cells.begin() + pos + length);
                ASSERT_EQ(MakeNumbers(std::string(bytes.begin() + i % 2, bytes.end() - 1 + i % 2)), stretch);
            }
        }
    }
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, GivesListedCellsInAnyOrder)
{
    CRandom random;
    CTestCellTable table = MakeTable();
    const Cells cells = MakeCells(random, 30000);
    ASSERT_TRUE(table.InsertCells(0, cells));
    for (const bool isAscending : {true, false}) {
        for (const DWORD oneOf : {1u, 2u, 30u, 1000u, 20000u}) {
            Cells list;
            for (DWORD pos = 0; pos < cells.size(); ++pos) {
                if (random.IsOneOf(oneOf))
                    list.push_back(isAscending ? pos : random.GetBelow(30000));
            }
            Cells expected;
            for (const DWORD pos : list)
                expected.push_back(cells[pos]);
            Cells given(list.size());
            EXPECT_TRUE(table.GetListedData(0, list.data(), static_cast<DWORD>(list.size()), given.data()));
            EXPECT_EQ(given, expected);
        }
    }
    Cells given(2);
    for (const DWORD behind : {30000u, LARGEST}) {
        const Cells list = {0, behind};
        EXPECT_FALSE(table.GetListedData(0, list.data(), 2, given.data()));
    }
    EXPECT_FALSE(table.GetListedData(1, given.data(), 0, given.data()));
    EXPECT_TRUE(table.GetListedData(0, nullptr, 0, nullptr));
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, RefusesWhatLeavesAFieldAndChangesNothing)
{
    CTestCellTable table = MakeTable();
    const Cells cells = {5, 6, 7};
    ASSERT_TRUE(table.InsertCells(0, cells));
    ASSERT_TRUE(table.InsertCells(1, {8, 9}));
    const Content before = table.GetContent();
    Cells output(4, 77);
    unsigned char* const bytes = reinterpret_cast<unsigned char*>(output.data());
    const unsigned char* const data = CTestCellTable::GetBytes(cells);
    EXPECT_FALSE(table.InsertFld(3, 1, data));
    EXPECT_FALSE(table.DeleteFld(2));
    EXPECT_FALSE(table.InsertRec(3, 1, nullptr)); // the second field has 2
    EXPECT_FALSE(table.InsertRec(3, 0, nullptr));
    EXPECT_FALSE(table.InsertRec(0, LARGEST - 1, nullptr)); // the first field cannot grow by that
    EXPECT_FALSE(table.InsertRec(0, 4, 0, data));
    EXPECT_FALSE(table.InsertRec(0, 0, LARGEST - 2, nullptr));
    EXPECT_FALSE(table.InsertRec(2, 0, 1, data));
    EXPECT_FALSE(table.DeleteRec(1, 2)); // the second field has not
    EXPECT_FALSE(table.DeleteRec(3, 0));
    EXPECT_FALSE(table.DeleteRec(0, 3, 1));
    EXPECT_FALSE(table.DeleteRec(0, LARGEST, 2));
    EXPECT_FALSE(table.DeleteRec(2, 0, 0));
    EXPECT_FALSE(table.ReplaceRec(0, 2, 2, 1, data));
    EXPECT_FALSE(table.ReplaceRec(2, 0, 0, 0, nullptr));
    EXPECT_FALSE(table.GetData(0, 2, 2, bytes));
    EXPECT_FALSE(table.GetData(0, LARGEST, 2, bytes));
    EXPECT_FALSE(table.GetData(0, 4, 0, bytes));
    EXPECT_FALSE(table.GetData(2, 0, 0, bytes));
    EXPECT_FALSE(table.SetData(0, 2, 2, data));
    EXPECT_FALSE(table.SetData(0, LARGEST, 2, data));
    EXPECT_FALSE(table.SetData(2, 0, 0, data));
    EXPECT_FALSE(table.SetFldData(0, 4, data));
    EXPECT_FALSE(table.SetFldData(2, 0, data));
    EXPECT_FALSE(table.ReallocateRecArea(2, 1));
    EXPECT_EQ(table.GetContent(), before);
    EXPECT_EQ(output, Cells(4, 77));
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, TakesNothingAtTheVeryEnd)
{
    CTestCellTable table = MakeTable();
    EXPECT_TRUE(table.InsertRec(7, 3, nullptr)); // without a field there is nothing to do
    EXPECT_TRUE(table.DeleteRec(7, 3));
    EXPECT_EQ(table.GetContent(), Content());
    ASSERT_TRUE(table.InsertCells(0, {5, 6}));
    const Content before = table.GetContent();
    EXPECT_TRUE(table.InsertRec(2, 0, nullptr));
    EXPECT_TRUE(table.InsertRec(0, 2, 0, nullptr));
    EXPECT_TRUE(table.DeleteRec(2, 0));
    EXPECT_TRUE(table.DeleteRec(0, 2, 0));
    EXPECT_TRUE(table.GetData(0, 2, 0, nullptr));
    EXPECT_TRUE(table.SetData(0, 2, 0, nullptr));
    EXPECT_TRUE(table.SetFldData(0, 0, nullptr));
    EXPECT_EQ(table.GetContent(), before);
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, OpensCellsOf0)
{
    CTestCellTable table = MakeTable();
    EXPECT_TRUE(table.InsertFld(0, 12345, nullptr));
    EXPECT_EQ(table.GetCells(0), Cells(12345));
    EXPECT_TRUE(table.SetFldData(0, 3, CTestCellTable::GetBytes({7, 8, 9})));
    EXPECT_TRUE(table.InsertRec(2, 10000, nullptr));
    EXPECT_TRUE(table.ReallocateRecArea(0, 30000));
    Cells expected = {7, 8};
    expected.resize(10002);
    expected.push_back(9);
    expected.resize(30000);
    EXPECT_EQ(table.GetCells(0), expected);
    EXPECT_TRUE(table.ReallocateRecArea(0, 2));
    EXPECT_EQ(table.GetCells(0), (Cells{7, 8}));
    EXPECT_TRUE(table.ReallocateRecArea(0, 0));
    EXPECT_EQ(table.GetCells(0), Cells());
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, ChangesOneFieldAloneOrAllFieldsAtOnce)
{
    CTestCellTable table = MakeTable();
    ASSERT_TRUE(table.InsertCells(0, {1, 2, 3}));
    ASSERT_TRUE(table.InsertCells(1, {4, 5, 6, 7}));
    ASSERT_TRUE(table.InsertCells(1, {}));
    EXPECT_EQ(table.GetContent(), (Content{{1, 2, 3}, {}, {4, 5, 6, 7}}));
    EXPECT_TRUE(table.InsertRec(2, 4, 1, CTestCellTable::GetBytes({8})));
    EXPECT_TRUE(table.DeleteRec(0, 0, 2));
    EXPECT_EQ(table.GetContent(), (Content{{3}, {}, {4, 5, 6, 7, 8}}));
    EXPECT_TRUE(table.DeleteFld(1));
    const Cells first = {10, 11};
    const Cells second = {20, 21};
    const unsigned char* data[] = {CTestCellTable::GetBytes(first), CTestCellTable::GetBytes(second)};
    EXPECT_TRUE(table.InsertRec(1, 2, data));
    EXPECT_EQ(table.GetContent(), (Content{{3, 10, 11}, {4, 20, 21, 5, 6, 7, 8}}));
    EXPECT_TRUE(table.DeleteRec(0, 2));
    EXPECT_EQ(table.GetContent(), (Content{{11}, {21, 5, 6, 7, 8}}));
    table.Clear();
    EXPECT_EQ(table.GetContent(), Content());
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, DeletesManyFieldsInOnePassAndExchangesThem)
{
    CTestCellTable table = MakeTable();
    for (DWORD fld = 0; fld < 5; ++fld)
        ASSERT_TRUE(table.InsertCells(fld, Cells(fld, fld)));
    table.DeleteFlds({true, false, true, false, false, true, true});
    EXPECT_EQ(table.GetContent(), (Content{{1}, {3, 3, 3}, {4, 4, 4, 4}}));
    table.DeleteFlds({});
    EXPECT_EQ(table.fldCount, 3u);
    CTestCellTable other = MakeTable();
    ASSERT_TRUE(other.InsertCells(0, {9}));
    table.SwapFld(1, other, 0);
    EXPECT_EQ(table.GetContent(), (Content{{1}, {9}, {4, 4, 4, 4}}));
    EXPECT_EQ(other.GetContent(), (Content{{3, 3, 3}}));
    table.SwapFlds(other);
    EXPECT_EQ(table.GetContent(), (Content{{3, 3, 3}}));
    EXPECT_EQ(other.GetContent(), (Content{{1}, {9}, {4, 4, 4, 4}}));
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, IsCopiedByAssignment)
{
    CTestCellTable table = MakeTable();
    ASSERT_TRUE(table.InsertCells(0, MakeSequence(5, 5000)));
    ASSERT_TRUE(table.InsertCells(1, {}));
    CTestCellTable copy = MakeTable();
    ASSERT_TRUE(copy.InsertCells(0, {1}));
    copy = table;
    const Content expected = table.GetContent();
    ASSERT_TRUE(table.DeleteRec(0, 10, 1000));
    EXPECT_EQ(copy.GetContent(), expected);
    const CTestCellTable& same = copy;
    copy = same;
    EXPECT_EQ(copy.GetContent(), expected);
    CTestCellTable different(64);
    EXPECT_THROW(different = table, std::invalid_argument);
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, AgreesWithPlainVectorsOnRandomOperations)
{
    CRandom random;
    CTestCellTable table = MakeTable();
    Content model;
    for (int round = 0; round < 1500; ++round) {
        const auto fldCount = static_cast<DWORD>(model.size());
        const DWORD fld = random.GetBelow(fldCount + 1);
        const bool isThere = fld < fldCount;
        const DWORD size = isThere ? static_cast<DWORD>(model[fld].size()) : 0;
        const DWORD pos = random.GetBelow(size + 2);
        const DWORD oldCount = random.GetBelow(random.IsOneOf(3) ? size + 2 : 20);
        const DWORD newCount = random.IsOneOf(3) ? random.GetBelow(9000) : random.GetBelow(20);
        const bool isInside = isThere && std::uint64_t{pos} + oldCount <= size;
        switch (random.GetBelow(9)) {
        case 0:
            if (fldCount < 4) {
                const Cells cells = MakeCells(random, newCount);
                ASSERT_TRUE(table.InsertCells(fld, cells));
                model.insert(model.begin() + fld, cells);
            }
            break;
        case 1:
            if (random.IsOneOf(10)) {
                ASSERT_EQ(table.DeleteFld(fld), isThere);
                if (isThere)
                    model.erase(model.begin() + fld);
            }
            break;
        case 2: {
            if (std::any_of(model.begin(), model.end(),
                            [](const Cells& cells) { return cells.size() > 40000; }))
                break;
            const bool fits = std::all_of(model.begin(), model.end(),
                                          [pos](const Cells& cells) { return pos <= cells.size(); });
            ASSERT_EQ(table.InsertRec(pos, newCount, nullptr), fits);
            for (Cells& cells : model) {
                if (fits)
                    cells.insert(cells.begin() + pos, newCount, 0);
            }
            break;
        }
        case 3: {
            const bool fits = std::all_of(model.begin(), model.end(), [&](const Cells& cells) {
                return std::uint64_t{pos} + oldCount <= cells.size();
            });
            ASSERT_EQ(table.DeleteRec(pos, oldCount), fits);
            for (Cells& cells : model) {
                if (fits)
                    cells.erase(cells.begin() + pos, cells.begin() + pos + oldCount);
            }
            break;
        }
        case 4: {
            const Cells cells = MakeCells(random, oldCount);
            ASSERT_EQ(table.SetData(fld, pos, oldCount, CTestCellTable::GetBytes(cells)), isInside);
            if (isInside)
                std::copy(cells.begin(), cells.end(), model[fld].begin() + pos);
            break;
        }
        case 5: {
            ASSERT_EQ(table.DeleteRec(fld, pos, oldCount), isInside);
            if (isInside)
                model[fld].erase(model[fld].begin() + pos, model[fld].begin() + pos + oldCount);
            break;
        }
        case 6:
            if (random.IsOneOf(5)) {
                ASSERT_EQ(table.ReallocateRecArea(fld, newCount), isThere);
                if (isThere)
                    model[fld].resize(newCount);
            }
            break;
        default: {
            if (size > 40000)
                break;
            const Cells cells = MakeCells(random, newCount);
            ASSERT_EQ(table.ReplaceCells(fld, pos, oldCount, cells), isInside);
            if (isInside) {
                model[fld].erase(model[fld].begin() + pos, model[fld].begin() + pos + oldCount);
                model[fld].insert(model[fld].begin() + pos, cells.begin(), cells.end());
            }
        }
        }
        ASSERT_EQ(table.GetContent(), model) << "round " << round;
    }
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, WritesAFieldAndReadsItBack)
{
    CRandom random;
    for (const DWORD count : {0u, 1u, 300u, 4000u, 50000u}) {
        CTestCellTable table = MakeTable();
        ASSERT_TRUE(table.InsertCells(0, {1}));
        ASSERT_TRUE(table.InsertCells(1, MakeCells(random, count)));
        ASSERT_TRUE(table.WriteFldData(1, path.c_str()));
        const std::string bytes = ReadFileBytes(path);
        CTestCellTable read = MakeTable();
        ASSERT_TRUE(read.InsertFld(0, 17, nullptr));
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(read.ReadFldData(0, path.c_str(), false), count == 17);
        EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
        EXPECT_EQ(read.GetCells(0), Cells(17));
        EXPECT_TRUE(read.ReadFldData(0, path.c_str(), true));
        EXPECT_EQ(read.GetCells(0), table.GetCells(1));
        EXPECT_TRUE(read.ReadFldData(0, path.c_str(), false));
        ASSERT_TRUE(read.WriteFldData(0, path.c_str()));
        EXPECT_EQ(ReadFileBytes(path), bytes);
    }
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, TellsWhyAFieldIsNotWrittenOrRead)
{
    CTestCellTable table = MakeTable();
    ASSERT_TRUE(table.InsertCells(0, {1, 2}));
    const auto expectError = [](bool result, DWORD error) {
        EXPECT_FALSE(result);
        EXPECT_EQ(GetLastError(), error);
        SetLastError(ERROR_SUCCESS);
    };
    expectError(table.ReadFldData(0, path.c_str(), true), ERROR_FILE_NOT_FOUND);
    expectError(table.ReadFldData(0, dir.GetPath().string().c_str(), true), ERROR_ACCESS_DENIED);
    expectError(table.WriteFldData(0, dir.GetPath().string().c_str()), ERROR_ACCESS_DENIED);
    expectError(table.WriteFldData(0, "/dev/full"), ERROR_DISK_FULL);
    expectError(table.WriteFldData(1, path.c_str()), ERROR_INVALID_DATA);
    ASSERT_TRUE(table.WriteFldData(0, path.c_str()));
    expectError(table.ReadFldData(1, path.c_str(), true), ERROR_INVALID_DATA);
    EXPECT_EQ(table.GetContent(), (Content{{1, 2}}));
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, RefusesAFileThatIsCutOffOrLonger)
{
    CRandom random;
    CTestCellTable table = MakeTable();
    ASSERT_TRUE(table.InsertCells(0, MakeCells(random, 300)));
    ASSERT_TRUE(table.WriteFldData(0, path.c_str()));
    const std::string whole = ReadFileBytes(path);
    const Content before = {{4, 5}};
    CTestCellTable read = MakeTable();
    ASSERT_TRUE(read.InsertCells(0, before[0]));
    for (std::size_t size = 0; size <= whole.size() + 9; ++size) {
        if (size == whole.size())
            continue;
        std::string damaged = whole;
        damaged.resize(size);
        dir.WriteFile("field.dat", damaged);
        SetLastError(ERROR_SUCCESS);
        ASSERT_FALSE(read.ReadFldData(0, path.c_str(), true)) << size;
        EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA) << size;
        ASSERT_EQ(read.GetContent(), before);
    }
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, ReadsOfADamagedFileNothingOrCellsThatStayInTheirBlocks)
{
    CRandom random;
    CTestCellTable table = MakeTable();
    const Cells cells = MakeCells(random, KIND_ROUNDS, 300);
    ASSERT_TRUE(table.InsertCells(0, cells));
    ASSERT_TRUE(table.WriteFldData(0, path.c_str()));
    const std::string whole = ReadFileBytes(path);
    int accepted = 0;
    int refused = 0;
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
        std::string damaged = whole;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
        dir.WriteFile("field.dat", damaged);
        CTestCellTable read = MakeTable();
        ASSERT_TRUE(read.InsertCells(0, {4, 5}));
        SetLastError(ERROR_SUCCESS);
        if (!read.ReadFldData(0, path.c_str(), true)) {
            ++refused;
            EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
            EXPECT_EQ(read.GetCells(0), (Cells{4, 5}));
            continue;
        }
        ++accepted;
        const Cells readCells = read.GetCells(0);
        ASSERT_EQ(readCells.size(), cells.size());
        const Cells list = {0, 1, 200, 299};
        Cells listed(list.size());
        ASSERT_TRUE(read.GetListedData(0, list.data(), 4, listed.data()));
        EXPECT_EQ(listed, (Cells{readCells[0], readCells[1], readCells[200], readCells[299]}));
        ASSERT_TRUE(read.DeleteRec(0, 100, 30)); // packs the blocks anew
        ASSERT_TRUE(read.WriteFldData(0, path.c_str()));
        ASSERT_TRUE(read.ReadFldData(0, path.c_str(), true));
    }
    EXPECT_GT(accepted, 0);
    EXPECT_GT(refused, 0);
}

TEST(VCFixedLenTbl_MemSavVer, RefusesAFileThatContradictsItself)
{
    const CLinkTableDir dir;
    const auto read = [&](unsigned int cellsOfGroup, const Cells& numbers) {
        dir.Write(1, numbers);
        CTestCellTable table(cellsOfGroup, cellsOfGroup == 0 ? 1024 : 32);
        EXPECT_TRUE(table.InsertCells(0, {4, 5}));
        SetLastError(ERROR_SUCCESS);
        const bool isRead = table.ReadFldData(0, dir.GetFile(1).string().c_str(), true);
        if (!isRead) {
            EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
            EXPECT_EQ(table.GetCells(0), (Cells{4, 5}));
        }
        return isRead;
    };
    // Groups of 4 in blocks of 8. Two cells with rests of 4 bits from word 2 on.
    constexpr DWORD EVEN = 2 << 16;
    constexpr DWORD RISING = EVEN | 1 << 6;
    constexpr DWORD ASCENDING = EVEN | 2 << 6 | 4 << 8;
    EXPECT_TRUE(read(4, {2, 1, 2, 3, 10, EVEN | 4, 0x21}));
    EXPECT_TRUE(read(4, {2, 1, 2, 3, 10, RISING | 4, 0x21}));
    EXPECT_TRUE(read(4, {2, 1, 2, 3, 10, EVEN | 4, LARGEST})); // what the rests are, and behind them, is free
    EXPECT_TRUE(read(4, {2, 1, 2, 2, 10, EVEN}));
    EXPECT_TRUE(read(4, {0, 0}));
    const std::vector<std::pair<Cells, const char*>> bad = {
        {{}, "no head"},
        {{2}, "half a head"},
        {{0, 1}, "a block that is not there"},
        {{0, LARGEST}, "many of them"},
        {{0, 2147483648}, "so many that their numbers overflow"},
        {{0, 1, 0, 0}, "a block without cells"},
        {{0, 0, 7}, "something behind no block"},
        {{3, 1, 2, 3, 10, EVEN | 4, 0x21}, "fewer cells than told"},
        {{1, 1, 2, 3, 10, EVEN | 4, 0x21}, "more"},
        {{2, 2, 2, 3, 10, EVEN | 4, 0x21}, "a further block that is not there"},
        {{9, 1, 9, 6, 10, EVEN, 10, EVEN, 10, EVEN}, "more cells than a block has"},
        {{2, 1, 2, 4, 10, EVEN | 4, 0x21}, "words that are not there"},
        {{2, 1, 2, LARGEST, 10, EVEN | 4, 0x21}, "many of them"},
        {{2, 1, 2, 2, 10, EVEN | 4}, "rests that are not there"},
        {{2, 1, 2, 1, 10}, "half the head of a group"},
        {{2, 1, 2, 0}, "no head of a group"},
        {{2, 1, 2, 3, 10, EVEN, 0x21}, "words of no group"},
        {{2, 1, 2, 4, 10, EVEN | 4, 0x21, 0}, "more words than the rests take"},
        {{2, 1, 2, 3, 10, EVEN | 33, 0x21}, "rests of 33 bits"},
        {{2, 1, 2, 3, 10, EVEN | 63, 0x21}, "rests of 63 bits"},
        {{2, 1, 2, 3, 10, (3 << 16) | 4, 0x21}, "rests that begin behind the block"},
        {{2, 1, 2, 3, 10, (1 << 16) | 4, 0x21}, "rests that begin in the head"},
        {{2, 1, 2, 3, 10, 4, 0x21}, "rests that begin before it"},
        {{2, 1, 2, 3, 10, EVEN | 4 | 1 << 8, 0x21}, "a round where there is none"},
        {{2, 1, 2, 3, 10, EVEN | 4 | 1 << 14, 0x21}, "an unused bit"},
        {{2, 1, 2, 3, 10, EVEN | 4 | 1 << 15, 0x21}, "the other one"},
        {{2, 1, 2, 3, 10, EVEN | 4 | 3 << 6, 0x21}, "a manner that is none"},
        {{2, 1, 2, 3, 10, ASCENDING, 0x3}, "a manner that this table has not"},
        {{5, 1, 5, 6, 10, (4 << 16) | 4, 10, (6 << 16) | 4, 0x21, 0x1}, "groups with a gap"},
        {{5, 1, 5, 6, 10, (4 << 16) | 4, 10, (4 << 16) | 4, 0x21, 0x1}, "groups that share a word"},
        {{5, 1, 5, 6, 10, (4 << 16) | 4, 10, (3 << 16) | 4, 0x21, 0x1}, "groups that go back"},
        {{5, 1, 5, 6, 10, (4 << 16) | 4, 10, (9 << 16) | 4, 0x21, 0x1}, "a group behind the block"},
    };
    for (const auto& [numbers, what] : bad)
        EXPECT_FALSE(read(4, numbers)) << what;
    EXPECT_TRUE(read(4, {5, 1, 5, 6, 10, (4 << 16) | 4, 10, (5 << 16) | 4, 0x21, 0x1}));

    EXPECT_TRUE(read(0, {2, 1, 2, 3, 10, ASCENDING, 0x3}));
    EXPECT_TRUE(read(0, {2, 1, 2, 3, 10, ASCENDING, 0x80000001}));
    EXPECT_TRUE(read(0, {2, 1, 2, 4, 10, ASCENDING, 0x1, 0x80000000}));
    EXPECT_TRUE(read(0, {2, 1, 2, 5, 10, ASCENDING | 31, 0, 0, 0x3}));
    const std::vector<std::pair<Cells, const char*>> badAscending = {
        {{2, 1, 2, 3, 10, ASCENDING, 0x1}, "one cell too few"},
        {{2, 1, 2, 3, 10, ASCENDING, 0x7}, "one too many"},
        {{2, 1, 2, 3, 10, ASCENDING, 0}, "none"},
        {{2, 1, 2, 4, 10, ASCENDING, 0x3, 0}, "a word behind the last cell"},
        {{2, 1, 2, 2, 10, ASCENDING}, "no word of high parts"},
        {{2, 1, 2, 3, 10, ASCENDING | 4, 0x3}, "no word behind the low parts"},
        {{2, 1, 2, 5, 10, ASCENDING | 32, 0, 0, 0x3}, "low parts of 32 bits"},
        {{2, 1, 2, 3, 10, EVEN | 2 << 6 | 33 << 8, 0x3}, "a round of 33 bits"},
    };
    for (const auto& [numbers, what] : badAscending)
        EXPECT_FALSE(read(0, numbers)) << what;
}

TEST(VCFixedLenTbl_MemSavVer, TakesNoMemoryForWhatAFileOnlyClaims)
{
    const CLinkTableDir dir;
    CAllocFault memory;
    for (const Cells& numbers :
         {Cells{LARGEST, LARGEST}, Cells{LARGEST, 1, LARGEST, LARGEST, 0, 0},
          Cells{LARGEST, 2, 4000, LARGEST, 4000, LARGEST}, Cells{LARGEST, 1, LARGEST, 0}}) {
        dir.Write(1, numbers);
        CTestCellTable table(128);
        ASSERT_TRUE(table.InsertFld(0, 0, nullptr));
        memory.Arm(0);
        EXPECT_FALSE(table.ReadFldData(0, dir.GetFile(1).string().c_str(), true));
        EXPECT_LE(memory.GetLargestSize(), 1u << 20); // what is read ahead
    }
}

TEST(VCFixedLenTbl_MemSavVer, TakesClearlyLessMemoryThanPlainArrays)
{
    CRandom random;
    constexpr DWORD COUNT = 100000;
    const CTempDir dir;
    const std::string path = (dir.GetPath() / "field.dat").string();
    // Packed cells are as large in memory as in a file, but for the index of blocks.
    const auto getBitsOfCell = [&](unsigned int cellsOfGroup, const Cells& cells) {
        CTestCellTable table(cellsOfGroup);
        EXPECT_TRUE(table.InsertCells(0, cells));
        EXPECT_TRUE(table.WriteFldData(0, path.c_str()));
        return static_cast<double>(std::filesystem::file_size(path)) * 8 / COUNT;
    };
    Cells cells(COUNT);
    for (const DWORD bits : {1u, 4u, 10u, 20u}) {
        for (DWORD& cell : cells)
            cell = 4000000000 + random.GetBelow(DWORD{1} << bits);
        EXPECT_LT(getBitsOfCell(128, cells), bits + 0.6);
    }
    EXPECT_LT(getBitsOfCell(128, MakeSequence(2, COUNT)), 0.6);
    EXPECT_LT(getBitsOfCell(0, MakeSequence(2, COUNT)), 0.4);
    for (const DWORD step : {2u, 16u, 256u, 8192u}) {
        DWORD value = 0;
        for (DWORD& cell : cells)
            cell = value += 1 + random.GetBelow(2 * step - 1);
        EXPECT_LT(getBitsOfCell(0, cells), std::log2(step) + 2.8) << step;
    }
    // Lists of ten out of a million.
    for (DWORD i = 0; i < COUNT; i += 10) {
        for (DWORD k = 0; k < 10; ++k)
            cells[i + k] = random.GetBelow(1000000);
        std::sort(cells.begin() + i, cells.begin() + i + 10);
    }
    EXPECT_LT(getBitsOfCell(0, cells), 19.2);
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, StaysSmallWhereCellsComeAndGoOneByOne)
{
    CRandom random;
    CTestCellTable table = MakeTable();
    ASSERT_TRUE(table.InsertFld(0, 0, nullptr));
    const auto getFileSize = [&] {
        EXPECT_TRUE(table.WriteFldData(0, path.c_str()));
        return std::filesystem::file_size(path);
    };
    for (DWORD i = 0; i < 6000; ++i)
        ASSERT_TRUE(table.ReplaceCells(0, random.IsOneOf(2) ? i : i / 2, 0, {i % 16}));
    const Cells cells = table.GetCells(0);
    const auto grown = getFileSize();
    table.Clear();
    ASSERT_TRUE(table.InsertCells(0, cells));
    EXPECT_LE(grown, getFileSize() * 2);
    for (DWORD i = 0; i < 5900; ++i)
        ASSERT_TRUE(table.DeleteRec(0, random.GetBelow(6000 - i), 1));
    EXPECT_LE(getFileSize(), 100 * 3 + 200u);
}

TEST_P(VCFixedLenTbl_MemSavVerOfBothManners, IsAsItWasWhenMemoryRunsOut)
{
    CRandom random;
    const Cells first = MakeCells(random, KIND_ROUNDS, 9000);
    const Cells second = MakeCells(random, KIND_FEW_VALUES, 8000);
    const Cells written = MakeCells(random, KIND_ANY, 5000);
    {
        CTestCellTable table = MakeTable();
        ASSERT_TRUE(table.InsertCells(0, written));
        ASSERT_TRUE(table.WriteFldData(0, path.c_str()));
    }
    CTestCellTable source = MakeTable();
    ASSERT_TRUE(source.InsertCells(0, written));
    const unsigned char* const bytes = CTestCellTable::GetBytes(written);
    const unsigned char* data[] = {bytes, nullptr};
    const std::vector<std::pair<const char*, std::function<void(CTestCellTable&)>>> operations = {
        {"InsertFld", [&](CTestCellTable& table) { EXPECT_TRUE(table.InsertFld(1, 5000, bytes)); }},
        {"InsertRec of all", [&](CTestCellTable& table) { EXPECT_TRUE(table.InsertRec(10, 5000, data)); }},
        {"InsertRec", [&](CTestCellTable& table) { EXPECT_TRUE(table.InsertRec(1, 8000, 5000, bytes)); }},
        {"DeleteRec of all", [&](CTestCellTable& table) { EXPECT_TRUE(table.DeleteRec(10, 7000)); }},
        {"DeleteRec", [&](CTestCellTable& table) { EXPECT_TRUE(table.DeleteRec(0, 5000, 1)); }},
        {"ReplaceRec", [&](CTestCellTable& table) { EXPECT_TRUE(table.ReplaceRec(0, 1, 1, 5000, bytes)); }},
        {"SetData", [&](CTestCellTable& table) { EXPECT_TRUE(table.SetData(1, 3000, 5000, bytes)); }},
        {"SetFldData", [&](CTestCellTable& table) { EXPECT_TRUE(table.SetFldData(1, 5000, bytes)); }},
        {"ReallocateRecArea", [&](CTestCellTable& table) { EXPECT_TRUE(table.ReallocateRecArea(1, 50000)); }},
        {"ReadFldData",
         [&](CTestCellTable& table) { EXPECT_TRUE(table.ReadFldData(1, path.c_str(), true)); }},
        {"assignment", [&](CTestCellTable& table) { table = source; }},
    };
    for (const auto& [name, operation] : operations) {
        const auto& run = operation;
        const char* const what = name;
        const int failures = FailEveryAllocation(
            [&] {
                auto table = std::make_unique<CTestCellTable>(MakeTable().fldCount, 0, nullptr, 4u,
                                                              GetParam().blockSize, GetParam().cellsOfGroup);
                EXPECT_TRUE(table->InsertCells(0, first));
                EXPECT_TRUE(table->InsertCells(1, second));
                return table;
            },
            [&](std::unique_ptr<CTestCellTable>& table) { run(*table); },
            [&](std::unique_ptr<CTestCellTable>& table) {
                EXPECT_EQ(table->GetContent(), (Content{first, second})) << what;
            });
        EXPECT_GE(failures, 3) << what;
    }
}
