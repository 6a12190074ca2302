// The list text format without windows: cells separated by TAB, rows by LF,
// separators inside square brackets kept; the save and load walks over any
// table that offers the few operations below. The list view helpers
// (controls/listview.cpp) plug a real list view in; the host tests and the
// fuzzer a table in memory.
#pragma once

#include <tavona/tvbase.h>

#include <cstdint>

#include "base/wstr.h"

namespace tv::lists {

constexpr int kCellSize = 500;      // cells of buffers, list file lines
constexpr int kFileCellSize = 200;  // cells written to files, registry copies, search
constexpr int kRowSize = 1000;      // rows of a buffer being loaded
constexpr int kLineSize = 30000;    // lines of a list file
constexpr int kTitleSize = 100;     // column titles of a definition

constexpr UINT kSaveSelected = 1;
constexpr UINT kSaveCrLf = 64;
constexpr UINT kLoadColumns = 2;
constexpr UINT kLoadKeepRows = 4;

struct Span {
  const WCHAR *text = nullptr;
  int len = 0;
};

// The field at cursor up to the next separator that stands outside square
// brackets ('[' raises a depth, ']' lowers it, a separator splits only
// where the depth is below 1; the depth starts at 0 in every field). The
// cursor moves past the field and its separator. False at the end, so a
// separator at the very end gives no further empty field.
bool NextField(const WCHAR *&cursor, const WCHAR *end, WCHAR separator, Span &field);

// The span cut to size - 1 units, terminated.
void CopyCut(Span s, WCHAR *out, int size);

// The length without the trailing units below U+0020 (CR, LF, TAB...).
int TrimControls(const WCHAR *s, int len);

// One column of a definition text "title|width|alignment": the title cut
// to 99 characters, the width read as _wtoi does (missing, zero or negative
// gives 100), the alignment by its first character, case-sensitive.
enum class Align { kLeft, kRight, kCenter };
struct ColumnDef {
  WCHAR title[kTitleSize];
  int width;
  Align align;
};
void ParseColumn(Span text, ColumnDef &col);

// The width at cursor in a widths text "120,80,200"; false at the end.
bool NextWidth(const WCHAR *&cursor, int &width);

// A list file read as the C runtime's fgetws reads a binary stream: UTF-16LE
// code units up to and including an LF, at most size - 1 of them; a lone
// last byte is no unit.
class ByteSource {
 public:
  // Up to bytes bytes into dst; 0 at the end (or on a failure).
  virtual int Read(BYTE *dst, int bytes) = 0;

 protected:
  ~ByteSource() = default;
};

class LineReader {
 public:
  explicit LineReader(ByteSource &source) : source_(source) {}
  // False when no unit is left. len counts the units stored (zeros among
  // them are stored too, as the runtime does); line is terminated.
  bool Next(WCHAR *line, int size, int &len);

 private:
  bool Unit(WCHAR &unit);
  ByteSource &source_;
  BYTE buffer_[16384];
  int pos_ = 0;
  int end_ = 0;
  bool done_ = false;
};

// ---- Saving ---------------------------------------------------------------
// Table: int Count(); bool Selected(int row); bool Cell(int row, int column,
//   Span &cell) (false when the row or column does not exist; the span stays
//   valid until the next call).
// Sink: void Tab(); void Text(Span); void RowEnd(); void EmptyRows(int64_t n)
//   (n row ends); bool Full() (nothing more can go in: the walk may stop).

enum class Clamp { kBuffer, kFile };

// The row and column walk of the save operations: returns the index of the
// last row visited as the callers return it.
template <class Table, class Sink>
int SaveRows(Table &table, Sink &out, int firstRow, int lastRow, int firstColumn, int lastColumn,
             UINT flags, Clamp clamp) {
  const int count = table.Count();
  // Buffers never go beyond the list; files clamp only a negative last row,
  // so rows beyond the count become empty lines.
  if (lastRow < 0 || (clamp == Clamp::kBuffer && lastRow >= count)) lastRow = count - 1;
  if (lastRow < 0) return 0;
  if (firstRow > lastRow) return firstRow - 1 > 0 ? firstRow - 1 : 0;
  const bool selectedOnly = (flags & kSaveSelected) != 0;
  int64_t row = firstRow;
  const int64_t last = lastRow;
  // Rows before the list: no cell can be fetched, each is an empty line
  // (and never selected).
  if (row < 0) {
    if (!selectedOnly) out.EmptyRows(-row);
    row = 0;
  }
  for (; row <= last && row < count && !out.Full(); ++row) {
    int r = static_cast<int>(row);
    if (selectedOnly && !table.Selected(r)) continue;
    for (int64_t column = firstColumn; column <= lastColumn; ++column) {
      if (column > firstColumn) out.Tab();
      Span cell;
      if (!table.Cell(r, static_cast<int>(column), cell)) break;
      out.Text(cell);
    }
    out.RowEnd();
  }
  if (row <= last && row >= count && !selectedOnly && !out.Full())
    out.EmptyRows(last - row + 1);
  return lastRow;
}

// Into a buffer, emptied first: the text is cut where the buffer ends.
class BufferSink {
 public:
  BufferSink(WCHAR *buffer, int size, bool crlf) : out_(Emptied(buffer, size), size), crlf_(crlf) {}
  void Tab() { Put(TEXT("\t"), 1); }
  void Text(Span s) { Put(s.text, s.len); }
  void RowEnd() { crlf_ ? Put(TEXT("\r\n"), 2) : Put(TEXT("\n"), 1); }
  void EmptyRows(int64_t n) {
    for (; n > 0 && !full_; --n) RowEnd();
  }
  bool Full() const { return full_; }

