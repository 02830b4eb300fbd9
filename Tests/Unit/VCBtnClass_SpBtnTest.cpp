#include "CBnLink_OnMemVer.h"
#include "CCllBtn.h"
#include "CFormattedMsg.h"
#include "CIncBtn.h"
#include "CNumBtnClass.h"
#include "CRpLink_OnMemVer.h"
#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "Support/CAllocFault.h"
#include "Support/CTestBtnCnd.h"

#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <sstream>
#include <string>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using List = std::vector<DWORD>;
using Class = VCBtnClass;

constexpr DWORD CLASS_ID = 3;
constexpr DWORD INC = SCBUICoreCom::BTN_ID_INC_BEGIN;
constexpr DWORD CLL = SCBUICoreCom::BTN_ID_CLL_BEGIN;
constexpr DWORD VIRINC = SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
constexpr DWORD A = 2;
constexpr DWORD B = 3;
constexpr DWORD C = 4;
constexpr DWORD D = 5;
constexpr DWORD E = 6;
constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;
constexpr auto CONDITION = VCSpBtn::MMBBTNSELMTH_CONDITION;

// A class that lets a test at what derived classes and the environment work on.
class CProbe final : public VCSrcBtnClass
{
public:
    explicit CProbe(const std::unique_ptr<IRpLink>& rpLinkOfEnv, DWORD classID = CLASS_ID)
        : VCSrcBtnClass(classID, 1, "empty", nullptr, rpLinkOfEnv)
    {}
    ~CProbe() override { refOrgBtnClasses.clear(); } // the others stood in and may be gone
    SCBUICoreCom::EBtnClassType GetBtnClassType() const override { return SCBUICoreCom::BTNCLSTYPE_NORMAL; }
    bool GetBtnMngrInfoOfSpBtn(DWORD btnID, bool& managedByUser) const override
    {
        if (unmanagedIDs.count(btnID) != 0)
            return false;
        if (carryingIDs.count(btnID) != 0)
            return true;
        if (systemIDs.count(btnID) == 0)
            return VCSrcBtnClass::GetBtnMngrInfoOfSpBtn(btnID, managedByUser);
        managedByUser = false;
        return true;
    }
    std::set<DWORD> systemIDs;    // managed by the system
    std::set<DWORD> unmanagedIDs; // of which the class says nothing
    std::set<DWORD> carryingIDs;  // of which it says that it knows, and does not say what
    using VCSrcBtnClass::CheckAppropriateMmbBtnOrNot;
    using VCSrcBtnClass::CheckWhetherToHaveSpecificBtnID;
    using VCSrcBtnClass::cllBlankIDList;
    using VCSrcBtnClass::cllNextID;
    using VCSrcBtnClass::CreateBtnBasedOnBtnID;
    using VCSrcBtnClass::CreateBtnBasedOnBtnType;
    using VCSrcBtnClass::CreateBtnBasedOnBtnTypeAttrValue;
    using VCSrcBtnClass::FindBtn;
    using VCSrcBtnClass::FindSpBtn;
    using VCSrcBtnClass::GetAllSpBtnList;
    using VCSrcBtnClass::incBlankIDList;
    using VCSrcBtnClass::incNextID;
    using VCSrcBtnClass::IsSpBtnWithRpLink;
    using VCSrcBtnClass::refOrgBtnClasses;
    using VCSrcBtnClass::RegBtn;
    using VCSrcBtnClass::RegSpBtn;
    using VCSrcBtnClass::SetOwnVisibleInfo;
    using VCSrcBtnClass::spBtnCount;
};

// A class of the values a to e (buttons 2 to 6), record i having the i-th of them, and its tables.
class CClassFixture
{
public:
    explicit CClassFixture(const std::vector<const char*>& values)
        : rpLink(std::make_unique<CRpLink_OnMemVer>()), btnClass(rpLink), cells(values.size())
    {
        const auto count = static_cast<DWORD>(values.size());
        TCBtnIDAssArr<DWORD> counts;
        btnClass.AddRecs(0, count, values.data(), cells.data(), counts);
        rpLink->InsertFld(CLASS_ID);
        for (DWORD rec = 0; rec < count; ++rec)
            rpLink->AddRecList(CLASS_ID, cells[rec], &rec, 1);
        bnLink.InsertFld(CLASS_ID, count, cells.data());
        btnClass.SetBtnAppOrdList(bnLink);
    }

    DWORD MakeInc(const List& members, const char* text = "inc")
    {
        DWORD btnID = 0;
        EXPECT_EQ(btnClass.CreateIncBtn(text, SELECT, &members, nullptr, btnID), Class::CREATESPBTN_OK);
        return btnID;
    }
    DWORD MakeCll(const List& members, const char* text = "cll")
    {
        DWORD btnID = 0;
        EXPECT_EQ(btnClass.CreateCllBtn(text, SELECT, &members, nullptr, btnID), Class::CREATESPBTN_OK);
        return btnID;
    }
    // A condition cll button that has picked these.
    DWORD MakeCnd(const List& members, const char* text = "cnd")
    {
        DWORD btnID = 0;
        const CTestBtnCnd cnd(members);
        EXPECT_EQ(btnClass.CreateCllBtn(text, CONDITION, nullptr, &cnd, btnID), Class::CREATESPBTN_OK);
        EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(btnID, members), Class::OPEMMBBTN_OK);
        return btnID;
    }
    unsigned int Why(DWORD btnID) const
    {
        unsigned int visibleInfo = 4711;
        btnClass.GetVisibleInfoOfBtn(btnID, visibleInfo);
        return visibleInfo;
    }
    List Members(DWORD btnID) const
    {
        List members{4711};
        btnClass.GetMemberBtnIDListOfSpBtn(btnID, members);
        return members;
    }
    List Holders(DWORD btnID) const
    {
        List holders{4711};
        btnClass.GetSpBtnIDListIncludingSpecifiedBtn(btnID, holders);
        return holders;
    }
    List Recs(DWORD btnID) const
    {
        List areas[3] = {List(cells.size()), List(cells.size()), List(cells.size())};
        DWORD* recs = areas[0].data();
        DWORD* buffers[] = {areas[1].data(), areas[2].data()};
        DWORD count = 0;
        EXPECT_TRUE(btnClass.GetRecListThatRelatesToBtn(btnID, recs, count, buffers));
        return List(recs, recs + count);
    }
    // How many records the table has for the button itself.
    DWORD RowSize(DWORD btnID) const
    {
        DWORD count = 0;
        rpLink->GetRecCount(CLASS_ID, btnID, count);
        return count;
    }
    List AppOrder(unsigned int flags) const
    {
        List order;
        btnClass.GetBtnAppOrdList(flags, order);
        return order;
    }
    List NameOrder(unsigned int flags) const
    {
        List order;
        btnClass.GetBtnNameOrdList(flags, order);
        return order;
    }
    // All that can be told of the class's buttons, but the times.
    std::string Describe() const
    {
        std::ostringstream text;
        List all;
        btnClass.GetAllBtnIDList(all, true);
        for (const DWORD btnID : all) {
            const char* shown = nullptr;
            btnClass.GetAliasOfBtn(btnID, shown);
            text << btnID << ' ' << (shown == nullptr ? "-" : shown) << " why " << Why(btnID) << " in";
            for (const DWORD holder : Holders(btnID))
                text << ' ' << holder;
            if (SCBUICoreCom::IsSpBtn(btnID)) {
                text << " of";
                for (const DWORD member : Members(btnID))
                    text << ' ' << member;
                text << " effective " << btnClass.ExistTheBtn(btnID);
            }
            text << " recs";
            for (const DWORD rec : Recs(btnID))
                text << ' ' << rec;
            text << '\n';
        }
        for (const DWORD btnID : NameOrder(Class::ORDLIST_INCLUDE_NONDISPBTNS))
            text << btnID << ' ';
        text << "| " << btnClass.spBtnCount << ' ' << btnClass.GetIneffectiveBtnCount() << ' '
             << btnClass.GetSelBtnCount() << ' ' << btnClass.incNextID << ' ' << btnClass.cllNextID;
        for (const DWORD btnID : btnClass.incBlankIDList)
            text << ' ' << btnID;
        return text.str();
    }

    std::unique_ptr<IRpLink> rpLink;
    CBnLink_OnMemVer bnLink;
    CProbe btnClass;
    List cells;
};

class VCBtnClass_SpBtnTest : public ::testing::Test, protected CClassFixture
{
protected:
    VCBtnClass_SpBtnTest() : CClassFixture({"a", "b", "c", "d", "e"}) {}
};

// --- Making and going

TEST_F(VCBtnClass_SpBtnTest, TheSmallestReleasedIdentifierIsGivenOutFirst)
{
    for (DWORD i = 0; i < 5; ++i)
        EXPECT_EQ(MakeInc({A}), INC + i);
    EXPECT_TRUE(btnClass.DestroyIncBtn(INC + 3));
    EXPECT_TRUE(btnClass.DestroyIncBtn(INC + 1));
    EXPECT_EQ(MakeInc({A}), INC + 1);
    EXPECT_EQ(MakeInc({A}), INC + 3);
    EXPECT_EQ(MakeInc({A}), INC + 5);
    EXPECT_EQ(MakeCll({A}), CLL); // another kind, other identifiers
}

