#include "ECAbnormalData.h"

#include "SCKZCoreStrDef.h"

namespace NSKZ::NSKZCore {

ECAbnormalData::ECAbnormalData(const char* message, const char* file, const char* function, long lineNum)
    : VECException(SCKZCoreStrDef::MES_EXCEP_ABNORMALDATA, message, file, function, lineNum)
{}

ECAbnormalData::ECAbnormalData(const ECAbnormalData& other) noexcept = default;
ECAbnormalData& ECAbnormalData::operator=(const ECAbnormalData& other) noexcept = default;
ECAbnormalData::~ECAbnormalData() = default;

} // namespace NSKZ::NSKZCore
