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

/* ---- Message box requests -----------------------------------------------
 * The record of one message: Tavona_Message_Box takes it, and it is what an
 * external error handler library receives. Zero-fill it before use.
 *
 * 32-bit builds: exactly 112 32-bit words (448 bytes), fields at offsets
 *   0 module, 4 captionId, 8 messageId, 12 ltsModule, 16-32 args[0..4],
 *   36 flag, 40 reserved, 44 resultCode, 48 owner, 52-447 zero.
 * 64-bit builds: the same fields in the same order; pointers and handles
 *   are 8 bytes with natural alignment:
 *   0 module, 8 captionId, 12 messageId, 16 ltsModule, 24-56 args[0..4],
 *   64 flag, 68 reserved, 72 resultCode, (76 padding), 80 owner, 88-447
 *   zero; 448 bytes in all. */
typedef struct TAVONA_MESSAGE_BOX_REQUEST {
  HMODULE module;        /* where the caption and message strings live */
  UINT captionId;        /* string id of the caption */
  UINT messageId;        /* string id of the message template */
  const WCHAR *ltsModule; /* translation module name, e.g. L"TAVONADLL" */
  const WCHAR *args[5];  /* substituted for "%s" in order; NULL = "" */
  UINT flag;             /* 1 from the library's reporter; for external handlers */
  UINT reserved;         /* 0 */
  UINT resultCode;       /* error code for external handlers (0x8004A0xx) */
  HWND owner;            /* NULL: the active window */
#if defined(_WIN64) || (!defined(_WIN32) && defined(__LP64__))
  DWORD zero[90];
#else
  DWORD zero[99];
#endif
} MessageBoxRequest;

/* Routes the request: the callback if one is set, else the external handler
 * library named in HKLM "Software\Tavona Software\Error Handler" (values
 * "DllName", default "TVDEEH.DLL", and "FunctionName", default
 * "TVDEEH_MessageBox"; a non-zero result is final), else by the error
 * handling mode. The message text starts with a style prefix that chooses
 * icon and buttons: ! ? i s (icons), Y N O C R I A (buttons; only the sets
 * YNC, RIA, YN and OC, else OK), then a space. Returns the button chosen,
 * what the callback or handler answered, 1 (silent, or logged) or 2 (the
 * log cannot be written, or a NULL request). */
INT WINAPI Tavona_Message_Box(const MessageBoxRequest *request);

/* The argument of Tavona_ErrorHandler. 32-bit words on 32-bit builds; on
 * 64-bit builds pointers and handles are 8 bytes, naturally aligned. */
typedef struct TAVONA_ERROR_HANDLER_REQUEST {
  DWORD unused[2];
  HWND owner;             /* may be NULL */
  UINT kind;              /* 0: text; 1-6: library messages; others: number */
  const WCHAR *text;      /* the template for kind 0 */
  const WCHAR *caption;   /* NULL: none */
  UINT style;             /* MessageBoxW style ... */
  UINT moreStyle;         /* ... ORed with this */
  const WCHAR *args[5];   /* for "%s" in the template; NULL = "" */
} ErrorHandlerRequest;

/* Shows a message box directly (no prefix, callback, handler or mode).
 * Returns the button chosen. */
INT WINAPI Tavona_ErrorHandler(const ErrorHandlerRequest *request);

/* Shows the system's text for an error code (or "Error <code>"), followed
 * by a blank line and extra1 and by a line with extra2 when they are not
 * empty. The caption is the library's error caption, or the one given.
 * The ignored argument exists for compatibility. */
INT WINAPI Tavona_DisplaySystemError(DWORD code, INT ignored, const WCHAR *extra1,
                                     const WCHAR *extra2);
INT WINAPI Tavona_DisplaySystemErrorExt(const WCHAR *caption, DWORD code, INT ignored,
                                        const WCHAR *extra1, const WCHAR *extra2);

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
