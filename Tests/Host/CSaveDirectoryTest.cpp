#include "CSaveDirectory.h"

#include "ECCommandError.h"
#include "Support/CTempDir.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <optional>
#include <set>

namespace NSKZ::Test {

using Host::CSaveDirectory;
namespace fs = std::filesystem;

class CSaveDirectoryTest : public testing::Test
{
protected:
    // A save of one file with that content.
    void Save(const std::string& content) const
    {
        CSaveDirectory save(path, CSaveDirectory::USE_TO_SAVE);
        WriteFile(save.Begin() / "file", content);
        save.Publish();
    }
    static void WriteFile(const fs::path& file, const std::string& content)
    {
        std::ofstream(file, std::ios::binary) << content;
    }
    static std::string ReadFile(const fs::path& file)
    {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    std::string Load() const
    {
        return ReadFile(CSaveDirectory(path, CSaveDirectory::USE_TO_LOAD).GetPath() / "file");
    }
    std::string Refusal(CSaveDirectory::EUse use) const
    {
        try {
            const CSaveDirectory refused(path, use);
        } catch (const Host::ECCommandError& error) {
            return error.what();
        }
        return "";
    }
    std::set<std::string> GetNames() const
    {
        std::set<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(path))
            names.insert(entry.path().filename().string());
        return names;
    }

