#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "Support/CAllocFault.h"
#include "Support/MakeTable.h"
#include "VCBtn.h"
#include "VCBtnClass.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using List = std::vector<DWORD>;
constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
using Env = CBUIDataMngr;

// Records:  0  1  2  3  4  5
// shop      a  a  b  b  c  c    buttons 2 3 4
// kind      x  y  x  z  y  z    buttons 2 3 4
// city      k  k  l  l  k  m    buttons 2 3 4
class CBUIDataMngr_SelectionTest : public ::testing::Test
{
protected:
    static constexpr DWORD SHOP = 1;
    static constexpr DWORD KIND = 2;
    static constexpr DWORD CITY = 3;
    static constexpr DWORD A = 2;
    static constexpr DWORD B = 3;
    static constexpr DWORD C = 4;
    static constexpr DWORD X = 2;
    static constexpr DWORD Y = 3;
    static constexpr DWORD Z = 4;

    CBUIDataMngr_SelectionTest()
        : table(MakeTable({{"shop", TEXT, {"a", "a", "b", "b", "c", "c"}},
                           {"kind", TEXT, {"x", "y", "x", "z", "y", "z"}},
                           {"city", TEXT, {"k", "k", "l", "l", "k", "m"}}})),
          sums(table), env(1, ON_MEM, ON_MEM, table, &sums, nullptr)
    {}
    List GetTargetRecs() const
    {
        List recs(6);
        DWORD count = 0;
        env.GetTargetRecList(recs.data(), count);
        recs.resize(count);
        return recs;
    }
    List GetDisplayed(DWORD btnClassID) const
    {
        List btnIDs;
        env.GetDispBtnIDListOfBtnClass(btnClassID, btnIDs);
        return btnIDs;
    }
    List GetSelected(DWORD btnClassID) const
    {
        List btnIDs;
        env.GetSelBtnIDListOfBtnClass(btnClassID, btnIDs);
        return btnIDs;
    }
    bool IsSelective(DWORD btnClassID) const
    {
        bool state = false;
        env.GetBtnSelectiveStateOfBtnClass(btnClassID, state);
        return state;
    }
    std::vector<std::pair<DWORD, List>> GetSelection() const
    {
        std::vector<SSelectBtnIDList> info(1);
        env.GetAllBtnSelectionInfo(info);
        std::vector<std::pair<DWORD, List>> selection;
        for (const SSelectBtnIDList& ofClass : info)
            selection.emplace_back(ofClass.btnClassID, ofClass.btnIDList);
        return selection;
    }
    unsigned int GetVisibleInfo(DWORD btnClassID, DWORD btnID) const
    {
        unsigned int info = 4711;
        env.GetVisibleInfoOfBtn(btnClassID, btnID, info);
        return info;
    }

    CSourceDataMngr table;
    CCoreSumMngr sums;
    CBUIDataMngr env;
};

using Selection = std::vector<std::pair<DWORD, List>>;

// --- Narrowing

TEST_F(CBUIDataMngr_SelectionTest, LevelsNarrowInTheOrderOfPresses)
{
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, true));
    EXPECT_EQ(GetTargetRecs(), List({0, 1}));
    EXPECT_EQ(GetDisplayed(SHOP), List({A, B, C})); // never narrowed by itself
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y}));
    EXPECT_EQ(GetDisplayed(CITY), List({2}));
    EXPECT_TRUE(env.SelectTheBtn(KIND, Y, true));
    EXPECT_EQ(GetTargetRecs(), List({1}));
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y})); // as the level before left it
    EXPECT_EQ(GetSelection(), Selection({{SHOP, {A}}, {KIND, {Y}}}));
    unsigned int depth = 9;
    EXPECT_TRUE(env.GetHierDepthOfBtnClass(KIND, depth));
    EXPECT_EQ(depth, 1u);
    EXPECT_FALSE(env.GetHierDepthOfBtnClass(CITY, depth));
    DWORD btnClassID = 0;
    DWORD count = 0;
    EXPECT_EQ(env.GetHierCount(), 2u);
    EXPECT_TRUE(env.GetHierInfo(0, btnClassID, count));
    EXPECT_EQ(btnClassID, SHOP);
    EXPECT_EQ(count, 2u);
    EXPECT_FALSE(env.GetHierInfo(2, btnClassID, count));
}

