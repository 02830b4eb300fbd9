#ifndef VCBNLINK_H
#define VCBNLINK_H

#include "CFldPosOfBtnClass.h"
#include "IBnLink.h"

namespace NSKZ::NSKZCore {

// What every version of IBnLink does alike: it knows how many records there are and which class has which
// column. Where the cells are kept, and all that touches one, is the version's own.
class VCBnLink : public IBnLink
{
public:
    DWORD GetRecCount() const override;
    bool ExistFld(DWORD btnClassID) const override;
    void GetBtnClassIDList(std::vector<DWORD>& btnClassIDs) const override;

protected:
    DWORD recCount = 0;       // rows of every column
    CFldPosOfBtnClass fldPos; // at which index a class's column stands
};

} // namespace NSKZ::NSKZCore

#endif
