#ifndef CLINKTABLEINDEXREADER_H
#define CLINKTABLEINDEXREADER_H

#include "CBinaryReader.h"
#include "CDWORDArray.h"

#include <vector>

namespace NSKZ::NSKZCore {

// Reads the index file of a link table and proves what it tells against the length of the file before any
// memory is taken for it: a list is as long as its cells are in the file, whatever its count says.
//
// A call that fails sets the last error: ERROR_INVALID_DATA for a file that contradicts itself, or the
// system's.
class CLinkTableIndexReader
{
public:
    // Opens the index file in a directory, whose path ends in a separator. A file that cannot be opened fails
    // at the first call. Throws std::bad_alloc.
    explicit CLinkTableIndexReader(const char* dir);

    // The next number. Inline: an index is millions of them.
    bool Read(DWORD& value) noexcept
    {
        return ProveRest(1) && reader.ReadData(value) == CBinaryReader::READDATA_OK;
    }
    // The next `count` numbers. Throws std::bad_alloc, never for more than the file has.
    bool ReadList(DWORD count, std::vector<DWORD>& list);
    bool ReadList(unsigned long long count, CDWORDArray& list);

    // Whether nothing stands behind what has been read.
    bool ProveEnd() const noexcept;

    // The numbers that are still to come.
    unsigned long long GetRestCount() const noexcept { return restCount; }

private:
    // Takes `count` numbers from what is to come.
    bool ProveRest(unsigned long long count) noexcept
    {
        if (count > restCount)
            return FailProof();
        restCount -= count;
        return true;
    }
    bool FailProof() const noexcept;

    CBinaryReader reader;
    unsigned long long restCount = 0;
    unsigned long long oddBytes = 0; // what is left of the file behind its last whole number
};

} // namespace NSKZ::NSKZCore

#endif
