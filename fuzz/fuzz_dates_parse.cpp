// The date parsers with random texts and formats: nothing is read past the
// text's terminator (exact heap blocks), and every success is a valid date
// and time that formats without trouble.
#include <tavona/datetime.h>

#include "fuzzutil.h"
#include "datetime/clock_host.h"
#include "frame/host/hostplat.h"
#include "tvres.h"

namespace {

void CheckResult(int rc, const DateTimeStruct &r) {
  fuzz::Check(rc == 0 || rc == -1, "status 0 or -1");
  if (rc == 0) fuzz::Check(Is_Date_Correct(&r) && Is_Time_Correct(&r), "success is valid");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  if (in.Byte() & 1) {
    tv::plat::host::SetResString(IDS_LIST_MONTHS_SHORT,
                                 u"Jan|Feb|M\u00e4r|Apr|Mai|Jun|Jul|Aug|Sep|Okt|Nov|Dez||");
  } else {
    fuzz::WStr list = in.Text(u"janJAN|||\u00e4\u00c41", 200);
    tv::plat::host::SetResString(IDS_LIST_MONTHS_SHORT, list.c_str());
  }
  tv::plat::host::SetYearExpansionLimit(static_cast<int8_t>(in.Byte()));
  fuzz::WStr format = in.Text(u"%%%%DMYWHhUSP0123:. ", 60);
  fuzz::WStr text = in.Text(u"0123456789012345-,.: aApPmM\u00e4\u00c4rjanJANokt", 300);
  fuzz::Exact<WCHAR> exact(text.size() + 1);
  for (size_t i = 0; i <= text.size(); ++i) exact.get()[i] = text.c_str()[i];
  const WCHAR *f = format.empty() && (in.Byte() & 1) ? nullptr : format.c_str();

  DateTimeStruct r{};
  CheckResult(FormattedDateTime_To_DateTimeStruct(exact.get(), &r, f), r);
  if (FormattedDateTime_To_DateTimeStruct(exact.get(), &r, f) == 0) {
    WCHAR out[200];
    DateTimeStruct_To_FormattedDateTime(&r, out, 200, f);
  }
  CheckResult(FormattedTime_To_DateTimeStruct(exact.get(), &r, f), r);
  CheckResult(DigitString_To_DateTimeStruct(exact.get(), &r, f), r);
  CheckResult(OdbcTimeStamp_To_DateTimeStruct(exact.get(), &r), r);
  return 0;
}
