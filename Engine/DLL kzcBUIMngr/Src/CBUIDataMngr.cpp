#include "CBUIDataMngr.h"

#include "CBnLink_MemSavVer.h"
#include "CBnLink_OnMemVer.h"
#include "CProgressStatus.h"
#include "CRpLink_MemSavVer.h"
#include "CRpLink_OnMemVer.h"
#include "CSourceDataMngr.h"
#include "CVirBtnClass.h"
#include "ECAbnormalData.h"
#include "INumCnd.h"
#include "SCBUICoreStrDef.h"
#include "SCKZCoreCom.h"
#include "VCSrcBtnClass.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>

namespace NSKZ::NSKZCore {

namespace {

constexpr const char* SRC_FILE = "Src/CBUIDataMngr";

// The version of a table that `verType` names. `function` is where it is made.
template <class TTable, class TOnMem, class TMemSav>
std::unique_ptr<TTable> MakeTable(SCBUICoreCom::ELinkTableVerType verType, const char* function, long line)
{
    switch (verType) {
    case SCBUICoreCom::LINKTBLVERTYPE_ONMEM:
        return std::make_unique<TOnMem>();
    case SCBUICoreCom::LINKTBLVERTYPE_MEMSAV:
        return std::make_unique<TMemSav>();
    default:
        throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_LINKTBLVERTYPE, SRC_FILE, function, line);
    }
}

// Puts a table of another version in the place of `table`: create() makes it, copyFrom(old) fills it.
// Whatever they throw, the old table is back.
template <class TTable, class TCreate, class TCopyFrom>
void ExchangeTable(std::unique_ptr<TTable>& table, const TCreate& create, const TCopyFrom& copyFrom)
{
    std::unique_ptr<TTable> old = std::move(table);
    try {
        create();
        copyFrom(old.get());
    } catch (...) {
        table = std::move(old);
        throw;
    }
}

void CopyRecs(DWORD* out, const DWORD* recList, DWORD count) noexcept
{
    if (count != 0)
        std::memcpy(out, recList, count * sizeof(DWORD));
}

} // namespace

void CBUIDataMngr::SNumCndReleaser::operator()(INumCnd* cnd) const noexcept
{
    cnd->Destroy();
}

// --- Life

CBUIDataMngr::CBUIDataMngr(DWORD idOfEnv, SCBUICoreCom::ELinkTableVerType bnLinkVerType,
                           SCBUICoreCom::ELinkTableVerType rpLinkVerType,
                           const CSourceDataMngr& srcDataMngrOfHost, const CCoreSumMngr* coreSumMngrOfHost)
{
    Clear();
    id = idOfEnv;
    srcDataMngr = &srcDataMngrOfHost;
    coreSumMngr = coreSumMngrOfHost;
    sumValueCacheMngr = std::make_unique<CSumValueCacheMngr>(*this);
    CreateBnLink(bnLinkVerType);
    CreateRpLink(rpLinkVerType);
}

CBUIDataMngr::CBUIDataMngr(DWORD idOfEnv, SCBUICoreCom::ELinkTableVerType bnLinkVerType,
                           SCBUICoreCom::ELinkTableVerType rpLinkVerType,
                           const CSourceDataMngr& srcDataMngrOfHost, const CCoreSumMngr* coreSumMngrOfHost,
                           CProgressStatus* progressStatus)
    : CBUIDataMngr(idOfEnv, bnLinkVerType, rpLinkVerType, srcDataMngrOfHost, coreSumMngrOfHost)
{
    recCount = srcDataMngr->GetRecCount();
    std::vector<DWORD> fldIDs;
    srcDataMngr->GetSrcFrmDataFldID(fldIDs);
    CreateSrcBtnClasses(fldIDs.data(), static_cast<unsigned int>(fldIDs.size()), progressStatus);
}

CBUIDataMngr::~CBUIDataMngr() = default;

