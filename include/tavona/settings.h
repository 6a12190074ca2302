/* tavona32: settings in the registry or in private profile (INI) files.
 *
 * Every value is addressed by root, key path, profile file, section and value
 * name, in this order. The registry is used when root is non-NULL and the key
 * path non-empty: the key is "<key path>\<section>" (just the key path when
 * no section is given). Otherwise the profile file is used when profile,
 * section and value name are all given; with neither, nothing happens and
 * reads leave the default. Every value is stored as text (REG_SZ). Nothing
 * is cached: each call opens and closes its own key. */
#ifndef TAVONA_SETTINGS_H
#define TAVONA_SETTINGS_H

#include "tvbase.h"

TAVONA_BEGIN_DECLS

/* ---- Strings ----------------------------------------------------------- */

/* out receives the default (NULL = "") and then the stored value. The
 * registry is asked with outSize BYTES of room, half the buffer: a
 * 50-character buffer takes values of up to 24 characters, a longer value
 * leaves the default. Kept that way: callers size their buffers for it. */
void WINAPI Tavona_ReadStringFromRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                          const WCHAR *section, const WCHAR *value,
                                          const WCHAR *defaultText, WCHAR *out, INT outSize);
void WINAPI Tavona_ReadStringFromHKCU(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                      const WCHAR *defaultText, WCHAR *out, INT outSize);
void WINAPI Tavona_ReadStringFromHKLM(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                      const WCHAR *defaultText, WCHAR *out, INT outSize);
/* The current user's value when there is one, else the machine's (or the
 * default). A user value equal to "$$$%%%$$$" counts as absent. */
void WINAPI Tavona_ReadStringFromHKCUorHKLM(const WCHAR *key, const WCHAR *section,
                                            const WCHAR *value, const WCHAR *defaultText,
                                            WCHAR *out, INT outSize);

/* Registry: the registry error code (0 = success). Profile file: the result
 * of WritePrivateProfileStringW (non-zero = success; a NULL text deletes the
 * entry). Test the result according to the store used. */
LONG WINAPI Tavona_WriteStringToRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                         const WCHAR *section, const WCHAR *value,
                                         const WCHAR *text);
LONG WINAPI Tavona_WriteStringToHKCU(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                     const WCHAR *text);
LONG WINAPI Tavona_WriteStringToHKLM(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                     const WCHAR *text);

/* ---- Typed values (read through a 50-character text) -------------------
 * long: decimal, read as _wtol reads it (no number = 0).
 * hex: written "0x%08X"; read with or without "0x" (no number = 0).
 * bit: "1" or "0".  colour: "r,g,b" in decimal, each number masked to 8 bits
 * when read, missing numbers 0. */

LONG WINAPI Tavona_ReadLongFromRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                        const WCHAR *section, const WCHAR *value,
                                        LONG defaultValue);
LONG WINAPI Tavona_ReadLongFromHKCU(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                    LONG defaultValue);
LONG WINAPI Tavona_ReadLongFromHKLM(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                    LONG defaultValue);
LONG WINAPI Tavona_ReadLongFromHKCUorHKLM(const WCHAR *key, const WCHAR *section,
                                          const WCHAR *value, LONG defaultValue);
DWORD WINAPI Tavona_ReadHexFromRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                        const WCHAR *section, const WCHAR *value,
                                        DWORD defaultValue);
/* Sets mask's bits in *flags when the stored number is non-zero and returns
 * mask; otherwise clears them and returns ~mask. */
DWORD WINAPI Tavona_ReadBitFromRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                        const WCHAR *section, const WCHAR *value,
                                        LONG defaultValue, DWORD mask, DWORD *flags);
COLORREF WINAPI Tavona_ReadColorFromRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                             const WCHAR *section, const WCHAR *value,
                                             COLORREF defaultColor);
COLORREF WINAPI Tavona_ReadColorFromHKCU(const WCHAR *key, const WCHAR *section,
                                         const WCHAR *value, COLORREF defaultColor);
COLORREF WINAPI Tavona_ReadColorFromHKLM(const WCHAR *key, const WCHAR *section,
                                         const WCHAR *value, COLORREF defaultColor);
/* Reads up to 30000 characters (values of up to 14999) into the dialog's
 * control. */
void WINAPI Tavona_ReadEditFieldFromRegistry(HWND dialog, INT controlId, HKEY root,
                                             const WCHAR *key, const WCHAR *profile,
                                             const WCHAR *section, const WCHAR *value,
                                             const WCHAR *defaultText);

