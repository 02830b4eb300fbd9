#include "CDateBtnClass.h"
#include "CDate.h"
#include "CFiscalMonth.h"
#include "CQuarterTerm.h"
#include "CWeekNum.h"
#include "ECAbnormalData.h"
#include "SCDispForm.h"
#include "SCKZCoreStrDef.h"
#include "Support/CAllocFault.h"
#include "Support/TDateTimeFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using List = BtnIDList;
using Lists = BtnIDLists;
using CFixture = TDateTimeFixture<CDateBtnClass>;
constexpr DWORD CLL = SCBUICoreCom::BTN_ID_CLL_BEGIN;
constexpr DWORD INC = SCBUICoreCom::BTN_ID_INC_BEGIN;
constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;
constexpr unsigned int ALL = VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS;
constexpr unsigned int DESCEND = VCBtnClass::ORDLIST_DESCEND;
constexpr unsigned int EMPVAL_LAST = VCBtnClass::ORDLIST_TAILEND_EMPVALBTN;

CDate MakeDate(DWORD year, DWORD month = VCDate::DATE_UNSETTING, DWORD day = VCDate::DATE_UNSETTING)
{
    CDate date;
    date.SetYearOfTheGrgCalendar(year);
    date.SetMonth(month);
    date.SetDay(day);
    return date;
}

// Dates on both sides of every border, under fiscal years from April, fiscal months to the 20th and weeks
// from Sunday.
class CBorderFixture : public CFixture
{
public:
    CBorderFixture()
    {
        table.SetStartMonth(4);
        table.SetCutOffDate(20);
        table.SetDaysOfTheWeek(VCDate::DAYSOFWEEK_SUNDAY);
        Add({
            "2024-03-20", // 2: Wednesday, the last day of the fiscal year 2023
            "2024-03-21", // 3: Thursday, the first day of the fiscal year 2024
            "2024-03-31", // 4: Sunday
            "2024-04-01", // 5: Monday
            "2025-03-20", // 6: Thursday
            "2019-04-30", // 7: Tuesday, the last day of Heisei
            "2019-05-01", // 8: Wednesday, the first day of Reiwa
            "1989-01-07", // 9: Saturday, the last day of Showa
            "1989-01-08", // 10: Sunday, the first day of Heisei
            "2024-07-15", // 11: Monday
        });
    }
};

// --- Groups of the display form

TEST(CDateBtnClass, AClassWithoutADisplayFormHasNoGroups)
{
    CBorderFixture fixture;
    EXPECT_EQ(fixture.btnClass->GetDispForm(), CDateBtnClass::SDispForm());
    EXPECT_EQ(fixture.btnClass->GetSystemMngrSpBtnCount(), 0u);
    fixture.btnClass->ResetInsideInfoForSpBtnsOfSrcBtns(true, true);
    EXPECT_TRUE(fixture.GetGroups().empty());
    EXPECT_EQ(fixture.GetNameOrder(), List({9, 10, 7, 8, 2, 3, 4, 5, 11, 6}));
}

struct SFormRow
{
    DWORD firstForm;
    DWORD lastForm;
    DWORD option;
    Lists groups;
};

TEST(CDateBtnClass, EveryFormGroupsAsItSaysUnderBothOptions)
{
    const Lists days = {{9}, {10}, {7}, {8}, {2}, {3}, {4}, {5}, {11}, {6}};
    const Lists daysOfMonth = {{5, 8}, {9}, {10}, {11}, {2, 6}, {3}, {7}, {4}};
    const Lists grgMonths = {{9, 10}, {7}, {8}, {2, 3, 4}, {5}, {11}, {6}};
    const Lists jpnMonths = {{9}, {10}, {7}, {8}, {2, 3, 4}, {5}, {11}, {6}};
    const Lists fiscalMonths = {{9, 10}, {7, 8}, {2}, {3, 4, 5}, {11}, {6}};
    const Lists halves = {{9, 10}, {7, 8}, {2}, {3, 4, 5, 11}, {6}};
    const Lists quarters = {{9, 10}, {7, 8}, {2}, {3, 4, 5}, {11}, {6}};
    const Lists grgWeeks = {{9}, {10}, {7, 8}, {2, 3}, {4, 5}, {11}, {6}};
    const Lists jpnWeeks = {{9}, {10}, {7}, {8}, {2, 3}, {4, 5}, {11}, {6}};
    const Lists fiscalWeeks = {{9}, {10}, {7, 8}, {2}, {3}, {4, 5}, {11}, {6}};
    const Lists weeksOfMonth = {{9}, {10}, {7}, {8}, {2, 3}, {4}, {5}, {11}, {6}};
    const SFormRow rows[] = {
        {0, 5, 0, days},
        {0, 5, 1, days},
        {12, 12, 0, daysOfMonth},
        {12, 12, 1, daysOfMonth},
        {6, 7, 0, grgMonths},
        {8, 11, 0, jpnMonths},
        {6, 11, 1, fiscalMonths},
        {101, 106, 0, halves},
        {101, 106, 1, halves},
        {107, 112, 0, quarters},
        {107, 112, 1, quarters},
        {201, 202, 0, grgWeeks},
        {203, 206, 0, jpnWeeks},
        {201, 206, 1, fiscalWeeks},
        {301, 306, 0, weeksOfMonth},
        {301, 306, 1, fiscalWeeks},
        {401, 401, 0, {{9}, {10}, {2, 3, 6}, {4}, {5}, {7}, {8}, {11}}},
        {401, 401, 1, {{3}, {4, 5}, {7, 8}, {11}, {9}, {10}, {2, 6}}},
        {402, 402, 0, {{9}, {10}, {2}, {3, 6}, {4}, {5}, {7}, {8}, {11}}},
        {402, 402, 1, {{3}, {4}, {5}, {7}, {8}, {11}, {9}, {10}, {2}, {6}}},
        {403, 403, 0, {{5}, {8}, {9}, {10}, {11}, {2}, {3, 6}, {7}, {4}}},
        {403, 403, 1, {{3}, {7}, {8}, {4}, {5}, {9}, {10}, {11}, {2}, {6}}},
    };
    CBorderFixture fixture;
    for (const SFormRow& row : rows) {
        for (DWORD form = row.firstForm; form <= row.lastForm; ++form) {
            // The kind tells which of its forms a dialog shows; the groups go by the form.
            const DWORD kind = form <= 12 ? 1 : form <= 112 ? 2 : form <= 401 ? 3 : 4;
            SCOPED_TRACE(testing::Message() << "form " << form << " option " << row.option);
            fixture.btnClass->SetDispForm(MakeDateForm(kind, form, row.option));
            EXPECT_EQ(fixture.GetGroups(), row.groups);
            for (const std::string& text : fixture.GetGroupTexts())
                EXPECT_FALSE(text.empty());
        }
    }
}

TEST(CDateBtnClass, AnOptionOtherThanOneIsThatOfTheCalendar)
{
    CBorderFixture fixture;
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6, 7));
    EXPECT_EQ(fixture.GetGroups(), Lists({{9, 10}, {7}, {8}, {2, 3, 4}, {5}, {11}, {6}}));
}

TEST(CDateBtnClass, GroupsAreNamedInTheDisplayForm)
{
    CBorderFixture fixture;
    fixture.btnClass->SetDispForm(MakeDateForm(1, 0));
    EXPECT_EQ(fixture.GetGroupTexts().front(), "1989/01/07");
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    EXPECT_EQ(fixture.GetGroupTexts(), std::vector<std::string>({"1989/01", "2019/04", "2019/05", "2024/03",
                                                                 "2024/04", "2024/07", "2025/03"}));
    fixture.btnClass->SetDispForm(MakeDateForm(2, 107));
    EXPECT_EQ(fixture.GetGroupTexts().back(), "FY2024 Q4");
}

