#include "CBUIDataMngr.h"

#include "CCoreSumMngr.h"
#include "ECAbnormalData.h"
#include "INumCnd.h"
#include "SCBUICoreStrDef.h"
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

// A host's condition that counts its objects.
class CTestNumCnd final : public INumCnd
{
public:
    explicit CTestNumCnd(int& liveObjects, double number = 0.0) : live(liveObjects), value(number) { ++live; }
    ~CTestNumCnd() override { --live; }
    bool IsEqualTo(const INumCnd& other) const override
    {
        return static_cast<const CTestNumCnd&>(other).value == value;
    }
    bool IsMetBy(double number) const override { return number >= value; }
    INumCnd* CreateClone() const override { return new CTestNumCnd(live, value); }
    void Destroy() override { delete this; }

private:
    int& live;
    double value;
};

// shop: a b a c (empty); kind: x x y y x; amount: 1 2 3 4 5
class CBUIDataMngrTest : public ::testing::Test
{
protected:
    static constexpr DWORD SHOP = 1;
    static constexpr DWORD KIND = 2;
    static constexpr DWORD AMOUNT = 3;

    CBUIDataMngrTest()
        : table(MakeTable({{"shop", TEXT, {"a", "b", "a", "c", ""}},
                           {"kind", TEXT, {"x", "x", "y", "y", "x"}},
                           {"amount", NUM, {"1", "2", "3", "4", "5"}}})),
          sums(table), env(5, ON_MEM, ON_MEM, table, &sums, nullptr)
    {}

    List GetTargetRecs() const
    {
        List recs(env.GetRecCountOfSrcData());
        DWORD count = 0;
        EXPECT_TRUE(env.GetTargetRecList(recs.data(), count));
        recs.resize(count);
        return recs;
    }
    List GetTargetRecsOf(DWORD btnClassID) const
    {
        List recs(env.GetRecCountOfSrcData());
        DWORD count = 0;
        EXPECT_TRUE(env.GetTargetRecListOfBtnClass(btnClassID, recs.data(), count));
        recs.resize(count);
        return recs;
    }
    List GetDisplayed(DWORD btnClassID) const
    {
        List btnIDs;
        EXPECT_TRUE(env.GetDispBtnIDListOfBtnClass(btnClassID, btnIDs));
        return btnIDs;
    }

    CSourceDataMngr table;
    CCoreSumMngr sums;
    CBUIDataMngr env;
};

TEST(CBUIDataMngr, AnEnvironmentMadeForReadingIsEmpty)
{
    const CSourceDataMngr table = MakeTable({{"shop", TEXT, {"a"}}});
    CBUIDataMngr env(7, ON_MEM, ON_MEM, table, nullptr);
    EXPECT_EQ(env.GetID(), 7u);
    EXPECT_EQ(env.GetRecCountOfSrcData(), 0u);
    EXPECT_EQ(env.GetRelationMode(), CBUIDataMngr::RELATIONMODE_NARROWING);
    EXPECT_FALSE(env.GetMultiSelectionInfo());
    EXPECT_TRUE(env.HasSrcDataInfo());
    EXPECT_EQ(env.GetCoreSumMngrPtr(), nullptr);
    EXPECT_FALSE(env.IsRecListLimitationExecuted());
    EXPECT_FALSE(env.IsBtnSelectiveState());
    List btnClassIDs{1};
    EXPECT_EQ(env.GetAllBtnClassIDList(btnClassIDs, true), 0u);
    EXPECT_TRUE(btnClassIDs.empty());
    DWORD count = 4711;
    EXPECT_TRUE(env.GetTargetRecList(nullptr, count));
    EXPECT_EQ(count, 0u);
    env.ClearOfFixedSpec();
    env.ClearAllBtnSelections(true);
}

