#include "CBasicBtnCnd.h"

#include "CBtnClass.h"
#include "CBUIDataMngr.h"
#include "CContainerOfBscBtnCnd.h"
#include "CCoreSumMngr.h"
#include "CRpLink_OnMemVer.h"
#include "CUnitCndOfBscBtnCnd.h"
#include "ECInaccurateCode.h"
#include "Support/CTempDir.h"
#include "Support/CTestComponent.h"
#include "Support/CTestSumMngr.h"
#include "Support/MakeTable.h"
#include "Support/XMLText.h"

#include <gtest/gtest.h>

#include <memory>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using IDs = std::vector<DWORD>;
using Sel = CUnitCndOfBscBtnCnd::ESelCondition;
using Method = SCBUICoreCom::ESumMethodForCnd;

CUnitCndOfBscBtnCnd MakeUnit(Sel condition, DWORD rankNum = 1, double cmpNum = 0, DWORD numID = 2,
                             Method method = Method::Sum)
{
    CUnitCndOfBscBtnCnd unit;
    unit.SetNumID(numID);
    unit.SetSelCondition(condition);
    EXPECT_TRUE(unit.SetRankNum(rankNum));
    unit.SetCmpNum(cmpNum);
    EXPECT_TRUE(unit.SetSumMethod(method));
    return unit;
}

CBasicBtnCnd MakeCnd(const IComponentOfBscBtnCnd& component)
{
    CBasicBtnCnd cnd;
    cnd.SetCndComponent(component);
    return cnd;
}

bool IsEmpty(const CBasicBtnCnd& cnd)
{
    const IComponentOfBscBtnCnd* component = nullptr;
    return !cnd.GetCndComponent(component);
}

template <class T>
const T* GetHeld(const CBasicBtnCnd& cnd)
{
    const IComponentOfBscBtnCnd* component = nullptr;
    return cnd.GetCndComponent(component) ? dynamic_cast<const T*>(component) : nullptr;
}

// An environment over a table, and a class like its own one of shops.
//
// shop: a b a c (empty) a d; amount: 1 -10 2 (empty) 5 4 7: the buttons are worth 2 (a) 7, 3 (b) -10, 4 (c)
// nothing, 1 (empty) 5, 5 (d) 7. The kinds x (2) and y (3).
class CBasicBtnCndTest : public ::testing::Test
{
protected:
    static constexpr DWORD SHOP = 1;
    static constexpr DWORD AMOUNT = 2;
    static constexpr DWORD KIND = 3;

    CBasicBtnCndTest()
        : table(MakeTable({{"shop", TEXT, {"a", "b", "a", "c", "", "a", "d"}},
                           {"amount", NUM, {"1", "-10", "2", "", "5", "4", "7"}},
                           {"kind", TEXT, {"x", "x", "y", "y", "x", "y", "x"}}})),
          sums(table), env(1, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, SCBUICoreCom::LINKTBLVERTYPE_ONMEM, table,
                           &sums, nullptr),
          cache(env.GetSumValueCacheMngrObjRef()), rpLink(std::make_unique<CRpLink_OnMemVer>()),
          shop(SHOP, SHOP, "", nullptr, rpLink)
    {
        const char* const values[] = {"a", "b", "a", "c", "", "a", "d"};
        DWORD cells[7];
        TCBtnIDAssArr<DWORD> counts;
        shop.AddRecs(0, 7, values, cells, counts);
    }

    const VCBtnClass* GetShop() const { return &shop; }
    IDs EvaluateShop(const CBasicBtnCnd& cnd) const
    {
        IDs result;
        EXPECT_TRUE(cnd.GetBtnIDListThatAppliesToTheCnd(GetShop(), cache, result));
        return result;
    }
    std::string GetPath() const { return (dir.GetPath() / "a.xml").string(); }

    CSourceDataMngr table;
    CCoreSumMngr sums;
    CBUIDataMngr env;
    const CSumValueCacheMngr& cache;
    std::unique_ptr<IRpLink> rpLink;
    CBtnClass shop;
    CTempDir dir;
};

} // namespace

// --- Holding

