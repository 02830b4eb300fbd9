#ifndef XMLTEXT_H
#define XMLTEXT_H

#include "CTempDir.h"
#include "CXMLReader.h"
#include "CXMLWriter.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace NSKZ::Test {

// An attribute over two texts that outlive it.
inline NSKZCore::IXMLIO::SAttribute MakeAttribute(std::string_view name, std::string_view value)
{
    return {name.data(), static_cast<DWORD>(name.size()), value.data(), static_cast<DWORD>(value.size())};
}

inline bool PutStart(NSKZCore::CXMLWriter& writer, std::string_view name,
                     const std::vector<NSKZCore::IXMLIO::SAttribute>& attributes = {})
{
    return writer.PutStartTag(name.data(), static_cast<DWORD>(name.size()), attributes);
}

inline bool PutEmpty(NSKZCore::CXMLWriter& writer, std::string_view name,
                     const std::vector<NSKZCore::IXMLIO::SAttribute>& attributes = {})
{
    return writer.PutEmptyElement(name.data(), static_cast<DWORD>(name.size()), attributes);
}

inline bool PutEnd(NSKZCore::CXMLWriter& writer, std::string_view name)
{
    return writer.PutEndTag(name.data(), static_cast<DWORD>(name.size()));
}

// The element that the cursor is on, with its attributes, as `name a=1 b=2`; empty if it is on none.
inline std::string Current(const NSKZCore::CXMLReader& reader)
{
    const char* name = nullptr;
    DWORD nameLen = 0;
    if (!reader.GetCurrentElementName(name, nameLen))
        return reader.GetAttributes().empty() ? "" : "attributes of no element";
    std::string text(name, nameLen);
    for (const NSKZCore::IXMLIO::SAttribute& attribute : reader.GetAttributes())
        text += " " + std::string(attribute.name, attribute.nameLen) + "=" +
                std::string(attribute.value, attribute.valueLen);
    return text;
}

// All elements of a document in order, each with a dot for each level above it and a blank behind; "!" and
// why at the end if the reader fails.
inline std::string WalkAll(NSKZCore::CXMLReader& reader)
{
    std::string all;
    std::size_t level = 0;
    using NSKZCore::CXMLReader;
    CXMLReader::EMthRetOfReadXML result = CXMLReader::READXML_OK;
    while (!reader.HasFailed()) {
        if (result == CXMLReader::READXML_OK) {
            all += std::string(level, '.') + Current(reader) + "; ";
            result = reader.SeekToStartTagOfFirstChildElement();
            level += result == CXMLReader::READXML_OK ? 1 : 0;
        } else if (result == CXMLReader::READXML_NOTEXIST) {
            result = reader.SeekToStartTagOfNextSiblingElement();
            level -= result == CXMLReader::READXML_NOTEXIST ? 1 : 0;
        } else {
            return all;
        }
    }
    return all + "! " + reader.GetFailureText();
}

inline std::string ReadWholeFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// What `write(writer)` writes inside a root element "R", each tag with a blank between it and the next;
// "false" if it gives false.
template <class TWrite>
std::string WrittenText(const TWrite& write)
{
    const CTempDir dir;
    const std::string path = (dir.GetPath() / "written.xml").string();
    {
        NSKZCore::CXMLWriter writer(path.c_str());
        PutStart(writer, "R");
        if (!write(writer))
            return "false";
        PutEnd(writer, "R");
        if (!writer.Close())
            return "unfinished";
    }
    std::ifstream file(path, std::ios::binary);
    std::string all;
    for (std::string line; std::getline(file, line);) {
        const std::string tag = line.substr(std::min(line.find_first_not_of(' '), line.size()));
        if (!tag.starts_with("<?") && tag != "<R>" && tag != "</R>")
            all += (all.empty() ? "" : " ") + tag;
    }
    return all;
}

// Calls `read(reader)` with a reader that stands on the one element of `text`, an "After" behind it, and
// gives what that gives; then the reader must come to "After".
template <class TRead>
NSKZCore::CXMLReader::EMthRetOfReadXML ReadText(const std::string& text, const TRead& read)
{
    const CTempDir dir;
    const std::string path = dir.WriteFile("read.xml", "<R>" + text + "<After/></R>");
    NSKZCore::CXMLReader reader(path.c_str());
    reader.SeekToStartTagOfFirstChildElement();
    const NSKZCore::CXMLReader::EMthRetOfReadXML result = read(reader);
    if (!reader.HasFailed() &&
        (reader.SeekToStartTagOfNextSiblingElement() != NSKZCore::CXMLReader::READXML_OK ||
         Current(reader) != "After"))
        return static_cast<NSKZCore::CXMLReader::EMthRetOfReadXML>(4711);
    return result;
}

} // namespace NSKZ::Test

#endif