TEST(CBUIDataMngr, AnUnknownVersionOfATableIsRefused)
{
    const CSourceDataMngr table = MakeTable({{"shop", TEXT, {"a"}}});
    const auto make = [&table](DWORD bnLinkVer, DWORD rpLinkVer) {
        CBUIDataMngr(1, static_cast<SCBUICoreCom::ELinkTableVerType>(bnLinkVer),
                     static_cast<SCBUICoreCom::ELinkTableVerType>(rpLinkVer), table, nullptr);
    };
    for (const DWORD unknown : {0u, 3u, 4294967295u}) {
        try {
            make(unknown, 1);
            FAIL();
        } catch (const ECAbnormalData& error) {
            EXPECT_STREQ(error.what(), SCBUICoreStrDef::MSG_UNKNOWN_LINKTBLVERTYPE);
            EXPECT_STREQ(error.GetFunction(), "NSKZ::NSKZCore::CBUIDataMngr::CreateBnLink");
            EXPECT_STREQ(error.GetFile(), "Src/CBUIDataMngr");
        }
        try {
            make(1, unknown);
            FAIL();
        } catch (const ECAbnormalData& error) {
            EXPECT_STREQ(error.GetFunction(), "NSKZ::NSKZCore::CBUIDataMngr::CreateRpLink");
        }
    }
}

TEST_F(CBUIDataMngrTest, AChangeOfVersionThatFailsLeavesTheTablesInForce)
{
    EXPECT_EQ(env.GetVersionTypeOfBnLink(), ON_MEM);
    EXPECT_EQ(env.GetVersionTypeOfRpLink(), ON_MEM);
    env.ChangeVersionTypeOfBnLink(ON_MEM);
    env.ChangeVersionTypeOfRpLink(ON_MEM);
    EXPECT_THROW(env.ChangeVersionTypeOfBnLink(static_cast<SCBUICoreCom::ELinkTableVerType>(0)),
                 ECAbnormalData);
    EXPECT_THROW(env.ChangeVersionTypeOfRpLink(static_cast<SCBUICoreCom::ELinkTableVerType>(9)),
                 ECAbnormalData);
    EXPECT_EQ(env.GetVersionTypeOfBnLink(), ON_MEM);
    EXPECT_EQ(env.GetVersionTypeOfRpLink(), ON_MEM);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, 2, true));
    EXPECT_EQ(GetTargetRecs(), List({0, 2}));
    EXPECT_EQ(GetDisplayed(KIND), List({2, 3}));
}

TEST_F(CBUIDataMngrTest, AChangeOfVersionKeepsTheSelectionAndWhatComesOfIt)
{
    constexpr auto MEM_SAV = SCBUICoreCom::LINKTBLVERTYPE_MEMSAV;
    EXPECT_TRUE(env.SelectTheBtn(SHOP, 2, true));
    for (const auto version : {MEM_SAV, ON_MEM, MEM_SAV}) {
        env.ChangeVersionTypeOfBnLink(version);
        env.ChangeVersionTypeOfRpLink(version);
        EXPECT_EQ(env.GetVersionTypeOfBnLink(), version);
        EXPECT_EQ(env.GetVersionTypeOfRpLink(), version);
        EXPECT_EQ(GetTargetRecs(), List({0, 2}));
        EXPECT_EQ(GetDisplayed(KIND), List({2, 3}));
        EXPECT_TRUE(env.SelectTheBtn(SHOP, 2, false));
        EXPECT_TRUE(env.SelectTheBtn(KIND, 3, true));
        EXPECT_EQ(GetTargetRecs(), List({2, 3}));
        EXPECT_TRUE(env.SelectTheBtn(KIND, 3, false));
        EXPECT_TRUE(env.SelectTheBtn(SHOP, 2, true));
    }
}

