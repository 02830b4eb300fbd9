#ifndef KZCCOMMONAPI_H
#define KZCCOMMONAPI_H

#include "KzcPlatform.h"

// Marks what of this library can be called from outside its shared form.
#if defined(KZCCOMMON_API_BUILDING)
#define KZCCOMMON_API KZC_API_EXPORT
#else
#define KZCCOMMON_API KZC_API_IMPORT
#endif

#endif
