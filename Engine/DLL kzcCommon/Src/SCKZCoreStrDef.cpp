#include "SCKZCoreStrDef.h"

namespace NSKZ::NSKZCore {

const char* const SCKZCoreStrDef::STR_EMPTY = "";
// データ異常
const char* const SCKZCoreStrDef::MES_EXCEP_ABNORMALDATA = "\203f\201[\203^\210\331\217\355";
// コード不備
const char* const SCKZCoreStrDef::MES_EXCEP_INACCURATECODE = "\203R\201[\203h\225s\224\365";
// データのサイズが異常な値であった。
const char* const SCKZCoreStrDef::MSG_ABNORMAL_DATASIZE =
    "\203f\201[\203^"
    "\202\314\203T\203C\203Y\202\252\210\331\217\355\202\310\222l\202\305\202\240\202\301\202\275\201B";
// 未知のスペックの種類であった。
const char* const SCKZCoreStrDef::MSG_UNKNOWN_SPECTYPE =
    "\226\242\222m\202\314\203X\203y\203b\203N\202\314\216\355\227\336\202\305\202\240\202\301\202\275\201B";
// 未知の日付の種類であった。
const char* const SCKZCoreStrDef::MSG_UNKNOWN_DATETYPE =
    "\226\242\222m\202\314\223\372\225t\202\314\216\355\227\336\202\305\202\240\202\301\202\275\201B";

} // namespace NSKZ::NSKZCore
