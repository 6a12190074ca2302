// The host build's side of the platform seam: just enough for the portable
// routines and their tests, not an imitation of Windows.
#include "frame/platform.h"
#include "frame/host/hostplat.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

namespace tv::plat {
namespace {

std::map<UINT, std::u16string> &Strings() {
  static std::map<UINT, std::u16string> strings;
  return strings;
}

WCHAR UpperLatin1(WCHAR c) {
  if (c >= 'a' && c <= 'z') return static_cast<WCHAR>(c - 32);
  if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return static_cast<WCHAR>(c - 32);
  if (c == 0xFF) return 0x178;
  return c;
}

WCHAR LowerAscii(WCHAR c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<WCHAR>(c + 32) : c;
}

}  // namespace

// CharUpperW maps letters beyond ASCII; the C runtime's _wcsupr in the "C"
// locale only ASCII. The host keeps that difference for Latin-1.
void UpperUser(WCHAR *text) {
  for (; text && *text; ++text) *text = UpperLatin1(*text);
}

WCHAR UpperCrtUnit(WCHAR c) { return c >= 'a' && c <= 'z' ? static_cast<WCHAR>(c - 32) : c; }

void UpperCrt(WCHAR *text) {
  for (; text && *text; ++text) *text = UpperCrtUnit(*text);
}

int CompareNoCaseCrt(const WCHAR *a, const WCHAR *b) {
  for (;; ++a, ++b) {
    int ca = LowerAscii(*a), cb = LowerAscii(*b);
    if (ca != cb || !ca) return ca - cb;
  }
}

// The host's "ANSI code page" is Latin-1, like code page 1252 for the
// characters that the tests use.
int AnsiToWide(const char *src, WCHAR *dst, int capacity) {
  int n = 0;
  while (src[n]) ++n;
  ++n;
  if (capacity == 0) return n;
  if (capacity < n) return 0;
  for (int i = 0; i < n; ++i) dst[i] = static_cast<unsigned char>(src[i]);
  return n;
}

int WideToAnsi(const WCHAR *src, char *dst, int capacity) {
  int n = 0;
  while (src[n]) ++n;
  ++n;
  if (capacity == 0) return n;
  if (capacity < n) return 0;
  for (int i = 0; i < n; ++i) dst[i] = src[i] < 256 ? static_cast<char>(src[i]) : '?';
  return n;
}

int LoadResString(HMODULE, UINT id, WCHAR *buffer, int size) {
  if (!buffer || size < 1) return 0;
  buffer[0] = 0;
  auto it = Strings().find(id);
  if (it == Strings().end()) return 0;
  int n = 0;
  for (; n < size - 1 && n < static_cast<int>(it->second.size()); ++n) buffer[n] = it->second[n];
  buffer[n] = 0;
  return n;
}

int ShowMessage(HWND, const WCHAR *text, const WCHAR *caption, UINT style) {
  host::NoteMessage(text, caption, style);
  return IDOK;
}

// No handler library on the host.
int CallExternalHandler(const MessageBoxRequest *) { return 0; }

// ---- Files and environment ----

namespace {

// Host file names are UTF-8; backslashes are passed through as they are.
std::string HostName(const WCHAR *name) {
  std::string out;
  for (; name && *name; ++name) {
    unsigned c = *name;
    if (c >= 0xD800 && c <= 0xDFFF) c = 0xFFFD;
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += static_cast<char>(0xC0 | (c >> 6));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      out += static_cast<char>(0xE0 | (c >> 12));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return out;
}

}  // namespace

bool FileExists(const WCHAR *name) {
  if (!name || !*name) return false;
  FILE *f = std::fopen(HostName(name).c_str(), "rb");
  if (!f) return false;
  std::fclose(f);
  return true;
}

bool GetEnv(const WCHAR *name, WCHAR *buffer, int size) {
  if (!buffer || size < 1) return false;
  buffer[0] = 0;
  const char *v = std::getenv(HostName(name).c_str());
  if (!v) return false;
  int n = 0;
  for (; n < size - 1 && v[n]; ++n) buffer[n] = static_cast<unsigned char>(v[n]);
  buffer[n] = 0;
  return true;
}

bool AppendToFile(const WCHAR *path, const void *data, size_t bytes) {
  std::string name = HostName(path);
  if (name.empty()) return false;
  FILE *f = std::fopen(name.c_str(), "ab");
  if (!f) return false;
  bool ok = std::fwrite(data, 1, bytes, f) == bytes;
  return std::fclose(f) == 0 && ok;
}

namespace host {

namespace {
ShownMessage lastMessage;
}  // namespace

void SetResString(UINT id, const WCHAR *text) {
  if (text)
    Strings()[id] = text;
  else
    Strings().erase(id);
}
void NoteMessage(const WCHAR *text, const WCHAR *caption, UINT style) {
  lastMessage.text = text ? text : u"";
  lastMessage.caption = caption ? caption : u"";
  lastMessage.style = style;
  ++lastMessage.count;
}
const ShownMessage &LastMessage() { return lastMessage; }

}  // namespace host
}  // namespace tv::plat
