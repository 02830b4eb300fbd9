#ifndef HOSTSTATE_H
#define HOSTSTATE_H

#include "CHostSession.h"
#include "HostFixture.h"

#include <map>

namespace NSKZ::Test {

// Everything that a user can ask of a session.
class CHostState
{
public:
    // What the commands answer by themselves, by command. `before` is run in front of them, with `table`.
    static std::map<std::string, Json> Ask(const std::string& table, const std::vector<std::string>& before)
    {
        // Which items and buttons there are is asked first.
        std::vector<std::string> commands = before;
        commands.insert(commands.end(), {"items", "special list"});
        const std::vector<Json> found = RunWell(table, commands);
        const std::vector<std::string> questions =
            GetQuestions(found[before.size()].at("items"), found[before.size() + 1].at("special"));
        // A question may fail, as that for the difference in another mode; then it is to fail in the same
        // way.
        commands = before;
        commands.insert(commands.end(), questions.begin(), questions.end());
        const CHostProcess process = CHostProcess::RunCommands(table, commands);
        const std::vector<Json> answers = process.GetAnswers();
        std::map<std::string, Json> state;
        for (std::size_t i = 0; i < questions.size(); ++i)
            state[questions[i]] = answers.at(before.size() + i);
        return state;
    }
    // The same of a session as it is now.
    static std::map<std::string, Json> Ask(CHostSession& session)
    {
        std::map<std::string, Json> state;
        for (const std::string& question : GetQuestions(session.RunWell("items").at("items"),
                                                        session.RunWell("special list").at("special")))
            state[question] = session.Run(question);
        return state;
    }

private:
    static std::vector<std::string> GetQuestions(const Json& items, const Json& spBtns)
    {
        std::vector<std::string> questions = {
            "items",          "selection", "hierarchy",    "difference",   "mode",        "records --list",
            "selected-items", "calendar",  "virtual list", "special list", "link-tables", "symbols"};
        if (items.empty())
            throw std::runtime_error("a table without items");
        std::vector<std::string> numberItems;
        for (const Json& item : items) {
            if (item.at("type") == "number")
                numberItems.push_back("@" + std::to_string(item.at("id").get<DWORD>()));
        }
        for (const Json& item : items)
            AddQuestionsOfItem(item, numberItems, questions);
        for (const Json& spBtn : spBtns) {
            const std::string name = "@" + std::to_string(spBtn.at("item").get<DWORD>()) + " #" +
                                     std::to_string(spBtn.at("id").get<DWORD>());
            for (const char* command : {"special members ", "special holders ", "button ", "special where "})
                questions.push_back(command + name);
        }
        return questions;
    }

    static std::vector<Json> RunWell(const std::string& table, const std::vector<std::string>& commands)
    {
        const CHostProcess process = CHostProcess::RunCommands(table, commands);
        std::vector<Json> answers = process.GetAnswers();
        if (process.GetStatus() != 0 || answers.size() != commands.size())
            throw std::runtime_error("a command failed: " + process.GetOutput() + process.GetErrors());
        return answers;
    }

    static void AddQuestionsOfItem(const Json& item, const std::vector<std::string>& numberItems,
                                   std::vector<std::string>& questions)
    {
        const std::string type = item.at("type");
        const std::string name = "@" + std::to_string(item.at("id").get<DWORD>());
        for (const char* options : {"", " --all", " --order name", " --order name --all --desc", " --expand",
                                    " --all --conditions-last --empty-last"})
            questions.push_back("buttons " + name + options);
        questions.push_back("records " + name + " --list");
        questions.push_back("new-buttons " + name);
        for (const std::string& numberItem : numberItems) {
            questions.push_back("sum " + name + " " + numberItem);
            questions.push_back("sum " + name + " " + numberItem + " --method average");
        }
        if (type != "virtual") {
            questions.push_back("empty-value " + name);
            questions.push_back("related " + name + " 0-3");
        }
        if (type == "date" || type == "time")
            questions.push_back("form " + name);
        if (type == "date") {
            for (const char* part : {" weekday", " fiscal-quarter", " week-of-fiscal-month"})
                questions.push_back("groups " + name + part);
            questions.push_back("latest " + name);
        }
        if (type == "time")
            questions.push_back("groups " + name + " hour");
    }
};

} // namespace NSKZ::Test

#endif
