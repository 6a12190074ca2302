// The "time still to go" text of progress displays.
#include <tavona/datetime.h>

#include "frame/globals.h"
#include "base/wstr.h"
#include "frame/lts.h"
#include "tvres.h"

namespace {

constexpr int kAmountSize = 100;

// Formats the one integer of an amount text into out (cut to size). Only
// integer conversions take the number; any other conversion a translation
// may contain is copied as text, so it can never read a missing argument.
void FormatAmount(const WCHAR *format, int n, WCHAR *out, int size) {
  if (size < 1) return;
  int len = 0;
  auto put = [&](WCHAR c) {
    if (len < size - 1) out[len++] = c;
  };
  for (const WCHAR *p = format; *p;) {
    if (*p != '%') {
      put(*p++);
      continue;
    }
    if (p[1] == '%') {
      put('%');
      p += 2;
      continue;
    }
    const WCHAR *conv = p + 1;
    while ((*conv == '-' || *conv == '+' || *conv == ' ' || *conv == '0' || *conv == '#') &&
           conv - p < 6)
      ++conv;
    while (tv::IsDigit(*conv) && conv - p < 9) ++conv;
    if (*conv != 'd' && *conv != 'i' && *conv != 'u') {
      put(*p++);
      continue;
    }
    WCHAR conversion[12];
    tv::CopyRaw(conversion, p, int(conv - p) + 1);
    conversion[conv - p + 1] = 0;
    WCHAR digits[32];
    tv::Format(digits, 32, conversion, n);
    for (const WCHAR *d = digits; *d; ++d) put(*d);
    p = conv + 1;
  }
  out[len] = 0;
}

// The amount text for n (singular or plural form); "" for 0.
void AmountText(int n, UINT plural, UINT singular, WCHAR *out) {
  out[0] = 0;
  if (n == 0) return;
  WCHAR format[kAmountSize];
  tv::LoadTranslatedString(tv::g.resources, n == 1 ? singular : plural, format, kAmountSize);
  FormatAmount(format, n, out, kAmountSize);
}

}  // namespace

extern "C" void WINAPI Tavona_CreateEstimatedTimeDisplay(INT seconds, const WCHAR *leading,
                                                         WCHAR *out, INT size) {
  if (!out || size < 1) return;
  if (seconds < 0) seconds = 0;
  const int hours = seconds / 3600, minutes = seconds / 60 % 60, secs = seconds % 60;

  WCHAR separator[22];
  tv::LoadTranslatedString(tv::g.resources, IDS_TIME_SEPARATOR, separator, 20);
  tv::BoundedAppend(separator, TEXT(" "), 22);

  tv::BoundedCopy(out, leading, size);
  tv::BoundedAppend(out, TEXT(" "), size);
  bool written = false;
  WCHAR amount[kAmountSize];
  if (hours > 0) {
    AmountText(hours, IDS_TIME_HOURS, IDS_TIME_HOUR, amount);
    tv::BoundedAppend(out, amount, size);
    written = true;
  }
  if (hours < 5 && minutes > 0) {
    if (written) tv::BoundedAppend(out, separator, size);
    AmountText(minutes, IDS_TIME_MINUTES, IDS_TIME_MINUTE, amount);
    tv::BoundedAppend(out, amount, size);
    written = true;
  }
  if (hours == 0 && minutes < 5 && secs > 0) {
    if (written) tv::BoundedAppend(out, separator, size);
    AmountText(secs, IDS_TIME_SECONDS, IDS_TIME_SECOND, amount);
    tv::BoundedAppend(out, amount, size);
  }
  if (out[0] == 0) {
    WCHAR format[kAmountSize];
    tv::LoadTranslatedString(tv::g.resources, IDS_TIME_SECONDS, format, kAmountSize);
    FormatAmount(format, 0, out, size);
  }
}
