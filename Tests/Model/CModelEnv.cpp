#include "CModelEnv.h"

#include "SCBUICoreCom.h"
#include "SCNumeric.h"
#include "VCBtn.h"
#include "VCBtnClass.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace NSKZ::Test {

using NSKZCore::CBUIDataMngr;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SCDeclareConstant;
using NSKZCore::SSelectBtnIDList;
using NSKZCore::VCBtnClass;
using NSKZCore::VISINFO_CNDCLLMEMBER;
using NSKZCore::VISINFO_EMPVALNODISP;
using NSKZCore::VISINFO_LIMITEDREC;
using NSKZCore::VISINFO_MASK_FIXEDSPEC;
using NSKZCore::VISINFO_NOREC;
using NSKZCore::VISINFO_RELATION;

namespace {

constexpr DWORD EMPVAL = SCBUICoreCom::BTN_ID_EMPVAL;

RecSet Intersect(const RecSet& left, const RecSet& right)
{
    RecSet both;
    for (const DWORD rec : left) {
        if (right.count(rec) != 0)
            both.insert(rec);
    }
    return both;
}

IDList WithoutRepetition(const IDList& ids)
{
    IDList once;
    for (const DWORD id : ids) {
        if (std::find(once.begin(), once.end(), id) == once.end())
            once.push_back(id);
    }
    return once;
}

// Shift-JIS: whether the byte at `pos` is the second one of a character.
bool IsTrailByte(const std::string& text, std::size_t pos)
{
    std::size_t at = 0;
    while (at < pos) {
        const auto byte = static_cast<unsigned char>(text[at]);
        const bool isLead = (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
        if (isLead && at + 1 == pos)
            return true;
        at += isLead ? 2 : 1;
    }
    return false;
}

// A text that is longer than any date and the space behind it is cut to its date.
std::string CutToDate(const std::string& text, const SCDeclareConstant::SDateTypeInfo& info)
{
    unsigned int minLen = 0;
    unsigned int maxLen = 0;
    if (!SCDeclareConstant::GetDateStrMinAndMaxLen(info.form, info.delimiter, minLen, maxLen))
        return text;
    if (text.size() <= maxLen + 1)
        return text;
    std::string cut = text.substr(0, IsTrailByte(text, maxLen) ? maxLen - 1 : maxLen);
    const std::size_t space = cut.find(' ', minLen);
    return space == std::string::npos ? cut : cut.substr(0, space);
}

template <class TKey>
void Enter(ModelOrder<TKey>& order, const TKey& key, std::uint64_t entryNumber, DWORD btnID)
{
    for (const auto& [otherKey, otherNumber, otherID] : order) {
        if (otherID == btnID && otherKey == key)
            return;
    }
    order.emplace(key, entryNumber, btnID);
}

bool IsListed(unsigned int visibleInfo, unsigned int flags)
{
    if (visibleInfo == 0 || (flags & VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS) != 0)
        return true;
    return visibleInfo == VISINFO_CNDCLLMEMBER && (flags & VCBtnClass::ORDLIST_INCLUDE_CNDCLLMEMBERBTNS) != 0;
}

// What most orders have in common: `ids` in ascending order, then the wishes for the other direction, for the
// empty-value button at the end, and for cll buttons that select by condition behind even that.
IDList Arrange(const SModelItem& item, const IDList& ids, unsigned int flags)
{
    IDList arranged;
    IDList tail;
    bool putEmpValLast = false;
    for (const DWORD id : ids) {
        if (id == EMPVAL && (flags & VCBtnClass::ORDLIST_TAILEND_EMPVALBTN) != 0)
            putEmpValLast = true;
        else if (item.IsCndCll(id) && (flags & VCBtnClass::ORDLIST_TAILEND_CNDCLLBTN) != 0)
            tail.push_back(id);
        else
            arranged.push_back(id);
    }
    if ((flags & VCBtnClass::ORDLIST_DESCEND) != 0)
        std::reverse(arranged.begin(), arranged.end());
    if (putEmpValLast)
        arranged.push_back(EMPVAL);
    arranged.insert(arranged.end(), tail.begin(), tail.end());
    return arranged;
}

} // namespace

// ---- One item

bool SModelBtn::HasMember(DWORD btnID) const
{
    return std::find(members.begin(), members.end(), btnID) != members.end();
}

IDList SModelItem::ListSelected() const
{
    IDList ids;
    for (const auto& [btnID, btn] : btns) {
        if (btn.sel && btn.effective)
            ids.push_back(btnID);
    }
    return ids;
}

IDList SModelItem::ListDisplayedSelected() const
{
    IDList ids;
    for (const auto& [btnID, btn] : btns) {
        if (btn.sel && btn.visibleInfo == 0)
            ids.push_back(btnID);
    }
    return ids;
}

IDList SModelItem::ListDisplayed() const
{
    IDList ids;
    for (const auto& [btnID, btn] : btns) {
        if (btn.visibleInfo == 0)
            ids.push_back(btnID);
    }
    return ids;
}

IDList SModelItem::ListDisplayedExpanded() const
{
    IDList ids;
    for (const auto& [btnID, btn] : btns) {
        if ((btn.visibleInfo & ~VISINFO_CNDCLLMEMBER) == 0 && !IsCndCll(btnID))
            ids.push_back(btnID);
    }
    return ids;
}

IDList SModelItem::ListAll() const
{
    IDList ids;
    for (const auto& [btnID, btn] : btns)
        ids.push_back(btnID);
    return ids;
}

IDList SModelItem::ListSpecial(bool includeIneffective) const
{
    IDList ids;
    // They come behind all others.
    for (auto entry = btns.lower_bound(SCBUICoreCom::BTN_ID_INC_BEGIN); entry != btns.end(); ++entry) {
        if (entry->second.effective || includeIneffective)
            ids.push_back(entry->first);
    }
    return ids;
}

DWORD SModelItem::CountIneffective() const
{
    return static_cast<DWORD>(ListSpecial(true).size() - ListSpecial(false).size());
}

bool SModelItem::IsCndCll(DWORD btnID) const
{
    const auto found = btns.find(btnID);
    return found != btns.end() && SCBUICoreCom::IsCllBtn(btnID) && found->second.byCondition;
}

bool SModelItem::IsOfDates() const
{
    return type == SCDeclareConstant::DATATYPE_DATE || type == SCDeclareConstant::DATATYPE_TIME;
}

bool SModelItem::SelectBtn(DWORD btnID, bool select)
{
    const auto found = btns.find(btnID);
    if (found == btns.end())
        return false;
    SModelBtn& btn = found->second;
    const bool changes = btn.sel != select;
    btn.sel = select;
    if (!changes || !btn.effective)
        return true;
    if (select) {
        ++selBtnCount;
        selective = true;
    } else if (--selBtnCount == 0) {
        selective = false;
    }
    return true;
}

void SModelItem::DropSelection()
{
    SelectAll(false);
}

// Of a selection that is whole already, or none, no button is touched: an ineffective one keeps its flag
// then.
void SModelItem::SelectAll(bool select)
{
    const DWORD countAfter = select ? static_cast<DWORD>(btns.size()) : 0;
    if (selBtnCount != countAfter) {
        for (auto& [btnID, btn] : btns)
            btn.sel = select;
    }
    selBtnCount = countAfter;
    selective = select;
    newBtnMadeSelState = select;
}

// ---- Building

CModelEnv::CModelEnv(const SModelTable& tableOfTexts, bool hasSums) : table(tableOfTexts), hasSumMngr(hasSums)
{
    for (const SModelFld& fld : table.flds) {
        if (fld.isItem)
            BuildItem(fld);
    }
}

std::string CModelEnv::ReadCell(const SModelFld& fld, DWORD rec)
{
    const std::string& text = fld.texts.at(rec);
    return fld.type == SCDeclareConstant::DATATYPE_DATE ? CutToDate(text, fld.dateTypeInfo) : text;
}

void CModelEnv::BuildItem(const SModelFld& fld)
{
    SModelItem item;
    item.classID = nextSrcClassID++;
    item.fldID = fld.fldID;
    item.type = fld.type;
    item.btns[EMPVAL].alias = table.empValName;
    item.btns[EMPVAL].visibleInfo = VISINFO_NOREC;
    items[item.classID] = item;
    AddRecs(items[item.classID], 0, table.recCount, {});
}

// A source button that begins to have records comes into the orders, by its shown text.
void CModelEnv::EnterBtnWithRecs(SModelItem& item, DWORD btnID)
{
    EnterName(item, btnID);
    if (btnID == EMPVAL)
        return;
    EnterNumber(item, btnID);
    EnterDate(item, btnID);
}

void CModelEnv::EnterNumber(SModelItem& item, DWORD btnID)
{
    if (item.type != SCDeclareConstant::DATATYPE_NUM)
        return;
    const std::string& text = item.btns.at(btnID).GetShownText();
    double number = 0;
    if (NSKZCore::SCNumeric::AtoF(text.c_str(), number))
        Enter(item.numbers, number, entryNumber++, btnID);
    else
        Enter(item.nonNumbers, text, entryNumber++, btnID);
}

// What the shown text reads as; the text itself counts for the order where it reads as nothing.
void CModelEnv::EnterDate(SModelItem& item, DWORD btnID)
{
    if (!item.IsOfDates())
        return;
    const std::string& text = item.btns.at(btnID).GetShownText();
    std::optional<SModelDate> date;
    if (KnowsDataForm(item)) {
        const SModelFld& fld = *FindFld(item.fldID);
        date = item.type == SCDeclareConstant::DATATYPE_DATE ? SModelDate::ReadDate(text, fld.dateTypeInfo)
                                                             : SModelDate::ReadTime(text, fld.timeTypeInfo);
    }
    if (date) {
        item.dates[btnID] = *date;
        Enter(item.dateOrder, *date->GetOrder(table.criteria), 0, btnID);
    } else {
        Enter(item.nonDates, text, entryNumber++, btnID);
    }
}

SModelItem* CModelEnv::FindItem(DWORD classID)
{
    const auto found = items.find(classID);
    return found == items.end() ? nullptr : &found->second;
}

const SModelItem* CModelEnv::FindItem(DWORD classID) const
{
    const auto found = items.find(classID);
    return found == items.end() ? nullptr : &found->second;
}

SModelItem* CModelEnv::FindItemOfMembers(const SModelItem& item, DWORD spBtnID)
{
    const SModelBtn& spBtn = item.btns.at(spBtnID);
    if (spBtn.hasLostRef)
        return nullptr;
    return FindItem(spBtn.refClassID == 0 ? item.classID : spBtn.refClassID);
}

const SModelItem* CModelEnv::FindItemOfMembers(const SModelItem& item, DWORD spBtnID) const
{
    return const_cast<CModelEnv*>(this)->FindItemOfMembers(item, spBtnID);
}

BtnRefSet CModelEnv::FindListing(const SModelItem& item, DWORD btnID) const
{
    BtnRefSet listing;
    for (const auto& [otherClassID, other] : items) {
        for (const DWORD spBtnID : other.ListSpecial(true)) {
            if (FindItemOfMembers(other, spBtnID) == &item && other.btns.at(spBtnID).HasMember(btnID))
                listing.insert({otherClassID, spBtnID});
        }
    }
    return listing;
}

BtnRefSet CModelEnv::GetHolders(const SModelItem& item, DWORD btnID)
{
    const SModelBtn& btn = item.btns.at(btnID);
    BtnRefSet all = btn.outerHolders;
    for (const DWORD holderID : btn.holders)
        all.insert({item.classID, holderID});
    return all;
}

void CModelEnv::ForgetHolder(SModelBtn& btn, const SModelItem& item, const SModelBtnRef& holder)
{
    if (holder.btnClassID == item.classID)
        btn.holders.erase(holder.btnID);
    else
        btn.outerHolders.erase(holder);
}

BtnRefSet CModelEnv::WithHolders(const BtnRefSet& btns) const
{
    BtnRefSet reached = btns;
    std::vector<SModelBtnRef> pending(btns.begin(), btns.end());
    while (!pending.empty()) {
        const SModelBtnRef ref = pending.back();
        pending.pop_back();
        for (const SModelBtnRef& holder : GetHolders(items.at(ref.btnClassID), ref.btnID)) {
            if (reached.insert(holder).second)
                pending.push_back(holder);
        }
    }
    return reached;
}

SModelLevel* CModelEnv::FindLevel(DWORD classID)
{
    for (SModelLevel& level : levels) {
        if (level.classID == classID)
            return &level;
    }
    return nullptr;
}

// ---- Records

RecSet CModelEnv::GetLimitationOrAll() const
{
    if (limitation)
        return *limitation;
    RecSet all;
    for (DWORD rec = 0; rec < table.recCount; ++rec)
        all.insert(rec);
    return all;
}

RecSet CModelEnv::WithinLimitation(const RecSet& recs) const
{
    return limitation ? Intersect(recs, *limitation) : recs;
}

RecSet CModelEnv::WithinLevelBefore(std::size_t position, const RecSet& recs) const
{
    return position > 0 ? Intersect(recs, levels.at(position - 1).recs) : WithinLimitation(recs);
}

RecSet CModelEnv::GetTargetRecList() const
{
    const bool hasLevels =
        mode == CBUIDataMngr::RELATIONMODE_OR || mode == CBUIDataMngr::RELATIONMODE_NARROWING;
    return hasLevels && !levels.empty() ? levels.back().recs : GetLimitationOrAll();
}

RecSet CModelEnv::GetTargetRecListOfBtnClass(DWORD classID) const
{
    if (mode == CBUIDataMngr::RELATIONMODE_OR || mode == CBUIDataMngr::RELATIONMODE_NARROWING) {
        for (std::size_t position = 0; position < levels.size(); ++position) {
            if (levels[position].classID == classID)
                return position == 0 ? GetLimitationOrAll() : levels[position - 1].recs;
        }
    }
    return GetTargetRecList();
}

std::optional<RecSet> CModelEnv::GetRecsOfBtn(const SModelItem& item, DWORD btnID) const
{
    if (SCBUICoreCom::IsSpBtn(btnID) && item.btns.count(btnID) == 0)
        return std::nullopt;
    // Of all that is below, each button once.
    RecSet recs;
    BtnRefSet reached = {{item.classID, btnID}};
    std::vector<SModelBtnRef> pending(reached.begin(), reached.end());
    while (!pending.empty()) {
        const SModelItem& itemOfBtn = items.at(pending.back().btnClassID);
        const auto found = itemOfBtn.btns.find(pending.back().btnID);
        pending.pop_back();
        if (found == itemOfBtn.btns.end() || !found->second.effective)
            continue;
        recs.insert(found->second.recs.begin(), found->second.recs.end());
        const SModelItem* const itemOfMembers = FindItemOfMembers(itemOfBtn, found->first);
        for (const DWORD memberID : found->second.members) {
            const SModelBtnRef member = {itemOfMembers->classID, memberID};
            if (reached.insert(member).second)
                pending.push_back(member);
        }
    }
    return recs;
}

std::optional<RecSet> CModelEnv::GetRecsOfBtns(const SModelItem& item, const IDList& btnIDs) const
{
    RecSet all;
    for (const DWORD btnID : btnIDs) {
        const std::optional<RecSet> recs = GetRecsOfBtn(item, btnID);
        if (!recs)
            return std::nullopt;
        all.insert(recs->begin(), recs->end());
    }
    return all;
}

IDList CModelEnv::GetBtnsOfRecs(const SModelItem& item, const IDList& recs) const
{
    IDList btnIDs;
    for (const DWORD rec : recs) {
        const DWORD btnID = item.btnOfRec.at(rec); // none is told as often as it is met
        if (btnID == 0 || std::find(btnIDs.begin(), btnIDs.end(), btnID) == btnIDs.end())
            btnIDs.push_back(btnID);
    }
    return btnIDs;
}

// ---- Selection

bool CModelEnv::SelectTheBtn(DWORD classID, DWORD btnID, bool select)
{
    return SelectBtns(classID, {btnID}, select, false);
}

bool CModelEnv::SelectBtns(DWORD classID, const IDList& given, bool select, bool includeHidden)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr || !item->effective)
        return false;
    if (given.empty() && mode == CBUIDataMngr::RELATIONMODE_DIFFERENCE)
        return false;
    const IDList btnIDs = WithoutRepetition(given);

    if (FindLevel(classID) != nullptr) {
        while (levels.back().classID != classID) {
            FindItem(levels.back().classID)->DropSelection();
            levels.pop_back();
        }
    }
    const bool oneClassAtATime =
        mode == CBUIDataMngr::RELATIONMODE_OR || mode == CBUIDataMngr::RELATIONMODE_AND;
    if (oneClassAtATime && FindLevel(classID) == nullptr)
        ClearAllBtnSelections(false);
    if (!multiSelection && mode != CBUIDataMngr::RELATIONMODE_DIFFERENCE && select && item->selective) {
        if (FindLevel(classID) != nullptr)
            levels.pop_back();
        item->DropSelection();
    }

    bool related = true;
    if (mode == CBUIDataMngr::RELATIONMODE_DIFFERENCE) {
        if (!PressDifference(*item, btnIDs, select))
            return false;
        related = RelateByDifference(*item);
    } else {
        IDList relating;
        for (const DWORD btnID : btnIDs) {
            if (!item->SelectBtn(btnID, select)) {
                ResetRelationReason();
                ForgetSums();
                return false;
            }
            if (includeHidden || item->btns.at(btnID).visibleInfo == 0)
                relating.push_back(btnID);
        }
        if (item->selBtnCount == 0)
            item->selective = select;
        if (mode == CBUIDataMngr::RELATIONMODE_OR || mode == CBUIDataMngr::RELATIONMODE_NARROWING)
            related = Narrow(*item, relating, select);
        else if (mode == CBUIDataMngr::RELATIONMODE_AND)
            related = RelateByAnd(*item);
    }
    if (!related) {
        ForgetSums();
        return false;
    }
    AdjustSumsToPress(classID);
    return mode == CBUIDataMngr::RELATIONMODE_NONE || ResetMembers();
}

