#ifndef CTESTCOMPONENT_H
#define CTESTCOMPONENT_H

#include "IComponentOfBscBtnCnd.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace NSKZ::Test {

// A component with an answer that a test gives. All copies of one share a record of what was done with them.
class CTestComponent final : public NSKZCore::IComponentOfBscBtnCnd
{
public:
    struct SRecord
    {
        int liveCount = 0;
        int evaluatedCount = 0;
        std::vector<DWORD> population; // of the last evaluation
        std::string folder;            // of the last writing
        bool withData = false;
    };

    explicit CTestComponent(std::vector<DWORD> btnIDs, bool isAnswered = true)
        : record(std::make_shared<SRecord>()), answer(std::move(btnIDs)), answered(isAnswered)
    {
        ++record->liveCount;
    }
    CTestComponent(const CTestComponent& other)
        : IComponentOfBscBtnCnd(other), record(other.record), answer(other.answer), answered(other.answered)
    {
        ++record->liveCount;
    }
    CTestComponent& operator=(const CTestComponent&) = delete;
    ~CTestComponent() override { --record->liveCount; }

    bool GetBtnIDListThatAppliesToTheCnd(DWORD, const std::vector<DWORD>& btnIDs,
                                         const NSKZCore::ISumValueMngr&,
                                         std::vector<DWORD>& result) const override
    {
        ++record->evaluatedCount;
        record->population = btnIDs;
        result = answer;
        return answered;
    }
    bool HasNumDataItem(DWORD numID) const override { return numID == answer.size(); }
    bool WriteSpecByXML(const char* folder, NSKZCore::CXMLWriter&, bool withData) const override
    {
        record->folder = folder;
        record->withData = withData;
        return answered;
    }
    NSKZCore::CXMLReader::EMthRetOfReadXML ReadSpecByXML(const char*, NSKZCore::CXMLReader&) override
    {
        return NSKZCore::CXMLReader::READXML_OK;
    }
    IComponentOfBscBtnCnd* CreateClone() const override { return new CTestComponent(*this); }

    const SRecord& GetRecord() const noexcept { return *record; }

private:
    std::shared_ptr<SRecord> record;
    std::vector<DWORD> answer;
    bool answered;
};

} // namespace NSKZ::Test

#endif
