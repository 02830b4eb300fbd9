#ifndef CCOMMANDRUNNER_H
#define CCOMMANDRUNNER_H

#include "CCommandSet.h"
#include "SCommandContext.h"

#include <string>

namespace NSKZ::Host {

class VCAnswerWriter;

// Runs command lines on a workspace and writes their answers.
class CCommandRunner
{
public:
    // All borrowed.
    CCommandRunner(CWorkspace& workspace, const CCommandSet& commands, VCAnswerWriter& writer);

    // Runs a line; a blank one and a comment, whose first character is #, are passed over without an answer.
    // Every failure ends as a written answer. False if the session ends with it. `place` tells where the line
    // stands, for the error of a script.
    bool RunLine(const std::string& line, const std::string& place);

    // Whether a command has failed so far.
    bool HasFailed() const noexcept { return hasFailed; }

private:
    void RunWords(const std::string& line);
    void WriteError(const std::string& place, const std::string& sentence);

    SCommandContext context;
    VCAnswerWriter& writer;
    bool hasFailed = false;
};

} // namespace NSKZ::Host

#endif
