#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CProgressStatus.h"
#include "CSourceDataMngr.h"
#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "SCKZCoreStrDef.h"
#include "Support/MakeTable.h"
#include "Support/TestText.h"
#include "VCBtn.h"
#include "VCBtnClass.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using List = std::vector<DWORD>;
constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;

// A status that notes every value it is given and cancels at one of its steps.
class CNotingStatus final : public CProgressStatus
{
public:
    explicit CNotingStatus(DWORD maxValue, std::size_t cancelAtStep = 0)
        : CProgressStatus(maxValue), cancelStep(cancelAtStep)
    {}
    List steps;

protected:
    void OnProgress() noexcept override
    {
        steps.push_back(presentValue);
        if (steps.size() == cancelStep)
            canceled = true;
    }

private:
    std::size_t cancelStep;
};

// A table whose answers a test may bend.
class CBentTable final : public CSourceDataMngr
{
public:
    explicit CBentTable(const CSourceDataMngr& table) : CSourceDataMngr(table) {}
    bool GetSrcFrmDataFldID(std::vector<DWORD>& fldIDs) const override
    {
        if (order.empty())
            return CSourceDataMngr::GetSrcFrmDataFldID(fldIDs);
        fldIDs = order;
        return true;
    }
    bool GetDataSpec(DWORD fldID, SCDeclareConstant::SDataSpec& spec) const override
    {
        if (!CSourceDataMngr::GetDataSpec(fldID, spec))
            return false;
        if (fldID == bentFld)
            spec.dataType = static_cast<SCDeclareConstant::EDataType>(bentType);
        return true;
    }
    bool GetDataSize(DWORD fldID, DWORD first, DWORD count, DWORD& size32,
                     unsigned long long& size) const override
    {
        if (fldID == failingSize || !CSourceDataMngr::GetDataSize(fldID, first, count, size32, size))
            return false;
        if (fldID == hugeFld)
            size = 4294967296ULL;
        return true;
    }
    bool GetData(DWORD fldID, DWORD first, DWORD count, DWORD& size32, char* buffer, DWORD bufferSize,
                 unsigned short* lengths, char** values) const override
    {
        return fldID != failingData &&
               CSourceDataMngr::GetData(fldID, first, count, size32, buffer, bufferSize, lengths, values);
    }
    bool GetDateTypeInfo(DWORD fldID, SCDeclareConstant::SDateTypeInfo& info) const override
    {
        return fldID != failingDate && CSourceDataMngr::GetDateTypeInfo(fldID, info);
    }

    std::vector<DWORD> order;
    DWORD bentFld = 0;
    DWORD bentType = 0;
    DWORD failingSize = 0;
    DWORD failingData = 0;
    DWORD failingDate = 0;
    DWORD hugeFld = 0;
};

List GetClasses(const CBUIDataMngr& env)
{
    List btnClassIDs;
    env.GetAllBtnClassIDList(btnClassIDs, true);
    return btnClassIDs;
}

std::vector<std::string> GetShownTexts(const CBUIDataMngr& env, DWORD btnClassID)
{
    List btnIDs;
    env.GetBtnAppOrdListOfBtnClass(btnClassID, VCBtnClass::ORDLIST_NORMAL, btnIDs);
    std::vector<std::string> texts;
    for (const DWORD btnID : btnIDs) {
        const char* text = nullptr;
        env.GetAliasOfBtn(btnClassID, btnID, text);
        texts.emplace_back(text);
    }
    return texts;
}

TEST(CBUIDataMngr_Build, EveryItemBecomesAClassOfItsType)
{
    const CSourceDataMngr table = MakeTable({{"shop", TEXT, {"a", "", "a"}},
                                             {"amount", NUM, {"3", "1", ""}},
                                             {"day", DATE, {"2024-01-02", "", "2024-01-02"}},
                                             {"at", TIME, {"10:00:00", "09:30:00", "10:00:00"}}});
    const CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, nullptr);
    EXPECT_EQ(env.GetRecCountOfSrcData(), 3u);
    EXPECT_EQ(GetClasses(env), List({1, 2, 3, 4}));
    for (DWORD btnClassID = 1; btnClassID <= 4; ++btnClassID) {
        SCBUICoreCom::EBtnClassType type{};
        EXPECT_TRUE(env.GetTypeOfBtnClass(btnClassID, type));
        EXPECT_EQ(type, btnClassID); // 1 text, 2 number, 3 date, 4 time
    }
    const char* text = nullptr;
    env.GetAliasOfBtn(1, SCBUICoreCom::BTN_ID_EMPVAL, text);
    EXPECT_STREQ(text, table.GetDefEmpValName());
    EXPECT_EQ(GetShownTexts(env, 1), std::vector<std::string>({"a", text}));
    EXPECT_EQ(GetShownTexts(env, 2), std::vector<std::string>({"3", "1", text}));
    EXPECT_EQ(GetShownTexts(env, 3), std::vector<std::string>({"2024-01-02", text}));
    EXPECT_EQ(GetShownTexts(env, 4), std::vector<std::string>({"10:00:00", "09:30:00"}));
    DWORD recs[3];
    DWORD count = 0;
    EXPECT_TRUE(env.GetRecListThatRelatesToBtn(1, 2, recs, count));
    EXPECT_EQ(List(recs, recs + count), List({0, 2}));
    EXPECT_TRUE(env.GetRecListThatRelatesToBtn(2, SCBUICoreCom::BTN_ID_EMPVAL, recs, count));
    EXPECT_EQ(List(recs, recs + count), List({2}));
}

