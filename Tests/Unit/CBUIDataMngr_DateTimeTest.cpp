#include "CBasicBtnCnd.h"
#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CDate.h"
#include "CUnitCndOfBscBtnCnd.h"
#include "ECAbnormalData.h"
#include "Support/CAllocFault.h"
#include "Support/CEnvQueries.h"
#include "Support/TDateTimeFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using List = BtnIDList;
using Lists = BtnIDLists;
using Class = VCBtnClass;
using SDateForm = SCDeclareConstant::SDateDispForm;
using STimeForm = SCDeclareConstant::STimeDispForm;
constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;
constexpr auto CLL_TYPE = SCBUICoreCom::BTNTYPE_CLL;
constexpr DWORD CLL = SCBUICoreCom::BTN_ID_CLL_BEGIN;

constexpr DWORD DAY = 1;
constexpr DWORD CLOCK = 2;
constexpr DWORD SHOP = 3;
constexpr DWORD AMOUNT = 4; // both the class and the field

// Records:  0           1           2           3           4           5
// day       2024-07-15  2024-06-30  2024-07-01  x           2025-01-01  2024-06-30
//           2           3           4           5           6           3
// clock     09:00:00    09:04:00    13:00:00    09:05:00    09:00:00    x
//           2           3           4           5           2           6
// shop      a           a           b           b           c           c
class CEnvFixture : public CEnvQueries
{
public:
    CEnvFixture()
        : CEnvQueries(env, AMOUNT),
          table(MakeTable(
              {{"day", DATE, {"2024-07-15", "2024-06-30", "2024-07-01", "x", "2025-01-01", "2024-06-30"}},
               {"clock", TIME, {"09:00:00", "09:04:00", "13:00:00", "09:05:00", "09:00:00", "x"}},
               {"shop", TEXT, {"a", "a", "b", "b", "c", "c"}},
               {"amount", NUM, {"10", "20", "30", "40", "50", "60"}}})),
          sums(table), env(1, ON_MEM, ON_MEM, table, &sums, nullptr)
    {}
    // Names of the order of names, hidden buttons left out.
    std::vector<std::string> Names(DWORD btnClassID) const
    {
        List btnIDs;
        env.GetBtnNameOrdListOfBtnClass(btnClassID, 0, btnIDs);
        std::vector<std::string> names;
        for (const DWORD btnID : btnIDs) {
            const char* text = nullptr;
            env.GetAliasOfBtn(btnClassID, btnID, text);
            names.push_back(text == nullptr ? "(none)" : text);
        }
        return names;
    }
    bool IsSelected() const { return env.IsBtnSelectiveState() || env.GetHierCount() != 0; }

    CSourceDataMngr table;
    CCoreSumMngr sums;
    CBUIDataMngr env;
};

using Names = std::vector<std::string>;

// Makes it the condition that the button with the highest amount fulfils.
void SetHighest(CBasicBtnCnd& cnd)
{
    CUnitCndOfBscBtnCnd unit;
    unit.SetNumID(AMOUNT);
    unit.SetSumMethod(SCBUICoreCom::ESumMethodForCnd::Sum);
    unit.SetSelCondition(CUnitCndOfBscBtnCnd::ESelCondition::Rank_High);
    unit.SetRankNum(1);
    cnd.SetCndComponent(unit);
}

TEST(CBUIDataMngr_DateTime, DisplayFormsAreUnsetAtFirstAndOfTheirClassAlone)
{
    CEnvFixture fixture;
    SDateForm dateForm = MakeDateForm(1, 2, 3);
    STimeForm timeForm = MakeTimeForm(1, 2);
    EXPECT_TRUE(fixture.env.GetDispFormOfDateBtnClass(DAY, dateForm));
    EXPECT_EQ(dateForm, SDateForm());
    EXPECT_TRUE(fixture.env.GetDispFormOfTimeBtnClass(CLOCK, timeForm));
    EXPECT_EQ(timeForm, STimeForm());
    for (const DWORD btnClassID : {CLOCK, SHOP, AMOUNT, DWORD{99}}) {
        EXPECT_FALSE(fixture.env.GetDispFormOfDateBtnClass(btnClassID, dateForm));
        EXPECT_FALSE(fixture.env.SetDispFormOfDateBtnClass(btnClassID, MakeDateForm(1, 0)));
    }
    for (const DWORD btnClassID : {DAY, SHOP, AMOUNT, DWORD{99}}) {
        EXPECT_FALSE(fixture.env.GetDispFormOfTimeBtnClass(btnClassID, timeForm));
        EXPECT_FALSE(fixture.env.SetDispFormOfTimeBtnClass(btnClassID, MakeTimeForm(1, 0)));
    }
}