TEST(CDateBtnClass, KindZeroMakesAGroupForEachDate)
{
    CFixture fixture;
    fixture.Add({"2024-7-1", "2024-07-01", "2024-07-02", "no date"});
    fixture.btnClass->SetDispForm(MakeDateForm(0, 0));
    EXPECT_EQ(fixture.GetGroups(), Lists({{2, 3}, {4}}));
}

TEST(CDateBtnClass, APatternGroupsByThePartsThatItNames)
{
    CBorderFixture fixture;
    fixture.btnClass->SetDispForm(MakeDateForm(5, 0, 0, "{m}"));
    EXPECT_EQ(fixture.GetGroups(), Lists({{9, 10}, {2, 3, 4, 6}, {5, 7}, {8}, {11}}));
    EXPECT_EQ(fixture.GetGroupTexts(), std::vector<std::string>({"1", "3", "4", "5", "7"}));
    fixture.btnClass->SetDispForm(MakeDateForm(5, 0, 0, "{yyyy}"));
    EXPECT_EQ(fixture.GetGroups(), Lists({{9, 10}, {7, 8}, {2, 3, 4, 5, 11}, {6}}));
    fixture.btnClass->SetDispForm(MakeDateForm(5, 0, 0, "{g}{e} {yyyy}"));
    EXPECT_EQ(fixture.GetGroups(), Lists({{9}, {10}, {7}, {8}, {2, 3, 4, 5, 11}, {6}}));
    fixture.btnClass->SetDispForm(MakeDateForm(5, 0, 0, "{d} of {mm}"));
    EXPECT_EQ(fixture.GetGroups(), Lists({{9}, {10}, {2, 6}, {3}, {4}, {5}, {7}, {8}, {11}}));
    fixture.btnClass->SetDispForm(MakeDateForm(5, 0, 0, "no placeholder"));
    EXPECT_TRUE(fixture.GetGroups().empty());
}

TEST(CDateBtnClass, AFormThatThereIsNotMakesNoGroup)
{
    CBorderFixture fixture;
    for (const DWORD form :
         {13u, 100u, 113u, 207u, 307u, 400u, 404u, 4294967293u, 4294967294u, 4294967295u}) {
        fixture.btnClass->SetDispForm(MakeDateForm(1, form));
        EXPECT_TRUE(fixture.GetGroups().empty()) << form;
    }
    fixture.btnClass->SetDispForm(MakeDateForm(1, 0, SCDeclareConstant::UNSETTING));
    EXPECT_TRUE(fixture.GetGroups().empty());
    fixture.btnClass->SetDispForm(MakeDateForm(SCDeclareConstant::UNSETTING, 0));
    EXPECT_TRUE(fixture.GetGroups().empty());
    // Kinds 0 and 5 need neither.
    fixture.btnClass->SetDispForm(
        MakeDateForm(0, SCDeclareConstant::UNSETTING, SCDeclareConstant::UNSETTING));
    EXPECT_EQ(fixture.GetGroups().size(), 10u);
}

TEST(CDateBtnClass, AYearOutOfLimitsStaysUnsetAndTheGroupStillForms)
{
    CFixture fixture;
    fixture.table.SetStartMonth(1);
    fixture.Add({"1872-12-31", "1873-12-31", "1850-12-31"}); // 2, 3, 4
    fixture.btnClass->SetDispForm(MakeDateForm(1, 0));
    EXPECT_EQ(fixture.GetGroups(), Lists({{2, 4}, {3}}));
    fixture.btnClass->SetDispForm(MakeDateForm(2, 101));
    EXPECT_EQ(fixture.GetGroups(), Lists({{2, 4}, {3}})); // both are in a second half
}

TEST(CDateBtnClass, ADateBeforeMeijiJoinsNoGroupOfAJapaneseForm)
{
    CFixture fixture;
    fixture.Add({"1868-10-22", "1868-10-23", "2019-05-01"}); // 2, 3, 4
    for (const DWORD form : {2u, 8u, 203u, 303u}) {
        fixture.btnClass->SetDispForm(MakeDateForm(1, form));
        EXPECT_EQ(fixture.GetGroups(), Lists({{3}, {4}})) << form;
    }
    fixture.btnClass->SetDispForm(MakeDateForm(2, 109)); // the fiscal year is that of its 31 December
    EXPECT_EQ(fixture.GetGroups(), Lists({{2, 3}, {4}}));
}

TEST(CDateBtnClass, ADateThatLacksAPartOfTheFormJoinsNoGroup)
{
    CFixture fixture;
    CSourceDataMngr::SFldInfo info;
    ASSERT_TRUE(fixture.table.GetFldInfo(1, info));
    info.dateTypeInfo.form = SCDeclareConstant::DATEFORM_YM;
    ASSERT_TRUE(fixture.table.SetFldInfo(1, info));
    fixture.Add({"2024-07", "2024-08"});
    fixture.btnClass->SetDispForm(MakeDateForm(1, 0)); // needs a day
    EXPECT_TRUE(fixture.GetGroups().empty());
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    EXPECT_EQ(fixture.GetGroups(), Lists({{2}, {3}}));
}

TEST(CDateBtnClass, TwoTextsOfOneDateJoinOneGroupAndStandTogether)
{
    CFixture fixture;
    fixture.Add({"2024-7-15", "2024-08-01", "2024-07-15"}); // 2, 3, 4
    EXPECT_EQ(fixture.GetNameOrder(), List({2, 4, 3}));
    fixture.btnClass->SetDispForm(MakeDateForm(1, 0));
    EXPECT_EQ(fixture.GetGroups(), Lists({{2, 4}, {3}}));
}

TEST(CDateBtnClass, ATextThatIsNoDateStaysANormalButtonInNoGroup)
{
    CFixture fixture;
    fixture.Add({"b", "2024-02-30", "2024-02-29", "a", ""}); // 2, 3, 4, 5, 1
    fixture.btnClass->SetDispForm(MakeDateForm(1, 0));
    EXPECT_EQ(fixture.GetGroups(), Lists({{4}}));
    EXPECT_EQ(fixture.GetVisibleInfo(3), 0u);
    EXPECT_EQ(fixture.GetVisibleInfo(4), VISINFO_SELCLLMEMBER);
    EXPECT_EQ(fixture.GetNameOrder(), List({CLL, 1, 3, 5, 2}));
}

TEST(CDateBtnClass, AnotherFormMakesButtonsOfItsOwnThatTakeTheSmallestFreeIdentifiers)
{
    CBorderFixture fixture;
    DWORD userBtn = 0;
    const List members{2};
    ASSERT_EQ(fixture.btnClass->CreateCllBtn("of a user", SELECT, &members, nullptr, userBtn),
              VCBtnClass::CREATESPBTN_OK);
    fixture.btnClass->SetDispForm(MakeDateForm(2, 107));
    EXPECT_EQ(fixture.GetSystemBtns(), List({CLL + 1, CLL + 2, CLL + 3, CLL + 4, CLL + 5, CLL + 6}));
    EXPECT_EQ(fixture.btnClass->GetSystemMngrSpBtnCount(), 6u);
    fixture.btnClass->SetDispForm(MakeDateForm(5, 0, 0, "{yyyy}"));
    EXPECT_EQ(fixture.GetSystemBtns(), List({CLL + 1, CLL + 2, CLL + 3, CLL + 4}));
    EXPECT_EQ(fixture.GetMembers(userBtn), members);
    EXPECT_EQ(fixture.btnClass->GetBtnCount(), 16u);
    DWORD next = 0;
    fixture.btnClass->CreateCllBtn("next", SELECT, nullptr, nullptr, next);
    EXPECT_EQ(next, CLL + 5);
}

