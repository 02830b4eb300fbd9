#include "VCBtnClass.h"

#include "CFormattedMsg.h"
#include "COrdListBuilder.h"
#include "CSpBtnWalk.h"
#include "ECAbnormalData.h"
#include "IBnLink.h"
#include "IRpLink.h"
#include "SCBUICoreStrDef.h"
#include "SCKZCoreCom.h"
#include "SCSortRecs.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace NSKZ::NSKZCore {

namespace {

constexpr const char* SRC_FILE = "Src/VCBtnClass";

// Records whose cells are fetched from the table at a time: the cells stay in the nearest cache.
constexpr std::size_t CHUNK_SIZE = 2048;

// With fewer records than one for this many buttons, sorting their buttons is cheaper than a pass over all.
constexpr DWORD FEW_RECORDS = 64;

bool IsSameText(const char* shownText, const char* text, DWORD len)
{
    const std::size_t shownLen = shownText == nullptr ? 0 : std::strlen(shownText);
    return shownLen == len && (len == 0 || std::memcmp(shownText, text, len) == 0);
}

} // namespace

VCBtnClass::VCBtnClass(DWORD btnClassID, const std::unique_ptr<IRpLink>& rpLinkOfEnv)
{
    VCBtnClass::Clear();
    id = btnClassID;
    rpLink = &rpLinkOfEnv;
}

VCBtnClass::~VCBtnClass()
{
    ForgetReferringClasses();
}

// --- Buttons by identifier

bool VCBtnClass::GetTypeOfBtn(DWORD btnID, SCBUICoreCom::EBtnType& type) const
{
    const VCBtn* const btn = FindBtn(btnID);
    if (btn == nullptr)
        return false;
    type = btn->GetType();
    return true;
}

bool VCBtnClass::GetSelectionInfoOfBtn(DWORD btnID, bool& sel) const
{
    const VCBtn* const btn = FindBtn(btnID);
    if (btn == nullptr)
        return false;
    sel = btn->sel;
    return true;
}

bool VCBtnClass::GetNameOfBtn(DWORD btnID, const char*& name) const
{
    const VCBtn* const btn = FindBtn(btnID);
    if (btn == nullptr)
        return false;
    name = btn->name.get();
    return true;
}

bool VCBtnClass::GetAliasOfBtn(DWORD btnID, const char*& alias) const
{
    const VCBtn* const btn = FindBtn(btnID);
    if (btn == nullptr)
        return false;
    alias = btn->GetShownText();
    return true;
}

bool VCBtnClass::GetVisibleInfoOfBtn(DWORD btnID, unsigned int& visibleInfo) const
{
    const VCBtn* const btn = FindBtn(btnID);
    if (btn == nullptr)
        return false;
    visibleInfo = GetVisibleInfo(*btn);
    return true;
}

bool VCBtnClass::ExistTheBtn(DWORD btnID) const
{
    const VCBtn* const btn = FindBtn(btnID);
    return btn != nullptr && btn->IsEffective();
}

bool VCBtnClass::ExistTheBtn(const char* text, DWORD len, DWORD exceptID) const
{
    const auto& entries = btns.GetEntries();
    return std::any_of(entries.begin(), entries.end(), [&](const auto& entry) {
        const VCBtn& btn = *entry.value;
        return entry.key != exceptID && btn.IsEffective() && IsSameText(btn.GetShownText(), text, len);
    });
}

// --- Populations

template <class TCondition>
DWORD VCBtnClass::ListBtnIDs(std::vector<DWORD>& btnIDs, const TCondition& isListed) const
{
    btnIDs.clear();
    for (const VCBtn* const btn : srcBtnOfID) {
        if (btn != nullptr && isListed(*btn))
            btnIDs.push_back(btn->id);
    }
    for (const auto& [btnID, btn] : spBtnOfID) {
        if (isListed(*btn))
            btnIDs.push_back(btnID);
    }
    return static_cast<DWORD>(btnIDs.size());
}