TEST(CBUIDataMngr_DateTime, ADisplayFormGroupsAndClearsSelectionAndSums)
{
    CEnvFixture fixture;
    ASSERT_TRUE(fixture.env.SelectTheBtn(SHOP, 2, true));
    EXPECT_EQ(fixture.Sum(DAY, 2), 10);
    ASSERT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 6)));
    EXPECT_FALSE(fixture.IsSelected());
    EXPECT_EQ(fixture.Names(DAY), Names({"2024/06", "2024/07", "2025/01", "x"}));
    EXPECT_EQ(fixture.Sum(DAY, CLL), 80);
    EXPECT_EQ(fixture.Sum(DAY, CLL + 1), 40);
    SDateForm form;
    EXPECT_TRUE(fixture.env.GetDispFormOfDateBtnClass(DAY, form));
    EXPECT_EQ(form, MakeDateForm(1, 6));
    DWORD count = 0;
    EXPECT_TRUE(fixture.env.GetSystemMngrSpBtnCountOfBtnClass(DAY, count));
    EXPECT_EQ(count, 3u);

    ASSERT_TRUE(fixture.env.SetDispFormOfTimeBtnClass(CLOCK, MakeTimeForm(2, 4)));
    EXPECT_EQ(fixture.Names(CLOCK), Names({"09:00", "09:05", "13:00", "x"}));
    EXPECT_EQ(fixture.Sum(CLOCK, CLL), 80);
}

TEST(CBUIDataMngr_DateTime, AGroupIsPressedAsEveryButton)
{
    CEnvFixture fixture;
    ASSERT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 6)));
    ASSERT_TRUE(fixture.env.SelectTheBtn(DAY, CLL, true));
    EXPECT_EQ(fixture.TargetRecs(), List({1, 5}));
    List shops;
    fixture.env.GetDispBtnIDListOfBtnClass(SHOP, shops);
    EXPECT_EQ(shops, List({2, 4}));
    ASSERT_TRUE(fixture.env.SelectTheBtn(DAY, CLL, false));
    // And it is narrowed by others.
    ASSERT_TRUE(fixture.env.SelectTheBtn(SHOP, 3, true));
    EXPECT_EQ(fixture.Names(DAY), Names({"2024/07", "x"}));
}

TEST(CBUIDataMngr_DateTime, TheFormInForceChangesNothing)
{
    CEnvFixture fixture;
    EXPECT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, SDateForm())); // unset, as it is
    ASSERT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(5, 0, 0, "{m}")));
    ASSERT_TRUE(fixture.env.SelectTheBtn(SHOP, 2, true));
    EXPECT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(5, 0, 0, "{m}")));
    EXPECT_TRUE(fixture.IsSelected());
    EXPECT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(5, 0, 0, "{mm}")));
    EXPECT_FALSE(fixture.IsSelected());
    EXPECT_EQ(fixture.Names(DAY), Names({"01", "06", "07", "x"}));
}

TEST(CBUIDataMngr_DateTime, AnUnsetFormIsRefusedAfterTheSelectionIsCleared)
{
    CEnvFixture fixture;
    ASSERT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 6)));
    ASSERT_TRUE(fixture.env.SetDispFormOfTimeBtnClass(CLOCK, MakeTimeForm(2, 4)));
    SDateForm unterminated = MakeDateForm(5, 0);
    std::memset(unterminated.optionalForm, 'd', sizeof unterminated.optionalForm);
    for (const SDateForm& form :
         {SDateForm(), MakeDateForm(4294967294, 0), MakeDateForm(1, 4294967294),
          MakeDateForm(1, 0, 4294967294), MakeDateForm(1, 0, 4294967295), unterminated}) {
        ASSERT_TRUE(fixture.env.SelectTheBtn(SHOP, 2, true));
        EXPECT_FALSE(fixture.env.SetDispFormOfDateBtnClass(DAY, form));
        EXPECT_FALSE(fixture.IsSelected());
        EXPECT_EQ(fixture.Names(DAY), Names({"2024/06", "2024/07", "2025/01", "x"}));
    }
    STimeForm unterminatedTime = MakeTimeForm(3, 0);
    std::memset(unterminatedTime.optionalForm, 'h', sizeof unterminatedTime.optionalForm);
    for (const STimeForm& form :
         {STimeForm(), MakeTimeForm(4294967294, 0), MakeTimeForm(1, 4294967294), unterminatedTime}) {
        ASSERT_TRUE(fixture.env.SelectTheBtn(SHOP, 2, true));
        EXPECT_FALSE(fixture.env.SetDispFormOfTimeBtnClass(CLOCK, form));
        EXPECT_FALSE(fixture.IsSelected());
        EXPECT_EQ(fixture.Names(CLOCK), Names({"09:00", "09:05", "13:00", "x"}));
    }
}

