// The copy list dialogs: the list itself (and the standard list in the
// same layout), the copy names offered in its boxes, and adding a name.
// The profile file keeps the standard list, the names and the show flag.
#include <tavona/controls.h>
#include <tavona/printing.h>

#include "frame/alloc.h"
#include "frame/dialog.h"
#include "frame/report.h"
#include "printing/copylist.h"
#include "text/numbers.h"
#include "base/wstr.h"
#include "tvres.h"

namespace {

using tv::print::CopyList;
using tv::print::kCopyEntries;

constexpr WCHAR kSection[] = L"CopyList";
constexpr int kProfileRead = 4096;
constexpr int kNamesWrite = 10000;

tv::HeapPtr<WCHAR> ReadProfile(const WCHAR *profile, const WCHAR *key) {
  tv::HeapPtr<WCHAR> text(tv::AllocWideChars(kProfileRead));
  if (text) {
    text[0] = 0;
    if (profile) GetPrivateProfileStringW(kSection, key, L"", text.get(), kProfileRead, profile);
  }
  return text;
}

tv::HeapPtr<WCHAR> WindowText(HWND w) {
  int len = GetWindowTextLengthW(w);
  tv::HeapPtr<WCHAR> text(tv::AllocWideChars(static_cast<UINT>(len) + 1));
  if (text) {
    text[0] = 0;
    GetWindowTextW(w, text.get(), len + 1);
  }
  return text;
}

bool HasForbidden(const WCHAR *s) {
  for (; s && *s; ++s)
    if (*s == '|' || *s == '%' || *s == '"') return true;
  return false;
}

// The character just typed goes again when it may not stand in a name:
// names are kept between "|" and in quoted profile values.
void TakeBackForbidden(HWND control) {
  tv::HeapPtr<WCHAR> text = WindowText(control);
  if (!text || !HasForbidden(text.get())) return;
  MessageBeep(static_cast<UINT>(-1));
  SendMessageW(control, WM_CHAR, 8, 0);
}

struct CopyDialog {
  CopyList *list;
};

void ShowCount(HWND dialog, int i, INT count) {
  WCHAR text[16] = {};
  if (count > 0) tv::Format(text, 16, L"%d", count);
  SetDlgItemTextW(dialog, IDC_COPY_COUNT + i, text);
}

INT ReadCount(HWND dialog, int i) {
  WCHAR text[32] = {};
  GetDlgItemTextW(dialog, IDC_COPY_COUNT + i, text, 32);
  return tv::num::ToInt(text);
}

void ShowEntries(HWND dialog, const CopyList &list) {
  for (int i = 0; i < kCopyEntries; ++i) {
    SetDlgItemTextW(dialog, IDC_COPY_NAME + i, list.names[i] ? list.names[i] : L"");
    ShowCount(dialog, i, list.counts[i]);
  }
}

// Fills the ten name boxes from "Names"; keep: the texts shown stay.
void FillNameBoxes(HWND dialog, const WCHAR *profile, bool keep) {
  tv::HeapPtr<WCHAR> names = ReadProfile(profile, L"Names");
  if (!names) return;
  for (int i = 0; i < kCopyEntries; ++i) {
    HWND box = GetDlgItem(dialog, IDC_COPY_NAME + i);
    tv::HeapPtr<WCHAR> shown;
    if (keep) shown = WindowText(box);
    Tavona_FillBox(box, '|', names.get());
    SendMessageW(box, CB_SETCURSEL, 0, 0);
    if (keep && shown) SetWindowTextW(box, shown.get());
  }
}

INT_PTR CALLBACK CopyListProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

void EditStandardList(HWND dialog, const WCHAR *profile) {
  tv::HeapPtr<WCHAR> text = ReadProfile(profile, L"Standard");
  if (!text) return;
  CopyList standard;
  if (!tv::print::ReadCopyList(text.get(), standard) || !standard.SetProfile(profile)) return;
  CopyDialog d{&standard};
  // Cancel writes the list back too, in its ten-entry form.
  if (tv::RunDialog(IDD_COPY_STANDARD, CopyListProc, reinterpret_cast<LPARAM>(&d)) <= 0) return;
  tv::HeapPtr<WCHAR> written(tv::print::WriteCopyList(standard));
  if (written) WritePrivateProfileStringW(kSection, L"Standard", written.get(), profile);
}

INT_PTR CALLBACK AddNameProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  HWND *names = tv::DialogRecord<HWND>(dialog, message, lParam);
  if (!names) return FALSE;
  switch (message) {
    case WM_INITDIALOG:
      return TRUE;
    case WM_COMMAND:
      switch (LOWORD(wParam)) {
        case IDOK: {
          tv::HeapPtr<WCHAR> name = WindowText(GetDlgItem(dialog, IDC_COPY_NEW_NAME));
          if (!name) return TRUE;
          if (tv::IsBlank(name.get())) {
            MessageBeep(static_cast<UINT>(-1));
            return TRUE;
          }
          LPARAM text = reinterpret_cast<LPARAM>(name.get());
          if (SendMessageW(*names, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), text) != LB_ERR) {
            tv::ReportError(IDS_ERR_COPY_NAME_EXISTS, name.get());
            return TRUE;
          }
          SendMessageW(*names, LB_ADDSTRING, 0, text);
          EndDialog(dialog, 1);
          return TRUE;
        }
        case IDCANCEL:
          EndDialog(dialog, 0);
          return TRUE;
        case IDC_COPY_NEW_NAME:
          if (HIWORD(wParam) == EN_CHANGE) TakeBackForbidden(reinterpret_cast<HWND>(lParam));
          return TRUE;
      }
      break;
  }
  return FALSE;
}

