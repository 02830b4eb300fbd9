#include "SCTableFile.h"

#include "ECCommandError.h"
#include "SCDurableFile.h"
#include "SCSystemFile.h"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

namespace NSKZ::Host {

namespace {

namespace fs = std::filesystem;
using NSKZCore::CCSVLoader;
using NSKZCore::CFldValueList;
using NSKZCore::CSourceDataMngr;
using NSKZCore::SCDurableFile;

constexpr const char* SUFFIX_OF_NEW = ".kzcbui-new";
constexpr std::string_view UTF8_BYTE_ORDER_MARK = "\xEF\xBB\xBF";

[[noreturn]] void RefuseWriting(const std::string& path, const std::string& reason)
{
    throw ECCommandError("\"" + path + "\" cannot be written: " + reason + ".");
}

// In a character of two bytes none is a quote or a line end. One may be the delimiter; quotes more than are
// needed do no harm.
void AppendValue(std::string_view value, char delimiter, bool isAlone, std::string& text)
{
    const char special[] = {delimiter, '"', '\r', '\n'};
    if (value.find_first_of({special, sizeof special}) == std::string_view::npos &&
        !value.starts_with(UTF8_BYTE_ORDER_MARK) && !(value.empty() && isAlone)) {
        text += value;
        return;
    }
    text += '"';
    for (const char character : value)
        text.append(character == '"' ? 2 : 1, character);
    text += '"';
}

} // namespace

CSourceDataMngr SCTableFile::Read(const std::string& path, const CCSVLoader::SOptions& options)
{
    std::string content;
    if (const std::error_code error = SCSystemFile::ReadInPieces(
            SCSystemFile::FromUTF8(path), [&](std::string_view piece) { content += piece; })) {
        throw ECCommandError("\"" + path + "\" cannot be read: " + error.message() + ".");
    }
    CSourceDataMngr table;
    try {
        CCSVLoader(options).LoadMemory(content, "", table);
    } catch (const NSKZCore::ECSVLoadError& error) {
        throw ECCommandError(path + ": " + Describe(error));
    }
    return table;
}

std::string SCTableFile::Describe(const NSKZCore::ECSVLoadError& error)
{
    const std::string line = error.GetLine() != 0 ? "line " + std::to_string(error.GetLine()) + ": " : "";
    return line + error.GetReason();
}

std::string SCTableFile::Write(const CSourceDataMngr& table, char delimiter)
{
    std::vector<DWORD> fldIDs;
    table.GetSrcFrmDataFldID(fldIDs);
    const bool isAlone = fldIDs.size() == 1;
    std::string text;
    std::vector<const CFldValueList*> values;
    for (const DWORD fldID : fldIDs) {
        const char* name = nullptr;
        table.GetItemName(fldID, name);
        if (!values.empty())
            text += delimiter;
        AppendValue(name, delimiter, isAlone, text);
        values.push_back(table.GetFldData(fldID));
    }
    text += '\n';
    for (DWORD rec = 0; rec < table.GetRecCount(); ++rec) {
        for (std::size_t pos = 0; pos < values.size(); ++pos) {
            if (pos != 0)
                text += delimiter;
            AppendValue(values[pos]->GetValue(rec), delimiter, isAlone, text);
        }
        text += '\n';
    }
    return text;
}

void SCTableFile::WriteFile(const std::string& path, const std::string& content, bool replaces)
{
    const fs::path file = SCSystemFile::FromUTF8(path);
    const fs::path newFile = SCSystemFile::FromUTF8(path + SUFFIX_OF_NEW);
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (fs::is_directory(status))
        RefuseWriting(path, "it is a directory");
    if (fs::exists(status) && !replaces)
        RefuseWriting(path, "it is there already, and only --replace replaces it");
    error = SCSystemFile::WriteNew(newFile, content);
    if (error == std::errc::file_exists)
        RefuseWriting(path + SUFFIX_OF_NEW, "it is there already; it may be what an interrupted one left");
    if (!error)
        error = SCDurableFile::SyncFile(newFile);
    if (!error)
        fs::rename(newFile, file, error);
    if (error) {
        const std::string reason = error.message();
        fs::remove(newFile, error);
        RefuseWriting(path, reason);
    }
    const fs::path parent = file.has_parent_path() ? file.parent_path() : fs::path(".");
    if (const std::error_code syncError = SCDurableFile::SyncDirectory(parent))
        RefuseWriting(path, syncError.message());
}

} // namespace NSKZ::Host
