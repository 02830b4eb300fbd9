#include "SCCndText.h"

#include "CCndParser.h"
#include "CContainerOfBscBtnCnd.h"
#include "CTypedBtnCnd.h"

#include <gtest/gtest.h>

#include <limits>

namespace NSKZ::Host {

namespace {

using NSKZCore::CBasicBtnCnd;
using NSKZCore::CContainerOfBscBtnCnd;
using NSKZCore::CUnitCndOfBscBtnCnd;
using NSKZCore::SCKZCoreCom;

DWORD FindField(const std::string& word)
{
    return word == "unit price" ? 2 : 1;
}

std::string NameField(DWORD fldID)
{
    return fldID == 1 ? "amount" : fldID == 2 ? "unit price" : "";
}

} // namespace

TEST(SCCndText, WriteGivesWordsThatReadAsTheSameTree)
{
    for (const std::string text :
         {"amount sum top 3", "'unit price' ratio not top 3", "amount count bottom 1",
          "amount average not bottom 7", "amount sum = 0.1", "amount sum != -5", "amount sum > 1e+300",
          "amount sum >= 0.30000000000000004", "amount sum < 100", "amount sum <= 2.5",
          "amount sum top 3 and amount sum > 4 and 'unit price' sum < 5",
          "amount sum top 3 or (amount sum > 4 and ('unit price' sum < 5 or amount count = 2))",
          "(amount sum top 3 or amount sum top 4) and (amount sum top 5 or amount sum top 6)"}) {
        const CBasicBtnCnd cnd = CCndParser::Parse(text, FindField);
        EXPECT_EQ(SCCndText::Write(cnd, NameField), text);
    }
}

TEST(SCCndText, WriteGivesATypedConditionAsItWasTyped)
{
    const std::string text = "NOT (amount sum top 3  or amount sum top 4)";
    const CTypedBtnCnd typed(CCndParser::Parse(text, FindField), text);
    EXPECT_EQ(SCCndText::Write(typed, NameField), text);
}

TEST(SCCndText, WriteHasNoWordsForWhatCannotBeTyped)
{
    EXPECT_EQ(SCCndText::Write(CBasicBtnCnd(), NameField), std::nullopt);
    CUnitCndOfBscBtnCnd unit;
    unit.SetNumID(1);
    EXPECT_EQ(SCCndText::Write(unit, NameField), "amount sum top 1");
    unit.SetNumID(3);
    EXPECT_EQ(SCCndText::Write(unit, NameField), std::nullopt);
    unit.SetNumID(1);
    unit.SetSumMethod(SCCndWords::ESumMethod::Max);
    EXPECT_EQ(SCCndText::Write(unit, NameField), std::nullopt);
    unit.SetSumMethod(SCCndWords::ESumMethod::Sum);
    unit.SetSelCondition(static_cast<SCCndWords::ESelCondition>(9));
    EXPECT_EQ(SCCndText::Write(unit, NameField), std::nullopt);
    unit.SetSelCondition(SCCndWords::ESelCondition::NumCmp_Less);
    unit.SetCmpNum(std::numeric_limits<double>::infinity());
    EXPECT_EQ(SCCndText::Write(unit, NameField), std::nullopt);
    CContainerOfBscBtnCnd container;
    EXPECT_EQ(SCCndText::Write(container, NameField), std::nullopt);
    container.AddCndComponent(unit);
    EXPECT_EQ(SCCndText::Write(container, NameField), std::nullopt);
}

TEST(SCCndText, WriteTakesEveryOtherOperatorForOr)
{
    CContainerOfBscBtnCnd container;
    CUnitCndOfBscBtnCnd unit;
    unit.SetNumID(1);
    container.AddCndComponent(unit);
    container.AddCndComponent(unit);
    container.SetBoolOperator(static_cast<SCKZCoreCom::EBoolOperator>(7));
    EXPECT_EQ(SCCndText::Write(container, NameField), "amount sum top 1 or amount sum top 1");
}

} // namespace NSKZ::Host
