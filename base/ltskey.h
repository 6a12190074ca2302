// Keys of run-time translation: the text hash and the key derived from a
// text. Platform-free.
#pragma once

#include <tavona/tvbase.h>

#include <cstdint>

namespace tv {

// h = ((h ^ c) >> 28) ^ ((h ^ c) * 131) over the UTF-16 units, modulo 2^32,
// from 0. A null text hashes to 1, an empty one to 0.
uint32_t LtsTextHash(const WCHAR *text);

// The key buffer size the library always uses.
inline constexpr int kLtsKeySize = 100;

// The key of a text into key (n characters, n >= 50; otherwise nothing is
// written). An explicit prefix "((KEY))" gives KEY (cut to n - 1). Else up
// to 21 readable characters (upper-cased letters, digits, letters for some
// punctuation, one "_" for each run of separators; "D" first when the text
// starts with a digit), "_", and the hash as eight hex digits; "K_" stands
// in when nothing readable is left. Units above U+00FF are dropped.
void LtsMakeKey(const WCHAR *text, WCHAR *key, int n);

// What one unit from U+0000 to U+00FF becomes in a key: a character, or 0
// when it is dropped. Units above U+00FF give 0.
WCHAR LtsKeyChar(WCHAR c);

// The explicit key of a text: true when it starts with "((" and holds "))"
// after that; the key (possibly empty) is then text[2, 2 + keyLen) and the
// visible text starts at restAt.
bool LtsFindPrefix(const WCHAR *text, int &keyLen, int &restAt);

}  // namespace tv
