// Int_To_FormattedInt and Float_To_FormattedFloat with their default
// formats, a million values each, against plain code that writes the same
// text directly: the format string is parsed on every call and must not
// cost more than a small factor.
#include <tavona/text.h>

#include <cstdint>
#include <cstdio>
#include <cwchar>

#include "bench.h"

namespace {

constexpr int kCalls = 1000000;

int32_t Value(int i) { return static_cast<int32_t>(static_cast<uint32_t>(i) * 2654435761u); }

// Decimal digits with '.' between groups of three and a leading minus.
int PlainInt(int32_t value, wchar_t *out) {
  wchar_t rev[24];
  int n = 0, digits = 0;
  uint32_t m = value < 0 ? 0u - static_cast<uint32_t>(value) : static_cast<uint32_t>(value);
  do {
    if (digits && digits % 3 == 0) rev[n++] = L'.';
    rev[n++] = static_cast<wchar_t>(L'0' + m % 10);
    m /= 10;
    ++digits;
  } while (m);
  if (value < 0) rev[n++] = L'-';
  for (int i = 0; i < n; ++i) out[i] = rev[n - 1 - i];
  out[n] = 0;
  return n;
}

// swprintf("%.2f"), then the whole part grouped with '.' and ',' before
// the fraction.
void PlainFloat(double value, wchar_t *out) {
  wchar_t text[64];
  int len = swprintf(text, 64, L"%.2f", value);
  int start = text[0] == L'-' ? 1 : 0;
  int point = len - 3;
  int o = 0;
  if (start) out[o++] = L'-';
  for (int i = start; i < point; ++i) {
    out[o++] = text[i];
    int left = point - i - 1;
    if (left > 0 && left % 3 == 0) out[o++] = L'.';
  }
  out[o++] = L',';
  out[o++] = text[len - 2];
  out[o++] = text[len - 1];
  out[o] = 0;
}

}  // namespace

int main() {
  WCHAR out[100];
  wchar_t plain[100];
  volatile int sink = 0;

  // Same text from both, so the comparison is fair.
  for (int i = 0; i < 1000; ++i) {
    Int_To_FormattedInt(Value(i), out, 100, nullptr);
    PlainInt(Value(i), plain);
    for (int k = 0; out[k] || plain[k]; ++k)
      if (out[k] != plain[k]) return 2;
  }

  bench::Compare(
      "Int_To_FormattedInt, default format, 1,000,000 values",
      [&] {
        for (int i = 0; i < kCalls; ++i) {
          Int_To_FormattedInt(Value(i), out, 100, nullptr);
          sink = sink + out[0];
        }
      },
      [&] {
        for (int i = 0; i < kCalls; ++i) {
          PlainInt(Value(i), plain);
          sink = sink + plain[0];
        }
      },
      3.0);

  auto floatValue = [](int i) { return Value(i) / 1000.0; };
  for (int i = 0; i < 1000; ++i) {
    if (Value(i) % 125 == 0) continue;  // exact halves: the runtimes round them differently
    Float_To_FormattedFloat(floatValue(i), out, 100, nullptr);
    PlainFloat(floatValue(i), plain);
    for (int k = 0; out[k] || plain[k]; ++k)
      if (out[k] != plain[k]) {
        std::printf("texts differ for %.17g: %ls\n", floatValue(i), plain);
        return 3;
      }
  }
  bench::Compare(
      "Float_To_FormattedFloat, default format, 1,000,000 values",
      [&] {
        for (int i = 0; i < kCalls; ++i) {
          Float_To_FormattedFloat(floatValue(i), out, 100, nullptr);
          sink = sink + out[0];
        }
      },
      [&] {
        for (int i = 0; i < kCalls; ++i) {
          PlainFloat(floatValue(i), plain);
          sink = sink + plain[0];
        }
      },
      3.0);
  return bench::ExitCode();
}
