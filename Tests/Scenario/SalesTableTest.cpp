// A day of analysis on the sample sales table, from the Shift-JIS file to narrowed buttons and their sums,
// compared with what a plain walk over the rows gives.

#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CCSVLoader.h"
#include "CSourceDataMngr.h"
#include "SCNumeric.h"
#include "Support/TestText.h"
#include "VCBtnClass.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

class SalesTable : public ::testing::Test
{
protected:
    using Texts = std::set<std::string>;
    using Rows = std::vector<DWORD>;

    void SetUp() override
    {
        CCSVLoader(CCSVLoader::SOptions{}).LoadFile(KZC_SAMPLES_DIR "/sales_sjis.csv", table);
        sums = std::make_unique<CCoreSumMngr>(table);
        env = std::make_unique<CBUIDataMngr>(1, SCBUICoreCom::LINKTBLVERTYPE_ONMEM,
                                             SCBUICoreCom::LINKTBLVERTYPE_ONMEM, table, sums.get(), nullptr);
        std::vector<DWORD> btnClassIDs;
        env->GetAllBtnClassIDList(btnClassIDs, true);
        for (const DWORD btnClassID : btnClassIDs) {
            DWORD fldID = 0;
            const char* name = nullptr;
            env->GetFldID(btnClassID, fldID);
            table.GetItemName(fldID, name);
            items[FromSJIS(name)] = btnClassID;
            fldOf[btnClassID] = fldID;
        }
    }

    DWORD GetItem(std::u8string_view name) const { return items.at(UTF8(name)); }

    DWORD GetBtn(DWORD item, std::u8string_view text) const
    {
        std::vector<DWORD> btnIDs;
        env->GetAllBtnIDListOfBtnClass(item, btnIDs, true);
        for (const DWORD btnID : btnIDs) {
            if (GetShownText(item, btnID) == SJIS(text))
                return btnID;
        }
        ADD_FAILURE() << UTF8(text) << " is no button";
        return 0;
    }
    bool Press(std::u8string_view item, std::u8string_view button)
    {
        return env->SelectTheBtn(GetItem(item), GetBtn(GetItem(item), button), true);
    }

    std::string GetShownText(DWORD item, DWORD btnID) const
    {
        const char* text = nullptr;
        EXPECT_TRUE(env->GetAliasOfBtn(item, btnID, text));
        return text;
    }
    // What a cell shows: its text, or the name for the empty value.
    std::string GetCell(DWORD item, DWORD row) const
    {
        const std::string text(table.GetFldData(fldOf.at(item))->GetValue(row));
        return text.empty() ? table.GetDefEmpValName() : text;
    }
    Rows GetRowsWith(std::u8string_view item, const Texts& wanted, const Rows& among) const
    {
        Rows rows;
        for (const DWORD row : among) {
            if (wanted.count(FromSJIS(GetCell(GetItem(item), row))) != 0)
                rows.push_back(row);
        }
        return rows;
    }
    Rows GetAllRows() const
    {
        Rows rows(table.GetRecCount());
        for (DWORD row = 0; row < rows.size(); ++row)
            rows[row] = row;
        return rows;
    }
    Rows GetTargetRows() const
    {
        Rows rows(env->GetRecCountOfSrcData());
        DWORD count = 0;
        env->GetTargetRecList(rows.data(), count);
        rows.resize(count);
        return rows;
    }
    Texts GetDisplayed(DWORD item) const
    {
        std::vector<DWORD> btnIDs;
        env->GetBtnAppOrdListOfBtnClass(item, VCBtnClass::ORDLIST_NORMAL, btnIDs);
        Texts texts;
        for (const DWORD btnID : btnIDs)
            texts.insert(GetShownText(item, btnID));
        EXPECT_EQ(texts.size(), btnIDs.size());
        return texts;
    }

    // Every item that is not being selected shows exactly the values of these rows, each with the sum over
    // them.
    void ExpectNarrowedTo(const Rows& rows) const
    {
        EXPECT_EQ(GetTargetRows(), rows);
        const DWORD amount = fldOf.at(GetItem(u8"金額"));
        for (const auto& [name, item] : items) {
            bool selective = false;
            env->GetBtnSelectiveStateOfBtnClass(item, selective);
            if (selective)
                continue;
            std::map<std::string, double> expected;
            for (const DWORD row : rows) {
                double value = 0.0;
                SCNumeric::AtoF(std::string(table.GetFldData(amount)->GetValue(row)).c_str(), value);
                expected[GetCell(item, row)] += value;
            }
            Texts texts;
            for (const auto& [text, sum] : expected)
                texts.insert(text);
            EXPECT_EQ(GetDisplayed(item), texts) << name;
            std::vector<DWORD> btnIDs;
            env->GetDispBtnIDListOfBtnClass(item, btnIDs);
            for (const DWORD btnID : btnIDs) {
                double sum = 0.0;
                EXPECT_TRUE(env->GetSumValueCacheMngrObjRef().GetSumValue(item, btnID, amount, sum));
                EXPECT_DOUBLE_EQ(sum, expected[GetShownText(item, btnID)]) << name;
            }
        }
    }

