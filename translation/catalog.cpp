#include "translation/catalog.h"

#include "base/escape.h"
#include "base/ltskey.h"
#include "frame/report.h"
#include "base/wstr.h"
#include "tvres.h"

#include <new>

namespace tv {

// ---- Hashing and the index ----

uint32_t HashUnits(uint32_t h, const WCHAR *s, size_t n) {
  for (size_t i = 0; i < n; ++i) {
    h = (h ^ static_cast<uint16_t>(s[i])) * 16777619u;
  }
  return h;
}

uint32_t HashText(uint32_t h, const WCHAR *s) { return HashUnits(h, s, static_cast<size_t>(Len(s))); }

bool HashIndex::Rehash(size_t slots) {
  Slot *fresh = static_cast<Slot *>(AllocBytes(uint64_t{slots} * sizeof(Slot)));
  if (!fresh) return false;
  for (size_t i = 0; i < slots; ++i) fresh[i].value = -1;
  size_t mask = slots - 1;
  for (size_t i = 0; slots_ && i <= mask_; ++i) {
    if (slots_[i].value < 0) continue;
    size_t j = slots_[i].hash & mask;
    while (fresh[j].value >= 0) j = (j + 1) & mask;
    fresh[j] = slots_[i];
  }
  FreeMem(slots_);
  slots_ = fresh;
  mask_ = mask;
  return true;
}

bool HashIndex::Insert(uint32_t hash, int value) {
  // Kept at most half full, so every probe run ends quickly.
  if (!slots_ || (used_ + 1) * 2 > mask_ + 1) {
    if (!Rehash(slots_ ? (mask_ + 1) * 2 : 64)) return false;
  }
  size_t i = hash & mask_;
  while (slots_[i].value >= 0) i = (i + 1) & mask_;
  slots_[i].hash = hash;
  slots_[i].value = value;
  ++used_;
  return true;
}

void HashIndex::Clear() {
  for (size_t i = 0; slots_ && i <= mask_; ++i) slots_[i].value = -1;
  used_ = 0;
}

// ---- The line list ----

LtsLineList *LineListCreate(int capacity) {
  if (capacity < 1) return nullptr;
  auto *list = static_cast<LtsLineList *>(AllocBytes(sizeof(LtsLineList)));
  if (!list) return nullptr;
  list->storage = static_cast<WCHAR **>(AllocBytes(uint64_t{static_cast<UINT>(capacity)} * sizeof(WCHAR *)));
  void *indexMemory = AllocBytes(sizeof(HashIndex));
  if (!list->storage || !indexMemory) {
    FreeMem(list->storage);
    FreeMem(indexMemory);
    FreeMem(list);
    return nullptr;
  }
  list->index = new (indexMemory) HashIndex();
  list->capacity = capacity;
  list->count = 0;
  return list;
}

void LineListClear(LtsLineList *list) {
  if (!list) return;
  for (int i = 0; i < list->count; ++i) FreeMem(list->storage[i]);
  list->count = 0;
  list->index->Clear();
}

void LineListDestroy(LtsLineList *list) {
  if (!list) return;
  LineListClear(list);
  list->index->~HashIndex();
  FreeMem(list->index);
  FreeMem(list->storage);
  FreeMem(list);
}

int LineListFind(const LtsLineList *list, const WCHAR *text) {
  if (!list || !text) return -1;
  return list->index->Find(HashText(kHashStart, text),
                           [&](int i) { return Compare(list->storage[i], text) == 0; });
}

bool LineListAdd(LtsLineList *list, const WCHAR *text) {
  if (!list || !text) return false;
  if (list->count >= list->capacity) {
    ReportError(IDS_ERR_LIST_FULL);
    return false;
  }
  WCHAR *copy = DuplicateWideString(text);
  if (!copy) return false;
  uint32_t h = HashText(kHashStart, text);
  // Only the first of equal lines is indexed: Find answers the first.
  bool known = list->index->Find(h, [&](int i) { return Compare(list->storage[i], text) == 0; }) >= 0;
  if (!known && !list->index->Insert(h, list->count)) {
    FreeMem(copy);
    return false;
  }
  list->storage[list->count++] = copy;
  return true;
}

int LineListWrite(const LtsLineList *list, ByteSink write, void *sink) {
  if (!list) return 0;
  static const unsigned char kCrLf[4] = {13, 0, 10, 0};
  unsigned char buffer[1024];
  for (int i = 0; i < list->count; ++i) {
    // UTF-16LE whatever the build's byte order, in pieces.
    size_t used = 0;
    for (const WCHAR *p = list->storage[i]; *p; ++p) {
      buffer[used++] = static_cast<unsigned char>(*p & 0xFF);
      buffer[used++] = static_cast<unsigned char>((*p >> 8) & 0xFF);
      if (used == sizeof buffer) {
        if (!write(sink, buffer, used)) return -1;
        used = 0;
      }
    }
    if (used && !write(sink, buffer, used)) return -1;
    if (!write(sink, kCrLf, 4)) return -1;
  }
  return 0;
}

int LtsHeaderBytes(const WCHAR *module, const WCHAR *section, char *out, int size) {
  int n = 0;
  auto put = [&](char c) {
    if (n < size - 1) out[n++] = c;
  };
  // A narrow "%s" handed a wide string reads its bytes up to the first
  // zero byte: "GENERAL" prints as "G".
  auto name = [&](const WCHAR *s) {
    for (; s && *s; ++s) {
      unsigned lo = *s & 0xFF, hi = (*s >> 8) & 0xFF;
      if (!lo) return;
      put(static_cast<char>(lo));
      if (!hi) return;
      put(static_cast<char>(hi));
    }
  };
  if (size < 1) return 0;
  put('[');
  name(module);
  put('-');
  name(section);
  put(']');
  put('\r');
  put('\n');
  out[n] = 0;
  return n;
}

void EscapeBackslashes(const WCHAR *text, WCHAR *out, int size) {
  if (!out || size < 1) return;
  int w = 0;
  for (; text && *text; ++text) {
    int need = *text == '\\' ? 2 : 1;
    if (w + need > size - 1) break;
    if (*text == '\\') out[w++] = '\\';
    out[w++] = *text;
  }
  out[w] = 0;
}

// ---- UTF-8 ----

namespace {

// One code point from UTF-8 at p (n bytes left); 0 bytes used for an
// invalid sequence (overlong, surrogate, beyond U+10FFFF, cut short).
size_t DecodeUtf8(const unsigned char *p, size_t n, uint32_t &cp) {
  unsigned char b = p[0];
  if (b < 0x80) {
    cp = b;
    return 1;
  }
  size_t len;
  uint32_t min;
  if ((b & 0xE0) == 0xC0) {
    len = 2, cp = b & 0x1F, min = 0x80;
  } else if ((b & 0xF0) == 0xE0) {
    len = 3, cp = b & 0x0F, min = 0x800;
  } else if ((b & 0xF8) == 0xF0) {
    len = 4, cp = b & 0x07, min = 0x10000;
  } else {
    return 0;
  }
  if (len > n) return 0;
  for (size_t i = 1; i < len; ++i) {
    if ((p[i] & 0xC0) != 0x80) return 0;
    cp = (cp << 6) | (p[i] & 0x3F);
  }
  if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0;
  return len;
}

// UTF-8 bytes to UTF-16 units appended to out; false for invalid input.
bool Utf8ToWide(const char *s, size_t n, Growing<WCHAR> &out, bool &memory) {
  const auto *p = reinterpret_cast<const unsigned char *>(s);
  for (size_t i = 0; i < n;) {
    uint32_t cp;
    size_t used = DecodeUtf8(p + i, n - i, cp);
    if (!used) return false;
    i += used;
    bool ok;
    if (cp < 0x10000) {
      ok = out.Push(static_cast<WCHAR>(cp));
    } else {
      cp -= 0x10000;
      ok = out.Push(static_cast<WCHAR>(0xD800 + (cp >> 10))) &&
           out.Push(static_cast<WCHAR>(0xDC00 + (cp & 0x3FF)));
    }
    if (!ok) {
      memory = true;
      return false;
    }
  }
  return true;
}

// UTF-16 units to UTF-8; a lone surrogate becomes U+FFFD.
bool WideToUtf8(const WCHAR *s, size_t n, Growing<char> &out) {
  for (size_t i = 0; i < n; ++i) {
    uint32_t cp = static_cast<uint16_t>(s[i]);
    if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < n && s[i + 1] >= 0xDC00 && s[i + 1] <= 0xDFFF) {
      cp = 0x10000 + ((cp - 0xD800) << 10) + (static_cast<uint16_t>(s[++i]) - 0xDC00);
    } else if (cp >= 0xD800 && cp <= 0xDFFF) {
      cp = 0xFFFD;
    }
    char b[4];
    size_t len;
    if (cp < 0x80) {
      b[0] = static_cast<char>(cp), len = 1;
    } else if (cp < 0x800) {
      b[0] = static_cast<char>(0xC0 | (cp >> 6)), b[1] = static_cast<char>(0x80 | (cp & 0x3F)),
      len = 2;
    } else if (cp < 0x10000) {
      b[0] = static_cast<char>(0xE0 | (cp >> 12)),
      b[1] = static_cast<char>(0x80 | ((cp >> 6) & 0x3F)),
      b[2] = static_cast<char>(0x80 | (cp & 0x3F)), len = 3;
    } else {
      b[0] = static_cast<char>(0xF0 | (cp >> 18)),
      b[1] = static_cast<char>(0x80 | ((cp >> 12) & 0x3F)),
      b[2] = static_cast<char>(0x80 | ((cp >> 6) & 0x3F)),
      b[3] = static_cast<char>(0x80 | (cp & 0x3F)), len = 4;
    }
    if (!out.Append(b, len)) return false;
  }
  return true;
}

bool Put(Growing<char> &out, const char *s) {
  size_t n = 0;
  while (s[n]) ++n;
  return out.Append(s, n);
}

// A PO string literal: quotes, C escapes; a text with line feeds is split
// after each of them over several lines, as xgettext does.
bool PutPoString(Growing<char> &out, const char *keyword, const WCHAR *s, size_t n) {
  bool multi = false;
  for (size_t i = 0; i + 1 < n; ++i) multi = multi || s[i] == '\n';
  if (!Put(out, keyword) || !Put(out, multi ? " \"\"\n\"" : " \"")) return false;
  Growing<char> utf8;
  if (!WideToUtf8(s, n, utf8)) return false;
  for (size_t i = 0; i < utf8.Size(); ++i) {
    unsigned char c = static_cast<unsigned char>(utf8[i]);
    char esc[6] = {'\\', 0, 0, 0, 0, 0};
    switch (c) {
      case '\\': esc[1] = '\\'; break;
      case '"': esc[1] = '"'; break;
      case '\n': esc[1] = 'n'; break;
      case '\t': esc[1] = 't'; break;
      case '\r': esc[1] = 'r'; break;
      case 7: esc[1] = 'a'; break;
      case 8: esc[1] = 'b'; break;
      case 11: esc[1] = 'v'; break;
      case 12: esc[1] = 'f'; break;
      default:
        if (c < 32 || c == 127) {
          esc[1] = static_cast<char>('0' + (c >> 6));
          esc[2] = static_cast<char>('0' + ((c >> 3) & 7));
          esc[3] = static_cast<char>('0' + (c & 7));
        } else {
          esc[0] = static_cast<char>(c);
        }
    }
    if (!Put(out, esc)) return false;
    if (multi && c == '\n' && i + 1 < utf8.Size() && !Put(out, "\"\n\"")) return false;
  }
  return Put(out, "\"\n");
}

bool SameUnits(const WCHAR *a, size_t an, const WCHAR *b, size_t bn) {
  return an == bn && EqualN(a, b, static_cast<int>(an));
}

}  // namespace

