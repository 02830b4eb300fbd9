#include "ISumValueMngr.h"

namespace NSKZ::NSKZCore {

ISumValueMngr::~ISumValueMngr() = default;

ISumValueMngr& ISumValueMngr::operator=(const ISumValueMngr&)
{
    return *this;
}

} // namespace NSKZ::NSKZCore