TEST_F(CBUIDataMngrTest, AChangeOfVersionThatRunsOutOfMemoryLeavesTheTablesInForce)
{
    constexpr auto MEM_SAV = SCBUICoreCom::LINKTBLVERTYPE_MEMSAV;
    EXPECT_TRUE(env.SelectTheBtn(SHOP, 2, true));
    CAllocFault memory;
    for (const auto version : {MEM_SAV, ON_MEM}) {
        const auto changes = {&CBUIDataMngr::ChangeVersionTypeOfBnLink,
                              &CBUIDataMngr::ChangeVersionTypeOfRpLink};
        for (const auto change : changes) {
            const auto versions = [this] {
                return std::pair(env.GetVersionTypeOfBnLink(), env.GetVersionTypeOfRpLink());
            };
            const std::size_t failures = memory.FailEachInTurn([&](auto attempt) {
                const auto before = versions();
                if (!attempt([&] { (env.*change)(version); })) {
                    EXPECT_EQ(versions(), before);
                }
                EXPECT_EQ(GetTargetRecs(), List({0, 2}));
                EXPECT_TRUE(env.SelectTheBtn(SHOP, 2, false));
                EXPECT_TRUE(env.SelectTheBtn(KIND, 3, true));
                EXPECT_EQ(GetTargetRecs(), List({2, 3}));
                EXPECT_EQ(GetDisplayed(SHOP), List({2, 4}));
                EXPECT_TRUE(env.SelectTheBtn(KIND, 3, false));
                EXPECT_TRUE(env.SelectTheBtn(SHOP, 2, true));
            });
            EXPECT_GE(failures, 5u);
        }
    }
}

