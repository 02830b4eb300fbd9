#include "CWorkspace.h"

#include "ECCommandError.h"
#include "HostFixture.h"

namespace NSKZ::Test {

class CWorkspaceTest : public HostFixture
{
protected:
    CWorkspaceTest() : codePage(_getmbcp())
    {
        Host::CHostOptions options;
        options.tablePath = dir.WriteFile("fields.csv", "region,unit price,@7,\"two\nlines\"\nEast,1,2,3\n");
        workspace = std::make_unique<Host::CWorkspace>(options, nullptr);
    }

    CCodePageScope codePage;
    std::unique_ptr<Host::CWorkspace> workspace;
};

TEST_F(CWorkspaceTest, GetWordOfNumFldGivesTheWordThatFindsTheField)
{
    EXPECT_EQ(workspace->GetWordOfNumFld(2), "unit price");
    EXPECT_EQ(workspace->GetWordOfNumFld(3), "@@7");
    EXPECT_EQ(workspace->GetWordOfNumFld(4), "@4");
    for (const DWORD fldID : {2u, 3u, 4u})
        EXPECT_EQ(workspace->FindNumFld(workspace->GetWordOfNumFld(fldID)), fldID);
    EXPECT_EQ(workspace->GetWordOfNumFld(1), "");
    EXPECT_EQ(workspace->GetWordOfNumFld(9), "");
}

TEST_F(CWorkspaceTest, FindSpBtnRefusesOtherButtons)
{
    const std::vector<DWORD> members = {2};
    DWORD btnID = 0;
    workspace->GetEnv().CreateSpBtn(btnID, 1, NSKZCore::SCBUICoreCom::BTNTYPE_INC, "All",
                                    NSKZCore::VCSpBtn::MMBBTNSELMTH_SELECT, &members, nullptr);
    EXPECT_EQ(workspace->FindSpBtn(1, "All"), btnID);
    EXPECT_EQ(workspace->FindSpBtn(1, "#" + std::to_string(btnID)), btnID);
    EXPECT_THROW(workspace->FindSpBtn(1, "East"), Host::ECCommandError);
    EXPECT_THROW(workspace->FindSpBtn(1, "None"), Host::ECCommandError);
}

TEST_F(CWorkspaceTest, GetLimitedRecsTellsTheLimitationUnderASelection)
{
    Host::CHostOptions options;
    options.tablePath = table;
    Host::CWorkspace sales(options, nullptr);
    NSKZCore::CBUIDataMngr& env = sales.GetEnv();
    EXPECT_EQ(sales.GetLimitedRecs(), std::nullopt);
    const std::vector<DWORD> recs = {0, 2, 3};
    for (const auto mode :
         {NSKZCore::CBUIDataMngr::RELATIONMODE_NONE, NSKZCore::CBUIDataMngr::RELATIONMODE_OR,
          NSKZCore::CBUIDataMngr::RELATIONMODE_AND, NSKZCore::CBUIDataMngr::RELATIONMODE_DIFFERENCE,
          NSKZCore::CBUIDataMngr::RELATIONMODE_NARROWING}) {
        env.SetRelationMode(mode);
        env.SetLimitedRecList(recs.data(), static_cast<DWORD>(recs.size()));
        EXPECT_EQ(sales.GetLimitedRecs(), recs);
        env.SelectBtns(1, {3}, true, false);
        EXPECT_EQ(sales.GetLimitedRecs(), recs) << mode;
    }
    env.ClearLimitedRecList();
    EXPECT_EQ(sales.GetLimitedRecs(), std::nullopt);
}

TEST_F(CWorkspaceTest, AnUnreadWorkspaceHasTheTableAndNoItemsAndLeavesTheOtherAlone)
{
    const std::unique_ptr<Host::CWorkspace> unread = workspace->CreateUnread();
    EXPECT_TRUE(unread->GetItemIDs().empty());
    EXPECT_EQ(unread->GetRecCount(), 0u);
    EXPECT_EQ(unread->GetTable().GetRecCount(), 1u);
    EXPECT_TRUE(unread->SetCalendarOfTable({2, 3, NSKZCore::VCDate::DAYSOFWEEK_FRIDAY}));
    EXPECT_FALSE(unread->SetCalendarOfTable({13, 3, NSKZCore::VCDate::DAYSOFWEEK_FRIDAY}));
    EXPECT_EQ(unread->GetCalendar().cutOffDay, 3u);
    EXPECT_EQ(workspace->GetCalendar().cutOffDay, 31u);
    EXPECT_EQ(workspace->GetItemIDs().size(), 4u);
}

TEST_F(CWorkspaceTest, TakeOverExchangesTablesAndItems)
{
    const std::unique_ptr<Host::CWorkspace> unread = workspace->CreateUnread();
    workspace->TakeOver(*unread);
    EXPECT_TRUE(workspace->GetItemIDs().empty());
    EXPECT_EQ(unread->GetItemIDs().size(), 4u);
    EXPECT_EQ(unread->FindNumFld("unit price"), 2u);
    EXPECT_EQ(unread->GetTargetRecs(), std::vector<DWORD>{0});
}

} // namespace NSKZ::Test
