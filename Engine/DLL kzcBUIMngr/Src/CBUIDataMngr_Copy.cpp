// Copying an environment, and carrying the content of link tables from one to another.

#include "CBUIDataMngr.h"

#include "CVirBtnClass.h"
#include "IBnLink.h"
#include "INumCnd.h"
#include "SCRecArr.h"
#include "SCRecLists.h"
#include "VCSrcBtnClass.h"

#include <algorithm>
#include <utility>

namespace NSKZ::NSKZCore {

namespace {

// Adds all fields of one table to another one, which has none of them.
void CarryBnLink(const IBnLink& from, IBnLink& to)
{
    std::vector<DWORD> btnClassIDs;
    from.GetBtnClassIDList(btnClassIDs);
    const DWORD recCount = from.GetRecCount();
    const std::unique_ptr<DWORD[]> btnIDs(new DWORD[recCount]);
    for (const DWORD btnClassID : btnClassIDs) {
        from.GetData(btnClassID, 0, recCount, btnIDs.get());
        to.InsertFld(btnClassID, recCount, btnIDs.get());
    }
}

void CarryRpLink(const IRpLink& from, IRpLink& to)
{
    SCRecLists::VisitFlds(from, [&to](DWORD btnClassID, TCBtnIDAssArr<SRecordList>& recLists, DWORD size) {
        to.InsertFld(btnClassID, recLists, size);
    });
}

} // namespace

// All that needs memory is made aside; from the exchange on nothing fails.
bool CBUIDataMngr::Copy(const CBUIDataMngr& other, const CSourceDataMngr* srcDataMngrOfHost,
                        const CCoreSumMngr* coreSumMngrOfHost)
{
    if (&other == this)
        return true;
    if (srcDataMngrOfHost == nullptr)
        return false;

    std::map<DWORD, std::unique_ptr<VCBtnClass>> copiedClasses = CopyBtnClasses(other, srcDataMngrOfHost);
    std::vector<DWORD> copiedSelBtnClassIDs(other.selBtnClassIDList);
    std::map<DWORD, DWORD> copiedBtnClassIDOfFld(other.btnClassIDOfFld);
    std::map<DWORD, DWORD> copiedFldIDOfBtnClass(other.fldIDOfBtnClass);
    std::deque<DWORD> copiedBlankIDs(other.blankFixedVirBtnClassIDs);
    std::vector<SHierarchyInfo> copiedLevels;
    for (const SHierarchyInfo& level : other.hierarchies) {
        copiedLevels.push_back({level.depth, level.btnClassID,
                                SCRecArr::CopyOf(level.recList.get(), level.recCount), level.recCount});
    }
    std::unique_ptr<DWORD[]> copiedLimitedRecs =
        SCRecArr::CopyOf(other.limitedRecList.get(), other.limitedRecCount);
    std::unique_ptr<DWORD[]> copiedNumCndRecs =
        SCRecArr::CopyOf(other.numCndRecList.get(), other.numCndRecCount);
    std::unique_ptr<INumCnd, SNumCndReleaser> copiedNumCnd(
        other.numCnd == nullptr ? nullptr : other.numCnd->CreateClone());
    std::deque<SSrcDataUndo> copiedUndoStack(other.undoStack);
    CSumValueCacheMngr copiedSums(*other.sumValueCacheMngr);
    // A table whose records or buttons are not those of the copy would lead its walks out of their arrays.
    const bool doesBnLinkFit = DoesBnLinkFit(copiedClasses, other.recCount);
    bool doesRpLinkFit = false;
    std::unique_ptr<IRpLink> formerRpLink;
    if (rpLink->GetVersionType() != other.rpLink->GetVersionType()) {
        formerRpLink = std::move(rpLink);
        try {
            CreateRpLink(formerRpLink->GetVersionType());
            CopyRpLink(other.rpLink.get());
            doesRpLinkFit = DoesRpLinkFit(other.recCount);
        } catch (...) {
            rpLink = std::move(formerRpLink);
            throw;
        }
    } else {
        doesRpLinkFit = DoesRpLinkFit(other.recCount);
    }

    btnClasses.swap(copiedClasses);
    selBtnClassIDList.swap(copiedSelBtnClassIDs);
    btnClassIDOfFld.swap(copiedBtnClassIDOfFld);
    fldIDOfBtnClass.swap(copiedFldIDOfBtnClass);
    blankFixedVirBtnClassIDs.swap(copiedBlankIDs);
    hierarchies.swap(copiedLevels);
    limitedRecList.swap(copiedLimitedRecs);
    numCndRecList.swap(copiedNumCndRecs);
    numCnd.swap(copiedNumCnd);
    undoStack.swap(copiedUndoStack);
    sumValueCacheMngr->TakeOver(std::move(copiedSums));
    multiSelection = other.multiSelection;
    relationMode = other.relationMode;
    recCount = other.recCount;
    nextSrcBtnClassID = other.nextSrcBtnClassID;
    nextCommonVirBtnClassID = other.nextCommonVirBtnClassID;
    nextFixedVirBtnClassID = other.nextFixedVirBtnClassID;
    diffBtnClassID = other.diffBtnClassID;
    diffStandardBtnID = other.diffStandardBtnID;
    diffTargetBtnID = other.diffTargetBtnID;
    recListLimited = other.recListLimited;
    limitedRecCount = other.limitedRecCount;
    numCndRecListLimited = other.numCndRecListLimited;
    numCndRecCount = other.numCndRecCount;
    srcDataMngr = srcDataMngrOfHost;
    coreSumMngr = coreSumMngrOfHost;
    if (!doesBnLinkFit)
        bnLink->Clear();
    if (!doesRpLinkFit)
        rpLink->Clear();
    return true;
}

std::map<DWORD, std::unique_ptr<VCBtnClass>>
CBUIDataMngr::CopyBtnClasses(const CBUIDataMngr& other, const CSourceDataMngr* srcDataMngrOfHost)
{
    std::map<DWORD, std::unique_ptr<VCBtnClass>> copied;
    const CSourceDataMngr* const formerSrcDataMngr = std::exchange(srcDataMngr, srcDataMngrOfHost);
    try {
        for (const auto& [btnClassID, btnClass] : other.btnClasses) {
            std::unique_ptr<VCBtnClass> copy = CreateBtnClassBasedOnBtnClassType(btnClass->GetBtnClassType());
            copy->Copy(*btnClass, rpLink);
            if (auto* const srcBtnClass = dynamic_cast<VCSrcBtnClass*>(copy.get()))
                srcBtnClass->SetSrcDataMngr(srcDataMngrOfHost);
            copy->CallRowsOutdated(); // this environment's table need not have them
            copied.emplace_hint(copied.end(), btnClassID, std::move(copy));
        }
        for (const auto& [btnClassID, btnClass] : copied) {
            if (auto* const virBtnClass = dynamic_cast<CVirBtnClass*>(btnClass.get()))
                virBtnClass->BindCopiedRefBtnClasses(copied);
        }
    } catch (...) {
        srcDataMngr = formerSrcDataMngr;
        throw;
    }
    srcDataMngr = formerSrcDataMngr;
    return copied;
}

// Whether the table is one of so many records, and its cells are buttons of these classes.
bool CBUIDataMngr::DoesBnLinkFit(const std::map<DWORD, std::unique_ptr<VCBtnClass>>& ofBtnClasses,
                                 DWORD ofRecCount) const
{
    std::vector<DWORD> btnIDs;
    return std::all_of(ofBtnClasses.begin(), ofBtnClasses.end(), [&](const auto& idAndClass) {
        return !bnLink->ExistFld(idAndClass.first) ||
               (bnLink->GetRecCount() == ofRecCount && bnLink->GetBtnIDList(idAndClass.first, btnIDs) &&
                std::all_of(btnIDs.begin(), btnIDs.end(), [&](DWORD btnID) {
                    return btnID == SCBUICoreCom::BTN_ID_UNSETTING ||
                           (SCBUICoreCom::IsSrcBtn(btnID) && idAndClass.second->ExistTheBtn(btnID));
                }));
    });
}

// Whether the lists are lists of so many records, of which none belongs to two source buttons of a class.
bool CBUIDataMngr::DoesRpLinkFit(DWORD ofRecCount) const
{
    bool fits = true;
    SCRecLists::VisitFlds(*rpLink, [&](DWORD, TCBtnIDAssArr<SRecordList>& recLists, DWORD) {
        unsigned long long ofSrcBtns = 0;
        recLists.ForEach([&](DWORD btnID, const SRecordList& list) {
            ofSrcBtns += SCBUICoreCom::IsSrcBtn(btnID) ? list.recCount : 0;
            for (DWORD i = 0; i < list.recCount && fits; ++i)
                fits = list.recList[i] < ofRecCount && (i == 0 || list.recList[i] > list.recList[i - 1]);
        });
        fits = fits && ofSrcBtns <= ofRecCount;
    });
    return fits;
}

bool CBUIDataMngr::CopyRpLink(IRpLink* other)
{
    if (other == nullptr)
        return false;
    if (CreateRpLink(other->GetVersionType()) || rpLink->GetVersionType() == other->GetVersionType())
        return true;
    rpLink->Clear();
    CarryRpLink(*other, *rpLink);
    return true;
}

bool CBUIDataMngr::CopyBnLink(IBnLink* other)
{
    if (other == nullptr)
        return false;
    if (CreateBnLink(other->GetVersionType()) || bnLink->GetVersionType() == other->GetVersionType())
        return true;
    const DWORD recCountOfOther = other->GetRecCount();
    const std::unique_ptr<DWORD[]> btnIDs(new DWORD[recCountOfOther]);
    bnLink->Clear();
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        if (!btnClass->IsEffective() || !SCBUICoreCom::IsSrcBtnClass(btnClassID))
            continue;
        if (!other->GetData(btnClassID, 0, recCountOfOther, btnIDs.get()) ||
            !bnLink->InsertFld(btnClassID, recCountOfOther, btnIDs.get()))
            break;
    }
    return true;
}

