#include "CBnLink_OnMemVer.h"
#include "CBtn.h"
#include "CRpLink_OnMemVer.h"
#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "Support/CAllocFault.h"
#include "VCSrcBtnClass.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace NSKZ::NSKZCore;

namespace {

constexpr DWORD CLASS_ID = 3;
constexpr DWORD INC = SCBUICoreCom::BTN_ID_INC_BEGIN;
constexpr DWORD CLL = SCBUICoreCom::BTN_ID_CLL_BEGIN;

// A special button as far as a class knows it through its base.
class CTestSpBtn final : public VCSpBtn
{
public:
    CTestSpBtn(DWORD btnID, const char* text) : VCSpBtn(btnID, MMBBTNSELMTH_SELECT) { SetAlias(text); }
    bool WriteDefinitionByXML(CXMLWriter&, const std::vector<DWORD>&, bool) const override { return true; }
    CXMLReader::EMthRetOfReadXML ReadFixedSpecByXML(CXMLReader&) override { return CXMLReader::READXML_OK; }
    SCBUICoreCom::EBtnType GetType() const override
    {
        return SCBUICoreCom::IsIncBtn(id) ? SCBUICoreCom::BTNTYPE_INC : SCBUICoreCom::BTNTYPE_CLL;
    }
    std::unique_ptr<VCBtn> Clone() const override
    {
        auto clone = std::make_unique<CTestSpBtn>(id, GetShownText());
        clone->effective = effective;
        return clone;
    }
};

// A class that lets a test at what derived classes and the environment work on.
class CTestBtnClass final : public VCSrcBtnClass
{
public:
    explicit CTestBtnClass(const std::unique_ptr<IRpLink>& rpLinkOfEnv, DWORD classID = CLASS_ID)
        : VCSrcBtnClass(classID, 1, "empty", nullptr, rpLinkOfEnv)
    {}
    ~CTestBtnClass() override { refOrgBtnClasses.clear(); } // the others stood in and may be gone
    SCBUICoreCom::EBtnClassType GetBtnClassType() const override { return SCBUICoreCom::BTNCLSTYPE_NORMAL; }
    using VCBtnClass::FindBtn;
    using VCBtnClass::PutVisibleInfoOfBtn;
    using VCBtnClass::PutVisibleInfoOfBtns;
    using VCBtnClass::refOrgBtnClasses;
    using VCBtnClass::RegBtn;
    using VCBtnClass::SetOwnVisibleInfo;
    using VCBtnClass::spBtnOfID;

    CTestSpBtn& AddSpBtn(DWORD btnID, const char* text)
    {
        auto btn = std::make_unique<CTestSpBtn>(btnID, text);
        CTestSpBtn& borrowed = *btn;
        RegBtn(std::move(btn));
        return borrowed;
    }
    void MakeMember(DWORD memberID, DWORD spBtnID)
    {
        GetReferences(memberID).spBtnIDsInClass.insert(spBtnID);
        AdjstToBackReferences(*FindBtn(memberID));
    }
    void MakeMemberOfOther(DWORD memberID, VCBtnClass& other, DWORD spBtnID)
    {
        refOrgBtnClasses[other.GetID()] = &other;
        GetReferences(memberID).spBtnIDsOfOtherClass.insert({other.GetID(), spBtnID});
        AdjstToBackReferences(*FindBtn(memberID));
    }

private:
    VCBtn::SBackReferences& GetReferences(DWORD btnID)
    {
        VCBtn& btn = *FindBtn(btnID);
        if (btn.backReferences == nullptr)
            btn.backReferences = std::make_unique<VCBtn::SBackReferences>();
        return *btn.backReferences;
    }
};

// A class of the values a to e (buttons 2 to 6), record i having the i-th of them, and its tables.
class VCBtnClassTest : public ::testing::Test
{
protected:
    VCBtnClassTest() : rpLink(std::make_unique<CRpLink_OnMemVer>()), btnClass(rpLink)
    {
        const char* const values[] = {"a", "b", "c", "d", "e"};
        btnClass.AddRecs(0, 5, values, cells, counts);
        rpLink->InsertFld(CLASS_ID);
        for (DWORD rec = 0; rec < 5; ++rec)
            rpLink->SetRecList(CLASS_ID, cells[rec], &rec, 1);
        bnLink.InsertFld(CLASS_ID, 5, cells);
    }

    unsigned int GetVisibleInfo(DWORD btnID) const
    {
        unsigned int visibleInfo = 4711;
        btnClass.GetVisibleInfoOfBtn(btnID, visibleInfo);
        return visibleInfo;
    }
    std::vector<DWORD> GetDisplayed() const
    {
        std::vector<DWORD> btnIDs;
        btnClass.GetDisplayedBtnIDList(btnIDs);
        return btnIDs;
    }

