// Arguments outside what a routine documents. The routine refuses them
// (empty result, failure status) and says so on the debugger output, as
// the bounded copies do for texts that do not fit.
#pragma once

#include <tavona/tvbase.h>

namespace tv {

// "tavona32: <routine>: <what>" on the debugger output.
void ReportMisuse(const char *routine, const char *what);

// True when format holds only %% and at most count integer conversions
// that take one 32-bit argument each (d i u x X o c C; flags, width and
// precision written as digits; size h, hh, l, w or I32). Anything else
// could read an argument that was never passed.
bool FormatTakesIntegers(const WCHAR *format, int count);

// True when the platform's profile functions can take the file name:
// its full form must fit their MAX_PATH buffers. Reported otherwise.
// (Windows build only.)
bool ProfileNameFits(const WCHAR *file, const char *routine);

}  // namespace tv
