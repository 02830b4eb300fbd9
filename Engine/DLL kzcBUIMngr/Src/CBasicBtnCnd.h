#ifndef CBASICBTNCND_H
#define CBASICBTNCND_H

#include "IBtnCnd.h"
#include "IComponentOfBscBtnCnd.h"

#include <memory>

namespace NSKZ::NSKZCore {

// The library's own condition: a tree of components, or nothing at all.
//
// It owns the tree; what is handed in is cloned. An empty condition picks no button but answers false, so
// that whoever asks leaves things as they are. When memory is exhausted in an operation that changes the
// condition it stays as it was, but for ReadSpecByXML, which leaves what has been read.
class KZCBUIMNGR_API CBasicBtnCnd final : public IBtnCnd
{
public:
    // The value of the attribute that tells the class of a condition in XML.
    static constexpr char STR_ATTRVALUE_TYPE_BASIC[] = "Basic";
    static constexpr DWORD STRLEN_ATTRVALUE_TYPE_BASIC = sizeof STR_ATTRVALUE_TYPE_BASIC - 1;

    // Empty.
    CBasicBtnCnd();
    // Take a clone of the tree of `other`, if it has one.
    CBasicBtnCnd(const CBasicBtnCnd& other);
    CBasicBtnCnd& operator=(const CBasicBtnCnd& other);
    ~CBasicBtnCnd() override;

    // The answer of the tree; false, with `result` untouched, for an empty condition.
    bool GetBtnIDListThatAppliesToTheCnd(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                         const ISumValueMngr& sumValueMngr,
                                         std::vector<DWORD>& result) const override;
    bool GetBtnIDListThatAppliesToTheCnd(const VCBtnClass* btnClass, const ISumValueMngr& sumValueMngr,
                                         std::vector<DWORD>& result) const override;
    // The button is a population of its own: it ranks first and last.
    bool CheckWhetherBtnIDAppliesToTheCnd(DWORD btnClassID, DWORD btnID, const ISumValueMngr& sumValueMngr,
                                          bool& applies) const override;
    bool CheckWhetherBtnIDAppliesToTheCnd(const VCBtnClass* btnClass, DWORD btnID,
                                          const ISumValueMngr& sumValueMngr, bool& applies) const override;
    bool HasNumDataItem(DWORD numID) const override;
    bool WriteSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const override;
    // What was held goes once the reader is on the right element; an element without child gives an empty
    // condition. The reader is behind the element afterwards unless it has no child. READXML_FAILURE if the
    // document ends or fails within the element. READXML_BADFORMAT: an unknown child leaves the condition
    // empty, a child that is not as it should be stays with what could be read of it. A container cannot be
    // read: ECInaccurateCode is thrown, and the condition holds an empty one.
    CXMLReader::EMthRetOfReadXML ReadSpecByXML(const char* folder, CXMLReader& reader) override;
    IBtnCnd* CreateClone() const override;
    // For clones alone: deletes the object.
    void Destroy() override;

    // The tree, which stays the condition's until its next change. False, with `heldComponent` untouched, if
    // the condition is empty.
    bool GetCndComponent(const IComponentOfBscBtnCnd*& heldComponent) const noexcept;
    // Puts a clone of `newComponent` in place of the tree, of which `newComponent` may be a part.
    void SetCndComponent(const IComponentOfBscBtnCnd& newComponent);
    // Makes the condition empty.
    void Clear() noexcept;

    // Whether the value of the attribute `type` tells this class.
    static bool CompareBtnCndTypeAttributeValue(const char* value, DWORD valueLen) noexcept;

private:
    static std::unique_ptr<IComponentOfBscBtnCnd> CreateCndComponentBasedOnElementName(const char* name,
                                                                                       DWORD nameLen);
    CXMLReader::EMthRetOfReadXML ReadCndComponent(const char* folder, CXMLReader& reader);

    std::unique_ptr<IComponentOfBscBtnCnd> component; // null: the condition is empty
};

} // namespace NSKZ::NSKZCore

#endif
