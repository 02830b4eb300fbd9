#include "CModelEnv.h"

#include "SCBUICoreCom.h"
#include "VCBtn.h"

#include <algorithm>
#include <sstream>

// What a saved environment holds, and what comes of reading it.

namespace NSKZ::Test {

using NSKZCore::CBUIDataMngr;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SSelectBtnIDList;
using NSKZCore::VISINFO_EMPVALNODISP;
using NSKZCore::VISINFO_NOMEMBER;
using NSKZCore::VISINFO_NOREC;

namespace {

constexpr DWORD EMPVAL = SCBUICoreCom::BTN_ID_EMPVAL;

void SetNoMemberReason(SModelBtn& spBtn)
{
    spBtn.visibleInfo &= ~VISINFO_NOMEMBER;
    if (spBtn.members.empty())
        spBtn.visibleInfo |= VISINFO_NOMEMBER;
}

// Whether the common form has the button; the fixed form tells of these only whether they are selected.
bool IsInCommonForm(const SModelItem& item, DWORD btnID)
{
    return SCBUICoreCom::IsSpBtn(btnID) ? item.IsCommon() && SCBUICoreCom::IsVirIncBtn(btnID) : true;
}

bool IsInCommonForm(const SModelItem& item)
{
    return item.effective && (!item.isVirtual || item.IsCommon());
}

} // namespace

// ---- What is saved

// What does not take part is not, nor a virtual inc button whose item is not; and of the others not what
// a condition has picked.
bool CModelEnv::IsSpBtnSaved(const SModelItem& item, DWORD btnID) const
{
    const SModelItem* const itemOfMembers = FindItemOfMembers(item, btnID);
    return item.btns.at(btnID).effective && itemOfMembers != nullptr && itemOfMembers->effective;
}

std::optional<SModelBtn> CModelEnv::GetSavedSpBtn(const SModelItem& item, DWORD btnID) const
{
    if (!IsSpBtnSaved(item, btnID))
        return std::nullopt;
    const SModelItem* const itemOfMembers = FindItemOfMembers(item, btnID);
    SModelBtn saved = item.btns.at(btnID);
    saved.visibleInfo = 0;
    saved.holders.clear();
    saved.outerHolders.clear();
    saved.cnd.reset();
    if (saved.byCondition) {
        saved.members.clear();
        return saved;
    }
    std::erase_if(saved.members, [&](DWORD memberID) {
        return itemOfMembers->btns.count(memberID) != 0 && SCBUICoreCom::IsSpBtn(memberID) &&
               !IsSpBtnSaved(*itemOfMembers, memberID);
    });
    SetNoMemberReason(saved);
    return saved;
}

void CModelEnv::DescribeSavedSpBtn(std::ostream& out, const SModelBtn& btn)
{
    out << " shows \"" << btn.GetShownText() << "\" made " << (btn.isTimeCertain ? btn.createTime : 0)
        << (btn.dispMember ? " beside" : "") << (btn.byCondition ? " by condition" : "") << " of "
        << btn.refClassID;
    for (const DWORD memberID : btn.members)
        out << ' ' << memberID;
}

bool CModelEnv::HasItemOfCommonForm() const
{
    return std::any_of(items.begin(), items.end(),
                       [](const auto& entry) { return IsInCommonForm(entry.second); });
}

std::string CModelEnv::DescribeCommonFormOf(DWORD classID) const
{
    const SModelItem& item = items.at(classID);
    if (!IsInCommonForm(item))
        return "";
    std::ostringstream out;
    out << item.name << '\n';
    for (const auto& [btnID, btn] : item.btns) {
        if (!SCBUICoreCom::IsSpBtn(btnID)) {
            out << btnID << " shows \"" << btn.GetShownText() << "\"\n";
        } else if (const auto saved = GetSavedSpBtn(item, btnID); saved && IsInCommonForm(item, btnID)) {
            out << btnID;
            DescribeSavedSpBtn(out, *saved);
            out << '\n';
        }
    }
    return out.str();
}

std::string CModelEnv::DescribeFixedFormOf(DWORD classID) const
{
    const SModelItem& item = items.at(classID);
    if (!item.effective)
        return "";
    std::ostringstream out;
    out << item.name << (item.selective ? " selective" : "") << (item.newBtnMadeSelState ? " new" : "")
        << (item.displaysEmpVal ? " empty" : "") << '\n';
    for (const auto& [btnID, btn] : item.btns) {
        const bool isSpBtn = SCBUICoreCom::IsSpBtn(btnID);
        const auto saved = isSpBtn ? GetSavedSpBtn(item, btnID) : std::nullopt;
        if (isSpBtn && !saved)
            continue;
        out << btnID << (btn.sel ? " selected" : "");
        if (!IsInCommonForm(item, btnID))
            DescribeSavedSpBtn(out, *saved);
        out << '\n';
    }
    out << item.dateForm.kind << ' ' << item.dateForm.form << ' ' << item.dateForm.option << ' '
        << item.dateForm.optionalForm << ' ' << item.timeForm.kind << ' ' << item.timeForm.form << ' '
        << item.timeForm.optionalForm;
    for (const auto& [btnID, date] : item.groups)
        out << ' ' << btnID;
    return out.str();
}

std::string CModelEnv::DescribeFixedFormOfAll() const
{
    std::ostringstream out;
    out << "mode " << mode << (multiSelection ? " multi" : "");
    if (mode == CBUIDataMngr::RELATIONMODE_NARROWING) {
        for (const SModelLevel& level : levels)
            out << " level " << level.classID;
    } else if (mode == CBUIDataMngr::RELATIONMODE_DIFFERENCE) {
        out << " pair " << diffClassID << ' ' << diffStandardBtnID << ' ' << diffTargetBtnID;
    }
    out << " next " << nextFixedClassID;
    for (const DWORD classID : ListFreeFixedClassesOfSave())
        out << ' ' << classID;
    return out.str();
}

// The identifiers of items that are not saved are free in what is read.
IDList CModelEnv::ListFreeFixedClassesOfSave() const
{
    IDList classIDs = freeFixedClassIDs;
    for (const auto& [classID, item] : items) {
        if (item.isVirtual && !item.effective && !item.IsCommon())
            classIDs.push_back(classID);
    }
    return classIDs;
}

// ---- What is read

// Dates and numbers come from the values, whatever their aliases are by now.
void CModelEnv::ReadCommonForm(const CModelEnv& saved)
{
    table = saved.table;
    items.clear();
    nextSrcClassID = saved.nextSrcClassID;
    nextCommonClassID = saved.nextCommonClassID;
    history.clear();
    nextFixedClassID = SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
    freeFixedClassIDs.clear();
    levels.clear();
    limitation.reset();
    selectedClasses.clear();
    diffClassID = diffStandardBtnID = diffTargetBtnID = 0;
    multiSelection = false;
    hasNumCnd = false;
    for (const auto& [classID, savedItem] : saved.items) {
        if (!IsInCommonForm(savedItem))
            continue;
        SModelItem& item = items[classID];
        item.classID = classID;
        item.fldID = savedItem.fldID;
        item.type = savedItem.type;
        item.btnOfRec = savedItem.btnOfRec;
        item.appearance = savedItem.appearance;
        item.isVirtual = savedItem.isVirtual;
        item.name = savedItem.name;
        for (const auto& [btnID, savedBtn] : savedItem.btns)
            ReadBtnOfCommonForm(item, btnID, saved, savedItem);
    }
    SettleReadMembers();
    ForgetSums();
}

void CModelEnv::ReadBtnOfCommonForm(SModelItem& item, DWORD btnID, const CModelEnv& saved,
                                    const SModelItem& savedItem)
{
    if (!IsInCommonForm(item, btnID))
        return;
    if (SCBUICoreCom::IsSpBtn(btnID)) {
        if (const auto savedSpBtn = saved.GetSavedSpBtn(savedItem, btnID)) {
            item.btns[btnID] = *savedSpBtn;
            item.btns[btnID].sel = false;
            EnterName(item, btnID);
        }
        return;
    }
    const SModelBtn& savedBtn = savedItem.btns.at(btnID);
    SModelBtn& btn = item.btns[btnID];
    btn.name = savedBtn.name;
    btn.recs = savedBtn.recs;
    if (btn.recs.empty()) {
        btn.visibleInfo = VISINFO_NOREC;
    } else if (btn.name) {
        EnterNumber(item, btnID); // an alias comes later
        EnterDate(item, btnID);
    }
    btn.alias = savedBtn.alias;
    if (!btn.recs.empty())
        EnterName(item, btnID);
}

void CModelEnv::ReadFixedForm(const CModelEnv& saved, const IDList& limitedRecs, SMoment moment)
{
    ClearOfFixedSpec();
    mode = saved.mode;
    multiSelection = saved.multiSelection;
    nextFixedClassID = saved.nextFixedClassID;
    freeFixedClassIDs = saved.ListFreeFixedClassesOfSave();
    for (const auto& [classID, savedItem] : saved.items) {
        if (!savedItem.effective)
            continue;
        if (!IsInCommonForm(savedItem)) {
            SModelItem& item = items[classID];
            item.classID = classID;
            item.type = savedItem.type;
            item.isVirtual = true;
            item.name = savedItem.name;
        }
        if (SModelItem* const item = FindItem(classID))
            ReadItemOfFixedForm(*item, saved, savedItem);
    }
    std::vector<SSelectBtnIDList> selection = ListReadSelection(saved);
    for (auto& [classID, item] : items)
        DropBtnsOfLostItems(item);
    SettleReadMembers();
    for (auto& [classID, item] : items)
        SwitchOffBtnsOverIneffectiveItems(item);
    SetLimitedRecList(limitedRecs);
    for (auto& [classID, item] : items) {
        if (!item.IsOfDates())
            continue;
        const IDList before = item.ListAll();
        RebuildGroups(item, moment);
        // A group that comes about now is a new button.
        const auto share = std::find_if(selection.begin(), selection.end(),
                                        [id = classID](const auto& other) { return other.btnClassID == id; });
        if (share == selection.end() || !share->newBtnMadeSelState)
            continue;
        for (const DWORD btnID : item.ListAll()) {
            if (std::find(before.begin(), before.end(), btnID) == before.end())
                share->btnIDList.push_back(btnID);
        }
    }
    AdjustLiveMemberReasonOfAll();
    if (!SelectBtns(selection, false))
        ClearAllBtnSelections(true);
}

void CModelEnv::ReadItemOfFixedForm(SModelItem& item, const CModelEnv& saved, const SModelItem& savedItem)
{
    item.selective = savedItem.selective;
    item.newBtnMadeSelState = savedItem.newBtnMadeSelState;
    item.displaysEmpVal = savedItem.displaysEmpVal;
    item.dateForm = savedItem.dateForm;
    item.timeForm = savedItem.timeForm;
    if (item.selective && item.newBtnMadeSelState) { // what the form does not name is selected
        for (auto& [btnID, btn] : item.btns)
            btn.sel = true;
    }
    for (const auto& [btnID, savedBtn] : savedItem.btns) {
        const bool isSpBtn = SCBUICoreCom::IsSpBtn(btnID);
        const auto savedSpBtn = isSpBtn ? saved.GetSavedSpBtn(savedItem, btnID) : std::nullopt;
        if (isSpBtn && !savedSpBtn)
            continue;
        if (!IsInCommonForm(item, btnID)) {
            item.btns[btnID] = *savedSpBtn;
            EnterName(item, btnID);
        } else if (item.btns.count(btnID) != 0) {
            item.btns.at(btnID).sel = savedBtn.sel;
        }
    }
    item.selBtnCount = static_cast<DWORD>(item.ListSelected().size());
    // A date that the criteria give no number makes no group any more.
    for (const auto& [btnID, date] : savedItem.groups) {
        if (const auto order = date.GetOrder(table.criteria)) {
            item.groups[btnID] = date;
            item.dateOrder.emplace(*order, 0, btnID);
        }
    }
    if (!item.displaysEmpVal) {
        SModelBtn& empVal = item.btns.at(EMPVAL);
        empVal.visibleInfo |= VISINFO_EMPVALNODISP;
        for (const SModelBtnRef& ref : FindListing(item, EMPVAL))
            std::erase(GetBtn(ref).members, EMPVAL);
        empVal.holders.clear();
        empVal.outerHolders.clear();
    }
}

void CModelEnv::DropBtnsOfLostItems(SModelItem& item)
{
    for (const DWORD spBtnID : item.ListSpecial(true)) {
        if (item.IsCommon() || item.btns.at(spBtnID).refClassID == 0 ||
            FindItem(item.btns.at(spBtnID).refClassID) != nullptr)
            continue;
        RemoveName(item, spBtnID);
        item.btns.erase(spBtnID);
    }
}

// As that item would have done when it was switched off.
void CModelEnv::SwitchOffBtnsOverIneffectiveItems(SModelItem& item)
{
    if (!item.isVirtual || item.IsCommon())
        return;
    for (const DWORD spBtnID : item.ListSpecial(false)) {
        SModelItem& itemOfMembers = *FindItemOfMembers(item, spBtnID);
        if (itemOfMembers.effective)
            continue;
        itemOfMembers.switchedOff.insert({item.classID, spBtnID});
        SwitchOff(item, spBtnID);
    }
}

// Members that cannot be are no members, apart from special buttons that are still to come.
void CModelEnv::SettleReadMembers()
{
    for (auto& [classID, item] : items) {
        for (const DWORD spBtnID : item.ListSpecial(true)) {
            SModelBtn& spBtn = item.btns.at(spBtnID);
            if (spBtn.members.empty())
                continue;
            const SModelItem& itemOfMembers = *FindItemOfMembers(item, spBtnID);
            const bool mayAwait = IsInCommonForm(item, spBtnID);
            const auto erased = std::erase_if(spBtn.members, [&](DWORD memberID) {
                const auto member = itemOfMembers.btns.find(memberID);
                if (member == itemOfMembers.btns.end())
                    return !mayAwait ||
                           !(SCBUICoreCom::IsIncBtn(memberID) || SCBUICoreCom::IsCllBtn(memberID));
                return member->second.byCondition || (memberID == EMPVAL && !itemOfMembers.displaysEmpVal);
            });
            if (erased != 0)
                SetNoMemberReason(spBtn);
        }
    }
    for (auto& [classID, item] : items) {
        for (const DWORD spBtnID : item.ListSpecial(false))
            TakeMembers(item, spBtnID);
    }
    AdjustLiveMemberReasonOfAll();
}

std::vector<SSelectBtnIDList> CModelEnv::ListReadSelection(const CModelEnv& saved) const
{
    std::vector<SSelectBtnIDList> selection;
    const auto add = [&](const SModelItem& item) {
        selection.push_back({item.classID, item.ListSelected(), item.newBtnMadeSelState});
    };
    if (mode == CBUIDataMngr::RELATIONMODE_NARROWING) {
        // Levels of items that are gone are passed over, and those deeper than there are items now.
        for (const SModelLevel& level : saved.levels) {
            const SModelItem* const item = FindItem(level.classID);
            if (item != nullptr && level.depth < items.size())
                add(*item);
        }
    } else if (mode == CBUIDataMngr::RELATIONMODE_DIFFERENCE) {
        if (saved.diffClassID != 0) {
            selection.push_back({saved.diffClassID, {saved.diffStandardBtnID}, false});
            if (saved.diffTargetBtnID != 0)
                selection.back().btnIDList.push_back(saved.diffTargetBtnID);
        }
    } else {
        for (const auto& [classID, item] : items) {
            if (item.selective)
                add(item);
        }
    }
    return selection;
}

// ---- For those who compare what was saved

IDList CModelEnv::GetLimitedRecListOfHost() const
{
    if (!limitation)
        return {};
    // A limitation without a record is made by a number that is none.
    return limitation->empty() ? IDList{table.recCount} : IDList(limitation->begin(), limitation->end());
}

} // namespace NSKZ::Test
