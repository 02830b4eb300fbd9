#ifndef IBTNCND_H
#define IBTNCND_H

#include "CXMLReader.h"
#include "KzcBUIMngrAPI.h"

#include <memory>
#include <vector>

namespace NSKZ::NSKZCore {

class CXMLWriter;
class ISumValueMngr;
class VCBtnClass;

// A condition that picks buttons of a class by what they are worth: it decides on the members of a special
// button. CBasicBtnCnd is the library's own; a host may implement others. A special button keeps a clone.
//
// Evaluation changes nothing of the condition. The order of the operations is fixed.
class KZCBUIMNGR_API IBtnCnd
{
public:
    // The element of a condition in XML, and the attribute that tells its class.
    static constexpr char STR_ELENAME_BTNCONDITION[] = "BtnCondition";
    static constexpr DWORD STRLEN_ELENAME_BTNCONDITION = sizeof STR_ELENAME_BTNCONDITION - 1;
    static constexpr char STR_ATTRNAME_TYPE[] = "type";
    static constexpr DWORD STRLEN_ATTRNAME_TYPE = sizeof STR_ATTRNAME_TYPE - 1;

    virtual ~IBtnCnd();

    // Replaces `result`, another list than `btnIDs`, by those of `btnIDs`, buttons of the class of that
    // identifier, that meet the condition. False when the sum manager refuses a number that is asked for.
    virtual bool GetBtnIDListThatAppliesToTheCnd(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                                 const ISumValueMngr& sumValueMngr,
                                                 std::vector<DWORD>& result) const = 0;
    // The same over the displayed buttons of the class, a condition cll button standing for its members.
    // False for a null class.
    virtual bool GetBtnIDListThatAppliesToTheCnd(const VCBtnClass* btnClass,
                                                 const ISumValueMngr& sumValueMngr,
                                                 std::vector<DWORD>& result) const = 0;
    // Whether one button, alone, meets the condition. On false `applies` is untouched.
    virtual bool CheckWhetherBtnIDAppliesToTheCnd(DWORD btnClassID, DWORD btnID,
                                                  const ISumValueMngr& sumValueMngr, bool& applies) const = 0;
    virtual bool CheckWhetherBtnIDAppliesToTheCnd(const VCBtnClass* btnClass, DWORD btnID,
                                                  const ISumValueMngr& sumValueMngr, bool& applies) const = 0;
    // Whether the condition asks for that numeric item.
    virtual bool HasNumDataItem(DWORD numID) const = 0;
    // Writes the condition as one element, STR_ELENAME_BTNCONDITION. `folder` and `withData` are for
    // conditions that keep files beside. False, with the last error telling why, if that fails: what has been
    // written by then stays.
    virtual bool WriteSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const = 0;
    // Becomes the condition of the element that the reader is on. READXML_NOELEMENT if that is no
    // STR_ELENAME_BTNCONDITION, READXML_BADFORMAT if it is not as it should be.
    virtual CXMLReader::EMthRetOfReadXML ReadSpecByXML(const char* folder, CXMLReader& reader) = 0;
    // A condition of the same content, to be released by its Destroy. Throws std::bad_alloc.
    virtual IBtnCnd* CreateClone() const = 0;
    // Releases a condition that CreateClone made. Does not throw.
    virtual void Destroy() = 0;

    // For a host that reads a condition: whether an element is one, and where the attribute stands that tells
    // of which class (false, with `index` untouched, if it is missing).
    static bool CompareElementName(const char* name, DWORD nameLen) noexcept;
    static bool SearchBtnCndTypeAttribute(const std::vector<IXMLIO::SAttribute>& attributes,
                                          DWORD& index) noexcept;
};

struct SBtnCndReleaser
{
    void operator()(IBtnCnd* cnd) const noexcept { cnd->Destroy(); }
};

// Owns a condition that CreateClone made.
using BtnCndPtr = std::unique_ptr<IBtnCnd, SBtnCndReleaser>;

} // namespace NSKZ::NSKZCore

#endif
