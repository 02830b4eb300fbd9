#include "CXMLReader.h"

#include "Support/CTempDir.h"
#include "Support/TestText.h"
#include "Support/XMLText.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

constexpr auto OK = CXMLReader::READXML_OK;
constexpr auto NOELEMENT = CXMLReader::READXML_NOELEMENT;
constexpr auto SEEKFAILURE = CXMLReader::READXML_SEEKFAILURE;
constexpr auto NOTEXIST = CXMLReader::READXML_NOTEXIST;

// A reader of a file that holds a text.
class CTextReader
{
public:
    explicit CTextReader(std::string_view text) : reader(dir.WriteFile("a.xml", text).c_str()) {}
    CXMLReader* operator->() { return &reader; }
    CXMLReader& operator*() { return reader; }

private:
    CTempDir dir;
    CXMLReader reader;
};

std::string Walk(std::string_view text)
{
    CTextReader reader(text);
    return WalkAll(*reader);
}

// Whether reading the whole text fails; the failure must tell why and leave the cursor nowhere.
void ExpectFailure(std::string_view text, DWORD line)
{
    CTextReader reader(text);
    SetLastError(ERROR_SUCCESS);
    WalkAll(*reader);
    EXPECT_TRUE(reader->HasFailed()) << text.substr(0, 100);
    EXPECT_STRNE(reader->GetFailureText(), "");
    EXPECT_EQ(reader->GetFailureLine(), line) << reader->GetFailureText();
    EXPECT_EQ(Current(*reader), "");
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), NOELEMENT);
    EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), NOELEMENT);
    EXPECT_EQ(reader->SeekToEndTagOfParentElement(), NOELEMENT);
}

TEST(CXMLReader, TheAllowanceGoesWithWhatWasRead)
{
    constexpr unsigned long long BASE = CXMLReader::ALLOWANCE_BASE;
    constexpr unsigned long long PER_BYTE = CXMLReader::ALLOWANCE_PER_BYTE;
    CTextReader reader("<a/>");
    EXPECT_FALSE(reader->TakeFromAllowance(BASE + 4 * PER_BYTE + 1)) << "nothing is taken by that";
    EXPECT_FALSE(reader->TakeFromAllowance(~0ULL));
    EXPECT_TRUE(reader->TakeFromAllowance(BASE));
    EXPECT_TRUE(reader->TakeFromAllowance(4 * PER_BYTE));
    EXPECT_TRUE(reader->TakeFromAllowance(0));
    EXPECT_FALSE(reader->TakeFromAllowance(1));
    CTextReader longer("<a>" + std::string(1000000, ' ') + "<b/></a>");
    EXPECT_TRUE(longer->TakeFromAllowance(BASE));
    EXPECT_EQ(longer->SeekToStartTagOfFirstChildElement(), OK);
    EXPECT_TRUE(longer->TakeFromAllowance(1000000 * PER_BYTE));
    EXPECT_FALSE(longer->TakeFromAllowance(1000000 * PER_BYTE));
}

} // namespace

TEST(CXMLReader, TheReaderBeginsOnTheRoot)
{
    CTextReader reader("<?xml version=\"1.0\"?>\n<!-- c --><root a=\"1\" b=\"\"/>");
    EXPECT_EQ(Current(*reader), "root a=1 b=");
    EXPECT_FALSE(reader->HasFailed());
    EXPECT_EQ(reader->GetFailureLine(), 0u);
    EXPECT_STREQ(reader->GetFailureText(), "");
    EXPECT_STREQ(reader->GetAttributes()[0].value, "1"); // with a NUL
}

TEST(CXMLReader, AllElementsAreMetInOrder)
{
    EXPECT_EQ(Walk("<a><b x='1'><c/><d></d></b>text<e y='2'/><f><g><h/></g></f></a>\n"),
              "a; .b x=1; ..c; ..d; .e y=2; .f; ..g; ...h; ");
    EXPECT_EQ(Walk("<a/>"), "a; ");
    EXPECT_EQ(Walk("<a>text <!-- comment --> <?pi x?> <![CDATA[<b/>]]></a>"), "a; ");
}

