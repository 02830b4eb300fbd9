#include "CCSVLoader.h"

#include "CFldValueList.h"
#include "CSourceDataMngr.h"
#include "Support/CAllocFault.h"
#include "Support/CTempDir.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <sys/stat.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

using SC = SCDeclareConstant;
using SOptions = CCSVLoader::SOptions;
using Texts = std::vector<std::string>;
// The names of the fields, then the values of each record.
using Rows = std::vector<Texts>;

namespace {

Rows GetRows(const CSourceDataMngr& table)
{
    std::vector<DWORD> fldIDs;
    table.GetSrcFrmDataFldID(fldIDs);
    Rows rows(table.GetRecCount() + std::size_t{1});
    for (const DWORD fldID : fldIDs) {
        const char* name = nullptr;
        EXPECT_TRUE(table.GetItemName(fldID, name));
        rows[0].emplace_back(name);
        for (DWORD rec = 0; rec < table.GetRecCount(); ++rec)
            rows[rec + 1].emplace_back(table.GetFldData(fldID)->GetValue(rec));
    }
    return rows;
}

Rows Load(std::string_view content, const SOptions& options = {})
{
    CSourceDataMngr table;
    CCSVLoader(options).LoadMemory(content, "memory", table);
    return GetRows(table);
}

SOptions WithDelimiter(char delimiter)
{
    SOptions options;
    options.delimiter = delimiter;
    return options;
}

SOptions WithCodePage(int codePage)
{
    SOptions options;
    options.codePage = codePage;
    return options;
}

SOptions WithoutHeader()
{
    SOptions options;
    options.hasHeader = false;
    return options;
}

// "LINE: REASON" of the refusal; a look that the table stays as it was.
std::string Refusal(std::string_view content, const SOptions& options = {})
{
    CSourceDataMngr table;
    CCSVLoader({}).LoadMemory("former\nvalue\n", "memory", table);
    try {
        CCSVLoader(options).LoadMemory(content, "memory", table);
    } catch (const ECSVLoadError& error) {
        EXPECT_STREQ(error.GetFile(), "memory");
        EXPECT_EQ(GetRows(table), (Rows{{"former"}, {"value"}}));
        return std::to_string(error.GetLine()) + ": " + error.GetReason();
    }
    return "(loaded)";
}

SC::EDataType GetType(const CSourceDataMngr& table, const std::string& name)
{
    DWORD fldID = 0;
    SC::SDataSpec spec;
    EXPECT_TRUE(table.GetFldIDOfName(name, fldID));
    EXPECT_TRUE(table.GetDataSpec(fldID, spec));
    EXPECT_EQ(spec.dataKind, SC::DATAKIND_ITEM);
    return spec.dataType;
}

const char* const QUOTE_REASON = "A quote stands where none may: a value that holds quotes must begin and "
                                 "end with one, and those within be "
                                 "doubled.";

} // namespace

TEST(CCSVLoader, ReadsNamesAndRecords)
{
    EXPECT_EQ(Load("a,b\n1,2\n3,\n,4\n"), (Rows{{"a", "b"}, {"1", "2"}, {"3", ""}, {"", "4"}}));
}

TEST(CCSVLoader, TakesEveryLineEndAndALastLineWithoutOne)
{
    const Rows expected = {{"a", "b"}, {"1", "2"}, {"3", "4"}};
    EXPECT_EQ(Load("a,b\r\n1,2\r\n3,4\r\n"), expected);
    EXPECT_EQ(Load("a,b\n1,2\n3,4"), expected);
    EXPECT_EQ(Load("a,b\r1,2\r3,4\r"), expected);
    EXPECT_EQ(Load("a,b\r\n1,2\n3,4"), expected);
    EXPECT_EQ(Load("a,b\n1,2\n3,\n"), (Rows{{"a", "b"}, {"1", "2"}, {"3", ""}}));
    EXPECT_EQ(Load("a,b\n1,2\n3,"), (Rows{{"a", "b"}, {"1", "2"}, {"3", ""}}));
}

