#ifndef TDATETIMEFIXTURE_H
#define TDATETIMEFIXTURE_H

#include "CRpLink_OnMemVer.h"
#include "CSourceDataMngr.h"
#include "Support/MakeTable.h"
#include "VCDateTimeBtnClass.h"

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace NSKZ::Test {

using BtnIDList = std::vector<DWORD>;
using BtnIDLists = std::vector<BtnIDList>;

inline NSKZCore::SCDeclareConstant::SDateDispForm MakeDateForm(DWORD kind, DWORD form, DWORD option = 0,
                                                               const char* pattern = "")
{
    NSKZCore::SCDeclareConstant::SDateDispForm dispForm;
    dispForm.kind = kind;
    dispForm.form = form;
    dispForm.option = option;
    dispForm.SetOptionalForm(pattern);
    return dispForm;
}

inline NSKZCore::SCDeclareConstant::STimeDispForm MakeTimeForm(DWORD kind, DWORD form,
                                                               const char* pattern = "")
{
    NSKZCore::SCDeclareConstant::STimeDispForm dispForm;
    dispForm.kind = kind;
    dispForm.form = form;
    dispForm.SetOptionalForm(pattern);
    return dispForm;
}

// The members of groups in the order of their dates.
inline BtnIDLists GetLists(const NSKZCore::CDateGroupMap& groups)
{
    BtnIDLists lists;
    for (const auto& [number, group] : groups)
        lists.push_back(group.btnIDList);
    return lists;
}

// A class of dates or times with the tables it lives on. The source table has its field, whose form it tells,
// and the calendar criteria; records are given to the class and the table of records by hand.
template <class TBtnClass>
class TDateTimeFixture
{
public:
    TDateTimeFixture()
        : table(MakeTable(
              {{"field",
                std::is_same_v<typename TBtnClass::SDispForm, NSKZCore::SCDeclareConstant::SDateDispForm>
                    ? DATE
                    : TIME,
                {}}})),
          rpLink(std::make_unique<NSKZCore::CRpLink_OnMemVer>()),
          btnClass(std::make_unique<TBtnClass>(1, 1, "empty", &table, rpLink))
    {
        rpLink->InsertFld(1);
    }

    // Adds records behind those there are.
    BtnIDList Add(const std::vector<const char*>& values)
    {
        BtnIDList cells(values.size());
        const DWORD first = btnClass->GetRecCount();
        btnClass->AddRecs(first, static_cast<DWORD>(values.size()), values.data(), cells.data(), counts);
        for (DWORD i = 0; i < cells.size(); ++i) {
            const DWORD rec = first + i;
            rpLink->AddRecList(1, cells[i], &rec, 1);
        }
        return cells;
    }
    void Delete(DWORD first, DWORD count)
    {
        rpLink->DeleteRec(first, count);
        btnClass->DeleteRecs(first, count);
    }
    BtnIDList GetNameOrder(unsigned int flags = 0) const
    {
        BtnIDList btnIDs;
        btnClass->GetBtnNameOrdList(flags, btnIDs);
        return btnIDs;
    }
    BtnIDList GetMembers(DWORD btnID) const
    {
        BtnIDList members{4711};
        btnClass->GetMemberBtnIDListOfSpBtn(btnID, members);
        return members;
    }
    std::string GetText(DWORD btnID) const
    {
        const char* text = nullptr;
        btnClass->GetAliasOfBtn(btnID, text);
        return text == nullptr ? "(none)" : text;
    }
    unsigned int GetVisibleInfo(DWORD btnID) const
    {
        unsigned int visibleInfo = 4711;
        btnClass->GetVisibleInfoOfBtn(btnID, visibleInfo);
        return visibleInfo;
    }
    BtnIDList GetSystemBtns() const
    {
        BtnIDList all;
        BtnIDList ofSystem;
        btnClass->GetAllSpBtnIDList(all, true);
        for (const DWORD btnID : all) {
            bool managedByUser = true;
            if (btnClass->GetBtnMngrInfoOfSpBtn(btnID, managedByUser) && !managedByUser)
                ofSystem.push_back(btnID);
        }
        return ofSystem;
    }
    // The members of the system-managed buttons, by the identifiers of the buttons.
    BtnIDLists GetGroups() const
    {
        BtnIDLists groups;
        for (const DWORD btnID : GetSystemBtns())
            groups.push_back(GetMembers(btnID));
        return groups;
    }
    // The same in any order and without the empty ones.
    std::set<BtnIDList> GetSetOfGroups() const
    {
        const BtnIDLists groups = GetGroups();
        std::set<BtnIDList> withMembers(groups.begin(), groups.end());
        withMembers.erase(BtnIDList());
        return withMembers;
    }
    std::vector<std::string> GetGroupTexts() const
    {
        std::vector<std::string> texts;
        for (const DWORD btnID : GetSystemBtns())
            texts.push_back(GetText(btnID));
        return texts;
    }
    BtnIDList GetRecs(DWORD btnID) const
    {
        BtnIDList recs(btnClass->GetRecCount() + 1);
        BtnIDList first(recs.size());
        BtnIDList second(recs.size());
        DWORD* buffers[] = {first.data(), second.data()};
        DWORD* list = recs.data();
        DWORD count = 0;
        btnClass->GetRecListThatRelatesToBtn(btnID, list, count, buffers);
        return BtnIDList(list, list + count);
    }

    NSKZCore::CSourceDataMngr table;
    std::unique_ptr<NSKZCore::IRpLink> rpLink;
    std::unique_ptr<TBtnClass> btnClass;
    NSKZCore::TCBtnIDAssArr<DWORD> counts;
};

} // namespace NSKZ::Test

#endif
