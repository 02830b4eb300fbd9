#ifndef SDATEGROUPBTNIDLIST_H
#define SDATEGROUPBTNIDLIST_H

#include "VCDate.h"

#include <map>
#include <memory>
#include <vector>

namespace NSKZ::NSKZCore {

// A group of dates or times: what its buttons have in common, and the buttons.
struct SDateGroupBtnIDList
{
    std::unique_ptr<VCDate> date;
    std::vector<DWORD> btnIDList; // ascending
};

// Groups by the number of their date (VCDate::GetDateNumeric), so in the order of their dates.
using CDateGroupMap = std::map<unsigned long long, SDateGroupBtnIDList>;

} // namespace NSKZ::NSKZCore

#endif
