// Building source classes: fields become items, values become buttons, and both link tables are filled.

#include "CBUIDataMngr.h"

#include "CBtnClass.h"
#include "CDateBtnClass.h"
#include "CFormattedMsg.h"
#include "CNumBtnClass.h"
#include "CProgressStatus.h"
#include "CSourceDataMngr.h"
#include "CTimeBtnClass.h"
#include "ECAbnormalData.h"
#include "IBnLink.h"
#include "IRpLink.h"
#include "SCBUICoreStrDef.h"
#include "SCKZCoreCom.h"
#include "SCKZCoreStrDef.h"

namespace NSKZ::NSKZCore {

namespace {

constexpr const char* SRC_FILE = "Src/CBUIDataMngr";
constexpr const char* FUNC_CREATE = "NSKZ::NSKZCore::CBUIDataMngr::CreateSrcBtnClasses";

bool GetEligibleDataType(const CSourceDataMngr& srcDataMngr, DWORD fldID,
                         SCDeclareConstant::EDataType& dataType)
{
    SCDeclareConstant::SDataSpec spec;
    if (!srcDataMngr.GetDataSpec(fldID, spec) || spec.dataKind != SCDeclareConstant::DATAKIND_ITEM)
        return false;
    dataType = spec.dataType;
    return true;
}

} // namespace

CBUIDataMngr::CBuildProgress::CBuildProgress(CProgressStatus* statusOfHost, DWORD eligibleFldCount)
    : status(statusOfHost), maxValue(statusOfHost == nullptr ? 0 : statusOfHost->GetMaxValueOfPresentProc()),
      fldCount(eligibleFldCount)
{}

bool CBUIDataMngr::CBuildProgress::Step(double weight)
{
    if (status == nullptr)
        return true;
    const DWORD present = status->presentValue;
    const auto added = static_cast<DWORD>(maxValue * weight / fldCount);
    status->SetPresentValue(present > maxValue || added > maxValue - present ? maxValue : present + added);
    return !status->canceled;
}

CBUIDataMngr::SBuildAreas::SBuildAreas(DWORD recCountOfSrc)
    : recCount(recCountOfSrc), btnIDOfRec(new DWORD[recCountOfSrc]), recArena(new DWORD[recCountOfSrc]),
      srcDataList(new char*[recCountOfSrc]), srcDataLenList(new WORD[recCountOfSrc])
{}

bool CBUIDataMngr::ReadSrcData(DWORD fldID, DWORD firstRec, SBuildAreas& areas, const char* function,
                               long line) const
{
    DWORD size32 = 0;
    unsigned long long size = 0;
    if (!srcDataMngr->GetDataSize(fldID, firstRec, areas.recCount, size32, size))
        return false;
    if (size > 4294967295)
        throw ECAbnormalData(SCKZCoreStrDef::MSG_ABNORMAL_DATASIZE, SRC_FILE, function, line);
    areas.texts.reset();
    areas.texts.reset(new char[size]);
    return srcDataMngr->GetData(fldID, firstRec, areas.recCount, size32, areas.texts.get(),
                                static_cast<DWORD>(size), areas.srcDataLenList.get(),
                                areas.srcDataList.get()) &&
           AdjstSrcDataListToBtnClassType(fldID, areas.srcDataList.get(), areas.srcDataLenList.get(),
                                          areas.recCount);
}

CBUIDataMngr::EMthRetOfCreateSrcBtnClses
CBUIDataMngr::CreateSrcBtnClasses(const DWORD* fldIDs, unsigned int fldCount, CProgressStatus* progressStatus)
{
    if (fldCount > srcDataMngr->GetFldCount() || srcDataMngr->GetRecCount() != recCount)
        return CREATESRC_SRCDATA_ERROR;
    SBuildAreas areas(srcDataMngr->GetRecCount());
    DWORD eligibleCount = 0;
    SCDeclareConstant::EDataType dataType = SCDeclareConstant::DATATYPE_UNSETTING;
    for (unsigned int i = 0; i < fldCount; ++i)
        eligibleCount += GetEligibleDataType(*srcDataMngr, fldIDs[i], dataType) ? 1 : 0;

    CBuildProgress progress(progressStatus, eligibleCount);
    for (unsigned int i = 0; i < fldCount; ++i) {
        if (!GetEligibleDataType(*srcDataMngr, fldIDs[i], dataType))
            continue;
        const EMthRetOfCreateSrcBtnClses result = CreateSrcBtnClass(fldIDs[i], dataType, areas, progress);
        if (result != CREATESRC_OK)
            return result;
    }
    return CREATESRC_OK;
}

CBUIDataMngr::EMthRetOfCreateSrcBtnClses
CBUIDataMngr::CreateSrcBtnClass(DWORD fldID, SCDeclareConstant::EDataType dataType, SBuildAreas& areas,
                                CBuildProgress& progress)
{
    const DWORD btnClassID = nextSrcBtnClassID;
    if (btnClassID > SCBUICoreCom::BTNCLS_ID_SRC_END)
        return CREATESRC_ID_EXHAUSTED;
    ++nextSrcBtnClassID;
    std::unique_ptr<VCBtnClass> created = CreateBtnClassBasedOnDataType(dataType, btnClassID, fldID);
    if (created == nullptr) {
        const CFormattedMsg message(SCBUICoreStrDef::MSG_ABNORMAL_DATATYPE, {dataType});
        throw ECAbnormalData(message.GetText(), SRC_FILE, FUNC_CREATE, __LINE__);
    }
    auto& btnClass = static_cast<VCSrcBtnClass&>(*created);

    if (!ReadSrcData(fldID, 0, areas, FUNC_CREATE, __LINE__))
        return CREATESRC_SRCDATA_ERROR;
    if (!progress.Step(0.3))
        return CREATESRC_CANCELED;

    if (!btnClass.AddRecs(0, areas.recCount, areas.srcDataList.get(), areas.btnIDOfRec.get(),
                          areas.btnRecCounts))
        return CREATESRC_BTN_ERROR;
    areas.texts.reset();
    if (!progress.Step(0.1))
        return CREATESRC_CANCELED;

    BuildRpLinkInfo(areas.btnRecCounts, areas.btnIDOfRec.get(), 0, areas.recCount, areas.btnRecLists,
                    areas.recArena.get());
    if (!progress.Step(0.2))
        return CREATESRC_CANCELED;

    // What the tables hold of a class that does not come about goes again; a build that is cancelled leaves
    // it.
    try {
        bnLink->DeleteFld(btnClassID); // tables that a copy was made onto may hold a stranger's
        rpLink->DeleteFld(btnClassID);
        rpLink->InsertFld(btnClassID, areas.btnRecLists, areas.recCount);
        btnClass.ResetInsideInfoForSpBtnsOfSrcBtns(true, true);
        if (!progress.Step(0.4))
            return CREATESRC_CANCELED;
        if (!bnLink->InsertFld(btnClassID, areas.recCount, areas.btnIDOfRec.get())) {
            rpLink->DeleteFld(btnClassID);
            return CREATESRC_SRCDATA_ERROR; // the source has another number of records than the classes
        }
        btnClass.SetBtnAppOrdList(*bnLink);
        btnClasses.emplace(btnClassID, std::move(created));
        btnClassIDOfFld.emplace(fldID, btnClassID);
        fldIDOfBtnClass.emplace(btnClassID, fldID);
    } catch (...) {
        const auto fld = btnClassIDOfFld.find(fldID);
        if (fld != btnClassIDOfFld.end() && fld->second == btnClassID)
            btnClassIDOfFld.erase(fld);
        btnClasses.erase(btnClassID);
        bnLink->DeleteFld(btnClassID);
        rpLink->DeleteFld(btnClassID);
        throw;
    }
    return CREATESRC_OK;
}

// A counting sort of records by button: the lists come out ascending because records are visited in order.
void CBUIDataMngr::BuildRpLinkInfo(const TCBtnIDAssArr<DWORD>& btnRecCounts, const DWORD* btnIDOfRec,
                                   DWORD firstRec, DWORD recCountOfCall,
                                   TCBtnIDAssArr<SRecordList>& btnRecLists, DWORD* recArena)
{
    btnRecLists.Clear();
    DWORD offset = 0;
    for (auto count = btnRecCounts.begin(); count != btnRecCounts.end(); ++count) {
        btnRecLists.Set(count.GetKey(), SRecordList{recArena + offset, 0});
        offset += *count;
    }
    for (DWORD i = 0; i < recCountOfCall; ++i) {
        if (!SCBUICoreCom::IsSrcBtn(btnIDOfRec[i]))
            continue;
        if (SRecordList* const list = btnRecLists.Find(btnIDOfRec[i]))
            list->recList[list->recCount++] = firstRec + i;
    }
}

bool CBUIDataMngr::AdjstSrcDataListToBtnClassType(DWORD fldID, char** srcDataList, const WORD* srcDataLenList,
                                                  DWORD recCountOfCall) const
{
    SCDeclareConstant::SDataSpec spec;
    if (!srcDataMngr->GetDataSpec(fldID, spec))
        return false;
    if (spec.dataType != SCDeclareConstant::DATATYPE_DATE)
        return true;
    SCDeclareConstant::SDateTypeInfo dateTypeInfo;
    unsigned int minLen = 0;
    unsigned int maxLen = 0;
    if (!srcDataMngr->GetDateTypeInfo(fldID, dateTypeInfo) ||
        !SCDeclareConstant::GetDateStrMinAndMaxLen(dateTypeInfo.form, dateTypeInfo.delimiter, minLen, maxLen))
        return false;
    // A date with a time or anything else behind it is cut to the date.
    for (DWORD i = 0; i < recCountOfCall; ++i) {
        if (srcDataLenList[i] <= maxLen + 1)
            continue;
        char* const text = srcDataList[i];
        const auto* const bytes = reinterpret_cast<const unsigned char*>(text);
        unsigned int cut = maxLen;
        while (_ismbstrail(bytes, bytes + cut) != 0) // no half character remains
            --cut;
        text[cut] = '\0';
        for (unsigned int pos = minLen; pos < cut; ++pos) {
            if (text[pos] == SCKZCoreCom::CHAR_SPACE) {
                text[pos] = '\0';
                break;
            }
        }
    }
    return true;
}

std::unique_ptr<VCBtnClass> CBUIDataMngr::CreateBtnClassBasedOnDataType(SCDeclareConstant::EDataType dataType,
                                                                        DWORD btnClassID, DWORD fldID) const
{
    if (srcDataMngr == nullptr || dataType == SCDeclareConstant::DATATYPE_UNSETTING)
        return nullptr;
    const char* const empValAlias = srcDataMngr->GetDefEmpValName();
    switch (dataType) {
    case SCDeclareConstant::DATATYPE_TEXT:
        return std::make_unique<CBtnClass>(btnClassID, fldID, empValAlias, srcDataMngr, rpLink);
    case SCDeclareConstant::DATATYPE_NUM:
        return std::make_unique<CNumBtnClass>(btnClassID, fldID, empValAlias, srcDataMngr, rpLink);
    case SCDeclareConstant::DATATYPE_DATE:
        return std::make_unique<CDateBtnClass>(btnClassID, fldID, empValAlias, srcDataMngr, rpLink);
    case SCDeclareConstant::DATATYPE_TIME:
        return std::make_unique<CTimeBtnClass>(btnClassID, fldID, empValAlias, srcDataMngr, rpLink);
    default:
        throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_DATATYPE, SRC_FILE,
                             "NSKZ::NSKZCore::CBUIDataMngr::CreateBtnClassBasedOnDataType", __LINE__);
    }
}

} // namespace NSKZ::NSKZCore
