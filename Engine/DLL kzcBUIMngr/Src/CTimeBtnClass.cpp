#include "CTimeBtnClass.h"

namespace NSKZ::NSKZCore {

SCBUICoreCom::EBtnClassType CTimeBtnClass::GetBtnClassType() const
{
    return SCBUICoreCom::BTNCLSTYPE_TIME;
}

} // namespace NSKZ::NSKZCore
