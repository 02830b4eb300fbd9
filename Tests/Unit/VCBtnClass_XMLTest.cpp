// A class in its saved forms, by itself.

#include "CBtnClass.h"
#include "CRpLink_OnMemVer.h"
#include "CVirBtnClass.h"
#include "ECAbnormalData.h"
#include "SCKZCoreStrDef.h"
#include "Support/XMLText.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

using List = std::vector<DWORD>;
constexpr auto OK = CXMLReader::READXML_OK;
constexpr auto BAD = CXMLReader::READXML_BADFORMAT;
constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;
constexpr auto COMMON = SCKZCoreCom::SPECTYPE_COMMON;
constexpr auto FIXED = SCKZCoreCom::SPECTYPE_FIXED;
constexpr auto NO_FORM = static_cast<SCKZCoreCom::ESpecType>(3);
constexpr DWORD EMPVAL = SCBUICoreCom::BTN_ID_EMPVAL;
constexpr DWORD INC = SCBUICoreCom::BTN_ID_INC_BEGIN;

class CProbeBtnClass final : public VCSrcBtnClass
{
public:
    explicit CProbeBtnClass(const std::unique_ptr<IRpLink>& rpLinkOfEnv)
        : VCSrcBtnClass(1, 5, "empty", nullptr, rpLinkOfEnv)
    {}
    SCBUICoreCom::EBtnClassType GetBtnClassType() const override { return SCBUICoreCom::BTNCLSTYPE_NORMAL; }
    using VCSrcBtnClass::btnSelState;
    using VCSrcBtnClass::dataBtnNextID;
    using VCSrcBtnClass::nameOrdList;
    using VCSrcBtnClass::ReadBtnIDSpecByXML;
    using VCSrcBtnClass::ReadChildElementPartOfSpecByXML;
    using VCSrcBtnClass::ReadStartTagPartOfSpecByXML;
    using VCSrcBtnClass::WriteBtnIDSpecByXML;
    using VCSrcBtnClass::WriteBtnsSpecByXML;
    using VCSrcBtnClass::WriteChildElementsPartOfSpecByXML;
    using VCSrcBtnClass::WriteStartTagPartOfSpecByXML;
};

// A class with buttons 2 and 3 of two records each and one record of the empty value.
class VCBtnClassXML : public ::testing::Test
{
protected:
    VCBtnClassXML() : rpLink(std::make_unique<CRpLink_OnMemVer>()), btnClass(rpLink)
    {
        rpLink->InsertFld(1);
        const char* const values[] = {"a", "b", "a", nullptr, "b"};
        List cells(5);
        TCBtnIDAssArr<DWORD> counts;
        EXPECT_TRUE(btnClass.AddRecs(0, 5, values, cells.data(), counts));
        for (DWORD rec = 0; rec < 5; ++rec)
            rpLink->AddRecList(1, cells[rec], &rec, 1);
    }
    std::string Fixed()
    {
        return WrittenText(
            [&](CXMLWriter& writer) { return btnClass.WriteFixedSpecOfBtnClassByXML(writer); });
    }
    std::string Common()
    {
        return WrittenText(
            [&](CXMLWriter& writer) { return btnClass.WriteCommonSpecOfBtnClassByXML("", writer, true, 8); });
    }
    CXMLReader::EMthRetOfReadXML ReadFixed(const std::string& text)
    {
        const auto result =
            ReadText(text, [&](CXMLReader& reader) { return btnClass.ReadFixedSpecOfBtnClassByXML(reader); });
        btnClass.HideEmpValBtnAsRead();
        return result;
    }
    CXMLReader::EMthRetOfReadXML ReadCommon(const std::string& text)
    {
        return ReadText(text, [&](CXMLReader& reader) {
            return btnClass.ReadCommonSpecOfBtnClassByXML("", reader, 5, rpLink);
        });
    }
    List Selected() const
    {
        List btnIDs;
        btnClass.GetSelectedBtnIDList(btnIDs);
        return btnIDs;
    }
    List NameOrder() const
    {
        List btnIDs;
        btnClass.GetBtnNameOrdList(0, btnIDs);
        return btnIDs;
    }
    bool IsEmpValShown() const { return btnClass.GetDispEmpValBtnInfo(); }
    DWORD MakeInc(const List& members)
    {
        DWORD btnID = 0;
        EXPECT_EQ(btnClass.CreateIncBtn("inc", SELECT, &members, nullptr, btnID), VCBtnClass::CREATESPBTN_OK);
        return btnID;
    }