TEST_F(CBUIDataMngrTest, UnknownIdentifiersAreAnsweredByFalseWithOutputsUntouched)
{
    SCBUICoreCom::EBtnClassType classType = SCBUICoreCom::BTNCLSTYPE_VIR;
    SCBUICoreCom::EBtnType btnType = SCBUICoreCom::BTNTYPE_CLL;
    bool flag = true;
    DWORD number = 4711;
    unsigned int info = 4711;
    const char* text = "before";
    List list{4711};
    for (const DWORD classID : {0u, 4u, SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN}) {
        EXPECT_FALSE(env.ExistBtnClass(classID));
        EXPECT_FALSE(env.GetTypeOfBtnClass(classID, classType));
        EXPECT_FALSE(env.GetEffectiveInfoOfBtnClass(classID, flag));
        EXPECT_FALSE(env.GetSelectionInfoOfBtnClass(classID, flag));
        EXPECT_FALSE(env.GetBtnSelectiveStateOfBtnClass(classID, flag));
        EXPECT_FALSE(env.GetNewBtnMadeSelStateOfBtnClass(classID, flag));
        EXPECT_FALSE(env.SetNewBtnMadeSelStateOfBtnClass(classID, true));
        EXPECT_FALSE(env.GetDispEmpValBtnInfoOfBtnClass(classID, flag));
        EXPECT_FALSE(env.SetDispEmpValBtnInfoOfBtnClass(classID, false));
        EXPECT_FALSE(env.GetBtnCountOfBtnClass(classID, number));
        EXPECT_FALSE(env.GetSelBtnCountOfBtnClass(classID, number));
        EXPECT_FALSE(env.GetDispBtnCountOfBtnClass(classID, number));
        EXPECT_FALSE(env.GetBtnAppOrdListOfBtnClass(classID, 0, list));
        EXPECT_FALSE(env.GetBtnNameOrdListOfBtnClass(classID, 0, list));
        EXPECT_FALSE(env.GetBtnUnknownOrdListOfBtnClass(classID, 0, {2}, list));
        EXPECT_FALSE(env.GetSelBtnIDListOfBtnClass(classID, list));
        EXPECT_FALSE(env.GetDispSelBtnIDListOfBtnClass(classID, list));
        EXPECT_FALSE(env.GetDispBtnIDListOfBtnClass(classID, list));
        EXPECT_FALSE(env.GetAllBtnIDListOfBtnClass(classID, list, true));
        EXPECT_FALSE(env.GetBtnExistInfoOfBtnClass(classID, 2));
        EXPECT_FALSE(env.GetBtnExistInfoOfBtnClass(classID, "a", 1));
        EXPECT_FALSE(env.GetBtnExistInfoOfBtnClass(classID, "a", 1, 0));
        EXPECT_FALSE(env.GetFldID(classID, number));
        EXPECT_FALSE(env.SelectTheBtn(classID, 2, true));
        EXPECT_FALSE(env.SelectBtns(classID, {}, true, true));
        EXPECT_FALSE(env.SelectAllBtnsOfBtnClass(classID, true));
        EXPECT_FALSE(env.SelectTheBtnClass(classID, true));
        EXPECT_FALSE(env.GetBtnIDListThatRelatesToRecListFromBtnClass(classID, 0, nullptr, list));
        EXPECT_FALSE(env.GetBtnIDListThatRelatesToRecListFromBtnClass(classID, 0, nullptr, &number));
        EXPECT_FALSE(env.GetRecListThatRelatesToBtn(classID, 2, list.data(), number));
        EXPECT_FALSE(env.GetRecListThatRelatesToBtns(classID, {2}, list.data(), number));
        EXPECT_FALSE(env.GetHierDepthOfBtnClass(classID, info));
    }
    for (const DWORD classID : {SHOP, DWORD{99}}) {
        EXPECT_FALSE(env.GetTypeOfBtn(classID, 99, btnType));
        EXPECT_FALSE(env.GetSelectionInfoOfBtn(classID, 99, flag));
        EXPECT_FALSE(env.GetNameOfBtn(classID, 99, text));
        EXPECT_FALSE(env.GetAliasOfBtn(classID, 99, text));
        EXPECT_FALSE(env.SetAliasOfBtn(classID, 99, "x"));
        EXPECT_FALSE(env.GetVisibleInfoOfBtn(classID, 99, info));
        EXPECT_FALSE(env.GetVisibleStateOfBtn(classID, 99, flag));
        EXPECT_FALSE(env.GetEffectiveInfoOfBtn(classID, 99, flag));
        EXPECT_FALSE(env.GetBtnExistInfoOfBtnClass(classID, 99));
    }
    EXPECT_FALSE(env.GetBtnClassID(99, number));
    EXPECT_FALSE(env.GetHierInfo(0, number, number));
    EXPECT_FALSE(env.GetSelBtnsInfoForDiffCnd(number, number, number)); // another mode
    EXPECT_EQ(classType, SCBUICoreCom::BTNCLSTYPE_VIR);
    EXPECT_EQ(btnType, SCBUICoreCom::BTNTYPE_CLL);
    EXPECT_TRUE(flag);
    EXPECT_EQ(number, 4711u);
    EXPECT_EQ(info, 4711u);
    EXPECT_STREQ(text, "before");
    EXPECT_EQ(list, List({4711}));
}

