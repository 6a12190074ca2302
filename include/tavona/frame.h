/* tavona32: library frame - loading, resource library, accessors, memory. */
#ifndef TAVONA_FRAME_H
#define TAVONA_FRAME_H

#include "tvbase.h"

TAVONA_BEGIN_DECLS

/* The library's own module handle. */
HINSTANCE WINAPI Tavona_GetInstance(void);

/* The resource library "tavona32Res.dll" chosen at load time for the user's
 * language (see the README), or NULL when none was found. */
HMODULE WINAPI Tavona_GetResourceModule(void);

/* Copies the library's translation module name "TAVONADLL" with the bounded
 * copy of TavonaCopyString: a buffer too small receives the empty string. */
void WINAPI Tavona_GetLtsModuleName(WCHAR *buffer, UINT size);

/* Stores the language code for a translation provider; returns it. */
INT WINAPI Tavona_SetLtsLanguageCode(INT code);

/* Writes the library's file version as "major.minor.build.revision"; the
 * buffer is left empty when there is no version resource or it is too
 * small. */
void WINAPI Tavona_GetVersion(WCHAR *buffer, INT size);

/* Formats the file version of module's version resource with format
 * (blank = "%d.%d.%d.%d"; it receives four int arguments: major, minor,
 * build, revision). out is left empty on any failure and when the text
 * does not fit. The second argument is not used. */
void WINAPI Tavona_GetResourceFileVersion(HMODULE module, INT unused, WCHAR *out, INT outSize,
                                          const WCHAR *format);

/* Releases memory that the library returned to the caller (for example from
 * Tavona_ConvertMB2Wide). The library allocates such memory from the process
 * heap, so HeapFree(GetProcessHeap(), 0, p) is equivalent. NULL is ignored. */
void WINAPI Tavona_FreeMemory(void *memory);

/* Error reporting. The callback receives the finished message text and
 * returns the button to report; NULL removes it. Modes: 0 message box,
 * 1 silent (reports return 1), 2 append to the log file (UTF-16LE lines
 * ended by CR LF, no byte-order mark; 1 when written, 2 when the file
 * cannot be opened). */
typedef INT(WINAPI *TAVONA_ERROR_CALLBACK)(const WCHAR *message);
TAVONA_ERROR_CALLBACK WINAPI Tavona_SetErrorHandlerCallback(TAVONA_ERROR_CALLBACK callback);
INT WINAPI Tavona_SetErrorHandlingMode(INT mode);
/* At most 255 characters; a longer path is refused (the log path becomes
 * empty). */
void WINAPI Tavona_SetErrorLogFile(const WCHAR *path);

/* ---- Value translation tables ------------------------------------------
 * Constant tables of pairs that replace switch statements. */

/* Number pairs for Tavona_Translate. The table ends at the first pair whose
 * first word equals the terminator passed with the call (its second word is
 * never read):
 *   static const TAVONA_VALUE_PAIR codes[] = {{1, 10}, {2, 20}, {0, 0}};
 *   Tavona_Translate(2, codes, 0, 99, 0) == 20 */
typedef struct TAVONA_VALUE_PAIR {
  DWORD first;
  DWORD second;
} TAVONA_VALUE_PAIR;

/* Value and text pairs for the two text translations. The table ends at the
 * first pair whose text is NULL (its value is never read). */
typedef struct TAVONA_TEXT_PAIR {
  INT value;
  const WCHAR *text;
} TAVONA_TEXT_PAIR;

#define TAVONA_TRANSLATE_REVERSE 1 /* Tavona_Translate: second to first */
#define TAVONA_TRANSLATE_NOCASE 2  /* Tavona_Translate_StringToLong (1 has no
                                      meaning there) */

/* Forward: the second word of the first pair whose first word is value.
 * Reverse: the first word of the first pair whose second word is value.
 * Otherwise defaultValue; a value equal to the terminator never matches
 * forward. Pass a table; a NULL one gives defaultValue. */
UINT WINAPI Tavona_Translate(UINT value, const TAVONA_VALUE_PAIR *table, UINT terminator,
                             UINT defaultValue, BYTE flags);

/* The text of the first pair with value, else defaultText (NULL = ""),
 * copied with the rule of TavonaCopyString (a text that does not fit leaves
 * out empty). With a NULL table out is left as it is, default or not. */
void WINAPI Tavona_Translate_LongToString(INT value, WCHAR *out, UINT outSize,
                                          const TAVONA_TEXT_PAIR *table,
                                          const WCHAR *defaultText);

/* The value of the first pair whose text equals text (case-sensitive, or
 * as _wcsicmp with TAVONA_TRANSLATE_NOCASE), else defaultValue. */
INT WINAPI Tavona_Translate_StringToLong(const WCHAR *text, const TAVONA_TEXT_PAIR *table,
                                         INT defaultValue, INT flags);

TAVONA_END_DECLS

#endif
