#include "SCNameWord.h"

#include "ECCommandError.h"

#include <gtest/gtest.h>

namespace NSKZ::Host {

namespace {

std::string ErrorOf(const std::vector<std::string>& words, DWORD recCount)
{
    try {
        SCNameWord::ReadRecords(words, recCount);
    } catch (const ECCommandError& error) {
        return error.what();
    }
    return {};
}

} // namespace

TEST(SCNameWord, ReadTakesTheMarkWithDigitsForAnIdentifier)
{
    const SCNameWord::SNameWord name = SCNameWord::Read("#12", '#');
    EXPECT_TRUE(name.isID);
    EXPECT_EQ(name.id, 12u);
    EXPECT_EQ(SCNameWord::Read("@4294967295", '@').id, 4294967295u);
}

TEST(SCNameWord, ReadMakesOfANumberThatFitsNoIdentifierOneThatNothingHas)
{
    const SCNameWord::SNameWord name = SCNameWord::Read("#4294967296", '#');
    EXPECT_TRUE(name.isID);
    EXPECT_EQ(name.id, 0u);
}

TEST(SCNameWord, ReadTakesAnythingElseForAText)
{
    for (const std::string word : {"East", "", "#", "#x", "#1x", "1", "@3", "# 1", "#-1"}) {
        const SCNameWord::SNameWord name = SCNameWord::Read(word, '#');
        EXPECT_FALSE(name.isID) << word;
        EXPECT_EQ(name.text, word);
    }
}

TEST(SCNameWord, ReadTakesTwoMarksForOneOfTheText)
{
    EXPECT_FALSE(SCNameWord::Read("##12", '#').isID);
    EXPECT_EQ(SCNameWord::Read("##12", '#').text, "#12");
    EXPECT_EQ(SCNameWord::Read("###", '#').text, "##");
    EXPECT_EQ(SCNameWord::Read("@@3", '@').text, "@3");
}

TEST(SCNameWord, WriteGivesAWordThatReadsAsTheText)
{
    for (const std::string text : {"East", "", "#", "##", "###", "#x", "#12", "##12", "@3"}) {
        const SCNameWord::SNameWord name = SCNameWord::Read(SCNameWord::Write(text, '#'), '#');
        EXPECT_FALSE(name.isID) << text;
        EXPECT_EQ(name.text, text);
    }
    EXPECT_EQ(SCNameWord::Write("East", '#'), "East");
    EXPECT_EQ(SCNameWord::Write("#12", '#'), "##12");
}

TEST(SCNameWord, WriteIDPutsTheMarkBeforeTheNumber)
{
    EXPECT_EQ(SCNameWord::WriteID(4294967295, '#'), "#4294967295");
}

TEST(SCNameWord, ReadRecordsTakesNumbersAndStretchesInTheirOrder)
{
    EXPECT_EQ(SCNameWord::ReadRecords({"5", "0-2", "1"}, 6), (std::vector<DWORD>{5, 0, 1, 2, 1}));
    EXPECT_EQ(SCNameWord::ReadRecords({"3-3"}, 6), std::vector<DWORD>{3});
    EXPECT_EQ(SCNameWord::ReadRecords({}, 6), std::vector<DWORD>{});
}

TEST(SCNameWord, ReadRecordsRefusesANumberThatIsNoRecord)
{
    EXPECT_EQ(ErrorOf({"1", "6"}, 6), "There is no record 6: the table has 6 records, numbered from 0 to 5.");
    EXPECT_EQ(ErrorOf({"0-6"}, 6), "There is no record 6: the table has 6 records, numbered from 0 to 5.");
    EXPECT_EQ(ErrorOf({"0"}, 0), "There is no record 0: the table has 0 records.");
    EXPECT_EQ(ErrorOf({"0-4294967295"}, 6),
              "There is no record 4294967295: the table has 6 records, numbered from 0 to 5.");
}

TEST(SCNameWord, ReadRecordsRefusesWhatIsNoNumber)
{
    for (const std::string word : {"", "-", "-1", "1-", "x", "1.5", "2-1", "1-2-3", "4294967296", "+1", " 1"})
        EXPECT_NE(ErrorOf({word}, 6).find("is no record"), std::string::npos) << word;
}

} // namespace NSKZ::Host
