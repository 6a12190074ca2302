// Pattern lists of the directory routines on random lists and names: no
// access beyond the texts, and the rules that hold whatever the input:
// "*.*" takes every name, a name (without wildcards) is matched by itself
// in any list, and a list matches when one of its entries does.
#include <cstring>

#include "files/patterns.h"
#include "fuzzutil.h"

namespace {

const char16_t kAlphabet[] = u"ab.*?\t.A\u00e4\u00c4";

bool HasWildcard(const fuzz::WStr &s) {
  return s.find(u'*') != fuzz::WStr::npos || s.find(u'?') != fuzz::WStr::npos;
}

bool Matches(const fuzz::WStr &list, const WCHAR *name) {
  // An exact-size copy, so that ASan sees any read past the list's end.
  fuzz::Exact<WCHAR> text(list.size() + 1);
  std::memcpy(text.get(), list.c_str(), (list.size() + 1) * sizeof(WCHAR));
  tv::PatternList patterns;
  fuzz::Check(patterns.Build(text.get()), "build");
  return patterns.Matches(name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  bool longParts = in.Byte() & 1;
  fuzz::WStr list = in.Text(kAlphabet, longParts ? 1200 : 40);
  fuzz::WStr name = in.Text(kAlphabet, longParts ? 600 : 20);
  for (WCHAR &c : name)
    if (c == u'\t') c = u'_';
  fuzz::Exact<WCHAR> n(name.size() + 1);
  std::memcpy(n.get(), name.c_str(), (name.size() + 1) * sizeof(WCHAR));

  bool inList = Matches(list, n.get());
  fuzz::Check(Matches(u"*.*", n.get()), "*.* takes every name");
  if (!HasWildcard(name) && !name.empty()) {
    fuzz::Check(Matches(name, n.get()), "a name matches itself");
    fuzz::Check(Matches(list + u'\t' + name, n.get()), "an added entry matches");
  }
  // Splitting the list differently changes nothing: entries are independent.
  size_t tab = list.find(u'\t');
  if (tab != fuzz::WStr::npos) {
    bool either = Matches(list.substr(0, tab), n.get()) || Matches(list.substr(tab + 1), n.get());
    fuzz::Check(either == inList, "a list matches when one of its parts does");
  }
  return 0;
}
