// Special buttons of a class: their making and going, their members, and the records they stand for.

#include "VCBtnClass.h"

#include "CCllBtn.h"
#include "CFormattedMsg.h"
#include "CIncBtn.h"
#include "CSpBtnWalk.h"
#include "ECAbnormalData.h"
#include "IRpLink.h"
#include "SCBUICoreStrDef.h"
#include "SCIDList.h"
#include "SCKZCoreCom.h"
#include "SCSortRecs.h"

#include <algorithm>
#include <cstring>

namespace NSKZ::NSKZCore {

namespace {

constexpr const char* SRC_FILE = "Src/VCBtnClass";

} // namespace

VCBtnClass* VCBtnClass::GetBtnClassOfMembers(const VCSpBtn& spBtn) const noexcept
{
    const bool isOwn = SCBUICoreCom::IsIncBtn(spBtn.id) || SCBUICoreCom::IsCllBtn(spBtn.id);
    return isOwn ? const_cast<VCBtnClass*>(this) : nullptr;
}

void VCBtnClass::AddRefBtnClasses(std::vector<const VCBtnClass*>&) const {}

bool VCBtnClass::IsBarredAsMember(DWORD) const noexcept
{
    return false;
}

bool VCBtnClass::IsSpBtnWithRpLink(const VCSpBtn* spBtn) noexcept
{
    return spBtn != nullptr && spBtn->mmbBtnSelMth == VCSpBtn::MMBBTNSELMTH_SELECT &&
           spBtn->mmbBtnIDList.size() >= ROW_MEMBER_COUNT;
}

bool VCBtnClass::IsCndCllBtn(const VCBtn& btn) noexcept
{
    return SCBUICoreCom::IsCllBtn(btn.id) &&
           static_cast<const VCSpBtn&>(btn).mmbBtnSelMth == VCSpBtn::MMBBTNSELMTH_CONDITION;
}

// --- Queries

bool VCBtnClass::GetEffectiveInfoOfSpBtn(DWORD btnID, bool& isEffective) const
{
    const VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr)
        return false;
    isEffective = spBtn->effective;
    return true;
}

bool VCBtnClass::GetMmbBtnSelMthOfSpBtn(DWORD btnID, VCSpBtn::EMmbBtnSelMth& selMth) const
{
    const VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr)
        return false;
    selMth = spBtn->mmbBtnSelMth;
    return true;
}

bool VCBtnClass::GetMemberBtnCountOfSpBtn(DWORD btnID, DWORD& count) const
{
    const VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr)
        return false;
    count = static_cast<DWORD>(spBtn->mmbBtnIDList.size());
    return true;
}

bool VCBtnClass::GetMemberBtnIDListOfSpBtn(DWORD btnID, std::vector<DWORD>& mmbBtnIDs) const
{
    const std::vector<DWORD>* members = nullptr;
    if (!GetMemberBtnIDListOfSpBtn(btnID, members))
        return false;
    mmbBtnIDs = *members;
    return true;
}

bool VCBtnClass::GetMemberBtnIDListOfSpBtn(DWORD btnID, const std::vector<DWORD>*& mmbBtnIDs) const
{
    const VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr)
        return false;
    mmbBtnIDs = &spBtn->mmbBtnIDList;
    return true;
}

VCBtnClass::EMthRetOfGetMmbBtnCnd VCBtnClass::GetMemberBtnCndOfSpBtn(DWORD btnID, const IBtnCnd*& cnd) const
{
    const VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr)
        return GETMMBBTNCND_NOSPBTN;
    if (spBtn->mmbBtnCnd == nullptr)
        return GETMMBBTNCND_NOCND;
    cnd = spBtn->mmbBtnCnd.get();
    return GETMMBBTNCND_OK;
}

bool VCBtnClass::GetDispMemberBtnInfoOfIncBtn(DWORD btnID, bool& disp) const
{
    const VCSpBtn* const spBtn = SCBUICoreCom::IsIncBtn(btnID) ? FindSpBtn(btnID) : nullptr;
    if (spBtn == nullptr)
        return false;
    disp = static_cast<const CIncBtn*>(spBtn)->dispMember;
    return true;
}

bool VCBtnClass::GetBtnMngrInfoOfSpBtn(DWORD btnID, bool& managedByUser) const
{
    if (!SCBUICoreCom::IsSpBtn(btnID))
        return false;
    managedByUser = true;
    return true;
}

bool VCBtnClass::GetSpBtnIDListIncludingSpecifiedBtn(DWORD btnID, std::vector<DWORD>& spBtnIDs) const
{
    const VCBtn* const btn = FindBtn(btnID);
    if (btn == nullptr)
        return false;
    spBtnIDs.clear();
    if (btn->backReferences != nullptr)
        spBtnIDs.assign(btn->backReferences->spBtnIDsInClass.begin(),
                        btn->backReferences->spBtnIDsInClass.end());
    return true;
}

bool VCBtnClass::GetRootSpBtnIDListIncludingBtn(DWORD btnID, bool includeIneffective,
                                                std::vector<DWORD>& spBtnIDs) const
{
    const VCBtn* const start = FindBtn(btnID);
    if (start == nullptr)
        return false;
    // Which ineffective buttons hold a button: their members do not know of them.
    std::vector<std::pair<DWORD, DWORD>> ineffectiveHolders; // member and holder
    if (includeIneffective) {
        for (const auto& [spBtnID, spBtn] : spBtnOfID) {
            if (spBtn->effective || GetBtnClassOfMembers(*spBtn) != this)
                continue;
            for (const DWORD mmbBtnID : spBtn->mmbBtnIDList)
                ineffectiveHolders.emplace_back(mmbBtnID, spBtnID);
        }
        std::sort(ineffectiveHolders.begin(), ineffectiveHolders.end());
    }
    // Those that hold a button, of which an ineffective one remembers others.
    const auto listHolders = [&](const VCBtn& btn) {
        std::vector<DWORD> holders;
        if (btn.backReferences != nullptr) {
            for (const DWORD spBtnID : btn.backReferences->spBtnIDsInClass) {
                const VCSpBtn* const spBtn = FindSpBtn(spBtnID);
                if (spBtn != nullptr && spBtn->effective && (btn.IsEffective() || spBtn->HasMember(btn.id)))
                    holders.push_back(spBtnID);
            }
        }
        auto found = std::lower_bound(ineffectiveHolders.begin(), ineffectiveHolders.end(),
                                      std::make_pair(btn.id, DWORD{0}));
        for (; found != ineffectiveHolders.end() && found->first == btn.id; ++found)
            holders.push_back(found->second);
        return holders;
    };

    std::vector<DWORD> roots;
    auto& self = const_cast<VCBtnClass&>(*this); // a walk marks, and takes its marks away
    CSpBtnWalk walk;
    for (const DWORD holder : listHolders(*start))
        walk.Add(self, *self.FindSpBtn(holder));
    for (std::size_t i = 0; i < walk.GetSize(); ++i) {
        const VCSpBtn& spBtn = *walk.Get(i).second;
        const std::vector<DWORD> holders = listHolders(spBtn);
        if (holders.empty())
            roots.push_back(spBtn.id);
        for (const DWORD holder : holders)
            walk.Add(self, *self.FindSpBtn(holder));
    }
    std::sort(roots.begin(), roots.end());
    spBtnIDs = std::move(roots);
    return true;
}

