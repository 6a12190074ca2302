// Reversible scrambling of profile strings under a caller's key. Not
// encryption: the key byte stream is a simple function of a 32-bit seed.
#include <tavona/text.h>

#include "text/crypt.h"
#include "text/datautil.h"
#include "base/wstr.h"

namespace tv {

const WCHAR kAutoCryptMarker[] = TEXT("$&CR&$-");

uint32_t CryptSeed(const WCHAR *key) {
  uint32_t s = KeyFold(key);
  // A seed of 0 would stay 0 however often it is multiplied; such keys
  // scramble as the empty key does instead of never returning.
  if (s == 0) s = 1;
  return RaiseTo100000(s);
}

namespace {

inline WCHAR KeyByte(uint32_t s) { return static_cast<WCHAR>((s >> 24 ^ s >> 16 ^ s >> 8 ^ s) & 0xFF); }

}  // namespace

void Scramble(const WCHAR *key, WCHAR *text, bool forward) {
  uint32_t s = CryptSeed(key);
  for (WCHAR *p = text; *p; ++p) {
    WCHAR k = KeyByte(s);
    WCHAR in = *p;
    // A character equal to the key byte stays as it is: it would become 0.
    WCHAR out = in == k ? in : static_cast<WCHAR>(in ^ k);
    *p = out;
    // Both directions advance by the scrambled character.
    s *= static_cast<uint16_t>(forward ? out : in);
  }
}

}  // namespace tv

extern "C" {

INT WINAPI Tavona_Crypt(const WCHAR *key, WCHAR *text) {
  if (!key || !text) return 0;
  tv::Scramble(key, text, true);
  return 0;
}

void WINAPI Tavona_DeCrypt(const WCHAR *key, WCHAR *text) {
  if (!key || !text) return;
  tv::Scramble(key, text, false);
}

void WINAPI Tavona_StringToAutoCrypt(const WCHAR *src, WCHAR *out, INT outSize, const WCHAR *key) {
  if (!out || outSize < 10) return;
  if (tv::IsBlank(src)) {
    tv::BoundedCopy(out, src, outSize);
    return;
  }
  WCHAR work[1000];
  tv::BoundedCopy(work, src, 1000);
  Tavona_Crypt(key, work);
  tv::CopyRaw(out, tv::kAutoCryptMarker, 8);
  Tavona_EncodeString(work, out + 7, outSize - 7, TAVONA_ENCODE_QUOTES | TAVONA_ENCODE_HEX |
                                                      TAVONA_ENCODE_ALL_SPACES);
}

void WINAPI Tavona_AutoCryptToString(const WCHAR *src, WCHAR *out, INT outSize, const WCHAR *key) {
  if (!out || outSize < 1) return;
  out[0] = 0;
  if (!src) return;
  if (tv::LenBounded(src, 7) == 7 && tv::EqualN(src, tv::kAutoCryptMarker, 7)) {
    tv::BoundedCopy(out, src + 7, outSize);
    Tavona_DecodeString(out);
    Tavona_DeCrypt(key, out);
  } else {
    tv::BoundedCopy(out, src, outSize);
  }
}

}  // extern "C"
