#include "CSourceDataMngr.h"

#include "Support/CAllocFault.h"
#include "Support/CRandom.h"
#include "Support/MakeTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

using SC = SCDeclareConstant;
using SBtnRenewalInfo = SCDataMngrCoreDef::SBtnRenewalInfo;
using IDs = std::vector<DWORD>;
using Texts = std::vector<std::string>;

namespace {

// Fields 1 "item" (text), 2 "price" (number), 3 "day" (date) and 4 "at" (time) with three records.
CSourceDataMngr MakeSalesTable()
{
    return MakeTable({{"item", TEXT, {"pen", "", "ink"}},
                      {"price", NUM, {"1", "2", ""}},
                      {"day", DATE, {"2024-01-05", "", "2024-01-06"}},
                      {"at", TIME, {"09:30", "10:15", ""}}});
}

CFldValueList MakeValues(const Texts& texts)
{
    CFldValueList values;
    for (const std::string& text : texts)
        values.Append(text);
    return values;
}

SBtnRenewalInfo GetInfo(const CSourceDataMngr& table, const CSourceDataMngr& before)
{
    SBtnRenewalInfo info;
    info.deletedFldIDs = {99}; // what it held goes
    table.GetRenewalInfo(before, info);
    return info;
}

// Looks whether the lists are these and every other one is empty.
void ExpectLists(const SBtnRenewalInfo& info, const IDs& deleted, const IDs& inserted, const IDs& specChanged,
                 const IDs& dataChanged, const IDs& formChanged)
{
    EXPECT_EQ(info.deletedFldIDs, deleted);
    EXPECT_EQ(info.insertedFldIDs, inserted);
    EXPECT_EQ(info.specChangedFldIDs, specChanged);
    EXPECT_EQ(info.dataChangedFldIDs, dataChanged);
    EXPECT_EQ(info.formChangedFldIDs, formChanged);
}

void SetType(CSourceDataMngr& table, DWORD fldID, SC::EDataType type)
{
    CSourceDataMngr::SFldInfo info;
    ASSERT_TRUE(table.GetFldInfo(fldID, info));
    info.spec.dataType = type;
    ASSERT_TRUE(table.SetFldInfo(fldID, info));
}

} // namespace

TEST(CSourceDataMngr_Renewal, ATableThatDidNotChangeHasNothingToTell)
{
    const CSourceDataMngr before = MakeSalesTable();
    const CSourceDataMngr table(before);
    const SBtnRenewalInfo info = GetInfo(table, before);
    EXPECT_EQ(info.newRecCount, 3u);
    EXPECT_EQ(info.oldRecCount, 3u);
    ExpectLists(info, {}, {}, {}, {}, {});
    // Whether values are the same counts, not whether they are shared.
    ExpectLists(GetInfo(MakeSalesTable(), before), {}, {}, {}, {}, {});
}

TEST(CSourceDataMngr_Renewal, NamesOrderAndCriteriaAreNoPartOfIt)
{
    const CSourceDataMngr before = MakeSalesTable();
    CSourceDataMngr table(before);
    CSourceDataMngr::SFldInfo info;
    table.GetFldInfo(1, info);
    info.name = "article";
    table.SetFldInfo(1, info);
    table.SetStartMonth(10);
    table.SetDefEmpValName("-");
    ExpectLists(GetInfo(table, before), {}, {}, {}, {}, {});
}

TEST(CSourceDataMngr_Renewal, RecordsAtTheHeadNeedTheirNumbersAlone)
{
    const CSourceDataMngr before = MakeSalesTable();
    CSourceDataMngr table(before);
    const std::string_view cells[] = {"cap", "7", "", "", "hat", "8", "", ""};
    ASSERT_TRUE(table.InsertRecs(0, cells));
    SBtnRenewalInfo info = GetInfo(table, before);
    EXPECT_EQ(info.newRecCount, 5u);
    EXPECT_EQ(info.oldRecCount, 3u);
    ExpectLists(info, {}, {}, {}, {}, {});
    // And the way back.
    info = GetInfo(before, table);
    EXPECT_EQ(info.newRecCount, 3u);
    EXPECT_EQ(info.oldRecCount, 5u);
    ExpectLists(info, {}, {}, {}, {}, {});
}

