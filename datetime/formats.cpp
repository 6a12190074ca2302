// Date and time text formats: the formatter and parser of the "%" letter
// digit codes, digit strings and the fixed ODBC forms.
#include <tavona/datetime.h>

#include "datetime/calendar.h"
#include "frame/globals.h"
#include "frame/platform.h"
#include "base/wstr.h"
#include "frame/lts.h"
#include "tvres.h"

namespace {

constexpr const WCHAR *kDefaultDateFormat = TEXT("%W0%D1.%M1.%Y2");
constexpr const WCHAR *kDefaultTimeFormat = TEXT("%H1:%U2:%S2");
constexpr const WCHAR *kOdbcTimeStampFormat = TEXT("%Y2-%M2-%D2 %H2:%U2:%S2");
constexpr int kCodeSize = 100;    // scratch of one code's text
constexpr int kListSize = 1024;   // one string list
constexpr int kMonthWindow = 100; // text looked at for a month name

const WCHAR *OrDefault(const WCHAR *format, const WCHAR *fallback) {
  return format && format[0] ? format : fallback;
}

// Item n of a "|"-separated string list of the resource library, cut to
// size - 1; empty when the list has fewer items.
void ListItem(UINT list, int n, WCHAR *out, int size) {
  out[0] = 0;
  if (n < 0) return;
  WCHAR text[kListSize];
  tv::LoadTranslatedString(tv::g.resources, list, text, kListSize);
  const WCHAR *p = text;
  for (; n > 0 && *p; ++p)
    if (*p == '|') --n;
  if (n > 0) return;
  int len = 0;
  while (p[len] && p[len] != '|' && len < size - 1) {
    out[len] = p[len];
    ++len;
  }
  out[len] = 0;
}

// "%d" or, with pad, "%02d": the hot path of every numeric code.
int IntText(WCHAR *out, int value, bool pad) {
  WCHAR digits[12];
  int n = 0;
  int64_t v = value < 0 ? -int64_t{value} : value;
  do {
    digits[n++] = static_cast<WCHAR>('0' + v % 10);
    v /= 10;
  } while (v);
  int len = 0;
  if (value < 0) out[len++] = '-';
  if (pad && n + len < 2) out[len++] = '0';
  while (n) out[len++] = digits[--n];
  out[len] = 0;
  return len;
}

void Number(WCHAR *out, WCHAR digit, int value) {
  if (digit == '0')
    out[0] = 0;
  else
    IntText(out, value, digit == '2');
}

// The text of one code into out (kCodeSize characters).
void CodeText(const DateTimeStruct &r, int weekday, WCHAR letter, WCHAR digit, WCHAR *out) {
  out[0] = 0;
  switch (letter) {
    case 'D':
      if (digit == '3') {
        const WCHAR *suffix = r.day == 1   ? TEXT("%dst")
                              : r.day == 2 ? TEXT("%dnd")
                              : r.day == 3 ? TEXT("%drd")
                                           : TEXT("%dth");
        tv::Format(out, kCodeSize, suffix, r.day);
      } else if (digit < '4' || digit > '9') {
        Number(out, digit, r.day);
      }
      break;
    case 'M':
      if (digit == '3' || digit == '4')
        ListItem(digit == '3' ? IDS_LIST_MONTHS_SHORT : IDS_LIST_MONTHS_LONG, r.month - 1, out,
                 kCodeSize);
      else
        Number(out, digit, r.month);
      break;
    case 'Y':
      if (digit == '1')
        IntText(out, r.year % 100, true);
      else
        Number(out, digit, r.year);
      break;
    case 'W':
      if (digit == '1' || digit == '2')
        ListItem(digit == '1' ? IDS_LIST_WEEKDAYS_SHORT : IDS_LIST_WEEKDAYS_LONG, weekday, out,
                 kCodeSize);
      break;
    case 'H':
      Number(out, digit, r.hour % 24);
      break;
    case 'h': {
      int h = r.hour % 12;
      Number(out, digit, h == 0 ? 12 : h);
      break;
    }
    case 'U':
      Number(out, digit, r.minute % 60);
      break;
    case 'S':
      Number(out, digit, r.second % 60);
      break;
    case 'P':
      if (digit != '0') {
        bool am = r.hour % 24 < 12;
        if (digit == '2')
          tv::BoundedCopy(out, am ? TEXT(" AM") : TEXT(" PM"), kCodeSize);
        else
          tv::BoundedCopy(out, am ? TEXT(" am") : TEXT(" pm"), kCodeSize);
      }
      break;
    default:
      break;
  }
}

// The parser's cursor in the text; never moves past its terminator.
class Reader {
 public:
  explicit Reader(const WCHAR *text) : p_(text) {}

