#include "CLinkTableIndexReader.h"

#include "SCLinkTableFile.h"

namespace NSKZ::NSKZCore {

CLinkTableIndexReader::CLinkTableIndexReader(const char* dir)
    : reader(SCLinkTableFile::MakeIndexPath(dir).c_str(), true)
{
    unsigned long long size = 0;
    reader.GetFileSize(size); // stays 0 where there is no file
    restCount = size / sizeof(DWORD);
    oddBytes = size % sizeof(DWORD);
}

bool CLinkTableIndexReader::ReadList(DWORD count, std::vector<DWORD>& list)
{
    if (!ProveRest(count))
        return false;
    list.resize(count, 0);
    return reader.ReadData(list.data(), count) == CBinaryReader::READDATA_OK;
}

bool CLinkTableIndexReader::ReadList(unsigned long long count, CDWORDArray& list)
{
    if (!ProveRest(count))
        return false;
    list.Resize(count);
    return reader.ReadData(list.GetData(), list.GetCount()) == CBinaryReader::READDATA_OK;
}

bool CLinkTableIndexReader::ProveEnd() const noexcept
{
    return (restCount == 0 && oddBytes == 0) || FailProof();
}

bool CLinkTableIndexReader::FailProof() const noexcept
{
    unsigned long long size = 0;
    if (reader.GetFileSize(size)) // which tells, otherwise, why the file could not be opened
        SetLastError(ERROR_INVALID_DATA);
    return false;
}

} // namespace NSKZ::NSKZCore
