#include "CBasicBtnCnd.h"
#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CUnitCndOfBscBtnCnd.h"
#include "CVirBtnClass.h"
#include "Support/CAllocFault.h"
#include "Support/CEnvQueries.h"
#include "Support/CTestBtnCnd.h"
#include "Support/MakeTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using List = std::vector<DWORD>;
using Class = VCBtnClass;
using Env = CBUIDataMngr;
constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
constexpr auto INC_TYPE = SCBUICoreCom::BTNTYPE_INC;
constexpr auto VIR_TYPE = SCBUICoreCom::BTNTYPE_VIRINC;
constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;
constexpr auto CONDITION = VCSpBtn::MMBBTNSELMTH_CONDITION;
constexpr DWORD INC = SCBUICoreCom::BTN_ID_INC_BEGIN;
constexpr DWORD VIR = SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
constexpr DWORD COMMON = SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN;
constexpr DWORD FIXED = SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
constexpr DWORD SHOP = 1;
constexpr DWORD KIND = 2;
constexpr DWORD AMOUNT = 3;

class CProbeEnv final : public CBUIDataMngr
{
public:
    using CBUIDataMngr::CBUIDataMngr;
    using CBUIDataMngr::DestroyBtnClass;
    using CBUIDataMngr::FindBtnClass;
};

// Records:  0   1   2   3   4   5
// shop      a   a   b   b   c   c     buttons 2 3 4; sums 30 70 110
// kind      x   y   x   z   y   z     buttons 2 3 4; sums 40 70 100
// amount    10  20  30  40  50  60
struct SEnv : CEnvQueries
{
    explicit SEnv(bool hasSums = true)
        : CEnvQueries(env, AMOUNT), table(MakeTable({{"shop", TEXT, {"a", "a", "b", "b", "c", "c"}},
                                                     {"kind", TEXT, {"x", "y", "x", "z", "y", "z"}},
                                                     {"amount", NUM, {"10", "20", "30", "40", "50", "60"}}})),
          sums(table), env(1, ON_MEM, ON_MEM, table, hasSums ? &sums : nullptr, nullptr)
    {}
    DWORD MakeClass(const char* name, bool common = false)
    {
        DWORD btnClassID = 0;
        EXPECT_EQ(env.CreateVirBtnClass(name, common, btnClassID), Env::CREATEVIR_OK);
        return btnClassID;
    }
    DWORD Make(DWORD btnClassID, DWORD refID, const List& members, const char* text = "group")
    {
        DWORD btnID = 0;
        EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, VIR_TYPE, text, SELECT, &members, nullptr, refID),
                  Class::CREATESPBTN_OK);
        return btnID;
    }
    DWORD MakeCnd(DWORD btnClassID, DWORD refID, const IBtnCnd& cnd)
    {
        DWORD btnID = 0;
        EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, VIR_TYPE, "cnd", CONDITION, nullptr, &cnd, refID),
                  Class::CREATESPBTN_OK);
        return btnID;
    }
    DWORD MakeInc(DWORD btnClassID, const List& members)
    {
        DWORD btnID = 0;
        EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, INC_TYPE, "inc", SELECT, &members, nullptr),
                  Class::CREATESPBTN_OK);
        return btnID;
    }
    bool IsEffective(DWORD btnClassID, DWORD btnID) const
    {
        bool effective = false;
        EXPECT_TRUE(env.GetEffectiveInfoOfSpBtn(btnClassID, btnID, effective));
        return effective;
    }
    std::string Describe() const
    {
        std::ostringstream out;
        List classIDs;
        env.GetAllBtnClassIDList(classIDs, true);
        for (const DWORD classID : classIDs) {
            const char* name = nullptr;
            env.GetNameOfVirBtnClass(classID, name);
            List btnIDs;
            env.GetAllBtnIDListOfBtnClass(classID, btnIDs, true);
            out << classID << ' ' << (name == nullptr ? "-" : name) << " selected";
            for (const DWORD btnID : Selected(classID))
                out << ' ' << btnID;
            out << '\n';
            for (const DWORD btnID : btnIDs) {
                unsigned int visibleInfo = 0;
                env.GetVisibleInfoOfBtn(classID, btnID, visibleInfo);
                out << btnID << ' ' << visibleInfo << ' ' << Sum(classID, btnID) << " of";
                for (const DWORD member : Members(classID, btnID))
                    out << ' ' << member;
                for (const DWORD rec : Recs(classID, btnID))
                    out << ' ' << rec;
                out << '\n';
            }
        }
        out << "target";
        for (const DWORD rec : TargetRecs())
            out << ' ' << rec;
        return out.str();
    }

    CSourceDataMngr table;
    CCoreSumMngr sums;
    CProbeEnv env;
};

