// Saving and restoring an environment.

#include "CBUIDataMngr.h"
#include "CCoreSumMngr.h"
#include "CRpLink_MemSavVer.h"
#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "Support/CAllocFault.h"
#include "Support/CEnvQueries.h"
#include "Support/CSavedEnv.h"
#include "Support/CTestBtnCnd.h"
#include "Support/MakeTable.h"

#include <gtest/gtest.h>

#include <map>
#include <numeric>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using List = std::vector<DWORD>;
using Env = CBUIDataMngr;
constexpr auto ON_MEM = SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;
constexpr auto CONDITION = VCSpBtn::MMBBTNSELMTH_CONDITION;
constexpr auto OK = CXMLReader::READXML_OK;
constexpr auto BAD = CXMLReader::READXML_BADFORMAT;
constexpr DWORD INC = SCBUICoreCom::BTN_ID_INC_BEGIN;
constexpr DWORD CLL = SCBUICoreCom::BTN_ID_CLL_BEGIN;
constexpr DWORD VIR = SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
constexpr DWORD COMMON = SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN;
constexpr DWORD FIXED = SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN;
constexpr DWORD SHOP = 1;
constexpr DWORD KIND = 2;
constexpr DWORD AMOUNT = 3;
constexpr DWORD DAY = 4;
constexpr DWORD HOUR = 5;
constexpr DWORD REC_COUNT = 6;
const std::string COMMON_XML = "common.xml";
const std::string FIXED_XML = "fixed.xml";

CSourceDataMngr MakeShopTable()
{
    // Records:  0   1   2   3   4   5
    return MakeTable(
        {{"shop", TEXT, {"a", "a", "b", "b", "c", ""}},
         {"kind", TEXT, {"x", "y", "x", "z", "y", "z"}},
         {"amount", NUM, {"10", "20", "30", "40", "x", "60"}},
         {"day", DATE, {"2024-01-05", "2024-01-20", "2024-02-01", "2024-03-01", "?", "2023-12-31"}},
         {"hour", TIME, {"09:00:00", "10:30:00", "10:45:00", "18:00:00", "", "23:59:00"}}});
}

struct SEnv : CEnvQueries
{
    explicit SEnv(bool isBuilt = true, bool hasSums = true)
        : CEnvQueries(env, AMOUNT), table(MakeShopTable()), sums(table), env(Make(isBuilt, hasSums))
    {}
    CBUIDataMngr Make(bool isBuilt, bool hasSums)
    {
        const CCoreSumMngr* const usedSums = hasSums ? &sums : nullptr;
        return isBuilt ? CBUIDataMngr(1, ON_MEM, ON_MEM, table, usedSums, nullptr)
                       : CBUIDataMngr(7, ON_MEM, ON_MEM, table, usedSums);
    }
    DWORD MakeSp(DWORD btnClassID, SCBUICoreCom::EBtnType type, const List& members,
                 const char* text = "group")
    {
        DWORD btnID = 0;
        EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, type, text, SELECT, &members, nullptr),
                  VCBtnClass::CREATESPBTN_OK);
        return btnID;
    }
    DWORD MakeInc(DWORD btnClassID, const List& members)
    {
        return MakeSp(btnClassID, SCBUICoreCom::BTNTYPE_INC, members);
    }
    DWORD MakeCll(DWORD btnClassID, const List& members)
    {
        return MakeSp(btnClassID, SCBUICoreCom::BTNTYPE_CLL, members);
    }
    DWORD MakeVir(DWORD btnClassID, DWORD refID, const List& members)
    {
        DWORD btnID = 0;
        EXPECT_EQ(env.CreateSpBtn(btnID, btnClassID, SCBUICoreCom::BTNTYPE_VIRINC, "vir", SELECT, &members,
                                  nullptr, refID),
                  VCBtnClass::CREATESPBTN_OK);
        return btnID;
    }
    DWORD MakeClass(const char* name, bool common = false)
    {
        DWORD btnClassID = 0;
        EXPECT_EQ(env.CreateVirBtnClass(name, common, btnClassID), Env::CREATEVIR_OK);
        return btnClassID;
    }
    void GroupByMonth()
    {
        SCDeclareConstant::SDateDispForm form;
        form.kind = 2;
        form.form = 7;
        form.option = 0;
        EXPECT_TRUE(env.SetDispFormOfDateBtnClass(DAY, form));
    }
    bool Press(DWORD btnClassID, const List& btnIDs)
    {
        return env.SelectBtns(btnClassID, btnIDs, true, false);
    }

    // All that a host can ask for every class and button, as a text.
    std::string Everything()
    {
        std::string all = "mode " + std::to_string(env.GetRelationMode()) + " multi " +
                          std::to_string(env.GetMultiSelectionInfo()) + " recs " + Text(TargetRecs()) + "\n";
        std::vector<SSelectBtnIDList> selection;
        env.GetAllBtnSelectionInfo(selection);
        for (const SSelectBtnIDList& ofClass : selection)
            all += "selected " + std::to_string(ofClass.btnClassID) + Text(ofClass.btnIDList) +
                   (ofClass.newBtnMadeSelState ? " new ones too\n" : "\n");
        DWORD diffClassID = 0;
        DWORD standardID = 0;
        DWORD targetID = 0;
        if (env.GetSelBtnsInfoForDiffCnd(diffClassID, standardID, targetID))
            all += "difference" + Text({diffClassID, standardID, targetID}) + "\n";
        List btnClassIDs;
        env.GetAllBtnClassIDList(btnClassIDs, true);
        for (const DWORD btnClassID : btnClassIDs)
            all += Everything(btnClassID);
        return all;
    }
    std::string Everything(DWORD btnClassID)
    {
        const char* text = nullptr;
        bool flag = false;
        DWORD fldID = 0;
        SCBUICoreCom::EBtnClassType type{};
        env.GetTypeOfBtnClass(btnClassID, type);
        env.GetFldID(btnClassID, fldID);
        std::string all = "class " + std::to_string(btnClassID) + Text({type, fldID});
        if (env.GetNameOfVirBtnClass(btnClassID, text))
            all += text;
        List recs(env.GetRecCountOfSrcData());
        DWORD count = 0;
        env.GetTargetRecListOfBtnClass(btnClassID, recs.data(), count);
        recs.resize(count);
        flag = false;
        env.GetDispEmpValBtnInfoOfBtnClass(btnClassID, flag);
        all += " recs " + Text(recs) + (flag ? " empty" : "");
        env.GetBtnSelectiveStateOfBtnClass(btnClassID, flag);
        all += flag ? " chosen" : "";
        List btnIDs;
        for (const unsigned int flags : {0u, 2u}) {
            env.GetBtnAppOrdListOfBtnClass(btnClassID, flags, btnIDs);
            all += " app " + Text(btnIDs);
            env.GetBtnNameOrdListOfBtnClass(btnClassID, flags, btnIDs);
            all += " name " + Text(btnIDs);
        }
        SCDeclareConstant::SDateDispForm form;
        if (env.GetDispFormOfDateBtnClass(btnClassID, form))
            all += " form " + Text({form.kind, form.form, form.option});
        all += "\n";
        env.GetAllBtnIDListOfBtnClass(btnClassID, btnIDs, true);
        for (const DWORD btnID : btnIDs) {
            text = nullptr;
            env.GetAliasOfBtn(btnClassID, btnID, text);
            flag = false;
            env.GetSelectionInfoOfBtn(btnClassID, btnID, flag);
            List holders;
            env.GetSpBtnIDListIncludingBtn(btnClassID, btnID, holders);
            std::set<SBtnClassIDAndBtnID> influenced;
            env.GetSpBtnIDListThatTheSpecifiedBtnInfluences(btnClassID, btnID, influenced, false);
            DWORD refID = 0;
            env.GetRefBtnClassIDOfVirIncBtn(btnClassID, btnID, refID);
            bool byUser = true;
            env.GetBtnMngrInfoOfSpBtn(btnClassID, btnID, byUser);
            all += "  " + std::to_string(btnID) + " " + (text == nullptr ? "null" : text) +
                   (flag ? " sel" : "") + " why " + std::to_string(Why(btnClassID, btnID)) + " recs " +
                   Text(Recs(btnClassID, btnID)) + " members " + Text(Members(btnClassID, btnID)) + " in " +
                   Text(holders) + " of " + std::to_string(refID) + (byUser ? "" : " system") + " sum " +
                   std::to_string(Sum(btnClassID, btnID));
            for (const SBtnClassIDAndBtnID& above : influenced)
                all += " above" + Text({above.btnClassID, above.btnID});
            all += "\n";
        }
        return all;
    }
    static std::string Text(const List& numbers)
    {
        std::string text = "(";
        for (const DWORD number : numbers)
            text += std::to_string(number) + " ";
        return text + ")";
    }

    CSourceDataMngr table;
    CCoreSumMngr sums;
    CBUIDataMngr env;
};

// Fills an environment with everything that is saved.
void FillWithAllKinds(SEnv& made)
{
    made.env.SetMultiSelectionInfo(true);
    made.env.SetAliasOfBtn(KIND, 3, "the second");
    const DWORD inc = made.MakeInc(SHOP, {2, 3});
    made.env.SetDispMemberBtnInfoOfIncBtn(SHOP, inc, true);
    const DWORD cll = made.MakeCll(SHOP, {inc, 1});
    made.MakeInc(KIND, {4, 2});
    made.GroupByMonth();
    const DWORD common = made.MakeClass("shared", true);
    made.MakeVir(common, SHOP, {2, cll});
    made.MakeVir(common, KIND, {2});
    const DWORD own = made.MakeClass("own");
    const DWORD other = made.MakeClass("other");
    const DWORD vir = made.MakeVir(own, KIND, {3, 4});
    made.MakeVir(other, own, {vir});
    made.MakeInc(other, {VIR});
    made.env.SetDispEmpValBtnInfoOfBtnClass(AMOUNT, false);
}

