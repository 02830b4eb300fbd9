#ifndef HOSTFIXTURE_H
#define HOSTFIXTURE_H

#include "CHostProcess.h"
#include "Support/CTempDir.h"
#include "TestTable.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace NSKZ::Test {

using Json = nlohmann::json;

// A table of TABLE_TEXT, and the program on it.
class HostFixture : public testing::Test
{
protected:
    HostFixture() : table(dir.WriteFile("sales.csv", TABLE_TEXT)) {}

    // The answers to the commands, of which each must go well.
    std::vector<Json> Answers(const std::vector<std::string>& commands) const
    {
        const CHostProcess process = CHostProcess::RunCommands(table, commands);
        EXPECT_EQ(process.GetStatus(), 0) << process.GetOutput() << process.GetErrors();
        EXPECT_EQ(process.GetErrors(), "");
        std::vector<Json> answers = process.GetAnswers();
        EXPECT_EQ(answers.size(), commands.size());
        answers.resize(commands.size());
        for (const Json& answer : answers)
            EXPECT_EQ(answer.value("ok", Json()), true) << answer.dump();
        return answers;
    }
    // The answer to the last of them.
    Json LastAnswer(const std::vector<std::string>& commands) const { return Answers(commands).back(); }

    // The error of a single command, which must fail and change nothing that items, buttons, selection,
    // hierarchy, records and mode tell. `before` are commands that go well.
    std::string Error(const std::string& command, const std::vector<std::string>& before = {}) const
    {
        const Json answer = ErrorAnswer(command, before);
        EXPECT_EQ(answer.size(), 2u) << answer.dump();
        return answer.value("error", "");
    }
    // The same as a whole.
    Json ErrorAnswer(const std::string& command, const std::vector<std::string>& before = {}) const
    {
        static const std::vector<std::string> STATE = {
            "items",   "selection",      "hierarchy",   "records --list",   "mode",
            "multi",   "selected-items", "link-tables", "buttons @2 --all", "special list --all",
            "history", "pending",        "copies"};
        std::vector<std::string> commands = before;
        commands.insert(commands.end(), STATE.begin(), STATE.end());
        commands.push_back(command);
        commands.insert(commands.end(), STATE.begin(), STATE.end());
        const CHostProcess process = CHostProcess::RunCommands(table, commands);
        EXPECT_EQ(process.GetStatus(), 1) << command;
        EXPECT_EQ(process.GetErrors(), "");
        const std::vector<Json> answers = process.GetAnswers();
        EXPECT_EQ(answers.size(), commands.size());
        if (answers.size() != commands.size())
            return Json::object();
        for (std::size_t i = before.size(); i < before.size() + STATE.size(); ++i)
            EXPECT_EQ(answers[i], answers[i + STATE.size() + 1]) << command << " changed " << commands[i];
        const Json& answer = answers[before.size() + STATE.size()];
        EXPECT_EQ(answer.at("ok"), false) << command;
        return answer;
    }

    // One key of each object of a list.
    static Json Pluck(const Json& list, const char* key)
    {
        Json values = Json::array();
        for (const Json& object : list)
            values.push_back(object.at(key));
        return values;
    }
    // The texts of the displayed buttons of an item after some commands.
    Json DisplayedTexts(std::vector<std::string> commands, const std::string& item) const
    {
        commands.push_back(std::string("buttons ").append(item));
        return Pluck(LastAnswer(commands).at("buttons"), "text");
    }

    CTempDir dir;
    std::string table;
};

} // namespace NSKZ::Test

#endif
