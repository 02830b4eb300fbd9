#include "CCommandArgs.h"

#include "ECCommandError.h"

#include <gtest/gtest.h>

namespace NSKZ::Host {

namespace {

SCommand MakeCommand()
{
    SCommand command;
    command.form = "press ITEM [WORD] [--hidden] [--order app|name]";
    command.minWords = 1;
    command.maxWords = 2;
    command.options = {{"--hidden"}, {"--order", true}};
    return command;
}

std::string ErrorOf(std::vector<std::string> words)
{
    try {
        const CCommandArgs args(MakeCommand(), std::move(words));
    } catch (const ECCommandError& error) {
        return error.what();
    }
    return {};
}

} // namespace

TEST(CCommandArgs, SetsPlainWordsAndOptionsApart)
{
    const CCommandArgs args(MakeCommand(), {"press", "--order", "name", "a", "--hidden", "b"});
    EXPECT_EQ(args.GetWords(), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(args.GetWordsFrom(1), std::vector<std::string>{"b"});
    EXPECT_TRUE(args.Has("--hidden"));
    EXPECT_EQ(args.GetValue("--order", "app"), "name");
}

TEST(CCommandArgs, TakesAValueBehindAnEqualsSign)
{
    const CCommandArgs args(MakeCommand(), {"press", "a", "--order=name"});
    EXPECT_EQ(args.GetChoice("--order", {"app", "name"}), "name");
}

TEST(CCommandArgs, AnOptionGivenSeveralTimesHasAllItsValues)
{
    const CCommandArgs args(MakeCommand(), {"press", "a", "--order=name", "--order", "app"});
    EXPECT_EQ(args.GetValues("--order"), (std::vector<std::string>{"name", "app"}));
    EXPECT_EQ(args.GetValue("--order", ""), "app");
    EXPECT_EQ(args.GetValues("--hidden"), std::vector<std::string>());
}

TEST(CCommandArgs, TakesAllWordsBehindTwoHyphensAsPlain)
{
    const CCommandArgs args(MakeCommand(), {"press", "--", "--hidden", "--"});
    EXPECT_EQ(args.GetWords(), (std::vector<std::string>{"--hidden", "--"}));
    EXPECT_FALSE(args.Has("--hidden"));
}

TEST(CCommandArgs, TakesAWordWithOneHyphenAsPlain)
{
    const CCommandArgs args(MakeCommand(), {"press", "-5", "-"});
    EXPECT_EQ(args.GetWords(), (std::vector<std::string>{"-5", "-"}));
}

TEST(CCommandArgs, RefusalsTellTheForm)
{
    const std::string expected = "; expected: press ITEM [WORD] [--hidden] [--order app|name]";
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{"press"},
                                               {"press", "a", "b", "c"},
                                               {"press", "a", "--foo"},
                                               {"press", "a", "--order"},
                                               {"press", "a", "--hidden=x"}})
        EXPECT_TRUE(ErrorOf(words).ends_with(expected)) << ErrorOf(words);
}

TEST(CCommandArgs, GetChoiceRefusesOtherValues)
{
    const CCommandArgs args(MakeCommand(), {"press", "a", "--order", "size"});
    try {
        args.GetChoice("--order", {"app", "name"});
        FAIL();
    } catch (const ECCommandError& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with("--order takes app or name, not \"size\""))
            << error.what();
    }
    EXPECT_EQ(CCommandArgs(MakeCommand(), {"press", "a"}).GetChoice("--order", {"app", "name"}), "app");
}

TEST(CCommandArgs, TheWordsOfANameOfTwoAreNoArguments)
{
    SCommand command = MakeCommand();
    command.form = "group press ITEM [WORD]";
    command.nameWords = 2;
    EXPECT_EQ(CCommandArgs(command, {"group", "press", "a"}).GetWords(), std::vector<std::string>{"a"});
}

TEST(CCommandArgs, ReadSwitchKnowsOnAndOff)
{
    EXPECT_TRUE(CCommandArgs(MakeCommand(), {"press", "on"}).ReadSwitch(0));
    EXPECT_FALSE(CCommandArgs(MakeCommand(), {"press", "off"}).ReadSwitch(0));
    EXPECT_THROW(CCommandArgs(MakeCommand(), {"press", "yes"}).ReadSwitch(0), ECCommandError);
}

} // namespace NSKZ::Host
