// The four number format routines with random formats, values, texts and
// output sizes: nothing is written past the size given (exact heap blocks),
// the output is terminated within it, and formatting is deterministic.
#include <tavona/text.h>

#include <cstring>

#include "fuzzutil.h"

namespace {

using fuzz::WStr;

const char16_t kFormatAlphabet[] = u"%%%%TWFDBEZ+-\\p.,'0123456789 -xe";
const char16_t kTextAlphabet[] = u"0123456789-.,+ e'%\\abc";

template <typename Write>
void CheckWrite(fuzz::Input &in, Write write) {
  int size = static_cast<int>(in.Byte() % 120) - 2;
  size_t alloc = size > 0 ? static_cast<size_t>(size) : 1;
  fuzz::Exact<WCHAR> out(alloc);
  std::memset(out.get(), 0x41, alloc * sizeof(WCHAR));
  write(out.get(), size);
  if (size >= 2) {
    size_t len = 0;
    while (len < static_cast<size_t>(size) && out.get()[len]) ++len;
    fuzz::Check(len < static_cast<size_t>(size), "terminated within the size");
    fuzz::Exact<WCHAR> again(alloc);
    write(again.get(), size);
    fuzz::Check(std::memcmp(out.get(), again.get(), (len + 1) * sizeof(WCHAR)) == 0,
                "deterministic");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  uint8_t choice = in.Byte();
  WStr format = in.Text(kFormatAlphabet, 120);
  const WCHAR *f = (choice & 0x80) ? nullptr : format.c_str();
  switch (choice % 4) {
    case 0: {
      INT value = static_cast<INT>(static_cast<uint32_t>(in.Unit()) << 16 | in.Unit());
      CheckWrite(in, [&](WCHAR *out, int n) { Int_To_FormattedInt(value, out, n, f); });
      break;
    }
    case 1: {
      uint64_t bits = 0;
      for (int i = 0; i < 4; ++i) bits = bits << 16 | in.Unit();
      double value;
      std::memcpy(&value, &bits, sizeof value);
      if (choice & 0x40) value = static_cast<double>(static_cast<int64_t>(bits) % 100000000) / 1000.0;
      CheckWrite(in, [&](WCHAR *out, int n) { Float_To_FormattedFloat(value, out, n, f); });
      break;
    }
    case 2: {
      WStr text = in.Text(kTextAlphabet, 200);
      INT value = 0;
      fuzz::Check(FormattedInt_To_Int(text.c_str(), &value, f) == 0, "int read result");
      break;
    }
    default: {
      WStr text = in.Text(kTextAlphabet, 200);
      double value = 0;
      fuzz::Check(FormattedFloat_To_Float(text.c_str(), &value, f) == 0, "float read result");
      break;
    }
  }
  return 0;
}
