#include "VCDateTimeBtnClass.h"

#include "COrdListBuilder.h"
#include "CSourceDataMngr.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace NSKZ::NSKZCore {

VCDateTimeBtnClass::~VCDateTimeBtnClass() = default;

VCDateTimeBtnClass::VCGroupMaker::~VCGroupMaker() = default;

// --- Life

void VCDateTimeBtnClass::ClearOwnFields() noexcept
{
    dateOfBtn.clear();
    dateOfSysCllBtn.clear();
    btnOfDateNum.Clear();
    strNameOrd.Clear();
}

void VCDateTimeBtnClass::Clear()
{
    ClearOwnFields();
    VCSrcBtnClass::Clear();
}

void VCDateTimeBtnClass::ClearOfFixedSpec()
{
    for (const auto& [btnID, date] : dateOfSysCllBtn)
        btnOfDateNum.Remove(btnID);
    dateOfSysCllBtn.clear();
    VCSrcBtnClass::ClearOfFixedSpec();
}

void VCDateTimeBtnClass::Copy(const VCBtnClass& other, const std::unique_ptr<IRpLink>& rpLinkOfEnv)
{
    if (&other == this)
        return;
    const auto& otherDates = dynamic_cast<const VCDateTimeBtnClass&>(other);
    ClearOwnFields();
    VCSrcBtnClass::Copy(other, rpLinkOfEnv);
    try {
        dateOfBtn.resize(otherDates.dateOfBtn.size());
        otherDates.VisitDates(
            [this](DWORD btnID, const VCDate& date) { dateOfBtn[btnID] = date.CreateClone(); });
        for (const auto& [btnID, date] : otherDates.dateOfSysCllBtn)
            dateOfSysCllBtn.emplace_hint(dateOfSysCllBtn.end(), btnID, date->CreateClone());
        btnOfDateNum.CopyFrom(otherDates.btnOfDateNum);
        strNameOrd.CopyFrom(otherDates.strNameOrd);
    } catch (...) {
        ClearOwnFields();
        DropAll();
        throw;
    }
}

// --- Dates

VCDateTimeBtnClass::SCriteria VCDateTimeBtnClass::GetCriteria() const
{
    if (srcDataMngr == nullptr)
        return SCriteria();
    return SCriteria{srcDataMngr->GetStartMonth(), srcDataMngr->GetCutOffDate(),
                     srcDataMngr->GetDaysOfTheWeek()};
}

bool VCDateTimeBtnClass::GetDateNumeric(const VCDate& date, const SCriteria& criteria,
                                        unsigned long long& number)
{
    return date.GetDateNumeric(criteria.startMonth, criteria.cutOffDate, criteria.daysOfTheWeek, number);
}

// A date that has no number stands in front of all others.
unsigned long long VCDateTimeBtnClass::GetOrdNumber(const VCDate& date, const SCriteria& criteria)
{
    unsigned long long number = 0;
    return GetDateNumeric(date, criteria, number) ? number : 0;
}

bool VCDateTimeBtnClass::GetLenOfDateText(const char* text, unsigned short& len) noexcept
{
    const std::size_t bytes = text == nullptr ? 0 : std::strlen(text);
    if (bytes == 0 || bytes > std::numeric_limits<unsigned short>::max())
        return false;
    len = static_cast<unsigned short>(bytes);
    return true;
}

const VCDate* VCDateTimeBtnClass::FindDate(DWORD btnID) const noexcept
{
    return btnID < dateOfBtn.size() ? dateOfBtn[btnID].get() : nullptr;
}

const VCDate* VCDateTimeBtnClass::GetFirstDate() const noexcept
{
    const auto found = std::find_if(dateOfBtn.begin(), dateOfBtn.end(),
                                    [](const std::unique_ptr<VCDate>& date) { return date != nullptr; });
    return found == dateOfBtn.end() ? nullptr : found->get();
}

void VCDateTimeBtnClass::AdjstAccordingToBtnAppearance(const VCBtn& btn)
{
    if (srcDataMngr == nullptr || !SCBUICoreCom::IsNormalBtn(btn.id))
        return;
    std::unique_ptr<VCDate> date = ReadDate(btn.GetShownText());
    if (date != nullptr) {
        if (btn.id >= dateOfBtn.size())
            dateOfBtn.resize(std::size_t{btn.id} + 1);
        btnOfDateNum.Insert(GetOrdNumber(*date, GetCriteria()), btn.id);
        dateOfBtn[btn.id] = std::move(date);
        strNameOrd.Remove(btn.id);
    } else {
        strNameOrd.Insert(btn.GetShownText(), btn.id);
        btnOfDateNum.Remove(btn.id);
        if (btn.id < dateOfBtn.size())
            dateOfBtn[btn.id].reset();
    }
}

void VCDateTimeBtnClass::AdjstAccordingToBtnDisappearance(const VCBtn& btn) noexcept
{
    if (!SCBUICoreCom::IsNormalBtn(btn.id))
        return;
    // By the identifier alone: an alias or other criteria may have come since the button was listed.
    btnOfDateNum.Remove(btn.id);
    strNameOrd.Remove(btn.id);
    if (btn.id < dateOfBtn.size())
        dateOfBtn[btn.id].reset();
}