void ExpectRoundTrip(SEnv& made, const List& limited = {})
{
    CSavedEnv saved;
    ASSERT_TRUE(saved.Save(made.env));
    SEnv back(false);
    ASSERT_EQ(saved.LoadCommon(back.env, REC_COUNT), OK);
    ASSERT_EQ(saved.LoadFixed(back.env, limited), OK);
    EXPECT_EQ(made.Everything(), back.Everything());
    CSavedEnv again;
    ASSERT_TRUE(again.Save(back.env));
    EXPECT_EQ(saved.GetText(COMMON_XML), again.GetText(COMMON_XML));
    EXPECT_EQ(saved.GetText(FIXED_XML), again.GetText(FIXED_XML));
    for (const char* const table : {"BnLink", "RpLink"}) {
        for (int number = 0; number <= 5; ++number) {
            const std::string name = "BUI/ID_1/" + std::string(table) + "/" + std::to_string(number) + ".dat";
            EXPECT_EQ(saved.GetText(name), again.GetText(name)) << name;
        }
    }
}

TEST(CBUIDataMngrXML, AnEnvironmentComesBackAsItWas)
{
    SEnv made;
    FillWithAllKinds(made);
    ExpectRoundTrip(made);
}

TEST(CBUIDataMngrXML, SelectionsInEveryModeComeBack)
{
    for (const auto mode : {Env::RELATIONMODE_NONE, Env::RELATIONMODE_OR, Env::RELATIONMODE_AND,
                            Env::RELATIONMODE_DIFFERENCE, Env::RELATIONMODE_NARROWING}) {
        SCOPED_TRACE(mode);
        SEnv made;
        FillWithAllKinds(made);
        made.env.SetRelationMode(mode);
        EXPECT_TRUE(made.Press(KIND, {2, 4}));
        if (mode == Env::RELATIONMODE_NONE || mode == Env::RELATIONMODE_NARROWING) {
            EXPECT_TRUE(made.Press(SHOP, {CLL}));
            EXPECT_TRUE(made.Press(FIXED, {VIR}));
        }
        ExpectRoundTrip(made);
    }
}

TEST(CBUIDataMngrXML, ASelectionOfAllButtonsComesBackThoughNoneIsNamed)
{
    SEnv made;
    made.env.SetMultiSelectionInfo(true);
    EXPECT_TRUE(made.env.SelectAllBtnsOfBtnClass(KIND, true));
    EXPECT_TRUE(made.env.SelectTheBtn(KIND, 3, false));
    ASSERT_TRUE(made.env.SetNewBtnMadeSelStateOfBtnClass(KIND, true));
    CSavedEnv saved;
    ASSERT_TRUE(saved.Save(made.env));
    EXPECT_NE(saved.GetText(FIXED_XML).find("<Btn id=\"3\"/>"), std::string::npos);
    EXPECT_EQ(saved.GetText(FIXED_XML).find("<Btn id=\"2\""), std::string::npos);
    ExpectRoundTrip(made);
}

TEST(CBUIDataMngrXML, TheLimitationIsTheHosts)
{
    SEnv made;
    FillWithAllKinds(made);
    const List limited{0, 2, 5};
    made.env.SetLimitedRecList(limited.data(), 3);
    EXPECT_TRUE(made.Press(KIND, {2}));
    ExpectRoundTrip(made, limited);
}

TEST(CBUIDataMngrXML, AnEnvironmentWithNothingUserMadeHasAShortFixedForm)
{
    SEnv made;
    CSavedEnv saved;
    ASSERT_TRUE(saved.SaveFixed(made.env));
    std::string expected = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<BUIDataMngr id=\"1\">\n"
                           "  <Relation mode=\"Narrowing\"/>\n  <BtnClasses>\n";
    for (int btnClassID = 1; btnClassID <= 5; ++btnClassID)
        expected += "    <BtnClass id=\"" + std::to_string(btnClassID) +
                    "\">\n      <EmpValBtn disp=\"true\"/>\n      <Btns>\n      </Btns>\n    </BtnClass>\n";
    EXPECT_EQ(saved.GetText(FIXED_XML), expected + "  </BtnClasses>\n</BUIDataMngr>\n");
}

TEST(CBUIDataMngrXML, TheCommonFormHasTablesIdentifiersAndClasses)
{
    const auto table = MakeTable({{"shop", TEXT, {"a", "", "a"}}});
    CBUIDataMngr env(12, ON_MEM, ON_MEM, table, nullptr, nullptr);
    CSavedEnv saved;
    ASSERT_TRUE(saved.SaveCommon(env, false));
    EXPECT_EQ(saved.GetText(COMMON_XML),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<BUIDataMngr id=\"12\">\n"
              "  <BnLink verType=\"OnMemory\"/>\n"
              "  <RpLink verType=\"OnMemory\"/>\n"
              "  <SrcBtnClass nextID=\"2\"/>\n"
              "  <BtnClasses>\n"
              "    <BtnClass id=\"1\" type=\"Normal\" fldID=\"1\">\n"
              "      <DataBtn nextID=\"3\"/>\n"
              "      <Btns>\n"
              "        <Btn id=\"1\" type=\"EmpVal\" alias=\"(\xE7\xA9\xBA\xE7\x99\xBD)\"/>\n"
              "        <Btn id=\"2\" type=\"Data\" name=\"a\"/>\n"
              "      </Btns>\n"
              "    </BtnClass>\n"
              "  </BtnClasses>\n"
              "</BUIDataMngr>\n");
    ASSERT_TRUE(saved.SaveCommon(env, true));
    const std::string text = saved.GetText(COMMON_XML);
    EXPECT_NE(text.find("dataModel=\""), std::string::npos);
    EXPECT_NE(text.find(" xlink:type=\"simple\" xlink:href=\".\\BUI\\ID_12\\BnLink\\\"/>"),
              std::string::npos);
    EXPECT_NE(text.find(" xlink:type=\"simple\" xlink:href=\".\\BUI\\ID_12\\RpLink\\\"/>"),
              std::string::npos);
}

TEST(CBUIDataMngrXML, ClassesOfEveryTypeHaveTheirWord)
{
    SEnv made;
    made.MakeClass("v", true);
    CSavedEnv saved;
    ASSERT_TRUE(saved.SaveCommon(made.env, false));
    const std::string text = saved.GetText(COMMON_XML);
    for (const char* const tag :
         {"<BtnClass id=\"1\" type=\"Normal\" fldID=\"1\">", "<BtnClass id=\"3\" type=\"Num\" fldID=\"3\">",
          "<BtnClass id=\"4\" type=\"Date\" fldID=\"4\">", "<BtnClass id=\"5\" type=\"Time\" fldID=\"5\">",
          "<CommonVirBtnClass nextID=\"1000000002\"/>",
          "<BtnClass id=\"1000000001\" type=\"Virtual\" name=\"v\">"})
        EXPECT_NE(text.find(tag), std::string::npos) << tag;
}

// --- What is not saved

TEST(CBUIDataMngrXML, ADestroyedButtonLeavesItsIdentifierFree)
{
    SEnv made;
    made.MakeInc(KIND, {2});
    ASSERT_TRUE(made.env.DestroySpBtn(KIND, INC));
    CSavedEnv saved;
    ASSERT_TRUE(saved.Save(made.env));
    EXPECT_NE(saved.GetText(FIXED_XML).find("<IncBtn nextID=\"4000000003\" blankIDList=\"4000000002\"/>"),
              std::string::npos);
    ExpectRoundTrip(made);
}

TEST(CBUIDataMngrXML, AnIneffectiveButtonIsGoneAfterwardsAndItsIdentifierFree)
{
    SEnv made;
    const DWORD inner = made.MakeInc(KIND, {2});
    made.MakeCll(KIND, {inner, 3});
    ASSERT_TRUE(made.env.SetEffectiveInfoOfSpBtn(KIND, inner, false));
    CSavedEnv saved;
    ASSERT_TRUE(saved.Save(made.env));
    SEnv back(false);
    ASSERT_EQ(saved.LoadCommon(back.env, REC_COUNT), OK);
    ASSERT_EQ(saved.LoadFixed(back.env), OK);
    EXPECT_EQ(back.Members(KIND, inner), List{4711});
    EXPECT_EQ(back.Members(KIND, CLL), List{3});
    EXPECT_EQ(back.MakeInc(KIND, {4}), inner);
}

TEST(CBUIDataMngrXML, AMemberThatSleepsIsNotWritten)
{
    SEnv made;
    const DWORD inner = made.MakeInc(KIND, {2});
    const DWORD outer = made.MakeInc(KIND, {inner, 3});
    // The holder sleeps first, so that it keeps the member that falls asleep later, and wakes with it.
    ASSERT_TRUE(made.env.SetEffectiveInfoOfSpBtn(KIND, outer, false));
    ASSERT_TRUE(made.env.SetEffectiveInfoOfSpBtn(KIND, inner, false));
    ASSERT_TRUE(made.env.SetEffectiveInfoOfSpBtn(KIND, outer, true));
    ASSERT_EQ(made.Members(KIND, outer), (List{inner, 3}));
    CSavedEnv saved;
    ASSERT_TRUE(saved.SaveFixed(made.env));
    EXPECT_NE(saved.GetText(FIXED_XML).find("idList=\"3\""), std::string::npos);
}

