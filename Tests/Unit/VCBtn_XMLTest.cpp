// Buttons of all kinds in their saved forms.

#include "CBtn.h"
#include "CCllBtn.h"
#include "CEmpValBtn.h"
#include "CIncBtn.h"
#include "CVirIncBtn.h"
#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "SCKZCoreStrDef.h"
#include "Support/CTestBtnCnd.h"
#include "Support/XMLText.h"

#include <gtest/gtest.h>

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

constexpr DWORD INC = SCBUICoreCom::BTN_ID_INC_BEGIN;
constexpr DWORD CLL = SCBUICoreCom::BTN_ID_CLL_BEGIN;
constexpr DWORD VIRINC = SCBUICoreCom::BTN_ID_VIRINC_BEGIN;
constexpr auto SELECT = VCSpBtn::MMBBTNSELMTH_SELECT;
constexpr auto CONDITION = VCSpBtn::MMBBTNSELMTH_CONDITION;
constexpr auto OK = CXMLReader::READXML_OK;
constexpr auto BAD = CXMLReader::READXML_BADFORMAT;
constexpr auto NONE = CXMLReader::READXML_NOELEMENT;

std::string Common(const VCBtn& btn)
{
    return WrittenText([&](CXMLWriter& writer) { return btn.WriteCommonSpecByXML("", writer, true); });
}
std::string Fixed(const VCBtn& btn, bool defaultSel = false)
{
    return WrittenText([&](CXMLWriter& writer) { return btn.WriteFixedSpecByXML(writer, defaultSel); });
}
CXMLReader::EMthRetOfReadXML ReadCommon(VCBtn& btn, const std::string& text)
{
    return ReadText(text, [&](CXMLReader& reader) { return btn.ReadCommonSpecByXML("", reader); });
}
CXMLReader::EMthRetOfReadXML ReadFixed(VCBtn& btn, const std::string& text)
{
    return ReadText(text, [&](CXMLReader& reader) { return btn.ReadFixedSpecByXML(reader); });
}
// The result on a reader that stands on no element.
template <class TRead>
CXMLReader::EMthRetOfReadXML ReadNowhere(const TRead& read)
{
    CXMLReader reader("/there is no such file");
    return read(reader);
}
const std::string TIMES = "createTime=\"2024/07/15 01:02:03\" updateTime=\"2024/07/16 01:02:03\"";
constexpr std::int64_t CREATED = 1721005323;
std::string SpBtn(const std::string& attributes, const std::string& children)
{
    return "<Btn " + attributes + " alias=\"a\" " + TIMES + ">" + children + "</Btn>";
}
template <class TBtn>
void MakeTimesKnown(TBtn& btn)
{
    btn.createTime = CREATED;
    btn.updateTime = CREATED + 24 * 60 * 60;
}

class CProbeBtn final : public VCBtn
{
public:
    using VCBtn::ELEMENTPART_EMPTY;
    using VCBtn::ELEMENTPART_END;
    using VCBtn::ReadSpecByXML;
    using VCBtn::VCBtn;
    using VCBtn::WriteSpecByXML;
    bool WriteFixedSpecByXML(CXMLWriter&, bool) const override { return true; }
    bool WriteCommonSpecByXML(const char*, CXMLWriter&, bool) const override { return true; }
    CXMLReader::EMthRetOfReadXML ReadFixedSpecByXML(CXMLReader&) override { return OK; }
    CXMLReader::EMthRetOfReadXML ReadCommonSpecByXML(const char*, CXMLReader&) override { return OK; }
    SCBUICoreCom::EBtnType GetType() const override { return SCBUICoreCom::BTNTYPE_NORMAL; }
    std::unique_ptr<VCBtn> Clone() const override { return nullptr; }
};

// --- Source buttons

TEST(VCBtnXML, ANormalButtonIsSavedWithItsNameAndAnAliasOfItsOwn)
{
    CBtn btn(7, "tea & milk");
    EXPECT_EQ(Common(btn), "<Btn id=\"7\" type=\"Data\" name=\"tea &amp; milk\"/>");
    btn.SetAlias("drink");
    EXPECT_EQ(Common(btn), "<Btn id=\"7\" type=\"Data\" name=\"tea &amp; milk\" alias=\"drink\"/>");
}