void CBUIDataMngr::Clear()
{
    btnClasses.clear();
    btnClassIDOfFld.clear();
    fldIDOfBtnClass.clear();
    if (bnLink != nullptr)
        bnLink->Clear();
    if (rpLink != nullptr)
        rpLink->Clear();
    selBtnClassIDList.clear();
    ClearHierInfo();
    limitedRecList.reset();
    numCndRecList.reset();
    numCnd.reset();
    if (sumValueCacheMngr != nullptr)
        sumValueCacheMngr->ClearSumValueCache();
    undoStack.clear();

    id = SCBUICoreCom::BUIDATAMNGR_ID_UNSETTING;
    multiSelection = false;
    relationMode = RELATIONMODE_NARROWING;
    recCount = 0;
    srcDataMngr = nullptr;
    coreSumMngr = nullptr;
    nextSrcBtnClassID = SCBUICoreCom::BTNCLS_ID_SRC_BEGIN;
    nextCommonVirBtnClassID = SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN;
    nextFixedVirBtnClassID = SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
    blankFixedVirBtnClassIDs.clear();
    ClearDiffInfo();
    recListLimited = false;
    limitedRecCount = 0;
    numCndRecListLimited = false;
    numCndRecCount = 0;
    levelsRead.clear();
    areLinkTablesLost = false;
}

void CBUIDataMngr::ClearOfFixedSpec()
{
    const auto fixedOnes = btnClasses.lower_bound(SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN);
    try {
        std::vector<DWORD> fixedIDs;
        for (auto fixedOne = fixedOnes; fixedOne != btnClasses.end(); ++fixedOne)
            fixedIDs.push_back(fixedOne->first);
        DropRowsOfSpBtns();
        rpLink->ClearOfFixedSpec();
        rpLink->DeleteFlds(fixedIDs);
    } catch (...) { // some classes may have lost their rows
        for (const auto& [btnClassID, btnClass] : btnClasses)
            btnClass->CallRowsOutdated();
        throw;
    }
    for (const auto& [btnClassID, btnClass] : btnClasses)
        btnClass->ClearOfFixedSpec();
    btnClasses.erase(fixedOnes, btnClasses.end());
    selBtnClassIDList.clear();
    ClearNumCnd();
    nextFixedVirBtnClassID = SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
    blankFixedVirBtnClassIDs.clear();
    ClearHierInfo();
    ClearDiffInfo();
    ClearLimitedRecList();
    sumValueCacheMngr->ClearSumValueCache();
    undoStack.clear();
}

// Row by row, so that the table has none left to clear at once: the memory-saving one would take other lists
// with them (Doc/known-traits.md).
void CBUIDataMngr::DropRowsOfSpBtns()
{
    std::vector<DWORD> btnClassIDs;
    rpLink->GetBtnClassIDList(btnClassIDs);
    std::vector<DWORD> btnIDs;
    for (const DWORD btnClassID : btnClassIDs) {
        rpLink->GetBtnIDList(btnClassID, btnIDs);
        for (const DWORD btnID : btnIDs) {
            if (SCBUICoreCom::IsIncBtn(btnID) || SCBUICoreCom::IsCllBtn(btnID))
                rpLink->DeleteBtn(btnClassID, btnID);
        }
    }
}

bool CBUIDataMngr::CreateBnLink(SCBUICoreCom::ELinkTableVerType verType)
{
    if (bnLink != nullptr)
        return false;
    bnLink = MakeTable<IBnLink, CBnLink_OnMemVer, CBnLink_MemSavVer>(
        verType, "NSKZ::NSKZCore::CBUIDataMngr::CreateBnLink", __LINE__);
    return true;
}

bool CBUIDataMngr::CreateRpLink(SCBUICoreCom::ELinkTableVerType verType)
{
    if (rpLink != nullptr)
        return false;
    rpLink = MakeTable<IRpLink, CRpLink_OnMemVer, CRpLink_MemSavVer>(
        verType, "NSKZ::NSKZCore::CBUIDataMngr::CreateRpLink", __LINE__);
    return true;
}

SCBUICoreCom::ELinkTableVerType CBUIDataMngr::GetVersionTypeOfBnLink() const
{
    if (bnLink == nullptr)
        throw ECAbnormalData(SCBUICoreStrDef::MSG_NOTEXIST_BNLINK, SRC_FILE,
                             "NSKZ::NSKZCore::CBUIDataMngr::GetVersionTypeOfBnLink", __LINE__);
    return bnLink->GetVersionType();
}

SCBUICoreCom::ELinkTableVerType CBUIDataMngr::GetVersionTypeOfRpLink() const
{
    if (rpLink == nullptr)
        throw ECAbnormalData(SCBUICoreStrDef::MSG_NOTEXIST_RPLINK, SRC_FILE,
                             "NSKZ::NSKZCore::CBUIDataMngr::GetVersionTypeOfRpLink", __LINE__);
    return rpLink->GetVersionType();
}

