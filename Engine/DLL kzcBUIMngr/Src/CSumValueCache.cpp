#include "CSumValueCache.h"

namespace NSKZ::NSKZCore {

namespace {

// How long the array of a numeric item may be: so many entries however few there are, and so many for each.
constexpr std::size_t ROOM_OF_FEW = 1024;
constexpr std::size_t ROOM_FOR_EACH = 8;

bool GetTotal(const std::map<DWORD, double>& totals, DWORD numID, double& value)
{
    const auto found = totals.find(numID);
    if (found == totals.end())
        return false;
    value = found->second;
    return true;
}

} // namespace

CSumValueCache::CSumValueCache() = default;
CSumValueCache::CSumValueCache(const CSumValueCache& other) = default;
CSumValueCache::CSumValueCache(CSumValueCache&& other) noexcept = default;
CSumValueCache& CSumValueCache::operator=(const CSumValueCache& other) = default;
CSumValueCache& CSumValueCache::operator=(CSumValueCache&& other) noexcept = default;
CSumValueCache::~CSumValueCache() = default;

CSumValue* CSumValueCache::CValuesOfItem::Find(DWORD btnID) noexcept
{
    if (btnID < dense.size() && dense[btnID].isThere)
        return &dense[btnID].value;
    if (others.empty())
        return nullptr;
    const auto found = others.find(btnID);
    return found == others.end() ? nullptr : &found->second;
}

CSumValue& CSumValueCache::CValuesOfItem::GetOrMake(DWORD btnID)
{
    if (CSumValue* const known = Find(btnID))
        return *known;
    if (btnID >= dense.size() && btnID < ROOM_OF_FEW + ROOM_FOR_EACH * denseCount)
        dense.resize(std::size_t{btnID} + 1);
    if (btnID >= dense.size())
        return others[btnID];
    dense[btnID].isThere = true;
    ++denseCount;
    return dense[btnID].value;
}

void CSumValueCache::CValuesOfItem::ForgetAll() noexcept
{
    for (SEntry& entry : dense)
        entry.value = CSumValue{};
    for (auto& [btnID, value] : others)
        value = CSumValue{};
}

void CSumValueCache::CValuesOfItem::Clear() noexcept
{
    dense.clear();
    denseCount = 0;
    others.clear();
}

bool CSumValueCache::GetSumValue(DWORD btnID, DWORD numID, const CSumValue*& value) const
{
    const auto ofItem = valuesOfItem.find(numID);
    if (ofItem == valuesOfItem.end())
        return false;
    const CSumValue* const known = const_cast<CValuesOfItem&>(ofItem->second).Find(btnID);
    if (known == nullptr)
        return false;
    value = known;
    return true;
}

void CSumValueCache::SetSumValue(DWORD btnID, DWORD numID, const CSumValue& value)
{
    valuesOfItem[numID].GetOrMake(btnID) = value;
}

void CSumValueCache::SetSumValue(DWORD btnID, DWORD numID, double sum)
{
    CSumValue& value = valuesOfItem[numID].GetOrMake(btnID);
    value.hasSum = true;
    value.sum = sum;
}

void CSumValueCache::SetCountValue(DWORD btnID, DWORD numID, DWORD count)
{
    CSumValue& value = valuesOfItem[numID].GetOrMake(btnID);
    value.hasCount = true;
    value.count = count;
}

bool CSumValueCache::GetTotalValue(DWORD numID, double& value) const
{
    return GetTotal(totals, numID, value);
}

void CSumValueCache::SetTotalValue(DWORD numID, double value)
{
    totals[numID] = value;
}

bool CSumValueCache::GetTotalAbsoluteValue(DWORD numID, double& value) const
{
    return GetTotal(absoluteTotals, numID, value);
}

void CSumValueCache::SetTotalAbsoluteValue(DWORD numID, double value)
{
    absoluteTotals[numID] = value;
}

void CSumValueCache::ClearSumValue(DWORD btnID)
{
    for (auto& [numID, values] : valuesOfItem) {
        if (CSumValue* const known = values.Find(btnID))
            *known = CSumValue{};
    }
}

void CSumValueCache::ClearTotalValue()
{
    totals.clear();
    absoluteTotals.clear();
}

void CSumValueCache::ClearSumValueAndTotalValue(DWORD numID)
{
    const auto ofItem = valuesOfItem.find(numID);
    if (ofItem != valuesOfItem.end())
        ofItem->second.ForgetAll();
    totals.erase(numID);
    absoluteTotals.erase(numID);
}

void CSumValueCache::Clear() noexcept
{
    for (auto& [numID, values] : valuesOfItem)
        values.Clear();
    totals.clear();
    absoluteTotals.clear();
}

} // namespace NSKZ::NSKZCore
