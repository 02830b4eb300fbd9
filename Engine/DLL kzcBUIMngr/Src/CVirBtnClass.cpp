#include "CVirBtnClass.h"

#include "IRpLink.h"

namespace NSKZ::NSKZCore {

CVirBtnClass::CVirBtnClass(DWORD btnClassID, const char* nameOfClass,
                           const std::unique_ptr<IRpLink>& rpLinkOfEnv)
    : VCBtnClass(btnClassID, rpLinkOfEnv), nextVirIncBtnID(SCBUICoreCom::BTN_ID_VIRINC_BEGIN)
{
    SetName(nameOfClass);
}

CVirBtnClass::~CVirBtnClass()
{
    LeaveRefBtnClasses();
}

void CVirBtnClass::SetName(const char* text)
{
    name = text == nullptr ? std::nullopt : std::optional<std::string>(text);
}

SCBUICoreCom::EBtnClassType CVirBtnClass::GetBtnClassType() const
{
    return SCBUICoreCom::BTNCLSTYPE_VIR;
}

// --- Virtual inc buttons

VCBtnClass::EMthRetOfCreateSpBtn CVirBtnClass::CreateVirIncBtn(const char* alias,
                                                               VCSpBtn::EMmbBtnSelMth selMth,
                                                               const std::vector<DWORD>* members,
                                                               const IBtnCnd* cnd, VCBtnClass& refBtnClass,
                                                               DWORD& btnID)
{
    const DWORD refBtnClassID = refBtnClass.GetID();
    if (&refBtnClass == this || (IsCommon() && SCBUICoreCom::IsFixedVirBtnClass(refBtnClassID)))
        return CREATESPBTN_NOBTNCLASS;
    const auto make = [=, isCommon = IsCommon()](DWORD newID) {
        return std::make_unique<CVirIncBtn>(newID, selMth, refBtnClassID, isCommon);
    };
    CountRef(refBtnClass); // before the test of the members, which asks for the class
    EMthRetOfCreateSpBtn result = CREATESPBTN_NULL;
    try {
        result = CreateSpBtn(make, alias, members, cnd,
                             {nextVirIncBtnID, SCBUICoreCom::BTN_ID_VIRINC_END, blankVirIncBtnIDs}, btnID);
    } catch (...) {
        UncountRef(refBtnClassID);
        throw;
    }
    if (result != CREATESPBTN_OK)
        UncountRef(refBtnClassID);
    return result;
}

bool CVirBtnClass::DestroyVirIncBtn(DWORD btnID)
{
    DWORD refBtnClassID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
    if (!GetRefBtnClassIDOfVirIncBtn(btnID, refBtnClassID))
        return false;
    const auto forget = [&] {
        const auto found = refBtnClasses.find(refBtnClassID);
        if (found != refBtnClasses.end() && found->second.btnClass != nullptr)
            found->second.btnClass->ineffectiveOuterSpBtns.erase({id, btnID});
        UncountRef(refBtnClassID);
    };
    try {
        DestroyBtn(btnID, SCBUICoreCom::BTNTYPE_VIRINC, blankVirIncBtnIDs);
    } catch (...) {
        if (FindSpBtn(btnID) == nullptr)
            forget();
        throw;
    }
    forget();
    return true;
}

bool CVirBtnClass::GetRefBtnClassIDOfVirIncBtn(DWORD btnID, DWORD& refBtnClassID) const
{
    const VCSpBtn* const spBtn = SCBUICoreCom::IsVirIncBtn(btnID) ? FindSpBtn(btnID) : nullptr;
    if (spBtn == nullptr)
        return false;
    refBtnClassID = static_cast<const CVirIncBtn*>(spBtn)->refBtnClassID;
    return true;
}

bool CVirBtnClass::SetEffectiveInfoOfSpBtn(DWORD btnID, bool isEffective)
{
    const VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn != nullptr && isEffective && GetBtnClassOfMembers(*spBtn) == nullptr)
        return false;
    return VCBtnClass::SetEffectiveInfoOfSpBtn(btnID, isEffective);
}

