#ifndef SHIERARCHYINFO_H
#define SHIERARCHYINFO_H

#include "KzcPlatform.h"

#include <memory>

namespace NSKZ::NSKZCore {

// One level of the selection: the records that remain after the buttons of a class were pressed on top of the
// levels before. Levels stand in order of depth, each class has at most one, and the records of a level are
// among those of the level before it.
struct SHierarchyInfo
{
    DWORD depth = 0; // position when made, 0 for the first
    DWORD btnClassID = 0;
    std::unique_ptr<DWORD[]> recList; // ascending; null in mode And
    DWORD recCount = 0;               // 0 in mode And
};

} // namespace NSKZ::NSKZCore

#endif
