#ifndef CBTNLISTER_H
#define CBTNLISTER_H

#include "CWorkspace.h"
#include "SCommand.h"

#include <vector>

namespace NSKZ::Host {

// Describes buttons of one item as they stand: for answers, and from there for people.
class CBtnLister
{
public:
    // `workspace` is borrowed. Cost: a pass over the target records.
    CBtnLister(const CWorkspace& workspace, DWORD itemID);

    // An object of "id", "text", "kind" ("absent" for a member that is no button at present), "displayed",
    // "selected", "visible" (the reasons to hide it as a number), "records" (how many it has) and
    // "targetRecords" (how many of them are among those that the item stands on).
    CAnswer Describe(DWORD btnID);
    // Puts the first `max` of the buttons into `answer` as the list "buttons", and how many there are in all
    // as "count".
    void DescribeInto(CAnswer& answer, const std::vector<DWORD>& btnIDs, std::size_t max);

    // Shows what DescribeInto put into an answer. `silentReasons` are reasons to hide a button that go
    // without saying there.
    static void Show(const CAnswer& answer, CTextOutput& output, unsigned int silentReasons = 0);

private:
    const CWorkspace& workspace;
    DWORD itemID;
    std::vector<bool> isTargetRec;
    std::vector<DWORD> recs;
};

} // namespace NSKZ::Host

#endif
