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

/* "<leading> <amounts>" for a count of seconds (negative counts as 0), with
 * the amount texts of the resource library (hours, minutes, seconds, each in
 * a singular and a plural form) joined by its separator. Large amounts drop
 * their small units: minutes only below 5 hours, seconds only without hours
 * and below 5 minutes. Nothing at all to say gives "0 seconds" (in the
 * resource library's words) without the leading text. Built with the
 * non-shortening copy and append: a text that does not fit leaves out
 * empty. */
void WINAPI Tavona_CreateEstimatedTimeDisplay(INT seconds, const WCHAR *leading, WCHAR *out,
                                              INT size);

TAVONA_END_DECLS

#endif
