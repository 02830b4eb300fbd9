#ifndef KZCBUIMNGRAPI_H
#define KZCBUIMNGRAPI_H

#include "KzcPlatform.h"

// Marks what of this library can be called from outside its shared form.
#if defined(KZCBUIMNGR_API_BUILDING)
#define KZCBUIMNGR_API KZC_API_EXPORT
#else
#define KZCBUIMNGR_API KZC_API_IMPORT
#endif

#endif
