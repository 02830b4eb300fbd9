#ifndef SSAVEDSESSION_H
#define SSAVEDSESSION_H

#include "CWorkspace.h"
#include "SCSavedFiles.h"
#include "SCStretches.h"

#include <optional>
#include <string>
#include <vector>

namespace NSKZ::Host {

// What a save holds beside what the engine writes: which table it is of, and what the engine's files leave
// out. Texts are UTF-8.
struct SSavedSession
{
    struct SField
    {
        std::string name;
        std::string type; // as the option --type takes it: "number", "date:ymd-hyphen"
        std::string digest;
        DWORD fldID = 0; // by which the engine's files name it

        bool operator==(const SField&) const = default;
    };
    struct SCnd
    {
        DWORD itemID = 0;
        DWORD btnID = 0;
        std::string text; // as it was typed

        bool operator==(const SCnd&) const = default;
    };
    // One press of many, which together make the selection.
    struct SPress
    {
        DWORD itemID = 0;
        std::vector<SStretch> btnIDs;
        std::optional<DWORD> recs; // how many records its level has, where there is a level

        bool operator==(const SPress&) const = default;
    };

    // The table.
    int codePage = 0;
    DWORD recCount = 0;
    std::vector<SField> fields;
    CWorkspace::SCalendar calendar{};

    // The session.
    std::optional<std::vector<SStretch>> limitation;
    std::vector<SCnd> cnds;
    std::vector<SPress> selection;
    std::vector<DWORD> itemsWithNewBtns; // whose later buttons come up selected
    std::vector<DWORD> selectedItems;    // in the order in which they were selected
    std::string digestOfState;           // of what all this shows to a user

    // The engine's files.
    std::vector<SSavedFile> files;

    bool operator==(const SSavedSession&) const = default;
};

} // namespace NSKZ::Host

#endif
