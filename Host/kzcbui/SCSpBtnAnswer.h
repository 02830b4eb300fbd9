#ifndef SCSPBTNANSWER_H
#define SCSPBTNANSWER_H

#include "CWorkspace.h"
#include "SCommand.h"

#include <string>
#include <vector>

namespace NSKZ::Host {

// Special buttons as they stand: for answers, and from there for people.
class SCSpBtnAnswer
{
public:
    SCSpBtnAnswer() = delete;

    // An object of "item", "id", "text", "kind" ("inc", "cll", "virinc"), "refItem" (the item whose buttons a
    // virtual inc button groups, null for others and where it is gone), "by" (how its members are picked:
    // "list", "condition"), "members" (how many), "effective", "displayed", "visible" (the reasons to hide it
    // as a number), "dispMember" (null for a cll button), "managedByUser" and "condition" (a text, or null).
    static CAnswer Describe(const CWorkspace& workspace, DWORD itemID, DWORD btnID);

    // How the members of such an object are picked, in words.
    static std::string DescribePicking(const CAnswer& spBtn);
    // Shows such objects as a table; with `withItem` the item stands in it.
    static void Show(const CWorkspace& workspace, const std::vector<CAnswer>& spBtns, bool withItem,
                     CTextOutput& output);
};

} // namespace NSKZ::Host

#endif
