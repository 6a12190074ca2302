// The library's own tracer: environment-controlled channels, records to the
// debugger output and an optional UTF-8 log.
#include "files/tracer.h"

#include "frame/platform.h"
#include "base/wstr.h"

namespace {

constexpr int kEnvSize = 1024;

WCHAR LowerAscii(WCHAR c) { return (c >= 'A' && c <= 'Z') ? static_cast<WCHAR>(c + 32) : c; }

bool SameChannel(const WCHAR *a, int aLen, const WCHAR *b) {
  int bLen = tv::Len(b);
  if (aLen != bLen) return false;
  for (int i = 0; i < aLen; ++i)
    if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
  return true;
}

}  // namespace

namespace tv {

int ToUtf8(const WCHAR *text, int length, char *out, int size) {
  int n = 0;
  for (int i = 0; i < length; ++i) {
    unsigned c = text[i];
    if (c >= 0xD800 && c <= 0xDBFF && i + 1 < length && text[i + 1] >= 0xDC00 &&
        text[i + 1] <= 0xDFFF) {
      c = 0x10000 + ((c - 0xD800) << 10) + (text[i + 1] - 0xDC00);
      ++i;
    } else if (c >= 0xD800 && c <= 0xDFFF) {
      c = 0xFFFD;
    }
    unsigned char bytes[4];
    int count;
    if (c < 0x80) {
      bytes[0] = static_cast<unsigned char>(c);
      count = 1;
    } else if (c < 0x800) {
      bytes[0] = static_cast<unsigned char>(0xC0 | (c >> 6));
      bytes[1] = static_cast<unsigned char>(0x80 | (c & 0x3F));
      count = 2;
    } else if (c < 0x10000) {
      bytes[0] = static_cast<unsigned char>(0xE0 | (c >> 12));
      bytes[1] = static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F));
      bytes[2] = static_cast<unsigned char>(0x80 | (c & 0x3F));
      count = 3;
    } else {
      bytes[0] = static_cast<unsigned char>(0xF0 | (c >> 18));
      bytes[1] = static_cast<unsigned char>(0x80 | ((c >> 12) & 0x3F));
      bytes[2] = static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F));
      bytes[3] = static_cast<unsigned char>(0x80 | (c & 0x3F));
      count = 4;
    }
    if (n + count > size) break;
    for (int k = 0; k < count; ++k) out[n++] = static_cast<char>(bytes[k]);
  }
  return n;
}

void FormatTraceLine(WCHAR *line, int size, const WCHAR *channel, int eventType, int eventNumber,
                     const char *sourceFile, int sourceLine, const WCHAR *message) {
  Format(line, size, TEXT("%s [%d/%d] %hs(%d): %s"), channel ? channel : TEXT(""), eventType,
         eventNumber, sourceFile ? sourceFile : "", sourceLine, message ? message : TEXT(""));
}

}  // namespace tv

namespace vel {

bool Tracer::Enabled(const WCHAR *channel) {
  if (tv::IsBlank(channel)) return false;
  WCHAR list[kEnvSize];
  if (!tv::plat::GetEnv(TEXT("TAVONA_TRACE"), list, kEnvSize)) return false;
  const WCHAR *p = list;
  while (*p) {
    while (*p && *p <= 32) ++p;
    const WCHAR *start = p;
    while (*p && *p != ',') ++p;
    const WCHAR *end = p;
    while (end > start && end[-1] <= 32) --end;
    int len = static_cast<int>(end - start);
    if ((len == 1 && *start == '*') || (len > 0 && SameChannel(start, len, channel))) return true;
    if (*p == ',') ++p;
  }
  return false;
}

void Tracer::Trace(const WCHAR *channel, int eventType, int eventNumber, const char *sourceFile,
                   int sourceLine, const WCHAR *message) {
  if (!Enabled(channel)) return;
  WCHAR line[tv::kTraceLineSize];
  tv::FormatTraceLine(line, tv::kTraceLineSize, channel, eventType, eventNumber, sourceFile,
                      sourceLine, message);
  tv::plat::DebugOutput(line);

  WCHAR path[kEnvSize];
  if (!tv::plat::GetEnv(TEXT("TAVONA_TRACE_FILE"), path, kEnvSize) || tv::IsBlank(path)) return;
  // Three bytes per unit at most, and CR LF; one write keeps the line whole
  // when several processes append to the same file.
  char bytes[tv::kTraceLineSize * 3 + 2];
  int n = tv::ToUtf8(line, tv::Len(line), bytes, tv::kTraceLineSize * 3);
  bytes[n++] = '\r';
  bytes[n++] = '\n';
  tv::plat::AppendToFile(path, bytes, static_cast<size_t>(n));
}

}  // namespace vel