bool CModelEnv::PressDifference(SModelItem& item, const IDList& btnIDs, bool select)
{
    for (const DWORD btnID : btnIDs) {
        if (select && (item.btns.count(btnID) == 0 || !item.btns.at(btnID).effective))
            return false;
    }
    if (SModelItem* const former = FindItem(diffClassID)) {
        former->SelectBtn(diffStandardBtnID, false);
        if (diffTargetBtnID != 0)
            former->SelectBtn(diffTargetBtnID, false);
    }
    ShowAllByRelation(true);
    if (!select) {
        if (item.classID != diffClassID)
            return false;
        for (const DWORD btnID : btnIDs) {
            if (btnID == diffTargetBtnID) {
                diffTargetBtnID = 0;
            } else if (btnID == diffStandardBtnID) {
                diffClassID = diffStandardBtnID = diffTargetBtnID = 0;
                break;
            } else {
                return false;
            }
        }
    } else if (item.classID == diffClassID) {
        diffTargetBtnID = btnIDs.front();
    } else {
        diffClassID = item.classID;
        diffStandardBtnID = btnIDs.front();
        diffTargetBtnID = btnIDs.size() > 1 ? btnIDs[1] : 0;
        AdjustSumsToClearing();
        if (hasSumMngr)
            ResetMembersOfEffective(item);
    }
    if (diffStandardBtnID != 0) {
        item.SelectBtn(diffStandardBtnID, true);
        if (diffTargetBtnID != 0)
            item.SelectBtn(diffTargetBtnID, true);
    }
    return true;
}

