#include "CModelEnv.h"

#include "CConvertDate.h"
#include "CConvertTime.h"
#include "VCBtn.h"

#include <algorithm>

// Dates and times: display forms and the cll buttons that the system manages for them.

namespace NSKZ::Test {

using NSKZCore::SCBUICoreCom;
using NSKZCore::SCDeclareConstant;
using NSKZCore::SCKZCoreCom;
using NSKZCore::VCDate;

namespace {

bool IsSet(DWORD code)
{
    return code < SCDeclareConstant::UNSETTING - 1;
}

bool IsTerminated(const char (&pattern)[SCDeclareConstant::OPTIONALFORM_SIZE])
{
    return std::memchr(pattern, '\0', sizeof pattern) != nullptr;
}

} // namespace

bool CModelEnv::SetDispForm(DWORD classID, const SCDeclareConstant::SDateDispForm& form, SMoment moment)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr || item->type != SCDeclareConstant::DATATYPE_DATE)
        return false;
    if (IsTerminated(form.optionalForm) && form == item->dateForm)
        return true;
    const bool wasSelected = HasSelection();
    const bool isGood =
        IsTerminated(form.optionalForm) && IsSet(form.kind) && IsSet(form.form) && IsSet(form.option);
    if (isGood) {
        DropGroups(*item);
        item->dateForm = form;
        RebuildGroups(*item, moment);
    }
    CloseChange(*item, wasSelected);
    return isGood;
}

bool CModelEnv::SetDispForm(DWORD classID, const SCDeclareConstant::STimeDispForm& form, SMoment moment)
{
    SModelItem* const item = FindItem(classID);
    if (item == nullptr || item->type != SCDeclareConstant::DATATYPE_TIME)
        return false;
    if (IsTerminated(form.optionalForm) && form == item->timeForm)
        return true;
    const bool wasSelected = HasSelection();
    const bool isGood = IsTerminated(form.optionalForm) && IsSet(form.kind) && IsSet(form.form);
    if (isGood) {
        DropGroups(*item);
        item->timeForm = form;
        RebuildGroups(*item, moment);
    }
    CloseChange(*item, wasSelected);
    return isGood;
}

// Dates move between groups; times do not.
void CModelEnv::ChangeCriteria(const SModelCriteria& criteria, SMoment moment)
{
    AddToHistory(8);
    table.criteria = criteria;
    for (auto& [classID, item] : items) {
        if (item.type != SCDeclareConstant::DATATYPE_DATE)
            continue;
        RenewDateOrder(item);
        RebuildGroups(item, moment);
    }
    CloseFollowing(true, true);
}

void CModelEnv::ChangeDataForm(const std::vector<SModelFld>& flds, SMoment moment)
{
    AddToHistory(6);
    for (const SModelFld& fld : flds) {
        for (SModelFld& known : table.flds) {
            if (known.fldID == fld.fldID) {
                known.dateTypeInfo = fld.dateTypeInfo;
                known.timeTypeInfo = fld.timeTypeInfo;
            }
        }
        for (auto& [classID, item] : items) {
            if (item.isVirtual || item.isOut || item.fldID != fld.fldID || !item.IsOfDates())
                continue;
            // As a user would switch them off, one by one.
            for (const DWORD spBtnID : item.ListSpecial(true)) {
                if (SCBUICoreCom::IsCllBtn(spBtnID) && !item.btns.at(spBtnID).byCondition)
                    SetEffectiveInfoOfSpBtn(classID, spBtnID, false);
            }
            DropGroups(item);
            item.dates.clear();
            item.dateOrder.clear();
            item.nonDates.clear();
            for (const auto& [btnID, btn] : item.btns) {
                if (btn.name && !btn.recs.empty())
                    EnterDate(item, btnID);
            }
            RebuildGroups(item, moment);
        }
    }
    CloseFollowing(true, true);
}

// ---- Groups

std::optional<SModelDate> CModelEnv::GetGroupOf(const SModelItem& item, const SModelDate& date) const
{
    if (!KnowsDataForm(item))
        return std::nullopt;
    return item.type == SCDeclareConstant::DATATYPE_DATE ? date.GetGroup(item.dateForm, table.criteria)
                                                         : date.GetGroup(item.timeForm);
}

std::string CModelEnv::GetNameOfGroup(const SModelItem& item, const SModelDate& group) const
{
    std::vector<char> buffer;
    bool isWritten = false;
    const std::unique_ptr<VCDate> date = group.Make();
    if (item.type == SCDeclareConstant::DATATYPE_DATE) {
        SCDeclareConstant::SDateTypeInfo info = FindFld(item.fldID)->dateTypeInfo;
        info.dispForm = item.dateForm;
        const NSKZCore::CConvertDate convert(info);
        buffer.resize(convert.GetMaxLenOfDateString() + 1);
        isWritten = convert.ConvertDateString(*date, buffer.data(), static_cast<DWORD>(buffer.size()),
                                              static_cast<DWORD>(table.criteria.startMonth),
                                              static_cast<DWORD>(table.criteria.cutOffDate));
    } else {
        SCDeclareConstant::STimeTypeInfo info = FindFld(item.fldID)->timeTypeInfo;
        info.dispForm = item.timeForm;
        const NSKZCore::CConvertTime convert(info);
        buffer.resize(convert.GetMaxLenOfTimeString() + 1);
        isWritten = convert.ConvertTimeString(*date, buffer.data(), static_cast<DWORD>(buffer.size()));
    }
    return isWritten ? buffer.data() : "";
}