TEST_F(CBUIDataMngr_SelectionTest, APressInAnEarlierClassDissolvesTheLevelsBehindIt)
{
    env.SelectTheBtn(SHOP, A, true);
    env.SelectTheBtn(KIND, Y, true);
    env.SetNewBtnMadeSelStateOfBtnClass(KIND, true);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, B, true));
    EXPECT_EQ(GetSelection(), Selection({{SHOP, {B}}}));
    EXPECT_TRUE(GetSelected(KIND).empty());
    EXPECT_FALSE(IsSelective(KIND));
    bool state = true;
    env.GetNewBtnMadeSelStateOfBtnClass(KIND, state);
    EXPECT_FALSE(state);
    EXPECT_EQ(GetTargetRecs(), List({2, 3}));
    EXPECT_EQ(GetDisplayed(KIND), List({X, Z}));
}

TEST_F(CBUIDataMngr_SelectionTest, WithoutMultipleSelectionAPressReplacesWithItItAdds)
{
    env.SelectTheBtn(SHOP, A, true);
    env.SelectTheBtn(SHOP, B, true);
    EXPECT_EQ(GetSelected(SHOP), List({B}));
    EXPECT_EQ(GetTargetRecs(), List({2, 3}));
    env.SetMultiSelectionInfo(true);
    env.SelectTheBtn(SHOP, C, true);
    EXPECT_EQ(GetSelected(SHOP), List({B, C}));
    EXPECT_EQ(GetTargetRecs(), List({2, 3, 4, 5}));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, B, false));
    EXPECT_EQ(GetSelected(SHOP), List({C}));
    EXPECT_EQ(GetTargetRecs(), List({4, 5}));
    EXPECT_EQ(GetDisplayed(CITY), List({2, 4}));
}

TEST_F(CBUIDataMngr_SelectionTest, ReleasingTheOnlyButtonOfTheOnlyLevelShowsAllAgain)
{
    env.SelectTheBtn(SHOP, A, true);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, false));
    EXPECT_EQ(env.GetHierCount(), 0u);
    EXPECT_FALSE(env.IsBtnSelectiveState());
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y, Z}));
    EXPECT_EQ(GetTargetRecs().size(), 6u);
}

TEST_F(CBUIDataMngr_SelectionTest, ReleasingWhatIsNotSelectedChangesNothing)
{
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, false));
    EXPECT_EQ(env.GetHierCount(), 0u);
    EXPECT_FALSE(IsSelective(SHOP));
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y, Z}));
}

TEST_F(CBUIDataMngr_SelectionTest, AHiddenButtonIsSelectedButTakesNoPartInTheRelation)
{
    env.SelectTheBtn(SHOP, A, true); // hides z
    EXPECT_TRUE(env.SelectTheBtn(KIND, Z, true));
    EXPECT_EQ(GetSelected(KIND), List({Z}));
    DWORD count = 0;
    env.GetSelBtnCountOfBtnClass(KIND, count);
    EXPECT_EQ(count, 1u);
    EXPECT_TRUE(GetTargetRecs().empty()); // pressed alone it makes a level of no records
    EXPECT_EQ(env.GetHierCount(), 2u);
    EXPECT_TRUE(GetDisplayed(CITY).empty());
    EXPECT_EQ(GetDisplayed(SHOP), List({A, B, C}));
}

TEST_F(CBUIDataMngr_SelectionTest, HiddenButtonsTakePartWhenAskedFor)
{
    env.SetMultiSelectionInfo(true);
    env.SelectTheBtn(SHOP, A, true);
    EXPECT_TRUE(env.SelectBtns(KIND, {X, Z}, true, false));
    EXPECT_EQ(GetTargetRecs(), List({0}));
    EXPECT_EQ(GetSelected(KIND), List({X, Z}));
    env.ClearAllBtnSelections(false);
    const DWORD recs[] = {0, 1, 2};
    env.SetLimitedRecList(recs, 3); // hides c and z by the limitation
    EXPECT_TRUE(env.SelectBtns(SHOP, {A, C}, true, true));
    EXPECT_EQ(GetTargetRecs(), List({0, 1}));
}

