// Copy list texts read and written, without windows.
#include <tavona/printing.h>

#include <gtest/gtest.h>

#include <string>

#include "frame/alloc.h"
#include "frame/host/hostplat.h"
#include "printing/copylist.h"
#include "testutil.h"

namespace {

using namespace tv::print;

const WCHAR *W(const char16_t *s) { return reinterpret_cast<const WCHAR *>(s); }

std::string Entries(const CopyList &l) {
  std::string s;
  for (int i = 0; i < kCopyEntries; ++i)
    if (l.names[i] || l.counts[i])
      s += (l.names[i] ? "(" + Narrow(l.names[i]) + ")" : std::string("-")) + "=" +
           std::to_string(l.counts[i]) + ";";
  return s;
}

TEST(CopyLists, Read) {
  struct Row {
    const char16_t *text;
    const char *entries;
  } rows[] = {
      {u"Original|1|", "(Original)=1;"},
      // Empty fields vanish in the tokenizer.
      {u"A||2|B|3", "(A)=2;(B)=3;"},
      {u"  Copy|2|", "(Copy)=2;"},
      // The single space of an empty entry reads as an empty name.
      {u"Original|1| |0| |4|", "(Original)=1;()=0;()=4;"},
      // A name without its count ends the list.
      {u"A|1|B", "(A)=1;"},
      {u"A|x|B|-2|C| 7 |D|99999999999|", "(A)=0;(B)=-2;(C)=7;(D)=2147483647;"},
      {u"a|1|b|2|c|3|d|4|e|5|f|6|g|7|h|8|i|9|j|10|k|11|",
       "(a)=1;(b)=2;(c)=3;(d)=4;(e)=5;(f)=6;(g)=7;(h)=8;(i)=9;(j)=10;"},
  };
  for (const Row &r : rows) {
    CopyList l;
    ASSERT_TRUE(ReadCopyList(W(r.text), l));
    EXPECT_EQ(Entries(l), r.entries) << Narrow(r.text);
  }
}

TEST(CopyLists, Exports) {
  // index: the entry asked for; result: its count, -1 past the ten
  struct Row { const char16_t *list; int index, size, result; const char *name; };
  const Row rows[] = {{u"Original|1|", 0, 20, 1, "Original"}, {u"Original|1|", 1, 20, 0, ""},
                      {u"Original|1|", 10, 20, -1, ""},       {u"Original|1|", -1, 20, -1, ""},
                      {u"Original|3|", 0, 4, 3, ""}};  // a name that does not fit: empty
  for (const Row &r : rows) {
    GuardedBuffer<WCHAR> name(r.size);
    EXPECT_EQ(Tavona_GetCopyListItem(W(r.list), r.index, name.data(), r.size), r.result) << r.index;
    if (r.result >= 0) {
      EXPECT_EQ(Narrow(name.Text()), r.name) << r.index;
    }
    EXPECT_TRUE(name.Intact()) << r.index;
  }
  EXPECT_EQ(Tavona_GetTotalCount(W(u"A|2|B|3|C|-1|")), 4);
  for (int size : {20, 5}) {  // the standard list, cut to the size
    GuardedBuffer<WCHAR> standard(size, W(u"x"));
    Tavona_GetStandardCopyList(standard.data(), size);
    EXPECT_EQ(Narrow(standard.Text()), std::string("Original|1|").substr(0, size - 1));
    EXPECT_TRUE(standard.Intact()) << size;
  }
}

TEST(CopyLists, OutOfMemory) {
  WCHAR name[10];
  tv::plat::host::SetFailAllocations(true);
  EXPECT_EQ(Tavona_GetTotalCount(W(u"A|2|")), 0);
  EXPECT_EQ(Tavona_GetCopyListItem(W(u"A|2|"), 0, name, 10), 0);
  CopyList l;
  EXPECT_EQ(WriteCopyList(l), nullptr);
  tv::plat::host::SetFailAllocations(false);
  EXPECT_NE(tv::plat::host::LastMessage().count, 0);
}

}  // namespace