TEST_F(VCBtnClass_SpBtnTest, WithoutIdentifiersNoButtonIsMade)
{
    btnClass.incNextID = SCBUICoreCom::BTN_ID_INC_END + 1;
    btnClass.cllNextID = SCBUICoreCom::BTN_ID_CLL_END;
    DWORD btnID = 4711;
    const List members{A};
    EXPECT_EQ(btnClass.CreateIncBtn("x", SELECT, &members, nullptr, btnID), Class::CREATESPBTN_NOID);
    EXPECT_EQ(btnID, 4711u);
    EXPECT_EQ(Holders(A), List());
    EXPECT_EQ(btnClass.CreateCllBtn("x", SELECT, &members, nullptr, btnID), Class::CREATESPBTN_OK);
    EXPECT_EQ(btnID, SCBUICoreCom::BTN_ID_CLL_END); // the last one is given
    EXPECT_EQ(btnClass.CreateCllBtn("x", SELECT, &members, nullptr, btnID), Class::CREATESPBTN_NOID);
    btnClass.DestroyCllBtn(SCBUICoreCom::BTN_ID_CLL_END);
    EXPECT_EQ(btnClass.CreateCllBtn("x", SELECT, &members, nullptr, btnID), Class::CREATESPBTN_OK);
}

TEST_F(VCBtnClass_SpBtnTest, ARefusedButtonLeavesItsIdentifierReleased)
{
    DWORD btnID = 4711;
    const List unknown{A, INC + 7};
    EXPECT_EQ(btnClass.CreateCllBtn("x", SELECT, &unknown, nullptr, btnID), Class::CREATESPBTN_BADMEMBER);
    EXPECT_EQ(btnClass.CreateCllBtn("x", static_cast<VCSpBtn::EMmbBtnSelMth>(3), &unknown, nullptr, btnID),
              Class::CREATESPBTN_UNKNOWNSELMTH);
    EXPECT_EQ(btnID, 4711u);
    EXPECT_EQ(btnClass.cllNextID, CLL + 1);
    EXPECT_EQ(btnClass.cllBlankIDList, std::set<DWORD>{CLL});
    EXPECT_EQ(btnClass.GetBtnCount(), 6u);
    EXPECT_EQ(Holders(A), List());
    EXPECT_EQ(MakeCll({A}), CLL);
    EXPECT_TRUE(btnClass.cllBlankIDList.empty());
}

TEST_F(VCBtnClass_SpBtnTest, RegistrationRefusesNothingAndATakenIdentifier)
{
    EXPECT_EQ(btnClass.RegSpBtn(nullptr, "x", nullptr, nullptr), Class::CREATESPBTN_NULL);
    MakeInc({A});
    EXPECT_EQ(btnClass.RegSpBtn(std::make_unique<CIncBtn>(INC, SELECT), "x", nullptr, nullptr),
              Class::CREATESPBTN_DUPLICATEID);
    EXPECT_EQ(btnClass.spBtnCount, 1u);
}

TEST_F(VCBtnClass_SpBtnTest, AButtonWithoutAListIsNotMarkedAsEmpty)
{
    DWORD btnID = 0;
    EXPECT_EQ(btnClass.CreateIncBtn("x", SELECT, nullptr, nullptr, btnID), Class::CREATESPBTN_OK);
    EXPECT_EQ(Why(btnID), 0u);
    EXPECT_EQ(Why(MakeInc({})), VISINFO_NOMEMBER | VISINFO_NOLIVEMEMBER);
    EXPECT_EQ(btnClass.CreateIncBtn(nullptr, SELECT, nullptr, nullptr, btnID), Class::CREATESPBTN_OK);
    const char* text = nullptr;
    EXPECT_TRUE(btnClass.GetAliasOfBtn(btnID, text));
    EXPECT_STREQ(text, "");
}

TEST_F(VCBtnClass_SpBtnTest, MembersAreTakenOnceInFirstPlaceAndKnowTheirHolder)
{
    const DWORD inc = MakeInc({D, A, D, 99, A});
    EXPECT_EQ(Members(inc), List({D, A, 99})); // a value that may come is kept
    EXPECT_EQ(Holders(A), List({inc}));
    EXPECT_EQ(Holders(D), List({inc}));
    EXPECT_EQ(Recs(inc), List({0, 3}));
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(inc, {B, B, A}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Members(inc), List({B, A}));
    EXPECT_EQ(Holders(D), List());
    EXPECT_EQ(Why(D), 0u);
    DWORD count = 0;
    EXPECT_TRUE(btnClass.GetMemberBtnCountOfSpBtn(inc, count));
    EXPECT_EQ(count, 2u);
}

TEST_F(VCBtnClass_SpBtnTest, EachKindHidesItsMembersInItsOwnWay)
{
    const DWORD inc = MakeInc({A});
    const DWORD cll = MakeCll({B});
    const DWORD cnd = MakeCnd({C});
    EXPECT_EQ(Why(A), VISINFO_INCMEMBER);
    EXPECT_EQ(Why(B), VISINFO_SELCLLMEMBER);
    EXPECT_EQ(Why(C), VISINFO_CNDCLLMEMBER);
    for (const DWORD spBtnID : {inc, cll, cnd})
        EXPECT_EQ(Why(spBtnID), 0u);
    EXPECT_TRUE(btnClass.SetDispMemberBtnInfoOfIncBtn(inc, true));
    EXPECT_EQ(Why(A), 0u);
    bool disp = false;
    EXPECT_TRUE(btnClass.GetDispMemberBtnInfoOfIncBtn(inc, disp));
    EXPECT_TRUE(disp);
    EXPECT_TRUE(btnClass.SetDispMemberBtnInfoOfIncBtn(inc, true)); // unchanged
    EXPECT_FALSE(btnClass.SetDispMemberBtnInfoOfIncBtn(cll, true));
    EXPECT_FALSE(btnClass.GetDispMemberBtnInfoOfIncBtn(cll, disp));

    // One inc button that displays its members is enough.
    const DWORD hiding = MakeInc({A});
    EXPECT_EQ(Why(A), 0u);
    EXPECT_TRUE(btnClass.SetDispMemberBtnInfoOfIncBtn(inc, false));
    EXPECT_EQ(Why(A), VISINFO_INCMEMBER);
    // The last inc button gone, the reason is gone.
    EXPECT_TRUE(btnClass.DestroyIncBtn(inc));
    EXPECT_EQ(Why(A), VISINFO_INCMEMBER);
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(hiding, {B}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Why(A), 0u);
    EXPECT_EQ(Why(B), VISINFO_INCMEMBER | VISINFO_SELCLLMEMBER);
}

TEST_F(VCBtnClass_SpBtnTest, AMemberOfTwoCllButtonsStaysHiddenUntilBothLetGo)
{
    const DWORD first = MakeCll({A, B});
    const DWORD second = MakeCll({A});
    EXPECT_TRUE(btnClass.DestroyCllBtn(first));
    EXPECT_EQ(Why(A), VISINFO_SELCLLMEMBER);
    EXPECT_EQ(Why(B), 0u);
    const DWORD cnd = MakeCnd({A});
    EXPECT_EQ(Why(A), VISINFO_SELCLLMEMBER | VISINFO_CNDCLLMEMBER);
    EXPECT_TRUE(btnClass.DestroyCllBtn(second)); // a condition cll button is one too
    EXPECT_EQ(Why(A), VISINFO_SELCLLMEMBER | VISINFO_CNDCLLMEMBER);
    EXPECT_TRUE(btnClass.DestroyCllBtn(cnd));
    EXPECT_EQ(Why(A), 0u);
}

TEST_F(VCBtnClass_SpBtnTest, AMemberOfTwoConditionCllButtonsLosesTheReasonWhenEitherLetsGo)
{
    const DWORD first = MakeCnd({A});
    MakeCnd({A});
    EXPECT_TRUE(btnClass.DestroyCllBtn(first));
    EXPECT_EQ(Why(A), 0u);
    EXPECT_EQ(Holders(A).size(), 1u);
}

TEST_F(VCBtnClass_SpBtnTest, ADestroyedMemberLeavesItsHolders)
{
    const DWORD inner = MakeInc({A});
    const DWORD outer = MakeCll({inner, B});
    const DWORD onlyInner = MakeCll({inner});
    const DWORD top = MakeInc({onlyInner});
    EXPECT_TRUE(btnClass.DestroyIncBtn(inner));
    EXPECT_EQ(Members(outer), List({B}));
    EXPECT_EQ(Why(outer), 0u);
    EXPECT_EQ(Members(onlyInner), List());
    EXPECT_EQ(Why(onlyInner), VISINFO_NOLIVEMEMBER | VISINFO_INCMEMBER); // emptied, not set to be empty
    EXPECT_EQ(Why(top), VISINFO_NOLIVEMEMBER);                           // and what is above is told
    EXPECT_EQ(Holders(A), List());
    EXPECT_EQ(Why(A), 0u);
    EXPECT_FALSE(btnClass.DestroyIncBtn(inner));
    EXPECT_FALSE(btnClass.DestroyIncBtn(outer)); // a cll button
    EXPECT_FALSE(btnClass.DestroyCllBtn(A));
    EXPECT_EQ(btnClass.spBtnCount, 3u);
}

TEST_F(VCBtnClass_SpBtnTest, ADestroyedSelectedButtonIsCountedNoMore)
{
    const DWORD inc = MakeInc({A});
    btnClass.SetSelectionInfoOfBtn(inc, true);
    btnClass.SetSelectionInfoOfBtn(B, true);
    EXPECT_TRUE(btnClass.DestroyIncBtn(inc));
    EXPECT_EQ(btnClass.GetSelBtnCount(), 1u);
    EXPECT_TRUE(btnClass.IsBtnSelectiveState());
    btnClass.SetSelectionInfoOfBtn(B, false);
    const DWORD another = MakeInc({A});
    bool sel = true;
    EXPECT_TRUE(btnClass.GetSelectionInfoOfBtn(another, sel));
    EXPECT_FALSE(sel);
    btnClass.SetSelectionInfoOfBtn(another, true);
    EXPECT_TRUE(btnClass.DestroyIncBtn(another));
    EXPECT_EQ(btnClass.GetSelBtnCount(), 0u);
    EXPECT_FALSE(btnClass.IsBtnSelectiveState());
}

// --- What may be a member