TEST(VCBtnXML, TheEmptyValueButtonIsSavedWithItsAliasAndNoName)
{
    CEmpValBtn btn(SCBUICoreCom::BTN_ID_EMPVAL);
    btn.SetAlias("(none)");
    EXPECT_EQ(Common(btn), "<Btn id=\"1\" type=\"EmpVal\" alias=\"(none)\"/>");
}

TEST(VCBtnXML, OnlyASelectionThatDiffersFromTheDefaultIsSaved)
{
    CBtn btn(7, "tea");
    EXPECT_EQ(Fixed(btn, false), "");
    EXPECT_EQ(Fixed(btn, true), "<Btn id=\"7\"/>");
    btn.sel = true;
    EXPECT_EQ(Fixed(btn, false), "<Btn id=\"7\" sel=\"true\"/>");
    EXPECT_EQ(Fixed(btn, true), "");
    CEmpValBtn emptyBtn(SCBUICoreCom::BTN_ID_EMPVAL);
    emptyBtn.sel = true;
    EXPECT_EQ(Fixed(emptyBtn, false), "<Btn id=\"1\" sel=\"true\"/>");
}

TEST(VCBtnXML, ACommonElementIsReadInPlaceOfEverything)
{
    CBtn btn(9, "old");
    btn.sel = true;
    btn.visibleInfo = VISINFO_NOREC;
    EXPECT_EQ(ReadCommon(btn, "<Btn id=\"7\" name=\"tea\"/>"), OK);
    EXPECT_EQ(btn.id, 7u);
    EXPECT_STREQ(btn.name.get(), "tea");
    EXPECT_TRUE(btn.aliasIsName);
    EXPECT_FALSE(btn.sel);
    EXPECT_EQ(btn.visibleInfo, 0u);
    EXPECT_EQ(ReadCommon(btn, "<Btn id=\"8\" name=\"tea\" alias=\"drink\"/>"), OK);
    EXPECT_FALSE(btn.aliasIsName);
    EXPECT_STREQ(btn.GetShownText(), "drink");
    CEmpValBtn emptyBtn(SCBUICoreCom::BTN_ID_EMPVAL);
    EXPECT_EQ(ReadCommon(emptyBtn, "<Btn id=\"1\" type=\"EmpVal\" alias=\"(none)\"/>"), OK);
    EXPECT_EQ(emptyBtn.name, nullptr);
    EXPECT_STREQ(emptyBtn.GetShownText(), "(none)");
}

TEST(VCBtnXML, ACommonElementNeedsAnIdentifierThatIsANumberAndNot0)
{
    CBtn btn(9, "old");
    EXPECT_EQ(ReadCommon(btn, "<Btn name=\"tea\"/>"), BAD);
    EXPECT_EQ(ReadCommon(btn, "<Btn id=\"0\" name=\"tea\"/>"), BAD);
    EXPECT_EQ(ReadCommon(btn, "<Btn id=\"x\" name=\"tea\"/>"), BAD);
    EXPECT_EQ(ReadCommon(btn, "<Btn id=\"4294967296\" name=\"tea\"/>"), BAD);
    EXPECT_EQ(ReadCommon(btn, "<Button id=\"7\" name=\"tea\"/>"), BAD);
}

TEST(VCBtnXML, AFixedElementTellsTheSelectionAndWithoutItNone)
{
    CBtn btn(7, "tea");
    EXPECT_EQ(ReadFixed(btn, "<Btn id=\"7\" sel=\"true\"/>"), OK);
    EXPECT_TRUE(btn.sel);
    EXPECT_EQ(ReadFixed(btn, "<Btn id=\"7\"/>"), OK);
    EXPECT_FALSE(btn.sel);
    btn.sel = true;
    EXPECT_EQ(ReadFixed(btn, "<Btn id=\"7\" sel=\"false\"/>"), OK);
    EXPECT_FALSE(btn.sel);
    EXPECT_EQ(ReadFixed(btn, "<Btn id=\"7\" sel=\"True\"/>"), BAD);
    EXPECT_EQ(ReadFixed(btn, "<Btn id=\"7\" sel=\"\"/>"), BAD);
    EXPECT_STREQ(btn.name.get(), "tea") << "what the source data gives stays";
}

