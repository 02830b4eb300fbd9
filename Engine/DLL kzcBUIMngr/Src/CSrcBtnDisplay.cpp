#include "CSrcBtnDisplay.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

void CSrcBtnDisplay::Clear() noexcept
{
    generations.clear();
    traits.clear();
    current = 1;
    allShownByRelation = true;
    dispCount = 0;
    displayableCount = 0;
    backReferredCount = 0;
}

void CSrcBtnDisplay::ReserveFor(DWORD btnID)
{
    const std::size_t wanted = std::size_t{btnID} + 1;
    if (wanted <= traits.size())
        return;
    const std::size_t capacity = std::max(wanted, std::min(traits.capacity(), generations.capacity()));
    if (wanted > traits.capacity() || wanted > generations.capacity()) {
        const std::size_t grown = std::max<std::size_t>(capacity * 2, 16);
        generations.reserve(grown);
        traits.reserve(grown);
    }
    generations.resize(wanted, 0);
    traits.resize(wanted, TRAIT_ABSENT);
}

void CSrcBtnDisplay::Register(DWORD btnID) noexcept
{
    if (IsRegistered(btnID) || btnID >= traits.size())
        return;
    traits[btnID] = 0;
    generations[btnID] = current;
    ++displayableCount;
    ++dispCount;
}

void CSrcBtnDisplay::ShowAllByRelation() noexcept
{
    allShownByRelation = true;
    dispCount = displayableCount;
}

void CSrcBtnDisplay::HideAllByRelation() noexcept
{
    if (current == 255) {
        std::fill(generations.begin(), generations.end(), Generation{0});
        current = 0;
    }
    ++current;
    allShownByRelation = false;
    dispCount = 0;
}

template <class TOnShown>
void CSrcBtnDisplay::ShowByRelation(const DWORD* btnIDs, std::size_t count, const TOnShown& onShown)
{
    if (allShownByRelation)
        return;
    const std::size_t size = traits.size();
    const Generation generation = current;
    Generation* const marks = generations.data();
    const Traits* const traitsOfBtn = traits.data();
    for (std::size_t i = 0; i < count; ++i) {
        const DWORD btnID = btnIDs[i];
        if (btnID >= size || marks[btnID] == generation)
            continue;
        onShown(btnID, traitsOfBtn[btnID]);
        marks[btnID] = generation;
    }
}

void CSrcBtnDisplay::ShowByRelation(const DWORD* btnIDs, std::size_t count) noexcept
{
    DWORD displayed = 0;
    ShowByRelation(btnIDs, count, [&displayed](DWORD, Traits ofBtn) {
        displayed += (ofBtn & TRAITS_HIDING) == 0 ? 1 : 0;
    });
    dispCount += displayed;
}

void CSrcBtnDisplay::ShowByRelation(const DWORD* btnIDs, std::size_t count, std::vector<DWORD>& backReferred)
{
    ShowByRelation(btnIDs, count, [this, &backReferred](DWORD btnID, Traits ofBtn) {
        if ((ofBtn & TRAIT_BACKREFERRED) != 0)
            backReferred.push_back(btnID);
        dispCount += (ofBtn & TRAITS_HIDING) == 0 ? 1 : 0;
    });
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
    const DWORD change = isHidden ? DWORD(-1) : DWORD(1);
    displayableCount += change;
    if (IsShownByRelation(btnID))
        dispCount += change;
}

void CSrcBtnDisplay::SetTraitOfAll(Traits trait, bool set) noexcept
{
    DWORD displayable = 0;
    for (Traits& ofBtn : traits) {
        ofBtn = static_cast<Traits>(set ? ofBtn | trait : ofBtn & ~trait);
        displayable += (ofBtn & TRAITS_HIDING) == 0 ? 1 : 0;
    }
    displayableCount = displayable;
    dispCount = allShownByRelation ? displayable : CountDisplayed();
}

DWORD CSrcBtnDisplay::CountDisplayed() const noexcept
{
    DWORD count = 0;
    for (std::size_t i = 0; i < traits.size(); ++i)
        count += (traits[i] & TRAITS_HIDING) == 0 && generations[i] == current ? 1 : 0;
    return count;
}

} // namespace NSKZ::NSKZCore
