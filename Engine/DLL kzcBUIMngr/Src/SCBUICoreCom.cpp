#include "SCBUICoreCom.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

namespace {

// Ends a list that was written by index at what was written.
DWORD TrimTo(std::vector<DWORD>& list, std::size_t count)
{
    list.resize(count);
    return static_cast<DWORD>(count);
}

} // namespace

DWORD SCBUICoreCom::MergeBtnIDListByANDCnd(std::vector<DWORD>& btnIDList,
                                           const std::vector<DWORD>& other) noexcept
{
    std::size_t read = 0;
    std::size_t otherPos = 0;
    std::size_t written = 0;
    while (read < btnIDList.size() && otherPos < other.size()) {
        const DWORD btnID = btnIDList[read];
        if (btnID < other[otherPos]) {
            ++read;
        } else if (other[otherPos] < btnID) {
            ++otherPos;
        } else {
            if (written != read)
                btnIDList[written] = btnID;
            ++written;
            ++read;
            ++otherPos;
        }
    }
    return TrimTo(btnIDList, written);
}

DWORD SCBUICoreCom::MergeBtnIDListByORCnd(const std::vector<DWORD>& btnIDListA,
                                          const std::vector<DWORD>& btnIDListB, std::vector<DWORD>& merged)
{
    merged.assign(btnIDListA.size() + btnIDListB.size(), BTN_ID_UNSETTING);
    const auto end = std::set_union(btnIDListA.begin(), btnIDListA.end(), btnIDListB.begin(),
                                    btnIDListB.end(), merged.begin());
    return TrimTo(merged, static_cast<std::size_t>(end - merged.begin()));
}

DWORD SCBUICoreCom::MergeBtnIDListByXORCnd(const std::vector<DWORD>& btnIDListA,
                                           const std::vector<DWORD>& btnIDListB, std::vector<DWORD>& onlyInA,
                                           std::vector<DWORD>& onlyInB)
{
    onlyInA.assign(btnIDListA.size(), BTN_ID_UNSETTING);
    onlyInB.assign(btnIDListB.size(), BTN_ID_UNSETTING);
    std::size_t posA = 0;
    std::size_t posB = 0;
    std::size_t writtenA = 0;
    std::size_t writtenB = 0;
    while (posA < btnIDListA.size() && posB < btnIDListB.size()) {
        if (btnIDListA[posA] < btnIDListB[posB]) {
            onlyInA[writtenA++] = btnIDListA[posA++];
        } else if (btnIDListB[posB] < btnIDListA[posA]) {
            onlyInB[writtenB++] = btnIDListB[posB++];
        } else {
            ++posA;
            ++posB;
        }
    }
    while (posA < btnIDListA.size())
        onlyInA[writtenA++] = btnIDListA[posA++];
    while (posB < btnIDListB.size())
        onlyInB[writtenB++] = btnIDListB[posB++];
    return TrimTo(onlyInA, writtenA) + TrimTo(onlyInB, writtenB);
}

DWORD SCBUICoreCom::DeleteBtnIDList(std::vector<DWORD>& btnIDList, const std::vector<DWORD>& deleted) noexcept
{
    std::size_t read = 0;
    std::size_t deletedPos = 0;
    std::size_t written = 0;
    while (read < btnIDList.size() && deletedPos < deleted.size()) {
        if (btnIDList[read] < deleted[deletedPos]) {
            btnIDList[written++] = btnIDList[read++];
        } else {
            if (btnIDList[read] == deleted[deletedPos])
                ++read;
            ++deletedPos;
        }
    }
    if (written != read) {
        const auto first = btnIDList.begin();
        std::move(first + static_cast<std::ptrdiff_t>(read), btnIDList.end(),
                  first + static_cast<std::ptrdiff_t>(written));
    }
    return TrimTo(btnIDList, written + (btnIDList.size() - read));
}

DWORD SCBUICoreCom::DeleteBtnClassIDList(std::vector<DWORD>& btnClassIDList,
                                         const std::vector<DWORD>& deleted) noexcept
{
    return DeleteBtnIDList(btnClassIDList, deleted);
}

} // namespace NSKZ::NSKZCore
