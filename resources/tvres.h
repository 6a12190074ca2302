/* Identifiers of the resource library tavona32Res.dll, shared by the .rc
 * files and the library's sources. */
#ifndef TAVONA_TVRES_H
#define TAVONA_TVRES_H

/* Messages of the error reporter (text starts with its style prefix). */
#define IDS_ERR_OUT_OF_MEMORY 1300

/* Captions. */
#define IDS_CAPTION_ERROR 1500
#define IDS_CAPTION_ERROR_ALT 1521

#endif
