// List view helpers: columns from definition texts, the list text format in
// buffers and files (walks in controls/listtext.h), registry copies of
// two-column lists, and small row, selection and column operations. The
// list view is driven only through its messages.
#include <tavona/controls.h>
#include <tavona/settings.h>

#include <commctrl.h>

#include "controls/listtext.h"
#include "frame/alloc.h"
#include "frame/handles.h"
#include "frame/report.h"
#include "base/wstr.h"
#include "tvres.h"

namespace {

using tv::lists::Span;

constexpr int kMoveTextSize = 1000;  // moving rows and swapping columns
constexpr int kSearchSize = 500;
constexpr int kRegistryNameSize = 200;
constexpr int kRegistryDataBytes = 200;
constexpr UINT kDeleteSelectFollowing = 8;
constexpr UINT kSwapSelectedOnly = 1;
constexpr UINT kFindPrefix = 16;
constexpr UINT kFindIgnoreCase = 32;

int ItemCount(HWND lv) { return static_cast<int>(SendMessageW(lv, LVM_GETITEMCOUNT, 0, 0)); }

int ColumnCount(HWND lv) {
  HWND header = reinterpret_cast<HWND>(SendMessageW(lv, LVM_GETHEADER, 0, 0));
  return header ? static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0)) : 0;
}

int NextSelected(HWND lv, int after) {
  return static_cast<int>(
      SendMessageW(lv, LVM_GETNEXTITEM, static_cast<WPARAM>(after), MAKELPARAM(LVNI_SELECTED, 0)));
}

// A row argument below 0 names the first selected row; -1 when there is
// none.
int RowOrSelected(HWND lv, int row) { return row < 0 ? NextSelected(lv, -1) : row; }

bool IsSelected(HWND lv, int row) {
  return (SendMessageW(lv, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) &
          LVIS_SELECTED) != 0;
}

LRESULT SetState(HWND lv, int row, UINT state) {
  LVITEMW item = {};
  item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  item.state = state;
  return SendMessageW(lv, LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                      reinterpret_cast<LPARAM>(&item));
}

// LVM_GETITEMTEXTW into out[size]; the text is cut, and out always
// terminated. Returns the length.
int GetText(HWND lv, int row, int column, WCHAR *out, int size) {
  out[0] = 0;
  LVITEMW item = {};
  item.iSubItem = column;
  item.pszText = out;
  item.cchTextMax = size;
  int n = static_cast<int>(
      SendMessageW(lv, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item)));
  out[size - 1] = 0;
  return n < 0 ? 0 : (n > size - 1 ? size - 1 : n);
}

BOOL SetText(HWND lv, int row, int column, const WCHAR *text) {
  LVITEMW item = {};
  item.iSubItem = column;
  item.pszText = const_cast<WCHAR *>(text ? text : L"");
  return static_cast<BOOL>(
      SendMessageW(lv, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item)));
}

