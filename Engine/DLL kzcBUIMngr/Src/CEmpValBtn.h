#ifndef CEMPVALBTN_H
#define CEMPVALBTN_H

#include "VCBtn.h"

namespace NSKZ::NSKZCore {

// The one button of a source class that stands for the empty value. Its identifier is BTN_ID_EMPVAL, and it
// has no name: what it shows is its alias.
class CEmpValBtn final : public VCBtn
{
public:
    // `id` is BTN_ID_EMPVAL; only reading a saved button or cloning begins with another.
    explicit CEmpValBtn(DWORD id);

    // The word for the type.
    static constexpr char STR_ATTRVALUE_TYPE_EMPVAL[] = "EmpVal";
    static constexpr DWORD STRLEN_ATTRVALUE_TYPE_EMPVAL = sizeof STR_ATTRVALUE_TYPE_EMPVAL - 1;

    bool WriteFixedSpecByXML(CXMLWriter& writer, bool defaultSel) const override;
    bool WriteCommonSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const override;
    CXMLReader::EMthRetOfReadXML ReadFixedSpecByXML(CXMLReader& reader) override;
    CXMLReader::EMthRetOfReadXML ReadCommonSpecByXML(const char* folder, CXMLReader& reader) override;
    SCBUICoreCom::EBtnType GetType() const override;
    std::unique_ptr<VCBtn> Clone() const override;
};

} // namespace NSKZ::NSKZCore

#endif
