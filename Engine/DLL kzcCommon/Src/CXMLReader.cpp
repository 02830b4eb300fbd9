#include "CXMLReader.h"

#include "SCCodePageText.h"
#include "SCSystemPath.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

#include <expat.h>

namespace NSKZ::NSKZCore {

namespace {

constexpr DWORD BLOCK_SIZE = 65536;

// The parser's memory comes from operator new, as all other memory here. Before each block stands its size.
constexpr std::size_t SIZE_PREFIX = alignof(std::max_align_t);
static_assert(SIZE_PREFIX >= sizeof(std::size_t));

void* AllocateForParser(std::size_t size)
{
    auto* const block = static_cast<std::byte*>(::operator new(SIZE_PREFIX + size, std::nothrow));
    if (block == nullptr)
        return nullptr;
    std::memcpy(block, &size, sizeof size);
    return block + SIZE_PREFIX;
}

void ReleaseForParser(void* memory)
{
    if (memory != nullptr)
        ::operator delete(static_cast<std::byte*>(memory) - SIZE_PREFIX);
}

void* ReallocateForParser(void* memory, std::size_t size)
{
    void* const moved = AllocateForParser(size);
    if (moved == nullptr || memory == nullptr)
        return moved;
    std::size_t formerSize = 0;
    std::memcpy(&formerSize, static_cast<std::byte*>(memory) - SIZE_PREFIX, sizeof formerSize);
    std::memcpy(moved, memory, std::min(formerSize, size));
    ReleaseForParser(memory);
    return moved;
}

struct SParserReleaser
{
    void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
};
using ParserPtr = std::unique_ptr<std::remove_pointer_t<XML_Parser>, SParserReleaser>;

bool IsNameOfShiftJIS(std::string_view name)
{
    constexpr std::array<std::string_view, 8> NAMES = {"shift_jis", "shift-jis", "sjis",        "x-sjis",
                                                       "cp932",     "ms932",     "windows-31j", "csshiftjis"};
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return std::find(NAMES.begin(), NAMES.end(), lower) != NAMES.end();
}

// The character of one or two bytes in Shift-JIS; -1 if they are none.
int DecodeShiftJIS(std::string_view bytes)
{
    std::string utf8; // of three bytes at most: no memory is needed
    std::size_t errorPos = 0;
    if (SCCodePageText::Convert(bytes, _KANJI_CP, CP_UTF8, utf8, errorPos) != SCCodePageText::CONVERT_OK)
        return -1;
    const auto byteAt = [&](std::size_t pos) {
        return static_cast<int>(static_cast<unsigned char>(utf8[pos]));
    };
    switch (utf8.size()) {
    case 1:
        return byteAt(0);
    case 2:
        return (byteAt(0) & 0x1F) << 6 | (byteAt(1) & 0x3F);
    case 3:
        return (byteAt(0) & 0x0F) << 12 | (byteAt(1) & 0x3F) << 6 | (byteAt(2) & 0x3F);
    default:
        return -1;
    }
}

int DecodeDoubleByteChar(void*, const char* bytes)
{
    return DecodeShiftJIS({bytes, 2});
}

// Tells the parser what the bytes of Shift-JIS mean: their character, that a second byte follows, or -1.
void DescribeShiftJIS(XML_Encoding& encoding)
{
    constexpr int HAS_TRAIL_BYTE = -2;
    for (int byte = 0; byte < 256; ++byte) {
        const char text = static_cast<char>(byte);
        const bool isLeadByte = (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
        encoding.map[byte] = isLeadByte ? HAS_TRAIL_BYTE : DecodeShiftJIS({&text, 1});
    }
    encoding.data = nullptr;
    encoding.convert = DecodeDoubleByteChar;
    encoding.release = nullptr;
}

} // namespace

// The parser calls back for every tag and is halted where the cursor comes to stand. No exception may go
// through its C code: the callbacks keep what went wrong until the parser has returned.
class CXMLReader::CImpl
{
public:
    explicit CImpl(const char* path) : codePage(_getmbcp()), file(SCSystemPath::OpenFile(path, "rb"))
    {
        if (file == nullptr) {
            failureText = "The file cannot be opened.";
            return;
        }
        const XML_Memory_Handling_Suite memory = {AllocateForParser, ReallocateForParser, ReleaseForParser};
        parser.reset(XML_ParserCreate_MM(nullptr, &memory, nullptr));
        if (parser == nullptr)
            throw std::bad_alloc();
        XML_SetUserData(parser.get(), this);
        XML_SetElementHandler(parser.get(), OnStartTag, OnEndTag);
        XML_SetStartDoctypeDeclHandler(parser.get(), OnDocumentType);
        XML_SetUnknownEncodingHandler(parser.get(), OnUnknownEncoding, this);
        isSomewhere = true;
        Advance(1, true);
    }