TEST_F(VCBtnClass_SpBtnTest, AConditionButtonIsNoMember)
{
    const DWORD cnd = MakeCnd({A});
    DWORD btnID = 0;
    const List members{cnd};
    EXPECT_EQ(btnClass.CreateIncBtn("x", SELECT, &members, nullptr, btnID), Class::CREATESPBTN_BADMEMBER);
    const DWORD inc = MakeInc({B});
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(inc, {cnd}), Class::OPEMMBBTN_BADMEMBER);
    EXPECT_EQ(Members(inc), List({B}));
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(cnd, {inc, B}),
              Class::OPEMMBBTN_OK); // the other way is fine
    EXPECT_EQ(Why(inc), VISINFO_CNDCLLMEMBER);
}

TEST_F(VCBtnClass_SpBtnTest, AListThatWouldCloseALoopIsRefused)
{
    const DWORD inner = MakeInc({A});
    const DWORD middle = MakeCll({inner});
    const DWORD outer = MakeInc({middle});
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(inner, {A, outer}), Class::OPEMMBBTN_BADMEMBER);
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(inner, {inner}), Class::OPEMMBBTN_BADMEMBER);
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(outer, {inner, middle}), Class::OPEMMBBTN_OK);
    EXPECT_TRUE(btnClass.CheckWhetherToHaveSpecificBtnID(outer, CLASS_ID, A));
    EXPECT_TRUE(btnClass.CheckWhetherToHaveSpecificBtnID(outer, CLASS_ID, outer));
    EXPECT_FALSE(btnClass.CheckWhetherToHaveSpecificBtnID(outer, CLASS_ID, B));
    EXPECT_FALSE(btnClass.CheckWhetherToHaveSpecificBtnID(outer, CLASS_ID + 1, A));
    EXPECT_FALSE(btnClass.CheckWhetherToHaveSpecificBtnID(INC + 50, CLASS_ID, A));
    EXPECT_FALSE(btnClass.CheckWhetherToHaveSpecificBtnID(A, CLASS_ID, B));
    EXPECT_TRUE(btnClass.CheckWhetherToHaveSpecificBtnID(A, CLASS_ID, A));
    EXPECT_FALSE(btnClass.CheckAppropriateMmbBtnOrNot(nullptr, {}));
    EXPECT_TRUE(btnClass.CheckAppropriateMmbBtnOrNot(btnClass.FindSpBtn(inner), {}));
}

TEST_F(VCBtnClass_SpBtnTest, ALoopMadeByAddingEndsEveryWalk)
{
    const DWORD inner = MakeInc({A});
    const DWORD outer = MakeCll({inner});
    EXPECT_EQ(btnClass.AddMemberBtnIDListOfSpBtn(inner, outer), Class::OPEMMBBTN_OK); // not tested
    EXPECT_EQ(Recs(inner), List({0}));
    EXPECT_EQ(Recs(outer), List({0}));
    EXPECT_TRUE(btnClass.ResetInsideInfoForSpBtn(inner, true, true));
    btnClass.ResetLiveMemberInfoOfAllSpBtns({&btnClass});
    std::set<DWORD> minimum;
    EXPECT_TRUE(btnClass.GetMinimumMemberBtnIDListInThisBtnClassOfSpBtn(outer, minimum));
    EXPECT_EQ(minimum, std::set<DWORD>{A});
    List roots{1};
    EXPECT_TRUE(btnClass.GetRootSpBtnIDListIncludingBtn(A, true, roots));
    EXPECT_EQ(roots, List()); // each is held by the other
    EXPECT_TRUE(btnClass.DestroyCllBtn(outer));
    EXPECT_EQ(Members(inner), List({A}));
}

TEST_F(VCBtnClass_SpBtnTest, ANewButtonClosesNoLoopThroughAnIdentifierThatWasAddedUntested)
{
    const DWORD holder = MakeInc({A});
    EXPECT_EQ(btnClass.AddMemberBtnIDListOfSpBtn(holder, INC + 1), Class::OPEMMBBTN_OK); // there is none yet
    DWORD btnID = 0;
    const List members{holder};
    EXPECT_EQ(btnClass.CreateIncBtn("x", SELECT, &members, nullptr, btnID), Class::CREATESPBTN_BADMEMBER);
    EXPECT_EQ(MakeInc({B}), INC + 1);
}

TEST_F(VCBtnClass_SpBtnTest, AButtonWakesInAHolderThatNamesValuesWhichCameLater)
{
    const DWORD member = MakeInc({A});
    const DWORD holder = MakeInc({member, 7, 8});
    btnClass.SetEffectiveInfoOfSpBtn(member, false);
    const char* const values[] = {"f", "g"};
    DWORD added[2];
    TCBtnIDAssArr<DWORD> counts;
    btnClass.AddRecs(5, 2, values, added, counts);
    EXPECT_EQ(added[1], 8u);
    btnClass.SetEffectiveInfoOfSpBtn(member, true);
    EXPECT_EQ(Members(holder), List({7, 8, member}));
    EXPECT_EQ(Holders(8), List({holder}));
    EXPECT_EQ(Why(7), VISINFO_INCMEMBER);
}

TEST_F(VCBtnClass_SpBtnTest, AddingTakesNoReasonAwayFromFormerMembers)
{
    const DWORD cll = MakeCll({A});
    const DWORD cnd = MakeCnd({A});
    btnClass.DestroyCllBtn(cll);
    EXPECT_EQ(Why(A), VISINFO_SELCLLMEMBER | VISINFO_CNDCLLMEMBER);
    EXPECT_EQ(btnClass.AddMemberBtnIDListOfSpBtn(cnd, B), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Why(A), VISINFO_SELCLLMEMBER | VISINFO_CNDCLLMEMBER);
}

TEST_F(VCBtnClass_SpBtnTest, TheLoopTestKnowsWhatIneffectiveButtonsRemember)
{
    const DWORD member = MakeInc({A});
    const DWORD holder = MakeInc({member, B});
    EXPECT_TRUE(btnClass.SetEffectiveInfoOfSpBtn(member, false));
    EXPECT_EQ(Members(holder), List({B}));
    // The member will come back to the holder, so the holder may not go into it.
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(member, {holder}), Class::OPEMMBBTN_BADMEMBER);
    EXPECT_TRUE(btnClass.SetEffectiveInfoOfSpBtn(member, true));
    EXPECT_EQ(Members(holder), List({B, member}));
    // And an ineffective holder still holds.
    EXPECT_TRUE(btnClass.SetEffectiveInfoOfSpBtn(holder, false));
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(member, {holder}), Class::OPEMMBBTN_BADMEMBER);
}

TEST_F(VCBtnClass_SpBtnTest, AHiddenEmptyValueIsNoMember)
{
    const DWORD inc = MakeInc({1, A});
    const DWORD sleeping = MakeInc({1, B});
    const DWORD emptied = MakeCll({1});
    EXPECT_TRUE(btnClass.SetEffectiveInfoOfSpBtn(sleeping, false));
    btnClass.SetDispEmpValBtnInfo(false);
    EXPECT_EQ(Members(inc), List({A}));
    EXPECT_EQ(Members(sleeping), List({B}));
    EXPECT_EQ(Members(emptied), List());
    EXPECT_EQ(Why(emptied), VISINFO_NOLIVEMEMBER);
    EXPECT_EQ(Why(1), VISINFO_EMPVALNODISP | VISINFO_NOREC);
    EXPECT_EQ(Holders(1), List());
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(inc, {A, 1}), Class::OPEMMBBTN_BADMEMBER);
    DWORD btnID = 0;
    const List withIt{1};
    EXPECT_EQ(btnClass.CreateIncBtn("x", SELECT, &withIt, nullptr, btnID), Class::CREATESPBTN_BADMEMBER);
    btnClass.SetDispEmpValBtnInfo(true);
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(inc, {A, 1}), Class::OPEMMBBTN_OK);
    EXPECT_TRUE(btnClass.SetEffectiveInfoOfSpBtn(sleeping, true));
    EXPECT_EQ(Members(sleeping), List({B}));
}

TEST_F(VCBtnClass_SpBtnTest, OperationsOnMembersTellWhatIsWrong)
{
    const DWORD inc = MakeInc({A});
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(A, {B}), Class::OPEMMBBTN_NOSPBTN);
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(INC + 9, {B}), Class::OPEMMBBTN_NOSPBTN);
    EXPECT_EQ(btnClass.AddMemberBtnIDListOfSpBtn(A, B), Class::OPEMMBBTN_NOSPBTN);
    EXPECT_EQ(btnClass.AddMemberBtnIDListOfSpBtn(inc, A), Class::OPEMMBBTN_NOMEMBER);
    EXPECT_EQ(btnClass.DeleteMemberBtnIDListOfSpBtn(B, A), Class::OPEMMBBTN_NOSPBTN);
    EXPECT_EQ(btnClass.DeleteMemberBtnIDListOfSpBtn(inc, B), Class::OPEMMBBTN_NOMEMBER);
    EXPECT_EQ(btnClass.AddMemberBtnIDListOfSpBtn(inc, B), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Members(inc), List({A, B}));
    EXPECT_EQ(btnClass.DeleteMemberBtnIDListOfSpBtn(inc, A), Class::OPEMMBBTN_OK);
    EXPECT_EQ(btnClass.DeleteMemberBtnIDListOfSpBtn(inc, B), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Why(inc), VISINFO_NOMEMBER | VISINFO_NOLIVEMEMBER);
    EXPECT_EQ(btnClass.AddMemberBtnIDListOfSpBtn(inc, C), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Why(inc), VISINFO_NOMEMBER); // adding leaves the mark
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(inc, {C}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Why(inc), 0u);
}

