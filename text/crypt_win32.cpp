// Scrambled values in profile files.
#include <tavona/text.h>

#include <windows.h>

#include "base/wstr.h"

namespace {

constexpr UINT kEncodeFlags = TAVONA_ENCODE_QUOTES | TAVONA_ENCODE_HEX | TAVONA_ENCODE_ALL_SPACES;
const WCHAR kMissing[] = L"$$$CRYPTDEFAULT$$$";

}  // namespace

extern "C" {

BOOL WINAPI Tavona_WriteCryptedProfileString(const WCHAR *key, const WCHAR *file,
                                             const WCHAR *section, const WCHAR *name,
                                             const WCHAR *value) {
  WCHAR plain[2000];
  WCHAR encoded[2000];
  tv::BoundedCopy(plain, value, 2000);
  Tavona_Crypt(key, plain);
  Tavona_EncodeString(plain, encoded, 2000, kEncodeFlags);
  return WritePrivateProfileStringW(section, name, encoded, file);
}

void WINAPI Tavona_ReadCryptedProfileString(const WCHAR *key, const WCHAR *file,
                                            const WCHAR *section, const WCHAR *name,
                                            const WCHAR *defaultValue, WCHAR *out, INT outSize) {
  if (!out || outSize < 1) return;
  out[0] = 0;
  GetPrivateProfileStringW(section, name, kMissing, out, static_cast<DWORD>(outSize), file);
  if (tv::Compare(out, kMissing) == 0) {
    // The default is plain text.
    tv::BoundedCopy(out, defaultValue, outSize);
    return;
  }
  Tavona_DecodeString(out);
  Tavona_DeCrypt(key, out);
}

}  // extern "C"
