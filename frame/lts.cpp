#include "frame/lts.h"

#include "base/escape.h"
#include "base/ltskey.h"
#include "frame/globals.h"
#include "frame/platform.h"
#include "base/wstr.h"

namespace tv {

int StripKeyPrefix(WCHAR *text) {
  int keyLen, restAt;
  if (!LtsFindPrefix(text, keyLen, restAt)) return 0;
  int to = 0;
  while ((text[to++] = text[restAt++]) != 0) {
  }
  return keyLen;
}

void LtsTranslate(const WCHAR *module, const WCHAR *section, WCHAR *text, int size) {
  if (!text || size < 1) return;
  if (!module || !module[0]) module = TEXT("GENERAL");
  if (!section || !section[0]) section = TEXT("STRINGS");
  LtsProvider provider = g.ltsProvider;
  if (!provider) {
    StripKeyPrefix(text);
    return;
  }
  WCHAR key[kLtsKeySize];
  LtsMakeKey(text, key, kLtsKeySize);
  StripKeyPrefix(text);
  if (!key[0]) return;  // "(())text": nothing to look up
  provider(module, section, key, text, size);
  text[size - 1] = 0;  // a provider that fills the buffer still leaves a text
  DecodeEscapes(text);
}

int LoadTranslatedString(HMODULE module, UINT id, WCHAR *buffer, int size) {
  if (!buffer || size < 1) return 0;
  if (plat::LoadResString(module, id, buffer, size) < 1) return 0;
  LtsTranslateText(g.ltsModuleName, buffer, size);
  return Len(buffer);
}

}  // namespace tv
