#include "CContainerOfBscBtnCnd.h"

#include "CUnitCndOfBscBtnCnd.h"
#include "ECInaccurateCode.h"
#include "SCBUICoreStrDef.h"
#include "SCKZCoreStrDef.h"
#include "Support/CTempDir.h"
#include "Support/CTestComponent.h"
#include "Support/CTestSumMngr.h"
#include "Support/XMLText.h"

#include <gtest/gtest.h>

#include <memory>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using Container = CContainerOfBscBtnCnd;
using IDs = std::vector<DWORD>;
using Sel = CUnitCndOfBscBtnCnd::ESelCondition;

constexpr auto AND = SCKZCoreCom::BOOLOPERATOR_AND;
constexpr auto OR = SCKZCoreCom::BOOLOPERATOR_OR;

Container MakeContainer(SCKZCoreCom::EBoolOperator boolOperator, const std::vector<IDs>& answers)
{
    Container container;
    container.SetBoolOperator(boolOperator);
    for (const IDs& answer : answers)
        container.AddCndComponent(CTestComponent(answer));
    return container;
}

CUnitCndOfBscBtnCnd MakeUnit(Sel condition, DWORD rankNum)
{
    CUnitCndOfBscBtnCnd unit;
    unit.SetSelCondition(condition);
    EXPECT_TRUE(unit.SetRankNum(rankNum));
    return unit;
}

bool Evaluate(const Container& container, IDs& result)
{
    result = {4711};
    return container.GetBtnIDListThatAppliesToTheCnd(1, {1, 2, 3, 4, 5}, CTestSumMngr(), result);
}

IDs EvaluateToTrue(const Container& container)
{
    IDs result;
    EXPECT_TRUE(Evaluate(container, result));
    return result;
}

std::size_t CountChildren(const Container& container)
{
    DWORD count = 0;
    IComponentOfBscBtnCnd* child = nullptr;
    while (container.GetCndComponentPtr(count, child))
        ++count;
    return count;
}

IComponentOfBscBtnCnd* GetChild(const Container& container, DWORD index)
{
    IComponentOfBscBtnCnd* child = nullptr;
    EXPECT_TRUE(container.GetCndComponentPtr(index, child));
    return child;
}

// A container in a container in a container ..., with a leaf at the end.
std::unique_ptr<Container> Nest(int depth, const IComponentOfBscBtnCnd& leaf)
{
    auto root = std::make_unique<Container>();
    Container* innermost = root.get();
    for (int i = 1; i < depth; ++i) {
        innermost->AddCndComponent(Container());
        innermost = static_cast<Container*>(GetChild(*innermost, 0));
    }
    innermost->AddCndComponent(leaf);
    return root;
}

} // namespace

TEST(CContainerOfBscBtnCnd, BeginsEmptyWithAnd)
{
    const Container container;
    EXPECT_EQ(container.GetBoolOperator(), AND);
    EXPECT_EQ(CountChildren(container), 0u);
    EXPECT_FALSE(container.HasNumDataItem(0));
}

TEST(CContainerOfBscBtnCnd, WithoutChildrenNoButtonApplies)
{
    EXPECT_EQ(EvaluateToTrue(Container()), IDs());
    EXPECT_EQ(EvaluateToTrue(MakeContainer(OR, {})), IDs());
}

TEST(CContainerOfBscBtnCnd, AnOnlyChildsOrderIsKept)
{
    EXPECT_EQ(EvaluateToTrue(MakeContainer(AND, {{5, 1, 3}})), (IDs{5, 1, 3}));
    EXPECT_EQ(EvaluateToTrue(MakeContainer(OR, {{5, 1, 3}})), (IDs{5, 1, 3}));
}

TEST(CContainerOfBscBtnCnd, AndKeepsWhatAllChildrenGive)
{
    EXPECT_EQ(EvaluateToTrue(MakeContainer(AND, {{5, 1, 3}, {3, 2, 5}})), (IDs{3, 5}));
    EXPECT_EQ(EvaluateToTrue(MakeContainer(AND, {{5, 1, 3}, {3, 2, 5}, {5, 4}})), (IDs{5}));
    EXPECT_EQ(EvaluateToTrue(MakeContainer(AND, {{5, 4, 3}, {3, 4, 5}})), (IDs{3, 4, 5}));
}

TEST(CContainerOfBscBtnCnd, EveryOtherOperatorKeepsWhatAnyChildGives)
{
    for (const DWORD value : {2u, 0u, 3u, 4294967295u}) {
        const auto boolOperator = static_cast<SCKZCoreCom::EBoolOperator>(value);
        EXPECT_EQ(EvaluateToTrue(MakeContainer(boolOperator, {{5, 1}, {3, 1}, {}, {2}})), (IDs{1, 2, 3, 5}));
    }
}

