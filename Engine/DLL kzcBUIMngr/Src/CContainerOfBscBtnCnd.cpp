#include "CContainerOfBscBtnCnd.h"

#include "CXMLWriter.h"
#include "ECInaccurateCode.h"
#include "SCBUICoreCom.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace NSKZ::NSKZCore {

CContainerOfBscBtnCnd::CContainerOfBscBtnCnd() = default;

CContainerOfBscBtnCnd::CContainerOfBscBtnCnd(const CContainerOfBscBtnCnd& other)
    : IComponentOfBscBtnCnd(other)
{
    // A copy that is still without children, and what it is a copy of. A copy stands in its place in the tree
    // from the start, so that the tree goes as a whole if memory runs out.
    std::vector<std::pair<CContainerOfBscBtnCnd*, const CContainerOfBscBtnCnd*>> pending = {{this, &other}};
    while (!pending.empty()) {
        const auto [copy, source] = pending.back();
        pending.pop_back();
        copy->boolOperator = source->boolOperator;
        copy->children.reserve(source->children.size());
        for (const auto& child : source->children) {
            if (const auto* const container = dynamic_cast<const CContainerOfBscBtnCnd*>(child.get())) {
                auto copyOfChild = std::make_unique<CContainerOfBscBtnCnd>();
                pending.emplace_back(copyOfChild.get(), container);
                copy->children.push_back(std::move(copyOfChild));
            } else {
                copy->children.emplace_back(child->CreateClone());
            }
        }
    }
}

CContainerOfBscBtnCnd& CContainerOfBscBtnCnd::operator=(const CContainerOfBscBtnCnd& other)
{
    CContainerOfBscBtnCnd copy(other);
    boolOperator = copy.boolOperator;
    children.swap(copy.children); // what was held goes with `copy`, and `other` with it if it was part of it
    return *this;
}

CContainerOfBscBtnCnd::~CContainerOfBscBtnCnd()
{
    DestroyAll(children);
}

bool CContainerOfBscBtnCnd::GetBtnIDListThatAppliesToTheCnd(DWORD btnClassID,
                                                            const std::vector<DWORD>& btnIDs,
                                                            const ISumValueMngr& sumValueMngr,
                                                            std::vector<DWORD>& result) const
{
    result.clear();
    if (children.empty())
        return true;
    if (!children.front()->GetBtnIDListThatAppliesToTheCnd(btnClassID, btnIDs, sumValueMngr, result))
        return false;
    if (children.size() == 1)
        return true;

    // A child may give its buttons in order of rank; the merges want them ascending.
    std::sort(result.begin(), result.end());
    std::vector<DWORD> ofChild;
    std::vector<DWORD> merged;
    for (std::size_t i = 1; i < children.size(); ++i) {
        if (!children[i]->GetBtnIDListThatAppliesToTheCnd(btnClassID, btnIDs, sumValueMngr, ofChild))
            return false;
        std::sort(ofChild.begin(), ofChild.end());
        if (boolOperator == SCKZCoreCom::BOOLOPERATOR_AND) {
            SCBUICoreCom::MergeBtnIDListByANDCnd(result, ofChild);
        } else {
            SCBUICoreCom::MergeBtnIDListByORCnd(result, ofChild, merged);
            result.swap(merged);
        }
    }
    return true;
}

bool CContainerOfBscBtnCnd::HasNumDataItem(DWORD numID) const
{
    return std::any_of(children.begin(), children.end(),
                       [=](const auto& child) { return child->HasNumDataItem(numID); });
}

bool CContainerOfBscBtnCnd::WriteSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const
{
    std::vector<IXMLIO::SAttribute> attributes(1);
    SCKZCoreCom::GetBoolOperatorAttribute(boolOperator, attributes[0]);
    if (children.empty())
        return writer.PutEmptyElement(STR_ELENAME_BASICCONTAINER, STRLEN_ELENAME_BASICCONTAINER, attributes);
    return writer.PutStartTag(STR_ELENAME_BASICCONTAINER, STRLEN_ELENAME_BASICCONTAINER, attributes) &&
           std::all_of(children.begin(), children.end(),
                       [&](const auto& child) { return child->WriteSpecByXML(folder, writer, withData); }) &&
           writer.PutEndTag(STR_ELENAME_BASICCONTAINER, STRLEN_ELENAME_BASICCONTAINER);
}

CXMLReader::EMthRetOfReadXML CContainerOfBscBtnCnd::ReadSpecByXML(const char*, CXMLReader& reader)
{
    const char* name = nullptr;
    DWORD nameLen = 0;
    if (!reader.GetCurrentElementName(name, nameLen) || !CompareElementName(name, nameLen))
        return CXMLReader::READXML_NOELEMENT;
    Clear();
    throw ECInaccurateCode("Src/CContainerOfBscBtnCnd",
                           "NSKZ::NSKZCore::CContainerOfBscBtnCnd::ReadSpecByXML", __LINE__);
}

IComponentOfBscBtnCnd* CContainerOfBscBtnCnd::CreateClone() const
{
    return new CContainerOfBscBtnCnd(*this);
}

bool CContainerOfBscBtnCnd::GetCndComponentPtr(DWORD index, IComponentOfBscBtnCnd*& component) const noexcept
{
    if (index >= children.size())
        return false;
    component = children[index].get();
    return true;
}

void CContainerOfBscBtnCnd::AddCndComponent(const IComponentOfBscBtnCnd& component)
{
    std::unique_ptr<IComponentOfBscBtnCnd> clone(component.CreateClone());
    children.push_back(std::move(clone));
}

bool CContainerOfBscBtnCnd::DeleteCndComponent(DWORD index) noexcept
{
    if (index >= children.size())
        return false;
    (void)children[index].release(); // it goes to whoever asked for its pointer
    children.erase(children.begin() + static_cast<std::ptrdiff_t>(index));
    return true;
}

void CContainerOfBscBtnCnd::Clear() noexcept
{
    boolOperator = SCKZCoreCom::BOOLOPERATOR_AND;
    DestroyAll(children);
}

bool CContainerOfBscBtnCnd::CompareElementName(const char* name, DWORD nameLen) noexcept
{
    return IXMLIO::IsSameText(name, nameLen, STR_ELENAME_BASICCONTAINER, STRLEN_ELENAME_BASICCONTAINER);
}

void CContainerOfBscBtnCnd::TakeContainers(Children& doomed,
                                           std::unique_ptr<CContainerOfBscBtnCnd>& containers) noexcept
{
    for (auto& child : doomed) {
        if (auto* const container = dynamic_cast<CContainerOfBscBtnCnd*>(child.get())) {
            (void)child.release();
            container->nextDoomed = std::move(containers);
            containers.reset(container);
        }
    }
    doomed.clear();
}

// Destroying a container must not destroy the containers in it from within its destructor: they are taken out
// before and wait in a list, which needs no memory.
void CContainerOfBscBtnCnd::DestroyAll(Children& doomed) noexcept
{
    std::unique_ptr<CContainerOfBscBtnCnd> containers;
    TakeContainers(doomed, containers);
    while (containers != nullptr) {
        const std::unique_ptr<CContainerOfBscBtnCnd> container = std::move(containers);
        containers = std::move(container->nextDoomed);
        TakeContainers(container->children, containers);
    }
}

} // namespace NSKZ::NSKZCore
