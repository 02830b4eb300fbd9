#ifndef CORDLISTBUILDER_H
#define CORDLISTBUILDER_H

#include "VCBtnClass.h"

namespace NSKZ::NSKZCore {

// Makes an order list: what comes in ascending order, turned round where the flags ask for it, with the
// empty-value button and the condition cll buttons at the end where they ask for that.
class VCBtnClass::COrdListBuilder
{
public:
    COrdListBuilder(const VCBtnClass& btnClass, unsigned int flags) noexcept;

    // Adds a button. The empty-value button waits for the end if the flags say so.
    void Add(DWORD btnID)
    {
        if ((flags & ORDLIST_TAILEND_EMPVALBTN) != 0 && SCBUICoreCom::IsEmpValBtn(btnID))
            empValAtEnd = true;
        else
            listed.push_back(btnID);
    }
    // The same; a condition cll button waits for the end too if the flags say so.
    void AddOrSetAside(DWORD btnID)
    {
        if ((flags & ORDLIST_TAILEND_CNDCLLBTN) != 0 && SCBUICoreCom::IsCllBtn(btnID)) {
            const VCSpBtn* const spBtn = btnClass.FindSpBtn(btnID);
            if (spBtn != nullptr && IsSetAside(*spBtn)) {
                atEnd.push_back(btnID);
                return;
            }
        }
        Add(btnID);
    }
    // Adds the effective special buttons that the flags let in: those that users manage, then those that the
    // system manages, each oldest first; or all by shown text. Condition cll buttons may wait for the end.
    void AddSpBtnsByCreation();
    void AddSpBtnsByText();
    // The same for those of them that isListed(const VCSpBtn&) lets in as well.
    template <class TCondition>
    void AddSpBtnsByText(const TCondition& isListed);
    // What is added from now on is not turned round.
    void EndReversedPart() noexcept { reversedCount = listed.size(); }
    // Gives the list, which may replace what it was made from.
    void Finish(std::vector<DWORD>& btnIDs);

private:
    using SpBtns = std::vector<const VCSpBtn*>;
    bool IsSetAside(const VCSpBtn& spBtn) const noexcept;
    void AppendByText(SpBtns& inFront, SpBtns& setAside);
    template <class TIsLess>
    static void AppendSorted(SpBtns& spBtns, const TIsLess& isLess, std::vector<DWORD>& btnIDs);

    static constexpr std::size_t ALL = static_cast<std::size_t>(-1);

    const VCBtnClass& btnClass;
    unsigned int flags;
    std::vector<DWORD> listed;
    std::vector<DWORD> atEnd; // condition cll buttons
    bool empValAtEnd = false;
    std::size_t reversedCount = ALL;
};

template <class TCondition>
void VCBtnClass::COrdListBuilder::AddSpBtnsByText(const TCondition& isListed)
{
    SpBtns inFront;
    SpBtns setAside;
    for (const auto& [btnID, spBtn] : btnClass.spBtnOfID) {
        if (spBtn->IsEffective() && btnClass.IsListed(*spBtn, flags) && isListed(*spBtn))
            (IsSetAside(*spBtn) ? setAside : inFront).push_back(spBtn);
    }
    AppendByText(inFront, setAside);
}

} // namespace NSKZ::NSKZCore

#endif
