#ifndef SBTNCLASSIDANDBTNID_H
#define SBTNCLASSIDANDBTNID_H

#include "KzcPlatform.h"

#include <compare>

namespace NSKZ::NSKZCore {

// A button named together with its class: the element of ordered sets. Orders by class first, then by button.
struct SBtnClassIDAndBtnID
{
    DWORD btnClassID = 0;
    DWORD btnID = 0;

    friend constexpr auto operator<=>(const SBtnClassIDAndBtnID&, const SBtnClassIDAndBtnID&) = default;
};

} // namespace NSKZ::NSKZCore

#endif
