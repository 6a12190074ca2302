/* tavona32: text, numbers and data - string primitives. */
#ifndef TAVONA_TEXT_H
#define TAVONA_TEXT_H

#include "tvbase.h"

TAVONA_BEGIN_DECLS

/* Bounded copy and append never shorten a string. A source that does not
 * fit (copy: length >= dstSize; append: length >= the room left) leaves the
 * destination EMPTY and reports a programming error on the debugger output
 * ("tavona32: ... does not fit"); the process goes on. Size the buffer for
 * the whole text. Nothing happens for a NULL destination or a size below 1.
 * A NULL source is copied as "". */
void WINAPI TavonaCopyString(WCHAR *dst, const WCHAR *src, INT dstSize);
void WINAPI TavonaAppendString(WCHAR *dst, const WCHAR *src, INT dstSize);

/* Flag 1: ignore case (result as the C runtime's _wcsicmp). Without it the
 * result is -1, 0 or 1 from unsigned 16-bit unit comparison. NULL = "". */
INT WINAPI TavonaCompareString(const WCHAR *a, const WCHAR *b, INT flags);

/* 1 if sought occurs in text, else 0. Flag 1: ignore case; then a blank
 * sought or text (only characters 1-32) is never found. */
INT WINAPI TavonaFindString(const WCHAR *text, const WCHAR *sought, INT flags);

/* First case-insensitive occurrence of sought in text, or NULL. */
WCHAR *WINAPI Tavona_strstri(const WCHAR *text, const WCHAR *sought);

/* Flags of Tavona_ReplaceString. With none of the position flags nothing is
 * replaced; Tavona_Replace sets all three. */
#define TAVONA_REPLACE_FIRST 1      /* only the first qualifying occurrence */
#define TAVONA_REPLACE_NOCASE 2     /* search without regard to case */
#define TAVONA_REPLACE_ATSTART 4    /* an occurrence at the start qualifies */
#define TAVONA_REPLACE_INMIDDLE 8   /* one neither at the start nor the end */
#define TAVONA_REPLACE_ATEND 16     /* one ending at the end of the text */

/* Replaces find by with (NULL = "") in place. A replacement is made only
 * while the result stays at most textSize - 2 characters long; the first
 * one that would not fit stops the whole operation. Replacement text is
 * never searched again. A text not terminated within textSize is left
 * alone. */
void WINAPI Tavona_ReplaceString(WCHAR *text, INT textSize, const WCHAR *find,
                                 const WCHAR *with, UINT flags);
void WINAPI Tavona_Replace(WCHAR *text, INT textSize, const WCHAR *find,
                           const WCHAR *with, UINT flags);

/* Reads one field of a separated line at *cursor into out and advances the
 * cursor past it and all separators that follow. A field in double quotes
 * may hold separators. A field of outSize characters or more is cut to
 * outSize - 1 characters and left WITHOUT a terminating zero: pass a buffer
 * large enough. Returns the length of out. */
INT WINAPI Tavona_ScanString(const WCHAR **cursor, WCHAR *out, INT outSize,
                             WCHAR separator);

/* Binary search in an array of strings sorted by unsigned code units.
 * Returns -1 when absent. A result >= 0 means present; it is the index
 * within the sub-range reached, not within the whole list, once the search
 * has moved right. */
INT WINAPI Tavona_ScanStringlistLogarithmic(const WCHAR *key,
                                            const WCHAR *const *list,
                                            INT count);

/* First run of at least minDigits decimal digits preceded by prefix and
 * followed by suffix (NULL or "" = none). The run is measured from each
 * candidate position, so a match may begin inside a longer run. */
INT WINAPI Tavona_ScanDigitString(const WCHAR *text, INT minDigits,
                                  const WCHAR *prefix, const WCHAR *suffix,
                                  const WCHAR **found, INT *digitCount);

/* As Tavona_ScanDigitString, copying the run to out. Kept as it has always
 * been: k = min(digitCount, outSize - 1) BYTES are copied, so only the first
 * k/2 characters of out are digits, and out[k] is set to zero. */
INT WINAPI Tavona_ExtractFirstDigitString(const WCHAR *text, INT minDigits,
                                          const WCHAR *prefix,
                                          const WCHAR *suffix, WCHAR *out,
                                          INT outSize);

/* Hexadecimal digits without "0x"; characters 1-32 are skipped anywhere.
 * 0 on success, -1 on a NULL value pointer or an invalid character (value
 * then holds what was read so far). More than 8 digits shift out the first
 * ones. */
INT WINAPI Tavona_HexStringToLong(const WCHAR *text, DWORD *value);

/* Conversions between the ANSI code page and UTF-16. The result is new
 * memory owned by the caller: release it with Tavona_FreeMemory. */
WCHAR *WINAPI Tavona_ConvertMB2Wide(const char *src);
char *WINAPI Tavona_ConvertWide2MB(const WCHAR *src);

TAVONA_END_DECLS

#endif
