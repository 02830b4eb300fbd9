#include "CDateBtnClass.h"

namespace NSKZ::NSKZCore {

SCBUICoreCom::EBtnClassType CDateBtnClass::GetBtnClassType() const
{
    return SCBUICoreCom::BTNCLSTYPE_DATE;
}

} // namespace NSKZ::NSKZCore