    std::unique_ptr<IRpLink> rpLink;
    CProbeBtnClass btnClass;
};

const std::string EMPVAL_SHOWN = "<EmpValBtn disp=\"true\"/>";

TEST_F(VCBtnClassXML, TheTwoFormsOfAClass)
{
    EXPECT_EQ(Common(),
              "<BtnClass id=\"1\" type=\"Normal\" fldID=\"8\"> <DataBtn nextID=\"4\"/> <Btns> "
              "<Btn id=\"1\" type=\"EmpVal\" alias=\"empty\"/> <Btn id=\"2\" type=\"Data\" name=\"a\"/> "
              "<Btn id=\"3\" type=\"Data\" name=\"b\"/> </Btns> </BtnClass>");
    EXPECT_EQ(Fixed(), "<BtnClass id=\"1\"> " + EMPVAL_SHOWN + " <Btns> </Btns> </BtnClass>");
    btnClass.SetSelectionInfoOfBtn(3, true);
    btnClass.SetNewBtnMadeSelState(true);
    EXPECT_EQ(Fixed(), "<BtnClass id=\"1\" btnSelState=\"true\" newBtnMadeSelState=\"true\"> " +
                           EMPVAL_SHOWN + " <Btns> <Btn id=\"1\"/> <Btn id=\"2\"/> </Btns> </BtnClass>");
}

TEST_F(VCBtnClassXML, AnIneffectiveClassIsNotWritten)
{
    btnClass.SetEffective(false);
    EXPECT_EQ(Common(), "");
    EXPECT_EQ(Fixed(), "");
}

TEST_F(VCBtnClassXML, AClassThatNeverHadAValueWritesNoCounter)
{
    const CBtnClass fresh(3, 4, "empty", nullptr, rpLink);
    EXPECT_EQ(WrittenText([&](CXMLWriter& writer) {
                  return fresh.WriteCommonSpecOfBtnClassByXML("", writer, true, 4);
              }),
              "<BtnClass id=\"3\" type=\"Normal\" fldID=\"4\"> <Btns> "
              "<Btn id=\"1\" type=\"EmpVal\" alias=\"empty\"/> </Btns> </BtnClass>");
}

TEST_F(VCBtnClassXML, TheStartTagHasItsAttributesInOrder)
{
    const IXMLIO::SAttribute first = MakeAttribute("first", "1");
    const IXMLIO::SAttribute second = MakeAttribute("second", "2");
    const IXMLIO::SAttribute common = MakeAttribute("common", "3");
    const std::vector<IXMLIO::SAttribute> own{MakeAttribute("own", "4")};
    btnClass.btnSelState = true;
    const auto write = [&](SCKZCoreCom::ESpecType specType) {
        return WrittenText([&](CXMLWriter& writer) {
            return btnClass.WriteStartTagPartOfSpecByXML(writer, own, specType, &common, &first, &second) &&
                   PutEnd(writer, "BtnClass");
        });
    };
    EXPECT_EQ(write(COMMON),
              "<BtnClass id=\"1\" first=\"1\" second=\"2\" common=\"3\" own=\"4\"> </BtnClass>");
    EXPECT_EQ(write(FIXED),
              "<BtnClass id=\"1\" first=\"1\" second=\"2\" btnSelState=\"true\" own=\"4\"> </BtnClass>");
}