    CSourceDataMngr table;
    std::unique_ptr<CCoreSumMngr> sums;
    std::unique_ptr<CBUIDataMngr> env;
    std::map<std::string, DWORD> items; // by name in UTF-8
    std::map<DWORD, DWORD> fldOf;
};

TEST_F(SalesTable, IsWhatTheDemonstrationPromises)
{
    EXPECT_NEAR(table.GetRecCount(), 2000, 200);
    std::map<DWORD, int> itemsOfType;
    for (const auto& [name, item] : items) {
        SCBUICoreCom::EBtnClassType type{};
        env->GetTypeOfBtnClass(item, type);
        ++itemsOfType[type];
    }
    EXPECT_GE(itemsOfType[SCBUICoreCom::BTNCLSTYPE_NORMAL], 4);
    EXPECT_GE(itemsOfType[SCBUICoreCom::BTNCLSTYPE_NUM], 2);
    EXPECT_EQ(itemsOfType[SCBUICoreCom::BTNCLSTYPE_DATE], 1);
    EXPECT_EQ(itemsOfType[SCBUICoreCom::BTNCLSTYPE_TIME], 1);
    EXPECT_EQ(GetDisplayed(GetItem(u8"担当者")).count(table.GetDefEmpValName()), 1u); // some cells are empty
}

TEST_F(SalesTable, IsNarrowedThroughThreeLevelsAndBack)
{
    const Rows all = GetAllRows();
    ExpectNarrowedTo(all);
    EXPECT_TRUE(Press(u8"地域", u8"関東"));
    const Rows inKanto = GetRowsWith(u8"地域", {UTF8(u8"関東")}, all);
    ASSERT_FALSE(inKanto.empty());
    ExpectNarrowedTo(inKanto);

    EXPECT_TRUE(Press(u8"分類", u8"食品"));
    const Rows foodInKanto = GetRowsWith(u8"分類", {UTF8(u8"食品")}, inKanto);
    ExpectNarrowedTo(foodInKanto);

    env->SetMultiSelectionInfo(true);
    EXPECT_TRUE(Press(u8"店舗", u8"渋谷店"));
    EXPECT_TRUE(Press(u8"店舗", u8"横浜店"));
    ExpectNarrowedTo(GetRowsWith(u8"店舗", {UTF8(u8"渋谷店"), UTF8(u8"横浜店")}, foodInKanto));
    const DWORD shop = GetItem(u8"店舗");
    EXPECT_TRUE(env->SelectTheBtn(shop, GetBtn(shop, u8"渋谷店"), false));
    ExpectNarrowedTo(GetRowsWith(u8"店舗", {UTF8(u8"横浜店")}, foodInKanto));

    // What is kept can be taken up again.
    std::vector<SSelectBtnIDList> kept;
    env->GetAllBtnSelectionInfo(kept);
    env->ClearAllBtnSelections(false);
    ExpectNarrowedTo(all);
    EXPECT_TRUE(env->SelectBtns(kept, false));
    ExpectNarrowedTo(GetRowsWith(u8"店舗", {UTF8(u8"横浜店")}, foodInKanto));

    const DWORD region = GetItem(u8"地域");
    EXPECT_TRUE(env->SelectTheBtn(region, GetBtn(region, u8"関東"), false)); // takes the deeper levels along
    ExpectNarrowedTo(all);
}

TEST_F(SalesTable, ALimitationIsTheGroundOfEveryPress)
{
    Rows limited;
    for (DWORD row = 0; row < table.GetRecCount(); row += 3)
        limited.push_back(row);
    env->SetLimitedRecList(limited.data(), static_cast<DWORD>(limited.size()));
    ExpectNarrowedTo(limited);
    EXPECT_TRUE(Press(u8"分類", u8"文具"));
    ExpectNarrowedTo(GetRowsWith(u8"分類", {UTF8(u8"文具")}, limited));
    env->ClearLimitedRecList();
    ExpectNarrowedTo(GetAllRows());
}

TEST_F(SalesTable, DatesAndTimesAreListedWithTheirTexts)
{
    const DWORD day = GetItem(u8"売上日");
    const std::string someDay = GetCell(day, 0);
    std::vector<DWORD> btnIDs;
    env->GetBtnNameOrdListOfBtnClass(day, VCBtnClass::ORDLIST_NORMAL, btnIDs);
    ASSERT_FALSE(btnIDs.empty());
    EXPECT_EQ(btnIDs.back(), SCBUICoreCom::BTN_ID_EMPVAL); // behind the dates
    for (std::size_t i = 1; i + 1 < btnIDs.size(); ++i)
        EXPECT_LE(GetShownText(day, btnIDs[i - 1]), GetShownText(day, btnIDs[i]));
    for (const DWORD btnID : btnIDs) {
        if (GetShownText(day, btnID) != someDay)
            continue;
        EXPECT_TRUE(env->SelectTheBtn(day, btnID, true));
        Rows rows;
        for (const DWORD row : GetAllRows()) {
            if (GetCell(day, row) == someDay)
                rows.push_back(row);
        }
        ExpectNarrowedTo(rows);
    }
}

} // namespace