TEST(CCSVLoader, QuotesHoldDelimitersLineEndsAndQuotes)
{
    EXPECT_EQ(Load("\"a,x\",b\n\"1\r\n2\n\",\"say \"\"yes\"\"\"\n\"\",\"\"\"\"\n"),
              (Rows{{"a,x", "b"}, {"1\r\n2\n", "say \"yes\""}, {"", "\""}}));
    EXPECT_EQ(Load("a\n\"last\""), (Rows{{"a"}, {"last"}}));
}

TEST(CCSVLoader, BlanksBelongToTheValue)
{
    EXPECT_EQ(Load("a, b\n 1 ,\t2\t\n  ,\" 3 \"\n"), (Rows{{"a", " b"}, {" 1 ", "\t2\t"}, {"  ", " 3 "}}));
}

TEST(CCSVLoader, EmptyLinesArePassedOver)
{
    EXPECT_EQ(Load("\n\r\na\n\n1\n\r\n\n2\n\n"), (Rows{{"a"}, {"1"}, {"2"}}));
    EXPECT_EQ(Load("a\n\"\"\n\"\n\n\"\n"), (Rows{{"a"}, {""}, {"\n\n"}}));
}

TEST(CCSVLoader, TakesAnotherDelimiter)
{
    EXPECT_EQ(Load("a\tb\n1,5\t \n", WithDelimiter('\t')), (Rows{{"a", "b"}, {"1,5", " "}}));
    EXPECT_EQ(Load("a;b\n1;\"2;3\"\n", WithDelimiter(';')), (Rows{{"a", "b"}, {"1", "2;3"}}));
    EXPECT_EQ(Load("a b\n1  \n", WithDelimiter('|')), (Rows{{"a b"}, {"1  "}}));
    EXPECT_EQ(Load("a b\n1 \n", WithDelimiter(' ')), (Rows{{"a", "b"}, {"1", ""}}));
}

TEST(CCSVLoader, WithoutHeaderFieldsAreNumbered)
{
    EXPECT_EQ(Load("x,y,z\n1,2,3\n", WithoutHeader()),
              (Rows{{"F1", "F2", "F3"}, {"x", "y", "z"}, {"1", "2", "3"}}));
    EXPECT_EQ(Load(",\n", WithoutHeader()), (Rows{{"F1", "F2"}, {"", ""}}));
}

TEST(CCSVLoader, AHeaderAloneMakesATableWithoutRecords)
{
    EXPECT_EQ(Load("a,b\n"), (Rows{{"a", "b"}}));
    EXPECT_EQ(Load("a,b"), (Rows{{"a", "b"}}));
}

TEST(CCSVLoader, TellsTheEncodingByTheContent)
{
    const Rows expected = {{SJIS(u8"名前")}, {SJIS(u8"表示")}};
    EXPECT_EQ(Load(UTF8(u8"名前\n表示\n")), expected);
    EXPECT_EQ(Load("\xEF\xBB\xBF" + UTF8(u8"名前\n表示\n")), expected);
    EXPECT_EQ(Load(SJIS(u8"名前\n表示\n")), expected);
    EXPECT_EQ(Load("\xEF\xBB\xBF"
                   "a\n1\n"),
              (Rows{{"a"}, {"1"}}));
}

TEST(CCSVLoader, ConvertsIntoTheCodePageInForce)
{
    const CCodePageScope utf8(CP_UTF8);
    const Rows expected = {{UTF8(u8"名前")}, {UTF8(u8"表示")}};
    EXPECT_EQ(Load(UTF8(u8"名前\n表示\n")), expected);
    EXPECT_EQ(Load(SJIS(u8"名前\n表示\n")), expected);
    EXPECT_EQ(Load(UTF8(u8"é\n😀\n")), (Rows{{UTF8(u8"é")}, {UTF8(u8"😀")}}));
}

