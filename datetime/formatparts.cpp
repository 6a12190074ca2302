// Taking a date-time format apart for the format dialogs and building it
// back.
#include "datetime/formatparts.h"

#include "base/wstr.h"

namespace tv::dtf {

namespace {

// Copies the first count characters of src, at most 99 of them.
void CopyText(WCHAR (&dst)[kTextSize], const WCHAR *src, int count) {
  if (count > kTextSize - 1) count = kTextSize - 1;
  CopyRaw(dst, src, count);
  dst[count] = 0;
}

int Find(const WCHAR *s, WCHAR letter) {
  for (int i = 0; s[i]; ++i)
    if (s[i] == '%' && s[i + 1] == letter) return i;
  return -1;
}

bool IsTimeLetter(WCHAR c) { return c == 'H' || c == 'h' || c == 'U' || c == 'S' || c == 'P'; }

// End of the text that follows a code at p (up to the next '%' or end).
int TextEnd(const WCHAR *s, int from, int end) {
  while (from < end && s[from] != '%') ++from;
  return from;
}

// Where the time part of a date-and-time format begins: its first time
// code, walking code by code as the formatter does.
int TimeStart(const WCHAR *s, int len) {
  int i = 0;
  while (i < len) {
    if (s[i] != '%') {
      ++i;
      continue;
    }
    if (len - i < 3) break;
    if (IsTimeLetter(s[i + 1])) return i;
    i += 3;
  }
  return len;
}

void SplitTime(const WCHAR *s, int len, FormatParts &p) {
  p.clock = 24;
  p.hour = p.minute = p.second = p.ampm = 0;
  p.afterHour[0] = p.afterMinute[0] = p.afterSecond[0] = 0;
  int i = TextEnd(s, 0, len);
  CopyText(p.between, s, i);
  while (i < len) {
    // A code needs its letter and its digit.
    if (len - i < 3) break;
    WCHAR letter = s[i + 1];
    int digit = static_cast<int>(s[i + 2]) - '0';
    int textEnd = TextEnd(s, i + 3, len);
    const WCHAR *text = s + i + 3;
    int textLen = textEnd - (i + 3);
    switch (letter) {
      case 'H':
      case 'h':
        p.hour = digit;
        p.clock = letter == 'h' ? 12 : 24;
        CopyText(p.afterHour, text, textLen);
        break;
      case 'U':
        p.minute = digit;
        CopyText(p.afterMinute, text, textLen);
        break;
      case 'S':
        p.second = digit;
        CopyText(p.afterSecond, text, textLen);
        break;
      case 'P':
        p.ampm = digit;  // the marker has no text after it
        break;
    }
    i = textEnd;
  }
}

void SplitDate(const WCHAR *s, int len, FormatParts &p) {
  int i = TextEnd(s, 0, len);
  CopyText(p.leading, s, i);
  WCHAR *last = nullptr;  // the text after the last code taken
  while (i < len) {
    if (len - i < 3) break;
    WCHAR letter = s[i + 1];
    int digit = static_cast<int>(s[i + 2]) - '0';
    int textEnd = TextEnd(s, i + 3, len);
    const WCHAR *text = s + i + 3;
    int textLen = textEnd - (i + 3);
    WCHAR(*target)[kTextSize] = nullptr;
    switch (letter) {
      case 'W':
        p.weekday = digit;
        target = &p.afterWeekday;
        break;
      case 'D':
      case 'M':
      case 'Y': {
        DateField f = letter == 'D' ? kDay : letter == 'M' ? kMonth : kYear;
        p.date[f] = digit;
        target = &p.afterDate[f];
        break;
      }
    }
    if (target) {
      CopyText(*target, text, textLen);
      last = *target;
    }
    i = textEnd;
  }
  if (last) {
    CopyText(p.between, last, Len(last));
    last[0] = 0;
  }
}

void AppendCode(Appender &out, WCHAR letter, int digit, const WCHAR *text) {
  WCHAR piece[kTextSize + 20];
  Format(piece, kTextSize + 20, TEXT("%%%c%01d%s"), letter, digit, text);
  out.Append(piece);
}

}  // namespace

void FieldsInOrder(int order, DateField (&fields)[3]) {
  static const DateField kOrders[3][3] = {
      {kDay, kMonth, kYear}, {kYear, kMonth, kDay}, {kMonth, kDay, kYear}};
  int row = order == kYearMonthDay ? 1 : order == kMonthDayYear ? 2 : 0;
  for (int i = 0; i < 3; ++i) fields[i] = kOrders[row][i];
}

int DateOrderOf(const WCHAR *format) {
  if (!format) return kDayMonthYear;
  int d = Find(format, 'D'), m = Find(format, 'M'), y = Find(format, 'Y');
  if (d < 0 || m < 0 || y < 0) return kDayMonthYear;
  if (y < m && m < d) return kYearMonthDay;
  if (m < d && d < y) return kMonthDayYear;
  return kDayMonthYear;
}

void BuildFormat(const FormatParts &p, WCHAR *out, int size) {
  if (!out || size < 10) return;
  out[0] = 0;
  Appender a(out, size);
  a.Append(p.leading);
  if (p.weekday != 0 || p.afterWeekday[0]) AppendCode(a, 'W', p.weekday, p.afterWeekday);
  bool anyDate = false;
  for (int f = 0; f < 3; ++f) anyDate = anyDate || p.date[f] != 0 || p.afterDate[f][0];
  if (anyDate) {
    static const WCHAR kLetters[3] = {'D', 'M', 'Y'};
    DateField fields[3];
    FieldsInOrder(p.order, fields);
    for (DateField f : fields) AppendCode(a, kLetters[f], p.date[f], p.afterDate[f]);
  }
  a.Append(p.between);
  if (p.hour != 0 || p.afterHour[0]) AppendCode(a, p.clock == 12 ? 'h' : 'H', p.hour, p.afterHour);
  if (p.minute != 0 || p.afterMinute[0]) AppendCode(a, 'U', p.minute, p.afterMinute);
  if (p.second != 0 || p.afterSecond[0]) AppendCode(a, 'S', p.second, p.afterSecond);
  if (p.ampm != 0) AppendCode(a, 'P', p.ampm, TEXT(""));
}

void SplitFormat(const WCHAR *format, int kind, FormatParts &parts) {
  parts = FormatParts{};
  parts.kind = kind;
  if (!format) format = TEXT("");
  int len = Len(format);
  parts.order = DateOrderOf(format);
  int timeStart = kind == kDateOnly ? len : kind == kTimeOnly ? 0 : TimeStart(format, len);
  SplitTime(format + timeStart, len - timeStart, parts);
  SplitDate(format, timeStart, parts);
}

void Reorder(FormatParts &parts, int order) {
  DateField before[3], after[3];
  FieldsInOrder(parts.order, before);
  FieldsInOrder(order, after);
  WCHAR texts[3][kTextSize];
  for (int i = 0; i < 3; ++i) CopyText(texts[i], parts.afterDate[before[i]], Len(parts.afterDate[before[i]]));
  for (int i = 0; i < 3; ++i) CopyText(parts.afterDate[after[i]], texts[i], Len(texts[i]));
  parts.order = order;
}

}  // namespace tv::dtf
