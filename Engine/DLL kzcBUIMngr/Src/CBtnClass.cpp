#include "CBtnClass.h"

namespace NSKZ::NSKZCore {

SCBUICoreCom::EBtnClassType CBtnClass::GetBtnClassType() const
{
    return SCBUICoreCom::BTNCLSTYPE_NORMAL;
}

} // namespace NSKZ::NSKZCore
