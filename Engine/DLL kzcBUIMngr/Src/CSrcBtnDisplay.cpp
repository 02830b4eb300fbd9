#include "CSrcBtnDisplay.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

void CSrcBtnDisplay::Clear() noexcept
{
    states.clear();
    traits.clear();
    marks.clear();
    current = 1;
    allShownByRelation = true;
    dispCount = 0;
    displayableCount = 0;
    backReferredCount = 0;
    areListed = false;
}

void CSrcBtnDisplay::ReserveFor(DWORD btnID)
{
    const std::size_t wanted = std::size_t{btnID} + 1;
    if (wanted <= traits.size())
        return;
    if (wanted > std::min({states.capacity(), traits.capacity(), marks.capacity()})) {
        const std::size_t grown = std::max<std::size_t>({wanted, traits.size() * 2, 16});
        states.reserve(grown);
        traits.reserve(grown);
        marks.reserve(grown);
    }
    states.resize(wanted, STATE_HIDDENOTHERWISE);
    traits.resize(wanted, TRAIT_ABSENT);
    marks.resize(wanted, 0);
}

void CSrcBtnDisplay::Register(DWORD btnID) noexcept
{
    if (IsRegistered(btnID) || btnID >= traits.size())
        return;
    areListed = false;
    traits[btnID] = 0;
    states[btnID] = current;
    ++displayableCount;
    ++dispCount;
}

void CSrcBtnDisplay::ShowAllByRelation() noexcept
{
    areListed = areListed && allShownByRelation;
    allShownByRelation = true;
    dispCount = displayableCount;
}

void CSrcBtnDisplay::HideAllByRelation() noexcept
{
    if (current == LAST_GENERATION) {
        for (State& state : states)
            state &= STATE_HIDDENOTHERWISE;
        current = 0;
    }
    ++current;
    areListed = false;
    allShownByRelation = false;
    dispCount = 0;
}

// Without a branch: which buttons are new to a generation cannot be foreseen.
void CSrcBtnDisplay::ShowByRelation(const DWORD* btnIDs, std::size_t count) noexcept
{
    if (allShownByRelation || states.empty())
        return;
    const std::size_t size = states.size();
    areListed = false;
    const State generation = current;
    State* const stateOf = states.data();
    DWORD displayed = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t btnID =
            btnIDs[i] < size ? btnIDs[i] : 0; // 0 is no button, and counts as hidden otherwise
        const State state = stateOf[btnID];
        stateOf[btnID] = static_cast<State>((state & STATE_HIDDENOTHERWISE) | generation);
        displayed += state < STATE_HIDDENOTHERWISE && state != generation ? 1 : 0;
    }
    dispCount += displayed;
}

void CSrcBtnDisplay::ShowByRelation(const DWORD* btnIDs, std::size_t count, std::vector<DWORD>& backReferred)
{
    for (std::size_t i = 0; i < count; ++i) {
        if (IsBackReferred(btnIDs[i]) && !IsShownByRelation(btnIDs[i]))
            backReferred.push_back(btnIDs[i]);
        ShowByRelation(btnIDs + i, 1);
    }
}

void CSrcBtnDisplay::Mark(const DWORD* btnIDs, std::size_t count) noexcept
{
    const std::size_t size = marks.size();
    if (size == 0)
        return;
    std::uint8_t* const markOf = marks.data();
    for (std::size_t i = 0; i < count; ++i)
        markOf[btnIDs[i] < size ? btnIDs[i] : 0] = 1;
}

void CSrcBtnDisplay::ShowMarkedByRelation() noexcept
{
    areListed = false;
    const std::size_t size = states.size();
    const State generation = current;
    State* const stateOf = states.data();
    std::uint8_t* const markOf = marks.data();
    DWORD displayed = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const State state = stateOf[i];
        const std::uint8_t mark = markOf[i];
        stateOf[i] = mark != 0 ? static_cast<State>((state & STATE_HIDDENOTHERWISE) | generation) : state;
        displayed += mark & (state < STATE_HIDDENOTHERWISE && state != generation ? 1 : 0);
        markOf[i] = 0;
    }
    if (!allShownByRelation)
        dispCount += displayed;
}