// ---- Assistance log -> PO template ----

namespace {

struct ExportEntry {
  size_t context, contextLen, id, idLen;
  size_t keys;  // the first key link
};

struct KeyLink {
  size_t key, keyLen;
  int next;  // next key of the same entry, -1
};

class Exporter {
 public:
  Growing<WCHAR> text;
  Growing<ExportEntry> entries;
  Growing<KeyLink> keys;
  Growing<int> lastKey;  // per entry
  HashIndex index;

  bool Add(const WCHAR *context, size_t contextLen, const WCHAR *line, size_t lineLen) {
    size_t eq = 0;
    while (eq < lineLen && line[eq] != '=') ++eq;
    if (eq == lineLen) return true;  // not a line of ours: nothing to translate
    size_t keyAt = text.Size();
    if (!text.Append(line, eq) || !text.Push(0)) return false;
    // The log holds the text escaped (mode 4); the catalog holds it plain.
    size_t idAt = text.Size();
    if (!text.Append(line + eq + 1, lineLen - eq - 1) || !text.Push(0)) return false;
    DecodeEscapes(text.Data() + idAt);
    size_t idLen = static_cast<size_t>(Len(text.Data() + idAt));
    if (idLen == 0) return true;
    uint32_t h = HashUnits(HashUnits(kHashStart, context, contextLen), text.Data() + idAt, idLen);
    int found = index.Find(h, [&](int i) {
      const ExportEntry &e = entries[static_cast<size_t>(i)];
      return SameUnits(text.Data() + e.context, e.contextLen, context, contextLen) &&
             SameUnits(text.Data() + e.id, e.idLen, text.Data() + idAt, idLen);
    });
    if (found >= 0) {
      // The same text under another explicit key: one entry, both keys.
      auto f = static_cast<size_t>(found);
      for (int k = static_cast<int>(entries[f].keys); k >= 0; k = keys[static_cast<size_t>(k)].next) {
        const KeyLink &known = keys[static_cast<size_t>(k)];
        if (SameUnits(text.Data() + known.key, known.keyLen, text.Data() + keyAt, eq)) return true;
      }
      int link = static_cast<int>(keys.Size());
      if (!keys.Push(KeyLink{keyAt, eq, -1})) return false;
      keys[static_cast<size_t>(lastKey[f])].next = link;
      lastKey[f] = link;
      return true;
    }
    size_t contextAt = text.Size();
    if (!text.Append(context, contextLen) || !text.Push(0)) return false;
    int link = static_cast<int>(keys.Size());
    if (!keys.Push(KeyLink{keyAt, eq, -1})) return false;
    int number = static_cast<int>(entries.Size());
    return entries.Push(ExportEntry{contextAt, contextLen, idAt, idLen, static_cast<size_t>(link)}) &&
           lastKey.Push(link) && index.Insert(h, number);
  }

