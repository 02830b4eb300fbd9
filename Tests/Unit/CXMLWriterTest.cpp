#include "CXMLWriter.h"
#include "SCCodePageText.h"

#include "Support/CTempDir.h"
#include "Support/TestText.h"
#include "Support/XMLText.h"

#include <gtest/gtest.h>

#include <string>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

class CXMLWriterTest : public ::testing::Test
{
protected:
    std::string GetPath() const { return (dir.GetPath() / "a.xml").string(); }
    std::string GetFile() const { return ReadWholeFile(dir.GetPath() / "a.xml"); }

    // What is read of an attribute that was written; "!" and why if it is refused.
    std::string WriteAndRead(std::string_view value) const
    {
        CXMLWriter writer(GetPath().c_str());
        SetLastError(ERROR_SUCCESS);
        if (!PutEmpty(writer, "a", {MakeAttribute("x", value)})) {
            EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
            return std::string("! ") + writer.GetFailureText();
        }
        EXPECT_TRUE(writer.Close());
        CXMLReader reader(GetPath().c_str());
        EXPECT_EQ(reader.GetAttributes().size(), 1u) << reader.GetFailureText();
        return reader.GetAttributes().empty() ? "nothing" : Current(reader).substr(4);
    }

    CTempDir dir;
};

constexpr const char* UNHOLDABLE = "! The value of an attribute has a character that XML cannot hold.";
constexpr const char* AMBIGUOUS =
    "! The value of an attribute has a character that would be read back as another.";
constexpr const char* NO_TEXT = "! The value of an attribute is no text of the code page in use.";

} // namespace

TEST_F(CXMLWriterTest, ADocumentIsWrittenTagByTag)
{
    CXMLWriter writer(GetPath().c_str());
    EXPECT_TRUE(PutStart(writer, "Root", {MakeAttribute("id", "1"), MakeAttribute("name", "")}));
    EXPECT_TRUE(PutStart(writer, "Child"));
    EXPECT_TRUE(PutEmpty(writer, "Leaf_1", {MakeAttribute("a.b-c", "x y")}));
    EXPECT_TRUE(PutEnd(writer, "Child"));
    EXPECT_TRUE(PutEmpty(writer, "Other"));
    EXPECT_TRUE(PutEnd(writer, "Root"));
    EXPECT_TRUE(writer.Close());
    EXPECT_STREQ(writer.GetFailureText(), "");
    EXPECT_EQ(GetFile(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                         "<Root id=\"1\" name=\"\">\n"
                         "  <Child>\n"
                         "    <Leaf_1 a.b-c=\"x y\"/>\n"
                         "  </Child>\n"
                         "  <Other/>\n"
                         "</Root>\n");
    CXMLReader reader(GetPath().c_str());
    EXPECT_EQ(WalkAll(reader), "Root id=1 name=; .Child; ..Leaf_1 a.b-c=x y; .Other; ");
}

TEST_F(CXMLWriterTest, EveryCharacterThatXMLHoldsComesBack)
{
    std::string ascii = "\t\n\r";
    for (char c = ' '; c != '\x7F'; ++c)
        ascii += c;
    ascii += "\x7F  two blanks ]]> &amp; &#10; ";
    EXPECT_EQ(WriteAndRead(ascii), ascii);
    EXPECT_EQ(WriteAndRead(SJIS(u8"ソ表①ｱ～")), SJIS(u8"ソ表①ｱ～"));
    const CCodePageScope scope(CP_UTF8);
    EXPECT_EQ(WriteAndRead(ascii), ascii);
    const std::string wide = UTF8(u8"é한\U0001F600\uFFFD\u0085\u2028");
    EXPECT_EQ(WriteAndRead(wide), wide);
}

TEST_F(CXMLWriterTest, EveryDoubleByteCharacterComesBackOrIsRefused)
{
    std::size_t cameBack = 0;
    std::size_t refused = 0;
    for (int lead = 0x81; lead <= 0xFC; ++lead) {
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            const std::string character = {static_cast<char>(lead), static_cast<char>(trail)};
            std::size_t errorPos = 0;
            if ((lead > 0x9F && lead < 0xE0) || !SCCodePageText::IsValid(character, 932, errorPos))
                continue;
            const std::string read = WriteAndRead("x" + character + "y");
            if (read == AMBIGUOUS) {
                ++refused;
                continue;
            }
            EXPECT_EQ(read, "x" + character + "y") << lead << ' ' << trail;
            ++cameBack;
        }
    }
    EXPECT_GT(cameBack, 9000u);
    EXPECT_EQ(refused, 398u); // characters of NEC and IBM that stand twice
}

