// Following the source data: records and fields that come, go and change.

#include "CBUIDataMngr.h"

#include "CDateBtnClass.h"
#include "CFormattedMsg.h"
#include "CProgressStatus.h"
#include "CSourceDataMngr.h"
#include "ECAbnormalData.h"
#include "IBnLink.h"
#include "IRpLink.h"
#include "SCBUICoreStrDef.h"
#include "SCSortRecs.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <new>

namespace NSKZ::NSKZCore {

namespace {

constexpr const char* SRC_FILE = "Src/CBUIDataMngr";

// Replaces `united` by the union with `added`; both are ascending.
void UniteInto(std::vector<DWORD>& united, const std::vector<DWORD>& added)
{
    std::vector<DWORD> both;
    both.reserve(united.size() + added.size());
    std::set_union(united.begin(), united.end(), added.begin(), added.end(), std::back_inserter(both));
    united = std::move(both);
}

// Lets an ascending list of records follow records that came or went; its new length.
DWORD RenumberAfterDeletion(DWORD* recs, DWORD recListCount, DWORD startRec, DWORD count) noexcept
{
    DWORD kept = 0;
    for (DWORD i = 0; i < recListCount; ++i) {
        if (recs[i] < startRec)
            recs[kept++] = recs[i];
        else if (recs[i] - startRec >= count)
            recs[kept++] = recs[i] - count;
    }
    return kept;
}

void RenumberAfterInsertion(DWORD* recs, DWORD recListCount, DWORD startRec, DWORD count) noexcept
{
    for (DWORD i = 0; i < recListCount; ++i)
        recs[i] += recs[i] >= startRec ? count : 0;
}

} // namespace

// An entry of the history that goes again unless its change is done.
class CBUIDataMngr::CNewUndoEntry
{
public:
    CNewUndoEntry(CBUIDataMngr& env, ESrcDataOpeType opeType)
        : stack(env.undoStack), sizeBefore(env.undoStack.size())
    {
        SSrcDataUndo entry;
        entry.opeType = opeType;
        env.GetAllBtnSelectionInfo(entry.selectBtnIDList);
        stack.push_back(std::move(entry));
    }
    ~CNewUndoEntry()
    {
        if (!isKept && stack.size() > sizeBefore) // it may have gone with the whole environment
            stack.pop_back();
    }
    CNewUndoEntry(const CNewUndoEntry&) = delete;
    CNewUndoEntry& operator=(const CNewUndoEntry&) = delete;

    void SetRecs(DWORD startRec, DWORD recCountAskedFor) noexcept
    {
        stack.back().startRec = startRec;
        stack.back().recCount = recCountAskedFor;
    }
    void SetFlds(const DWORD* fldIDs, unsigned int count)
    {
        stack.back().fldIDList.assign(fldIDs, fldIDs + count);
        stack.back().fldCount = count;
    }
    SSrcDataUndo& Get() noexcept { return stack.back(); }
    void Keep() noexcept { isKept = true; }
    void Drop() noexcept { isKept = false; }

private:
    std::deque<SSrcDataUndo>& stack;
    std::size_t sizeBefore;
    bool isKept = false;
};

CBUIDataMngr::CDeferredRows::CDeferredRows(CBUIDataMngr& envToFollow) : env(envToFollow)
{
    Defer(true);
}

CBUIDataMngr::CDeferredRows::~CDeferredRows()
{
    Defer(false);
}

void CBUIDataMngr::CDeferredRows::Defer(bool deferred) noexcept
{
    for (const auto& [btnClassID, btnClass] : env.btnClasses)
        btnClass->DeferRows(deferred);
}

// Divides the ratio that a host's status has among steps, each of which is a process of its own, and sets it
// back at the end. The status may be null.
class CBUIDataMngr::CRatioOfSteps
{
public:
    CRatioOfSteps(CProgressStatus* statusOfHost, std::size_t sumOfSteps)
        : status(statusOfHost), ratio(statusOfHost == nullptr ? 0 : statusOfHost->GetRatioOfPresentProc()),
          sum(sumOfSteps)
    {}
    ~CRatioOfSteps()
    {
        if (status != nullptr)
            status->SetRatioOfPresentProc(ratio);
    }
    CRatioOfSteps(const CRatioOfSteps&) = delete;
    CRatioOfSteps& operator=(const CRatioOfSteps&) = delete;

