#include "CJSONAnswerWriter.h"

#include "ECCndError.h"

#include <nlohmann/json.hpp>

namespace NSKZ::Host {

CJSONAnswerWriter::CJSONAnswerWriter(std::ostream& outputOfHost) : output(outputOfHost) {}

void CJSONAnswerWriter::WriteAnswer(const SCommand&, SCommandContext&, const CAnswer& answer)
{
    Write("{\"ok\":true", answer);
}

void CJSONAnswerWriter::WriteError(const std::string&, const std::string& sentence)
{
    CAnswer answer;
    answer["error"] = sentence;
    Write("{\"ok\":false", answer);
}

void CJSONAnswerWriter::WriteCndError(const std::string&, const ECCndError& error)
{
    CAnswer answer;
    answer["error"] = error.what();
    answer["position"] = error.GetPosition();
    Write("{\"ok\":false", answer);
}

// The answer may be large: the first key goes before its text, not into a copy of it.
void CJSONAnswerWriter::Write(std::string_view begin, const CAnswer& answer)
{
    // A sentence may quote what is no UTF-8.
    const std::string text = answer.dump(-1, ' ', false, CAnswer::error_handler_t::replace);
    output << begin << (answer.empty() ? "" : ",") << std::string_view(text).substr(1) << std::endl;
}

} // namespace NSKZ::Host