TEST(CBUIDataMngrXML, TheSelectionOfASharedButtonThatSleepsIsNotSaved)
{
    SEnv made;
    const DWORD common = made.MakeClass("shared", true);
    const DWORD vir = made.MakeVir(common, KIND, {2});
    made.env.SetRelationMode(Env::RELATIONMODE_NONE);
    ASSERT_TRUE(made.env.SetEffectiveInfoOfSpBtn(common, vir, false));
    ASSERT_TRUE(made.env.SelectTheBtn(common, vir, true));
    CSavedEnv saved;
    ASSERT_TRUE(saved.SaveFixed(made.env));
    EXPECT_EQ(saved.GetText(FIXED_XML).find("4080000002"), std::string::npos);
}

TEST(CBUIDataMngrXML, AButtonOverAClassThatIsNotEffectiveIsNotSaved)
{
    SEnv made;
    const DWORD off = made.MakeClass("off");
    const DWORD inner = made.MakeVir(off, KIND, {2});
    ASSERT_TRUE(made.env.SetEffectiveInfoOfVirBtnClass(off, false));
    const DWORD own = made.MakeClass("own");
    const DWORD vir = made.MakeVir(own, off, {inner});
    const DWORD holder = made.MakeInc(own, {vir});
    made.env.SetRelationMode(Env::RELATIONMODE_NONE);
    ASSERT_TRUE(made.Press(KIND, {2}));
    CSavedEnv saved;
    ASSERT_TRUE(saved.Save(made.env));
    EXPECT_NE(saved.GetText(FIXED_XML).find("<VirIncBtn nextID=\"4080000003\" blankIDList=\"4080000002\"/>"),
              std::string::npos);
    SEnv back(false);
    ASSERT_EQ(saved.LoadCommon(back.env, REC_COUNT), OK);
    ASSERT_EQ(saved.LoadFixed(back.env), OK);
    EXPECT_EQ(back.Members(own, vir), List{4711});
    EXPECT_EQ(back.Members(own, holder), List());
    EXPECT_EQ(back.Selected(KIND), List{2});
    CSavedEnv again;
    ASSERT_TRUE(again.Save(back.env));
    EXPECT_EQ(saved.GetText(FIXED_XML), again.GetText(FIXED_XML));
}

TEST(CBUIDataMngrXML, AFixedVirtualClassThatIsNotEffectiveComesBackAsAFreeIdentifier)
{
    SEnv made;
    made.MakeClass("first");
    made.MakeClass("second");
    ASSERT_TRUE(made.env.SetEffectiveInfoOfVirBtnClass(FIXED, false));
    List ineffective;
    EXPECT_EQ(made.env.GetAllUneffectiveVirBtnClassIDList(ineffective), 1u);
    EXPECT_EQ(ineffective, List{FIXED});
    CSavedEnv saved;
    ASSERT_TRUE(saved.Save(made.env));
    const std::string text = saved.GetText(FIXED_XML);
    EXPECT_NE(text.find("<FixedVirBtnClass nextID=\"2000000003\" blankIDList=\"2000000001\"/>"),
              std::string::npos);
    EXPECT_EQ(text.find("\"first\""), std::string::npos);
    SEnv back(false);
    ASSERT_EQ(saved.LoadCommon(back.env, REC_COUNT), OK);
    ASSERT_EQ(saved.LoadFixed(back.env), OK);
    EXPECT_FALSE(back.env.ExistBtnClass(FIXED));
    EXPECT_EQ(back.MakeClass("new"), FIXED);
}

TEST(CBUIDataMngrXML, ConditionsAreNotSavedAndTheirButtonsHaveNoMembersUntilOneIsSet)
{
    SEnv made;
    DWORD cnd = 0;
    const CTestBtnCnd condition({2, 3});
    ASSERT_EQ(
        made.env.CreateSpBtn(cnd, KIND, SCBUICoreCom::BTNTYPE_CLL, "top", CONDITION, nullptr, &condition),
        VCBtnClass::CREATESPBTN_OK);
    ASSERT_EQ(made.Members(KIND, cnd), (List{2, 3}));
    CSavedEnv saved;
    ASSERT_TRUE(saved.Save(made.env));
    SEnv back(false);
    ASSERT_EQ(saved.LoadCommon(back.env, REC_COUNT), OK);
    ASSERT_EQ(saved.LoadFixed(back.env), OK);
    EXPECT_EQ(back.Members(KIND, cnd), List());
    EXPECT_EQ(back.Why(KIND, cnd) & VISINFO_NOLIVEMEMBER, VISINFO_NOLIVEMEMBER);
    ASSERT_EQ(back.env.SetMemberBtnCndOfSpBtn(KIND, cnd, condition), VCBtnClass::SETMMBBTNCND_OK);
    EXPECT_EQ(back.Members(KIND, cnd), (List{2, 3}));
}

TEST(CBUIDataMngrXML, WithoutASumManagerARestoreEndsWithoutASelection)
{
    SEnv made;
    ASSERT_TRUE(made.Press(KIND, {2}));
    CSavedEnv saved;
    ASSERT_TRUE(saved.Save(made.env));
    SEnv back(false, false);
    ASSERT_EQ(saved.LoadCommon(back.env, REC_COUNT), OK);
    EXPECT_EQ(saved.LoadFixed(back.env), OK);
    EXPECT_EQ(back.Selected(KIND), List());
    EXPECT_FALSE(back.env.IsBtnSelectiveState());
}

TEST(CBUIDataMngrXML, ATextThatXMLCannotHoldMakesTheSaveFail)
{
    SEnv made;
    ASSERT_TRUE(made.env.SetAliasOfBtn(KIND, 2, "\x02"));
    CSavedEnv saved;
    EXPECT_FALSE(saved.SaveCommon(made.env));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
}

// --- Words

TEST(CBUIDataMngrXML, ModesHaveTheirWords)
{
    const std::map<Env::ERelationMode, std::string> words = {{Env::RELATIONMODE_NONE, "None"},
                                                             {Env::RELATIONMODE_AND, "And"},
                                                             {Env::RELATIONMODE_OR, "Or"},
                                                             {Env::RELATIONMODE_DIFFERENCE, "Difference"},
                                                             {Env::RELATIONMODE_NARROWING, "Narrowing"}};
    for (const auto& [mode, word] : words) {
        IXMLIO::SAttribute attribute;
        Env::GetRelationModeAttribute(mode, attribute);
        EXPECT_EQ(std::string(attribute.name, attribute.nameLen), "mode");
        EXPECT_EQ(std::string(attribute.value, attribute.valueLen), word);
        Env::ERelationMode read{};
        EXPECT_TRUE(Env::GetRelationModeEnum(attribute, read));
        EXPECT_EQ(read, mode);
    }
    Env::ERelationMode mode = Env::RELATIONMODE_AND;
    EXPECT_FALSE(Env::GetRelationModeEnum(MakeAttribute("Mode", "Or"), mode));
    EXPECT_EQ(mode, Env::RELATIONMODE_AND);
    EXPECT_TRUE(Env::GetRelationModeEnum(MakeAttribute("mode", "or"), mode));
    EXPECT_EQ(mode, Env::RELATIONMODE_NONE);
    IXMLIO::SAttribute attribute;
    EXPECT_THROW(Env::GetRelationModeAttribute(static_cast<Env::ERelationMode>(6), attribute),
                 ECAbnormalData);
}

// --- Damaged and odd documents

class CBUIDataMngrXMLDamage : public ::testing::Test
{
protected:
    CBUIDataMngrXMLDamage() : back(false)
    {
        FillWithAllKinds(made);
        EXPECT_TRUE(made.Press(KIND, {2}));
        EXPECT_TRUE(saved.Save(made.env));
    }
    CXMLReader::EMthRetOfReadXML LoadCommon() { return saved.LoadCommon(back.env, REC_COUNT); }
    CXMLReader::EMthRetOfReadXML LoadBoth()
    {
        EXPECT_EQ(LoadCommon(), OK);
        return saved.LoadFixed(back.env);
    }
    void ExpectEmpty()
    {
        List btnClassIDs;
        EXPECT_EQ(back.env.GetAllBtnClassIDList(btnClassIDs, true), 0u);
        EXPECT_EQ(back.env.GetRecCountOfSrcData(), 0u);
        EXPECT_TRUE(back.env.HasSrcDataInfo());
    }
    // No button has a record, and neither has the environment, in which everything can be called.
    void ExpectLostTables()
    {
        EXPECT_EQ(back.env.GetRecCountOfSrcData(), 0u);
        for (const DWORD btnClassID : {SHOP, KIND, AMOUNT, DAY, HOUR}) {
            EXPECT_EQ(back.Displayed(btnClassID), List());
            EXPECT_EQ(back.Why(btnClassID, 2) & VISINFO_NOREC, VISINFO_NOREC);
            EXPECT_EQ(back.Recs(btnClassID, 2), List());
        }
        EXPECT_EQ(saved.LoadFixed(back.env), OK);
        EXPECT_EQ(back.TargetRecs(), List());
        back.env.SelectTheBtn(KIND, 2, true);
        back.Everything();
    }

    SEnv made;
    SEnv back;
    CSavedEnv saved;
};

TEST_F(CBUIDataMngrXMLDamage, AnotherRootIsRefusedWithNothingChanged)
{
    ASSERT_EQ(LoadBoth(), OK);
    const std::string before = back.Everything();
    saved.SetText(COMMON_XML, "<Other id=\"1\"><BnLink verType=\"OnMemory\"/></Other>");
    saved.SetText(FIXED_XML, "<Other id=\"1\"/>");
    EXPECT_EQ(LoadCommon(), CXMLReader::READXML_NOELEMENT);
    EXPECT_EQ(saved.LoadFixed(back.env), BAD) << "the two readers differ";
    EXPECT_EQ(back.Everything(), before);
    saved.SetText(COMMON_XML, "no document");
    saved.SetText(FIXED_XML, "");
    EXPECT_EQ(LoadCommon(), CXMLReader::READXML_NOELEMENT);
    EXPECT_EQ(saved.LoadFixed(back.env), CXMLReader::READXML_NOELEMENT);
    EXPECT_EQ(back.Everything(), before);
}

