#ifndef SCEXITSTATUS_H
#define SCEXITSTATUS_H

namespace NSKZ::Host {

// What the program tells its caller at its end.
enum EExitStatus : int
{
    EXITSTATUS_OK = 0,             // all commands went well
    EXITSTATUS_COMMAND_FAILED = 1, // at least one did not
    EXITSTATUS_WRONG_USAGE = 2,
    EXITSTATUS_TABLE_UNREADABLE = 3, // also where the user cancelled
};

} // namespace NSKZ::Host

#endif
