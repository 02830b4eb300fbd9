#ifndef SCRECORDCOMMANDS_H
#define SCRECORDCOMMANDS_H

namespace NSKZ::Host {

class CCommandSet;

// The commands about records: which are in force, which belong to which button, and their sums.
class SCRecordCommands
{
public:
    SCRecordCommands() = delete;

    static void AddTo(CCommandSet& commands);
};

} // namespace NSKZ::Host

#endif
