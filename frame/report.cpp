// The error reporter: composes a message from a resource template and routes
// it to the application's callback, the log file, silence or a message box.
#include "frame/report.h"

#include "frame/globals.h"
#include "frame/platform.h"
#include "frame/reportcore.h"
#include "text/wstr.h"
#include "translation/lts.h"
#include "tvres.h"

namespace tv {

ErrorSettings errorSettings;

int FormatTemplate(WCHAR *out, int size, const WCHAR *tmpl, const WCHAR *const *args, int argCount) {
  if (!out || size < 1) return 0;
  out[0] = 0;
  Appender a(out, size);
  int next = 0;
  // Only string conversions are meaningful in message templates; any other
  // conversion consumes an argument and prints nothing, so a faulty
  // translation can never read past the arguments given.
  for (const WCHAR *p = tmpl; p && *p; ++p) {
    if (*p != '%') {
      a.Append(*p);
      continue;
    }
    if (p[1] == '%') {
      a.Append('%');
      ++p;
      continue;
    }
    const WCHAR *q = p + 1;
    bool left = false;
    while (*q == '-' || *q == '+' || *q == ' ' || *q == '#' || *q == '0') left |= (*q++ == '-');
    int width = 0, precision = -1;
    while (IsDigit(*q)) width = width * 10 + (*q++ - '0');
    if (*q == '.') {
      precision = 0;
      for (++q; IsDigit(*q);) precision = precision * 10 + (*q++ - '0');
    }
    while (*q == 'l' || *q == 'h' || *q == 'w' || *q == 'L') ++q;
    if (!*q) break;
    const WCHAR *arg = next < argCount && args[next] ? args[next] : TEXT("");
    ++next;
    if (*q == 's' || *q == 'S') {
      int n = Len(arg);
      if (precision >= 0 && precision < n) n = precision;
      if (!left)
        for (int i = n; i < width; ++i) a.Append(' ');
      a.Append(arg, n);
      if (left)
        for (int i = n; i < width; ++i) a.Append(' ');
    }
    p = q;
  }
  return a.Length();
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
  BoundedCopy(out, p, limit);
  return style;
}

int RouteMessage(const MessageRequest &r) {
  const WCHAR *args[5] = {r.args[0], r.args[1], r.args[2], r.args[3], r.args[4]};
  if (ErrorCallback cb = errorSettings.callback) {
    WCHAR text[1024];
    ComposeMessageText(r.module, r.ltsModule, r.messageId, args, text, 1024);
    return cb(text);
  }
  if (RouteToExternalHandler) {
    if (int result = RouteToExternalHandler(r)) return result;
  }
  WCHAR text[1000];
  switch (errorSettings.mode) {
    case 2: {
      ComposeMessageText(r.module, r.ltsModule, r.messageId, args, text, 1000);
      return plat::AppendLogLine(errorSettings.logPath, text) ? 1 : 2;
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

int (*RouteToExternalHandler)(const MessageRequest &) = nullptr;

int ReportError(UINT messageId, const WCHAR *arg1, const WCHAR *arg2, const WCHAR *arg3) {
  MessageRequest r;
  r.module = g.resources;
  r.captionId = IDS_CAPTION_ERROR;
  r.messageId = messageId;
  r.ltsModule = g.ltsModuleName;
  r.args[0] = arg1;
  r.args[1] = arg2;
  r.args[2] = arg3;
  return RouteMessage(r);
}

}  // namespace tv

extern "C" {

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