TEST_F(VCBtnClass_SpBtnTest, ConditionsAreClonedAndLetGo)
{
    int living = 0;
    const CTestBtnCnd cnd({A}, &living);
    DWORD btnID = 0;
    EXPECT_EQ(btnClass.CreateCllBtn("x", CONDITION, nullptr, &cnd, btnID), Class::CREATESPBTN_OK);
    EXPECT_EQ(living, 1);
    const IBtnCnd* held = nullptr;
    EXPECT_EQ(btnClass.GetMemberBtnCndOfSpBtn(btnID, held), Class::GETMMBBTNCND_OK);
    EXPECT_NE(held, &cnd);
    EXPECT_EQ(btnClass.SetMemberBtnCndOfSpBtn(btnID, *held), Class::SETMMBBTNCND_OK); // by itself
    EXPECT_EQ(living, 1);
    EXPECT_TRUE(btnClass.ClearMemberBtnCndOfSpBtn(btnID));
    EXPECT_EQ(living, 0);
    EXPECT_TRUE(btnClass.ClearMemberBtnCndOfSpBtn(btnID));
    EXPECT_EQ(btnClass.GetMemberBtnCndOfSpBtn(btnID, held), Class::GETMMBBTNCND_NOCND);
    const DWORD inc = MakeInc({A});
    EXPECT_EQ(btnClass.SetMemberBtnCndOfSpBtn(inc, cnd), Class::SETMMBBTNCND_NOTCNDBTN);
    EXPECT_EQ(btnClass.SetMemberBtnCndOfSpBtn(A, cnd), Class::SETMMBBTNCND_NOSPBTN);
    EXPECT_EQ(btnClass.GetMemberBtnCndOfSpBtn(A, held), Class::GETMMBBTNCND_NOSPBTN);
    EXPECT_FALSE(btnClass.ClearMemberBtnCndOfSpBtn(A));
    EXPECT_EQ(btnClass.SetMemberBtnCndOfSpBtn(btnID, cnd), Class::SETMMBBTNCND_OK);
    EXPECT_EQ(living, 1);
    EXPECT_TRUE(btnClass.DestroyCllBtn(btnID));
    EXPECT_EQ(living, 0);
}

// --- Effectiveness

TEST_F(VCBtnClass_SpBtnTest, AnIneffectiveButtonLeavesItsHoldersAndLetsItsMembersGo)
{
    const DWORD inner = MakeInc({A});
    const DWORD outer = MakeCll({inner, B});
    EXPECT_TRUE(btnClass.SetEffectiveInfoOfSpBtn(inner, false));
    EXPECT_EQ(Why(inner), VISINFO_INEFFECTIVE | VISINFO_SELCLLMEMBER);
    EXPECT_EQ(Members(outer), List({B}));
    EXPECT_EQ(Recs(outer), List({1}));
    EXPECT_EQ(Members(inner), List({A}));
    EXPECT_EQ(Holders(A), List());
    EXPECT_EQ(Why(A), 0u);
    EXPECT_EQ(Recs(inner), List()); // it has no records while it sleeps
    EXPECT_EQ(btnClass.spBtnCount, 1u);
    EXPECT_EQ(btnClass.GetIneffectiveBtnCount(), 1u);
    List btnIDs;
    EXPECT_EQ(btnClass.GetAllUneffectiveBtnIDList(btnIDs), 1u);
    EXPECT_EQ(btnIDs, List({inner}));
    EXPECT_EQ(NameOrder(Class::ORDLIST_INCLUDE_NONDISPBTNS), List({A, B, C, outer, D, E}));
    EXPECT_EQ(AppOrder(Class::ORDLIST_INCLUDE_NONDISPBTNS), List({outer, A, B, C, D, E}));
    bool effective = true;
    EXPECT_TRUE(btnClass.GetEffectiveInfoOfSpBtn(inner, effective));
    EXPECT_FALSE(effective);
    EXPECT_TRUE(btnClass.SetEffectiveInfoOfSpBtn(inner, false)); // unchanged
    EXPECT_FALSE(btnClass.SetEffectiveInfoOfSpBtn(A, false));
    EXPECT_FALSE(btnClass.GetEffectiveInfoOfSpBtn(A, effective));

    EXPECT_TRUE(btnClass.SetEffectiveInfoOfSpBtn(inner, true));
    EXPECT_EQ(Why(inner), VISINFO_SELCLLMEMBER);
    EXPECT_EQ(Members(outer), List({B, inner})); // behind the others
    EXPECT_EQ(Holders(A), List({inner}));
    EXPECT_EQ(Why(A), VISINFO_INCMEMBER);
    EXPECT_EQ(Recs(outer), List({0, 1}));
    EXPECT_EQ(btnClass.spBtnCount, 2u);
    EXPECT_EQ(NameOrder(Class::ORDLIST_INCLUDE_NONDISPBTNS), List({A, B, C, outer, D, E, inner}));
}

TEST_F(VCBtnClass_SpBtnTest, AnIneffectiveButtonStoresAListAndUsesItWhenItIsBack)
{
    const DWORD inc = MakeInc({A});
    EXPECT_TRUE(btnClass.SetEffectiveInfoOfSpBtn(inc, false));
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(inc, {B, C}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Holders(B), List());
    EXPECT_EQ(Why(B), 0u);
    EXPECT_EQ(btnClass.AddMemberBtnIDListOfSpBtn(inc, D), Class::OPEMMBBTN_OK);
    EXPECT_TRUE(btnClass.SetEffectiveInfoOfSpBtn(inc, true));
    EXPECT_EQ(Recs(inc), List({1, 2, 3}));
    EXPECT_EQ(Why(B), VISINFO_INCMEMBER);
    EXPECT_EQ(Why(A), 0u);
    EXPECT_EQ(Why(inc), 0u);
}

TEST_F(VCBtnClass_SpBtnTest, AHolderSeesThatASleepingMemberHasBeenEmptied)
{
    const DWORD member = MakeInc({A});
    btnClass.SetEffectiveInfoOfSpBtn(member, false);
    const DWORD holder = MakeInc({member});
    const DWORD top = MakeInc({holder});
    EXPECT_EQ(Why(holder), VISINFO_INCMEMBER);
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(member, {}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Why(holder), VISINFO_NOLIVEMEMBER | VISINFO_INCMEMBER);
    EXPECT_EQ(Why(top), VISINFO_NOLIVEMEMBER);
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(member, {B}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Why(top), 0u);
}

TEST_F(VCBtnClass_SpBtnTest, TwoNestedButtonsSleepAndWakeInAnyOrder)
{
    for (const bool memberSleepsFirst : {true, false}) {
        for (const bool memberWakesFirst : {true, false}) {
            SCOPED_TRACE(std::string(memberSleepsFirst ? "member" : "holder") + " sleeps first, " +
                         (memberWakesFirst ? "member" : "holder") + " wakes first");
            const DWORD member = MakeInc({A});
            const DWORD holder = MakeInc({member, B});
            btnClass.SetEffectiveInfoOfSpBtn(memberSleepsFirst ? member : holder, false);
            btnClass.SetEffectiveInfoOfSpBtn(memberSleepsFirst ? holder : member, false);
            btnClass.SetEffectiveInfoOfSpBtn(memberWakesFirst ? member : holder, true);
            if (memberWakesFirst) {
                EXPECT_EQ(Why(member), 0u); // what sleeps hides nobody
                EXPECT_EQ(Recs(member), List({0}));
            } else {
                EXPECT_EQ(Recs(holder), List({1})); // what sleeps gives nothing
            }
            btnClass.SetEffectiveInfoOfSpBtn(memberWakesFirst ? holder : member, true);
            List members = Members(holder);
            std::sort(members.begin(), members.end());
            EXPECT_EQ(members, List({B, member}));
            EXPECT_EQ(Holders(member), List({holder}));
            EXPECT_EQ(Recs(holder), List({0, 1}));
            EXPECT_EQ(Why(member), VISINFO_INCMEMBER);
            EXPECT_EQ(Why(A), VISINFO_INCMEMBER);
            EXPECT_TRUE(btnClass.DestroyIncBtn(holder));
            EXPECT_TRUE(btnClass.DestroyIncBtn(member));
        }
    }
}

TEST_F(VCBtnClass_SpBtnTest, AHolderThatSleepsTakesNoReasonAwayThatAnotherGives)
{
    for (const bool firstSleeps : {true, false}) {
        const DWORD member = MakeCll({A});
        const DWORD first = MakeCnd({member, B});
        const DWORD second = MakeCnd({member, C});
        btnClass.SetEffectiveInfoOfSpBtn(member, false);
        btnClass.SetEffectiveInfoOfSpBtn(firstSleeps ? first : second, false);
        btnClass.SetEffectiveInfoOfSpBtn(member, true);
        EXPECT_EQ(Why(member), VISINFO_CNDCLLMEMBER);
        EXPECT_EQ(Holders(member), List({firstSleeps ? second : first}));
        for (const DWORD spBtnID : {first, second, member})
            EXPECT_TRUE(btnClass.DestroyCllBtn(spBtnID));
    }
}

TEST_F(VCBtnClass_SpBtnTest, WhatIsDestroyedIsForgottenByThoseThatSleep)
{
    const DWORD member = MakeInc({A});
    const DWORD holder = MakeInc({member, B});
    btnClass.SetEffectiveInfoOfSpBtn(member, false);
    EXPECT_TRUE(btnClass.DestroyIncBtn(holder));
    EXPECT_EQ(Holders(member), List());
    const DWORD reused = MakeInc({C});
    EXPECT_EQ(reused, holder);
    btnClass.SetEffectiveInfoOfSpBtn(member, true);
    EXPECT_EQ(Members(reused), List({C})); // an identifier inherits nothing
    EXPECT_EQ(Why(member), 0u);

    // The other way round.
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(reused, {C, member}), Class::OPEMMBBTN_OK);
    btnClass.SetEffectiveInfoOfSpBtn(reused, false);
    EXPECT_TRUE(btnClass.DestroyIncBtn(member));
    EXPECT_EQ(Members(reused), List({C}));
    EXPECT_EQ(MakeInc({D}), member);
    btnClass.SetEffectiveInfoOfSpBtn(reused, true);
    EXPECT_EQ(Holders(member), List());
}

