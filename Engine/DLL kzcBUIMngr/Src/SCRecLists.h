#ifndef SCRECLISTS_H
#define SCRECLISTS_H

#include "IRpLink.h"

#include <vector>

namespace NSKZ::NSKZCore {

// A walk through all that a button-to-record table holds.
class SCRecLists
{
public:
    SCRecLists() = delete;

    // Calls visit(class, its record lists, length of its record area) for each class that has a field. The
    // lists are copies, good until the next call; the table may be changed meanwhile.
    template <class TVisit>
    static void VisitFlds(const IRpLink& table, const TVisit& visit)
    {
        std::vector<DWORD> btnClassIDs;
        table.GetBtnClassIDList(btnClassIDs);
        std::vector<DWORD> recArea;
        TCBtnIDAssArr<SRecordList> recLists;
        for (const DWORD btnClassID : btnClassIDs) {
            DWORD recAreaSize = 0;
            table.GetRecCountOfFld(btnClassID, recAreaSize);
            recArea.resize(recAreaSize);
            table.GetAllRecList(btnClassID, recLists, recArea.data());
            visit(btnClassID, recLists, recAreaSize);
        }
    }
};

} // namespace NSKZ::NSKZCore

#endif
