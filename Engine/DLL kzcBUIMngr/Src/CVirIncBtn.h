#ifndef CVIRINCBTN_H
#define CVIRINCBTN_H

#include "VCSpBtn.h"

namespace NSKZ::NSKZCore {

// The special button of a virtual class: its members are buttons of another class, the one it refers to, and
// stay displayed there. Each of them names it among its holders of other classes.
class CVirIncBtn final : public VCSpBtn
{
public:
    CVirIncBtn(DWORD id, EMmbBtnSelMth selMth, DWORD refBtnClassID, bool commonBtn);

    void Clear() override;
    // A button of a common virtual class keeps its definition; one of a fixed virtual class is emptied.
    void ClearOfFixedSpec() override;
    // The word for the type, and the attribute of the kind.
    static constexpr char STR_ATTRVALUE_TYPE_VIRINC[] = "VirInc";
    static constexpr DWORD STRLEN_ATTRVALUE_TYPE_VIRINC = sizeof STR_ATTRVALUE_TYPE_VIRINC - 1;
    static constexpr char STR_ATTRNAME_REFBTNCLASSID[] = "refBtnClassID";
    static constexpr DWORD STRLEN_ATTRNAME_REFBTNCLASSID = sizeof STR_ATTRNAME_REFBTNCLASSID - 1;

    bool WriteDefinitionByXML(CXMLWriter& writer, const std::vector<DWORD>& members,
                              bool withSel) const override;
    // A button of a common virtual class has its definition in the common form and its selection alone in the
    // fixed one; a button of a fixed virtual class is in the fixed form alone.
    bool WriteFixedSpecByXML(CXMLWriter& writer, bool defaultSel) const override;
    bool WriteCommonSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const override;
    CXMLReader::EMthRetOfReadXML ReadCommonSpecByXML(const char* folder, CXMLReader& reader) override;
    CXMLReader::EMthRetOfReadXML ReadFixedSpecByXML(CXMLReader& reader) override;
    SCBUICoreCom::EBtnType GetType() const override;
    // The clone is made now: neither time is taken over.
    std::unique_ptr<VCBtn> Clone() const override;

    DWORD refBtnClassID; // the class whose buttons are the members; 0 while nothing has been read, and once
                         // it is gone
    bool commonBtn;      // whether it belongs to a common virtual class
};

} // namespace NSKZ::NSKZCore

#endif