TEST(CCSVLoader, BytesStayWhatTheyAreWhereTheCodePagesAgree)
{
    // The second code of a character would come back as its first if it were converted.
    EXPECT_EQ(Load("a\n\x87\x90\n", WithCodePage(_KANJI_CP)), (Rows{{"a"}, {"\x87\x90"}}));
}

TEST(CCSVLoader, TheOptionsEncodingGoesBeforeTheContent)
{
    // Valid in both: half-width katakana in the one, a single kana in the other.
    const std::string both = "a\n\xE3\x81\x82\xB1\n";
    EXPECT_EQ(Load("a\n\xC2\xB1\n", WithCodePage(_KANJI_CP)), (Rows{{"a"}, {"\xC2\xB1"}}));
    EXPECT_EQ(Load("a\n\xC2\xB1\n", WithCodePage(CP_UTF8)), (Rows{{"a"}, {SJIS(u8"±")}}));
    EXPECT_EQ(Refusal(both, WithCodePage(CP_UTF8)),
              "2: The text is not valid UTF-8: no character begins at byte 4 of line 2.");
}

TEST(CCSVLoader, ADelimiterThatCanBeATrailByteBreaksNoCharacter)
{
    // Kanji and kana with the trail bytes of backslash, bar and a letter.
    const std::u8string utf8 = u8"表ソ\\ポル\\x\n能予\\ア\\\"\\\"\n";
    const Rows expected = {{SJIS(u8"表ソ"), SJIS(u8"ポル"), "x"}, {SJIS(u8"能予"), SJIS(u8"ア"), "\\"}};
    EXPECT_EQ(Load(SJIS(utf8), WithDelimiter('\\')), expected);
    EXPECT_EQ(Load(UTF8(utf8), WithDelimiter('\\')), expected);
    EXPECT_EQ(Load(SJIS(u8"ポ|ル\n能|予\n"), WithDelimiter('|')),
              (Rows{{SJIS(u8"ポ"), SJIS(u8"ル")}, {SJIS(u8"能"), SJIS(u8"予")}}));
    const CCodePageScope scope(CP_UTF8);
    EXPECT_EQ(Load(SJIS(u8"表A予\nソAア\n"), WithDelimiter('A')),
              (Rows{{UTF8(u8"表"), UTF8(u8"予")}, {UTF8(u8"ソ"), UTF8(u8"ア")}}));
}

TEST(CCSVLoader, InfersTypesFieldByField)
{
    CSourceDataMngr table;
    CCSVLoader({}).LoadMemory(
        "text,number,code,date,time,none\nx,1,01,2024/07/15,9:05,\n,,,,,\ny,-2.5,12,1999/1/1,10:00,\n",
        "memory", table);
    EXPECT_EQ(GetType(table, "text"), SC::DATATYPE_TEXT);
    EXPECT_EQ(GetType(table, "number"), SC::DATATYPE_NUM);
    EXPECT_EQ(GetType(table, "code"), SC::DATATYPE_TEXT);
    EXPECT_EQ(GetType(table, "date"), SC::DATATYPE_DATE);
    EXPECT_EQ(GetType(table, "time"), SC::DATATYPE_TIME);
    EXPECT_EQ(GetType(table, "none"), SC::DATATYPE_TEXT);
    SC::SDateTypeInfo dateInfo;
    SC::STimeTypeInfo timeInfo;
    ASSERT_TRUE(table.GetDateTypeInfo(4, dateInfo));
    EXPECT_EQ(dateInfo.form, SC::DATEFORM_YMD);
    EXPECT_EQ(dateInfo.delimiter, SC::DATEDELIM_SLASH);
    ASSERT_TRUE(table.GetTimeTypeInfo(5, timeInfo));
    EXPECT_EQ(timeInfo.form, SC::TIMEFORM_HM);
}

