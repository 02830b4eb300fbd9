#include "CBasicBtnCnd.h"
#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CUnitCndOfBscBtnCnd.h"
#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "Support/CAllocFault.h"
#include "Support/CEnvQueries.h"
#include "Support/CTestBtnCnd.h"
#include "Support/MakeTable.h"

#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <sstream>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using List = std::vector<DWORD>;
using Class = VCBtnClass;
constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
constexpr auto INC_TYPE = SCBUICoreCom::BTNTYPE_INC;
constexpr auto CLL_TYPE = SCBUICoreCom::BTNTYPE_CLL;
constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;
constexpr auto CONDITION = VCSpBtn::MMBBTNSELMTH_CONDITION;
constexpr DWORD INC = SCBUICoreCom::BTN_ID_INC_BEGIN;
constexpr DWORD CLL = SCBUICoreCom::BTN_ID_CLL_BEGIN;
using ESelCondition = CUnitCndOfBscBtnCnd::ESelCondition;

constexpr DWORD SHOP = 1;
constexpr DWORD KIND = 2;
constexpr DWORD AMOUNT = 3; // both the class and the field
constexpr DWORD A = 2;
constexpr DWORD B = 3;
constexpr DWORD C = 4;
constexpr DWORD X = 2;
constexpr DWORD Y = 3;
constexpr DWORD Z = 4;

// An environment that lets a test at what the environment keeps to itself.
class CProbeEnv final : public CBUIDataMngr
{
public:
    using CBUIDataMngr::CBUIDataMngr;
    using CBUIDataMngr::FindBtnClass;
    using CBUIDataMngr::ResetMemberBtnBasedOnTheCndOfCllBtns;
};

// The condition that the amounts of a button rank or compare so.
CBasicBtnCnd MakeCnd(ESelCondition selCondition, DWORD rankNum, double cmpNum = 0.0,
                     SCBUICoreCom::ESumMethodForCnd method = SCBUICoreCom::ESumMethodForCnd::Sum)
{
    CUnitCndOfBscBtnCnd unit;
    unit.SetNumID(AMOUNT);
    unit.SetSumMethod(method);
    unit.SetSelCondition(selCondition);
    unit.SetRankNum(rankNum);
    unit.SetCmpNum(cmpNum);
    CBasicBtnCnd cnd;
    cnd.SetCndComponent(unit);
    return cnd;
}

// Records:  0   1   2   3   4   5
// shop      a   a   b   b   c   c     buttons 2 3 4; sums 30 70 110
// kind      x   y   x   z   y   z     buttons 2 3 4; sums 40 70 100
// amount    10  20  30  40  50  60
class CEnvFixture : public CEnvQueries
{
public:
    explicit CEnvFixture(bool hasSums = true)
        : CEnvQueries(env, AMOUNT), table(MakeTable({{"shop", TEXT, {"a", "a", "b", "b", "c", "c"}},
                                                     {"kind", TEXT, {"x", "y", "x", "z", "y", "z"}},
                                                     {"amount", NUM, {"10", "20", "30", "40", "50", "60"}}})),
          sums(table), env(1, ON_MEM, ON_MEM, table, hasSums ? &sums : nullptr, nullptr)
    {}
    DWORD MakeInc(DWORD btnClassID, const List& members, const char* text = "inc")
    {
        DWORD btnID = 0;
        EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, INC_TYPE, text, SELECT, &members, nullptr),
                  Class::CREATESPBTN_OK);
        return btnID;
    }
    DWORD MakeCll(DWORD btnClassID, const List& members, const char* text = "cll")
    {
        DWORD btnID = 0;
        EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, CLL_TYPE, text, SELECT, &members, nullptr),
                  Class::CREATESPBTN_OK);
        return btnID;
    }
    DWORD MakeCndCll(DWORD btnClassID, const IBtnCnd& cnd)
    {
        DWORD btnID = 0;
        EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, CLL_TYPE, "cnd", CONDITION, nullptr, &cnd),
                  Class::CREATESPBTN_OK);
        return btnID;
    }

    CSourceDataMngr table;
    CCoreSumMngr sums;
    CProbeEnv env;
};

class CBUIDataMngr_SpBtnTest : public ::testing::Test, protected CEnvFixture
{};

// --- Making

