#ifndef SCSEARCHCOMMANDS_H
#define SCSEARCHCOMMANDS_H

namespace NSKZ::Host {

class CCommandSet;

// The command that searches the buttons of an item by their texts.
class SCSearchCommands
{
public:
    SCSearchCommands() = delete;

    static void AddTo(CCommandSet& commands);
};

} // namespace NSKZ::Host

#endif