TEST_F(CBUIDataMngr_SelectionTest, EachIdentifierCountsOnceInFirstPlace)
{
    env.SetMultiSelectionInfo(true);
    EXPECT_TRUE(env.SelectBtns(SHOP, {C, A, C, A, C}, true, false));
    EXPECT_EQ(GetSelected(SHOP), List({A, C}));
    EXPECT_EQ(GetTargetRecs(), List({0, 1, 4, 5}));
}

TEST_F(CBUIDataMngr_SelectionTest, RepeatedIdentifiersAllocateNothingEach)
{
    std::vector<std::string> values;
    List btnIDs;
    for (DWORD i = 0; i < 1000; ++i) {
        values.push_back(std::to_string(i));
        btnIDs.push_back(1001 - i);
    }
    btnIDs.push_back(2);
    const CSourceDataMngr manyValues = MakeTable({{"item", TEXT, values}});
    Env envOfMany(1, ON_MEM, ON_MEM, manyValues, nullptr, nullptr);
    CAllocFault fault;
    fault.Arm(0); // counts from here on, and fails none
    envOfMany.SelectBtns(1, btnIDs, true, false);
    EXPECT_LT(fault.GetAllocCount(), 100u);
    fault.Disarm();
    DWORD count = 0;
    EXPECT_TRUE(envOfMany.GetSelBtnCountOfBtnClass(1, count));
    EXPECT_EQ(count, 1000u);
}

TEST_F(CBUIDataMngr_SelectionTest, AnUnknownButtonEndsThePressAndKeepsWhatCameBefore)
{
    EXPECT_FALSE(env.SelectBtns(SHOP, {A, 99, B}, true, false));
    EXPECT_EQ(GetSelected(SHOP), List({A}));
    EXPECT_TRUE(IsSelective(SHOP));
    EXPECT_EQ(env.GetHierCount(), 0u);
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y, Z}));
}

TEST_F(CBUIDataMngr_SelectionTest, AnEmptyPressMakesALevelOfNoRecords)
{
    EXPECT_TRUE(env.SelectBtns(SHOP, {}, true, false));
    EXPECT_TRUE(IsSelective(SHOP));
    EXPECT_TRUE(GetSelected(SHOP).empty());
    EXPECT_EQ(env.GetHierCount(), 1u);
    EXPECT_TRUE(GetTargetRecs().empty());
    EXPECT_TRUE(GetDisplayed(KIND).empty());
    EXPECT_EQ(GetSelection(), Selection({{SHOP, {}}}));
    EXPECT_TRUE(env.SelectBtns(SHOP, {}, false, false));
    EXPECT_FALSE(IsSelective(SHOP));
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y, Z}));
}

TEST_F(CBUIDataMngr_SelectionTest, AClassInSelectiveStateKeepsItsMarksAsTheyStoodWhenFirstPressed)
{
    env.SetMultiSelectionInfo(true);
    env.SelectTheBtn(SHOP, A, true);
    env.SelectTheBtn(KIND, X, true);
    EXPECT_EQ(GetVisibleInfo(KIND, Z), VISINFO_RELATION);
    env.SelectTheBtn(KIND, Y, true);
    EXPECT_EQ(GetVisibleInfo(KIND, Z), VISINFO_RELATION);
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y}));
}

TEST_F(CBUIDataMngr_SelectionTest, WithoutASumManagerThePressIsDoneAndTheAnswerFalse)
{
    env.SetCoreSumMngrPtr(nullptr);
    EXPECT_FALSE(env.SelectTheBtn(SHOP, A, true));
    EXPECT_EQ(GetTargetRecs(), List({0, 1}));
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y}));
    env.SetRelationMode(Env::RELATIONMODE_NONE);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, true)); // nothing is asked of it
}