void CBUIDataMngr::ChangeVersionTypeOfBnLink(SCBUICoreCom::ELinkTableVerType verType)
{
    if (verType != GetVersionTypeOfBnLink())
        ExchangeTable(
            bnLink, [&] { CreateBnLink(verType); }, [&](IBnLink* old) { CopyBnLink(old); });
}

void CBUIDataMngr::ChangeVersionTypeOfRpLink(SCBUICoreCom::ELinkTableVerType verType)
{
    if (verType != GetVersionTypeOfRpLink())
        ExchangeTable(
            rpLink, [&] { CreateRpLink(verType); }, [&](IRpLink* old) { CopyRpLink(old); });
}

DWORD* CBUIDataMngr::GetWorkArea(std::size_t number) const
{
    if (workAreaSize < recCount) {
        for (std::unique_ptr<DWORD[]>& area : workAreas)
            area.reset();
        workAreaSize = recCount;
    }
    if (workAreas[number] == nullptr)
        workAreas[number].reset(new DWORD[workAreaSize]);
    return workAreas[number].get();
}

// --- Record limitation and numeric condition

void CBUIDataMngr::SetLimitedRecList(const DWORD* recListOfHost, DWORD recListCount)
{
    if (recListCount == 0) {
        ClearLimitedRecList();
        return;
    }
    std::unique_ptr<DWORD[]> copy(new DWORD[recListCount]);
    DWORD copyCount = 0;
    for (DWORD i = 0; i < recListCount; ++i) {
        const DWORD recNum = recListOfHost[i];
        if (recNum < recCount && (copyCount == 0 || recNum > copy[copyCount - 1]))
            copy[copyCount++] = recNum;
    }
    // What needs memory comes before the first change.
    const BtnIDsOfClasses reached =
        GetBtnsOfRecs(copy.get(), copyCount, "NSKZ::NSKZCore::CBUIDataMngr::SetLimitedRecList");
    limitedRecList = std::move(copy);
    limitedRecCount = copyCount;
    recListLimited = true;
    AdjstToLimitation(reached);
}

void CBUIDataMngr::ClearLimitedRecList()
{
    DropLimitedRecList();
    AdjstToLimitation({});
}

void CBUIDataMngr::DropLimitedRecList() noexcept
{
    limitedRecList.reset();
    limitedRecCount = 0;
    recListLimited = false;
}

void CBUIDataMngr::AdjstToLimitation(const BtnIDsOfClasses& reached)
{
    TellLimitationToBtns(reached);
    sumValueCacheMngr->ClearSumValueCache();
    ClearAllBtnSelections(true);
}

void CBUIDataMngr::TellLimitationToBtns(const BtnIDsOfClasses& reached)
{
    try {
        ResetVisibleInfoBasedOnLimitedRecListOfAllBtns(reached);
        std::vector<VCBtnClass*> classesWithSpBtns;
        for (const auto& [btnClassID, btnClass] : btnClasses) {
            if (btnClass->HasSpBtns())
                classesWithSpBtns.push_back(btnClass.get());
        }
        VCBtnClass::ResetLiveMemberInfoOfAllSpBtns(classesWithSpBtns);
    } catch (...) {
        // A limitation that is not told to all special buttons would hide what it must not.
        DropLimitationWithoutMemory();
        sumValueCacheMngr->ClearSumValueCache();
        throw;
    }
}

void CBUIDataMngr::DropLimitationWithoutMemory() noexcept
{
    DropLimitedRecList();
    SetVisibleInfoBasedOnLimitedRecListOfAllBtns(true);
    bool hasChanged = true;
    for (std::size_t round = 0; hasChanged && round <= btnClasses.size(); ++round) {
        hasChanged = false;
        for (const auto& [btnClassID, btnClass] : btnClasses)
            hasChanged = btnClass->ResetLiveMemberInfoOfAllSpBtnsWithoutMemory() || hasChanged;
    }
}

void CBUIDataMngr::SetNumCnd(const INumCnd& cnd)
{
    std::unique_ptr<INumCnd, SNumCndReleaser> clone(cnd.CreateClone());
    numCnd = std::move(clone);
    sumValueCacheMngr->ClearSumValueCache();
}

void CBUIDataMngr::ClearNumCnd()
{
    if (numCnd == nullptr)
        return;
    numCnd.reset();
    numCndRecListLimited = false;
    numCndRecList.reset();
    numCndRecCount = 0;
    sumValueCacheMngr->ClearSumValueCache();
}

