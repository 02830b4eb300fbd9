#include "CSumValueCacheMngr.h"

#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "IBnLink.h"
#include "IRpLink.h"
#include "SCKZCoreCom.h"
#include "VCBtnClass.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace NSKZ::NSKZCore {

namespace {

// Lists of worths that are kept: as many as conditions of different kinds are likely to ask after one press.
constexpr std::size_t KEPT_WORTH_LISTS = 16;

// Records whose cells are fetched from the table at a time: the cells stay in the nearest cache.
constexpr DWORD CHUNK_SIZE = 2048;

} // namespace

CSumValueCacheMngr::CSumValueCacheMngr(const CBUIDataMngr& ownerEnv) : owner(&ownerEnv) {}

CSumValueCacheMngr::CSumValueCacheMngr(const CSumValueCacheMngr& other)
    : ISumValueMngr(other), owner(other.owner), caches(other.caches)
{}

CSumValueCacheMngr& CSumValueCacheMngr::operator=(const CSumValueCacheMngr& other)
{
    if (this != &other) {
        std::map<DWORD, CSumValueCache> copied(other.caches);
        caches.swap(copied);
        keptWorths.clear();
        owner = other.owner;
    }
    currentTargetClassID = 0;
    targetRecCount = 0;
    return *this;
}

