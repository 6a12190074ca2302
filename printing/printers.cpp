// Printers from the "Devices" profile section, their paper bins and
// device modes, the paper formats box and the bin information dialog.
#include <tavona/controls.h>
#include <tavona/printing.h>
#include <tavona/settings.h>

#include <commctrl.h>
#include <winspool.h>

#include "frame/alloc.h"
#include "frame/dialog.h"
#include "frame/globals.h"
#include "frame/handles.h"
#include "frame/report.h"
#include "printing/paper.h"
#include "text/numbers.h"
#include "base/wstr.h"
#include "frame/lts.h"
#include "tvres.h"

namespace {

constexpr int kBinNameSize = 24;  // DC_BINNAMES entries

// Copies the field of a "driver,port,..." entry that starts at field index
// (0 or 1) into out[size]; "" when the entry has fewer fields.
void EntryField(const WCHAR *entry, int index, WCHAR *out, int size) {
  const WCHAR *cursor = entry;
  WCHAR field[500];
  for (int i = 0; i <= index; ++i)
    if (!tv::ReadField(cursor, ',', field, 500)) field[0] = 0;
  tv::BoundedCopy(out, field, size);
}

// The default printer's name through the spooler's query, which the
// spooler exports by ordinal only on some systems.
bool DefaultPrinterName(WCHAR (&name)[260]) {
  HMODULE spooler = GetModuleHandleW(L"winspool.drv");
  if (!spooler) return false;
  using Query = BOOL(WINAPI *)(WCHAR *, DWORD *);
  auto query = reinterpret_cast<Query>(
      reinterpret_cast<void *>(GetProcAddress(spooler, MAKEINTRESOURCEA(203))));
  if (!query) return false;
  DWORD size = 260;
  name[0] = 0;
  if (!query(name, &size) || !name[0]) return false;
  name[259] = 0;
  return true;
}

void LoadString24(UINT id, WCHAR (&out)[kBinNameSize + 1]) {
  out[0] = 0;
  tv::LoadTranslatedString(tv::g.resources, id, out, kBinNameSize + 1);
}

// The bins of a printer: their identifiers and names in one go.
struct Bins {
  tv::HeapPtr<WORD> ids;
  tv::HeapPtr<WCHAR> names;
  int count = 0;
  int nameCount = 0;

  bool Read(const WCHAR *printer, const WCHAR *port) {
    int n = DeviceCapabilitiesW(printer, port, DC_BINS, nullptr, nullptr);
    if (n <= 0) return false;
    int m = DeviceCapabilitiesW(printer, port, DC_BINNAMES, nullptr, nullptr);
    if (m < 0) m = 0;
    ids = tv::HeapPtr<WORD>(static_cast<WORD *>(tv::AllocBytes(uint64_t(n) * sizeof(WORD))));
    names = tv::HeapPtr<WCHAR>(tv::AllocWideChars(static_cast<UINT>(m + 1) * kBinNameSize));
    if (!ids || !names) return false;
    if (DeviceCapabilitiesW(printer, port, DC_BINS, reinterpret_cast<WCHAR *>(ids.get()),
                            nullptr) != n)
      return false;
    if (m > 0 && DeviceCapabilitiesW(printer, port, DC_BINNAMES, names.get(), nullptr) != m)
      m = 0;
    count = n;
    nameCount = m;
    return true;
  }

  // Bin i's name: its own (24 characters, not always terminated), else
  // the pattern with its number.
  void Name(int i, const WCHAR *pattern, WCHAR (&out)[kBinNameSize + 1]) const {
    if (i < nameCount) {
      int len = tv::LenBounded(names.get() + i * kBinNameSize, kBinNameSize);
      tv::CopyRaw(out, names.get() + i * kBinNameSize, len);
      out[len] = 0;
    } else {
      tv::Format(out, kBinNameSize + 1, pattern, i);
    }
  }
};

// Columns from a definition "title|width|alignment" separated by tabs.
void InsertColumns(HWND listView, const WCHAR *definition) {
  const WCHAR *cursor = definition;
  WCHAR column[300];
  for (int index = 0; tv::ReadField(cursor, '\t', column, 300); ++index) {
    const WCHAR *fields = column;
    WCHAR title[100], width[20], align[20];
    tv::ReadField(fields, '|', title, 100);
    tv::ReadField(fields, '|', width, 20);
    tv::ReadField(fields, '|', align, 20);
    int w = tv::num::ToInt(width);
    LVCOLUMNW c = {};
    c.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT;
    c.fmt = align[0] == 'C' ? LVCFMT_CENTER : align[0] == 'R' ? LVCFMT_RIGHT : LVCFMT_LEFT;
    c.cx = w > 0 ? w : 100;
    c.pszText = title;
    SendMessageW(listView, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&c));
  }
}

