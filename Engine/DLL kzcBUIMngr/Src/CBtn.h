#ifndef CBTN_H
#define CBTN_H

#include "VCBtn.h"

namespace NSKZ::NSKZCore {

// The button of one distinct non-empty value of a source field. Its class never destroys it while it lives
// itself, even if all records of the value go: the identifier, and what users built on it, survives.
class CBtn final : public VCBtn
{
public:
    using VCBtn::VCBtn;

    // The word for the type.
    static constexpr char STR_ATTRVALUE_TYPE_DATA[] = "Data";
    static constexpr DWORD STRLEN_ATTRVALUE_TYPE_DATA = sizeof STR_ATTRVALUE_TYPE_DATA - 1;

    bool WriteFixedSpecByXML(CXMLWriter& writer, bool defaultSel) const override;
    bool WriteCommonSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const override;
    CXMLReader::EMthRetOfReadXML ReadFixedSpecByXML(CXMLReader& reader) override;
    CXMLReader::EMthRetOfReadXML ReadCommonSpecByXML(const char* folder, CXMLReader& reader) override;
    SCBUICoreCom::EBtnType GetType() const override;
    std::unique_ptr<VCBtn> Clone() const override;
};

} // namespace NSKZ::NSKZCore

#endif
