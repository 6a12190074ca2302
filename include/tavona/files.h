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

/* ---- Directory copy, statistics, scans and delete -----------------------
 * Directory list: paths separated by line feeds (10), each entry up to 256
 * characters; a carriage return before a line feed is dropped, a blank
 * entry is left out (with its partner in the copy's pairs), and an entry
 * longer than 256 characters makes the routine fail (result 2, copy and
 * delete) or be skipped (statistics). Copy sources and destinations are
 * taken pairwise until either list ends.
 *
 * Pattern list: patterns separated by tabs (9). Pattern and file name are
 * split at their last dot into name and extension (each up to 256
 * characters) and compared upper-cased, part against part: '?' takes one
 * character, '*' takes the rest of the part AND ends the comparison, so
 * characters after it are ignored ("A*Z" matches "ABC"), anything else must
 * be equal. "*.*" matches every file, "*" only names without extension.
 * An empty include list lets every file through; an empty exclude list
 * excludes nothing.
 *
 * Names beginning with a dot (not only "." and "..") are never copied,
 * counted, scanned or deleted; directories with the system attribute below
 * the top level are passed over silently. */
#ifdef _WIN32

/* Flags of COPYDIRCTL (and, where they apply, of DELETEDIRCTL). */
#define TAVONA_COPY_RECURSE 0x1      /* walk into subdirectories */
#define TAVONA_COPY_NEWER_ONLY 0x2   /* skip when the existing copy is not older */
#define TAVONA_COPY_NO_OVERWRITE 0x4 /* never replace an existing file */
#define TAVONA_COPY_DRY_RUN 0x8      /* create and copy nothing, count as if */
#define TAVONA_COPY_FROM_DATE 0x100  /* skip files written before the date */
#define TAVONA_COPY_BEFORE_DATE 0x200 /* skip files written at the date or later */

/* Events of the callbacks, in the order they come. */
#define TAVONA_DIR_START 5      /* before anything is done; paths: the lists */
#define TAVONA_DIR_ENTER 3      /* a directory is entered */
#define TAVONA_DIR_FILE_FOUND 1 /* a file was found (counted already) */
#define TAVONA_DIR_FILE_DONE 2  /* a file was copied / deleted (counted) */
#define TAVONA_DIR_LEAVE 4      /* a directory is finished */
#define TAVONA_DIR_END 6        /* the end, when not aborted; the last entries */
/* A callback that returns this aborts; the routine then returns it too. */
#define TAVONA_DIR_ABORT 2

/* The copy control record, filled by the caller and updated by the copy.
 * Offsets (bytes)          Win32  Win64
 *   include                    0      0
 *   exclude                    4      8
 *   referenceDate              8     16
 *   flags                     12     24
 *   kilobytesCopied .. filesSkippedFromDate (10 INTs)
 *                          16-52  28-64
 *   text[100]                 56     68
 *   directoriesProcessed     256    268
 *   directoriesCreated       260    272
 *   directoriesExisting      264    276
 *   size                     268    280
 * Both are the natural layouts of the field order (no padding anywhere);
 * the Win32 one is the packed layout of the original 32-bit record. */
typedef struct COPYDIRCTL {
  const WCHAR *include;        /* pattern list; NULL or "": every file */
  const WCHAR *exclude;        /* pattern list; NULL or "": none */
  const DateTimeStruct *referenceDate; /* for flags 0x100/0x200; NULL: no date test */
  UINT flags;                  /* TAVONA_COPY_... */
  /* Set to 0 when a copy starts. */
  INT kilobytesCopied;         /* whole 1024-byte units */
  INT bytesCopied;             /* beyond the whole kilobytes, 0-1023 */
  INT filesFound;              /* every file met, before filtering */
  INT filesCopied;
  INT filesNotIncluded;        /* include list given and not matched */
  INT filesExcluded;           /* exclude list matched */
  INT filesSkippedExisting;    /* TAVONA_COPY_NO_OVERWRITE */
  INT filesSkippedNotOlder;    /* TAVONA_COPY_NEWER_ONLY */
  INT filesSkippedBeforeDate;  /* TAVONA_COPY_FROM_DATE */
  INT filesSkippedFromDate;    /* TAVONA_COPY_BEFORE_DATE */
  WCHAR text[100];             /* the caller's; the copy never touches it */
  INT directoriesProcessed;
  INT directoriesCreated;
  INT directoriesExisting;
} COPYDIRCTL;

/* source and destination: directories (for TAVONA_DIR_START the two
 * lists); value: the caller's value as given. TAVONA_DIR_ABORT aborts. */
typedef INT(WINAPI *TAVONA_COPYDIR_CALLBACK)(const WCHAR *source, const WCHAR *destination,
                                             INT event, COPYDIRCTL *ctl, INT_PTR value);

