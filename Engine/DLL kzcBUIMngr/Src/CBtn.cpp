#include "CBtn.h"

namespace NSKZ::NSKZCore {

bool CBtn::WriteFixedSpecByXML(CXMLWriter& writer, bool defaultSel) const
{
    return WriteSelectionByXML(writer, defaultSel);
}

bool CBtn::WriteCommonSpecByXML(const char*, CXMLWriter& writer, bool) const
{
    return WriteSrcBtnByXML(writer, STR_ATTRVALUE_TYPE_DATA, STRLEN_ATTRVALUE_TYPE_DATA);
}

CXMLReader::EMthRetOfReadXML CBtn::ReadFixedSpecByXML(CXMLReader& reader)
{
    return ReadSpecOfCurrentElement(reader, SCKZCoreCom::SPECTYPE_FIXED);
}

CXMLReader::EMthRetOfReadXML CBtn::ReadCommonSpecByXML(const char*, CXMLReader& reader)
{
    return ReadSpecOfCurrentElement(reader, SCKZCoreCom::SPECTYPE_COMMON);
}

SCBUICoreCom::EBtnType CBtn::GetType() const
{
    return SCBUICoreCom::BTNTYPE_NORMAL;
}

std::unique_ptr<VCBtn> CBtn::Clone() const
{
    auto clone = std::make_unique<CBtn>(id, nullptr);
    clone->Copy(*this);
    return clone;
}

} // namespace NSKZ::NSKZCore
