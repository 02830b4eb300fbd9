#ifndef VCSPBTN_H
#define VCSPBTN_H

#include "IBtnCnd.h"
#include "VCBtn.h"

#include <cstdint>
#include <vector>

namespace NSKZ::NSKZCore {

// A button that a user made to stand for other buttons of its class, its members: picked by hand, or by a
// condition on sums. Members may be special buttons themselves. The class keeps both ways of a membership in
// step: the list here, and the back-references of the members.
//
// An ineffective special button keeps its members and the buttons that held it, and takes no part in anything
// until it is effective again.
class VCSpBtn : public VCBtn
{
public:
    // How members are picked.
    enum EMmbBtnSelMth : DWORD
    {
        MMBBTNSELMTH_SELECT = 1,    // by hand: the list is the user's
        MMBBTNSELMTH_CONDITION = 2, // by the condition: the list is what it last gave
    };

    // An effective button without members, made now.
    VCSpBtn(DWORD id, EMmbBtnSelMth selMth);
    ~VCSpBtn() override;

    void Clear() override;
    void ClearOfFixedSpec() override;
    bool IsEffective() const noexcept override { return effective; }

    // --- Saving. Constants of the element "Btn" of a special button and of what is in it.
    static constexpr char STR_ELENAME_MEMBERBTN[] = "MemberBtn";
    static constexpr DWORD STRLEN_ELENAME_MEMBERBTN = sizeof STR_ELENAME_MEMBERBTN - 1;
    static constexpr char STR_ATTRNAME_CREATETIME[] = "createTime";
    static constexpr DWORD STRLEN_ATTRNAME_CREATETIME = sizeof STR_ATTRNAME_CREATETIME - 1;
    static constexpr char STR_ATTRNAME_UPDATETIME[] = "updateTime";
    static constexpr DWORD STRLEN_ATTRNAME_UPDATETIME = sizeof STR_ATTRNAME_UPDATETIME - 1;
    static constexpr char STR_ATTRNAME_SELMETHOD[] = "selMethod";
    static constexpr DWORD STRLEN_ATTRNAME_SELMETHOD = sizeof STR_ATTRNAME_SELMETHOD - 1;
    static constexpr char STR_ATTRVALUE_SELMETHOD_SELECT[] = "Select";
    static constexpr DWORD STRLEN_ATTRVALUE_SELMETHOD_SELECT = sizeof STR_ATTRVALUE_SELMETHOD_SELECT - 1;
    static constexpr char STR_ATTRVALUE_SELMETHOD_CONDITION[] = "Condition";
    static constexpr DWORD STRLEN_ATTRVALUE_SELMETHOD_CONDITION =
        sizeof STR_ATTRVALUE_SELMETHOD_CONDITION - 1;
    static constexpr char STR_ATTRNAME_IDLIST[] = "idList";
    static constexpr DWORD STRLEN_ATTRNAME_IDLIST = sizeof STR_ATTRNAME_IDLIST - 1;

    // Writes the whole definition of the button: what users fixed of it, and its selection if `withSel`. A
    // button that selects by list has `members` written, which are its members less those that are not saved;
    // the condition of one that selects by condition is not saved. Nothing is written of an ineffective
    // button. Throws ECAbnormalData for an unknown way to pick members.
    virtual bool WriteDefinitionByXML(CXMLWriter& writer, const std::vector<DWORD>& members,
                                      bool withSel) const = 0;
    bool WriteFixedSpecByXML(CXMLWriter& writer, bool defaultSel) const override;
    // Nothing: a special button is a user's.
    bool WriteCommonSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const override;
    CXMLReader::EMthRetOfReadXML ReadCommonSpecByXML(const char* folder, CXMLReader& reader) override;

    // Whether the list holds the button. Linear in the members.
    bool HasMember(DWORD btnID) const noexcept;
    // The present moment, in seconds since 1970, UTC.
    static std::int64_t GetPresentTime() noexcept;

    EMmbBtnSelMth mmbBtnSelMth;
    bool effective = true;
    // Whether the class's row of records of this button is behind its members (see VCBtnClass).
    bool isRowOutdated = false;
    mutable bool isVisited = false;  // by a walk through the nesting; false between walks
    std::vector<DWORD> mmbBtnIDList; // in the order given, each once
    BtnCndPtr mmbBtnCnd;             // may be null
    std::int64_t createTime;         // in seconds since 1970, UTC
    std::int64_t updateTime; // when members, condition, effectiveness or display of members last changed

protected:
    // What all kinds write and read: the former with the word of the type and attributes of the kind, the
    // latter with those left that the kind has not taken (READXML_NOELEMENT if the reader is on no element).
    bool WriteFixedSpecByXML(CXMLWriter& writer, const char* typeWord, DWORD typeWordLen,
                             const Attributes& attributes, const std::vector<DWORD>& members,
                             bool withSel) const;
    CXMLReader::EMthRetOfReadXML ReadFixedSpecCommon(CXMLReader& reader, Attributes& attributes);

    // What the clone of a special button takes over beside what VCBtn::Copy does; its times stay its own. A
    // condition that is absent is cloned as absent. If memory is exhausted the button is as it was.
    void CopySpBtn(const VCSpBtn& other);

private:
    // Takes the members from the element that the reader is on; false if it does not tell them.
    bool ReadMembers(const CXMLReader& reader);
};

} // namespace NSKZ::NSKZCore

#endif
