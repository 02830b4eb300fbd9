#include "VCBnLink.h"

namespace NSKZ::NSKZCore {

DWORD VCBnLink::GetRecCount() const
{
    return recCount;
}

bool VCBnLink::ExistFld(DWORD btnClassID) const
{
    DWORD fld = 0;
    return fldPos.Find(btnClassID, fld);
}

void VCBnLink::GetBtnClassIDList(std::vector<DWORD>& btnClassIDs) const
{
    fldPos.GetBtnClassIDList(btnClassIDs);
}

} // namespace NSKZ::NSKZCore
