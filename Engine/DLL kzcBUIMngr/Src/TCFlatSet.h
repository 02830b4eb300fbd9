#ifndef TCFLATSET_H
#define TCFLATSET_H

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace NSKZ::NSKZCore {

// An ordered set as one ascending array: a few entries, changed often and walked more often. Insertion and
// removal move what is behind the entry; entries that come ascending are appended. Room once made is kept.
template <class T>
class TCFlatSet
{
public:
    using const_iterator = typename std::vector<T>::const_iterator;

    TCFlatSet() = default;
    TCFlatSet(std::initializer_list<T> given)
    {
        for (const T& entry : given)
            insert(entry);
    }

    const_iterator begin() const noexcept { return entries.begin(); }
    const_iterator end() const noexcept { return entries.end(); }
    bool empty() const noexcept { return entries.empty(); }
    std::size_t size() const noexcept { return entries.size(); }
    // The greatest entry of a set that is not empty.
    const T& back() const noexcept { return entries.back(); }
    bool contains(const T& entry) const noexcept
    {
        return std::binary_search(entries.begin(), entries.end(), entry);
    }

    // Sees to it that the next `count` insertions cannot fail. Amortised constant.
    void ReserveForInsert(std::size_t count = 1)
    {
        if (entries.size() + count > entries.capacity())
            entries.reserve(std::max(entries.size() + count, entries.size() * 2));
    }

    // False, with nothing changed, if the entry is there. If memory is exhausted nothing changes.
    bool insert(const T& entry)
    {
        if (entries.empty() || entries.back() < entry) {
            entries.push_back(entry);
            return true;
        }
        const auto place = std::lower_bound(entries.begin(), entries.end(), entry);
        if (!(entry < *place))
            return false;
        entries.insert(place, entry);
        return true;
    }

    // False if the entry is not there.
    bool erase(const T& entry) noexcept
    {
        const auto place = std::lower_bound(entries.begin(), entries.end(), entry);
        if (place == entries.end() || entry < *place)
            return false;
        entries.erase(place);
        return true;
    }
    template <class TCondition>
    void EraseIf(const TCondition& condition)
    {
        std::erase_if(entries, condition);
    }
    void clear() noexcept { entries.clear(); }

private:
    std::vector<T> entries;
};

} // namespace NSKZ::NSKZCore

#endif
