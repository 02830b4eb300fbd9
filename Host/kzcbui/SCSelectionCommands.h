#ifndef SCSELECTIONCOMMANDS_H
#define SCSELECTIONCOMMANDS_H

namespace NSKZ::Host {

class CCommandSet;

// The commands that select buttons and items, and those that show what is selected.
class SCSelectionCommands
{
public:
    SCSelectionCommands() = delete;

    static void AddTo(CCommandSet& commands);
};

} // namespace NSKZ::Host

#endif
