#include "VCFixedLenTbl_MemSavVer.h"

#include "SCVector.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <utility>

namespace NSKZ::NSKZCore {

namespace {

constexpr unsigned int CELLS_OF_ASCENDING_GROUP = 256;
constexpr unsigned int LARGEST_BLOCK_SIZE = 65536; // its words can be numbered in 16 bits, whatever it holds

SCellForm MakeForm(unsigned int recSize, unsigned int blockSize, unsigned int cellsOfGroup)
{
    if (recSize != sizeof(DWORD))
        throw std::invalid_argument("VCFixedLenTbl_MemSavVer: the size of a record is 4");
    const unsigned int groupSize = cellsOfGroup != 0 ? cellsOfGroup : CELLS_OF_ASCENDING_GROUP;
    if (!std::has_single_bit(groupSize))
        throw std::invalid_argument("VCFixedLenTbl_MemSavVer: the cells of a group are 0 or a power of 2");
    const auto cellsOfBlock = static_cast<unsigned int>(blockSize / sizeof(DWORD) / groupSize * groupSize);
    if (cellsOfBlock == 0 || blockSize > LARGEST_BLOCK_SIZE)
        throw std::invalid_argument(
            "VCFixedLenTbl_MemSavVer: the size of a block is at least that of a group, and at most 65536");
    return SCellForm{cellsOfBlock, static_cast<DWORD>(std::countr_zero(groupSize)), cellsOfGroup == 0};
}

} // namespace

VCFixedLenTbl_MemSavVer::VCFixedLenTbl_MemSavVer(unsigned int fieldCount, DWORD recCount,
                                                 const unsigned char** data, unsigned int recSize,
                                                 unsigned int blockSize, unsigned int cellsOfGroup)
    : form(MakeForm(recSize, blockSize, cellsOfGroup))
{
    for (unsigned int fld = 0; fld < fieldCount; ++fld)
        InsertFld(fld, recCount, data != nullptr ? data[fld] : nullptr);
}

VCFixedLenTbl_MemSavVer::~VCFixedLenTbl_MemSavVer() = default;

VCFixedLenTbl_MemSavVer& VCFixedLenTbl_MemSavVer::operator=(const VCFixedLenTbl_MemSavVer& other)
{
    if (form != other.form)
        throw std::invalid_argument("VCFixedLenTbl_MemSavVer: the tables have different block parameters");
    std::vector<CPackedFld> fldsCopy;
    fldsCopy.reserve(other.flds.size());
    for (const CPackedFld& fld : other.flds)
        fldsCopy.push_back(fld.Clone());
    std::vector<DWORD> recCountListCopy(other.recCountList);
    flds = std::move(fldsCopy);
    recCountList = std::move(recCountListCopy);
    fldCount = other.fldCount;
    return *this;
}

void VCFixedLenTbl_MemSavVer::Clear() noexcept
{
    flds.clear();
    recCountList.clear();
    fldCount = 0;
}

// Whether the records pos to pos + count - 1 are all in the field.
bool VCFixedLenTbl_MemSavVer::HasRecs(unsigned int fld, DWORD pos, DWORD count) const noexcept
{
    return fld < fldCount && std::uint64_t{pos} + count <= recCountList[fld];
}

// Whether a field, which is there, can have so many cells more or less.
bool VCFixedLenTbl_MemSavVer::HasRoom(unsigned int fld, DWORD oldCount, DWORD newCount) const noexcept
{
    return std::uint64_t{recCountList[fld]} - oldCount + newCount <= std::numeric_limits<DWORD>::max();
}

bool VCFixedLenTbl_MemSavVer::InsertFld(unsigned int fld, DWORD recCount, const unsigned char* data)
{
    if (fld > fldCount || fldCount == std::numeric_limits<unsigned int>::max())
        return false;
    CPackedFld inserted;
    inserted.Apply(inserted.Prepare(form, 0, 0, recCount, data));
    SCVector::ReserveOneMore(flds);
    SCVector::ReserveOneMore(recCountList);
    flds.insert(flds.begin() + static_cast<std::ptrdiff_t>(fld), std::move(inserted));
    recCountList.insert(recCountList.begin() + static_cast<std::ptrdiff_t>(fld), recCount);
    ++fldCount;
    return true;
}

bool VCFixedLenTbl_MemSavVer::DeleteFld(unsigned int fld) noexcept
{
    if (fld >= fldCount)
        return false;
    flds.erase(flds.begin() + static_cast<std::ptrdiff_t>(fld));
    recCountList.erase(recCountList.begin() + static_cast<std::ptrdiff_t>(fld));
    --fldCount;
    return true;
}

void VCFixedLenTbl_MemSavVer::DeleteFlds(const std::vector<bool>& isDeleted) noexcept
{
    SCVector::EraseMarked(flds, isDeleted);
    SCVector::EraseMarked(recCountList, isDeleted);
    fldCount = static_cast<unsigned int>(flds.size());
}

void VCFixedLenTbl_MemSavVer::ReplaceRecOfAll(DWORD pos, DWORD oldCount, DWORD newCount,
                                              const unsigned char** data)
{
    std::vector<CPackedFld::SChange> changes;
    changes.reserve(fldCount);
    for (unsigned int fld = 0; fld < fldCount; ++fld)
        changes.push_back(
            flds[fld].Prepare(form, pos, oldCount, newCount, data != nullptr ? data[fld] : nullptr));
    // All memory is there: from here on nothing fails.
    for (unsigned int fld = 0; fld < fldCount; ++fld) {
        flds[fld].Apply(std::move(changes[fld]));
        recCountList[fld] = flds[fld].GetCount();
    }
}

bool VCFixedLenTbl_MemSavVer::InsertRec(DWORD pos, DWORD count, const unsigned char** data)
{
    for (unsigned int fld = 0; fld < fldCount; ++fld) {
        if (!HasRecs(fld, pos, 0) || !HasRoom(fld, 0, count))
            return false;
    }
    ReplaceRecOfAll(pos, 0, count, data);
    return true;
}

bool VCFixedLenTbl_MemSavVer::InsertRec(unsigned int fld, DWORD pos, DWORD count, const unsigned char* data)
{
    return ReplaceRec(fld, pos, 0, count, data);
}

bool VCFixedLenTbl_MemSavVer::DeleteRec(DWORD pos, DWORD count)
{
    for (unsigned int fld = 0; fld < fldCount; ++fld) {
        if (!HasRecs(fld, pos, count))
            return false;
    }
    ReplaceRecOfAll(pos, count, 0, nullptr);
    return true;
}

bool VCFixedLenTbl_MemSavVer::DeleteRec(unsigned int fld, DWORD pos, DWORD count)
{
    return ReplaceRec(fld, pos, count, 0, nullptr);
}

bool VCFixedLenTbl_MemSavVer::ReplaceRec(unsigned int fld, DWORD pos, DWORD oldCount, DWORD newCount,
                                         const unsigned char* data)
{
    if (!HasRecs(fld, pos, oldCount) || !HasRoom(fld, oldCount, newCount))
        return false;
    flds[fld].Apply(flds[fld].Prepare(form, pos, oldCount, newCount, data));
    recCountList[fld] = flds[fld].GetCount();
    return true;
}

bool VCFixedLenTbl_MemSavVer::GetData(unsigned int fld, DWORD pos, DWORD count,
                                      unsigned char* data) const noexcept
{
    if (!HasRecs(fld, pos, count))
        return false;
    if (reinterpret_cast<std::uintptr_t>(data) % alignof(DWORD) == 0) {
        flds[fld].Read(form, pos, count, reinterpret_cast<DWORD*>(data));
        return true;
    }
    std::array<DWORD, CELLS_OF_ASCENDING_GROUP> cells;
    while (count != 0) {
        const DWORD taken = std::min<DWORD>(count, CELLS_OF_ASCENDING_GROUP);
        flds[fld].Read(form, pos, taken, cells.data());
        std::memcpy(data, cells.data(), taken * sizeof(DWORD));
        pos += taken;
        data += taken * sizeof(DWORD);
        count -= taken;
    }
    return true;
}

bool VCFixedLenTbl_MemSavVer::GetListedData(unsigned int fld, const DWORD* recNumList, DWORD count,
                                            DWORD* data) const noexcept
{
    return fld < fldCount && flds[fld].ReadListed(form, recNumList, count, data);
}

bool VCFixedLenTbl_MemSavVer::SetData(unsigned int fld, DWORD pos, DWORD count, const unsigned char* data)
{
    return ReplaceRec(fld, pos, count, count, data);
}

bool VCFixedLenTbl_MemSavVer::SetFldData(unsigned int fld, DWORD count, const unsigned char* data)
{
    return SetData(fld, 0, count, data);
}

bool VCFixedLenTbl_MemSavVer::ReallocateRecArea(unsigned int fld, DWORD newCount)
{
    if (fld >= fldCount)
        return false;
    const DWORD oldCount = recCountList[fld];
    return newCount < oldCount ? DeleteRec(fld, newCount, oldCount - newCount)
                               : InsertRec(fld, oldCount, newCount - oldCount, nullptr);
}

bool VCFixedLenTbl_MemSavVer::WriteFldData(unsigned int fld, const char* path) const
{
    if (fld >= fldCount) {
        SetLastError(ERROR_INVALID_DATA);
        return false;
    }
    return flds[fld].WriteTo(path);
}

bool VCFixedLenTbl_MemSavVer::ReadFldData(unsigned int fld, const char* path, bool isAnyLength)
{
    CPackedFld read;
    if (fld < fldCount && !read.ReadFrom(form, path))
        return false;
    if (fld >= fldCount || (!isAnyLength && read.GetCount() != recCountList[fld])) {
        SetLastError(ERROR_INVALID_DATA);
        return false;
    }
    flds[fld] = std::move(read);
    recCountList[fld] = flds[fld].GetCount();
    return true;
}

void VCFixedLenTbl_MemSavVer::SwapFld(unsigned int fld, VCFixedLenTbl_MemSavVer& other,
                                      unsigned int fldOfOther) noexcept
{
    std::swap(flds[fld], other.flds[fldOfOther]);
    std::swap(recCountList[fld], other.recCountList[fldOfOther]);
}

void VCFixedLenTbl_MemSavVer::SwapFlds(VCFixedLenTbl_MemSavVer& other) noexcept
{
    flds.swap(other.flds);
    recCountList.swap(other.recCountList);
    std::swap(fldCount, other.fldCount);
}

} // namespace NSKZ::NSKZCore
