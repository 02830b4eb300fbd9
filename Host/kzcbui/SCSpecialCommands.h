#ifndef SCSPECIALCOMMANDS_H
#define SCSPECIALCOMMANDS_H

namespace NSKZ::Host {

class CCommandSet;

// The commands of the group "special": they make special buttons, show and change them.
class SCSpecialCommands
{
public:
    SCSpecialCommands() = delete;

    static void AddTo(CCommandSet& commands);
};

} // namespace NSKZ::Host

#endif
