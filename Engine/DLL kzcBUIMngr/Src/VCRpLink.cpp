#include "VCRpLink.h"

#include "SCKZCoreStrDef.h"

namespace NSKZ::NSKZCore {

bool VCRpLink::ExistFld(DWORD btnClassID) const
{
    DWORD fld = 0;
    return fldPos.Find(btnClassID, fld);
}

bool VCRpLink::DeleteBtn(DWORD btnClassID, DWORD btnID)
{
    DWORD fld = 0;
    return fldPos.Find(btnClassID, fld) && recPosList[fld].Exist(btnID) &&
           ReplaceRecList(fld, btnID, nullptr, 0);
}

bool VCRpLink::SetRecList(DWORD btnClassID, DWORD btnID, const DWORD* recNumList, DWORD recCount)
{
    DWORD fld = 0;
    return fldPos.Find(btnClassID, fld) && ReplaceRecList(fld, btnID, recNumList, recCount);
}

void VCRpLink::ClearOfFixedSpec()
{
    std::vector<DWORD> btnClassIDs;
    GetBtnClassIDList(btnClassIDs);
    for (const DWORD btnClassID : btnClassIDs)
        ClearOfFixedSpec(btnClassID);
}

bool VCRpLink::GetRecCount(DWORD btnClassID, DWORD btnID, DWORD& recCount) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    const SRecordPos* const slice = recPosList[fld].Find(btnID);
    recCount = slice != nullptr ? slice->recCount : 0;
    return true;
}

bool VCRpLink::GetBtnIDList(DWORD btnClassID, std::vector<DWORD>& btnIDs) const
{
    DWORD fld = 0;
    if (!fldPos.Find(btnClassID, fld))
        return false;
    btnIDs.clear();
    recPosList[fld].ForEach([&btnIDs](DWORD btnID, const SRecordPos&) { btnIDs.push_back(btnID); });
    return true;
}

void VCRpLink::GetBtnClassIDList(std::vector<DWORD>& btnClassIDs) const
{
    fldPos.GetBtnClassIDList(btnClassIDs);
}

void VCRpLink::ProveTotal(const TCBtnIDAssArr<SRecordList>& newRecLists, DWORD newTotal, const char* file,
                          const char* function, long line)
{
    if (SCRecPosMap::GetSumOfRecCounts(newRecLists) > newTotal)
        throw ECAbnormalData(SCKZCoreStrDef::MSG_ABNORMAL_DATASIZE, file, function, line);
}

} // namespace NSKZ::NSKZCore