bool CBUIDataMngr::GetNumCnd(const INumCnd*& cnd) const noexcept
{
    cnd = numCnd.get();
    return cnd != nullptr;
}

// --- Target records

bool CBUIDataMngr::GetMergedLimitedRecList(DWORD* recList, DWORD& recListCount) const
{
    if (recListLimited) {
        CopyRecs(recList, limitedRecList.get(), limitedRecCount);
        recListCount = limitedRecCount;
        if (numCndRecListLimited)
            SCKZCoreCom::MergeRecListByANDCnd(recList, recListCount, numCndRecList.get(), numCndRecCount);
        return true;
    }
    if (numCndRecListLimited) {
        CopyRecs(recList, numCndRecList.get(), numCndRecCount);
        recListCount = numCndRecCount;
        return true;
    }
    return false;
}

bool CBUIDataMngr::GetLimitationOrAllRecs(DWORD* recList, DWORD& recListCount) const
{
    if (!GetMergedLimitedRecList(recList, recListCount)) {
        std::iota(recList, recList + recCount, DWORD{0});
        recListCount = recCount;
    }
    return true;
}

bool CBUIDataMngr::GetTargetRecList(DWORD* recList, DWORD& recListCount) const
{
    // No class has this identifier, and so none of the levels.
    return GetRecsOfLevelBefore(SCBUICoreCom::BTNCLS_ID_UNSETTING, recList, recListCount,
                                "NSKZ::NSKZCore::CBUIDataMngr::GetTargetRecList");
}

bool CBUIDataMngr::GetTargetRecListOfBtnClass(DWORD btnClassID, DWORD* recList, DWORD& recListCount) const
{
    return GetRecsOfLevelBefore(btnClassID, recList, recListCount,
                                "NSKZ::NSKZCore::CBUIDataMngr::GetTargetRecListOfBtnClass");
}

bool CBUIDataMngr::GetRecsOfLevelBefore(DWORD btnClassID, DWORD* recList, DWORD& recListCount,
                                        const char* function) const
{
    switch (relationMode) {
    case RELATIONMODE_OR:
    case RELATIONMODE_NARROWING: {
        const auto own =
            std::find_if(hierarchies.begin(), hierarchies.end(),
                         [=](const SHierarchyInfo& level) { return level.btnClassID == btnClassID; });
        if (own == hierarchies.begin()) // the first level, or there is none
            return GetLimitationOrAllRecs(recList, recListCount);
        const SHierarchyInfo& before = *(own - 1);
        CopyRecs(recList, before.recList.get(), before.recCount);
        recListCount = before.recCount;
        return true;
    }
    case RELATIONMODE_NONE:
    case RELATIONMODE_AND:
    case RELATIONMODE_DIFFERENCE:
        return GetLimitationOrAllRecs(recList, recListCount);
    }
    throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_RELATIONMODE, SRC_FILE, function, __LINE__);
}

// --- Classes

VCBtnClass* CBUIDataMngr::FindBtnClass(DWORD btnClassID) const noexcept
{
    const auto found = btnClasses.find(btnClassID);
    return found == btnClasses.end() ? nullptr : found->second.get();
}

DWORD CBUIDataMngr::GetAllBtnClassIDList(std::vector<DWORD>& btnClassIDs, bool includeIneffective) const
{
    btnClassIDs.clear();
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        if (includeIneffective || btnClass->IsEffective())
            btnClassIDs.push_back(btnClassID);
    }
    return static_cast<DWORD>(btnClasses.size());
}

bool CBUIDataMngr::ExistBtnClass(DWORD btnClassID) const
{
    return FindBtnClass(btnClassID) != nullptr;
}

bool CBUIDataMngr::ExistBtnClass(const char* name, DWORD len) const
{
    return ExistBtnClass(name, len, SCBUICoreCom::BTNCLS_ID_UNSETTING);
}

