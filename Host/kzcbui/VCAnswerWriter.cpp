#include "VCAnswerWriter.h"

namespace NSKZ::Host {

VCAnswerWriter::~VCAnswerWriter() = default;

} // namespace NSKZ::Host