void VCBtnClass::GetSpBtnIDListThatTheSpecifiedBtnInfluences(DWORD btnID,
                                                             std::set<SBtnClassIDAndBtnID>& spBtns,
                                                             bool directOnly) const
{
    auto& self = const_cast<VCBtnClass&>(*this); // a walk marks, and takes its marks away
    VCBtn* const start = self.FindBtn(btnID);
    if (start == nullptr)
        return;
    SpBtnsOfClasses above;
    CSpBtnWalk walk;
    const auto addAbove = [&](VCBtnClass& btnClass, const VCBtn& btn) {
        above.clear();
        btnClass.AddSpBtnsAbove(btn, above);
        for (const auto& [classOfSpBtn, spBtn] : above) {
            if (classOfSpBtn != &btnClass && !classOfSpBtn->effective)
                continue;
            spBtns.insert({classOfSpBtn->id, spBtn->id});
            walk.Add(*classOfSpBtn, *spBtn);
        }
    };
    addAbove(self, *start);
    for (std::size_t i = 0; !directOnly && i < walk.GetSize(); ++i)
        addAbove(*walk.Get(i).first, *walk.Get(i).second);
}

// Calls visit(class of the member, member) for each member in the end of a special button: what is no special
// button that can be looked into.
template <class TVisit>
bool VCBtnClass::VisitMembersInTheEnd(DWORD btnID, bool intoVirIncBtns, const TVisit& visit) const
{
    const auto isEnd = [=](DWORD mmbBtnID) {
        return !SCBUICoreCom::IsSpBtn(mmbBtnID) || (!intoVirIncBtns && SCBUICoreCom::IsVirIncBtn(mmbBtnID));
    };
    auto& self = const_cast<VCBtnClass&>(*this); // a walk marks, and takes its marks away
    VCSpBtn* const start = self.FindSpBtn(btnID);
    if (start == nullptr || isEnd(btnID))
        return false;
    CSpBtnWalk walk;
    walk.Add(self, *start);
    for (std::size_t i = 0; i < walk.GetSize(); ++i) {
        const auto [btnClass, spBtn] = walk.Get(i);
        VCBtnClass* const classOfMembers = btnClass->GetBtnClassOfMembers(*spBtn);
        if (classOfMembers == nullptr)
            return false;
        for (const DWORD mmbBtnID : spBtn->mmbBtnIDList) {
            VCSpBtn* const nested = isEnd(mmbBtnID) ? nullptr : classOfMembers->FindSpBtn(mmbBtnID);
            if (nested != nullptr)
                walk.Add(*classOfMembers, *nested);
            else if (isEnd(mmbBtnID) ? !visit(*classOfMembers, mmbBtnID) : classOfMembers == btnClass)
                return false;
        }
    }
    return true;
}

bool VCBtnClass::GetMinimumMemberBtnIDListOfSpBtn(DWORD btnID, std::set<SBtnClassIDAndBtnID>& minimum) const
{
    return VisitMembersInTheEnd(btnID, true, [&](const VCBtnClass& btnClass, DWORD mmbBtnID) {
        if (!SCBUICoreCom::IsSrcBtn(mmbBtnID))
            return false;
        minimum.insert({btnClass.id, mmbBtnID});
        return true;
    });
}

bool VCBtnClass::GetMinimumMemberBtnIDListInThisBtnClassOfSpBtn(DWORD btnID, std::set<DWORD>& btnIDs) const
{
    return VisitMembersInTheEnd(btnID, false, [&](const VCBtnClass&, DWORD mmbBtnID) {
        if (!SCBUICoreCom::IsSrcBtn(mmbBtnID) && !SCBUICoreCom::IsVirIncBtn(mmbBtnID))
            return false;
        btnIDs.insert(mmbBtnID);
        return true;
    });
}

bool VCBtnClass::IsBtnWithRpLink(DWORD btnID) const
{
    return !SCBUICoreCom::IsSpBtn(btnID) || IsSpBtnWithRpLink(FindSpBtn(btnID));
}

DWORD VCBtnClass::GetAllSpBtnList(std::map<DWORD, VCSpBtn*>& spBtns, bool includeIneffective) const
{
    spBtns.clear();
    for (const auto& [btnID, spBtn] : spBtnOfID) {
        if (includeIneffective || spBtn->effective)
            spBtns.emplace_hint(spBtns.end(), btnID, spBtn);
    }
    return static_cast<DWORD>(spBtns.size());
}

// --- Making and going

std::unique_ptr<VCBtn> VCBtnClass::CreateBtnBasedOnBtnID(DWORD btnID) const
{
    if (SCBUICoreCom::IsIncBtn(btnID))
        return CreateBtnBasedOnBtnType(SCBUICoreCom::BTNTYPE_INC);
    if (SCBUICoreCom::IsCllBtn(btnID))
        return CreateBtnBasedOnBtnType(SCBUICoreCom::BTNTYPE_CLL);
    return nullptr;
}

std::unique_ptr<VCBtn> VCBtnClass::CreateBtnBasedOnBtnType(SCBUICoreCom::EBtnType type) const
{
    constexpr DWORD NO_ID = SCBUICoreCom::BTN_ID_UNSETTING;
    if (type == SCBUICoreCom::BTNTYPE_INC)
        return std::make_unique<CIncBtn>(NO_ID, VCSpBtn::MMBBTNSELMTH_SELECT);
    if (type == SCBUICoreCom::BTNTYPE_CLL)
        return std::make_unique<CCllBtn>(NO_ID, VCSpBtn::MMBBTNSELMTH_SELECT);
    return nullptr;
}

std::unique_ptr<VCBtn> VCBtnClass::CreateBtnBasedOnBtnTypeAttrValue(const char* text, DWORD len) const
{
    SCBUICoreCom::EBtnType type = SCBUICoreCom::BTNTYPE_NORMAL;
    if (!GetBtnTypeBasedOnBtnTypeAttrValue(text, len, type))
        return nullptr;
    return CreateBtnBasedOnBtnType(type);
}

bool VCBtnClass::GetBtnTypeBasedOnBtnTypeAttrValue(const char* text, DWORD len,
                                                   SCBUICoreCom::EBtnType& type) const
{
    if (IXMLIO::IsSameText(text, len, "Inc", 3))
        type = SCBUICoreCom::BTNTYPE_INC;
    else if (IXMLIO::IsSameText(text, len, "Cll", 3))
        type = SCBUICoreCom::BTNTYPE_CLL;
    else
        return false;
    return true;
}

VCBtnClass::EMthRetOfCreateSpBtn
VCBtnClass::CreateSpBtn(const std::function<std::unique_ptr<VCSpBtn>(DWORD)>& make, const char* alias,
                        const std::vector<DWORD>* members, const IBtnCnd* cnd, const SSpBtnIDs& ids,
                        DWORD& btnID)
{
    const bool isNew = ids.blankIDs.empty();
    if (isNew && ids.nextID > ids.endID)
        return CREATESPBTN_NOID;
    const DWORD takenID = isNew ? ids.nextID : *ids.blankIDs.begin();
    const EMthRetOfCreateSpBtn result = RegSpBtn(make(takenID), alias, members, cnd);
    if (result == CREATESPBTN_OK) {
        if (!isNew)
            ids.blankIDs.erase(ids.blankIDs.begin());
        btnID = takenID;
    } else if (isNew) {
        ids.blankIDs.insert(takenID);
    }
    if (isNew)
        ++ids.nextID;
    return result;
}

VCBtnClass::EMthRetOfCreateSpBtn VCBtnClass::CreateIncBtn(const char* alias, VCSpBtn::EMmbBtnSelMth selMth,
                                                          const std::vector<DWORD>* members,
                                                          const IBtnCnd* cnd, DWORD& btnID)
{
    return CreateSpBtn([=](DWORD newID) { return std::make_unique<CIncBtn>(newID, selMth); }, alias, members,
                       cnd, {incNextID, SCBUICoreCom::BTN_ID_INC_END, incBlankIDList}, btnID);
}