bool CBUIDataMngr::ExistBtnClass(const char* name, DWORD len, DWORD ignoredBtnClassID) const
{
    const auto isName = [=](const char* text) {
        return text != nullptr && std::strlen(text) == len && (len == 0 || std::memcmp(text, name, len) == 0);
    };
    const auto isSrcBtnClass = [&](const auto& classAndFld) {
        const char* itemName = nullptr;
        return classAndFld.first != ignoredBtnClassID &&
               srcDataMngr->GetItemName(classAndFld.second, itemName) && isName(itemName);
    };
    const auto isVirBtnClass = [&](const auto& idAndClass) {
        const auto* const virBtnClass = dynamic_cast<const CVirBtnClass*>(idAndClass.second.get());
        return virBtnClass != nullptr && idAndClass.first != ignoredBtnClassID &&
               isName(virBtnClass->GetName());
    };
    return std::any_of(fldIDOfBtnClass.begin(), fldIDOfBtnClass.end(), isSrcBtnClass) ||
           std::any_of(btnClasses.lower_bound(SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN), btnClasses.end(),
                       isVirBtnClass);
}

bool CBUIDataMngr::GetFldID(DWORD btnClassID, DWORD& fldID) const
{
    const auto found = fldIDOfBtnClass.find(btnClassID);
    if (found == fldIDOfBtnClass.end())
        return false;
    fldID = found->second;
    return true;
}

bool CBUIDataMngr::GetBtnClassID(DWORD fldID, DWORD& btnClassID) const
{
    const auto found = btnClassIDOfFld.find(fldID);
    if (found == btnClassIDOfFld.end())
        return false;
    btnClassID = found->second;
    return true;
}

void CBUIDataMngr::GetBtnClassIDCnvObj(std::map<DWORD, DWORD>& btnClassIDsOfFlds) const
{
    btnClassIDsOfFlds = btnClassIDOfFld;
}

// --- One class

bool CBUIDataMngr::GetTypeOfBtnClass(DWORD btnClassID, SCBUICoreCom::EBtnClassType& type) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        type = btnClass.GetBtnClassType();
        return true;
    });
}

bool CBUIDataMngr::GetEffectiveInfoOfBtnClass(DWORD btnClassID, bool& effective) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        effective = btnClass.IsEffective();
        return true;
    });
}

bool CBUIDataMngr::GetSelectionInfoOfBtnClass(DWORD btnClassID, bool& selected) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        selected = btnClass.IsBtnClassSelected();
        return true;
    });
}

bool CBUIDataMngr::GetBtnSelectiveStateOfBtnClass(DWORD btnClassID, bool& state) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        state = btnClass.IsBtnSelectiveState();
        return true;
    });
}

bool CBUIDataMngr::GetNewBtnMadeSelStateOfBtnClass(DWORD btnClassID, bool& state) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        state = btnClass.IsNewBtnMadeSelState();
        return true;
    });
}

bool CBUIDataMngr::SetNewBtnMadeSelStateOfBtnClass(DWORD btnClassID, bool state)
{
    return WithBtnClass(btnClassID, [&](VCBtnClass& btnClass) {
        btnClass.SetNewBtnMadeSelState(state);
        return true;
    });
}

bool CBUIDataMngr::GetDispEmpValBtnInfoOfBtnClass(DWORD btnClassID, bool& disp) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        const auto* const srcBtnClass = dynamic_cast<const VCSrcBtnClass*>(&btnClass);
        if (srcBtnClass == nullptr)
            return false;
        disp = srcBtnClass->GetDispEmpValBtnInfo();
        return true;
    });
}

bool CBUIDataMngr::GetBtnCountOfBtnClass(DWORD btnClassID, DWORD& count) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        count = btnClass.GetBtnCount();
        return true;
    });
}

bool CBUIDataMngr::GetSelBtnCountOfBtnClass(DWORD btnClassID, DWORD& count) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        count = btnClass.GetSelBtnCount();
        return true;
    });
}

bool CBUIDataMngr::GetDispBtnCountOfBtnClass(DWORD btnClassID, DWORD& count) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        count = btnClass.GetDispBtnCount();
        return true;
    });
}

bool CBUIDataMngr::GetIneffectiveBtnCountOfBtnClass(DWORD btnClassID, DWORD& count) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        count = btnClass.GetIneffectiveBtnCount();
        return true;
    });
}

bool CBUIDataMngr::GetSystemMngrSpBtnCountOfBtnClass(DWORD btnClassID, DWORD& count) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        count = btnClass.GetSystemMngrSpBtnCount();
        return true;
    });
}

bool CBUIDataMngr::GetBtnAppOrdListOfBtnClass(DWORD btnClassID, unsigned int flags,
                                              std::vector<DWORD>& btnIDs) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        btnClass.GetBtnAppOrdList(flags, btnIDs);
        return true;
    });
}

