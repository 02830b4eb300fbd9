#ifndef CCSVLOADER_H
#define CCSVLOADER_H

#include "ECSVLoadError.h"
#include "KzcDataMngrAPI.h"
#include "SCFldType.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace NSKZ::NSKZCore {

class CSourceDataMngr;

// Fills a source table from CSV text: a file or memory.
//
// What is read: records of values set apart by the delimiter, each ended by CRLF, LF or CR; the last one may
// lack its end. A value may stand in double quotes, and must where it holds a delimiter, a line end or a
// quote; a quote within is doubled. Blanks belong to the value. A line with nothing on it at all is passed
// over; so an empty value in a table of one field is written as "". Every record has as many values as the
// first.
//
// Text of the file's encoding is converted to the code page in force (_getmbcp); where the two are the same
// the bytes stay as they are. With a delimiter from "@" on, though, which can be the second byte of a
// character of 932, text of 932 goes through UTF-8: a character with two codes there comes out as the one
// that Windows writes.
//
// What is refused, by ECSVLoadError: a file that cannot be opened or read; one with no record; a record with
// more or fewer values than the first; a quote that is never closed, or one that stands elsewhere than around
// a value; bytes that are no text of the encoding; a character that the code page in force lacks; a NUL; a
// value longer than CFldValueList::MAX_VALUE_LEN bytes in the code page in force; a name in the header that
// is empty or stands there twice; a type given for a field that there is not, or one that the table does not
// take; more records than the options allow. The first of them in the file is the one reported.
//
// Cost: the file is held in memory while it is read, beside the values.
class KZCDATAMNGR_API CCSVLoader
{
public:
    // The file's encoding is told by its content: UTF-8 where it has a byte-order mark or is valid UTF-8,
    // else 932 where it is valid in that. One that is neither is refused.
    static constexpr int CODEPAGE_AUTO = 0;

    struct SOptions
    {
        // The file's encoding: CODEPAGE_AUTO, 932 or 65001. A UTF-8 byte-order mark is passed over, but as
        // 932 it is no text.
        int codePage = CODEPAGE_AUTO;
        // An ASCII character other than NUL, the quote, CR and LF.
        char delimiter = ',';
        // Whether the first record holds the names of the fields. Else they are "F1", "F2", ...
        bool hasHeader = true;
        // More records (the header is none) are refused.
        DWORD maxRecCount = 4294967295;
        // Types by field name, in the code page in force. Of two for one field the latter counts. A field
        // without one gets what SCFldType::Infer finds, a date or time without a form what
        // SCFldType::SettleForm finds.
        std::vector<std::pair<std::string, SCFldType::SFldType>> types;
    };

    // Throws std::invalid_argument for a code page or delimiter other than told above.
    explicit CCSVLoader(SOptions options);

    // Read a file, named in the host's code page with `\` or `/` as separator, or a piece of memory, which
    // `name`, in the same code page, names in errors. On success its fields and records stand in `table` in
    // place of what it held, with new identifiers; the name for the empty value stays. Throw ECSVLoadError,
    // and std::bad_alloc, with `table` as it was.
    void LoadFile(const char* path, CSourceDataMngr& table) const;
    void LoadMemory(std::string_view content, const char* name, CSourceDataMngr& table) const;

private:
    SOptions options;
};

} // namespace NSKZ::NSKZCore

#endif
