/* tavona32: list and combo box helpers, the progress indicator, tab pages,
 * small windows, window hooks and message helpers. */
#ifndef TAVONA_CONTROLS_H
#define TAVONA_CONTROLS_H

#include "tvbase.h"

TAVONA_BEGIN_DECLS

/* Box kinds by window class name (any case). Helpers send list-box messages
 * to kind 1 and combo-box messages to every other kind. */
#define TAVONA_BOX_OTHER 0
#define TAVONA_BOX_LISTBOX 1
#define TAVONA_BOX_COMBOBOX 2
#define TAVONA_BOX_LISTVIEW 3

INT WINAPI Tavona_GetBoxType(HWND box);

/* Removes every entry (list views too); nothing for other kinds. */
void WINAPI Tavona_ResetBox(HWND box);

/* Flags of Tavona_AddBoxEntry. */
#define TAVONA_ADD_UNIQUE 2

/* Adds text (NULL = "") with itemData at position (-1: at the end, sorted if
 * the control sorts). With TAVONA_ADD_UNIQUE an entry of the same text in any
 * case is selected and given itemData instead. Returns the entry's index or
 * -1. */
INT WINAPI Tavona_AddBoxEntry(HWND box, const WCHAR *text, LPARAM itemData, INT position,
                              UINT flags);


/* ---- Box helpers -------------------------------------------------------
 * Indices are 0-based; -1 naming an entry means the current selection (the
 * helper fails, or does nothing, when there is none). Item data are
 * pointer-sized (LPARAM). */

/* 1 when the kind is list box / combo box / either, else 0. */
INT WINAPI Tavona_IsListBox(HWND box);
INT WINAPI Tavona_IsComboBox(HWND box);
INT WINAPI Tavona_IsListOrComboBox(HWND box);

/* Number of entries (negative when the control reports an error). */
INT WINAPI Tavona_GetBoxCount(HWND box);
/* Current selection, or -1. */
INT WINAPI Tavona_GetBoxIndex(HWND box);
/* Selects index; an index at or beyond the count selects the last entry
 * (0 is sent for an empty box), -1 clears the selection. Returns -1 when
 * the control reports an error (clearing does), else 0. */
INT WINAPI Tavona_SetBoxIndex(HWND box, INT index);
/* Copies the entry's text to out ("" first). -1 when there is no such entry
 * or the text does not fit in outSize characters, else 0. */
INT WINAPI Tavona_GetBoxEntry(HWND box, INT index, WCHAR *out, INT outSize);
/* Item data of the entry (any negative index: the selection); 0 for a NULL
 * box or no selection. */
LPARAM WINAPI Tavona_GetItemData(HWND box, INT index);
void WINAPI Tavona_SetItemData(HWND box, INT index, LPARAM value);
/* 0, or -1 when nothing was deleted. */
INT WINAPI Tavona_DeleteBoxEntry(HWND box, INT index);

/* Searches return the index or -1. By whole text, any case: */
INT WINAPI Tavona_GetBoxIndexByItemText(HWND box, const WCHAR *text);
/* First entry whose item data equals value. */
INT WINAPI Tavona_GetBoxIndexByItemData(HWND box, LPARAM value);
/* First entry whose item data points to a string equal to text (exact
 * case); entries with NULL item data are skipped; NULL text gives -1. */
INT WINAPI Tavona_GetBoxIndexByItemDataString(HWND box, const WCHAR *text);

/* Flag of Tavona_FindBoxEntry: compare by code units after removing
 * trailing characters of code 32 or less from both texts, from entry 0;
 * entries of 500 characters or more are never found. */
#define TAVONA_FIND_TRIMMED 8
/* Without flags: whole text in any case, searching after entry start. */
INT WINAPI Tavona_FindBoxEntry(HWND box, const WCHAR *text, INT start, UINT flags);

/* Flags of the fill, select and read helpers. A list holds per entry a
 * text field (up to 299 characters), then with TAVONA_FILL_NUMBER a number
 * field, then with TAVONA_FILL_STRING a string field (each up to 49),
 * all separated by the same separator:
 *   Tavona_FillBoxExtended(box, ';', L"Red;1;Green;2", TAVONA_FILL_NUMBER) */
#define TAVONA_FILL_NUMBER 1 /* the number becomes the item data */
#define TAVONA_FILL_KEEP 2   /* keep entries (fill) or the selection (select) */
#define TAVONA_FILL_HEX 4    /* the number is hexadecimal (invalid: 0) */
#define TAVONA_FILL_UNIQUE 8 /* add as Tavona_AddBoxEntry with TAVONA_ADD_UNIQUE */
#define TAVONA_FILL_STRING 16 /* a new copy of the string becomes the item data;
                                 release with Tavona_DeleteBoxItemDataPointers */

/* Tavona_FillBoxExtended with flags 0: empties the box, then adds each
 * field of list. */
void WINAPI Tavona_FillBox(HWND box, WCHAR separator, const WCHAR *list);
/* Empties the box unless TAVONA_FILL_KEEP, then adds the entries of list
 * (NULL = "") at the end. */
void WINAPI Tavona_FillBoxExtended(HWND box, WCHAR separator, const WCHAR *list, UINT flags);

/* One row of Tavona_FillBoxByTable: the text is string stringId of the
 * resource library (up to 199 characters, translated; "" when the string is
 * missing), number and string
 * are the item data with TAVONA_FILL_NUMBER or TAVONA_FILL_STRING. */