TEST_F(CXMLWriterTest, ANameMayHaveAPrefixAndComesBackWithIt)
{
    CXMLWriter writer(GetPath().c_str());
    EXPECT_TRUE(PutStart(writer, "Root", {MakeAttribute("xmlns:xlink", "http://www.w3.org/1999/xlink")}));
    EXPECT_TRUE(PutEmpty(writer, "Link", {MakeAttribute("xlink:type", "simple")}));
    EXPECT_TRUE(
        PutEmpty(writer, "undeclared:Link", {MakeAttribute("type", "1"), MakeAttribute("x:type", "2")}));
    EXPECT_TRUE(PutEnd(writer, "Root"));
    EXPECT_TRUE(writer.Close());
    CXMLReader reader(GetPath().c_str());
    EXPECT_EQ(WalkAll(reader), "Root xmlns:xlink=http://www.w3.org/1999/xlink; .Link xlink:type=simple; "
                               ".undeclared:Link type=1 x:type=2; ");
}

TEST_F(CXMLWriterTest, FilesAreUTF8)
{
    EXPECT_EQ(WriteAndRead(SJIS(u8"値")), SJIS(u8"値"));
    EXPECT_NE(GetFile().find(UTF8(u8"x=\"値\"")), std::string::npos);
}

TEST_F(CXMLWriterTest, WhatXMLCannotHoldIsRefused)
{
    for (char c = '\0'; c < ' '; ++c) {
        if (c != '\t' && c != '\n' && c != '\r') {
            EXPECT_EQ(WriteAndRead(std::string("a") + c), UNHOLDABLE) << static_cast<int>(c);
        }
    }
    EXPECT_EQ(WriteAndRead("\x82"), NO_TEXT);
    EXPECT_EQ(WriteAndRead("\x85\x40"), NO_TEXT);
    const CCodePageScope scope(CP_UTF8);
    EXPECT_EQ(WriteAndRead("\xEF\xBF\xBE"), UNHOLDABLE);
    EXPECT_EQ(WriteAndRead("a\xEF\xBF\xBF"), UNHOLDABLE);
    EXPECT_EQ(WriteAndRead("\xC3"), NO_TEXT);
    EXPECT_EQ(WriteAndRead("\xED\xA0\x80"), NO_TEXT);
}

TEST_F(CXMLWriterTest, LongValuesComeBackAsFarAsATagGoes)
{
    const std::string escaped(CXMLWriter::WRITING_BUFFER_SIZE + 1, '&');
    EXPECT_EQ(WriteAndRead(escaped), escaped);
    const std::string longest(IXMLIO::MAX_TAG_SIZE - std::string("<a x=\"\"/>\n").size(), 'x');
    EXPECT_TRUE(WriteAndRead(longest) == longest);
    EXPECT_EQ(WriteAndRead(longest + "x"), "! A tag is too long.");
    EXPECT_EQ(WriteAndRead(longest.substr(1) + "&"), "! A tag is too long.");
    EXPECT_EQ(WriteAndRead(std::string(IXMLIO::MAX_TAG_SIZE + 1, 'x')), "! A tag is too long.");
}

TEST_F(CXMLWriterTest, ARefusedTagLeavesTheDocumentAsItWas)
{
    CXMLWriter writer(GetPath().c_str());
    EXPECT_FALSE(PutEnd(writer, "a"));
    EXPECT_TRUE(PutStart(writer, "a"));
    const std::vector<std::string> badNames = {
        "",   " ",  "1a",    "-a",   "a b", "a<",         ":",
        "a:", ":a", "a:b:c", "a::b", "a:1", SJIS(u8"値"), std::string("a\0", 2)};
    for (const std::string& name : badNames) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(PutEmpty(writer, name)) << name;
        EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
        EXPECT_STREQ(writer.GetFailureText(), "The name of an element is no name for XML.");
        EXPECT_FALSE(PutStart(writer, "b", {MakeAttribute(name, "1")})) << name;
        EXPECT_STREQ(writer.GetFailureText(), "The name of an attribute is no name for XML.");
    }
    EXPECT_FALSE(PutStart(writer, "b", {MakeAttribute("x", "1"), MakeAttribute("x", "2")}));
    EXPECT_STREQ(writer.GetFailureText(), "Two attributes of an element have one name.");
    EXPECT_FALSE(PutStart(writer, "b", {MakeAttribute("x", "1"), MakeAttribute("y", "\x01")}));
    EXPECT_FALSE(PutEnd(writer, "b"));
    EXPECT_STREQ(writer.GetFailureText(), "An end tag is not that of the innermost open element.");
    EXPECT_TRUE(PutStart(writer, "c"));
    EXPECT_FALSE(PutEnd(writer, "a"));
    EXPECT_FALSE(writer.Close());
    EXPECT_STREQ(writer.GetFailureText(), "The document is not finished.");
    EXPECT_TRUE(PutEnd(writer, "c"));
    EXPECT_TRUE(PutEnd(writer, "a"));
    EXPECT_FALSE(PutEmpty(writer, "second"));
    EXPECT_STREQ(writer.GetFailureText(), "A document has one root element only.");
    EXPECT_TRUE(writer.Close());
    CXMLReader reader(GetPath().c_str());
    EXPECT_EQ(WalkAll(reader), "a; .c; ");
}

