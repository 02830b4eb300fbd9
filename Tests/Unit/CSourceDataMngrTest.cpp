#include "CSourceDataMngr.h"

#include "Support/CAllocFault.h"
#include "Support/TestText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace NSKZ::NSKZCore;
using NSKZ::Test::CCodePageScope;
using NSKZ::Test::FailEveryAllocation;
using NSKZ::Test::SJIS;
using NSKZ::Test::UTF8;

using SC = SCDeclareConstant;
using Texts = std::vector<std::string>;
using SFldInfo = CSourceDataMngr::SFldInfo;

namespace {

constexpr DWORD UNTOUCHED = 987654;

CFldValueList MakeValues(const Texts& texts)
{
    CFldValueList values;
    for (const std::string& text : texts)
        EXPECT_TRUE(values.Append(text));
    return values;
}

SFldInfo MakeInfo(const std::string& name, SC::EDataType type = SC::DATATYPE_TEXT)
{
    SFldInfo info;
    info.name = name;
    info.spec.dataType = type;
    return info;
}

// Reads a stretch as the engine does, with looks at every output.
Texts Read(const CSourceDataMngr& table, DWORD fldID, DWORD first, DWORD count)
{
    DWORD size32 = 0;
    unsigned long long size = 0;
    EXPECT_TRUE(table.GetDataSize(fldID, first, count, size32, size));
    EXPECT_EQ(size, size32);
    std::vector<char> buffer(size);
    std::vector<unsigned short> lengths(count);
    std::vector<char*> values(count);
    DWORD written = 0;
    EXPECT_TRUE(
        table.GetData(fldID, first, count, written, buffer.data(), size32, lengths.data(), values.data()));
    EXPECT_EQ(written, size32);
    Texts texts;
    for (DWORD i = 0; i < count; ++i) {
        EXPECT_EQ(values[i][lengths[i]], '\0');
        texts.emplace_back(values[i]);
        EXPECT_EQ(texts.back().size(), lengths[i]);
    }
    return texts;
}

Texts ReadAll(const CSourceDataMngr& table, DWORD fldID)
{
    return Read(table, fldID, 0, table.GetRecCount());
}

// Fields 1 "item" (text) and 2 "price" (number) with four records.
CSourceDataMngr MakeTable()
{
    CSourceDataMngr table;
    DWORD fldID = 0;
    EXPECT_TRUE(table.AddFld(MakeInfo("item"), MakeValues({"pen", "", "ink", "pen"}), fldID));
    EXPECT_EQ(fldID, 1u);
    EXPECT_TRUE(table.AddFld(MakeInfo("price", SC::DATATYPE_NUM), MakeValues({"1", "2", "", "30"}), fldID));
    EXPECT_EQ(fldID, 2u);
    return table;
}

void ExpectUnchanged(const CSourceDataMngr& table)
{
    EXPECT_EQ(table.GetRecCount(), 4u);
    std::vector<DWORD> fldIDs;
    EXPECT_TRUE(table.GetSrcFrmDataFldID(fldIDs));
    EXPECT_EQ(fldIDs, (std::vector<DWORD>{1, 2}));
    EXPECT_EQ(ReadAll(table, 1), (Texts{"pen", "", "ink", "pen"}));
    EXPECT_EQ(ReadAll(table, 2), (Texts{"1", "2", "", "30"}));
    SFldInfo info;
    EXPECT_TRUE(table.GetFldInfo(1, info));
    EXPECT_EQ(info.name, "item");
    EXPECT_EQ(info.spec.dataType, SC::DATATYPE_TEXT);
    EXPECT_EQ(table.GetDefEmpValName(), SJIS(u8"(空白)"));
}

} // namespace

TEST(CSourceDataMngr, IsEmptyAtFirst)
{
    const CSourceDataMngr table;
    EXPECT_EQ(table.GetRecCount(), 0u);
    EXPECT_EQ(table.GetFldCount(), 0u);
    std::vector<DWORD> fldIDs = {7};
    EXPECT_TRUE(table.GetSrcFrmDataFldID(fldIDs));
    EXPECT_TRUE(fldIDs.empty());
}