    EMthRetOfReadXML SeekToFirstChild()
    {
        if (!isSomewhere)
            return READXML_NOELEMENT;
        if (!childrenAhead)
            return READXML_NOTEXIST;
        switch (Advance(elementDepth + 1, true)) {
        case STOP_START:
            return READXML_OK;
        case STOP_END:
            childrenAhead = false; // the one that has ended is the element itself
            return READXML_NOTEXIST;
        default:
            return READXML_SEEKFAILURE;
        }
    }

    EMthRetOfReadXML SeekToNextSibling()
    {
        if (!isSomewhere)
            return READXML_NOELEMENT;
        switch (Advance(elementDepth, true)) {
        case STOP_START:
            return READXML_OK;
        case STOP_END:
            LeaveElement();
            return READXML_NOTEXIST;
        default:
            return READXML_SEEKFAILURE;
        }
    }

    EMthRetOfReadXML SeekToParentEnd()
    {
        if (!isSomewhere)
            return READXML_NOELEMENT;
        if (Advance(elementDepth, false) != STOP_END)
            return READXML_SEEKFAILURE;
        LeaveElement();
        return READXML_OK;
    }

    bool GetName(const char*& name, DWORD& nameLen) const noexcept
    {
        if (!isOnElement)
            return false;
        name = elementText.c_str();
        nameLen = elementNameLen;
        return true;
    }

    const std::vector<IXMLIO::SAttribute>& GetAttributes() const noexcept { return attributes; }

    bool TakeFromAllowance(unsigned long long count) noexcept
    {
        const std::uint64_t left = ALLOWANCE_BASE + ALLOWANCE_PER_BYTE * fedSize - takenAllowance;
        if (count > left)
            return false;
        takenAllowance += count;
        return true;
    }

    bool HasFailed() const noexcept { return failureText[0] != '\0'; }
    DWORD GetFailureLine() const noexcept { return failureLine; }
    const char* GetFailureText() const noexcept { return failureText; }

private:
    enum EStop
    {
        STOP_NONE,
        STOP_START, // at a start tag, which is captured
        STOP_END,   // at the end tag of the element around those of stopDepth
        STOP_NOWHERE,
    };

    static CImpl& GetSelf(void* self) { return *static_cast<CImpl*>(self); }

    static void OnStartTag(void* self, const char* name, const char** attrs)
    {
        GetSelf(self).EnterElement(name, attrs);
    }

    static void OnEndTag(void* self, const char*)
    {
        CImpl& reader = GetSelf(self);
        // The end of an empty element is told even if its start has halted the parser.
        if (reader.stop != STOP_NONE) {
            reader.endIsPending = true;
            return;
        }
        reader.EndElement();
        if (reader.stop != STOP_NONE)
            XML_StopParser(reader.parser.get(), XML_TRUE);
    }

    static void OnDocumentType(void* self, const char*, const char* systemID, const char* publicID,
                               int hasInternalSubset)
    {
        if (systemID != nullptr || publicID != nullptr || hasInternalSubset != 0)
            GetSelf(self).Refuse("The document type declaration has declarations, which are not read.");
    }

    static int OnUnknownEncoding(void* self, const char* name, XML_Encoding* encoding)
    {
        try {
            if (!IsNameOfShiftJIS(name))
                return XML_STATUS_ERROR;
            DescribeShiftJIS(*encoding);
            return XML_STATUS_OK;
        } catch (const std::bad_alloc&) {
            GetSelf(self).outOfMemory = true;
        } catch (const std::runtime_error&) { // the system does not know the code page
        }
        return XML_STATUS_ERROR;
    }

    void EnterElement(const char* name, const char** attrs)
    {
        if (stop != STOP_NONE)
            return;
        if (++depth > IXMLIO::MAX_DEPTH) {
            Refuse("Elements are nested too deeply.");
            return;
        }
        if (!stopAtStart || depth != stopDepth)
            return;
        try {
            if (!CaptureElement(name, attrs)) {
                Refuse("A name or an attribute has a character that the code page in use lacks.");
                return;
            }
        } catch (const std::bad_alloc&) {
            outOfMemory = true;
            Refuse("");
            return;
        }
        stop = STOP_START;
        XML_StopParser(parser.get(), XML_TRUE);
    }