DWORD VCBtnClass::GetDispBtnCount() const
{
    const auto isDisplayed = [](const auto& idAndBtn) { return idAndBtn.second->visibleInfo == 0; };
    return display.GetDispCount() +
           static_cast<DWORD>(std::count_if(spBtnOfID.begin(), spBtnOfID.end(), isDisplayed));
}

DWORD VCBtnClass::GetSelectedBtnIDList(std::vector<DWORD>& btnIDs) const
{
    btnIDs.clear();
    for (const DWORD btnID : selBtnIDs) {
        const VCBtn* const btn = FindBtn(btnID);
        if (btn != nullptr && btn->sel && btn->IsEffective())
            btnIDs.push_back(btnID);
    }
    std::sort(btnIDs.begin(), btnIDs.end());
    btnIDs.erase(std::unique(btnIDs.begin(), btnIDs.end()), btnIDs.end());
    return selBtnCount;
}

DWORD VCBtnClass::GetSelectedBtnIDList(std::set<DWORD>& btnIDs) const
{
    std::vector<DWORD> list;
    GetSelectedBtnIDList(list);
    btnIDs = std::set<DWORD>(list.begin(), list.end());
    return selBtnCount;
}

DWORD VCBtnClass::GetDispSelectedBtnIDList(std::vector<DWORD>& btnIDs) const
{
    GetSelectedBtnIDList(btnIDs);
    std::erase_if(btnIDs, [this](DWORD btnID) { return GetVisibleInfo(*FindBtn(btnID)) != 0; });
    return static_cast<DWORD>(btnIDs.size());
}

DWORD VCBtnClass::GetDisplayedBtnIDList(std::vector<DWORD>& btnIDs) const
{
    btnIDs.clear();
    btnIDs.reserve(GetDispBtnCount());
    for (DWORD btnID = 0; btnID < display.GetEndID(); ++btnID) {
        if (display.IsDisplayed(btnID))
            btnIDs.push_back(btnID);
    }
    for (const auto& [btnID, btn] : spBtnOfID) {
        if (btn->visibleInfo == 0)
            btnIDs.push_back(btnID);
    }
    return static_cast<DWORD>(btnIDs.size());
}

DWORD VCBtnClass::GetDisplayedBtnIDListWhichExpandCndCllBtn(std::vector<DWORD>& btnIDs) const
{
    btnIDs = display.GetDisplayedOrFolded();
    for (const auto& [btnID, btn] : spBtnOfID) {
        if ((btn->visibleInfo & ~VISINFO_CNDCLLMEMBER) == 0 && !IsCndCllBtn(*btn))
            btnIDs.push_back(btnID);
    }
    return static_cast<DWORD>(btnIDs.size());
}

DWORD VCBtnClass::GetAllUneffectiveBtnIDList(std::vector<DWORD>& btnIDs) const
{
    btnIDs.clear();
    for (const auto& [btnID, btn] : spBtnOfID) {
        if (!btn->IsEffective())
            btnIDs.push_back(btnID);
    }
    return static_cast<DWORD>(btnIDs.size());
}

DWORD VCBtnClass::GetAllBtnIDList(std::vector<DWORD>& btnIDs, bool includeIneffective) const
{
    return ListBtnIDs(btnIDs, [=](const VCBtn& btn) { return includeIneffective || btn.IsEffective(); });
}

DWORD VCBtnClass::GetAllSpBtnIDList(std::vector<DWORD>& btnIDs, bool includeIneffective) const
{
    btnIDs.clear();
    for (const auto& [btnID, btn] : spBtnOfID) {
        if (includeIneffective || btn->IsEffective())
            btnIDs.push_back(btnID);
    }
    return static_cast<DWORD>(btnIDs.size());
}

DWORD VCBtnClass::GetBtnClassIDListOfRefOrg(std::vector<DWORD>& btnClassIDs) const
{
    btnClassIDs.clear();
    for (const auto& [btnClassID, btnClass] : refOrgBtnClasses)
        btnClassIDs.push_back(btnClassID);
    return static_cast<DWORD>(btnClassIDs.size());
}

// --- Orders

