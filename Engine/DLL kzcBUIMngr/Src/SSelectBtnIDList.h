#ifndef SSELECTBTNIDLIST_H
#define SSELECTBTNIDLIST_H

#include "KzcPlatform.h"

#include <vector>

namespace NSKZ::NSKZCore {

// One class's share of a whole selection.
struct SSelectBtnIDList
{
    DWORD btnClassID = 0;
    std::vector<DWORD> btnIDList;    // the selected buttons, in the class's own order
    bool newBtnMadeSelState = false; // VCBtnClass::IsNewBtnMadeSelState, restored with the selection
};

} // namespace NSKZ::NSKZCore

#endif