    // Begins a step that is worth so much of the sum.
    void Begin(std::size_t worth)
    {
        if (status == nullptr || sum == 0)
            return;
        if (!isFirst)
            status->EndPresentProc();
        isFirst = false;
        status->SetRatioOfPresentProc(static_cast<unsigned int>(ratio * worth / sum));
    }

private:
    CProgressStatus* status;
    unsigned int ratio;
    std::size_t sum;
    bool isFirst = true;
};

// --- What every change ends in

void CBUIDataMngr::CloseFollowingOfSrcData(bool dropsSums, bool clearsSelection)
{
    if (dropsSums)
        sumValueCacheMngr->ClearSumValueCache();
    BuildOutdatedRows();
    if (recListLimited) {
        TellLimitationToBtns(GetBtnsOfRecs(limitedRecList.get(), limitedRecCount,
                                           "NSKZ::NSKZCore::CBUIDataMngr::CloseFollowingOfSrcData"));
    }
    ClearAllBtnSelections(clearsSelection);
}

void CBUIDataMngr::BuildOutdatedRows()
{
    std::vector<VCBtnClass*> classesWithSpBtns;
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        if (btnClass->HasSpBtns())
            classesWithSpBtns.push_back(btnClass.get());
    }
    VCBtnClass::BuildOutdatedRows(classesWithSpBtns);
}

// What is left of the selection is cleared by the closing; levels and pair name records and buttons of
// before.
void CBUIDataMngr::LetLevelsGo() noexcept
{
    ClearHierInfo();
    ClearDiffInfo();
}

void CBUIDataMngr::LetLimitationFollowInsertion(DWORD startRec, DWORD count) noexcept
{
    RenumberAfterInsertion(limitedRecList.get(), limitedRecCount, startRec, count);
    RenumberAfterInsertion(numCndRecList.get(), numCndRecCount, startRec, count);
}

void CBUIDataMngr::LetLimitationFollowDeletion(DWORD startRec, DWORD count) noexcept
{
    limitedRecCount = RenumberAfterDeletion(limitedRecList.get(), limitedRecCount, startRec, count);
    numCndRecCount = RenumberAfterDeletion(numCndRecList.get(), numCndRecCount, startRec, count);
}

// A record-to-button table that never had a column does not know how many records there are, and is told.
bool CBUIDataMngr::AreLinkTablesOfRecs()
{
    bool hasColumn = false;
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        const bool isHeld = bnLink->ExistFld(btnClassID);
        if (!isHeld && SCBUICoreCom::IsSrcBtnClass(btnClassID) && btnClass->IsEffective())
            return false;
        hasColumn = hasColumn || isHeld;
    }
    if (bnLink->GetRecCount() == recCount)
        return true;
    if (hasColumn)
        return false;
    bnLink->Clear();
    return bnLink->InsertRec(0, recCount);
}

void CBUIDataMngr::LoseLinkTablesOrAll() noexcept
{
    try {
        LoseLinkTables();
        DropLimitedRecList();
        SetVisibleInfoBasedOnLimitedRecListOfAllBtns(true);
        numCndRecListLimited = false;
        numCndRecList.reset();
        numCndRecCount = 0;
        sumValueCacheMngr->ClearSumValueCache();
        ClearAllBtnSelections(true);
    } catch (...) {
        const DWORD keptID = id;
        ClearButCollaborators();
        id = keptID;
    }
}

// --- Records that come

bool CBUIDataMngr::AdjstAccordingToInsertRec(DWORD startRec, DWORD recCountOfChange)
{
    return AdjstAccordingToInsertRec(startRec, recCountOfChange, {}, nullptr);
}

