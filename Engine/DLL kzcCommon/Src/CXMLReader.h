#ifndef CXMLREADER_H
#define CXMLREADER_H

#include "IXMLIO.h"

#include <memory>
#include <vector>

namespace NSKZ::NSKZCore {

// Reads an XML file element by element, forwards only: elements and their attributes. Text between tags,
// comments and processing instructions are passed over.
//
// The cursor. Once constructed, the reader stands on the start tag of the root. It is always in one of these
// places:
//   - on an element: its name and attributes can be had. Its children lie ahead, unless
//     SeekToStartTagOfFirstChildElement has said that there are none;
//   - behind an element, at its end tag, after a move has left it for good: there is no name and there are no
//     attributes, but the moves go on from that element as if the cursor stood on it without children;
//   - nowhere: the file could not be opened, a move has failed, or the document has ended. There is no
//   current
//     element and every move gives READXML_NOELEMENT.
// Below, "the element" is the one that the cursor is on or behind.
//
// Files are UTF-8, UTF-16, Latin-1 or Shift-JIS as their declaration says (UTF-8 without one; Shift-JIS also
// under the names SJIS, CP932, MS932, Windows-31J). The texts given out are in the host's code page, the one
// in force when the reader was constructed; an element on which the cursor comes to stand fails if it has a
// character that this code page lacks.
//
// Namespaces are not looked at: a name is given as it stands, with its prefix, and the declaration of a
// namespace is an attribute like any other.
//
// A document fails where it is not well formed, where it is deeper than IXMLIO::MAX_DEPTH, where a tag (or a
// comment, ...) is longer than IXMLIO::MAX_TAG_SIZE, and where its document type declaration has declarations
// in it or points to some: no entity is ever expanded but the five of XML, and nothing but the file itself is
// read. What lies behind the cursor has been looked at, what lies ahead has not: a file is known to be whole
// when a move has given READXML_SEEKFAILURE with HasFailed() false.
//
// The file is read in blocks; memory goes with the depth, the largest tag and the different names of elements
// and attributes, each of which is kept once, and not with the size of the file otherwise. A move costs what
// it passes over, and allocates nothing in the steady state.
class KZCCOMMON_API CXMLReader
{
public:
    // What became of a step or of the reading of an element.
    enum EMthRetOfReadXML : DWORD
    {
        READXML_OK = 0,
        READXML_FAILURE = 1,                 // the reader failed, or the document ended early
        READXML_BADFORMAT = 2,               // the element is not as it should be
        READXML_NOELEMENT = 7,               // the reader stands on no element, or on another one
        READXML_SEEKFAILURE = 9,             // the document ended, or failed, on the way
        READXML_NOTEXIST = 11,               // there is no such child or sibling
        READXML_NESTEDFAILURE = 12,          // what was nested in the element failed
        READXML_UNKNOWNELEMENT = 4294967295, // an element that the caller does not know
    };

    // Opens the file of that path, in the host's code page, and goes to the start tag of the root. If that
    // cannot be done HasFailed() tells; the last error is then that of opening or reading the file, or
    // ERROR_INVALID_DATA. Throws std::bad_alloc.
    explicit CXMLReader(const char* path);
    ~CXMLReader();
    CXMLReader(const CXMLReader&) = delete;
    CXMLReader& operator=(const CXMLReader&) = delete;

    // --- Moves. Each gives READXML_OK, READXML_NOTEXIST where told, READXML_SEEKFAILURE when the document
    // ends or fails on the way (the cursor is nowhere then), or READXML_NOELEMENT. When std::bad_alloc is
    // thrown the reader has failed.

    // To the element's first child. READXML_NOTEXIST if it has none: the cursor stays on the element.
    EMthRetOfReadXML SeekToStartTagOfFirstChildElement();
    // To the element's next sibling, past what is left of the element. READXML_NOTEXIST if it was the last
    // one: the cursor is then behind the parent, and the next such move goes to the parent's next sibling.
    EMthRetOfReadXML SeekToStartTagOfNextSiblingElement();
    // Behind the parent of the element, past what is left of it: from there
    // SeekToStartTagOfNextSiblingElement goes on with the parent's next sibling. Of the root, which has no
    // parent, it gives READXML_SEEKFAILURE.
    EMthRetOfReadXML SeekToEndTagOfParentElement();

    // --- The current element. The texts have a NUL behind them and hold until the next move; attributes are
    // in the order of the file, none twice.

    // False, with both untouched, if the cursor is on no element.
    bool GetCurrentElementName(const char*& name, DWORD& nameLen) const noexcept;
    // Empty if the cursor is on no element.
    const std::vector<IXMLIO::SAttribute>& GetAttributes() const noexcept;

    // Takes `count` from what the document may make its user allocate beyond what stands in it: whoever sizes
    // an array by a number of the document takes the entries from here first. False, with nothing taken, if
    // that is more than ALLOWANCE_BASE and ALLOWANCE_PER_BYTE for each byte read so far leave: a small file
    // that tells great numbers cannot have great arrays made, however often it tells them.
    static constexpr DWORD ALLOWANCE_BASE = 1024 * 1024;
    static constexpr DWORD ALLOWANCE_PER_BYTE = 1;
    bool TakeFromAllowance(unsigned long long count) noexcept;

    // Looks among the first `count` attributes for the one of exactly that name and stores its index; false,
    // with `index` untouched, if there is none.
    static bool SearchAttribute(const std::vector<IXMLIO::SAttribute>& attributes, DWORD count,
                                const char* name, DWORD nameLen, DWORD& index) noexcept;

    // --- Why reading failed.
    bool HasFailed() const noexcept;
    // The line of the file, counted from 1; 0 if nothing failed or the file could not be opened.
    DWORD GetFailureLine() const noexcept;
    // A sentence; empty if nothing failed. It holds as long as the program runs.
    const char* GetFailureText() const noexcept;

private:
    class CImpl;
    std::unique_ptr<CImpl> impl;
};

} // namespace NSKZ::NSKZCore

#endif