// The dialog keeps nothing; its record only marks it as set up.
struct BinInfo {};

INT_PTR CALLBACK BinInfoProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (!tv::DialogRecord<BinInfo>(dialog, message, lParam)) return FALSE;
  switch (message) {
    case WM_INITDIALOG: {
      HWND printers = GetDlgItem(dialog, IDC_BININFO_PRINTERS);
      Tavona_InitPrintersBox(printers, nullptr);
      Tavona_SetBoxIndex(printers, 0);
      HWND list = GetDlgItem(dialog, IDC_BININFO_LIST);
      WCHAR columns[300] = {};
      tv::LoadTranslatedString(tv::g.resources, IDS_BIN_COLUMNS, columns, 300);
      InsertColumns(list, columns);
      SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
                   LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT);
      SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDC_BININFO_PRINTERS, CBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(printers));
      return TRUE;
    }
    case WM_COMMAND:
      if (LOWORD(wParam) == IDCANCEL) {
        EndDialog(dialog, 2);
        return TRUE;
      }
      if (LOWORD(wParam) == IDC_BININFO_PRINTERS && HIWORD(wParam) == CBN_SELCHANGE) {
        WCHAR printer[200] = {};
        Tavona_PrintersBoxGetCurrent(GetDlgItem(dialog, IDC_BININFO_PRINTERS), printer, 200);
        Tavona_InitPrinterBinsLv(GetDlgItem(dialog, IDC_BININFO_LIST), printer, nullptr);
        return TRUE;
      }
      break;
  }
  return FALSE;
}

}  // namespace

void WINAPI Tavona_InitPrintersBox(HWND box, const WCHAR *preselect) {
  if (!box) return;
  constexpr int kListSize = 10000;
  tv::HeapPtr<WCHAR> names(tv::AllocWideChars(kListSize));
  if (!names) return;
  names[0] = names[1] = 0;
  DWORD got = GetProfileStringW(L"Devices", nullptr, L"", names.get(), kListSize);
  // A list that did not fit ends in a name cut short: it names no printer.
  // (Windows then returns size - 2, wine size - 1 with the name's own
  // terminator before the last one.)
  const WCHAR *end = names.get() + got;
  if (got >= kListSize - 2) {
    end = names.get() + kListSize - 2;
    while (end > names.get() && !*end) --end;
    while (end > names.get() && end[-1]) --end;
  }
  for (const WCHAR *p = names.get(); p < end && *p; p += tv::Len(p) + 1)
    Tavona_AddBoxEntry(box, p, 0, -1, TAVONA_ADD_UNIQUE);
  if (!preselect) return;
  // "name,driver,port" as the default printer entry reads: the last field
  // is cut off.
  tv::HeapPtr<WCHAR> wanted(tv::DuplicateWideString(preselect));
  if (!wanted) return;
  int comma = -1;
  for (int i = 0; wanted[i]; ++i)
    if (wanted[i] == ',') comma = i;
  if (comma >= 0) wanted[comma] = 0;
  INT index = Tavona_FindBoxEntry(box, wanted.get(), -1, 0);
  if (index >= 0)
    Tavona_SetBoxIndex(box, index);
  else
    SetWindowTextW(box, wanted.get());
}

void WINAPI Tavona_ExitPrintersBox(void) {}

INT WINAPI Tavona_PrintersBoxGetCurrent(HWND box, WCHAR *buffer, INT size) {
  return Tavona_GetBoxEntry(box, -1, buffer, size);
}

INT WINAPI Tavona_IsPrinterAvailable(const WCHAR *printer) {
  WCHAR entry[500] = {};
  if (tv::IsBlank(printer))
    GetProfileStringW(L"windows", L"device", L"", entry, 500);
  else
    GetProfileStringW(L"Devices", printer, L"", entry, 500);
  return tv::IsBlank(entry) ? 0 : 1;
}

