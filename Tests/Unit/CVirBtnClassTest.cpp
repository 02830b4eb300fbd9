#include "CVirBtnClass.h"

#include "CBtnClass.h"
#include "CRpLink_OnMemVer.h"
#include "Support/CAllocFault.h"
#include "Support/CTestBtnCnd.h"

#include <gtest/gtest.h>

#include <numeric>
#include <sstream>

using namespace NSKZ::NSKZCore;
using NSKZ::Test::CTestBtnCnd;
using NSKZ::Test::FailEveryAllocation;

namespace {

using List = std::vector<DWORD>;
using Class = VCBtnClass;
constexpr DWORD SHOP = 1;
constexpr DWORD KIND = 2;
constexpr DWORD COMMON = SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN;
constexpr DWORD FIXED = SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
constexpr DWORD INC = SCBUICoreCom::BTN_ID_INC_BEGIN;
constexpr DWORD VIR = SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;
constexpr auto CONDITION = VCSpBtn::MMBBTNSELMTH_CONDITION;

// Virtual classes do not let tests at what they are made of; the source class here lets them at its own.
class CProbe final : public VCSrcBtnClass
{
public:
    CProbe(DWORD classID, const std::unique_ptr<IRpLink>& rpLinkOfEnv)
        : VCSrcBtnClass(classID, classID, "empty", nullptr, rpLinkOfEnv)
    {}
    SCBUICoreCom::EBtnClassType GetBtnClassType() const override { return SCBUICoreCom::BTNCLSTYPE_NORMAL; }
    using VCSrcBtnClass::CheckWhetherToHaveSpecificBtnID;
    using VCSrcBtnClass::FindBtn;
    using VCSrcBtnClass::ineffectiveOuterSpBtns;
    using VCSrcBtnClass::refOrgBtnClasses;
};

// Records:  0   1   2   3   4   5
// shop      a   a   b   b   c   c     buttons 2 3 4
// kind      x   y   x   z   y   z     buttons 2 3 4
// and virtual classes over them.
struct SClasses
{
    std::unique_ptr<IRpLink> rpLink = std::make_unique<CRpLink_OnMemVer>();
    std::unique_ptr<CProbe> shop = std::make_unique<CProbe>(SHOP, rpLink);
    std::unique_ptr<CProbe> kind = std::make_unique<CProbe>(KIND, rpLink);
    std::unique_ptr<CVirBtnClass> common = std::make_unique<CVirBtnClass>(COMMON, "common", rpLink);
    std::unique_ptr<CVirBtnClass> fixed = std::make_unique<CVirBtnClass>(FIXED, "fixed", rpLink);
    std::unique_ptr<CVirBtnClass> second = std::make_unique<CVirBtnClass>(FIXED + 1, "second", rpLink);

    explicit SClasses(const std::vector<const char*>& shops = {"a", "a", "b", "b", "c", "c"},
                      const std::vector<const char*>& kinds = {"x", "y", "x", "z", "y", "z"})
    {
        Fill(*shop, shops);
        Fill(*kind, kinds);
        TCBtnIDAssArr<DWORD> counts;
        for (CVirBtnClass* const virBtnClass : {common.get(), fixed.get(), second.get()}) {
            rpLink->InsertFld(virBtnClass->GetID());
            EXPECT_TRUE(virBtnClass->AddRecs(0, static_cast<DWORD>(shops.size()), nullptr, nullptr, counts));
        }
    }
    void Fill(CProbe& btnClass, const std::vector<const char*>& values) const
    {
        const auto count = static_cast<DWORD>(values.size());
        List cells(count);
        TCBtnIDAssArr<DWORD> counts;
        btnClass.AddRecs(0, count, values.data(), cells.data(), counts);
        rpLink->InsertFld(btnClass.GetID());
        for (DWORD rec = 0; rec < count; ++rec)
            rpLink->AddRecList(btnClass.GetID(), cells[rec], &rec, 1);
    }
    static Class::EMthRetOfCreateSpBtn Make(CVirBtnClass& virBtnClass, Class& ref, const List& members,
                                            DWORD& btnID, const char* text = "group")
    {
        return virBtnClass.CreateVirIncBtn(text, SELECT, &members, nullptr, ref, btnID);
    }
    static DWORD Make(CVirBtnClass& virBtnClass, Class& ref, const List& members, const char* text = "group")
    {
        DWORD btnID = 0;
        EXPECT_EQ(Make(virBtnClass, ref, members, btnID, text), Class::CREATESPBTN_OK);
        return btnID;
    }
    static DWORD MakeInc(Class& btnClass, const List& members)
    {
        DWORD btnID = 0;
        EXPECT_EQ(btnClass.CreateIncBtn("inc", SELECT, &members, nullptr, btnID), Class::CREATESPBTN_OK);
        return btnID;
    }
    static DWORD MakeCndCll(Class& btnClass, const List& members)
    {
        DWORD btnID = 0;
        EXPECT_EQ(btnClass.CreateCllBtn("cnd", CONDITION, nullptr, nullptr, btnID), Class::CREATESPBTN_OK);
        EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(btnID, members), Class::OPEMMBBTN_OK);
        return btnID;
    }
    static List Recs(const Class& btnClass, DWORD btnID)
    {
        const std::size_t count = btnClass.GetRecCount();
        List areas[3] = {List(count), List(count), List(count)};
        DWORD* recs = areas[0].data();
        DWORD* buffers[] = {areas[1].data(), areas[2].data()};
        DWORD found = 0;
        EXPECT_TRUE(btnClass.GetRecListThatRelatesToBtn(btnID, recs, found, buffers));
        return List(recs, recs + found);
    }
    static List Members(const Class& btnClass, DWORD btnID)
    {
        List members{4711};
        btnClass.GetMemberBtnIDListOfSpBtn(btnID, members);
        return members;
    }
    static unsigned int Why(const Class& btnClass, DWORD btnID)
    {
        unsigned int visibleInfo = 4711;
        btnClass.GetVisibleInfoOfBtn(btnID, visibleInfo);
        return visibleInfo;
    }
    // The special buttons of other classes that hold a button.
    static std::vector<SBtnClassIDAndBtnID> OuterHolders(CProbe& btnClass, DWORD btnID)
    {
        const VCBtn& btn = *btnClass.FindBtn(btnID);
        if (btn.backReferences == nullptr)
            return {};
        return {btn.backReferences->spBtnIDsOfOtherClass.begin(),
                btn.backReferences->spBtnIDsOfOtherClass.end()};
    }
    static List Referring(const Class& btnClass)
    {
        List btnClassIDs;
        btnClass.GetBtnClassIDListOfRefOrg(btnClassIDs);
        return btnClassIDs;
    }
    static void Describe(const Class& btnClass, std::ostream& out)
    {
        List all;
        btnClass.GetAllBtnIDList(all, true);
        out << "class " << btnClass.GetID() << " referred to by";
        for (const DWORD referring : Referring(btnClass))
            out << ' ' << referring;
        out << '\n';
        for (const DWORD btnID : all) {
            std::set<SBtnClassIDAndBtnID> above;
            btnClass.GetSpBtnIDListThatTheSpecifiedBtnInfluences(btnID, above, true);
            out << btnID << " why " << Why(btnClass, btnID) << " in";
            for (const SBtnClassIDAndBtnID& holder : above)
                out << ' ' << holder.btnClassID << '/' << holder.btnID;
            if (SCBUICoreCom::IsSpBtn(btnID)) {
                out << " effective " << btnClass.ExistTheBtn(btnID) << " of";
                for (const DWORD member : Members(btnClass, btnID))
                    out << ' ' << member;
            }
            out << " recs";
            for (const DWORD rec : Recs(btnClass, btnID))
                out << ' ' << rec;
            out << '\n';
        }
        List order;
        btnClass.GetBtnNameOrdList(Class::ORDLIST_INCLUDE_NONDISPBTNS, order);
        for (const DWORD btnID : order)
            out << btnID << ' ';
        out << '\n';
    }
    std::string Describe() const
    {
        std::ostringstream out;
        for (const Class* const btnClass : std::initializer_list<const Class*>{
                 shop.get(), kind.get(), common.get(), fixed.get(), second.get()}) {
            if (btnClass != nullptr)
                Describe(*btnClass, out);
        }
        for (const CVirBtnClass* const virBtnClass : {common.get(), fixed.get(), second.get()}) {
            if (virBtnClass == nullptr)
                continue;
            for (const DWORD ref : {SHOP, KIND, COMMON, FIXED, FIXED + 1})
                out << virBtnClass->GetRefCount(ref) << ' ';
        }
        return out.str();
    }
};

