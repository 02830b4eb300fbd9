#include "CCoreSumMngr.h"

#include "CSourceDataMngr.h"
#include "Support/CAllocFault.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

using namespace NSKZ::NSKZCore;

using SC = SCDeclareConstant;
using Recs = std::vector<DWORD>;

namespace {

CFldValueList MakeValues(const std::vector<std::string>& texts)
{
    CFldValueList values;
    for (const std::string& text : texts)
        EXPECT_TRUE(values.Append(text));
    return values;
}

void AddFld(CSourceDataMngr& table, SC::EDataType type, const std::vector<std::string>& texts)
{
    CSourceDataMngr::SFldInfo info;
    info.spec.dataType = type;
    DWORD fldID = 0;
    EXPECT_TRUE(table.AddFld(info, MakeValues(texts), fldID));
}

// Field 1 holds numbers with gaps, field 2 texts that look like numbers, field 3 no number at all.
CSourceDataMngr MakeTable()
{
    CSourceDataMngr table;
    AddFld(table, SC::DATATYPE_NUM, {"1.5", "", "-4", "x", "1,000", "0"});
    AddFld(table, SC::DATATYPE_TEXT, {"1", "2", "3", "4", "5", "6"});
    AddFld(table, SC::DATATYPE_NUM, {"", "a", "", "b", "", "c"});
    return table;
}

double Get(const CCoreSumMngr& sums, DWORD fldID, SCSMCoreCom::ENumKindOfSum kind, const Recs& recs)
{
    return sums.GetSumValue(fldID, kind, recs.data(), static_cast<DWORD>(recs.size()));
}

const Recs ALL = {0, 1, 2, 3, 4, 5};

// A host's table whose data cannot be read.
class CUnreadableTable : public CSourceDataMngr
{
public:
    using CSourceDataMngr::CSourceDataMngr;
    explicit CUnreadableTable(const CSourceDataMngr& table) : CSourceDataMngr(table) {}
    bool GetDataSize(DWORD fldID, DWORD firstRec, DWORD recCount, DWORD& size32,
                     unsigned long long& size) const override
    {
        return sizeKnown && CSourceDataMngr::GetDataSize(fldID, firstRec, recCount, size32, size);
    }
    bool GetData(DWORD, DWORD, DWORD, DWORD&, char*, DWORD, unsigned short*, char**) const override
    {
        return false;
    }
    bool sizeKnown = false;
};

// A host's table that gives null for the empty value.
class CNullingTable : public CSourceDataMngr
{
public:
    explicit CNullingTable(const CSourceDataMngr& table) : CSourceDataMngr(table) {}
    bool GetData(DWORD fldID, DWORD firstRec, DWORD recCount, DWORD& size32, char* buffer, DWORD bufferSize,
                 unsigned short* lengths, char** values) const override
    {
        if (!CSourceDataMngr::GetData(fldID, firstRec, recCount, size32, buffer, bufferSize, lengths, values))
            return false;
        for (DWORD i = 0; i < recCount; ++i)
            values[i] = lengths[i] == 0 ? nullptr : values[i];
        return true;
    }
};

} // namespace

TEST(CCoreSumMngr, OnlyNumberFieldsExistAsItems)
{
    const CSourceDataMngr table = MakeTable();
    const CCoreSumMngr sums(table);
    EXPECT_TRUE(sums.IsExistItem(1));
    EXPECT_FALSE(sums.IsExistItem(2));
    EXPECT_TRUE(sums.IsExistItem(3));
    EXPECT_FALSE(sums.IsExistItem(0));
    EXPECT_FALSE(sums.IsExistItem(4));
}