TEST(CSourceDataMngr_Renewal, RecordsElsewhereChangeTheDataOfFields)
{
    const CSourceDataMngr before = MakeSalesTable();
    CSourceDataMngr table(before);
    const std::string_view cells[] = {"cap", "7", "2024-01-07", "11:00"};
    ASSERT_TRUE(table.InsertRecs(3, cells));
    ExpectLists(GetInfo(table, before), {}, {}, {}, {1, 2, 3, 4}, {});
    CSourceDataMngr shorter(before);
    ASSERT_TRUE(shorter.DeleteRecs(2, 1));
    ExpectLists(GetInfo(shorter, before), {}, {}, {}, {1, 2, 3, 4}, {});
}

TEST(CSourceDataMngr_Renewal, AFieldWhoseValuesFollowAllTheSameIsNotListed)
{
    const CSourceDataMngr before = MakeTable({{"all", TEXT, {"x", "x"}}, {"item", TEXT, {"a", "b"}}});
    CSourceDataMngr table(before);
    const std::string_view cells[] = {"x", "c"};
    ASSERT_TRUE(table.InsertRecs(2, cells));
    ExpectLists(GetInfo(table, before), {}, {}, {}, {2}, {});
}

TEST(CSourceDataMngr_Renewal, OtherValuesAreChangedData)
{
    const CSourceDataMngr before = MakeSalesTable();
    CSourceDataMngr table(before);
    ASSERT_TRUE(table.SetFldData(2, MakeValues({"1", "2", "3"})));
    ExpectLists(GetInfo(table, before), {}, {}, {}, {2}, {});
    ASSERT_TRUE(table.SetFldData(2, MakeValues({"1", "2", ""})));
    ExpectLists(GetInfo(table, before), {}, {}, {}, {}, {});
}

TEST(CSourceDataMngr_Renewal, AnotherFormIsAChangedFormWhereItCounts)
{
    const CSourceDataMngr before = MakeSalesTable();
    CSourceDataMngr table(before);
    for (const DWORD fldID : {1u, 3u, 4u}) {
        CSourceDataMngr::SFldInfo info;
        table.GetFldInfo(fldID, info);
        info.dateTypeInfo.form = SC::DATEFORM_DMY;
        info.timeTypeInfo.form = SC::TIMEFORM_HM;
        table.SetFldInfo(fldID, info);
    }
    ExpectLists(GetInfo(table, before), {}, {}, {}, {}, {3, 4});

    CSourceDataMngr delimited(before);
    CSourceDataMngr::SFldInfo info;
    delimited.GetFldInfo(3, info);
    info.dateTypeInfo.delimiter = SC::DATEDELIM_PERIOD;
    delimited.SetFldInfo(3, info);
    delimited.SetFldData(3, MakeValues({"2024.01.05", "", "2024.01.06"}));
    ExpectLists(GetInfo(delimited, before), {}, {}, {}, {3}, {3});
}

TEST(CSourceDataMngr_Renewal, AnotherTypeOrKindStandsForEverything)
{
    const CSourceDataMngr before = MakeSalesTable();
    CSourceDataMngr table(before);
    SetType(table, 2, TEXT);
    ASSERT_TRUE(table.SetFldData(2, MakeValues({"x", "y", "z"})));
    SetType(table, 1, DATE);
    CSourceDataMngr::SFldInfo info;
    table.GetFldInfo(4, info);
    info.spec.dataKind = SC::DATAKIND_HIDDEN;
    table.SetFldInfo(4, info);
    ExpectLists(GetInfo(table, before), {}, {}, {1, 2, 4}, {}, {});
}

TEST(CSourceDataMngr_Renewal, FieldsThatCameAndWentAreListedOnce)
{
    const CSourceDataMngr before = MakeSalesTable();
    CSourceDataMngr table(before);
    DWORD fldID = 0;
    ASSERT_TRUE(table.DeleteFld(2));
    CSourceDataMngr::SFldInfo info;
    info.name = "shop";
    ASSERT_TRUE(table.InsertFld(0, info, MakeValues({"A", "B", "C"}), fldID));
    EXPECT_EQ(fldID, 5u);
    SetType(table, fldID, NUM);
    ASSERT_TRUE(table.SetFldData(fldID, MakeValues({"1", "2", "3"})));
    ExpectLists(GetInfo(table, before), {2}, {5}, {}, {}, {});
    // A field that came and went between is no change.
    ASSERT_TRUE(table.DeleteFld(fldID));
    ExpectLists(GetInfo(table, before), {2}, {}, {}, {}, {});
}

