#include "CSumValueCacheMngr.h"

#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "SCKZCoreCom.h"
#include "VCBtnClass.h"

#include <cmath>
#include <cstring>

namespace NSKZ::NSKZCore {

CSumValueCacheMngr::CSumValueCacheMngr(const CBUIDataMngr& ownerEnv) : owner(&ownerEnv) {}

CSumValueCacheMngr::CSumValueCacheMngr(const CSumValueCacheMngr& other)
    : ISumValueMngr(other), owner(other.owner), caches(other.caches)
{}

CSumValueCacheMngr& CSumValueCacheMngr::operator=(const CSumValueCacheMngr& other)
{
    if (this != &other) {
        std::map<DWORD, CSumValueCache> copied(other.caches);
        caches.swap(copied);
        owner = other.owner;
    }
    currentTargetClassID = 0;
    targetRecCount = 0;
    return *this;
}

CSumValueCacheMngr::~CSumValueCacheMngr() = default;

CSumValueCache& CSumValueCacheMngr::GetSumValueCacheObjConstRef(DWORD btnClassID) const
{
    return caches[btnClassID];
}

CSumValueCache& CSumValueCacheMngr::GetSumValueCacheObjRef(DWORD btnClassID)
{
    return GetSumValueCacheObjConstRef(btnClassID);
}

void CSumValueCacheMngr::BuildRecListArea() const
{
    const DWORD recCount = owner->GetRecCountOfSrcData();
    if (recCount <= areaSize)
        return;
    areaSize = 0;
    currentTargetClassID = 0;
    targetRecCount = 0;
    for (RecArea* const area : {&scratchList, &targetRecList, &mergeBuffers[0], &mergeBuffers[1]}) {
        area->reset();
        area->reset(new DWORD[recCount]);
    }
    areaSize = recCount;
}

bool CSumValueCacheMngr::BuildTargetRecListOfBtnClass(DWORD btnClassID) const
{
    if (btnClassID == SCBUICoreCom::BTNCLS_ID_UNSETTING)
        return false;
    if (btnClassID == currentTargetClassID)
        return true;
    const bool built = owner->GetTargetRecListOfBtnClass(btnClassID, targetRecList.get(), targetRecCount);
    currentTargetClassID = btnClassID;
    return built;
}

bool CSumValueCacheMngr::PrepareQuery(DWORD btnClassID, const VCBtnClass*& btnClass,
                                      const CCoreSumMngr*& coreSumMngr) const
{
    coreSumMngr = owner->GetCoreSumMngrPtr();
    if (coreSumMngr == nullptr)
        return false;
    BuildRecListArea();
    if (!BuildTargetRecListOfBtnClass(btnClassID))
        return false;
    btnClass = owner->FindBtnClass(btnClassID);
    return btnClass != nullptr;
}

bool CSumValueCacheMngr::CollectRecs(const VCBtnClass& btnClass, DWORD btnID, DWORD& count) const
{
    // The class may swap the arrays it is given; these are copies of the pointers.
    DWORD* recList = scratchList.get();
    DWORD* buffers[] = {mergeBuffers[0].get(), mergeBuffers[1].get()};
    count = 0;
    if (!btnClass.GetRecListThatRelatesToBtn(btnID, recList, count, buffers))
        return false;
    if (recList != scratchList.get() && count != 0)
        std::memcpy(scratchList.get(), recList, count * sizeof(DWORD));
    if (targetRecCount != owner->GetRecCountOfSrcData())
        SCKZCoreCom::MergeRecListByANDCnd(scratchList.get(), count, targetRecList.get(), targetRecCount);
    return true;
}

bool CSumValueCacheMngr::CollectTargetRecs(DWORD btnClassID, DWORD btnID, const CCoreSumMngr*& coreSumMngr,
                                           DWORD& count) const
{
    const VCBtnClass* btnClass = nullptr;
    return PrepareQuery(btnClassID, btnClass, coreSumMngr) && CollectRecs(*btnClass, btnID, count);
}

bool CSumValueCacheMngr::GetSumValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const
{
    CSumValueCache& cache = GetSumValueCacheObjConstRef(btnClassID);
    const CSumValue* known = nullptr;
    if (cache.GetSumValue(btnID, numID, known) && known->hasSum) {
        value = known->sum;
        return true;
    }
    const CCoreSumMngr* coreSumMngr = nullptr;
    DWORD count = 0;
    if (!CollectTargetRecs(btnClassID, btnID, coreSumMngr, count))
        return false;
    const double sum = coreSumMngr->GetSumValue(numID, SCSMCoreCom::KINDOFSUM_SUM, scratchList.get(), count);
    cache.SetSumValue(btnID, numID, sum);
    value = sum;
    return true;
}

bool CSumValueCacheMngr::GetCountValue(DWORD btnClassID, DWORD btnID, DWORD numID, DWORD& value) const
{
    CSumValueCache& cache = GetSumValueCacheObjConstRef(btnClassID);
    const CSumValue* known = nullptr;
    if (cache.GetSumValue(btnID, numID, known) && known->hasCount) {
        value = known->count;
        return true;
    }
    const CCoreSumMngr* coreSumMngr = nullptr;
    DWORD count = 0;
    if (!CollectTargetRecs(btnClassID, btnID, coreSumMngr, count))
        return false;
    const DWORD numCount = GetNumCount(*coreSumMngr, numID, count);
    cache.SetCountValue(btnID, numID, numCount);
    value = numCount;
    return true;
}

bool CSumValueCacheMngr::GetAverageValue(DWORD btnClassID, DWORD btnID, DWORD numID, double& value) const
{
    CSumValueCache& cache = GetSumValueCacheObjConstRef(btnClassID);
    const CSumValue* known = nullptr;
    if (cache.GetSumValue(btnID, numID, known) && known->hasSum && known->hasCount) {
        value = known->sum / known->count;
        return true;
    }
    const CCoreSumMngr* coreSumMngr = nullptr;
    DWORD count = 0;
    if (!CollectTargetRecs(btnClassID, btnID, coreSumMngr, count))
        return false;
    const double sum = coreSumMngr->GetSumValue(numID, SCSMCoreCom::KINDOFSUM_SUM, scratchList.get(), count);
    const DWORD numCount = GetNumCount(*coreSumMngr, numID, count);
    cache.SetSumValue(btnID, numID, sum);
    cache.SetCountValue(btnID, numID, numCount);
    value = sum / numCount;
    return true;
}

bool CSumValueCacheMngr::GetEachValue(DWORD btnClassID, DWORD btnID, DWORD numID,
                                      std::vector<double>& values) const
{
    values.clear();
    GetSumValueCacheObjConstRef(btnClassID);
    const CCoreSumMngr* coreSumMngr = nullptr;
    DWORD count = 0;
    if (!CollectTargetRecs(btnClassID, btnID, coreSumMngr, count))
        return false;
    values.resize(count);
    for (DWORD i = 0; i < count; ++i)
        values[i] = coreSumMngr->GetRecordValue(numID, scratchList[i]);
    return true;
}

bool CSumValueCacheMngr::GetTotalValue(DWORD btnClassID, DWORD numID, double& value) const
{
    const CSumValueCache& cache = GetSumValueCacheObjConstRef(btnClassID);
    return cache.GetTotalValue(numID, value) ||
           (CalcTotalValue(btnClassID, numID) && cache.GetTotalValue(numID, value));
}

bool CSumValueCacheMngr::GetTotalAbsoluteValue(DWORD btnClassID, DWORD numID, double& value) const
{
    const CSumValueCache& cache = GetSumValueCacheObjConstRef(btnClassID);
    return cache.GetTotalAbsoluteValue(numID, value) ||
           (CalcTotalValue(btnClassID, numID) && cache.GetTotalAbsoluteValue(numID, value));
}

bool CSumValueCacheMngr::CalcTotalValue(DWORD btnClassID, DWORD numID) const
{
    const VCBtnClass* btnClass = nullptr;
    const CCoreSumMngr* coreSumMngr = nullptr;
    if (!PrepareQuery(btnClassID, btnClass, coreSumMngr))
        return false;
    CSumValueCache& cache = GetSumValueCacheObjConstRef(btnClassID);
    std::vector<DWORD> btnIDs;
    btnClass->GetDisplayedBtnIDList(btnIDs);
    double value = 0.0;
    double total = 0.0;
    double totalAbsolute = 0.0;
    for (const DWORD btnID : btnIDs) {
        const CSumValue* known = nullptr;
        DWORD count = 0;
        if (cache.GetSumValue(btnID, numID, known) && known->hasSum) {
            value = known->sum;
        } else if (CollectRecs(*btnClass, btnID, count)) {
            value = coreSumMngr->GetSumValue(numID, SCSMCoreCom::KINDOFSUM_SUM, scratchList.get(), count);
            cache.SetSumValue(btnID, numID, value);
        }
        if (_isnan(value) == 0) {
            total += value;
            totalAbsolute += std::fabs(value);
        }
    }
    cache.SetTotalValue(numID, total);
    cache.SetTotalAbsoluteValue(numID, totalAbsolute);
    return true;
}

DWORD CSumValueCacheMngr::GetNumCount(const CCoreSumMngr& coreSumMngr, DWORD numID, DWORD count) const
{
    // A host's sum manager may answer what no count can be; converting that would be undefined.
    const double numCount =
        coreSumMngr.GetSumValue(numID, SCSMCoreCom::KINDOFSUM_COUNT, scratchList.get(), count);
    return numCount > 0.0 && numCount < 4294967296.0 ? static_cast<DWORD>(numCount) : 0;
}

bool CSumValueCacheMngr::GetWeightedAvgValue(DWORD, DWORD, DWORD, double&) const
{
    return false;
}

bool CSumValueCacheMngr::GetMaxValue(DWORD, DWORD, DWORD, double&) const
{
    return false;
}

bool CSumValueCacheMngr::GetMinValue(DWORD, DWORD, DWORD, double&) const
{
    return false;
}

bool CSumValueCacheMngr::GetLatestValue(DWORD, DWORD, DWORD, double&) const
{
    return false;
}

bool CSumValueCacheMngr::GetAbsoluteValue(DWORD, DWORD, DWORD, double&) const
{
    return false;
}

bool CSumValueCacheMngr::ExistNumDataItem(DWORD numID) const
{
    const CCoreSumMngr* const coreSumMngr = owner->GetCoreSumMngrPtr();
    return coreSumMngr != nullptr && coreSumMngr->IsExistItem(numID);
}

void CSumValueCacheMngr::ClearSumValue(DWORD btnClassID, DWORD btnID)
{
    GetSumValueCacheObjRef(btnClassID).ClearSumValue(btnID);
}

void CSumValueCacheMngr::ClearTotalValue(DWORD btnClassID)
{
    GetSumValueCacheObjRef(btnClassID).ClearTotalValue();
}

void CSumValueCacheMngr::ClearTotalValue()
{
    for (auto& [btnClassID, cache] : caches)
        cache.ClearTotalValue();
}

void CSumValueCacheMngr::ClearSumValueAndTotalValue(DWORD numID)
{
    for (auto& [btnClassID, cache] : caches)
        cache.ClearSumValueAndTotalValue(numID);
}

void CSumValueCacheMngr::ClearSumValueCache(DWORD btnClassID)
{
    GetSumValueCacheObjRef(btnClassID) = CSumValueCache();
    if (btnClassID == currentTargetClassID) {
        currentTargetClassID = 0;
        targetRecCount = 0;
    }
}

void CSumValueCacheMngr::ClearSumValueCache()
{
    caches.clear();
    currentTargetClassID = 0;
}

} // namespace NSKZ::NSKZCore