void VCDateTimeBtnClass::ListByDate(unsigned int flags, std::vector<DWORD>& btnIDs,
                                    const char* function) const
{
    const VCBtn* const empValBtn = FindBtn(SCBUICoreCom::BTN_ID_EMPVAL);
    const bool empValListed =
        empValBtn != nullptr && (empValBtn->visibleInfo & VISINFO_NOREC) == 0 && IsListed(*empValBtn, flags);
    COrdListBuilder list(*this, flags);
    const auto addListed = [&](DWORD btnID) {
        if (!display.IsRegistered(btnID))
            GetInsideBtn(btnID, function, __LINE__);
        if (IsInsideBtnListed(btnID, flags, function, __LINE__))
            list.Add(btnID);
    };
    list.AddSpBtnsByText(
        [this](const VCSpBtn& spBtn) { return !IsSystemMngrSpBtn(spBtn.id) && !spBtn.mmbBtnIDList.empty(); });
    for (const DWORD btnID : btnOfDateNum.GetBtnIDs())
        addListed(btnID);
    if (empValListed)
        list.Add(SCBUICoreCom::BTN_ID_EMPVAL);
    for (const DWORD btnID : strNameOrd.GetBtnIDs())
        addListed(btnID);
    list.Finish(btnIDs);
}

// --- System-managed buttons

DWORD VCDateTimeBtnClass::GetSystemMngrSpBtnCount() const
{
    return static_cast<DWORD>(dateOfSysCllBtn.size());
}

bool VCDateTimeBtnClass::GetBtnMngrInfoOfSpBtn(DWORD btnID, bool& managedByUser) const
{
    if (!SCBUICoreCom::IsSpBtn(btnID))
        return false;
    managedByUser = !IsSystemMngrSpBtn(btnID);
    return true;
}

bool VCDateTimeBtnClass::DestroyCllBtn(DWORD btnID)
{
    return !IsSystemMngrSpBtn(btnID) && VCSrcBtnClass::DestroyCllBtn(btnID);
}

bool VCDateTimeBtnClass::SetEffectiveInfoOfSpBtn(DWORD btnID, bool isEffective)
{
    return !IsSystemMngrSpBtn(btnID) && VCSrcBtnClass::SetEffectiveInfoOfSpBtn(btnID, isEffective);
}

VCBtnClass::EMthRetOfOpeToMmbBtnIDList
VCDateTimeBtnClass::SetMemberBtnIDListOfSpBtn(DWORD btnID, const std::vector<DWORD>& mmbBtnIDs)
{
    return IsSystemMngrSpBtn(btnID) ? OPEMMBBTN_SYSTEMMNGR
                                    : VCSrcBtnClass::SetMemberBtnIDListOfSpBtn(btnID, mmbBtnIDs);
}

VCBtnClass::EMthRetOfOpeToMmbBtnIDList VCDateTimeBtnClass::AddMemberBtnIDListOfSpBtn(DWORD btnID,
                                                                                     DWORD mmbBtnID)
{
    return IsSystemMngrSpBtn(btnID) ? OPEMMBBTN_SYSTEMMNGR
                                    : VCSrcBtnClass::AddMemberBtnIDListOfSpBtn(btnID, mmbBtnID);
}

VCBtnClass::EMthRetOfOpeToMmbBtnIDList VCDateTimeBtnClass::DeleteMemberBtnIDListOfSpBtn(DWORD btnID,
                                                                                        DWORD mmbBtnID)
{
    return IsSystemMngrSpBtn(btnID) ? OPEMMBBTN_SYSTEMMNGR
                                    : VCSrcBtnClass::DeleteMemberBtnIDListOfSpBtn(btnID, mmbBtnID);
}

void VCDateTimeBtnClass::ResetInsideInfoForSpBtnsOfBtns(const std::vector<DWORD>& btnIDs, bool buildRpLink)
{
    RebuildSysCllBtns();
    VCSrcBtnClass::ResetInsideInfoForSpBtnsOfBtns(btnIDs, buildRpLink);
}

void VCDateTimeBtnClass::ResetInsideInfoForSpBtnsOfSrcBtns(bool buildRpLink, bool force)
{
    RebuildSysCllBtns();
    VCSrcBtnClass::ResetInsideInfoForSpBtnsOfSrcBtns(buildRpLink, force);
}

void VCDateTimeBtnClass::ResetInsideInfoForEffectiveSpBtns(bool buildRpLink)
{
    RebuildSysCllBtns();
    VCSrcBtnClass::ResetInsideInfoForEffectiveSpBtns(buildRpLink);
}

