/* tavona32: file names and paths, whole-file input and output, EXIF dates.
 *
 * File names are wide strings in the caller's buffers. Backslash and slash
 * both separate directories, a colon ends a drive or device prefix; nothing
 * is normalised (no case folding, no "." or ".." handling, separators are
 * kept as written). The separator the library inserts is the backslash. */
#ifndef TAVONA_FILES_H
#define TAVONA_FILES_H

#include "tvbase.h"
#include "datetime.h"

TAVONA_BEGIN_DECLS

/* ---- File names -------------------------------------------------------- */

/* Joins path, name and extension (each may be NULL) into dst: a backslash
 * after the path unless it ends in a separator (an empty, non-NULL path
 * gives a rooted "\name"), a dot before the extension unless the name ends
 * in one (a leading dot of the extension is dropped; an empty extension
 * still gives the dot). The parts are assembled in 260 characters: every
 * part may use the budget only while 3 characters remain (the inserted
 * separator and dot are free); otherwise -1 and dst is untouched. dst may
 * be the name's own buffer. A dst too small for the result is left EMPTY
 * (reported on the debugger output) and 0 is still returned. */
INT WINAPI Tavona_Assemble_FileName(WCHAR *dst, const WCHAR *path, const WCHAR *name,
                                    const WCHAR *extension, INT dstSize);

/* Makes a relative name absolute in its own buffer: base "\" name. A base
 * of "[MODULEPATH]" (any case) stands for the directory of module (NULL:
 * the program). An absolute name (first character a separator, or a colon
 * anywhere) is left alone with flag 1 (result 1); without it its directory
 * is dropped and the bare name moved into the base. 0 on success, -1 when
 * the result would not fit (see Tavona_Assemble_FileName) or name or base
 * is NULL. */
INT WINAPI Tavona_AddPath(WCHAR *name, INT nameSize, const WCHAR *base, UINT flags,
                          HMODULE module);
#define TAVONA_ADDPATH_KEEPABSOLUTE 1

/* The text after the last dot of name, wherever it stands: the search
 * crosses separators, so "C:\data.old\readme" gives "old\readme". No dot or
 * a trailing dot gives "". Nothing happens for a NULL dst or a size below 1;
 * an extension that does not fit leaves dst empty. */
void WINAPI Tavona_GetExtension(const WCHAR *name, WCHAR *dst, INT dstSize);

/* 1 if name's extension (as Tavona_GetExtension, up to 99 characters)
 * equals extension (given without its dot), ignoring case as lstrcmpiW
 * does; 0 otherwise or when either is NULL. */
INT WINAPI Tavona_CheckExtension(const WCHAR *name, const WCHAR *extension);

/* Cuts name at its last dot (also one in a directory name when the file
 * name has none) and returns where it stood, or NULL without a dot. */
WCHAR *WINAPI Tavona_StripExtension(WCHAR *name);

/* Leaves the directory part: "C:\dir\file.txt" -> "C:\dir", "dir\" ->
 * "dir", "C:file" -> "C:", "C:\file" -> "C:\", "\file" -> "\"; a name
 * without separator or colon becomes "". "\\server\share" -> "\\server". */
void WINAPI Tavona_StripFileName(WCHAR *path);

/* Keeps what follows the last separator or colon ("dir\" -> ""); returns
 * path. */
WCHAR *WINAPI Tavona_StripPath(WCHAR *path);

/* Removes every trailing backslash and slash, the root's too ("C:\" ->
 * "C:", "\" -> ""). A blank path (NULL, empty, only characters 1-32) is
 * left alone. */
void WINAPI Tavona_StripTrailingSlashes(WCHAR *path);

/* "C:/data/report.txt" -> "C:/data\*.txt"; "report" -> "\*." (the empty
 * extension keeps its dot and selects names without one). Results as
 * Tavona_Assemble_FileName; -1 (name untouched) for a NULL name or one of
 * 256 characters or more. */
INT WINAPI Tavona_ConvertFilenameToWildcard(WCHAR *name, INT nameSize);

/* The bare profile file name of module (NULL: the program): "Sales.ini"
 * for C:\Apps\Sales.exe. 0 on success. When the bare name plus 5 does not
 * stay below dstSize, dst keeps the bare name, ".ini" is not appended and
 * the result is that length plus 5 (one more than needed, deliberately).
 * -1 for a NULL dst or a size below 1. */