// The condition that picks the button of the greatest amount.
CBasicBtnCnd MakeHighestCnd()
{
    CUnitCndOfBscBtnCnd unit;
    unit.SetNumID(AMOUNT);
    unit.SetSumMethod(SCBUICoreCom::ESumMethodForCnd::Sum);
    unit.SetSelCondition(CUnitCndOfBscBtnCnd::ESelCondition::Rank_High);
    unit.SetRankNum(1);
    CBasicBtnCnd cnd;
    cnd.SetCndComponent(unit);
    return cnd;
}

class CBUIDataMngr_VirBtnClassTest : public ::testing::Test, protected SEnv
{};

// --- Classes

TEST_F(CBUIDataMngr_VirBtnClassTest, ANewClassIsAnItemWithoutButtons)
{
    const DWORD fixed = MakeClass("my groups");
    const DWORD common = MakeClass("shared groups", true);
    EXPECT_EQ(fixed, FIXED);
    EXPECT_EQ(common, COMMON);
    List classIDs;
    env.GetAllBtnClassIDList(classIDs, false);
    EXPECT_EQ(classIDs, List({SHOP, KIND, AMOUNT, COMMON, FIXED}));
    SCBUICoreCom::EBtnClassType type = SCBUICoreCom::BTNCLSTYPE_NORMAL;
    EXPECT_TRUE(env.GetTypeOfBtnClass(fixed, type));
    EXPECT_EQ(type, SCBUICoreCom::BTNCLSTYPE_VIR);
    const char* name = nullptr;
    EXPECT_TRUE(env.GetNameOfVirBtnClass(fixed, name));
    EXPECT_STREQ(name, "my groups");
    EXPECT_FALSE(env.GetNameOfVirBtnClass(SHOP, name));
    EXPECT_FALSE(env.GetNameOfVirBtnClass(99, name));
    EXPECT_EQ(Displayed(fixed), List());
    DWORD fldID = 0;
    EXPECT_FALSE(env.GetFldID(fixed, fldID));
    bool disp = false;
    EXPECT_FALSE(env.SetDispEmpValBtnInfoOfBtnClass(fixed, true));
    EXPECT_FALSE(env.GetDispEmpValBtnInfoOfBtnClass(fixed, disp));
    for (const unsigned int flags : {0u, Class::ORDLIST_INCLUDE_NONDISPBTNS}) {
        List order{4711};
        EXPECT_TRUE(env.GetBtnAppOrdListOfBtnClass(fixed, flags, order));
        EXPECT_EQ(order, List());
        EXPECT_TRUE(env.GetBtnNameOrdListOfBtnClass(fixed, flags, order));
        EXPECT_EQ(order, List());
    }
}

TEST_F(CBUIDataMngr_VirBtnClassTest, NamesAreThoseOfNoOtherClass)
{
    const DWORD first = MakeClass("groups");
    DWORD btnClassID = 4711;
    EXPECT_EQ(env.CreateVirBtnClass("groups", true, btnClassID), Env::CREATEVIR_NAME_EXISTS);
    EXPECT_EQ(env.CreateVirBtnClass("shop", false, btnClassID), Env::CREATEVIR_NAME_EXISTS);
    EXPECT_EQ(btnClassID, 4711u);
    const DWORD second = MakeClass("other");
    EXPECT_EQ(second, FIXED + 1); // the refusals took no identifier
    EXPECT_FALSE(env.SetNameOfVirBtnClass(second, "groups"));
    EXPECT_FALSE(env.SetNameOfVirBtnClass(second, "kind"));
    EXPECT_FALSE(env.SetNameOfVirBtnClass(SHOP, "free"));
    EXPECT_FALSE(env.SetNameOfVirBtnClass(99, "free"));
    EXPECT_TRUE(env.SetNameOfVirBtnClass(second, "other")); // its own
    EXPECT_TRUE(env.SetNameOfVirBtnClass(second, "group"));
    EXPECT_TRUE(env.ExistBtnClass("group", 5));
    EXPECT_FALSE(env.ExistBtnClass("other", 5));
    EXPECT_FALSE(env.ExistBtnClass("group", 5, second));
    EXPECT_TRUE(env.ExistBtnClass("groups", 6));
    EXPECT_TRUE(env.DestroyVirBtnClass(first));
    EXPECT_FALSE(env.ExistBtnClass("groups", 6));
    const DWORD unnamed = MakeClass(nullptr);
    EXPECT_TRUE(env.ExistBtnClass("", 0));
    EXPECT_FALSE(env.SetNameOfVirBtnClass(second, nullptr));
    EXPECT_TRUE(env.DestroyVirBtnClass(unnamed));
}