TEST(CCSVLoader, AGivenTypeGoesBeforeTheValues)
{
    const auto make = [](const char* text) {
        SCFldType::SFldType type;
        EXPECT_TRUE(SCFldType::Parse(text, type));
        return type;
    };
    SOptions options;
    options.types = {{"a", make("number")},
                     {"a", make("text")},
                     {SJIS(u8"日"), make("date:dmy-slash")},
                     {"c", make("date")},
                     {"d", make("number")}};
    CSourceDataMngr table;
    CCSVLoader(options).LoadMemory(UTF8(u8"a,日,c,d\n1,01/02/2024,20-1-2024,x\n2,01/03/2024,?,y\n"), "memory",
                                   table);
    EXPECT_EQ(GetType(table, "a"), SC::DATATYPE_TEXT); // the latter of two
    EXPECT_EQ(GetType(table, "d"), SC::DATATYPE_NUM);
    SC::SDateTypeInfo info;
    ASSERT_TRUE(table.GetDateTypeInfo(2, info));
    EXPECT_EQ(info.form, SC::DATEFORM_DMY);
    EXPECT_EQ(info.delimiter, SC::DATEDELIM_SLASH);
    ASSERT_TRUE(table.GetDateTypeInfo(3, info));
    EXPECT_EQ(info.form, SC::DATEFORM_DMY);
    EXPECT_EQ(info.delimiter, SC::DATEDELIM_HYPHEN);
}

TEST(CCSVLoader, TakesThePlaceOfWhatTheTableHeldButItsNameForTheEmptyValue)
{
    CSourceDataMngr table;
    table.SetDefEmpValName("none");
    const CCSVLoader loader({});
    loader.LoadMemory("a,b\n1,2\n", "memory", table);
    loader.LoadMemory("c\n3\n4\n", "memory", table);
    EXPECT_EQ(GetRows(table), (Rows{{"c"}, {"3"}, {"4"}}));
    EXPECT_STREQ(table.GetDefEmpValName(), "none");
    std::vector<DWORD> fldIDs;
    table.GetSrcFrmDataFldID(fldIDs);
    EXPECT_EQ(fldIDs, (std::vector<DWORD>{3}));
}

TEST(CCSVLoader, AValueOfTheGreatestLengthIsTaken)
{
    const std::string longest(65535, 'x');
    EXPECT_EQ(Load("a,b\n1,\"" + longest + "\"\n"), (Rows{{"a", "b"}, {"1", longest}}));
    // 65535 bytes of Shift-JIS, more of UTF-8.
    std::u8string kana = u8"x";
    for (int i = 0; i < 32767; ++i)
        kana += u8"ア";
    EXPECT_EQ(Load(UTF8(u8"a\n" + kana + u8"\n")), (Rows{{"a"}, {SJIS(kana)}}));
}

TEST(CCSVLoader, RefusesAnEmptyFile)
{
    EXPECT_EQ(Refusal(""), "0: The file is empty.");
    EXPECT_EQ(Refusal("\xEF\xBB\xBF"), "0: The file is empty.");
    EXPECT_EQ(Refusal("\n\r\n\r"), "0: The file is empty.");
    EXPECT_EQ(Refusal("", WithoutHeader()), "0: The file is empty.");
}

TEST(CCSVLoader, RefusesARaggedRecord)
{
    EXPECT_EQ(Refusal("a,b\n1,2\n\n3\n"), "4: The record has 1 value where 2 are expected.");
    EXPECT_EQ(Refusal("a,b\n1,2\n3,4,5\n6\n"), "3: The record has 3 values where 2 are expected.");
    EXPECT_EQ(Refusal("a\n1,2"), "2: The record has 2 values where 1 is expected.");
    EXPECT_EQ(Refusal("1,2\n3\n", WithoutHeader()), "2: The record has 1 value where 2 are expected.");
}