void VCDateTimeBtnClass::RebuildSysCllBtns()
{
    if (dateOfSysCllBtn.empty() && !HasDispForm())
        return;
    CDateGroupMap groups;
    const std::unique_ptr<VCGroupMaker> maker = CreateGroupMaker();
    if (maker != nullptr)
        GroupDates([&maker](const VCDate& date) { return maker->MakeGroupDate(date); }, groups);

    // Of two buttons with one number the first gets the group. Those without a group get no members.
    std::vector<SSpBtnAndMembers> changes;
    changes.reserve(dateOfSysCllBtn.size() + groups.size());
    for (const auto& [btnID, date] : dateOfSysCllBtn) {
        changes.push_back({FindSpBtn(btnID), {}});
        const auto group = groups.find(btnOfDateNum.GetKeyOf(btnID));
        if (group != groups.end()) {
            changes.back().mmbBtnIDs = std::move(group->second.btnIDList);
            groups.erase(group);
        }
    }
    for (auto& [number, group] : groups) {
        VCSpBtn* const spBtn = CreateSysCllBtn(number, group.date, maker->MakeName(*group.date));
        if (spBtn != nullptr)
            changes.push_back({spBtn, std::move(group.btnIDList)});
    }
    SetMemberBtnIDListOfSpBtns(changes);
}

VCSpBtn* VCDateTimeBtnClass::CreateSysCllBtn(unsigned long long number, std::unique_ptr<VCDate>& groupDate,
                                             const std::string& name)
{
    // The button is entered here before it is made: from its making on nothing may fail.
    const DWORD btnID = cllBlankIDList.empty() ? cllNextID : *cllBlankIDList.begin();
    if (!SCBUICoreCom::IsCllBtn(btnID))
        return nullptr;
    btnOfDateNum.Insert(number, btnID);
    try {
        std::unique_ptr<VCDate>& date = dateOfSysCllBtn[btnID];
        const std::vector<DWORD> noMembers;
        DWORD madeID = SCBUICoreCom::BTN_ID_UNSETTING;
        if (CreateCllBtn(name.c_str(), VCSpBtn::MMBBTNSELMTH_SELECT, &noMembers, nullptr, madeID) ==
            CREATESPBTN_OK) {
            date = std::move(groupDate);
            return FindSpBtn(madeID);
        }
    } catch (...) {
        ForgetSysCllBtn(btnID);
        throw;
    }
    ForgetSysCllBtn(btnID);
    return nullptr;
}

void VCDateTimeBtnClass::ForgetSysCllBtn(DWORD btnID) noexcept
{
    btnOfDateNum.Remove(btnID);
    dateOfSysCllBtn.erase(btnID);
}

void VCDateTimeBtnClass::ResetAllSysCllBtns()
{
    std::set<DWORD> btnIDs;
    for (const auto& [btnID, date] : dateOfSysCllBtn)
        btnIDs.insert(btnIDs.end(), btnID);
    const auto forgetThoseGone = [&]() noexcept {
        for (const DWORD btnID : btnIDs) {
            if (FindSpBtn(btnID) == nullptr)
                ForgetSysCllBtn(btnID);
        }
    };
    try {
        DestroyCllBtns(btnIDs);
    } catch (...) {
        forgetThoseGone();
        throw;
    }
    forgetThoseGone();
}

bool VCDateTimeBtnClass::HasGroupWithMembers() const noexcept
{
    return std::any_of(dateOfSysCllBtn.begin(), dateOfSysCllBtn.end(), [this](const auto& idAndDate) {
        const VCSpBtn* const spBtn = FindSpBtn(idAndDate.first);
        return spBtn != nullptr && !spBtn->mmbBtnIDList.empty();
    });
}

void VCDateTimeBtnClass::RenewDateNums()
{
    const SCriteria criteria = GetCriteria();
    CDateNumOrdList renewed;
    VisitDates([&](DWORD btnID, const VCDate& date) { renewed.Insert(GetOrdNumber(date, criteria), btnID); });
    for (const auto& [btnID, date] : dateOfSysCllBtn)
        renewed.Insert(GetOrdNumber(*date, criteria), btnID);
    btnOfDateNum.Swap(renewed);
}

void VCDateTimeBtnClass::RegroupAfterDataFormChange()
{
    // What needs memory comes first.
    const SCriteria criteria = GetCriteria();
    std::vector<std::unique_ptr<VCDate>> newDates;
    CDateNumOrdList newNums;
    CTextOrdList newTexts;
    newDates.resize(srcBtnOfID.size());
    for (const VCBtn* const btn : srcBtnOfID) {
        if (srcDataMngr == nullptr || btn == nullptr || !SCBUICoreCom::IsNormalBtn(btn->id) ||
            (btn->visibleInfo & VISINFO_NOREC) != 0)
            continue;
        newDates[btn->id] = ReadDate(btn->GetShownText());
        if (newDates[btn->id] != nullptr)
            newNums.Insert(GetOrdNumber(*newDates[btn->id], criteria), btn->id);
        else
            newTexts.Insert(btn->GetShownText(), btn->id);
    }
    const auto swapDates = [&]() noexcept {
        dateOfBtn.swap(newDates);
        btnOfDateNum.Swap(newNums);
        strNameOrd.Swap(newTexts);
    };
    swapDates();
    try {
        ResetAllSysCllBtns();
    } catch (...) {
        if (!dateOfSysCllBtn.empty()) // nothing has changed; else the groups are gone
            swapDates();
        throw;
    }
    RebuildSysCllBtns();
}

} // namespace NSKZ::NSKZCore