bool VCBtnClass::IsIncludInOrdList(unsigned int visibleInfo, unsigned int flags) noexcept
{
    if ((flags & ORDLIST_INCLUDE_NONDISPBTNS) != 0 || visibleInfo == 0)
        return true;
    return (flags & ORDLIST_INCLUDE_CNDCLLMEMBERBTNS) != 0 && visibleInfo == VISINFO_CNDCLLMEMBER;
}

void VCBtnClass::SetBtnAppOrdList(const IBnLink& bnLink)
{
    std::vector<DWORD> order;
    if (!bnLink.GetBtnIDList(id, order)) {
        const CFormattedMsg message(SCBUICoreStrDef::MSG_NOTEXIST_SRCBTNCLS_IN_BNLINK, {id});
        throw ECAbnormalData(message.GetText(), SRC_FILE, "NSKZ::NSKZCore::VCBtnClass::SetBtnAppOrdList",
                             3629);
    }
    std::erase(order, SCBUICoreCom::BTN_ID_UNSETTING); // records that could not be read have no button
    appOrdList = std::move(order);
}

void VCBtnClass::GetBtnAppOrdList(unsigned int flags, std::vector<DWORD>& btnIDs) const
{
    COrdListBuilder list(*this, flags);
    if (spBtnCount != 0)
        list.AddSpBtnsByCreation();
    for (const DWORD btnID : appOrdList) {
        if (IsInsideBtnListed(btnID, flags, "NSKZ::NSKZCore::VCBtnClass::GetBtnAppOrdList", 3772))
            list.Add(btnID);
    }
    list.Finish(btnIDs);
}

void VCBtnClass::GetBtnNameOrdList(unsigned int flags, std::vector<DWORD>& btnIDs) const
{
    COrdListBuilder list(*this, flags);
    for (const DWORD btnID : nameOrdList.GetBtnIDs()) {
        if (IsInsideBtnListed(btnID, flags, "NSKZ::NSKZCore::VCBtnClass::GetBtnNameOrdList", 3892))
            list.AddOrSetAside(btnID);
    }
    list.Finish(btnIDs);
}

void VCBtnClass::GetBtnUnknownOrdList(unsigned int flags, const std::vector<DWORD>& order,
                                      std::vector<DWORD>& btnIDs) const
{
    COrdListBuilder list(*this, flags);
    const auto isListed = [this, flags](DWORD btnID) {
        if ((flags & ORDLIST_INCLUDE_NONDISPBTNS) != 0)
            return true;
        const VCBtn* const btn = FindBtn(btnID);
        return btn != nullptr && IsListed(*btn, flags);
    };
    for (const DWORD btnID : order) {
        if (isListed(btnID))
            list.AddOrSetAside(btnID);
    }
    list.Finish(btnIDs);
}

// --- What the environment changes

void VCBtnClass::LetReferringClassesGo()
{
    const std::map<DWORD, VCBtnClass*> referring(refOrgBtnClasses); // entries leave on the way
    for (const auto& [btnClassID, btnClass] : referring)
        btnClass->LoseRefBtnClass(id);
    ForgetReferringClasses();
}

void VCBtnClass::ForgetReferringClasses() noexcept
{
    for (const auto& [btnClassID, btnClass] : refOrgBtnClasses)
        btnClass->ForgetRefBtnClass(id);
    refOrgBtnClasses.clear();
}

void VCBtnClass::LoseRefBtnClass(DWORD) {}

void VCBtnClass::ForgetRefBtnClass(DWORD) noexcept {}

void VCBtnClass::Clear()
{
    ForgetReferringClasses();
    selBtnIDs.clear();
    selBtnIDsKept = 0;
    allRequiredChildAppeared = false;
    display.Clear();
    srcBtnOfID.clear();
    spBtnOfID.clear();
    hasAbsentSpMembers = false;
    spBtnCount = 0;
    ineffectiveBtnCount = 0;
    incNextID = SCBUICoreCom::BTN_ID_INC_BEGIN;
    incBlankIDList.clear();
    cllNextID = SCBUICoreCom::BTN_ID_CLL_BEGIN;
    cllBlankIDList.clear();
    ineffectiveOuterSpBtns.clear();
    nameOrdList.Clear();
    appOrdList.clear();
    btns.Clear();
    id = SCBUICoreCom::BTNCLS_ID_UNSETTING;
    effective = true;
    selected = false;
    newBtnMadeSelState = false;
    btnSelState = false;
    selBtnCount = 0;
    recCount = 0;
    areRowsDeferred = false;
    rpLink = nullptr;
}

