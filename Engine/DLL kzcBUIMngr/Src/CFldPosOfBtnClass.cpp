#include "CFldPosOfBtnClass.h"

#include "SCLinkTableFile.h"

#include <utility>

namespace NSKZ::NSKZCore {

const std::vector<DWORD>* CFldPosOfBtnClass::GetStore(DWORD btnClassID, DWORD& index) const noexcept
{
    if (SCBUICoreCom::IsSrcBtnClass(btnClassID)) {
        index = btnClassID;
        return &srcFldPos;
    }
    if (SCBUICoreCom::IsCommonVirBtnClass(btnClassID)) {
        index = btnClassID - SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN;
        return &comVirFldPos;
    }
    if (SCBUICoreCom::IsFixedVirBtnClass(btnClassID)) {
        index = btnClassID - SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
        return &fixVirFldPos;
    }
    return nullptr;
}

std::vector<DWORD>* CFldPosOfBtnClass::GetStore(DWORD btnClassID, DWORD& index) noexcept
{
    return const_cast<std::vector<DWORD>*>(std::as_const(*this).GetStore(btnClassID, index));
}

bool CFldPosOfBtnClass::Find(DWORD btnClassID, DWORD& fld) const noexcept
{
    DWORD index = 0;
    const std::vector<DWORD>* const store = GetStore(btnClassID, index);
    if (store == nullptr || index >= store->size() || (*store)[index] == 0)
        return false;
    fld = (*store)[index] - 1;
    return true;
}

bool CFldPosOfBtnClass::PrepareInsert(DWORD btnClassID)
{
    DWORD index = 0;
    std::vector<DWORD>* const store = GetStore(btnClassID, index);
    if (store == nullptr)
        return false;
    if (index >= store->size())
        store->resize(static_cast<std::size_t>(index) + 1, 0);
    return (*store)[index] == 0;
}

void CFldPosOfBtnClass::Insert(DWORD btnClassID, DWORD fld) noexcept
{
    DWORD index = 0;
    (*GetStore(btnClassID, index))[index] = fld + 1;
}

void CFldPosOfBtnClass::Delete(DWORD btnClassID) noexcept
{
    DWORD index = 0;
    DWORD& deleted = (*GetStore(btnClassID, index))[index];
    for (std::vector<DWORD>* const store : {&srcFldPos, &comVirFldPos, &fixVirFldPos}) {
        for (DWORD& fldPos : *store) {
            if (fldPos > deleted)
                --fldPos;
        }
    }
    deleted = 0;
}

std::vector<bool> CFldPosOfBtnClass::MarkFlds(const std::vector<DWORD>& btnClassIDs, DWORD fldCount) const
{
    std::vector<bool> isMarked(fldCount, false);
    DWORD fld = 0;
    for (const DWORD btnClassID : btnClassIDs) {
        if (Find(btnClassID, fld))
            isMarked[fld] = true;
    }
    return isMarked;
}

void CFldPosOfBtnClass::Delete(const std::vector<bool>& isDeleted)
{
    std::vector<DWORD> newPositions(isDeleted.size(), 0);
    DWORD kept = 0;
    for (std::size_t fld = 0; fld < isDeleted.size(); ++fld) {
        if (!isDeleted[fld])
            newPositions[fld] = ++kept;
    }
    for (std::vector<DWORD>* const store : {&srcFldPos, &comVirFldPos, &fixVirFldPos}) {
        for (DWORD& fldPos : *store) {
            if (fldPos != 0)
                fldPos = newPositions[fldPos - 1];
        }
    }
}

void CFldPosOfBtnClass::Clear() noexcept
{
    srcFldPos.clear();
    comVirFldPos.clear();
    fixVirFldPos.clear();
}

void CFldPosOfBtnClass::GetBtnClassIDList(std::vector<DWORD>& btnClassIDs) const
{
    btnClassIDs.clear();
    const auto appendHeld = [&btnClassIDs](const std::vector<DWORD>& store, DWORD firstBtnClassID) {
        for (std::size_t index = 0; index < store.size(); ++index) {
            if (store[index] != 0)
                btnClassIDs.push_back(firstBtnClassID + static_cast<DWORD>(index));
        }
    };
    appendHeld(srcFldPos, 0);
    appendHeld(comVirFldPos, SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN);
    appendHeld(fixVirFldPos, SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN);
}

void CFldPosOfBtnClass::WriteStore(CBinaryWriter& writer, const Store& store) noexcept
{
    writer.WriteData(static_cast<DWORD>(store.size()));
    writer.WriteData(store.data(), static_cast<DWORD>(store.size()));
}

bool CFldPosOfBtnClass::ReadStore(CLinkTableIndexReader& reader, Store& store)
{
    DWORD size = 0;
    return reader.Read(size) && reader.ReadList(size, store);
}

bool CFldPosOfBtnClass::Prove(DWORD fldCount) const
{
    const bool areClasses = (srcFldPos.empty() || srcFldPos[0] == 0) && // 0 is no class
                            srcFldPos.size() <= std::size_t{SCBUICoreCom::BTNCLS_ID_SRC_END} + 1 &&
                            comVirFldPos.size() <= SCBUICoreCom::BTNCLS_VIR_COMMON_MAXCNT &&
                            fixVirFldPos.size() <= SCBUICoreCom::BTNCLS_VIR_FIXED_MAXCNT;
    if (areClasses && SCLinkTableFile::AreFldPositions({&srcFldPos, &comVirFldPos, &fixVirFldPos}, fldCount))
        return true;
    SetLastError(ERROR_INVALID_DATA);
    return false;
}

void CFldPosOfBtnClass::WriteTo(CBinaryWriter& writer) const noexcept
{
    for (const Store* const store : {&srcFldPos, &comVirFldPos, &fixVirFldPos})
        WriteStore(writer, *store);
}

bool CFldPosOfBtnClass::ReadFrom(CLinkTableIndexReader& reader, DWORD& fldCount)
{
    Clear();
    CFldPosOfBtnClass read;
    DWORD readCount = 0;
    if (!ReadStore(reader, read.srcFldPos) || !ReadStore(reader, read.comVirFldPos) ||
        !ReadStore(reader, read.fixVirFldPos) || !reader.Read(readCount) || !read.Prove(readCount))
        return false;
    *this = std::move(read);
    fldCount = readCount;
    return true;
}

void CFldPosOfBtnClass::WriteSrcTo(CBinaryWriter& writer) const noexcept
{
    WriteStore(writer, srcFldPos);
}

bool CFldPosOfBtnClass::ReadSrcFrom(CLinkTableIndexReader& reader, DWORD fldCount)
{
    Clear();
    CFldPosOfBtnClass read;
    if (!ReadStore(reader, read.srcFldPos) || !read.Prove(fldCount))
        return false;
    *this = std::move(read);
    return true;
}

} // namespace NSKZ::NSKZCore