TEST(VCBtnXML, ReadingAFixedElementKeepsReferencesOfCommonVirtualClasses)
{
    CBtn btn(7, "tea");
    btn.backReferences = std::make_unique<VCBtn::SBackReferences>();
    btn.backReferences->spBtnIDsInClass.insert(INC);
    btn.backReferences->spBtnIDsOfOtherClass.insert({SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN, VIRINC});
    btn.backReferences->spBtnIDsOfOtherClass.insert({SCBUICoreCom::BTNCLS_ID_VIR_FIXED_BEGIN, VIRINC});
    EXPECT_EQ(ReadFixed(btn, "<Btn id=\"7\"/>"), OK);
    EXPECT_TRUE(btn.backReferences->spBtnIDsInClass.empty());
    ASSERT_EQ(btn.backReferences->spBtnIDsOfOtherClass.size(), 1u);
    EXPECT_EQ(btn.backReferences->spBtnIDsOfOtherClass.begin()->btnClassID,
              SCBUICoreCom::BTNCLS_ID_VIR_COMMON_BEGIN);
}

TEST(VCBtnXML, AReaderThatStandsOnNoElementIsTold)
{
    CBtn btn(7, "tea");
    CEmpValBtn emptyBtn(1);
    CIncBtn inc(INC, SELECT);
    CCllBtn cll(CLL, SELECT);
    CVirIncBtn fixedVir(VIRINC, SELECT, 1, false);
    CVirIncBtn commonVir(VIRINC, SELECT, 1, true);
    for (VCBtn* const each :
         std::initializer_list<VCBtn*>{&btn, &emptyBtn, &inc, &cll, &fixedVir, &commonVir}) {
        EXPECT_EQ(ReadNowhere([&](CXMLReader& reader) { return each->ReadFixedSpecByXML(reader); }), NONE);
    }
    for (VCBtn* const each : std::initializer_list<VCBtn*>{&btn, &emptyBtn, &commonVir}) {
        EXPECT_EQ(ReadNowhere([&](CXMLReader& reader) { return each->ReadCommonSpecByXML("", reader); }),
                  NONE);
    }
}

TEST(VCBtnXML, WhatWasReadIsBlankInTheList)
{
    CProbeBtn btn(7, "tea");
    std::vector<IXMLIO::SAttribute> attributes{MakeAttribute("id", "8"), MakeAttribute("other", "x"),
                                               MakeAttribute("name", "n")};
    EXPECT_EQ(btn.ReadSpecByXML("Btn", 3, attributes, SCKZCoreCom::SPECTYPE_COMMON), OK);
    EXPECT_EQ(attributes[0].nameLen, 0u);
    EXPECT_EQ(attributes[0].valueLen, 0u);
    EXPECT_EQ(attributes[1].nameLen, 5u);
    EXPECT_EQ(attributes[2].nameLen, 0u);
}

TEST(VCBtnXML, AnEndTagIsWrittenWithoutAnyLookAtTheButton)
{
    CProbeBtn btn(7, "tea");
    EXPECT_EQ(WrittenText([&](CXMLWriter& writer) {
                  PutStart(writer, "Btn");
                  return btn.WriteSpecByXML(writer, {}, nullptr, static_cast<SCKZCoreCom::ESpecType>(9),
                                            CProbeBtn::ELEMENTPART_END);
              }),
              "<Btn> </Btn>");
}

TEST(VCBtnXML, AnUnknownFormIsAProgrammingError)
{
    const CProbeBtn btn(7, "tea");
    try {
        WrittenText([&](CXMLWriter& writer) {
            return btn.WriteSpecByXML(writer, {}, nullptr, static_cast<SCKZCoreCom::ESpecType>(3),
                                      CProbeBtn::ELEMENTPART_EMPTY);
        });
        FAIL();
    } catch (const ECAbnormalData& exception) {
        EXPECT_STREQ(exception.GetMessageText(), SCKZCoreStrDef::MSG_UNKNOWN_SPECTYPE);
        EXPECT_STREQ(exception.GetFile(), "Src/VCBtn");
        EXPECT_STREQ(exception.GetFunction(), "NSKZ::NSKZCore::VCBtn::WriteSpecByXML");
        EXPECT_EQ(exception.GetLine(), 641);
    }
}

TEST(VCBtnXML, ATextThatXMLCannotHoldMakesTheWritingFail)
{
    EXPECT_EQ(Common(CBtn(7, "\x01")), "false");
}

// --- Special buttons

