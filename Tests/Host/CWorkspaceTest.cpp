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

} // namespace NSKZ::Test
