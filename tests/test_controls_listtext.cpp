// The list text format on a table in memory: the save walk with its
// deliberate trailing TAB and row ranges, the bracket rule, column
// definitions, and list file lines read as the runtime's fgetws reads them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "controls/listtext.h"
#include "testutil.h"

namespace {

using namespace tv::lists;

WStr S(const char *s) {
  WStr out;
  for (; s && *s; ++s) out += static_cast<WCHAR>(static_cast<unsigned char>(*s));
  return out;
}
std::string Join(const std::vector<WStr> &parts, const char *sep) {
  WStr out;
  for (size_t i = 0; i < parts.size(); ++i) out += (i ? S(sep) : WStr()) + parts[i];
  return Narrow(out);
}

// Rows of cells; a row has as many cells as the table has columns.
struct Table {
  std::vector<std::vector<WStr>> rows;
  std::vector<bool> selected;
  int columns = 0;
  std::vector<WStr> titles;

  int Count() { return static_cast<int>(rows.size()); }
  bool Selected(int row) { return row >= 0 && row < Count() && selected[row]; }
  bool Cell(int row, int column, Span &cell) {
    if (row < 0 || row >= Count() || column < 0 || column >= columns) return false;
    const WStr &s = rows[row][column];
    cell = Span{s.c_str(), std::min(static_cast<int>(s.size()), kCellSize - 1)};
    return true;
  }
  int InsertRow(int row, Span first) {
    row = std::min(row, Count());
    rows.insert(rows.begin() + row, std::vector<WStr>(columns));
    selected.insert(selected.begin() + row, false);
    if (columns) rows[row][0] = WStr(first.text ? first.text : u"", first.len);
    return row;
  }
  void SetCell(int row, int column, const WCHAR *text) {
    if (row >= 0 && row < Count() && column >= 0 && column < columns) rows[row][column] = text;
  }
  int InsertColumn(int column, const ColumnDef &col) {
    titles.push_back(WStr(col.title) + S("/") + S(std::to_string(col.width).c_str()) +
                     S(col.align == Align::kLeft ? "L" : col.align == Align::kRight ? "R" : "C"));
    ++columns;
    for (auto &r : rows) r.resize(columns);
    return column;
  }
  std::string Dump() const {
    std::string out;
    for (const auto &r : rows) out += Join(r, "|") + ";";
    return out;
  }
};

Table TwoByTwo() {
  Table t;
  t.columns = 2;
  t.rows = {{S("a"), S("b")}, {S("c"), S("d")}};
  t.selected = {false, true};
  return t;
}

TEST(ListText, SaveRangesAndFlags) {
  struct Row {
    int first, last, firstCol, lastCol;
    UINT flags;
    const char *text;
    int result;
  } rows[] = {
      {0, 1, 0, 1, kSaveCrLf, "a\tb\r\nc\td\r\n", 1},
      // deliberate: the TAB goes in before the missing column is asked for
      {0, 1, 0, 5, 0, "a\tb\t\nc\td\t\n", 1},
      {0, -1, 1, 1, 0, "b\nd\n", 1},
      {0, 1000, 0, 0, 0, "a\nc\n", 1},  // buffers clamp the last row
      {0, 1, 0, 1, kSaveSelected, "c\td\n", 1},
      {1, 0, 0, 1, 0, "", 0},
      {5, 1, 0, 1, 0, "", 4},             // first row beyond the last: first - 1
      {-2, 0, 0, 1, 0, "\n\na\tb\n", 0},  // the first row is not clamped
      {-2, 0, 0, 1, kSaveSelected, "", 0},
      {0, 1, 1, 0, 0, "\n\n", 1},
  };
  for (const Row &r : rows) {
    Table t = TwoByTwo();
    WCHAR buffer[64] = {'x'};
    BufferSink out(buffer, 64, (r.flags & kSaveCrLf) != 0);
    int result = SaveRows(t, out, r.first, r.last, r.firstCol, r.lastCol, r.flags, Clamp::kBuffer);
    std::string where = "rows " + std::to_string(r.first) + ".." + std::to_string(r.last) +
                        " columns " + std::to_string(r.firstCol) + ".." +
                        std::to_string(r.lastCol) + " flags " + std::to_string(r.flags);
    EXPECT_EQ(Narrow(buffer), Narrow(S(r.text))) << where;
    EXPECT_EQ(result, r.result) << where;
  }
}

// Huge ranges end as soon as nothing more fits (the bounds of every cut are
// the fuzzer's).
TEST(ListText, HugeRangesEnd) {
  Table t = TwoByTwo();
  GuardedBuffer<WCHAR> buffer(9);
  BufferSink out(buffer.data(), 9, false);
  SaveRows(t, out, -0x7FFFFFFF - 1, 1, 0, 0x7FFFFFFF, 0, Clamp::kBuffer);
  EXPECT_EQ(static_cast<int>(buffer.Text().size()), 8);
  CountSink count(true);
  SaveRows(t, count, -0x7FFFFFFF - 1, 0x7FFFFFFF, 0, 1, 0, Clamp::kFile);
  EXPECT_EQ(count.Count(), 0x7FFFFFFF);
}

TEST(ListText, FieldsFollowTheBracketRule) {
  struct Row {
    const char *text;
    WCHAR separator;
    const char *fields;  // joined by '|'
  } rows[] = {
      {"x\t[1\t2]\ty", '\t', "x|[1\t2]|y"}, {"a\t", '\t', "a"},      {"\t", '\t', ""},
      {"a\t\tb", '\t', "a||b"},             {"", '\t', "(none)"},   {"[a\nb]\nc\n", '\n', "[a\nb]|c"},
      {"[[a]\tb]\tc", '\t', "[[a]\tb]|c"},
      {"]\t[\tx", '\t', "]|[\tx"},  // below 0 still splits; each field starts at 0
      {"[\tno end", '\t', "[\tno end"},
  };
  for (const Row &r : rows) {
    WStr text = S(r.text);
    const WCHAR *cursor = text.c_str(), *end = cursor + text.size();
    Span f;
    std::vector<WStr> fields;
    while (NextField(cursor, end, r.separator, f)) fields.emplace_back(f.text, f.len);
    EXPECT_EQ(fields.empty() ? "(none)" : Join(fields, "|"), Narrow(S(r.fields))) << Narrow(text);
  }
}

TEST(ListText, ColumnDefinitions) {
  struct Row {
    const char *definition, *columns;
  } rows[] = {
      {"Name|150|L\tSize|80|R\tDate||C", "Name/150L,Size/80R,Date/100C"},
      {"|150|", "/150L"},
      {"A|-5|c\tB| 42px|Right\tC", "A/100L,B/42R,C/100L"},
      {"A|0\t\tB|7|C\t", "A/100L,/100L,B/7C"},
      {"", ""},
  };
  for (const Row &r : rows) {
    Table t;
    WStr d = S(r.definition);
    int next = CreateColumns(t, 3, d.c_str(), static_cast<int>(d.size()));
    EXPECT_EQ(Join(t.titles, ","), r.columns) << r.definition;
    EXPECT_EQ(next, 3 + static_cast<int>(t.titles.size())) << r.definition;
  }
}

TEST(ListText, LoadBufferFillsAndInsertsRows) {
  Table t = TwoByTwo();
  LoadBuffer(t, S("1\t2\t3\nx\r\n[p\nq]\t[r\ts]\n\nlast").c_str(), 1, 1);
  // Row 1 keeps column 0, "3" has no column; the CR stays in the cell.
  EXPECT_EQ(t.Dump(), Narrow(S("a|b;c|1;|x\r;|[p\nq];|;|last;")));
}

// Bytes handed out in odd pieces, so that units split between reads (odd
// lengths and long lines are the fuzzer's).
class Bytes : public ByteSource {
 public:
  explicit Bytes(std::string b) : bytes_(std::move(b)) {}
  int Read(BYTE *dst, int n) override {
    int k = std::min({static_cast<int>(bytes_.size() - pos_), n, 7});
    for (int i = 0; i < k; ++i) dst[i] = static_cast<BYTE>(bytes_[pos_ + i]);
    pos_ += k;
    return k;
  }

