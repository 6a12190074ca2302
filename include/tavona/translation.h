/* tavona32: run-time translation (LTS) of texts, dialogs and menus by key,
 * the assistance mode that collects untranslated texts, and a bridge to
 * gettext catalogs. */
#ifndef TAVONA_TRANSLATION_H
#define TAVONA_TRANSLATION_H

#include "tvbase.h"

TAVONA_BEGIN_DECLS

/* A translation provider: receives module, section and key and the source
 * text in text (size characters); writes the translation there, in the
 * escape notation of Tavona_EncodeString (the library decodes it with
 * Tavona_DecodeString afterwards). Its result is not used.
 *
 * Keys: "((KEY))text" carries its key KEY; any other text gets up to 21
 * readable characters derived from it, "_" and an eight-digit hash, e.g.
 * "&OK" -> "XOK_0509C774". Characters above U+00FF are dropped from the
 * readable part (they still count in the hash). */
typedef INT(WINAPI *LtsTranslationProvider)(const WCHAR *module, const WCHAR *section,
                                            const WCHAR *key, WCHAR *text, INT size);

/* Installs a provider into the library's one slot. module (may be NULL) is
 * the library that supplies it: the library takes it over and frees it when
 * the provider is removed or replaced and when tavona32.dll is unloaded.
 * A NULL provider removes the current one (and frees its module). */
void WINAPI Tavona_LtsInstallProvider(LtsTranslationProvider provider, HMODULE module);
/* The same as Tavona_LtsInstallProvider(NULL, NULL). */
void WINAPI Tavona_LtsRemoveProvider(void);

/* Translates text (size characters) in place. module NULL or "" means
 * "GENERAL", section NULL or "" "STRINGS". Without a provider only the key
 * prefix "((KEY))" is removed. */
void WINAPI LTS_TranslateString(const WCHAR *module, const WCHAR *section, WCHAR *text,
                                INT size);
/* The caption and the direct STATIC and BUTTON children of dialog (texts
 * up to 499 characters), each set back. Defaults "GENERAL", "DIALOGS". */
void WINAPI LTS_TranslateDialog(HWND dialog, const WCHAR *module, const WCHAR *section);
/* Every item text of menu and its submenus (up to 199 characters);
 * identifiers, submenus and states are kept. Defaults "GENERAL", "MENU". */
void WINAPI LTS_TranslateMenu(HMENU menu, const WCHAR *module, const WCHAR *section);

/* Assistance: collects every text of the string, dialog and menu resources
 * of a module as "KEY=text" lines (escaped with Tavona_EncodeString mode 4)
 * into a log file. The log is UTF-16LE lines under single-byte headers
 * "[M-S]" (first letters of module and section), passes after the first
 * separated by a single-byte "\r\n\r\n". */
#define LTS_FLAG_WRITE_LOG 1      /* create the log file and write the lines */
#define LTS_FLAG_CONFIRM_EACH 2   /* show each new text (Continue/Abort/Stop) */
#define LTS_FLAG_SHOW_DIALOGS 4   /* keep each top-level dialog open, translated */

/* Returned by the text display when the user stops the current pass. */
#define LTS_STOP_PASS 1025

typedef struct LtsLineList LtsLineList; /* owned by the context */

typedef struct LtsAssistanceContext {
  WCHAR logFileName[256];
  UINT flags;
  const WCHAR *moduleName;  /* set by each pass, not owned */
  const WCHAR *sectionName; /* set by each pass, not owned */
  HANDLE logFile;           /* NULL when none is open */
  LtsLineList *lines;       /* NULL when assistance is closed */
} LtsAssistanceContext;

/* Reads "LogFile" and "Flags" (HKEY_CURRENT_USER\Software\Tavona Language
 * Translation System), shows the settings dialog and, on OK, stores them,
 * creates the line list and (flag 1) the log file, opened exclusively.
 * 1 = open, 2 = cancelled or failed (also for NULL). Opening an open
 * context again keeps its log file unless flag 1 creates a new one. */
INT WINAPI LTS_OpenAssistance(LtsAssistanceContext *context);
/* Strings, dialogs and menus of resources under module (NULL/"": GENERAL).
 * 1 = done (a pass stopped with LTS_STOP_PASS counts as done and its lines
 * are discarded), 2 = aborted or failed. */
INT WINAPI LTS_PerformAssistance(LtsAssistanceContext *context, HMODULE resources,
                                 const WCHAR *module);
/* Frees the line list, closes the log file, reports message 1382. */
void WINAPI LTS_CloseAssistance(LtsAssistanceContext *context);

/* gettext bridge. Tavona_LtsExportCatalog turns an assistance log into a
 * PO template (UTF-8): one entry per line, msgctxt "MODULE|SECTION", msgid
 * the text with the log's escapes undone, the key as extracted comment
 * ("#. KEY"). modules lists the module names of the log separated by "|"
 * (NULL or "": "GENERAL"); since a log header keeps only the first letter
 * of a module name, the first name whose header matches is taken. Returns
 * the number of entries written, or -1 after reporting the error. */
INT WINAPI Tavona_LtsExportCatalog(const WCHAR *logFile, const WCHAR *catalogFile,
                                   const WCHAR *modules);

/* Reads a translated PO file (UTF-8, no plural forms, msgctxt as above;
 * fuzzy and untranslated entries are skipped) and installs the built-in
 * provider that answers by module, section and key (the "#." comment, or
 * the key derived from msgid when there is none). Texts the catalog does
 * not hold stay as they are. Returns the number of translations, or -1
 * after reporting the error with its line number (the previous provider
 * then stays installed). */
INT WINAPI Tavona_LtsLoadCatalog(const WCHAR *catalogFile);

TAVONA_END_DECLS

#endif
