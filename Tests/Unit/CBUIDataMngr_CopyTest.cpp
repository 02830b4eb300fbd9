#include "CBasicBtnCnd.h"
#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CUnitCndOfBscBtnCnd.h"
#include "INumCnd.h"
#include "Support/CAllocFault.h"
#include "Support/CEnvQueries.h"
#include "Support/EnvPicture.h"
#include "Support/MakeTable.h"
#include "Support/TDateTimeFixture.h"

#include <gtest/gtest.h>

#include <memory>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using List = std::vector<DWORD>;
constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
constexpr auto MEM_SAV = SCBUICoreCom::LINKTBLVERTYPE_MEMSAV;
constexpr auto INC_TYPE = SCBUICoreCom::BTNTYPE_INC;
constexpr auto CLL_TYPE = SCBUICoreCom::BTNTYPE_CLL;
constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;

// Both the class and the field.
constexpr DWORD SHOP = 1;
constexpr DWORD KIND = 2;
constexpr DWORD AMOUNT = 3;
constexpr DWORD DAY = 4;
constexpr DWORD A = 2; // shops
constexpr DWORD B = 3;
constexpr DWORD C = 4;
constexpr DWORD Y = 3; // a kind

CSourceDataMngr MakeSales()
{
    return MakeTable(
        {{"shop", TEXT, {"A", "B", "A", "", "C", "B"}},
         {"kind", TEXT, {"x", "y", "y", "x", "x", "z"}},
         {"amount", NUM, {"10", "20", "30", "40", "50", ""}},
         {"day", DATE, {"2026-01-05", "2026-02-01", "2026-01-05", "", "2025-12-31", "2026-01-06"}}});
}

class CCountedNumCnd final : public INumCnd
{
public:
    explicit CCountedNumCnd(int& liveCount) : live(liveCount) { ++live; }
    ~CCountedNumCnd() override { --live; }
    bool IsEqualTo(const INumCnd& other) const override { return &other == this; }
    bool IsMetBy(double) const override { return true; }
    INumCnd* CreateClone() const override { return new CCountedNumCnd(live); }
    void Destroy() override { delete this; }

private:
    int& live;
};

// An environment with all that can be copied.
class CBUIDataMngr_CopyTest : public testing::Test
{
protected:
    CBUIDataMngr_CopyTest()
        : table(MakeSales()), sums(table),
          source(std::make_unique<CBUIDataMngr>(7, ON_MEM, ON_MEM, table, &sums, nullptr))
    {
        CBUIDataMngr& env = *source;
        group = Create(env, SHOP, INC_TYPE, {A, C});
        off = Create(env, SHOP, CLL_TYPE, {A, B});
        env.SetEffectiveInfoOfSpBtn(SHOP, off, false);
        CUnitCndOfBscBtnCnd unit;
        unit.SetNumID(AMOUNT);
        unit.SetSumMethod(SCBUICoreCom::ESumMethodForCnd::Sum);
        unit.SetSelCondition(CUnitCndOfBscBtnCnd::ESelCondition::Rank_High);
        unit.SetRankNum(1);
        CBasicBtnCnd cnd;
        cnd.SetCndComponent(unit);
        env.CreateSpBtn(top, KIND, CLL_TYPE, "top", VCSpBtn::MMBBTNSELMTH_CONDITION, nullptr, &cnd);
        env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(5, 0, 0, "{m}"));
        env.CreateVirBtnClass("common", true, commonItem);
        env.CreateVirBtnClass("fixed", false, fixedItem);
        overShop = CreateVirInc(env, commonItem, SHOP, {A, group});
        overCommon = CreateVirInc(env, fixedItem, commonItem, {overShop});
        env.SetAliasOfBtn(KIND, Y, "why");
        env.SetMultiSelectionInfo(true);
        const List limited{0, 1, 2, 4, 5};
        env.SetLimitedRecList(limited.data(), 5);
        env.AdjstAccordingToDeleteRec(6, 1); // nothing, but the history has it
        env.SelectTheBtnClass(AMOUNT, true);
        env.SelectTheBtn(SHOP, B, true); // A is folded into the group
        env.SelectTheBtn(KIND, Y, true);
    }

    static DWORD Create(CBUIDataMngr& env, DWORD btnClassID, SCBUICoreCom::EBtnType type, const List& members)
    {
        DWORD btnID = 0;
        EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, type, "special", SELECT, &members, nullptr),
                  VCBtnClass::CREATESPBTN_OK);
        return btnID;
    }
    static DWORD CreateVirInc(CBUIDataMngr& env, DWORD btnClassID, DWORD refBtnClassID, const List& members)
    {
        DWORD btnID = 0;
        EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, SCBUICoreCom::BTNTYPE_VIRINC, "over", SELECT, &members,
                                  nullptr, refBtnClassID),
                  VCBtnClass::CREATESPBTN_OK);
        return btnID;
    }
    // An environment of another table and nothing else.
    static std::unique_ptr<CBUIDataMngr> MakeEmpty(const CSourceDataMngr& ofTable, const CCoreSumMngr& ofSums)
    {
        return std::make_unique<CBUIDataMngr>(8, ON_MEM, ON_MEM, ofTable, &ofSums);
    }
    static std::string Picture(const CBUIDataMngr& env) { return CEnvPicture::ByIDs(env); }
    static List Selected(const CBUIDataMngr& env, DWORD btnClassID)
    {
        List btnIDs;
        env.GetSelBtnIDListOfBtnClass(btnClassID, btnIDs);
        return btnIDs;
    }

    CSourceDataMngr table;
    CCoreSumMngr sums;
    std::unique_ptr<CBUIDataMngr> source;
    DWORD group = 0;
    DWORD off = 0;
    DWORD top = 0;
    DWORD commonItem = 0;
    DWORD fixedItem = 0;
    DWORD overShop = 0;
    DWORD overCommon = 0;
};