TEST_F(VCBtnClass_SpBtnTest, EffectivenessMovesTheCountOfSelectedButtons)
{
    const DWORD inc = MakeInc({A});
    btnClass.SetSelectionInfoOfBtn(inc, true);
    btnClass.SetEffectiveInfoOfSpBtn(inc, false);
    EXPECT_EQ(btnClass.GetSelBtnCount(), 0u);
    EXPECT_FALSE(btnClass.IsBtnSelectiveState());
    btnClass.SetEffectiveInfoOfSpBtn(inc, true);
    EXPECT_EQ(btnClass.GetSelBtnCount(), 1u);
    EXPECT_TRUE(btnClass.IsBtnSelectiveState());
    btnClass.SetEffectiveInfoOfSpBtn(inc, false);
    btnClass.SetSelectionInfoOfBtn(inc, false); // flips the flag alone
    EXPECT_EQ(btnClass.GetSelBtnCount(), 0u);
    EXPECT_TRUE(btnClass.DestroyIncBtn(inc));
    EXPECT_EQ(btnClass.GetIneffectiveBtnCount(), 0u);
}

// --- Live members

TEST_F(VCBtnClass_SpBtnTest, ValuesThatGoAndComeBackAreToldToThoseAbove)
{
    const DWORD inner = MakeInc({A, B});
    const DWORD outer = MakeCll({inner});
    for (const DWORD rec : {DWORD{1}, DWORD{0}})
        rpLink->DeleteRec(rec, 1);
    btnClass.DeleteRecs(0, 2);
    EXPECT_EQ(Why(inner), VISINFO_NOLIVEMEMBER | VISINFO_SELCLLMEMBER);
    EXPECT_EQ(Why(outer), VISINFO_NOLIVEMEMBER);
    const char* const values[] = {"b"};
    DWORD cell = 0;
    TCBtnIDAssArr<DWORD> counts;
    btnClass.AddRecs(3, 1, values, &cell, counts);
    EXPECT_EQ(Why(inner), VISINFO_SELCLLMEMBER);
    EXPECT_EQ(Why(outer), 0u);
}

TEST_F(VCBtnClass_SpBtnTest, TheLimitationCountsAgainstLiveMembersThroughTheWholeNesting)
{
    const DWORD inner = MakeInc({A});
    const DWORD outer = MakeInc({inner});
    const DWORD sleeping = MakeInc({outer});
    btnClass.SetEffectiveInfoOfSpBtn(sleeping, false);
    btnClass.SetVisibleInfoBasedOnLimitedRecListOfAllBtns(false);
    btnClass.PutVisibleInfoBasedOnLimitedRecListOfBtns({B});
    btnClass.ResetLiveMemberInfoOfAllSpBtns({&btnClass});
    EXPECT_EQ(Why(inner), VISINFO_LIMITEDREC | VISINFO_NOLIVEMEMBER | VISINFO_INCMEMBER);
    EXPECT_EQ(Why(outer), VISINFO_LIMITEDREC | VISINFO_NOLIVEMEMBER);
    EXPECT_NE(Why(sleeping) & VISINFO_NOLIVEMEMBER, 0u);
    btnClass.SetVisibleInfoBasedOnLimitedRecListOfAllBtns(true);
    btnClass.ResetLiveMemberInfoOfAllSpBtns({&btnClass});
    EXPECT_EQ(Why(outer), 0u);
    EXPECT_EQ(Why(sleeping) & VISINFO_NOLIVEMEMBER, 0u);
}

TEST_F(VCBtnClass_SpBtnTest, AConditionButtonIsBroughtBackByItself)
{
    const DWORD cnd = MakeCnd({A});
    const DWORD inc = MakeInc({B});
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    EXPECT_FALSE(btnClass.PutVisibleInfoBasedOnRelationOfCndSpBtn(inc));
    EXPECT_FALSE(btnClass.PutVisibleInfoBasedOnRelationOfCndSpBtn(A));
    EXPECT_FALSE(btnClass.PutVisibleInfoBasedOnRelationOfCndSpBtn(CLL + 9));
    EXPECT_EQ(Why(inc), VISINFO_RELATION);
    btnClass.SetSelectionInfoOfBtn(C, true);
    EXPECT_TRUE(btnClass.PutVisibleInfoBasedOnRelationOfCndSpBtn(cnd));
    EXPECT_EQ(Why(cnd), VISINFO_RELATION); // the class keeps its marks while it is selected in
    btnClass.SetSelectionInfoOfBtn(C, false);
    EXPECT_TRUE(btnClass.PutVisibleInfoBasedOnRelationOfCndSpBtn(cnd));
    EXPECT_EQ(Why(cnd), 0u);
}

// --- Queries through the nesting

TEST_F(VCBtnClass_SpBtnTest, TheNestingIsAskedUpAndDown)
{
    const DWORD inner = MakeInc({A, B});
    const DWORD middle = MakeCll({inner, C});
    const DWORD outer = MakeInc({middle, inner});
    const DWORD other = MakeInc({B});
    std::set<SBtnClassIDAndBtnID> above;
    btnClass.GetSpBtnIDListThatTheSpecifiedBtnInfluences(B, above, false);
    EXPECT_EQ(above, (std::set<SBtnClassIDAndBtnID>{
                         {CLASS_ID, inner}, {CLASS_ID, middle}, {CLASS_ID, outer}, {CLASS_ID, other}}));
    above.clear();
    btnClass.GetSpBtnIDListThatTheSpecifiedBtnInfluences(B, above, true);
    EXPECT_EQ(above, (std::set<SBtnClassIDAndBtnID>{{CLASS_ID, inner}, {CLASS_ID, other}}));
    above.clear();
    btnClass.GetSpBtnIDListThatTheSpecifiedBtnInfluences(999, above, false);
    EXPECT_TRUE(above.empty());

    List roots;
    EXPECT_TRUE(btnClass.GetRootSpBtnIDListIncludingBtn(B, false, roots));
    EXPECT_EQ(roots, List({outer, other}));
    EXPECT_TRUE(btnClass.GetRootSpBtnIDListIncludingBtn(outer, false, roots));
    EXPECT_EQ(roots, List());
    EXPECT_FALSE(btnClass.GetRootSpBtnIDListIncludingBtn(999, false, roots));
    btnClass.SetEffectiveInfoOfSpBtn(outer, false);
    EXPECT_TRUE(btnClass.GetRootSpBtnIDListIncludingBtn(B, false, roots));
    EXPECT_EQ(roots, List({other, middle}));
    EXPECT_TRUE(btnClass.GetRootSpBtnIDListIncludingBtn(B, true, roots));
    EXPECT_EQ(roots, List({outer, other}));

    std::set<SBtnClassIDAndBtnID> minimum;
    EXPECT_TRUE(btnClass.GetMinimumMemberBtnIDListOfSpBtn(middle, minimum));
    EXPECT_EQ(minimum, (std::set<SBtnClassIDAndBtnID>{{CLASS_ID, A}, {CLASS_ID, B}, {CLASS_ID, C}}));
    std::set<DWORD> ofClass;
    EXPECT_TRUE(btnClass.GetMinimumMemberBtnIDListInThisBtnClassOfSpBtn(middle, ofClass));
    EXPECT_EQ(ofClass, (std::set<DWORD>{A, B, C}));
    EXPECT_FALSE(btnClass.GetMinimumMemberBtnIDListOfSpBtn(A, minimum));
    EXPECT_FALSE(btnClass.GetMinimumMemberBtnIDListOfSpBtn(VIRINC, minimum));
    EXPECT_FALSE(btnClass.GetMinimumMemberBtnIDListOfSpBtn(INC + 99, minimum));
    btnClass.AddMemberBtnIDListOfSpBtn(inner, INC + 99);
    EXPECT_FALSE(btnClass.GetMinimumMemberBtnIDListOfSpBtn(middle, minimum));
    btnClass.AddMemberBtnIDListOfSpBtn(other, VIRINC);
    EXPECT_FALSE(btnClass.GetMinimumMemberBtnIDListOfSpBtn(other, minimum));
    ofClass.clear();
    EXPECT_TRUE(btnClass.GetMinimumMemberBtnIDListInThisBtnClassOfSpBtn(other, ofClass));
    EXPECT_EQ(ofClass, (std::set<DWORD>{B, VIRINC}));
}

TEST_F(VCBtnClass_SpBtnTest, QueriesOfWhatIsNoSpecialButtonLeaveTheirOutputsUntouched)
{
    VCSpBtn::EMmbBtnSelMth selMth = CONDITION;
    DWORD count = 4711;
    List members{4711};
    for (const DWORD btnID : {A, INC, DWORD{0}}) {
        EXPECT_FALSE(btnClass.GetMmbBtnSelMthOfSpBtn(btnID, selMth));
        EXPECT_FALSE(btnClass.GetMemberBtnCountOfSpBtn(btnID, count));
        EXPECT_FALSE(btnClass.GetMemberBtnIDListOfSpBtn(btnID, members));
        EXPECT_FALSE(btnClass.ResetInsideInfoForSpBtn(btnID, true, true));
    }
    EXPECT_EQ(selMth, CONDITION);
    EXPECT_EQ(count, 4711u);
    EXPECT_EQ(members, List({4711}));
    EXPECT_FALSE(btnClass.GetSpBtnIDListIncludingSpecifiedBtn(99, members));
    EXPECT_EQ(members, List({4711}));
    bool managedByUser = false;
    EXPECT_TRUE(btnClass.GetBtnMngrInfoOfSpBtn(CLL + 99, managedByUser)); // any identifier of a special kind
    EXPECT_TRUE(managedByUser);
    EXPECT_FALSE(btnClass.GetBtnMngrInfoOfSpBtn(A, managedByUser));
    EXPECT_EQ(btnClass.GetSystemMngrSpBtnCount(), 0u);
}