TEST(CSourceDataMngr_Renewal, ATableWithOtherFieldsAltogetherIsSummedUpToo)
{
    const CSourceDataMngr before = MakeSalesTable();
    CSourceDataMngr table(before);
    for (const DWORD fldID : {1u, 2u, 3u, 4u})
        ASSERT_TRUE(table.DeleteFld(fldID));
    SBtnRenewalInfo info = GetInfo(table, before);
    EXPECT_EQ(info.newRecCount, 0u);
    ExpectLists(info, {1, 2, 3, 4}, {}, {}, {}, {});
    DWORD fldID = 0;
    CSourceDataMngr::SFldInfo infoOfNew;
    ASSERT_TRUE(table.AddFld(infoOfNew, MakeValues({"a", "b", "c", "d"}), fldID));
    info = GetInfo(table, before);
    EXPECT_EQ(info.newRecCount, 4u);
    EXPECT_EQ(info.oldRecCount, 3u);
    ExpectLists(info, {1, 2, 3, 4}, {5}, {}, {}, {});
}

TEST(CSourceDataMngr_Renewal, ExhaustedMemoryLeavesTheOutputAsItWas)
{
    const CSourceDataMngr before = MakeSalesTable();
    CSourceDataMngr table(before);
    SetType(table, 1, NUM);
    ASSERT_TRUE(table.DeleteFld(2));
    const auto prepare = [] {
        SBtnRenewalInfo info;
        info.newRecCount = 77;
        info.dataChangedFldIDs = {9};
        return info;
    };
    const auto prove = [](const SBtnRenewalInfo& info) {
        EXPECT_EQ(info.newRecCount, 77u);
        EXPECT_EQ(info.dataChangedFldIDs, IDs{9});
    };
    EXPECT_EQ(FailEveryAllocation(
                  prepare, [&](SBtnRenewalInfo& info) { table.GetRenewalInfo(before, info); }, prove),
              2);
}

namespace {

// What a follower of a table holds of it, kept up by summaries alone.
struct SFollower
{
    struct SFollowedFld
    {
        SC::EDataType type;
        SC::EDateDataForm form;
        Texts values;

        bool operator==(const SFollowedFld&) const = default;
    };

    static Texts ReadValues(const CSourceDataMngr& table, DWORD fldID)
    {
        Texts values;
        table.GetFldData(fldID)->Visit([&values](const char* text, std::size_t length) {
            values.emplace_back(text, length);
            return true;
        });
        return values;
    }
    static SFollowedFld ReadFld(const CSourceDataMngr& table, DWORD fldID)
    {
        CSourceDataMngr::SFldInfo info;
        table.GetFldInfo(fldID, info);
        return {info.spec.dataType, info.dateTypeInfo.form, ReadValues(table, fldID)};
    }
    static SFollower ReadAll(const CSourceDataMngr& table)
    {
        SFollower follower;
        IDs fldIDs;
        table.GetSrcFrmDataFldID(fldIDs);
        for (const DWORD fldID : fldIDs)
            follower.flds.emplace(fldID, ReadFld(table, fldID));
        return follower;
    }

