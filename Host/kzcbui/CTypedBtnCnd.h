#ifndef CTYPEDBTNCND_H
#define CTYPEDBTNCND_H

#include "CBasicBtnCnd.h"

#include <string>

namespace NSKZ::Host {

// A basic condition that remembers how it was typed. The text goes wherever the engine clones the condition
// to, and is gone with it. In everything else it is the basic condition; what is read from XML has no text.
class CTypedBtnCnd final : public NSKZCore::IBtnCnd
{
public:
    // `basic` must not be empty.
    CTypedBtnCnd(NSKZCore::CBasicBtnCnd basic, std::string text);

    // Empty for a condition that was read.
    const std::string& GetText() const noexcept { return text; }
    const NSKZCore::CBasicBtnCnd& GetBasicCnd() const noexcept { return basic; }

    bool GetBtnIDListThatAppliesToTheCnd(DWORD btnClassID, const std::vector<DWORD>& btnIDs,
                                         const NSKZCore::ISumValueMngr& sumValueMngr,
                                         std::vector<DWORD>& result) const override;
    bool GetBtnIDListThatAppliesToTheCnd(const NSKZCore::VCBtnClass* btnClass,
                                         const NSKZCore::ISumValueMngr& sumValueMngr,
                                         std::vector<DWORD>& result) const override;
    bool CheckWhetherBtnIDAppliesToTheCnd(DWORD btnClassID, DWORD btnID,
                                          const NSKZCore::ISumValueMngr& sumValueMngr,
                                          bool& applies) const override;
    bool CheckWhetherBtnIDAppliesToTheCnd(const NSKZCore::VCBtnClass* btnClass, DWORD btnID,
                                          const NSKZCore::ISumValueMngr& sumValueMngr,
                                          bool& applies) const override;
    bool HasNumDataItem(DWORD numID) const override;
    bool WriteSpecByXML(const char* folder, NSKZCore::CXMLWriter& writer, bool withData) const override;
    NSKZCore::CXMLReader::EMthRetOfReadXML ReadSpecByXML(const char* folder,
                                                         NSKZCore::CXMLReader& reader) override;
    NSKZCore::IBtnCnd* CreateClone() const override;
    // For clones alone: deletes the object.
    void Destroy() override;

private:
    NSKZCore::CBasicBtnCnd basic;
    std::string text;
};

} // namespace NSKZ::Host

#endif