    void EndElement() noexcept
    {
        if (depth + 1 == stopDepth)
            stop = STOP_END;
        --depth;
    }

    // Ends the parsing from within a callback.
    void Refuse(const char* reason)
    {
        stop = STOP_NOWHERE;
        refusal = reason;
        XML_StopParser(parser.get(), XML_FALSE);
    }

    bool CaptureElement(const char* name, const char** attrs)
    {
        isOnElement = false;
        attributes.clear();
        elementText.clear();
        if (!AppendText(name, elementNameLen))
            return false;
        for (const char** attr = attrs; *attr != nullptr; attr += 2) {
            IXMLIO::SAttribute& attribute = attributes.emplace_back();
            if (!AppendText(attr[0], attribute.nameLen) || !AppendText(attr[1], attribute.valueLen))
                return false;
        }
        // The text stays where it is now.
        const char* text = elementText.c_str() + elementNameLen + 1;
        for (IXMLIO::SAttribute& attribute : attributes) {
            attribute.name = text;
            attribute.value = attribute.name + attribute.nameLen + 1;
            text = attribute.value + attribute.valueLen + 1;
        }
        isOnElement = true;
        return true;
    }

    // Appends a text of the parser, and a NUL, in the host's code page; false if that lacks a character.
    bool AppendText(std::string_view utf8, DWORD& len)
    {
        if (SCCodePageText::IsASCII(utf8)) {
            elementText.append(utf8);
            len = static_cast<DWORD>(utf8.size()); // a tag is far shorter than a DWORD can tell
        } else {
            std::size_t errorPos = 0;
            if (SCCodePageText::Convert(utf8, CP_UTF8, codePage, converted, errorPos) !=
                SCCodePageText::CONVERT_OK)
                return false;
            elementText.append(converted);
            len = static_cast<DWORD>(converted.size());
        }
        elementText.push_back('\0');
        return true;
    }

    // Goes on to the next start tag of an element of that depth (if `atStart`), or to the end tag of the
    // element around, whichever comes first.
    EStop Advance(DWORD depthToStopAt, bool atStart)
    {
        stopDepth = depthToStopAt;
        stopAtStart = atStart;
        stop = STOP_NONE;
        if (endIsPending) {
            endIsPending = false;
            EndElement();
        }
        try {
            while (stop == STOP_NONE && ParseSome()) {
            }
        } catch (...) {
            Fail("Memory is exhausted.", ERROR_INVALID_DATA);
            throw;
        }
        switch (stop) {
        case STOP_START:
            elementDepth = stopDepth;
            childrenAhead = true;
            break;
        case STOP_END:
            elementDepth = stopDepth - 1;
            break;
        default:
            stop = STOP_NOWHERE;
            GoNowhere();
        }
        return stop;
    }

    // Runs the parser over what it has been given, or over the next block of the file. False if there is
    // nothing more to come.
    bool ParseSome()
    {
        XML_Status status = XML_STATUS_OK;
        if (isHalted) {
            status = XML_ResumeParser(parser.get());
        } else {
            if (isLastBlock)
                return false;
            status = ParseBlock();
        }
        isHalted = status == XML_STATUS_SUSPENDED;
        if (outOfMemory)
            throw std::bad_alloc();
        if (status == XML_STATUS_ERROR)
            FailAsParserTells();
        return status != XML_STATUS_ERROR && !HasFailed();
    }

    XML_Status ParseBlock()
    {
        // A tag that goes over many blocks is looked at from its start with each: blocks grow with it, so
        // that this stays linear.
        const XML_Index parsedTo = XML_GetCurrentByteIndex(parser.get());
        const unsigned long long pending = parsedTo < 0 ? 0 : fedSize - static_cast<std::uint64_t>(parsedTo);
        if (pending > IXMLIO::MAX_TAG_SIZE) {
            Fail("A tag or a comment is too long.", ERROR_INVALID_DATA);
            return XML_STATUS_OK;
        }
        const int size = static_cast<int>(std::max<unsigned long long>(BLOCK_SIZE, pending));
        void* const block = XML_GetBuffer(parser.get(), size);
        if (block == nullptr)
            throw std::bad_alloc();
        const std::size_t read = std::fread(block, 1, static_cast<std::size_t>(size), file.get());
        if (std::ferror(file.get()) != 0) {
            Fail("The file cannot be read.", ERROR_GEN_FAILURE);
            return XML_STATUS_OK;
        }
        isLastBlock = read < static_cast<std::size_t>(size);
        fedSize += read;
        return XML_ParseBuffer(parser.get(), static_cast<int>(read), isLastBlock ? 1 : 0);
    }

