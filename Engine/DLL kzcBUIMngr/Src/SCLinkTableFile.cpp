#include "SCLinkTableFile.h"

#include "CBinaryReader.h"
#include "CBinaryWriter.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace NSKZ::NSKZCore {

namespace {

constexpr DWORD FILE_NUMBER_OF_INDEX = 0;

std::string MakePath(const char* dir, DWORD fileNumber)
{
    char number[16];
    DWORD length = 0;
    SCKZCoreCom::ConvertNumericValueIntoString(fileNumber, number, sizeof number, length); // always fits
    return std::string(dir).append(number, length).append(SCKZCoreCom::STR_EXTENSION_DAT);
}

bool FailAsInvalid() noexcept
{
    SetLastError(ERROR_INVALID_DATA);
    return false;
}

bool IsDirectoryPath(const char* dir) noexcept
{
    return SCKZCoreCom::IsDirectoryPath(dir, static_cast<DWORD>(std::strlen(dir))) || FailAsInvalid();
}

// Reads a file of `minCount` to `maxCount` cells.
bool ReadCells(const char* dir, DWORD fld, DWORD minCount, DWORD maxCount, CDWORDArray& cells)
{
    CBinaryReader reader(SCLinkTableFile::MakeFldPath(dir, fld).c_str(), false);
    unsigned long long size = 0;
    if (!reader.GetFileSize(size))
        return false;
    const unsigned long long count = size / sizeof(DWORD);
    if (size % sizeof(DWORD) != 0 || count < minCount || count > maxCount)
        return FailAsInvalid();
    cells.Resize(count);
    return reader.ReadData(cells.GetData(), cells.GetCount()) == CBinaryReader::READDATA_OK;
}

} // namespace

bool SCLinkTableFile::PrepareWriting(const char* dir)
{
    switch (static_cast<DWORD>(SHCreateDirectoryExA(nullptr, dir, nullptr))) {
    case ERROR_SUCCESS:
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS: // the files in it will tell
        return IsDirectoryPath(dir);
    default:
        return FailAsInvalid();
    }
}

bool SCLinkTableFile::PrepareReading(const char* dir, SCKZCoreCom::EEndianness endianness,
                                     SCKZCoreCom::EDataModel dataModel)
{
    if (endianness != SCKZCoreCom::GetEndiannessOfPresentEnvironment() ||
        dataModel != SCKZCoreCom::GetDataModelOfPresentEnvironment())
        return FailAsInvalid();
    return IsDirectoryPath(dir);
}

std::string SCLinkTableFile::MakeIndexPath(const char* dir)
{
    return MakePath(dir, FILE_NUMBER_OF_INDEX);
}

std::string SCLinkTableFile::MakeFldPath(const char* dir, DWORD fld)
{
    return MakePath(dir, fld + 1);
}

bool SCLinkTableFile::WriteFlds(const char* dir, const std::vector<CDWORDArray>& flds)
{
    for (std::size_t fld = 0; fld < flds.size(); ++fld) {
        CBinaryWriter writer(MakeFldPath(dir, static_cast<DWORD>(fld)).c_str(), false);
        if (!writer.WriteData(flds[fld].GetData(), flds[fld].GetCount()) || !writer.Close())
            return false;
    }
    return true;
}

bool SCLinkTableFile::ReadFld(const char* dir, DWORD fld, DWORD count, CDWORDArray& cells)
{
    return ReadCells(dir, fld, count, count, cells);
}

bool SCLinkTableFile::ReadFldOfUnknownLength(const char* dir, DWORD fld, DWORD minCount, CDWORDArray& cells)
{
    return ReadCells(dir, fld, minCount, std::numeric_limits<DWORD>::max(), cells);
}

bool SCLinkTableFile::WriteFlds(const char* dir, const VCFixedLenTbl_MemSavVer& cells, unsigned int fldCount)
{
    for (unsigned int fld = 0; fld < fldCount; ++fld) {
        if (!cells.WriteFldData(fld, MakeFldPath(dir, fld).c_str()))
            return false;
    }
    return true;
}

bool SCLinkTableFile::AppendFld(const char* dir, DWORD minCount, DWORD maxCount, CCellTable& cells)
{
    const unsigned int fld = cells.GetFldCount();
    if (!cells.InsertFld(fld, 0, nullptr) || !cells.ReadFldData(fld, MakeFldPath(dir, fld).c_str(), true))
        return false;
    const DWORD count = cells.GetRecCount(fld);
    return (count >= minCount && count <= maxCount) || FailAsInvalid();
}

bool SCLinkTableFile::AreFldPositions(std::initializer_list<const std::vector<DWORD>*> lists, DWORD fldCount)
{
    // Counted first: memory goes with the lists, not with what is said about them.
    std::size_t used = 0;
    for (const std::vector<DWORD>* const list : lists)
        used += list->size() - static_cast<std::size_t>(std::count(list->begin(), list->end(), DWORD{0}));
    if (used != fldCount)
        return false;
    std::vector<bool> isMet(fldCount, false);
    for (const std::vector<DWORD>* const list : lists) {
        for (const DWORD fldPos : *list) {
            if (fldPos == 0)
                continue;
            if (fldPos > fldCount || isMet[fldPos - 1])
                return false;
            isMet[fldPos - 1] = true;
        }
    }
    return true;
}

} // namespace NSKZ::NSKZCore
