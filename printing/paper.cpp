// Paper formats: the fixed DIN table, packed dimensions, matching.
#include "printing/paper.h"

#include <tavona/printing.h>

#include "text/datautil.h"
#include "base/wstr.h"

namespace tv::print {

const PaperFormat kPaperFormats[3] = {
    {8, 4200, 2970, TEXT("DIN A3")},
    {9, 2970, 2100, TEXT("DIN A4")},
    {11, 2100, 1480, TEXT("DIN A5")},
};

LPARAM PackPaper(INT first, INT second) {
  DWORD packed = (static_cast<DWORD>(first & 0xFFFF) << 16) | static_cast<DWORD>(second & 0xFFFF);
  return static_cast<LPARAM>(packed);
}

void UnpackPaper(LPARAM data, INT &first, INT &second) {
  DWORD packed = static_cast<DWORD>(data);
  first = static_cast<INT>((packed >> 16) & 0xFFFF) * 100;
  second = static_cast<INT>(packed & 0xFFFF) * 100;
}

LPARAM PaperFromText(const WCHAR *text) {
  if (!text) text = TEXT("");
  INT first = TextToLong(text);
  const WCHAR *comma = text;
  while (*comma && *comma != ',') ++comma;
  INT second = *comma ? TextToLong(comma + 1) : 0;
  return PackPaper(first / 100, second / 100);
}

bool PaperMatches(LPARAM data, INT width, INT height) {
  INT a, b;
  UnpackPaper(data, a, b);
  auto within = [](INT x, INT y) {
    long long d = static_cast<long long>(x) - y;
    return d >= -1000 && d <= 1000;
  };
  return (within(width, a) && within(height, b)) || (within(width, b) && within(height, a));
}

}  // namespace tv::print

using tv::print::kPaperFormats;

INT WINAPI Tavona_GetPaperSizeType(INT first, INT second) {
  for (const auto &f : kPaperFormats)
    if ((f.first == first && f.second == second) || (f.first == second && f.second == first))
      return f.code;
  return 0;
}

void WINAPI Tavona_GetPaperSizeTypeName(INT code, WCHAR *buffer, INT size) {
  if (!buffer || size < 1) return;
  buffer[0] = 0;
  for (const auto &f : kPaperFormats)
    if (f.code == code) tv::BoundedCopy(buffer, f.name, size);
}