std::unique_ptr<VCBtn> CVirBtnClass::CreateBtnBasedOnBtnID(DWORD btnID) const
{
    return SCBUICoreCom::IsVirIncBtn(btnID) ? CreateBtnBasedOnBtnType(SCBUICoreCom::BTNTYPE_VIRINC)
                                            : VCBtnClass::CreateBtnBasedOnBtnID(btnID);
}

std::unique_ptr<VCBtn> CVirBtnClass::CreateBtnBasedOnBtnType(SCBUICoreCom::EBtnType type) const
{
    if (type != SCBUICoreCom::BTNTYPE_VIRINC)
        return VCBtnClass::CreateBtnBasedOnBtnType(type);
    return std::make_unique<CVirIncBtn>(SCBUICoreCom::BTN_ID_UNSETTING, VCSpBtn::MMBBTNSELMTH_SELECT,
                                        SCBUICoreCom::BTNCLS_ID_UNSETTING, IsCommon());
}

bool CVirBtnClass::GetBtnTypeBasedOnBtnTypeAttrValue(const char* text, DWORD len,
                                                     SCBUICoreCom::EBtnType& type) const
{
    if (!IXMLIO::IsSameText(text, len, "VirInc", 6))
        return VCBtnClass::GetBtnTypeBasedOnBtnTypeAttrValue(text, len, type);
    type = SCBUICoreCom::BTNTYPE_VIRINC;
    return true;
}

// --- References to classes

VCBtnClass* CVirBtnClass::GetBtnClassOfMembers(const VCSpBtn& spBtn) const noexcept
{
    if (!SCBUICoreCom::IsVirIncBtn(spBtn.id))
        return VCBtnClass::GetBtnClassOfMembers(spBtn);
    const auto found = refBtnClasses.find(static_cast<const CVirIncBtn&>(spBtn).refBtnClassID);
    return found == refBtnClasses.end() ? nullptr : found->second.btnClass;
}

void CVirBtnClass::AddRefBtnClasses(std::vector<const VCBtnClass*>& classes) const
{
    for (const auto& [refBtnClassID, ref] : refBtnClasses) {
        if (ref.btnClass != nullptr)
            classes.push_back(ref.btnClass);
    }
}

DWORD CVirBtnClass::GetRefCount(DWORD refBtnClassID) const noexcept
{
    const auto found = refBtnClasses.find(refBtnClassID);
    return found == refBtnClasses.end() ? 0 : found->second.btnCount;
}

void CVirBtnClass::CountRef(VCBtnClass& refBtnClass)
{
    const auto [ref, isNew] = refBtnClasses.try_emplace(refBtnClass.GetID(), SRefBtnClass{0, nullptr});
    try {
        refBtnClass.refOrgBtnClasses.emplace(id, this);
    } catch (...) {
        if (isNew)
            refBtnClasses.erase(ref);
        throw;
    }
    ref->second.btnClass = &refBtnClass;
    ++ref->second.btnCount;
}

void CVirBtnClass::UncountRef(DWORD refBtnClassID) noexcept
{
    const auto ref = refBtnClasses.find(refBtnClassID);
    if (ref == refBtnClasses.end())
        return;
    if (ref->second.btnCount >= 2) {
        --ref->second.btnCount;
        return;
    }
    if (ref->second.btnClass != nullptr)
        ref->second.btnClass->refOrgBtnClasses.erase(id);
    refBtnClasses.erase(ref);
}

void CVirBtnClass::ForgetRefBtnClass(DWORD refBtnClassID) noexcept
{
    if (refBtnClasses.erase(refBtnClassID) == 0)
        return;
    // Another class may get the identifier, and is none of theirs.
    for (const auto& [btnID, spBtn] : spBtnOfID) {
        if (!SCBUICoreCom::IsVirIncBtn(btnID))
            continue;
        DWORD& refID = static_cast<CVirIncBtn*>(spBtn)->refBtnClassID;
        if (refID == refBtnClassID)
            refID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
    }
}

