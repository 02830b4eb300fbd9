#include "CBasicBtnCnd.h"
#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CProgressStatus.h"
#include "CUnitCndOfBscBtnCnd.h"
#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "SCKZCoreStrDef.h"
#include "Support/CAllocFault.h"
#include "Support/CEnvQueries.h"
#include "Support/CSavedEnv.h"
#include "Support/EnvPicture.h"
#include "Support/MakeTable.h"
#include "Support/TDateTimeFixture.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <numeric>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using List = std::vector<DWORD>;
using Texts = std::vector<std::string>;
constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
constexpr auto INC_TYPE = SCBUICoreCom::BTNTYPE_INC;
constexpr auto CLL_TYPE = SCBUICoreCom::BTNTYPE_CLL;
constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;
constexpr auto CONDITION = VCSpBtn::MMBBTNSELMTH_CONDITION;

// Both the class and the field.
constexpr DWORD SHOP = 1;
constexpr DWORD KIND = 2;
constexpr DWORD AMOUNT = 3;
constexpr DWORD DAY = 4;
constexpr DWORD EMPTY = 1;
constexpr DWORD A = 2; // shops
constexpr DWORD B = 3;
constexpr DWORD C = 4;
constexpr DWORD X = 2; // kinds
constexpr DWORD Y = 3;

// A source table that can refuse to give values, or tell that they are too many.
class CStubbornTable final : public CSourceDataMngr
{
public:
    explicit CStubbornTable(const CSourceDataMngr& content) : CSourceDataMngr(content) {}

    bool GetDataSize(DWORD fldID, DWORD firstRec, DWORD recCount, DWORD& size32,
                     unsigned long long& size) const override
    {
        if (fldID == refusedFldID)
            return false;
        const bool isKnown = CSourceDataMngr::GetDataSize(fldID, firstRec, recCount, size32, size);
        if (fldID == hugeFldID)
            size = 4294967296ull;
        return isKnown;
    }

    DWORD refusedFldID = 0;
    DWORD hugeFldID = 0;
};

// An environment that lets a test at its history.
class CProbeEnv final : public CBUIDataMngr
{
public:
    using CBUIDataMngr::CBUIDataMngr;
    using CBUIDataMngr::undoStack;
};

// On link tables of each version.
class CBUIDataMngr_SourceChangeTest : public testing::TestWithParam<SCBUICoreCom::ELinkTableVerType>,
                                      public CEnvQueries
{
protected:
    CBUIDataMngr_SourceChangeTest()
        : CBUIDataMngr_SourceChangeTest(MakeTable(
              {{"shop", TEXT, {"A", "B", "A", "", "C", "B"}},
               {"kind", TEXT, {"x", "y", "y", "x", "x", "z"}},
               {"amount", NUM, {"10", "20", "30", "40", "50", ""}},
               {"day", DATE, {"2026-01-05", "2026-02-01", "2026-01-05", "", "2025-12-31", "2026-01-06"}}}))
    {}
    explicit CBUIDataMngr_SourceChangeTest(const CSourceDataMngr& content)
        : CEnvQueries(env, AMOUNT), table(content), sums(table),
          env(1, GetParam(), GetParam(), table, &sums, nullptr)
    {}

    // Rows of all fields, cell by cell.
    void InsertRows(DWORD position, const std::vector<Texts>& rows)
    {
        std::vector<std::string_view> cells;
        for (const Texts& row : rows)
            cells.insert(cells.end(), row.begin(), row.end());
        ASSERT_TRUE(table.InsertRecs(position, cells));
        sums.Refresh();
    }
    void DeleteRows(DWORD position, DWORD count)
    {
        ASSERT_TRUE(table.DeleteRecs(position, count));
        sums.Refresh();
    }
    void PutBack(const CSourceDataMngr& before)
    {
        static_cast<CSourceDataMngr&>(table) = before;
        sums.Refresh();
    }
    CSourceDataMngr CopyOfTable() const { return CSourceDataMngr(table); }
    DWORD AddField(const char* name, SCDeclareConstant::EDataType type, const Texts& texts)
    {
        CSourceDataMngr::SFldInfo info;
        info.name = name;
        info.spec = {SCDeclareConstant::DATAKIND_ITEM, type};
        CFldValueList values;
        for (const std::string& value : texts)
            values.Append(value);
        DWORD fldID = 0;
        EXPECT_TRUE(table.AddFld(info, std::move(values), fldID));
        sums.Refresh();
        return fldID;
    }
    void SetType(DWORD fldID, SCDeclareConstant::EDataType type)
    {
        CSourceDataMngr::SFldInfo info;
        ASSERT_TRUE(table.GetFldInfo(fldID, info));
        info.spec.dataType = type;
        ASSERT_TRUE(table.SetFldInfo(fldID, info));
        sums.Refresh();
    }
    void SetData(DWORD fldID, const Texts& texts)
    {
        CFldValueList values;
        for (const std::string& value : texts)
            values.Append(value);
        ASSERT_TRUE(table.SetFldData(fldID, std::move(values)));
        sums.Refresh();
    }
    DWORD Create(DWORD btnClassID, SCBUICoreCom::EBtnType type, const List& members)
    {
        DWORD btnID = 0;
        EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, type, "special", SELECT, &members, nullptr),
                  VCBtnClass::CREATESPBTN_OK);
        return btnID;
    }
    // A cll button of the class that picks the buttons of the greatest sums.
    DWORD CreateTop(DWORD btnClassID, DWORD rank)
    {
        CUnitCndOfBscBtnCnd unit;
        unit.SetNumID(AMOUNT);
        unit.SetSumMethod(SCBUICoreCom::ESumMethodForCnd::Sum);
        unit.SetSelCondition(CUnitCndOfBscBtnCnd::ESelCondition::Rank_High);
        unit.SetRankNum(rank);
        CBasicBtnCnd cnd;
        cnd.SetCndComponent(unit);
        DWORD btnID = 0;
        EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, CLL_TYPE, "top", CONDITION, nullptr, &cnd),
                  VCBtnClass::CREATESPBTN_OK);
        return btnID;
    }
    DWORD CreateVirClass(const char* name = "virtual", bool common = false)
    {
        DWORD btnClassID = 0;
        EXPECT_EQ(env.CreateVirBtnClass(name, common, btnClassID), CBUIDataMngr::CREATEVIR_OK);
        return btnClassID;
    }
    DWORD CreateVirInc(DWORD btnClassID, DWORD refBtnClassID, const List& members)
    {
        DWORD btnID = 0;
        EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, SCBUICoreCom::BTNTYPE_VIRINC, "over", SELECT, &members,
                                  nullptr, refBtnClassID),
                  VCBtnClass::CREATESPBTN_OK);
        return btnID;
    }
    void Limit(const List& recs) { env.SetLimitedRecList(recs.data(), static_cast<DWORD>(recs.size())); }
    // Whether the environment shows what one built anew from the table does; special buttons and levels
    // aside, so there must be none.
    void ExpectAsBuiltAnew()
    {
        const CBUIDataMngr anew(2, ON_MEM, ON_MEM, table, &sums, nullptr);
        EXPECT_EQ(CEnvPicture::ByTexts(env), CEnvPicture::ByTexts(anew));
    }
    void ExpectAsBuiltWith(const CSourceDataMngr& content)
    {
        PutBack(content);
        const CBUIDataMngr anew(2, ON_MEM, ON_MEM, table, &sums, nullptr);
        List recs;
        for (DWORD btnClassID = SHOP; btnClassID <= DAY; ++btnClassID) {
            List expected;
            anew.GetBtnAppOrdListOfBtnClass(btnClassID, VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS, expected);
            for (const DWORD btnID : expected) {
                const char* text = nullptr;
                ASSERT_TRUE(anew.GetAliasOfBtn(btnClassID, btnID, text));
                DWORD count = 0;
                recs.assign(table.GetRecCount(), 0);
                ASSERT_TRUE(anew.GetRecListThatRelatesToBtn(btnClassID, btnID, recs.data(), count));
                recs.resize(count);
                EXPECT_EQ(Recs(btnClassID, FindBtn(btnClassID, text)), recs) << text;
            }
        }
    }
    DWORD FindBtn(DWORD btnClassID, const std::string& text) const
    {
        List found;
        env.SearchBtnsByAliasFromBtnClass(btnClassID, {text.c_str()}, VCBtnClass::SRCHBTNNAME_MATCH,
                                          VCBtnClass::SRCH_NORMAL, found);
        return found.empty() ? 0 : found.front();
    }
    std::string Picture() const { return CEnvPicture::ByIDs(env); }
    bool Effective(DWORD btnClassID) const
    {
        bool effective = false;
        EXPECT_TRUE(env.GetEffectiveInfoOfBtnClass(btnClassID, effective));
        return effective;
    }
    DWORD ClassOf(DWORD fldID) const
    {
        DWORD btnClassID = 0;
        env.GetBtnClassID(fldID, btnClassID);
        return btnClassID;
    }

    CStubbornTable table;
    CCoreSumMngr sums;
    CProbeEnv env;
};

// --- Records that come

TEST_P(CBUIDataMngr_SourceChangeTest, InsertedRecordsShiftTheOthersAndBringTheirValues)
{
    InsertRows(2, {{"D", "x", "5", "2026-03-01"}, {"B", "", "6", ""}});
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(2, 2));
    EXPECT_EQ(env.GetRecCountOfSrcData(), 8u);
    EXPECT_EQ(Recs(SHOP, A), (List{0, 4}));
    EXPECT_EQ(Recs(SHOP, B), (List{1, 3, 7}));
    EXPECT_EQ(Recs(SHOP, 5), List{2}); // D
    EXPECT_EQ(Recs(KIND, EMPTY), List{3});
    ExpectAsBuiltAnew();
}