TEST(CBUIDataMngr_DateTime, ConditionsOfTheClassPickAmongTheNewGroups)
{
    CEnvFixture fixture;
    CBasicBtnCnd cnd;
    SetHighest(cnd);
    DWORD best = 0;
    ASSERT_EQ(
        fixture.env.CreateSpBtn(best, DAY, CLL_TYPE, "best", VCSpBtn::MMBBTNSELMTH_CONDITION, nullptr, &cnd),
        Class::CREATESPBTN_OK);
    EXPECT_EQ(fixture.Members(DAY, best), List({3}));
    ASSERT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(5, 0, 0, "{yyyy}")));
    EXPECT_EQ(fixture.Members(DAY, best), List({best + 1})); // 2024
    ASSERT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 6)));
    EXPECT_EQ(fixture.Members(DAY, best), List({best + 1})); // 2024/06
}

TEST(CBUIDataMngr_DateTimeFault, AFormThatRunsOutOfMemoryLeavesAnEnvironmentThatGoesOn)
{
    const SDateForm first = MakeDateForm(1, 6);
    const SDateForm second = MakeDateForm(1, 0);
    for (const bool isSelected : {false, true}) {
        const int failures = FailEveryAllocation(
            [&] {
                auto fixture = std::make_unique<CEnvFixture>();
                EXPECT_TRUE(fixture->env.SetDispFormOfDateBtnClass(DAY, first));
                DWORD cndBtnID = 0;
                CBasicBtnCnd highest;
                SetHighest(highest);
                EXPECT_EQ(fixture->env.CreateSpBtn(cndBtnID, DAY, CLL_TYPE, "best",
                                                   VCSpBtn::MMBBTNSELMTH_CONDITION, nullptr, &highest),
                          Class::CREATESPBTN_OK);
                EXPECT_EQ(cndBtnID, CLL + 3);
                EXPECT_EQ(fixture->Members(DAY, CLL + 3), List({CLL})); // June
                if (isSelected) {
                    EXPECT_TRUE(fixture->env.SelectTheBtn(DAY, CLL + 1, true));
                    EXPECT_EQ(fixture->TargetRecs(), List({0, 2}));
                }
                return fixture;
            },
            [&](const auto& fixture) { fixture->env.SetDispFormOfDateBtnClass(DAY, second); },
            [&](const auto& fixture) {
                SDateForm held;
                EXPECT_TRUE(fixture->env.GetDispFormOfDateBtnClass(DAY, held));
                EXPECT_TRUE(held == first || held == second || held == SDateForm());
                if (held == second) {
                    EXPECT_FALSE(fixture->IsSelected());
                }
                EXPECT_NO_THROW(fixture->Names(DAY));
                EXPECT_NO_THROW(fixture->TargetRecs());
                EXPECT_NO_THROW(fixture->Sum(DAY, 2));
                EXPECT_TRUE(fixture->env.SetDispFormOfDateBtnClass(DAY, second));
                fixture->env.ClearAllBtnSelections(true);
                EXPECT_FALSE(fixture->IsSelected());
                EXPECT_EQ(fixture->TargetRecs(), List({0, 1, 2, 3, 4, 5}));
                List members = fixture->Members(DAY, CLL + 3);
                ASSERT_EQ(members.size(), 1u);
                EXPECT_EQ(fixture->Sum(DAY, members.front()), 80); // 30 June
            });
        EXPECT_GE(failures, 30);
    }
}

