#ifndef CSUMVALUECACHE_H
#define CSUMVALUECACHE_H

#include "KzcBUIMngrAPI.h"

#include <cstddef>
#include <map>
#include <unordered_map>
#include <vector>

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
    // comes next. The last walks the entries of the item.
    void ClearSumValue(DWORD btnID);
    void ClearTotalValue();
    void ClearSumValueAndTotalValue(DWORD numID);
    // Forgets all, entries too, and keeps the room.
    void Clear() noexcept;

private:
    // The entries of a numeric item. Those of source buttons, whose identifiers are dense, stand in an array
    // by identifier as far as it stays in proportion to their number, the others in a hash map.
    class CValuesOfItem
    {
    public:
        CSumValue* Find(DWORD btnID) noexcept;
        CSumValue& GetOrMake(DWORD btnID);
        void ForgetAll() noexcept; // the entries stay
        void Clear() noexcept;     // the entries go

    private:
        struct SEntry
        {
            CSumValue value;
            bool isThere = false;
        };
        std::vector<SEntry> dense;
        std::size_t denseCount = 0;
        std::unordered_map<DWORD, CSumValue> others;
    };

    std::map<DWORD, CValuesOfItem> valuesOfItem; // by numeric item
    std::map<DWORD, double> totals;              // by numeric item
    std::map<DWORD, double> absoluteTotals;      // by numeric item
};

} // namespace NSKZ::NSKZCore

#endif