TEST_F(CBUIDataMngr_VirBtnClassTest, AReleasedFixedIdentifierComesBackAndACommonOneDoesNot)
{
    EXPECT_EQ(MakeClass("f1"), FIXED);
    EXPECT_EQ(MakeClass("f2"), FIXED + 1);
    EXPECT_EQ(MakeClass("f3"), FIXED + 2);
    EXPECT_TRUE(env.DestroyVirBtnClass(FIXED + 1));
    EXPECT_TRUE(env.DestroyVirBtnClass(FIXED));
    EXPECT_EQ(MakeClass("f4"), FIXED + 1); // first out, first reused
    EXPECT_EQ(MakeClass("f5"), FIXED);
    EXPECT_EQ(MakeClass("f6"), FIXED + 3);
    EXPECT_EQ(MakeClass("c1", true), COMMON);
    EXPECT_TRUE(env.DestroyVirBtnClass(COMMON));
    EXPECT_EQ(MakeClass("c1", true), COMMON + 1);
    EXPECT_FALSE(env.DestroyVirBtnClass(COMMON));
    EXPECT_FALSE(env.DestroyVirBtnClass(SHOP));
    EXPECT_TRUE(env.ExistBtnClass(SHOP));
}

// --- Buttons

TEST_F(CBUIDataMngr_VirBtnClassTest, AVirtualIncButtonIsMadeWhereItMayBe)
{
    const DWORD fixed = MakeClass("groups");
    const DWORD common = MakeClass("shared", true);
    const List members{2};
    DWORD btnID = 4711;
    const auto create = [&](DWORD btnClassID, SCBUICoreCom::EBtnType type, DWORD refID) {
        return env.CreateSpBtn(btnID, btnClassID, type, "n", SELECT, &members, nullptr, refID);
    };
    EXPECT_TRUE(env.SelectTheBtn(KIND, 2, true));
    EXPECT_EQ(create(99, VIR_TYPE, SHOP), Class::CREATESPBTN_NOBTNCLASS);
    EXPECT_EQ(create(fixed, INC_TYPE, SHOP), Class::CREATESPBTN_BADTYPE);
    EXPECT_EQ(create(SHOP, VIR_TYPE, KIND), Class::CREATESPBTN_NOBTNCLASS);
    EXPECT_EQ(create(fixed, VIR_TYPE, 99), Class::CREATESPBTN_NOBTNCLASS);
    EXPECT_EQ(create(fixed, VIR_TYPE, fixed), Class::CREATESPBTN_NOBTNCLASS);
    EXPECT_EQ(create(common, VIR_TYPE, fixed), Class::CREATESPBTN_NOBTNCLASS);
    EXPECT_EQ(env.CreateSpBtn(btnID, fixed, VIR_TYPE, "n", SELECT, &members, nullptr),
              Class::CREATESPBTN_BADTYPE); // it needs the class that it refers to
    EXPECT_EQ(btnID, 4711u);
    EXPECT_EQ(Selected(KIND), List({2}));
    EXPECT_EQ(create(fixed, VIR_TYPE, SHOP), Class::CREATESPBTN_OK);
    EXPECT_EQ(btnID, VIR);
    EXPECT_EQ(Selected(KIND), List());
    DWORD refID = 0;
    EXPECT_TRUE(env.GetRefBtnClassIDOfVirIncBtn(fixed, btnID, refID));
    EXPECT_EQ(refID, SHOP);
    EXPECT_FALSE(env.GetRefBtnClassIDOfVirIncBtn(SHOP, 2, refID));
    EXPECT_FALSE(env.GetRefBtnClassIDOfVirIncBtn(99, btnID, refID));
    EXPECT_FALSE(env.DestroySpBtn(fixed, VIR + 1));
    EXPECT_FALSE(env.DestroySpBtn(SHOP, VIR));
    EXPECT_TRUE(env.DestroySpBtn(fixed, VIR));
    EXPECT_EQ(Displayed(fixed), List());
}