TEST(CBUIDataMngr_DateTime, ASystemManagedButtonRefusesEveryEdit)
{
    CEnvFixture fixture;
    ASSERT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 6)));
    ASSERT_TRUE(fixture.env.SelectTheBtn(SHOP, 2, true));
    EXPECT_FALSE(fixture.env.SetEffectiveInfoOfSpBtn(DAY, CLL, false));
    EXPECT_EQ(fixture.env.SetMemberBtnIDListOfSpBtn(DAY, CLL, {2}), Class::OPEMMBBTN_SYSTEMMNGR);
    EXPECT_TRUE(fixture.IsSelected());
    EXPECT_FALSE(fixture.env.DestroySpBtn(DAY, CLL));
    EXPECT_FALSE(fixture.IsSelected()); // whatever becomes of the button
    EXPECT_EQ(fixture.Members(DAY, CLL), List({3}));
    bool managedByUser = true;
    EXPECT_TRUE(fixture.env.GetBtnMngrInfoOfSpBtn(DAY, CLL, managedByUser));
    EXPECT_FALSE(managedByUser);
}

TEST(CBUIDataMngr_DateTime, GroupsStandBehindTheButtonsOfUsersInTheOrderOfAppearance)
{
    CEnvFixture fixture;
    ASSERT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 6)));
    const List members{5};
    DWORD ofUser = 0;
    ASSERT_EQ(fixture.env.CreateSpBtn(ofUser, DAY, CLL_TYPE, "of a user", SELECT, &members, nullptr),
              Class::CREATESPBTN_OK);
    List btnIDs;
    fixture.env.GetBtnAppOrdListOfBtnClass(DAY, 0, btnIDs);
    EXPECT_EQ(btnIDs, List({ofUser, CLL, CLL + 1, CLL + 2}));
}

TEST(CBUIDataMngr_DateTime, GroupedListsAreThoseOfTheClass)
{
    CEnvFixture fixture;
    CDateGroupMap groups;
    EXPECT_TRUE(fixture.env.GetGroupedBtnIDListsOfDateBtnClass(DAY, VCDate::DATETYPE_MONTH, groups));
    EXPECT_EQ(GetLists(groups), Lists({{6}, {3}, {2, 4}}));
    EXPECT_FALSE(fixture.env.GetGroupedBtnIDListsOfDateBtnClass(DAY, VCDate::DATETYPE_HOUR, groups));
    EXPECT_FALSE(fixture.env.GetGroupedBtnIDListsOfDateBtnClass(CLOCK, VCDate::DATETYPE_MONTH, groups));
    EXPECT_FALSE(fixture.env.GetGroupedBtnIDListsOfDateBtnClass(99, VCDate::DATETYPE_MONTH, groups));
    EXPECT_EQ(groups.size(), 3u);
    EXPECT_THROW(
        fixture.env.GetGroupedBtnIDListsOfDateBtnClass(DAY, static_cast<VCDate::EDateType>(8), groups),
        ECAbnormalData);
    EXPECT_TRUE(fixture.env.GetGroupedBtnIDListsOfTimeBtnClass(CLOCK, VCDate::DATETYPE_HOUR, groups));
    EXPECT_EQ(GetLists(groups), Lists({{2, 3, 5}, {4}}));
    EXPECT_FALSE(fixture.env.GetGroupedBtnIDListsOfTimeBtnClass(DAY, VCDate::DATETYPE_HOUR, groups));
    EXPECT_FALSE(fixture.env.GetGroupedBtnIDListsOfTimeBtnClass(CLOCK, VCDate::DATETYPE_MONTH, groups));
}

TEST(CBUIDataMngr_DateTime, ButtonsAndRecordsOfARelationToADateAreGiven)
{
    CEnvFixture fixture;
    CDate july;
    july.SetYearOfTheGrgCalendar(2024);
    july.SetMonth(7);
    List btnIDs;
    EXPECT_TRUE(
        fixture.env.GetGroupedBtnIDListOfDateBtnClass(DAY, july, SCKZCoreCom::CMPOPERATOR_EQUAL, btnIDs));
    EXPECT_EQ(btnIDs, List({2, 4}));
    EXPECT_FALSE(
        fixture.env.GetGroupedBtnIDListOfDateBtnClass(CLOCK, july, SCKZCoreCom::CMPOPERATOR_EQUAL, btnIDs));
    List recs(6);
    SRecordList recList{recs.data(), 0};
    EXPECT_TRUE(
        fixture.env.GetGroupedRecListOfDateBtnClass(DAY, july, SCKZCoreCom::CMPOPERATOR_LESSEQUAL, recList));
    EXPECT_EQ(List(recList.recList, recList.recList + recList.recCount), List({0, 1, 2, 5}));
    july.SetYearOfTheGrgCalendar(2030);
    EXPECT_TRUE(
        fixture.env.GetGroupedRecListOfDateBtnClass(DAY, july, SCKZCoreCom::CMPOPERATOR_GREATER, recList));
    EXPECT_EQ(recList.recCount, 0u);
    EXPECT_FALSE(
        fixture.env.GetGroupedRecListOfDateBtnClass(99, july, SCKZCoreCom::CMPOPERATOR_GREATER, recList));
}

