#ifndef CSUMVALUECACHE_H
#define CSUMVALUECACHE_H

#include "KzcBUIMngrAPI.h"

#include <cstddef>
#include <map>
#include <unordered_map>

namespace NSKZ::NSKZCore {

// What is known of one button and one numeric item.
struct CSumValue
{
    bool hasSum = false;
    bool hasCount = false;
    double sum = 0.0;
    DWORD count = 0;
};

// The sums known of one button class: by button and numeric item, and the totals of the class by numeric
// item. A plain value: copies are independent.
class KZCBUIMNGR_API CSumValueCache
{
public:
    CSumValueCache();
    CSumValueCache(const CSumValueCache& other);
    CSumValueCache(CSumValueCache&& other) noexcept;
    CSumValueCache& operator=(const CSumValueCache& other);
    CSumValueCache& operator=(CSumValueCache&& other) noexcept;
    ~CSumValueCache();

    // The entry of the pair, with whatever it knows; false if there is none. It holds until the cache
    // changes.
    bool GetSumValue(DWORD btnID, DWORD numID, const CSumValue*& value) const;
    // Stores the whole entry; the sum alone; the count alone. The two last leave the other half as it is.
    void SetSumValue(DWORD btnID, DWORD numID, const CSumValue& value);
    void SetSumValue(DWORD btnID, DWORD numID, double sum);
    void SetCountValue(DWORD btnID, DWORD numID, DWORD count);

    // The totals of the class; false if unknown.
    bool GetTotalValue(DWORD numID, double& value) const;
    void SetTotalValue(DWORD numID, double value);
    bool GetTotalAbsoluteValue(DWORD numID, double& value) const;
    void SetTotalAbsoluteValue(DWORD numID, double value);

    // Forgets what is known of a button; of the totals; of a numeric item. Entries keep their place for what
    // comes next. The first and the last walk all entries.
    void ClearSumValue(DWORD btnID);
    void ClearTotalValue();
    void ClearSumValueAndTotalValue(DWORD numID);

private:
    struct SKey
    {
        DWORD btnID;
        DWORD numID;
        bool operator==(const SKey& other) const noexcept
        {
            return btnID == other.btnID && numID == other.numID;
        }
    };
    struct SKeyHash
    {
        std::size_t operator()(const SKey& key) const noexcept;
    };

    std::unordered_map<SKey, CSumValue, SKeyHash> values;
    std::map<DWORD, double> totals;         // by numeric item
    std::map<DWORD, double> absoluteTotals; // by numeric item
};

} // namespace NSKZ::NSKZCore

#endif