TEST_F(CBUIDataMngr_VirBtnClassTest, APressOfAGroupNarrowsTheOtherItemsAndIsNarrowedByThem)
{
    const DWORD groups = MakeClass("groups");
    const DWORD ab = Make(groups, SHOP, {2, 3}, "ab");
    const DWORD c = Make(groups, SHOP, {4}, "c");
    const DWORD xz = Make(groups, KIND, {2, 4}, "xz");
    EXPECT_EQ(Displayed(groups), List({ab, c, xz}));
    EXPECT_TRUE(env.SelectTheBtn(groups, c, true));
    EXPECT_EQ(TargetRecs(), List({4, 5}));
    EXPECT_EQ(Displayed(SHOP), List({4}));
    EXPECT_EQ(Displayed(KIND), List({3, 4}));
    EXPECT_EQ(Displayed(groups), List({ab, c, xz})); // not narrowed by itself
    EXPECT_EQ(Sum(KIND, 4), 60.0);
    EXPECT_TRUE(env.SelectTheBtn(KIND, 4, true));
    EXPECT_EQ(TargetRecs(), List({5}));
    env.ClearAllBtnSelections(true);
    EXPECT_TRUE(env.SelectTheBtn(KIND, 2, true)); // x
    EXPECT_EQ(Displayed(groups), List({ab, xz}));
    EXPECT_EQ(Sum(groups, ab), 40.0);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, 3, true)); // b
    EXPECT_EQ(TargetRecs(), List({2}));
    EXPECT_EQ(Displayed(groups), List({ab, xz}));
    EXPECT_EQ(Sum(groups, ab), 30.0);
    EXPECT_EQ(Sum(groups, xz), 30.0);
}

TEST_F(CBUIDataMngr_VirBtnClassTest, GroupsTakePartInEveryMode)
{
    const DWORD groups = MakeClass("groups");
    const DWORD ab = Make(groups, SHOP, {2, 3});
    const DWORD bc = Make(groups, SHOP, {3, 4});
    env.SetMultiSelectionInfo(true);
    env.SetRelationMode(Env::RELATIONMODE_OR);
    EXPECT_TRUE(env.SelectBtns(groups, {ab, bc}, true, false));
    EXPECT_EQ(TargetRecs(), List({0, 1, 2, 3, 4, 5}));
    EXPECT_TRUE(env.SelectTheBtn(groups, bc, false));
    EXPECT_EQ(Displayed(SHOP), List({2, 3}));
    env.SetRelationMode(Env::RELATIONMODE_AND);
    EXPECT_TRUE(env.SelectBtns(groups, {ab, bc}, true, false));
    EXPECT_EQ(Displayed(KIND), List({2, 3, 4}));
    EXPECT_EQ(Displayed(SHOP), List({3}));
    env.SetRelationMode(Env::RELATIONMODE_DIFFERENCE);
    EXPECT_TRUE(env.SelectBtns(groups, {ab, bc}, true, false));
    EXPECT_EQ(Displayed(SHOP), List({2})); // goes with the first and not with the second
    env.SetRelationMode(Env::RELATIONMODE_NONE);
    EXPECT_TRUE(env.SelectTheBtn(groups, ab, true));
    EXPECT_EQ(Displayed(SHOP), List({2, 3, 4}));
}

TEST_F(CBUIDataMngr_VirBtnClassTest, ALimitationReachesGroupsOfGroups)
{
    const DWORD low = MakeClass("low");
    const DWORD high = MakeClass("high");
    const DWORD c = Make(high, SHOP, {4});
    const DWORD overC = Make(low, high, {c});
    const DWORD a = Make(low, SHOP, {2});
    const DWORD recs[] = {0, 1};
    env.SetLimitedRecList(recs, 2);
    EXPECT_EQ(Displayed(low), List({a}));
    EXPECT_EQ(Displayed(high), List());
    env.ClearLimitedRecList();
    EXPECT_EQ(Displayed(low), List({overC, a}));
    EXPECT_EQ(Displayed(high), List({c}));
}

TEST_F(CBUIDataMngr_VirBtnClassTest, SumsAndTotalsOfGroupsAreRightAfterEachChange)
{
    const DWORD groups = MakeClass("groups");
    const DWORD ab = Make(groups, SHOP, {2, 3});
    EXPECT_EQ(Sum(groups, ab), 100.0);
    EXPECT_EQ(Total(groups), 100.0);
    const DWORD c = Make(groups, SHOP, {4});
    EXPECT_EQ(Total(groups), 210.0);
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(groups, c, {4, 2}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Sum(groups, c), 140.0);
    EXPECT_TRUE(env.SetEffectiveInfoOfSpBtn(groups, ab, false));
    EXPECT_EQ(Total(groups), 140.0);
    EXPECT_TRUE(env.DestroySpBtn(groups, c));
    EXPECT_EQ(Total(groups), 0.0);
    const DWORD inc = MakeInc(SHOP, {2});
    const DWORD overInc = Make(groups, SHOP, {inc});
    EXPECT_EQ(Sum(groups, overInc), 30.0);
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(SHOP, inc, {2, 4}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Sum(groups, overInc), 140.0);
}

