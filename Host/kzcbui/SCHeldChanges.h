#ifndef SCHELDCHANGES_H
#define SCHELDCHANGES_H

#include "CWorkspace.h"
#include "ECCommandError.h"

#include <string>

namespace NSKZ::Host {

// Changes of the table that are held, in the eyes of the commands that cannot go on beside them.
class SCHeldChanges
{
public:
    SCHeldChanges() = delete;

    // Throws ECCommandError if there are any. `reason` tells why there must be none, without a full stop.
    static void RequireNone(const CWorkspace& workspace, const std::string& reason)
    {
        if (!workspace.GetAnalysis().GetHeldCommands().empty()) {
            throw ECCommandError(reason +
                                 ": \"refresh\" takes held changes in, \"pending drop\" drops them.");
        }
    }
};

} // namespace NSKZ::Host

#endif
