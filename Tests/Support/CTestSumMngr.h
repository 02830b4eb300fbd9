#ifndef CTESTSUMMNGR_H
#define CTESTSUMMNGR_H

#include "ISumValueMngr.h"

#include <map>
#include <set>
#include <vector>

namespace NSKZ::Test {

// Numbers that a test gives to buttons: one for each, whatever the class and the item. Every kind of value is
// answered, each with an offset of its own, so that it shows which one was asked for.
class CTestSumMngr final : public NSKZCore::ISumValueMngr
{
public:
    CTestSumMngr() = default;
    explicit CTestSumMngr(std::map<DWORD, double> valueOfBtn) : values(std::move(valueOfBtn)) {}

    bool GetSumValue(DWORD, DWORD btnID, DWORD, double& value) const override
    {
        return Answer(btnID, 0, value);
    }
    bool GetCountValue(DWORD, DWORD btnID, DWORD, DWORD& count) const override
    {
        double value = 0;
        if (!Answer(btnID, 1000, value))
            return false;
        count = static_cast<DWORD>(value);
        return true;
    }
    bool GetAverageValue(DWORD, DWORD btnID, DWORD, double& value) const override
    {
        return Answer(btnID, 2000, value);
    }
    bool GetEachValue(DWORD, DWORD, DWORD, std::vector<double>&) const override
    {
        ++askedCount;
        return true;
    }
    bool GetTotalValue(DWORD btnClassID, DWORD numID, double& value) const override
    {
        ++totalAskedCount;
        askedClassID = btnClassID;
        askedNumID = numID;
        if (refusesTotal)
            return false;
        value = total;
        return true;
    }
    bool GetTotalAbsoluteValue(DWORD, DWORD, double& value) const override
    {
        value = total;
        return true;
    }
    bool GetWeightedAvgValue(DWORD, DWORD btnID, DWORD, double& value) const override
    {
        return Answer(btnID, 3000, value);
    }
    bool GetMaxValue(DWORD, DWORD btnID, DWORD, double& value) const override
    {
        return Answer(btnID, 4000, value);
    }
    bool GetMinValue(DWORD, DWORD btnID, DWORD, double& value) const override
    {
        return Answer(btnID, 5000, value);
    }
    bool GetLatestValue(DWORD, DWORD btnID, DWORD, double& value) const override
    {
        return Answer(btnID, 6000, value);
    }
    bool GetAbsoluteValue(DWORD, DWORD btnID, DWORD, double& value) const override
    {
        return Answer(btnID, 7000, value);
    }
    bool ExistNumDataItem(DWORD numID) const override { return missingItems.count(numID) == 0; }

    std::map<DWORD, double> values; // a button without one is refused
    std::set<DWORD> missingItems;
    double total = 100;
    bool refusesTotal = false;
    mutable int askedCount = 0;
    mutable int totalAskedCount = 0;
    mutable DWORD askedClassID = 0; // for the total
    mutable DWORD askedNumID = 0;

private:
    bool Answer(DWORD btnID, double offset, double& value) const
    {
        ++askedCount;
        const auto found = values.find(btnID);
        if (found == values.end())
            return false;
        value = found->second + offset;
        return true;
    }
};

} // namespace NSKZ::Test

#endif