TEST(CSourceDataMngr, TellsItsFieldsInTheirOrder)
{
    CSourceDataMngr table = MakeTable();
    DWORD fldID = 0;
    ASSERT_TRUE(table.InsertFld(1, MakeInfo("between"), MakeValues({"a", "b", "c", "d"}), fldID));
    EXPECT_EQ(fldID, 3u);
    std::vector<DWORD> fldIDs;
    table.GetSrcFrmDataFldID(fldIDs);
    EXPECT_EQ(fldIDs, (std::vector<DWORD>{1, 3, 2}));
    EXPECT_EQ(table.GetFldCount(), 3u);
    const char* name = nullptr;
    ASSERT_TRUE(table.GetItemName(3, name));
    EXPECT_STREQ(name, "between");
}

TEST(CSourceDataMngr, TellsKindAndTypeOfAField)
{
    CSourceDataMngr table = MakeTable();
    SC::SDataSpec spec;
    ASSERT_TRUE(table.GetDataSpec(2, spec));
    EXPECT_EQ(spec.dataKind, SC::DATAKIND_ITEM);
    EXPECT_EQ(spec.dataType, SC::DATATYPE_NUM);
    SFldInfo hidden = MakeInfo("hidden");
    hidden.spec.dataKind = SC::DATAKIND_HIDDEN;
    ASSERT_TRUE(table.SetFldInfo(2, hidden));
    ASSERT_TRUE(table.GetDataSpec(2, spec));
    EXPECT_EQ(spec.dataKind, SC::DATAKIND_HIDDEN);
    EXPECT_EQ(spec.dataType, SC::DATATYPE_TEXT);
}

TEST(CSourceDataMngr, ReadsAnyStretchOfRecords)
{
    const CSourceDataMngr table = MakeTable();
    EXPECT_EQ(ReadAll(table, 1), (Texts{"pen", "", "ink", "pen"}));
    EXPECT_EQ(Read(table, 1, 1, 2), (Texts{"", "ink"}));
    EXPECT_EQ(Read(table, 2, 3, 1), (Texts{"30"}));
    EXPECT_EQ(Read(table, 2, 4, 0), Texts());
}

TEST(CSourceDataMngr, AStretchPastTheEndIsRefused)
{
    const CSourceDataMngr table = MakeTable();
    const std::pair<DWORD, DWORD> stretches[] = {{0, 5}, {4, 1}, {5, 0}, {3, 4294967295}, {4294967295, 2}};
    for (const auto& [first, count] : stretches) {
        DWORD size32 = UNTOUCHED;
        unsigned long long size = UNTOUCHED;
        char buffer[64];
        unsigned short lengths[8];
        char* values[8];
        EXPECT_FALSE(table.GetDataSize(1, first, count, size32, size));
        EXPECT_FALSE(table.GetData(1, first, count, size32, buffer, sizeof buffer, lengths, values));
        EXPECT_EQ(size32, UNTOUCHED);
        EXPECT_EQ(size, UNTOUCHED);
    }
}

TEST(CSourceDataMngr, ABufferThatIsTooSmallIsRefusedAndNothingWritten)
{
    const CSourceDataMngr table = MakeTable();
    DWORD size32 = UNTOUCHED;
    unsigned long long size = 0;
    ASSERT_TRUE(table.GetDataSize(1, 0, 4, size32, size));
    EXPECT_EQ(size, 13u);
    char buffer[13] = "############";
    unsigned short lengths[4] = {7, 7, 7, 7};
    char* values[4] = {};
    size32 = UNTOUCHED;
    EXPECT_FALSE(table.GetData(1, 0, 4, size32, buffer, 12, lengths, values));
    EXPECT_STREQ(buffer, "############");
    EXPECT_EQ(lengths[0], 7);
    EXPECT_EQ(values[0], nullptr);
    EXPECT_EQ(size32, UNTOUCHED);
    EXPECT_TRUE(table.GetData(1, 0, 4, size32, buffer, 13, lengths, values));
    EXPECT_EQ(size32, 13u);
}