    std::unique_ptr<IRpLink> rpLink;
    CBnLink_OnMemVer bnLink;
    CTestBtnClass btnClass;
    DWORD cells[5];
    TCBtnIDAssArr<DWORD> counts;
};

using List = std::vector<DWORD>;

TEST_F(VCBtnClassTest, ConditionsLookAtTheButtonsThatNothingButAConditionCllButtonHides)
{
    const auto getExpanded = [this] {
        std::vector<DWORD> btnIDs = {4711};
        const DWORD count = btnClass.GetDisplayedBtnIDListWhichExpandCndCllBtn(btnIDs);
        EXPECT_EQ(count, btnIDs.size());
        return btnIDs;
    };
    EXPECT_EQ(getExpanded(), GetDisplayed());
    btnClass.SetOwnVisibleInfo(*btnClass.FindBtn(3), VISINFO_CNDCLLMEMBER, true);
    btnClass.SetOwnVisibleInfo(*btnClass.FindBtn(4), VISINFO_SELCLLMEMBER, true);
    btnClass.SetOwnVisibleInfo(*btnClass.FindBtn(5), VISINFO_CNDCLLMEMBER | VISINFO_NOREC, true);
    EXPECT_EQ(GetDisplayed(), (List{2, 6}));
    EXPECT_EQ(getExpanded(), (List{2, 3, 6}));
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    EXPECT_EQ(getExpanded(), List());
    EXPECT_TRUE(btnClass.PutVisibleInfoBasedOnRelationOfBtns({3, 4, 6}));
    EXPECT_EQ(getExpanded(), (List{3, 6}));
}

TEST_F(VCBtnClassTest, QueriesOfAnAbsentButtonLeaveTheirOutputsUntouched)
{
    SCBUICoreCom::EBtnType type = SCBUICoreCom::BTNTYPE_CLL;
    bool sel = true;
    const char* text = "before";
    unsigned int visibleInfo = 99;
    for (const DWORD absent : {DWORD{0}, DWORD{7}, DWORD{3000000001}, DWORD{3500000000}, INC, CLL}) {
        EXPECT_FALSE(btnClass.GetTypeOfBtn(absent, type));
        EXPECT_FALSE(btnClass.GetSelectionInfoOfBtn(absent, sel));
        EXPECT_FALSE(btnClass.GetNameOfBtn(absent, text));
        EXPECT_FALSE(btnClass.GetAliasOfBtn(absent, text));
        EXPECT_FALSE(btnClass.GetVisibleInfoOfBtn(absent, visibleInfo));
        EXPECT_FALSE(btnClass.SetSelectionInfoOfBtn(absent, true, visibleInfo));
        EXPECT_FALSE(btnClass.SetAliasOfBtn(absent, "x"));
        EXPECT_FALSE(btnClass.ExistTheBtn(absent));
    }
    EXPECT_EQ(type, SCBUICoreCom::BTNTYPE_CLL);
    EXPECT_TRUE(sel);
    EXPECT_STREQ(text, "before");
    EXPECT_EQ(visibleInfo, 99u);
}

TEST_F(VCBtnClassTest, QueriesTellWhatAButtonIs)
{
    SCBUICoreCom::EBtnType type{};
    const char* text = nullptr;
    EXPECT_TRUE(btnClass.GetTypeOfBtn(2, type));
    EXPECT_EQ(type, SCBUICoreCom::BTNTYPE_NORMAL);
    EXPECT_TRUE(btnClass.GetTypeOfBtn(1, type));
    EXPECT_EQ(type, SCBUICoreCom::BTNTYPE_EMPVAL);
    EXPECT_TRUE(btnClass.GetNameOfBtn(1, text));
    EXPECT_EQ(text, nullptr);
    EXPECT_TRUE(btnClass.GetAliasOfBtn(1, text));
    EXPECT_STREQ(text, "empty");
    EXPECT_TRUE(btnClass.GetNameOfBtn(4, text));
    EXPECT_STREQ(text, "c");
    EXPECT_EQ(btnClass.GetBtnCount(), 6u);
    EXPECT_EQ(btnClass.GetRecCount(), 5u);
}

TEST_F(VCBtnClassTest, ShownTextsAreFoundWhateverHidesTheButton)
{
    EXPECT_TRUE(btnClass.ExistTheBtn("c", 1));
    EXPECT_TRUE(btnClass.ExistTheBtn("empty", 5)); // it has no record
    EXPECT_FALSE(btnClass.ExistTheBtn("c", 1, 4));
    EXPECT_FALSE(btnClass.ExistTheBtn("cx", 2));
    EXPECT_TRUE(btnClass.ExistTheBtn("cx", 1)); // one byte of it
    EXPECT_FALSE(btnClass.ExistTheBtn("", 0));
    btnClass.SetAliasOfBtn(4, nullptr);
    EXPECT_TRUE(btnClass.ExistTheBtn("", 0));
    EXPECT_FALSE(btnClass.ExistTheBtn("c", 1));
}

TEST_F(VCBtnClassTest, AnIneffectiveSpecialButtonDoesNotExistForOthers)
{
    btnClass.AddSpBtn(INC, "group").effective = false;
    EXPECT_FALSE(btnClass.ExistTheBtn(INC));
    EXPECT_FALSE(btnClass.ExistTheBtn("group", 5));
    List btnIDs;
    EXPECT_EQ(btnClass.GetAllBtnIDList(btnIDs, false), 6u);
    EXPECT_EQ(btnClass.GetAllBtnIDList(btnIDs, true), 7u);
    EXPECT_EQ(btnIDs.back(), INC);
    EXPECT_EQ(btnClass.GetAllSpBtnIDList(btnIDs, false), 0u);
    EXPECT_EQ(btnClass.GetAllSpBtnIDList(btnIDs, true), 1u);
    btnClass.SetSelectionInfoOfBtn(INC, true);
    EXPECT_EQ(btnClass.GetSelBtnCount(), 0u);
    EXPECT_EQ(btnClass.GetSelectedBtnIDList(btnIDs), 0u);
    EXPECT_TRUE(btnIDs.empty());
}

TEST_F(VCBtnClassTest, AnIdentifierIsTakenOnce)
{
    EXPECT_FALSE(btnClass.RegBtn(std::make_unique<CBtn>(3, "x")));
    const char* text = nullptr;
    btnClass.GetNameOfBtn(3, text);
    EXPECT_STREQ(text, "b");
}

TEST_F(VCBtnClassTest, TheFirstSelectedButtonBeginsTheSelectiveStateAndTheLastEndsIt)
{
    unsigned int visibleInfo = 4711;
    btnClass.SetNewBtnMadeSelState(true);
    EXPECT_TRUE(btnClass.SetSelectionInfoOfBtn(2, true, visibleInfo));
    EXPECT_EQ(visibleInfo, 0u);
    EXPECT_TRUE(btnClass.IsBtnSelectiveState());
    EXPECT_TRUE(btnClass.SetSelectionInfoOfBtn(2, true)); // again
    EXPECT_TRUE(btnClass.SetSelectionInfoOfBtn(3, true));
    EXPECT_EQ(btnClass.GetSelBtnCount(), 2u);
    EXPECT_TRUE(btnClass.SetSelectionInfoOfBtn(2, false));
    EXPECT_TRUE(btnClass.IsBtnSelectiveState());
    EXPECT_TRUE(btnClass.SetSelectionInfoOfBtn(3, false));
    EXPECT_TRUE(btnClass.SetSelectionInfoOfBtn(3, false)); // again
    EXPECT_FALSE(btnClass.IsBtnSelectiveState());
    EXPECT_EQ(btnClass.GetSelBtnCount(), 0u);
    EXPECT_TRUE(btnClass.IsNewBtnMadeSelState());
}

TEST_F(VCBtnClassTest, SelectiveStateIsSetByHandOnlyWhileNothingIsSelected)
{
    EXPECT_FALSE(btnClass.SetBtnSelectiveState(false));
    EXPECT_TRUE(btnClass.SetBtnSelectiveState(true));
    EXPECT_FALSE(btnClass.SetBtnSelectiveState(true));
    EXPECT_TRUE(btnClass.SetBtnSelectiveState(false));
    btnClass.SetSelectionInfoOfBtn(2, true);
    EXPECT_FALSE(btnClass.SetBtnSelectiveState(false));
    EXPECT_FALSE(btnClass.SetBtnSelectiveState(true));
    EXPECT_TRUE(btnClass.IsBtnSelectiveState());
}

TEST_F(VCBtnClassTest, AllButtonsAreSelectedAndReleasedAtOnce)
{
    btnClass.AddSpBtn(CLL, "group").effective = false;
    btnClass.SetSelectionInfoOfBtn(3, true);
    for (int twice = 0; twice < 2; ++twice) {
        btnClass.SetSelectionInfoOfAllBtns(true);
        EXPECT_TRUE(btnClass.HasAllBtnsBeenSelected());
        EXPECT_TRUE(btnClass.IsNewBtnMadeSelState());
        EXPECT_TRUE(btnClass.IsBtnSelectiveState());
        EXPECT_EQ(btnClass.GetSelBtnCount(), 7u);
        bool sel = false;
        EXPECT_TRUE(btnClass.GetSelectionInfoOfBtn(CLL, sel));
        EXPECT_TRUE(sel);
    }
    btnClass.SetSelectionInfoOfAllBtns(false);
    EXPECT_FALSE(btnClass.IsNewBtnMadeSelState());
    EXPECT_FALSE(btnClass.IsBtnSelectiveState());
    EXPECT_EQ(btnClass.GetSelBtnCount(), 0u);
    for (const DWORD btnID : {DWORD{1}, DWORD{2}, DWORD{6}, CLL}) {
        bool sel = true;
        EXPECT_TRUE(btnClass.GetSelectionInfoOfBtn(btnID, sel));
        EXPECT_FALSE(sel);
    }
}

TEST_F(VCBtnClassTest, SelectedButtonsAreListedAscendingHoweverOftenTheyChange)
{
    for (int round = 0; round < 200; ++round) {
        for (const DWORD btnID : {DWORD{6}, DWORD{2}, DWORD{4}}) {
            btnClass.SetSelectionInfoOfBtn(btnID, true);
            if (round < 199)
                btnClass.SetSelectionInfoOfBtn(btnID, false);
        }
    }
    List btnIDs;
    EXPECT_EQ(btnClass.GetSelectedBtnIDList(btnIDs), 3u);
    EXPECT_EQ(btnIDs, List({2, 4, 6}));
    std::set<DWORD> set{99};
    EXPECT_EQ(btnClass.GetSelectedBtnIDList(set), 3u);
    EXPECT_EQ(set, std::set<DWORD>({2, 4, 6}));
    btnClass.SetOwnVisibleInfo(*btnClass.FindBtn(4), VISINFO_INCMEMBER, true);
    EXPECT_EQ(btnClass.GetDispSelectedBtnIDList(btnIDs), 2u);
    EXPECT_EQ(btnIDs, List({2, 6}));
}

TEST_F(VCBtnClassTest, ClassFlagsTellWhetherTheyChanged)
{
    EXPECT_FALSE(btnClass.SetSelectionInfo(false));
    EXPECT_TRUE(btnClass.SetSelectionInfo(true));
    EXPECT_TRUE(btnClass.IsBtnClassSelected());
    EXPECT_TRUE(btnClass.IsEffective());
    EXPECT_FALSE(btnClass.SetEffective(true));
    EXPECT_TRUE(btnClass.SetEffective(false));
    EXPECT_FALSE(btnClass.IsEffective());
}

TEST_F(VCBtnClassTest, TheRelationHidesAllAndBringsBackWhatIsListed)
{
    EXPECT_EQ(GetDisplayed(), List({2, 3, 4, 5, 6}));
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    EXPECT_EQ(btnClass.GetDispBtnCount(), 0u);
    EXPECT_EQ(GetVisibleInfo(1), VISINFO_NOREC | VISINFO_RELATION);
    EXPECT_TRUE(btnClass.PutVisibleInfoBasedOnRelationOfBtns({5, 2, 77, INC, 0}));
    EXPECT_EQ(GetDisplayed(), List({2, 5}));
    EXPECT_EQ(btnClass.GetDispBtnCount(), 2u);
    EXPECT_EQ(GetVisibleInfo(3), VISINFO_RELATION);
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(true);
    EXPECT_EQ(btnClass.GetDispBtnCount(), 5u);
}

TEST_F(VCBtnClassTest, RecordsBringBackTheButtonsTheyCarry)
{
    const DWORD recs[] = {0, 3};
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    EXPECT_TRUE(btnClass.PutVisibleInfoBasedOnRelationOfRecs(bnLink, recs, 2));
    EXPECT_EQ(GetDisplayed(), List({2, 5}));
    const DWORD allRecs[] = {0, 1, 2, 3, 4, 0, 1, 2, 3, 4}; // more records than buttons
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    EXPECT_TRUE(btnClass.PutVisibleInfoBasedOnRelationOfRecs(bnLink, allRecs, 10));
    EXPECT_EQ(GetDisplayed(), List({2, 3, 4, 5, 6}));
    bnLink.DeleteFld(CLASS_ID);
    EXPECT_FALSE(btnClass.PutVisibleInfoBasedOnRelationOfRecs(bnLink, recs, 2));
}

TEST_F(VCBtnClassTest, InSelectiveStateTheRelationMarksStay)
{
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    btnClass.PutVisibleInfoBasedOnRelationOfBtns({2, 3});
    btnClass.SetVisibleInfoBasedOnLimitedRecListOfAllBtns(false);
    btnClass.SetSelectionInfoOfBtn(2, true);

    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(true);
    EXPECT_TRUE(btnClass.PutVisibleInfoBasedOnRelationOfBtns({4}));
    const DWORD recs[] = {2};
    EXPECT_TRUE(btnClass.PutVisibleInfoBasedOnRelationOfRecs(bnLink, recs, 1));
    EXPECT_EQ(GetVisibleInfo(4), VISINFO_RELATION | VISINFO_LIMITEDREC);
    EXPECT_TRUE(btnClass.PutVisibleInfoBasedOnLimitedRecListOfBtns({3, 4}));
    EXPECT_EQ(GetVisibleInfo(3), 0u);
    EXPECT_EQ(GetVisibleInfo(4), VISINFO_RELATION);
    EXPECT_TRUE(btnClass.PutVisibleInfoOfBtns({2, 5}, VISINFO_RELATION | VISINFO_LIMITEDREC));
    EXPECT_EQ(GetVisibleInfo(5), VISINFO_RELATION); // of the two only the limitation went
    EXPECT_EQ(GetDisplayed(), List({2, 3}));
}

TEST_F(VCBtnClassTest, OtherReasonsAreNotPutBackThisWay)
{
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    for (const unsigned int bits : {1u, VISINFO_NOREC, VISINFO_NOREC | VISINFO_RELATION, 0x40u}) {
        EXPECT_FALSE(btnClass.PutVisibleInfoOfBtns({1, 2}, bits));
        EXPECT_EQ(GetVisibleInfo(1), VISINFO_NOREC | VISINFO_RELATION);
        EXPECT_EQ(GetVisibleInfo(2), VISINFO_RELATION);
    }
}

TEST_F(VCBtnClassTest, SpecialButtonsTakePartInWhatConcernsAll)
{
    btnClass.AddSpBtn(INC, "group");
    EXPECT_EQ(btnClass.GetDispBtnCount(), 6u);
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    EXPECT_EQ(GetVisibleInfo(INC), VISINFO_RELATION);
    btnClass.SetVisibleInfoBasedOnLimitedRecListOfAllBtns(false);
    EXPECT_EQ(GetVisibleInfo(INC), VISINFO_RELATION | VISINFO_LIMITEDREC);
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(true);
    btnClass.SetVisibleInfoBasedOnLimitedRecListOfAllBtns(true);
    EXPECT_EQ(GetDisplayed(), List({2, 3, 4, 5, 6, INC}));
}

TEST_F(VCBtnClassTest, AButtonThatComesBackBringsTheSpecialButtonsAboveItBack)
{
    std::unique_ptr<IRpLink> otherRpLink;
    CTestBtnClass other(otherRpLink, SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN);
    other.AddSpBtn(INC + 1, "across");
    for (const DWORD spBtnID : {INC, CLL, CLL + 1, CLL + 2})
        btnClass.AddSpBtn(spBtnID, "group");
    btnClass.MakeMember(2, INC);
    btnClass.MakeMember(INC, CLL); // nested
    btnClass.MakeMember(6, CLL + 1);
    btnClass.MakeMemberOfOther(INC, other, INC + 1);
    const auto hideAll = [&] {
        btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
        other.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    };
    const auto expectBack = [&](bool expected) {
        unsigned int ofOther = 0;
        other.GetVisibleInfoOfBtn(INC + 1, ofOther);
        EXPECT_EQ(GetVisibleInfo(INC) == 0, expected);
        EXPECT_EQ(GetVisibleInfo(CLL) == 0, expected);
        EXPECT_EQ(ofOther == 0, expected);
        EXPECT_EQ(GetVisibleInfo(CLL + 1), VISINFO_RELATION);
        EXPECT_EQ(GetVisibleInfo(CLL + 2), VISINFO_RELATION);
    };
    hideAll();
    expectBack(false);
    btnClass.PutVisibleInfoBasedOnRelationOfBtns({2, 3});
    expectBack(true);

    hideAll();
    const DWORD recs[] = {0, 1};
    btnClass.PutVisibleInfoBasedOnRelationOfRecs(bnLink, recs, 2);
    expectBack(true);

    hideAll();
    const DWORD manyRecs[] = {0, 1, 0, 1, 0, 1, 0, 1};
    btnClass.PutVisibleInfoBasedOnRelationOfRecs(bnLink, manyRecs, 8);
    expectBack(true);

    hideAll();
    EXPECT_TRUE(btnClass.PutVisibleInfoOfBtn(btnClass.FindBtn(2), VISINFO_RELATION));
    expectBack(true);
    EXPECT_FALSE(btnClass.PutVisibleInfoOfBtn(nullptr, VISINFO_RELATION));

    // A class in selective state keeps its own marks, but what is above in other classes is told.
    hideAll();
    btnClass.SetSelectionInfoOfBtn(4, true);
    for (const bool manyAtOnce : {false, true}) {
        other.SetVisibleInfoBasedOnRelationOfAllBtns(false);
        if (manyAtOnce)
            btnClass.PutVisibleInfoBasedOnRelationOfRecs(bnLink, manyRecs, 8);
        else
            btnClass.PutVisibleInfoBasedOnRelationOfBtns({2});
        unsigned int ofOther = 4711;
        other.GetVisibleInfoOfBtn(INC + 1, ofOther);
        EXPECT_EQ(ofOther, 0u);
        EXPECT_EQ(GetVisibleInfo(INC), VISINFO_RELATION);
        EXPECT_EQ(GetVisibleInfo(2), VISINFO_RELATION);
    }
}

TEST_F(VCBtnClassTest, AnUnhiddenButtonTellsThoseAboveOfTheRelationOnly)
{
    btnClass.AddSpBtn(INC, "group");
    btnClass.MakeMember(2, INC);
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    btnClass.SetVisibleInfoBasedOnLimitedRecListOfAllBtns(false);
    btnClass.PutVisibleInfoBasedOnRelationOfBtns({2});
    btnClass.PutVisibleInfoBasedOnLimitedRecListOfBtns({2});
    btnClass.SetOwnVisibleInfo(*btnClass.FindBtn(INC), VISINFO_RELATION | VISINFO_LIMITEDREC, true);
    btnClass.PutVisibleInfoOfBtn(btnClass.FindBtn(2),
                                 VISINFO_LIMITEDREC); // nothing to clear: the way ends here
    EXPECT_EQ(GetVisibleInfo(INC), VISINFO_RELATION | VISINFO_LIMITEDREC);
    btnClass.PutVisibleInfoOfBtn(btnClass.FindBtn(2), VISINFO_RELATION);
    EXPECT_EQ(GetVisibleInfo(INC), VISINFO_LIMITEDREC);
}

TEST_F(VCBtnClassTest, TenThousandNestedSpecialButtonsAreBroughtBackWithoutRecursion)
{
    for (DWORD i = 0; i < 10000; ++i)
        btnClass.AddSpBtn(INC + i, "group");
    btnClass.MakeMember(2, INC);
    for (DWORD i = 1; i < 10000; ++i)
        btnClass.MakeMember(INC + i - 1, INC + i);
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    btnClass.PutVisibleInfoBasedOnRelationOfBtns({2});
    EXPECT_EQ(btnClass.GetDispBtnCount(), 10001u);
}

TEST_F(VCBtnClassTest, RecordsOfButtonsAreUnitedAscending)
{
    DWORD areas[3][5];
    DWORD* recList = areas[0];
    DWORD* buffers[] = {areas[1], areas[2]};
    DWORD count = 0;
    DWORD failedID = 0;
    EXPECT_TRUE(VCBtnClass::GetRecListThatRelatesToBtns(&btnClass, {5, 2, 4, 5, 99}, recList, count, buffers,
                                                        failedID));
    EXPECT_EQ(List(recList, recList + count), List({0, 2, 3}));
    EXPECT_TRUE(btnClass.GetRecListThatRelatesToBtn(3, recList, count, buffers));
    EXPECT_EQ(List(recList, recList + count), List({0, 1, 2, 3}));
    EXPECT_TRUE(VCBtnClass::GetRecListThatRelatesToBtns(&btnClass, {6}, recList, count, buffers, failedID));
    EXPECT_EQ(List(recList, recList + count), List({0, 1, 2, 3, 4}));
    EXPECT_TRUE(btnClass.GetRecListThatRelatesToBtn(77, recList, count, buffers)); // no such value: no record
    EXPECT_EQ(count, 5u);
    EXPECT_FALSE(btnClass.GetRecListThatRelatesToBtn(CLL, recList, count, buffers));
    EXPECT_FALSE(
        VCBtnClass::GetRecListThatRelatesToBtns(&btnClass, {2, CLL}, recList, count, buffers, failedID));
    EXPECT_EQ(failedID, CLL);
    EXPECT_FALSE(VCBtnClass::GetRecListThatRelatesToBtns(nullptr, {2}, recList, count, buffers, failedID));
}

TEST_F(VCBtnClassTest, ClearOfFixedSpecDropsSelectionAndReasonsOfUsers)
{
    std::unique_ptr<IRpLink> otherRpLink;
    CTestBtnClass common(otherRpLink, SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN);
    CTestBtnClass fixed(otherRpLink, SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN);
    btnClass.MakeMemberOfOther(2, common, INC);
    btnClass.MakeMemberOfOther(3, fixed, INC);
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    btnClass.SetVisibleInfoBasedOnLimitedRecListOfAllBtns(false);
    btnClass.SetSelectionInfo(true);
    btnClass.SetSelectionInfoOfAllBtns(true);
    btnClass.SetDispEmpValBtnInfo(false);
    btnClass.ClearOfFixedSpec();
    EXPECT_FALSE(btnClass.IsBtnClassSelected());
    EXPECT_FALSE(btnClass.IsBtnSelectiveState());
    EXPECT_FALSE(btnClass.IsNewBtnMadeSelState());
    EXPECT_EQ(btnClass.GetSelBtnCount(), 0u);
    EXPECT_EQ(GetVisibleInfo(1), VISINFO_NOREC);
    EXPECT_TRUE(btnClass.GetDispEmpValBtnInfo());
    EXPECT_EQ(GetDisplayed(), List({2, 3, 4, 5, 6}));
    List classIDs;
    EXPECT_EQ(btnClass.GetBtnClassIDListOfRefOrg(classIDs), 1u);
    EXPECT_EQ(classIDs, List({SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN}));
    EXPECT_TRUE(btnClass.FindBtn(2)->HasBackReferences());
    EXPECT_FALSE(btnClass.FindBtn(3)->HasBackReferences());
}

TEST_F(VCBtnClassTest, ACopyAnswersAlikeAndIsIndependent)
{
    btnClass.SetBtnAppOrdList(bnLink);
    btnClass.SetAliasOfBtn(3, "zz");
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    btnClass.PutVisibleInfoBasedOnRelationOfBtns({2, 3, 4});
    btnClass.SetSelectionInfoOfBtn(3, true);
    btnClass.SetNewBtnMadeSelState(true);

    const std::unique_ptr<IRpLink> otherRpLink = std::make_unique<CRpLink_OnMemVer>();
    otherRpLink->InsertFld(CLASS_ID);
    const DWORD rec = 4;
    otherRpLink->SetRecList(CLASS_ID, 2, &rec, 1);
    CTestBtnClass copy(otherRpLink, 9);
    copy.Copy(btnClass, otherRpLink);
    btnClass.SetSelectionInfoOfAllBtns(false);
    btnClass.Clear();
    EXPECT_EQ(btnClass.GetBtnCount(), 1u);

    EXPECT_EQ(copy.GetID(), CLASS_ID);
    EXPECT_EQ(copy.GetBtnCount(), 6u);
    EXPECT_EQ(copy.GetRecCount(), 5u);
    EXPECT_TRUE(copy.IsBtnSelectiveState());
    EXPECT_TRUE(copy.IsNewBtnMadeSelState());
    List btnIDs;
    EXPECT_EQ(copy.GetSelectedBtnIDList(btnIDs), 1u);
    EXPECT_EQ(btnIDs, List({3}));
    copy.GetDisplayedBtnIDList(btnIDs);
    EXPECT_EQ(btnIDs, List({2, 3, 4}));
    copy.GetBtnNameOrdList(VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS, btnIDs);
    EXPECT_EQ(btnIDs, List({2, 4, 5, 6, 3})); // the empty value has no record, "zz" is last
    copy.GetBtnAppOrdList(VCBtnClass::ORDLIST_NORMAL, btnIDs);
    EXPECT_EQ(btnIDs, List({2, 3, 4}));
    DWORD areas[3][5];
    DWORD* recList = areas[0];
    DWORD* buffers[] = {areas[1], areas[2]};
    DWORD count = 0;
    EXPECT_TRUE(copy.GetRecListThatRelatesToBtn(2, recList, count, buffers)); // from the other table
    EXPECT_EQ(List(recList, recList + count), List({4}));
    // Values still find their buttons.
    const char* const values[] = {"e", "new", ""};
    DWORD added[3];
    TCBtnIDAssArr<DWORD> addedCounts;
    EXPECT_TRUE(copy.AddRecs(5, 3, values, added, addedCounts));
    EXPECT_EQ(added[0], 6u);
    EXPECT_EQ(added[1], 7u);
    EXPECT_EQ(added[2], 1u);
}

TEST_F(VCBtnClassTest, ExhaustedMemoryInACopyLeavesNoButtonOfTwoOwners)
{
    btnClass.SetBtnAppOrdList(bnLink);
    btnClass.SetSelectionInfoOfBtn(3, true);
    const int failures = NSKZ::Test::FailEveryAllocation(
        [this] { return std::make_unique<CTestBtnClass>(rpLink, 9); },
        [this](const std::unique_ptr<CTestBtnClass>& copy) { copy->Copy(btnClass, rpLink); },
        [](const std::unique_ptr<CTestBtnClass>& copy) { EXPECT_EQ(copy->GetBtnCount(), 0u); });
    EXPECT_GE(failures, 20);
    EXPECT_EQ(btnClass.GetBtnCount(), 6u);
}

TEST_F(VCBtnClassTest, ExhaustedMemoryInSettingAnAliasChangesNothing)
{
    const std::string longText(5000, 'x');
    const int failures = NSKZ::Test::FailEveryAllocation(
        [this] {
            auto copy = std::make_unique<CTestBtnClass>(rpLink, 9);
            copy->Copy(btnClass, rpLink);
            return copy;
        },
        [&longText](const std::unique_ptr<CTestBtnClass>& copy) { copy->SetAliasOfBtn(3, longText.c_str()); },
        [](const std::unique_ptr<CTestBtnClass>& copy) {
            const char* text = nullptr;
            copy->GetAliasOfBtn(3, text);
            EXPECT_STREQ(text, "b");
            List btnIDs;
            copy->GetBtnNameOrdList(VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS, btnIDs);
            EXPECT_EQ(btnIDs, List({2, 3, 4, 5, 6}));
        });
    EXPECT_GE(failures, 3);
}

// --- Orders

TEST(VCBtnClass, TheRuleOfTheOrderListsKnowsTwoExceptions)
{
    EXPECT_TRUE(VCBtnClass::IsIncludInOrdList(0, VCBtnClass::ORDLIST_NORMAL));
    EXPECT_FALSE(VCBtnClass::IsIncludInOrdList(VISINFO_NOREC, VCBtnClass::ORDLIST_NORMAL));
    EXPECT_TRUE(VCBtnClass::IsIncludInOrdList(0x7FF, VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS));
    const unsigned int expanded = VCBtnClass::ORDLIST_INCLUDE_CNDCLLMEMBERBTNS;
    EXPECT_TRUE(VCBtnClass::IsIncludInOrdList(VISINFO_CNDCLLMEMBER, expanded));
    EXPECT_FALSE(VCBtnClass::IsIncludInOrdList(VISINFO_CNDCLLMEMBER, VCBtnClass::ORDLIST_NORMAL));
    EXPECT_FALSE(VCBtnClass::IsIncludInOrdList(VISINFO_CNDCLLMEMBER | VISINFO_RELATION, expanded));
    EXPECT_FALSE(VCBtnClass::IsIncludInOrdList(VISINFO_SELCLLMEMBER, expanded));
}

// The values b, (empty), a, b, c in this order: buttons 2, 1, 3, 4.
class VCBtnClassOrderTest : public ::testing::Test
{
protected:
    VCBtnClassOrderTest() : rpLink(std::make_unique<CRpLink_OnMemVer>()), btnClass(rpLink)
    {
        const char* const values[] = {"b", nullptr, "a", "b", "c"};
        DWORD cells[5];
        TCBtnIDAssArr<DWORD> counts;
        btnClass.AddRecs(0, 5, values, cells, counts);
        bnLink.InsertFld(CLASS_ID, 5, cells);
        btnClass.SetBtnAppOrdList(bnLink);
    }
    List GetAppOrder(unsigned int flags) const
    {
        List btnIDs{99};
        btnClass.GetBtnAppOrdList(flags, btnIDs);
        return btnIDs;
    }
    List GetNameOrder(unsigned int flags) const
    {
        List btnIDs{99};
        btnClass.GetBtnNameOrdList(flags, btnIDs);
        return btnIDs;
    }