 private:
  std::string bytes_;
  size_t pos_ = 0;
};

std::string Utf16(const char *s) {
  std::string b;
  for (; *s; ++s) b += *s, b += '\0';
  return b;
}

TEST(ListText, FileLines) {
  struct Row {
    std::string bytes;
    UINT flags;
    const char *rows, *titles;
  } rows[] = {
      // deliberate: trailing TABs go with the CR LF, so do trailing empty cells
      {Utf16("a\tb\t\t\r\nc\r\n\r\nd"), 0, "a|b|;c||;||;d||;", ""},
      {Utf16("N|50|R\tV\r\nx\ty\r\n"), kLoadColumns, "x|y;", "N/50R,V\r\n/100L"},
      {Utf16("a") + std::string("\0\0b\0\n\0", 6), 0, "a||;", ""},  // ends at a zero
  };
  for (const Row &r : rows) {
    Table t;
    t.columns = (r.flags & kLoadColumns) ? 0 : 3;
    Bytes source(r.bytes);
    LineReader reader(source);
    std::vector<WCHAR> line(kLineSize);
    int count = LoadLines(t, reader, line.data(), r.flags);
    EXPECT_EQ(t.Dump(), Narrow(S(r.rows))) << r.rows;
    EXPECT_EQ(Join(t.titles, ","), Narrow(S(r.titles))) << r.rows;
    EXPECT_EQ(count, t.Count()) << r.rows;
  }
}

}  // namespace
