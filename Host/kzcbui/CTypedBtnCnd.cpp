#include "CTypedBtnCnd.h"

namespace NSKZ::Host {

using NSKZCore::ISumValueMngr;
using NSKZCore::VCBtnClass;

CTypedBtnCnd::CTypedBtnCnd(NSKZCore::CBasicBtnCnd basicOfUser, std::string textOfUser)
    : basic(std::move(basicOfUser)), text(std::move(textOfUser))
{}

bool CTypedBtnCnd::GetBtnIDListThatAppliesToTheCnd(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                                   const ISumValueMngr& sumValueMngr,
                                                   std::vector<DWORD>& result) const
{
    return basic.GetBtnIDListThatAppliesToTheCnd(btnClassID, btnIDs, sumValueMngr, result);
}

bool CTypedBtnCnd::GetBtnIDListThatAppliesToTheCnd(const VCBtnClass* btnClass,
                                                   const ISumValueMngr& sumValueMngr,
                                                   std::vector<DWORD>& result) const
{
    return basic.GetBtnIDListThatAppliesToTheCnd(btnClass, sumValueMngr, result);
}

bool CTypedBtnCnd::CheckWhetherBtnIDAppliesToTheCnd(DWORD btnClassID, DWORD btnID,
                                                    const ISumValueMngr& sumValueMngr, bool& applies) const
{
    return basic.CheckWhetherBtnIDAppliesToTheCnd(btnClassID, btnID, sumValueMngr, applies);
}

bool CTypedBtnCnd::CheckWhetherBtnIDAppliesToTheCnd(const VCBtnClass* btnClass, DWORD btnID,
                                                    const ISumValueMngr& sumValueMngr, bool& applies) const
{
    return basic.CheckWhetherBtnIDAppliesToTheCnd(btnClass, btnID, sumValueMngr, applies);
}

bool CTypedBtnCnd::HasNumDataItem(DWORD numID) const
{
    return basic.HasNumDataItem(numID);
}

bool CTypedBtnCnd::WriteSpecByXML(const char* folder, NSKZCore::CXMLWriter& writer, bool withData) const
{
    return basic.WriteSpecByXML(folder, writer, withData);
}

NSKZCore::CXMLReader::EMthRetOfReadXML CTypedBtnCnd::ReadSpecByXML(const char* folder,
                                                                   NSKZCore::CXMLReader& reader)
{
    std::string formerText;
    formerText.swap(text);
    const NSKZCore::CXMLReader::EMthRetOfReadXML result = basic.ReadSpecByXML(folder, reader);
    if (result == NSKZCore::CXMLReader::READXML_NOELEMENT)
        text.swap(formerText); // nothing was read
    return result;
}

NSKZCore::IBtnCnd* CTypedBtnCnd::CreateClone() const
{
    return new CTypedBtnCnd(*this);
}

void CTypedBtnCnd::Destroy()
{
    delete this;
}

} // namespace NSKZ::Host