TEST(CBUIDataMngr_Build, AFieldThatIsNoItemMakesNoClassAndTakesNoIdentifier)
{
    const CSourceDataMngr table = MakeTable({{"shop", TEXT, {"a"}},
                                             {"note", TEXT, {"n"}, SCDeclareConstant::DATAKIND_HIDDEN},
                                             {"kind", TEXT, {"x"}}});
    CNotingStatus status(1000);
    const CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, &status);
    EXPECT_EQ(GetClasses(env), List({1, 2}));
    DWORD fldID = 0;
    EXPECT_TRUE(env.GetFldID(2, fldID));
    EXPECT_EQ(fldID, 3u);
    EXPECT_FALSE(env.GetBtnClassID(2, fldID));
    EXPECT_EQ(status.steps, List({150, 200, 300, 500, 650, 700, 800, 1000})); // two fields share the range
}

TEST(CBUIDataMngr_Build, WithoutAnItemThereIsNoClass)
{
    const CSourceDataMngr table = MakeTable({{"note", TEXT, {"n"}, SCDeclareConstant::DATAKIND_HIDDEN}});
    CNotingStatus status(1000);
    const CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, &status);
    EXPECT_TRUE(GetClasses(env).empty());
    EXPECT_TRUE(status.steps.empty());
    EXPECT_EQ(env.GetRecCountOfSrcData(), 1u);
}

TEST(CBUIDataMngr_Build, ATableWithoutRecordsMakesClassesWithoutRecords)
{
    const CSourceDataMngr table = MakeTable({{"shop", TEXT, {}}, {"day", DATE, {}}});
    CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, nullptr);
    EXPECT_EQ(GetClasses(env), List({1, 2}));
    DWORD count = 4711;
    env.GetDispBtnCountOfBtnClass(1, count);
    EXPECT_EQ(count, 0u);
    unsigned int info = 0;
    env.GetVisibleInfoOfBtn(1, SCBUICoreCom::BTN_ID_EMPVAL, info);
    EXPECT_EQ(info, VISINFO_NOREC);
}

TEST(CBUIDataMngr_Build, TheStatusNeverPassesItsRange)
{
    const CSourceDataMngr table = MakeTable({{"shop", TEXT, {"a"}}});
    CNotingStatus status(100);
    status.presentValue = 50;
    const CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, &status);
    EXPECT_EQ(status.steps, List({80, 90, 100, 100}));
}

TEST(CBUIDataMngr_Build, ACancelledBuildKeepsTheClassesFinished)
{
    const CSourceDataMngr table = MakeTable({{"shop", TEXT, {"a", "b"}}, {"kind", TEXT, {"x", "x"}}});
    for (std::size_t step = 1; step <= 4; ++step) {
        CNotingStatus status(1000, step);
        const CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, &status);
        EXPECT_TRUE(GetClasses(env).empty()) << step;
        EXPECT_EQ(status.steps.size(), step);
        List btnIDs;
        const DWORD rec = 0;
        EXPECT_FALSE(env.GetBtnIDListThatRelatesToRecListFromBtnClass(1, 1, &rec, btnIDs)); // no column
    }
    CNotingStatus status(1000, 6);
    CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, &status);
    EXPECT_EQ(GetClasses(env), List({1}));
    EXPECT_FALSE(env.SelectTheBtn(2, 2, true));
    EXPECT_FALSE(env.SelectTheBtn(1, 2, true)); // no sum manager, but it is done
    DWORD recs[2];
    DWORD count = 0;
    env.GetTargetRecList(recs, count);
    EXPECT_EQ(count, 1u);
}

