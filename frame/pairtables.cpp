// Constant tables of pairs that stand in for switch statements. Each
// function keeps its own end-of-table and default rule; callers depend on
// the differences.
#include <tavona/frame.h>

#include <climits>

#include "frame/platform.h"
#include "base/wstr.h"

UINT WINAPI Tavona_Translate(UINT value, const TAVONA_VALUE_PAIR *table, UINT terminator,
                             UINT defaultValue, BYTE flags) {
  // Callers must pass a table; a null one answers the default rather than
  // bringing the application down.
  if (!table) return defaultValue;
  if (!(flags & TAVONA_TRANSLATE_REVERSE)) {
    for (; table->first != terminator; ++table)
      if (table->first == value) return table->second;
    return defaultValue;
  }
  if (table->first == terminator) return defaultValue;
  for (;;) {
    if (table->second == value) return table->first;
    ++table;
    if (table->first == terminator) return defaultValue;
  }
}

void WINAPI Tavona_Translate_LongToString(INT value, WCHAR *out, UINT outSize,
                                          const TAVONA_TEXT_PAIR *table,
                                          const WCHAR *defaultText) {
  // Without a table the buffer is left as it is, default or not.
  if (!table) return;
  const WCHAR *text = defaultText;
  for (; table->text; ++table) {
    if (table->value == value) {
      text = table->text;
      break;
    }
  }
  // A size of 2^31 or more is a negative count on its way through an
  // unsigned parameter, never a buffer: nothing is written, as for 0.
  if (outSize > INT_MAX) return;
  tv::BoundedCopy(out, text, static_cast<int>(outSize));
}

INT WINAPI Tavona_Translate_StringToLong(const WCHAR *text, const TAVONA_TEXT_PAIR *table,
                                         INT defaultValue, INT flags) {
  if (!table || !table->text) return defaultValue;
  if (!text) text = TEXT("");
  for (; table->text; ++table) {
    bool equal = (flags & TAVONA_TRANSLATE_NOCASE)
                     ? tv::plat::CompareNoCaseCrt(text, table->text) == 0
                     : tv::Compare(text, table->text) == 0;
    if (equal) return table->value;
  }
  return defaultValue;
}
