#include "CBnLink_OnMemVer.h"

#include "CBinaryWriter.h"
#include "CLinkTableIndexReader.h"
#include "SCLinkTableFile.h"
#include "SCMemory.h"
#include "TCBtnIDAssArr.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace NSKZ::NSKZCore {

namespace {

using CBtnIDSet = TCBtnIDAssArr<unsigned char>;

// Whether a cell is to be listed: a source button the first time it is met, anything else every time.
bool IsToBeListed(CBtnIDSet& seen, DWORD btnID)
{
    if (!SCBUICoreCom::IsSrcBtn(btnID))
        return true;
    if (seen.Exist(btnID))
        return false;
    seen.SetOfSrcBtn(btnID, 1);
    return true;
}

// What the index file holds.
struct SIndex
{
    DWORD fldCount = 0;
    DWORD recCount = 0;
    std::vector<DWORD> fldPosOfBtnClass;
};

bool ReadIndex(const char* dir, SIndex& index)
{
    CLinkTableIndexReader reader(dir);
    DWORD listSize = 0;
    if (!reader.Read(index.fldCount) || !reader.Read(index.recCount) || !reader.Read(listSize) ||
        !reader.ReadList(listSize, index.fldPosOfBtnClass) || !reader.ProveEnd())
        return false;
    // The identifiers from 1 to the last one of a source class are those that may have a column.
    const std::vector<DWORD>& fldPos = index.fldPosOfBtnClass;
    if ((!fldPos.empty() && fldPos[0] != 0) ||
        fldPos.size() > std::size_t{SCBUICoreCom::BTNCLS_ID_SRC_END} + 1 ||
        !SCLinkTableFile::AreFldPositions({&fldPos}, index.fldCount)) {
        SetLastError(ERROR_INVALID_DATA);
        return false;
    }
    return true;
}

} // namespace

CBnLink_OnMemVer::CBnLink_OnMemVer() = default;
CBnLink_OnMemVer::~CBnLink_OnMemVer() = default;

CBnLink_OnMemVer& CBnLink_OnMemVer::operator=(const CBnLink_OnMemVer& other)
{
    std::vector<DWORD> fldPosCopy(other.fldPosOfBtnClass);
    std::vector<CDWORDArray> fldListCopy;
    fldListCopy.reserve(other.fldList.size());
    for (const CDWORDArray& fld : other.fldList)
        fldListCopy.push_back(fld.Clone());
    recCount = other.recCount;
    fldPosOfBtnClass = std::move(fldPosCopy);
    fldList = std::move(fldListCopy);
    return *this;
}

bool CBnLink_OnMemVer::WriteTo(const char* dir) const
{
    return SCLinkTableFile::PrepareWriting(dir) && WriteIndex(dir) &&
           SCLinkTableFile::WriteFlds(dir, fldList);
}

bool CBnLink_OnMemVer::WriteIndex(const char* dir) const
{
    CBinaryWriter writer(SCLinkTableFile::MakeIndexPath(dir).c_str(), true);
    writer.WriteData(static_cast<DWORD>(fldList.size()));
    writer.WriteData(recCount);
    writer.WriteData(static_cast<DWORD>(fldPosOfBtnClass.size()));
    writer.WriteData(fldPosOfBtnClass.data(), static_cast<DWORD>(fldPosOfBtnClass.size()));
    return writer.Close();
}

bool CBnLink_OnMemVer::ReadFrom(const char* dir, SCKZCoreCom::EEndianness endianness,
                                SCKZCoreCom::EDataModel dataModel)
{
    Clear();
    SIndex index;
    if (!SCLinkTableFile::PrepareReading(dir, endianness, dataModel) || !ReadIndex(dir, index))
        return false;
    std::vector<CDWORDArray> readFlds(index.fldCount);
    for (DWORD fld = 0; fld < index.fldCount; ++fld) {
        if (!SCLinkTableFile::ReadFld(dir, fld, index.recCount, readFlds[fld]))
            return false;
    }
    recCount = index.recCount;
    fldPosOfBtnClass = std::move(index.fldPosOfBtnClass);
    fldList = std::move(readFlds);
    return true;
}

bool CBnLink_OnMemVer::FindFld(DWORD btnClassID, DWORD& fld) const noexcept
{
    if (btnClassID >= fldPosOfBtnClass.size() || fldPosOfBtnClass[btnClassID] == 0)
        return false;
    fld = fldPosOfBtnClass[btnClassID] - 1;
    return true;
}

bool CBnLink_OnMemVer::ContainsRecs(DWORD pos, DWORD count) const noexcept
{
    return pos <= recCount && count <= recCount - pos;
}

bool CBnLink_OnMemVer::InsertFld(DWORD btnClassID, DWORD count, const DWORD* btnIDs)
{
    const CCriticalSection::CGuard guard(lock);
    if (!fldList.empty() && count != recCount)
        return false;
    if (!SCBUICoreCom::IsSrcBtnClass(btnClassID) || ExistFld(btnClassID))
        return false;
    CDWORDArray cells(count);
    if (btnIDs != nullptr)
        std::copy_n(btnIDs, count, cells.GetData());
    SCMemory::ReserveOneMore(fldList);
    if (btnClassID >= fldPosOfBtnClass.size())
        fldPosOfBtnClass.resize(static_cast<std::size_t>(btnClassID) + 1, 0);
    // All memory is there: from here on nothing fails.
    fldList.push_back(std::move(cells));
    fldPosOfBtnClass[btnClassID] = static_cast<DWORD>(fldList.size());
    recCount = count;
    return true;
}