TEST(CBUIDataMngr_Build, AFieldThatCannotBeReadEndsTheBuild)
{
    const CSourceDataMngr plain =
        MakeTable({{"shop", TEXT, {"a"}}, {"day", DATE, {"2024-01-02"}}, {"kind", TEXT, {"x"}}});
    CBentTable table(plain);
    table.failingSize = 2;
    EXPECT_EQ(GetClasses(CBUIDataMngr(1, ON_MEM, ON_MEM, table, nullptr, nullptr)), List({1}));
    table.failingSize = 0;
    table.failingData = 3;
    EXPECT_EQ(GetClasses(CBUIDataMngr(1, ON_MEM, ON_MEM, table, nullptr, nullptr)), List({1, 2}));
    table.failingData = 0;
    table.failingDate = 2;
    EXPECT_EQ(GetClasses(CBUIDataMngr(1, ON_MEM, ON_MEM, table, nullptr, nullptr)), List({1}));
    table.failingDate = 0;
    table.order = {1, 2, 3, 1};
    EXPECT_TRUE(
        GetClasses(CBUIDataMngr(1, ON_MEM, ON_MEM, table, nullptr, nullptr)).empty()); // more than there are
}

TEST(CBUIDataMngr_Build, AFieldNamedTwiceMakesTwoClassesAndTheFirstKeepsTheField)
{
    CBentTable table(MakeTable({{"shop", TEXT, {"a"}}, {"kind", TEXT, {"x"}}}));
    table.order = {2, 2};
    const CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, nullptr);
    EXPECT_EQ(GetClasses(env), List({1, 2}));
    DWORD id = 0;
    EXPECT_TRUE(env.GetBtnClassID(2, id));
    EXPECT_EQ(id, 1u);
    EXPECT_TRUE(env.GetFldID(2, id));
    EXPECT_EQ(id, 2u);
}

TEST(CBUIDataMngr_Build, ImpossibleTypesAndSizesAreAbnormal)
{
    CBentTable table(MakeTable({{"shop", TEXT, {"a"}}}));
    const auto expectMessage = [&table](const char* part) {
        try {
            const CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, nullptr);
            FAIL();
        } catch (const ECAbnormalData& error) {
            EXPECT_NE(std::strstr(error.what(), part), nullptr) << error.what();
        }
    };
    table.bentFld = 1;
    table.bentType = SCDeclareConstant::UNSETTING;
    expectMessage("(EDataType:-1)");
    table.bentType = 4;
    expectMessage(SCBUICoreStrDef::MSG_UNKNOWN_DATATYPE);
    table.bentFld = 0;
    table.hugeFld = 1;
    expectMessage(SCKZCoreStrDef::MSG_ABNORMAL_DATASIZE);
}

CSourceDataMngr
MakeDateTable(const std::vector<std::string>& values,
              SCDeclareConstant::EDateDelimiter delimiter = SCDeclareConstant::DATEDELIM_HYPHEN)
{
    CSourceDataMngr table;
    CSourceDataMngr::SFldInfo info;
    info.name = "day";
    info.spec.dataType = DATE;
    info.dateTypeInfo = {SCDeclareConstant::DATEFORM_YMD, delimiter};
    CFldValueList list;
    for (const std::string& value : values)
        list.Append(value);
    DWORD fldID = 0;
    table.AddFld(std::move(info), std::move(list), fldID);
    return table;
}

TEST(CBUIDataMngr_Build, DatesLoseWhatStandsBehindThem)
{
    unsigned int minLen = 0;
    unsigned int maxLen = 0;
    ASSERT_TRUE(SCDeclareConstant::GetDateStrMinAndMaxLen(
        SCDeclareConstant::DATEFORM_YMD, SCDeclareConstant::DATEDELIM_HYPHEN, minLen, maxLen));
    ASSERT_EQ(maxLen, 10u);
    const CSourceDataMngr table = MakeDateTable(
        {"2024-07-15 10:20:30", "2024-7-5 10:20:30", "2024-07-15x", "2024-07-15xy", "2024-07-15"});
    const CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, nullptr);
    // One byte too many is left as it is; more is cut, and at the first blank behind the shortest date.
    EXPECT_EQ(GetShownTexts(env, 1), std::vector<std::string>({"2024-07-15", "2024-7-5", "2024-07-15x"}));
}

TEST(CBUIDataMngr_Build, ACutDateEndsWithAWholeCharacter)
{
    // Nine bytes, then characters of two: the tenth byte is the first half of one.
    const std::string text = "2024-7-15" + SJIS(u8"日曜日");
    ASSERT_EQ(text.size(), 15u);
    const CSourceDataMngr table = MakeDateTable({text});
    const CBUIDataMngr env(1, ON_MEM, ON_MEM, table, nullptr, nullptr);
    EXPECT_EQ(GetShownTexts(env, 1), std::vector<std::string>({"2024-7-15"}));
}

} // namespace
