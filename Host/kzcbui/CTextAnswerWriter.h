#ifndef CTEXTANSWERWRITER_H
#define CTEXTANSWERWRITER_H

#include "CTextOutput.h"
#include "VCAnswerWriter.h"

#include <ostream>

namespace NSKZ::Host {

// For people: texts and tables, and errors apart from them.
class CTextAnswerWriter : public VCAnswerWriter
{
public:
    // The streams are borrowed. `echoes`: each command is written before its answer.
    CTextAnswerWriter(std::ostream& output, std::ostream& errors, bool isColoured, std::size_t lineWidth,
                      bool echoes);

    bool WantsAll() const noexcept override { return false; }
    void WriteCommand(const std::string& line) override;
    void WriteAnswer(const SCommand& command, SCommandContext& context, const CAnswer& answer) override;
    void WriteError(const std::string& place, const std::string& sentence) override;
    void WriteCndError(const std::string& place, const ECCndError& error) override;
    bool IsGood() const override { return output.good(); }

private:
    std::ostream& output;
    std::ostream& errors;
    CTextOutput text;
    bool echoes;
};

} // namespace NSKZ::Host

#endif
