#ifndef SCITEMCOMMANDS_H
#define SCITEMCOMMANDS_H

namespace NSKZ::Host {

class CCommandSet;

// The commands that show items and buttons and name them.
class SCItemCommands
{
public:
    SCItemCommands() = delete;

    static void AddTo(CCommandSet& commands);
};

} // namespace NSKZ::Host

#endif
