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
using Str = std::basic_string<WCHAR>;

Str S(const char *s) {
  Str out;
  for (; *s; ++s) out += static_cast<WCHAR>(static_cast<unsigned char>(*s));
  return out;
}

// Rows of cells; a row has as many cells as the table has columns.
struct Table {
  std::vector<std::vector<Str>> rows;
  std::vector<bool> selected;
  int columns = 0;
  std::vector<Str> titles;

  int Count() { return static_cast<int>(rows.size()); }
  bool Selected(int row) { return row >= 0 && row < Count() && selected[row]; }
  bool Cell(int row, int column, Span &cell) {
    if (row < 0 || row >= Count() || column < 0 || column >= columns) return false;
    const Str &s = rows[row][column];
    cell = Span{s.c_str(), static_cast<int>(s.size()) < kCellSize - 1 ? static_cast<int>(s.size())
                                                                      : kCellSize - 1};
    return true;
  }
  int InsertRow(int row, Span first) {
    if (row > Count()) row = Count();
    rows.insert(rows.begin() + row, std::vector<Str>(columns));
    selected.insert(selected.begin() + row, false);
    if (columns) rows[row][0] = Str(first.text ? first.text : u"", first.len);
    return row;
  }
  void SetCell(int row, int column, const WCHAR *text) {
    if (row >= 0 && row < Count() && column >= 0 && column < columns) rows[row][column] = text;
  }
  int InsertColumn(int column, const ColumnDef &col) {
    titles.push_back(Str(col.title) + S("/") + S(std::to_string(col.width).c_str()) +
                     S(col.align == Align::kLeft ? "L" : col.align == Align::kRight ? "R" : "C"));
    ++columns;
    for (auto &r : rows) r.resize(columns);
    return column;
  }
  Str Dump() const {
    Str out;
    for (const auto &r : rows) {
      for (size_t c = 0; c < r.size(); ++c) out += (c ? S("|") : Str()) + r[c];
      out += S(";");
    }
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
      {0, 1, 0, 1, 0, "a\tb\nc\td\n", 1},
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
      {0, 1, -1, 1, 0, "\n\n", 1},
  };
  for (const Row &r : rows) {
    Table t = TwoByTwo();
    WCHAR buffer[64] = {'x'};
    BufferSink out(buffer, 64, (r.flags & kSaveCrLf) != 0);
    int result = SaveRows(t, out, r.first, r.last, r.firstCol, r.lastCol, r.flags, Clamp::kBuffer);
    CountSink count((r.flags & kSaveCrLf) != 0);
    SaveRows(t, count, r.first, r.last, r.firstCol, r.lastCol, r.flags, Clamp::kBuffer);
    std::string where = "rows " + std::to_string(r.first) + ".." + std::to_string(r.last) +
                        " columns " + std::to_string(r.firstCol) + ".." +
                        std::to_string(r.lastCol) + " flags " + std::to_string(r.flags);
    EXPECT_EQ(Narrow(buffer), Narrow(S(r.text).c_str())) << where;
    EXPECT_EQ(result, r.result) << where;
    EXPECT_EQ(count.Count(), tv::Len(buffer)) << where;
  }
}

// A buffer too small is cut, terminated within its size; huge ranges end
// as soon as nothing more fits.
TEST(ListText, BufferIsCutNotOverrun) {
  Table t = TwoByTwo();
  for (int size = 1; size <= 9; ++size) {
    std::vector<WCHAR> buffer(size + 1, 0x7777);
    BufferSink out(buffer.data(), size, false);
    SaveRows(t, out, -0x7FFFFFFF - 1, 1, 0, 0x7FFFFFFF, 0, Clamp::kBuffer);
    EXPECT_EQ(buffer[size], 0x7777) << size;
    EXPECT_EQ(tv::LenBounded(buffer.data(), size), size - 1) << size;
  }
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
      {"x\t[1\t2]\ty", '\t', "x|[1\t2]|y"},
      {"a\t", '\t', "a"},
      {"\t", '\t', ""},
      {"a\t\tb", '\t', "a||b"},
      {"", '\t', nullptr},
      {"[a\nb]\nc\n", '\n', "[a\nb]|c"},
      {"[[a]\tb]\tc", '\t', "[[a]\tb]|c"},
      {"]\t[\tx", '\t', "]|[\tx"},  // below 0 still splits; each field starts at 0
      {"[\tno end", '\t', "[\tno end"},
  };
  for (const Row &r : rows) {
    Str text = S(r.text);
    const WCHAR *cursor = text.c_str(), *end = cursor + text.size();
    Span f;
    Str joined;
    int n = 0;
    while (NextField(cursor, end, r.separator, f)) joined += (n++ ? S("|") : Str()) + Str(f.text, f.len);
    EXPECT_EQ(n == 0 ? std::string("(none)") : Narrow(joined.c_str()),
              r.fields ? Narrow(S(r.fields).c_str()) : std::string("(none)"))
        << Narrow(text.c_str());
  }
}

