// A date or time format taken apart into the fields the format dialogs
// edit, and built back. Portable: the dialogs in controls/ and the host
// tests share it.
#pragma once

#include <tavona/tvbase.h>

namespace tv::dtf {

constexpr int kTextSize = 100;  // each text part holds at most 99 characters

// What a format covers: the dialog's kind as the caller passes it.
constexpr int kDateOnly = 1;
constexpr int kTimeOnly = 2;

// Date orders.
constexpr int kDayMonthYear = 1;
constexpr int kYearMonthDay = 2;
constexpr int kMonthDayYear = 3;

// The three date fields, by their code letter.
enum DateField { kDay = 0, kMonth = 1, kYear = 2 };

struct FormatParts {
  int kind = 0;
  int order = kDayMonthYear;
  int clock = 24;
  int weekday = 0;
  int date[3] = {};  // digits of day, month, year (by DateField)
  int hour = 0, minute = 0, second = 0, ampm = 0;
  WCHAR leading[kTextSize] = {};
  WCHAR afterWeekday[kTextSize] = {};
  WCHAR afterDate[3][kTextSize] = {};  // by DateField
  WCHAR between[kTextSize] = {};
  WCHAR afterHour[kTextSize] = {};
  WCHAR afterMinute[kTextSize] = {};
  WCHAR afterSecond[kTextSize] = {};
};

// The fields in the order that order puts them (an unknown order counts as
// day-month-year).
void FieldsInOrder(int order, DateField (&fields)[3]);

// Writes the format of parts into out[size]; nothing at all for a null out
// or a size below 10. Every piece is a bounded append: a piece that does
// not fit empties the text.
void BuildFormat(const FormatParts &parts, WCHAR *out, int size);

// Takes format (null: "") apart for kind. A date-only format is all date
// part, a time-only format all time part; otherwise the time part begins
// at the first hour, minute, second or am/pm code. The text after the last
// code of the date part is the text between date and time, since the date
// fields have no text control of their own after the third field.
void SplitFormat(const WCHAR *format, int kind, FormatParts &parts);

// The order that the positions of "%D", "%M" and "%Y" in format give.
int DateOrderOf(const WCHAR *format);

// Puts the date fields in a new order. The digits go with their fields,
// the separators stay where they stand (the text after the first field is
// still the text after the first field).
void Reorder(FormatParts &parts, int order);

}  // namespace tv::dtf
