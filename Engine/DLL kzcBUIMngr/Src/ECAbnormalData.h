#ifndef ECABNORMALDATA_H
#define ECABNORMALDATA_H

#include "KzcBUIMngrAPI.h"
#include "VECException.h"

namespace NSKZ::NSKZCore {

// An enumerator, an identifier or a stored reference had a value that cannot occur. Whoever catches it treats
// the environment as lost.
class KZCBUIMNGR_API ECAbnormalData : public VECException
{
public:
    // `message`: a text of SCBUICoreStrDef or SCKZCoreStrDef, its placeholders filled (CFormattedMsg).
    // `file`: the source from "Src/" on, without ending ("Src/CBUIDataMngr"). `function`: the qualified name
    // without arguments. All are copied. Throws std::bad_alloc when memory is exhausted.
    ECAbnormalData(const char* message, const char* file, const char* function, long lineNum);
    ECAbnormalData(const ECAbnormalData& other) noexcept;
    ECAbnormalData& operator=(const ECAbnormalData& other) noexcept;
    ~ECAbnormalData() override;
};

} // namespace NSKZ::NSKZCore

#endif
