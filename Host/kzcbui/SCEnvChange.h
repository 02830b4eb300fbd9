#ifndef SCENVCHANGE_H
#define SCENVCHANGE_H

#include "CWorkspace.h"
#include "ECCommandError.h"
#include "SCommandContext.h"

#include <new>

namespace NSKZ::Host {

// Changes of the environment that may run out of memory halfway.
class SCEnvChange
{
public:
    SCEnvChange() = delete;

    // Lets `change`, which is given the environment, change it, and returns what it returned. If memory is
    // exhausted the selections are cleared, so that nothing half done is left, and ECCommandError tells it.
    template <class TChange>
    static auto Run(SCommandContext& context, const TChange& change)
    {
        NSKZCore::CBUIDataMngr& env = context.workspace.GetEnv();
        try {
            return change(env);
        } catch (const std::bad_alloc&) {
            env.ClearAllBtnSelections(true);
            throw ECCommandError("There is not enough memory; all selections were cleared.");
        }
    }
};

} // namespace NSKZ::Host

#endif