class CVirBtnClassTest : public ::testing::Test, protected SClasses
{};

TEST_F(CVirBtnClassTest, IsCommonOrFixedByItsIdentifier)
{
    EXPECT_EQ(common->GetBtnClassType(), SCBUICoreCom::BTNCLSTYPE_VIR);
    EXPECT_TRUE(common->IsCommon());
    EXPECT_FALSE(fixed->IsCommon());
    EXPECT_STREQ(common->GetName(), "common");
    common->SetName(nullptr);
    EXPECT_EQ(common->GetName(), nullptr);
    EXPECT_EQ(common->GetRecCount(), 6u);
    EXPECT_TRUE(common->DeleteRecs(0, 2));
    EXPECT_EQ(common->GetRecCount(), 4u);
    EXPECT_EQ(common->GetSystemMngrSpBtnCount(), 0u);
}

TEST_F(CVirBtnClassTest, AButtonCoversTheRecordsOfItsMembersInTheOtherClass)
{
    const DWORD group = Make(*fixed, *shop, {4, 2}, "ac");
    EXPECT_EQ(group, VIR);
    EXPECT_EQ(Members(*fixed, group), List({4, 2}));
    EXPECT_EQ(Recs(*fixed, group), List({0, 1, 4, 5}));
    EXPECT_EQ(Why(*fixed, group), 0u);
    SCBUICoreCom::EBtnType type = SCBUICoreCom::BTNTYPE_NORMAL;
    EXPECT_TRUE(fixed->GetTypeOfBtn(group, type));
    EXPECT_EQ(type, SCBUICoreCom::BTNTYPE_VIRINC);
    DWORD refID = 0;
    EXPECT_TRUE(fixed->GetRefBtnClassIDOfVirIncBtn(group, refID));
    EXPECT_EQ(refID, SHOP);
    EXPECT_FALSE(fixed->GetRefBtnClassIDOfVirIncBtn(group + 1, refID));
    EXPECT_FALSE(fixed->GetRefBtnClassIDOfVirIncBtn(INC, refID));
}