TEST_P(CBUIDataMngr_SourceChangeTest, AnInsertionPastTheEndAppends)
{
    InsertRows(6, {{"A", "x", "1", ""}});
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(4711, 1));
    EXPECT_EQ(env.undoStack.back().startRec, 6u);
    EXPECT_EQ(Recs(SHOP, A), (List{0, 2, 6}));
    ExpectAsBuiltAnew();
}

TEST_P(CBUIDataMngr_SourceChangeTest, AnInsertionIntoAnEnvironmentWithoutRecordsIsABuild)
{
    const CSourceDataMngr full(CopyOfTable());
    DeleteRows(0, 6);
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(0, 6));
    EXPECT_EQ(TargetRecs(), List{});
    ExpectAsBuiltAnew();
    PutBack(full);
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(0, 6));
    EXPECT_EQ(Recs(SHOP, A), (List{0, 2}));
    ExpectAsBuiltAnew();
}

TEST_P(CBUIDataMngr_SourceChangeTest, MoreRecordsThanCanBeNumberedAreRefused)
{
    const std::string before = Picture();
    EXPECT_FALSE(env.AdjstAccordingToInsertRec(0, 4294967290u));
    EXPECT_TRUE(env.undoStack.empty());
    EXPECT_EQ(Picture(), before);
}

TEST_P(CBUIDataMngr_SourceChangeTest, ValuesThatCannotBeReadLeaveTheRecordsWithoutButtonsFromThatClassOn)
{
    InsertRows(1, {{"A", "x", "5", ""}});
    table.refusedFldID = KIND;
    EXPECT_FALSE(env.AdjstAccordingToInsertRec(1, 1));
    EXPECT_EQ(env.GetRecCountOfSrcData(), 7u);
    EXPECT_EQ(env.undoStack.size(), 1u);
    EXPECT_EQ(Recs(SHOP, A), (List{0, 1, 3}));
    EXPECT_EQ(Recs(KIND, X), (List{0, 4, 5}));
    EXPECT_EQ(Recs(AMOUNT, 2), List{0});
    List btnIDs;
    ASSERT_TRUE(env.GetBtnIDListThatRelatesToRecListFromBtnClass(AMOUNT, 1, List{1}.data(), btnIDs));
    EXPECT_EQ(btnIDs, List{0});
    env.GetBtnAppOrdListOfBtnClass(KIND, VCBtnClass::ORDLIST_NORMAL, btnIDs);
    EXPECT_EQ(btnIDs, (List{X, Y, 4}));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, true)); // walks over the record without a button
    EXPECT_EQ(Displayed(KIND), (List{X, Y}));
    table.refusedFldID = 0;
    DeleteRows(1, 1);
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    ExpectAsBuiltAnew();
}

TEST_P(CBUIDataMngr_SourceChangeTest, ValuesOfMoreBytesThanCanBeReadThrowAndTheOpenedRowsGoAgain)
{
    Create(KIND, CLL_TYPE, {X, Y});
    env.SelectTheBtn(SHOP, A, true);
    const std::string before = Picture();
    const CSourceDataMngr former(CopyOfTable());
    InsertRows(1, {{"new", "x", "5", ""}});
    table.hugeFldID = KIND;
    try {
        env.AdjstAccordingToInsertRec(1, 1);
        FAIL();
    } catch (const ECAbnormalData& exception) {
        EXPECT_STREQ(exception.GetMessageText(), SCKZCoreStrDef::MSG_ABNORMAL_DATASIZE);
        EXPECT_EQ(exception.GetLine(), 9992);
    }
    PutBack(former);
    EXPECT_EQ(Picture(), before);
    EXPECT_TRUE(env.undoStack.empty());
}

TEST_P(CBUIDataMngr_SourceChangeTest, ASelectionIsClearedAndTheSumsAreThoseOfAllRecords)
{
    env.SelectTheBtn(SHOP, A, true);
    EXPECT_EQ(Sum(KIND, X), 10.0);
    InsertRows(0, {{"A", "x", "5", ""}});
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(0, 1));
    EXPECT_EQ(Selected(SHOP), List{});
    EXPECT_EQ(env.GetHierCount(), 0u);
    EXPECT_EQ(Displayed(KIND), (List{X, Y, 4}));
    EXPECT_EQ(Sum(KIND, X), 105.0);
    EXPECT_EQ(Total(KIND), 155.0);
}

TEST_P(CBUIDataMngr_SourceChangeTest, SumsAreWorkedOutOverARecordCountThatHasGrown)
{
    EXPECT_EQ(Sum(SHOP, A), 40.0);
    std::vector<Texts> rows(100, Texts{"A", "x", "1", ""});
    InsertRows(6, rows);
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(6, 100));
    EXPECT_EQ(Sum(SHOP, A), 140.0);
    EXPECT_TRUE(env.SelectTheBtn(KIND, X, true));
    EXPECT_EQ(Sum(SHOP, A), 110.0);
}

TEST_P(CBUIDataMngr_SourceChangeTest, ConditionsPickAnewAfterAnInsertion)
{
    const DWORD top = CreateTop(SHOP, 1);
    EXPECT_EQ(Members(SHOP, top), List{C});
    InsertRows(0, {{"B", "x", "500", ""}});
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(0, 1));
    EXPECT_EQ(Members(SHOP, top), List{B});
    DeleteRows(0, 1);
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(0, 1));
    EXPECT_EQ(Members(SHOP, top), List{C});
}

TEST_P(CBUIDataMngr_SourceChangeTest, ANewButtonOfALimitedEnvironmentIsHidden)
{
    Limit({0, 1, 5});
    InsertRows(1, {{"D", "x", "5", ""}});
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(1, 1));
    EXPECT_EQ(TargetRecs(), (List{0, 2, 6}));
    EXPECT_EQ(Displayed(SHOP), (List{A, B}));
    EXPECT_EQ(Why(SHOP, 5), VISINFO_LIMITEDREC);
    env.ClearLimitedRecList();
    ExpectAsBuiltAnew();
}

TEST_P(CBUIDataMngr_SourceChangeTest, GroupsOfDatesFollowRecordsThatComeAndGo)
{
    ASSERT_TRUE(env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(1, 0)));
    List groups;
    env.GetAllSpBtnIDListOfBtnClass(DAY, groups, false);
    const CSourceDataMngr former(CopyOfTable());
    InsertRows(0, {{"A", "x", "1", "2026-01-05"}, {"A", "x", "1", "2031-01-01"}});
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(0, 2));
    const DWORD day = 2; // 2026-01-05
    EXPECT_EQ(Recs(DAY, day), (List{0, 2, 4}));
    List after;
    env.GetAllSpBtnIDListOfBtnClass(DAY, after, false);
    EXPECT_GT(after.size(), groups.size());
    EXPECT_EQ(Recs(DAY, after.back()), List{1});
    PutBack(former);
    ASSERT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    List left;
    env.GetAllSpBtnIDListOfBtnClass(DAY, left, false);
    EXPECT_EQ(left, after); // the new group stays, empty
    EXPECT_EQ(Recs(DAY, after.back()), List{});
    EXPECT_EQ(Recs(DAY, day), (List{0, 2}));
}

// --- Records that go

TEST_P(CBUIDataMngr_SourceChangeTest, DeletedRecordsHideTheButtonsThatLoseTheirLast)
{
    DeleteRows(3, 2);
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(3, 2));
    EXPECT_EQ(Recs(SHOP, B), (List{1, 3}));
    EXPECT_EQ(Why(SHOP, EMPTY), VISINFO_NOREC);
    EXPECT_EQ(Why(SHOP, C), VISINFO_NOREC);
    ExpectAsBuiltAnew();
}

TEST_P(CBUIDataMngr_SourceChangeTest, ADeletionOfMoreThanThereIsDeletesAllAndKeepsTheCountAskedFor)
{
    const CSourceDataMngr former(CopyOfTable());
    const std::string before = Picture();
    DeleteRows(0, 6);
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(0, 4000));
    EXPECT_EQ(env.GetRecCountOfSrcData(), 0u);
    ASSERT_EQ(env.undoStack.size(), 1u);
    EXPECT_EQ(env.undoStack.back().opeType, 2u);
    EXPECT_EQ(env.undoStack.back().recCount, 4000u);
    PutBack(former);
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData()); // no more than were taken out
    EXPECT_EQ(Picture(), before);
}

TEST_P(CBUIDataMngr_SourceChangeTest, ADeletionIsMeasuredInMoreThanThirtyTwoBits)
{
    DeleteRows(2, 4);
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(2, 4294967295u));
    EXPECT_EQ(env.GetRecCountOfSrcData(), 2u);
    ExpectAsBuiltAnew();
}

TEST_P(CBUIDataMngr_SourceChangeTest, ADeletionPastTheEndDeletesNothingAndHasAnEntryAllTheSame)
{
    env.SelectTheBtn(SHOP, A, true);
    const std::string before = Picture();
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(6, 1));
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(4294967295u, 4294967295u));
    EXPECT_EQ(env.GetRecCountOfSrcData(), 6u);
    EXPECT_EQ(env.undoStack.size(), 2u);
    EXPECT_EQ(Selected(SHOP), List{});
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_EQ(Picture(), before);
}

TEST_P(CBUIDataMngr_SourceChangeTest, AValueThatComesBackGetsItsOldButtonAndItsPlaceInSpecialButtons)
{
    const DWORD group = Create(SHOP, INC_TYPE, {C, EMPTY});
    DeleteRows(3, 2);
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(3, 2));
    EXPECT_EQ(Why(SHOP, group), VISINFO_NOLIVEMEMBER);
    EXPECT_EQ(Members(SHOP, group), (List{C, EMPTY}));
    InsertRows(0, {{"C", "x", "1", ""}});
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(0, 1));
    EXPECT_EQ(Recs(SHOP, C), List{0});
    EXPECT_EQ(Recs(SHOP, group), List{0});
    EXPECT_EQ(Why(SHOP, group), 0u);
}