TEST_F(VCBtnClass_SpBtnTest, ASpecialMemberThatIsMissingIsAbnormal)
{
    const DWORD inc = MakeInc({A});
    btnClass.AddMemberBtnIDListOfSpBtn(inc, A + 100); // a value that may come has no records
    EXPECT_EQ(Recs(inc), List({0}));
    btnClass.FindSpBtn(inc)->mmbBtnIDList.push_back(CLL + 5);
    DWORD areas[3][5];
    DWORD* recs = areas[0];
    DWORD* buffers[] = {areas[1], areas[2]};
    DWORD count = 0;
    try {
        btnClass.GetRecListThatRelatesToBtn(inc, recs, count, buffers);
        FAIL() << "nothing was thrown";
    } catch (const ECAbnormalData& error) {
        const CFormattedMsg expected(SCBUICoreStrDef::MSG_NOTEXIST_MMBBTN, {CLASS_ID, CLL + 5});
        EXPECT_STREQ(error.GetMessageText(), expected.GetText());
        EXPECT_STREQ(error.GetFunction(), "NSKZ::NSKZCore::VCBtnClass::GetRecListThatRelatesToBtn");
        EXPECT_EQ(error.GetLine(), 5165);
        EXPECT_STREQ(error.GetFile(), "Src/VCBtnClass");
    }
    DWORD failedID = 0;
    EXPECT_FALSE(
        VCBtnClass::GetRecListThatRelatesToBtns(&btnClass, {A, CLL + 6}, recs, count, buffers, failedID));
    EXPECT_EQ(failedID, CLL + 6);
}

TEST_F(VCBtnClass_SpBtnTest, ExpandedConditionButtonsAreLeftOutAndTheirMembersShown)
{
    const DWORD cnd = MakeCnd({A, B});
    const DWORD cll = MakeCll({B, C});
    const DWORD inc = MakeInc({D});
    const DWORD grouped = MakeInc({E});
    btnClass.SetMemberBtnIDListOfSpBtn(cnd, {A, B, grouped});
    List btnIDs;
    EXPECT_EQ(btnClass.GetDisplayedBtnIDListWhichExpandCndCllBtn(btnIDs), 4u);
    EXPECT_EQ(btnIDs, List({A, inc, grouped, cll}));
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    btnClass.PutVisibleInfoBasedOnRelationOfBtns({A});
    btnClass.GetDisplayedBtnIDListWhichExpandCndCllBtn(btnIDs);
    EXPECT_EQ(btnIDs, List({A}));
    btnClass.SetVisibleInfoBasedOnLimitedRecListOfAllBtns(false);
    EXPECT_EQ(btnClass.GetDisplayedBtnIDListWhichExpandCndCllBtn(btnIDs), 0u);
}

// --- Rows of records

TEST(VCBtnClass_SpBtn, FourHundredMembersGetARowOfTheirOwn)
{
    std::vector<std::string> texts;
    for (int i = 0; i < 450; ++i)
        texts.push_back("v" + std::to_string(i));
    std::vector<const char*> values;
    for (const std::string& text : texts)
        values.push_back(text.c_str());
    CClassFixture fixture(values);
    List members(399);
    std::iota(members.begin(), members.end(), DWORD{2});
    const DWORD inc = fixture.MakeInc(members);
    EXPECT_FALSE(fixture.btnClass.IsBtnWithRpLink(inc));
    EXPECT_EQ(fixture.RowSize(inc), 0u);
    EXPECT_EQ(fixture.Recs(inc).size(), 399u);
    EXPECT_TRUE(fixture.btnClass.IsBtnWithRpLink(A)); // not special, there or not
    EXPECT_TRUE(fixture.btnClass.IsBtnWithRpLink(100000));
    EXPECT_FALSE(fixture.btnClass.IsBtnWithRpLink(INC + 77));

    const DWORD nested = fixture.MakeInc({449, 450});
    EXPECT_EQ(fixture.btnClass.AddMemberBtnIDListOfSpBtn(inc, nested), Class::OPEMMBBTN_OK);
    EXPECT_TRUE(fixture.btnClass.IsBtnWithRpLink(inc));
    EXPECT_EQ(fixture.RowSize(inc), 401u);
    EXPECT_EQ(fixture.Recs(inc).size(), 401u);
    const DWORD outer = fixture.MakeCll({inc, 451, 2}); // reads the row, and more
    EXPECT_EQ(fixture.Recs(outer).size(), 402u);

    // A change far below reaches the row.
    EXPECT_EQ(fixture.btnClass.SetMemberBtnIDListOfSpBtn(nested, {451}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(fixture.RowSize(inc), 400u);
    EXPECT_EQ(fixture.Recs(inc).back(), 449u);
    EXPECT_TRUE(fixture.btnClass.SetEffectiveInfoOfSpBtn(nested, false));
    EXPECT_FALSE(fixture.btnClass.IsBtnWithRpLink(inc));
    EXPECT_EQ(fixture.RowSize(inc), 0u); // nothing stale stays behind
    EXPECT_EQ(fixture.Recs(inc).size(), 399u);
    EXPECT_TRUE(fixture.btnClass.SetEffectiveInfoOfSpBtn(nested, true));
    EXPECT_EQ(fixture.RowSize(inc), 400u);

    // A sleeping button is right when it wakes.
    EXPECT_TRUE(fixture.btnClass.SetEffectiveInfoOfSpBtn(inc, false));
    EXPECT_EQ(fixture.Recs(inc), List());
    List more(430);
    std::iota(more.begin(), more.end(), DWORD{2});
    EXPECT_EQ(fixture.btnClass.SetMemberBtnIDListOfSpBtn(inc, more), Class::OPEMMBBTN_OK);
    EXPECT_TRUE(fixture.btnClass.SetEffectiveInfoOfSpBtn(inc, true));
    EXPECT_EQ(fixture.RowSize(inc), 430u);
    EXPECT_EQ(fixture.Recs(inc).size(), 430u);

    // A condition never has one.
    const DWORD cnd = fixture.MakeCnd(more);
    EXPECT_FALSE(fixture.btnClass.IsBtnWithRpLink(cnd));
    EXPECT_EQ(fixture.RowSize(cnd), 0u);
    EXPECT_EQ(fixture.Recs(cnd).size(), 430u);
    EXPECT_TRUE(fixture.btnClass.DestroyIncBtn(inc));
    EXPECT_EQ(fixture.RowSize(inc), 0u);
}

TEST(VCBtnClass_SpBtn, ARowWithAMissingMemberIsNotTakenForTrue)
{
    std::vector<std::string> texts;
    for (int i = 0; i < 410; ++i)
        texts.push_back("v" + std::to_string(i));
    std::vector<const char*> values;
    for (const std::string& text : texts)
        values.push_back(text.c_str());
    CClassFixture fixture(values);
    List members(405);
    std::iota(members.begin(), members.end(), DWORD{2});
    const DWORD inc = fixture.MakeInc(members);
    EXPECT_EQ(fixture.btnClass.AddMemberBtnIDListOfSpBtn(inc, CLL + 9), Class::OPEMMBBTN_OK);
    List areas[3] = {List(410), List(410), List(410)};
    DWORD* recs = areas[0].data();
    DWORD* buffers[] = {areas[1].data(), areas[2].data()};
    DWORD count = 0;
    EXPECT_THROW(fixture.btnClass.GetRecListThatRelatesToBtn(inc, recs, count, buffers), ECAbnormalData);
    EXPECT_EQ(fixture.btnClass.DeleteMemberBtnIDListOfSpBtn(inc, 2), Class::OPEMMBBTN_OK);
    EXPECT_THROW(fixture.btnClass.GetRecListThatRelatesToBtn(inc, recs, count, buffers), ECAbnormalData);
    EXPECT_EQ(fixture.btnClass.DeleteMemberBtnIDListOfSpBtn(inc, CLL + 9), Class::OPEMMBBTN_OK);
    EXPECT_EQ(fixture.Recs(inc).size(), 404u);
}

// --- Deep and wide nesting

TEST_F(VCBtnClass_SpBtnTest, AChainOfTenThousandNestedButtonsIsWalkedWithoutRecursion)
{
    constexpr DWORD DEPTH = 10000;
    DWORD below = A;
    for (DWORD i = 0; i < DEPTH; ++i)
        below = MakeInc({below});
    const DWORD top = below;
    EXPECT_EQ(top, INC + DEPTH - 1);
    EXPECT_EQ(Recs(top), List({0}));
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(INC, {top}), Class::OPEMMBBTN_BADMEMBER);
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(INC, {A, B}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Recs(top), List({0, 1}));
    List roots;
    EXPECT_TRUE(btnClass.GetRootSpBtnIDListIncludingBtn(B, true, roots));
    EXPECT_EQ(roots, List({top}));
    std::set<SBtnClassIDAndBtnID> above;
    btnClass.GetSpBtnIDListThatTheSpecifiedBtnInfluences(A, above, false);
    EXPECT_EQ(above.size(), DEPTH);
    std::set<DWORD> minimum;
    EXPECT_TRUE(btnClass.GetMinimumMemberBtnIDListInThisBtnClassOfSpBtn(top, minimum));
    EXPECT_EQ(minimum, (std::set<DWORD>{A, B}));
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    btnClass.PutVisibleInfoBasedOnRelationOfBtns({B});
    EXPECT_EQ(Why(top), 0u);
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(INC, {}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Why(top), VISINFO_NOLIVEMEMBER);
    btnClass.ResetLiveMemberInfoOfAllSpBtns({&btnClass});
    EXPECT_EQ(Why(top), VISINFO_NOLIVEMEMBER);
    EXPECT_TRUE(btnClass.SetEffectiveInfoOfSpBtn(INC, false));
    EXPECT_TRUE(btnClass.SetEffectiveInfoOfSpBtn(INC, true));
    EXPECT_TRUE(btnClass.DestroyIncBtn(INC));
    EXPECT_EQ(Members(INC + 1), List());
}

TEST_F(VCBtnClass_SpBtnTest, ThirtyLayersThatShareMembersCostWhatTheyHold)
{
    // Walked path by path this would take 2 to the power 30 steps.
    List layer{MakeInc({A}), MakeInc({B})};
    for (int i = 1; i < 30; ++i)
        layer = {MakeInc(layer), MakeCll(layer)};
    EXPECT_EQ(Recs(layer[1]), List({0, 1}));
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(INC, {A, layer[1]}), Class::OPEMMBBTN_BADMEMBER);
    EXPECT_EQ(btnClass.SetMemberBtnIDListOfSpBtn(INC, {C}), Class::OPEMMBBTN_OK);
    EXPECT_EQ(Recs(layer[0]), List({1, 2}));
    std::set<SBtnClassIDAndBtnID> above;
    btnClass.GetSpBtnIDListThatTheSpecifiedBtnInfluences(C, above, false);
    EXPECT_EQ(above.size(), 59u);
    List roots;
    EXPECT_TRUE(btnClass.GetRootSpBtnIDListIncludingBtn(C, false, roots));
    EXPECT_EQ(roots, layer);
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    btnClass.PutVisibleInfoBasedOnRelationOfBtns({C});
    EXPECT_EQ(Why(layer[1]), 0u);
    btnClass.SetVisibleInfoBasedOnLimitedRecListOfAllBtns(false);
    btnClass.ResetLiveMemberInfoOfAllSpBtns({&btnClass});
    EXPECT_EQ(Why(layer[1]), VISINFO_LIMITEDREC | VISINFO_NOLIVEMEMBER);
}