TEST(CCSVLoader, TellsTheLineInWhichARecordBegins)
{
    EXPECT_EQ(Refusal("a,b\r\n\"x\r\ny\r\n\r\n\",1\r\n\r\n\"z\r\n\"\r\n"),
              "7: The record has 1 value where 2 are expected.");
    EXPECT_EQ(Refusal("a,b\r\"x\r\",1\r2\r"), "4: The record has 1 value where 2 are expected.");
    EXPECT_EQ(Refusal("\"a\n\",b\nx\n"), "3: The record has 1 value where 2 are expected.");
}

TEST(CCSVLoader, RefusesAQuoteThatIsNeverClosed)
{
    EXPECT_EQ(Refusal("a,b\n1,2\n3,\"4\n5,6\n"), "3: A quote is opened and never closed.");
    EXPECT_EQ(Refusal("a\n\""), "2: A quote is opened and never closed.");
    EXPECT_EQ(Refusal("a\n\"x\"\"\n"), "2: A quote is opened and never closed.");
}

TEST(CCSVLoader, RefusesAStrayQuote)
{
    for (const char* const row : {"x\"y", "\"x\"y", "\"x\" ", " \"x\"", "x\"", "\"x\"\"\"\"y\"z"})
        EXPECT_EQ(Refusal("a\n1\n" + std::string(row) + "\n2\n"), std::string("3: ") + QUOTE_REASON) << row;
}

TEST(CCSVLoader, RefusesBytesThatAreNoTextOfTheEncoding)
{
    EXPECT_EQ(Refusal("a\nok\nx\xFFy\n", WithCodePage(CP_UTF8)),
              "3: The text is not valid UTF-8: no character begins at byte 2 of line 3.");
    EXPECT_EQ(Refusal("a\nok\nx\x82\n", WithCodePage(_KANJI_CP)),
              "3: The text is not valid Shift-JIS: no character begins at byte 2 of line 3.");
    // Within a record of several lines both its first line and that of the byte are told.
    EXPECT_EQ(Refusal("a,b\n\"x\n\ny\xE3\x81\",1\n", WithCodePage(CP_UTF8)),
              "2: The text is not valid UTF-8: no character begins at byte 2 of line 4.");
    EXPECT_EQ(Refusal("a\n\xFF\n", WithCodePage(CP_UTF8)),
              "2: The text is not valid UTF-8: no character begins at byte 1 of line 2.");
    EXPECT_EQ(Refusal("\xEF\xBB\xBF"
                      "a\n\x82\xA0\n"),
              "2: The text is not valid UTF-8: no character begins at byte 1 of line 2.");
}

TEST(CCSVLoader, OfTwoEncodingsThatDoNotFitTheOneThatFitsLongerIsReported)
{
    EXPECT_EQ(Refusal(SJIS(u8"名前\n表示\n") + "x\x85\x40\n"),
              "3: The text is not valid UTF-8 or Shift-JIS: no character begins at byte 2 of line 3.");
    EXPECT_EQ(Refusal("a\n" + UTF8(u8"各") + "\n\xE5\x90\n"),
              "3: The text is not valid UTF-8 or Shift-JIS: no character begins at byte 1 of line 3.");
}

TEST(CCSVLoader, RefusesInvalidBytesBehindADelimiterThatCanBeATrailByte)
{
    EXPECT_EQ(Refusal(SJIS(u8"表\\ソ\n1\\") + "\x82\n",
                      [] {
                          SOptions options = WithDelimiter('\\');
                          options.codePage = _KANJI_CP;
                          return options;
                      }()),
              "2: The text is not valid Shift-JIS: no character begins at byte 3 of line 2.");
}