TEST_F(CBasicBtnCndTest, AnEmptyConditionAnswersFalseAndTouchesNothing)
{
    const CBasicBtnCnd cnd;
    IDs result = {4711};
    bool applies = true;
    EXPECT_FALSE(cnd.GetBtnIDListThatAppliesToTheCnd(SHOP, {1, 2}, cache, result));
    EXPECT_FALSE(cnd.GetBtnIDListThatAppliesToTheCnd(GetShop(), cache, result));
    EXPECT_FALSE(cnd.CheckWhetherBtnIDAppliesToTheCnd(SHOP, 2, cache, applies));
    EXPECT_FALSE(cnd.CheckWhetherBtnIDAppliesToTheCnd(GetShop(), 2, cache, applies));
    EXPECT_EQ(result, (IDs{4711}));
    EXPECT_TRUE(applies);
    EXPECT_FALSE(cnd.HasNumDataItem(0));
    const CUnitCndOfBscBtnCnd unit = MakeUnit(Sel::Rank_High);
    const IComponentOfBscBtnCnd* component = &unit;
    EXPECT_FALSE(cnd.GetCndComponent(component));
    EXPECT_EQ(component, &unit);
}

TEST_F(CBasicBtnCndTest, AConditionHoldsACloneUntilTheNext)
{
    const CTestComponent first({1});
    const CTestComponent second({2, 3});
    CBasicBtnCnd cnd = MakeCnd(first);
    EXPECT_EQ(first.GetRecord().liveCount, 2);
    EXPECT_NE(GetHeld<CTestComponent>(cnd), &first);
    cnd.SetCndComponent(second);
    EXPECT_EQ(first.GetRecord().liveCount, 1);
    EXPECT_TRUE(cnd.HasNumDataItem(2));
    EXPECT_FALSE(cnd.HasNumDataItem(1));
    cnd.Clear();
    EXPECT_EQ(second.GetRecord().liveCount, 1);
    EXPECT_TRUE(IsEmpty(cnd));
    cnd.Clear();
    EXPECT_TRUE(IsEmpty(cnd));
}

TEST_F(CBasicBtnCndTest, WhatIsHeldOrAPartOfItCanBeSet)
{
    CContainerOfBscBtnCnd container;
    container.AddCndComponent(MakeUnit(Sel::Rank_Low, 7));
    CBasicBtnCnd cnd = MakeCnd(container);
    cnd.SetCndComponent(*GetHeld<CContainerOfBscBtnCnd>(cnd));
    ASSERT_NE(GetHeld<CContainerOfBscBtnCnd>(cnd), nullptr);
    IComponentOfBscBtnCnd* part = nullptr;
    ASSERT_TRUE(GetHeld<CContainerOfBscBtnCnd>(cnd)->GetCndComponentPtr(0, part));
    cnd.SetCndComponent(*part);
    ASSERT_NE(GetHeld<CUnitCndOfBscBtnCnd>(cnd), nullptr);
    EXPECT_EQ(GetHeld<CUnitCndOfBscBtnCnd>(cnd)->GetRankNum(), 7u);
}

TEST_F(CBasicBtnCndTest, CopiesAreDeepAndEmptyOnesEmpty)
{
    const CTestComponent component({1});
    CBasicBtnCnd cnd = MakeCnd(component);
    CBasicBtnCnd copy(cnd);
    CBasicBtnCnd assigned;
    assigned = cnd;
    BtnCndPtr clone(cnd.CreateClone());
    EXPECT_EQ(component.GetRecord().liveCount, 5);
    const CBasicBtnCnd& same = assigned;
    assigned = same;
    EXPECT_EQ(component.GetRecord().liveCount, 5);
    cnd.Clear();
    EXPECT_TRUE(clone->HasNumDataItem(1));
    EXPECT_TRUE(assigned.HasNumDataItem(1));
    clone.reset(); // through Destroy
    EXPECT_EQ(component.GetRecord().liveCount, 3);

    EXPECT_TRUE(IsEmpty(CBasicBtnCnd(cnd)));
    copy = cnd;
    EXPECT_TRUE(IsEmpty(copy));
    const BtnCndPtr emptyClone(cnd.CreateClone());
    EXPECT_TRUE(IsEmpty(dynamic_cast<const CBasicBtnCnd&>(*emptyClone)));
}