void WINAPI Tavona_GetPrinterByName(const WCHAR *printer, WCHAR *port, INT portSize,
                                    WCHAR *driver, INT driverSize) {
  if (!printer || !port || !driver || portSize < 1 || driverSize < 1) return;
  port[0] = driver[0] = 0;
  WCHAR entry[500] = {};
  GetProfileStringW(L"Devices", printer, L"", entry, 500);
  EntryField(entry, 0, driver, driverSize);
  EntryField(entry, 1, port, portSize);
}

INT WINAPI Tavona_GetPrinterDriver(const WCHAR *printer, const WCHAR *, WCHAR *buffer, INT size) {
  if (!printer) return -1;
  WCHAR entry[300] = {};
  GetProfileStringW(L"Devices", printer, L"", entry, 300);
  if (!entry[0]) return -1;
  if (buffer && size > 0) EntryField(entry, 0, buffer, size);
  return 0;
}

INT WINAPI Tavona_GetStandardPrinter(WCHAR *name, INT nameSize, WCHAR *port, INT portSize,
                                     WCHAR *driver, INT driverSize) {
  WCHAR printer[260];
  if (!DefaultPrinterName(printer)) return 0;
  WCHAR entry[260] = {};
  GetProfileStringW(L"devices", printer, L"", entry, 260);
  // Split at the first ",": no comma makes it all driver.
  int comma = 0;
  while (entry[comma] && entry[comma] != ',') ++comma;
  const WCHAR *portText = entry[comma] ? entry + comma + 1 : L"";
  entry[comma] = 0;
  if (name && nameSize > 0) tv::BoundedCopy(name, printer, nameSize);
  if (port && portSize > 0) tv::BoundedCopy(port, portText, portSize);
  if (driver && driverSize > 0) tv::BoundedCopy(driver, entry, driverSize);
  return 1;
}

INT WINAPI Tavona_GetPrinterDevmode(const WCHAR *printer, const WCHAR *, const WCHAR *,
                                    DEVMODEW *buffer, INT bufferBytes) {
  WCHAR standard[260];
  if (!printer) {
    if (!Tavona_GetStandardPrinter(standard, 260, nullptr, 0, nullptr, 0)) {
      tv::ReportError(IDS_ERR_NO_DEFAULT_PRINTER);
      return 0;
    }
    for (WCHAR *p = standard; *p; ++p)
      if (*p == ',') *p = 0;
    printer = standard;
  }
  // DocumentPropertiesW wants the name writable.
  tv::HeapPtr<WCHAR> name(tv::DuplicateWideString(printer));
  if (!name) return 0;
  tv::unique_hprinter handle;
  OpenPrinterW(name.get(), handle.put(), nullptr);
  LONG size = DocumentPropertiesW(nullptr, handle.get(), name.get(), nullptr, nullptr, 0);
  if (size <= 0) {
    tv::ReportError(IDS_ERR_PRINTER_DEVMODE);
    return 0;
  }
  if (!buffer) return size;
  if (size > bufferBytes) return 0;
  if (DocumentPropertiesW(nullptr, handle.get(), name.get(), buffer, nullptr, DM_OUT_BUFFER) !=
      IDOK) {
    tv::ReportError(IDS_ERR_PRINTER_DEVMODE, name.get());
    return 0;
  }
  return size;
}

void WINAPI Tavona_InitPrinterBinsBox(HWND box, const WCHAR *printer, const WCHAR *port,
                                      INT select, UINT flags) {
  if (!box) return;
  WCHAR pattern[kBinNameSize + 1], standard[kBinNameSize + 1];
  LoadString24(IDS_BIN_UNNAMED, pattern);
  LoadString24(IDS_BIN_DEFAULT, standard);
  SendMessageW(box, CB_RESETCONTENT, 0, 0);
  if (flags & TAVONA_BINS_DEFAULT) Tavona_AddBoxEntry(box, standard, -1, -1, 0);
  Bins bins;
  if (printer && bins.Read(printer, port)) {
    for (int i = 0; i < bins.count; ++i) {
      WCHAR name[kBinNameSize + 1];
      bins.Name(i, pattern, name);
      Tavona_AddBoxEntry(box, name, bins.ids[i], -1, 0);
    }
  }
  // The last entry with the wanted bin wins.
  INT count = Tavona_GetBoxCount(box);
  INT found = -1;
  for (INT i = 0; i < count; ++i)
    if (Tavona_GetItemData(box, i) == select) found = i;
  if (found >= 0) Tavona_SetBoxIndex(box, found);
}

