// Descriptors, scrambling, Roman numerals and regular expressions,
// through the exports.
#include <gtest/gtest.h>
#include <tavona/text.h>

#include "testutil.h"

namespace {

using Buffer = GuardedBuffer<WCHAR>;

std::string N(const WStr &s) { return "'" + Narrow(s) + "'"; }

// '|' stands for the tab between descriptor items.
WStr T(const WCHAR *s) {
  WStr r(s);
  std::replace(r.begin(), r.end(), WCHAR('|'), WCHAR(9));
  return r;
}

// op s: add string, l: add long, d: delete. A part that does not fit
// empties the descriptor, and the next parts land in the empty buffer.
TEST(Descriptors, AddAndDelete) {
  struct Row { const WCHAR *before; char op; const WCHAR *name, *value; int capacity;
               const WCHAR *expect; };
  const Row rows[] = {
      {TEXT("a=1"), 'l', TEXT("b"), TEXT("2"), 50, TEXT("a=1|b=2")},
      {TEXT("a=1|b=2"), 's', TEXT("a"), TEXT("x"), 50, TEXT("b=2|a=x")},  // moves to the end
      {TEXT("  "), 's', TEXT("a"), TEXT("1"), 50, TEXT("  a=1")},  // blanks stay, no tab
      {TEXT("a=1"), 's', TEXT("b"), TEXT("2"), 7, TEXT("")},
      {TEXT("a=1"), 's', TEXT("bbb"), TEXT("2"), 7, TEXT("=2")},
      {TEXT("a=1"), 's', TEXT("b"), TEXT("2"), 8, TEXT("a=1|b=2")},
      {TEXT("ab=1|b=2"), 'd', TEXT("b"), nullptr, 60, TEXT("ab=1")},  // "b" is not "ab"
      {TEXT("x=b=1"), 'd', TEXT("b"), nullptr, 60, TEXT("x=b=1")},    // only after a tab
  };
  for (const Row &r : rows) {
    Buffer b(r.capacity, T(r.before).c_str());
    if (r.op == 's') DescriptorAddStringItem(b.data(), r.capacity, r.name, r.value);
    if (r.op == 'l') DescriptorAddLongItem(b.data(), r.capacity, r.name, std::stoi(Narrow(r.value)));
    if (r.op == 'd') DescriptorDeleteItem(b.data(), r.name);
    EXPECT_EQ(b.Text(), T(r.expect)) << r.op << " " << N(r.name) << " in " << N(T(r.before))
                                     << " capacity " << r.capacity;
  }
}

// text: DescriptorGetStringItem with default "def"; number: DescriptorGetLongItem with default 7.
TEST(Descriptors, Read) {
  struct Row { const WCHAR *descriptor, *name; int outSize; const WCHAR *text; int number; };
  const Row rows[] = {
      {TEXT("a=1|n=-42"), TEXT("n"), 20, TEXT("-42"), -42},
      {TEXT("a=1|n=-42"), TEXT("a"), 20, TEXT(""), 0},  // followed by another item
      {TEXT("n=-42"), TEXT("n"), 3, TEXT(""), -42},  // does not fit out
      {TEXT("n=  12x"), TEXT("n"), 20, TEXT("  12x"), 12},
      {TEXT("ab=5"), TEXT("b"), 20, TEXT("def"), 7},
      {TEXT(""), TEXT("n"), 3, TEXT(""), 7},  // default that does not fit
  };
  for (const Row &r : rows) {
    WStr d = T(r.descriptor);
    Buffer out(r.outSize, TEXT("zz"));
    DescriptorGetStringItem(d.c_str(), r.name, TEXT("def"), out.data(), r.outSize);
    EXPECT_EQ(out.Text(), WStr(r.text)) << N(r.name) << " in " << N(d) << " size " << r.outSize;
    EXPECT_EQ(DescriptorGetLongItem(d.c_str(), r.name, 7), r.number) << N(r.name) << " in " << N(d);
  }
  // A value of 100 characters or more does not fit the number buffer.
  WStr longValue = TEXT("n=") + WStr(99, WCHAR('1'));
  EXPECT_EQ(DescriptorGetLongItem(longValue.c_str(), TEXT("n"), 7), 2147483647);
  EXPECT_EQ(DescriptorGetLongItem((longValue + TEXT("1")).c_str(), TEXT("n"), 7), 0);
}

// Names of up to 97 characters are found; longer ones are added but never
// found again.
TEST(Descriptors, NameLengthLimit) {
  for (int len : {97, 98}) {
    WStr name(len, WCHAR('n'));
    Buffer b(300, TEXT(""));
    DescriptorAddLongItem(b.data(), 300, name.c_str(), 5);
    DescriptorAddLongItem(b.data(), 300, name.c_str(), 6);
    EXPECT_EQ(DescriptorGetLongItem(b.data(), name.c_str(), 0), len == 97 ? 6 : 0) << len;
    EXPECT_EQ(b.Text().size(), len == 97 ? len + 2u : 2 * (len + 2u) + 1) << len;
  }
}

// The empty key's seed is 13^5 = 371293 (0x0005AA5D): key byte 0x00 ^ 0x05
// ^ 0xAA ^ 0x5D = 0xF2, so 'A' (0x41) becomes 0xB3; a key whose seed folds
// to 0 scrambles as the empty key. The character equal to the key byte
// stays and still advances the seed; high bytes stay. (Round trips and
// "never 0": fuzz_crypt.)
TEST(Crypt, KnownValues) {
  WCHAR one[] = TEXT("A"), same[] = {0xF2, 'A', 0}, other[] = {0xF3, 'A', 0};
  for (WCHAR *text : {one, same, other}) Tavona_Crypt(TEXT(""), text);
  EXPECT_EQ(std::vector<WCHAR>({one[0], same[0], other[0]}), std::vector<WCHAR>({0xB3, 0xF2, 0x01}));
  EXPECT_NE(same[1], other[1]);
  const WStr zeroSeed = {0x4C, 0x71, 0x6D, 0x98D9}, plain = {0xF2, 0x1F2, 0xFFF2, 0x4142};
  WStr text = plain, empty = plain;
  Tavona_Crypt(zeroSeed.c_str(), text.data());
  Tavona_Crypt(TEXT(""), empty.data());
  EXPECT_EQ(text, empty) << "zero seed";
  for (size_t i = 0; i < text.size(); ++i) EXPECT_EQ(text[i] & 0xFF00, plain[i] & 0xFF00) << i;
}

// Blank texts are kept as they stand; others are marked, scrambled and
// escaped (no blank or quote left), and come back. expect null: round trip.
TEST(Crypt, AutoCrypt) {
  struct Row { const WCHAR *src; int outSize; const WCHAR *expect; };
  const Row rows[] = {{TEXT("   "), 20, TEXT("   ")},
                      {TEXT("abc"), 9, TEXT("zz")},  // too small: untouched
                      {TEXT("quote \" and \\ backslash\ttab"), 200, nullptr}};
  for (const Row &r : rows) {
    Buffer out(r.outSize, TEXT("zz"));
    Tavona_StringToAutoCrypt(r.src, out.data(), r.outSize, TEXT("key"));
    WStr stored = out.Text();
    if (r.expect) {
      EXPECT_EQ(stored, WStr(r.expect)) << N(r.src);
      continue;
    }
    EXPECT_EQ(stored.substr(0, 7), WStr(TEXT("$&CR&$-"))) << N(stored);
    EXPECT_EQ(stored.find_first_of(TEXT(" \"")), WStr::npos) << N(stored);
    Buffer back(200, TEXT("zz"));
    Tavona_AutoCryptToString(stored.c_str(), back.data(), 200, TEXT("key"));
    EXPECT_EQ(back.Text(), WStr(r.src)) << "from " << N(stored);
  }
  struct Back { const WCHAR *src, *expect; } backs[] = {
      {TEXT("plain text"), TEXT("plain text")}, {TEXT("$&CR&$-"), TEXT("")},
      {TEXT("$&CR&$"), TEXT("$&CR&$")}};
  for (const Back &r : backs) {
    Buffer out(50, TEXT("zz"));
    Tavona_AutoCryptToString(r.src, out.data(), 50, TEXT("key"));
    EXPECT_EQ(out.Text(), WStr(r.expect)) << N(r.src);
  }
}

TEST(Hash, Values) {
  const WCHAR zeroFold[] = {0x4C, 0x71, 0x6D, 0x98D9, 0};  // taken as 1, like the empty text
  struct Row { const WCHAR *text; int modulus; DWORD expect; } rows[] = {
      {TEXT(""), 0, 371293},        {TEXT(""), 1000, 293},          {TEXT(""), -5, 371293},
      {TEXT("ab"), 0, 10793 * 13},  {TEXT("ab"), 7, 10793 * 13 % 7}, {TEXT("a"), 0, 110 * 13 * 13 * 13},
      {zeroFold, 0, 371293}};
  for (const Row &r : rows)
    EXPECT_EQ(Tavona_CreateHash(r.text, r.modulus), r.expect) << N(r.text) << " mod " << r.modulus;
}

TEST(Roman, Values) {
  struct Row { int value; const char *expect; } rows[] = {
      {1, "I"},       {4, "IV"},          {9, "IX"},       {944, "CMXLIV"},     {1994, "MCMXCIV"},
      {3888, "MMMDCCCLXXXVIII"},          {3999, "MMMCMXCIX"}, {0, ""},         {4000, ""}};
  for (const Row &r : rows) {
    Buffer out(20, TEXT("zz"));
    Tavona_LongToRoman(r.value, out.data(), 20);
    EXPECT_EQ(Narrow(out.Text()), r.expect) << r.value;
  }
}

TEST(RegExp, Matches) {
  struct Row { const WCHAR *text, *pattern; int size, result; UINT length; const WCHAR *match; };
  const Row rows[] = {
      {TEXT("abbbc"), TEXT("b+"), 20, 1, 3, TEXT("bbb")},
      {TEXT("abc"), TEXT("x"), 20, -1, 99, TEXT("zz")},
      {TEXT("abbbc"), TEXT("b+"), 3, 1, 3, TEXT("")},  // does not fit: empty
      {TEXT("ab"), TEXT("a|ab"), 20, 0, 1, TEXT("a")},  // ECMAScript: first alternative
      {TEXT("abc"), TEXT("(b"), 20, TAVONA_REGEXP_BAD_PATTERN, 99, TEXT("zz")},
  };
  for (const Row &r : rows) {
    UINT length = 99;
    Buffer out(r.size, TEXT("zz"));
    int result = Tavona_ParseRegExp(r.text, 0, r.pattern, &length, out.data(), 0, 0, 0, r.size);
    std::string row = N(r.pattern) + " in " + N(r.text);
    EXPECT_EQ(result, r.result) << row;
    EXPECT_EQ(length, r.length) << row;
    EXPECT_EQ(out.Text(), WStr(r.match)) << row;
    EXPECT_TRUE(out.Intact()) << row;
  }
}

// 300,000 characters make the matcher recurse far beyond an ordinary
// thread's stack. Quadratic and exponential backtracking give up instead of
// running for hours; nested groups per character need more stack than is
// reserved; patterns longer than 20000 characters are refused before they
// are compiled, as compiling recurses once per nesting level.
TEST(RegExp, HostileInputLeavesTheProcessRunning) {
  const int n = 300000;
  WStr ab(n, WCHAR('a')), as(n, WCHAR('a')), xs(n, WCHAR('x')), many(1000000, WCHAR('a'));
  for (int i = 0; i < n; i += 3) ab[i] = 'b';
  const WStr abc = ab + TEXT("c"), nested = TEXT("(((((((((((a)))))))))))*$");
  const WStr deepest = WStr(10000, WCHAR('(')) + WStr(10000, WCHAR(')'));
  const WStr deep = WStr(200000, WCHAR('(')) + WStr(200000, WCHAR(')')), wide(20001, WCHAR('a'));
  constexpr int kTooComplex = TAVONA_REGEXP_TOO_COMPLEX;
  // length 77: left alone.
  struct Row { const WStr *text; const WCHAR *pattern; int result; UINT length; } rows[] = {
      {&abc, TEXT("(a|b)*c"), 0, n + 1u},  {&as, TEXT("(a*)*$"), 0, n},
      {&xs, TEXT("(a|b)*c"), -1, 77},      {&as, TEXT("[ab]*$"), 0, n},
      {&as, deepest.c_str(), 0, 0},        {&as, TEXT("(a|b)*c"), kTooComplex, 77},
      {&as, TEXT("(a|aa)*b"), kTooComplex, 77}, {&many, nested.c_str(), kTooComplex, 77},
      {&as, deep.c_str(), kTooComplex, 77},     {&as, wide.c_str(), kTooComplex, 77},
  };
  for (const Row &r : rows) {
    UINT length = 77;
    int result = Tavona_ParseRegExp(r.text->c_str(), 0, r.pattern, &length, nullptr, 0, 0, 0, 0);
    std::string row = N(WStr(r.pattern).substr(0, 30)) + " on " + std::to_string(r.text->size());
    EXPECT_EQ(result, r.result) << row;
    EXPECT_EQ(result == -1 ? 77 : length, r.length) << row;
  }
}

}  // namespace
