#include "ECInaccurateCode.h"

#include "SCBUICoreStrDef.h"
#include "SCKZCoreStrDef.h"

namespace NSKZ::NSKZCore {

ECInaccurateCode::ECInaccurateCode()
    : ECInaccurateCode("Src/ECInaccurateCode", "NSKZ::NSKZCore::ECInaccurateCode::ECInaccurateCode", __LINE__)
{}

ECInaccurateCode::ECInaccurateCode(const char* file, const char* function, long lineNum)
    : VECException(SCKZCoreStrDef::MES_EXCEP_INACCURATECODE, SCBUICoreStrDef::MSG_NOT_IMPLEMENTED, file,
                   function, lineNum)
{}

ECInaccurateCode::ECInaccurateCode(const ECInaccurateCode& other) noexcept = default;
ECInaccurateCode& ECInaccurateCode::operator=(const ECInaccurateCode& other) noexcept = default;
ECInaccurateCode::~ECInaccurateCode() = default;

} // namespace NSKZ::NSKZCore