TEST_P(CBUIDataMngr_SourceChangeTest, TheLimitationIsRenumberedWithTheRecords)
{
    Limit({1, 3, 5});
    DeleteRows(1, 1);
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(1, 1));
    EXPECT_EQ(TargetRecs(), (List{2, 4}));
    InsertRows(3, {{"A", "x", "1", ""}});
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(3, 1));
    EXPECT_EQ(TargetRecs(), (List{2, 5}));
    EXPECT_EQ(Displayed(SHOP), (List{EMPTY, B}));
    DeleteRows(2, 4);
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(2, 4));
    EXPECT_EQ(TargetRecs(), List{}); // limited to nothing that is left
    EXPECT_TRUE(env.IsRecListLimitationExecuted());
    EXPECT_EQ(Displayed(SHOP), List{});
    env.ClearLimitedRecList();
    ExpectAsBuiltAnew();
}

// --- Special buttons with a row of their own

class CBUIDataMngr_SourceChangeRowsTest : public CBUIDataMngr_SourceChangeTest
{
protected:
    static constexpr DWORD COUNT = 900; // shops of two records each: "0", "1", ...

    CBUIDataMngr_SourceChangeRowsTest() : CBUIDataMngr_SourceChangeTest(MakeTableOfShops()) {}

    static CSourceDataMngr MakeTableOfShops()
    {
        Texts shop;
        Texts kind;
        Texts amount;
        for (DWORD i = 0; i < 2 * COUNT; ++i) {
            shop.push_back(std::to_string(i % COUNT));
            kind.push_back(std::to_string(i % 3));
            amount.push_back(std::to_string(i % 7));
        }
        return MakeTable({{"shop", TEXT, shop},
                          {"kind", TEXT, kind},
                          {"amount", NUM, amount},
                          {"day", DATE, Texts(2 * COUNT, "")}});
    }
    // The buttons of the shops from `first` on.
    static List Shops(DWORD first, DWORD count)
    {
        List btnIDs(count);
        std::iota(btnIDs.begin(), btnIDs.end(), first + SCBUICoreCom::BTN_ID_NRM_BEGIN);
        return btnIDs;
    }
    // The records of a button, worked out from those of its shops.
    List Union(const List& btnIDs) const
    {
        List recs(env.GetRecCountOfSrcData());
        DWORD count = 0;
        EXPECT_TRUE(env.GetRecListThatRelatesToBtns(SHOP, btnIDs, recs.data(), count));
        recs.resize(count);
        return recs;
    }
    // Rows for some of the shops, of which one is new.
    void InsertShops(DWORD position)
    {
        InsertRows(
            position,
            {{"0", "0", "1", ""}, {"450", "1", "1", ""}, {"new", "1", "1", ""}, {"899", "0", "1", ""}});
        ASSERT_TRUE(env.AdjstAccordingToInsertRec(position, 4));
    }
};

TEST_P(CBUIDataMngr_SourceChangeRowsTest, RowsOfSpecialButtonsGrowByTheRecordsOfTheirMembers)
{
    const DWORD low = Create(SHOP, INC_TYPE, Shops(0, 500));
    const DWORD none = Create(SHOP, INC_TYPE, Shops(460, 430)); // it gets nothing
    List nestedMembers(Shops(440, 400));
    nestedMembers.push_back(low); // of which it shares members
    const DWORD nested = Create(SHOP, CLL_TYPE, nestedMembers);
    for (const DWORD position : {0u, 900u, 1808u}) {
        InsertShops(position);
        EXPECT_EQ(Recs(SHOP, low), Union(Shops(0, 500)));
        EXPECT_EQ(Recs(SHOP, none), Union(Shops(460, 430)));
        EXPECT_EQ(Recs(SHOP, nested), Union(Shops(0, 840)));
    }
    DeleteRows(3, 1000);
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(3, 1000));
    EXPECT_EQ(Recs(SHOP, low), Union(Shops(0, 500)));
    EXPECT_EQ(Recs(SHOP, nested), Union(Shops(0, 840)));
}

TEST_P(CBUIDataMngr_SourceChangeRowsTest, RowsGoOneByOneAndTakeNoOtherListsWithThem)
{
    const DWORD low = Create(SHOP, INC_TYPE, Shops(0, 500));
    InsertShops(0); // the list of the new shop comes behind the row
    Create(SHOP, CLL_TYPE, Shops(400, 500));
    Create(SHOP, INC_TYPE, Shops(100, 450));
    CSavedEnv saved;
    ASSERT_TRUE(saved.Save(env));
    const std::string before = Picture();
    CBUIDataMngr restored(1, GetParam(), GetParam(), table, &sums);
    ASSERT_EQ(saved.LoadCommon(restored, table.GetRecCount()), CXMLReader::READXML_OK);
    EXPECT_EQ(restored.GetRecCountOfSrcData(), env.GetRecCountOfSrcData());
    ASSERT_EQ(saved.LoadFixed(restored), CXMLReader::READXML_OK);
    EXPECT_EQ(CEnvPicture::ByIDs(restored), before);
    EXPECT_EQ(Recs(SHOP, low), Union(Shops(0, 500)));
    env.ClearOfFixedSpec();
    ExpectAsBuiltAnew();
}

TEST_P(CBUIDataMngr_SourceChangeRowsTest, RowsOfVirtualItemsGrowWithTheItemsTheyReferTo)
{
    const DWORD virtualItem = CreateVirClass();
    const DWORD over = CreateVirInc(virtualItem, SHOP, Shops(0, 500));
    const DWORD few = CreateVirInc(virtualItem, SHOP, Shops(0, 2));
    List many;
    for (DWORD i = 0; i < 400; ++i)
        many.push_back(CreateVirInc(virtualItem, SHOP, Shops(i, 1)));
    const DWORD above = Create(virtualItem, CLL_TYPE, many);
    InsertShops(7);
    EXPECT_EQ(Recs(virtualItem, over), Union(Shops(0, 500)));
    EXPECT_EQ(Recs(virtualItem, few), Union(Shops(0, 2)));
    EXPECT_EQ(Recs(virtualItem, above), Union(Shops(0, 400)));
    EXPECT_TRUE(env.SelectTheBtn(virtualItem, over, true));
    EXPECT_EQ(TargetRecs(), Union(Shops(0, 500)));
}

TEST_P(CBUIDataMngr_SourceChangeRowsTest, ARowOverTwoItemsGrowsByTheRecordsOfBothEachOnce)
{
    const DWORD virtualItem = CreateVirClass();
    List many;
    for (DWORD i = 0; i < 400; ++i)
        many.push_back(CreateVirInc(virtualItem, SHOP, Shops(i, 1)));
    many.push_back(CreateVirInc(virtualItem, KIND, {2})); // the kind "0"
    const DWORD above = Create(virtualItem, CLL_TYPE, many);
    InsertShops(7);
    List expected = Union(Shops(0, 400));
    const List kind0 = Recs(KIND, 2);
    List both;
    std::set_union(expected.begin(), expected.end(), kind0.begin(), kind0.end(), std::back_inserter(both));
    EXPECT_EQ(Recs(virtualItem, above), both);
}

TEST_P(CBUIDataMngr_SourceChangeRowsTest, AButtonThatWasOffDuringAChangeIsRightWhenItComesBack)
{
    const DWORD low = Create(SHOP, INC_TYPE, Shops(0, 500));
    const DWORD virtualItem = CreateVirClass();
    const DWORD over = CreateVirInc(virtualItem, SHOP, Shops(0, 500));
    ASSERT_TRUE(env.SetEffectiveInfoOfSpBtn(SHOP, low, false));
    ASSERT_TRUE(env.SetEffectiveInfoOfVirBtnClass(virtualItem, false));
    InsertShops(100);
    ASSERT_TRUE(env.SetEffectiveInfoOfSpBtn(SHOP, low, true));
    ASSERT_TRUE(env.SetEffectiveInfoOfVirBtnClass(virtualItem, true));
    EXPECT_EQ(Recs(SHOP, low), Union(Shops(0, 500)));
    EXPECT_EQ(Recs(virtualItem, over), Union(Shops(0, 500)));
    ASSERT_TRUE(env.SetEffectiveInfoOfSpBtn(SHOP, low, false));
    ASSERT_TRUE(env.SetEffectiveInfoOfSpBtn(virtualItem, over, false));
    DeleteRows(0, 99);
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(0, 99));
    ASSERT_TRUE(env.SetEffectiveInfoOfSpBtn(SHOP, low, true));
    ASSERT_TRUE(env.SetEffectiveInfoOfSpBtn(virtualItem, over, true));
    EXPECT_EQ(Recs(SHOP, low), Union(Shops(0, 500)));
    EXPECT_EQ(Recs(virtualItem, over), Union(Shops(0, 500)));
}

// Records of a date each, enough for each month to have a row.
class CBUIDataMngr_SourceChangeGroupsTest : public CBUIDataMngr_SourceChangeTest
{
protected:
    CBUIDataMngr_SourceChangeGroupsTest() : CBUIDataMngr_SourceChangeTest(MakeTableOfDays()) {}

    static CSourceDataMngr MakeTableOfDays()
    {
        constexpr DWORD COUNT = 5040;
        Texts day;
        for (DWORD i = 0; i < COUNT; ++i) {
            char text[48];
            std::snprintf(text, sizeof text, "%04u-%02u-%02u", 2010 + i / 336, i % 336 / 28 + 1, i % 28 + 1);
            day.push_back(text);
        }
        const Texts none(COUNT, "");
        return MakeTable(
            {{"shop", TEXT, none}, {"kind", TEXT, none}, {"amount", NUM, none}, {"day", DATE, day}});
    }
};

