// The library's error reporter. Every failure the user must hear of goes
// through ReportError with a message id of the resource library and up to
// three text arguments; the result is the button chosen (or what the
// application's callback, the silent mode or the log mode answered).
#pragma once

#include <tavona/tvbase.h>

namespace tv {

// Message ids of the resource library used by the frame and the text
// routines; the complete list is in resources/tvres.h.
int ReportError(UINT messageId, const WCHAR *arg1 = nullptr,
                const WCHAR *arg2 = nullptr, const WCHAR *arg3 = nullptr);

// The same with another caption id.
int ReportErrorWithCaption(UINT captionId, UINT messageId, const WCHAR *arg1 = nullptr,
                           const WCHAR *arg2 = nullptr, const WCHAR *arg3 = nullptr);

// The same under the notice caption (1521).
int ReportNotice(UINT messageId, const WCHAR *arg1 = nullptr, const WCHAR *arg2 = nullptr,
                 const WCHAR *arg3 = nullptr);

}  // namespace tv