TEST(CSourceDataMngr, AnUnknownFieldIsRefusedByEveryOperation)
{
    CSourceDataMngr table = MakeTable();
    for (const DWORD unknown : {0u, 3u, 4294967295u}) {
        SC::SDataSpec spec{5, SC::DATATYPE_TIME};
        SC::SDateTypeInfo dateInfo;
        SC::STimeTypeInfo timeInfo;
        SFldInfo info = MakeInfo("untouched");
        DWORD size32 = UNTOUCHED;
        unsigned long long size = UNTOUCHED;
        const char* name = "untouched";
        EXPECT_FALSE(table.GetDataSpec(unknown, spec));
        EXPECT_FALSE(table.GetDataSize(unknown, 0, 0, size32, size));
        EXPECT_FALSE(table.GetData(unknown, 0, 0, size32, nullptr, 0, nullptr, nullptr));
        EXPECT_FALSE(table.GetDateTypeInfo(unknown, dateInfo));
        EXPECT_FALSE(table.GetTimeTypeInfo(unknown, timeInfo));
        EXPECT_FALSE(table.GetItemName(unknown, name));
        EXPECT_FALSE(table.GetFldInfo(unknown, info));
        EXPECT_EQ(table.GetFldData(unknown), nullptr);
        EXPECT_FALSE(table.DeleteFld(unknown));
        EXPECT_FALSE(table.SetFldData(unknown, MakeValues({"a", "b", "c", "d"})));
        EXPECT_FALSE(table.SetFldInfo(unknown, MakeInfo("x")));
        EXPECT_EQ(spec.dataKind, 5u);
        EXPECT_EQ(size32, UNTOUCHED);
        EXPECT_STREQ(name, "untouched");
        EXPECT_EQ(info.name, "untouched");
    }
    ExpectUnchanged(table);
}

TEST(CSourceDataMngr, FormsBelongToTheirTypeAlone)
{
    CSourceDataMngr table = MakeTable();
    SFldInfo info = MakeInfo("when", SC::DATATYPE_DATE);
    info.dateTypeInfo = {SC::DATEFORM_MDY, SC::DATEDELIM_SLASH};
    info.timeTypeInfo = {SC::TIMEFORM_HM};
    SC::SDateTypeInfo dateInfo;
    SC::STimeTypeInfo timeInfo;
    ASSERT_TRUE(table.SetFldInfo(1, info));
    ASSERT_TRUE(table.GetDateTypeInfo(1, dateInfo));
    EXPECT_EQ(dateInfo.form, SC::DATEFORM_MDY);
    EXPECT_EQ(dateInfo.delimiter, SC::DATEDELIM_SLASH);
    EXPECT_FALSE(table.GetTimeTypeInfo(1, timeInfo));
    info.spec.dataType = SC::DATATYPE_TIME;
    ASSERT_TRUE(table.SetFldInfo(1, info));
    EXPECT_FALSE(table.GetDateTypeInfo(1, dateInfo));
    ASSERT_TRUE(table.GetTimeTypeInfo(1, timeInfo));
    EXPECT_EQ(timeInfo.form, SC::TIMEFORM_HM);
    EXPECT_EQ(ReadAll(table, 1), (Texts{"pen", "", "ink", "pen"}));
}

TEST(CSourceDataMngr, AFieldThatDoesNotFitIsRefused)
{
    CSourceDataMngr table = MakeTable();
    DWORD fldID = UNTOUCHED;
    const Texts four = {"a", "b", "c", "d"};
    EXPECT_FALSE(table.InsertFld(3, MakeInfo("x"), MakeValues(four), fldID));
    EXPECT_FALSE(table.AddFld(MakeInfo("x"), MakeValues({"a", "b", "c"}), fldID));
    EXPECT_FALSE(table.AddFld(MakeInfo("x"), CFldValueList(), fldID));
    EXPECT_FALSE(table.AddFld(MakeInfo(std::string("x\0y", 3)), MakeValues(four), fldID));
    EXPECT_FALSE(table.AddFld(MakeInfo("x", static_cast<SC::EDataType>(4)), MakeValues(four), fldID));
    EXPECT_FALSE(table.AddFld(MakeInfo("x", SC::DATATYPE_UNSETTING), MakeValues(four), fldID));
    SFldInfo info = MakeInfo("x");
    info.spec.dataKind = SC::UNSETTING;
    EXPECT_FALSE(table.AddFld(info, MakeValues(four), fldID));
    info = MakeInfo("x", SC::DATATYPE_DATE);
    info.dateTypeInfo.form = static_cast<SC::EDateDataForm>(SC::DATEFORM_LAST + 1);
    EXPECT_FALSE(table.AddFld(info, MakeValues(four), fldID));
    EXPECT_FALSE(table.SetFldInfo(1, info));
    info = MakeInfo("x", SC::DATATYPE_DATE);
    info.dateTypeInfo.delimiter = static_cast<SC::EDateDelimiter>(SC::DATEDELIM_LAST + 1);
    EXPECT_FALSE(table.AddFld(info, MakeValues(four), fldID));
    info = MakeInfo("x", SC::DATATYPE_TIME);
    info.timeTypeInfo.form = static_cast<SC::ETimeDataForm>(SC::TIMEFORM_LAST + 1);
    EXPECT_FALSE(table.AddFld(info, MakeValues(four), fldID));
    EXPECT_FALSE(table.SetFldData(1, MakeValues({"a"})));
    EXPECT_EQ(fldID, UNTOUCHED);
    ExpectUnchanged(table);
}