TEST_F(CBasicBtnCndTest, AVeryDeepTreeIsCopiedAndDestroyed)
{
    CContainerOfBscBtnCnd root;
    CContainerOfBscBtnCnd* innermost = &root;
    for (int i = 0; i < 10000; ++i) {
        innermost->AddCndComponent(CContainerOfBscBtnCnd());
        IComponentOfBscBtnCnd* child = nullptr;
        ASSERT_TRUE(innermost->GetCndComponentPtr(0, child));
        innermost = static_cast<CContainerOfBscBtnCnd*>(child);
    }
    CBasicBtnCnd cnd = MakeCnd(root);
    const BtnCndPtr clone(cnd.CreateClone());
    cnd = CBasicBtnCnd();
    EXPECT_FALSE(IsEmpty(dynamic_cast<const CBasicBtnCnd&>(*clone)));
}

// --- Evaluation

TEST_F(CBasicBtnCndTest, TheTreeGetsTheListAndTheAnswerIsItsOwn)
{
    const CTestComponent component({3, 1});
    const CBasicBtnCnd cnd = MakeCnd(component);
    IDs result;
    EXPECT_TRUE(cnd.GetBtnIDListThatAppliesToTheCnd(SHOP, {5, 3, 1}, cache, result));
    EXPECT_EQ(result, (IDs{3, 1}));
    EXPECT_EQ(component.GetRecord().population, (IDs{5, 3, 1}));
    EXPECT_FALSE(
        MakeCnd(CTestComponent({4}, false)).GetBtnIDListThatAppliesToTheCnd(SHOP, {1}, cache, result));
    EXPECT_EQ(result, (IDs{4}));
}

TEST_F(CBasicBtnCndTest, ANullClassIsFalse)
{
    const CBasicBtnCnd cnd = MakeCnd(CTestComponent({1}));
    IDs result = {4711};
    bool applies = false;
    EXPECT_FALSE(cnd.GetBtnIDListThatAppliesToTheCnd(nullptr, cache, result));
    EXPECT_FALSE(cnd.CheckWhetherBtnIDAppliesToTheCnd(nullptr, 1, cache, applies));
    EXPECT_EQ(result, (IDs{4711}));
    EXPECT_FALSE(applies);
}

TEST_F(CBasicBtnCndTest, AClassStandsForItsDisplayedButtons)
{
    const CTestComponent component({});
    EXPECT_EQ(EvaluateShop(MakeCnd(component)), IDs());
    EXPECT_EQ(component.GetRecord().population, (IDs{1, 2, 3, 4, 5}));
    shop.SetVisibleInfoBasedOnRelationOfAllBtns(false);
    EXPECT_TRUE(shop.PutVisibleInfoBasedOnRelationOfBtns({2, 4}));
    EXPECT_EQ(EvaluateShop(MakeCnd(component)), IDs());
    EXPECT_EQ(component.GetRecord().population, (IDs{2, 4}));
}

TEST_F(CBasicBtnCndTest, ButtonsAreRankedByTheSumsOfTheEnvironment)
{
    EXPECT_EQ(EvaluateShop(MakeCnd(MakeUnit(Sel::Rank_High, 1))), (IDs{5, 2})); // a tie
    EXPECT_EQ(EvaluateShop(MakeCnd(MakeUnit(Sel::Rank_LowExcept, 2))), (IDs{1, 2, 5}));
    EXPECT_EQ(EvaluateShop(MakeCnd(MakeUnit(Sel::NumCmp_GreaterEqual, 1, 5))), (IDs{1, 2, 5}));
    EXPECT_TRUE(env.SelectTheBtn(KIND, 3, true)); // of a 6 remains
    EXPECT_EQ(EvaluateShop(MakeCnd(MakeUnit(Sel::NumCmp_Equal, 1, 6))), (IDs{2}));
}

TEST_F(CBasicBtnCndTest, AnAverageOverNothingRanksAmongTheZeros)
{
    // c has no number: its average is NaN.
    EXPECT_EQ(EvaluateShop(MakeCnd(MakeUnit(Sel::Rank_Low, 2, 0, AMOUNT, Method::Average))), (IDs{3, 4}));
    EXPECT_EQ(EvaluateShop(MakeCnd(MakeUnit(Sel::NumCmp_Equal, 1, 0, AMOUNT, Method::Average))), (IDs{4}));
}