void VCBtnClass::ClearOfFixedSpec()
{
    spBtnCount = 0;
    ineffectiveBtnCount = 0;
    for (auto next = spBtnOfID.begin(); next != spBtnOfID.end();) {
        const auto [btnID, spBtn] = *next++;
        if (SCBUICoreCom::IsVirIncBtn(btnID)) {
            ++(spBtn->IsEffective() ? spBtnCount : ineffectiveBtnCount);
        } else {
            DeleteBtnInfoFromNameOrdList(spBtn);
            UnregSpBtn(btnID);
        }
    }
    incNextID = SCBUICoreCom::BTN_ID_INC_BEGIN;
    incBlankIDList.clear();
    cllNextID = SCBUICoreCom::BTN_ID_CLL_BEGIN;
    cllBlankIDList.clear();
    for (const auto& entry : btns.GetEntries()) {
        entry.value->ClearOfFixedSpec();
        AdjstToBackReferences(*entry.value);
        TellDisplayOfOwnReasons(*entry.value);
    }
    display.ShowAllByRelation();
    display.ShowAllByLimit();
    selBtnIDs.clear();
    selBtnCount = 0;
    selected = false;
    newBtnMadeSelState = false;
    btnSelState = false;
    std::erase_if(refOrgBtnClasses, [this](const auto& idAndClass) {
        const bool isFixed = SCBUICoreCom::IsFixedVirBtnClass(idAndClass.first);
        if (isFixed)
            idAndClass.second->ForgetRefBtnClass(id);
        return isFixed;
    });
    std::erase_if(ineffectiveOuterSpBtns, [](const SBtnClassIDAndBtnID& spBtn) {
        return SCBUICoreCom::IsFixedVirBtnClass(spBtn.btnClassID);
    });
}

void VCBtnClass::Copy(const VCBtnClass& other, const std::unique_ptr<IRpLink>& rpLinkOfEnv)
{
    if (&other == this)
        return;
    VCBtnClass::Clear();
    try {
        const auto copyBtn = [this](const VCBtn& btn) { RegBtn(btn.Clone()); };
        for (const VCBtn* const btn : other.srcBtnOfID) {
            if (btn != nullptr)
                copyBtn(*btn);
        }
        for (const auto& [btnID, btn] : other.spBtnOfID)
            copyBtn(*btn);
        nameOrdList.CopyFrom(other.nameOrdList);
        appOrdList = other.appOrdList;
        selBtnIDs = other.selBtnIDs;
        display = other.display;
        incBlankIDList = other.incBlankIDList;
        cllBlankIDList = other.cllBlankIDList;
        ineffectiveOuterSpBtns = other.ineffectiveOuterSpBtns;
    } catch (...) {
        VCBtnClass::Clear();
        throw;
    }
    id = other.id;
    effective = other.effective;
    selected = other.selected;
    newBtnMadeSelState = other.newBtnMadeSelState;
    btnSelState = other.btnSelState;
    selBtnCount = other.selBtnCount;
    hasAbsentSpMembers = other.hasAbsentSpMembers;
    spBtnCount = other.spBtnCount;
    ineffectiveBtnCount = other.ineffectiveBtnCount;
    incNextID = other.incNextID;
    cllNextID = other.cllNextID;
    recCount = other.recCount;
    rpLink = &rpLinkOfEnv;
}