bool CModelEnv::SelectBtns(const std::vector<SSelectBtnIDList>& selectInfo, bool includeHidden)
{
    ClearAllBtnSelections(false);
    for (const SSelectBtnIDList& share : selectInfo) {
        if (!SelectBtns(share.btnClassID, share.btnIDList, true, includeHidden)) {
            ClearAllBtnSelections(true);
            return false;
        }
        items.at(share.btnClassID).newBtnMadeSelState = share.newBtnMadeSelState;
    }
    return true;
}

bool CModelEnv::SelectAllBtnsOfBtnClass(DWORD classID, bool select)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr || mode == CBUIDataMngr::RELATIONMODE_DIFFERENCE)
        return false;
    if (!SelectBtns(classID, GetBtnAppOrdList(*item, 0), select, false))
        return false;
    item->SelectAll(select);
    return true;
}

void CModelEnv::ClearAllBtnSelections(bool force)
{
    if (!force && !IsBtnSelectiveState())
        return;
    levels.clear();
    diffClassID = diffStandardBtnID = diffTargetBtnID = 0;
    for (auto& [classID, item] : items)
        item.DropSelection();
    ResetRelationReason();
    AdjustSumsToClearing();
    ResetMembers();
}

bool CModelEnv::SelectTheBtnClass(DWORD classID, bool select)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr)
        return false;
    if (item->selected == select)
        return true;
    item->selected = select;
    if (select)
        selectedClasses.push_back(classID);
    else
        selectedClasses.erase(std::find(selectedClasses.begin(), selectedClasses.end(), classID));
    return true;
}