TEST_F(CVirBtnClassTest, MembersKnowTheButtonAndStayDisplayed)
{
    const DWORD group = Make(*fixed, *shop, {2, 3});
    EXPECT_EQ(OuterHolders(*shop, 2), std::vector<SBtnClassIDAndBtnID>({{FIXED, group}}));
    EXPECT_EQ(OuterHolders(*shop, 4), std::vector<SBtnClassIDAndBtnID>());
    EXPECT_EQ(Why(*shop, 2), 0u);
    EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(group, {3, 4}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(OuterHolders(*shop, 2), std::vector<SBtnClassIDAndBtnID>());
    EXPECT_EQ(OuterHolders(*shop, 4), std::vector<SBtnClassIDAndBtnID>({{FIXED, group}}));
    EXPECT_EQ(fixed->AddMemberBtnIDListOfSpBtn(group, 2), Class::OPEMMBBTN_OK);
    EXPECT_EQ(OuterHolders(*shop, 2).size(), 1u);
    EXPECT_EQ(fixed->DeleteMemberBtnIDListOfSpBtn(group, 2), Class::OPEMMBBTN_OK);
    EXPECT_EQ(OuterHolders(*shop, 2).size(), 0u);
}

TEST_F(CVirBtnClassTest, ReferencesAreCountedWithAMirrorEntryInTheOtherClass)
{
    const DWORD first = Make(*fixed, *shop, {2});
    const DWORD other = Make(*fixed, *shop, {3});
    const DWORD ofKind = Make(*fixed, *kind, {});
    EXPECT_EQ(fixed->GetRefCount(SHOP), 2u);
    EXPECT_EQ(fixed->GetRefCount(KIND), 1u);
    EXPECT_EQ(Referring(*shop), List({FIXED}));
    EXPECT_EQ(Referring(*kind), List({FIXED}));
    EXPECT_TRUE(fixed->DestroyVirIncBtn(first));
    EXPECT_EQ(fixed->GetRefCount(SHOP), 1u);
    EXPECT_EQ(Referring(*shop), List({FIXED}));
    EXPECT_TRUE(fixed->DestroyVirIncBtn(other));
    EXPECT_EQ(fixed->GetRefCount(SHOP), 0u);
    EXPECT_EQ(Referring(*shop), List());
    EXPECT_FALSE(fixed->DestroyVirIncBtn(other));
    EXPECT_TRUE(fixed->DestroyVirIncBtn(ofKind));
    EXPECT_EQ(Referring(*kind), List());
    EXPECT_EQ(OuterHolders(*shop, 2), std::vector<SBtnClassIDAndBtnID>());
}

TEST_F(CVirBtnClassTest, ReleasedIdentifiersAreGivenOutAgainSmallestFirst)
{
    for (int i = 0; i < 4; ++i)
        Make(*fixed, *shop, {2});
    EXPECT_TRUE(fixed->DestroyVirIncBtn(VIR + 2));
    EXPECT_TRUE(fixed->DestroyVirIncBtn(VIR));
    EXPECT_EQ(Make(*fixed, *shop, {2}), VIR);
    EXPECT_EQ(Make(*fixed, *shop, {2}), VIR + 2);
    EXPECT_EQ(Make(*fixed, *shop, {2}), VIR + 4);
    DWORD btnID = 4711;
    EXPECT_EQ(Make(*fixed, *shop, {INC}, btnID), Class::CREATESPBTN_BADMEMBER);
    EXPECT_EQ(btnID, 4711u);
    EXPECT_EQ(Make(*fixed, *shop, {2}), VIR + 5); // the refused one left it as a released one
}

TEST_F(CVirBtnClassTest, ARefusedButtonTakesItsReferenceBack)
{
    DWORD btnID = 0;
    EXPECT_EQ(Make(*fixed, *shop, {INC}, btnID), Class::CREATESPBTN_BADMEMBER);
    EXPECT_EQ(fixed->GetRefCount(SHOP), 0u);
    EXPECT_EQ(Referring(*shop), List());
    EXPECT_EQ(fixed->GetBtnCount(), 0u);
    const List members{2};
    EXPECT_EQ(
        fixed->CreateVirIncBtn("n", static_cast<VCSpBtn::EMmbBtnSelMth>(3), &members, nullptr, *shop, btnID),
        Class::CREATESPBTN_UNKNOWNSELMTH);
    EXPECT_EQ(Referring(*shop), List());
}

TEST_F(CVirBtnClassTest, AButtonRefersToNoClassOfShorterLifeAndNotToItsOwn)
{
    DWORD btnID = 0;
    EXPECT_EQ(Make(*fixed, *fixed, {}, btnID), Class::CREATESPBTN_NOBTNCLASS);
    EXPECT_EQ(Make(*common, *fixed, {}, btnID), Class::CREATESPBTN_NOBTNCLASS);
    EXPECT_EQ(Referring(*fixed), List());
    EXPECT_EQ(Make(*fixed, *common, {}, btnID), Class::CREATESPBTN_OK);
    EXPECT_EQ(Make(*fixed, *second, {}, btnID), Class::CREATESPBTN_OK);
}

TEST_F(CVirBtnClassTest, OfMembersOnlySpecialOnesAreTested)
{
    const DWORD inc = MakeInc(*shop, {2, 3});
    const DWORD cnd = MakeCndCll(*shop, {4});
    DWORD group = 0;
    EXPECT_EQ(Make(*fixed, *shop, {inc, 4}, group), Class::CREATESPBTN_OK);
    EXPECT_EQ(Recs(*fixed, group), List({0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(group, {cnd}), Class::OPEMMBBTN_BADMEMBER);
    EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(group, {inc + 1}), Class::OPEMMBBTN_BADMEMBER);
    EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(group, {VIR}), Class::OPEMMBBTN_BADMEMBER); // not there
    EXPECT_EQ(Members(*fixed, group), List({inc, 4}));
    EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(group, {}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Why(*fixed, group), VISINFO_NOMEMBER | VISINFO_NOLIVEMEMBER);
    EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(group, {77, 2}), Class::OPEMMBBTN_OK); // 77 is no button
    EXPECT_EQ(Recs(*fixed, group), List({0, 1}));
}

TEST_F(CVirBtnClassTest, AHiddenEmptyValueIsNoMemberInAnyClass)
{
    SClasses classes({"a", "", "b"}, {"x", "x", "x"});
    const DWORD group = Make(*classes.fixed, *classes.shop, {1, 2});
    EXPECT_EQ(Recs(*classes.fixed, group), List({0, 1}));
    classes.shop->SetDispEmpValBtnInfo(false);
    EXPECT_EQ(Members(*classes.fixed, group), List({2}));
    EXPECT_EQ(Recs(*classes.fixed, group), List({0}));
    EXPECT_EQ(classes.fixed->SetMemberBtnIDListOfSpBtn(group, {1}), Class::OPEMMBBTN_BADMEMBER);
    classes.fixed->SetEffectiveInfoOfSpBtn(group, false);
    classes.shop->SetDispEmpValBtnInfo(true);
    EXPECT_EQ(classes.fixed->SetMemberBtnIDListOfSpBtn(group, {1, 2}), Class::OPEMMBBTN_OK);
    classes.shop->SetDispEmpValBtnInfo(false); // ineffective buttons forget it too
    EXPECT_EQ(Members(*classes.fixed, group), List({2}));
}

TEST_F(CVirBtnClassTest, LoopsAcrossClassesAreRefused)
{
    const DWORD first = Make(*fixed, *second, {});
    const DWORD other = Make(*second, *fixed, {first});
    EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(first, {other}), Class::OPEMMBBTN_BADMEMBER);
    EXPECT_EQ(Members(*fixed, first), List());
    // The same identifier in another class is another button.
    const DWORD twin = Make(*second, *shop, {2});
    EXPECT_NE(twin, other);
    EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(first, {twin}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Recs(*second, other), List({0, 1}));
}

TEST_F(CVirBtnClassTest, TheSameIdentifierInTwoClassesIsNoLoop)
{
    const DWORD inSecond = Make(*second, *shop, {2});
    const DWORD inFixed = Make(*fixed, *second, {});
    ASSERT_EQ(inSecond, inFixed);
    EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(inFixed, {inSecond}), Class::OPEMMBBTN_OK);
}

TEST_F(CVirBtnClassTest, LoopsThroughAnIncButtonOfAnotherClassAreRefused)
{
    const DWORD first = Make(*fixed, *second, {});
    const DWORD other = Make(*second, *fixed, {first});
    const DWORD inc = MakeInc(*second, {other});
    EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(first, {inc}), Class::OPEMMBBTN_BADMEMBER);
    // And where the last step is an inc button's.
    const DWORD incOfFirst = MakeInc(*fixed, {first});
    const DWORD third = Make(*second, *fixed, {incOfFirst});
    EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(first, {third}), Class::OPEMMBBTN_BADMEMBER);
}

TEST_F(CVirBtnClassTest, WhatAnIneffectiveButtonReturnsToCountsForLoops)
{
    const DWORD first = Make(*fixed, *second, {});
    const DWORD other = Make(*second, *fixed, {first});
    EXPECT_TRUE(fixed->SetEffectiveInfoOfSpBtn(first, false));
    EXPECT_EQ(Members(*second, other), List()); // it left, and will return
    EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(first, {other}), Class::OPEMMBBTN_BADMEMBER);
    EXPECT_TRUE(fixed->SetEffectiveInfoOfSpBtn(first, true));
    EXPECT_EQ(Members(*second, other), List({first}));
}

