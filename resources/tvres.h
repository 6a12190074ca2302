/* Identifiers of the resource library tavona32Res.dll, shared by the .rc
 * files and the library's sources. */
#ifndef TAVONA_TVRES_H
#define TAVONA_TVRES_H

/* Messages of the general error handler (kinds 4, 3, 5, 2, 6). */
#define IDS_ERR_GENERAL_1 501
#define IDS_ERR_GENERAL_2 502
#define IDS_ERR_GENERAL_3 503
#define IDS_ERR_GENERAL_4 504
#define IDS_ERR_GENERAL_5 505

/* Messages of the error reporter (text starts with its style prefix). */
#define IDS_ERR_OUT_OF_MEMORY 1300
#define IDS_ERR_COPY_NAME_EXISTS 1325
#define IDS_ERR_COPY_COUNT_ZERO 1326
#define IDS_ERR_NO_DEFAULT_PRINTER 1327
#define IDS_ERR_DEST_IS_FOLDER 1328
#define IDS_ERR_PATH_NOT_FOLDER 1329
#define IDS_ERR_CREATE_FOLDER 1330
#define IDS_ERR_LIST_SAVE 1339
#define IDS_ERR_HELP_MISSING 1340
#define IDS_ERR_FILE_OPEN 1341
#define IDS_ERR_LIBRARY_LOAD 1342
#define IDS_ERR_LIBRARY_ENTRY 1343
#define IDS_ERR_WIZARD_PAGE 1351
#define IDS_ERR_FILE_COPY 1352
#define IDS_ASK_FILE_IN_USE 1354
#define IDS_ERR_LTS_LOG 1356
#define IDS_ERR_PRINTER_DEVMODE 1357
#define IDS_ASK_CANCEL_OPERATION 1380
#define IDS_ASK_DELETE_FILE 1381
#define IDS_INFO_LTS_CLOSED 1382
#define IDS_ERR_LIST_FULL 1383
#define IDS_ERR_PICTURE_LIBRARY 1384
#define IDS_ERR_PICTURE_INFO 1385
#define IDS_ERR_ITEM_NAME_EMPTY 1386
#define IDS_ERR_FILE_SAVE 1390
#define IDS_INFO_HELP_TEST 1599

/* Captions. */
#define IDS_CAPTION_ERROR 1500
#define IDS_CAPTION_ERROR_ALT 1521

/* Dates and times: name lists, estimated time texts. */
#define IDS_LIST_WEEKDAYS_LONG 1400  /* "Sunday|Monday|..." (%W2) */
#define IDS_LIST_WEEKDAYS_SHORT 1401 /* "Sun|Mon|..." (%W1) */
#define IDS_LIST_MONTHS_LONG 1402    /* "January|..." (%M4) */
#define IDS_LIST_MONTHS_SHORT 1403   /* "Jan|..." (%M3, and read by the parser) */
#define IDS_TIME_HOURS 3611   /* "%d hours" */
#define IDS_TIME_HOUR 3612    /* "%d hour" */
#define IDS_TIME_MINUTES 3613
#define IDS_TIME_MINUTE 3614
#define IDS_TIME_SECONDS 3615
#define IDS_TIME_SECOND 3616
#define IDS_TIME_SEPARATOR 3617 /* joins two amounts; a space follows */

/* Integer and float formats: dialogs and their controls. */
#define IDD_INT_FORMAT 1300
#define IDD_FLOAT_FORMAT 1500
#define IDC_FMT_THOUSANDS 1301
#define IDC_FMT_FRACTION 1302
#define IDC_FMT_ZERO 1303
#define IDC_FMT_PLUS 1307
#define IDC_FMT_NO_MINUS 1308
#define IDC_FMT_BEFORE 1309
#define IDC_FMT_AFTER 1311
#define IDC_FMT_WIDTH 1318
#define IDC_FMT_DECIMAL 1504
#define IDC_FMT_PREVIEW_POSITIVE 1028
#define IDC_FMT_PREVIEW_NEGATIVE 1030
#define IDC_FMT_PREVIEW_ZERO 1031

