// Random adds, deletes and reads on a descriptor in an exact heap block of
// a small capacity: nothing is written past it, the text stays terminated,
// an item added whole reads back as it was, and a deleted one is gone.
#include <tavona/text.h>

#include "fuzzutil.h"

namespace {

size_t LenIn(const WCHAR *p, size_t n) {
  size_t len = 0;
  while (len < n && p[len]) ++len;
  return len;
}

bool EndsWith(const fuzz::WStr &s, const fuzz::WStr &tail) {
  return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

fuzz::WStr Without(fuzz::WStr s) {
  fuzz::WStr r;
  for (WCHAR c : s)
    if (c != '\t' && c != '=') r += c;
  return r;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  unsigned capacity = 1 + in.Byte() % 40;
  fuzz::Exact<WCHAR> d(capacity);
  d.get()[0] = 0;
  for (int op = 0; op < 64 && !in.Empty(); ++op) {
    uint8_t kind = in.Byte() % 5;
    // Names never hold '=' or tabs and values no '=', so an item name
    // occurs at most once and the last one added reads back.
    fuzz::WStr name = Without(in.Text(u"ab", 4));
    if (name.empty()) name = u"a";
    fuzz::WStr value = Without(in.Text(u"ab1- ", 6));
    int outSize = in.Byte() % 12;
    if (kind == 0 || kind == 1) {
      if (kind == 0) {
        DescriptorAddStringItem(d.get(), capacity, name.c_str(), value.c_str());
      } else {
        int number = static_cast<int16_t>(in.Unit());
        DescriptorAddLongItem(d.get(), capacity, name.c_str(), number);
        value.clear();
        for (char c : std::to_string(number)) value += static_cast<WCHAR>(c);
      }
      size_t len = LenIn(d.get(), capacity);
      fuzz::Check(len < capacity, "terminated within the capacity");
      fuzz::WStr text(d.get(), len);
      fuzz::WStr item = name + u"=" + value;
      if (text == item || EndsWith(text, u"\t" + item)) {
        WCHAR out[64];
        DescriptorGetStringItem(d.get(), name.c_str(), u"#", out, 64);
        fuzz::Check(fuzz::WStr(out) == value, "an added item reads back");
      }
    } else if (kind == 2) {
      DescriptorDeleteItem(d.get(), name.c_str());
      fuzz::Check(LenIn(d.get(), capacity) < capacity, "terminated after a delete");
      WCHAR out[64];
      DescriptorGetStringItem(d.get(), name.c_str(), u"#", out, 64);
      fuzz::Check(fuzz::WStr(out) == u"#", "a deleted item is gone");
    } else if (kind == 3) {
      fuzz::Exact<WCHAR> out(outSize > 0 ? outSize : 1);
      DescriptorGetStringItem(d.get(), name.c_str(), value.c_str(), out.get(), outSize);
      if (outSize > 0) fuzz::Check(LenIn(out.get(), outSize) < static_cast<size_t>(outSize), "read terminated");
    } else {
      DescriptorGetLongItem(d.get(), name.c_str(), 5);
    }
  }
  return 0;
}