/* Copies each source directory into its destination. Per directory: the
 * destination is created with missing parents (Tavona_CreateDirectoryChain;
 * not in a dry run); each file is counted as found, then the first test
 * that applies skips it with its counter: include list, exclude list,
 * FROM_DATE, BEFORE_DATE (last write time against the reference date,
 * converted with DateTimeStruct_To_FileTime); then, only when the
 * destination directory existed before the copy and the file exists there:
 * a directory of that name fails the copy (error 1328), NO_OVERWRITE and
 * NEWER_ONLY skip. Otherwise the file is copied (CopyFileW, replacing; a
 * read-only destination fails with 1352) and counted with its size (the
 * low 32 bits) carried into whole kilobytes. A file in use (sharing or
 * lock violation) asks with message 1354: retry, ignore (counted as copied,
 * not copied) or abort; an answer no person gave (the silent or log error
 * mode) retries 20 times at 100 ms, then fails. Other copy failures report
 * 1352 with both paths, a path beyond 1023 characters reports 1352 with
 * the directory and the name. Returns 1 when done, 2 when aborted or
 * failed (also for a NULL ctl; NULL lists count as empty). Files copied
 * so far stay; the counters show how far it got. Example:
 *
 *   COPYDIRCTL c = {0};
 *   c.include = L"*.txt\t*.csv";
 *   c.flags = TAVONA_COPY_RECURSE | TAVONA_COPY_NEWER_ONLY;
 *   if (Tavona_CopyDirectories(L"C:\\Data\nC:\\Forms", L"D:\\Backup\\Data\nD:\\Backup\\Forms",
 *                              &c, NULL, 0) == 1)
 *     Tavona_DisplayCopyStatistic(&c, hwnd);
 */
INT WINAPI Tavona_CopyDirectories(const WCHAR *sources, const WCHAR *destinations,
                                  COPYDIRCTL *ctl, TAVONA_COPYDIR_CALLBACK callback,
                                  INT_PTR value);

/* The same with a progress indicator (large template with remaining time)
 * on the active window: message 1460 as its first line, the directory being
 * copied below it, the bar over the number of files counted beforehand
 * with Tavona_DirectoriesStatistic. title NULL = "", color 0 = the
 * default. Cancel (confirmed) aborts. 2 also for NULL lists or ctl. */
INT WINAPI Tavona_CopyDirectoriesWithProgInd(const WCHAR *sources, const WCHAR *destinations,
                                             COPYDIRCTL *ctl, const WCHAR *title,
                                             COLORREF color);

/* The callback of Tavona_CopyDirectoriesWithProgInd; value is the progress
 * indicator. 2 when it is gone or the user aborted, else 1. */
INT WINAPI CopyDirCallback(const WCHAR *source, const WCHAR *destination, INT event,
                           COPYDIRCTL *ctl, INT_PTR value);

/* Counts of Tavona_DirectoriesStatistic. */
typedef struct DIRSTATISTIC {
  INT kilobytes; /* whole 1024-byte units */
  INT bytes;     /* beyond the whole kilobytes */
  INT files;
  INT reserved;  /* always 0 */
} DIRSTATISTIC;

/* Clears stat and counts the files (and their sizes) of every directory of
 * the list, with recurse also of their subdirectories. 1 when done; 2 for
 * a NULL stat, when memory runs out or a path grows beyond 1023 characters
 * (the counts so far stay). */
INT WINAPI Tavona_DirectoriesStatistic(const WCHAR *directories, DIRSTATISTIC *stat,
                                       BOOL recurse);

/* The counters of ctl in dialog 110 (kilobytes rounded up). parent is
 * accepted for compatibility; the dialog is owned by the active window like
 * every dialog of the library. Returns 1 (OK and Cancel both close it), -1
 * when the dialog cannot be shown, 0 for a NULL ctl. */
INT WINAPI Tavona_DisplayCopyStatistic(COPYDIRCTL *ctl, HWND parent);
INT_PTR CALLBACK CopyDirStatistic_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                                  LPARAM lParam);

/* Creates the directory and every missing parent, outermost first.
 * Trailing separators are ignored. No parent is created above a root: a
 * path shorter than 3 characters, "\\server\share", or a drive, colon,
 * separator and one component ("C:\data"). 0 when the directory exists or
 * was created and for a blank path; -1 after reporting 1329 (the path or a
 * parent exists and is no directory) or 1330 (it cannot be created, or is
 * longer than 1023 characters). */
INT WINAPI Tavona_CreateDirectoryChain(const WCHAR *path);

/* TRUE when no file lies directly in the directory (a list: in any of
 * them). Subdirectories and dot-names do not count, so a directory holding
 * only subdirectories is empty, and so is one that does not exist. */
BOOL WINAPI Tavona_IsDirectoryEmpty(const WCHAR *directory);

/* Adds the subdirectories of directory (no dot-names) to a list box, combo
 * box or list view in the order found (Tavona_AddBoxEntry, item data 0);
 * returns the number added, 0 for a blank directory. */
INT WINAPI Tavona_ScanDirsToBox(HWND box, const WCHAR *directory);

/* Flag of Tavona_ScanFilesToBox. */
#define TAVONA_SCAN_STRIP_EXTENSION 1024

