#ifndef KZCDATAMNGRAPI_H
#define KZCDATAMNGRAPI_H

#include "KzcPlatform.h"

// Marks what of this library can be called from outside its shared form.
#if defined(KZCDATAMNGR_API_BUILDING)
#define KZCDATAMNGR_API KZC_API_EXPORT
#else
#define KZCDATAMNGR_API KZC_API_IMPORT
#endif

#endif
