#include "SCBUICoreCom.h"

#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"

#include <algorithm>
#include <iterator>

namespace NSKZ::NSKZCore {

namespace {

struct SWord
{
    const char* text;
    DWORD len;
};

// By value of ESumMethodForCnd, from 1 on.
constexpr SWord SUMMETHOD_WORDS[] = {
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_SUM, SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_SUM},
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_COUNT, SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_COUNT},
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_AVERAGE, SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_AVERAGE},
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_RATIO, SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_RATIO},
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_EACH, SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_EACH},
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_SUM_TOTAL, SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_SUM_TOTAL},
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_RATIO_TOTAL, SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_RATIO_TOTAL},
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_WEIGHTEDAVG, SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_WEIGHTEDAVG},
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_MAX, SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_MAX},
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_MIN, SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_MIN},
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_LATEST, SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_LATEST},
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_ABSOLUTE, SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_ABSOLUTE},
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_SUM_MULTIPLICATION,
     SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_SUM_MULTIPLICATION},
    {SCBUICoreCom::STR_ATTRVALUE_SUMMETHOD_COUNT_CELL, SCBUICoreCom::STRLEN_ATTRVALUE_SUMMETHOD_COUNT_CELL},
};

// Ends a list that was written by index at what was written.
DWORD TrimTo(std::vector<DWORD>& list, std::size_t count)
{
    list.resize(count);
    return static_cast<DWORD>(count);
}

} // namespace

void SCBUICoreCom::GetSumMethodAttribute(ESumMethodForCnd sumMethod, IXMLIO::SAttribute& attribute)
{
    const DWORD index = static_cast<DWORD>(sumMethod) - 1;
    if (index >= std::size(SUMMETHOD_WORDS))
        throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_SUMMETHOD_FORCND, "Src/SCBUICoreCom",
                             "NSKZ::NSKZCore::SCBUICoreCom::GetSumMethodAttribute", __LINE__);
    attribute = {STR_ATTRNAME_SUMMETHOD, STRLEN_ATTRNAME_SUMMETHOD, SUMMETHOD_WORDS[index].text,
                 SUMMETHOD_WORDS[index].len};
}

bool SCBUICoreCom::GetSumMethodEnum(const IXMLIO::SAttribute& attribute, ESumMethodForCnd& sumMethod) noexcept
{
    if (!IXMLIO::IsSameText(attribute.name, attribute.nameLen, STR_ATTRNAME_SUMMETHOD,
                            STRLEN_ATTRNAME_SUMMETHOD))
        return false;
    for (DWORD index = 0; index < std::size(SUMMETHOD_WORDS); ++index) {
        const SWord& word = SUMMETHOD_WORDS[index];
        if (IXMLIO::IsSameText(attribute.value, attribute.valueLen, word.text, word.len)) {
            sumMethod = static_cast<ESumMethodForCnd>(index + 1);
            return true;
        }
    }
    return false;
}

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
