#include "CModelEnv.h"

#include "SCBUICoreCom.h"
#include "VCBtn.h"
#include "VCBtnClass.h"
#include "VCSpBtn.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

// Special buttons and the conditions that pick their members.

namespace NSKZ::Test {

using NSKZCore::SCBUICoreCom;
using NSKZCore::VCBtnClass;
using NSKZCore::VCSpBtn;
using NSKZCore::VISINFO_CNDCLLMEMBER;
using NSKZCore::VISINFO_EMPVALNODISP;
using NSKZCore::VISINFO_INCMEMBER;
using NSKZCore::VISINFO_INEFFECTIVE;
using NSKZCore::VISINFO_LIMITEDREC;
using NSKZCore::VISINFO_MASK_NOTALIVE;
using NSKZCore::VISINFO_NOLIVEMEMBER;
using NSKZCore::VISINFO_NOMEMBER;
using NSKZCore::VISINFO_RELATION;
using NSKZCore::VISINFO_SELCLLMEMBER;

namespace {

constexpr DWORD EMPVAL = SCBUICoreCom::BTN_ID_EMPVAL;

enum ESumMethod : DWORD
{
    METHOD_SUM = 1,
    METHOD_COUNT = 2,
    METHOD_AVERAGE = 3,
    METHOD_RATIO = 4,
};

enum ESelCondition : DWORD
{
    RANK_HIGH = 1,
    RANK_HIGHEXCEPT = 2,
    RANK_LOW = 3,
    RANK_LOWEXCEPT = 4,
    NUMCMP_EQUAL = 0x10000001,
    NUMCMP_NOTEQUAL = 0x10000002,
    NUMCMP_GREATER = 0x10000003,
    NUMCMP_GREATEREQUAL = 0x10000004,
    NUMCMP_LESS = 0x10000005,
    NUMCMP_LESSEQUAL = 0x10000006,
};

IDList WithoutRepetition(const IDList& ids)
{
    IDList once;
    std::set<DWORD> met;
    for (const DWORD id : ids) {
        if (met.insert(id).second)
            once.push_back(id);
    }
    return once;
}

void SetReason(SModelBtn& btn, unsigned int reason, bool set)
{
    if (set)
        btn.visibleInfo |= reason;
    else
        btn.visibleInfo &= ~reason;
}

// Two numbers that differ by less than the last bit of the larger; NaN equals nothing here.
bool IsAboutEqual(double left, double right)
{
    const double larger = std::max(std::fabs(left), std::fabs(right));
    const double difference = larger == 0 ? 0 : std::fabs(left - right) / larger;
    return !std::isnan(left) && !std::isnan(right) && difference < std::numeric_limits<double>::epsilon();
}

bool SharesRank(double left, double right)
{
    if (std::isinf(left) && std::isinf(right))
        return (left > 0) == (right > 0);
    return IsAboutEqual(left, right);
}

bool Compares(DWORD selCondition, double value, double number)
{
    switch (selCondition) {
    case NUMCMP_EQUAL:
        return IsAboutEqual(value, number);
    case NUMCMP_NOTEQUAL:
        return !IsAboutEqual(value, number);
    case NUMCMP_GREATER:
        return value > number;
    case NUMCMP_GREATEREQUAL:
        return value > number || IsAboutEqual(value, number);
    case NUMCMP_LESS:
        return value < number;
    default:
        return value < number || IsAboutEqual(value, number);
    }
}

} // namespace

// ---- Making and changing

// What was released is given out again, the smallest first: so the smallest one that is free.
DWORD CModelEnv::FindFreeBtnID(const SModelItem& item, SCBUICoreCom::EBtnType type) const
{
    DWORD id = type == SCBUICoreCom::BTNTYPE_INC      ? SCBUICoreCom::BTN_ID_INC_BEGIN
               : type == SCBUICoreCom::BTNTYPE_VIRINC ? SCBUICoreCom::BTN_ID_VIRINC_BEGIN
                                                      : SCBUICoreCom::BTN_ID_CLL_BEGIN;
    while (item.btns.count(id) != 0)
        ++id;
    return id;
}

// Without a referred item, an inc or cll button; with one, a virtual inc button.
CModelEnv::ECreate CModelEnv::CreateSpBtn(DWORD& btnID, DWORD classID, const SMaking& making)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr)
        return VCBtnClass::CREATESPBTN_NOBTNCLASS;
    const bool isCll = making.type == SCBUICoreCom::BTNTYPE_CLL;
    if (making.refClassID != 0) {
        if (making.type != SCBUICoreCom::BTNTYPE_VIRINC)
            return VCBtnClass::CREATESPBTN_BADTYPE;
        const SModelItem* const refItem = FindItem(making.refClassID);
        if (!item->isVirtual || refItem == nullptr || refItem == item ||
            (item->IsCommon() && refItem->isVirtual && !refItem->IsCommon()))
            return VCBtnClass::CREATESPBTN_NOBTNCLASS;
    } else if (making.type == SCBUICoreCom::BTNTYPE_INC) {
        if (making.method == VCSpBtn::MMBBTNSELMTH_CONDITION)
            return VCBtnClass::CREATESPBTN_UNKNOWNSELMTH;
    } else if (!isCll) {
        return VCBtnClass::CREATESPBTN_BADTYPE;
    }
    const bool wasSelected = HasSelection();

    const DWORD id = FindFreeBtnID(*item, making.type);
    SModelBtn btn;
    btn.alias = making.name == nullptr ? "" : making.name;
    btn.byCondition = making.method == VCSpBtn::MMBBTNSELMTH_CONDITION;
    btn.refClassID = making.refClassID;
    btn.createTime = making.until;
    btn.isTimeCertain = making.from == making.until;
    item->btns[id] = btn;
    if (making.method == VCSpBtn::MMBBTNSELMTH_SELECT) {
        if (making.members != nullptr) {
            const IDList members = WithoutRepetition(*making.members);
            if (!AreAppropriateMembers(*item, id, members)) {
                item->btns.erase(id);
                return VCBtnClass::CREATESPBTN_BADMEMBER;
            }
            ChangeMembers(*item, id, members);
        }
    } else if (btn.byCondition) {
        if (making.cnd != nullptr)
            item->btns.at(id).cnd = *making.cnd;
    } else {
        item->btns.erase(id);
        return VCBtnClass::CREATESPBTN_UNKNOWNSELMTH;
    }
    EnterName(*item, id);
    JoinAwaitingSpBtns(*item, id);

    // Sums stay, but the totals when the button stands beside others.
    if (wasSelected) {
        ClearAllBtnSelections(true);
    } else {
        if (hasSumMngr)
            ResetMembers(*item);
        ClearAllBtnSelections(false);
    }
    if (!isCll) {
        knownSums[classID].totals.clear();
        knownSums[classID].absoluteTotals.clear();
    }
    btnID = id;
    return VCBtnClass::CREATESPBTN_OK;
}

