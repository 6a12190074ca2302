// The Windows-only parts of error reporting: the general error handler for
// applications and the display of system error codes.
#include <tavona/frame.h>

#include "frame/globals.h"
#include "frame/reportcore.h"
#include "base/wstr.h"
#include "frame/lts.h"
#include "tvres.h"

extern "C" {

INT WINAPI Tavona_ErrorHandler(const ErrorHandlerRequest *request) {
  if (!request) return 0;
  static const UINT kKindMessages[] = {IDS_ERR_OUT_OF_MEMORY, IDS_ERR_GENERAL_4,
                                       IDS_ERR_GENERAL_2,     IDS_ERR_GENERAL_1,
                                       IDS_ERR_GENERAL_3,     IDS_ERR_GENERAL_5};
  WCHAR tmpl[2000];
  tmpl[0] = 0;
  if (request->kind == 0)
    tv::Format(tmpl, 2000, L"%.1999s", request->text ? request->text : L"");  // cut, as messages are
  else if (request->kind <= 6)
    tv::LoadTranslatedString(tv::g.resources, kKindMessages[request->kind - 1], tmpl, 2000);
  else
    tv::Format(tmpl, 2000, L"Tavona Global Error %ld", static_cast<long>(request->kind));
  WCHAR text[2000];
  tv::FormatTemplate(text, 2000, tmpl, request->args, 5);
  return MessageBoxW(request->owner, text, request->caption ? request->caption : L"",
                     request->style | request->moreStyle);
}

INT WINAPI Tavona_DisplaySystemErrorExt(const WCHAR *caption, DWORD code, INT ignored,
                                        const WCHAR *extra1, const WCHAR *extra2) {
  WCHAR text[2000];
  text[0] = 0;
  // Without IGNORE_INSERTS a system text with %1 would fail or read
  // arguments that are not there.
  if (!FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                      MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), text, 2000, nullptr))
    tv::Format(text, 2000, L"Error %d", static_cast<int>(code));
  if (extra1 && extra1[0]) {
    tv::BoundedAppend(text, L"\r\n\r\n", 2000);
    tv::BoundedAppend(text, extra1, 2000);
  }
  if (extra2 && extra2[0]) {
    tv::BoundedAppend(text, L"\r\n", 2000);
    tv::BoundedAppend(text, extra2, 2000);
  }
  return MessageBoxW(nullptr, text, caption, 0);
}

INT WINAPI Tavona_DisplaySystemError(DWORD code, INT ignored, const WCHAR *extra1,
                                     const WCHAR *extra2) {
  WCHAR caption[100];
  caption[0] = 0;
  tv::LoadTranslatedString(tv::g.resources, IDS_CAPTION_ERROR, caption, 100);
  return Tavona_DisplaySystemErrorExt(caption, code, ignored, extra1, extra2);
}

}  // extern "C"
