#ifndef XMLTEXT_H
#define XMLTEXT_H

#include "CXMLReader.h"
#include "CXMLWriter.h"

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

} // namespace NSKZ::Test

#endif
