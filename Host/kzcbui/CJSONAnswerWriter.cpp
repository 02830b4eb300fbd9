#include "CJSONAnswerWriter.h"

#include <nlohmann/json.hpp>

namespace NSKZ::Host {

CJSONAnswerWriter::CJSONAnswerWriter(std::ostream& outputOfHost) : output(outputOfHost) {}

void CJSONAnswerWriter::WriteAnswer(const SCommand&, SCommandContext&, const CAnswer& answer)
{
    CAnswer object;
    object["ok"] = true;
    object.update(answer);
    WriteLine(object);
}

void CJSONAnswerWriter::WriteError(const std::string&, const std::string& sentence)
{
    CAnswer object;
    object["ok"] = false;
    object["error"] = sentence;
    WriteLine(object);
}

void CJSONAnswerWriter::WriteLine(const CAnswer& object)
{
    // A sentence may quote what is no UTF-8.
    output << object.dump(-1, ' ', false, CAnswer::error_handler_t::replace) << std::endl;
}

} // namespace NSKZ::Host