// Virtual inc buttons may list a special button that was not there: it is a member of them now. One by
// condition can be none.
void CModelEnv::JoinAwaitingSpBtns(const SModelItem& item, DWORD btnID)
{
    for (const SModelBtnRef& ref : FindListing(item, btnID)) {
        SModelItem& itemOfHolder = items.at(ref.btnClassID);
        if (item.btns.at(btnID).byCondition) {
            RemoveMember(itemOfHolder, ref.btnID, btnID);
        } else if (GetBtn(ref).effective) {
            TakeMembers(itemOfHolder, ref.btnID);
            AdjustLiveMemberReason({ref});
        }
    }
}

void CModelEnv::CloseChange(SModelItem& item, bool wasSelected)
{
    ForgetSums();
    if (wasSelected) {
        ClearAllBtnSelections(true);
        return;
    }
    std::set<DWORD> visited;
    ResetMembersWithReferring(item.classID, visited);
    ClearAllBtnSelections(false);
}

bool CModelEnv::DestroySpBtn(DWORD classID, DWORD btnID)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr)
        return false;
    const bool wasSelected = HasSelection();
    const bool exists =
        SCBUICoreCom::IsSpBtn(btnID) && item->btns.count(btnID) != 0 && !item->IsManagedBySystem(btnID);
    if (exists)
        Destroy(*item, btnID);
    CloseChange(*item, wasSelected);
    return exists;
}

