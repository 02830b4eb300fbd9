// Taking changes of the source data back.

#include "CBUIDataMngr.h"

#include "CDateBtnClass.h"
#include "CSourceDataMngr.h"
#include "ECAbnormalData.h"
#include "IBnLink.h"
#include "IRpLink.h"
#include "SCBUICoreStrDef.h"

#include <algorithm>
#include <array>

namespace NSKZ::NSKZCore {

namespace {

constexpr const char* SRC_FILE = "Src/CBUIDataMngr";

// Cells that are looked through at a time.
constexpr DWORD CHUNK_SIZE = 2048;

bool IsKnownOpeType(unsigned int opeType)
{
    return opeType >= 1 && opeType <= 8;
}

} // namespace

template <class TChange>
void CBUIDataMngr::RunWithoutEntry(const TChange& change)
{
    const std::size_t entryCount = undoStack.size();
    try {
        change();
    } catch (...) {
        if (undoStack.size() > entryCount) { // it is done, up to what was to follow
            undoStack.pop_back();
            undoStack.pop_back();
        }
        throw;
    }
    if (undoStack.size() > entryCount)
        undoStack.pop_back();
}

bool CBUIDataMngr::HasButtonInEachRec(DWORD btnClassID) const
{
    if (!bnLink->ExistFld(btnClassID) || !rpLink->ExistFld(btnClassID))
        return false;
    std::array<DWORD, CHUNK_SIZE> cells;
    for (DWORD done = 0; done < recCount;) {
        const DWORD count = std::min(recCount - done, CHUNK_SIZE);
        if (!bnLink->GetData(btnClassID, done, count, cells.data()) ||
            std::find(cells.begin(), cells.begin() + count, SCBUICoreCom::BTN_ID_UNSETTING) !=
                cells.begin() + count)
            return false;
        done += count;
    }
    return true;
}

void CBUIDataMngr::ReadBtnClassAnew(VCBtnClass& btnClass, DWORD fldID)
{
    const DWORD btnClassID = btnClass.GetID();
    SBuildAreas areas(recCount);
    RecListsOfBtnClasses addedOfOtherBtnClasses; // no button of another class holds one of this class now
    std::vector<DWORD> following;
    following.reserve(1);
    const std::vector<DWORD> noBtns(recCount, SCBUICoreCom::BTN_ID_UNSETTING);
    if (!bnLink->ExistFld(btnClassID))
        bnLink->InsertFld(btnClassID, recCount, noBtns.data());
    else
        bnLink->SetFldData(btnClassID, recCount, noBtns.data());
    if (!rpLink->ExistFld(btnClassID))
        rpLink->InsertFld(btnClassID);
    rpLink->ClearFld(btnClassID);
    btnClass.CallRowsOutdated();
    btnClass.DeleteRecs(0, btnClass.GetRecCount());
    if (!AddRecsToBtnClass(btnClass, fldID, 0, areas, addedOfOtherBtnClasses, following))
        btnClass.AddUnreadRecs(recCount);
}

void CBUIDataMngr::PutBtnClassBackIntoFld(DWORD fldID, DWORD btnClassID)
{
    const CDeferredRows deferredRows(*this); // the closing makes each of them once
    VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass != nullptr && !HasButtonInEachRec(btnClassID)) // records came, or the table was made anew
        ReadBtnClassAnew(*btnClass, fldID);
    btnClassIDOfFld.emplace(fldID, btnClassID);
    fldIDOfBtnClass.emplace(btnClassID, fldID);
    if (btnClass == nullptr)
        return;
    // A class without its field knows no form of its dates, and so no groups.
    if (auto* const dateTimeBtnClass = dynamic_cast<VCDateTimeBtnClass*>(btnClass))
        dateTimeBtnClass->ResetInsideInfoForSpBtnsOfBtns({}, false);
    btnClass->SetEffective(true);
}

