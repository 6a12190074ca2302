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

/* ---- Escape notation for one-line text --------------------------------
 * \a 8 (not 7), \t 9, \n 10, \v 11, \r 13, \\ backslash, \q double quote,
 * \xHH and \dNN any code in hexadecimal or two decimal digits. */

/* Flags of Tavona_EncodeString. */
#define TAVONA_ENCODE_QUOTES 1          /* '"' as \q */
#define TAVONA_ENCODE_HEX 2             /* other controls as \xHH, not \dNN */
#define TAVONA_ENCODE_LEADING_SPACES 4  /* spaces before the first other
                                           character as \x20 */
#define TAVONA_ENCODE_NO_CR 8           /* carriage return as a lone '\' */
#define TAVONA_ENCODE_ALL_SPACES 16     /* every space as \x20 */

/* Encodes src (NULL = "") into dst. Encoding stops silently once 10 or
 * fewer characters of dst are left, so the result holds at most
 * dstSize - 7 characters; size dst generously. */
void WINAPI Tavona_EncodeString(const WCHAR *src, WCHAR *dst, INT dstSize, UINT flags);

/* Decodes in place. An unknown sequence such as \z gives one backslash;
 * a backslash at the very end is dropped. Sequences are not checked:
 * "\xZZ" gives 0xFFFF, and "\d00" puts a zero character into the text. */
void WINAPI Tavona_DecodeString(WCHAR *text);

/* As Tavona_DecodeString with escape in place of the backslash: the escape
 * doubled gives one escape character, "v" is not a sequence, and unknown or
 * short sequences give the escape character. */
void WINAPI Tavona_DecodeStringExpanded(WCHAR *text, WCHAR escape);

/* Copies src into dst (the non-truncating copy of TavonaCopyString: a src
 * of dstSize characters or more leaves dst empty) and decodes it there.
 * Always returns 0. */
INT WINAPI Tavona_EscapeToBinary(const WCHAR *src, WCHAR *dst, INT dstSize);

/* ---- Separated lists and language lists -------------------------------- */

/* Number of items separated by separator: 0 for NULL, "" or a separator of
 * 0; a separator at the very end opens no item, empty items in between
 * count ("a;b;;c" has 4, "a;b;" has 2). */
UINT WINAPI Tavona_GetSeparatedListLng(const WCHAR *list, WCHAR separator);

/* 0-based position of the first item equal to item (case-sensitive), or
 * -1. Empty items are skipped and NOT counted here: "c" in "a;b;;c" is 2. */
INT WINAPI Tavona_GetSeparatedListIndex(const WCHAR *list, const WCHAR *item, WCHAR separator);

/* A language list is "text VT code VT text VT code ..." with VT the
 * vertical tab (11) and each code a decimal number; a text whose code is
 * missing at the end of the list has the code 49. Codes are read up to 9
 * characters, texts of a rewritten list up to 499; longer ones are cut. */
#define TAVONA_LANGUAGE_SEPARATOR 11
#define TAVONA_LANGUAGE_DEFAULT_CODE 49

/* The text for language into out (cut to outSize - 1): 0 when found. When
 * not, out receives the first text of the list ("" for an empty or NULL
 * list) and the result is -1; so is it, out untouched, for a NULL out or
 * outSize < 1. */
INT WINAPI Tavona_ScanTextFromLanguageList(const WCHAR *list, UINT language, WCHAR *out,
                                           INT outSize);

/* Puts text for language at the FRONT of the list and keeps the other
 * pairs in their order; every old pair of that language is dropped. A
 * missing code is written out as 49. The list must leave room for the
 * result: a pair that does not fit within listSize is not cut but empties
 * what was built so far (the non-truncating append of
 * TavonaAppendString). */
void WINAPI Tavona_ReplaceTextInLanguageList(WCHAR *list, UINT listSize, const WCHAR *text,
                                             INT language);

/* ---- Integer and float formats ---- */

/* A format is a string of codes, each '%' and a letter, a code's value
 * running to the next '%': %T thousands separator (whole text, up to 9
 * characters; empty or absent = no grouping), %W minimum digits (integers;
 * leading zeros, at most 60 - a negative width counts as 60), %F fraction
 * digits and %D decimal separator (floats; first character, default ','),
 * %B text before and %E text after the number (99 characters each), %Z text
 * shown instead of everything for zero (49), %+ a '+' for values >= 0, and
 * %- NO minus sign for negative values. In values "\p" stands for '%' and
 * "\\" for a backslash. NULL or "" means "%T." for integers and
 * "%T.%D,%F02" for floats. */