bool CBUIDataMngr::GetBtnNameOrdListOfBtnClass(DWORD btnClassID, unsigned int flags,
                                               std::vector<DWORD>& btnIDs) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        btnClass.GetBtnNameOrdList(flags, btnIDs);
        return true;
    });
}

bool CBUIDataMngr::GetBtnUnknownOrdListOfBtnClass(DWORD btnClassID, unsigned int flags,
                                                  const std::vector<DWORD>& order,
                                                  std::vector<DWORD>& btnIDs) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        btnClass.GetBtnUnknownOrdList(flags, order, btnIDs);
        return true;
    });
}

bool CBUIDataMngr::GetSelBtnIDListOfBtnClass(DWORD btnClassID, std::vector<DWORD>& btnIDs) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        btnClass.GetSelectedBtnIDList(btnIDs);
        return true;
    });
}

bool CBUIDataMngr::GetDispSelBtnIDListOfBtnClass(DWORD btnClassID, std::vector<DWORD>& btnIDs) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        btnClass.GetDispSelectedBtnIDList(btnIDs);
        return true;
    });
}

bool CBUIDataMngr::GetDispBtnIDListOfBtnClass(DWORD btnClassID, std::vector<DWORD>& btnIDs) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        btnClass.GetDisplayedBtnIDList(btnIDs);
        return true;
    });
}

bool CBUIDataMngr::GetAllBtnIDListOfBtnClass(DWORD btnClassID, std::vector<DWORD>& btnIDs,
                                             bool includeIneffective) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        btnClass.GetAllBtnIDList(btnIDs, includeIneffective);
        return true;
    });
}

bool CBUIDataMngr::GetAllSpBtnIDListOfBtnClass(DWORD btnClassID, std::vector<DWORD>& btnIDs,
                                               bool includeIneffective) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        btnClass.GetAllSpBtnIDList(btnIDs, includeIneffective);
        return true;
    });
}

bool CBUIDataMngr::GetBtnExistInfoOfBtnClass(DWORD btnClassID, DWORD btnID) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) { return btnClass.ExistTheBtn(btnID); });
}

bool CBUIDataMngr::GetBtnExistInfoOfBtnClass(DWORD btnClassID, const char* text, DWORD len) const
{
    return WithBtnClass(btnClassID,
                        [&](const VCBtnClass& btnClass) { return btnClass.ExistTheBtn(text, len); });
}

bool CBUIDataMngr::GetBtnExistInfoOfBtnClass(DWORD btnClassID, const char* text, DWORD len,
                                             DWORD ignoredBtnID) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        return btnClass.ExistTheBtn(text, len, ignoredBtnID);
    });
}

bool CBUIDataMngr::SearchBtnsByAliasFromBtnClass(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                                 const std::vector<const char*>& words,
                                                 VCBtnClass::EOptionOfSearchBtnName option,
                                                 unsigned int flags, bool firstOnly,
                                                 std::vector<DWORD>& found) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        return btnClass.SearchTheBtnByAlias(btnIDs, words, option, flags, firstOnly, found);
    });
}

bool CBUIDataMngr::SearchBtnsByAliasFromBtnClass(DWORD btnClassID, const std::vector<const char*>& words,
                                                 VCBtnClass::EOptionOfSearchBtnName option,
                                                 unsigned int flags, std::vector<DWORD>& found) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        return btnClass.SearchTheBtnByAlias(words, option, flags, found);
    });
}

// --- One button

bool CBUIDataMngr::GetTypeOfBtn(DWORD btnClassID, DWORD btnID, SCBUICoreCom::EBtnType& type) const
{
    return WithBtnClass(btnClassID,
                        [&](const VCBtnClass& btnClass) { return btnClass.GetTypeOfBtn(btnID, type); });
}

bool CBUIDataMngr::GetSelectionInfoOfBtn(DWORD btnClassID, DWORD btnID, bool& sel) const
{
    return WithBtnClass(
        btnClassID, [&](const VCBtnClass& btnClass) { return btnClass.GetSelectionInfoOfBtn(btnID, sel); });
}

bool CBUIDataMngr::GetNameOfBtn(DWORD btnClassID, DWORD btnID, const char*& name) const
{
    return WithBtnClass(btnClassID,
                        [&](const VCBtnClass& btnClass) { return btnClass.GetNameOfBtn(btnID, name); });
}