void CModelEnv::ClearAllBtnClassSelections()
{
    for (auto& [classID, item] : items)
        item.selected = false;
    selectedClasses.clear();
}

std::vector<SSelectBtnIDList> CModelEnv::GetAllBtnSelectionInfo() const
{
    std::vector<SSelectBtnIDList> all;
    if (mode == CBUIDataMngr::RELATIONMODE_NARROWING) {
        for (const SModelLevel& level : levels) {
            const SModelItem& item = items.at(level.classID);
            all.push_back({item.classID, item.ListSelected(), item.newBtnMadeSelState});
        }
    } else if (mode == CBUIDataMngr::RELATIONMODE_DIFFERENCE) {
        if (diffClassID != 0) {
            all.push_back({diffClassID, {diffStandardBtnID}, false});
            if (diffTargetBtnID != 0)
                all.back().btnIDList.push_back(diffTargetBtnID);
        }
    } else {
        for (const auto& [classID, item] : items) {
            if (item.selective)
                all.push_back({classID, item.ListSelected(), item.newBtnMadeSelState});
        }
    }
    return all;
}

bool CModelEnv::GetSelBtnsInfoForDiffCnd(DWORD& classID, DWORD& standardBtnID, DWORD& targetBtnID) const
{
    if (mode != CBUIDataMngr::RELATIONMODE_DIFFERENCE)
        return false;
    classID = diffClassID;
    standardBtnID = diffStandardBtnID;
    targetBtnID = diffTargetBtnID;
    return true;
}

