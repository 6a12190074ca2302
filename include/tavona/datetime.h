/* tavona32: dates and times. */
#ifndef TAVONA_DATETIME_H
#define TAVONA_DATETIME_H

#include "tvbase.h"

TAVONA_BEGIN_DECLS

/* A date and time, or (with signed differences in each field) an offset.
 * Day number 0 is 1 January 1600. Six 32-bit fields on every platform. */
typedef struct DateTimeStruct {
  INT day;    /* 1 to the month's length */
  INT month;  /* 1 to 12 */
  INT year;   /* 1600 to 9999 */
  INT hour;   /* 0 to 23 */
  INT minute; /* 0 to 59 */
  INT second; /* 0 to 59 */
} DateTimeStruct;

/* ---- Calendar ------------------------------------------------------------
 * Proleptic Gregorian calendar for the years 1600 to 9999. Functions taking
 * a record do nothing (or answer 0) when it is null. */

/* Fills the record; returns the second. */
INT WINAPI Tavona_SetDateTimeStruct(DateTimeStruct *r, INT year, INT month, INT day, INT hour,
                                    INT minute, INT second);
/* The local date and time of the C runtime's clock; 1 January 1900 00:00:00
 * when the clock cannot be converted. */
void WINAPI Get_CurrentDateAndTime(DateTimeStruct *r);
/* Day number of the record's date (1 January 1601 is 366); 0 for an invalid
 * date, the same as for 1 January 1600. The time fields are not looked at. */
INT WINAPI Get_DaysSinceBaseDate(const DateTimeStruct *r);
/* The date of a day number at 00:00:00; 0 and below give 1 January 1600.
 * Numbers past 31 December 9999 go on into the years beyond. */
void WINAPI Get_DateSinceBaseDate(INT days, DateTimeStruct *r);
/* 0 Sunday to 6 Saturday; an invalid date answers 6 (day number 0). */
INT WINAPI Get_Weekday(const DateTimeStruct *r);
/* 365 or 366. */
INT WINAPI Get_YearLng(INT year);
/* 28 to 31; a month outside 1 to 12 answers 30 rather than failing. */
INT WINAPI Get_MonthLng(INT year, INT month);
/* 36525 days for a year divisible by 400 (the century it starts), else
 * 36524. */
INT WINAPI Get_CenturyLng(INT year);
/* hour * 3600 + minute * 60 + second in unsigned 32-bit arithmetic. */
UINT WINAPI Get_SecondsSinceMidnight(const DateTimeStruct *r);
/* 1 when year (1600 to 9999), month and day are valid, else 0. */
INT WINAPI Is_Date_Correct(const DateTimeStruct *r);
/* 1 when hour, minute and second are valid, else 0. */
INT WINAPI Is_Time_Correct(const DateTimeStruct *r);

/* Flags of Tavona_VerifyDateTime. */
#define TAVONA_VERIFY_30DAY_MONTHS 1 /* every month has 30 days: 31 January fails, 30 February passes */
#define TAVONA_VERIFY_NO_TIME 2
#define TAVONA_VERIFY_NO_DATE 4
/* 1 when the parts that the flags leave in are valid, else 0. */
INT WINAPI Tavona_VerifyDateTime(const DateTimeStruct *r, UINT flags);
/* Tavona_VerifyDateTime with TAVONA_VERIFY_NO_TIME added to the flags. */
INT WINAPI Is_Date_Correct_Extended(const DateTimeStruct *r, UINT flags);
/* -1, 0 or 1 by year, month, day, hour, minute, second (signed fields, no
 * validation); 0 when either record is null. */
INT WINAPI CompareDateTimeStructs(const DateTimeStruct *a, const DateTimeStruct *b);
/* Adds an offset in place. Seconds, minutes and hours carry once only (the
 * offset is expected within -59..59 and -23..23). A day past the month's
 * end walks into the next months; a negative day borrows the length of the
 * month being left (not the one entered): 1 March - 3 days is 29 February
 * even in a common year, and a day of exactly 0 stays 0. The month moves
 * last without re-checking the day (31 January + 1 month = 31 February).
 * The offset's year is never used; years change only by carrying. */
