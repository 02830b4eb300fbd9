// Ctrl-C while the table is read and while its items are built.

#include "CHostTerminal.h"
#include "CInterruptScope.h"
#include "CProgressStatus.h"
#include "CWorkspace.h"
#include "ECHostError.h"
#include "HostFixture.h"

#include <csignal>
#include <streambuf>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace NSKZ::Test {

using HostCancel = HostFixture;

namespace {

// A terminal at which somebody presses Ctrl-C as soon as anything is drawn.
class CInterruptingBuffer : public std::streambuf
{
public:
    int interruptCount = 0;

protected:
    int_type overflow(int_type character) override
    {
        if (interruptCount++ == 0)
            std::raise(SIGINT);
        return traits_type::not_eof(character);
    }
};

} // namespace

TEST_F(HostCancel, ControlCDuringTheBuildingStopsIt)
{
    const CCodePageScope codePage(_getmbcp());
    CInterruptingBuffer buffer;
    std::ostream terminal(&buffer);
    Host::CHostOptions options;
    options.tablePath = table;
    try {
        const Host::CWorkspace workspace(options, &terminal);
        FAIL() << "the building went through";
    } catch (const Host::ECHostError& error) {
        EXPECT_EQ(error.GetStatus(), Host::EXITSTATUS_TABLE_UNREADABLE);
        EXPECT_EQ(error.what(), table + ": The building of its items was cancelled.");
    }
    EXPECT_GT(buffer.interruptCount, 0);
}

TEST_F(HostCancel, AfterTheBuildingControlCHasItsFormerMeaning)
{
    const CCodePageScope codePage(_getmbcp());
    struct sigaction before = {};
    struct sigaction after = {};
    sigaction(SIGINT, nullptr, &before);
    Host::CHostOptions options;
    options.tablePath = table;
    const Host::CWorkspace workspace(options, nullptr);
    sigaction(SIGINT, nullptr, &after);
    EXPECT_EQ(after.sa_handler, before.sa_handler);
    EXPECT_EQ(workspace.GetRecCount(), 7u);
}

TEST_F(HostCancel, ControlCWhileTheTableIsReadEndsTheProgram)
{
    // A pipe that nothing is written to: the program waits for the table.
    const std::string path = (dir.GetPath() / "pipe").string();
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    CHostTerminal terminal({path, "-c", "items"});
    const int writer = open(path.c_str(), O_WRONLY); // until the program opens it too
    ASSERT_GE(writer, 0);
    terminal.Type("\x03");
    std::string screen;
    EXPECT_EQ(terminal.WaitForEnd(screen), 3);
    close(writer);
    EXPECT_NE(screen.find("kzcbui: cancelled while the table was being read."), std::string::npos) << screen;
}

} // namespace NSKZ::Test