TEST_F(CBUIDataMngr_CopyTest, ACopyWithItsTablesAnswersAllThatTheSourceDoesAndOutlivesIt)
{
    const std::string expected = Picture(*source);
    const CSourceDataMngr ownTable(table);
    const CCoreSumMngr ownSums(ownTable);
    const std::unique_ptr<CBUIDataMngr> copy = MakeEmpty(ownTable, ownSums);
    ASSERT_TRUE(copy->Copy(*source, &ownTable, &ownSums));
    ASSERT_TRUE(copy->CopyLinkTables(*source));
    source.reset();
    EXPECT_EQ(copy->GetID(), 8u); // its own
    EXPECT_EQ(copy->GetCoreSumMngrPtr(), &ownSums);
    EXPECT_EQ(Picture(*copy), expected);
    List classIDs;
    copy->GetAllBtnClassSelectionInfo(classIDs);
    EXPECT_EQ(classIDs, List{AMOUNT});
    EXPECT_EQ(copy->GetUndoOpeCountOfTheSrcData(), 1u);
    double sum = 0.0;
    EXPECT_TRUE(copy->GetSumValueCacheMngrObjRef().GetSumValue(KIND, Y, AMOUNT, sum));
    EXPECT_EQ(sum, 20.0);
    // It goes on like any other.
    EXPECT_TRUE(copy->SelectTheBtn(KIND, Y, false));
    EXPECT_TRUE(copy->SelectTheBtn(SHOP, B, false));
    EXPECT_TRUE(copy->AdjstAccordingToUndoOpeOfTheSrcData());
    DWORD made = 0;
    EXPECT_EQ(copy->CreateVirBtnClass("fixed", false, made), CBUIDataMngr::CREATEVIR_NAME_EXISTS);
    EXPECT_EQ(copy->CreateVirBtnClass("another", false, made), CBUIDataMngr::CREATEVIR_OK);
    EXPECT_EQ(made, fixedItem + 1);
}

TEST_F(CBUIDataMngr_CopyTest, WhatIsDoneToOneOfThemDoesNotReachTheOther)
{
    const std::unique_ptr<CBUIDataMngr> copy = MakeEmpty(table, sums);
    ASSERT_TRUE(copy->Copy(*source, &table, &sums));
    ASSERT_TRUE(copy->CopyLinkTables(*source));
    const std::string expected = Picture(*copy);
    source->DestroyVirBtnClass(fixedItem);
    source->DestroySpBtn(SHOP, group);
    source->ClearLimitedRecList();
    source->SetAliasOfBtn(SHOP, A, "changed");
    source->SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 6));
    source->AdjstAccordingToDeleteRec(0, 3);
    source->ClearOfFixedSpec();
    EXPECT_EQ(Picture(*copy), expected);

    const std::string ofSource = Picture(*source);
    copy->DestroyVirBtnClass(commonItem);
    copy->SetEffectiveInfoOfSpBtn(SHOP, group, false);
    copy->AdjstAccordingToDeleteRec(2, 3);
    EXPECT_EQ(Picture(*source), ofSource);
}