TEST(CSourceDataMngr, AnIdentifierIsNotGivenTwice)
{
    CSourceDataMngr table = MakeTable();
    DWORD fldID = 0;
    ASSERT_TRUE(table.DeleteFld(2));
    ASSERT_TRUE(table.AddFld(MakeInfo("new"), MakeValues({"a", "b", "c", "d"}), fldID));
    EXPECT_EQ(fldID, 3u);
    SC::SDataSpec spec;
    EXPECT_FALSE(table.GetDataSpec(2, spec));
    table.Clear();
    ASSERT_TRUE(table.AddFld(MakeInfo("newer"), MakeValues({"a"}), fldID));
    EXPECT_EQ(fldID, 4u);
}

TEST(CSourceDataMngr, AnIdentifierOfAChangeTakenBackIsNotGivenAgain)
{
    CSourceDataMngr table = MakeTable();
    const CSourceDataMngr before(table);
    DWORD fldID = 0;
    ASSERT_TRUE(table.AddFld(MakeInfo("new"), MakeValues({"a", "b", "c", "d"}), fldID));
    EXPECT_EQ(fldID, 3u);
    table = before;
    ASSERT_TRUE(table.AddFld(MakeInfo("newer"), MakeValues({"a", "b", "c", "d"}), fldID));
    EXPECT_EQ(fldID, 4u);
    table = MakeTable();
    ASSERT_TRUE(table.AddFld(MakeInfo("newest"), MakeValues({"a", "b", "c", "d"}), fldID));
    EXPECT_EQ(fldID, 5u);
}

TEST(CSourceDataMngr, ATableWithoutFieldsHasNoRecords)
{
    CSourceDataMngr table = MakeTable();
    EXPECT_TRUE(table.DeleteFld(1));
    EXPECT_EQ(table.GetRecCount(), 4u);
    EXPECT_TRUE(table.DeleteFld(2));
    EXPECT_EQ(table.GetRecCount(), 0u);
    DWORD fldID = 0;
    EXPECT_TRUE(table.AddFld(MakeInfo("x"), MakeValues({"a"}), fldID));
    EXPECT_EQ(table.GetRecCount(), 1u);
}

TEST(CSourceDataMngr, AFieldsValuesAreReplaced)
{
    CSourceDataMngr table = MakeTable();
    ASSERT_TRUE(table.SetFldData(1, MakeValues({"w", "x", "y", "z"})));
    EXPECT_EQ(ReadAll(table, 1), (Texts{"w", "x", "y", "z"}));
    EXPECT_EQ(ReadAll(table, 2), (Texts{"1", "2", "", "30"}));
    ASSERT_NE(table.GetFldData(1), nullptr);
    EXPECT_EQ(table.GetFldData(1)->GetValue(3), "z");
}