TEST(CDateBtnClass, WithoutAnIdentifierLeftAGroupGetsNoButton)
{
    // The identifiers run out in a class that lets a test at them.
    class CProbe final : public TCDispFormBtnClass<SCDeclareConstant::SDateDispForm>
    {
    public:
        using TCDispFormBtnClass::cllNextID;
        using TCDispFormBtnClass::TCDispFormBtnClass;
        void GetBtnNameOrdList(unsigned int flags, List& btnIDs) const override
        {
            ListByDate(flags, btnIDs, "CProbe");
        }
        SCBUICoreCom::EBtnClassType GetBtnClassType() const override { return SCBUICoreCom::BTNCLSTYPE_DATE; }

    protected:
        class CMaker final : public VCGroupMaker
        {
        public:
            const VCDate* MakeGroupDate(const VCDate& date) override { return &date; }
            std::string MakeName(const VCDate&) const override { return "group"; }
        };
        std::unique_ptr<VCDate> ReadDate(const char* text) const override
        {
            SCDeclareConstant::SDateTypeInfo info;
            return VCDate::CreateDateObject(text, static_cast<unsigned short>(std::strlen(text)), info);
        }
        std::unique_ptr<VCGroupMaker> CreateGroupMaker() const override { return std::make_unique<CMaker>(); }
        // It is not saved.
        SGroupElements GetGroupElements() const noexcept override { return {"Groups", 6, "Group", 5}; }
        bool GetDispFormAttributes(Attributes&) const override { return false; }
        bool TakeDispFormFrom(const Attributes&) override { return false; }
    };
    TDateTimeFixture<CProbe> fixture;
    fixture.Add({"2024-01-03", "2024-01-02", "2024-01-01"});
    fixture.btnClass->cllNextID = SCBUICoreCom::BTN_ID_CLL_END;
    fixture.btnClass->SetDispForm(MakeDateForm(1, 0));
    EXPECT_EQ(fixture.GetSystemBtns(), List({SCBUICoreCom::BTN_ID_CLL_END}));
    EXPECT_EQ(fixture.GetGroups(), Lists({{4}})); // the first in the order of dates
    EXPECT_EQ(fixture.GetNameOrder(), List({SCBUICoreCom::BTN_ID_CLL_END, 3, 2}));
}

TEST(CDateBtnClass, NewRecordsJoinTheirGroups)
{
    CFixture fixture;
    fixture.Add({"2024-07-15"});
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    fixture.Add({"2024-07-16", "2024-06-30", ""}); // 3, 4, 1
    EXPECT_EQ(fixture.GetGroups(), Lists({{2, 3}, {4}}));
    EXPECT_EQ(fixture.GetGroupTexts(), std::vector<std::string>({"2024/07", "2024/06"}));
    EXPECT_EQ(fixture.GetNameOrder(), List({CLL + 1, CLL, 1}));
    EXPECT_EQ(fixture.GetRecs(CLL), List({0, 1}));
}

TEST(CDateBtnClass, AGroupThatLostAllMembersStaysEmptyUntilTheFormChanges)
{
    CFixture fixture;
    fixture.Add({"2024-07-15", "2024-08-01"});
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    fixture.Delete(0, 1);
    EXPECT_EQ(fixture.GetGroups(), Lists({{}, {3}}));
    EXPECT_EQ(fixture.GetVisibleInfo(CLL), VISINFO_NOMEMBER | VISINFO_NOLIVEMEMBER);
    EXPECT_EQ(fixture.GetNameOrder(), List({CLL + 1}));
    EXPECT_EQ(fixture.GetNameOrder(ALL), List({CLL, CLL + 1, 3})); // a month stands before its first day
    EXPECT_TRUE(fixture.GetRecs(CLL).empty());
    fixture.Add({"2024-07-15"});
    EXPECT_EQ(fixture.GetGroups(), Lists({{2}, {3}}));
    EXPECT_EQ(fixture.GetVisibleInfo(CLL), 0u);
    fixture.Delete(1, 1);
    fixture.btnClass->SetDispForm(MakeDateForm(1, 7));
    EXPECT_EQ(fixture.GetGroups(), Lists({{3}}));
}

TEST(CDateBtnClass, AChangedStartMonthMovesDatesBetweenFiscalGroups)
{
    CBorderFixture fixture;
    fixture.btnClass->SetDispForm(MakeDateForm(2, 101));
    EXPECT_EQ(fixture.GetGroups(), Lists({{9, 10}, {7, 8}, {2}, {3, 4, 5, 11}, {6}}));
    fixture.table.SetStartMonth(7);
    fixture.btnClass->RegroupAfterCriterionChange();
    // Second halves end in June: 1988, 2018, 2023, the first half of 2024, and its second half.
    const List ofSystem = fixture.GetSystemBtns();
    Lists withMembers;
    for (const DWORD btnID : fixture.GetNameOrder(ALL)) {
        if (std::find(ofSystem.begin(), ofSystem.end(), btnID) != ofSystem.end() &&
            !fixture.GetMembers(btnID).empty())
            withMembers.push_back(fixture.GetMembers(btnID));
    }
    EXPECT_EQ(withMembers, Lists({{9, 10}, {7, 8}, {2, 3, 4, 5}, {11}, {6}}));
    // Groups that are still there keep their buttons.
    EXPECT_EQ(fixture.GetMembers(CLL), List({9, 10}));
    EXPECT_EQ(fixture.GetText(CLL), "FY1988 H2");
}

TEST(CDateBtnClass, AChangedCutOffDayAndFirstDayOfTheWeekAreFollowedToo)
{
    CBorderFixture fixture;
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6, 1));
    fixture.table.SetCutOffDate(31);
    fixture.btnClass->RegroupAfterCriterionChange();
    EXPECT_EQ(fixture.GetSetOfGroups(), std::set<List>({{9, 10}, {7}, {8}, {2, 3, 4}, {5}, {11}, {6}}));

    fixture.btnClass->SetDispForm(MakeDateForm(3, 201));
    fixture.table.SetDaysOfTheWeek(VCDate::DAYSOFWEEK_MONDAY);
    fixture.btnClass->RegroupAfterCriterionChange();
    // 1989-01-01 was a Sunday and is a week of its own now; 2024-03-31 parts from 2024-04-01.
    EXPECT_EQ(fixture.GetSetOfGroups(), std::set<List>({{9, 10}, {7, 8}, {2, 3}, {4}, {5}, {11}, {6}}));
}

TEST(CDateBtnClass, AChangedFormOfTheDataIsReadAnew)
{
    CFixture fixture;
    fixture.Add({"01-02-2024", "2024-03-04", "03-01-2024"}); // 2, 3, 4
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    EXPECT_EQ(fixture.GetGroups(), Lists({{3}}));
    EXPECT_EQ(fixture.GetNameOrder(), List({CLL, 2, 4}));

    CSourceDataMngr::SFldInfo info;
    ASSERT_TRUE(fixture.table.GetFldInfo(1, info));
    info.dateTypeInfo.form = SCDeclareConstant::DATEFORM_DMY;
    ASSERT_TRUE(fixture.table.SetFldInfo(1, info));
    fixture.btnClass->RegroupAfterDataFormChange();
    EXPECT_EQ(fixture.GetGroups(), Lists({{4}, {2}}));
    EXPECT_EQ(fixture.GetNameOrder(), List({CLL, CLL + 1, 3}));
    EXPECT_EQ(fixture.GetNameOrder(ALL), List({CLL, 4, CLL + 1, 2, 3}));
}

TEST(CDateBtnClass, AFieldThatIsNoDateAnyMoreLeavesEmptyGroups)
{
    CFixture fixture;
    fixture.Add({"2024-07-15"});
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    ASSERT_TRUE(fixture.table.DeleteFld(1));
    fixture.btnClass->ResetInsideInfoForEffectiveSpBtns(true);
    EXPECT_EQ(fixture.GetGroups(), Lists({{}}));
    EXPECT_EQ(fixture.GetVisibleInfo(2), 0u);
}

