#include "SCLinkTables.h"

#include <algorithm>

namespace NSKZ::Host {

using NSKZCore::SCBUICoreCom;

// In the order of the enumeration, which begins with 1.
const std::vector<std::string>& SCLinkTables::GetNames()
{
    static const std::vector<std::string> NAMES = {"on-memory", "memory-saving"};
    static_assert(SCBUICoreCom::LINKTBLVERTYPE_ONMEM == 1 && SCBUICoreCom::LINKTBLVERTYPE_MEMSAV == 2);
    return NAMES;
}

const std::string& SCLinkTables::GetName(SCBUICoreCom::ELinkTableVerType version)
{
    return GetNames().at(version - 1);
}

bool SCLinkTables::ReadName(const std::string& name, SCBUICoreCom::ELinkTableVerType& version)
{
    const auto found = std::find(GetNames().begin(), GetNames().end(), name);
    if (found == GetNames().end())
        return false;
    version = static_cast<SCBUICoreCom::ELinkTableVerType>(found - GetNames().begin() + 1);
    return true;
}

} // namespace NSKZ::Host
