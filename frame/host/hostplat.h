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

}  // namespace tv::plat::host
