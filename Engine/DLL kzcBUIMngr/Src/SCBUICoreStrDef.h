#ifndef SCBUICORESTRDEF_H
#define SCBUICORESTRDEF_H

#include "KzcBUIMngrAPI.h"

namespace NSKZ::NSKZCore {

// Texts of the engine. All are Shift-JIS bytes, whatever the compiler's execution character set and the
// host's code page; the readable text stands above each in the source. A text with placeholders (%d) is
// filled by CFormattedMsg.
class KZCBUIMNGR_API SCBUICoreStrDef
{
public:
    SCBUICoreStrDef() = delete;

    // Names of processes, shown with their progress.
    static const char* const STR_PROCNAME_BUILD_BTNINFO;
    static const char* const STR_PROCNAME_REBUILD_BTNINFO;

    // Messages of ECAbnormalData.
    static const char* const MSG_UNKNOWN_LINKTBLTYPE;
    static const char* const MSG_UNKNOWN_LINKTBLVERTYPE;
    static const char* const MSG_UNKNOWN_BTNTYPE;
    static const char* const MSG_UNKNOWN_BTNCLSTYPE;
    static const char* const MSG_UNKNOWN_DATATYPE;
    static const char* const MSG_ABNORMAL_DATATYPE;
    static const char* const MSG_UNKNOWN_RELATIONMODE;
    static const char* const MSG_UNKNOWN_RECLISTLIMITATION;
    static const char* const MSG_NOTEXIST_BNLINK;
    static const char* const MSG_NOTEXIST_RPLINK;
    static const char* const MSG_NOTEXIST_SRCBTNCLS_IN_BNLINK;
    static const char* const MSG_NOTEXIST_SELBTN;
    static const char* const MSG_NOTEXIST_MMBBTN;
    static const char* const MSG_NOTEXIST_INSIDEBTN;
    static const char* const MSG_NOTEXIST_REFBTNCLS;
    static const char* const MSG_NOTEXIST_BTNCLS_OF_SPBTN;
    static const char* const MSG_UNKNOWN_SRCDATA_OPETYPE;
    static const char* const MSG_UNKNOWN_SUMMETHOD_FORCND;
    static const char* const MSG_UNKNOWN_MMBBTNSELCND;
    static const char* const MSG_UNKNOWN_SELCONDITION;
    static const char* const MSG_UNKNOWN_BTNNAME_SRCHOPTION;
    static const char* const MSG_UNKNOWN_MMBBTNSELMTH;

    // Message of ECInaccurateCode.
    static const char* const MSG_NOT_IMPLEMENTED;
};

} // namespace NSKZ::NSKZCore

#endif