TEST_F(CBUIDataMngrTest, QueriesReachTheClassAndTheButton)
{
    SCBUICoreCom::EBtnClassType classType{};
    EXPECT_TRUE(env.GetTypeOfBtnClass(AMOUNT, classType));
    EXPECT_EQ(classType, SCBUICoreCom::BTNCLSTYPE_NUM);
    DWORD number = 0;
    EXPECT_TRUE(env.GetBtnCountOfBtnClass(SHOP, number));
    EXPECT_EQ(number, 4u);
    EXPECT_TRUE(env.GetDispBtnCountOfBtnClass(SHOP, number));
    EXPECT_EQ(number, 4u);
    bool flag = false;
    EXPECT_TRUE(env.GetEffectiveInfoOfBtnClass(SHOP, flag));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(env.GetDispEmpValBtnInfoOfBtnClass(SHOP, flag));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(env.GetEffectiveInfoOfBtn(SHOP, 2, flag));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(env.GetVisibleStateOfBtn(KIND, 1, flag));
    EXPECT_FALSE(flag); // no record without a kind
    const char* text = nullptr;
    EXPECT_TRUE(env.SetAliasOfBtn(SHOP, 2, "first"));
    EXPECT_TRUE(env.GetAliasOfBtn(SHOP, 2, text));
    EXPECT_STREQ(text, "first");
    EXPECT_TRUE(env.GetNameOfBtn(SHOP, 2, text));
    EXPECT_STREQ(text, "a");
    EXPECT_TRUE(env.GetBtnExistInfoOfBtnClass(SHOP, "first", 5));
    EXPECT_FALSE(env.GetBtnExistInfoOfBtnClass(SHOP, "first", 5, 2));
    EXPECT_TRUE(env.SetNewBtnMadeSelStateOfBtnClass(SHOP, true));
    EXPECT_TRUE(env.GetNewBtnMadeSelStateOfBtnClass(SHOP, flag));
    EXPECT_TRUE(flag);
    List btnIDs;
    EXPECT_TRUE(env.GetBtnNameOrdListOfBtnClass(SHOP, 0, btnIDs));
    EXPECT_EQ(btnIDs.size(), 4u);
    EXPECT_TRUE(env.GetBtnUnknownOrdListOfBtnClass(SHOP, 0, {3, 2}, btnIDs));
    EXPECT_EQ(btnIDs, List({3, 2}));
}

TEST_F(CBUIDataMngrTest, ClassesAreFoundByIdentifierFieldAndName)
{
    List btnClassIDs;
    EXPECT_EQ(env.GetAllBtnClassIDList(btnClassIDs, false), 3u);
    EXPECT_EQ(btnClassIDs, List({1, 2, 3}));
    EXPECT_TRUE(env.ExistBtnClass(SHOP));
    EXPECT_TRUE(env.ExistBtnClass("kind", 4));
    EXPECT_FALSE(env.ExistBtnClass("kind", 3));
    EXPECT_FALSE(env.ExistBtnClass("kind", 4, KIND));
    EXPECT_TRUE(env.ExistBtnClass("kind", 4, SHOP));
    DWORD id = 0;
    EXPECT_TRUE(env.GetFldID(KIND, id));
    EXPECT_EQ(id, 2u);
    EXPECT_TRUE(env.GetBtnClassID(3, id));
    EXPECT_EQ(id, AMOUNT);
    std::map<DWORD, DWORD> conversion;
    env.GetBtnClassIDCnvObj(conversion);
    EXPECT_EQ(conversion, (std::map<DWORD, DWORD>{{1, 1}, {2, 2}, {3, 3}}));
}

TEST_F(CBUIDataMngrTest, TheEmptyValueIsHiddenAndShownByTheHost)
{
    EXPECT_TRUE(env.SetDispEmpValBtnInfoOfBtnClass(SHOP, false));
    bool flag = true;
    EXPECT_TRUE(env.GetDispEmpValBtnInfoOfBtnClass(SHOP, flag));
    EXPECT_FALSE(flag);
    EXPECT_EQ(GetDisplayed(SHOP), List({2, 3, 4}));
    EXPECT_TRUE(env.SelectTheBtn(KIND, 2, true)); // the relation reaches it, and it stays hidden
    EXPECT_EQ(GetDisplayed(SHOP), List({2, 3}));
    EXPECT_TRUE(env.SetDispEmpValBtnInfoOfBtnClass(SHOP, true)); // clears the selection
    EXPECT_EQ(GetDisplayed(SHOP), List({1, 2, 3, 4}));
    EXPECT_FALSE(env.IsBtnSelectiveState());
    env.SetDispEmpValBtnInfoOfBtnClass(SHOP, false);
    env.ClearOfFixedSpec();
    EXPECT_EQ(GetDisplayed(SHOP), List({1, 2, 3, 4}));
}