// --- Or, And, None

TEST_F(CBUIDataMngr_SelectionTest, OrHoldsOneClassAtATime)
{
    env.SetRelationMode(Env::RELATIONMODE_OR);
    env.SetMultiSelectionInfo(true);
    env.SelectTheBtn(SHOP, A, true);
    env.SelectTheBtn(SHOP, C, true);
    EXPECT_EQ(GetTargetRecs(), List({0, 1, 4, 5}));
    env.SelectTheBtn(KIND, X, true);
    EXPECT_TRUE(GetSelected(SHOP).empty());
    EXPECT_EQ(GetTargetRecs(), List({0, 2}));
    EXPECT_EQ(GetDisplayed(SHOP), List({A, B}));
    EXPECT_EQ(GetSelection(), Selection({{KIND, {X}}}));
}

TEST_F(CBUIDataMngr_SelectionTest, AndWantsARecordWithEachSelectedButtonNotTheSameForAll)
{
    env.SetRelationMode(Env::RELATIONMODE_AND);
    env.SetMultiSelectionInfo(true);
    env.SelectTheBtn(SHOP, A, true);
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y}));
    env.SelectTheBtn(SHOP, B, true); // x has a record with a and another with b
    EXPECT_EQ(GetDisplayed(KIND), List({X}));
    EXPECT_TRUE(GetDisplayed(CITY).empty());
    EXPECT_EQ(GetTargetRecs().size(), 6u);
    EXPECT_EQ(GetDisplayed(SHOP), List({A, B, C}));
    EXPECT_EQ(env.GetHierCount(), 1u);
    unsigned int depth = 0;
    EXPECT_FALSE(env.GetHierDepthOfBtnClass(SHOP, depth)); // another mode than Narrowing
    env.SelectTheBtn(SHOP, A, false);
    EXPECT_EQ(GetDisplayed(KIND), List({X, Z}));
    env.SelectTheBtn(SHOP, B, false);
    EXPECT_EQ(env.GetHierCount(), 0u);
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y, Z}));

    env.SetRelationMode(Env::RELATIONMODE_NARROWING); // the same presses unite the records
    env.SelectTheBtn(SHOP, A, true);
    env.SelectTheBtn(SHOP, B, true);
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y, Z}));
}

TEST_F(CBUIDataMngr_SelectionTest, InAndASelectedButtonOutsideTheLimitationRelatesToNothing)
{
    env.SetRelationMode(Env::RELATIONMODE_AND);
    env.SetMultiSelectionInfo(true);
    const DWORD recs[] = {0, 2};
    env.SetLimitedRecList(recs, 2);
    EXPECT_TRUE(env.SelectBtns(SHOP, {A, C}, true, true));
    for (const DWORD btnID : {X, Y, Z})
        EXPECT_NE(GetVisibleInfo(KIND, btnID) & VISINFO_RELATION, 0u);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, C, false));
    EXPECT_EQ(GetDisplayed(KIND), List({X}));
}

TEST_F(CBUIDataMngr_SelectionTest, NoneSelectsAndRelatesNothing)
{
    env.SetRelationMode(Env::RELATIONMODE_NONE);
    env.SelectTheBtn(SHOP, A, true);
    env.SelectTheBtn(KIND, Y, true);
    EXPECT_EQ(GetDisplayed(CITY), List({2, 3, 4}));
    EXPECT_EQ(GetTargetRecs().size(), 6u);
    EXPECT_EQ(GetSelection(), Selection({{SHOP, {A}}, {KIND, {Y}}}));
    EXPECT_EQ(env.GetHierCount(), 0u);
}

TEST_F(CBUIDataMngr_SelectionTest, TheSameModeKeepsTheSelectionAnotherClearsIt)
{
    env.SelectTheBtn(SHOP, A, true);
    env.SetRelationMode(Env::RELATIONMODE_NARROWING);
    EXPECT_EQ(GetSelected(SHOP), List({A}));
    double sum = 0.0;
    env.SetRelationMode(Env::RELATIONMODE_OR);
    EXPECT_FALSE(env.IsBtnSelectiveState());
    EXPECT_EQ(env.GetHierCount(), 0u);
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y, Z}));
    env.SetCoreSumMngrPtr(nullptr);
    EXPECT_FALSE(env.GetSumValueCacheMngrObjRef().GetSumValue(SHOP, A, 1, sum)); // nothing is kept
}

