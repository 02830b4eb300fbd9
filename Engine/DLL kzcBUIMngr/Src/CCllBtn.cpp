#include "CCllBtn.h"

namespace NSKZ::NSKZCore {

CCllBtn::CCllBtn(DWORD btnID, EMmbBtnSelMth selMth) : VCSpBtn(btnID, selMth) {}

bool CCllBtn::WriteDefinitionByXML(CXMLWriter& writer, const std::vector<DWORD>& members, bool withSel) const
{
    return VCSpBtn::WriteFixedSpecByXML(writer, STR_ATTRVALUE_TYPE_CLL, STRLEN_ATTRVALUE_TYPE_CLL, {},
                                        members, withSel);
}

CXMLReader::EMthRetOfReadXML CCllBtn::ReadFixedSpecByXML(CXMLReader& reader)
{
    Attributes attributes(reader.GetAttributes());
    return ReadFixedSpecCommon(reader, attributes);
}

SCBUICoreCom::EBtnType CCllBtn::GetType() const
{
    return SCBUICoreCom::BTNTYPE_CLL;
}

std::unique_ptr<VCBtn> CCllBtn::Clone() const
{
    auto clone = std::make_unique<CCllBtn>(id, mmbBtnSelMth);
    clone->CopySpBtn(*this);
    return clone;
}

} // namespace NSKZ::NSKZCore
