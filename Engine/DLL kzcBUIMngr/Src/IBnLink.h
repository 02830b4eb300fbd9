#ifndef IBNLINK_H
#define IBNLINK_H

#include "SCBUICoreCom.h"
#include "SCKZCoreCom.h"

#include <vector>

namespace NSKZ::NSKZCore {

// Which button does a record carry in a class: a table of one column for each source button class and one row
// for each record, the cell being the button of that record in that class.
//
// Rows stand in the order of the source records, from 0, and every column has the same number of them. A
// record whose field is empty carries BTN_ID_EMPVAL. The table neither proves nor interprets what is written
// into a cell. Cells of a column inserted without data and cells opened by InsertRec hold anything until they
// are written.
//
// Results: false for a class that has no column and for positions outside the table, with the table and the
// outputs untouched. A position plus count that does not fit 32 bits is outside. Memory exhaustion arrives as
// std::bad_alloc with the table as it was; outputs hold anything then.
//
// Threads: one thread at a time uses a table, or several read it. InsertFld, DeleteFld, InsertRec and
// DeleteRec exclude each other by a lock of their own; nothing else takes it.
class IBnLink
{
public:
    IBnLink() = default;
    IBnLink(const IBnLink&) = delete;
    virtual ~IBnLink();

    // Writes the table to files in a directory, which is made with those above it where it is missing: an
    // index and a file for each column. `dir` is an absolute path in the host's code page and ends in a
    // separator. Files of the same names are overwritten; others stay, and are never read. False if something
    // fails; the last error tells why (ERROR_INVALID_DATA for a path that does not serve), and files written
    // until then stay. Throws std::bad_alloc. Costs one write of the cells.
    virtual bool WriteTo(const char* dir) const = 0;

    // Replaces the table by what another one of the same version type has written to a directory.
    // `endianness` and `dataModel` are those of the machine that wrote it. False, with the table empty, if
    // they are not this one's, or if a file is missing, contradicts itself or another one, or cannot be read;
    // the last error tells why. Everything is proved before it is used, except what cells hold: any number
    // may stand there. No memory is taken that is out of proportion to the files. Throws std::bad_alloc, with
    // the table empty. Costs one read of the cells.
    virtual bool ReadFrom(const char* dir, SCKZCoreCom::EEndianness endianness,
                          SCKZCoreCom::EDataModel dataModel) = 0;

    // Adds the column of a source class, filled with the `recCount` cells of `btnIDs`, or with anything when
    // that is null. False if `btnClassID` is no source class or has a column already, or if another class has
    // a column and `recCount` is not the table's count of records. The first column sets that count. Costs
    // one copy of the cells; the positions of the columns take 4 bytes for each class identifier up to the
    // largest.
    virtual bool InsertFld(DWORD btnClassID, DWORD recCount, const DWORD* btnIDs) = 0;

    // Removes the column of a class. The count of records stays, but without any column the next InsertFld
    // sets it anew.
    virtual bool DeleteFld(DWORD btnClassID) = 0;

    // Opens `count` rows before row `pos` in every column; what they hold must be written by SetData. How a
    // `pos` behind the last row and a `count` of 0 are taken is told by each table. False if the rows could
    // not be numbered in 32 bits. Costs a block move of each column.
    virtual bool InsertRec(DWORD pos, DWORD count) = 0;

    // Removes the `count` rows from `pos` on from every column. False if they are not all there. Costs a
    // block move of each column.
    virtual bool DeleteRec(DWORD pos, DWORD count) = 0;

    // Overwrites the whole column of a class. `count` is the table's count of records.
    virtual bool SetFldData(DWORD btnClassID, DWORD count, const DWORD* btnIDs) = 0;

    // Copies the `count` cells from row `pos` on to `btnIDs`.
    virtual bool GetData(DWORD btnClassID, DWORD pos, DWORD count, DWORD* btnIDs) const = 0;

    // Replaces `btnIDs` by the distinct buttons of the listed records, in the order in which they are first
    // met. A cell that is neither the empty value nor a normal button is given each time it is met. The
    // record numbers are trusted to be rows of the table; they need no order. Linear in the list, plus two
    // bytes for each button identifier up to the largest met.
    virtual bool GetBtnIDListOfRecList(DWORD btnClassID, DWORD recCount, const DWORD* recNumList,
                                       std::vector<DWORD>& btnIDs) const = 0;

    // The same over all records.
    virtual bool GetBtnIDList(DWORD btnClassID, std::vector<DWORD>& btnIDs) const = 0;

    // The count of rows.
    virtual DWORD GetRecCount() const = 0;

    // The cell of one record.
    virtual bool GetBtnID(DWORD btnClassID, DWORD recNum, DWORD& btnID) const = 0;

    // Overwrites the `count` cells from row `pos` on.
    virtual bool SetData(DWORD btnClassID, DWORD pos, DWORD count, const DWORD* btnIDs) = 0;

    // Empties the table.
    virtual void Clear() = 0;

    virtual SCBUICoreCom::ELinkTableVerType GetVersionType() const = 0;

    // Writes the cell of every listed record to `btnIDs`, in the order of the list and as often as a record
    // stands in it. The record numbers are trusted to be rows of the table. Allocates nothing where cells are
    // in plain memory: this is what a walk over many records takes its buttons from, a stretch at a time.
    virtual bool GetBtnIDsOfRecs(DWORD btnClassID, DWORD recCount, const DWORD* recNumList,
                                 DWORD* btnIDs) const = 0;

    // Whether a class has a column.
    virtual bool ExistFld(DWORD btnClassID) const = 0;

    // Replaces `btnClassIDs` by all classes that have a column, ascending. Linear in the largest identifier.
    virtual void GetBtnClassIDList(std::vector<DWORD>& btnClassIDs) const = 0;

protected:
    IBnLink& operator=(const IBnLink&) = default;
};

} // namespace NSKZ::NSKZCore

#endif
