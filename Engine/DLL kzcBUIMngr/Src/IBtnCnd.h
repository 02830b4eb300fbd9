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
    virtual ~IBtnCnd();

    // Replaces `result` by those of `btnIDs`, buttons of the class of that identifier, that meet the
    // condition. False when the sum manager refuses a number that is asked for.
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
    virtual bool WriteSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const = 0;
    virtual CXMLReader::EMthRetOfReadXML ReadSpecByXML(const char* folder, CXMLReader& reader) = 0;
    // A condition of the same content, to be released by its Destroy. Throws std::bad_alloc.
    virtual IBtnCnd* CreateClone() const = 0;
    // Releases a condition that CreateClone made. Does not throw.
    virtual void Destroy() = 0;
};

struct SBtnCndReleaser
{
    void operator()(IBtnCnd* cnd) const noexcept { cnd->Destroy(); }
};

// Owns a condition that CreateClone made.
using BtnCndPtr = std::unique_ptr<IBtnCnd, SBtnCndReleaser>;

} // namespace NSKZ::NSKZCore

#endif
