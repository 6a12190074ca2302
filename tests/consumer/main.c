/* Uses the installed headers from C99 and calls the library. Prints OK and
 * exits 0 when everything answered as documented. */
#include <tavona/tavona32.h>

#include <stdio.h>

static int failures = 0;

static void check(int ok, const char *what) {
  if (!ok) {
    printf("FAILED: %s\n", what);
    ++failures;
  }
}

int main(void) {
  WCHAR buf[64];
  WCHAR text[32] = L"aXbXc";
  WCHAR *wide;
  char *narrow;

  Tavona_GetVersion(buf, 64);
  check(buf[0] >= L'0' && buf[0] <= L'9', "version");
  Tavona_GetLtsModuleName(buf, 64);
  check(lstrcmpW(buf, L"TAVONADLL") == 0, "module name");
  check(Tavona_GetResourceModule() != NULL, "resource library");

  Tavona_Replace(text, 32, L"X", L"YY", 0);
  check(lstrcmpW(text, L"aYYbYYc") == 0, "replace");

  wide = Tavona_ConvertMB2Wide("abc");
  check(wide != NULL && lstrcmpW(wide, L"abc") == 0, "MB2Wide");
  Tavona_FreeMemory(wide);
  narrow = Tavona_ConvertWide2MB(L"xyz");
  check(narrow != NULL && lstrcmpA(narrow, "xyz") == 0, "Wide2MB");
  Tavona_FreeMemory(narrow);

  if (failures == 0) printf("OK\n");
  return failures == 0 ? 0 : 1;
}
