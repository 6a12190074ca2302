// Escape notation, separated lists and language lists, through the exports.
#include <gtest/gtest.h>
#include <tavona/text.h>

#include <algorithm>
#include <string>
#include <vector>

#include "testutil.h"

namespace {

constexpr WCHAR kGuard = GuardedBuffer<WCHAR>::kFill;

std::string N(const WCHAR *s) { return s ? "'" + Narrow(s) + "'" : "null"; }

// '|' stands for the vertical tab of language lists.
WStr V(const WCHAR *s) {
  WStr r(s ? s : TEXT(""));
  std::replace(r.begin(), r.end(), WCHAR('|'), WCHAR(11));
  return r;
}

// The buffer holds expect and nothing was written past its size.
bool Ok(const GuardedBuffer<WCHAR> &b, const WStr &expect) { return b.Text() == expect && b.Intact(); }

TEST(TextEscapes, Encode) {
  struct Row { const WCHAR *src; unsigned flags; int size; const WCHAR *expect; };
  for (const Row &r : {Row{TEXT("  a\"b"), 5, 99, TEXT("\\x20\\x20a\\qb")},
                       Row{TEXT(" a b"), 16, 99, TEXT("\\x20a\\x20b")},
                       Row{TEXT("\t\x01\b\v\x0c"), 0, 99, TEXT("\\t\\d01\\a\\v\\d12")},
                       Row{TEXT("\x1f"), 2, 99, TEXT("\\x1F")},
                       Row{TEXT("C:\\d\r\n"), 8, 99, TEXT("C:\\\\d\\\\n")},  // lone '\' for CR
                       Row{TEXT("abcdef"), 0, 12, TEXT("ab")},  // stops at 10 left
                       Row{TEXT("a\x01xyz"), 0, 12, TEXT("a\\d01")}}) {
    GuardedBuffer<WCHAR> b(r.size, TEXT("zz"));
    Tavona_EncodeString(r.src, b.data(), r.size, r.flags);
    EXPECT_TRUE(Ok(b, r.expect)) << "encode " << N(r.src) << " flags " << r.flags << " size "
                                << r.size << ": got " << N(b.Text().c_str()) << " expected " << N(r.expect);
  }
}

TEST(TextEscapes, Decode) {
  struct Row { const WCHAR *in; WCHAR escape; const WCHAR *expect; };  // escape 0: classic
  for (const Row &r : {Row{TEXT("\\z\\\\"), 0, TEXT("\\\\")}, Row{TEXT("abc\\"), 0, TEXT("abc")},
                       Row{TEXT("\\x41\\x6a\\d66\\d 9\\d7x"), 0, TEXT("AjB\t\x07")},
                       Row{TEXT("\\xZZ\\d-1"), 0, TEXT("\xFFFF\xFFFF")},
                       Row{TEXT("a\\x4"), 0, TEXT("a\\4")},  // too short
                       Row{TEXT("^^^n^v^z\\n^x4"), '^', TEXT("^\n^^\\n^4")}}) {
    WStr t = WStr(r.in) + WCHAR(0) + kGuard;
    r.escape ? Tavona_DecodeStringExpanded(t.data(), r.escape) : Tavona_DecodeString(t.data());
    EXPECT_TRUE(t.c_str() == WStr(r.expect) && t.back() == kGuard)
        << "decode " << N(r.in) << ": got " << N(t.c_str()) << " expected " << N(r.expect);
  }
  // The binary copy is never cut: a source that does not fit gives "".
  for (int size : {5, 4}) {
    GuardedBuffer<WCHAR> b(size, TEXT("zz"));
    EXPECT_EQ(Tavona_EscapeToBinary(TEXT("a\\tb"), b.data(), size), 0);
    EXPECT_TRUE(Ok(b, size == 5 ? TEXT("a\tb") : TEXT(""))) << "binary size " << size;
  }
}

TEST(TextLists, SeparatedLists) {
  struct Row { const WCHAR *list, *item; WCHAR sep; UINT count; int index; };
  for (const Row &r : {Row{TEXT("a;b;;c"), TEXT("c"), ';', 4, 2}, Row{TEXT("a;b;"), TEXT("b"), ';', 2, 1},
                       Row{TEXT(";"), TEXT(""), ';', 1, -1}, Row{TEXT(""), TEXT("a"), ';', 0, -1},
                       Row{nullptr, TEXT("a"), ';', 0, -1}, Row{TEXT("a;b"), TEXT("a"), 0, 0, -1},
                       Row{TEXT(";;ab;a;A"), TEXT("A"), ';', 5, 2}}) {
    EXPECT_EQ(Tavona_GetSeparatedListLng(r.list, r.sep), r.count) << "count of " << N(r.list);
    EXPECT_EQ(Tavona_GetSeparatedListIndex(r.list, r.item, r.sep), r.index)
        << "index of " << N(r.item) << " in " << N(r.list);
  }
}

TEST(TextLists, LanguageLists) {
  struct Scan { const WCHAR *list; UINT language; int size; const WCHAR *expect; int result; };
  for (const Scan &r : {Scan{TEXT("Hallo|49|Hello|44"), 44, 20, TEXT("Hello"), 0},
                        Scan{TEXT("Hallo|49|Hello|44"), 33, 20, TEXT("Hallo"), -1},
                        Scan{TEXT("Hallo|"), 49, 20, TEXT("Hallo"), 0},  // missing code: 49
                        Scan{TEXT("|49|Hello| 44x"), 44, 20, TEXT("Hello"), 0},
                        Scan{TEXT("a|49|b|0000000044"), 44, 20, TEXT("a"), -1},  // code cut to 9
                        Scan{TEXT("Hallo|49|Hello|44"), 44, 3, TEXT("He"), 0}}) {
    GuardedBuffer<WCHAR> b(r.size, TEXT("old"));
    WStr list = V(r.list);
    int got = Tavona_ScanTextFromLanguageList(list.c_str(), r.language, b.data(), r.size);
    EXPECT_TRUE(got == r.result && Ok(b, r.expect)) << "scan " << N(r.list) << " for " << r.language
        << ": got " << got << " " << N(b.Text().c_str()) << " expected " << r.result << " " << N(r.expect);
  }
  struct Replace { const WCHAR *list; int size; const WCHAR *text; int language; const WCHAR *expect; };
  WStr longOld = WStr(600, 'x') + TEXT("|49"), longNew = TEXT("y|44|") + WStr(499, 'x') + TEXT("|49");
  for (const Replace &r : {Replace{TEXT("Hallo|49|Hello|44"), 40, TEXT("Hi"), 44, TEXT("Hi|44|Hallo|49")},
                           Replace{TEXT("a|44|b|7|c|44"), 40, TEXT("d"), 44, TEXT("d|44|b|7")},
                           Replace{TEXT("Hallo| 049|x"), 40, TEXT("Hi"), 44, TEXT("Hi|44|Hallo| 049|x|49")},
                           Replace{TEXT("Hallo|49"), 15, TEXT("Hi"), 44, TEXT("Hi|44|Hallo|49")},  // just fits
                           Replace{longOld.c_str(), 999, TEXT("y"), 44, longNew.c_str()}}) {  // cut to 499
    GuardedBuffer<WCHAR> b(r.size, V(r.list).c_str());
    Tavona_ReplaceTextInLanguageList(b.data(), r.size, r.text, r.language);
    EXPECT_TRUE(Ok(b, V(r.expect))) << "replace " << r.language << " by " << N(r.text) << " in "
        << N(r.list) << ": got " << N(b.Text().c_str()) << " expected " << N(r.expect);
  }
}

}  // namespace