void CVirBtnClass::LoseRefBtnClass(DWORD refBtnClassID)
{
    for (const auto& [btnID, spBtn] : spBtnOfID) {
        if (!SCBUICoreCom::IsVirIncBtn(btnID) ||
            static_cast<const CVirIncBtn*>(spBtn)->refBtnClassID != refBtnClassID)
            continue;
        // Those that hold it see whether it has a live member, though it may be ineffective already.
        const SpBtnsOfClasses above = ListWithAllAbove(ListEffectiveHolders(*spBtn));
        VCBtnClass::SetEffectiveInfoOfSpBtn(btnID, false);
        (*rpLink)->DeleteBtn(id, btnID);
        spBtn->mmbBtnIDList.clear();
        SetOwnVisibleInfo(*spBtn, VISINFO_NOLIVEMEMBER, true);
        ResetInsideInfoForSpBtns(above, false, true);
    }
}

// Lets go of all members in other classes, those too that are to return, and of the classes.
void CVirBtnClass::LeaveRefBtnClasses() noexcept
{
    for (const auto& [btnID, spBtn] : spBtnOfID) {
        if (SCBUICoreCom::IsVirIncBtn(btnID))
            UnlinkMembers(*spBtn);
    }
    for (const auto& [refBtnClassID, ref] : refBtnClasses) {
        if (ref.btnClass == nullptr)
            continue;
        ref.btnClass->refOrgBtnClasses.erase(id);
        ref.btnClass->ForgetSpBtnsToReturnTo(id);
    }
    refBtnClasses.clear();
}

void CVirBtnClass::Release()
{
    LetReferringClassesGo();
    LeaveRefBtnClasses();
}

// --- What the environment changes

void CVirBtnClass::ClearOwnFields() noexcept
{
    name.reset();
    nextVirIncBtnID = SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
    blankVirIncBtnIDs.clear();
    refBtnClasses.clear();
}

void CVirBtnClass::Clear()
{
    LeaveRefBtnClasses();
    VCBtnClass::Clear();
    ClearOwnFields();
}

void CVirBtnClass::ClearOfFixedSpec()
{
    if (!IsCommon()) {
        Clear();
        return;
    }
    VCBtnClass::ClearOfFixedSpec();
    // Special buttons that a user made are gone, here and in other classes, and may come back.
    hasAbsentSpMembers = true;
    CallRowsOutdated();
}

void CVirBtnClass::Copy(const VCBtnClass& other, const std::unique_ptr<IRpLink>& rpLinkOfEnv)
{
    if (&other == this)
        return;
    const auto& otherVir = dynamic_cast<const CVirBtnClass&>(other);
    LeaveRefBtnClasses();
    ClearOwnFields();
    VCBtnClass::Copy(other, rpLinkOfEnv);
    try {
        name = otherVir.name;
        blankVirIncBtnIDs = otherVir.blankVirIncBtnIDs;
        refBtnClasses = otherVir.refBtnClasses;
    } catch (...) {
        VCBtnClass::Clear();
        ClearOwnFields();
        throw;
    }
    nextVirIncBtnID = otherVir.nextVirIncBtnID;
    for (auto& [refBtnClassID, ref] : refBtnClasses)
        ref.btnClass = nullptr;
}

void CVirBtnClass::BindCopiedRefBtnClasses(const std::map<DWORD, std::unique_ptr<VCBtnClass>>& copies)
{
    for (auto& [refBtnClassID, ref] : refBtnClasses) {
        const auto copy = copies.find(refBtnClassID);
        if (copy == copies.end())
            continue;
        copy->second->refOrgBtnClasses.emplace(id, this);
        ref.btnClass = copy->second.get();
    }
}

bool CVirBtnClass::AddRecs(DWORD, DWORD count, const char* const*, DWORD*, TCBtnIDAssArr<DWORD>&)
{
    recCount += count;
    return true;
}

bool CVirBtnClass::DeleteRecs(DWORD, DWORD count)
{
    recCount -= count;
    return true;
}

} // namespace NSKZ::NSKZCore
