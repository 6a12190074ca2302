#include "controls/listtext.h"

#include "text/datautil.h"

namespace tv::lists {

bool NextField(const WCHAR *&cursor, const WCHAR *end, WCHAR separator, Span &field) {
  if (!cursor || cursor >= end) return false;
  const WCHAR *p = cursor;
  int depth = 0;
  for (; p < end; ++p) {
    if (*p == '[') {
      ++depth;
    } else if (*p == ']') {
      --depth;
    } else if (*p == separator && depth < 1) {
      break;
    }
  }
  field.text = cursor;
  field.len = static_cast<int>(p - cursor);
  cursor = p < end ? p + 1 : end;
  return true;
}

void CopyCut(Span s, WCHAR *out, int size) {
  if (!out || size < 1) return;
  int n = s.text && s.len > 0 ? s.len : 0;
  if (n > size - 1) n = size - 1;
  CopyRaw(out, s.text, n);
  out[n] = 0;
}

int TrimControls(const WCHAR *s, int len) {
  while (len > 0 && static_cast<WORD>(s[len - 1]) < 0x20) --len;
  return len;
}

void ParseColumn(Span text, ColumnDef &col) {
  const WCHAR *cursor = text.text, *end = text.text + text.len;
  Span field;
  // Fields split at '|' only: the bracket rule is for cells, not titles.
  auto next = [&](Span &f) {
    if (cursor >= end) return false;
    const WCHAR *p = cursor;
    while (p < end && *p != '|') ++p;
    f = Span{cursor, static_cast<int>(p - cursor)};
    cursor = p < end ? p + 1 : end;
    return true;
  };
  CopyCut(next(field) ? field : Span{}, col.title, kTitleSize);
  col.width = 0;
  if (next(field)) {
    WCHAR digits[16];
    // Leading white space, a sign and ten digits decide every int.
    int skip = 0;
    while (skip < field.len && (field.text[skip] == ' ' ||
                                (field.text[skip] >= 9 && field.text[skip] <= 13)))
      ++skip;
    CopyCut(Span{field.text + skip, field.len - skip}, digits, 16);
    col.width = TextToLong(digits);
  }
  if (col.width <= 0) col.width = 100;
  col.align = Align::kLeft;
  if (next(field) && field.len > 0) {
    if (field.text[0] == 'C') col.align = Align::kCenter;
    else if (field.text[0] == 'R') col.align = Align::kRight;
  }
}

bool NextWidth(const WCHAR *&cursor, int &width) {
  WCHAR token[16];
  if (!cursor || !*cursor) return false;
  const WCHAR *start = cursor;
  while (*cursor && *cursor != ',') ++cursor;
  Span s{start, static_cast<int>(cursor - start)};
  while (s.len > 0 && (*s.text == ' ' || *s.text == '\t')) ++s.text, --s.len;
  CopyCut(s, token, 16);
  width = TextToLong(token);
  if (*cursor) ++cursor;
  return true;
}

bool LineReader::Unit(WCHAR &unit) {
  BYTE pair[2];
  for (int have = 0; have < 2;) {
    if (pos_ == end_) {
      if (done_) return false;
      end_ = source_.Read(buffer_, static_cast<int>(sizeof buffer_));
      pos_ = 0;
      if (end_ <= 0) {
        end_ = 0;
        done_ = true;
        return false;
      }
    }
    pair[have++] = buffer_[pos_++];
  }
  unit = static_cast<WCHAR>(pair[0] | (pair[1] << 8));
  return true;
}

bool LineReader::Next(WCHAR *line, int size, int &len) {
  len = 0;
  if (!line || size < 2) return false;
  WCHAR unit;
  while (len < size - 1 && Unit(unit)) {
    line[len++] = unit;
    if (unit == '\n') break;
  }
  line[len] = 0;
  return len > 0;
}

}  // namespace tv::lists