TEST(CDateBtnClass, ALargeGroupHasARowOfRecordsThatFollowsItsMembers)
{
    CFixture fixture;
    std::vector<std::string> texts;
    for (int month = 1; month <= 12; ++month) {
        for (int day = 1; day <= 28; ++day) {
            for (int year = 2023; year <= 2024; ++year)
                texts.push_back(std::to_string(year) + "-" + std::to_string(month) + "-" +
                                std::to_string(day));
        }
    }
    std::vector<const char*> values;
    for (const std::string& text : texts)
        values.push_back(text.c_str());
    fixture.Add(values); // 672 dates
    fixture.btnClass->SetDispForm(MakeDateForm(5, 0, 0, "{yy}"));
    EXPECT_EQ(fixture.GetMembers(CLL).size(), 336u);
    fixture.btnClass->SetDispForm(MakeDateForm(4, 403));
    std::size_t members = 0;
    List recs;
    for (const DWORD btnID : fixture.GetSystemBtns()) {
        members += fixture.GetMembers(btnID).size();
        const List own = fixture.GetRecs(btnID);
        recs.insert(recs.end(), own.begin(), own.end());
    }
    EXPECT_EQ(members, 672u);
    std::sort(recs.begin(), recs.end());
    EXPECT_EQ(std::unique(recs.begin(), recs.end()) - recs.begin(), 672);

    // One group of all: it has a row.
    fixture.btnClass->SetDispForm(MakeDateForm(2, 101));
    fixture.table.SetStartMonth(1);
    for (const char* const pattern : {"{yyyy}", "{d}"}) {
        fixture.btnClass->SetDispForm(MakeDateForm(5, 0, 0, pattern));
        for (const DWORD btnID : fixture.GetSystemBtns())
            EXPECT_EQ(fixture.GetRecs(btnID).size(), fixture.GetMembers(btnID).size());
    }
    fixture.Delete(0, 2);
    for (const DWORD btnID : fixture.GetSystemBtns())
        EXPECT_EQ(fixture.GetRecs(btnID).size(), fixture.GetMembers(btnID).size());
}

TEST(CDateBtnClass, ButtonsOfUsersMayHoldGroupsAndFollowThem)
{
    CFixture fixture;
    fixture.Add({"2024-07-15", "2024-08-01"});
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    DWORD inc = 0;
    const List members{CLL, CLL + 1};
    ASSERT_EQ(fixture.btnClass->CreateIncBtn("both", SELECT, &members, nullptr, inc),
              VCBtnClass::CREATESPBTN_OK);
    EXPECT_EQ(fixture.GetRecs(inc), List({0, 1}));
    EXPECT_EQ(fixture.GetNameOrder(), List({inc}));
    fixture.Delete(0, 1);
    EXPECT_EQ(fixture.GetRecs(inc), List({0}));
    fixture.btnClass->SetDispForm(MakeDateForm(1, 0)); // the groups go, and leave their holder
    EXPECT_TRUE(fixture.GetMembers(inc).empty());
    EXPECT_EQ(fixture.GetVisibleInfo(inc), VISINFO_NOLIVEMEMBER);
    EXPECT_EQ(fixture.GetGroups(), Lists({{3}}));
}

TEST(CDateBtnClass, AnIneffectiveHolderForgetsTheGroupsThatGo)
{
    CFixture fixture;
    fixture.Add({"2024-07-15", "2024-08-01"});
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    DWORD holder = 0;
    const List members{CLL, 3};
    ASSERT_EQ(fixture.btnClass->CreateIncBtn("holder", SELECT, &members, nullptr, holder),
              VCBtnClass::CREATESPBTN_OK);
    ASSERT_TRUE(fixture.btnClass->SetEffectiveInfoOfSpBtn(holder, false));
    fixture.btnClass->SetDispForm(MakeDateForm(1, 7));
    EXPECT_EQ(fixture.GetMembers(holder), List({3})); // the identifier is another button's now
    ASSERT_TRUE(fixture.btnClass->SetEffectiveInfoOfSpBtn(holder, true));
    EXPECT_EQ(fixture.GetRecs(holder), List({1}));
}

TEST(CDateBtnClass, ASelectedGroupThatGoesIsCountedNoMore)
{
    CFixture fixture;
    fixture.Add({"2024-07-15", "2024-08-01"});
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    fixture.btnClass->SetSelectionInfoOfBtn(CLL, true);
    EXPECT_EQ(fixture.btnClass->GetSelBtnCount(), 1u);
    fixture.btnClass->SetDispForm(MakeDateForm(1, 7));
    EXPECT_EQ(fixture.btnClass->GetSelBtnCount(), 0u);
    EXPECT_FALSE(fixture.btnClass->IsBtnSelectiveState());
    bool sel = true;
    EXPECT_TRUE(fixture.btnClass->GetSelectionInfoOfBtn(CLL, sel));
    EXPECT_FALSE(sel);
}

// --- What the system manages

TEST(CDateBtnClass, ASystemManagedButtonRefusesEveryEdit)
{
    CFixture fixture;
    fixture.Add({"2024-07-15", "2024-08-01"});
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    EXPECT_FALSE(fixture.btnClass->DestroyCllBtn(CLL));
    EXPECT_FALSE(fixture.btnClass->SetEffectiveInfoOfSpBtn(CLL, false));
    EXPECT_FALSE(fixture.btnClass->SetEffectiveInfoOfSpBtn(CLL, true));
    EXPECT_EQ(fixture.btnClass->SetMemberBtnIDListOfSpBtn(CLL, {3}), VCBtnClass::OPEMMBBTN_SYSTEMMNGR);
    EXPECT_EQ(fixture.btnClass->AddMemberBtnIDListOfSpBtn(CLL, 3), VCBtnClass::OPEMMBBTN_SYSTEMMNGR);
    EXPECT_EQ(fixture.btnClass->DeleteMemberBtnIDListOfSpBtn(CLL, 2), VCBtnClass::OPEMMBBTN_SYSTEMMNGR);
    EXPECT_EQ(fixture.GetGroups(), Lists({{2}, {3}}));
    bool effective = false;
    EXPECT_TRUE(fixture.btnClass->GetEffectiveInfoOfSpBtn(CLL, effective));
    EXPECT_TRUE(effective);
}

TEST(CDateBtnClass, ButtonsOfUsersAreEditedAsInEveryClass)
{
    CFixture fixture;
    fixture.Add({"2024-07-15", "2024-08-01"});
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    DWORD btnID = 0;
    ASSERT_EQ(fixture.btnClass->CreateCllBtn("of a user", SELECT, nullptr, nullptr, btnID),
              VCBtnClass::CREATESPBTN_OK);
    EXPECT_EQ(fixture.btnClass->SetMemberBtnIDListOfSpBtn(btnID, {3}), VCBtnClass::OPEMMBBTN_OK);
    EXPECT_EQ(fixture.btnClass->AddMemberBtnIDListOfSpBtn(btnID, 2), VCBtnClass::OPEMMBBTN_OK);
    EXPECT_EQ(fixture.btnClass->DeleteMemberBtnIDListOfSpBtn(btnID, 3), VCBtnClass::OPEMMBBTN_OK);
    EXPECT_TRUE(fixture.btnClass->SetEffectiveInfoOfSpBtn(btnID, false));
    EXPECT_TRUE(fixture.btnClass->DestroyCllBtn(btnID));
    EXPECT_FALSE(fixture.btnClass->DestroyCllBtn(btnID));
}