void WINAPI Tavona_AddDateTimeOffset(DateTimeStruct *r, const DateTimeStruct *offset);
/* Negates all six fields; returns the new second. */
INT WINAPI Tavona_InvertDateTimeOffset(DateTimeStruct *offset);
/* result = now moved back by the offset (with the rules of adding). */
void WINAPI Tavona_GetTimeSince(const DateTimeStruct *offset, DateTimeStruct *result);
/* Easter Sunday of the Gregorian year at 00:00:00 (the year is not
 * range-checked); returns 0. */
INT WINAPI Tavona_ComputeEasterSunday(INT year, DateTimeStruct *r);

#ifdef _WIN32
/* Milliseconds from a to b by their time of day only, in 32-bit
 * arithmetic: an interval across midnight comes out negative. 0 for null. */
INT WINAPI Tavona_GetSystemTimeDelta(const SYSTEMTIME *a, const SYSTEMTIME *b);
/* File time of the record with a fixed difference of one hour (file time
 * = record - 1 hour), no daylight-saving rule and no time zone; the record
 * of file time 0 is 1 January 1601, 01:00:00. An invalid date counts as
 * 1 January 1600. */
void WINAPI DateTimeStruct_To_FileTime(const DateTimeStruct *r, FILETIME *ft);
void WINAPI FileTime_To_DateTimeStruct(const FILETIME *ft, DateTimeStruct *r);
#endif

/* Two-digit years: every parser below expands a year from 0 to 99 with the
 * limit "YearExpansionLimit" (HKEY_CURRENT_USER, "Software\Tavona
 * Software\Global Parameters", section "Year 2000", default 35) read at
 * each use: above the limit 19xx, otherwise 20xx. */

/* ---- Text formats --------------------------------------------------------
 * A format is literal text with three-character codes "%" letter digit:
 *   %D1 day, %D2 day with two digits, %D3 English ordinal ("1st", "2nd",
 *       "3rd", every other day "th": "21th", "22th"), %D0 and %D4-%D9 none
 *   %M1 %M2 month number, %M3 short month name, %M4 long month name
 *   %Y1 year modulo 100 in two digits, %Y2 the year
 *   %W1 short weekday name, %W2 long weekday name, %W0 none
 *   %H1 %H2 hour of 24, %h1 %h2 hour of 12 (0 as 12), %U minute, %S second
 *   %P1 " am"/" pm" (with the space), %P2 " AM"/" PM"
 * For numbers digit 2 pads to two digits, digit 0 hides the field. Other
 * letters produce nothing. A "%" with fewer than two characters after it
 * ends the format for the formatter and the parser alike.
 * Names come from string lists of the resource library (items separated by
 * "|", translated):
 *   1400  long weekday names, Sunday first   (%W2)
 *   1401  short weekday names, Sunday first  (%W1)
 *   1402  long month names, January first   (%M4)
 *   1403  short month names, January first  (%M3; also used to read month
 *         names, so a long name that starts with its short one reads too)
 * The choice lists of the format dialogs describe digit n in the same way.
 * A null or empty format is "%W0%D1.%M1.%Y2". */

/* Formats the record into out. Nothing at all is written (not even a zero)
 * for a null record or buffer or a size below 2. A code whose text does not
 * fit is left out whole; literal text fills up to the last character. The
 * record is not validated. */
void WINAPI DateTimeStruct_To_FormattedDateTime(const DateTimeStruct *r, WCHAR *out, INT size,
                                                const WCHAR *format);
/* The same; an empty format is the default date format in both. */
void WINAPI DateTimeStruct_To_FormattedDate(const DateTimeStruct *r, WCHAR *out, INT size,
                                            const WCHAR *format);
void WINAPI DateTimeStruct_To_FormattedTime(const DateTimeStruct *r, WCHAR *out, INT size,
                                            const WCHAR *format);

