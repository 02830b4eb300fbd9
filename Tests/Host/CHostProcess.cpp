#include "CHostProcess.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace NSKZ::Test {

namespace {

struct SPipe
{
    SPipe()
    {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        readEnd = ends[0];
        writeEnd = ends[1];
    }
    ~SPipe()
    {
        Close(readEnd);
        Close(writeEnd);
    }
    SPipe(const SPipe&) = delete;
    SPipe& operator=(const SPipe&) = delete;
    static void Close(int& end)
    {
        if (end >= 0)
            close(end);
        end = -1;
    }
    int readEnd = -1;
    int writeEnd = -1;
};

// Appends what is there to read; closes the end at its end.
void ReadSome(int& end, std::string& text)
{
    char piece[65536];
    const ssize_t got = read(end, piece, sizeof piece);
    if (got > 0)
        text.append(piece, static_cast<std::size_t>(got));
    else if (got == 0 || errno != EINTR)
        SPipe::Close(end);
}

} // namespace

CHostProcess CHostProcess::Run(const std::vector<std::string>& arguments, const std::string& input)
{
    std::signal(SIGPIPE, SIG_IGN); // the program may end before it has read all
    std::vector<char*> argv = {const_cast<char*>(KZCBUI_PATH)};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    SPipe toProgram;
    SPipe fromProgram;
    SPipe errorsOfProgram;
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("no process");
    if (child == 0) {
        std::signal(SIGPIPE, SIG_DFL);
        dup2(toProgram.readEnd, STDIN_FILENO);
        dup2(fromProgram.writeEnd, STDOUT_FILENO);
        dup2(errorsOfProgram.writeEnd, STDERR_FILENO);
        execv(argv[0], argv.data());
        _exit(127);
    }
    SPipe::Close(toProgram.readEnd);
    SPipe::Close(fromProgram.writeEnd);
    SPipe::Close(errorsOfProgram.writeEnd);

    CHostProcess process;
    std::string_view pending = input;
    while (fromProgram.readEnd >= 0 || errorsOfProgram.readEnd >= 0) {
        if (pending.empty())
            SPipe::Close(toProgram.writeEnd);
        pollfd ends[] = {{fromProgram.readEnd, POLLIN, 0},
                         {errorsOfProgram.readEnd, POLLIN, 0},
                         {toProgram.writeEnd, POLLOUT, 0}};
        if (poll(ends, 3, -1) < 0)
            continue;
        if (ends[0].revents != 0)
            ReadSome(fromProgram.readEnd, process.output);
        if (ends[1].revents != 0)
            ReadSome(errorsOfProgram.readEnd, process.errors);
        if (ends[2].revents != 0) {
            const ssize_t put =
                write(toProgram.writeEnd, pending.data(), std::min<std::size_t>(pending.size(), 4096));
            pending = put > 0 ? pending.substr(static_cast<std::size_t>(put)) : std::string_view();
        }
    }
    int state = 0;
    waitpid(child, &state, 0);
    process.status = WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state);
    return process;
}

CHostProcess CHostProcess::RunCommands(const std::string& table, const std::vector<std::string>& commands)
{
    std::vector<std::string> arguments = {"--json"};
    for (const std::string& command : commands) {
        arguments.push_back("-c");
        arguments.push_back(command);
    }
    arguments.push_back(table);
    return Run(arguments);
}

std::vector<nlohmann::json> CHostProcess::GetAnswers() const
{
    std::vector<nlohmann::json> answers;
    std::string_view rest = output;
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        if (end == std::string_view::npos)
            throw std::runtime_error("a line without end");
        answers.push_back(nlohmann::json::parse(rest.substr(0, end)));
        rest.remove_prefix(end + 1);
    }
    return answers;
}

} // namespace NSKZ::Test
