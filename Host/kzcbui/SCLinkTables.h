#ifndef SCLINKTABLES_H
#define SCLINKTABLES_H

#include "SCBUICoreCom.h"

#include <string>
#include <vector>

namespace NSKZ::Host {

// The versions of the engine's link tables as words.
class SCLinkTables
{
public:
    SCLinkTables() = delete;

    static const std::vector<std::string>& GetNames();
    static const std::string& GetName(NSKZCore::SCBUICoreCom::ELinkTableVerType version);
    // False, with `version` untouched, for any other word.
    static bool ReadName(const std::string& name, NSKZCore::SCBUICoreCom::ELinkTableVerType& version);
};

} // namespace NSKZ::Host

#endif
