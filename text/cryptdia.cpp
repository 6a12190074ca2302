// The scrambling test dialog: a key and a text, shown scrambled and
// unscrambled again, each also as hexadecimal character codes.
#include <tavona/text.h>

#include <windows.h>

#include "frame/dialog.h"
#include "text/crypt.h"
#include "base/wstr.h"
#include "tvres.h"

namespace {

constexpr int kTextSize = 1000;

// "%02X " per character while more than four characters of room remain
// besides the terminator, so at most 65 codes in 200 characters.
void HexLine(const WCHAR *text, WCHAR *line, int size) {
  line[0] = 0;
  int at = 0;
  for (const WCHAR *p = text; *p && size - 1 - at > 4; ++p) {
    tv::Format(line + at, size - at, L"%02X ", static_cast<unsigned>(*p));
    at += 3;
  }
}

void Show(HWND dialog, int textId, int hexId, const WCHAR *text) {
  WCHAR hex[200];
  HexLine(text, hex, 200);
  SetDlgItemTextW(dialog, textId, text);
  SetDlgItemTextW(dialog, hexId, hex);
}

void Update(HWND dialog) {
  WCHAR key[kTextSize], text[kTextSize], work[kTextSize];
  GetDlgItemTextW(dialog, IDC_CRYPT_KEY, key, kTextSize);
  GetDlgItemTextW(dialog, IDC_CRYPT_TEXT, text, kTextSize);
  Show(dialog, IDC_CRYPT_PLAIN, IDC_CRYPT_PLAIN_HEX, text);
  tv::CopyRaw(work, text, tv::Len(text) + 1);
  Tavona_Crypt(key, work);
  Show(dialog, IDC_CRYPT_SCRAMBLED, IDC_CRYPT_SCRAMBLED_HEX, work);
  Tavona_DeCrypt(key, work);
  Show(dialog, IDC_CRYPT_RESTORED, IDC_CRYPT_RESTORED_HEX, work);
}

INT_PTR CALLBACK CryptDia_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                          LPARAM lParam) {
  tv::DialogRecord<void>(dialog, message, lParam);
  switch (message) {
    case WM_INITDIALOG:
      SendDlgItemMessageW(dialog, IDC_CRYPT_KEY, EM_LIMITTEXT, kTextSize - 1, 0);
      SendDlgItemMessageW(dialog, IDC_CRYPT_TEXT, EM_LIMITTEXT, kTextSize - 1, 0);
      Update(dialog);
      return TRUE;
    case WM_COMMAND:
      switch (LOWORD(wParam)) {
        case IDC_CRYPT_KEY:
        case IDC_CRYPT_TEXT:
          Update(dialog);
          return TRUE;
        case IDOK:
        case IDCANCEL:
          EndDialog(dialog, LOWORD(wParam));
          return TRUE;
      }
      break;
  }
  return FALSE;
}

}  // namespace

extern "C" {

INT WINAPI Tavona_CryptDia(void) {
  return static_cast<INT>(tv::RunDialog(IDD_CRYPT_TEST, CryptDia_Dialog_Callback, 0));
}

}  // extern "C"
