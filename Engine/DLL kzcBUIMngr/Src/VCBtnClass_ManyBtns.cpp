// Special buttons of a class: changes of many of them in one step.

#include "VCBtnClass.h"

#include "IRpLink.h"

#include <algorithm>
#include <iterator>

namespace NSKZ::NSKZCore {

void VCBtnClass::SetMemberBtnIDListOfSpBtns(std::vector<SSpBtnAndMembers>& changes)
{
    // What needs memory comes first.
    SpBtnsOfClasses starts;
    starts.reserve(changes.size());
    for (const SSpBtnAndMembers& change : changes) {
        MakeRoomForBackReferences(*change.spBtn, change.mmbBtnIDs);
        starts.emplace_back(this, change.spBtn);
    }
    const SpBtnsOfClasses above = ListWithAllAbove(starts);

    for (const SSpBtnAndMembers& change : changes)
        UnlinkMembers(*change.spBtn);
    const std::int64_t now = VCSpBtn::GetPresentTime();
    for (SSpBtnAndMembers& change : changes) {
        SetOwnVisibleInfo(*change.spBtn, VISINFO_NOMEMBER, change.mmbBtnIDs.empty());
        if (change.spBtn->mmbBtnIDList != change.mmbBtnIDs)
            change.spBtn->updateTime = now;
        change.spBtn->mmbBtnIDList.swap(change.mmbBtnIDs);
        LinkMembers(*change.spBtn);
    }
    ResetInsideInfoForSpBtns(above, true, true);
}

void VCBtnClass::DestroyCllBtns(const std::set<DWORD>& btnIDs)
{
    // What needs memory comes first.
    std::vector<VCSpBtn*> leaving;
    std::set<DWORD> released;
    SpBtnsOfClasses holders;
    SpBtnsOfClasses listing; // ineffective ones too
    for (const DWORD btnID : btnIDs) {
        VCSpBtn* const spBtn = SCBUICoreCom::IsCllBtn(btnID) ? FindSpBtn(btnID) : nullptr;
        if (spBtn == nullptr)
            continue;
        leaving.push_back(spBtn);
        released.insert(released.end(), btnID);
        AddSpBtnsAbove(*spBtn, listing);
    }
    std::sort(listing.begin(), listing.end());
    listing.erase(std::unique(listing.begin(), listing.end()), listing.end());
    std::copy_if(listing.begin(), listing.end(), std::back_inserter(holders),
                 [](const auto& holder) { return holder.second->effective; });
    SpBtnsOfClasses above = ListWithAllAbove(holders);
    const auto isLeaving = [&](DWORD btnID) { return released.contains(btnID); };
    std::erase_if(above,
                  [&](const auto& holder) { return holder.first == this && isLeaving(holder.second->id); });
    for (VCSpBtn* const spBtn : leaving) {
        spBtn->isRowOutdated = true;
        (*rpLink)->DeleteBtn(id, spBtn->id);
    }

    // Each list is gone through once, however many of its members leave.
    const std::int64_t now = VCSpBtn::GetPresentTime();
    for (const auto& [btnClass, holder] : listing) {
        if (std::erase_if(holder->mmbBtnIDList, isLeaving) != 0)
            holder->updateTime = now;
    }
    for (VCSpBtn* const spBtn : leaving) {
        UnlinkMembers(*spBtn);
        --(spBtn->effective ? spBtnCount : ineffectiveBtnCount);
        if (spBtn->effective && spBtn->sel && --selBtnCount == 0)
            btnSelState = false;
    }
    LetIneffectiveSpBtnsForgetMembers(isLeaving);
    if (ineffectiveBtnCount != 0) {
        for (const auto& [btnID, spBtn] : spBtnOfID) {
            if (spBtn->effective || spBtn->backReferences == nullptr)
                continue;
            const TCFlatSet<DWORD>& holderIDs = spBtn->backReferences->spBtnIDsInClass;
            for (std::size_t i = holderIDs.size(); i-- != 0;) { // entries leave on the way
                const DWORD holderID = *(holderIDs.begin() + static_cast<std::ptrdiff_t>(i));
                if (isLeaving(holderID))
                    UnlinkMember(*FindSpBtn(holderID), *spBtn);
            }
        }
    }
    for (const DWORD btnID : released) {
        nameOrdList.Remove(btnID);
        UnregSpBtn(btnID);
    }
    cllBlankIDList.merge(released);
    ResetInsideInfoForSpBtns(above, true, true);
}

} // namespace NSKZ::NSKZCore
