#include "CBnLink_OnMemVer.h"
#include "CRpLink_OnMemVer.h"

#include "Support/LinkTableContent.h"
#include "Support/LinkTableFiles.h"

#include <gtest/gtest.h>

#include <map>
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

} // namespace

TEST(LinkTableFilesDoc, TheExampleIsWhatTheTablesWrite)
{
    if (SCKZCoreCom::GetEndiannessOfPresentEnvironment() != SCKZCoreCom::ENDIANNESS_LITTLE)
        GTEST_SKIP() << "the example is of a machine with the lowest byte first";
    constexpr DWORD SHOP = 1;
    constexpr DWORD DRINK = 2;
    CBnLink_OnMemVer bnLink;
    ASSERT_TRUE(InsertFld(bnLink, SHOP, {2, 3, 2, 1}));
    ASSERT_TRUE(InsertFld(bnLink, DRINK, {2, 2, 3, 2}));
    CRpLink_OnMemVer rpLink;
    ASSERT_TRUE(InsertFld(rpLink, SHOP, {{1, {3}}, {2, {0, 2}}, {3, {1}}}));
    ASSERT_TRUE(InsertFld(rpLink, DRINK, {{2, {0, 1, 3}}, {3, {2}}}));
    ASSERT_TRUE(SetRecList(rpLink, SHOP, SCBUICoreCom::BTN_ID_INC_BEGIN, {0, 1, 2}));
    const CLinkTableDir bnDir;
    const CLinkTableDir rpDir;
    ASSERT_TRUE(bnLink.WriteTo(bnDir.GetPath().c_str()));
    ASSERT_TRUE(rpLink.WriteTo(rpDir.GetPath().c_str()));

    std::map<std::string, std::string> written;
    for (DWORD file = 0; file <= 2; ++file) {
        const std::string name = std::to_string(file) + ".dat";
        written["BnLink/" + name] = ReadFileBytes(bnDir.GetFile(file));
        written["RpLink/" + name] = ReadFileBytes(rpDir.GetFile(file));
    }
    EXPECT_EQ(ReadFilesOfDocument(), written);
    EXPECT_FALSE(std::filesystem::exists(bnDir.GetFile(3)));
    EXPECT_FALSE(std::filesystem::exists(rpDir.GetFile(3)));
}
