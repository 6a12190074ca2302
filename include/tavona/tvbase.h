/* Common prologue of the tavona32 headers: Windows types, calling
 * convention and C linkage. Usable from C99 and C++. */
#ifndef TAVONA_TVBASE_H
#define TAVONA_TVBASE_H

#ifdef _WIN32
#include <windows.h>
#else
/* The library's own host build (Linux, portable routines only). */
#include "tvhost.h"
#endif

#ifdef __cplusplus
#define TAVONA_BEGIN_DECLS extern "C" {
#define TAVONA_END_DECLS }
#else
#define TAVONA_BEGIN_DECLS
#define TAVONA_END_DECLS
#endif

/* Every size argument of the library counts characters (16-bit units) and
 * includes the terminating zero. */

#endif
