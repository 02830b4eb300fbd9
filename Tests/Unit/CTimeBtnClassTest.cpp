#include "CTimeBtnClass.h"
#include "SCDispForm.h"
#include "Support/CAllocFault.h"
#include "Support/TDateTimeFixture.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using List = BtnIDList;
using Lists = BtnIDLists;
using CFixture = TDateTimeFixture<CTimeBtnClass>;
constexpr DWORD CLL = SCBUICoreCom::BTN_ID_CLL_BEGIN;
constexpr unsigned int ALL = VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS;

class CClockFixture : public CFixture
{
public:
    CClockFixture()
    {
        Add({
            "09:04:59", // 2
            "09:00:00", // 3
            "09:05:00", // 4
            "09:15:20", // 5
            "11:15:20", // 6
            "13:59:59", // 7
            "33:04:59", // 8: 9 o'clock of the day after
            "00:00:00", // 9
        });
    }
};

TEST(CTimeBtnClass, AClassWithoutADisplayFormHasNoGroups)
{
    CClockFixture fixture;
    EXPECT_EQ(fixture.btnClass->GetBtnClassType(), SCBUICoreCom::BTNCLSTYPE_TIME);
    EXPECT_EQ(fixture.btnClass->GetDispForm(), CTimeBtnClass::SDispForm());
    EXPECT_TRUE(fixture.GetGroups().empty());
    EXPECT_EQ(fixture.GetNameOrder(), List({9, 3, 2, 4, 5, 6, 7, 8}));
}

TEST(CTimeBtnClass, EveryFormGroupsAsItSays)
{
    const std::pair<DWORD, Lists> rows[] = {
        {0, {{9}, {3}, {2}, {4}, {5}, {6}, {7}, {8}}},
        {1, {{9}, {3}, {2, 8}, {4}, {5}, {6}, {7}}},
        {2, {{9}, {3}, {2}, {4}, {5}, {6}, {7}, {8}}},
        {3, {{9}, {3}, {2, 8}, {4}, {5}, {6}, {7}}},
        {4, {{9}, {2, 3}, {4}, {5}, {6}, {7}, {8}}},
        {5, {{9}, {2, 3, 8}, {4}, {5}, {6}, {7}}},
        {6, {{9}, {2, 3, 4}, {5}, {6}, {7}, {8}}},
        {7, {{9}, {2, 3, 4, 8}, {5}, {6}, {7}}},
        {8, {{9}, {2, 3, 4}, {5}, {6}, {7}, {8}}},
        {9, {{9}, {2, 3, 4, 8}, {5}, {6}, {7}}},
        {10, {{9}, {2, 3, 4, 5}, {6}, {7}, {8}}},
        {11, {{9}, {2, 3, 4, 5, 8}, {6}, {7}}},
        {12, {{9}, {2, 3, 4, 5}, {6}, {7}, {8}}},
        {13, {{9}, {2, 3, 4, 5, 8}, {6}, {7}}},
        {14, {{3, 9}, {2, 8}, {4}, {5, 6}, {7}}},
        {15, {}},
        {4294967293, {}},
        {4294967295, {}},
    };
    CClockFixture fixture;
    for (const auto& [form, groups] : rows) {
        SCOPED_TRACE(form);
        fixture.btnClass->SetDispForm(MakeTimeForm(form <= 3 || form == 14 ? 1 : 2, form));
        EXPECT_EQ(fixture.GetGroups(), groups);
        for (const std::string& text : fixture.GetGroupTexts())
            EXPECT_FALSE(text.empty());
    }
}

TEST(CTimeBtnClass, MinutesAreCutDownToTheStep)
{
    CFixture fixture;
    fixture.Add({"09:00:00", "09:09:59", "09:10:00", "09:14:59", "09:15:00", "09:19:59", "09:20:00",
                 "09:29:59", "09:30:00"}); // 2 to 10
    const std::pair<DWORD, Lists> rows[] = {
        {4, {{2}, {3}, {4, 5}, {6, 7}, {8}, {9}, {10}}}, {6, {{2, 3}, {4, 5, 6, 7}, {8, 9}, {10}}},
        {8, {{2, 3, 4, 5}, {6, 7, 8, 9}, {10}}},         {10, {{2, 3, 4, 5, 6, 7}, {8, 9, 10}}},
        {12, {{2, 3, 4, 5, 6, 7, 8, 9}, {10}}},
    };
    for (const auto& [form, groups] : rows) {
        SCOPED_TRACE(form);
        fixture.btnClass->SetDispForm(MakeTimeForm(2, form));
        EXPECT_EQ(fixture.GetGroups(), groups);
    }
    fixture.btnClass->SetDispForm(MakeTimeForm(2, 10));
    EXPECT_EQ(fixture.GetGroupTexts(), std::vector<std::string>({"09:00", "09:20"}));
}

