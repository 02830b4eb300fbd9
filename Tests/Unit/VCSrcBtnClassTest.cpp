#include "CBnLink_OnMemVer.h"
#include "CBtnClass.h"
#include "CDateBtnClass.h"
#include "CNumBtnClass.h"
#include "CRpLink_OnMemVer.h"
#include "CTimeBtnClass.h"
#include "Support/CAllocFault.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;

namespace {

using List = std::vector<DWORD>;

class CProbeBtnClass final : public VCSrcBtnClass
{
public:
    explicit CProbeBtnClass(const std::unique_ptr<IRpLink>& rpLinkOfEnv)
        : VCSrcBtnClass(1, 1, "empty", nullptr, rpLinkOfEnv)
    {}
    SCBUICoreCom::EBtnClassType GetBtnClassType() const override { return SCBUICoreCom::BTNCLSTYPE_NORMAL; }
    using VCSrcBtnClass::dataBtnNextID;
    using VCSrcBtnClass::FindBtn;
    using VCSrcBtnClass::nameOrdList;
    using VCSrcBtnClass::SetOwnVisibleInfo;
    List appeared;
    List disappeared;

protected:
    void AdjstAccordingToBtnAppearance(const VCBtn& btn) override { appeared.push_back(btn.id); }
    void AdjstAccordingToBtnDisappearance(const VCBtn& btn) noexcept override
    {
        disappeared.push_back(btn.id);
    }
};

template <class TBtnClass>
class TClassAndTable
{
public:
    TClassAndTable() : rpLink(std::make_unique<CRpLink_OnMemVer>()), btnClass(Make(rpLink))
    {
        rpLink->InsertFld(1);
    }

    // Adds records behind those there are, to the class and to the table.
    List Add(const std::vector<const char*>& values)
    {
        List cells(values.size());
        const auto first = btnClass->GetRecCount();
        added =
            btnClass->AddRecs(first, static_cast<DWORD>(values.size()), values.data(), cells.data(), counts);
        for (DWORD i = 0; added && i < cells.size(); ++i) {
            const DWORD rec = first + i;
            rpLink->AddRecList(1, cells[i], &rec, 1);
        }
        return cells;
    }
    void Delete(DWORD first, DWORD count)
    {
        rpLink->DeleteRec(first, count);
        btnClass->DeleteRecs(first, count);
    }
    List GetNameOrder(unsigned int flags = 0) const
    {
        List btnIDs;
        btnClass->GetBtnNameOrdList(flags, btnIDs);
        return btnIDs;
    }
    unsigned int GetVisibleInfo(DWORD btnID) const
    {
        unsigned int visibleInfo = 4711;
        btnClass->GetVisibleInfoOfBtn(btnID, visibleInfo);
        return visibleInfo;
    }