int InsertRow(HWND lv, int row, const WCHAR *text) {
  LVITEMW item = {};
  item.mask = LVIF_TEXT;
  item.iItem = row;
  item.pszText = const_cast<WCHAR *>(text ? text : L"");
  return static_cast<int>(SendMessageW(lv, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

// Holds the painting of a visible list view during a batch of changes and
// repaints once at the end (wine repaints the header after every column
// otherwise). A list view already hidden or frozen by its caller stays so.
class NoRedraw {
 public:
  explicit NoRedraw(HWND lv)
      : lv_((GetWindowLongPtrW(lv, GWL_STYLE) & WS_VISIBLE) ? lv : nullptr) {
    if (lv_) SendMessageW(lv_, WM_SETREDRAW, FALSE, 0);
  }
  ~NoRedraw() {
    if (!lv_) return;
    SendMessageW(lv_, WM_SETREDRAW, TRUE, 0);
    RedrawWindow(lv_, nullptr, nullptr, RDW_ERASE | RDW_FRAME | RDW_INVALIDATE | RDW_ALLCHILDREN);
  }
  NoRedraw(const NoRedraw &) = delete;
  NoRedraw &operator=(const NoRedraw &) = delete;

 private:
  HWND lv_;
};

// A real list view as the table and target of the walks.
class ListTable {
 public:
  ListTable(HWND lv, int cellSize) : lv_(lv), cellSize_(cellSize), columns_(ColumnCount(lv)) {}
  int Count() { return ItemCount(lv_); }
  bool Selected(int row) { return IsSelected(lv_, row); }
  // A subitem beyond the columns is refused here: the control itself would
  // hand back an empty text for it.
  bool Cell(int row, int column, Span &cell) {
    if (column < 0 || (column > 0 && column >= columns_)) return false;
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = column;
    item.pszText = text_;
    item.cchTextMax = cellSize_;
    text_[0] = 0;
    if (!SendMessageW(lv_, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item))) return false;
    // The control may point pszText at its own copy instead of filling ours.
    const WCHAR *p = item.pszText ? item.pszText : text_;
    cell = Span{p, tv::LenBounded(p, cellSize_ - 1)};
    return true;
  }
  int InsertRow(int row, Span first) {
    WCHAR cell[tv::lists::kCellSize];
    tv::lists::CopyCut(first, cell, tv::lists::kCellSize);
    return ::InsertRow(lv_, row, cell);
  }
  void SetCell(int row, int column, const WCHAR *text) { SetText(lv_, row, column, text); }
  int InsertColumn(int column, const tv::lists::ColumnDef &col) {
    LVCOLUMNW c = {};
    c.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT;
    c.fmt = col.align == tv::lists::Align::kCenter  ? LVCFMT_CENTER
            : col.align == tv::lists::Align::kRight ? LVCFMT_RIGHT
                                                    : LVCFMT_LEFT;
    c.cx = col.width;
    c.pszText = const_cast<WCHAR *>(col.title);
    int r = static_cast<int>(SendMessageW(lv_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column),
                                          reinterpret_cast<LPARAM>(&c)));
    if (r >= 0) ++columns_;
    return r;
  }

 private:
  HWND lv_;
  int cellSize_;
  int columns_;
  WCHAR text_[tv::lists::kCellSize];
};

// Cells as UTF-16LE, the single byte 0x09 between them, CR LF as UTF-16 at
// row ends; written in pieces.
class FileSink {
 public:
  explicit FileSink(HANDLE file) : file_(file) {}
  ~FileSink() { Flush(); }
  FileSink(const FileSink &) = delete;
  FileSink &operator=(const FileSink &) = delete;
  void Tab() { Put("\x09", 1); }
  void Text(Span s) {
    for (int i = 0; i < s.len; ++i) {
      char unit[2] = {static_cast<char>(s.text[i] & 0xFF), static_cast<char>(s.text[i] >> 8)};
      Put(unit, 2);
    }
  }
  void RowEnd() { Put("\r\0\n\0", 4); }
  void EmptyRows(int64_t n) {
    for (; n > 0; --n) RowEnd();
  }
  bool Full() const { return false; }

 private:
  void Put(const char *p, int n) {
    if (used_ + n > static_cast<int>(sizeof buffer_)) Flush();
    for (int i = 0; i < n; ++i) buffer_[used_++] = p[i];
  }
  void Flush() {
    DWORD written = 0;
    if (used_ > 0) WriteFile(file_, buffer_, static_cast<DWORD>(used_), &written, nullptr);
    used_ = 0;
  }
  HANDLE file_;
  char buffer_[16384];
  int used_ = 0;
};

class FileSource : public tv::lists::ByteSource {
 public:
  explicit FileSource(HANDLE file) : file_(file) {}
  int Read(BYTE *dst, int bytes) override {
    DWORD got = 0;
    if (!ReadFile(file_, dst, static_cast<DWORD>(bytes), &got, nullptr)) return 0;
    return static_cast<int>(got);
  }

 private:
  HANDLE file_;
};

void Upper(WCHAR *s) {
  int n = tv::Len(s);
  if (n > 0) CharUpperBuffW(s, static_cast<DWORD>(n));
}

// Exchanges the texts of columns first..last (those that exist) between
// rows a and b.
void ExchangeRows(HWND lv, int a, int b, int firstColumn, int lastColumn, int columns) {
  WCHAR ta[kMoveTextSize], tb[kMoveTextSize];
  int last = columns > 1 ? columns - 1 : 0;
  if (lastColumn < last) last = lastColumn;
  for (int column = firstColumn > 0 ? firstColumn : 0; column <= last; ++column) {
    GetText(lv, a, column, ta, kMoveTextSize);
    GetText(lv, b, column, tb, kMoveTextSize);
    SetText(lv, a, column, tb);
    SetText(lv, b, column, ta);
  }
}

}  // namespace