TEST_F(CBUIDataMngr_CopyTest, VirtualItemsAreTiedToTheItemsOfTheCopyInBothDirections)
{
    const std::unique_ptr<CBUIDataMngr> copy = MakeEmpty(table, sums);
    ASSERT_TRUE(copy->Copy(*source, &table, &sums));
    ASSERT_TRUE(copy->CopyLinkTables(*source));
    source.reset();
    std::set<SBtnClassIDAndBtnID> above;
    ASSERT_TRUE(copy->GetSpBtnIDListThatTheSpecifiedBtnInfluences(SHOP, C, above, false));
    EXPECT_EQ(above, (std::set<SBtnClassIDAndBtnID>{
                         {SHOP, group}, {commonItem, overShop}, {fixedItem, overCommon}}));
    ASSERT_TRUE(copy->DestroyVirBtnClass(commonItem));
    DWORD refBtnClassID = 4711;
    ASSERT_TRUE(copy->GetRefBtnClassIDOfVirIncBtn(fixedItem, overCommon, refBtnClassID));
    EXPECT_EQ(refBtnClassID, 0u);
    // A copy of that, too, has a button whose item is gone.
    const std::unique_ptr<CBUIDataMngr> second = MakeEmpty(table, sums);
    ASSERT_TRUE(second->Copy(*copy, &table, &sums));
    ASSERT_TRUE(second->CopyLinkTables(*copy));
    EXPECT_EQ(Picture(*second), Picture(*copy));
    EXPECT_FALSE(second->SetEffectiveInfoOfSpBtn(fixedItem, overCommon, true));
}

TEST_F(CBUIDataMngr_CopyTest, AButtonThatIsOffStandsInNoOrderOfNames)
{
    const std::unique_ptr<CBUIDataMngr> copy = MakeEmpty(table, sums);
    ASSERT_TRUE(copy->Copy(*source, &table, &sums));
    List expected;
    List order;
    constexpr unsigned int ALL = VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS;
    source->GetBtnNameOrdListOfBtnClass(SHOP, ALL, expected);
    copy->GetBtnNameOrdListOfBtnClass(SHOP, ALL, order);
    EXPECT_EQ(order, expected);
    EXPECT_EQ(std::find(order.begin(), order.end(), off), order.end());
    ASSERT_TRUE(copy->CopyLinkTables(*source));
    ASSERT_TRUE(copy->SetEffectiveInfoOfSpBtn(SHOP, off, true));
    copy->GetBtnNameOrdListOfBtnClass(SHOP, ALL, order);
    EXPECT_NE(std::find(order.begin(), order.end(), off), order.end());
}

TEST_F(CBUIDataMngr_CopyTest, ACopyOfItselfChangesNothing)
{
    const std::string expected = Picture(*source);
    EXPECT_TRUE(source->Copy(*source, nullptr, nullptr));
    EXPECT_TRUE(source->CopyLinkTables(*source));
    EXPECT_EQ(source->GetCoreSumMngrPtr(), &sums);
    EXPECT_EQ(Picture(*source), expected);
}

TEST_F(CBUIDataMngr_CopyTest, WithoutASourceTableThereIsNoCopy)
{
    CBUIDataMngr target(8, ON_MEM, ON_MEM, table, &sums, nullptr);
    const std::string expected = Picture(target);
    EXPECT_FALSE(target.Copy(*source, nullptr, &sums));
    EXPECT_EQ(Picture(target), expected);
}

TEST_F(CBUIDataMngr_CopyTest, ConditionsAreClonedAndTheFormerOneIsReleased)
{
    int live = 0;
    {
        const CCountedNumCnd cnd(live);
        CBUIDataMngr target(8, ON_MEM, ON_MEM, table, &sums, nullptr);
        target.SetNumCnd(cnd);
        EXPECT_EQ(live, 2);
        ASSERT_TRUE(target.Copy(*source, &table, nullptr)); // which has none
        EXPECT_EQ(live, 1);
        const INumCnd* held = nullptr;
        EXPECT_FALSE(target.GetNumCnd(held));
        source->SetNumCnd(cnd);
        ASSERT_TRUE(target.Copy(*source, &table, nullptr));
        EXPECT_EQ(live, 3);
        const INumCnd* ofSource = nullptr;
        ASSERT_TRUE(source->GetNumCnd(ofSource));
        ASSERT_TRUE(target.GetNumCnd(held));
        EXPECT_NE(held, ofSource);
        source.reset();
        EXPECT_EQ(live, 2);
    }
    EXPECT_EQ(live, 0);
}