/* Adds the files of directory that pass the include and exclude lists, in
 * the order found; returns the number added, 0 for a blank directory. */
INT WINAPI Tavona_ScanFilesToBox(HWND box, const WCHAR *directory, const WCHAR *include,
                                 const WCHAR *exclude, UINT flags);

/* Writes the names of the files that pass the filters into dst, separated
 * by separator, as long as name length + 2 < room left. DELIBERATELY each
 * name is copied by bytes with its length in characters as the count: only
 * the first half of the name arrives, the rest of its place keeps what dst
 * held (an odd length copies half a character), and the next name starts
 * after its full length. A zero follows when room is left. Returns the
 * number of files that passed, those that did not fit included; 0 for a
 * NULL dst or dstSize below 1 (dst untouched), dst "" for a blank
 * directory or a separator of 0. Use Tavona_ScanFilesToBox for full names. */
INT WINAPI Tavona_ScanFilesToBuffer(const WCHAR *directory, const WCHAR *include,
                                    const WCHAR *exclude, WCHAR separator, WCHAR *dst,
                                    INT dstSize);

/* Delete and scan: the mirror of the copy. Flags TAVONA_COPY_RECURSE,
 * TAVONA_COPY_DRY_RUN, TAVONA_COPY_FROM_DATE and TAVONA_COPY_BEFORE_DATE as
 * for the copy, and: */
#define TAVONA_DELETE_KEEP_READONLY 0x4 /* skip read-only files (else they go too) */
#define TAVONA_DELETE_EMPTY_DIRS 0x10   /* remove subdirectories left empty */

/* The delete control record: as COPYDIRCTL up to the flags, then eleven
 * counters, all set to 0 at the start. Win32: 60 bytes, Win64: 72. */
typedef struct DELETEDIRCTL {
  const WCHAR *include;
  const WCHAR *exclude;
  const DateTimeStruct *referenceDate;
  UINT flags;
  INT kilobytesDeleted;        /* of the files deleted (dry run: that would be) */
  INT bytesDeleted;            /* beyond the whole kilobytes */
  INT filesFound;
  INT filesDeleted;
  INT filesNotIncluded;
  INT filesExcluded;
  INT filesSkippedReadOnly;    /* TAVONA_DELETE_KEEP_READONLY */
  INT filesSkippedBeforeDate;  /* TAVONA_COPY_FROM_DATE */
  INT filesSkippedFromDate;    /* TAVONA_COPY_BEFORE_DATE */
  INT directoriesProcessed;
  INT directoriesRemoved;      /* TAVONA_DELETE_EMPTY_DIRS */
} DELETEDIRCTL;

/* path: the directory (TAVONA_DIR_START: the list). */
typedef INT(WINAPI *TAVONA_DELETE_CALLBACK)(const WCHAR *path, INT event, DELETEDIRCTL *ctl,
                                            INT_PTR value);

/* Deletes the files of every directory of the list that pass the filters:
 * events START, then per directory ENTER, per file FILE_FOUND and (after
 * deleting) FILE_DONE, LEAVE, finally END, as the copy. A read-only file
 * loses the attribute and goes unless TAVONA_DELETE_KEEP_READONLY. A file
 * that cannot be deleted asks with message 1391 (retry, ignore: left and
 * not counted, abort; unattended answers as for the copy). With
 * TAVONA_DELETE_EMPTY_DIRS a subdirectory left without any entry is
 * removed after its LEAVE event (not in a dry run); the listed directories
 * themselves stay.
 * Returns 1 done, 2 aborted or failed (NULL ctl, no memory: 1300). A
 * missing directory is entered and left with nothing found. Example:
 * delete the *.tmp files older than 1 March 2024 below C:\Work, but not
 * keep.tmp, and the directories that become empty:
 *
 *   DateTimeStruct d = {1, 3, 2024, 0, 0, 0};
 *   DELETEDIRCTL c = {L"*.tmp", L"keep.tmp", &d,
 *                     TAVONA_COPY_RECURSE | TAVONA_COPY_BEFORE_DATE | TAVONA_DELETE_EMPTY_DIRS};
 *   Tavona_DeleteFiles(L"C:\\Work", &c, NULL, 0);
 *   // c.filesDeleted files went, c.filesSkippedFromDate were newer
 */
INT WINAPI Tavona_DeleteFiles(const WCHAR *directories, DELETEDIRCTL *ctl,
                              TAVONA_DELETE_CALLBACK callback, INT_PTR value);

/* Tavona_DeleteFiles with TAVONA_COPY_DRY_RUN always set: the same walk,
 * filters, events and counters, and nothing changes. FILE_DONE reports each
 * file that passed the filters; filesDeleted and the kilobytes count them. */
INT WINAPI Tavona_ScanDirectory(const WCHAR *directories, DELETEDIRCTL *ctl,
                                TAVONA_DELETE_CALLBACK callback, INT_PTR value);

#endif /* _WIN32 */

TAVONA_END_DECLS

#endif