TEST(CBUIDataMngr, AnEmptyNameIsComparedLikeAnyOther)
{
    const CSourceDataMngr table = MakeTable({{"", TEXT, {"a"}}, {"shop", TEXT, {"a"}}});
    const CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, nullptr);
    EXPECT_TRUE(env.ExistBtnClass(nullptr, 0));
    EXPECT_FALSE(env.ExistBtnClass(nullptr, 0, 1));
}

TEST_F(CBUIDataMngrTest, RecordsLeadToButtonsAndBack)
{
    const DWORD recs[] = {3, 0, 2, 3};
    DWORD btnIDs[] = {9, 9, 9, 9};
    EXPECT_TRUE(env.GetBtnIDListThatRelatesToRecListFromBtnClass(SHOP, 4, recs, btnIDs));
    EXPECT_EQ(List(btnIDs, btnIDs + 4), List({4, 2, 0, 0}));
    List found;
    EXPECT_TRUE(env.GetBtnIDListThatRelatesToRecListFromBtnClass(SHOP, 4, recs, found));
    EXPECT_EQ(found, List({4, 2}));

    DWORD recList[5];
    DWORD count = 0;
    EXPECT_TRUE(env.GetRecListThatRelatesToBtn(SHOP, 2, recList, count));
    EXPECT_EQ(List(recList, recList + count), List({0, 2}));
    EXPECT_TRUE(env.GetRecListThatRelatesToBtn(SHOP, 88, recList, count));
    EXPECT_EQ(count, 0u);
    EXPECT_FALSE(env.GetRecListThatRelatesToBtn(SHOP, SCBUICoreCom::BTN_ID_CLL_BEGIN, recList, count));
    DWORD first[5];
    DWORD second[5];
    DWORD* areas[] = {first, second};
    EXPECT_TRUE(env.GetRecListThatRelatesToBtn(SHOP, 1, recList, count, areas));
    EXPECT_EQ(List(recList, recList + count), List({4}));
    EXPECT_EQ(areas[0], first); // the caller's pointers stay
    EXPECT_TRUE(env.GetRecListThatRelatesToBtns(SHOP, {4, 1, 2, 2, 4}, recList, count));
    EXPECT_EQ(List(recList, recList + count), List({0, 2, 3, 4}));
}

// --- Limitation

TEST_F(CBUIDataMngrTest, ALimitationIsWhatEverythingStandsOn)
{
    const DWORD recs[] = {1, 3, 4, 5, 4294967295};
    env.SelectTheBtn(SHOP, 2, true);
    env.SetLimitedRecList(recs, 5); // the last two are no records
    EXPECT_TRUE(env.IsRecListLimitationExecuted());
    EXPECT_FALSE(env.IsBtnSelectiveState()); // all selections are gone
    EXPECT_EQ(GetTargetRecs(), List({1, 3, 4}));
    EXPECT_EQ(GetDisplayed(SHOP), List({1, 3, 4}));
    EXPECT_EQ(GetDisplayed(KIND), List({2, 3}));
    EXPECT_TRUE(env.SelectTheBtn(KIND, 2, true));
    EXPECT_EQ(GetTargetRecs(), List({1, 4}));
    EXPECT_EQ(GetDisplayed(SHOP), List({1, 3}));
    unsigned int info = 0;
    EXPECT_TRUE(env.GetVisibleInfoOfBtn(SHOP, 2, info));
    EXPECT_EQ(info, VISINFO_RELATION | VISINFO_LIMITEDREC);
    double sum = 0.0;
    EXPECT_TRUE(env.GetSumValueCacheMngrObjRef().GetSumValue(KIND, 2, 3, sum));
    EXPECT_EQ(sum, 7.0);

    env.SetLimitedRecList(recs, 0); // as good as clearing it
    EXPECT_FALSE(env.IsRecListLimitationExecuted());
    EXPECT_EQ(GetTargetRecs(), List({0, 1, 2, 3, 4}));
    EXPECT_EQ(GetDisplayed(SHOP), List({1, 2, 3, 4}));
    EXPECT_TRUE(env.GetSumValueCacheMngrObjRef().GetSumValue(KIND, 2, 3, sum));
    EXPECT_EQ(sum, 8.0);
}