void CModelEnv::Destroy(SModelItem& item, DWORD btnID)
{
    SModelBtn& btn = item.btns.at(btnID);
    for (const SModelBtnRef& ref : FindListing(item, btnID))
        RemoveMember(items.at(ref.btnClassID), ref.btnID, btnID);
    if (btn.effective) {
        LetMembersGo(item, btnID);
        if (btn.sel && --item.selBtnCount == 0)
            item.selective = false;
    }
    // Ineffective ones that would return to it.
    if (SModelItem* const itemOfMembers = FindItemOfMembers(item, btnID)) {
        const SModelBtnRef self = {item.classID, btnID};
        for (const auto& [otherID, other] : itemOfMembers->btns) {
            if (GetHolders(*itemOfMembers, otherID).count(self) != 0)
                LetGo(item, btnID, otherID);
        }
    }
    for (auto& [otherID, other] : items)
        other.switchedOff.erase({item.classID, btnID});
    RemoveName(item, btnID);
    item.btns.erase(btnID);
}

bool CModelEnv::SetEffectiveInfoOfSpBtn(DWORD classID, DWORD btnID, bool effective)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr || !SCBUICoreCom::IsSpBtn(btnID) || item->btns.count(btnID) == 0 ||
        item->IsManagedBySystem(btnID) || (effective && item->btns.at(btnID).hasLostRef))
        return false;
    const bool wasSelected = HasSelection();
    if (item->btns.at(btnID).effective != effective) {
        if (effective)
            SwitchOn(*item, btnID);
        else
            SwitchOff(*item, btnID);
    }
    CloseChange(*item, wasSelected);
    return true;
}

// It leaves those that hold it and lets its members go, but remembers both.
void CModelEnv::SwitchOff(SModelItem& item, DWORD btnID)
{
    SModelBtn& btn = item.btns.at(btnID);
    btn.effective = false;
    btn.visibleInfo |= VISINFO_INEFFECTIVE;
    for (const SModelBtnRef& holder : GetHolders(item, btnID))
        RemoveMember(items.at(holder.btnClassID), holder.btnID, btnID);
    LetMembersGo(item, btnID);
    RemoveName(item, btnID);
    if (btn.sel && --item.selBtnCount == 0)
        item.selective = false;
}

void CModelEnv::SwitchOn(SModelItem& item, DWORD btnID)
{
    SModelBtn& btn = item.btns.at(btnID);
    btn.effective = true;
    btn.visibleInfo &= ~VISINFO_INEFFECTIVE;
    // A holder that is ineffective itself lists the button, and the button forgets it until the holder takes
    // part again. This comes first: it must not take away a reason that another holder gives.
    for (const SModelBtnRef& ref : GetHolders(item, btnID)) {
        SModelBtn& holder = GetBtn(ref);
        if (holder.effective)
            continue;
        if (!holder.HasMember(btnID))
            holder.members.push_back(btnID);
        LetGo(items.at(ref.btnClassID), ref.btnID, btnID);
    }
    BtnRefSet changed = {{item.classID, btnID}};
    for (const SModelBtnRef& ref : GetHolders(item, btnID)) {
        SModelBtn& holder = GetBtn(ref);
        if (holder.HasMember(btnID))
            continue;
        holder.members.push_back(btnID);
        TakeMembers(items.at(ref.btnClassID), ref.btnID);
        changed.insert(ref);
    }
    TakeMembers(item, btnID);
    EnterName(item, btnID);
    if (btn.sel) {
        ++item.selBtnCount;
        item.selective = true;
    }
    AdjustLiveMemberReason(changed); // all at once: nobody sees a reason that was left from before
}