TEST(CBUIDataMngr_DateTime, TheLatestDateAndRecordAreFound)
{
    CEnvFixture fixture;
    ASSERT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 6)));
    const VCDate* date = nullptr;
    ASSERT_TRUE(fixture.env.GetLatestDateOfDateBtnClass(DAY, date));
    DWORD year = 0;
    EXPECT_TRUE(date->GetYearOfTheGrgCalendar(year));
    EXPECT_EQ(year, 2025u);
    EXPECT_FALSE(fixture.env.GetLatestDateOfDateBtnClass(CLOCK, date));
    EXPECT_FALSE(fixture.env.GetLatestDateOfDateBtnClass(99, date));

    DWORD recNum = 99;
    unsigned long long dateNum = 0;
    const DWORD june[] = {1, 3, 5};
    EXPECT_TRUE(fixture.env.GetLatestRecNumOfDateBtnClass(DAY, june, 3, recNum, dateNum));
    EXPECT_EQ(recNum, 5u); // the last of the two records of the latest date
    unsigned long long expected = 0;
    CDate last;
    last.SetYearOfTheGrgCalendar(2024);
    last.SetMonth(6);
    last.SetDay(30);
    EXPECT_TRUE(last.GetDateNumeric(fixture.table.GetStartMonth(), fixture.table.GetCutOffDate(),
                                    fixture.table.GetDaysOfTheWeek(), expected));
    EXPECT_EQ(dateNum, expected);
    const DWORD firstOfJune[] = {1, 3};
    EXPECT_TRUE(fixture.env.GetLatestRecNumOfDateBtnClass(DAY, firstOfJune, 2, recNum, dateNum));
    EXPECT_EQ(recNum, 1u);
    EXPECT_FALSE(fixture.env.GetLatestRecNumOfDateBtnClass(DAY, june + 1, 1, recNum, dateNum)); // no date
    EXPECT_FALSE(fixture.env.GetLatestRecNumOfDateBtnClass(DAY, nullptr, 0, recNum, dateNum));
    const DWORD none[] = {1, 6};
    EXPECT_FALSE(fixture.env.GetLatestRecNumOfDateBtnClass(DAY, none, 2, recNum, dateNum));
    EXPECT_FALSE(fixture.env.GetLatestRecNumOfDateBtnClass(CLOCK, june, 3, recNum, dateNum));
    EXPECT_EQ(recNum, 1u);
}

TEST(CBUIDataMngr_DateTime, EveryDateClassHasASymbol)
{
    CEnvFixture fixture;
    std::map<DWORD, std::string> symbols{{7, "old"}};
    EXPECT_TRUE(fixture.env.GetSymbolListOfDateBtnClasses(symbols));
    EXPECT_EQ(symbols, (std::map<DWORD, std::string>{{DAY, "D1"}}));
}

TEST(CBUIDataMngr_DateTime, ChangedCriteriaMoveDatesAndClearTheSelection)
{
    CEnvFixture fixture;
    fixture.table.SetStartMonth(1);
    ASSERT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(2, 101)));
    EXPECT_EQ(fixture.Names(DAY), Names({"FY2024 H1", "FY2024 H2", "FY2025 H1", "x"}));
    ASSERT_TRUE(fixture.env.SelectTheBtn(SHOP, 2, true));
    EXPECT_EQ(fixture.Sum(DAY, CLL), 20);
    ASSERT_TRUE(fixture.table.SetStartMonth(4));
    EXPECT_TRUE(fixture.env.AdjstAccordingToChangeDateCriterionInfo());
    EXPECT_FALSE(fixture.IsSelected());
    // June and July are in the first half of 2024 now, January in its second.
    EXPECT_EQ(fixture.Names(DAY), Names({"FY2024 H1", "FY2024 H2", "x"}));
    EXPECT_EQ(fixture.Members(DAY, CLL), List({2, 3, 4}));
    EXPECT_EQ(fixture.Sum(DAY, CLL), 120);
    EXPECT_TRUE(fixture.Members(DAY, CLL + 2).empty());
}

