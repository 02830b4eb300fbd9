#ifndef VCANSWERWRITER_H
#define VCANSWERWRITER_H

#include "SCommand.h"

#include <string>

namespace NSKZ::Host {

class ECCndError;

// Where the answers of commands go. Each answer is out when its operation returns.
class VCAnswerWriter
{
public:
    VCAnswerWriter() = default;
    virtual ~VCAnswerWriter();
    VCAnswerWriter(const VCAnswerWriter&) = delete;
    VCAnswerWriter& operator=(const VCAnswerWriter&) = delete;

    // Whether lists are answered whole where no --max tells a number.
    virtual bool WantsAll() const noexcept = 0;
    // A command that is about to run.
    virtual void WriteCommand(const std::string& line) = 0;
    virtual void WriteAnswer(const SCommand& command, SCommandContext& context, const CAnswer& answer) = 0;
    // Why a command was refused; `place` tells where it stands in a script, or is empty.
    virtual void WriteError(const std::string& place, const std::string& sentence) = 0;
    // The same for a typed condition, with the place in it.
    virtual void WriteCndError(const std::string& place, const ECCndError& error) = 0;
    // Whether all could be written so far.
    virtual bool IsGood() const = 0;
};

} // namespace NSKZ::Host

#endif
