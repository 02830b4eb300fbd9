#ifndef CENGINEFILES_H
#define CENGINEFILES_H

#include "CWorkspace.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace NSKZ::Host {

// The files in which the engine keeps an environment: common.xml, fixed.xml and the link tables below BUI,
// all in one directory.
//
// All operations throw ECCommandError, a sentence that tells the file and the reason.
class CEngineFiles
{
public:
    static constexpr const char* NAME_OF_COMMON = "common.xml";
    static constexpr const char* NAME_OF_FIXED = "fixed.xml";

    // Nothing is looked at on the disk. The engine must be able to name the directory: its whole path, from
    // the root on, has no character that the code page in force lacks, and off Windows no backslash.
    explicit CEngineFiles(const std::filesystem::path& directory);

    // Writes the files, which must not be there yet, into the directory, which must.
    void Write(const NSKZCore::CBUIDataMngr& env) const;
    // Whether this is the name of a file of a link table, as SCSavedFiles lists it.
    static bool IsLinkTable(std::string_view name) noexcept;

    // Reads the files into the environment of a workspace, which has no items yet, and limits it to the
    // listed records; an empty list is no limitation. Link tables that the engine cannot use, and all unless
    // `areLinkTablesWhole`, are not read but built from the table; items, buttons and what stands on them
    // keep their identifiers. Returns whether that was so. Where this throws the workspace is of no more use.
    bool Read(CWorkspace& workspace, std::vector<DWORD> limitedRecs, bool areLinkTablesWhole) const;

private:
    std::string folder; // in the engine's code page, with a separator at its end
};

} // namespace NSKZ::Host

#endif
