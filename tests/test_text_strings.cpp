// Exported string primitives, on the host and through the DLL under wine.
#include <gtest/gtest.h>
#include <tavona/frame.h>
#include <tavona/text.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "testutil.h"
#ifdef TAVONA_HOST_TEST
#include "frame/host/hostplat.h"
#endif

namespace {

using Buffer = GuardedBuffer<WCHAR>;
constexpr WCHAR kFill = Buffer::kFill;  // both bytes differ from every digit

std::string N(const WCHAR *s) { return s ? "'" + Narrow(s) + "'" : "null"; }

// A guarded buffer holding init as it stands, terminated within size or not.
Buffer Holding(const WCHAR *init, int size) {
  Buffer b(size);
  for (int i = 0; init && i < size && (i == 0 || init[i - 1]); ++i) b.data()[i] = init[i];
  return b;
}

TEST(TextStrings, BoundedCopyAndAppendNeverTruncate) {
  struct Row { bool append; const WCHAR *dst, *src; int size; const WCHAR *expect; bool reported; };
  const Row rows[] = {
      {false, TEXT("xx"), TEXT("abc"), 4, TEXT("abc"), false},
      {false, TEXT("xx"), TEXT("abcd"), 4, TEXT(""), true},
      {false, TEXT("xx"), nullptr, 4, TEXT(""), false},
      {true, TEXT("ab"), TEXT("cd"), 5, TEXT("abcd"), false},
      {true, TEXT("abcd"), TEXT("x"), 5, TEXT(""), true},
      {true, TEXT("abcde"), TEXT("x"), 5, TEXT("abcde"), false}};  // unterminated: left alone
  for (const Row &r : rows) {
    Buffer b = Holding(r.dst, r.size);
    int lines = DebugLines();
    (r.append ? TavonaAppendString : TavonaCopyString)(b.data(), r.src, r.size);
    std::string row = (r.append ? "append " : "copy ") + N(r.src) + " to " + N(r.dst) + " size " +
                      std::to_string(r.size);
    EXPECT_TRUE(b.Text() == WStr(r.expect) && b.Intact()) << row << ": got " << N(b.Text().c_str());
    EXPECT_EQ(DebugLines() - lines, r.reported ? 1 : 0) << row << ": reports";
  }
}

TEST(TextStrings, CompareFindAndStrstri) {
  struct Row { const WCHAR *a, *b; int flags, expect; };
  for (const Row &r : {Row{nullptr, TEXT(""), 0, 0}, Row{TEXT("a"), TEXT("B"), 0, 1},
                       Row{TEXT("a"), TEXT("B"), 1, -1}, Row{TEXT("\u4E2D"), TEXT("a"), 0, 1}}) {
    int got = TavonaCompareString(r.a, r.b, r.flags);
    EXPECT_EQ((got > 0) - (got < 0), r.expect)
        << "compare " << N(r.a) << " " << N(r.b) << " flags " << r.flags;
  }
  for (const Row &r : {Row{TEXT("a c"), TEXT(" "), 0, 1}, Row{TEXT("a c"), TEXT(" "), 1, 0},
                       Row{TEXT("h\u00e9llo"), TEXT("\u00c9L"), 1, 1},
                       Row{TEXT("Hello"), TEXT("LL"), 0, 0},
                       Row{TEXT("abababc"), TEXT("ababc"), 0, 1},  // and a pattern for the heap:
                       Row{TEXT("<ababababababababababababababababab>"),
                           TEXT("ababababababababababababababababab>"), 0, 1}})
    EXPECT_EQ(TavonaFindString(r.a, r.b, r.flags), r.expect)
        << "find " << N(r.b) << " in " << N(r.a) << " flags " << r.flags;
  // expect: offset of the match, -1 for none
  for (const Row &r : {Row{TEXT("xAbCx"), TEXT("abc"), 0, 1}, Row{TEXT("abc"), TEXT("d"), 0, -1},
                       Row{TEXT("aAb"), TEXT("AB"), 0, 1}, Row{nullptr, TEXT("a"), 0, -1}}) {
    const WCHAR *got = Tavona_strstri(r.a, r.b);
    EXPECT_EQ(got ? static_cast<int>(got - r.a) : -1, r.expect)
        << "strstri " << N(r.b) << " in " << N(r.a);
  }
}

// Tavona_ReplaceString against the step-by-step rules: fuzz_replace.
TEST(TextStrings, ScanString) {
  struct Row {
    const WCHAR *line; WCHAR sep; int outSize;
    const WCHAR *field; bool terminated; const WCHAR *rest;
  };
  const Row rows[] = {{TEXT("one,,two"), ',', 10, TEXT("one"), true, TEXT("two")},
              {TEXT("\"a,b\",c"), ',', 10, TEXT("a,b"), true, TEXT("c")},
              {TEXT(",,x"), ',', 10, TEXT(""), true, TEXT("x")},
              {TEXT("ab\"cd"), ',', 10, TEXT("ab"), true, TEXT("\"cd")},
              {TEXT("\"ab"), ',', 10, TEXT("ab"), true, TEXT("")},
              {TEXT("abc"), ',', 4, TEXT("abc"), true, TEXT("")},
              {TEXT("abcd"), ',', 4, TEXT("abc"), false, TEXT("")},
              {TEXT("\"abcdef\";g"), ';', 4, TEXT("abc"), false, TEXT("g")},
              {TEXT("a"), 0, 5, TEXT("a"), true, TEXT("")}};
  for (const Row &r : rows) {
    Buffer out(r.outSize);
    const WCHAR *cursor = r.line;
    int got = Tavona_ScanString(&cursor, out.data(), r.outSize, r.sep);
    std::string row = "scan " + N(r.line) + " size " + std::to_string(r.outSize);
    int len = static_cast<int>(WStr(r.field).size());
    EXPECT_EQ(Narrow(cursor), Narrow(r.rest)) << row;
    EXPECT_EQ(got, len) << row;
    EXPECT_TRUE(out.Intact()) << row;
    EXPECT_EQ(Narrow(WStr(out.data(), len)), Narrow(r.field)) << row;
    EXPECT_EQ(out.data()[len], r.terminated ? 0 : kFill) << row;
  }
}

TEST(TextStrings, ScanStringlistLogarithmic) {
  const WCHAR *list[] = {TEXT("a"), TEXT("b"), TEXT("c"), TEXT("d"), TEXT("e"), TEXT("\u4E2D")};
  struct Row { const WCHAR *key; int count, expect; };
  // The index is relative to the sub-range once the search moved right.
  const Row rows[] = {{TEXT("c"), 5, 2},  {TEXT("a"), 5, 0},  {TEXT("d"), 5, 0},
              {TEXT("f"), 5, -1}, {TEXT("a"), 0, -1}, {TEXT("\u4E2D"), 6, 1}};
  for (const Row &r : rows)
    EXPECT_EQ(Tavona_ScanStringlistLogarithmic(r.key, list, r.count), r.expect)
        << "key " << N(r.key) << " count " << r.count;
}

// Scanning, refusals and the terminator are checked against their rules by
// fuzz_digits. The copy counts bytes, not characters, as it stands: of
// "345" come '3' and the low byte of '4'.
TEST(TextStrings, ExtractFirstDigitStringCopiesBytes) {
  Buffer out(10);
  EXPECT_EQ(Tavona_ExtractFirstDigitString(TEXT("ab12cd345"), 3, nullptr, nullptr, out.data(), 10), 1);
  const WCHAR expect[] = {'3', 0xBE34, kFill, 0};
  EXPECT_TRUE(std::equal(expect, expect + 4, out.data()) && out.Intact());
}

// Digits, blanks and refusals against the rules: fuzz_hex; here what it
// does not try.
TEST(TextStrings, HexStringToLong) {
  DWORD v = 0xDEAD, w = 0xDEAD;
  EXPECT_TRUE(Tavona_HexStringToLong(nullptr, &v) == 0 && v == 0);
  EXPECT_TRUE(Tavona_HexStringToLong(TEXT("\u0661"), &w) == -1 && w == 0);  // not a digit here
  EXPECT_EQ(Tavona_HexStringToLong(TEXT("1"), nullptr), -1);
}

// The ANSI conversions' values: tests/consumer; their failure: below.
#ifdef TAVONA_HOST_TEST
int reports = 0;
INT WINAPI CountReport(const WCHAR *) { return ++reports, 1; }

TEST(TextStrings, OutOfMemoryIsReportedAndHarmless) {
  TAVONA_ERROR_CALLBACK old = Tavona_SetErrorHandlerCallback(CountReport);
  tv::plat::host::SetFailAllocations(true);
  reports = 0;
  EXPECT_EQ(TavonaFindString(TEXT("abc"), TEXT("B"), 1), 0);
  EXPECT_EQ(Tavona_strstri(TEXT("abc"), TEXT("B")), nullptr);
  // Replacing works in the caller's buffer and needs no memory; ignoring
  // case needs a copy of the pattern and leaves the text alone without one.
  WCHAR text[20] = {'a', 'b', 'a', 0};
  Tavona_Replace(text, 20, TEXT("b"), TEXT("xyz"), 0);
  Tavona_Replace(text, 20, TEXT("A"), TEXT("xyz"), TAVONA_REPLACE_NOCASE);
  EXPECT_EQ(Narrow(text), "axyza");
  EXPECT_EQ(Tavona_ConvertMB2Wide("x"), nullptr);
  EXPECT_EQ(reports, 4);
  tv::plat::host::SetFailAllocations(false);
  Tavona_SetErrorHandlerCallback(old);
}
#endif

}  // namespace