bool CBUIDataMngr::AdjstAccordingToInsertRec(DWORD startRec, DWORD count, const std::set<DWORD>& passedOver,
                                             CProgressStatus* progressStatus)
{
    if (!AreLinkTablesOfRecs() || count > std::numeric_limits<DWORD>::max() - recCount)
        return false;
    const DWORD position = std::min(startRec, recCount);
    CNewUndoEntry entry(*this, SRCDATAOPE_INSERTREC);
    entry.SetRecs(position, count);
    const DWORD formerCount = recCount;
    const bool isRead = FollowInsertedRecs(position, count, passedOver, progressStatus);
    if (recCount - formerCount != count)
        return false;
    entry.Keep();
    CloseFollowingOfSrcData(true, true);
    return isRead;
}

bool CBUIDataMngr::FollowInsertedRecs(DWORD startRec, DWORD count, const std::set<DWORD>& passedOver,
                                      CProgressStatus* progressStatus)
{
    if (count == 0)
        return true;
    SBuildAreas areas(count);
    std::vector<DWORD> following;
    following.reserve(btnClasses.size());
    if (!bnLink->InsertRec(startRec, count))
        return false;
    bool isRead = true;
    try {
        const CDeferredRows deferredRows(*this);
        RecListsOfBtnClasses addedOfOtherBtnClasses;
        CBuildProgress progress(progressStatus, static_cast<DWORD>(btnClasses.size()));
        for (const auto& [btnClassID, btnClass] : btnClasses) { // virtual ones behind those they refer to
            const auto fld = fldIDOfBtnClass.find(btnClassID);
            const bool isToBeRead = isRead && fld != fldIDOfBtnClass.end() &&
                                    !passedOver.contains(fld->second) && bnLink->ExistFld(btnClassID);
            if (!isToBeRead || !AddRecsToBtnClass(*btnClass, fld->second, startRec, areas,
                                                  addedOfOtherBtnClasses, following)) {
                isRead = isRead && !isToBeRead;
                AddUnreadRecsToBtnClass(*btnClass, startRec, count, addedOfOtherBtnClasses[btnClassID],
                                        following);
            }
            progress.Step(1.0);
        }
    } catch (...) {
        TakeInsertedRecsBack(startRec, count, following);
        throw;
    }
    recCount += count;
    LetLimitationFollowInsertion(startRec, count);
    LetLevelsGo();
    return isRead;
}

bool CBUIDataMngr::AddRecsToBtnClass(VCBtnClass& btnClass, DWORD fldID, DWORD startRec, SBuildAreas& areas,
                                     RecListsOfBtnClasses& addedOfOtherBtnClasses,
                                     std::vector<DWORD>& following)
{
    const DWORD btnClassID = btnClass.GetID();
    if (!ReadSrcData(fldID, startRec, areas, "NSKZ::NSKZCore::CBUIDataMngr::AdjstAccordingToInsertRec", 9992))
        return false;
    if (!btnClass.AddRecs(startRec, areas.recCount, areas.srcDataList.get(), areas.btnIDOfRec.get(),
                          areas.btnRecCounts)) {
        btnClass.DeleteRecs(startRec, 0); // the buttons made until then have no record
        return false;
    }
    areas.texts.reset();
    BuildRpLinkInfo(areas.btnRecCounts, areas.btnIDOfRec.get(), startRec, areas.recCount, areas.btnRecLists,
                    areas.recArena.get());
    GetAddedRelatedRecListOfSpBtnsThatBelongsToOtherBtnClass(btnClass, areas.btnRecLists,
                                                             addedOfOtherBtnClasses);
    std::vector<DWORD> recArea;
    const unsigned long long total =
        areas.recCount + GetAddedRelatedRecListOfSpBtns(btnClass, areas.btnRecLists, recArea);
    if (total > std::numeric_limits<DWORD>::max())
        throw std::bad_alloc();
    rpLink->InsertRec(btnClassID, startRec, areas.recCount, areas.btnRecLists, static_cast<DWORD>(total));
    following.push_back(btnClassID);
    bnLink->SetData(btnClassID, startRec, areas.recCount, areas.btnIDOfRec.get());
    btnClass.SetBtnAppOrdList(*bnLink);
    return true;
}

