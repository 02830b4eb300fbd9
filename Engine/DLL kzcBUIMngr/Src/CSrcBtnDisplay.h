#ifndef CSRCBTNDISPLAY_H
#define CSRCBTNDISPLAY_H

#include "SCBUICoreCom.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace NSKZ::NSKZCore {

// Which source buttons of a class are displayed, and how many: the side of visible info that every press
// works on.
//
// Source identifiers are dense (the empty value is 1, normal buttons are 2, 3, ...), so plain byte arrays
// indexed by identifier stand beside the class's registry. The relation reason is kept as a generation
// number: to hide all buttons by relation is to begin a new generation, which costs nothing however many
// buttons there are (once in 127 times a pass over the bytes), and to bring a button back is to write the
// current generation on it. The number of displayed buttons is counted along. The limitation, which changes
// rarely, is a bit of a button's traits.
//
// An identifier is registered with Register before it is used; Show..., Is... and Set... of one that is not
// are harmless: it counts as absent and never as displayed.
class CSrcBtnDisplay
{
public:
    CSrcBtnDisplay() = default;

    void Clear() noexcept;

    // Makes room for the identifiers up to `btnID`, so that registering it cannot fail. Amortised constant
    // for ascending identifiers.
    void ReserveFor(DWORD btnID);
    // Enters a button that no reason hides as yet: neither the relation nor the limitation leave it out.
    void Register(DWORD btnID) noexcept;
    bool IsRegistered(DWORD btnID) const noexcept { return (GetTraits(btnID) & TRAIT_ABSENT) == 0; }

    // How many registered buttons no reason hides. Constant.
    DWORD GetDispCount() const noexcept { return dispCount; }
    bool IsDisplayed(DWORD btnID) const noexcept
    {
        return btnID < states.size() && states[btnID] < STATE_HIDDENOTHERWISE && IsShownByRelation(btnID);
    }
    // One past the highest identifier that may be registered.
    DWORD GetEndID() const noexcept { return static_cast<DWORD>(traits.size()); }

    // Whether the button itself has a reason to hide: one that stands in its own visible info; and whether
    // its being folded into condition cll buttons is the only one.
    void SetHiddenByItself(DWORD btnID, bool hidden, bool onlyFolded = false) noexcept;
    // The buttons that are displayed or would be if those they are folded into were opened, ascending. Listed
    // anew only after a change of it, and good until the next.
    const std::vector<DWORD>& GetDisplayedOrFolded() const;

    // Whether special buttons hold the button as member, so that they are to be told when it comes back.
    void SetBackReferred(DWORD btnID, bool referred) noexcept;
    bool IsBackReferred(DWORD btnID) const noexcept { return (GetTraits(btnID) & TRAIT_BACKREFERRED) != 0; }
    bool HasBackReferred() const noexcept { return backReferredCount != 0; }

    // The relation. Constant, HideAllByRelation amortised; ShowByRelation is constant for each identifier.
    bool IsHiddenByRelation(DWORD btnID) const noexcept
    {
        return IsRegistered(btnID) && !IsShownByRelation(btnID);
    }
    void ShowAllByRelation() noexcept;
    void HideAllByRelation() noexcept;
    void ShowByRelation(DWORD btnID) noexcept { ShowByRelation(&btnID, 1); }
    // Identifiers may repeat and need not be of source buttons: those that are not registered are passed
    // over.
    void ShowByRelation(const DWORD* btnIDs, std::size_t count) noexcept;
    // The same, and appends each back-referred button that was hidden by relation before to `backReferred`.
    // If memory is exhausted the buttons before the one that could not be appended are shown.
    void ShowByRelation(const DWORD* btnIDs, std::size_t count, std::vector<DWORD>& backReferred);
    // The same in two steps, the fastest way where more identifiers come than there are buttons: marks,
    // repeated as often as needed, cost least for each identifier; what follows is a pass over the bytes,
    // shows the marked buttons and takes the marks away.
    void Mark(const DWORD* btnIDs, std::size_t count) noexcept;
    void ShowMarkedByRelation() noexcept;
    // Appends the marked buttons, ascending. If memory is exhausted the marks stay; TakeMarksAway lets them
    // go.
    void ListMarked(std::vector<DWORD>& marked) const;
    // Appends the marked buttons that are back-referred. If memory is exhausted the marks stay; TakeMarksAway
    // lets them go.
    void ListMarkedBackReferred(std::vector<DWORD>& backReferred) const;
    void TakeMarksAway() noexcept;

    // The limited record list. The first two cost a pass over a byte for each button.
    bool IsHiddenByLimit(DWORD btnID) const noexcept
    {
        return (GetTraits(btnID) & (TRAIT_HIDDENBYLIMIT | TRAIT_ABSENT)) == TRAIT_HIDDENBYLIMIT;
    }
    void ShowAllByLimit() noexcept;
    void HideAllByLimit() noexcept;
    void ShowByLimit(DWORD btnID) noexcept
    {
        areListed = false;
        SetTrait(btnID, TRAIT_HIDDENBYLIMIT, false);
    }

private:
    using State = std::uint8_t;
    using Traits = std::uint8_t;
    // A state is the generation in which the relation reached the button, from 1 to LAST_GENERATION, and a
    // bit that says whether anything but the relation hides it: all that a press needs to know stands in one
    // byte.
    static constexpr State LAST_GENERATION = 127;
    static constexpr State STATE_HIDDENOTHERWISE = 128;
    static constexpr Traits TRAIT_ABSENT = 1;         // no such button
    static constexpr Traits TRAIT_HIDDENBYITSELF = 2; // its own visible info is not 0
    static constexpr Traits TRAIT_HIDDENBYLIMIT = 4;
    static constexpr Traits TRAIT_BACKREFERRED = 8;
    static constexpr Traits TRAIT_FOLDED = 16; // hidden by itself, but only by condition cll buttons
    static constexpr Traits TRAITS_HIDING = TRAIT_ABSENT | TRAIT_HIDDENBYITSELF | TRAIT_HIDDENBYLIMIT;

    Traits GetTraits(DWORD btnID) const noexcept
    {
        return btnID < traits.size() ? traits[btnID] : TRAIT_ABSENT;
    }
    bool IsShownByRelation(DWORD btnID) const noexcept
    {
        return allShownByRelation || (states[btnID] & LAST_GENERATION) == current;
    }
    bool IsShownButFolded(Traits traitsOfBtn) const noexcept
    {
        return (traitsOfBtn & (TRAIT_ABSENT | TRAIT_HIDDENBYLIMIT)) == 0 &&
               (traitsOfBtn & (TRAIT_HIDDENBYITSELF | TRAIT_FOLDED)) != TRAIT_HIDDENBYITSELF;
    }
    void SetTrait(DWORD btnID, Traits trait, bool set) noexcept;
    void SetTraitOfAll(Traits trait, bool set) noexcept;

    std::vector<State> states;       // by identifier
    std::vector<Traits> traits;      // by identifier
    std::vector<std::uint8_t> marks; // by identifier; all 0 between presses
    State current = 1;               // the current generation
    bool allShownByRelation = true;  // no generation counts: the relation hides nothing
    DWORD dispCount = 0;
    DWORD displayableCount = 0; // buttons that only the relation can hide
    DWORD backReferredCount = 0;
    mutable std::vector<DWORD> displayedOrFolded;
    mutable bool areListed = false; // displayedOrFolded is as it is now
};

} // namespace NSKZ::NSKZCore

#endif
