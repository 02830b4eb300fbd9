#ifndef TCBTNORDLIST_H
#define TCBTNORDLIST_H

#include "CTextArena.h"
#include "TCBtnIDAssArr.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

namespace NSKZ::NSKZCore {

// Buttons in ascending order of a key; equal keys keep the order of insertion, or go by ascending identifier
// where TKeys::TIES_BY_ID tells so. A button stands in a list at
// most once. It behaves as an ordered multimap from key to button identifier would, but sorts only when it is
// read: filling it costs an append a button, and the first walk after a change sorts what came since the one
// before. Memory may run out in that walk; the list loses nothing by it.
//
// The list owns its keys: a key text handed in is copied, so that no change of a button's text or life can
// leave a dangling key.
//
// TKeys tells the kind of key: its argument type TArg, the stored type TKey (trivially copyable), a constant
// bool TIES_BY_ID, a TKey
// Keep(TArg), a static bool IsLess(TKey, TKey), a static std::uint64_t GetRank(TKey) that never falls as keys
// rise and decides most comparisons without a look at the keys, a void Clear() and, to let the copies of
// removed keys go, the default constructor and the move assignment.
template <class TKeys>
class TCBtnOrdList
{
public:
    using TArg = typename TKeys::TArg;
    using TKey = typename TKeys::TKey;

    TCBtnOrdList() = default;
    TCBtnOrdList(const TCBtnOrdList&) = delete;
    TCBtnOrdList& operator=(const TCBtnOrdList&) = delete;

    // How many buttons stand in the list.
    DWORD GetSize() const noexcept { return entryOfBtn.GetSize(); }

    bool Exist(DWORD btnID) const noexcept { return entryOfBtn.Exist(btnID); }

    // Puts the button behind those with an equal key, or among them by its identifier. A button that stands
    // in the list under such a key already stays where it is; one that stands under another leaves that
    // place. An identifier that is no button's is passed over. `key` is none of the list's own texts. If
    // memory is exhausted nothing changes. Amortised constant.
    void Insert(TArg key, DWORD btnID)
    {
        const std::uint32_t* const former = entryOfBtn.Find(btnID);
        if (former == nullptr || !AreEqual(TKeys::View(key), entries[*former].key))
            Move(key, btnID);
    }

    // The same, wherever the button stood before: it counts as having come now. Otherwise like Insert.
    void Move(TArg key, DWORD btnID)
    {
        // A list that is changed and never walked lets removed buttons go here.
        if (entries.size() == entries.capacity() && entries.size() >= COMPACTED_FROM &&
            entries.size() / 2 >= GetSize())
            DropRemovedOnes();
        if (entries.size() == entries.capacity())
            entries.reserve(entries.empty() ? 8 : entries.size() * 2);
        if (order.size() == order.capacity())
            order.reserve(order.empty() ? 8 : order.size() * 2);
        if (!entryOfBtn.MakeRoom(btnID))
            return;
        const TKey kept = keys.Keep(key);
        if (const std::uint32_t* const former = entryOfBtn.Find(btnID))
            entries[*former].btnID = REMOVED;
        const auto position = static_cast<std::uint32_t>(entries.size());
        entryOfBtn.Set(btnID, position);
        entries.push_back(SEntry{kept, btnID});
        order.push_back(SPlace{position, btnID});
    }

    // Takes the button out; false if it does not stand here under this key. Constant; the room is reused once
    // half of the list has gone and it is walked or would grow.
    bool Erase(TArg key, DWORD btnID) noexcept
    {
        const std::uint32_t* const position = entryOfBtn.Find(btnID);
        if (position == nullptr)
            return false;
        SEntry& entry = entries[*position];
        if (!AreEqual(TKeys::View(key), entry.key))
            return false;
        entry.btnID = REMOVED;
        entryOfBtn.Remove(btnID);
        return true;
    }

    // Takes the button out whatever its key; false if it does not stand here.
    bool Remove(DWORD btnID) noexcept
    {
        const std::uint32_t* const position = entryOfBtn.Find(btnID);
        return position != nullptr && Erase(TKeys::AsArg(entries[*position].key), btnID);
    }

    void Clear() noexcept
    {
        entries.clear();
        order.clear();
        settled = 0;
        entryOfBtn.Clear();
        keys.Clear();
    }

    // Exchanges the contents of two lists.
    void Swap(TCBtnOrdList& other) noexcept
    {
        std::swap(keys, other.keys);
        entries.swap(other.entries);
        order.swap(other.order);
        std::swap(settled, other.settled);
        std::swap(entryOfBtn, other.entryOfBtn);
    }