    CTempDir dir;
    std::string path = (dir.GetPath() / "work").string();
    const std::set<std::string> FIRST = {"current", "kzcbui-save-1", "kzcbui-save.lock"};
};

TEST_F(CSaveDirectoryTest, WhatIsPublishedIsLoaded)
{
    Save("one");
    EXPECT_EQ(Load(), "one");
    EXPECT_EQ(GetNames(), FIRST);
    EXPECT_EQ(ReadFile(fs::path(path) / "current"), "kzcbui-save-1\n");
}

TEST_F(CSaveDirectoryTest, TheNextSaveReplacesTheOneBefore)
{
    Save("one");
    Save("two");
    EXPECT_EQ(Load(), "two");
    EXPECT_EQ(GetNames(), (std::set<std::string>{"current", "kzcbui-save-2", "kzcbui-save.lock"}));
}

TEST_F(CSaveDirectoryTest, ADirectoryThatIsMissingIsMadeWithThoseAboveIt)
{
    for (const char* name : {"deep/er/work", "with slash/", "関東"}) {
        path = (dir.GetPath() / name).string();
        Save(name);
        EXPECT_EQ(Load(), name);
    }
}

TEST_F(CSaveDirectoryTest, WhatIsNotPublishedLeavesNothing)
{
    Save("one");
    {
        CSaveDirectory save(path, CSaveDirectory::USE_TO_SAVE);
        WriteFile(save.Begin() / "file", "two");
        EXPECT_EQ(GetNames().count("kzcbui-save-2"), 1u);
    }
    EXPECT_EQ(Load(), "one");
    EXPECT_EQ(GetNames(), FIRST);
}

TEST_F(CSaveDirectoryTest, LeftoversOfInterruptedSavesAreRemovedAndNothingElse)
{
    Save("one");
    fs::create_directories(fs::path(path) / "kzcbui-save-7" / "BUI");
    WriteFile(fs::path(path) / "kzcbui-save-7" / "BUI" / "file", "torn");
    WriteFile(fs::path(path) / "kzcbui-save.new", "kzcbui-s");
    const std::set<std::string> others = {"kzcbui-save-", "kzcbui-save-01", "kzcbui-save-1000000000",
                                          "kzcbui-save-x", "kzcbui-save-2 "};
    for (const std::string& other : others)
        fs::create_directory(fs::path(path) / other);
    WriteFile(fs::path(path) / "kzcbui-save-3", "a file of the user");
    fs::create_directory_symlink(dir.GetPath(), fs::path(path) / "kzcbui-save-4");
    Save("two");
    std::set<std::string> expected = {"current", "kzcbui-save-2", "kzcbui-save-3", "kzcbui-save-4",
                                      "kzcbui-save.lock"};
    expected.insert(others.begin(), others.end());
    EXPECT_EQ(GetNames(), expected);
    EXPECT_EQ(Load(), "two");
    Save("three");
    EXPECT_EQ(Load(), "three");
    EXPECT_EQ(GetNames().count("kzcbui-save-5"), 1u) << "the taken names are passed over";
}

TEST_F(CSaveDirectoryTest, TheNumbersBeginAnewBehindTheLast)
{
    Save("one");
    fs::rename(fs::path(path) / "kzcbui-save-1", fs::path(path) / "kzcbui-save-999999999");
    WriteFile(fs::path(path) / "current", "kzcbui-save-999999999\n");
    EXPECT_EQ(Load(), "one");
    Save("two");
    EXPECT_EQ(Load(), "two");
    EXPECT_EQ(GetNames(), FIRST);
}

TEST_F(CSaveDirectoryTest, ThereMustBeASaveToLoad)
{
    EXPECT_EQ(Refusal(CSaveDirectory::USE_TO_LOAD), "There is no directory \"" + path + "\".");
    EXPECT_FALSE(fs::exists(path));
    fs::create_directory(path);
    EXPECT_EQ(Refusal(CSaveDirectory::USE_TO_LOAD), "There is no save in \"" + path + "\".");
    fs::create_directory(fs::path(path) / "kzcbui-save-1");
    EXPECT_EQ(Refusal(CSaveDirectory::USE_TO_LOAD), "There is no save in \"" + path + "\".");
    path.clear();
    EXPECT_NE(Refusal(CSaveDirectory::USE_TO_LOAD), "");
    EXPECT_NE(Refusal(CSaveDirectory::USE_TO_SAVE), "");
}

TEST_F(CSaveDirectoryTest, AFileIsNoDirectory)
{
    WriteFile(path, "file");
    for (const CSaveDirectory::EUse use : {CSaveDirectory::USE_TO_SAVE, CSaveDirectory::USE_TO_LOAD})
        EXPECT_EQ(Refusal(use), "\"" + path + "\" is no directory.");
}

TEST_F(CSaveDirectoryTest, AnotherFileOfThatNameIsNeitherReadNorReplaced)
{
    Save("one");
    const fs::path pointer = fs::path(path) / "current";
    for (const std::string& content :
         {std::string(), std::string("kzcbui-save-1"), std::string("kzcbui-save-1\n\n"),
          std::string("../kzcbui-save-1\n"), std::string("kzcbui-save-1/../../etc\n"),
          std::string("kzcbui-save-0\n"), std::string("kzcbui-save-01\n"),
          std::string("kzcbui-save-1234567890\n"), std::string("kzcbui-save-\n"),
          std::string("kzcbui-save-1\0\n", 15), std::string("a text of the user\n"),
          std::string(100000, 'x')}) {
        WriteFile(pointer, content);
        for (const CSaveDirectory::EUse use : {CSaveDirectory::USE_TO_SAVE, CSaveDirectory::USE_TO_LOAD}) {
            EXPECT_EQ(Refusal(use),
                      "\"" + pointer.string() + "\" is not the file that tells which save is in force.")
                << content;
        }
        EXPECT_EQ(ReadFile(pointer), content);
        EXPECT_TRUE(fs::exists(fs::path(path) / "kzcbui-save-1"));
    }
    fs::remove(pointer);
    fs::create_directory(pointer);
    EXPECT_NE(Refusal(CSaveDirectory::USE_TO_SAVE), "");
}

TEST_F(CSaveDirectoryTest, ASaveThatIsGoneIsToldAndCanBeMadeAnew)
{
    Save("one");
    fs::remove_all(fs::path(path) / "kzcbui-save-1");
    EXPECT_EQ(Refusal(CSaveDirectory::USE_TO_LOAD), "The save \"" + path + "/kzcbui-save-1\" is gone.");
    Save("two");
    EXPECT_EQ(Load(), "two");
}

TEST_F(CSaveDirectoryTest, OneSavesAtATimeAndNobodyLoadsMeanwhile)
{
    Save("one");
    std::optional<CSaveDirectory> holder;
    const std::string refusal =
        "Another program is using the save in \"" + path + "\" at present; try again when it has done so.";
    holder.emplace(path, CSaveDirectory::USE_TO_SAVE);
    EXPECT_EQ(Refusal(CSaveDirectory::USE_TO_SAVE), refusal);
    EXPECT_EQ(Refusal(CSaveDirectory::USE_TO_LOAD), refusal);
    holder.reset();
    holder.emplace(path, CSaveDirectory::USE_TO_LOAD);
    EXPECT_EQ(Refusal(CSaveDirectory::USE_TO_SAVE), refusal);
    EXPECT_EQ(Load(), "one") << "several load at a time";
}

TEST_F(CSaveDirectoryTest, ACopyWithoutItsLockFileIsLoaded)
{
    Save("one");
    fs::remove(fs::path(path) / "kzcbui-save.lock");
    EXPECT_EQ(Load(), "one");
    EXPECT_FALSE(fs::exists(fs::path(path) / "kzcbui-save.lock"));
}

TEST_F(CSaveDirectoryTest, ALinkToADirectoryIsFollowedAndOneInsideIsNot)
{
    Save("one");
    const std::string real = path;
    path = (dir.GetPath() / "link").string();
    fs::create_directory_symlink(real, path);
    Save("two");
    EXPECT_EQ(Load(), "two");
    fs::rename(real + "/kzcbui-save-2", dir.GetPath() / "elsewhere");
    fs::create_directory_symlink(dir.GetPath() / "elsewhere", real + "/kzcbui-save-2");
    EXPECT_NE(Refusal(CSaveDirectory::USE_TO_LOAD), "");
}

} // namespace NSKZ::Test