  bool Write(Growing<char> &out) {
    if (!Put(out,
             "# Texts collected by translation assistance.\n"
             "msgid \"\"\n"
             "msgstr \"\"\n"
             "\"Project-Id-Version: tavona32\\n\"\n"
             "\"PO-Revision-Date: YEAR-MO-DA HO:MI+ZONE\\n\"\n"
             "\"Last-Translator: FULL NAME <EMAIL@ADDRESS>\\n\"\n"
             "\"Language-Team: LANGUAGE <LL@li.org>\\n\"\n"
             "\"Language: \\n\"\n"
             "\"MIME-Version: 1.0\\n\"\n"
             "\"Content-Type: text/plain; charset=UTF-8\\n\"\n"
             "\"Content-Transfer-Encoding: 8bit\\n\"\n"))
      return false;
    for (size_t i = 0; i < entries.Size(); ++i) {
      const ExportEntry &e = entries[i];
      if (!Put(out, "\n")) return false;
      for (int k = static_cast<int>(e.keys); k >= 0; k = keys[static_cast<size_t>(k)].next) {
        const KeyLink &link = keys[static_cast<size_t>(k)];
        if (!Put(out, "#. ") || !WideToUtf8(text.Data() + link.key, link.keyLen, out) ||
            !Put(out, "\n"))
          return false;
      }
      if (!PutPoString(out, "msgctxt", text.Data() + e.context, e.contextLen) ||
          !PutPoString(out, "msgid", text.Data() + e.id, e.idLen) || !Put(out, "msgstr \"\"\n"))
        return false;
    }
    return true;
  }
};

const WCHAR *const kSections[3] = {TEXT("STRINGS"), TEXT("DIALOGS"), TEXT("MENU")};

// The module and section whose header is header[0, n), or false.
bool MatchHeader(const char *header, int n, const WCHAR *modules, Growing<WCHAR> &context) {
  const WCHAR *p = modules && modules[0] ? modules : TEXT("GENERAL");
  while (true) {
    const WCHAR *end = p;
    while (*end && *end != '|') ++end;
    WCHAR name[256];
    int len = static_cast<int>(end - p) < 255 ? static_cast<int>(end - p) : 255;
    CopyRaw(name, p, len);
    name[len] = 0;
    for (const WCHAR *section : kSections) {
      char expect[600];
      int m = LtsHeaderBytes(name, section, expect, sizeof expect);
      // expect is "[...]\r\n"; header holds what is between the brackets.
      if (len && m - 4 == n) {
        bool same = true;
        for (int i = 0; i < n && same; ++i) same = expect[i + 1] == header[i];
        if (same) {
          context.Clear();
          return context.Append(name, static_cast<size_t>(len)) && context.Push('|') &&
                 context.Append(section, static_cast<size_t>(Len(section)));
        }
      }
    }
    if (!*end) return false;
    p = end + 1;
  }
}

}  // namespace

