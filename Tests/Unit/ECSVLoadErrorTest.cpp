#include "ECSVLoadError.h"

#include "Support/CAllocFault.h"

#include <gtest/gtest.h>

#include <memory>

using namespace NSKZ::NSKZCore;

TEST(ECSVLoadError, TellsFileLineAndReasonInOneLine)
{
    const ECSVLoadError error("a.csv", 12, "The reason.");
    EXPECT_STREQ(error.GetFile(), "a.csv");
    EXPECT_EQ(error.GetLine(), 12u);
    EXPECT_STREQ(error.GetReason(), "The reason.");
    EXPECT_STREQ(error.what(), "a.csv, line 12: The reason.");
}

TEST(ECSVLoadError, LeavesTheLineOutWhereThereIsNone)
{
    EXPECT_STREQ(ECSVLoadError("a.csv", 0, "The reason.").what(), "a.csv: The reason.");
}

TEST(ECSVLoadError, ACopyAllocatesNothingAndOutlivesTheOriginal)
{
    auto original = std::make_unique<ECSVLoadError>("a.csv", 12, "The reason.");
    const CAllocFault memory;
    const ECSVLoadError copy(*original);
    EXPECT_EQ(memory.GetLiveBlockCount(), 0);
    original.reset();
    EXPECT_STREQ(copy.GetFile(), "a.csv");
    EXPECT_STREQ(copy.GetReason(), "The reason.");
}
