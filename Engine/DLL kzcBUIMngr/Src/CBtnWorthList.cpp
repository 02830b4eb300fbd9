#include "CBtnWorthList.h"

#include <algorithm>
#include <cmath>

namespace NSKZ::NSKZCore {

CBtnWorthList::CBtnWorthList(const std::vector<DWORD>& btnIDsInGivenOrder)
    : btnIDs(btnIDsInGivenOrder), isAscending(std::is_sorted(btnIDs.begin(), btnIDs.end()))
{
    worths.reserve(btnIDs.size());
}

void CBtnWorthList::Add(double worth)
{
    worths.push_back(std::isnan(worth) ? 0.0 : worth);
}

bool CBtnWorthList::Holds(DWORD btnID) const noexcept
{
    return isAscending ? std::binary_search(btnIDs.begin(), btnIDs.end(), btnID)
                       : std::find(btnIDs.begin(), btnIDs.end(), btnID) != btnIDs.end();
}

const std::vector<DWORD>& CBtnWorthList::GetRanking() const
{
    if (ranking.size() == worths.size())
        return ranking;
    struct SPlace
    {
        double worth;
        DWORD position;
    };
    std::vector<SPlace> places;
    places.reserve(worths.size());
    for (const double worth : worths)
        places.push_back({worth, static_cast<DWORD>(places.size())});
    std::sort(places.begin(), places.end(), [](const SPlace& left, const SPlace& right) {
        return left.worth < right.worth || (left.worth == right.worth && left.position < right.position);
    });
    std::vector<DWORD> ranked;
    ranked.reserve(places.size());
    for (const SPlace& place : places)
        ranked.push_back(place.position);
    ranking = std::move(ranked);
    return ranking;
}

} // namespace NSKZ::NSKZCore
