#include "CEngineFiles.h"

#include "CXMLReader.h"
#include "CXMLWriter.h"
#include "ECCommandError.h"
#include "SCHostText.h"
#include "SCSystemFile.h"
#include "SCSystemPath.h"

#include <utility>

namespace NSKZ::Host {

namespace {

// Below which the engine keeps the files of its link tables, as SCSavedFiles writes names.
constexpr std::string_view PREFIX_OF_LINKTABLES = "BUI/";
// A folder that no save has: what the engine is to read from there is lost.
constexpr const char* NAME_OF_NO_FOLDER = "none\\";

using NSKZCore::CBUIDataMngr;
using NSKZCore::CXMLReader;
using NSKZCore::CXMLWriter;

std::string DescribeLastError()
{
    const DWORD error = GetLastError();
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return "a file or directory is not there";
    case ERROR_TOO_MANY_OPEN_FILES:
        return "too many files are open";
    case ERROR_ACCESS_DENIED:
        return "the system does not permit it";
    case ERROR_INVALID_DATA:
        return "something cannot be kept in a file";
    case ERROR_DISK_FULL:
        return "no space is left";
    case ERROR_FILENAME_EXCED_RANGE:
        return "the path is too long";
    default:
        return "the system reports error " + std::to_string(error);
    }
}

[[noreturn]] void RefuseWriting(const std::string& what, const std::string& reason)
{
    throw ECCommandError(what + " cannot be written: " + reason + ".");
}

// Writes one of the two XML files; `write` is told how.
template <class TWrite>
void WriteFile(const std::string& folder, const std::string& name, const TWrite& write)
{
    SetLastError(ERROR_SUCCESS);
    CXMLWriter writer((folder + name).c_str());
    if (write(writer) && writer.Close())
        return;
    const std::string reason = writer.GetFailureText();
    RefuseWriting("\"" + name + "\"",
                  reason.empty() ? DescribeLastError() : reason.substr(0, reason.find_last_not_of('.') + 1));
}

// Reads one; `read` is told how and gives the engine's answer.
template <class TRead>
void ReadFile(const std::string& folder, const std::string& name, const TRead& read)
{
    CXMLReader reader((folder + name).c_str());
    const CXMLReader::EMthRetOfReadXML result = read(reader);
    if (reader.HasFailed()) {
        throw ECCommandError("\"" + name + "\" cannot be read: line " +
                             std::to_string(reader.GetFailureLine()) + ": " + reader.GetFailureText());
    }
    if (result != CXMLReader::READXML_OK) {
        throw ECCommandError("\"" + name + "\" is not what the engine writes (its answer is " +
                             std::to_string(result) + ").");
    }
}

// Whether the environment has an item for every field of the table, and no other but virtual ones.
void RequireItemsOfTable(const CWorkspace& workspace)
{
    std::vector<DWORD> fldIDs;
    workspace.GetTable().GetSrcFrmDataFldID(fldIDs);
    std::map<DWORD, DWORD> itemOfFld;
    workspace.GetEnv().GetBtnClassIDCnvObj(itemOfFld);
    for (const DWORD fldID : fldIDs) {
        if (itemOfFld.erase(fldID) == 0) {
            throw ECCommandError("\"" + std::string(CEngineFiles::NAME_OF_COMMON) +
                                 "\" lacks the item of the field " + std::to_string(fldID) + ".");
        }
    }
    if (!itemOfFld.empty()) {
        throw ECCommandError("\"" + std::string(CEngineFiles::NAME_OF_COMMON) + "\" has an item of a field " +
                             std::to_string(itemOfFld.begin()->first) + ", which the table lacks.");
    }
}

} // namespace

CEngineFiles::CEngineFiles(const std::filesystem::path& directory)
{
    // The engine takes whole paths only.
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(directory, error);
    std::filesystem::path ofEngine;
    if (error || !SCHostText::IntoEngine(SCSystemFile::IntoUTF8(whole), folder) ||
        !NSKZCore::SCSystemPath::ConvertIntoSystemPath((folder += '\\').c_str(), ofEngine) ||
        ofEngine.generic_u8string() != (whole / "").generic_u8string()) {
        throw ECCommandError("The engine cannot name the directory \"" + SCSystemFile::IntoUTF8(directory) +
                             "\" in code page " + std::to_string(_getmbcp()) + "; name another one.");
    }
}

void CEngineFiles::Write(const CBUIDataMngr& env) const
{
    WriteFile(folder, NAME_OF_COMMON,
              [&](CXMLWriter& writer) { return env.WriteCommonSpecByXML(folder.c_str(), writer, true); });
    WriteFile(folder, NAME_OF_FIXED, [&](CXMLWriter& writer) { return env.WriteFixedSpecByXML(writer); });
}

bool CEngineFiles::IsLinkTable(std::string_view name) noexcept
{
    return name.starts_with(PREFIX_OF_LINKTABLES);
}

bool CEngineFiles::Read(CWorkspace& workspace, std::vector<DWORD> limitedRecs, bool areLinkTablesWhole) const
{
    CBUIDataMngr& env = workspace.GetEnv();
    const DWORD recCount = workspace.GetTable().GetRecCount();
    const std::string folderOfTables = areLinkTablesWhole ? folder : folder + NAME_OF_NO_FOLDER;
    ReadFile(folder, NAME_OF_COMMON, [&](CXMLReader& reader) {
        return env.ReadCommonSpecByXML(folderOfTables.c_str(), reader, recCount);
    });
    RequireItemsOfTable(workspace);
    // The engine forgets the records where it has lost the tables of them.
    const bool isLost = env.GetRecCountOfSrcData() != recCount;
    if (isLost) {
        if (!env.AdjstAccordingToInsertRec(0, recCount))
            throw ECCommandError("The link tables were lost, and the engine could not build them anew.");
        env.ClearUndoOfTheSrcData();
    }
    ReadFile(folder, NAME_OF_FIXED, [&](CXMLReader& reader) {
        return env.ReadFixedSpecByXML(reader, limitedRecs.data(), static_cast<DWORD>(limitedRecs.size()));
    });
    return isLost;
}

} // namespace NSKZ::Host
