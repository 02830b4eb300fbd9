#ifndef ECINACCURATECODE_H
#define ECINACCURATECODE_H

#include "KzcBUIMngrAPI.h"
#include "VECException.h"

namespace NSKZ::NSKZCore {

// A way was taken that is declared but leads nowhere: there is no code behind it. The message is always
// SCBUICoreStrDef::MSG_NOT_IMPLEMENTED.
class KZCBUIMNGR_API ECInaccurateCode : public VECException
{
public:
    // Names this class itself as the place.
    ECInaccurateCode();
    // Names the place that throws, as ECAbnormalData does.
    ECInaccurateCode(const char* file, const char* function, long lineNum);
    ECInaccurateCode(const ECInaccurateCode& other) noexcept;
    ECInaccurateCode& operator=(const ECInaccurateCode& other) noexcept;
    ~ECInaccurateCode() override;
};

} // namespace NSKZ::NSKZCore

#endif
