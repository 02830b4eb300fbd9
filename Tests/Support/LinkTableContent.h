#ifndef LINKTABLECONTENT_H
#define LINKTABLECONTENT_H

#include "IBnLink.h"
#include "IRpLink.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

// What link tables hold, to be filled in and compared.

namespace NSKZ::Test {

using List = std::vector<DWORD>;
using Lists = std::map<DWORD, List>; // by button

inline List GetColumn(const NSKZCore::IBnLink& link, DWORD btnClassID)
{
    List cells(link.GetRecCount());
    EXPECT_TRUE(link.GetData(btnClassID, 0, link.GetRecCount(), cells.data())) << btnClassID;
    return cells;
}

inline bool InsertFld(NSKZCore::IBnLink& link, DWORD btnClassID, const List& cells)
{
    return link.InsertFld(btnClassID, static_cast<DWORD>(cells.size()), cells.data());
}

// Everything a table holds of the classes 0 to 40.
struct SBnLinkContent
{
    DWORD recCount = 0;
    std::map<DWORD, List> columns;

    bool operator==(const SBnLinkContent&) const = default;
};

inline SBnLinkContent GetContent(const NSKZCore::IBnLink& link)
{
    SBnLinkContent content;
    content.recCount = link.GetRecCount();
    for (DWORD btnClassID = 0; btnClassID <= 40; ++btnClassID) {
        if (link.ExistFld(btnClassID))
            content.columns[btnClassID] = GetColumn(link, btnClassID);
    }
    return content;
}

// Lists as the table takes them; they borrow from the object that made them.
class CBorrowedLists
{
public:
    explicit CBorrowedLists(const Lists& lists) : owned(lists)
    {
        for (auto& [btnID, list] : owned) {
            EXPECT_TRUE(
                borrowed.Set(btnID, NSKZCore::SRecordList{list.data(), static_cast<DWORD>(list.size())}));
            total += static_cast<DWORD>(list.size());
        }
    }
    CBorrowedLists(const CBorrowedLists&) = delete;
    CBorrowedLists& operator=(const CBorrowedLists&) = delete;
    const NSKZCore::TCBtnIDAssArr<NSKZCore::SRecordList>& Get() const { return borrowed; }
    DWORD GetTotal() const { return total; }

private:
    Lists owned;
    NSKZCore::TCBtnIDAssArr<NSKZCore::SRecordList> borrowed;
    DWORD total = 0;
};

inline bool InsertFld(NSKZCore::IRpLink& link, DWORD btnClassID, const Lists& lists)
{
    const CBorrowedLists borrowed(lists);
    return link.InsertFld(btnClassID, borrowed.Get(), borrowed.GetTotal());
}

inline bool SetRecList(NSKZCore::IRpLink& link, DWORD btnClassID, DWORD btnID, const List& list)
{
    return link.SetRecList(btnClassID, btnID, list.data(), static_cast<DWORD>(list.size()));
}

inline bool AddRecList(NSKZCore::IRpLink& link, DWORD btnClassID, DWORD btnID, const List& list)
{
    return link.AddRecList(btnClassID, btnID, list.data(), static_cast<DWORD>(list.size()));
}

inline bool DeleteRecList(NSKZCore::IRpLink& link, DWORD btnClassID, DWORD btnID, const List& list)
{
    return link.DeleteRecList(btnClassID, btnID, list.data(), static_cast<DWORD>(list.size()));
}

inline void InsertRec(NSKZCore::IRpLink& link, DWORD btnClassID, DWORD pos, DWORD count, const Lists& lists)
{
    const CBorrowedLists borrowed(lists);
    link.InsertRec(btnClassID, pos, count, borrowed.Get(), borrowed.GetTotal());
}

inline DWORD GetFldSize(const NSKZCore::IRpLink& link, DWORD btnClassID)
{
    DWORD size = 0;
    EXPECT_TRUE(link.GetRecCountOfFld(btnClassID, size)) << btnClassID;
    return size;
}

inline List GetRecList(const NSKZCore::IRpLink& link, DWORD btnClassID, DWORD btnID)
{
    DWORD count = 0;
    EXPECT_TRUE(link.GetRecCount(btnClassID, btnID, count));
    List list(count);
    DWORD listed = 77;
    EXPECT_TRUE(link.GetRecList(btnClassID, btnID, list.data(), listed));
    EXPECT_EQ(listed, count);
    return list;
}

// One class: its area, and the lists of the buttons that have an entry.
struct SFld
{
    List area;
    Lists lists;

    bool operator==(const SFld&) const = default;
};

inline SFld GetFld(const NSKZCore::IRpLink& link, DWORD btnClassID)
{
    SFld fld;
    fld.area.resize(GetFldSize(link, btnClassID));
    NSKZCore::TCBtnIDAssArr<NSKZCore::SRecordList> recLists;
    recLists.Set(5, NSKZCore::SRecordList{nullptr, 3}); // must not stay
    EXPECT_TRUE(link.GetAllRecList(btnClassID, recLists, fld.area.data()));
    for (auto it = recLists.begin(); it != recLists.end(); ++it) {
        const auto pos = static_cast<std::size_t>(it->recList - fld.area.data());
        EXPECT_LE(pos + it->recCount, fld.area.size()) << it.GetKey();
        fld.lists[it.GetKey()] = List(it->recList, it->recList + it->recCount);
    }
    return fld;
}

using RpLinkContent = std::map<DWORD, SFld>; // by class

inline RpLinkContent GetContent(const NSKZCore::IRpLink& link)
{
    RpLinkContent content;
    List btnClassIDs = {9};
    link.GetBtnClassIDList(btnClassIDs);
    for (const DWORD btnClassID : btnClassIDs)
        content[btnClassID] = GetFld(link, btnClassID);
    return content;
}

inline Lists GetLists(const NSKZCore::IRpLink& link, DWORD btnClassID)
{
    return GetFld(link, btnClassID).lists;
}

} // namespace NSKZ::Test

#endif
