// Keys of run-time translation: the hash and the derived key, row by row.
#include <gtest/gtest.h>

#include <string>

#include "base/ltskey.h"
#include "testutil.h"

namespace {

WStr Key(const WCHAR *text) {
  WCHAR key[tv::kLtsKeySize + 1];
  for (WCHAR &c : key) c = '#';
  key[tv::kLtsKeySize] = 0;
  tv::LtsMakeKey(text, key, tv::kLtsKeySize);
  return key;
}

// Explicit keys and the empty text: fuzz_ltskey.
TEST(LtsKey, WorkedExamples) {
  struct Row {
    const WCHAR *text, *key;
  } rows[] = {
      {u"&OK", u"XOK_0509C774"},           {u"Cancel", u"CANCEL_21ED1D6D"},
      {u"1. Seite", u"D1_SEITE_B9397CCE"}, {u"Datei &\u00F6ffnen...", u"DATEI_XOFFNEN_6D3F1AFC"},
  };
  for (const Row &r : rows) EXPECT_EQ(Narrow(Key(r.text)), Narrow(r.key)) << Narrow(r.text);
}

// The readable part only; the hash is checked above and by LtsTextHash.
WStr Readable(const WCHAR *text) {
  WStr k = Key(text);
  return k.size() > 8 ? k.substr(0, k.size() - 8) : k;
}

TEST(LtsKey, ReadablePart) {
  struct Row {
    const WCHAR *text, *readable;
  } rows[] = {
      {u"abcdefghijklmnopqrstuvwxyzabcd", u"ABCDEFGHIJKLMNOPQRSTU_"},  // 21 characters, then "_"
      {u"12345678901234567890123", u"D12345678901234567890_"},        // "D" counts
      {u"--x", u"X_"},                                  // no key starts with "_"
      {u"((ID_SAVE)Save", u"ID_SAVE_SAVE_"},            // no "))": derived
      {u"!\"#$%<=>@", u"ASNDPKEG@_"},                    // punctuation as letters
      {u"\u00CC\u00CD\u00CE\u00CF\u00EC\u00FF\u00DF", u"HHHHHUS_"},  // the odd rows
      {u"\u00DE\u00FE\u00A9\u0080x", u"X_"},             // dropped Latin-1
      {u"\u0416\u4E2Dz\u00C4", u"ZA_"}, {u"\u0416", u"K_"},  // above U+00FF: dropped
  };
  for (const Row &r : rows) EXPECT_EQ(Narrow(Readable(r.text)), Narrow(r.readable)) << Narrow(r.text);
}

TEST(LtsKey, Hash) {
  EXPECT_EQ(tv::LtsTextHash(nullptr), 1u);
  EXPECT_EQ(tv::LtsTextHash(u""), 0u);
  // Buffers below 50 and explicit keys cut to n - 1: fuzz_ltskey.
  // The whole text counts in the hash, however long.
  WStr big(10000, u'a'), other = big;
  other[9999] = u'b';
  EXPECT_NE(Key(big.c_str()), Key(other.c_str()));
}

}  // namespace