TEST(CCoreSumMngr, ARecordsValueIsItsNumberOrNan)
{
    const CSourceDataMngr table = MakeTable();
    const CCoreSumMngr sums(table);
    EXPECT_EQ(sums.GetRecordValue(1, 0), 1.5);
    EXPECT_EQ(sums.GetRecordValue(1, 4), 1000.0);
    EXPECT_EQ(sums.GetRecordValue(1, 5), 0.0);
    EXPECT_TRUE(std::isnan(sums.GetRecordValue(1, 1)));
    EXPECT_TRUE(std::isnan(sums.GetRecordValue(1, 3)));
    EXPECT_TRUE(std::isnan(sums.GetRecordValue(1, 6)));
    EXPECT_TRUE(std::isnan(sums.GetRecordValue(2, 0)));
    EXPECT_TRUE(std::isnan(sums.GetRecordValue(9, 0)));
}

TEST(CCoreSumMngr, EmptyCellsAndTextsAddNothingAndCountNothing)
{
    const CSourceDataMngr table = MakeTable();
    const CCoreSumMngr sums(table);
    EXPECT_EQ(Get(sums, 1, SCSMCoreCom::KINDOFSUM_SUM, ALL), 997.5);
    EXPECT_EQ(Get(sums, 1, SCSMCoreCom::KINDOFSUM_COUNT, ALL), 4.0);
    EXPECT_EQ(Get(sums, 1, SCSMCoreCom::KINDOFSUM_AVG, ALL), 997.5 / 4);
    EXPECT_EQ(Get(sums, 1, SCSMCoreCom::KINDOFSUM_MAX, ALL), 1000.0);
    EXPECT_EQ(Get(sums, 1, SCSMCoreCom::KINDOFSUM_MIN, ALL), -4.0);
    EXPECT_EQ(Get(sums, 1, SCSMCoreCom::KINDOFSUM_SUM, {0, 2}), -2.5);
    EXPECT_EQ(Get(sums, 1, SCSMCoreCom::KINDOFSUM_COUNT, {1, 3}), 0.0);
}

TEST(CCoreSumMngr, WithoutAnyNumberSumAndCountAreZeroAndTheRestNan)
{
    const CSourceDataMngr table = MakeTable();
    const CCoreSumMngr sums(table);
    for (const Recs& recs : {ALL, Recs()}) {
        EXPECT_EQ(Get(sums, 3, SCSMCoreCom::KINDOFSUM_SUM, recs), 0.0);
        EXPECT_EQ(Get(sums, 3, SCSMCoreCom::KINDOFSUM_COUNT, recs), 0.0);
        EXPECT_TRUE(std::isnan(Get(sums, 3, SCSMCoreCom::KINDOFSUM_AVG, recs)));
        EXPECT_TRUE(std::isnan(Get(sums, 3, SCSMCoreCom::KINDOFSUM_MAX, recs)));
        EXPECT_TRUE(std::isnan(Get(sums, 3, SCSMCoreCom::KINDOFSUM_MIN, recs)));
    }
    EXPECT_EQ(sums.GetSumValue(1, SCSMCoreCom::KINDOFSUM_SUM, nullptr, 0), 0.0);
}

TEST(CCoreSumMngr, WhatCannotBeSummedIsNan)
{
    const CSourceDataMngr table = MakeTable();
    const CCoreSumMngr sums(table);
    EXPECT_TRUE(std::isnan(Get(sums, 2, SCSMCoreCom::KINDOFSUM_SUM, ALL)));
    EXPECT_TRUE(std::isnan(Get(sums, 9, SCSMCoreCom::KINDOFSUM_COUNT, ALL)));
    EXPECT_TRUE(std::isnan(Get(sums, 1, static_cast<SCSMCoreCom::ENumKindOfSum>(0), ALL)));
    EXPECT_TRUE(std::isnan(Get(sums, 1, static_cast<SCSMCoreCom::ENumKindOfSum>(6), ALL)));
    EXPECT_TRUE(std::isnan(Get(sums, 1, SCSMCoreCom::KINDOFSUM_SUM, {0, 6})));
}

TEST(CCoreSumMngr, NumbersAreAddedInTheOrderOfTheList)
{
    CSourceDataMngr table;
    AddFld(table, SC::DATATYPE_NUM, {"1", "1e16", "-1e16", "1"});
    const CCoreSumMngr sums(table);
    EXPECT_EQ(Get(sums, 1, SCSMCoreCom::KINDOFSUM_SUM, {0, 1, 2, 3}), ((1 + 1e16) + -1e16) + 1);
}

