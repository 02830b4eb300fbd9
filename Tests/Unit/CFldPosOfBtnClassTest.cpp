#include "CFldPosOfBtnClass.h"

#include "Support/CAllocFault.h"
#include "Support/LinkTableFiles.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

void Insert(CFldPosOfBtnClass& fldPos, DWORD btnClassID, DWORD fld)
{
    ASSERT_TRUE(fldPos.PrepareInsert(btnClassID)) << btnClassID;
    fldPos.Insert(btnClassID, fld);
}

// The index of a class's field, or 999.
DWORD Find(const CFldPosOfBtnClass& fldPos, DWORD btnClassID)
{
    DWORD fld = 999;
    fldPos.Find(btnClassID, fld);
    return fld;
}

} // namespace

TEST(CFldPosOfBtnClass, HoldsClassesOfEveryKind)
{
    CFldPosOfBtnClass fldPos;
    const std::vector<DWORD> btnClassIDs = {3, 1, 1000000001, 1000000005, 2000000001, 2000000003};
    for (DWORD fld = 0; fld < btnClassIDs.size(); ++fld)
        Insert(fldPos, btnClassIDs[fld], fld);
    for (DWORD fld = 0; fld < btnClassIDs.size(); ++fld)
        EXPECT_EQ(Find(fldPos, btnClassIDs[fld]), fld);
    for (const DWORD absent :
         {0u, 2u, 4u, 1000000000u, 1000000002u, 2000000000u, 2000000002u, 2100000001u, 4294967295u})
        EXPECT_EQ(Find(fldPos, absent), 999u) << absent;
}

TEST(CFldPosOfBtnClass, PrepareInsertRefusesWhatIsNoClassOrIsHeld)
{
    CFldPosOfBtnClass fldPos;
    EXPECT_FALSE(fldPos.PrepareInsert(0));
    EXPECT_FALSE(fldPos.PrepareInsert(2100000001));
    EXPECT_FALSE(fldPos.PrepareInsert(4294967295));
    Insert(fldPos, 5, 0);
    EXPECT_FALSE(fldPos.PrepareInsert(5));
    EXPECT_TRUE(fldPos.PrepareInsert(4));
    EXPECT_EQ(Find(fldPos, 4), 999u); // prepared is not held
}

TEST(CFldPosOfBtnClass, DeleteClosesTheGapInAllKinds)
{
    CFldPosOfBtnClass fldPos;
    Insert(fldPos, 7, 0);
    Insert(fldPos, 1000000002, 1);
    Insert(fldPos, 2, 2);
    Insert(fldPos, 2000000001, 3);
    fldPos.Delete(1000000002);
    EXPECT_EQ(Find(fldPos, 7), 0u);
    EXPECT_EQ(Find(fldPos, 1000000002), 999u);
    EXPECT_EQ(Find(fldPos, 2), 1u);
    EXPECT_EQ(Find(fldPos, 2000000001), 2u);
}

TEST(CFldPosOfBtnClass, ListsClassesByKindEachAscending)
{
    CFldPosOfBtnClass fldPos;
    DWORD fld = 0;
    for (const DWORD btnClassID : {2000000002u, 9u, 1000000003u, 2000000001u, 2u, 1000000001u})
        Insert(fldPos, btnClassID, fld++);
    std::vector<DWORD> listed = {5};
    fldPos.GetBtnClassIDList(listed);
    EXPECT_EQ(listed, (std::vector<DWORD>{2, 9, 1000000001, 1000000003, 2000000001, 2000000002}));
    fldPos.Clear();
    fldPos.GetBtnClassIDList(listed);
    EXPECT_TRUE(listed.empty());
}

TEST(CFldPosOfBtnClass, ExhaustedMemoryLeavesItAsItWas)
{
    CAllocFault memory;
    const std::size_t failures = memory.FailEachInTurn([](auto attempt) {
        CFldPosOfBtnClass fldPos;
        Insert(fldPos, 1, 0);
        attempt([&] { fldPos.PrepareInsert(100); });
        EXPECT_EQ(Find(fldPos, 1), 0u);
        EXPECT_EQ(Find(fldPos, 100), 999u);
    });
    EXPECT_EQ(failures, 1u);
}

namespace {

// Writes the positions to an index file and returns its numbers.
std::vector<DWORD> Write(const CFldPosOfBtnClass& fldPos, const CLinkTableDir& dir)
{
    CBinaryWriter writer((dir.GetPath() + "0.dat").c_str(), true);
    fldPos.WriteTo(writer);
    EXPECT_TRUE(writer.Close());
    return dir.Read(0);
}

// Reads the positions of an index file of these numbers; the class 3 is held before.
bool Read(CFldPosOfBtnClass& fldPos, const std::vector<DWORD>& numbers, DWORD& fldCount)
{
    const CLinkTableDir dir;
    dir.Write(0, numbers);
    Insert(fldPos, 3, 0);
    CLinkTableIndexReader reader(dir.GetPath().c_str());
    return fldPos.ReadFrom(reader, fldCount);
}

} // namespace

TEST(CFldPosOfBtnClass, PositionsAreWrittenVectorByVectorAndComeBack)
{
    CFldPosOfBtnClass fldPos;
    const CLinkTableDir dir;
    EXPECT_EQ(Write(fldPos, dir), (std::vector<DWORD>{0, 0, 0}));
    const std::vector<DWORD> btnClassIDs = {3, 1, 1000000001, 1000000003, 2000000002};
    for (DWORD fld = 0; fld < btnClassIDs.size(); ++fld)
        Insert(fldPos, btnClassIDs[fld], fld);
    std::vector<DWORD> numbers = Write(fldPos, dir);
    EXPECT_EQ(numbers, (std::vector<DWORD>{4, 0, 2, 0, 1, 3, 3, 0, 4, 2, 0, 5}));

    numbers.push_back(5);
    CFldPosOfBtnClass read;
    DWORD fldCount = 0;
    ASSERT_TRUE(Read(read, numbers, fldCount));
    EXPECT_EQ(fldCount, 5u);
    for (DWORD fld = 0; fld < btnClassIDs.size(); ++fld)
        EXPECT_EQ(Find(read, btnClassIDs[fld]), fld);
}

TEST(CFldPosOfBtnClass, PositionsThatAreNotEachFieldOnceAreRefused)
{
    const std::vector<std::vector<DWORD>> bad = {
        {},                          // nothing
        {1},                         // a vector without its entries
        {4294967295},                // likewise, of a size that could not be had
        {0, 0, 0},                   // no count of fields
        {2, 1, 0, 0, 0, 1},          // 0 is no class
        {2, 0, 1, 0, 0, 0},          // more positions than fields
        {2, 0, 1, 0, 0, 2},          // fewer
        {3, 0, 1, 1, 0, 0, 2},       // one twice
        {2, 0, 1, 1, 1, 0, 2},       // likewise, in two vectors
        {3, 0, 1, 3, 0, 0, 2},       // one that is left out
        {2, 0, 4294967295, 0, 0, 1}, // one far above
        {2, 0, 1, 0, 0, 4294967295}, // a count far above
    };
    for (const std::vector<DWORD>& numbers : bad) {
        CFldPosOfBtnClass fldPos;
        DWORD fldCount = 77;
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(Read(fldPos, numbers, fldCount)) << testing::PrintToString(numbers);
        EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA) << testing::PrintToString(numbers);
        EXPECT_EQ(fldCount, 77u);
        EXPECT_EQ(Find(fldPos, 3), 999u); // no class is held
    }
}