INT_PTR CALLBACK NamesProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  const WCHAR *profile = tv::DialogRecord<const WCHAR>(dialog, message, lParam);
  HWND names = GetDlgItem(dialog, IDC_COPY_NAMES_LIST);
  switch (message) {
    case WM_INITDIALOG: {
      tv::HeapPtr<WCHAR> list = ReadProfile(profile, L"Names");
      if (list) Tavona_FillBox(names, '|', list.get());
      SendMessageW(names, LB_SETCURSEL, 0, 0);
      return TRUE;
    }
    case WM_COMMAND:
      switch (LOWORD(wParam)) {
        case IDC_COPY_NAMES_ADD: {
          HWND list = names;
          tv::RunDialog(IDD_COPY_ADD_NAME, AddNameProc, reinterpret_cast<LPARAM>(&list));
          return TRUE;
        }
        case IDC_COPY_NAMES_DELETE: {
          LRESULT index = SendMessageW(names, LB_GETCURSEL, 0, 0);
          if (index < 0) return TRUE;
          SendMessageW(names, LB_DELETESTRING, static_cast<WPARAM>(index), 0);
          LRESULT count = SendMessageW(names, LB_GETCOUNT, 0, 0);
          if (index >= count) index = count - 1;
          if (index >= 0) SendMessageW(names, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
          return TRUE;
        }
        case IDOK: {
          tv::HeapPtr<WCHAR> joined(tv::AllocWideChars(kNamesWrite));
          if (!joined) return TRUE;
          joined[0] = 0;
          Tavona_ReadBox(names, '|', 0, joined.get(), kNamesWrite);
          if (profile) WritePrivateProfileStringW(kSection, L"Names", joined.get(), profile);
          EndDialog(dialog, 1);
          return TRUE;
        }
        case IDCANCEL:
          EndDialog(dialog, 0);
          return TRUE;
      }
      break;
  }
  return FALSE;
}

void StepCount(HWND dialog, int i, int code) {
  INT count = ReadCount(dialog, i);
  if (code == SB_LINEUP && count >= 1)
    --count;
  else if (code == SB_LINEDOWN && count < 99)
    ++count;
  else
    return;
  ShowCount(dialog, i, count);
}

