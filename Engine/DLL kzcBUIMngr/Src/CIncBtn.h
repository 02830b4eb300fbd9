#ifndef CINCBTN_H
#define CINCBTN_H

#include "VCSpBtn.h"

namespace NSKZ::NSKZCore {

// An extra button beside its members: pressing it covers the records of all of them. The members stay on
// screen if `dispMember` is set; otherwise they are hidden, unless another inc button that displays its
// members holds them.
class CIncBtn final : public VCSpBtn
{
public:
    CIncBtn(DWORD id, EMmbBtnSelMth selMth);

    void Clear() override;
    // The word for the type, and the attribute of the kind.
    static constexpr char STR_ATTRVALUE_TYPE_INC[] = "Inc";
    static constexpr DWORD STRLEN_ATTRVALUE_TYPE_INC = sizeof STR_ATTRVALUE_TYPE_INC - 1;
    static constexpr char STR_ATTRNAME_DISPMEMBER[] = "dispMember";
    static constexpr DWORD STRLEN_ATTRNAME_DISPMEMBER = sizeof STR_ATTRNAME_DISPMEMBER - 1;

    bool WriteDefinitionByXML(CXMLWriter& writer, const std::vector<DWORD>& members,
                              bool withSel) const override;
    CXMLReader::EMthRetOfReadXML ReadFixedSpecByXML(CXMLReader& reader) override;
    SCBUICoreCom::EBtnType GetType() const override;
    // The clone is made now: neither time is taken over.
    std::unique_ptr<VCBtn> Clone() const override;

    bool dispMember = false;
};

} // namespace NSKZ::NSKZCore

#endif