TEST(CSourceDataMngr, AFieldIsFoundByItsName)
{
    CSourceDataMngr table = MakeTable();
    DWORD fldID = UNTOUCHED;
    EXPECT_FALSE(table.GetFldIDOfName("Price", fldID));
    EXPECT_EQ(fldID, UNTOUCHED);
    EXPECT_TRUE(table.GetFldIDOfName("price", fldID));
    EXPECT_EQ(fldID, 2u);
    ASSERT_TRUE(table.SetFldInfo(1, MakeInfo("price")));
    EXPECT_TRUE(table.GetFldIDOfName("price", fldID));
    EXPECT_EQ(fldID, 1u);
}

TEST(CSourceDataMngr, RecordsAreInsertedAnywhere)
{
    CSourceDataMngr table = MakeTable();
    const std::string_view cells[] = {"cap", "7", "", "8"};
    ASSERT_TRUE(table.InsertRecs(1, cells));
    EXPECT_EQ(table.GetRecCount(), 6u);
    EXPECT_EQ(ReadAll(table, 1), (Texts{"pen", "cap", "", "", "ink", "pen"}));
    EXPECT_EQ(ReadAll(table, 2), (Texts{"1", "7", "8", "2", "", "30"}));
    const std::string_view last[] = {"end", "9"};
    ASSERT_TRUE(table.InsertRecs(6, last));
    ASSERT_TRUE(table.InsertRecs(0, last));
    EXPECT_EQ(ReadAll(table, 1), (Texts{"end", "pen", "cap", "", "", "ink", "pen", "end"}));
    EXPECT_TRUE(table.InsertRecs(3, {}));
    EXPECT_EQ(table.GetRecCount(), 8u);
}

TEST(CSourceDataMngr, RecordsAreInsertedFieldByFieldToo)
{
    CSourceDataMngr table = MakeTable();
    const CFldValueList items = MakeValues({"cap", ""});
    const CFldValueList prices = MakeValues({"7", "8"});
    const CFldValueList* const both[] = {&items, &prices};
    ASSERT_TRUE(table.InsertRecsByFld(1, both));
    EXPECT_EQ(ReadAll(table, 1), (Texts{"pen", "cap", "", "", "ink", "pen"}));
    EXPECT_EQ(ReadAll(table, 2), (Texts{"1", "7", "8", "2", "", "30"}));
    // Those of the table itself.
    const CFldValueList* const own[] = {table.GetFldData(1), table.GetFldData(2)};
    ASSERT_TRUE(table.InsertRecsByFld(6, own));
    EXPECT_EQ(ReadAll(table, 2), (Texts{"1", "7", "8", "2", "", "30", "1", "7", "8", "2", "", "30"}));

    CSourceDataMngr other = MakeTable();
    const CFldValueList one = MakeValues({"9"});
    const CFldValueList* const uneven[] = {&items, &one};
    EXPECT_FALSE(other.InsertRecsByFld(0, uneven));
    EXPECT_FALSE(other.InsertRecsByFld(5, both));
    EXPECT_FALSE(other.InsertRecsByFld(0, std::span(both).first(1)));
    EXPECT_FALSE(other.InsertRecsByFld(0, {}));
    EXPECT_FALSE(CSourceDataMngr().InsertRecsByFld(0, {}));
    ExpectUnchanged(other);
}

TEST(CSourceDataMngr, FieldsTakeOverIdentifiersByWhichTheyAreKnownElsewhere)
{
    CSourceDataMngr table = MakeTable();
    ASSERT_TRUE(table.SetFldIDs({7, 3}));
    EXPECT_EQ(ReadAll(table, 7), (Texts{"pen", "", "ink", "pen"}));
    EXPECT_EQ(ReadAll(table, 3), (Texts{"1", "2", "", "30"}));
    EXPECT_EQ(table.GetFldData(1), nullptr);
    DWORD fldID = 0;
    ASSERT_TRUE(table.AddFld(MakeInfo("new"), MakeValues({"", "", "", ""}), fldID));
    EXPECT_EQ(fldID, 8u);

    for (const std::vector<DWORD>& wrong :
         std::vector<std::vector<DWORD>>{{}, {1}, {1, 2, 3}, {2, 2}, {0, 1}, {1, 4294967295}}) {
        CSourceDataMngr other = MakeTable();
        EXPECT_FALSE(other.SetFldIDs(wrong));
        ExpectUnchanged(other);
    }
    EXPECT_TRUE(CSourceDataMngr().SetFldIDs({}));
}

