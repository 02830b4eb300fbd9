#ifndef CDISTINCTBTNIDS_H
#define CDISTINCTBTNIDS_H

#include "TCBtnIDAssArr.h"

#include <vector>

namespace NSKZ::NSKZCore {

// Lists buttons in the order in which they are met: a source button the first time only, anything else every
// time.
class CDistinctBtnIDs
{
public:
    // Empties `list`, which is borrowed and filled by what follows.
    explicit CDistinctBtnIDs(std::vector<DWORD>& list) noexcept : btnIDs(list) { btnIDs.clear(); }

    // Throws std::bad_alloc; what was listed before stays.
    void Meet(DWORD btnID)
    {
        if (SCBUICoreCom::IsSrcBtn(btnID)) {
            if (seen.Exist(btnID))
                return;
            seen.SetOfSrcBtn(btnID, 1);
        }
        btnIDs.push_back(btnID);
    }
    void Meet(const DWORD* cells, DWORD count)
    {
        for (DWORD i = 0; i < count; ++i)
            Meet(cells[i]);
    }

private:
    std::vector<DWORD>& btnIDs;
    TCBtnIDAssArr<unsigned char> seen;
};

} // namespace NSKZ::NSKZCore

#endif