  // The next run of digits (0 when there is none); a comma right after it
  // is stepped over. Saturates instead of wrapping, so that a long run can
  // never come out as a plausible value.
  int Number() {
    while (*p_ && !tv::IsDigit(*p_)) ++p_;
    int64_t v = 0;
    for (; tv::IsDigit(*p_); ++p_) {
      v = v * 10 + (*p_ - '0');
      if (v > INT32_MAX) v = INT32_MAX;
    }
    if (*p_ == ',') ++p_;
    return static_cast<int>(v);
  }

  // A month name of the short list before the next digit, or the number.
  int Month() {
    WCHAR window[kMonthWindow];
    int len = tv::LenBounded(p_, kMonthWindow - 1);
    tv::CopyRaw(window, p_, len);
    window[len] = 0;
    tv::plat::UpperUser(window);
    int firstDigit = 0;
    while (firstDigit < len && !tv::IsDigit(window[firstDigit])) ++firstDigit;

    WCHAR list[kListSize];
    tv::LoadTranslatedString(tv::g.resources, IDS_LIST_MONTHS_SHORT, list, kListSize);
    tv::plat::UpperUser(list);
    const WCHAR *cursor = list;
    WCHAR item[kListSize];
    for (int month = 1; month <= 12 && tv::ReadField(cursor, '|', item, kListSize); ++month) {
      int itemLen = tv::Len(item);
      if (itemLen == 0) continue;
      tv::Finder finder;
      if (!finder.Init(item, itemLen)) continue;
      int at = finder.Find(window, len, 0);
      if (at >= 0 && at < firstDigit) {
        p_ += at + itemLen;
        return month;
      }
    }
    p_ += firstDigit;
    return Number();
  }

  // Moves to the next A or P (or the end); true for P.
  bool Meridiem() {
    while (*p_ && *p_ != 'a' && *p_ != 'A' && *p_ != 'p' && *p_ != 'P') ++p_;
    return *p_ == 'p' || *p_ == 'P';
  }

 private:
  const WCHAR *p_;
};

bool FieldsValid(const DateTimeStruct &r) {
  return Is_Date_Correct(&r) && Is_Time_Correct(&r);
}

void ResetRecord(DateTimeStruct &r) { r = {1, 1, 2000, 0, 0, 0}; }

bool AllDigits(const WCHAR *text) {
  for (; *text; ++text)
    if (!tv::IsDigit(*text)) return false;
  return true;
}

// The leading digits of at most count characters.
int LeadingNumber(const WCHAR *text, int count) {
  int v = 0;
  for (int i = 0; i < count && tv::IsDigit(text[i]); ++i) v = v * 10 + (text[i] - '0');
  return v;
}

INT ReadDigitString(const WCHAR *text, DateTimeStruct &r) {
  int len = tv::LenBounded(text, 6);
  if (len < 4) return -1;
  r.day = LeadingNumber(text, 2);
  r.month = LeadingNumber(text + 2, 2);
  if (len < 6) {
    r.year = 1900;
  } else {
    Reader year(text + 4);
    // Only the digits from the fifth character on: no skipping ahead.
    r.year = tv::IsDigit(text[4]) ? year.Number() : 0;
  }
  r.year = tv::ExpandTwoDigitYear(r.year);
  return FieldsValid(r) ? 0 : -1;
}

INT Parse(const WCHAR *text, DateTimeStruct *r, const WCHAR *format) {
  if (!text || !r) return -1;
  ResetRecord(*r);
  if (tv::LenBounded(text, 4) > 3 && AllDigits(text)) return ReadDigitString(text, *r);

  Reader reader(text);
  bool twelve = false, afternoon = false;
  for (const WCHAR *f = format; *f; ++f) {
    if (*f != '%') continue;
    if (!f[1] || !f[2]) break;
    switch (f[1]) {
      case 'D': r->day = reader.Number(); break;
      case 'Y': r->year = reader.Number(); break;
      case 'U': r->minute = reader.Number(); break;
      case 'S': r->second = reader.Number(); break;
      case 'H':
        r->hour = reader.Number();
        twelve = false;
        break;
      case 'h':
        r->hour = reader.Number();
        twelve = true;
        break;
      case 'M': r->month = reader.Month(); break;
      // A later "am" does not take back an afternoon already noted.
      case 'P':
        if (reader.Meridiem()) afternoon = true;
        break;
      default: break;
    }
    f += 2;
  }
  if (twelve && afternoon) r->hour = (r->hour + 12) % 24;
  r->year = tv::ExpandTwoDigitYear(r->year);
  return FieldsValid(*r) ? 0 : -1;
}

}  // namespace