TEST_P(CBUIDataMngr_SourceChangeGroupsTest, ARowOfAGroupHoldsTheRecordsOfItsDates)
{
    ASSERT_TRUE(env.SetDispFormOfDateBtnClass(DAY, MakeDateForm(5, 0, 0, "{m}")));
    for (int round = 0; round < 2; ++round) {
        InsertRows(5, {{"", "", "", "2010-01-04"}, {"", "", "", "2027-12-31"}, {"", "", "", ""}});
        ASSERT_TRUE(env.AdjstAccordingToInsertRec(5, 3));
        List groups;
        env.GetAllSpBtnIDListOfBtnClass(DAY, groups, false);
        ASSERT_EQ(groups.size(), 12u);
        for (const DWORD group : groups) {
            ASSERT_GE(Members(DAY, group).size(), VCBtnClass::ROW_MEMBER_COUNT);
            List recs(env.GetRecCountOfSrcData());
            DWORD count = 0;
            ASSERT_TRUE(env.GetRecListThatRelatesToBtns(DAY, Members(DAY, group), recs.data(), count));
            recs.resize(count);
            EXPECT_EQ(Recs(DAY, group), recs);
        }
    }
}

// --- Fields

TEST_P(CBUIDataMngr_SourceChangeTest, AnInsertedFieldGetsAClassAndTakesPart)
{
    const DWORD fldID = AddField("color", TEXT, {"r", "g", "r", "g", "b", "b"});
    ASSERT_EQ(env.AdjstAccordingToInsertFld(&fldID, 1, nullptr), CBUIDataMngr::CREATESRC_OK);
    EXPECT_EQ(env.undoStack.back().opeType, 3u);
    EXPECT_EQ(env.undoStack.back().fldIDList, List{fldID});
    ExpectAsBuiltAnew();
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, true));
    EXPECT_EQ(Displayed(ClassOf(fldID)), List{2});
}

TEST_P(CBUIDataMngr_SourceChangeTest, MoreFieldsThanTheTableHasAreRefused)
{
    const std::string before = Picture();
    const List fldIDs{1, 2, 3, 4, 5};
    EXPECT_EQ(env.AdjstAccordingToInsertFld(fldIDs.data(), 5, nullptr),
              CBUIDataMngr::CREATESRC_SRCDATA_ERROR);
    EXPECT_TRUE(env.undoStack.empty());
    EXPECT_EQ(Picture(), before);
}

TEST_P(CBUIDataMngr_SourceChangeTest, AFieldOfATableWithOtherRecordsIsNotBuilt)
{
    const DWORD fldID = AddField("color", TEXT, {"r", "g", "r", "g", "b", "b"});
    DeleteRows(0, 1); // of which the environment was not told
    EXPECT_EQ(env.AdjstAccordingToInsertFld(&fldID, 1, nullptr), CBUIDataMngr::CREATESRC_SRCDATA_ERROR);
    EXPECT_EQ(ClassOf(fldID), 0u);
    EXPECT_EQ(env.undoStack.size(), 1u); // whatever the build said
}

TEST_P(CBUIDataMngr_SourceChangeTest, AnInsertedFieldClearsTheSelectionAndKeepsTheSums)
{
    env.SetRelationMode(CBUIDataMngr::RELATIONMODE_NONE);
    env.SelectTheBtn(SHOP, A, true);
    EXPECT_EQ(Sum(SHOP, A), 40.0);
    SetData(AMOUNT, {"1", "1", "1", "1", "1", "1"}); // of which the environment was not told
    const DWORD fldID = AddField("color", TEXT, {"r", "g", "r", "g", "b", "b"});
    ASSERT_EQ(env.AdjstAccordingToInsertFld(&fldID, 1, nullptr), CBUIDataMngr::CREATESRC_OK);
    EXPECT_EQ(Selected(SHOP), List{});
    EXPECT_EQ(Sum(SHOP, A), 40.0);
}

TEST_P(CBUIDataMngr_SourceChangeTest, ACancelledInsertionOfFieldsKeepsWhatWasMade)
{
    const List fldIDs{AddField("one", TEXT, Texts(6, "1")), AddField("two", TEXT, Texts(6, "2"))};
    class CStopping final : public CProgressStatus
    {
        void OnProgress() noexcept override { canceled = presentValue >= maxValueOfPresentProc / 2 + 1; }
    } progress;
    EXPECT_EQ(env.AdjstAccordingToInsertFld(fldIDs.data(), 2, &progress), CBUIDataMngr::CREATESRC_CANCELED);
    EXPECT_NE(ClassOf(fldIDs[0]), 0u);
    EXPECT_EQ(ClassOf(fldIDs[1]), 0u);
    EXPECT_EQ(env.undoStack.size(), 1u);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, true));
}

TEST_P(CBUIDataMngr_SourceChangeTest, ADeletedFieldTakesItsClassOutUntilItIsTakenBack)
{
    const DWORD group = Create(KIND, INC_TYPE, {X, Y});
    const DWORD virtualItem = CreateVirClass();
    const DWORD over = CreateVirInc(virtualItem, KIND, {X});
    const DWORD held = CreateVirInc(virtualItem, KIND, {group});
    env.SelectTheBtn(KIND, X, true);
    const std::string before = Picture();
    const CSourceDataMngr former(CopyOfTable());
    table.DeleteFld(KIND);
    const List fldIDs{KIND, 4711};
    ASSERT_TRUE(env.AdjstAccordingToDeleteFld(fldIDs.data(), 2));
    EXPECT_EQ(env.undoStack.back().opeType, 4u);
    EXPECT_EQ(env.undoStack.back().btnClassIDList, (List{KIND, 0}));
    EXPECT_EQ(env.undoStack.back().fldIDList, fldIDs);
    EXPECT_FALSE(Effective(KIND));
    EXPECT_EQ(ClassOf(KIND), 0u);
    EXPECT_FALSE(env.SelectTheBtn(KIND, X, true));
    bool effective = true;
    env.GetEffectiveInfoOfSpBtn(virtualItem, over, effective);
    EXPECT_FALSE(effective);
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, true)); // the others go on
    EXPECT_EQ(TargetRecs(), (List{0, 2}));

    PutBack(former);
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_TRUE(Effective(KIND));
    EXPECT_EQ(Picture(), before);
    env.GetEffectiveInfoOfSpBtn(virtualItem, held, effective);
    EXPECT_TRUE(effective);
    // Nothing is noted to be brought back: what is switched off now stays off when the class goes and comes.
    ASSERT_TRUE(env.SetEffectiveInfoOfSpBtn(virtualItem, over, false));
    table.DeleteFld(KIND);
    ASSERT_TRUE(env.AdjstAccordingToDeleteFld(&KIND, 1));
    PutBack(former);
    env.AdjstAccordingToUndoOpeOfTheSrcData();
    env.GetEffectiveInfoOfSpBtn(virtualItem, over, effective);
    EXPECT_FALSE(effective);
}

TEST_P(CBUIDataMngr_SourceChangeTest, ALevelOfAButtonOverADeletedFieldDoesNotStay)
{
    const DWORD virtualItem = CreateVirClass();
    const DWORD over = CreateVirInc(virtualItem, KIND, {X});
    ASSERT_TRUE(env.SelectTheBtn(virtualItem, over, true));
    table.DeleteFld(KIND);
    ASSERT_TRUE(env.AdjstAccordingToDeleteFld(&KIND, 1));
    EXPECT_EQ(env.GetHierCount(), 0u);
    EXPECT_EQ(TargetRecs().size(), 6u);
}

TEST_P(CBUIDataMngr_SourceChangeTest, RecordsThatComeWhileAFieldIsOutAreReadWhenItIsTakenBack)
{
    const CSourceDataMngr former(CopyOfTable());
    table.DeleteFld(KIND);
    ASSERT_TRUE(env.AdjstAccordingToDeleteFld(&KIND, 1));
    // All data is read again: nothing of it reaches the class that is out.
    SetData(SHOP, {"A", "A", "A", "B", "B", "B"});
    ASSERT_TRUE(env.AdjstAccordingToChangeFldData(&SHOP, 1, nullptr));
    EXPECT_EQ(Recs(KIND, X), List{});
    PutBack(former);
    SetData(SHOP, {"A", "A", "A", "B", "B", "B"});
    env.undoStack.pop_back(); // the change of data is not taken back
    env.undoStack.pop_back();
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_EQ(Recs(KIND, X), (List{0, 3, 4}));
    EXPECT_EQ(Recs(KIND, Y), (List{1, 2}));
    ExpectAsBuiltAnew();
}

TEST_P(CBUIDataMngr_SourceChangeTest, RecordsThatComeAndGoWhileAFieldIsOutDoNotMoveItsOthers)
{
    const CSourceDataMngr former(CopyOfTable());
    table.DeleteFld(KIND);
    ASSERT_TRUE(env.AdjstAccordingToDeleteFld(&KIND, 1));
    const CSourceDataMngr withoutKind(CopyOfTable());
    const std::string without = Picture();
    InsertRows(1, {{"N", "1", ""}, {"A", "2", ""}});
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(1, 2));
    EXPECT_EQ(Recs(KIND, Y), (List{3, 4}));
    PutBack(withoutKind);
    ASSERT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_EQ(Picture(), without);
    PutBack(former);
    ASSERT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_EQ(Recs(KIND, Y), (List{1, 2}));
    ExpectAsBuiltAnew();
}

TEST_P(CBUIDataMngr_SourceChangeTest, ADataChangeReadsAllAgainInTwoEntriesAndKeepsTheLimitation)
{
    Limit({0, 4});
    env.SelectTheBtn(SHOP, C, true);
    const std::string before = Picture();
    const CSourceDataMngr former(CopyOfTable());
    SetData(KIND, {"y", "y", "y", "y", "new", "y"});
    EXPECT_TRUE(env.AdjstAccordingToChangeFldData(&KIND, 0, nullptr)); // no field: nothing
    EXPECT_TRUE(env.undoStack.empty());
    ASSERT_TRUE(env.AdjstAccordingToChangeFldData(&KIND, 1, nullptr));
    ASSERT_EQ(env.undoStack.size(), 2u);
    EXPECT_EQ(env.undoStack[0].opeType, 2u);
    EXPECT_EQ(env.undoStack[1].opeType, 1u);
    EXPECT_EQ(TargetRecs(), (List{0, 4}));
    EXPECT_EQ(Displayed(KIND), (List{Y, 5}));

    PutBack(former);
    env.AdjstAccordingToUndoOpeOfTheSrcData();
    EXPECT_EQ(TargetRecs(), List{});
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_EQ(Picture(), before);
}

