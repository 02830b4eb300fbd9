#ifndef CCLLBTN_H
#define CCLLBTN_H

#include "VCSpBtn.h"

namespace NSKZ::NSKZCore {

// A button that folds its members into itself: they are hidden behind it. One that selects by condition can
// be expanded by the lists of buttons, that is, shown as its members.
class CCllBtn final : public VCSpBtn
{
public:
    CCllBtn(DWORD id, EMmbBtnSelMth selMth);

    // The word for the type.
    static constexpr char STR_ATTRVALUE_TYPE_CLL[] = "Cll";
    static constexpr DWORD STRLEN_ATTRVALUE_TYPE_CLL = sizeof STR_ATTRVALUE_TYPE_CLL - 1;

    bool WriteDefinitionByXML(CXMLWriter& writer, const std::vector<DWORD>& members,
                              bool withSel) const override;
    CXMLReader::EMthRetOfReadXML ReadFixedSpecByXML(CXMLReader& reader) override;
    SCBUICoreCom::EBtnType GetType() const override;
    // The clone is made now: neither time is taken over.
    std::unique_ptr<VCBtn> Clone() const override;
};

} // namespace NSKZ::NSKZCore

#endif
