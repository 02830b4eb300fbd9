#include "CXMLWriter.h"

#include "SCCodePageText.h"
#include "SCSystemPath.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string>
#include <string_view>

namespace NSKZ::NSKZCore {

namespace {

constexpr std::size_t INDENT = 2;
constexpr const char* TAG_TOO_LONG = "A tag is too long.";
constexpr std::string_view DECLARATION = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

bool IsASCIILetter(char c) noexcept
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsNameWithoutPrefix(std::string_view name) noexcept
{
    const auto isNameChar = [](char c) {
        return IsASCIILetter(c) || (c >= '0' && c <= '9') || c == '_' || c == '-' || c == '.';
    };
    return !name.empty() && (IsASCIILetter(name[0]) || name[0] == '_') &&
           std::all_of(name.begin(), name.end(), isNameChar);
}

// A name, or two with a colon between them.
bool IsName(std::string_view name) noexcept
{
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos
               ? IsNameWithoutPrefix(name)
               : IsNameWithoutPrefix(name.substr(0, colon)) && IsNameWithoutPrefix(name.substr(colon + 1));
}

// Whether a text in UTF-8 has one of U+FFFE and U+FFFF.
bool HasNonCharacter(std::string_view utf8) noexcept
{
    return utf8.find("\xEF\xBF\xBE") != std::string_view::npos ||
           utf8.find("\xEF\xBF\xBF") != std::string_view::npos;
}

// What stands for a character in the value of an attribute; empty if it stands for itself.
std::string_view GetEscape(char c) noexcept
{
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    // As such these would be read as blanks.
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    case '\r':
        return "&#13;";
    default:
        return {};
    }
}

std::string_view GetView(const char* text, DWORD len) noexcept
{
    return len == 0 ? std::string_view() : std::string_view(text, len);
}

} // namespace

class CXMLWriter::CImpl
{
public:
    explicit CImpl(const char* path)
        : codePage(_getmbcp()), buffer(DECLARATION), file(SCSystemPath::OpenFile(path, "wb"))
    {
        if (file == nullptr)
            FailWith("The file cannot be created.", GetLastError());
    }

    ~CImpl()
    {
        if (file != nullptr && writeError == ERROR_SUCCESS)
            Flush();
    }
    CImpl(const CImpl&) = delete;
    CImpl& operator=(const CImpl&) = delete;

    bool PutTag(std::string_view name, const std::vector<IXMLIO::SAttribute>& attributes, bool isEmptyElement)
    {
        if (!CheckFile())
            return false;
        if (nameEnds.empty() && hasRoot)
            return Refuse("A document has one root element only.");
        if (nameEnds.size() == IXMLIO::MAX_DEPTH)
            return Refuse("Elements are nested too deeply.");
        if (!IsName(name))
            return Refuse("The name of an element is no name for XML.");

        // Everything that can fail comes before the document changes.
        BeginLine();
        line += '<';
        line += name;
        for (std::size_t i = 0; i < attributes.size(); ++i) {
            if (!AppendAttribute(attributes, i))
                return false;
        }
        line += isEmptyElement ? "/>\n" : ">\n";
        if (line.size() > IXMLIO::MAX_TAG_SIZE)
            return Refuse(TAG_TOO_LONG);
        buffer.reserve(buffer.size() + line.size());
        if (!isEmptyElement) {
            openNames.reserve(openNames.size() + name.size());
            nameEnds.push_back(openNames.size() + name.size());
            openNames += name;
        }
        hasRoot = true;
        return AppendLine();
    }

    bool PutEndTag(std::string_view name)
    {
        if (!CheckFile())
            return false;
        if (nameEnds.empty() || GetInnermostName() != name)
            return Refuse("An end tag is not that of the innermost open element.");
        // The end tag stands as deep as its start tag.
        const std::size_t nameBegin = openNames.size() - name.size();
        BeginLine(1);
        line += "</";
        line += name;
        line += ">\n";
        buffer.reserve(buffer.size() + line.size());
        openNames.resize(nameBegin);
        nameEnds.pop_back();
        return AppendLine();
    }

    bool Close()
    {
        if (isClosed)
            return true;
        if (!CheckFile())
            return false;
        if (!hasRoot || !nameEnds.empty())
            return Refuse("The document is not finished.");
        if (!Flush())
            return false;
        errno = 0;
        if (std::fclose(file.release()) != 0)
            return FailWith("The file cannot be written.", SCSystemPath::GetLastErrorOfErrno(errno));
        isClosed = true;
        return true;
    }

    const char* GetFailureText() const noexcept { return failureText; }

private:
    bool CheckFile() noexcept
    {
        if (isClosed)
            return Refuse("The file has been closed.");
        if (writeError == ERROR_SUCCESS)
            return true;
        SetLastError(writeError);
        failureText = writeFailureText;
        return false;
    }

