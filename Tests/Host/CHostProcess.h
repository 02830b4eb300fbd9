#ifndef CHOSTPROCESS_H
#define CHOSTPROCESS_H

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace NSKZ::Test {

// The built program, run to its end with pipes for its three streams.
class CHostProcess
{
public:
    // `arguments` without the program's own name.
    static CHostProcess Run(const std::vector<std::string>& arguments, const std::string& input = {});
    // Runs it with --json on a table and with a -c for each command.
    static CHostProcess RunCommands(const std::string& table, const std::vector<std::string>& commands);

    int GetStatus() const noexcept { return status; }
    const std::string& GetOutput() const noexcept { return output; }
    const std::string& GetErrors() const noexcept { return errors; }
    // Each line of the output, which must be JSON.
    std::vector<nlohmann::json> GetAnswers() const;

private:
    int status = -1; // that of the exit, or less the signal that ended it
    std::string output;
    std::string errors;
};

} // namespace NSKZ::Test

#endif
