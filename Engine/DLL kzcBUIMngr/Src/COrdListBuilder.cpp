#include "COrdListBuilder.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

VCBtnClass::COrdListBuilder::COrdListBuilder(const VCBtnClass& btnClassOfList,
                                             unsigned int flagsOfList) noexcept
    : btnClass(btnClassOfList), flags(flagsOfList)
{}

bool VCBtnClass::COrdListBuilder::IsSetAside(const VCSpBtn& spBtn) const noexcept
{
    return (flags & ORDLIST_TAILEND_CNDCLLBTN) != 0 && IsCndCllBtn(spBtn);
}

// Equal ones keep their order, which is that of the identifiers.
template <class TIsLess>
void VCBtnClass::COrdListBuilder::AppendSorted(SpBtns& spBtns, const TIsLess& isLess,
                                               std::vector<DWORD>& btnIDs)
{
    std::stable_sort(spBtns.begin(), spBtns.end(),
                     [&isLess](const VCSpBtn* left, const VCSpBtn* right) { return isLess(*left, *right); });
    for (const VCSpBtn* const spBtn : spBtns)
        btnIDs.push_back(spBtn->id);
}

void VCBtnClass::COrdListBuilder::AddSpBtnsByCreation()
{
    SpBtns ofUsers;
    SpBtns ofSystem;
    SpBtns setAside;
    bool managedByUser = false; // a class that answers without setting it lets the last answer stand
    for (const auto& [btnID, spBtn] : btnClass.spBtnOfID) {
        if (!spBtn->IsEffective() || !btnClass.IsListed(*spBtn, flags))
            continue;
        if (IsSetAside(*spBtn))
            setAside.push_back(spBtn);
        else if (btnClass.GetBtnMngrInfoOfSpBtn(btnID, managedByUser))
            (managedByUser ? ofUsers : ofSystem).push_back(spBtn);
    }
    const auto isOlder = [](const VCSpBtn& left, const VCSpBtn& right) {
        return left.createTime < right.createTime;
    };
    AppendSorted(ofUsers, isOlder, listed);
    AppendSorted(ofSystem, isOlder, listed);
    AppendSorted(setAside, isOlder, atEnd);
}

void VCBtnClass::COrdListBuilder::AddSpBtnsByText()
{
    AddSpBtnsByText([](const VCSpBtn&) { return true; });
}

void VCBtnClass::COrdListBuilder::AppendByText(SpBtns& inFront, SpBtns& setAside)
{
    const auto isBefore = [](const VCSpBtn& left, const VCSpBtn& right) {
        return CTextKeys::IsLess(left.GetShownText(), right.GetShownText());
    };
    AppendSorted(inFront, isBefore, listed);
    AppendSorted(setAside, isBefore, atEnd);
}

void VCBtnClass::COrdListBuilder::Finish(std::vector<DWORD>& btnIDs)
{
    if ((flags & ORDLIST_DESCEND) != 0) {
        const auto count = static_cast<std::ptrdiff_t>(std::min(reversedCount, listed.size()));
        std::reverse(listed.begin(), listed.begin() + count);
    }
    if (empValAtEnd)
        listed.push_back(SCBUICoreCom::BTN_ID_EMPVAL);
    listed.insert(listed.end(), atEnd.begin(), atEnd.end());
    btnIDs = std::move(listed);
}

} // namespace NSKZ::NSKZCore