TEST_F(CBUIDataMngr_SpBtnTest, ButtonsAreMadeOfTheKindsThatAreMadeHere)
{
    const List members{A, B};
    const CBasicBtnCnd cnd = MakeCnd(ESelCondition::Rank_High, 1);
    DWORD btnID = 4711;
    EXPECT_TRUE(env.SelectTheBtn(KIND, X, true));
    const auto create = [&](DWORD btnClassID, SCBUICoreCom::EBtnType type, VCSpBtn::EMmbBtnSelMth method,
                            const List& list) {
        return env.CreateSpBtn(btnID, btnClassID, type, "n", method, &list, &cnd);
    };
    EXPECT_EQ(create(99, INC_TYPE, SELECT, members), Class::CREATESPBTN_NOBTNCLASS);
    EXPECT_EQ(create(SHOP, SCBUICoreCom::BTNTYPE_VIRINC, SELECT, members), Class::CREATESPBTN_BADTYPE);
    EXPECT_EQ(create(SHOP, SCBUICoreCom::BTNTYPE_NORMAL, SELECT, members), Class::CREATESPBTN_BADTYPE);
    EXPECT_EQ(create(SHOP, INC_TYPE, CONDITION, members), Class::CREATESPBTN_UNKNOWNSELMTH);
    EXPECT_EQ(create(SHOP, CLL_TYPE, static_cast<VCSpBtn::EMmbBtnSelMth>(0), members),
              Class::CREATESPBTN_UNKNOWNSELMTH);
    EXPECT_EQ(create(SHOP, CLL_TYPE, SELECT, {INC}), Class::CREATESPBTN_BADMEMBER);
    EXPECT_EQ(btnID, 4711u);
    EXPECT_EQ(Selected(KIND), List({X})); // a refusal leaves the selection alone
    EXPECT_EQ(create(SHOP, INC_TYPE, SELECT, members), Class::CREATESPBTN_OK);
    EXPECT_EQ(btnID, INC);
    EXPECT_EQ(Selected(KIND), List()); // and a success clears it
    EXPECT_EQ(TargetRecs(), List({0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(Displayed(SHOP), List({C, INC}));
    EXPECT_EQ(create(SHOP, CLL_TYPE, CONDITION, members), Class::CREATESPBTN_OK);
    EXPECT_EQ(Members(SHOP, btnID), List({C})); // the condition has picked at once
}

TEST_F(CBUIDataMngr_SpBtnTest, APressOfASpecialButtonCoversTheRecordsOfItsMembers)
{
    const DWORD inc = MakeInc(SHOP, {A, C});
    const DWORD outer = MakeCll(SHOP, {inc, B});
    EXPECT_EQ(Displayed(SHOP), List({outer}));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, outer, true));
    EXPECT_EQ(TargetRecs(), List({0, 1, 2, 3, 4, 5}));
    env.ClearAllBtnSelections(true);
    EXPECT_TRUE(env.SelectBtns(SHOP, {inc}, true, true)); // hidden, and let in
    EXPECT_EQ(TargetRecs(), List({0, 1, 4, 5}));
    EXPECT_EQ(Displayed(KIND), List({X, Y, Z}));
    env.SetRelationMode(CBUIDataMngr::RELATIONMODE_AND);
    EXPECT_EQ(env.SetEffectiveInfoOfSpBtn(SHOP, outer, false), true);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, inc, true));
    EXPECT_EQ(Displayed(KIND), List({X, Y, Z}));
    env.SetRelationMode(CBUIDataMngr::RELATIONMODE_DIFFERENCE);
    EXPECT_TRUE(env.SelectBtns(SHOP, {inc, B}, true, false));
    EXPECT_EQ(Displayed(KIND), List({Y})); // b goes with x and z
}

TEST_F(CBUIDataMngr_SpBtnTest, TheRelationReachesSpecialButtonsThroughTheirMembers)
{
    const DWORD inc = MakeInc(KIND, {X});
    const DWORD outer = MakeInc(KIND, {inc, Z});
    EXPECT_TRUE(env.SelectTheBtn(SHOP, C, true)); // y and z
    EXPECT_EQ(Displayed(KIND), List({Y, outer}));
    EXPECT_EQ(Why(KIND, inc), VISINFO_RELATION | VISINFO_INCMEMBER);
    EXPECT_EQ(Why(KIND, outer), 0u);
}

