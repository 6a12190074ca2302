// The date formatter with random records, formats, sizes and name lists:
// nothing is written past the size and the text is terminated inside it.
// Calendar routines get the same random records.
#include <tavona/datetime.h>

#include <cstring>

#include "fuzzutil.h"
#include "frame/host/hostplat.h"
#include "base/wstr.h"
#include "tvres.h"

namespace {

INT Int(fuzz::Input &in) {
  uint32_t v = static_cast<uint32_t>(in.Unit()) << 16 | in.Unit();
  switch (in.Byte() % 4) {
    case 0: return static_cast<INT>(v);
    case 1: return static_cast<INT>(v % 100);
    case 2: return static_cast<INT>(1600 + v % 8400);
    default: return -static_cast<INT>(v % 100);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  static const char16_t kNames[] = u"abcXYZ|||\u00e4\u00c4";
  for (UINT id = IDS_LIST_WEEKDAYS_LONG; id <= IDS_LIST_MONTHS_SHORT; ++id) {
    if (in.Byte() & 1) {
      fuzz::WStr list = in.Text(kNames, 300);
      tv::plat::host::SetResString(id, list.c_str());
    } else {
      tv::plat::host::SetResString(id, u"Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec");
    }
  }
  DateTimeStruct r = {Int(in), Int(in), Int(in), Int(in), Int(in), Int(in)};
  fuzz::WStr format = in.Text(u"%%%%DMYWHhUSPX0123456789.: ", 200);
  const WCHAR *f = (in.Byte() & 7) == 0 ? nullptr : format.c_str();

  WCHAR full[1000];
  DateTimeStruct_To_FormattedDateTime(&r, full, 1000, f);
  int fullLen = 0;
  while (fullLen < 1000 && full[fullLen]) ++fullLen;
  fuzz::Check(fullLen < 1000, "terminated");
  for (int k = 0; k < 3; ++k) {
    int n = in.Byte() % 40;
    fuzz::Exact<WCHAR> out(static_cast<size_t>(n) + 1);
    out.get()[0] = 'x';
    DateTimeStruct_To_FormattedDateTime(&r, out.get(), n, f);
    if (n < 2) {
      fuzz::Check(out.get()[0] == 'x', "nothing written below 2");
      continue;
    }
    int len = 0;
    while (len < n && out.get()[len]) ++len;
    fuzz::Check(len < n, "terminated within the size");
    // When the whole text fits with one character to spare (a code needs
    // one more than its length), no size changes it.
    if (fullLen + 1 < n) fuzz::Check(std::memcmp(out.get(), full, (fullLen + 1) * sizeof(WCHAR)) == 0,
                                 "same text when it fits");
  }

  // Numbers come out as printf would write them.
  WCHAR mine[100], printf[100];
  DateTimeStruct_To_FormattedDateTime(&r, mine, 100, u"%D1|%D2|%Y1|%H2|%h1|%U2|%S3");
  int h12 = r.hour % 12;
  tv::Format(printf, 100, u"%d|%02d|%02d|%02d|%d|%02d|%d", r.day, r.day, r.year % 100,
             r.hour % 24, h12 == 0 ? 12 : h12, r.minute % 60, r.second % 60);
  fuzz::Check(tv::Compare(mine, printf) == 0, "numbers as printf writes them");

  // Calendar routines with the same random values.
  DateTimeStruct o = {Int(in), Int(in), Int(in), Int(in), Int(in), Int(in)};
  DateTimeStruct moved = r;
  Tavona_AddDateTimeOffset(&moved, &o);
  DateTimeStruct back{};
  Get_DateSinceBaseDate(r.day, &back);
  if (r.day > 0 && r.day <= 3068036)
    fuzz::Check(Get_DaysSinceBaseDate(&back) == r.day, "day number round trip");
  Tavona_ComputeEasterSunday(r.year, &back);
  fuzz::Check(back.month == 3 || back.month == 4, "Easter in March or April");
  Get_Weekday(&r);
  Get_SecondsSinceMidnight(&r);
  Tavona_InvertDateTimeOffset(&o);
  return 0;
}