typedef struct TAVONA_BOX_ROW {
  UINT stringId;
  LPARAM number;
  const WCHAR *string;
} TAVONA_BOX_ROW;
/* Appends one entry per row (the box is never emptied first);
 * TAVONA_FILL_UNIQUE as for the list form. */
void WINAPI Tavona_FillBoxByTable(HWND box, const TAVONA_BOX_ROW *table, INT count, UINT flags);

/* Releases every entry's item data as a string copied by TAVONA_FILL_STRING.
 * The item data keep their (now dangling) values: empty the box next. */
void WINAPI Tavona_DeleteBoxItemDataPointers(HWND box);

/* Appends every entry of source with its item data to target (the target's
 * sorting applies). Returns the last add result. */
INT WINAPI Tavona_CopyBox(HWND source, HWND target);
/* Deletes from box the entries whose text (any case) is in other. Texts of
 * 500 characters or more are left alone. Returns the last delete result. */
INT WINAPI Tavona_DeleteIntersectingBoxEntries(HWND box, HWND other);

/* Directions of Tavona_MoveBoxEntry. */
#define TAVONA_MOVE_UP 1
#define TAVONA_MOVE_DOWN 2
/* Moves the entry (negative index: the selection) one place with its item
 * data and selects it; at either end, or for another direction, it is only
 * selected. Texts of 200 characters or more are not moved. */
void WINAPI Tavona_MoveBoxEntry(HWND box, INT index, INT direction);

/* Selects the entries named in list (items up to 99 characters, any case):
 * a list box adds each to its selection, another box makes each the
 * current one in turn. flags takes the layout of Tavona_FillBoxExtended
 * (TAVONA_FILL_NUMBER and TAVONA_FILL_STRING fields are skipped, so a fill
 * list selects its own entries) and TAVONA_FILL_KEEP; without it everything
 * is unselected first. Returns the number of items found (0 for no item). */
INT WINAPI Tavona_SelectBoxEntries(HWND box, WCHAR separator, const WCHAR *list, UINT flags);
/* List box: every entry unselected, last first; others: selection cleared.
 * Returns the last message result. */
INT WINAPI Tavona_UnselectAllBoxEntries(HWND box);

/* Flag of Tavona_ReadBox: only the selected entries (a combo box's current
 * one). It also takes TAVONA_FILL_NUMBER (item data as a decimal number)
 * and TAVONA_FILL_STRING (the string item data, up to 49 characters), so
 * its text fills a box again with the same flags. */
#define TAVONA_READ_SELECTED 4
/* Joins the entries' fields with separator (none after the last) into out.
 * Entries of 200 characters or more are skipped; when out is full the text
 * ends after the last whole entry. Returns the characters written. */
INT WINAPI Tavona_ReadBox(HWND box, WCHAR separator, UINT flags, WCHAR *out, INT outSize);

/* Empties the box, adds the languages of resource string 1512 ("number|name"
 * pairs; an existing name is selected), then the installed locales by
 * language name with the locale id as item data, each once. Returns the
 * result of EnumSystemLocalesW. Not for two threads at once. */
BOOL WINAPI Tavona_FillLanguagesBox(HWND box);

/* ---- Progress indicator ------------------------------------------------
 * A modeless dialog (templates 2500 and 2511 of the resource library) with
 * a bar, a text line, a remaining-time line and a cancel button. Its owner
 * is disabled from creation until Tavona_DestroyProgressIndicator (or until
 * the dialog is destroyed some other way). Typical loop:
 *   HWND p = Tavona_CreateProgressIndicator(owner, L"Copying", 0, n);
 *   for (i = 0; i < n && !Tavona_CheckProgressIndicatorAborted(p); ++i) {
 *     work(i); Tavona_UpdateProgressIndicator(p, i + 1);
 *   }
 *   Tavona_DestroyProgressIndicator(p);
 * Every function ignores a NULL dialog. */

/* Flags of Tavona_CreateProgressIndicatorExtended. */
#define TAVONA_PROGRESS_TIME 1     /* show the estimated remaining time */
#define TAVONA_PROGRESS_LARGE 2    /* the larger template 2511 */
#define TAVONA_PROGRESS_NOCANCEL 4 /* no cancel button; never aborted */

/* An upper bound not above lower becomes lower + 1. Returns the dialog, or
 * NULL (owner left enabled) when memory runs out (error 1300 reported) or
 * the resource library has no template. */
HWND WINAPI Tavona_CreateProgressIndicatorExtended(HWND owner, const WCHAR *title, INT lower,
                                                   INT upper, UINT flags);
HWND WINAPI Tavona_CreateProgressIndicator(HWND owner, const WCHAR *title, INT lower,
                                           INT upper);
/* The bar's done part is width * position / (upper - lower): the position
 * is not taken relative to the lower bound, so a lower bound other than 0
 * shifts the bar (kept as it has always been; the bar never draws outside
 * its frame). Repaints only when the computed width changes; with
 * TAVONA_PROGRESS_TIME it then updates the remaining-time line. */
void WINAPI Tavona_UpdateProgressIndicator(HWND dialog, INT position);
/* Stores both bounds as given (an empty range shows no done part) and
 * repaints; the position is kept. */