TEST_F(CBUIDataMngrXMLDamage, ARootWithoutAProperIdentifierIsBad)
{
    const std::string common = saved.GetText(COMMON_XML);
    for (const char* const id : {"", " id=\"0\"", " id=\"x\"", " id=\"4294967296\""}) {
        saved.SetText(COMMON_XML, common);
        saved.Replace(COMMON_XML, "<BUIDataMngr id=\"1\"", "<BUIDataMngr" + std::string(id));
        EXPECT_EQ(LoadCommon(), BAD);
        ExpectEmpty();
    }
    saved.SetText(COMMON_XML, common);
    ASSERT_EQ(LoadCommon(), OK);
    saved.Replace(FIXED_XML, "<BUIDataMngr id=\"1\"", "<BUIDataMngr");
    EXPECT_EQ(saved.LoadFixed(back.env), BAD);
    EXPECT_FALSE(back.env.ExistBtnClass(FIXED));
}

TEST_F(CBUIDataMngrXMLDamage, TheIdentifierOfTheDocumentBecomesTheEnvironments)
{
    saved.Replace(COMMON_XML, "<BUIDataMngr id=\"1\"", "<BUIDataMngr id=\"4000000000\"");
    ASSERT_EQ(LoadCommon(), OK);
    EXPECT_EQ(back.env.GetID(), 4000000000u);
    saved.Replace(FIXED_XML, "<BUIDataMngr id=\"1\"", "<BUIDataMngr id=\"8\"");
    ASSERT_EQ(saved.LoadFixed(back.env), OK);
    EXPECT_EQ(back.env.GetID(), 8u);
    CSavedEnv again;
    ASSERT_TRUE(again.Save(back.env));
    EXPECT_TRUE(std::filesystem::exists(again.GetPath("BUI/ID_8/BnLink/0.dat")));
}

TEST_F(CBUIDataMngrXMLDamage, MultipleSelectionIsReadStrictly)
{
    const std::string fixed = saved.GetText(FIXED_XML);
    ASSERT_EQ(LoadCommon(), OK);
    for (const auto& [text, result] :
         std::map<std::string, CXMLReader::EMthRetOfReadXML>{{"true", OK}, {"false", OK}, {"1", BAD}}) {
        saved.SetText(FIXED_XML, fixed);
        saved.Replace(FIXED_XML, " multiSel=\"true\"", " multiSel=\"" + text + "\"");
        EXPECT_EQ(saved.LoadFixed(back.env), result);
        if (result == OK) {
            EXPECT_EQ(back.env.GetMultiSelectionInfo(), text == "true");
        }
    }
    saved.SetText(FIXED_XML, fixed);
    saved.Replace(FIXED_XML, " multiSel=\"true\"", "");
    EXPECT_EQ(saved.LoadFixed(back.env), OK);
    EXPECT_FALSE(back.env.GetMultiSelectionInfo());
}

TEST_F(CBUIDataMngrXMLDamage, WhatMustBeThereIsMissed)
{
    const std::string common = saved.GetText(COMMON_XML);
    for (const char* const name : {"BnLink", "RpLink", "BtnClasses"}) {
        saved.SetText(COMMON_XML, common);
        saved.Replace(COMMON_XML, "<" + std::string(name), "<x_" + std::string(name));
        if (std::string(name) == "BtnClasses")
            saved.Replace(COMMON_XML, "</BtnClasses", "</x_BtnClasses");
        EXPECT_EQ(LoadCommon(), BAD) << name;
        ExpectEmpty();
    }
    saved.SetText(COMMON_XML, "<BUIDataMngr id=\"1\"/>");
    EXPECT_EQ(LoadCommon(), BAD);
    saved.SetText(COMMON_XML, common);
    ASSERT_EQ(LoadCommon(), OK);
    const std::string fixed = saved.GetText(FIXED_XML);
    for (const char* const name : {"Relation", "BtnClasses"}) {
        saved.SetText(FIXED_XML, fixed);
        saved.Replace(FIXED_XML, "<" + std::string(name), "<x_" + std::string(name));
        saved.Replace(FIXED_XML, "</" + std::string(name), "</x_" + std::string(name));
        EXPECT_EQ(saved.LoadFixed(back.env), BAD) << name;
        EXPECT_FALSE(back.env.ExistBtnClass(FIXED));
        EXPECT_EQ(back.Members(SHOP, INC), List{4711});
        EXPECT_FALSE(back.env.IsBtnSelectiveState());
    }
    saved.SetText(FIXED_XML, "<BUIDataMngr id=\"1\"/>");
    EXPECT_EQ(saved.LoadFixed(back.env), BAD);
}

TEST_F(CBUIDataMngrXMLDamage, LinkTablesBehindTheClassesAreRefused)
{
    std::string text = saved.GetText(COMMON_XML);
    const std::size_t begin = text.find("  <RpLink");
    const std::string line = text.substr(begin, text.find('\n', begin) + 1 - begin);
    text.erase(begin, line.size());
    text.insert(text.find("</BUIDataMngr>"), line);
    saved.SetText(COMMON_XML, text);
    EXPECT_EQ(LoadCommon(), BAD);
    ExpectEmpty();
}

TEST_F(CBUIDataMngrXMLDamage, ElementsThatAreNotKnownArePassedOver)
{
    for (const std::string& name : {COMMON_XML, FIXED_XML}) {
        saved.Replace(name, "<BtnClasses>",
                      "<Strange a=\"1\"><Btns><Btn id=\"9\"/></Btns></Strange><BtnClasses>"
                      "<BtnClass/><BtnClass id=\"0\"/><BtnClass id=\"77\" type=\"Strange\"><Btns/></BtnClass>"
                      "<BtnClass id=\"78\" type=\"Virtual\"><Btns/></BtnClass>"
                      "<BtnClass id=\"2000000099\" type=\"Num\" fldID=\"9\"><Btns/></BtnClass>"
                      "<BtnClass id=\"79\" type=\"Normal\" fldID=\"x\"><Btns/></BtnClass>"
                      "<BtnClass id=\"80\" type=\"Normal\" fldID=\"3\"/>"
                      "<BtnClass id=\"4000000000\" type=\"Virtual\" fldID=\"3\"><Btns/></BtnClass>");
        saved.Replace(name, "<Btns>",
                      "<Strange><Btns/></Strange><Btns><Strange id=\"x\"><Btn id=\"3\"/></Strange>");
    }
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Everything(), made.Everything());
}

TEST_F(CBUIDataMngrXMLDamage, ADocumentThatEndsEarlyFailsAndLeavesNothingHalf)
{
    const std::string common = saved.GetText(COMMON_XML);
    const std::string fixed = saved.GetText(FIXED_XML);
    for (std::size_t size = 0; size < common.size() - 1; size += 7) {
        saved.SetText(COMMON_XML, common.substr(0, size));
        EXPECT_NE(LoadCommon(), OK) << size;
        ExpectEmpty();
    }
    saved.SetText(COMMON_XML, common);
    ASSERT_EQ(LoadCommon(), OK);
    for (std::size_t size = 0; size < fixed.size() - 1; size += 7) {
        saved.SetText(FIXED_XML, fixed.substr(0, size));
        EXPECT_NE(saved.LoadFixed(back.env), OK) << size;
        EXPECT_FALSE(back.env.ExistBtnClass(FIXED));
        EXPECT_FALSE(back.env.IsBtnSelectiveState());
    }
    saved.SetText(FIXED_XML, fixed);
    ASSERT_EQ(saved.LoadFixed(back.env), OK);
    EXPECT_EQ(back.Everything(), made.Everything());
}

TEST_F(CBUIDataMngrXMLDamage, AClassThatIsBadIsDroppedAloneAndLosesTheTables)
{
    saved.Replace(COMMON_XML, " fldID=\"2\"", " fldID=\"1\"");
    ASSERT_EQ(LoadCommon(), OK);
    EXPECT_FALSE(back.env.ExistBtnClass(KIND));
    EXPECT_TRUE(back.env.ExistBtnClass(AMOUNT));
    EXPECT_EQ(back.env.GetRecCountOfSrcData(), REC_COUNT) << "the tables fit the classes that there are";
    EXPECT_EQ(back.Recs(AMOUNT, 2), List{0});
}

TEST_F(CBUIDataMngrXMLDamage, ABadFixedClassLeavesTheClassAsTheSourceDataHasIt)
{
    saved.Replace(FIXED_XML, "<BtnClass id=\"1\"", "<BtnClass id=\"1\" btnSelState=\"x\"");
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Members(SHOP, INC), List{4711});
    EXPECT_EQ(back.Members(KIND, INC), (List{4, 2}));
    bool disp = false;
    EXPECT_TRUE(back.env.GetDispEmpValBtnInfoOfBtnClass(SHOP, disp));
    EXPECT_TRUE(disp) << "the empty value is hidden only by a form that was read";
    EXPECT_EQ(back.Members(COMMON, VIR), (List{2, CLL})) << "what may come again is still named";
}

// --- Identifiers

