/* tavona32: printers, paper bins and paper formats, and print copy lists. */
#ifndef TAVONA_PRINTING_H
#define TAVONA_PRINTING_H

#include "tvbase.h"

TAVONA_BEGIN_DECLS

/* ---- Printers ------------------------------------------------------------
 * Printers are the keys of the "Devices" section of the user's profile
 * (GetProfileStringW), each "driver,port[,...]". */

/* Adds every printer to box (a combo or list box) and selects preselect,
 * cut at its last "," first ("Office,winspool,Ne00:" looks for
 * "Office,winspool"); a name not in the list becomes the box's text. NULL
 * preselects nothing. */
void WINAPI Tavona_InitPrintersBox(HWND box, const WCHAR *preselect);
/* Does nothing; the counterpart of Tavona_InitPrintersBox. */
void WINAPI Tavona_ExitPrintersBox(void);
/* The selected printer's name (as Tavona_GetBoxEntry with index -1). */
INT WINAPI Tavona_PrintersBoxGetCurrent(HWND box, WCHAR *buffer, INT size);
/* 1 when the profile holds a non-blank entry for printer; a blank or NULL
 * name asks for the default printer ("device" in section "windows"). */
INT WINAPI Tavona_IsPrinterAvailable(const WCHAR *printer);
/* Empties both buffers, then copies the driver and the port of the
 * printer's entry. Nothing at all when a pointer is NULL or a size below 1. */
void WINAPI Tavona_GetPrinterByName(const WCHAR *printer, WCHAR *port, INT portSize,
                                    WCHAR *driver, INT driverSize);
/* Copies the printer's driver into buffer: 0, or -1 for a NULL name or no
 * entry. The second argument is not used. */
INT WINAPI Tavona_GetPrinterDriver(const WCHAR *printer, const WCHAR *unused, WCHAR *buffer,
                                   INT size);
/* The default printer's name, port and driver; each output with a buffer
 * and a positive size receives its value. Returns 1, or 0 (nothing
 * written) when there is no default printer. */
INT WINAPI Tavona_GetStandardPrinter(WCHAR *name, INT nameSize, WCHAR *port, INT portSize,
                                     WCHAR *driver, INT driverSize);
/* The printer's device mode (NULL printer: the default printer, message
 * 1327 and 0 when there is none). With a NULL buffer returns the size it
 * needs in bytes; 0 when bufferBytes is smaller; otherwise fills buffer and
 * returns the size. 0 and message 1357 when the spooler cannot tell. The
 * driver and port arguments are not used. */
INT WINAPI Tavona_GetPrinterDevmode(const WCHAR *printer, const WCHAR *driver, const WCHAR *port,
                                    DEVMODEW *buffer, INT bufferBytes);

/* ---- Paper bins ------------------------------------------------------- */

/* Flag of Tavona_InitPrinterBinsBox: a first entry "default bin" with item
 * data -1. */
#define TAVONA_BINS_DEFAULT 1
/* Fills a combo box with the printer's bins (item data: the DMBIN value),
 * unnamed bins as "Bin n"; selects the last entry whose item data is
 * select, else leaves the selection alone. */
void WINAPI Tavona_InitPrinterBinsBox(HWND box, const WCHAR *printer, const WCHAR *port,
                                      INT select, UINT flags);
/* The selected bin's identifier, or -2 when nothing is selected. */
INT WINAPI Tavona_PrinterBinsBoxGetCurrent(HWND box);
/* Fills a list view of two columns (name, identifier) with the bins. */
void WINAPI Tavona_InitPrinterBinsLv(HWND listView, const WCHAR *printer, const WCHAR *unused);
/* Shows the bins of every printer; returns 2. */
INT WINAPI Tavona_BinInfoDialog(HWND owner);

/* ---- Paper formats ----------------------------------------------------
 * Dimensions are thousandths of a millimetre at this interface; the box
 * keeps tenths (first in the high, second in the low 16 bits of the item
 * data). */

/* DMPAPER_A3, _A4 or _A5 for dimensions in tenths of a millimetre, in
 * either order; 0 for any other. */
INT WINAPI Tavona_GetPaperSizeType(INT first, INT second);
/* "DIN A3", "DIN A4", "DIN A5", or "" for other codes. */
void WINAPI Tavona_GetPaperSizeTypeName(INT code, WCHAR *buffer, INT size);
/* Adds the formats stored under root\key[\subkey] (one value per format:
 * name = "first,second") or, when that key does not exist, DIN A3, A4 and
 * A5. 1, or 0 when the key exists but cannot be opened. */
INT WINAPI Tavona_PresetPaperFormatsBox(HWND box, HKEY root, const WCHAR *key,
                                        const WCHAR *subkey);
/* The entry's dimensions (index -1: the selection); either pointer may be
 * NULL. Returns 1. */
INT WINAPI Tavona_GetPaperFormatsBoxEntry(HWND box, INT index, INT *first, INT *second);
/* Selects the first format within one millimetre of width x height in
 * either orientation, or nothing. Returns 1. */
INT WINAPI Tavona_SelectPaperFormatsBoxEntry(HWND box, INT width, INT height);
/* The whole sheet in device units: physical offsets and size. Returns the
 * bottom. */
INT WINAPI Tavona_GetPhysicalPrintablePage(HDC dc, RECT *rect);

/* ---- Print copy lists ---------------------------------------------------
 * A copy list is up to ten entries "name|count|"; the profile file
 * (default "TAVONA.INI", section "CopyList") keeps the standard list
 * ("Standard"), the names offered ("Names", "|"-separated) and whether
 * to show the list before printing ("ShowFlag"). */

/* "Original|1|", cut to size - 1 characters. */
void WINAPI Tavona_GetStandardCopyList(WCHAR *buffer, INT size);
/* The count of entry index (0 to 9; -1 for any other index), its name
 * into name when given. */
INT WINAPI Tavona_GetCopyListItem(const WCHAR *copyList, INT index, WCHAR *name, INT nameSize);
/* The sum of the counts. */
INT WINAPI Tavona_GetTotalCount(const WCHAR *copyList);
/* Edits the list in buffer in a dialog; 1 when confirmed (buffer holds all
 * ten entries, cut to size - 1 characters), 2 when cancelled. profile NULL
 * means "TAVONA.INI". */
INT WINAPI Tavona_EditCopyList(WCHAR *buffer, INT size, const WCHAR *profile);
/* Always 1. */
INT WINAPI Tavona_ShowCopyListBeforePrint(void);

TAVONA_END_DECLS

#endif
