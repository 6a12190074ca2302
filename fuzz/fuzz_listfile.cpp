// Arbitrary bytes as a list file (read in pieces of any size), as a list
// text buffer, and the table they give saved again into a buffer of any
// size: lines and cells keep their limits, every line is one row, and the
// save stays inside its buffer and counts what it writes.
#include <string>
#include <vector>

#include "controls/listtext.h"
#include "fuzzutil.h"

namespace {

using namespace tv::lists;

struct Table {
  std::vector<std::vector<fuzz::WStr>> rows;
  int columns = 0;

  int Count() { return static_cast<int>(rows.size()); }
  bool Selected(int row) { return row % 2 == 0; }
  bool Cell(int row, int column, Span &cell) {
    if (row < 0 || row >= Count() || column < 0 || column >= columns) return false;
    const fuzz::WStr &s = rows[row][column];
    cell = Span{s.c_str(), static_cast<int>(s.size())};
    return true;
  }
  int InsertRow(int row, Span first) {
    fuzz::Check(first.len >= 0 && first.len < kCellSize, "first cell within its limit");
    if (row > Count()) row = Count();
    rows.insert(rows.begin() + row, std::vector<fuzz::WStr>(columns));
    if (columns) rows[row][0] = fuzz::WStr(first.text ? first.text : u"", first.len);
    return row;
  }
  void SetCell(int row, int column, const WCHAR *text) {
    int n = tv::Len(text);
    fuzz::Check(n < kCellSize, "cell within its limit");
    if (row >= 0 && row < Count() && column >= 0 && column < columns) rows[row][column] = text;
  }
  int InsertColumn(int column, const ColumnDef &col) {
    fuzz::Check(tv::Len(col.title) < kTitleSize && col.width > 0, "column definition");
    if (columns >= 64) return -1;
    ++columns;
    for (auto &r : rows) r.resize(columns);
    return column;
  }
};

class Pieces : public ByteSource {
 public:
  Pieces(const uint8_t *data, size_t size, int piece) : p_(data), end_(data + size), piece_(piece) {}
  int Read(BYTE *dst, int bytes) override {
    int n = static_cast<int>(end_ - p_);
    if (n > bytes) n = bytes;
    if (n > piece_) n = piece_;
    for (int i = 0; i < n; ++i) dst[i] = p_[i];
    p_ += n;
    return n;
  }

 private:
  const uint8_t *p_, *end_;
  int piece_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size < 3) return 0;
  int piece = 1 + data[0] % 64;
  UINT flags = data[1] & (kLoadColumns | kSaveSelected | kSaveCrLf);
  int outSize = data[2] % 96;
  int first = static_cast<int>(data[0] % 5) - 2, last = static_cast<int>(data[1] % 7) - 1;
  int loadRow = data[0] % 4, loadColumn = data[1] % 3;
  data += 3;
  size -= 3;

  // The file: count the lines as fgetws would (29999 units, LF included).
  size_t units = size / 2, lines = 0, len = 0;
  for (size_t i = 0; i < units; ++i) {
    WCHAR u = static_cast<WCHAR>(data[2 * i] | (data[2 * i + 1] << 8));
    if (++len == kLineSize - 1 || u == '\n') ++lines, len = 0;
  }
  if (len) ++lines;
  Table t;
  t.columns = (flags & kLoadColumns) ? 0 : 3;
  Pieces source(data, size, piece);
  LineReader reader(source);
  std::vector<WCHAR> line(kLineSize);
  int rows = LoadLines(t, reader, line.data(), flags & kLoadColumns);
  size_t expected = lines - ((flags & kLoadColumns) && lines ? 1 : 0);
  fuzz::Check(rows == t.Count() && static_cast<size_t>(rows) == expected, "one row per line");

  // The same units as a list text (up to the first zero) loaded on top.
  fuzz::WStr text;
  for (size_t i = 0; i < units && text.size() < 4000; ++i) {
    WCHAR u = static_cast<WCHAR>(data[2 * i] | (data[2 * i + 1] << 8));
    if (!u) break;
    text += u;
  }
  LoadBuffer(t, text.c_str(), loadRow, loadColumn);

  // Saved again into an exact buffer.
  fuzz::Exact<WCHAR> out(static_cast<size_t>(outSize) + 1);
  out.get()[outSize] = 0x7777;
  BufferSink sink(out.get(), outSize, (flags & kSaveCrLf) != 0);
  SaveRows(t, sink, first, last, 0, 4, flags, Clamp::kBuffer);
  fuzz::Check(out.get()[outSize] == 0x7777, "nothing written past the buffer");
  if (outSize > 0) {
    int written = tv::LenBounded(out.get(), outSize);
    fuzz::Check(written < outSize, "terminated");
    CountSink count((flags & kSaveCrLf) != 0);
    SaveRows(t, count, first, last, 0, 4, flags, Clamp::kBuffer);
    fuzz::Check(count.Count() >= written, "count covers the text");
    if (count.Count() < outSize) fuzz::Check(count.Count() == written, "count equals the text");
  }
  return 0;
}