void WINAPI Tavona_SetProgressIndicatorBounds(HWND dialog, INT lower, INT upper);
/* Colour of the done part (initially the active caption colour). */
void WINAPI Tavona_SetProgressIndicatorColor(HWND dialog, COLORREF color);
/* The text line (NULL = ""). */
void WINAPI Tavona_SetProgressIndicatorText(HWND dialog, const WCHAR *text);
/* Handles at most one queued message of the thread, then, when cancel was
 * pressed since the last call, asks with message 1380: 1 for yes, else 0
 * (the request is cleared either way). */
INT WINAPI Tavona_CheckProgressIndicatorAborted(HWND dialog);
/* Enables the owner again and destroys the dialog. */
void WINAPI Tavona_DestroyProgressIndicator(HWND dialog);

/* ---- Tab control pages --------------------------------------------------
 * Each tab item's application value (TCIF_PARAM) is the modeless dialog
 * that forms its page; the pages are children of the tab control's parent.
 */

/* Creates page templateId of instance (a child-style dialog) with procedure
 * and param, and inserts a tab titled with its caption (up to 99
 * characters) at position (-1: at the end). Returns the page, or NULL. */
HWND WINAPI Tavona_AddTabControlItemExt(HWND tab, INT position, HINSTANCE instance,
                                        UINT templateId, DLGPROC procedure, LPARAM param);
/* The same; 0 or -1. */
INT WINAPI Tavona_AddTabControlItem(HWND tab, INT position, HINSTANCE instance, UINT templateId,
                                    DLGPROC procedure, LPARAM param);
/* Hides every page and shows page index (-1: the selected tab) over the
 * tab control's display area. */
void WINAPI Tavona_ShowTabControlItem(HWND tab, INT index);
/* Selects tab index and shows its page. */
void WINAPI Tavona_SetActiveTabControl(HWND tab, INT index);
/* Shows each page in turn and sends it WM_COMMAND IDOK. When a page moves
 * the focus (to a field that needs attention) it stays shown and the newly
 * focused window is returned; otherwise the tab selected before is shown
 * again and NULL is returned. */
HWND WINAPI Tavona_ConfirmAllTabControlItems(HWND tab);

/* ---- Temporary, status and popup windows -------------------------------- */

/* A message window of class "TAVONATEMPWIND32" with a thin border and no
 * caption, 250 pixels wide, centred on the screen, that destroys itself
 * after displayTime tenths of a second; 0 or less means 50 minutes.
 * background 0 (black) leaves the class background. The focus stays where
 * it was. Returns the window or NULL. */
HWND WINAPI Tavona_DisplayTempWindExt(const WCHAR *text, INT displayTime, COLORREF background);
/* The same with string stringId of module (up to 1000 characters); NULL
 * when the string is missing or empty. */
HWND WINAPI Tavona_DisplayTempWind(HINSTANCE module, UINT stringId, INT displayTime,
                                   COLORREF background);
