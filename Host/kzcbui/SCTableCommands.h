#ifndef SCTABLECOMMANDS_H
#define SCTABLECOMMANDS_H

namespace NSKZ::Host {

class CCommandSet;

// Commands that change the table and take changes back.
class SCTableCommands
{
public:
    SCTableCommands() = delete;

    static void AddTo(CCommandSet& commands);
};

} // namespace NSKZ::Host

#endif
