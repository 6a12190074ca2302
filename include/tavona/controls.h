/* tavona32: list box, combo box and list view helpers. */
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

TAVONA_END_DECLS

#endif
