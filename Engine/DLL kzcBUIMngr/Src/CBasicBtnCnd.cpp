#include "CBasicBtnCnd.h"

#include "CContainerOfBscBtnCnd.h"
#include "CUnitCndOfBscBtnCnd.h"
#include "CXMLWriter.h"
#include "VCBtnClass.h"

#include <utility>

namespace NSKZ::NSKZCore {

CBasicBtnCnd::CBasicBtnCnd() = default;

CBasicBtnCnd::CBasicBtnCnd(const CBasicBtnCnd& other)
    : IBtnCnd(other), component(other.component == nullptr ? nullptr : other.component->CreateClone())
{}

CBasicBtnCnd& CBasicBtnCnd::operator=(const CBasicBtnCnd& other)
{
    CBasicBtnCnd copy(other);
    component.swap(copy.component);
    return *this;
}

CBasicBtnCnd::~CBasicBtnCnd() = default;

bool CBasicBtnCnd::GetBtnIDListThatAppliesToTheCnd(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                                   const ISumValueMngr& sumValueMngr,
                                                   std::vector<DWORD>& result) const
{
    return component != nullptr &&
           component->GetBtnIDListThatAppliesToTheCnd(btnClassID, btnIDs, sumValueMngr, result);
}

bool CBasicBtnCnd::GetBtnIDListThatAppliesToTheCnd(const VCBtnClass* btnClass,
                                                   const ISumValueMngr& sumValueMngr,
                                                   std::vector<DWORD>& result) const
{
    if (btnClass == nullptr || component == nullptr)
        return false;
    std::vector<DWORD> btnIDs;
    btnClass->GetDisplayedBtnIDListWhichExpandCndCllBtn(btnIDs);
    return component->GetBtnIDListThatAppliesToTheCnd(btnClass->GetID(), btnIDs, sumValueMngr, result);
}

bool CBasicBtnCnd::CheckWhetherBtnIDAppliesToTheCnd(DWORD btnClassID, DWORD btnID,
                                                    const ISumValueMngr& sumValueMngr, bool& applies) const
{
    std::vector<DWORD> result;
    if (!GetBtnIDListThatAppliesToTheCnd(btnClassID, std::vector<DWORD>{btnID}, sumValueMngr, result))
        return false;
    applies = !result.empty();
    return true;
}

bool CBasicBtnCnd::CheckWhetherBtnIDAppliesToTheCnd(const VCBtnClass* btnClass, DWORD btnID,
                                                    const ISumValueMngr& sumValueMngr, bool& applies) const
{
    return btnClass != nullptr &&
           CheckWhetherBtnIDAppliesToTheCnd(btnClass->GetID(), btnID, sumValueMngr, applies);
}

bool CBasicBtnCnd::HasNumDataItem(DWORD numID) const
{
    return component != nullptr && component->HasNumDataItem(numID);
}

bool CBasicBtnCnd::WriteSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const
{
    const std::vector<IXMLIO::SAttribute> attributes = {
        {STR_ATTRNAME_TYPE, STRLEN_ATTRNAME_TYPE, STR_ATTRVALUE_TYPE_BASIC, STRLEN_ATTRVALUE_TYPE_BASIC}};
    if (component == nullptr)
        return writer.PutEmptyElement(STR_ELENAME_BTNCONDITION, STRLEN_ELENAME_BTNCONDITION, attributes);
    return writer.PutStartTag(STR_ELENAME_BTNCONDITION, STRLEN_ELENAME_BTNCONDITION, attributes) &&
           component->WriteSpecByXML(folder, writer, withData) &&
           writer.PutEndTag(STR_ELENAME_BTNCONDITION, STRLEN_ELENAME_BTNCONDITION);
}

CXMLReader::EMthRetOfReadXML CBasicBtnCnd::ReadSpecByXML(const char* folder, CXMLReader& reader)
{
    const char* name = nullptr;
    DWORD nameLen = 0;
    if (!reader.GetCurrentElementName(name, nameLen) || !CompareElementName(name, nameLen))
        return CXMLReader::READXML_NOELEMENT;
    Clear();
    const CXMLReader::EMthRetOfReadXML sought = reader.SeekToStartTagOfFirstChildElement();
    if (sought == CXMLReader::READXML_NOTEXIST)
        return CXMLReader::READXML_OK;
    if (sought != CXMLReader::READXML_OK)
        return sought;
    const CXMLReader::EMthRetOfReadXML read = ReadCndComponent(folder, reader);
    const CXMLReader::EMthRetOfReadXML ended = reader.SeekToEndTagOfParentElement();
    if (ended == CXMLReader::READXML_SEEKFAILURE)
        return CXMLReader::READXML_FAILURE;
    return ended == CXMLReader::READXML_OK ? read : ended;
}

CXMLReader::EMthRetOfReadXML CBasicBtnCnd::ReadCndComponent(const char* folder, CXMLReader& reader)
{
    const char* name = nullptr;
    DWORD nameLen = 0;
    reader.GetCurrentElementName(name, nameLen);
    component = CreateCndComponentBasedOnElementName(name, nameLen);
    return component == nullptr ? CXMLReader::READXML_BADFORMAT : component->ReadSpecByXML(folder, reader);
}

std::unique_ptr<IComponentOfBscBtnCnd> CBasicBtnCnd::CreateCndComponentBasedOnElementName(const char* name,
                                                                                          DWORD nameLen)
{
    if (CUnitCndOfBscBtnCnd::CompareElementName(name, nameLen))
        return std::make_unique<CUnitCndOfBscBtnCnd>();
    if (CContainerOfBscBtnCnd::CompareElementName(name, nameLen))
        return std::make_unique<CContainerOfBscBtnCnd>();
    return nullptr;
}

IBtnCnd* CBasicBtnCnd::CreateClone() const
{
    return new CBasicBtnCnd(*this);
}

void CBasicBtnCnd::Destroy()
{
    delete this;
}

bool CBasicBtnCnd::GetCndComponent(const IComponentOfBscBtnCnd*& heldComponent) const noexcept
{
    if (component == nullptr)
        return false;
    heldComponent = component.get();
    return true;
}

void CBasicBtnCnd::SetCndComponent(const IComponentOfBscBtnCnd& newComponent)
{
    component.reset(newComponent.CreateClone()); // cloned before what is held goes: it may be part of that
}

void CBasicBtnCnd::Clear() noexcept
{
    component.reset();
}

bool CBasicBtnCnd::CompareBtnCndTypeAttributeValue(const char* value, DWORD valueLen) noexcept
{
    return IXMLIO::IsSameText(value, valueLen, STR_ATTRVALUE_TYPE_BASIC, STRLEN_ATTRVALUE_TYPE_BASIC);
}

} // namespace NSKZ::NSKZCore