TEST(CCSVLoader, RefusesANul)
{
    EXPECT_EQ(Refusal(std::string_view("a\nx\0y\n", 6)),
              "2: A NUL stands in the text (byte 2 of line 2); the file may be UTF-16, or no text at all.");
    EXPECT_EQ(Refusal(std::string_view("\0", 1)),
              "1: A NUL stands in the text (byte 1 of line 1); the file may be UTF-16, or no text at all.");
    // UTF-16 as spreadsheets write it: the mark, then a NUL with every ASCII character.
    EXPECT_EQ(Refusal(std::string_view("\xFF\xFE"
                                       "a\0\n\0",
                                       6),
                      WithCodePage(_KANJI_CP)),
              "1: A NUL stands in the text (byte 4 of line 1); the file may be UTF-16, or no text at all.");
}

TEST(CCSVLoader, RefusesACharacterThatTheCodePageLacks)
{
    EXPECT_EQ(Refusal(UTF8(u8"a,b\n1,2\n3,x😀y\n")),
              UTF8(u8"3: The value of field 2 (\"b\") holds a character that code page 932 lacks: 😀."));
    EXPECT_EQ(Refusal(UTF8(u8"a,é\n1,2\n")),
              UTF8(u8"1: The value of field 2 holds a character that code page 932 lacks: é."));
    EXPECT_EQ(Refusal(UTF8(u8"é\n"), WithoutHeader()),
              UTF8(u8"1: The value of field 1 holds a character that code page 932 lacks: é."));
}

TEST(CCSVLoader, RefusesAValueThatIsTooLong)
{
    EXPECT_EQ(Refusal(UTF8(u8"a,表\n1,2\n3,") + std::string(65536, 'x') + "\n"),
              UTF8(u8"3: The value of field 2 (\"表\") is 65536 bytes long; 65535 is the most."));
    EXPECT_EQ(Refusal(std::string(65536, 'x') + "\n"),
              "1: The value of field 1 is 65536 bytes long; 65535 is the most.");
    EXPECT_EQ(Refusal("a\n\"" + std::string(1000000, 'x') + "\"\n"),
              "2: The value of field 1 (\"a\") is 1000000 bytes long; 65535 is the most.");
}

TEST(CCSVLoader, RefusesEmptyAndRepeatedNames)
{
    EXPECT_EQ(Refusal("a,,c\n1,2,3\n"), "1: Field 2 has no name in the header.");
    EXPECT_EQ(Refusal("\"\"\n1\n"), "1: Field 1 has no name in the header.");
    EXPECT_EQ(Refusal(UTF8(u8"\n\n値,b,値\n1,2,3\n")),
              UTF8(u8"3: The name \"値\" stands twice in the header."));
}

TEST(CCSVLoader, RefusesATypeForAFieldThatThereIsNot)
{
    SOptions options;
    options.types = {{"a", {}}, {SJIS(u8"値"), {}}};
    EXPECT_EQ(Refusal("a\n1\n", options),
              UTF8(u8"1: A type is given for the field \"値\", but there is no field of this name."));
    options.hasHeader = false;
    options.types = {{"F2", {}}};
    EXPECT_EQ(Refusal("1\n", options),
              "1: A type is given for the field \"F2\", but there is no field of this name.");
    EXPECT_EQ(Refusal("1,2\n", options), "(loaded)");
}

TEST(CCSVLoader, RefusesATypeThatTheTableDoesNotTake)
{
    SOptions options;
    options.types = {{"b", {}}};
    options.types[0].second.dataType = static_cast<SC::EDataType>(9);
    EXPECT_EQ(Refusal("a,b\n1,2\n", options), "0: Field 2 (\"b\") cannot be added to the table.");
}

TEST(CCSVLoader, RefusesMoreRecordsThanAllowed)
{
    SOptions options;
    options.maxRecCount = 2;
    EXPECT_EQ(Load("a\n1\n2\n", options), (Rows{{"a"}, {"1"}, {"2"}}));
    EXPECT_EQ(Refusal("a\n1\n2\n3\n", options), "4: There are more than 2 records.");
    options.maxRecCount = 0;
    EXPECT_EQ(Load("a\n", options), (Rows{{"a"}}));
    EXPECT_EQ(Refusal("a\n1", options), "2: There are more than 0 records.");
}