bool VCBtnClass::SetEffective(bool isEffective)
{
    if (effective == isEffective)
        return false;
    if (!isEffective) {
        // What a call that ran out of memory has switched off holds no button here any more, but is among
        // those that were noted then.
        std::set<SBtnClassIDAndBtnID> outerSpBtns(ineffectiveOuterSpBtns);
        for (const auto& entry : btns.GetEntries()) {
            if (const auto& references = entry.value->backReferences) {
                outerSpBtns.insert(references->spBtnIDsOfOtherClass.begin(),
                                   references->spBtnIDsOfOtherClass.end());
            }
        }
        ineffectiveOuterSpBtns.swap(outerSpBtns);
    }
    for (const SBtnClassIDAndBtnID& spBtn : ineffectiveOuterSpBtns) {
        const auto found = refOrgBtnClasses.find(spBtn.btnClassID);
        if (found != refOrgBtnClasses.end())
            found->second->SetEffectiveInfoOfSpBtn(spBtn.btnID, isEffective);
    }
    effective = isEffective;
    if (isEffective)
        ineffectiveOuterSpBtns.clear();
    return true;
}

bool VCBtnClass::SetSelectionInfo(bool isSelected) noexcept
{
    if (selected == isSelected)
        return false;
    selected = isSelected;
    return true;
}

bool VCBtnClass::SetBtnSelectiveState(bool state) noexcept
{
    if (btnSelState == state || selBtnCount != 0)
        return false;
    btnSelState = state;
    return true;
}

bool VCBtnClass::SetSelectionInfoOfBtn(DWORD btnID, bool sel, unsigned int& visibleInfo)
{
    VCBtn* const btn = FindBtn(btnID);
    if (btn == nullptr)
        return false;
    if (btn->sel != sel) {
        if (sel)
            RememberSelection(btnID);
        btn->sel = sel;
        if (btn->IsEffective()) {
            selBtnCount += sel ? DWORD(1) : DWORD(-1);
            if (sel)
                btnSelState = true;
            else if (selBtnCount == 0)
                btnSelState = false;
        }
    }
    visibleInfo = GetVisibleInfo(*btn);
    return true;
}

bool VCBtnClass::SetSelectionInfoOfBtn(DWORD btnID, bool sel)
{
    unsigned int visibleInfo = 0;
    return SetSelectionInfoOfBtn(btnID, sel, visibleInfo);
}

void VCBtnClass::RememberSelection(DWORD btnID)
{
    // Deselected buttons stay listed; each time the list has doubled it is cut down to what is selected.
    if (selBtnIDs.size() >= 2 * selBtnIDsKept + 64) {
        std::erase_if(selBtnIDs, [this](DWORD listedID) {
            const VCBtn* const btn = FindBtn(listedID);
            return btn == nullptr || !btn->sel;
        });
        std::sort(selBtnIDs.begin(), selBtnIDs.end());
        selBtnIDs.erase(std::unique(selBtnIDs.begin(), selBtnIDs.end()), selBtnIDs.end());
        selBtnIDsKept = selBtnIDs.size();
    }
    selBtnIDs.push_back(btnID);
}

void VCBtnClass::SetSelectionInfoOfAllBtns(bool sel)
{
    if (sel && !HasAllBtnsBeenSelected()) {
        std::vector<DWORD> allIDs;
        GetAllBtnIDList(allIDs, true);
        selBtnIDs = std::move(allIDs);
        for (const auto& entry : btns.GetEntries())
            entry.value->sel = true;
    } else if (!sel && selBtnCount != 0) {
        for (const DWORD btnID : selBtnIDs) {
            if (VCBtn* const btn = FindBtn(btnID))
                btn->sel = false;
        }
        selBtnIDs.clear();
    }
    newBtnMadeSelState = sel;
    btnSelState = sel;
    selBtnCount = sel ? GetBtnCount() : 0;
}

bool VCBtnClass::SetAliasOfBtn(DWORD btnID, const char* alias)
{
    VCBtn* const btn = FindBtn(btnID);
    if (btn == nullptr)
        return false;
    VCBtn::SAlias made = btn->MakeAlias(alias);
    nameOrdList.Move(made.isName ? btn->name.get() : made.text.get(), btnID);
    btn->SetAlias(std::move(made));
    return true;
}

// --- Reasons to hide