TEST_F(CBUIDataMngrTest, ALimitationToNoRecordHidesAll)
{
    const DWORD recs[] = {77};
    env.SetLimitedRecList(recs, 1);
    EXPECT_TRUE(env.IsRecListLimitationExecuted());
    EXPECT_TRUE(GetTargetRecs().empty());
    EXPECT_TRUE(GetDisplayed(SHOP).empty());
    env.ClearLimitedRecList();
    EXPECT_EQ(GetDisplayed(SHOP), List({1, 2, 3, 4}));
}

TEST_F(CBUIDataMngrTest, ALimitationThatIsNotAscendingNeverHoldsMoreThanThereIs)
{
    const DWORD recs[] = {1, 1, 1, 3, 3, 2, 4, 4, 0, 4};
    env.SetLimitedRecList(recs, 10);
    EXPECT_EQ(GetTargetRecs(), List({1, 3, 4}));
}

TEST_F(CBUIDataMngrTest, ANumericConditionIsKeptAsAClone)
{
    int live = 0;
    {
        const CTestNumCnd first(live, 1.0);
        const CTestNumCnd second(live, 2.0);
        const INumCnd* held = &first;
        EXPECT_FALSE(env.GetNumCnd(held));
        EXPECT_EQ(held, nullptr);
        env.SetNumCnd(first);
        EXPECT_EQ(live, 3);
        EXPECT_TRUE(env.GetNumCnd(held));
        EXPECT_NE(held, &first);
        EXPECT_TRUE(held->IsEqualTo(first));
        env.SetNumCnd(second);
        EXPECT_EQ(live, 3); // the first clone is released
        EXPECT_TRUE(env.GetNumCnd(held));
        EXPECT_TRUE(held->IsEqualTo(second));
        env.SetNumCnd(*held); // the held one itself
        EXPECT_EQ(live, 3);
        env.ClearNumCnd();
        env.ClearNumCnd();
        EXPECT_EQ(live, 2);
        env.SetNumCnd(first);
    }
    env.ClearOfFixedSpec();
    EXPECT_EQ(live, 0);
}

TEST_F(CBUIDataMngrTest, ANumericConditionDropsTheSums)
{
    double sum = 0.0;
    env.GetSumValueCacheMngrObjRef().GetSumValue(SHOP, 2, 3, sum);
    env.SetCoreSumMngrPtr(nullptr);
    EXPECT_TRUE(env.GetSumValueCacheMngrObjRef().GetSumValue(SHOP, 2, 3, sum));
    int live = 0;
    env.SetNumCnd(CTestNumCnd(live));
    EXPECT_FALSE(env.GetSumValueCacheMngrObjRef().GetSumValue(SHOP, 2, 3, sum));
    env.ClearNumCnd(); // it counts in a variable of this test
}

TEST_F(CBUIDataMngrTest, ClearOfFixedSpecKeepsWhatFollowsFromTheSource)
{
    const DWORD recs[] = {0, 1};
    env.SetLimitedRecList(recs, 2);
    env.SetMultiSelectionInfo(true);
    env.SetRelationMode(CBUIDataMngr::RELATIONMODE_OR);
    env.SetAliasOfBtn(SHOP, 2, "first");
    env.SelectTheBtnClass(KIND, true);
    env.SelectTheBtn(SHOP, 2, true);
    env.ClearOfFixedSpec();
    EXPECT_FALSE(env.IsRecListLimitationExecuted());
    EXPECT_FALSE(env.IsBtnSelectiveState());
    EXPECT_EQ(env.GetHierCount(), 0u);
    EXPECT_EQ(GetDisplayed(SHOP), List({1, 2, 3, 4}));
    EXPECT_EQ(GetTargetRecs(), List({0, 1, 2, 3, 4}));
    List selected;
    env.GetAllBtnClassSelectionInfo(selected);
    EXPECT_TRUE(selected.empty());
    EXPECT_TRUE(env.GetMultiSelectionInfo());
    EXPECT_EQ(env.GetRelationMode(), CBUIDataMngr::RELATIONMODE_OR);
    const char* text = nullptr;
    env.GetAliasOfBtn(SHOP, 2, text);
    EXPECT_STREQ(text, "first");
    EXPECT_TRUE(env.SelectTheBtn(SHOP, 2, true));
    EXPECT_EQ(GetTargetRecs(), List({0, 2}));
}