TEST_F(CBUIDataMngrXMLDamage, AnIdentifierThatStandsTwiceIsReadOnce)
{
    saved.Replace(COMMON_XML, "<Btn id=\"2\" type=\"Data\" name=\"x\"/>",
                  "<Btn id=\"2\" type=\"Data\" name=\"x\"/><Btn id=\"2\" type=\"Data\" name=\"other\"/>"
                  "<Btn id=\"77\" type=\"Data\" name=\"x\"/><Btn id=\"78\" type=\"Data\"/>");
    saved.Replace(COMMON_XML, "<BtnClass id=\"2\"",
                  "<BtnClass id=\"1\" type=\"Normal\" fldID=\"9\"><Btns/></BtnClass><BtnClass id=\"2\"");
    saved.Replace(FIXED_XML, "<Btn id=\"2\" sel=\"true\"/>", "<Btn id=\"2\" sel=\"true\"/><Btn id=\"2\"/>");
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Everything(), made.Everything());
}

TEST_F(CBUIDataMngrXMLDamage, ATypeThatIsNotThatOfTheIdentifierIsPassedOver)
{
    saved.Replace(
        COMMON_XML, "<Btn id=\"2\" type=\"Data\" name=\"x\"/>",
        "<Btn id=\"2\" type=\"Inc\" name=\"q\"/><Btn id=\"3\" type=\"EmpVal\" name=\"q\"/>"
        "<Btn id=\"4\" type=\"Strange\" name=\"q\"/><Btn id=\"3500000000\" type=\"Data\" name=\"q\"/>"
        "<Btn id=\"2\" type=\"Data\" name=\"x\"/>");
    saved.Replace(FIXED_XML, "type=\"Inc\"", "type=\"Cll\"");
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Members(SHOP, INC), List{4711});
    EXPECT_EQ(back.Members(SHOP, CLL), List{1}) << "what there is not is no member";
    EXPECT_EQ(back.Everything(KIND), made.Everything(KIND));
}

TEST_F(CBUIDataMngrXMLDamage, CountersAndFreeIdentifiersAreRepaired)
{
    saved.Replace(
        FIXED_XML, "<IncBtn nextID=\"4000000003\"/>",
        "<IncBtn nextID=\"4000000002\" blankIDList=\"4000000002,5,4000000009,4000000004,4000000009\"/>");
    saved.Replace(FIXED_XML, "<FixedVirBtnClass nextID=\"2000000003\"/>",
                  "<FixedVirBtnClass nextID=\"5\" blankIDList=\"2000000001,9,2000000005,2000000005\"/>");
    saved.Replace(COMMON_XML, "<SrcBtnClass nextID=\"6\"/>", "<SrcBtnClass nextID=\"2\"/>");
    saved.Replace(COMMON_XML, "<CommonVirBtnClass nextID=\"1000000002\"/>",
                  "<CommonVirBtnClass nextID=\"1000000001\" blankIDList=\"1000000009\"/>");
    saved.Replace(COMMON_XML, "<DataBtn nextID=\"5\"/>", "<DataBtn nextID=\"2\" blankIDList=\"3\"/>");
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.MakeInc(SHOP, {2}), INC + 2);
    EXPECT_EQ(back.MakeInc(SHOP, {2}), INC + 7);
    EXPECT_EQ(back.MakeInc(SHOP, {2}), INC + 8);
    EXPECT_EQ(back.MakeClass("p"), FIXED + 4);
    EXPECT_EQ(back.MakeClass("q"), FIXED + 5);
    EXPECT_EQ(back.MakeClass("r", true), COMMON + 1) << "those of common classes are not used again";
}

TEST_F(CBUIDataMngrXMLDamage, NumbersThatTellOfGreatListsMakeNone)
{
    // Each of them alone would have lists of gigabytes made.
    saved.Replace(COMMON_XML, "<DataBtn nextID=\"5\"/>", "<DataBtn nextID=\"3000000002\"/>");
    saved.Replace(
        COMMON_XML, "<Btn id=\"2\" type=\"Data\" name=\"x\"/>",
        "<Btn id=\"2\" type=\"Data\" name=\"x\"/><Btn id=\"3000000001\" type=\"Data\" name=\"far\"/>");
    saved.Replace(COMMON_XML, "<SrcBtnClass nextID=\"6\"/>", "<SrcBtnClass nextID=\"1000000001\"/>");
    saved.Replace(COMMON_XML, "</BtnClasses>",
                  "<BtnClass id=\"1000000000\" type=\"Normal\" fldID=\"9\"><Btns/></BtnClass></BtnClasses>");
    saved.Replace(FIXED_XML, "<IncBtn nextID=\"4000000003\"/>",
                  "<IncBtn nextID=\"4080000002\" blankIDList=\"4080000001\"/>");
    saved.Replace(FIXED_XML, "<Btn id=\"4160000002\" ", "<Btn id=\"4240000001\" ");
    const CAllocFault meter;
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.MakeInc(SHOP, {2}), INC + 1);
    EXPECT_LT(meter.GetLargestSize(), 64u * 1024 * 1024);
    EXPECT_EQ(back.Recs(KIND, 3000000001), List());
}

// --- Members

TEST_F(CBUIDataMngrXMLDamage, MembersThatCannotBeAreDropped)
{
    saved.Replace(FIXED_XML, "idList=\"2,3\"",
                  "idList=\"2,2,99,4000000002,4000000077,4160000002,3500000000,3\"");
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Members(SHOP, INC), (List{2, CLL, 3}));
    EXPECT_EQ(back.Members(SHOP, CLL), List{1}) << "of the two that hold each other the later one lets go";
    EXPECT_EQ(back.Recs(SHOP, INC), (List{0, 1, 2, 3, 5}));
}

TEST_F(CBUIDataMngrXMLDamage, AButtonThatHoldsItselfAcrossClassesIsLetGoOfOnce)
{
    // "own" holds buttons of "kind"; here one of "other", which holds one of "own".
    saved.Replace(FIXED_XML, "refBtnClassID=\"2\" alias=\"vir\"",
                  "refBtnClassID=\"2000000002\" alias=\"vir\"");
    saved.Replace(FIXED_XML, "idList=\"3,4\"", "idList=\"4080000002\"");
    ASSERT_EQ(LoadBoth(), OK);
    const std::size_t count = back.Members(FIXED, VIR).size() + back.Members(FIXED + 1, VIR).size();
    EXPECT_EQ(count, 1u);
    back.Everything();
}

TEST_F(CBUIDataMngrXMLDamage, AVirtualButtonOfAClassThatThereIsNotIsDropped)
{
    saved.Replace(FIXED_XML, "refBtnClassID=\"2\" alias=\"vir\"", "refBtnClassID=\"77\" alias=\"vir\"");
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Members(FIXED, VIR), List{4711});
    EXPECT_EQ(back.Members(FIXED + 1, VIR), List()) << "and is a member of none";
    EXPECT_EQ(back.Selected(KIND), List{2});
    EXPECT_EQ(back.MakeVir(FIXED, KIND, {2}), VIR);
}

TEST_F(CBUIDataMngrXMLDamage, AButtonWithAConditionIsAMemberOfNone)
{
    saved.Replace(FIXED_XML, "<MemberBtn selMethod=\"Select\" idList=\"2,3\"/>",
                  "<MemberBtn selMethod=\"Condition\"/>");
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Members(SHOP, CLL), List{1});
}

TEST_F(CBUIDataMngrXMLDamage, ASharedDefinitionDoesNotSufferFromALoopThatAUsersPartCloses)
{
    // Shared: c.u holds d.z, d.z holds the inc button c.x of a user, which comes to hold c.u.
    SEnv shared;
    const DWORD c = shared.MakeClass("c", true);
    const DWORD d = shared.MakeClass("d", true);
    const DWORD first = shared.MakeVir(c, KIND, {2});
    const DWORD x = shared.MakeInc(c, {first});
    const DWORD z = shared.MakeVir(d, c, {x});
    const DWORD u = shared.MakeVir(c, d, {z});
    ASSERT_TRUE(saved.Save(shared.env));
    saved.Replace(FIXED_XML, "idList=\"4080000002\"", "idList=\"4080000002," + std::to_string(u) + "\"");
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Members(c, u), List{z});
    EXPECT_EQ(back.Members(d, z), List{x});
    EXPECT_EQ(back.Members(c, x), List{first});
    std::set<SBtnClassIDAndBtnID> above;
    back.env.GetSpBtnIDListThatTheSpecifiedBtnInfluences(c, x, above, false);
    EXPECT_EQ(above.size(), 2u);
    CSavedEnv again;
    ASSERT_TRUE(again.Save(back.env));
    EXPECT_EQ(saved.GetText(COMMON_XML), again.GetText(COMMON_XML));
}

TEST_F(CBUIDataMngrXMLDamage, ManyLoopsAreBrokenInReasonableTime)
{
    // Each of 500 buttons lists all of them.
    const DWORD count = 500;
    std::string all;
    for (DWORD i = 0; i < count; ++i)
        all += (i == 0 ? "" : ",") + std::to_string(INC + i);
    std::string btns;
    for (DWORD i = 0; i < count; ++i)
        btns += "<Btn id=\"" + std::to_string(INC + i) +
                "\" alias=\"a\" createTime=\"2024/01/01 00:00:00\" updateTime=\"2024/01/01 00:00:00\">"
                "<MemberBtn selMethod=\"Select\" idList=\"" +
                all + "\"/></Btn>";
    saved.SetText(FIXED_XML,
                  "<BUIDataMngr id=\"1\"><Relation mode=\"None\"/><BtnClasses><BtnClass id=\"1\"><Btns>" +
                      btns + "</Btns></BtnClass></BtnClasses></BUIDataMngr>");
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Members(SHOP, INC).size(), count - 1);
    EXPECT_EQ(back.Members(SHOP, INC + count - 1), List());
    EXPECT_TRUE(back.env.DestroySpBtn(SHOP, INC + count / 2));
}