void CBUIDataMngr::UndoOpeOfTheSrcData(const SSrcDataUndo& undone)
{
    switch (undone.opeType) {
    case SRCDATAOPE_INSERTREC:
        RunWithoutEntry([&] { AdjstAccordingToDeleteRec(undone.startRec, undone.recCount); });
        return;
    case SRCDATAOPE_DELETEREC:
        RunWithoutEntry([&] { AdjstAccordingToInsertRec(undone.startRec, undone.takenRecCount); });
        return;
    case SRCDATAOPE_INSERTFLD: {
        const std::size_t entryCount = undoStack.size();
        AdjstAccordingToDeleteFld(undone.fldIDList.data(), undone.fldCount);
        if (undoStack.size() > entryCount)
            undoStack.pop_back();
        return;
    }
    case SRCDATAOPE_DELETEFLD:
        for (std::size_t i = 0; i < undone.btnClassIDList.size(); ++i) {
            if (undone.btnClassIDList[i] != SCBUICoreCom::BTNCLS_ID_UNSETTING)
                PutBtnClassBackIntoFld(undone.fldIDList[i], undone.btnClassIDList[i]);
        }
        break;
    case SRCDATAOPE_CHANGEFLDDATASPEC:
        for (std::size_t i = 0; i < undone.btnClassIDList.size(); ++i) {
            const DWORD formerID = undone.btnClassIDList[i];
            DWORD presentID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
            GetBtnClassID(undone.fldIDList[i], presentID);
            if (presentID == formerID)
                continue;
            if (presentID != SCBUICoreCom::BTNCLS_ID_UNSETTING)
                DestroyBtnClass(FindBtnClass(presentID));
            if (formerID != SCBUICoreCom::BTNCLS_ID_UNSETTING)
                PutBtnClassBackIntoFld(undone.fldIDList[i], formerID);
        }
        break;
    default: // a change of form or criteria leaves the groups as they are
        return;
    }
    CloseFollowingOfSrcData(true, HasSelection());
}

bool CBUIDataMngr::AdjstAccordingToUndoOpeOfTheSrcData()
{
    if (undoStack.empty())
        return false;
    if (!IsKnownOpeType(undoStack.back().opeType)) {
        throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_SRCDATA_OPETYPE, SRC_FILE,
                             "NSKZ::NSKZCore::CBUIDataMngr::AdjstAccordingToUndoOpeOfTheSrcData", 10349);
    }
    const SSrcDataUndo undone(undoStack.back());
    const bool wasLimited = recListLimited;
    std::vector<DWORD> limitedRecs(limitedRecList.get(), limitedRecList.get() + limitedRecCount);
    UndoOpeOfTheSrcData(undone);
    undoStack.pop_back();
    if (undone.isOfDataChange) { // the limitation stays over both halves
        if (undone.opeType == SRCDATAOPE_INSERTREC && !undoStack.empty() && undoStack.back().isOfDataChange) {
            undoStack.back().hasLimitation = wasLimited;
            undoStack.back().limitedRecs = std::move(limitedRecs);
        } else if (undone.hasLimitation && !undone.limitedRecs.empty()) {
            SetLimitedRecList(undone.limitedRecs.data(), static_cast<DWORD>(undone.limitedRecs.size()));
        }
    }
    sumValueCacheMngr->ClearSumValueCache();
    return SelectBtns(undone.selectBtnIDList, false);
}

void CBUIDataMngr::ClearUndoOfTheSrcData()
{
    while (!undoStack.empty()) {
        const SSrcDataUndo& entry = undoStack.back();
        if (!IsKnownOpeType(entry.opeType)) {
            throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_SRCDATA_OPETYPE, SRC_FILE,
                                 "NSKZ::NSKZCore::CBUIDataMngr::ClearUndoOfTheSrcData", 10418);
        }
        if (entry.opeType == SRCDATAOPE_DELETEFLD || entry.opeType == SRCDATAOPE_CHANGEFLDDATASPEC) {
            for (const DWORD btnClassID : entry.btnClassIDList) {
                VCBtnClass* const btnClass = FindBtnClass(btnClassID);
                if (btnClass != nullptr && !btnClass->IsEffective())
                    DestroyBtnClass(btnClass);
            }
        }
        undoStack.pop_back();
    }
}

} // namespace NSKZ::NSKZCore
