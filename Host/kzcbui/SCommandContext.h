#ifndef SCOMMANDCONTEXT_H
#define SCOMMANDCONTEXT_H

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
};

} // namespace NSKZ::Host

#endif
