#ifndef CENVQUERIES_H
#define CENVQUERIES_H

#include "CBUIDataMngr.h"

#include <vector>

namespace NSKZ::Test {

// What tests ask an environment most, as values: the base of fixtures that have one.
class CEnvQueries
{
public:
    using List = std::vector<DWORD>;

    // `askedEnv` may be made later. `summedFld` is the field of the sums.
    CEnvQueries(const NSKZCore::CBUIDataMngr& askedEnv, DWORD summedFld) : asked(askedEnv), numFld(summedFld)
    {}

    // {4711} for a button that has none to tell.
    List Members(DWORD btnClassID, DWORD btnID) const
    {
        List members{4711};
        asked.GetMemberBtnIDListOfSpBtn(btnClassID, btnID, members);
        return members;
    }
    List Displayed(DWORD btnClassID) const
    {
        List btnIDs;
        asked.GetDispBtnIDListOfBtnClass(btnClassID, btnIDs);
        return btnIDs;
    }
    List Selected(DWORD btnClassID) const
    {
        List btnIDs;
        asked.GetSelBtnIDListOfBtnClass(btnClassID, btnIDs);
        return btnIDs;
    }
    List TargetRecs() const
    {
        List recs(asked.GetRecCountOfSrcData());
        DWORD count = 0;
        asked.GetTargetRecList(recs.data(), count);
        recs.resize(count);
        return recs;
    }
    // Of a button that there is not: {4711}.
    List Recs(DWORD btnClassID, DWORD btnID) const
    {
        List recs(asked.GetRecCountOfSrcData());
        DWORD count = 0;
        if (!asked.GetRecListThatRelatesToBtn(btnClassID, btnID, recs.data(), count))
            return {4711};
        recs.resize(count);
        return recs;
    }
    unsigned int Why(DWORD btnClassID, DWORD btnID) const
    {
        unsigned int visibleInfo = 4711;
        asked.GetVisibleInfoOfBtn(btnClassID, btnID, visibleInfo);
        return visibleInfo;
    }
    double Sum(DWORD btnClassID, DWORD btnID) const
    {
        double value = -1.0;
        asked.GetSumValueCacheMngrObjRef().GetSumValue(btnClassID, btnID, numFld, value);
        return value;
    }
    double Total(DWORD btnClassID) const
    {
        double value = -1.0;
        asked.GetSumValueCacheMngrObjRef().GetTotalValue(btnClassID, numFld, value);
        return value;
    }

private:
    const NSKZCore::CBUIDataMngr& asked;
    DWORD numFld;
};

} // namespace NSKZ::Test

#endif
