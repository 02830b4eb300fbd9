#ifndef SCCOPYCOMMANDS_H
#define SCCOPYCOMMANDS_H

namespace NSKZ::Host {

class CCommandSet;

// Commands for copies of the analysis, side by side.
class SCCopyCommands
{
public:
    SCCopyCommands() = delete;

    static void AddTo(CCommandSet& commands);
};

} // namespace NSKZ::Host

#endif
