#include "CSumValueCache.h"

#include <cstdint>

namespace NSKZ::NSKZCore {

namespace {

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

std::size_t CSumValueCache::SKeyHash::operator()(const SKey& key) const noexcept
{
    // Fibonacci hashing: neighbouring identifiers spread over all buckets.
    const std::uint64_t both = std::uint64_t{key.numID} << 32 | key.btnID;
    return static_cast<std::size_t>(both * 0x9E3779B97F4A7C15ULL >> 16);
}

bool CSumValueCache::GetSumValue(DWORD btnID, DWORD numID, const CSumValue*& value) const
{
    const auto found = values.find(SKey{btnID, numID});
    if (found == values.end())
        return false;
    value = &found->second;
    return true;
}

void CSumValueCache::SetSumValue(DWORD btnID, DWORD numID, const CSumValue& value)
{
    values.insert_or_assign(SKey{btnID, numID}, value);
}

void CSumValueCache::SetSumValue(DWORD btnID, DWORD numID, double sum)
{
    CSumValue& value = values[SKey{btnID, numID}];
    value.hasSum = true;
    value.sum = sum;
}

void CSumValueCache::SetCountValue(DWORD btnID, DWORD numID, DWORD count)
{
    CSumValue& value = values[SKey{btnID, numID}];
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
    for (auto& [key, value] : values) {
        if (key.btnID == btnID)
            value = CSumValue{};
    }
}

void CSumValueCache::ClearTotalValue()
{
    totals.clear();
    absoluteTotals.clear();
}

void CSumValueCache::ClearSumValueAndTotalValue(DWORD numID)
{
    for (auto& [key, value] : values) {
        if (key.numID == numID)
            value = CSumValue{};
    }
    totals.erase(numID);
    absoluteTotals.erase(numID);
}

} // namespace NSKZ::NSKZCore
