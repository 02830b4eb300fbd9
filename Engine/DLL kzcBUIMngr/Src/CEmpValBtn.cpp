#include "CEmpValBtn.h"

namespace NSKZ::NSKZCore {

CEmpValBtn::CEmpValBtn(DWORD btnID) : VCBtn(btnID, nullptr) {}

bool CEmpValBtn::WriteFixedSpecByXML(CXMLWriter& writer, bool defaultSel) const
{
    return WriteSelectionByXML(writer, defaultSel);
}

bool CEmpValBtn::WriteCommonSpecByXML(const char*, CXMLWriter& writer, bool) const
{
    return WriteSrcBtnByXML(writer, STR_ATTRVALUE_TYPE_EMPVAL, STRLEN_ATTRVALUE_TYPE_EMPVAL);
}

CXMLReader::EMthRetOfReadXML CEmpValBtn::ReadFixedSpecByXML(CXMLReader& reader)
{
    return ReadSpecOfCurrentElement(reader, SCKZCoreCom::SPECTYPE_FIXED);
}

CXMLReader::EMthRetOfReadXML CEmpValBtn::ReadCommonSpecByXML(const char*, CXMLReader& reader)
{
    return ReadSpecOfCurrentElement(reader, SCKZCoreCom::SPECTYPE_COMMON);
}

SCBUICoreCom::EBtnType CEmpValBtn::GetType() const
{
    return SCBUICoreCom::BTNTYPE_EMPVAL;
}

std::unique_ptr<VCBtn> CEmpValBtn::Clone() const
{
    auto clone = std::make_unique<CEmpValBtn>(id);
    clone->Copy(*this);
    return clone;
}

} // namespace NSKZ::NSKZCore