TEST_F(CBasicBtnCndTest, CountsAndRatiosComeFromTheEnvironment)
{
    EXPECT_EQ(EvaluateShop(MakeCnd(MakeUnit(Sel::NumCmp_Equal, 1, 3, AMOUNT, Method::Count))), (IDs{2}));
    EXPECT_EQ(EvaluateShop(MakeCnd(MakeUnit(Sel::NumCmp_Less, 1, 0, AMOUNT, Method::Ratio))), (IDs{3}));
}

TEST_F(CBasicBtnCndTest, WhatTheEnvironmentDoesNotAnswerFails)
{
    IDs result;
    for (const Method method :
         {Method::WeightedAvg, Method::Max, Method::Min, Method::Latest, Method::Absolute, Method::CountCell})
        EXPECT_FALSE(MakeCnd(MakeUnit(Sel::Rank_High, 1, 0, AMOUNT, method))
                         .GetBtnIDListThatAppliesToTheCnd(GetShop(), cache, result));
    // An item that cannot be summed: ranks give all, comparisons none.
    EXPECT_EQ(EvaluateShop(MakeCnd(MakeUnit(Sel::Rank_High, 1, 0, 99))), (IDs{1, 2, 3, 4, 5}));
    EXPECT_EQ(EvaluateShop(MakeCnd(MakeUnit(Sel::NumCmp_NotEqual, 1, 0, 99))), IDs());
}

TEST_F(CBasicBtnCndTest, OneButtonIsItsOwnPopulation)
{
    for (DWORD btnID = 1; btnID <= 5; ++btnID) {
        for (const auto& [condition, expected] :
             {std::pair(Sel::Rank_High, true), std::pair(Sel::Rank_Low, true),
              std::pair(Sel::Rank_HighExcept, false), std::pair(Sel::Rank_LowExcept, false),
              std::pair(Sel::NumCmp_Greater, btnID == 1 || btnID == 2 || btnID == 5)}) {
            const CBasicBtnCnd cnd = MakeCnd(MakeUnit(condition));
            bool applies = !expected;
            EXPECT_TRUE(cnd.CheckWhetherBtnIDAppliesToTheCnd(SHOP, btnID, cache, applies));
            EXPECT_EQ(applies, expected);
            applies = !expected;
            EXPECT_TRUE(cnd.CheckWhetherBtnIDAppliesToTheCnd(GetShop(), btnID, cache, applies));
            EXPECT_EQ(applies, expected);
        }
    }
    bool applies = true;
    EXPECT_FALSE(
        MakeCnd(CTestComponent({}, false)).CheckWhetherBtnIDAppliesToTheCnd(SHOP, 1, cache, applies));
    EXPECT_TRUE(applies);
}

// --- XML

namespace {

class CBasicBtnCndXMLTest : public CBasicBtnCndTest
{
protected:
    std::string WriteAndWalk(const CBasicBtnCnd& cnd) const
    {
        CXMLWriter writer(GetPath().c_str());
        EXPECT_TRUE(cnd.WriteSpecByXML("", writer, false));
        EXPECT_TRUE(writer.Close());
        CXMLReader reader(GetPath().c_str());
        return WalkAll(reader);
    }

    // Reads the first child of a document, and puts in `next` what the reader is on one sibling further.
    CXMLReader::EMthRetOfReadXML Read(std::string_view document, CBasicBtnCnd& cnd, std::string& next) const
    {
        dir.WriteFile("a.xml", document);
        CXMLReader reader(GetPath().c_str());
        EXPECT_EQ(reader.SeekToStartTagOfFirstChildElement(), CXMLReader::READXML_OK);
        const CXMLReader::EMthRetOfReadXML result = cnd.ReadSpecByXML("", reader);
        next = reader.SeekToStartTagOfNextSiblingElement() == CXMLReader::READXML_OK ? Current(reader) : "";
        return result;
    }
};

constexpr const char* UNIT_ELEMENT =
    "<BasicUnitCondition numID='2' sumMethod='Average' selCondition='Rank_Low' rankNum='4'/>";

} // namespace