// --- Difference

TEST_F(CBUIDataMngr_SelectionTest, DifferenceShowsWhatGoesWithTheStandardAlone)
{
    env.SetRelationMode(Env::RELATIONMODE_DIFFERENCE);
    DWORD btnClassID = 9;
    DWORD standard = 9;
    DWORD target = 9;
    EXPECT_TRUE(env.GetSelBtnsInfoForDiffCnd(btnClassID, standard, target));
    EXPECT_EQ(List({btnClassID, standard, target}), List({0, 0, 0}));
    EXPECT_FALSE(env.SelectBtns(SHOP, {}, true, false));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, true));
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y})); // without a target: what goes with the standard
    EXPECT_TRUE(env.SelectTheBtn(SHOP, B, true));
    EXPECT_EQ(GetDisplayed(KIND), List({Y})); // x has a record with each
    EXPECT_EQ(GetDisplayed(CITY), List({2}));
    EXPECT_EQ(GetSelected(SHOP), List({A, B}));
    EXPECT_EQ(GetSelection(), Selection({{SHOP, {A, B}}}));
    EXPECT_TRUE(env.GetSelBtnsInfoForDiffCnd(btnClassID, standard, target));
    EXPECT_EQ(List({btnClassID, standard, target}), List({SHOP, A, B}));
    EXPECT_EQ(env.GetHierCount(), 0u);

    EXPECT_TRUE(env.SelectTheBtn(SHOP, B, false)); // the target first
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y}));
    EXPECT_EQ(GetSelected(SHOP), List({A}));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, false));
    EXPECT_FALSE(env.IsBtnSelectiveState());
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y, Z}));
}

TEST_F(CBUIDataMngr_SelectionTest, ADifferencePairIsPressedAtOnceAndReplacedFromAnotherClass)
{
    env.SetRelationMode(Env::RELATIONMODE_DIFFERENCE);
    EXPECT_TRUE(env.SelectBtns(SHOP, {C, B}, true, false));
    EXPECT_EQ(GetDisplayed(KIND), List({Y}));
    EXPECT_TRUE(env.SelectTheBtn(KIND, X, true));
    EXPECT_TRUE(GetSelected(SHOP).empty());
    EXPECT_EQ(GetDisplayed(SHOP), List({A, B}));
    EXPECT_TRUE(env.SelectBtns(KIND, {X}, false, false));
    EXPECT_TRUE(env.SelectBtns(SHOP, {A, B}, true, false));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, false)); // the standard takes the target along
    EXPECT_TRUE(GetSelected(SHOP).empty());
}

TEST_F(CBUIDataMngr_SelectionTest, ReleasingAStrangerInDifferenceIsFalseAndThePairLosesItsMarks)
{
    env.SetRelationMode(Env::RELATIONMODE_DIFFERENCE);
    env.SelectBtns(SHOP, {A, B}, true, false);
    EXPECT_FALSE(env.SelectTheBtn(SHOP, C, false));
    EXPECT_TRUE(GetSelected(SHOP).empty());
    DWORD btnClassID = 0;
    DWORD standard = 0;
    DWORD target = 0;
    env.GetSelBtnsInfoForDiffCnd(btnClassID, standard, target);
    EXPECT_EQ(List({btnClassID, standard, target}), List({SHOP, A, B})); // but the pair is remembered
    EXPECT_FALSE(env.SelectTheBtn(KIND, X, false));
    EXPECT_FALSE(env.SelectTheBtn(SHOP, 99, true));
}