CModelEnv::EOpeToMembers CModelEnv::SetMemberBtnIDListOfSpBtn(DWORD classID, DWORD btnID, const IDList& given)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr || !SCBUICoreCom::IsSpBtn(btnID) || item->btns.count(btnID) == 0)
        return VCBtnClass::OPEMMBBTN_NOSPBTN;
    if (item->btns.at(btnID).byCondition)
        return VCBtnClass::OPEMMBBTN_NOTSELECT;
    if (item->IsManagedBySystem(btnID))
        return VCBtnClass::OPEMMBBTN_SYSTEMMNGR;
    const bool wasSelected = HasSelection();
    const IDList members = WithoutRepetition(given);
    if (!AreAppropriateMembers(*item, btnID, members))
        return VCBtnClass::OPEMMBBTN_BADMEMBER;
    ChangeMembers(*item, btnID, members);
    CloseChange(*item, wasSelected);
    return VCBtnClass::OPEMMBBTN_OK;
}

CModelEnv::ESetCnd CModelEnv::SetMemberBtnCndOfSpBtn(DWORD classID, DWORD btnID, const SModelCnd& cnd)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr || !SCBUICoreCom::IsSpBtn(btnID) || item->btns.count(btnID) == 0)
        return VCBtnClass::SETMMBBTNCND_NOSPBTN;
    SModelBtn& btn = item->btns.at(btnID);
    if (!btn.byCondition)
        return VCBtnClass::SETMMBBTNCND_NOTCNDBTN;
    btn.cnd = cnd;
    CloseChange(*item, HasSelection());
    return VCBtnClass::SETMMBBTNCND_OK;
}

bool CModelEnv::ClearMemberBtnCndOfSpBtn(DWORD classID, DWORD btnID)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr || !SCBUICoreCom::IsSpBtn(btnID) || item->btns.count(btnID) == 0)
        return false;
    SModelBtn& btn = item->btns.at(btnID);
    btn.cnd.reset();
    if (btn.byCondition && !btn.hasLostRef)
        ChangeMembers(*item, btnID, {});
    CloseChange(*item, HasSelection());
    return true;
}

bool CModelEnv::SetDispMemberBtnInfoOfIncBtn(DWORD classID, DWORD btnID, bool disp)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr || !SCBUICoreCom::IsIncBtn(btnID) || item->btns.count(btnID) == 0)
        return false;
    SModelBtn& btn = item->btns.at(btnID);
    if (btn.dispMember != disp) {
        btn.dispMember = disp;
        for (const DWORD memberID : btn.members) {
            if (item->btns.count(memberID) != 0)
                AdjustIncReason(*item, item->btns.at(memberID));
        }
    }
    CloseChange(*item, HasSelection());
    return true;
}

bool CModelEnv::SetDispEmpValBtnInfoOfBtnClass(DWORD classID, bool disp)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr || item->isVirtual)
        return false;
    SModelBtn& empVal = item->btns.at(EMPVAL);
    item->displaysEmpVal = disp;
    SetReason(empVal, VISINFO_EMPVALNODISP, !disp);
    if (!disp) {
        for (const SModelBtnRef& ref : FindListing(*item, EMPVAL))
            RemoveMember(items.at(ref.btnClassID), ref.btnID, EMPVAL);
        empVal.holders.clear();
        empVal.outerHolders.clear();
        SetReason(empVal, VISINFO_SELCLLMEMBER | VISINFO_CNDCLLMEMBER | VISINFO_INCMEMBER, false);
    }
    CloseChange(*item, HasSelection());
    return true;
}

// ---- Members

// Special ones exist, select by list, and do not hold the button themselves, however deep. A hidden empty
// value is no member.
bool CModelEnv::AreAppropriateMembers(const SModelItem& item, DWORD spBtnID, const IDList& members) const
{
    const SModelItem* const itemOfMembers = FindItemOfMembers(item, spBtnID);
    if (itemOfMembers == nullptr)
        return false;
    for (const DWORD memberID : members) {
        if (memberID == EMPVAL && !itemOfMembers->displaysEmpVal)
            return false;
        if (!SCBUICoreCom::IsSpBtn(memberID))
            continue;
        const auto member = itemOfMembers->btns.find(memberID);
        if (member == itemOfMembers->btns.end() || member->second.byCondition)
            return false;
        if (!item.btns.at(spBtnID).byCondition &&
            Holds({itemOfMembers->classID, memberID}, {item.classID, spBtnID}))
            return false;
    }
    return true;
}

