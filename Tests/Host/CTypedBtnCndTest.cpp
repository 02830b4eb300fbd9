#include "CTypedBtnCnd.h"

#include "CCndParser.h"
#include "SCCndText.h"
#include "Support/CTempDir.h"
#include "Support/CTestSumMngr.h"
#include "Support/XMLText.h"

#include <gtest/gtest.h>

namespace NSKZ::Host {

namespace {

using NSKZCore::CXMLReader;
using NSKZCore::CXMLWriter;
using Test::CTestSumMngr;

CTypedBtnCnd MakeCnd()
{
    const std::string text = "amount SUM top 2";
    return {CCndParser::Parse(text, [](const std::string&) { return 7; }), text};
}

} // namespace

TEST(CTypedBtnCnd, EvaluatesAsTheBasicCondition)
{
    const CTypedBtnCnd cnd = MakeCnd();
    const CTestSumMngr sums({{2, 10.0}, {3, 30.0}, {4, 20.0}});
    std::vector<DWORD> result;
    EXPECT_TRUE(cnd.GetBtnIDListThatAppliesToTheCnd(1, {2, 3, 4}, sums, result));
    EXPECT_EQ(result, (std::vector<DWORD>{3, 4}));
    EXPECT_FALSE(cnd.GetBtnIDListThatAppliesToTheCnd(nullptr, sums, result));
    bool applies = false;
    EXPECT_TRUE(cnd.CheckWhetherBtnIDAppliesToTheCnd(1, 2, sums, applies));
    EXPECT_TRUE(applies);
    EXPECT_FALSE(cnd.CheckWhetherBtnIDAppliesToTheCnd(nullptr, 2, sums, applies));
    EXPECT_TRUE(cnd.HasNumDataItem(7));
    EXPECT_FALSE(cnd.HasNumDataItem(8));
}

TEST(CTypedBtnCnd, TheTextGoesWithAClone)
{
    const NSKZCore::BtnCndPtr clone(MakeCnd().CreateClone());
    EXPECT_EQ(SCCndText::Write(*clone, [](DWORD) { return std::string("amount"); }), "amount SUM top 2");
    EXPECT_TRUE(clone->HasNumDataItem(7));
}

TEST(CTypedBtnCnd, WhatIsReadFromXMLHasTheWordsOfItsTree)
{
    const NSKZ::Test::CTempDir dir;
    const std::string path = (dir.GetPath() / "cnd.xml").string();
    {
        CXMLWriter writer(path.c_str());
        EXPECT_TRUE(MakeCnd().WriteSpecByXML("", writer, false));
        EXPECT_TRUE(writer.Close());
    }
    CTypedBtnCnd read = MakeCnd();
    CXMLReader reader(path.c_str());
    EXPECT_EQ(read.ReadSpecByXML("", reader), CXMLReader::READXML_OK);
    EXPECT_EQ(read.GetText(), "");
    EXPECT_EQ(SCCndText::Write(read, [](DWORD) { return std::string("amount"); }), "amount sum top 2");
    // On another element nothing is read, and the text stays.
    CTypedBtnCnd kept = MakeCnd();
    const std::string other = dir.WriteFile("other.xml", "<?xml version=\"1.0\"?><Other/>");
    CXMLReader otherReader(other.c_str());
    EXPECT_EQ(kept.ReadSpecByXML("", otherReader), CXMLReader::READXML_NOELEMENT);
    EXPECT_EQ(kept.GetText(), "amount SUM top 2");
}

} // namespace NSKZ::Host