TEST(CCSVLoader, ReportsTheFirstOfSeveralFaults)
{
    EXPECT_EQ(Refusal("a,b\n1\nx\"y,2\n\xFF"), "2: The record has 1 value where 2 are expected.");
    EXPECT_EQ(Refusal("a,b\nx\"y,2\n1\n"), std::string("2: ") + QUOTE_REASON);
}

TEST(CCSVLoader, RefusesOptionsThatCannotBe)
{
    for (const char delimiter : {'\0', '"', '\r', '\n', '\x82'})
        EXPECT_THROW(CCSVLoader(WithDelimiter(delimiter)), std::invalid_argument);
    for (const int codePage : {1252, -1, 1200})
        EXPECT_THROW(CCSVLoader(WithCodePage(codePage)), std::invalid_argument);
}

TEST(CCSVLoader, LoadsAFileWithAJapaneseName)
{
    const CTempDir dir;
    dir.WriteFile(UTF8(u8"表.csv"), "a,b\n1,2\n");
    CSourceDataMngr table;
    CCSVLoader({}).LoadFile((dir.GetPath().string() + "\\" + SJIS(u8"表.csv")).c_str(), table);
    EXPECT_EQ(GetRows(table), (Rows{{"a", "b"}, {"1", "2"}}));
}

TEST(CCSVLoader, LoadsALargeFileWhole)
{
    const CTempDir dir;
    std::string content = "a,b\n";
    for (int i = 0; i < 300000; ++i)
        content += std::to_string(i) + ",value" + std::to_string(i % 7) + "\n";
    CSourceDataMngr table;
    CCSVLoader({}).LoadFile(dir.WriteFile("large.csv", content).c_str(), table);
    ASSERT_EQ(table.GetRecCount(), 300000u);
    EXPECT_EQ(GetType(table, "a"), SC::DATATYPE_NUM);
    for (DWORD rec = 0; rec < 300000; rec += 997) {
        EXPECT_EQ(table.GetFldData(1)->GetValue(rec), std::to_string(rec));
        EXPECT_EQ(table.GetFldData(2)->GetValue(rec), std::string("value").append(std::to_string(rec % 7)));
    }
}

TEST(CCSVLoader, LoadsManyLinesThatEndWithACarriageReturnAlone)
{
    // Each line is looked for from where the last one ended, however far away the next line feed is.
    std::string content = "a,b\r";
    for (int i = 0; i < 300000; ++i)
        content += "12345678,abcdefgh\r";
    CSourceDataMngr table;
    CCSVLoader({}).LoadMemory(content + "1,2\n", "memory", table);
    ASSERT_EQ(table.GetRecCount(), 300001u);
    EXPECT_EQ(table.GetFldData(2)->GetValue(299999), "abcdefgh");
    EXPECT_EQ(table.GetFldData(2)->GetValue(300000), "2");
    EXPECT_EQ(Refusal(content + "1\n"), "300002: The record has 1 value where 2 are expected.");
}

TEST(CCSVLoader, LoadsAPipeWhoseSizeNobodyKnows)
{
    const CTempDir dir;
    const std::string path = (dir.GetPath() / "pipe").string();
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::thread writer([&path] {
        std::ofstream pipe(path, std::ios::binary);
        pipe << "a,b\n";
        for (int i = 0; i < 200000; ++i)
            pipe << i << ",value\n";
    });
    CSourceDataMngr table;
    CCSVLoader({}).LoadFile(path.c_str(), table);
    writer.join();
    ASSERT_EQ(table.GetRecCount(), 200000u);
    EXPECT_EQ(table.GetFldData(1)->GetValue(199999), "199999");
}

