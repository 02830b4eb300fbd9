// The program at a terminal.

#include "CHostTerminal.h"
#include "HostFixture.h"

#include <fstream>
#include <iterator>

namespace NSKZ::Test {

using HostPrompt = HostFixture;

namespace {

constexpr const char* PROMPT = "kzcbui> ";

} // namespace

TEST_F(HostPrompt, AnswersWhatIsTypedAndEndsOnControlD)
{
    CHostTerminal terminal({table});
    std::string screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    EXPECT_NE(screen.find("7 records, 5 items.\r\n\"items\" lists them"), std::string::npos) << screen;
    terminal.Type("press region East\n");
    EXPECT_TRUE(terminal.ReadUntil("3 of 7 records", screen)) << screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("\x04");
    EXPECT_EQ(terminal.WaitForEnd(screen), 0);
}

TEST_F(HostPrompt, QuitEndsTheSessionWithTheStatusOfItsCommands)
{
    CHostTerminal terminal({table});
    std::string screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("nonsense\n");
    ASSERT_TRUE(terminal.ReadUntil("There is no command", screen)) << screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("quit\n");
    EXPECT_EQ(terminal.WaitForEnd(screen), 1);
}

TEST_F(HostPrompt, TakesJapaneseInALocaleThatKnowsNone)
{
    table = dir.WriteFile("sjis.csv", SJIS(JAPANESE_TEXT));
    CHostTerminal terminal({table});
    std::string screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("press 地域 関東\n");
    EXPECT_TRUE(terminal.ReadUntil("2 of 4 records", screen)) << screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("buttons 商品\n");
    EXPECT_TRUE(terminal.ReadUntil("緑茶", screen)) << screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("exit\n");
    EXPECT_EQ(terminal.WaitForEnd(screen), 0);
}

TEST_F(HostPrompt, ControlCDropsTheLineOnly)
{
    CHostTerminal terminal({table});
    std::string screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("press region East\x03");
    ASSERT_TRUE(terminal.ReadUntil("^C", screen)) << screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("records\n");
    EXPECT_TRUE(terminal.ReadUntil("7 of 7 records", screen)) << screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("quit\n");
    EXPECT_EQ(terminal.WaitForEnd(screen), 0);
}

TEST_F(HostPrompt, TheHistoryBringsALineBack)
{
    CHostTerminal terminal({table});
    std::string screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("press region West\n");
    ASSERT_TRUE(terminal.ReadUntil("2 of 7 records", screen)) << screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("clear\n");
    ASSERT_TRUE(terminal.ReadUntil("7 of 7 records", screen)) << screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("\x10\x10\n"); // Ctrl-P twice
    EXPECT_TRUE(terminal.ReadUntil("2 of 7 records", screen)) << screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("quit\n");
    EXPECT_EQ(terminal.WaitForEnd(screen), 0);
}

TEST_F(HostPrompt, TheTabulatorCompletesCommandsItemsAndButtons)
{
    CHostTerminal terminal({table});
    std::string screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("rele\t reg\tNo\t\n"); // "release" goes on as "release-all"
    EXPECT_TRUE(terminal.ReadUntil("7 of 7 records", screen)) << screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("press reg\tNo\t\n");
    EXPECT_TRUE(terminal.ReadUntil("2 of 7 records", screen)) << screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("quit\n");
    EXPECT_EQ(terminal.WaitForEnd(screen), 0);
}

TEST_F(HostPrompt, TheTabulatorCompletesATextWithABlank)
{
    table = dir.WriteFile("cities.csv", "city\nNew York\nSeattle\n");
    CHostTerminal terminal({table});
    std::string screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("press city Ne\t\n");
    EXPECT_TRUE(terminal.ReadUntil("1 of 2 records", screen)) << screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("quit\n");
    EXPECT_EQ(terminal.WaitForEnd(screen), 0);
}

TEST_F(HostPrompt, WithJSONStandardOutputHoldsAnswersAlone)
{
    // The terminal is there for input and errors; the answers go to a file.
    const std::string answers = (dir.GetPath() / "answers").string();
    CHostTerminal terminal({table, "--json", "--no-progress"}, answers);
    std::string screen;
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("records\n");
    ASSERT_TRUE(terminal.ReadUntil(PROMPT, screen));
    terminal.Type("quit\n");
    EXPECT_EQ(terminal.WaitForEnd(screen), 0);
    std::ifstream file(answers);
    const std::string content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    EXPECT_EQ(content, "{\"ok\":true,\"count\":7}\n{\"ok\":true}\n");
}

TEST_F(HostPrompt, BuildingShowsItsProgressOnATerminal)
{
    CHostTerminal terminal({table, "-c", "records"});
    std::string screen;
    EXPECT_EQ(terminal.WaitForEnd(screen), 0);
    EXPECT_NE(screen.find("Building ["), std::string::npos) << screen;
    EXPECT_NE(screen.find("100%"), std::string::npos) << screen;
    CHostTerminal silent({table, "-c", "records", "--no-progress"});
    EXPECT_EQ(silent.WaitForEnd(screen), 0);
    EXPECT_EQ(screen, "7 of 7 records\r\n");
}

} // namespace NSKZ::Test
