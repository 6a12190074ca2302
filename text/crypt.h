// Internals of the profile string scrambling, shared with its dialog and
// the crypted profile values.
#pragma once

#include <tavona/tvbase.h>

#include <cstdint>

namespace tv {

extern const WCHAR kAutoCryptMarker[];  // "$&CR&$-"

// The seed a key starts from (a seed of 0 is taken as 1).
uint32_t CryptSeed(const WCHAR *key);

// Scrambles (forward) or unscrambles text in place.
void Scramble(const WCHAR *key, WCHAR *text, bool forward);

}  // namespace tv