TEST(CDateBtnClass, WhoManagesAButtonIsToldOfEverySpecialIdentifier)
{
    CFixture fixture;
    fixture.Add({"2024-07-15"});
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    bool managedByUser = true;
    EXPECT_TRUE(fixture.btnClass->GetBtnMngrInfoOfSpBtn(CLL, managedByUser));
    EXPECT_FALSE(managedByUser);
    for (const DWORD btnID : {CLL + 1, INC, SCBUICoreCom::BTN_ID_VIRINC_BEGIN}) {
        managedByUser = false;
        EXPECT_TRUE(fixture.btnClass->GetBtnMngrInfoOfSpBtn(btnID, managedByUser));
        EXPECT_TRUE(managedByUser);
    }
    EXPECT_FALSE(fixture.btnClass->GetBtnMngrInfoOfSpBtn(2, managedByUser));
    EXPECT_FALSE(fixture.btnClass->GetBtnMngrInfoOfSpBtn(0, managedByUser));
}

// --- The order of names

TEST(CDateBtnClass, NamesOrderByDateWithGroupsAmongThem)
{
    CFixture fixture;
    fixture.Add({"2024-08-02", "2024-07-15", "x", "2024-07-01", "", "a"}); // 2 3 4 5 1 6
    EXPECT_EQ(fixture.GetNameOrder(), List({5, 3, 2, 1, 6, 4}));
    EXPECT_EQ(fixture.GetNameOrder(DESCEND), List({4, 6, 1, 2, 3, 5}));
    EXPECT_EQ(fixture.GetNameOrder(DESCEND | EMPVAL_LAST), List({4, 6, 2, 3, 5, 1}));
    EXPECT_EQ(fixture.GetNameOrder(EMPVAL_LAST), List({5, 3, 2, 6, 4, 1}));
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    EXPECT_EQ(fixture.GetNameOrder(), List({CLL, CLL + 1, 1, 6, 4}));
    EXPECT_EQ(fixture.GetNameOrder(ALL), List({CLL, 5, 3, CLL + 1, 2, 1, 6, 4}));
}

TEST(CDateBtnClass, SpecialButtonsOfUsersStandInFrontByTextIfTheyHaveMembers)
{
    CFixture fixture;
    fixture.Add({"2024-08-02", "2024-07-15", ""}); // 2 3 1
    const List two{2};
    const List three{3};
    const List none;
    DWORD b = 0;
    DWORD a = 0;
    DWORD empty = 0;
    DWORD off = 0;
    DWORD cnd = 0;
    fixture.btnClass->CreateCllBtn("b", SELECT, &two, nullptr, b);
    fixture.btnClass->CreateCllBtn("a", SELECT, &three, nullptr, a);
    fixture.btnClass->CreateIncBtn("empty", SELECT, nullptr, nullptr, empty);
    fixture.btnClass->CreateIncBtn("off", SELECT, &three, nullptr, off);
    fixture.btnClass->SetEffectiveInfoOfSpBtn(off, false);
    fixture.btnClass->CreateCllBtn("0", VCSpBtn::MMBBTNSELMTH_CONDITION, nullptr, nullptr, cnd);
    fixture.btnClass->SetMemberBtnIDListOfSpBtn(cnd, {3});
    EXPECT_EQ(fixture.GetNameOrder(), List({cnd, a, b, 1}));
    EXPECT_EQ(fixture.GetNameOrder(ALL), List({cnd, a, b, 3, 2, 1}));
    EXPECT_EQ(fixture.GetNameOrder(DESCEND), List({1, b, a, cnd}));
    const unsigned int cndLast = VCBtnClass::ORDLIST_TAILEND_CNDCLLBTN;
    EXPECT_EQ(fixture.GetNameOrder(DESCEND | EMPVAL_LAST | cndLast), List({b, a, 1, cnd}));
}

TEST(CDateBtnClass, FoldedDatesAreListedWhenAskedFor)
{
    CFixture fixture;
    fixture.Add({"2024-08-02", "2024-07-15"});
    DWORD cnd = 0;
    fixture.btnClass->CreateCllBtn("cnd", VCSpBtn::MMBBTNSELMTH_CONDITION, nullptr, nullptr, cnd);
    fixture.btnClass->SetMemberBtnIDListOfSpBtn(cnd, {2, 3});
    EXPECT_EQ(fixture.GetNameOrder(), List({cnd}));
    EXPECT_EQ(fixture.GetNameOrder(VCBtnClass::ORDLIST_INCLUDE_CNDCLLMEMBERBTNS), List({cnd, 3, 2}));
}

TEST(CDateBtnClass, TheEmptyValueNeedsARecordToBeListed)
{
    CFixture fixture;
    fixture.Add({"2024-08-02"});
    EXPECT_EQ(fixture.GetNameOrder(ALL), List({2}));
    fixture.Add({""});
    fixture.btnClass->SetVisibleInfoBasedOnRelationOfAllBtns(false);
    EXPECT_TRUE(fixture.GetNameOrder().empty());
    EXPECT_EQ(fixture.GetNameOrder(ALL), List({2, 1}));
}

TEST(CDateBtnClass, AButtonThatComesBackStandsAmongItsEqualsByIdentifier)
{
    CFixture fixture;
    fixture.Add({"2024-7-1", "2024-07-01", "x", "y"});
    fixture.Delete(0, 1);
    EXPECT_EQ(fixture.GetNameOrder(ALL), List({3, 4, 5}));
    fixture.Add({"2024-7-1"});
    EXPECT_EQ(fixture.GetNameOrder(), List({2, 3, 4, 5}));
}

TEST(CDateBtnClass, AnAliasCountsFromTheNextComingOfTheButton)
{
    CFixture fixture;
    fixture.Add({"2024-07-15", "2024-08-01", "x"}); // 2 3 4
    fixture.btnClass->SetAliasOfBtn(2, "2024-09-01");
    fixture.btnClass->SetAliasOfBtn(4, "2024-01-01");
    EXPECT_EQ(fixture.GetNameOrder(), List({2, 3, 4})); // they are not looked at while they stay
    fixture.Delete(0, 1);
    fixture.Delete(1, 1);
    EXPECT_EQ(fixture.GetNameOrder(ALL), List({3})); // nothing stays behind under an old text
    fixture.Add({"2024-07-15", "x"});
    EXPECT_EQ(fixture.GetNameOrder(), List({4, 3, 2}));
    fixture.btnClass->SetAliasOfBtn(3, "no date");
    fixture.btnClass->RegroupAfterDataFormChange();
    EXPECT_EQ(fixture.GetNameOrder(), List({4, 2, 3}));
}

// --- Groups by a part