TEST_F(CBUIDataMngr_SpBtnTest, AllDisplayedButtonsOfAClassArePressedSpecialOnesIncluded)
{
    const DWORD cll = MakeCll(SHOP, {A, B});
    EXPECT_TRUE(env.SelectAllBtnsOfBtnClass(SHOP, true));
    EXPECT_EQ(TargetRecs(), List({0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(Selected(SHOP), List({1, A, B, C, cll}));
}

// --- Sums

TEST_F(CBUIDataMngr_SpBtnTest, MakingAnIncButtonDropsTheTotalsAndACllButtonLeavesThem)
{
    EXPECT_EQ(Total(SHOP), 210.0);
    MakeCll(SHOP, {A});
    EXPECT_EQ(Total(SHOP), 210.0);
    const DWORD inc = MakeInc(SHOP, {B});
    env.SetDispMemberBtnInfoOfIncBtn(SHOP, inc, true);
    EXPECT_EQ(Total(SHOP), 70.0 + 110.0 + 70.0 + 30.0); // b, c, the inc button and the cll button
    MakeInc(SHOP, {C});
    EXPECT_EQ(Total(SHOP), 70.0 + 110.0 + 70.0 + 30.0); // c is hidden, its inc button shown
    EXPECT_EQ(Sum(SHOP, inc), 70.0);
}

TEST_F(CBUIDataMngr_SpBtnTest, AMemberChangeDropsEverySumAndTheSelection)
{
    const DWORD inc = MakeInc(SHOP, {A});
    EXPECT_EQ(Sum(SHOP, inc), 30.0);
    EXPECT_EQ(Sum(KIND, X), 40.0);
    EXPECT_TRUE(env.SelectTheBtn(KIND, X, true));
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(SHOP, inc, {A, B}), Class::OPEMMBBTN_OK);
    EXPECT_FALSE(env.IsBtnSelectiveState());
    EXPECT_EQ(Sum(SHOP, inc), 100.0);
    env.SetCoreSumMngrPtr(nullptr); // what was known has gone
    EXPECT_EQ(Sum(KIND, X), -1.0);
}

// --- The common close

TEST_F(CBUIDataMngr_SpBtnTest, EveryChangeClearsTheSelectionWithItsLevels)
{
    const DWORD inc = MakeInc(SHOP, {A});
    const CBasicBtnCnd cnd = MakeCnd(ESelCondition::Rank_High, 1);
    const DWORD cndCll = MakeCndCll(SHOP, cnd);
    const auto press = [this] {
        EXPECT_TRUE(env.SelectTheBtn(SHOP, B, true));
        EXPECT_TRUE(env.SelectTheBtn(KIND, Z, true));
        EXPECT_EQ(env.GetHierCount(), 2u);
    };
    const auto expectClear = [this] {
        EXPECT_FALSE(env.IsBtnSelectiveState());
        EXPECT_EQ(env.GetHierCount(), 0u);
        EXPECT_EQ(TargetRecs().size(), 6u);
    };
    press();
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(SHOP, inc, {A, 99}), Class::OPEMMBBTN_OK);
    expectClear();
    press();
    EXPECT_TRUE(env.SetEffectiveInfoOfSpBtn(SHOP, inc, false));
    expectClear();
    press();
    EXPECT_TRUE(env.SetEffectiveInfoOfSpBtn(SHOP, inc, true));
    expectClear();
    press();
    EXPECT_TRUE(env.SetDispMemberBtnInfoOfIncBtn(SHOP, inc, true));
    expectClear();
    press();
    EXPECT_EQ(env.SetMemberBtnCndOfSpBtn(SHOP, cndCll, cnd), Class::SETMMBBTNCND_OK);
    expectClear();
    press();
    EXPECT_TRUE(env.ClearMemberBtnCndOfSpBtn(SHOP, cndCll));
    expectClear();
    EXPECT_EQ(Members(SHOP, cndCll), List());
    press();
    EXPECT_TRUE(env.SetDispEmpValBtnInfoOfBtnClass(KIND, false));
    expectClear();
    press();
    EXPECT_TRUE(env.DestroySpBtn(SHOP, inc));
    expectClear();
    press();
    EXPECT_FALSE(env.DestroySpBtn(SHOP, inc)); // there is none, and the rest is done
    expectClear();
    press();
    EXPECT_FALSE(env.DestroySpBtn(SHOP, A));
    expectClear();
    press();
    EXPECT_FALSE(env.DestroySpBtn(99, inc));
    EXPECT_TRUE(env.IsBtnSelectiveState());
}

TEST_F(CBUIDataMngr_SpBtnTest, NoLevelOutlivesTheOnlySelectedButtonThatGoes)
{
    const DWORD inc = MakeInc(SHOP, {A});
    EXPECT_TRUE(env.SelectTheBtn(SHOP, inc, true));
    EXPECT_TRUE(env.DestroySpBtn(SHOP, inc));
    EXPECT_EQ(env.GetHierCount(), 0u);
    EXPECT_EQ(Displayed(KIND), List({X, Y, Z}));

    const DWORD another = MakeInc(SHOP, {A});
    EXPECT_TRUE(env.SelectTheBtn(SHOP, another, true));
    EXPECT_TRUE(env.SetEffectiveInfoOfSpBtn(SHOP, another, false));
    EXPECT_EQ(env.GetHierCount(), 0u);
    EXPECT_EQ(Displayed(KIND), List({X, Y, Z}));
}

TEST_F(CBUIDataMngr_SpBtnTest, RefusedChangesChangeNothing)
{
    const DWORD inc = MakeInc(SHOP, {A});
    const CBasicBtnCnd cnd = MakeCnd(ESelCondition::Rank_High, 1);
    const DWORD cndCll = MakeCndCll(SHOP, cnd);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, B, true));
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(99, inc, {A}), Class::OPEMMBBTN_NOSPBTN);
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(SHOP, A, {A}), Class::OPEMMBBTN_NOSPBTN);
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(SHOP, cndCll, {A}), Class::OPEMMBBTN_NOTSELECT);
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(SHOP, inc, {cndCll}), Class::OPEMMBBTN_BADMEMBER);
    EXPECT_EQ(env.SetMemberBtnCndOfSpBtn(99, inc, cnd), Class::SETMMBBTNCND_NOSPBTN);
    EXPECT_EQ(env.SetMemberBtnCndOfSpBtn(SHOP, inc, cnd), Class::SETMMBBTNCND_NOTCNDBTN);
    EXPECT_FALSE(env.ClearMemberBtnCndOfSpBtn(99, inc));
    EXPECT_FALSE(env.ClearMemberBtnCndOfSpBtn(SHOP, A));
    EXPECT_FALSE(env.SetEffectiveInfoOfSpBtn(99, inc, false));
    EXPECT_FALSE(env.SetEffectiveInfoOfSpBtn(SHOP, A, false));
    EXPECT_FALSE(env.SetDispMemberBtnInfoOfIncBtn(99, inc, true));
    EXPECT_FALSE(env.SetDispMemberBtnInfoOfIncBtn(SHOP, cndCll, true));
    EXPECT_FALSE(env.SetDispEmpValBtnInfoOfBtnClass(99, true));
    EXPECT_EQ(Selected(SHOP), List({B}));
    EXPECT_EQ(Members(SHOP, inc), List({A}));
}