TEST_F(VCBtnClassXML, AFormThatIsNoneIsAProgrammingError)
{
    const auto expectLine = [](long line, const auto& write) {
        try {
            WrittenText(write);
            ADD_FAILURE() << line;
        } catch (const ECAbnormalData& exception) {
            EXPECT_STREQ(exception.GetMessageText(), SCKZCoreStrDef::MSG_UNKNOWN_SPECTYPE);
            EXPECT_EQ(exception.GetLine(), line);
        }
    };
    expectLine(1118, [&](CXMLWriter& writer) {
        return btnClass.WriteStartTagPartOfSpecByXML(writer, {}, NO_FORM, nullptr, nullptr, nullptr);
    });
    expectLine(1202, [&](CXMLWriter& writer) {
        return btnClass.WriteChildElementsPartOfSpecByXML("", writer, true, NO_FORM);
    });
    expectLine(775,
               [&](CXMLWriter& writer) { return btnClass.WriteBtnsSpecByXML("", writer, true, NO_FORM); });
}

TEST_F(VCBtnClassXML, TheWordsOfTheTypesOfClasses)
{
    const std::pair<SCBUICoreCom::EBtnClassType, const char*> words[] = {
        {SCBUICoreCom::BTNCLSTYPE_NORMAL, "Normal"},
        {SCBUICoreCom::BTNCLSTYPE_NUM, "Num"},
        {SCBUICoreCom::BTNCLSTYPE_DATE, "Date"},
        {SCBUICoreCom::BTNCLSTYPE_TIME, "Time"},
        {SCBUICoreCom::BTNCLSTYPE_VIR, "Virtual"}};
    for (const auto& [type, word] : words) {
        EXPECT_STREQ(VCBtnClass::GetBtnClassTypeAttrValue(type), word);
        SCBUICoreCom::EBtnClassType read{};
        EXPECT_TRUE(
            VCBtnClass::GetBtnClassTypeBasedOnAttrValue(word, static_cast<DWORD>(std::strlen(word)), read));
        EXPECT_EQ(read, type);
    }
    SCBUICoreCom::EBtnClassType read = SCBUICoreCom::BTNCLSTYPE_NUM;
    EXPECT_FALSE(VCBtnClass::GetBtnClassTypeBasedOnAttrValue("normal", 6, read));
    EXPECT_FALSE(VCBtnClass::GetBtnClassTypeBasedOnAttrValue("Norma", 5, read));
    EXPECT_EQ(read, SCBUICoreCom::BTNCLSTYPE_NUM);
    EXPECT_EQ(VCBtnClass::GetBtnClassTypeAttrValue(static_cast<SCBUICoreCom::EBtnClassType>(5)), nullptr);
}

// --- Identifiers

TEST_F(VCBtnClassXML, FreeIdentifiersAreWrittenAscendingAndCutAtACommaWhereTheyAreTooMany)
{
    const auto write = [](const std::set<DWORD>& ids) {
        return WrittenText([&](CXMLWriter& writer) {
            return CProbeBtnClass::WriteBtnIDSpecByXML(writer, "IncBtn", 6, 4000000009, ids);
        });
    };
    EXPECT_EQ(write({}), "<IncBtn nextID=\"4000000009\"/>");
    EXPECT_EQ(write({4000000007, 4000000002}),
              "<IncBtn nextID=\"4000000009\" blankIDList=\"4000000002,4000000007\"/>");
    // Each takes 11 bytes with its comma: 5957 of them and a last one without a comma are 65537 bytes.
    std::set<DWORD> ids;
    for (DWORD i = 0; i < 5957; ++i)
        ids.insert(INC + i);
    const auto getIDs = [&](const std::string& text) {
        const std::size_t begin = text.find("blankIDList=\"") + 13;
        return text.substr(begin, text.find('"', begin) - begin);
    };
    EXPECT_EQ(getIDs(write(ids)).size(), 65526u) << "within the limit nothing is cut";
    ids.insert(INC + 5957);
    const std::string cut = getIDs(write(ids));
    EXPECT_EQ(cut.size(), 65526u);
    EXPECT_TRUE(cut.ends_with(",4000005958")) << cut.substr(cut.size() - 22);
    for (DWORD i = 0; i < 3000; ++i)
        ids.insert(INC + 6000 + i);
    EXPECT_EQ(getIDs(write(ids)), cut);
}