TEST(CDateBtnClass, DatesGroupByEveryPart)
{
    CBorderFixture fixture;
    const std::pair<VCDate::EDateType, Lists> rows[] = {
        {VCDate::DATETYPE_GRGYEAR, {{9, 10}, {7, 8}, {2, 3, 4, 5, 11}, {6}}},
        {VCDate::DATETYPE_JPNYEAR, {{9}, {10}, {7}, {8}, {2, 3, 4, 5, 11}, {6}}},
        {VCDate::DATETYPE_MONTH, {{9, 10}, {2, 3, 4, 6}, {5, 7}, {8}, {11}}},
        {VCDate::DATETYPE_DAY, {{5, 8}, {9}, {10}, {11}, {2, 6}, {3}, {7}, {4}}},
        {VCDate::DATETYPE_FISCALGRGYEAR, {{9, 10}, {7, 8}, {2}, {3, 4, 5, 6, 11}}},
        {VCDate::DATETYPE_FISCALJPNYEAR, {{9, 10}, {7, 8}, {2}, {3, 4, 5, 6, 11}}},
        {VCDate::DATETYPE_FISCALMONTH, {{3, 4, 5}, {7, 8}, {11}, {9, 10}, {2, 6}}},
        {VCDate::DATETYPE_HALFTERM, {{3, 4, 5, 7, 8, 11}, {2, 6, 9, 10}}},
        {VCDate::DATETYPE_QUARTERTERM, {{3, 4, 5, 7, 8}, {11}, {2, 6, 9, 10}}},
        {VCDate::DATETYPE_WEEKOFYEAR, {{9}, {10}, {2, 3, 6}, {4, 5}, {7, 8}, {11}}},
        {VCDate::DATETYPE_WEEKOFMONTH, {{5, 8, 9}, {10}, {11}, {2, 3, 6}, {7}, {4}}},
        {VCDate::DATETYPE_WEEKOFFISCALYEAR, {{3}, {4, 5}, {7, 8}, {11}, {9}, {10}, {2, 6}}},
        {VCDate::DATETYPE_WEEKOFFISCALMONTH, {{3}, {7, 8}, {4, 5, 9}, {10}, {2, 6, 11}}},
        {VCDate::DATETYPE_DAYSOFWEEK, {{4, 10}, {5, 11}, {7}, {2, 8}, {3, 6}, {9}}},
    };
    CDateGroupMap groups;
    for (const auto& [dateType, lists] : rows) {
        SCOPED_TRACE(dateType);
        EXPECT_TRUE(fixture.btnClass->GetGroupedBtnIDLists(dateType, groups)); // replaces what was there
        EXPECT_EQ(GetLists(groups), lists);
        for (const auto& [number, group] : groups) {
            unsigned long long ownNumber = 0;
            ASSERT_NE(group.date, nullptr);
            EXPECT_TRUE(group.date->GetDateNumeric(4, 20, VCDate::DAYSOFWEEK_SUNDAY, ownNumber));
            EXPECT_EQ(ownNumber, number);
        }
    }
}

TEST(CDateBtnClass, ADateWithoutThePartIsInNoGroup)
{
    CFixture fixture;
    fixture.Add({"1850-07-15", "2024-07-15", "x"});
    CDateGroupMap groups;
    EXPECT_TRUE(fixture.btnClass->GetGroupedBtnIDLists(VCDate::DATETYPE_GRGYEAR, groups));
    EXPECT_EQ(GetLists(groups), Lists({{3}})); // a year out of limits is none
    EXPECT_TRUE(fixture.btnClass->GetGroupedBtnIDLists(VCDate::DATETYPE_JPNYEAR, groups));
    EXPECT_EQ(GetLists(groups), Lists({{3}}));
    EXPECT_TRUE(fixture.btnClass->GetGroupedBtnIDLists(VCDate::DATETYPE_MONTH, groups));
    EXPECT_EQ(GetLists(groups), Lists({{2, 3}}));
}

TEST(CDateBtnClass, PartsOfATimeAreRefusedWithTheOutputUntouched)
{
    CBorderFixture fixture;
    CDateGroupMap groups;
    ASSERT_TRUE(fixture.btnClass->GetGroupedBtnIDLists(VCDate::DATETYPE_HALFTERM, groups));
    for (const VCDate::EDateType dateType : {VCDate::DATETYPE_HOUR, VCDate::DATETYPE_MINUTE,
                                             VCDate::DATETYPE_SECOND, VCDate::DATETYPE_TIMEBASEDONNOON}) {
        EXPECT_FALSE(fixture.btnClass->GetGroupedBtnIDLists(dateType, groups));
        EXPECT_EQ(groups.size(), 2u);
    }
}

TEST(CDateBtnClass, AnUnknownPartThrowsWithOrWithoutDates)
{
    CBorderFixture withDates;
    CFixture without;
    CDateGroupMap groups;
    for (const CDateBtnClass* const btnClass : {withDates.btnClass.get(), without.btnClass.get()}) {
        for (const DWORD dateType : {0u, 8u, 268435455u, 268435467u, 4294967295u}) {
            try {
                btnClass->GetGroupedBtnIDLists(static_cast<VCDate::EDateType>(dateType), groups);
                ADD_FAILURE() << dateType;
            } catch (const ECAbnormalData& error) {
                EXPECT_STREQ(error.GetMessageText(), SCKZCoreStrDef::MSG_UNKNOWN_DATETYPE);
            }
        }
    }
}

TEST(CDateBtnClass, AClassWithoutDatesHasEmptyGroupsAndNoLatestDate)
{
    CFixture fixture;
    fixture.Add({"x", ""});
    CDateGroupMap groups;
    groups[7].btnIDList = {4};
    EXPECT_TRUE(fixture.btnClass->GetGroupedBtnIDLists(VCDate::DATETYPE_MONTH, groups));
    EXPECT_TRUE(groups.empty());
    List btnIDs{4};
    EXPECT_FALSE(
        fixture.btnClass->GetGroupedBtnIDList(MakeDate(2024), SCKZCoreCom::CMPOPERATOR_EQUAL, btnIDs));
    EXPECT_EQ(btnIDs, List({4}));
    EXPECT_EQ(fixture.btnClass->GetLatestDate(), nullptr);
    const DWORD given[] = {1, 2};
    DWORD btnID = 4;
    unsigned long long number = 7;
    EXPECT_FALSE(fixture.btnClass->GetLatestBtn(given, 2, btnID, number));
    EXPECT_EQ(btnID, 4u);
    EXPECT_EQ(number, 7u);
}

// --- Groups by a relation

TEST(CDateBtnClass, DatesAreComparedWithADateOrAStretchOfDates)
{
    CBorderFixture fixture;
    const auto find = [&](const VCDate& date, SCKZCoreCom::ECmpOperator cmpOperator) {
        List btnIDs{4711};
        EXPECT_TRUE(fixture.btnClass->GetGroupedBtnIDList(date, cmpOperator, btnIDs));
        return btnIDs;
    };
    const CDate march = MakeDate(2024, 3);
    EXPECT_EQ(find(march, SCKZCoreCom::CMPOPERATOR_EQUAL), List({2, 3, 4}));
    EXPECT_EQ(find(march, SCKZCoreCom::CMPOPERATOR_NOTEQUAL), List({5, 6, 7, 8, 9, 10, 11}));
    EXPECT_EQ(find(march, SCKZCoreCom::CMPOPERATOR_LESS), List({7, 8, 9, 10}));
    EXPECT_EQ(find(march, SCKZCoreCom::CMPOPERATOR_LESSEQUAL), List({2, 3, 4, 7, 8, 9, 10}));
    EXPECT_EQ(find(march, SCKZCoreCom::CMPOPERATOR_GREATER), List({5, 6, 11}));
    EXPECT_EQ(find(march, SCKZCoreCom::CMPOPERATOR_GREATEREQUAL), List({2, 3, 4, 5, 6, 11}));

    CFiscalMonth april;
    april.SetYearOfTheGrgCalendar(2024);
    april.SetFiscalMonth(4);
    EXPECT_EQ(find(april, SCKZCoreCom::CMPOPERATOR_EQUAL), List({3, 4, 5}));
    EXPECT_EQ(find(april, SCKZCoreCom::CMPOPERATOR_LESS), List({2, 7, 8, 9, 10}));
    CQuarterTerm quarter;
    quarter.SetFiscalYearOfTheGrgCalendar(2024);
    quarter.SetQuarterTerm(1);
    EXPECT_EQ(find(quarter, SCKZCoreCom::CMPOPERATOR_EQUAL), List({3, 4, 5}));
    EXPECT_EQ(find(quarter, SCKZCoreCom::CMPOPERATOR_GREATER), List({6, 11}));
    CWeekNum week(CWeekNum::WEEKNUMTYPE_MONTH);
    week.SetYearOfTheGrgCalendar(2024);
    week.SetMonth(3);
    week.SetWeekNum(4);
    EXPECT_EQ(find(week, SCKZCoreCom::CMPOPERATOR_EQUAL), List({2, 3}));
    EXPECT_TRUE(find(march, static_cast<SCKZCoreCom::ECmpOperator>(9)).empty());
}