TEST_F(CVirBtnClassTest, AConditionButtonIsNotTestedForLoops)
{
    DWORD cndBtn = 0;
    ASSERT_EQ(fixed->CreateVirIncBtn("cnd", CONDITION, nullptr, nullptr, *second, cndBtn),
              Class::CREATESPBTN_OK);
    const DWORD other = Make(*second, *shop, {2});
    EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(cndBtn, {other}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Recs(*fixed, cndBtn), List({0, 1}));
    DWORD btnID = 0;
    const List members{cndBtn};
    EXPECT_EQ(second->CreateVirIncBtn("n", SELECT, &members, nullptr, *fixed, btnID),
              Class::CREATESPBTN_BADMEMBER); // it selects by condition
}

TEST_F(CVirBtnClassTest, TheSearchForAButtonGoesAcrossClasses)
{
    const DWORD inc = MakeInc(*shop, {2, 3});
    const DWORD group = Make(*fixed, *shop, {inc});
    const DWORD outer = Make(*second, *fixed, {group});
    const auto has = [](const CVirBtnClass& btnClass, DWORD btnID, DWORD classID, DWORD target) {
        class COpen : public VCBtnClass
        {
        public:
            using VCBtnClass::CheckWhetherToHaveSpecificBtnID;
        };
        return (btnClass.*&COpen::CheckWhetherToHaveSpecificBtnID)(btnID, classID, target);
    };
    EXPECT_TRUE(has(*second, outer, SHOP, 2));
    EXPECT_TRUE(has(*second, outer, SHOP, inc));
    EXPECT_TRUE(has(*second, outer, FIXED, group));
    EXPECT_TRUE(has(*second, outer, FIXED + 1, outer));
    EXPECT_FALSE(has(*second, outer, SHOP, 4));
    EXPECT_FALSE(has(*second, outer, KIND, 2));
    EXPECT_FALSE(has(*second, outer + 1, SHOP, 2));
}

TEST_F(CVirBtnClassTest, SourceButtonsInTheEndAreFoundAcrossClasses)
{
    const DWORD inc = MakeInc(*shop, {2, 3});
    const DWORD group = Make(*fixed, *shop, {inc, 4});
    const DWORD ofKind = Make(*fixed, *kind, {4});
    const DWORD top = MakeInc(*fixed, {group, ofKind});
    std::set<SBtnClassIDAndBtnID> minimum;
    EXPECT_TRUE(fixed->GetMinimumMemberBtnIDListOfSpBtn(top, minimum));
    EXPECT_EQ(minimum, (std::set<SBtnClassIDAndBtnID>{{SHOP, 2}, {SHOP, 3}, {SHOP, 4}, {KIND, 4}}));
    minimum.clear();
    EXPECT_TRUE(fixed->GetMinimumMemberBtnIDListOfSpBtn(group, minimum));
    EXPECT_EQ(minimum.size(), 3u);
    EXPECT_FALSE(fixed->GetMinimumMemberBtnIDListOfSpBtn(VIR + 9, minimum));
    std::set<DWORD> inClass;
    EXPECT_TRUE(fixed->GetMinimumMemberBtnIDListInThisBtnClassOfSpBtn(top, inClass));
    EXPECT_EQ(inClass, (std::set<DWORD>{group, ofKind}));
    EXPECT_FALSE(fixed->GetMinimumMemberBtnIDListInThisBtnClassOfSpBtn(group, inClass));
}

TEST_F(CVirBtnClassTest, RecordsOfSeveralClassesAreUnited)
{
    const DWORD ofShop = Make(*fixed, *shop, {2});
    const DWORD ofKind = Make(*fixed, *kind, {2});
    const DWORD top = MakeInc(*fixed, {ofShop, ofKind});
    EXPECT_EQ(Recs(*fixed, top), List({0, 1, 2}));
    const DWORD outer = Make(*second, *fixed, {top});
    EXPECT_EQ(Recs(*second, outer), List({0, 1, 2}));
    List areas[3] = {{5, 0, 0, 0, 0, 0}, List(6), List(6)};
    DWORD* recs = areas[0].data();
    DWORD* buffers[] = {areas[1].data(), areas[2].data()};
    DWORD count = 1;
    EXPECT_TRUE(second->GetRecListThatRelatesToBtn(outer, recs, count, buffers)); // beside what is there
    EXPECT_EQ(List(recs, recs + count), List({0, 1, 2, 5}));
}

TEST_F(CVirBtnClassTest, AMemberThatGoesLeavesTheButton)
{
    const DWORD inc = MakeInc(*shop, {2, 3});
    const DWORD group = Make(*fixed, *shop, {inc});
    EXPECT_TRUE(shop->DestroyIncBtn(inc));
    EXPECT_EQ(Members(*fixed, group), List());
    EXPECT_EQ(Why(*fixed, group), VISINFO_NOLIVEMEMBER); // and not VISINFO_NOMEMBER
    EXPECT_EQ(Recs(*fixed, group), List());
}

TEST_F(CVirBtnClassTest, AMemberThatGoesLeavesAnIneffectiveButtonToo)
{
    const DWORD inc = MakeInc(*shop, {2, 3});
    const DWORD group = Make(*fixed, *shop, {inc, 4});
    EXPECT_TRUE(fixed->SetEffectiveInfoOfSpBtn(group, false));
    EXPECT_TRUE(shop->DestroyIncBtn(inc));
    EXPECT_EQ(Members(*fixed, group), List({4}));
    EXPECT_EQ(MakeInc(*shop, {3}), inc); // another button of that identifier
    EXPECT_TRUE(fixed->SetEffectiveInfoOfSpBtn(group, true));
    EXPECT_EQ(Recs(*fixed, group), List({4, 5}));
}

TEST_F(CVirBtnClassTest, AnIneffectiveMemberLeavesAndReturns)
{
    const DWORD inc = MakeInc(*shop, {2, 3});
    const DWORD group = Make(*fixed, *shop, {inc});
    EXPECT_TRUE(shop->SetEffectiveInfoOfSpBtn(inc, false));
    EXPECT_EQ(Members(*fixed, group), List());
    EXPECT_EQ(Why(*fixed, group), VISINFO_NOLIVEMEMBER);
    EXPECT_TRUE(shop->SetEffectiveInfoOfSpBtn(inc, true));
    EXPECT_EQ(Members(*fixed, group), List({inc}));
    EXPECT_EQ(Why(*fixed, group), 0u);
    EXPECT_EQ(Recs(*fixed, group), List({0, 1, 2, 3}));
}