LONG WINAPI Tavona_WriteLongToRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                       const WCHAR *section, const WCHAR *value, LONG number);
LONG WINAPI Tavona_WriteLongToHKCU(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                   LONG number);
LONG WINAPI Tavona_WriteLongToHKLM(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                   LONG number);
LONG WINAPI Tavona_WriteHexToRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                      const WCHAR *section, const WCHAR *value, DWORD number);
/* "1" when flags has any bit of mask set, else "0". */
LONG WINAPI Tavona_WriteBitToRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                      const WCHAR *section, const WCHAR *value, DWORD mask,
                                      DWORD flags);
LONG WINAPI Tavona_WriteColorToRegistry(HKEY root, const WCHAR *key, const WCHAR *profile,
                                        const WCHAR *section, const WCHAR *value,
                                        COLORREF color);
LONG WINAPI Tavona_WriteColorToHKCU(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                    COLORREF color);
LONG WINAPI Tavona_WriteColorToHKLM(const WCHAR *key, const WCHAR *section, const WCHAR *value,
                                    COLORREF color);

/* ---- Keys and sections ------------------------------------------------- */

/* 1 when the key opens for reading, or the profile section has an entry. */
INT WINAPI Tavona_IsRegistryKeyAvailable(HKEY root, const WCHAR *key, const WCHAR *profile,
                                         const WCHAR *section);
/* Deletes the key (only when it has no subkeys) or the whole section. */
void WINAPI Tavona_DeleteRegistryKey(HKEY root, const WCHAR *key, const WCHAR *profile,
                                     const WCHAR *section);

/* The value lists below stop at the first value whose name exceeds 199
 * characters or whose data exceed 200 bytes. */

/* Number of values of the key (0 when it does not open). */
INT WINAPI Tavona_CountRegistryItems(HKEY root, const WCHAR *key);
/* out = "name" sep "data" sep ... for every value; returns how many values
 * were read, -1 for a NULL out or outSize < 1. */
INT WINAPI Tavona_ReadRegistryItems(HKEY root, const WCHAR *key, WCHAR *out, INT outSize,
                                    WCHAR separator);
/* The same operation under the name used for language lists. */
INT WINAPI Tavona_FillLanguageBoxFromRegistry(HKEY root, const WCHAR *key, WCHAR *out,
                                              INT outSize, WCHAR separator);
/* Writes the pairs of a text in the form Tavona_ReadRegistryItems gives; the
 * separator is the text's last character. */
void WINAPI Tavona_WriteRegistryItems(HKEY root, const WCHAR *key, const WCHAR *items);

/* Empties the list box, combo box or list view and adds the names of the
 * key's subkeys, each once. Returns the registry error code. */
LONG WINAPI Tavona_FillBoxWithRegistrySubKeys(HKEY root, const WCHAR *key, HWND box);

/* The colour chooser with sixteen custom colours kept under the current
 * user's "Software\Tavona Software\Global Parameters\Custom Colors".
 * 1 when a colour was chosen (*color updated, custom colours saved), 2 on
 * cancel. */
INT WINAPI Tavona_ColorDialog(HWND owner, COLORREF *color);

/* ---- Help ---------------------------------------------------------------- */

/* Opens the compiled HTML help file of module (its file name with ".chm"
 * for the extension) on the topic with the context number. With the
 * current user's "Software\Tavona Software\Debugging" value "HelpTest"
 * set to 1 it only tells which file and topic would open (message 1599);
 * a missing file is reported (message 1340). Nothing for a NULL module;
 * unused is not read. */
void WINAPI Tavona_PerformHelp(HMODULE module, DWORD context, DWORD unused);

/* ---- File and folder dialogs -------------------------------------------- */

/* The request of Tavona_ExtendedFileNameDialog. Fields 7 to 11 address the
 * remembered name as every setting is addressed (note the order: section
 * before profile here); the name is remembered only when section and value
 * are both given. Filter texts are pairs of description and pattern, each
 * followed by the separator, which is the text's last character
 * ("Text (*.txt)|*.txt|All (*.*)|*.*|").
 *
 * Layout: Win32 offsets 0, 4, 8, ... 48 (size 52). Win64 natural
 * alignment: reserved 0, module 8, filterId 16, filter 24, titleId 32,
 * title 40, root 48, key 56, section 64, profile 72, value 80, flags 88,
 * ltsModule 96 (size 104). */