    // Makes this list the same as `other`. If memory is exhausted it is left empty.
    void CopyFrom(const TCBtnOrdList& other)
    {
        Clear();
        try {
            for (const DWORD btnID : other.GetBtnIDs())
                Insert(TKeys::AsArg(other.GetKeyOf(btnID)), btnID);
        } catch (...) {
            Clear();
            throw;
        }
    }

    // The key of a button that stands in the list.
    TKey GetKeyOf(DWORD btnID) const noexcept { return entries[*entryOfBtn.Find(btnID)].key; }

    // The buttons in order: a range to walk, good until the list changes. Sorts what came since the last
    // call.
    class CRange
    {
    public:
        class CIterator
        {
        public:
            CIterator(const TCBtnOrdList& listToWalk, std::size_t positionInOrder) noexcept
                : list(&listToWalk), position(positionInOrder)
            {}
            DWORD operator*() const noexcept { return list->order[position].btnID; }
            CIterator& operator++() noexcept
            {
                ++position;
                return *this;
            }
            bool operator!=(const CIterator& other) const noexcept { return position != other.position; }

        private:
            const TCBtnOrdList* list;
            std::size_t position;
        };

        explicit CRange(const TCBtnOrdList& listToWalk) noexcept : list(&listToWalk) {}
        CIterator begin() const noexcept { return CIterator(*list, 0); }
        CIterator end() const noexcept { return CIterator(*list, list->order.size()); }
        // The same by position, for those who begin at the end.
        std::size_t GetSize() const noexcept { return list->order.size(); }
        DWORD operator[](std::size_t position) const noexcept { return list->order[position].btnID; }

    private:
        const TCBtnOrdList* list;
    };
    CRange GetBtnIDs() const
    {
        Settle();
        return CRange(*this);
    }

private:
    static constexpr DWORD REMOVED = 0;
    static constexpr std::size_t COMPACTED_FROM = 64; // entries: below, growing costs less

    static bool AreEqual(TKey left, TKey right) noexcept
    {
        return !TKeys::IsLess(left, right) && !TKeys::IsLess(right, left);
    }

    struct SEntry
    {
        TKey key;
        DWORD btnID; // REMOVED: the button has left the list
    };

    // Where a button stands in the order: a walk reads nothing else.
    struct SPlace
    {
        std::uint32_t position; // in `entries`
        DWORD btnID;
    };

    bool IsBefore(const SPlace& left, const SPlace& right) const noexcept
    {
        const TKey leftKey = entries[left.position].key;
        const TKey rightKey = entries[right.position].key;
        if (TKeys::IsLess(leftKey, rightKey))
            return true;
        const bool isBeforeEqual =
            TKeys::TIES_BY_ID ? left.btnID < right.btnID : left.position < right.position;
        return isBeforeEqual && !TKeys::IsLess(rightKey, leftKey);
    }

    // Sorts `order` and drops what was removed. The content of the list does not change by it.
    void Settle() const
    {
        if (order.size() != GetSize())
            DropRemovedOnes();
        if (settled == order.size())
            return;
        SortNewOnes();
        std::inplace_merge(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(settled), order.end(),
                           [this](const SPlace& left, const SPlace& right) { return IsBefore(left, right); });
        settled = order.size();
    }

    // What came since the last walk, sorted by rank first: most texts differ within what a rank holds of
    // them.
    void SortNewOnes() const
    {
        struct SRanked
        {
            std::uint64_t rank;
            SPlace place;
        };
        std::vector<SRanked> ranked;
        ranked.reserve(order.size() - settled);
        for (std::size_t i = settled; i < order.size(); ++i)
            ranked.push_back(SRanked{TKeys::GetRank(entries[order[i].position].key), order[i]});
        std::sort(ranked.begin(), ranked.end(), [this](const SRanked& left, const SRanked& right) {
            return left.rank != right.rank ? left.rank < right.rank : IsBefore(left.place, right.place);
        });
        for (std::size_t i = 0; i < ranked.size(); ++i)
            order[settled + i] = ranked[i].place;
    }

