#ifndef CHOSTTERMINAL_H
#define CHOSTTERMINAL_H

#include <string>
#include <vector>

#include <sys/types.h>

namespace NSKZ::Test {

// The built program at a terminal of its own, with somebody at the keys.
class CHostTerminal
{
public:
    // Standard output goes to the file `output` where one is named.
    explicit CHostTerminal(const std::vector<std::string>& arguments, const std::string& output = {});
    ~CHostTerminal(); // ends the program if it still runs
    CHostTerminal(const CHostTerminal&) = delete;
    CHostTerminal& operator=(const CHostTerminal&) = delete;

    void Type(const std::string& keys);
    // Reads the screen until `text` has come, and returns what came up to its end and was not returned
    // before. False if the program ended before that.
    bool ReadUntil(const std::string& text, std::string& screen);
    // Reads all that is left and returns the exit status, or less the signal that ended the program.
    int WaitForEnd(std::string& screen);

private:
    bool ReadSome();

    int terminal = -1;
    pid_t child = -1;
    std::string unread;
};

} // namespace NSKZ::Test

#endif
