#include "CTextAnswerWriter.h"

#include "ECCndError.h"
#include "SCShownText.h"

#include <nlohmann/json.hpp>

namespace NSKZ::Host {

CTextAnswerWriter::CTextAnswerWriter(std::ostream& outputOfHost, std::ostream& errorsOfHost, bool isColoured,
                                     std::size_t lineWidth, bool echoesOfHost)
    : output(outputOfHost), errors(errorsOfHost), text(outputOfHost, isColoured, lineWidth),
      echoes(echoesOfHost)
{}

void CTextAnswerWriter::WriteCommand(const std::string& line)
{
    if (!echoes)
        return;
    text.WriteLine("> " + SCShownText::Escape(line), CTextOutput::STYLE_HEAD);
    output.flush();
}

void CTextAnswerWriter::WriteAnswer(const SCommand& command, SCommandContext& context, const CAnswer& answer)
{
    command.show(context, answer, text);
    if (echoes)
        text.WriteLine("");
    output.flush();
}

void CTextAnswerWriter::WriteError(const std::string& place, const std::string& sentence)
{
    errors << (place.empty() ? "" : place + ": ") << SCShownText::Escape(sentence) << std::endl;
}

void CTextAnswerWriter::WriteCndError(const std::string& place, const ECCndError& error)
{
    WriteError(place, error.what());
    const std::string& condition = error.GetCondition();
    const std::string before = SCShownText::Escape(condition.substr(0, error.GetOffset()));
    errors << "  " << before << SCShownText::Escape(condition.substr(error.GetOffset())) << "\n  "
           << std::string(SCShownText::GetWidth(before), ' ') << '^' << std::endl;
}

} // namespace NSKZ::Host