TEST_F(CBUIDataMngrXMLDamage, AFailedFixedFormLeavesNeitherDisplayFormsNorModes)
{
    made.env.SetRelationMode(Env::RELATIONMODE_AND);
    ASSERT_TRUE(saved.Save(made.env));
    ASSERT_EQ(LoadBoth(), OK);
    saved.Replace(FIXED_XML, "</BtnClasses>", "</BtnClas>");
    EXPECT_NE(saved.LoadFixed(back.env), OK);
    SCDeclareConstant::SDateDispForm form;
    EXPECT_TRUE(back.env.GetDispFormOfDateBtnClass(DAY, form));
    EXPECT_EQ(form.kind, SCDeclareConstant::UNSETTING);
    EXPECT_EQ(back.env.GetRelationMode(), Env::RELATIONMODE_NARROWING);
    EXPECT_FALSE(back.env.GetMultiSelectionInfo());
}

TEST_F(CBUIDataMngrXMLDamage, AnotherElementAmongTheButtonsTakesNoButtonsPlace)
{
    saved.Replace(COMMON_XML, "<Btns>", "<Btns><Foo id=\"1\"/><Foo id=\"2\" type=\"Data\" name=\"q\"/>");
    saved.Replace(FIXED_XML, "<Btn id=\"2\" sel=\"true\"/>", "<Foo id=\"2\"/><Btn id=\"2\" sel=\"true\"/>");
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Everything(), made.Everything());
}

TEST_F(CBUIDataMngrXMLDamage, FreeIdentifiersOfTheCommonFormRaiseNoCounter)
{
    saved.Replace(COMMON_XML, "<SrcBtnClass nextID=\"6\"/>",
                  "<SrcBtnClass nextID=\"6\" blankIDList=\"50\"/>");
    ASSERT_EQ(LoadCommon(), OK);
    CSavedEnv again;
    ASSERT_TRUE(again.SaveCommon(back.env));
    EXPECT_NE(again.GetText(COMMON_XML).find("<SrcBtnClass nextID=\"6\"/>"), std::string::npos);
}

TEST_F(CBUIDataMngrXMLDamage, ASleepingSharedButtonForgetsAMemberThatComesBackWithACondition)
{
    ASSERT_EQ(LoadBoth(), OK);
    ASSERT_EQ(back.Members(COMMON, VIR), (List{2, CLL}));
    ASSERT_TRUE(back.env.SetEffectiveInfoOfSpBtn(COMMON, VIR, false));
    saved.Replace(FIXED_XML, "<MemberBtn selMethod=\"Select\" idList=\"4000000002,1\"/>",
                  "<MemberBtn selMethod=\"Condition\"/>");
    ASSERT_EQ(saved.LoadFixed(back.env), OK);
    ASSERT_TRUE(back.env.SetEffectiveInfoOfSpBtn(COMMON, VIR, true));
    EXPECT_EQ(back.Members(COMMON, VIR), List{2});
}

TEST_F(CBUIDataMngrXMLDamage, AFixedFormThatFailsTakesNoEmptyValueOutOfASharedButton)
{
    const DWORD common = made.MakeClass("over shops", true);
    made.MakeVir(common, SHOP, {2, 1});
    ASSERT_TRUE(saved.Save(made.env));
    const std::string whole = saved.GetText(FIXED_XML);
    ASSERT_EQ(LoadBoth(), OK);
    saved.Replace(FIXED_XML, "<EmpValBtn disp=\"true\"/>", "");
    saved.Replace(FIXED_XML, "</BtnClasses>", "</BtnClas>");
    EXPECT_NE(saved.LoadFixed(back.env), OK);
    EXPECT_EQ(back.Members(common, VIR), (List{2, 1}));
    saved.SetText(FIXED_XML, whole);
    ASSERT_EQ(saved.LoadFixed(back.env), OK);
    EXPECT_EQ(back.Everything(), made.Everything());
}

TEST_F(CBUIDataMngrXMLDamage, AButtonOverASharedItemThatIsSwitchedOffComesBackAsleep)
{
    const DWORD mine = made.MakeClass("mine");
    const DWORD vir = made.MakeVir(mine, COMMON, {VIR});
    ASSERT_TRUE(saved.Save(made.env));
    ASSERT_EQ(LoadBoth(), OK);
    ASSERT_TRUE(back.env.SetEffectiveInfoOfVirBtnClass(COMMON, false));
    ASSERT_EQ(saved.LoadFixed(back.env), OK);
    bool effective = true;
    EXPECT_TRUE(back.env.GetEffectiveInfoOfSpBtn(mine, vir, effective));
    EXPECT_FALSE(effective);
    ASSERT_TRUE(back.env.SetEffectiveInfoOfVirBtnClass(COMMON, true));
    EXPECT_TRUE(back.env.GetEffectiveInfoOfSpBtn(mine, vir, effective));
    EXPECT_TRUE(effective);
    EXPECT_EQ(back.Recs(mine, vir), made.Recs(mine, vir));
}

TEST_F(CBUIDataMngrXMLDamage, ANumberWithAnAliasLeavesItsOrderWhenTheTablesAreLost)
{
    ASSERT_TRUE(made.env.SetAliasOfBtn(AMOUNT, 2, "q"));
    ASSERT_TRUE(saved.Save(made.env));
    saved.Replace(COMMON_XML, "<Btn id=\"3\" type=\"Data\" name=\"y\" alias=\"the second\"/>", "");
    ASSERT_EQ(LoadCommon(), OK);
    List order;
    back.env.GetBtnNameOrdListOfBtnClass(AMOUNT, VCBtnClass::ORDLIST_INCLUDE_NONDISPBTNS, order);
    EXPECT_EQ(order, List());
}

// Packed cells may be far more than their file: nothing of them is unpacked before the lists make sense.
TEST_F(CBUIDataMngrXMLDamage, APackedTableThatClaimsToBeLongIsLostWithoutBeingUnpacked)
{
    constexpr DWORD CLAIMED = 4000000;
    std::vector<DWORD> recs(CLAIMED);
    std::iota(recs.begin(), recs.end(), DWORD{0});
    for (const bool inLists : {false, true}) {
        made.env.ChangeVersionTypeOfRpLink(SCBUICoreCom::LINKTBLVERTYPE_MEMSAV);
        ASSERT_TRUE(saved.Save(made.env));
        CRpLink_MemSavVer table;
        for (const DWORD btnClassID : {SHOP, KIND, AMOUNT, DAY, HOUR}) {
            TCBtnIDAssArr<SRecordList> lists;
            lists.Set(2, SRecordList{recs.data(), inLists ? CLAIMED : REC_COUNT});
            ASSERT_TRUE(table.InsertFld(btnClassID, lists, CLAIMED));
        }
        ASSERT_TRUE(table.WriteTo((saved.GetFolder() + "BUI\\ID_1\\RpLink\\").c_str()));
        CAllocFault memory;
        memory.Arm(0);
        ASSERT_EQ(LoadCommon(), OK);
        memory.Disarm();
        EXPECT_LE(memory.GetLargestSize(), 2u << 20);
        ExpectLostTables();
    }
}

TEST_F(CBUIDataMngrXMLDamage, ATableWithoutColumnsHasNoOtherCountOfRecords)
{
    const std::string text = saved.GetText(COMMON_XML);
    const std::size_t tables = text.find("<BnLink");
    saved.SetText(COMMON_XML,
                  "<BUIDataMngr id=\"1\">" + text.substr(tables, text.find("<SrcBtnClass") - tables) +
                      "<BtnClasses><BtnClass id=\"1000000001\" type=\"Virtual\"><Btns/></BtnClass>"
                      "</BtnClasses></BUIDataMngr>");
    const DWORD numbers[] = {0, REC_COUNT - 1, 0};
    saved.SetText("BUI/ID_1/BnLink/0.dat",
                  std::string(reinterpret_cast<const char*>(numbers), sizeof numbers));
    const DWORD none[] = {0, 0, 0, 0};
    saved.SetText("BUI/ID_1/RpLink/0.dat", std::string(reinterpret_cast<const char*>(none), sizeof none));
    ASSERT_EQ(LoadCommon(), OK);
    EXPECT_EQ(back.env.GetRecCountOfSrcData(), 0u);
}

// --- Relation

