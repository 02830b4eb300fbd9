#ifndef SCDATECOMMANDS_H
#define SCDATECOMMANDS_H

namespace NSKZ::Host {

class CCommandSet;

// The commands about dates and times: display forms, the calendar, groups, comparisons and the latest date.
class SCDateCommands
{
public:
    SCDateCommands() = delete;

    static void AddTo(CCommandSet& commands);
};

} // namespace NSKZ::Host

#endif
