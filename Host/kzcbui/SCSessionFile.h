#ifndef SCSESSIONFILE_H
#define SCSESSIONFILE_H

#include "SSavedSession.h"

#include <string>
#include <string_view>

namespace NSKZ::Host {

// The file in which a save keeps an SSavedSession: one JSON object.
class SCSessionFile
{
public:
    SCSessionFile() = delete;

    // Goes up with every change of the file after which an older program would misread it.
    static constexpr DWORD FORMAT_VERSION = 2;
    // The first format, in which fields have no identifiers: they are 1, 2, ... in their order.
    static constexpr DWORD FORMAT_WITHOUT_FLDIDS = 1;

    static std::string Write(const SSavedSession& session);

    // Throws ECCommandError, which tells the place, for what is no such object: everything is looked at, so
    // that numbers are in their ranges, stretches end where they begin or later and those of the limitation
    // ascend, texts are there. Whether they go with a table and its items is for others to see. Memory goes
    // with the text.
    static SSavedSession Read(std::string_view text);
};

} // namespace NSKZ::Host

#endif
