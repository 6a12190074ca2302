// The error reporter: composes a message from a resource template and routes
// it to the application's callback, an external handler library, the log
// file, silence or a message box.
#include "frame/report.h"

#include "frame/globals.h"
#include "frame/platform.h"
#include "frame/reportcore.h"
#include "base/wstr.h"
#include "frame/lts.h"
#include "tvres.h"

#include <climits>
#include <cstddef>

namespace tv {

// The request record is exchanged with external handler libraries built
// elsewhere, so its layout must never drift.
namespace layout {
constexpr bool k64 = sizeof(void *) == 8;
static_assert(sizeof(MessageBoxRequest) == 448);
static_assert(offsetof(MessageBoxRequest, module) == 0);
static_assert(offsetof(MessageBoxRequest, captionId) == (k64 ? 8 : 4));
static_assert(offsetof(MessageBoxRequest, messageId) == (k64 ? 12 : 8));
static_assert(offsetof(MessageBoxRequest, ltsModule) == (k64 ? 16 : 12));
static_assert(offsetof(MessageBoxRequest, args) == (k64 ? 24 : 16));
static_assert(offsetof(MessageBoxRequest, args[4]) == (k64 ? 56 : 32));
static_assert(offsetof(MessageBoxRequest, flag) == (k64 ? 64 : 36));
static_assert(offsetof(MessageBoxRequest, reserved) == (k64 ? 68 : 40));
static_assert(offsetof(MessageBoxRequest, resultCode) == (k64 ? 72 : 44));
static_assert(offsetof(MessageBoxRequest, owner) == (k64 ? 80 : 48));
static_assert(offsetof(ErrorHandlerRequest, owner) == 8);
static_assert(offsetof(ErrorHandlerRequest, kind) == (k64 ? 16 : 12));
static_assert(offsetof(ErrorHandlerRequest, args) == (k64 ? 48 : 32));
}  // namespace layout

ErrorSettings errorSettings;

namespace {

// Writes into out[size] until it is full, then takes nothing more: a
// message is cut where its buffer ends (never inside a surrogate pair),
// never emptied.
class CutWriter {
 public:
  CutWriter(WCHAR *out, int size) : out_(out), room_(size - 1) {}
  bool Full() const { return len_ >= room_; }
  void Put(const WCHAR *s, int n) {
    int i = 0;
    for (; i < n && len_ < room_; ++i) out_[len_++] = s[i];
    if (i < n && len_ > 0 && out_[len_ - 1] >= 0xD800 && out_[len_ - 1] <= 0xDBFF) room_ = --len_;
  }
  void Repeat(WCHAR c, int n) {
    for (int i = 0; i < n && len_ < room_; ++i) out_[len_++] = c;
  }
  int Finish() {
    out_[len_] = 0;
    return len_;
  }