void CSrcBtnDisplay::ListMarked(std::vector<DWORD>& marked) const
{
    for (std::size_t i = 1; i < marks.size(); ++i) {
        if (marks[i] != 0)
            marked.push_back(static_cast<DWORD>(i));
    }
}

void CSrcBtnDisplay::ListMarkedBackReferred(std::vector<DWORD>& backReferred) const
{
    for (std::size_t i = 0; i < marks.size(); ++i) {
        if (marks[i] != 0 && (traits[i] & TRAIT_BACKREFERRED) != 0)
            backReferred.push_back(static_cast<DWORD>(i));
    }
}

void CSrcBtnDisplay::TakeMarksAway() noexcept
{
    std::fill(marks.begin(), marks.end(), std::uint8_t{0});
}

void CSrcBtnDisplay::ShowAllByLimit() noexcept
{
    SetTraitOfAll(TRAIT_HIDDENBYLIMIT, false);
}

void CSrcBtnDisplay::HideAllByLimit() noexcept
{
    SetTraitOfAll(TRAIT_HIDDENBYLIMIT, true);
}

void CSrcBtnDisplay::SetBackReferred(DWORD btnID, bool referred) noexcept
{
    if (!IsRegistered(btnID) || IsBackReferred(btnID) == referred)
        return;
    traits[btnID] = static_cast<Traits>(traits[btnID] ^ TRAIT_BACKREFERRED);
    backReferredCount += referred ? DWORD(1) : DWORD(-1);
}

void CSrcBtnDisplay::SetTrait(DWORD btnID, Traits trait, bool set) noexcept
{
    if (!IsRegistered(btnID))
        return;
    const bool wasHidden = (traits[btnID] & TRAITS_HIDING) != 0;
    traits[btnID] = static_cast<Traits>(set ? traits[btnID] | trait : traits[btnID] & ~trait);
    const bool isHidden = (traits[btnID] & TRAITS_HIDING) != 0;
    if (wasHidden == isHidden)
        return;
    states[btnID] ^= STATE_HIDDENOTHERWISE;
    const DWORD change = isHidden ? DWORD(-1) : DWORD(1);
    displayableCount += change;
    if (IsShownByRelation(btnID))
        dispCount += change;
}

void CSrcBtnDisplay::SetHiddenByItself(DWORD btnID, bool hidden, bool onlyFolded) noexcept
{
    if (!IsRegistered(btnID))
        return;
    const bool wasListed = IsShownButFolded(traits[btnID]);
    SetTrait(btnID, TRAIT_HIDDENBYITSELF, hidden);
    SetTrait(btnID, TRAIT_FOLDED, hidden && onlyFolded);
    areListed = areListed && wasListed == IsShownButFolded(traits[btnID]);
}

const std::vector<DWORD>& CSrcBtnDisplay::GetDisplayedOrFolded() const
{
    if (areListed)
        return displayedOrFolded;
    displayedOrFolded.resize(traits.size());
    std::size_t count = 0;
    for (std::size_t i = 0; i < traits.size(); ++i) {
        const auto btnID = static_cast<DWORD>(i);
        displayedOrFolded[count] = btnID; // without a branch: overwritten by the next unless it counts
        count += IsShownButFolded(traits[i]) && IsShownByRelation(btnID) ? 1 : 0;
    }
    displayedOrFolded.resize(count);
    areListed = true;
    return displayedOrFolded;
}

void CSrcBtnDisplay::SetTraitOfAll(Traits trait, bool set) noexcept
{
    areListed = false;
    displayableCount = 0;
    dispCount = 0;
    for (std::size_t i = 0; i < traits.size(); ++i) {
        traits[i] = static_cast<Traits>(set ? traits[i] | trait : traits[i] & ~trait);
        const bool isDisplayable = (traits[i] & TRAITS_HIDING) == 0;
        states[i] =
            static_cast<State>((states[i] & LAST_GENERATION) | (isDisplayable ? 0 : STATE_HIDDENOTHERWISE));
        displayableCount += isDisplayable ? 1 : 0;
        dispCount += isDisplayable && IsShownByRelation(static_cast<DWORD>(i)) ? 1 : 0;
    }
}

} // namespace NSKZ::NSKZCore