TEST_F(VCBtnClassXML, IdentifiersAreReadStrictly)
{
    DWORD nextID = 9;
    std::set<DWORD> ids{7};
    const auto read = [&](std::vector<IXMLIO::SAttribute> attributes) {
        return CProbeBtnClass::ReadBtnIDSpecByXML(attributes, nextID, ids);
    };
    EXPECT_FALSE(read({}));
    EXPECT_FALSE(read({MakeAttribute("nextID", "0")}));
    EXPECT_FALSE(read({MakeAttribute("nextID", "x")}));
    EXPECT_EQ(nextID, 9u);
    EXPECT_FALSE(read({MakeAttribute("nextID", "5"), MakeAttribute("blankIDList", "1,")}));
    EXPECT_TRUE(read({MakeAttribute("nextID", "5"), MakeAttribute("blankIDList", "3,1")}));
    EXPECT_EQ(nextID, 5u);
    EXPECT_EQ(ids, (std::set<DWORD>{1, 3}));
    EXPECT_TRUE(read({MakeAttribute("nextID", "6")}));
    EXPECT_TRUE(ids.empty()) << "absent is empty";
    std::vector<IXMLIO::SAttribute> attributes{MakeAttribute("nextID", "5"), MakeAttribute("other", "x")};
    EXPECT_TRUE(CProbeBtnClass::ReadBtnIDSpecByXML(attributes, nextID, ids));
    EXPECT_EQ(attributes[0].nameLen, 0u) << "what was taken is blank";
    EXPECT_EQ(attributes[1].nameLen, 5u);
}

// --- Reading the common form

TEST_F(VCBtnClassXML, ACommonFormIsReadInPlaceOfTheClass)
{
    MakeInc({2});
    const std::string text = Common();
    ASSERT_EQ(ReadCommon(text), OK);
    EXPECT_EQ(Common(), text);
    EXPECT_EQ(btnClass.GetFldID(), 8u);
    EXPECT_EQ(btnClass.GetRecCount(), 5u);
    EXPECT_EQ(btnClass.GetBtnCount(), 3u) << "special buttons are no part of it";
    EXPECT_EQ(NameOrder(), (List{2, 3, EMPVAL}));
    EXPECT_TRUE(btnClass.CheckWhetherAllRequiredChildElementsAppeared());
    List cells(2);
    TCBtnIDAssArr<DWORD> counts;
    const char* const values[] = {"b", "new"};
    EXPECT_TRUE(btnClass.AddRecs(5, 2, values, cells.data(), counts));
    EXPECT_EQ(cells, (List{3, 4})) << "values are known, and the next identifier is";
}

TEST_F(VCBtnClassXML, ButtonsWithoutRecordsInTheTableAreHiddenAndInNoOrder)
{
    ASSERT_EQ(ReadCommon("<BtnClass id=\"1\" fldID=\"8\"><Btns><Btn id=\"2\" name=\"a\"/>"
                         "<Btn id=\"9\" name=\"z\"/></Btns></BtnClass>"),
              OK);
    unsigned int visibleInfo = 0;
    EXPECT_TRUE(btnClass.GetVisibleInfoOfBtn(9, visibleInfo));
    EXPECT_EQ(visibleInfo, VISINFO_NOREC);
    EXPECT_EQ(NameOrder(), (List{EMPVAL, 2})) << "the empty value has records, and shows an empty text";
    EXPECT_EQ(btnClass.dataBtnNextID, 10u);
    rpLink->DeleteFld(1);
    ASSERT_EQ(ReadCommon("<BtnClass id=\"1\" fldID=\"8\"><Btns><Btn id=\"2\" name=\"a\"/></Btns></BtnClass>"),
              OK);
    EXPECT_EQ(NameOrder(), List());
}

