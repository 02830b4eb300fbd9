#ifndef CTESTBTNCND_H
#define CTESTBTNCND_H

#include "IBtnCnd.h"
#include "VCBtnClass.h"

#include <algorithm>
#include <vector>

namespace NSKZ::Test {

// A condition that is met by a fixed list of buttons, as far as they are asked about; or that refuses to
// answer. It counts its living clones if told where.
class CTestBtnCnd final : public NSKZCore::IBtnCnd
{
public:
    explicit CTestBtnCnd(std::vector<DWORD> met, int* countOfLiving = nullptr)
        : metBtnIDs(std::move(met)), living(countOfLiving)
    {}

    bool GetBtnIDListThatAppliesToTheCnd(DWORD, const std::vector<DWORD>& btnIDs,
                                         const NSKZCore::ISumValueMngr&,
                                         std::vector<DWORD>& result) const override
    {
        result.clear();
        std::copy_if(btnIDs.begin(), btnIDs.end(), std::back_inserter(result),
                     [this](DWORD btnID) { return IsMet(btnID); });
        return answers;
    }
    bool GetBtnIDListThatAppliesToTheCnd(const NSKZCore::VCBtnClass* btnClass,
                                         const NSKZCore::ISumValueMngr& sumValueMngr,
                                         std::vector<DWORD>& result) const override
    {
        std::vector<DWORD> btnIDs;
        btnClass->GetDisplayedBtnIDListWhichExpandCndCllBtn(btnIDs);
        return GetBtnIDListThatAppliesToTheCnd(0, btnIDs, sumValueMngr, result);
    }
    bool CheckWhetherBtnIDAppliesToTheCnd(DWORD, DWORD btnID, const NSKZCore::ISumValueMngr&,
                                          bool& applies) const override
    {
        if (answers)
            applies = IsMet(btnID);
        return answers;
    }
    bool CheckWhetherBtnIDAppliesToTheCnd(const NSKZCore::VCBtnClass*, DWORD btnID,
                                          const NSKZCore::ISumValueMngr& sumValueMngr,
                                          bool& applies) const override
    {
        return CheckWhetherBtnIDAppliesToTheCnd(DWORD{0}, btnID, sumValueMngr, applies);
    }
    bool HasNumDataItem(DWORD numID) const override { return numID == askedNumID; }
    bool WriteSpecByXML(const char*, NSKZCore::CXMLWriter&, bool) const override { return false; }
    NSKZCore::CXMLReader::EMthRetOfReadXML ReadSpecByXML(const char*, NSKZCore::CXMLReader&) override
    {
        return NSKZCore::CXMLReader::READXML_NOELEMENT;
    }
    NSKZCore::IBtnCnd* CreateClone() const override
    {
        auto* const clone = new CTestBtnCnd(*this);
        if (living != nullptr)
            ++*living;
        return clone;
    }
    void Destroy() override
    {
        if (living != nullptr)
            --*living;
        delete this;
    }

    std::vector<DWORD> metBtnIDs;
    int* living;
    bool answers = true;
    DWORD askedNumID = 0; // the numeric item that it claims to ask for

private:
    bool IsMet(DWORD btnID) const
    {
        return std::find(metBtnIDs.begin(), metBtnIDs.end(), btnID) != metBtnIDs.end();
    }
};

} // namespace NSKZ::Test

#endif