// Whether the button is, or holds at any depth, the one sought. What an ineffective button will return to
// holds it too.
bool CModelEnv::Holds(const SModelBtnRef& spBtn, const SModelBtnRef& sought) const
{
    BtnRefSet reached = {sought};
    std::vector<SModelBtnRef> pending = {sought};
    while (!pending.empty()) {
        const SModelBtnRef member = pending.back();
        pending.pop_back();
        const SModelItem& item = items.at(member.btnClassID);
        BtnRefSet above = FindListing(item, member.btnID);
        above.merge(GetHolders(item, member.btnID));
        for (const SModelBtnRef& holder : above) {
            if (reached.insert(holder).second)
                pending.push_back(holder);
        }
    }
    return reached.count(spBtn) != 0;
}

// What follows for an ineffective button and its members waits until it takes part again; but those that list
// it see at once whether it has members at all.
void CModelEnv::ChangeMembers(SModelItem& item, DWORD spBtnID, const IDList& members)
{
    SModelBtn& spBtn = item.btns.at(spBtnID);
    if (spBtn.effective)
        LetMembersGo(item, spBtnID);
    SetReason(spBtn, VISINFO_NOMEMBER, members.empty());
    spBtn.members = members;
    if (spBtn.effective) {
        TakeMembers(item, spBtnID);
        AdjustLiveMemberReason({{item.classID, spBtnID}});
        return;
    }
    for (const SModelBtnRef& holder : GetHolders(item, spBtnID)) {
        if (GetBtn(holder).effective)
            AdjustLiveMemberReason({holder});
    }
}

// A member of a virtual inc button stays displayed.
void CModelEnv::TakeMembers(SModelItem& item, DWORD spBtnID)
{
    const SModelBtn& spBtn = item.btns.at(spBtnID);
    SModelItem* const itemOfMembers = FindItemOfMembers(item, spBtnID);
    for (const DWORD memberID : spBtn.members) {
        if (itemOfMembers->btns.count(memberID) == 0)
            continue;
        SModelBtn& member = itemOfMembers->btns.at(memberID);
        if (SCBUICoreCom::IsVirIncBtn(spBtnID)) {
            member.outerHolders.insert({item.classID, spBtnID});
            continue;
        }
        member.holders.insert(spBtnID);
        if (SCBUICoreCom::IsIncBtn(spBtnID))
            AdjustIncReason(item, member);
        else
            SetReason(member, spBtn.byCondition ? VISINFO_CNDCLLMEMBER : VISINFO_SELCLLMEMBER, true);
    }
}

void CModelEnv::LetMembersGo(SModelItem& item, DWORD spBtnID)
{
    const SModelItem* const itemOfMembers = FindItemOfMembers(item, spBtnID);
    for (const DWORD memberID : item.btns.at(spBtnID).members) {
        if (itemOfMembers->btns.count(memberID) != 0)
            LetGo(item, spBtnID, memberID);
    }
}

void CModelEnv::LetGo(SModelItem& item, DWORD spBtnID, DWORD memberID)
{
    SModelItem& itemOfMembers = *FindItemOfMembers(item, spBtnID);
    SModelBtn& member = itemOfMembers.btns.at(memberID);
    ForgetHolder(member, itemOfMembers, {item.classID, spBtnID});
    if (SCBUICoreCom::IsVirIncBtn(spBtnID))
        return;
    if (SCBUICoreCom::IsIncBtn(spBtnID)) {
        AdjustIncReason(item, member);
        return;
    }
    // Another condition cll button that holds it is not asked.
    if (item.btns.at(spBtnID).byCondition)
        SetReason(member, VISINFO_CNDCLLMEMBER, false);
    if (std::none_of(member.holders.begin(), member.holders.end(), &SCBUICoreCom::IsCllBtn))
        SetReason(member, VISINFO_SELCLLMEMBER, false);
}