 private:
  WCHAR *out_;
  int room_;
  int len_ = 0;
};

// Digits of a width or precision, saturated at INT_MAX.
int ReadAmount(const WCHAR *&q) {
  long long v = 0;
  for (; IsDigit(*q); ++q) {
    v = v * 10 + (*q - '0');
    if (v > INT_MAX) v = INT_MAX;
  }
  return static_cast<int>(v);
}

}  // namespace

int FormatTemplate(WCHAR *out, int size, const WCHAR *tmpl, const WCHAR *const *args, int argCount) {
  if (!out || size < 1) return 0;
  CutWriter w(out, size);
  int next = 0;
  // Only string conversions are meaningful in message templates; any other
  // conversion consumes an argument and prints nothing, so a faulty
  // translation can never read past the arguments given. Padding stops
  // with the buffer, and so does the whole template: the work is that of
  // the text written and the arguments read.
  for (const WCHAR *p = tmpl; p && *p && !w.Full(); ++p) {
    if (*p != '%') {
      w.Put(p, 1);
      continue;
    }
    if (p[1] == '%') {
      w.Put(p, 1);
      ++p;
      continue;
    }
    const WCHAR *q = p + 1;
    bool left = false;
    while (*q == '-' || *q == '+' || *q == ' ' || *q == '#' || *q == '0') left |= (*q++ == '-');
    int width = ReadAmount(q), precision = -1;
    if (*q == '.') {
      ++q;
      precision = ReadAmount(q);
    }
    while (*q == 'l' || *q == 'h' || *q == 'w' || *q == 'L') ++q;
    if (!*q) break;
    const WCHAR *arg = next < argCount && args[next] ? args[next] : TEXT("");
    ++next;
    if (*q == 's' || *q == 'S') {
      int n = precision >= 0 ? LenBounded(arg, precision) : Len(arg);
      if (!left) w.Repeat(' ', width - n);
      w.Put(arg, n);
      if (left) w.Repeat(' ', width - n);
    }
    p = q;
  }
  return w.Finish();
}

UINT ComposeMessageText(HMODULE module, const WCHAR *ltsModule, UINT messageId,
                        const WCHAR *const args[5], WCHAR *out, int limit) {
  if (!out || limit < 1) return MB_TASKMODAL;
  out[0] = 0;
  WCHAR tmpl[1024];
  if (plat::LoadResString(module, messageId, tmpl, 1024) < 1) return MB_TASKMODAL;
  LtsTranslateText(ltsModule, tmpl, 1024);
  if (!tmpl[0]) return MB_TASKMODAL;
  WCHAR text[1024];
  FormatTemplate(text, 1024, tmpl, args, 5);

  UINT style = MB_TASKMODAL;
  bool yes = false, no = false, ok = false, cancel = false, retry = false, ignore = false, abort = false;
  const WCHAR *p = text;
  if (*p != ' ') {
    for (; *p && *p != ' '; ++p) {
      switch (*p) {
        case '!': style |= MB_ICONEXCLAMATION; break;
        case '?': style |= MB_ICONQUESTION; break;
        case 'i': style |= MB_ICONINFORMATION; break;
        case 's': style |= MB_ICONHAND; break;
        case 'Y': yes = true; break;
        case 'N': no = true; break;
        case 'O': ok = true; break;
        case 'C': cancel = true; break;
        case 'R': retry = true; break;
        case 'I': ignore = true; break;
        case 'A': abort = true; break;
        default: break;
      }
    }
  }
  // Only these exact sets choose buttons; retry/cancel is deliberately not
  // reachable and falls back to OK like every other set.
  int letters = yes + no + ok + cancel + retry + ignore + abort;
  if (letters == 3 && yes && no && cancel)
    style |= MB_YESNOCANCEL;
  else if (letters == 3 && retry && ignore && abort)
    style |= MB_ABORTRETRYIGNORE;
  else if (letters == 2 && yes && no)
    style |= MB_YESNO;
  else if (letters == 2 && ok && cancel)
    style |= MB_OKCANCEL;
  else
    style |= MB_OK;
  while (*p == ' ') ++p;
  // Cut, not emptied, when the limit is below the 1024 of the template.
  CutWriter w(out, limit);
  w.Put(p, LenBounded(p, limit));
  w.Finish();
  return style;
}

int RouteMessage(const MessageRequest &r) {
  const WCHAR *args[5] = {r.args[0], r.args[1], r.args[2], r.args[3], r.args[4]};
  if (ErrorCallback cb = errorSettings.callback) {
    WCHAR text[1024];
    ComposeMessageText(r.module, r.ltsModule, r.messageId, args, text, 1024);
    return cb(text);
  }
  if (r.record) {
    if (int result = plat::CallExternalHandler(r.record)) return result;
  }
  WCHAR text[1002];  // room for the line end of the log
  switch (errorSettings.mode) {
    case 2: {
      ComposeMessageText(r.module, r.ltsModule, r.messageId, args, text, 1000);
      // One line of raw UTF-16LE with CR LF, no byte-order mark.
      int n = Len(text);
      text[n] = L'\r';
      text[n + 1] = L'\n';
      return plat::AppendToFile(errorSettings.logPath, text, (n + 2) * sizeof(WCHAR)) ? 1 : 2;
    }
    case 1:
      return 1;
    default: {
      WCHAR caption[200];
      caption[0] = 0;
      plat::LoadResString(r.module, r.captionId, caption, 200);
      LtsTranslateText(r.ltsModule, caption, 200);
      UINT style = ComposeMessageText(r.module, r.ltsModule, r.messageId, args, text, 1000);
      return plat::ShowMessage(r.owner, text, caption, style);
    }
  }
}

const TAVONA_VALUE_PAIR ErrorCodeTable[] = {
    {1300, 0x8004A014}, {1327, 0x8004A032}, {1357, 0x8004A036}, {1352, 0x8004A01C},
    {1354, 0x8004A01D}, {1328, 0x8004A025}, {1329, 0x8004A024}, {1330, 0x8004A022},
    {1331, 0x8004A02C}, {1332, 0x8004A029}, {1333, 0x8004A016}, {1334, 0x8004A01F},
    {1335, 0x8004A01F}, {1336, 0x8004A028}, {1380, 0x8004A002}, {1381, 0x8004A002},
    {0, 0},
};

void BuildReportRequest(MessageBoxRequest &record, UINT captionId, UINT messageId,
                        const WCHAR *arg1, const WCHAR *arg2, const WCHAR *arg3) {
  record = MessageBoxRequest{};
  record.module = g.resources;
  record.captionId = captionId;
  record.messageId = messageId;
  record.ltsModule = g.ltsModuleName;
  record.args[0] = arg1;
  record.args[1] = arg2;
  record.args[2] = arg3;
  record.flag = 1;
  record.resultCode = Tavona_Translate(messageId, ErrorCodeTable, 0, kDefaultResultCode, 0);
}

int ReportErrorWithCaption(UINT captionId, UINT messageId, const WCHAR *arg1, const WCHAR *arg2,
                           const WCHAR *arg3) {
  MessageBoxRequest record;
  BuildReportRequest(record, captionId, messageId, arg1, arg2, arg3);
  return Tavona_Message_Box(&record);
}

int ReportError(UINT messageId, const WCHAR *arg1, const WCHAR *arg2, const WCHAR *arg3) {
  return ReportErrorWithCaption(IDS_CAPTION_ERROR, messageId, arg1, arg2, arg3);
}

int ReportNotice(UINT messageId, const WCHAR *arg1, const WCHAR *arg2, const WCHAR *arg3) {
  return ReportErrorWithCaption(IDS_CAPTION_ERROR_ALT, messageId, arg1, arg2, arg3);
}

}  // namespace tv

extern "C" {

INT WINAPI Tavona_Message_Box(const MessageBoxRequest *request) {
  if (!request) return 2;
  tv::MessageRequest r;
  r.module = request->module;
  r.captionId = request->captionId;
  r.messageId = request->messageId;
  r.ltsModule = request->ltsModule;
  for (int i = 0; i < 5; ++i) r.args[i] = request->args[i];
  r.owner = request->owner;
  r.record = request;
  return tv::RouteMessage(r);
}

TAVONA_ERROR_CALLBACK WINAPI Tavona_SetErrorHandlerCallback(TAVONA_ERROR_CALLBACK callback) {
  tv::errorSettings.callback = callback;
  return callback;
}

INT WINAPI Tavona_SetErrorHandlingMode(INT mode) {
  tv::errorSettings.mode = mode;
  return mode;
}

void WINAPI Tavona_SetErrorLogFile(const WCHAR *path) {
  tv::BoundedCopy(tv::errorSettings.logPath, path, 256);
}

}  // extern "C"
