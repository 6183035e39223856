/* pxlCC: shared types, status values and the version record. C99 and C++. */
#ifndef PXLCC_TYPES_H
#define PXLCC_TYPES_H

#include <stdint.h>

#if defined(PXLCC_STATIC) || !defined(__GNUC__)
#define PXLCC_API
#else
#define PXLCC_API __attribute__((visibility("default")))
#endif

/* Element types, named after the type suffix of the function names. */
typedef uint8_t Pxl8u;
typedef int8_t Pxl8s;
typedef uint16_t Pxl16u;
typedef int16_t Pxl16s;
typedef uint32_t Pxl32u;
typedef int32_t Pxl32s;
typedef float Pxl32f;
typedef double Pxl64f;

/*
 * What every function returns: 0 for success, a negative error (nothing has been written), or a positive warning (the
 * part of the output that the warning's text names has been written).
 */
typedef int32_t PxlStatus;

enum {
    pxlStatusOk = 0,                /* success */
    pxlStatusNoOperation = 1,       /* warning: found nothing to do, wrote nothing */
    pxlStatusOddSize = 35,          /* warning: odd width or height of a subsampled image; the even part is done */
    pxlStatusBadArgument = -5,      /* an enumerated, flag or range argument is out of range */
    pxlStatusBadSize = -6,          /* width or height below the function's minimum (1 unless it says otherwise) */
    pxlStatusNullPointer = -8,      /* a required pointer (image, plane, table, buffer) is null */
    pxlStatusBadStep = -16,         /* a row step is below 1, in the functions that test steps */
    pxlStatusBadChannelCount = -47, /* a channel-layout code is not one of those accepted */
    pxlStatusBadRange = -49,        /* a value range is empty: vMax - vMin <= 0 */
    pxlStatusBadLevels = -54,       /* level count out of range */
    pxlStatusBadNoise = -55,        /* noise out of range */
    pxlStatusBadDitherType = -224,  /* unknown dither type */
    pxlStatusSizeOverflow = -232    /* a 64-bit width or height above 2147483647 */
};

/* Size of a region of interest, in pixels. */
typedef struct {
    int width;
    int height;
} PxlSize;

/* The same for the functions whose name ends in _L. */
typedef struct {
    int64_t width;
    int64_t height;
} PxlSizeL;

/* A rectangle inside a larger image, in pixels. */
typedef struct {
    int x;
    int y;
    int width;
    int height;
} PxlRect;

typedef struct {
    int64_t x;
    int64_t y;
    int64_t width;
    int64_t height;
} PxlRectL;

/* The 2x2 colour-filter pattern at the first pixel of a Bayer image, row by row. */
typedef enum { pxlBayBGGR = 0, pxlBayRGGB = 1, pxlBayGBRG = 2, pxlBayGRBG = 3 } PxlBayerGrid;

/* The version record of a library. */
typedef struct {
    int32_t major;
    int32_t minor;
    int32_t majorBuild;
    int32_t build;
    char targetCpu[4]; /* code of the processor variant, zero padded */
    const char* Name;  /* zero-terminated strings that live as long as the library */
    const char* Version;
    const char* BuildDate;
} PxlLibraryVersion;

#ifdef __cplusplus
extern "C" {
#endif

/*
 * The version record of this library: a constant, the same pointer on every call, never to be freed. Cannot fail.
 */
PXLCC_API const PxlLibraryVersion* pxlccGetLibVersion(void);

#ifdef __cplusplus
}
#endif

#endif
