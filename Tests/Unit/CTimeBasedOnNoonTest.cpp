#include "CTimeBasedOnNoon.h"

#include "Support/DateText.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

TEST(CTimeBasedOnNoon, TheMorningGoesBeforeTheAfternoon)
{
    CTimeBasedOnNoon morning;
    CTimeBasedOnNoon afternoon;
    EXPECT_EQ(GetNumeric(morning), 0u);
    EXPECT_TRUE(morning.SetTimeBasedOnNoon(VCDate::TIMEBASEDONNOON_MORNING));
    EXPECT_TRUE(afternoon.SetTimeBasedOnNoon(VCDate::TIMEBASEDONNOON_AFTERNOON));
    EXPECT_LT(GetNumeric(morning), GetNumeric(afternoon));
    CDate noon;
    noon.SetHour(12);
    noon.SetMinute(0);
    EXPECT_LT(GetNumeric(afternoon), GetNumeric(noon));
    noon.SetHour(11);
    EXPECT_LT(GetNumeric(noon), GetNumeric(afternoon));
}

TEST(CTimeBasedOnNoon, WhatIsNeitherIsRefused)
{
    CTimeBasedOnNoon noon;
    VCDate::ETimeBasedOnNoon value = VCDate::TIMEBASEDONNOON_UNSETTING;
    EXPECT_TRUE(noon.SetTimeBasedOnNoon(VCDate::TIMEBASEDONNOON_MORNING));
    EXPECT_FALSE(noon.SetTimeBasedOnNoon(static_cast<VCDate::ETimeBasedOnNoon>(3)));
    EXPECT_FALSE(noon.GetTimeBasedOnNoon(value));
    EXPECT_TRUE(noon.SetTimeBasedOnNoon(VCDate::TIMEBASEDONNOON_UNSETTING));
    EXPECT_EQ(GetParts(&noon), "");
}