TEST(CXMLReader, AnElementWithoutChildrenStaysTheCurrentOne)
{
    for (const char* const text : {"<a><b x='1'/><c/></a>", "<a><b x='1'> text </b><c/></a>"}) {
        CTextReader reader(text);
        EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), OK);
        EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), NOTEXIST);
        EXPECT_EQ(Current(*reader), "b x=1");
        EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), NOTEXIST);
        EXPECT_EQ(Current(*reader), "b x=1");
        EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), OK);
        EXPECT_EQ(Current(*reader), "c");
    }
}

TEST(CXMLReader, TheNextSiblingIsReachedPastAllDescendants)
{
    CTextReader reader("<a><b><b><b/></b><c/></b><d/></a>");
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), OK);
    EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), OK);
    EXPECT_EQ(Current(*reader), "d");
}

TEST(CXMLReader, BehindTheLastChildTheParentsSiblingIsNext)
{
    CTextReader reader("<a><b><c/></b><d/></a>");
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), OK);
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), OK);
    EXPECT_EQ(Current(*reader), "c");
    EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), NOTEXIST);
    EXPECT_EQ(Current(*reader), "");
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), NOTEXIST); // of b, which has been left
    EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), OK);
    EXPECT_EQ(Current(*reader), "d");
}

TEST(CXMLReader, BehindTheLastChildTheParentsParentCanBeEnded)
{
    CTextReader reader("<r><a><b><c/></b><d/></a><e/></r>");
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), OK);
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), OK);
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), OK);
    EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), NOTEXIST); // behind b
    EXPECT_EQ(reader->SeekToEndTagOfParentElement(), OK);              // behind a
    EXPECT_EQ(Current(*reader), "");
    EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), OK);
    EXPECT_EQ(Current(*reader), "e");
}

TEST(CXMLReader, TheEndOfTheParentIsReachedFromAChildAndFromItsLack)
{
    CTextReader reader("<r><a><b><x/></b><c/></a><d/></r>");
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), OK);
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), OK);
    EXPECT_EQ(Current(*reader), "b");
    EXPECT_EQ(reader->SeekToEndTagOfParentElement(), OK);
    EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), OK);
    EXPECT_EQ(Current(*reader), "d");
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), NOTEXIST);
    EXPECT_EQ(reader->SeekToEndTagOfParentElement(), OK); // behind the root
    EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), SEEKFAILURE);
    EXPECT_FALSE(reader->HasFailed());
}

TEST(CXMLReader, BehindTheRootTheDocumentEnds)
{
    CTextReader reader("<a><b/></a><!-- behind -->\n");
    EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), SEEKFAILURE);
    EXPECT_FALSE(reader->HasFailed());
    EXPECT_EQ(Current(*reader), "");
    EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), NOELEMENT);
    CTextReader other("<a><b/></a>");
    EXPECT_EQ(other->SeekToEndTagOfParentElement(), SEEKFAILURE);
    EXPECT_FALSE(other->HasFailed());
    EXPECT_EQ(other->SeekToStartTagOfFirstChildElement(), NOELEMENT);
}

TEST(CXMLReader, AFileThatCannotBeOpenedHasNoElement)
{
    CXMLReader reader("/no/such/file.xml");
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_TRUE(reader.HasFailed());
    EXPECT_EQ(reader.GetFailureLine(), 0u);
    EXPECT_STREQ(reader.GetFailureText(), "The file cannot be opened.");
    EXPECT_EQ(Current(reader), "");
    EXPECT_EQ(reader.SeekToStartTagOfFirstChildElement(), NOELEMENT);
}

