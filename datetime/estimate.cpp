// The "time still to go" text of progress displays.
#include <tavona/datetime.h>

#include "frame/globals.h"
#include "text/wstr.h"
#include "translation/lts.h"
#include "tvres.h"

namespace {

constexpr int kAmountSize = 100;

// The amount text for n (singular or plural form); "" for 0.
void AmountText(int n, UINT plural, UINT singular, WCHAR *out) {
  out[0] = 0;
  if (n == 0) return;
  WCHAR format[kAmountSize];
  tv::LoadTranslatedString(tv::g.resources, n == 1 ? singular : plural, format, kAmountSize);
  tv::Format(out, kAmountSize, format, n);
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
    tv::Format(out, size, format, 0);
  }
}