TEST(CSourceDataMngr, RecordsThatDoNotFitAreRefused)
{
    CSourceDataMngr table = MakeTable();
    const std::string tooLong(65536, 'x');
    const std::string_view two[] = {"a", "b"};
    const std::string_view three[] = {"a", "b", "c"};
    const std::string_view withLong[] = {"a", "b", "c", tooLong};
    const std::string_view withNul[] = {"a", std::string_view("\0", 1)};
    EXPECT_FALSE(table.InsertRecs(5, two));
    EXPECT_FALSE(table.InsertRecs(0, three));
    EXPECT_FALSE(table.InsertRecs(0, withLong));
    EXPECT_FALSE(table.InsertRecs(0, withNul));
    ExpectUnchanged(table);
    CSourceDataMngr empty;
    EXPECT_FALSE(empty.InsertRecs(0, two));
    EXPECT_FALSE(empty.InsertRecs(0, {}));
}

TEST(CSourceDataMngr, RecordsAreDeletedAnywhere)
{
    CSourceDataMngr table = MakeTable();
    ASSERT_TRUE(table.DeleteRecs(1, 2));
    EXPECT_EQ(ReadAll(table, 1), (Texts{"pen", "pen"}));
    EXPECT_EQ(ReadAll(table, 2), (Texts{"1", "30"}));
    EXPECT_FALSE(table.DeleteRecs(1, 2));
    EXPECT_FALSE(table.DeleteRecs(3, 0));
    EXPECT_FALSE(table.DeleteRecs(1, 4294967295));
    EXPECT_TRUE(table.DeleteRecs(2, 0));
    EXPECT_EQ(table.GetRecCount(), 2u);
    ASSERT_TRUE(table.DeleteRecs(0, 2));
    EXPECT_EQ(table.GetRecCount(), 0u);
    EXPECT_EQ(table.GetFldCount(), 2u);
    const std::string_view cells[] = {"back", "1"};
    EXPECT_TRUE(table.InsertRecs(0, cells));
    EXPECT_EQ(ReadAll(table, 1), (Texts{"back"}));
}

TEST(CSourceDataMngr, ACopyTakesAChangeBack)
{
    CSourceDataMngr table = MakeTable();
    const CSourceDataMngr before(table);
    ASSERT_TRUE(table.DeleteRecs(0, 3));
    ASSERT_TRUE(table.DeleteFld(1));
    ASSERT_TRUE(table.SetFldInfo(2, MakeInfo("renamed")));
    table.SetDefEmpValName("none");
    ExpectUnchanged(before);
    table = before;
    ExpectUnchanged(table);
}

TEST(CSourceDataMngr, WhatIsMovedFromIsAnEmptyTable)
{
    CSourceDataMngr table = MakeTable();
    const CSourceDataMngr moved(std::move(table));
    ExpectUnchanged(moved);
    EXPECT_EQ(table.GetFldCount(), 0u);
    EXPECT_EQ(table.GetRecCount(), 0u);
    EXPECT_EQ(table.GetDefEmpValName(), SJIS(u8"(空白)"));
    CSourceDataMngr other = MakeTable();
    table = std::move(other);
    ExpectUnchanged(table);
    EXPECT_EQ(other.GetRecCount(), 0u);
    CSourceDataMngr& itself = table;
    table = std::move(itself);
    ExpectUnchanged(table);
}

TEST(CSourceDataMngr, TheNameOfAFieldStaysWhileOthersChange)
{
    CSourceDataMngr table = MakeTable();
    const char* name = nullptr;
    ASSERT_TRUE(table.GetItemName(1, name));
    DWORD fldID = 0;
    for (int i = 0; i < 50; ++i)
        ASSERT_TRUE(table.InsertFld(0, MakeInfo("other"), MakeValues({"a", "b", "c", "d"}), fldID));
    ASSERT_TRUE(table.DeleteFld(2));
    EXPECT_STREQ(name, "item");
}