TEST(CTimeBtnClass, FormFivePutsFourPastNineToNine)
{
    CFixture fixture;
    CSourceDataMngr::SFldInfo info;
    ASSERT_TRUE(fixture.table.GetFldInfo(1, info));
    info.timeTypeInfo.form = SCDeclareConstant::TIMEFORM_HM;
    ASSERT_TRUE(fixture.table.SetFldInfo(1, info));
    fixture.Add({"09:04", "09:00", "09:05"});
    fixture.btnClass->SetDispForm(MakeTimeForm(2, 5));
    EXPECT_EQ(fixture.GetGroups(), Lists({{2, 3}, {4}}));
    fixture.btnClass->SetDispForm(MakeTimeForm(1, 0)); // needs a second
    EXPECT_TRUE(fixture.GetGroups().empty());
    fixture.btnClass->SetDispForm(MakeTimeForm(1, 2));
    EXPECT_EQ(fixture.GetGroups(), Lists({{3}, {2}, {4}}));
}

TEST(CTimeBtnClass, KindZeroMakesAGroupForEachTime)
{
    CFixture fixture;
    fixture.Add({"09:04:00", "9:04:00", "10:00:00", "no time"});
    fixture.btnClass->SetDispForm(MakeTimeForm(0, 0));
    EXPECT_EQ(fixture.GetGroups(), Lists({{2, 3}, {4}}));
    EXPECT_EQ(fixture.GetNameOrder(), List({CLL, CLL + 1, 5}));
}

TEST(CTimeBtnClass, APatternGroupsByThePartsThatItNames)
{
    CClockFixture fixture;
    fixture.btnClass->SetDispForm(MakeTimeForm(3, 0, "{h}"));
    EXPECT_EQ(fixture.GetGroups(), Lists({{9}, {2, 3, 4, 5}, {6}, {7}, {8}}));
    EXPECT_EQ(fixture.GetGroupTexts(), std::vector<std::string>({"0", "9", "11", "13", "33"}));
    fixture.btnClass->SetDispForm(MakeTimeForm(3, 0, "{h12} {AM/PM}"));
    EXPECT_EQ(fixture.GetGroups(), Lists({{9}, {2, 3, 4, 5, 8}, {6}, {7}}));
    fixture.btnClass->SetDispForm(MakeTimeForm(3, 0, "{AM/PM}"));
    EXPECT_EQ(fixture.GetGroups(), Lists({{2, 3, 4, 5, 6, 8, 9}, {7}}));
    EXPECT_EQ(fixture.GetGroupTexts(), std::vector<std::string>({"AM", "PM"}));
    fixture.btnClass->SetDispForm(MakeTimeForm(3, 0, "{nn}"));
    EXPECT_EQ(fixture.GetGroups(), Lists({{3, 9}, {2, 8}, {4}, {5, 6}, {7}}));
    fixture.btnClass->SetDispForm(MakeTimeForm(3, 0, "{s}"));
    EXPECT_EQ(fixture.GetGroups(), Lists({{3, 4, 9}, {5, 6}, {2, 7, 8}}));
    fixture.btnClass->SetDispForm(MakeTimeForm(3, 0, "no placeholder"));
    EXPECT_TRUE(fixture.GetGroups().empty());
}

TEST(CTimeBtnClass, TheCalendarCriteriaHaveNoPartInTheGroups)
{
    CClockFixture fixture;
    fixture.btnClass->SetDispForm(MakeTimeForm(2, 12));
    const Lists groups = fixture.GetGroups();
    const List order = fixture.GetNameOrder(ALL);
    fixture.table.SetStartMonth(7);
    fixture.table.SetCutOffDate(10);
    fixture.btnClass->ResetInsideInfoForSpBtnsOfSrcBtns(true, true);
    EXPECT_EQ(fixture.GetGroups(), groups);
    EXPECT_EQ(fixture.GetNameOrder(ALL), order);
}

TEST(CTimeBtnClass, AChangedFormOfTheDataIsReadAnew)
{
    CFixture fixture;
    fixture.Add({"9:05", "10:05:00"}); // 2, 3
    fixture.btnClass->SetDispForm(MakeTimeForm(1, 2));
    EXPECT_EQ(fixture.GetGroups(), Lists({{3}}));
    CSourceDataMngr::SFldInfo info;
    ASSERT_TRUE(fixture.table.GetFldInfo(1, info));
    info.timeTypeInfo.form = SCDeclareConstant::TIMEFORM_HM;
    ASSERT_TRUE(fixture.table.SetFldInfo(1, info));
    fixture.btnClass->RegroupAfterDataFormChange();
    EXPECT_EQ(fixture.GetGroups(), Lists({{2}}));
    EXPECT_EQ(fixture.GetNameOrder(), List({CLL, 3}));
}

