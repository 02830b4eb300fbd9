#include "CGatedProcess.h"

#include "HostFixture.h"

#include <csignal>

namespace NSKZ::Test {

class CGatedProcessTest : public HostFixture
{
protected:
    // Counts the records of the table; the verdict is on the first call that names it.
    CGatedProcess Run(CGatedProcess::EVerdict verdict) const
    {
        return CGatedProcess::Run({"--json", table, "-c", "records"}, table,
                                  [verdict](const CGatedProcess::SCall& call) {
                                      return call.number == 1 ? verdict : CGatedProcess::VERDICT_PASS;
                                  });
    }
};

TEST_F(CGatedProcessTest, AnOpenGateChangesNothing)
{
    const CGatedProcess process = Run(CGatedProcess::VERDICT_PASS);
    EXPECT_EQ(process.GetStatus(), 0);
    EXPECT_EQ(process.GetOutput(), "{\"ok\":true,\"count\":7}\n");
    ASSERT_GE(process.GetCalls().size(), 2u);
    EXPECT_TRUE(process.GetCalls()[0].starts_with("open")) << process.GetCalls()[0];
    EXPECT_EQ(process.GetCalls()[1], "close");
}

TEST_F(CGatedProcessTest, ACallThatFailsTellsTheProgramThatNoSpaceIsLeft)
{
    const CGatedProcess process = Run(CGatedProcess::VERDICT_FAIL);
    EXPECT_EQ(process.GetStatus(), 3);
    EXPECT_NE(process.GetOutput().find("No space left on device"), std::string::npos) << process.GetOutput();
}

TEST_F(CGatedProcessTest, AProgramThatIsKilledSaysNothing)
{
    const CGatedProcess process = Run(CGatedProcess::VERDICT_KILL);
    EXPECT_EQ(process.GetStatus(), -SIGKILL);
    EXPECT_EQ(process.GetOutput(), "");
    EXPECT_EQ(process.GetCalls().size(), 1u);
}

} // namespace NSKZ::Test
