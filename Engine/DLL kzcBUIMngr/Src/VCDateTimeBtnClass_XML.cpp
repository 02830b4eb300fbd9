// The display form and the groups of a class of dates or times in its fixed form.

#include "VCDateTimeBtnClass.h"

#include "SCSpecXML.h"

namespace NSKZ::NSKZCore {

bool VCDateTimeBtnClass::WriteFurtherFixedElementsByXML(CXMLWriter& writer) const
{
    if (!HasDispForm())
        return true;
    const SGroupElements names = GetGroupElements();
    Attributes attributesOfForm;
    if (!GetDispFormAttributes(attributesOfForm) ||
        !writer.PutStartTag(names.ofAll, names.ofAllLen, attributesOfForm))
        return false;
    for (const auto& [btnID, date] : dateOfSysCllBtn) {
        SCSpecXML::CAttributes attributes;
        if (!attributes.AddNumber(STR_ATTRNAME_ID, btnID) ||
            !writer.PutStartTag(names.ofOne, names.ofOneLen, attributes.Get()) ||
            !date->WriteSpecByXML(writer) || !writer.PutEndTag(names.ofOne, names.ofOneLen))
            return false;
    }
    return writer.PutEndTag(names.ofAll, names.ofAllLen);
}

VCBtnClass::EMthRetOfReadXML
VCDateTimeBtnClass::ReadStartTagPartOfSpecByXML(const char* tag, DWORD tagLen, Attributes& attributes,
                                                SCKZCoreCom::ESpecType specType, DWORD recCountOfEnv,
                                                const std::unique_ptr<IRpLink>& rpLinkOfEnv)
{
    const EMthRetOfReadXML result = VCSrcBtnClass::ReadStartTagPartOfSpecByXML(
        tag, tagLen, attributes, specType, recCountOfEnv, rpLinkOfEnv);
    if (result == CXMLReader::READXML_OK)
        UnsetDispForm();
    return result;
}

VCBtnClass::EMthRetOfReadXML
VCDateTimeBtnClass::ReadChildElementPartOfSpecByXML(const char* folder, CXMLReader& reader,
                                                    SCKZCoreCom::ESpecType specType)
{
    const SGroupElements names = GetGroupElements();
    const char* name = nullptr;
    DWORD nameLen = 0;
    if (specType == SCKZCoreCom::SPECTYPE_COMMON || !reader.GetCurrentElementName(name, nameLen) ||
        !IXMLIO::IsSameText(name, nameLen, names.ofAll, names.ofAllLen))
        return VCSrcBtnClass::ReadChildElementPartOfSpecByXML(folder, reader, specType);
    if (!TakeDispFormFrom(reader.GetAttributes()))
        return CXMLReader::READXML_BADFORMAT;
    return SCSpecXML::ReadChildren(reader, CXMLReader::READXML_OK,
                                   [this, &reader, &names] { return ReadGroup(reader, names); });
}

VCBtnClass::EMthRetOfReadXML VCDateTimeBtnClass::ReadGroup(CXMLReader& reader, const SGroupElements& names)
{
    const char* name = nullptr;
    DWORD nameLen = 0;
    if (!reader.GetCurrentElementName(name, nameLen) ||
        !IXMLIO::IsSameText(name, nameLen, names.ofOne, names.ofOneLen))
        return CXMLReader::READXML_UNKNOWNELEMENT;
    Attributes attributes(reader.GetAttributes());
    DWORD btnID = SCBUICoreCom::BTN_ID_UNSETTING;
    const bool hasID = SCSpecXML::TakeID(attributes, STR_ATTRNAME_ID, btnID);
    std::unique_ptr<VCDate> date;
    const EMthRetOfReadXML walked = SCSpecXML::ReadChildren(reader, CXMLReader::READXML_BADFORMAT, [&] {
        if (date == nullptr)
            date = VCDate::CreateDateObject(reader);
        return CXMLReader::READXML_OK;
    });
    if (walked != CXMLReader::READXML_OK)
        return walked;
    const VCSpBtn* const spBtn = SCBUICoreCom::IsCllBtn(btnID) ? FindSpBtn(btnID) : nullptr;
    unsigned long long number = 0;
    if (!hasID || date == nullptr || !GetDateNumeric(*date, GetCriteria(), number) || spBtn == nullptr ||
        spBtn->mmbBtnSelMth != VCSpBtn::MMBBTNSELMTH_SELECT || IsSystemMngrSpBtn(btnID))
        return CXMLReader::READXML_BADFORMAT;
    dateOfSysCllBtn.emplace(btnID, std::move(date)); // what is listed is known here
    btnOfDateNum.Insert(number, btnID);
    return CXMLReader::READXML_OK;
}

} // namespace NSKZ::NSKZCore
