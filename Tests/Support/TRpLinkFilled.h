#ifndef TRPLINKFILLED_H
#define TRPLINKFILLED_H

#include "Support/CAllocFault.h"
#include "Support/LinkTableContent.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace NSKZ::Test {

constexpr DWORD NRM = NSKZCore::SCBUICoreCom::BTN_ID_NRM_BEGIN;
constexpr DWORD INC = NSKZCore::SCBUICoreCom::BTN_ID_INC_BEGIN;
constexpr DWORD VIRINC = NSKZCore::SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
constexpr DWORD CLL = NSKZCore::SCBUICoreCom::BTN_ID_CLL_BEGIN;
constexpr DWORD COMMON_VIR = NSKZCore::SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN;
constexpr DWORD FIXED_VIR = NSKZCore::SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
constexpr DWORD LAST_CLASS = NSKZCore::SCBUICoreCom::BTNCLS_ID_VIR_FIXED_END;
inline const List NO_BTNS = {0, 3000000002, 4000000001, 4240000002, 4294967295};
inline const List NO_CLASSES = {0, LAST_CLASS + 1, 2147483648, 4294967295};

// Whether the slices of a class lie in its area without overlap and without a gap.
inline void ExpectSlicesFillTheArea(const NSKZCore::IRpLink& link, DWORD btnClassID)
{
    List area(GetFldSize(link, btnClassID));
    NSKZCore::TCBtnIDAssArr<NSKZCore::SRecordList> recLists;
    ASSERT_TRUE(link.GetAllRecList(btnClassID, recLists, area.data()));
    std::vector<std::pair<DWORD, DWORD>> slices;
    for (auto it = recLists.begin(); it != recLists.end(); ++it)
        slices.emplace_back(static_cast<DWORD>(it->recList - area.data()), it->recCount);
    std::sort(slices.begin(), slices.end());
    DWORD end = 0;
    for (const auto& [pos, count] : slices) {
        ASSERT_EQ(pos, end);
        ASSERT_GT(count, 0u);
        end += count;
    }
    ASSERT_EQ(end, area.size());
}

inline const Lists THREE_LISTS = {{1, {0, 4}}, {NRM, {1, 2, 3}}, {INC + 4, {0, 1}}};

// Three classes, one of each kind.
inline void FillWithThreeClasses(NSKZCore::IRpLink& link)
{
    ASSERT_TRUE(InsertFld(link, 2, THREE_LISTS));
    ASSERT_TRUE(InsertFld(link, COMMON_VIR, {{VIRINC, {7}}}));
    ASSERT_TRUE(InsertFld(link, FIXED_VIR + 1, {{VIRINC + 1, {1, 8}}}));
}

// A table so filled.
template <class TTable>
class TRpLinkFilled : public testing::Test
{
protected:
    void SetUp() override
    {
        FillWithThreeClasses(link);
        before = GetContent(link);
    }
    void ExpectUnchanged() { EXPECT_TRUE(GetContent(link) == before); }

    TTable link;
    RpLinkContent before;
};

// Lets every allocation of `operation` fail in turn on a filled table: std::bad_alloc must leave the table as
// it was, nothing may leak, and afterwards the operation must still go through. Returns how many allocations
// failed.
template <class TTable, class TOperation>
std::size_t ExpectUnchangedWhenMemoryRunsOut(const TOperation& operation)
{
    NSKZCore::CAllocFault memory;
    const std::size_t failures = memory.FailEachInTurn([&](auto attempt) {
        TTable link;
        FillWithThreeClasses(link);
        TTable expected;
        FillWithThreeClasses(expected);
        operation(expected);
        const RpLinkContent before = GetContent(link);
        if (!attempt([&] { operation(link); })) {
            EXPECT_TRUE(GetContent(link) == before);
            operation(link);
        }
        EXPECT_TRUE(GetContent(link) == GetContent(expected));
    });
    EXPECT_EQ(memory.GetLiveBlockCount(), 0);
    return failures;
}

} // namespace NSKZ::Test

#endif
