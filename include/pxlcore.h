/* pxlcore: what the libraries of the family share. C99 and C++. */
#ifndef PXLCORE_H
#define PXLCORE_H

#include <stdint.h>

#include "pxlcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Stores the size in bytes of the largest processor cache, from the processor's own tables or else from the system's.
 * Status: pxlStatusNullPointer if pSizeByte is null, else pxlStatusOk.
 */
PXLCC_API PxlStatus pxlGetMaxCacheSizeB(int* pSizeByte);

#ifdef __cplusplus
}
#endif

#endif