TEST_P(CBUIDataMngr_SourceChangeTest, ATypeThatChangedGivesTheFieldANewClassAndKeepsTheOldOneOff)
{
    const DWORD group = Create(AMOUNT, INC_TYPE, {2, 3});
    env.SelectTheBtn(AMOUNT, 2, true);
    const std::string before = Picture();
    const CSourceDataMngr former(CopyOfTable());
    SetType(AMOUNT, TEXT);
    ASSERT_TRUE(env.AdjstAccordingToChangeFldDataSpec(&AMOUNT, 1, nullptr));
    EXPECT_FALSE(Effective(AMOUNT));
    const DWORD newClassID = ClassOf(AMOUNT);
    EXPECT_EQ(newClassID, 5u);
    EXPECT_EQ(env.undoStack.back().opeType, 5u);
    EXPECT_EQ(env.undoStack.back().btnClassIDList, List{AMOUNT});
    ExpectAsBuiltAnew();
    env.SelectTheBtn(newClassID, 2, true);

    PutBack(former);
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_FALSE(env.ExistBtnClass(newClassID));
    EXPECT_EQ(Members(AMOUNT, group), (List{2, 3}));
    EXPECT_EQ(Picture(), before);
}

TEST_P(CBUIDataMngr_SourceChangeTest, ATypeThatIsThatOfTheClassKeepsClassAndSpecialButtons)
{
    const DWORD group = Create(AMOUNT, INC_TYPE, {2, 3});
    const std::string before = Picture();
    ASSERT_TRUE(env.AdjstAccordingToChangeFldDataSpec(&AMOUNT, 1, nullptr));
    EXPECT_EQ(Picture(), before);
    EXPECT_EQ(ClassOf(AMOUNT), AMOUNT);
    EXPECT_EQ(env.undoStack.size(), 1u);
    ASSERT_TRUE(env.SetEffectiveInfoOfSpBtn(AMOUNT, group, false));
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_TRUE(Effective(AMOUNT));
    EXPECT_EQ(ClassOf(AMOUNT), AMOUNT);
}

TEST_P(CBUIDataMngr_SourceChangeTest, AFieldWithoutAClassGetsOneByAChangeOfType)
{
    const DWORD fldID = AddField("color", TEXT, Texts(6, "r"));
    ASSERT_TRUE(env.AdjstAccordingToChangeFldDataSpec(&fldID, 1, nullptr));
    EXPECT_EQ(env.undoStack.back().btnClassIDList, List{0});
    EXPECT_EQ(ClassOf(fldID), 5u);
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_EQ(ClassOf(fldID), 0u);
    EXPECT_FALSE(env.ExistBtnClass(5));
}

TEST_P(CBUIDataMngr_SourceChangeTest, AnUnknownFieldEndsAChangeOfTypesWithoutAnEntry)
{
    SetType(KIND, NUM);
    const List fldIDs{KIND, 4711, AMOUNT};
    EXPECT_FALSE(env.AdjstAccordingToChangeFldDataSpec(fldIDs.data(), 3, nullptr));
    EXPECT_TRUE(env.undoStack.empty());
    EXPECT_EQ(ClassOf(KIND), 5u); // it stays changed
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, true));
}

TEST_P(CBUIDataMngr_SourceChangeTest, AClassThatCannotBeBuiltEndsAChangeOfTypesWithAnEntry)
{
    const CSourceDataMngr former(CopyOfTable());
    const std::string before = Picture();
    SetType(KIND, NUM);
    SetType(SHOP, NUM);
    table.refusedFldID = KIND;
    const List fldIDs{KIND, SHOP};
    EXPECT_FALSE(env.AdjstAccordingToChangeFldDataSpec(fldIDs.data(), 2, nullptr));
    EXPECT_EQ(ClassOf(KIND), 0u);
    EXPECT_EQ(ClassOf(SHOP), SHOP);
    EXPECT_EQ(env.undoStack.back().btnClassIDList, (List{KIND, SHOP}));
    table.refusedFldID = 0;
    PutBack(former);
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_EQ(Picture(), before);
}

TEST_P(CBUIDataMngr_SourceChangeTest,
       AFormThatChangedSwitchesCllButtonsOfTheFieldOffAndLeavesTheArgumentsAlone)
{
    const DWORD group = Create(DAY, CLL_TYPE, {2, 3});
    const DWORD inc = Create(DAY, INC_TYPE, {4});
    const List fldIDs{DAY, SHOP, 4711};
    env.SelectTheBtn(SHOP, A, true);
    ASSERT_TRUE(env.AdjstAccordingToChangeFldDataForm(fldIDs.data(), 3));
    EXPECT_EQ(fldIDs, (List{DAY, SHOP, 4711}));
    EXPECT_EQ(env.undoStack.back().opeType, 6u);
    ASSERT_EQ(env.undoStack.back().selectBtnIDList.size(), 1u);
    EXPECT_EQ(env.undoStack.back().selectBtnIDList[0].btnClassID, SHOP);
    bool effective = true;
    env.GetEffectiveInfoOfSpBtn(DAY, group, effective);
    EXPECT_FALSE(effective);
    env.GetEffectiveInfoOfSpBtn(DAY, inc, effective);
    EXPECT_TRUE(effective);
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData()); // the selection comes back, the group does not
    EXPECT_EQ(Selected(SHOP), List{A});
    env.GetEffectiveInfoOfSpBtn(DAY, group, effective);
    EXPECT_FALSE(effective);
}

TEST_P(CBUIDataMngr_SourceChangeTest, AChangeOfTheCalendarHasAnEntry)
{
    env.SelectTheBtn(SHOP, A, true);
    table.SetStartMonth(1);
    ASSERT_TRUE(env.AdjstAccordingToChangeDateCriterionInfo());
    ASSERT_EQ(env.GetUndoOpeCountOfTheSrcData(), 1u);
    EXPECT_EQ(env.undoStack.back().opeType, 8u);
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_EQ(Selected(SHOP), List{A});
}

// --- Summaries

TEST_P(CBUIDataMngr_SourceChangeTest, ASummaryOfChangedDataMakesADeletionAndAnInsertion)
{
    SetData(KIND, {"y", "y", "y", "y", "new", "y"});
    SCDataMngrCoreDef::SBtnRenewalInfo info;
    info.newRecCount = info.oldRecCount = 6;
    info.dataChangedFldIDs = {KIND};
    ASSERT_EQ(env.AdjstAccordingToChangeSrcDataMngr(info, nullptr), CBUIDataMngr::CREATESRC_OK);
    ASSERT_EQ(env.undoStack.size(), 2u);
    EXPECT_EQ(env.undoStack[0].opeType, 2u);
    EXPECT_EQ(env.undoStack[1].opeType, 1u);
    ExpectAsBuiltAnew();
}

TEST_P(CBUIDataMngr_SourceChangeTest, AnEmptySummaryIsFollowedByDoingNothing)
{
    env.SelectTheBtn(SHOP, A, true);
    CProgressStatus progress;
    SCDataMngrCoreDef::SBtnRenewalInfo info;
    info.newRecCount = info.oldRecCount = 6;
    ASSERT_EQ(env.AdjstAccordingToChangeSrcDataMngr(info, &progress), CBUIDataMngr::CREATESRC_OK);
    EXPECT_TRUE(env.undoStack.empty());
    EXPECT_EQ(Selected(SHOP), List{A});
    EXPECT_EQ(progress.GetNameOfPresentProc(), SCBUICoreStrDef::STR_PROCNAME_REBUILD_BTNINFO);
    EXPECT_EQ(progress.GetRatioOfPresentProc(), 100u);
}

TEST_P(CBUIDataMngr_SourceChangeTest, ASummaryOfManyChangesIsFollowedInItsOrder)
{
    const CSourceDataMngr former(CopyOfTable());
    InsertRows(0, {{"N", "x", "7", "2026-05-05"}});
    table.DeleteFld(KIND);
    SetType(AMOUNT, TEXT);
    SetData(SHOP, {"N", "A", "A", "A", "B", "B", "B"});
    const DWORD color = AddField("color", TEXT, Texts(7, "r"));
    SCDataMngrCoreDef::SBtnRenewalInfo info;
    info.oldRecCount = 6;
    info.newRecCount = 7;
    info.deletedFldIDs = {KIND};
    info.insertedFldIDs = {color};
    info.specChangedFldIDs = {AMOUNT};
    info.dataChangedFldIDs = {SHOP};
    info.formChangedFldIDs = {DAY, SHOP};

    class CRatios final : public CProgressStatus
    {
    public:
        std::set<unsigned int> seen;

    private:
        void OnProgress() noexcept override { seen.insert(GetRatioOfPresentProc()); }
    } progress;
    progress.SetRatioOfPresentProc(70);
    ASSERT_EQ(env.AdjstAccordingToChangeSrcDataMngr(info, &progress), CBUIDataMngr::CREATESRC_OK);
    List types;
    for (const auto& entry : env.undoStack)
        types.push_back(entry.opeType);
    EXPECT_EQ(types, (List{1, 4, 2, 1, 6, 5, 3}));
    EXPECT_EQ(progress.GetRatioOfPresentProc(), 70u);
    EXPECT_TRUE(progress.seen.contains(20)); // two of seven fields are read again
    EXPECT_TRUE(progress.seen.contains(10));
    ExpectAsBuiltAnew();
}