TEST_F(CBUIDataMngrXMLDamage, ADifferenceWithoutAnElementStaysEmpty)
{
    const std::string text = saved.GetText(FIXED_XML);
    const std::size_t begin = text.find("<Relation");
    const std::size_t end = text.find("</Relation>") + 11;
    const auto load = [&](const std::string& relation) {
        saved.SetText(FIXED_XML, text.substr(0, begin) + relation + text.substr(end));
        return LoadBoth();
    };
    EXPECT_EQ(load("<Relation mode=\"Difference\"/>"), OK);
    EXPECT_EQ(back.env.GetRelationMode(), Env::RELATIONMODE_DIFFERENCE);
    DWORD btnClassID = 9;
    DWORD standardID = 9;
    DWORD targetID = 9;
    EXPECT_TRUE(back.env.GetSelBtnsInfoForDiffCnd(btnClassID, standardID, targetID));
    EXPECT_EQ(btnClassID, 0u);
    EXPECT_EQ(load("<Relation mode=\"Sideways\"><Difference/></Relation>"), OK);
    EXPECT_EQ(back.env.GetRelationMode(), Env::RELATIONMODE_NONE);
    EXPECT_EQ(load("<Relation/>"), BAD);
    EXPECT_EQ(load("<Relation mode=\"Difference\"><Other/></Relation>"), BAD);
    EXPECT_EQ(load("<Relation mode=\"Difference\"><Difference btnClassID=\"2\"/></Relation>"), BAD);
    EXPECT_EQ(load("<Relation mode=\"Difference\"><Difference btnClassID=\"2\" standardBtnID=\"2\" "
                   "targetBtnID=\"0\"/></Relation>"),
              BAD);
    EXPECT_EQ(load("<Relation mode=\"Difference\"><Difference btnClassID=\"0\" standardBtnID=\"2\"/>"
                   "<Other/><Difference btnClassID=\"2\" standardBtnID=\"3\" targetBtnID=\"2\"/></Relation>"),
              OK);
    EXPECT_TRUE(back.env.GetSelBtnsInfoForDiffCnd(btnClassID, standardID, targetID));
    EXPECT_EQ((List{btnClassID, standardID, targetID}), (List{2, 3, 2}));
    EXPECT_EQ(
        load("<Relation mode=\"Difference\"><Difference btnClassID=\"2\" standardBtnID=\"99\"/></Relation>"),
        OK);
    EXPECT_FALSE(back.env.IsBtnSelectiveState()) << "what cannot be selected ends in no selection";
}

TEST_F(CBUIDataMngrXMLDamage, LevelsStandInTheOrderOfTheirDepths)
{
    EXPECT_TRUE(made.Press(SHOP, {CLL}));
    ASSERT_TRUE(saved.Save(made.env));
    const std::string right = saved.GetText(FIXED_XML);
    const std::string first = "<Hierarchy depth=\"0\" btnClassID=\"2\"/>";
    const std::string second = "<Hierarchy depth=\"1\" btnClassID=\"1\"/>";
    saved.Replace(FIXED_XML, first, "<Hierarchy depth=\"3\" btnClassID=\"1\"/><Other/>");
    saved.Replace(FIXED_XML, second,
                  "<Hierarchy depth=\"4000000000\" btnClassID=\"3\"/><Hierarchy btnClassID=\"3\"/>"
                  "<Hierarchy depth=\"2\" btnClassID=\"0\"/><Hierarchy depth=\"2\" btnClassID=\"2\"/>");
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Everything(), made.Everything()) << "levels of no class between them do not count";
    saved.SetText(FIXED_XML, right);
    saved.Replace(FIXED_XML, first, "");
    saved.Replace(FIXED_XML, second, "<Hierarchy depth=\"3\" btnClassID=\"2\"/>");
    ASSERT_EQ(saved.LoadFixed(back.env), OK);
    EXPECT_EQ(back.env.GetHierCount(), 1u);
    EXPECT_EQ(back.Selected(KIND), List{2});
    saved.SetText(FIXED_XML, right);
    saved.Replace(FIXED_XML, first, "");
    saved.Replace(FIXED_XML, second, "");
    EXPECT_EQ(saved.LoadFixed(back.env), BAD);
}

TEST_F(CBUIDataMngrXMLDamage, SelectionsOfWhatThereIsNotEndInNone)
{
    saved.Replace(FIXED_XML, "btnClassID=\"2\"/>", "btnClassID=\"2000000001\"/>");
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Selected(KIND), List());
    EXPECT_EQ(back.TargetRecs().size(), 0u) << "the level of a class without a selection holds no record";
}

// --- Link tables

TEST_F(CBUIDataMngrXMLDamage, TablesThatAreGoneLeaveAnEnvironmentWithoutRecords)
{
    for (const char* const name : {"BnLink", "RpLink"}) {
        ASSERT_TRUE(saved.Save(made.env));
        std::filesystem::remove(saved.GetPath("BUI/ID_1/" + std::string(name) + "/0.dat"));
        ASSERT_EQ(LoadCommon(), OK) << name;
        ExpectLostTables();
    }
}

TEST_F(CBUIDataMngrXMLDamage, TablesInTheOtherOrderAreLostTogetherToo)
{
    std::string text = saved.GetText(COMMON_XML);
    const std::size_t begin = text.find("  <BnLink");
    const std::size_t middle = text.find("  <RpLink");
    const std::size_t end = text.find("  <SrcBtnClass");
    saved.SetText(COMMON_XML, text.substr(0, begin) + text.substr(middle, end - middle) +
                                  text.substr(begin, middle - begin) + text.substr(end));
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Everything(), made.Everything());
    std::filesystem::remove(saved.GetPath("BUI/ID_1/RpLink/0.dat"));
    ASSERT_EQ(LoadCommon(), OK);
    ExpectLostTables();
}

TEST_F(CBUIDataMngrXMLDamage, AnotherCountOfRecordsLosesTheTables)
{
    ASSERT_EQ(saved.LoadCommon(back.env, REC_COUNT + 1), OK);
    ExpectLostTables();
}

TEST_F(CBUIDataMngrXMLDamage, CellsThatContradictEachOtherLoseTheTables)
{
    for (const char* const name : {"BnLink/1", "RpLink/1", "BnLink/4", "RpLink/5"}) {
        for (const DWORD number : {0u, 1u, 4u, 99u, 3000000001u, 4294967295u}) {
            ASSERT_TRUE(saved.Save(made.env));
            const std::string path = "BUI/ID_1/" + std::string(name) + ".dat";
            std::string cells = saved.GetText(path);
            const std::string before = cells;
            std::memcpy(cells.data() + 4, &number, 4);
            if (cells == before)
                continue;
            saved.SetText(path, cells);
            ASSERT_EQ(LoadCommon(), OK);
            ExpectLostTables();
        }
    }
}

TEST_F(CBUIDataMngrXMLDamage, AButtonOfTheTablesThatTheClassDoesNotHaveLosesThem)
{
    saved.Replace(COMMON_XML, "<Btn id=\"3\" type=\"Data\" name=\"y\" alias=\"the second\"/>", "");
    ASSERT_EQ(LoadCommon(), OK);
    ExpectLostTables();
}

TEST_F(CBUIDataMngrXMLDamage, AClassThatTheTablesDoNotHaveLosesThem)
{
    saved.Replace(COMMON_XML, "</BtnClasses>",
                  "<BtnClass id=\"6\" type=\"Normal\" fldID=\"6\"><Btns/></BtnClass></BtnClasses>");
    ASSERT_EQ(LoadCommon(), OK);
    EXPECT_EQ(back.env.GetRecCountOfSrcData(), 0u);
    EXPECT_EQ(back.Displayed(KIND), List());
}

TEST_F(CBUIDataMngrXMLDamage, TheElementOfATableIsReadStrictly)
{
    const std::string common = saved.GetText(COMMON_XML);
    const auto load = [&](const std::string& before, const std::string& after) {
        saved.SetText(COMMON_XML, common);
        saved.Replace(COMMON_XML, before, after);
        return LoadCommon();
    };
    EXPECT_EQ(load("verType=\"OnMemory\" ", ""), BAD);
    EXPECT_EQ(load("endianness=\"LittleEndian\" ", "endianness=\"x\" "), BAD);
    EXPECT_EQ(load("dataModel=\"LP64\" ", "dataModel=\"x\" "), BAD);
    EXPECT_EQ(load("dataModel=\"LP64\" ", ""), BAD);
    EXPECT_EQ(load(" xlink:href=\".\\BUI\\ID_1\\BnLink\\\"", ""), BAD);
    EXPECT_EQ(load("\".\\BUI\\ID_1\\BnLink\\\"", "\"BUI\""), BAD);
    EXPECT_EQ(load("\".\\BUI\\ID_1\\BnLink\\\"", "\".\\..\\BUI\\ID_1\\BnLink\\\""), BAD);
    EXPECT_EQ(load(" xlink:type=\"simple\"", ""), OK);
    EXPECT_EQ(back.env.GetRecCountOfSrcData(), REC_COUNT);
    EXPECT_EQ(load("endianness=\"LittleEndian\" ", "endianness=\"BigEndian\" "), OK);
    ExpectLostTables();
    EXPECT_EQ(load("endianness=\"LittleEndian\" ", ""), OK) << "the table starts empty";
    ExpectLostTables();
}

TEST_F(CBUIDataMngrXMLDamage, AFormWithoutDataHasNoRecords)
{
    ASSERT_TRUE(saved.SaveCommon(made.env, false));
    ASSERT_EQ(LoadCommon(), OK);
    ExpectLostTables();
}

TEST_F(CBUIDataMngrXMLDamage, AnyVersionOfATableButTheOneOnMemoryIsTheMemorySavingOne)
{
    saved.Replace(COMMON_XML, "verType=\"OnMemory\"", "verType=\"onMemory\"");
    EXPECT_EQ(LoadCommon(), OK);
    EXPECT_EQ(back.env.GetVersionTypeOfBnLink(), SCBUICoreCom::LINKTBLVERTYPE_MEMSAV);
    EXPECT_EQ(back.env.GetVersionTypeOfRpLink(), ON_MEM);
    ExpectLostTables(); // its files were written by the other one
}

TEST_F(CBUIDataMngrXMLDamage, TablesThatSaveMemoryAreSavedAndComeBackAsThemselves)
{
    constexpr auto MEM_SAV = SCBUICoreCom::LINKTBLVERTYPE_MEMSAV;
    for (const bool isBnLinkPacked : {true, false}) {
        for (const bool isRpLinkPacked : {true, false}) {
            made.env.ChangeVersionTypeOfBnLink(isBnLinkPacked ? MEM_SAV : ON_MEM);
            made.env.ChangeVersionTypeOfRpLink(isRpLinkPacked ? MEM_SAV : ON_MEM);
            ASSERT_TRUE(saved.Save(made.env));
            ASSERT_EQ(LoadBoth(), OK);
            EXPECT_EQ(back.env.GetVersionTypeOfBnLink(), made.env.GetVersionTypeOfBnLink());
            EXPECT_EQ(back.env.GetVersionTypeOfRpLink(), made.env.GetVersionTypeOfRpLink());
            EXPECT_EQ(back.env.GetRecCountOfSrcData(), REC_COUNT);
            EXPECT_EQ(back.Everything(), made.Everything());
        }
    }
}