/* Writes value into out[outSize] (nothing for a NULL out or outSize < 2).
 * Each part - leading text, number, trailing text - goes in only when its
 * length + 1 is below the room left (outSize less the parts written so
 * far); otherwise it is left out. The number and the trailing text are then
 * appended with that room as the buffer size although the text already
 * written stands in front of them: a part that passes the first test but
 * does not fit beside that text EMPTIES the output (and writes a line to
 * the debugger output). Size out for about twice the expected text. A zero
 * text REPLACES the leading text; one that does not fit empties out. A
 * number text of 100 characters or more is left out. The most negative
 * value comes out with two minus signs ("--2.147.483.648"). */
void WINAPI Int_To_FormattedInt(INT value, WCHAR *out, INT outSize, const WCHAR *format);

/* Reads text written with format: the leading and trailing texts are
 * skipped when present, then every digit and '-' is collected (up to 49)
 * and read as a decimal number; everything else is ignored, so "12-3" is 12
 * and a zero text or a "%-" value reads back as 0 or the magnitude.
 * 0 on success, -1 for a NULL text or value. */
INT WINAPI FormattedInt_To_Int(const WCHAR *text, INT *value, const WCHAR *format);

/* As Int_To_FormattedInt for a double. The value is rounded to the fraction
 * digits as the C runtime's _fcvt_s does it (the exact binary value,
 * halves away from zero), so 0.125 gives "0,13" and 2.675 "2,67"; a negative value that rounds to zero
 * keeps its minus sign ("-0,00"). Zero is any magnitude below 1e-13.
 * Values whose digits (whole and fraction) exceed 19, or that are not
 * finite, show only the leading and trailing texts. A negative digit count
 * rounds at that many places left of the point and leaves them out, as
 * the runtime's digits do: 1250.0 with "%F-2" gives "13". */
void WINAPI Float_To_FormattedFloat(double value, WCHAR *out, INT outSize, const WCHAR *format);

/* Reads text written with format: digits, '-' and the format's decimal
 * separator are collected wherever they stand and read in the "C" locale,
 * so a fraction is read only when the decimal separator is '.':
 * "1.234,56" with the default format gives 1234.0. 0 on success, -1 for a
 * NULL text or value. */
INT WINAPI FormattedFloat_To_Float(const WCHAR *text, double *value, const WCHAR *format);

/* Edit a format in a modal dialog with a live preview ("" starts from the
 * default). 1 when confirmed: format receives the edited format, or the
 * one it started from when nothing was changed; a format of formatSize
 * characters or more leaves it EMPTY (the non-shortening copy). 2 when
 * cancelled, for a NULL format or formatSize < 1. The help button opens
 * topic 1300 (integers) or 1500 (floats) of tavona32.chm. */
INT WINAPI Tavona_EditIntFormat(WCHAR *format, INT formatSize);
INT WINAPI Tavona_EditFloatFormat(WCHAR *format, INT formatSize);

/* The procedures of the two dialogs (templates 1300 and 1500); lParam of
 * WM_INITDIALOG points to a record of the library. */
INT_PTR CALLBACK IntFormat_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                           LPARAM lParam);
INT_PTR CALLBACK FloatFormat_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                             LPARAM lParam);

/* ---- Descriptors, scrambling, hashing, regular expressions ---- */

/* Descriptors: "name=value" items separated by tabs (code 9) in one
 * caller-owned buffer, edited in place. Names are case-sensitive, at most
 * 97 characters, without tabs or '='; values without tabs. Numbers are
 * kept as decimal text. */

/* Adds name=value at the END of the descriptor; an item of that name is
 * removed first, so a replaced item moves to the end. Appends follow
 * TavonaAppendString: a part that does not fit capacity empties the
 * descriptor. A descriptor of blanks only keeps them and gets no tab. */
void WINAPI DescriptorAddStringItem(WCHAR *descriptor, UINT capacity, const WCHAR *name,
                                    const WCHAR *value);
void WINAPI DescriptorAddLongItem(WCHAR *descriptor, UINT capacity, const WCHAR *name,
                                  INT value);
/* Removes the item and its separating tab; nothing if it is absent. */
void WINAPI DescriptorDeleteItem(WCHAR *descriptor, const WCHAR *name);
/* Reads copy the value with the non-truncating copy of TavonaCopyString,
 * from the value to the end of the descriptor: only the LAST item reads
 * correctly, an item followed by another reads as "" (and as 0), as does a
 * value that does not fit out. A missing item gives the default. */
void WINAPI DescriptorGetStringItem(const WCHAR *descriptor, const WCHAR *name,
                                    const WCHAR *defaultValue, WCHAR *out, INT outSize);
/* The value as _wtol reads it; values longer than 99 characters give 0. */
INT WINAPI DescriptorGetLongItem(const WCHAR *descriptor, const WCHAR *name, INT defaultValue);

/* Scrambling of profile strings. This is OBFUSCATION, NOT PROTECTION: the
 * scrambled text is a simple function of the key and anyone with the
 * library (or this description) can undo it; it only keeps values from
 * being read at a glance. Use the platform's data protection for secrets.
 * Only the low 8 bits of each character change, and no character becomes
 * 0, so the text keeps its length. A key whose seed works out to 0 (for
 * example "Lqm" followed by U+98D9) would never finish deriving its
 * start value; it scrambles as the empty key does instead. Nothing happens
 * for a NULL key or text. */