/* Reads a text by the format's codes in order: 0, or -1 when the text or
 * record is null or the result is not a valid date and time. The record
 * starts as 1 January 2000 00:00:00; fields without a code keep that. The
 * literal text of the format is not compared: each number is the next run
 * of digits (a minus sign is skipped like other characters, a comma after
 * it is stepped over); a month is a name of list 1403 before the next digit
 * (case-insensitive by the user-interface upper-casing) or else a number;
 * an am/pm code moves to the next A or P; weekday codes read nothing. On the
 * 12-hour clock "pm" adds 12 modulo 24 (12 pm reads as hour 0, 12 am as 12).
 * A text of more than 3 characters that holds only digits is read as a digit
 * string (below). Numbers that do not fit 32 bits read as 2147483647. */
INT WINAPI FormattedDateTime_To_DateTimeStruct(const WCHAR *text, DateTimeStruct *r,
                                               const WCHAR *format);
INT WINAPI FormattedDate_To_DateTimeStruct(const WCHAR *text, DateTimeStruct *r,
                                           const WCHAR *format);
/* The same with "%H1:%U2:%S2" for a null or empty format. */
INT WINAPI FormattedTime_To_DateTimeStruct(const WCHAR *text, DateTimeStruct *r,
                                           const WCHAR *format);
/* DDMM[YY...]: day from characters 1-2, month from 3-4 whatever the format
 * says, year from the digits from character 5 on (two-digit rule), 1900
 * when there are fewer than 6 characters; the time is 00:00:00. Fewer than
 * 4 characters, a null text or record, or an invalid date give -1. */
INT WINAPI DigitString_To_DateTimeStruct(const WCHAR *text, DateTimeStruct *r,
                                         const WCHAR *format);
/* "#MM/DD/YYYY#", cut to the size like every printf-style output. */
void WINAPI DateTimeStruct_To_OdbcDateConstant(const DateTimeStruct *r, WCHAR *out, INT size);
/* "YYYY-MM-DD hh:mm:ss", cut to the size. */
void WINAPI DateTimeStruct_To_OdbcTimeStamp(const DateTimeStruct *r, WCHAR *out, INT size);
/* Reads "YYYY-MM-DD hh:mm:ss" with the parser above: 0 or -1. */
INT WINAPI OdbcTimeStamp_To_DateTimeStruct(const WCHAR *text, DateTimeStruct *r);

/* "<leading> <amounts>" for a count of seconds (negative counts as 0), with
 * the amount texts of the resource library (hours, minutes, seconds, each in
 * a singular and a plural form) joined by its separator. Large amounts drop
 * their small units: minutes only below 5 hours, seconds only without hours
 * and below 5 minutes. A count of 0 gives the leading text and its space
 * only. Built with the non-shortening copy and append, so a text that does
 * not fit empties the output; an output that ends up empty becomes
 * "0 seconds" (in the resource library's words), cut to the size. */
void WINAPI Tavona_CreateEstimatedTimeDisplay(INT seconds, const WCHAR *leading, WCHAR *out,
                                              INT size);

/* ---- Format dialogs ------------------------------------------------------
 * The format is shown taken apart (leading text, weekday, the three date
 * fields in their order with the text after the first two, the text
 * between date and time, hour, minute, second and am/pm) with a sample of
 * 3 January 1955 15:55:26. kind 1 edits a date, 2 a time, any other value
 * both; the fields the kind does not use are disabled. Returns 1 when the
 * user confirmed (format then holds the rebuilt format; a format that
 * does not fit empties it), 2 when cancelled or for a null format or a
 * size below 10 (format untouched). */
INT WINAPI Tavona_EditDateTimeFormat(HWND owner, WCHAR *format, INT size, INT kind);
/* Kind 1 and 2 over the active window. */
INT WINAPI Tavona_EditDateFormat(WCHAR *format, INT size);
INT WINAPI Tavona_EditTimeFormat(WCHAR *format, INT size);
/* The dialog's procedure. Its parameter is the library's own record, so the
 * dialog is opened through the functions above. */
INT_PTR CALLBACK DateTimeFormat_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                                LPARAM lParam);

TAVONA_END_DECLS

#endif
