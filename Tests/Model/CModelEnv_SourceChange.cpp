#include "CModelEnv.h"

#include "VCBtn.h"

#include <algorithm>

// Following changes of the table, and taking them back.

namespace NSKZ::Test {

using NSKZCore::CBUIDataMngr;
using NSKZCore::SCBUICoreCom;
using NSKZCore::SCDataMngrCoreDef;
using NSKZCore::SSelectBtnIDList;
using NSKZCore::VISINFO_NOREC;

namespace {

constexpr DWORD EMPVAL = SCBUICoreCom::BTN_ID_EMPVAL;

RecSet RaiseFrom(const RecSet& recs, DWORD startRec, DWORD count)
{
    RecSet raised;
    for (const DWORD rec : recs)
        raised.insert(rec < startRec ? rec : rec + count);
    return raised;
}

RecSet CutOut(const RecSet& recs, DWORD startRec, DWORD count)
{
    RecSet left;
    for (const DWORD rec : recs) {
        if (rec < startRec)
            left.insert(rec);
        else if (rec >= startRec + count)
            left.insert(rec - count);
    }
    return left;
}

IDList ListAppearance(const IDList& btnOfRec)
{
    IDList appearance;
    for (const DWORD btnID : btnOfRec) {
        if (btnID != 0 && std::find(appearance.begin(), appearance.end(), btnID) == appearance.end())
            appearance.push_back(btnID);
    }
    return appearance;
}

template <class TKey>
void Leave(ModelOrder<TKey>& order, DWORD btnID)
{
    std::erase_if(order, [btnID](const auto& entry) { return std::get<2>(entry) == btnID; });
}

} // namespace

bool CModelEnv::KnowsDataForm(const SModelItem& item) const
{
    const SModelFld* const fld = FindFld(item.fldID);
    return fld != nullptr && fld->type == item.type;
}

DWORD CModelEnv::FindClassOfFld(DWORD fldID) const
{
    for (const auto& [classID, item] : items) {
        if (!item.isVirtual && !item.isOut && item.fldID == fldID)
            return classID;
    }
    return 0;
}

// The number of records is that of the items until they have followed.
void CModelEnv::TakeTable(const SModelTable& changed)
{
    const DWORD recCount = table.recCount;
    table = changed;
    table.recCount = recCount;
}

void CModelEnv::CloseFollowing(bool forgetsSums, bool clears)
{
    if (forgetsSums)
        ForgetSums();
    if (limitation) {
        ResetLimitationReason();
        AdjustLiveMemberReasonOfAll();
    }
    ClearAllBtnSelections(clears);
}

// Those above source buttons that came or went.
void CModelEnv::AdjustAbove(const SModelItem& item, const std::set<DWORD>& btnIDs)
{
    BtnRefSet above;
    for (const DWORD btnID : btnIDs) {
        for (const SModelBtnRef& ref : GetHolders(item, btnID)) {
            if (GetBtn(ref).effective)
                above.insert(ref);
        }
    }
    AdjustLiveMemberReason(above);
}

// An entry with the selection of this moment.
CModelEnv::SUndo& CModelEnv::AddToHistory(unsigned int type)
{
    SUndo& entry = history.emplace_back();
    entry.type = type;
    entry.selection = GetAllBtnSelectionInfo();
    return entry;
}

// ---- Records

void CModelEnv::AddRecs(SModelItem& item, DWORD startRec, DWORD count, SMoment moment)
{
    const SModelFld& fld = *FindFld(item.fldID);
    std::set<DWORD> met;
    std::set<DWORD> isNew;
    for (DWORD rec = startRec; rec < startRec + count; ++rec) {
        const std::string text = ReadCell(fld, rec);
        DWORD btnID = text.empty() ? EMPVAL : 0;
        DWORD lastID = EMPVAL;
        for (const auto& [otherID, btn] : item.btns) {
            if (!SCBUICoreCom::IsNormalBtn(otherID))
                continue;
            lastID = otherID;
            if (*btn.name == text)
                btnID = otherID;
        }
        if (btnID == 0) {
            btnID = lastID + 1;
            item.btns[btnID].name = text;
            EnterBtnWithRecs(item, btnID);
            isNew.insert(btnID);
        }
        met.insert(btnID);
        item.btns.at(btnID).recs.insert(rec);
        item.btnOfRec.insert(item.btnOfRec.begin() + static_cast<std::ptrdiff_t>(rec), btnID);
    }
    item.appearance = ListAppearance(item.btnOfRec);
    std::set<DWORD> cameBack;
    for (const DWORD btnID : met) {
        SModelBtn& btn = item.btns.at(btnID);
        if ((btn.visibleInfo & VISINFO_NOREC) == 0 || isNew.count(btnID) != 0)
            continue;
        EnterBtnWithRecs(item, btnID);
        btn.visibleInfo &= ~VISINFO_NOREC;
        cameBack.insert(btnID);
    }
    if (item.IsOfDates())
        RebuildGroups(item, moment);
    AdjustAbove(item, cameBack);
}

void CModelEnv::LoseBtnsWithoutRecs(SModelItem& item, SMoment moment)
{
    std::set<DWORD> lost;
    for (auto& [btnID, btn] : item.btns) {
        if (SCBUICoreCom::IsSpBtn(btnID) || !btn.recs.empty())
            continue;
        btn.visibleInfo |= VISINFO_NOREC;
        RemoveName(item, btnID);
        Leave(item.numbers, btnID);
        Leave(item.nonNumbers, btnID);
        Leave(item.dateOrder, btnID);
        Leave(item.nonDates, btnID);
        item.dates.erase(btnID);
        lost.insert(btnID);
    }
    item.appearance = ListAppearance(item.btnOfRec);
    if (item.IsOfDates())
        RebuildGroups(item, moment);
    AdjustAbove(item, lost);
}

void CModelEnv::FollowInsertion(DWORD startRec, DWORD count, SMoment moment)
{
    if (count == 0)
        return;
    for (auto& [classID, item] : items) {
        for (auto& [btnID, btn] : item.btns)
            btn.recs = RaiseFrom(btn.recs, startRec, count);
        if (item.isVirtual)
            continue;
        if (!item.isOut && FindFld(item.fldID) != nullptr) {
            AddRecs(item, startRec, count, moment);
            continue;
        }
        item.btnOfRec.insert(item.btnOfRec.begin() + static_cast<std::ptrdiff_t>(startRec), count, 0);
        item.appearance = ListAppearance(item.btnOfRec);
    }
    table.recCount += count;
    if (limitation)
        limitation = RaiseFrom(*limitation, startRec, count);
}

void CModelEnv::FollowDeletion(DWORD startRec, DWORD count, SMoment moment)
{
    if (count == 0)
        return;
    for (auto& [classID, item] : items) {
        for (auto& [btnID, btn] : item.btns)
            btn.recs = CutOut(btn.recs, startRec, count);
        if (item.isVirtual)
            continue;
        const auto first = item.btnOfRec.begin() + static_cast<std::ptrdiff_t>(startRec);
        item.btnOfRec.erase(first, first + static_cast<std::ptrdiff_t>(count));
    }
    table.recCount -= count;
    if (limitation)
        limitation = CutOut(*limitation, startRec, count);
    for (auto& [classID, item] : items) {
        if (!item.isVirtual)
            LoseBtnsWithoutRecs(item, moment);
    }
}

void CModelEnv::InsertRec(DWORD startRec, DWORD count, const SModelTable& changed, SMoment moment)
{
    const DWORD position = std::min(startRec, table.recCount);
    SUndo& entry = AddToHistory(1);
    entry.startRec = position;
    entry.count = count;
    TakeTable(changed);
    FollowInsertion(position, count, moment);
    CloseFollowing(true, true);
}

void CModelEnv::DeleteRec(DWORD startRec, DWORD count, const SModelTable& changed, SMoment moment)
{
    const DWORD taken = startRec >= table.recCount ? 0 : std::min(count, table.recCount - startRec);
    SUndo& entry = AddToHistory(2);
    entry.startRec = startRec;
    entry.count = count;
    entry.taken = taken;
    TakeTable(changed);
    FollowDeletion(startRec, taken, moment);
    CloseFollowing(true, true);
}

void CModelEnv::ChangeFldData(const SModelTable& changed, SMoment moment)
{
    const std::optional<RecSet> kept = limitation;
    DeleteRec(0, table.recCount, changed, moment);
    history.back().isOfDataChange = true;
    InsertRec(0, changed.recCount, changed, moment);
    history.back().isOfDataChange = true;
    if (kept && !kept->empty())
        SetLimitedRecList(IDList(kept->begin(), kept->end()));
}

// ---- Fields

bool CModelEnv::InsertFld(const IDList& fldIDs, const SModelTable& changed, SMoment moment)
{
    if (fldIDs.size() > changed.flds.size())
        return false;
    AddToHistory(3).fldIDs = fldIDs;
    TakeTable(changed);
    const bool wasSelected = HasSelection();
    if (table.recCount == 0)
        FollowInsertion(0, changed.recCount, moment);
    for (const DWORD fldID : fldIDs) {
        const SModelFld* const fld = FindFld(fldID);
        if (fld != nullptr && fld->isItem)
            BuildItem(*fld);
    }
    CloseFollowing(false, wasSelected);
    return true;
}

void CModelEnv::TakeItemOut(DWORD classID)
{
    SModelItem& item = items.at(classID);
    SetEffectiveOfItem(item, false);
    item.isOut = true;
}

void CModelEnv::DeleteFld(const IDList& fldIDs, const SModelTable& changed)
{
    AddToHistory(4).fldIDs = fldIDs;
    TakeTable(changed);
    const bool wasSelected = HasSelection();
    for (const DWORD fldID : fldIDs) {
        const DWORD classID = FindClassOfFld(fldID);
        if (classID != 0)
            TakeItemOut(classID);
        history.back().classIDs.push_back(classID);
    }
    CloseFollowing(true, wasSelected);
}

bool CModelEnv::ChangeFldDataSpec(const IDList& fldIDs, const SModelTable& changed, SMoment moment)
{
    AddToHistory(5).fldIDs = fldIDs;
    TakeTable(changed);
    const bool wasSelected = HasSelection();
    if (table.recCount == 0)
        FollowInsertion(0, changed.recCount, moment);
    for (const DWORD fldID : fldIDs) {
        const SModelFld* const fld = FindFld(fldID);
        if (fld == nullptr) {
            const bool hasChanged = !history.back().classIDs.empty();
            history.pop_back();
            if (hasChanged)
                CloseFollowing(true, wasSelected);
            return false;
        }
        const DWORD classID = FindClassOfFld(fldID);
        history.back().classIDs.push_back(classID);
        if (classID != 0 && fld->isItem && items.at(classID).type == fld->type)
            continue;
        if (classID != 0)
            TakeItemOut(classID);
        if (fld->isItem)
            BuildItem(*fld);
    }
    CloseFollowing(true, wasSelected);
    return true;
}

void CModelEnv::FollowSummary(const SCDataMngrCoreDef::SBtnRenewalInfo& info, const SModelTable& changed,
                              SMoment moment)
{
    if (info.newRecCount > info.oldRecCount)
        InsertRec(0, info.newRecCount - info.oldRecCount, changed, moment);
    if (info.newRecCount < info.oldRecCount)
        DeleteRec(0, info.oldRecCount - info.newRecCount, changed, moment);
    if (!info.deletedFldIDs.empty())
        DeleteFld(info.deletedFldIDs, changed);
    if (!info.dataChangedFldIDs.empty())
        ChangeFldData(changed, moment);
    if (!info.specChangedFldIDs.empty())
        ChangeFldDataSpec(info.specChangedFldIDs, changed, moment);
    if (!info.insertedFldIDs.empty())
        InsertFld(info.insertedFldIDs, changed, moment);
}

// ---- Taking back

DWORD CModelEnv::GetRecCountBehindUndo() const
{
    const SUndo& undone = history.back();
    if (undone.type == 1)
        return table.recCount - std::min(undone.count, table.recCount - undone.startRec);
    return undone.type == 2 ? table.recCount + undone.taken : table.recCount;
}

void CModelEnv::PutItemBack(DWORD fldID, DWORD classID, SMoment moment)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr)
        return;
    item->isOut = false;
    item->fldID = fldID;
    if (std::find(item->btnOfRec.begin(), item->btnOfRec.end(), 0) != item->btnOfRec.end()) {
        for (auto& [btnID, btn] : item->btns)
            btn.recs.clear();
        item->btnOfRec.clear();
        LoseBtnsWithoutRecs(*item, moment);
        AddRecs(*item, 0, table.recCount, moment);
    }
    if (item->IsOfDates())
        RebuildGroups(*item, moment);
    SetEffectiveOfItem(*item, true);
}