TEST(CContainerOfBscBtnCnd, AllChildrenSeeTheWholePopulationAndNoneIsLeftOut)
{
    const CTestComponent none({});
    const CTestComponent some({1});
    Container container;
    container.AddCndComponent(none);
    container.AddCndComponent(some);
    EXPECT_EQ(EvaluateToTrue(container), IDs());
    EXPECT_EQ(some.GetRecord().evaluatedCount, 1);
    EXPECT_EQ(some.GetRecord().population, (IDs{1, 2, 3, 4, 5}));
}

TEST(CContainerOfBscBtnCnd, RankConditionsUnderAndRankInTheFullListEach)
{
    // The three highest are 1, 2, 3 and the three lowest 5, 4, 3; ranked one after the other they would be
    // all of 1, 2, 3.
    const CTestSumMngr sums({{1, 50}, {2, 40}, {3, 30}, {4, 20}, {5, 10}});
    Container container;
    container.AddCndComponent(MakeUnit(Sel::Rank_High, 3));
    container.AddCndComponent(MakeUnit(Sel::Rank_Low, 3));
    IDs result;
    EXPECT_TRUE(container.GetBtnIDListThatAppliesToTheCnd(1, {5, 1, 4, 2, 3}, sums, result));
    EXPECT_EQ(result, (IDs{3}));
    container.SetBoolOperator(OR);
    EXPECT_TRUE(container.GetBtnIDListThatAppliesToTheCnd(1, {5, 1, 4, 2, 3}, sums, result));
    EXPECT_EQ(result, (IDs{1, 2, 3, 4, 5}));
}

TEST(CContainerOfBscBtnCnd, AChildThatFailsEndsTheEvaluationWithWhatStoodUntilThen)
{
    for (const auto& [boolOperator, merged] : {std::pair(AND, IDs{3}), std::pair(OR, IDs{1, 3, 4})}) {
        Container container = MakeContainer(boolOperator, {{3, 1}, {4, 3}});
        container.AddCndComponent(CTestComponent({2}, false));
        const CTestComponent behind({5});
        container.AddCndComponent(behind);
        IDs result;
        EXPECT_FALSE(Evaluate(container, result));
        EXPECT_EQ(result, merged);
        EXPECT_EQ(behind.GetRecord().evaluatedCount, 0);
    }
    Container first;
    first.AddCndComponent(CTestComponent({2, 1}, false));
    IDs result;
    EXPECT_FALSE(Evaluate(first, result));
    EXPECT_EQ(result, (IDs{2, 1}));
}

TEST(CContainerOfBscBtnCnd, AnItemIsAskedForIfAChildAsksForIt)
{
    const Container container = MakeContainer(AND, {{1, 2}, {1, 2, 3, 4}}); // ask for items 2 and 4
    EXPECT_TRUE(container.HasNumDataItem(2));
    EXPECT_TRUE(container.HasNumDataItem(4));
    EXPECT_FALSE(container.HasNumDataItem(3));
}

TEST(CContainerOfBscBtnCnd, ChildrenAreClonesInOrder)
{
    const CTestComponent child({1});
    {
        Container container;
        container.AddCndComponent(child);
        container.AddCndComponent(MakeUnit(Sel::Rank_Low, 1));
        EXPECT_EQ(child.GetRecord().liveCount, 2);
        EXPECT_NE(GetChild(container, 0), &child);
        EXPECT_NE(dynamic_cast<CTestComponent*>(GetChild(container, 0)), nullptr);
        EXPECT_NE(dynamic_cast<CUnitCndOfBscBtnCnd*>(GetChild(container, 1)), nullptr);
        IComponentOfBscBtnCnd* untouched = GetChild(container, 0);
        IComponentOfBscBtnCnd* const before = untouched;
        EXPECT_FALSE(container.GetCndComponentPtr(2, untouched));
        EXPECT_EQ(untouched, before);
    }
    EXPECT_EQ(child.GetRecord().liveCount, 1);
}

TEST(CContainerOfBscBtnCnd, AChildThatIsTakenOutLivesOn)
{
    const CTestComponent child({1});
    Container container = MakeContainer(OR, {{2}});
    container.AddCndComponent(child);
    container.AddCndComponent(CTestComponent({3}));
    const std::unique_ptr<IComponentOfBscBtnCnd> taken(GetChild(container, 1));
    EXPECT_FALSE(container.DeleteCndComponent(3)); // the child count
    EXPECT_FALSE(container.DeleteCndComponent(4294967295));
    EXPECT_EQ(CountChildren(container), 3u);
    EXPECT_TRUE(container.DeleteCndComponent(1));
    EXPECT_EQ(child.GetRecord().liveCount, 2);
    EXPECT_EQ(EvaluateToTrue(container), (IDs{2, 3}));
    container.Clear();
    IDs result;
    EXPECT_TRUE(taken->GetBtnIDListThatAppliesToTheCnd(1, {1}, CTestSumMngr(), result));
    EXPECT_EQ(result, (IDs{1}));
}