TEST(CDateBtnClass, ADateThatTheFirstButtonCannotTellIsRefused)
{
    CBorderFixture fixture;
    CDate time;
    time.SetHour(3);
    List btnIDs{4};
    EXPECT_FALSE(fixture.btnClass->GetGroupedBtnIDList(time, SCKZCoreCom::CMPOPERATOR_EQUAL, btnIDs));
    EXPECT_EQ(btnIDs, List({4}));
}

// --- The latest

TEST(CDateBtnClass, TheLatestDateIsThatOfANormalButton)
{
    CBorderFixture fixture;
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6, 1)); // groups stand among the dates
    const VCDate* const latest = fixture.btnClass->GetLatestDate();
    ASSERT_NE(latest, nullptr);
    DWORD year = 0;
    DWORD day = 0;
    EXPECT_TRUE(latest->GetYearOfTheGrgCalendar(year));
    EXPECT_TRUE(latest->GetDay(day));
    EXPECT_EQ(year, 2025u);
    EXPECT_EQ(day, 20u);
}

TEST(CDateBtnClass, TheLatestOfSomeButtonsIsFound)
{
    CBorderFixture fixture;
    fixture.Add({"2024-3-31"}); // 12: the date of 4
    DWORD btnID = 0;
    unsigned long long number = 0;
    const DWORD given[] = {1, 9, 4, 12, 7, 4711};
    ASSERT_TRUE(fixture.btnClass->GetLatestBtn(given, 6, btnID, number));
    EXPECT_EQ(btnID, 12u); // of equal ones the last in the order of names
    unsigned long long expected = 0;
    EXPECT_TRUE(MakeDate(2024, 3, 31).GetDateNumeric(4, 20, VCDate::DAYSOFWEEK_SUNDAY, expected));
    EXPECT_EQ(number, expected);
    EXPECT_FALSE(fixture.btnClass->GetLatestBtn(given, 1, btnID, number));
    EXPECT_FALSE(fixture.btnClass->GetLatestBtn(nullptr, 0, btnID, number));
}

// --- Life

TEST(CDateBtnClass, ClearLeavesAClassAsNew)
{
    CBorderFixture fixture;
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    fixture.btnClass->Clear();
    EXPECT_EQ(fixture.btnClass->GetBtnCount(), 1u);
    EXPECT_EQ(fixture.btnClass->GetSystemMngrSpBtnCount(), 0u);
    EXPECT_EQ(fixture.btnClass->GetDispForm(), CDateBtnClass::SDispForm());
    EXPECT_EQ(fixture.btnClass->GetLatestDate(), nullptr);
    EXPECT_TRUE(fixture.GetNameOrder(ALL).empty());
}

TEST(CDateBtnClass, WhatUsersAddedGoesWithTheGroupsAndTheFormStays)
{
    CBorderFixture fixture;
    const CDateBtnClass::SDispForm form = MakeDateForm(1, 6);
    fixture.btnClass->SetDispForm(form);
    fixture.btnClass->ClearOfFixedSpec();
    EXPECT_EQ(fixture.btnClass->GetDispForm(), form);
    EXPECT_EQ(fixture.btnClass->GetSystemMngrSpBtnCount(), 0u);
    EXPECT_EQ(fixture.GetNameOrder(ALL), List({9, 10, 7, 8, 2, 3, 4, 5, 11, 6}));
    EXPECT_EQ(fixture.GetNameOrder(), fixture.GetNameOrder(ALL)); // nothing is hidden as a member
    fixture.btnClass->ResetInsideInfoForSpBtnsOfBtns({}, true);
    EXPECT_EQ(fixture.GetGroups(), Lists({{9, 10}, {7}, {8}, {2, 3, 4}, {5}, {11}, {6}}));
    EXPECT_EQ(fixture.GetSystemBtns().front(), CLL);
}

TEST(CDateBtnClass, ACopyHasDatesGroupsAndOrderOfItsOwn)
{
    CBorderFixture fixture;
    fixture.Add({"x", ""}); // 12, 1
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    const List order = fixture.GetNameOrder(ALL);
    CFixture other;
    other.btnClass->Copy(*fixture.btnClass, other.rpLink);
    fixture.btnClass->Clear();
    EXPECT_EQ(other.GetNameOrder(ALL), order);
    EXPECT_EQ(other.btnClass->GetDispForm(), MakeDateForm(1, 6));
    EXPECT_EQ(other.GetGroups(), Lists({{9, 10}, {7}, {8}, {2, 3, 4}, {5}, {11}, {6}}));
    ASSERT_NE(other.btnClass->GetLatestDate(), nullptr);
    EXPECT_FALSE(other.btnClass->DestroyCllBtn(CLL));
    other.btnClass->SetDispForm(MakeDateForm(5, 0, 0, "{m}"));
    EXPECT_EQ(other.GetGroups(), Lists({{9, 10}, {2, 3, 4, 6}, {5, 7}, {8}, {11}}));
    other.btnClass->Copy(*other.btnClass, other.rpLink); // of itself: nothing
    EXPECT_EQ(other.GetGroups().size(), 5u);
}

// --- Exhausted memory

// What must hold whatever failed: every list names buttons that there are, and each only once.
void ExpectWhole(const CFixture& fixture)
{
    List names;
    ASSERT_NO_THROW(names = fixture.GetNameOrder(ALL));
    const std::set<DWORD> once(names.begin(), names.end());
    EXPECT_EQ(once.size(), names.size());
    const List ofSystem = fixture.GetSystemBtns();
    EXPECT_EQ(ofSystem.size(), fixture.btnClass->GetSystemMngrSpBtnCount());
    for (const DWORD btnID : ofSystem) {
        EXPECT_TRUE(once.contains(btnID));
        for (const DWORD mmbBtnID : fixture.GetMembers(btnID)) {
            List holders;
            EXPECT_TRUE(fixture.btnClass->GetSpBtnIDListIncludingSpecifiedBtn(mmbBtnID, holders));
            EXPECT_NE(std::find(holders.begin(), holders.end(), btnID), holders.end());
        }
    }
}

TEST(CDateBtnClassFault, AFormThatRunsOutOfMemoryIsSetTheNextTime)
{
    const auto first = MakeDateForm(1, 6);
    const auto second = MakeDateForm(2, 107);
    const auto isFiscalQuarters = [](const CFixture& fixture) {
        return fixture.GetGroups() == Lists({{9, 10}, {7, 8}, {2}, {3, 4, 5}, {11}, {6}});
    };
    const int failures = FailEveryAllocation(
        [&] {
            auto fixture = std::make_unique<CBorderFixture>();
            fixture->btnClass->SetDispForm(first);
            const List members{CLL, CLL + 1};
            DWORD holder = 0;
            fixture->btnClass->CreateIncBtn("holder", SELECT, &members, nullptr, holder);
            return fixture;
        },
        [&](const auto& fixture) { fixture->btnClass->SetDispForm(second); },
        [&](const auto& fixture) {
            ExpectWhole(*fixture);
            const CDateBtnClass::SDispForm& held = fixture->btnClass->GetDispForm();
            if (held == first) {
                EXPECT_EQ(fixture->GetGroups(), Lists({{9, 10}, {7}, {8}, {2, 3, 4}, {5}, {11}, {6}}));
                EXPECT_EQ(fixture->GetMembers(INC), List({CLL, CLL + 1}));
            } else if (held == second) {
                EXPECT_TRUE(isFiscalQuarters(*fixture));
            } else {
                EXPECT_EQ(held, CDateBtnClass::SDispForm());
                for (const List& members : fixture->GetGroups())
                    EXPECT_TRUE(members.empty());
                EXPECT_EQ(fixture->GetVisibleInfo(9), 0u);
            }
            fixture->btnClass->SetDispForm(second);
            EXPECT_TRUE(isFiscalQuarters(*fixture));
            EXPECT_EQ(fixture->GetSystemBtns().front(), CLL);
        });
    EXPECT_GE(failures, 30);
}