TEST(CXMLReader, ADamagedFileFailsWhereItIsDamaged)
{
    ExpectFailure("", 1);
    ExpectFailure("no xml", 1);
    ExpectFailure("<a><b></a>", 1);
    ExpectFailure("<a>\n<b>\n", 3);
    ExpectFailure("<a>\n<b x=\"1", 2);
    ExpectFailure("<a/>\n<b/>", 2);
    ExpectFailure("<a/>\ntext", 2);
    ExpectFailure("<a x='1' x='2'/>", 1);
    ExpectFailure("<a>\n<b x='&unknown;'/></a>", 2);
    ExpectFailure("<a>\n&unknown;</a>", 2);
    ExpectFailure("<a x='<'/>", 1);
    ExpectFailure("<a x='&#0;'/>", 1);
    ExpectFailure("<a x='&#xFFFF;'/>", 1);
    ExpectFailure("<?xml version='1.0' encoding='EUC-JP'?>\n<a/>", 1);
    ExpectFailure(std::string("<a>\0</a>", 8), 1);
}

TEST(CXMLReader, AFailureOnTheWaySaysSo)
{
    CTextReader reader("<a><b/>\n<c></a>");
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), OK);
    EXPECT_EQ(Current(*reader), "b");
    EXPECT_EQ(reader->SeekToEndTagOfParentElement(), SEEKFAILURE);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
    EXPECT_TRUE(reader->HasFailed());
    EXPECT_EQ(reader->GetFailureLine(), 2u);
    EXPECT_EQ(reader->SeekToEndTagOfParentElement(), NOELEMENT);
}

TEST(CXMLReader, BadUTF8Fails)
{
    ExpectFailure("<a>\n<b x='\xC3'/></a>", 2);
    ExpectFailure("<a x='\xC0\xAF'/>", 1);     // not the shortest form
    ExpectFailure("<a x='\xED\xA0\x80'/>", 1); // a surrogate
    ExpectFailure("<a x='\x82\xA0'/>", 1);     // Shift-JIS without a declaration
}

TEST(CXMLReader, TextsComeInTheHostsCodePage)
{
    const std::string text = UTF8(u8"\uFEFF<?xml version=\"1.0\" encoding=\"UTF-8\"?><a x='値ソ〜'/>");
    {
        const CCodePageScope scope(CP_UTF8);
        EXPECT_EQ(Walk(text), UTF8(u8"a x=値ソ〜; "));
    }
    const std::string ofWindows = UTF8(u8"<a 名='値ソ～'/>");
    EXPECT_EQ(Walk(ofWindows), SJIS(u8"a 名=値ソ～; "));
}

TEST(CXMLReader, ACharacterThatTheCodePageLacksFailsAtItsElement)
{
    const std::string text = UTF8(u8"<a>\n<b x='한'/>\n<c/></a>");
    ExpectFailure(text, 2);
    const CCodePageScope scope(CP_UTF8);
    EXPECT_EQ(Walk(text), UTF8(u8"a; .b x=한; .c; "));
}

TEST(CXMLReader, AnElementThatIsPassedOverMayHaveAnyCharacter)
{
    CTextReader reader(UTF8(u8"<a><b><x y='한'/></b><c/></a>"));
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), OK);
    EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), OK);
    EXPECT_EQ(Current(*reader), "c");
}

TEST(CXMLReader, ShiftJISFilesAreRead)
{
    // Among them characters whose second byte is a backslash, a quote's or a bracket's neighbour.
    const std::u8string value = u8"ソ表十ＡＢｱｲ①纊\\~";
    for (const char* const name : {"Shift_JIS", "shift_jis", "SJIS", "Windows-31J", "CP932", "MS932"}) {
        const std::string text =
            "<?xml version=\"1.0\" encoding=\"" + std::string(name) + "\"?><a x='" + SJIS(value) + "'/>";
        EXPECT_EQ(Walk(text), "a x=" + SJIS(value) + "; ") << name;
        const CCodePageScope scope(CP_UTF8);
        EXPECT_EQ(Walk(text), "a x=" + UTF8(value) + "; ") << name;
    }
}

TEST(CXMLReader, BadShiftJISFails)
{
    const std::string declaration = "<?xml version=\"1.0\" encoding=\"Shift_JIS\"?>\n";
    ExpectFailure(declaration + "<a x='\x82\x20'/>", 2);
    ExpectFailure(declaration + "<a x='\x85\x40'/>", 2); // no character has this code
    ExpectFailure(declaration + "<a x='\x82", 2);
}

