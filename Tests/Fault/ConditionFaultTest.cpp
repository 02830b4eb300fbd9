#include "CBasicBtnCnd.h"
#include "CContainerOfBscBtnCnd.h"
#include "CUnitCndOfBscBtnCnd.h"
#include "CXMLReader.h"
#include "CXMLWriter.h"
#include "Support/CAllocFault.h"
#include "Support/CTempDir.h"
#include "Support/CTestSumMngr.h"
#include "Support/XMLText.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

// Every allocation of changing, evaluating, saving and reading a condition fails in turn.

namespace NSKZ::Test {
namespace {

using namespace NSKZCore;

using IDs = std::vector<DWORD>;
using Sel = CUnitCndOfBscBtnCnd::ESelCondition;

CUnitCndOfBscBtnCnd MakeUnit(Sel condition, DWORD numID)
{
    CUnitCndOfBscBtnCnd unit;
    unit.SetNumID(numID);
    unit.SetSelCondition(condition);
    unit.SetRankNum(3);
    return unit;
}

// A tree of three levels that asks for the items from `firstItem` on.
CContainerOfBscBtnCnd MakeTree(DWORD firstItem)
{
    CContainerOfBscBtnCnd inner;
    inner.SetBoolOperator(SCKZCoreCom::BOOLOPERATOR_OR);
    inner.AddCndComponent(MakeUnit(Sel::Rank_High, firstItem));
    inner.AddCndComponent(MakeUnit(Sel::NumCmp_Greater, firstItem + 1));
    CContainerOfBscBtnCnd tree;
    tree.AddCndComponent(inner);
    tree.AddCndComponent(MakeUnit(Sel::Rank_LowExcept, firstItem + 2));
    tree.AddCndComponent(inner);
    return tree;
}

const CTestSumMngr& GetSums()
{
    static const CTestSumMngr sums({{1, 10}, {2, 20}, {3, 20}, {4, -5}, {5, 0}, {6, 40}, {7, 1}, {8, 20}});
    return sums;
}

const IDs POPULATION = {1, 2, 3, 4, 5, 6, 7, 8};

IDs Evaluate(const IComponentOfBscBtnCnd& component)
{
    IDs result;
    EXPECT_TRUE(component.GetBtnIDListThatAppliesToTheCnd(1, POPULATION, GetSums(), result));
    return result;
}

TEST(ConditionFault, AContainerThatCannotChangeForLackOfMemoryStaysAsItWas)
{
    const CContainerOfBscBtnCnd other = MakeTree(20);
    const IDs before = Evaluate(MakeTree(10));
    const auto prepare = [] { return std::make_unique<CContainerOfBscBtnCnd>(MakeTree(10)); };
    using Subject = std::unique_ptr<CContainerOfBscBtnCnd>;
    const auto prove = [&](const Subject& container) {
        EXPECT_TRUE(container->HasNumDataItem(10));
        EXPECT_FALSE(container->HasNumDataItem(20));
        EXPECT_EQ(container->GetBoolOperator(), SCKZCoreCom::BOOLOPERATOR_AND);
        EXPECT_EQ(Evaluate(*container), before);
        IComponentOfBscBtnCnd* child = nullptr;
        EXPECT_TRUE(container->GetCndComponentPtr(2, child));
        EXPECT_FALSE(container->GetCndComponentPtr(3, child));
    };
    EXPECT_GE(FailEveryAllocation(
                  prepare, [&](Subject& container) { container->AddCndComponent(other); }, prove),
              8);
    EXPECT_GE(FailEveryAllocation(
                  prepare, [&](Subject& container) { container->AddCndComponent(*container); }, prove),
              8);
    EXPECT_GE(FailEveryAllocation(
                  prepare, [&](Subject& container) { *container = other; }, prove),
              8);
    EXPECT_GE(FailEveryAllocation(
                  prepare,
                  [&](Subject& container) {
                      const std::unique_ptr<IComponentOfBscBtnCnd> clone(container->CreateClone());
                  },
                  prove),
              8);
}

TEST(ConditionFault, AConditionThatCannotChangeForLackOfMemoryStaysAsItWas)
{
    const CContainerOfBscBtnCnd otherTree = MakeTree(20);
    CBasicBtnCnd other;
    other.SetCndComponent(otherTree);
    using Subject = std::unique_ptr<CBasicBtnCnd>;
    const auto prepare = [] {
        auto cnd = std::make_unique<CBasicBtnCnd>();
        cnd->SetCndComponent(MakeTree(10));
        return cnd;
    };
    const auto prove = [](const Subject& cnd) {
        EXPECT_TRUE(cnd->HasNumDataItem(10));
        EXPECT_FALSE(cnd->HasNumDataItem(20));
    };
    EXPECT_GE(FailEveryAllocation(
                  prepare, [&](Subject& cnd) { cnd->SetCndComponent(otherTree); }, prove),
              8);
    EXPECT_GE(FailEveryAllocation(
                  prepare, [&](Subject& cnd) { *cnd = other; }, prove),
              8);
    EXPECT_GE(FailEveryAllocation(
                  prepare,
                  [&](Subject& cnd) {
                      const BtnCndPtr clone(cnd->CreateClone());
                      EXPECT_TRUE(clone->HasNumDataItem(10));
                  },
                  prove),
              8);
}

TEST(ConditionFault, AnEvaluationThatRunsOutOfMemoryLeavesNothingBehind)
{
    CBasicBtnCnd cnd;
    cnd.SetCndComponent(MakeTree(10));
    IDs expected;
    ASSERT_TRUE(cnd.GetBtnIDListThatAppliesToTheCnd(1, POPULATION, GetSums(), expected));
    EXPECT_GE(FailEveryAllocation([] { return IDs(); },
                                  [&](IDs& result) {
                                      EXPECT_TRUE(cnd.GetBtnIDListThatAppliesToTheCnd(1, POPULATION,
                                                                                      GetSums(), result));
                                      EXPECT_EQ(result, expected);
                                  },
                                  [](const IDs&) {}),
              8);
    EXPECT_GE(FailEveryAllocation([] { return true; },
                                  [&](bool& applies) {
                                      EXPECT_TRUE(
                                          cnd.CheckWhetherBtnIDAppliesToTheCnd(1, 2, GetSums(), applies));
                                  },
                                  [](bool applies) { EXPECT_TRUE(applies); }),
              4);
}

TEST(ConditionFault, AnEvaluationAsksForMemoryByTheListAndNotByTheButton)
{
    const CUnitCndOfBscBtnCnd unit = MakeUnit(Sel::Rank_High, 1);
    CTestSumMngr sums;
    IDs btnIDs;
    for (DWORD btnID = 1; btnID <= 10000; ++btnID) {
        sums.values[btnID] = btnID % 977;
        btnIDs.push_back(btnID);
    }
    IDs result;
    CAllocFault fault;
    fault.Arm(0); // counts
    EXPECT_TRUE(unit.GetBtnIDListThatAppliesToTheCnd(1, btnIDs, sums, result));
    EXPECT_LE(fault.GetAllocCount(), 5u); // the buttons, their worths, their ranking in two steps, the result
    EXPECT_EQ(result.size(), 10u);        // 976 stands ten times
}

TEST(ConditionFault, SavingAndReadingThatRunOutOfMemoryLeaveNothingBehind)
{
    const CTempDir dir;
    const std::string path = (dir.GetPath() / "a.xml").string();
    CBasicBtnCnd cnd;
    cnd.SetCndComponent(MakeUnit(Sel::NumCmp_Less, 10));
    EXPECT_GE(FailEveryAllocation([] { return 0; },
                                  [&](int) {
                                      CXMLWriter writer(path.c_str());
                                      EXPECT_TRUE(cnd.WriteSpecByXML("", writer, false));
                                      EXPECT_TRUE(writer.Close());
                                  },
                                  [](int) {}),
              4);
    EXPECT_GE(FailEveryAllocation([] { return CBasicBtnCnd(); },
                                  [&](CBasicBtnCnd& read) {
                                      CXMLReader reader(path.c_str());
                                      EXPECT_EQ(read.ReadSpecByXML("", reader), CXMLReader::READXML_OK);
                                      EXPECT_TRUE(read.HasNumDataItem(10));
                                  },
                                  [](const CBasicBtnCnd&) {}),
              10);
}

} // namespace
} // namespace NSKZ::Test