bool CModelEnv::IsBtnSelectiveState() const
{
    return std::any_of(items.begin(), items.end(), [](const auto& entry) { return entry.second.selective; });
}

bool CModelEnv::GetHierDepthOfBtnClass(DWORD classID, unsigned int& depth) const
{
    if (mode != CBUIDataMngr::RELATIONMODE_NARROWING)
        return false;
    for (const SModelLevel& level : levels) {
        if (level.classID == classID) {
            depth = level.depth;
            return true;
        }
    }
    return false;
}

// ---- Modes, limitation and the rest

void CModelEnv::SetRelationMode(ERelationMode newMode)
{
    if (mode == newMode)
        return;
    mode = newMode;
    ForgetSums();
    ClearAllBtnSelections(false);
}

void CModelEnv::SetLimitedRecList(const IDList& recs)
{
    if (recs.empty()) {
        ClearLimitedRecList();
        return;
    }
    limitation.emplace();
    for (const DWORD rec : recs) {
        if (rec < table.recCount)
            limitation->insert(rec);
    }
    ChangeLimitation();
}

void CModelEnv::ClearLimitedRecList()
{
    limitation.reset();
    ChangeLimitation();
}

void CModelEnv::ChangeLimitation()
{
    ResetLimitationReason();
    AdjustLiveMemberReasonOfAll();
    ForgetSums();
    ClearAllBtnSelections(true);
}

void CModelEnv::SetNumCnd()
{
    hasNumCnd = true;
    ForgetSums();
}

void CModelEnv::ClearNumCnd()
{
    if (hasNumCnd)
        ForgetSums();
    hasNumCnd = false;
}

bool CModelEnv::SetAliasOfBtn(DWORD classID, DWORD btnID, const char* alias)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr || item->btns.count(btnID) == 0)
        return false;
    SModelBtn& btn = item->btns.at(btnID);
    RemoveName(*item, btnID);
    if (alias != nullptr && btn.name && *btn.name == alias)
        btn.alias.reset();
    else
        btn.alias = alias == nullptr ? "" : alias;
    EnterName(*item, btnID);
    return true;
}

void CModelEnv::EnterName(SModelItem& item, DWORD btnID)
{
    Enter(item.names, item.btns.at(btnID).GetShownText(), entryNumber++, btnID);
}

void CModelEnv::RemoveName(SModelItem& item, DWORD btnID)
{
    std::erase_if(item.names, [&](const auto& entry) {
        return std::get<2>(entry) == btnID && std::get<0>(entry) == item.btns.at(btnID).GetShownText();
    });
}

bool CModelEnv::SetNewBtnMadeSelStateOfBtnClass(DWORD classID, bool state)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr)
        return false;
    item->newBtnMadeSelState = state;
    return true;
}

// Fixed virtual items go, and with them what refers to nothing but them. The virtual inc buttons of the
// common ones stay and keep their members, those that go with the rest too.
void CModelEnv::ClearOfFixedSpec()
{
    std::erase_if(items,
                  [](const auto& entry) { return entry.second.isVirtual && !entry.second.IsCommon(); });
    nextFixedClassID = SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
    freeFixedClassIDs.clear();
    for (auto& [classID, item] : items) {
        for (const DWORD spBtnID : item.ListSpecial(true)) {
            if (SCBUICoreCom::IsVirIncBtn(spBtnID))
                continue;
            RemoveName(item, spBtnID);
            item.btns.erase(spBtnID);
        }
        item.groups.clear();
        std::erase_if(item.switchedOff,
                      [&](const SModelBtnRef& ref) { return items.count(ref.btnClassID) == 0; });
        std::erase_if(item.dateOrder,
                      [](const auto& entry) { return SCBUICoreCom::IsSpBtn(std::get<2>(entry)); });
        item.DropSelection();
        item.selected = false;
        item.displaysEmpVal = true;
        for (auto& [btnID, btn] : item.btns) {
            btn.sel = false;
            btn.visibleInfo &= ~(VISINFO_MASK_FIXEDSPEC | VISINFO_EMPVALNODISP);
            btn.holders.clear();
            std::erase_if(btn.outerHolders, [&](const SModelBtnRef& holder) {
                return items.count(holder.btnClassID) == 0 || !items.at(holder.btnClassID).IsCommon();
            });
        }
    }
    selectedClasses.clear();
    hasNumCnd = false;
    levels.clear();
    diffClassID = diffStandardBtnID = diffTargetBtnID = 0;
    ClearLimitedRecList();
    ForgetSums();
    history.clear();
}

// ---- Relation

bool CModelEnv::Narrow(SModelItem& item, const IDList& btnIDs, bool select)
{
    SModelLevel* const level = FindLevel(item.classID);
    if (select) {
        const std::optional<RecSet> recs = GetRecsOfBtns(item, btnIDs);
        if (!recs)
            return false;
        const std::size_t position = level != nullptr ? level->depth : levels.size();
        const RecSet added = WithinLevelBefore(position, *recs);
        if (level != nullptr)
            level->recs.insert(added.begin(), added.end());
        else
            levels.push_back({static_cast<DWORD>(levels.size()), item.classID, added});
    } else {
        if (level == nullptr)
            return true;
        if (item.selective)
            level->recs = WithinLevelBefore(level->depth, *GetRecsOfBtns(item, item.ListDisplayedSelected()));
        else
            std::erase_if(levels, [&](const SModelLevel& other) { return other.classID == item.classID; });
    }
    ResetRelationReason();
    return true;
}

