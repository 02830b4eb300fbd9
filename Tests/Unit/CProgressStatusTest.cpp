#include "CProgressStatus.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

using namespace NSKZ::NSKZCore;

namespace {

// Notes the value at every step that it is told of.
class CRecordingStatus : public CProgressStatus
{
public:
    using CProgressStatus::CProgressStatus;
    std::vector<DWORD> steps;

protected:
    void OnProgress() noexcept override { steps.push_back(presentValue); }
};

} // namespace

TEST(CProgressStatus, BeginsAtZeroOfTheGivenRangeWithTheWholeShare)
{
    const CProgressStatus status(250);
    EXPECT_EQ(status.presentValue, 0u);
    EXPECT_EQ(status.maxValueOfPresentProc, 250u);
    EXPECT_EQ(status.GetMaxValueOfPresentProc(), 250u);
    EXPECT_EQ(status.GetRatioOfPresentProc(), 100u);
    EXPECT_EQ(status.GetNameOfPresentProc(), "");
    EXPECT_FALSE(status.canceled);
}

TEST(CProgressStatus, ARangeOfZeroIsRefused)
{
    EXPECT_THROW(CProgressStatus(0), std::invalid_argument);
}

TEST(CProgressStatus, AShareAboveTheWholeIsRefused)
{
    CProgressStatus status;
    EXPECT_TRUE(status.SetRatioOfPresentProc(0));
    EXPECT_TRUE(status.SetRatioOfPresentProc(40));
    EXPECT_FALSE(status.SetRatioOfPresentProc(101));
    EXPECT_EQ(status.GetRatioOfPresentProc(), 40u);
}

TEST(CProgressStatus, EveryStepIsReported)
{
    CRecordingStatus status(10);
    status.SetNameOfPresentProc("process");
    status.SetPresentValue(4);
    status.SetPresentValue(10);
    status.EndPresentProc();
    EXPECT_EQ(status.steps, (std::vector<DWORD>{0, 4, 10, 0}));
    EXPECT_EQ(status.GetNameOfPresentProc(), "process");
}

TEST(CProgressStatus, TheEndOfAProcessSetsTheNextToZero)
{
    CProgressStatus status(10);
    status.SetPresentValue(10);
    status.EndPresentProc();
    EXPECT_EQ(status.presentValue, 0u);
    EXPECT_EQ(status.GetMaxValueOfPresentProc(), 10u);
}