// ---- Serialisation -----------------------------------------------------------

INT WINAPI Tavona_ListView_SaveToBuffer(HWND lv, WCHAR *buffer, INT size, INT firstRow,
                                        INT lastRow, INT firstColumn, INT lastColumn,
                                        UINT flags) {
  if (!buffer || size < 1 || !lv) return -1;
  buffer[0] = 0;
  ListTable table(lv, tv::lists::kCellSize);
  tv::lists::BufferSink out(buffer, size, (flags & tv::lists::kSaveCrLf) != 0);
  return tv::lists::SaveRows(table, out, firstRow, lastRow, firstColumn, lastColumn, flags,
                             tv::lists::Clamp::kBuffer);
}

INT WINAPI Tavona_ListView_CalculateBuffer(HWND lv, INT firstRow, INT lastRow, INT firstColumn,
                                           INT lastColumn, UINT flags) {
  if (!lv) return 0;
  ListTable table(lv, tv::lists::kCellSize);
  tv::lists::CountSink out((flags & tv::lists::kSaveCrLf) != 0);
  tv::lists::SaveRows(table, out, firstRow, lastRow, firstColumn, lastColumn, flags,
                      tv::lists::Clamp::kBuffer);
  return out.Count();
}

INT WINAPI Tavona_ListView_SaveToFile(HWND lv, const WCHAR *file, INT firstRow, INT lastRow,
                                      INT firstColumn, INT lastColumn, UINT flags) {
  if (!lv) return -1;
  tv::unique_hfile f(CreateFileW(file ? file : L"", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                 FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!f) {
    tv::ReportError(IDS_ERR_LIST_SAVE, file ? file : L"");
    return -1;
  }
  ListTable table(lv, tv::lists::kFileCellSize);
  FileSink out(f.get());
  return tv::lists::SaveRows(table, out, firstRow, lastRow, firstColumn, lastColumn,
                             flags & ~tv::lists::kSaveCrLf, tv::lists::Clamp::kFile);
}

INT WINAPI Tavona_ListView_LoadFromBuffer(HWND lv, const WCHAR *buffer, INT firstRow,
                                          INT firstColumn) {
  if (!lv || !buffer) return -1;
  ListTable table(lv, tv::lists::kCellSize);
  NoRedraw quiet(lv);
  tv::lists::LoadBuffer(table, buffer, firstRow, firstColumn);
  return 0;
}

INT WINAPI Tavona_ListView_LoadFromFileExtended(HWND lv, const WCHAR *file, UINT flags) {
  if (!lv) return 0;
  if (!(flags & tv::lists::kLoadKeepRows)) SendMessageW(lv, LVM_DELETEALLITEMS, 0, 0);
  if (!file) return 0;
  tv::unique_hfile f(CreateFileW(file, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE |
                                 FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                 FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  if (!f) return 0;
  tv::HeapPtr<WCHAR> line(tv::AllocWideChars(tv::lists::kLineSize));
  if (!line) return 0;
  FileSource source(f.get());
  tv::lists::LineReader reader(source);
  ListTable table(lv, tv::lists::kCellSize);
  NoRedraw quiet(lv);
  return tv::lists::LoadLines(table, reader, line.get(), flags);
}

INT WINAPI Tavona_ListView_LoadFromFile(HWND lv, const WCHAR *file) {
  return Tavona_ListView_LoadFromFileExtended(lv, file, 0);
}

INT WINAPI Tavona_ListView_CreateColumns(HWND lv, INT firstColumn, const WCHAR *definition) {
  if (!definition) return 0;
  if (!lv) return firstColumn;
  ListTable table(lv, tv::lists::kCellSize);
  NoRedraw quiet(lv);
  return tv::lists::CreateColumns(table, firstColumn, definition, tv::Len(definition));
}

INT WINAPI Tavona_ListView_GetColumnWidths(HWND lv, INT firstColumn, INT lastColumn,
                                           WCHAR *buffer, INT size) {
  if (!buffer || size < 1) return 0;
  buffer[0] = 0;
  if (!lv || firstColumn < 0) return 0;
  int columns = ColumnCount(lv), written = 0;
  tv::Appender out(buffer, size);
  for (int64_t c = firstColumn; c <= lastColumn && c < columns; ++c) {
    WCHAR number[16];
    int n = tv::Format(number, 16, written ? L",%d" : L"%d",
                       static_cast<int>(SendMessageW(lv, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(c), 0)));
    if (out.Length() + n >= size) break;  // whole numbers only
    out.Append(number, n);
    ++written;
  }
  return written;
}

INT WINAPI Tavona_ListView_SetColumnWidths(HWND lv, INT firstColumn, const WCHAR *widths) {
  if (!lv || !widths) return 0;
  INT result = 0;
  int width = 0;
  const WCHAR *cursor = widths;
  for (int64_t column = firstColumn; column <= 0x7FFFFFFF && tv::lists::NextWidth(cursor, width);
       ++column) {
    result = static_cast<INT>(SendMessageW(lv, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column),
                                           MAKELPARAM(width, 0)));
    if (!result) break;
  }
  return result;
}

LONG WINAPI Tavona_ListView_To_Registry(HWND lv, HKEY root, const WCHAR *key) {
  Tavona_DeleteRegistryKey(root, key, nullptr, nullptr);
  int count = lv ? ItemCount(lv) : 0;
  if (count < 1) return count;
  LONG result = 0;
  WCHAR name[tv::lists::kFileCellSize], data[tv::lists::kFileCellSize];
  for (int row = 0; row < count; ++row) {
    result = GetText(lv, row, 0, name, tv::lists::kFileCellSize);
    if (!name[0]) continue;
    GetText(lv, row, 1, data, tv::lists::kFileCellSize);
    result = Tavona_WriteStringToRegistry(root, key, nullptr, nullptr, name, data);
  }
  return result;
}

LONG WINAPI Tavona_Registry_To_ListView(HKEY root, const WCHAR *key, HWND lv) {
  if (lv) SendMessageW(lv, LVM_DELETEALLITEMS, 0, 0);
  tv::unique_hkey k;
  LONG rc = RegOpenKeyExW(root, key ? key : L"", 0, KEY_ALL_ACCESS, k.put());
  if (rc != ERROR_SUCCESS) return rc;
  WCHAR name[kRegistryNameSize];
  WCHAR data[kRegistryDataBytes / sizeof(WCHAR) + 1];  // room for a missing zero
  for (DWORD index = 0; lv;) {
    DWORD nameLen = kRegistryNameSize, dataLen = kRegistryDataBytes;
    name[0] = 0;
    for (WCHAR &c : data) c = 0;
    if (RegEnumValueW(k.get(), index, name, &nameLen, nullptr, nullptr,
                      reinterpret_cast<BYTE *>(data), &dataLen) != ERROR_SUCCESS)
      break;
    int row = InsertRow(lv, static_cast<int>(index), name);
    if (row < 0) break;
    SetText(lv, row, 1, data);  // the raw data as text, whatever the type
    index = static_cast<DWORD>(row) + 1;
  }
  return RegCloseKey(k.release());
}

// ---- Rows, selection, columns --------------------------------------------

INT WINAPI Tavona_ListView_DeleteColumns(HWND lv, INT column, INT count) {
  if (!lv) return 0;
  if (count < 0) count = 30000;
  NoRedraw quiet(lv);
  INT deleted = 0;
  while (deleted < count && SendMessageW(lv, LVM_DELETECOLUMN, static_cast<WPARAM>(column), 0))
    ++deleted;
  return deleted;
}

INT WINAPI Tavona_ListView_DeleteSelectedItems(HWND lv, UINT flags) {
  if (!lv) return 0;
  INT deleted = 0, firstDeleted = -1;
  for (int row = NextSelected(lv, -1); row >= 0; row = NextSelected(lv, row - 1)) {
    if (!SendMessageW(lv, LVM_DELETEITEM, static_cast<WPARAM>(row), 0)) break;
    if (firstDeleted < 0) firstDeleted = row;
    ++deleted;
  }
  // The row that took the place of the first deleted one, else the last.
  if ((flags & kDeleteSelectFollowing) && deleted > 0) {
    int count = ItemCount(lv);
    if (count > 0) {
      int row = firstDeleted < count ? firstDeleted : count - 1;
      SetState(lv, row, LVIS_SELECTED | LVIS_FOCUSED);
      SendMessageW(lv, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    }
  }
  return deleted;
}

INT WINAPI Tavona_ListView_FindText(HWND lv, INT column, const WCHAR *text, UINT flags) {
  if (!lv) return -1;
  WCHAR wanted[kSearchSize], cell[tv::lists::kFileCellSize];
  tv::lists::CopyCut(Span{text, tv::LenBounded(text, kSearchSize)}, wanted, kSearchSize);
  if (flags & kFindIgnoreCase) Upper(wanted);
  int wantedLen = tv::Len(wanted);
  int count = ItemCount(lv);
  for (int row = 0; row < count; ++row) {
    int n = GetText(lv, row, column, cell, tv::lists::kFileCellSize);
    if (flags & kFindIgnoreCase) Upper(cell);
    bool match = (flags & kFindPrefix) ? n >= wantedLen && tv::EqualN(cell, wanted, wantedLen)
                                       : tv::Compare(cell, wanted) == 0;
    if (match) return row;
  }
  return -1;
}

INT WINAPI Tavona_ListView_GetFirstSelectedItem(HWND lv) { return lv ? NextSelected(lv, -1) : -1; }

INT WINAPI Tavona_ListView_GetItemImageIndex(HWND lv, INT row) {
  if (!lv || (row = RowOrSelected(lv, row)) < 0) return 0;
  LVITEMW item = {};
  item.mask = LVIF_IMAGE;
  item.iItem = row;
  return SendMessageW(lv, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)) ? item.iImage : 0;
}

LPARAM WINAPI Tavona_ListView_GetItemParam(HWND lv, INT row) {
  if (!lv || (row = RowOrSelected(lv, row)) < 0) return 0;
  LVITEMW item = {};
  item.mask = LVIF_PARAM;
  item.iItem = row;
  return SendMessageW(lv, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)) ? item.lParam : 0;
}

BOOL WINAPI Tavona_ListView_SetItemParam(HWND lv, INT row, LPARAM value) {
  if (!lv || (row = RowOrSelected(lv, row)) < 0) return FALSE;
  LVITEMW item = {};
  item.mask = LVIF_PARAM;
  item.iItem = row;
  item.lParam = value;
  return static_cast<BOOL>(SendMessageW(lv, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

INT WINAPI Tavona_ListView_GetItemText(HWND lv, INT row, INT column, WCHAR *buffer, INT size) {
  if (!buffer || size < 1) return 0;
  buffer[0] = 0;
  if (!lv || (row = RowOrSelected(lv, row)) < 0) return 0;
  return GetText(lv, row, column, buffer, size);
}

BOOL WINAPI Tavona_ListView_SetItemText(HWND lv, INT row, INT column, const WCHAR *text) {
  if (!lv || (row = RowOrSelected(lv, row)) < 0) return FALSE;
  return SetText(lv, row, column, text);
}

INT WINAPI Tavona_ListView_InsertItem(HWND lv, INT row, const WCHAR *text, INT image,
                                      LPARAM param) {
  if (!lv) return 0;
  if (row < 0) row = ItemCount(lv);
  LVITEMW item = {};
  item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
  item.iItem = row;
  item.pszText = const_cast<WCHAR *>(text ? text : L"");
  item.iImage = image;
  item.lParam = param;
  if (SendMessageW(lv, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)) < 0) return -1;
  return row;
}

INT WINAPI Tavona_ListView_GetSelectedItemCount(HWND lv) {
  return lv ? static_cast<INT>(SendMessageW(lv, LVM_GETSELECTEDCOUNT, 0, 0)) : 0;
}

INT WINAPI Tavona_ListView_IsItemSelected(HWND lv, INT row) {
  return lv && row >= 0 && IsSelected(lv, row) ? 1 : 0;
}

BOOL WINAPI Tavona_ListView_SelectItem(HWND lv, INT row) {
  return lv && row >= 0 ? static_cast<BOOL>(SetState(lv, row, LVIS_SELECTED | LVIS_FOCUSED))
                        : FALSE;
}

BOOL WINAPI Tavona_ListView_UnselectItem(HWND lv, INT row) {
  return lv && row >= 0 ? static_cast<BOOL>(SetState(lv, row, 0)) : FALSE;
}

void WINAPI Tavona_ListView_SelectAll(HWND lv) {
  if (!lv) return;
  int count = ItemCount(lv);
  for (int row = 0; row < count; ++row) SetState(lv, row, LVIS_SELECTED | LVIS_FOCUSED);
}

void WINAPI Tavona_ListView_UnselectAll(HWND lv) {
  if (!lv) return;
  for (int row = NextSelected(lv, -1); row >= 0; row = NextSelected(lv, row)) SetState(lv, row, 0);
}

INT WINAPI Tavona_ListView_MoveSelectedItemsDown(HWND lv, INT firstColumn, INT lastColumn) {
  if (!lv) return -1;
  int count = ItemCount(lv);
  if (count < 1) return count;
  if (IsSelected(lv, count - 1)) return 1;
  if (count == 1) return -1;
  int columns = ColumnCount(lv), lowest = -1;
  for (int r = count - 2; r >= 0; --r) {
    if (!IsSelected(lv, r)) continue;
    ExchangeRows(lv, r, r + 1, firstColumn, lastColumn, columns);
    SetState(lv, r, 0);
    SetState(lv, r + 1, LVIS_SELECTED | LVIS_FOCUSED);
    if (lowest < 0) lowest = r;
  }
  if (lowest < 0) return -1;
  return static_cast<INT>(SendMessageW(lv, LVM_ENSUREVISIBLE, static_cast<WPARAM>(lowest), FALSE));
}

INT WINAPI Tavona_ListView_MoveSelectedItemsUp(HWND lv, INT firstColumn, INT lastColumn) {
  if (!lv) return -1;
  int count = ItemCount(lv);
  if (count < 1) return count;
  if (IsSelected(lv, 0)) return 1;
  if (count == 1) return -1;
  int columns = ColumnCount(lv), topmost = -1;
  for (int r = 1; r < count; ++r) {
    if (!IsSelected(lv, r)) continue;
    ExchangeRows(lv, r, r - 1, firstColumn, lastColumn, columns);
    SetState(lv, r, 0);
    SetState(lv, r - 1, LVIS_SELECTED | LVIS_FOCUSED);
    if (topmost < 0) topmost = r;
  }
  if (topmost < 0) return -1;
  return static_cast<INT>(SendMessageW(lv, LVM_ENSUREVISIBLE, static_cast<WPARAM>(topmost), FALSE));
}

INT WINAPI Tavona_ListView_SwapColumns(HWND lv, INT columnA, INT columnB, UINT flags) {
  if (!lv) return 0;
  int count = ItemCount(lv), swapped = 0;
  for (int row = 0; row < count; ++row) {
    if ((flags & kSwapSelectedOnly) && !IsSelected(lv, row)) continue;
    WCHAR a[kMoveTextSize], b[kMoveTextSize];
    GetText(lv, row, columnA, a, kMoveTextSize);
    GetText(lv, row, columnB, b, kMoveTextSize);
    SetText(lv, row, columnA, b);
    SetText(lv, row, columnB, a);
    ++swapped;
  }
  return swapped;
}