extern "C" {

void WINAPI DateTimeStruct_To_FormattedDateTime(const DateTimeStruct *r, WCHAR *out, INT size,
                                                const WCHAR *format) {
  if (!r || !out || size < 2) return;
  format = OrDefault(format, kDefaultDateFormat);
  const int weekday = Get_Weekday(r);
  int pos = 0;
  WCHAR code[kCodeSize];
  for (const WCHAR *f = format; *f && size - pos >= 2;) {
    if (*f != '%') {
      out[pos++] = *f++;
      continue;
    }
    if (!f[1] || !f[2]) break;
    CodeText(*r, weekday, f[1], f[2], code);
    int len = tv::Len(code);
    // Whole or not at all: a code is never cut.
    if (len + 1 < size - pos) {
      tv::CopyRaw(out + pos, code, len);
      pos += len;
    }
    f += 3;
  }
  out[pos] = 0;
}

void WINAPI DateTimeStruct_To_FormattedDate(const DateTimeStruct *r, WCHAR *out, INT size,
                                            const WCHAR *format) {
  DateTimeStruct_To_FormattedDateTime(r, out, size, format);
}

// Has no time default of its own: an empty format prints the date.
void WINAPI DateTimeStruct_To_FormattedTime(const DateTimeStruct *r, WCHAR *out, INT size,
                                            const WCHAR *format) {
  DateTimeStruct_To_FormattedDateTime(r, out, size, format);
}

INT WINAPI FormattedDateTime_To_DateTimeStruct(const WCHAR *text, DateTimeStruct *r,
                                               const WCHAR *format) {
  return Parse(text, r, OrDefault(format, kDefaultDateFormat));
}

INT WINAPI FormattedDate_To_DateTimeStruct(const WCHAR *text, DateTimeStruct *r,
                                           const WCHAR *format) {
  return Parse(text, r, OrDefault(format, kDefaultDateFormat));
}

INT WINAPI FormattedTime_To_DateTimeStruct(const WCHAR *text, DateTimeStruct *r,
                                           const WCHAR *format) {
  return Parse(text, r, OrDefault(format, kDefaultTimeFormat));
}

// The format is not consulted: day and month always come first.
INT WINAPI DigitString_To_DateTimeStruct(const WCHAR *text, DateTimeStruct *r,
                                         const WCHAR *format) {
  if (!text || !r) return -1;
  ResetRecord(*r);
  return ReadDigitString(text, *r);
}

void WINAPI DateTimeStruct_To_OdbcDateConstant(const DateTimeStruct *r, WCHAR *out, INT size) {
  if (!r || !out || size < 1) return;
  tv::Format(out, size, TEXT("#%02d/%02d/%04d#"), r->month, r->day, r->year);
}

void WINAPI DateTimeStruct_To_OdbcTimeStamp(const DateTimeStruct *r, WCHAR *out, INT size) {
  if (!r || !out || size < 1) return;
  tv::Format(out, size, TEXT("%04d-%02d-%02d %02d:%02d:%02d"), r->year, r->month, r->day,
             r->hour, r->minute, r->second);
}

INT WINAPI OdbcTimeStamp_To_DateTimeStruct(const WCHAR *text, DateTimeStruct *r) {
  return Parse(text, r, kOdbcTimeStampFormat);
}

}  // extern "C"
