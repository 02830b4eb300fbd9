#include "CCommandSet.h"

#include "ECCommandError.h"
#include "SCBtnReason.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace NSKZ::Host {

TEST(CCommandSet, EveryCommandTellsAllThatHelpNeeds)
{
    const CCommandSet commands;
    for (const SCommand& command : commands.GetAll()) {
        EXPECT_FALSE(command.GetName().empty());
        EXPECT_FALSE(command.summary.empty()) << command.form;
        EXPECT_EQ(command.summary.find('\n'), std::string::npos) << command.form;
        EXPECT_FALSE(command.explanation.empty()) << command.form;
        EXPECT_TRUE(command.example.starts_with(command.GetName())) << command.form;
        EXPECT_TRUE(command.run && command.show) << command.form;
        EXPECT_LE(command.minWords, command.maxWords) << command.form;
        for (const SCommand::SOption& option : command.options)
            EXPECT_NE(command.form.find(option.name), std::string::npos) << command.form;
        EXPECT_EQ(commands.Find(command.GetName()), &command);
    }
}

TEST(CCommandSet, FindKnowsWholeNamesOnly)
{
    const CCommandSet commands;
    EXPECT_NE(commands.Find("press"), nullptr);
    EXPECT_EQ(commands.Find("pres"), nullptr);
    EXPECT_EQ(commands.Find("press ITEM"), nullptr);
    EXPECT_EQ(commands.Find(""), nullptr);
}

TEST(CCommandSet, CommandsOfAGroupAreFoundByBothWordsOfTheirNames)
{
    CCommandSet commands;
    SCommand command;
    command.form = "group first ITEM";
    command.nameWords = 2;
    commands.Add(command);
    command.form = "group second";
    commands.Add(command);
    EXPECT_EQ(commands.FindByWords({"group", "first", "x"}).form, "group first ITEM");
    EXPECT_EQ(commands.FindByWords({"group", "second"}).form, "group second");
    EXPECT_EQ(commands.FindByWords({"press", "first"}).GetName(), "press");
    EXPECT_EQ(commands.GetGroup("group").size(), 2u);
    EXPECT_TRUE(commands.GetGroup("press").empty());
    EXPECT_TRUE(commands.GetGroup("grou").empty());
    command.form = "group second ELSE";
    EXPECT_THROW(commands.Add(command), std::logic_error);
    const auto errorOf = [&commands](const std::vector<std::string>& words) {
        try {
            commands.FindByWords(words);
        } catch (const ECCommandError& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    EXPECT_EQ(errorOf({"group"}), "Several commands begin with \"group\"; \"help group\" lists them.");
    EXPECT_EQ(errorOf({"group", "third"}),
              "There is no command \"group third\"; \"help group\" lists those that begin so.");
    EXPECT_EQ(errorOf({"group first"}), "There is no command \"group first\"; \"help\" lists them.");
}

TEST(CCommandSet, AddRefusesATakenName)
{
    CCommandSet commands;
    SCommand command;
    command.form = "items ELSE";
    EXPECT_THROW(commands.Add(command), std::logic_error);
}

TEST(SCBtnReason, GetReasonsHasWordsForEachReasonThatHidesAButton)
{
    EXPECT_TRUE(SCBtnReason::GetReasons(0).empty());
    EXPECT_EQ(SCBtnReason::GetReasons(0x20), std::vector<std::string>{"not related to the selection"});
    EXPECT_EQ(SCBtnReason::GetReasons(0xA0).size(), 2u);
    EXPECT_EQ(SCBtnReason::GetReasons(0x7FF & ~0x40u).size(), 10u);
}

} // namespace NSKZ::Host
