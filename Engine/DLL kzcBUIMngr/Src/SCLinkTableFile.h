#ifndef SCLINKTABLEFILE_H
#define SCLINKTABLEFILE_H

#include "CCellTable.h"
#include "CDWORDArray.h"
#include "SCKZCoreCom.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace NSKZ::NSKZCore {

// What the files of both link tables have in common. A table has a directory of its own; in it `0.dat` is the
// index, and `1.dat`, `2.dat`, ... are the cells of its fields. All is 32-bit numbers in the byte order of
// the machine.
//
// A directory is told by its path, in the host's code page. An operation that fails sets the last error:
// ERROR_INVALID_DATA for a path or a file that is not as it should be, or the system's. Those that make texts
// or arrays throw std::bad_alloc.
class SCLinkTableFile
{
public:
    SCLinkTableFile() = delete;

    // Makes the directory, with those above it, where it is missing. False if that cannot be done, and if
    // `dir` does not end in a separator.
    static bool PrepareWriting(const char* dir);

    // Whether files can be read here: `dir` ends in a separator, and they were written by a machine like this
    // one.
    static bool PrepareReading(const char* dir, SCKZCoreCom::EEndianness endianness,
                               SCKZCoreCom::EDataModel dataModel);

    // The path of the index in a directory, and that of a field's cells.
    static std::string MakeIndexPath(const char* dir);
    static std::string MakeFldPath(const char* dir, DWORD fld);

    // Writes the cells of all fields.
    static bool WriteFlds(const char* dir, const std::vector<CDWORDArray>& flds);

    // Reads the cells of a field, which are its whole file: `cells` becomes as long as it is. False for a
    // file that is no array of cells. The first form wants exactly `count` of them, the second at least
    // `minCount`; memory is taken for what is there.
    static bool ReadFld(const char* dir, DWORD fld, DWORD count, CDWORDArray& cells);
    static bool ReadFldOfUnknownLength(const char* dir, DWORD fld, DWORD minCount, CDWORDArray& cells);

    // The same for packed cells: writes those of the first `fldCount` fields of a table, and reads those of a
    // field into a new one behind the fields of `cells`. False too if they are fewer than `minCount` or more
    // than `maxCount`.
    static bool WriteFlds(const char* dir, const VCFixedLenTbl_MemSavVer& cells, unsigned int fldCount);
    static bool AppendFld(const char* dir, DWORD minCount, DWORD maxCount, CCellTable& cells);

    // Whether the entries of these lists that are not 0 are the positions 1 to `fldCount`, each once. Sets no
    // last error.
    static bool AreFldPositions(std::initializer_list<const std::vector<DWORD>*> lists, DWORD fldCount);
};

} // namespace NSKZ::NSKZCore

#endif