TEST_F(CBUIDataMngr_SpBtnTest, QueriesOfWhatIsNotThereLeaveTheirOutputsUntouched)
{
    const DWORD inc = MakeInc(SHOP, {A});
    List list{4711};
    std::set<SBtnClassIDAndBtnID> pairs{{1, 1}};
    bool flag = true;
    DWORD count = 4711;
    VCSpBtn::EMmbBtnSelMth selMth = CONDITION;
    const IBtnCnd* cnd = nullptr;
    for (const auto& [btnClassID, btnID] : {std::pair{DWORD{99}, inc}, std::pair{SHOP, INC + 5}}) {
        EXPECT_FALSE(env.GetSpBtnIDListIncludingBtn(btnClassID, btnID, list));
        EXPECT_FALSE(env.GetRootSpBtnIDListIncludingBtn(btnClassID, btnID, list, true));
        EXPECT_FALSE(env.GetEffectiveInfoOfSpBtn(btnClassID, btnID, flag));
        EXPECT_FALSE(env.GetMmbBtnSelMthOfSpBtn(btnClassID, btnID, selMth));
        EXPECT_FALSE(env.GetMemberBtnCountOfSpBtn(btnClassID, btnID, count));
        EXPECT_FALSE(env.GetMemberBtnIDListOfSpBtn(btnClassID, btnID, list));
        EXPECT_FALSE(env.GetDisplayedMemberBtnIDListOfSpBtn(btnClassID, btnID, list));
        EXPECT_FALSE(env.GetDispMemberBtnInfoOfIncBtn(btnClassID, btnID, flag));
        EXPECT_EQ(env.GetMemberBtnCndOfSpBtn(btnClassID, btnID, cnd), Class::GETMMBBTNCND_NOSPBTN);
    }
    EXPECT_FALSE(env.GetSpBtnIDListThatTheSpecifiedBtnInfluences(99, inc, pairs, false));
    EXPECT_FALSE(env.GetBtnMngrInfoOfSpBtn(99, inc, flag));
    EXPECT_FALSE(env.GetAllSpBtnIDListOfBtnClass(99, list, true));
    EXPECT_FALSE(env.GetIneffectiveBtnCountOfBtnClass(99, count));
    EXPECT_FALSE(env.GetSystemMngrSpBtnCountOfBtnClass(99, count));
    EXPECT_EQ(list, List({4711}));
    EXPECT_EQ(count, 4711u);
    EXPECT_TRUE(flag);

    EXPECT_TRUE(env.GetSpBtnIDListIncludingBtn(SHOP, A, list));
    EXPECT_EQ(list, List({inc}));
    EXPECT_TRUE(env.GetSpBtnIDListThatTheSpecifiedBtnInfluences(SHOP, A, pairs, true));
    EXPECT_EQ(pairs, (std::set<SBtnClassIDAndBtnID>{{1, 1}, {SHOP, inc}}));
    EXPECT_TRUE(env.GetBtnMngrInfoOfSpBtn(SHOP, inc, flag));
    EXPECT_TRUE(env.SetEffectiveInfoOfSpBtn(SHOP, inc, false));
    EXPECT_TRUE(env.GetIneffectiveBtnCountOfBtnClass(SHOP, count));
    EXPECT_EQ(count, 1u);
    EXPECT_TRUE(env.GetSystemMngrSpBtnCountOfBtnClass(SHOP, count));
    EXPECT_EQ(count, 0u);
    EXPECT_TRUE(env.GetAllSpBtnIDListOfBtnClass(SHOP, list, true));
    EXPECT_EQ(list, List({inc}));
    EXPECT_TRUE(env.GetEffectiveInfoOfBtn(SHOP, inc, flag));
    EXPECT_FALSE(flag);
}

TEST_F(CBUIDataMngr_SpBtnTest, MembersAreSeenInsideTheirButtonUnlessSomethingElseHidesThem)
{
    const DWORD inner = MakeInc(SHOP, {A});
    const DWORD outer = MakeCll(SHOP, {C, inner, B});
    const DWORD emptied = MakeInc(SHOP, {});
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(SHOP, outer, {C, inner, B, emptied}), Class::OPEMMBBTN_OK);
    List members;
    EXPECT_TRUE(env.GetDisplayedMemberBtnIDListOfSpBtn(SHOP, outer, members));
    EXPECT_EQ(members, List({B, C, inner})); // without the one that has no members
    const DWORD recs[] = {0, 1, 2};
    env.SetLimitedRecList(recs, 3);
    EXPECT_TRUE(env.GetDisplayedMemberBtnIDListOfSpBtn(SHOP, outer, members));
    EXPECT_EQ(members, List({B, inner}));
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(SHOP, inner, {A, 77}), Class::OPEMMBBTN_OK);
    try {
        env.GetDisplayedMemberBtnIDListOfSpBtn(SHOP, inner, members);
        FAIL() << "nothing was thrown";
    } catch (const ECAbnormalData& error) {
        EXPECT_NE(std::strstr(error.GetMessageText(), "77"), nullptr);
    }
}

// --- Conditions

TEST_F(CBUIDataMngr_SpBtnTest, ConditionsFollowEveryPress)
{
    const DWORD best = MakeCndCll(KIND, MakeCnd(ESelCondition::Rank_High, 1));
    EXPECT_EQ(Members(KIND, best), List({Z}));
    EXPECT_EQ(Displayed(KIND), List({X, Y, best}));
    EXPECT_EQ(Sum(KIND, best), 100.0);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, true)); // x 10, y 20
    EXPECT_EQ(Members(KIND, best), List({Y}));
    EXPECT_EQ(Displayed(KIND), List({X, best}));
    EXPECT_EQ(Why(KIND, Z), VISINFO_RELATION);
    EXPECT_EQ(Sum(KIND, best), 20.0);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, false));
    EXPECT_EQ(Members(KIND, best), List({Z}));
    env.ClearAllBtnSelections(true);
    EXPECT_EQ(Members(KIND, best), List({Z}));
}