TEST_F(CVirBtnClassTest, AMemberReturnsToAnIneffectiveButtonOfAnotherClass)
{
    const DWORD inc = MakeInc(*shop, {2, 3});
    const DWORD group = Make(*fixed, *shop, {inc});
    EXPECT_TRUE(shop->SetEffectiveInfoOfSpBtn(inc, false));
    EXPECT_TRUE(fixed->SetEffectiveInfoOfSpBtn(group, false));
    EXPECT_TRUE(shop->SetEffectiveInfoOfSpBtn(inc, true));
    EXPECT_EQ(Members(*fixed, group), List({inc})); // stored there
    EXPECT_EQ(OuterHolders(*shop, inc), std::vector<SBtnClassIDAndBtnID>());
    EXPECT_TRUE(fixed->SetEffectiveInfoOfSpBtn(group, true));
    EXPECT_EQ(OuterHolders(*shop, inc), std::vector<SBtnClassIDAndBtnID>({{FIXED, group}}));
    EXPECT_EQ(Recs(*fixed, group), List({0, 1, 2, 3}));
}

TEST_F(CVirBtnClassTest, ADestroyedButtonIsForgottenByIneffectiveMembersInOtherClasses)
{
    const DWORD inc = MakeInc(*shop, {2, 3});
    const DWORD group = Make(*fixed, *shop, {inc, 4});
    EXPECT_TRUE(shop->SetEffectiveInfoOfSpBtn(inc, false));
    EXPECT_TRUE(fixed->DestroyVirIncBtn(group));
    EXPECT_EQ(OuterHolders(*shop, inc), std::vector<SBtnClassIDAndBtnID>());
    EXPECT_EQ(Make(*fixed, *shop, {4}), group);
    EXPECT_TRUE(shop->SetEffectiveInfoOfSpBtn(inc, true));
    EXPECT_EQ(Members(*fixed, group), List({4}));
}

TEST_F(CVirBtnClassTest, LivenessFollowsTheMembersOfTheOtherClass)
{
    const DWORD group = Make(*fixed, *shop, {2, 3});
    const DWORD top = Make(*second, *fixed, {group});
    shop->SetVisibleInfoBasedOnLimitedRecListOfAllBtns(false);
    VCBtnClass::ResetLiveMemberInfoOfAllSpBtns({second.get(), fixed.get(), shop.get()}); // in any order
    EXPECT_EQ(Why(*fixed, group), VISINFO_NOLIVEMEMBER);
    EXPECT_EQ(Why(*second, top), VISINFO_NOLIVEMEMBER);
    shop->SetVisibleInfoBasedOnLimitedRecListOfAllBtns(true);
    bool hasChanged = true;
    int rounds = 0;
    for (; hasChanged && rounds < 9; ++rounds) {
        hasChanged = second->ResetLiveMemberInfoOfAllSpBtnsWithoutMemory();
        hasChanged = fixed->ResetLiveMemberInfoOfAllSpBtnsWithoutMemory() || hasChanged;
    }
    EXPECT_EQ(rounds, 3); // the second class learns of the first one's change, and then nothing changes
    EXPECT_EQ(Why(*fixed, group), 0u);
    EXPECT_EQ(Why(*second, top), 0u);
}

TEST_F(CVirBtnClassTest, AnIneffectiveClassSwitchesOffTheVirtualIncButtonsThatHoldItsButtons)
{
    const DWORD group = Make(*fixed, *shop, {2});
    const DWORD ofKind = Make(*fixed, *kind, {2});
    const DWORD gone = Make(*fixed, *shop, {3});
    EXPECT_TRUE(shop->SetEffective(false));
    EXPECT_FALSE(fixed->ExistTheBtn(group));
    EXPECT_TRUE(fixed->ExistTheBtn(ofKind));
    EXPECT_TRUE(fixed->DestroyVirIncBtn(gone));
    EXPECT_EQ(shop->ineffectiveOuterSpBtns.size(), 1u); // it is not waited for
    EXPECT_TRUE(shop->SetEffective(true));
    EXPECT_TRUE(fixed->ExistTheBtn(group));
    EXPECT_EQ(Recs(*fixed, group), List({0, 1}));
}

TEST_F(CVirBtnClassTest, AButtonOfTheSameIdentifierInAnotherClassHasNoHoldersHere)
{
    const DWORD inc = MakeInc(*shop, {2});
    const DWORD group = Make(*fixed, *shop, {inc});
    ASSERT_EQ(MakeInc(*fixed, {group}), inc);
    EXPECT_TRUE(fixed->SetEffectiveInfoOfSpBtn(group, false));
    List roots{4711};
    EXPECT_TRUE(fixed->GetRootSpBtnIDListIncludingBtn(inc, true, roots));
    EXPECT_EQ(roots, List());
    EXPECT_TRUE(shop->GetRootSpBtnIDListIncludingBtn(inc, true, roots));
    EXPECT_EQ(roots, List());
}

// --- Rows of records

