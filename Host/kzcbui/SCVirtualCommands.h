#ifndef SCVIRTUALCOMMANDS_H
#define SCVIRTUALCOMMANDS_H

namespace NSKZ::Host {

class CCommandSet;

// The commands about virtual items, which stand on no column of the table. Their buttons are made and changed
// by the commands about special buttons.
class SCVirtualCommands
{
public:
    SCVirtualCommands() = delete;

    static void AddTo(CCommandSet& commands);
};

} // namespace NSKZ::Host

#endif