INT WINAPI Tavona_Crypt(const WCHAR *key, WCHAR *text); /* always 0 */
void WINAPI Tavona_DeCrypt(const WCHAR *key, WCHAR *text);

/* Self-marking form: "$&CR&$-" and the scrambled text in the escape
 * notation (flags 19). A blank src is copied unchanged without the marker.
 * Texts of 1000 characters or more are not scrambled but give the bare
 * marker. Nothing happens when outSize < 10. */
void WINAPI Tavona_StringToAutoCrypt(const WCHAR *src, WCHAR *out, INT outSize, const WCHAR *key);
/* Undoes Tavona_StringToAutoCrypt; a text without the marker is copied
 * unchanged, so plain and scrambled values can share one place. out must
 * hold the escaped text after the marker (it is decoded in place). */
void WINAPI Tavona_AutoCryptToString(const WCHAR *src, WCHAR *out, INT outSize, const WCHAR *key);

/* Scrambled, escaped profile values. The escaped text is built in 2000
 * characters and each scrambled character takes 1 to 4 of them: values of
 * up to 498 characters always come back whole, longer ones may be cut. Writing
 * returns WritePrivateProfileStringW's result. A missing value reads as the
 * default, exactly, without unscrambling. Scrambled characters are not
 * escaped above code 127: keep such values in a UTF-16 profile file (one
 * that starts with a byte-order mark), since an ANSI file loses the ones
 * its code page lacks. */
BOOL WINAPI Tavona_WriteCryptedProfileString(const WCHAR *key, const WCHAR *file,
                                             const WCHAR *section, const WCHAR *name,
                                             const WCHAR *value);
void WINAPI Tavona_ReadCryptedProfileString(const WCHAR *key, const WCHAR *file,
                                            const WCHAR *section, const WCHAR *name,
                                            const WCHAR *defaultValue, WCHAR *out, INT outSize);
/* A test dialog showing a typed text scrambled and unscrambled, in
 * hexadecimal; 1 (OK) or 2 (cancel). */
INT WINAPI Tavona_CryptDia(void);

/* h = h * c + 13 over the characters, 0 taken as 1, then times 13 until it
 * reaches 100000; reduced modulo modulus when that is positive. "" gives
 * 371293. 0 for a NULL text. */
DWORD WINAPI Tavona_CreateHash(const WCHAR *text, INT modulus);
/* 1 to 3999 as Roman numerals ("MCMXCIV"); other values give "". */
void WINAPI Tavona_LongToRoman(INT value, WCHAR *out, INT outSize);
/* Creates an empty, uniquely named file in the temporary folder and
 * returns its full name (prefix NULL = "CF"); the caller deletes it. A name
 * that does not fit leaves out empty. */
void WINAPI CreateTemporaryFileName(WCHAR *out, INT outSize, const WCHAR *prefix);
/* IDs of the string tables (type 6), menus (4) or dialogs (5) of a module;
 * at most capacity - 1 are stored, except that one string ID is stored for
 * capacity 1, and none for capacity 0. Names that are no number are stored
 * as -1. Returns the count, or -1 for any other type. */
INT WINAPI Tavona_GetListOfResourceIds(HMODULE module, UINT type, INT *ids, UINT capacity);

/* Results of Tavona_ParseRegExp besides a position. Every negative result
 * means that no match is reported and the outputs are untouched. */
#define TAVONA_REGEXP_NO_MATCH (-1)
/* The search gave up: the pattern is longer than 20000 characters or beyond
 * the engine's size limit, the text is too long for the stack the match
 * runs on (on 64-bit builds about 500,000 characters for "(a|b)*c",
 * 1,000,000 for "[ab]*c", fewer for patterns with more groups per
 * character, and fewer on 32-bit builds), the search backtracked for more
 * than a few seconds, or memory ran out. */
#define TAVONA_REGEXP_TOO_COMPLEX (-2)
/* The pattern is not a valid ECMAScript regular expression. */
#define TAVONA_REGEXP_BAD_PATTERN (-3)

/* First match of pattern (ECMAScript grammar) in text. Returns its position
 * and stores its length and text (a match that does not fit matchSize
 * leaves match empty); 0 when text or pattern is NULL. A search that needs
 * more than a little stack runs on a thread of its own with a large stack
 * while the caller waits, so it must not be called while the loader lock is
 * held (from DllMain).
 * Arguments 2, 6, 7 and 8 are not used. */
INT WINAPI Tavona_ParseRegExp(const WCHAR *text, INT unused2, const WCHAR *pattern,
                              UINT *matchLength, WCHAR *match, INT unused6, INT unused7,
                              INT unused8, INT matchSize);

TAVONA_END_DECLS

#endif