bool CModelEnv::RelateByAnd(SModelItem& item)
{
    if (!item.selective) {
        levels.clear();
        ShowAllByRelation(true);
        return true;
    }
    ShowAllByRelation(false);
    std::vector<RecSet> recsOfSelected;
    for (const DWORD selectedID : item.ListSelected())
        recsOfSelected.push_back(WithinLimitation(*GetRecsOfBtn(item, selectedID)));
    BtnRefSet related;
    for (const auto& [otherID, other] : items) {
        for (const auto& [btnID, btn] : other.btns) {
            bool sharesWithAll = !recsOfSelected.empty();
            for (const RecSet& recs : recsOfSelected) {
                if (!other.effective || Intersect(btn.recs, recs).empty())
                    sharesWithAll = false;
            }
            if (sharesWithAll)
                related.insert({otherID, btnID});
        }
    }
    ShowByRelation(related);
    if (FindLevel(item.classID) == nullptr)
        levels.push_back({static_cast<DWORD>(levels.size()), item.classID, {}});
    return true;
}

bool CModelEnv::RelateByDifference(SModelItem& item)
{
    if (diffStandardBtnID == 0) {
        diffClassID = diffStandardBtnID = diffTargetBtnID = 0;
        ShowAllByRelation(true);
        return true;
    }
    const std::optional<RecSet> standard = GetRecsOfBtn(item, diffStandardBtnID);
    std::optional<RecSet> target = RecSet{};
    if (diffTargetBtnID != 0)
        target = GetRecsOfBtn(item, diffTargetBtnID);
    if (!standard || !target)
        return false;
    const RecSet standardRecs = WithinLimitation(*standard);
    const RecSet targetRecs = WithinLimitation(*target);
    ShowAllByRelation(false);
    BtnRefSet relating;
    for (const auto& [otherID, other] : items) {
        for (const auto& [btnID, btn] : other.btns) {
            if (other.effective && !Intersect(btn.recs, standardRecs).empty() &&
                Intersect(btn.recs, targetRecs).empty())
                relating.insert({otherID, btnID});
        }
    }
    ShowByRelation(relating);
    return true;
}

void CModelEnv::ShowAllByRelation(bool show)
{
    for (auto& [classID, item] : items) {
        if (item.selective)
            continue;
        for (auto& [btnID, btn] : item.btns) {
            if (show)
                btn.visibleInfo &= ~VISINFO_RELATION;
            else
                btn.visibleInfo |= VISINFO_RELATION;
        }
    }
}

void CModelEnv::ShowByRelation(const BtnRefSet& btns)
{
    for (const SModelBtnRef& ref : WithHolders(btns)) {
        if (!items.at(ref.btnClassID).selective)
            GetBtn(ref).visibleInfo &= ~VISINFO_RELATION;
    }
}

void CModelEnv::ResetRelationReason()
{
    ShowAllByRelation(levels.empty());
    if (levels.empty())
        return;
    BtnRefSet related;
    for (const auto& [classID, item] : items) {
        if (item.isVirtual || !item.effective)
            continue;
        for (const DWORD rec : levels.back().recs)
            related.insert({classID, item.btnOfRec.at(rec)});
    }
    ShowByRelation(related);
}

void CModelEnv::ResetLimitationReason()
{
    BtnRefSet reached;
    for (auto& [classID, item] : items) {
        for (auto& [btnID, btn] : item.btns) {
            if (limitation)
                btn.visibleInfo |= VISINFO_LIMITEDREC;
            if (!limitation || (item.effective && !Intersect(btn.recs, *limitation).empty()))
                reached.insert({classID, btnID});
        }
    }
    for (const SModelBtnRef& ref : WithHolders(reached))
        GetBtn(ref).visibleInfo &= ~VISINFO_LIMITEDREC;
}

// ---- Orders

IDList CModelEnv::GetBtnAppOrdList(const SModelItem& item, unsigned int flags) const
{
    // Those of users, then those of the system, each the oldest first.
    IDList ids = item.ListSpecial(false);
    std::stable_sort(ids.begin(), ids.end(), [&](DWORD left, DWORD right) {
        return std::pair(item.IsManagedBySystem(left), item.btns.at(left).createTime) <
               std::pair(item.IsManagedBySystem(right), item.btns.at(right).createTime);
    });
    ids.insert(ids.end(), item.appearance.begin(), item.appearance.end());
    std::erase_if(ids, [&](DWORD btnID) { return !IsListed(item.btns.at(btnID).visibleInfo, flags); });
    return Arrange(item, ids, flags);
}

IDList CModelEnv::GetBtnNameOrdList(const SModelItem& item, unsigned int flags) const
{
    if (item.type == SCDeclareConstant::DATATYPE_NUM)
        return ListByNumber(item, flags);
    if (item.IsOfDates())
        return ListByDate(item, flags);
    IDList ids;
    for (const auto& [text, number, btnID] : item.names) {
        if (IsListed(item.btns.at(btnID).visibleInfo, flags))
            ids.push_back(btnID);
    }
    return Arrange(item, ids, flags);
}