TEST(CSourceDataMngr, TheNameOfTheEmptyValueIsTextOfTheCodePage)
{
    EXPECT_STREQ(CSourceDataMngr().GetDefEmpValName(), "(\x8B\xF3\x94\x92)");
    const CCodePageScope utf8(CP_UTF8);
    CSourceDataMngr table;
    EXPECT_EQ(table.GetDefEmpValName(), UTF8(u8"(空白)"));
    table.SetDefEmpValName("(none)");
    EXPECT_STREQ(table.GetDefEmpValName(), "(none)");
}

TEST(CSourceDataMngr, ExhaustedMemoryLeavesTheTableAsItWas)
{
    const std::string longName(100, 'n');
    const Texts four = {"a", "b", "c", "d"};
    const std::string_view cells[] = {"cap", "7", "", "8"};
    const auto fail = [](auto change) { return FailEveryAllocation(&MakeTable, change, &ExpectUnchanged); };
    EXPECT_GE(fail([&](CSourceDataMngr& table) {
                  DWORD fldID = 0;
                  table.InsertFld(1, MakeInfo(longName), MakeValues(four), fldID);
              }),
              5);
    EXPECT_GE(fail([&](CSourceDataMngr& table) { table.SetFldData(1, MakeValues(four)); }), 4);
    EXPECT_GE(fail([&](CSourceDataMngr& table) { table.SetFldInfo(1, MakeInfo(longName)); }), 2);
    EXPECT_GE(fail([&](CSourceDataMngr& table) { table.InsertRecs(2, cells); }), 8);
    EXPECT_GE(fail([&](CSourceDataMngr& table) {
                  const CFldValueList* const values[] = {table.GetFldData(1), table.GetFldData(2)};
                  table.InsertRecsByFld(2, values);
              }),
              8);
    EXPECT_GE(fail([&](CSourceDataMngr& table) { table.SetFldIDs({8, 9}); }), 4);
    EXPECT_GE(fail([&](CSourceDataMngr& table) { table.DeleteRecs(1, 1); }), 8);
    EXPECT_GE(fail([&](CSourceDataMngr& table) { table.SetDefEmpValName(longName); }), 2);
    EXPECT_EQ(fail([&](CSourceDataMngr& table) { table.DeleteFld(1); }), 0);
    EXPECT_GE(fail([&](CSourceDataMngr& table) {
                  SFldInfo info = MakeInfo("x");
                  table.GetFldInfo(1, info);
                  std::vector<DWORD> fldIDs;
                  table.GetSrcFrmDataFldID(fldIDs);
              }),
              1);
    CSourceDataMngr other;
    EXPECT_GE(
        FailEveryAllocation(
            &MakeTable, [&](CSourceDataMngr& table) { table = CSourceDataMngr(table); }, &ExpectUnchanged),
        1);
}

TEST(CSourceDataMngr, TheCalendarCriteriaBeginWithAprilMonthEndsAndSundays)
{
    CSourceDataMngr table;
    EXPECT_EQ(table.GetStartMonth(), 4u);
    EXPECT_EQ(table.GetCutOffDate(), 31u);
    EXPECT_EQ(table.GetDaysOfTheWeek(), VCDate::DAYSOFWEEK_SUNDAY);
}

TEST(CSourceDataMngr, CalendarCriteriaAreCheckedAndGoWithTheTable)
{
    CSourceDataMngr table;
    EXPECT_TRUE(table.SetStartMonth(12) && table.SetCutOffDate(20) &&
                table.SetDaysOfTheWeek(VCDate::DAYSOFWEEK_SATURDAY));
    EXPECT_FALSE(table.SetStartMonth(0) || table.SetStartMonth(13));
    EXPECT_FALSE(table.SetCutOffDate(0) || table.SetCutOffDate(32));
    EXPECT_FALSE(table.SetDaysOfTheWeek(VCDate::DAYSOFWEEK_UNSETTING));
    table.Clear();
    const CSourceDataMngr copy(table);
    CSourceDataMngr assigned;
    assigned = copy;
    const CSourceDataMngr moved(std::move(assigned));
    for (const CSourceDataMngr* const each : {&copy, &moved}) {
        EXPECT_EQ(each->GetStartMonth(), 12u);
        EXPECT_EQ(each->GetCutOffDate(), 20u);
        EXPECT_EQ(each->GetDaysOfTheWeek(), VCDate::DAYSOFWEEK_SATURDAY);
    }
}