TEST(CBUIDataMngr_DateTime, AChangedDataFormIsReadAnewAndSwitchesCllButtonsOff)
{
    CEnvFixture fixture;
    ASSERT_TRUE(fixture.env.SetDispFormOfTimeBtnClass(CLOCK, MakeTimeForm(2, 4)));
    const List members{2};
    DWORD cll = 0;
    DWORD cnd = 0;
    DWORD inc = 0;
    ASSERT_EQ(fixture.env.CreateSpBtn(cll, CLOCK, CLL_TYPE, "cll", SELECT, &members, nullptr),
              Class::CREATESPBTN_OK);
    ASSERT_EQ(fixture.env.CreateSpBtn(cnd, CLOCK, CLL_TYPE, "cnd", VCSpBtn::MMBBTNSELMTH_CONDITION, nullptr,
                                      nullptr),
              Class::CREATESPBTN_OK);
    ASSERT_EQ(
        fixture.env.CreateSpBtn(inc, CLOCK, SCBUICoreCom::BTNTYPE_INC, "inc", SELECT, &members, nullptr),
        Class::CREATESPBTN_OK);
    ASSERT_TRUE(fixture.env.SelectTheBtn(SHOP, 2, true));
    CSourceDataMngr::SFldInfo info;
    ASSERT_TRUE(fixture.table.GetFldInfo(CLOCK, info));
    info.timeTypeInfo.form = SCDeclareConstant::TIMEFORM_HM; // a second behind it is no time of it
    ASSERT_TRUE(fixture.table.SetFldInfo(CLOCK, info));
    const DWORD fldIDs[] = {SHOP, 99, CLOCK};
    EXPECT_TRUE(fixture.env.AdjstAccordingToChangeFldDataForm(fldIDs, 3));
    EXPECT_FALSE(fixture.IsSelected());
    DWORD count = 99;
    EXPECT_TRUE(fixture.env.GetSystemMngrSpBtnCountOfBtnClass(CLOCK, count));
    EXPECT_EQ(count, 0u);
    bool effective = true;
    EXPECT_TRUE(fixture.env.GetEffectiveInfoOfSpBtn(CLOCK, cll, effective));
    EXPECT_FALSE(effective);
    EXPECT_TRUE(fixture.env.GetEffectiveInfoOfSpBtn(CLOCK, cnd, effective));
    EXPECT_TRUE(effective);
    EXPECT_TRUE(fixture.env.GetEffectiveInfoOfSpBtn(CLOCK, inc, effective));
    EXPECT_TRUE(effective);

    info.timeTypeInfo.form = SCDeclareConstant::TIMEFORM_HMS;
    ASSERT_TRUE(fixture.table.SetFldInfo(CLOCK, info));
    EXPECT_TRUE(fixture.env.AdjstAccordingToChangeFldDataForm(fldIDs, 3));
    EXPECT_EQ(fixture.Names(CLOCK), Names({"inc", "09:00", "09:05", "13:00", "x"}));
}

TEST(CBUIDataMngr_DateTime, ALimitationHidesGroupsWithoutARecordOfIt)
{
    CEnvFixture fixture;
    const DWORD recs[] = {0, 4};
    fixture.env.SetLimitedRecList(recs, 2);
    ASSERT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 6)));
    EXPECT_EQ(fixture.Names(DAY), Names({"2024/07", "2025/01"}));
    fixture.env.ClearLimitedRecList();
    EXPECT_EQ(fixture.Names(DAY), Names({"2024/06", "2024/07", "2025/01", "x"}));
}

TEST(CBUIDataMngr_DateTime, AClearedEnvironmentKeepsTheFormAndGroupsAnewWithTheNextRebuilding)
{
    CEnvFixture fixture;
    ASSERT_TRUE(fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 6)));
    fixture.env.ClearOfFixedSpec();
    EXPECT_EQ(fixture.Names(DAY), Names({"2024-06-30", "2024-07-01", "2024-07-15", "2025-01-01", "x"}));
    SDateForm form;
    EXPECT_TRUE(fixture.env.GetDispFormOfDateBtnClass(DAY, form));
    EXPECT_EQ(form, MakeDateForm(1, 6));
    EXPECT_TRUE(fixture.env.AdjstAccordingToChangeDateCriterionInfo());
    EXPECT_EQ(fixture.Names(DAY), Names({"2024/06", "2024/07", "2025/01", "x"}));
}

