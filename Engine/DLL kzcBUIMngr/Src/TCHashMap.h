#ifndef TCHASHMAP_H
#define TCHASHMAP_H

#include "KzcPlatform.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace NSKZ::NSKZCore {

// A chained hash map whose entries stand side by side in one array instead of in a heap block each: a
// registry of a million entries is built without a million allocations and looked up with one miss fewer. It
// begins with 8 buckets and doubles them before the load passes 1. It holds fewer than 4294967295 entries.
//
// THash: static std::uint64_t Hash(const TKey&) noexcept and static bool Equal(const TKey&, const TKey&)
// noexcept. References and iteration order hold until the next insertion or removal.
template <class TKey, class TValue, class THash>
class TCHashMap
{
public:
    struct SEntry
    {
        TKey key;
        TValue value;

    private:
        friend class TCHashMap;
        SEntry(TKey&& keyOfEntry, TValue&& valueOfEntry, std::uint32_t hashOfKey, std::uint32_t nextInBucket)
            : key(std::move(keyOfEntry)), value(std::move(valueOfEntry)), hash(hashOfKey), next(nextInBucket)
        {}
        std::uint32_t hash;
        std::uint32_t next;
    };

    TCHashMap() = default;

    std::size_t GetSize() const noexcept { return entries.size(); }

    // The entries in no order that a caller may rely on.
    const std::vector<SEntry>& GetEntries() const noexcept { return entries; }

    // Null if the key is absent.
    TValue* Find(const TKey& key) noexcept
    {
        const std::uint32_t position = FindPosition(key, Narrow(THash::Hash(key)));
        return position == NONE ? nullptr : &entries[position].value;
    }
    const TValue* Find(const TKey& key) const noexcept { return const_cast<TCHashMap*>(this)->Find(key); }

    // For whoever has many keys to look up or insert: fetch what is looked at first for a key, and what is
    // looked at then, into the cache, without waiting for it.
    void PrefetchBucket(const TKey& key) const noexcept
    {
        if (!buckets.empty())
            PrefetchMemory(&buckets[Narrow(THash::Hash(key)) & (buckets.size() - 1)]);
    }
    void PrefetchEntry(const TKey& key) const noexcept
    {
        if (buckets.empty())
            return;
        const std::uint32_t position = buckets[Narrow(THash::Hash(key)) & (buckets.size() - 1)];
        if (position != NONE)
            PrefetchMemory(&entries[position]);
    }

    // Makes room for one more entry, so that the next Insert cannot fail. Amortised constant.
    void ReserveForInsert()
    {
        if (buckets.empty())
            buckets.assign(INITIAL_BUCKETS, NONE);
        if (entries.size() == entries.capacity())
            entries.reserve(entries.empty() ? INITIAL_BUCKETS : entries.size() * 2);
        if (entries.size() + 1 > buckets.size())
            Rehash(buckets.size() * 2);
    }

    // Makes room for `count` entries in all, so that inserting them moves nothing.
    void Reserve(std::size_t count)
    {
        entries.reserve(count);
        std::size_t bucketCount = std::max(INITIAL_BUCKETS, buckets.size());
        while (bucketCount < count)
            bucketCount *= 2;
        if (bucketCount != buckets.size())
            Rehash(bucketCount);
    }

    // Returns false, with nothing changed, if the key is there. If memory is exhausted nothing changes.
    bool Insert(TKey key, TValue value)
    {
        if (Find(key) != nullptr)
            return false;
        InsertNew(std::move(key), std::move(value));
        return true;
    }

    // Insert for a key that is known to be absent.
    void InsertNew(TKey key, TValue value)
    {
        ReserveForInsert();
        const std::uint32_t hash = Narrow(THash::Hash(key));
        std::uint32_t& head = buckets[hash & (buckets.size() - 1)];
        entries.push_back(SEntry(std::move(key), std::move(value), hash, head));
        head = static_cast<std::uint32_t>(entries.size() - 1);
    }

    // Returns false if the key is absent.
    bool Erase(const TKey& key) noexcept
    {
        const std::uint32_t position = FindPosition(key, Narrow(THash::Hash(key)));
        if (position == NONE)
            return false;
        *FindLinkTo(position) = entries[position].next;
        const auto last = static_cast<std::uint32_t>(entries.size() - 1);
        if (position != last) {
            *FindLinkTo(last) = position;
            entries[position] = std::move(entries[last]);
        }
        entries.pop_back();
        return true;
    }

    void Clear() noexcept
    {
        entries.clear();
        buckets.clear();
    }

private:
    static constexpr std::uint32_t NONE = 0xFFFFFFFF;
    static constexpr std::size_t INITIAL_BUCKETS = 8;

    // A bucket is picked by the low bits; folding the high half in keeps what it tells.
    static std::uint32_t Narrow(std::uint64_t hash) noexcept
    {
        return static_cast<std::uint32_t>(hash ^ hash >> 32);
    }

    std::uint32_t FindPosition(const TKey& key, std::uint32_t hash) const noexcept
    {
        if (buckets.empty())
            return NONE;
        std::uint32_t position = buckets[hash & (buckets.size() - 1)];
        while (position != NONE &&
               (entries[position].hash != hash || !THash::Equal(entries[position].key, key)))
            position = entries[position].next;
        return position;
    }

    // The bucket or the entry that leads to the entry at `position`.
    std::uint32_t* FindLinkTo(std::uint32_t position) noexcept
    {
        std::uint32_t* link = &buckets[entries[position].hash & (buckets.size() - 1)];
        while (*link != position)
            link = &entries[*link].next;
        return link;
    }

    void Rehash(std::size_t bucketCount)
    {
        std::vector<std::uint32_t> grown(bucketCount, NONE);
        for (std::uint32_t i = 0; i < entries.size(); ++i) {
            std::uint32_t& head = grown[entries[i].hash & (bucketCount - 1)];
            entries[i].next = head;
            head = i;
        }
        buckets.swap(grown);
    }

    std::vector<SEntry> entries;
    std::vector<std::uint32_t> buckets;
};

} // namespace NSKZ::NSKZCore

#endif