void CModelEnv::AdjustIncReason(SModelItem& item, SModelBtn& member)
{
    bool isHeld = false;
    bool isDisplayed = false;
    for (const DWORD holderID : member.holders) {
        isHeld = isHeld || SCBUICoreCom::IsIncBtn(holderID);
        isDisplayed = isDisplayed || item.btns.at(holderID).dispMember;
    }
    SetReason(member, VISINFO_INCMEMBER, isHeld && !isDisplayed);
}

// Whether any member is alive, of these and of all above them. A member may be among them, so members come
// first.
void CModelEnv::AdjustLiveMemberReason(const BtnRefSet& spBtns)
{
    BtnRefSet pending = WithHolders(spBtns);
    while (!pending.empty()) {
        // There is one without members that are pending: none holds itself.
        const auto next = std::find_if(pending.begin(), pending.end(), [&](const SModelBtnRef& ref) {
            const SModelItem* const itemOfMembers = FindItemOfMembers(items.at(ref.btnClassID), ref.btnID);
            return itemOfMembers == nullptr ||
                   std::none_of(pending.begin(), pending.end(), [&](const SModelBtnRef& other) {
                       return other.btnClassID == itemOfMembers->classID &&
                              GetBtn(ref).HasMember(other.btnID);
                   });
        });
        if (next == pending.end())
            throw std::logic_error("a special button of the model holds itself");
        const SModelBtnRef ref = *next;
        pending.erase(next);
        SModelBtn& spBtn = GetBtn(ref);
        const SModelItem* const itemOfMembers = FindItemOfMembers(items.at(ref.btnClassID), ref.btnID);
        if (itemOfMembers == nullptr)
            continue;
        const bool lives = std::any_of(spBtn.members.begin(), spBtn.members.end(), [&](DWORD memberID) {
            const auto member = itemOfMembers->btns.find(memberID);
            return member != itemOfMembers->btns.end() &&
                   (member->second.visibleInfo & VISINFO_MASK_NOTALIVE) == 0;
        });
        SetReason(spBtn, VISINFO_NOLIVEMEMBER, !lives);
        if (lives && spBtn.effective) // through its member the limitation reaches it
            SetReason(spBtn, VISINFO_LIMITEDREC, false);
    }
}

void CModelEnv::AdjustLiveMemberReasonOfAll()
{
    BtnRefSet all;
    for (const auto& [classID, item] : items) {
        for (const DWORD spBtnID : item.ListSpecial(true))
            all.insert({classID, spBtnID});
    }
    AdjustLiveMemberReason(all);
}

// A member that goes away leaves the list; VISINFO_NOMEMBER stays as it was.
void CModelEnv::RemoveMember(SModelItem& item, DWORD spBtnID, DWORD memberID)
{
    SModelBtn& spBtn = item.btns.at(spBtnID);
    std::erase(spBtn.members, memberID);
    if (spBtn.effective)
        AdjustLiveMemberReason({{item.classID, spBtnID}});
}

// ---- What is to be seen

std::optional<IDList> CModelEnv::GetRootSpBtnIDListIncludingBtn(const SModelItem& item, DWORD btnID,
                                                                bool includeIneffective) const
{
    if (item.btns.count(btnID) == 0)
        return std::nullopt;
    std::set<DWORD> roots;
    std::set<DWORD> reached = {btnID};
    IDList pending = {btnID};
    while (!pending.empty()) {
        const DWORD memberID = pending.back();
        pending.pop_back();
        bool isHeld = false;
        for (const DWORD holderID : item.ListSpecial(includeIneffective)) {
            if (SCBUICoreCom::IsVirIncBtn(holderID) || !item.btns.at(holderID).HasMember(memberID))
                continue;
            isHeld = true;
            if (reached.insert(holderID).second)
                pending.push_back(holderID);
        }
        if (!isHeld && memberID != btnID)
            roots.insert(memberID);
    }
    return IDList(roots.begin(), roots.end());
}