TEST(CVirBtnClass, AButtonOf400MembersHasItsRecordsInTheTable)
{
    std::vector<std::string> texts;
    for (int i = 0; i < 500; ++i)
        texts.push_back("v" + std::to_string(i));
    std::vector<const char*> values;
    for (const std::string& text : texts)
        values.push_back(text.c_str());
    SClasses classes(values, values);
    List members(400);
    std::iota(members.begin(), members.end(), DWORD{2});
    const DWORD large = classes.Make(*classes.fixed, *classes.shop, members);
    List recs(400);
    std::iota(recs.begin(), recs.end(), DWORD{0});
    const auto rowSize = [&](DWORD btnID) {
        DWORD count = 0;
        classes.rpLink->GetRecCount(FIXED, btnID, count);
        return count;
    };
    EXPECT_EQ(rowSize(large), 400u);
    EXPECT_TRUE(classes.fixed->IsBtnWithRpLink(large));
    EXPECT_EQ(classes.Recs(*classes.fixed, large), recs);
    members.pop_back();
    const DWORD small = classes.Make(*classes.fixed, *classes.shop, members);
    EXPECT_EQ(rowSize(small), 0u);
    EXPECT_FALSE(classes.fixed->IsBtnWithRpLink(small));
    recs.pop_back();
    EXPECT_EQ(classes.Recs(*classes.fixed, small), recs);
    // The row of a large button above follows a change below it, across classes.
    List manyMembers(399);
    std::iota(manyMembers.begin(), manyMembers.end(), DWORD{2});
    const DWORD inc = classes.MakeInc(*classes.shop, {450});
    manyMembers.push_back(inc);
    const DWORD mixed = classes.Make(*classes.fixed, *classes.shop, manyMembers);
    EXPECT_EQ(rowSize(mixed), 400u);
    EXPECT_EQ(classes.shop->SetMemberBtnIDListOfSpBtn(inc, {450, 451}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(rowSize(mixed), 401u);
    // One that falls below has no row any more.
    members.clear();
    EXPECT_EQ(classes.fixed->SetMemberBtnIDListOfSpBtn(large, {2}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(rowSize(large), 0u);
}

// --- Classes that go

TEST_F(CVirBtnClassTest, WhenTheOtherClassGoesItsGroupsStayBehindIneffectiveAndEmpty)
{
    const DWORD group = Make(*fixed, *shop, {2});
    const DWORD empty = Make(*fixed, *shop, {});
    const DWORD top = Make(*second, *fixed, {group});
    shop->LetReferringClassesGo();
    shop.reset();
    for (const DWORD btnID : {group, empty}) {
        EXPECT_FALSE(fixed->ExistTheBtn(btnID));
        EXPECT_EQ(Members(*fixed, btnID), List());
        EXPECT_EQ(Recs(*fixed, btnID), List());
        EXPECT_FALSE(fixed->SetEffectiveInfoOfSpBtn(btnID, true)); // for good
        EXPECT_EQ(fixed->SetMemberBtnIDListOfSpBtn(btnID, {2}), Class::OPEMMBBTN_BADMEMBER);
        EXPECT_EQ(fixed->AddMemberBtnIDListOfSpBtn(btnID, 2), Class::OPEMMBBTN_BADMEMBER);
        std::set<SBtnClassIDAndBtnID> minimum;
        EXPECT_FALSE(fixed->GetMinimumMemberBtnIDListOfSpBtn(btnID, minimum));
        DWORD refID = 4711;
        EXPECT_TRUE(fixed->GetRefBtnClassIDOfVirIncBtn(btnID, refID));
        EXPECT_EQ(refID, SCBUICoreCom::BTNCLS_ID_UNSETTING);
    }
    EXPECT_EQ(Members(*second, top), List());
    EXPECT_EQ(Recs(*second, top), List());
    EXPECT_TRUE(fixed->DestroyVirIncBtn(group));
    EXPECT_TRUE(fixed->DestroyVirIncBtn(empty));
    EXPECT_EQ(fixed->GetRefCount(SHOP), 0u);
}

TEST_F(CVirBtnClassTest, ALaterClassOfTheSameIdentifierIsAnotherOne)
{
    const DWORD inFixed = Make(*fixed, *shop, {2});
    const DWORD outer = Make(*second, *fixed, {inFixed});
    fixed->Release();
    fixed = std::make_unique<CVirBtnClass>(FIXED, "again", rpLink);
    ASSERT_EQ(Make(*fixed, *shop, {3}), inFixed);
    const DWORD other = Make(*second, *fixed, {inFixed});
    EXPECT_EQ(second->GetRefCount(FIXED), 1u);
    EXPECT_EQ(second->SetMemberBtnIDListOfSpBtn(outer, {}), Class::OPEMMBBTN_BADMEMBER);
    EXPECT_EQ(second->SetMemberBtnIDListOfSpBtn(outer, {inFixed}), Class::OPEMMBBTN_BADMEMBER);
    EXPECT_FALSE(second->SetEffectiveInfoOfSpBtn(outer, true));
    EXPECT_TRUE(second->DestroyVirIncBtn(outer));
    EXPECT_EQ(second->GetRefCount(FIXED), 1u); // it was not counted any more
    EXPECT_EQ(Recs(*second, other), List({2, 3}));
    EXPECT_TRUE(second->DestroyVirIncBtn(other));
    EXPECT_EQ(Referring(*fixed), List());
}

TEST_F(CVirBtnClassTest, ASleepingMemberForgetsAClassThatGoes)
{
    const DWORD inc = MakeInc(*shop, {2});
    const DWORD group = Make(*fixed, *shop, {inc, 4});
    EXPECT_TRUE(shop->SetEffectiveInfoOfSpBtn(inc, false));
    fixed->Release();
    fixed = std::make_unique<CVirBtnClass>(FIXED, "again", rpLink);
    ASSERT_EQ(Make(*fixed, *shop, {4}), group);
    EXPECT_EQ(OuterHolders(*shop, inc), std::vector<SBtnClassIDAndBtnID>());
    EXPECT_TRUE(shop->SetEffectiveInfoOfSpBtn(inc, true));
    EXPECT_EQ(Members(*fixed, group), List({4}));
}

TEST_F(CVirBtnClassTest, AGroupWhoseClassIsGoneIsNoneOfTheNextClassOfThatIdentifier)
{
    const DWORD left = Make(*second, *fixed, {});
    fixed->Release();
    fixed = std::make_unique<CVirBtnClass>(FIXED, "another of that identifier", rpLink);
    const DWORD group = Make(*second, *fixed, {});
    EXPECT_EQ(second->GetRefCount(FIXED), 1u);
    EXPECT_FALSE(second->SetEffectiveInfoOfSpBtn(left, true));
    EXPECT_TRUE(second->DestroyVirIncBtn(left));
    EXPECT_EQ(second->GetRefCount(FIXED), 1u);
    EXPECT_EQ(Referring(*fixed), List({FIXED + 1}));
    EXPECT_TRUE(second->DestroyVirIncBtn(group));
    EXPECT_EQ(Referring(*fixed), List());
}

TEST_F(CVirBtnClassTest, WhatHoldsAnIneffectiveGroupLearnsThatItsClassIsGone)
{
    const DWORD group = Make(*fixed, *shop, {2});
    EXPECT_TRUE(fixed->SetEffectiveInfoOfSpBtn(group, false));
    const DWORD outer = Make(*second, *fixed, {group});
    EXPECT_EQ(Why(*second, outer), 0u); // being ineffective alone is no reason
    shop->LetReferringClassesGo();
    EXPECT_EQ(Why(*second, outer), VISINFO_NOLIVEMEMBER);
}

TEST_F(CVirBtnClassTest, AClassThatGoesWithoutAWordLeavesNoPointerBehind)
{
    const DWORD group = Make(*fixed, *shop, {2});
    shop.reset();
    EXPECT_EQ(Recs(*fixed, group), List());
    EXPECT_TRUE(fixed->DestroyVirIncBtn(group));
    const DWORD ofKind = Make(*fixed, *kind, {2});
    EXPECT_EQ(OuterHolders(*kind, 2), std::vector<SBtnClassIDAndBtnID>({{FIXED, ofKind}}));
    fixed.reset();
    EXPECT_EQ(Referring(*kind), List());
    EXPECT_EQ(OuterHolders(*kind, 2), std::vector<SBtnClassIDAndBtnID>());
    EXPECT_TRUE(kind->SetEffective(false));
}

TEST_F(CVirBtnClassTest, ReleaseUnbindsBothDirections)
{
    const DWORD group = Make(*fixed, *shop, {2});
    const DWORD outer = Make(*second, *fixed, {group});
    shop->SetEffective(false);
    shop->SetEffective(true);
    fixed->Release();
    EXPECT_EQ(Referring(*shop), List());
    EXPECT_EQ(Referring(*fixed), List());
    EXPECT_EQ(OuterHolders(*shop, 2), std::vector<SBtnClassIDAndBtnID>());
    fixed.reset();
    EXPECT_FALSE(second->ExistTheBtn(outer));
    EXPECT_EQ(Members(*second, outer), List());
}

TEST_F(CVirBtnClassTest, AnIneffectiveButtonReturnsToNoButtonOfAClassThatIsGone)
{
    const DWORD inc = MakeInc(*shop, {2, 3});
    const DWORD group = Make(*fixed, *shop, {inc, 4});
    EXPECT_TRUE(shop->SetEffectiveInfoOfSpBtn(inc, false));
    EXPECT_EQ(OuterHolders(*shop, inc), std::vector<SBtnClassIDAndBtnID>({{FIXED, group}}));
    fixed->Release();
    EXPECT_EQ(OuterHolders(*shop, inc), std::vector<SBtnClassIDAndBtnID>());
    fixed = std::make_unique<CVirBtnClass>(FIXED, "another of that identifier", rpLink);
    TCBtnIDAssArr<DWORD> counts;
    fixed->AddRecs(0, 6, nullptr, nullptr, counts);
    EXPECT_EQ(Make(*fixed, *shop, {4}), group);
    EXPECT_TRUE(shop->SetEffectiveInfoOfSpBtn(inc, true));
    EXPECT_EQ(Members(*fixed, group), List({4}));
    EXPECT_EQ(Recs(*fixed, group), List({4, 5}));
}

TEST_F(CVirBtnClassTest, ClearedOfFixedThingsAFixedClassIsEmptyAndACommonOneStays)
{
    const DWORD inFixed = Make(*fixed, *shop, {2});
    const DWORD inCommon = Make(*common, *shop, {2, 3}, "kept");
    const DWORD inc = MakeInc(*common, {inCommon});
    const DWORD ineffective = Make(*common, *shop, {4});
    common->SetEffectiveInfoOfSpBtn(ineffective, false);
    common->SetSelectionInfoOfBtn(inCommon, true);
    fixed->ClearOfFixedSpec();
    common->ClearOfFixedSpec();
    EXPECT_EQ(fixed->GetBtnCount(), 0u);
    EXPECT_EQ(fixed->GetName(), nullptr);
    EXPECT_EQ(Referring(*shop), List({COMMON}));
    EXPECT_EQ(OuterHolders(*shop, 2), std::vector<SBtnClassIDAndBtnID>({{COMMON, inCommon}}));
    EXPECT_FALSE(common->ExistTheBtn(inc));
    EXPECT_EQ(Members(*common, inCommon), List({2, 3}));
    EXPECT_EQ(Recs(*common, inCommon), List({0, 1, 2, 3}));
    EXPECT_EQ(common->GetSelBtnCount(), 0u);
    EXPECT_EQ(common->GetIneffectiveBtnCount(), 1u);
    EXPECT_STREQ(common->GetName(), "common");
    EXPECT_EQ(common->GetRefCount(SHOP), 2u);
    EXPECT_EQ(inFixed, VIR);
}

TEST_F(CVirBtnClassTest, AnIneffectiveClassWaitsForNothingThatWentWithTheFixedThings)
{
    const DWORD group = Make(*fixed, *shop, {2});
    const DWORD inCommon = Make(*common, *shop, {2});
    EXPECT_TRUE(shop->SetEffective(false));
    shop->ClearOfFixedSpec(); // before the others, as the environment does
    common->ClearOfFixedSpec();
    fixed->ClearOfFixedSpec();
    EXPECT_EQ(shop->ineffectiveOuterSpBtns, (std::set<SBtnClassIDAndBtnID>{{COMMON, inCommon}}));
    fixed = std::make_unique<CVirBtnClass>(FIXED, "another of that identifier", rpLink);
    EXPECT_EQ(Make(*fixed, *shop, {3}), group);
    EXPECT_TRUE(fixed->SetEffectiveInfoOfSpBtn(group, false));
    EXPECT_TRUE(shop->SetEffective(true));
    EXPECT_FALSE(fixed->ExistTheBtn(group));
    EXPECT_TRUE(common->ExistTheBtn(inCommon));
}

TEST_F(CVirBtnClassTest, ASpecialMemberThatIsGoneAddsNothingAndComesBackWithItsIdentifier)
{
    const DWORD inc = MakeInc(*shop, {2, 3});
    const DWORD group = Make(*common, *shop, {inc, 4});
    shop->ClearOfFixedSpec();
    common->ClearOfFixedSpec();
    EXPECT_EQ(Members(*common, group), List({inc, 4}));
    EXPECT_EQ(Recs(*common, group), List({4, 5}));
    EXPECT_EQ(Why(*common, group), 0u);
    std::set<SBtnClassIDAndBtnID> minimum;
    EXPECT_TRUE(common->GetMinimumMemberBtnIDListOfSpBtn(group, minimum));
    EXPECT_EQ(minimum, (std::set<SBtnClassIDAndBtnID>{{SHOP, 4}}));
    EXPECT_EQ(MakeInc(*shop, {3}), inc);
    EXPECT_EQ(OuterHolders(*shop, inc), std::vector<SBtnClassIDAndBtnID>({{COMMON, group}}));
    EXPECT_EQ(Recs(*common, group), List({2, 3, 4, 5}));
    EXPECT_TRUE(shop->DestroyIncBtn(inc));
    EXPECT_EQ(Members(*common, group), List({4}));
}

TEST_F(CVirBtnClassTest, AConditionButtonOfAnAwaitedIdentifierIsNotTheOneAwaited)
{
    const List noMembers;
    DWORD fold = 0;
    ASSERT_EQ(shop->CreateCllBtn("fold", SELECT, &noMembers, nullptr, fold), Class::CREATESPBTN_OK);
    const DWORD group = Make(*common, *shop, {fold, 4});
    const DWORD asleep = Make(*common, *shop, {fold, 3});
    EXPECT_TRUE(common->SetEffectiveInfoOfSpBtn(asleep, false));
    shop->ClearOfFixedSpec();
    common->ClearOfFixedSpec();
    EXPECT_EQ(Members(*common, group), List({fold, 4}));
    EXPECT_EQ(MakeCndCll(*shop, {2}), fold);
    EXPECT_EQ(Members(*common, group), List({4})); // a button with a condition is a member of none
    EXPECT_EQ(Members(*common, asleep), List({3}));
    EXPECT_EQ(OuterHolders(*shop, fold), std::vector<SBtnClassIDAndBtnID>());
    EXPECT_EQ(Recs(*common, group), List({4, 5}));
}

TEST_F(CVirBtnClassTest, ACopyHasCloneButtonsThatAreBoundToNoClassYet)
{
    const DWORD group = Make(*fixed, *shop, {2, 3}, "group");
    const DWORD gone = Make(*fixed, *shop, {2});
    fixed->DestroyVirIncBtn(gone);
    CVirBtnClass copy(FIXED + 7, nullptr, rpLink);
    copy.Copy(*fixed, rpLink);
    EXPECT_EQ(copy.GetID(), FIXED);
    EXPECT_STREQ(copy.GetName(), "fixed");
    EXPECT_EQ(Members(copy, group), List({2, 3}));
    EXPECT_EQ(copy.GetRefCount(SHOP), 1u);
    EXPECT_EQ(Referring(*shop), List({FIXED}));
    EXPECT_EQ(Recs(copy, group), List()); // bound to nothing
    copy.Copy(copy, rpLink);
    EXPECT_EQ(Members(copy, group), List({2, 3}));
    DWORD btnID = 0;
    EXPECT_EQ(Make(copy, *kind, {2}, btnID), Class::CREATESPBTN_OK);
    EXPECT_EQ(btnID, gone); // the released identifier was copied
}

// --- Exhausted memory

TEST(CVirBtnClass, ExhaustedMemoryInAnyChangeLeavesAllClassesAsTheyWere)
{
    using Operation = void (*)(SClasses&);
    const std::pair<const char*, Operation> operations[] = {
        {"create",
         [](auto& classes) {
             SClasses::Make(*classes.second, *classes.shop, {2, 3, INC}, "a long text");
         }},
        {"create over a virtual class",
         [](auto& classes) {
             SClasses::Make(*classes.second, *classes.fixed, {VIR, VIR + 1});
         }},
        {"set",
         [](auto& classes) {
             classes.fixed->SetMemberBtnIDListOfSpBtn(VIR, {3, 4});
         }},
        {"add", [](auto& classes) { classes.fixed->AddMemberBtnIDListOfSpBtn(VIR, 4); }},
        {"delete", [](auto& classes) { classes.fixed->DeleteMemberBtnIDListOfSpBtn(VIR, 2); }},
        {"destroy", [](auto& classes) { classes.fixed->DestroyVirIncBtn(VIR); }},
        {"destroy a member", [](auto& classes) { classes.shop->DestroyIncBtn(INC); }},
        {"off", [](auto& classes) { classes.fixed->SetEffectiveInfoOfSpBtn(VIR, false); }},
        {"on", [](auto& classes) { classes.fixed->SetEffectiveInfoOfSpBtn(VIR + 1, true); }},
        {"a member off", [](auto& classes) { classes.shop->SetEffectiveInfoOfSpBtn(INC, false); }},
        {"a member on", [](auto& classes) { classes.shop->SetEffectiveInfoOfSpBtn(INC + 1, true); }},
        {"a member that is waited for", [](auto& classes) { SClasses::MakeInc(*classes.kind, {2}); }},
    };
    for (const auto& [name, operation] : operations) {
        SCOPED_TRACE(name);
        std::string before;
        const int failures = FailEveryAllocation(
            [&before] {
                auto classes = std::make_unique<SClasses>();
                SClasses::MakeInc(*classes->kind, {2});
                SClasses::Make(*classes->common, *classes->kind, {INC, 3});
                classes->kind->ClearOfFixedSpec();
                classes->common->ClearOfFixedSpec();
                SClasses::MakeInc(*classes->shop, {2, 3});
                SClasses::MakeInc(*classes->shop, {4});
                SClasses::Make(*classes->fixed, *classes->shop, {2, INC});
                SClasses::Make(*classes->fixed, *classes->shop, {3, INC + 1});
                SClasses::Make(*classes->second, *classes->fixed, {VIR, VIR + 1});
                classes->fixed->SetEffectiveInfoOfSpBtn(VIR + 1, false);
                classes->shop->SetEffectiveInfoOfSpBtn(INC + 1, false);
                before = classes->Describe();
                return classes;
            },
            [run = operation](const auto& classes) { run(*classes); },
            [&before](const auto& classes) { EXPECT_EQ(classes->Describe(), before); });
        EXPECT_GT(failures, 0);
    }
}

TEST(CVirBtnClass, AClassThatCouldNotBeMadeIneffectiveAtOnceStillSwitchesAllBackOn)
{
    const int failures = FailEveryAllocation(
        [] {
            auto made = std::make_unique<SClasses>();
            for (const DWORD member : {2u, 3u, 4u}) {
                const DWORD group = SClasses::Make(*made->fixed, *made->shop, {member});
                SClasses::Make(*made->second, *made->fixed, {group}); // what is above needs memory
            }
            return made;
        },
        [](const auto& made) { made->shop->SetEffective(false); },
        [](const auto& made) {
            EXPECT_TRUE(made->shop->IsEffective());
            EXPECT_TRUE(made->shop->SetEffective(false)); // again
            EXPECT_EQ(made->fixed->GetIneffectiveBtnCount(), 3u);
            EXPECT_TRUE(made->shop->SetEffective(true));
            EXPECT_EQ(made->fixed->GetIneffectiveBtnCount(), 0u);
            for (DWORD btnID = VIR; btnID < VIR + 3; ++btnID)
                EXPECT_EQ(SClasses::Recs(*made->second, btnID).size(), 2u);
        });
    EXPECT_GT(failures, 3);
}

TEST(CVirBtnClass, ExhaustedMemoryInACopyLeavesItEmpty)
{
    const int failures = FailEveryAllocation(
        [] {
            auto classes = std::make_unique<SClasses>();
            SClasses::Make(*classes->fixed, *classes->shop, {2, 3});
            return classes;
        },
        [](const auto& classes) { classes->second->Copy(*classes->fixed, classes->rpLink); },
        [](const auto& classes) {
            EXPECT_EQ(classes->second->GetBtnCount(), 0u);
            EXPECT_EQ(classes->second->GetRefCount(SHOP), 0u);
        });
    EXPECT_GT(failures, 0);
}

} // namespace