TEST(CContainerOfBscBtnCnd, ClearingDestroysTheChildrenAndSetsAnd)
{
    const CTestComponent child({1});
    Container container;
    container.SetBoolOperator(OR);
    container.AddCndComponent(child);
    Container inner;
    inner.AddCndComponent(child);
    container.AddCndComponent(inner);
    inner.Clear();
    EXPECT_EQ(child.GetRecord().liveCount, 3);
    container.Clear();
    EXPECT_EQ(child.GetRecord().liveCount, 1);
    EXPECT_EQ(container.GetBoolOperator(), AND);
    EXPECT_EQ(CountChildren(container), 0u);
}

TEST(CContainerOfBscBtnCnd, CopiesAreDeep)
{
    const CTestComponent child({1});
    Container container = MakeContainer(OR, {{2}});
    Container inner;
    inner.SetBoolOperator(static_cast<SCKZCoreCom::EBoolOperator>(7));
    inner.AddCndComponent(child);
    container.AddCndComponent(inner);
    container.AddCndComponent(CTestComponent({3}));
    const Container copy(container);
    const std::unique_ptr<IComponentOfBscBtnCnd> clone(container.CreateClone());
    Container assigned = MakeContainer(AND, {{9}});
    assigned = container;
    EXPECT_EQ(child.GetRecord().liveCount, 6);
    container.Clear();
    inner.Clear();
    EXPECT_EQ(child.GetRecord().liveCount, 4);
    for (const IComponentOfBscBtnCnd* const component :
         std::vector<const IComponentOfBscBtnCnd*>{&copy, clone.get(), &assigned}) {
        const auto* const each = static_cast<const Container*>(component);
        EXPECT_EQ(EvaluateToTrue(*each), (IDs{1, 2, 3}));
        EXPECT_EQ(each->GetBoolOperator(), OR);
        const auto* const innerOfEach = dynamic_cast<const Container*>(GetChild(*each, 1));
        ASSERT_NE(innerOfEach, nullptr);
        EXPECT_EQ(static_cast<DWORD>(innerOfEach->GetBoolOperator()), 7u);
    }
}

TEST(CContainerOfBscBtnCnd, AssigningItselfOrAPartOfItselfWorks)
{
    Container container = MakeContainer(OR, {{2}});
    container.AddCndComponent(MakeContainer(AND, {{3, 1}}));
    const Container& same = container;
    container = same;
    EXPECT_EQ(EvaluateToTrue(container), (IDs{1, 2, 3}));
    container = static_cast<Container&>(*GetChild(container, 1));
    EXPECT_EQ(EvaluateToTrue(container), (IDs{3, 1}));
    EXPECT_EQ(container.GetBoolOperator(), AND);
}

TEST(CContainerOfBscBtnCnd, AContainerTakesACloneOfItselfAsChild)
{
    Container container = MakeContainer(OR, {{2}, {1}});
    container.AddCndComponent(container);
    ASSERT_EQ(CountChildren(container), 3u);
    EXPECT_EQ(CountChildren(static_cast<Container&>(*GetChild(container, 2))), 2u);
    container.AddCndComponent(*GetChild(container, 0));
    EXPECT_EQ(EvaluateToTrue(container), (IDs{1, 2}));
}

TEST(CContainerOfBscBtnCnd, TenThousandLevelsAreCopiedAndDestroyed)
{
    constexpr int DEPTH = 10000;
    const CTestComponent leaf({1});
    {
        const std::unique_ptr<Container> root = Nest(DEPTH, leaf);
        const Container copy(*root);
        const std::unique_ptr<IComponentOfBscBtnCnd> clone(root->CreateClone());
        Container assigned;
        assigned = copy;
        assigned = *root;
        Container cleared(copy);
        cleared.Clear();
        EXPECT_EQ(leaf.GetRecord().liveCount, 5);
    }
    EXPECT_EQ(leaf.GetRecord().liveCount, 1);
    const std::unique_ptr<Container> root = Nest(2000, leaf);
    EXPECT_EQ(EvaluateToTrue(*root), (IDs{1}));
    EXPECT_TRUE(root->HasNumDataItem(1));
}

// --- XML

namespace {

class CContainerXMLTest : public ::testing::Test
{
protected:
    std::string GetPath() const { return (dir.GetPath() / "a.xml").string(); }
    std::string WriteAndWalk(const Container& container) const
    {
        CXMLWriter writer(GetPath().c_str());
        EXPECT_TRUE(container.WriteSpecByXML("", writer, false));
        EXPECT_TRUE(writer.Close());
        CXMLReader reader(GetPath().c_str());
        return WalkAll(reader);
    }
    CTempDir dir;
};

} // namespace

