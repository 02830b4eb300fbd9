#include "CTextOutput.h"

#include "CSumChart.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace NSKZ::Host {

TEST(CTextOutput, WriteTableAlignsColumnsOfWideCharacters)
{
    std::ostringstream stream;
    CTextOutput(stream, false, 80)
        .WriteTable({{"item"}, {"count", true}, {"kind"}}, {{{"関東", "7", "x"}}, {{"abc", "1,234", ""}}});
    EXPECT_EQ(stream.str(), "item  count  kind\n"
                            "関東      7  x\n"
                            "abc   1,234\n");
}

TEST(CTextOutput, WriteTableLeavesOutWhatHasNeitherTitleNorCells)
{
    std::ostringstream stream;
    CTextOutput(stream, false, 80).WriteTable({{""}, {""}, {""}}, {{{"a", "", "b"}}, {{"", "", "c"}}});
    EXPECT_EQ(stream.str(), "a  b\n   c\n");
}

TEST(CTextOutput, WriteTableEscapesAndCutsCells)
{
    std::ostringstream stream;
    CTextOutput(stream, false, 80)
        .WriteTable({{""}, CTextOutput::SColumn::Uncut("")},
                    {{{std::string(60, 'x'), std::string(60, 'y')}}, {{"\n", ""}}});
    EXPECT_EQ(stream.str(), std::string(47, 'x') + "…  " + std::string(60, 'y') + "\n\\n\n");
}

TEST(CTextOutput, ColoursStandOnATerminalOnly)
{
    std::ostringstream plain;
    std::ostringstream coloured;
    const std::vector<CTextOutput::SRow> rows = {{{"a"}, CTextOutput::STYLE_SELECTED}};
    CTextOutput(plain, false, 80).WriteTable({{"t"}}, rows);
    CTextOutput(coloured, true, 80).WriteTable({{"t"}}, rows);
    EXPECT_EQ(plain.str(), "t\na\n");
    EXPECT_EQ(coloured.str(), "\x1B[1mt\x1B[0m\n\x1B[1;32ma\x1B[0m\n");
}

TEST(CTextOutput, WriteTextBreaksLongLinesBetweenWords)
{
    std::ostringstream stream;
    CTextOutput(stream, false, 10).WriteText("one two three\nfour\nabcdefghijklm n");
    EXPECT_EQ(stream.str(), "one two\nthree\nfour\nabcdefghijklm\nn\n");
}

TEST(CSumChart, WriteDrawsBarsInOneScale)
{
    std::ostringstream stream;
    CTextOutput output(stream, false, 20);
    CSumChart chart;
    chart.Add("a", 1000);
    chart.Add("bb", 500);
    chart.Add("c", std::nan(""));
    chart.Write(output);
    EXPECT_EQ(stream.str(), "a   1,000  ██████████\nbb    500  █████\nc       -\n");
}

TEST(CSumChart, WriteDrawsBarsOfNegativeNumbersToTheLeft)
{
    std::ostringstream stream;
    CTextOutput output(stream, false, 20);
    CSumChart chart;
    chart.Add("a", 8);
    chart.Add("b", -2);
    chart.Write(output);
    EXPECT_EQ(stream.str(), "a   8      ████████\nb  -2  ██\n");
}

TEST(CSumChart, WriteDrawsNoBarsWhereAllIsZero)
{
    std::ostringstream stream;
    CTextOutput output(stream, false, 20);
    CSumChart chart;
    chart.Write(output);
    chart.Add("a", 0);
    chart.Write(output);
    EXPECT_EQ(stream.str(), "a  0\n");
}

} // namespace NSKZ::Host