VCBtnClass::EMthRetOfCreateSpBtn VCBtnClass::CreateCllBtn(const char* alias, VCSpBtn::EMmbBtnSelMth selMth,
                                                          const std::vector<DWORD>* members,
                                                          const IBtnCnd* cnd, DWORD& btnID)
{
    return CreateSpBtn([=](DWORD newID) { return std::make_unique<CCllBtn>(newID, selMth); }, alias, members,
                       cnd, {cllNextID, SCBUICoreCom::BTN_ID_CLL_END, cllBlankIDList}, btnID);
}

VCBtnClass::EMthRetOfCreateSpBtn VCBtnClass::RegSpBtn(std::unique_ptr<VCSpBtn> spBtn, const char* alias,
                                                      const std::vector<DWORD>* members, const IBtnCnd* cnd)
{
    if (spBtn == nullptr)
        return CREATESPBTN_NULL;
    if (FindBtn(spBtn->id) != nullptr)
        return CREATESPBTN_DUPLICATEID;
    const bool selectsByList = spBtn->mmbBtnSelMth == VCSpBtn::MMBBTNSELMTH_SELECT;
    if (!selectsByList && spBtn->mmbBtnSelMth != VCSpBtn::MMBBTNSELMTH_CONDITION)
        return CREATESPBTN_UNKNOWNSELMTH;
    if (selectsByList && members != nullptr && !CheckAppropriateMmbBtnOrNot(spBtn.get(), *members))
        return CREATESPBTN_BADMEMBER;

    spBtn->SetAlias(alias);
    if (!selectsByList && cnd != nullptr)
        spBtn->mmbBtnCnd.reset(cnd->CreateClone());
    VCSpBtn& registered = *spBtn;
    const DWORD btnID = spBtn->id;
    InsertBtnInfoToNameOrdList(&registered);
    try {
        RegBtn(std::move(spBtn));
    } catch (...) { // the button is gone
        nameOrdList.Remove(btnID);
        throw;
    }
    try {
        if (selectsByList && members != nullptr)
            ChangeMemberBtnIDListOfSpBtn(registered, *members);
        LinkToAwaitingOuterSpBtns(registered);
    } catch (...) {
        AdjstRelatedInfoOnMmbBtnOfSpBtn(&registered, false);
        nameOrdList.Remove(btnID);
        UnregSpBtn(btnID);
        (*rpLink)->DeleteBtn(id, btnID);
        for (const auto& [btnClassID, btnClass] : refOrgBtnClasses) {
            if (btnClass->hasAbsentSpMembers) { // it may have taken the button in
                btnClass->CallRowsOutdated();
                btnClass->ResetLiveMemberInfoOfAllSpBtnsWithoutMemory();
            }
        }
        throw;
    }
    ++spBtnCount;
    return CREATESPBTN_OK;
}

// Virtual inc buttons may list a special button that is not there: what users fix goes and comes back without
// the buttons of common classes.
void VCBtnClass::LinkToAwaitingOuterSpBtns(const VCSpBtn& member)
{
    SpBtnsOfClasses awaiting;
    for (const auto& [btnClassID, btnClass] : refOrgBtnClasses) {
        if (!btnClass->hasAbsentSpMembers)
            continue;
        for (const auto& [btnID, spBtn] : btnClass->spBtnOfID) {
            if (btnClass->GetBtnClassOfMembers(*spBtn) != this || !spBtn->HasMember(member.id))
                continue;
            if (member.mmbBtnSelMth == VCSpBtn::MMBBTNSELMTH_CONDITION) {
                // A button with a condition is a member of none: what they waited for does not come back.
                std::erase(spBtn->mmbBtnIDList, member.id);
                spBtn->isRowOutdated = true;
                if (!IsSpBtnWithRpLink(spBtn))
                    (*rpLink)->DeleteBtn(btnClass->id, btnID);
            } else if (spBtn->effective) {
                awaiting.emplace_back(btnClass, spBtn);
            }
        }
    }
    if (awaiting.empty())
        return;
    const SpBtnsOfClasses above = ListWithAllAbove(awaiting);
    for (const auto& [btnClass, spBtn] : awaiting)
        btnClass->MakeRoomForBackReferences(*spBtn, {member.id}, awaiting.size());
    for (const auto& [btnClass, spBtn] : awaiting)
        member.backReferences->spBtnIDsOfOtherClass.insert({btnClass->id, spBtn->id});
    ResetInsideInfoForSpBtns(above, true, true);
}

bool VCBtnClass::DestroyIncBtn(DWORD btnID)
{
    return DestroyBtn(btnID, SCBUICoreCom::BTNTYPE_INC, incBlankIDList);
}

bool VCBtnClass::DestroyCllBtn(DWORD btnID)
{
    return DestroyBtn(btnID, SCBUICoreCom::BTNTYPE_CLL, cllBlankIDList);
}

bool VCBtnClass::DestroyBtn(DWORD btnID, SCBUICoreCom::EBtnType type, std::set<DWORD>& blankIDs)
{
    VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr || spBtn->GetType() != type)
        return false;
    // What needs memory comes first.
    std::set<DWORD> released{btnID};
    SpBtnsOfClasses above = ListWithAllAbove(ListEffectiveHolders(*spBtn));
    std::erase_if(above, [=](const auto& holder) { return holder.second == spBtn; }); // in a loop
    (*rpLink)->DeleteBtn(id, btnID);

    AdjstRelatedInfoBtnIncludingOneself(spBtn, false);
    AdjstRelatedInfoOnMmbBtnOfSpBtn(spBtn, false);
    LetIneffectiveSpBtnsForget(*spBtn);
    --(spBtn->effective ? spBtnCount : ineffectiveBtnCount);
    if (spBtn->effective && spBtn->sel && --selBtnCount == 0)
        btnSelState = false;
    nameOrdList.Remove(btnID);
    UnregSpBtn(btnID);
    blankIDs.merge(released);
    ResetInsideInfoForSpBtns(above, true, true);
    return true;
}

bool VCBtnClass::SetEffectiveInfoOfSpBtn(DWORD btnID, bool isEffective)
{
    VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr)
        return false;
    if (spBtn->effective == isEffective)
        return true;

    if (!isEffective) {
        const SpBtnsOfClasses above = ListWithAllAbove(ListEffectiveHolders(*spBtn));
        SetOwnVisibleInfo(*spBtn, VISINFO_INEFFECTIVE, true);
        spBtn->effective = false;
        spBtn->updateTime = VCSpBtn::GetPresentTime();
        AdjstRelatedInfoBtnIncludingOneself(spBtn, false);
        AdjstRelatedInfoOnMmbBtnOfSpBtn(spBtn, false);
        nameOrdList.Remove(btnID);
        --spBtnCount;
        ++ineffectiveBtnCount;
        if (spBtn->sel && --selBtnCount == 0)
            btnSelState = false;
        ResetInsideInfoForSpBtns(above, true, true);
        return true;
    }

    // What needs memory comes first.
    const SpBtnsOfClasses above = ListWithAllAbove({{this, spBtn}});
    SpBtnsOfClasses holders;
    AddSpBtnsAbove(*spBtn, holders);
    for (const auto& [btnClass, holder] : holders) {
        holder->mmbBtnIDList.reserve(holder->mmbBtnIDList.size() + 1);
        // Some may have come later.
        btnClass->MakeRoomForBackReferences(*holder, holder->mmbBtnIDList, holders.size() + 1);
    }
    MakeRoomForBackReferences(*spBtn, spBtn->mmbBtnIDList, holders.size() + 1);
    InsertBtnInfoToNameOrdList(spBtn);
    SetOwnVisibleInfo(*spBtn, VISINFO_INEFFECTIVE, false);
    spBtn->effective = true;
    spBtn->updateTime = VCSpBtn::GetPresentTime();
    AdjstRelatedInfoBtnIncludingOneself(spBtn, true);
    LinkMembers(*spBtn);
    ++spBtnCount;
    --ineffectiveBtnCount;
    if (spBtn->sel) {
        ++selBtnCount;
        btnSelState = true;
    }
    ResetInsideInfoForSpBtns(above, true, true);
    return true;
}

