#include "CCommandSet.h"

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
