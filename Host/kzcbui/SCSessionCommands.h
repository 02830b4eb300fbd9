#ifndef SCSESSIONCOMMANDS_H
#define SCSESSIONCOMMANDS_H

namespace NSKZ::Host {

class CCommandSet;

// The commands about the session itself: help, the end, the engine's tables.
class SCSessionCommands
{
public:
    SCSessionCommands() = delete;

    static void AddTo(CCommandSet& commands);
};

} // namespace NSKZ::Host

#endif