// --- Members

bool VCBtnClass::CheckAppropriateMmbBtnOrNot(const VCSpBtn* spBtn, const std::vector<DWORD>& mmbBtnIDs) const
{
    VCBtnClass* const classOfMembers = spBtn == nullptr ? nullptr : GetBtnClassOfMembers(*spBtn);
    if (classOfMembers == nullptr)
        return false;
    SpBtnsOfClasses candidates;
    for (const DWORD mmbBtnID : mmbBtnIDs) {
        if (classOfMembers->IsBarredAsMember(mmbBtnID))
            return false;
        if (!SCBUICoreCom::IsSpBtn(mmbBtnID))
            continue;
        VCSpBtn* const candidate = classOfMembers->FindSpBtn(mmbBtnID);
        if (candidate == nullptr || candidate->mmbBtnSelMth == VCSpBtn::MMBBTNSELMTH_CONDITION)
            return false;
        candidates.emplace_back(classOfMembers, candidate);
    }
    // Nothing holds a button that the class does not have yet, unless its identifier was listed before.
    const bool isNew = FindSpBtn(spBtn->id) == nullptr && !hasAbsentSpMembers && refOrgBtnClasses.empty();
    return spBtn->mmbBtnSelMth != VCSpBtn::MMBBTNSELMTH_SELECT || candidates.empty() || isNew ||
           !HoldAny(candidates, id, spBtn->id);
}

bool VCBtnClass::CheckWhetherToHaveSpecificBtnID(DWORD spBtnID, DWORD btnClassID, DWORD targetBtnID) const
{
    if (btnClassID == id && spBtnID == targetBtnID)
        return true;
    auto& self = const_cast<VCBtnClass&>(*this); // a walk marks, and takes its marks away
    VCSpBtn* const spBtn = self.FindSpBtn(spBtnID);
    return spBtn != nullptr && HoldAny({{&self, spBtn}}, btnClassID, targetBtnID);
}

// Whether one of `spBtns` is the target or holds it at any depth, across classes. Buttons that an ineffective
// button will return to count as holding it.
bool VCBtnClass::HoldAny(const SpBtnsOfClasses& spBtns, DWORD targetClassID, DWORD targetBtnID)
{
    // A button is a member in its own class and in those that refer to it, so that only classes that are
    // referred to on the way down are looked at.
    std::vector<const VCBtnClass*> classes;
    for (const auto& [btnClass, spBtn] : spBtns)
        classes.push_back(btnClass);
    std::set<const VCBtnClass*> reached;
    using Returning = std::pair<SBtnClassIDAndBtnID, std::pair<VCBtnClass*, VCSpBtn*>>;
    std::vector<Returning> returning; // the button returned to, the ineffective one
    while (!classes.empty()) {
        auto& btnClass = const_cast<VCBtnClass&>(*classes.back()); // a walk marks, and takes its marks away
        classes.pop_back();
        if (!reached.insert(&btnClass).second)
            continue;
        btnClass.AddRefBtnClasses(classes);
        if (btnClass.ineffectiveBtnCount == 0)
            continue;
        for (const auto& [btnID, spBtn] : btnClass.spBtnOfID) {
            if (spBtn->effective || spBtn->backReferences == nullptr)
                continue;
            for (const DWORD holderID : spBtn->backReferences->spBtnIDsInClass)
                returning.push_back({{btnClass.id, holderID}, {&btnClass, spBtn}});
            for (const SBtnClassIDAndBtnID& holder : spBtn->backReferences->spBtnIDsOfOtherClass)
                returning.push_back({holder, {&btnClass, spBtn}});
        }
    }
    const auto isBefore = [](const Returning& left, const Returning& right) {
        return left.first < right.first;
    };
    std::sort(returning.begin(), returning.end(), isBefore);

    CSpBtnWalk walk;
    for (const auto& [btnClass, spBtn] : spBtns)
        walk.Add(*btnClass, *spBtn);
    for (std::size_t i = 0; i < walk.GetSize(); ++i) {
        const auto [btnClass, spBtn] = walk.Get(i);
        if (btnClass->id == targetClassID && spBtn->id == targetBtnID)
            return true;
        if (VCBtnClass* const classOfMembers = btnClass->GetBtnClassOfMembers(*spBtn)) {
            for (const DWORD mmbBtnID : spBtn->mmbBtnIDList) {
                if (classOfMembers->id == targetClassID && mmbBtnID == targetBtnID)
                    return true;
                if (VCSpBtn* const nested = classOfMembers->FindSpBtn(mmbBtnID))
                    walk.Add(*classOfMembers, *nested);
            }
        }
        const auto [first, last] = std::equal_range(returning.begin(), returning.end(),
                                                    Returning{{btnClass->id, spBtn->id}, {}}, isBefore);
        for (auto found = first; found != last; ++found)
            walk.Add(*found->second.first, *found->second.second);
    }
    return false;
}

void VCBtnClass::ChangeMemberBtnIDListOfSpBtn(VCSpBtn& spBtn, std::vector<DWORD> mmbBtnIDs)
{
    const unsigned int noMember = mmbBtnIDs.empty() ? VISINFO_NOMEMBER : 0;
    ReplaceMembers(spBtn, SCIDList::TakeEachOnce(mmbBtnIDs), noMember, true);
}

void VCBtnClass::ReplaceMembers(VCSpBtn& spBtn, std::vector<DWORD> mmbBtnIDs, unsigned int noMember,
                                bool letFormerGo)
{
    // What needs memory comes first.
    SpBtnsOfClasses above;
    if (spBtn.effective) {
        MakeRoomForBackReferences(spBtn, mmbBtnIDs);
        if (hasAbsentSpMembers) // a former member may have come after it was listed
            MakeRoomForBackReferences(spBtn, spBtn.mmbBtnIDList);
        above = ListWithAllAbove({{this, &spBtn}});
    } else {
        above = ListWithAllAbove(ListEffectiveHolders(spBtn)); // they see whether it has members
    }
    SpBtnsOfClasses limited;
    std::copy_if(above.begin(), above.end(), std::back_inserter(limited),
                 [](const auto& holder) { return (holder.second->visibleInfo & VISINFO_LIMITEDREC) != 0; });
    const unsigned int formerNoMember = spBtn.visibleInfo & VISINFO_NOMEMBER;
    const std::int64_t formerTime = spBtn.updateTime;
    const auto replace = [&](std::vector<DWORD>& list, unsigned int bit, std::int64_t time, bool letGo) {
        if (spBtn.effective && letGo)
            UnlinkMembers(spBtn);
        SetOwnVisibleInfo(spBtn, VISINFO_NOMEMBER, bit != 0);
        spBtn.mmbBtnIDList.swap(list);
        spBtn.updateTime = time;
        if (spBtn.effective)
            LinkMembers(spBtn); // the former members kept their room
    };
    replace(mmbBtnIDs, noMember, VCSpBtn::GetPresentTime(), letFormerGo);
    try {
        ResetInsideInfoForSpBtns(above, true, true);
    } catch (...) {
        replace(mmbBtnIDs, formerNoMember, formerTime, true);
        for (const auto& [btnClass, holder] : limited)
            btnClass->SetOwnVisibleInfo(*holder, VISINFO_LIMITEDREC, true);
        for (const auto& [btnClass, holder] : above) {
            btnClass->AdjstVisibleInfoBasedOnTheMmbBtnStateChangeOfSpBtn(*holder);
            holder->isRowOutdated = true;
        }
        throw;
    }
}

