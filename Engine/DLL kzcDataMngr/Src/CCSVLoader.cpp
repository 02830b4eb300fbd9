#include "CCSVLoader.h"

#include "CFldValueList.h"
#include "CSourceDataMngr.h"
#include "SCCodePageText.h"
#include "SCSystemPath.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <unordered_set>

#include <csv.h>

namespace NSKZ::NSKZCore {

namespace {

constexpr std::string_view UTF8_BYTE_ORDER_MARK = "\xEF\xBB\xBF";

// Trail bytes of double-byte characters of 932 begin here.
constexpr unsigned char FIRST_TRAIL_BYTE = 0x40;

constexpr std::size_t READ_BLOCK = 1 << 20;

std::string GetEncodingName(int codePage)
{
    return codePage == CP_UTF8 ? "UTF-8" : "Shift-JIS";
}

// `text`, in the code page in force, to be shown on one line. What is no text there becomes a question mark,
// and so does a control character.
std::string ConvertIntoShownText(std::string_view text)
{
    std::string shown;
    std::string converted;
    while (!text.empty()) {
        std::size_t errorPos = text.size();
        const bool whole = SCCodePageText::Convert(text, _getmbcp(), CP_UTF8, converted, errorPos) ==
                           SCCodePageText::CONVERT_OK;
        if (!whole)
            SCCodePageText::Convert(text.substr(0, errorPos), _getmbcp(), CP_UTF8, converted, errorPos);
        shown += converted;
        if (!whole)
            shown += '?';
        text.remove_prefix(std::min(text.size(), whole ? text.size() : errorPos + 1));
    }
    // In UTF-8 no byte of a longer character is one of these.
    std::replace_if(
        shown.begin(), shown.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; },
        '?');
    return shown;
}

// Finds the lines of a text, one after the other. All of them together cost one pass over it: the next line
// feed, which may lie many lines ahead where lines end with CR, is looked for once.
class CLineEnds
{
public:
    explicit CLineEnds(std::string_view lines) noexcept : text(lines) {}

    // Where the line that starts at `pos` ends, behind its CRLF, LF or CR. `pos` never goes back.
    std::size_t Find(std::size_t pos) noexcept
    {
        if (pos >= feedEnd) {
            const std::size_t lineFeed = text.find('\n', pos);
            feedEnd = lineFeed == std::string_view::npos ? text.size() : lineFeed + 1;
        }
        const std::string_view line = text.substr(pos, feedEnd - pos);
        const std::size_t carriageReturn = line.find('\r');
        if (carriageReturn == std::string_view::npos || line.substr(carriageReturn) == "\r\n")
            return feedEnd;
        return pos + carriageReturn + 1;
    }

private:
    std::string_view text;
    std::size_t feedEnd = 0; // behind the next line feed, or the end of the text
};

struct SFault
{
    std::size_t pos; // of the byte with which a text ceases to be readable
    std::string reason;
};

// Tells where a byte stands, for a person who looks at the file.
std::string DescribePlace(std::string_view text, std::size_t pos)
{
    unsigned long long line = 1;
    std::size_t lineStart = 0;
    CLineEnds lineEnds(text);
    for (std::size_t end = lineEnds.Find(0); end <= pos; end = lineEnds.Find(end)) {
        ++line;
        lineStart = end;
    }
    return "byte " + std::to_string(pos - lineStart + 1) + " of line " + std::to_string(line);
}

// The text to be parsed: the file's, up to the first byte that makes it unreadable.
class CReadableText
{
public:
    CReadableText(std::string_view content, int wantedCodePage, char delimiter)
    {
        codePage = wantedCodePage == CCSVLoader::CODEPAGE_AUTO ? CP_UTF8 : wantedCodePage;
        if (codePage == CP_UTF8 && content.starts_with(UTF8_BYTE_ORDER_MARK)) {
            content.remove_prefix(UTF8_BYTE_ORDER_MARK.size());
            FindFault(content, GetEncodingName(CP_UTF8));
        } else if (wantedCodePage == CCSVLoader::CODEPAGE_AUTO) {
            FindCodePageAndFault(content);
        } else {
            FindFault(content, GetEncodingName(codePage));
        }
        text = fault ? content.substr(0, fault->pos) : content;

        if (SCCodePageText::IsASCII(text)) {
            codePage = _getmbcp();
            return;
        }
        // In UTF-8 no byte of a longer character can be taken for the delimiter.
        if (codePage == _KANJI_CP && static_cast<unsigned char>(delimiter) >= FIRST_TRAIL_BYTE) {
            std::size_t errorPos = 0;
            SCCodePageText::Convert(text, _KANJI_CP, CP_UTF8, ownText, errorPos);
            text = ownText;
            codePage = CP_UTF8;
        }
    }
    CReadableText(const CReadableText&) = delete;
    CReadableText& operator=(const CReadableText&) = delete;

