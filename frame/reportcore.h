// Internals of the error reporter shared with the message box exports.
#pragma once

#include <tavona/frame.h>

namespace tv {

typedef TAVONA_ERROR_CALLBACK ErrorCallback;

struct ErrorSettings {
  ErrorCallback callback = nullptr;
  INT mode = 0;  // 0 display, 1 silent, 2 log file; others display
  WCHAR logPath[256] = {};
};
extern ErrorSettings errorSettings;

// What the reporter needs of a message box request.
struct MessageRequest {
  HMODULE module = nullptr;
  UINT captionId = 0;
  UINT messageId = 0;
  const WCHAR *ltsModule = nullptr;
  const WCHAR *args[5] = {};
  HWND owner = nullptr;
  // The caller's record, handed on unchanged to an external handler.
  const MessageBoxRequest *record = nullptr;
};

// Message id -> result code for external handlers (first words, ended by 0).
extern const TAVONA_VALUE_PAIR ErrorCodeTable[];
inline constexpr UINT kDefaultResultCode = 0x8004A000;

// The request the reporters build: resource module, the library's module
// name, flag 1 and the result code of the message id.
void BuildReportRequest(MessageBoxRequest &record, UINT captionId, UINT messageId,
                        const WCHAR *arg1, const WCHAR *arg2, const WCHAR *arg3);

// Callback, external handler, log, silence or display, in that order.
int RouteMessage(const MessageRequest &request);

// Loads, translates and formats the template, reads its style prefix and
// copies the text after it into out (bounded). Returns the style bits.
UINT ComposeMessageText(HMODULE module, const WCHAR *ltsModule, UINT messageId,
                        const WCHAR *const args[5], WCHAR *out, int limit);

// printf-style substitution of string arguments into a message template.
int FormatTemplate(WCHAR *out, int size, const WCHAR *tmpl, const WCHAR *const *args, int argCount);

}  // namespace tv
