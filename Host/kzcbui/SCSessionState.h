#ifndef SCSESSIONSTATE_H
#define SCSESSIONSTATE_H

#include "SSavedSession.h"

#include <cstddef>

namespace NSKZ::Host {

// Between a workspace and what a save holds of it beside the engine's files.
class SCSessionState
{
public:
    SCSessionState() = delete;

    // All of an SSavedSession but its files. Throws ECCommandError for a condition that has no words. Cost:
    // every value of the table and every button is read once.
    static SSavedSession Collect(const CWorkspace& workspace);

    // What the engine does not save: what is switched off. Special buttons of virtual items that are switched
    // off are not counted for themselves.
    struct SLeftOut
    {
        std::size_t items = 0;
        std::size_t btns = 0;
    };
    static SLeftOut CountLeftOut(const CWorkspace& workspace);

    // Throws ECCommandError, which tells the difference, unless the session is one over the workspace's
    // table. Cost: every value of the table is read once, unless something else differs already.
    static void RequireSameTable(const SSavedSession& session, const CWorkspace& workspace);

    // The records of the limitation, empty for none; the session is one over the workspace's table.
    static std::vector<DWORD> ReadLimitation(const SSavedSession& session);

    // Brings back the conditions, the selection and the selected items in a workspace into whose environment
    // the engine's files were just read. Throws ECCommandError for a condition that cannot be read any more,
    // and for what names something that is not there; the workspace is half restored then. Returns whether
    // everything shows as it did: a selection that was made in steps which cannot be told from what it was in
    // the end may not.
    static bool Restore(const SSavedSession& session, CWorkspace& workspace);
};

} // namespace NSKZ::Host

#endif
