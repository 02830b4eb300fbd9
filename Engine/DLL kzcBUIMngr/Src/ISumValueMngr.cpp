#include "ISumValueMngr.h"

namespace NSKZ::NSKZCore {

ISumValueMngr::~ISumValueMngr() = default;

ISumValueMngr& ISumValueMngr::operator=(const ISumValueMngr&)
{
    return *this;
}

const CBtnWorthList* ISumValueMngr::GetBtnWorths(SCBUICoreCom::ESumMethodForCnd, DWORD,
                                                 const std::vector<DWORD>&, DWORD) const
{
    return nullptr;
}

} // namespace NSKZ::NSKZCore
