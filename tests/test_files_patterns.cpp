// File name pattern lists of the directory routines (host build).
#include <gtest/gtest.h>

#include "files/patterns.h"
#include "testutil.h"

namespace {

TEST(Patterns, NamePartAndExtensionComparedSeparately) {
  struct Row { WStr list, name; bool match; };
  const Row rows[] = {
      {u"*.TXT", u"readme.txt", true},  // upper-cased on both sides
      {u"*", u"readme", true},  // no dot: only names without extension
      {u"*", u"readme.txt", false}, {u"x.", u"x", true},
      {u"A*Z", u"ABC", true},  // the comparison ends at the '*'
      {u"r*.t*x", u"readme.tab", true}, {u"??.txt", u"ab.txt", true},
      {u"??.txt", u"a.txt", false},  // '?' needs a character
      {u"a.b.c", u"A.B.C", true},  // split at the last dot
      {u"a.b.c", u"a.bc", false},
      {u"\t\t*.pdf\t", u"x.pdf", true},  // empty entries are left out
      {u"*.\u00c4\u00d6", u"x.\u00e4\u00f6", true},
      // Parts count up to 256 characters, the name's as the pattern's.
      {WStr(300, u'A') + u".txt", WStr(256, u'a') + u"bbb.TXT", true},
      {WStr(255, u'A') + u".txt", WStr(256, u'a') + u".TXT", false},
  };
  for (const Row &r : rows) {
    tv::PatternList list;
    ASSERT_TRUE(list.Build(r.list.c_str()));
    EXPECT_EQ(list.Matches(r.name.c_str()), r.match)
        << "list '" << Narrow(r.list) << "' name '" << Narrow(r.name) << "'";
  }
}

}  // namespace