// --- Orders

TEST_F(VCBtnClass_SpBtnTest, SpecialButtonsStandInFrontByCreation)
{
    const DWORD young = MakeInc({99}, "y");
    const DWORD old = MakeInc({98}, "o");
    const DWORD sameAsYoung = MakeCll({A}, "s");
    const DWORD cnd = MakeCnd({B}, "c2");
    const DWORD olderCnd = MakeCnd({C}, "c1");
    for (const DWORD spBtnID : {young, old}) // alive, as far as their display goes
        btnClass.SetOwnVisibleInfo(*btnClass.FindBtn(spBtnID), VISINFO_NOLIVEMEMBER, false);
    const auto setTime = [this](DWORD btnID, std::int64_t time) {
        btnClass.FindSpBtn(btnID)->createTime = time;
    };
    setTime(young, 50);
    setTime(old, 10);
    setTime(sameAsYoung, 50);
    setTime(cnd, 40);
    setTime(olderCnd, 30);
    EXPECT_EQ(AppOrder(Class::ORDLIST_NORMAL), List({old, olderCnd, cnd, young, sameAsYoung, D, E}));
    EXPECT_EQ(AppOrder(Class::ORDLIST_DESCEND), List({E, D, sameAsYoung, young, cnd, olderCnd, old}));
    EXPECT_EQ(AppOrder(Class::ORDLIST_TAILEND_CNDCLLBTN),
              List({old, young, sameAsYoung, D, E, olderCnd, cnd}));
    EXPECT_EQ(AppOrder(Class::ORDLIST_TAILEND_CNDCLLBTN | Class::ORDLIST_DESCEND),
              List({E, D, sameAsYoung, young, old, olderCnd, cnd}));
    EXPECT_EQ(AppOrder(Class::ORDLIST_INCLUDE_CNDCLLMEMBERBTNS),
              List({old, olderCnd, cnd, young, sameAsYoung, B, C, D, E}));
    btnClass.SetOwnVisibleInfo(*btnClass.FindBtn(old), VISINFO_NOMEMBER, true);
    btnClass.SetEffectiveInfoOfSpBtn(young, false);
    EXPECT_EQ(AppOrder(Class::ORDLIST_NORMAL), List({olderCnd, cnd, sameAsYoung, D, E}));
    EXPECT_EQ(AppOrder(Class::ORDLIST_INCLUDE_NONDISPBTNS),
              List({old, olderCnd, cnd, sameAsYoung, A, B, C, D, E}));
}

TEST_F(VCBtnClass_SpBtnTest, ButtonsOfTheSystemStandBehindThoseOfUsers)
{
    List made;
    for (DWORD i = 0; i < 5; ++i) {
        made.push_back(MakeInc({A}));
        btnClass.FindSpBtn(made.back())->createTime = 10 + i;
    }
    btnClass.systemIDs = {made[0], made[2]};
    btnClass.unmanagedIDs = {made[1]};
    btnClass.carryingIDs = {made[3]}; // as the one before it: the system's
    EXPECT_EQ(AppOrder(Class::ORDLIST_NORMAL), List({made[4], made[0], made[2], made[3], B, C, D, E}));
    EXPECT_EQ(AppOrder(Class::ORDLIST_DESCEND), List({E, D, C, B, made[3], made[2], made[0], made[4]}));
}

TEST(VCBtnClass_SpBtn, ConditionButtonsAtTheEndStandBehindTheEmptyValue)
{
    CClassFixture fixture({"b", "", "a", "c"}); // 2, 1, 3, 4
    const DWORD cnd = fixture.MakeCnd({4}, "aa");
    const DWORD cll = fixture.MakeCll({2}, "bb");
    constexpr unsigned int BOTH = Class::ORDLIST_TAILEND_EMPVALBTN | Class::ORDLIST_TAILEND_CNDCLLBTN;
    EXPECT_EQ(fixture.AppOrder(BOTH), List({cll, 3, 1, cnd}));
    EXPECT_EQ(fixture.AppOrder(BOTH | Class::ORDLIST_DESCEND), List({3, cll, 1, cnd}));
    EXPECT_EQ(fixture.NameOrder(Class::ORDLIST_NORMAL), List({3, cnd, cll, 1})); // a, aa, bb, empty
    EXPECT_EQ(fixture.NameOrder(BOTH), List({3, cll, 1, cnd}));
    EXPECT_EQ(fixture.NameOrder(BOTH | Class::ORDLIST_DESCEND), List({cll, 3, 1, cnd}));
    List order;
    fixture.btnClass.GetBtnUnknownOrdList(BOTH, {cnd, 1, CLL + 9, 3, cll}, order);
    EXPECT_EQ(order, List({3, cll, 1, cnd}));
    fixture.btnClass.GetBtnUnknownOrdList(BOTH | Class::ORDLIST_INCLUDE_NONDISPBTNS, {cnd, 1, CLL + 9, 3, 4},
                                          order);
    EXPECT_EQ(order, List({CLL + 9, 3, 4, 1, cnd})); // not looked up, so not known to be one
    const DWORD secondCnd = fixture.MakeCnd({4}, "a0");
    EXPECT_EQ(fixture.NameOrder(BOTH | Class::ORDLIST_DESCEND), List({cll, 3, 1, secondCnd, cnd}));
}

TEST(VCBtnClass_SpBtn, NumbersHaveTheirSpecialButtonsInFrontByText)
{
    const std::unique_ptr<IRpLink> rpLink = std::make_unique<CRpLink_OnMemVer>();
    CNumBtnClass btnClass(CLASS_ID, 1, "empty", nullptr, rpLink);
    const char* const values[] = {"10", "9", "abc", "", "1e2", "7"}; // 2, 3, 4, 1, 5, 6
    DWORD cells[6];
    TCBtnIDAssArr<DWORD> counts;
    btnClass.AddRecs(0, 6, values, cells, counts);
    DWORD z = 0;
    DWORD m = 0;
    DWORD cnd = 0;
    DWORD sleeping = 0;
    const List ten{2};
    const List seven{6};
    btnClass.CreateIncBtn("z", SELECT, &ten, nullptr, z);
    btnClass.SetDispMemberBtnInfoOfIncBtn(z, true);
    btnClass.CreateCllBtn("m", SELECT, &seven, nullptr, m);
    btnClass.CreateCllBtn("k", CONDITION, nullptr, nullptr, cnd);
    btnClass.CreateIncBtn("a", SELECT, &ten, nullptr, sleeping);
    btnClass.SetEffectiveInfoOfSpBtn(sleeping, false);
    const auto getOrder = [&btnClass](unsigned int flags) {
        List order;
        btnClass.GetBtnNameOrdList(flags, order);
        return order;
    };
    EXPECT_EQ(getOrder(Class::ORDLIST_NORMAL), List({cnd, m, z, 3, 2, 5, 1, 4}));
    EXPECT_EQ(getOrder(Class::ORDLIST_DESCEND), List({1, 5, 2, 3, z, m, cnd, 4}));
    constexpr unsigned int BOTH = Class::ORDLIST_TAILEND_EMPVALBTN | Class::ORDLIST_TAILEND_CNDCLLBTN;
    EXPECT_EQ(getOrder(BOTH), List({m, z, 3, 2, 5, 4, 1, cnd}));
    EXPECT_EQ(getOrder(BOTH | Class::ORDLIST_DESCEND), List({5, 2, 3, z, m, 4, 1, cnd}));
}

// --- Classes as a whole

