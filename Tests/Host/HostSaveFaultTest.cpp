// A save that is killed, or that finds no space, at each of its file operations: the earlier save is whole,
// or the new one.

#include "CGatedProcess.h"
#include "HostFixture.h"

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace NSKZ::Test {

namespace fs = std::filesystem;

class HostSaveFault : public HostFixture
{
protected:
    HostSaveFault() : earlier(Ask(EARLIER)), later(Ask(LATER))
    {
        LastAnswer(Saved(EARLIER));
        fs::copy(work, original, fs::copy_options::recursive);
    }

    std::vector<std::string> Saved(std::vector<std::string> commands) const
    {
        commands.push_back("save " + work);
        return commands;
    }
    // The directory as the earlier save left it.
    void PutBack() const
    {
        fs::remove_all(work);
        fs::copy(original, work, fs::copy_options::recursive);
    }
    // Makes the later save in it.
    CGatedProcess
    SaveLater(const std::function<CGatedProcess::EVerdict(const CGatedProcess::SCall&)>& judge) const
    {
        std::vector<std::string> arguments = {"--json", "--no-progress", table};
        for (const std::string& command : Saved(LATER)) {
            arguments.push_back("-c");
            arguments.push_back(command);
        }
        return CGatedProcess::Run(arguments, work, judge);
    }
    // What the session is like behind some commands.
    std::vector<Json> Ask(std::vector<std::string> commands) const
    {
        const std::size_t before = commands.size();
        for (const char* question : {"items", "buttons @1 --all", "buttons @2 --all", "buttons @3 --all",
                                     "buttons @4 --all", "buttons @5 --all", "selection", "hierarchy",
                                     "records --list", "special list", "virtual list", "form @4", "mode"})
            commands.push_back(question);
        std::vector<Json> answers = Answers(commands);
        answers.erase(answers.begin(), answers.begin() + static_cast<std::ptrdiff_t>(before));
        return answers;
    }
    // Whether the later save is there. Expects one of the two to be there, and whole.
    bool IsLaterThere() const
    {
        const std::vector<Json> loaded = Ask({"load " + work});
        EXPECT_TRUE(loaded == earlier || loaded == later);
        return loaded == later;
    }
    // That the next save goes well and leaves nothing of the one that did not. A save waits for the disk many
    // times, so not behind every call.
    void ExpectNextSaveCleansUp(std::size_t call) const
    {
        if (call % 5 != 0)
            return;
        EXPECT_EQ(LastAnswer({"press region North", "save " + work, "load " + work, "records"}).at("count"),
                  2);
        EXPECT_EQ(std::distance(fs::directory_iterator(work), fs::directory_iterator()), 3);
    }

    const std::string work = (dir.GetPath() / "work").string();
    const std::string original = (dir.GetPath() / "original").string();
    const std::vector<std::string> EARLIER = {"special create shop cll Best --where \"amount sum top 1\"",
                                              "limit 0-5", "press region East"};
    const std::vector<std::string> LATER = {"virtual create Areas",
                                            "special create Areas virinc Edge --of region East West",
                                            "form day month", "press Areas Edge", "press shop A"};
    const std::vector<Json> earlier;
    const std::vector<Json> later;
};

TEST_F(HostSaveFault, AKillAtAnyFileOperationLeavesTheEarlierSaveOrTheNewOne)
{
    ASSERT_NE(earlier, later);
    std::size_t earlierCount = 0;
    std::size_t laterCount = 0;
    for (std::size_t last = 1;; ++last) {
        PutBack();
        const CGatedProcess process = SaveLater([last](const CGatedProcess::SCall& call) {
            return call.number == last ? CGatedProcess::VERDICT_KILL : CGatedProcess::VERDICT_PASS;
        });
        if (process.GetCalls().size() < last) {
            EXPECT_EQ(process.GetStatus(), 0) << process.GetOutput();
            EXPECT_TRUE(IsLaterThere());
            break;
        }
        SCOPED_TRACE("killed at call " + std::to_string(last) + ", " + process.GetCalls().back());
        EXPECT_EQ(process.GetStatus(), -SIGKILL);
        const bool isLaterThere = IsLaterThere();
        EXPECT_TRUE(isLaterThere || laterCount == 0) << "the new save was there already";
        ++(isLaterThere ? laterCount : earlierCount);
        ExpectNextSaveCleansUp(last);
        if (HasFailure())
            return;
    }
    // There is a place before and one behind which the new save is in force, and many operations on the way.
    EXPECT_GT(earlierCount, 50u);
    EXPECT_GT(laterCount, 5u);
}

TEST_F(HostSaveFault, TheDiskIsAskedToKeepEveryFileBeforeTheSaveIsInForce)
{
    std::vector<std::string> calls =
        SaveLater([](const CGatedProcess::SCall&) { return CGatedProcess::VERDICT_PASS; }).GetCalls();
    const auto isRename = [](const std::string& name) { return name.starts_with("rename"); };
    ASSERT_EQ(std::count_if(calls.begin(), calls.end(), isRename), 1);
    const auto renamed = std::find_if(calls.begin(), calls.end(), isRename);
    // Each file and directory of the save, the file that names it, and where both stand.
    std::ptrdiff_t entries = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(work))
        entries += entry.path().filename() != "kzcbui-save.lock" ? 1 : 0;
    EXPECT_EQ(std::count(calls.begin(), renamed, "fsync"), entries + 1);
    EXPECT_EQ(std::count(renamed, calls.end(), "fsync"), 1);
    EXPECT_EQ(std::find_if(calls.begin(), renamed,
                           [](const std::string& name) { return name.starts_with("unlink"); }),
              renamed)
        << "something is removed before the new save is in force";
}

TEST_F(HostSaveFault, NoSpaceAtAnyFileOperationLeavesTheEarlierSaveOrTheNewOne)
{
    for (const bool forGood : {false, true}) {
        std::size_t refusedCount = 0;
        for (std::size_t first = 1;; ++first) {
            PutBack();
            const CGatedProcess process = SaveLater([=](const CGatedProcess::SCall& call) {
                return call.number == first || (forGood && call.number > first) ? CGatedProcess::VERDICT_FAIL
                                                                                : CGatedProcess::VERDICT_PASS;
            });
            if (process.GetCalls().size() < first)
                break;
            SCOPED_TRACE("no space " + std::string(forGood ? "from" : "at") + " call " +
                         std::to_string(first) + ", " + process.GetCalls()[first - 1]);
            ASSERT_EQ(std::count(process.GetOutput().begin(), process.GetOutput().end(), '\n'),
                      static_cast<std::ptrdiff_t>(LATER.size()) + 1)
                << process.GetOutput();
            const std::string lastLine = process.GetOutput().substr(
                process.GetOutput().rfind('\n', process.GetOutput().size() - 2) + 1);
            const Json answer = Json::parse(lastLine, nullptr, false);
            ASSERT_TRUE(answer.is_object()) << process.GetOutput();
            const bool went = answer.at("ok");
            EXPECT_EQ(process.GetStatus(), went ? 0 : 1) << lastLine;
            EXPECT_NE(answer.value("error", "") != "", went) << lastLine;
            const bool isTold =
                went || answer.at("error").get<std::string>().find("holds the new save") != std::string::npos;
            EXPECT_EQ(IsLaterThere(), isTold) << lastLine;
            refusedCount += went ? 0 : 1;
            ExpectNextSaveCleansUp(first);
            if (HasFailure())
                return;
        }
        EXPECT_GT(refusedCount, 50u);
    }
}

} // namespace NSKZ::Test