// A class that reads no values only follows the numbering, with what comes to its special buttons. A source
// class has no button in the new records then.
void CBUIDataMngr::AddUnreadRecsToBtnClass(VCBtnClass& btnClass, DWORD startRec, DWORD count,
                                           const RecListsOfBtns& added, std::vector<DWORD>& following)
{
    const DWORD btnClassID = btnClass.GetID();
    TCBtnIDAssArr<SRecordList> addedRecLists;
    unsigned long long total = 0;
    for (const auto& [btnID, recs] : added) {
        addedRecLists.Set(btnID,
                          SRecordList{const_cast<DWORD*>(recs.data()), static_cast<DWORD>(recs.size())});
        total += recs.size();
    }
    if (total > std::numeric_limits<DWORD>::max())
        throw std::bad_alloc();
    btnClass.AddUnreadRecs(count);
    rpLink->InsertRec(btnClassID, startRec, count, addedRecLists, static_cast<DWORD>(total));
    following.push_back(btnClassID);
    if (!btnClass.IsEffective())
        btnClass.CallRowsOutdated(); // nothing was gathered for it
    if (bnLink->ExistFld(btnClassID)) {
        const std::vector<DWORD> noBtns(count, SCBUICoreCom::BTN_ID_UNSETTING);
        bnLink->SetData(btnClassID, startRec, count, noBtns.data());
        btnClass.SetBtnAppOrdList(*bnLink);
    }
}

void CBUIDataMngr::TakeInsertedRecsBack(DWORD startRec, DWORD count,
                                        const std::vector<DWORD>& following) noexcept
{
    try {
        for (const auto& [btnClassID, btnClass] : btnClasses) {
            if (std::find(following.begin(), following.end(), btnClassID) == following.end())
                rpLink->InsertRec(btnClassID, startRec, count, {}, 0);
        }
        rpLink->DeleteRec(startRec, count);
        bnLink->DeleteRec(startRec, count);
        LetBtnClassesFollowDeletion(startRec);
        BuildOutdatedRows();
        sumValueCacheMngr->ClearSumValueCache();
    } catch (...) {
        LoseLinkTablesOrAll();
    }
}

unsigned long long CBUIDataMngr::GetAddedRelatedRecListOfSpBtns(const VCBtnClass& btnClass,
                                                                TCBtnIDAssArr<SRecordList>& addedRecLists,
                                                                std::vector<DWORD>& recArea) const
{
    std::vector<DWORD> spBtnIDs;
    btnClass.GetAllSpBtnIDList(spBtnIDs, false);
    std::map<DWORD, std::vector<SRecordList>> listsOfSpBtns;
    unsigned long long sum = 0;
    for (const DWORD spBtnID : spBtnIDs) {
        if (!btnClass.IsBtnWithRpLink(spBtnID))
            continue;
        std::set<DWORD> mmbBtnIDs;
        btnClass.GetMinimumMemberBtnIDListInThisBtnClassOfSpBtn(spBtnID, mmbBtnIDs);
        for (const DWORD mmbBtnID : mmbBtnIDs) {
            if (const SRecordList* const added = addedRecLists.Find(mmbBtnID)) {
                listsOfSpBtns[spBtnID].push_back(*added);
                sum += added->recCount;
            }
        }
    }
    if (sum > recArea.size())
        recArea.resize(sum);
    DWORD* area = recArea.data();
    for (const auto& [spBtnID, lists] : listsOfSpBtns) {
        // A record belongs to one source button, so the members' lists do not overlap.
        DWORD* end = area;
        for (const SRecordList& list : lists)
            end = std::copy_n(list.recList, list.recCount, end);
        const auto recCountOfBtn = static_cast<DWORD>(end - area);
        if (lists.size() > 1)
            SCSortRecs::Sort(area, recCountOfBtn);
        addedRecLists.Set(spBtnID, SRecordList{area, recCountOfBtn});
        area = end;
    }
    return sum;
}