TEST_F(CBUIDataMngr_VirBtnClassTest, AConditionPicksAmongTheButtonsOfTheOtherClass)
{
    const DWORD groups = MakeClass("groups");
    const DWORD best = MakeCnd(groups, SHOP, MakeHighestCnd());
    EXPECT_EQ(Members(groups, best), List({4}));
    EXPECT_EQ(Recs(groups, best), List({4, 5}));
    EXPECT_TRUE(env.SelectTheBtn(KIND, 2, true)); // x: a has 10 and b 30
    EXPECT_EQ(Members(groups, best), List({3}));
    EXPECT_EQ(Sum(groups, best), 30.0);
    EXPECT_EQ(Displayed(groups), List({best}));
    env.ClearAllBtnSelections(true);
    EXPECT_EQ(Members(groups, best), List({4}));
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(groups, best, {2}), Class::OPEMMBBTN_NOTSELECT);
    EXPECT_TRUE(env.ClearMemberBtnCndOfSpBtn(groups, best));
    EXPECT_EQ(Members(groups, best), List());
    EXPECT_EQ(env.SetMemberBtnCndOfSpBtn(groups, best, MakeHighestCnd()), Class::SETMMBBTNCND_OK);
    EXPECT_EQ(Members(groups, best), List({4}));
}

TEST_F(CBUIDataMngr_VirBtnClassTest, AClassUnderSelectionKeepsItsConditionMembers)
{
    const DWORD groups = MakeClass("groups");
    const DWORD best = MakeCnd(groups, SHOP, MakeHighestCnd());
    EXPECT_TRUE(env.SelectTheBtn(KIND, 2, true));
    EXPECT_EQ(Members(groups, best), List({3}));
    EXPECT_TRUE(env.SelectTheBtn(groups, best, true));
    EXPECT_EQ(Members(groups, best), List({3}));
    EXPECT_EQ(TargetRecs(), List({2}));
}

TEST_F(CBUIDataMngr_VirBtnClassTest, ClassesThatReferToEachOtherAreResetOnceEach)
{
    const DWORD first = MakeClass("first");
    const DWORD second = MakeClass("second");
    const DWORD inFirst = Make(first, second, {});
    const DWORD inSecond = Make(second, first, {});
    const DWORD cndInFirst = MakeCnd(first, SHOP, MakeHighestCnd());
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(second, inSecond, {inFirst}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Members(first, cndInFirst), List({4}));
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(first, inFirst, {inSecond}), Class::OPEMMBBTN_BADMEMBER);
}

TEST_F(CBUIDataMngr_VirBtnClassTest, LookingIntoAGroupShowsAllOfItsMembersAscending)
{
    const DWORD groups = MakeClass("groups");
    const DWORD group = Make(groups, SHOP, {4, 2, 77});
    EXPECT_TRUE(env.SelectTheBtn(KIND, 2, true));
    List members;
    EXPECT_TRUE(env.GetDisplayedMemberBtnIDListOfSpBtn(groups, group, members));
    EXPECT_EQ(members, List({2, 4, 77}));
}

TEST_F(CBUIDataMngr_VirBtnClassTest, EveryChangeClearsTheSelection)
{
    const DWORD groups = MakeClass("groups");
    const DWORD group = Make(groups, SHOP, {2});
    const auto isCleared = [this, groups, group](bool expected) {
        const bool isSelected = !Selected(groups).empty() || TargetRecs().size() != 6;
        EXPECT_EQ(isSelected, !expected);
        env.ClearAllBtnSelections(true);
        EXPECT_TRUE(env.SelectTheBtn(groups, group, true));
        EXPECT_EQ(TargetRecs(), List({0, 1}));
    };
    isCleared(true);
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(groups, group, {INC}), Class::OPEMMBBTN_BADMEMBER);
    isCleared(false);
    EXPECT_EQ(env.SetMemberBtnIDListOfSpBtn(groups, group, {2}), Class::OPEMMBBTN_OK);
    isCleared(true);
    Make(groups, KIND, {2});
    isCleared(true);
    EXPECT_TRUE(env.SetEffectiveInfoOfVirBtnClass(groups, true)); // unchanged, and still
    isCleared(true);
    const DWORD other = MakeClass("other"); // a class without buttons changes nothing
    isCleared(false);
    EXPECT_TRUE(env.DestroyVirBtnClass(other));
    isCleared(true);
}

// --- Classes that go or sleep