TEST_F(CBUIDataMngr_CopyTest, TablesOfTheSameVersionStayAsTheyWere)
{
    CBUIDataMngr target(8, ON_MEM, ON_MEM, table, &sums, nullptr);
    ASSERT_TRUE(target.Copy(*source, &table, &sums));
    EXPECT_EQ(Picture(target), Picture(*source)); // the former ones are those of the same records
    EXPECT_TRUE(target.SelectTheBtn(KIND, Y, true));
}

TEST_F(CBUIDataMngr_CopyTest, RecordsOfButtonsAreCarriedToATableOfAnotherVersion)
{
    for (const auto version : {ON_MEM, MEM_SAV}) {
        source->ChangeVersionTypeOfRpLink(version);
        const auto other = version == ON_MEM ? MEM_SAV : ON_MEM;
        CBUIDataMngr empty(8, ON_MEM, other, table, &sums);
        ASSERT_TRUE(empty.Copy(*source, &table, &sums));
        EXPECT_EQ(empty.GetVersionTypeOfRpLink(), other);
        List recs(6);
        DWORD count = 0;
        ASSERT_TRUE(empty.GetRecListThatRelatesToBtn(SHOP, group, recs.data(), count));
        recs.resize(count);
        EXPECT_EQ(recs, (List{0, 2, 4}));

        CBUIDataMngr ofSameVersion(9, ON_MEM, version, table, &sums);
        ASSERT_TRUE(ofSameVersion.Copy(*source, &table, &sums));
        recs.resize(6);
        EXPECT_FALSE(
            ofSameVersion.GetRecListThatRelatesToBtn(SHOP, A, recs.data(), count)); // empty as before
    }
}

TEST_F(CBUIDataMngr_CopyTest, TheContentOfBothTablesIsCarriedWhateverTheirVersions)
{
    const std::string expected = Picture(*source);
    for (const auto version : {ON_MEM, MEM_SAV}) {
        source->ChangeVersionTypeOfBnLink(version);
        source->ChangeVersionTypeOfRpLink(version);
        for (const auto ofCopy : {ON_MEM, MEM_SAV}) {
            CBUIDataMngr copy(8, ofCopy, ofCopy, table, &sums);
            ASSERT_TRUE(copy.Copy(*source, &table, &sums));
            ASSERT_TRUE(copy.CopyLinkTables(*source));
            EXPECT_EQ(copy.GetVersionTypeOfBnLink(), ofCopy);
            EXPECT_EQ(copy.GetVersionTypeOfRpLink(), ofCopy);
            EXPECT_EQ(Picture(copy), expected);
            EXPECT_EQ(Picture(*source), expected);
        }
    }
}

TEST_F(CBUIDataMngr_CopyTest, TablesThatDoNotFitTheCopyAreDropped)
{
    std::vector<std::string> many;
    for (int i = 0; i < 100; ++i)
        many.push_back(std::to_string(i));
    const CSourceDataMngr larger(MakeTable({{"shop", TEXT, many},
                                            {"kind", TEXT, many},
                                            {"amount", NUM, many},
                                            {"day", DATE, std::vector<std::string>(100, "")}}));
    const CCoreSumMngr largerSums(larger);
    CBUIDataMngr target(8, ON_MEM, ON_MEM, larger, &largerSums, nullptr);
    ASSERT_TRUE(target.Copy(*source, &table, &sums));
    EXPECT_EQ(target.GetRecCountOfSrcData(), 6u);
    List recs(6);
    DWORD count = 0;
    EXPECT_FALSE(target.GetRecListThatRelatesToBtn(SHOP, A, recs.data(), count));
    EXPECT_FALSE(target.SelectTheBtn(SHOP, B, true));
    ASSERT_TRUE(target.Copy(*source, &table, &sums));
    ASSERT_TRUE(target.CopyLinkTables(*source));
    EXPECT_EQ(Picture(target), Picture(*source));
}

