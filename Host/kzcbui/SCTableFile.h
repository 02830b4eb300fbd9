#ifndef SCTABLEFILE_H
#define SCTABLEFILE_H

#include "CCSVLoader.h"
#include "CSourceDataMngr.h"

#include <string>

namespace NSKZ::Host {

// Files of comma-separated values that a command names.
class SCTableFile
{
public:
    SCTableFile() = delete;

    // Reads a file, named in UTF-8, into a table of its own. Throws ECCommandError with the file, the line
    // and the reason.
    static NSKZCore::CSourceDataMngr Read(const std::string& path,
                                          const NSKZCore::CCSVLoader::SOptions& options);

    // The line, where there is one, and the reason.
    static std::string Describe(const NSKZCore::ECSVLoadError& error);

    // The table as text in the code page in force, which CCSVLoader reads back as it is: a line with the
    // names of the fields, then one for each record. A value stands in quotes where it must.
    static std::string Write(const NSKZCore::CSourceDataMngr& table, char delimiter);

    // Writes such a file, flushes it to the disk and gives it its name in one step of the system; until then
    // it is `path` with ".kzcbui-new" behind it. Throws ECCommandError, also if there is something of that
    // name already that is not to be replaced.
    static void WriteFile(const std::string& path, const std::string& content, bool replaces);
};

} // namespace NSKZ::Host

#endif