TEST_F(CBUIDataMngr_VirBtnClassTest, ASelectedClassMayBeDestroyed)
{
    const DWORD groups = MakeClass("groups");
    const DWORD group = Make(groups, SHOP, {2});
    EXPECT_TRUE(env.SelectTheBtnClass(groups, true));
    EXPECT_TRUE(env.SelectTheBtn(groups, group, true));
    EXPECT_TRUE(env.SelectTheBtn(KIND, 2, true));
    EXPECT_TRUE(env.DestroyVirBtnClass(groups));
    EXPECT_EQ(TargetRecs(), List({0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(env.GetHierCount(), 0u);
    EXPECT_EQ(Displayed(SHOP), List({2, 3, 4}));
    List classIDs{4711};
    env.GetAllBtnClassSelectionInfo(classIDs);
    EXPECT_EQ(classIDs, List());
    List btnIDs;
    EXPECT_FALSE(env.GetAllBtnIDListOfBtnClass(groups, btnIDs, true));
    const DWORD again = MakeClass("again");
    EXPECT_EQ(again, groups);
    EXPECT_EQ(Displayed(again), List());
    EXPECT_EQ(Make(again, KIND, {4}), VIR);
    EXPECT_EQ(Recs(again, VIR), List({3, 5}));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, 2, true));
    EXPECT_EQ(Displayed(again), List());
}

TEST_F(CBUIDataMngr_VirBtnClassTest, WhatRefersToADestroyedClassStaysBehindAndBreaksNothing)
{
    const DWORD low = MakeClass("low");
    const DWORD high = MakeClass("high");
    const DWORD inHigh = Make(high, SHOP, {2});
    const DWORD inLow = Make(low, high, {inHigh});
    const DWORD cndInLow = MakeCnd(low, high, MakeHighestCnd());
    EXPECT_EQ(Members(low, cndInLow), List({inHigh}));
    EXPECT_TRUE(env.DestroyVirBtnClass(high));
    EXPECT_FALSE(IsEffective(low, inLow));
    EXPECT_FALSE(IsEffective(low, cndInLow));
    EXPECT_FALSE(env.SetEffectiveInfoOfSpBtn(low, cndInLow, true));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, 2, true)); // conditions are asked, and this one is not
    EXPECT_EQ(MakeClass("again"), high);          // the identifier is used again
    const DWORD inAgain = Make(high, KIND, {2});
    EXPECT_EQ(Recs(low, inLow), List()); // and what referred to the old class is no part of the new one
    EXPECT_EQ(Make(low, high, {inAgain}), cndInLow + 1);
    EXPECT_EQ(Recs(low, cndInLow + 1), List({0, 2}));
    EXPECT_TRUE(env.DestroySpBtn(low, inLow));
    EXPECT_TRUE(env.DestroySpBtn(low, cndInLow));
    EXPECT_TRUE(env.DestroySpBtn(high, inAgain));
    EXPECT_EQ(Members(low, cndInLow + 1), List());
}

TEST_F(CBUIDataMngr_VirBtnClassTest, AnIneffectiveClassTakesItsHoldersWithIt)
{
    const DWORD low = MakeClass("low");
    const DWORD high = MakeClass("high");
    const DWORD inHigh = Make(high, SHOP, {2});
    const DWORD inLow = Make(low, high, {inHigh});
    bool effective = true;
    EXPECT_TRUE(env.SetEffectiveInfoOfVirBtnClass(high, false));
    EXPECT_TRUE(env.GetEffectiveInfoOfVirBtnClass(high, effective));
    EXPECT_FALSE(effective);
    EXPECT_FALSE(IsEffective(low, inLow));
    EXPECT_FALSE(env.SelectTheBtn(high, inHigh, true));
    List classIDs;
    env.GetAllBtnClassIDList(classIDs, false);
    EXPECT_EQ(classIDs, List({SHOP, KIND, AMOUNT, low}));
    EXPECT_TRUE(env.SetEffectiveInfoOfVirBtnClass(high, true));
    EXPECT_TRUE(IsEffective(low, inLow));
    EXPECT_EQ(Recs(low, inLow), List({0, 1}));
    EXPECT_FALSE(env.SetEffectiveInfoOfVirBtnClass(SHOP, false));
    EXPECT_FALSE(env.SetEffectiveInfoOfVirBtnClass(99, false));
    EXPECT_FALSE(env.GetEffectiveInfoOfVirBtnClass(SHOP, effective));
}

