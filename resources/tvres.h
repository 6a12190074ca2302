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
/* Directory copy, statistics and delete. */
#define IDS_ASK_DELETE_IN_USE 1391 /* "%s" cannot be deleted: retry, ignore, abort */
#define IDS_COPY_PROGRESS 1460     /* first line of the copy's progress indicator */
#define IDD_COPY_STATISTIC 110
#define IDC_STAT_FILES_COPIED 1008
#define IDC_STAT_DIRS_CREATED 1009
#define IDC_STAT_KILOBYTES 1010
#define IDC_STAT_DIRS_EXISTING 1011
#define IDC_STAT_SKIPPED_EXISTING 1012
#define IDC_STAT_SKIPPED_NOT_OLDER 1013
#define IDC_STAT_FILES_FOUND 1014
#define IDC_STAT_NOT_INCLUDED 1015
#define IDC_STAT_EXCLUDED 1016
#define IDC_STAT_DIRS_PROCESSED 1017
#define IDC_STAT_BEFORE_DATE 1018
#define IDC_STAT_FROM_DATE 1019

/* Box helpers, progress indicator, small windows. */
#define IDS_LANGUAGE_LIST 1512     /* "number|name|number|name..." */
#define IDS_ESTIMATED_TIME 3618    /* leading text of the remaining time */
#define IDD_PROGRESS 2500
#define IDD_PROGRESS_LARGE 2511
#define IDC_PROGRESS_BAR 610
#define IDC_PROGRESS_TEXT 1007
#define IDC_PROGRESS_TIME 1008

/* Translation: assistance dialogs, the log file chooser, the gettext
 * bridge's messages and the reasons they name. */
#define IDD_LTS_SETTINGS 116
#define IDD_LTS_TEXT 117
#define IDC_LTS_SHOW_DIALOGS 1000
#define IDC_LTS_CONFIRM 1001
#define IDC_LTS_WRITE_LOG 1003
#define IDC_LTS_LOGFILE 1016
#define IDC_LTS_BROWSE 1017
#define IDC_LTS_MODULE 1019
#define IDC_LTS_SECTION 1020
#define IDC_LTS_KEY 143
#define IDC_LTS_SOURCE 137
#define IDC_LTS_TRANSLATED 1023
#define IDC_LTS_STOP 1025
#define IDS_LTS_LOG_FILTER 1510 /* "description|pattern|..." */
#define IDS_LTS_LOG_TITLE 1511
#define IDS_ERR_LTS_CATALOG 1370  /* file, line, reason */
#define IDS_ERR_LTS_LOG_READ 1371 /* file, line, reason */
#define IDS_LTS_REASON_BASE 3700  /* + the reader's problem number, 1 to 14 */
/* File dialogs, statement dump, mail and editors. */
#define IDS_TITLE_DELETE_FILES 1503
#define IDS_CAPTION_MAPI_ERROR 1518
#define IDS_FILTER_VIEWER 1519
#define IDS_TITLE_VIEWER 1520
#define IDS_PICTURE_BMP 1809
#define IDS_PICTURE_WMF 1810
#define IDS_PICTURE_EMF 1811
#define IDS_PICTURE_PNG 1812
#define IDS_PICTURE_OTHER 1813
#define IDS_MAPI_ERR_1 1850 /* MAPI codes 1-6, then 8-15 at 1856-1863 */
#define IDS_MAPI_ERR_16 2964
#define IDS_MAPI_ERR_17 1865 /* codes 17-26 at 1865-1874 */
#define IDD_SQL_DUMP_CONFIG 119
#define IDD_SQL_DUMP 129
#define IDC_DUMP_ALL 1001
#define IDC_DUMP_BEFORE 1002
#define IDC_DUMP_SELECT 1003
#define IDC_DUMP_CREATE 1004
#define IDC_DUMP_DROP 1005
#define IDC_DUMP_ALTER 1006
#define IDC_DUMP_UPDATE 1007
#define IDC_DUMP_INSERT 1008
#define IDC_DUMP_DELETE 1009
#define IDC_DUMP_SUCC_INFO 1010
#define IDC_DUMP_MAPI_NATIVE 1011
#define IDC_DUMP_DEBUG_OUTPUT 1012
#define IDC_DUMP_LOG 1013
#define IDC_DUMP_LOG_FILE 1016
#define IDC_DUMP_VIEWER 1017
#define IDC_DUMP_STATEMENT 1079
#define IDC_DUMP_KINDS 1080 /* the group of statement kinds */
#define IDC_DUMP_DELETE_LOG 1082
#define IDC_DUMP_BROWSE_VIEWER 1083
#define IDC_DUMP_SHOW_LOG 1084
#define IDC_DUMP_CONFIGURE 3
/* Registry section editor, list views, recent file lists. */
#define IDD_REGEDIT 120
#define IDM_REGEDIT_CONTEXT 121
#define IDD_REGEDIT_ADD 2501
#define IDC_REGEDIT_LIST 1037
#define IDC_REGEDIT_ADD 1032
#define IDC_REGEDIT_DELETE 1033
#define IDC_REGEDIT_DEFAULTS 1034
#define IDM_REGEDIT_ADD 40001
#define IDM_REGEDIT_DELETE 40005
#define IDC_REGEDIT_NAME_LABEL 402
#define IDC_REGEDIT_DATA_LABEL 403
#define IDC_REGEDIT_NAME 1038
#define IDC_REGEDIT_DATA 502
/* Button bar: context menus (over a button / an empty place), their
 * commands, the property dialogs, the drag cursors (by name:
 * "PICKCURSORDROPABLE", "PICKCURSORUNDROPABLE"). */
#define IDM_BAR_BUTTON 122
#define IDM_BAR_EMPTY 123
#define IDM_BAR_PROPERTIES 40002
#define IDM_BAR_BUTTON_PROPERTIES 40003
#define IDM_BAR_DELETE 40004
#define IDM_BAR_NEW_BUTTON 40005
#define IDM_BAR_NEW_SPACE 40006
#define IDM_BAR_EDGES 40007
#define IDM_BAR_SWITCH 40008
#define IDM_BAR_WRAP 40009
#define IDD_BAR_PROPERTIES 124
#define IDD_BUTTON_PROPERTIES 125
#define IDC_BAR_MARGIN 1201
#define IDC_BAR_GAP 1202
#define IDC_BAR_GROUP_GAP 1203
#define IDC_BAR_EDGE_WIDTH 1204
#define IDC_BAR_FRAME_WIDTH 1205
#define IDC_BAR_ALL_EDGES 1206
#define IDC_BAR_SEPARATORS 1207
#define IDC_BAR_WRAP 1208
#define IDC_BAR_VERTICAL 1209
#define IDC_BAR_MENU 1210
#define IDC_BUTTON_CAPTION 1221
#define IDC_BUTTON_POPUP 1222
#define IDC_BUTTON_ID 1223
#define IDC_BUTTON_NEW_ROW 1224
#define IDC_BUTTON_GROUP 1225
#define IDC_BUTTON_LATCHED 1226
#define IDC_BUTTON_HIDDEN 1227

/* Wizard: the frame (Finish is IDOK, Cancel IDCANCEL) and the picture
 * shown when an application names no bitmap of its own. */
#define IDD_WIZARD 106
#define IDC_WIZARD_NEXT 3
#define IDC_WIZARD_BACK 4
#define IDC_WIZARD_LINE 1003
#define IDB_WIZARD_DEFAULT 106
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