// Those of an item that takes no part are left out, with what is above them.
BtnRefSet CModelEnv::GetSpBtnsThatTheBtnInfluences(const SModelItem& item, DWORD btnID, bool directOnly) const
{
    if (item.btns.count(btnID) == 0)
        return {};
    BtnRefSet influenced;
    std::vector<SModelBtnRef> pending = {{item.classID, btnID}};
    while (!pending.empty()) {
        const SModelBtnRef ref = pending.back();
        pending.pop_back();
        for (const SModelBtnRef& holder : GetHolders(items.at(ref.btnClassID), ref.btnID)) {
            if (holder.btnClassID != ref.btnClassID && !items.at(holder.btnClassID).effective)
                continue;
            if (influenced.insert(holder).second && !directOnly)
                pending.push_back(holder);
        }
    }
    return influenced;
}

std::optional<IDList> CModelEnv::GetDisplayedMembers(const SModelItem& item, const SModelBtn& spBtn) const
{
    IDList displayed;
    if (spBtn.refClassID != 0) {
        displayed = spBtn.members;
        std::sort(displayed.begin(), displayed.end());
        return displayed;
    }
    for (const DWORD memberID : spBtn.members) {
        const auto member = item.btns.find(memberID);
        if (member == item.btns.end())
            return std::nullopt;
        if (member->second.visibleInfo <= (VISINFO_SELCLLMEMBER | VISINFO_CNDCLLMEMBER | VISINFO_INCMEMBER))
            displayed.push_back(memberID);
    }
    std::sort(displayed.begin(), displayed.end());
    return displayed;
}

// ---- Members by condition

bool CModelEnv::ResetMembers()
{
    if (!hasSumMngr)
        return false;
    for (auto& [classID, item] : items)
        ResetMembers(item);
    return true;
}

void CModelEnv::ResetMembers(SModelItem& item)
{
    if (!item.selective)
        ResetMembersOfEffective(item);
}

// Of an item and of all that refer to it, each once.
void CModelEnv::ResetMembersWithReferring(DWORD classID, std::set<DWORD>& visited)
{
    if (!hasSumMngr || !visited.insert(classID).second)
        return;
    ResetMembers(items.at(classID));
    for (const auto& [otherID, other] : items) {
        bool refers = false;
        for (const DWORD spBtnID : other.ListSpecial(true)) {
            const SModelBtn& spBtn = other.btns.at(spBtnID);
            refers = refers || (spBtn.refClassID == classID && !spBtn.hasLostRef);
        }
        if (refers)
            ResetMembersWithReferring(otherID, visited);
    }
}

void CModelEnv::ResetMembersOfEffective(SModelItem& item)
{
    for (const DWORD spBtnID : item.ListSpecial(false))
        ResetMembers(item, spBtnID);
}

void CModelEnv::ResetMembers(SModelItem& item, DWORD spBtnID)
{
    SModelBtn& spBtn = item.btns.at(spBtnID);
    if (!spBtn.byCondition || !spBtn.cnd)
        return;
    const SModelItem& itemOfMembers = *FindItemOfMembers(item, spBtnID);
    const std::optional<IDList> members =
        Evaluate(*spBtn.cnd, itemOfMembers.classID, itemOfMembers.ListDisplayedExpanded());
    if (!members || !AreAppropriateMembers(item, spBtnID, *members))
        return;
    ChangeMembers(item, spBtnID, *members);
    std::erase_if(knownSums[item.classID].ofBtn,
                  [spBtnID](const auto& entry) { return entry.first.first == spBtnID; });
    if (!item.selective)
        SetReason(spBtn, VISINFO_RELATION, false);
}

bool CModelEnv::ResetMemberBtnBasedOnTheCndOfAll(DWORD numID)
{
    if (!hasSumMngr)
        return false;
    for (auto& [classID, item] : items) {
        for (const DWORD spBtnID : item.ListSpecial(false)) {
            const SModelBtn& spBtn = item.btns.at(spBtnID);
            if (spBtn.cnd && spBtn.cnd->HasNumDataItem(numID))
                ResetMembers(item, spBtnID);
        }
    }
    return true;
}