TEST(CCoreSumMngr, AFieldLongerThanOneStretchIsReadWhole)
{
    std::vector<std::string> texts;
    for (int i = 0; i < 40000; ++i)
        texts.push_back(i % 1000 == 7 ? "" : std::to_string(i));
    CSourceDataMngr table;
    AddFld(table, SC::DATATYPE_NUM, texts);
    const CCoreSumMngr sums(table);
    Recs recs(40000);
    std::iota(recs.begin(), recs.end(), 0);
    double expected = 0;
    for (int i = 0; i < 40000; ++i)
        expected += i % 1000 == 7 ? 0 : i;
    EXPECT_EQ(Get(sums, 1, SCSMCoreCom::KINDOFSUM_SUM, recs), expected);
    EXPECT_EQ(Get(sums, 1, SCSMCoreCom::KINDOFSUM_COUNT, recs), 39960.0);
    EXPECT_EQ(sums.GetRecordValue(1, 16384), 16384.0);
    EXPECT_EQ(sums.GetRecordValue(1, 39999), 39999.0);
}

TEST(CCoreSumMngr, AChangedTableCountsFromTheNextRefreshOn)
{
    CSourceDataMngr table = MakeTable();
    CCoreSumMngr sums(table);
    EXPECT_EQ(sums.GetRecordValue(1, 0), 1.5);
    ASSERT_TRUE(table.SetFldData(1, MakeValues({"7", "7", "7", "7", "7", "7"})));
    EXPECT_EQ(sums.GetRecordValue(1, 0), 1.5);
    sums.Refresh();
    EXPECT_EQ(sums.GetRecordValue(1, 0), 7.0);
    ASSERT_TRUE(table.DeleteRecs(1, 5));
    sums.Refresh();
    EXPECT_TRUE(std::isnan(sums.GetRecordValue(1, 1)));
}

TEST(CCoreSumMngr, AHostsTableThatCannotBeReadGivesNan)
{
    CUnreadableTable table(MakeTable());
    const CCoreSumMngr sums(table);
    EXPECT_TRUE(std::isnan(sums.GetRecordValue(1, 0)));
    EXPECT_TRUE(std::isnan(Get(sums, 1, SCSMCoreCom::KINDOFSUM_SUM, ALL)));
    table.sizeKnown = true;
    EXPECT_TRUE(std::isnan(sums.GetRecordValue(1, 0)));
}

TEST(CCoreSumMngr, AHostsTableMayGiveNullForTheEmptyValue)
{
    const CNullingTable table(MakeTable());
    const CCoreSumMngr sums(table);
    EXPECT_EQ(Get(sums, 1, SCSMCoreCom::KINDOFSUM_SUM, ALL), 997.5);
}

TEST(CCoreSumMngr, ATableWithoutRecordsSumsToZero)
{
    CSourceDataMngr table;
    AddFld(table, SC::DATATYPE_NUM, {});
    const CCoreSumMngr sums(table);
    EXPECT_TRUE(sums.IsExistItem(1));
    EXPECT_EQ(Get(sums, 1, SCSMCoreCom::KINDOFSUM_SUM, {}), 0.0);
    EXPECT_TRUE(std::isnan(sums.GetRecordValue(1, 0)));
}

TEST(CCoreSumMngr, ExhaustedMemoryInReadingLeavesTheFieldToBeReadAgain)
{
    const CSourceDataMngr table = MakeTable();
    const int failures = NSKZ::Test::FailEveryAllocation(
        [&] { return std::make_unique<CCoreSumMngr>(table); },
        [](const std::unique_ptr<CCoreSumMngr>& sums) { Get(*sums, 1, SCSMCoreCom::KINDOFSUM_SUM, ALL); },
        [](const std::unique_ptr<CCoreSumMngr>& sums) {
            EXPECT_EQ(Get(*sums, 1, SCSMCoreCom::KINDOFSUM_SUM, ALL), 997.5);
        });
    EXPECT_GE(failures, 4);
}