VCBtnClass::EMthRetOfOpeToMmbBtnIDList
VCBtnClass::SetMemberBtnIDListOfSpBtn(DWORD btnID, const std::vector<DWORD>& mmbBtnIDs)
{
    VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr)
        return OPEMMBBTN_NOSPBTN;
    if (!CheckAppropriateMmbBtnOrNot(spBtn, mmbBtnIDs))
        return OPEMMBBTN_BADMEMBER;
    ChangeMemberBtnIDListOfSpBtn(*spBtn, mmbBtnIDs);
    return OPEMMBBTN_OK;
}

VCBtnClass::EMthRetOfOpeToMmbBtnIDList VCBtnClass::AddMemberBtnIDListOfSpBtn(DWORD btnID, DWORD mmbBtnID)
{
    VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr)
        return OPEMMBBTN_NOSPBTN;
    const VCBtnClass* const classOfMembers = GetBtnClassOfMembers(*spBtn);
    if (classOfMembers == nullptr)
        return OPEMMBBTN_BADMEMBER;
    if (spBtn->HasMember(mmbBtnID))
        return OPEMMBBTN_NOMEMBER;
    std::vector<DWORD> longer(spBtn->mmbBtnIDList);
    longer.push_back(mmbBtnID);
    ReplaceMembers(*spBtn, std::move(longer), spBtn->visibleInfo & VISINFO_NOMEMBER, false);
    if (SCBUICoreCom::IsSpBtn(mmbBtnID) && classOfMembers->FindSpBtn(mmbBtnID) == nullptr)
        hasAbsentSpMembers = true;
    return OPEMMBBTN_OK;
}

VCBtnClass::EMthRetOfOpeToMmbBtnIDList VCBtnClass::DeleteMemberBtnIDListOfSpBtn(DWORD btnID, DWORD mmbBtnID)
{
    VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr)
        return OPEMMBBTN_NOSPBTN;
    if (!spBtn->HasMember(mmbBtnID))
        return OPEMMBBTN_NOMEMBER;
    std::vector<DWORD> shorter(spBtn->mmbBtnIDList);
    std::erase(shorter, mmbBtnID);
    ChangeMemberBtnIDListOfSpBtn(*spBtn, std::move(shorter));
    return OPEMMBBTN_OK;
}

bool VCBtnClass::AdjstRelatedInfoOnMmbBtnOfSpBtn(VCSpBtn* spBtn, bool add)
{
    if (spBtn == nullptr || GetBtnClassOfMembers(*spBtn) == nullptr)
        return false;
    if (add) {
        MakeRoomForBackReferences(*spBtn, spBtn->mmbBtnIDList);
        LinkMembers(*spBtn);
    } else {
        UnlinkMembers(*spBtn);
    }
    return true;
}

void VCBtnClass::MakeRoomForBackReferences(const VCSpBtn& spBtn, const std::vector<DWORD>& mmbBtnIDs,
                                           std::size_t count)
{
    VCBtnClass* const classOfMembers = GetBtnClassOfMembers(spBtn);
    for (const DWORD mmbBtnID : mmbBtnIDs) {
        VCBtn* const member = classOfMembers == nullptr ? nullptr : classOfMembers->FindBtn(mmbBtnID);
        if (member == nullptr)
            continue;
        if (member->backReferences == nullptr)
            member->backReferences = std::make_unique<VCBtn::SBackReferences>();
        if (classOfMembers == this)
            member->backReferences->spBtnIDsInClass.ReserveForInsert(count);
        else
            member->backReferences->spBtnIDsOfOtherClass.ReserveForInsert(count);
    }
}

void VCBtnClass::LinkMembers(const VCSpBtn& spBtn, bool withIncBtns) noexcept
{
    VCBtnClass* const classOfMembers = GetBtnClassOfMembers(spBtn);
    for (const DWORD mmbBtnID : spBtn.mmbBtnIDList) {
        VCBtn* const member = classOfMembers == nullptr ? nullptr : classOfMembers->FindBtn(mmbBtnID);
        if (member == nullptr)
            continue;
        if (classOfMembers == this) {
            LinkMember(spBtn, *member, withIncBtns);
        } else {
            member->backReferences->spBtnIDsOfOtherClass.insert({id, spBtn.id});
            classOfMembers->AdjstToBackReferences(*member);
        }
    }
}

void VCBtnClass::UnlinkMembers(const VCSpBtn& spBtn) noexcept
{
    for (const DWORD mmbBtnID : spBtn.mmbBtnIDList)
        UnlinkMember(spBtn, mmbBtnID);
}

void VCBtnClass::UnlinkMember(const VCSpBtn& spBtn, DWORD mmbBtnID) noexcept
{
    VCBtnClass* const classOfMembers = GetBtnClassOfMembers(spBtn);
    VCBtn* const member = classOfMembers == nullptr ? nullptr : classOfMembers->FindBtn(mmbBtnID);
    if (member == nullptr)
        return;
    if (classOfMembers == this)
        UnlinkMember(spBtn, *member);
    else
        classOfMembers->ForgetOuterSpBtn({id, spBtn.id}, *member);
}

// A button that a virtual inc button holds no longer.
void VCBtnClass::ForgetOuterSpBtn(const SBtnClassIDAndBtnID& spBtn, VCBtn& member) noexcept
{
    if (member.backReferences != nullptr && member.backReferences->spBtnIDsOfOtherClass.erase(spBtn))
        AdjstToBackReferences(member);
}

// There is room for the back-reference.
void VCBtnClass::LinkMember(const VCSpBtn& spBtn, VCBtn& member, bool withIncBtns) noexcept
{
    member.backReferences->spBtnIDsInClass.insert(spBtn.id);
    AdjstToBackReferences(member);
    if (SCBUICoreCom::IsCllBtn(spBtn.id))
        SetOwnVisibleInfo(member, IsCndCllBtn(spBtn) ? VISINFO_CNDCLLMEMBER : VISINFO_SELCLLMEMBER, true);
    else if (withIncBtns)
        AdjstToIncBtns(member);
}

void VCBtnClass::AdjstToIncBtns(VCBtn& member) noexcept
{
    SetOwnVisibleInfo(member, VISINFO_INCMEMBER, !GetBtnDispInfoAsMmbBtn(member));
}

void VCBtnClass::UnlinkMember(const VCSpBtn& spBtn, VCBtn& member) noexcept
{
    if (member.backReferences == nullptr)
        return;
    TCFlatSet<DWORD>& holderIDs = member.backReferences->spBtnIDsInClass;
    if (!holderIDs.erase(spBtn.id))
        return;
    AdjstToBackReferences(member);
    if (!SCBUICoreCom::IsCllBtn(spBtn.id)) {
        AdjstToIncBtns(member);
        return;
    }
    if (IsCndCllBtn(spBtn))
        SetOwnVisibleInfo(member, VISINFO_CNDCLLMEMBER, false);
    const bool isLeftInCllBtn = !holderIDs.empty() && SCBUICoreCom::IsCllBtn(holderIDs.back());
    if (!isLeftInCllBtn)
        SetOwnVisibleInfo(member, VISINFO_SELCLLMEMBER, false);
}

