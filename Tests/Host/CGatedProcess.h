#ifndef CGATEDPROCESS_H
#define CGATEDPROCESS_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace NSKZ::Test {

// The built program with a gate before the system calls by which it changes, opens or closes files: each
// waits there until the test has said what becomes of it. The gate is a filter of the kernel that asks
// another process (seccomp with user notification), so the program itself runs as it is built.
class CGatedProcess
{
public:
    enum EVerdict
    {
        VERDICT_PASS, // the call is carried out
        VERDICT_FAIL, // the call is not carried out and tells the program that no space is left
        VERDICT_KILL, // the program is killed in place of the call
    };
    struct SCall
    {
        std::size_t number; // from 1 on
        std::string name;   // as the system's manual calls it
    };

    // Runs the program to its end, `arguments` without its own name. The calls that `judge` is asked about
    // begin with the first one that names something in `directory`; those on pipes, as the program's output
    // is one, do not count. Throws std::runtime_error if the system does not let a gate be built.
    static CGatedProcess Run(const std::vector<std::string>& arguments, const std::string& directory,
                             const std::function<EVerdict(const SCall&)>& judge);

    int GetStatus() const noexcept { return status; } // as that of CHostProcess
    const std::string& GetOutput() const noexcept { return output; }
    // The calls that were judged.
    const std::vector<std::string>& GetCalls() const noexcept { return calls; }

private:
    int status = -1;
    std::string output;
    std::vector<std::string> calls;
};

} // namespace NSKZ::Test

#endif
