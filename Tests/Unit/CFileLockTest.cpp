#include "CFileLock.h"

#include "Support/CTempDir.h"

#include <gtest/gtest.h>

namespace NSKZ::Test {

using NSKZCore::CFileLock;

class CFileLockTest : public testing::Test
{
protected:
    CTempDir dir;
    std::filesystem::path file = dir.GetPath() / "lock";
    CFileLock first;
    CFileLock second;
};

TEST_F(CFileLockTest, OneAloneHoldsALockToWrite)
{
    EXPECT_FALSE(first.IsHeld());
    EXPECT_EQ(first.Take(file, CFileLock::LOCK_TO_WRITE), std::error_code());
    EXPECT_TRUE(first.IsHeld());
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_EQ(second.Take(file, CFileLock::LOCK_TO_WRITE), std::errc::resource_unavailable_try_again);
    EXPECT_EQ(second.Take(file, CFileLock::LOCK_TO_READ), std::errc::resource_unavailable_try_again);
    EXPECT_FALSE(second.IsHeld());
    first.Release();
    EXPECT_EQ(second.Take(file, CFileLock::LOCK_TO_WRITE), std::error_code());
}

TEST_F(CFileLockTest, AnyNumberHoldsALockToReadAndKeepsWritersOut)
{
    dir.WriteFile("lock", "");
    EXPECT_EQ(first.Take(file, CFileLock::LOCK_TO_READ), std::error_code());
    EXPECT_EQ(second.Take(file, CFileLock::LOCK_TO_READ), std::error_code());
    CFileLock third;
    EXPECT_EQ(third.Take(file, CFileLock::LOCK_TO_WRITE), std::errc::resource_unavailable_try_again);
}

TEST_F(CFileLockTest, ALockEndsWithItsObjectAndIsReplacedByTheNext)
{
    {
        CFileLock scoped;
        EXPECT_EQ(scoped.Take(file, CFileLock::LOCK_TO_WRITE), std::error_code());
        EXPECT_EQ(scoped.Take(file, CFileLock::LOCK_TO_READ), std::error_code());
        EXPECT_EQ(first.Take(file, CFileLock::LOCK_TO_READ), std::error_code());
    }
    EXPECT_EQ(first.Take(file, CFileLock::LOCK_TO_WRITE), std::error_code());
}

TEST_F(CFileLockTest, WhatCannotBeOpenedGivesTheSystemsError)
{
    EXPECT_EQ(first.Take(file, CFileLock::LOCK_TO_READ), std::errc::no_such_file_or_directory);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(first.Take(dir.GetPath() / "none" / "lock", CFileLock::LOCK_TO_WRITE),
              std::errc::no_such_file_or_directory);
    EXPECT_EQ(first.Take(dir.GetPath(), CFileLock::LOCK_TO_WRITE), std::errc::is_a_directory);
    EXPECT_FALSE(first.IsHeld());
}

} // namespace NSKZ::Test
