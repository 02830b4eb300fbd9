// Dates and times: how they are grouped and shown, and what is asked of them.

#include "CBUIDataMngr.h"

#include "CDateBtnClass.h"
#include "CTimeBtnClass.h"
#include "IBnLink.h"
#include "IRpLink.h"
#include "SCKZCoreCom.h"

#include <algorithm>
#include <cstdio>

namespace NSKZ::NSKZCore {

template <class TBtnClass>
TBtnClass* CBUIDataMngr::FindBtnClassOfType(DWORD btnClassID) const
{
    return dynamic_cast<TBtnClass*>(FindBtnClass(btnClassID));
}

// --- Display forms

template <class TBtnClass>
bool CBUIDataMngr::GetDispFormOfBtnClass(DWORD btnClassID, typename TBtnClass::SDispForm& dispForm) const
{
    const auto* const btnClass = FindBtnClassOfType<TBtnClass>(btnClassID);
    if (btnClass == nullptr)
        return false;
    dispForm = btnClass->GetDispForm();
    return true;
}

template <class TBtnClass>
bool CBUIDataMngr::SetDispFormOfBtnClass(DWORD btnClassID, const typename TBtnClass::SDispForm& dispForm)
{
    auto* const btnClass = FindBtnClassOfType<TBtnClass>(btnClassID);
    if (btnClass == nullptr)
        return false;
    if (TBtnClass::IsPatternTerminated(dispForm) && dispForm == btnClass->GetDispForm())
        return true;
    const bool wasSelected = HasSelection();
    return ChangeSpBtn([&] {
        const bool isSet = TBtnClass::IsSet(dispForm);
        if (isSet)
            btnClass->SetDispForm(dispForm);
        CloseChangeOfSpBtn(btnClassID, wasSelected);
        return isSet;
    });
}

bool CBUIDataMngr::GetDispFormOfDateBtnClass(DWORD btnClassID,
                                             SCDeclareConstant::SDateDispForm& dispForm) const
{
    return GetDispFormOfBtnClass<CDateBtnClass>(btnClassID, dispForm);
}

bool CBUIDataMngr::GetDispFormOfTimeBtnClass(DWORD btnClassID,
                                             SCDeclareConstant::STimeDispForm& dispForm) const
{
    return GetDispFormOfBtnClass<CTimeBtnClass>(btnClassID, dispForm);
}

bool CBUIDataMngr::SetDispFormOfDateBtnClass(DWORD btnClassID,
                                             const SCDeclareConstant::SDateDispForm& dispForm)
{
    return SetDispFormOfBtnClass<CDateBtnClass>(btnClassID, dispForm);
}

bool CBUIDataMngr::SetDispFormOfTimeBtnClass(DWORD btnClassID,
                                             const SCDeclareConstant::STimeDispForm& dispForm)
{
    return SetDispFormOfBtnClass<CTimeBtnClass>(btnClassID, dispForm);
}

// --- Queries

template <class TBtnClass>
bool CBUIDataMngr::GetGroupedBtnIDListsOfBtnClass(DWORD btnClassID, VCDate::EDateType dateType,
                                                  CDateGroupMap& groups) const
{
    const auto* const btnClass = FindBtnClassOfType<TBtnClass>(btnClassID);
    return btnClass != nullptr && btnClass->GetGroupedBtnIDLists(dateType, groups);
}

bool CBUIDataMngr::GetGroupedBtnIDListsOfDateBtnClass(DWORD btnClassID, VCDate::EDateType dateType,
                                                      CDateGroupMap& groups) const
{
    return GetGroupedBtnIDListsOfBtnClass<CDateBtnClass>(btnClassID, dateType, groups);
}

bool CBUIDataMngr::GetGroupedBtnIDListsOfTimeBtnClass(DWORD btnClassID, VCDate::EDateType dateType,
                                                      CDateGroupMap& groups) const
{
    return GetGroupedBtnIDListsOfBtnClass<CTimeBtnClass>(btnClassID, dateType, groups);
}

bool CBUIDataMngr::GetGroupedBtnIDListOfDateBtnClass(DWORD btnClassID, const VCDate& date,
                                                     SCKZCoreCom::ECmpOperator cmpOperator,
                                                     std::vector<DWORD>& btnIDs) const
{
    const auto* const btnClass = FindBtnClassOfType<CDateBtnClass>(btnClassID);
    return btnClass != nullptr && btnClass->GetGroupedBtnIDList(date, cmpOperator, btnIDs);
}

bool CBUIDataMngr::GetGroupedRecListOfDateBtnClass(DWORD btnClassID, const VCDate& date,
                                                   SCKZCoreCom::ECmpOperator cmpOperator,
                                                   SRecordList& recList) const
{
    std::vector<DWORD> btnIDs;
    return GetGroupedBtnIDListOfDateBtnClass(btnClassID, date, cmpOperator, btnIDs) &&
           GetRecListThatRelatesToBtns(btnClassID, btnIDs, recList.recList, recList.recCount);
}

bool CBUIDataMngr::GetLatestDateOfDateBtnClass(DWORD btnClassID, const VCDate*& date) const
{
    const auto* const btnClass = FindBtnClassOfType<CDateBtnClass>(btnClassID);
    const VCDate* const latest = btnClass == nullptr ? nullptr : btnClass->GetLatestDate();
    if (latest == nullptr)
        return false;
    date = latest;
    return true;
}

bool CBUIDataMngr::GetLatestRecNumOfDateBtnClass(DWORD btnClassID, const DWORD* recListOfHost,
                                                 DWORD recListCount, DWORD& recNum,
                                                 unsigned long long& dateNum) const
{
    const auto* const btnClass = FindBtnClassOfType<CDateBtnClass>(btnClassID);
    const auto isNoRec = [this](DWORD listed) { return listed >= recCount; };
    if (btnClass == nullptr || std::any_of(recListOfHost, recListOfHost + recListCount, isNoRec))
        return false;
    std::vector<DWORD> btnIDs;
    DWORD latestBtnID = SCBUICoreCom::BTN_ID_UNSETTING;
    if (!bnLink->GetBtnIDListOfRecList(btnClassID, recListCount, recListOfHost, btnIDs) ||
        !btnClass->GetLatestBtn(btnIDs.data(), static_cast<DWORD>(btnIDs.size()), latestBtnID, dateNum))
        return false;
    DWORD* const recs = GetWorkArea(0);
    DWORD count = 0;
    if (!rpLink->GetRecList(btnClassID, latestBtnID, recs, count) ||
        SCKZCoreCom::MergeRecListByANDCnd(recs, count, recListOfHost, recListCount) == 0)
        return false;
    recNum = recs[count - 1];
    return true;
}

bool CBUIDataMngr::GetSymbolListOfDateBtnClasses(std::map<DWORD, std::string>& symbols) const
{
    std::map<DWORD, std::string> made;
    for (const auto& [btnClassID, btnClass] : btnClasses) {
        if (btnClass->GetBtnClassType() != SCBUICoreCom::BTNCLSTYPE_DATE)
            continue;
        char symbol[32];
        std::snprintf(symbol, sizeof symbol, STR_FORMAT_DATEBTNCLS_SYMBOL,
                      static_cast<unsigned long>(btnClassID));
        made.emplace_hint(made.end(), btnClassID, symbol);
    }
    symbols.swap(made);
    return true;
}

} // namespace NSKZ::NSKZCore