TEST(VCSpBtnXML, AnIncButtonIsSavedWithAllThatUsersFixedOfIt)
{
    CIncBtn btn(INC, SELECT);
    MakeTimesKnown(btn);
    btn.SetAlias("best");
    btn.mmbBtnIDList = {5, 2, 4};
    EXPECT_EQ(Fixed(btn), "<Btn id=\"4000000002\" type=\"Inc\" alias=\"best\" " + TIMES +
                              "> <MemberBtn selMethod=\"Select\" idList=\"5,2,4\"/> </Btn>");
    btn.sel = true;
    btn.dispMember = true;
    EXPECT_EQ(Fixed(btn, true),
              "<Btn id=\"4000000002\" type=\"Inc\" sel=\"true\" dispMember=\"true\" alias=\"best\" " + TIMES +
                  "> <MemberBtn selMethod=\"Select\" idList=\"5,2,4\"/> </Btn>");
}

TEST(VCSpBtnXML, OfAConditionOnlyThatThereIsOneIsSaved)
{
    CCllBtn btn(CLL, CONDITION);
    MakeTimesKnown(btn);
    btn.SetAlias("top");
    btn.mmbBtnIDList = {5, 2, 4};
    EXPECT_EQ(Fixed(btn), "<Btn id=\"4160000002\" type=\"Cll\" alias=\"top\" " + TIMES +
                              "> <MemberBtn selMethod=\"Condition\"/> </Btn>");
}

TEST(VCSpBtnXML, AnIneffectiveButtonIsNotSaved)
{
    CIncBtn btn(INC, SELECT);
    btn.SetAlias("best");
    btn.effective = false;
    EXPECT_EQ(Fixed(btn), "");
}

TEST(VCSpBtnXML, SpecialButtonsHaveNoCommonForm)
{
    CIncBtn btn(INC, SELECT);
    EXPECT_EQ(Common(btn), "");
    EXPECT_EQ(ReadCommon(btn, "<Btn id=\"4000000002\" name=\"x\"/>"), BAD);
}

TEST(VCSpBtnXML, AMomentOutsideOfAllYearsCannotBeSaved)
{
    CIncBtn btn(INC, SELECT);
    btn.SetAlias("best");
    btn.createTime = INT64_MAX;
    SetLastError(0);
    EXPECT_EQ(Fixed(btn), "false");
    EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
}

TEST(VCSpBtnXML, AnUnknownWayToPickMembersIsAProgrammingError)
{
    CIncBtn btn(INC, static_cast<VCSpBtn::EMmbBtnSelMth>(3));
    btn.SetAlias("best");
    try {
        Fixed(btn);
        FAIL();
    } catch (const ECAbnormalData& exception) {
        EXPECT_STREQ(exception.GetMessageText(), SCBUICoreStrDef::MSG_UNKNOWN_MMBBTNSELMTH);
        EXPECT_STREQ(exception.GetFile(), "Src/VCSpBtn");
        EXPECT_STREQ(exception.GetFunction(), "NSKZ::NSKZCore::VCSpBtn::WriteFixedSpecByXML");
        EXPECT_EQ(exception.GetLine(), 180);
    }
}

TEST(VCSpBtnXML, AnElementIsReadInPlaceOfEverything)
{
    CIncBtn btn(INC, CONDITION);
    btn.dispMember = true;
    btn.mmbBtnIDList = {9};
    btn.mmbBtnCnd.reset(CTestBtnCnd({2}).CreateClone());
    EXPECT_EQ(ReadFixed(btn, SpBtn("id=\"4000000003\" sel=\"true\"",
                                   "<MemberBtn selMethod=\"Select\" idList=\"5,2\"/>")),
              OK);
    EXPECT_EQ(btn.id, INC + 1);
    EXPECT_TRUE(btn.sel);
    EXPECT_FALSE(btn.dispMember) << "absent means false";
    EXPECT_STREQ(btn.GetShownText(), "a");
    EXPECT_EQ(btn.createTime, CREATED);
    EXPECT_EQ(btn.updateTime, CREATED + 24 * 60 * 60);
    EXPECT_EQ(btn.mmbBtnSelMth, SELECT);
    EXPECT_EQ(btn.mmbBtnIDList, (std::vector<DWORD>{5, 2}));
    EXPECT_EQ(btn.mmbBtnCnd, nullptr);
    EXPECT_EQ(btn.visibleInfo, 0u);
    EXPECT_EQ(ReadFixed(btn, SpBtn("id=\"4000000003\" dispMember=\"true\"",
                                   "<MemberBtn selMethod=\"Condition\" idList=\"5\"/>")),
              OK);
    EXPECT_TRUE(btn.dispMember);
    EXPECT_EQ(btn.mmbBtnSelMth, CONDITION);
    EXPECT_TRUE(btn.mmbBtnIDList.empty());
}