TEST_P(CBUIDataMngr_SourceChangeTest, ASummaryEndsAtTheFirstStepThatFails)
{
    SetType(KIND, NUM);
    const DWORD color = AddField("color", TEXT, Texts(6, "r"));
    SCDataMngrCoreDef::SBtnRenewalInfo info;
    info.newRecCount = info.oldRecCount = 6;
    info.specChangedFldIDs = {4711};
    info.insertedFldIDs = {color};
    EXPECT_EQ(env.AdjstAccordingToChangeSrcDataMngr(info, nullptr), CBUIDataMngr::CREATESRC_SRCDATA_ERROR);
    EXPECT_EQ(ClassOf(color), 0u);
    info.specChangedFldIDs.clear();
    table.refusedFldID = SHOP;
    info.dataChangedFldIDs = {KIND};
    EXPECT_EQ(env.AdjstAccordingToChangeSrcDataMngr(info, nullptr), CBUIDataMngr::CREATESRC_SRCDATA_ERROR);
    info.dataChangedFldIDs.clear();
    info.newRecCount = 8;
    EXPECT_EQ(env.AdjstAccordingToChangeSrcDataMngr(info, nullptr), CBUIDataMngr::CREATESRC_SRCDATA_ERROR);
    EXPECT_EQ(ClassOf(color), 0u);
}

TEST_P(CBUIDataMngr_SourceChangeTest, AFieldThatIsDeletedInTheSameSummaryIsNotReadByItsInsertion)
{
    table.DeleteFld(KIND);
    InsertRows(0, {{"N", "7", ""}});
    SCDataMngrCoreDef::SBtnRenewalInfo info;
    info.oldRecCount = 6;
    info.newRecCount = 7;
    info.deletedFldIDs = {KIND};
    ASSERT_EQ(env.AdjstAccordingToChangeSrcDataMngr(info, nullptr), CBUIDataMngr::CREATESRC_OK);
    ExpectAsBuiltAnew();
    DeleteRows(0, 1);
    SCDataMngrCoreDef::SBtnRenewalInfo back;
    back.oldRecCount = 7;
    back.newRecCount = 6;
    ASSERT_EQ(env.AdjstAccordingToChangeSrcDataMngr(back, nullptr), CBUIDataMngr::CREATESRC_OK);
    ExpectAsBuiltAnew();
}

// --- Taking back

TEST_P(CBUIDataMngr_SourceChangeTest, NothingIsTakenBackFromAnEmptyHistory)
{
    env.SelectTheBtn(SHOP, A, true);
    const std::string before = Picture();
    EXPECT_FALSE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    env.ClearUndoOfTheSrcData();
    EXPECT_EQ(Picture(), before);
}

TEST_P(CBUIDataMngr_SourceChangeTest, EachChangeOfRecordsIsTakenBackWithItsSelection)
{
    Create(SHOP, CLL_TYPE, {B, C});
    CreateTop(KIND, 2);
    const DWORD virtualItem = CreateVirClass();
    CreateVirInc(virtualItem, SHOP, {A, EMPTY});
    env.SetMultiSelectionInfo(true);
    ASSERT_TRUE(env.SelectTheBtn(SHOP, A, true));
    ASSERT_TRUE(env.SelectTheBtn(KIND, Y, true));
    const std::string before = Picture();
    const CSourceDataMngr former(CopyOfTable());
    InsertRows(2, {{"N", "n", "100", ""}, {"A", "y", "1", ""}});
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(2, 2));
    ASSERT_TRUE(env.SelectTheBtn(SHOP, B, true));
    const std::string between = Picture();
    const CSourceDataMngr formerBetween(CopyOfTable());
    DeleteRows(0, 5);
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(0, 5));
    EXPECT_EQ(env.GetUndoOpeCountOfTheSrcData(), 2u);

    PutBack(formerBetween);
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_EQ(env.GetUndoOpeCountOfTheSrcData(), 1u);
    EXPECT_EQ(Picture(), between);
    PutBack(former);
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_EQ(env.GetUndoOpeCountOfTheSrcData(), 0u);
    EXPECT_EQ(Picture(), before);
}

TEST_P(CBUIDataMngr_SourceChangeTest, AnInsertedFieldThatIsTakenBackLeavesItsClassOffForGood)
{
    const CSourceDataMngr former(CopyOfTable());
    const DWORD fldID = AddField("color", TEXT, Texts(6, "r"));
    ASSERT_EQ(env.AdjstAccordingToInsertFld(&fldID, 1, nullptr), CBUIDataMngr::CREATESRC_OK);
    const DWORD btnClassID = ClassOf(fldID);
    PutBack(former);
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_EQ(ClassOf(fldID), 0u);
    EXPECT_FALSE(Effective(btnClassID));
    EXPECT_EQ(env.GetUndoOpeCountOfTheSrcData(), 0u);
    env.ClearUndoOfTheSrcData();
    EXPECT_TRUE(env.ExistBtnClass(btnClassID)); // no entry named it
}

TEST_P(CBUIDataMngr_SourceChangeTest, ClearingTheHistoryFreesTheClassesOfDeletedFields)
{
    const DWORD virtualItem = CreateVirClass();
    const DWORD over = CreateVirInc(virtualItem, KIND, {X});
    table.DeleteFld(KIND);
    ASSERT_TRUE(env.AdjstAccordingToDeleteFld(&KIND, 1));
    SetType(AMOUNT, TEXT);
    ASSERT_TRUE(env.AdjstAccordingToChangeFldDataSpec(&AMOUNT, 1, nullptr));
    env.ClearUndoOfTheSrcData();
    EXPECT_EQ(env.GetUndoOpeCountOfTheSrcData(), 0u);
    EXPECT_FALSE(env.ExistBtnClass(KIND));
    EXPECT_FALSE(env.ExistBtnClass(AMOUNT));
    DWORD refBtnClassID = 4711;
    ASSERT_TRUE(env.GetRefBtnClassIDOfVirIncBtn(virtualItem, over, refBtnClassID));
    EXPECT_EQ(refBtnClassID, 0u);
    EXPECT_FALSE(env.SetEffectiveInfoOfSpBtn(virtualItem, over, true));
    EXPECT_TRUE(env.SelectTheBtn(SHOP, A, true));
    env.ClearAllBtnSelections(true);
    ExpectAsBuiltAnew();
}

TEST_P(CBUIDataMngr_SourceChangeTest, AClassThatServesAgainStaysWhenTheHistoryIsCleared)
{
    SetType(AMOUNT, TEXT);
    ASSERT_TRUE(env.AdjstAccordingToChangeFldDataSpec(&AMOUNT, 1, nullptr));
    SetType(AMOUNT, NUM);
    ASSERT_TRUE(env.AdjstAccordingToChangeFldDataSpec(&AMOUNT, 1, nullptr));
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData()); // class 5 serves, class 6 is gone
    EXPECT_TRUE(Effective(5));
    EXPECT_FALSE(env.ExistBtnClass(6));
    env.ClearUndoOfTheSrcData();
    EXPECT_TRUE(env.ExistBtnClass(5));
    EXPECT_FALSE(env.ExistBtnClass(AMOUNT));
}

TEST_P(CBUIDataMngr_SourceChangeTest, AnEntryOfAnUnknownKindStays)
{
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(6, 1));
    env.undoStack.front().opeType = 9;
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(6, 1));
    const auto lineOf = [](auto&& operation) {
        try {
            operation();
        } catch (const ECAbnormalData& exception) {
            EXPECT_STREQ(exception.GetMessageText(), SCBUICoreStrDef::MSG_UNKNOWN_SRCDATA_OPETYPE);
            return exception.GetLine();
        }
        return 0L;
    };
    EXPECT_EQ(lineOf([&] { env.ClearUndoOfTheSrcData(); }), 10418);
    EXPECT_EQ(env.undoStack.size(), 1u); // the one behind it is gone
    EXPECT_EQ(lineOf([&] { env.AdjstAccordingToUndoOpeOfTheSrcData(); }), 10349);
    EXPECT_EQ(env.undoStack.size(), 1u);
    env.undoStack.front().opeType = 7; // never made, but not refused
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_TRUE(env.undoStack.empty());
}

TEST_P(CBUIDataMngr_SourceChangeTest, TheHistoryGoesWithWhatUsersFixed)
{
    ASSERT_TRUE(env.AdjstAccordingToDeleteRec(6, 1));
    env.ClearOfFixedSpec();
    EXPECT_EQ(env.GetUndoOpeCountOfTheSrcData(), 0u);
}

TEST_P(CBUIDataMngr_SourceChangeTest, AClassThatAChangeOfTheTablesVersionLeftOutIsReadWhenItIsTakenBack)
{
    const std::string before = Picture();
    const CSourceDataMngr former(CopyOfTable());
    table.DeleteFld(KIND);
    ASSERT_TRUE(env.AdjstAccordingToDeleteFld(&KIND, 1));
    env.ChangeVersionTypeOfBnLink(GetParam() == ON_MEM ? SCBUICoreCom::LINKTBLVERTYPE_MEMSAV : ON_MEM);
    List btnIDs;
    EXPECT_FALSE(env.GetBtnIDListThatRelatesToRecListFromBtnClass(KIND, 1, List{0}.data(), btnIDs));
    InsertRows(1, {{"N", "1", ""}});
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(1, 1));
    DeleteRows(1, 1);
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    PutBack(former);
    EXPECT_TRUE(env.AdjstAccordingToUndoOpeOfTheSrcData());
    EXPECT_EQ(Picture(), before);
    EXPECT_TRUE(env.SelectTheBtn(KIND, X, true));
}

// --- Saving and restoring between

