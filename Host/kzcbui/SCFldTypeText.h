#ifndef SCFLDTYPETEXT_H
#define SCFLDTYPETEXT_H

#include "CSourceDataMngr.h"
#include "SCFldType.h"

#include <string>

namespace NSKZ::Host {

// The type of a field, with the form of its dates or times, as the option --type takes it.
class SCFldTypeText
{
public:
    SCFldTypeText() = delete;

    static std::string Write(const NSKZCore::CSourceDataMngr::SFldInfo& info);
    // The same field with another type.
    static NSKZCore::CSourceDataMngr::SFldInfo WithType(const NSKZCore::CSourceDataMngr::SFldInfo& info,
                                                        const NSKZCore::SCFldType::SFldType& type);
};

} // namespace NSKZ::Host

#endif
