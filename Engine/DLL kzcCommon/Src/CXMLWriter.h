#ifndef CXMLWRITER_H
#define CXMLWRITER_H

#include "IXMLIO.h"

#include <memory>
#include <vector>

namespace NSKZ::NSKZCore {

// Writes an XML file, element by element: UTF-8 with a declaration, each tag on a line of its own, indented
// by its depth. CXMLReader reads back exactly what was put in.
//
// Texts are in the host's code page, the one in force when the writer was constructed. A call that would make
// a document that cannot be read is refused: it gives false with the last error ERROR_INVALID_DATA and
// GetFailureText() telling why, nothing is written, and the next call may go on. Refused are
//   - a name that is not an ASCII letter or `_` with ASCII letters, digits, `_`, `-` and `.` behind it, nor
//     two of these with a `:` between them, of which the first stands for a namespace; that it is declared is
//     not proved;
//   - two attributes of one name in a tag;
//   - a value with bytes that are no text of the code page, or with a character that XML cannot hold (control
//     characters other than tab, line feed and carriage return; U+FFFE and U+FFFF), or with one that would be
//     read back as another: some of Shift-JIS's NEC and IBM characters stand twice in it and once in Unicode;
//   - a tag longer than IXMLIO::MAX_TAG_SIZE, an element deeper than IXMLIO::MAX_DEPTH, or a second root;
//   - an end tag that is not that of the innermost open element.
//
// When the file cannot be opened or written, this call and all behind it give false, with the last error of
// the system. Memory exhaustion arrives as std::bad_alloc, with the document as it was.
class KZCCOMMON_API CXMLWriter
{
public:
    // What the writer holds back, in bytes, before it goes to the file. Whoever can do with less keeps the
    // text of a list within it; longer values are written all the same.
    static constexpr DWORD WRITING_BUFFER_SIZE = 65536;

    // Creates the file of that path, in the host's code page, or empties it. Throws std::bad_alloc.
    explicit CXMLWriter(const char* path);
    // Writes what is still held back, as far as that can be done, and closes the file. Whoever wants to know
    // whether all has been written calls Close before.
    ~CXMLWriter();
    CXMLWriter(const CXMLWriter&) = delete;
    CXMLWriter& operator=(const CXMLWriter&) = delete;

    // The attributes are written in their order.
    bool PutStartTag(const char* name, DWORD nameLen, const std::vector<IXMLIO::SAttribute>& attributes);
    bool PutEmptyElement(const char* name, DWORD nameLen, const std::vector<IXMLIO::SAttribute>& attributes);
    bool PutEndTag(const char* name, DWORD nameLen);

    // Writes what is held back and closes the file. True if the file holds the whole document. A document
    // without root or with an open element is refused, and stays open. Called again it gives true again;
    // every other call behind it gives false.
    bool Close();

    // Why the last call that gave false did so: a sentence, which holds as long as the program runs. Empty if
    // none did.
    const char* GetFailureText() const noexcept;

private:
    class CImpl;
    std::unique_ptr<CImpl> impl;
};

} // namespace NSKZ::NSKZCore

#endif