TEST(CBUIDataMngr_DateTime, ARelationThatNoDateFulfilsHasNoRecords)
{
    const CEnvFixture fixture;
    CDate date;
    date.SetYearOfTheGrgCalendar(1999);
    List recs(fixture.env.GetRecCountOfSrcData());
    SRecordList recList{recs.data(), 4711};
    List btnIDs{4711};
    EXPECT_TRUE(
        fixture.env.GetGroupedBtnIDListOfDateBtnClass(DAY, date, SCKZCoreCom::CMPOPERATOR_LESS, btnIDs));
    EXPECT_EQ(btnIDs, List());
    EXPECT_TRUE(
        fixture.env.GetGroupedRecListOfDateBtnClass(DAY, date, SCKZCoreCom::CMPOPERATOR_LESS, recList));
    EXPECT_EQ(recList.recCount, 0u);
}

TEST(CBUIDataMngr_DateTime, AVirtualIncButtonFollowsGroupsThatComeAndGo)
{
    CEnvFixture fixture;
    DWORD groupsID = 0;
    DWORD summerID = 0;
    fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 6, 0)); // months: June, July, January
    const List members{CLL, CLL + 1};
    ASSERT_EQ(fixture.env.CreateVirBtnClass("seasons", false, groupsID), CBUIDataMngr::CREATEVIR_OK);
    ASSERT_EQ(fixture.env.CreateSpBtn(summerID, groupsID, SCBUICoreCom::BTNTYPE_VIRINC, "summer", SELECT,
                                      &members, nullptr, DAY),
              Class::CREATESPBTN_OK);
    EXPECT_EQ(fixture.Recs(groupsID, summerID), List({0, 1, 2, 5}));
    // July moves to the fiscal month of August with all but its first days.
    fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 6, 1));
    EXPECT_EQ(fixture.Members(groupsID, summerID), List()); // other buttons, though with the same identifiers
    EXPECT_EQ(fixture.Recs(groupsID, summerID), List());
    EXPECT_EQ(fixture.env.SetMemberBtnIDListOfSpBtn(groupsID, summerID, members), Class::OPEMMBBTN_OK);
    fixture.table.SetCutOffDate(10);
    EXPECT_TRUE(fixture.env.AdjstAccordingToChangeDateCriterionInfo());
    EXPECT_EQ(fixture.Members(groupsID, summerID), members); // the groups stayed, with other dates
    List expected;
    for (const DWORD groupID : members) {
        const List recs = fixture.Recs(DAY, groupID);
        expected.insert(expected.end(), recs.begin(), recs.end());
    }
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(fixture.Recs(groupsID, summerID), expected);
    EXPECT_EQ(expected, List({1, 2, 5}));
    EXPECT_TRUE(fixture.env.SetEffectiveInfoOfSpBtn(groupsID, summerID, false));
    fixture.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 6, 0));
    EXPECT_EQ(fixture.Members(groupsID, summerID), List()); // asleep it forgets them too
}

TEST(CBUIDataMngr_DateTimeFault, ChangedCriteriaThatRunOutOfMemoryAreFollowedAtTheNextCall)
{
    const int failures = FailEveryAllocation(
        [] {
            auto fixture = std::make_unique<CEnvFixture>();
            fixture->env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(2, 107, 0));
            fixture->env.SelectTheBtn(DAY, CLL, true);
            fixture->table.SetStartMonth(6);
            return fixture;
        },
        [](const auto& fixture) { fixture->env.AdjstAccordingToChangeDateCriterionInfo(); },
        [](const auto& fixture) {
            EXPECT_TRUE(fixture->env.AdjstAccordingToChangeDateCriterionInfo());
            CEnvFixture fresh;
            fresh.table.SetStartMonth(6);
            fresh.env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(2, 107, 0));
            EXPECT_EQ(fixture->Names(DAY), fresh.Names(DAY));
            EXPECT_FALSE(fixture->IsSelected());
        });
    EXPECT_GT(failures, 0);
}

} // namespace
