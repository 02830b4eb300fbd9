// Carrying content from one environment or table to another.

#include "CBUIDataMngr.h"

#include "IBnLink.h"
#include "IRpLink.h"
#include "VCBtnClass.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

bool CBUIDataMngr::CopyRpLink(IRpLink* other)
{
    if (other == nullptr)
        return false;
    if (rpLink == nullptr)
        return CreateRpLink(other->GetVersionType());
    if (rpLink->GetVersionType() == other->GetVersionType())
        return true;
    rpLink->Clear();
    std::vector<DWORD> btnClassIDs;
    other->GetBtnClassIDList(btnClassIDs);
    std::vector<DWORD> sizes(btnClassIDs.size());
    for (std::size_t i = 0; i < btnClassIDs.size(); ++i)
        other->GetRecCountOfFld(btnClassIDs[i], sizes[i]);
    const DWORD largest = sizes.empty() ? 0 : *std::max_element(sizes.begin(), sizes.end());
    const std::unique_ptr<DWORD[]> arena(new DWORD[largest]);
    TCBtnIDAssArr<SRecordList> recLists;
    for (std::size_t i = 0; i < btnClassIDs.size(); ++i) {
        other->GetAllRecList(btnClassIDs[i], recLists, arena.get());
        rpLink->InsertFld(btnClassIDs[i], recLists, sizes[i]);
    }
    return true;
}

bool CBUIDataMngr::CopyBnLink(IBnLink* other)
{
    if (other == nullptr)
        return false;
    if (bnLink == nullptr)
        return CreateBnLink(other->GetVersionType());
    if (bnLink->GetVersionType() == other->GetVersionType())
        return true;
    const DWORD recCountOfOther = other->GetRecCount();
    std::vector<DWORD> btnClassIDs;
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        if (SCBUICoreCom::IsSrcBtnClass(btnClassID) && btnClass->IsEffective())
            btnClassIDs.push_back(btnClassID);
    }
    const std::unique_ptr<DWORD[]> cells(new DWORD[recCountOfOther]);
    bnLink->Clear();
    for (const DWORD btnClassID : btnClassIDs) {
        if (!other->GetData(btnClassID, 0, recCountOfOther, cells.get()) ||
            !bnLink->InsertFld(btnClassID, recCountOfOther, cells.get()))
            break;
    }
    return true;
}

} // namespace NSKZ::NSKZCore