TEST_F(CBUIDataMngrXMLDamage, FilesThatCannotBeWrittenMakeTheSaveFailWithoutAnElement)
{
    saved.SetText("blocked", "a file where a directory is to be");
    CXMLWriter writer(saved.GetPath("other.xml").string().c_str());
    const std::string folder = saved.GetFolder() + "blocked\\";
    PutStart(writer, "R");
    EXPECT_FALSE(made.env.WriteLinkTableSpecByXML(folder.c_str(), writer, true, Env::LINKTBLTYPE_BNLINK));
    PutEnd(writer, "R");
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(saved.GetText("other.xml").find("BnLink"), std::string::npos);
}

TEST_F(CBUIDataMngrXMLDamage, ATypeOfTableThatIsNoneIsAProgrammingError)
{
    CXMLWriter writer(saved.GetPath("other.xml").string().c_str());
    const auto type = static_cast<Env::ELinkTableType>(2);
    const std::vector<IXMLIO::SAttribute> attributes{MakeAttribute("verType", "OnMemory")};
    EXPECT_THROW(made.env.WriteLinkTableSpecByXML("", writer, true, type), ECAbnormalData);
    EXPECT_THROW(back.env.ReadLinkTableSpecByXML("", attributes, type), ECAbnormalData);
}

// --- Dates

TEST_F(CBUIDataMngrXMLDamage, GroupsOfDatesKeepTheirButtons)
{
    const std::string text = saved.GetText(FIXED_XML);
    EXPECT_NE(text.find("<DateCllBtns kind=\"2\" form=\"7\" option=\"0\">"), std::string::npos);
    EXPECT_NE(text.find("<DateCllBtn id=\"4160000002\">"), std::string::npos);
    EXPECT_EQ(text.find("TimeCllBtns"), std::string::npos) << "a form that is unset writes nothing";
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Everything(DAY), made.Everything(DAY));
    bool byUser = true;
    EXPECT_TRUE(back.env.GetBtnMngrInfoOfSpBtn(DAY, CLL, byUser));
    EXPECT_FALSE(byUser);
}

TEST_F(CBUIDataMngrXMLDamage, AGroupWithoutItsButtonIsPassedOver)
{
    const std::string fixed = saved.GetText(FIXED_XML);
    for (const char* const bad : {"<DateCllBtn id=\"4160000099\">", "<DateCllBtn>", "<DateCllBtn id=\"2\">",
                                  "<DateCllBtn id=\"4160000003\">"}) {
        saved.SetText(FIXED_XML, fixed);
        saved.Replace(FIXED_XML, "<DateCllBtn id=\"4160000002\">", bad);
        ASSERT_EQ(LoadBoth(), OK) << bad;
        bool byUser = false;
        EXPECT_TRUE(back.env.GetBtnMngrInfoOfSpBtn(DAY, CLL, byUser));
        EXPECT_TRUE(byUser) << "the button is a user's now, and the group has another: " << bad;
        back.Everything();
    }
    saved.SetText(FIXED_XML, fixed);
    saved.Replace(FIXED_XML, "<DateCllBtns kind=\"2\" form=\"7\" option=\"0\">",
                  "<DateCllBtns kind=\"2\" form=\"7\" strange=\"0\">");
    ASSERT_EQ(LoadBoth(), OK);
    SCDeclareConstant::SDateDispForm form;
    EXPECT_TRUE(back.env.GetDispFormOfDateBtnClass(DAY, form));
    EXPECT_EQ(form.kind, SCDeclareConstant::UNSETTING);
}

TEST_F(CBUIDataMngrXMLDamage, AGroupThatComesWithTheRestoreJoinsASelectionOfAll)
{
    made.env.ClearAllBtnSelections(true);
    ASSERT_TRUE(made.env.SelectAllBtnsOfBtnClass(DAY, true));
    ASSERT_TRUE(saved.Save(made.env));
    std::string text = saved.GetText(FIXED_XML);
    const std::size_t begin =
        text.find("<Btn id=\"4160000002\" type=\"Cll\"", text.find("<BtnClass id=\"4\""));
    text.erase(begin, text.find("</Btn>", begin) + 6 - begin);
    saved.SetText(FIXED_XML, text);
    saved.Replace(FIXED_XML, "<DateCllBtn id=\"4160000002\">", "<x>");
    saved.Replace(FIXED_XML, "</DateCllBtn>", "</x>");
    ASSERT_EQ(LoadBoth(), OK);
    bool sel = false;
    EXPECT_TRUE(back.env.GetSelectionInfoOfBtn(DAY, CLL + 4, sel) ||
                back.env.GetSelectionInfoOfBtn(DAY, CLL, sel));
    EXPECT_TRUE(sel);
}

TEST_F(CBUIDataMngrXMLDamage, AFixedFormWithoutADisplayFormTakesTheFormAway)
{
    SEnv plain;
    CSavedEnv other;
    ASSERT_TRUE(other.SaveFixed(plain.env));
    ASSERT_EQ(LoadBoth(), OK);
    ASSERT_EQ(other.LoadFixed(back.env), OK);
    SCDeclareConstant::SDateDispForm form;
    EXPECT_TRUE(back.env.GetDispFormOfDateBtnClass(DAY, form));
    EXPECT_EQ(form.kind, SCDeclareConstant::UNSETTING);
    EXPECT_EQ(back.Members(DAY, CLL), List{4711});
}

TEST(CBUIDataMngrXML, AnAliasMovesNoDateOutOfItsGroupOverARestore)
{
    SEnv made;
    made.GroupByMonth();
    ASSERT_TRUE(made.env.SetAliasOfBtn(DAY, 2, "the first day"));
    ASSERT_TRUE(made.env.SetAliasOfBtn(AMOUNT, 2, "the first number"));
    ExpectRoundTrip(made);
}

// --- Repeated reading

TEST_F(CBUIDataMngrXMLDamage, AnotherFixedFormTakesThePlaceOfTheOneBefore)
{
    ASSERT_EQ(LoadBoth(), OK);
    SEnv other;
    FillWithAllKinds(other);
    other.MakeCll(KIND, {2, 3});
    other.env.SetRelationMode(Env::RELATIONMODE_AND);
    ASSERT_TRUE(other.Press(KIND, {4}));
    CSavedEnv savedOther;
    ASSERT_TRUE(savedOther.SaveFixed(other.env));
    ASSERT_EQ(savedOther.LoadFixed(back.env), OK);
    EXPECT_EQ(back.Everything(), other.Everything());
    ASSERT_EQ(saved.LoadFixed(back.env), OK);
    EXPECT_EQ(back.Everything(), made.Everything());
    ASSERT_EQ(LoadBoth(), OK);
    EXPECT_EQ(back.Everything(), made.Everything());
}

TEST_F(CBUIDataMngrXMLDamage, CommonButtonsAreTiedToSpecialButtonsThatComeWithTheFixedForm)
{
    ASSERT_EQ(LoadCommon(), OK);
    EXPECT_EQ(back.Members(COMMON, VIR), (List{2, CLL}));
    EXPECT_EQ(back.Recs(COMMON, VIR), (List{0, 1})) << "what has not come has no records";
    ASSERT_EQ(saved.LoadFixed(back.env), OK);
    back.env.ClearAllBtnSelections(true);
    EXPECT_EQ(back.Recs(COMMON, VIR), (List{0, 1, 2, 3, 5}));
}

// --- Exhausted memory

TEST_F(CBUIDataMngrXMLDamage, WhenMemoryIsExhaustedInTheCommonFormTheEnvironmentIsEmpty)
{
    const int failures = FailEveryAllocation(
        [&] {
            auto fresh = std::make_unique<SEnv>(false);
            EXPECT_EQ(saved.LoadCommon(fresh->env, REC_COUNT), OK);
            return fresh;
        },
        [&](const std::unique_ptr<SEnv>& fresh) { saved.LoadCommon(fresh->env, REC_COUNT); },
        [](const std::unique_ptr<SEnv>& fresh) {
            List btnClassIDs;
            const DWORD count = fresh->env.GetAllBtnClassIDList(btnClassIDs, true);
            // The reader itself needs memory before anything is touched.
            EXPECT_TRUE(count == 0 || count == 6) << count;
            fresh->Everything();
        });
    EXPECT_GT(failures, 300);
}

TEST_F(CBUIDataMngrXMLDamage, WhenMemoryIsExhaustedInTheFixedFormNothingOfItIsLeft)
{
    const int failures = FailEveryAllocation(
        [&] {
            auto fresh = std::make_unique<SEnv>(false);
            EXPECT_EQ(saved.LoadCommon(fresh->env, REC_COUNT), OK);
            return fresh;
        },
        [&](const std::unique_ptr<SEnv>& fresh) { saved.LoadFixed(fresh->env); },
        [](const std::unique_ptr<SEnv>& fresh) {
            EXPECT_FALSE(fresh->env.ExistBtnClass(FIXED));
            EXPECT_FALSE(fresh->env.IsBtnSelectiveState());
            EXPECT_EQ(fresh->Members(SHOP, INC), List{4711});
            fresh->Everything();
        });
    EXPECT_GT(failures, 300);
}

} // namespace