/* Descriptors, scrambling, hashing: dialogs and their controls. */
#define IDD_CRYPT_TEST 600
#define IDC_CRYPT_TEXT 137
#define IDC_CRYPT_KEY 143
#define IDC_CRYPT_SCRAMBLED_HEX 607
#define IDC_CRYPT_SCRAMBLED 611
#define IDC_CRYPT_RESTORED_HEX 612
#define IDC_CRYPT_RESTORED 616
#define IDC_CRYPT_PLAIN 617
#define IDC_CRYPT_PLAIN_HEX 618

/* Files. */

/* Box helpers, progress indicator, small windows. */
#define IDS_LANGUAGE_LIST 1512     /* "number|name|number|name..." */
#define IDS_ESTIMATED_TIME 3618    /* leading text of the remaining time */
#define IDD_PROGRESS 2500
#define IDD_PROGRESS_LARGE 2511
#define IDC_PROGRESS_BAR 610
#define IDC_PROGRESS_TEXT 1007
#define IDC_PROGRESS_TIME 1008

/* Date and time format dialogs. */
#define IDD_DATETIME_FORMAT 1100
#define IDC_DTF_BETWEEN 1083
#define IDC_DTF_AFTER_WEEKDAY 1091
#define IDC_DTF_AFTER_DATE_1 1092 /* text after the first date field */
#define IDC_DTF_AFTER_DATE_2 1093
#define IDC_DTF_AFTER_HOUR 1094
#define IDC_DTF_AFTER_MINUTE 1095
#define IDC_DTF_LEADING 1096
#define IDC_DTF_SAMPLE 1101
#define IDC_DTF_ORDER_DMY 1104
#define IDC_DTF_ORDER_YMD 1105
#define IDC_DTF_ORDER_MDY 1106
#define IDC_DTF_WEEKDAY 1110
#define IDC_DTF_HOUR 1111
#define IDC_DTF_MINUTE 1112
#define IDC_DTF_SECOND 1113
#define IDC_DTF_AMPM 1114
#define IDC_DTF_DATE_1 1115 /* the date fields by position */
#define IDC_DTF_DATE_2 1116
#define IDC_DTF_DATE_3 1117
#define IDC_DTF_CLOCK_12 1206
#define IDC_DTF_CLOCK_24 1207
#define IDC_DTF_AFTER_SECOND 1210
/* Choice lists: entry n describes digit n of the code. */
#define IDS_DTF_WEEKDAY_CHOICES 1404
#define IDS_DTF_DAY_CHOICES 1405
#define IDS_DTF_MONTH_CHOICES 1406
#define IDS_DTF_YEAR_CHOICES 1407
#define IDS_DTF_HOUR_CHOICES 1408
#define IDS_DTF_MINUTE_CHOICES 1409
#define IDS_DTF_SECOND_CHOICES 1410
#define IDS_DTF_AMPM_CHOICES 1411

/* Printing: bins, copy lists. */
#define IDD_COPY_LIST 200
#define IDD_COPY_STANDARD 300
#define IDD_COPY_NAMES 400
#define IDD_COPY_ADD_NAME 500
#define IDC_COPY_NAME 201   /* 201-210: name boxes of entries 0-9 */
#define IDC_COPY_COUNT 211  /* 211-220: counts */
#define IDC_COPY_SCROLL 221 /* 221-230: arrows beside the counts */
#define IDC_COPY_EDIT_STANDARD 231
#define IDC_COPY_SHOW 232
#define IDC_COPY_LOAD_STANDARD 1219
#define IDC_COPY_EDIT_NAMES 1221
#define IDC_COPY_NAMES_LIST 401
#define IDC_COPY_NAMES_DELETE 403
#define IDC_COPY_NAMES_ADD 404
#define IDC_COPY_NEW_NAME 501
#define IDD_BIN_INFO 2901
#define IDC_BININFO_LIST 1107
#define IDC_BININFO_PRINTERS 1108
#define IDS_BIN_UNNAMED 1435 /* "Bin %d" */
#define IDS_BIN_DEFAULT 1436
#define IDS_BIN_COLUMNS 3620 /* list view columns "title|width|align" by tabs */

#endif