typedef struct TavonaFileNameRequest {
  DWORD reserved;         /* not read */
  HMODULE module;         /* string resources of filterId and titleId */
  UINT filterId;
  const WCHAR *filter;    /* used instead of filterId when non-empty */
  UINT titleId;
  const WCHAR *title;     /* used instead of titleId when non-empty */
  HKEY root;              /* NULL = HKEY_CURRENT_USER */
  const WCHAR *key;
  const WCHAR *section;
  const WCHAR *profile;
  const WCHAR *value;
  DWORD flags;            /* TAVONA_FND_... */
  const WCHAR *ltsModule; /* module name the resource texts are translated
                             under; NULL = the library's own */
} TavonaFileNameRequest;

#define TAVONA_FND_PICTURE_KIND1 1  /* with TAVONA_FND_PICTURES: list kind 1 */
#define TAVONA_FND_SAVE 2
#define TAVONA_FND_NOSTORE 4
#define TAVONA_FND_MULTISELECT 8
#define TAVONA_FND_NOPRESET 16
#define TAVONA_FND_NOVALIDATE 32
#define TAVONA_FND_PICTURES 128     /* filter from the picture library */

/* The open or save dialog of the request. name holds the proposed name on
 * entry. On OK it receives the chosen name copied as size BYTES, i.e. its
 * first size / 2 characters, and the last two characters of the buffer
 * become zero: pass a buffer twice as large as the longest name expected.
 * With several files chosen it receives "dir\name" entries, each
 * zero-terminated, and a closing zero (each part again copied as its length
 * in bytes). Returns the chosen filter index (from 1), 0 on cancel. */
INT WINAPI Tavona_ExtendedFileNameDialog(WCHAR *name, INT size,
                                         const TavonaFileNameRequest *request);
/* A hook procedure for OPENFILENAMEW.lpfnHook: puts the dialog at 150, 200
 * with the screen's width less 300 and its height less 600. */
UINT_PTR CALLBACK ExtendedFileNameDialog(HWND dialog, UINT message, WPARAM wParam,
                                         LPARAM lParam);

#define TAVONA_DIR_NEWSTYLE 1
#define TAVONA_DIR_EDITBOX 2
/* The shell's folder browser starting at path (may be NULL). 1 when a
 * folder was chosen (copied into path when it fits size), 2 otherwise. */
INT WINAPI Tavona_DirectoryDialog(WCHAR *path, INT size, const WCHAR *title, DWORD flags);

/* Open and save dialogs with the remembered name in a profile file (when
 * profile, section and key are all given). filter replaces filterId when
 * given; flags are ORed into OPENFILENAMEW.Flags. On OK name receives its
 * first size / 2 characters only (a byte count of size): see above. With
 * OFN_ALLOWMULTISELECT the entries are "dir\name" as above. Returns the
 * chosen filter index (from 1), 0 on cancel or failure. */
INT WINAPI Tavona_OpenFileNameDialog(WCHAR *name, INT size, HMODULE module, UINT filterId,
                                     UINT titleId, const WCHAR *profile, const WCHAR *section,
                                     const WCHAR *key, const WCHAR *filter, DWORD flags);
INT WINAPI Tavona_SaveFileNameDialog(WCHAR *name, INT size, HMODULE module, UINT filterId,
                                     UINT titleId, const WCHAR *profile, const WCHAR *section,
                                     const WCHAR *key, const WCHAR *filter, DWORD flags);
/* selector 1: Tavona_OpenFileNameDialog, otherwise the save dialog. */
INT WINAPI Tavona_FileName_Dialog(WCHAR *name, INT size, INT selector, HMODULE module,
                                  UINT filterId, UINT titleId, const WCHAR *profile,
                                  const WCHAR *section, const WCHAR *key, const WCHAR *filter,
                                  DWORD flags);
/* Lets the user pick files in folder (NULL: the current one) with the
 * filter text (NULL: all files) and deletes each one the user confirms.
 * Returns the number of files deleted. */
INT WINAPI Tavona_DeleteFilesDialog(const WCHAR *folder, const WCHAR *filter);

/* ---- Statement dump ------------------------------------------------------- */

/* Settings under HKEY_CURRENT_USER "Software\Tavona Software\Dump\Sql",
 * read at every call. 1: perform the statement (possibly edited in place,
 * bounded to size), 2: the user cancelled it. */
INT WINAPI Tavona_DumpSqlStatement(WCHAR *statement, INT size);
/* Appends "a b c d" (NULLs as empty) to the statement log: 0 when written
 * or when the file cannot be opened, 1 when no log file is configured. */