INT WINAPI Tavona_PrinterBinsBoxGetCurrent(HWND box) {
  if (!box) return -2;
  LRESULT index = SendMessageW(box, CB_GETCURSEL, 0, 0);
  if (index < 0) return -2;
  return static_cast<INT>(SendMessageW(box, CB_GETITEMDATA, static_cast<WPARAM>(index), 0));
}

void WINAPI Tavona_InitPrinterBinsLv(HWND listView, const WCHAR *printer, const WCHAR *) {
  if (!listView) return;
  WCHAR pattern[kBinNameSize + 1];
  LoadString24(IDS_BIN_UNNAMED, pattern);
  SendMessageW(listView, LVM_DELETEALLITEMS, 0, 0);
  Bins bins;
  if (!printer || !bins.Read(printer, nullptr)) return;
  for (int i = 0; i < bins.count; ++i) {
    WCHAR name[kBinNameSize + 1], id[16];
    bins.Name(i, pattern, name);
    tv::Format(id, 16, L"%d", static_cast<int>(bins.ids[i]));
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = static_cast<int>(SendMessageW(listView, LVM_GETITEMCOUNT, 0, 0));
    item.pszText = name;
    int row = static_cast<int>(
        SendMessageW(listView, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
    if (row < 0) return;
    item.iSubItem = 1;
    item.pszText = id;
    SendMessageW(listView, LVM_SETITEMTEXTW, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
  }
}

INT WINAPI Tavona_BinInfoDialog(HWND owner) {
  BinInfo info;
  tv::RunDialog(IDD_BIN_INFO, BinInfoProc, reinterpret_cast<LPARAM>(&info), owner);
  return 2;
}

INT WINAPI Tavona_PresetPaperFormatsBox(HWND box, HKEY root, const WCHAR *key,
                                        const WCHAR *subkey) {
  WCHAR path[500] = {};
  tv::Appender a(path, 500);
  a.Append(key ? key : L"");
  if (subkey) {
    a.Append(L"\\");
    a.Append(subkey);
  }
  if (key && Tavona_IsRegistryKeyAvailable(root, path, nullptr, nullptr)) {
    tv::unique_hkey k;
    if (RegOpenKeyExW(root, path, 0, KEY_ALL_ACCESS, k.put()) != ERROR_SUCCESS) return 0;
    for (DWORD i = 0;; ++i) {
      WCHAR name[200];
      WCHAR data[101];  // 200 bytes, and a terminator of our own
      DWORD nameSize = 200, dataBytes = 200, type = 0;
      if (RegEnumValueW(k.get(), i, name, &nameSize, nullptr, &type,
                        reinterpret_cast<BYTE *>(data), &dataBytes) != ERROR_SUCCESS)
        break;
      data[dataBytes / sizeof(WCHAR)] = 0;
      if (type != REG_SZ && type != REG_EXPAND_SZ) data[0] = 0;
      if (Tavona_AddBoxEntry(box, name, tv::print::PaperFromText(data), -1, TAVONA_ADD_UNIQUE) < 0)
        break;
    }
    return 1;
  }
  for (const auto &f : tv::print::kPaperFormats)
    Tavona_AddBoxEntry(box, f.name, tv::print::PackPaper(f.first, f.second), -1,
                       TAVONA_ADD_UNIQUE);
  return 1;
}

INT WINAPI Tavona_GetPaperFormatsBoxEntry(HWND box, INT index, INT *first, INT *second) {
  INT a, b;
  tv::print::UnpackPaper(Tavona_GetItemData(box, index), a, b);
  if (first) *first = a;
  if (second) *second = b;
  return 1;
}

INT WINAPI Tavona_SelectPaperFormatsBoxEntry(HWND box, INT width, INT height) {
  INT count = Tavona_GetBoxCount(box);
  for (INT i = 0; i < count; ++i) {
    if (tv::print::PaperMatches(Tavona_GetItemData(box, i), width, height)) {
      Tavona_SetBoxIndex(box, i);
      return 1;
    }
  }
  Tavona_SetBoxIndex(box, -1);
  return 1;
}

INT WINAPI Tavona_GetPhysicalPrintablePage(HDC dc, RECT *rect) {
  if (!rect) return 0;
  rect->left = GetDeviceCaps(dc, PHYSICALOFFSETX);
  rect->top = GetDeviceCaps(dc, PHYSICALOFFSETY);
  rect->right = rect->left + GetDeviceCaps(dc, PHYSICALWIDTH);
  rect->bottom = rect->top + GetDeviceCaps(dc, PHYSICALHEIGHT);
  return rect->bottom;
}
