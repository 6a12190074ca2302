// Decoding of the backslash escape notation in place. Platform-free.
#pragma once

#include <tavona/tvbase.h>

namespace tv {

// Tavona_DecodeString (escape '\\', expanded false) and
// Tavona_DecodeStringExpanded (the caller's escape character, no "\v",
// falls back to the escape character instead of a backslash). Null does
// nothing; the output is never longer than the input.
void DecodeEscapes(WCHAR *text, WCHAR escape = '\\', bool expanded = false);

}  // namespace tv