TEST(ListText, ColumnDefinitions) {
  struct Row {
    const char *definition;
    const char *columns;
  } rows[] = {
      {"Name|150|L\tSize|80|R\tDate||C", "Name/150L,Size/80R,Date/100C"},
      {"Name||L", "Name/100L"},
      {"|150|", "/150L"},
      {"A|-5|c\tB| 42px|Right\tC", "A/100L,B/42R,C/100L"},
      {"A|0\t\tB|7|C\t", "A/100L,/100L,B/7C"},
      {"", ""},
  };
  for (const Row &r : rows) {
    Table t;
    Str d = S(r.definition);
    int next = CreateColumns(t, 3, d.c_str(), static_cast<int>(d.size()));
    Str joined;
    for (size_t i = 0; i < t.titles.size(); ++i) joined += (i ? S(",") : Str()) + t.titles[i];
    EXPECT_EQ(Narrow(joined.c_str()), r.columns) << r.definition;
    EXPECT_EQ(next, 3 + static_cast<int>(t.titles.size())) << r.definition;
  }
  ColumnDef col;
  Str longTitle(150, 'T');
  ParseColumn(Span{longTitle.c_str(), 150}, col);
  EXPECT_EQ(tv::Len(col.title), kTitleSize - 1);
}

TEST(ListText, LoadBufferFillsAndInsertsRows) {
  Table t = TwoByTwo();
  Str text = S("1\t2\t3\nx\r\n[p\nq]\t[r\ts]\n\nlast");
  LoadBuffer(t, text.c_str(), 1, 1);
  // Row 1 keeps column 0, "3" has no column; the CR stays in the cell.
  EXPECT_EQ(Narrow(t.Dump().c_str()),
            Narrow(S("a|b;c|1;|x\r;|[p\nq];|;|last;").c_str()));

  Table cut;
  cut.columns = 2;
  Str row = Str(600, 'c') + S("\t") + Str(600, 'd');
  LoadBuffer(cut, row.c_str(), -4, -1);
  ASSERT_EQ(cut.Count(), 1);
  EXPECT_EQ(cut.rows[0][0].size(), size_t(kCellSize - 1));
  EXPECT_EQ(cut.rows[0][1].size(), size_t(kRowSize - 1 - 601));  // the row is cut first
}

class Bytes : public ByteSource {
 public:
  explicit Bytes(std::string b, int piece = 7) : bytes_(std::move(b)), piece_(piece) {}
  int Read(BYTE *dst, int n) override {
    int k = static_cast<int>(bytes_.size() - pos_);
    if (k > n) k = n;
    if (k > piece_) k = piece_;  // odd pieces split units between reads
    for (int i = 0; i < k; ++i) dst[i] = static_cast<BYTE>(bytes_[pos_ + i]);
    pos_ += k;
    return k;
  }

 private:
  std::string bytes_;
  size_t pos_ = 0;
  int piece_;
};

std::string Utf16(const Str &s) {
  std::string b;
  for (WCHAR c : s) b += static_cast<char>(c & 0xFF), b += static_cast<char>(c >> 8);
  return b;
}

TEST(ListText, FileLines) {
  struct Row {
    std::string bytes;
    UINT flags;
    const char *rows;
    const char *titles;
  } rows[] = {
      // deliberate: trailing TABs go with the CR LF, so do trailing empty cells
      {Utf16(S("a\tb\t\t\r\nc\r\n\r\nd")), 0, "a|b|;c||;||;d||;", ""},
      {Utf16(S("N|50|R\tV\r\nx\ty\r\n")), kLoadColumns, "x|y;", "N/50R,V\r\n/100L"},
      {"", 0, "", ""},
      {"a", 0, "", ""},                       // one byte is no unit
      {Utf16(S("z")) + "\x01", 0, "z||;", ""},  // nor is a last odd byte
      {Utf16(S("a")) + std::string("\0\0b\0\n\0", 6), 0, "a||;", ""},  // ends at a zero
  };
  for (const Row &r : rows) {
    Table t;
    t.columns = (r.flags & kLoadColumns) ? 0 : 3;
    Bytes source(r.bytes);
    LineReader reader(source);
    std::vector<WCHAR> line(kLineSize);
    int count = LoadLines(t, reader, line.data(), r.flags);
    Str titles;
    for (size_t i = 0; i < t.titles.size(); ++i) titles += (i ? S(",") : Str()) + t.titles[i];
    EXPECT_EQ(Narrow(t.Dump().c_str()), Narrow(S(r.rows).c_str())) << r.rows;
    EXPECT_EQ(Narrow(titles.c_str()), Narrow(S(r.titles).c_str())) << r.rows;
    EXPECT_EQ(count, t.Count()) << r.rows;
  }
}

}  // namespace