int ExportCatalog(const unsigned char *log, size_t size, const WCHAR *modules,
                  Growing<char> &out, CatalogProblem &problem) {
  problem = {};
  Exporter ex;
  Growing<WCHAR> context, line;
  bool haveHeader = false;
  int lineNo = 0;
  auto fail = [&](CatalogError e) {
    problem.error = e;
    problem.line = lineNo;
    return -1;
  };
  size_t pos = 0;
  while (pos < size) {
    ++lineNo;
    // The single-byte separator in front of a later pass's header.
    if (size - pos >= 5 && log[pos] == '\r' && log[pos + 1] == '\n' && log[pos + 2] == '\r' &&
        log[pos + 3] == '\n' && log[pos + 4] == '[') {
      pos += 4;
      ++lineNo;
      continue;
    }
    // A single-byte header: "[" followed by a non-zero byte.
    if (log[pos] == '[' && pos + 1 < size && log[pos + 1] != 0) {
      size_t end = pos + 1;
      while (end + 2 < size && !(log[end] == ']' && log[end + 1] == '\r' && log[end + 2] == '\n')) ++end;
      if (end + 2 >= size) return fail(CatalogError::kLogHeader);
      if (!MatchHeader(reinterpret_cast<const char *>(log + pos + 1), static_cast<int>(end - pos - 1),
                       modules, context))
        return fail(CatalogError::kLogModule);
      haveHeader = true;
      pos = end + 3;
      continue;
    }
    if (!haveHeader) return fail(CatalogError::kLogNoHeader);
    line.Clear();
    bool ended = false;
    while (pos + 1 < size) {
      WCHAR c = static_cast<WCHAR>(log[pos] | (log[pos + 1] << 8));
      pos += 2;
      if (c == 13 && pos + 1 < size && log[pos] == 10 && log[pos + 1] == 0) {
        pos += 2;
        ended = true;
        break;
      }
      if (!line.Push(c)) return fail(CatalogError::kMemory);
    }
    if (!ended) return fail(CatalogError::kLogLine);
    if (!ex.Add(context.Data(), context.Size(), line.Data() ? line.Data() : TEXT(""), line.Size()))
      return fail(CatalogError::kMemory);
  }
  out.Clear();
  if (!ex.Write(out)) return fail(CatalogError::kMemory);
  return static_cast<int>(ex.entries.Size());
}

