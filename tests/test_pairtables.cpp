// Value translation tables, through the exports.
#include <gtest/gtest.h>
#include <tavona/frame.h>

#include <string>

#include "testutil.h"

namespace {

constexpr UINT kEnd = 0xFFFFFFFF;

// First word 2 repeats; the terminator's second word and a pair after the
// end must never be used.
const TAVONA_VALUE_PAIR kNumbers[] = {{1, 10}, {2, 20}, {2, 21}, {3, 10}, {kEnd, 7}, {7, 70}};
const TAVONA_VALUE_PAIR kEmpty[] = {{kEnd, 5}, {5, 6}};
const TAVONA_TEXT_PAIR kTexts[] = {{1, TEXT("ONE")}, {2, TEXT("two")}, {2, TEXT("deux")},
                                   {3, TEXT("")},    {4, nullptr},     {4, TEXT("four")}};

TEST(PairTables, Translate) {
  struct Row { UINT value; const TAVONA_VALUE_PAIR *table; BYTE flags; UINT expect; };
  for (const Row &r : {Row{2, kNumbers, 0, 20}, Row{9, kNumbers, 0, 99}, Row{7, kNumbers, 0, 99},
                       Row{kEnd, kNumbers, 0, 99}, Row{10, kNumbers, 1, 1}, Row{21, kNumbers, 0xFF, 2},
                       Row{7, kNumbers, 1, 99}, Row{10, kNumbers, 2, 99}, Row{5, kEmpty, 1, 99}})
    EXPECT_EQ(Tavona_Translate(r.value, r.table, kEnd, 99, r.flags), r.expect)
        << "value " << r.value << " flags " << int(r.flags);
}

TEST(PairTables, Texts) {
  struct Row { INT value; const TAVONA_TEXT_PAIR *table; const WCHAR *def; UINT size; const WCHAR *expect; };
  for (const Row &r : {Row{2, kTexts, TEXT("none"), 9, TEXT("two")}, Row{4, kTexts, TEXT("none"), 9, TEXT("none")},
                       Row{9, kTexts, nullptr, 9, TEXT("")}, Row{9, nullptr, TEXT("none"), 9, TEXT("old")},
                       Row{1, kTexts, nullptr, 1, TEXT("")}, Row{1, kTexts, nullptr, 3, TEXT("")},  // never cut
                       Row{1, kTexts, nullptr, 4, TEXT("ONE")}}) {
    WStr buf(r.size + 2, '#');
    for (UINT i = 0; i < r.size; ++i) buf[i] = i < 3 && i + 1 < r.size ? TEXT("old")[i] : 0;
    Tavona_Translate_LongToString(r.value, buf.data(), r.size, r.table, r.def);
    EXPECT_TRUE(buf.c_str() == WStr(r.expect) && buf.substr(r.size) == TEXT("##"))
        << "value " << r.value << " size " << r.size << ": got '" << Narrow(buf.c_str()) << "'";
  }
  const TAVONA_TEXT_PAIR none[] = {{5, nullptr}};
  struct Back { const WCHAR *text; const TAVONA_TEXT_PAIR *table; INT flags; INT expect; };
  for (const Back &r : {Back{TEXT("deux"), kTexts, 0, 2}, Back{TEXT("one"), kTexts, 1, -1},
                        Back{TEXT("one"), kTexts, 2, 1}, Back{TEXT(""), kTexts, 0, 3},
                        Back{TEXT("four"), kTexts, 0, -1}, Back{TEXT("x"), none, 0, -1}})
    EXPECT_EQ(Tavona_Translate_StringToLong(r.text, r.table, -1, r.flags), r.expect)
        << "text '" << Narrow(r.text) << "' flags " << r.flags;
}

}  // namespace