    std::unique_ptr<IRpLink> rpLink;
    CBnLink_OnMemVer bnLink;
    CTestBtnClass btnClass;
};

constexpr unsigned int DESCEND = VCBtnClass::ORDLIST_DESCEND;
constexpr unsigned int ALL = VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS;
constexpr unsigned int EMPTY_LAST = VCBtnClass::ORDLIST_TAILEND_EMPVALBTN;

TEST_F(VCBtnClassOrderTest, AppearanceFollowsTheRecords)
{
    EXPECT_EQ(GetAppOrder(0), List({2, 1, 3, 4}));
    EXPECT_EQ(GetAppOrder(DESCEND), List({4, 3, 1, 2}));
    EXPECT_EQ(GetAppOrder(EMPTY_LAST), List({2, 3, 4, 1}));
    EXPECT_EQ(GetAppOrder(EMPTY_LAST | DESCEND), List({4, 3, 2, 1})); // last, not first
}

TEST_F(VCBtnClassOrderTest, NamesFollowTheShownTexts)
{
    EXPECT_EQ(GetNameOrder(0), List({3, 2, 4, 1})); // a, b, c, empty
    EXPECT_EQ(GetNameOrder(DESCEND), List({1, 4, 2, 3}));
    EXPECT_EQ(GetNameOrder(EMPTY_LAST | DESCEND), List({4, 2, 3, 1}));
    btnClass.SetAliasOfBtn(3, "b");
    EXPECT_EQ(GetNameOrder(0), List({2, 3, 4, 1})); // behind the other of that text
    btnClass.SetAliasOfBtn(2, "b");
    EXPECT_EQ(GetNameOrder(0), List({3, 2, 4, 1})); // a change moves a button behind the others
}

TEST_F(VCBtnClassOrderTest, HiddenButtonsAreLeftOutUnlessAskedFor)
{
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    btnClass.PutVisibleInfoBasedOnRelationOfBtns({1, 4});
    EXPECT_EQ(GetAppOrder(0), List({1, 4}));
    EXPECT_EQ(GetNameOrder(0), List({4, 1}));
    EXPECT_EQ(GetNameOrder(EMPTY_LAST | DESCEND), List({4, 1}));
    EXPECT_EQ(GetAppOrder(ALL), List({2, 1, 3, 4}));
    EXPECT_EQ(GetNameOrder(ALL), List({3, 2, 4, 1}));
    btnClass.SetOwnVisibleInfo(*btnClass.FindBtn(4), VISINFO_CNDCLLMEMBER, true);
    EXPECT_EQ(GetAppOrder(0), List({1}));
    EXPECT_EQ(GetAppOrder(VCBtnClass::ORDLIST_INCLUDE_CNDCLLMEMBERBTNS), List({1, 4}));
    EXPECT_EQ(GetNameOrder(VCBtnClass::ORDLIST_INCLUDE_CNDCLLMEMBERBTNS), List({4, 1}));
}

TEST_F(VCBtnClassOrderTest, AHostsOrderIsFiltered)
{
    btnClass.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    btnClass.PutVisibleInfoBasedOnRelationOfBtns({1, 3, 4});
    List btnIDs;
    btnClass.GetBtnUnknownOrdList(0, {4, 77, 1, 2, 3}, btnIDs);
    EXPECT_EQ(btnIDs, List({4, 1, 3}));
    btnClass.GetBtnUnknownOrdList(DESCEND | EMPTY_LAST, {4, 77, 1, 2, 3}, btnIDs);
    EXPECT_EQ(btnIDs, List({3, 4, 1}));
    btnClass.GetBtnUnknownOrdList(ALL, {4, 77, 1, 2, 3}, btnIDs);
    EXPECT_EQ(btnIDs, List({4, 77, 1, 2, 3})); // nothing is looked up
    btnClass.GetBtnUnknownOrdList(0, btnIDs, btnIDs);
    EXPECT_EQ(btnIDs, List({4, 1, 3})); // the order may be the output
}

TEST_F(VCBtnClassOrderTest, AnOrderThatNamesNoButtonOfTheClassIsAbnormal)
{
    const DWORD cells[] = {2, 55};
    bnLink.Clear();
    bnLink.InsertFld(CLASS_ID, 2, cells);
    btnClass.SetBtnAppOrdList(bnLink);
    List btnIDs{7};
    try {
        btnClass.GetBtnAppOrdList(0, btnIDs);
        FAIL();
    } catch (const ECAbnormalData& error) {
        EXPECT_NE(std::strstr(error.what(), "(BtnClsID:3 BtnID:55)"), nullptr);
        EXPECT_EQ(error.GetLine(), 3772);
        EXPECT_STREQ(error.GetFile(), "Src/VCBtnClass");
    }
    EXPECT_EQ(btnIDs, List({7}));
    EXPECT_EQ(GetAppOrder(ALL), List({2, 55}));
}

TEST_F(VCBtnClassOrderTest, ATableWithoutTheClassIsAbnormal)
{
    bnLink.DeleteFld(CLASS_ID);
    try {
        btnClass.SetBtnAppOrdList(bnLink);
        FAIL();
    } catch (const ECAbnormalData& error) {
        EXPECT_NE(std::strstr(error.what(), "(BtnClsID:3)"), nullptr);
        EXPECT_EQ(error.GetLine(), 3629);
        EXPECT_STREQ(error.GetFunction(), "NSKZ::NSKZCore::VCBtnClass::SetBtnAppOrdList");
    }
    EXPECT_EQ(GetAppOrder(0), List({2, 1, 3, 4}));
}

} // namespace
