#ifndef SCSYSTEMFILE_H
#define SCSYSTEMFILE_H

#include <string>

namespace NSKZ::Host {

// Files as the user of a command line names them: whatever the system takes for a path.
class SCSystemFile
{
public:
    SCSystemFile() = delete;

    // The whole content of a file, of whatever kind it is. Throws ECHostError with
    // EXITSTATUS_TABLE_UNREADABLE.
    static std::string Read(const std::string& path);
};

} // namespace NSKZ::Host

#endif