INT WINAPI Tavona_GetProfileName(HMODULE module, WCHAR *dst, INT dstSize);

/* The text under which a file is shown: the name itself (NULL = ""), copied
 * into dst as Tavona_GetExtension copies. maxLength and flags are accepted
 * and ignored. */
void WINAPI Tavona_GetFileNameDisplay(WCHAR *dst, INT dstSize, const WCHAR *name,
                                      INT maxLength, UINT flags);

/* 1 if name holds no colon, backslash or slash (NULL and "" count as pure). */
INT WINAPI Tavona_IsFileNamePure(const WCHAR *name);

/* 1 if path starts with a separator or holds a colon anywhere ("a:b" too);
 * 0 otherwise and for NULL. */
INT WINAPI Tavona_IsFilePathAbsolute(const WCHAR *path);

/* 1 if anything exists under the name (directories too), as _waccess(name,
 * 0) sees it; else 0. */
INT WINAPI Tavona_DoesFileExist(const WCHAR *name);

/* ---- Whole files --------------------------------------------------------
 * Every open is first announced on the trace channel
 * "Vel.Framework.Print" (see the README: TAVONA_TRACE). Names longer than
 * 268 characters are opened but traced with an empty message. quiet bit 0:
 * a file that cannot be opened is not reported, only returned. */
#ifdef _WIN32

/* The size in bytes, 0 when the file cannot be opened. The 32-bit form
 * returns the low half (a 4 GiB + 1 byte file gives 1). */
DWORD WINAPI Tavona_GetFileSize(const WCHAR *name);
ULONGLONG WINAPI Tavona_GetFileSize64(const WCHAR *name);

/* Reads the file into buffer: count = the smaller of the file's size (its
 * low 32 bits: a file of 4 GiB + 10 bytes gives 10) and bufferSize; a zero
 * byte follows the data only when count < bufferSize, so a file as long as
 * the buffer fills it WITHOUT terminator (pass one byte more for a
 * terminated text). Returns count, the number of bytes asked for (a read
 * error is not detected), or -1 for a NULL
 * buffer, a size below 2, a blank name (buffer untouched) or a file that
 * cannot be opened (error 1341 unless quiet) or sized. */
INT WINAPI Tavona_LoadFileToBuffer(const WCHAR *name, void *buffer, INT bufferSize, UINT quiet);

/* A new movable global block of the file's size + 1 bytes holding the file
 * and a zero byte; the caller frees it with GlobalFree. NULL for a blank
 * name, a file that cannot be opened (1341 unless quiet) or no memory
 * (1300, always reported). */
HGLOBAL WINAPI Tavona_LoadFileToMemory(const WCHAR *name, UINT quiet);

/* Writes count bytes, replacing the file; opened without sharing, so a
 * reader holding the file makes it fail. 0 on success and when nothing was
 * done (NULL buffer, blank name: no file is created); -1 when the file
 * cannot be created (1390 unless quiet) or the write fails. */
INT WINAPI Tavona_SaveBufferToFile(const WCHAR *name, const void *buffer, DWORD count,
                                   UINT quiet);

/* Note the order: the block comes first. Writes GlobalSize(memory) bytes,
 * so a block of Tavona_LoadFileToMemory is written one byte longer (its
 * zero) or more (rounding). Results as Tavona_SaveBufferToFile; the block
 * stays the caller's. */
INT WINAPI Tavona_SaveMemoryToFile(HGLOBAL memory, const WCHAR *name, UINT quiet);

/* The EXIF DateTimeOriginal (tag 0x9003) of a picture: GDI+ first, then
 * the library's own reader of JPEG and TIFF files. The text
 * "YYYY:MM:DD HH:MM:SS" fills day, month, year, hour, minute and second;
 * fields missing at its end are 0 ("2015" gives year 2015, the rest 0).
 * 0 on success, 1 when there is no such date (record untouched). Nothing
 * is reported. */
INT WINAPI Tavona_GetExifExposureDateTimeFromJpegFile(const WCHAR *name, DateTimeStruct *when);

#endif /* _WIN32 */

TAVONA_END_DECLS

#endif