TEST_F(CContainerXMLTest, ATreeIsWrittenInOrder)
{
    Container container;
    container.SetBoolOperator(OR);
    container.AddCndComponent(MakeUnit(Sel::Rank_Low, 2));
    Container inner;
    inner.AddCndComponent(MakeUnit(Sel::NumCmp_Less, 1));
    container.AddCndComponent(inner);
    container.AddCndComponent(Container());
    EXPECT_EQ(WriteAndWalk(container),
              "BasicContainer boolOperator=Or; "
              ".BasicUnitCondition numID=0 sumMethod=Sum selCondition=Rank_Low rankNum=2; "
              ".BasicContainer boolOperator=And; "
              "..BasicUnitCondition numID=0 sumMethod=Sum selCondition=NumCmp_Less cmpNum=0; "
              ".BasicContainer boolOperator=And; ");
}

TEST_F(CContainerXMLTest, WithoutChildrenItIsAnEmptyElement)
{
    EXPECT_EQ(WriteAndWalk(Container()), "BasicContainer boolOperator=And; ");
    EXPECT_NE(ReadWholeFile(GetPath()).find("/>"), std::string::npos);
}

TEST_F(CContainerXMLTest, ChildrenGetWhatTheContainerWasGivenAndTheirFailureEndsTheWriting)
{
    const CTestComponent good({1});
    const CTestComponent bad({1}, false);
    const CTestComponent behind({1});
    Container container;
    for (const CTestComponent* const child : {&good, &bad, &behind})
        container.AddCndComponent(*child);
    CXMLWriter writer(GetPath().c_str());
    EXPECT_FALSE(container.WriteSpecByXML("folder", writer, true));
    EXPECT_EQ(good.GetRecord().folder, "folder");
    EXPECT_TRUE(good.GetRecord().withData);
    EXPECT_EQ(bad.GetRecord().folder, "folder");
    EXPECT_EQ(behind.GetRecord().folder, "");
}

TEST_F(CContainerXMLTest, AWriterThatFailsGivesFalse)
{
    CXMLWriter writer((dir.GetPath() / "missing" / "a.xml").string().c_str());
    EXPECT_FALSE(Container().WriteSpecByXML("", writer, false));
    EXPECT_FALSE(MakeContainer(OR, {{1}}).WriteSpecByXML("", writer, false));
}

TEST_F(CContainerXMLTest, ATreeDeeperThanADocumentIsRefusedByTheWriter)
{
    CXMLWriter writer(GetPath().c_str());
    EXPECT_FALSE(Nest(10000, CUnitCndOfBscBtnCnd())->WriteSpecByXML("", writer, false));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
}

TEST_F(CContainerXMLTest, AContainerCannotBeRead)
{
    dir.WriteFile("a.xml", "<BasicContainer boolOperator='Or'/>");
    CXMLReader reader(GetPath().c_str());
    Container container = MakeContainer(OR, {{1}});
    try {
        container.ReadSpecByXML("", reader);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const ECInaccurateCode& thrown) {
        EXPECT_STREQ(thrown.GetKind(), SCKZCoreStrDef::MES_EXCEP_INACCURATECODE);
        EXPECT_STREQ(thrown.GetMessageText(), SCBUICoreStrDef::MSG_NOT_IMPLEMENTED);
        EXPECT_STREQ(thrown.GetFile(), "Src/CContainerOfBscBtnCnd");
        EXPECT_STREQ(thrown.GetFunction(), "NSKZ::NSKZCore::CContainerOfBscBtnCnd::ReadSpecByXML");
    }
    EXPECT_EQ(CountChildren(container), 0u);
    EXPECT_EQ(container.GetBoolOperator(), AND);
}

TEST_F(CContainerXMLTest, OnAnotherElementNothingIsChanged)
{
    dir.WriteFile("a.xml", "<BasicContainers/>");
    CXMLReader reader(GetPath().c_str());
    Container container = MakeContainer(OR, {{1}});
    EXPECT_EQ(container.ReadSpecByXML("", reader), CXMLReader::READXML_NOELEMENT);
    EXPECT_EQ(CountChildren(container), 1u);
    EXPECT_EQ(container.GetBoolOperator(), OR);
}

TEST(CContainerOfBscBtnCnd, TheElementIsKnownByItsExactName)
{
    EXPECT_TRUE(Container::CompareElementName("BasicContainer", 14));
    EXPECT_FALSE(Container::CompareElementName("BasicContainer", 13));
    EXPECT_FALSE(Container::CompareElementName("basicContainer", 14));
}
