#include "VCCommandSource.h"

namespace NSKZ::Host {

VCCommandSource::~VCCommandSource() = default;

} // namespace NSKZ::Host
