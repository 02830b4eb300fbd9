#ifndef SCSAVECOMMANDS_H
#define SCSAVECOMMANDS_H

namespace NSKZ::Host {

class CCommandSet;

// The commands that keep the session in a directory and bring it back.
class SCSaveCommands
{
public:
    SCSaveCommands() = delete;

    static void AddTo(CCommandSet& commands);
};

} // namespace NSKZ::Host

#endif