TEST_F(VCBtnClassXML, TheEmptyValueEntersTheOrderOnce)
{
    ASSERT_EQ(ReadCommon("<BtnClass id=\"1\" fldID=\"8\"><Btns><Btn id=\"1\" alias=\"none\"/>"
                         "<Btn id=\"1\" alias=\"again\"/><Btn id=\"2\" name=\"a\"/></Btns></BtnClass>"),
              OK);
    const char* text = nullptr;
    EXPECT_TRUE(btnClass.GetAliasOfBtn(EMPVAL, text));
    EXPECT_STREQ(text, "none");
    EXPECT_EQ(NameOrder(), (List{2, EMPVAL}));
}

TEST_F(VCBtnClassXML, ACommonFormThatLacksWhatItMustHaveIsBad)
{
    EXPECT_EQ(ReadCommon("<BtnClass id=\"1\" fldID=\"8\"><DataBtn nextID=\"4\"/></BtnClass>"), BAD)
        << "no buttons";
    EXPECT_FALSE(btnClass.CheckWhetherAllRequiredChildElementsAppeared());
    EXPECT_EQ(ReadCommon("<BtnClass id=\"1\" fldID=\"8\"/>"), BAD);
    EXPECT_EQ(ReadCommon("<BtnClass id=\"1\"><Btns/></BtnClass>"), BAD);
    EXPECT_EQ(ReadCommon("<BtnClass id=\"1\" fldID=\"x\"><Btns/></BtnClass>"), BAD);
    EXPECT_EQ(ReadCommon("<BtnClass fldID=\"8\"><Btns/></BtnClass>"), BAD);
    EXPECT_EQ(ReadCommon("<BtnClass id=\"0\" fldID=\"8\"><Btns/></BtnClass>"), BAD);
    EXPECT_EQ(ReadCommon("<Class id=\"1\" fldID=\"8\"><Btns/></Class>"), BAD);
    EXPECT_EQ(ReadCommon("<BtnClass id=\"1\" fldID=\"8\"><Btns/></BtnClass>"), OK);
}

TEST_F(VCBtnClassXML, ASecondListOfButtonsIsPassedOver)
{
    ASSERT_EQ(ReadCommon(
                  "<BtnClass id=\"1\" fldID=\"8\"><Btns/><Btns><Btn id=\"2\" name=\"a\"/></Btns></BtnClass>"),
              OK);
    EXPECT_EQ(btnClass.GetBtnCount(), 1u);
}

TEST_F(VCBtnClassXML, AReaderOnNoElementIsTold)
{
    CXMLReader nowhere("/there is no such file");
    EXPECT_EQ(btnClass.ReadCommonSpecOfBtnClassByXML("", nowhere, 5, rpLink), CXMLReader::READXML_NOELEMENT);
    EXPECT_EQ(btnClass.ReadFixedSpecOfBtnClassByXML(nowhere), CXMLReader::READXML_NOELEMENT);
    EXPECT_EQ(btnClass.ReadChildElementPartOfSpecByXML("", nowhere, FIXED), CXMLReader::READXML_NOELEMENT);
    EXPECT_EQ(btnClass.GetBtnCount(), 3u);
}

TEST_F(VCBtnClassXML, EachFormKnowsItsChildren)
{
    const auto readChild = [&](const std::string& child, SCKZCoreCom::ESpecType specType) {
        return ReadText(child, [&](CXMLReader& reader) {
            return btnClass.ReadChildElementPartOfSpecByXML("", reader, specType);
        });
    };
    constexpr auto UNKNOWN = CXMLReader::READXML_UNKNOWNELEMENT;
    EXPECT_EQ(readChild("<IncBtn nextID=\"4000000005\"/>", COMMON), UNKNOWN);
    EXPECT_EQ(readChild("<IncBtn nextID=\"4000000005\"/>", FIXED), OK);
    EXPECT_EQ(readChild("<CllBtn nextID=\"0\"/>", FIXED), BAD);
    EXPECT_EQ(readChild("<DataBtn nextID=\"5\"/>", FIXED), UNKNOWN);
    EXPECT_EQ(readChild("<DataBtn nextID=\"5\"/>", COMMON), OK);
    EXPECT_EQ(readChild("<EmpValBtn disp=\"x\"/>", COMMON), OK) << "accepted and ignored";
    EXPECT_EQ(readChild("<EmpValBtn disp=\"x\"/>", FIXED), BAD);
    EXPECT_EQ(readChild("<Other/>", FIXED), UNKNOWN);
    EXPECT_EQ(readChild("<Btns><Btn/></Btns>", FIXED), OK);
}