TEST_P(CBUIDataMngr_SourceChangeTest, AnEnvironmentWithAClassThatIsOutIsSavedAndRestored)
{
    table.DeleteFld(KIND);
    ASSERT_TRUE(env.AdjstAccordingToDeleteFld(&KIND, 1));
    InsertRows(1, {{"N", "1", ""}}); // no button of the class that is out has it
    ASSERT_TRUE(env.AdjstAccordingToInsertRec(1, 1));
    const DWORD group = Create(SHOP, CLL_TYPE, {A, B});
    CSavedEnv saved;
    ASSERT_TRUE(saved.Save(env));
    CBUIDataMngr restored(1, GetParam(), ON_MEM, table, &sums);
    ASSERT_EQ(saved.LoadCommon(restored, table.GetRecCount()), CXMLReader::READXML_OK);
    EXPECT_EQ(restored.GetRecCountOfSrcData(), 7u); // the tables are not lost
    ASSERT_EQ(saved.LoadFixed(restored), CXMLReader::READXML_OK);
    EXPECT_EQ(CEnvPicture::ByIDs(restored), CEnvPicture::ByIDs(env));
    EXPECT_FALSE(restored.ExistBtnClass(KIND));
    List members;
    EXPECT_TRUE(restored.GetMemberBtnIDListOfSpBtn(SHOP, group, members));
}

TEST_P(CBUIDataMngr_SourceChangeTest, LostLinkTablesAreBuiltAgainWithAllThatStandsOnThem)
{
    const DWORD group = Create(SHOP, CLL_TYPE, {A, B});
    const DWORD virtualItem = CreateVirClass("common", true);
    const DWORD over = CreateVirInc(virtualItem, SHOP, {C, EMPTY});
    const std::string before = Picture();
    CSavedEnv saved;
    ASSERT_TRUE(saved.SaveCommon(env, false));
    ASSERT_TRUE(saved.SaveFixed(env));
    for (const bool byField : {false, true}) {
        CBUIDataMngr restored(1, GetParam(), ON_MEM, table, &sums);
        ASSERT_EQ(saved.LoadCommon(restored, table.GetRecCount()), CXMLReader::READXML_OK);
        ASSERT_EQ(restored.GetRecCountOfSrcData(), 0u);
        if (byField) {
            ASSERT_EQ(restored.AdjstAccordingToInsertFld(nullptr, 0, nullptr), CBUIDataMngr::CREATESRC_OK);
        } else {
            ASSERT_TRUE(restored.AdjstAccordingToInsertRec(0, 6));
        }
        restored.ClearUndoOfTheSrcData();
        ASSERT_EQ(saved.LoadFixed(restored), CXMLReader::READXML_OK);
        EXPECT_EQ(CEnvPicture::ByIDs(restored), before);
        EXPECT_EQ(Members(SHOP, group), (List{A, B}));
        EXPECT_EQ(Members(virtualItem, over), (List{C, EMPTY}));
    }
}

// --- Exhausted memory

TEST_P(CBUIDataMngr_SourceChangeTest, AnInsertionWithoutMemoryLeavesTheEnvironmentAsItWas)
{
    Create(SHOP, CLL_TYPE, {B, C});
    CreateTop(KIND, 2);
    const DWORD virtualItem = CreateVirClass();
    CreateVirInc(virtualItem, SHOP, {A, EMPTY});
    env.SelectTheBtn(SHOP, A, true);
    const std::string before = Picture();
    const CSourceDataMngr former(CopyOfTable());
    InsertRows(1, {{"N", "n", "100", ""}, {"A", "y", "1", "2026-09-09"}});
    const CSourceDataMngr latter(CopyOfTable());
    CAllocFault fault;
    DWORD atOnce = 0; // failures that left all as it was
    fault.FailEachInTurn([&](auto&& attempt) {
        PutBack(latter);
        if (attempt([&] { env.AdjstAccordingToInsertRec(1, 2); })) {
            EXPECT_EQ(env.undoStack.size(), 1u);
        } else if (env.undoStack.empty()) {
            PutBack(former);
            EXPECT_EQ(Picture(), before);
            ++atOnce;
            return;
        }
        // It is done up to what follows from it.
        env.ClearAllBtnSelections(true);
        ExpectAsBuiltWith(latter);
        PutBack(former);
        env.AdjstAccordingToUndoOpeOfTheSrcData();
        env.ClearAllBtnSelections(true);
        env.SelectTheBtn(SHOP, A, true);
        EXPECT_EQ(Picture(), before);
    });
    EXPECT_GT(atOnce, 20u);
}

TEST_P(CBUIDataMngr_SourceChangeTest, ADataChangeThatMemoryEndsHalfWayIsTakenBackWithItsLimitation)
{
    Limit({0, 1, 4});
    env.SelectTheBtn(SHOP, C, true);
    const std::string before = Picture();
    const CSourceDataMngr former(CopyOfTable());
    SetData(KIND, {"y", "y", "y", "y", "new", "y"});
    const CSourceDataMngr latter(CopyOfTable());
    DWORD halfWay = 0;
    CAllocFault fault;
    fault.FailEachInTurn([&](auto&& attempt) {
        PutBack(latter);
        const bool isDone = attempt([&] { env.AdjstAccordingToChangeFldData(&KIND, 1, nullptr); });
        halfWay += !isDone && env.GetRecCountOfSrcData() == 0 ? 1 : 0;
        if (env.GetRecCountOfSrcData() == 0) {
            EXPECT_FALSE(env.IsRecListLimitationExecuted());
        }
        PutBack(former);
        while (env.GetUndoOpeCountOfTheSrcData() != 0)
            env.AdjstAccordingToUndoOpeOfTheSrcData();
        if (env.GetRecCountOfSrcData() == 0) // the tables are lost
            env.AdjstAccordingToInsertRec(0, 6);
        env.ClearUndoOfTheSrcData();
        if (!env.IsRecListLimitationExecuted())
            Limit({0, 1, 4});
        env.ClearAllBtnSelections(true);
        env.SelectTheBtn(SHOP, C, true);
        EXPECT_EQ(Picture(), before);
    });
    EXPECT_GT(halfWay, 10u);
}

// What an environment is after an operation that memory ended: whatever has become of it, it can be used.
void ExpectToBeOfUse(CProbeEnv& env, const CSourceDataMngr& table)
{
    if (env.GetRecCountOfSrcData() == 0 && table.GetRecCount() != 0) { // the tables are lost, or all is
        EXPECT_TRUE(env.AdjstAccordingToInsertRec(0, table.GetRecCount()));
    }
    List recs(env.GetRecCountOfSrcData() + std::size_t{1}, 4711);
    DWORD count = 0;
    env.GetTargetRecList(recs.data(), count);
    EXPECT_LE(count, env.GetRecCountOfSrcData());
    EXPECT_EQ(recs.back(), 4711u);
    env.ClearAllBtnSelections(true);
    List classIDs;
    env.GetAllBtnClassIDList(classIDs, false);
    for (const DWORD btnClassID : classIDs) {
        List btnIDs;
        env.GetAllBtnIDListOfBtnClass(btnClassID, btnIDs, false);
        for (const DWORD btnID : btnIDs)
            env.SelectTheBtn(btnClassID, btnID, true);
        env.ClearAllBtnSelections(true);
    }
    CEnvPicture::ByIDs(env);
}

TEST_P(CBUIDataMngr_SourceChangeTest, MemoryThatIsExhaustedForGoodLeavesAnEnvironmentThatCanBeUsed)
{
    using Operation = std::function<void(CProbeEnv&)>;
    const CSourceDataMngr former(CopyOfTable());
    const Operation insert = [](CProbeEnv& changed) { changed.AdjstAccordingToInsertRec(1, 2); };
    const Operation remove = [](CProbeEnv& changed) { changed.AdjstAccordingToDeleteRec(1, 3); };
    const Operation data = [](CProbeEnv& changed) {
        changed.AdjstAccordingToChangeFldData(&KIND, 1, nullptr);
    };
    const Operation fields = [](CProbeEnv& changed) { changed.AdjstAccordingToDeleteFld(&KIND, 1); };
    const Operation types = [](CProbeEnv& changed) {
        changed.AdjstAccordingToChangeFldDataSpec(&AMOUNT, 1, nullptr);
    };
    const Operation undo = [](CProbeEnv& changed) { changed.AdjstAccordingToUndoOpeOfTheSrcData(); };
    const Operation clear = [](CProbeEnv& changed) { changed.ClearUndoOfTheSrcData(); };
    DWORD color = 0;
    const Operation insertedField = [&](CProbeEnv& changed) {
        changed.AdjstAccordingToInsertFld(&color, 1, nullptr);
    };
    const Operation forms = [](CProbeEnv& changed) { changed.AdjstAccordingToChangeFldDataForm(&DAY, 1); };
    const Operation criteria = [](CProbeEnv& changed) { changed.AdjstAccordingToChangeDateCriterionInfo(); };
    struct SCase
    {
        std::vector<Operation> before; // without a failure
        Operation failing;
        DWORD inserted = 0; // records that come to the table for it
        DWORD deleted = 0;
        DWORD fieldOut = 0;
        bool typeChanges = false;
        bool hasNewField = false;
    };
    const std::vector<SCase> cases = {{{}, insert, 2},
                                      {{}, remove, 0, 3},
                                      {{}, data},
                                      {{}, fields, 0, 0, KIND},
                                      {{}, types, 0, 0, 0, true},
                                      {{fields}, undo},
                                      {{fields}, clear, 0, 0, KIND},
                                      {{types}, undo},
                                      {{}, insertedField, 0, 0, 0, false, true},
                                      {{}, forms},
                                      {{}, criteria},
                                      {{remove}, undo},
                                      {{insert}, undo}};
    for (std::size_t number = 0; number < cases.size(); ++number) {
        const SCase& tried = cases[number];
        for (const bool forGood : {false, true}) {
            for (std::size_t nth = 1;; ++nth) {
                SCOPED_TRACE(testing::Message() << "case " << number << ", allocation " << nth);
                PutBack(former);
                CProbeEnv changed(3, GetParam(), GetParam(), table, &sums, nullptr);
                DWORD made = 0;
                const List members{A, C};
                changed.CreateSpBtn(made, SHOP, INC_TYPE, "special", SELECT, &members, nullptr);
                DWORD virtualItem = 0;
                changed.CreateVirBtnClass("virtual", false, virtualItem);
                changed.CreateSpBtn(made, virtualItem, SCBUICoreCom::BTNTYPE_VIRINC, "over", SELECT, &members,
                                    nullptr, KIND);
                const List limited{0, 1, 2, 4, 5};
                changed.SetLimitedRecList(limited.data(), 5);
                changed.SelectTheBtn(KIND, X, true);
                changed.SelectTheBtn(SHOP, B, true);
                changed.SetDispFormOfDateBtnClass(DAY, MakeDateForm(5, 0, 0, "{m}"));
                if (tried.hasNewField)
                    color = AddField("color", TEXT, Texts(6, "r"));
                if (tried.typeChanges || (!tried.before.empty() && number == 7))
                    SetType(AMOUNT, TEXT);
                for (const Operation& operation : tried.before)
                    operation(changed);
                if (number == 7)
                    SetType(AMOUNT, NUM);
                if (tried.inserted != 0)
                    InsertRows(1, std::vector<Texts>(tried.inserted, {"N", "n", "100", "2026-09-09"}));
                if (tried.deleted != 0)
                    DeleteRows(1, tried.deleted);
                if (tried.fieldOut != 0) {
                    table.DeleteFld(tried.fieldOut);
                    sums.Refresh();
                }
                CAllocFault fault;
                if (forGood)
                    fault.ArmFrom(nth);
                else
                    fault.Arm(nth);
                try {
                    tried.failing(changed);
                } catch (const std::bad_alloc&) {
                }
                const bool hasFailed = fault.Disarm();
                ExpectToBeOfUse(changed, table);
                if (!hasFailed || HasFatalFailure())
                    break;
            }
        }
    }
}