    std::unique_ptr<IRpLink> rpLink;
    std::unique_ptr<TBtnClass> btnClass;
    TCBtnIDAssArr<DWORD> counts;
    bool added = false;

private:
    static std::unique_ptr<TBtnClass> Make(const std::unique_ptr<IRpLink>& rpLink)
    {
        if constexpr (std::is_same_v<TBtnClass, CProbeBtnClass>)
            return std::make_unique<TBtnClass>(rpLink);
        else
            return std::make_unique<TBtnClass>(1, 1, "empty", nullptr, rpLink);
    }
};

TEST(VCSrcBtnClass, ANewClassHasTheEmptyValueButtonWithoutARecord)
{
    TClassAndTable<CBtnClass> fixture;
    EXPECT_EQ(fixture.btnClass->GetBtnCount(), 1u);
    EXPECT_EQ(fixture.btnClass->GetFldID(), 1u);
    EXPECT_EQ(fixture.GetVisibleInfo(1), VISINFO_NOREC);
    EXPECT_TRUE(fixture.btnClass->GetDispEmpValBtnInfo());
    EXPECT_TRUE(fixture.GetNameOrder(VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS).empty());
}

TEST(VCSrcBtnClass, TypesTellTheKindsOfField)
{
    EXPECT_EQ(TClassAndTable<CBtnClass>().btnClass->GetBtnClassType(), SCBUICoreCom::BTNCLSTYPE_NORMAL);
    EXPECT_EQ(TClassAndTable<CNumBtnClass>().btnClass->GetBtnClassType(), SCBUICoreCom::BTNCLSTYPE_NUM);
    EXPECT_EQ(TClassAndTable<CDateBtnClass>().btnClass->GetBtnClassType(), SCBUICoreCom::BTNCLSTYPE_DATE);
    EXPECT_EQ(TClassAndTable<CTimeBtnClass>().btnClass->GetBtnClassType(), SCBUICoreCom::BTNCLSTYPE_TIME);
}

TEST(VCSrcBtnClass, AValueSeenTwiceInOneCallGetsOneButton)
{
    TClassAndTable<CProbeBtnClass> fixture;
    EXPECT_EQ(fixture.Add({"tea", "milk", "tea", "", nullptr, "milk", "tea"}), List({2, 3, 2, 1, 1, 3, 2}));
    EXPECT_EQ(fixture.btnClass->GetBtnCount(), 3u);
    DWORD count = 0;
    EXPECT_EQ(fixture.counts.GetSize(), 3u);
    EXPECT_TRUE(fixture.counts.Get(2, count));
    EXPECT_EQ(count, 3u);
    EXPECT_TRUE(fixture.counts.Get(3, count));
    EXPECT_EQ(count, 2u);
    EXPECT_TRUE(fixture.counts.Get(1, count));
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(fixture.btnClass->GetRecCount(), 7u);
    EXPECT_EQ(fixture.btnClass->appeared, List({2, 3, 1}));
}

TEST(VCSrcBtnClass, CountsAreThoseOfTheCallAlone)
{
    TClassAndTable<CBtnClass> fixture;
    fixture.Add({"tea", "tea"});
    fixture.Add({"milk", "tea"});
    DWORD count = 0;
    EXPECT_TRUE(fixture.counts.Get(2, count));
    EXPECT_EQ(count, 1u);
    fixture.Add({});
    EXPECT_EQ(fixture.counts.GetSize(), 0u);
}

TEST(VCSrcBtnClass, OnlyEmptyValuesBringTheEmptyValueButtonForth)
{
    TClassAndTable<CBtnClass> fixture;
    fixture.Add({"", nullptr});
    EXPECT_EQ(fixture.GetVisibleInfo(1), 0u);
    EXPECT_EQ(fixture.GetNameOrder(), List({1}));
    EXPECT_EQ(fixture.btnClass->GetDispBtnCount(), 1u);
}

TEST(VCSrcBtnClass, ANewButtonIsNotSelectedWhateverTheClassRemembers)
{
    TClassAndTable<CBtnClass> fixture;
    fixture.btnClass->SetNewBtnMadeSelState(true);
    fixture.Add({"tea"});
    bool sel = true;
    fixture.btnClass->GetSelectionInfoOfBtn(2, sel);
    EXPECT_FALSE(sel);
}

TEST(VCSrcBtnClass, WithoutAnIdentifierLeftKnownValuesStillComeAndNewOnesFail)
{
    TClassAndTable<CProbeBtnClass> fixture;
    fixture.Add({"tea"});
    fixture.btnClass->dataBtnNextID = SCBUICoreCom::BTN_ID_NRM_END + 1;
    EXPECT_EQ(fixture.Add({"tea", ""}), List({2, 1}));
    EXPECT_TRUE(fixture.added);
    fixture.Add({"tea", "milk"});
    EXPECT_FALSE(fixture.added);
    EXPECT_EQ(fixture.btnClass->GetBtnCount(), 2u);
    EXPECT_EQ(fixture.btnClass->GetRecCount(), 3u);
}

TEST(VCSrcBtnClass, AValueThatLostItsRecordsKeepsItsButtonAndGetsItBack)
{
    TClassAndTable<CProbeBtnClass> fixture;
    fixture.Add({"tea", "milk", "tea"});
    fixture.btnClass->SetSelectionInfoOfBtn(2, true);
    fixture.Delete(0, 1);
    EXPECT_EQ(fixture.GetVisibleInfo(2), 0u);            // one record is left
    EXPECT_EQ(fixture.btnClass->disappeared, List({1})); // the empty value is looked at each time
    fixture.Delete(1, 1);
    EXPECT_EQ(fixture.GetVisibleInfo(2), VISINFO_NOREC);
    EXPECT_EQ(fixture.GetNameOrder(VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS), List({3}));
    EXPECT_EQ(fixture.btnClass->GetRecCount(), 1u);
    EXPECT_EQ(fixture.btnClass->GetBtnCount(), 3u);
    EXPECT_EQ(fixture.btnClass->GetSelBtnCount(), 1u);

    fixture.btnClass->appeared.clear();
    EXPECT_EQ(fixture.Add({"beer", "tea"}), List({4, 2}));
    EXPECT_EQ(fixture.GetVisibleInfo(2), 0u);
    EXPECT_EQ(fixture.btnClass->appeared, List({4, 2}));
    EXPECT_EQ(fixture.GetNameOrder(), List({4, 3, 2}));
    bool sel = false;
    fixture.btnClass->GetSelectionInfoOfBtn(2, sel);
    EXPECT_TRUE(sel);
}

TEST(VCSrcBtnClass, AnAliasPutsAButtonWithoutRecordsIntoTheOrderOfNames)
{
    TClassAndTable<CBtnClass> fixture;
    fixture.Add({"tea", "milk"});
    fixture.Delete(0, 1);
    fixture.btnClass->SetAliasOfBtn(2, "coffee");
    EXPECT_EQ(fixture.GetNameOrder(VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS), List({2, 3}));
    // The value still finds its button, and the button stands in the order once.
    EXPECT_EQ(fixture.Add({"tea"}), List({2}));
    EXPECT_EQ(fixture.GetNameOrder(), List({2, 3}));
    EXPECT_EQ(fixture.Add({"coffee"}), List({4})); // an alias is no value
}

TEST(VCSrcBtnClass, TheEmptyValueCanBeHidden)
{
    TClassAndTable<CBtnClass> fixture;
    fixture.Add({"tea", ""});
    fixture.btnClass->SetDispEmpValBtnInfo(false);
    EXPECT_FALSE(fixture.btnClass->GetDispEmpValBtnInfo());
    EXPECT_EQ(fixture.GetVisibleInfo(1), VISINFO_EMPVALNODISP);
    EXPECT_EQ(fixture.btnClass->GetDispBtnCount(), 1u);
    fixture.btnClass->SetDispEmpValBtnInfo(true);
    EXPECT_EQ(fixture.GetVisibleInfo(1), 0u);
}

TEST(VCSrcBtnClass, AHiddenEmptyValueIsAMemberOfNothing)
{
    TClassAndTable<CProbeBtnClass> fixture;
    fixture.Add({""});
    VCBtn& empVal = *fixture.btnClass->FindBtn(1);
    empVal.backReferences = std::make_unique<VCBtn::SBackReferences>();
    empVal.backReferences->spBtnIDsInClass = {SCBUICoreCom::BTN_ID_CLL_BEGIN};
    empVal.backReferences->spBtnIDsOfOtherClass = {{9, SCBUICoreCom::BTN_ID_VIRINC_BEGIN}};
    fixture.btnClass->SetOwnVisibleInfo(
        empVal, VISINFO_SELCLLMEMBER | VISINFO_CNDCLLMEMBER | VISINFO_INCMEMBER | VISINFO_NOREC, true);
    fixture.btnClass->SetDispEmpValBtnInfo(false);
    EXPECT_FALSE(empVal.HasBackReferences());
    EXPECT_EQ(fixture.GetVisibleInfo(1), VISINFO_NOREC | VISINFO_EMPVALNODISP);
    fixture.btnClass->SetDispEmpValBtnInfo(true);
    EXPECT_EQ(fixture.GetVisibleInfo(1), VISINFO_NOREC);
}

TEST(VCSrcBtnClass, ClearLeavesAClassAsNew)
{
    TClassAndTable<CNumBtnClass> fixture;
    fixture.Add({"1", "x", ""});
    fixture.btnClass->SetDispEmpValBtnInfo(false);
    fixture.btnClass->Clear();
    EXPECT_EQ(fixture.btnClass->GetID(), 0u);
    EXPECT_EQ(fixture.btnClass->GetFldID(), 0u);
    EXPECT_EQ(fixture.btnClass->GetBtnCount(), 1u);
    EXPECT_EQ(fixture.btnClass->GetRecCount(), 0u);
    EXPECT_TRUE(fixture.btnClass->GetDispEmpValBtnInfo());
    EXPECT_EQ(fixture.GetVisibleInfo(1), VISINFO_NOREC);
    const char* text = nullptr;
    fixture.btnClass->GetAliasOfBtn(1, text);
    EXPECT_STREQ(text, "");
    EXPECT_TRUE(fixture.GetNameOrder(VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS).empty());
    const char* const values[] = {"x"};
    DWORD cell = 0;
    EXPECT_TRUE(fixture.btnClass->AddRecs(0, 1, values, &cell, fixture.counts));
    EXPECT_EQ(cell, 2u);
}

TEST(VCSrcBtnClass, ExhaustedMemoryInAddRecsLeavesAClassThatGoesOn)
{
    const int failures = NSKZ::Test::FailEveryAllocation(
        [] {
            auto fixture = std::make_unique<TClassAndTable<CNumBtnClass>>();
            fixture->Add({"1", "x"});
            return fixture;
        },
        [](const auto& fixture) {
            const char* const values[] = {"2", "y", "1", "3", "z", "a longer text than the others"};
            DWORD cells[6];
            fixture->btnClass->AddRecs(2, 6, values, cells, fixture->counts);
        },
        [](const auto& fixture) {
            // Whatever was made stays whole: every button is found, listed once, and the next value gets the
            // next identifier.
            const DWORD btnCount = fixture->btnClass->GetBtnCount();
            EXPECT_EQ(fixture->GetNameOrder().size(), btnCount - 1);
            const char* const values[] = {"1", "a new one"};
            DWORD cells[2];
            EXPECT_TRUE(fixture->btnClass->AddRecs(2, 2, values, cells, fixture->counts));
            EXPECT_EQ(cells[0], 2u);
            EXPECT_EQ(cells[1], btnCount + 1);
        });
    EXPECT_GE(failures, 15);
}

TEST(VCSrcBtnClass, ExhaustedMemoryLeavesAButtonThatIsToComeBackOutOfTheOrders)
{
    const int failures = NSKZ::Test::FailEveryAllocation(
        [] {
            auto fixture = std::make_unique<TClassAndTable<CProbeBtnClass>>();
            fixture->Add({"tea", "milk"});
            fixture->Delete(0, 1);
            fixture->btnClass->appeared = List();
            return fixture;
        },
        [](const auto& fixture) {
            const char* const values[] = {"tea"};
            DWORD cell = 0;
            fixture->btnClass->AddRecs(1, 1, values, &cell, fixture->counts);
        },
        [](const auto& fixture) {
            EXPECT_EQ(fixture->GetVisibleInfo(2), VISINFO_NOREC);
            EXPECT_FALSE(fixture->btnClass->nameOrdList.Exist(2));
        });
    EXPECT_GE(failures, 2);
}

// --- Numeric classes

TEST(CNumBtnClass, NamesOrderByNumberThenTheEmptyValueThenTexts)
{
    TClassAndTable<CNumBtnClass> fixture;
    fixture.Add({"10", "9", "abc", "1e2", ""}); // 2, 3, 4, 5, 1
    EXPECT_EQ(fixture.GetNameOrder(), List({3, 2, 5, 1, 4}));
    EXPECT_EQ(fixture.GetNameOrder(VCBtnClass::ORDLIST_DESCEND), List({1, 5, 2, 3, 4}));
    EXPECT_EQ(fixture.GetNameOrder(VCBtnClass::ORDLIST_TAILEND_EMPVALBTN), List({3, 2, 5, 4, 1}));
    EXPECT_EQ(fixture.GetNameOrder(VCBtnClass::ORDLIST_TAILEND_EMPVALBTN | VCBtnClass::ORDLIST_DESCEND),
              List({5, 2, 3, 4, 1}));
}

TEST(CNumBtnClass, NegativeNumbersOrderByValueAndEqualOnesByAppearance)
{
    TClassAndTable<CNumBtnClass> fixture;
    fixture.Add({"3", "-5", "1.0", "1", "b", "a"});
    EXPECT_EQ(fixture.GetNameOrder(), List({3, 4, 5, 2, 7, 6}));
}

TEST(CNumBtnClass, AButtonThatComesBackStandsBehindItsEquals)
{
    TClassAndTable<CNumBtnClass> fixture;
    fixture.Add({"1", "1.0", "x", "y"});
    fixture.Delete(0, 1);
    EXPECT_EQ(fixture.GetNameOrder(VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS), List({3, 4, 5}));
    fixture.Add({"1"});
    EXPECT_EQ(fixture.GetNameOrder(), List({3, 2, 4, 5}));
}

TEST(CNumBtnClass, HiddenButtonsAreLeftOutUnlessAskedForButTheEmptyValueNeedsARecord)
{
    TClassAndTable<CNumBtnClass> fixture;
    fixture.Add({"1", "2", "x"});
    const unsigned int all = VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS;
    EXPECT_EQ(fixture.GetNameOrder(all), List({2, 3, 4})); // no record, no empty value
    fixture.Add({""});
    fixture.btnClass->SetVisibleInfoBasedOnRelationOfAllBtns(false);
    fixture.btnClass->PutVisibleInfoBasedOnRelationOfBtns({3});
    EXPECT_EQ(fixture.GetNameOrder(), List({3}));
    EXPECT_EQ(fixture.GetNameOrder(all), List({2, 3, 1, 4}));
}

TEST(CNumBtnClass, AnAliasGivenWhileAwayDecidesWhereTheButtonComesBack)
{
    TClassAndTable<CNumBtnClass> fixture;
    fixture.Add({"1", "2"});
    fixture.btnClass->SetAliasOfBtn(2, "one");
    fixture.Delete(0, 1);
    fixture.Add({"1"});
    EXPECT_EQ(fixture.GetNameOrder(), List({3, 2})); // once, among the texts
}

TEST(CNumBtnClass, AnAliasGivenWhileThereDecidesWhereTheButtonComesBack)
{
    TClassAndTable<CNumBtnClass> fixture;
    fixture.Add({"1", "2", "3"});
    fixture.btnClass->SetAliasOfBtn(2, "7");
    EXPECT_EQ(fixture.GetNameOrder(), List({2, 3, 4})); // it is not looked at while the button stays
    fixture.Delete(0, 1);
    fixture.Add({"1"});
    EXPECT_EQ(fixture.GetNameOrder(), List({3, 4, 2}));
}

TEST(CNumBtnClass, ACopyKeepsItsOrders)
{
    TClassAndTable<CNumBtnClass> fixture;
    fixture.Add({"10", "9", "abc", "9.0", ""});
    TClassAndTable<CNumBtnClass> other;
    other.btnClass->Copy(*fixture.btnClass, other.rpLink);
    fixture.btnClass->Clear();
    EXPECT_EQ(other.GetNameOrder(), List({3, 5, 2, 1, 4}));
}

TEST(CNumBtnClass, ExhaustedMemoryInACopyLeavesAClassWithoutButtons)
{
    TClassAndTable<CNumBtnClass> fixture;
    fixture.Add({"10", "9", "abc", "a rather long text that is no number", ""});
    const int failures = NSKZ::Test::FailEveryAllocation(
        [] {
            auto target = std::make_unique<TClassAndTable<CNumBtnClass>>();
            target->Add({"1", "x"});
            return target;
        },
        [&fixture](const auto& target) { target->btnClass->Copy(*fixture.btnClass, target->rpLink); },
        [](const auto& target) {
            EXPECT_EQ(target->btnClass->GetBtnCount(), 0u);
            EXPECT_TRUE(target->GetNameOrder(VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS).empty());
        });
    EXPECT_GE(failures, 10);
}

} // namespace
