// The guarded regular expression search (own thread with a large stack,
// checked iterator) against the standard library's search on a plain
// pointer range, and descriptor reads against a plain scan.
#include <tavona/text.h>

#include <regex>
#include <string>

#include "bench.h"

namespace {

volatile int sink;

int PlainSearch(const wchar_t *text, int len, const std::wregex &re) {
  std::match_results<const wchar_t *> m;
  return std::regex_search(text, text + len, m, re) ? static_cast<int>(m.position(0)) : -1;
}

}  // namespace

// Limits catch a lost linear bound or a per-step cost gone wild, not
// constant factors, which vary under wine.
int main() {
  // A 20,000-character text: the thread start is part of every call.
  std::wstring text;
  for (int i = 0; i < 20000; ++i) text += static_cast<wchar_t>('a' + i % 7);
  text += L"2024-05-17";
  const wchar_t *pattern = L"\\d{4}-\\d{2}-\\d{2}";
  bench::Compare(
      "Tavona_ParseRegExp, 20,000 characters",
      [&] {
        UINT len;
        sink = Tavona_ParseRegExp(text.c_str(), 0, pattern, &len, nullptr, 0, 0, 0, 0);
      },
      [&] {
        std::wregex re(pattern, std::regex_constants::ECMAScript);
        sink = PlainSearch(text.c_str(), static_cast<int>(text.size()), re);
      },
      4.0);

  // A short text and pattern: searched on the caller's stack, so no thread
  // start is paid.
  bench::Compare(
      "Tavona_ParseRegExp, 30 characters",
      [&] {
        UINT len;
        sink = Tavona_ParseRegExp(L"Order 4711 shipped 2024-05-17", 0, pattern, &len, nullptr, 0,
                                  0, 0, 0);
      },
      [&] {
        std::wregex re(pattern, std::regex_constants::ECMAScript);
        const wchar_t *t = L"Order 4711 shipped 2024-05-17";
        sink = PlainSearch(t, 29, re);
      },
      4.0);

  // The last of 200 items, the only one that reads back.
  std::wstring d;
  for (int i = 0; i < 200; ++i) d += L"item" + std::to_wstring(i) + L"=" + std::to_wstring(i) + L"\t";
  d += L"wanted=42";
  bench::Compare(
      "DescriptorGetLongItem, last of 200 items",
      [&] { sink = DescriptorGetLongItem(d.c_str(), L"wanted", 0); },
      [&] {
        size_t at = d.find(L"\twanted=");
        sink = at == std::wstring::npos ? 0 : std::stoi(d.substr(at + 8));
      },
      10.0);
  return bench::ExitCode();
}
