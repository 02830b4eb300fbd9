#ifndef CSPBTNWALK_H
#define CSPBTNWALK_H

#include "VCBtnClass.h"

namespace NSKZ::NSKZCore {

// The special buttons that a walk through the nesting has reached, each once, in the order in which they were
// reached. Buttons carry a mark while they are in a walk, so that one walk at a time goes through the classes
// of an environment; the marks go with the walk, however it ends.
class VCBtnClass::CSpBtnWalk
{
public:
    CSpBtnWalk() = default;
    CSpBtnWalk(const CSpBtnWalk&) = delete;
    CSpBtnWalk& operator=(const CSpBtnWalk&) = delete;
    ~CSpBtnWalk() { Clear(); }

    // Ends the walk: nothing is reached.
    void Clear() noexcept
    {
        for (const auto& [btnClass, spBtn] : reached)
            spBtn->isVisited = false;
        reached.clear();
    }

    std::size_t GetSize() const noexcept { return reached.size(); }
    // By value: the walk may grow while one of its buttons is looked at.
    std::pair<VCBtnClass*, VCSpBtn*> Get(std::size_t position) const noexcept { return reached[position]; }

    // False if the walk has reached the button before.
    bool Add(VCBtnClass& btnClass, VCSpBtn& spBtn)
    {
        if (spBtn.isVisited)
            return false;
        reached.emplace_back(&btnClass, &spBtn);
        spBtn.isVisited = true;
        return true;
    }
    // Adds the special buttons that hold a button of the class itself.
    void AddAbove(VCBtnClass& btnClass, const VCBtn& btn)
    {
        above.clear();
        btnClass.AddSpBtnsAbove(btn, above);
        for (const auto& [classOfSpBtn, spBtn] : above)
            Add(*classOfSpBtn, *spBtn);
    }

private:
    SpBtnsOfClasses reached;
    SpBtnsOfClasses above;
};

} // namespace NSKZ::NSKZCore

#endif