bool CBUIDataMngr::GetAliasOfBtn(DWORD btnClassID, DWORD btnID, const char*& alias) const
{
    return WithBtnClass(btnClassID,
                        [&](const VCBtnClass& btnClass) { return btnClass.GetAliasOfBtn(btnID, alias); });
}

bool CBUIDataMngr::SetAliasOfBtn(DWORD btnClassID, DWORD btnID, const char* alias)
{
    return WithBtnClass(btnClassID,
                        [&](VCBtnClass& btnClass) { return btnClass.SetAliasOfBtn(btnID, alias); });
}

bool CBUIDataMngr::GetVisibleInfoOfBtn(DWORD btnClassID, DWORD btnID, unsigned int& visibleInfo) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        return btnClass.GetVisibleInfoOfBtn(btnID, visibleInfo);
    });
}

bool CBUIDataMngr::GetVisibleStateOfBtn(DWORD btnClassID, DWORD btnID, bool& visible) const
{
    unsigned int visibleInfo = 0;
    if (!GetVisibleInfoOfBtn(btnClassID, btnID, visibleInfo))
        return false;
    visible = visibleInfo == 0;
    return true;
}

bool CBUIDataMngr::GetEffectiveInfoOfBtn(DWORD btnClassID, DWORD btnID, bool& effective) const
{
    return WithBtnClass(btnClassID, [&](const VCBtnClass& btnClass) {
        SCBUICoreCom::EBtnType type = SCBUICoreCom::BTNTYPE_NORMAL;
        if (!btnClass.GetTypeOfBtn(btnID, type))
            return false;
        effective = btnClass.ExistTheBtn(btnID);
        return true;
    });
}

// --- Records and buttons

bool CBUIDataMngr::GetBtnIDListThatRelatesToRecListFromBtnClass(DWORD btnClassID, DWORD recListCount,
                                                                const DWORD* recList, DWORD* btnIDs) const
{
    std::vector<DWORD> found;
    if (!GetBtnIDListThatRelatesToRecListFromBtnClass(btnClassID, recListCount, recList, found))
        return false;
    found.resize(recListCount, SCBUICoreCom::BTN_ID_UNSETTING);
    std::copy(found.begin(), found.end(), btnIDs);
    return true;
}

bool CBUIDataMngr::GetBtnIDListThatRelatesToRecListFromBtnClass(DWORD btnClassID, DWORD recListCount,
                                                                const DWORD* recList,
                                                                std::vector<DWORD>& btnIDs) const
{
    return bnLink->GetBtnIDListOfRecList(btnClassID, recListCount, recList, btnIDs);
}

bool CBUIDataMngr::GetRecListThatRelatesToBtn(DWORD btnClassID, DWORD btnID, DWORD* recList,
                                              DWORD& recListCount) const
{
    DWORD* areas[] = {GetWorkArea(0), GetWorkArea(1)};
    return GetRecListThatRelatesToBtn(btnClassID, btnID, recList, recListCount, areas);
}

bool CBUIDataMngr::GetRecListThatRelatesToBtn(DWORD btnClassID, DWORD btnID, DWORD* recList,
                                              DWORD& recListCount, DWORD** workArrays) const
{
    // The class may swap what it is given; the caller's pointers stay as they are.
    DWORD* found = recList;
    DWORD* areas[] = {workArrays[0], workArrays[1]};
    DWORD count = 0;
    const VCBtnClass* const btnClass = FindBtnClass(btnClassID);
    if (btnClass == nullptr || !btnClass->GetRecListThatRelatesToBtn(btnID, found, count, areas))
        return false;
    if (found != recList)
        CopyRecs(recList, found, count);
    recListCount = count;
    return true;
}

bool CBUIDataMngr::GetRecListThatRelatesToBtns(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                               DWORD* recList, DWORD& recListCount) const
{
    DWORD* found = recList;
    DWORD* areas[] = {GetWorkArea(0), GetWorkArea(1)};
    DWORD count = 0;
    DWORD failedID = SCBUICoreCom::BTN_ID_UNSETTING;
    if (!VCBtnClass::GetRecListThatRelatesToBtns(FindBtnClass(btnClassID), btnIDs, found, count, areas,
                                                 failedID))
        return false;
    if (found != recList)
        CopyRecs(recList, found, count);
    recListCount = count;
    return true;
}

} // namespace NSKZ::NSKZCore