// --- Reading the fixed form

TEST_F(VCBtnClassXML, ValuesThatASelectionOfAllDoesNotNameAreSelected)
{
    const std::string all = "<BtnClass id=\"1\" btnSelState=\"true\" newBtnMadeSelState=\"true\">" +
                            EMPVAL_SHOWN + "<Btns><Btn id=\"2\"/></Btns></BtnClass>";
    EXPECT_EQ(ReadFixed(all), OK);
    EXPECT_EQ(Selected(), (List{EMPVAL, 3})) << "the new value too";
    EXPECT_EQ(btnClass.GetSelBtnCount(), 2u);
    EXPECT_EQ(ReadFixed("<BtnClass id=\"1\" btnSelState=\"true\">" + EMPVAL_SHOWN +
                        "<Btns><Btn id=\"2\" sel=\"true\"/></Btns></BtnClass>"),
              OK);
    EXPECT_EQ(Selected(), List{2});
    EXPECT_EQ(btnClass.GetSelBtnCount(), 1u);
    EXPECT_TRUE(btnClass.IsBtnSelectiveState());
}

TEST_F(VCBtnClassXML, AButtonThatTheClassDoesNotHaveIsPassedOverAndTheRestIsRead)
{
    EXPECT_EQ(ReadFixed("<BtnClass id=\"1\">" + EMPVAL_SHOWN +
                        "<Btns><Btn id=\"77\" sel=\"true\"/><Btn sel=\"true\"/><Btn id=\"2\" sel=\"x\"/>"
                        "<Btn id=\"3\" sel=\"true\"/><Btn id=\"3\"/></Btns></BtnClass>"),
              OK);
    EXPECT_EQ(Selected(), List{3});
}

TEST_F(VCBtnClassXML, TheEmptyValueIsHiddenUnlessTheFormShowsIt)
{
    const DWORD inc = MakeInc({2, EMPVAL});
    const std::string shown = Fixed();
    const auto load = [&](const std::string& empVal) {
        std::string text = shown;
        return ReadFixed(text.replace(text.find(EMPVAL_SHOWN), EMPVAL_SHOWN.size(), empVal));
    };
    const auto members = [&] {
        List mmbBtnIDs;
        btnClass.GetMemberBtnIDListOfSpBtn(inc, mmbBtnIDs);
        return mmbBtnIDs;
    };
    EXPECT_EQ(load(EMPVAL_SHOWN), OK);
    EXPECT_TRUE(IsEmpValShown());
    EXPECT_EQ(members(), (List{2, EMPVAL}));
    for (const char* const hiding : {"", "<EmpValBtn/>", "<EmpValBtn disp=\"false\"/>",
                                     "<EmpValBtn disp=\"true\"/><EmpValBtn disp=\"false\"/>"}) {
        EXPECT_EQ(load(hiding), OK);
        EXPECT_FALSE(IsEmpValShown());
        EXPECT_EQ(members(), List{2});
        unsigned int visibleInfo = 0;
        btnClass.GetVisibleInfoOfBtn(EMPVAL, visibleInfo);
        EXPECT_EQ(visibleInfo, VISINFO_EMPVALNODISP);
    }
    EXPECT_EQ(load("<EmpValBtn disp=\"false\"/><EmpValBtn disp=\"true\"/>"), OK);
    EXPECT_TRUE(IsEmpValShown());
    EXPECT_EQ(load("<EmpValBtn disp=\"x\"/>"), OK) << "a bad child does not stop the class";
    EXPECT_FALSE(IsEmpValShown());
    EXPECT_EQ(ReadFixed("<BtnClass id=\"1\"/>"), BAD);
    EXPECT_TRUE(IsEmpValShown()) << "nothing was read that could hide it";
}