    std::string_view GetText() const noexcept { return text; }
    int GetCodePage() const noexcept { return codePage; }
    // Why the text ends before the file does; null if it does not.
    const std::string* GetFault() const noexcept { return fault ? &fault->reason : nullptr; }

private:
    // Of two encodings that do not fit the one that fits the longer part is reported.
    void FindCodePageAndFault(std::string_view content)
    {
        std::size_t posInUTF8 = 0;
        if (SCCodePageText::IsValid(content, CP_UTF8, posInUTF8)) {
            FindFault(content, GetEncodingName(CP_UTF8));
            return;
        }
        std::size_t posInShiftJIS = content.size();
        SCCodePageText::IsValid(content, _KANJI_CP, posInShiftJIS);
        codePage = posInShiftJIS > posInUTF8 ? _KANJI_CP : CP_UTF8;
        FindFault(content, GetEncodingName(CP_UTF8) + " or " + GetEncodingName(_KANJI_CP));
    }

    void FindFault(std::string_view content, const std::string& encodings)
    {
        std::size_t pos = 0;
        const bool valid = SCCodePageText::IsValid(content, codePage, pos);
        const std::size_t nul = content.substr(0, valid ? content.size() : pos).find('\0');
        if (nul != std::string_view::npos)
            fault = {nul, "A NUL stands in the text (" + DescribePlace(content, nul) +
                              "); the file may be UTF-16, or no text at all."};
        else if (!valid)
            fault = {pos, "The text is not valid " + encodings + ": no character begins at " +
                              DescribePlace(content, pos) + "."};
    }

    int codePage = CP_UTF8;
    std::optional<SFault> fault;
    std::string ownText; // where the file's own is not parsed
    std::string_view text;
};

// Collects what the parser finds: the names and the values of the fields.
class CRecordCollector
{
public:
    CRecordCollector(const CCSVLoader::SOptions& loaderOptions, int codePageOfText,
                     const std::string& fileName)
        : options(loaderOptions), from(codePageOfText), to(_getmbcp()), file(fileName),
          headerAwaited(loaderOptions.hasHeader)
    {}

    void AddValue(std::string_view value)
    {
        if (from != to)
            value = Convert(value);
        if (value.size() > CFldValueList::MAX_VALUE_LEN)
            Refuse("The value of field " + DescribeFld(fldPos) + " is " + std::to_string(value.size()) +
                   " bytes long; " + std::to_string(CFldValueList::MAX_VALUE_LEN) + " is the most.");
        if (headerAwaited) {
            names.emplace_back(value);
        } else {
            if (firstRecAwaited && fldPos == values.size())
                AddFld();
            if (fldPos < values.size())
                values[fldPos].AppendProved(value);
        }
        ++fldPos;
    }

    void EndRecord()
    {
        if (headerAwaited)
            EndHeader();
        else if (fldPos != values.size())
            Refuse("The record has " + std::to_string(fldPos) + (fldPos == 1 ? " value" : " values") +
                   " where " + std::to_string(values.size()) + (values.size() == 1 ? " is" : " are") +
                   " expected.");
        else
            EndDataRecord();
        fldPos = 0;
    }

    // The line in which the record begins that is being collected.
    void SetLine(unsigned long long lineOfRecord) noexcept { line = lineOfRecord; }

    [[noreturn]] void Refuse(const std::string& reason) const { throw ECSVLoadError(file, line, reason); }

    // Fills an empty table.
    void Fill(CSourceDataMngr& table)
    {
        for (std::size_t pos = 0; pos < values.size(); ++pos) {
            SCFldType::SFldType type;
            if (const SCFldType::SFldType* const given = FindGivenType(names[pos]); given != nullptr) {
                type = *given;
                SCFldType::SettleForm(values[pos], type);
            } else {
                type = SCFldType::Infer(values[pos]);
            }
            CSourceDataMngr::SFldInfo info;
            info.name = names[pos];
            info.spec.dataType = type.dataType;
            info.dateTypeInfo = type.dateTypeInfo;
            info.timeTypeInfo = type.timeTypeInfo;
            values[pos].ShrinkToFit();
            DWORD fldID = 0;
            if (!table.AddFld(std::move(info), std::move(values[pos]), fldID))
                throw ECSVLoadError(file, 0, "Field " + DescribeFld(pos) + " cannot be added to the table.");
        }
    }

    bool IsEmpty() const noexcept { return names.empty(); }

private:
    std::string_view Convert(std::string_view value)
    {
        std::size_t errorPos = 0;
        if (SCCodePageText::Convert(value, from, to, converted, errorPos) != SCCodePageText::CONVERT_OK)
            Refuse("The value of field " + DescribeFld(fldPos) + " holds a character that code page " +
                   std::to_string(to) + " lacks: " + GetCharInUTF8(value.substr(errorPos)) + ".");
        return converted;
    }

