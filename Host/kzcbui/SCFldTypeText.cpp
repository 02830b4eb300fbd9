#include "SCFldTypeText.h"

namespace NSKZ::Host {

using NSKZCore::CSourceDataMngr;
using NSKZCore::SCFldType;

std::string SCFldTypeText::Write(const CSourceDataMngr::SFldInfo& info)
{
    SCFldType::SFldType type;
    type.dataType = info.spec.dataType;
    type.hasForm = true;
    type.dateTypeInfo = info.dateTypeInfo;
    type.timeTypeInfo = info.timeTypeInfo;
    return SCFldType::Write(type);
}

CSourceDataMngr::SFldInfo SCFldTypeText::WithType(const CSourceDataMngr::SFldInfo& info,
                                                  const SCFldType::SFldType& type)
{
    CSourceDataMngr::SFldInfo changed(info);
    changed.spec.dataType = type.dataType;
    changed.dateTypeInfo = type.dateTypeInfo;
    changed.timeTypeInfo = type.timeTypeInfo;
    return changed;
}

} // namespace NSKZ::Host
