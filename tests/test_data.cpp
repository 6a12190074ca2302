// Descriptors, scrambling, hash, Roman numerals and regular expressions,
// through the exports.
#include <gtest/gtest.h>
#include <tavona/text.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "testutil.h"

namespace {

constexpr WCHAR kGuard = 0xBEEF;

std::string N(const WStr &s) { return "'" + Narrow(s) + "'"; }

// '|' stands for the tab between descriptor items.
WStr T(const WCHAR *s) {
  WStr r(s);
  std::replace(r.begin(), r.end(), WCHAR('|'), WCHAR(9));
  return r;
}

// size units holding init, then guard units that must survive.
struct Buffer {
  std::vector<WCHAR> u;
  int size;
  Buffer(const WStr &init, int size) : u(size + 4, kGuard), size(size) {
    for (int i = 0; i < size; ++i) u[i] = i < static_cast<int>(init.size()) ? init[i] : 0;
  }
  WCHAR *data() { return u.data(); }
  WStr Text() const { return WStr(u.data(), std::find(u.data(), u.data() + size, 0)); }
  bool GuardOk() const {
    return std::all_of(u.begin() + size, u.end(), [](WCHAR c) { return c == kGuard; });
  }
};

// ---- Descriptors ----

TEST(Descriptors, AddAndDelete) {
  struct Row {
    const WCHAR *before;
    char op;  // s: add string, l: add long, d: delete
    const WCHAR *name;
    const WCHAR *value;
    int capacity;
    const WCHAR *expect;
  };
  const Row rows[] = {
      {TEXT(""), 's', TEXT("a"), TEXT("1"), 50, TEXT("a=1")},
      {TEXT("a=1"), 'l', TEXT("b"), TEXT("2"), 50, TEXT("a=1|b=2")},
      {TEXT("a=1|b=2"), 's', TEXT("a"), TEXT("x"), 50, TEXT("b=2|a=x")},  // moves to the end
      {TEXT("a=1|b=2"), 'd', TEXT("b"), nullptr, 0, TEXT("a=1")},
      {TEXT("a=1|b=2"), 'd', TEXT("a"), nullptr, 0, TEXT("b=2")},
      {TEXT("a=1|b=2|c=3"), 'd', TEXT("b"), nullptr, 0, TEXT("a=1|c=3")},
      {TEXT("a=1"), 'd', TEXT("a"), nullptr, 0, TEXT("")},
      {TEXT("a=1"), 'd', TEXT("z"), nullptr, 0, TEXT("a=1")},
      {TEXT("ab=1|b=2"), 'd', TEXT("b"), nullptr, 0, TEXT("ab=1")},  // "b" is not "ab"
      {TEXT("b=1|ab=2"), 'd', TEXT("b"), nullptr, 0, TEXT("ab=2")},
      {TEXT("x=b=1"), 'd', TEXT("b"), nullptr, 0, TEXT("x=b=1")},  // only after a tab
      {TEXT("  "), 's', TEXT("a"), TEXT("1"), 50, TEXT("  a=1")},  // blanks stay, no tab
      {TEXT(""), 'l', TEXT("n"), TEXT("-42"), 50, TEXT("n=-42")},
      // Each part is its own bounded append: one that does not fit empties
      // the descriptor and the next parts land in the empty buffer.
      {TEXT("a=1"), 's', TEXT("b"), TEXT("2"), 7, TEXT("")},
      {TEXT("a=1"), 's', TEXT("bbb"), TEXT("2"), 7, TEXT("=2")},
      {TEXT("a=1"), 's', TEXT("b"), TEXT("2"), 8, TEXT("a=1|b=2")},
      {TEXT("a=1"), 's', TEXT("b"), nullptr, 50, TEXT("a=1|b=")},
  };
  for (const Row &r : rows) {
    int capacity = r.op == 'd' ? 60 : r.capacity;
    Buffer b(T(r.before), capacity);
    if (r.op == 's') DescriptorAddStringItem(b.data(), capacity, r.name, r.value);
    if (r.op == 'l') DescriptorAddLongItem(b.data(), capacity, r.name, std::stoi(Narrow(r.value)));
    if (r.op == 'd') DescriptorDeleteItem(b.data(), r.name);
    EXPECT_EQ(b.Text(), T(r.expect)) << r.op << " " << N(r.name) << " in " << N(T(r.before))
                                     << " capacity " << capacity << ": got " << N(b.Text())
                                     << " expected " << N(T(r.expect));
    EXPECT_TRUE(b.GuardOk()) << N(T(r.before));
  }
}

TEST(Descriptors, Read) {
  struct Row {
    const WCHAR *descriptor;
    const WCHAR *name;
    int outSize;
    const WCHAR *text;  // DescriptorGetStringItem with default "def"
    int number;         // DescriptorGetLongItem with default 7
  };
  const Row rows[] = {
      {TEXT("a=1|n=-42"), TEXT("n"), 20, TEXT("-42"), -42},
      {TEXT("a=1|n=-42"), TEXT("a"), 20, TEXT(""), 0},  // followed by another item
      {TEXT("a=1|n=-42"), TEXT("z"), 20, TEXT("def"), 7},
      {TEXT("n=-42"), TEXT("n"), 3, TEXT(""), -42},    // does not fit out
      {TEXT("n=-42"), TEXT("n"), 4, TEXT("-42"), -42},
      {TEXT("n=  12x"), TEXT("n"), 20, TEXT("  12x"), 12},
      {TEXT("n=abc"), TEXT("n"), 20, TEXT("abc"), 0},
      {TEXT("n="), TEXT("n"), 20, TEXT(""), 0},
      {TEXT("ab=5"), TEXT("b"), 20, TEXT("def"), 7},
      {TEXT("x=1|ab=5|b=6"), TEXT("b"), 20, TEXT("6"), 6},
      {TEXT(""), TEXT("n"), 3, TEXT(""), 7},  // default that does not fit
  };
  for (const Row &r : rows) {
    WStr d = T(r.descriptor);
    Buffer out(TEXT("zz"), r.outSize);
    DescriptorGetStringItem(d.c_str(), r.name, TEXT("def"), out.data(), r.outSize);
    EXPECT_EQ(out.Text(), WStr(r.text)) << N(r.name) << " in " << N(d) << " size " << r.outSize
                                        << ": got " << N(out.Text());
    EXPECT_TRUE(out.GuardOk());
    EXPECT_EQ(DescriptorGetLongItem(d.c_str(), r.name, 7), r.number) << N(r.name) << " in " << N(d);
  }
  // A value of 100 characters or more does not fit the number buffer.
  WStr longValue = TEXT("n=") + WStr(99, WCHAR('1'));
  EXPECT_EQ(DescriptorGetLongItem(longValue.c_str(), TEXT("n"), 7), 2147483647);
  longValue += WCHAR('1');
  EXPECT_EQ(DescriptorGetLongItem(longValue.c_str(), TEXT("n"), 7), 0);
}

// Names of up to 97 characters are found; longer ones are added but never
// found again.
TEST(Descriptors, NameLengthLimit) {
  for (int len : {97, 98}) {
    WStr name(len, WCHAR('n'));
    Buffer b(TEXT(""), 300);
    DescriptorAddLongItem(b.data(), 300, name.c_str(), 5);
    DescriptorAddLongItem(b.data(), 300, name.c_str(), 6);
    EXPECT_EQ(DescriptorGetLongItem(b.data(), name.c_str(), 0), len == 97 ? 6 : 0) << len;
    EXPECT_EQ(b.Text().size(), (len + 2u) * (len == 97 ? 1 : 2) + (len == 97 ? 0 : 1)) << len;
  }
}

TEST(Descriptors, NullArgumentsAreIgnored) {
  Buffer b(TEXT("a=1"), 10);
  DescriptorAddStringItem(nullptr, 10, TEXT("a"), TEXT("1"));
  DescriptorAddStringItem(b.data(), 0, TEXT("b"), TEXT("1"));
  DescriptorDeleteItem(nullptr, TEXT("a"));
  DescriptorGetStringItem(b.data(), TEXT("a"), nullptr, nullptr, 10);
  DescriptorGetStringItem(b.data(), TEXT("a"), nullptr, b.data(), 0);
  EXPECT_EQ(b.Text(), WStr(TEXT("a=1")));
  EXPECT_EQ(DescriptorGetLongItem(nullptr, TEXT("a"), 5), 5);
  Buffer out(TEXT("zz"), 5);
  DescriptorGetStringItem(nullptr, TEXT("a"), nullptr, out.data(), 5);
  EXPECT_EQ(out.Text(), WStr());
}

// ---- Scrambling ----

TEST(Crypt, KnownValuesAndInverse) {
  // The empty key's seed is 13^5 = 371293 (0x0005AA5D): key byte
  // 0x00 ^ 0x05 ^ 0xAA ^ 0x5D = 0xF2, so 'A' (0x41) becomes 0xB3.
  WCHAR one[] = TEXT("A");
  Tavona_Crypt(TEXT(""), one);
  EXPECT_EQ(one[0], WCHAR(0xB3));
  // The character equal to the key byte stays and still advances the seed.
  WCHAR same[] = {0xF2, 'A', 0};
  WCHAR other[] = {0xF3, 'A', 0};
  Tavona_Crypt(TEXT(""), same);
  Tavona_Crypt(TEXT(""), other);
  EXPECT_EQ(same[0], WCHAR(0xF2));
  EXPECT_EQ(other[0], WCHAR(0x01));
  EXPECT_NE(same[1], other[1]);

  std::mt19937 rng(7);
  const WStr keys[] = {TEXT(""), TEXT("k"), TEXT("Secret key"), WStr{0x4C, 0x71, 0x6D, 0x98D9},
                       WStr{0xFFFF, 0x1234, 0xD800}};
  for (const WStr &key : keys) {
    for (int round = 0; round < 50; ++round) {
      WStr plain;
      int len = static_cast<int>(rng() % 40);
      for (int i = 0; i < len; ++i) plain += static_cast<WCHAR>(1 + rng() % (round % 2 ? 0xFFFF : 300));
      WStr text = plain;
      Tavona_Crypt(key.c_str(), text.data());
      ASSERT_EQ(text.size(), plain.size());
      for (size_t i = 0; i < text.size(); ++i) {
        ASSERT_NE(text[i], 0) << "key " << N(key) << " text " << N(plain);
        ASSERT_EQ(text[i] & 0xFF00, plain[i] & 0xFF00) << "high byte changed";
      }
      Tavona_DeCrypt(key.c_str(), text.data());
      ASSERT_EQ(text, plain) << "key " << N(key);
    }
  }
  WCHAR untouched[] = TEXT("abc");
  Tavona_Crypt(nullptr, untouched);
  Tavona_DeCrypt(nullptr, untouched);
  Tavona_Crypt(TEXT("k"), nullptr);
  EXPECT_EQ(WStr(untouched), WStr(TEXT("abc")));
}

TEST(Crypt, KeyWithSeedZeroScramblesAsTheEmptyKey) {
  const WCHAR zeroSeed[] = {0x4C, 0x71, 0x6D, 0x98D9, 0};
  WCHAR a[] = TEXT("Some text"), b[] = TEXT("Some text");
  Tavona_Crypt(zeroSeed, a);
  Tavona_Crypt(TEXT(""), b);
  EXPECT_EQ(WStr(a), WStr(b));
}

TEST(Crypt, AutoCrypt) {
  struct Row { const WCHAR *src; int outSize; const WCHAR *expect; };  // nullptr: roundtrip
  const Row rows[] = {
      {TEXT(""), 20, TEXT("")},
      {TEXT("   "), 20, TEXT("   ")},
      {TEXT("abc"), 9, TEXT("zz")},  // too small: untouched
      {TEXT("hello world"), 200, nullptr},
      {TEXT("quote \" and \\ backslash\ttab"), 200, nullptr},
  };
  for (const Row &r : rows) {
    Buffer out(TEXT("zz"), r.outSize);
    Tavona_StringToAutoCrypt(r.src, out.data(), r.outSize, TEXT("key"));
    EXPECT_TRUE(out.GuardOk());
    if (r.expect) {
      EXPECT_EQ(out.Text(), WStr(r.expect)) << N(r.src);
      continue;
    }
    WStr stored = out.Text();
    EXPECT_EQ(stored.substr(0, 7), WStr(TEXT("$&CR&$-"))) << N(stored);
    EXPECT_EQ(stored.find_first_of(TEXT(" \"")), WStr::npos) << N(stored);
    Buffer back(TEXT("zz"), 200);
    Tavona_AutoCryptToString(stored.c_str(), back.data(), 200, TEXT("key"));
    EXPECT_EQ(back.Text(), WStr(r.src)) << "from " << N(stored);
  }
  struct Back { const WCHAR *src; const WCHAR *expect; };
  for (const Back &r : {Back{TEXT("plain text"), TEXT("plain text")}, Back{TEXT("$&CR&$-"), TEXT("")},
                        Back{TEXT("$&CR&$"), TEXT("$&CR&$")}}) {
    Buffer out(TEXT("zz"), 50);
    Tavona_AutoCryptToString(r.src, out.data(), 50, TEXT("key"));
    EXPECT_EQ(out.Text(), WStr(r.expect)) << N(r.src);
  }
  Buffer out(TEXT("zz"), 50);
  Tavona_AutoCryptToString(nullptr, out.data(), 50, TEXT("key"));
  EXPECT_EQ(out.Text(), WStr());
}

// ---- Hash and Roman numerals ----

TEST(Hash, Values) {
  struct Row { const WCHAR *text; int modulus; DWORD expect; };
  for (const Row &r : {Row{TEXT(""), 0, 371293}, Row{TEXT(""), 1000, 293}, Row{TEXT(""), -5, 371293},
                       Row{TEXT("a"), 0, 110 * 13 * 13 * 13}, Row{TEXT("ab"), 0, 10793 * 13},
                       Row{TEXT("ab"), 7, 10793 * 13 % 7}}) {
    EXPECT_EQ(Tavona_CreateHash(r.text, r.modulus), r.expect) << N(r.text) << " mod " << r.modulus;
  }
  // A text whose fold is 0 is taken as 1, like the empty text.
  const WCHAR zero[] = {0x4C, 0x71, 0x6D, 0x98D9, 0};
  EXPECT_EQ(Tavona_CreateHash(zero, 0), 371293u);
}

std::string Roman(int v) {
  std::string r;
  const int values[] = {1000, 900, 500, 400, 100, 90, 50, 40, 10, 9, 5, 4, 1};
  const char *names[] = {"M", "CM", "D", "CD", "C", "XC", "L", "XL", "X", "IX", "V", "IV", "I"};
  for (int i = 0; i < 13; ++i)
    for (; v >= values[i]; v -= values[i]) r += names[i];
  return r;
}

TEST(Roman, EveryValue) {
  for (int v = -5; v <= 4001; ++v) {
    Buffer out(TEXT("zz"), 20);
    Tavona_LongToRoman(v, out.data(), 20);
    ASSERT_EQ(Narrow(out.Text()), v >= 1 && v <= 3999 ? Roman(v) : "") << v;
  }
  Buffer small(TEXT("zz"), 4);
  Tavona_LongToRoman(1994, small.data(), 4);  // "MCM" fits, "XC" does not
  EXPECT_TRUE(small.GuardOk());
  EXPECT_LT(small.Text().size(), 4u);
  Tavona_LongToRoman(5, nullptr, 10);
}

// ---- Regular expressions ----

TEST(RegExp, Matches) {
  struct Row { const WCHAR *text; const WCHAR *pattern; int size; int result; UINT length; const WCHAR *match; };
  const Row rows[] = {
      {TEXT("abbbc"), TEXT("b+"), 20, 1, 3, TEXT("bbb")},
      {TEXT("abc"), TEXT("x*"), 20, 0, 0, TEXT("")},
      {TEXT("abc"), TEXT("x"), 20, -1, 99, TEXT("zz")},
      {TEXT("abbbc"), TEXT("b+"), 3, 1, 3, TEXT("")},  // does not fit: empty
      {TEXT("abbbc"), TEXT("b+"), 4, 1, 3, TEXT("bbb")},
      {TEXT("x = 42;"), TEXT("\\d+"), 20, 4, 2, TEXT("42")},
      {TEXT("ab"), TEXT("a|ab"), 20, 0, 1, TEXT("a")},  // ECMAScript: first alternative
      {TEXT("aaa"), TEXT("a+?"), 20, 0, 1, TEXT("a")},
      {TEXT("\u00e9t\u00e9"), TEXT("t."), 20, 1, 2, TEXT("t\u00e9")},
      {TEXT("abc"), TEXT("(b"), 20, TAVONA_REGEXP_BAD_PATTERN, 99, TEXT("zz")},
      {TEXT("abc"), TEXT("a{2,1}"), 20, TAVONA_REGEXP_BAD_PATTERN, 99, TEXT("zz")},
      {TEXT("abc"), TEXT(""), 20, 0, 0, TEXT("")},
  };
  for (const Row &r : rows) {
    UINT length = 99;
    Buffer out(TEXT("zz"), r.size);
    int result = Tavona_ParseRegExp(r.text, 0, r.pattern, &length, out.data(), 0, 0, 0, r.size);
    EXPECT_EQ(result, r.result) << N(r.pattern) << " in " << N(r.text);
    EXPECT_EQ(length, r.length) << N(r.pattern) << " in " << N(r.text);
    EXPECT_EQ(out.Text(), WStr(r.match)) << N(r.pattern) << " in " << N(r.text);
    EXPECT_TRUE(out.GuardOk());
  }
  UINT length = 99;
  EXPECT_EQ(Tavona_ParseRegExp(nullptr, 0, TEXT("a"), &length, nullptr, 0, 0, 0, 0), 0);
  EXPECT_EQ(Tavona_ParseRegExp(TEXT("a"), 0, nullptr, &length, nullptr, 0, 0, 0, 0), 0);
  EXPECT_EQ(length, 99u);
  EXPECT_EQ(Tavona_ParseRegExp(TEXT("xay"), 0, TEXT("a"), nullptr, nullptr, 0, 0, 0, 0), 1);
}

// 300,000 characters make the matcher recurse far beyond an ordinary
// thread's stack.
TEST(RegExp, HostileInputLeavesTheProcessRunning) {
  const int n = 300000;
  WStr ab;
  for (int i = 0; i < n; ++i) ab += WCHAR(i % 3 ? 'a' : 'b');
  WStr abc = ab + TEXT("c");
  WStr as(n, WCHAR('a'));
  WStr xs(n, WCHAR('x'));
  const WStr deepest = WStr(10000, WCHAR('(')) + WStr(10000, WCHAR(')'));
  struct Row { const WStr *text; const WCHAR *pattern; int result; UINT length; };
  const Row rows[] = {
      {&abc, TEXT("(a|b)*c"), 0, n + 1},
      {&as, TEXT("(a*)*$"), 0, n},
      {&xs, TEXT("(a|b)*c"), -1, 0},
      {&as, TEXT("[ab]*$"), 0, n},
      {&as, deepest.c_str(), 0, 0},
  };
  for (const Row &r : rows) {
    UINT length = 0;
    int result = Tavona_ParseRegExp(r.text->c_str(), 0, r.pattern, &length, nullptr, 0, 0, 0, 0);
    EXPECT_EQ(result, r.result) << N(r.pattern);
    if (result == 0) {
      EXPECT_EQ(length, r.length) << N(r.pattern);
    }
  }
  // Quadratic and exponential backtracking give up instead of running for
  // hours; nested groups per character need more stack than is reserved.
  const WStr nested = WStr(TEXT("(")) + TEXT("((((((((((a))))))))))") + TEXT(")*$");
  // Patterns longer than 20000 characters are refused before they are
  // compiled, as compiling recurses once per nesting level.
  const WStr deep = WStr(200000, WCHAR('(')) + WStr(200000, WCHAR(')'));
  const WStr wide = WStr(20001, WCHAR('a'));
  WStr many(1000000, WCHAR('a'));
  struct Hard { const WStr *text; const WCHAR *pattern; };
  for (const Hard &h : {Hard{&as, TEXT("(a|b)*c")}, Hard{&as, TEXT("(a|aa)*b")},
                        Hard{&many, nested.c_str()}, Hard{&as, deep.c_str()},
                        Hard{&as, wide.c_str()}}) {
    UINT length = 77;
    EXPECT_EQ(Tavona_ParseRegExp(h.text->c_str(), 0, h.pattern, &length, nullptr, 0, 0, 0, 0),
              TAVONA_REGEXP_TOO_COMPLEX)
        << N(h.pattern) << " on " << h.text->size() << " characters";
    EXPECT_EQ(length, 77u);
  }
}

}  // namespace