 private:
  static WCHAR *Emptied(WCHAR *buffer, int size) {
    if (buffer && size > 0) buffer[0] = 0;
    return buffer;
  }
  void Put(const WCHAR *s, int n) {
    if (!full_ && !out_.AppendCut(s, n)) full_ = true;
  }
  Appender out_;
  bool crlf_;
  bool full_ = false;
};

// Counts what a BufferSink of unlimited size would take.
class CountSink {
 public:
  explicit CountSink(bool crlf) : end_(crlf ? 2 : 1) {}
  void Tab() { ++n_; }
  void Text(Span s) { n_ += s.len; }
  void RowEnd() { n_ += end_; }
  void EmptyRows(int64_t n) { n_ += n * end_; }
  bool Full() const { return n_ >= 0x7FFFFFFF; }
  int Count() const { return n_ >= 0x7FFFFFFF ? 0x7FFFFFFF : static_cast<int>(n_); }

 private:
  int64_t n_ = 0;
  int end_;
};

// ---- Loading --------------------------------------------------------------
// Target: int Count(); int InsertRow(int row, Span firstCell) (the index the
//   row got, or -1); void SetCell(int row, int column, const WCHAR *text);
//   int InsertColumn(int column, const ColumnDef &col) (the index, or -1).

// Columns of a definition text (TAB between columns) from firstColumn on;
// returns the index after the last one inserted.
template <class Target>
int CreateColumns(Target &target, int firstColumn, const WCHAR *definition, int len) {
  const WCHAR *cursor = definition, *end = definition + len;
  int next = firstColumn;
  Span text;
  ColumnDef col;
  while (next < 0x7FFFFFFF && NextField(cursor, end, '\t', text)) {
    ParseColumn(text, col);
    if (target.InsertColumn(next, col) < 0) break;
    ++next;
  }
  return next;
}

// The cells of one row into columns firstColumn, firstColumn + 1, ...;
// skipFirst when cell 0 went in with the row already.
template <class Target>
void SetCells(Target &target, int row, int firstColumn, Span text, bool skipFirst) {
  const WCHAR *cursor = text.text, *end = text.text + text.len;
  WCHAR cell[kCellSize];
  Span s;
  for (int64_t column = firstColumn; NextField(cursor, end, '\t', s); ++column) {
    if (skipFirst) {
      skipFirst = false;
      continue;
    }
    if (column > 0x7FFFFFFF) break;
    CopyCut(s, cell, kCellSize);
    target.SetCell(row, static_cast<int>(column), cell);
  }
}

// Rows of a list text into rows firstRow, firstRow + 1, ...: rows at or
// beyond the count read at the start are inserted. A CR before an LF stays
// in the last cell.
template <class Target>
void LoadBuffer(Target &target, const WCHAR *text, int firstRow, int firstColumn) {
  if (firstRow < 0) firstRow = 0;
  if (firstColumn < 0) firstColumn = 0;
  const int count = target.Count();
  const WCHAR *cursor = text, *end = text + Len(text);
  Span row;
  for (int64_t n = firstRow; NextField(cursor, end, '\n', row) && n <= 0x7FFFFFFF; ++n) {
    if (row.len > kRowSize - 1) row.len = kRowSize - 1;
    int index = static_cast<int>(n);
    if (index >= count) {
      index = target.InsertRow(index, Span{});
      if (index < 0) break;
    }
    SetCells(target, index, firstColumn, row, false);
  }
}

// The lines of a list file appended as rows (the first line taken as a
// column definition with kLoadColumns); line is a buffer of kLineSize
// units. Returns the row count afterwards.
template <class Target>
int LoadLines(Target &target, LineReader &reader, WCHAR *line, UINT flags) {
  int len = 0;
  if ((flags & kLoadColumns) && reader.Next(line, kLineSize, len))
    CreateColumns(target, 0, line, LenBounded(line, len));
  int r = target.Count();
  while (reader.Next(line, kLineSize, len)) {
    Span text{line, TrimControls(line, LenBounded(line, len))};
    const WCHAR *cursor = text.text, *end = text.text + text.len;
    Span first;
    WCHAR cell[kCellSize];
    bool hasCell = NextField(cursor, end, '\t', first);
    CopyCut(hasCell ? first : Span{}, cell, kCellSize);
    int index = target.InsertRow(r, Span{cell, Len(cell)});
    if (index < 0) break;
    SetCells(target, index, 0, text, true);
    r = index + 1;
  }
  return r;
}

}  // namespace tv::lists