TEST_F(CBUIDataMngr_SpBtnTest, MembersStayStillWhileTheirClassIsSelectedIn)
{
    const DWORD best = MakeCndCll(SHOP, MakeCnd(ESelCondition::Rank_High, 1));
    EXPECT_EQ(Members(SHOP, best), List({C}));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, true));
    EXPECT_TRUE(env.SelectTheBtn(KIND, X, true));
    EXPECT_EQ(Members(SHOP, best), List({C}));
    const DWORD recs[] = {0, 1, 2, 4};
    env.SetLimitedRecList(recs, 4); // clears the selection, and asks again
    EXPECT_EQ(Members(SHOP, best), List({C}));
    env.SetLimitedRecList(recs, 2);
    EXPECT_EQ(Members(SHOP, best), List({A}));
}

TEST_F(CBUIDataMngr_SpBtnTest, TheBeginOfADifferencePairAsksTheConditionsOfItsClass)
{
    CTestBtnCnd cnd({A});
    const DWORD cndCll = MakeCndCll(SHOP, cnd);
    EXPECT_EQ(Members(SHOP, cndCll), List({A}));
    env.SetRelationMode(CBUIDataMngr::RELATIONMODE_DIFFERENCE);
    EXPECT_TRUE(env.SelectTheBtn(KIND, X, true));
    const IBtnCnd* held = nullptr;
    EXPECT_EQ(env.GetMemberBtnCndOfSpBtn(SHOP, cndCll, held), Class::GETMMBBTNCND_OK);
    const_cast<CTestBtnCnd&>(dynamic_cast<const CTestBtnCnd&>(*held)).metBtnIDs = {B};
    EXPECT_TRUE(env.SelectTheBtn(SHOP, B, true)); // a new pair, in this class
    EXPECT_EQ(Members(SHOP, cndCll), List({B}));
    const_cast<CTestBtnCnd&>(dynamic_cast<const CTestBtnCnd&>(*held)).metBtnIDs = {C};
    EXPECT_TRUE(env.SelectTheBtn(SHOP, C, true)); // its target
    EXPECT_EQ(Members(SHOP, cndCll), List({B}));
}

TEST_F(CBUIDataMngr_SpBtnTest, WithoutSumsNoConditionIsAsked)
{
    CEnvFixture poor(false);
    const DWORD cndCll = poor.MakeCndCll(SHOP, CTestBtnCnd({A}));
    EXPECT_EQ(poor.Members(SHOP, cndCll), List());
    EXPECT_FALSE(poor.env.SelectTheBtn(KIND, X, true)); // though the relation has succeeded
    EXPECT_EQ(poor.TargetRecs(), List({0, 2}));
    EXPECT_EQ(poor.Members(SHOP, cndCll), List());
    EXPECT_FALSE(poor.env.ResetMemberBtnBasedOnTheCndOfAll(AMOUNT));
    EXPECT_FALSE(poor.env.ResetMemberBtnBasedOnTheCndOfCllBtns(poor.env.FindBtnClass(SHOP), A));
}

TEST_F(CBUIDataMngr_SpBtnTest, AConditionThatGivesNoAnswerLeavesTheMembers)
{
    CTestBtnCnd cnd({A});
    const DWORD cndCll = MakeCndCll(SHOP, cnd);
    cnd.answers = false;
    cnd.metBtnIDs = {B};
    EXPECT_EQ(env.SetMemberBtnCndOfSpBtn(SHOP, cndCll, cnd), Class::SETMMBBTNCND_OK);
    EXPECT_EQ(Members(SHOP, cndCll), List({A}));
    cnd.answers = true;
    cnd.metBtnIDs = {cndCll, INC}; // nor one that picks what cannot be a member
    EXPECT_EQ(env.SetMemberBtnCndOfSpBtn(SHOP, cndCll, cnd), Class::SETMMBBTNCND_OK);
    EXPECT_EQ(Members(SHOP, cndCll), List());
}

TEST_F(CBUIDataMngr_SpBtnTest, AChangedItemAsksTheConditionsThatReadIt)
{
    CTestBtnCnd asking({A});
    asking.askedNumID = AMOUNT;
    const DWORD ofAmount = MakeCndCll(SHOP, asking);
    const DWORD ofOther = MakeCndCll(SHOP, CTestBtnCnd({B}));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, B, true)); // a selective class is asked too
    for (const DWORD cndCll : {ofAmount, ofOther}) {
        const IBtnCnd* held = nullptr;
        env.GetMemberBtnCndOfSpBtn(SHOP, cndCll, held);
        const_cast<CTestBtnCnd&>(dynamic_cast<const CTestBtnCnd&>(*held)).metBtnIDs = {C};
    }
    EXPECT_TRUE(env.ResetMemberBtnBasedOnTheCndOfAll(AMOUNT));
    EXPECT_EQ(Members(SHOP, ofAmount), List({C}));
    EXPECT_EQ(Members(SHOP, ofOther), List({B}));
}

