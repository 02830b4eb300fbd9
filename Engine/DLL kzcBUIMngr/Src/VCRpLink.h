#ifndef VCRPLINK_H
#define VCRPLINK_H

#include "CFldPosOfBtnClass.h"
#include "IRpLink.h"
#include "SCRecPosMap.h"

namespace NSKZ::NSKZCore {

// What every version of IRpLink does alike: it knows which class has which field, and which slice of the
// field's record area is a button's. Where the areas are kept, and all that touches a record, is the
// version's own.
class VCRpLink : public IRpLink
{
public:
    bool ExistFld(DWORD btnClassID) const override;
    bool DeleteBtn(DWORD btnClassID, DWORD btnID) override;
    bool SetRecList(DWORD btnClassID, DWORD btnID, const DWORD* recNumList, DWORD recCount) override;
    void ClearOfFixedSpec() override;
    bool ClearOfFixedSpec(DWORD btnClassID) override = 0;
    bool GetRecCount(DWORD btnClassID, DWORD btnID, DWORD& recCount) const override;
    void GetBtnClassIDList(std::vector<DWORD>& btnClassIDs) const override;
    bool GetBtnIDList(DWORD btnClassID, std::vector<DWORD>& btnIDs) const override;

protected:
    // Gives a button of a field, which is there, the list `newList`; see SetRecList.
    virtual bool ReplaceRecList(DWORD fld, DWORD btnID, const DWORD* newList, DWORD newCount) = 0;

    // Throws ECAbnormalData if the lists given to InsertRec, which is `function`, hold more than is told.
    static void ProveTotal(const TCBtnIDAssArr<SRecordList>& newRecLists, DWORD newTotal, const char* file,
                           const char* function, long line);

    CFldPosOfBtnClass fldPos;
    std::vector<CRecPosMap> recPosList; // for each field: button to slice of the area
};

} // namespace NSKZ::NSKZCore

#endif