TEST_F(CBUIDataMngr_VirBtnClassTest, DestroyingASourceClassLeavesNothingOfIt)
{
    const DWORD groups = MakeClass("groups");
    const DWORD ofShop = Make(groups, SHOP, {2});
    const DWORD ofKind = Make(groups, KIND, {2});
    EXPECT_FALSE(env.DestroyBtnClass(nullptr));
    EXPECT_TRUE(env.DestroyBtnClass(env.FindBtnClass(SHOP)));
    EXPECT_FALSE(env.ExistBtnClass(SHOP));
    DWORD btnClassID = 0;
    EXPECT_FALSE(env.GetBtnClassID(SHOP, btnClassID));
    EXPECT_FALSE(IsEffective(groups, ofShop));
    EXPECT_TRUE(env.SelectTheBtn(groups, ofKind, true));
    EXPECT_EQ(TargetRecs(), List({0, 2}));
    EXPECT_TRUE(env.DestroyBtnClass(env.FindBtnClass(groups)));
    EXPECT_FALSE(env.ExistBtnClass(groups));
    EXPECT_TRUE(env.SelectTheBtn(KIND, 3, true));
}

TEST_F(CBUIDataMngr_VirBtnClassTest, ClearedOfFixedThingsTheCommonClassesStay)
{
    const DWORD fixed = MakeClass("fixed");
    const DWORD common = MakeClass("common", true);
    const DWORD inc = MakeInc(SHOP, {2, 3});
    Make(fixed, SHOP, {2});
    Make(fixed, common, {});
    const DWORD kept = Make(common, SHOP, {inc, 4});
    EXPECT_TRUE(env.SelectTheBtn(common, kept, true));
    env.ClearOfFixedSpec();
    List classIDs;
    env.GetAllBtnClassIDList(classIDs, true);
    EXPECT_EQ(classIDs, List({SHOP, KIND, AMOUNT, common}));
    EXPECT_EQ(Members(common, kept), List({inc, 4}));
    EXPECT_EQ(Recs(common, kept), List({4, 5}));
    EXPECT_EQ(Sum(common, kept), 110.0);
    EXPECT_EQ(Displayed(common), List({kept}));
    EXPECT_EQ(TargetRecs(), List({0, 1, 2, 3, 4, 5}));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, 4, true));
    EXPECT_EQ(Displayed(common), List({kept}));
    env.ClearAllBtnSelections(true);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, 2, true));
    EXPECT_EQ(Displayed(common), List());
    env.ClearAllBtnSelections(true);
    EXPECT_EQ(MakeInc(SHOP, {3}), inc);
    EXPECT_EQ(Recs(common, kept), List({2, 3, 4, 5}));
    EXPECT_EQ(MakeClass("fixed"), FIXED);            // from the beginning again
    EXPECT_EQ(MakeClass("other", true), COMMON + 1); // and these go on
}

TEST_F(CBUIDataMngr_VirBtnClassTest, AClassWhoseMembersAllWentWithTheFixedThingsShowsSo)
{
    const DWORD common = MakeClass("common", true);
    const DWORD inc = MakeInc(SHOP, {2, 3});
    const DWORD kept = Make(common, SHOP, {inc});
    EXPECT_EQ(Displayed(common), List({kept}));
    env.ClearOfFixedSpec();
    EXPECT_EQ(Displayed(common), List());
    EXPECT_EQ(MakeInc(SHOP, {3}), inc);
    EXPECT_EQ(Displayed(common), List({kept}));
}

TEST(CBUIDataMngr_VirBtnClass, WithoutSumsConditionsPickNothing)
{
    SEnv made(false);
    const DWORD groups = made.MakeClass("groups");
    const DWORD cnd = made.MakeCnd(groups, SHOP, MakeHighestCnd());
    EXPECT_EQ(made.Members(groups, cnd), List());
    const DWORD group = made.Make(groups, SHOP, {2});
    EXPECT_FALSE(made.env.SelectTheBtn(groups, group, true)); // with everything done
    EXPECT_EQ(made.TargetRecs(), List({0, 1}));
}

// --- Exhausted memory

