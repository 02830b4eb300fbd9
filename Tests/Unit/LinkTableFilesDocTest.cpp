#include "Support/LinkTableContent.h"
#include "Support/LinkTableFiles.h"
#include "Support/LinkTableVersions.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <sstream>

// The worked example of Doc/link-table-files.md: what it shows is what the tables write.

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

// The bytes of the files that the document shows, by name. A line of a file is its offset, four bytes in
// hexadecimal, their number, and what it says.
std::map<std::string, std::string> ReadFilesOfDocument()
{
    std::ifstream document(KZC_DOC_DIR "/link-table-files.md");
    std::map<std::string, std::string> files;
    std::string line;
    while (std::getline(document, line)) {
        if (line != "```text")
            continue;
        std::string name;
        std::getline(document, name);
        std::string& bytes = files[name];
        while (std::getline(document, line) && line != "```") {
            std::istringstream parts(line);
            std::size_t offset = 0;
            parts >> offset;
            EXPECT_EQ(offset, bytes.size()) << name << ": " << line;
            std::string number;
            for (std::size_t i = 0; i < sizeof(DWORD); ++i) {
                std::string byte;
                parts >> byte;
                number += static_cast<char>(std::stoi(byte, nullptr, 16));
            }
            DWORD shown = 0;
            parts >> shown;
            EXPECT_EQ(MakeNumbers(number), List{shown}) << name << ": " << line;
            bytes += number;
        }
    }
    return files;
}

// The files that two tables write of the example.
struct SExampleFiles
{
    template <class TBnLink, class TRpLink>
    static SExampleFiles Write()
    {
        constexpr DWORD SHOP = 1;
        constexpr DWORD DRINK = 2;
        TBnLink bnLink;
        EXPECT_TRUE(InsertFld(bnLink, SHOP, {2, 3, 2, 1}));
        EXPECT_TRUE(InsertFld(bnLink, DRINK, {2, 2, 3, 2}));
        TRpLink rpLink;
        EXPECT_TRUE(InsertFld(rpLink, SHOP, {{1, {3}}, {2, {0, 2}}, {3, {1}}}));
        EXPECT_TRUE(InsertFld(rpLink, DRINK, {{2, {0, 1, 3}}, {3, {2}}}));
        EXPECT_TRUE(SetRecList(rpLink, SHOP, SCBUICoreCom::BTN_ID_INC_BEGIN, {0, 1, 2}));
        SExampleFiles files;
        EXPECT_TRUE(bnLink.WriteTo(files.bnDir->GetPath().c_str()));
        EXPECT_TRUE(rpLink.WriteTo(files.rpDir->GetPath().c_str()));
        return files;
    }

    std::unique_ptr<const CLinkTableDir> bnDir = std::make_unique<CLinkTableDir>();
    std::unique_ptr<const CLinkTableDir> rpDir = std::make_unique<CLinkTableDir>();
};

} // namespace

TEST(LinkTableFilesDoc, TheExampleIsWhatTheTablesWrite)
{
    if (SCKZCoreCom::GetEndiannessOfPresentEnvironment() != SCKZCoreCom::ENDIANNESS_LITTLE)
        GTEST_SKIP() << "the example is of a machine with the lowest byte first";
    std::map<std::string, std::string> written;
    const auto addFld = [&written](const std::string& name, const CLinkTableDir& dir, DWORD file) {
        written[name] = ReadFileBytes(dir.GetFile(file));
    };
    const SExampleFiles onMemory = SExampleFiles::Write<CBnLink_OnMemVer, CRpLink_OnMemVer>();
    const SExampleFiles memorySaving = SExampleFiles::Write<CBnLink_MemSavVer, CRpLink_MemSavVer>();
    for (DWORD file = 0; file <= 2; ++file) {
        const std::string name = std::to_string(file) + ".dat";
        addFld("BnLink/" + name, *onMemory.bnDir, file);
        addFld("RpLink/" + name, *onMemory.rpDir, file);
        if (file != 0) {
            addFld("MemorySaving/BnLink/" + name, *memorySaving.bnDir, file);
            addFld("MemorySaving/RpLink/" + name, *memorySaving.rpDir, file);
        }
    }
    CRpLink_MemSavVer tenRecords;
    ASSERT_TRUE(InsertFld(tenRecords, 1, {{2, {3, 120, 180, 420, 500, 610, 750, 880, 930, 1023}}}));
    const CLinkTableDir tenRecordsDir;
    ASSERT_TRUE(tenRecords.WriteTo(tenRecordsDir.GetPath().c_str()));
    addFld("MemorySaving/ten records", tenRecordsDir, 1);
    EXPECT_EQ(ReadFilesOfDocument(), written);
    EXPECT_EQ(ReadFileBytes(memorySaving.bnDir->GetFile(0)), written["BnLink/0.dat"]);
    EXPECT_EQ(ReadFileBytes(memorySaving.rpDir->GetFile(0)), written["RpLink/0.dat"]);
    EXPECT_FALSE(std::filesystem::exists(onMemory.bnDir->GetFile(3)));
    EXPECT_FALSE(std::filesystem::exists(onMemory.rpDir->GetFile(3)));
}