    bool Refuse(const char* reason) noexcept
    {
        failureText = reason;
        SetLastError(ERROR_INVALID_DATA);
        return false;
    }

    bool FailWith(const char* reason, DWORD error) noexcept
    {
        failureText = reason;
        writeFailureText = reason;
        writeError = error;
        SetLastError(error);
        return false;
    }

    std::string_view GetInnermostName() const noexcept
    {
        const std::size_t begin = nameEnds.size() < 2 ? 0 : nameEnds[nameEnds.size() - 2];
        return std::string_view(openNames).substr(begin);
    }

    // Begins a line as deep as the open elements less `levelsAbove`.
    void BeginLine(std::size_t levelsAbove = 0)
    {
        line.assign((nameEnds.size() - levelsAbove) * INDENT, ' ');
    }

    bool AppendAttribute(const std::vector<IXMLIO::SAttribute>& attributes, std::size_t index)
    {
        const IXMLIO::SAttribute& attribute = attributes[index];
        const std::string_view name = GetView(attribute.name, attribute.nameLen);
        if (!IsName(name))
            return Refuse("The name of an attribute is no name for XML.");
        for (std::size_t i = 0; i < index; ++i) {
            if (GetView(attributes[i].name, attributes[i].nameLen) == name)
                return Refuse("Two attributes of an element have one name.");
        }
        if (attribute.valueLen > IXMLIO::MAX_TAG_SIZE) // before anything is made of it
            return Refuse(TAG_TOO_LONG);
        const std::string_view value = GetView(attribute.value, attribute.valueLen);
        std::size_t errorPos = 0;
        if (SCCodePageText::Convert(value, codePage, CP_UTF8, converted, errorPos) !=
            SCCodePageText::CONVERT_OK)
            return Refuse("The value of an attribute is no text of the code page in use.");
        if (HasNonCharacter(converted))
            return Refuse("The value of an attribute has a character that XML cannot hold.");
        // Some characters of Shift-JIS stand for the same in Unicode as others and would come back as those.
        if (!SCCodePageText::IsASCII(value) &&
            (SCCodePageText::Convert(converted, CP_UTF8, codePage, convertedBack, errorPos) !=
                 SCCodePageText::CONVERT_OK ||
             convertedBack != value))
            return Refuse("The value of an attribute has a character that would be read back as another.");
        line += ' ';
        line += name;
        line += "=\"";
        for (const char c : converted) {
            const std::string_view escape = GetEscape(c);
            if (!escape.empty())
                line += escape;
            else if (static_cast<unsigned char>(c) < 0x20)
                return Refuse("The value of an attribute has a character that XML cannot hold.");
            else
                line += c;
        }
        line += '"';
        return true;
    }

    // Hands the line over; the buffer has room for it.
    bool AppendLine()
    {
        buffer += line;
        return buffer.size() < WRITING_BUFFER_SIZE || Flush();
    }

    bool Flush() noexcept
    {
        errno = 0;
        const bool written = std::fwrite(buffer.data(), 1, buffer.size(), file.get()) == buffer.size() &&
                             std::fflush(file.get()) == 0;
        buffer.clear();
        return written || FailWith("The file cannot be written.", SCSystemPath::GetLastErrorOfErrno(errno));
    }

    const int codePage;
    std::string buffer; // what is not yet in the file
    std::string line;   // the tag in the making
    std::string converted;
    std::string convertedBack; // likewise, and turned back
    std::string openNames;     // the names of the open elements, one behind the other
    std::vector<std::size_t> nameEnds;
    bool hasRoot = false;
    bool isClosed = false;
    DWORD writeError = ERROR_SUCCESS;
    const char* failureText = "";
    const char* writeFailureText = "";
    CFilePtr file;
};

CXMLWriter::CXMLWriter(const char* path) : impl(std::make_unique<CImpl>(path)) {}
CXMLWriter::~CXMLWriter() = default;

bool CXMLWriter::PutStartTag(const char* name, DWORD nameLen,
                             const std::vector<IXMLIO::SAttribute>& attributes)
{
    return impl->PutTag(GetView(name, nameLen), attributes, false);
}

bool CXMLWriter::PutEmptyElement(const char* name, DWORD nameLen,
                                 const std::vector<IXMLIO::SAttribute>& attributes)
{
    return impl->PutTag(GetView(name, nameLen), attributes, true);
}

bool CXMLWriter::PutEndTag(const char* name, DWORD nameLen)
{
    return impl->PutEndTag(GetView(name, nameLen));
}

bool CXMLWriter::Close()
{
    return impl->Close();
}

const char* CXMLWriter::GetFailureText() const noexcept
{
    return impl->GetFailureText();
}

} // namespace NSKZ::NSKZCore