void VCBtnClass::SetVisibleInfoBasedOnRelationOfAllBtns(bool show) noexcept
{
    if (btnSelState)
        return;
    if (show)
        display.ShowAllByRelation();
    else
        display.HideAllByRelation();
    for (const auto& [btnID, btn] : spBtnOfID)
        SetOwnVisibleInfo(*btn, VISINFO_RELATION, !show);
}

void VCBtnClass::SetVisibleInfoBasedOnLimitedRecListOfAllBtns(bool show) noexcept
{
    if (show)
        display.ShowAllByLimit();
    else
        display.HideAllByLimit();
    for (const auto& [btnID, btn] : spBtnOfID)
        SetOwnVisibleInfo(*btn, VISINFO_LIMITEDREC, !show);
}

bool VCBtnClass::PutVisibleInfoBasedOnRelationOfBtns(const std::vector<DWORD>& btnIDs)
{
    return PutVisibleInfoOfBtns(btnIDs, VISINFO_RELATION);
}

bool VCBtnClass::PutVisibleInfoBasedOnLimitedRecListOfBtns(const std::vector<DWORD>& btnIDs)
{
    return PutVisibleInfoOfBtns(btnIDs, VISINFO_LIMITEDREC);
}

bool VCBtnClass::PutVisibleInfoOfBtns(const std::vector<DWORD>& btnIDs, unsigned int bits)
{
    if ((bits & ~(VISINFO_RELATION | VISINFO_LIMITEDREC)) != 0)
        return false;
    CSpBtnWalk walk;
    for (const DWORD btnID : btnIDs) {
        if (!display.IsRegistered(btnID))
            continue;
        if ((bits & VISINFO_RELATION) != 0 && !btnSelState)
            display.ShowByRelation(btnID);
        if ((bits & VISINFO_LIMITEDREC) != 0)
            display.ShowByLimit(btnID);
        if (display.IsBackReferred(btnID))
            walk.AddAbove(*this, *FindBtn(btnID));
    }
    AdjstVisibleInfoOfSpBtns(walk, bits);
    return true;
}

// Calls visit(btnIDs, count) with the buttons of the listed records, a stretch of records at a time.
template <class TVisit>
void VCBtnClass::VisitBtnIDsOfRecs(const IBnLink& bnLink, const DWORD* recList, DWORD recCountOfList,
                                   const TVisit& visit) const
{
    std::array<DWORD, CHUNK_SIZE> cells;
    for (DWORD done = 0; done < recCountOfList;) {
        const DWORD count = std::min<DWORD>(recCountOfList - done, CHUNK_SIZE);
        bnLink.GetBtnIDsOfRecs(id, count, recList + done, cells.data());
        visit(cells.data(), count);
        done += count;
    }
}

bool VCBtnClass::GetBtnIDListOfRecs(const IBnLink& bnLink, const DWORD* recList, DWORD recCountOfList,
                                    std::vector<DWORD>& btnIDs)
{
    if (!bnLink.ExistFld(id))
        return false;
    btnIDs.clear();
    if (recCountOfList < display.GetEndID() / FEW_RECORDS) {
        btnIDs.reserve(recCountOfList);
        VisitBtnIDsOfRecs(bnLink, recList, recCountOfList, [&](const DWORD* cells, DWORD count) {
            std::copy_if(cells, cells + count, std::back_inserter(btnIDs),
                         [this](DWORD btnID) { return display.IsRegistered(btnID); });
        });
        std::sort(btnIDs.begin(), btnIDs.end());
        btnIDs.erase(std::unique(btnIDs.begin(), btnIDs.end()), btnIDs.end());
        return true;
    }
    VisitBtnIDsOfRecs(bnLink, recList, recCountOfList,
                      [this](const DWORD* cells, DWORD count) { display.Mark(cells, count); });
    try {
        display.ListMarked(btnIDs);
    } catch (...) {
        display.TakeMarksAway();
        throw;
    }
    display.TakeMarksAway();
    return true;
}