namespace {

bool IsEmpValListed(const SModelItem& item, unsigned int flags)
{
    const unsigned int visibleInfo = item.btns.at(EMPVAL).visibleInfo;
    return (visibleInfo & VISINFO_NOREC) == 0 && IsListed(visibleInfo, flags);
}

// Special buttons by text, each where it belongs.
void AddSpecialByText(const SModelItem& item, unsigned int flags, IDList spBtnIDs, IDList& ids, IDList& tail)
{
    std::stable_sort(spBtnIDs.begin(), spBtnIDs.end(), [&](DWORD left, DWORD right) {
        return item.btns.at(left).GetShownText() < item.btns.at(right).GetShownText();
    });
    for (const DWORD spBtnID : spBtnIDs) {
        if (!IsListed(item.btns.at(spBtnID).visibleInfo, flags))
            continue;
        if ((flags & VCBtnClass::ORDLIST_TAILEND_CNDCLLBTN) != 0 && item.IsCndCll(spBtnID))
            tail.push_back(spBtnID);
        else
            ids.push_back(spBtnID);
    }
}

template <class TKey>
void AddListed(const SModelItem& item, unsigned int flags, const ModelOrder<TKey>& order, IDList& ids)
{
    for (const auto& [key, number, btnID] : order) {
        if (IsListed(item.btns.at(btnID).visibleInfo, flags))
            ids.push_back(btnID);
    }
}

} // namespace

// Special buttons by text, numbers, the empty value, then the texts that are no numbers, which keep their
// direction and place.
IDList CModelEnv::ListByNumber(const SModelItem& item, unsigned int flags) const
{
    const bool empValLast = (flags & VCBtnClass::ORDLIST_TAILEND_EMPVALBTN) != 0;
    const bool hasEmpVal = IsEmpValListed(item, flags);
    IDList ids;
    IDList tail;
    AddSpecialByText(item, flags, item.ListSpecial(false), ids, tail);
    AddListed(item, flags, item.numbers, ids);
    if (hasEmpVal && !empValLast)
        ids.push_back(EMPVAL);
    if ((flags & VCBtnClass::ORDLIST_DESCEND) != 0)
        std::reverse(ids.begin(), ids.end());
    AddListed(item, flags, item.nonNumbers, ids);
    if (hasEmpVal && empValLast)
        ids.push_back(EMPVAL);
    ids.insert(ids.end(), tail.begin(), tail.end());
    return ids;
}

// Special buttons of users that have a member by text, dates, the empty value, then the texts that are no
// dates; the other direction is that of all of them.
IDList CModelEnv::ListByDate(const SModelItem& item, unsigned int flags) const
{
    const bool empValLast = (flags & VCBtnClass::ORDLIST_TAILEND_EMPVALBTN) != 0;
    const bool hasEmpVal = IsEmpValListed(item, flags);
    IDList spBtnIDs = item.ListSpecial(false);
    std::erase_if(spBtnIDs, [&](DWORD spBtnID) {
        return item.IsManagedBySystem(spBtnID) || item.btns.at(spBtnID).members.empty();
    });
    IDList ids;
    IDList tail;
    AddSpecialByText(item, flags, spBtnIDs, ids, tail);
    AddListed(item, flags, item.dateOrder, ids);
    if (hasEmpVal && !empValLast)
        ids.push_back(EMPVAL);
    AddListed(item, flags, item.nonDates, ids);
    if ((flags & VCBtnClass::ORDLIST_DESCEND) != 0)
        std::reverse(ids.begin(), ids.end());
    if (hasEmpVal && empValLast)
        ids.push_back(EMPVAL);
    ids.insert(ids.end(), tail.begin(), tail.end());
    return ids;
}

IDList CModelEnv::GetBtnUnknownOrdList(const SModelItem& item, unsigned int flags, const IDList& order) const
{
    IDList ids;
    for (const DWORD btnID : order) {
        const auto found = item.btns.find(btnID);
        if ((flags & VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS) != 0 ||
            (found != item.btns.end() && IsListed(found->second.visibleInfo, flags)))
            ids.push_back(btnID);
    }
    return Arrange(item, ids, flags);
}

// ---- Sums

void CModelEnv::ForgetSumsOf(DWORD classID)
{
    knownSums[classID] = {};
    if (heldClassID == classID)
        heldClassID = 0;
}

void CModelEnv::ForgetSums()
{
    knownSums.clear();
    heldClassID = 0;
}

void CModelEnv::ForgetTotals()
{
    for (auto& [classID, sums] : knownSums) {
        sums.totals.clear();
        sums.absoluteTotals.clear();
    }
}

void CModelEnv::AdjustSumsToPress(DWORD pressedClassID)
{
    for (const auto& [classID, item] : items) {
        if (classID == pressedClassID)
            continue;
        switch (mode) {
        case CBUIDataMngr::RELATIONMODE_NONE:
            break;
        case CBUIDataMngr::RELATIONMODE_OR:
        case CBUIDataMngr::RELATIONMODE_NARROWING:
            if (!item.selective)
                ForgetSumsOf(classID);
            break;
        case CBUIDataMngr::RELATIONMODE_AND:
        case CBUIDataMngr::RELATIONMODE_DIFFERENCE:
            knownSums[classID].totals.clear();
            knownSums[classID].absoluteTotals.clear();
            break;
        }
    }
}

void CModelEnv::AdjustSumsToClearing()
{
    if (mode == CBUIDataMngr::RELATIONMODE_OR || mode == CBUIDataMngr::RELATIONMODE_NARROWING)
        ForgetSums();
    else if (mode != CBUIDataMngr::RELATIONMODE_NONE)
        ForgetTotals();
}

bool CModelEnv::HoldTarget(DWORD classID)
{
    if (classID == 0)
        return false;
    if (heldClassID != classID) {
        heldTarget = GetTargetRecListOfBtnClass(classID);
        heldClassID = classID;
    }
    return true;
}

