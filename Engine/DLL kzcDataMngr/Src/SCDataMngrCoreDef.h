#ifndef SCDATAMNGRCOREDEF_H
#define SCDATAMNGRCOREDEF_H

#include "KzcDataMngrAPI.h"

#include <vector>

namespace NSKZ::NSKZCore {

// What the source table and those who follow its changes have in common.
class KZCDATAMNGR_API SCDataMngrCoreDef
{
public:
    SCDataMngrCoreDef() = delete;

    // The summary of a change of the source table, or of many at once. CSourceDataMngr::GetRenewalInfo makes
    // it; a host with a table of its own makes it itself.
    //
    // It is followed in this order. A change of the number of records is one at the head of the table: as
    // many new records stand before those that were there, or as many of the first ones have gone. Then the
    // deleted fields go. If data or form of any field changed, all records of all fields left are read again.
    // Then forms, then types, and at last the inserted fields are followed. So a list that holds a field more
    // than needed costs time alone, and records that changed elsewhere than at the head need a field among
    // the data-changed ones.
    //
    // Deleted fields are of the table before the change, all others of the table behind it.
    struct SBtnRenewalInfo
    {
        DWORD newRecCount = 0;
        DWORD oldRecCount = 0;
        std::vector<DWORD> deletedFldIDs;
        std::vector<DWORD> insertedFldIDs;
        std::vector<DWORD> specChangedFldIDs; // of another type than before
        std::vector<DWORD> dataChangedFldIDs; // with other values
        std::vector<DWORD> formChangedFldIDs; // with another form of dates or times, the type being the same
    };
};

} // namespace NSKZ::NSKZCore

#endif