TEST(CXMLReader, UTF16AndLatin1FilesAreRead)
{
    std::string wide = "\xFF\xFE";
    for (const char c : std::string("<a x='1'/>"))
        wide += {c, '\0'};
    EXPECT_EQ(Walk(wide), "a x=1; ");
    const CCodePageScope scope(CP_UTF8);
    EXPECT_EQ(Walk("<?xml version='1.0' encoding='ISO-8859-1'?><a x='\xE9'/>"), UTF8(u8"a x=é; "));
}

TEST(CXMLReader, EscapesAreRead)
{
    EXPECT_EQ(Walk("<a x='&lt;&gt;&amp;&quot;&apos;&#65;&#x42;&#9;&#10;&#13;\n\t'/>"),
              "a x=<>&\"'AB\t\n\r  ; ");
}

TEST(CXMLReader, DeclarationsOfEntitiesAreRefused)
{
    ExpectFailure("<!DOCTYPE a [\n<!ENTITY b 'x'>]><a x='&b;'/>", 1);
    std::string laughs = "<?xml version=\"1.0\"?>\n<!DOCTYPE a [<!ENTITY l0 'ha'>";
    for (int i = 1; i < 20; ++i) {
        const std::string former = "&l" + std::to_string(i - 1) + ";";
        laughs += "<!ENTITY l" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j)
            laughs += former;
        laughs += "'>";
    }
    ExpectFailure(laughs + "]><a>&l19;</a>", 2);
}

TEST(CXMLReader, NothingButTheFileIsRead)
{
    const CTempDir dir;
    const std::string secret = dir.WriteFile("secret.txt", "secret");
    ExpectFailure("<!DOCTYPE a SYSTEM 'file://" + secret + "'><a/>", 1);
    ExpectFailure("<!DOCTYPE a PUBLIC 'p' 'file://" + secret + "'><a x='&e;'/>", 1);
    ExpectFailure("<!DOCTYPE a [<!ENTITY e SYSTEM 'file://" + secret + "'>]><a>&e;</a>", 1);
    ExpectFailure("<!DOCTYPE a [<!ENTITY % p SYSTEM 'file://" + secret + "'>%p;]><a/>", 1);
}

TEST(CXMLReader, ABareDocumentTypeIsPassedOver)
{
    EXPECT_EQ(Walk("<!DOCTYPE a><a/>"), "a; ");
}

TEST(CXMLReader, DepthIsBounded)
{
    const auto nest = [](std::size_t depth) {
        std::string text;
        for (std::size_t i = 0; i < depth; ++i)
            text += "<a>\n";
        for (std::size_t i = 0; i < depth; ++i)
            text += "</a>";
        return text;
    };
    CTextReader deepest(nest(IXMLIO::MAX_DEPTH));
    WalkAll(*deepest);
    EXPECT_FALSE(deepest->HasFailed());
    ExpectFailure(nest(IXMLIO::MAX_DEPTH + 1), IXMLIO::MAX_DEPTH + 1);
    // Where it is only passed over too.
    CTextReader passed(nest(100000));
    EXPECT_EQ(passed->SeekToStartTagOfNextSiblingElement(), SEEKFAILURE);
    EXPECT_STREQ(passed->GetFailureText(), "Elements are nested too deeply.");
}

TEST(CXMLReader, LongTagsAreReadUpToABound)
{
    const std::string value(3 * 1024 * 1024, 'x');
    CTextReader reader("<a><b v='" + value + "'/><c/></a>");
    EXPECT_EQ(reader->SeekToStartTagOfFirstChildElement(), OK);
    ASSERT_EQ(reader->GetAttributes().size(), 1u);
    EXPECT_EQ(std::string(reader->GetAttributes()[0].value), value);
    EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), OK);
    EXPECT_EQ(Current(*reader), "c");
    CTextReader tooLong("<a>\n<b v='" + std::string(3 * IXMLIO::MAX_TAG_SIZE, 'x') + "'/></a>");
    EXPECT_EQ(tooLong->SeekToStartTagOfFirstChildElement(), SEEKFAILURE);
    EXPECT_STREQ(tooLong->GetFailureText(), "A tag or a comment is too long.");
}