TEST_F(VCBtnClass_SpBtnTest, ClearOfFixedSpecDropsSpecialButtonsAndTheirTraces)
{
    const DWORD inc = MakeInc({A});
    MakeCll({inc, B});
    btnClass.SetEffectiveInfoOfSpBtn(inc, false);
    MakeInc({C});
    btnClass.DestroyIncBtn(INC + 1);
    btnClass.ClearOfFixedSpec();
    EXPECT_EQ(btnClass.GetBtnCount(), 6u);
    EXPECT_EQ(btnClass.spBtnCount, 0u);
    EXPECT_EQ(btnClass.GetIneffectiveBtnCount(), 0u);
    EXPECT_TRUE(btnClass.incBlankIDList.empty());
    EXPECT_EQ(btnClass.incNextID, INC);
    EXPECT_EQ(Holders(A), List());
    EXPECT_EQ(Why(B), 0u);
    EXPECT_EQ(NameOrder(Class::ORDLIST_INCLUDE_NONDISPBTNS), List({A, B, C, D, E}));
    EXPECT_EQ(AppOrder(Class::ORDLIST_NORMAL), List({A, B, C, D, E}));
    EXPECT_EQ(MakeInc({B}), INC);
}

TEST_F(VCBtnClass_SpBtnTest, ACopyHasSpecialButtonsOfItsOwn)
{
    const DWORD inc = MakeInc({A, B});
    MakeCll({inc, C});
    MakeInc({D});
    btnClass.DestroyIncBtn(INC + 1);
    CProbe copy(rpLink, 9);
    copy.Copy(btnClass, rpLink);
    btnClass.SetMemberBtnIDListOfSpBtn(inc, {E});
    List members;
    EXPECT_TRUE(copy.GetMemberBtnIDListOfSpBtn(inc, members));
    EXPECT_EQ(members, List({A, B}));
    EXPECT_TRUE(copy.GetSpBtnIDListIncludingSpecifiedBtn(inc, members));
    EXPECT_EQ(members, List({CLL}));
    EXPECT_EQ(copy.spBtnCount, 2u);
    EXPECT_EQ(copy.incBlankIDList, std::set<DWORD>{INC + 1});
    EXPECT_EQ(copy.cllNextID, CLL + 1);
    std::map<DWORD, VCSpBtn*> spBtns;
    EXPECT_EQ(copy.GetAllSpBtnList(spBtns, false), 2u);
    EXPECT_NE(spBtns[inc], btnClass.FindSpBtn(inc));
}

TEST_F(VCBtnClass_SpBtnTest, NewButtonsAreMadeByKindInTheirFirstState)
{
    const auto inc = btnClass.CreateBtnBasedOnBtnID(INC + 5);
    ASSERT_NE(inc, nullptr);
    EXPECT_EQ(inc->GetType(), SCBUICoreCom::BTNTYPE_INC);
    EXPECT_EQ(inc->id, 0u);
    EXPECT_EQ(btnClass.CreateBtnBasedOnBtnID(CLL)->GetType(), SCBUICoreCom::BTNTYPE_CLL);
    EXPECT_EQ(btnClass.CreateBtnBasedOnBtnID(7)->GetType(), SCBUICoreCom::BTNTYPE_NORMAL);
    EXPECT_EQ(btnClass.CreateBtnBasedOnBtnID(7)->id, 7u);
    EXPECT_EQ(btnClass.CreateBtnBasedOnBtnID(1)->GetType(), SCBUICoreCom::BTNTYPE_EMPVAL);
    EXPECT_EQ(btnClass.CreateBtnBasedOnBtnID(VIRINC), nullptr);
    EXPECT_EQ(btnClass.CreateBtnBasedOnBtnID(0), nullptr);
    EXPECT_EQ(btnClass.CreateBtnBasedOnBtnType(SCBUICoreCom::BTNTYPE_VIRINC), nullptr);
    EXPECT_EQ(btnClass.CreateBtnBasedOnBtnTypeAttrValue("Inc", 3)->GetType(), SCBUICoreCom::BTNTYPE_INC);
    EXPECT_EQ(btnClass.CreateBtnBasedOnBtnTypeAttrValue("Cll", 3)->GetType(), SCBUICoreCom::BTNTYPE_CLL);
    EXPECT_EQ(btnClass.CreateBtnBasedOnBtnTypeAttrValue("Data", 4)->GetType(), SCBUICoreCom::BTNTYPE_NORMAL);
    EXPECT_EQ(btnClass.CreateBtnBasedOnBtnTypeAttrValue("EmpVal", 6)->GetType(),
              SCBUICoreCom::BTNTYPE_EMPVAL);
    EXPECT_EQ(btnClass.CreateBtnBasedOnBtnTypeAttrValue("Inca", 4), nullptr);
    EXPECT_EQ(btnClass.CreateBtnBasedOnBtnTypeAttrValue("inc", 3), nullptr);
}

TEST_F(VCBtnClass_SpBtnTest, AnIneffectiveClassSwitchesOffTheButtonsOfOtherClassesThatHoldItsOwn)
{
    CClassFixture other({"x"});
    const DWORD outer = other.MakeInc({2});
    const DWORD second = other.MakeInc({2});
    btnClass.refOrgBtnClasses[77] = &other.btnClass;
    const auto makeMemberOf = [this](DWORD btnID, DWORD btnClassID, DWORD outerID) {
        VCBtn& btn = *btnClass.FindBtn(btnID);
        if (btn.backReferences == nullptr)
            btn.backReferences = std::make_unique<VCBtn::SBackReferences>();
        btn.backReferences->spBtnIDsOfOtherClass.insert({btnClassID, outerID});
    };
    makeMemberOf(A, 77, outer);
    makeMemberOf(B, 77, outer);
    makeMemberOf(B, 88, second); // of a class that is not there
    EXPECT_TRUE(btnClass.SetEffective(false));
    EXPECT_FALSE(btnClass.SetEffective(false));
    EXPECT_FALSE(other.btnClass.ExistTheBtn(outer));
    EXPECT_TRUE(other.btnClass.ExistTheBtn(second));
    EXPECT_TRUE(btnClass.SetEffective(true));
    EXPECT_TRUE(other.btnClass.ExistTheBtn(outer));
}

// --- Exhausted memory

TEST_F(VCBtnClass_SpBtnTest, ExhaustedMemoryInAnyChangeLeavesTheClassAsItWas)
{
    using Operation = void (*)(CClassFixture&);
    const std::pair<const char*, Operation> operations[] = {
        {"create",
         [](auto& fixture) {
             fixture.MakeInc({INC, A, B, C}, "a name of more than a few bytes");
         }},
        {"create cll",
         [](auto& fixture) {
             fixture.MakeCll({INC + 1, D});
         }},
        {"set",
         [](auto& fixture) {
             fixture.btnClass.SetMemberBtnIDListOfSpBtn(INC, {D, E, A});
         }},
        {"add", [](auto& fixture) { fixture.btnClass.AddMemberBtnIDListOfSpBtn(INC, E); }},
        {"delete", [](auto& fixture) { fixture.btnClass.DeleteMemberBtnIDListOfSpBtn(INC, A); }},
        {"destroy", [](auto& fixture) { fixture.btnClass.DestroyIncBtn(INC); }},
        {"off", [](auto& fixture) { fixture.btnClass.SetEffectiveInfoOfSpBtn(INC, false); }},
        {"on", [](auto& fixture) { fixture.btnClass.SetEffectiveInfoOfSpBtn(INC + 2, true); }},
        {"hide empty", [](auto& fixture) { fixture.btnClass.SetDispEmpValBtnInfo(false); }},
    };
    for (const auto& [name, operation] : operations) {
        SCOPED_TRACE(name);
        std::string before;
        const int failures = FailEveryAllocation(
            [&before] {
                auto fixture =
                    std::make_unique<CClassFixture>(std::vector<const char*>{"a", "b", "c", "d", "e", ""});
                fixture->MakeInc({A, 1});
                fixture->MakeInc({INC, B});
                fixture->MakeInc({A, INC});
                fixture->MakeCll({INC + 1, INC + 2});
                fixture->btnClass.SetEffectiveInfoOfSpBtn(INC + 2, false);
                before = fixture->Describe();
                return fixture;
            },
            [run = operation](const auto& fixture) { run(*fixture); },
            [&before](const auto& fixture) { EXPECT_EQ(fixture->Describe(), before); });
        EXPECT_GE(failures, 1);
    }
}

TEST(VCBtnClass_SpBtn, ExhaustedMemoryForARowCostsNoTruth)
{
    std::vector<std::string> texts;
    for (int i = 0; i < 420; ++i)
        texts.push_back("v" + std::to_string(i));
    std::vector<const char*> values;
    for (const std::string& text : texts)
        values.push_back(text.c_str());
    List members(410);
    std::iota(members.begin(), members.end(), DWORD{2});
    List others(405);
    std::iota(others.begin(), others.end(), DWORD{10});
    using Operation = void (*)(CClassFixture&, const List&);
    const std::pair<bool, Operation> operations[] = {
        {true, [](auto& fixture, const List& list) { fixture.MakeCll(list); }},
        {true,
         [](auto& fixture, const List& list) { fixture.btnClass.SetMemberBtnIDListOfSpBtn(INC, list); }},
        {false, [](auto& fixture, const List&) { fixture.btnClass.DestroyIncBtn(INC + 1); }},
        {false, [](auto& fixture, const List&) { fixture.btnClass.SetEffectiveInfoOfSpBtn(INC + 1, false); }},
    };
    for (const auto& [changesNothing, operation] : operations) {
        const auto prepare = [&] {
            auto fixture = std::make_unique<CClassFixture>(values);
            fixture->MakeInc(members);
            fixture->MakeInc({421});
            fixture->btnClass.AddMemberBtnIDListOfSpBtn(INC, INC + 1);
            return fixture;
        };
        const auto changed = prepare();
        const std::string before = changed->Describe();
        operation(*changed, others);
        const std::string after = changed->Describe();
        const int failures = FailEveryAllocation(
            prepare, [&, run = operation](const auto& fixture) { run(*fixture, others); },
            [&, nothing = changesNothing](const auto& fixture) {
                const std::string now = fixture->Describe();
                EXPECT_TRUE(now == before || (!nothing && now == after));
            });
        EXPECT_GE(failures, 3);
    }
}

} // namespace
