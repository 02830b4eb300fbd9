#ifndef KZCSUMMNGRAPI_H
#define KZCSUMMNGRAPI_H

#include "KzcPlatform.h"

// Marks what of this library can be called from outside its shared form.
#if defined(KZCSUMMNGR_API_BUILDING)
#define KZCSUMMNGR_API KZC_API_EXPORT
#else
#define KZCSUMMNGR_API KZC_API_IMPORT
#endif

#endif