TEST_F(VCBtnClassXML, MembersKnowTheirButtonsAfterReading)
{
    const DWORD inc = MakeInc({2, 3});
    const std::string text = Fixed();
    ASSERT_EQ(ReadFixed(text), OK);
    List holders;
    EXPECT_TRUE(btnClass.GetSpBtnIDListIncludingSpecifiedBtn(2, holders));
    EXPECT_EQ(holders, List{inc});
    unsigned int visibleInfo = 0;
    btnClass.GetVisibleInfoOfBtn(2, visibleInfo);
    EXPECT_EQ(visibleInfo, VISINFO_INCMEMBER);
    EXPECT_EQ(Fixed(), text);
}

// --- Virtual classes

TEST_F(VCBtnClassXML, AVirtualClassIsWrittenWhereItIsDefined)
{
    const auto write = [](const CVirBtnClass& virBtnClass, SCKZCoreCom::ESpecType specType) {
        return WrittenText([&](CXMLWriter& writer) {
            return virBtnClass.WriteSpecOfBtnClassByXML("", writer, true, specType);
        });
    };
    CVirBtnClass common(SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN, "c", rpLink);
    EXPECT_EQ(write(common, COMMON),
              "<BtnClass id=\"1000000001\" type=\"Virtual\" name=\"c\"> <Btns> </Btns> </BtnClass>");
    EXPECT_EQ(write(common, FIXED), "<BtnClass id=\"1000000001\"> <Btns> </Btns> </BtnClass>");
    CVirBtnClass fixed(SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN, nullptr, rpLink);
    EXPECT_EQ(write(fixed, COMMON), "");
    EXPECT_EQ(write(fixed, FIXED),
              "<BtnClass id=\"2000000001\" type=\"Virtual\"> <Btns> </Btns> </BtnClass>");
    fixed.SetEffective(false);
    EXPECT_EQ(write(fixed, FIXED), "");
}

TEST_F(VCBtnClassXML, AVirtualClassIsReadFromWhereItIsDefined)
{
    CVirBtnClass virBtnClass(SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN, "old", rpLink);
    const auto read = [&](const std::string& attributes, SCKZCoreCom::ESpecType specType) {
        return ReadText("<BtnClass " + attributes +
                            "><VirIncBtn nextID=\"4080000005\" blankIDList=\"4080000003\"/>"
                            "<Btns/></BtnClass>",
                        [&](CXMLReader& reader) {
                            return virBtnClass.ReadSpecOfBtnClassByXML("", reader, specType, 9, rpLink);
                        });
    };
    EXPECT_EQ(read("id=\"2000000003\" type=\"Virtual\" name=\"new\"", FIXED), OK);
    EXPECT_EQ(virBtnClass.GetID(), 2000000003u);
    EXPECT_STREQ(virBtnClass.GetName(), "new");
    EXPECT_EQ(virBtnClass.GetRecCount(), 9u);
    EXPECT_EQ(read("id=\"2000000003\"", FIXED), OK);
    EXPECT_EQ(virBtnClass.GetName(), nullptr);
    EXPECT_EQ(read("id=\"2000000003\" name=\"x\"", COMMON), BAD);
    EXPECT_EQ(read("id=\"7\" name=\"x\"", COMMON), BAD);
    EXPECT_EQ(read("name=\"x\"", FIXED), BAD);
    EXPECT_EQ(read("id=\"1000000003\" name=\"shared\"", COMMON), OK);
    EXPECT_EQ(virBtnClass.GetID(), 1000000003u);
    EXPECT_EQ(read("id=\"1000000003\" name=\"other\"", FIXED), OK);
    EXPECT_STREQ(virBtnClass.GetName(), "shared") << "the definition is that of the common form";
}

} // namespace