    // The first character of a text of the file; only UTF-8 has characters that another code page lacks.
    static std::string GetCharInUTF8(std::string_view text)
    {
        std::size_t len = 1;
        while (len < text.size() && (static_cast<unsigned char>(text[len]) & 0xC0) == 0x80)
            ++len;
        return std::string(text.substr(0, len));
    }

    void AddFld()
    {
        if (!options.hasHeader)
            names.push_back(std::string("F").append(std::to_string(names.size() + 1)));
        values.emplace_back();
    }

    void EndHeader()
    {
        std::unordered_set<std::string_view> seen;
        for (std::size_t pos = 0; pos < names.size(); ++pos) {
            if (names[pos].empty())
                Refuse("Field " + std::to_string(pos + 1) + " has no name in the header.");
            if (!seen.insert(names[pos]).second)
                Refuse("The name \"" + ConvertIntoShownText(names[pos]) + "\" stands twice in the header.");
        }
        ProveGivenTypes();
        values.resize(names.size());
        headerAwaited = false;
        firstRecAwaited = false;
    }

    void EndDataRecord()
    {
        if (firstRecAwaited) {
            ProveGivenTypes();
            firstRecAwaited = false;
        }
        if (recCount == options.maxRecCount)
            Refuse("There are more than " + std::to_string(options.maxRecCount) + " records.");
        ++recCount;
    }

    void ProveGivenTypes() const
    {
        for (const auto& [name, type] : options.types) {
            if (std::find(names.begin(), names.end(), name) == names.end())
                Refuse("A type is given for the field \"" + ConvertIntoShownText(name) +
                       "\", but there is no field of this name.");
        }
    }

    const SCFldType::SFldType* FindGivenType(const std::string& name) const noexcept
    {
        const auto given = std::find_if(options.types.rbegin(), options.types.rend(),
                                        [&](const auto& each) { return each.first == name; });
        return given == options.types.rend() ? nullptr : &given->second;
    }

    std::string DescribeFld(std::size_t pos) const
    {
        std::string described = std::to_string(pos + 1);
        if (!headerAwaited && options.hasHeader && pos < names.size())
            described += " (\"" + ConvertIntoShownText(names[pos]) + "\")";
        return described;
    }

    const CCSVLoader::SOptions& options;
    const int from;
    const int to;
    const std::string& file;
    bool headerAwaited;
    bool firstRecAwaited = true; // without a header it settles the number of fields
    std::vector<std::string> names;
    std::vector<CFldValueList> values;
    std::size_t fldPos = 0; // of the next value in its record
    DWORD recCount = 0;
    unsigned long long line = 0;
    std::string converted;
};

// Feeds the text to the CSV parser line by line, so that the line of every record is known.
class CParser
{
public:
    CParser(char delimiter, CRecordCollector& recordCollector) : collector(recordCollector)
    {
        csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI);
        csv_set_delim(&parser, static_cast<unsigned char>(delimiter));
        // Blanks are part of the value.
        csv_set_space_func(&parser, [](unsigned char) { return 0; });
        // Room for most values at once.
        csv_set_blk_size(&parser, CFldValueList::MAX_VALUE_LEN + 1);
    }
    ~CParser() { csv_free(&parser); }
    CParser(const CParser&) = delete;
    CParser& operator=(const CParser&) = delete;

    // Throws ECSVLoadError at what cannot be read. `fault`, where it is not null, tells why the text breaks
    // off.
    void Parse(std::string_view text, const std::string* fault)
    {
        unsigned long long line = 0;
        bool withinRecord = false;
        CLineEnds lineEnds(text);
        for (std::size_t pos = 0; pos < text.size();) {
            const std::size_t end = lineEnds.Find(pos);
            ++line;
            if (!withinRecord)
                collector.SetLine(line);
            recordEnded = false;
            const std::size_t parsed =
                csv_parse(&parser, text.data() + pos, end - pos, &OnValue, &OnRecordEnd, this);
            ThrowHeldException();
            if (parsed != end - pos)
                ThrowParserError();
            const bool blank = text[pos] == '\n' || text[pos] == '\r';
            withinRecord = !recordEnded && (withinRecord || !blank);
            pos = end;
        }

        if (fault != nullptr) {
            if (!withinRecord)
                collector.SetLine(line + 1);
            collector.Refuse(*fault);
        }
        const int result = csv_fini(&parser, &OnValue, &OnRecordEnd, this);
        ThrowHeldException();
        if (result != 0)
            collector.Refuse("A quote is opened and never closed.");
    }

private:
    // No exception may pass through the parser; the first is held until it has returned.
    template <typename TAction>
    void Guard(TAction action) noexcept
    {
        if (held)
            return;
        try {
            action();
        } catch (...) {
            held = std::current_exception();
        }
    }