TEST(CTimeBtnClass, ASystemManagedButtonRefusesEveryEdit)
{
    CClockFixture fixture;
    fixture.btnClass->SetDispForm(MakeTimeForm(2, 12));
    const Lists groups = fixture.GetGroups();
    EXPECT_FALSE(fixture.btnClass->DestroyCllBtn(CLL));
    EXPECT_FALSE(fixture.btnClass->SetEffectiveInfoOfSpBtn(CLL, false));
    EXPECT_EQ(fixture.btnClass->SetMemberBtnIDListOfSpBtn(CLL, {}), VCBtnClass::OPEMMBBTN_SYSTEMMNGR);
    EXPECT_EQ(fixture.btnClass->AddMemberBtnIDListOfSpBtn(CLL, 2), VCBtnClass::OPEMMBBTN_SYSTEMMNGR);
    EXPECT_EQ(fixture.btnClass->DeleteMemberBtnIDListOfSpBtn(CLL, 9), VCBtnClass::OPEMMBBTN_SYSTEMMNGR);
    EXPECT_EQ(fixture.GetGroups(), groups);
    bool managedByUser = true;
    EXPECT_TRUE(fixture.btnClass->GetBtnMngrInfoOfSpBtn(CLL, managedByUser));
    EXPECT_FALSE(managedByUser);
}

TEST(CTimeBtnClass, TimesGroupByEveryPart)
{
    CClockFixture fixture;
    CDateGroupMap groups;
    EXPECT_TRUE(fixture.btnClass->GetGroupedBtnIDLists(VCDate::DATETYPE_HOUR, groups));
    EXPECT_EQ(GetLists(groups), Lists({{9}, {2, 3, 4, 5}, {6}, {7}, {8}}));
    EXPECT_TRUE(fixture.btnClass->GetGroupedBtnIDLists(VCDate::DATETYPE_MINUTE, groups));
    EXPECT_EQ(GetLists(groups), Lists({{3, 9}, {2, 8}, {4}, {5, 6}, {7}}));
    EXPECT_TRUE(fixture.btnClass->GetGroupedBtnIDLists(VCDate::DATETYPE_SECOND, groups));
    EXPECT_EQ(GetLists(groups), Lists({{3, 4, 9}, {5, 6}, {2, 7, 8}}));
    EXPECT_TRUE(fixture.btnClass->GetGroupedBtnIDLists(VCDate::DATETYPE_TIMEBASEDONNOON, groups));
    EXPECT_EQ(GetLists(groups), Lists({{2, 3, 4, 5, 6, 8, 9}, {7}}));
    VCDate::ETimeBasedOnNoon partOfDay = VCDate::TIMEBASEDONNOON_UNSETTING;
    EXPECT_TRUE(groups.begin()->second.date->GetTimeBasedOnNoon(partOfDay));
    EXPECT_EQ(partOfDay, VCDate::TIMEBASEDONNOON_MORNING);
}

TEST(CTimeBtnClass, OtherPartsAreRefusedWithTheOutputUntouched)
{
    CClockFixture fixture;
    CDateGroupMap groups;
    ASSERT_TRUE(fixture.btnClass->GetGroupedBtnIDLists(VCDate::DATETYPE_TIMEBASEDONNOON, groups));
    for (const DWORD dateType : {0u, 1u, 2u, 3u, 4u, 8u, 268435456u, 268435465u, 268435467u, 4294967295u}) {
        EXPECT_FALSE(
            fixture.btnClass->GetGroupedBtnIDLists(static_cast<VCDate::EDateType>(dateType), groups));
        EXPECT_EQ(groups.size(), 2u);
    }
    CFixture without;
    EXPECT_TRUE(without.btnClass->GetGroupedBtnIDLists(VCDate::DATETYPE_HOUR, groups));
    EXPECT_TRUE(groups.empty());
}

TEST(CTimeBtnClass, ACopyHasGroupsOfItsOwn)
{
    CClockFixture fixture;
    fixture.btnClass->SetDispForm(MakeTimeForm(2, 12));
    const Lists groups = fixture.GetGroups();
    CFixture other;
    other.btnClass->Copy(*fixture.btnClass, other.rpLink);
    fixture.btnClass->Clear();
    EXPECT_EQ(other.GetGroups(), groups);
    EXPECT_EQ(other.btnClass->GetDispForm(), MakeTimeForm(2, 12));
    other.btnClass->ClearOfFixedSpec();
    EXPECT_EQ(other.GetNameOrder(ALL), List({9, 3, 2, 4, 5, 6, 7, 8}));
}

TEST(CTimeBtnClassFault, AFormThatRunsOutOfMemoryIsSetTheNextTime)
{
    const int failures =
        FailEveryAllocation([] { return std::make_unique<CClockFixture>(); },
                            [](const auto& fixture) { fixture->btnClass->SetDispForm(MakeTimeForm(2, 12)); },
                            [](const auto& fixture) {
                                List names;
                                ASSERT_NO_THROW(names = fixture->GetNameOrder(ALL));
                                EXPECT_EQ(names.size(), 8 + fixture->btnClass->GetSystemMngrSpBtnCount());
                                fixture->btnClass->SetDispForm(MakeTimeForm(2, 12));
                                EXPECT_EQ(fixture->GetGroups(), Lists({{9}, {2, 3, 4, 5}, {6}, {7}, {8}}));
                            });
    EXPECT_GE(failures, 20);
}

} // namespace
