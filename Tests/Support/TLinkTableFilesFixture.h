#ifndef TLINKTABLEFILESFIXTURE_H
#define TLINKTABLEFILESFIXTURE_H

#include "Support/LinkTableContent.h"
#include "Support/LinkTableFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace NSKZ::Test {

// Three records in the classes 3, 1 and 4, inserted in this order; the class 5 had a column.
inline void Fill(NSKZCore::IBnLink& link)
{
    ASSERT_TRUE(InsertFld(link, 3, {2, 3, 2}));
    ASSERT_TRUE(InsertFld(link, 5, {9, 9, 9}));
    ASSERT_TRUE(InsertFld(link, 1, {1, 5, 6}));
    ASSERT_TRUE(InsertFld(link, 4, {9, 8, 7}));
    ASSERT_TRUE(link.DeleteFld(5));
}

// A source class with buttons of every kind, one without records, and virtual classes of both kinds.
inline void Fill(NSKZCore::IRpLink& link)
{
    constexpr DWORD INC = NSKZCore::SCBUICoreCom::BTN_ID_INC_BEGIN;
    constexpr DWORD VIRINC = NSKZCore::SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
    ASSERT_TRUE(InsertFld(link, 2, {{1, {4}}, {2, {0, 2}}, {4, {1, 3}}, {INC + 1, {0, 1, 2}}}));
    ASSERT_TRUE(link.InsertFld(1));
    ASSERT_TRUE(InsertFld(link, NSKZCore::SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN + 1, {{VIRINC, {2, 3}}}));
    ASSERT_TRUE(InsertFld(link, NSKZCore::SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN, {{VIRINC + 2, {4}}}));
    ASSERT_TRUE(SetRecList(link, 2, NSKZCore::SCBUICoreCom::BTN_ID_CLL_BEGIN, {3}));
    ASSERT_TRUE(SetRecList(link, 2, VIRINC, {1, 4}));
}

// A directory with the files of a table that Fill has made.
template <class TTable>
class TLinkTableFilesFixture : public testing::Test
{
protected:
    using TContent = decltype(GetContent(std::declval<const TTable&>()));

    void SetUp() override
    {
        TTable link;
        Fill(link);
        expected = GetContent(link);
        ASSERT_TRUE(link.WriteTo(dir.GetPath().c_str()));
    }

    // Reads into a table that holds something else, which must be gone whatever comes.
    bool Read(TTable& link) const { return Read(link, dir.GetPath()); }
    bool Read(TTable& link, const std::string& path) const
    {
        link.Clear();
        EXPECT_TRUE(InsertFld(link, 7, {}));
        SetLastError(ERROR_SUCCESS);
        return ReadFromDir(link, path);
    }

    void ExpectRefused(DWORD error, const std::string& what) const
    {
        ExpectRefused(error, what, dir.GetPath());
    }
    void ExpectRefused(DWORD error, const std::string& what, const std::string& path) const
    {
        TTable link;
        EXPECT_FALSE(Read(link, path)) << what;
        EXPECT_EQ(GetLastError(), error) << what;
        EXPECT_EQ(GetContent(link), TContent()) << what;
    }

    // How many files the table has, the index among them.
    DWORD GetFileCount() const
    {
        DWORD count = 0;
        while (std::filesystem::exists(dir.GetFile(count)))
            ++count;
        return count;
    }

    const CLinkTableDir dir;
    TContent expected;
};

} // namespace NSKZ::Test

#endif