// An environment on the table of shops with all that a change of fields or records has to bring along.
class CBUIDataMngr_SourceChangeFaultTest : public CBUIDataMngr_SourceChangeRowsTest
{
protected:
    using Change = std::function<void(CProbeEnv&)>;

    std::unique_ptr<CProbeEnv> MakeEnv(const Change& prepare) const
    {
        auto made = std::make_unique<CProbeEnv>(1, GetParam(), GetParam(), table, &sums, nullptr);
        DWORD btnID = 0;
        const List many(Shops(0, 450));
        EXPECT_EQ(made->CreateSpBtn(btnID, SHOP, INC_TYPE, "many", SELECT, &many, nullptr),
                  VCBtnClass::CREATESPBTN_OK);
        DWORD item = 0;
        EXPECT_EQ(made->CreateVirBtnClass("virtual", true, item), CBUIDataMngr::CREATEVIR_OK);
        for (const DWORD refBtnClassID : {SHOP, KIND}) {
            const List members(refBtnClassID == SHOP ? many : List{X, Y});
            EXPECT_EQ(made->CreateSpBtn(btnID, item, SCBUICoreCom::BTNTYPE_VIRINC, "over", SELECT, &members,
                                        nullptr, refBtnClassID),
                      VCBtnClass::CREATESPBTN_OK);
        }
        EXPECT_TRUE(made->SelectTheBtn(SHOP, A, true));
        prepare(*made);
        return made;
    }
    static std::string PictureWithoutSelection(CProbeEnv& shown)
    {
        shown.ClearAllBtnSelections(true);
        return CEnvPicture::ByIDs(shown);
    }
    // Lets each allocation of the change fail: it is done then, or not begun.
    void ExpectAllOrNothing(const Change& prepare, const Change& change) const
    {
        const std::string before = PictureWithoutSelection(*MakeEnv(prepare));
        const std::unique_ptr<CProbeEnv> changed = MakeEnv(prepare);
        change(*changed);
        const std::string done = PictureWithoutSelection(*changed);
        CAllocFault fault;
        const std::size_t failures = fault.FailEachInTurn([&](auto&& attempt) {
            const std::unique_ptr<CProbeEnv> tried = MakeEnv(prepare);
            const bool isDone = attempt([&] { change(*tried); });
            const std::string after = PictureWithoutSelection(*tried);
            EXPECT_TRUE(after == done || (!isDone && after == before));
        });
        EXPECT_GT(failures, 0u);
    }
};

TEST_P(CBUIDataMngr_SourceChangeFaultTest, ADeletionOfAFieldWithoutMemoryIsDoneOrNotBegun)
{
    for (const DWORD fldID : {SHOP, KIND, AMOUNT})
        ExpectAllOrNothing([](CProbeEnv&) {},
                           [fldID](CProbeEnv& changed) { changed.AdjstAccordingToDeleteFld(&fldID, 1); });
}

TEST_P(CBUIDataMngr_SourceChangeFaultTest, TakingADeletionOfAFieldBackWithoutMemoryIsDoneOrToBeRepeated)
{
    const std::string done = PictureWithoutSelection(*MakeEnv([](CProbeEnv&) {}));
    CAllocFault fault;
    for (const DWORD fldID : {SHOP, KIND}) {
        const std::size_t failures = fault.FailEachInTurn([&](auto&& attempt) {
            const std::unique_ptr<CProbeEnv> tried =
                MakeEnv([fldID](CProbeEnv& changed) { changed.AdjstAccordingToDeleteFld(&fldID, 1); });
            attempt([&] { tried->AdjstAccordingToUndoOpeOfTheSrcData(); });
            if (!tried->undoStack.empty())
                tried->AdjstAccordingToUndoOpeOfTheSrcData();
            EXPECT_TRUE(tried->undoStack.empty());
            EXPECT_EQ(PictureWithoutSelection(*tried), done);
        });
        EXPECT_GT(failures, 0u);
    }
}

TEST_P(CBUIDataMngr_SourceChangeFaultTest, AnInsertionOfAFieldWithoutMemoryIsDoneOrNotBegun)
{
    ExpectAllOrNothing(
        [](CProbeEnv& changed) {
            changed.AdjstAccordingToDeleteFld(&KIND, 1);
            changed.ClearUndoOfTheSrcData();
        },
        [](CProbeEnv& changed) { changed.AdjstAccordingToInsertFld(&KIND, 1, nullptr); });
}

TEST_P(CBUIDataMngr_SourceChangeFaultTest, ClearingTheHistoryWithoutMemoryIsDoneOrToBeRepeated)
{
    const auto prepare = [](CProbeEnv& changed) {
        changed.AdjstAccordingToDeleteFld(&SHOP, 1);
        changed.AdjstAccordingToDeleteFld(&KIND, 1);
    };
    CAllocFault fault;
    fault.FailEachInTurn([&](auto&& attempt) {
        const std::unique_ptr<CProbeEnv> tried = MakeEnv(prepare);
        if (!attempt([&] { tried->ClearUndoOfTheSrcData(); }))
            tried->ClearUndoOfTheSrcData();
        EXPECT_TRUE(tried->undoStack.empty());
        EXPECT_FALSE(tried->ExistBtnClass(SHOP));
        EXPECT_FALSE(tried->ExistBtnClass(KIND));
        EXPECT_TRUE(tried->SelectTheBtn(AMOUNT, X, true));
    });
}

TEST_P(CBUIDataMngr_SourceChangeFaultTest, ChangesOfTheTablesVersionsWithoutMemoryAreDoneOrNotBegun)
{
    const auto other = GetParam() == ON_MEM ? SCBUICoreCom::LINKTBLVERTYPE_MEMSAV : ON_MEM;
    ExpectAllOrNothing([](CProbeEnv&) {},
                       [other](CProbeEnv& changed) { changed.ChangeVersionTypeOfBnLink(other); });
    ExpectAllOrNothing([](CProbeEnv&) {},
                       [other](CProbeEnv& changed) { changed.ChangeVersionTypeOfRpLink(other); });
}

TEST_P(CBUIDataMngr_SourceChangeFaultTest, ADeletionOfRecordsWithoutMemoryIsDoneOrNotBegunOrLosesTheTables)
{
    const auto change = [](CProbeEnv& changed) { changed.AdjstAccordingToDeleteRec(3, 1000); };
    const std::string before = PictureWithoutSelection(*MakeEnv([](CProbeEnv&) {}));
    const std::unique_ptr<CProbeEnv> changed = MakeEnv(change);
    const std::string done = PictureWithoutSelection(*changed);
    const CSourceDataMngr former(CopyOfTable());
    DeleteRows(3, 1000);
    const CSourceDataMngr latter(CopyOfTable());
    CAllocFault fault;
    fault.FailEachInTurn([&](auto&& attempt) {
        PutBack(former);
        const std::unique_ptr<CProbeEnv> tried = MakeEnv([](CProbeEnv&) {});
        const bool isDone = attempt([&] { change(*tried); });
        if (tried->GetRecCountOfSrcData() == 0) {
            EXPECT_FALSE(isDone);
            PutBack(latter);
            EXPECT_TRUE(tried->AdjstAccordingToInsertRec(0, latter.GetRecCount()));
            EXPECT_EQ(PictureWithoutSelection(*tried), done);
        } else {
            const std::string after = PictureWithoutSelection(*tried);
            EXPECT_TRUE(after == done || (!isDone && after == before));
        }
    });
}

constexpr SCBUICoreCom::ELinkTableVerType VERSIONS[] = {SCBUICoreCom::LINKTBLVERTYPE_ONMEM,
                                                        SCBUICoreCom::LINKTBLVERTYPE_MEMSAV};
INSTANTIATE_TEST_SUITE_P(OnEachVersion, CBUIDataMngr_SourceChangeTest, testing::ValuesIn(VERSIONS));
INSTANTIATE_TEST_SUITE_P(OnEachVersion, CBUIDataMngr_SourceChangeRowsTest, testing::ValuesIn(VERSIONS));
INSTANTIATE_TEST_SUITE_P(OnEachVersion, CBUIDataMngr_SourceChangeGroupsTest, testing::ValuesIn(VERSIONS));
INSTANTIATE_TEST_SUITE_P(OnEachVersion, CBUIDataMngr_SourceChangeFaultTest, testing::ValuesIn(VERSIONS));

} // namespace