TEST(CCSVLoader, RefusesAFileThatCannotBeReadToItsEnd)
{
    const char* const path = "/proc/self/mem"; // it opens, and reading its first byte is an error
    if (!std::filesystem::exists(path))
        GTEST_SKIP() << "the system has no such file";
    CSourceDataMngr table;
    CCSVLoader({}).LoadMemory("former\nvalue\n", "memory", table);
    try {
        CCSVLoader({}).LoadFile(path, table);
        FAIL();
    } catch (const ECSVLoadError& error) {
        EXPECT_STREQ(error.GetReason(), "The file cannot be read to its end.");
        EXPECT_EQ(error.GetLine(), 0u);
    }
    EXPECT_EQ(GetRows(table), (Rows{{"former"}, {"value"}}));
}

TEST(CCSVLoader, TellsWhyAFileCannotBeOpened)
{
    const CTempDir dir;
    CSourceDataMngr table;
    const auto refusal = [&](const std::string& path) {
        try {
            CCSVLoader({}).LoadFile(path.c_str(), table);
        } catch (const ECSVLoadError& error) {
            EXPECT_EQ(error.GetLine(), 0u);
            return std::string(error.GetFile()) + ": " + error.GetReason();
        }
        return std::string("(loaded)");
    };
    const std::string missing = dir.GetPath().string() + "/";
    EXPECT_EQ(refusal(missing + SJIS(u8"無.csv")), missing + UTF8(u8"無.csv") + ": There is no such file.");
    EXPECT_EQ(refusal(dir.GetPath().string()),
              dir.GetPath().string() +
                  ": The file cannot be opened: it is a directory, or reading it is not permitted.");
    EXPECT_EQ(refusal("x\x82"), "x?: The file cannot be opened: its name is no text of code page 932.");
}

TEST(CCSVLoader, ErrorsNameFileAndLine)
{
    const CTempDir dir;
    const std::string path = dir.WriteFile("ragged.csv", "a,b\n1\n");
    CSourceDataMngr table;
    try {
        CCSVLoader({}).LoadFile(path.c_str(), table);
        FAIL();
    } catch (const ECSVLoadError& error) {
        EXPECT_EQ(error.what(), path + ", line 2: The record has 1 value where 2 are expected.");
    }
}

TEST(CCSVLoader, ErrorsStandOnOneLineWhateverNamesHold)
{
    EXPECT_EQ(Refusal("\"a\r\nb\tc\x7F\"\n" + std::string(65536, 'x') + "\n"),
              "3: The value of field 1 (\"a??b?c?\") is 65536 bytes long; 65535 is the most.");
    EXPECT_EQ(Refusal("\"a\nb\",\"a\nb\"\n"), "1: The name \"a?b\" stands twice in the header.");
    CSourceDataMngr table;
    try {
        CCSVLoader({}).LoadMemory("", "line\nbreak.csv", table);
        FAIL();
    } catch (const ECSVLoadError& error) {
        EXPECT_STREQ(error.what(), "line?break.csv: The file is empty.");
    }
}

TEST(CCSVLoader, ExhaustedMemoryLeavesTheTableAsItWas)
{
    const CTempDir dir;
    const std::string path =
        dir.WriteFile("some.csv", UTF8(u8"名前\\b\n\"表示の長い長い長い文字列\"\\2\n2024年7月1日\\4\n"));
    SOptions options = WithDelimiter('\\');
    options.types = {{"b", {}}};
    const CCSVLoader loader(options);
    const int failures = FailEveryAllocation(
        [] {
            CSourceDataMngr table;
            CCSVLoader({}).LoadMemory("former\nvalue\n", "memory", table);
            return table;
        },
        [&](CSourceDataMngr& table) { loader.LoadFile(path.c_str(), table); },
        [](const CSourceDataMngr& table) {
            EXPECT_EQ(GetRows(table), (Rows{{"former"}, {"value"}}));
        });
    EXPECT_GE(failures, 30);
}