TEST_F(CBasicBtnCndXMLTest, AnEmptyConditionIsAnEmptyElementAndReadBackEmpty)
{
    EXPECT_EQ(WriteAndWalk(CBasicBtnCnd()), "BtnCondition type=Basic; ");
    EXPECT_NE(ReadWholeFile(GetPath()).find("/>"), std::string::npos);
    CXMLReader reader(GetPath().c_str());
    CBasicBtnCnd cnd = MakeCnd(MakeUnit(Sel::Rank_High));
    EXPECT_EQ(cnd.ReadSpecByXML("", reader), CXMLReader::READXML_OK);
    EXPECT_TRUE(IsEmpty(cnd));
}

TEST_F(CBasicBtnCndXMLTest, AUnitConditionComesBackThroughAFile)
{
    const CBasicBtnCnd cnd = MakeCnd(MakeUnit(Sel::NumCmp_LessEqual, 1, -2.5, 4294967295, Method::Ratio));
    {
        CXMLWriter writer(GetPath().c_str());
        EXPECT_TRUE(PutStart(writer, "Root"));
        EXPECT_TRUE(cnd.WriteSpecByXML("", writer, true));
        EXPECT_TRUE(PutEmpty(writer, "Next"));
        EXPECT_TRUE(PutEnd(writer, "Root"));
        EXPECT_TRUE(writer.Close());
    }
    CXMLReader reader(GetPath().c_str());
    EXPECT_EQ(reader.SeekToStartTagOfFirstChildElement(), CXMLReader::READXML_OK);
    CBasicBtnCnd read;
    EXPECT_EQ(read.ReadSpecByXML("", reader), CXMLReader::READXML_OK);
    const auto* const unit = GetHeld<CUnitCndOfBscBtnCnd>(read);
    ASSERT_NE(unit, nullptr);
    EXPECT_EQ(unit->GetNumID(), 4294967295u);
    EXPECT_EQ(unit->GetSumMethod(), Method::Ratio);
    EXPECT_EQ(unit->GetSelCondition(), Sel::NumCmp_LessEqual);
    EXPECT_EQ(unit->GetCmpNum(), -2.5);
    EXPECT_EQ(reader.SeekToStartTagOfNextSiblingElement(), CXMLReader::READXML_OK);
    EXPECT_EQ(Current(reader), "Next");
}

TEST_F(CBasicBtnCndXMLTest, TheTypeIsNotLookedAt)
{
    CBasicBtnCnd cnd;
    std::string next;
    EXPECT_EQ(Read(std::string("<r><BtnCondition type='Other'>") + UNIT_ELEMENT + "</BtnCondition><n/></r>",
                   cnd, next),
              CXMLReader::READXML_OK);
    EXPECT_EQ(GetHeld<CUnitCndOfBscBtnCnd>(cnd)->GetRankNum(), 4u);
    EXPECT_EQ(next, "n");
}

TEST_F(CBasicBtnCndXMLTest, OnlyTheFirstChildIsRead)
{
    CBasicBtnCnd cnd;
    std::string next;
    EXPECT_EQ(Read(std::string("<r><BtnCondition>") + UNIT_ELEMENT +
                       "<BasicContainer><x/></BasicContainer></BtnCondition><n/></r>",
                   cnd, next),
              CXMLReader::READXML_OK);
    EXPECT_NE(GetHeld<CUnitCndOfBscBtnCnd>(cnd), nullptr);
    EXPECT_EQ(next, "n");
}

TEST_F(CBasicBtnCndXMLTest, AnUnknownChildLeavesTheConditionEmpty)
{
    CBasicBtnCnd cnd = MakeCnd(MakeUnit(Sel::Rank_High));
    std::string next;
    EXPECT_EQ(Read(std::string("<r><BtnCondition><Unknown/>") + UNIT_ELEMENT + "</BtnCondition><n/></r>", cnd,
                   next),
              CXMLReader::READXML_BADFORMAT);
    EXPECT_TRUE(IsEmpty(cnd));
    EXPECT_EQ(next, "n");
}