void CModelEnv::DestroySrcItem(DWORD classID)
{
    SModelItem& item = items.at(classID);
    const bool isInSelection = item.selective || diffClassID == classID || FindLevel(classID) != nullptr;
    if (isInSelection)
        ClearAllBtnSelections(true);
    SetEffectiveOfItem(item, false);
    for (auto& [otherID, other] : items) {
        for (const DWORD spBtnID : other.ListSpecial(true)) {
            const SModelBtn& spBtn = other.btns.at(spBtnID);
            if (spBtn.refClassID == classID && !spBtn.hasLostRef)
                LoseRef(other, spBtnID);
        }
    }
    items.erase(classID);
    std::erase(selectedClasses, classID);
    ForgetSums();
}

bool CModelEnv::UndoOpeOfTheSrcData(const SModelTable& putBack, SMoment moment)
{
    if (history.empty())
        return false;
    const SUndo undone = history.back();
    const std::optional<RecSet> limited = limitation;
    TakeTable(putBack);
    switch (undone.type) {
    case 1:
        DeleteRec(undone.startRec, undone.count, putBack, moment);
        history.pop_back();
        break;
    case 2:
        InsertRec(undone.startRec, undone.taken, putBack, moment);
        history.pop_back();
        break;
    case 3:
        DeleteFld(undone.fldIDs, putBack);
        history.pop_back();
        break;
    case 4:
    case 5:
        for (std::size_t i = 0; i < undone.classIDs.size(); ++i) {
            const DWORD present = FindClassOfFld(undone.fldIDs[i]);
            if (undone.type == 5 && present == undone.classIDs[i])
                continue;
            if (undone.type == 5 && present != 0)
                DestroySrcItem(present);
            if (undone.classIDs[i] != 0)
                PutItemBack(undone.fldIDs[i], undone.classIDs[i], moment);
        }
        CloseFollowing(true, HasSelection());
        break;
    default: // forms and criteria: groups stay as they are
        break;
    }
    history.pop_back();
    if (undone.isOfDataChange && undone.type == 1 && !history.empty() && history.back().isOfDataChange) {
        history.back().hasLimitation = limited.has_value();
        history.back().limitation = limited.value_or(RecSet{});
    } else if (undone.isOfDataChange && undone.hasLimitation && !undone.limitation.empty()) {
        SetLimitedRecList(IDList(undone.limitation.begin(), undone.limitation.end()));
    }
    ForgetSums();
    return SelectBtns(undone.selection, false);
}

void CModelEnv::ClearUndoOfTheSrcData()
{
    for (; !history.empty(); history.pop_back()) {
        if (history.back().type != 4 && history.back().type != 5)
            continue;
        for (const DWORD classID : history.back().classIDs) {
            const SModelItem* const item = FindItem(classID);
            if (item != nullptr && !item->effective)
                DestroySrcItem(classID);
        }
    }
}

} // namespace NSKZ::Test