TEST(CDateBtnClassFault, ARegroupingThatRunsOutOfMemoryIsDoneTheNextTime)
{
    const int failures = FailEveryAllocation(
        [] {
            auto fixture = std::make_unique<CBorderFixture>();
            fixture->btnClass->SetDispForm(MakeDateForm(1, 6, 1));
            fixture->table.SetCutOffDate(31);
            return fixture;
        },
        [](const auto& fixture) { fixture->btnClass->RegroupAfterCriterionChange(); },
        [](const auto& fixture) {
            ExpectWhole(*fixture);
            fixture->btnClass->RegroupAfterCriterionChange();
            EXPECT_EQ(fixture->GetSetOfGroups(),
                      std::set<List>({{9, 10}, {7}, {8}, {2, 3, 4}, {5}, {11}, {6}}));
        });
    EXPECT_GE(failures, 20);
}

TEST(CDateBtnClassFault, AReadingAnewThatRunsOutOfMemoryIsDoneTheNextTime)
{
    const int failures = FailEveryAllocation(
        [] {
            auto fixture = std::make_unique<CFixture>();
            fixture->Add({"01-02-2024", "2024-03-04", "03-01-2024"});
            fixture->btnClass->SetDispForm(MakeDateForm(1, 6));
            CSourceDataMngr::SFldInfo info;
            fixture->table.GetFldInfo(1, info);
            info.dateTypeInfo.form = SCDeclareConstant::DATEFORM_DMY;
            fixture->table.SetFldInfo(1, info);
            return fixture;
        },
        [](const auto& fixture) { fixture->btnClass->RegroupAfterDataFormChange(); },
        [](const auto& fixture) {
            ExpectWhole(*fixture);
            fixture->btnClass->RegroupAfterDataFormChange();
            EXPECT_EQ(fixture->GetGroups(), Lists({{4}, {2}}));
            EXPECT_EQ(fixture->GetNameOrder(ALL), List({CLL, 4, CLL + 1, 2, 3}));
        });
    EXPECT_GE(failures, 20);
}

TEST(CDateBtnClassFault, AReadingAnewThatRunsOutOfMemoryInALargeHolderHasTheNewDatesOrTheOldGroups)
{
    using Held = std::pair<CFixture, DWORD>;
    bool goneOnce = false;
    const int failures = FailEveryAllocation(
        [] {
            auto held = std::make_unique<Held>();
            std::vector<std::string> texts;
            for (DWORD i = 0; i < 400; ++i) // enough for a row of records of its own
                texts.push_back("no date " + std::to_string(i));
            std::vector<const char*> values{"01-02-2024", "2024-03-04"};
            for (const std::string& text : texts)
                values.push_back(text.c_str());
            held->first.Add(values);
            held->first.btnClass->SetDispForm(MakeDateForm(1, 6));
            List members{CLL};
            for (DWORD btnID = 4; btnID < 404; ++btnID)
                members.push_back(btnID);
            EXPECT_EQ(held->first.btnClass->CreateIncBtn("holder", SELECT, &members, nullptr, held->second),
                      VCBtnClass::CREATESPBTN_OK);
            CSourceDataMngr::SFldInfo info;
            held->first.table.GetFldInfo(1, info);
            info.dateTypeInfo.form = SCDeclareConstant::DATEFORM_DMY;
            held->first.table.SetFldInfo(1, info);
            return held;
        },
        [](const auto& held) { held->first.btnClass->RegroupAfterDataFormChange(); },
        [&](const auto& held) {
            const CFixture& fixture = held->first;
            ExpectWhole(fixture);
            const VCDate* const latest = fixture.btnClass->GetLatestDate();
            ASSERT_NE(latest, nullptr);
            DWORD month = 0;
            ASSERT_TRUE(latest->GetMonth(month));
            if (fixture.GetMembers(held->second).size() == 401) {
                EXPECT_EQ(month, 3u);
                EXPECT_EQ(fixture.GetSetOfGroups(), std::set<List>({{3}}));
            } else {
                EXPECT_EQ(month, 2u);
                EXPECT_TRUE(fixture.GetSetOfGroups().empty() ||
                            fixture.GetSetOfGroups() == std::set<List>({{2}}));
                goneOnce = true;
            }
            held->first.btnClass->RegroupAfterDataFormChange();
            EXPECT_EQ(fixture.GetSetOfGroups(), std::set<List>({{2}}));
        });
    EXPECT_GE(failures, 20);
    EXPECT_TRUE(goneOnce);
}

TEST(CDateBtnClassFault, RecordsThatRunOutOfMemoryLeaveAClassThatGoesOn)
{
    const int failures = FailEveryAllocation(
        [] {
            auto fixture = std::make_unique<CBorderFixture>();
            fixture->btnClass->SetDispForm(MakeDateForm(1, 6));
            fixture->Delete(2, 1);
            return fixture;
        },
        [](const auto& fixture) {
            const char* const values[] = {"2024-03-31", "2030-01-01", "x", "2024-03-01"};
            DWORD cells[4];
            fixture->btnClass->AddRecs(9, 4, values, cells, fixture->counts);
        },
        [](const auto& fixture) {
            ExpectWhole(*fixture);
            const char* const values[] = {"2024-03-31", "2030-01-01", "x", "2024-03-01"};
            DWORD cells[4];
            EXPECT_TRUE(fixture->btnClass->AddRecs(9, 4, values, cells, fixture->counts));
            EXPECT_EQ(fixture->GetSetOfGroups(),
                      std::set<List>({{9, 10}, {7}, {8}, {2, 3, 4, 14}, {5}, {11}, {6}, {12}}));
        });
    EXPECT_GE(failures, 30);
}

TEST(CDateBtnClassFault, ACopyThatRunsOutOfMemoryLeavesAClassWithoutButtons)
{
    CBorderFixture fixture;
    fixture.Add({"a text that is no date and long enough to need memory"});
    fixture.btnClass->SetDispForm(MakeDateForm(1, 6));
    const int failures = FailEveryAllocation(
        [] {
            auto target = std::make_unique<CFixture>();
            target->Add({"2024-01-01", "x"});
            target->btnClass->SetDispForm(MakeDateForm(1, 0));
            return target;
        },
        [&](const auto& target) { target->btnClass->Copy(*fixture.btnClass, target->rpLink); },
        [](const auto& target) {
            EXPECT_EQ(target->btnClass->GetBtnCount(), 0u);
            EXPECT_EQ(target->btnClass->GetSystemMngrSpBtnCount(), 0u);
            EXPECT_EQ(target->btnClass->GetDispForm(), CDateBtnClass::SDispForm());
            EXPECT_TRUE(target->GetNameOrder(ALL).empty());
        });
    EXPECT_GE(failures, 30);
}

TEST(CDateBtnClassFault, GroupsThatRunOutOfMemoryLeaveTheOutputUntouched)
{
    const int failures = FailEveryAllocation(
        [] {
            auto both = std::make_unique<std::pair<CBorderFixture, CDateGroupMap>>();
            both->first.btnClass->GetGroupedBtnIDLists(VCDate::DATETYPE_HALFTERM, both->second);
            return both;
        },
        [](const auto& both) {
            both->first.btnClass->GetGroupedBtnIDLists(VCDate::DATETYPE_MONTH, both->second);
        },
        [](const auto& both) {
            EXPECT_EQ(GetLists(both->second), Lists({{3, 4, 5, 7, 8, 11}, {2, 6, 9, 10}}));
        });
    EXPECT_GE(failures, 5);
}

} // namespace