// ---- PO reader ----

struct Catalog::Entry {
  Growing<char> context, id, str;
  Growing<WCHAR> keys;  // each key followed by a zero
  bool hasContext = false, hasId = false, hasStr = false, fuzzy = false;
  int line = 0;
  void Reset() {
    context.Clear(), id.Clear(), str.Clear(), keys.Clear();
    hasContext = hasId = hasStr = fuzzy = false;
    line = 0;
  }
};

namespace {

bool IsSpace(unsigned char c) { return c == ' ' || c == '\t' || c == '\r'; }

bool StartsWith(const unsigned char *p, const unsigned char *end, const char *word) {
  for (; *word; ++word, ++p)
    if (p >= end || *p != static_cast<unsigned char>(*word)) return false;
  return true;
}

int HexDigit(unsigned char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// A quoted string at p (the opening quote) to the end of the line, C
// escapes undone, appended to out.
CatalogError ReadQuoted(const unsigned char *p, const unsigned char *end, Growing<char> &out) {
  if (p >= end || *p != '"') return CatalogError::kUnexpected;
  ++p;
  while (true) {
    if (p >= end) return CatalogError::kMissingQuote;
    unsigned char c = *p++;
    if (c == '"') break;
    if (c != '\\') {
      if (!out.Push(static_cast<char>(c))) return CatalogError::kMemory;
      continue;
    }
    if (p >= end) return CatalogError::kMissingQuote;
    unsigned char e = *p++;
    int v;
    switch (e) {
      case 'n': v = '\n'; break;
      case 't': v = '\t'; break;
      case 'r': v = '\r'; break;
      case 'a': v = 7; break;
      case 'b': v = 8; break;
      case 'f': v = 12; break;
      case 'v': v = 11; break;
      case '\\': case '"': case '\'': case '?': v = e; break;
      case 'x': {
        if (p >= end || HexDigit(*p) < 0) return CatalogError::kBadEscape;
        v = 0;
        for (int i = 0; i < 2 && p < end && HexDigit(*p) >= 0; ++i) v = v * 16 + HexDigit(*p++);
        break;
      }
      default:
        if (e < '0' || e > '7') return CatalogError::kBadEscape;
        v = e - '0';
        for (int i = 0; i < 2 && p < end && *p >= '0' && *p <= '7'; ++i) v = v * 8 + (*p++ - '0');
        if (v > 255) return CatalogError::kBadEscape;
    }
    if (!out.Push(static_cast<char>(v))) return CatalogError::kMemory;
  }
  while (p < end && IsSpace(*p)) ++p;
  return p < end ? CatalogError::kUnexpected : CatalogError::kNone;
}

}  // namespace

bool Catalog::Store(const WCHAR *s, size_t n, size_t &offset) {
  offset = text_.Size();
  return text_.Append(s, n) && text_.Push(0);
}

bool Catalog::Add(const Entry &e, CatalogProblem &problem) {
  auto fail = [&](CatalogError error) {
    problem.error = error;
    problem.line = e.line;
    return false;
  };
  if (!e.hasId) return true;
  if (!e.hasStr) return fail(CatalogError::kNoMsgstr);
  Growing<WCHAR> context, id, str;
  bool memory = false;
  if (!Utf8ToWide(e.context.Data(), e.context.Size(), context, memory) ||
      !Utf8ToWide(e.id.Data(), e.id.Size(), id, memory) ||
      !Utf8ToWide(e.str.Data(), e.str.Size(), str, memory))
    return fail(memory ? CatalogError::kMemory : CatalogError::kBadUtf8);
  if (!e.hasContext && id.Size() == 0) {
    // The header: only UTF-8 is read.
    if (!str.Push(0)) return fail(CatalogError::kMemory);
    const WCHAR *s = str.Data();
    for (int i = 0; s[i]; ++i) {
      if (s[i] == 'c' && s[i + 1] == 'h' && s[i + 2] == 'a' && s[i + 3] == 'r' && s[i + 4] == 's' &&
          s[i + 5] == 'e' && s[i + 6] == 't' && s[i + 7] == '=') {
        const WCHAR *v = s + i + 8;
        bool utf8 = (v[0] | 32) == 'u' && (v[1] | 32) == 't' && (v[2] | 32) == 'f' && v[3] == '-' &&
                    v[4] == '8' && (v[5] == 0 || v[5] == '\n' || v[5] == ' ' || v[5] == ';');
        if (!utf8) return fail(CatalogError::kCharset);
      }
    }
    return true;
  }
  size_t bar = 0;
  while (bar < context.Size() && context[bar] != '|') ++bar;
  if (!e.hasContext || bar == context.Size()) return fail(CatalogError::kNoContext);
  if (!id.Push(0)) return fail(CatalogError::kMemory);

  size_t moduleAt, sectionAt, textAt = SIZE_MAX;
  if (!Store(context.Data(), bar, moduleAt) ||
      !Store(context.Data() + bar + 1, context.Size() - bar - 1, sectionAt))
    return fail(CatalogError::kMemory);
  bool translated = !e.fuzzy && str.Size() > 0;
  if (translated && !Store(str.Data(), str.Size(), textAt)) return fail(CatalogError::kMemory);

  // Keys: the extracted comments, else the key derived from the text.
  Growing<WCHAR> derived;
  const WCHAR *keys = e.keys.Data();
  size_t keysSize = e.keys.Size();
  if (!keysSize) {
    if (!derived.Reserve(kLtsKeySize)) return fail(CatalogError::kMemory);
    LtsMakeKey(id.Data(), derived.Data(), kLtsKeySize);
    keys = derived.Data();
    keysSize = static_cast<size_t>(Len(keys)) + 1;
  }
  for (size_t k = 0; k < keysSize; k += static_cast<size_t>(Len(keys + k)) + 1) {
    size_t keyAt;
    size_t keyLen = static_cast<size_t>(Len(keys + k));
    if (!Store(keys + k, keyLen, keyAt)) return fail(CatalogError::kMemory);
    const WCHAR *module = At(moduleAt), *section = At(sectionAt), *key = At(keyAt);
    uint32_t h = HashText(HashText(HashText(kHashStart, module), section), key);
    if (index_.Find(h, [&](int i) {
          const Item &it = items_[static_cast<size_t>(i)];
          return Compare(At(it.module), module) == 0 && Compare(At(it.section), section) == 0 &&
                 Compare(At(it.key), key) == 0;
        }) >= 0)
      return fail(CatalogError::kDuplicate);
    if (!items_.Push(Item{moduleAt, sectionAt, keyAt, textAt, h}) ||
        !index_.Insert(h, static_cast<int>(items_.Size() - 1)))
      return fail(CatalogError::kMemory);
  }
  if (translated) ++translated_;
  return true;
}

const WCHAR *Catalog::Find(const WCHAR *module, const WCHAR *section, const WCHAR *key) const {
  if (!module || !section || !key) return nullptr;
  uint32_t h = HashText(HashText(HashText(kHashStart, module), section), key);
  int i = index_.Find(h, [&](int n) {
    const Item &it = items_[static_cast<size_t>(n)];
    return Compare(At(it.module), module) == 0 && Compare(At(it.section), section) == 0 &&
           Compare(At(it.key), key) == 0;
  });
  if (i < 0 || items_[static_cast<size_t>(i)].text == SIZE_MAX) return nullptr;
  return At(items_[static_cast<size_t>(i)].text);
}

bool Catalog::Load(const unsigned char *bytes, size_t size, CatalogProblem &problem) {
  problem = {};
  Entry e;
  Growing<char> *field = nullptr;  // the string continuation lines extend
  const unsigned char *p = bytes, *end = bytes + size;
  if (size >= 3 && p[0] == 0xEF && p[1] == 0xBB && p[2] == 0xBF) p += 3;
  int lineNo = 0;
  auto fail = [&](CatalogError error) {
    problem.error = error;
    problem.line = lineNo;
    return false;
  };
  auto finish = [&]() {
    bool ok = Add(e, problem);
    e.Reset();
    field = nullptr;
    return ok;
  };
  while (p < end) {
    ++lineNo;
    const unsigned char *lineEnd = p;
    while (lineEnd < end && *lineEnd != '\n') ++lineEnd;
    const unsigned char *next = lineEnd < end ? lineEnd + 1 : lineEnd;
    // Every line must be UTF-8, comments included.
    for (const unsigned char *q = p; q < lineEnd;) {
      uint32_t cp;
      size_t used = DecodeUtf8(q, static_cast<size_t>(lineEnd - q), cp);
      if (!used) return fail(CatalogError::kBadUtf8);
      q += used;
    }
    while (p < lineEnd && IsSpace(*p)) ++p;
    if (p == lineEnd) {
      p = next;
      continue;
    }
    if (*p == '#') {
      if (e.hasStr && !finish()) return false;
      if (p + 1 < lineEnd && p[1] == ',') {
        for (const unsigned char *q = p + 2; q + 5 <= lineEnd; ++q)
          if (StartsWith(q, lineEnd, "fuzzy")) e.fuzzy = true;
      } else if (p + 1 < lineEnd && p[1] == '.') {
        const unsigned char *k = p + 2, *kEnd = lineEnd;
        while (k < kEnd && IsSpace(*k)) ++k;
        while (kEnd > k && IsSpace(kEnd[-1])) --kEnd;
        bool memory = false;
        if (k < kEnd && (!Utf8ToWide(reinterpret_cast<const char *>(k), static_cast<size_t>(kEnd - k), e.keys, memory) || !e.keys.Push(0)))
          return fail(CatalogError::kMemory);
      }
      p = next;
      continue;
    }
    const unsigned char *value = nullptr;
    if (*p == '"') {
      if (!field) return fail(CatalogError::kUnexpected);
      value = p;
    } else if (StartsWith(p, lineEnd, "msgctxt") && p + 7 < lineEnd && IsSpace(p[7])) {
      if (e.hasStr && !finish()) return false;
      if (e.hasContext || e.hasId) return fail(CatalogError::kUnexpected);
      e.hasContext = true;
      e.line = lineNo;
      field = &e.context;
      value = p + 7;
    } else if (StartsWith(p, lineEnd, "msgid_plural") || StartsWith(p, lineEnd, "msgstr[")) {
      return fail(CatalogError::kPlural);
    } else if (StartsWith(p, lineEnd, "msgid") && p + 5 < lineEnd && IsSpace(p[5])) {
      if (e.hasStr && !finish()) return false;
      if (e.hasId) return fail(CatalogError::kNoMsgstr);
      e.hasId = true;
      if (!e.line) e.line = lineNo;
      field = &e.id;
      value = p + 5;
    } else if (StartsWith(p, lineEnd, "msgstr") && p + 6 < lineEnd && IsSpace(p[6])) {
      if (!e.hasId || e.hasStr) return fail(CatalogError::kUnexpected);
      e.hasStr = true;
      field = &e.str;
      value = p + 6;
    } else {
      return fail(CatalogError::kUnexpected);
    }
    while (value < lineEnd && IsSpace(*value)) ++value;
    CatalogError error = ReadQuoted(value, lineEnd, *field);
    if (error != CatalogError::kNone) return fail(error);
    p = next;
  }
  if (e.hasId || e.hasContext) {
    if (!e.hasId) return fail(CatalogError::kUnexpected);
    return finish();
  }
  return true;
}

}  // namespace tv