bool VCBtnClass::PutVisibleInfoBasedOnRelationOfRecs(const IBnLink& bnLink, const DWORD* recList,
                                                     DWORD recCountOfList)
{
    if (!bnLink.ExistFld(id))
        return false;
    const bool toldAbove = display.HasBackReferred();
    if (btnSelState && !toldAbove)
        return true; // its own marks stay, and nothing above is to be told

    // With more records than buttons it is cheapest to mark the buttons met and to look at each button once.
    const bool markFirst = btnSelState || recCountOfList >= display.GetEndID();
    std::vector<DWORD> backReferred;
    VisitBtnIDsOfRecs(bnLink, recList, recCountOfList, [&](const DWORD* cells, DWORD count) {
        if (markFirst)
            display.Mark(cells, count);
        else if (toldAbove)
            display.ShowByRelation(cells, count, backReferred);
        else
            display.ShowByRelation(cells, count);
    });
    if (markFirst) {
        try {
            if (toldAbove)
                display.ListMarkedBackReferred(backReferred);
        } catch (...) {
            display.TakeMarksAway();
            throw;
        }
        if (btnSelState)
            display.TakeMarksAway();
        else
            display.ShowMarkedByRelation();
    }
    CSpBtnWalk walk;
    for (const DWORD btnID : backReferred)
        walk.AddAbove(*this, *FindBtn(btnID));
    AdjstVisibleInfoOfSpBtns(walk, VISINFO_RELATION);
    return true;
}

bool VCBtnClass::PutVisibleInfoOfBtn(VCBtn* btn, unsigned int bits)
{
    if (btn == nullptr)
        return false;
    // A button that the relation reaches is told to those above it even if nothing hid it itself.
    if ((GetVisibleInfo(*btn) & bits) == 0 && (bits & VISINFO_RELATION) == 0)
        return true;
    ClearVisibleInfo(*btn, bits);
    CSpBtnWalk walk;
    walk.AddAbove(*this, *btn);
    AdjstVisibleInfoOfSpBtns(walk, bits);
    return true;
}

// Goes up through the nesting, across classes, in the order in which the buttons were reached.
void VCBtnClass::AdjstVisibleInfoOfSpBtns(CSpBtnWalk& walk, unsigned int bits)
{
    for (std::size_t i = 0; i < walk.GetSize(); ++i) {
        const auto [btnClass, spBtn] = walk.Get(i);
        if ((spBtn->visibleInfo & bits) == 0 && (bits & VISINFO_RELATION) == 0)
            continue;
        btnClass->ClearVisibleInfo(*spBtn, bits);
        walk.AddAbove(*btnClass, *spBtn);
    }
}

bool VCBtnClass::PutVisibleInfoBasedOnRelationOfCndSpBtn(DWORD btnID)
{
    VCSpBtn* const spBtn = FindSpBtn(btnID);
    if (spBtn == nullptr || spBtn->mmbBtnSelMth != VCSpBtn::MMBBTNSELMTH_CONDITION)
        return false;
    ClearVisibleInfo(*spBtn, VISINFO_RELATION);
    return true;
}

// In selective state a class keeps its relation marks.
void VCBtnClass::ClearVisibleInfo(VCBtn& btn, unsigned int bits) noexcept
{
    const unsigned int cleared = btnSelState ? bits & ~VISINFO_RELATION : bits;
    if (!display.IsRegistered(btn.id)) {
        SetOwnVisibleInfo(btn, cleared, false);
        return;
    }
    if ((cleared & VISINFO_RELATION) != 0)
        display.ShowByRelation(btn.id);
    if ((cleared & VISINFO_LIMITEDREC) != 0)
        display.ShowByLimit(btn.id);
    SetOwnVisibleInfo(btn, cleared & ~(VISINFO_RELATION | VISINFO_LIMITEDREC), false);
}

unsigned int VCBtnClass::GetVisibleInfo(const VCBtn& btn) const noexcept
{
    unsigned int visibleInfo = btn.visibleInfo;
    if (display.IsHiddenByRelation(btn.id))
        visibleInfo |= VISINFO_RELATION;
    if (display.IsHiddenByLimit(btn.id))
        visibleInfo |= VISINFO_LIMITEDREC;
    return visibleInfo;
}

