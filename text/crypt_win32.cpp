// Scrambled values in profile files.
#include <tavona/text.h>

#include <windows.h>

#include "base/wstr.h"
#include "frame/misuse.h"

namespace {

constexpr UINT kEncodeFlags = TAVONA_ENCODE_QUOTES | TAVONA_ENCODE_HEX | TAVONA_ENCODE_ALL_SPACES;
const WCHAR kMissing[] = L"$$$CRYPTDEFAULT$$$";

}  // namespace

extern "C" {

BOOL WINAPI Tavona_WriteCryptedProfileString(const WCHAR *key, const WCHAR *file,
                                             const WCHAR *section, const WCHAR *name,
                                             const WCHAR *value) {
  if (!tv::ProfileNameFits(file, "Tavona_WriteCryptedProfileString")) return FALSE;
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
  // The default is plain text; a file name the platform cannot take reads
  // as a missing value.
  if (!tv::ProfileNameFits(file, "Tavona_ReadCryptedProfileString")) {
    tv::BoundedCopy(out, defaultValue, outSize);
    return;
  }
  GetPrivateProfileStringW(section, name, kMissing, out, static_cast<DWORD>(outSize), file);
  if (tv::Compare(out, kMissing) == 0) {
    tv::BoundedCopy(out, defaultValue, outSize);
    return;
  }
  Tavona_DecodeString(out);
  Tavona_DeCrypt(key, out);
}

}  // extern "C"