bool CBUIDataMngr::CopyLinkTables(const CBUIDataMngr& other)
{
    if (&other == this)
        return true;
    if (other.recCount != recCount)
        return false;
    std::unique_ptr<IBnLink> formerBnLink = std::move(bnLink);
    std::unique_ptr<IRpLink> formerRpLink = std::move(rpLink);
    const auto putBack = [&]() noexcept {
        bnLink = std::move(formerBnLink);
        rpLink = std::move(formerRpLink);
    };
    try {
        CreateBnLink(formerBnLink->GetVersionType());
        CreateRpLink(formerRpLink->GetVersionType());
        CarryBnLink(*other.bnLink, *bnLink);
        CarryRpLink(*other.rpLink, *rpLink);
        for (const auto& [btnClassID, btnClass] : btnClasses)
            rpLink->InsertFld(btnClassID); // refused where there is one
        const bool haveAll =
            std::all_of(btnClasses.begin(), btnClasses.end(), [this](const auto& idAndClass) {
                return !SCBUICoreCom::IsSrcBtnClass(idAndClass.first) || !idAndClass.second->IsEffective() ||
                       (bnLink->ExistFld(idAndClass.first) && rpLink->ExistFld(idAndClass.first));
            });
        if (!haveAll || !DoesBnLinkFit(btnClasses, recCount) || !DoesRpLinkFit(recCount)) {
            putBack();
            return false;
        }
    } catch (...) {
        putBack();
        throw;
    }
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        btnClass->CallRowsOutdated();
        if (bnLink->ExistFld(btnClassID))
            btnClass->SetBtnAppOrdList(*bnLink);
    }
    BuildOutdatedRows();
    return true;
}

} // namespace NSKZ::NSKZCore