TEST_F(CBUIDataMngr_SpBtnTest, OneButtonIsJudgedAloneByEveryCondition)
{
    const DWORD lower = MakeCndCll(SHOP, MakeCnd(ESelCondition::NumCmp_Less, 1, 50.0));
    const DWORD higher = MakeCndCll(SHOP, MakeCnd(ESelCondition::NumCmp_Greater, 1, 50.0));
    const DWORD inc = MakeInc(SHOP, {A});
    EXPECT_EQ(Members(SHOP, lower), List({inc})); // in place of the member that it hides
    EXPECT_EQ(Members(SHOP, higher), List({B, C}));
    VCBtnClass* const shop = env.FindBtnClass(SHOP);
    EXPECT_TRUE(env.ResetMemberBtnBasedOnTheCndOfCllBtns(shop, A)); // hidden or not
    EXPECT_EQ(Members(SHOP, lower), List({inc, A}));
    EXPECT_EQ(Members(SHOP, higher), List({B, C}));
    EXPECT_EQ(Sum(SHOP, higher), 180.0);
    shop->DeleteMemberBtnIDListOfSpBtn(higher, C);
    shop->AddMemberBtnIDListOfSpBtn(lower, C);
    shop->DeleteMemberBtnIDListOfSpBtn(higher, B);
    EXPECT_TRUE(env.ResetMemberBtnBasedOnTheCndOfCllBtns(shop, C));
    EXPECT_EQ(Members(SHOP, higher), List({C}));
    EXPECT_EQ(Sum(SHOP, higher), 110.0); // what it covers has changed
    EXPECT_TRUE(env.ResetMemberBtnBasedOnTheCndOfCllBtns(shop, B));
    EXPECT_EQ(Members(SHOP, lower), List({inc, A}));
    EXPECT_EQ(Members(SHOP, higher), List({C, B}));
    EXPECT_TRUE(env.ResetMemberBtnBasedOnTheCndOfCllBtns(shop, lower)); // a cll button is not judged
    EXPECT_FALSE(env.ResetMemberBtnBasedOnTheCndOfCllBtns(nullptr, A));
}

TEST_F(CBUIDataMngr_SpBtnTest, AThousandConditionsInOneClassAreAllAsked)
{
    List cndClls;
    for (DWORD i = 0; i < 1000; ++i)
        cndClls.push_back(MakeCndCll(
            KIND, MakeCnd(i % 2 == 0 ? ESelCondition::Rank_High : ESelCondition::Rank_Low, 1 + i % 3)));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, C, true)); // y 50, z 60
    for (DWORD i = 0; i < 1000; ++i) {
        const List members = Members(KIND, cndClls[i]);
        if (i % 3 != 0)
            EXPECT_EQ(members, List({Y, Z}));
        else
            EXPECT_EQ(members, i % 2 == 0 ? List({Z}) : List({Y}));
    }
    env.ClearAllBtnSelections(true);
    EXPECT_EQ(Members(KIND, cndClls[0]), List({Z}));
    EXPECT_EQ(Members(KIND, cndClls[3]), List({X}));
}

// --- The limitation

TEST_F(CBUIDataMngr_SpBtnTest, TheLimitationIsToldToTheWholeNesting)
{
    const DWORD inner = MakeInc(SHOP, {C});
    const DWORD outer = MakeInc(SHOP, {inner});
    const DWORD other = MakeInc(SHOP, {A});
    const DWORD recs[] = {0, 1};
    env.SetLimitedRecList(recs, 2);
    EXPECT_EQ(Displayed(SHOP), List({other}));
    EXPECT_EQ(Why(SHOP, outer), VISINFO_LIMITEDREC | VISINFO_NOLIVEMEMBER);
    const DWORD madeMeanwhile = MakeInc(SHOP, {B});
    EXPECT_EQ(Why(SHOP, madeMeanwhile), VISINFO_NOLIVEMEMBER);
    env.ClearLimitedRecList();
    EXPECT_EQ(Displayed(SHOP), List({outer, other, madeMeanwhile}));
}

TEST_F(CBUIDataMngr_SpBtnTest, AConditionThatPicksWithinTheLimitationIsReachedByIt)
{
    const DWORD best = MakeCndCll(SHOP, MakeCnd(ESelCondition::Rank_High, 1));
    EXPECT_EQ(Members(SHOP, best), List({C}));
    const DWORD recs[] = {0, 1, 2};
    env.SetLimitedRecList(recs, 2); // its member is outside, and then it picks another
    EXPECT_EQ(Members(SHOP, best), List({A}));
    EXPECT_EQ(Displayed(SHOP), List({best})); // nothing is folded into what nobody sees
    const DWORD inc = MakeInc(SHOP, {C});
    env.SetLimitedRecList(recs, 3);
    EXPECT_EQ(Why(SHOP, inc), VISINFO_LIMITEDREC | VISINFO_NOLIVEMEMBER);
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(SHOP, inc, {C, B}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Why(SHOP, inc), VISINFO_CNDCLLMEMBER); // and it ranks first
}

TEST_F(CBUIDataMngr_SpBtnTest, NoPairNamesAButtonThatIsGoneOrSleeps)
{
    const DWORD inc = MakeInc(SHOP, {A});
    EXPECT_TRUE(env.SetEffectiveInfoOfSpBtn(SHOP, inc, false));
    env.SetRelationMode(CBUIDataMngr::RELATIONMODE_DIFFERENCE);
    EXPECT_FALSE(env.SelectTheBtn(SHOP, inc, true));
    EXPECT_FALSE(env.SelectBtns(SHOP, {A, inc}, true, true));
    EXPECT_EQ(Why(KIND, Z), 0u);
    EXPECT_TRUE(env.SetEffectiveInfoOfSpBtn(SHOP, inc, true));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, inc, true));
    EXPECT_TRUE(env.DestroySpBtn(SHOP, inc));
    DWORD btnClassID = 4711;
    DWORD standard = 4711;
    DWORD target = 4711;
    EXPECT_TRUE(env.GetSelBtnsInfoForDiffCnd(btnClassID, standard, target));
    EXPECT_EQ(btnClassID, 0u);
    EXPECT_EQ(standard, 0u);
}