void VCBtnClass::SetOwnVisibleInfo(VCBtn& btn, unsigned int bits, bool set) noexcept
{
    btn.visibleInfo = set ? btn.visibleInfo | bits : btn.visibleInfo & ~bits;
    TellDisplayOfOwnReasons(btn);
}

void VCBtnClass::TellDisplayOfOwnReasons(const VCBtn& btn) noexcept
{
    display.SetHiddenByItself(btn.id, btn.visibleInfo != 0, btn.visibleInfo == VISINFO_CNDCLLMEMBER);
}

void VCBtnClass::AdjstToBackReferences(const VCBtn& btn) noexcept
{
    display.SetBackReferred(btn.id, btn.HasBackReferences());
}

// --- Registry

bool VCBtnClass::RegBtn(std::unique_ptr<VCBtn> btn)
{
    const DWORD btnID = btn->id;
    if (FindBtn(btnID) != nullptr)
        return false;
    VCBtn* const borrowed = btn.get();
    if (SCBUICoreCom::IsSrcBtn(btnID)) {
        MakeRoomForSrcBtn(btnID);
        srcBtnOfID[btnID] = borrowed;
        display.Register(btnID);
        TellDisplayOfOwnReasons(*borrowed);
        AdjstToBackReferences(*borrowed);
    } else {
        btns.ReserveForInsert();
        spBtnOfID.emplace(btnID, static_cast<VCSpBtn*>(borrowed));
    }
    btns.InsertNew(btnID, std::move(btn));
    return true;
}

bool VCBtnClass::UnregSpBtn(DWORD btnID) noexcept
{
    return spBtnOfID.erase(btnID) != 0 && btns.Erase(btnID);
}

void VCBtnClass::MakeRoomForSrcBtn(DWORD btnID)
{
    btns.ReserveForInsert();
    if (btnID >= srcBtnOfID.size())
        srcBtnOfID.resize(std::size_t{btnID} + 1, nullptr);
    display.ReserveFor(btnID);
}

VCBtn* VCBtnClass::FindBtn(DWORD btnID) noexcept
{
    if (btnID < srcBtnOfID.size())
        return srcBtnOfID[btnID];
    if (SCBUICoreCom::IsSrcBtn(btnID))
        return nullptr;
    const std::unique_ptr<VCBtn>* const btn = btns.Find(btnID);
    return btn == nullptr ? nullptr : btn->get();
}

const VCBtn* VCBtnClass::FindBtn(DWORD btnID) const noexcept
{
    return const_cast<VCBtnClass*>(this)->FindBtn(btnID);
}

VCSpBtn* VCBtnClass::FindSpBtn(DWORD btnID) noexcept
{
    return SCBUICoreCom::IsSpBtn(btnID) ? static_cast<VCSpBtn*>(FindBtn(btnID)) : nullptr;
}

const VCSpBtn* VCBtnClass::FindSpBtn(DWORD btnID) const noexcept
{
    return const_cast<VCBtnClass*>(this)->FindSpBtn(btnID);
}

const VCBtn& VCBtnClass::GetInsideBtn(DWORD btnID, const char* function, long line) const
{
    const VCBtn* const btn = FindBtn(btnID);
    if (btn == nullptr) {
        const CFormattedMsg message(SCBUICoreStrDef::MSG_NOTEXIST_INSIDEBTN, {id, btnID});
        throw ECAbnormalData(message.GetText(), SRC_FILE, function, line);
    }
    return *btn;
}

bool VCBtnClass::InsertBtnInfoToNameOrdList(const VCBtn* btn)
{
    if (btn == nullptr)
        return false;
    nameOrdList.Insert(btn->GetShownText(), btn->id);
    return true;
}

bool VCBtnClass::DeleteBtnInfoFromNameOrdList(const VCBtn* btn) noexcept
{
    return btn != nullptr && nameOrdList.Erase(btn->GetShownText(), btn->id);
}

} // namespace NSKZ::NSKZCore