    void Follow(const CSourceDataMngr& table, const SBtnRenewalInfo& info)
    {
        for (auto& [fldID, fld] : flds) {
            if (info.newRecCount < info.oldRecCount) {
                fld.values.erase(fld.values.begin(),
                                 fld.values.begin() + (info.oldRecCount - info.newRecCount));
            } else {
                Texts added(info.newRecCount - info.oldRecCount);
                if (table.GetFldData(fldID) != nullptr) {
                    const Texts values = ReadValues(table, fldID);
                    std::copy_n(values.begin(), added.size(), added.begin());
                }
                fld.values.insert(fld.values.begin(), added.begin(), added.end());
            }
        }
        for (const DWORD fldID : info.deletedFldIDs)
            flds.erase(fldID);
        if (!info.dataChangedFldIDs.empty() || !info.formChangedFldIDs.empty()) {
            for (auto& [fldID, fld] : flds)
                fld.values = ReadValues(table, fldID);
        }
        for (const DWORD fldID : info.formChangedFldIDs)
            flds.at(fldID).form = ReadFld(table, fldID).form;
        for (const DWORD fldID : info.specChangedFldIDs)
            flds.at(fldID) = ReadFld(table, fldID);
        for (const DWORD fldID : info.insertedFldIDs)
            flds.emplace(fldID, ReadFld(table, fldID));
    }

    std::map<DWORD, SFollowedFld> flds;
};

void EditAtRandom(CSourceDataMngr& table, CRandom& random)
{
    const auto makeValues = [&](DWORD count) {
        CFldValueList values;
        for (DWORD i = 0; i < count; ++i)
            values.Append(std::string(random.GetBelow(3), static_cast<char>('a' + random.GetBelow(2))));
        return values;
    };
    IDs fldIDs;
    table.GetSrcFrmDataFldID(fldIDs);
    const DWORD recCount = table.GetRecCount();
    const DWORD fldID = fldIDs.empty() ? 0 : fldIDs[random.GetBelow(table.GetFldCount())];
    CSourceDataMngr::SFldInfo info;
    table.GetFldInfo(fldID, info);
    switch (random.GetBelow(7)) {
    case 0: {
        const DWORD count = 1 + random.GetBelow(3);
        std::vector<CFldValueList> values(fldIDs.size());
        std::vector<const CFldValueList*> borrowed;
        for (CFldValueList& each : values) {
            each = makeValues(count);
            borrowed.push_back(&each);
        }
        table.InsertRecsByFld(random.IsOneOf(2) ? 0 : random.GetBelow(recCount + 1), borrowed);
        break;
    }
    case 1: {
        const DWORD first = random.IsOneOf(2) ? 0 : random.GetBelow(recCount + 1);
        table.DeleteRecs(first, random.GetBelow(std::min(4u, recCount - first + 1)));
        break;
    }
    case 2: {
        DWORD newFldID = 0;
        table.InsertFld(random.GetBelow(table.GetFldCount() + 1), CSourceDataMngr::SFldInfo(),
                        makeValues(fldIDs.empty() ? 5 : recCount), newFldID);
        break;
    }
    case 3:
        table.DeleteFld(fldID);
        break;
    case 4:
        table.SetFldData(fldID, makeValues(recCount));
        break;
    case 5:
        info.spec.dataType = random.IsOneOf(2) ? DATE : NUM;
        table.SetFldInfo(fldID, info);
        break;
    default:
        info.dateTypeInfo.form = random.IsOneOf(2) ? SC::DATEFORM_YMD : SC::DATEFORM_DMY;
        table.SetFldInfo(fldID, info);
    }
}

} // namespace

TEST(CSourceDataMngr_Renewal, WhoFollowsTheSummariesOfRandomChangesHasTheTable)
{
    CRandom random;
    CSourceDataMngr table = MakeSalesTable();
    SFollower follower = SFollower::ReadAll(table);
    std::size_t withHeadAlone = 0;
    for (int round = 0; round < 3000; ++round) {
        const CSourceDataMngr before(table);
        for (DWORD edits = 1 + random.GetBelow(4); edits != 0; --edits)
            EditAtRandom(table, random);
        const SBtnRenewalInfo info = GetInfo(table, before);
        follower.Follow(table, info);
        SFollower expected = SFollower::ReadAll(table);
        // The form counts in a field of dates alone.
        for (auto* const side : {&follower, &expected}) {
            for (auto& [fldID, fld] : side->flds) {
                if (fld.type != DATE)
                    fld.form = SC::DATEFORM_YMD;
            }
        }
        ASSERT_EQ(follower.flds, expected.flds) << "round " << round;
        if (info.newRecCount != info.oldRecCount && info.dataChangedFldIDs.empty())
            ++withHeadAlone;
    }
    EXPECT_GT(withHeadAlone, 100u);
}