void CBUIDataMngr::GetAddedRelatedRecListOfSpBtnsThatBelongsToOtherBtnClass(
    const VCBtnClass& btnClass, const TCBtnIDAssArr<SRecordList>& addedRecLists,
    RecListsOfBtnClasses& addedOfOtherBtnClasses) const
{
    std::map<SBtnClassIDAndBtnID, DWORD> reached; // with the first button that reaches it
    addedRecLists.ForEach([&](DWORD btnID, const SRecordList&) {
        std::set<SBtnClassIDAndBtnID> spBtns;
        btnClass.GetSpBtnIDListThatTheSpecifiedBtnInfluences(btnID, spBtns, false);
        for (const SBtnClassIDAndBtnID& spBtn : spBtns) {
            if (spBtn.btnClassID != btnClass.GetID())
                reached.emplace(spBtn, btnID);
        }
    });
    for (const auto& [spBtn, btnID] : reached) {
        const VCBtnClass* const other = FindBtnClass(spBtn.btnClassID);
        if (other == nullptr) {
            const CFormattedMsg message(SCBUICoreStrDef::MSG_NOTEXIST_BTNCLS_OF_SPBTN,
                                        {spBtn.btnClassID, spBtn.btnID, btnClass.GetID(), btnID});
            throw ECAbnormalData(message.GetText(), SRC_FILE,
                                 "NSKZ::NSKZCore::CBUIDataMngr::"
                                 "GetAddedRelatedRecListOfSpBtnsThatBelongsToOtherBtnClass",
                                 __LINE__);
        }
        if (!other->IsBtnWithRpLink(spBtn.btnID))
            continue;
        std::set<SBtnClassIDAndBtnID> members;
        other->GetMinimumMemberBtnIDListOfSpBtn(spBtn.btnID, members);
        std::vector<DWORD> recs;
        for (const SBtnClassIDAndBtnID& member : members) {
            const SRecordList* const added =
                member.btnClassID == btnClass.GetID() ? addedRecLists.Find(member.btnID) : nullptr;
            if (added != nullptr)
                recs.insert(recs.end(), added->recList, added->recList + added->recCount);
        }
        SCSortRecs::Sort(recs.data(), static_cast<DWORD>(recs.size()));
        UniteInto(addedOfOtherBtnClasses[spBtn.btnClassID][spBtn.btnID], recs);
    }
}

// --- Records that go

bool CBUIDataMngr::AdjstAccordingToDeleteRec(DWORD startRec, DWORD recCountOfChange)
{
    if (!AreLinkTablesOfRecs())
        return false;
    const DWORD count = startRec >= recCount ? 0 : std::min(recCountOfChange, recCount - startRec);
    CNewUndoEntry entry(*this, SRCDATAOPE_DELETEREC);
    entry.SetRecs(startRec, recCountOfChange);
    entry.Get().takenRecCount = count;
    if (count != 0)
        FollowDeletedRecs(startRec, count);
    entry.Keep();
    CloseFollowingOfSrcData(true, true);
    return true;
}

void CBUIDataMngr::FollowDeletedRecs(DWORD startRec, DWORD count)
{
    rpLink->DeleteRec(startRec, count); // if this fails nothing has changed
    try {
        bnLink->DeleteRec(startRec, count);
    } catch (...) {
        LoseLinkTablesOrAll();
        throw;
    }
    recCount -= count;
    LetLimitationFollowDeletion(startRec, count);
    LetLevelsGo();
    try {
        LetBtnClassesFollowDeletion(startRec);
    } catch (...) {
        try {
            LetBtnClassesFollowDeletion(startRec); // there may be memory again: it goes on where it was
        } catch (...) {
            LoseLinkTablesOrAll();
            throw;
        }
    }
}

