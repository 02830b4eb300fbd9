#include "CCompleter.h"

#include "CCommandSet.h"
#include "CWorkspace.h"
#include "HostFixture.h"

namespace NSKZ::Test {

// Completion over a table with blanks and marks in its texts.
class CCompleterTest : public HostFixture
{
protected:
    CCompleterTest() : codePage(_getmbcp())
    {
        Host::CHostOptions options;
        options.tablePath = dir.WriteFile("names.csv", "region,unit price,@7\nNew York,1,#1\nEast,2,b\n");
        workspace = std::make_unique<Host::CWorkspace>(options, nullptr);
    }

    std::vector<std::string> Words(const std::string& line, std::size_t expectedBegin) const
    {
        std::size_t begin = 0;
        const std::vector<std::string> words = Host::CCompleter(*workspace, commands).GetWords(line, begin);
        EXPECT_EQ(begin, expectedBegin) << line;
        return words;
    }

    using Texts = std::vector<std::string>;
    CCodePageScope codePage;
    Host::CCommandSet commands;
    std::unique_ptr<Host::CWorkspace> workspace;
};

TEST_F(CCompleterTest, OffersCommandsFirstAndBehindHelp)
{
    EXPECT_EQ(Words("", 0).size(), commands.GetAll().size());
    EXPECT_EQ(Words("pre", 0).size(), commands.GetAll().size());
    EXPECT_EQ(Words("help pre", 5).size(), commands.GetAll().size());
}

TEST_F(CCompleterTest, OffersItemsAsTheyMustBeWritten)
{
    EXPECT_EQ(Words("press ", 6), (Texts{"region", "unit\\ price", "@@7"}));
    EXPECT_EQ(Words("press uni", 6), (Texts{"region", "unit\\ price", "@@7"}));
    EXPECT_EQ(Words("press unit\\ p", 6), (Texts{"region", "unit\\ price", "@@7"}));
    EXPECT_EQ(Words("records ", 8), (Texts{"region", "unit\\ price", "@@7"}));
}

TEST_F(CCompleterTest, GoesOnInTheQuotesThatTheWordBeginsWith)
{
    EXPECT_EQ(Words("press \"unit p", 6), (Texts{"\"region\"", "\"unit price\"", "\"@@7\""}));
    EXPECT_EQ(Words("press region 'New", 13), (Texts{"'New York'", "'East'"}));
}

TEST_F(CCompleterTest, OffersTheIdentifierOfWhatHoldsControlCharacters)
{
    Host::CHostOptions options;
    options.tablePath = dir.WriteFile("wild.csv", "a\n\"x\x1B[31m\"\n\"two\nlines\"\nplain\n");
    workspace = std::make_unique<Host::CWorkspace>(options, nullptr);
    EXPECT_EQ(Words("press a ", 8), (Texts{"#2", "#3", "plain"}));
}

TEST_F(CCompleterTest, OffersNumberItemsWhereAFieldIsSummed)
{
    EXPECT_EQ(Words("sum region ", 11), Texts{"unit\\ price"});
}

TEST_F(CCompleterTest, OffersTheDisplayedButtonsOfTheNamedItem)
{
    EXPECT_EQ(Words("press region ", 13), (Texts{"New\\ York", "East"}));
    EXPECT_EQ(Words("press region East ", 18), (Texts{"New\\ York", "East"}));
    EXPECT_EQ(Words("press --hidden @@7 ", 19), (Texts{"##1", "b"}));
    EXPECT_EQ(Words("press nothing ", 14), Texts{});
}

TEST_F(CCompleterTest, OffersOptionsAndAlternatives)
{
    EXPECT_EQ(Words("press region --", 13), Texts{"--hidden"});
    EXPECT_EQ(Words("mode ", 5), (Texts{"none", "or", "and", "difference", "narrowing"}));
    EXPECT_EQ(Words("multi o", 6), (Texts{"on", "off"}));
}

TEST_F(CCompleterTest, OffersNothingWhereNothingIsExpected)
{
    EXPECT_EQ(Words("nonsense ", 9), Texts{});
    EXPECT_EQ(Words("items ", 6), Texts{});
    EXPECT_EQ(Words("mode or ", 8), Texts{});
}

} // namespace NSKZ::Test
