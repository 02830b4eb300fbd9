#ifndef SCKZCORESTRDEF_H
#define SCKZCORESTRDEF_H

#include "KzcCommonAPI.h"

namespace NSKZ::NSKZCore {

// Texts of the common library. All are Shift-JIS bytes, whatever the compiler's execution character set and
// the host's code page; the readable text stands behind each in the source.
class KZCCOMMON_API SCKZCoreStrDef
{
public:
    SCKZCoreStrDef() = delete;

    // The empty text.
    static const char* const STR_EMPTY;
    // Kinds of exceptions.
    static const char* const MES_EXCEP_ABNORMALDATA;
    static const char* const MES_EXCEP_INACCURATECODE;
    // Messages.
    static const char* const MSG_ABNORMAL_DATASIZE;
    static const char* const MSG_UNKNOWN_SPECTYPE;
    static const char* const MSG_UNKNOWN_DATETYPE;
};

} // namespace NSKZ::NSKZCore

#endif