// Each class lets go of the records that it has beyond those of the environment.
void CBUIDataMngr::LetBtnClassesFollowDeletion(DWORD startRec)
{
    const CDeferredRows deferredRows(*this);
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        btnClass->DeleteRecs(startRec, btnClass->GetRecCount() - recCount);
        if (bnLink->ExistFld(btnClassID))
            btnClass->SetBtnAppOrdList(*bnLink);
    }
}

// --- Fields

bool CBUIDataMngr::ReadAllRecsAnew(CProgressStatus* progressStatus)
{
    // The records are the same, and so is the limitation.
    const bool wasLimited = recListLimited;
    std::vector<DWORD> limitedRecs(limitedRecList.get(), limitedRecList.get() + limitedRecCount);
    const std::size_t entryCount = undoStack.size();
    // What cannot be in force where the insertion is missing comes back when the deletion is taken back.
    const auto endHalfWay = [&]() noexcept {
        for (std::size_t entry = entryCount; entry < undoStack.size(); ++entry)
            undoStack[entry].isOfDataChange = true;
        if (!wasLimited || undoStack.size() <= entryCount)
            return;
        undoStack[entryCount].hasLimitation = true;
        undoStack[entryCount].limitedRecs = std::move(limitedRecs);
        DropLimitationWithoutMemory();
    };
    try {
        if (!AdjstAccordingToDeleteRec(0, recCount))
            return false;
        const bool isRead = AdjstAccordingToInsertRec(0, srcDataMngr->GetRecCount(), {}, progressStatus);
        if (undoStack.size() == entryCount + 1) {
            endHalfWay();
            return false;
        }
        undoStack[entryCount].isOfDataChange = true;
        undoStack[entryCount + 1].isOfDataChange = true;
        if (wasLimited && !limitedRecs.empty())
            SetLimitedRecList(limitedRecs.data(), static_cast<DWORD>(limitedRecs.size()));
        return isRead;
    } catch (...) {
        endHalfWay();
        throw;
    }
}

bool CBUIDataMngr::AdjstAccordingToChangeFldData(const DWORD*, unsigned int count,
                                                 CProgressStatus* progressStatus)
{
    return count == 0 || ReadAllRecsAnew(progressStatus);
}

CBUIDataMngr::EMthRetOfCreateSrcBtnClses
CBUIDataMngr::AdjstAccordingToInsertFld(const DWORD* fldIDs, unsigned int count,
                                        CProgressStatus* progressStatus)
{
    if (count > srcDataMngr->GetFldCount())
        return CREATESRC_SRCDATA_ERROR;
    CNewUndoEntry entry(*this, SRCDATAOPE_INSERTFLD);
    entry.SetFlds(fldIDs, count);
    const bool wasSelected = HasSelection();
    TakeRecsIfThereAreNone();
    entry.Keep();
    const EMthRetOfCreateSrcBtnClses result = CreateSrcBtnClasses(fldIDs, count, progressStatus);
    CloseFollowingOfSrcData(false, wasSelected);
    return result;
}

// An environment whose link tables were lost, or that has no class yet, gets the records of the source.
void CBUIDataMngr::TakeRecsIfThereAreNone()
{
    if (recCount == 0)
        FollowInsertedRecs(0, srcDataMngr->GetRecCount(), {}, nullptr);
}

void CBUIDataMngr::TakeBtnClassOutOfFld(DWORD fldID, DWORD btnClassID)
{
    const CDeferredRows deferredRows(*this); // the closing makes each of them once
    if (VCBtnClass* const btnClass = FindBtnClass(btnClassID))
        btnClass->SetEffective(false);
    btnClassIDOfFld.erase(fldID);
    fldIDOfBtnClass.erase(btnClassID);
}

bool CBUIDataMngr::AdjstAccordingToDeleteFld(const DWORD* fldIDs, unsigned int count)
{
    CNewUndoEntry entry(*this, SRCDATAOPE_DELETEFLD);
    entry.SetFlds(fldIDs, count);
    entry.Get().btnClassIDList.assign(count, SCBUICoreCom::BTNCLS_ID_UNSETTING);
    entry.Keep(); // it tells at any time what is done
    const bool wasSelected = HasSelection();
    for (unsigned int i = 0; i < count; ++i) {
        DWORD btnClassID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
        if (!GetBtnClassID(fldIDs[i], btnClassID))
            continue;
        TakeBtnClassOutOfFld(fldIDs[i], btnClassID);
        entry.Get().btnClassIDList[i] = btnClassID;
    }
    CloseFollowingOfSrcData(true, wasSelected);
    return true;
}