void CSumValueCacheMngr::TakeOver(CSumValueCacheMngr&& other) noexcept
{
    caches.swap(other.caches);
    keptWorths.clear();
    currentTargetClassID = 0;
    targetRecCount = 0;
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
    const DWORD numCount = GetNumCount(*coreSumMngr, numID, scratchList.get(), count);
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
    const DWORD numCount = GetNumCount(*coreSumMngr, numID, scratchList.get(), count);
    if (cache.GetSumValue(btnID, numID, known) && known->hasSum && known->sum != sum)
        DropWorths(btnClassID); // a host's sum manager has other numbers by now
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
    MakeValuesKnown(btnClassID, btnIDs, numID, true, false);
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

const CBtnWorthList* CSumValueCacheMngr::GetBtnWorths(SCBUICoreCom::ESumMethodForCnd method, DWORD btnClassID,
                                                      const std::vector<DWORD>& btnIDs, DWORD numID) const
{
    using ESumMethodForCnd = SCBUICoreCom::ESumMethodForCnd;
    double total = 0.0;
    if (method == ESumMethodForCnd::Ratio) {
        if (!GetTotalValue(btnClassID, numID, total))
            return nullptr;
    } else if (method != ESumMethodForCnd::Sum && method != ESumMethodForCnd::Count &&
               method != ESumMethodForCnd::Average) {
        return nullptr;
    }
    for (const SKeptWorths& kept : keptWorths) {
        if (kept.btnClassID == btnClassID && kept.method == method && kept.numID == numID &&
            std::memcmp(&kept.total, &total, sizeof total) == 0 && kept.worths.GetBtnIDs() == btnIDs)
            return &kept.worths;
    }

    MakeValuesKnown(btnClassID, btnIDs, numID, method != ESumMethodForCnd::Count,
                    method == ESumMethodForCnd::Count || method == ESumMethodForCnd::Average);
    CBtnWorthList worths(btnIDs);
    for (const DWORD btnID : btnIDs) {
        double value = 0.0;
        DWORD count = 0;
        const bool isKnown =
            method == ESumMethodForCnd::Count     ? GetCountValue(btnClassID, btnID, numID, count)
            : method == ESumMethodForCnd::Average ? GetAverageValue(btnClassID, btnID, numID, value)
                                                  : GetSumValue(btnClassID, btnID, numID, value);
        if (!isKnown)
            return nullptr;
        worths.Add(method == ESumMethodForCnd::Count   ? static_cast<double>(count)
                   : method == ESumMethodForCnd::Ratio ? value / total
                                                       : value);
    }
    keptWorths.push_front(SKeptWorths{btnClassID, method, numID, total, std::move(worths)});
    if (keptWorths.size() > KEPT_WORTH_LISTS)
        keptWorths.pop_back();
    return &keptWorths.front().worths;
}

// Going through the target records once costs about as much for a record as asking for a button alone costs
// for each record of the button.
bool CSumValueCacheMngr::IsOnePassCheaper(DWORD btnClassID, const std::vector<DWORD>& btnIDs) const
{
    if (targetRecCount == owner->GetRecCountOfSrcData())
        return false; // the table has the records of each button together
    DWORD recCount = 0;
    for (const DWORD btnID : btnIDs) {
        DWORD recCountOfBtn = 0;
        if (owner->rpLink->GetRecCount(btnClassID, btnID, recCountOfBtn))
            recCount += recCountOfBtn;
        if (recCount >= targetRecCount)
            return true;
    }
    return false;
}

void CSumValueCacheMngr::MakeValuesKnown(DWORD btnClassID, const std::vector<DWORD>& btnIDs, DWORD numID,
                                         bool sums, bool counts) const
{
    CSumValueCache& cache = GetSumValueCacheObjConstRef(btnClassID);
    const VCBtnClass* btnClass = owner->FindBtnClass(btnClassID);
    if (btnClass == nullptr)
        return;
    std::vector<DWORD> unknownIDs; // of buttons that there are, so that what goes by identifier stays short
    DWORD endID = 0;
    for (const DWORD btnID : btnIDs) {
        const CSumValue* known = nullptr;
        if (!SCBUICoreCom::IsSrcBtn(btnID) || !btnClass->ExistTheBtn(btnID) ||
            (cache.GetSumValue(btnID, numID, known) && (!sums || known->hasSum) &&
             (!counts || known->hasCount)))
            continue;
        unknownIDs.push_back(btnID);
        endID = std::max(endID, btnID + 1);
    }
    const CCoreSumMngr* coreSumMngr = nullptr;
    if (unknownIDs.size() < 2 || !PrepareQuery(btnClassID, btnClass, coreSumMngr) ||
        !owner->bnLink->ExistFld(btnClassID) || !IsOnePassCheaper(btnClassID, unknownIDs))
        return;

    // The target records, sorted by button: counted first, then put in their places. What is no button that
    // is asked for has a place behind them.
    DWORD* const placeOfRec = mergeBuffers[0].get();
    firstRecOfBtn.assign(std::size_t{endID} + 1, 0);
    for (DWORD done = 0; done < targetRecCount;) {
        const DWORD end = done + std::min(targetRecCount - done, CHUNK_SIZE);
        owner->bnLink->GetBtnIDsOfRecs(btnClassID, end - done, targetRecList.get() + done, placeOfRec + done);
        for (; done < end; ++done) {
            placeOfRec[done] = std::min(placeOfRec[done], endID);
            ++firstRecOfBtn[placeOfRec[done]];
        }
    }
    DWORD offset = 0;
    for (DWORD& first : firstRecOfBtn)
        offset += std::exchange(first, offset);
    DWORD* const recs = scratchList.get();
    for (DWORD i = 0; i < targetRecCount; ++i)
        recs[firstRecOfBtn[placeOfRec[i]]++] = targetRecList[i];
    // Each place is now the end of its button, and so the beginning of the next one.
    for (const DWORD btnID : unknownIDs) {
        const DWORD first = firstRecOfBtn[btnID - 1]; // 0 is no button
        const DWORD count = firstRecOfBtn[btnID] - first;
        const DWORD* const recsOfBtn = recs + first;
        if (sums) {
            cache.SetSumValue(btnID, numID,
                              coreSumMngr->GetSumValue(numID, SCSMCoreCom::KINDOFSUM_SUM, recsOfBtn, count));
        }
        if (counts)
            cache.SetCountValue(btnID, numID, GetNumCount(*coreSumMngr, numID, recsOfBtn, count));
    }
}

void CSumValueCacheMngr::DropWorths(DWORD btnClassID) const noexcept
{
    keptWorths.remove_if([=](const SKeptWorths& kept) { return kept.btnClassID == btnClassID; });
}

DWORD CSumValueCacheMngr::GetNumCount(const CCoreSumMngr& coreSumMngr, DWORD numID, const DWORD* recs,
                                      DWORD count)
{
    // A host's sum manager may answer what no count can be; converting that would be undefined.
    const double numCount = coreSumMngr.GetSumValue(numID, SCSMCoreCom::KINDOFSUM_COUNT, recs, count);
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
    keptWorths.remove_if(
        [=](const SKeptWorths& kept) { return kept.btnClassID == btnClassID && kept.worths.Holds(btnID); });
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
    keptWorths.remove_if([=](const SKeptWorths& kept) { return kept.numID == numID; });
}

void CSumValueCacheMngr::ClearSumValueCache(DWORD btnClassID)
{
    GetSumValueCacheObjRef(btnClassID).Clear();
    DropWorths(btnClassID);
    if (btnClassID == currentTargetClassID) {
        currentTargetClassID = 0;
        targetRecCount = 0;
    }
}

void CSumValueCacheMngr::ClearSumValueCache()
{
    caches.clear();
    keptWorths.clear();
    currentTargetClassID = 0;
}

} // namespace NSKZ::NSKZCore