TEST(VCSpBtnXML, AButtonWithoutMembersComesBackHiddenForThat)
{
    CIncBtn btn(INC, SELECT);
    MakeTimesKnown(btn);
    btn.SetAlias("a");
    const std::string text = Fixed(btn);
    EXPECT_NE(text.find("idList=\"\""), std::string::npos);
    CIncBtn back(INC, SELECT);
    EXPECT_EQ(ReadFixed(back, text), OK);
    EXPECT_TRUE(back.mmbBtnIDList.empty());
    EXPECT_EQ(back.visibleInfo, VISINFO_NOMEMBER);
}

TEST(VCSpBtnXML, WhatMustBeThereAndIsNotMakesTheElementBad)
{
    CIncBtn btn(INC, SELECT);
    const std::string members = "<MemberBtn selMethod=\"Select\" idList=\"5\"/>";
    const auto read = [&](const std::string& attributes, const std::string& children) {
        return ReadFixed(btn, "<Btn " + attributes + ">" + children + "</Btn>");
    };
    EXPECT_EQ(read("id=\"4000000002\" alias=\"a\" " + TIMES, members), OK);
    EXPECT_EQ(read("alias=\"a\" " + TIMES, members), BAD);
    EXPECT_EQ(read("id=\"0\" alias=\"a\" " + TIMES, members), BAD);
    EXPECT_EQ(read("id=\"4000000002\" " + TIMES, members), BAD);
    EXPECT_EQ(read("id=\"4000000002\" alias=\"a\" createTime=\"2024/07/15 01:02:03\"", members), BAD);
    EXPECT_EQ(
        read("id=\"4000000002\" alias=\"a\" createTime=\"2024/13/15 01:02:03\" updateTime=\"\"", members),
        BAD);
    EXPECT_EQ(read("id=\"4000000002\" sel=\"1\" alias=\"a\" " + TIMES, members), BAD);
    EXPECT_EQ(read("id=\"4000000002\" dispMember=\"1\" alias=\"a\" " + TIMES, members), BAD);
    EXPECT_EQ(read("id=\"4000000002\" alias=\"a\" " + TIMES, ""), BAD) << "no child";
    EXPECT_EQ(read("id=\"4000000002\" alias=\"a\" " + TIMES, "<Other/>"), BAD);
    EXPECT_EQ(ReadFixed(btn, "<Other id=\"4000000002\"/>"), BAD);
}

TEST(VCSpBtnXML, MembersAreLookedForUntilAnElementTellsThem)
{
    CCllBtn btn(CLL, SELECT);
    EXPECT_EQ(ReadFixed(btn, SpBtn("id=\"4160000002\"",
                                   "<Other><MemberBtn selMethod=\"Select\" idList=\"1\"/></Other>"
                                   "<MemberBtn/><MemberBtn selMethod=\"Sorted\"/>"
                                   "<MemberBtn selMethod=\"Select\"/>"
                                   "<MemberBtn selMethod=\"Select\" idList=\"1,,2\"/>"
                                   "<MemberBtn selMethod=\"Select\" idList=\"7\"><Inner/></MemberBtn>"
                                   "<MemberBtn selMethod=\"Select\" idList=\"8\"/>")),
              OK);
    EXPECT_EQ(btn.mmbBtnIDList, (std::vector<DWORD>{7}));
}

TEST(VCSpBtnXML, ADocumentThatEndsInAButtonFails)
{
    CCllBtn btn(CLL, SELECT);
    const auto result = ReadText("<Btn id=\"4160000002\" alias=\"a\" " + TIMES + "><MemberBtn/></Other>",
                                 [&](CXMLReader& reader) { return btn.ReadFixedSpecByXML(reader); });
    EXPECT_EQ(result, CXMLReader::READXML_FAILURE);
}

// --- Virtual inc buttons

