#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "Support/CSavedEnv.h"
#include "Support/MakeTable.h"

#include <gtest/gtest.h>

// The worked example of Doc/saved-environment.md: what it shows is what the engine writes.

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

// The XML that the document shows, without its comments.
std::vector<std::string> ReadExamples()
{
    std::ifstream document(KZC_DOC_DIR "/saved-environment.md");
    std::vector<std::string> examples;
    std::string line;
    while (std::getline(document, line)) {
        if (line != "```xml")
            continue;
        std::string& example = examples.emplace_back();
        while (std::getline(document, line) && line != "```") {
            if (line.find("<!--") == std::string::npos)
                example += line + "\n";
        }
    }
    return examples;
}

// The text with nothing in the attributes of these names, which tell of the moment or of the machine.
std::string Without(const std::vector<std::string>& names, std::string text)
{
    for (const std::string& name : names) {
        const std::string begin = name + "=\"";
        for (std::size_t at = text.find(begin); at != std::string::npos; at = text.find(begin, at)) {
            at += begin.size();
            text.erase(at, text.find('"', at) - at);
        }
    }
    return text;
}

} // namespace

TEST(SavedEnvironmentDoc, TheExampleIsWhatTheEngineWrites)
{
    constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
    constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;
    const auto table = MakeTable({{"shop", TEXT, {"North", "North", "South", ""}},
                                  {"drink", TEXT, {"tea", "milk", "tea", "juice"}},
                                  {"day", DATE, {"2024-07-15", "2024-08-01", "2024-07-20", "2024-08-02"}}});
    const CCoreSumMngr sums(table);
    CBUIDataMngr env(1, ON_MEM, ON_MEM, table, &sums, nullptr);
    env.SetMultiSelectionInfo(true);
    env.SetAliasOfBtn(2, 4, "orange juice");
    SCDeclareConstant::SDateDispForm byMonth;
    byMonth.kind = 2;
    byMonth.form = 7;
    byMonth.option = 0;
    ASSERT_TRUE(env.SetDispFormOfDateBtnClass(3, byMonth));
    DWORD btnID = 0;
    DWORD shared = 0;
    DWORD own = 0;
    const std::vector<DWORD> breakfast{2, 3};
    const std::vector<DWORD> upper{2};
    const std::vector<DWORD> cold{3, 4};
    env.CreateSpBtn(btnID, 2, SCBUICoreCom::BTNTYPE_INC, "breakfast", SELECT, &breakfast, nullptr);
    env.CreateVirBtnClass("regions", true, shared);
    env.CreateSpBtn(btnID, shared, SCBUICoreCom::BTNTYPE_VIRINC, "upper", SELECT, &upper, nullptr, 1);
    env.CreateVirBtnClass("mine", false, own);
    env.CreateSpBtn(btnID, own, SCBUICoreCom::BTNTYPE_VIRINC, "cold", SELECT, &cold, nullptr, 2);
    ASSERT_TRUE(env.SelectTheBtn(1, 2, true));
    ASSERT_TRUE(env.SelectTheBtn(own, btnID, true));
    CSavedEnv saved;
    ASSERT_TRUE(saved.Save(env));

    const std::vector<std::string> examples = ReadExamples();
    ASSERT_EQ(examples.size(), 2u);
    const std::vector<std::string> varying{"createTime", "updateTime", "endianness", "dataModel"};
    EXPECT_EQ(Without(varying, saved.GetText("common.xml")), Without(varying, examples[0]));
    EXPECT_EQ(Without(varying, saved.GetText("fixed.xml")), Without(varying, examples[1]));
}
