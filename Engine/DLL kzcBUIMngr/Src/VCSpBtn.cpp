#include "VCSpBtn.h"

#include "ECAbnormalData.h"
#include "SCBUICoreStrDef.h"
#include "SCSpecXML.h"
#include "VCDate.h"

#include <algorithm>

namespace NSKZ::NSKZCore {

VCSpBtn::VCSpBtn(DWORD btnID, EMmbBtnSelMth selMth)
    : VCBtn(btnID, nullptr), mmbBtnSelMth(selMth), createTime(GetPresentTime()), updateTime(createTime)
{}

VCSpBtn::~VCSpBtn() = default;

void VCSpBtn::Clear()
{
    VCBtn::Clear();
    mmbBtnIDList.clear();
    effective = true;
    mmbBtnSelMth = MMBBTNSELMTH_SELECT;
    mmbBtnCnd.reset();
    createTime = 0;
    updateTime = 0;
    isRowOutdated = false;
}

void VCSpBtn::ClearOfFixedSpec()
{
    Clear();
}

bool VCSpBtn::WriteFixedSpecByXML(CXMLWriter& writer, bool) const
{
    return WriteDefinitionByXML(writer, mmbBtnIDList, sel);
}

bool VCSpBtn::WriteCommonSpecByXML(const char*, CXMLWriter&, bool) const
{
    return true;
}

CXMLReader::EMthRetOfReadXML VCSpBtn::ReadCommonSpecByXML(const char*, CXMLReader&)
{
    return CXMLReader::READXML_BADFORMAT;
}

bool VCSpBtn::WriteFixedSpecByXML(CXMLWriter& writer, const char* typeWord, DWORD typeWordLen,
                                  const Attributes& attributesOfKind, const std::vector<DWORD>& members,
                                  bool withSel) const
{
    if (!effective)
        return true;
    const char* const shownText = GetShownText();
    SCSpecXML::CAttributes attributes;
    attributes.Add(attributesOfKind);
    attributes.AddText(STR_ATTRNAME_ALIAS, shownText == nullptr ? "" : shownText);
    const auto addTime = [&attributes](const auto& attrName, std::int64_t time) {
        char text[256];
        if (!VCDate::ConvertDateIntoStringOfGMT(time, VCDate::STR_FORMAT_DATE, text, sizeof text)) {
            SetLastError(ERROR_INVALID_DATA);
            return false;
        }
        attributes.AddKept(attrName, text);
        return true;
    };
    if (!addTime(STR_ATTRNAME_CREATETIME, createTime) || !addTime(STR_ATTRNAME_UPDATETIME, updateTime))
        return false;
    const IXMLIO::SAttribute typeAttr{STR_ATTRNAME_TYPE, STRLEN_ATTRNAME_TYPE, typeWord, typeWordLen};
    if (!WriteSpecByXML(writer, attributes.Get(), &typeAttr, SCKZCoreCom::SPECTYPE_FIXED, ELEMENTPART_START,
                        withSel))
        return false;

    SCSpecXML::CAttributes ofMembers;
    switch (mmbBtnSelMth) {
    case MMBBTNSELMTH_SELECT:
        ofMembers.AddText(STR_ATTRNAME_SELMETHOD, STR_ATTRVALUE_SELMETHOD_SELECT);
        if (!ofMembers.AddNumbers(STR_ATTRNAME_IDLIST, members))
            return false;
        break;
    case MMBBTNSELMTH_CONDITION:
        ofMembers.AddText(STR_ATTRNAME_SELMETHOD, STR_ATTRVALUE_SELMETHOD_CONDITION);
        break;
    default:
        throw ECAbnormalData(SCBUICoreStrDef::MSG_UNKNOWN_MMBBTNSELMTH, "Src/VCSpBtn",
                             "NSKZ::NSKZCore::VCSpBtn::WriteFixedSpecByXML", 180);
    }
    return writer.PutEmptyElement(STR_ELENAME_MEMBERBTN, STRLEN_ELENAME_MEMBERBTN, ofMembers.Get()) &&
           WriteSpecByXML(writer, {}, nullptr, SCKZCoreCom::SPECTYPE_FIXED, ELEMENTPART_END);
}

CXMLReader::EMthRetOfReadXML VCSpBtn::ReadFixedSpecCommon(CXMLReader& reader, Attributes& attributes)
{
    const char* tag = nullptr;
    DWORD tagLen = 0;
    if (!reader.GetCurrentElementName(tag, tagLen))
        return CXMLReader::READXML_NOELEMENT;
    const CXMLReader::EMthRetOfReadXML result =
        ReadSpecByXML(tag, tagLen, attributes, SCKZCoreCom::SPECTYPE_FIXED);
    if (result != CXMLReader::READXML_OK)
        return result;
    if (!SCSpecXML::TakeID(attributes, STR_ATTRNAME_ID, id))
        return CXMLReader::READXML_BADFORMAT;
    IXMLIO::SAttribute taken;
    if (SCSpecXML::TakeText(attributes, STR_ATTRNAME_ALIAS, taken) != SCSpecXML::TAKEN_OK)
        return CXMLReader::READXML_BADFORMAT;
    SetAlias(std::string(taken.value, taken.valueLen).c_str());
    const auto takeTime = [&attributes](const auto& attrName, std::int64_t& time) {
        IXMLIO::SAttribute attribute;
        long long read = 0;
        if (SCSpecXML::TakeText(attributes, attrName, attribute) != SCSpecXML::TAKEN_OK ||
            !VCDate::ConvertStringOfGMTIntoDate(attribute.value, attribute.valueLen, VCDate::STR_FORMAT_DATE,
                                                read))
            return false;
        time = read;
        return true;
    };
    if (!takeTime(STR_ATTRNAME_CREATETIME, createTime) || !takeTime(STR_ATTRNAME_UPDATETIME, updateTime))
        return CXMLReader::READXML_BADFORMAT;

    bool areMembersRead = false;
    const CXMLReader::EMthRetOfReadXML walked =
        SCSpecXML::ReadChildren(reader, CXMLReader::READXML_BADFORMAT, [&] {
            if (!areMembersRead && SCSpecXML::IsOnElement(reader, STR_ELENAME_MEMBERBTN))
                areMembersRead = ReadMembers(reader);
            return CXMLReader::READXML_OK;
        });
    return walked == CXMLReader::READXML_OK && !areMembersRead ? CXMLReader::READXML_BADFORMAT : walked;
}

bool VCSpBtn::ReadMembers(const CXMLReader& reader)
{
    Attributes attributes(reader.GetAttributes());
    IXMLIO::SAttribute word;
    if (SCSpecXML::TakeText(attributes, STR_ATTRNAME_SELMETHOD, word) != SCSpecXML::TAKEN_OK)
        return false;
    if (IXMLIO::IsSameText(word.value, word.valueLen, STR_ATTRVALUE_SELMETHOD_CONDITION,
                           STRLEN_ATTRVALUE_SELMETHOD_CONDITION)) {
        mmbBtnSelMth = MMBBTNSELMTH_CONDITION;
        return true;
    }
    if (!IXMLIO::IsSameText(word.value, word.valueLen, STR_ATTRVALUE_SELMETHOD_SELECT,
                            STRLEN_ATTRVALUE_SELMETHOD_SELECT) ||
        SCSpecXML::TakeNumbers(attributes, STR_ATTRNAME_IDLIST, mmbBtnIDList) != SCSpecXML::TAKEN_OK)
        return false;
    mmbBtnSelMth = MMBBTNSELMTH_SELECT;
    if (mmbBtnIDList.empty())
        visibleInfo |= VISINFO_NOMEMBER;
    return true;
}

bool VCSpBtn::HasMember(DWORD btnID) const noexcept
{
    return std::find(mmbBtnIDList.begin(), mmbBtnIDList.end(), btnID) != mmbBtnIDList.end();
}

std::int64_t VCSpBtn::GetPresentTime() noexcept
{
    return _time64(nullptr);
}

void VCSpBtn::CopySpBtn(const VCSpBtn& other)
{
    std::vector<DWORD> members(other.mmbBtnIDList);
    BtnCndPtr cnd(other.mmbBtnCnd == nullptr ? nullptr : other.mmbBtnCnd->CreateClone());
    VCBtn::Copy(other);
    effective = other.effective;
    mmbBtnSelMth = other.mmbBtnSelMth;
    mmbBtnIDList = std::move(members);
    mmbBtnCnd = std::move(cnd);
    isRowOutdated = other.isRowOutdated;
}

} // namespace NSKZ::NSKZCore
