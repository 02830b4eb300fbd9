#ifndef CHOSTSESSION_H
#define CHOSTSESSION_H

#include "CCommandRunner.h"
#include "CCommandSet.h"
#include "CHostOptions.h"
#include "CJSONAnswerWriter.h"
#include "CWorkspace.h"

#include <nlohmann/json.hpp>

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace NSKZ::Test {

// The program's commands on a table, run one by one within the process of the test. The code page of the
// process is the table's.
class CHostSession
{
public:
    explicit CHostSession(const Host::CHostOptions& options, std::ostream* progressTerminal = nullptr)
        : workspace(options, progressTerminal), runner(workspace, commands, writer)
    {}
    explicit CHostSession(const std::string& table) : CHostSession(MakeOptions({table})) {}

    // What the program makes of its arguments.
    static Host::CHostOptions MakeOptions(std::vector<std::string> arguments)
    {
        std::vector<const char*> argv = {"kzcbui"};
        for (const std::string& argument : arguments)
            argv.push_back(argument.c_str());
        std::string answer;
        return Host::CHostOptions::Read(static_cast<int>(argv.size()), argv.data(), answer).value();
    }

    // The answer, good or bad.
    nlohmann::json Run(const std::string& command)
    {
        output.str("");
        goesOn = runner.RunLine(command, "");
        return nlohmann::json::parse(output.str());
    }
    // The answer of a command that must go well.
    nlohmann::json RunWell(const std::string& command)
    {
        const nlohmann::json answer = Run(command);
        if (answer.at("ok") != true)
            throw std::runtime_error(command + ": " + answer.dump());
        return answer;
    }
    // Whether the last command left the session open.
    bool GoesOn() const noexcept { return goesOn; }
    Host::CWorkspace& GetWorkspace() noexcept { return workspace; }

private:
    Host::CWorkspace workspace;
    Host::CCommandSet commands;
    std::ostringstream output;
    Host::CJSONAnswerWriter writer{output};
    Host::CCommandRunner runner;
    bool goesOn = true;
};

} // namespace NSKZ::Test

#endif
