#include "CXMLReader.h"
#include "CXMLWriter.h"
#include "Support/CAllocFault.h"
#include "Support/CTempDir.h"
#include "Support/TestText.h"
#include "Support/XMLText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

// Every allocation of writing and of reading a document fails in turn.

namespace NSKZ::Test {
namespace {

using NSKZCore::CXMLReader;
using NSKZCore::CXMLWriter;

const std::string& GetLongValue()
{
    static const std::string value = SJIS(u8"値ソ表") + std::string(300, '&');
    return value;
}

void PutDocument(CXMLWriter& writer)
{
    EXPECT_TRUE(PutStart(writer, "ARootWithANameLongEnoughForMemory", {MakeAttribute("id", "1")}));
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(PutStart(writer, "AChildWithANameLongEnoughForMemory",
                             {MakeAttribute("a", GetLongValue()), MakeAttribute("b", "\n")}));
        EXPECT_TRUE(PutEmpty(writer, "Leaf"));
        EXPECT_TRUE(PutEnd(writer, "AChildWithANameLongEnoughForMemory"));
    }
    EXPECT_TRUE(PutEnd(writer, "ARootWithANameLongEnoughForMemory"));
    EXPECT_TRUE(writer.Close());
}

TEST(XMLFault, WritingThatRunsOutOfMemoryLeavesNothingBehind)
{
    const CTempDir dir;
    const std::string path = (dir.GetPath() / "a.xml").string();
    GetLongValue();
    const int failures = FailEveryAllocation([] { return 0; },
                                             [&](int) {
                                                 CXMLWriter writer(path.c_str());
                                                 PutDocument(writer);
                                             },
                                             [](int) {});
    EXPECT_GE(failures, 8);
    CXMLReader reader(path.c_str());
    EXPECT_EQ(Current(reader), "ARootWithANameLongEnoughForMemory id=1");
}

TEST(XMLFault, ATagThatRunsOutOfMemoryIsNotWrittenAndCanBePutAgain)
{
    const CTempDir dir;
    const std::string path = (dir.GetPath() / "a.xml").string();
    const auto putChild = [](CXMLWriter& writer) {
        return PutStart(writer, "AChildWithANameLongEnoughForMemory", {MakeAttribute("a", GetLongValue())});
    };
    GetLongValue();
    const int failures = FailEveryAllocation(
        [&] {
            auto writer = std::make_unique<CXMLWriter>(path.c_str());
            EXPECT_TRUE(PutStart(*writer, "r"));
            return writer;
        },
        [&](std::unique_ptr<CXMLWriter>& writer) { EXPECT_TRUE(putChild(*writer)); },
        [&](std::unique_ptr<CXMLWriter>& writer) {
            EXPECT_TRUE(putChild(*writer));
            EXPECT_TRUE(PutEnd(*writer, "AChildWithANameLongEnoughForMemory"));
            EXPECT_TRUE(PutEnd(*writer, "r"));
            EXPECT_TRUE(writer->Close());
            CXMLReader reader(path.c_str());
            EXPECT_EQ(WalkAll(reader), "r; .AChildWithANameLongEnoughForMemory a=" + GetLongValue() + "; ");
        });
    EXPECT_GE(failures, 3);
}

TEST(XMLFault, ReadingThatRunsOutOfMemoryLeavesNothingBehind)
{
    const CTempDir dir;
    const std::string path = (dir.GetPath() / "a.xml").string();
    {
        CXMLWriter writer(path.c_str());
        PutDocument(writer);
    }
    const std::string sjisPath =
        dir.WriteFile("b.xml", "<?xml version=\"1.0\" encoding=\"Shift_JIS\"?><a><b x='" + SJIS(u8"値ソ表") +
                                   std::string(300, 'x') + "'/></a>");
    for (const std::string& file : {path, sjisPath}) {
        const int failures = FailEveryAllocation(
            [] { return 0; },
            [&](int) {
                CXMLReader reader(file.c_str());
                EXPECT_EQ(reader.SeekToStartTagOfFirstChildElement(), CXMLReader::READXML_OK);
                while (reader.SeekToStartTagOfNextSiblingElement() == CXMLReader::READXML_OK) {
                }
                EXPECT_EQ(reader.SeekToStartTagOfNextSiblingElement(), CXMLReader::READXML_SEEKFAILURE);
                EXPECT_FALSE(reader.HasFailed());
            },
            [](int) {});
        EXPECT_GE(failures, 15);
    }
}

TEST(XMLFault, AMoveThatRunsOutOfMemoryFailsTheReader)
{
    const CTempDir dir;
    const std::string path = dir.WriteFile("a.xml", "<a><b x='" + std::string(5000, 'x') + "'/></a>");
    const int failures = FailEveryAllocation(
        [&] { return std::make_unique<CXMLReader>(path.c_str()); },
        [](std::unique_ptr<CXMLReader>& reader) {
            EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), CXMLReader::READXML_OK);
        },
        [](std::unique_ptr<CXMLReader>& reader) {
            EXPECT_TRUE(reader->HasFailed());
            EXPECT_STREQ(reader->GetFailureText(), "Memory is exhausted.");
            EXPECT_EQ(Current(*reader), "");
            EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), CXMLReader::READXML_NOELEMENT);
        });
    EXPECT_GE(failures, 1);
}

} // namespace
} // namespace NSKZ::Test
