#ifndef CXMLREADER_H
#define CXMLREADER_H

#include "IXMLIO.h"

namespace NSKZ::NSKZCore {

// Reads XML element by element.
class CXMLReader
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
};

} // namespace NSKZ::NSKZCore

#endif