    static void OnValue(void* value, std::size_t len, void* self) noexcept
    {
        CParser& parser = *static_cast<CParser*>(self);
        parser.Guard([&] { parser.collector.AddValue({static_cast<const char*>(value), len}); });
    }

    static void OnRecordEnd(int, void* self) noexcept
    {
        CParser& parser = *static_cast<CParser*>(self);
        parser.recordEnded = true;
        parser.Guard([&] { parser.collector.EndRecord(); });
    }

    void ThrowHeldException()
    {
        if (held)
            std::rethrow_exception(held);
    }

    [[noreturn]] void ThrowParserError()
    {
        if (csv_error(&parser) != CSV_EPARSE)
            throw std::bad_alloc();
        collector.Refuse(
            "A quote stands where none may: a value that holds quotes must begin and end with one, and "
            "those within be doubled.");
    }

    CRecordCollector& collector;
    csv_parser parser;
    bool recordEnded = false;
    std::exception_ptr held;
};

std::string GetReasonOfOpening(DWORD error)
{
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return "There is no such file.";
    case ERROR_ACCESS_DENIED:
        return "The file cannot be opened: it is a directory, or reading it is not permitted.";
    case ERROR_NO_UNICODE_TRANSLATION:
        return "The file cannot be opened: its name is no text of code page " + std::to_string(_getmbcp()) +
               ".";
    default:
        return "The file cannot be opened (system error " + std::to_string(error) + ").";
    }
}

// A file's bytes. Its size is only a hint: a pipe has none, and a file may grow.
class CFileContent
{
public:
    CFileContent(const char* path, const std::string& shownPath)
    {
        const CFilePtr file = SCSystemPath::OpenFile(path, "rb");
        if (file == nullptr)
            throw ECSVLoadError(shownPath, 0, GetReasonOfOpening(GetLastError()));
        std::setvbuf(file.get(), nullptr, _IONBF, 0);

        std::filesystem::path systemPath;
        std::error_code error = std::make_error_code(std::errc::invalid_argument);
        std::uintmax_t fileSize = 0;
        if (SCSystemPath::ConvertIntoSystemPath(path, systemPath))
            fileSize = std::filesystem::file_size(systemPath, error);
        // One byte more, so that the end is met without another block.
        MakeRoom(error ? READ_BLOCK : static_cast<std::size_t>(fileSize) + 1);
        for (;;) {
            const std::size_t got = std::fread(bytes.get() + size, 1, capacity - size, file.get());
            size += got;
            if (size < capacity)
                break;
            MakeRoom(std::max(capacity * 2, READ_BLOCK));
        }
        if (std::ferror(file.get()))
            throw ECSVLoadError(shownPath, 0, "The file cannot be read to its end.");
    }

    std::string_view Get() const noexcept { return {bytes.get(), size}; }

private:
    void MakeRoom(std::size_t wanted)
    {
        auto larger = std::make_unique_for_overwrite<char[]>(wanted);
        if (size != 0)
            std::memcpy(larger.get(), bytes.get(), size);
        bytes = std::move(larger);
        capacity = wanted;
    }

    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;
    std::size_t capacity = 0;
};

} // namespace

CCSVLoader::CCSVLoader(SOptions loaderOptions) : options(std::move(loaderOptions))
{
    const unsigned char delimiter = static_cast<unsigned char>(options.delimiter);
    if (delimiter == 0 || delimiter >= 0x80 || delimiter == '"' || delimiter == '\r' || delimiter == '\n')
        throw std::invalid_argument(
            "The delimiter must be an ASCII character other than the quote and the line ends.");
    if (options.codePage != CODEPAGE_AUTO && options.codePage != _KANJI_CP && options.codePage != CP_UTF8)
        throw std::invalid_argument("The code page of a CSV file must be 932 or 65001.");
}

void CCSVLoader::LoadFile(const char* path, CSourceDataMngr& table) const
{
    const CFileContent content(path, ConvertIntoShownText(path));
    LoadMemory(content.Get(), path, table);
}

void CCSVLoader::LoadMemory(std::string_view content, const char* name, CSourceDataMngr& table) const
{
    const std::string file = ConvertIntoShownText(name);
    const CReadableText text(content, options.codePage, options.delimiter);
    CRecordCollector collector(options, text.GetCodePage(), file);
    CParser(options.delimiter, collector).Parse(text.GetText(), text.GetFault());
    if (collector.IsEmpty())
        throw ECSVLoadError(file, 0, "The file is empty.");

    CSourceDataMngr loaded(table);
    loaded.Clear();
    collector.Fill(loaded);
    table = std::move(loaded);
}

} // namespace NSKZ::NSKZCore
