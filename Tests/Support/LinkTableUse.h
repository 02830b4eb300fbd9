#ifndef LINKTABLEUSE_H
#define LINKTABLEUSE_H

#include "IBnLink.h"
#include "IRpLink.h"

#include <algorithm>
#include <vector>

// Use that is made of a table whose content is not known: whatever files it was read from, it must survive
// this. The record numbers and buttons in its cells are the caller's concern and are not followed.

namespace NSKZ::Test {

inline void UseTable(NSKZCore::IBnLink& link, DWORD classIDEnd)
{
    std::vector<DWORD> cells(std::min<DWORD>(link.GetRecCount(), 1000), 7);
    const auto count = static_cast<DWORD>(cells.size());
    std::vector<DWORD> btnClassIDs;
    for (DWORD btnClassID = 0; btnClassID < classIDEnd; ++btnClassID) {
        if (link.ExistFld(btnClassID))
            btnClassIDs.push_back(btnClassID);
    }
    if (!btnClassIDs.empty()) { // without a column no memory stands behind the count of records
        link.InsertRec(1, 3);
        link.DeleteRec(0, 2);
    }
    for (const DWORD btnClassID : btnClassIDs) {
        DWORD btnID = 0;
        link.GetData(btnClassID, 0, count, cells.data());
        link.GetBtnID(btnClassID, link.GetRecCount() - 1, btnID);
        link.SetData(btnClassID, 0, count, cells.data());
    }
    for (const DWORD btnClassID : btnClassIDs)
        link.DeleteFld(btnClassID);
    link.InsertFld(1, 1, nullptr);
    link.Clear();
}

inline void UseTable(NSKZCore::IRpLink& link)
{
    using namespace NSKZ::NSKZCore;
    std::vector<DWORD> btnClassIDs;
    link.GetBtnClassIDList(btnClassIDs);
    for (const DWORD btnClassID : btnClassIDs) {
        DWORD size = 0;
        link.GetRecCountOfFld(btnClassID, size);
        std::vector<DWORD> recs(size);
        TCBtnIDAssArr<SRecordList> lists;
        link.GetAllRecList(btnClassID, lists, recs.data());
        std::vector<DWORD> btnIDs;
        lists.ForEach([&btnIDs](DWORD btnID, const SRecordList&) { btnIDs.push_back(btnID); });
        btnIDs.resize(std::min<std::size_t>(btnIDs.size(), 20));
        std::vector<DWORD> added = {0, 5, 9};
        for (const DWORD btnID : btnIDs) {
            DWORD count = 0;
            link.GetRecList(btnClassID, btnID, recs.data(), count);
            link.AddRecList(btnClassID, btnID, added.data(), 3);
        }
        const std::vector<DWORD> btnIDsOfNone = {1, 2, 3, SCBUICoreCom::BTN_ID_INC_BEGIN};
        for (const DWORD btnID : btnIDsOfNone)
            link.SetRecList(btnClassID, btnID, added.data(), 2);
        lists.Clear();
        lists.Set(2, SRecordList{added.data(), 3});
        lists.Set(4, SRecordList{added.data(), 1});
        link.InsertRec(btnClassID, 2, 4, lists, 4);
        if (!btnIDs.empty())
            link.DeleteBtn(btnClassID, btnIDs.back());
    }
    link.DeleteRec(1, 3);
    link.ClearOfFixedSpec();
    for (const DWORD btnClassID : btnClassIDs)
        link.DeleteFld(btnClassID);
    link.InsertFld(1);
    link.Clear();
}

} // namespace NSKZ::Test

#endif