LRESULT CALLBACK WndProcTempWind(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/* "TAVONA_STATUS_32": a plain window of a library class. */
LRESULT CALLBACK WndProcStatus(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/* Shows text in a tooltip-coloured popup ("TAVONA_POPUP_32") below anchor
 * (above it at the bottom of the screen), without taking the activation.
 * There is one popup at a time: a new one replaces the last. A click
 * closes it. Returns the popup, or NULL for a blank text. */
HWND WINAPI Tavona_ShowPopup(HWND anchor, const WCHAR *text);
void WINAPI Tavona_DestroyPopup(void);
LRESULT CALLBACK WndProcButtPopup(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/* ---- Placing windows ---------------------------------------------------- */

/* A child window is centred in its parent's client area, any other window
 * on the screen; its size is kept. */
void WINAPI Tavona_CenterWindow(HWND window);
/* Fits the window into the work area of its monitor: moved inside, and
 * made smaller only where it is larger than the work area. */
BOOL WINAPI Tavona_SizeWindowToScreen(HWND window);
/* Flag of Tavona_ArrangeWindowGroup: one below the other. */
#define TAVONA_ARRANGE_COLUMN 1
/* Lines up the visible controls ids[0..count) of parent in a row (or a
 * column), from where the first visible one is, gap pixels apart; hidden
 * ones take no room, so hiding a button closes its gap. Sizes and the other
 * coordinate are kept. Returns the number of controls placed. */
INT WINAPI Tavona_ArrangeWindowGroup(HWND parent, const UINT *ids, INT count, INT gap,
                                     UINT flags);
/* Converts both corners of a screen rectangle to window's client
 * coordinates. */
BOOL WINAPI Tavona_ScreenToClient(HWND window, RECT *rect);
/* Makes button id the dialog's default button, with the default frame, and
 * gives the previous default button the plain frame. */
void WINAPI Tavona_MakeDefPushButton(HWND dialog, UINT id);
/* Adds (subtracts) step to the integer in edit and writes it back, kept
 * within minimum and maximum. Returns the new value. */
INT WINAPI Tavona_IncEditField(HWND edit, INT step, INT minimum, INT maximum);
INT WINAPI Tavona_DecEditField(HWND edit, INT step, INT minimum, INT maximum);
/* Removes separators that lead or end a menu or follow another separator
 * (left over when items were removed), in submenus too. Returns how many. */
INT WINAPI Tavona_DeleteMenuSeparators(HMENU menu);

/* ---- Window procedure hooks ---------------------------------------------
 * The hook record (original procedure, link value; pointer-sized) lies in
 * movable global memory attached to the window under a property name. */

/* Installs procedure on window and remembers the previous one and link.
 * 0, or -1 (bad arguments, no memory, or a hook of that name already
 * there). The instance is not used. */
INT WINAPI Hook_Window(HWND window, WNDPROC procedure, const WCHAR *name, LPARAM link,
                       HINSTANCE instance);
/* Restores the remembered procedure; nothing when the window has no such
 * hook. Unhook in the reverse order of hooking. */
void WINAPI Unhook_Window(HWND window, const WCHAR *name);
/* Calls the remembered procedure; 0 without a hook. */
LRESULT WINAPI Call_HookOriginalCallback(HWND window, const WCHAR *name, UINT message,
                                         WPARAM wParam, LPARAM lParam);
LPARAM WINAPI Get_HookLink(HWND window, const WCHAR *name);

/* Edit hooks ("ONLYLFHOOKPROPNAME", "TABANDLFHOOKPROPNAME"): Enter (and Tab)
 * reach the edit control as Ctrl+Enter (Ctrl+Tab): the key-down is
 * swallowed after the Ctrl key is marked pressed in the thread's keyboard
 * state, and the key-up marks it released again. 0 or -1. */
INT WINAPI Hook_Edit_OnlyLf(HWND edit);
void WINAPI Unhook_Edit_OnlyLf(HWND edit);
INT WINAPI Hook_Edit_TabAndLf(HWND edit);
void WINAPI Unhook_Edit_TabAndLf(HWND edit);
LRESULT CALLBACK Edit_OnlyLf_Hook(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK Edit_TabAndLf_Hook(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/* ---- Message packing ----------------------------------------------------
 * Low and high 16-bit halves of WPARAM; window handles from the other
 * parameter. NULL out pointers are skipped. */
void WINAPI Evaluate_WmCommand(WPARAM wParam, LPARAM lParam, UINT *id, UINT *code,
                               HWND *control);
void WINAPI Evaluate_WmActivate(WPARAM wParam, LPARAM lParam, UINT *state, UINT *minimized,
                                HWND *other);
void WINAPI Evaluate_WmScroll(WPARAM wParam, LPARAM lParam, UINT *code, UINT *position,
                              HWND *bar);
void WINAPI Evaluate_WmMenuSelect(WPARAM wParam, LPARAM lParam, UINT *item, UINT *flags,
                                  HMENU *menu);
void WINAPI Evaluate_WmDdeExecute(WPARAM wParam, LPARAM lParam, HWND *client,
                                  HGLOBAL *commands);
UINT WINAPI GetWmCommandId(WPARAM wParam, LPARAM lParam);
UINT WINAPI GetWmCommandNotif(WPARAM wParam, LPARAM lParam);
UINT WINAPI GetWmScrollId(WPARAM wParam, LPARAM lParam);
UINT WINAPI GetWmScrollPos(WPARAM wParam, LPARAM lParam);
HWND WINAPI GetWmScrollHwnd(WPARAM wParam, LPARAM lParam);
HWND WINAPI GetWmMdiActivateBecomingActive(WPARAM wParam, LPARAM lParam);
HWND WINAPI GetWmMdiActivateBecomingPassive(WPARAM wParam, LPARAM lParam);
/* WM_COMMAND with WPARAM code * 65536 + id. */
LRESULT WINAPI SendWmCommand(HWND window, UINT id, UINT code, LPARAM lParam);
BOOL WINAPI PostWmCommand(HWND window, UINT id, UINT code, LPARAM lParam);
/* message with WPARAM position * 65536 + code. */
LRESULT WINAPI SendWmScroll(HWND window, UINT message, UINT code, UINT position, LPARAM lParam);
BOOL WINAPI PostWmScroll(HWND window, UINT message, UINT code, UINT position, LPARAM lParam);
HWND WINAPI SendWmMdiGetActive(HWND client, BOOL *maximized);
HMENU WINAPI SendWmMdiSetMenu(HWND client, HMENU frameMenu, HMENU windowMenu);
/* EM_GETSEL; returns the end. */
DWORD WINAPI SendEmGetSel(HWND edit, DWORD *start, DWORD *end);
/* EM_SETSEL, then EM_SCROLLCARET unless noScroll. */
void WINAPI SendEmSetSel(HWND edit, BOOL noScroll, INT start, INT end);
LPARAM WINAPI PackLparamForDDE(UINT message, UINT_PTR low, UINT_PTR high);
BOOL WINAPI UnpackLparamForDDE(UINT message, LPARAM lParam, PUINT_PTR low, PUINT_PTR high);
BOOL WINAPI FreeLparamForDDE(UINT message, LPARAM lParam);
HCURSOR WINAPI GetClassCursor(HWND window);
/* Returns the previous cursor. */
HCURSOR WINAPI SetClassCursor(HWND window, HCURSOR cursor);
/* LoadLibraryW; free the module with FreeLibrary. NULL for a blank name. */
HMODULE WINAPI LoadDynamicLibrary(const WCHAR *file);
/* SetMetaFileBitsEx. */
HMETAFILE WINAPI SetMetaFileBitsSystemIndependent(UINT size, const BYTE *bits);

/* ---- Bitmaps --------------------------------------------------------------
 * A packed DIB is a BITMAPINFOHEADER (or a larger header), its colour
 * table, then the bits, as the clipboard's CF_DIB. */

/* A bitmap of the screen's format from a packed DIB of size bytes
 * (uncompressed, bit fields or RLE); NULL when the header or the size does
 * not hold. Release with DeleteObject. */
HBITMAP WINAPI Tavona_DibToDdb(const void *dib, DWORD size);
/* A packed DIB with bitCount bits per pixel (1, 4, 8, 16, 24, 32; 0 = the
 * bitmap's own) in movable global memory, or NULL. Release with
 * GlobalFree. */
HGLOBAL WINAPI Tavona_DdbToDib(HBITMAP bitmap, WORD bitCount);
/* A ".bmp" file as a bitmap of the screen's format, or NULL. */
HBITMAP WINAPI Tavona_LoadBitmapFromFile(const WCHAR *file);
/* Picture information of file through entry "GetInfo" of the conversion
 * library "kv32.dll" (searched beside the application and in the system
 * folders, loaded once and kept until the library unloads), which fills at
 * most infoSize bytes of info. Returns the entry's result, or -1: reports
 * 1384 when the library is missing and 1385 when it has no entry. */
INT WINAPI Tavona_PicConv_GetInfo(const WCHAR *file, void *info, INT infoSize);

/* ---- List views -------------------------------------------------------------
 * Report-style list views (SysListView32), driven through their messages.
 * Rows and columns count from 0. A row below 0 given to the item accessors
 * names the first selected row; with none selected they do nothing.
 *
 * List text: cells separated by TAB, rows ended by LF (CR LF with
 * TAVONA_LV_CRLF), no quoting; on reading, a TAB or LF inside square
 * brackets does not separate ("x\t[1\t2]\ty" is three cells). List files are
 * UTF-16LE without a byte-order mark. Buffers of cells hold 499 characters,
 * cells written to files and compared by Tavona_ListView_FindText 199, texts
 * moved or swapped 999: longer ones are cut. */

/* Flags of the save operations. */
#define TAVONA_LV_SELECTED_ONLY 1 /* only rows that are selected */
#define TAVONA_LV_CRLF 64         /* buffers: CR LF at row ends (files always) */
/* Flags of Tavona_ListView_LoadFromFileExtended. */
#define TAVONA_LV_FILE_COLUMNS 2 /* the first line defines the columns */
#define TAVONA_LV_KEEP_ROWS 4    /* append to the rows already there */
/* Flags of Tavona_ListView_FindText. */
#define TAVONA_LV_FIND_PREFIX 16
#define TAVONA_LV_FIND_IGNORE_CASE 32
/* Flag of Tavona_ListView_DeleteSelectedItems. */
#define TAVONA_LV_SELECT_NEXT 8
/* Flag of Tavona_ListView_SwapColumns. */
#define TAVONA_LV_SWAP_SELECTED 1

/* Rows firstRow..lastRow (a last row below 0 or beyond the list: the last
 * row), columns firstColumn..lastColumn, into buffer (emptied first; the
 * text is cut where it ends). The TAB before a column is written before the
 * column is read, so a last column beyond the list's columns leaves one TAB
 * at the end of every row. Returns -1 for a NULL buffer or list view or
 * size < 1, 0 for an empty list, firstRow - 1 (at least 0) when firstRow
 * is beyond lastRow, else the last row visited. */
INT WINAPI Tavona_ListView_SaveToBuffer(HWND listView, WCHAR *buffer, INT size, INT firstRow,
                                        INT lastRow, INT firstColumn, INT lastColumn,
                                        UINT flags);
/* Characters Tavona_ListView_SaveToBuffer writes with the same arguments,
 * without the terminating zero; 0 for a NULL list view or an empty list. */
INT WINAPI Tavona_ListView_CalculateBuffer(HWND listView, INT firstRow, INT lastRow,
                                           INT firstColumn, INT lastColumn, UINT flags);
/* The same rows into a new file: cells in UTF-16LE with the single BYTE
 * 0x09 between them (kept as the family's files have it: only one-column
 * files read back cell for cell), CR LF in UTF-16 at every row end, cells
 * cut to 199 characters. Only a last row below 0 is clamped: rows beyond
 * the list are written as empty lines. -1 (after message 1339) when the file
 * cannot be created, -1 for a NULL list view. */
INT WINAPI Tavona_ListView_SaveToFile(HWND listView, const WCHAR *file, INT firstRow,
                                      INT lastRow, INT firstColumn, INT lastColumn, UINT flags);
/* Rows of list text into rows firstRow, firstRow + 1, ... from column
 * firstColumn on (negative: 0); rows beyond the list are inserted. Rows are
 * cut to 999 characters; a CR before the LF stays in the last cell.
 * 0, or -1 for a NULL list view or buffer. */
INT WINAPI Tavona_ListView_LoadFromBuffer(HWND listView, const WCHAR *buffer, INT firstRow,
                                          INT firstColumn);
/* Appends the lines of a list file as rows (all rows are deleted first
 * unless TAVONA_LV_KEEP_ROWS, even when the file cannot be opened). Lines
 * are read up to 29999 units (a longer line continues as the next row);
 * trailing units below U+0020 are removed, so trailing empty cells vanish.
 * Returns the row count afterwards, 0 when the file cannot be read. */
INT WINAPI Tavona_ListView_LoadFromFileExtended(HWND listView, const WCHAR *file, UINT flags);
INT WINAPI Tavona_ListView_LoadFromFile(HWND listView, const WCHAR *file);
/* Inserts columns from firstColumn on, one per TAB-separated
 * "title|width|alignment" (width missing or not above 0: 100; alignment
 * "C" centred, "R" right, else left). Returns the index after the last
 * column inserted; 0 for a NULL definition. */
INT WINAPI Tavona_ListView_CreateColumns(HWND listView, INT firstColumn, const WCHAR *definition);
/* Widths of columns firstColumn..lastColumn as "120,80,200" (whole numbers
 * only); returns how many were written. */
INT WINAPI Tavona_ListView_GetColumnWidths(HWND listView, INT firstColumn, INT lastColumn,
                                           WCHAR *buffer, INT size);
/* Sets the widths of consecutive columns from firstColumn on; stops at the
 * end of the text or at the first column refused. Returns the last result
 * of LVM_SETCOLUMNWIDTH. */
INT WINAPI Tavona_ListView_SetColumnWidths(HWND listView, INT firstColumn, const WCHAR *widths);
/* Deletes the key, then writes column 1 of every row as a string value
 * named by column 0 (rows with an empty column 0 are skipped; both columns
 * cut to 199 characters). Returns the item count when below 1, else the
 * result of the last step. */
LONG WINAPI Tavona_ListView_To_Registry(HWND listView, HKEY root, const WCHAR *key);
/* Empties the list, then one row per value of the key: name in column 0,
 * the raw data as text in column 1. Stops at the first value whose name or
 * data do not fit 200 characters / 200 bytes. Returns the registry error of
 * opening the key, else that of closing it. */
LONG WINAPI Tavona_Registry_To_ListView(HKEY root, const WCHAR *key, HWND listView);

/* Deletes column `column` count times (negative: up to 30000), stopping at
 * the first failure; returns how many went. */
INT WINAPI Tavona_ListView_DeleteColumns(HWND listView, INT column, INT count);
/* Deletes the selected rows; with TAVONA_LV_SELECT_NEXT the row now at the
 * place of the first deleted one (or the last row) is selected and focused.
 * Returns how many rows went. */
INT WINAPI Tavona_ListView_DeleteSelectedItems(HWND listView, UINT flags);
/* First row whose cell in column equals text (499 characters; cells 199),
 * or -1. */
INT WINAPI Tavona_ListView_FindText(HWND listView, INT column, const WCHAR *text, UINT flags);
INT WINAPI Tavona_ListView_GetFirstSelectedItem(HWND listView);
/* 0 when there is no such row. */
INT WINAPI Tavona_ListView_GetItemImageIndex(HWND listView, INT row);
LPARAM WINAPI Tavona_ListView_GetItemParam(HWND listView, INT row);
BOOL WINAPI Tavona_ListView_SetItemParam(HWND listView, INT row, LPARAM value);
/* The cell text cut to size - 1 characters; returns its length. */
INT WINAPI Tavona_ListView_GetItemText(HWND listView, INT row, INT column, WCHAR *buffer,
                                       INT size);
BOOL WINAPI Tavona_ListView_SetItemText(HWND listView, INT row, INT column, const WCHAR *text);
/* Inserts a row (below 0: at the end) with text, image and value; returns
 * the row given (the count when appending), -1 when the control refuses,
 * 0 for a NULL list view. */
INT WINAPI Tavona_ListView_InsertItem(HWND listView, INT row, const WCHAR *text, INT image,
                                      LPARAM param);
INT WINAPI Tavona_ListView_GetSelectedItemCount(HWND listView);
INT WINAPI Tavona_ListView_IsItemSelected(HWND listView, INT row);
/* Sets or clears selected and focused together. */
BOOL WINAPI Tavona_ListView_SelectItem(HWND listView, INT row);
BOOL WINAPI Tavona_ListView_UnselectItem(HWND listView, INT row);
void WINAPI Tavona_ListView_SelectAll(HWND listView);
void WINAPI Tavona_ListView_UnselectAll(HWND listView);
/* Moves the texts of columns firstColumn..lastColumn of every selected row
 * one place (images and values stay) and the selection with them. Nothing
 * moves (result 1) when the first (up) or last (down) row is selected.
 * Returns the count of an empty list, -1 when nothing moved, else the
 * result of making the former place of the outermost moved row visible. */
INT WINAPI Tavona_ListView_MoveSelectedItemsUp(HWND listView, INT firstColumn, INT lastColumn);
INT WINAPI Tavona_ListView_MoveSelectedItemsDown(HWND listView, INT firstColumn,
                                                 INT lastColumn);
/* Exchanges the texts of two columns in every row (selected rows with
 * TAVONA_LV_SWAP_SELECTED); returns how many rows. */
INT WINAPI Tavona_ListView_SwapColumns(HWND listView, INT columnA, INT columnB, UINT flags);
/* ---- Button bar --------------------------------------------------------
 * A child window of class "TAVONA_BUTTONS_32" holding an ordered list of
 * buttons. A click posts notifyMessage to notifyWindow with WPARAM 1 and
 * the button as LPARAM. Buttons are addressed by the handle that
 * WButtWind_CreateNewButton returns; WButton_* calls ignore anything else.
 *
 *   HWND bar = WButtWind_CreateWindow(frame, frame, WM_APP + 1);
 *   HWBUTTON open = WButtWind_CreateNewButton(bar, 1, L"open", L"Open", 10,
 *                                             24, 60, 0, NULL);
 *   WButton_SetStringProperty(open, 5, L"Open");
 *   MoveWindow(bar, 0, 0, width, WButtWind_CalculateHeight(bar, width), TRUE);
 *   WButtWind_Arrange(bar);
 */
typedef struct TAVONA_WBUTTON *HWBUTTON;

/* Button kinds: 1 picture/caption, 8 caption over a swatch of colour 104;
 * other kinds take room but are not painted. */
#define WBUTTON_KIND_PICTURE 1
#define WBUTTON_KIND_SWATCH 8
/* Button flags (long property 6). */
#define WBUTTON_INVISIBLE 1
#define WBUTTON_NEW_ROW 2 /* starts a new row (column) */
#define WBUTTON_GROUP 4   /* a group gap before it */
#define WBUTTON_LATCHED 8 /* drawn pressed */
#define WBUTTON_INVERTED 16

/* Bar properties 1 to 17 (long) and 100 to 104 (colours); an unknown id
 * reads 0 and is ignored when set:
 *  1 margin (4)          2 gap (0)             3 group gap (8)
 *  6 edge mode (2: every button; else the hot and latched ones only)
 *  7 edge width (1)      8 frame width (1)     9 group separators (0)
 * 10 wrap (0)           11 arrangement (2 columns, else rows; 1)
 * 12 menu switch (1)    14 "EDIT PROP" on double click (1)
 * 15 paint clipped to the rectangle of WButtWind_PaintToHdc (0)
 * 17 context menu on the right button (1); 4, 5, 13 (1) and 16 are kept.
 * 100 background, 101 caption text (0), 102 face (all 0xC0C0C0),
 * 103 kept (0x00FFFF), 104 second colour (0xFF0000). */
#define WBAR_MARGIN 1
#define WBAR_GAP 2
#define WBAR_GROUP_GAP 3
#define WBAR_EDGE_MODE 6
#define WBAR_EDGE_WIDTH 7
#define WBAR_FRAME_WIDTH 8
#define WBAR_SEPARATORS 9
#define WBAR_WRAP 10
#define WBAR_ARRANGEMENT 11
#define WBAR_CONTEXT_MENU 17
#define WBAR_COLOR_BACKGROUND 100
#define WBAR_COLOR_TEXT 101
#define WBAR_COLOR_FACE 102
#define WBAR_COLOR_SECOND 104

/* The bar: control id 133, at 100,100 sized 200 x 200 until moved. */
HWND WINAPI WButtWind_CreateWindow(HWND parent, HWND notifyWindow, UINT notifyMessage);
void WINAPI WButtWind_DestroyWindow(HWND bar);
/* A button of width x height at the end, or before insertBefore. NULL when
 * memory runs out (1300 reported). */
HWBUTTON WINAPI WButtWind_CreateNewButton(HWND bar, INT kind, const WCHAR *key,
                                          const WCHAR *name, INT id, INT height, INT width,
                                          UINT flags, HWBUTTON insertBefore);
void WINAPI WButtWind_DeleteAllButtons(HWND bar);
/* Matching: key and name NULL or equal (exact), id below 1 or equal. The
 * first match after startAfter (NULL: from the first button). */
HWBUTTON WINAPI WButtWind_FindButton(HWND bar, const WCHAR *key, const WCHAR *name, INT id,
                                     HWBUTTON startAfter);
/* Set or clear WBUTTON_LATCHED / WBUTTON_INVISIBLE of every match; the
 * caller repaints. */
void WINAPI WButtWind_SetButtonsActive(HWND bar, const WCHAR *key, const WCHAR *name, INT id,
                                       BOOL on);
void WINAPI WButtWind_SetButtonsInvisible(HWND bar, const WCHAR *key, const WCHAR *name,
                                          INT id, BOOL on);
/* Lays the buttons out in the client area (buttons keep their sizes). */
void WINAPI WButtWind_Arrange(HWND bar);
/* Height the rows need at width; width the columns need at height (one
 * pixel more). */
INT WINAPI WButtWind_CalculateHeight(HWND bar, INT width);
INT WINAPI WButtWind_CalculateWidth(HWND bar, INT height);
/* Paints the bar into dc over rect (NULL: the client area); the last two
 * values are reserved (0). The DC is left as it was. */
void WINAPI WButtWind_PaintToHdc(HWND bar, HDC dc, const RECT *rect, LPARAM reserved1,
                                 LPARAM reserved2);
void WINAPI WButtWind_Repaint(HWND bar);
INT WINAPI WButtWind_GetLongProperty(HWND bar, INT id);
void WINAPI WButtWind_SetLongProperty(HWND bar, INT id, INT value);
COLORREF WINAPI WButtWind_GetColorProperty(HWND bar, INT id);
void WINAPI WButtWind_SetColorProperty(HWND bar, INT id, COLORREF value);
/* The bar's property dialog: 1 (OK, laid out and repainted) or 2; 0 for a
 * window that is no bar. */
INT WINAPI WButtWind_EditProperties(HWND bar);
INT_PTR CALLBACK EditButtonProp_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                                LPARAM lParam);
LRESULT CALLBACK WndProcButtons(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/* Button long properties: 2 id, 6 flags, 9 free value, 10 the bar window
 * (read only). Setting is cumulative: 2 sets id, flags and 9; 6 sets flags
 * and 9; 9 only 9. Set the id first, then the flags. */
LONG_PTR WINAPI WButton_GetLongProperty(HWBUTTON button, INT id);
void WINAPI WButton_SetLongProperty(HWBUTTON button, INT id, INT value);
/* String properties: 1 name, 3 key, 4 popup text, 5 caption, 7 and 8 free.
 * Get copies with the non-shortening copy ("" for none or another id). */
void WINAPI WButton_GetStringProperty(HWBUTTON button, INT id, WCHAR *buffer, INT size);
void WINAPI WButton_SetStringProperty(HWBUTTON button, INT id, const WCHAR *text);
/* Replace the button's bitmap (drawn stretched over its face); the old one
 * is deleted. FALSE, the old one kept, when nothing was loaded. */
BOOL WINAPI WButton_LoadBitmapFromFile(HWBUTTON button, const WCHAR *file);
BOOL WINAPI WButton_LoadBitmapFromResource(HWBUTTON button, HINSTANCE module,
                                           const WCHAR *name);
/* The popup text from string stringId (up to 1000 characters) of module
 * (NULL: the library's resource library). */
BOOL WINAPI WButton_LoadPopupTextFromResource(HWBUTTON button, UINT stringId, HINSTANCE module);
void WINAPI WButton_Repaint(HWBUTTON button);
/* Extension: a window that the layout moves with the button, height pixels
 * high (NULL: none). The application keeps owning it. */
void WINAPI WButton_SetChildWindow(HWBUTTON button, HWND child, INT height);

/* ---- Wizard ------------------------------------------------------------
 * A modal frame (template 106 of the resource library: Back, Next, Finish,
 * Cancel) over the application's page dialogs (child-style templates of
 * its own module), all created at the start and kept until the end. */

/* One page: template, bitmap (0: the default picture) and title string
 * (0: none) of the application's module. A list ends with templateId 0. */
typedef struct WIZZARD_PAGEDEF {
  UINT templateId;
  UINT bitmapId;
  UINT titleId;
} WIZZARD_PAGEDEF;

typedef struct WizzardPage {
  HWND window;
  UINT templateId;
  INT enabled;
  HBITMAP bitmap;
  WCHAR *title;
} WizzardPage;

struct WizzardContext;
/* Called with pageId 0 and the frame for every message of the frame (the
 * result is ignored), and with the current page's template id for every
 * message of any page (the result is the page's dialog procedure result). */
typedef INT(CALLBACK *WIZZARD_CALLBACK)(struct WizzardContext *context, UINT pageId,
                                        HWND window, UINT message, WPARAM wParam,
                                        LPARAM lParam);

/* Layout metrics (pixels), in this order. */
#define WIZZARD_LEFT_MARGIN 0
#define WIZZARD_RIGHT_MARGIN 1
#define WIZZARD_TOP_MARGIN 2
#define WIZZARD_BOTTOM_MARGIN 3
#define WIZZARD_PICTURE_GAP 4
#define WIZZARD_PAGE_GAP 5
#define WIZZARD_LINE_GAP 6
#define WIZZARD_CANCEL_GAP 7
#define WIZZARD_BACK_GAP 8
#define WIZZARD_NEXT_GAP 9
#define WIZZARD_FRAME_WIDTH 10

/* The running wizard, as the callback and the page messages see it. Read
 * it; change pages only through the Wizzard_* calls. */
typedef struct WizzardContext {
  INT currentPage; /* index into pages */
  INT pageCount;
  WizzardPage *pages;
  LPARAM param;
  HINSTANCE resources;
  UINT flags;
  HBITMAP defaultBitmap;
  WCHAR *title;
  WIZZARD_CALLBACK callback;
  UINT activateMessage;
  UINT leaveMessage;
  INT metrics[11];
} WizzardContext;

/* LPARAM of the activate and leave messages. A page answers the leave
 * message with WPARAM 1 (Next) by leaving result at 1 to let the wizard
 * go on; with WPARAM 2 (Back) the answer is not asked. The activate
 * message has WPARAM 0. */
typedef struct WizzardPageMessage {
  WizzardContext *context;
  INT result;
} WizzardPageMessage;

/* Flag of Wizzard_Perform: the title reads "wizard title - page title". */
#define WIZZARD_TITLE_BOTH 1

/* Runs the wizard: 1 for Finish, 2 for Cancel and for failures (1351 when a
 * page cannot be created, 1300 when memory runs out). margin (1 to 50,
 * else 13) is the left, right and top margin and the gap between picture
 * and page. Titles are translated under ltsModule (NULL: not at all). With
 * activateMessage 0 no page gets either message. The default bitmap is
 * looked up in resources, then in the library's resource library, which
 * holds picture IDB_WIZARD_DEFAULT (106). */
INT WINAPI Wizzard_Perform(const WIZZARD_PAGEDEF *pages, WIZZARD_CALLBACK callback,
                           UINT activateMessage, UINT leaveMessage, LPARAM param,
                           UINT defaultBitmapId, UINT titleId, HINSTANCE resources,
                           const WCHAR *ltsModule, INT margin, UINT flags);
/* Enables (1) or disables (0) the page with that template id for the next
 * Next or Back; returns the previous value, 0 for no such page. */
INT WINAPI Wizzard_EnableSubDialog(WizzardContext *context, UINT pageId, INT enabled);
HWND WINAPI Wizzard_GetHwndSubDialog(WizzardContext *context, UINT pageId);
LPARAM WINAPI Wizzard_GetParam(WizzardContext *context);
/* The picture of a ".bmp" file becomes the default picture; FALSE, the old
 * one kept, when the file cannot be read. */
BOOL WINAPI Wizzard_SetDefaultBitmap(WizzardContext *context, const WCHAR *file);

TAVONA_END_DECLS

#endif