TEST_F(CXMLWriterTest, ADocumentNeedsARoot)
{
    CXMLWriter writer(GetPath().c_str());
    EXPECT_FALSE(writer.Close());
    EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
    EXPECT_TRUE(PutEmpty(writer, "a"));
    EXPECT_TRUE(writer.Close());
}

TEST_F(CXMLWriterTest, BehindTheClosingNothingIsWritten)
{
    CXMLWriter writer(GetPath().c_str());
    EXPECT_TRUE(PutEmpty(writer, "a"));
    EXPECT_TRUE(writer.Close());
    EXPECT_TRUE(writer.Close());
    EXPECT_FALSE(PutEmpty(writer, "b"));
    EXPECT_STREQ(writer.GetFailureText(), "The file has been closed.");
    EXPECT_FALSE(PutEnd(writer, "b"));
}

TEST_F(CXMLWriterTest, DepthIsBoundedAsInReading)
{
    CXMLWriter writer(GetPath().c_str());
    for (DWORD depth = 1; depth <= IXMLIO::MAX_DEPTH; ++depth)
        ASSERT_TRUE(PutStart(writer, "a"));
    EXPECT_FALSE(PutEmpty(writer, "a"));
    EXPECT_STREQ(writer.GetFailureText(), "Elements are nested too deeply.");
    for (DWORD depth = 1; depth <= IXMLIO::MAX_DEPTH; ++depth)
        ASSERT_TRUE(PutEnd(writer, "a"));
    EXPECT_TRUE(writer.Close());
    CXMLReader reader(GetPath().c_str());
    WalkAll(reader);
    EXPECT_FALSE(reader.HasFailed());
}

TEST_F(CXMLWriterTest, AFileThatCannotBeCreatedFailsEveryCall)
{
    CXMLWriter writer((dir.GetPath() / "missing" / "a.xml").string().c_str());
    for (int i = 0; i < 2; ++i) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(PutEmpty(writer, "a"));
        EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
        EXPECT_STREQ(writer.GetFailureText(), "The file cannot be created.");
    }
    EXPECT_FALSE(PutEnd(writer, "a"));
    EXPECT_FALSE(writer.Close());
}

TEST_F(CXMLWriterTest, AFullDiskFailsAtTheLatestOnClosing)
{
    CXMLWriter writer("/dev/full");
    EXPECT_TRUE(PutEmpty(writer, "a"));
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(writer.Close());
    EXPECT_EQ(GetLastError(), ERROR_DISK_FULL);
    EXPECT_STREQ(writer.GetFailureText(), "The file cannot be written.");
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(writer.Close());
    EXPECT_EQ(GetLastError(), ERROR_DISK_FULL);

    CXMLWriter larger("/dev/full");
    EXPECT_TRUE(PutStart(larger, "a"));
    const std::string value(1000, 'x');
    int count = 0;
    while (count < 1000 && PutEmpty(larger, "b", {MakeAttribute("x", value)}))
        ++count;
    EXPECT_LT(count, 100); // before everything has been put
    EXPECT_EQ(GetLastError(), ERROR_DISK_FULL);
}

TEST_F(CXMLWriterTest, WhatIsNotClosedIsWrittenAsFarAsItGoes)
{
    {
        CXMLWriter writer(GetPath().c_str());
        EXPECT_TRUE(PutStart(writer, "a"));
    }
    EXPECT_EQ(GetFile(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\n");
    {
        CXMLWriter writer("/dev/full");
        EXPECT_TRUE(PutStart(writer, "a"));
    }
}

TEST_F(CXMLWriterTest, AFormerFileIsReplaced)
{
    dir.WriteFile("a.xml", std::string(100000, 'x'));
    CXMLWriter writer(GetPath().c_str());
    EXPECT_TRUE(PutEmpty(writer, "a"));
    EXPECT_TRUE(writer.Close());
    CXMLReader reader(GetPath().c_str());
    EXPECT_EQ(WalkAll(reader), "a; ");
}

TEST_F(CXMLWriterTest, ALargeDocumentComesBackWhole)
{
    CXMLWriter writer(GetPath().c_str());
    EXPECT_TRUE(PutStart(writer, "a"));
    std::string expected = "a; ";
    for (int i = 0; i < 20000; ++i) {
        const std::string number = std::to_string(i);
        EXPECT_TRUE(PutEmpty(writer, "b", {MakeAttribute("n", number)}));
        expected += ".b n=" + number + "; ";
    }
    EXPECT_TRUE(PutEnd(writer, "a"));
    EXPECT_TRUE(writer.Close());
    CXMLReader reader(GetPath().c_str());
    EXPECT_EQ(WalkAll(reader), expected);
}
