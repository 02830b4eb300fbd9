#ifndef SCOMMANDCONTEXT_H
#define SCOMMANDCONTEXT_H

#include <string>

namespace NSKZ::Host {

class CCommandSet;
class CWorkspace;

// What a command works on. All borrowed.
struct SCommandContext
{
    CWorkspace& workspace;
    const CCommandSet& commands;
    bool listsAll = false; // lists are whole unless --max tells a number: for programs, not for people
    bool quits = false;    // set by a command that ends the session
    std::string line;      // the command that runs, as it was typed
    bool hasDone = false;  // set by a command that cannot be undone by failing, when only its answer is left
};

} // namespace NSKZ::Host

#endif