bool CBnLink_OnMemVer::DeleteFld(DWORD btnClassID)
{
    const CCriticalSection::CGuard guard(lock);
    DWORD deleted = 0;
    if (!FindFld(btnClassID, deleted))
        return false;
    fldList.erase(fldList.begin() + static_cast<std::ptrdiff_t>(deleted));
    for (DWORD& fldPos : fldPosOfBtnClass) {
        if (fldPos > deleted + 1)
            --fldPos;
    }
    fldPosOfBtnClass[btnClassID] = 0;
    return true;
}

bool CBnLink_OnMemVer::InsertRec(DWORD pos, DWORD count)
{
    if (count == 0)
        return true;
    const CCriticalSection::CGuard guard(lock);
    if (count > std::numeric_limits<DWORD>::max() - recCount)
        return false;
    pos = std::min(pos, recCount);
    const DWORD newCount = recCount + count;
    std::size_t grown = 0;
    try {
        for (; grown < fldList.size(); ++grown)
            fldList[grown].Resize(newCount);
    } catch (...) {
        while (grown > 0)
            fldList[--grown].Shrink(recCount);
        throw;
    }
    for (CDWORDArray& fld : fldList) {
        DWORD* const cells = fld.GetData();
        std::move_backward(cells + pos, cells + recCount, cells + newCount);
    }
    recCount = newCount;
    return true;
}

bool CBnLink_OnMemVer::DeleteRec(DWORD pos, DWORD count)
{
    const CCriticalSection::CGuard guard(lock);
    if (!ContainsRecs(pos, count))
        return false;
    for (CDWORDArray& fld : fldList) {
        DWORD* const cells = fld.GetData();
        std::move(cells + pos + count, cells + recCount, cells + pos);
        fld.Shrink(recCount - count);
    }
    recCount -= count;
    return true;
}

bool CBnLink_OnMemVer::SetFldData(DWORD btnClassID, DWORD count, const DWORD* btnIDs)
{
    return count == recCount && SetData(btnClassID, 0, count, btnIDs);
}

bool CBnLink_OnMemVer::GetData(DWORD btnClassID, DWORD pos, DWORD count, DWORD* btnIDs) const
{
    DWORD fld = 0;
    if (!FindFld(btnClassID, fld) || !ContainsRecs(pos, count))
        return false;
    std::copy_n(fldList[fld].GetData() + pos, count, btnIDs);
    return true;
}

bool CBnLink_OnMemVer::GetBtnIDListOfRecList(DWORD btnClassID, DWORD listCount, const DWORD* recNumList,
                                             std::vector<DWORD>& btnIDs) const
{
    DWORD fld = 0;
    if (!FindFld(btnClassID, fld))
        return false;
    const DWORD* const cells = fldList[fld].GetData();
    CBtnIDSet seen;
    btnIDs.resize(listCount, SCBUICoreCom::BTN_ID_UNSETTING);
    DWORD listed = 0;
    for (DWORD i = 0; i < listCount; ++i) {
        const DWORD btnID = cells[recNumList[i]];
        if (IsToBeListed(seen, btnID))
            btnIDs[listed++] = btnID;
    }
    btnIDs.resize(listed);
    return true;
}

bool CBnLink_OnMemVer::GetBtnIDList(DWORD btnClassID, std::vector<DWORD>& btnIDs) const
{
    DWORD fld = 0;
    if (!FindFld(btnClassID, fld))
        return false;
    const DWORD* const cells = fldList[fld].GetData();
    CBtnIDSet seen;
    btnIDs.clear();
    for (DWORD i = 0; i < recCount; ++i) {
        if (IsToBeListed(seen, cells[i]))
            btnIDs.push_back(cells[i]);
    }
    return true;
}

DWORD CBnLink_OnMemVer::GetRecCount() const
{
    return recCount;
}

bool CBnLink_OnMemVer::GetBtnID(DWORD btnClassID, DWORD recNum, DWORD& btnID) const
{
    DWORD fld = 0;
    if (!FindFld(btnClassID, fld) || recNum >= recCount)
        return false;
    btnID = fldList[fld].GetData()[recNum];
    return true;
}

bool CBnLink_OnMemVer::SetData(DWORD btnClassID, DWORD pos, DWORD count, const DWORD* btnIDs)
{
    DWORD fld = 0;
    if (!FindFld(btnClassID, fld) || !ContainsRecs(pos, count))
        return false;
    std::copy_n(btnIDs, count, fldList[fld].GetData() + pos);
    return true;
}

void CBnLink_OnMemVer::Clear()
{
    fldList.clear();
    fldPosOfBtnClass.clear();
    recCount = 0;
}

SCBUICoreCom::ELinkTableVerType CBnLink_OnMemVer::GetVersionType() const
{
    return SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
}

bool CBnLink_OnMemVer::GetBtnIDsOfRecs(DWORD btnClassID, DWORD listCount, const DWORD* recNumList,
                                       DWORD* btnIDs) const
{
    DWORD fld = 0;
    if (!FindFld(btnClassID, fld))
        return false;
    const DWORD* const cells = fldList[fld].GetData();
    for (DWORD i = 0; i < listCount; ++i)
        btnIDs[i] = cells[recNumList[i]];
    return true;
}

bool CBnLink_OnMemVer::ExistFld(DWORD btnClassID) const
{
    DWORD fld = 0;
    return FindFld(btnClassID, fld);
}

void CBnLink_OnMemVer::GetBtnClassIDList(std::vector<DWORD>& btnClassIDs) const
{
    btnClassIDs.clear();
    for (std::size_t btnClassID = 0; btnClassID < fldPosOfBtnClass.size(); ++btnClassID) {
        if (fldPosOfBtnClass[btnClassID] != 0)
            btnClassIDs.push_back(static_cast<DWORD>(btnClassID));
    }
}

} // namespace NSKZ::NSKZCore
