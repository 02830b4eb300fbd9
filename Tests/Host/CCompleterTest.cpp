#include "CCompleter.h"

#include "CCommandSet.h"
#include "CWorkspace.h"
#include "HostFixture.h"

#include <set>

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
    const Texts words = Words("", 0);
    std::set<std::string> expected;
    for (const Host::SCommand& command : commands.GetAll())
        expected.insert(command.GetName().substr(0, command.GetName().find(' ')));
    EXPECT_EQ(std::set<std::string>(words.begin(), words.end()), expected);
    EXPECT_EQ(words.size(), expected.size());
    EXPECT_EQ(Words("pre", 0), words);
    EXPECT_EQ(Words("help pre", 5), words);
    EXPECT_EQ(Words("help press ", 11), Texts{});
}

TEST_F(CCompleterTest, OffersTheSecondWordsOfAGroupOfCommands)
{
    Host::SCommand command;
    command.form = "group first ITEM [--how well|badly] [--max N]";
    command.nameWords = 2;
    command.options = {{"--how", true}, {"--max", true}};
    commands.Add(command);
    command.form = "group second";
    commands.Add(command);
    EXPECT_EQ(Words("group ", 6), (Texts{"first", "second"}));
    EXPECT_EQ(Words("help group se", 11), (Texts{"first", "second"}));
    EXPECT_EQ(Words("group first ", 12), (Texts{"region", "unit\\ price", "@@7"}));
    EXPECT_EQ(Words("group first --", 12), (Texts{"--how", "--max"}));
    EXPECT_EQ(Words("group third ", 12), Texts{});
}

TEST_F(CCompleterTest, OffersTheValuesOfAnOptionAndPassesThemOver)
{
    EXPECT_EQ(Words("buttons region --order ", 23), (Texts{"app", "name"}));
    EXPECT_EQ(Words("buttons region --max ", 21), Texts{});
    EXPECT_EQ(Words("buttons --order name ", 21), (Texts{"region", "unit\\ price", "@@7"}));
    EXPECT_EQ(Words("records-of region --max 3 East ", 31), (Texts{"New\\ York", "East"}));
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

TEST_F(CCompleterTest, OffersSpecialButtonsAndTheirMembers)
{
    const std::vector<DWORD> members = {3};
    DWORD btnID = 0;
    workspace->GetEnv().CreateSpBtn(btnID, 1, NSKZCore::SCBUICoreCom::BTNTYPE_CLL, "The fold",
                                    NSKZCore::VCSpBtn::MMBBTNSELMTH_SELECT, &members, nullptr);
    EXPECT_EQ(Words("special members region ", 23), Texts{"The\\ fold"});
    EXPECT_EQ(Words("special remove-members region The\\ fold ", 40), Texts{"East"});
    EXPECT_EQ(Words("special remove-members region East ", 35), Texts{});
    EXPECT_EQ(Words("special add-members region The\\ fold ", 37), (Texts{"New\\ York", "The\\ fold"}));
    EXPECT_EQ(Words("special set-members region The\\ fold ", 37),
              (Texts{"New\\ York", "The\\ fold", "--none"}));
    EXPECT_EQ(Words("special create region ", 22), (Texts{"inc", "cll", "virinc"}));
    EXPECT_EQ(Words("special create region inc ", 26), Texts{});
    EXPECT_EQ(Words("special effective region The\\ fold ", 35), (Texts{"on", "off"}));
}

TEST_F(CCompleterTest, OffersButtonsOfTheItemThatAVirtualIncButtonGroups)
{
    DWORD itemID = 0;
    DWORD btnID = 0;
    const std::vector<DWORD> members = {2};
    NSKZCore::CBUIDataMngr& env = workspace->GetEnv();
    env.CreateVirBtnClass("Areas", false, itemID);
    env.CreateSpBtn(btnID, itemID, NSKZCore::SCBUICoreCom::BTNTYPE_VIRINC, "Group",
                    NSKZCore::VCSpBtn::MMBBTNSELMTH_SELECT, &members, nullptr, 1);
    const Texts regions = Words("press region ", 13);
    ASSERT_FALSE(regions.empty());
    EXPECT_EQ(Words("special create Areas virinc x --of region ", 42).front(), regions.front());
    EXPECT_EQ(Words("special add-members Areas Group ", 32), regions);
    EXPECT_EQ(Words("special remove-members Areas Group ", 35), Texts{regions.front()});
    EXPECT_EQ(Words("press Areas ", 12), Texts{"Group"});
}

TEST_F(CCompleterTest, OffersOptionsAndAlternatives)
{
    EXPECT_EQ(Words("press region --", 13), Texts{"--hidden"});
    EXPECT_EQ(Words("mode ", 5), (Texts{"none", "or", "and", "difference", "narrowing"}));
    EXPECT_EQ(Words("multi o", 6), (Texts{"on", "off"}));
}

TEST_F(CCompleterTest, OffersWhatChangesOfTheTableTake)
{
    EXPECT_EQ(Words("rows ", 5), (Texts{"insert", "delete"}));
    EXPECT_EQ(Words("field delete ", 13), (Texts{"region", "unit\\ price", "@@7"}));
    EXPECT_EQ(Words("field type region ", 18), (Texts{"text", "number", "date", "time"}));
    EXPECT_EQ(Words("field form region ", 18), Texts{});
    EXPECT_EQ(Words("rows insert 0 x.csv --code-page ", 32), (Texts{"auto", "932", "65001"}));
    EXPECT_EQ(Words("link-tables on-memory --only ", 29), (Texts{"record-to-button", "button-to-record"}));
    EXPECT_EQ(Words("pending ", 8), Texts{"drop"});
    workspace->MakeCopy("the second");
    EXPECT_EQ(Words("use ", 4), (Texts{"main", "the\\ second"}));
    EXPECT_EQ(Words("drop 'the", 5), (Texts{"'main'", "'the second'"}));

    Host::CHostOptions options;
    options.tablePath = dir.WriteFile("dates.csv", "day,at\n2024-01-05,09:30\n");
    workspace = std::make_unique<Host::CWorkspace>(options, nullptr);
    EXPECT_EQ(Words("field form at ", 14), (Texts{"hms", "hm", "hms-12", "hm-12"}));
    const Texts forms = Words("field form day ", 15);
    EXPECT_EQ(forms.size(), 65u);
    EXPECT_EQ(forms.front(), "ymd-none");
    EXPECT_EQ(forms.back(), "ym2-kanji");
}

TEST_F(CCompleterTest, OffersNothingWhereNothingIsExpected)
{
    EXPECT_EQ(Words("nonsense ", 9), Texts{});
    EXPECT_EQ(Words("items ", 6), Texts{});
    EXPECT_EQ(Words("mode or ", 8), Texts{});
}

} // namespace NSKZ::Test