bool Confirm(HWND dialog, CopyList &list) {
  for (int i = 0; i < kCopyEntries; ++i) {
    tv::HeapPtr<WCHAR> name = WindowText(GetDlgItem(dialog, IDC_COPY_NAME + i));
    if (!name || !list.SetName(i, name.get())) return false;
    list.counts[i] = ReadCount(dialog, i);
  }
  if (list.Total() <= 0) {
    tv::ReportError(IDS_ERR_COPY_COUNT_ZERO);
    return false;
  }
  if (list.profile) {
    bool show = IsDlgButtonChecked(dialog, IDC_COPY_SHOW) == BST_CHECKED;
    WritePrivateProfileStringW(kSection, L"ShowFlag", show ? L"1" : L"0", list.profile);
  }
  return true;
}

INT_PTR CALLBACK CopyListProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  CopyDialog *d = tv::DialogRecord<CopyDialog>(dialog, message, lParam);
  if (!d) return FALSE;
  CopyList &list = *d->list;
  switch (message) {
    case WM_INITDIALOG: {
      FillNameBoxes(dialog, list.profile, false);
      ShowEntries(dialog, list);
      UINT show = list.profile ? GetPrivateProfileIntW(kSection, L"ShowFlag", 0, list.profile) : 0;
      CheckDlgButton(dialog, IDC_COPY_SHOW, show == 1 ? BST_CHECKED : BST_UNCHECKED);
      return TRUE;
    }
    case WM_VSCROLL: {
      int id = GetDlgCtrlID(reinterpret_cast<HWND>(lParam));
      if (id >= IDC_COPY_SCROLL && id < IDC_COPY_SCROLL + kCopyEntries)
        StepCount(dialog, id - IDC_COPY_SCROLL, LOWORD(wParam));
      return TRUE;
    }
    case WM_COMMAND: {
      int id = LOWORD(wParam);
      int code = HIWORD(wParam);
      if (id >= IDC_COPY_NAME && id < IDC_COPY_NAME + kCopyEntries) {
        if (code == CBN_EDITCHANGE) TakeBackForbidden(reinterpret_cast<HWND>(lParam));
        return TRUE;
      }
      switch (id) {
        case IDC_COPY_LOAD_STANDARD: {
          if (!list.profile) return TRUE;
          tv::HeapPtr<WCHAR> text = ReadProfile(list.profile, L"Standard");
          CopyList standard;
          if (text && tv::print::ReadCopyList(text.get(), standard)) ShowEntries(dialog, standard);
          return TRUE;
        }
        case IDC_COPY_EDIT_STANDARD:
          EditStandardList(dialog, list.profile);
          return TRUE;
        case IDC_COPY_EDIT_NAMES:
          tv::RunDialog(IDD_COPY_NAMES, NamesProc, reinterpret_cast<LPARAM>(list.profile));
          FillNameBoxes(dialog, list.profile, true);
          return TRUE;
        case IDOK:
          if (Confirm(dialog, list)) EndDialog(dialog, 1);
          return TRUE;
        case IDCANCEL:
          EndDialog(dialog, 2);
          return TRUE;
      }
      break;
    }
  }
  return FALSE;
}

}  // namespace

INT WINAPI Tavona_EditCopyList(WCHAR *buffer, INT size, const WCHAR *profile) {
  if (!buffer || size < 1) return 2;
  CopyList list;
  if (!tv::print::ReadCopyList(buffer, list) || !list.SetProfile(profile ? profile : L"TAVONA.INI"))
    return 2;
  CopyDialog d{&list};
  if (tv::RunDialog(IDD_COPY_LIST, CopyListProc, reinterpret_cast<LPARAM>(&d)) != 1) return 2;
  tv::HeapPtr<WCHAR> text(tv::print::WriteCopyList(list));
  if (!text) return 2;
  int n = tv::Len(text.get());
  if (n > size - 1) n = size - 1;
  tv::CopyRaw(buffer, text.get(), n);
  buffer[n] = 0;
  return 1;
}

INT WINAPI Tavona_ShowCopyListBeforePrint(void) { return 1; }
