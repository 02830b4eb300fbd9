#ifndef SCVECTOR_H
#define SCVECTOR_H

#include <cstddef>
#include <utility>
#include <vector>

namespace NSKZ::NSKZCore {

// What several classes do with vectors.
class SCVector
{
public:
    SCVector() = delete;

    // Sees to it that the next element appended to `list` needs no memory. The room grows by a factor, so
    // that appending one by one stays linear. Throws std::bad_alloc with the list as it was.
    template <class T>
    static void ReserveOneMore(std::vector<T>& list)
    {
        if (list.size() == list.capacity())
            list.reserve(list.size() + list.size() / 2 + 1);
    }

    // Removes the elements that are marked, in one pass. What is marked behind the last one is nothing; what
    // is not told is not marked. Elements are moved without throwing.
    template <class T>
    static void EraseMarked(std::vector<T>& list, const std::vector<bool>& isMarked) noexcept
    {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (i < isMarked.size() && isMarked[i])
                continue;
            if (kept != i)
                list[kept] = std::move(list[i]);
            ++kept;
        }
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(kept), list.end());
    }
};

} // namespace NSKZ::NSKZCore

#endif
