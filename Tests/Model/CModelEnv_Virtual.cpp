#include "CModelEnv.h"

#include "VCBtn.h"

#include <algorithm>

// Virtual items.

namespace NSKZ::Test {

using NSKZCore::CBUIDataMngr;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SCDeclareConstant;
using NSKZCore::VISINFO_NOLIVEMEMBER;

CModelEnv::ECreateVirtual CModelEnv::CreateVirBtnClass(const char* name, bool common, DWORD& classID)
{
    const std::string nameOfItem = name == nullptr ? "" : name;
    if (ExistBtnClass(nameOfItem, 0))
        return CBUIDataMngr::CREATEVIR_NAME_EXISTS;
    SModelItem item;
    if (common) {
        item.classID = nextCommonClassID++;
    } else if (!freeFixedClassIDs.empty()) {
        item.classID = freeFixedClassIDs.front();
        freeFixedClassIDs.erase(freeFixedClassIDs.begin());
    } else {
        item.classID = nextFixedClassID++;
    }
    item.type = SCDeclareConstant::DATATYPE_UNSETTING;
    item.isVirtual = true;
    item.name = nameOfItem;
    items[item.classID] = item;
    classID = item.classID;
    return CBUIDataMngr::CREATEVIR_OK;
}

bool CModelEnv::ExistBtnClass(const std::string& name, DWORD ignoredClassID) const
{
    return std::any_of(items.begin(), items.end(), [&](const auto& entry) {
        const SModelItem& item = entry.second;
        return item.classID != ignoredClassID && !item.isOut &&
               (item.isVirtual ? item.name : FindFld(item.fldID)->name) == name;
    });
}

bool CModelEnv::DestroyVirBtnClass(DWORD classID)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr || !item->isVirtual)
        return false;
    const bool wasSelected = HasSelection();
    for (auto& [otherID, other] : items) {
        for (const DWORD spBtnID : other.ListSpecial(true)) {
            const SModelBtn& spBtn = other.btns.at(spBtnID);
            if (spBtn.refClassID == classID && !spBtn.hasLostRef)
                LoseRef(other, spBtnID);
        }
    }
    ForgetBtnsOf(classID);
    if (!item->IsCommon())
        freeFixedClassIDs.push_back(classID);
    items.erase(classID);
    std::erase(selectedClasses, classID);
    ForgetSums();
    ClearAllBtnSelections(wasSelected);
    return true;
}

// Its members leave it one by one, and it is switched off for good.
void CModelEnv::LoseRef(SModelItem& item, DWORD btnID)
{
    SModelBtn& btn = item.btns.at(btnID);
    if (btn.effective)
        LetMembersGo(item, btnID);
    for (const DWORD memberID : IDList(btn.members))
        RemoveMember(item, btnID, memberID);
    btn.visibleInfo |= VISINFO_NOLIVEMEMBER;
    for (const SModelBtnRef& ref : FindListing(item, btnID)) {
        if (GetBtn(ref).effective)
            AdjustLiveMemberReason({ref});
    }
    if (btn.effective)
        SwitchOff(item, btnID);
    btn.hasLostRef = true;
}

// No button is held by those of the item any more, and none of them comes back with another item.
void CModelEnv::ForgetBtnsOf(DWORD classID)
{
    const auto isOfClass = [classID](const SModelBtnRef& ref) { return ref.btnClassID == classID; };
    for (auto& [otherID, other] : items) {
        std::erase_if(other.switchedOff, isOfClass);
        for (auto& [btnID, btn] : other.btns)
            std::erase_if(btn.outerHolders, isOfClass);
    }
}

bool CModelEnv::SetNameOfVirBtnClass(DWORD classID, const char* name)
{
    SModelItem* const item = FindItem(classID);
    const std::string nameOfItem = name == nullptr ? "" : name;
    if (item == nullptr || !item->isVirtual || ExistBtnClass(nameOfItem, classID))
        return false;
    item->name = nameOfItem;
    return true;
}

// The virtual inc buttons that hold its buttons are switched with it.
bool CModelEnv::SetEffectiveInfoOfVirBtnClass(DWORD classID, bool effective)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr || !item->isVirtual)
        return false;
    const bool wasSelected = HasSelection();
    SetEffectiveOfItem(*item, effective);
    ForgetSums();
    ClearAllBtnSelections(wasSelected);
    return true;
}

void CModelEnv::SetEffectiveOfItem(SModelItem& item, bool effective)
{
    if (item.effective == effective)
        return;
    if (!effective) {
        item.switchedOff.clear();
        for (const auto& [btnID, btn] : item.btns)
            item.switchedOff.insert(btn.outerHolders.begin(), btn.outerHolders.end());
    }
    for (const SModelBtnRef& ref : BtnRefSet(item.switchedOff)) {
        SModelItem* const other = FindItem(ref.btnClassID);
        if (other == nullptr || other->btns.count(ref.btnID) == 0 || GetBtn(ref).effective == effective ||
            GetBtn(ref).hasLostRef)
            continue;
        if (effective)
            SwitchOn(*other, ref.btnID);
        else
            SwitchOff(*other, ref.btnID);
    }
    item.effective = effective;
    if (effective)
        item.switchedOff.clear();
}

} // namespace NSKZ::Test