TEST_F(CBasicBtnCndXMLTest, AChildThatIsNotAsItShouldBeStaysAsFarAsItWasRead)
{
    CBasicBtnCnd cnd;
    std::string next;
    EXPECT_EQ(Read("<r><BtnCondition><BasicUnitCondition numID='6' sumMethod='Max'/></BtnCondition><n/></r>",
                   cnd, next),
              CXMLReader::READXML_BADFORMAT);
    ASSERT_NE(GetHeld<CUnitCndOfBscBtnCnd>(cnd), nullptr);
    EXPECT_EQ(GetHeld<CUnitCndOfBscBtnCnd>(cnd)->GetNumID(), 6u);
    EXPECT_EQ(GetHeld<CUnitCndOfBscBtnCnd>(cnd)->GetSumMethod(), Method::Max);
    EXPECT_EQ(next, "n");
}

TEST_F(CBasicBtnCndXMLTest, ADocumentThatBreaksOffIsAFailure)
{
    CBasicBtnCnd cnd;
    std::string next;
    EXPECT_EQ(Read(std::string("<r><BtnCondition>") + UNIT_ELEMENT, cnd, next), CXMLReader::READXML_FAILURE);
    EXPECT_NE(GetHeld<CUnitCndOfBscBtnCnd>(cnd), nullptr);
    EXPECT_EQ(Read("<r><BtnCondition><Unknown>", cnd, next), CXMLReader::READXML_FAILURE);
    // Before the first child it is the seeking that fails.
    EXPECT_EQ(Read("<r><BtnCondition>", cnd, next), CXMLReader::READXML_SEEKFAILURE);
    EXPECT_TRUE(IsEmpty(cnd));
}

TEST_F(CBasicBtnCndXMLTest, AnotherElementChangesNothing)
{
    CBasicBtnCnd cnd = MakeCnd(MakeUnit(Sel::Rank_High));
    std::string next;
    EXPECT_EQ(Read("<r><btnCondition/><n/></r>", cnd, next), CXMLReader::READXML_NOELEMENT);
    EXPECT_FALSE(IsEmpty(cnd));
    EXPECT_EQ(next, "n");
    CXMLReader nowhere("/no/such/file");
    EXPECT_EQ(cnd.ReadSpecByXML("", nowhere), CXMLReader::READXML_NOELEMENT);
    EXPECT_FALSE(IsEmpty(cnd));
}

TEST_F(CBasicBtnCndXMLTest, AContainerIsWrittenButNotRead)
{
    CContainerOfBscBtnCnd container;
    container.AddCndComponent(MakeUnit(Sel::Rank_Low, 3));
    EXPECT_EQ(WriteAndWalk(MakeCnd(container)),
              "BtnCondition type=Basic; .BasicContainer boolOperator=And; "
              "..BasicUnitCondition numID=2 sumMethod=Sum selCondition=Rank_Low rankNum=3; ");
    CXMLReader reader(GetPath().c_str());
    CBasicBtnCnd cnd = MakeCnd(MakeUnit(Sel::Rank_High));
    EXPECT_THROW(cnd.ReadSpecByXML("", reader), ECInaccurateCode);
    const auto* const held = GetHeld<CContainerOfBscBtnCnd>(cnd);
    ASSERT_NE(held, nullptr);
    IComponentOfBscBtnCnd* child = nullptr;
    EXPECT_FALSE(held->GetCndComponentPtr(0, child));
}

TEST_F(CBasicBtnCndXMLTest, WritingTellsOfAWriterOrAChildThatFails)
{
    CXMLWriter failing((dir.GetPath() / "missing" / "a.xml").string().c_str());
    EXPECT_FALSE(CBasicBtnCnd().WriteSpecByXML("", failing, false));
    EXPECT_FALSE(MakeCnd(MakeUnit(Sel::Rank_High)).WriteSpecByXML("", failing, false));
    const CTestComponent child({1}, false);
    CXMLWriter writer(GetPath().c_str());
    EXPECT_FALSE(MakeCnd(child).WriteSpecByXML("folder", writer, true));
    EXPECT_EQ(child.GetRecord().folder, "folder");
    EXPECT_TRUE(child.GetRecord().withData);
}

TEST_F(CBasicBtnCndXMLTest, TheTypeIsKnownByItsExactWord)
{
    EXPECT_TRUE(CBasicBtnCnd::CompareBtnCndTypeAttributeValue("Basics", 5));
    EXPECT_FALSE(CBasicBtnCnd::CompareBtnCndTypeAttributeValue("Basics", 6));
    EXPECT_FALSE(CBasicBtnCnd::CompareBtnCndTypeAttributeValue("basic", 5));
}