TEST(CXMLReader, FilesOfManyBlocksAreReadWhereverTheirTagsAreCut)
{
    std::string text = "<a>";
    std::string expected = "a; ";
    for (int i = 0; i < 30000; ++i) {
        text += "<b n='" + std::to_string(i) + "'>" + (i % 3 == 0 ? "<c/>" : "text") + "</b>\n";
        expected += ".b n=" + std::to_string(i) + "; " + (i % 3 == 0 ? "..c; " : "");
    }
    EXPECT_EQ(Walk(text + "</a>"), expected);
    // A file that is a multiple of a block.
    std::string even = "<a>";
    even.append(2 * 65536 - 7, ' ');
    EXPECT_EQ(Walk(even + "</a>"), "a; ");
}

TEST(CXMLReader, ADocumentThatIsCutOffAnywhereFails)
{
    const std::string document =
        UTF8(u8"<?xml version=\"1.0\"?><r a='値'><b x='&lt;'><c/></b>t<!-- x --><d/></r>");
    EXPECT_EQ(Walk(document), SJIS(u8"r a=値; .b x=<; ..c; .d; "));
    for (std::size_t len = 0; len < document.size(); ++len) {
        CTextReader reader(document.substr(0, len));
        WalkAll(*reader);
        EXPECT_TRUE(reader->HasFailed()) << len;
        EXPECT_EQ(reader->GetFailureLine(), 1u);
    }
}

TEST(CXMLReader, ADocumentWithDamagedBytesIsReadToItsEndOrFails)
{
    const std::string document = "<?xml version='1.0' encoding='Shift_JIS'?><!DOCTYPE r><r a='" +
                                 SJIS(u8"値ソ") +
                                 "'><b x='&lt;&#10;'><c/></b>t<!-- x --><d y=''/><![CDATA[z]]><?p q?></r>";
    std::mt19937 random(11);
    int failures = 0;
    constexpr int ROUNDS = 3000;
    for (int round = 0; round < ROUNDS; ++round) {
        std::string damaged = document;
        for (std::size_t count = 1 + random() % 3; count > 0; --count) {
            const std::size_t pos = random() % damaged.size();
            switch (random() % 3) {
            case 0:
                damaged[pos] = static_cast<char>(random() % 256);
                break;
            case 1:
                damaged.erase(pos, 1 + random() % 5);
                break;
            default:
                damaged.insert(pos, damaged.substr(random() % damaged.size(), 15));
            }
        }
        CTextReader reader(damaged);
        const std::string walked = WalkAll(*reader);
        EXPECT_TRUE(walked.ends_with(reader->HasFailed() ? reader->GetFailureText() : "; ")) << damaged;
        EXPECT_EQ(reader->HasFailed(), *reader->GetFailureText() != '\0');
        EXPECT_EQ(reader->SeekToStartTagOfNextSiblingElement(), NOELEMENT); // at its end either way
        failures += reader->HasFailed() ? 1 : 0;
    }
    EXPECT_GT(failures, ROUNDS / 4);
    EXPECT_LT(failures, ROUNDS);
}

TEST(CXMLReader, AnAttributeIsLookedForByItsExactName)
{
    const std::vector<IXMLIO::SAttribute> attributes = {
        MakeAttribute("id", "1"), {}, MakeAttribute("id2", "2"), MakeAttribute("type", "3")};
    DWORD index = 77;
    EXPECT_TRUE(CXMLReader::SearchAttribute(attributes, 4, "id2", 3, index));
    EXPECT_EQ(index, 2u);
    EXPECT_TRUE(CXMLReader::SearchAttribute(attributes, 4, "id2", 2, index));
    EXPECT_EQ(index, 0u);
    index = 77;
    EXPECT_FALSE(CXMLReader::SearchAttribute(attributes, 3, "type", 4, index)); // not among the first three
    EXPECT_FALSE(CXMLReader::SearchAttribute(attributes, 4, "Type", 4, index));
    EXPECT_FALSE(CXMLReader::SearchAttribute({}, 4, "type", 4, index)); // there are fewer than that
    EXPECT_EQ(index, 77u);
}