std::optional<IDList> CModelEnv::Evaluate(const SModelCnd& cnd, DWORD classID, const IDList& btnIDs)
{
    if (cnd.kind == SModelCnd::KIND_NOTHING)
        return std::nullopt;
    if (cnd.kind == SModelCnd::KIND_LEAF)
        return cnd.selCondition < NUMCMP_EQUAL ? EvaluateRank(cnd, classID, btnIDs)
                                               : EvaluateComparison(cnd, classID, btnIDs);
    if (cnd.children.size() == 1)
        return Evaluate(cnd.children.front(), classID, btnIDs);

    // Each child picks from all that was given.
    std::set<DWORD> joined;
    bool isFirst = true;
    for (const SModelCnd& child : cnd.children) {
        const std::optional<IDList> picked = Evaluate(child, classID, btnIDs);
        if (!picked)
            return std::nullopt;
        if (isFirst || cnd.boolOperator != 1)
            joined.insert(picked->begin(), picked->end());
        else
            std::erase_if(joined, [&](DWORD btnID) {
                return std::find(picked->begin(), picked->end(), btnID) == picked->end();
            });
        isFirst = false;
    }
    return IDList(joined.begin(), joined.end());
}

// What is no number counts as 0.
bool CModelEnv::GetWorth(const SModelCnd& leaf, DWORD classID, DWORD btnID, double total, double& worth)
{
    bool isKnown = false;
    DWORD count = 0;
    switch (leaf.sumMethod) {
    case METHOD_SUM:
        isKnown = GetSumValue(classID, btnID, leaf.numID, worth);
        break;
    case METHOD_COUNT:
        isKnown = GetCountValue(classID, btnID, leaf.numID, count);
        worth = count;
        break;
    case METHOD_AVERAGE:
        isKnown = GetAverageValue(classID, btnID, leaf.numID, worth);
        break;
    case METHOD_RATIO:
        isKnown = GetSumValue(classID, btnID, leaf.numID, worth);
        worth /= total;
        break;
    default: // the sums of an environment have no others
        break;
    }
    if (std::isnan(worth))
        worth = 0;
    return isKnown;
}

std::optional<IDList> CModelEnv::EvaluateRank(const SModelCnd& leaf, DWORD classID, const IDList& btnIDs)
{
    const bool fromTop = leaf.selCondition == RANK_HIGH || leaf.selCondition == RANK_HIGHEXCEPT;
    const bool wantsRanked = leaf.selCondition == RANK_HIGH || leaf.selCondition == RANK_LOW;
    if (btnIDs.size() <= leaf.rankNum || !ExistNumDataItem(leaf.numID))
        return wantsRanked ? btnIDs : IDList{};
    double total = 0;
    if (leaf.sumMethod == METHOD_RATIO && !GetTotalValue(classID, leaf.numID, total))
        return std::nullopt;
    std::vector<std::pair<double, DWORD>> order;
    for (const DWORD btnID : btnIDs) {
        double worth = 0;
        if (!GetWorth(leaf, classID, btnID, total, worth))
            return std::nullopt;
        order.emplace_back(worth, btnID);
    }
    // Of equal ones the first given is the lowest, so from the top it comes last.
    std::stable_sort(order.begin(), order.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    if (fromTop)
        std::reverse(order.begin(), order.end());

    const double boundary = order[leaf.rankNum - 1].first;
    std::size_t rankedCount = leaf.rankNum;
    while (rankedCount < order.size() && SharesRank(boundary, order[rankedCount].first))
        ++rankedCount;
    IDList picked;
    for (std::size_t rank = wantsRanked ? 0 : rankedCount; rank < (wantsRanked ? rankedCount : order.size());
         ++rank)
        picked.push_back(order[rank].second);
    return picked;
}

std::optional<IDList> CModelEnv::EvaluateComparison(const SModelCnd& leaf, DWORD classID,
                                                    const IDList& btnIDs)
{
    if (!ExistNumDataItem(leaf.numID))
        return IDList{};
    double total = 0;
    if (leaf.sumMethod == METHOD_RATIO && !GetTotalValue(classID, leaf.numID, total))
        return std::nullopt;
    IDList picked;
    for (const DWORD btnID : btnIDs) {
        double worth = 0;
        if (!GetWorth(leaf, classID, btnID, total, worth))
            return std::nullopt;
        if (Compares(leaf.selCondition, worth, leaf.cmpNum))
            picked.push_back(btnID);
    }
    return picked;
}

} // namespace NSKZ::Test
