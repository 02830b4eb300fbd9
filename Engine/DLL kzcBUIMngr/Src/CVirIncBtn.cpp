#include "CVirIncBtn.h"

#include "SCSpecXML.h"

namespace NSKZ::NSKZCore {

CVirIncBtn::CVirIncBtn(DWORD btnID, EMmbBtnSelMth selMth, DWORD refID, bool isCommon)
    : VCSpBtn(btnID, selMth), refBtnClassID(refID), commonBtn(isCommon)
{}

void CVirIncBtn::Clear()
{
    VCSpBtn::Clear();
    refBtnClassID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
    commonBtn = false;
}

void CVirIncBtn::ClearOfFixedSpec()
{
    if (commonBtn)
        VCBtn::ClearOfFixedSpec();
    else
        Clear();
}

bool CVirIncBtn::WriteDefinitionByXML(CXMLWriter& writer, const std::vector<DWORD>& members,
                                      bool withSel) const
{
    SCSpecXML::CAttributes attributes;
    return attributes.AddNumber(STR_ATTRNAME_REFBTNCLASSID, refBtnClassID) &&
           VCSpBtn::WriteFixedSpecByXML(writer, STR_ATTRVALUE_TYPE_VIRINC, STRLEN_ATTRVALUE_TYPE_VIRINC,
                                        attributes.Get(), members, withSel);
}

bool CVirIncBtn::WriteFixedSpecByXML(CXMLWriter& writer, bool defaultSel) const
{
    return commonBtn ? WriteSelectionByXML(writer, defaultSel)
                     : WriteDefinitionByXML(writer, mmbBtnIDList, sel);
}

bool CVirIncBtn::WriteCommonSpecByXML(const char*, CXMLWriter& writer, bool) const
{
    return !commonBtn || WriteDefinitionByXML(writer, mmbBtnIDList, false);
}

CXMLReader::EMthRetOfReadXML CVirIncBtn::ReadFixedSpecByXML(CXMLReader& reader)
{
    if (commonBtn)
        return ReadSpecOfCurrentElement(reader, SCKZCoreCom::SPECTYPE_FIXED);
    const char* tag = nullptr;
    DWORD tagLen = 0;
    if (!reader.GetCurrentElementName(tag, tagLen))
        return CXMLReader::READXML_NOELEMENT;
    Attributes attributes(reader.GetAttributes());
    DWORD refID = SCBUICoreCom::BTNCLS_ID_UNSETTING;
    if (!SCSpecXML::TakeID(attributes, STR_ATTRNAME_REFBTNCLASSID, refID))
        return CXMLReader::READXML_BADFORMAT;
    const CXMLReader::EMthRetOfReadXML result = ReadFixedSpecCommon(reader, attributes);
    if (result == CXMLReader::READXML_OK)
        refBtnClassID = refID;
    return result;
}

CXMLReader::EMthRetOfReadXML CVirIncBtn::ReadCommonSpecByXML(const char*, CXMLReader& reader)
{
    if (!commonBtn)
        return CXMLReader::READXML_BADFORMAT;
    commonBtn = false; // read as that of a fixed class is
    const CXMLReader::EMthRetOfReadXML result = ReadFixedSpecByXML(reader);
    commonBtn = true;
    return result;
}

SCBUICoreCom::EBtnType CVirIncBtn::GetType() const
{
    return SCBUICoreCom::BTNTYPE_VIRINC;
}

std::unique_ptr<VCBtn> CVirIncBtn::Clone() const
{
    auto clone = std::make_unique<CVirIncBtn>(id, mmbBtnSelMth, refBtnClassID, commonBtn);
    clone->CopySpBtn(*this);
    return clone;
}

} // namespace NSKZ::NSKZCore