bool VCBtnClass::GetBtnDispInfoAsMmbBtn(const VCBtn& btn) const noexcept
{
    bool isInIncBtn = false;
    if (btn.backReferences == nullptr)
        return true;
    for (const DWORD holderID : btn.backReferences->spBtnIDsInClass) {
        if (!SCBUICoreCom::IsIncBtn(holderID))
            break; // cll buttons come behind
        const VCSpBtn* const holder = FindSpBtn(holderID);
        if (holder == nullptr)
            continue;
        if (static_cast<const CIncBtn*>(holder)->dispMember)
            return true;
        isInIncBtn = true;
    }
    return !isInIncBtn;
}

bool VCBtnClass::AdjstRelatedInfoBtnIncludingOneself(VCBtn* btn, bool add) noexcept
{
    if (btn == nullptr)
        return false;
    if (btn->backReferences == nullptr)
        return true;
    TCFlatSet<DWORD>& holderIDs = btn->backReferences->spBtnIDsInClass;
    if (add) {
        // Holders that sleep are forgotten before the others are joined, so that their letting go takes no
        // reason away that the others give.
        for (std::size_t i = holderIDs.size(); i-- != 0;) { // entries leave on the way
            VCSpBtn* const holder = FindSpBtn(*(holderIDs.begin() + static_cast<std::ptrdiff_t>(i)));
            if (holder == nullptr || holder->effective)
                continue;
            TakeIn(*holder, btn->id);
            UnlinkMember(*holder, *btn);
        }
    }
    for (const DWORD holderID : holderIDs) {
        VCSpBtn* const holder = FindSpBtn(holderID);
        if (!add)
            DeleteMemberBtnIDListOfSpBtn_Inside(holderID, btn->id);
        else if (holder != nullptr && TakeIn(*holder, btn->id))
            LinkMembers(*holder);
    }
    TCFlatSet<SBtnClassIDAndBtnID>& outerHolders = btn->backReferences->spBtnIDsOfOtherClass;
    for (std::size_t i = outerHolders.size(); i-- != 0;) { // entries leave on the way
        const SBtnClassIDAndBtnID outer = *(outerHolders.begin() + static_cast<std::ptrdiff_t>(i));
        const auto found = refOrgBtnClasses.find(outer.btnClassID);
        if (found == refOrgBtnClasses.end())
            continue;
        VCSpBtn* const holder = found->second->FindSpBtn(outer.btnID);
        if (!add) {
            found->second->DeleteMemberBtnIDListOfSpBtn_Inside(outer.btnID, btn->id);
        } else if (holder != nullptr) {
            TakeIn(*holder, btn->id);
            if (!holder->effective)
                ForgetOuterSpBtn(outer, *btn);
        }
    }
    return true;
}

// False if the button is a member already. There is room for it.
bool VCBtnClass::TakeIn(VCSpBtn& spBtn, DWORD mmbBtnID) noexcept
{
    if (spBtn.HasMember(mmbBtnID))
        return false;
    spBtn.mmbBtnIDList.push_back(mmbBtnID);
    spBtn.updateTime = VCSpBtn::GetPresentTime();
    return true;
}

VCBtnClass::EMthRetOfOpeToMmbBtnIDList
VCBtnClass::DeleteMemberBtnIDListOfSpBtn_Inside(DWORD btnID, DWORD mmbBtnID) noexcept
{
    VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr)
        return OPEMMBBTN_NOSPBTN;
    if (std::erase(spBtn->mmbBtnIDList, mmbBtnID) == 0)
        return OPEMMBBTN_NOMEMBER;
    spBtn->updateTime = VCSpBtn::GetPresentTime();
    return OPEMMBBTN_OK;
}

namespace {

// Calls visit(button) for each ineffective one of the special buttons, by identifier.
template <class TVisit>
void VisitIneffective(const std::map<DWORD, VCSpBtn*>& spBtns, DWORD ineffectiveCount, const TVisit& visit)
{
    if (ineffectiveCount == 0)
        return;
    for (const auto& [btnID, spBtn] : spBtns) {
        if (!spBtn->effective)
            visit(*spBtn);
    }
}

} // namespace

void VCBtnClass::LetIneffectiveSpBtnsForgetMembers(const std::function<bool(DWORD)>& isGone) noexcept
{
    const auto forgetIn = [&](VCBtnClass& btnClass) {
        VisitIneffective(btnClass.spBtnOfID, btnClass.ineffectiveBtnCount, [&](VCSpBtn& spBtn) {
            if (btnClass.GetBtnClassOfMembers(spBtn) == this)
                std::erase_if(spBtn.mmbBtnIDList, isGone);
        });
    };
    forgetIn(*this);
    for (const auto& [btnClassID, btnClass] : refOrgBtnClasses)
        forgetIn(*btnClass);
}

void VCBtnClass::LetIneffectiveSpBtnsForget(const VCBtn& btn) noexcept
{
    LetIneffectiveSpBtnsForgetMembers([&btn](DWORD btnID) { return btnID == btn.id; });
    const VCSpBtn* const asHolder = FindSpBtn(btn.id);
    VCBtnClass* const classOfMembers = asHolder == nullptr ? nullptr : GetBtnClassOfMembers(*asHolder);
    if (classOfMembers == nullptr)
        return;
    VisitIneffective(classOfMembers->spBtnOfID, classOfMembers->ineffectiveBtnCount, [&](VCSpBtn& spBtn) {
        if (classOfMembers == this)
            UnlinkMember(*asHolder, spBtn);
        else
            classOfMembers->ForgetOuterSpBtn({id, btn.id}, spBtn);
    });
}

void VCBtnClass::ForgetSpBtnsToReturnTo(DWORD virBtnClassID) noexcept
{
    const auto isOfClass = [=](const SBtnClassIDAndBtnID& spBtn) {
        return spBtn.btnClassID == virBtnClassID;
    };
    std::erase_if(ineffectiveOuterSpBtns, isOfClass);
    VisitIneffective(spBtnOfID, ineffectiveBtnCount, [&](VCSpBtn& spBtn) {
        if (spBtn.backReferences != nullptr)
            spBtn.backReferences->spBtnIDsOfOtherClass.EraseIf(isOfClass);
    });
}

VCBtnClass::EMthRetOfSetMmbBtnCnd VCBtnClass::SetMemberBtnCndOfSpBtn(DWORD btnID, const IBtnCnd& cnd)
{
    VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr)
        return SETMMBBTNCND_NOSPBTN;
    if (spBtn->mmbBtnSelMth != VCSpBtn::MMBBTNSELMTH_CONDITION)
        return SETMMBBTNCND_NOTCNDBTN;
    spBtn->mmbBtnCnd = BtnCndPtr(cnd.CreateClone()); // `cnd` may be the one that goes
    spBtn->updateTime = VCSpBtn::GetPresentTime();
    return SETMMBBTNCND_OK;
}

bool VCBtnClass::ClearMemberBtnCndOfSpBtn(DWORD btnID)
{
    VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr)
        return false;
    if (spBtn->mmbBtnCnd != nullptr) {
        spBtn->mmbBtnCnd.reset();
        spBtn->updateTime = VCSpBtn::GetPresentTime();
    }
    return true;
}

bool VCBtnClass::SetDispMemberBtnInfoOfIncBtn(DWORD btnID, bool disp)
{
    VCSpBtn* const spBtn = SCBUICoreCom::IsIncBtn(btnID) ? FindSpBtn(btnID) : nullptr;
    if (spBtn == nullptr)
        return false;
    bool& dispMember = static_cast<CIncBtn*>(spBtn)->dispMember;
    if (dispMember == disp)
        return true;
    dispMember = disp;
    spBtn->updateTime = VCSpBtn::GetPresentTime();
    for (const DWORD mmbBtnID : spBtn->mmbBtnIDList) {
        if (VCBtn* const member = FindBtn(mmbBtnID))
            AdjstToIncBtns(*member);
    }
    return true;
}

