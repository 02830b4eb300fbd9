#ifndef ICOMPONENTOFBSCBTNCND_H
#define ICOMPONENTOFBSCBTNCND_H

#include "CXMLReader.h"
#include "KzcBUIMngrAPI.h"

#include <vector>

namespace NSKZ::NSKZCore {

class CXMLWriter;
class ISumValueMngr;

// A part of the tree that a CBasicBtnCnd holds: a container of further parts, or a leaf that asks for
// numbers.
//
// Evaluation changes nothing of the component. The order of the operations is fixed.
class KZCBUIMNGR_API IComponentOfBscBtnCnd
{
public:
    virtual ~IComponentOfBscBtnCnd();

    // Replaces `result`, which is another list than `btnIDs`, by those of `btnIDs` that meet the condition.
    // `btnIDs` are buttons of the class of that identifier, none twice: the population that ranks are worked
    // out in. False when the sum manager refuses a number that is asked for.
    virtual bool GetBtnIDListThatAppliesToTheCnd(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                                 const ISumValueMngr& sumValueMngr,
                                                 std::vector<DWORD>& result) const = 0;
    // Whether the condition asks for that numeric item.
    virtual bool HasNumDataItem(DWORD numID) const = 0;
    // As the operations of the same name of IBtnCnd, with an element of the component's own.
    virtual bool WriteSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const = 0;
    virtual CXMLReader::EMthRetOfReadXML ReadSpecByXML(const char* folder, CXMLReader& reader) = 0;
    // A component of the same content, which is the caller's to delete. Throws std::bad_alloc.
    virtual IComponentOfBscBtnCnd* CreateClone() const = 0;
};

} // namespace NSKZ::NSKZCore

#endif