TEST(CVirIncBtnXML, AButtonOfAFixedClassIsInTheFixedFormWithItsClass)
{
    CVirIncBtn btn(VIRINC, SELECT, 3, false);
    MakeTimesKnown(btn);
    btn.SetAlias("group");
    btn.mmbBtnIDList = {4, 2};
    btn.sel = true;
    EXPECT_EQ(Fixed(btn, true),
              "<Btn id=\"4080000002\" type=\"VirInc\" sel=\"true\" refBtnClassID=\"3\" alias=\"group\" " +
                  TIMES + "> <MemberBtn selMethod=\"Select\" idList=\"4,2\"/> </Btn>");
    EXPECT_EQ(Common(btn), "");
    EXPECT_EQ(ReadCommon(btn, SpBtn("id=\"4080000002\" refBtnClassID=\"3\"", "<MemberBtn/>")), BAD);
}

TEST(CVirIncBtnXML, AButtonOfACommonClassIsDefinedInTheCommonForm)
{
    CVirIncBtn btn(VIRINC, SELECT, 3, true);
    MakeTimesKnown(btn);
    btn.SetAlias("group");
    btn.mmbBtnIDList = {4, 2};
    btn.sel = true;
    EXPECT_EQ(Common(btn), "<Btn id=\"4080000002\" type=\"VirInc\" refBtnClassID=\"3\" alias=\"group\" " +
                               TIMES + "> <MemberBtn selMethod=\"Select\" idList=\"4,2\"/> </Btn>");
    EXPECT_TRUE(btn.sel);
    EXPECT_TRUE(btn.commonBtn);
    EXPECT_EQ(Fixed(btn, true), "");
    EXPECT_EQ(Fixed(btn, false), "<Btn id=\"4080000002\" sel=\"true\"/>");
    btn.sel = false;
    EXPECT_EQ(Fixed(btn, true), "<Btn id=\"4080000002\"/>");
}

TEST(CVirIncBtnXML, ReadingGivesBackWhatWasWritten)
{
    for (const bool isCommon : {false, true}) {
        CVirIncBtn btn(VIRINC, SELECT, 9, isCommon);
        const std::string text = SpBtn("id=\"4080000007\" refBtnClassID=\"3\"",
                                       "<MemberBtn selMethod=\"Select\" idList=\"4,2\"/>");
        EXPECT_EQ(isCommon ? ReadCommon(btn, text) : ReadFixed(btn, text), OK);
        EXPECT_EQ(btn.id, VIRINC + 5);
        EXPECT_EQ(btn.refBtnClassID, 3u);
        EXPECT_EQ(btn.commonBtn, isCommon);
        EXPECT_EQ(btn.mmbBtnIDList, (std::vector<DWORD>{4, 2}));
    }
}

TEST(CVirIncBtnXML, WithoutAClassTheButtonIsRefusedUnchanged)
{
    for (const char* const ref : {"", "refBtnClassID=\"0\"", "refBtnClassID=\"x\""}) {
        CVirIncBtn btn(VIRINC, SELECT, 9, false);
        btn.mmbBtnIDList = {5};
        EXPECT_EQ(ReadFixed(btn, SpBtn("id=\"4080000007\" " + std::string(ref),
                                       "<MemberBtn selMethod=\"Select\" idList=\"4\"/>")),
                  BAD);
        EXPECT_EQ(btn.id, VIRINC);
        EXPECT_EQ(btn.refBtnClassID, 9u);
        EXPECT_EQ(btn.mmbBtnIDList, (std::vector<DWORD>{5}));
    }
}

TEST(CVirIncBtnXML, AButtonOfACommonClassTakesTheSelectionFromTheFixedForm)
{
    CVirIncBtn btn(VIRINC, SELECT, 9, true);
    btn.mmbBtnIDList = {5};
    EXPECT_EQ(ReadFixed(btn, "<Btn id=\"4080000002\" sel=\"true\" refBtnClassID=\"3\"/>"), OK);
    EXPECT_TRUE(btn.sel);
    EXPECT_EQ(btn.refBtnClassID, 9u);
    EXPECT_EQ(btn.mmbBtnIDList, (std::vector<DWORD>{5}));
    EXPECT_EQ(ReadFixed(btn, "<Btn id=\"4080000002\" sel=\"x\"/>"), BAD);
}

} // namespace