std::optional<RecSet> CModelEnv::CollectRecs(DWORD classID, DWORD btnID)
{
    if (!hasSumMngr || !HoldTarget(classID))
        return std::nullopt;
    const SModelItem* const item = FindItem(classID);
    if (item == nullptr)
        return std::nullopt;
    const std::optional<RecSet> recs = GetRecsOfBtn(*item, btnID);
    if (!recs)
        return std::nullopt;
    return Intersect(*recs, heldTarget);
}

const SModelFld* CModelEnv::FindFld(DWORD fldID) const
{
    const auto found = std::find_if(table.flds.begin(), table.flds.end(),
                                    [fldID](const SModelFld& fld) { return fld.fldID == fldID; });
    return found == table.flds.end() ? nullptr : &*found;
}

const SModelFld* CModelEnv::FindNumFld(DWORD numID) const
{
    for (const SModelFld& fld : table.flds) {
        if (fld.fldID == numID && fld.type == SCDeclareConstant::DATATYPE_NUM)
            return &fld;
    }
    return nullptr;
}

double CModelEnv::AddUp(DWORD numID, const RecSet& recs) const
{
    const SModelFld* const fld = FindNumFld(numID);
    if (fld == nullptr)
        return std::numeric_limits<double>::quiet_NaN();
    double sum = 0;
    for (const DWORD rec : recs) {
        double number = 0;
        if (NSKZCore::SCNumeric::AtoF(fld->texts.at(rec).c_str(), number))
            sum += number;
    }
    return sum;
}

DWORD CModelEnv::CountNumbers(DWORD numID, const RecSet& recs) const
{
    const SModelFld* const fld = FindNumFld(numID);
    DWORD count = 0;
    for (const DWORD rec : recs) {
        double number = 0;
        if (fld != nullptr && NSKZCore::SCNumeric::AtoF(fld->texts.at(rec).c_str(), number))
            ++count;
    }
    return count;
}

bool CModelEnv::GetSumValue(DWORD classID, DWORD btnID, DWORD numID, double& value)
{
    const SKnownSum known = knownSums[classID].ofBtn[{btnID, numID}];
    if (known.sum) {
        value = *known.sum;
        return true;
    }
    const std::optional<RecSet> recs = CollectRecs(classID, btnID);
    if (!recs)
        return false;
    value = AddUp(numID, *recs);
    knownSums[classID].ofBtn[{btnID, numID}].sum = value;
    return true;
}

bool CModelEnv::GetCountValue(DWORD classID, DWORD btnID, DWORD numID, DWORD& count)
{
    const SKnownSum known = knownSums[classID].ofBtn[{btnID, numID}];
    if (known.count) {
        count = *known.count;
        return true;
    }
    const std::optional<RecSet> recs = CollectRecs(classID, btnID);
    if (!recs)
        return false;
    count = CountNumbers(numID, *recs);
    knownSums[classID].ofBtn[{btnID, numID}].count = count;
    return true;
}

bool CModelEnv::GetAverageValue(DWORD classID, DWORD btnID, DWORD numID, double& value)
{
    SKnownSum known = knownSums[classID].ofBtn[{btnID, numID}];
    if (!known.sum || !known.count) {
        const std::optional<RecSet> recs = CollectRecs(classID, btnID);
        if (!recs)
            return false;
        known.sum = AddUp(numID, *recs);
        known.count = CountNumbers(numID, *recs);
        knownSums[classID].ofBtn[{btnID, numID}] = known;
    }
    value = *known.count == 0 && *known.sum == 0 ? std::numeric_limits<double>::quiet_NaN()
                                                 : *known.sum / static_cast<double>(*known.count);
    return true;
}

bool CModelEnv::GetEachValue(DWORD classID, DWORD btnID, DWORD numID, std::vector<double>& values)
{
    values.clear();
    const std::optional<RecSet> recs = CollectRecs(classID, btnID);
    if (!recs)
        return false;
    const SModelFld* const fld = FindNumFld(numID);
    for (const DWORD rec : *recs) {
        double number = 0;
        if (fld == nullptr || !NSKZCore::SCNumeric::AtoF(fld->texts.at(rec).c_str(), number))
            number = std::numeric_limits<double>::quiet_NaN();
        values.push_back(number);
    }
    return true;
}

bool CModelEnv::CalculateTotals(DWORD classID, DWORD numID)
{
    if (!hasSumMngr || !HoldTarget(classID))
        return false;
    const SModelItem* const item = FindItem(classID);
    if (item == nullptr)
        return false;
    double total = 0;
    double absoluteTotal = 0;
    double sum = 0; // of a button whose sum is not to be had: that of the one before
    for (const DWORD btnID : item->ListDisplayed()) {
        GetSumValue(classID, btnID, numID, sum);
        if (!std::isnan(sum)) {
            total += sum;
            absoluteTotal += std::fabs(sum);
        }
    }
    knownSums[classID].totals[numID] = total;
    knownSums[classID].absoluteTotals[numID] = absoluteTotal;
    return true;
}

bool CModelEnv::GetTotalValue(DWORD classID, DWORD numID, double& value)
{
    if (knownSums[classID].totals.count(numID) == 0 && !CalculateTotals(classID, numID))
        return false;
    value = knownSums[classID].totals.at(numID);
    return true;
}

bool CModelEnv::GetTotalAbsoluteValue(DWORD classID, DWORD numID, double& value)
{
    if (knownSums[classID].absoluteTotals.count(numID) == 0 && !CalculateTotals(classID, numID))
        return false;
    value = knownSums[classID].absoluteTotals.at(numID);
    return true;
}

bool CModelEnv::ExistNumDataItem(DWORD numID) const
{
    return hasSumMngr && FindNumFld(numID) != nullptr;
}

} // namespace NSKZ::Test
