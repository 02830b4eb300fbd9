// Virtual classes: their making and going, names and effectiveness.

#include "CBUIDataMngr.h"

#include "CVirBtnClass.h"
#include "IBnLink.h"
#include "IRpLink.h"
#include "SCKZCoreStrDef.h"

#include <algorithm>
#include <cstring>

namespace NSKZ::NSKZCore {

CVirBtnClass* CBUIDataMngr::FindVirBtnClass(DWORD btnClassID) const noexcept
{
    return dynamic_cast<CVirBtnClass*>(FindBtnClass(btnClassID));
}

CBUIDataMngr::EMthRetOfCreateVirBtnCls CBUIDataMngr::CreateVirBtnClass(const char* name, bool common,
                                                                       DWORD& btnClassID)
{
    const char* const text = name == nullptr ? SCKZCoreStrDef::STR_EMPTY : name;
    if (ExistBtnClass(text, static_cast<DWORD>(std::strlen(text))))
        return CREATEVIR_NAME_EXISTS;
    DWORD& nextID = common ? nextCommonVirBtnClassID : nextFixedVirBtnClassID;
    const DWORD endID =
        common ? SCBUICoreCom::BTNCLS_ID_VIR_COMMON_END : SCBUICoreCom::BTNCLS_ID_VIR_FIXED_END;
    const bool isReused = !common && !blankFixedVirBtnClassIDs.empty();
    if (!isReused && nextID > endID)
        return CREATEVIR_ID_EXHAUSTED;
    const DWORD newID = isReused ? blankFixedVirBtnClassIDs.front() : nextID;
    const bool isInUse = ExistBtnClass(newID);
    if (!isInUse) {
        auto virBtnClass = std::make_unique<CVirBtnClass>(newID, text, rpLink);
        TCBtnIDAssArr<DWORD> counts;
        virBtnClass->AddRecs(0, recCount, nullptr, nullptr, counts);
        rpLink->InsertFld(newID);
        try {
            btnClasses.emplace(newID, std::move(virBtnClass));
        } catch (...) {
            rpLink->DeleteFld(newID);
            throw;
        }
    } else if (!common) {
        blankFixedVirBtnClassIDs.push_back(newID);
    }
    if (isReused)
        blankFixedVirBtnClassIDs.pop_front();
    else
        ++nextID;
    if (isInUse)
        return CREATEVIR_ID_IN_USE;
    btnClassID = newID;
    return CREATEVIR_OK;
}

bool CBUIDataMngr::DestroyVirBtnClass(DWORD btnClassID)
{
    CVirBtnClass* const virBtnClass = FindVirBtnClass(btnClassID);
    if (virBtnClass == nullptr)
        return false;
    const bool wasSelected = HasSelection();
    return ChangeSpBtn([&] {
        const bool isReusable = !virBtnClass->IsCommon();
        if (isReusable)
            blankFixedVirBtnClassIDs.push_back(btnClassID); // what needs memory comes first
        try {
            virBtnClass->Release();
        } catch (...) {
            if (isReusable)
                blankFixedVirBtnClassIDs.pop_back();
            throw;
        }
        btnClasses.erase(btnClassID); // from here to the closing nothing fails
        rpLink->DeleteFld(btnClassID);
        std::erase(selBtnClassIDList, btnClassID);
        sumValueCacheMngr->ClearSumValueCache();
        ClearAllBtnSelections(wasSelected);
        return true;
    });
}

bool CBUIDataMngr::DestroyBtnClass(VCBtnClass* btnClass)
{
    if (btnClass == nullptr)
        return false;
    const DWORD btnClassID = btnClass->GetID();
    if (dynamic_cast<CVirBtnClass*>(btnClass) != nullptr)
        return DestroyVirBtnClass(btnClassID);
    const auto found = btnClasses.find(btnClassID);
    if (found == btnClasses.end() || found->second.get() != btnClass)
        return false;
    const bool isInSelection =
        btnClass->IsBtnSelectiveState() || btnClassID == diffBtnClassID ||
        std::any_of(hierarchies.begin(), hierarchies.end(),
                    [=](const SHierarchyInfo& level) { return level.btnClassID == btnClassID; });
    if (isInSelection)
        ClearAllBtnSelections(true);
    btnClass->SetEffective(false);
    btnClass->LetReferringClassesGo();
    if (const auto fld = fldIDOfBtnClass.find(btnClassID); fld != fldIDOfBtnClass.end()) {
        btnClassIDOfFld.erase(fld->second);
        fldIDOfBtnClass.erase(fld);
    }
    std::erase(selBtnClassIDList, btnClassID);
    btnClasses.erase(found);
    bnLink->DeleteFld(btnClassID);
    rpLink->DeleteFld(btnClassID);
    sumValueCacheMngr->ClearSumValueCache();
    return true;
}

bool CBUIDataMngr::GetNameOfVirBtnClass(DWORD btnClassID, const char*& name) const
{
    const CVirBtnClass* const virBtnClass = FindVirBtnClass(btnClassID);
    if (virBtnClass == nullptr)
        return false;
    name = virBtnClass->GetName();
    return true;
}

bool CBUIDataMngr::SetNameOfVirBtnClass(DWORD btnClassID, const char* name)
{
    CVirBtnClass* const virBtnClass = FindVirBtnClass(btnClassID);
    const char* const text = name == nullptr ? SCKZCoreStrDef::STR_EMPTY : name;
    if (virBtnClass == nullptr || ExistBtnClass(text, static_cast<DWORD>(std::strlen(text)), btnClassID))
        return false;
    virBtnClass->SetName(text);
    return true;
}

bool CBUIDataMngr::GetEffectiveInfoOfVirBtnClass(DWORD btnClassID, bool& effective) const
{
    const CVirBtnClass* const virBtnClass = FindVirBtnClass(btnClassID);
    if (virBtnClass == nullptr)
        return false;
    effective = virBtnClass->IsEffective();
    return true;
}

DWORD CBUIDataMngr::GetAllUneffectiveVirBtnClassIDList(std::vector<DWORD>& btnClassIDs) const
{
    btnClassIDs.clear();
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        if (SCBUICoreCom::IsVirBtnClass(btnClassID) && !btnClass->IsEffective())
            btnClassIDs.push_back(btnClassID);
    }
    return static_cast<DWORD>(btnClassIDs.size());
}

bool CBUIDataMngr::SetEffectiveInfoOfVirBtnClass(DWORD btnClassID, bool effective)
{
    CVirBtnClass* const virBtnClass = FindVirBtnClass(btnClassID);
    if (virBtnClass == nullptr)
        return false;
    const bool wasSelected = HasSelection();
    return ChangeSpBtn([&] {
        {
            const CDeferredRows deferredRows(*this);
            virBtnClass->SetEffective(effective);
        }
        BuildOutdatedRows();
        sumValueCacheMngr->ClearSumValueCache();
        ClearAllBtnSelections(wasSelected || HasSelection());
        return true;
    });
}

bool CBUIDataMngr::GetRefBtnClassIDOfVirIncBtn(DWORD btnClassID, DWORD btnID, DWORD& refBtnClassID) const
{
    const CVirBtnClass* const virBtnClass = FindVirBtnClass(btnClassID);
    return virBtnClass != nullptr && virBtnClass->GetRefBtnClassIDOfVirIncBtn(btnID, refBtnClassID);
}

} // namespace NSKZ::NSKZCore