INT WINAPI TavonaDump(const WCHAR *a, const WCHAR *b, const WCHAR *c, const WCHAR *d);
/* The configuration dialog: 1 OK, 2 cancel. */
INT WINAPI TavonaDumpConfigure(void);
/* 0 dump off, 1 on; 2 and 3 the same with "DisplaySuccWithInfo" set. */
INT WINAPI Tavona_GetDumpState(void);
INT_PTR CALLBACK SqlDump_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                         LPARAM lParam);
INT_PTR CALLBACK SqlDumpConfig_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                               LPARAM lParam);

/* ---- Mail and external editors ------------------------------------------- */

/* Address and attachment lists are ';'-separated (empty entries dropped).
 * The mail client's compose dialog always opens. 0 once MAPISendMail was
 * called (its errors are shown), -1 when MAPI32.DLL or the entry is
 * missing (reported). */
INT WINAPI Tavona_SendMail(const WCHAR *sender, const WCHAR *to, const WCHAR *cc,
                           const WCHAR *bcc, const WCHAR *subject, const WCHAR *text,
                           const WCHAR *attachments);
/* Shows the readable text of a MAPI error code (nothing for 0); always 1. */
INT WINAPI Tavona_DisplayMapiError(HWND owner, ULONG code, const WCHAR *routine,
                                   LPARAM unused);
/* Mode 1 runs "Xed_ModalEditor" of xeddll.dll with the seven values and a
 * final 0 and returns its result; 2 for other modes or when the editor
 * library or entry is missing (reported). */
INT WINAPI Tavona_ModalEditor(INT mode, LPARAM v1, LPARAM v2, LPARAM v3, LPARAM v4, LPARAM v5,
                              LPARAM v6, LPARAM v7);
/* "TavonaExt_EditRTF" of TAVONAEX.DLL with the three values: its result, 0
 * when the library or entry is missing (reported). */
INT WINAPI Tavona_EditRtf(LPARAM v1, LPARAM v2, LPARAM v3);
/* Non-zero when TAVONAEX.DLL loads and has "TavonaExt_EditRTF". */
INT WINAPI Tavona_IsRtfEditorAvailable(void);
/* ---- Registry section editor ------------------------------------------------
 * Edits the string values of root\key as a list of names and data (columns
 * "title|width|title|width", add, delete, defaults as "A;1;B;2;" with the
 * text's last character as separator; NULL or "" hides the Defaults
 * button). The key is deleted and rewritten only on OK: a key with subkeys
 * cannot be deleted, so removed values then survive. Returns 1 for OK, 2
 * otherwise (also when memory runs out, after message 1300). parent is not
 * used: the editor is owned by the active window; value1 and value2 are kept
 * for the caller. */
INT WINAPI Tavona_EditRegistrySection(HWND parent, HKEY root, const WCHAR *key,
                                      const WCHAR *title, const WCHAR *columns,
                                      const WCHAR *addTitle, const WCHAR *defaults,
                                      LPARAM value1, LPARAM value2);
INT_PTR CALLBACK EditRegCtl_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                            LPARAM lParam);
INT_PTR CALLBACK AddItem_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                         LPARAM lParam);

/* ---- Recent file lists -------------------------------------------------------
 * Up to 20 file names under HKEY_CURRENT_USER\key as values F01 (the most
 * recent) to F20. Entries of 128 characters or more end the list when it
 * is read for a push: they and all older entries are dropped. */
/* Puts file in front, dropping an entry equal to it in any case. Nothing
 * for a blank key or file. */
void WINAPI Tavona_PushRecentListFile(const WCHAR *key, const WCHAR *file);
/* Entry index (from 0) into out, "" when there is none (values of size
 * characters or more are not read: the registry gets size bytes). */
void WINAPI Tavona_GetRecentListFile(const WCHAR *key, INT index, WCHAR *out, INT size);
/* Empties the box and adds up to count entries with itemData, each once. */
void WINAPI Tavona_FillRecentListToBox(HWND box, const WCHAR *key, INT count, LPARAM itemData);
/* Replaces the menu items from position on by a separator and up to count
 * entries "&1:  name" with identifiers firstId, firstId + 1, ... Names
 * longer than displayLength (when above 0) are shown in their display
 * form. Returns count when all count entries were there, 1 when the list
 * ended earlier, the separator's insertion result when count < 1.
 * displayFlags and unused are not read. */
INT WINAPI Tavona_AppendRecentListToMenuExt(HMENU menu, const WCHAR *key, INT position,
                                            UINT firstId, INT count, INT displayLength,
                                            UINT displayFlags, LPARAM unused);
INT WINAPI Tavona_AppendRecentListToMenu(HMENU menu, const WCHAR *key, INT position,
                                         UINT firstId, INT count, LPARAM unused);

TAVONA_END_DECLS

#endif