TEST(CBUIDataMngr_VirBtnClass, ExhaustedMemoryNeverBreaksTheEnvironment)
{
    using Operation = void (*)(SEnv&);
    struct SCase
    {
        const char* name;
        Operation operation;
        bool staysAsItWas;
    };
    constexpr DWORD HIGH = FIXED + 1;
    const SCase cases[] = {
        {"create class", [](SEnv& made) { made.MakeClass("a long name for a class of groups"); }, true},
        {"name",
         [](SEnv& made) { made.env.SetNameOfVirBtnClass(FIXED, "a long name for a class of groups"); }, true},
        {"create button",
         [](SEnv& made) {
             made.Make(FIXED, KIND, {2, 3, 4});
         },
         false},
        {"create condition button", [](SEnv& made) { made.MakeCnd(FIXED, KIND, MakeHighestCnd()); }, false},
        {"destroy button", [](SEnv& made) { made.env.DestroySpBtn(HIGH, VIR); }, false},
        {"destroy class", [](SEnv& made) { made.env.DestroyVirBtnClass(HIGH); }, false},
        {"ineffective class", [](SEnv& made) { made.env.SetEffectiveInfoOfVirBtnClass(HIGH, false); }, false},
        {"clear of fixed", [](SEnv& made) { made.env.ClearOfFixedSpec(); }, false},
        {"limit",
         [](SEnv& made) {
             const DWORD recs[] = {0, 1};
             made.env.SetLimitedRecList(recs, 2);
         },
         false},
    };
    for (const SCase& tested : cases) {
        SCOPED_TRACE(tested.name);
        std::string before;
        const int failures = FailEveryAllocation(
            [&before] {
                auto made = std::make_unique<SEnv>();
                made->MakeClass("low");
                made->MakeClass("high");
                const DWORD inHigh = made->Make(HIGH, SHOP, {2, 3});
                made->Make(FIXED, HIGH, {inHigh});
                made->MakeCnd(FIXED, HIGH, MakeHighestCnd());
                made->env.SelectTheBtn(HIGH, inHigh, true);
                before = made->Describe();
                return made;
            },
            [run = tested.operation](const auto& made) { run(*made); },
            [&before, &tested](const auto& made) {
                if (tested.staysAsItWas) {
                    EXPECT_EQ(made->Describe(), before);
                }
                made->env.ClearAllBtnSelections(true);
                made->env.ClearLimitedRecList();
                // Whatever is left of the classes answers alike in both ways.
                for (DWORD shop = 2; shop <= 4; ++shop) {
                    EXPECT_TRUE(made->env.SelectTheBtn(SHOP, shop, true));
                    List classIDs;
                    made->env.GetAllBtnClassIDList(classIDs, false);
                    for (const DWORD classID : classIDs) {
                        List btnIDs;
                        made->env.GetAllBtnIDListOfBtnClass(classID, btnIDs, false);
                        for (const DWORD btnID : btnIDs) {
                            if (!SCBUICoreCom::IsVirIncBtn(btnID))
                                continue;
                            const List displayed = made->Displayed(classID);
                            const bool isDisplayed =
                                std::find(displayed.begin(), displayed.end(), btnID) != displayed.end();
                            List common;
                            const List recs = made->Recs(classID, btnID);
                            const List target = made->TargetRecs();
                            std::set_intersection(recs.begin(), recs.end(), target.begin(), target.end(),
                                                  std::back_inserter(common));
                            EXPECT_EQ(isDisplayed, !common.empty()) << classID << ' ' << btnID;
                        }
                    }
                    made->env.ClearAllBtnSelections(true);
                }
            });
        EXPECT_GT(failures, 0);
    }
}

TEST(CBUIDataMngr_VirBtnClass, AClassThatCouldNotBeDestroyedIsWhole)
{
    // At one of these the list of released identifiers has to grow.
    int failures = 0;
    for (const DWORD releasedCount : {126u, 127u, 128u}) {
        const DWORD last = FIXED + releasedCount;
        failures += FailEveryAllocation(
            [=] {
                auto made = std::make_unique<SEnv>();
                for (DWORD i = 0; i <= releasedCount; ++i)
                    made->MakeClass(("class " + std::to_string(i)).c_str());
                made->Make(last, SHOP, {2, 3});
                for (DWORD i = 0; i < releasedCount; ++i)
                    made->env.DestroyVirBtnClass(FIXED + i);
                return made;
            },
            [=](const auto& made) { made->env.DestroyVirBtnClass(last); },
            [=](const auto& made) {
                std::set<SBtnClassIDAndBtnID> holders;
                made->env.GetSpBtnIDListThatTheSpecifiedBtnInfluences(SHOP, 2, holders, true);
                if (made->env.ExistBtnClass(last)) {
                    EXPECT_EQ(holders, (std::set<SBtnClassIDAndBtnID>{{last, VIR}}));
                    EXPECT_EQ(made->Recs(last, VIR), List({0, 1, 2, 3}));
                } else {
                    EXPECT_TRUE(holders.empty());
                }
                const DWORD freeCount = releasedCount + (made->env.ExistBtnClass(last) ? 0 : 1);
                for (DWORD i = 0; i <= freeCount; ++i)
                    made->MakeClass(("new class " + std::to_string(i)).c_str());
                EXPECT_TRUE(made->env.ExistBtnClass(last + 1)); // each released one was given out once
            });
    }
    EXPECT_GT(failures, 0);
}

} // namespace