bool CBUIDataMngr::AdjstAccordingToChangeFldDataSpec(const DWORD* fldIDs, unsigned int count,
                                                     CProgressStatus* progressStatus)
{
    CNewUndoEntry entry(*this, SRCDATAOPE_CHANGEFLDDATASPEC);
    entry.SetFlds(fldIDs, count);
    std::vector<DWORD>& formerIDs = entry.Get().btnClassIDList;
    formerIDs.reserve(count);
    const bool wasSelected = HasSelection();
    TakeRecsIfThereAreNone();
    CRatioOfSteps ratio(progressStatus, count);
    bool isBuilt = true;
    for (unsigned int i = 0; i < count && isBuilt; ++i) {
        SCDeclareConstant::SDataSpec spec;
        if (!srcDataMngr->GetDataSpec(fldIDs[i], spec)) {
            entry.Drop();
            if (i != 0)
                CloseFollowingOfSrcData(true, wasSelected);
            return false;
        }
        ratio.Begin(1);
        DWORD btnClassID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
        if (GetBtnClassID(fldIDs[i], btnClassID)) {
            SCBUICoreCom::EBtnClassType type{};
            const bool isOfType = GetTypeOfBtnClass(btnClassID, type) &&
                                  spec.dataKind == SCDeclareConstant::DATAKIND_ITEM &&
                                  spec.dataType <= SCDeclareConstant::DATATYPE_TIME &&
                                  static_cast<DWORD>(type) == static_cast<DWORD>(spec.dataType) + 1;
            if (!isOfType)
                TakeBtnClassOutOfFld(fldIDs[i], btnClassID);
            formerIDs.push_back(btnClassID);
            if (isOfType)
                continue;
            entry.Keep(); // a class is off that only the entry knows of
        } else {
            formerIDs.push_back(SCBUICoreCom::BTNCLS_ID_UNSETTING);
        }
        isBuilt = CreateSrcBtnClasses(&fldIDs[i], 1, progressStatus) == CREATESRC_OK;
    }
    while (formerIDs.size() < count) { // those that were not come to stay as they are
        DWORD btnClassID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
        GetBtnClassID(fldIDs[formerIDs.size()], btnClassID);
        formerIDs.push_back(btnClassID);
    }
    entry.Keep();
    CloseFollowingOfSrcData(true, wasSelected);
    return isBuilt;
}

bool CBUIDataMngr::AdjstAccordingToChangeFldDataForm(const DWORD* fldIDs, unsigned int count)
{
    CNewUndoEntry entry(*this, SRCDATAOPE_CHANGEFLDDATAFORM);
    entry.SetFlds(fldIDs, count);
    return ChangeSpBtn([&, this] {
        for (unsigned int i = 0; i < count; ++i) {
            DWORD btnClassID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
            if (!GetBtnClassID(fldIDs[i], btnClassID))
                continue;
            auto* const btnClass = dynamic_cast<VCDateTimeBtnClass*>(FindBtnClass(btnClassID));
            if (btnClass == nullptr)
                continue;
            std::vector<DWORD> changedBtnIDs;
            SetIneffectiveInfoOfAllSelCllBtns(btnClassID, changedBtnIDs);
            btnClass->RegroupAfterDataFormChange();
        }
        entry.Keep();
        CloseFollowingOfSrcData(true, true);
        return true;
    });
}

