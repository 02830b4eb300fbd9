#include "CHostTerminal.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace NSKZ::Test {

CHostTerminal::CHostTerminal(const std::vector<std::string>& arguments, const std::string& output)
{
    std::vector<char*> argv = {const_cast<char*>(KZCBUI_PATH)};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    winsize size = {};
    size.ws_row = 24;
    size.ws_col = 100;
    child = forkpty(&terminal, nullptr, nullptr, &size);
    if (child < 0)
        throw std::runtime_error("no terminal");
    if (child == 0) {
        // A plain terminal and a locale that knows no Japanese.
        setenv("TERM", "dumb", 1);
        setenv("LC_ALL", "C", 1);
        setenv("HOME", "/", 1);
        if (!output.empty())
            dup2(open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
        execv(argv[0], argv.data());
        _exit(127);
    }
}

CHostTerminal::~CHostTerminal()
{
    if (child > 0) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
    close(terminal);
}

void CHostTerminal::Type(const std::string& keys)
{
    for (std::size_t typed = 0; typed < keys.size();) {
        const ssize_t put = write(terminal, keys.data() + typed, keys.size() - typed);
        if (put < 0 && errno != EINTR)
            throw std::runtime_error("no keys");
        typed += put > 0 ? static_cast<std::size_t>(put) : 0;
    }
}

bool CHostTerminal::ReadUntil(const std::string& text, std::string& screen)
{
    std::size_t found = unread.find(text);
    while (found == std::string::npos) {
        if (!ReadSome()) {
            screen = unread;
            return false;
        }
        found = unread.find(text);
    }
    screen = unread.substr(0, found + text.size());
    unread.erase(0, found + text.size());
    return true;
}

int CHostTerminal::WaitForEnd(std::string& screen)
{
    while (ReadSome()) {
    }
    screen = unread;
    unread.clear();
    int state = 0;
    waitpid(child, &state, 0);
    child = -1;
    return WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state);
}

bool CHostTerminal::ReadSome()
{
    char piece[4096];
    ssize_t got = 0;
    do {
        got = read(terminal, piece, sizeof piece);
    } while (got < 0 && errno == EINTR);
    if (got <= 0)
        return false; // a terminal without programs fails
    unread.append(piece, static_cast<std::size_t>(got));
    return true;
}

} // namespace NSKZ::Test
