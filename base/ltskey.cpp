#include "base/ltskey.h"

namespace tv {

namespace {

// U+0000..U+00FF; 0 = dropped. The odd rows are the system's own: the
// accented I letters give "H", U+00FF gives "U", "&" (the accelerator
// marker) gives "X" and ! " # $ % < = > give letters.
constexpr char kAscii[128 + 1] =
    // 0x00-0x1F: dropped
    "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
    // space ! " # $ % & ' ( ) * + , - . /
    "_ASNDPX_________"
    // 0-9 : ; < = > ?
    "0123456789__KEG_"
    // @ A-O
    "@ABCDEFGHIJKLMNO"
    // P-Z [ \ ] ^ _
    "PQRSTUVWXYZ_____"
    // ` a-o: the backquote is dropped
    "\0ABCDEFGHIJKLMNO"
    // p-z { | } ~ DEL
    "PQRSTUVWXYZ_____";

// U+00C0..U+00FF.
constexpr char kLatin1[64 + 1] =
    "AAAAAAACEEEEHHHH"  // À..Ï
    "DNOOOOOXOUUUUY\0S"  // Ð..ß (Þ dropped)
    "AAAAAAACEEEEHHHH"  // à..ï
    "DNOOOOOXOUUUUY\0U";  // ð..ÿ (þ dropped)

constexpr char kHex[] = "0123456789ABCDEF";

}  // namespace

uint32_t LtsTextHash(const WCHAR *text) {
  if (!text) return 1;
  uint32_t h = 0;
  for (; *text; ++text) {
    uint32_t t = h ^ static_cast<uint16_t>(*text);
    h = (t >> 28) ^ (t * 131u);
  }
  return h;
}

WCHAR LtsKeyChar(WCHAR c) {
  unsigned u = static_cast<uint16_t>(c);
  if (u < 0x80) return static_cast<WCHAR>(static_cast<unsigned char>(kAscii[u]));
  if (u >= 0xC0 && u <= 0xFF)
    return static_cast<WCHAR>(static_cast<unsigned char>(kLatin1[u - 0xC0]));
  return 0;
}

bool LtsFindPrefix(const WCHAR *text, int &keyLen, int &restAt) {
  if (!text || text[0] != '(' || text[1] != '(') return false;
  for (int i = 2; text[i]; ++i) {
    if (text[i] == ')' && text[i + 1] == ')') {
      keyLen = i - 2;
      restAt = i + 2;
      return true;
    }
  }
  return false;
}

void LtsMakeKey(const WCHAR *text, WCHAR *key, int n) {
  if (!key || n < 50) return;
  key[0] = 0;
  if (!text || !text[0]) return;
  int keyLen, restAt;
  if (LtsFindPrefix(text, keyLen, restAt)) {
    if (keyLen > n - 1) keyLen = n - 1;
    for (int i = 0; i < keyLen; ++i) key[i] = text[2 + i];
    key[keyLen] = 0;
    return;
  }
  int len = 0, counter = 0;
  WCHAR last = '_';
  if (text[0] >= '0' && text[0] <= '9') {
    key[len++] = 'D';
    counter = 1;  // the last character stays "_"
  }
  for (const WCHAR *p = text; *p && counter <= 20; ++p) {
    WCHAR k = LtsKeyChar(*p);
    if (!k || (k == '_' && last == '_')) continue;
    key[len++] = k;
    ++counter;
    last = k;
  }
  if (last != '_') key[len++] = '_';
  if (len == 0) {
    key[len++] = 'K';
    key[len++] = '_';
  }
  uint32_t h = LtsTextHash(text);
  for (int shift = 28; shift >= 0; shift -= 4) key[len++] = static_cast<WCHAR>(kHex[(h >> shift) & 15]);
  key[len] = 0;
}

}  // namespace tv