// --- What follows from members

void VCBtnClass::AddSpBtnsAbove(const VCBtn& btn, SpBtnsOfClasses& spBtns)
{
    if (btn.backReferences == nullptr)
        return;
    for (const DWORD spBtnID : btn.backReferences->spBtnIDsInClass) {
        if (VCSpBtn* const spBtn = FindSpBtn(spBtnID))
            spBtns.emplace_back(this, spBtn);
    }
    for (const SBtnClassIDAndBtnID& outer : btn.backReferences->spBtnIDsOfOtherClass) {
        const auto found = refOrgBtnClasses.find(outer.btnClassID);
        if (found == refOrgBtnClasses.end())
            continue;
        if (VCSpBtn* const spBtn = found->second->FindSpBtn(outer.btnID))
            spBtns.emplace_back(found->second, spBtn);
    }
}

namespace {

// Lists what is reached from `starts`, each once, those behind a node before the node itself: a depth-first
// walk whose stack is an array. `walk` tells which were reached; `addNext` appends what follows a node.
template <class TNode, class TWalk, class TAddNext>
std::vector<TNode> ListBehindFirst(const std::vector<TNode>& starts, TWalk& walk, const TAddNext& addNext)
{
    std::vector<TNode> ordered;
    std::vector<std::pair<TNode, bool>> pending; // true: all behind it is listed
    std::vector<TNode> next;
    for (const TNode& start : starts) {
        pending.emplace_back(start, false);
        while (!pending.empty()) {
            const auto [node, isDone] = pending.back();
            pending.pop_back();
            if (isDone) {
                ordered.push_back(node);
            } else if (walk.Add(*node.first, *node.second)) {
                pending.emplace_back(node, true);
                next.clear();
                addNext(node, next);
                for (const TNode& behind : next)
                    pending.emplace_back(behind, false);
            }
        }
    }
    return ordered;
}

} // namespace

VCBtnClass::SpBtnsOfClasses VCBtnClass::ListEffectiveHolders(const VCBtn& btn)
{
    SpBtnsOfClasses holders;
    AddSpBtnsAbove(btn, holders);
    std::erase_if(holders, [](const auto& holder) { return !holder.second->effective; });
    return holders;
}

VCBtnClass::SpBtnsOfClasses VCBtnClass::ListWithAllAbove(const SpBtnsOfClasses& starts)
{
    if (starts.size() == 1 && !starts.front().second->HasBackReferences())
        return starts;
    CSpBtnWalk walk;
    SpBtnsOfClasses ordered = ListBehindFirst(starts, walk, [](const auto& node, SpBtnsOfClasses& next) {
        next = node.first->ListEffectiveHolders(*node.second);
    });
    std::reverse(ordered.begin(), ordered.end());
    return ordered;
}

void VCBtnClass::ResetInsideInfoForSpBtns(const SpBtnsOfClasses& spBtns, bool buildRpLink, bool force)
{
    const auto isPassedOver = [force](const VCBtnClass& btnClass) {
        return !force && SCBUICoreCom::IsCommonVirBtnClass(btnClass.id);
    };
    for (const auto& [btnClass, spBtn] : spBtns) {
        if (isPassedOver(*btnClass))
            continue;
        btnClass->AdjstVisibleInfoBasedOnTheMmbBtnStateChangeOfSpBtn(*spBtn);
        // Through a live member the limitation reaches it, whatever its members were before.
        if (spBtn->effective && (spBtn->visibleInfo & VISINFO_NOLIVEMEMBER) == 0)
            btnClass->SetOwnVisibleInfo(*spBtn, VISINFO_LIMITEDREC, false);
        spBtn->isRowOutdated = spBtn->isRowOutdated || buildRpLink;
    }
    if (!buildRpLink)
        return;
    for (const auto& [btnClass, spBtn] : spBtns) {
        if (!isPassedOver(*btnClass))
            btnClass->BuildRow(*spBtn);
    }
}

void VCBtnClass::BuildRow(VCSpBtn& spBtn)
{
    if (areRowsDeferred) {
        spBtn.isRowOutdated = true;
        return;
    }
    if (IsSpBtnWithRpLink(&spBtn)) {
        const std::unique_ptr<DWORD[]> recs(new DWORD[recCount]);
        DWORD count = 0;
        if (!GetRecListThatRelatesToMemberBtns(spBtn, recs.get(), count))
            return; // a member is missing: whoever asks for the records is told
        (*rpLink)->SetRecList(id, spBtn.id, recs.get(), count);
    } else if (spBtn.mmbBtnSelMth == VCSpBtn::MMBBTNSELMTH_SELECT) {
        (*rpLink)->SetRecList(id, spBtn.id, nullptr, 0); // it may have had more members before
    }
    spBtn.isRowOutdated = false;
}

void VCBtnClass::CallRowsOutdated() noexcept
{
    for (const auto& [btnID, spBtn] : spBtnOfID)
        spBtn->isRowOutdated = true;
}

bool VCBtnClass::ResetInsideInfoForSpBtn(DWORD btnID, bool buildRpLink, bool force)
{
    VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr)
        return false;
    ResetInsideInfoForSpBtns(ListWithAllAbove({{this, spBtn}}), buildRpLink, force);
    return true;
}

void VCBtnClass::ResetLiveMemberInfoOfAllSpBtns(const std::vector<VCBtnClass*>& btnClasses)
{
    SpBtnsOfClasses all;
    for (VCBtnClass* const btnClass : btnClasses) {
        for (const auto& [btnID, spBtn] : btnClass->spBtnOfID)
            all.emplace_back(btnClass, spBtn);
    }
    CSpBtnWalk walk;
    const SpBtnsOfClasses ordered = ListBehindFirst(all, walk, [](const auto& node, SpBtnsOfClasses& next) {
        VCBtnClass* const classOfMembers = node.first->GetBtnClassOfMembers(*node.second);
        if (classOfMembers == nullptr)
            return;
        for (const DWORD mmbBtnID : node.second->mmbBtnIDList) {
            if (VCSpBtn* const nested = classOfMembers->FindSpBtn(mmbBtnID))
                next.emplace_back(classOfMembers, nested);
        }
    });
    for (const auto& [btnClass, spBtn] : ordered)
        btnClass->AdjstVisibleInfoBasedOnTheMmbBtnStateChangeOfSpBtn(*spBtn);
}

bool VCBtnClass::ResetLiveMemberInfoOfAllSpBtnsWithoutMemory() noexcept
{
    bool hasChangedAny = false;
    bool hasChanged = true;
    for (std::size_t round = 0; hasChanged && round <= spBtnOfID.size(); ++round) { // a loop may have no end
        hasChanged = false;
        for (const auto& [btnID, spBtn] : spBtnOfID) {
            const unsigned int before = spBtn->visibleInfo;
            AdjstVisibleInfoBasedOnTheMmbBtnStateChangeOfSpBtn(*spBtn);
            hasChanged = hasChanged || spBtn->visibleInfo != before;
        }
        hasChangedAny = hasChangedAny || hasChanged;
    }
    return hasChangedAny;
}

void VCBtnClass::AdjstVisibleInfoBasedOnTheMmbBtnStateChangeOfSpBtn(VCSpBtn& spBtn) noexcept
{
    const VCBtnClass* const classOfMembers = GetBtnClassOfMembers(spBtn);
    const auto isAlive = [classOfMembers](DWORD mmbBtnID) {
        const VCBtn* const member = classOfMembers->FindBtn(mmbBtnID);
        return member != nullptr && (classOfMembers->GetVisibleInfo(*member) & VISINFO_MASK_NOTALIVE) == 0;
    };
    const bool hasLiveMember = classOfMembers != nullptr &&
                               std::any_of(spBtn.mmbBtnIDList.begin(), spBtn.mmbBtnIDList.end(), isAlive);
    SetOwnVisibleInfo(spBtn, VISINFO_NOLIVEMEMBER, !hasLiveMember);
}