TEST_F(CBUIDataMngr_SpBtnTest, ClearOfFixedSpecDropsWhatUsersBuilt)
{
    const DWORD inc = MakeInc(SHOP, {A});
    MakeCndCll(SHOP, MakeCnd(ESelCondition::Rank_High, 1));
    env.SetDispEmpValBtnInfoOfBtnClass(SHOP, false);
    env.ClearOfFixedSpec();
    EXPECT_EQ(Displayed(SHOP), List({A, B, C}));
    bool exists = env.GetBtnExistInfoOfBtnClass(SHOP, inc);
    EXPECT_FALSE(exists);
    EXPECT_EQ(MakeInc(SHOP, {B}), inc);
}

TEST_F(CBUIDataMngr_SpBtnTest, ARefusedPressLeavesNoSumOfLevelsThatHaveGone)
{
    env.SetMultiSelectionInfo(true);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, true));
    EXPECT_TRUE(env.SelectTheBtn(KIND, X, true));
    EXPECT_EQ(Sum(AMOUNT, 3), 0.0); // of 20, which goes with y
    EXPECT_FALSE(env.SelectBtns(SHOP, {999}, true, false));
    EXPECT_EQ(TargetRecs(), List({0, 1}));
    EXPECT_EQ(Sum(AMOUNT, 3), 20.0);
}

// --- Exhausted memory

TEST(CBUIDataMngr_SpBtn, SumsThatExhaustedMemoryMadeWrongAreForgotten)
{
    std::vector<std::string> shops;
    for (int i = 0; i < 412; ++i)
        shops.push_back("s" + std::to_string(i));
    const std::vector<std::string> ones(shops.size(), "1");
    const CSourceDataMngr table = MakeTable({{"shop", TEXT, shops}, {"amount", NUM, ones}});
    const CCoreSumMngr sums(table);
    List many(405);
    std::iota(many.begin(), many.end(), DWORD{2});
    many.push_back(INC);
    const List few{408, 409, 410};
    const auto prepare = [&](CBUIDataMngr::ERelationMode mode) {
        auto env = std::make_unique<CBUIDataMngr>(1, ON_MEM, ON_MEM, table, &sums, nullptr);
        env->SetRelationMode(mode);
        DWORD btnID = 0;
        env->CreateSpBtn(btnID, SHOP, INC_TYPE, "few", SELECT, &few, nullptr);
        env->CreateSpBtn(btnID, SHOP, INC_TYPE, "many", SELECT, &many, nullptr);
        double value = 0.0;
        env->GetSumValueCacheMngrObjRef().GetSumValue(SHOP, INC, 2, value);
        env->GetSumValueCacheMngrObjRef().GetSumValue(SHOP, INC + 1, 2, value);
        EXPECT_EQ(value, 408.0);
        env->GetSumValueCacheMngrObjRef().GetTotalValue(SHOP, 2, value);
        return env;
    };
    using Operation = void (*)(CBUIDataMngr&);
    const Operation operations[] = {
        [](CBUIDataMngr& env) { env.DestroySpBtn(SHOP, INC); },
        [](CBUIDataMngr& env) { env.SetEffectiveInfoOfSpBtn(SHOP, INC, false); },
        [](CBUIDataMngr& env) { env.SetMemberBtnIDListOfSpBtn(SHOP, INC, {411}); },
        [](CBUIDataMngr& env) { env.SetDispEmpValBtnInfoOfBtnClass(SHOP, false); },
        [](CBUIDataMngr& env) {
            DWORD btnID = 0;
            const List members{411};
            env.CreateSpBtn(btnID, SHOP, INC_TYPE, "one more", SELECT, &members, nullptr);
        },
    };
    for (const auto mode : {CBUIDataMngr::RELATIONMODE_NONE, CBUIDataMngr::RELATIONMODE_AND}) {
        for (const Operation operation : operations) {
            const int failures = FailEveryAllocation(
                [&] { return prepare(mode); }, [operation](const auto& env) { operation(*env); },
                [&](const auto& env) {
                    env->ClearAllBtnSelections(true);
                    List btnIDs;
                    env->GetAllBtnIDListOfBtnClass(SHOP, btnIDs, false);
                    CSumValueCacheMngr& known = env->GetSumValueCacheMngrObjRef();
                    CSumValueCacheMngr fresh(*env);
                    for (const DWORD btnID : btnIDs) {
                        double value = 0.0;
                        double right = 0.0;
                        EXPECT_TRUE(known.GetSumValue(SHOP, btnID, 2, value));
                        EXPECT_TRUE(fresh.GetSumValue(SHOP, btnID, 2, right));
                        EXPECT_EQ(value, right) << btnID;
                    }
                    double total = 0.0;
                    double rightTotal = 0.0;
                    EXPECT_TRUE(known.GetTotalValue(SHOP, 2, total));
                    EXPECT_TRUE(fresh.GetTotalValue(SHOP, 2, rightTotal));
                    EXPECT_EQ(total, rightTotal);
                });
            EXPECT_GE(failures, 1);
        }
    }
}