    void FailAsParserTells()
    {
        const XML_Error error = XML_GetErrorCode(parser.get());
        if (error == XML_ERROR_NO_MEMORY)
            throw std::bad_alloc();
        if (error == XML_ERROR_ABORTED)
            Fail(refusal, ERROR_INVALID_DATA);
        else if (error == XML_ERROR_UNKNOWN_ENCODING)
            Fail("The file is in an encoding that is not known.", ERROR_INVALID_DATA);
        else
            Fail(XML_ErrorString(error), ERROR_INVALID_DATA);
    }

    void Fail(const char* reason, DWORD error) noexcept
    {
        failureText = reason;
        failureLine = static_cast<DWORD>(XML_GetCurrentLineNumber(parser.get()));
        stop = STOP_NOWHERE;
        GoNowhere();
        SetLastError(error);
    }

    // The cursor is behind an element which Advance has set.
    void LeaveElement() noexcept
    {
        childrenAhead = false;
        isOnElement = false;
        attributes.clear();
    }

    void GoNowhere() noexcept
    {
        LeaveElement();
        isSomewhere = false;
    }

    const int codePage;
    CFilePtr file;
    ParserPtr parser;

    // The cursor.
    bool isSomewhere = false;
    bool isOnElement = false;
    bool childrenAhead = false;
    DWORD elementDepth = 0;
    std::string elementText; // the name, then names and values of the attributes, each with a NUL
    DWORD elementNameLen = 0;
    std::vector<IXMLIO::SAttribute> attributes;
    std::string converted; // scratch

    // The parser's run.
    DWORD depth = 0; // of the elements that are open for the parser
    DWORD stopDepth = 0;
    bool stopAtStart = false;
    EStop stop = STOP_NONE;
    bool endIsPending = false;
    bool isHalted = false;
    bool isLastBlock = false;
    bool outOfMemory = false;
    std::uint64_t fedSize = 0;
    std::uint64_t takenAllowance = 0;
    const char* refusal = "";

    const char* failureText = "";
    DWORD failureLine = 0;
};

CXMLReader::CXMLReader(const char* path) : impl(std::make_unique<CImpl>(path)) {}
CXMLReader::~CXMLReader() = default;

CXMLReader::EMthRetOfReadXML CXMLReader::SeekToStartTagOfFirstChildElement()
{
    return impl->SeekToFirstChild();
}

CXMLReader::EMthRetOfReadXML CXMLReader::SeekToStartTagOfNextSiblingElement()
{
    return impl->SeekToNextSibling();
}

CXMLReader::EMthRetOfReadXML CXMLReader::SeekToEndTagOfParentElement()
{
    return impl->SeekToParentEnd();
}

bool CXMLReader::GetCurrentElementName(const char*& name, DWORD& nameLen) const noexcept
{
    return impl->GetName(name, nameLen);
}

const std::vector<IXMLIO::SAttribute>& CXMLReader::GetAttributes() const noexcept
{
    return impl->GetAttributes();
}

bool CXMLReader::SearchAttribute(const std::vector<IXMLIO::SAttribute>& attributes, DWORD count,
                                 const char* name, DWORD nameLen, DWORD& index) noexcept
{
    const std::size_t end = std::min<std::size_t>(count, attributes.size());
    for (std::size_t i = 0; i < end; ++i) {
        if (IXMLIO::IsSameText(attributes[i].name, attributes[i].nameLen, name, nameLen)) {
            index = static_cast<DWORD>(i);
            return true;
        }
    }
    return false;
}

bool CXMLReader::TakeFromAllowance(unsigned long long count) noexcept
{
    return impl->TakeFromAllowance(count);
}

bool CXMLReader::HasFailed() const noexcept
{
    return impl->HasFailed();
}

DWORD CXMLReader::GetFailureLine() const noexcept
{
    return impl->GetFailureLine();
}

const char* CXMLReader::GetFailureText() const noexcept
{
    return impl->GetFailureText();
}

} // namespace NSKZ::NSKZCore
