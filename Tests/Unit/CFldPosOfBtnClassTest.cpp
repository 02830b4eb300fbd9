#include "CFldPosOfBtnClass.h"

#include "Support/CAllocFault.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;

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
