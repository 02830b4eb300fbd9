#ifndef CCONTAINEROFBSCBTNCND_H
#define CCONTAINEROFBSCBTNCND_H

#include "IComponentOfBscBtnCnd.h"
#include "SCKZCoreCom.h"

#include <memory>
#include <vector>

namespace NSKZ::NSKZCore {

// Joins conditions: those of its children, each evaluated over the whole population. Under
// BOOLOPERATOR_AND the buttons that meet all of them remain, under every other operator those that meet any.
//
// A container owns its children. Copying and destroying take no stack for containers within containers,
// however deep. Evaluating, writing and asking for an item do, a few hundred bytes for each level.
//
// When memory is exhausted in an operation that changes the container it stays as it was.
class KZCBUIMNGR_API CContainerOfBscBtnCnd final : public IComponentOfBscBtnCnd
{
public:
    static constexpr char STR_ELENAME_BASICCONTAINER[] = "BasicContainer";
    static constexpr DWORD STRLEN_ELENAME_BASICCONTAINER = sizeof STR_ELENAME_BASICCONTAINER - 1;

    // No children, joined by AND.
    CContainerOfBscBtnCnd();
    // Take clones of the children of `other`, and its operator. Assigning may be from this container or from
    // one within it.
    CContainerOfBscBtnCnd(const CContainerOfBscBtnCnd& other);
    CContainerOfBscBtnCnd& operator=(const CContainerOfBscBtnCnd& other);
    ~CContainerOfBscBtnCnd() override;

    // Without children: true, and no button. With one child: what the child gives, in its order. With more
    // the result is ascending. A child that gives false ends it with false, and `result` holds what stood
    // until then; no child is left out otherwise.
    bool GetBtnIDListThatAppliesToTheCnd(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                         const ISumValueMngr& sumValueMngr,
                                         std::vector<DWORD>& result) const override;
    bool HasNumDataItem(DWORD numID) const override;
    // An element STR_ELENAME_BASICCONTAINER with the operator as attribute and the children in it.
    bool WriteSpecByXML(const char* folder, CXMLWriter& writer, bool withData) const override;
    // A container can be written but not read: on its element this empties the container and throws
    // ECInaccurateCode. READXML_NOELEMENT, and nothing is changed, elsewhere.
    CXMLReader::EMthRetOfReadXML ReadSpecByXML(const char* folder, CXMLReader& reader) override;
    IComponentOfBscBtnCnd* CreateClone() const override;

    SCKZCoreCom::EBoolOperator GetBoolOperator() const noexcept { return boolOperator; }
    // Takes every value.
    void SetBoolOperator(SCKZCoreCom::EBoolOperator newOperator) noexcept { boolOperator = newOperator; }

    // The child of that index, which stays the container's. False, with `component` untouched, if there is
    // none.
    bool GetCndComponentPtr(DWORD index, IComponentOfBscBtnCnd*& component) const noexcept;
    // Appends a clone. `component` may be this container or a part of it.
    void AddCndComponent(const IComponentOfBscBtnCnd& component);
    // Takes the child of that index out and closes the gap; false if there is none. The child is NOT
    // destroyed: from then on it belongs to whoever has had its pointer from GetCndComponentPtr before, who
    // deletes it.
    bool DeleteCndComponent(DWORD index) noexcept;
    // Destroys the children; the operator becomes BOOLOPERATOR_AND.
    void Clear() noexcept;

    // Whether an element is that of a container.
    static bool CompareElementName(const char* name, DWORD nameLen) noexcept;

private:
    using Children = std::vector<std::unique_ptr<IComponentOfBscBtnCnd>>;

    // Puts the containers among `doomed` in front of the list `containers` and destroys the others.
    static void TakeContainers(Children& doomed, std::unique_ptr<CContainerOfBscBtnCnd>& containers) noexcept;
    static void DestroyAll(Children& doomed) noexcept;

    SCKZCoreCom::EBoolOperator boolOperator = SCKZCoreCom::BOOLOPERATOR_AND;
    Children children;
    std::unique_ptr<CContainerOfBscBtnCnd> nextDoomed; // the list of containers that are being destroyed
};

} // namespace NSKZ::NSKZCore

#endif
