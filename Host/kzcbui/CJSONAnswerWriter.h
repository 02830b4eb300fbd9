#ifndef CJSONANSWERWRITER_H
#define CJSONANSWERWRITER_H

#include "VCAnswerWriter.h"

#include <ostream>
#include <string_view>

namespace NSKZ::Host {

// For programs: an object for each command, on one line. "ok" is true, or false with "error" and,
// for a typed condition, "position" in characters.
class CJSONAnswerWriter : public VCAnswerWriter
{
public:
    // `output` is borrowed.
    explicit CJSONAnswerWriter(std::ostream& output);

    bool WantsAll() const noexcept override { return true; }
    void WriteCommand(const std::string&) override {}
    void WriteAnswer(const SCommand& command, SCommandContext& context, const CAnswer& answer) override;
    void WriteError(const std::string& place, const std::string& sentence) override;
    void WriteCndError(const std::string& place, const ECCndError& error) override;
    bool IsGood() const override { return output.good(); }

private:
    void Write(std::string_view begin, const CAnswer& answer);

    std::ostream& output;
};

} // namespace NSKZ::Host

#endif