// --- Records

bool VCBtnClass::GetRecListThatRelatesToBtn(DWORD btnID, DWORD*& recList, DWORD& recCountOfList,
                                            DWORD** mergeBuffers) const
{
    if (!SCBUICoreCom::IsSpBtn(btnID) && recCountOfList == 0) // most calls; nothing is allocated
        return (*rpLink)->GetRecList(id, btnID, recList, recCountOfList);
    DWORD failedID = SCBUICoreCom::BTN_ID_UNSETTING;
    return GetRecListThatRelatesToBtns(this, {btnID}, recList, recCountOfList, mergeBuffers, failedID);
}

// What of a class the table is to be asked for.
struct VCBtnClass::SRecSources
{
    const VCBtnClass* btnClass;
    std::vector<DWORD> srcBtnIDs; // source buttons, ascending and each once: their records do not overlap
    std::vector<DWORD> rowBtnIDs; // others
};

// Sorts buttons by class, and into source buttons and others whose records the table has; a special button
// without a row is replaced by its members, at any depth and across classes. False, with the identifier, for
// an absent special button. One that is missing among the members of a virtual inc button is left out; among
// those of other buttons it is abnormal.
bool VCBtnClass::ListRecSources(const std::vector<DWORD>& btnIDs, std::vector<SRecSources>& sources,
                                DWORD& failedID) const
{
    auto& self = const_cast<VCBtnClass&>(*this); // a walk marks, and takes its marks away
    sources.push_back({this, {}, {}});
    const auto getSources = [&sources](const VCBtnClass& btnClass) -> SRecSources& {
        const auto found = std::find_if(sources.begin(), sources.end(), [&](const SRecSources& known) {
            return known.btnClass == &btnClass;
        });
        return found != sources.end() ? *found : sources.emplace_back(SRecSources{&btnClass, {}, {}});
    };
    CSpBtnWalk walk;
    const auto add = [&](VCBtnClass& btnClass, SRecSources& sourcesOfClass, DWORD btnID) {
        if (SCBUICoreCom::IsSrcBtn(btnID)) {
            sourcesOfClass.srcBtnIDs.push_back(btnID);
        } else if (!SCBUICoreCom::IsSpBtn(btnID)) {
            sourcesOfClass.rowBtnIDs.push_back(btnID);
        } else {
            VCSpBtn* const spBtn = btnClass.FindSpBtn(btnID);
            if (spBtn == nullptr)
                return false;
            if (spBtn->effective)
                walk.Add(btnClass, *spBtn);
        }
        return true;
    };
    for (const DWORD btnID : btnIDs) {
        if (!add(self, sources.front(), btnID)) {
            failedID = btnID;
            return false;
        }
    }
    for (std::size_t i = 0; i < walk.GetSize(); ++i) {
        const auto [btnClass, spBtn] = walk.Get(i);
        if (IsSpBtnWithRpLink(spBtn) && !spBtn->isRowOutdated) {
            getSources(*btnClass).rowBtnIDs.push_back(spBtn->id);
            continue;
        }
        VCBtnClass* const classOfMembers = btnClass->GetBtnClassOfMembers(*spBtn);
        if (classOfMembers == nullptr)
            continue;
        SRecSources& sourcesOfMembers = getSources(*classOfMembers);
        for (const DWORD mmbBtnID : spBtn->mmbBtnIDList) {
            if (!add(*classOfMembers, sourcesOfMembers, mmbBtnID) && classOfMembers == btnClass) {
                const CFormattedMsg message(SCBUICoreStrDef::MSG_NOTEXIST_MMBBTN, {btnClass->id, mmbBtnID});
                throw ECAbnormalData(message.GetText(), SRC_FILE,
                                     "NSKZ::NSKZCore::VCBtnClass::GetRecListThatRelatesToBtn", 5165);
            }
        }
    }
    for (SRecSources& sourcesOfClass : sources)
        SCIDList::SortAndTakeEachOnce(sourcesOfClass.srcBtnIDs);
    return true;
}

bool VCBtnClass::GetRecListThatRelatesToBtns(const VCBtnClass* btnClass, const std::vector<DWORD>& btnIDs,
                                             DWORD*& recList, DWORD& recCountOfList, DWORD** buffers,
                                             DWORD& failedID)
{
    if (btnClass == nullptr)
        return false;
    std::vector<SRecSources> sources;
    if (!btnClass->ListRecSources(btnIDs, sources, failedID))
        return false;
    const IRpLink& table = **btnClass->rpLink;
    // Records are gathered where they can stay, or beside those that are there already, and united with them.
    const auto getPlace = [&] { return recCountOfList == 0 ? recList : buffers[0]; };
    const auto unite = [&](const DWORD* added, DWORD addedCount) {
        if (recCountOfList == 0) {
            recCountOfList = addedCount;
        } else if (addedCount != 0) {
            recCountOfList =
                SCKZCoreCom::MergeRecListByORCnd(recList, recCountOfList, added, addedCount, buffers[1]);
            std::swap(recList, buffers[1]);
        }
    };
    for (const SRecSources& sourcesOfClass : sources) {
        const DWORD btnClassID = sourcesOfClass.btnClass->id;
        // The records of source buttons do not overlap, so they are collected first and sorted once.
        DWORD* const collected = getPlace();
        DWORD collectedCount = 0;
        for (const DWORD btnID : sourcesOfClass.srcBtnIDs) {
            DWORD added = 0;
            if (!table.GetRecList(btnClassID, btnID, collected + collectedCount, added)) {
                failedID = btnID;
                return false;
            }
            collectedCount += added;
        }
        if (sourcesOfClass.srcBtnIDs.size() > 1)
            SCSortRecs::Sort(collected, collectedCount);
        unite(collected, collectedCount);
        for (const DWORD btnID : sourcesOfClass.rowBtnIDs) {
            DWORD added = 0;
            DWORD* const row = getPlace();
            if (!table.GetRecList(btnClassID, btnID, row, added)) {
                failedID = btnID;
                return false;
            }
            unite(row, added);
        }
    }
    return true;
}

bool VCBtnClass::GetRecListThatRelatesToMemberBtns(const VCSpBtn& spBtn, DWORD* recList,
                                                   DWORD& recCountOfList) const
{
    const VCBtnClass* const classOfMembers = GetBtnClassOfMembers(spBtn);
    if (classOfMembers == nullptr)
        return false;
    std::vector<DWORD> btnIDs(spBtn.mmbBtnIDList);
    if (classOfMembers != this) {
        std::erase_if(btnIDs, [=](DWORD btnID) {
            return SCBUICoreCom::IsSpBtn(btnID) && classOfMembers->FindSpBtn(btnID) == nullptr;
        });
    }
    const std::unique_ptr<DWORD[]> areas[] = {std::unique_ptr<DWORD[]>(new DWORD[recCount]),
                                              std::unique_ptr<DWORD[]>(new DWORD[recCount])};
    DWORD* buffers[] = {areas[0].get(), areas[1].get()};
    DWORD* found = recList;
    DWORD failedID = SCBUICoreCom::BTN_ID_UNSETTING;
    recCountOfList = 0;
    if (!GetRecListThatRelatesToBtns(classOfMembers, btnIDs, found, recCountOfList, buffers, failedID))
        return false;
    if (found != recList && recCountOfList != 0)
        std::memcpy(recList, found, recCountOfList * sizeof(DWORD));
    return true;
}

} // namespace NSKZ::NSKZCore
