#include "frame/lts.h"

#include "frame/globals.h"
#include "frame/platform.h"
#include "base/wstr.h"

namespace tv {

int StripKeyPrefix(WCHAR *text) {
  if (!text || text[0] != '(' || text[1] != '(') return 0;
  for (int i = 2; text[i]; ++i) {
    if (text[i] == ')' && text[i + 1] == ')') {
      int from = i + 2, to = 0;
      while ((text[to++] = text[from++]) != 0) {
      }
      return i - 2;
    }
  }
  return 0;
}

void LtsTranslateText(const WCHAR *module, WCHAR *text, int size) {
  if (!text || size < 1) return;
  StripKeyPrefix(text);
}

int LoadTranslatedString(HMODULE module, UINT id, WCHAR *buffer, int size) {
  if (!buffer || size < 1) return 0;
  if (plat::LoadResString(module, id, buffer, size) < 1) return 0;
  LtsTranslateText(g.ltsModuleName, buffer, size);
  return Len(buffer);
}

}  // namespace tv