TEST_F(CBUIDataMngr_SelectionTest, AStandardOutsideTheLimitationAndATargetOfTheSameRecordsRelateToNothing)
{
    env.SetRelationMode(Env::RELATIONMODE_DIFFERENCE);
    env.SelectBtns(SHOP, {A, A}, true, false);
    env.SelectTheBtn(SHOP, A, true); // the target is the standard itself
    EXPECT_TRUE(GetDisplayed(KIND).empty());
    const DWORD recs[] = {2, 3};
    env.SetLimitedRecList(recs, 2);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, true));
    EXPECT_TRUE(GetDisplayed(KIND).empty());
    EXPECT_EQ(GetDisplayed(SHOP), List({B}));
}

// --- Whole selections

TEST_F(CBUIDataMngr_SelectionTest, AWholeSelectionIsRestored)
{
    env.SetMultiSelectionInfo(true);
    env.SelectBtns(SHOP, {A, B}, true, false);
    env.SelectTheBtn(KIND, X, true);
    env.SetNewBtnMadeSelStateOfBtnClass(SHOP, true);
    std::vector<SSelectBtnIDList> info;
    env.GetAllBtnSelectionInfo(info);
    const List recs = GetTargetRecs();
    env.ClearAllBtnSelections(false);
    EXPECT_TRUE(env.SelectBtns(info, false));
    EXPECT_EQ(GetTargetRecs(), recs);
    EXPECT_EQ(GetSelection(), Selection({{SHOP, {A, B}}, {KIND, {X}}}));
    bool state = false;
    env.GetNewBtnMadeSelStateOfBtnClass(SHOP, state);
    EXPECT_TRUE(state);
    EXPECT_TRUE(env.SelectBtns(std::vector<SSelectBtnIDList>(), false));
    EXPECT_FALSE(env.IsBtnSelectiveState());
}

TEST_F(CBUIDataMngr_SelectionTest, AFailedRestoreLeavesNothingSelected)
{
    const std::vector<SSelectBtnIDList> info = {
        {SHOP, {A}, true}, {KIND, {X}, false}, {CITY, {2, 99}, false}};
    EXPECT_FALSE(env.SelectBtns(info, false));
    EXPECT_FALSE(env.IsBtnSelectiveState());
    EXPECT_EQ(env.GetHierCount(), 0u);
    for (const DWORD btnClassID : {SHOP, KIND, CITY})
        EXPECT_TRUE(GetSelected(btnClassID).empty());
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y, Z}));
}

TEST_F(CBUIDataMngr_SelectionTest, AWholeItemIsSelectedHiddenButtonsIncluded)
{
    env.SelectTheBtn(SHOP, A, true);
    EXPECT_TRUE(env.SelectAllBtnsOfBtnClass(KIND, true));
    EXPECT_EQ(GetSelected(KIND), List({1, X, Y, Z})); // the empty value without a record too
    EXPECT_EQ(GetTargetRecs(), List({0, 1}));
    bool state = false;
    env.GetNewBtnMadeSelStateOfBtnClass(KIND, state);
    EXPECT_TRUE(state);
    EXPECT_TRUE(env.SelectAllBtnsOfBtnClass(KIND, false));
    EXPECT_TRUE(GetSelected(KIND).empty());
    EXPECT_FALSE(IsSelective(KIND));
    env.SetRelationMode(Env::RELATIONMODE_DIFFERENCE);
    EXPECT_FALSE(env.SelectAllBtnsOfBtnClass(KIND, true));
}

TEST_F(CBUIDataMngr_SelectionTest, ReleasingAWholeItemWithHiddenSelectedButtonsLeavesItsLevel)
{
    env.SelectTheBtn(SHOP, A, true);
    env.SelectAllBtnsOfBtnClass(KIND, true);
    EXPECT_TRUE(env.SelectAllBtnsOfBtnClass(KIND, false)); // only the displayed ones go through the steps
    EXPECT_TRUE(GetSelected(KIND).empty());
    EXPECT_EQ(env.GetHierCount(), 2u);
    EXPECT_TRUE(GetTargetRecs().empty());
}

