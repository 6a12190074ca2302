// Test controls of the host platform seam.
#pragma once

#include "base/sys_host.h"
#include <tavona/tvbase.h>

#include <string>

namespace tv::plat::host {

// Strings that LoadResString returns (null text removes one).
void SetResString(UINT id, const WCHAR *text);

// The message boxes that ShowMessage would have shown.
struct ShownMessage {
  std::u16string text, caption;
  UINT style = 0;
  int count = 0;
};
void NoteMessage(const WCHAR *text, const WCHAR *caption, UINT style);
const ShownMessage &LastMessage();

// ---- Dates and times ----

// A fixed clock for CurrentLocalTime, the real local time again, or a
// clock whose conversion fails.
void SetClock(int year, int month, int day, int hour, int minute, int second);
void UseRealClock();
void SetClockFails(bool fails);
// The value YearExpansionLimit answers (35 until set).
void SetYearExpansionLimit(LONG limit);

// ---- Files ----

// The file name ModuleFileName reports for every module (null: none).
void SetModuleFileName(const WCHAR *name);

}  // namespace tv::plat::host
