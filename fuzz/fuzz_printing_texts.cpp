// Format parts and copy lists from random texts: building stays inside
// any size from 0 up, and a copy list written and read again has the same
// entries.
#include "datetime/formatparts.h"
#include "frame/alloc.h"
#include "fuzzutil.h"
#include "printing/copylist.h"
#include "base/wstr.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  fuzz::WStr format = in.Text(u"%%%%DMYWHhUSPQ0123x.: ", 400);
  tv::dtf::FormatParts parts;
  tv::dtf::SplitFormat(format.c_str(), in.Byte() % 4, parts);
  if (in.Byte() & 1) tv::dtf::Reorder(parts, in.Byte() % 4);
  for (int k = 0; k < 3; ++k) {
    int n = in.Byte() * 2 % 300;
    fuzz::Exact<WCHAR> out(static_cast<size_t>(n) + 1);
    out.get()[0] = 'x';
    tv::dtf::BuildFormat(parts, out.get(), n);
    if (n < 10) {
      fuzz::Check(out.get()[0] == 'x', "nothing written below 10");
      continue;
    }
    fuzz::Check(tv::LenBounded(out.get(), n) < n, "terminated within the size");
  }

  fuzz::WStr text = in.Text(u"||| 12-a", 600);
  tv::print::CopyList list;
  if (!tv::print::ReadCopyList(text.c_str(), list)) return 0;
  tv::HeapPtr<WCHAR> written(tv::print::WriteCopyList(list));
  fuzz::Check(written.get() != nullptr, "written");
  tv::print::CopyList back;
  fuzz::Check(tv::print::ReadCopyList(written.get(), back), "read back");
  for (int i = 0; i < tv::print::kCopyEntries; ++i) {
    fuzz::Check(back.counts[i] == list.counts[i], "same count");
    const WCHAR *a = list.names[i] ? list.names[i] : u"";
    fuzz::Check(tv::Compare(a, back.names[i]) == 0, "same name");
  }
  return 0;
}