TEST_F(CBUIDataMngr_SelectionTest, ClearingWithoutForceWantsASelectiveState)
{
    env.SelectTheBtn(SHOP, A, true);
    env.ClearAllBtnSelections(false);
    EXPECT_FALSE(env.IsBtnSelectiveState());
    EXPECT_EQ(GetTargetRecs().size(), 6u);
    env.ClearAllBtnSelections(false);
    env.ClearAllBtnSelections(true);
    EXPECT_EQ(GetDisplayed(KIND), List({X, Y, Z}));
}

// --- Classes as such

TEST_F(CBUIDataMngr_SelectionTest, ClassesAreSelectedInOrderAndApartFromButtons)
{
    EXPECT_TRUE(env.SelectTheBtnClass(CITY, true));
    EXPECT_TRUE(env.SelectTheBtnClass(SHOP, true));
    EXPECT_TRUE(env.SelectTheBtnClass(CITY, true)); // again
    List selected;
    env.GetAllBtnClassSelectionInfo(selected);
    EXPECT_EQ(selected, List({CITY, SHOP}));
    bool flag = false;
    env.GetSelectionInfoOfBtnClass(CITY, flag);
    EXPECT_TRUE(flag);
    env.ClearAllBtnSelections(true);
    EXPECT_TRUE(env.SelectTheBtnClass(CITY, false));
    EXPECT_TRUE(env.SelectTheBtnClass(CITY, false));
    env.GetAllBtnClassSelectionInfo(selected);
    EXPECT_EQ(selected, List({SHOP}));
    env.ClearAllBtnClassSelections();
    env.GetAllBtnClassSelectionInfo(selected);
    EXPECT_TRUE(selected.empty());
    env.GetSelectionInfoOfBtnClass(SHOP, flag);
    EXPECT_FALSE(flag);
}

// --- Sums after a press

TEST_F(CBUIDataMngr_SelectionTest, APressDropsTheSumsThatItChanges)
{
    const auto isKept = [this](DWORD btnClassID) {
        double sum = 0.0;
        env.SetCoreSumMngrPtr(nullptr);
        const bool kept = env.GetSumValueCacheMngrObjRef().GetSumValue(btnClassID, 2, 1, sum);
        env.SetCoreSumMngrPtr(&sums);
        return kept;
    };
    const auto isTotalKept = [this](DWORD btnClassID) {
        double sum = 0.0;
        env.SetCoreSumMngrPtr(nullptr);
        const bool kept = env.GetSumValueCacheMngrObjRef().GetTotalValue(btnClassID, 1, sum);
        env.SetCoreSumMngrPtr(&sums);
        return kept;
    };
    const auto fill = [this] {
        double sum = 0.0;
        for (const DWORD btnClassID : {SHOP, KIND, CITY}) {
            env.GetSumValueCacheMngrObjRef().GetSumValue(btnClassID, 2, 1, sum);
            env.GetSumValueCacheMngrObjRef().GetTotalValue(btnClassID, 1, sum);
        }
    };
    env.SelectTheBtn(KIND, X, true);
    fill();
    env.SelectTheBtn(SHOP, A, true);
    EXPECT_TRUE(isKept(SHOP)); // the pressed class
    EXPECT_TRUE(isKept(KIND)); // in selective state
    EXPECT_FALSE(isKept(CITY));
    fill();
    env.ClearAllBtnSelections(false);
    EXPECT_FALSE(isKept(SHOP));

    env.SetRelationMode(Env::RELATIONMODE_AND);
    fill();
    env.SelectTheBtn(SHOP, A, true);
    EXPECT_TRUE(isKept(CITY)); // the target records are the same; only what is displayed has changed
    EXPECT_FALSE(isTotalKept(CITY));
    EXPECT_TRUE(isTotalKept(SHOP));
    fill();
    env.ClearAllBtnSelections(false);
    EXPECT_FALSE(isTotalKept(SHOP));
    EXPECT_TRUE(isKept(SHOP));

    env.SetRelationMode(Env::RELATIONMODE_NONE);
    fill();
    env.SelectTheBtn(SHOP, A, true);
    env.ClearAllBtnSelections(false);
    EXPECT_TRUE(isTotalKept(SHOP));
    EXPECT_TRUE(isTotalKept(CITY));
}

} // namespace
