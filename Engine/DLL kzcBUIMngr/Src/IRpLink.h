#ifndef IRPLINK_H
#define IRPLINK_H

#include "SCBUICoreCom.h"
#include "SCKZCoreCom.h"
#include "SRecordList.h"
#include "TCBtnIDAssArr.h"

#include <vector>

namespace NSKZ::NSKZCore {

// Which records does a button cover: the inverse of IBnLink. It has a field for a button class of any kind,
// and in it a list of record numbers for a button of any kind. All lists of a class lie in one record area; a
// button is tied to its slice of it.
//
// A record list is ascending and without duplicates. Callers guarantee that for what they hand in; nothing
// checks it, and nothing sorts. A button has an entry only while it covers a record (DeleteRecList apart).
// One record may be covered by many buttons of a class.
//
// Results: false for a class that has no field and where an operation says so, with the table and the outputs
// untouched. Memory exhaustion arrives as std::bad_alloc with the table as it was; outputs hold anything
// then.
//
// Threads: one thread at a time uses a table, or several read it. InsertFld and DeleteFld exclude each other
// by a lock of their own; nothing else takes it.
class IRpLink
{
public:
    IRpLink() = default;
    IRpLink(const IRpLink&) = delete;
    virtual ~IRpLink();

    // Writes the table to files in a directory, which is made with those above it where it is missing: an
    // index and a file for each field. `dir` is an absolute path in the host's code page and ends in a
    // separator. Files of the same names are overwritten; others stay, and are never read. False if something
    // fails; the last error tells why (ERROR_INVALID_DATA for a path that does not serve), and files written
    // until then stay. Throws std::bad_alloc. Costs one write of the cells.
    virtual bool WriteTo(const char* dir) const = 0;

    // Replaces the table by what another one of the same version type has written to a directory.
    // `endianness` and `dataModel` are those of the machine that wrote it. False, with the table empty, if
    // they are not this one's, or if a file is missing, contradicts itself or another one, or cannot be read;
    // the last error tells why. Everything is proved before it is used, except the record
    // numbers. No memory is taken that is out of proportion to the files. Throws std::bad_alloc, with the
    // table empty. Costs one read of the cells.
    virtual bool ReadFrom(const char* dir, SCKZCoreCom::EEndianness endianness,
                          SCKZCoreCom::EDataModel dataModel) = 0;

    // Adds a field without records for a class. False if `btnClassID` is no class or has a field already. The
    // positions of the fields take 4 bytes for each identifier, within its kind of class, up to the largest.
    virtual bool InsertFld(DWORD btnClassID) = 0;

    // Adds a field for a class and fills it with the records of `recLists`, in the order of that array's
    // iterator; an empty list makes no entry. The record area has room for `total` records, also where the
    // lists hold fewer. False as above, and if the lists hold more than `total`.
    virtual bool InsertFld(DWORD btnClassID, const TCBtnIDAssArr<SRecordList>& recLists, DWORD total) = 0;

    // Removes the field of a class with all it holds.
    virtual bool DeleteFld(DWORD btnClassID) = 0;

    // Whether a class has a field.
    virtual bool ExistFld(DWORD btnClassID) const = 0;

    // Changes of one button's list move the records behind its slice and, where its length changes, walk all
    // entries of the class. A list handed in is copied.

    // Unites records into a button's list. False if there is a record and `btnID` is no button.
    virtual bool AddRecList(DWORD btnClassID, DWORD btnID, const DWORD* recNumList, DWORD recCount) = 0;

    // Takes records out of a button's list. False if the button has no entry. How the records must be given,
    // and what becomes of the positions of other buttons, is told by each table: it is no general means of
    // change. SetRecList is.
    virtual bool DeleteRecList(DWORD btnClassID, DWORD btnID, const DWORD* recNumList, DWORD recCount) = 0;

    // Removes a button's entry and its records. False if it has no entry.
    virtual bool DeleteBtn(DWORD btnClassID, DWORD btnID) = 0;

    // Replaces a button's list; 0 records remove the entry, if there is one. False if there is a record and
    // `btnID` is no button.
    virtual bool SetRecList(DWORD btnClassID, DWORD btnID, const DWORD* recNumList, DWORD recCount) = 0;

    // Copies a button's list to `recNumList`, which has room for it (GetRecCount), and stores its count: 0
    // for a button without an entry.
    virtual bool GetRecList(DWORD btnClassID, DWORD btnID, DWORD* recNumList, DWORD& recCount) const = 0;

    // Copies the whole record area of a class to `recArea`, which has room for it (GetRecCountOfFld), and
    // replaces `recLists` by the list of every button, each borrowing its stretch of `recArea`.
    virtual bool GetAllRecList(DWORD btnClassID, TCBtnIDAssArr<SRecordList>& recLists,
                               DWORD* recArea) const = 0;

    // Drops what only the fixed part of a saved environment holds: all records of a fixed virtual class, and
    // the inc and cll buttons of another class. The first form does so for every class, one after the other:
    // if memory runs out, the classes before are cleared and the others as they were.
    virtual void ClearOfFixedSpec() = 0;
    virtual bool ClearOfFixedSpec(DWORD btnClassID) = 0;

    // How many records a button covers: 0 without an entry.
    virtual bool GetRecCount(DWORD btnClassID, DWORD btnID, DWORD& recCount) const = 0;

    // How long the record area of a class is: at least the sum of its lists.
    virtual bool GetRecCountOfFld(DWORD btnClassID, DWORD& recCount) const = 0;

    // Replaces `btnClassIDs` by all classes that have a field: source, common virtual, fixed virtual, each
    // ascending. Linear in the largest identifier of each kind.
    virtual void GetBtnClassIDList(std::vector<DWORD>& btnClassIDs) const = 0;

    // Empties the table.
    virtual void Clear() = 0;

    // Follows the insertion of `count` records before record `pos`, for one class: record numbers from `pos`
    // on rise by `count`, then the lists of `newRecLists`, which hold final record numbers, are united into
    // those of their buttons. `newTotal` is the sum of their counts; the record area grows by it. An unknown
    // class changes nothing. Throws ECAbnormalData (MSG_ABNORMAL_DATASIZE), with the table as it was, if the
    // lists hold more than `newTotal`. The caller has proved that no record number leaves 32 bits by it.
    // Touches each record a fixed number of times.
    virtual void InsertRec(DWORD btnClassID, DWORD pos, DWORD count,
                           const TCBtnIDAssArr<SRecordList>& newRecLists, DWORD newTotal) = 0;

    // Follows the deletion of the `count` records from `pos` on, for every class: they leave all lists, and
    // record numbers behind them fall by `count`. Touches each record a fixed number of times.
    virtual void DeleteRec(DWORD pos, DWORD count) = 0;

    virtual SCBUICoreCom::ELinkTableVerType GetVersionType() const = 0;

    // DeleteFld for many classes in one pass; those that have no field are passed over.
    virtual void DeleteFlds(const std::vector<DWORD>& btnClassIDs) = 0;

    // Replaces `btnIDs` by all buttons of a class that have an entry, by kind and then ascending. Linear in
    // the largest identifiers.
    virtual bool GetBtnIDList(DWORD btnClassID, std::vector<DWORD>& btnIDs) const = 0;

    // Drops all records of a class, which keeps its field. Linear in the largest identifiers of its buttons.
    virtual bool ClearFld(DWORD btnClassID) = 0;

protected:
    IRpLink& operator=(const IRpLink&) = default;
};

} // namespace NSKZ::NSKZCore

#endif