    void DropRemovedOnes() const
    {
        const auto isRemoved = [this](const SPlace& place) {
            return entries[place.position].btnID == REMOVED;
        };
        const auto newOnes = order.begin() + static_cast<std::ptrdiff_t>(settled);
        const auto settledEnd = std::remove_if(order.begin(), newOnes, isRemoved);
        const auto newEnd = std::remove_if(newOnes, order.end(), isRemoved);
        const auto settledLeft = settledEnd - order.begin();
        order.erase(newEnd, order.end());
        order.erase(settledEnd, order.begin() + static_cast<std::ptrdiff_t>(settled));
        settled = static_cast<std::size_t>(settledLeft);
        if (entries.size() / 2 >= GetSize())
            Compact();
    }

    // Lets the entries and keys of removed buttons go. The entries keep their order of insertion.
    void Compact() const
    {
        TKeys keptKeys;
        std::vector<SEntry> keptEntries;
        keptEntries.reserve(GetSize());
        std::vector<std::uint32_t> newPositions(entries.size());
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (entries[i].btnID == REMOVED)
                continue;
            newPositions[i] = static_cast<std::uint32_t>(keptEntries.size());
            keptEntries.push_back(SEntry{keptKeys.Keep(TKeys::AsArg(entries[i].key)), entries[i].btnID});
        }
        // From here on nothing fails: every button has its slot already.
        for (SPlace& place : order)
            place.position = newPositions[place.position];
        for (std::size_t i = 0; i < keptEntries.size(); ++i)
            entryOfBtn.Set(keptEntries[i].btnID, static_cast<std::uint32_t>(i));
        entries.swap(keptEntries);
        keys = std::move(keptKeys);
    }

    // Walking is a const operation of the list as its users see it; the sorting behind it is not.
    mutable TKeys keys;
    mutable std::vector<SEntry> entries; // in order of insertion
    mutable std::vector<SPlace> order;   // the first `settled` are in order
    mutable std::size_t settled = 0;
    mutable TCBtnIDAssArr<std::uint32_t> entryOfBtn;
};

// Keys that are texts. They compare byte by byte as unsigned values up to the NUL; null comes before every
// text.
class CTextKeys
{
public:
    using TArg = const char*;
    using TKey = const char*;
    static constexpr bool TIES_BY_ID = false;

    TKey Keep(TArg text) { return arena.Add(text); }
    void Clear() noexcept { arena.Clear(); }
    static TKey View(TArg text) noexcept { return text; }
    static TArg AsArg(TKey key) noexcept { return key; }
    static bool IsLess(TKey left, TKey right) noexcept
    {
        if (left == nullptr || right == nullptr)
            return left == nullptr && right != nullptr;
        return std::strcmp(left, right) < 0;
    }
    // The first eight bytes.
    static std::uint64_t GetRank(TKey key) noexcept
    {
        std::uint64_t rank = 0;
        for (int shift = 56; key != nullptr && shift >= 0 && *key != '\0'; shift -= 8, ++key)
            rank |= std::uint64_t{static_cast<unsigned char>(*key)} << shift;
        return rank;
    }

private:
    CTextArena arena;
};

// Keys that are numbers. NaN is none of them: whoever fills the list keeps it out.
class CNumKeys
{
public:
    using TArg = double;
    using TKey = double;
    static constexpr bool TIES_BY_ID = false;

    TKey Keep(TArg number) noexcept { return number; }
    void Clear() noexcept {}
    static TKey View(TArg number) noexcept { return number; }
    static TArg AsArg(TKey key) noexcept { return key; }
    static bool IsLess(TKey left, TKey right) noexcept { return left < right; }
    // The bits of the number, turned so that they order as it does; both zeros are one.
    static std::uint64_t GetRank(TKey key) noexcept
    {
        constexpr std::uint64_t SIGN = std::uint64_t{1} << 63;
        const auto bits = std::bit_cast<std::uint64_t>(key + 0.0);
        return (bits & SIGN) != 0 ? ~bits : bits | SIGN;
    }
};

// Keys that are the numbers of dates.
class CDateNumKeys
{
public:
    using TArg = unsigned long long;
    using TKey = unsigned long long;
    static constexpr bool TIES_BY_ID = true;

    TKey Keep(TArg number) noexcept { return number; }
    void Clear() noexcept {}
    static TKey View(TArg number) noexcept { return number; }
    static TArg AsArg(TKey key) noexcept { return key; }
    static bool IsLess(TKey left, TKey right) noexcept { return left < right; }
    static std::uint64_t GetRank(TKey key) noexcept { return key; }
};

using CTextOrdList = TCBtnOrdList<CTextKeys>;
using CNumOrdList = TCBtnOrdList<CNumKeys>;
using CDateNumOrdList = TCBtnOrdList<CDateNumKeys>;

} // namespace NSKZ::NSKZCore

#endif
