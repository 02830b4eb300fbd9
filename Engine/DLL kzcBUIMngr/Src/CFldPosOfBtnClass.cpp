#include "CFldPosOfBtnClass.h"

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

} // namespace NSKZ::NSKZCore
