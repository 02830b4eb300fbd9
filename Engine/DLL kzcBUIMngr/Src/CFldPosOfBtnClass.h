#ifndef CFLDPOSOFBTNCLASS_H
#define CFLDPOSOFBTNCLASS_H

#include "CBinaryWriter.h"
#include "CLinkTableIndexReader.h"
#include "SCBUICoreCom.h"

#include <vector>

namespace NSKZ::NSKZCore {

// At which index a table keeps the field of a button class, for classes of every kind. Each kind has a vector
// of its own, indexed by the class's number within the kind, so that a look-up is a range test and an index.
// The indices in use are 0, 1, 2, ... without a gap.
class CFldPosOfBtnClass
{
public:
    // Stores the index of a class's field; false, with `fld` untouched, if it has none.
    bool Find(DWORD btnClassID, DWORD& fld) const noexcept;

    // Sees to it that an Insert of the class that follows cannot run out of memory: throws std::bad_alloc if
    // that cannot be had, nothing changed. False if `btnClassID` is no class or is held already.
    bool PrepareInsert(DWORD btnClassID);

    // Ties a class, for which PrepareInsert was true, to the field behind all others.
    void Insert(DWORD btnClassID, DWORD fld) noexcept;

    // Unties a class that is held and closes the gap: each index above its own falls by one.
    void Delete(DWORD btnClassID) noexcept;

    // Marks, by index, the fields of the listed classes among the `fldCount` that there are; classes without
    // one are passed over. Throws std::bad_alloc.
    std::vector<bool> MarkFlds(const std::vector<DWORD>& btnClassIDs, DWORD fldCount) const;
    // Unties the classes of all fields that are marked, by index, in one pass. Throws std::bad_alloc with
    // nothing changed.
    void Delete(const std::vector<bool>& isDeleted);

    void Clear() noexcept;

    // Replaces `btnClassIDs` by the classes held: source, common virtual, fixed virtual, each ascending.
    void GetBtnClassIDList(std::vector<DWORD>& btnClassIDs) const;

    // Writes the three vectors to the index file of a table, each behind its size; whether that went well is
    // told by the writer. Reads them, and the count of fields behind them, back: false with the last error,
    // and with no class held, if they cannot be read or do not tie `fldCount` fields to one class each.
    // Reading throws std::bad_alloc likewise.
    void WriteTo(CBinaryWriter& writer) const noexcept;
    bool ReadFrom(CLinkTableIndexReader& reader, DWORD& fldCount);

    // The same for a table that has fields of source classes alone: the one vector. Reading proves it against
    // the count of fields that is given.
    void WriteSrcTo(CBinaryWriter& writer) const noexcept;
    bool ReadSrcFrom(CLinkTableIndexReader& reader, DWORD fldCount);

private:
    using Store = std::vector<DWORD>;

    static void WriteStore(CBinaryWriter& writer, const Store& store) noexcept;
    static bool ReadStore(CLinkTableIndexReader& reader, Store& store);
    // Whether no class has a field that cannot have one, and each of the fields is that of one class.
    bool Prove(DWORD fldCount) const;

    // The vector of a class's kind and the class's number in it; null for what is no class.
    const std::vector<DWORD>* GetStore(DWORD btnClassID, DWORD& index) const noexcept;
    std::vector<DWORD>* GetStore(DWORD btnClassID, DWORD& index) noexcept;

    // 0 no field, else its index plus 1.
    std::vector<DWORD> srcFldPos;    // by class identifier
    std::vector<DWORD> comVirFldPos; // by class identifier less BTNCLS_ID_VIR_COMMON_BEGIN
    std::vector<DWORD> fixVirFldPos; // by class identifier less BTNCLS_ID_VIR_FIXED_BEGIN
};

} // namespace NSKZ::NSKZCore

#endif