// --- Target records

TEST_F(CBUIDataMngrTest, TargetRecordsFollowTheModeAndTheLevels)
{
    env.SelectTheBtn(SHOP, 2, true); // 0 2
    env.SelectTheBtn(KIND, 3, true); // 2 3 of them: 2
    EXPECT_EQ(GetTargetRecs(), List({2}));
    EXPECT_EQ(GetTargetRecsOf(SHOP), List({0, 1, 2, 3, 4})); // nothing before its level
    EXPECT_EQ(GetTargetRecsOf(KIND), List({0, 2}));          // the level before its own
    EXPECT_EQ(GetTargetRecsOf(AMOUNT), List({2}));           // no level of its own: the last
    EXPECT_EQ(GetTargetRecsOf(99), List({2}));
    for (const auto mode : {CBUIDataMngr::RELATIONMODE_AND, CBUIDataMngr::RELATIONMODE_NONE,
                            CBUIDataMngr::RELATIONMODE_DIFFERENCE}) {
        env.SetRelationMode(mode);
        env.SelectTheBtn(SHOP, 2, true);
        EXPECT_TRUE(env.IsBtnSelectiveState());
        EXPECT_EQ(GetTargetRecs(), List({0, 1, 2, 3, 4}));
        EXPECT_EQ(GetTargetRecsOf(KIND), List({0, 1, 2, 3, 4}));
    }
    const DWORD recs[] = {1, 2};
    env.SetLimitedRecList(recs, 2);
    env.SetRelationMode(CBUIDataMngr::RELATIONMODE_AND);
    env.SelectTheBtn(SHOP, 2, true);
    EXPECT_EQ(GetTargetRecs(), List({1, 2}));
}

TEST_F(CBUIDataMngrTest, AnImpossibleModeIsAbnormal)
{
    const auto expectUnknownMode = [](const char* function, const auto& operation) {
        try {
            operation();
            FAIL() << function;
        } catch (const ECAbnormalData& error) {
            EXPECT_STREQ(error.what(), SCBUICoreStrDef::MSG_UNKNOWN_RELATIONMODE);
            EXPECT_EQ(error.GetFunction(), std::string("NSKZ::NSKZCore::CBUIDataMngr::") + function);
        }
    };
    env.SetRelationMode(static_cast<CBUIDataMngr::ERelationMode>(6));
    DWORD recs[5];
    DWORD count = 0;
    expectUnknownMode("GetTargetRecList", [&] { env.GetTargetRecList(recs, count); });
    expectUnknownMode("GetTargetRecListOfBtnClass",
                      [&] { env.GetTargetRecListOfBtnClass(SHOP, recs, count); });
    expectUnknownMode("SelectBtns", [&] { env.SelectTheBtn(SHOP, 2, true); });
    std::vector<SSelectBtnIDList> selection(1);
    expectUnknownMode("GetAllBtnSelectionInfo", [&] { env.GetAllBtnSelectionInfo(selection); });
    EXPECT_EQ(selection.size(), 1u);
    expectUnknownMode("AdjstSumValueCacheToClearAllBtnSelections", [&] { env.ClearAllBtnSelections(true); });
}

} // namespace
