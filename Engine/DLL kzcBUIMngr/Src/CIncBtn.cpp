#include "CIncBtn.h"

#include "SCSpecXML.h"

namespace NSKZ::NSKZCore {

CIncBtn::CIncBtn(DWORD btnID, EMmbBtnSelMth selMth) : VCSpBtn(btnID, selMth) {}

void CIncBtn::Clear()
{
    VCSpBtn::Clear();
    dispMember = false;
}

bool CIncBtn::WriteDefinitionByXML(CXMLWriter& writer, const std::vector<DWORD>& members, bool withSel) const
{
    SCSpecXML::CAttributes attributes;
    if (dispMember)
        attributes.AddTrue(STR_ATTRNAME_DISPMEMBER);
    return VCSpBtn::WriteFixedSpecByXML(writer, STR_ATTRVALUE_TYPE_INC, STRLEN_ATTRVALUE_TYPE_INC,
                                        attributes.Get(), members, withSel);
}

CXMLReader::EMthRetOfReadXML CIncBtn::ReadFixedSpecByXML(CXMLReader& reader)
{
    Attributes attributes(reader.GetAttributes());
    bool disp = false;
    if (SCSpecXML::TakeFlag(attributes, STR_ATTRNAME_DISPMEMBER, disp) == SCSpecXML::TAKEN_BAD)
        return CXMLReader::READXML_BADFORMAT;
    const CXMLReader::EMthRetOfReadXML result = ReadFixedSpecCommon(reader, attributes);
    if (result == CXMLReader::READXML_OK)
        dispMember = disp;
    return result;
}

SCBUICoreCom::EBtnType CIncBtn::GetType() const
{
    return SCBUICoreCom::BTNTYPE_INC;
}

std::unique_ptr<VCBtn> CIncBtn::Clone() const
{
    auto clone = std::make_unique<CIncBtn>(id, mmbBtnSelMth);
    clone->CopySpBtn(*this);
    clone->dispMember = dispMember;
    return clone;
}

} // namespace NSKZ::NSKZCore