TEST(CBUIDataMngr_SpBtn, ClearOfFixedSpecThatRunsOutOfMemoryLeavesNoButtonWithoutItsRecords)
{
    std::vector<std::string> values;
    for (int i = 0; i < 410; ++i)
        values.push_back("v" + std::to_string(i));
    const CSourceDataMngr table = MakeTable({{"a", TEXT, values}, {"b", TEXT, values}});
    List many(405);
    std::iota(many.begin(), many.end(), DWORD{2});
    for (std::size_t nth = 1;; ++nth) {
        CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, nullptr);
        DWORD btnID = 0;
        for (const DWORD btnClassID : {DWORD{1}, DWORD{2}})
            env.CreateSpBtn(btnID, btnClassID, INC_TYPE, "many", SELECT, &many, nullptr);
        CAllocFault fault; // a table that cannot be shrunk stays as it is, so not every failure comes out
        fault.Arm(nth);
        try {
            env.ClearOfFixedSpec();
        } catch (const std::bad_alloc&) {
        }
        if (!fault.Disarm()) {
            EXPECT_GE(nth, 3u);
            break;
        }
        for (const DWORD btnClassID : {DWORD{1}, DWORD{2}}) {
            List spBtnIDs;
            env.GetAllSpBtnIDListOfBtnClass(btnClassID, spBtnIDs, true);
            if (spBtnIDs.empty()) {
                EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, INC_TYPE, "many", SELECT, &many, nullptr),
                          Class::CREATESPBTN_OK);
            }
            List recs(values.size());
            DWORD count = 0;
            EXPECT_TRUE(env.GetRecListThatRelatesToBtn(btnClassID, INC, recs.data(), count));
            EXPECT_EQ(count, 405u);
        }
    }
}

TEST_F(CBUIDataMngr_SpBtnTest, AfterExhaustedMemoryAClearedSelectionIsAllItTakes)
{
    using Operation = void (*)(CEnvFixture&);
    const std::pair<const char*, Operation> operations[] = {
        {"create inc",
         [](auto& fixture) {
             fixture.MakeInc(SHOP, {A, INC});
         }},
        {"create condition",
         [](auto& fixture) { fixture.MakeCndCll(KIND, MakeCnd(ESelCondition::Rank_Low, 1)); }},
        {"set members",
         [](auto& fixture) {
             fixture.env.SetMemberBtnIDListOfSpBtn(SHOP, INC, {A, B});
         }},
        {"set condition",
         [](auto& fixture) {
             fixture.env.SetMemberBtnCndOfSpBtn(KIND, CLL, MakeCnd(ESelCondition::Rank_Low, 2));
         }},
        {"clear condition", [](auto& fixture) { fixture.env.ClearMemberBtnCndOfSpBtn(KIND, CLL); }},
        {"switch off", [](auto& fixture) { fixture.env.SetEffectiveInfoOfSpBtn(SHOP, INC, false); }},
        {"destroy", [](auto& fixture) { fixture.env.DestroySpBtn(SHOP, INC); }},
        {"hide the empty value",
         [](auto& fixture) { fixture.env.SetDispEmpValBtnInfoOfBtnClass(SHOP, false); }},
        {"display members", [](auto& fixture) { fixture.env.SetDispMemberBtnInfoOfIncBtn(SHOP, INC, true); }},
        {"press", [](auto& fixture) { fixture.env.SelectTheBtn(SHOP, INC, true); }},
        {"limit",
         [](auto& fixture) {
             const DWORD recs[] = {0, 3};
             fixture.env.SetLimitedRecList(recs, 2);
         }},
    };
    const auto describe = [](const CEnvFixture& fixture) {
        std::ostringstream text;
        for (const DWORD btnClassID : {SHOP, KIND}) {
            List btnIDs;
            fixture.env.GetAllBtnIDListOfBtnClass(btnClassID, btnIDs, true);
            for (const DWORD btnID : btnIDs) {
                text << btnClassID << ' ' << btnID << " why " << fixture.Why(btnClassID, btnID) << " of";
                for (const DWORD member : fixture.Members(btnClassID, btnID))
                    text << ' ' << member;
                List holders;
                fixture.env.GetSpBtnIDListIncludingBtn(btnClassID, btnID, holders);
                text << " in";
                for (const DWORD holder : holders)
                    text << ' ' << holder;
                text << " recs " << fixture.Recs(btnClassID, btnID).size() << '\n';
            }
        }
        return text.str();
    };
    for (const auto& [name, operation] : operations) {
        SCOPED_TRACE(name);
        const auto prepare = [] {
            auto fixture = std::make_unique<CEnvFixture>();
            fixture->MakeInc(SHOP, {C, 1});
            fixture->MakeInc(SHOP, {INC, B});
            fixture->MakeCndCll(KIND, MakeCnd(ESelCondition::Rank_High, 1));
            fixture->env.SelectTheBtn(KIND, X, true);
            return fixture;
        };
        // Afterwards the environment is as without the operation, or as with it.
        const auto clear = [](CEnvFixture& fixture) { fixture.env.ClearAllBtnSelections(true); };
        const auto untouched = prepare();
        clear(*untouched);
        const std::string without = describe(*untouched);
        const auto changed = prepare();
        operation(*changed);
        clear(*changed);
        const std::string with = describe(*changed);
        const int failures = FailEveryAllocation(
            prepare, [run = operation](const auto& fixture) { run(*fixture); },
            [&](const auto& fixture) {
                clear(*fixture);
                const std::string now = describe(*fixture);
                EXPECT_TRUE(now == without || now == with) << now;
            });
        EXPECT_GE(failures, 1);
    }
}

} // namespace
