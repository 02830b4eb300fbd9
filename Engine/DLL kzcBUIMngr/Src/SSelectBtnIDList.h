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
    bool newBtnMadeSelState = false; // whether a button made later comes into being selected
};

} // namespace NSKZ::NSKZCore

#endif
