// A 100,000-row, 5-column list view saved to a buffer and to a file and
// loaded back, against plain code that reads the cells with
// LVM_GETITEMTEXTW and writes them with one appender (and for loading,
// splits at TAB and LF and inserts and sets the cells). Then the same
// routines on 10,000 rows ten times against 100,000 rows once: a ratio near
// 1 means the time grows with the rows, not faster.
#include <tavona/controls.h>

#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "bench.h"
#include "base/wstr.h"

namespace {

constexpr int kColumns = 5;

HWND MakeList(int rows) {
  HWND lv = CreateWindowW(WC_LISTVIEWW, L"", WS_POPUP | LVS_REPORT, 0, 0, 600, 400, nullptr,
                          nullptr, nullptr, nullptr);
  Tavona_ListView_CreateColumns(lv, 0, L"Name|100\tSize|60|R\tDate|80\tKind|60\tNote|200");
  SendMessageW(lv, LVM_SETITEMCOUNT, rows, 0);
  SendMessageW(lv, WM_SETREDRAW, FALSE, 0);
  for (int r = 0; r < rows; ++r) {
    std::wstring name = L"file" + std::to_wstring(r) + L".txt";
    Tavona_ListView_InsertItem(lv, r, name.c_str(), 0, r);
    Tavona_ListView_SetItemText(lv, r, 1, std::to_wstring(r * 37 % 100000).c_str());
    Tavona_ListView_SetItemText(lv, r, 2, L"2026-11-23 08:15");
    Tavona_ListView_SetItemText(lv, r, 3, r % 3 ? L"Text" : L"[Binary\tdata]");
    Tavona_ListView_SetItemText(lv, r, 4, L"a note of a few words");
  }
  return lv;
}

// The reference save: every cell with LVM_GETITEMTEXTW, one appender.
int PlainSave(HWND lv, WCHAR *buffer, int size) {
  buffer[0] = 0;
  tv::Appender out(buffer, size);
  int rows = static_cast<int>(SendMessageW(lv, LVM_GETITEMCOUNT, 0, 0));
  WCHAR cell[500];
  for (int r = 0; r < rows; ++r) {
    for (int c = 0; c < kColumns; ++c) {
      if (c) out.Append(WCHAR('\t'));
      LVITEMW item = {};
      item.iSubItem = c;
      item.pszText = cell;
      item.cchTextMax = 500;
      int n = static_cast<int>(SendMessageW(lv, LVM_GETITEMTEXTW, r, LPARAM(&item)));
      out.Append(cell, n);
    }
    out.Append(WCHAR('\n'));
  }
  return out.Length();
}

void PlainSaveFile(HWND lv, const wchar_t *file, std::vector<WCHAR> &buffer) {
  int n = PlainSave(lv, buffer.data(), int(buffer.size()));
  HANDLE h = CreateFileW(file, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  DWORD written = 0;
  WriteFile(h, buffer.data(), DWORD(n * sizeof(WCHAR)), &written, nullptr);
  CloseHandle(h);
}

// The reference load: the whole file at once, split at TAB and LF.
void PlainLoad(HWND lv, const wchar_t *file, std::vector<WCHAR> &buffer) {
  SendMessageW(lv, LVM_DELETEALLITEMS, 0, 0);
  HANDLE h = CreateFileW(file, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  DWORD got = 0;
  ReadFile(h, buffer.data(), DWORD(buffer.size() * sizeof(WCHAR)), &got, nullptr);
  CloseHandle(h);
  WCHAR *p = buffer.data(), *end = p + got / sizeof(WCHAR);
  for (int r = 0; p < end; ++r) {
    int c = 0;
    for (WCHAR *cell = p;; ++p) {
      if (p < end && *p != '\t' && *p != '\n' && *p != '\r') continue;
      WCHAR keep = p < end ? *p : 0;
      if (p < end) *p = 0;
      LVITEMW item = {};
      item.mask = LVIF_TEXT;
      item.iItem = r;
      item.iSubItem = c;
      item.pszText = cell;
      if (c == 0) SendMessageW(lv, LVM_INSERTITEMW, 0, LPARAM(&item));
      else SendMessageW(lv, LVM_SETITEMTEXTW, r, LPARAM(&item));
      ++c;
      if (keep == '\r') ++p;
      if (keep != '\t') {
        ++p;
        break;
      }
      cell = p + 1;
    }
  }
}

}  // namespace

double Seconds(const std::function<void()> &fn) {
  LARGE_INTEGER f, a, b;
  QueryPerformanceFrequency(&f);
  QueryPerformanceCounter(&a);
  fn();
  QueryPerformanceCounter(&b);
  return double(b.QuadPart - a.QuadPart) / double(f.QuadPart);
}

// One run of each side, for work too slow to repeat; reset (not timed)
// runs before each.
void Once(const char *name, const std::function<void()> &reset,
          const std::function<void()> &library, const std::function<void()> &reference) {
  reset();
  double lib = Seconds(library);
  reset();
  double ref = Seconds(reference);
  std::printf("%s: ratio %.2f (library / reference, one run: %.1f s / %.1f s)\n", name,
              ref > 0 ? lib / ref : 0, lib, ref);
  std::fflush(stdout);
}

int main(int argc, char **argv) {
  INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&icc);
  const int rows = argc > 1 ? atoi(argv[1]) : 100000;
  HWND lv = nullptr, small = nullptr;
  lv = MakeList(rows);
  small = MakeList(rows / 10);
  HWND target = MakeList(0);
  int size = Tavona_ListView_CalculateBuffer(lv, 0, -1, 0, kColumns - 1, 0) + 1;
  std::vector<WCHAR> buffer(size), plain(size);
  std::printf("list: %d rows, %d columns, %d characters\n", rows, kColumns, size - 1);

  // A one-column copy of the file reads back cell for cell; the bench file
  // holds CR LF row ends written in UTF-16 by the plain writer.
  wchar_t dir[MAX_PATH];
  GetTempPathW(MAX_PATH, dir);
  std::wstring saved = std::wstring(dir) + L"tv_bench_lists_saved.txt";
  std::wstring text = std::wstring(dir) + L"tv_bench_lists_text.txt";
  Tavona_ListView_SaveToBuffer(lv, buffer.data(), size, 0, -1, 0, kColumns - 1, TAVONA_LV_CRLF);
  {
    std::vector<WCHAR> crlf(size + rows);
    Tavona_ListView_SaveToBuffer(lv, crlf.data(), int(crlf.size()), 0, -1, 0, kColumns - 1,
                                 TAVONA_LV_CRLF);
    HANDLE h = CreateFileW(text.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(h, crlf.data(), DWORD(tv::Len(crlf.data()) * sizeof(WCHAR)), &written, nullptr);
    CloseHandle(h);
  }
  std::vector<WCHAR> loadBuffer(size + rows + 16);

  bench::Compare(
      "Tavona_ListView_SaveToBuffer 100000x5",
      [&] { Tavona_ListView_SaveToBuffer(lv, buffer.data(), size, 0, -1, 0, kColumns - 1, 0); },
      [&] { PlainSave(lv, plain.data(), size); }, 1.5);
  std::printf("  same text: %s\n", tv::Compare(buffer.data(), plain.data()) == 0 ? "yes" : "NO");
  bench::Compare(
      "Tavona_ListView_SaveToFile 100000x5",
      [&] { Tavona_ListView_SaveToFile(lv, saved.c_str(), 0, -1, 0, kColumns - 1, 0); },
      [&] { PlainSaveFile(lv, saved.c_str(), plain); });
  // Linear growth: ten times the rows once against a tenth ten times.
  bench::Compare(
      "SaveToBuffer 100000 rows / 10 x 10000 rows",
      [&] { Tavona_ListView_SaveToBuffer(lv, buffer.data(), size, 0, -1, 0, kColumns - 1, 0); },
      [&] {
        for (int i = 0; i < 10; ++i)
          Tavona_ListView_SaveToBuffer(small, buffer.data(), size, 0, -1, 0, kColumns - 1, 0);
      });

  // Loading: wine's list view takes tens of seconds to insert or delete
  // 100,000 rows, so each side runs once, starting from an empty list.
  auto empty = [&] { SendMessageW(target, LVM_DELETEALLITEMS, 0, 0); };
  Once("Tavona_ListView_LoadFromFile 100000x5", empty,
       [&] { Tavona_ListView_LoadFromFile(target, text.c_str()); },
       [&] { PlainLoad(target, text.c_str(), loadBuffer); });
  std::printf("  rows loaded: %d\n", int(SendMessageW(target, LVM_GETITEMCOUNT, 0, 0)));
  std::wstring smallText = std::wstring(dir) + L"tv_bench_lists_small.txt";
  Tavona_ListView_SaveToFile(small, smallText.c_str(), 0, -1, 0, 0, 0);
  Tavona_ListView_SaveToFile(lv, saved.c_str(), 0, -1, 0, 0, 0);
  Once("LoadFromFile 100000 rows / 10 x 10000 rows", empty,
       [&] { Tavona_ListView_LoadFromFile(target, saved.c_str()); },
       [&] {
         for (int i = 0; i < 10; ++i) {
           empty();  // part of the timing, small next to the loads
           Tavona_ListView_LoadFromFile(target, smallText.c_str());
         }
       });
  SendMessageW(target, LVM_DELETEALLITEMS, 0, 0);
  DeleteFileW(saved.c_str());
  DeleteFileW(text.c_str());
  DeleteFileW(smallText.c_str());
  DestroyWindow(lv);
  DestroyWindow(small);
  DestroyWindow(target);
  return bench::ExitCode();
}