bool CBUIDataMngr::AdjstAccordingToChangeDateCriterionInfo()
{
    CNewUndoEntry entry(*this, SRCDATAOPE_CHANGEDATECRITERION);
    return ChangeSpBtn([&, this] {
        for (const auto& [btnClassID, btnClass] : btnClasses) {
            if (auto* const dateBtnClass = dynamic_cast<CDateBtnClass*>(btnClass.get()))
                dateBtnClass->RegroupAfterCriterionChange();
        }
        entry.Keep();
        CloseFollowingOfSrcData(true, true);
        return true;
    });
}

CBUIDataMngr::EMthRetOfCreateSrcBtnClses
CBUIDataMngr::AdjstAccordingToChangeSrcDataMngr(const SCDataMngrCoreDef::SBtnRenewalInfo& renewalInfo,
                                                CProgressStatus* progressStatus)
{
    if (progressStatus != nullptr)
        progressStatus->SetNameOfPresentProc(SCBUICoreStrDef::STR_PROCNAME_REBUILD_BTNINFO);
    std::vector<DWORD> rebuiltFldIDs(renewalInfo.dataChangedFldIDs);
    for (const DWORD fldID : renewalInfo.formChangedFldIDs) {
        if (std::find(rebuiltFldIDs.begin(), rebuiltFldIDs.end(), fldID) == rebuiltFldIDs.end())
            rebuiltFldIDs.push_back(fldID);
    }
    const auto countOf = [](const std::vector<DWORD>& fldIDs) {
        return static_cast<unsigned int>(fldIDs.size());
    };
    CRatioOfSteps ratio(progressStatus, renewalInfo.deletedFldIDs.size() + rebuiltFldIDs.size() +
                                            renewalInfo.formChangedFldIDs.size() +
                                            renewalInfo.specChangedFldIDs.size() +
                                            renewalInfo.insertedFldIDs.size());

    // The deleted fields have no data any more.
    const std::set<DWORD> deletedFldIDs(renewalInfo.deletedFldIDs.begin(), renewalInfo.deletedFldIDs.end());
    const DWORD newCount = renewalInfo.newRecCount;
    const DWORD oldCount = renewalInfo.oldRecCount;
    if (newCount > oldCount && !AdjstAccordingToInsertRec(0, newCount - oldCount, deletedFldIDs, nullptr))
        return CREATESRC_SRCDATA_ERROR;
    if (newCount < oldCount && !AdjstAccordingToDeleteRec(0, oldCount - newCount))
        return CREATESRC_SRCDATA_ERROR;
    if (!renewalInfo.deletedFldIDs.empty()) {
        ratio.Begin(renewalInfo.deletedFldIDs.size());
        if (!AdjstAccordingToDeleteFld(renewalInfo.deletedFldIDs.data(), countOf(renewalInfo.deletedFldIDs)))
            return CREATESRC_SRCDATA_ERROR;
    }
    if (!rebuiltFldIDs.empty()) {
        ratio.Begin(rebuiltFldIDs.size());
        if (!ReadAllRecsAnew(progressStatus))
            return CREATESRC_SRCDATA_ERROR;
    }
    if (!renewalInfo.formChangedFldIDs.empty()) {
        ratio.Begin(renewalInfo.formChangedFldIDs.size());
        if (!AdjstAccordingToChangeFldDataForm(renewalInfo.formChangedFldIDs.data(),
                                               countOf(renewalInfo.formChangedFldIDs)))
            return CREATESRC_SRCDATA_ERROR;
    }
    if (!renewalInfo.specChangedFldIDs.empty()) {
        ratio.Begin(renewalInfo.specChangedFldIDs.size());
        if (!AdjstAccordingToChangeFldDataSpec(renewalInfo.specChangedFldIDs.data(),
                                               countOf(renewalInfo.specChangedFldIDs), progressStatus))
            return CREATESRC_SRCDATA_ERROR;
    }
    if (renewalInfo.insertedFldIDs.empty())
        return CREATESRC_OK;
    ratio.Begin(renewalInfo.insertedFldIDs.size());
    return AdjstAccordingToInsertFld(renewalInfo.insertedFldIDs.data(), countOf(renewalInfo.insertedFldIDs),
                                     progressStatus);
}

} // namespace NSKZ::NSKZCore
