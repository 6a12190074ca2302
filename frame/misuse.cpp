#include "frame/misuse.h"

#include <initializer_list>

#include "base/sys.h"
#include "base/wstr.h"

namespace tv {

void ReportMisuse(const char *routine, const char *what) {
  WCHAR line[300];
  int n = 0;
  for (const char *part : {"tavona32: ", routine ? routine : "?", ": ", what ? what : "?"})
    for (; *part && n < 299; ++part)
      line[n++] = static_cast<WCHAR>(static_cast<unsigned char>(*part));
  line[n] = 0;
  plat::DebugOutput(line);
}

bool FormatTakesIntegers(const WCHAR *format, int count) {
  int used = 0;
  for (const WCHAR *p = format; p && *p; ++p) {
    if (*p != '%') continue;
    if (*++p == '%') continue;
    while (*p == '-' || *p == '+' || *p == ' ' || *p == '0' || *p == '#') ++p;
    while (IsDigit(*p)) ++p;
    if (*p == '.')
      for (++p; IsDigit(*p);) ++p;
    if (*p == 'h') {
      if (*++p == 'h') ++p;
    } else if (*p == 'l' || *p == 'w') {
      ++p;
    } else if (p[0] == 'I' && p[1] == '3' && p[2] == '2') {
      p += 3;
    }
    switch (*p) {
      case 'd': case 'i': case 'u': case 'x': case 'X': case 'o': case 'c': case 'C':
        if (++used > count) return false;
        break;
      default:
        return false;  // '*', strings, pointers, floats, %n, 64-bit sizes, a cut directive
    }
  }
  return true;
}

}  // namespace tv