// Each group has a button: the one that stands for it already, or a new one. Those whose group nobody is in
// any more are left without members.
void CModelEnv::RebuildGroups(SModelItem& item, SMoment moment)
{
    std::map<std::vector<long>, SGroup> groups;
    for (const auto& [btnID, date] : item.dates) {
        const std::optional<SModelDate> group = GetGroupOf(item, date);
        const auto order = group ? group->GetOrder(table.criteria) : std::nullopt;
        if (order)
            groups.try_emplace(*order, SGroup{*group, {}}).first->second.btnIDs.push_back(btnID);
    }

    std::map<DWORD, IDList> membersOfKnown;
    std::vector<SGroup> newGroups;
    for (auto& [order, group] : groups) {
        DWORD known = 0;
        for (const auto& [otherOrder, number, btnID] : item.dateOrder) {
            if (known == 0 && otherOrder == order && item.IsManagedBySystem(btnID))
                known = btnID;
        }
        if (known != 0)
            membersOfKnown[known] = group.btnIDs;
        else
            newGroups.push_back(group);
    }
    for (const auto& [btnID, date] : item.groups)
        ChangeMembers(item, btnID, {});
    for (const auto& [btnID, members] : membersOfKnown)
        ChangeMembers(item, btnID, members);
    for (const SGroup& group : newGroups) {
        const DWORD id = FindFreeBtnID(item, SCBUICoreCom::BTNTYPE_CLL);
        SModelBtn btn;
        btn.alias = GetNameOfGroup(item, group.date);
        btn.createTime = moment.until;
        btn.isTimeCertain = moment.from == moment.until;
        item.btns[id] = btn;
        item.groups[id] = group.date;
        ChangeMembers(item, id, group.btnIDs);
        EnterName(item, id);
        item.dateOrder.emplace(*group.date.GetOrder(table.criteria), 0, id);
        JoinAwaitingSpBtns(item, id);
    }
}

void CModelEnv::DropGroups(SModelItem& item)
{
    for (const auto& [btnID, date] : std::map<DWORD, SModelDate>(item.groups)) {
        Destroy(item, btnID);
        item.groups.erase(btnID);
    }
    std::erase_if(item.dateOrder,
                  [](const auto& entry) { return SCBUICoreCom::IsSpBtn(std::get<2>(entry)); });
}

// What has no number any more, as week 54 of a year that has 53 now, stands in front of all.
void CModelEnv::RenewDateOrder(SModelItem& item)
{
    item.dateOrder.clear();
    for (const auto& entries : {item.dates, item.groups}) {
        for (const auto& [btnID, date] : entries) {
            const auto order = date.GetOrder(table.criteria).value_or(std::vector<long>{});
            item.dateOrder.emplace(order, 0, btnID);
        }
    }
}

// ---- What is to be seen

std::vector<CModelEnv::SGroup> CModelEnv::GetGroups(const SModelItem& item, VCDate::EDateType type) const
{
    std::map<std::vector<long>, SGroup> groups;
    for (const auto& [btnID, date] : item.dates) {
        const std::optional<SModelDate> group = date.GetGroup(type, table.criteria);
        const auto order = group ? group->GetOrder(table.criteria) : std::nullopt;
        if (order)
            groups.try_emplace(*order, SGroup{*group, {}}).first->second.btnIDs.push_back(btnID);
    }
    std::vector<SGroup> list;
    for (const auto& [order, group] : groups)
        list.push_back(group);
    return list;
}

std::optional<IDList> CModelEnv::GetBtnsOfDates(const SModelItem& item, SCKZCoreCom::ECmpOperator cmpOperator,
                                                const SModelDate& date) const
{
    if (item.dates.empty() || !item.dates.begin()->second.Includes(date))
        return std::nullopt;
    IDList btnIDs;
    for (const auto& [btnID, dateOfBtn] : item.dates) {
        if (dateOfBtn.Compares(cmpOperator, date, table.criteria))
            btnIDs.push_back(btnID);
    }
    return btnIDs;
}

std::optional<DWORD> CModelEnv::GetLatestBtn(const SModelItem& item, const IDList& btnIDs) const
{
    std::optional<DWORD> latest;
    for (const auto& [order, number, btnID] : item.dateOrder) {
        if (std::find(btnIDs.begin(), btnIDs.end(), btnID) != btnIDs.end())
            latest = btnID;
    }
    return latest;
}

} // namespace NSKZ::Test