TEST_F(CBUIDataMngr_CopyTest, WhatTablesHoldOfStrangersDoesNotKeepNewFieldsOut)
{
    CSourceDataMngr two(MakeTable({{"shop", TEXT, {"A", "B"}}, {"kind", TEXT, {"x", "y"}}}));
    const CSourceDataMngr five(MakeTable({{"1", TEXT, {"A", "B"}},
                                          {"2", TEXT, {"x", "y"}},
                                          {"3", TEXT, {"1", "2"}},
                                          {"4", TEXT, {"1", "2"}},
                                          {"5", TEXT, {"1", "2"}}}));
    const CBUIDataMngr ofTwo(1, ON_MEM, ON_MEM, two, nullptr, nullptr);
    CBUIDataMngr target(2, ON_MEM, ON_MEM, five, nullptr, nullptr);
    ASSERT_TRUE(target.Copy(ofTwo, &two, nullptr));
    CSourceDataMngr::SFldInfo info;
    CFldValueList values;
    values.Append("p");
    values.Append("q");
    DWORD fldID = 0;
    ASSERT_TRUE(two.AddFld(info, std::move(values), fldID));
    EXPECT_EQ(target.AdjstAccordingToInsertFld(&fldID, 1, nullptr), CBUIDataMngr::CREATESRC_OK);
    DWORD btnClassID = 0;
    ASSERT_TRUE(target.GetBtnClassID(fldID, btnClassID));
    List recs(2);
    DWORD count = 0;
    ASSERT_TRUE(target.GetRecListThatRelatesToBtn(btnClassID, 3, recs.data(), count));
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(recs[0], 1u);
}

TEST_F(CBUIDataMngr_CopyTest, RecordsThatComeToACopyWithoutItsTablesAreRefused)
{
    const std::unique_ptr<CBUIDataMngr> copy = MakeEmpty(table, sums);
    ASSERT_TRUE(copy->Copy(*source, &table, &sums));
    EXPECT_FALSE(copy->AdjstAccordingToInsertRec(0, 1));
    EXPECT_FALSE(copy->AdjstAccordingToDeleteRec(0, 1));
    EXPECT_EQ(copy->GetRecCountOfSrcData(), 6u);
    ASSERT_TRUE(copy->CopyLinkTables(*source));
    EXPECT_TRUE(copy->AdjstAccordingToDeleteRec(0, 1));
}

TEST_F(CBUIDataMngr_CopyTest, TablesOfOtherRecordsOrButtonsAreRefused)
{
    const CSourceDataMngr other(MakeTable({{"shop", TEXT, {"1", "2", "3", "4", "5", "6"}}}));
    const CSourceDataMngr longer(MakeTable({{"shop", TEXT, {"1", "2", "3", "4", "5", "6", "7"}}}));
    const CBUIDataMngr otherEnv(9, ON_MEM, ON_MEM, other, nullptr, nullptr);
    const CBUIDataMngr longerEnv(9, ON_MEM, ON_MEM, longer, nullptr, nullptr);
    const std::string expected = Picture(*source);
    EXPECT_FALSE(source->CopyLinkTables(otherEnv));
    EXPECT_FALSE(source->CopyLinkTables(longerEnv));
    EXPECT_EQ(Picture(*source), expected);
    EXPECT_TRUE(source->SelectTheBtn(KIND, Y, true));
}

TEST_F(CBUIDataMngr_CopyTest, ACopyWithoutMemoryLeavesTheTargetAsItWas)
{
    int live = 0;
    const CCountedNumCnd cnd(live);
    source->SetNumCnd(cnd);
    CBUIDataMngr target(8, ON_MEM, ON_MEM, table, &sums, nullptr);
    target.SelectTheBtn(SHOP, C, true);
    const std::string before = Picture(target);
    const std::string expected = Picture(*source);
    CAllocFault fault;
    std::size_t failures = fault.FailEachInTurn([&](auto&& attempt) {
        if (attempt([&] { target.Copy(*source, &table, &sums); }))
            EXPECT_EQ(Picture(target), expected);
        else
            EXPECT_EQ(Picture(target), before);
        EXPECT_EQ(Picture(*source), expected);
    });
    EXPECT_GT(failures, 50u);
    failures = fault.FailEachInTurn([&](auto&& attempt) {
        attempt([&] { target.CopyLinkTables(*source); });
        EXPECT_EQ(Picture(target), expected);
        EXPECT_EQ(Picture(*source), expected);
    });
    EXPECT_GT(failures, 10u);
}

} // namespace
